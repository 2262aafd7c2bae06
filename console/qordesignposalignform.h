// SPDX-License-Identifier: MIT
// The alignment dialog: asks how to line the selected controls up, one
// choice for each axis, and hands the choices to the design manager's
// alignment as alignment styles. The library keeps one for all its users
// (QorDialogPosAlign()), so the dialog opens with the choices of its last
// use.
#pragma once

#include "qordesign_export.h"

#include "designer/qordesigner.h"

#include <QDialog>

#include <memory>

namespace Ui {
class TDialogPosAlign;
}
class TQorRadioGroup;

class QORDESIGN_EXPORT TDialogPosAlign : public QDialog
{
    Q_OBJECT

public:
    explicit TDialogPosAlign(QWidget *Parent = nullptr);
    ~TDialogPosAlign() override;

    // Shows the dialog modally; true when it was closed with OK.
    bool Execute();

    // The style whose ordinal is the index of the chosen item, asNoChange
    // while no item is chosen.
    TQorDesignAlignmentStyle GetHorizontalAlignment() const;
    TQorDesignAlignmentStyle GetVerticalAlignment() const;

    // The chosen items of the groups "Horizontal" and "Vertical", -1 for
    // none; setting -1 chooses none.
    int HorizontalIndex() const;
    void SetHorizontalIndex(int Index);
    int VerticalIndex() const;
    void SetVerticalIndex(int Index);

protected:
    void changeEvent(QEvent *Event) override;

private:
    std::unique_ptr<Ui::TDialogPosAlign> m_ui;
    TQorRadioGroup *m_horizontal = nullptr;
    TQorRadioGroup *m_vertical = nullptr;
};

// The library's one alignment dialog, made on first use without a parent
// and kept until the application object goes away.
QORDESIGN_EXPORT TDialogPosAlign *QorDialogPosAlign();
