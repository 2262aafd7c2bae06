// SPDX-License-Identifier: MIT
// qordict: converts the translation dictionary between its sources and the
// SQLite file the translation manager reads.
//
//   qordict csv2db IN.csv OUT.sqlite     qordict db2csv IN.sqlite OUT.csv
//   qordict xml2db IN.xml OUT.sqlite     qordict db2xml IN.sqlite OUT.xml
//
// CSV is UTF-8 with the header "TranTypeKind,TypeName,Indent,CnLabel" and
// quoted fields where needed; XML is the client dataset's datapacket.
// Every bad row is reported as FILE:LINE: reason; any error leaves no
// output file and ends with exit code 1.
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>
#include <QTextStream>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <cstdio>

namespace {

struct Row
{
    QString kind, typeName, indent, label;
    int line = 0;
};

const QStringList kinds = {QStringLiteral("ENUM"),      QStringLiteral("SET"),     QStringLiteral("CLASS"),
                           QStringLiteral("CLASSVALUE"), QStringLiteral("PROPNAME"), QStringLiteral("COMPNAME"),
                           QStringLiteral("EVENT")};

int errors = 0;

void report(const QString &file, int line, const QString &reason)
{
    ++errors;
    std::fprintf(stderr, "%s:%d: %s\n", qPrintable(file), line, qPrintable(reason));
}

// Checks a row read from a file and keeps it when it is sound.
void accept(const QString &file, Row row, QList<Row> &rows)
{
    const int kind = int(kinds.indexOf(row.kind.trimmed().toUpper()));
    if (kind < 0)
        return report(file, row.line, QStringLiteral("unknown TranTypeKind \"%1\"").arg(row.kind));
    if (row.indent.isEmpty())
        return report(file, row.line, QStringLiteral("empty Indent"));
    if (row.label.isEmpty())
        return report(file, row.line, QStringLiteral("empty CnLabel"));
    row.kind = kinds[kind];
    rows.append(row);
}

// RFC 4180 fields; a record may span lines inside quotes.
QList<Row> readCsv(const QString &file)
{
    QList<Row> rows;
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly)) {
        report(file, 0, QStringLiteral("cannot read: %1").arg(in.errorString()));
        return rows;
    }
    QString text = QString::fromUtf8(in.readAll());
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1);
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
                if (fields != QStringList({"TranTypeKind", "TypeName", "Indent", "CnLabel"}))
                    report(file, recordLine, QStringLiteral("the header must be TranTypeKind,TypeName,Indent,CnLabel"));
                header = false;
            } else if (fields.size() != 4) {
                report(file, recordLine, QStringLiteral("%1 fields instead of 4").arg(fields.size()));
            } else {
                accept(file, {fields[0], fields[1], fields[2], fields[3], recordLine}, rows);
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
        report(file, recordLine, QStringLiteral("a quoted field is not closed"));
    else if (!field.isEmpty() || !fields.isEmpty())
        endRecord();
    if (header)
        report(file, 1, QStringLiteral("no header"));
    return rows;
}

QList<Row> readXml(const QString &file)
{
    QList<Row> rows;
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly)) {
        report(file, 0, QStringLiteral("cannot read: %1").arg(in.errorString()));
        return rows;
    }
    QXmlStreamReader xml(&in);
    bool packet = false;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("DATAPACKET"))
            packet = true;
        if (xml.name() != QLatin1String("ROW"))
            continue;
        const QXmlStreamAttributes a = xml.attributes();
        accept(file,
               {a.value(QLatin1String("TranTypeKind")).toString(), a.value(QLatin1String("TypeName")).toString(),
                a.value(QLatin1String("Indent")).toString(), a.value(QLatin1String("CnLabel")).toString(),
                int(xml.lineNumber())},
               rows);
    }
    if (xml.hasError())
        report(file, int(xml.lineNumber()), QStringLiteral("broken XML: %1").arg(xml.errorString()));
    else if (!packet)
        report(file, 1, QStringLiteral("not a datapacket"));
    return rows;
}

QList<Row> readDb(const QString &file)
{
    QList<Row> rows;
    if (!QFileInfo(file).isFile()) {
        report(file, 0, QStringLiteral("no such file"));
        return rows;
    }
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("in"));
        db.setDatabaseName(file);
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        QSqlQuery q(db);
        if (!db.open() || !q.exec(QStringLiteral("SELECT TranTypeKind, TypeName, Indent, CnLabel FROM Dictionary ORDER BY rowid"))) {
            report(file, 0, QStringLiteral("not a dictionary: %1").arg(q.lastError().text()));
        } else {
            int n = 0;
            while (q.next())
                rows.append({q.value(0).toString(), q.value(1).toString(), q.value(2).toString(), q.value(3).toString(), ++n});
        }
    }
    QSqlDatabase::removeDatabase(QStringLiteral("in"));
    return rows;
}

