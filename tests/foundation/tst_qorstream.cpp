// SPDX-License-Identifier: MIT
// The component stream: what a record holds, how it comes back, and how a
// damaged record is refused without leaving anything alive.
#include "foundation/qorclasses.h"
#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "foundation/qorstream.h"
#include "harness/qorguitest.h"

#include <QBuffer>
#include <QFrame>
#include <QGroupBox>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPointer>
#include <QComboBox>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QToolBox>
#include <QScopeGuard>
#include <QtEndian>

#include <memory>

namespace {

// A component with references to other components.
class TLinkWidget : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QObject *target READ target WRITE setTarget)
    Q_PROPERTY(QWidget *buddyWidget READ buddyWidget WRITE setBuddyWidget)

public:
    explicit TLinkWidget(QWidget *parent = nullptr)
        : QWidget(parent)
    {
    }
    QObject *target() const { return m_target; }
    void setTarget(QObject *t) { m_target = t; }
    QWidget *buddyWidget() const { return m_buddy; }
    void setBuddyWidget(QWidget *w) { m_buddy = w; }

private:
    QPointer<QObject> m_target;
    QPointer<QWidget> m_buddy;
};

// A class whose registered factory fails, to break a read half-way.
class TBrokenWidget : public QWidget
{
    Q_OBJECT

public:
    explicit TBrokenWidget(QWidget *parent = nullptr)
        : QWidget(parent)
    {
    }
};

template<class T>
T *named(T *o, const char *name)
{
    o->setObjectName(QLatin1String(name));
    return o;
}

// Makes a widget owned by the form, on a visual parent.
template<class T>
T *ownedWidget(QWidget *form, QWidget *parent, const char *name)
{
    T *w = named(new T(parent), name);
    InsertComponent(form, w);
    return w;
}

// A scroll area made by the registry (with its content widget), owned by
// the form and shown on it.
QScrollArea *registeredScrollArea(QWidget *form, const char *name)
{
    auto *area = qobject_cast<QScrollArea *>(CreateRegisteredComponent(QStringLiteral("QScrollArea")));
    area->setParent(form);
    area->setObjectName(QLatin1String(name));
    InsertComponent(form, area);
    return area;
}

std::unique_ptr<QObject> readBack(QObject *component, QWidget *parent = nullptr)
{
    return std::unique_ptr<QObject>(ComponentFromBytes(ComponentToBytes(component), nullptr, parent));
}

QStringList namesOf(const QList<QObject *> &list)
{
    QStringList names;
    for (QObject *o : list)
        names << o->objectName();
    return names;
}

QStringList writtenPropertyNames(QObject *component)
{
    const QString text = ComponentBinaryToText(ComponentToBytes(component));
    QStringList names;
    static const QRegularExpression re(QStringLiteral("\\{\"name\": \"([^\"]+)\""));
    for (auto it = re.globalMatch(text); it.hasNext();)
        names << it.next().captured(1);
    return names;
}

// Everything alive under a holder, to see that a failed read left nothing.
int objectsUnder(const QObject *holder)
{
    return int(holder->findChildren<QObject *>().size());
}

bool comparable(const QVariant &v)
{
    return v.metaType().isEqualityComparable() && v.metaType().id() != QMetaType::QIcon
        && v.metaType().id() != QMetaType::QPixmap;
}

QByteArray smallRecord()
{
    QWidget form;
    form.setObjectName(QStringLiteral("Form1"));
    auto *button = ownedWidget<QPushButton>(&form, &form, "Button1");
    button->setText(QStringLiteral("OK"));
    button->setGeometry(8, 8, 75, 23);
    auto *timer = named(new QTimer, "Timer1");
    timer->setInterval(250);
    InsertComponent(&form, timer);
    return ComponentToBytes(&form);
}

} // namespace

