// SPDX-License-Identifier: MIT
// The inspector's rows: which properties are listed and shown, nested
// rows of expanded sets and values, labels through the translate events,
// the edit settings of each line, and the selection lists editors are
// enumerated for.
#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "foundation/qortypinfo.h"
#include "inspector/qoreditorintf.h"
#include "inspector/qorproplist.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

class Gauge : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int level MEMBER level)
    Q_PROPERTY(Qt::Alignment align MEMBER align)
    Q_PROPERTY(QWidget *buddy MEMBER buddy)
    Q_PROPERTY(QPoint spot MEMBER spot)
    Q_PROPERTY(QMargins pad MEMBER pad)

public:
    using QWidget::QWidget;
    QPoint spot;
    QMargins pad;
    int level = 0;
    Qt::Alignment align = Qt::AlignLeft;
    QWidget *buddy = nullptr;

Q_SIGNALS:
    void levelChanged(int value);
};

namespace {

// An editor that cannot edit several objects at once.
class SingleEditor : public TPropertyEditor
{
public:
    using TPropertyEditor::TPropertyEditor;
    TPropertyAttributes GetAttributes() const override { return paRevertable; }
};

QStringList names(const TValueListStrings &strings)
{
    QStringList list;
    for (int i = 0; i < strings.Count(); ++i)
        list.append(strings.Names(i));
    return list;
}

// The line of a property, whatever its indent and marker.
int lineOf(const TValueListStrings &strings, const QString &name)
{
    for (int i = 0; i < strings.Count(); ++i) {
        QString label = strings.Names(i).trimmed();
        if (label.startsWith(QLatin1String("+ ")) || label.startsWith(QLatin1String("- ")))
            label = label.mid(2);
        if (label == name)
            return i;
    }
    return -1;
}

// A list wired to strings, as the inspector wires its own.
struct Listed
{
    TValueListStrings strings;
    TObjInspecPropListEx list;

    explicit Listed(QObject *object, bool editors = false)
        : list(object, editors)
    {
        list.SetValueListStrings(&strings);
        list.SetAutoUpdateOutput(true);
        list.UpdateOutputList();
    }
};

} // namespace

