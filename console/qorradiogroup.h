// SPDX-License-Identifier: MIT
// A group box of radio buttons read and set as one choice: the item index
// of the checked button, -1 while none is checked. The arrange dialogs keep
// their choices in such groups; a dialog of an application's own, made in
// Qt Designer, can do the same with its group boxes.
#pragma once

#include "qordesign_export.h"

#include <QButtonGroup>
#include <QStringList>

class QGroupBox;

class QORDESIGN_EXPORT TQorRadioGroup : public QButtonGroup
{
    Q_OBJECT
    // The index of the checked button among the items, -1 for none.
    Q_PROPERTY(int ItemIndex READ ItemIndex WRITE SetItemIndex NOTIFY ItemIndexChanged)

public:
    // The items are the radio buttons that are direct children of Box, in
    // the order they were created (the order of a form file). The group
    // belongs to Box and makes its buttons exclusive.
    explicit TQorRadioGroup(QGroupBox *Box);

    QGroupBox *Box() const;
    int ItemCount() const;
    // The captions of the items, in order.
    QStringList Items() const;

    int ItemIndex() const;
    // Checks the item at Index; -1 (or less) checks none, an index past
    // the last item checks the last.
    void SetItemIndex(int Index);

Q_SIGNALS:
    void ItemIndexChanged(int Index);
};