class tst_QorStream : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        RegisterClass<TLinkWidget>();
        RegisterClass(&TBrokenWidget::staticMetaObject, []() -> QObject * {
            throw EQorError(QStringLiteral("cannot make it"));
        });
    }

    void cleanupTestCase()
    {
        UnRegisterClass(&TLinkWidget::staticMetaObject);
        UnRegisterClass(&TBrokenWidget::staticMetaObject);
    }

    void cleanup() { QTRY_COMPARE(QorGuiTest::liveTopLevelWidgets(), 0); }

    void everyRegisteredClassRoundTrips_data()
    {
        QTest::addColumn<QString>("className");
        for (const QMetaObject *mo : RegisteredClasses()) {
            if (mo != &TBrokenWidget::staticMetaObject)
                QTest::newRow(mo->className()) << QString::fromLatin1(mo->className());
        }
    }

    void everyRegisteredClassRoundTrips()
    {
        QFETCH(QString, className);
        std::unique_ptr<QObject> original(CreateRegisteredComponent(className));
        original->setObjectName(QStringLiteral("Component1"));
        auto copy = readBack(original.get());
        QCOMPARE(copy->metaObject(), original->metaObject());
        QCOMPARE(copy->objectName(), QStringLiteral("Component1"));
        const QMetaObject *mo = original->metaObject();
        int compared = 0;
        for (int i = 0; i < mo->propertyCount(); ++i) {
            const QMetaProperty p = mo->property(i);
            if (!p.isReadable() || !p.isStored() || !p.isDesignable())
                continue;
            const QVariant a = p.read(original.get());
            const QVariant b = p.read(copy.get());
            if (comparable(a)) {
                QVERIFY2(a == b, p.name());
                ++compared;
            }
        }
        QVERIFY(compared > 0);
    }

    void changedValuesSurviveTheRoundTrip()
    {
        QLabel label;
        label.setObjectName(QStringLiteral("Label1"));
        label.setText(QStringLiteral("Name:"));
        label.setGeometry(12, 34, 120, 22);
        label.setEnabled(false);
        label.setToolTip(QStringLiteral("The customer's name"));
        QFont font(QStringLiteral("Serif"), 15);
        font.setBold(true);
        label.setFont(font);
        QPalette palette = label.palette();
        palette.setColor(QPalette::WindowText, QColor(200, 10, 20));
        label.setPalette(palette);
        label.setCursor(Qt::PointingHandCursor);
        label.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
        label.setAlignment(Qt::AlignRight | Qt::AlignBottom);
        label.setFocusPolicy(Qt::NoFocus);
        label.setLayoutDirection(Qt::RightToLeft);
        label.setFrameShape(QFrame::Box);

        auto copy = readBack(&label);
        auto *back = qobject_cast<QLabel *>(copy.get());
        QVERIFY(back);
        QCOMPARE(back->text(), QStringLiteral("Name:"));
        QCOMPARE(back->geometry(), QRect(12, 34, 120, 22));
        QVERIFY(!back->isEnabled());
        QCOMPARE(back->toolTip(), QStringLiteral("The customer's name"));
        QCOMPARE(back->font().family(), font.family());
        QCOMPARE(back->font().pointSize(), 15);
        QVERIFY(back->font().bold());
        QCOMPARE(back->palette().color(QPalette::WindowText), QColor(200, 10, 20));
        QCOMPARE(back->cursor().shape(), Qt::PointingHandCursor);
        QCOMPARE(back->sizePolicy(), QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored));
        QCOMPARE(back->alignment(), Qt::AlignRight | Qt::AlignBottom);
        QCOMPARE(back->focusPolicy(), Qt::NoFocus);
        QCOMPARE(back->layoutDirection(), Qt::RightToLeft);
        QCOMPARE(back->frameShape(), QFrame::Box);

        // A label takes no focus to begin with; a button does.
        QPushButton button;
        button.setObjectName(QStringLiteral("Button1"));
        button.setFocusPolicy(Qt::NoFocus);
        auto buttonCopy = readBack(&button);
        QCOMPARE(static_cast<QWidget *>(buttonCopy.get())->focusPolicy(), Qt::NoFocus);
    }

    void enumerationsAreWrittenAsTheirKeys()
    {
        QLabel label;
        label.setObjectName(QStringLiteral("Label1"));
        label.setFocusPolicy(Qt::TabFocus);
        label.setAlignment(Qt::AlignRight | Qt::AlignBottom);
        const QString text = ComponentBinaryToText(ComponentToBytes(&label));
        QVERIFY(text.contains(QStringLiteral("\"enum\": \"TabFocus\"")));
        QPushButton button;
        button.setObjectName(QStringLiteral("Button1"));
        button.setFocusPolicy(Qt::NoFocus);
        const QString buttonText = ComponentBinaryToText(ComponentToBytes(&button));
        QVERIFY(buttonText.contains(QStringLiteral("\"enum\": \"NoFocus\"")));
        // AlignRight and AlignTrailing are one value; either key reads back.
        QVERIFY(text.contains(QStringLiteral("\"flags\": \"AlignTrailing|AlignBottom\""))
                || text.contains(QStringLiteral("\"flags\": \"AlignRight|AlignBottom\"")));
    }

    void defaultValuesAreNotWritten()
    {
        QPushButton fresh;
        fresh.setObjectName(QStringLiteral("Button1"));
        QPushButton changed;
        changed.setObjectName(QStringLiteral("Button1"));
        changed.setText(QStringLiteral("Press"));
        changed.setToolTip(QStringLiteral("tip"));
        changed.setStatusTip(QStringLiteral("status"));
        changed.setWhatsThis(QStringLiteral("what"));
        changed.setFlat(true);
        changed.setCheckable(true);
        changed.setChecked(true);
        changed.setAutoRepeat(true);
        changed.setFocusPolicy(Qt::NoFocus);
        changed.setAccessibleName(QStringLiteral("press button"));

        const QByteArray freshBytes = ComponentToBytes(&fresh);
        const QByteArray changedBytes = ComponentToBytes(&changed);
        QVERIFY2(freshBytes.size() * 3 < changedBytes.size(),
                 qPrintable(QStringLiteral("%1 vs %2").arg(freshBytes.size()).arg(changedBytes.size())));

        const QStringList freshNames = writtenPropertyNames(&fresh);
        QVERIFY2(freshNames.isEmpty(), qPrintable(freshNames.join(QLatin1Char(','))));
        const QStringList changedNames = writtenPropertyNames(&changed);
        for (const char *name : {"text", "toolTip", "statusTip", "whatsThis", "flat", "checkable",
                                 "checked", "autoRepeat", "focusPolicy", "accessibleName"})
            QVERIFY2(changedNames.contains(QLatin1String(name)), name);
        QVERIFY(!changedNames.contains(QStringLiteral("default")));
        QVERIFY(!changedNames.contains(QStringLiteral("pos")));
        QVERIFY(!changedNames.contains(QStringLiteral("size")));
    }

    void inheritedValuesAreNotWrittenForChildren()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        form.setFont(QFont(QStringLiteral("Serif"), 21));
        form.setEnabled(false);
        form.setCursor(Qt::WaitCursor);
        auto *button = ownedWidget<QPushButton>(&form, &form, "Button1");
        const QStringList names = writtenPropertyNames(button);
        QVERIFY(!names.contains(QStringLiteral("font")));
        QVERIFY(!names.contains(QStringLiteral("enabled")));
        QVERIFY(!names.contains(QStringLiteral("cursor")));
        const QStringList formNames = writtenPropertyNames(&form);
        QVERIFY(formNames.contains(QStringLiteral("font")));
        QVERIFY(formNames.contains(QStringLiteral("enabled")));
    }

    void dynamicPropertiesRoundTrip()
    {
        QWidget w;
        w.setObjectName(QStringLiteral("Panel1"));
        w.setProperty("qorAcceptsControls", true);
        w.setProperty("customerId", 4711);
        w.setProperty("labels", QStringList{QStringLiteral("a"), QStringLiteral("b")});
        auto copy = readBack(&w);
        QCOMPARE(copy->property("qorAcceptsControls"), QVariant(true));
        QCOMPARE(copy->property("customerId"), QVariant(4711));
        QCOMPARE(copy->property("labels").toStringList(), QStringList({QStringLiteral("a"), QStringLiteral("b")}));
        QVERIFY(copy->dynamicPropertyNames().contains("customerId"));
    }

    void groupBoxChildrenKeepParentOrderNamesAndGeometry()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        auto *box = ownedWidget<QGroupBox>(&form, &form, "GroupBox1");
        box->setTitle(QStringLiteral("Address"));
        box->setGeometry(10, 10, 300, 200);
        auto *a = ownedWidget<QLineEdit>(&form, box, "Street");
        a->setGeometry(10, 20, 100, 22);
        auto *b = ownedWidget<QLineEdit>(&form, box, "City");
        b->setGeometry(10, 50, 120, 22);
        auto *c = ownedWidget<QLabel>(&form, box, "Zip");
        c->setGeometry(10, 80, 60, 20);

        auto copy = readBack(&form);
        QCOMPARE(namesOf(ComponentList(copy.get())),
                 QStringList({QStringLiteral("GroupBox1"), QStringLiteral("Street"), QStringLiteral("City"),
                              QStringLiteral("Zip")}));
        auto *box2 = copy->findChild<QGroupBox *>(QStringLiteral("GroupBox1"));
        QVERIFY(box2);
        QCOMPARE(box2->parent(), copy.get());
        QCOMPARE(box2->title(), QStringLiteral("Address"));
        QCOMPARE(box2->geometry(), QRect(10, 10, 300, 200));
        const QList<QWidget *> kids = box2->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
        QStringList kidNames;
        for (QWidget *k : kids) {
            if (!IsInnerPart(k))
                kidNames << k->objectName();
        }
        QCOMPARE(kidNames, QStringList({QStringLiteral("Street"), QStringLiteral("City"), QStringLiteral("Zip")}));
        QCOMPARE(box2->findChild<QLineEdit *>(QStringLiteral("City"))->geometry(), QRect(10, 50, 120, 22));
        QCOMPARE(box2->findChild<QLabel *>(QStringLiteral("Zip"))->geometry(), QRect(10, 80, 60, 20));
        for (QObject *o : ComponentList(copy.get()))
            QCOMPARE(Owner(o), copy.get());
    }

    void plainWidgetChildrenNestTwoLevelsDeep()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        auto *panel = ownedWidget<QWidget>(&form, &form, "Panel1");
        panel->setGeometry(0, 0, 200, 100);
        auto *inner = ownedWidget<QFrame>(&form, panel, "Frame1");
        inner->setGeometry(5, 5, 150, 80);
        auto *button = ownedWidget<QPushButton>(&form, inner, "Button1");
        button->setGeometry(3, 4, 50, 20);

        auto copy = readBack(&form);
        auto *button2 = copy->findChild<QPushButton *>(QStringLiteral("Button1"));
        QVERIFY(button2);
        QCOMPARE(button2->parent()->objectName(), QStringLiteral("Frame1"));
        QCOMPARE(button2->parent()->parent()->objectName(), QStringLiteral("Panel1"));
        QCOMPARE(button2->parent()->parent()->parent(), copy.get());
        QCOMPARE(button2->geometry(), QRect(3, 4, 50, 20));
        QCOMPARE(Owner(button2), copy.get());
    }

    void tabPagesKeepOrderAndTitles()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        auto *tabs = ownedWidget<QTabWidget>(&form, &form, "Tabs1");
        QPixmap pixmap(16, 16);
        pixmap.fill(Qt::red);
        for (const char *name : {"PageGeneral", "PageDetails", "PageNotes"}) {
            auto *page = named(new QWidget, name);
            tabs->addTab(page, QLatin1String(name).mid(4));
            InsertComponent(&form, page);
        }
        tabs->setTabIcon(1, QIcon(pixmap));
        tabs->setTabToolTip(2, QStringLiteral("Free text"));
        tabs->setCurrentIndex(1);
        ownedWidget<QPushButton>(&form, tabs->widget(2), "NotesButton");

        auto copy = readBack(&form);
        auto *tabs2 = copy->findChild<QTabWidget *>(QStringLiteral("Tabs1"));
        QVERIFY(tabs2);
        QCOMPARE(tabs2->count(), 3);
        QCOMPARE(tabs2->widget(0)->objectName(), QStringLiteral("PageGeneral"));
        QCOMPARE(tabs2->widget(1)->objectName(), QStringLiteral("PageDetails"));
        QCOMPARE(tabs2->widget(2)->objectName(), QStringLiteral("PageNotes"));
        QCOMPARE(tabs2->tabText(0), QStringLiteral("General"));
        QCOMPARE(tabs2->tabText(2), QStringLiteral("Notes"));
        QVERIFY(!tabs2->tabIcon(1).isNull());
        QVERIFY(tabs2->tabIcon(0).isNull());
        QCOMPARE(tabs2->tabToolTip(2), QStringLiteral("Free text"));
        QCOMPARE(tabs2->currentIndex(), 1);
        QCOMPARE(tabs2->widget(2)->findChild<QPushButton *>(QStringLiteral("NotesButton"))->parent(),
                 tabs2->widget(2));
    }

    void toolBoxItemsKeepTheirTexts()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        auto *box = ownedWidget<QToolBox>(&form, &form, "ToolBox1");
        for (const char *name : {"ItemOne", "ItemTwo"}) {
            auto *page = named(new QWidget, name);
            box->addItem(page, QStringLiteral("Text of %1").arg(QLatin1String(name)));
            InsertComponent(&form, page);
        }
        box->setItemToolTip(0, QStringLiteral("first"));
        box->setCurrentIndex(1);

        auto copy = readBack(&form);
        auto *box2 = copy->findChild<QToolBox *>(QStringLiteral("ToolBox1"));
        QVERIFY(box2);
        QCOMPARE(box2->count(), 2);
        QCOMPARE(box2->widget(0)->objectName(), QStringLiteral("ItemOne"));
        QCOMPARE(box2->itemText(0), QStringLiteral("Text of ItemOne"));
        QCOMPARE(box2->itemText(1), QStringLiteral("Text of ItemTwo"));
        QCOMPARE(box2->itemToolTip(0), QStringLiteral("first"));
        QCOMPARE(box2->currentIndex(), 1);
    }

    void comboBoxItemsAndTheCurrentOneComeBack()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        auto *combo = ownedWidget<QComboBox>(&form, &form, "Combo1");
        combo->addItems({QStringLiteral("Retail"), QStringLiteral("Wholesale"), QStringLiteral("Online")});
        combo->setCurrentIndex(2);
        ownedWidget<QComboBox>(&form, &form, "Combo2");

        auto copy = readBack(&form);
        auto *combo2 = copy->findChild<QComboBox *>(QStringLiteral("Combo1"));
        QVERIFY(combo2);
        QCOMPARE(combo2->count(), 3);
        QCOMPARE(combo2->itemText(1), QStringLiteral("Wholesale"));
        QCOMPARE(combo2->currentIndex(), 2);
        QCOMPARE(combo2->currentText(), QStringLiteral("Online"));
        QCOMPARE(copy->findChild<QComboBox *>(QStringLiteral("Combo2"))->count(), 0);
        const QByteArray bytes = ComponentToBytes(&form);
        QVERIFY(bytes.contains("qor.comboItems"));
    }

    void stackedPagesKeepThePageOrder()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        auto *stack = ownedWidget<QStackedWidget>(&form, &form, "Stack1");
        auto *second = named(new QWidget, "Second");
        auto *first = named(new QWidget, "First");
        stack->addWidget(second);
        stack->insertWidget(0, first); // created later, first in page order
        InsertComponent(&form, second);
        InsertComponent(&form, first);
        stack->setCurrentIndex(1);

        auto copy = readBack(&form);
        auto *stack2 = copy->findChild<QStackedWidget *>(QStringLiteral("Stack1"));
        QVERIFY(stack2);
        QCOMPARE(stack2->count(), 2);
        QCOMPARE(stack2->widget(0)->objectName(), QStringLiteral("First"));
        QCOMPARE(stack2->widget(1)->objectName(), QStringLiteral("Second"));
        QCOMPARE(stack2->currentIndex(), 1);
    }

    void scrollAreaWidgetReplacesTheContentWidget()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        auto *area = registeredScrollArea(&form, "Area1");
        auto *content = named(new QWidget, "Content");
        area->setWidget(content);
        InsertComponent(&form, content);
        ownedWidget<QPushButton>(&form, content, "Inside");

        auto copy = readBack(&form);
        auto *area2 = copy->findChild<QScrollArea *>(QStringLiteral("Area1"));
        QVERIFY(area2);
        QVERIFY(area2->widget());
        QCOMPARE(area2->widget()->objectName(), QStringLiteral("Content"));
        QCOMPARE(area2->findChild<QWidget *>(QStringLiteral("qt_qor_scrollarea_contents")), nullptr);
        QCOMPARE(area2->findChild<QPushButton *>(QStringLiteral("Inside"))->parent(), area2->widget());
    }

    void controlsOnTheScrollAreaContentGoBackIntoIt()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        auto *area = registeredScrollArea(&form, "Area1");
        auto *button = ownedWidget<QPushButton>(&form, area->widget(), "Inside");
        button->setGeometry(4, 5, 60, 20);

        auto copy = readBack(&form);
        auto *area2 = copy->findChild<QScrollArea *>(QStringLiteral("Area1"));
        QVERIFY(area2);
        QCOMPARE(area2->widget()->objectName(), QStringLiteral("qt_qor_scrollarea_contents"));
        auto *inside = area2->findChild<QPushButton *>(QStringLiteral("Inside"));
        QVERIFY(inside);
        QCOMPARE(inside->parent(), area2->widget());
        QCOMPARE(inside->geometry(), QRect(4, 5, 60, 20));
        QCOMPARE(Owner(inside), copy.get());
    }

    void ownedTimerComesBackOwnedWithItsInterval()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        auto *timer = named(new QTimer, "Timer1");
        timer->setInterval(1234);
        timer->setSingleShot(true);
        InsertComponent(&form, timer);

        auto copy = readBack(&form);
        auto *timer2 = copy->findChild<QTimer *>(QStringLiteral("Timer1"));
        QVERIFY(timer2);
        QCOMPARE(Owner(timer2), copy.get());
        QCOMPARE(timer2->parent(), copy.get());
        QCOMPARE(timer2->interval(), 1234);
        QVERIFY(timer2->isSingleShot());
    }

    void childrenOwnedBySomeoneElseAreNotWritten()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        QObject otherOwner;
        auto *panel = ownedWidget<QWidget>(&form, &form, "Panel1");
        auto *stranger = named(new QPushButton(panel), "Stranger");
        InsertComponent(&otherOwner, stranger);
        auto *strangerBox = named(new QGroupBox(&form), "StrangerBox");
        InsertComponent(&otherOwner, strangerBox);
        auto *mine = ownedWidget<QPushButton>(&form, strangerBox, "Mine");
        mine->setGeometry(1, 2, 30, 40);
        named(new QLabel(&form), "Unowned");

        const QString text = ComponentBinaryToText(ComponentToBytes(&form));
        QVERIFY(!text.contains(QStringLiteral("Stranger")));
        QVERIFY(!text.contains(QStringLiteral("Unowned")));
        auto copy = readBack(&form);
        QCOMPARE(namesOf(ComponentList(copy.get())), QStringList({QStringLiteral("Panel1"), QStringLiteral("Mine")}));
        // Nested under its nearest written ancestor: the form itself.
        QCOMPARE(copy->findChild<QPushButton *>(QStringLiteral("Mine"))->parent(), copy.get());
        QCOMPARE(copy->findChild<QPushButton *>(QStringLiteral("Mine"))->geometry(), QRect(1, 2, 30, 40));
    }

    void componentReferenceResolvesAfterTheRecordIsMade()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        auto *link = ownedWidget<TLinkWidget>(&form, &form, "Link1");
        // The target comes after the link in the record.
        auto *edit = ownedWidget<QLineEdit>(&form, &form, "Edit1");
        auto *timer = named(new QTimer, "Timer1");
        InsertComponent(&form, timer);
        link->setTarget(timer);
        link->setBuddyWidget(edit);

        auto copy = readBack(&form);
        auto *link2 = copy->findChild<TLinkWidget *>(QStringLiteral("Link1"));
        QVERIFY(link2);
        QCOMPARE(link2->target(), copy->findChild<QTimer *>(QStringLiteral("Timer1")));
        QCOMPARE(link2->buddyWidget(), copy->findChild<QLineEdit *>(QStringLiteral("Edit1")));
        QVERIFY(link2->target() != timer);
    }

    void referenceOutsideTheRecordIsLeftUnset()
    {
        QPushButton elsewhere;
        elsewhere.setObjectName(QStringLiteral("Elsewhere"));
        TLinkWidget link;
        link.setObjectName(QStringLiteral("Link1"));
        link.setBuddyWidget(&elsewhere);
        QVERIFY(writtenPropertyNames(&link).contains(QStringLiteral("buddyWidget")));
        auto copy = readBack(&link);
        QCOMPARE(static_cast<TLinkWidget *>(copy.get())->buddyWidget(), nullptr);
    }

    void concatenatedRecordsAreReadOneAfterTheOther()
    {
        QPushButton a;
        a.setObjectName(QStringLiteral("ButtonA"));
        QLabel b;
        b.setObjectName(QStringLiteral("LabelB"));
        b.setText(QStringLiteral("second"));
        QBuffer buffer;
        buffer.open(QIODevice::ReadWrite);
        WriteComponent(buffer, &a);
        const qint64 firstEnd = buffer.pos();
        WriteComponent(buffer, &b);
        buffer.seek(0);

        std::unique_ptr<QObject> first(ReadComponent(buffer));
        QCOMPARE(buffer.pos(), firstEnd);
        QCOMPARE(first->objectName(), QStringLiteral("ButtonA"));
        std::unique_ptr<QObject> second(ReadComponent(buffer));
        QVERIFY(buffer.atEnd());
        QCOMPARE(qobject_cast<QLabel *>(second.get())->text(), QStringLiteral("second"));

        buffer.seek(0);
        QWidget parent;
        const QList<QObject *> all = ReadComponents(buffer, &parent);
        QCOMPARE(namesOf(all), QStringList({QStringLiteral("ButtonA"), QStringLiteral("LabelB")}));
        QCOMPARE(all.at(1)->parent(), &parent);
    }

    void instanceModeReadsIntoAnExistingObject()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        form.setToolTip(QStringLiteral("designed"));
        auto *button = ownedWidget<QPushButton>(&form, &form, "Button1");
        button->setText(QStringLiteral("Go"));
        const QByteArray bytes = ComponentToBytes(&form);

        QWidget existing;
        existing.setObjectName(QStringLiteral("Existing"));
        QObject *result = ComponentFromBytes(bytes, &existing);
        QCOMPARE(result, &existing);
        QCOMPARE(existing.objectName(), QStringLiteral("Form1"));
        QCOMPARE(existing.toolTip(), QStringLiteral("designed"));
        QCOMPARE(ComponentCount(&existing), 1);
        auto *button2 = qobject_cast<QPushButton *>(Components(&existing, 0));
        QVERIFY(button2);
        QCOMPARE(button2->parent(), &existing);
        QCOMPARE(button2->text(), QStringLiteral("Go"));
    }

    void instanceOfAnotherClassIsRefusedAndLeftUnchanged()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        form.setToolTip(QStringLiteral("designed"));
        ownedWidget<QPushButton>(&form, &form, "Button1");
        const QByteArray bytes = ComponentToBytes(&form);

        QFrame frame;
        frame.setObjectName(QStringLiteral("Frame1"));
        QVERIFY_THROWS_EXCEPTION(EReadError, ComponentFromBytes(bytes, &frame));
        QCOMPARE(frame.objectName(), QStringLiteral("Frame1"));
        QCOMPARE(frame.toolTip(), QString());
        QCOMPARE(ComponentCount(&frame), 0);
        QCOMPARE(objectsUnder(&frame), 0);
    }

    void aFailureInInstanceModeRestoresTheInstance()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        form.setToolTip(QStringLiteral("designed"));
        form.setProperty("mark", 1);
        ownedWidget<QPushButton>(&form, &form, "Button1");
        ownedWidget<TBrokenWidget>(&form, &form, "Broken1");
        const QByteArray bytes = ComponentToBytes(&form);

        QWidget existing;
        existing.setObjectName(QStringLiteral("Existing"));
        existing.setToolTip(QStringLiteral("before"));
        QVERIFY_THROWS_EXCEPTION(EQorError, ComponentFromBytes(bytes, &existing));
        QCOMPARE(existing.objectName(), QStringLiteral("Existing"));
        QCOMPARE(existing.toolTip(), QStringLiteral("before"));
        QVERIFY(!existing.property("mark").isValid());
        QCOMPARE(ComponentCount(&existing), 0);
        QCOMPARE(objectsUnder(&existing), 0);
    }

    void aFailureWhileCreatingLeavesNothingAlive()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        auto *box = ownedWidget<QGroupBox>(&form, &form, "Box1");
        ownedWidget<QPushButton>(&form, box, "Button1");
        ownedWidget<QPushButton>(&form, box, "Button2");
        InsertComponent(&form, named(new QTimer, "Timer1"));
        ownedWidget<TBrokenWidget>(&form, box, "Broken1");
        const QByteArray bytes = ComponentToBytes(&form);

        QWidget holder;
        QObject owner;
        QVERIFY_THROWS_EXCEPTION(EQorError, ComponentFromBytes(bytes, nullptr, &holder, &owner));
        QCOMPARE(objectsUnder(&holder), 0);
        QCOMPARE(ComponentCount(&owner), 0);
        QVERIFY_THROWS_EXCEPTION(EQorError, ComponentFromBytes(bytes));
    }

    void wrongSignatureIsAReadError()
    {
        QByteArray bytes = smallRecord();
        bytes[0] = 'X';
        QWidget holder;
        QVERIFY_THROWS_EXCEPTION(EReadError, ComponentFromBytes(bytes, nullptr, &holder));
        QVERIFY_THROWS_EXCEPTION(EReadError, ComponentFromBytes(QByteArrayLiteral("<ui version=\"4.0\"/>")));
        QCOMPARE(objectsUnder(&holder), 0);
    }

    void truncationAtEveryByteIsAReadError()
    {
        const QByteArray bytes = smallRecord();
        QVERIFY(bytes.size() > 40);
        QWidget holder;
        for (qsizetype n = 0; n < bytes.size(); ++n) {
            bool refused = false;
            try {
                delete ComponentFromBytes(bytes.left(n), nullptr, &holder);
            } catch (const EReadError &) {
                refused = true;
            }
            QVERIFY2(refused, qPrintable(QStringLiteral("accepted %1 of %2 bytes").arg(n).arg(bytes.size())));
            QCOMPARE(objectsUnder(&holder), 0);
        }
        std::unique_ptr<QObject> whole(ComponentFromBytes(bytes, nullptr, &holder));
        QCOMPARE(whole->findChild<QTimer *>()->interval(), 250);
    }

    void junkAfterTheRecordIsAReadError()
    {
        QWidget holder;
        QVERIFY_THROWS_EXCEPTION(EReadError, ComponentFromBytes(smallRecord() + "x", nullptr, &holder));
        QVERIFY_THROWS_EXCEPTION(EReadError, ComponentFromBytes(smallRecord() + smallRecord(), nullptr, &holder));
        QCOMPARE(objectsUnder(&holder), 0);
    }

    void junkInsideTheRecordIsAReadError()
    {
        QByteArray bytes = smallRecord();
        bytes.append('\0');
        qToBigEndian<quint32>(quint32(bytes.size() - 8), bytes.data() + 4);
        QWidget holder;
        QVERIFY_THROWS_EXCEPTION(EReadError, ComponentFromBytes(bytes, nullptr, &holder));
        QCOMPARE(objectsUnder(&holder), 0);
    }

    void damagedLengthIsAReadError()
    {
        const QByteArray bytes = smallRecord();
        const quint32 length = qFromBigEndian<quint32>(bytes.constData() + 4);
        QWidget holder;
        for (const quint32 wrong : {length - 1, length + 1, length / 2, 0xFFFFFFF0u}) {
            QByteArray damaged = bytes;
            qToBigEndian<quint32>(wrong, damaged.data() + 4);
            QBuffer buffer(&damaged);
            buffer.open(QIODevice::ReadOnly);
            QVERIFY_THROWS_EXCEPTION(EReadError, ReadComponent(buffer, nullptr, &holder));
        }
        QCOMPARE(objectsUnder(&holder), 0);
    }

    void damagedBytesInsideAreRefusedOrReadCleanly()
    {
        // Flipping any one byte either gives a read error or a component;
        // never a crash, and a refused record leaves nothing behind.
        const QByteArray bytes = smallRecord();
        QWidget holder;
        int refused = 0;
        // Qt complains about the damaged type numbers it meets; that is expected here.
        const QtMessageHandler previous = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        const auto restore = qScopeGuard([previous] { qInstallMessageHandler(previous); });
        for (qsizetype i = 8; i < bytes.size(); ++i) {
            QByteArray damaged = bytes;
            damaged[i] = char(damaged[i] ^ 0x5A);
            try {
                delete ComponentFromBytes(damaged, nullptr, &holder);
            } catch (const EQorError &) {
                ++refused;
            }
            QCOMPARE(objectsUnder(&holder), 0);
        }
        QVERIFY(refused > 0);
    }

    void unknownClassIsClassNotFound()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        ownedWidget<QPushButton>(&form, &form, "Button1");
        QString text = ComponentBinaryToText(ComponentToBytes(&form));
        text.replace(QStringLiteral("\"QPushButton\""), QStringLiteral("\"TNoSuchButton\""));
        const QByteArray bytes = ComponentTextToBinary(text);
        QWidget holder;
        QVERIFY_THROWS_EXCEPTION(EClassNotFound, ComponentFromBytes(bytes, nullptr, &holder));
        QCOMPARE(objectsUnder(&holder), 0);
    }

    void unknownPropertyNamesTheClassAndTheProperty()
    {
        QPushButton button;
        button.setObjectName(QStringLiteral("Button1"));
        button.setText(QStringLiteral("x"));
        QString text = ComponentBinaryToText(ComponentToBytes(&button));
        text.replace(QStringLiteral("{\"name\": \"text\""), QStringLiteral("{\"name\": \"noSuchProperty\""));
        const QByteArray bytes = ComponentTextToBinary(text);
        QWidget holder;
        QString message;
        try {
            delete ComponentFromBytes(bytes, nullptr, &holder);
        } catch (const EReadError &e) {
            message = e.message();
        }
        QVERIFY(message.contains(QStringLiteral("QPushButton")));
        QVERIFY(message.contains(QStringLiteral("noSuchProperty")));
        QCOMPARE(objectsUnder(&holder), 0);
    }

    void valueOfTheWrongTypeIsAReadError()
    {
        QSpinBox spin;
        spin.setObjectName(QStringLiteral("Spin1"));
        spin.setMaximum(500);
        spin.setFocusPolicy(Qt::NoFocus);
        const QString text = ComponentBinaryToText(ComponentToBytes(&spin));
        QVERIFY(text.contains(QStringLiteral("{\"name\": \"maximum\", \"type\": \"int\", \"value\": 500}")));
        QWidget holder;
        QString wrongType = text;
        wrongType.replace(QStringLiteral("\"type\": \"int\", \"value\": 500"),
                          QStringLiteral("\"type\": \"QString\", \"value\": \"many\""));
        QVERIFY_THROWS_EXCEPTION(EReadError, ComponentFromBytes(ComponentTextToBinary(wrongType), nullptr, &holder));
        QString wrongKey = text;
        wrongKey.replace(QStringLiteral("\"NoFocus\""), QStringLiteral("\"NoSuchFocus\""));
        QVERIFY_THROWS_EXCEPTION(EReadError, ComponentFromBytes(ComponentTextToBinary(wrongKey), nullptr, &holder));
        QCOMPARE(objectsUnder(&holder), 0);
    }

    void ownerGivenOwnsTheRoot()
    {
        QWidget form;
        QObject owner;
        InsertComponent(&owner, named(new QTimer, "Timer1"));
        QPushButton button;
        button.setObjectName(QStringLiteral("Button1"));
        QObject *read = ComponentFromBytes(ComponentToBytes(&button), nullptr, &form, &owner);
        QCOMPARE(Owner(read), &owner);
        QCOMPARE(ComponentIndex(read), 1);
        QCOMPARE(read->parent(), &form);
    }

    void ownerWithANameClashLeavesNothingAlive()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        ownedWidget<QPushButton>(&form, &form, "Button1");
        InsertComponent(&form, named(new QTimer, "Timer1"));
        const QByteArray bytes = ComponentToBytes(&form);

        QObject owner;
        InsertComponent(&owner, named(new QTimer, "form1"));
        QWidget holder;
        QVERIFY_THROWS_EXCEPTION(EComponentError, ComponentFromBytes(bytes, nullptr, &holder, &owner));
        QCOMPARE(objectsUnder(&holder), 0);
        QCOMPARE(ComponentCount(&owner), 1);
        QCOMPARE(owner.children().size(), 1);
    }

    void hiddenWidgetComesBackHidden()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        ownedWidget<QPushButton>(&form, &form, "Shown");
        ownedWidget<QPushButton>(&form, &form, "Hidden")->hide();
        const QByteArray bytes = ComponentToBytes(&form);

        std::unique_ptr<QObject> copy(ComponentFromBytes(bytes));
        auto *w = static_cast<QWidget *>(copy.get());
        w->show();
        QVERIFY(w->findChild<QPushButton *>(QStringLiteral("Shown"))->isVisible());
        QVERIFY(!w->findChild<QPushButton *>(QStringLiteral("Hidden"))->isVisible());
        w->hide();
    }

    void rootReadIntoAVisibleParentIsShown()
    {
        QWidget window;
        window.resize(300, 200);
        window.show();
        QPushButton shown;
        shown.setObjectName(QStringLiteral("Shown"));
        shown.setGeometry(10, 10, 80, 24);
        QPushButton hidden;
        hidden.setObjectName(QStringLiteral("Hidden"));
        hidden.show();
        hidden.hide();

        auto *a = qobject_cast<QWidget *>(ComponentFromBytes(ComponentToBytes(&shown), nullptr, &window));
        auto *b = qobject_cast<QWidget *>(ComponentFromBytes(ComponentToBytes(&hidden), nullptr, &window));
        QCOMPARE(a->parentWidget(), &window);
        QVERIFY(a->isVisible());
        QCOMPARE(a->geometry(), QRect(10, 10, 80, 24));
        QCOMPARE(b->parentWidget(), &window);
        QVERIFY(!b->isVisible());
        window.hide();
    }

    void rootReadIntoATabWidgetBecomesAPage()
    {
        QTabWidget tabs;
        tabs.addTab(new QWidget, QStringLiteral("existing"));
        QWidget page;
        page.setObjectName(QStringLiteral("Page2"));
        QObject *read = ComponentFromBytes(ComponentToBytes(&page), nullptr, &tabs);
        QCOMPARE(tabs.count(), 2);
        QCOMPARE(tabs.widget(1), read);
    }

    void textFormRoundTripIsByteIdentical()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        form.setGeometry(0, 0, 400, 300);
        form.setProperty("customerId", 42);
        form.setProperty("ratio", 0.1);
        auto *label = ownedWidget<QLabel>(&form, &form, "Label1");
        label->setText(QStringLiteral("Größe \"quoted\"\n"));
        label->setFont(QFont(QStringLiteral("Serif"), 11));
        QPalette palette = label->palette();
        palette.setColor(QPalette::WindowText, Qt::blue);
        label->setPalette(palette);
        label->setCursor(Qt::IBeamCursor);
        label->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        label->setAlignment(Qt::AlignCenter);
        auto *tabs = ownedWidget<QTabWidget>(&form, &form, "Tabs1");
        auto *page = named(new QWidget, "Page1");
        QPixmap pixmap(8, 8);
        pixmap.fill(Qt::green);
        tabs->addTab(page, QIcon(pixmap), QStringLiteral("First"));
        InsertComponent(&form, page);
        auto *timer = named(new QTimer, "Timer1");
        timer->setInterval(99);
        InsertComponent(&form, timer);
        QPushButton second;
        second.setObjectName(QStringLiteral("Second"));

        const QByteArray binary = ComponentToBytes(&form) + ComponentToBytes(&second);
        const QString text = ComponentBinaryToText(binary);
        QVERIFY(text.contains(QStringLiteral("\"class\": \"QLabel\"")));
        QVERIFY(text.contains(QStringLiteral("\"dynamicProperties\"")));
        QVERIFY(text.contains(QStringLiteral("\"children\"")));
        QVERIFY(text.contains(QStringLiteral("\"name\": \"Second\"")));
        QCOMPARE(ComponentTextToBinary(text), binary);
        QCOMPARE(ComponentBinaryToText(ComponentTextToBinary(text)), text);
    }

    void damagedTextIsAReadError()
    {
        QPushButton button;
        button.setObjectName(QStringLiteral("Button1"));
        button.setText(QStringLiteral("x"));
        const QString text = ComponentBinaryToText(ComponentToBytes(&button));
        QVERIFY_THROWS_EXCEPTION(EReadError, ComponentTextToBinary(text.left(text.size() / 2)));
        QVERIFY_THROWS_EXCEPTION(EReadError, ComponentTextToBinary(QStringLiteral("[{\"name\": \"a\"}]")));
        QVERIFY_THROWS_EXCEPTION(EReadError, ComponentTextToBinary(QStringLiteral("[42]")));
        QString badValue = text;
        badValue.replace(QStringLiteral("\"value\": \"x\""), QStringLiteral("\"value\": 17"));
        QVERIFY(badValue != text);
        QVERIFY_THROWS_EXCEPTION(EReadError, ComponentTextToBinary(badValue));
        QVERIFY_THROWS_EXCEPTION(EReadError, ComponentBinaryToText(QByteArrayLiteral("QOR1garbage")));
    }
};

QTEST_MAIN(tst_QorStream)
#include "tst_qorstream.moc"