class tst_QorPropList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { UnregisterPropertyEditors(&Gauge::staticMetaObject); }

    void everyPublishedPropertyGetsARowInNameOrder()
    {
        QPushButton button;
        TObjInspecPropList list(&button, false);
        TClassInformation info;
        info.SetPTI(TypeInfoOf<QPushButton>());
        QCOMPARE(list.Count(), info.PropList().size() + info.EventList().size());
        QVERIFY(list.IndexOfPropName(QStringLiteral("TEXT")) >= 0);
        QCOMPARE(list.GetPropItemsByName(QStringLiteral("text"))->GetPropName(), QStringLiteral("text"));
        QVERIFY_THROWS_EXCEPTION(EQorError, list.GetPropItemsByName(QStringLiteral("noSuchThing")));
        QCOMPARE(list.GetPropItemsByInfo(nullptr), nullptr);
        QCOMPARE(list.IndexOfPropInfo(GetPropInfo(&button, QStringLiteral("flat"))),
                 list.IndexOfPropName(QStringLiteral("flat")));
    }

    void onlyTheOutputNamesAreShownWhateverIsConcealed()
    {
        QPushButton button;
        Listed l(&button);
        l.list.SetConcealedPropNames({QStringLiteral("text")});
        QVERIFY(!names(l.strings).contains(QStringLiteral("  text")));
        QVERIFY(names(l.strings).contains(QStringLiteral("  flat")));
        l.list.SetOutputPropNames({QStringLiteral("objectName"), QStringLiteral("TEXT")});
        QCOMPARE(names(l.strings), QStringList({QStringLiteral("  objectName"), QStringLiteral("  text")}));
    }

    void aNewListShowsNoEventsUntilAskedFor()
    {
        Gauge gauge;
        Listed l(&gauge);
        QVERIFY(!names(l.strings).contains(QStringLiteral("  levelChanged")));
        l.list.SetPropertyFilterStyles(pfProperty | pfEvent);
        QVERIFY(names(l.strings).contains(QStringLiteral("  levelChanged")));
        QVERIFY(names(l.strings).contains(QStringLiteral("  level")));
        const int event = names(l.strings).indexOf(QStringLiteral("  levelChanged"));
        QCOMPARE(l.strings.ValueFromIndex(event), QString());
        QVERIFY(l.strings.ItemProps(event).ReadOnly);
        QCOMPARE(l.strings.ItemProps(event).EditStyle, esSimple);
        l.list.SetPropertyFilterStyles(pfEvent);
        QVERIFY(!names(l.strings).contains(QStringLiteral("  level")));
        l.list.SetOutputEventNames({QStringLiteral("destroyed")});
        QCOMPARE(names(l.strings), QStringList({QStringLiteral("  destroyed")}));
    }

    void aPropertyWhoseEditorCannotMultiSelectHidesForTwoObjects()
    {
        RegisterPropertyEditor<SingleEditor>(TypeInfoOf<int>(), &Gauge::staticMetaObject, QStringLiteral("level"));
        Gauge a, b;
        Listed l(&a, true);
        QVERIFY(names(l.strings).contains(QStringLiteral("  level")));
        l.list.SetBasedObjects({&a, &b});
        l.list.UpdateOutputList();
        QVERIFY(!names(l.strings).contains(QStringLiteral("  level")));
        QVERIFY(names(l.strings).contains(QStringLiteral("  toolTip")));
    }

    void objectsOfDifferentClassesListOnlyWhatTheyShare()
    {
        QPushButton button;
        QLabel label;
        TObjInspecPropList list(&button, false);
        list.SetBasedObjects({&button, &label});
        QVERIFY(list.IndexOfPropName(QStringLiteral("toolTip")) >= 0);
        QVERIFY(list.IndexOfPropName(QStringLiteral("geometry")) >= 0);
        QCOMPARE(list.IndexOfPropName(QStringLiteral("flat")), -1);
        QCOMPARE(list.IndexOfPropName(QStringLiteral("wordWrap")), -1);
        // "text" exists in both classes: it is listed.
        QVERIFY(list.IndexOfPropName(QStringLiteral("text")) >= 0);
    }

    void anExpandedValueRowIsFollowedByItsFieldsOneLevelDeeper()
    {
        QPushButton button;
        button.setGeometry(10, 20, 80, 30);
        Listed l(&button);
        const QStringList before = names(l.strings);
        const int at = before.indexOf(QStringLiteral("+ geometry"));
        QVERIFY(at >= 0);
        TObjInspecPropertyItem *geometry = l.list.GetPropItemsByName(QStringLiteral("geometry"));
        QVERIFY(geometry->GetExpandable());
        geometry->SetExpanded(true);
        const QStringList after = names(l.strings);
        // A rectangle's fields in their natural order, not by name.
        QCOMPARE(after.mid(at, 6),
                 QStringList({QStringLiteral("- geometry"), QStringLiteral("    x"), QStringLiteral("    y"),
                              QStringLiteral("    width"), QStringLiteral("    height"), before.at(at + 1)}));
        QCOMPARE(after.size(), before.size() + 4);
        QCOMPARE(l.strings.ValueFromIndex(at + 1), QStringLiteral("10"));
        QCOMPARE(l.strings.ValueFromIndex(at + 4), QStringLiteral("30"));
        // Without property editors the value row reads as its class and
        // cannot be typed into.
        QCOMPARE(l.strings.ValueFromIndex(at), QStringLiteral("[QRect]"));
        QVERIFY(l.strings.ItemProps(at).ReadOnly);
        QVERIFY(!l.strings.ItemProps(at + 3).ReadOnly);
        // A field written through its line's row resizes the widget.
        auto *width = dynamic_cast<TObjInspecPropertyItem *>(l.strings.Objects(at + 3));
        QVERIFY(width);
        width->SetPropValueStr(QStringLiteral("120"));
        QCOMPARE(button.geometry(), QRect(10, 20, 120, 30));
        geometry->SetExpanded(false);
        QCOMPARE(names(l.strings), before);
    }

    void theFieldsOfEachValueReadInTheirNaturalOrder_data()
    {
        QTest::addColumn<QString>("property");
        QTest::addColumn<QStringList>("fields");
        QTest::newRow("rectangle") << "geometry"
                                   << QStringList({QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("width"),
                                                   QStringLiteral("height")});
        QTest::newRow("size") << "minimumSize" << QStringList({QStringLiteral("width"), QStringLiteral("height")});
        QTest::newRow("point") << "spot" << QStringList({QStringLiteral("x"), QStringLiteral("y")});
        QTest::newRow("margins") << "pad"
                                 << QStringList({QStringLiteral("left"), QStringLiteral("top"), QStringLiteral("right"),
                                                 QStringLiteral("bottom")});
        QTest::newRow("size policy") << "sizePolicy"
                                     << QStringList(
                                            {QStringLiteral("horizontalPolicy"), QStringLiteral("verticalPolicy"),
                                             QStringLiteral("horizontalStretch"), QStringLiteral("verticalStretch")});
        QTest::newRow("font") << "font"
                              << QStringList({QStringLiteral("family"), QStringLiteral("pointSize"),
                                              QStringLiteral("weight"), QStringLiteral("bold"),
                                              QStringLiteral("italic"), QStringLiteral("underline"),
                                              QStringLiteral("strikeOut"), QStringLiteral("kerning")});
    }

    void theFieldsOfEachValueReadInTheirNaturalOrder()
    {
        QFETCH(QString, property);
        QFETCH(QStringList, fields);
        Gauge gauge;
        Listed l(&gauge, true);
        l.list.GetPropItemsByName(property)->SetExpanded(true);
        const int at = lineOf(l.strings, property);
        QStringList listed;
        for (int i = at + 1; i <= at + fields.size(); ++i)
            listed.append(l.strings.Names(i).trimmed());
        QCOMPARE(listed, fields);
        // The line after the fields is the next property, one level up.
        QVERIFY(!l.strings.Names(at + int(fields.size()) + 1).startsWith(QLatin1String("    ")));
        // The properties themselves stay in name order.
        const QStringList all = names(l.strings);
        QVERIFY(all.indexOf(QStringLiteral("  accessibleDescription")) < all.indexOf(QStringLiteral("  level")));
    }

    void theNameListsReachIntoNestedRowsToo()
    {
        QPushButton button;
        Listed l(&button);
        l.list.SetOutputPropNames({QStringLiteral("geometry"), QStringLiteral("width")});
        l.list.GetPropItemsByName(QStringLiteral("geometry"))->SetExpanded(true);
        // The widget's own width follows the geometry's.
        QCOMPARE(names(l.strings),
                 QStringList({QStringLiteral("- geometry"), QStringLiteral("    width"), QStringLiteral("  width")}));
    }

    void anExpandedSetListsItsElementsUntranslated()
    {
        Gauge gauge;
        gauge.align = Qt::AlignRight | Qt::AlignTop;
        Listed l(&gauge);
        // Every identifier shows in capitals.
        l.list.SetOnTranslateIdent([](TObjInspecList *, PTypeInfo, const QString &, TTransRole, QString &Dest) {
            Dest = Dest.toUpper();
        });
        l.list.SetOutputPropNames({QStringLiteral("align"), QStringLiteral("level")});
        QCOMPARE(names(l.strings), QStringList({QStringLiteral("+ ALIGN"), QStringLiteral("  LEVEL")}));
        l.list.GetPropItemsByName(QStringLiteral("align"))->SetExpanded(true);
        const QStringList lines = names(l.strings);
        QCOMPARE(lines.first(), QStringLiteral("- ALIGN"));
        QCOMPARE(lines.last(), QStringLiteral("  LEVEL"));
        // One line per single flag of Qt::AlignmentFlag, in value order,
        // named by the identifier itself.
        QCOMPARE(lines.mid(1, 4),
                 QStringList({QStringLiteral("    AlignLeft"), QStringLiteral("    AlignRight"),
                              QStringLiteral("    AlignHCenter"), QStringLiteral("    AlignJustify")}));
        const int right = lines.indexOf(QStringLiteral("    AlignRight"));
        const int top = lines.indexOf(QStringLiteral("    AlignTop"));
        const int left = lines.indexOf(QStringLiteral("    AlignLeft"));
        QCOMPARE(l.strings.ValueFromIndex(right), QStringLiteral("True"));
        QCOMPARE(l.strings.ValueFromIndex(top), QStringLiteral("True"));
        QCOMPARE(l.strings.ValueFromIndex(left), QStringLiteral("False"));
        QCOMPARE(l.strings.ItemProps(left).EditStyle, esPickList);
        QCOMPARE(l.strings.ItemProps(left).PickList, QStringList({QStringLiteral("True"), QStringLiteral("False")}));
        QVERIFY(dynamic_cast<TSetItemConst *>(l.strings.Objects(left)));
    }

    void labelsComeFromTheTranslateEventsOnlyWhenTranslating()
    {
        Gauge gauge;
        gauge.level = 7;
        Listed l(&gauge);
        l.list.SetOutputPropNames({QStringLiteral("level")});
        l.list.SetOnTranslateIdent([](TObjInspecList *, PTypeInfo, const QString &Src, TTransRole Role, QString &Dest) {
            Dest = (Role == trPropName ? QStringLiteral("N:") : QStringLiteral("V:")) + Src;
        });
        l.list.SetOnTranslateToIdent([](TObjInspecList *, PTypeInfo, const QString &Src, TTransRole, QString &Dest) {
            Dest = Src.mid(2);
        });
        l.list.UpdateOutputList();
        QCOMPARE(l.strings.Strings(0), QStringLiteral("  N:level=V:7"));
        QCOMPARE(l.list.LabelToIdent(nullptr, QStringLiteral("V:8"), trPropValue), QStringLiteral("8"));
        l.list.SetTranslate(false);
        QCOMPARE(l.strings.Strings(0), QStringLiteral("  level=7"));
        QCOMPARE(l.list.LabelToIdent(nullptr, QStringLiteral("V:8"), trPropValue), QStringLiteral("V:8"));
    }

    void eachLineGetsItsEditSettings()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        auto *gauge = new Gauge(&form);
        gauge->setObjectName(QStringLiteral("Gauge1"));
        auto *other = new QPushButton(&form);
        other->setObjectName(QStringLiteral("Button1"));
        auto *unnamed = new QPushButton(&form);
        InsertComponent(&form, gauge);
        InsertComponent(&form, other);
        InsertComponent(&form, unnamed);
        Listed l(gauge);
        QCOMPARE(l.list.GetOwnerObject(), &form);
        l.list.SetOutputPropNames({QStringLiteral("buddy"), QStringLiteral("focusPolicy"), QStringLiteral("level"),
                                   QStringLiteral("geometry")});
        const int buddy = lineOf(l.strings, QStringLiteral("buddy"));
        const int focus = lineOf(l.strings, QStringLiteral("focusPolicy"));
        const int level = lineOf(l.strings, QStringLiteral("level"));
        const int geometry = lineOf(l.strings, QStringLiteral("geometry"));
        QVERIFY(buddy >= 0 && focus >= 0 && level >= 0 && geometry >= 0);
        // A component reference picks among the owner's named components.
        QCOMPARE(l.strings.ItemProps(buddy).EditStyle, esPickList);
        QCOMPARE(l.strings.ItemProps(buddy).PickList, QStringList({QStringLiteral("Gauge1"), QStringLiteral("Button1")}));
        QVERIFY(!l.strings.ItemProps(buddy).ReadOnly);
        // An enumeration picks among its identifiers.
        QCOMPARE(l.strings.ItemProps(focus).EditStyle, esPickList);
        QVERIFY(l.strings.ItemProps(focus).PickList.contains(QStringLiteral("StrongFocus")));
        QCOMPARE(l.strings.ItemProps(level).EditStyle, esSimple);
        QVERIFY(!l.strings.ItemProps(level).ReadOnly);
        QVERIFY(l.strings.ItemProps(geometry).ReadOnly);
        // Picking a name stores the component; an empty text clears it.
        TObjInspecPropertyItem *row = l.list.GetPropItemsByName(QStringLiteral("buddy"));
        row->SetPropValueStr(QStringLiteral("Button1"));
        QCOMPARE(gauge->buddy, other);
        QCOMPARE(row->GetPropValueStr(), QStringLiteral("Button1"));
        row->SetPropValueStr(QString());
        QCOMPARE(gauge->buddy, nullptr);
    }

    void aValueWithATextIsTypedAndAPropertyWithoutWriterIsLocked()
    {
        QWidget form;
        auto *gauge = new Gauge(&form);
        InsertComponent(&form, gauge);
        Listed l(gauge, true);
        const int geometry = lineOf(l.strings, QStringLiteral("geometry"));
        const int palette = lineOf(l.strings, QStringLiteral("palette"));
        const int x = lineOf(l.strings, QStringLiteral("x"));
        const int focusPolicy = lineOf(l.strings, QStringLiteral("focusPolicy"));
        QVERIFY(geometry >= 0 && palette >= 0 && x >= 0 && focusPolicy >= 0);
        // Through its editor a rectangle is typed in its own text.
        QVERIFY(!l.strings.ItemProps(geometry).ReadOnly);
        QVERIFY(!l.strings.ItemProps(geometry).Locked);
        // A palette only through its fields.
        QVERIFY(l.strings.ItemProps(palette).ReadOnly);
        QVERIFY(!l.strings.ItemProps(palette).Locked);
        // Qt gives "x" no writer: locked, without a list to pick from.
        QVERIFY(l.strings.ItemProps(x).ReadOnly);
        QVERIFY(l.strings.ItemProps(x).Locked);
        QCOMPARE(l.strings.ItemProps(x).EditStyle, esSimple);
        QVERIFY(!l.strings.ItemProps(focusPolicy).Locked);
    }

    // ---- Values made when read ----

    void aPendingValueIsMadeWhenFirstReadAndAgainOnlyWhenForgotten()
    {
        TValueListStrings strings;
        TObject one;
        TObject *first = &one;
        int made = 0;
        strings.SetValueMaker([&made, first](TObject *Object) {
            ++made;
            return Object == first ? QStringLiteral("one") : QStringLiteral("other");
        });
        const int line = strings.AddPending(QStringLiteral("  a"), first);
        strings.AddPending(QStringLiteral("  b"), nullptr);
        QVERIFY(strings.ValuePending(line));
        // The name needs no value.
        QCOMPARE(strings.Names(line), QStringLiteral("  a"));
        QCOMPARE(made, 0);
        QCOMPARE(strings.ValueFromIndex(line), QStringLiteral("one"));
        QCOMPARE(strings.Strings(line), QStringLiteral("  a=one"));
        QCOMPARE(made, 1);
        QVERIFY(!strings.ValuePending(line));
        QCOMPARE(strings.Objects(line), first);
        // Forgotten: made again on the next read, silently.
        QSignalSpy changed(&strings, &TValueListStrings::LineChanged);
        strings.SetValuePending(line);
        QCOMPARE(strings.Names(line), QStringLiteral("  a"));
        QCOMPARE(strings.ValueFromIndex(line), QStringLiteral("one"));
        QCOMPARE(made, 2);
        QCOMPARE(changed.count(), 0);
        // A pending value written over is not made first.
        strings.SetValueFromIndex(1, QStringLiteral("typed"));
        QCOMPARE(made, 2);
        QCOMPARE(strings.Strings(1), QStringLiteral("  b=typed"));
        QCOMPARE(changed.count(), 1);
        // Without a maker a pending value reads empty.
        TValueListStrings bare;
        bare.AddPending(QStringLiteral("c"), nullptr);
        QCOMPARE(bare.Strings(0), QStringLiteral("c="));
    }

    void linesWithValuesMadeWhenReadReadAsLinesFilledAtOnce()
    {
        QWidget form;
        auto *a = new Gauge(&form);
        auto *b = new Gauge(&form);
        InsertComponent(&form, a);
        InsertComponent(&form, b);
        a->level = b->level = 4;
        a->setToolTip(QStringLiteral("same"));
        b->setToolTip(QStringLiteral("same"));
        b->setGeometry(1, 2, 3, 4);
        TValueListStrings eager, lazy;
        lazy.SetValueMaker(&ObjInspecValueText);
        TObjInspecPropListEx list(nullptr, true);
        list.SetBasedObjects({a, b});
        list.SetValueListStrings(&eager);
        list.UpdateOutputList();
        list.SetValueListStrings(&lazy);
        list.UpdateOutputList();
        QVERIFY(lazy.Count() > 20);
        QVERIFY(lazy.ValuePending(0));
        QCOMPARE(lazy.Count(), eager.Count());
        for (int i = 0; i < eager.Count(); ++i)
            QCOMPARE(lazy.Strings(i), eager.Strings(i));
        QCOMPARE(lazy.ValueFromIndex(lineOf(lazy, QStringLiteral("level"))), QStringLiteral("4"));
        QCOMPARE(lazy.ValueFromIndex(lineOf(lazy, QStringLiteral("toolTip"))), QStringLiteral("same"));
        QCOMPARE(lazy.ValueFromIndex(lineOf(lazy, QStringLiteral("geometry"))), QString());
    }

    void rowsAreFoundByTheirDisplayLabels()
    {
        Gauge gauge;
        Listed l(&gauge);
        // Blanks go, then a first character that cannot start a name.
        QCOMPARE(l.list.GetPropertyItemsByLabel(QStringLiteral("  +level"))->GetPropName(), QStringLiteral("level"));
        QCOMPARE(l.list.GetPropertyItemsByLabel(QStringLiteral("Level "))->GetPropName(), QStringLiteral("level"));
        QVERIFY_THROWS_EXCEPTION(EQorError, l.list.GetPropertyItemsByLabel(QStringLiteral("_level")));
        const int align = l.list.IndexOfPropName(QStringLiteral("align"));
        QCOMPARE(l.list.GetIndentStrs(align), QStringLiteral("+ "));
        QCOMPARE(l.list.GetPropNameDisplayLabels(align), QStringLiteral("+ align"));
    }

    void aNestedListTakesTheUpperListsSettingsOneLevelDown()
    {
        Gauge gauge;
        Listed l(&gauge);
        l.list.SetPropertyFilterStyles(pfProperty | pfEvent);
        l.list.SetLevel(2);
        TObjInspecPropListEx nested(&gauge, false);
        nested.CopyDetailFromUpperLevel(&l.list);
        QCOMPARE(nested.Level(), 3);
        QCOMPARE(nested.UpperList(), &l.list);
        QCOMPARE(nested.PropertyFilterStyles(), pfProperty | pfEvent);
        QCOMPARE(nested.ValueListStrings(), &l.strings);
        TObjInspecPropListEx deeper(&gauge, false);
        deeper.CopyDetailFromUpperLevel(&nested);
        QCOMPARE(deeper.Level(), 4);
        QCOMPARE(deeper.UpperList(), &l.list);
    }

    void aSelectionHoldsOnlyTheLiveObjectsInOrder()
    {
        QObject a, b;
        auto *gone = new QObject;
        TQorDesignerSelections selections;
        QCOMPARE(selections.Add(&a), 0);
        selections.Add(nullptr);
        selections.Add(gone);
        selections.Add(&b);
        delete gone;
        QList<QObject *> live;
        for (int i = 0; i < selections.Count(); ++i) {
            if (QObject *object = selections.Get(i))
                live.append(object);
        }
        QCOMPARE(live, QList<QObject *>({&a, &b}));
        TQorDesignerSelections same;
        same.Add(&a);
        same.Add(nullptr);
        same.Add(nullptr);
        same.Add(&b);
        QVERIFY(selections.Equals(same));
        same.Add(&a);
        QVERIFY(!selections.Equals(same));
    }
};

QTEST_MAIN(tst_QorPropList)
#include "tst_qorproplist.moc"
