// SPDX-License-Identifier: MIT
#include "console/qorradiogroup.h"

#include <QGroupBox>
#include <QRadioButton>

TQorRadioGroup::TQorRadioGroup(QGroupBox *Box)
    : QButtonGroup(Box)
{
    int index = 0;
    for (QRadioButton *button : Box->findChildren<QRadioButton *>(Qt::FindDirectChildrenOnly))
        addButton(button, index++);
    connect(this, &QButtonGroup::idToggled, this, [this](int Id, bool Checked) {
        if (Checked)
            Q_EMIT ItemIndexChanged(Id);
    });
}

QGroupBox *TQorRadioGroup::Box() const
{
    return static_cast<QGroupBox *>(parent());
}

int TQorRadioGroup::ItemCount() const
{
    return int(buttons().size());
}

QStringList TQorRadioGroup::Items() const
{
    QStringList items;
    for (int i = 0; i < ItemCount(); ++i)
        items.append(button(i)->text());
    return items;
}

int TQorRadioGroup::ItemIndex() const
{
    return checkedId();
}

void TQorRadioGroup::SetItemIndex(int Index)
{
    Index = qMin(Index, ItemCount() - 1);
    if (Index >= 0) {
        button(Index)->setChecked(true);
        return;
    }
    QAbstractButton *checked = checkedButton();
    if (!checked)
        return;
    // An exclusive group never lets its checked button go by itself.
    setExclusive(false);
    checked->setChecked(false);
    setExclusive(true);
    Q_EMIT ItemIndexChanged(-1);
}
