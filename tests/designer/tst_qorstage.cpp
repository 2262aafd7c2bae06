// The stage's small pieces: the rubber band's bounds and looks, and the
// grid's spacing, template and dots.
#include "designer/qordesigner.h"
#include "designer/qorstage.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"

#include <QPainter>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

class tst_QorStage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY2(RealInput::open(), "no X display with XTest"); }
    void cleanup()
    {
        RealInput::releaseAll();
        QTRY_COMPARE(QorGuiTest::liveTopLevelWidgets(), 0);
    }

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
};

QTEST_MAIN(tst_QorStage)
#include "tst_qorstage.moc"
