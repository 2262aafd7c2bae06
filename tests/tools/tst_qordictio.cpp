// SPDX-License-Identifier: MIT
// The dictionary tool's source readers called directly: the shipped CSV and
// its datapacket read alike, and ten thousand damaged copies of each, made
// from a fixed seed, read into sound rows and problems by line, never
// anything else.
#include "harness/qormutator.h"
#include "qordictio_p.h"

#include <QFile>
#include <QSet>
#include <QTest>

// The campaigns allocate for each of their thousands of reads: shorter
// allocation stacks in AddressSanitizer's records and a smaller quarantine
// (32 MB, still far more than one read allocates) keep the run short on a
// busy machine. The options of the environment still win, and reports
// still name the allocating frames.
extern "C" __attribute__((visibility("default"))) const char *__asan_default_options()
{
    return "malloc_context_size=8:quarantine_size_mb=32";
}

namespace {

constexpr quint32 kSeed = 20261127;
constexpr int kMutations = 10000;

const QSet<QString> kKinds = {QStringLiteral("ENUM"),     QStringLiteral("SET"),      QStringLiteral("CLASS"),
                              QStringLiteral("CLASSVALUE"), QStringLiteral("PROPNAME"), QStringLiteral("COMPNAME"),
                              QStringLiteral("EVENT")};

QByteArray shippedCsv()
{
    QFile f(QStringLiteral(QORDESIGN_DICT_CSV));
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// Every row a reader keeps is sound, and every line it names is in the
// source.
QByteArray unsound(const QorDictIo::Result &result, const QByteArray &source)
{
    // The XML reader takes a lone carriage return for a line break too.
    const qsizetype lines = source.count('\n') + source.count('\r') + 1;
    for (const QorDictIo::Row &row : result.rows) {
        if (!kKinds.contains(row.kind) || row.indent.isEmpty() || row.label.isEmpty())
            return "an unsound row at line " + QByteArray::number(row.line);
        if (row.line < 1 || row.line > lines)
            return "a row at line " + QByteArray::number(row.line) + " of " + QByteArray::number(lines);
    }
    for (const QorDictIo::Problem &problem : result.problems) {
        if (problem.line < 0 || problem.line > lines || problem.reason.isEmpty())
            return "a problem at line " + QByteArray::number(problem.line) + " of " + QByteArray::number(lines);
    }
    return {};
}

} // namespace

class tst_QorDictIo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Edge cases

    void anEmptySourceIsAProblemNotARow()
    {
        QCOMPARE(QorDictIo::readCsv({}).rows.size(), 0);
        QCOMPARE(QorDictIo::readCsv({}).problems.size(), 1);
        QCOMPARE(QorDictIo::readXml({}).rows.size(), 0);
        QCOMPARE(QorDictIo::readXml({}).problems.size(), 1);
    }

    void deepXmlNestingIsReadWithoutRecursion()
    {
        QByteArray xml = "<DATAPACKET>";
        for (int i = 0; i < 30000; ++i)
            xml += "<a>";
        xml += "<ROW TranTypeKind=\"ENUM\" TypeName=\"T\" Indent=\"I\" CnLabel=\"L\"/>";
        for (int i = 0; i < 30000; ++i)
            xml += "</a>";
        xml += "</DATAPACKET>";
        const QorDictIo::Result result = QorDictIo::readXml(xml);
        QCOMPARE(result.rows.size(), 1);
        QCOMPARE(result.rows.first().indent, QStringLiteral("I"));
    }

    void aQuotedFieldRunningToTheEndIsOneProblem()
    {
        const QorDictIo::Result result =
            QorDictIo::readCsv("TranTypeKind,TypeName,Indent,CnLabel\nENUM,T,I,\"open\n" + QByteArray(100000, 'x'));
        QCOMPARE(result.rows.size(), 0);
        QCOMPARE(result.problems.size(), 1);
        QCOMPARE(result.problems.first().line, 2);
    }

    // The readers

    void theShippedCsvItsDatapacketAndItsCsvReadAlike()
    {
        const QByteArray csv = shippedCsv();
        QVERIFY(!csv.isEmpty());
        const QorDictIo::Result fromCsv = QorDictIo::readCsv(csv);
        QCOMPARE(fromCsv.problems.size(), 0);
        QVERIFY(fromCsv.rows.size() > 100);
        const QorDictIo::Result fromXml = QorDictIo::readXml(QorDictIo::xmlOf(fromCsv.rows));
        QCOMPARE(fromXml.problems.size(), 0);
        QCOMPARE(fromXml.rows.size(), fromCsv.rows.size());
        const QorDictIo::Result again = QorDictIo::readCsv(QorDictIo::csvOf(fromXml.rows));
        QCOMPARE(again.rows.size(), fromCsv.rows.size());
        for (qsizetype i = 0; i < fromCsv.rows.size(); ++i) {
            for (const QorDictIo::Result *r : {&fromXml, &again}) {
                QCOMPARE(r->rows.at(i).kind, fromCsv.rows.at(i).kind);
                QCOMPARE(r->rows.at(i).typeName, fromCsv.rows.at(i).typeName);
                QCOMPARE(r->rows.at(i).indent, fromCsv.rows.at(i).indent);
                QCOMPARE(r->rows.at(i).label, fromCsv.rows.at(i).label);
            }
        }
    }

    void damagedCsvIsReadIntoSoundRowsAndProblems()
    {
        // A slice of the shipped source keeps each round quick.
        const QByteArray csv = shippedCsv();
        const QByteArray seed = csv.left(csv.indexOf('\n', 1000) + 1);
        int withRows = 0;
        for (int i = 0; i < kMutations; ++i) {
            const QByteArray source = QorMutator::mutateText(seed, kSeed, i, csv.right(500));
            const QorDictIo::Result result = QorDictIo::readCsv(source);
            const QByteArray why = unsound(result, source);
            if (!why.isEmpty())
                QFAIL(QByteArray(QorMutator::where(kSeed, i, "dictionary CSV") + ": " + why).constData());
            withRows += result.rows.isEmpty() ? 0 : 1;
        }
        qInfo("CSV: %d of %d damaged sources still gave rows", withRows, kMutations);
        QVERIFY(withRows > 0);
    }

    void damagedXmlIsReadIntoSoundRowsAndProblems()
    {
        const QByteArray csv = shippedCsv();
        const QorDictIo::Result rows = QorDictIo::readCsv(csv.left(csv.indexOf('\n', 700) + 1));
        const QByteArray seed = QorDictIo::xmlOf(rows.rows);
        int withRows = 0;
        for (int i = 0; i < kMutations; ++i) {
            const QByteArray source = QorMutator::mutateText(seed, kSeed + 1, i);
            const QorDictIo::Result result = QorDictIo::readXml(source);
            const QByteArray why = unsound(result, source);
            if (!why.isEmpty())
                QFAIL(QByteArray(QorMutator::where(kSeed + 1, i, "dictionary XML") + ": " + why).constData());
            withRows += result.rows.isEmpty() ? 0 : 1;
        }
        qInfo("XML: %d of %d damaged sources still gave rows", withRows, kMutations);
        QVERIFY(withRows > 0);
    }
};

QTEST_MAIN(tst_QorDictIo)
#include "tst_qordictio.moc"
