// SPDX-License-Identifier: MIT
// The small pieces of the design stage: the rubber band the stage proxy
// shows while the user drags a selection rectangle, the grid of dots the
// stage's painting code can draw, and a ready-made container that serves
// as a simple stage with sizers of its own.
#pragma once

#include "qordesign_export.h"

#include <QImage>
#include <QPoint>
#include <QWidget>

#include <memory>

class QPainter;
class TQorSizerList;

// A dotted rectangle between the point where the drag started and where the
// mouse is; it never takes the mouse, and covers nothing but its outline.
class QORDESIGN_EXPORT TQorRubberBand : public QWidget
{
    Q_OBJECT
    Q_CLASSINFO("QorDesignObject", "true")

public:
    explicit TQorRubberBand(QWidget *Parent = nullptr);

    QPoint PointStart() const { return m_start; }
    QPoint PointEnd() const { return m_end; }
    // Start and end both become P.
    void SetPointStart(const QPoint &P);
    // Each coordinate is raised to at least 1: a drag past the stage's left
    // or top edge stops the band there.
    void SetPointEnd(const QPoint &P);
    void UpdateBounds();
    // The rectangle between the two points (right and bottom edges are the
    // larger coordinates themselves).
    QRect Bounds() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QPoint m_end{-1, -1};
    QPoint m_start{-1, -1};
};

// The grid of the stage proxy: its spacing, whether it shows, a template
// of one cell and the drawing of the dots.
class QORDESIGN_EXPORT TQorDesignGrid
{
public:
    TQorDesignGrid();

    bool DisplayGrid() const { return m_displayGrid; }
    // Only stored: the stage's painting code draws the grid when it is set.
    void SetDisplayGrid(bool Value) { m_displayGrid = Value; }
    int GridSizeX() const { return m_gridSizeX; }
    int GridSizeY() const { return m_gridSizeY; }
    // A spacing below 1 becomes 4; a change rebuilds the template.
    void SetGridSizeX(int Value);
    void SetGridSizeY(int Value);

    // One grid cell with its dot at the top left corner.
    const QImage &GridTemplate() const { return m_template; }
    void DrawGridTemplate();
    // Draws a 2 by 2 dot centred on every grid point of a client area of
    // the given size, the edges included; answers the number of dots.
    int DrawGrid(QPainter &Painter, const QSize &ClientSize) const;

private:
    QImage m_template;
    bool m_displayGrid = false;
    int m_gridSizeX = 4;
    int m_gridSizeY = 4;
};

// A container that accepts child widgets and keeps sizers of its own: a
// press on it puts a sizer on the control of its parent's components that
// lies under the mouse. It needs no design manager.
class QORDESIGN_EXPORT TQorDesignStage : public QWidget
{
    Q_OBJECT

public:
    explicit TQorDesignStage(QWidget *Parent = nullptr);
    ~TQorDesignStage() override;

    TQorSizerList *SizerList() const { return m_sizerList.get(); }
    // The first of the components of the stage's parent, in their order,
    // that is a widget other than the stage and holds P (in the stage's
    // coordinates; the edges of each widget count as inside). Without one:
    // the parent when ReturnParent, else null.
    QWidget *PointedControl(const QPoint &P, bool ReturnParent) const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    std::unique_ptr<TQorSizerList> m_sizerList;
};
