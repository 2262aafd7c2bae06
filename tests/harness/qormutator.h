// SPDX-License-Identifier: MIT
// Deterministic damage for the tests of the readers of outside data: each
// mutation is made from a seed and an index alone, so a failure replays
// from the two numbers its message prints.
#pragma once

#include <QByteArray>
#include <QList>
#include <QRandomGenerator>
#include <QString>
#include <QtEndian>

#include <algorithm>
#include <limits>

namespace QorMutator {

// The integers at the ends of the ranges that readers have to survive in
// sizes, counts and coordinates.
inline const QList<quint32> &extremes()
{
    static const QList<quint32> values = {0x80000000u, 0x7fffffffu, 0xffffffffu, 0x7ffffffeu, 0x80000001u,
                                          0u,          1u,          0xfffffffeu, 0x40000000u, 0x0000ffffu};
    return values;
}

// One damaged copy of Seed: truncated, with bits flipped, with a stretch
// of itself or of Other spliced in, or with an extreme 32-bit integer
// written over four bytes (at one of Hot, where the caller knows sizes,
// counts or coordinates stand, or anywhere).
inline QByteArray mutate(const QByteArray &Seed, quint32 SeedNumber, int Index, const QByteArray &Other = {},
                         const QList<qsizetype> &Hot = {})
{
    QRandomGenerator rng(SeedNumber ^ (quint32(Index) * 2654435761u));
    QByteArray b = Seed;
    if (b.isEmpty())
        return b;
    const auto at = [&rng](qsizetype size) { return size > 0 ? qsizetype(rng.bounded(quint32(size))) : 0; };
    const int rounds = 1 + int(rng.bounded(3u));
    for (int r = 0; r < rounds && !b.isEmpty(); ++r) {
        switch (rng.bounded(5u)) {
        case 0: // truncation
            b.truncate(at(b.size()));
            break;
        case 1: { // bit flips
            const int flips = 1 + int(rng.bounded(8u));
            for (int i = 0; i < flips && !b.isEmpty(); ++i) {
                const qsizetype p = at(b.size());
                b[p] = char(uchar(b[p]) ^ uchar(1u << rng.bounded(8u)));
            }
            break;
        }
        case 2: { // a stretch of this or the other input, inserted or written over
            const QByteArray &from = Other.isEmpty() || rng.bounded(2u) ? Seed : Other;
            const qsizetype start = at(from.size());
            const QByteArray piece = from.mid(start, 1 + at(std::min<qsizetype>(64, from.size() - start)));
            const qsizetype p = at(b.size());
            if (rng.bounded(2u))
                b.insert(p, piece);
            else
                b.replace(p, std::min(piece.size(), b.size() - p), piece);
            break;
        }
        default: { // an extreme integer
            if (b.size() < 4)
                break;
            qsizetype p = !Hot.isEmpty() && rng.bounded(3u) ? Hot.at(at(Hot.size())) : at(b.size() - 3);
            p = std::clamp<qsizetype>(p, 0, b.size() - 4);
            qToBigEndian<quint32>(extremes().at(at(extremes().size())), b.data() + p);
            break;
        }
        }
    }
    return b;
}

// A damaged copy of a text: as mutate() does to its bytes, or with one of
// its numbers replaced by an integer at the end of a range.
inline QByteArray mutateText(const QByteArray &Seed, quint32 SeedNumber, int Index, const QByteArray &Other = {})
{
    QRandomGenerator rng(~SeedNumber ^ (quint32(Index) * 40503u));
    if (rng.bounded(3u) != 0)
        return mutate(Seed, SeedNumber, Index, Other);
    static const QList<QByteArray> numbers = {"2147483647", "-2147483648", "-1", "4294967295",
                                              "2147483648", "-2147483649", "0", "99999999999999999999"};
    QByteArray b = Seed;
    QList<qsizetype> starts;
    for (qsizetype i = 0; i < b.size(); ++i) {
        if (b.at(i) >= '0' && b.at(i) <= '9' && (i == 0 || b.at(i - 1) < '0' || b.at(i - 1) > '9'))
            starts.append(i);
    }
    const int replacements = 1 + int(rng.bounded(3u));
    for (int r = 0; r < replacements && !starts.isEmpty(); ++r) {
        const qsizetype p = starts.at(qsizetype(rng.bounded(quint32(starts.size()))));
        qsizetype end = p;
        while (end < b.size() && b.at(end) >= '0' && b.at(end) <= '9')
            ++end;
        const qsizetype from = p > 0 && b.at(p - 1) == '-' ? p - 1 : p;
        b.replace(from, end - from, numbers.at(qsizetype(rng.bounded(quint32(numbers.size())))));
        starts.clear();
        for (qsizetype i = 0; i < b.size(); ++i) {
            if (b.at(i) >= '0' && b.at(i) <= '9' && (i == 0 || b.at(i - 1) < '0' || b.at(i - 1) > '9'))
                starts.append(i);
        }
    }
    return b;
}

// The message a failed check prints, to replay the case.
inline QByteArray where(quint32 SeedNumber, int Index, const char *Reader)
{
    return QStringLiteral("%1: seed %2 index %3").arg(QLatin1String(Reader)).arg(SeedNumber).arg(Index).toUtf8();
}

} // namespace QorMutator
