// SPDX-License-Identifier: MIT
// The stage's small pieces: the rubber band's bounds and looks, the grid's
// spacing, template and dots, and the ready-made stage with its sizers.
#include "designer/qordesigner_p.h"
#include "designer/qordesigner.h"
#include "designer/qorsizers_p.h"
#include "designer/qordesigngrid_p.h"
#include "designer/qorrubberband_p.h"
#include "designer/qorstage.h"
#include "foundation/qorcomponents.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"

#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

namespace {

// Counts the presses a widget receives.
struct PressCounter : QObject
{
    int count = 0;
    explicit PressCounter(QWidget *w) { w->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *e) override
    {
        count += e->type() == QEvent::MouseButtonPress;
        return false;
    }
};

// A form owning a stage and, in this order, a label on the stage that
// lets the mouse through, a frame beside the stage and a second label
// under the first.
struct StageForm
{
    QWidget form;
    TQorDesignStage *stage = new TQorDesignStage(&form);
    QLabel *label = new QLabel(QStringLiteral("Label1"), stage);
    QFrame *frame = new QFrame(&form);
    QLabel *under = new QLabel(QStringLiteral("Label2"), stage);

    StageForm()
    {
        form.resize(400, 300);
        stage->setGeometry(20, 20, 300, 200);
        label->setGeometry(40, 40, 100, 30);
        frame->setGeometry(330, 20, 60, 60);
        under->setGeometry(60, 50, 100, 30);
        under->lower();
        for (QWidget *w : {label, under})
            w->setAttribute(Qt::WA_TransparentForMouseEvents);
        stage->setObjectName(QStringLiteral("DesignStage1"));
        label->setObjectName(QStringLiteral("Label1"));
        frame->setObjectName(QStringLiteral("Frame1"));
        under->setObjectName(QStringLiteral("Label2"));
        for (QObject *c : {static_cast<QObject *>(stage), static_cast<QObject *>(label),
                           static_cast<QObject *>(frame), static_cast<QObject *>(under)})
            InsertComponent(&form, c);
    }
};

} // namespace

