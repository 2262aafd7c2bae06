// SPDX-License-Identifier: MIT
// qorbench [OUT.tsv] [--only=TEXT,...]: runs the benchmark rows, prints the
// table and writes the rows as tab-separated values (bench/results.tsv by
// default): name, ms, floor_name, floor_ms, ratio.
#include "qorbench.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTextStream>

#include <cstdio>
#include <map>

namespace {

struct Group
{
    BenchGroup run;
    QStringList rows; // what it makes; empty when it does not say
};

std::map<QString, Group> &groups()
{
    static std::map<QString, Group> g;
    return g;
}

QStringList &onlyFilter()
{
    static QStringList only;
    return only;
}

bool groupWanted(const Group &group)
{
    return group.rows.isEmpty() || std::any_of(group.rows.begin(), group.rows.end(), benchWanted);
}

double elapsedMs(const QElapsedTimer &t)
{
    return double(t.nsecsElapsed()) / 1e6;
}

} // namespace

BenchRegistrar::BenchRegistrar(const char *group, BenchGroup run, const QStringList &rows)
{
    groups()[QString::fromLatin1(group)] = {std::move(run), rows};
}

bool benchWanted(const QString &row)
{
    const QStringList &only = onlyFilter();
    return only.isEmpty() || std::any_of(only.begin(), only.end(), [&](const QString &o) { return row.contains(o); });
}

double benchBest(int rounds, const std::function<void()> &fn)
{
    double best = 1e300;
    for (int i = 0; i < rounds; ++i) {
        QElapsedTimer t;
        t.start();
        fn();
        best = std::min(best, elapsedMs(t));
    }
    return best;
}

BenchQuietMessages::BenchQuietMessages()
    : m_previous(qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {}))
{
}

BenchQuietMessages::~BenchQuietMessages()
{
    qInstallMessageHandler(m_previous);
}

void benchSettle()
{
    for (int i = 0; i < 2; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

BenchPair benchInTurn(int rounds, const std::function<void()> &prepare,
                      const std::function<void()> &ours, const std::function<void()> &floor)
{
    BenchPair best{1e300, 1e300};
    for (int i = 0; i < rounds; ++i) {
        if (prepare)
            prepare();
        QElapsedTimer t;
        t.start();
        ours();
        best.ms = std::min(best.ms, elapsedMs(t));
        if (prepare)
            prepare();
        t.restart();
        floor();
        best.floorMs = std::min(best.floorMs, elapsedMs(t));
    }
    return best;
}

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QString out = QStringLiteral("bench/results.tsv");
    for (const QString &arg : app.arguments().mid(1)) {
        if (arg.startsWith(QLatin1String("--only=")))
            onlyFilter() = arg.mid(7).split(QLatin1Char(','), Qt::SkipEmptyParts);
        else
            out = arg;
    }

    QList<BenchRow> rows;
    for (const auto &[name, group] : groups()) {
        if (!groupWanted(group))
            continue;
        for (const BenchRow &row : group.run()) {
            if (benchWanted(row.name))
                rows.append(row);
        }
    }

    QFile file(out);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text)) {
        std::fprintf(stderr, "qorbench: cannot write %s\n", qPrintable(out));
        return 1;
    }
    QTextStream tsv(&file);
    tsv << "name\tms\tfloor_name\tfloor_ms\tratio\n";
    std::printf("%-28s %12s  %-36s %12s %9s\n", "row", "ms", "floor", "floor ms", "ratio");
    for (const BenchRow &row : rows) {
        const double ratio = row.ms < 0 ? -1 : row.floorMs > 0 ? row.ms / row.floorMs : 0;
        tsv << row.name << '\t' << QString::number(row.ms, 'f', 4) << '\t' << row.floorName << '\t'
            << QString::number(row.floorMs, 'f', 4) << '\t' << QString::number(ratio, 'f', 4) << '\n';
        std::printf("%-28s %12.4f  %-36s %12.4f %9.4f\n", qPrintable(row.name), row.ms,
                    qPrintable(row.floorName), row.floorMs, ratio);
    }
    return 0;
}
