// SPDX-License-Identifier: MIT
// Tests of the type information: type kinds of Qt's types, class and
// enumeration information, published properties, the colour and cursor
// rules and the fields of value types.
#include "foundation/qorerror.h"
#include "foundation/qorvaluetypes_p.h"
#include "foundation/vhortti.h"
#include "foundation/vhortti_p.h"

#include <QCheckBox>
#include <QDate>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

// A gadget without properties: a class with nothing published.
class EmptyGadget
{
    Q_GADGET
};

class IntValueHolder : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int value MEMBER m_value)
    Q_PROPERTY(QObject *partner MEMBER m_partner)
    Q_PROPERTY(int hiddenNumber MEMBER m_hidden DESIGNABLE false)
    Q_PROPERTY(Letters letter MEMBER m_letter)

public:
    // One value with two names and a gap in the values.
    enum Letters { LetterA = 0, LetterB = 1, LetterAlsoB = 1, LetterF = 5 };
    Q_ENUM(Letters)

    int m_value = 0;
    QObject *m_partner = nullptr;
    int m_hidden = 0;
    Letters m_letter = LetterA;
};

class TextValueHolder : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString value MEMBER m_value)

public:
    QString m_value;
};

// Declares the ancestor's number again, hidden from the designer.
class HidingHolder : public IntValueHolder
{
    Q_OBJECT
    Q_PROPERTY(int value MEMBER m_value DESIGNABLE false)
};

class UnitNamedClass : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("QorUnit", "MyUnit")
};

class tst_VhoRTTI : public QObject
{
    Q_OBJECT

private:
    static QStringList names(const QList<PPropInfo> &list)
    {
        QStringList result;
        for (PPropInfo info : list)
            result.append(info->Name);
        return result;
    }

private Q_SLOTS:
    void typeKindNamesFollowTheKindsInOrder()
    {
        const QStringList expected = {QStringLiteral("tkUnknown"), QStringLiteral("tkInteger"),
                                      QStringLiteral("tkChar"),    QStringLiteral("tkEnumeration"),
                                      QStringLiteral("tkFloat"),   QStringLiteral("tkString"),
                                      QStringLiteral("tkSet"),     QStringLiteral("tkClass"),
                                      QStringLiteral("tkMethod"),  QStringLiteral("tkWChar"),
                                      QStringLiteral("tkLString"), QStringLiteral("tkWString"),
                                      QStringLiteral("tkVariant"), QStringLiteral("tkArray"),
                                      QStringLiteral("tkRecord"),  QStringLiteral("tkInterface"),
                                      QStringLiteral("tkInt64"),   QStringLiteral("tkDynArray")};
        for (int kind = 0; kind < expected.size(); ++kind)
            QCOMPARE(TypeKindToString(TTypeKind(kind)), expected.at(kind));
        QCOMPARE(int(tkDynArray), 17);
    }

