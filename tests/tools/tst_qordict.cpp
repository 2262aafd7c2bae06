// SPDX-License-Identifier: MIT
// The dictionary tool: CSV, SQLite and the datapacket XML converted into
// one another without loss, bad input reported by line with no output
// left behind; and the shipped Chinese dictionary, row by row against the
// library's own type information.
#include "foundation/qorclasses.h"
#include "foundation/vhortti.h"
#include "foundation/vhortti_p.h"

#include <QFile>
#include <QMetaEnum>
#include <QProcess>
#include <QSet>
#include <QSizePolicy>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

namespace {

struct Run
{
    int code = -1;
    QString errors;
};

Run qordict(const QStringList &args)
{
    QProcess process;
    process.start(QStringLiteral(QORDICT), args);
    process.waitForFinished(30000);
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardError())};
}

QByteArray read(const QString &file)
{
    QFile f(file);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

bool write(const QString &file, const QByteArray &bytes)
{
    QFile f(file);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size();
}

using Rows = QList<QStringList>;

Rows dbRows(const QString &file, QString *plan = nullptr)
{
    Rows rows;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("check"));
        db.setDatabaseName(file);
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        if (db.open()) {
            QSqlQuery q(db);
            q.exec(QStringLiteral("SELECT TranTypeKind, TypeName, Indent, CnLabel FROM Dictionary ORDER BY rowid"));
            while (q.next())
                rows.append({q.value(0).toString(), q.value(1).toString(), q.value(2).toString(), q.value(3).toString()});
            if (plan) {
                q.exec(QStringLiteral("EXPLAIN QUERY PLAN SELECT CnLabel FROM Dictionary WHERE TranTypeKind = 'enum' "
                                      "AND TypeName = 'qt::focuspolicy' AND Indent = 'NOFOCUS'"));
                while (q.next())
                    *plan += q.value(3).toString();
            }
        }
    }
    QSqlDatabase::removeDatabase(QStringLiteral("check"));
    return rows;
}

// The type of every enumeration, flag element and value field a registered
// class's properties use, by the name the library gives it.
QHash<QString, PTypeInfo> enumerationsInUse()
{
    QHash<QString, PTypeInfo> types;
    QList<PTypeInfo> classes;
    for (const QMetaObject *mo : RegisteredClasses())
        classes.append(TypeInfoOfClass(mo));
    for (int i = 0; i < classes.size(); ++i) {
        for (PPropInfo p : GetPropInfos(classes[i])) {
            PTypeInfo t = p->PropType;
            if (t->Kind == tkClass && !IsComponentPTI(t) && !classes.contains(t))
                classes.append(t);
            if (t->Kind == tkSet)
                t = t->TypeData.CompType;
            if (t && t->Kind == tkEnumeration)
                types.insert(t->Name, t);
        }
    }
    return types;
}

} // namespace

