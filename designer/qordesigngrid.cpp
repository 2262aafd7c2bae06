// SPDX-License-Identifier: MIT
#include "designer/qordesigngrid_p.h"

#include "designer/qordesigner_p.h"

#include <QPainter>

TQorDesignGrid::TQorDesignGrid()
{
    DrawGridTemplate();
}

void TQorDesignGrid::SetGridSizeX(int Value)
{
    if (Value < 1)
        Value = 4;
    if (Value == m_gridSizeX)
        return;
    m_gridSizeX = Value;
    DrawGridTemplate();
}

void TQorDesignGrid::SetGridSizeY(int Value)
{
    if (Value < 1)
        Value = 4;
    if (Value == m_gridSizeY)
        return;
    m_gridSizeY = Value;
    DrawGridTemplate();
}

void TQorDesignGrid::DrawGridTemplate()
{
    m_template = QImage(m_gridSizeX, m_gridSizeY, QImage::Format_ARGB32_Premultiplied);
    m_template.fill(Qt::transparent);
    // The dot of the cell's top left grid point: the part of it that lies
    // inside the cell.
    m_template.setPixel(0, 0, qRgb(0, 0, 0));
}

int TQorDesignGrid::DrawGrid(QPainter &Painter, const QSize &ClientSize) const
{
    if (m_gridSizeX < 1 || m_gridSizeY < 1)
        return 0;
    const int columns = ClientSize.width() / m_gridSizeX + 1;
    const int rows = ClientSize.height() / m_gridSizeY + 1;
    for (int j = 0; j < rows; ++j) {
        for (int i = 0; i < columns; ++i)
            Painter.fillRect(RectFromEdges(i * m_gridSizeX - 1, j * m_gridSizeY - 1, i * m_gridSizeX + 1,
                                           j * m_gridSizeY + 1),
                             Qt::black);
    }
    return columns * rows;
}
