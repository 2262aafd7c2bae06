// SPDX-License-Identifier: MIT
// The walk over a stored value mirrors what Qt's own stream operators read
// for each type (Qt_6_0), so that every count Qt would hand to an allocator
// has been held against the bytes that follow it. Types it does not know
// are refused rather than trusted.
#include "foundation/qorvaluecheck_p.h"

#include <QByteArray>
#include <QList>
#include <QRect>
#include <QtEndian>

#include <cstring>
#include <string>

namespace QorLimits {

bool rectCornersFit(qint64 x1, qint64 y1, qint64 x2, qint64 y2)
{
    constexpr qint64 lo = std::numeric_limits<int>::min();
    constexpr qint64 hi = std::numeric_limits<int>::max();
    const auto fits = [](qint64 v) { return v >= lo && v <= hi; };
    // The corners themselves, the width and height (x2 - x1 + 1, its
    // difference taken first) and the far edges as left + width (x2 + 1).
    return fits(x1) && fits(y1) && fits(x2) && fits(y2) && fits(x2 - x1) && fits(y2 - y1)
        && fits(x2 - x1 + 1) && fits(y2 - y1 + 1) && fits(x2 + 1) && fits(y2 + 1);
}

bool rectFits(const QRect &rect)
{
    return rectCornersFit(rect.left(), rect.top(), rect.right(), rect.bottom());
}

} // namespace QorLimits

namespace QorValueCheck {
namespace {

constexpr quint32 kNullLength = 0xffffffffu;
constexpr int kUserType = 65536; // what QVariant writes for any type it names

// Qt's containers of other types, known by the name Qt registers them
// under ("QMap<QString,QList<int>>").
struct Container
{
    enum Kind { None, Sequence, Associative, Pair } kind = None;
    QList<QMetaType> arguments;
};

Container containerOf(QMetaType type)
{
    static const struct
    {
        const char *prefix;
        Container::Kind kind;
    } shapes[] = {{"QList<", Container::Sequence},      {"QSet<", Container::Sequence},
                  {"QMap<", Container::Associative},    {"QHash<", Container::Associative},
                  {"QMultiMap<", Container::Associative}, {"QMultiHash<", Container::Associative},
                  {"std::pair<", Container::Pair},      {"QPair<", Container::Pair}};
    const QByteArray name(type.name());
    for (const auto &shape : shapes) {
        const qsizetype start = qsizetype(std::strlen(shape.prefix));
        if (!name.startsWith(shape.prefix) || !name.endsWith('>'))
            continue;
        // The arguments, split at the commas outside nested brackets.
        Container c;
        int nesting = 0;
        qsizetype from = start;
        for (qsizetype i = start; i < name.size(); ++i) {
            const char ch = name.at(i);
            if (ch == '<') {
                ++nesting;
            } else if ((ch == '>' && nesting == 0) || (ch == ',' && nesting == 0)) {
                c.arguments.append(QMetaType::fromName(name.mid(from, i - from).trimmed()));
                from = i + 1;
            } else if (ch == '>') {
                --nesting;
            }
        }
        const qsizetype wanted = shape.kind == Container::Sequence ? 1 : 2;
        if (c.arguments.size() != wanted)
            return {};
        for (const QMetaType &argument : std::as_const(c.arguments)) {
            if (!argument.isValid())
                return {};
        }
        c.kind = shape.kind;
        return c;
    }
    return {};
}

class Walker
{
public:
    Walker(const char *data, qsizetype size)
        : m_data(reinterpret_cast<const uchar *>(data))
        , m_left(size)
    {
    }

    qsizetype left() const { return m_left; }

    bool skip(qint64 n)
    {
        if (n < 0 || n > m_left)
            return false;
        m_data += n;
        m_left -= qsizetype(n);
        return true;
    }

    template<typename T>
    bool read(T &value)
    {
        if (qsizetype(sizeof(T)) > m_left)
            return false;
        value = qFromBigEndian<T>(m_data);
        return skip(sizeof(T));
    }

    // A count of elements of at least MinSize bytes each.
    bool count(quint32 &n, qint64 minSize)
    {
        return read(n) && qint64(n) * minSize <= m_left;
    }

    // A length, then that many bytes; the length of a null one stands
    // alone. Texts are UTF-16: an even number of bytes.
    bool sized(QByteArray *out, bool even)
    {
        quint32 n = 0;
        if (!read(n))
            return false;
        if (n == kNullLength)
            return true;
        if ((even && (n & 1)) || qint64(n) > m_left)
            return false;
        if (out)
            *out = QByteArray(reinterpret_cast<const char *>(m_data), qsizetype(n));
        return skip(n);
    }

