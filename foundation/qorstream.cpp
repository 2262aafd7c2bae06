// SPDX-License-Identifier: MIT
// The component stream.
//
// A record holds one root component and the components it owns:
//
//   record   := "QOR1" bodyLength:quint32 body          (bodyLength = bytes of body)
//   body     := object                                   (nothing may follow it)
//   object   := 'O' className:text name:text
//               propertyCount:quint32 property*
//               dynamicCount:quint32 dynamic*
//               childCount:quint32 object*
//               'E'                                      (end of the object)
//   property := name:text kind:quint8 payload
//               kind 'V': a QVariant as QDataStream writes it
//               kind 'K': an enumeration value as its key        (text)
//               kind 'S': a flag value as its keys joined by '|' (text)
//               kind 'R': a component reference as the component's name (text)
//   dynamic  := name:text QVariant
//   text     := length:quint32 UTF-8 bytes
//
// All numbers are big-endian; QVariant values use QDataStream::Qt_6_0. The
// body length lets a reader find a truncated record before it decodes
// anything, and a body that ends before or after its root object is
// damaged. Enumerations travel as key texts so that a stream survives a
// change of the numbers behind the keys.
//
// Properties whose names start with "qor." are the stream's own: what a
// container keeps about a page rather than the page itself (the tab text of
// a tab widget's page, the item text of a tool box page, the widget of a
// scroll area) and a widget that was hidden on purpose ("qor.hidden").
//
// Records are concatenated with nothing between them; a reader stops at the
// end of one record.
//
// This file holds the public functions; the stream itself lives beside it,
// sharing qorstream_p.h: the record bytes and the plain tree they decode into
// (qorstreamrecord.cpp), what the stream knows about a class
// (qorstreamclass.cpp), writing components (qorstreamwrite.cpp), reading
// them (qorstreamread.cpp) and the text form (qorstreamtext.cpp).
#include "foundation/qorstream.h"

#include "foundation/qorerror.h"
#include "foundation/qorstream_p.h"
#include "foundation/qorvaluecheck_p.h"

#include <QCoreApplication>
#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QPointer>
#include <QtEndian>

#include <cstring>

using namespace QorStreamPrivate;

void WriteComponent(QIODevice &Stream, QObject *Component)
{
    if (!Component)
        throw EQorError(QCoreApplication::translate("QorDesign", "No component to write"));
    const QByteArray record = encodeRecord(storeComponent(Component));
    if (Stream.write(record) != record.size())
        throw EQorError(QCoreApplication::translate("QorDesign", "The component stream cannot be written"));
}

QObject *ReadComponent(QIODevice &Stream, QObject *Instance, QWidget *Parent, QObject *Owner)
{
    return readRecord(readRecordBody(Stream), Instance, Parent, Owner);
}

QObject *ReadComponentSkipping(QIODevice &Stream, QStringList &Skipped, QObject *Instance, QWidget *Parent,
                               QObject *Owner)
{
    return readRecord(readRecordBody(Stream), Instance, Parent, Owner, &Skipped);
}

QList<QObject *> ReadComponents(QIODevice &Stream, QWidget *Parent, QObject *Owner)
{
    QList<QPointer<QObject>> roots;
    try {
        while (!Stream.atEnd())
            roots.append(ReadComponent(Stream, nullptr, Parent, Owner));
    } catch (...) {
        for (qsizetype i = roots.size() - 1; i >= 0; --i)
            delete roots.at(i).data();
        throw;
    }
    QList<QObject *> result;
    for (const QPointer<QObject> &r : std::as_const(roots))
        result.append(r.data());
    return result;
}

QByteArray ComponentToBytes(QObject *Component)
{
    if (!Component)
        throw EQorError(QCoreApplication::translate("QorDesign", "No component to write"));
    return encodeRecord(storeComponent(Component));
}

QObject *ComponentFromBytes(const QByteArray &Bytes, QObject *Instance, QWidget *Parent, QObject *Owner)
{
    if (Bytes.size() >= kHeaderSize && std::memcmp(Bytes.constData(), kSignature, 4) == 0) {
        const quint32 length = qFromBigEndian<quint32>(Bytes.constData() + 4);
        if (Bytes.size() > kHeaderSize + qint64(length))
            throw EReadError(QCoreApplication::translate("QorDesign", "Junk after the component"));
    }
    QBuffer buffer;
    buffer.setData(Bytes);
    buffer.open(QIODevice::ReadOnly);
    return ReadComponent(buffer, Instance, Parent, Owner);
}

QString ComponentBinaryToText(const QByteArray &Records)
{
    if (Records.size() > QorLimits::kMaxRecordBytes)
        damaged();
    QBuffer buffer;
    buffer.setData(Records);
    buffer.open(QIODevice::ReadOnly);
    QByteArray out = "[";
    bool first = true;
    while (!buffer.atEnd()) {
        const QByteArray body = readRecordBody(buffer);
        const StoredObject root = decodeRecordBody(body, ValueBytes::Keep);
        out += first ? "\n" : ",\n";
        first = false;
        appendObjectText(out, root, "    ");
    }
    out += first ? "]\n" : "\n]\n";
    return QString::fromUtf8(out);
}

QByteArray ComponentTextToBinary(const QString &Text)
{
    if (Text.size() > QorLimits::kMaxTextBytes / 2)
        badText(QCoreApplication::translate("QorDesign", "it is longer than a component text may be"));
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(Text.toUtf8(), &error);
    if (error.error != QJsonParseError::NoError)
        badText(error.errorString());
    QJsonArray records;
    if (doc.isObject())
        records.append(doc.object());
    else
        records = doc.array();
    QByteArray bytes;
    for (const QJsonValue &record : std::as_const(records))
        bytes += encodeRecord(objectOfText(record, 0));
    return bytes;
}
