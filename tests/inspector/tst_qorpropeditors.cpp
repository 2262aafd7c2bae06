// The built-in property editors: reading, writing one object and three,
// refusing bad text, their lists and sub-editors, their dialogs driven by
// real input; the registry's choice of editor and the enumeration of a
// selection's editors.
#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "foundation/qortypinfo.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"
#include "inspector/qoreditorintf.h"
#include "inspector/qorpropeditors.h"

#include <QApplication>
#include <QColorDialog>
#include <QDate>
#include <QDialogButtonBox>
#include <QFontDialog>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

class Gauge : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int level MEMBER level)
    Q_PROPERTY(int other MEMBER other)
    Q_PROPERTY(double ratio MEMBER ratio)
    Q_PROPERTY(QChar mark MEMBER mark)
    Q_PROPERTY(QString caption MEMBER caption)
    Q_PROPERTY(bool lit MEMBER lit)
    Q_PROPERTY(Qt::Alignment align MEMBER align)
    Q_PROPERTY(QColor tint MEMBER tint)
    Q_PROPERTY(QKeySequence shortcut MEMBER shortcut)
    Q_PROPERTY(QStringList items MEMBER items)
    Q_PROPERTY(QDate day MEMBER day)
    Q_PROPERTY(QPushButton *target MEMBER target)
    Q_PROPERTY(QVariant anything MEMBER anything)
    Q_PROPERTY(QBrush brush MEMBER brush)

public:
    using QWidget::QWidget;
    int level = 0;
    int other = 0;
    double ratio = 0;
    QChar mark;
    QString caption;
    bool lit = false;
    Qt::Alignment align = Qt::AlignLeft;
    QColor tint = Qt::black;
    QKeySequence shortcut;
    QStringList items;
    QDate day;
    QPushButton *target = nullptr;
    QVariant anything;
    QBrush brush;

signals:
    void levelChanged(int value);
};

// The form the gauges sit on: its slots are what their events connect to.
class GaugeForm : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;
    int received = -1;
    int pings = 0;

public slots:
    void onLevel(int value) { received = value; }
    void ping() { ++pings; }
    void takesText(const QString &) {}
};

namespace {

class EdA : public TPropertyEditor
{
public:
    using TPropertyEditor::TPropertyEditor;
};
class EdB : public TPropertyEditor
{
public:
    using TPropertyEditor::TPropertyEditor;
};
class EdC : public TPropertyEditor
{
public:
    using TPropertyEditor::TPropertyEditor;
};
class EdD : public TPropertyEditor
{
public:
    using TPropertyEditor::TPropertyEditor;
};

PPropInfo prop(const QObject *object, const char *name)
{
    return GetPropInfo(object, QLatin1String(name));
}

// The editor the registry gives for a property of these objects, filled
// as the inspector fills it.
TPropertyEditorRef editorFor(const QList<QObject *> &objects, const char *name)
{
    TPropertyEditorRef editor =
        CreatePropertyEditor(nullptr, objects.first(), prop(objects.first(), name), int(objects.size()));
    for (int i = 0; i < objects.size(); ++i)
        editor->SetPropEntry(i, objects[i], prop(objects[i], name));
    editor->Initialize();
    return editor;
}

QStringList valuesOf(const TPropertyEditorRef &editor)
{
    QStringList values;
    editor->GetValues([&values](const QString &v) { values.append(v); });
    return values;
}

QList<TPropertyEditorRef> subEditors(const TPropertyEditorRef &editor)
{
    QList<TPropertyEditorRef> subs;
    editor->GetProperties([&subs](const TPropertyEditorRef &sub) { subs.append(sub); });
    return subs;
}

TPropertyEditorRef subNamed(const TPropertyEditorRef &editor, const QString &name)
{
    for (const TPropertyEditorRef &sub : subEditors(editor)) {
        if (sub->GetName() == name)
            return sub;
    }
    return {};
}

// Runs an editor's dialog, handing it to Drive once it is up.
template<class Dialog>
bool runDialog(const TPropertyEditorRef &editor, const std::function<void(Dialog *)> &Drive)
{
    const auto driven = QorGuiTest::whenModalOpens([Drive](QWidget *modal) {
        if (auto *dialog = qobject_cast<Dialog *>(modal))
            Drive(dialog);
        else
            QFAIL("the modal window is not the editor's dialog");
    });
    editor->Edit();
    return *driven;
}

} // namespace