    void qtTypesFallUnderTheirKinds_data()
    {
        QTest::addColumn<QMetaType>("type");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("name");
        QTest::newRow("int") << QMetaType::fromType<int>() << int(tkInteger) << "int";
        QTest::newRow("uint") << QMetaType::fromType<uint>() << int(tkInteger) << "uint";
        QTest::newRow("short") << QMetaType::fromType<short>() << int(tkInteger) << "short";
        QTest::newRow("qlonglong") << QMetaType::fromType<qlonglong>() << int(tkInt64) << "qlonglong";
        QTest::newRow("qulonglong") << QMetaType::fromType<qulonglong>() << int(tkInt64) << "qulonglong";
        QTest::newRow("double") << QMetaType::fromType<double>() << int(tkFloat) << "double";
        QTest::newRow("float") << QMetaType::fromType<float>() << int(tkFloat) << "float";
        QTest::newRow("QChar") << QMetaType::fromType<QChar>() << int(tkWChar) << "QChar";
        QTest::newRow("QString") << QMetaType::fromType<QString>() << int(tkLString) << "QString";
        QTest::newRow("QByteArray") << QMetaType::fromType<QByteArray>() << int(tkLString) << "QByteArray";
        QTest::newRow("bool") << QMetaType::fromType<bool>() << int(tkEnumeration) << "bool";
        QTest::newRow("QVariant") << QMetaType::fromType<QVariant>() << int(tkVariant) << "QVariant";
        QTest::newRow("QColor") << QMetaType::fromType<QColor>() << int(tkInteger) << "QColor";
        QTest::newRow("QCursor") << QMetaType::fromType<QCursor>() << int(tkInteger) << "QCursor";
        QTest::newRow("QStringList") << QMetaType::fromType<QStringList>() << int(tkDynArray) << "QStringList";
        QTest::newRow("QFont") << QMetaType::fromType<QFont>() << int(tkClass) << "QFont";
        QTest::newRow("QSize") << QMetaType::fromType<QSize>() << int(tkClass) << "QSize";
        QTest::newRow("QPoint") << QMetaType::fromType<QPoint>() << int(tkClass) << "QPoint";
        QTest::newRow("QRect") << QMetaType::fromType<QRect>() << int(tkClass) << "QRect";
        QTest::newRow("QMargins") << QMetaType::fromType<QMargins>() << int(tkClass) << "QMargins";
        QTest::newRow("QSizePolicy") << QMetaType::fromType<QSizePolicy>() << int(tkClass) << "QSizePolicy";
        QTest::newRow("QPalette") << QMetaType::fromType<QPalette>() << int(tkClass) << "QPalette";
        QTest::newRow("QDate") << QMetaType::fromType<QDate>() << int(tkRecord) << "QDate";
        QTest::newRow("QWidget*") << QMetaType::fromType<QWidget *>() << int(tkClass) << "QWidget";
        QTest::newRow("invalid") << QMetaType() << int(tkUnknown) << "";
    }

    void qtTypesFallUnderTheirKinds()
    {
        QFETCH(QMetaType, type);
        QFETCH(int, kind);
        QFETCH(QString, name);
        PTypeInfo info = TypeInfoOfMetaType(type);
        QVERIFY(info);
        QCOMPARE(TypeKindToString(info->Kind), TypeKindToString(TTypeKind(kind)));
        QCOMPARE(info->Name, name);
    }

    void propertiesOfAWidgetHaveTheirKinds()
    {
        const QMetaObject *label = &QLabel::staticMetaObject;
        PPropInfo alignment = GetPropInfo(label, QStringLiteral("alignment"));
        QVERIFY(alignment);
        QCOMPARE(alignment->PropType->Kind, tkSet);
        QCOMPARE(alignment->PropType->Name, QStringLiteral("Qt::Alignment"));
        PPropInfo focus = GetPropInfo(label, QStringLiteral("focusPolicy"));
        QCOMPARE(focus->PropType->Kind, tkEnumeration);
        QCOMPARE(focus->PropType->Name, QStringLiteral("Qt::FocusPolicy"));
        QCOMPARE(GetPropInfo(label, QStringLiteral("text"))->PropType->Kind, tkLString);
        QCOMPARE(GetPropInfo(label, QStringLiteral("enabled"))->PropType->Name, QStringLiteral("bool"));
        QCOMPARE(GetPropInfo(label, QStringLiteral("geometry"))->PropType->Name, QStringLiteral("QRect"));
        QCOMPARE(GetPropInfo(label, QStringLiteral("font"))->PropType->Kind, tkClass);
        PPropInfo partner = GetPropInfo(&IntValueHolder::staticMetaObject, QStringLiteral("partner"));
        QCOMPARE(partner->PropType->Kind, tkClass);
        QCOMPARE(partner->PropType, TypeInfoOf<QObject>());
    }

    void descriptorsAreMadeOncePerType()
    {
        QCOMPARE(TypeInfoOf<int>(), TypeInfoOfMetaType(QMetaType::fromType<int>()));
        QCOMPARE(TypeInfoOf<QPushButton>(), TypeInfoOfClass(&QPushButton::staticMetaObject));
        QCOMPARE(GetPropInfo(&QLabel::staticMetaObject, QStringLiteral("font"))->PropType, TypeInfoOf<QFont>());
        QCOMPARE(GetPropInfo(&QLabel::staticMetaObject, QStringLiteral("text")),
                 GetPropInfo(&QLabel::staticMetaObject, QStringLiteral("text")));
        QVERIFY(TypeInfoOf<int>() != TypeInfoOf<uint>());
    }

