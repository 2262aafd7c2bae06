// SPDX-License-Identifier: MIT
// The scale dialog: asks by how many percent to scale the controls, for
// the design manager's scaling. It always scales all of them: the choice
// between all and the selected ones is part of the form but never shown.
// The library keeps one for all its users (QorDialogPosScale()); the
// factor starts at 100 at every showing.
#pragma once

#include "qordesign_export.h"

#include "designer/qordesigner.h"

#include <QDialog>

#include <memory>

namespace Ui {
class TDialogPosScale;
}

class QORDESIGN_EXPORT TDialogPosScale : public QDialog
{
    Q_OBJECT

public:
    explicit TDialogPosScale(QWidget *Parent = nullptr);
    ~TDialogPosScale() override;

    // Shows the dialog modally; true when it was closed with OK.
    bool Execute();

    // The factor typed, in percent; 100 when the text is no integer.
    int GetScaleFactor() const;
    // ssAll while "all" is chosen (as it stays, hidden), else ssSelected.
    TQorDesignScaleStyle GetScaleStyle() const;

    // Runs at every showing: the factor goes back to 100.
    void FormShow();

protected:
    void showEvent(QShowEvent *Event) override;
    void changeEvent(QEvent *Event) override;

private:
    std::unique_ptr<Ui::TDialogPosScale> m_ui;
};

// The library's one scale dialog, made on first use without a parent and
// kept until the application object goes away.
QORDESIGN_EXPORT TDialogPosScale *QorDialogPosScale();
