// SPDX-License-Identifier: MIT
// Bench rows of the assembled demo designer driven by real X input: the
// demo's window (stage, component tree, inspector, Edit keys) is shown on
// the screen and designing, and every gesture reaches it through the X
// server as a user's would. A row is timed from its first input event until
// the gesture's effect shows and the window is idle with everything
// painted; a gesture whose effect never shows is reported as -1, not as a
// fast time. Each floor is the plain widget work a user would see the same
// change from, in a window laid out like the designer's.
#include "qorbench.h"

#include "designer/qordesigner_p.h"
#include "console/qorcustomization.h"
#include "console/qorcustomizationrecorder.h"
#include "console/qordesignactions.h"
#include "console/qordesignhistory.h"
#include "console/qordesignconsole.h"
#include "console/qordesignpopupmenu.h"
#include "designer/qormanager.h"
#include "foundation/qorcomponents.h"
#include "foundation/qorstream.h"
#include "foundation/vhoclipbrdutils.h"
#include "harness/qorrealinput.h"
#include "inspector/qorinspector.h"
#include "browsing/qorclassesman.h"
#include "browsing/qorcomptreeview.h"
#include "browsing/qorimages.h"
#include "browsing/qorpallete.h"
#include "qordemowindow.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QComboBox>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QButtonGroup>
#include <QTabBar>
#include <QTableWidget>
#include <QToolBar>
#include <QThread>
#include <QToolButton>
#include <QTreeWidget>
#include <QUiLoader>
#include <QUndoStack>
#include <QWindow>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <malloc.h>
#include <memory>

namespace {

constexpr int kRounds = 3;
// A row adds no round that would take it past this: a gesture that is
// slow today must not hold the whole group for many minutes.
constexpr qint64 kRowBudgetMs = 40000;
// The effect of a gesture is given up on when the application has done
// nothing at all for this long (a gesture that does nothing), or in any
// case after the cap (one that never ends).
constexpr qint64 kQuietGiveUpMs = 3000;
constexpr qint64 kEffectCapMs = 120000;
// Work still going on this long after the effect showed is reported as a
// window that never comes to rest.
constexpr qint64 kIdleCapMs = 20000;

// The buttons a user lays out: 44x18, in a grid of 25 columns.
constexpr int kColumns = 25;
const QSize kButton(44, 18);
const QSize kPitch(48, 22);
// A point of the stage between the first two buttons: a click there
// selects the stage and gives the design area the keyboard.
const QPoint kStageGap(10 + 44 + 2, 10 + 9);
const QRect kScreen(0, 0, 1280, 1024);
// The steps of a drag, each of them 10 px.
constexpr int kDragSteps = 4;

QRect buttonGeometry(int index)
{
    return QRect(QPoint(10 + (index % kColumns) * kPitch.width(), 10 + (index / kColumns) * kPitch.height()),
                 kButton);
}

QSize stageSizeFor(int count)
{
    const int rows = (count + kColumns - 1) / kColumns;
    return QSize(10 + kColumns * kPitch.width() + 10, 10 + rows * kPitch.height() + 10);
}

void note(const QString &row, const QString &what)
{
    std::fprintf(stderr, "app bench: %s: %s\n", qPrintable(row), qPrintable(what));
}

double msSince(const QElapsedTimer &t)
{
    return double(t.nsecsElapsed()) / 1e6;
}

// Every event Qt delivers in this thread passes here: the waits tell a
// busy application from an idle one by the count, and see the input that
// reached a window.
class Activity final : public QObject
{
public:
    Activity()
        : m_sentinel(QEvent::Type(QEvent::registerEventType()))
    {
        qApp->installEventFilter(this);
    }
    ~Activity() override { qApp->removeEventFilter(this); }

    quint64 events() const { return m_events; }
    quint64 windowPresses() const { return m_presses; }
    quint64 windowMoves() const { return m_moves; }

    // Posts the sentinel behind everything waiting, at the lowest priority
    // the paint requests have too.
    void postSentinel()
    {
        m_sentinelSeen = false;
        QCoreApplication::postEvent(this, new QEvent(m_sentinel), Qt::LowEventPriority);
    }
    bool sentinelSeen() const { return m_sentinelSeen; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == m_sentinel && watched == this) {
            m_sentinelSeen = true;
            return true;
        }
        ++m_events;
        // Input is counted where the window system hands it to Qt: once per
        // X event, whatever widgets it then travels through.
        if (watched->isWindowType()) {
            switch (event->type()) {
            case QEvent::MouseButtonPress: ++m_presses; break;
            case QEvent::MouseMove: ++m_moves; break;
            default: break;
            }
        }
        return false;
    }

private:
    const QEvent::Type m_sentinel;
    bool m_sentinelSeen = false;
    quint64 m_events = 0;
    quint64 m_presses = 0;
    quint64 m_moves = 0;
};

Activity *activity = nullptr;
// QORBENCH_TRACE=1 prints each wait's phases on stderr: what a slow row
// spends its time on.
const bool trace = qEnvironmentVariableIntValue("QORBENCH_TRACE") != 0;