bool writeDb(const QString &file, const QList<Row> &rows)
{
    const QString temp = file + QStringLiteral(".part");
    QFile::remove(temp);
    bool ok = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("out"));
        db.setDatabaseName(temp);
        QSqlQuery q(db);
        ok = db.open()
            && q.exec(QStringLiteral("CREATE TABLE Dictionary (TranTypeKind TEXT COLLATE NOCASE NOT NULL, TypeName TEXT "
                                     "COLLATE NOCASE NOT NULL DEFAULT '', Indent TEXT COLLATE NOCASE NOT NULL, CnLabel "
                                     "TEXT COLLATE NOCASE NOT NULL)"))
            && q.exec(QStringLiteral("CREATE INDEX DictionaryByIdent ON Dictionary (TranTypeKind, TypeName, Indent, CnLabel)"))
            && q.exec(QStringLiteral("CREATE INDEX DictionaryByLabel ON Dictionary (TranTypeKind, TypeName, CnLabel, Indent)"))
            && q.exec(QStringLiteral("CREATE INDEX DictionaryByEvent ON Dictionary (TranTypeKind, Indent, CnLabel)"))
            && db.transaction() && q.prepare(QStringLiteral("INSERT INTO Dictionary VALUES (?, IFNULL(?, ''), ?, ?)"));
        for (const Row &row : rows) {
            if (!ok)
                break;
            q.addBindValue(row.kind);
            q.addBindValue(row.typeName);
            q.addBindValue(row.indent);
            q.addBindValue(row.label);
            ok = q.exec();
        }
        ok = ok && db.commit();
        if (!ok)
            report(file, 0, QStringLiteral("cannot write: %1").arg(q.lastError().text()));
        db.close();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("out"));
    if (ok) {
        QFile::remove(file);
        ok = QFile::rename(temp, file);
    }
    QFile::remove(temp);
    return ok;
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

bool writeText(const QString &file, const QByteArray &bytes)
{
    QFile out(file + QStringLiteral(".part"));
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate) || out.write(bytes) != bytes.size()) {
        report(file, 0, QStringLiteral("cannot write"));
        return false;
    }
    out.close();
    QFile::remove(file);
    return QFile::rename(out.fileName(), file);
}

QByteArray csvOf(const QList<Row> &rows)
{
    QString text = QStringLiteral("TranTypeKind,TypeName,Indent,CnLabel\n");
    for (const Row &r : rows)
        text += QStringList({csvField(r.kind), csvField(r.typeName), csvField(r.indent), csvField(r.label)}).join(QLatin1Char(','))
            + QLatin1Char('\n');
    return text.toUtf8();
}

QByteArray xmlOf(const QList<Row> &rows)
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
    for (const Row &r : rows) {
        xml.writeEmptyElement(QStringLiteral("ROW"));
        xml.writeAttribute(QStringLiteral("TranTypeKind"), r.kind);
        xml.writeAttribute(QStringLiteral("TypeName"), r.typeName);
        xml.writeAttribute(QStringLiteral("Indent"), r.indent);
        xml.writeAttribute(QStringLiteral("CnLabel"), r.label);
    }
    xml.writeEndDocument();
    return bytes;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    const QStringList commands = {QStringLiteral("csv2db"), QStringLiteral("db2csv"), QStringLiteral("xml2db"),
                                  QStringLiteral("db2xml")};
    if (args.size() != 3 || !commands.contains(args[0])) {
        std::fprintf(stderr, "usage: qordict csv2db|db2csv|xml2db|db2xml IN OUT\n");
        return 2;
    }
    const QString &command = args[0], &in = args[1], &out = args[2];
    const QList<Row> rows = command == QLatin1String("csv2db")   ? readCsv(in)
                            : command == QLatin1String("xml2db") ? readXml(in)
                                                                 : readDb(in);
    if (errors)
        return 1;
    bool ok = false;
    if (command.endsWith(QLatin1String("2db")))
        ok = writeDb(out, rows);
    else if (command == QLatin1String("db2csv"))
        ok = writeText(out, csvOf(rows));
    else
        ok = writeText(out, xmlOf(rows));
    if (!ok || errors)
        return 1;
    std::printf("%s: %lld rows\n", qPrintable(out), qlonglong(rows.size()));
    return 0;
}
