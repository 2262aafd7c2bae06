// SPDX-License-Identifier: MIT
#include "console/qordesignposalignform.h"
#include "console/qorradiogroup.h"
#include "console/qordesignposform_p.h"

#include "ui_qordesignposalignform.h"


namespace {

TQorDesignAlignmentStyle alignmentOf(int Index)
{
    if (Index < QorDesigner::asNoChange || Index > QorDesigner::asCenterInWindow)
        return QorDesigner::asNoChange;
    return TQorDesignAlignmentStyle(Index);
}

} // namespace

TDialogPosAlign::TDialogPosAlign(QWidget *Parent)
    : QDialog(Parent)
    , m_ui(std::make_unique<Ui::TDialogPosAlign>())
{
    m_ui->setupUi(this);
    m_horizontal = new TQorRadioGroup(m_ui->RadioGroupHorizontal);
    m_vertical = new TQorRadioGroup(m_ui->RadioGroupVertical);
    QorSetUpArrangeDialog(this);
}

TDialogPosAlign::~TDialogPosAlign() = default;

bool TDialogPosAlign::Execute()
{
    return exec() == QDialog::Accepted;
}

TQorDesignAlignmentStyle TDialogPosAlign::GetHorizontalAlignment() const
{
    return alignmentOf(HorizontalIndex());
}

TQorDesignAlignmentStyle TDialogPosAlign::GetVerticalAlignment() const
{
    return alignmentOf(VerticalIndex());
}

int TDialogPosAlign::HorizontalIndex() const
{
    return m_horizontal->ItemIndex();
}

void TDialogPosAlign::SetHorizontalIndex(int Index)
{
    m_horizontal->SetItemIndex(Index);
}

int TDialogPosAlign::VerticalIndex() const
{
    return m_vertical->ItemIndex();
}

void TDialogPosAlign::SetVerticalIndex(int Index)
{
    m_vertical->SetItemIndex(Index);
}

void TDialogPosAlign::changeEvent(QEvent *Event)
{
    // The choices are the buttons' check states, which new captions keep.
    if (Event->type() == QEvent::LanguageChange)
        m_ui->retranslateUi(this);
    QDialog::changeEvent(Event);
}

TDialogPosAlign *QorDialogPosAlign()
{
    return QorSharedArrangeDialog<TDialogPosAlign>();
}