// Lets Qt deliver what is waiting, the deletions a returning event loop
// would run included.
void deliver()
{
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

enum class Outcome { Done, NoEffect, NeverIdle };

// The one wait of every row and floor: first until Effect holds (none:
// at once), then until the window is idle and painted. Idle is a round in
// which nothing but a low-priority sentinel was delivered: a round in which
// anything else was (a paint, a posted call, an input event, a deletion)
// may have left more behind, and another round follows. Everything is
// bounded: an effect that does not show while the application does
// nothing, or that takes past the cap, is NoEffect.
Outcome untilIdleAndPainted(const std::function<bool()> &Effect = {})
{
    QElapsedTimer all;
    all.start();
    QElapsedTimer quiet;
    quiet.start();
    quint64 seen = activity->events();
    while (Effect && !Effect()) {
        if (all.elapsed() > kEffectCapMs)
            return Outcome::NoEffect;
        deliver();
        if (activity->events() != seen) {
            seen = activity->events();
            quiet.restart();
        } else if (quiet.elapsed() > kQuietGiveUpMs) {
            return Outcome::NoEffect;
        } else {
            // The X server's answer is on its way through Qt's reader
            // thread: a short nap instead of spinning on the same core.
            QThread::usleep(100);
        }
    }
    const double effectMs = msSince(all);
    QElapsedTimer idle;
    idle.start();
    for (int rounds = 1;; ++rounds) {
        const quint64 before = activity->events();
        activity->postSentinel();
        while (!activity->sentinelSeen()) {
            deliver();
            if (idle.elapsed() > kIdleCapMs)
                return Outcome::NeverIdle;
        }
        if (activity->events() == before) {
            if (trace)
                std::fprintf(stderr, "  wait: effect %.1f ms, then %d round(s) to rest, %.1f ms\n", effectMs, rounds,
                             msSince(idle));
            return Outcome::Done;
        }
        if (idle.elapsed() > kIdleCapMs)
            return Outcome::NeverIdle;
    }
}

// The wait of a timed gesture: its milliseconds since Start, or -1 with a
// note saying what did not happen.
double timedUntilIdle(const QString &row, const QElapsedTimer &Start, const char *what,
                      const std::function<bool()> &Effect)
{
    switch (untilIdleAndPainted(Effect)) {
    case Outcome::Done: return msSince(Start);
    case Outcome::NoEffect:
        note(row, QStringLiteral("%1 did not happen (gave up after %2 ms)")
                      .arg(QLatin1String(what))
                      .arg(msSince(Start), 0, 'f', 0));
        return -1;
    case Outcome::NeverIdle:
        note(row, QStringLiteral("the window never came to rest after %1").arg(QLatin1String(what)));
        return -1;
    }
    return -1;
}

// Untimed set-up steps: true once the effect showed and all is quiet.
bool settled(const QString &row, const char *what, const std::function<bool()> &Effect = {})
{
    if (untilIdleAndPainted(Effect) == Outcome::Done)
        return true;
    note(row, QStringLiteral("set-up: %1 did not happen").arg(QLatin1String(what)));
    return false;
}

// Shows a top-level window at the top left of the screen and waits until
// the window system has mapped and exposed it and, when asked, given it
// the keyboard (a click-to-focus window manager's part; under Xvfb there
// is none).
bool showOnScreen(const QString &row, QWidget *window, bool activate)
{
    window->setGeometry(kScreen);
    window->show();
    if (!settled(row, "showing the window",
                 [window] { return window->windowHandle() && window->windowHandle()->isExposed(); }))
        return false;
    if (!activate)
        return true;
    window->activateWindow();
    window->raise();
    return settled(row, "activating the window", [window] { return window->isActiveWindow(); });
}

// Qt Designer's clipboard text of Count push buttons laid out in the grid,
// named as Designer names them.
QString designerText(int count)
{
    QString text = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ui version=\"4.0\">\n"
                                  " <widget class=\"QWidget\" name=\"__qt_fake_top_level\">\n");
    for (int i = 0; i < count; ++i) {
        const QRect r = buttonGeometry(i);
        const QString name = i == 0 ? QStringLiteral("pushButton") : QStringLiteral("pushButton_%1").arg(i + 1);
        text += QStringLiteral("  <widget class=\"QPushButton\" name=\"%1\">\n"
                               "   <property name=\"geometry\">\n"
                               "    <rect>\n"
                               "     <x>%2</x>\n"
                               "     <y>%3</y>\n"
                               "     <width>%4</width>\n"
                               "     <height>%5</height>\n"
                               "    </rect>\n"
                               "   </property>\n"
                               "   <property name=\"text\">\n"
                               "    <string>B%6</string>\n"
                               "   </property>\n"
                               "  </widget>\n")
                    .arg(name)
                    .arg(r.x())
                    .arg(r.y())
                    .arg(r.width())
                    .arg(r.height())
                    .arg(i + 1);
    }
    text += QStringLiteral(" </widget>\n <resources/>\n <connections/>\n</ui>\n");
    return text;
}

QList<QPointer<QWidget>> addButtons(QWidget *stage, int count, bool owned)
{
    QList<QPointer<QWidget>> buttons;
    buttons.reserve(count);
    for (int i = 0; i < count; ++i) {
        auto *button = new QPushButton(QStringLiteral("B%1").arg(i + 1), stage);
        button->setObjectName(QStringLiteral("PushButton%1").arg(i + 1));
        button->setGeometry(buttonGeometry(i));
        if (owned)
            InsertComponent(stage, button);
        button->show();
        buttons.append(button);
    }
    return buttons;
}

// A bare tree of the buttons under a root, as the component tree shows
// them: their names and their class's image.
void fillBareTree(QTreeWidget *Tree, const QList<QPointer<QWidget>> &Buttons)
{
    const QIcon icon = QorClassImage(&QPushButton::staticMetaObject);
    auto *root = new QTreeWidgetItem({QStringLiteral("Stage"), QStringLiteral("QWidget")});
    QList<QTreeWidgetItem *> items;
    items.reserve(Buttons.size());
    for (const QPointer<QWidget> &b : Buttons) {
        auto *item = new QTreeWidgetItem({b->objectName(), QStringLiteral("QPushButton")});
        item->setIcon(0, icon);
        items.append(item);
    }
    root->addChildren(items);
    Tree->addTopLevelItem(root);
    Tree->expandAll();
}

// Every fifth button: 200 of 1000 spread over the stage.
QList<QPointer<QWidget>> everyFifth(const QList<QPointer<QWidget>> &buttons, int count)
{
    QList<QPointer<QWidget>> chosen;
    for (int i = 0; i < buttons.size() && chosen.size() < count; i += 5)
        chosen.append(buttons[i]);
    return chosen;
}

// The demo's window with Count buttons on its stage, shown, active and
// designing, the design area holding the keyboard after a real click on
// the stage: where a user starts each gesture.
struct Designer
{
    QString row;
    std::unique_ptr<QorDemoWindow> window;
    QList<QPointer<QWidget>> buttons;
    bool ok = false;

    Designer(const QString &Row, int Count, int Capacity)
        : row(Row)
        , window(std::make_unique<QorDemoWindow>(nullptr, QorDemoWindow::StartStage::Empty))
    {
        QWidget *s = stage();
        s->resize(stageSizeFor(Capacity));
        buttons = addButtons(s, Count, true);
        // The tree lists what the stage now owns.
        window->designCenter()->RefreshAllExcept({deDesignManager, deObjInspector});
        if (!showOnScreen(row, window.get(), true))
            return;
        window->designAction()->setChecked(true);
        RealInput::click(s, kStageGap);
        ok = settled(row, "a click on the stage selecting it", [this] {
            const TComponentList &selected = manager()->SelectedComps();
            QWidget *focus = QApplication::focusWidget();
            return selected.Count() == 1 && selected.First() == stage() && focus
                && window->centralWidget()->isAncestorOf(focus);
        });
    }
    ~Designer()
    {
        window.reset();
        untilIdleAndPainted();
    }

    QWidget *stage() const { return window->stage(); }
    TQorDesignManager *manager() const { return window->designManager(); }

    // Select-all by its real keys, for the rows that start from it.
    bool selectAll()
    {
        const int count = ComponentCount(stage());
        RealInput::key("a", Qt::ControlModifier);
        ok = settled(row, "Ctrl+A selecting every button",
                     [this, count] { return window->designCenter()->SelectedComps().Count() == count; });
        return ok;
    }

    bool allButtons(const std::function<bool(QWidget *)> &Test) const
    {
        return std::all_of(buttons.begin(), buttons.end(), [&](const QPointer<QWidget> &b) { return b && Test(b); });
    }

    // Every button where it was made, moved by Offset.
    bool allButtonsMovedBy(const QPoint &Offset) const
    {
        int i = 0;
        return allButtons([&i, &Offset](QWidget *b) { return b->geometry() == buttonGeometry(i++).translated(Offset); });
    }
};

// A paste is done when every component the stage owns shows, not when
// the last one was made.
bool ownsShown(QWidget *stage, int count)
{
    const QList<QObject *> owned = ComponentList(stage);
    return owned.size() == count && std::all_of(owned.begin(), owned.end(), [](QObject *c) {
               return c->isWidgetType() && static_cast<QWidget *>(c)->isVisible();
           });
}

