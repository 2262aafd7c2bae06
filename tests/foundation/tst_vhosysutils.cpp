// SPDX-License-Identifier: MIT
// Naming of components and finding them again: unique names, collision
// tests, the display-name entry points, dotted name paths, the text helpers,
// the shared ancestor class of a selection, the filters over component lists
// and cloning through the component stream.
#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "foundation/vhosysutils.h"
#include "harness/qorguitest.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRandomGenerator>
#include <QTest>
#include <QTimer>

#include <memory>

// Classes whose names carry the prefixes that new names lose.
class TTimer : public QObject
{
    Q_OBJECT
};

class TButton : public QWidget
{
    Q_OBJECT
};

class TQorThing : public QObject
{
    Q_OBJECT
};

class QTBox : public QObject
{
    Q_OBJECT
};

class Gadget : public QObject
{
    Q_OBJECT
};

class Quarter : public QObject
{
    Q_OBJECT
};

class FancyButton : public QPushButton
{
    Q_OBJECT
};

namespace Shapes {
class TCircle : public QObject
{
    Q_OBJECT
};
} // namespace Shapes

namespace {

template<class T>
T *named(T *o, const char *name)
{
    o->setObjectName(QLatin1String(name));
    return o;
}

// A component owned by owner, named after insertion so that a test can give
// two components one name.
QObject *ownedObject(QObject *owner, const QString &name)
{
    auto *o = new QObject;
    InsertComponent(owner, o);
    o->setObjectName(name);
    return o;
}

QWidget *ownedButton(QWidget *form, const char *name)
{
    auto *button = named(new QPushButton(form), name);
    InsertComponent(form, button);
    return button;
}

// Trying 1, 2, 3... until the owner does not know the name.
QString uniqueNameByTrying(const QString &base, QObject *owner)
{
    for (int n = 1;; ++n) {
        const QString name = base + QString::number(n);
        if (!CompNameExists(name, owner))
            return name;
    }
}

} // namespace