    void classWithoutPublishedPropertiesHasNoPropList()
    {
        PTypeInfo empty = TypeInfoOfClass(&EmptyGadget::staticMetaObject);
        QStringList names{QStringLiteral("stale")};
        GetClassPropertyNames(empty, names);
        QVERIFY(names.isEmpty());
        TClassInformation info;
        info.SetPTI(empty);
        QCOMPARE(info.PropCount(), 0);
        QVERIFY(info.PropList().isEmpty());
        QCOMPARE(info.PropNameStr(0), QString());
    }

    void rootClassHasNoParentClassNames()
    {
        QStringList names{QStringLiteral("stale")};
        GetParentClassNames(GetTypeData(TypeInfoOf<QObject>()), names);
        QVERIFY(names.isEmpty());
        TClassInformation info;
        info.SetPTI(TypeInfoOf<QObject>());
        QVERIFY(info.ParentClassNames().isEmpty());
        QCOMPARE(info.ParentClass(), nullptr);
    }

    void parentClassNamesStartWithTheNearestAncestor()
    {
        QStringList names;
        GetParentClassNames(GetTypeData(TypeInfoOf<QCheckBox>()), names);
        QCOMPARE(names,
                 QStringList({QStringLiteral("QAbstractButton"), QStringLiteral("QWidget"), QStringLiteral("QObject")}));
        TClassInformation info;
        info.SetPTI(TypeInfoOf<QPushButton>());
        QCOMPARE(info.ParentClassNames(),
                 QStringList({QStringLiteral("QAbstractButton"), QStringLiteral("QWidget"), QStringLiteral("QObject")}));
        QCOMPARE(info.ParentClass(), &QAbstractButton::staticMetaObject);
        QCOMPARE(GetTypeData(TypeInfoOf<QPushButton>())->ParentInfo, TypeInfoOf<QAbstractButton>());
    }

    void colourAndCursorAreShownAsNamedValues()
    {
        PTypeInfo colour = TypeInfoOf<QColor>();
        PTypeInfo cursor = TypeInfoOf<QCursor>();
        QCOMPARE(colour->Kind, tkInteger);
        QCOMPARE(cursor->Kind, tkInteger);
        QVERIFY(TEnumInformation::IsEnumExType(colour));
        QVERIFY(TEnumInformation::IsEnumExType(cursor));
    }

    void setTypesAreNotShownAsNamedValues()
    {
        PTypeInfo alignment = GetPropInfo(&QLabel::staticMetaObject, QStringLiteral("alignment"))->PropType;
        QCOMPARE(alignment->Kind, tkSet);
        QVERIFY(!TEnumInformation::IsEnumExType(alignment));
        QVERIFY(!TEnumInformation::IsEnumExType(TypeInfoOf<int>()));
        QVERIFY(!TEnumInformation::IsEnumExType(TypeInfoOf<QString>()));
        QVERIFY(!TEnumInformation::IsEnumExType(nullptr));
        QVERIFY(TEnumInformation::IsEnumExType(TypeInfoOf<bool>()));
        QVERIFY(TEnumInformation::IsEnumExType(
            GetPropInfo(&QLabel::staticMetaObject, QStringLiteral("focusPolicy"))->PropType));
    }

    void boolListsFalseThenTrue()
    {
        TEnumInformation info;
        QStringList strings{QStringLiteral("stale")};
        info.ListEnumValuesEx(TypeInfoOf<bool>(), strings);
        QCOMPARE(strings, QStringList({QStringLiteral("False"), QStringLiteral("True")}));
        info.SetPTI(TypeInfoOf<bool>());
        QCOMPARE(info.EnumNames(), QStringList({QStringLiteral("False"), QStringLiteral("True")}));
        QCOMPARE(info.MinValue(), 0);
        QCOMPARE(info.MaxValue(), 1);
    }

    void colourNamesGoIntoTheInformationsOwnList()
    {
        TEnumInformation info;
        QStringList strings{QStringLiteral("stale")};
        info.ListEnumValuesEx(TypeInfoOf<QColor>(), strings);
        QVERIFY(strings.isEmpty());
        const int once = info.EnumNames().size();
        QCOMPARE(once, ColorValueNames().size());
        // A second call appends again: the list handed in is not the one
        // that is filled.
        info.ListEnumValuesEx(TypeInfoOf<QColor>(), strings);
        QCOMPARE(info.EnumNames().size(), 2 * once);
        info.SetPTI(TypeInfoOf<QColor>());
        QCOMPARE(info.EnumNames(), ColorValueNames());
    }