// The floors' window: laid out like the designer's (a scrolled stage of
// the same size where the designer's stage is, a bare tree where its
// component tree is and a bare two-column grid where its inspector is), so
// the same gesture's plain work paints the same area.
class FloorWindow final : public QWidget
{
public:
    explicit FloorWindow(const QorDemoWindow &Like)
    {
        auto placeLike = [&Like](QWidget *Mine, const QWidget *Theirs) {
            Mine->setGeometry(QRect(Theirs->mapTo(&Like, QPoint(0, 0)), Theirs->size()));
        };
        auto *frame = new QScrollArea(this);
        placeLike(frame, Like.centralWidget());
        stage = new QWidget;
        stage->setAutoFillBackground(true);
        stage->setPalette(Like.stage()->palette());
        stage->resize(Like.stage()->size());
        frame->setWidget(stage);
        tree = new QTreeWidget(this);
        tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
        tree->setHeaderLabels({QStringLiteral("Name"), QStringLiteral("Class")});
        placeLike(tree, Like.componentTree());
        grid = new QTableWidget(this);
        grid->setColumnCount(2);
        grid->verticalHeader()->hide();
        placeLike(grid, Like.inspector());
    }

    QWidget *stage;
    QTreeWidget *tree;
    QTableWidget *grid;
};

// One widget over the stage painting a set of handles (the four 5x5
// corner squares) for every selected button: the least the marks of a
// selection can cost on screen.
class HandleOverlay final : public QWidget
{
public:
    HandleOverlay(QWidget *Stage, const QList<QPointer<QWidget>> &Buttons)
        : QWidget(Stage)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setGeometry(Stage->rect());
        for (const QPointer<QWidget> &b : Buttons)
            m_rects.append(b->geometry().adjusted(-2, -2, 2, 2));
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter p(this);
        for (const QRect &r : m_rects) {
            p.fillRect(QRect(r.topLeft(), QSize(5, 5)), Qt::black);
            p.fillRect(QRect(r.right() - 4, r.top(), 5, 5), Qt::black);
            p.fillRect(QRect(r.left(), r.bottom() - 4, 5, 5), Qt::black);
            p.fillRect(QRect(r.right() - 4, r.bottom() - 4, 5, 5), Qt::black);
        }
    }

private:
    QList<QRect> m_rects;
};

// The rounds of one row: ours and the floor in turn, the best of each
// kept. Each returns its milliseconds, -1 when its effect never showed.
// The first round of ours that fails ends ours, whose ms is then -1; so
// does the budget. The floor, cheap, runs every round all the same: its
// best of several is what the ratio divides by.
BenchRow runRounds(const QString &name, const QString &floorName, const std::function<double()> &ours,
                   const std::function<double()> &floor)
{
    double best = 1e300, floorBest = 1e300;
    bool failed = false;
    int oursRounds = 0;
    QElapsedTimer spent;
    spent.start();
    qint64 lastRound = 0;
    for (int round = 0; round < kRounds; ++round) {
        if (!failed && (round == 0 || spent.elapsed() + lastRound <= kRowBudgetMs)) {
            const qint64 roundStart = spent.elapsed();
            const double ms = ours();
            lastRound = spent.elapsed() - roundStart;
            ++oursRounds;
            if (ms < 0)
                failed = true;
            else
                best = std::min(best, ms);
        }
        const double floorMs = floor();
        if (floorMs >= 0)
            floorBest = std::min(floorBest, floorMs);
    }
    note(name, QStringLiteral("%1 round(s) of the gesture in %2 s%3")
                   .arg(oursRounds)
                   .arg(spent.elapsed() / 1000.0, 0, 'f', 1)
                   .arg(failed ? QStringLiteral(", failed") : QString()));
    return {name, failed ? -1.0 : best, floorName, floorBest < 1e300 ? floorBest : -1.0};
}

// The window the floors paint in, made like the designer's the first time
// a row needs it.
std::unique_ptr<FloorWindow> floorWindowLike(const QString &row)
{
    Designer like(row, 0, 1000);
    auto floor = std::make_unique<FloorWindow>(*like.window);
    return floor;
}

bool showFloor(const QString &row, FloorWindow *floor)
{
    return showOnScreen(row, floor, false);
}

void hideFloor(FloorWindow *floor)
{
    floor->hide();
    untilIdleAndPainted();
}

// The floor of the pasting rows: Qt's form loader making Count buttons
// from Bytes onto the floor's stage, until shown and painted.
double loaderFloor(const QString &name, FloorWindow *floor, const QByteArray &bytes, int count)
{
    if (!showFloor(name, floor))
        return -1;
    QElapsedTimer t;
    t.start();
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QUiLoader loader;
    QWidget *loaded = loader.load(&buffer, floor->stage);
    if (loaded) {
        loaded->setGeometry(floor->stage->rect());
        loaded->show();
    }
    const double ms = timedUntilIdle(name, t, "the loader's buttons showing", [loaded, count] {
        return loaded && loaded->findChildren<QPushButton *>().size() == count;
    });
    delete loaded;
    hideFloor(floor);
    return ms;
}

// ---- The rows --------------------------------------------------------------

// Qt Designer's text of Count buttons on the clipboard, pasted with a real
// Ctrl+V onto the empty stage; beside Qt's form loader making them from
// the same text onto a plain stage, shown and painted.
BenchRow fill(int count)
{
    const QString name = QStringLiteral("app.fill_%1").arg(count);
    const QString text = designerText(count);
    const QByteArray bytes = text.toUtf8();
    auto floor = floorWindowLike(name);
    floor->stage->resize(stageSizeFor(count));

    auto ours = [&]() -> double {
        QGuiApplication::clipboard()->setText(text);
        Designer d(name, 0, count);
        if (!d.ok)
            return -1;
        QElapsedTimer t;
        t.start();
        RealInput::key("v", Qt::ControlModifier);
        return timedUntilIdle(name, t, "Ctrl+V pasting the buttons", [&d, count] {
            return ownsShown(d.stage(), count);
        });
    };
    auto plain = [&] { return loaderFloor(name, floor.get(), bytes, count); };
    return runRounds(name, QStringLiteral("uiloader.load_%1_shown").arg(count), ours, plain);
}

