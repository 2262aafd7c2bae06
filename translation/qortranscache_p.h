// SPDX-License-Identifier: MIT
// The translation cache: the dictionary answers asked for most, kept in a
// short list with a use counter each, so that the dictionary is searched
// only on a miss. The list is bounded; when it grows past its maximum the
// least used answers go, and once a fixed number of look-ups has passed
// every look-up wipes the counters again, so that old favourites age.
#pragma once

#include "qordesign_export.h"

#include "translation/qortransutils.h"

#include <QString>

#include <memory>
#include <vector>

// One dictionary answer.
class QORDESIGN_AUTOTEST_EXPORT TQorTransCacheItem
{
public:
    QString CnLabel;
    QString TranTypeKind;
    QString TypeName;
    // The identifier (named after the dictionary's column).
    QString Indent;
    qint32 Frequency = 0;
};

class QORDESIGN_AUTOTEST_EXPORT TQorTransCache
{
public:
    TQorTransCache();
    ~TQorTransCache();
    TQorTransCache(const TQorTransCache &) = delete;
    TQorTransCache &operator=(const TQorTransCache &) = delete;

    int Count() const { return int(m_items.size()); }
    // The item at Index; throws EQorError out of range.
    TQorTransCacheItem *TransItems(int Index) const;
    // Puts Item at Index and hands the one it replaces back to the caller,
    // unfreed.
    std::unique_ptr<TQorTransCacheItem> SetTransItems(int Index, std::unique_ptr<TQorTransCacheItem> Item);

    // A new item with frequency 1; the index it was appended at (taken
    // before an overflow removal, so it may no longer be valid).
    int AddItem(const QString &TranTypeKind, const QString &TypeName, const QString &Indent, const QString &CnLabel);
    int Add(std::unique_ptr<TQorTransCacheItem> Item, qint32 Frequency);
    // The first item whose three texts equal the arguments without regard
    // to case; -1 when none. Every call counts as a look-up.
    int LocateIdent(const QString &TranTypeKind, const QString &TypeName, const QString &Indent, bool IncFrequency);
    int LocateLabel(const QString &TranTypeKind, const QString &TypeName, const QString &CnLabel, bool IncFrequency);
    TQorTransCacheItem *LocateIdent(TTransTypeKind Kind, const QString &TypeName, const QString &Indent,
                                    bool IncFrequency);
    TQorTransCacheItem *LocateLabel(TTransTypeKind Kind, const QString &TypeName, const QString &CnLabel,
                                    bool IncFrequency);
    void IncItemFrequency(int Index);
    void RemoveItem(int Index);
    void EmptyAllFrequencies();
    // Sorts by frequency and, when over the maximum, drops the excess and
    // one more.
    void DelOverflowItems();

    qint32 EnvokedCount() const { return m_envokedCount; }
    // Past MaxEnvokedCount every new count wipes all frequencies.
    void SetEnvokedCount(qint32 Value);
    qint32 MaxLength() const { return m_maxLength; }
    void SetMaxLength(qint32 Value);
    qint32 MaxEnvokedCount() const { return m_maxEnvokedCount; }
    void SetMaxEnvokedCount(qint32 Value) { m_maxEnvokedCount = Value; }

private:
    int locate(const QString &TranTypeKind, const QString &TypeName, const QString &Text, bool ByLabel,
               bool IncFrequency);

    std::vector<std::unique_ptr<TQorTransCacheItem>> m_items;
    qint32 m_envokedCount = 0;
    qint32 m_maxLength = 200;
    qint32 m_maxEnvokedCount = 4000;
};

// The one cache of the process, made on first use.
QORDESIGN_AUTOTEST_EXPORT TQorTransCache *QorTransCache();
