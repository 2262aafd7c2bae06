// SPDX-License-Identifier: MIT
// The design manager: designing on, the selection and its order, Select
// All, the grid's sizes, the names of dropped components, printing, and
// what a selected widget, the stage or the manager itself freed while
// designing leaves behind.
#include "designer/qordesigner_p.h"
#include "designer/qormanager.h"
#include "designer/qorproxies_p.h"
#include "designer/qorsizers_p.h"
#include "designfixture.h"
#include "foundation/qorcomponents.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"

#include <QFocusEvent>
#include <QFrame>
#include <QPixmap>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

using namespace QorDesignFixture;

namespace {

// Counts the paint events a widget receives.
class PaintCounter final : public QObject
{
public:
    explicit PaintCounter(QWidget *Widget)
        : QObject(Widget)
    {
        Widget->installEventFilter(this);
    }
    int paints = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            ++paints;
        return false;
    }
};

// Lets the window paint what it has waiting, then starts both counts
// anew: a repaint of Probe comes in the same painting as any other.
bool settle(QWidget *Probe, PaintCounter *ProbeCount, PaintCounter *Watched)
{
    if (!QTest::qWaitForWindowExposed(Probe->window()))
        return false;
    // The first painting after the window showed may still cover it all.
    for (int round = 0; round < 2; ++round) {
        ProbeCount->paints = 0;
        Probe->update();
        if (!QTest::qWaitFor([ProbeCount] { return ProbeCount->paints > 0; }))
            return false;
    }
    ProbeCount->paints = 0;
    Watched->paints = 0;
    return true;
}

} // namespace

class tst_QorManager : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

