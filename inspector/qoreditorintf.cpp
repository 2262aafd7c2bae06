// SPDX-License-Identifier: MIT
#include "inspector/qoreditorintf.h"

IDesigner::~IDesigner() = default;
IDesignerSelections::~IDesignerSelections() = default;

TDesignerSelections::TDesignerSelections() = default;
TDesignerSelections::~TDesignerSelections() = default;

int TDesignerSelections::Count() const
{
    return int(m_items.size());
}

QObject *TDesignerSelections::Get(int Index) const
{
    return Index >= 0 && Index < m_items.size() ? m_items.at(Index).data() : nullptr;
}

int TDesignerSelections::Add(QObject *Item)
{
    m_items.append(Item);
    return int(m_items.size()) - 1;
}

bool TDesignerSelections::Equals(const IDesignerSelections &List) const
{
    if (List.Count() != Count())
        return false;
    for (int i = 0; i < Count(); ++i) {
        if (List.Get(i) != Get(i))
            return false;
    }
    return true;
}

int TQorDesignerSelections::Add(QObject *Item)
{
    return TDesignerSelections::Add(Item);
}

bool TQorDesignerSelections::Equals(const IDesignerSelections &List) const
{
    return TDesignerSelections::Equals(List);
}
