// SPDX-License-Identifier: MIT
// The rubber band the stage proxy shows while the user drags a selection
// rectangle over the design stage.
#pragma once

#include "qordesign_export.h"

#include <QPoint>
#include <QWidget>

// A dotted rectangle between the point where the drag started and where the
// mouse is; it never takes the mouse, and covers nothing but its outline.
class QORDESIGN_AUTOTEST_EXPORT TQorRubberBand : public QWidget
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
