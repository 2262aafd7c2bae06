// SPDX-License-Identifier: MIT
// Outside data that means harm: thousands of damaged records, component
// texts, clipboard contents and ".ui" texts, each made from a fixed seed,
// read into an owner that must come out exactly as it went in whenever a
// read fails; and the inputs that once brought the process down: corners
// at the ends of the integer range, nesting without end, and counts that
// claim billions of entries.
#include "foundation/qorclasses.h"
#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "foundation/qorstream.h"
#include "foundation/qorvaluecheck_p.h"
#include "foundation/vhoclipbrdutils.h"
#include "harness/qorguitest.h"
#include "harness/qormutator.h"

#include <QApplication>
#include <QBitArray>
#include <QBitmap>
#include <QBuffer>
#include <QClipboard>
#include <QCursor>
#include <QDataStream>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QIcon>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMargins>
#include <QMimeData>
#include <QPalette>
#include <QPixmap>
#include <QPointer>
#include <QPolygon>
#include <QPushButton>
#include <QScopeGuard>
#include <QTest>
#include <QTimeZone>
#include <QTimer>
#include <QTransform>
#include <QUuid>
#include <QtEndian>

#include <climits>
#include <memory>

// The campaigns allocate for each of their thousands of reads: shorter
// allocation stacks in AddressSanitizer's records and a smaller quarantine
// (32 MB, still far more than one read allocates) keep the run short on a
// busy machine. The options of the environment still win, and reports
// still name the allocating frames.
extern "C" __attribute__((visibility("default"))) const char *__asan_default_options()
{
    return "malloc_context_size=8:quarantine_size_mb=32";
}

namespace {

constexpr quint32 kSeed = 20261126;
constexpr int kMutations = 10000;

QByteArray be32(qint64 v)
{
    QByteArray b(4, Qt::Uninitialized);
    qToBigEndian<quint32>(quint32(v), b.data());
    return b;
}

QByteArray text32(const QByteArray &utf8)
{
    return be32(utf8.size()) + utf8;
}

// What an owner looks like from outside, cheap to take after every read:
// its name, its components in order with their names, visual parents,
// places and sizes, and its own children. Names are shared, not copied.
struct Shot
{
    struct Entry
    {
        const QObject *object;
        QString name;
        const QObject *parent;
        QRect geometry;
        bool operator==(const Entry &) const = default;
    };
    QString name;
    QList<Entry> components;
    QList<const QObject *> children;
    bool operator==(const Shot &) const = default;
};

Shot shot(const QWidget *owner)
{
    Shot s;
    s.name = owner->objectName();
    for (QObject *c : ComponentList(owner)) {
        auto *w = qobject_cast<QWidget *>(c);
        s.components.append({c, c->objectName(), c->parent(), w ? w->geometry() : QRect()});
    }
    for (QObject *c : owner->children())
        s.children.append(c);
    return s;
}

// The same in words, for the message of a failed comparison.
QStringList snapshot(const QWidget *owner)
{
    QStringList lines{owner->objectName()};
    for (QObject *c : ComponentList(owner)) {
        QString line = c->objectName() + QLatin1Char(' ') + QLatin1String(c->metaObject()->className());
        if (auto *w = qobject_cast<QWidget *>(c)) {
            const QRect g = w->geometry();
            line += QStringLiteral(" in %1 at %2,%3 %4x%5")
                        .arg(w->parentWidget() ? w->parentWidget()->objectName() : QStringLiteral("-"))
                        .arg(g.x())
                        .arg(g.y())
                        .arg(g.width())
                        .arg(g.height());
        }
        lines << line;
    }
    for (QObject *c : owner->children())
        lines << QStringLiteral("child ") + c->objectName();
    return lines;
}

// The owner reads go into: components of its own whose names no record
// below uses.
std::unique_ptr<QWidget> makeOwner()
{
    auto form = std::make_unique<QWidget>();
    form->setObjectName(QStringLiteral("Owner1"));
    form->resize(400, 300);
    auto *box = new QGroupBox(form.get());
    box->setObjectName(QStringLiteral("Existing1"));
    box->setGeometry(10, 10, 200, 100);
    InsertComponent(form.get(), box);
    auto *edit = new QLineEdit(box);
    edit->setObjectName(QStringLiteral("Existing2"));
    edit->setGeometry(5, 20, 100, 22);
    InsertComponent(form.get(), edit);
    auto *timer = new QTimer;
    timer->setObjectName(QStringLiteral("Existing3"));
    InsertComponent(form.get(), timer);
    return form;
}

// Clipboard data whose records the test changes between pastes: the
// clipboard is taken once, not once per paste.
class TChangingRecords final : public QMimeData
{
public:
    QByteArray records;

