// SPDX-License-Identifier: MIT
// The design proxies under real input: a click that reaches a child or
// climbs to the container, the stage proxy's rubber band, a chosen class
// inserted where it is clicked, double and right clicks, inline editing,
// moves reported to the stage, and designed widgets that do not act, show
// no tool tip and keep no cursor of their own.
#include "designer/qordesigner_p.h"
#include "designer/qormanager.h"
#include "designer/qorproxies_p.h"
#include "designer/qorsizers_p.h"
#include "designer/qordesigngrid_p.h"
#include "designer/qorrubberband_p.h"
#include "designer/qorstage.h"
#include "designfixture.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>
#include <QToolButton>
#include <QToolTip>
#include <QWindow>

using namespace QorDesignFixture;

class tst_QorProxies : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

private Q_SLOTS:
    // Edge cases

    void destroyingAProxyDuringInlineEditingEndsTheEditingFirst()
    {
        Form f;
        QVERIFY(f.design());
        f.manager->SelectControl(f.edit, QPoint(-1, -1), csmSelect, true, false);
        f.manager->StartEmbedEdit();
        QVERIFY(f.manager->IsEmbeddedEditing());
        TQorDesignWndProcProxy *proxy = f.manager->DesignProxies()->ProxyOf(f.edit);
        QVERIFY(proxy && proxy->IsInlineEditing() && !proxy->IsInterceptMsgs());
        f.manager->DesignProxies()->DelControl(f.edit);
        QVERIFY(!f.manager->IsEmbeddedEditing());
        QVERIFY(!f.manager->GetSelectSizer()->IsInlineEditing());
    }

    void aClickOnAChildInsideASelectedGroupBoxReachesTheChild()
    {
        Form f;
        QVERIFY(f.design());
        f.manager->SelectControl(f.group, QPoint(-1, -1), csmSelect, true, false);
        RealInput::click(f.label);
        QTRY_COMPARE(f.selected(), QList<QObject *>{f.label});
    }

    void ctrlClickOnAButtonInAGroupBoxStartsARubberBandOnTheStage()
    {
        Form f;
        QVERIFY(f.design());
        RealInput::moveTo(f.b4, QPoint(10, 10));
        RealInput::holdModifiers(Qt::ControlModifier);
        RealInput::press();
        QTRY_VERIFY(f.manager->IsRubbering() || f.manager->StageProxy()->RubberBand());
        RealInput::moveTo(f.b4, QPoint(30, 25), 3);
        QTRY_VERIFY(f.manager->IsRubbering());
        QCOMPARE(f.selected(), QList<QObject *>{f.form.get()});
        const QPoint start = f.b4->mapTo(f.form.get(), QPoint(10, 10));
        QTRY_COMPARE(f.manager->StageProxy()->RubberBand()->PointStart(), start);
        RealInput::release();
        RealInput::releaseModifiers(Qt::ControlModifier);
        // The band covered part of the group box and of the button in it.
        QTRY_COMPARE(f.selected(), (QList<QObject *>{f.group, f.b4}));
    }

    void aRubberBandSelectsEveryControlItTouchesEdgeIncluded()
    {
        Form f;
        QVERIFY(f.design());
        // From the gap between Button1 and Button2 to Button2's left edge.
        const QPoint from(108, 5);
        const QPoint to(f.b2->x(), f.b2->y() + 5);
        RealInput::drag(f.form.get(), from, to, 6);
        QTRY_COMPARE(f.selected(), QList<QObject *>{f.b2});
        QVERIFY(!f.manager->IsRubbering());
        QCOMPARE(f.manager->StageProxy()->RubberBand(), nullptr);
    }

    void aChosenClassGoesIntoAGroupBoxAtTheClickAndThroughAButton()
    {
        FakeCenter center;
        Form f;
        f.manager->SetConsoleCenter(&center);
        QVERIFY(f.design());
        QSignalSpy inserted(f.manager, &TQorDesignManager::OnDynInsComponent);
        center.chosen = &QLabel::staticMetaObject;
        RealInput::click(f.group, QPoint(130, 40));
        QTRY_COMPARE(inserted.count(), 1);
        auto *inGroup = qobject_cast<QWidget *>(inserted.at(0).at(1).value<QObject *>());
        QCOMPARE(inGroup->parentWidget(), f.group);
        QCOMPARE(inGroup->pos(), QPoint(130, 40));
        // The group box holds Label1 already.
        QCOMPARE(inGroup->objectName(), QStringLiteral("Label2"));
        // A button cannot hold a component: the click goes through it to the
        // group box beneath.
        center.chosen = &QLabel::staticMetaObject;
        RealInput::click(f.b4, QPoint(12, 8));
        QTRY_COMPARE(inserted.count(), 2);
        auto *through = qobject_cast<QWidget *>(inserted.at(1).at(1).value<QObject *>());
        QCOMPARE(through->parentWidget(), f.group);
        QCOMPARE(through->pos(), f.b4->pos() + QPoint(12, 8));
        QCOMPARE(through->objectName(), QStringLiteral("Label3"));
    }

    void aProgrammaticMoveClimbsToTheStageWhichHearsOfItOnce()
    {
        FakeCenter center;
        Form f;
        f.manager->SetConsoleCenter(&center);
        QVERIFY(f.design());
        f.manager->SelectControl(f.b4, QPoint(-1, -1), csmSelect, true, false);
        // What the selection itself posted is delivered before counting.
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        center.selMoved = 0;
        f.b4->move(f.b4->pos() + QPoint(5, 0));
        QTRY_COMPARE(center.selMoved, 1);
        QTRY_COMPARE(f.manager->GetSelectSizer()->geometry(), outside(f.b4->geometry().translated(f.group->pos()), 2));
        QVERIFY(!QTest::qWaitFor([&] { return center.selMoved > 1; }, 50));
        QCOMPARE(center.selMoved, 1);
    }

    // The other rules

    void aRubberBandSelectsInTheStagesComponentOrder()
    {
        Form f;
        QVERIFY(f.design());
        RealInput::drag(f.form.get(), QPoint(305, 5), QPoint(10, 35), 8);
        QTRY_COMPARE(f.selected(), (QList<QObject *>{f.b1, f.b2, f.b3}));
    }

    void aChosenClassGoesOntoTheCurrentTabPage()
    {
        FakeCenter center;
        Form f;
        f.manager->SetConsoleCenter(&center);
        QVERIFY(f.design());
        QSignalSpy inserted(f.manager, &TQorDesignManager::OnDynInsComponent);
        center.chosen = &QCheckBox::staticMetaObject;
        RealInput::click(f.page1, QPoint(120, 80));
        QTRY_COMPARE(inserted.count(), 1);
        auto *box = qobject_cast<QWidget *>(inserted.at(0).at(1).value<QObject *>());
        QCOMPARE(box->parentWidget(), f.page1);
        QCOMPARE(box->pos(), QPoint(120, 80));
        QCOMPARE(f.tabs->currentIndex(), 0);
    }

    void aDoubleClickOnASelectedControlReachesTheComponentEditor()
    {
        Form f;
        QVERIFY(f.design());
        QList<QObject *> edited;
        f.manager->OnLaunchComponentEditor = [&](QObject *c) {
            edited.append(c);
            return false;
        };
        RealInput::click(f.b1);
        QTRY_COMPARE(f.selected(), QList<QObject *>{f.b1});
        const QRect before = f.b1->geometry();
        RealInput::doubleClick(f.b1);
        QTRY_COMPARE(edited, QList<QObject *>{f.b1});
        QCOMPARE(f.b1->geometry(), before);
    }

    void aRightClickOnASelectedControlOpensTheDesignMenu()
    {
        Form f;
        QMenu menu;
        menu.addAction(QStringLiteral("Align"));
        f.manager->SetDesignPopupMenu(&menu);
        QVERIFY(f.design());
        QSignalSpy popup(f.manager, &TQorDesignManager::OnDesignPopup);
        RealInput::click(f.b1);
        QTRY_COMPARE(f.selected(), QList<QObject *>{f.b1});
        RealInput::click(f.b1, QPoint(10, 10), Qt::RightButton);
        QTRY_VERIFY(menu.isVisible());
        QCOMPARE(popup.count(), 1);
        QCOMPARE(popup.at(0).at(1).value<QWidget *>(), f.b1);
        menu.hide();
        // On the stage the stage's menu opens for the stage.
        RealInput::click(f.form.get(), QPoint(600, 450), Qt::RightButton);
        QTRY_VERIFY(menu.isVisible());
        QCOMPARE(popup.at(1).at(1).value<QWidget *>(), f.form.get());
        menu.hide();
    }

    void compositeWidgetsDoNotActWhileDesigned()
    {
        Form f;
        QVERIFY(f.design());
        QWidget *focusBefore = QApplication::focusWidget();
        QSignalSpy tabChanged(f.tabs, &QTabWidget::currentChanged);
        QSignalSpy spinChanged(f.spin, &QSpinBox::valueChanged);
        // The second tab, the spin box's up arrow, the combo box, a right
        // click into the text edit, typing into the line edit.
        QTabBar *bar = f.tabs->tabBar();
        RealInput::click(bar, bar->tabRect(1).center());
        RealInput::click(f.spin, QPoint(f.spin->width() - 6, 5));
        RealInput::click(f.combo);
        RealInput::click(f.text, QPoint(20, 20), Qt::RightButton);
        RealInput::click(f.edit);
        RealInput::typeText(QStringLiteral("abc"));
        QTRY_COMPARE(f.selected(), QList<QObject *>{f.edit});
        QVERIFY(!QTest::qWaitFor(
            [&] {
                return tabChanged.count() || spinChanged.count() || f.combo->view()->isVisible()
                    || !f.edit->text().isEmpty() || QApplication::activePopupWidget();
            },
            100));
        QCOMPARE(tabChanged.count(), 0);
        QCOMPARE(spinChanged.count(), 0);
        QCOMPARE(f.spin->value(), 0);
        QVERIFY(!f.combo->view()->isVisible());
        QVERIFY(f.edit->text().isEmpty());
        QCOMPARE(QApplication::activePopupWidget(), nullptr);
        QVERIFY(!qobject_cast<QLineEdit *>(QApplication::focusWidget())
                || QApplication::focusWidget() == focusBefore);
    }

    void aCalendarAndAScrollAreaDoNotActWhileDesigned()
    {
        auto form = std::make_unique<QWidget>();
        form->setObjectName(QStringLiteral("Form1"));
        form->resize(640, 400);
        auto *calendar = placed<QCalendarWidget>(form.get(), "Calendar1", QRect(20, 20, 320, 240));
        auto *area = placed<QScrollArea>(form.get(), "ScrollBox1", QRect(360, 20, 200, 150));
        auto *content = new QWidget;
        content->resize(180, 2000);
        area->setWidget(content);
        auto *manager = new TQorDesignManager(form.get());
        manager->SetIsDesigning(true);
        QVERIFY(QorGuiTest::showAndActivate(form.get()));

        const QDate date = calendar->selectedDate();
        const int month = calendar->monthShown();
        QSignalSpy clicked(calendar, &QCalendarWidget::clicked);
        QSignalSpy selection(calendar, &QCalendarWidget::selectionChanged);
        QSignalSpy page(calendar, &QCalendarWidget::currentPageChanged);
        auto *days = calendar->findChild<QTableView *>();
        auto *nextMonth = calendar->findChild<QToolButton *>(QStringLiteral("qt_calendar_nextmonth"));
        QVERIFY(days && nextMonth);
        // A day other than the selected one, the next-month button, the
        // wheel over the days.
        const QModelIndex current = days->currentIndex();
        const QModelIndex other = days->model()->index(current.row() == 2 ? 3 : 2, 3);
        RealInput::click(days, days->visualRect(other).center());
        RealInput::click(nextMonth);
        RealInput::wheel(days, -2);
        QTRY_COMPARE(manager->SelectedComps().toList(), QList<QObject *>{calendar});

        // The scroll area: the wheel over its contents, a click on the
        // lower arrow of its scroll bar, a drag of the bar's handle.
        QScrollBar *bar = area->verticalScrollBar();
        RealInput::wheel(area->viewport(), -3);
        RealInput::click(bar, QPoint(bar->width() / 2, bar->height() - 4));
        RealInput::drag(bar, QPoint(bar->width() / 2, 30), QPoint(bar->width() / 2, 90), 4);
        QTRY_COMPARE(manager->SelectedComps().toList(), QList<QObject *>{area});
        // The drag of the handle moved the scroll area itself, as a drag of
        // any designed widget does.
        QTRY_COMPARE(area->geometry(), QRect(360, 80, 200, 150));

        QVERIFY(!QTest::qWaitFor(
            [&] { return clicked.count() || selection.count() || page.count() || bar->value() != 0; }, 100));
        QCOMPARE(clicked.count(), 0);
        QCOMPARE(selection.count(), 0);
        QCOMPARE(page.count(), 0);
        QCOMPARE(calendar->selectedDate(), date);
        QCOMPARE(calendar->monthShown(), month);
        QCOMPARE(bar->value(), 0);
        QCOMPARE(QApplication::activePopupWidget(), nullptr);
        QVERIFY(!days->hasFocus());
        QVERIFY(!area->viewport()->hasFocus());

        // Designing off: both act again.
        manager->SetIsDesigning(false);
        RealInput::wheel(area->viewport(), -3);
        QTRY_VERIFY(bar->value() > 0);
        RealInput::click(nextMonth);
        QTRY_COMPARE(page.count(), 1);
    }

    void designedWidgetsShowNoToolTipAndNoCursorOfTheirOwn()
    {
        Form f;
        f.edit->setToolTip(QStringLiteral("Type a name"));
        QVERIFY(f.design());
        QWindow *window = f.form->windowHandle();
        RealInput::moveTo(f.edit, QPoint(10, 10), 2);
        RealInput::moveTo(f.edit, QPoint(20, 12), 2);
        QTRY_COMPARE(window->cursor().shape(), Qt::ArrowCursor);
        // Longer than the tool tip's wake-up delay.
        QVERIFY(!QTest::qWaitFor([] { return QToolTip::isVisible(); }, 1200));
        QCOMPARE(window->cursor().shape(), Qt::ArrowCursor);
        // Designing off: the line edit's own cursor and tool tip come back.
        f.manager->SetIsDesigning(false);
        RealInput::moveTo(f.b1, QPoint(10, 10), 2);
        RealInput::moveTo(f.edit, QPoint(15, 10), 2);
        QTRY_COMPARE(window->cursor().shape(), Qt::IBeamCursor);
        QTRY_VERIFY_WITH_TIMEOUT(QToolTip::isVisible(), 5000);
        QToolTip::hideText();
    }

    void inlineEditingLetsTheEditorTakeTheKeys()
    {
        Form f;
        QVERIFY(f.design());
        f.manager->SelectControl(f.edit, QPoint(-1, -1), csmSelect, true, false);
        f.manager->StartEmbedEdit();
        QTRY_COMPARE(QApplication::focusWidget(), f.edit);
        RealInput::typeText(QStringLiteral("xy"));
        QTRY_COMPARE(f.edit->text(), QStringLiteral("xy"));
        f.manager->EndEmbedEdit();
        QVERIFY(!f.manager->IsEmbeddedEditing());
        RealInput::typeText(QStringLiteral("z"));
        QVERIFY(!QTest::qWaitFor([&] { return f.edit->text() != QLatin1String("xy"); }, 100));
    }

    void theStageMousePositionIsReported()
    {
        Form f;
        QVERIFY(f.design());
        QSignalSpy moves(f.manager, &TQorDesignManager::OnStageMouseMove);
        RealInput::moveTo(f.b4, QPoint(5, 6));
        RealInput::moveTo(f.b4, QPoint(7, 9), 1);
        const QPoint expected = f.b4->mapTo(f.form.get(), QPoint(7, 9));
        // The last report is of the last move, once its event has come.
        auto lastReported = [&moves] {
            if (moves.isEmpty())
                return QPoint(-1, -1);
            const QList<QVariant> last = moves.constLast();
            return QPoint(last.at(3).toInt(), last.at(4).toInt());
        };
        QTRY_COMPARE(lastReported(), expected);
    }
};

QTEST_MAIN(tst_QorProxies)
#include "tst_qorproxies.moc"
