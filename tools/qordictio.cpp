// SPDX-License-Identifier: MIT
#include "qordictio_p.h"

#include <QStringList>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <limits>

namespace QorDictIo {
namespace {

const QStringList kinds = {QStringLiteral("ENUM"),      QStringLiteral("SET"),     QStringLiteral("CLASS"),
                           QStringLiteral("CLASSVALUE"), QStringLiteral("PROPNAME"), QStringLiteral("COMPNAME"),
                           QStringLiteral("EVENT")};

// Checks a row read from a source and keeps it when it is sound.
void accept(Row row, Result &result)
{
    const int kind = int(kinds.indexOf(row.kind.trimmed().toUpper()));
    if (kind < 0)
        return result.problems.append({row.line, QStringLiteral("unknown TranTypeKind \"%1\"").arg(row.kind)});
    if (row.indent.isEmpty())
        return result.problems.append({row.line, QStringLiteral("empty Indent")});
    if (row.label.isEmpty())
        return result.problems.append({row.line, QStringLiteral("empty CnLabel")});
    row.kind = kinds[kind];
    result.rows.append(row);
}

bool tooLarge(const QByteArray &Bytes, Result &result)
{
    if (Bytes.size() <= kMaxSourceBytes)
        return false;
    result.problems.append({0, QStringLiteral("larger than %1 bytes").arg(kMaxSourceBytes)});
    return true;
}

QString csvField(const QString &value)
{
    if (!value.contains(QLatin1Char(',')) && !value.contains(QLatin1Char('"')) && !value.contains(QLatin1Char('\n'))
        && !value.contains(QLatin1Char('\r')))
        return value;
    QString quoted = value;
    quoted.replace(QLatin1String("\""), QLatin1String("\"\""));
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

} // namespace

Result readCsv(const QByteArray &Bytes)
{
    Result result;
    if (tooLarge(Bytes, result))
        return result;
    QString text = QString::fromUtf8(Bytes);
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1);
    // Lines are counted in an int; a source of more lines than that is
    // larger than the limit above allows anyway.
    int line = 1, recordLine = 1;
    QStringList fields;
    QString field;
    bool quoted = false, fieldStarted = false, header = true;
    auto endRecord = [&] {
        fields.append(field);
        field.clear();
        fieldStarted = false;
        if (!(fields.size() == 1 && fields.first().isEmpty())) {
            if (header) {
                if (fields
                    != QStringList({QStringLiteral("TranTypeKind"), QStringLiteral("TypeName"),
                                    QStringLiteral("Indent"), QStringLiteral("CnLabel")}))
                    result.problems.append(
                        {recordLine, QStringLiteral("the header must be TranTypeKind,TypeName,Indent,CnLabel")});
                header = false;
            } else if (fields.size() != 4) {
                result.problems.append({recordLine, QStringLiteral("%1 fields instead of 4").arg(fields.size())});
            } else {
                accept({fields[0], fields[1], fields[2], fields[3], recordLine}, result);
            }
        }
        fields.clear();
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (quoted) {
            if (c == QLatin1Char('"')) {
                if (i + 1 < text.size() && text.at(i + 1) == QLatin1Char('"')) {
                    field.append(c);
                    ++i;
                } else {
                    quoted = false;
                }
            } else {
                if (c == QLatin1Char('\n'))
                    ++line;
                field.append(c);
            }
            continue;
        }
        if (c == QLatin1Char('"') && !fieldStarted) {
            quoted = true;
            fieldStarted = true;
        } else if (c == QLatin1Char(',')) {
            fields.append(field);
            field.clear();
            fieldStarted = false;
        } else if (c == QLatin1Char('\n')) {
            endRecord();
            recordLine = ++line;
        } else if (c != QLatin1Char('\r')) {
            field.append(c);
            fieldStarted = true;
        }
    }
    if (quoted)
        result.problems.append({recordLine, QStringLiteral("a quoted field is not closed")});
    else if (!field.isEmpty() || !fields.isEmpty())
        endRecord();
    if (header)
        result.problems.append({1, QStringLiteral("no header")});
    return result;
}

Result readXml(const QByteArray &Bytes)
{
    Result result;
    if (tooLarge(Bytes, result))
        return result;
    QXmlStreamReader xml(Bytes);
    bool packet = false;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("DATAPACKET"))
            packet = true;
        if (xml.name() != QLatin1String("ROW"))
            continue;
        const QXmlStreamAttributes a = xml.attributes();
        accept({a.value(QLatin1String("TranTypeKind")).toString(), a.value(QLatin1String("TypeName")).toString(),
                a.value(QLatin1String("Indent")).toString(), a.value(QLatin1String("CnLabel")).toString(),
                int(std::min<qint64>(xml.lineNumber(), std::numeric_limits<int>::max()))},
               result);
    }
    if (xml.hasError())
        result.problems.append({int(std::min<qint64>(xml.lineNumber(), std::numeric_limits<int>::max())),
                                QStringLiteral("broken XML: %1").arg(xml.errorString())});
    else if (!packet)
        result.problems.append({1, QStringLiteral("not a datapacket")});
    return result;
}

QByteArray csvOf(const QList<Row> &Rows)
{
    QString text = QStringLiteral("TranTypeKind,TypeName,Indent,CnLabel\n");
    for (const Row &r : Rows)
        text += QStringList({csvField(r.kind), csvField(r.typeName), csvField(r.indent), csvField(r.label)}).join(QLatin1Char(','))
            + QLatin1Char('\n');
    return text.toUtf8();
}

QByteArray xmlOf(const QList<Row> &Rows)
{
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("DATAPACKET"));
    xml.writeAttribute(QStringLiteral("Version"), QStringLiteral("2.0"));
    xml.writeStartElement(QStringLiteral("METADATA"));
    xml.writeStartElement(QStringLiteral("FIELDS"));
    for (const char *name : {"TranTypeKind", "TypeName", "Indent", "CnLabel"}) {
        xml.writeEmptyElement(QStringLiteral("FIELD"));
        xml.writeAttribute(QStringLiteral("attrname"), QLatin1String(name));
        xml.writeAttribute(QStringLiteral("fieldtype"), QStringLiteral("string"));
        xml.writeAttribute(QStringLiteral("WIDTH"), QStringLiteral("255"));
    }
    xml.writeEndElement();
    xml.writeEmptyElement(QStringLiteral("PARAMS"));
    xml.writeEndElement();
    xml.writeStartElement(QStringLiteral("ROWDATA"));
    for (const Row &r : Rows) {
        xml.writeEmptyElement(QStringLiteral("ROW"));
        xml.writeAttribute(QStringLiteral("TranTypeKind"), r.kind);
        xml.writeAttribute(QStringLiteral("TypeName"), r.typeName);
        xml.writeAttribute(QStringLiteral("Indent"), r.indent);
        xml.writeAttribute(QStringLiteral("CnLabel"), r.label);
    }
    xml.writeEndDocument();
    return bytes;
}

} // namespace QorDictIo
