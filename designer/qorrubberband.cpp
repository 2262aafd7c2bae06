// SPDX-License-Identifier: MIT
#include "designer/qorrubberband_p.h"

#include "designer/qordesigner_p.h"

#include <QPainter>

#include <algorithm>

TQorRubberBand::TQorRubberBand(QWidget *Parent)
    : QWidget(Parent)
{
    // The band never takes the mouse: the stage keeps receiving the drag.
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
}

void TQorRubberBand::SetPointStart(const QPoint &P)
{
    m_start = P;
    m_end = P;
    UpdateBounds();
}

void TQorRubberBand::SetPointEnd(const QPoint &P)
{
    m_end = QPoint(std::max(P.x(), 1), std::max(P.y(), 1));
    UpdateBounds();
}

QRect TQorRubberBand::Bounds() const
{
    return RectFromEdges(std::min(m_start.x(), m_end.x()), std::min(m_start.y(), m_end.y()),
                         std::max(m_start.x(), m_end.x()), std::max(m_start.y(), m_end.y()));
}

void TQorRubberBand::UpdateBounds()
{
    setGeometry(Bounds());
}

void TQorRubberBand::resizeEvent(QResizeEvent *)
{
    // Only the outline covers the stage: the controls inside stay in view
    // and nothing but one pixel on each edge is repainted as it grows.
    const QRegion all(rect());
    setMask(all.subtracted(QRegion(rect().adjusted(1, 1, -1, -1))));
}

void TQorRubberBand::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::black, 1, Qt::DotLine));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}
