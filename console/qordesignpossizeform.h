// SPDX-License-Identifier: MIT
// The size dialog: asks how to size the selected controls, one choice and
// an optional size in pixels for each of width and height, for the design
// manager's sizing. The library keeps one for all its users
// (QorDialogPosSize()), so the dialog opens with the choices and sizes of
// its last use.
#pragma once

#include "qordesign_export.h"

#include "designer/qordesigner.h"

#include <QDialog>

#include <memory>

namespace Ui {
class TDialogPosSize;
}
class TQorRadioGroup;

class QORDESIGN_EXPORT TDialogPosSize : public QDialog
{
    Q_OBJECT

public:
    explicit TDialogPosSize(QWidget *Parent = nullptr);
    ~TDialogPosSize() override;

    // Shows the dialog modally; true when it was closed with OK.
    bool Execute();

    // The style whose ordinal is the index of the chosen item, ssNoChange
    // while no item is chosen.
    TQorDesignSizeStyle GetWidthSizeStyle() const;
    TQorDesignSizeStyle GetHeightSizeStyle() const;
    // The size typed beside the last item; -1 when the field is blank or
    // holds no integer.
    int GetWidthSize() const;
    int GetHeightSize() const;

    // The chosen items of the groups "Width:" and "Height:", -1 for none;
    // setting -1 chooses none.
    int WidthIndex() const;
    void SetWidthIndex(int Index);
    int HeightIndex() const;
    void SetHeightIndex(int Index);

protected:
    void changeEvent(QEvent *Event) override;

private:
    std::unique_ptr<Ui::TDialogPosSize> m_ui;
    TQorRadioGroup *m_width = nullptr;
    TQorRadioGroup *m_height = nullptr;
};

// The library's one size dialog, made on first use without a parent and
// kept until the application object goes away.
QORDESIGN_EXPORT TDialogPosSize *QorDialogPosSize();