    QStringList formats() const override { return {CF_QorComponents()}; }
    bool hasFormat(const QString &MimeType) const override { return MimeType == CF_QorComponents(); }

protected:
    QVariant retrieveData(const QString &MimeType, QMetaType) const override
    {
        return MimeType == CF_QorComponents() ? QVariant(records) : QVariant();
    }
};

// A button at (8, 8, 75, 23) and a label with a font of two families,
// owned by the form.
QPushButton *addButtonAndLabel(QWidget *form, QWidget *parent, const QString &suffix)
{
    auto *button = new QPushButton(QStringLiteral("OK"), parent);
    button->setObjectName(QStringLiteral("Button") + suffix);
    button->setGeometry(8, 8, 75, 23);
    InsertComponent(form, button);
    auto *label = new QLabel(QStringLiteral("Name"), form);
    label->setObjectName(QStringLiteral("Label") + suffix);
    QFont font(QStringLiteral("Sans"));
    font.setFamilies({QStringLiteral("Sans"), QStringLiteral("Serif")});
    label->setFont(font);
    label->setGeometry(10, 120, 60, 20);
    InsertComponent(form, label);
    return button;
}

// The form whose records are damaged: a group box with a button (a
// geometry, an icon), a label with a font of two families, a line edit, a
// timer, and dynamic values of several kinds.
QByteArray seedRecord()
{
    QWidget form;
    form.setObjectName(QStringLiteral("Form2"));
    auto *box = new QGroupBox(&form);
    box->setObjectName(QStringLiteral("Box1"));
    box->setGeometry(4, 4, 180, 90);
    InsertComponent(&form, box);
    QPixmap pixmap(2, 2);
    pixmap.fill(Qt::red);
    addButtonAndLabel(&form, box, QStringLiteral("1"))->setIcon(QIcon(pixmap));
    auto *edit = new QLineEdit(&form);
    edit->setObjectName(QStringLiteral("Edit1"));
    edit->setGeometry(80, 120, 100, 22);
    InsertComponent(&form, edit);
    auto *timer = new QTimer;
    timer->setObjectName(QStringLiteral("Timer1"));
    timer->setInterval(250);
    InsertComponent(&form, timer);
    form.setProperty("labels", QStringList{QStringLiteral("a"), QStringLiteral("b")});
    form.setProperty("numbers", QVariant::fromValue(QList<int>{1, 2, 3}));
    form.setProperty("options", QVariantMap{{QStringLiteral("k"), QVariantList{1, QStringLiteral("v")}}});
    form.setProperty("outline", QPolygon({QPoint(1, 2), QPoint(3, 4)}));
    return ComponentToBytes(&form);
}

// A smaller form for the text form's campaigns, where every read that
// succeeds is converted three times: a button, a label with a font, a
// timer and a list of texts.
QByteArray smallSeedRecord()
{
    QWidget form;
    form.setObjectName(QStringLiteral("Form5"));
    addButtonAndLabel(&form, &form, QStringLiteral("5"));
    auto *timer = new QTimer;
    timer->setObjectName(QStringLiteral("Timer5"));
    timer->setInterval(250);
    InsertComponent(&form, timer);
    form.setProperty("labels", QStringList{QStringLiteral("a"), QStringLiteral("b")});
    return ComponentToBytes(&form);
}

QByteArray buttonRecord(const char *name, const QRect &geometry = QRect(8, 8, 75, 23))
{
    QWidget form;
    auto *button = new QPushButton(QStringLiteral("B"), &form);
    button->setObjectName(QLatin1String(name));
    button->setGeometry(geometry);
    return ComponentToBytes(button);
}

// Offsets where four bytes read as a small number: the lengths, counts and
// coordinates the extreme integers are aimed at.
QList<qsizetype> hotSpots(const QByteArray &b)
{
    QList<qsizetype> hot;
    for (qsizetype i = 0; i + 4 <= b.size(); ++i) {
        if (b.at(i) == 0 && b.at(i + 1) == 0 && b.at(i + 2) == 0)
            hot.append(i);
    }
    return hot;
}

// A record whose button stands on the given corners (as a rectangle keeps
// them: left, top, right, bottom), written over the bytes a button at
// (8, 8, 75, 23) has.
QByteArray withCorners(QByteArray record, qint64 x1, qint64 y1, qint64 x2, qint64 y2)
{
    const QByteArray original = be32(8) + be32(8) + be32(82) + be32(30);
    const qsizetype at = record.indexOf(original);
    if (at < 0)
        return {};
    record.replace(at, original.size(), QByteArray(be32(x1) + be32(y1) + be32(x2) + be32(y2)));
    return record;
}

// A record of Depth widgets, each inside the one before.
QByteArray nestedRecord(int depth)
{
    const QByteArray open = QByteArray("O") + text32("QWidget") + text32("") + be32(0) + be32(0) + be32(1);
    QByteArray body;
    body.reserve(open.size() * depth + depth + 32);
    for (int i = 0; i < depth; ++i)
        body += open;
    body += QByteArray("O") + text32("QWidget") + text32("") + be32(0) + be32(0) + be32(0) + 'E';
    body += QByteArray(depth, 'E');
    return QByteArray("QOR1") + be32(body.size()) + body;
}

QString nestedUi(int depth, const QString &element)
{
    const QString open = element == QLatin1String("widget") ? QStringLiteral("<widget class=\"QWidget\" name=\"w\">")
                                                             : QLatin1Char('<') + element + QLatin1Char('>');
    return QStringLiteral("<?xml version=\"1.0\"?><ui version=\"4.0\">") + open.repeated(depth)
        + QString(QStringLiteral("</") + element + QLatin1Char('>')).repeated(depth) + QStringLiteral("</ui>");
}

QString uiWithRect(qint64 x, qint64 width)
{
    return QStringLiteral("<?xml version=\"1.0\"?><ui version=\"4.0\"><widget class=\"QWidget\" "
                          "name=\"__qt_fake_top_level\"><widget class=\"QPushButton\" name=\"Far1\">"
                          "<property name=\"geometry\"><rect><x>%1</x><y>5</y><width>%2</width>"
                          "<height>20</height></rect></property></widget></widget></ui>")
        .arg(x)
        .arg(width);
}

// The bytes of a QVariant as the component stream stores it.
QByteArray variantBytes(const QVariant &v)
{
    QByteArray bytes;
    QDataStream s(&bytes, QIODevice::WriteOnly);
    s.setVersion(QDataStream::Qt_6_0);
    s << v;
    return bytes;
}

QByteArray utf16be(const QString &text)
{
    QByteArray b;
    for (QChar c : text) {
        b += char(c.unicode() >> 8);
        b += char(c.unicode() & 0xff);
    }
    return b;
}

// The same font with its family list claiming two billion entries: the
// list ends the font, its count before the one family "Sans".
QByteArray withHugeFamilyCount(QByteArray font)
{
    const QByteArray tail = be32(1) + text32(utf16be(QStringLiteral("Sans")));
    if (!font.endsWith(tail))
        return {};
    qToBigEndian<quint32>(2000000000u, font.data() + font.size() - tail.size());
    return font;
}

// A text record with one dynamic property whose stored bytes are Data.
QString textWithData(const QByteArray &data)
{
    return QStringLiteral("{\"class\": \"QWidget\", \"name\": \"Form9\", \"dynamicProperties\": "
                          "[{\"name\": \"value\", \"data\": \"%1\"}]}")
        .arg(QString::fromLatin1(data.toBase64()));
}

void deleteAfter(QWidget *owner, qsizetype keep)
{
    const QList<QObject *> now = ComponentList(owner);
    for (qsizetype i = now.size() - 1; i >= keep; --i) {
        if (Owner(now.at(i)) == owner)
            delete now.at(i);
    }
}

} // namespace

