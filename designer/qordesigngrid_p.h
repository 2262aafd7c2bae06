// SPDX-License-Identifier: MIT
// The grid of dots the design stage's painting code can draw, and the
// spacing the design surface snaps to.
#pragma once

#include "qordesign_export.h"

#include <QImage>

class QPainter;

// The grid of the stage proxy: its spacing, whether it shows, a template
// of one cell and the drawing of the dots.
class QORDESIGN_AUTOTEST_EXPORT TQorDesignGrid
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
