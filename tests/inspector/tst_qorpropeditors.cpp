// SPDX-License-Identifier: MIT
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
#include "foundation/vhortti_p.h"

#include <QApplication>
#include <QColorDialog>
#include <QDate>
#include <QDialogButtonBox>
#include <QFontDialog>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QFileDialog>
#include <QKeySequenceEdit>
#include <QListWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <bit>
#include <memory>
#include <vector>

class Gauge : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int level MEMBER level)
    Q_PROPERTY(int other MEMBER other)
    Q_PROPERTY(qlonglong big MEMBER big)
    Q_PROPERTY(qulonglong ubig MEMBER ubig)
    Q_PROPERTY(double ratio MEMBER ratio)
    Q_PROPERTY(QChar mark MEMBER mark)
    Q_PROPERTY(QString caption MEMBER caption)
    Q_PROPERTY(QByteArray raw MEMBER raw)
    Q_PROPERTY(bool lit MEMBER lit)
    Q_PROPERTY(Qt::Alignment align MEMBER align)
    Q_PROPERTY(QColor tint MEMBER tint)
    Q_PROPERTY(QKeySequence shortcut MEMBER shortcut)
    Q_PROPERTY(QStringList items MEMBER items)
    Q_PROPERTY(QDate day MEMBER day)
    Q_PROPERTY(QTime when MEMBER when)
    Q_PROPERTY(QDateTime moment MEMBER moment)
    Q_PROPERTY(QSize extent MEMBER extent)
    Q_PROPERTY(QPoint spot MEMBER spot)
    Q_PROPERTY(QMargins pad MEMBER pad)
    // Held as Qt's own widgets hold their buddies: it may die first.
    Q_PROPERTY(QPushButton *target READ targetButton WRITE setTargetButton)
    Q_PROPERTY(QVariant anything MEMBER anything)
    Q_PROPERTY(QBrush brush MEMBER brush)

public:
    using QWidget::QWidget;
    QPushButton *targetButton() const { return target; }
    void setTargetButton(QPushButton *Button) { target = Button; }
    int level = 0;
    int other = 0;
    qlonglong big = 0;
    qulonglong ubig = 0;
    double ratio = 0;
    QChar mark;
    QString caption;
    QByteArray raw;
    bool lit = false;
    Qt::Alignment align = Qt::AlignLeft;
    QColor tint = Qt::black;
    QKeySequence shortcut;
    QStringList items;
    QDate day;
    QTime when;
    QDateTime moment;
    QSize extent;
    QPoint spot;
    QMargins pad;
    QPointer<QPushButton> target;
    QVariant anything;
    QBrush brush;

Q_SIGNALS:
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

public Q_SLOTS:
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

// Runs an editor's dialog, handing it to Drive once it is up. A dialog the
// driving leaves open is cancelled after a while, so that a failing step
// fails the test instead of hanging it.
template<class Dialog>
bool runDialog(const TPropertyEditorRef &editor, const std::function<void(Dialog *)> &Drive)
{
    const auto driven = QorGuiTest::whenModalOpens([Drive](QWidget *modal) {
        if (auto *dialog = qobject_cast<QDialog *>(modal))
            QTimer::singleShot(8000, dialog, &QDialog::reject);
        if (auto *dialog = qobject_cast<Dialog *>(modal))
            Drive(dialog);
        else
            QFAIL("the modal window is not the editor's dialog");
    });
    editor->Edit();
    return *driven;
}

QPushButton *okButton(QWidget *dialog)
{
    auto *buttons = dialog->findChild<QDialogButtonBox *>();
    return buttons ? buttons->button(QDialogButtonBox::Ok) : nullptr;
}

// A small image file in a temporary folder.
QString writeImage(const QTemporaryDir &dir, const QString &name, const QSize &size)
{
    const QString file = dir.filePath(name);
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    return image.save(file) ? file : QString();
}

} // namespace

