// SPDX-License-Identifier: MIT
// The dictionary tool's sources: any bytes as CSV and as datapacket XML.
// Bad rows are reported by line, never a crash; the rows a source gives
// are written again by the tool's own writer and read back the same.
#include "qorfuzz.h"
#include "qorfuzzfixture_p.h"

#include "qordictio_p.h"

namespace {

bool sameRows(const QList<QorDictIo::Row> &A, const QList<QorDictIo::Row> &B)
{
    if (A.size() != B.size())
        return false;
    for (qsizetype i = 0; i < A.size(); ++i) {
        const QorDictIo::Row &a = A.at(i);
        const QorDictIo::Row &b = B.at(i);
        if (a.kind != b.kind || a.typeName != b.typeName || a.indent != b.indent || a.label != b.label)
            return false;
    }
    return true;
}

int readSource(const uint8_t *Data, size_t Size, QorDictIo::Result (*Read)(const QByteArray &),
               QByteArray (*Write)(const QList<QorDictIo::Row> &), const char *Format)
{
    const QByteArray bytes(reinterpret_cast<const char *>(Data), qsizetype(Size));
    const QorDictIo::Result read = Read(bytes);
    for (const QorDictIo::Row &row : read.rows)
        QorFuzzRequire(row.line >= 0, QStringLiteral("a %1 row at line %2").arg(QLatin1String(Format)).arg(row.line));
    const QorDictIo::Result again = Read(Write(read.rows));
    QorFuzzRequire(again.problems.isEmpty(),
                   QStringLiteral("the %1 the tool wrote of %2 rows reads with %3 problems")
                       .arg(QLatin1String(Format))
                       .arg(read.rows.size())
                       .arg(again.problems.size()));
    QorFuzzRequire(sameRows(read.rows, again.rows),
                   QStringLiteral("the %1 the tool wrote of %2 rows reads back as %3 other rows")
                       .arg(QLatin1String(Format))
                       .arg(read.rows.size())
                       .arg(again.rows.size()));
    return 0;
}

} // namespace

int QorFuzzDictCsv(const uint8_t *Data, size_t Size)
{
    return readSource(Data, Size, QorDictIo::readCsv, QorDictIo::csvOf, "CSV");
}

int QorFuzzDictXml(const uint8_t *Data, size_t Size)
{
    return readSource(Data, Size, QorDictIo::readXml, QorDictIo::xmlOf, "XML");
}
