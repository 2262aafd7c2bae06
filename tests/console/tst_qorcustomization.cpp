// SPDX-License-Identifier: MIT
// Users' customizations of an application's form as deltas: the delta of a
// design over the form as built, applied to the same form and to a later
// version of it by each merge rule, locks, the delta's words, its bytes
// (every registered class, and damaged bytes), and a delta kept step by step.
#include "console/qorcustomization.h"
#include "foundation/qorclasses.h"
#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "foundation/qorstream.h"
#include "harness/qorguitest.h"
#include "harness/qormutator.h"

#include <QCheckBox>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMetaProperty>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include <limits>
#include <memory>

namespace {

// The application's form in its first version, or in its second, which
// moves Button1 and gives it a new caption, adds Check1, removes Group1
// (with Label1 on it), renames Button2 to OkButton and makes Info1 a button.
struct Form
{
    std::unique_ptr<QWidget> stage = std::make_unique<QWidget>();

    explicit Form(int Version = 1)
    {
        stage->setObjectName(QStringLiteral("Form1"));
        stage->resize(600, 400);
        auto *button1 = add<QPushButton>("Button1", QRect(10, 10, 75, 23));
        button1->setText(Version == 1 ? QStringLiteral("OK") : QStringLiteral("Okay"));
        if (Version == 2)
            button1->move(10, 300);
        add<QPushButton>(Version == 1 ? "Button2" : "OkButton", QRect(100, 10, 75, 23))->setText(QStringLiteral("Cancel"));
        add<QLineEdit>("Edit1", QRect(10, 50, 120, 23));
        if (Version == 1) {
            auto *group = add<QGroupBox>("Group1", QRect(10, 90, 200, 120));
            add<QLabel>("Label1", QRect(10, 20, 80, 20), group)->setText(QStringLiteral("Name"));
            add<QLabel>("Info1", QRect(250, 10, 100, 20))->setText(QStringLiteral("Info"));
        } else {
            add<QPushButton>("Info1", QRect(250, 10, 100, 20))->setText(QStringLiteral("Info"));
            add<QCheckBox>("Check1", QRect(300, 300, 100, 20));
        }
        auto *tabs = add<QTabWidget>("Tabs1", QRect(250, 50, 200, 150));
        auto *page = new QWidget;
        page->setObjectName(QStringLiteral("Page1"));
        tabs->addTab(page, QStringLiteral("First"));
        InsertComponent(stage.get(), page);
        add<QLineEdit>("Edit2", QRect(5, 5, 80, 23), page);
        auto *timer = new QTimer;
        timer->setObjectName(QStringLiteral("Timer1"));
        timer->setInterval(500);
        InsertComponent(stage.get(), timer);
    }

    template<class T>
    T *add(const char *Name, const QRect &R, QWidget *Parent = nullptr)
    {
        auto *w = new T(Parent ? Parent : stage.get());
        w->setObjectName(QLatin1String(Name));
        w->setGeometry(R);
        InsertComponent(stage.get(), w);
        return w;
    }

    template<class T = QWidget>
    T *find(const char *Name) const
    {
        return qobject_cast<T *>(FindComponent(stage.get(), QLatin1String(Name)));
    }

