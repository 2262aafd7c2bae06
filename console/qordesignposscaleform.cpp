// SPDX-License-Identifier: MIT
#include "console/qordesignposscaleform.h"
#include "console/qordesignposform_p.h"

#include "ui_qordesignposscaleform.h"

#include <QShowEvent>

TDialogPosScale::TDialogPosScale(QWidget *Parent)
    : QDialog(Parent)
    , m_ui(std::make_unique<Ui::TDialogPosScale>())
{
    m_ui->setupUi(this);
    QorSetUpArrangeDialog(this);
}

TDialogPosScale::~TDialogPosScale() = default;

bool TDialogPosScale::Execute()
{
    return exec() == QDialog::Accepted;
}

int TDialogPosScale::GetScaleFactor() const
{
    bool isNumber = false;
    const int factor = m_ui->EditScaleFactor->text().trimmed().toInt(&isNumber);
    return isNumber ? factor : 100;
}

TQorDesignScaleStyle TDialogPosScale::GetScaleStyle() const
{
    return m_ui->RBtnAll->isChecked() ? QorDesigner::ssAll : QorDesigner::ssSelected;
}

void TDialogPosScale::FormShow()
{
    m_ui->EditScaleFactor->setText(QStringLiteral("100"));
    // Typing replaces the factor instead of adding to it.
    m_ui->EditScaleFactor->selectAll();
}

void TDialogPosScale::showEvent(QShowEvent *Event)
{
    QDialog::showEvent(Event);
    // A window coming back from the task bar is not a new showing.
    if (!Event->spontaneous())
        FormShow();
}

void TDialogPosScale::changeEvent(QEvent *Event)
{
    // The factor typed is not a caption: new captions keep it.
    if (Event->type() == QEvent::LanguageChange)
        m_ui->retranslateUi(this);
    QDialog::changeEvent(Event);
}

TDialogPosScale *QorDialogPosScale()
{
    return QorSharedArrangeDialog<TDialogPosScale>();
}