class tst_VhoSysUtils : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        QTRY_COMPARE(QorGuiTest::liveTopLevelWidgets(), 0);
        QCOMPARE(ComponentCount(qApp), 0);
    }

    // Edge cases

    void uniqueNameCountsTheOwnersOwnName()
    {
        QObject form;
        form.setObjectName(QStringLiteral("Edit1"));
        QCOMPARE(ComponentCount(&form), 0);
        QCOMPARE(GetUniqueName(QStringLiteral("Edit"), &form), QStringLiteral("Edit2"));
    }

    void uniqueIdOfATClassDropsTheT()
    {
        QCOMPARE(GetCompUniqueID(&TTimer::staticMetaObject, nullptr), QStringLiteral("Timer1"));
        QObject form;
        QCOMPARE(GetCompUniqueID(&TTimer::staticMetaObject, &form), QStringLiteral("Timer1"));
    }

    void uniqueIdOfAClassWithoutPrefixKeepsTheWholeName()
    {
        QObject form;
        QCOMPARE(GetCompUniqueID(&Gadget::staticMetaObject, &form), QStringLiteral("Gadget1"));
        // A "Q" followed by a lower-case letter is part of the name.
        QCOMPARE(GetCompUniqueID(&Quarter::staticMetaObject, &form), QStringLiteral("Quarter1"));
    }

    void nsNameOfAnUnnamedComponentOwnedByTheRootIsNoName()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        auto *unnamed = new QPushButton(&form);
        InsertComponent(&form, unnamed);
        QCOMPARE(unnamed->objectName(), QString());
        QCOMPARE(CompToNSName(unnamed, &form, &form), QStringLiteral("[NoName]"));
    }

    void nsNameOfAnUnnamedComponentOnAnotherFormIsPrefixedByThatForm()
    {
        QWidget form1;
        form1.setObjectName(QStringLiteral("Form1"));
        QWidget root;
        root.setObjectName(QStringLiteral("Form2"));
        auto *unnamed = new QPushButton(&form1);
        InsertComponent(&form1, unnamed);
        QCOMPARE(CompToNSName(unnamed, &form1, &root), QStringLiteral("Form1.[NoName]"));
    }

    void nsNameOfAComponentOfANonFormOwnerThatIsNotTheRootIsEmpty()
    {
        QObject dataModule;
        dataModule.setObjectName(QStringLiteral("DataModule1"));
        QObject *timer = ownedObject(&dataModule, QStringLiteral("Timer1"));
        QWidget root;
        root.setObjectName(QStringLiteral("Form1"));
        QCOMPARE(CompToNSName(timer, &dataModule, &root), QString());
        // The same owner as root gives the bare name.
        QCOMPARE(CompToNSName(timer, &dataModule, &dataModule), QStringLiteral("Timer1"));
        // A widget that is not a window is no form either.
        auto *panel = named(new QFrame(&root), "Panel1");
        QPushButton *button = named(new QPushButton(panel), "Button1");
        QCOMPARE(CompToNSName(button, panel, &root), QString());
    }

    void nsNameWithAFormFindsTheFormAmongTheApplicationsComponents()
    {
        QWidget form2;
        form2.setObjectName(QStringLiteral("Form2"));
        QWidget *button = ownedButton(&form2, "Button1");
        QWidget root;
        root.setObjectName(QStringLiteral("Form1"));
        ownedButton(&root, "Button1");
        QCOMPARE(NSNameToComp(QStringLiteral("Form2.Button1"), nullptr), button);
        // The root does not matter once the path names a form.
        QCOMPARE(NSNameToComp(QStringLiteral("Form2.Button1"), &root), button);
        QCOMPARE(NSNameToComp(QStringLiteral("form2.BUTTON1"), nullptr), button);
        QCOMPARE(NSNameToComp(QStringLiteral("Form2"), nullptr), &form2);
    }

    void nsNameEndingInADotFindsNothing()
    {
        QWidget form2;
        form2.setObjectName(QStringLiteral("Form2"));
        ownedButton(&form2, "Button1");
        // An unnamed component is no match for the empty name after the dot.
        InsertComponent(&form2, new QPushButton(&form2));
        QCOMPARE(NSNameToComp(QStringLiteral("Form2."), nullptr), nullptr);
    }

    void strPairValueIsEverythingAfterTheFirstEquals()
    {
        QCOMPARE(GetStrPairValue(QStringLiteral("a=b=c"), false), QStringLiteral("b=c"));
        QCOMPARE(GetStrPairValue(QStringLiteral("a=b=c"), true), QStringLiteral("b=c"));
        QCOMPARE(GetStrPairValue(QStringLiteral("a="), false), QString());
        QCOMPARE(GetStrPairValue(QStringLiteral("=x"), false), QStringLiteral("x"));
    }

    // Name tests

    void compNameExistsIsFalseWithoutOwner()
    {
        QVERIFY(!CompNameExists(QStringLiteral("Button1"), nullptr));
        QVERIFY(!CompNameExists(QString(), nullptr));
    }

    void compNameExistsFindsOwnedNamesAndTheOwnersNameIgnoringCase()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        ownedButton(&form, "Button1");
        QVERIFY(CompNameExists(QStringLiteral("Button1"), &form));
        QVERIFY(CompNameExists(QStringLiteral("bUTTON1"), &form));
        QVERIFY(CompNameExists(QStringLiteral("FORM1"), &form));
        QVERIFY(!CompNameExists(QStringLiteral("Button2"), &form));
        QVERIFY(!CompNameExists(QStringLiteral("Button"), &form));
        // A child the owner does not own is not one of its names.
        named(new QLabel(&form), "Label1");
        QVERIFY(!CompNameExists(QStringLiteral("Label1"), &form));
    }

    void compNameExistsMatchesTheEmptyNameOnlyToUnnamedComponents()
    {
        QObject owner;
        owner.setObjectName(QStringLiteral("Owner"));
        ownedObject(&owner, QStringLiteral("A"));
        QVERIFY(!CompNameExists(QString(), &owner));
        ownedObject(&owner, QString());
        QVERIFY(CompNameExists(QString(), &owner));
        QObject unnamedOwner;
        QVERIFY(CompNameExists(QString(), &unnamedOwner));
    }

    void compNameExistsOfAComponentSkipsItselfUnlessIncludeSelf()
    {
        QObject owner;
        QObject *a = ownedObject(&owner, QStringLiteral("Timer1"));
        QCOMPARE(CompNameExists(a, &owner, false), nullptr);
        QCOMPARE(CompNameExists(a, &owner, true), a);
    }

    void compNameExistsOfAComponentReturnsTheFirstInOwnerOrder()
    {
        QObject owner;
        ownedObject(&owner, QStringLiteral("Other"));
        QObject *a = ownedObject(&owner, QStringLiteral("Timer1"));
        QObject *b = ownedObject(&owner, QStringLiteral("timer1"));
        QObject *c = ownedObject(&owner, QStringLiteral("TIMER1"));
        QCOMPARE(CompNameExists(a, &owner, false), b);
        QCOMPARE(CompNameExists(b, &owner, false), a);
        QCOMPARE(CompNameExists(c, &owner, true), a);
        SetComponentIndex(c, 0);
        QCOMPARE(CompNameExists(a, &owner, false), c);
        // A component of another owner is compared by its name only.
        QObject stranger;
        stranger.setObjectName(QStringLiteral("Timer1"));
        QCOMPARE(CompNameExists(&stranger, &owner, false), c);
    }

    void compNameExistsOfAComponentFallsBackToTheOwnerWhateverIncludeSelf()
    {
        QObject owner;
        owner.setObjectName(QStringLiteral("Box1"));
        QObject *a = ownedObject(&owner, QStringLiteral("box1"));
        QCOMPARE(CompNameExists(a, &owner, false), &owner);
        // With IncludeSelf the component itself comes before its owner.
        QCOMPARE(CompNameExists(a, &owner, true), a);
        a->setObjectName(QStringLiteral("Other"));
        QCOMPARE(CompNameExists(a, &owner, false), nullptr);
        QCOMPARE(CompNameExists(a, &owner, true), a);
    }

    void compNameExistsOfANilComponentOrOwnerIsNil()
    {
        QObject owner;
        QObject *a = ownedObject(&owner, QStringLiteral("A"));
        QCOMPARE(CompNameExists(a, nullptr, true), nullptr);
        QCOMPARE(CompNameExists(nullptr, &owner, true), nullptr);
    }

    // Name generation

    void uniqueNameNeverReturnsTheBareBase()
    {
        QObject owner;
        QCOMPARE(GetUniqueName(QStringLiteral("Edit"), &owner), QStringLiteral("Edit1"));
        QCOMPARE(GetUniqueName(QStringLiteral("Edit"), nullptr), QStringLiteral("Edit1"));
        QCOMPARE(GetUniqueName(QString(), &owner), QStringLiteral("1"));
    }

    void uniqueNameTakesTheSmallestFreeNumber()
    {
        QObject owner;
        ownedObject(&owner, QStringLiteral("edit1"));
        ownedObject(&owner, QStringLiteral("Edit3"));
        ownedObject(&owner, QStringLiteral("Edit"));
        QCOMPARE(GetUniqueName(QStringLiteral("Edit"), &owner), QStringLiteral("Edit2"));
        ownedObject(&owner, QStringLiteral("EDIT2"));
        QCOMPARE(GetUniqueName(QStringLiteral("Edit"), &owner), QStringLiteral("Edit4"));
    }

    void uniqueNameIgnoresNumbersWithLeadingZerosOrOtherTails()
    {
        QObject owner;
        ownedObject(&owner, QStringLiteral("Edit01"));
        ownedObject(&owner, QStringLiteral("Edit1a"));
        ownedObject(&owner, QStringLiteral("Edit-2"));
        ownedObject(&owner, QStringLiteral("Edit 3"));
        ownedObject(&owner, QStringLiteral("MyEdit1"));
        ownedObject(&owner, QStringLiteral("Edit99999999999999999999999"));
        QCOMPARE(GetUniqueName(QStringLiteral("Edit"), &owner), QStringLiteral("Edit1"));
    }

    void uniqueNameAgreesWithTryingEachNumberInTurn()
    {
        QRandomGenerator random(20240521);
        const QStringList bases = {QStringLiteral("Ed"), QStringLiteral("ed"), QStringLiteral("Button")};
        const QStringList stems = {QStringLiteral("Ed"), QStringLiteral("ED"), QStringLiteral("eD"),
                                   QStringLiteral("Edit"), QStringLiteral("Button"), QStringLiteral("x")};
        for (int round = 0; round < 300; ++round) {
            QObject owner;
            const auto randomName = [&]() -> QString {
                QString name = stems.at(random.bounded(int(stems.size())));
                switch (random.bounded(6)) {
                case 0:
                    return name;
                case 1:
                    return name + u'0' + QString::number(random.bounded(1, 12));
                case 2:
                    return name + QString::number(random.bounded(1, 12)) + u'z';
                default:
                    return name + QString::number(random.bounded(0, 14));
                }
            };
            owner.setObjectName(randomName());
            const int count = random.bounded(0, 20);
            for (int i = 0; i < count; ++i)
                ownedObject(&owner, randomName());
            for (const QString &base : bases)
                QCOMPARE(GetUniqueName(base, &owner), uniqueNameByTrying(base, &owner));
        }
    }

    void uniqueNameIsFastOnAnOwnerOfThousands()
    {
        QObject owner;
        for (int i = 1; i <= 5000; ++i)
            ownedObject(&owner, QStringLiteral("Button%1").arg(i));
        QCOMPARE(GetUniqueName(QStringLiteral("Button"), &owner), QStringLiteral("Button5001"));
        delete Components(&owner, 1234);
        QCOMPARE(GetUniqueName(QStringLiteral("button"), &owner), QStringLiteral("button1235"));
    }

    void uniqueIdDropsOneLeadingQBeforeAnUpperCaseLetter()
    {
        QObject form;
        QCOMPARE(GetCompUniqueID(&QPushButton::staticMetaObject, &form), QStringLiteral("PushButton1"));
        QCOMPARE(GetCompUniqueID(&QTimer::staticMetaObject, &form), QStringLiteral("Timer1"));
        QCOMPARE(GetCompUniqueID(&QLineEdit::staticMetaObject, &form), QStringLiteral("LineEdit1"));
    }

    void uniqueIdDropsExactlyOnePrefix()
    {
        QCOMPARE(GetCompUniqueID(&TQorThing::staticMetaObject, nullptr), QStringLiteral("QorThing1"));
        QCOMPARE(GetCompUniqueID(&QTBox::staticMetaObject, nullptr), QStringLiteral("TBox1"));
        QCOMPARE(classNameWithoutPrefix(QStringLiteral("TQorDesignManager")),
                 QStringLiteral("QorDesignManager"));
        QCOMPARE(classNameWithoutPrefix(QStringLiteral("QTimer")), QStringLiteral("Timer"));
        QCOMPARE(classNameWithoutPrefix(QStringLiteral("Q")), QStringLiteral("Q"));
        QCOMPARE(classNameWithoutPrefix(QStringLiteral("Tab")), QStringLiteral("ab"));
    }

    void uniqueIdOfANamespacedClassUsesTheClassNameOnly()
    {
        QCOMPARE(QString::fromLatin1(Shapes::TCircle::staticMetaObject.className()),
                 QStringLiteral("Shapes::TCircle"));
        QCOMPARE(GetCompUniqueID(&Shapes::TCircle::staticMetaObject, nullptr), QStringLiteral("Circle1"));
    }

    void uniqueIdCountsUpPastTakenNames()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        ownedButton(&form, "Button1");
        QCOMPARE(GetCompUniqueID(&TButton::staticMetaObject, &form), QStringLiteral("Button2"));
        ownedButton(&form, "pushbutton1");
        ownedButton(&form, "PushButton2");
        QCOMPARE(GetCompUniqueID(&QPushButton::staticMetaObject, &form), QStringLiteral("PushButton3"));
        QCOMPARE(GetCompUniqueID(nullptr, &form), QString());
    }

    void uniqueCnNameAlwaysEndsInOneEvenWhenTaken()
    {
        QWidget form;
        ownedButton(&form, "PushButton1");
        QCOMPARE(GetCompUniqueCNName(&QPushButton::staticMetaObject, &form), QStringLiteral("PushButton1"));
        QCOMPARE(GetCompUniqueCNName(&QPushButton::staticMetaObject, nullptr), QStringLiteral("PushButton1"));
    }

    void uniqueCnNameOfAnUntranslatedClassDropsItsPrefix()
    {
        QCOMPARE(GetCompUniqueCNName(&TTimer::staticMetaObject, nullptr), QStringLiteral("Timer1"));
        QCOMPARE(GetCompUniqueCNName(&QTBox::staticMetaObject, nullptr), QStringLiteral("TBox1"));
        QCOMPARE(GetCompUniqueCNName(&Gadget::staticMetaObject, nullptr), QStringLiteral("Gadget1"));
        QCOMPARE(GetCompUniqueCNName(nullptr, nullptr), QString());
    }

    void uniqueCnNameUsesTheInstalledClassLabelAsItStands()
    {
        // A translated label is used whole, prefix and all, with "1" after
        // it; a label equal to the class name still loses its prefix.
        struct Labels final : IQorClassLabels {
            QString ClassLabel(const QMetaObject *AClass) const override
            {
                return AClass == &QPushButton::staticMetaObject ? QStringLiteral("QKnopf")
                                                                : QString::fromLatin1(AClass->className());
            }
        } labels;
        const IQorClassLabels *previous = SetClassLabels(&labels);
        const QString translated = GetCompUniqueCNName(&QPushButton::staticMetaObject, nullptr);
        const QString untranslated = GetCompUniqueCNName(&TTimer::staticMetaObject, nullptr);
        QCOMPARE(SetClassLabels(previous), &labels);
        QCOMPARE(translated, QStringLiteral("QKnopf1"));
        QCOMPARE(untranslated, QStringLiteral("Timer1"));
        QCOMPARE(GetCompUniqueCNName(&QPushButton::staticMetaObject, nullptr), QStringLiteral("PushButton1"));
    }

    // Display-name entry points

    void cnNameOfAComponentIsItsName()
    {
        QObject owner;
        QObject *a = ownedObject(&owner, QStringLiteral("Timer1"));
        QObject other;
        QCOMPARE(GetCompCnName(a, &owner), QStringLiteral("Timer1"));
        QCOMPARE(GetCompCnName(a, &other), QStringLiteral("Timer1"));
        QCOMPARE(GetCompCnName(a, nullptr), QStringLiteral("Timer1"));
        QCOMPARE(GetCompCnName(nullptr, &owner), QString());
    }

    void settingACnNameChangesNothing()
    {
        QObject owner;
        QObject *a = ownedObject(&owner, QStringLiteral("Timer1"));
        SetCompCNName(a, &owner, QStringLiteral("Clock"));
        QCOMPARE(a->objectName(), QStringLiteral("Timer1"));
        QCOMPARE(GetCompCnName(a, &owner), QStringLiteral("Timer1"));
        QCOMPARE(FindComponent(&owner, QStringLiteral("Clock")), nullptr);
        SetCompCNName(nullptr, nullptr, QStringLiteral("Clock"));
    }

    void cnNameExistsByNameForwardsToCompNameExists()
    {
        QObject owner;
        owner.setObjectName(QStringLiteral("Module1"));
        QObject *a = ownedObject(&owner, QStringLiteral("Timer1"));
        QObject stranger;
        const QStringList names = {QStringLiteral("Timer1"), QStringLiteral("TIMER1"),
                                   QStringLiteral("module1"), QStringLiteral("Timer2"), QString()};
        for (const QString &name : names) {
            const bool expected = CompNameExists(name, &owner);
            QCOMPARE(CompCNNameExists(name, &owner), expected);
            // The component argument is not looked at.
            QCOMPARE(CompCNNameExists(a, name, &owner), expected);
            QCOMPARE(CompCNNameExists(&stranger, name, &owner), expected);
            QCOMPARE(CompCNNameExists(nullptr, name, &owner), expected);
            QCOMPARE(CompCNNameExists(a, name, nullptr), false);
        }
        QVERIFY(CompCNNameExists(a, QStringLiteral("timer1"), &owner));
        QVERIFY(!CompCNNameExists(QStringLiteral("Timer1"), nullptr));
    }

    void cnNameExistsOfAComponentForwardsToCompNameExists()
    {
        QObject owner;
        owner.setObjectName(QStringLiteral("Box1"));
        QObject *a = ownedObject(&owner, QStringLiteral("Timer1"));
        QObject *b = ownedObject(&owner, QStringLiteral("timer1"));
        QObject *c = ownedObject(&owner, QStringLiteral("BOX1"));
        for (QObject *comp : {a, b, c}) {
            for (bool includeSelf : {false, true})
                QCOMPARE(CompCNNameExists(comp, &owner, includeSelf), CompNameExists(comp, &owner, includeSelf));
        }
        QCOMPARE(CompCNNameExists(a, &owner, false), b);
        QCOMPARE(CompCNNameExists(c, &owner, false), &owner);
        QCOMPARE(CompCNNameExists(a, nullptr, true), nullptr);
    }

    void nsCnNameIsTheNsNameWithItsDotsStripped()
    {
        QWidget form1;
        form1.setObjectName(QStringLiteral("Form1"));
        QWidget *button = ownedButton(&form1, "Button1");
        QWidget root;
        QCOMPARE(CompToNsCnName(button, &form1, &form1), QStringLiteral("Button1"));
        QCOMPARE(CompToNsCnName(button, &form1, &root), QStringLiteral("Form1.Button1"));
        QCOMPARE(CompToNsCnName(nullptr, &form1, &root), QString());
        QObject module;
        QCOMPARE(CompToNsCnName(button, &module, &root), QString());
        // A name with dots at both ends loses one at each end, as the path
        // does.
        button->setObjectName(QStringLiteral("..B.."));
        QCOMPARE(CompToNSName(button, &form1, &form1), QStringLiteral(".B."));
        QCOMPARE(CompToNsCnName(button, &form1, &form1), QStringLiteral("B"));
    }

    void nsCnNameToCompIsNsNameToComp()
    {
        QWidget form2;
        form2.setObjectName(QStringLiteral("Form2"));
        QWidget *button = ownedButton(&form2, "Button1");
        QWidget root;
        QObject *timer = ownedObject(&root, QStringLiteral("Timer1"));
        const QStringList paths = {QStringLiteral("Form2.Button1"), QStringLiteral("Form2"),
                                   QStringLiteral("Timer1"), QStringLiteral("Form2."),
                                   QStringLiteral("Nothing"), QString()};
        for (const QString &path : paths) {
            QCOMPARE(NsCnNameToComp(path, &root), NSNameToComp(path, &root));
            QCOMPARE(NsCnNameToComp(path, nullptr), NSNameToComp(path, nullptr));
        }
        QCOMPARE(NsCnNameToComp(QStringLiteral("Form2.Button1"), nullptr), button);
        QCOMPARE(NsCnNameToComp(QStringLiteral("timer1"), &root), timer);
    }

    // Dotted name paths

    void nsNameOfANilComponentIsEmpty()
    {
        QWidget form;
        QCOMPARE(CompToNSName(nullptr, &form, &form), QString());
        QCOMPARE(CompToNSName(nullptr, nullptr, nullptr), QString());
    }

    void nsNameOfABlankNameIsNoNameAndAnyOtherNameIsKeptUntrimmed()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        QWidget *button = ownedButton(&form, "   ");
        QCOMPARE(CompToNSName(button, &form, &form), QStringLiteral("[NoName]"));
        button->setObjectName(QStringLiteral(" Button1 "));
        QCOMPARE(CompToNSName(button, &form, &form), QStringLiteral(" Button1 "));
        QWidget root;
        QCOMPARE(CompToNSName(button, &form, &root), QStringLiteral("Form1. Button1 "));
    }

    void nsNameOfAComponentOnAnotherFormIsTheFormNameDotItsName()
    {
        QWidget form1;
        form1.setObjectName(QStringLiteral("Form1"));
        QWidget *button = ownedButton(&form1, "Button1");
        QWidget root;
        root.setObjectName(QStringLiteral("Form2"));
        QCOMPARE(CompToNSName(button, &form1, &root), QStringLiteral("Form1.Button1"));
        QCOMPARE(CompToNSName(button, &form1, nullptr), QStringLiteral("Form1.Button1"));
        // The owner is the one the caller names, not the component's own.
        QCOMPARE(CompToNSName(button, &root, &root), QStringLiteral("Button1"));
        QCOMPARE(CompToNSName(button, nullptr, nullptr), QStringLiteral("Button1"));
    }

    void nsNameLosesOneLeadingAndOneTrailingDot()
    {
        QWidget unnamedForm;
        QWidget *button = ownedButton(&unnamedForm, "Button1");
        QWidget root;
        // An unnamed form leaves a leading dot, which goes.
        QCOMPARE(CompToNSName(button, &unnamedForm, &root), QStringLiteral("Button1"));
        button->setObjectName(QStringLiteral("Button1."));
        QCOMPARE(CompToNSName(button, &unnamedForm, &unnamedForm), QStringLiteral("Button1"));
        button->setObjectName(QStringLiteral("..Button1.."));
        QCOMPARE(CompToNSName(button, &unnamedForm, &unnamedForm), QStringLiteral(".Button1."));
    }

    void nsNameToCompLooksUpAPlainNameWithinTheRoot()
    {
        QWidget root;
        root.setObjectName(QStringLiteral("Form1"));
        QWidget *button = ownedButton(&root, "Button1");
        QObject *timer = ownedObject(&root, QStringLiteral("Timer1"));
        QCOMPARE(NSNameToComp(QStringLiteral("Button1"), &root), button);
        QCOMPARE(NSNameToComp(QStringLiteral("TIMER1"), &root), timer);
        // The root's own name is no component of it.
        QCOMPARE(NSNameToComp(QStringLiteral("Form1"), &root), nullptr);
        // Without a root, a plain name is looked up among the application's.
        QCOMPARE(NSNameToComp(QStringLiteral("Button1"), nullptr), nullptr);
        QCOMPARE(NSNameToComp(QStringLiteral("Form1"), nullptr), &root);
    }

    void nsNameToCompGivesNilForUnknownNames()
    {
        QWidget form2;
        form2.setObjectName(QStringLiteral("Form2"));
        ownedButton(&form2, "Button1");
        QCOMPARE(NSNameToComp(QStringLiteral("Form9.Button1"), nullptr), nullptr);
        QCOMPARE(NSNameToComp(QStringLiteral("Form2.Button9"), nullptr), nullptr);
        QCOMPARE(NSNameToComp(QStringLiteral("Form2.Button1.Inner"), nullptr), nullptr);
        QCOMPARE(NSNameToComp(QStringLiteral(".Button1"), nullptr), nullptr);
        QCOMPARE(NSNameToComp(QStringLiteral("Button9"), &form2), nullptr);
        QCOMPARE(NSNameToComp(QString(), &form2), nullptr);
        QCOMPARE(NSNameToComp(QString(), nullptr), nullptr);
    }

    void nsNameToCompResolvesTheLeftOfEachDotAmongTheApplicationsComponents()
    {
        QWidget form1;
        form1.setObjectName(QStringLiteral("Form1"));
        QWidget form2;
        form2.setObjectName(QStringLiteral("Form2"));
        QWidget *button = ownedButton(&form2, "Button1");
        QWidget *panel = ownedButton(&form2, "Panel1");
        ownedObject(panel, QStringLiteral("Inner1"));
        // After the first dot the rest is a path again, whose first part is
        // a form's name, not a component of the part before it.
        QCOMPARE(NSNameToComp(QStringLiteral("Form1.Form2.Button1"), nullptr), button);
        QCOMPARE(NSNameToComp(QStringLiteral("Form1.Form2.Button1"), &form2), button);
        QCOMPARE(NSNameToComp(QStringLiteral("Form2.Panel1.Inner1"), nullptr), nullptr);
        QCOMPARE(NSNameToComp(QStringLiteral("Form9.Form2.Button1"), nullptr), nullptr);
    }

    void applicationComponentsAreTheApplicationsOwnThenUnownedWindows()
    {
        auto *owned = named(new QObject, "Settings1");
        InsertComponent(qApp, owned);
        auto ownedWindow = std::make_unique<QWidget>();
        ownedWindow->setObjectName(QStringLiteral("Form3"));
        InsertComponent(qApp, ownedWindow.get());
        auto freeWindow = std::make_unique<QWidget>();
        freeWindow->setObjectName(QStringLiteral("Form4"));
        QWidget ownerForm;
        ownerForm.setObjectName(QStringLiteral("Owner1"));
        auto *ownedElsewhere = named(new QWidget, "Form5");
        InsertComponent(&ownerForm, ownedElsewhere);

        const QList<QObject *> all = ApplicationComponents();
        QCOMPARE(all.mid(0, 2), QList<QObject *>({owned, ownedWindow.get()}));
        QCOMPARE(all.count(ownedWindow.get()), 1);
        QVERIFY(all.contains(freeWindow.get()));
        QVERIFY(all.contains(&ownerForm));
        QVERIFY(!all.contains(ownedElsewhere));
        QCOMPARE(all.size(), 2 + QApplication::topLevelWidgets().size() - 2);

        QCOMPARE(NSNameToComp(QStringLiteral("Settings1"), nullptr), owned);
        QCOMPARE(NSNameToComp(QStringLiteral("Form3"), nullptr), ownedWindow.get());
        QCOMPARE(NSNameToComp(QStringLiteral("Form5"), nullptr), nullptr);
        QCOMPARE(NSNameToComp(QStringLiteral("Owner1.Form5"), nullptr), ownedElsewhere);
        delete owned;
    }

    void applicationComponentsComeBeforeAnUnownedWindowOfTheSameName()
    {
        auto *ownedFirst = named(new QObject, "Form6");
        InsertComponent(qApp, ownedFirst);
        QWidget window;
        window.setObjectName(QStringLiteral("Form6"));
        QCOMPARE(NSNameToComp(QStringLiteral("form6"), nullptr), ownedFirst);
        // The form look-up skips what is not a form.
        QCOMPARE(CnNameToForm(QStringLiteral("form6")), &window);
        delete ownedFirst;
        QCOMPARE(NSNameToComp(QStringLiteral("form6"), nullptr), &window);
    }

    void nsNameToNsCnNameWritesTheFoundComponentAsSeenFromTheRoot()
    {
        QWidget form2;
        form2.setObjectName(QStringLiteral("Form2"));
        QWidget *button = ownedButton(&form2, "Button1");
        QWidget root;
        root.setObjectName(QStringLiteral("Form1"));
        ownedObject(&root, QStringLiteral("Timer1"));
        QCOMPARE(NsNameToNsCnName(QStringLiteral("form2.button1"), &root), QStringLiteral("Form2.Button1"));
        QCOMPARE(NsNameToNsCnName(QStringLiteral("Form2.Button1"), &form2), QStringLiteral("Button1"));
        QCOMPARE(NsNameToNsCnName(QStringLiteral("TIMER1"), &root), QStringLiteral("Timer1"));
        QCOMPARE(NsNameToNsCnName(QStringLiteral("Form2.Nothing"), &root), QString());
        QCOMPARE(NsNameToNsCnName(QStringLiteral("Nothing"), &root), QString());
        // A form found by name has no owner: it is seen from no root only.
        QCOMPARE(NsNameToNsCnName(QStringLiteral("Form2"), nullptr), QStringLiteral("Form2"));
        QCOMPARE(NsNameToNsCnName(QStringLiteral("Form2"), &root), QString());
        button->setObjectName(QString());
        QCOMPARE(NsNameToNsCnName(QStringLiteral("Form2.Button1"), &root), QString());
    }

    void nsCnNameToNsNameWritesTheFoundComponentAsSeenFromTheRoot()
    {
        QWidget form2;
        form2.setObjectName(QStringLiteral("Form2"));
        ownedButton(&form2, "Button1");
        QWidget root;
        root.setObjectName(QStringLiteral("Form1"));
        QObject *timer = ownedObject(&root, QStringLiteral("Timer1"));
        QCOMPARE(NsCnNameToNsName(QStringLiteral("FORM2.BUTTON1"), &root), QStringLiteral("Form2.Button1"));
        QCOMPARE(NsCnNameToNsName(QStringLiteral("Form2.Button1"), &form2), QStringLiteral("Button1"));
        QCOMPARE(NsCnNameToNsName(QStringLiteral("timer1"), &root), QStringLiteral("Timer1"));
        QCOMPARE(NsCnNameToNsName(QStringLiteral("Form2."), &root), QString());
        QCOMPARE(NsCnNameToNsName(QStringLiteral("Nothing"), &root), QString());
        timer->setObjectName(QStringLiteral("Clock1"));
        QCOMPARE(NsCnNameToNsName(QStringLiteral("Form1.Timer1"), &root), QString());
        QCOMPARE(NsCnNameToNsName(QStringLiteral("Form1.Clock1"), &root), QStringLiteral("Clock1"));
    }

    void cnNameToFormFindsAWindowOfThatNameIgnoringCase()
    {
        QWidget form1;
        form1.setObjectName(QStringLiteral("Form1"));
        QWidget form2;
        form2.setObjectName(QStringLiteral("Form2"));
        QCOMPARE(CnNameToForm(QStringLiteral("FORM2")), &form2);
        QCOMPARE(CnNameToForm(QStringLiteral("Form1")), &form1);
        QCOMPARE(CnNameToForm(QStringLiteral("Form3")), nullptr);
        QCOMPARE(CnNameToForm(QString()), nullptr);
    }

    void cnNameToFormSkipsComponentsThatAreNoForms()
    {
        auto *module = named(new QObject, "Module1");
        InsertComponent(qApp, module);
        auto *inner = named(new QWidget, "Inner1");
        auto holder = std::make_unique<QWidget>();
        inner->setParent(holder.get());
        InsertComponent(qApp, inner);
        QCOMPARE(NSNameToComp(QStringLiteral("Module1"), nullptr), module);
        QCOMPARE(NSNameToComp(QStringLiteral("Inner1"), nullptr), inner);
        QCOMPARE(CnNameToForm(QStringLiteral("Module1")), nullptr);
        QCOMPARE(CnNameToForm(QStringLiteral("Inner1")), nullptr);
        inner->setParent(nullptr);
        QCOMPARE(CnNameToForm(QStringLiteral("Inner1")), inner);
        delete inner;
        delete module;
    }

    // Text helpers

    void identAndSeperatorCharsetsHoldExactlyTheirCharacters()
    {
        QCOMPARE(IdentCharset.size(), 63);
        QCOMPARE(SeperatorCharset.size(), 8);
        for (int code = 0; code < 0x3000; ++code) {
            const QChar c(code);
            const bool ident = (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z')
                || (c >= u'a' && c <= u'z') || c == u'_';
            const bool separator = QStringLiteral(" (),[]{}").contains(c);
            QCOMPARE(IsIdentChar(c), ident);
            QCOMPARE(IsSeperatorChar(c), separator);
            QCOMPARE(IdentCharset.contains(c), ident);
            QCOMPARE(SeperatorCharset.contains(c), separator);
        }
    }

    void mainStrOfADetailEndsAtTheFirstSeparator()
    {
        QCOMPARE(ExtractMainStrFromDetail(QStringLiteral("Font (QFont)")), QStringLiteral("Font"));
        QCOMPARE(ExtractMainStrFromDetail(QStringLiteral("Alignment[AlignLeft]")), QStringLiteral("Alignment"));
        QCOMPARE(ExtractMainStrFromDetail(QStringLiteral("a,b")), QStringLiteral("a"));
        QCOMPARE(ExtractMainStrFromDetail(QStringLiteral("x}y")), QStringLiteral("x"));
        QCOMPARE(ExtractMainStrFromDetail(QStringLiteral("Size.Width=3")), QStringLiteral("Size.Width=3"));
        QCOMPARE(ExtractMainStrFromDetail(QString()), QString());
    }

    void mainStrOfADetailStartingWithASeparatorIsEmpty()
    {
        for (const QChar c : QStringLiteral(" (),[]{}"))
            QCOMPARE(ExtractMainStrFromDetail(c + QStringLiteral("abc")), QString());
        QCOMPARE(ExtractMainStrFromDetail(QStringLiteral("[a, b]")), QString());
    }

    void strPairValueWithoutEqualsIsTheWholeText()
    {
        QCOMPARE(GetStrPairValue(QStringLiteral("abc"), false), QStringLiteral("abc"));
        QCOMPARE(GetStrPairValue(QStringLiteral("abc"), true), QStringLiteral("abc"));
        QCOMPARE(GetStrPairValue(QString(), false), QString());
    }

    // Classes and lists

    void commonParentClassIsTheNearestSharedAncestor()
    {
        QCOMPARE(QPushButton::staticMetaObject.superClass(), &QAbstractButton::staticMetaObject);
        QCOMPARE(QLabel::staticMetaObject.superClass(), &QFrame::staticMetaObject);
        QCOMPARE(GetCommonParentClass(&QPushButton::staticMetaObject, &QLabel::staticMetaObject),
                 &QWidget::staticMetaObject);
        QCOMPARE(GetCommonParentClass(&QLabel::staticMetaObject, &QPushButton::staticMetaObject),
                 &QWidget::staticMetaObject);
        QCOMPARE(GetCommonParentClass(&QPushButton::staticMetaObject, &QAbstractButton::staticMetaObject),
                 &QAbstractButton::staticMetaObject);
        QCOMPARE(GetCommonParentClass(&QAbstractButton::staticMetaObject, &QPushButton::staticMetaObject),
                 &QAbstractButton::staticMetaObject);
        QCOMPARE(GetCommonParentClass(&QLabel::staticMetaObject, &QLabel::staticMetaObject),
                 &QLabel::staticMetaObject);
        QCOMPARE(GetCommonParentClass(&QTimer::staticMetaObject, &QLabel::staticMetaObject),
                 &QObject::staticMetaObject);
    }

    void commonParentClassWithANilClassIsNil()
    {
        QCOMPARE(GetCommonParentClass(nullptr, &QLabel::staticMetaObject), nullptr);
        QCOMPARE(GetCommonParentClass(&QLabel::staticMetaObject, nullptr), nullptr);
        QCOMPARE(GetCommonParentClass(nullptr, nullptr), nullptr);
        // Gadgets share no QObject root.
        QCOMPARE(GetCommonParentClass(&QLabel::staticMetaObject, &Qt::staticMetaObject), nullptr);
    }

    void objectsParentClassIsNilForAnEmptyListOrANilFirstItem()
    {
        QLabel label;
        QCOMPARE(GetObjectsParentClass({}), nullptr);
        QCOMPARE(GetObjectsParentClass({nullptr}), nullptr);
        QCOMPARE(GetObjectsParentClass({nullptr, &label}), nullptr);
    }

    void objectsParentClassFoldsOverTheItemsSkippingNils()
    {
        QPushButton button;
        QPushButton button2;
        QLabel label;
        QTimer timer;
        QCOMPARE(GetObjectsParentClass({&button}), &QPushButton::staticMetaObject);
        QCOMPARE(GetObjectsParentClass({&button, nullptr, &button2}), &QPushButton::staticMetaObject);
        QCOMPARE(GetObjectsParentClass({&button, nullptr, &label}), &QWidget::staticMetaObject);
        QCOMPARE(GetObjectsParentClass({&label, &button, nullptr, &timer}), &QObject::staticMetaObject);
    }

    void controlCountInCompListCountsTheWidgets()
    {
        QWidget form;
        auto *button = new QPushButton(&form);
        auto *label = new QLabel(&form);
        QTimer timer;
        QObject plain;
        QCOMPARE(ControlCountInCompList(TComponentList()), 0);
        QCOMPARE(ControlCountInCompList(TComponentList({&timer, &plain})), 0);
        QCOMPARE(ControlCountInCompList(TComponentList({&timer, button, &plain, label, &form})), 3);
        TComponentList list({button, &timer, label});
        delete label;
        QCOMPARE(ControlCountInCompList(list), 1);
    }

    void removeComponentFromCompListKeepsTheWidgetsInOrderAndFreesNothing()
    {
        QWidget form;
        auto *button = new QPushButton(&form);
        auto *label = new QLabel(&form);
        auto *timer = new QTimer(&form);
        auto *plain = new QObject(&form);
        TComponentList list({timer, button, plain, plain, label, timer});
        RemoveComponentFromCompList(list);
        QCOMPARE(list.toList(), QList<QObject *>({button, label}));
        QCOMPARE(timer->parent(), &form);
        QCOMPARE(plain->parent(), &form);
        TComponentList empty;
        RemoveComponentFromCompList(empty);
        QCOMPARE(empty.Count(), 0);
    }

    // Cloning

    void cloneCopiesTextAndGeometryBetweenComponentsOfTheSameClass()
    {
        QWidget form;
        auto *source = named(new QPushButton(QStringLiteral("OK"), &form), "Source1");
        source->setGeometry(10, 20, 90, 30);
        source->setEnabled(false);
        auto *dest = new QPushButton(&form);
        dest->setGeometry(200, 200, 50, 50);
        CloneComponent(source, dest);
        QCOMPARE(dest->text(), QStringLiteral("OK"));
        QCOMPARE(dest->geometry(), QRect(10, 20, 90, 30));
        QVERIFY(!dest->isEnabled());
        QCOMPARE(dest->parentWidget(), &form);
        QCOMPARE(source->text(), QStringLiteral("OK"));
        QCOMPARE(source->geometry(), QRect(10, 20, 90, 30));
    }

    void cloneLeavesAComponentOfAnotherClassUntouched()
    {
        QWidget form;
        auto *source = named(new QPushButton(QStringLiteral("OK"), &form), "Source1");
        source->setGeometry(10, 20, 90, 30);
        auto *dest = named(new QLabel(QStringLiteral("Label"), &form), "Label1");
        dest->setGeometry(200, 200, 50, 50);
        CloneComponent(source, dest);
        QCOMPARE(dest->text(), QStringLiteral("Label"));
        QCOMPARE(dest->geometry(), QRect(200, 200, 50, 50));
        QCOMPARE(dest->objectName(), QStringLiteral("Label1"));
        // A subclass is another class too, both ways.
        auto *fancy = new FancyButton;
        fancy->setParent(&form);
        fancy->setText(QStringLiteral("D"));
        CloneComponent(source, fancy);
        QCOMPARE(fancy->text(), QStringLiteral("D"));
        CloneComponent(fancy, source);
        QCOMPARE(source->text(), QStringLiteral("OK"));
    }

    void cloneIntoASiblingOfTheSameOwnerIsRefusedAndLeavesItAsItWas()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        auto *source = named(new QPushButton(QStringLiteral("OK"), &form), "Button1");
        auto *dest = named(new QPushButton(QStringLiteral("Cancel"), &form), "Button2");
        InsertComponent(&form, source);
        InsertComponent(&form, dest);
        dest->setGeometry(200, 200, 50, 50);
        QVERIFY_THROWS_EXCEPTION(EComponentError, CloneComponent(source, dest));
        QCOMPARE(dest->objectName(), QStringLiteral("Button2"));
        QCOMPARE(dest->text(), QStringLiteral("Cancel"));
        QCOMPARE(dest->geometry(), QRect(200, 200, 50, 50));
        QCOMPARE(FindComponent(&form, QStringLiteral("Button2")), dest);
        QCOMPARE(ComponentCount(&form), 2);
    }

    void cloneOfAComponentOntoItselfChangesNothing()
    {
        QPushButton button(QStringLiteral("OK"));
        button.setObjectName(QStringLiteral("Button1"));
        CloneComponent(&button, &button);
        QCOMPARE(button.text(), QStringLiteral("OK"));
        QCOMPARE(button.objectName(), QStringLiteral("Button1"));
    }

    void cloneWithANilSideDoesNothing()
    {
        QPushButton button(QStringLiteral("OK"));
        CloneComponent(nullptr, &button);
        CloneComponent(&button, nullptr);
        CloneComponent(nullptr, nullptr);
        QCOMPARE(button.text(), QStringLiteral("OK"));
    }
};

QTEST_MAIN(tst_VhoSysUtils)
#include "tst_vhosysutils.moc"