class tst_QorPropEditors : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { RealInputTestCase::initTestCase(); }
    void cleanup()
    {
        UnregisterPropertyEditors(&Gauge::staticMetaObject);
        UnregisterPropertyEditors(&QWidget::staticMetaObject);
        RealInputTestCase::cleanup();
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

    void aSelectionsEditorsShareItsObjectsAndReadEachOnesValue()
    {
        QWidget form;
        auto *a = new QPushButton(&form);
        auto *b = new QPushButton(&form);
        auto *label = new QLabel(&form);
        TQorDesignerSelections selections;
        selections.Add(a);
        selections.Add(b);
        selections.Add(label);
        QHash<QString, TPropertyEditorRef> editors;
        GetComponentProperties(selections, TTypeKinds::all(), nullptr,
                               [&editors](const TPropertyEditorRef &editor) { editors.insert(editor->GetName(), editor); });
        const TPropertyEditorRef text = editors.value(QStringLiteral("text"));
        const TPropertyEditorRef font = editors.value(QStringLiteral("font"));
        const TPropertyEditorRef policy = editors.value(QStringLiteral("sizePolicy"));
        const TPropertyEditorRef focus = editors.value(QStringLiteral("focusPolicy"));
        QVERIFY(text && font && policy && focus);
        // Each object keeps its own class's descriptor.
        QCOMPARE(text->GetPropInfo(0)->OwnerClass, &QPushButton::staticMetaObject);
        QCOMPARE(text->GetPropInfo(2)->OwnerClass, &QLabel::staticMetaObject);
        QCOMPARE(text->GetComponent(2), label);

        a->setText(QStringLiteral("Same"));
        b->setText(QStringLiteral("Same"));
        label->setText(QStringLiteral("Other"));
        QCOMPARE(text->GetValue(), QString());
        label->setText(QStringLiteral("Same"));
        QCOMPARE(text->GetValue(), QStringLiteral("Same"));

        // Values compared by their type: fonts, size policies, enumerations.
        QFont bold = form.font();
        bold.setBold(true);
        for (QWidget *w : {static_cast<QWidget *>(a), static_cast<QWidget *>(b), static_cast<QWidget *>(label)})
            w->setFont(bold);
        QVERIFY(font->AllEqual());
        QFont larger = bold;
        larger.setPointSize(bold.pointSize() + 3);
        b->setFont(larger);
        QVERIFY(!font->AllEqual());
        QCOMPARE(font->GetValue(), QString());
        const QSizePolicy fixed(QSizePolicy::Fixed, QSizePolicy::Fixed);
        for (QWidget *w : {static_cast<QWidget *>(a), static_cast<QWidget *>(b), static_cast<QWidget *>(label)})
            w->setSizePolicy(fixed);
        QVERIFY(policy->AllEqual());
        label->setSizePolicy(QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding));
        QVERIFY(!policy->AllEqual());
        for (QWidget *w : {static_cast<QWidget *>(a), static_cast<QWidget *>(b), static_cast<QWidget *>(label)})
            w->setFocusPolicy(Qt::TabFocus);
        QCOMPARE(focus->GetValue(), QStringLiteral("TabFocus"));
        a->setFocusPolicy(Qt::NoFocus);
        QCOMPARE(focus->GetValue(), QString());

        // An object that dies is gone from every editor of the selection.
        delete b;
        QCOMPARE(text->GetComponent(1), nullptr);
        QCOMPARE(font->GetComponent(1), nullptr);
        QCOMPARE(focus->GetComponent(1), nullptr);
        QVERIFY(font->AllEqual());
        QCOMPARE(text->GetValue(), QStringLiteral("Same"));

        // Changing one editor's entry leaves the others as they were.
        QPushButton stranger;
        text->SetPropEntry(0, &stranger, prop(&stranger, "text"));
        QCOMPARE(text->GetComponent(0), &stranger);
        QCOMPARE(font->GetComponent(0), a);
        QCOMPARE(focus->GetComponent(0), a);
        QCOMPARE(text->PropCount(), 3);
        QCOMPARE(text->GetComponent(2), label);
        QCOMPARE(text->GetPropInfo(2)->OwnerClass, &QLabel::staticMetaObject);
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
        QCOMPARE(valuesOf(lit), QStringList({QStringLiteral("False"), QStringLiteral("True")}));
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
        QCOMPARE(valuesOf(right), QStringList({QStringLiteral("True"), QStringLiteral("False")}));
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
        // Its short text can be typed back.
        QVERIFY(!(geometry->GetAttributes() & paReadOnly));
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
        QCOMPARE(b.items, QStringList({QStringLiteral("one"), QStringLiteral("two")}));
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
        QCOMPARE(valuesOf(target), QStringList({QStringLiteral("Button1")}));
        target->SetValue(QStringLiteral("Button1"));
        QCOMPARE(gauge->target.data(), button);
        QCOMPARE(target->GetValue(), QStringLiteral("Button1"));
        QVERIFY_THROWS_EXCEPTION(EPropertyError, target->SetValue(QStringLiteral("Nobody")));
        QVERIFY_THROWS_EXCEPTION(EPropertyError, target->SetValue(QStringLiteral("Label1")));
        QCOMPARE(gauge->target.data(), button);
        target->SetValue(QString());
        QVERIFY(!gauge->target);
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
        Q_EMIT gauge->levelChanged(7);
        QCOMPARE(form.received, 7);
        // Another slot replaces it.
        editor->SetValue(QStringLiteral("ping"));
        Q_EMIT gauge->levelChanged(8);
        QCOMPARE(form.received, 7);
        QCOMPARE(form.pings, 1);
        QVERIFY_THROWS_EXCEPTION(EPropertyError, editor->SetValue(QStringLiteral("takesText")));
        QCOMPARE(editor->GetValue(), QStringLiteral("ping"));
        editor->SetValue(QString());
        Q_EMIT gauge->levelChanged(9);
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

    // ---- Every editor: one object, three at once, bad text ----

    void eachEditorReadsWritesAndRefuses_data()
    {
        QTest::addColumn<QString>("property");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("bad");
        QTest::newRow("integer") << "level" << "42" << "42" << "4x2";
        QTest::newRow("integer in hex") << "level" << "$1F" << "31" << "$G";
        QTest::newRow("64-bit") << "big" << "-9000000000" << "-9000000000" << "9e9";
        QTest::newRow("64-bit in hex") << "big" << "0x100000000" << "4294967296" << "0x";
        QTest::newRow("64-bit unsigned") << "ubig" << "18446744073709551615" << "18446744073709551615"
                                         << "18446744073709551616";
        QTest::newRow("float") << "ratio" << "2.5" << "2.5" << "1,5,6";
        QTest::newRow("character") << "mark" << "q" << "q" << "qq";
        QTest::newRow("character by code") << "mark" << "#9" << "#9" << "#x";
        QTest::newRow("text") << "caption" << "Hello" << "Hello" << "";
        QTest::newRow("bytes") << "raw" << "bytes" << "bytes" << "";
        QTest::newRow("truth") << "lit" << "True" << "True" << "Perhaps";
        QTest::newRow("enumeration") << "focusPolicy" << "ClickFocus" << "ClickFocus" << "Nope";
        QTest::newRow("flags") << "align" << "[AlignTop,AlignRight]" << "[AlignRight,AlignTop]" << "[AlignNowhere]";
        QTest::newRow("named colour") << "tint" << "blue" << "blue" << "no colour";
        QTest::newRow("colour by value") << "tint" << "#336699" << "#336699" << "#33669";
        QTest::newRow("cursor") << "cursor" << "WaitCursor" << "WaitCursor" << "NoSuchCursor";
        QTest::newRow("key sequence") << "shortcut" << "Ctrl+Shift+K" << "Ctrl+Shift+K" << "Ctrl+Bogus";
        QTest::newRow("string list") << "items" << "one\ntwo" << "[one, two]" << "";
        QTest::newRow("date") << "day" << "2026-11-25" << "2026-11-25" << "2026-13-40";
        QTest::newRow("time") << "when" << "13:45:10" << "13:45:10" << "25:00";
        QTest::newRow("date and time") << "moment" << "2026-11-25T13:45:10" << "2026-11-25T13:45:10" << "yesterday";
        QTest::newRow("variant") << "anything" << "text" << "text" << "";
    }

    void eachEditorReadsWritesAndRefuses()
    {
        QFETCH(QString, property);
        QFETCH(QString, text);
        QFETCH(QString, shown);
        QFETCH(QString, bad);
        const QByteArray name = property.toLatin1();
        auto textOf = [&name](QObject *object) { return editorFor({object}, name.constData())->GetValue(); };

        Gauge one;
        auto single = editorFor({&one}, name.constData());
        QVERIFY(single->GetAttributes() & paMultiSelect);
        QVERIFY(single->GetValue() != shown);
        single->SetValue(text);
        QCOMPARE(single->GetValue(), shown);

        Gauge a, b, c;
        const QList<QObject *> three{&a, &b, &c};
        const QVariant before = a.property(name.constData());
        auto all = editorFor(three, name.constData());
        all->SetValue(text);
        for (QObject *g : three) {
            QCOMPARE(textOf(g), shown);
            QCOMPARE(g->property(name.constData()), one.property(name.constData()));
            QVERIFY(g->property(name.constData()) != before);
        }
        QCOMPARE(all->GetValue(), shown);
        QVERIFY(all->AllEqual());

        if (bad.isEmpty())
            return;
        bool refused = false;
        try {
            all->SetValue(bad);
        } catch (const EConvertError &) {
            refused = true;
        } catch (const EPropertyError &) {
            refused = true;
        }
        QVERIFY2(refused, qPrintable(QStringLiteral("'%1' was taken").arg(bad)));
        for (QObject *g : three)
            QCOMPARE(g->property(name.constData()), one.property(name.constData()));
    }

    void emptyTextsClearCharactersDatesAndTimes()
    {
        Gauge a;
        a.mark = QLatin1Char('x');
        a.day = QDate(2026, 1, 2);
        a.when = QTime(1, 2, 3);
        editorFor({&a}, "mark")->SetValue(QString());
        QVERIFY(a.mark.isNull());
        QCOMPARE(editorFor({&a}, "mark")->GetValue(), QString());
        editorFor({&a}, "day")->SetValue(QString());
        QVERIFY(a.day.isNull());
        editorFor({&a}, "when")->SetValue(QStringLiteral("  "));
        QVERIFY(a.when.isNull());
        QCOMPARE(editorFor({&a}, "day")->GetValue(), QString());
    }

    void severalObjectsThatDisagreeShowNothing()
    {
        Gauge a, b;
        a.extent = QSize(40, 20);
        b.extent = QSize(40, 20);
        a.shortcut = b.shortcut = QKeySequence(QStringLiteral("Ctrl+K"));
        auto extent = editorFor({&a, &b}, "extent");
        auto shortcut = editorFor({&a, &b}, "shortcut");
        QCOMPARE(extent->GetValue(), QStringLiteral("40 x 20"));
        QVERIFY(extent->AllEqual());
        QVERIFY(shortcut->AllEqual());
        b.extent = QSize(40, 21);
        b.shortcut = QKeySequence(QStringLiteral("Ctrl+L"));
        QCOMPARE(extent->GetValue(), QString());
        QVERIFY(!extent->AllEqual());
        QCOMPARE(shortcut->GetValue(), QString());
        QVERIFY(!shortcut->AllEqual());
    }

    void theFieldsOfValuesAreSubEditors()
    {
        Gauge a, b, c;
        const QList<QObject *> three{&a, &b, &c};
        for (Gauge *g : {&a, &b, &c}) {
            g->extent = QSize(40, 20);
            g->spot = QPoint(10, 20);
        }
        auto extent = editorFor(three, "extent");
        QCOMPARE(extent->GetAttributes() & (paSubProperties | paReadOnly), paSubProperties);
        QCOMPARE(extent->GetValue(), QStringLiteral("40 x 20"));
        QStringList fields;
        for (const TPropertyEditorRef &sub : subEditors(extent))
            fields.append(sub->GetName());
        // Width before height, as a size is read.
        QCOMPARE(fields, QStringList({QStringLiteral("width"), QStringLiteral("height")}));
        subNamed(extent, QStringLiteral("height"))->SetValue(QStringLiteral("25"));
        for (Gauge *g : {&a, &b, &c})
            QCOMPARE(g->extent, QSize(40, 25));
        QVERIFY_THROWS_EXCEPTION(EConvertError, subNamed(extent, QStringLiteral("width"))->SetValue(QStringLiteral("wide")));
        QCOMPARE(c.extent, QSize(40, 25));

        auto spot = editorFor(three, "spot");
        QCOMPARE(spot->GetValue(), QStringLiteral("10, 20"));
        subNamed(spot, QStringLiteral("x"))->SetValue(QStringLiteral("-3"));
        QCOMPARE(b.spot, QPoint(-3, 20));
        QCOMPARE(spot->GetValue(), QStringLiteral("-3, 20"));

        auto pad = editorFor(three, "pad");
        QCOMPARE(pad->GetValue(), QStringLiteral("[0, 0, 0, 0]"));
        subNamed(pad, QStringLiteral("right"))->SetValue(QStringLiteral("7"));
        QCOMPARE(c.pad, QMargins(0, 0, 7, 0));
        QCOMPARE(pad->GetValue(), QStringLiteral("[0, 0, 7, 0]"));

        a.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        b.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        c.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        auto policy = editorFor(three, "sizePolicy");
        QCOMPARE(policy->GetValue(), QStringLiteral("[Preferred, Fixed, 0, 0]"));
        auto horizontal = subNamed(policy, QStringLiteral("horizontalPolicy"));
        QVERIFY(horizontal);
        QVERIFY(valuesOf(horizontal).contains(QStringLiteral("Expanding")));
        horizontal->SetValue(QStringLiteral("Expanding"));
        subNamed(policy, QStringLiteral("verticalStretch"))->SetValue(QStringLiteral("2"));
        QCOMPARE(b.sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
        QCOMPARE(c.sizePolicy().verticalStretch(), 2);
        QCOMPARE(policy->GetValue(), QStringLiteral("[Expanding, Fixed, 0, 2]"));
        QVERIFY_THROWS_EXCEPTION(EConvertError, horizontal->SetValue(QStringLiteral("Sideways")));
        QCOMPARE(a.sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);

        auto palette = editorFor({&a}, "palette");
        QVERIFY(palette->GetAttributes() & paSubProperties);
        // A palette has no text to type.
        QVERIFY(palette->GetAttributes() & paReadOnly);
        auto window = subNamed(palette, QStringLiteral("window"));
        QVERIFY(dynamic_cast<TColorProperty *>(window.get()));
        window->SetValue(QStringLiteral("red"));
        QCOMPARE(a.palette().color(QPalette::Window), QColor(Qt::red));

        auto font = editorFor(three, "font");
        QCOMPARE(font->GetAttributes() & (paDialog | paSubProperties | paReadOnly), paDialog | paSubProperties);
        subNamed(font, QStringLiteral("bold"))->SetValue(QStringLiteral("True"));
        for (Gauge *g : {&a, &b, &c})
            QVERIFY(g->font().bold());
    }

    void aValueWithFieldsIsTypedInItsTextOrALooserForm_data()
    {
        QTest::addColumn<QString>("property");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shown");
        QTest::newRow("size as shown") << "extent" << "80 x 30" << "80 x 30";
        QTest::newRow("size without blanks") << "extent" << "80x30" << "80 x 30";
        QTest::newRow("size with a comma") << "extent" << "80, 30" << "80 x 30";
        QTest::newRow("point as shown") << "spot" << "-5, 12" << "-5, 12";
        QTest::newRow("point in parentheses with a blank") << "spot" << "(7 8)" << "7, 8";
        QTest::newRow("rectangle as shown") << "geometry" << "[(10, 20), 80 x 30]" << "[(10, 20), 80 x 30]";
        QTest::newRow("rectangle as four numbers") << "geometry" << "11, 21, 81, 31" << "[(11, 21), 81 x 31]";
        QTest::newRow("margins as shown") << "pad" << "[1, 2, 3, 4]" << "[1, 2, 3, 4]";
        QTest::newRow("margins without brackets") << "pad" << "4 3 2 1" << "[4, 3, 2, 1]";
        QTest::newRow("size policy as shown") << "sizePolicy" << "[Expanding, Fixed, 1, 2]"
                                              << "[Expanding, Fixed, 1, 2]";
        QTest::newRow("size policy in any case") << "sizePolicy" << "preferred, MINIMUM, 0, 3"
                                                 << "[Preferred, Minimum, 0, 3]";
        QTest::newRow("font as shown") << "font" << "Serif, 13" << "Serif, 13";
        QTest::newRow("font in pixels") << "font" << "Serif, 20px" << "Serif, 20px";
    }

    void aValueWithFieldsIsTypedInItsTextOrALooserForm()
    {
        QFETCH(QString, property);
        QFETCH(QString, text);
        QFETCH(QString, shown);
        const QByteArray name = property.toLatin1();
        Gauge a, b, c;
        const QList<QObject *> three{&a, &b, &c};
        auto all = editorFor(three, name.constData());
        QVERIFY(all->GetValue() != shown);
        all->SetValue(text);
        for (QObject *g : three)
            QCOMPARE(editorFor({g}, name.constData())->GetValue(), shown);
        QCOMPARE(all->GetValue(), shown);
    }

    void aValueTextThatDoesNotReadIsRefusedAndChangesNothing_data()
    {
        QTest::addColumn<QString>("property");
        QTest::addColumn<QString>("text");
        QTest::newRow("size of three numbers") << "extent" << "80 x 30 x 2";
        QTest::newRow("size with a word") << "extent" << "wide x 30";
        QTest::newRow("empty size") << "extent" << "";
        QTest::newRow("number beyond an int") << "extent" << "99999999999 x 1";
        QTest::newRow("point of one number") << "spot" << "5";
        QTest::newRow("rectangle with a unit") << "geometry" << "10, 20, 80px, 30";
        QTest::newRow("margins run together") << "pad" << "1-2, 3, 4";
        QTest::newRow("unknown size policy") << "sizePolicy" << "Sideways, Fixed";
        QTest::newRow("stretch above 255") << "sizePolicy" << "Fixed, Fixed, 0, 256";
        QTest::newRow("one stretch only") << "sizePolicy" << "Fixed, Fixed, 1";
        QTest::newRow("font without family") << "font" << ", 12";
        QTest::newRow("font with a word for size") << "font" << "Serif, big";
        QTest::newRow("font of size 0") << "font" << "Serif, 0";
    }

    void aValueTextThatDoesNotReadIsRefusedAndChangesNothing()
    {
        QFETCH(QString, property);
        QFETCH(QString, text);
        const QByteArray name = property.toLatin1();
        Gauge a, b;
        a.setGeometry(1, 2, 3, 4);
        b.setGeometry(5, 6, 7, 8);
        a.extent = b.extent = QSize(4, 5);
        const QList<QObject *> two{&a, &b};
        const QVariant beforeA = a.property(name.constData());
        const QVariant beforeB = b.property(name.constData());
        QVERIFY_THROWS_EXCEPTION(EConvertError, editorFor(two, name.constData())->SetValue(text));
        QCOMPARE(a.property(name.constData()), beforeA);
        QCOMPARE(b.property(name.constData()), beforeB);
    }

    void aTypedSizePolicyOrFontLeavesWhatItsTextLeavesOut()
    {
        Gauge a, b;
        QSizePolicy policyA(QSizePolicy::Fixed, QSizePolicy::Fixed);
        policyA.setHorizontalStretch(1);
        policyA.setVerticalStretch(2);
        QSizePolicy policyB = policyA;
        policyB.setHorizontalStretch(3);
        a.setSizePolicy(policyA);
        b.setSizePolicy(policyB);
        editorFor({&a, &b}, "sizePolicy")->SetValue(QStringLiteral("Expanding, Minimum"));
        QCOMPARE(a.sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
        QCOMPARE(b.sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
        QCOMPARE(a.sizePolicy().horizontalStretch(), 1);
        QCOMPARE(b.sizePolicy().horizontalStretch(), 3);
        QCOMPARE(b.sizePolicy().verticalStretch(), 2);

        QFont bold = a.font();
        bold.setBold(true);
        bold.setPointSize(11);
        a.setFont(bold);
        QFont italic = b.font();
        italic.setItalic(true);
        italic.setPointSize(12);
        b.setFont(italic);
        editorFor({&a, &b}, "font")->SetValue(QStringLiteral("Serif, 15"));
        QCOMPARE(a.font().family(), QStringLiteral("Serif"));
        QCOMPARE(b.font().pointSize(), 15);
        QVERIFY(a.font().bold() && !a.font().italic());
        QVERIFY(b.font().italic() && !b.font().bold());
        // A family alone keeps each size.
        a.setFont(bold);
        b.setFont(italic);
        editorFor({&a, &b}, "font")->SetValue(QStringLiteral("Monospace"));
        QCOMPARE(a.font().family(), QStringLiteral("Monospace"));
        QCOMPARE(a.font().pointSize(), 11);
        QCOMPARE(b.font().pointSize(), 12);

        // A palette has no text: typing one is refused.
        const QPalette palette = a.palette();
        QVERIFY_THROWS_EXCEPTION(EPropertyError, editorFor({&a}, "palette")->SetValue(QStringLiteral("red")));
        QCOMPARE(a.palette(), palette);
    }

    void flagsOfferEachSingleBitOnce()
    {
        Gauge a;
        auto align = editorFor({&a}, "align");
        const PTypeInfo type = prop(&a, "align")->PropType;
        QStringList seen;
        for (const TPropertyEditorRef &flag : subEditors(align)) {
            const qint64 bit = StringToSet(type, flag->GetName());
            QVERIFY2(std::has_single_bit(quint64(bit)), qPrintable(flag->GetName()));
            QVERIFY(!seen.contains(flag->GetName()));
            seen.append(flag->GetName());
        }
        // The masks and combinations are no flags of their own.
        QVERIFY(seen.contains(QStringLiteral("AlignHCenter")));
        QVERIFY(!seen.contains(QStringLiteral("AlignCenter")));
        QVERIFY(!seen.contains(QStringLiteral("AlignHorizontal_Mask")));
        QVERIFY_THROWS_EXCEPTION(EConvertError, subNamed(align, QStringLiteral("AlignTop"))->SetValue(QStringLiteral("Maybe")));
        QCOMPARE(a.align, Qt::Alignment(Qt::AlignLeft));
    }

    void iconsComeFromImageFilesToo()
    {
        QTemporaryDir dir;
        const QString file = writeImage(dir, QStringLiteral("star.png"), QSize(16, 16));
        QVERIFY(!file.isEmpty());
        QPushButton a, b, c;
        auto icon = editorFor({&a, &b, &c}, "icon");
        QCOMPARE(icon->GetAttributes() & paDialog, paDialog);
        QCOMPARE(icon->GetValue(), QStringLiteral("(none)"));
        icon->SetValue(file);
        for (QPushButton *button : {&a, &b, &c})
            QVERIFY(!button->icon().isNull());
        QCOMPARE(icon->GetValue(), QStringLiteral("star.png"));
        QVERIFY_THROWS_EXCEPTION(EConvertError, icon->SetValue(dir.filePath(QStringLiteral("none.png"))));
        QCOMPARE(editorFor({&c}, "icon")->GetValue(), QStringLiteral("star.png"));
        icon->SetValue(QString());
        QVERIFY(b.icon().isNull());
        QCOMPARE(icon->GetValue(), QStringLiteral("(none)"));
    }

    void objectsWithEqualValuesShareOneTextUnlessTheTextReadsMore()
    {
        QList<QObject *> hundred;
        std::vector<std::unique_ptr<Gauge>> gauges;
        for (int i = 0; i < 100; ++i) {
            gauges.push_back(std::make_unique<Gauge>());
            gauges.back()->level = 5;
            hundred.append(gauges.back().get());
        }
        auto level = editorFor(hundred, "level");
        QVERIFY(level->TextFollowsValue());
        QCOMPARE(level->GetValue(), QStringLiteral("5"));
        QVERIFY(level->AllEqual());
        gauges.back()->level = 6;
        QCOMPARE(level->GetValue(), QString());
        QVERIFY(!level->AllEqual());
        // An editor of an application's own may read more than the value.
        QVERIFY(!TPropertyEditor(nullptr, 1).TextFollowsValue());

        // A reference is named from each object's own form: one button
        // seen from two forms has two names, though both hold the same.
        QWidget formA, formB;
        formA.setObjectName(QStringLiteral("FormA"));
        formB.setObjectName(QStringLiteral("FormB"));
        auto *button = new QPushButton(&formA);
        button->setObjectName(QStringLiteral("Button1"));
        InsertComponent(&formA, button);
        auto *near = new Gauge(&formA);
        auto *far = new Gauge(&formB);
        InsertComponent(&formA, near);
        InsertComponent(&formB, far);
        near->target = far->target = button;
        auto target = editorFor({near, far}, "target");
        QVERIFY(!target->TextFollowsValue());
        QCOMPARE(editorFor({near}, "target")->GetValue(), QStringLiteral("Button1"));
        QCOMPARE(editorFor({far}, "target")->GetValue(), QStringLiteral("FormA.Button1"));
        QCOMPARE(target->GetValue(), QString());
        QVERIFY(!target->AllEqual());
    }

    void aReferenceIsWrittenToSeveralObjects()
    {
        QWidget form;
        auto *button = new QPushButton(&form);
        button->setObjectName(QStringLiteral("Button1"));
        InsertComponent(&form, button);
        QList<QObject *> gauges;
        for (int i = 0; i < 3; ++i) {
            auto *gauge = new Gauge(&form);
            gauge->setObjectName(QStringLiteral("Gauge%1").arg(i + 1));
            InsertComponent(&form, gauge);
            gauges.append(gauge);
        }
        auto target = editorFor(gauges, "target");
        QCOMPARE(target->GetAttributes() & (paValueList | paSortList), paValueList | paSortList);
        target->SetValue(QStringLiteral("Button1"));
        for (QObject *gauge : gauges)
            QCOMPARE(static_cast<Gauge *>(gauge)->target.data(), button);
        QVERIFY_THROWS_EXCEPTION(EPropertyError, target->SetValue(QStringLiteral("Gauge2")));
        QCOMPARE(static_cast<Gauge *>(gauges.last())->target.data(), button);
        // A component that dies leaves no dangling name behind.
        delete button;
        QCOMPARE(target->GetValue(), QString());
    }

    void anEventOfSeveralComponentsConnectsEach()
    {
        GaugeForm form;
        QList<QObject *> gauges;
        for (int i = 0; i < 3; ++i) {
            auto *gauge = new Gauge(&form);
            gauge->setObjectName(QStringLiteral("Gauge%1").arg(i + 1));
            InsertComponent(&form, gauge);
            gauges.append(gauge);
        }
        auto event = editorFor(gauges, "levelChanged");
        QCOMPARE(event->GetAttributes() & (paValueList | paSortList | paMultiSelect),
                 paValueList | paSortList | paMultiSelect);
        event->SetValue(QStringLiteral("ping"));
        for (QObject *gauge : gauges) {
            Q_EMIT static_cast<Gauge *>(gauge)->levelChanged(1);
            QCOMPARE(gauge->property(QorEventConnectionsProperty()).toMap().value(QStringLiteral("levelChanged")),
                     QVariant(QStringLiteral("ping")));
        }
        QCOMPARE(form.pings, 3);
        // Choosing the same slot again connects it once, not twice.
        event->SetValue(QStringLiteral("ping"));
        Q_EMIT static_cast<Gauge *>(gauges.first())->levelChanged(1);
        QCOMPARE(form.pings, 4);
        QVERIFY_THROWS_EXCEPTION(EPropertyError, event->SetValue(QStringLiteral("noSuchSlot")));
        QCOMPARE(event->GetValue(), QStringLiteral("ping"));
        event->SetValue(QString());
        for (QObject *gauge : gauges) {
            Q_EMIT static_cast<Gauge *>(gauge)->levelChanged(1);
            QVERIFY(!gauge->property(QorEventConnectionsProperty()).isValid());
        }
        QCOMPARE(form.pings, 4);
        // A component without a form has no slots to offer.
        Gauge alone;
        auto lonely = editorFor({&alone}, "levelChanged");
        QVERIFY(valuesOf(lonely).isEmpty());
        QVERIFY_THROWS_EXCEPTION(EPropertyError, lonely->SetValue(QStringLiteral("ping")));
    }

    void aSelectionListHoldsTheLiveObjectsInOrder()
    {
        QObject a, b, c;
        auto *gone = new QObject;
        TQorDesignerSelections selections;
        QCOMPARE(selections.Add(&a), 0);
        selections.Add(nullptr);
        selections.Add(&b);
        selections.Add(gone);
        QCOMPARE(selections.Add(&c), 4);
        delete gone;
        QList<QObject *> live;
        for (int i = 0; i < selections.Count(); ++i) {
            if (QObject *object = selections.Get(i))
                live.append(object);
        }
        QCOMPARE(live, QList<QObject *>({&a, &b, &c}));
        QCOMPARE(selections.Get(-1), nullptr);
        QCOMPARE(selections.Get(selections.Count()), nullptr);
        TQorDesignerSelections same;
        for (QObject *object : {&a, static_cast<QObject *>(nullptr), &b, static_cast<QObject *>(nullptr), &c})
            same.Add(object);
        QVERIFY(selections.Equals(same));
        QVERIFY(same.Equals(selections));
        TQorDesignerSelections otherOrder;
        for (QObject *object : {&b, static_cast<QObject *>(nullptr), &a, static_cast<QObject *>(nullptr), &c})
            otherOrder.Add(object);
        QVERIFY(!selections.Equals(otherOrder));
        same.Add(&a);
        QVERIFY(!selections.Equals(same));
        // Through the interface as the editors see it.
        const IDesignerSelections &asInterface = selections;
        QCOMPARE(asInterface.Count(), 5);
        QCOMPARE(asInterface.Get(2), &b);
    }

    // ---- More dialogs ----

    void dialogsOpenOverTheDialogParentAndCancelChangesNothing()
    {
        QWidget window;
        window.resize(300, 200);
        QVERIFY(QorGuiTest::showAndActivate(&window));
        TPropertyEditor::SetDialogParent(&window);
        Gauge a;
        a.caption = QStringLiteral("kept");
        a.items = QStringList({QStringLiteral("kept")});
        a.shortcut = QKeySequence(QStringLiteral("Ctrl+K"));
        QPushButton button;
        const QFont font = button.font();

        struct Case
        {
            TPropertyEditorRef editor;
            const char *name;
        };
        const QList<Case> cases{{editorFor({&a}, "caption"), "QorTextDialog"},
                                {editorFor({&a}, "items"), "QorStringsDialog"},
                                {editorFor({&a}, "shortcut"), "QorKeySequenceDialog"},
                                {editorFor({&a}, "tint"), "QorColorDialog"},
                                {editorFor({&button}, "font"), "QorFontDialog"}};
        for (const Case &c : cases) {
            QVERIFY(c.editor->GetAttributes() & paDialog);
            QString seenName, seenTitle;
            QWidget *seenParent = nullptr;
            QVERIFY(runDialog<QDialog>(c.editor, [&](QDialog *dialog) {
                seenName = dialog->objectName();
                seenTitle = dialog->windowTitle();
                seenParent = dialog->parentWidget();
                RealInput::key("Escape");
            }));
            QCOMPARE(seenName, QLatin1String(c.name));
            QVERIFY(!seenTitle.isEmpty());
            QCOMPARE(seenParent, &window);
        }
        TPropertyEditor::SetDialogParent(nullptr);
        QCOMPARE(a.caption, QStringLiteral("kept"));
        QCOMPARE(a.items, QStringList({QStringLiteral("kept")}));
        QCOMPARE(a.shortcut, QKeySequence(QStringLiteral("Ctrl+K")));
        QCOMPARE(a.tint, QColor(Qt::black));
        QCOMPARE(button.font(), font);
    }

    void theStringListDialogTakesOneItemPerLine()
    {
        Gauge a, b, c;
        a.items = QStringList({QStringLiteral("old")});
        auto items = editorFor({&a, &b, &c}, "items");
        QCOMPARE(items->GetAttributes() & paDialog, paDialog);
        QVERIFY(runDialog<QDialog>(items, [](QDialog *dialog) {
            QCOMPARE(dialog->objectName(), QStringLiteral("QorStringsDialog"));
            auto *lines = dialog->findChild<QPlainTextEdit *>();
            QVERIFY(lines);
            QCOMPARE(lines->toPlainText(), QStringLiteral("old"));
            RealInput::click(lines);
            RealInput::key("a", Qt::ControlModifier);
            RealInput::typeText(QStringLiteral("red"));
            RealInput::key("Return");
            RealInput::typeText(QStringLiteral("green"));
            RealInput::key("Return");
            RealInput::typeText(QStringLiteral("blue"));
            RealInput::click(okButton(dialog));
        }));
        for (Gauge *g : {&a, &b, &c})
            QCOMPARE(g->items, QStringList({QStringLiteral("red"), QStringLiteral("green"), QStringLiteral("blue")}));
        QCOMPARE(items->GetValue(), QStringLiteral("[red, green, blue]"));
    }

    void theKeySequenceDialogRecordsAKey()
    {
        Gauge a;
        auto shortcut = editorFor({&a}, "shortcut");
        QVERIFY(runDialog<QDialog>(shortcut, [](QDialog *dialog) {
            QCOMPARE(dialog->objectName(), QStringLiteral("QorKeySequenceDialog"));
            auto *edit = dialog->findChild<QKeySequenceEdit *>();
            QVERIFY(edit);
            RealInput::click(edit);
            RealInput::key("k", Qt::ControlModifier | Qt::ShiftModifier);
            RealInput::click(okButton(dialog));
        }));
        QCOMPARE(a.shortcut, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_K));
        QCOMPARE(shortcut->GetValue(), QStringLiteral("Ctrl+Shift+K"));
    }

    void thePictureDialogLoadsTheChosenFile()
    {
        QTemporaryDir dir;
        const QString file = writeImage(dir, QStringLiteral("chosen.png"), QSize(12, 10));
        QVERIFY(!file.isEmpty());
        QLabel a, b;
        auto pixmap = editorFor({&a, &b}, "pixmap");
        QVERIFY(runDialog<QFileDialog>(pixmap, [&file](QFileDialog *dialog) {
            QCOMPARE(dialog->objectName(), QStringLiteral("QorPictureDialog"));
            QVERIFY(dialog->testOption(QFileDialog::DontUseNativeDialog));
            auto *name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
            QVERIFY(name);
            RealInput::click(name);
            RealInput::typeText(file);
            RealInput::key("Return");
        }));
        QCOMPARE(a.pixmap().size(), QSize(12, 10));
        QCOMPARE(b.pixmap().size(), QSize(12, 10));
        QCOMPARE(pixmap->GetValue(), QStringLiteral("chosen.png"));
        QCOMPARE(a.property(QorPictureFileProperty(QStringLiteral("pixmap")).constData()).toString(), file);
        // Escape keeps the picture.
        QVERIFY(runDialog<QFileDialog>(pixmap, [](QFileDialog *) { RealInput::key("Escape"); }));
        QCOMPARE(pixmap->GetValue(), QStringLiteral("chosen.png"));
    }

    void theEventDialogConnectsThePickedSlot()
    {
        GaugeForm form;
        auto *gauge = new Gauge(&form);
        gauge->setObjectName(QStringLiteral("Gauge1"));
        InsertComponent(&form, gauge);
        auto event = editorFor({gauge}, "levelChanged");
        QVERIFY(runDialog<QDialog>(event, [](QDialog *dialog) {
            QCOMPARE(dialog->objectName(), QStringLiteral("QorEventDialog"));
            auto *list = dialog->findChild<QListWidget *>();
            QVERIFY(list);
            const QList<QListWidgetItem *> found = list->findItems(QStringLiteral("onLevel"), Qt::MatchExactly);
            QCOMPARE(found.size(), 1);
            QVERIFY(list->findItems(QStringLiteral("takesText"), Qt::MatchExactly).isEmpty());
            list->scrollToItem(found.first());
            RealInput::click(list->viewport(), list->visualItemRect(found.first()).center());
            QTRY_COMPARE(list->currentItem(), found.first());
            RealInput::click(okButton(dialog));
        }));
        Q_EMIT gauge->levelChanged(12);
        QCOMPARE(form.received, 12);
        QCOMPARE(event->GetValue(), QStringLiteral("onLevel"));
        // "(none)" disconnects.
        QVERIFY(runDialog<QDialog>(event, [](QDialog *dialog) {
            auto *list = dialog->findChild<QListWidget *>();
            list->scrollToTop();
            RealInput::click(list->viewport(), list->visualItemRect(list->item(0)).center());
            QTRY_COMPARE(list->currentRow(), 0);
            RealInput::click(okButton(dialog));
        }));
        Q_EMIT gauge->levelChanged(13);
        QCOMPARE(form.received, 12);
        QCOMPARE(event->GetValue(), QString());
    }
};

QTEST_MAIN(tst_QorPropEditors)
#include "tst_qorpropeditors.moc"
