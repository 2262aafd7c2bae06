// SPDX-License-Identifier: MIT
#include "designer/qorstage.h"

#include "designer/qordesigner.h"
#include "designer/qorsizers.h"
#include "foundation/qorcomponents.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

// ---- TQorRubberBand ----------------------------------------------------

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

// ---- TQorDesignGrid ----------------------------------------------------

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

// ---- TQorDesignStage ---------------------------------------------------

TQorDesignStage::TQorDesignStage(QWidget *Parent)
    : QWidget(Parent)
    , m_sizerList(std::make_unique<TQorSizerList>())
{
    setProperty("qorAcceptsControls", true);
}

TQorDesignStage::~TQorDesignStage()
{
    // The sizers are children of the stage or of its parent: they go
    // before the widgets they frame.
    m_sizerList.reset();
}

QWidget *TQorDesignStage::PointedControl(const QPoint &P, bool ReturnParent) const
{
    QWidget *parent = parentWidget();
    if (!parent)
        return nullptr;
    const QPoint global = mapToGlobal(P);
    for (QObject *component : ComponentList(parent)) {
        if (component == this || !component->isWidgetType())
            continue;
        auto *control = static_cast<QWidget *>(component);
        if (PointInRect(control->mapFromGlobal(global), control->rect()))
            return control;
    }
    return ReturnParent ? parent : nullptr;
}

void TQorDesignStage::paintEvent(QPaintEvent *event)
{
    QWidget::paintEvent(event);
    // The sizers are drawn over the stage in the same pass: they lie above
    // it, and a widget's paint always brings what covers it along. Asking
    // them to repaint from here would only paint the stage again.
}

void TQorDesignStage::mousePressEvent(QMouseEvent *event)
{
    QWidget::mousePressEvent(event);
    event->accept();
    if (QWidget *control = PointedControl(event->position().toPoint(), false))
        m_sizerList->AddControl(control, this, true);
}