    QByteArray records() const { return TQorCustomization::FormRecords(stage.get()); }
};

// The first property (or place) in which the components of two designs
// differ, in words; empty when none does.
QString differingProperty(QWidget *A, QWidget *B)
{
    const QList<QObject *> as = ComponentList(A);
    if (as.size() != ComponentCount(B))
        return QStringLiteral("%1 components against %2").arg(as.size()).arg(ComponentCount(B));
    for (QObject *a : as) {
        QObject *b = FindComponent(B, a->objectName());
        if (!b || a->metaObject() != b->metaObject())
            return QStringLiteral("%1 missing or of another class").arg(a->objectName());
        const auto *wa = qobject_cast<QWidget *>(a);
        const auto *wb = qobject_cast<QWidget *>(b);
        if (wa && (wa->parentWidget()->objectName() != wb->parentWidget()->objectName()))
            return QStringLiteral("%1 has another parent").arg(a->objectName());
        const QMetaObject *mo = a->metaObject();
        for (int i = 0; i < mo->propertyCount(); ++i) {
            const QMetaProperty p = mo->property(i);
            // Objects a component keeps (a text edit's document) are its
            // own in each design.
            if (!p.isStored() || !p.isWritable() || !p.metaType().isEqualityComparable()
                || (p.metaType().flags() & QMetaType::PointerToQObject))
                continue;
            if (p.read(a) != p.read(b))
                return QStringLiteral("%1.%2").arg(a->objectName(), QLatin1String(p.name()));
        }
    }
    return QString();
}

bool hasIssue(const QList<TQorCustomizationIssue> &Issues, const QString &Path, const QByteArray &Property = {})
{
    for (const TQorCustomizationIssue &issue : Issues) {
        if (issue.Path.compare(Path, Qt::CaseInsensitive) == 0 && issue.Property == Property && !issue.Text.isEmpty())
            return true;
    }
    return false;
}

QString issuesText(const QList<TQorCustomizationIssue> &Issues)
{
    QStringList lines;
    for (const TQorCustomizationIssue &issue : Issues)
        lines.append(issue.Text);
    return lines.join(QLatin1Char('\n'));
}

// The user's work on a form of the first version: a move, a caption, a
// label added into the group, a deletion, a control moved onto the tab's
// page, a new stacking and owner order, a new tab text and a timer's
// interval.
void customize(Form &F)
{
    F.find("Button1")->setGeometry(20, 30, 90, 25);
    F.find<QPushButton>("Button1")->setText(QStringLiteral("Go"));
    auto *label = new QLabel(F.find("Group1"));
    label->setObjectName(QStringLiteral("Label3"));
    label->setGeometry(10, 60, 90, 20);
    label->setText(QStringLiteral("Added"));
    InsertComponent(F.stage.get(), label);
    label->show();
    delete F.find("Info1");
    auto *edit1 = F.find("Edit1");
    edit1->setParent(F.find("Page1"));
    edit1->move(5, 40);
    edit1->show();
    F.find("Button2")->lower();
    SetComponentIndex(F.find<QObject>("Timer1"), 0);
    F.find<QTabWidget>("Tabs1")->setTabText(0, QStringLiteral("Main"));
    F.find<QTimer>("Timer1")->setInterval(750);
}

// The user's changes made on the first version, taken as a delta and
// applied to the second.
struct OnVersion2
{
    Form user;
    Form version2{2};
    QList<TQorCustomizationIssue> issues;

    template<typename Change>
    explicit OnVersion2(Change Changes)
    {
        const QByteArray base = user.records();
        Changes(user);
        issues = TQorCustomization::Diff(base, user.stage.get()).Apply(version2.stage.get());
    }
};

// A stored value other than the fresh instance's for each of the class's
// own plain properties; how many were changed. A value equal to the fresh
// instance's is not written: the component stream leaves such a value out
// even where another property changed it (a group box made checkable checks
// itself).
int giveNonDefaults(QObject *O)
{
    const QMetaObject *mo = O->metaObject();
    const std::unique_ptr<QObject> fresh(CreateRegisteredComponent(mo));
    const int from = O->isWidgetType() ? QWidget::staticMetaObject.propertyCount() : QObject::staticMetaObject.propertyCount();
    int changed = 0;
    for (int i = from; i < mo->propertyCount(); ++i) {
        const QMetaProperty p = mo->property(i);
        if (!p.isReadable() || !p.isWritable() || !p.isStored() || !p.isDesignable() || p.isEnumType())
            continue;
        const QVariant before = p.read(O);
        QVariant value;
        switch (before.metaType().id()) {
        case QMetaType::Bool:
            value = !before.toBool();
            break;
        case QMetaType::Int:
            value = before.toInt() == std::numeric_limits<int>::max() ? before.toInt() - 1 : before.toInt() + 1;
            break;
        case QMetaType::QString:
            if (QByteArray(p.name()).contains("ormat") || QByteArray(p.name()).contains("Mask")
                || QByteArray(p.name()) == "html" || QByteArray(p.name()) == "markdown" || QByteArray(p.name()) == "styleSheet")
                continue;
            value = QStringLiteral("Text of %1").arg(QLatin1String(p.name()));
            break;
        default:
            continue;
        }
        if (value == p.read(fresh.get()))
            continue;
        if (p.write(O, value) && p.read(O) == value)
            ++changed;
        else
            p.write(O, before);
    }
    if (auto *w = qobject_cast<QWidget *>(O))
        w->setToolTip(QStringLiteral("Tip of %1").arg(O->objectName()));
    return changed;
}

} // namespace

