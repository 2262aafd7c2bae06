// SPDX-License-Identifier: MIT
// Arranging the selection: aligning to the box around it or to the
// parent, spreading edges, making sizes equal, scaling and flipping.
#include "designer/qordesigner_p.h"
#include "designer/qormanager.h"
#include "designer/qorsizers_p.h"
#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "harness/qorguitest.h"

#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace {

struct Stage
{
    std::unique_ptr<QWidget> form = std::make_unique<QWidget>();
    TQorDesignManager *manager = new TQorDesignManager(form.get());

    Stage()
    {
        form->setObjectName(QStringLiteral("Form1"));
        form->resize(600, 400);
    }

    QPushButton *button(const QRect &geometry, QWidget *parent = nullptr)
    {
        auto *b = new QPushButton(parent ? parent : form.get());
        b->setObjectName(QStringLiteral("Button%1").arg(ComponentCount(form.get()) + 1));
        b->setGeometry(geometry);
        InsertComponent(form.get(), b);
        return b;
    }

    QWidget *panel(const QRect &geometry)
    {
        auto *p = new QWidget(form.get());
        p->setObjectName(QStringLiteral("Panel1"));
        p->setGeometry(geometry);
        InsertComponent(form.get(), p);
        return p;
    }

    bool design(const QList<QWidget *> &selected)
    {
        manager->SetIsDesigning(true);
        for (QWidget *w : selected)
            manager->SelectControl(w, QPoint(-1, -1), csmAdd, true, false);
        return QorGuiTest::showAndActivate(form.get());
    }
};

} // namespace