// Real Ctrl+A with Count buttons on the stage, until the marks, the tree's
// selection and the inspector's common lines are painted; beside the sum
// of one overlay painting Count handle sets, a bare tree (with the same
// icons) selecting the same items and a bare grid showing the same lines.
BenchRow selectAllRow(const QString &name, int count)
{
    auto floor = floorWindowLike(name);
    QList<QPair<QString, QString>> lines;

    auto ours = [&]() -> double {
        Designer d(name, count, count);
        if (!d.ok)
            return -1;
        TQorObjInspector *inspector = d.window->inspector();
        QTreeWidget *tree = d.window->componentTree();
        QElapsedTimer t;
        t.start();
        RealInput::key("a", Qt::ControlModifier);
        const double ms = timedUntilIdle(name, t, "Ctrl+A selecting every button in the stage, tree and inspector",
                                         [&d, inspector, tree, count] {
                                             return d.window->designCenter()->SelectedComps().Count() == count
                                                 && d.manager()->SelectedComps().Count() == count
                                                 && tree->selectionModel()->selectedRows().size() == count
                                                 && inspector->GetActiveComponents().size() == count;
                                         });
        // The lines the inspector shows the 1000 with, for the bare grid.
        if (lines.isEmpty()) {
            if (inspector->GetActiveComponents().size() != count) {
                QList<QObject *> all;
                for (const QPointer<QWidget> &b : d.buttons)
                    all.append(b.data());
                inspector->SetActiveComponents(all);
            }
            TValueListStrings *strings = inspector->Strings();
            for (int i = 0; i < strings->Count(); ++i)
                lines.append({strings->Names(i), strings->ValueFromIndex(i)});
        }
        return ms;
    };
    auto plain = [&]() -> double {
        const QList<QPointer<QWidget>> buttons = addButtons(floor->stage, count, false);
        fillBareTree(floor->tree, buttons);
        floor->tree->expandAll();
        if (!showFloor(name, floor.get()))
            return -1;
        double sum = 0;
        // The marks.
        QElapsedTimer t;
        t.start();
        auto *overlay = new HandleOverlay(floor->stage, buttons);
        overlay->show();
        double ms = timedUntilIdle(name, t, "the overlay showing", [overlay] { return overlay->isVisible(); });
        sum += ms;
        // The tree's selection.
        t.restart();
        const QItemSelection range(floor->tree->model()->index(0, 0, floor->tree->model()->index(0, 0)),
                                   floor->tree->model()->index(count - 1, 0, floor->tree->model()->index(0, 0)));
        floor->tree->selectionModel()->select(range, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        ms = timedUntilIdle(name, t, "the bare tree selecting every item", [floor = floor.get(), count] {
            return floor->tree->selectionModel()->selectedRows().size() == count;
        });
        sum = ms < 0 || sum < 0 ? -1 : sum + ms;
        // The common lines.
        t.restart();
        floor->grid->setRowCount(int(lines.size()));
        for (int i = 0; i < lines.size(); ++i) {
            floor->grid->setItem(i, 0, new QTableWidgetItem(lines[i].first));
            floor->grid->setItem(i, 1, new QTableWidgetItem(lines[i].second));
        }
        ms = timedUntilIdle(name, t, "the bare grid showing the lines",
                            [floor = floor.get(), &lines] { return floor->grid->rowCount() == lines.size(); });
        sum = ms < 0 || sum < 0 ? -1 : sum + ms;
        hideFloor(floor.get());
        delete overlay;
        qDeleteAll(buttons);
        floor->tree->clear();
        floor->grid->setRowCount(0);
        untilIdleAndPainted();
        return sum;
    };
    return runRounds(name, QStringLiteral("overlay_%1+tree_select_%1+grid_lines").arg(count), ours, plain);
}

BenchRow selectAll()
{
    return selectAllRow(QStringLiteral("app.select_all_1000"), 1000);
}

// The component tree following a select-all of 5000: real Ctrl+A on the
// stage until the tree shows the 5000 selected, painted, with the stage
// and the inspector done too; beside the same plain work the 1000 row
// divides by, for 5000.
BenchRow treeFollowSelectAll()
{
    return selectAllRow(QStringLiteral("tree.follow_select_all_5000"), 5000);
}

// The component tree of a stage of 5000 made anew (as after a rename or a
// component editor's verb), until shown and painted; beside a bare tree
// filled with the same 5000 texts and icons under a root, painted.
BenchRow treeGenerate()
{
    const QString name = QStringLiteral("tree.generate_5000");
    constexpr int count = 5000;
    auto floor = floorWindowLike(name);
    auto ours = [&]() -> double {
        Designer d(name, count, count);
        if (!d.ok)
            return -1;
        TQorCompTreeView *tree = d.window->componentTree();
        int made = 0;
        QObject::connect(tree, &TQorCompTreeView::TreeGenerated, tree, [&made] { ++made; });
        QElapsedTimer t;
        t.start();
        tree->Refresh();
        return timedUntilIdle(name, t, "the tree made anew", [tree, &made, count] {
            return made == 1 && tree->topLevelItemCount() == 1 && tree->topLevelItem(0)->childCount() == count;
        });
    };
    auto plain = [&]() -> double {
        const QList<QPointer<QWidget>> buttons = addButtons(floor->stage, count, false);
        if (!showFloor(name, floor.get()))
            return -1;
        QElapsedTimer t;
        t.start();
        fillBareTree(floor->tree, buttons);
        const double ms = timedUntilIdle(name, t, "the bare tree filled", [floor = floor.get(), count] {
            return floor->tree->topLevelItemCount() == 1 && floor->tree->topLevelItem(0)->childCount() == count;
        });
        hideFloor(floor.get());
        qDeleteAll(buttons);
        floor->tree->clear();
        untilIdleAndPainted();
        return ms;
    };
    return runRounds(name, QStringLiteral("qtreewidget_fill_5000_icons"), ours, plain);
}

// A real click on a palette tab whose page holds 100 classes, until the
// 100 buttons are made and painted; beside a plain tab bar where the
// palette's tabs are changing its tab (by the program), which makes 100
// plain checkable tool buttons with the same icons on a plain tool bar
// where the palette's bar is, painted.
BenchRow paletteSwitchPage()
{
    const QString name = QStringLiteral("palette.switch_page_100");
    constexpr int count = 100;
    const QString page = QStringLiteral("Hundred");
    auto floor = floorWindowLike(name);
    QList<QIcon> icons;
    QRect barPlace, tabsPlace;
    QStringList tabTexts;
    // The pointer on the tab, then a timed click until the effect shows
    // and all is quiet.
    auto clickTab = [&name](QTabBar *tabs, int tab, const std::function<bool()> &effect) -> double {
        // From beside the tab bar onto the tab, as a user comes to it.
        RealInput::moveTo(tabs, QPoint(tabs->tabRect(tab).center().x(), tabs->height() + 40), 2);
        RealInput::moveTo(tabs, tabs->tabRect(tab).center(), 2);
        if (!settled(name, "the pointer on the tab"))
            return -1;
        QElapsedTimer t;
        t.start();
        RealInput::press();
        RealInput::release();
        return timedUntilIdle(name, t, "the page of 100 shown", effect);
    };
    auto ours = [&]() -> double {
        Designer d(name, 0, 1000);
        if (!d.ok)
            return -1;
        // A page of 100: the registered classes over and over.
        TQorDesignClassList *classes = d.window->classList();
        const int stock = classes->Count();
        for (int i = 0; i < count; ++i) {
            const TQorDesignClassInformation *info = classes->ClassInfos(i % stock);
            classes->AddClass(info->ClassTypeRef(), page, info->ImageIndex, false, false);
        }
        TQorCompPalleteTab *tabs = d.window->paletteTabs();
        TQorCompPalleteToolBar *bar = d.window->paletteBar();
        tabs->UpdateTabs();
        tabs->UpdateToolBarPallete();
        const int tab = tabs->count() - 1;
        if (tabs->tabText(tab) != page || !settled(name, "the first page shown", [bar] { return bar->isVisible(); }))
            return -1;
        if (icons.isEmpty()) {
            for (int i = 0; i < count; ++i)
                icons.append(classes->Images()->Icon(classes->ClassInfos(i % stock)->ImageIndex));
            barPlace = QRect(bar->mapTo(d.window.get(), QPoint(0, 0)), bar->size());
            tabsPlace = QRect(tabs->mapTo(d.window.get(), QPoint(0, 0)), tabs->size());
            for (int i = 0; i < tabs->count(); ++i)
                tabTexts << tabs->tabText(i);
        }
        return clickTab(tabs, tab, [bar, &page, count] {
            return bar->Pallete() == page && bar->ButtonCount() == count + 1;
        });
    };
    auto plain = [&]() -> double {
        if (icons.isEmpty())
            return -1;
        auto *tabs = new QTabBar(floor.get());
        tabs->setGeometry(tabsPlace);
        for (const QString &text : std::as_const(tabTexts))
            tabs->addTab(text);
        tabs->setExpanding(false);
        tabs->setCurrentIndex(0);
        auto *bar = new QToolBar(floor.get());
        bar->setIconSize(QSize(24, 24));
        bar->setGeometry(barPlace);
        QObject::connect(tabs, &QTabBar::currentChanged, bar, [bar, &icons, count] {
            auto *group = new QButtonGroup(bar);
            for (int i = 0; i < count; ++i) {
                auto *button = new QToolButton;
                button->setCheckable(true);
                button->setAutoRaise(true);
                button->setIcon(icons.at(i));
                button->setToolTip(QStringLiteral("Class %1").arg(i));
                group->addButton(button);
                bar->addWidget(button);
            }
        });
        if (!showFloor(name, floor.get()))
            return -1;
        // The tab chosen by the program: the plain work of the same change
        // without the input's way through the window system.
        QElapsedTimer t;
        t.start();
        tabs->setCurrentIndex(tabs->count() - 1);
        const double ms = timedUntilIdle(name, t, "100 plain buttons shown",
                                         [bar, count] { return bar->actions().size() == count; });
        hideFloor(floor.get());
        delete bar;
        delete tabs;
        untilIdleAndPainted();
        return ms;
    };
    return runRounds(name, QStringLiteral("tab_change_qtoolbuttons_100"), ours, plain);
}

// The floor of the rows that move the 1000: the plain buttons moved by a
// pixel until painted (and put back untimed).
double movePlainButtons(const QString &name, FloorWindow *floor, const QList<QPointer<QWidget>> &buttons)
{
    if (!showFloor(name, floor))
        return -1;
    QElapsedTimer t;
    t.start();
    for (const QPointer<QWidget> &b : buttons)
        b->move(b->pos() + QPoint(1, 0));
    const double ms = timedUntilIdle(name, t, "moving the plain buttons", {});
    for (const QPointer<QWidget> &b : buttons)
        b->move(b->pos() - QPoint(1, 0));
    hideFloor(floor);
    return ms;
}

// Real Ctrl+Right with all 1000 selected; beside moving the 1000 by one
// pixel and painting.
BenchRow nudgeAll()
{
    const QString name = QStringLiteral("app.nudge_all_1000");
    auto floor = floorWindowLike(name);
    const QList<QPointer<QWidget>> floorButtons = addButtons(floor->stage, 1000, false);

    auto ours = [&]() -> double {
        Designer d(name, 1000, 1000);
        if (!d.ok || !d.selectAll())
            return -1;
        QElapsedTimer t;
        t.start();
        RealInput::key("Right", Qt::ControlModifier);
        return timedUntilIdle(name, t, "Ctrl+Right moving the 1000 by one pixel", [&d] { return d.allButtonsMovedBy(QPoint(1, 0)); });
    };
    return runRounds(name, QStringLiteral("move_1000_paint"), ours,
                     [&] { return movePlainButtons(name, floor.get(), floorButtons); });
}

// A user's customization recorded while the user designs: a real
// Ctrl+Right with all 1000 selected, the time the recorder takes to keep
// the 1000 new places in the delta; beside the nudge itself, from the key
// until the window is idle and painted, in the same gesture.
BenchRow customRecord()
{
    const QString name = QStringLiteral("custom.record_1000");
    double nudgeMs = -1;
    auto ours = [&]() -> double {
        nudgeMs = -1;
        Designer d(name, 1000, 1000);
        if (!d.ok)
            return -1;
        TQorDesignCenter *center = d.window->designCenter();
        TQorCustomizationRecorder recorder(center);
        // Slots run in the order they were connected: one before the
        // recorder's and one after it time the recorder alone.
        QElapsedTimer recording;
        double recordedMs = 0;
        QObject::connect(center->History(), &TQorDesignHistory::DesignChanged, &recorder,
                         [&recording] { recording.start(); });
        recorder.Start();
        QObject::connect(center->History(), &TQorDesignHistory::DesignChanged, &recorder,
                         [&recording, &recordedMs] { recordedMs += recording.nsecsElapsed() / 1e6; });
        if (!d.selectAll())
            return -1;
        QElapsedTimer t;
        t.start();
        RealInput::key("Right", Qt::ControlModifier);
        nudgeMs = timedUntilIdle(name, t, "Ctrl+Right moving the 1000 by one pixel", [&d] { return d.allButtonsMovedBy(QPoint(1, 0)); });
        const TQorCustomization delta = recorder.Delta();
        if (nudgeMs < 0 || delta.ComponentCount() != 1000
            || delta.PropertyValue(QStringLiteral("PushButton1000"), "geometry").toRect() != buttonGeometry(999).translated(1, 0)) {
            note(name, QStringLiteral("the delta does not hold the 1000 new places"));
            return -1;
        }
        return recordedMs;
    };
    return runRounds(name, QStringLiteral("nudge_1000_until_painted"), ours, [&] { return nudgeMs; });
}

// With 200 of 1000 selected, a real press on a selected button, four steps
// of 10 px and the release, until the 200 have moved and all is painted;
// beside the same four moves of the 200 and one setGeometry of each,
// painted.
BenchRow drag()
{
    const QString name = QStringLiteral("app.drag_200_of_1000");
    const QPoint step(10, 0);
    auto floor = floorWindowLike(name);
    const QList<QPointer<QWidget>> floorButtons = addButtons(floor->stage, 1000, false);
    const QList<QPointer<QWidget>> floorChosen = everyFifth(floorButtons, 200);

    auto ours = [&]() -> double {
        Designer d(name, 1000, 1000);
        if (!d.ok)
            return -1;
        // The selection is set-up, made directly and told to the center as
        // the stage's own selection would be.
        const QList<QPointer<QWidget>> chosen = everyFifth(d.buttons, 200);
        TQorDesignManager *manager = d.manager();
        for (int i = 0; i < chosen.size(); ++i)
            manager->SelectControl(chosen[i], QPoint(-1, -1), i == 0 ? csmSelect : csmAdd, i == chosen.size() - 1,
                                   false);
        QWidget *grip = chosen.first();
        const QPoint start = grip->rect().center();
        RealInput::moveTo(grip, start, 2);
        if (!settled(name, "the selection of 200 and the pointer on the first",
                     [&] { return d.window->designCenter()->SelectedComps().Count() == 200; }))
            return -1;
        const QPoint from = grip->mapToGlobal(start);

        QElapsedTimer t;
        t.start();
        const quint64 presses = activity->windowPresses();
        RealInput::press();
        if (timedUntilIdle(name, t, "the press reaching the window",
                           [presses] { return activity->windowPresses() > presses; })
            < 0)
            return -1;
        for (int i = 1; i <= kDragSteps; ++i) {
            const quint64 moves = activity->windowMoves();
            RealInput::moveTo(from + step * i, 1);
            if (timedUntilIdle(name, t, "a drag step reaching the window",
                               [moves] { return activity->windowMoves() > moves; })
                < 0) {
                RealInput::release();
                return -1;
            }
        }
        RealInput::release();
        return timedUntilIdle(name, t, "the release placing the 200 controls 40 px on", [&d, &chosen, step] {
            for (int i = 0; i < d.buttons.size(); ++i) {
                const QPointer<QWidget> &b = d.buttons[i];
                const bool dragged = i % 5 == 0 && i / 5 < chosen.size();
                if (!b || b->geometry() != buttonGeometry(i).translated(dragged ? step * kDragSteps : QPoint()))
                    return false;
            }
            return true;
        });
    };
    auto plain = [&]() -> double {
        if (!showFloor(name, floor.get()))
            return -1;
        QElapsedTimer t;
        t.start();
        for (int i = 0; i < kDragSteps; ++i) {
            for (const QPointer<QWidget> &b : floorChosen)
                b->move(b->pos() + step);
            untilIdleAndPainted();
        }
        // The placing: each back where it started, a real change of place.
        for (const QPointer<QWidget> &b : floorChosen)
            b->setGeometry(QRect(b->pos() - step * kDragSteps, b->size()));
        const double ms = timedUntilIdle(name, t, "moving the plain buttons", {});
        hideFloor(floor.get());
        return ms;
    };
    return runRounds(name, QStringLiteral("move_200_x4+set_geometry_200_paint"), ours, plain);
}

// Real Ctrl+C, then Ctrl+V, of all 1000 buttons, onto the same stage;
// beside Qt's form loader making 1000 buttons onto a plain stage of 1000,
// shown and painted.
BenchRow pasteAll()
{
    const QString name = QStringLiteral("app.paste_all_1000");
    const QByteArray bytes = designerText(1000).toUtf8();
    auto floor = floorWindowLike(name);
    const QList<QPointer<QWidget>> floorButtons = addButtons(floor->stage, 1000, false);

    auto ours = [&]() -> double {
        QGuiApplication::clipboard()->setText(QStringLiteral("nothing yet"));
        Designer d(name, 1000, 1000);
        if (!d.ok || !d.selectAll())
            return -1;
        QElapsedTimer t;
        t.start();
        RealInput::key("c", Qt::ControlModifier);
        if (timedUntilIdle(name, t, "Ctrl+C copying the 1000", [] { return VhoClipboard()->HasComponents(); }) < 0)
            return -1;
        RealInput::key("v", Qt::ControlModifier);
        return timedUntilIdle(name, t, "Ctrl+V pasting the 1000", [&d] {
            return ownsShown(d.stage(), 2000);
        });
    };
    auto plain = [&] { return loaderFloor(name, floor.get(), bytes, 1000); };
    return runRounds(name, QStringLiteral("uiloader.load_1000_shown"), ours, plain);
}

// Real Delete with 2000 selected, until they are gone from the stage, the
// tree and the screen; beside deleting 2000 plain buttons and painting.
BenchRow deleteAll()
{
    const QString name = QStringLiteral("app.delete_all_2000");
    auto floor = floorWindowLike(name);
    floor->stage->resize(stageSizeFor(2000));

    auto ours = [&]() -> double {
        Designer d(name, 2000, 2000);
        if (!d.ok || !d.selectAll())
            return -1;
        QElapsedTimer t;
        t.start();
        RealInput::key("Delete");
        return timedUntilIdle(name, t, "Delete freeing the 2000", [&d] {
            return ComponentCount(d.stage()) == 0
                && std::none_of(d.buttons.begin(), d.buttons.end(), [](const QPointer<QWidget> &b) { return b; });
        });
    };
    auto plain = [&]() -> double {
        QList<QPointer<QWidget>> buttons = addButtons(floor->stage, 2000, false);
        if (!showFloor(name, floor.get()))
            return -1;
        QElapsedTimer t;
        t.start();
        for (const QPointer<QWidget> &b : buttons)
            delete b.data();
        const double ms = timedUntilIdle(name, t, "deleting the plain buttons", {});
        hideFloor(floor.get());
        return ms;
    };
    return runRounds(name, QStringLiteral("delete_2000_paint"), ours, plain);
}

// Delete with the 1000 selected, then a real Ctrl+Z until the 1000 are
// back and shown; beside reading the 1000 buttons' records onto the floor's
// stage, shown and painted.
BenchRow undoDelete()
{
    const QString name = QStringLiteral("undo.delete_1000");
    auto floor = floorWindowLike(name);
    QByteArray records;
    {
        const QList<QPointer<QWidget>> buttons = addButtons(floor->stage, 1000, false);
        for (const QPointer<QWidget> &b : buttons)
            records += ComponentToBytes(b);
        qDeleteAll(buttons);
    }

    auto ours = [&]() -> double {
        Designer d(name, 1000, 1000);
        if (!d.ok || !d.selectAll())
            return -1;
        RealInput::key("Delete");
        if (!settled(name, "Delete freeing the 1000", [&d] { return ComponentCount(d.stage()) == 0; }))
            return -1;
        QElapsedTimer t;
        t.start();
        RealInput::key("z", Qt::ControlModifier);
        return timedUntilIdle(name, t, "Ctrl+Z bringing the 1000 back", [&d] { return ownsShown(d.stage(), 1000); });
    };
    auto plain = [&]() -> double {
        if (!showFloor(name, floor.get()))
            return -1;
        QElapsedTimer t;
        t.start();
        QBuffer buffer(&records);
        buffer.open(QIODevice::ReadOnly);
        const QList<QObject *> read = ReadComponents(buffer, floor->stage);
        for (QObject *component : read)
            static_cast<QWidget *>(component)->show();
        const double ms = timedUntilIdle(name, t, "the records read onto the plain stage", {});
        hideFloor(floor.get());
        qDeleteAll(read);
        return ms;
    };
    return runRounds(name, QStringLiteral("read_records_1000_paint"), ours, plain);
}

// Ctrl+Right with the 1000 selected, then a real Ctrl+Z until the 1000 are
// back in place and painted; beside moving the 1000 and painting.
BenchRow undoNudge()
{
    const QString name = QStringLiteral("undo.nudge_1000");
    auto floor = floorWindowLike(name);
    const QList<QPointer<QWidget>> floorButtons = addButtons(floor->stage, 1000, false);

    auto ours = [&]() -> double {
        Designer d(name, 1000, 1000);
        if (!d.ok || !d.selectAll())
            return -1;
        RealInput::key("Right", Qt::ControlModifier);
        if (!settled(name, "Ctrl+Right moving the 1000", [&d] {
                return d.window->designCenter()->UndoStack()->count() == 1 && d.buttons.first()->x() == buttonGeometry(0).x() + 1;
            }))
            return -1;
        QElapsedTimer t;
        t.start();
        RealInput::key("z", Qt::ControlModifier);
        return timedUntilIdle(name, t, "Ctrl+Z moving the 1000 back", [&d] { return d.allButtonsMovedBy(QPoint()); });
    };
    return runRounds(name, QStringLiteral("move_1000_paint"), ours,
                     [&] { return movePlainButtons(name, floor.get(), floorButtons); });
}

// The heap the history holds after 100 separate nudges of the 1000 (each
// after a new selection: the stage alone, then Ctrl+A), measured as what
// clearing the history gives back; beside the heap the 1000 buttons take.
// The row's "ms" columns hold bytes.
BenchRow undoHistory()
{
    const QString name = QStringLiteral("undo.history_100_nudges_1000");
    auto heap = [] { return double(mallinfo2().uordblks); };
    double buttonsBytes = -1;
    {
        QWidget holder;
        holder.resize(stageSizeFor(1000));
        const double before = heap();
        const QList<QPointer<QWidget>> buttons = addButtons(&holder, 1000, false);
        buttonsBytes = heap() - before;
        qDeleteAll(buttons);
    }
    Designer d(name, 1000, 1000);
    if (!d.ok)
        return {name, -1, QStringLiteral("heap_1000_buttons"), buttonsBytes};
    QUndoStack *stack = d.window->designCenter()->UndoStack();
    for (int i = 0; i < 100; ++i) {
        d.manager()->SelectControl(d.stage(), QPoint(-1, -1), QorDesigner::csmSelect, true, false);
        if (!settled(name, "the stage selected alone",
                     [&d] { return d.window->designCenter()->SelectedComps().Count() == 1; })
            || !d.selectAll())
            return {name, -1, QStringLiteral("heap_1000_buttons"), buttonsBytes};
        RealInput::key("Right", Qt::ControlModifier);
        if (!settled(name, "Ctrl+Right moving the 1000", [stack, i] { return stack->count() == i + 1; }))
            return {name, -1, QStringLiteral("heap_1000_buttons"), buttonsBytes};
    }
    untilIdleAndPainted();
    const double held = heap();
    stack->clear();
    const double history = held - heap();
    return {name, history, QStringLiteral("heap_1000_buttons"), buttonsBytes};
}

// The inspector line of a property, whatever its indent and marker.
int inspectorLine(TQorObjInspector *inspector, const QString &name)
{
    TValueListStrings *lines = inspector->Strings();
    for (int i = 0; i < lines->Count(); ++i) {
        QString label = lines->Names(i).trimmed();
        if (label.startsWith(QLatin1String("+ ")) || label.startsWith(QLatin1String("- ")))
            label = label.mid(2);
        if (label == name)
            return i;
    }
    return -1;
}

// With 1000 selected, enabled set to False through the inspector as a user
// does it: a click on the line's value, the value typed, Enter; beside
// setEnabled(false) on the 1000 and painting.
BenchRow setEnabled()
{
    const QString name = QStringLiteral("inspector.set_enabled_1000");
    auto floor = floorWindowLike(name);
    const QList<QPointer<QWidget>> floorButtons = addButtons(floor->stage, 1000, false);

    auto ours = [&]() -> double {
        Designer d(name, 1000, 1000);
        if (!d.ok || !d.selectAll())
            return -1;
        TQorObjInspector *inspector = d.window->inspector();
        const int line = inspectorLine(inspector, QStringLiteral("enabled"));
        if (line < 0) {
            note(name, QStringLiteral("set-up: the inspector shows no enabled line for the 1000"));
            return -1;
        }
        const QModelIndex value = inspector->model()->index(line, 1);
        inspector->scrollTo(value);
        if (!settled(name, "scrolling the inspector to the enabled line"))
            return -1;
        const QPoint at = inspector->visualRect(value).center();
        RealInput::moveTo(inspector->viewport(), at, 2);
        if (!settled(name, "the pointer on the enabled value"))
            return -1;

        QElapsedTimer t;
        t.start();
        RealInput::press();
        RealInput::release();
        if (timedUntilIdle(name, t, "the click opening the value's editor", [inspector] {
                QWidget *focus = QApplication::focusWidget();
                return focus && inspector->isAncestorOf(focus)
                    && (qobject_cast<QComboBox *>(focus) || qobject_cast<QLineEdit *>(focus));
            })
            < 0)
            return -1;
        RealInput::key("a", Qt::ControlModifier);
        RealInput::typeText(QStringLiteral("False"));
        RealInput::key("Return");
        return timedUntilIdle(name, t, "False and Enter disabling the 1000",
                              [&d] { return d.allButtons([](QWidget *b) { return !b->isEnabled(); }); });
    };
    auto plain = [&]() -> double {
        if (!showFloor(name, floor.get()))
            return -1;
        QElapsedTimer t;
        t.start();
        for (const QPointer<QWidget> &b : floorButtons)
            b->setEnabled(false);
        const double ms = timedUntilIdle(name, t, "disabling the plain buttons", {});
        for (const QPointer<QWidget> &b : floorButtons)
            b->setEnabled(true);
        hideFloor(floor.get());
        return ms;
    };
    return runRounds(name, QStringLiteral("set_enabled_1000_paint"), ours, plain);
}

// The twelve design actions of the assembled designer judging themselves
// again as the center tells them, its selection going between the stage
// alone and the 1000 buttons a real Ctrl+A selected (copy, cut and delete
// turn on and off each time); beside twelve plain actions set up as the
// demo sets up its own (the same shortcuts, in a menu, on a tool bar and
// on the design area), set enabled the same way. 500 changes a round.
BenchRow actionsUpdate()
{
    const QString name = QStringLiteral("actions.update_1000");
    constexpr int kChanges = 500;
    auto floor = floorWindowLike(name);
    auto *floorTools = new QToolBar(floor.get());
    auto *floorMenu = new QMenu(floor.get());
    QList<QAction *> plainActions;
    {
        const Designer like(name, 0, 1000);
        for (const TQorDesignAction *ours : like.window->designActions()) {
            auto *action = new QAction(ours->text(), floor.get());
            action->setShortcut(ours->shortcut());
            action->setShortcutContext(ours->shortcutContext());
            floorMenu->addAction(action);
            if (!ours->shortcut().isEmpty())
                floor->stage->parentWidget()->addAction(action);
            if (like.window->designToolBar()->actions().contains(ours))
                floorTools->addAction(action);
            plainActions.append(action);
        }
    }

    auto ours = [&]() -> double {
        Designer d(name, 1000, 1000);
        if (!d.ok || !d.selectAll())
            return -1;
        TQorDesignCenter *center = d.window->designCenter();
        const QList<TQorDesignAction *> actions = d.window->designActions();
        const TComponentList all = center->SelectedComps();
        const TComponentList stageOnly(QList<QObject *>{d.stage()});
        auto copyOn = [&actions] { return actions.first()->isEnabled(); };
        if (!copyOn())
            return -1;
        QElapsedTimer t;
        t.start();
        for (int i = 0; i < kChanges; ++i)
            center->SetSelectedCompsSilently(i % 2 == 0 ? stageOnly : all);
        const double ms = msSince(t);
        // The last change selected the 1000 again: copy is on.
        return copyOn() && center->SelectedComps().Count() == 1000 ? ms : -1;
    };
    auto plain = [&]() -> double {
        QElapsedTimer t;
        t.start();
        for (int i = 0; i < kChanges; ++i) {
            const bool on = i % 2 != 0;
            for (int a = 0; a < plainActions.size(); ++a)
                plainActions[a]->setEnabled(on || a == 2 || a == 3 || a >= 5);
        }
        return msSince(t);
    };
    return runRounds(name, QStringLiteral("set_enabled_12_qactions"), ours, plain);
}

// A real right click on one of 1000 selected buttons, until the default
// design popup menu shows, painted, with the selection kept (the 1000 are
// siblings); beside a plain menu of the same items popping up at the same
// place.
BenchRow menuPopup()
{
    const QString name = QStringLiteral("menu.popup_1000");
    auto floor = floorWindowLike(name);
    const QList<QPointer<QWidget>> floorButtons = addButtons(floor->stage, 1000, false);
    auto *plainMenu = new QMenu(floor.get());
    for (const char *title : {"&Edit", "&Control", "-", "&Position", "&Flip Children"}) {
        if (QLatin1String(title) == QLatin1String("-")) {
            plainMenu->addSeparator();
            continue;
        }
        auto *sub = plainMenu->addMenu(QLatin1String(title));
        for (int i = 0; i < 3; ++i)
            sub->addAction(QStringLiteral("Item %1").arg(i));
    }
    // The plain stage's menu comes when the right button goes up, as the
    // design surface's does.
    struct RightRelease final : QObject
    {
        QMenu *menu;
        explicit RightRelease(QMenu *Menu)
            : menu(Menu)
        {
        }
        bool eventFilter(QObject *, QEvent *event) override
        {
            if (event->type() == QEvent::MouseButtonRelease
                && static_cast<QMouseEvent *>(event)->button() == Qt::RightButton) {
                menu->popup(static_cast<QMouseEvent *>(event)->globalPosition().toPoint());
                return true;
            }
            return false;
        }
    } release(plainMenu);
    for (const QPointer<QWidget> &b : floorButtons)
        b->installEventFilter(&release);
    const int clicked = 555;

    // A real right click on the button, until the menu shows, painted,
    // and all is quiet.
    auto rightClick = [&name](QWidget *button, QMenu *menu, const std::function<bool()> &also) -> double {
        RealInput::moveTo(button, button->rect().center(), 2);
        if (!settled(name, "the pointer on a button"))
            return -1;
        // The menu's first showing makes its window; a user's later right
        // clicks find it made.
        RealInput::press(Qt::RightButton);
        RealInput::release(Qt::RightButton);
        if (!settled(name, "a first right click showing the menu", [menu] { return menu->isVisible(); }))
            return -1;
        menu->hide();
        if (!settled(name, "the first menu closing"))
            return -1;
        QElapsedTimer t;
        t.start();
        RealInput::press(Qt::RightButton);
        RealInput::release(Qt::RightButton);
        const double ms = timedUntilIdle(name, t, "the right click showing the menu",
                                         [menu, &also] { return menu->isVisible() && also(); });
        menu->hide();
        settled(name, "the menu closing");
        return ms;
    };
    auto ours = [&]() -> double {
        Designer d(name, 1000, 1000);
        if (!d.ok || !d.selectAll())
            return -1;
        TQorDefDesignCompPopupMenu *menu = d.window->designPopupMenu();
        QWidget *button = d.buttons.value(clicked);
        return rightClick(button, menu, [&d, menu, button] {
            return menu->PopupComponent() == button && d.window->designCenter()->SelectedComps().Count() == 1000;
        });
    };
    auto plain = [&]() -> double {
        if (!showFloor(name, floor.get()))
            return -1;
        const double ms = rightClick(floorButtons.value(clicked), plainMenu, [] { return true; });
        hideFloor(floor.get());
        return ms;
    };
    return runRounds(name, QStringLiteral("right_click_qmenu_same_items"), ours, plain);
}

const QStringList kRows{QStringLiteral("app.fill_1000"),      QStringLiteral("app.fill_2000"),
                        QStringLiteral("app.select_all_1000"), QStringLiteral("app.nudge_all_1000"),
                        QStringLiteral("app.drag_200_of_1000"), QStringLiteral("app.paste_all_1000"),
                        QStringLiteral("app.delete_all_2000"), QStringLiteral("inspector.set_enabled_1000"),
                        QStringLiteral("actions.update_1000"), QStringLiteral("menu.popup_1000"),
                        QStringLiteral("tree.generate_5000"),  QStringLiteral("tree.follow_select_all_5000"),
                        QStringLiteral("palette.switch_page_100"), QStringLiteral("undo.delete_1000"),
                        QStringLiteral("undo.nudge_1000"),     QStringLiteral("undo.history_100_nudges_1000"),
                        QStringLiteral("custom.record_1000")};

QList<BenchRow> appRows()
{
    QList<BenchRow> rows;
    if (!RealInput::open()) {
        std::fprintf(stderr, "app bench: no X display with XTest; the app rows are not measured\n");
        for (const QString &row : kRows)
            rows.append({row, -1, QStringLiteral("-"), -1});
        return rows;
    }
    Activity watch;
    activity = &watch;
    RealInput::setSettling(false);
    RealInput::releaseAll();
    // Where the pointer was: the groups after this one find it there, as
    // they would if this group had not run (whether the pointer lies over
    // their windows changes what Qt does when widgets appear under it).
    const QPoint pointerWas = RealInput::pointer();
    const std::pair<QString, std::function<BenchRow()>> all[] = {
        {kRows[0], [] { return fill(1000); }}, {kRows[1], [] { return fill(2000); }},
        {kRows[2], selectAll},                 {kRows[3], nudgeAll},
        {kRows[4], drag},                      {kRows[5], pasteAll},
        {kRows[6], deleteAll},                 {kRows[7], setEnabled},
        {kRows[8], actionsUpdate},             {kRows[9], menuPopup},
        {kRows[10], treeGenerate},             {kRows[11], treeFollowSelectAll},
        {kRows[12], paletteSwitchPage},        {kRows[13], undoDelete},
        {kRows[14], undoNudge},                {kRows[15], undoHistory},
        {kRows[16], customRecord},
    };
    for (const auto &[row, run] : all) {
        if (benchWanted(row)) {
            rows.append(run());
            RealInput::releaseAll();
        }
    }
    RealInput::moveTo(pointerWas);
    RealInput::setSettling(true);
    activity = nullptr;
    // What the pastes would cost past 1000: the paste of 2000 may cost at
    // most 2.2 times that of 1000.
    const auto fillMs = [&rows](const char *row) {
        const auto it =
            std::find_if(rows.begin(), rows.end(), [row](const BenchRow &r) { return r.name == QLatin1String(row); });
        return it == rows.end() ? -1.0 : it->ms;
    };
    if (fillMs("app.fill_1000") > 0 && fillMs("app.fill_2000") > 0)
        std::fprintf(stderr, "app bench: app.fill_2000 / app.fill_1000 = %.2f (at most 2.2 wanted)\n",
                     fillMs("app.fill_2000") / fillMs("app.fill_1000"));
    return rows;
}

const BenchRegistrar registrar("app", appRows, kRows);

} // namespace
