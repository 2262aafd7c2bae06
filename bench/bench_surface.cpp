// SPDX-License-Identifier: MIT
// Bench rows of the design surface on a shown stage of 1000 (and 5000)
// buttons: designing on and off, selecting everything, one drag step, the
// release that ends a drag and a Ctrl+arrow nudge, each until painted,
// beside the plain widget work a user would see the same change from.
#include "qorbench.h"

#include "designer/qordesigner_p.h"
#include "designer/qormanager.h"
#include "designer/qorsizers_p.h"
#include "foundation/qorcomponents.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPainter>
#include <QPushButton>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

constexpr int kRounds = 5;

double msSince(const QElapsedTimer &t)
{
    return double(t.nsecsElapsed()) / 1e6;
}

QSize stageSizeFor(int count)
{
    const int columns = count <= 1000 ? 25 : 50;
    return QSize(columns * 48 + 20, (count / columns + 1) * 22 + 20);
}

void addButtons(QWidget *stage, int count)
{
    const int columns = count <= 1000 ? 25 : 50;
    for (int i = 0; i < count; ++i) {
        auto *button = new QPushButton(QStringLiteral("B%1").arg(i + 1), stage);
        button->setObjectName(QStringLiteral("Button%1").arg(i + 1));
        button->setGeometry(10 + (i % columns) * 48, 10 + (i / columns) * 22, 44, 18);
        InsertComponent(stage, button);
    }
}

std::unique_ptr<QWidget> shownStage(int count)
{
    auto stage = std::make_unique<QWidget>();
    stage->setObjectName(QStringLiteral("Form1"));
    stage->resize(stageSizeFor(count));
    addButtons(stage.get(), count);
    stage->move(0, 0);
    stage->show();
    benchSettle();
    return stage;
}

// The floor of designing on and off: a stage of buttons made, shown and
// painted.
double createShowPaint(int count)
{
    QElapsedTimer t;
    t.start();
    auto stage = shownStage(count);
    const double ms = msSince(t);
    stage.reset();
    benchSettle();
    return ms;
}

// One widget over the stage painting a full set of handles for every
// button: the least a selection of all of them can cost on screen.
class HandleOverlay final : public QWidget
{
public:
    explicit HandleOverlay(QWidget *stage)
        : QWidget(stage)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setGeometry(stage->rect());
        for (QObject *c : ComponentList(stage)) {
            if (auto *w = qobject_cast<QWidget *>(c))
                m_rects.append(w->geometry().adjusted(-2, -2, 2, 2));
        }
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter p(this);
        for (const QRect &r : m_rects) {
            const int w = r.width(), h = r.height();
            const QPoint o = r.topLeft();
            const QRect handles[8] = {{0, 0, 5, 5},         {w / 2 - 3, 0, 5, 5}, {w - 5, 0, 5, 5},
                                      {w - 5, h / 2 - 3, 5, 5}, {w - 5, h - 5, 5, 5}, {w / 2 - 3, h - 5, 5, 5},
                                      {0, h - 5, 5, 5},     {0, h / 2 - 3, 5, 5}};
            for (const QRect &handle : handles)
                p.fillRect(handle.translated(o), Qt::black);
        }
    }

private:
    QList<QRect> m_rects;
};

// Designing on, or off after everything was selected, beside making the
// stage. Designing off must take every mark off the screen, which repaints
// each button under them: the second row sets it beside a plain repaint of
// the same stage, the least that can cost.
QList<BenchRow> designOnOff(bool on)
{
    double best = 1e300, floorBest = 1e300, repaintBest = 1e300;
    for (int round = 0; round < kRounds; ++round) {
        auto stage = shownStage(1000);
        auto *manager = new TQorDesignManager(stage.get());
        if (!on) {
            QElapsedTimer r;
            r.start();
            stage->update();
            benchSettle();
            repaintBest = std::min(repaintBest, msSince(r));
            manager->SetIsDesigning(true);
            manager->SelectAllControls();
            benchSettle();
        }
        QElapsedTimer t;
        t.start();
        manager->SetIsDesigning(on);
        benchSettle();
        best = std::min(best, msSince(t));
        stage.reset();
        benchSettle();
        floorBest = std::min(floorBest, createShowPaint(1000));
    }
    if (on)
        return {{QStringLiteral("surface.design_on_1000"), best, QStringLiteral("create_show_paint_1000"), floorBest}};
    return {{QStringLiteral("surface.design_off_1000"), best, QStringLiteral("create_show_paint_1000"), floorBest},
            {QStringLiteral("surface.design_off_1000_repaint"), best, QStringLiteral("repaint_1000"), repaintBest}};
}

