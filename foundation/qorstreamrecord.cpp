// SPDX-License-Identifier: MIT
// The component stream's record bytes: the plain tree of one record encoded
// into a header and a body, and decoded from them with every count and value
// checked against the bytes that are really there.
#include "foundation/qorstream_p.h"

#include "foundation/qorerror.h"
#include "foundation/qorvaluecheck_p.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QIODevice>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace QorStreamPrivate {
namespace {

constexpr QDataStream::Version kVersion = QDataStream::Qt_6_0;
constexpr quint8 kObjectTag = 'O';
constexpr quint8 kEndTag = 'E';

[[noreturn]] void notAStream()
{
    throw EReadError(QCoreApplication::translate("QorDesign", "Not a component stream"));
}

[[noreturn]] void truncated()
{
    throw EReadError(QCoreApplication::translate("QorDesign", "The component stream ends inside a component"));
}

QDataStream &setUp(QDataStream &s)
{
    s.setVersion(kVersion);
    s.setByteOrder(QDataStream::BigEndian);
    return s;
}

void writeText(QDataStream &s, const QByteArray &utf8)
{
    s << quint32(utf8.size());
    s.writeRawData(utf8.constData(), int(utf8.size()));
}

void writeText(QDataStream &s, const QString &text)
{
    writeText(s, text.toUtf8());
}

void encodeProperty(QDataStream &s, const StoredProperty &p)
{
    writeText(s, p.name);
    s << p.kind;
    switch (p.kind) {
    case kEnumKey:
    case kFlagKeys:
        writeText(s, p.keys);
        break;
    case kReference:
        writeText(s, p.reference);
        break;
    default:
        if (!p.raw.isEmpty())
            s.writeRawData(p.raw.constData(), int(p.raw.size()));
        else
            s << p.value;
        break;
    }
}

void encodeObject(QDataStream &s, const StoredObject &o)
{
    s << kObjectTag;
    writeText(s, o.className);
    writeText(s, o.name);
    s << quint32(o.properties.size());
    for (const StoredProperty &p : o.properties)
        encodeProperty(s, p);
    s << quint32(o.dynamicProperties.size());
    for (const StoredProperty &p : o.dynamicProperties) {
        writeText(s, p.name);
        if (!p.raw.isEmpty())
            s.writeRawData(p.raw.constData(), int(p.raw.size()));
        else
            s << p.value;
    }
    s << quint32(o.children.size());
    for (const StoredObject &child : o.children)
        encodeObject(s, child);
    s << kEndTag;
}

class Decoder
{
public:
    Decoder(const QByteArray &body, bool keepRaw)
        : m_body(body)
        , m_stream(body)
        , m_keepRaw(keepRaw)
    {
        setUp(m_stream);
    }

    StoredObject decodeRoot()
    {
        StoredObject root;
        decodeObject(root, 0);
        if (!m_stream.atEnd())
            damaged();
        return root;
    }

private:
    qint64 pos() const { return m_stream.device()->pos(); }
    qint64 remaining() const { return m_body.size() - pos(); }

    void check() const
    {
        if (m_stream.status() != QDataStream::Ok)
            damaged();
    }

    quint8 readByte()
    {
        quint8 b = 0;
        m_stream >> b;
        check();
        return b;
    }

    quint32 readCount()
    {
        quint32 n = 0;
        m_stream >> n;
        check();
        return n;
    }

    QByteArray readBytes()
    {
        const quint32 n = readCount();
        if (qint64(n) > remaining())
            damaged();
        QByteArray bytes(qsizetype(n), Qt::Uninitialized);
        if (m_stream.readRawData(bytes.data(), int(n)) != int(n))
            damaged();
        return bytes;
    }

    QString readString() { return QString::fromUtf8(readBytes()); }

    // The value's bytes are walked first: Qt's reader trusts the counts it
    // finds, and must read exactly what the walk accepted.
    void readVariant(StoredProperty &p)
    {
        const qint64 start = pos();
        const qsizetype size = QorValueCheck::streamedVariantSize(m_body.constData() + start, m_body.size() - start);
        if (size < 0)
            damaged();
        m_stream >> p.value;
        check();
        if (pos() - start != size)
            damaged();
        if (m_keepRaw)
            p.raw = m_body.mid(start, pos() - start);
    }