    void colourNamesAreQtsColoursThenTheNamedColours()
    {
        const QStringList names = ColorValueNames();
        QCOMPARE(names.first(), QStringLiteral("black"));
        QVERIFY(!names.contains(QStringLiteral("color0")));
        QVERIFY(!names.contains(QStringLiteral("color1")));
        QVERIFY(names.indexOf(QStringLiteral("transparent")) < names.indexOf(QStringLiteral("aliceblue")));
        QVERIFY(names.contains(QStringLiteral("darkGray")));
        QVERIFY(!names.contains(QStringLiteral("darkgray")));
        QStringList folded;
        for (const QString &name : names) {
            QVERIFY2(!folded.contains(name.toLower()), qPrintable(name));
            folded.append(name.toLower());
            const bool qtColour = QMetaEnum::fromType<Qt::GlobalColor>().keyToValue(qPrintable(name)) >= 0;
            QVERIFY2(qtColour || QColor::isValidColorName(name), qPrintable(name));
        }
    }

    void cursorNamesAreThePickableShapes()
    {
        TEnumInformation info;
        info.SetPTI(TypeInfoOf<QCursor>());
        const QStringList names = info.EnumNames();
        QCOMPARE(names.first(), QStringLiteral("ArrowCursor"));
        QVERIFY(names.contains(QStringLiteral("PointingHandCursor")));
        QVERIFY(names.contains(QStringLiteral("DragLinkCursor")));
        QVERIFY(!names.contains(QStringLiteral("BitmapCursor")));
        QVERIFY(!names.contains(QStringLiteral("CustomCursor")));
        QVERIFY(!names.contains(QStringLiteral("LastCursor")));
        QCOMPARE(names.size(), int(Qt::LastCursor) + 1);
    }

    void sharedPropertyOfAnotherKindIsNotShared()
    {
        IntValueHolder numbers;
        TextValueHolder texts;
        PPropInfo value = GetPropInfo(&numbers, QStringLiteral("value"));
        QVERIFY(value);
        QVERIFY(!PropInfoInComps(value, {&texts}));
        QVERIFY(!PropInfoInComps(value, {&numbers, &texts}));
        QVERIFY(PropInfoInComps(value, {&numbers}));
    }

    void sharedPropertyForNoObjectsIsShared()
    {
        QVERIFY(PropInfoInComps(GetPropInfo(&QLabel::staticMetaObject, QStringLiteral("text")), {}));
    }

    void sharedPropertyMissingInOneObjectIsNotShared()
    {
        QLabel label;
        QPushButton button;
        QTimer timer;
        PPropInfo text = GetPropInfo(&label, QStringLiteral("text"));
        QVERIFY(PropInfoInComps(text, {&label, &button}));
        QVERIFY(!PropInfoInComps(text, {&label, &timer, &button}));
        QVERIFY(!PropInfoInComps(text, {&label, nullptr}));
    }

    void classSizeIsTheSameForEveryDescribedClass()
    {
        TClassInformation info;
        info.SetPTI(TypeInfoOf<QPushButton>());
        const int forButton = info.ClassSize();
        info.SetPTI(TypeInfoOf<QLabel>());
        QCOMPARE(info.ClassSize(), forButton);
        info.SetPTI(TypeInfoOf<QTimer>());
        QCOMPARE(info.ClassSize(), forButton);
        QCOMPARE(forButton, int(sizeof(TClassInformation)));
    }

