// SPDX-License-Identifier: MIT
// Property values as text: reading and writing every kind for one object
// and for several, the set element texts, and the row prefixes.
#include "foundation/qorerror.h"
#include "foundation/qortypinfo.h"
#include "inspector/qorpropdetail.h"
#include "foundation/vhortti_p.h"

#include <QCursor>
#include <QDialog>
#include <QFont>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QTest>

class Sample : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString caption MEMBER caption)
    Q_PROPERTY(int number MEMBER number)
    Q_PROPERTY(qlonglong big MEMBER big)
    Q_PROPERTY(double ratio MEMBER ratio)
    Q_PROPERTY(QChar letter MEMBER letter)
    Q_PROPERTY(bool flag MEMBER flag)
    Q_PROPERTY(Shape shape MEMBER shape)
    Q_PROPERTY(Sides sides READ sides WRITE setSides)
    Q_PROPERTY(QColor color MEMBER color)
    Q_PROPERTY(QCursor cursor MEMBER cursor)
    Q_PROPERTY(QObject *partner MEMBER partner)
    Q_PROPERTY(QPushButton *button MEMBER button)
    Q_PROPERTY(QFont font MEMBER font)
    Q_PROPERTY(QVariant anything MEMBER anything)

public:
    enum Shape { Circle, Square, Triangle };
    Q_ENUM(Shape)
    // Edge is part of the name EdgeX: the set text's presence test is a
    // plain substring search.
    enum Side { Left = 1, Top = 2, Right = 4, Edge = 8, EdgeX = 16 };
    Q_DECLARE_FLAGS(Sides, Side)
    Q_FLAG(Sides)

    Sides sides() const { return m_sides; }
    void setSides(Sides s)
    {
        ++sideWrites;
        m_sides = s;
    }

    QString caption;
    int number = 0;
    qlonglong big = 0;
    double ratio = 0;
    QChar letter;
    bool flag = false;
    Shape shape = Circle;
    QColor color;
    QCursor cursor;
    QObject *partner = nullptr;
    QPushButton *button = nullptr;
    QFont font;
    QVariant anything;
    Sides m_sides;
    int sideWrites = 0;
};

namespace {

PPropInfo prop(const char *name)
{
    PPropInfo info = GetPropInfo(&Sample::staticMetaObject, QLatin1String(name));
    Q_ASSERT(info);
    return info;
}

// Counts its refreshes.
class CountingDetail : public TPropertyDetailEx
{
public:
    using TPropertyDetailEx::TPropertyDetailEx;
    void Refresh() override
    {
        ++refreshes;
        TPropertyDetailEx::Refresh();
    }
    int refreshes = 0;
};

} // namespace