    void decodeObject(StoredObject &o, int depth)
    {
        if (depth > kMaxDepth || readByte() != kObjectTag)
            damaged();
        o.className = readString();
        o.name = readString();
        if (o.className.isEmpty())
            damaged();
        for (quint32 i = 0, n = readCount(); i < n; ++i) {
            StoredProperty p;
            p.name = readBytes();
            p.kind = readByte();
            switch (p.kind) {
            case kValue:
                readVariant(p);
                break;
            case kEnumKey:
            case kFlagKeys:
                p.keys = readBytes();
                break;
            case kReference:
                p.reference = readString();
                break;
            default:
                damaged();
            }
            if (p.name.isEmpty())
                damaged();
            o.properties.append(std::move(p));
        }
        for (quint32 i = 0, n = readCount(); i < n; ++i) {
            StoredProperty p;
            p.name = readBytes();
            readVariant(p);
            if (p.name.isEmpty())
                damaged();
            o.dynamicProperties.append(std::move(p));
        }
        for (quint32 i = 0, n = readCount(); i < n; ++i) {
            o.children.emplace_back();
            decodeObject(o.children.back(), depth + 1);
        }
        if (readByte() != kEndTag)
            damaged();
    }

    const QByteArray &m_body;
    QDataStream m_stream;
    bool m_keepRaw;
};

} // namespace


[[noreturn]] void damaged()
{
    throw EReadError(QCoreApplication::translate("QorDesign", "The component stream is damaged"));
}

QByteArray variantBytes(const QVariant &value)
{
    QByteArray bytes;
    QDataStream s(&bytes, QIODevice::WriteOnly);
    setUp(s) << value;
    return bytes;
}

// A QVariant from exactly these bytes; nothing when they hold anything else
// or a value Qt's reader must not be handed.
std::optional<QVariant> variantFromBytes(const QByteArray &bytes)
{
    if (QorValueCheck::streamedVariantSize(bytes.constData(), bytes.size()) != bytes.size())
        return std::nullopt;
    QDataStream s(bytes);
    QVariant value;
    setUp(s) >> value;
    if (s.status() != QDataStream::Ok || !s.atEnd())
        return std::nullopt;
    return value;
}

QByteArray encodeRecord(const StoredObject &root)
{
    QByteArray record;
    record.reserve(4096);
    {
        QDataStream s(&record, QIODevice::WriteOnly);
        setUp(s);
        s.writeRawData(kSignature, 4);
        s << quint32(0); // the body length, filled in below
        encodeObject(s, root);
    }
    qToBigEndian<quint32>(quint32(record.size() - kHeaderSize), record.data() + 4);
    return record;
}

StoredObject decodeRecordBody(const QByteArray &body, ValueBytes valueBytes)
{
    return Decoder(body, valueBytes == ValueBytes::Keep).decodeRoot();
}

QByteArray readRecordBody(QIODevice &device)
{
    char header[kHeaderSize];
    const qint64 got = device.read(header, kHeaderSize);
    if (got < 0)
        truncated();
    if (std::memcmp(header, kSignature, size_t(std::min<qint64>(got, 4))) != 0)
        notAStream();
    if (got < kHeaderSize)
        truncated();
    const quint32 length = qFromBigEndian<quint32>(header + 4);
    if (qint64(length) > QorLimits::kMaxRecordBytes)
        damaged();
    if (!device.isSequential() && device.size() - device.pos() < qint64(length))
        truncated();
    QByteArray body;
    if (!device.isSequential()) {
        body.resize(qsizetype(length));
        if (device.read(body.data(), length) != qint64(length))
            truncated();
        return body;
    }
    // A sequential device does not tell its size: read in chunks, so that a
    // damaged length does not allocate what the data never fills.
    while (body.size() < qsizetype(length)) {
        const QByteArray chunk = device.read(std::min<qint64>(length - body.size(), 1 << 16));
        if (chunk.isEmpty())
            truncated();
        body.append(chunk);
    }
    return body;
}

} // namespace QorStreamPrivate