    bool string(QByteArray *utf16 = nullptr) { return sized(utf16, true); }
    bool bytes(QByteArray *out = nullptr) { return sized(out, false); }

    bool rect()
    {
        qint32 x1 = 0, y1 = 0, x2 = 0, y2 = 0;
        return read(x1) && read(y1) && read(x2) && read(y2) && QorLimits::rectCornersFit(x1, y1, x2, y2);
    }

    bool color()
    {
        qint8 colorSpec = 0;
        // Invalid, Rgb, Hsv, Cmyk, Hsl, ExtendedRgb.
        return read(colorSpec) && colorSpec >= 0 && colorSpec <= 5 && skip(5 * 2);
    }

    // QImage: a null marker, then a PNG file read by Qt's image reader up
    // to its end chunk.
    bool image()
    {
        qint32 marker = 0;
        if (!read(marker))
            return false;
        if (marker == 0)
            return true;
        static const uchar signature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
        if (m_left < 8 || std::memcmp(m_data, signature, 8) != 0)
            return false;
        skip(8);
        bool first = true;
        for (;;) {
            quint32 length = 0;
            quint32 type = 0;
            if (!read(length) || length > 0x7fffffffu || !read(type))
                return false;
            if (first) {
                quint32 width = 0, height = 0;
                if (type != 0x49484452u /* IHDR */ || length != 13 || !read(width) || !read(height))
                    return false;
                if (width == 0 || height == 0 || qint64(width) * qint64(height) > QorLimits::kMaxImagePixels)
                    return false;
                length -= 8;
                first = false;
            }
            if (!skip(qint64(length) + 4))
                return false;
            if (type == 0x49454e44u /* IEND */)
                return true;
        }
    }

    bool pixmap() { return image(); }

    bool transform() { return skip(9 * 8); }

    bool brush()
    {
        quint8 style = 0;
        if (!read(style) || style > Qt::TexturePattern || !color())
            return false;
        if (style == Qt::TexturePattern) {
            if (!image())
                return false;
        } else if (style == Qt::LinearGradientPattern || style == Qt::RadialGradientPattern
                   || style == Qt::ConicalGradientPattern) {
            qint32 type = 0;
            // type, spread, coordinate mode, interpolation mode; the stops
            // (a position and a colour each).
            if (!read(type) || !skip(3 * 4) || !repeated(8 + 11, [this] { return skip(8) && color(); }))
                return false;
            // Linear: start and final stop; radial: centre, focal point,
            // radius and focal radius; anything else reads as conical:
            // centre and angle.
            if (!skip(type == 0 ? 32 : type == 1 ? 48 : 24))
                return false;
        }
        return transform();
    }

    bool font()
    {
        // family, style name; point size, pixel size, style hint, style
        // strategy, weight, bits, stretch, extended bits, letter and word
        // spacing, hinting preference, capitalization; the families.
        return string() && string() && skip(8 + 4 + 1 + 2 + 2 + 1 + 2 + 1 + 4 + 4 + 1 + 1)
            && repeated(4, [this] { return string(); });
    }

    bool icon()
    {
        QByteArray key;
        if (!string(&key))
            return false;
        const auto is = [&key](const char16_t *name) {
            const qsizetype n = qsizetype(std::char_traits<char16_t>::length(name));
            if (key.size() != n * 2)
                return false;
            for (qsizetype i = 0; i < n; ++i) {
                if (qFromBigEndian<quint16>(key.constData() + 2 * i) != name[i])
                    return false;
            }
            return true;
        };
        if (key.isEmpty())
            return true; // a null icon
        if (is(u"QIconLoaderEngine") || is(u"QThemeIconEngine"))
            return string(); // the theme's icon name
        if (!is(u"QPixmapIconEngine"))
            return false; // an engine whose data only its plugin knows
        qint32 entries = 0;
        if (!read(entries) || entries < 0 || qint64(entries) * (4 + 4 + 8 + 4 + 4) > m_left)
            return false;
        for (qint32 i = 0; i < entries; ++i) {
            qint32 marker = 0;
            if (m_left < 4)
                return false;
            marker = qFromBigEndian<qint32>(m_data);
            QByteArray fileName;
            if (!pixmap() || !string(&fileName) || !skip(8 + 4 + 4))
                return false;
            // An entry without a picture would make Qt open the file it
            // names: outside data names no files to open.
            if (marker == 0 && !fileName.isEmpty())
                return false;
        }
        return true;
    }

    bool cursor()
    {
        qint16 shape = 0;
        if (!read(shape))
            return false;
        if (shape >= 0 && shape <= Qt::LastCursor)
            return true;
        if (shape != Qt::BitmapCursor)
            return false;
        qint8 isPixmap = 0;
        if (!read(isPixmap))
            return false;
        if (isPixmap ? !pixmap() : !(pixmap() && pixmap()))
            return false;
        return skip(8); // the hot spot
    }