class tst_QorArrange : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QTRY_COMPARE(QorGuiTest::liveTopLevelWidgets(), 0); }

    // Edge cases

    void twoButtonsAlignToTheirBoxAndCentreFromTheParentsOrigin()
    {
        Stage s;
        QPushButton *a = s.button({10, 20, 75, 25});
        QPushButton *b = s.button({200, 80, 75, 25});
        QVERIFY(s.design({a, b}));
        s.manager->SetSelCtrlDesignAligment(asLeftOrTop, asNoChange);
        QCOMPARE(a->x(), 10);
        QCOMPARE(b->x(), 10);
        QCOMPARE(b->y(), 80);
        b->move(200, 80);
        s.manager->SetSelCtrlDesignAligment(asRightOrBottom, asNoChange);
        QCOMPARE(a->x(), 200);
        QCOMPARE(b->x(), 200);
        a->move(10, 20);
        // (275 - 10 + 1 - 75) / 2 = 95.5, to the even 96, from the parent's
        // origin rather than the box's.
        s.manager->SetSelCtrlDesignAligment(asCenters, asNoChange);
        QCOMPARE(a->x(), 96);
        QCOMPARE(b->x(), 96);
        // Vertically: top and bottom of the box 20 and 105.
        s.manager->SetSelCtrlDesignAligment(asNoChange, asRightOrBottom);
        QCOMPARE(a->y(), 80);
        QCOMPARE(b->y(), 80);
        // The sizers follow.
        QTRY_COMPARE(s.manager->Sizers()->SizerOf(a)->geometry(), a->geometry().adjusted(-2, -2, 2, 2));
    }

    void centringInTheParentUsesItsWidthWithHalvesToEven()
    {
        Stage s;
        QWidget *panel = s.panel({0, 0, 301, 201});
        QPushButton *a = s.button({5, 5, 100, 20}, panel);
        QVERIFY(s.design({a}));
        s.manager->SetSelCtrlDesignAligment(asCenterInWindow, asCenterInWindow);
        // (301 - 100) / 2 = 100.5 -> 100; (201 - 20) / 2 = 90.5 -> 90.
        QCOMPARE(a->pos(), QPoint(100, 90));
    }

    void theLargestWidthReachesAllAndHeightsStay()
    {
        Stage s;
        QPushButton *a = s.button({10, 10, 40, 20});
        QPushButton *b = s.button({10, 40, 75, 30});
        QPushButton *c = s.button({10, 80, 60, 25});
        QVERIFY(s.design({a, b, c}));
        s.manager->SetSelCtrlDesignSize(ssToLargest, ssNoChange, 0, 0);
        for (QPushButton *w : {a, b, c})
            QCOMPARE(w->width(), 75);
        QCOMPARE(a->height(), 20);
        QCOMPARE(b->height(), 30);
        s.manager->SetSelCtrlDesignSize(ssNoChange, ssToSmallest, 0, 0);
        for (QPushButton *w : {a, b, c})
            QCOMPARE(w->height(), 20);
        s.manager->SetSelCtrlDesignSize(ssCustom, ssCustom, 50, 33);
        QCOMPARE(c->size(), QSize(50, 33));
    }

    void aNegativeCustomSizeLeavesTheSizes()
    {
        Stage s;
        QPushButton *a = s.button({10, 10, 40, 20});
        QPushButton *b = s.button({10, 40, 75, 30});
        QVERIFY(s.design({a, b}));
        s.manager->SetSelCtrlDesignSize(ssCustom, ssCustom, -1, -5);
        QCOMPARE(a->size(), QSize(40, 20));
        QCOMPARE(b->size(), QSize(75, 30));
    }

    void onlyNonVisualComponentsSelectedAlignNothing()
    {
        Stage s;
        QPushButton *a = s.button({10, 10, 40, 20});
        auto *timer = new QTimer(s.form.get());
        timer->setObjectName(QStringLiteral("Timer1"));
        InsertComponent(s.form.get(), timer);
        QVERIFY(s.design({a}));
        // The selection as a center may hand it over: the timer alone.
        s.manager->SetSelectedComps(TComponentList{timer});
        s.manager->SetSelCtrlDesignAligment(asCenterInWindow, asCenterInWindow);
        s.manager->SetSelCtrlDesignSize(ssCustom, ssCustom, 5, 5);
        QCOMPARE(a->geometry(), QRect(10, 10, 40, 20));
        // A control among them is arranged, the timer skipped.
        s.manager->SetSelectedComps(TComponentList{timer, a});
        s.manager->SetSelCtrlDesignSize(ssCustom, ssNoChange, 70, 0);
        QCOMPARE(a->width(), 70);
    }

    void aBoxStartingLeftOfTheParentAlignsNothingInAnyOrder_data()
    {
        QTest::addColumn<bool>("outsideFirst");
        QTest::newRow("the control left of the parent selected first") << true;
        QTest::newRow("the control left of the parent selected last") << false;
    }
    void aBoxStartingLeftOfTheParentAlignsNothingInAnyOrder()
    {
        QFETCH(bool, outsideFirst);
        Stage s;
        QPushButton *outside = s.button({-5, 20, 75, 25});
        QPushButton *inside = s.button({200, 80, 75, 25});
        QVERIFY(s.design(outsideFirst ? QList<QWidget *>{outside, inside} : QList<QWidget *>{inside, outside}));
        QCOMPARE(s.manager->SelectedComps().Count(), 2);
        for (TQorDesignAlignmentStyle style : {asLeftOrTop, asCenters, asRightOrBottom, asCenterInWindow}) {
            s.manager->SetSelCtrlDesignAligment(style, style);
            QCOMPARE(outside->pos(), QPoint(-5, 20));
            QCOMPARE(inside->pos(), QPoint(200, 80));
        }
    }

    void spacingEquallySpreadsTheLeftEdgesOverTheWholeSpan()
    {
        Stage s;
        // The box: 10 .. 109.
        QPushButton *first = s.button({10, 10, 20, 20});
        QPushButton *last = s.button({89, 10, 20, 20});
        QPushButton *middle = s.button({40, 10, 20, 20});
        QVERIFY(s.design({first, last, middle}));
        s.manager->SetSelCtrlDesignAligment(asSpaceEqual, asNoChange);
        // Taken in order of their left edges: 10, 60 and one past the box.
        QCOMPARE(first->x(), 10);
        QCOMPARE(middle->x(), 60);
        QCOMPARE(last->x(), 110);
    }

    // The other rules

    void spacingASingleControlDividesByZero()
    {
        Stage s;
        QPushButton *a = s.button({10, 10, 20, 20});
        QVERIFY(s.design({a}));
        QVERIFY_THROWS_EXCEPTION(EZeroDivide, s.manager->SetSelCtrlDesignAligment(asNoChange, asSpaceEqual));
        QCOMPARE(a->pos(), QPoint(10, 10));
    }

    void scalingChangesSizesAndChildrenButNotTheSelectedsPlace()
    {
        Stage s;
        QWidget *panel = s.panel({20, 30, 200, 100});
        QPushButton *inner = s.button({10, 20, 50, 30}, panel);
        QPushButton *outer = s.button({300, 30, 80, 20});
        QVERIFY(s.design({panel}));
        s.manager->ScaleControls(150, ssSelected);
        QCOMPARE(panel->geometry(), QRect(20, 30, 300, 150));
        QCOMPARE(inner->geometry(), QRect(15, 30, 75, 45));
        QCOMPARE(outer->geometry(), QRect(300, 30, 80, 20));
        s.manager->ScaleControls(50, ssAll);
        QCOMPARE(outer->geometry(), QRect(150, 15, 40, 10));
        QCOMPARE(panel->geometry(), QRect(10, 15, 150, 75));
        QCOMPARE(s.form->size(), QSize(300, 200));
    }

    void flippingMirrorsTheChildrenWithinTheirParent()
    {
        Stage s;
        QWidget *panel = s.panel({0, 0, 200, 100});
        QPushButton *inner = s.button({10, 20, 50, 30}, panel);
        QPushButton *outer = s.button({300, 30, 80, 20});
        QVERIFY(s.design({panel}));
        s.manager->FlipChildren(fcSelected);
        QCOMPARE(inner->x(), 200 - 10 - 50);
        QCOMPARE(outer->x(), 300);
        s.manager->FlipChildren(fcAll);
        QCOMPARE(outer->x(), 600 - 300 - 80);
        QCOMPARE(panel->x(), 600 - 0 - 200);
        // All levels: the inner button is mirrored back.
        QCOMPARE(inner->x(), 10);
    }
};

QTEST_MAIN(tst_QorArrange)
#include "tst_qorarrange.moc"
