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
#include "qordictio_p.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>
#include <QTextStream>

#include <cstdio>

namespace {

using Row = QorDictIo::Row;

int errors = 0;

void report(const QString &file, int line, const QString &reason)
{
    ++errors;
    std::fprintf(stderr, "%s:%d: %s\n", qPrintable(file), line, qPrintable(reason));
}

// A source file through one of the readers, its problems reported by line.
QList<Row> readSource(const QString &file, QorDictIo::Result (*read)(const QByteArray &))
{
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly)) {
        report(file, 0, QStringLiteral("cannot read: %1").arg(in.errorString()));
        return {};
    }
    if (in.size() > QorDictIo::kMaxSourceBytes) {
        report(file, 0, QStringLiteral("larger than %1 bytes").arg(QorDictIo::kMaxSourceBytes));
        return {};
    }
    const QorDictIo::Result result = read(in.readAll());
    for (const QorDictIo::Problem &problem : result.problems)
        report(file, problem.line, problem.reason);
    return result.rows;
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
    const QList<Row> rows = command == QLatin1String("csv2db")   ? readSource(in, QorDictIo::readCsv)
                            : command == QLatin1String("xml2db") ? readSource(in, QorDictIo::readXml)
                                                                 : readDb(in);
    if (errors)
        return 1;
    bool ok = false;
    if (command.endsWith(QLatin1String("2db")))
        ok = writeDb(out, rows);
    else if (command == QLatin1String("db2csv"))
        ok = writeText(out, QorDictIo::csvOf(rows));
    else
        ok = writeText(out, QorDictIo::xmlOf(rows));
    if (!ok || errors)
        return 1;
    std::printf("%s: %lld rows\n", qPrintable(out), qlonglong(rows.size()));
    return 0;
}
