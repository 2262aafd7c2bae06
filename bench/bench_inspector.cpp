// SPDX-License-Identifier: MIT
// Bench rows of the object inspector: showing one button, 100 buttons and
// 100 mixed widgets, and the values refreshed after a change with 100
// buttons shown, each until painted, beside a bare two-column table widget
// showing (or rewriting) the same name and value lines.
#include "qorbench.h"

#include "foundation/qorcomponents.h"
#include "inspector/qorinspector.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QWindow>

#include <functional>
#include <memory>

namespace {

constexpr int kRounds = 7;
const QSize kGridSize(320, 600);
const QPoint kGridPlace(600, 0);

// A form of `count` widgets; mixed cycles through five widget classes.
std::unique_ptr<QWidget> formOf(int count, bool mixed)
{
    auto form = std::make_unique<QWidget>();
    form->setObjectName(QStringLiteral("Form1"));
    form->resize(560, 560);
    const std::function<QWidget *(QWidget *)> makers[] = {
        [](QWidget *parent) -> QWidget * { return new QPushButton(QStringLiteral("Push"), parent); },
        [](QWidget *parent) -> QWidget * { return new QLabel(QStringLiteral("Label"), parent); },
        [](QWidget *parent) -> QWidget * { return new QLineEdit(QStringLiteral("Text"), parent); },
        [](QWidget *parent) -> QWidget * { return new QCheckBox(QStringLiteral("Check"), parent); },
        [](QWidget *parent) -> QWidget * {
            auto *combo = new QComboBox(parent);
            combo->addItems({QStringLiteral("One"), QStringLiteral("Two")});
            return combo;
        },
    };
    for (int i = 0; i < count; ++i) {
        QWidget *widget = makers[mixed ? i % 5 : 0](form.get());
        widget->setObjectName(QStringLiteral("Widget%1").arg(i + 1));
        widget->setGeometry(10 + (i % 10) * 54, 10 + (i / 10) * 54, 50, 24);
        InsertComponent(form.get(), widget);
    }
    return form;
}

QList<QObject *> componentsOf(QWidget *form)
{
    return ComponentList(form);
}

// Shows a window and waits until the window system has exposed it, so
// that no first expose lands in a timed round.
void showExposed(QWidget *window)
{
    window->resize(kGridSize);
    window->move(kGridPlace);
    window->show();
    QElapsedTimer waited;
    waited.start();
    while (!(window->windowHandle() && window->windowHandle()->isExposed()) && waited.elapsed() < 2000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    benchSettle();
}

std::unique_ptr<TQorObjInspector> shownInspector()
{
    auto inspector = std::make_unique<TQorObjInspector>();
    showExposed(inspector.get());
    return inspector;
}

// The floor's grid: what the inspector's grid is without its rows.
std::unique_ptr<QTableWidget> shownTable()
{
    auto table = std::make_unique<QTableWidget>(0, 2);
    table->horizontalHeader()->hide();
    table->verticalHeader()->hide();
    table->horizontalHeader()->setStretchLastSection(true);
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 6);
    table->setColumnWidth(0, 100);
    showExposed(table.get());
    return table;
}

struct Lines
{
    QStringList names;
    QStringList values;
};

Lines linesOf(const TQorObjInspector &inspector)
{
    Lines lines;
    TValueListStrings *strings = inspector.Strings();
    for (int i = 0; i < strings->Count(); ++i) {
        lines.names.append(strings->Names(i));
        lines.values.append(strings->ValueFromIndex(i));
    }
    return lines;
}

void fillTable(QTableWidget *table, const Lines &lines)
{
    table->setRowCount(int(lines.names.size()));
    for (int i = 0; i < lines.names.size(); ++i) {
        table->setItem(i, 0, new QTableWidgetItem(lines.names[i]));
        table->setItem(i, 1, new QTableWidgetItem(lines.values[i]));
    }
}

// The inspector showing the selection, from a fresh inspector, until
// painted; beside a fresh bare grid filled with the same lines.
BenchRow showRow(const QString &name, int count, bool mixed)
{
    auto form = formOf(count, mixed);
    const QList<QObject *> selection = componentsOf(form.get());
    Lines lines;
    {
        auto probe = shownInspector();
        probe->SetActiveComponents(selection);
        lines = linesOf(*probe);
    }
    if (lines.names.size() < 20)
        qFatal("bench inspector: %lld lines for %s", qlonglong(lines.names.size()), qPrintable(name));
    std::unique_ptr<TQorObjInspector> inspector;
    std::unique_ptr<QTableWidget> table;
    // Each round starts from a fresh, empty, painted grid: the inspector's
    // before it is timed, the table's before the floor. The inspector
    // keeps its lines through the floor's turn, to be checked at the end.
    int turn = 0;
    const BenchPair pair = benchInTurn(
        kRounds,
        [&] {
            if (turn++ % 2 == 0) {
                inspector.reset();
                benchSettle();
                inspector = shownInspector();
            } else {
                table.reset();
                benchSettle();
                table = shownTable();
            }
        },
        [&] {
            inspector->SetActiveComponents(selection);
            benchSettle();
        },
        [&] {
            fillTable(table.get(), lines);
            benchSettle();
        });
    if (linesOf(*inspector).values != lines.values)
        qFatal("bench inspector: %s shows other values", qPrintable(name));
    return {name, pair.ms, QStringLiteral("table_widget_fill_%1_lines").arg(lines.names.size()), pair.floorMs};
}

// One change to 100 shown buttons (their text, all alike), then the
// inspector's values refreshed until painted; beside rewriting every value
// cell of a bare grid showing the same lines.
BenchRow refreshRow()
{
    auto form = formOf(100, false);
    const QList<QObject *> selection = componentsOf(form.get());
    auto inspector = shownInspector();
    inspector->SetActiveComponents(selection);
    benchSettle();
    auto table = shownTable();
    fillTable(table.get(), linesOf(*inspector));
    benchSettle();
    int turn = 0;
    QString text;
    Lines after;
    const BenchPair pair = benchInTurn(
        kRounds,
        [&] {
            // The change comes before the inspector's turn; the floor then
            // writes the same new values.
            if (turn++ % 2 != 0)
                return;
            text = QStringLiteral("Round %1").arg(turn);
            for (QObject *object : selection)
                static_cast<QPushButton *>(object)->setText(text);
            after = linesOf(*inspector);
            after.values[after.names.indexOf(QStringLiteral("  text"))] = text;
        },
        [&] {
            inspector->RefreshValues();
            benchSettle();
        },
        [&] {
            // Every value cell is written: a new item each, as setText would
            // skip the cells whose text stays and write nothing but one.
            for (int i = 0; i < after.values.size(); ++i)
                table->setItem(i, 1, new QTableWidgetItem(after.values[i]));
            benchSettle();
        });
    if (inspector->Strings()->ValueFromIndex(int(after.names.indexOf(QStringLiteral("  text")))) != text)
        qFatal("bench inspector: the refreshed values miss the change");
    return {QStringLiteral("inspector.refresh_values"), pair.ms,
            QStringLiteral("table_widget_rewrite_%1_values").arg(after.values.size()), pair.floorMs};
}

QList<BenchRow> inspectorRows()
{
    QList<BenchRow> rows;
    rows.append(showRow(QStringLiteral("inspector.show_1"), 1, false));
    rows.append(showRow(QStringLiteral("inspector.show_100"), 100, false));
    rows.append(showRow(QStringLiteral("inspector.show_100_mixed"), 100, true));
    rows.append(refreshRow());
    return rows;
}

const BenchRegistrar registrar("inspector", inspectorRows, {QStringLiteral("inspector.show_1"), QStringLiteral("inspector.show_100"), QStringLiteral("inspector.show_100_mixed"), QStringLiteral("inspector.refresh_values")});

} // namespace
