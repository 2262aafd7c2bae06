// SPDX-License-Identifier: MIT
#include "designer/qorstage.h"

#include "designer/qordesigner_p.h"
#include "designer/qorsizers_p.h"
#include "foundation/qorcomponents.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

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