class tst_QorStage : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aNewBandHasNoPoints()
    {
        TQorRubberBand band;
        QCOMPARE(band.PointStart(), QPoint(-1, -1));
        QCOMPARE(band.PointEnd(), QPoint(-1, -1));
        QVERIFY(band.testAttribute(Qt::WA_TransparentForMouseEvents));
    }

    void aBandDraggedFrom50_50To10_80HasTheBounds10_50_50_80()
    {
        TQorRubberBand band;
        band.SetPointStart(QPoint(50, 50));
        QCOMPARE(band.PointEnd(), QPoint(50, 50));
        band.SetPointEnd(QPoint(10, 80));
        QCOMPARE(band.Bounds(), RectFromEdges(10, 50, 50, 80));
        QCOMPARE(band.geometry(), QRect(10, 50, 40, 30));
    }

    void aBandDraggedPastTheTopLeftStopsAt1_1()
    {
        TQorRubberBand band;
        band.SetPointStart(QPoint(30, 40));
        band.SetPointEnd(QPoint(-20, -5));
        QCOMPARE(band.PointEnd(), QPoint(1, 1));
        QCOMPARE(band.Bounds(), RectFromEdges(1, 1, 30, 40));
        band.SetPointEnd(QPoint(0, 7));
        QCOMPARE(band.PointEnd(), QPoint(1, 7));
    }

    void theBandShowsADottedOutlineAndLetsClicksThrough()
    {
        QWidget window;
        window.resize(300, 200);
        auto *button = new QPushButton(QStringLiteral("Beneath"), &window);
        button->setGeometry(50, 50, 120, 60);
        auto *band = new TQorRubberBand(&window);
        band->SetPointStart(QPoint(20, 20));
        band->SetPointEnd(QPoint(220, 150));
        band->show();
        band->raise();
        QVERIFY(QorGuiTest::showAndActivate(&window));
        QSignalSpy clicked(button, &QPushButton::clicked);
        RealInput::click(button);
        QTRY_COMPARE(clicked.count(), 1);
        const QImage image = window.grab().toImage();
        // Dotted: black and not black alternate along the top edge.
        int black = 0, other = 0;
        for (int x = 22; x < 200; ++x)
            (image.pixel(x, 20) == qRgb(0, 0, 0) ? black : other)++;
        QVERIFY(black > 40);
        QVERIFY(other > 40);
        // Inside, what lies beneath shows.
        QCOMPARE(image.pixel(30, 30), window.grab(QRect(30, 30, 1, 1)).toImage().pixel(0, 0));
        QVERIFY(image.pixel(30, 30) != qRgb(0, 0, 0));
    }

    void gridSizesBelowOneBecomeFour()
    {
        TQorDesignGrid grid;
        QCOMPARE(grid.GridSizeX(), 4);
        QCOMPARE(grid.GridSizeY(), 4);
        grid.SetGridSizeX(7);
        QCOMPARE(grid.GridSizeX(), 7);
        grid.SetGridSizeX(0);
        QCOMPARE(grid.GridSizeX(), 4);
        grid.SetGridSizeX(-3);
        QCOMPARE(grid.GridSizeX(), 4);
        grid.SetGridSizeY(0);
        QCOMPARE(grid.GridSizeY(), 4);
        grid.SetGridSizeY(-3);
        QCOMPARE(grid.GridSizeY(), 4);
        QVERIFY(!grid.DisplayGrid());
        grid.SetDisplayGrid(true);
        QVERIFY(grid.DisplayGrid());
    }

    void theTemplateIsOneCellWithItsDot()
    {
        TQorDesignGrid grid;
        grid.SetGridSizeX(6);
        grid.SetGridSizeY(3);
        const QImage cell = grid.GridTemplate();
        QCOMPARE(cell.size(), QSize(6, 3));
        QCOMPARE(cell.pixel(0, 0), qRgb(0, 0, 0));
        QCOMPARE(qAlpha(cell.pixel(1, 1)), 0);
        QCOMPARE(qAlpha(cell.pixel(5, 2)), 0);
    }

    void aGridOn100By50With4By4SpacingHas26By13DotsTheFirstAt0_0()
    {
        TQorDesignGrid grid;
        QImage image(100, 50, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        QCOMPARE(grid.DrawGrid(painter, image.size()), 26 * 13);
        painter.end();
        // The first dot is centred on (0, 0): only its corner pixel is in.
        QCOMPARE(image.pixel(0, 0), qRgb(0, 0, 0));
        QCOMPARE(image.pixel(1, 1), qRgb(255, 255, 255));
        // A dot covers the two pixels before each grid line on both axes.
        for (const QPoint p : {QPoint(3, 3), QPoint(4, 3), QPoint(3, 4), QPoint(4, 4)})
            QCOMPARE(image.pixel(p), qRgb(0, 0, 0));
        QCOMPARE(image.pixel(2, 2), qRgb(255, 255, 255));
        QCOMPARE(image.pixel(5, 5), qRgb(255, 255, 255));
        // Count the black pixels: full dots inside, cut ones on the edges.
        int black = 0;
        for (int y = 0; y < 50; ++y)
            for (int x = 0; x < 100; ++x)
                black += image.pixel(x, y) == qRgb(0, 0, 0);
        // Columns 0..25 at x = 0, 4, ..., 100 and rows 0..12 at y = 0..48:
        // a dot spans x-1..x and y-1..y, clipped to the 100 by 50 image.
        auto covered = [](int spacing, int count, int limit) {
            int pixels = 0;
            for (int i = 0; i < count; ++i)
                for (int p = i * spacing - 1; p <= i * spacing; ++p)
                    pixels += p >= 0 && p < limit;
            return pixels;
        };
        QCOMPARE(black, covered(4, 26, 100) * covered(4, 13, 50));
    }

    void aGridWithOtherSpacingAndAnEmptyAreaCountsItsDots()
    {
        TQorDesignGrid grid;
        grid.SetGridSizeX(5);
        grid.SetGridSizeY(3);
        QImage image(20, 10, QImage::Format_RGB32);
        QPainter painter(&image);
        QCOMPARE(grid.DrawGrid(painter, QSize(20, 10)), (20 / 5 + 1) * (10 / 3 + 1));
        QCOMPARE(grid.DrawGrid(painter, QSize(0, 0)), 1);
    }

    void theStageAcceptsControlsAndStartsWithNoSizers()
    {
        StageForm f;
        QVERIFY(AcceptsControls(f.stage));
        QVERIFY(f.stage->SizerList());
        QCOMPARE(f.stage->SizerList()->Count(), 0);
    }

    void thePointedControlIsTheFirstComponentHoldingThePointEdgesIncluded()
    {
        StageForm f;
        // Both labels hold (70, 55) of the stage: the first owned wins,
        // whichever lies on top.
        QCOMPARE(f.stage->PointedControl(QPoint(70, 55), false), f.label);
        QCOMPARE(f.stage->PointedControl(QPoint(150, 75), false), f.under);
        // The right and bottom edges of the label (x 40 + 100, y 40 + 30)
        // are inside, one pixel further is not.
        QCOMPARE(f.stage->PointedControl(QPoint(140, 70), false), f.label);
        QCOMPARE(f.stage->PointedControl(QPoint(141, 45), false), nullptr);
        // A control of the parent outside the stage counts too.
        QCOMPARE(f.stage->PointedControl(QPoint(320, 10), false), f.frame);
        // Nothing there: the parent, or null.
        QCOMPARE(f.stage->PointedControl(QPoint(250, 150), true), &f.form);
        QCOMPARE(f.stage->PointedControl(QPoint(250, 150), false), nullptr);
        // The stage itself is never the answer.
        QVERIFY(f.stage->PointedControl(QPoint(5, 5), false) != f.stage);
    }

    void aStageWithoutParentPointsAtNothing()
    {
        TQorDesignStage stage;
        stage.resize(50, 50);
        QCOMPARE(stage.PointedControl(QPoint(10, 10), true), nullptr);
    }

    void aClickOnTheStagePutsASizerOnThePointedControl()
    {
        StageForm f;
        PressCounter presses(f.stage);
        QVERIFY(QorGuiTest::showAndActivate(&f.form));
        RealInput::click(f.stage, QPoint(30, 30));
        // Nothing under the click but the stage: no sizer.
        QTRY_COMPARE(presses.count, 1);
        QCOMPARE(f.stage->SizerList()->Count(), 0);
        RealInput::click(f.stage, QPoint(50, 45));
        QTRY_COMPARE(f.stage->SizerList()->Count(), 1);
        TQorSizer *sizer = f.stage->SizerList()->Sizers(0);
        QCOMPARE(sizer->Control(), f.label);
        QTRY_VERIFY(sizer->isVisible());
        QCOMPARE(sizer->geometry(), f.label->geometry().adjusted(-2, -2, 2, 2));
        // A second click on the same control adds nothing.
        RealInput::click(f.stage, QPoint(45, 62));
        QTRY_COMPARE(presses.count, 3);
        QCOMPARE(f.stage->SizerList()->Count(), 1);
        // Another control joins: both are marked as a multiple selection.
        RealInput::click(f.stage, QPoint(150, 75));
        QTRY_COMPARE(f.stage->SizerList()->Count(), 2);
        QCOMPARE(f.stage->SizerList()->Sizers(1)->Control(), f.under);
        QCOMPARE(f.stage->SizerList()->Sizers(0)->SizerMode(), smMulti);
        QCOMPARE(f.stage->SizerList()->Sizers(1)->SizerMode(), smMulti);
    }

    void theSizerOfTheStageResizesItsControlByItsHandle()
    {
        StageForm f;
        QVERIFY(QorGuiTest::showAndActivate(&f.form));
        RealInput::click(f.stage, QPoint(50, 45));
        QTRY_COMPARE(f.stage->SizerList()->Count(), 1);
        TQorSizer *sizer = f.stage->SizerList()->Sizers(0);
        QTRY_VERIFY(sizer->isVisible());
        // The bottom right handle, dragged 30 to the right and 20 down.
        const QPoint handle = sizer->HandleRect(5).center();
        RealInput::drag(sizer, handle, handle + QPoint(30, 20));
        QTRY_COMPARE(f.label->geometry(), QRect(40, 40, 130, 50));
        QCOMPARE(sizer->geometry(), f.label->geometry().adjusted(-2, -2, 2, 2));
    }

    void aStageFreedWithItsSizersLeavesTheControlsAlone()
    {
        QWidget form;
        form.resize(200, 200);
        auto *stage = new TQorDesignStage(&form);
        stage->setGeometry(0, 0, 200, 200);
        auto *frame = new QFrame(&form);
        frame->setGeometry(20, 20, 50, 50);
        InsertComponent(&form, frame);
        frame->lower();
        QVERIFY(QorGuiTest::showAndActivate(&form));
        RealInput::click(stage, QPoint(30, 30));
        QTRY_COMPARE(stage->SizerList()->Count(), 1);
        QPointer<TQorSizer> sizer = stage->SizerList()->Sizers(0);
        delete stage;
        QVERIFY(sizer.isNull());
        QCOMPARE(frame->geometry(), QRect(20, 20, 50, 50));
    }
};

QTEST_MAIN(tst_QorStage)
#include "tst_qorstage.moc"