class tst_QorPropDetail : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyKindReadsAsText()
    {
        Sample s;
        s.caption = QStringLiteral("Hello");
        s.number = -42;
        s.ratio = 2.5;
        s.letter = QLatin1Char('q');
        s.flag = true;
        s.shape = Sample::Triangle;
        s.setSides(Sample::Sides(Sample::Left) | Sample::Right);
        s.anything = 17;
        QCOMPARE(GetPropertyValueStr(&s, prop("caption")), QStringLiteral("Hello"));
        QCOMPARE(GetPropertyValueStr(&s, prop("number")), QStringLiteral("-42"));
        QCOMPARE(GetPropertyValueStr(&s, prop("ratio")), QStringLiteral("2.5"));
        QCOMPARE(GetPropertyValueStr(&s, prop("letter")), QStringLiteral("q"));
        QCOMPARE(GetPropertyValueStr(&s, prop("flag")), QStringLiteral("True"));
        QCOMPARE(GetPropertyValueStr(&s, prop("shape")), QStringLiteral("Triangle"));
        QCOMPARE(GetPropertyValueStr(&s, prop("sides")), QStringLiteral("[Left,Right]"));
        QCOMPARE(GetPropertyValueStr(&s, prop("anything")), QStringLiteral("17"));
        s.setSides(Sample::Sides());
        QCOMPARE(GetPropertyValueStr(&s, prop("sides")), QStringLiteral("[]"));
        // A third of a unit shows its fifteen significant digits.
        s.ratio = 1.0 / 3.0;
        QCOMPARE(GetPropertyValueStr(&s, prop("ratio")), QStringLiteral("0.333333333333333"));
    }

    void aStockWidgetsAlignmentReadsAsItsFlags()
    {
        QLabel label;
        label.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        PPropInfo alignment = GetPropInfo(&label, QStringLiteral("alignment"));
        QCOMPARE(GetPropertyValueStr(&label, alignment), QStringLiteral("[AlignRight,AlignVCenter]"));
        SetPropertyValueStr(&label, alignment, QStringLiteral("[AlignLeft, AlignBottom]"));
        QCOMPARE(label.alignment(), Qt::AlignLeft | Qt::AlignBottom);
        // A shorthand of several elements is taken too.
        SetPropertyValueStr(&label, alignment, QStringLiteral("[AlignCenter]"));
        QCOMPARE(label.alignment(), Qt::Alignment(Qt::AlignCenter));
        QCOMPARE(GetPropertyValueStr(&label, alignment), QStringLiteral("[AlignHCenter,AlignVCenter]"));
    }

    void a64BitValueShowsItsLow32BitsSigned()
    {
        Sample s;
        s.big = 4294967296LL;
        QCOMPARE(GetPropertyValueStr(&s, prop("big")), QStringLiteral("0"));
        s.big = 4294967295LL;
        QCOMPARE(GetPropertyValueStr(&s, prop("big")), QStringLiteral("-1"));
        s.big = 7;
        QCOMPARE(GetPropertyValueStr(&s, prop("big")), QStringLiteral("7"));
    }

    void coloursShowTheirNamesAndCursorsTheirIdentifiers()
    {
        Sample s;
        s.color = QColor(Qt::red);
        QCOMPARE(GetPropertyValueStr(&s, prop("color")), QStringLiteral("red"));
        s.color = QColor(0x12, 0x34, 0x56);
        QCOMPARE(GetPropertyValueStr(&s, prop("color")), QStringLiteral("#123456"));
        s.color = QColor(0x12, 0x34, 0x56, 0x80);
        QCOMPARE(GetPropertyValueStr(&s, prop("color")), QStringLiteral("#80123456"));
        SetPropertyValueStr(&s, prop("color"), QStringLiteral("darkBlue"));
        QCOMPARE(s.color, QColor(Qt::darkBlue));
        SetPropertyValueStr(&s, prop("color"), QStringLiteral("#a0b0c0"));
        QCOMPARE(s.color, QColor(0xa0, 0xb0, 0xc0));

        s.cursor = QCursor(Qt::WaitCursor);
        QCOMPARE(GetPropertyValueStr(&s, prop("cursor")), QStringLiteral("WaitCursor"));
        SetPropertyValueStr(&s, prop("cursor"), QStringLiteral("pointinghandcursor"));
        QCOMPARE(s.cursor.shape(), Qt::PointingHandCursor);
        // A shape without an identifier would show as its number.
        QString ident;
        QVERIFY(!CursorToIdent(99, ident));
        QVERIFY(CursorToIdent(Qt::IBeamCursor, ident));
        QCOMPARE(ident, QStringLiteral("IBeamCursor"));
    }

    // A picture cursor has a key in Qt's enumeration ("BitmapCursor"), but
    // that key cannot bring the picture back: it reads as its number.
    void aPictureCursorReadsAsItsNumber()
    {
        Sample s;
        QPixmap picture(16, 16);
        picture.fill(Qt::black);
        s.cursor = QCursor(picture);
        QCOMPARE(s.cursor.shape(), Qt::BitmapCursor);
        QCOMPARE(GetPropertyValueStr(&s, prop("cursor")), QStringLiteral("24"));
        QString ident;
        QVERIFY(!CursorToIdent(Qt::BitmapCursor, ident));
        QVERIFY(!CursorToIdent(Qt::CustomCursor, ident));
        QVERIFY(!CursorToIdent(-1, ident));
        QVERIFY(CursorToIdent(Qt::DragLinkCursor, ident));
        QCOMPARE(ident, QStringLiteral("DragLinkCursor"));
    }

    void aPropertyWithoutWriteAccessorIsNotWritable()
    {
        QWidget form;
        auto *button = new QPushButton(&form);
        TPropertyDetail x(button, QStringLiteral("x"));
        TPropertyDetail text(button, QStringLiteral("text"));
        QVERIFY(!x.GetPropWritable());
        QVERIFY(text.GetPropWritable());
        // The fields of a value that cannot be written cannot be either.
        QObject *frame = GetPropertyValueObj(button, GetPropInfo(button, QStringLiteral("frameGeometry")));
        QObject *geometry = GetPropertyValueObj(button, GetPropInfo(button, QStringLiteral("geometry")));
        QVERIFY(frame && geometry);
        QVERIFY(!TPropertyDetail(frame, QStringLiteral("width")).GetPropWritable());
        QVERIFY(TPropertyDetail(geometry, QStringLiteral("width")).GetPropWritable());
        // A dialog's "modal" can be written, a button's cannot: one object
        // of a selection that cannot write it is enough.
        QDialog dialog;
        const PPropInfo modal = GetPropInfo(&dialog, QStringLiteral("modal"));
        QVERIFY(TPropertyDetail(QList<QObject *>{&dialog}, modal).GetPropWritable());
        QVERIFY(!TPropertyDetail(QList<QObject *>{&dialog, button}, modal).GetPropWritable());
    }

    void aClassPropertyShowsItsComponentOrItsClassInBrackets()
    {
        Sample s;
        QObject partner;
        QCOMPARE(GetPropertyValueStr(&s, prop("partner")), QString());
        partner.setObjectName(QStringLiteral("Partner1"));
        s.partner = &partner;
        QCOMPARE(GetPropertyValueStr(&s, prop("partner")), QStringLiteral("Partner1"));
        // A value with fields is shown as its class.
        QCOMPARE(GetPropertyValueStr(&s, prop("font")), QStringLiteral("[QFont]"));
    }

    void anEventShowsNoText()
    {
        Sample s;
        TPropInfo event;
        event.Name = QStringLiteral("destroyed");
        event.PropType = TypeInfoOfMethod(QMetaMethod::fromSignal(&QObject::destroyed));
        event.OwnerClass = &Sample::staticMetaObject;
        QCOMPARE(event.PropType->Kind, tkMethod);
        QCOMPARE(GetPropertyValueStr(&s, &event), QString());
    }

    void theFieldsOfAValueAreReadAndWrittenThroughItsValueObject()
    {
        Sample s;
        s.font = QFont(QStringLiteral("Sans"), 11);
        QObject *held = GetPropertyValueObj(&s, prop("font"));
        QVERIFY(held);
        QCOMPARE(held, GetPropertyValueObj(&s, prop("font")));
        PPropInfo size = GetPropInfo(InstanceClass(held), QStringLiteral("pointSize"));
        QVERIFY(size);
        QCOMPARE(GetPropertyValueStr(held, size), QStringLiteral("11"));
        SetPropertyValueStr(held, size, QStringLiteral("15"));
        QCOMPARE(s.font.pointSize(), 15);
        PPropInfo bold = GetPropInfo(InstanceClass(held), QStringLiteral("bold"));
        SetPropertyValueStr(held, bold, QStringLiteral("True"));
        QVERIFY(s.font.bold());
    }

    void everyKindIsWrittenFromText()
    {
        Sample s;
        SetPropertyValueStr(&s, prop("caption"), QStringLiteral("Written"));
        SetPropertyValueStr(&s, prop("number"), QStringLiteral("123"));
        SetPropertyValueStr(&s, prop("ratio"), QStringLiteral("0.25"));
        SetPropertyValueStr(&s, prop("letter"), QStringLiteral("xyz"));
        SetPropertyValueStr(&s, prop("flag"), QStringLiteral("true"));
        SetPropertyValueStr(&s, prop("shape"), QStringLiteral("Square"));
        SetPropertyValueStr(&s, prop("sides"), QStringLiteral("[Top,Edge]"));
        SetPropertyValueStr(&s, prop("anything"), QStringLiteral("text"));
        QCOMPARE(s.caption, QStringLiteral("Written"));
        QCOMPARE(s.number, 123);
        QCOMPARE(s.ratio, 0.25);
        QCOMPARE(s.letter, QLatin1Char('x'));
        QVERIFY(s.flag);
        QCOMPARE(s.shape, Sample::Square);
        QCOMPARE(s.sides(), Sample::Top | Sample::Edge);
        QCOMPARE(s.anything, QVariant(QStringLiteral("text")));
        SetPropertyValueStr(&s, prop("letter"), QString());
        QCOMPARE(s.letter, QChar(0));
    }

    void badTextRaisesAConversionErrorAndChangesNothing()
    {
        Sample s;
        s.number = 5;
        s.shape = Sample::Square;
        s.setSides(Sample::Left);
        s.color = QColor(Qt::green);
        QVERIFY_THROWS_EXCEPTION(EConvertError, SetPropertyValueStr(&s, prop("number"), QStringLiteral("abc")));
        QVERIFY_THROWS_EXCEPTION(EConvertError, SetPropertyValueStr(&s, prop("ratio"), QStringLiteral("1.2.3")));
        QVERIFY_THROWS_EXCEPTION(EConvertError, SetPropertyValueStr(&s, prop("shape"), QStringLiteral("Hexagon")));
        QVERIFY_THROWS_EXCEPTION(EConvertError, SetPropertyValueStr(&s, prop("sides"), QStringLiteral("[Left,Middle]")));
        QVERIFY_THROWS_EXCEPTION(EConvertError, SetPropertyValueStr(&s, prop("color"), QStringLiteral("notacolour")));
        QVERIFY_THROWS_EXCEPTION(EConvertError, SetPropertyValueStr(&s, prop("flag"), QStringLiteral("maybe")));
        QCOMPARE(s.number, 5);
        QCOMPARE(s.shape, Sample::Square);
        QCOMPARE(s.sides(), Sample::Sides(Sample::Left));
        QCOMPARE(s.color, QColor(Qt::green));
        QVERIFY(!s.flag);
    }

    void anEmptyVariantIsRefusedRatherThanWrittenAsADefault()
    {
        Sample s;
        s.number = 12;
        s.anything = 3;
        QVERIFY_THROWS_EXCEPTION(EPropertyError, SetPropValue(&s, prop("number"), QVariant()));
        QVERIFY_THROWS_EXCEPTION(EPropertyError, SetPropValue(&s, prop("anything"), QVariant()));
        QCOMPARE(s.number, 12);
        QCOMPARE(s.anything, QVariant(3));
    }

    void aComponentReferenceIsStoredWithItsClassChecked()
    {
        Sample s;
        QPushButton button;
        QObject plain;
        SetPropertyValueObj(&s, prop("button"), &button);
        QCOMPARE(s.button, &button);
        QVERIFY_THROWS_EXCEPTION(EPropertyError, SetPropertyValueObj(&s, prop("button"), &plain));
        QCOMPARE(s.button, &button);
        SetPropertyValueObj(&s, prop("partner"), &plain);
        QCOMPARE(s.partner, &plain);
    }

    void twoObjectsThatDisagreeShowNothingAndAnEmptyTextWritesNeither()
    {
        Sample a, b;
        a.caption = QStringLiteral("One");
        b.caption = QStringLiteral("Two");
        const QList<QObject *> both{&a, &b};
        QCOMPARE(GetPropertyValueStr(both, prop("caption")), QString());
        SetPropertyValueStr(both, prop("caption"), QString());
        QCOMPARE(a.caption, QStringLiteral("One"));
        QCOMPARE(b.caption, QStringLiteral("Two"));
        // A value they share shows; a text written reaches both.
        a.number = b.number = 9;
        QCOMPARE(GetPropertyValueStr(both, prop("number")), QStringLiteral("9"));
        SetPropertyValueStr(both, prop("caption"), QStringLiteral("Same"));
        QCOMPARE(a.caption, QStringLiteral("Same"));
        QCOMPARE(b.caption, QStringLiteral("Same"));
        QCOMPARE(GetPropertyValueStr(both, prop("caption")), QStringLiteral("Same"));
        // Only case differs: they disagree.
        b.caption = QStringLiteral("same");
        QCOMPARE(GetPropertyValueStr(both, prop("caption")), QString());
    }

    void aNilObjectInTheListIsSkipped()
    {
        Sample a, b;
        a.caption = b.caption = QStringLiteral("Both");
        const QList<QObject *> withNil{nullptr, &a, nullptr, &b};
        QCOMPARE(GetPropertyValueStr(withNil, prop("caption")), QStringLiteral("Both"));
        SetPropertyValueStr(withNil, prop("caption"), QStringLiteral("Changed"));
        QCOMPARE(a.caption, QStringLiteral("Changed"));
        QCOMPARE(b.caption, QStringLiteral("Changed"));
        QPushButton x;
        SetPropertyValueObj(withNil, prop("button"), &x);
        QCOMPARE(a.button, &x);
        QCOMPARE(GetPropertyValueObj(withNil, prop("button")), &x);
        b.button = nullptr;
        QCOMPARE(GetPropertyValueObj(withNil, prop("button")), nullptr);
        QCOMPARE(GetPropertyValueObj(QList<QObject *>{}, prop("button")), nullptr);
    }

    void objectsOfDifferentClassesShareAPropertyByName()
    {
        QPushButton button;
        QLabel label;
        button.setToolTip(QStringLiteral("Tip"));
        label.setToolTip(QStringLiteral("Tip"));
        const QList<QObject *> both{&button, &label};
        PPropInfo tip = GetPropInfo(&button, QStringLiteral("toolTip"));
        QCOMPARE(GetPropertyValueStr(both, tip), QStringLiteral("Tip"));
        SetPropertyValueStr(both, tip, QStringLiteral("Other"));
        QCOMPARE(label.toolTip(), QStringLiteral("Other"));
        TPropertyDetail detail(both, tip);
        QCOMPARE(detail.ClassInformation().ClassNameStr(), QStringLiteral("QWidget"));
    }

    void writingTheTextAlreadyShownNeitherWritesNorRefreshes()
    {
        Sample s;
        s.setSides(Sample::Left);
        const int writes = s.sideWrites;
        CountingDetail detail(&s, prop("sides"));
        detail.refreshes = 0;
        detail.SetPropValueStr(QStringLiteral("[Left]"));
        QCOMPARE(s.sideWrites, writes);
        QCOMPARE(detail.refreshes, 0);
        detail.SetPropValueStr(QStringLiteral("[Left,Top]"));
        QCOMPARE(s.sideWrites, writes + 1);
        QCOMPARE(detail.refreshes, 1);
    }

    void setElementsAreAddedAndTakenOutOfTheText()
    {
        Sample s;
        TPropertyDetailEx sides(&s, prop("sides"));
        QCOMPARE(sides.GetEnumInformation().EnumNames(),
                 QStringList({QStringLiteral("Left"), QStringLiteral("Top"), QStringLiteral("Right"),
                              QStringLiteral("Edge"), QStringLiteral("EdgeX")}));
        TSetItemConst left(&sides, 0), top(&sides, 1), right(&sides, 2);
        QCOMPARE(left.GetValueString(), QStringLiteral("Left"));
        QVERIFY(ChangeSetValueStr(&left, true));
        QCOMPARE(GetPropertyValueStr(&s, prop("sides")), QStringLiteral("[Left]"));
        QVERIFY(ChangeSetValueStr(&right, true));
        QVERIFY(ChangeSetValueStr(&top, true));
        QCOMPARE(s.sides(), Sample::Left | Sample::Top | Sample::Right);
        QCOMPARE(GetPropertyValueStr(&s, prop("sides")), QStringLiteral("[Left,Top,Right]"));
        QVERIFY(ChangeSetValueStr(&top, false));
        QCOMPARE(GetPropertyValueStr(&s, prop("sides")), QStringLiteral("[Left,Right]"));
        QVERIFY(ChangeSetValueStr(&right, false));
        QCOMPARE(GetPropertyValueStr(&s, prop("sides")), QStringLiteral("[Left]"));
        QVERIFY(ChangeSetValueStr(&left, false));
        QCOMPARE(s.sides(), Sample::Sides());
    }

    void anElementAlreadyInOrAlreadyOutIsNotWritten()
    {
        Sample s;
        s.setSides(Sample::Top);
        TPropertyDetailEx sides(&s, prop("sides"));
        TSetItemConst top(&sides, 1), right(&sides, 2);
        const int writes = s.sideWrites;
        QVERIFY(!ChangeSetValueStr(&top, true));
        QVERIFY(!ChangeSetValueStr(&right, false));
        QCOMPARE(s.sideWrites, writes);
    }

    void anElementInsideALongerNameCountsAsPresent()
    {
        Sample s;
        s.setSides(Sample::EdgeX);
        TPropertyDetailEx sides(&s, prop("sides"));
        TSetItemConst edge(&sides, 3);
        QCOMPARE(edge.GetValueString(), QStringLiteral("Edge"));
        // "Edge" is found inside "[EdgeX]": nothing is added.
        QVERIFY(!ChangeSetValueStr(&edge, true));
        QCOMPARE(s.sides(), Sample::Sides(Sample::EdgeX));
    }

    void anElementWithoutPropertyHasNoInformation()
    {
        TSetItemConst loose(nullptr, 2);
        QCOMPARE(loose.GetEnumInformation(), nullptr);
        QCOMPARE(loose.GetValueString(), QString());
        QVERIFY(!ChangeSetValueStr(&loose, true));
    }

    void theIndentIsTwoSpacesPerLevelAndATwoCharacterMarker()
    {
        QCOMPARE(GetObjInspecIndentStr(0, false, false), QStringLiteral("  "));
        QCOMPARE(GetObjInspecIndentStr(2, true, false), QStringLiteral("    + "));
        QCOMPARE(GetObjInspecIndentStr(1, true, true), QStringLiteral("  - "));
        QCOMPARE(GetObjInspecIndentStr(-3, true, true), QStringLiteral("- "));
        QCOMPARE(GetObjInspecIndentStr(1, false, true), QStringLiteral("    "));
    }

    void aDetailKnowsItsPropertyAndFollowsItsObjects()
    {
        Sample a;
        QPushButton b;
        TPropertyDetailEx detail(&a, QStringLiteral("shape"));
        QCOMPARE(detail.GetPropName(), QStringLiteral("shape"));
        QCOMPARE(detail.GetPropTypeInfoRef()->Kind, tkEnumeration);
        QCOMPARE(detail.GetEnumInformation().EnumNames(),
                 QStringList({QStringLiteral("Circle"), QStringLiteral("Square"), QStringLiteral("Triangle")}));
        QCOMPARE(detail.ClassInformation().ClassNameStr(), QStringLiteral("Sample"));
        detail.SetBasedObject(&b);
        QCOMPARE(detail.ClassInformation().ClassNameStr(), QStringLiteral("QPushButton"));
        TPropertyDetail none(&a, QStringLiteral("noSuchProperty"));
        QCOMPARE(none.GetPropInfoRef(), nullptr);
        QCOMPARE(none.GetPropName(), QString());
        QCOMPARE(none.GetPropValueStr(), QString());
        none.SetPropValueStr(QStringLiteral("x"));
        QCOMPARE(none.GetPropValueObject(), nullptr);
    }
};

QTEST_MAIN(tst_QorPropDetail)
#include "tst_qorpropdetail.moc"