    void classInformationListsPublishedPropertiesByName()
    {
        TClassInformation info;
        info.SetPTI(TypeInfoOf<QPushButton>());
        QCOMPARE(info.ClassNameStr(), QStringLiteral("QPushButton"));
        QCOMPARE(info.ClassTypeRef(), &QPushButton::staticMetaObject);
        QCOMPARE(info.PropCount(), GetPropInfos(&QPushButton::staticMetaObject).size());
        QCOMPARE(info.PropList().size(), info.PropCount());
        QVERIFY(info.PropCount() > 50);
        const QStringList listed = names(info.PropList());
        QVERIFY(listed.contains(QStringLiteral("text")));
        QVERIFY(listed.contains(QStringLiteral("objectName")));
        QVERIFY(listed.contains(QStringLiteral("enabled")));
        for (int i = 1; i < listed.size(); ++i)
            QVERIFY2(listed.at(i - 1).compare(listed.at(i), Qt::CaseInsensitive) <= 0, qPrintable(listed.at(i)));
        const int text = listed.indexOf(QStringLiteral("text"));
        QCOMPARE(info.PropNameStr(text), QStringLiteral("text"));
        QCOMPARE(info.PropTypeStr(text), QStringLiteral("QString"));
        QCOMPARE(info.PropTypeStr(listed.indexOf(QStringLiteral("alignment"))), QString());
        QCOMPARE(info.PropNameStr(-1), QString());
        QCOMPARE(info.PropNameStr(info.PropCount()), QString());
    }

    void undesignablePropertiesAreNotPublished()
    {
        QVERIFY(!names(GetPropInfos(&IntValueHolder::staticMetaObject)).contains(QStringLiteral("hiddenNumber")));
        QCOMPARE(GetPropInfo(&IntValueHolder::staticMetaObject, QStringLiteral("hiddenNumber")), nullptr);
        // A class that declares the name again without designability hides
        // the ancestor's property.
        QVERIFY(names(GetPropInfos(&IntValueHolder::staticMetaObject)).contains(QStringLiteral("value")));
        QVERIFY(!names(GetPropInfos(&HidingHolder::staticMetaObject)).contains(QStringLiteral("value")));
        QCOMPARE(GetPropInfo(&HidingHolder::staticMetaObject, QStringLiteral("value")), nullptr);
        QVERIFY(names(GetPropInfos(&HidingHolder::staticMetaObject)).contains(QStringLiteral("partner")));
    }

    void nilTypeLeavesTheClassDataAsItWas()
    {
        TClassInformation info;
        info.SetPTI(TypeInfoOf<QPushButton>());
        const QStringList parents = info.ParentClassNames();
        const int count = info.PropCount();
        info.SetPTI(nullptr);
        QCOMPARE(info.PTD(), nullptr);
        QCOMPARE(info.PTI(), nullptr);
        QCOMPARE(info.ParentClassNames(), parents);
        QCOMPARE(info.PropCount(), count);
        QCOMPARE(info.PropList().size(), count);
        QCOMPARE(info.TypeKind(), tkUnknown);
        QCOMPARE(info.TypeKindName(), QStringLiteral("tkUnknown"));
        QCOMPARE(info.TypeName(), QString());
        QCOMPARE(info.ClassTypeRef(), nullptr);
    }

    void anotherTypeRebuildsTheDerivedData()
    {
        TClassInformation info;
        info.SetPTI(TypeInfoOf<QPushButton>());
        QVERIFY(names(info.PropList()).contains(QStringLiteral("autoDefault")));
        info.SetPTI(TypeInfoOf<QLabel>());
        QCOMPARE(info.ParentClassNames(),
                 QStringList({QStringLiteral("QFrame"), QStringLiteral("QWidget"), QStringLiteral("QObject")}));
        QVERIFY(!names(info.PropList()).contains(QStringLiteral("autoDefault")));
        QVERIFY(names(info.PropList()).contains(QStringLiteral("alignment")));
        QCOMPARE(info.PTD(), GetTypeData(TypeInfoOf<QLabel>()));
        QCOMPARE(info.TypeKind(), tkClass);
        QCOMPARE(info.TypeKindName(), QStringLiteral("tkClass"));
        QCOMPARE(info.TypeName(), QStringLiteral("QLabel"));
    }

    void defineUnitNamesTheModuleOfTheClass()
    {
        TClassInformation info;
        info.SetPTI(TypeInfoOf<QPushButton>());
        QCOMPARE(info.DefineUnit(), QStringLiteral("Qt6Widgets"));
        info.SetPTI(TypeInfoOf<QObject>());
        QCOMPARE(info.DefineUnit(), QStringLiteral("Qt6Core"));
        info.SetPTI(TypeInfoOf<QFont>());
        QCOMPARE(info.DefineUnit(), QStringLiteral("QorDesign"));
        info.SetPTI(TypeInfoOf<TextValueHolder>());
        QCOMPARE(info.DefineUnit(), QStringLiteral("tst_vhortti"));
        info.SetPTI(TypeInfoOf<UnitNamedClass>());
        QCOMPARE(info.DefineUnit(), QStringLiteral("MyUnit"));
    }

