// SPDX-License-Identifier: MIT
// A ready-made container that serves as a simple design stage with sizers
// of its own, for an application that wants no design manager.
#pragma once

#include "qordesign_export.h"

#include <QPoint>
#include <QWidget>

#include <memory>

class TQorSizerList;

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
