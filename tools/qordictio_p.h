// SPDX-License-Identifier: MIT
// The dictionary tool's readers and writers of its sources: CSV and the
// client dataset's datapacket XML, read into dictionary rows with every bad
// row reported by line, and written from rows. Kept apart from the tool so
// tests can call them on bytes.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace QorDictIo {

// Sources larger than this are refused whole, before they are read.
constexpr qint64 kMaxSourceBytes = qint64(256) << 20;

struct Row
{
    QString kind, typeName, indent, label;
    int line = 0;
};

struct Problem
{
    int line = 0;
    QString reason;
};

struct Result
{
    QList<Row> rows;        // the sound rows, in file order
    QList<Problem> problems; // the bad ones, and what is wrong with the file
};

// RFC 4180 fields in UTF-8 (a byte order mark is skipped); the header must
// be "TranTypeKind,TypeName,Indent,CnLabel"; a record may span lines
// inside quotes.
Result readCsv(const QByteArray &Bytes);
// The datapacket's ROW elements, their attributes by the column names.
Result readXml(const QByteArray &Bytes);

// The sources of rows, as the readers above read them back.
QByteArray csvOf(const QList<Row> &Rows);
QByteArray xmlOf(const QList<Row> &Rows);

} // namespace QorDictIo
