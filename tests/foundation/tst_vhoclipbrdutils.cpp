// SPDX-License-Identifier: MIT
// The component clipboard: copies as records on the system clipboard,
// pastes placed past occupied corners, non-visual components and missing
// owners, other formats, and damaged records skipped.
#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "foundation/qorstream.h"
#include "foundation/vhoclipbrdutils.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QProcess>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QUiLoader>
#include <QGroupBox>
#include <QLabel>
#include <QBuffer>

#include <algorithm>

namespace {

struct Form
{
    std::unique_ptr<QWidget> form = std::make_unique<QWidget>();
    QPushButton *button = new QPushButton(QStringLiteral("Copy me"), form.get());

    Form()
    {
        form->setObjectName(QStringLiteral("Form1"));
        form->resize(300, 200);
        button->setObjectName(QStringLiteral("Button1"));
        button->setGeometry(20, 30, 80, 25);
        InsertComponent(form.get(), button);
    }
};

} // namespace

class tst_VhoClipbrdUtils : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QTRY_COMPARE(QorGuiTest::liveTopLevelWidgets(), 0); }

    // Edge cases

    void copyingNothingLeavesTheClipboardAsItWas()
    {
        QGuiApplication::clipboard()->setText(QStringLiteral("before"));
        VhoClipboard()->SetComponents(TComponentList(), false);
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("before"));
        QVERIFY(!VhoClipboard()->HasComponents());
    }

    void eachPasteIntoTheSameParentStepsPastTheOccupiedCorners()
    {
        Form f;
        VhoClipboard()->SetComponents(TComponentList{f.button}, false);
        QVERIFY(VhoClipboard()->HasComponents());
        auto *first = qobject_cast<QPushButton *>(VhoClipboard()->GetComponents(nullptr, f.form.get(), 8, 6));
        QVERIFY(first && first != f.button);
        QCOMPARE(first->parentWidget(), f.form.get());
        QCOMPARE(first->pos(), QPoint(28, 36));
        QCOMPARE(first->text(), QStringLiteral("Copy me"));
        QCOMPARE(first->objectName(), QStringLiteral("Button1"));
        auto *second = qobject_cast<QPushButton *>(VhoClipboard()->GetComponents(nullptr, f.form.get(), 8, 6));
        QVERIFY(second);
        QCOMPARE(second->pos(), QPoint(36, 42));
        QCOMPARE(f.button->pos(), QPoint(20, 30));
    }

    // Pasted widgets are shown without asking where the pointer is; the
    // paste leaves the mouse grab as it found it, and a pasted widget under
    // the pointer learns of it with the pointer's next move.
    void aPasteOnAShownFormLeavesTheMouseGrabAndHoverAsTheyShouldBe()
    {
        QVERIFY(RealInput::open());
        Form f;
        QVERIFY(QorGuiTest::showAndActivate(f.form.get()));
        VhoClipboard()->SetComponents(TComponentList{f.button}, false);
        RealInput::moveTo(f.form.get(), QPoint(60, 50));
        QTRY_VERIFY(f.button->underMouse());
        auto *pasted = qobject_cast<QPushButton *>(VhoClipboard()->GetComponents(nullptr, f.form.get(), 8, 6));
        QVERIFY(pasted);
        QVERIFY(pasted->isVisible());
        QCOMPARE(QWidget::mouseGrabber(), nullptr);
        RealInput::moveTo(pasted, QPoint(20, 10));
        QTRY_VERIFY(pasted->underMouse());
        QVERIFY(!f.button->underMouse());

        // A grab another widget holds stays with it.
        QWidget holder;
        holder.grabMouse();
        auto *again = qobject_cast<QPushButton *>(VhoClipboard()->GetComponents(nullptr, f.form.get(), 8, 6));
        QVERIFY(again && again->isVisible());
        QCOMPARE(QWidget::mouseGrabber(), &holder);
        holder.releaseMouse();
        QCOMPARE(QWidget::mouseGrabber(), nullptr);
    }

    // A paste of many widgets holds the form's repainting while it goes on
    // and gives it back at the end; a hold of the application's own stays.
    void aLargePasteGivesTheFormItsRepaintingBack()
    {
        Form f;
        QList<QObject *> copied;
        for (int i = 0; i < 100; ++i) {
            auto *b = new QPushButton(QStringLiteral("B%1").arg(i), f.form.get());
            b->setObjectName(QStringLiteral("Many%1").arg(i));
            b->setGeometry(200 + (i % 10) * 30, (i / 10) * 20, 28, 18);
            InsertComponent(f.form.get(), b);
            copied.append(b);
        }
        QVERIFY(QorGuiTest::showAndActivate(f.form.get()));
        VhoClipboard()->SetComponents(TComponentList(copied), false);
        QVERIFY(VhoClipboard()->GetComponents(nullptr, f.form.get(), 8, 6));
        QVERIFY(f.form->updatesEnabled());
        const auto buttons = f.form->findChildren<QPushButton *>(QString(), Qt::FindDirectChildrenOnly);
        QCOMPARE(buttons.size(), 201);
        QVERIFY(std::all_of(buttons.cbegin(), buttons.cend(),
                            [](const QPushButton *b) { return b->isVisible() && b->updatesEnabled(); }));

        f.form->setUpdatesEnabled(false);
        QVERIFY(VhoClipboard()->GetComponents(nullptr, f.form.get(), 8, 6));
        QCOMPARE(f.form->findChildren<QPushButton *>(QString(), Qt::FindDirectChildrenOnly).size(), 301);
        QVERIFY(!f.form->updatesEnabled());
        f.form->setUpdatesEnabled(true);
    }

    // Widgets pasted together step past each other's new corners too.
    void widgetsPastedTogetherStepPastEachOther()
    {
        Form f;
        auto *second = new QPushButton(QStringLiteral("Next"), f.form.get());
        second->setObjectName(QStringLiteral("Button2"));
        second->setGeometry(28, 36, 80, 25);
        InsertComponent(f.form.get(), second);
        VhoClipboard()->SetComponents(TComponentList{f.button, second}, false);
        QWidget target;
        auto *blocker = new QWidget(&target);
        blocker->move(44, 48);
        QVERIFY(VhoClipboard()->GetComponents(nullptr, &target, 8, 6));
        const auto pasted = target.findChildren<QPushButton *>(QString(), Qt::FindDirectChildrenOnly);
        QCOMPARE(pasted.size(), 2);
        // Button1 (20,30) steps once to (28,36): free on this form.
        QCOMPARE(pasted.at(0)->text(), QStringLiteral("Copy me"));
        QCOMPARE(pasted.at(0)->pos(), QPoint(28, 36));
        // Button2 (28,36) steps once to (36,42): free too.
        QCOMPARE(pasted.at(1)->pos(), QPoint(36, 42));
        // Again: each steps past the corners the first paste took.
        QVERIFY(VhoClipboard()->GetComponents(nullptr, &target, 8, 6));
        const auto again = target.findChildren<QPushButton *>(QString(), Qt::FindDirectChildrenOnly);
        QCOMPARE(again.size(), 4);
        // (28,36) and (36,42) are taken, (44,48) is the blocker: (52,54).
        QCOMPARE(again.at(2)->pos(), QPoint(52, 54));
        // (36,42), (44,48) and (52,54) are taken: (60,60).
        QCOMPARE(again.at(3)->pos(), QPoint(60, 60));
    }

    void aNonVisualComponentKeepsItsSettingsAndHasNoPlace()
    {
        Form f;
        auto *timer = new QTimer(f.form.get());
        timer->setObjectName(QStringLiteral("Timer1"));
        timer->setInterval(1234);
        InsertComponent(f.form.get(), timer);
        VhoClipboard()->SetComponents(TComponentList{timer}, false);
        QObject *pasted = VhoClipboard()->GetComponents(nullptr, f.form.get(), 8, 6);
        auto *copy = qobject_cast<QTimer *>(pasted);
        QVERIFY(copy);
        QCOMPARE(copy->interval(), 1234);
        QCOMPARE(Owner(copy), nullptr);
        delete copy;
    }

    void withoutAnOwnerThePastedComponentsBelongToNoOne()
    {
        Form f;
        VhoClipboard()->SetComponents(TComponentList{f.button}, false);
        QObject *pasted = VhoClipboard()->GetComponents(nullptr, f.form.get(), 8, 6);
        QVERIFY(pasted);
        QCOMPARE(Owner(pasted), nullptr);
        QCOMPARE(ComponentCount(f.form.get()), 1);
    }

    void anotherFormatOnlyPastesNothing()
    {
        Form f;
        QGuiApplication::clipboard()->setText(QStringLiteral("just text"));
        const int children = int(f.form->children().size());
        QCOMPARE(VhoClipboard()->GetComponents(f.form.get(), f.form.get(), 8, 6), nullptr);
        QCOMPARE(int(f.form->children().size()), children);
    }

    // The other rules

    void anOwnerTakesThePastedComponentsAndANameItHasIsSkipped()
    {
        Form f;
        QWidget other;
        other.setObjectName(QStringLiteral("Form2"));
        VhoClipboard()->SetComponents(TComponentList{f.button}, false);
        QObject *pasted = VhoClipboard()->GetComponents(&other, &other, 8, 6);
        QVERIFY(pasted);
        QCOMPARE(Owner(pasted), &other);
        // Form1 owns a Button1 already: the copy is not kept.
        const int before = ComponentCount(f.form.get());
        QCOMPARE(VhoClipboard()->GetComponents(f.form.get(), f.form.get(), 8, 6), nullptr);
        QCOMPARE(ComponentCount(f.form.get()), before);
        QTRY_COMPARE(f.form->findChildren<QPushButton *>().size(), 1);
    }

    void severalRecordsPasteInTheirOrderAndADamagedOneIsSkipped()
    {
        Form f;
        auto *second = new QPushButton(QStringLiteral("Second"), f.form.get());
        second->setObjectName(QStringLiteral("Button2"));
        second->setGeometry(150, 30, 80, 25);
        InsertComponent(f.form.get(), second);
        QByteArray damaged = ComponentToBytes(f.button);
        // The body spoilt, the header and its length intact.
        for (qsizetype i = 12; i < damaged.size(); i += 3)
            damaged[i] = char(0xee);
        QorGuiTest::putRecords(ComponentToBytes(f.button) + damaged + QByteArray("garbage") + ComponentToBytes(second));
        QWidget target;
        target.setObjectName(QStringLiteral("Form3"));
        QObject *last = VhoClipboard()->GetComponents(&target, &target, 8, 6);
        QVERIFY(last);
        QCOMPARE(last->objectName(), QStringLiteral("Button2"));
        QCOMPARE(ComponentCount(&target), 2);
        QCOMPARE(Components(&target, 0)->objectName(), QStringLiteral("Button1"));
        // Garbage alone pastes nothing.
        QorGuiTest::putRecords(QByteArray(300, 'x'));
        QCOMPARE(VhoClipboard()->GetComponents(&target, &target, 8, 6), nullptr);
        QCOMPARE(ComponentCount(&target), 2);
    }

    void aSecondProgramPastesWhatThisOneCopied()
    {
        Form f;
        VhoClipboard()->SetComponents(TComponentList{f.button}, false);
        QProcess mate;
        mate.start(QStringLiteral(QORCLIPMATE), {QStringLiteral("paste")});
        // This program owns the clipboard: it must keep answering meanwhile.
        QVERIFY(QTest::qWaitFor([&] { return mate.state() == QProcess::NotRunning; }, 20000));
        QCOMPARE(mate.exitCode(), 0);
        // Its form is empty: the copy keeps its place and gets no step.
        QCOMPARE(QString::fromUtf8(mate.readAllStandardOutput()).trimmed(), QStringLiteral("QPushButton Button1 Copy_me 28,36"));
    }

    void thisProgramPastesWhatASecondOneCopied()
    {
        QProcess mate;
        mate.start(QStringLiteral(QORCLIPMATE), {QStringLiteral("copy")});
        QVERIFY(mate.waitForStarted(10000));
        QVERIFY(QTest::qWaitFor([&] { return mate.canReadLine(); }, 20000));
        QCOMPARE(mate.readLine().trimmed(), QByteArray("ready"));
        QTRY_VERIFY(VhoClipboard()->HasComponents());
        QWidget form;
        form.setObjectName(QStringLiteral("Form9"));
        auto *button = qobject_cast<QPushButton *>(VhoClipboard()->GetComponents(&form, &form, 8, 6));
        QVERIFY(button);
        QCOMPARE(button->objectName(), QStringLiteral("MateButton"));
        QCOMPARE(button->text(), QStringLiteral("From the mate"));
        QCOMPARE(button->pos(), QPoint(19, 28));
        QCOMPARE(Owner(button), &form);
        mate.write("quit\n");
        mate.closeWriteChannel();
        QVERIFY(mate.waitForFinished(10000));
        // Gone with the program that copied it.
        QTRY_VERIFY(!VhoClipboard()->HasComponents());
    }

    void theCopyIsAlsoQtDesignersTextWhichItsLoaderReads()
    {
        Form f;
        f.button->setFlat(true);
        f.button->setFocusPolicy(Qt::NoFocus);
        auto *label = new QLabel(QStringLiteral("Name:"), f.form.get());
        label->setObjectName(QStringLiteral("Label1"));
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        label->setGeometry(5, 80, 60, 20);
        InsertComponent(f.form.get(), label);
        VhoClipboard()->SetComponents(TComponentList{f.button, label}, false);
        const QString text = QGuiApplication::clipboard()->text();
        QVERIFY(text.contains(QStringLiteral("<widget class=\"QWidget\" name=\"__qt_fake_top_level\">")));
        QVERIFY(text.contains(QStringLiteral("<enum>Qt::NoFocus</enum>")));
        QVERIFY(text.contains(QStringLiteral("<set>Qt::AlignRight|Qt::AlignVCenter</set>")));
        QVERIFY(!text.contains(QStringLiteral("autoDefault")));
        // Qt's own loader makes the same widgets from it.
        QUiLoader loader;
        QBuffer buffer;
        buffer.setData(text.toUtf8());
        std::unique_ptr<QWidget> top(loader.load(&buffer));
        QVERIFY(top);
        auto *button = top->findChild<QPushButton *>(QStringLiteral("Button1"));
        auto *loaded = top->findChild<QLabel *>(QStringLiteral("Label1"));
        QVERIFY(button && loaded);
        QCOMPARE(button->geometry(), QRect(20, 30, 80, 25));
        QCOMPARE(button->text(), QStringLiteral("Copy me"));
        QVERIFY(button->isFlat());
        QCOMPARE(button->focusPolicy(), Qt::NoFocus);
        QCOMPARE(loaded->alignment(), Qt::AlignRight | Qt::AlignVCenter);
        // And so does this library.
        QWidget other;
        const QList<QWidget *> made = WidgetsFromDesignerText(text, &other);
        QCOMPARE(made.size(), 2);
        auto *again = qobject_cast<QPushButton *>(made.first());
        QVERIFY(again);
        QCOMPARE(again->geometry(), QRect(20, 30, 80, 25));
        QCOMPARE(again->focusPolicy(), Qt::NoFocus);
        QVERIFY(again->isFlat());
        QCOMPARE(qobject_cast<QLabel *>(made.last())->alignment(), Qt::AlignRight | Qt::AlignVCenter);
        QVERIFY_THROWS_EXCEPTION(EReadError, WidgetsFromDesignerText(QStringLiteral("<notui/>"), &other));
    }

    void widgetsCopiedInQtDesignerPasteWithUniqueNames()
    {
        Form f;
        // What Qt Designer puts on the clipboard: a button and a group box
        // holding a label in a layout, the button named like one here.
        const QString designer = QStringLiteral(R"(<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0">
 <widget class="QWidget" name="__qt_fake_top_level">
  <widget class="QPushButton" name="Button1">
   <property name="geometry"><rect><x>20</x><y>30</y><width>93</width><height>28</height></rect></property>
   <property name="text"><string>From Designer</string></property>
  </widget>
  <widget class="QGroupBox" name="groupBox">
   <property name="geometry"><rect><x>120</x><y>60</y><width>120</width><height>80</height></rect></property>
   <property name="title"><string>Box</string></property>
   <layout class="QVBoxLayout" name="verticalLayout">
    <property name="spacing"><number>3</number></property>
    <item>
     <widget class="QLabel" name="label">
      <property name="text"><string>Inside</string></property>
     </widget>
    </item>
   </layout>
  </widget>
  <widget class="QNoSuchWidget" name="strange"/>
  <widget class="QTimer" name="notAWidget"/>
 </widget>
 <resources/>
 <connections/>
</ui>
)");
        QGuiApplication::clipboard()->setText(designer);
        QVERIFY(!VhoClipboard()->HasComponents());
        QObject *last = VhoClipboard()->GetComponents(f.form.get(), f.form.get(), 8, 6);
        auto *box = qobject_cast<QGroupBox *>(last);
        QVERIFY(box);
        QCOMPARE(box->title(), QStringLiteral("Box"));
        QCOMPARE(box->pos(), QPoint(128, 66));
        auto *inner = box->findChild<QLabel *>(QStringLiteral("label"));
        QVERIFY(inner);
        QCOMPARE(inner->text(), QStringLiteral("Inside"));
        QCOMPARE(Owner(inner), f.form.get());
        // Button1 was taken: the pasted one gets a free name, and steps off
        // the corner the original holds.
        auto *pasted = f.form->findChild<QPushButton *>(QStringLiteral("PushButton1"));
        QVERIFY(pasted);
        QCOMPARE(pasted->text(), QStringLiteral("From Designer"));
        QCOMPARE(pasted->pos(), QPoint(28, 36));
        QCOMPARE(Owner(pasted), f.form.get());
        QCOMPARE(ComponentCount(f.form.get()), 4);
        // Text that is no document pastes nothing.
        QGuiApplication::clipboard()->setText(QStringLiteral("<ui version=\"4.0\"><widget"));
        QCOMPARE(VhoClipboard()->GetComponents(f.form.get(), f.form.get(), 8, 6), nullptr);
        QCOMPARE(ComponentCount(f.form.get()), 4);
    }

    // A widget pasted from Qt Designer's text without a name of its own
    // (or with a name reserved for inner parts) becomes a component named
    // by its class, rather than a widget on the form that no one owns; its
    // own unnamed children stay inner parts.
    void anUnnamedWidgetFromQtDesignerIsNamedAndOwned()
    {
        Form f;
        QGuiApplication::clipboard()->setText(QStringLiteral(R"(<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0">
 <widget class="QWidget" name="__qt_fake_top_level">
  <widget class="QGroupBox">
   <property name="geometry"><rect><x>10</x><y>10</y><width>120</width><height>80</height></rect></property>
   <widget class="QLabel"/>
  </widget>
  <widget class="QPushButton" name="qt_reserved"/>
 </widget>
</ui>
)"));
        const int before = ComponentCount(f.form.get());
        QObject *last = VhoClipboard()->GetComponents(f.form.get(), f.form.get(), 8, 6);
        QVERIFY(qobject_cast<QPushButton *>(last));
        QCOMPARE(ComponentCount(f.form.get()), before + 2);
        auto *box = f.form->findChild<QGroupBox *>(QStringLiteral("GroupBox1"));
        QVERIFY(box);
        QCOMPARE(Owner(box), f.form.get());
        QCOMPARE(Owner(last), f.form.get());
        QVERIFY(!last->objectName().startsWith(QLatin1String("qt_")));
        QVERIFY(!last->objectName().isEmpty());
        // The label inside stays a part of the box.
        QLabel *inner = box->findChild<QLabel *>();
        QVERIFY(inner);
        QCOMPARE(Owner(inner), nullptr);
    }

    void childrenFollowTheirContainerWhenAsked()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        auto *panel = new QWidget(&form);
        panel->setObjectName(QStringLiteral("Panel1"));
        auto *inner = new QPushButton(panel);
        inner->setObjectName(QStringLiteral("Inner1"));
        InsertComponent(&form, panel);
        InsertComponent(&form, inner);
        VhoClipboard()->SetComponents(TComponentList{panel}, true);
        const QByteArray bytes = QGuiApplication::clipboard()->mimeData()->data(CF_QorComponents());
        QCOMPARE(bytes, ComponentToBytes(panel) + ComponentToBytes(inner));
        VhoClipboard()->SetComponents(TComponentList{panel}, false);
        QCOMPARE(QGuiApplication::clipboard()->mimeData()->data(CF_QorComponents()), ComponentToBytes(panel));
    }
};

QTEST_MAIN(tst_VhoClipbrdUtils)
#include "tst_vhoclipbrdutils.moc"
