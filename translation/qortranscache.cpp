// SPDX-License-Identifier: MIT
#include "translation/qortranscache_p.h"

#include "foundation/qorerror.h"

#include <algorithm>

QString TransTypeKindStrs(TTransTypeKind Kind)
{
    static const char *const texts[] = {"ENUM", "SET", "CLASS", "CLASSVALUE", "PROPNAME", "COMPNAME", "EVENT"};
    const int index = int(Kind);
    return index >= 0 && index < int(std::size(texts)) ? QString::fromLatin1(texts[index]) : QString();
}

TQorTransCache::TQorTransCache() = default;

// The cache frees what it still holds when it goes: nothing else owns its
// answers.
TQorTransCache::~TQorTransCache() = default;

TQorTransCacheItem *TQorTransCache::TransItems(int Index) const
{
    if (Index < 0 || Index >= Count())
        throw EQorError(QStringLiteral("List index out of bounds (%1)").arg(Index));
    return m_items[size_t(Index)].get();
}

std::unique_ptr<TQorTransCacheItem> TQorTransCache::SetTransItems(int Index, std::unique_ptr<TQorTransCacheItem> Item)
{
    if (Index < 0 || Index >= Count())
        throw EQorError(QStringLiteral("List index out of bounds (%1)").arg(Index));
    std::swap(m_items[size_t(Index)], Item);
    return Item;
}

int TQorTransCache::AddItem(const QString &TranTypeKind, const QString &TypeName, const QString &Indent,
                            const QString &CnLabel)
{
    auto item = std::make_unique<TQorTransCacheItem>();
    item->TranTypeKind = TranTypeKind;
    item->TypeName = TypeName;
    item->Indent = Indent;
    item->CnLabel = CnLabel;
    return Add(std::move(item), 1);
}

int TQorTransCache::Add(std::unique_ptr<TQorTransCacheItem> Item, qint32 Frequency)
{
    SetEnvokedCount(m_envokedCount + 1);
    Item->Frequency = Frequency;
    m_items.push_back(std::move(Item));
    const int index = Count() - 1;
    if (Count() > m_maxLength)
        DelOverflowItems();
    return index;
}

int TQorTransCache::locate(const QString &TranTypeKind, const QString &TypeName, const QString &Text, bool ByLabel,
                           bool IncFrequency)
{
    SetEnvokedCount(m_envokedCount + 1);
    for (size_t i = 0; i < m_items.size(); ++i) {
        const TQorTransCacheItem &item = *m_items[i];
        // The text first: it tells entries apart soonest.
        // Texts equal without regard to case have the same length: most
        // entries are passed over on that alone.
        const QString &text = ByLabel ? item.CnLabel : item.Indent;
        if (text.size() != Text.size() || item.TypeName.size() != TypeName.size()
            || item.TranTypeKind.size() != TranTypeKind.size())
            continue;
        if (text.compare(Text, Qt::CaseInsensitive) != 0 || item.TypeName.compare(TypeName, Qt::CaseInsensitive) != 0
            || item.TranTypeKind.compare(TranTypeKind, Qt::CaseInsensitive) != 0)
            continue;
        if (IncFrequency)
            ++m_items[i]->Frequency;
        return int(i);
    }
    return -1;
}

int TQorTransCache::LocateIdent(const QString &TranTypeKind, const QString &TypeName, const QString &Indent,
                                bool IncFrequency)
{
    return locate(TranTypeKind, TypeName, Indent, false, IncFrequency);
}

int TQorTransCache::LocateLabel(const QString &TranTypeKind, const QString &TypeName, const QString &CnLabel,
                                bool IncFrequency)
{
    return locate(TranTypeKind, TypeName, CnLabel, true, IncFrequency);
}

TQorTransCacheItem *TQorTransCache::LocateIdent(TTransTypeKind Kind, const QString &TypeName, const QString &Indent,
                                                bool IncFrequency)
{
    const int index = LocateIdent(TransTypeKindStrs(Kind), TypeName, Indent, IncFrequency);
    return index >= 0 && index < Count() ? m_items[size_t(index)].get() : nullptr;
}

TQorTransCacheItem *TQorTransCache::LocateLabel(TTransTypeKind Kind, const QString &TypeName, const QString &CnLabel,
                                                bool IncFrequency)
{
    const int index = LocateLabel(TransTypeKindStrs(Kind), TypeName, CnLabel, IncFrequency);
    return index >= 0 && index < Count() ? m_items[size_t(index)].get() : nullptr;
}

void TQorTransCache::IncItemFrequency(int Index)
{
    ++TransItems(Index)->Frequency;
}

void TQorTransCache::RemoveItem(int Index)
{
    TransItems(Index);
    m_items.erase(m_items.begin() + Index);
}

void TQorTransCache::EmptyAllFrequencies()
{
    for (const auto &item : m_items)
        item->Frequency = 0;
}

void TQorTransCache::DelOverflowItems()
{
    // The list is nearly in order from the last overflow: the entries added
    // since and those asked for again are set in place one by one, unless
    // too many have moved.
    const auto byFrequency = [](const auto &a, const auto &b) { return a->Frequency < b->Frequency; };
    size_t moves = 0;
    const size_t budget = 4 * m_items.size();
    for (size_t i = 1; i < m_items.size() && moves <= budget; ++i) {
        for (size_t j = i; j > 0 && byFrequency(m_items[j], m_items[j - 1]) && moves <= budget; --j, ++moves)
            std::swap(m_items[j], m_items[j - 1]);
    }
    if (moves > budget)
        std::sort(m_items.begin(), m_items.end(), byFrequency);
    if (m_maxLength < Count()) {
        // One more than the excess: the next addition does not overflow at
        // once again.
        const int remove = std::min(Count(), Count() - m_maxLength + 1);
        m_items.erase(m_items.begin(), m_items.begin() + remove);
    }
}

void TQorTransCache::SetEnvokedCount(qint32 Value)
{
    m_envokedCount = Value;
    if (m_envokedCount > m_maxEnvokedCount)
        EmptyAllFrequencies();
}

void TQorTransCache::SetMaxLength(qint32 Value)
{
    m_maxLength = Value;
    DelOverflowItems();
}

TQorTransCache *QorTransCache()
{
    static TQorTransCache cache;
    return &cache;
}