    void enumerationInformationHasItsRangeAndNames()
    {
        TEnumInformation info;
        info.SetPTI(GetPropInfo(&QLabel::staticMetaObject, QStringLiteral("focusPolicy"))->PropType);
        QCOMPARE(info.MinValue(), int(Qt::NoFocus));
        QCOMPARE(info.MaxValue(), int(Qt::WheelFocus));
        QCOMPARE(info.BasedTypeInfo(), info.PTI());
        QCOMPARE(info.EnumNames(),
                 QStringList({QStringLiteral("NoFocus"), QStringLiteral("TabFocus"), QStringLiteral("ClickFocus"),
                              QStringLiteral("StrongFocus"), QStringLiteral("WheelFocus")}));
    }

    void enumerationListsOneNamePerValueInAscendingOrder()
    {
        PTypeInfo letters = GetPropInfo(&IntValueHolder::staticMetaObject, QStringLiteral("letter"))->PropType;
        QCOMPARE(letters->Kind, tkEnumeration);
        QStringList strings{QStringLiteral("stale")};
        ListEnumValues(letters, strings);
        QCOMPARE(strings, QStringList({QStringLiteral("LetterA"), QStringLiteral("LetterB"), QStringLiteral("LetterF")}));
        QCOMPARE(GetEnumName(letters, 1), QStringLiteral("LetterB"));
        QCOMPARE(GetEnumName(letters, 3), QString());
    }

    void listingANonEnumerationClearsTheList()
    {
        QStringList strings{QStringLiteral("stale")};
        ListEnumValues(TypeInfoOf<QString>(), strings);
        QVERIFY(strings.isEmpty());
        strings = {QStringLiteral("stale")};
        ListEnumValues(nullptr, strings);
        QVERIFY(strings.isEmpty());
    }

    void enumerationNamesAndValuesConvert()
    {
        PTypeInfo focus = GetPropInfo(&QLabel::staticMetaObject, QStringLiteral("focusPolicy"))->PropType;
        QCOMPARE(GetEnumName(focus, Qt::StrongFocus), QStringLiteral("StrongFocus"));
        QCOMPARE(GetEnumValue(focus, QStringLiteral("strongfocus")), int(Qt::StrongFocus));
        QCOMPARE(GetEnumValue(focus, QStringLiteral("Strong")), -1);
        QCOMPARE(GetEnumValue(TypeInfoOf<bool>(), QStringLiteral("true")), 1);
        QCOMPARE(GetEnumName(TypeInfoOf<bool>(), 0), QStringLiteral("False"));
        QCOMPARE(GetEnumValue(TypeInfoOf<int>(), QStringLiteral("1")), -1);
    }

    void setTypeNamesItsEnumeration()
    {
        PTypeInfo alignment = GetPropInfo(&QLabel::staticMetaObject, QStringLiteral("alignment"))->PropType;
        PTypeInfo flag = GetTypeData(alignment)->CompType;
        QVERIFY(flag);
        QCOMPARE(flag->Kind, tkEnumeration);
        QCOMPARE(flag->Name, QStringLiteral("Qt::AlignmentFlag"));
        QCOMPARE(GetEnumName(flag, Qt::AlignRight), QStringLiteral("AlignRight"));
    }

    void textPropertyIsWrittenByName()
    {
        QPushButton button;
        QVERIFY(SetObjStrProp(&button, QStringLiteral("text"), QStringLiteral("Go")));
        QCOMPARE(button.text(), QStringLiteral("Go"));
    }

    void missingPropertyIsReportedByTheResult()
    {
        QPushButton button(QStringLiteral("Stay"));
        QVERIFY(!SetObjStrProp(&button, QStringLiteral("caption"), QStringLiteral("Go")));
        QVERIFY(!SetObjStrProp(&button, QStringLiteral(""), QStringLiteral("Go")));
        QVERIFY(!SetObjStrProp(nullptr, QStringLiteral("text"), QStringLiteral("Go")));
        QCOMPARE(button.text(), QStringLiteral("Stay"));
    }

