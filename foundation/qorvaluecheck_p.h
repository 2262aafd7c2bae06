// SPDX-License-Identifier: MIT
// Bounded checks of outside data before Qt's own readers see it: values in
// Qt's data stream format (as the component stream stores them) walked
// without allocating, counts held against the bytes that are really there,
// and the limits every reader of the library keeps (nesting, sizes,
// geometry that integer arithmetic can handle).
#pragma once

#include "qordesign_export.h"

#include <QMetaType>
#include <QtGlobal>

#include <limits>

class QRect;

namespace QorLimits {

// Components nested in one another, in a record, its text form or a ".ui"
// text.
constexpr int kMaxComponentDepth = 200;
// Elements nested in a ".ui" text (a widget inside a layout inside an item
// takes three).
constexpr int kMaxUiElementDepth = 3 * kMaxComponentDepth;
// Values nested in one another inside one stored value (lists of lists).
constexpr int kMaxValueDepth = 32;
// Bytes of one component record, of the clipboard's records together, and
// of a text (a component text, a ".ui" text, a dictionary source).
constexpr qint64 kMaxRecordBytes = qint64(256) << 20;
constexpr qint64 kMaxTextBytes = qint64(256) << 20;
// Pixels of one image stored in a value (an icon's pixmap, a texture).
constexpr qint64 kMaxImagePixels = qint64(4096) * 4096;

// True when the rectangle with these corners (as QRect keeps them) has a
// width, height, right and bottom edge (left + width, top + height) that an
// int holds: the design code computes all four.
QORDESIGN_EXPORT bool rectCornersFit(qint64 x1, qint64 y1, qint64 x2, qint64 y2);
inline bool rectFits(qint64 x, qint64 y, qint64 width, qint64 height)
{
    return rectCornersFit(x, y, x + width - 1, y + height - 1);
}
QORDESIGN_EXPORT bool rectFits(const QRect &rect);

// a + b, held at the ends of the int range instead of overflowing.
constexpr int saturatedAdd(int a, int b)
{
    const qint64 sum = qint64(a) + qint64(b);
    if (sum > std::numeric_limits<int>::max())
        return std::numeric_limits<int>::max();
    if (sum < std::numeric_limits<int>::min())
        return std::numeric_limits<int>::min();
    return int(sum);
}

} // namespace QorLimits

namespace QorValueCheck {

// How many bytes the QVariant at Data takes (Qt_6_0, big-endian), when its
// type is one the library reads and every count and size in it fits the
// bytes that follow; -1 otherwise. Reads at most Size bytes and allocates
// nothing in proportion to what the bytes claim.
QORDESIGN_EXPORT qsizetype streamedVariantSize(const char *Data, qsizetype Size);

// True when values of Type are checked by streamedVariantSize, so the
// stream may store them.
QORDESIGN_EXPORT bool isCheckedType(QMetaType Type);

} // namespace QorValueCheck