class tst_QorHostileInput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_clock.start(); }

    void cleanupTestCase() { qInfo("hostile input: %lld ms in all", qlonglong(m_clock.elapsed())); }

    void cleanup() { QTRY_COMPARE(QorGuiTest::liveTopLevelWidgets(), 0); }

    // Edge cases

    void rectanglesAtTheEndsOfTheRangeThroughTheConverters_data()
    {
        QTest::addColumn<qint64>("x1");
        QTest::addColumn<qint64>("y1");
        QTest::addColumn<qint64>("x2");
        QTest::addColumn<qint64>("y2");
        QTest::addColumn<bool>("taken");
        QTest::newRow("from INT_MIN to INT_MAX") << qint64(INT_MIN) << qint64(0) << qint64(INT_MAX) << qint64(10) << false;
        QTest::newRow("at INT_MAX") << qint64(INT_MAX) << qint64(INT_MAX) << qint64(INT_MAX) << qint64(INT_MAX) << false;
        QTest::newRow("right edge one past INT_MAX") << qint64(0) << qint64(0) << qint64(INT_MAX) << qint64(10) << false;
        QTest::newRow("from INT_MAX back to INT_MIN") << qint64(INT_MAX) << qint64(0) << qint64(INT_MIN) << qint64(10) << false;
        QTest::newRow("width INT_MAX") << qint64(0) << qint64(0) << qint64(INT_MAX - 1) << qint64(10) << true;
        QTest::newRow("at INT_MIN") << qint64(INT_MIN) << qint64(INT_MIN) << qint64(INT_MIN + 74) << qint64(INT_MIN + 22) << true;
    }

    void rectanglesAtTheEndsOfTheRangeThroughTheConverters()
    {
        QFETCH(qint64, x1);
        QFETCH(qint64, y1);
        QFETCH(qint64, x2);
        QFETCH(qint64, y2);
        QFETCH(bool, taken);
        const QByteArray record = withCorners(buttonRecord("Far1"), x1, y1, x2, y2);
        QVERIFY(!record.isEmpty());
        auto owner = makeOwner();
        const QStringList before = snapshot(owner.get());
        const int components = ComponentCount(owner.get());
        if (!taken) {
            QVERIFY_THROWS_EXCEPTION(EReadError, ComponentBinaryToText(record));
            QVERIFY_THROWS_EXCEPTION(EReadError, ComponentFromBytes(record, nullptr, owner.get(), owner.get()));
            QCOMPARE(snapshot(owner.get()), before);
            return;
        }
        const QString text = ComponentBinaryToText(record);
        QCOMPARE(ComponentTextToBinary(text), record);
        std::unique_ptr<QObject> read(ComponentFromBytes(record, nullptr, owner.get(), owner.get()));
        QCOMPARE(ComponentCount(owner.get()), components + 1);
    }

    void rectanglesAtTheEndsOfTheRangeThroughTheText_data()
    {
        QTest::addColumn<QString>("rect");
        QTest::addColumn<bool>("taken");
        QTest::newRow("at INT_MAX") << QStringLiteral("[2147483647,0,10,10]") << false;
        QTest::newRow("width past INT_MAX") << QStringLiteral("[1,0,2147483647,1]") << false;
        QTest::newRow("height past INT_MAX") << QStringLiteral("[0,5,10,2147483647]") << false;
        QTest::newRow("width INT_MIN") << QStringLiteral("[0,0,-2147483648,1]") << false;
        QTest::newRow("width near INT_MIN, right of 0") << QStringLiteral("[8,0,-2147483648,1]") << false;
        QTest::newRow("at INT_MIN") << QStringLiteral("[-2147483648,-2147483648,10,10]") << true;
        QTest::newRow("width INT_MAX") << QStringLiteral("[0,0,2147483647,1]") << true;
    }

    void rectanglesAtTheEndsOfTheRangeThroughTheText()
    {
        QFETCH(QString, rect);
        QFETCH(bool, taken);
        QString text = ComponentBinaryToText(buttonRecord("Far1"));
        QVERIFY(text.contains(QLatin1String("[8,8,75,23]")));
        text.replace(QLatin1String("[8,8,75,23]"), rect);
        if (!taken) {
            QVERIFY_THROWS_EXCEPTION(EReadError, ComponentTextToBinary(text));
            return;
        }
        const QByteArray bytes = ComponentTextToBinary(text);
        QCOMPARE(ComponentBinaryToText(bytes), text);
    }

    void thePastePlacerHoldsAControlAtTheEndOfTheRange_data()
    {
        QTest::addColumn<QRect>("geometry");
        QTest::addColumn<int>("dx");
        QTest::addColumn<int>("dy");
        QTest::addColumn<QPoint>("expected");
        QTest::newRow("right edge at INT_MAX, stepping on")
            << QRect(INT_MAX - 75, INT_MAX - 23, 75, 23) << 8 << 6 << QPoint(INT_MAX - 75, INT_MAX - 23);
        QTest::newRow("one step short of the end")
            << QRect(INT_MAX - 80, 100, 75, 23) << 8 << 6 << QPoint(INT_MAX - 75, 106);
        QTest::newRow("at INT_MIN, stepping back")
            << QRect(INT_MIN, INT_MIN, 75, 23) << -8 << -6 << QPoint(INT_MIN, INT_MIN);
        QTest::newRow("steps of INT_MAX") << QRect(100, 100, 75, 23) << INT_MAX << INT_MIN
                                          << QPoint(INT_MAX - 75, INT_MIN + 100);
    }

    void thePastePlacerHoldsAControlAtTheEndOfTheRange()
    {
        QFETCH(QRect, geometry);
        QFETCH(int, dx);
        QFETCH(int, dy);
        QFETCH(QPoint, expected);
        QWidget source;
        auto *far = new QPushButton(&source);
        far->setObjectName(QStringLiteral("Far1"));
        far->setGeometry(geometry);
        QCOMPARE(far->pos(), geometry.topLeft());
        QorGuiTest::putRecords(ComponentToBytes(far));
        auto owner = makeOwner();
        VhoClipboard()->SetRenameDuplicates(true);
        const auto restore = qScopeGuard([] { VhoClipboard()->SetRenameDuplicates(false); });
        // Twice: the second paste finds the first one's corner taken and
        // cannot step past it.
        for (int round = 0; round < 2; ++round) {
            auto *pasted = qobject_cast<QWidget *>(VhoClipboard()->GetComponents(owner.get(), owner.get(), dx, dy));
            QVERIFY(pasted);
            if (round == 0)
                QCOMPARE(pasted->pos(), expected);
            QVERIFY(pasted->x() >= INT_MIN && pasted->y() >= INT_MIN);
            QVERIFY(qint64(pasted->x()) + pasted->width() <= INT_MAX);
            QVERIFY(qint64(pasted->y()) + pasted->height() <= INT_MAX);
        }
    }

    void uiTextRectanglesAtTheEndsOfTheRange_data()
    {
        QTest::addColumn<qint64>("x");
        QTest::addColumn<qint64>("width");
        QTest::addColumn<bool>("taken");
        QTest::newRow("at INT_MAX") << qint64(INT_MAX) << qint64(10) << false;
        QTest::newRow("width INT_MAX from 1") << qint64(1) << qint64(INT_MAX) << false;
        QTest::newRow("width INT_MIN") << qint64(-5) << qint64(INT_MIN) << false;
        QTest::newRow("at INT_MIN") << qint64(INT_MIN) << qint64(10) << true;
    }

    void uiTextRectanglesAtTheEndsOfTheRange()
    {
        QFETCH(qint64, x);
        QFETCH(qint64, width);
        QFETCH(bool, taken);
        QWidget holder;
        const QList<QWidget *> widgets = WidgetsFromDesignerText(uiWithRect(x, width), &holder);
        QCOMPARE(widgets.size(), 1);
        QCOMPARE(widgets.first()->objectName(), QStringLiteral("Far1"));
        QCOMPARE(widgets.first()->x() == int(x), taken);
    }

    void deepUiNestingIsRefusedWithoutAnyWidgetLeft_data()
    {
        QTest::addColumn<QString>("element");
        QTest::newRow("widgets") << QStringLiteral("widget");
        QTest::newRow("layouts") << QStringLiteral("layout");
        QTest::newRow("items") << QStringLiteral("item");
    }

    void deepUiNestingIsRefusedWithoutAnyWidgetLeft()
    {
        QFETCH(QString, element);
        // Layouts and items sit inside a widget the reader takes.
        QString text = nestedUi(100000, element);
        if (element != QLatin1String("widget"))
            text.replace(QStringLiteral("<ui version=\"4.0\">"),
                         QStringLiteral("<ui version=\"4.0\"><widget class=\"QWidget\" name=\"Top1\">"))
                .replace(QStringLiteral("</ui>"), QStringLiteral("</widget></ui>"));
        QWidget holder;
        QVERIFY_THROWS_EXCEPTION(EReadError, WidgetsFromDesignerText(text, &holder));
        QCOMPARE(holder.children().size(), 0);

        // Pasted from the clipboard: nothing comes, the owner stays.
        auto owner = makeOwner();
        const QStringList before = snapshot(owner.get());
        QGuiApplication::clipboard()->setText(text);
        QCOMPARE(VhoClipboard()->GetComponents(owner.get(), owner.get(), 8, 6), nullptr);
        QCOMPARE(snapshot(owner.get()), before);
    }

    void deepRecordNestingIsRefused()
    {
        auto owner = makeOwner();
        const QStringList before = snapshot(owner.get());
        // Just inside the limit, then past it, then far past it.
        std::unique_ptr<QObject> inside(ComponentFromBytes(nestedRecord(QorLimits::kMaxComponentDepth)));
        QVERIFY(inside);
        for (int depth : {QorLimits::kMaxComponentDepth + 1, 100000}) {
            const QByteArray record = nestedRecord(depth);
            QVERIFY_THROWS_EXCEPTION(EReadError, ComponentFromBytes(record, nullptr, owner.get(), owner.get()));
            QVERIFY_THROWS_EXCEPTION(EReadError, ComponentBinaryToText(record));
            QorGuiTest::putRecords(record);
            QCOMPARE(VhoClipboard()->GetComponents(owner.get(), owner.get(), 8, 6), nullptr);
            QCOMPARE(snapshot(owner.get()), before);
        }
        // The text form: nested past the limit, and past what the text
        // parser takes at all.
        for (int depth : {QorLimits::kMaxComponentDepth + 1, 100000}) {
            QString text;
            for (int i = 0; i < depth; ++i)
                text += QStringLiteral("{\"class\": \"QWidget\", \"name\": \"\", \"children\": [");
            text += QStringLiteral("{\"class\": \"QWidget\", \"name\": \"\"}");
            for (int i = 0; i < depth; ++i)
                text += QStringLiteral("]}");
            QVERIFY_THROWS_EXCEPTION(EReadError, ComponentTextToBinary(text));
        }
    }

    void aFontClaimingTwoBillionFamiliesIsRefused()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form3"));
        auto *label = new QLabel(QStringLiteral("x"), &form);
        label->setObjectName(QStringLiteral("Label1"));
        QFont font(QStringLiteral("Sans"));
        font.setFamilies({QStringLiteral("Sans")});
        label->setFont(font);
        InsertComponent(&form, label);
        QByteArray record = ComponentToBytes(&form);
        const QByteArray sound = variantBytes(QVariant::fromValue(label->font()));
        const qsizetype at = record.indexOf(sound);
        QVERIFY(at > 0);
        const QByteArray huge = withHugeFamilyCount(sound);
        QCOMPARE(huge.size(), sound.size());
        record.replace(at, huge.size(), huge);

        auto owner = makeOwner();
        const QStringList before = snapshot(owner.get());
        QVERIFY_THROWS_EXCEPTION(EReadError, ComponentFromBytes(record, nullptr, owner.get(), owner.get()));
        QVERIFY_THROWS_EXCEPTION(EReadError, ComponentBinaryToText(record));
        QVERIFY_THROWS_EXCEPTION(EReadError, ComponentTextToBinary(textWithData(huge)));
        QorGuiTest::putRecords(record);
        QCOMPARE(VhoClipboard()->GetComponents(owner.get(), owner.get(), 8, 6), nullptr);
        QCOMPARE(snapshot(owner.get()), before);
        // The same record with its count put right reads.
        record.replace(at, sound.size(), sound);
        std::unique_ptr<QObject> read(ComponentFromBytes(record));
        QCOMPARE(read->findChild<QLabel *>()->font().families(), QStringList{QStringLiteral("Sans")});
    }

    void valuesClaimingHugeCountsAreRefused_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<qsizetype>("countAt");
        const auto row = [](const char *name, const QVariant &v, qsizetype countAt) {
            QTest::newRow(name) << variantBytes(v) << countAt;
        };
        row("string list", QStringList{QStringLiteral("a")}, 5);
        row("string", QStringLiteral("abc"), 5);
        row("byte array", QByteArray("abc"), 5);
        row("variant list", QVariantList{1}, 5);
        row("variant map", QVariantMap{{QStringLiteral("a"), 1}}, 5);
        row("polygon", QPolygon({QPoint(1, 2)}), 5);
        row("key sequence", QKeySequence(QStringLiteral("Ctrl+A")), 5);
        // A 64-bit count: its high half.
        row("bit array", QBitArray(8, true), 5 + 4);
        QPixmap pixmap(2, 2);
        pixmap.fill(Qt::blue);
        // The icon's entry count follows its engine's name.
        row("icon entries", QIcon(pixmap), 5 + 4 + 2 * 17);
        row("list of ints", QVariant::fromValue(QList<int>{1}), -1);
        row("map of lists", QVariant::fromValue(QMap<QString, QList<int>>{{QStringLiteral("a"), {1}}}), -1);
    }

    void valuesClaimingHugeCountsAreRefused()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(qsizetype, countAt);
        // A type the variant names: the count follows the name.
        if (countAt < 0)
            countAt = 5 + 4 + qFromBigEndian<quint32>(bytes.constData() + 5);
        QCOMPARE(QorValueCheck::streamedVariantSize(bytes.constData(), bytes.size()), bytes.size());
        for (quint32 count : {0x7fffffffu, 0x80000000u, 0xfffffffeu, 2000000000u}) {
            QByteArray bad = bytes;
            qToBigEndian<quint32>(count, bad.data() + countAt);
            QVERIFY2(QorValueCheck::streamedVariantSize(bad.constData(), bad.size()) < 0, QByteArray::number(count));
            QVERIFY_THROWS_EXCEPTION(EReadError, ComponentTextToBinary(textWithData(bad)));
        }
    }

    void deeplyNestedValuesAreRefused()
    {
        QVariant v = 1;
        for (int i = 0; i <= QorLimits::kMaxValueDepth; ++i)
            v = QVariantList{v};
        const QByteArray bytes = variantBytes(v);
        QCOMPARE(QorValueCheck::streamedVariantSize(bytes.constData(), bytes.size()), -1);
        QVERIFY_THROWS_EXCEPTION(EReadError, ComponentTextToBinary(textWithData(bytes)));
        QVariant shallow = QVariantList{QVariantList{1}};
        const QByteArray fine = variantBytes(shallow);
        QCOMPARE(QorValueCheck::streamedVariantSize(fine.constData(), fine.size()), fine.size());
    }

    void anIconEntryNamingAFileIsRefused()
    {
        // An entry without a picture makes Qt open the file it names.
        QByteArray head = variantBytes(QIcon());
        head.chop(4);
        head += text32(utf16be(QStringLiteral("QPixmapIconEngine"))) + be32(1) + be32(0);
        const QByteArray tail = be32(16) + be32(16) + be32(0) + be32(0);
        const QByteArray naming = head + text32(utf16be(QStringLiteral("/dev/zero"))) + tail;
        QCOMPARE(QorValueCheck::streamedVariantSize(naming.constData(), naming.size()), -1);
        // The same entry naming no file is an empty entry Qt skips.
        const QByteArray empty = head + be32(0xffffffff) + tail;
        QCOMPARE(QorValueCheck::streamedVariantSize(empty.constData(), empty.size()), empty.size());
    }

    // The walk reads exactly what Qt writes, for every type it takes.
    void theValueWalkMatchesQtsOwnFormat_data()
    {
        QTest::addColumn<QVariant>("value");
        QPixmap pixmap(3, 2);
        pixmap.fill(Qt::green);
        QLinearGradient linear(0, 0, 1, 1);
        linear.setColorAt(0.5, Qt::red);
        QRadialGradient radial(1, 2, 3, 4, 5, 6);
        QConicalGradient conical(1, 2, 30);
        QBitmap bitmap(16, 16);
        bitmap.clear();
        QPalette palette(Qt::red);
        palette.setBrush(QPalette::Window, QBrush(radial));
        const QList<std::pair<const char *, QVariant>> values = {
            {"bool", true}, {"int", -5}, {"uint", 5u}, {"qlonglong", qlonglong(-7)}, {"qulonglong", qulonglong(7)},
            {"double", 0.25}, {"float", QVariant::fromValue(1.5f)}, {"long", QVariant::fromValue(long(3))},
            {"short", QVariant::fromValue(short(-2))}, {"uchar", QVariant::fromValue(uchar(2))},
            {"char", QVariant::fromValue(char('x'))}, {"QChar", QChar(u'é')},
            {"string", QStringLiteral("héllo")}, {"null string", QString()}, {"bytes", QByteArray("ab\0c", 4)},
            {"bits", QBitArray(11, true)}, {"string list", QStringList{QStringLiteral("a"), QString()}},
            {"byte array list", QVariant::fromValue(QByteArrayList{"x", "yz"})},
            {"variant list", QVariantList{1, QStringLiteral("s"), QVariantList{2.5}}},
            {"variant map", QVariantMap{{QStringLiteral("a"), 1}, {QStringLiteral("b"), QStringList{}}}},
            {"variant hash", QVariantHash{{QStringLiteral("a"), QColor(Qt::red)}}},
            {"date", QDate(2020, 2, 29)}, {"time", QTime(1, 2, 3, 4)}, {"invalid time", QTime()},
            {"local date time", QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5))},
            {"utc date time", QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5), Qt::UTC)},
            {"offset date time", QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5), Qt::OffsetFromUTC, 3600)},
            {"zone date time", QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5), QTimeZone("Europe/Berlin"))},
            {"offset zone date time", QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5), QTimeZone(7200))},
            {"url", QUrl(QStringLiteral("http://example.org/a?b"))}, {"locale", QLocale(QLocale::German)},
            {"uuid", QUuid::createUuidV5(QUuid(), QStringLiteral("x"))},
            {"rect", QRect(1, 2, 3, 4)}, {"null rect", QRect()}, {"rectf", QRectF(1, 2, 3, 4)},
            {"size", QSize(3, 4)}, {"sizef", QSizeF(3, 4)}, {"point", QPoint(-1, 2)}, {"pointf", QPointF(1, 2)},
            {"line", QLine(1, 2, 3, 4)}, {"linef", QLineF(1, 2, 3, 4)}, {"color", QColor(1, 2, 3, 4)},
            {"hsv color", QColor::fromHsv(10, 20, 30)}, {"invalid color", QColor()},
            {"font", QFont(QStringLiteral("Serif"), 13, QFont::Bold, true)},
            {"pixmap", pixmap}, {"null pixmap", QPixmap()}, {"image", pixmap.toImage()}, {"bitmap", bitmap},
            {"brush", QBrush(Qt::red, Qt::Dense3Pattern)}, {"linear brush", QBrush(linear)},
            {"radial brush", QBrush(radial)}, {"conical brush", QBrush(conical)},
            {"texture brush", QBrush(pixmap)}, {"palette", palette}, {"icon", QIcon(pixmap)},
            {"null icon", QIcon()}, {"cursor", QCursor(Qt::IBeamCursor)}, {"bitmap cursor", QCursor(bitmap, bitmap, 3, 4)},
            {"pixmap cursor", QCursor(pixmap, 1, 1)},
            {"key sequence", QKeySequence(QStringLiteral("Ctrl+A, B"))}, {"empty key sequence", QKeySequence()},
            {"transform", QTransform(1, 2, 3, 4, 5, 6)},
            {"size policy", QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed)},
            {"polygon", QPolygon({QPoint(1, 2), QPoint(3, 4)})}, {"polygonf", QPolygonF({QPointF(1, 2)})},
            {"invalid", QVariant()}, {"enumeration", QVariant::fromValue(Qt::AlignLeft)},
            {"flags", QVariant::fromValue(Qt::Alignment(Qt::AlignLeft | Qt::AlignTop))},
            {"list of ints", QVariant::fromValue(QList<int>{1, 2})},
            {"map of string lists", QVariant::fromValue(QMap<QString, QStringList>{{QStringLiteral("a"), {}}})},
            {"hash", QVariant::fromValue(QHash<int, QString>{{1, QStringLiteral("one")}})},
            {"pair", QVariant::fromValue(std::pair<int, QString>(1, QStringLiteral("x")))},
        };
        for (const auto &[name, v] : values)
            QTest::newRow(name) << v;
    }

    void theValueWalkMatchesQtsOwnFormat()
    {
        QFETCH(QVariant, value);
        QVERIFY(QorValueCheck::isCheckedType(value.metaType()) || !value.isValid());
        const QByteArray bytes = variantBytes(value);
        QCOMPARE(QorValueCheck::streamedVariantSize(bytes.constData(), bytes.size()), bytes.size());
        // Followed by more bytes, it still takes its own.
        const QByteArray more = bytes + QByteArray(7, '\x01');
        QCOMPARE(QorValueCheck::streamedVariantSize(more.constData(), more.size()), bytes.size());
        // Cut anywhere, it is refused.
        for (qsizetype cut = 0; cut < bytes.size(); ++cut)
            QVERIFY2(QorValueCheck::streamedVariantSize(bytes.constData(), cut) < 0, QByteArray::number(cut));
    }

    void typesTheWalkDoesNotKnowAreNotWritten()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form4"));
        form.setProperty("known", 5);
        form.setProperty("margins", QVariant::fromValue(QMargins(1, 2, 3, 4)));
        QVERIFY(!QorValueCheck::isCheckedType(QMetaType::fromType<QMargins>()));
        const QString text = ComponentBinaryToText(ComponentToBytes(&form));
        QVERIFY(text.contains(QLatin1String("\"known\"")));
        QVERIFY(!text.contains(QLatin1String("\"margins\"")));
    }

    // The mutation campaigns.

    void damagedRecordsReadIntoAnOwnerLeaveItAsItWas()
    {
        const QByteArray seed = seedRecord();
        const QByteArray other = buttonRecord("Button9");
        const QList<qsizetype> hot = hotSpots(seed);
        auto owner = makeOwner();
        const QStringList before = snapshot(owner.get());
        const Shot unchanged = shot(owner.get());
        int read = 0;
        for (int i = 0; i < kMutations; ++i) {
            const QByteArray bytes = QorMutator::mutate(seed, kSeed, i, other, hot);
            try {
                delete ComponentFromBytes(bytes, nullptr, owner.get(), owner.get());
                ++read;
            } catch (const EQorError &) {
            }
            if (!(shot(owner.get()) == unchanged)) {
                QCOMPARE(snapshot(owner.get()), before);
                QFAIL(QorMutator::where(kSeed, i, "record into an owner").constData());
            }
        }
        qInfo("records into an owner: %d of %d read", read, kMutations);
        QVERIFY(read > 0 && read < kMutations);
    }

    void damagedRecordsReadIntoAnInstanceLeaveItAsItWas()
    {
        const QByteArray seed = seedRecord();
        const QList<qsizetype> hot = hotSpots(seed);
        auto instance = makeOwner();
        const QStringList before = snapshot(instance.get());
        Shot unchanged = shot(instance.get());
        int read = 0;
        // Fewer than the owner's campaign: the reader is the same, and each
        // successful read costs a fresh instance.
        for (int i = 0; i < kMutations / 5; ++i) {
            const QByteArray bytes = QorMutator::mutate(seed, kSeed + 1, i, {}, hot);
            try {
                ComponentFromBytes(bytes, instance.get());
                ++read;
                instance = makeOwner();
                unchanged = shot(instance.get());
                continue;
            } catch (const EQorError &) {
            }
            if (!(shot(instance.get()) == unchanged)) {
                QCOMPARE(snapshot(instance.get()), before);
                QFAIL(QorMutator::where(kSeed + 1, i, "record into an instance").constData());
            }
        }
        qInfo("records into an instance: %d of %d read", read, kMutations / 5);
        QVERIFY(read > 0 && read < kMutations / 5);
    }

    void damagedRecordsThroughTheTextFormComeBackTheSame()
    {
        const QByteArray seed = smallSeedRecord() + buttonRecord("Button9");
        const QList<qsizetype> hot = hotSpots(seed);
        int same = 0, replaced = 0;
        for (int i = 0; i < kMutations; ++i) {
            const QByteArray bytes = QorMutator::mutate(seed, kSeed + 2, i, {}, hot);
            QString text;
            try {
                text = ComponentBinaryToText(bytes);
            } catch (const EQorError &) {
                continue;
            }
            QByteArray back;
            try {
                back = ComponentTextToBinary(text);
            } catch (const EQorError &e) {
                QFAIL(
                    QByteArray(QorMutator::where(kSeed + 2, i, "binary to text to binary") + ": " + e.what()).constData());
            }
            // Texts that are not UTF-8 come back with replacement
            // characters; everything else comes back byte for byte.
            if (back == bytes) {
                ++same;
            } else if (text.contains(QChar::ReplacementCharacter)) {
                ++replaced;
            } else {
                QFAIL(QorMutator::where(kSeed + 2, i, "binary to text to binary").constData());
            }
            if (ComponentBinaryToText(back) != text)
                QFAIL(QorMutator::where(kSeed + 2, i, "text of the bytes made from the text").constData());
        }
        qInfo("binary to text: %d came back the same, %d with replaced texts", same, replaced);
        QVERIFY(same > 0);
    }

    void damagedTextsAreReadOrRefused()
    {
        const QByteArray seed = ComponentBinaryToText(smallSeedRecord()).toUtf8();
        int read = 0;
        for (int i = 0; i < kMutations; ++i) {
            const QByteArray text = QorMutator::mutateText(seed, kSeed + 3, i);
            QByteArray bytes;
            try {
                bytes = ComponentTextToBinary(QString::fromUtf8(text));
            } catch (const EQorError &) {
                continue;
            }
            ++read;
            // What the text form accepts, the binary reader takes.
            try {
                ComponentBinaryToText(bytes);
            } catch (const EQorError &e) {
                QFAIL(QByteArray(QorMutator::where(kSeed + 3, i, "text to binary to text") + ": " + e.what()).constData());
            }
        }
        qInfo("texts: %d of %d read", read, kMutations);
        QVERIFY(read > 0 && read < kMutations);
    }

    void damagedClipboardRecordsLeaveTheOwnersComponentsAsTheyWere()
    {
        // Records of a few widgets each: decoding is the owner campaign's
        // business, this one is about skipping, placing and owning.
        QWidget box;
        box.setObjectName(QStringLiteral("Box7"));
        auto *inner = new QLabel(QStringLiteral("in"), &box);
        inner->setObjectName(QStringLiteral("Label7"));
        InsertComponent(&box, inner);
        const QByteArray seed = buttonRecord("Button9") + ComponentToBytes(&box) + buttonRecord("Button8");
        const QList<qsizetype> hot = hotSpots(seed);
        auto owner = makeOwner();
        const QStringList before = snapshot(owner.get());
        const Shot unchanged = shot(owner.get());
        const qsizetype components = ComponentCount(owner.get());
        auto *data = new TChangingRecords;
        QGuiApplication::clipboard()->setMimeData(data);
        QVERIFY(QGuiApplication::clipboard()->mimeData() == data);
        int pasted = 0;
        for (int i = 0; i < kMutations; ++i) {
            data->records = QorMutator::mutate(seed, kSeed + 4, i, {}, hot);
            if (VhoClipboard()->GetComponents(owner.get(), owner.get(), 8, 6))
                ++pasted;
            // What was there stays as it was; what came is at the end.
            const Shot now = shot(owner.get());
            if (now.name != unchanged.name || now.components.mid(0, components) != unchanged.components) {
                QCOMPARE(snapshot(owner.get()).mid(0, components + 1), before.mid(0, components + 1));
                QFAIL(QorMutator::where(kSeed + 4, i, "clipboard records").constData());
            }
            deleteAfter(owner.get(), components);
            if (!(shot(owner.get()) == unchanged))
                QFAIL(QorMutator::where(kSeed + 4, i, "clipboard records, after the pasted went").constData());
        }
        qInfo("clipboard records: %d of %d pastes brought something", pasted, kMutations);
        QVERIFY(pasted > 0 && pasted < kMutations);
    }

    void damagedUiTextsLeaveNoWidgetBehind()
    {
        std::unique_ptr<QObject> read(ComponentFromBytes(seedRecord()));
        QList<QObject *> components{read->findChild<QGroupBox *>(), read->findChild<QLineEdit *>()};
        const QByteArray seed = DesignerTextOf(components).toUtf8();
        QWidget holder;
        int taken = 0;
        for (int i = 0; i < kMutations; ++i) {
            const QByteArray text = QorMutator::mutateText(seed, kSeed + 5, i);
            try {
                const QList<QWidget *> widgets = WidgetsFromDesignerText(QString::fromUtf8(text), &holder);
                taken += widgets.isEmpty() ? 0 : 1;
                qDeleteAll(widgets);
            } catch (const EQorError &) {
            }
            if (!holder.children().isEmpty())
                QFAIL(QorMutator::where(kSeed + 5, i, "ui text").constData());
        }
        qInfo("ui texts: %d of %d made widgets", taken, kMutations);
        QVERIFY(taken > 0 && taken < kMutations);
    }

private:
    QElapsedTimer m_clock;
};

QTEST_MAIN(tst_QorHostileInput)
#include "tst_qorhostileinput.moc"