    bool dateTime()
    {
        qint8 timeSpec = 0;
        if (!skip(8 + 4) || !read(timeSpec))
            return false;
        switch (timeSpec) {
        case Qt::LocalTime:
        case Qt::UTC:
            return true;
        case Qt::OffsetFromUTC:
            return skip(4);
        case Qt::TimeZone: {
            QByteArray id;
            if (!string(&id))
                return false;
            static const QByteArray offsetFromUtc = [] {
                QByteArray a;
                for (char16_t c : u"OffsetFromUtc") {
                    if (c) {
                        a.append(char(c >> 8));
                        a.append(char(c & 0xff));
                    }
                }
                return a;
            }();
            if (id != offsetFromUtc)
                return true;
            // id, offset, name, abbreviation, territory, comment
            return string() && skip(4) && string() && string() && skip(4) && string();
        }
        default:
            return false;
        }
    }

    bool keySequence()
    {
        quint32 keys = 0;
        return read(keys) && keys <= 4 && skip(qint64(keys) * 4);
    }

    // A count, then that many elements, each walked by Element.
    template<typename Element>
    bool repeated(qint64 minSize, Element &&element)
    {
        quint32 n = 0;
        if (!count(n, minSize))
            return false;
        for (quint32 i = 0; i < n; ++i) {
            if (!element())
                return false;
        }
        return true;
    }

    bool list(QMetaType element, int depth, qint64 minSize)
    {
        return repeated(minSize, [&] { return value(element, depth); });
    }

    bool variant(int depth)
    {
        if (depth > QorLimits::kMaxValueDepth)
            return false;
        quint32 typeId = 0;
        qint8 isNull = 0;
        if (!read(typeId) || !read(isNull))
            return false;
        QMetaType type;
        if (typeId == quint32(kUserType)) {
            QByteArray name;
            if (!bytes(&name) || name.isEmpty() || name.size() > 1024)
                return false;
            if (name.endsWith('\0'))
                name.chop(1);
            type = QMetaType::fromName(name);
            if (!type.isValid() || type.id() < kUserType)
                return false;
        } else {
            if (typeId == QMetaType::UnknownType)
                return true; // an invalid variant: nothing follows
            if (typeId >= quint32(kUserType))
                return false;
            type = QMetaType(int(typeId));
        }
        return value(type, depth);
    }

    bool value(QMetaType type, int depth)
    {
        if (depth > QorLimits::kMaxValueDepth)
            return false;
        switch (type.id()) {
        case QMetaType::Nullptr:
            return true;
        case QMetaType::Bool:
        case QMetaType::Char:
        case QMetaType::SChar:
        case QMetaType::UChar:
            return skip(1);
        case QMetaType::Short:
        case QMetaType::UShort:
        case QMetaType::QChar:
        case QMetaType::Char16:
            return skip(2);
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::Char32:
        case QMetaType::QTime:
        case QMetaType::QSizePolicy:
            return skip(4);
        case QMetaType::Long:
        case QMetaType::ULong:
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
        case QMetaType::Double:
        case QMetaType::Float: // written in double precision
        case QMetaType::QDate:
        case QMetaType::QPoint:
        case QMetaType::QSize:
            return skip(8);
        case QMetaType::QUuid:
        case QMetaType::QPointF:
        case QMetaType::QSizeF:
        case QMetaType::QLine:
            return skip(16);
        case QMetaType::QRectF:
        case QMetaType::QLineF:
            return skip(32);
        case QMetaType::QRect:
            return rect();
        case QMetaType::QString:
        case QMetaType::QLocale:
            return string();
        case QMetaType::QByteArray:
        case QMetaType::QUrl:
            return bytes();
        case QMetaType::QBitArray: {
            qint64 bits = 0; // a 64-bit count since Qt 6
            return read(bits) && bits >= 0 && bits <= qint64(m_left) * 8 && skip((bits + 7) / 8);
        }
        case QMetaType::QStringList:
            return list(QMetaType::fromType<QString>(), depth, 4);
        case QMetaType::QByteArrayList:
            return list(QMetaType::fromType<QByteArray>(), depth, 4);
        case QMetaType::QVariantList:
            return repeated(5, [&] { return variant(depth + 1); });
        case QMetaType::QVariantMap:
        case QMetaType::QVariantHash:
            return repeated(4 + 5, [&] { return string() && variant(depth + 1); });
        case QMetaType::QDateTime:
            return dateTime();
        case QMetaType::QColor:
            return color();
        case QMetaType::QFont:
            return font();
        case QMetaType::QPixmap:
        case QMetaType::QBitmap:
        case QMetaType::QImage:
            return image();
        case QMetaType::QBrush:
            return brush();
        case QMetaType::QPalette:
            // Every role of the three colour groups: 21 roles in a stream
            // of this version, whatever a later Qt adds.
            for (int i = 0; i < 3 * 21; ++i) {
                if (!brush())
                    return false;
            }
            return true;
        case QMetaType::QIcon:
            return icon();
        case QMetaType::QCursor:
            return cursor();
        case QMetaType::QKeySequence:
            return keySequence();
        case QMetaType::QTransform:
            return transform();
        case QMetaType::QPolygon:
            return list(QMetaType::fromType<QPoint>(), depth, 8);
        case QMetaType::QPolygonF:
            return list(QMetaType::fromType<QPointF>(), depth, 16);
        default:
            break;
        }
        return userValue(type, depth);
    }