BenchRow selectAll(int count)
{
    auto stage = shownStage(count);
    auto *manager = new TQorDesignManager(stage.get());
    manager->SetIsDesigning(true);
    benchSettle();
    double best = 1e300, floorBest = 1e300;
    for (int round = 0; round < kRounds; ++round) {
        manager->SelectControl(stage.get(), QPoint(-1, -1), csmSelect, true, false);
        benchSettle();
        QElapsedTimer t;
        t.start();
        manager->SelectAllControls();
        benchSettle();
        best = std::min(best, msSince(t));
        if (manager->SelectedComps().Count() != count)
            qFatal("bench surface: %d selected of %d", manager->SelectedComps().Count(), count);
    }
    manager->SetIsDesigning(false);
    benchSettle();
    for (int round = 0; round < kRounds; ++round) {
        QElapsedTimer t;
        t.start();
        auto *overlay = new HandleOverlay(stage.get());
        overlay->show();
        benchSettle();
        floorBest = std::min(floorBest, msSince(t));
        delete overlay;
        benchSettle();
    }
    return {QStringLiteral("surface.select_all_%1").arg(count), best, QStringLiteral("overlay_handles_%1").arg(count),
            floorBest};
}

// 200 buttons spread over the stage, every fifth one.
QList<QWidget *> twoHundred(QWidget *stage)
{
    QList<QWidget *> chosen;
    const QList<QObject *> all = ComponentList(stage);
    for (int i = 0; i < all.size() && chosen.size() < 200; i += 5)
        chosen.append(static_cast<QWidget *>(all[i]));
    return chosen;
}

void moveAll(const QList<QWidget *> &widgets, const QPoint &delta)
{
    for (QWidget *w : widgets)
        w->move(w->pos() + delta);
    benchSettle();
}

QList<BenchRow> dragRows()
{
    auto stage = shownStage(1000);
    auto *manager = new TQorDesignManager(stage.get());
    manager->SetIsDesigning(true);
    const QList<QWidget *> chosen = twoHundred(stage.get());
    for (QWidget *w : chosen)
        manager->SelectControl(w, QPoint(0, 0), csmAdd, false, false);
    benchSettle();
    TQorSizer *sizer = manager->Sizers()->SizerOf(chosen.first());
    const QPoint start = stage->mapToGlobal(QPoint(5, 5));

    double step = 1e300, stepFloor = 1e300, release = 1e300, releaseFloor = 1e300, nudge = 1e300,
           nudgeFloor = 1e300;
    for (int round = 0; round < kRounds; ++round) {
        const QPoint before = chosen.first()->pos();
        sizer->BeginMoveAsSender(start);
        sizer->DragMouseMove(start + QPoint(4, 4), Qt::LeftButton, Qt::NoModifier);
        benchSettle();
        QElapsedTimer t;
        t.start();
        sizer->DragMouseMove(start + QPoint(8, 8), Qt::LeftButton, Qt::NoModifier);
        benchSettle();
        step = std::min(step, msSince(t));
        t.restart();
        sizer->WMLButtonUp();
        benchSettle();
        release = std::min(release, msSince(t));
        if (chosen.first()->pos() != before + QPoint(8, 8))
            qFatal("bench surface: the drag did not move the selection");

        t.restart();
        sizer->KeyDown(Qt::Key_Right, Qt::ControlModifier);
        benchSettle();
        nudge = std::min(nudge, msSince(t));
        if (chosen.first()->pos() != before + QPoint(9, 8))
            qFatal("bench surface: the nudge did not move the selection");
        // Back where the round started, untimed.
        manager->SetIsDesigning(false);
        moveAll(chosen, QPoint(-9, -8));
        manager->SetIsDesigning(true);
        for (QWidget *w : chosen)
            manager->SelectControl(w, QPoint(0, 0), csmAdd, false, false);
        benchSettle();
        sizer = manager->Sizers()->SizerOf(chosen.first());
    }
    manager->SetIsDesigning(false);
    benchSettle();
    for (int round = 0; round < kRounds; ++round) {
        QElapsedTimer t;
        t.start();
        moveAll(chosen, QPoint(4, 4));
        stepFloor = std::min(stepFloor, msSince(t));
        t.restart();
        for (QWidget *w : chosen)
            w->setGeometry(QRect(w->pos() - QPoint(4, 4), w->size()));
        benchSettle();
        releaseFloor = std::min(releaseFloor, msSince(t));
        t.restart();
        moveAll(chosen, QPoint(1, 0));
        nudgeFloor = std::min(nudgeFloor, msSince(t));
        moveAll(chosen, QPoint(-1, 0));
    }
    return {{QStringLiteral("surface.drag_step_200"), step, QStringLiteral("move_200_paint"), stepFloor},
            {QStringLiteral("surface.drag_release_200"), release, QStringLiteral("set_geometry_200_paint"),
             releaseFloor},
            {QStringLiteral("surface.nudge_200"), nudge, QStringLiteral("move_200_paint"), nudgeFloor}};
}

QList<BenchRow> surfaceRows()
{
    QList<BenchRow> rows;
    rows += designOnOff(true);
    rows += designOnOff(false);
    rows.append(selectAll(1000));
    rows.append(selectAll(5000));
    rows.append(dragRows());
    return rows;
}

const BenchRegistrar registrar("surface", surfaceRows, {QStringLiteral("surface.design_on_1000"), QStringLiteral("surface.design_off_1000"), QStringLiteral("surface.design_off_1000_repaint"), QStringLiteral("surface.select_all_1000"), QStringLiteral("surface.select_all_5000"), QStringLiteral("surface.drag_step_200"), QStringLiteral("surface.drag_release_200"), QStringLiteral("surface.nudge_200")});

} // namespace