private Q_SLOTS:
    // Edge cases

    void aSelectedWidgetDeletedByTheApplicationLeavesNoSizerAndNoProxy()
    {
        Form f;
        QVERIFY(f.design());
        f.manager->SelectControl(f.b1, QPoint(-1, -1), csmSelect, false, false);
        f.manager->SelectControl(f.b2, QPoint(-1, -1), csmAdd, true, false);
        delete f.b1;
        QCOMPARE(f.manager->Sizers()->Count(), 1);
        QCOMPARE(f.selected(), QList<QObject *>{f.b2});
        QCOMPARE(f.manager->DesignProxies()->GetControlIndex(f.b2) >= 0, true);
        for (int i = 0; i < f.manager->DesignProxies()->Count(); ++i)
            QVERIFY(f.manager->DesignProxies()->Proxies(i)->Control());
        RealInput::click(f.b3);
        QTRY_COMPARE(f.selected(), QList<QObject *>{f.b3});
    }

    void theStageDeletedWhileDesigningFreesCleanly()
    {
        auto form = std::make_unique<QWidget>();
        form->setObjectName(QStringLiteral("Form2"));
        form->resize(300, 200);
        placed<QPushButton>(form.get(), "Button1", QRect(10, 10, 80, 30));
        TQorDesignManager manager;
        manager.SetDesignStage(form.get());
        manager.SetIsDesigning(true);
        QVERIFY(QorGuiTest::showAndActivate(form.get()));
        manager.SelectAllControls();
        QCOMPARE(manager.Sizers()->Count(), 1);
        form.reset();
        QVERIFY(!manager.IsDesigning());
        QCOMPARE(manager.Sizers()->Count(), 0);
        QCOMPARE(manager.DesignProxies()->Count(), 0);
        QCOMPARE(manager.DesignStage(), nullptr);
    }

    void theManagerDeletedWhileDesigningLeavesTheStageUsable()
    {
        Form f;
        QVERIFY(f.design());
        f.manager->SelectAllControls();
        delete f.manager;
        QSignalSpy clicked(f.b1, &QPushButton::clicked);
        RealInput::click(f.b1);
        QTRY_COMPARE(clicked.count(), 1);
        QCOMPARE(f.form->findChildren<TQorSizer *>().size(), 0);
    }

    void gridSizesBelowOneBecomeFour()
    {
        TQorDesignManager manager;
        QCOMPARE(manager.GridSizeX(), 4);
        manager.SetGridSizeX(0);
        QCOMPARE(manager.GridSizeX(), 4);
        manager.SetGridSizeY(-3);
        QCOMPARE(manager.GridSizeY(), 4);
        manager.SetGridSizeX(8);
        QCOMPARE(manager.GridSizeX(), 8);
    }

    void printStageOnAPanelStageDoesNothing()
    {
        QWidget host;
        host.setObjectName(QStringLiteral("Host"));
        host.resize(300, 200);
        auto *panel = placed<QFrame>(&host, "Panel1", QRect(20, 20, 200, 150));
        auto *button = placed<QPushButton>(panel, "Button1", QRect(10, 10, 80, 30));
        TQorDesignManager manager(panel);
        manager.SetIsDesigning(true);
        manager.SelectControl(button, QPoint(-1, -1), csmSelect, true, false);
        manager.PrintStage();
        QCOMPARE(manager.SelectedComps().toList(), QList<QObject *>{button});
        QPixmap image;
        manager.GetStageBitmap(image);
        QVERIFY(image.isNull());
        QCOMPARE(manager.SelectedComps().toList(), QList<QObject *>{button});
    }

    void aDroppedComponentWithAClashingNameIsRenamed()
    {
        Form f;
        QVERIFY(f.design());
        auto *twin = new QPushButton(f.form.get());
        twin->setObjectName(QStringLiteral("Form1"));
        InsertComponent(f.form.get(), twin);
        QCOMPARE(twin->objectName(), QStringLiteral("PushButton1"));
        auto *unnamed = new QPushButton(f.form.get());
        InsertComponent(f.form.get(), unnamed);
        QCOMPARE(unnamed->objectName(), QStringLiteral("PushButton2"));
        QVERIFY(f.manager->DesignProxies()->ProxyOf(unnamed));
        QVERIFY(f.manager->Dirty());
    }

    // The other rules

    void designingOnSelectsTheStage()
    {
        Form f;
        QVERIFY(f.design());
        QCOMPARE(f.selected(), QList<QObject *>{f.form.get()});
        QCOMPARE(f.manager->StageSizer()->Control(), f.form.get());
        QCOMPARE(f.manager->Sizers()->Count(), 0);
        // Every named widget became a component of the stage and has a proxy.
        QCOMPARE(Owner(f.b4), f.form.get());
        QVERIFY(f.manager->DesignProxies()->ProxyOf(f.b4));
        QVERIFY(f.manager->DesignProxies()->ProxyOf(f.page1));
    }

    void shiftClicksSelectInClickOrderAndToggleKeepsTheOthersOrder()
    {
        Form f;
        QVERIFY(f.design());
        RealInput::click(f.b1);
        QTRY_COMPARE(f.selected(), QList<QObject *>{f.b1});
        RealInput::click(f.b3, QPoint(-1, -1), Qt::LeftButton, Qt::ShiftModifier);
        RealInput::click(f.b2, QPoint(-1, -1), Qt::LeftButton, Qt::ShiftModifier);
        QTRY_COMPARE(f.selected(), (QList<QObject *>{f.b1, f.b3, f.b2}));
        RealInput::click(f.b3, QPoint(-1, -1), Qt::LeftButton, Qt::ShiftModifier);
        QTRY_COMPARE(f.selected(), (QList<QObject *>{f.b1, f.b2}));
    }

    void selectAllSelectsEveryShowingControlInComponentOrder()
    {
        Form f;
        QVERIFY(f.design());
        f.manager->SelectAllControls();
        // The tab widget's second page is not showing.
        QList<QObject *> expected;
        for (QObject *c : ComponentList(f.form.get())) {
            if (c->isWidgetType() && c != f.page2)
                expected.append(c);
        }
        QVERIFY(expected.contains(f.page1) && expected.contains(f.b5));
        QCOMPARE(f.selected(), expected);
        QCOMPARE(f.manager->StageSizer()->Control(), nullptr);
        f.manager->DeselectAll();
        QCOMPARE(f.manager->Sizers()->Count(), 0);
    }

    void deselectUnsiblingControlKeepsTheSiblingsInTheirOrder()
    {
        Form f;
        QVERIFY(f.design());
        for (QWidget *w : {static_cast<QWidget *>(f.b3), static_cast<QWidget *>(f.b4),
                           static_cast<QWidget *>(f.b1), static_cast<QWidget *>(f.label)})
            f.manager->SelectControl(w, QPoint(-1, -1), csmAdd, false, false);
        f.manager->FillSelectedComps();
        f.manager->DeselectUnsiblingControl(f.b1, true);
        f.manager->FillSelectedComps();
        QCOMPARE(f.selected(), (QList<QObject *>{f.b3, f.b1}));
    }

    // The design refreshed with the selection its sizers stand for keeps
    // them: the marks follow controls moved meanwhile, and nothing else on
    // the stage is repainted. Another selection order makes them anew.
    void aRefreshOfTheSameSelectionKeepsItsSizers()
    {
        Form f;
        QVERIFY(f.design());
        for (QWidget *w : {static_cast<QWidget *>(f.b1), static_cast<QWidget *>(f.b2), static_cast<QWidget *>(f.b3)})
            f.manager->SelectControl(w, QPoint(-1, -1), w == f.b1 ? csmSelect : csmAdd, false, false);
        f.manager->FillSelectedComps();
        QCOMPARE(f.manager->Sizers()->Count(), 3);
        const QPointer<TQorSizer> first = f.manager->Sizers()->Sizers(0);
        auto *counter = new PaintCounter(f.b1);
        auto *edit = new PaintCounter(f.text);
        QVERIFY(settle(f.text, edit, counter));
        f.b2->move(130, 40);
        f.manager->Refresh();
        f.text->update();
        QTRY_VERIFY(edit->paints > 0);
        QCOMPARE(counter->paints, 0);
        QCOMPARE(f.manager->Sizers()->Count(), 3);
        QCOMPARE(f.manager->Sizers()->Sizers(0), first.data());
        QCOMPARE(f.manager->Sizers()->SizerOf(f.b2)->geometry(), outside(f.b2->geometry(), 2));

        f.manager->SetSelectedComps(TComponentList{f.b3, f.b1});
        f.manager->Refresh();
        QCOMPARE(f.manager->Sizers()->Count(), 2);
        QCOMPARE(f.manager->Sizers()->Sizers(0)->Control(), f.b3);
        QCOMPARE(f.manager->Sizers()->Sizers(1)->Control(), f.b1);
        QVERIFY(!f.manager->Sizers()->SizerOf(f.b2));

        // A single selection's sizer shows, and follows its control.
        f.manager->SetSelectedComps(TComponentList{f.b1});
        f.manager->Refresh();
        TQorSizer *single = f.manager->Sizers()->Sizers(0);
        f.b1->move(24, 26);
        f.manager->Refresh();
        QCOMPARE(f.manager->Sizers()->Sizers(0), single);
        QVERIFY(single->isVisible());
        QCOMPARE(single->geometry(), outside(f.b1->geometry(), 2));
    }

    // The stage that holds the keys for a multiple selection is not told
    // when it loses or gains them: it would repaint itself and every
    // control on it.
    void theDesignedStageIsNotRepaintedForItsFocus()
    {
        // A stage inside a window, as an application places it: a widget
        // that is no window repaints itself when its focus changes.
        QWidget window;
        window.resize(400, 300);
        auto *stage = new QWidget(&window);
        stage->setObjectName(QStringLiteral("Stage"));
        stage->setGeometry(10, 10, 380, 280);
        QPushButton *b1 = placed<QPushButton>(stage, "Button1", QRect(20, 20, 80, 30));
        placed<QPushButton>(stage, "Button2", QRect(120, 20, 80, 30));
        QPushButton *b3 = placed<QPushButton>(stage, "Button3", QRect(220, 200, 80, 30));
        auto *manager = new TQorDesignManager(stage);
        manager->SetIsDesigning(true);
        QVERIFY(QorGuiTest::showAndActivate(&window));
        manager->SelectAllControls();
        QTRY_VERIFY(stage->hasFocus());
        auto *counter = new PaintCounter(b1);
        auto *probe = new PaintCounter(b3);
        QVERIFY(settle(b3, probe, counter));
        QFocusEvent out(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
        QCoreApplication::sendEvent(stage, &out);
        QFocusEvent in(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
        QCoreApplication::sendEvent(stage, &in);
        b3->update();
        QTRY_VERIFY(probe->paints > 0);
        QCOMPARE(counter->paints, 0);
        // Not designed, the stage hears of its focus again.
        manager->SetIsDesigning(false);
        QVERIFY(settle(b3, probe, counter));
        QCoreApplication::sendEvent(stage, &out);
        QTRY_VERIFY(counter->paints > 0);
    }
};

QTEST_MAIN(tst_QorManager)
#include "tst_qormanager.moc"
