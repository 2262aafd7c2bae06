// SPDX-License-Identifier: MIT
#include "console/qordesignpossizeform.h"
#include "console/qorradiogroup.h"
#include "console/qordesignposform_p.h"

#include "ui_qordesignpossizeform.h"

#include <QRegularExpressionValidator>

namespace {

TQorDesignSizeStyle sizeStyleOf(int Index)
{
    if (Index < QorDesigner::ssNoChange || Index > QorDesigner::ssCustom)
        return QorDesigner::ssNoChange;
    return TQorDesignSizeStyle(Index);
}

int sizeIn(const QLineEdit *Edit)
{
    const QString text = Edit->text().trimmed();
    bool isNumber = false;
    const int size = text.toInt(&isNumber);
    return isNumber ? size : -1;
}

} // namespace

TDialogPosSize::TDialogPosSize(QWidget *Parent)
    : QDialog(Parent)
    , m_ui(std::make_unique<Ui::TDialogPosSize>())
{
    m_ui->setupUi(this);
    m_width = new TQorRadioGroup(m_ui->RadioGroupWidth);
    m_height = new TQorRadioGroup(m_ui->RadioGroupHeight);
    // The sizes are whole pixels: the fields take digits only, so a letter
    // typed never gets in. A text set by code still may, and reads as -1.
    auto *digits = new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), this);
    m_ui->EditWidth->setValidator(digits);
    m_ui->EditHeight->setValidator(digits);
    QorSetUpArrangeDialog(this);
}

TDialogPosSize::~TDialogPosSize() = default;

bool TDialogPosSize::Execute()
{
    return exec() == QDialog::Accepted;
}

TQorDesignSizeStyle TDialogPosSize::GetWidthSizeStyle() const
{
    return sizeStyleOf(WidthIndex());
}

TQorDesignSizeStyle TDialogPosSize::GetHeightSizeStyle() const
{
    return sizeStyleOf(HeightIndex());
}

int TDialogPosSize::GetWidthSize() const
{
    return sizeIn(m_ui->EditWidth);
}

int TDialogPosSize::GetHeightSize() const
{
    return sizeIn(m_ui->EditHeight);
}

int TDialogPosSize::WidthIndex() const
{
    return m_width->ItemIndex();
}

void TDialogPosSize::SetWidthIndex(int Index)
{
    m_width->SetItemIndex(Index);
}

int TDialogPosSize::HeightIndex() const
{
    return m_height->ItemIndex();
}

void TDialogPosSize::SetHeightIndex(int Index)
{
    m_height->SetItemIndex(Index);
}

void TDialogPosSize::changeEvent(QEvent *Event)
{
    // The choices and the sizes typed are not captions: new captions keep
    // them.
    if (Event->type() == QEvent::LanguageChange)
        m_ui->retranslateUi(this);
    QDialog::changeEvent(Event);
}

TDialogPosSize *QorDialogPosSize()
{
    return QorSharedArrangeDialog<TDialogPosSize>();
}