class tst_QorDict : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    QString path(const char *name) const { return m_dir.filePath(QLatin1String(name)); }

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_dir.isValid()); }

    void csvDatabaseAndXmlConvertIntoOneAnotherWithoutLoss()
    {
        const QByteArray csv = "TranTypeKind,TypeName,Indent,CnLabel\n"
                               "enum,Qt::FocusPolicy,NoFocus,无焦点\n"
                               "PROPNAME,QString,text,\"文本, 内容\"\n"
                               "EVENT,,clicked,\"单\"\"击\"\"\"\n"
                               "CLASSVALUE,QLabel,QLabel,\"两行\n标签\"\n";
        QVERIFY(write(path("in.csv"), csv));
        QCOMPARE(qordict({QStringLiteral("csv2db"), path("in.csv"), path("a.sqlite")}).code, 0);
        QString plan;
        const Rows rows = dbRows(path("a.sqlite"), &plan);
        QCOMPARE(rows.size(), 4);
        QCOMPARE(rows[0],
                 QStringList({QStringLiteral("ENUM"), QStringLiteral("Qt::FocusPolicy"), QStringLiteral("NoFocus"),
                              QStringLiteral("无焦点")}));
        QCOMPARE(rows[1][3], QStringLiteral("文本, 内容"));
        QCOMPARE(rows[2],
                 QStringList({QStringLiteral("EVENT"), QStringLiteral(""), QStringLiteral("clicked"),
                              QStringLiteral("单\"击\"")}));
        QCOMPARE(rows[3][3], QStringLiteral("两行\n标签"));
        // The look-up of the translation manager is answered by an index alone,
        // in any case.
        QVERIFY2(plan.contains(QStringLiteral("USING COVERING INDEX DictionaryByIdent")), qPrintable(plan));
        QCOMPARE(qordict({QStringLiteral("db2csv"), path("a.sqlite"), path("back.csv")}).code, 0);
        QCOMPARE(read(path("back.csv")), QByteArray(csv).replace("enum,", "ENUM,"));
        QCOMPARE(qordict({QStringLiteral("db2xml"), path("a.sqlite"), path("a.xml")}).code, 0);
        QVERIFY(read(path("a.xml")).contains("<DATAPACKET Version=\"2.0\">"));
        QCOMPARE(qordict({QStringLiteral("xml2db"), path("a.xml"), path("b.sqlite")}).code, 0);
        QCOMPARE(dbRows(path("b.sqlite")), rows);
        // An existing output is replaced.
        QCOMPARE(qordict({QStringLiteral("xml2db"), path("a.xml"), path("b.sqlite")}).code, 0);
        QCOMPARE(dbRows(path("b.sqlite")).size(), 4);
    }

    void badInputIsReportedByLineAndWritesNothing_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QString>("message");
        const QByteArray head = "TranTypeKind,TypeName,Indent,CnLabel\n";
        QTest::newRow("header") << "csv2db" << QByteArray("Kind,Type,Ident,Label\nENUM,T,a,b\n") << ":1: the header";
        QTest::newRow("fields") << "csv2db" << head + "ENUM,T,a,b\nENUM,T,a\n" << ":3: 3 fields instead of 4";
        QTest::newRow("kind") << "csv2db" << head + "ENUM,T,a,b\nWORD,T,a,b\n" << ":3: unknown TranTypeKind";
        QTest::newRow("indent") << "csv2db" << head + "ENUM,T,,b\n" << ":2: empty Indent";
        QTest::newRow("quote") << "csv2db" << head + "ENUM,T,a,\"b\n" << ":2: a quoted field is not closed";
        QTest::newRow("xml") << "xml2db" << QByteArray("<DATAPACKET><ROWDATA>\n<ROW TranTypeKind=\"ENUM\"\n</ROWDATA>")
                             << ":3: broken XML";
        QTest::newRow("xml kind") << "xml2db"
                                  << QByteArray("<DATAPACKET><ROWDATA>\n<ROW TranTypeKind=\"X\" TypeName=\"\" Indent=\"a\" "
                                                "CnLabel=\"b\"/></ROWDATA></DATAPACKET>")
                                  << ":2: unknown TranTypeKind";
        QTest::newRow("not a dictionary") << "db2csv" << QByteArray("just some text") << ":0: not a dictionary";
    }

    void badInputIsReportedByLineAndWritesNothing()
    {
        QFETCH(QString, command);
        QFETCH(QByteArray, input);
        QFETCH(QString, message);
        const QString in = path("bad.in"), out = path("bad.out");
        QFile::remove(out);
        QVERIFY(write(in, input));
        const Run run = qordict({command, in, out});
        QCOMPARE(run.code, 1);
        QVERIFY2(run.errors.contains(in + message), qPrintable(run.errors));
        QVERIFY(!QFile::exists(out));
        QVERIFY(!QFile::exists(out + QStringLiteral(".part")));
        QCOMPARE(qordict({QStringLiteral("nonsense")}).code, 2);
    }

    void theShippedDictionaryMatchesItsSourceAndTheTypes()
    {
        QCOMPARE(qordict({QStringLiteral("csv2db"), QStringLiteral(QORDESIGN_DICT_CSV), path("zh.sqlite")}).code, 0);
        const Rows rows = dbRows(path("zh.sqlite"));
        QVERIFY2(rows.size() >= 300, qPrintable(QString::number(rows.size())));
        // The build made the same file.
        QCOMPARE(dbRows(QStringLiteral(QORDESIGN_DICT_DB)), rows);

        const QHash<QString, PTypeInfo> enums = enumerationsInUse();
        QSet<QString> keys;
        for (const QStringList &row : rows) {
            const QString &kind = row[0], &type = row[1], &ident = row[2];
            const QString what = row.join(QLatin1Char(','));
            QVERIFY2(!row[3].isEmpty(), qPrintable(what));
            const QString key = (kind + QLatin1Char('|') + type + QLatin1Char('|') + ident).toLower();
            QVERIFY2(!keys.contains(key), qPrintable(what));
            keys.insert(key);
            if (kind == QLatin1String("CLASSVALUE")) {
                QCOMPARE(type, ident);
                const bool known = GetClass(ident)
                    || (QMetaType::fromName(ident.toLatin1()).isValid()
                        && TypeInfoOfMetaType(QMetaType::fromName(ident.toLatin1()))->Kind == tkClass);
                QVERIFY2(known, qPrintable(what));
            } else if (kind == QLatin1String("PROPNAME")) {
                bool found = false;
                for (const QMetaObject *mo : RegisteredClasses()) {
                    PPropInfo p = GetPropInfo(mo, ident);
                    found = found || (p && p->PropType->Name == type);
                }
                QVERIFY2(found, qPrintable(what));
            } else if (kind == QLatin1String("ENUM")) {
                QStringList names;
                if (type == QLatin1String("bool"))
                    names = {QStringLiteral("True"), QStringLiteral("False")};
                else if (type == QLatin1String("QCursor"))
                    names = CursorValueNames();
                else if (enums.contains(type))
                    ListEnumValues(enums.value(type), names);
                QVERIFY2(names.contains(ident), qPrintable(what));
            } else if (kind == QLatin1String("EVENT")) {
                QVERIFY(type.isEmpty());
                bool found = false;
                for (const QMetaObject *mo : RegisteredClasses())
                    found = found || GetPropInfo(mo, ident, {tkMethod});
                QVERIFY2(found, qPrintable(what));
            } else {
                QFAIL(qPrintable(QStringLiteral("unexpected kind: ") + what));
            }
        }
        for (const char *kind : {"CLASSVALUE", "PROPNAME", "ENUM", "EVENT"}) {
            int count = 0;
            for (const QStringList &row : rows)
                count += row[0] == QLatin1String(kind);
            QVERIFY2(count >= 20, kind);
        }
    }
};

QTEST_MAIN(tst_QorDict)
#include "tst_qordict.moc"