    void textWrittenIntoAnotherKindRaisesAnError()
    {
        QPushButton button;
        QVERIFY_THROWS_EXCEPTION(EPropertyError,
                                 SetObjStrProp(&button, QStringLiteral("enabled"), QStringLiteral("False")));
        QVERIFY(button.isEnabled());
        try {
            SetObjStrProp(&button, QStringLiteral("enabled"), QStringLiteral("False"));
            QFAIL("no error");
        } catch (const EPropertyError &e) {
            QVERIFY(e.message().contains(QStringLiteral("enabled")));
        }
    }

    void componentTypesAreQObjectClasses()
    {
        QVERIFY(IsComponentPTI(TypeInfoOf<QPushButton>()));
        QVERIFY(IsComponentPTI(TypeInfoOf<QTimer>()));
        QVERIFY(!IsComponentPTI(TypeInfoOf<QFont>()));
        QVERIFY(!IsComponentPTI(TypeInfoOfClass(&EmptyGadget::staticMetaObject)));
        QVERIFY(!IsComponentPTI(TypeInfoOf<int>()));
        QVERIFY(!IsComponentPTI(nullptr));
    }

    void classPropertyNamesAreAlphabetical()
    {
        QStringList listed;
        GetClassPropertyNames(TypeInfoOf<QLabel>(), listed);
        QStringList expected = names(GetPropInfos(TypeInfoOf<QLabel>()));
        QVERIFY(listed != expected); // declaration order is not name order
        std::sort(expected.begin(), expected.end(),
                  [](const QString &a, const QString &b) { return a.compare(b, Qt::CaseInsensitive) < 0; });
        QCOMPARE(listed, expected);
        QCOMPARE(GetPropInfos(TypeInfoOf<int>()).size(), 0);
    }

    void propertyLookUpFiltersByKind()
    {
        const QMetaObject *button = &QPushButton::staticMetaObject;
        QCOMPARE(GetPropInfo(button, QStringLiteral("text"), {tkInteger}), nullptr);
        QVERIFY(GetPropInfo(button, QStringLiteral("text"), {tkInteger, tkLString}));
        QCOMPARE(GetPropInfo(button, QStringLiteral("noSuchProperty")), nullptr);
        QCOMPARE(GetPropInfo(static_cast<const QMetaObject *>(nullptr), QStringLiteral("text")), nullptr);
        QCOMPARE(GetPropInfo(button, QStringLiteral("Text")), nullptr);
    }

    void fontFieldsAreReflectedLikeProperties()
    {
        const QList<PPropInfo> fields = GetPropInfos(TypeInfoOf<QFont>());
        const QStringList listed = names(fields);
        QVERIFY(listed.contains(QStringLiteral("family")));
        QVERIFY(listed.contains(QStringLiteral("pointSize")));
        PPropInfo bold = fields.at(listed.indexOf(QStringLiteral("bold")));
        QFont font;
        font.setBold(true);
        QVariant value = QVariant::fromValue(font);
        QCOMPARE(GetValueTypeField(value, bold), QVariant(true));
        QVERIFY(SetValueTypeField(value, bold, false));
        QVERIFY(!value.value<QFont>().bold());
        // A value of another type, or an empty value, changes nothing.
        QVariant size = QVariant::fromValue(QSize(3, 4));
        QVERIFY(!GetValueTypeField(size, bold).isValid());
        QVERIFY(!SetValueTypeField(size, bold, true));
        QCOMPARE(size.toSize(), QSize(3, 4));
        QVERIFY(!SetValueTypeField(value, bold, QVariant()));
        QVERIFY(!value.value<QFont>().bold());
    }

    void rectFieldsMoveWithoutResizing()
    {
        const QList<PPropInfo> fields = GetPropInfos(TypeInfoOf<QRect>());
        QCOMPARE(names(fields),
                 QStringList(
                     {QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("width"), QStringLiteral("height")}));
        QVariant rect = QRect(10, 10, 50, 20);
        QVERIFY(SetValueTypeField(rect, fields.at(0), 30));
        QCOMPARE(rect.toRect(), QRect(30, 10, 50, 20));
        QVERIFY(SetValueTypeField(rect, fields.at(3), 7));
        QCOMPARE(rect.toRect(), QRect(30, 10, 50, 7));
        QVERIFY(!SetValueTypeField(rect, fields.at(2), QStringLiteral("abc")));
        QCOMPARE(rect.toRect(), QRect(30, 10, 50, 7));
    }

