// SPDX-License-Identifier: MIT
// The benchmark program's frame: rows register themselves by group, each
// row is timed beside its floor (a plain way of doing comparable work,
// measured in the same run), and the table and bench/results.tsv come out
// of the rows' results.
#pragma once

#include <QList>
#include <QtGlobal>
#include <QString>
#include <QStringList>

#include <functional>

struct BenchRow
{
    QString name;      // "stream.write_1000"
    double ms = 0;     // ours, best round
    QString floorName; // what the floor does
    double floorMs = 0; // the floor, best round
    // ms is -1 (and so is the ratio) when the row's effect never showed.
};

using BenchGroup = std::function<QList<BenchRow>()>;

// Registers a group of rows; done from a static object of each bench file.
// A group that names the rows it makes is not run at all when --only wants
// none of them.
struct BenchRegistrar
{
    BenchRegistrar(const char *group, BenchGroup run, const QStringList &rows = {});
};

// Whether --only wants the row of this name (every row without --only): a
// group with costly rows skips those nobody asked for.
bool benchWanted(const QString &row);

// Times fn `rounds` times and returns the best round in milliseconds.
double benchBest(int rounds, const std::function<void()> &fn);

// Times ours and the floor a round each in turn, so that a slow phase of
// the machine falls on both; each round may prepare its input untimed.
// Returns the best round of each, in milliseconds.
struct BenchPair
{
    double ms = 0;
    double floorMs = 0;
};
BenchPair benchInTurn(int rounds, const std::function<void()> &prepare,
                      const std::function<void()> &ours, const std::function<void()> &floor);

// Delivers what is waiting, the paint requests included, twice: the second
// pass flushes what the first one painted.
void benchSettle();

// Drops Qt's messages while it lives: Qt's form writer reports every
// enumeration property it cannot write, once per widget and round, and the
// table would drown in those lines.
class BenchQuietMessages
{
public:
    BenchQuietMessages();
    ~BenchQuietMessages();
    BenchQuietMessages(const BenchQuietMessages &) = delete;
    BenchQuietMessages &operator=(const BenchQuietMessages &) = delete;

private:
    QtMessageHandler m_previous;
};