    // Enumerations, flags and Qt's containers of the types above.
    bool userValue(QMetaType type, int depth)
    {
        if (type.id() < kUserType)
            return false;
        if (type.flags().testFlag(QMetaType::IsEnumeration)) {
            const qsizetype size = type.sizeOf();
            return (size == 1 || size == 2 || size == 4 || size == 8) && skip(size);
        }
        if (QByteArray(type.name()).startsWith("QFlags<"))
            return skip(4);
        const Container c = containerOf(type);
        switch (c.kind) {
        case Container::Sequence:
            return list(c.arguments.at(0), depth + 1, 1);
        case Container::Associative:
            return repeated(2, [&] { return value(c.arguments.at(0), depth + 1) && value(c.arguments.at(1), depth + 1); });
        case Container::Pair:
            return value(c.arguments.at(0), depth + 1) && value(c.arguments.at(1), depth + 1);
        case Container::None:
            break;
        }
        return false;
    }

private:
    const uchar *m_data;
    qsizetype m_left;
};

// Types whose values the walk above knows, for the writer: built-in ones by
// number, the rest as userValue() reads them.
bool checkedType(QMetaType type, int depth)
{
    if (!type.isValid() || depth > QorLimits::kMaxValueDepth)
        return false;
    switch (type.id()) {
    case QMetaType::Nullptr: case QMetaType::Bool: case QMetaType::Char: case QMetaType::SChar:
    case QMetaType::UChar: case QMetaType::Short: case QMetaType::UShort: case QMetaType::QChar:
    case QMetaType::Char16: case QMetaType::Int: case QMetaType::UInt: case QMetaType::Char32:
    case QMetaType::QTime: case QMetaType::QSizePolicy: case QMetaType::Long: case QMetaType::ULong:
    case QMetaType::LongLong: case QMetaType::ULongLong: case QMetaType::Double: case QMetaType::Float:
    case QMetaType::QDate: case QMetaType::QPoint: case QMetaType::QSize: case QMetaType::QUuid:
    case QMetaType::QPointF: case QMetaType::QSizeF: case QMetaType::QLine: case QMetaType::QRectF:
    case QMetaType::QLineF: case QMetaType::QRect: case QMetaType::QString: case QMetaType::QLocale:
    case QMetaType::QByteArray: case QMetaType::QUrl: case QMetaType::QBitArray:
    case QMetaType::QStringList: case QMetaType::QByteArrayList: case QMetaType::QVariantList:
    case QMetaType::QVariantMap: case QMetaType::QVariantHash: case QMetaType::QDateTime:
    case QMetaType::QColor: case QMetaType::QFont: case QMetaType::QPixmap: case QMetaType::QBitmap:
    case QMetaType::QImage: case QMetaType::QBrush: case QMetaType::QPalette: case QMetaType::QIcon:
    case QMetaType::QCursor: case QMetaType::QKeySequence: case QMetaType::QTransform:
    case QMetaType::QPolygon: case QMetaType::QPolygonF:
        return true;
    default:
        break;
    }
    if (type.id() < kUserType)
        return false;
    if (type.flags().testFlag(QMetaType::IsEnumeration) || QByteArray(type.name()).startsWith("QFlags<"))
        return true;
    const Container c = containerOf(type);
    if (c.kind == Container::None)
        return false;
    for (const QMetaType &argument : c.arguments) {
        if (!checkedType(argument, depth + 1))
            return false;
    }
    return true;
}

} // namespace

qsizetype streamedVariantSize(const char *Data, qsizetype Size)
{
    if (!Data || Size <= 0)
        return -1;
    Walker walker(Data, Size);
    if (!walker.variant(0))
        return -1;
    return Size - walker.left();
}

bool isCheckedType(QMetaType Type)
{
    return checkedType(Type, 0);
}

} // namespace QorValueCheck