    void sizePolicyFieldsAreEnumerations()
    {
        PPropInfo horizontal = GetPropInfo(&TQorSizePolicyFields::staticMetaObject, QStringLiteral("horizontalPolicy"));
        QVERIFY(horizontal);
        QCOMPARE(horizontal->PropType->Kind, tkEnumeration);
        QCOMPARE(horizontal->PropType->Name, QStringLiteral("QSizePolicy::Policy"));
        QVariant policy = QVariant::fromValue(QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed));
        QVERIFY(SetValueTypeField(policy, horizontal, QVariant::fromValue(QSizePolicy::Expanding)));
        QCOMPARE(policy.value<QSizePolicy>().horizontalPolicy(), QSizePolicy::Expanding);
        QCOMPARE(policy.value<QSizePolicy>().verticalPolicy(), QSizePolicy::Fixed);
    }

    void paletteFieldsWriteEveryGroup()
    {
        PPropInfo window = GetPropInfo(&TQorPaletteFields::staticMetaObject, QStringLiteral("window"));
        QVERIFY(window);
        QCOMPARE(window->PropType->Name, QStringLiteral("QColor"));
        QVariant palette = QVariant::fromValue(QPalette());
        QVERIFY(SetValueTypeField(palette, window, QColor(Qt::red)));
        const QPalette written = palette.value<QPalette>();
        QCOMPARE(written.color(QPalette::Active, QPalette::Window), QColor(Qt::red));
        QCOMPARE(written.color(QPalette::Inactive, QPalette::Window), QColor(Qt::red));
        QCOMPARE(written.color(QPalette::Disabled, QPalette::Window), QColor(Qt::red));
        QCOMPARE(GetValueTypeField(palette, window).value<QColor>(), QColor(Qt::red));
    }

    void valueTypeDescriptorsBelongToTheirTypes()
    {
        QCOMPARE(ValueTypeDescriptor(QMetaType::fromType<QFont>()), &TQorFontFields::staticMetaObject);
        QCOMPARE(DescribedValueType(&TQorMarginsFields::staticMetaObject), QMetaType::fromType<QMargins>());
        QCOMPARE(ValueTypeDescriptor(QMetaType::fromType<int>()), nullptr);
        QCOMPARE(QorClassName(&TQorFontFields::staticMetaObject), QStringLiteral("QFont"));
        QCOMPARE(QorClassName(&QLabel::staticMetaObject), QStringLiteral("QLabel"));
        QCOMPARE(TypeInfoOf<QFont>()->MetaType, QMetaType::fromType<QFont>());
    }

    void signalsAreMethodTypes()
    {
        const QMetaObject *button = &QPushButton::staticMetaObject;
        PTypeInfo clicked = TypeInfoOfMethod(button->method(button->indexOfSignal("clicked(bool)")));
        QCOMPARE(clicked->Kind, tkMethod);
        QCOMPARE(clicked->Name, QStringLiteral("void(bool)"));
        PTypeInfo toggled = TypeInfoOfMethod(button->method(button->indexOfSignal("toggled(bool)")));
        QCOMPARE(toggled, clicked);
        PTypeInfo pressed = TypeInfoOfMethod(button->method(button->indexOfSignal("pressed()")));
        QCOMPARE(pressed->Name, QStringLiteral("void()"));
    }

    void classTypeDataCountsInheritedProperties()
    {
        PTypeData button = GetTypeData(TypeInfoOf<QPushButton>());
        PTypeData widget = GetTypeData(TypeInfoOf<QWidget>());
        QVERIFY(button->PropCount > widget->PropCount);
        QCOMPARE(GetTypeData(TypeInfoOf<QObject>())->PropCount, 1);
        QCOMPARE(GetTypeData(nullptr), nullptr);
    }
};

QTEST_MAIN(tst_VhoRTTI)
#include "tst_vhortti.moc"