class tst_QorCustomization : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QCOMPARE(QorGuiTest::liveTopLevelWidgets(), 0); }

    // Edge cases worth testing

    void anUnchangedFormGivesAnEmptyDelta()
    {
        Form form;
        const TQorCustomization delta = TQorCustomization::Diff(form.records(), form.stage.get());
        QVERIFY2(delta.IsEmpty(), qPrintable(delta.Describe().join(QLatin1Char('\n'))));
        QVERIFY(delta.Apply(form.stage.get()).isEmpty());
    }

    void bytesOfAnotherKindAreRefused_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("a component record") << ComponentToBytes(Form().stage.get());
        QTest::newRow("a later version") << QByteArray("QORC\0\0\0\x02\0\0\0\0", 12);
        QTest::newRow("junk after the delta") << (TQorCustomization().ToBytes() + "x");
        QTest::newRow("a count past the end") << QByteArray("QORC\0\0\0\x01\x7f\xff\xff\xff", 12);
    }

    void bytesOfAnotherKindAreRefused()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY_THROWS_EXCEPTION(EReadError, TQorCustomization::FromBytes(bytes));
    }

    void aThousandDamagedDeltasNeverCrashAndARefusedOneChangesNothing()
    {
        Form user;
        const QByteArray base = user.records();
        customize(user);
        const QByteArray seed = TQorCustomization::Diff(base, user.stage.get()).ToBytes();
        Form target;
        const QByteArray before = target.records();
        QElapsedTimer clock;
        clock.start();
        int refused = 0;
        int applied = 0;
        for (int i = 0; i < 1000; ++i) {
            const QByteArray damaged = QorMutator::mutate(seed, 27, i);
            TQorCustomization delta;
            try {
                delta = TQorCustomization::FromBytes(damaged);
            } catch (const EReadError &) {
                ++refused;
                QVERIFY2(target.records() == before, QorMutator::where(27, i, "delta").constData());
                continue;
            }
            // What reads is applied onto a form of its own, and must not end
            // the process.
            Form other;
            delta.Apply(other.stage.get());
            delta.Describe();
            ++applied;
        }
        QVERIFY(refused > 500);
        QVERIFY(applied > 0);
        QCOMPARE(target.records(), before);
        QVERIFY2(clock.elapsed() < 20000, qPrintable(QString::number(clock.elapsed())));
    }

    void aComponentThatCannotBeMadeIsNotAddedAtAll()
    {
        Form form;
        const QString text = ComponentBinaryToText(ComponentToBytes(form.find("Button1")))
                                 .replace(QStringLiteral("\"QPushButton\""), QStringLiteral("\"TNotRegisteredButton\""))
                                 .replace(QStringLiteral("\"Button1\""), QStringLiteral("\"Odd1\""));
        TQorCustomization delta;
        delta.AddComponent(QStringLiteral("Odd1"), ComponentTextToBinary(text), QStringLiteral("Group1"));
        delta.SetPropertyValue(QStringLiteral("Edit1"), QStringLiteral("QLineEdit"), "text", QStringLiteral("kept"));
        const int children = form.find("Group1")->children().size();
        const int count = ComponentCount(form.stage.get());
        const QList<TQorCustomizationIssue> issues = delta.Apply(form.stage.get());
        QVERIFY(hasIssue(issues, QStringLiteral("Odd1")));
        QCOMPARE(ComponentCount(form.stage.get()), count);
        QCOMPARE(form.find("Group1")->children().size(), children);
        QCOMPARE(form.find<QLineEdit>("Edit1")->text(), QStringLiteral("kept"));
    }

    // The other rules

    void theDeltaAppliedToTheUnchangedFormGivesTheUsersDesign()
    {
        Form user;
        const QByteArray base = user.records();
        customize(user);
        const TQorCustomization delta = TQorCustomization::FromBytes(TQorCustomization::Diff(base, user.stage.get()).ToBytes());
        QVERIFY(!delta.IsEmpty());
        Form fresh;
        const QList<TQorCustomizationIssue> issues = delta.Apply(fresh.stage.get());
        QVERIFY2(issues.isEmpty(), qPrintable(issuesText(issues)));
        const QString difference = differingProperty(user.stage.get(), fresh.stage.get());
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
        QCOMPARE(ComponentBinaryToText(fresh.records()), ComponentBinaryToText(user.records()));
        QCOMPARE(fresh.records(), user.records());
        // Taken again, the delta of the applied form is the same delta.
        QCOMPARE(TQorCustomization::Diff(base, fresh.stage.get()).ToBytes(), delta.ToBytes());
    }

    void pagesAndHiddenControlsComeBackExactly()
    {
        Form user;
        const QByteArray base = user.records();
        auto *tabs = user.find<QTabWidget>("Tabs1");
        auto *page2 = new QWidget;
        page2->setObjectName(QStringLiteral("Page2"));
        tabs->insertTab(0, page2, QStringLiteral("Second"));
        InsertComponent(user.stage.get(), page2);
        tabs->setTabToolTip(1, QStringLiteral("The first page"));
        tabs->setTabEnabled(1, false);
        // A control taken off a page onto the new page, one off the form
        // onto the page, and one hidden on purpose.
        auto *edit2 = user.find("Edit2");
        edit2->setParent(page2);
        edit2->show();
        auto *button2 = user.find("Button2");
        button2->setParent(page2);
        button2->show();
        user.find("Edit1")->hide();
        const TQorCustomization delta = TQorCustomization::FromBytes(TQorCustomization::Diff(base, user.stage.get()).ToBytes());
        Form fresh;
        const QList<TQorCustomizationIssue> issues = delta.Apply(fresh.stage.get());
        QVERIFY2(issues.isEmpty(), qPrintable(issuesText(issues)));
        QCOMPARE(ComponentBinaryToText(fresh.records()), ComponentBinaryToText(user.records()));
        QCOMPARE(fresh.records(), user.records());
        auto *freshTabs = fresh.find<QTabWidget>("Tabs1");
        QCOMPARE(freshTabs->count(), 2);
        QCOMPARE(freshTabs->widget(0)->objectName(), QStringLiteral("Page2"));
        QCOMPARE(freshTabs->tabText(0), QStringLiteral("Second"));
        QVERIFY(!freshTabs->isTabEnabled(1));
        QVERIFY(fresh.find("Edit1")->isHidden());
    }

    void reorderingsOfManySiblingsComeBackExactly()
    {
        Form user;
        QList<QWidget *> buttons;
        for (int i = 0; i < 40; ++i)
            buttons.append(user.add<QPushButton>(qPrintable(QStringLiteral("Many%1").arg(i)), QRect(i * 5, 200, 30, 20)));
        const QByteArray base = user.records();
        // A stacking order and an owner order far from the first.
        for (int i = 0; i < 40; i += 3)
            buttons.at(i)->raise();
        for (int i = 1; i < 40; i += 7)
            buttons.at(i)->lower();
        buttons.at(20)->stackUnder(buttons.at(5));
        for (int i = 0; i < 40; i += 5)
            SetComponentIndex(buttons.at(i), 2);
        const TQorCustomization delta = TQorCustomization::Diff(base, user.stage.get());
        Form fresh;
        for (int i = 0; i < 40; ++i)
            fresh.add<QPushButton>(qPrintable(QStringLiteral("Many%1").arg(i)), QRect(i * 5, 200, 30, 20));
        QVERIFY(delta.Apply(fresh.stage.get()).isEmpty());
        QCOMPARE(fresh.records(), user.records());
        // Only those out of order were placed.
        QVERIFY(delta.ComponentCount() < 40);
    }

    void everyRegisteredClassTravelsInADelta()
    {
        Form user;
        const QByteArray base = user.records();
        int column = 0;
        int changed = 0;
        int classes = 0;
        for (const QMetaObject *mo : RegisteredClasses()) {
            std::unique_ptr<QObject> made(CreateRegisteredComponent(mo));
            if (IsQorDesignObject(made.get()))
                continue;
            QObject *o = made.release();
            o->setObjectName(QStringLiteral("%1_1").arg(QLatin1String(mo->className())));
            if (auto *w = qobject_cast<QWidget *>(o)) {
                w->setParent(user.stage.get());
                w->setGeometry(10 + (column % 6) * 90, 10 + (column / 6) * 50, 80, 40);
                ++column;
            }
            InsertComponent(user.stage.get(), o);
            changed += giveNonDefaults(o);
            ++classes;
        }
        QVERIFY(classes >= 30);
        QVERIFY(changed > classes * 2);
        // The added components, then the same ones changed again as base
        // components of the form.
        const TQorCustomization added = TQorCustomization::FromBytes(TQorCustomization::Diff(base, user.stage.get()).ToBytes());
        Form fresh;
        QVERIFY(added.Apply(fresh.stage.get()).isEmpty());
        QCOMPARE(ComponentBinaryToText(fresh.records()), ComponentBinaryToText(user.records()));
        QCOMPARE(fresh.records(), user.records());

        const QByteArray second = user.records();
        for (QObject *o : ComponentList(user.stage.get()))
            giveNonDefaults(o);
        const TQorCustomization changes = TQorCustomization::FromBytes(TQorCustomization::Diff(second, user.stage.get()).ToBytes());
        QVERIFY(changes.ComponentCount() >= classes);
        QVERIFY(changes.Apply(fresh.stage.get()).isEmpty());
        QCOMPARE(fresh.records(), user.records());
        const QString difference = differingProperty(user.stage.get(), fresh.stage.get());
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }

    void aPropertyTheUserChangedWinsOverTheNewDefault()
    {
        const OnVersion2 merged(customize);
        const Form &version2 = merged.version2;
        QCOMPARE(version2.find("Button1")->geometry(), QRect(20, 30, 90, 25));
        QCOMPARE(version2.find<QPushButton>("Button1")->text(), QStringLiteral("Go"));
        // What the user left alone takes the new version's value.
        QCOMPARE(version2.find<QPushButton>("OkButton")->text(), QStringLiteral("Cancel"));
    }

    void changesToAComponentTheNewVersionRemovedAreReportedOneByOne()
    {
        const OnVersion2 merged([](Form &user) {
            user.find<QLabel>("Label1")->setText(QStringLiteral("Full name"));
            user.find("Label1")->resize(120, 20);
        });
        const QList<TQorCustomizationIssue> &issues = merged.issues;
        const Form &version2 = merged.version2;
        QVERIFY(hasIssue(issues, QStringLiteral("Label1"), "text"));
        QVERIFY(hasIssue(issues, QStringLiteral("Label1"), "geometry"));
        QCOMPARE(issues.size(), 2);
        QVERIFY(!version2.find("Label1"));
    }

    void aComponentTheNewVersionAddedStaysWhereItWasPut()
    {
        const OnVersion2 merged(customize);
        const Form &version2 = merged.version2;
        auto *check = version2.find("Check1");
        QVERIFY(check);
        QCOMPARE(check->geometry(), QRect(300, 300, 100, 20));
        QCOMPARE(check->parentWidget(), version2.stage.get());
    }

    void aUserAddedComponentWhoseParentIsGoneGoesToTheForm()
    {
        const OnVersion2 merged(customize); // adds Label3 on Group1
        const QList<TQorCustomizationIssue> &issues = merged.issues;
        const Form &version2 = merged.version2;
        auto *label = version2.find<QLabel>("Label3");
        QVERIFY(label);
        QCOMPARE(label->parentWidget(), version2.stage.get());
        QCOMPARE(label->text(), QStringLiteral("Added"));
        QCOMPARE(Owner(label), version2.stage.get());
        QVERIFY(hasIssue(issues, QStringLiteral("Label3")));
    }

    void aUserAddedComponentWhoseNameIsTakenGetsAUniqueName()
    {
        const OnVersion2 merged([](Form &user) {
            user.add<QCheckBox>("Check1", QRect(5, 350, 90, 20))->setText(QStringLiteral("Mine"));
        });
        const QList<TQorCustomizationIssue> &issues = merged.issues;
        const Form &version2 = merged.version2;
        QVERIFY(hasIssue(issues, QStringLiteral("Check1")));
        QCOMPARE(version2.find<QCheckBox>("Check1")->text(), QString());
        QCOMPARE(version2.find<QCheckBox>("Check2")->text(), QStringLiteral("Mine"));
        QCOMPARE(version2.find("Check2")->geometry(), QRect(5, 350, 90, 20));
    }

    void aRenamedComponentWhoseNameIsTakenGetsAUniqueName()
    {
        TQorCustomization delta;
        delta.RenameComponent(QStringLiteral("Button1"), QStringLiteral("OkButton"));
        delta.SetPropertyValue(QStringLiteral("OkButton"), QStringLiteral("QPushButton"), "text", QStringLiteral("Yes"));
        // On the first version the name is free.
        Form version1;
        QVERIFY(delta.Apply(version1.stage.get()).isEmpty());
        QCOMPARE(version1.find<QPushButton>("OkButton")->text(), QStringLiteral("Yes"));
        // The second version took it for another button.
        Form version2(2);
        auto *button1 = version2.find("Button1");
        const QList<TQorCustomizationIssue> issues = delta.Apply(version2.stage.get());
        QVERIFY(hasIssue(issues, QStringLiteral("Button1")));
        QCOMPARE(button1->objectName(), QStringLiteral("OkButton1"));
        QCOMPARE(version2.find<QPushButton>("OkButton1")->text(), QStringLiteral("Yes"));
        QCOMPARE(version2.find<QPushButton>("OkButton")->text(), QStringLiteral("Cancel"));
    }

    void aPropertyTheNewClassNoLongerHasIsReportedNotFatal()
    {
        const OnVersion2 merged([](Form &user) {
            user.find<QLabel>("Info1")->setWordWrap(true);
            user.find<QLabel>("Info1")->setText(QStringLiteral("More"));
        });
        // Info1 is a button in the second version.
        const QList<TQorCustomizationIssue> &issues = merged.issues;
        const Form &version2 = merged.version2;
        QVERIFY(hasIssue(issues, QStringLiteral("Info1"), "wordWrap"));
        QCOMPARE(issues.size(), 1);
        QCOMPARE(version2.find<QPushButton>("Info1")->text(), QStringLiteral("More"));
    }

    void lockedChangesAreLeftOutOfADeltaAndSkippedWhenApplied()
    {
        TQorCustomizationLocks locks;
        locks.LockProperty("geometry", QStringLiteral("QAbstractButton"));
        locks.LockComponent(QStringLiteral("Edit2"));
        locks.LockProperty("text", QString(), QStringLiteral("Edit1"));
        Form user;
        const QByteArray base = user.records();
        user.find("Button1")->move(40, 40);
        user.find<QPushButton>("Button1")->setText(QStringLiteral("Go"));
        user.find("Edit1")->move(40, 80);
        user.find<QLineEdit>("Edit1")->setText(QStringLiteral("typed"));
        user.find<QLineEdit>("Edit2")->setText(QStringLiteral("typed"));
        const TQorCustomization delta = TQorCustomization::Diff(base, user.stage.get(), locks);
        QVERIFY(!delta.PropertyValue(QStringLiteral("Button1"), "geometry").isValid());
        QCOMPARE(delta.PropertyValue(QStringLiteral("Button1"), "text").toString(), QStringLiteral("Go"));
        QVERIFY(!delta.PropertyValue(QStringLiteral("Edit1"), "text").isValid());
        QVERIFY(delta.PropertyValue(QStringLiteral("Edit1"), "geometry").isValid());
        QVERIFY(!delta.HasComponent(QStringLiteral("Edit2")));
        // Unlocked, the same changes are taken; applied under the locks,
        // they are skipped and reported.
        const TQorCustomization whole = TQorCustomization::Diff(base, user.stage.get());
        Form fresh;
        const QList<TQorCustomizationIssue> issues = whole.Apply(fresh.stage.get(), locks);
        QVERIFY(hasIssue(issues, QStringLiteral("Button1"), "geometry"));
        QVERIFY(hasIssue(issues, QStringLiteral("Edit1"), "text"));
        QVERIFY(hasIssue(issues, QStringLiteral("Edit2")));
        QCOMPARE(fresh.find("Button1")->pos(), QPoint(10, 10));
        QCOMPARE(fresh.find<QPushButton>("Button1")->text(), QStringLiteral("Go"));
        QCOMPARE(fresh.find("Edit1")->pos(), QPoint(40, 80));
        QCOMPARE(fresh.find<QLineEdit>("Edit1")->text(), QString());
        QCOMPARE(fresh.find<QLineEdit>("Edit2")->text(), QString());
    }

    void theDeltaSaysInWordsWhatItChanges()
    {
        Form user;
        auto *panel = user.add<QGroupBox>("Panel1", QRect(300, 200, 200, 150));
        user.add<QPushButton>("Button4", QRect(5, 5, 75, 23));
        const QByteArray base = user.records();
        user.find("Button1")->setGeometry(10, 20, 75, 23);
        user.add<QLabel>("Label3", QRect(10, 40, 60, 20), panel);
        delete user.find("Edit2");
        TQorCustomization delta = TQorCustomization::Diff(base, user.stage.get());
        delta.RenameComponent(QStringLiteral("Button4"), QStringLiteral("OkButton"));
        const QStringList words = delta.Describe();
        QVERIFY2(words.contains(QStringLiteral("Button1: geometry changed to 10, 20, 75 x 23")), qPrintable(words.join(QLatin1Char('\n'))));
        QVERIFY(words.contains(QStringLiteral("Label3 added on Panel1")));
        QVERIFY(words.contains(QStringLiteral("Edit2 deleted")));
        QVERIFY(words.contains(QStringLiteral("Button4 renamed to OkButton")));
    }

    void aDeltaKeptStepByStepGivesTheUsersDesign()
    {
        Form user;
        const QByteArray base = user.records();
        TQorCustomization delta;
        // Each step on the stage, and the recorder's note of it.
        user.find("Button1")->setGeometry(20, 30, 90, 25);
        delta.SetPropertyValue(QStringLiteral("Button1"), QStringLiteral("QPushButton"), "geometry", QRect(20, 30, 90, 25));
        SetComponentName(user.find<QObject>("Button1"), QStringLiteral("GoButton"));
        delta.RenameComponent(QStringLiteral("Button1"), QStringLiteral("GoButton"));
        user.find<QPushButton>("GoButton")->setText(QStringLiteral("Go"));
        delta.SetPropertyValue(QStringLiteral("GoButton"), QStringLiteral("QPushButton"), "text", QStringLiteral("Go"));
        auto *label = user.add<QLabel>("Label3", QRect(10, 60, 90, 20), user.find("Group1"));
        label->show();
        delta.AddComponent(QStringLiteral("Label3"), ComponentToBytes(label), QStringLiteral("Group1"));
        label->setText(QStringLiteral("Later"));
        delta.SetPropertyValue(QStringLiteral("Label3"), QStringLiteral("QLabel"), "text", QStringLiteral("Later"));
        auto *gone = user.add<QLabel>("Label4", QRect(10, 80, 90, 20), user.find("Group1"));
        delta.AddComponent(QStringLiteral("Label4"), ComponentToBytes(gone), QStringLiteral("Group1"));
        delete gone;
        delta.DeleteComponent(QStringLiteral("Label4"));
        delete user.find("Info1");
        delta.DeleteComponent(QStringLiteral("Info1"), QStringLiteral("QLabel"));
        auto *edit1 = user.find("Edit1");
        edit1->setParent(user.find("Page1"));
        edit1->show();
        delta.ReparentComponent(QStringLiteral("Edit1"), QStringLiteral("Page1"));
        edit1->stackUnder(user.find("Edit2"));
        delta.SetZOrder(QStringLiteral("Edit1"), QString());
        user.find("Button2")->raise();
        delta.SetZOrder(QStringLiteral("Button2"), QStringLiteral("Tabs1"));
        SetComponentIndex(user.find<QObject>("Timer1"), 0);
        delta.SetOwnerOrder(QStringLiteral("Timer1"), QString());
        user.find<QLabel>("Label1")->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        delta.SetPropertyValue(QStringLiteral("Label1"), QStringLiteral("QLabel"), "alignment",
                               int(Qt::AlignRight | Qt::AlignVCenter));
        QVERIFY(!delta.HasComponent(QStringLiteral("Label4")));

        Form fresh;
        const QList<TQorCustomizationIssue> issues = TQorCustomization::FromBytes(delta.ToBytes()).Apply(fresh.stage.get());
        QVERIFY2(issues.isEmpty(), qPrintable(issuesText(issues)));
        QCOMPARE(ComponentBinaryToText(fresh.records()), ComponentBinaryToText(user.records()));
        QCOMPARE(fresh.records(), user.records());
        QVERIFY(base != user.records());
    }

    void resetAndClearMakeAnEmptyDelta()
    {
        Form user;
        const QByteArray base = user.records();
        customize(user);
        TQorCustomization delta = TQorCustomization::Diff(base, user.stage.get());
        QVERIFY(!delta.IsEmpty());
        TQorCustomization copy = delta;
        delta.Clear();
        QVERIFY(delta.IsEmpty());
        QVERIFY(!copy.IsEmpty());
        QVERIFY(TQorCustomization::FromBytes(delta.ToBytes()).IsEmpty());
        // Applying an empty delta leaves the form as the application built it.
        Form fresh;
        QVERIFY(delta.Apply(fresh.stage.get()).isEmpty());
        QCOMPARE(fresh.records(), base);
    }
};

QTEST_MAIN(tst_QorCustomization)
#include "tst_qorcustomization.moc"