class tst_QorPropEditors : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY2(RealInput::open(), "no X display with XTest"); }
    void cleanup()
    {
        RealInput::releaseAll();
        UnregisterPropertyEditors(&Gauge::staticMetaObject);
        UnregisterPropertyEditors(&QWidget::staticMetaObject);
        QTRY_COMPARE(QorGuiTest::liveTopLevelWidgets(), 0);
    }

    // ---- The registry ----

    void theMostSpecificRegistrationWins()
    {
        Gauge gauge;
        auto made = [&](const char *name) {
            return CreatePropertyEditor(nullptr, &gauge, prop(&gauge, name), 1);
        };
        // Nothing registered: the editor of the kind.
        QVERIFY(dynamic_cast<TIntegerProperty *>(made("level").get()));
        RegisterPropertyEditor<EdB>(TypeInfoOf<int>(), &QWidget::staticMetaObject, QString());
        QVERIFY(dynamic_cast<EdB *>(made("level").get()));
        // The nearer class wins, registered before or after.
        RegisterPropertyEditor<EdA>(TypeInfoOf<int>(), &Gauge::staticMetaObject, QString());
        QVERIFY(dynamic_cast<EdA *>(made("level").get()));
        // A name beats any class.
        RegisterPropertyEditor<EdC>(TypeInfoOf<int>(), &QWidget::staticMetaObject, QStringLiteral("LEVEL"));
        QVERIFY(dynamic_cast<EdC *>(made("level").get()));
        QVERIFY(dynamic_cast<EdA *>(made("other").get()));
        // Among equals the later one.
        RegisterPropertyEditor<EdD>(TypeInfoOf<int>(), &Gauge::staticMetaObject, QString());
        QVERIFY(dynamic_cast<EdD *>(made("other").get()));
        // Another type is not matched.
        QVERIFY(dynamic_cast<TFloatProperty *>(made("ratio").get()));
        UnregisterPropertyEditors(&Gauge::staticMetaObject);
        QVERIFY(dynamic_cast<EdB *>(made("other").get()));
        UnregisterPropertyEditors(&QWidget::staticMetaObject);
        QVERIFY(dynamic_cast<TIntegerProperty *>(made("level").get()));
    }

    void eachKindHasItsEditor()
    {
        Gauge gauge;
        auto made = [&](const char *name) {
            return CreatePropertyEditor(nullptr, &gauge, prop(&gauge, name), 1);
        };
        QVERIFY(dynamic_cast<TStringProperty *>(made("caption").get()));
        QVERIFY(dynamic_cast<TCharProperty *>(made("mark").get()));
        QVERIFY(dynamic_cast<TBoolProperty *>(made("lit").get()));
        QVERIFY(dynamic_cast<TEnumProperty *>(made("focusPolicy").get()));
        QVERIFY(dynamic_cast<TSetProperty *>(made("align").get()));
        QVERIFY(dynamic_cast<TColorProperty *>(made("tint").get()));
        QVERIFY(dynamic_cast<TCursorProperty *>(made("cursor").get()));
        QVERIFY(dynamic_cast<TFontProperty *>(made("font").get()));
        QVERIFY(dynamic_cast<TClassProperty *>(made("geometry").get()));
        QVERIFY(dynamic_cast<TKeySequenceProperty *>(made("shortcut").get()));
        QVERIFY(dynamic_cast<TStringListProperty *>(made("items").get()));
        QVERIFY(dynamic_cast<TDateTimeProperty *>(made("day").get()));
        QVERIFY(dynamic_cast<TComponentProperty *>(made("target").get()));
        QVERIFY(dynamic_cast<TRecordProperty *>(made("brush").get()));
        PPropInfo event = GetPropInfo(&gauge, QStringLiteral("levelChanged"));
        QVERIFY(event && event->PropType->Kind == tkMethod);
        QVERIFY(dynamic_cast<TMethodProperty *>(CreatePropertyEditor(nullptr, &gauge, event, 1).get()));
        QLabel label;
        QVERIFY(dynamic_cast<TPictureProperty *>(
            CreatePropertyEditor(nullptr, &label, prop(&label, "pixmap"), 1).get()));
    }

    void aSelectionsEditorsAreThoseOfItsSharedProperties()
    {
        QPushButton button;
        QLabel label;
        TQorDesignerSelections selections;
        selections.Add(&button);
        selections.Add(nullptr);
        selections.Add(&label);
        QStringList names;
        GetComponentProperties(selections, TTypeKinds{tkInteger, tkLString, tkClass, tkEnumeration, tkSet}, nullptr,
                               [&names](const TPropertyEditorRef &editor) {
                                   QCOMPARE(editor->PropCount(), 2);
                                   names.append(editor->GetName());
                               });
        QVERIFY(names.contains(QStringLiteral("text")));
        QVERIFY(names.contains(QStringLiteral("toolTip")));
        QVERIFY(names.contains(QStringLiteral("geometry")));
        QVERIFY(!names.contains(QStringLiteral("flat")));
        QVERIFY(!names.contains(QStringLiteral("wordWrap")));
        QVERIFY(!names.contains(QStringLiteral("clicked")));
        QStringList sorted = names;
        std::sort(sorted.begin(), sorted.end(),
                  [](const QString &a, const QString &b) { return a.compare(b, Qt::CaseInsensitive) < 0; });
        QCOMPARE(names, sorted);
        QStringList events;
        GetComponentProperties(selections, TTypeKinds{tkMethod}, nullptr,
                               [&events](const TPropertyEditorRef &editor) { events.append(editor->GetName()); });
        QVERIFY(events.contains(QStringLiteral("destroyed")));
        QVERIFY(events.contains(QStringLiteral("windowTitleChanged")));
        QVERIFY(!events.contains(QStringLiteral("clicked")));
        QVERIFY(!events.contains(QStringLiteral("text")));
    }

    // ---- Numbers, texts, truth values ----

    void numbersAndTextsAreReadWrittenAndRefused()
    {
        Gauge a, b, c;
        const QList<QObject *> three{&a, &b, &c};
        auto level = editorFor(three, "level");
        QCOMPARE(level->GetValue(), QStringLiteral("0"));
        level->SetValue(QStringLiteral("5"));
        QCOMPARE(a.level + b.level + c.level, 15);
        QVERIFY_THROWS_EXCEPTION(EConvertError, level->SetValue(QStringLiteral("x5")));
        QCOMPARE(c.level, 5);
        b.level = 6;
        QCOMPARE(level->GetValue(), QString());
        QVERIFY(!level->AllEqual());

        auto ratio = editorFor({&a}, "ratio");
        ratio->SetValue(QStringLiteral("2.5"));
        QCOMPARE(a.ratio, 2.5);
        QCOMPARE(ratio->GetValue(), QStringLiteral("2.5"));
        QVERIFY_THROWS_EXCEPTION(EConvertError, ratio->SetValue(QStringLiteral("1,5,6")));
        QCOMPARE(a.ratio, 2.5);

        auto mark = editorFor(three, "mark");
        mark->SetValue(QStringLiteral("q"));
        QCOMPARE(c.mark, QLatin1Char('q'));
        QCOMPARE(mark->GetValue(), QStringLiteral("q"));

        auto caption = editorFor(three, "caption");
        QVERIFY(caption->GetAttributes() & paDialog);
        QVERIFY(caption->GetAttributes() & paMultiSelect);
        caption->SetValue(QStringLiteral("Hello"));
        QCOMPARE(b.caption, QStringLiteral("Hello"));

        auto lit = editorFor(three, "lit");
        QCOMPARE(valuesOf(lit), QStringList({"False", "True"}));
        lit->SetValue(QStringLiteral("True"));
        QVERIFY(a.lit && b.lit && c.lit);
        QVERIFY_THROWS_EXCEPTION(EConvertError, lit->SetValue(QStringLiteral("Perhaps")));
        QVERIFY(c.lit);
    }

    void enumerationsOfferTheirIdentifiers()
    {
        Gauge a, b;
        auto focus = editorFor({&a, &b}, "focusPolicy");
        QVERIFY(focus->GetAttributes() & paValueList);
        QVERIFY(valuesOf(focus).contains(QStringLiteral("StrongFocus")));
        QVERIFY(valuesOf(focus).contains(QStringLiteral("NoFocus")));
        focus->SetValue(QStringLiteral("ClickFocus"));
        QCOMPARE(b.focusPolicy(), Qt::ClickFocus);
        QCOMPARE(focus->GetValue(), QStringLiteral("ClickFocus"));
        QVERIFY_THROWS_EXCEPTION(EConvertError, focus->SetValue(QStringLiteral("Nope")));
        QCOMPARE(a.focusPolicy(), Qt::ClickFocus);
    }

    void flagsHaveOneTrueOrFalseSubEditorPerFlag()
    {
        Gauge a, b, c;
        auto align = editorFor({&a, &b, &c}, "align");
        QVERIFY(align->GetAttributes() & paSubProperties);
        QVERIFY(align->GetAttributes() & paReadOnly);
        QCOMPARE(align->GetValue(), QStringLiteral("[AlignLeft]"));
        const QList<TPropertyEditorRef> flags = subEditors(align);
        QCOMPARE(flags.first()->GetName(), QStringLiteral("AlignLeft"));
        auto right = subNamed(align, QStringLiteral("AlignRight"));
        QVERIFY(right);
        QCOMPARE(right->GetValue(), QStringLiteral("False"));
        QCOMPARE(valuesOf(right), QStringList({"True", "False"}));
        right->SetValue(QStringLiteral("True"));
        for (Gauge *g : {&a, &b, &c})
            QCOMPARE(g->align, Qt::AlignLeft | Qt::AlignRight);
        subNamed(align, QStringLiteral("AlignLeft"))->SetValue(QStringLiteral("False"));
        QCOMPARE(c.align, Qt::Alignment(Qt::AlignRight));
        QCOMPARE(align->GetValue(), QStringLiteral("[AlignRight]"));
    }

    // ---- Colours, cursors, fonts and values with fields ----

    void coloursAndCursorsOfferTheirNames()
    {
        Gauge a, b;
        auto tint = editorFor({&a, &b}, "tint");
        QVERIFY(tint->GetAttributes() & paDialog);
        QVERIFY(valuesOf(tint).contains(QStringLiteral("red")));
        QCOMPARE(tint->GetValue(), QStringLiteral("black"));
        tint->SetValue(QStringLiteral("blue"));
        QCOMPARE(b.tint, QColor(Qt::blue));
        QVERIFY_THROWS_EXCEPTION(EConvertError, tint->SetValue(QStringLiteral("no colour")));
        QCOMPARE(a.tint, QColor(Qt::blue));
        auto cursor = editorFor({&a, &b}, "cursor");
        QVERIFY(valuesOf(cursor).contains(QStringLiteral("WaitCursor")));
        cursor->SetValue(QStringLiteral("WaitCursor"));
        QCOMPARE(b.cursor().shape(), Qt::WaitCursor);
    }

    void valuesWithFieldsShowShortTextsAndEditTheirFields()
    {
        QPushButton a, b;
        a.setGeometry(10, 20, 80, 30);
        b.setGeometry(10, 20, 80, 30);
        auto geometry = editorFor({&a, &b}, "geometry");
        QCOMPARE(geometry->GetValue(), QStringLiteral("[(10, 20), 80 x 30]"));
        QVERIFY(geometry->GetAttributes() & paReadOnly);
        auto width = subNamed(geometry, QStringLiteral("width"));
        QVERIFY(width);
        QCOMPARE(width->GetValue(), QStringLiteral("80"));
        width->SetValue(QStringLiteral("100"));
        QCOMPARE(a.width(), 100);
        QCOMPARE(b.width(), 100);
        QCOMPARE(geometry->GetValue(), QStringLiteral("[(10, 20), 100 x 30]"));
        QCOMPARE(editorFor({&a}, "minimumSize")->GetValue(), QStringLiteral("0 x 0"));
        QCOMPARE(editorFor({&a}, "sizePolicy")->GetValue(), QStringLiteral("[Minimum, Fixed, 0, 0]"));
        auto font = editorFor({&a}, "font");
        QVERIFY(font->GetAttributes() & paDialog);
        const QFont f = a.font();
        QCOMPARE(font->GetValue(), QStringLiteral("%1, %2").arg(f.family()).arg(f.pointSize()));
        subNamed(font, QStringLiteral("pointSize"))->SetValue(QStringLiteral("15"));
        QCOMPARE(a.font().pointSize(), 15);
        QVERIFY_THROWS_EXCEPTION(EConvertError, subNamed(font, QStringLiteral("pointSize"))->SetValue(QStringLiteral("big")));
        QCOMPARE(a.font().pointSize(), 15);
    }

    // ---- Key sequences, pictures, lists, dates, other values ----

    void keySequencesAreWrittenInTheirPortableText()
    {
        Gauge a;
        auto shortcut = editorFor({&a}, "shortcut");
        shortcut->SetValue(QStringLiteral("Ctrl+S"));
        QCOMPARE(a.shortcut, QKeySequence(Qt::CTRL | Qt::Key_S));
        QCOMPARE(shortcut->GetValue(), QStringLiteral("Ctrl+S"));
        QVERIFY_THROWS_EXCEPTION(EConvertError, shortcut->SetValue(QStringLiteral("Ctrl+Bogus")));
        QCOMPARE(a.shortcut, QKeySequence(Qt::CTRL | Qt::Key_S));
    }

    void picturesComeFromImageFiles()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString file = dir.filePath(QStringLiteral("dot.png"));
        QImage image(8, 8, QImage::Format_RGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(file));
        QLabel a, b;
        auto pixmap = editorFor({&a, &b}, "pixmap");
        QCOMPARE(pixmap->GetValue(), QStringLiteral("(none)"));
        pixmap->SetValue(file);
        QCOMPARE(b.pixmap().size(), QSize(8, 8));
        QCOMPARE(pixmap->GetValue(), QStringLiteral("dot.png"));
        QVERIFY_THROWS_EXCEPTION(EConvertError, pixmap->SetValue(dir.filePath(QStringLiteral("missing.png"))));
        QCOMPARE(a.pixmap().size(), QSize(8, 8));
        pixmap->SetValue(QStringLiteral("(none)"));
        QVERIFY(a.pixmap().isNull());
    }

    void listsDatesAndOtherValues()
    {
        Gauge a, b;
        auto items = editorFor({&a, &b}, "items");
        items->SetValue(QStringLiteral("one\ntwo"));
        QCOMPARE(b.items, QStringList({"one", "two"}));
        QCOMPARE(items->GetValue(), QStringLiteral("[one, two]"));
        auto day = editorFor({&a, &b}, "day");
        day->SetValue(QStringLiteral("2026-11-25"));
        QCOMPARE(a.day, QDate(2026, 11, 25));
        QCOMPARE(day->GetValue(), QStringLiteral("2026-11-25"));
        QVERIFY_THROWS_EXCEPTION(EConvertError, day->SetValue(QStringLiteral("2026-13-40")));
        QCOMPARE(b.day, QDate(2026, 11, 25));
        a.brush = QBrush(Qt::red);
        auto brush = editorFor({&a}, "brush");
        QVERIFY(brush->GetAttributes() & paReadOnly);
        QCOMPARE(brush->GetValue(), QStringLiteral("[QBrush]"));
        auto anything = editorFor({&a}, "anything");
        anything->SetValue(QStringLiteral("text"));
        QCOMPARE(a.anything, QVariant(QStringLiteral("text")));
    }

    // ---- References and events ----

    void aReferencePicksAComponentOfTheForm()
    {
        QWidget form;
        auto *gauge = new Gauge(&form);
        gauge->setObjectName(QStringLiteral("Gauge1"));
        auto *button = new QPushButton(&form);
        button->setObjectName(QStringLiteral("Button1"));
        auto *label = new QLabel(&form);
        label->setObjectName(QStringLiteral("Label1"));
        for (QObject *c : {static_cast<QObject *>(gauge), static_cast<QObject *>(button), static_cast<QObject *>(label)})
            InsertComponent(&form, c);
        auto target = editorFor({gauge}, "target");
        QCOMPARE(valuesOf(target), QStringList({"Button1"}));
        target->SetValue(QStringLiteral("Button1"));
        QCOMPARE(gauge->target, button);
        QCOMPARE(target->GetValue(), QStringLiteral("Button1"));
        QVERIFY_THROWS_EXCEPTION(EPropertyError, target->SetValue(QStringLiteral("Nobody")));
        QVERIFY_THROWS_EXCEPTION(EPropertyError, target->SetValue(QStringLiteral("Label1")));
        QCOMPARE(gauge->target, button);
        target->SetValue(QString());
        QCOMPARE(gauge->target, nullptr);
    }

    void anEventIsConnectedToTheChosenSlotOfTheForm()
    {
        GaugeForm form;
        auto *gauge = new Gauge(&form);
        gauge->setObjectName(QStringLiteral("Gauge1"));
        InsertComponent(&form, gauge);
        PPropInfo event = GetPropInfo(gauge, QStringLiteral("levelChanged"));
        TPropertyEditorRef editor = CreatePropertyEditor(nullptr, gauge, event, 1);
        editor->SetPropEntry(0, gauge, event);
        QVERIFY(editor->GetAttributes() & paDialog);
        const QStringList offered = valuesOf(editor);
        QVERIFY(offered.contains(QStringLiteral("onLevel")));
        QVERIFY(offered.contains(QStringLiteral("ping")));
        QVERIFY(!offered.contains(QStringLiteral("takesText")));
        QCOMPARE(editor->GetValue(), QString());
        editor->SetValue(QStringLiteral("onLevel"));
        QCOMPARE(editor->GetValue(), QStringLiteral("onLevel"));
        emit gauge->levelChanged(7);
        QCOMPARE(form.received, 7);
        // Another slot replaces it.
        editor->SetValue(QStringLiteral("ping"));
        emit gauge->levelChanged(8);
        QCOMPARE(form.received, 7);
        QCOMPARE(form.pings, 1);
        QVERIFY_THROWS_EXCEPTION(EPropertyError, editor->SetValue(QStringLiteral("takesText")));
        QCOMPARE(editor->GetValue(), QStringLiteral("ping"));
        editor->SetValue(QString());
        emit gauge->levelChanged(9);
        QCOMPARE(form.pings, 1);
        QCOMPARE(editor->GetValue(), QString());
    }

    // ---- Dialogs, with real input ----

    void theTextDialogEditsSeveralLines()
    {
        Gauge a, b;
        auto caption = editorFor({&a, &b}, "caption");
        const bool driven = runDialog<QDialog>(caption, [](QDialog *dialog) {
            QCOMPARE(dialog->objectName(), QStringLiteral("QorTextDialog"));
            auto *text = dialog->findChild<QPlainTextEdit *>();
            RealInput::click(text);
            RealInput::typeText(QStringLiteral("first"));
            RealInput::key("Return");
            RealInput::typeText(QStringLiteral("second"));
            auto *ok = dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
            RealInput::click(ok);
        });
        QVERIFY(driven);
        QCOMPARE(a.caption, QStringLiteral("first\nsecond"));
        QCOMPARE(b.caption, QStringLiteral("first\nsecond"));
        // Escape changes nothing.
        QVERIFY(runDialog<QDialog>(caption, [](QDialog *dialog) {
            RealInput::click(dialog->findChild<QPlainTextEdit *>());
            RealInput::typeText(QStringLiteral("more"));
            RealInput::key("Escape");
        }));
        QCOMPARE(a.caption, QStringLiteral("first\nsecond"));
    }

    void theColourDialogPicksAColour()
    {
        Gauge a;
        auto tint = editorFor({&a}, "tint");
        QVERIFY(runDialog<QColorDialog>(tint, [](QColorDialog *dialog) {
            QCOMPARE(dialog->objectName(), QStringLiteral("QorColorDialog"));
            // The field of the colour's HTML name.
            QLineEdit *html = nullptr;
            for (QLineEdit *edit : dialog->findChildren<QLineEdit *>()) {
                if (edit->text().startsWith(QLatin1Char('#')))
                    html = edit;
            }
            QVERIFY(html);
            RealInput::click(html);
            RealInput::key("a", Qt::ControlModifier);
            RealInput::typeText(QStringLiteral("#336699"));
            RealInput::key("Tab");
            RealInput::click(dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok));
        }));
        QCOMPARE(a.tint, QColor(0x33, 0x66, 0x99));
    }

    void theFontDialogPicksASize()
    {
        QPushButton a;
        auto font = editorFor({&a}, "font");
        QVERIFY(runDialog<QFontDialog>(font, [](QFontDialog *dialog) {
            QCOMPARE(dialog->objectName(), QStringLiteral("QorFontDialog"));
            QLineEdit *size = QorGuiTest::numberField(dialog);
            QVERIFY(size);
            RealInput::click(size);
            RealInput::key("a", Qt::ControlModifier);
            RealInput::typeText(QStringLiteral("21"));
            RealInput::key("Tab");
            RealInput::click(dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok));
        }));
        QCOMPARE(a.font().pointSize(), 21);
    }
};

QTEST_MAIN(tst_QorPropEditors)
#include "tst_qorpropeditors.moc"
