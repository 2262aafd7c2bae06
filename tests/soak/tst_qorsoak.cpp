// SPDX-License-Identifier: MIT
// A long seeded random walk over the assembled designer (the demo's window:
// design center, design manager, inspector, component tree and palette
// linked) on a shown stage of 200 mixed widgets: selections of every kind,
// drags, resizes, nudges, deletion, insertion, the clipboard, the arrange
// commands, pages turned, designing switched off and on, and the
// application freeing widgets behind the designer's back. After every step
// the design's invariants are checked; a failure names its seed and step,
// which replay it. The walks that once found a fault stay as rows.
//
//   QORDESIGN_SOAK_STEPS  steps of the long walk (20000)
//   QORDESIGN_SOAK_SEED   its seed
//   QORDESIGN_SOAK_TRACE  1: prints every step as it runs
#include "designer/qordesigner_p.h"
#include "console/qordesignconsole.h"
#include "designer/qordesigner.h"
#include "designer/qormanager.h"
#include "designer/qorproxies_p.h"
#include "designer/qorsizers_p.h"
#include "foundation/qorclasses.h"
#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "browsing/qorclassesman.h"
#include "browsing/qorcomptreeview.h"
#include "browsing/qorpallete.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"
#include "inspector/qorinspector.h"
#include "qordemowindow.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QLineEdit>
#include <QToolButton>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSet>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include <algorithm>
#include <functional>
#include <typeinfo>

#if defined(__SANITIZE_ADDRESS__)
// Twenty thousand steps allocate far more than the address sanitizer's
// default quarantine holds, and fresh pages for every allocation cost more
// than the steps themselves: a smaller quarantine is reused sooner. Freed
// memory still waits there long enough for a step's use after free to be
// reported. The environment's options come on top of these.
extern "C" const char *__asan_default_options()
{
    return "quarantine_size_mb=32";
}
#endif

namespace {

constexpr quint32 defaultSeed = 20261126;
constexpr int defaultSteps = 20000;
constexpr int stageComponents = 200;

// The widgets the stage is filled with, cell by cell.
enum class Cell { Button, LineEdit, GroupBox, TabWidget };

int envNumber(const char *name, int fallback)
{
    bool ok = false;
    const int value = qEnvironmentVariableIntValue(name, &ok);
    return ok ? value : fallback;
}

QString nameOf(const QObject *object)
{
    if (!object)
        return QStringLiteral("(nil)");
    const QString name = object->objectName();
    return name.isEmpty() ? QString::fromLatin1(object->metaObject()->className()) : name;
}

// A widget's parents up to (not including) Top, innermost first.
QString pathOf(const QWidget *w, const QWidget *Top)
{
    QStringList names;
    for (; w && w != Top; w = w->parentWidget())
        names.append(nameOf(w) + (QorProxyOf(w) ? QString() : QStringLiteral("(no proxy)"))
                     + (Owner(w) == Top ? QString() : QStringLiteral("(owner %1)").arg(nameOf(Owner(w)))));
    return names.join(QLatin1Char('<'));
}

// Two lists with the same entries in the same order (Qt's comparison
// hands an empty list's null data to memcmp, which the undefined-behaviour
// sanitizer reports).
bool sameList(const QList<QObject *> &a, const QList<QObject *> &b)
{
    return a.size() == b.size() && std::equal(a.cbegin(), a.cend(), b.cbegin());
}

QString namesOf(const QList<QObject *> &objects)
{
    QStringList names;
    for (const QObject *object : objects)
        names.append(nameOf(object));
    return QLatin1Char('[') + names.join(QLatin1Char(',')) + QLatin1Char(']');
}

// Counts the events delivered in the application.
class EventCounter : public QObject
{
public:
    quint64 delivered = 0;

protected:
    bool eventFilter(QObject *, QEvent *) override
    {
        ++delivered;
        return false;
    }
};

// Holds back the window's paints between the steps that paint.
class PaintGate : public QObject
{
public:
    using QObject::QObject;
    bool open = true;

protected:
    bool eventFilter(QObject *, QEvent *event) override { return event->type() == QEvent::UpdateRequest && !open; }
};

constexpr int paintEvery = 64;

// One walk: the demo's window with its stage filled, designing, and the
// random steps taken on it.
class Walk
{
public:
    explicit Walk(quint32 Seed)
        : m_seed(Seed)
        , m_rng(Seed)
    {
    }

    ~Walk()
    {
        QObject::disconnect(m_insertedConnection);
        for (const QMetaObject::Connection &c : std::as_const(m_destroyedConnections))
            QObject::disconnect(c);
    }

    bool start()
    {
        qApp->installEventFilter(&m_counter);
        m_stage = m_window.stage();
        m_manager = m_window.designManager();
        m_center = m_window.designCenter();
        m_tree = qobject_cast<IQorCompTreeView *>(m_window.componentTree());
        m_stage->resize(1120, 760);
        int made = 0;
        for (int cell = 0; made < stageComponents; ++cell) {
            const QRect r(8 + (cell % 9) * 122, 8 + (cell / 9) * 82, 112, 72);
            made += int(makeCell(Cell(cell % 4), m_stage, r).size());
        }
        AdoptNamedDescendants(m_stage);
        for (QObject *component : ComponentList(m_stage))
            track(component);
        m_insertedConnection = QObject::connect(OwnerNotifier(m_stage), &TQorOwnerNotifier::ComponentInserted,
                                                [this](QObject *c) { track(c); });
        m_tree->Refresh();
        for (const QMetaObject *mo : RegisteredClasses()) {
            const QByteArray name(mo->className());
            if (name == "QPushButton" || name == "QLineEdit" || name == "QGroupBox" || name == "QLabel"
                || name == "QTabWidget" || name == "QCheckBox")
                m_paletteClasses.append(QString::fromLatin1(name));
        }
        if (!QorGuiTest::showAndActivate(&m_window, QPoint(0, 0)))
            return false;
        m_window.designAction()->setChecked(true);
        settle();
        m_paintGate = new PaintGate(&m_window);
        m_window.installEventFilter(m_paintGate);
        return m_manager->IsDesigning() && ComponentCount(m_stage) == stageComponents;
    }

    // Runs step Index; an empty answer when every check held.
    QString step(int Index)
    {
        m_index = Index;
        if (ComponentCount(m_stage) < 80)
            refill();
        shrinkGiants();
        const Op op = pick();
        m_what = QLatin1String(op.name);
        if (m_trace)
            qInfo("step %d: %s", Index, op.name);
        QElapsedTimer clock;
        clock.start();
        try {
            op.run(this);
            settle();
        } catch (const std::exception &e) {
            m_fault = QStringLiteral("%1 raised: %2").arg(QLatin1String(typeid(e).name()), QString::fromUtf8(e.what()));
        }
        if (m_trace)
            qInfo("  selected %s", qPrintable(namesOf(m_manager->SelectedComps().toList().mid(0, 12))));
        const qint64 ran = clock.nsecsElapsed();
        QString fault = m_fault;
        if (fault.isEmpty())
            fault = verify();
        m_cost[op.name] += ran;
        m_cost["(checks)"] += clock.nsecsElapsed() - ran;
        ++m_runs[op.name];
        return fault.isEmpty() ? QString() : QStringLiteral("seed %1 step %2 (%3): %4")
                                                 .arg(m_seed)
                                                 .arg(Index)
                                                 .arg(m_what, fault);
    }

    void setTrace(bool On) { m_trace = On; }

    // What the steps of each kind cost, in milliseconds, most first.
    QString costs() const
    {
        QList<std::pair<qint64, QByteArray>> rows;
        for (auto it = m_cost.cbegin(); it != m_cost.cend(); ++it)
            rows.append({it.value(), it.key()});
        std::sort(rows.begin(), rows.end(), std::greater<>());
        QStringList lines;
        for (const auto &[ns, name] : rows)
            lines.append(QStringLiteral("%1: %2 ms in %3").arg(QLatin1String(name)).arg(ns / 1000000).arg(m_runs.value(name)));
        return lines.join(QStringLiteral("; "));
    }

private:
    struct Op
    {
        const char *name;
        int weight;
        void (*run)(Walk *);
    };

    int below(int n) { return n <= 1 ? 0 : int(m_rng.bounded(quint32(n))); }
    bool chance(int percent) { return below(100) < percent; }

    // ---- The stage's widgets ----

    // Makes one cell's widgets under Parent, each named, the cell's own
    // widget first; returns them.
    QList<QWidget *> makeCell(Cell Kind, QWidget *Parent, const QRect &R)
    {
        QList<QWidget *> made;
        auto named = [this, &made](QWidget *w, const char *stem) {
            // Pasted components take the first free numbers too.
            QString name;
            do
                name = QStringLiteral("%1%2").arg(QLatin1String(stem)).arg(++m_serial);
            while (FindComponent(m_stage, name));
            w->setObjectName(name);
            made.append(w);
            return w;
        };
        switch (Kind) {
        case Cell::Button:
            named(new QPushButton(QStringLiteral("Go"), Parent), "Button")->setGeometry(R);
            break;
        case Cell::LineEdit:
            named(new QLineEdit(QStringLiteral("text"), Parent), "LineEdit")->setGeometry(R.adjusted(0, 0, 0, -40));
            break;
        case Cell::GroupBox: {
            QWidget *box = named(new QGroupBox(QStringLiteral("Box"), Parent), "GroupBox");
            box->setGeometry(R);
            named(new QPushButton(QStringLiteral("In"), box), "Button")->setGeometry(6, 20, 46, 24);
            named(new QLineEdit(box), "LineEdit")->setGeometry(58, 20, 46, 24);
            break;
        }
        case Cell::TabWidget: {
            auto *tabs = static_cast<QTabWidget *>(named(new QTabWidget(Parent), "TabWidget"));
            tabs->setGeometry(R);
            for (int page = 0; page < 2; ++page) {
                QWidget *p = named(new QWidget, "TabPage");
                tabs->addTab(p, QStringLiteral("P%1").arg(page));
                named(new QPushButton(QStringLiteral("On"), p), "Button")->setGeometry(4, 4, 50, 22);
            }
            break;
        }
        }
        return made;
    }

    // Follows a component from its insertion to its destruction, so that
    // the checks can tell a live component from a dangling address.
    void track(QObject *Component)
    {
        if (m_alive.contains(Component))
            return;
        m_alive.insert(Component);
        m_destroyedConnections.insert(Component, QObject::connect(Component, &QObject::destroyed, [this, Component] {
                                          m_alive.remove(Component);
                                          m_destroyedConnections.remove(Component);
                                      }));
    }

    // Sizing to the largest and scaling up, again and again, grow controls
    // past any screen (hundreds of thousands of pixels, which Qt's styles
    // take minutes to paint); the application shrinks such a control back
    // while it is not selected (a selected one keeps its marks in place).
    void shrinkGiants()
    {
        constexpr int giant = 4000;
        const QList<QObject *> selected = m_manager->SelectedComps().toList();
        for (QObject *c : ComponentList(m_stage)) {
            if (!c->isWidgetType() || selected.contains(c))
                continue;
            auto *w = static_cast<QWidget *>(c);
            if (w->width() > giant || w->height() > giant)
                w->resize(std::min(w->width(), giant / 4), std::min(w->height(), giant / 4));
        }
    }

    // The stage was nearly emptied: the application places new cells.
    void refill()
    {
        for (int i = 0; i < 12; ++i)
            insert();
    }

    // The application places a new cell on the stage, a group box or a
    // tab page, as it adds controls to a form being designed.
    void insert()
    {
        QWidget *parent = containerOrStage();
        const QRect r(pointIn(parent), QSize(100, 64));
        const QList<QWidget *> made = makeCell(Cell(below(4)), parent, r);
        // One report for the cell, as the design center's paste gives.
        const TQorDesignUpdateScope update(m_manager);
        for (QWidget *w : made)
            InsertComponent(m_stage, w);
        // Made under a parent that is shown already: it shows itself.
        made.first()->show();
    }

    QList<QWidget *> controls() const
    {
        QList<QWidget *> list;
        for (QObject *c : ComponentList(m_stage)) {
            if (c->isWidgetType())
                list.append(static_cast<QWidget *>(c));
        }
        return list;
    }

    QWidget *anyControl()
    {
        const QList<QWidget *> list = controls();
        return list.isEmpty() ? nullptr : list.at(below(int(list.size())));
    }

    QWidget *showingControl()
    {
        QList<QWidget *> list = controls();
        list.removeIf([this](QWidget *w) { return !m_manager->IsControlShowing(w); });
        return list.isEmpty() ? nullptr : list.at(below(int(list.size())));
    }

    // A container that can hold new controls: the stage, a group box or
    // a tab page.
    QWidget *containerOrStage()
    {
        if (chance(60))
            return m_stage;
        QList<QWidget *> list = controls();
        list.removeIf([](QWidget *w) {
            return !qobject_cast<QGroupBox *>(w) && !(w->parentWidget() && w->parentWidget()->inherits("QStackedWidget"));
        });
        return list.isEmpty() ? m_stage : list.at(below(int(list.size())));
    }

    QWidget *selectedOrAny()
    {
        const QList<QObject *> selected = m_manager->SelectedComps().toList();
        if (!selected.isEmpty() && chance(50)) {
            QObject *o = selected.at(below(int(selected.size())));
            if (o != m_stage && o->isWidgetType())
                return static_cast<QWidget *>(o);
        }
        return anyControl();
    }

    // A sizer of the selection whose control the user can see.
    TQorSizer *showingSizer()
    {
        TQorSizerList *list = m_manager->Sizers();
        QList<TQorSizer *> showing;
        for (int i = 0; i < list->Count(); ++i) {
            if (list->Sizers(i)->ControlShowing())
                showing.append(list->Sizers(i));
        }
        return showing.isEmpty() ? nullptr : showing.at(below(int(showing.size())));
    }

    QPoint pointIn(const QWidget *w) { return QPoint(1 + below(std::max(1, w->width() - 2)), 1 + below(std::max(1, w->height() - 2))); }
    QPoint delta() { return QPoint(below(41) - 20, below(41) - 20); }

    // ---- Steps ----

    void select(TControlSelectMode Mode)
    {
        QWidget *w = chance(5) ? m_stage : selectedOrAny();
        if (w)
            m_manager->SelectControl(w, QPoint(-1, -1), Mode, true, false);
    }

    // A click on a control the user can see, routed as the stage's window
    // routes it: a selected control's sizer takes the press on its body,
    // any other control's proxy gets it (Shift toggles).
    void click(bool Shift)
    {
        QWidget *w = chance(5) ? m_stage : showingControl();
        if (!w)
            return;
        const quintptr keys = Shift ? MK_SHIFT : 0;
        const QPoint local = pointIn(w);
        const qintptr at = PointToLParam(local);
        QPointer<TQorSizer> sizer = w != m_stage ? m_manager->Sizers()->SizerOf(w) : nullptr;
        QPointer<QWidget> alive = w;
        if (sizer) {
            const QPoint global = w->mapToGlobal(local);
            sizer->WmLButtonDown(keys | MK_LBUTTON, global);
            QCoreApplication::processEvents();
            if (sizer && TQorSizer::ActiveDragSizer() == sizer) {
                sizer->DragMouseMove(global, Qt::LeftButton, Qt::NoModifier);
                sizer->WMLButtonUp();
                return;
            }
        } else {
            QorSendMessage(w, WM_LBUTTONDOWN, keys | MK_LBUTTON, at);
            QCoreApplication::processEvents();
        }
        if (alive)
            QorSendMessage(w, WM_LBUTTONUP, keys, at);
    }

    // A choice in the component tree: its own items, one to three of them,
    // on pages that are showing or not.
    void treeSelect()
    {
        QTreeWidget *tree = m_window.componentTree();
        QHash<QObject *, QTreeWidgetItem *> items;
        for (QTreeWidgetItemIterator it(tree); *it; ++it)
            items.insert((*it)->data(0, Qt::UserRole).value<QObject *>(), *it);
        // Sometimes Ctrl-clicks on rows already selected only, which can
        // leave nothing selected.
        if (chance(10)) {
            const QList<QTreeWidgetItem *> chosen = tree->selectedItems();
            for (int i = 0, n = 1 + below(2); i < n && !chosen.isEmpty(); ++i)
                chosen.at(below(int(chosen.size())))->setSelected(false);
            return;
        }
        const int n = 1 + below(3);
        for (int i = 0; i < n; ++i) {
            QObject *c = chance(5) ? m_stage : anyControl();
            QTreeWidgetItem *item = items.value(c);
            if (!item)
                continue;
            if (i == 0)
                tree->setCurrentItem(item);
            else
                item->setSelected(!item->isSelected());
        }
    }

    void rubberBand()
    {
        const QPoint from(below(m_stage->width()), below(m_stage->height()));
        const QPoint to = from + QPoint(below(300) - 150, below(240) - 120);
        QorSendMessage(m_stage, WM_LBUTTONDOWN, MK_LBUTTON, PointToLParam(from));
        QCoreApplication::processEvents();
        QorSendMessage(m_stage, WM_MOUSEMOVE, MK_LBUTTON, PointToLParam(to));
        QorSendMessage(m_stage, WM_LBUTTONUP, 0, PointToLParam(to));
    }

    // A drag of a selected control's body: its sizer takes the press, the
    // moves and the release, the others follow.
    QPointer<TQorSizer> beginDrag()
    {
        QPointer<TQorSizer> sizer = showingSizer();
        if (!sizer)
            return sizer;
        QPoint global = sizer->Control()->mapToGlobal(pointIn(sizer->Control()));
        sizer->WmLButtonDown(MK_LBUTTON, global);
        const int moves = 1 + below(3);
        for (int i = 0; i < moves && sizer; ++i) {
            global += delta();
            sizer->DragMouseMove(global, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::processEvents();
        }
        m_dragEnd = global;
        return sizer;
    }

    void drag()
    {
        QPointer<TQorSizer> sizer = beginDrag();
        if (!sizer)
            return;
        sizer->DragMouseMove(m_dragEnd, Qt::LeftButton, Qt::NoModifier);
        sizer->WMLButtonUp();
    }

    // A single selection's handle, pressed, moved and let go.
    void resize()
    {
        TQorSizerList *list = m_manager->Sizers();
        QPointer<TQorSizer> sizer = list->Count() == 1 ? list->Sizers(0) : nullptr;
        if (!sizer || !sizer->isVisible())
            return;
        const QPoint local = sizer->HandleRect(1 + below(8)).center();
        QPoint global = sizer->mapToGlobal(local);
        auto send = [&](QEvent::Type type, Qt::MouseButtons buttons) {
            QMouseEvent event(type, sizer->mapFromGlobal(global), global, Qt::LeftButton, buttons, Qt::NoModifier);
            QCoreApplication::sendEvent(sizer, &event);
        };
        send(QEvent::MouseButtonPress, Qt::LeftButton);
        const int moves = 1 + below(3);
        for (int i = 0; i < moves && sizer; ++i) {
            global += delta();
            send(QEvent::MouseMove, Qt::LeftButton);
            QCoreApplication::processEvents();
        }
        if (sizer)
            send(QEvent::MouseButtonRelease, Qt::NoButton);
    }

    void keys(int Key, Qt::KeyboardModifiers Modifiers)
    {
        QPointer<TQorSizer> sizer = m_manager->Sizers()->KeySizer();
        if (!sizer)
            return;
        sizer->KeyDown(Key, Modifiers);
        if (sizer)
            sizer->KeyUp(Key, Modifiers);
    }

    void nudge()
    {
        static constexpr int arrows[] = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down};
        keys(arrows[below(4)], Qt::ControlModifier);
    }

    void deleteByKey()
    {
        if (chance(25)) {
            // Shift+Delete deletes nothing.
            const int before = ComponentCount(m_stage);
            keys(Qt::Key_Delete, Qt::ShiftModifier);
            settle();
            if (ComponentCount(m_stage) != before)
                m_fault = QStringLiteral("Shift+Delete deleted %1 components").arg(before - ComponentCount(m_stage));
            return;
        }
        keys(Qt::Key_Delete, Qt::NoModifier);
    }

    // A class chosen on the palette and a click where it goes.
    void paletteInsert()
    {
        if (m_paletteClasses.isEmpty())
            return;
        TQorCompPalleteToolBar *palette = m_window.paletteBar();
        const QString cls = m_paletteClasses.at(below(int(m_paletteClasses.size())));
        TQorDesignClassList *classes = m_window.classList();
        if (const TQorDesignClassInformation *info = classes->ClassInfos(classes->ClassIndex(GetClass(cls))))
            palette->SetPallete(info->Pallete);
        if (auto *button = palette->findChild<QToolButton *>(cls + QLatin1String("Button")))
            button->setChecked(true);
        QWidget *target = chance(50) ? m_stage : showingControl();
        if (target) {
            const qintptr at = PointToLParam(pointIn(target));
            QorSendMessage(target, WM_LBUTTONDOWN, MK_LBUTTON, at);
            QCoreApplication::processEvents();
            if (QPointer<QWidget> alive = target)
                QorSendMessage(target, WM_LBUTTONUP, 0, at);
        }
        // A click on a control that takes no children inserts nothing; the
        // user goes back to the arrow.
        palette->DeselectComps();
    }

    // Pasted only while the stage holds less than half as much again as
    // it started with. A copy of the stage itself brings all of it along,
    // as one pasted form whose own components the stage does not count:
    // its widgets are counted too, or pastes of such copies would double
    // the stage each time.
    void paste()
    {
        if (ComponentCount(m_stage) < stageComponents * 3 / 2
            && m_stage->findChildren<QWidget *>().size() < stageComponents * 12)
            m_center->PasteComps();
    }

    void align()
    {
        const auto h = TQorDesignAlignmentStyle(below(6));
        const auto v = TQorDesignAlignmentStyle(below(6));
        try {
            m_manager->SetSelCtrlDesignAligment(h, v);
        } catch (const EZeroDivide &) {
            // Spreading a single control: refused, as it should be.
        }
    }

    bool stageSelected() const { return m_manager->SelectedComps().IndexOf(m_stage) >= 0; }

    void size()
    {
        if (stageSelected())
            return;
        m_manager->SetSelCtrlDesignSize(TQorDesignSizeStyle(below(4)), TQorDesignSizeStyle(below(4)), 10 + below(140),
                                        10 + below(90));
    }

    void scale()
    {
        if (chance(10)) {
            m_manager->ScaleControls(90 + below(21), ssAll);
        } else if (!stageSelected()) {
            m_manager->ScaleControls(80 + below(46), ssSelected);
        }
    }

    void flip() { m_manager->FlipChildren(chance(20) ? fcAll : fcSelected); }

    void turnPage()
    {
        QList<QWidget *> list = controls();
        list.removeIf([](QWidget *w) { return !qobject_cast<QTabWidget *>(w); });
        if (list.isEmpty())
            return;
        auto *tabs = static_cast<QTabWidget *>(list.at(below(int(list.size()))));
        if (tabs->count() > 1)
            tabs->setCurrentIndex((tabs->currentIndex() + 1) % tabs->count());
    }

    // Designing off (sometimes in the middle of a drag) and on again: every
    // widget keeps the geometry it had.
    void designOffAndOn()
    {
        QHash<QWidget *, QRect> before;
        QPointer<TQorSizer> dragging;
        if (chance(30)) {
            dragging = beginDrag();
            settle();
        }
        for (QWidget *w : controls())
            before.insert(w, w->geometry());
        m_window.designAction()->setChecked(false);
        settle();
        if (dragging) {
            // The button goes up after designing ended.
            dragging->DragMouseMove(m_dragEnd, Qt::LeftButton, Qt::NoModifier);
            if (dragging)
                dragging->WMLButtonUp();
            settle();
        }
        m_fault = verifyOff(before);
        if (!m_fault.isEmpty())
            return;
        if (chance(50)) {
            // The application frees a widget meanwhile (a tab widget shows
            // its next page when the current one goes).
            freeOne(chance(50));
            settle();
            before.clear();
            for (QWidget *w : controls())
                before.insert(w, w->geometry());
        }
        m_window.designAction()->setChecked(true);
        settle();
        for (auto it = before.cbegin(); it != before.cend(); ++it) {
            if (m_alive.contains(it.key()) && it.key()->geometry() != it.value()) {
                m_fault = QStringLiteral("designing on moved %1").arg(nameOf(it.key()));
                return;
            }
        }
    }

    // The application frees a widget, selected or not.
    void freeOne(bool Later)
    {
        QWidget *w = selectedOrAny();
        if (!w)
            return;
        if (m_trace)
            qInfo("  frees %s (%s) of the selection %s", qPrintable(nameOf(w)), Later ? "later" : "now",
                  qPrintable(namesOf(m_manager->SelectedComps().toList())));
        if (Later)
            w->deleteLater();
        else
            delete w;
    }

    static const QList<Op> &ops()
    {
        static const QList<Op> list = {
            {"select", 10, [](Walk *w) { w->select(csmSelect); }},
            {"add", 10, [](Walk *w) { w->select(csmAdd); }},
            {"toggle", 6, [](Walk *w) { w->select(csmToggle); }},
            {"remove", 3, [](Walk *w) { w->select(csmDel); }},
            {"clear", 2, [](Walk *w) { w->select(csmClear); }},
            {"click", 6, [](Walk *w) { w->click(false); }},
            {"shift-click", 6, [](Walk *w) { w->click(true); }},
            {"tree", 4, [](Walk *w) { w->treeSelect(); }},
            {"select all", 1, [](Walk *w) { w->m_center->SelectAllControls(); }},
            {"rubber band", 2, [](Walk *w) { w->rubberBand(); }},
            {"drag", 8, [](Walk *w) { w->drag(); }},
            {"resize", 6, [](Walk *w) { w->resize(); }},
            {"nudge", 6, [](Walk *w) { w->nudge(); }},
            {"delete", 1, [](Walk *w) { w->m_center->DelSelCtrls(); }},
            {"delete key", 1, [](Walk *w) { w->deleteByKey(); }},
            {"insert", 2, [](Walk *w) { w->insert(); }},
            {"palette", 1, [](Walk *w) { w->paletteInsert(); }},
            {"copy", 2, [](Walk *w) { w->m_center->CopySelComps(); }},
            {"cut", 1, [](Walk *w) { w->m_center->CutSelComps(); }},
            {"paste", 2, [](Walk *w) { w->paste(); }},
            {"align", 2, [](Walk *w) { w->align(); }},
            {"size", 2, [](Walk *w) { w->size(); }},
            {"scale", 1, [](Walk *w) { w->scale(); }},
            {"flip", 1, [](Walk *w) { w->flip(); }},
            {"front", 1, [](Walk *w) { w->m_manager->BringSelCtrlsToFront(); }},
            {"back", 1, [](Walk *w) { w->m_manager->SendSelCtrlsToBack(); }},
            {"page", 4, [](Walk *w) { w->turnPage(); }},
            {"design off and on", 1, [](Walk *w) { w->designOffAndOn(); }},
            {"free", 2, [](Walk *w) { w->freeOne(false); }},
            {"free later", 2, [](Walk *w) { w->freeOne(true); }},
        };
        return list;
    }

    Op pick()
    {
        static const int total = [] {
            int sum = 0;
            for (const Op &op : ops())
                sum += op.weight;
            return sum;
        }();
        int at = below(total);
        for (const Op &op : ops()) {
            if (at < op.weight)
                return op;
            at -= op.weight;
        }
        return ops().first();
    }

    // Lets the posted work of a step run: messages, reports, deferred
    // deletions. The window paints every few steps only: what changed
    // meanwhile is painted together (painting every step would cost more
    // than the steps themselves).
    void settle()
    {
        if (m_index % paintEvery == 0 && m_paintGate) {
            m_paintGate->open = true;
            QCoreApplication::postEvent(&m_window, new QEvent(QEvent::UpdateRequest), Qt::LowEventPriority);
        }
        // A report can ask for work that reports again (a move report
        // climbs the parents one posted message at a time, a page laid out
        // anew moves its controls): rounds run until one delivers nothing.
        for (int round = 0; round < 100; ++round) {
            const quint64 before = m_counter.delivered;
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            if (m_counter.delivered == before)
                break;
        }
        if (m_paintGate)
            m_paintGate->open = false;
    }

    // ---- Checks ----

    // The owner's list: live components, each once, and every live
    // component the stage owns.
    QString verifyOwned(QSet<const QObject *> &Owned) const
    {
        const QList<QObject *> owned = ComponentList(m_stage);
        Owned.reserve(owned.size());
        for (QObject *c : owned) {
            if (!m_alive.contains(c))
                return QStringLiteral("the stage lists a component that was destroyed");
            if (Owned.contains(c))
                return QStringLiteral("the stage lists %1 twice").arg(nameOf(c));
            Owned.insert(c);
        }
        for (const QObject *c : m_alive) {
            if (Owner(c) == m_stage && !Owned.contains(c))
                return QStringLiteral("%1 is owned by the stage but not in its list").arg(nameOf(c));
        }
        return {};
    }

    QString verifyOff(const QHash<QWidget *, QRect> &Before) const
    {
        if (m_manager->IsDesigning())
            return QStringLiteral("designing did not end");
        if (m_manager->Sizers()->Count() != 0)
            return QStringLiteral("%1 sizers stay after designing ended").arg(m_manager->Sizers()->Count());
        if (m_manager->StageSizer() && m_manager->StageSizer()->Control())
            return QStringLiteral("the stage sizer stays bound after designing ended");
        for (auto it = Before.cbegin(); it != Before.cend(); ++it) {
            if (m_alive.contains(it.key()) && it.key()->geometry() != it.value())
                return QStringLiteral("designing off left %1 at %2,%3 %4x%5 instead of %6,%7 %8x%9")
                    .arg(nameOf(it.key()))
                    .arg(it.key()->x())
                    .arg(it.key()->y())
                    .arg(it.key()->width())
                    .arg(it.key()->height())
                    .arg(it.value().x())
                    .arg(it.value().y())
                    .arg(it.value().width())
                    .arg(it.value().height());
        }
        return {};
    }

    QString verify() const
    {
        QSet<const QObject *> owned;
        if (QString fault = verifyOwned(owned); !fault.isEmpty())
            return fault;
        if (!m_manager->IsDesigning())
            return QStringLiteral("designing is off");

        // The selection: live controls of the stage (or the stage alone),
        // the same in the manager, the center, the inspector and the tree.
        const QList<QObject *> selected = m_manager->SelectedComps().toList();
        QSet<const QObject *> selectedSet;
        for (QObject *c : selected) {
            if (c != m_stage && !owned.contains(c))
                return QStringLiteral("the selection holds %1, which is no live component of the stage")
                    .arg(m_alive.contains(c) ? nameOf(c) : QStringLiteral("a freed component"));
            if (selectedSet.contains(c))
                return QStringLiteral("the selection holds %1 twice").arg(nameOf(c));
            selectedSet.insert(c);
        }
        const QList<QObject *> center = m_center->SelectedComps().toList();
        if (!sameList(center, selected))
            return QStringLiteral("the manager selects %1, the center %2").arg(namesOf(selected), namesOf(center));
        const QList<QObject *> inspected = m_window.inspector()->GetActiveComponents();
        if (!sameList(inspected, selected))
            return QStringLiteral("the manager selects %1, the inspector shows %2")
                .arg(namesOf(selected), namesOf(inspected));
        const QList<QObject *> inTree = m_tree->SelectedComps().toList();
        if (QSet<const QObject *>(inTree.cbegin(), inTree.cend()) != selectedSet || inTree.size() != selected.size())
        {
            QTreeWidget *tree = m_window.componentTree();
            int rows = 0, found = 0, sel = 0;
            for (QTreeWidgetItemIterator it(tree); *it; ++it) {
                ++rows;
                if ((*it)->isSelected()) ++sel;
                if (selected.contains((*it)->data(0, Qt::UserRole).value<QObject *>())) ++found;
            }
            QSet<QObject*> inT; for (QTreeWidgetItemIterator it(tree); *it; ++it) inT.insert((*it)->data(0, Qt::UserRole).value<QObject *>());
            QStringList extra; for (QObject *o : ComponentList(m_stage)) if (!inT.contains(o) && extra.size() < 30) extra << nameOf(o) + QLatin1Char('/') + QLatin1String(o->metaObject()->className()) + QLatin1Char('<') + nameOf(o->parent());
            qInfo("%s", qPrintable(extra.join(QLatin1Char(' '))));
            return QStringLiteral("the manager selects %1, the tree %2 (rows %3 found %4 selected rows %5 owned %6)").arg(namesOf(selected), namesOf(inTree)).arg(rows).arg(found).arg(sel).arg(owned.size());
        }

        // One sizer per selected control, none for any other.
        TQorSizerList *sizers = m_manager->Sizers();
        QSet<const QWidget *> bound;
        for (int i = 0; i < sizers->Count(); ++i) {
            TQorSizer *sizer = sizers->Sizers(i);
            QWidget *control = sizer->Control();
            if (!control)
                return QStringLiteral("a sizer whose control went stays in the list");
            if (!owned.contains(control))
                return QStringLiteral("a sizer outlives its control");
            if (bound.contains(control))
                return QStringLiteral("%1 has two sizers").arg(nameOf(control));
            if (!selectedSet.contains(control))
                return QStringLiteral("%1 has a sizer but is not selected").arg(nameOf(control));
            if (sizers->SizerOf(control) != sizer)
                return QStringLiteral("the sizer of %1 is not found by its control").arg(nameOf(control));
            bound.insert(control);
            const QRect want(control->mapTo(m_stage, QPoint(0, 0)) - QPoint(2, 2), control->size() + QSize(4, 4));
            if (!sizer->IsMoving() && sizer->BoundsRect() != want)
                return QStringLiteral("the sizer of %1 lies at %2,%3 %4x%5, its control at %6,%7 %8x%9")
                    .arg(pathOf(control, m_stage))
                    .arg(sizer->BoundsRect().x())
                    .arg(sizer->BoundsRect().y())
                    .arg(sizer->BoundsRect().width())
                    .arg(sizer->BoundsRect().height())
                    .arg(want.x())
                    .arg(want.y())
                    .arg(want.width())
                    .arg(want.height());
            const bool shows = sizers->Count() == 1 && sizer->ControlShowing() && !sizer->IsInlineEditing();
            if (sizer->isVisible() != shows)
                return QStringLiteral("the sizer of %1 is %2").arg(nameOf(control),
                                                                    shows ? QStringLiteral("hidden")
                                                                          : QStringLiteral("shown"));
        }
        for (const QObject *c : selected) {
            if (c != m_stage && !bound.contains(static_cast<const QWidget *>(c)))
                return QStringLiteral("%1 is selected without a sizer").arg(nameOf(c));
        }
        const bool stageBound = m_manager->StageSizer() && m_manager->StageSizer()->Control() == m_stage;
        if (stageBound != selectedSet.contains(m_stage))
            return QStringLiteral("the stage sizer is %1 while the selection is %2")
                .arg(stageBound ? QStringLiteral("bound") : QStringLiteral("unbound"), namesOf(selected));
        // Sizers left bound outside the list: under the stage and under
        // the overlay that keeps the hidden ones.
        QList<TQorSizer *> around = m_stage->findChildren<TQorSizer *>(Qt::FindDirectChildrenOnly);
        if (QWidget *overlay = sizers->Overlay())
            around += overlay->findChildren<TQorSizer *>(Qt::FindDirectChildrenOnly);
        for (TQorSizer *sizer : std::as_const(around)) {
            if (sizer->Control() && sizers->SizerOf(sizer->Control()) != sizer)
                return QStringLiteral("a sizer bound to %1 is not in the list").arg(nameOf(sizer->Control()));
        }
        return {};
    }

    QorDemoWindow m_window{nullptr, QorDemoWindow::StartStage::Empty};
    QWidget *m_stage = nullptr;
    TQorDesignManager *m_manager = nullptr;
    TQorDesignCenter *m_center = nullptr;
    IQorCompTreeView *m_tree = nullptr;
    quint32 m_seed;
    QRandomGenerator m_rng;
    int m_serial = 0;
    bool m_trace = false;
    QString m_what;
    QString m_fault;
    QPoint m_dragEnd;
    QStringList m_paletteClasses;
    QPointer<PaintGate> m_paintGate;
    EventCounter m_counter;
    int m_index = 0;
    QSet<const QObject *> m_alive;
    QHash<QByteArray, qint64> m_cost;
    QHash<QByteArray, int> m_runs;
    QHash<const QObject *, QMetaObject::Connection> m_destroyedConnections;
    QMetaObject::Connection m_insertedConnection;
};

// The demo's window with its sample stage (and a button on the tab page
// that is not showing), shown and designing: the faults the walks found,
// each replayed on its own.
struct SampleDesigner
{
    QorDemoWindow window;
    QWidget *stage = nullptr;
    TQorDesignManager *manager = nullptr;
    TQorDesignCenter *center = nullptr;
    QPushButton *onHiddenPage = nullptr;

    bool start()
    {
        stage = window.stage();
        manager = window.designManager();
        center = window.designCenter();
        auto *tabs = stage->findChild<QTabWidget *>(QStringLiteral("TabWidget1"));
        if (!tabs)
            return false;
        onHiddenPage = new QPushButton(QStringLiteral("Later"), tabs->widget(1));
        onHiddenPage->setObjectName(QStringLiteral("Button9"));
        onHiddenPage->setGeometry(16, 16, 140, 30);
        InsertComponent(stage, onHiddenPage);
        tree()->Refresh();
        if (!QorGuiTest::showAndActivate(&window, QPoint(0, 0)))
            return false;
        window.designAction()->setChecked(true);
        return manager->IsDesigning() && !onHiddenPage->isVisible();
    }

    template<class T = QWidget>
    T *named(const char *name) const
    {
        return stage->findChild<T *>(QLatin1String(name));
    }
    IQorCompTreeView *tree() const { return qobject_cast<IQorCompTreeView *>(window.componentTree()); }
    QTreeWidgetItem *row(const QString &name) const
    {
        return window.componentTree()->findItems(name, Qt::MatchExactly | Qt::MatchRecursive).value(0);
    }
    void select(QWidget *w) { manager->SelectControl(w, QPoint(-1, -1), csmSelect, true, false); }
    // Where the sizer of a control lies: two pixels around it, in the
    // stage's coordinates.
    QRect around(const QWidget *w) const
    {
        return QRect(w->mapTo(stage, QPoint(0, 0)) - QPoint(2, 2), w->size() + QSize(4, 4));
    }
    QRect sizerBounds(const QWidget *w) const
    {
        const TQorSizer *sizer = manager->Sizers()->SizerOf(w);
        return sizer ? sizer->BoundsRect() : QRect();
    }
};

enum class Arrange { Size, Scale, FlipAll };

} // namespace

Q_DECLARE_METATYPE(Arrange)

class tst_QorSoak : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

private Q_SLOTS:
    // ---- Edge cases ----

    // A drag of a selected control's body with the mouse while a control on
    // a tab page that is not showing is selected too: a control of another
    // parent leaves the selection (and its sizer goes with it), a sibling
    // follows the drag and keeps its sizer; the manager and the center
    // agree on what is left.
    void aDragKeepsOneSizerPerSelectedControlWithOneOnAHiddenPage_data()
    {
        QTest::addColumn<QString>("dragged");
        QTest::addColumn<QString>("hidden");
        QTest::addColumn<bool>("hiddenFirst");
        QTest::addColumn<bool>("siblings");
        QTest::newRow("a line edit, then a button on the hidden page")
            << QStringLiteral("LineEdit1") << QStringLiteral("Button9") << false << false;
        QTest::newRow("a button on the hidden page, then a line edit")
            << QStringLiteral("LineEdit1") << QStringLiteral("Button9") << true << false;
        QTest::newRow("a button on the current page, then one on the hidden page")
            << QStringLiteral("Button2") << QStringLiteral("Button9") << false << false;
        QTest::newRow("a button on the hidden page, then one on the current page")
            << QStringLiteral("Button2") << QStringLiteral("Button9") << true << false;
        QTest::newRow("the current page, then the hidden page")
            << QStringLiteral("TabPage1") << QStringLiteral("TabPage2") << false << true;
        QTest::newRow("the hidden page, then the current page")
            << QStringLiteral("TabPage1") << QStringLiteral("TabPage2") << true << true;
    }
    void aDragKeepsOneSizerPerSelectedControlWithOneOnAHiddenPage()
    {
        QFETCH(QString, dragged);
        QFETCH(QString, hidden);
        QFETCH(bool, hiddenFirst);
        QFETCH(bool, siblings);
        QorDemoWindow window;
        QWidget *stage = window.stage();
        auto *tabs = stage->findChild<QTabWidget *>(QStringLiteral("TabWidget1"));
        QVERIFY(tabs);
        auto *onHiddenPage = new QPushButton(QStringLiteral("Later"), tabs->widget(1));
        onHiddenPage->setObjectName(QStringLiteral("Button9"));
        onHiddenPage->setGeometry(16, 16, 140, 30);
        InsertComponent(stage, onHiddenPage);
        qobject_cast<IQorCompTreeView *>(window.componentTree())->Refresh();
        QVERIFY(QorGuiTest::showAndActivate(&window, QPoint(0, 0)));
        window.designAction()->setChecked(true);
        TQorDesignManager *manager = window.designManager();
        auto *moved = stage->findChild<QWidget *>(dragged);
        auto *away = stage->findChild<QWidget *>(hidden);
        QVERIFY(moved && away);
        QVERIFY(moved->isVisible() && !away->isVisible());

        // Both chosen in the tree, the second with Ctrl.
        QTreeWidget *tree = window.componentTree();
        auto row = [tree](const QString &name) {
            QTreeWidgetItem *item = tree->findItems(name, Qt::MatchExactly | Qt::MatchRecursive).value(0);
            tree->scrollToItem(item);
            return tree->visualItemRect(item).center();
        };
        RealInput::click(tree->viewport(), row(hiddenFirst ? hidden : dragged));
        QTRY_COMPARE(manager->SelectedComps().Count(), 1);
        RealInput::click(tree->viewport(), row(hiddenFirst ? dragged : hidden), Qt::LeftButton, Qt::ControlModifier);
        QTRY_COMPARE(manager->SelectedComps().Count(), 2);
        QVERIFY(manager->Sizers()->SizerOf(away));

        const QRect was = moved->geometry();
        const QPoint from(moved->width() - 8, 8);
        RealInput::drag(moved, from, from + QPoint(12, 6), 4);
        QTRY_COMPARE(moved->geometry(), was.translated(12, 6));
        const QList<QObject *> want = siblings ? QList<QObject *>{hiddenFirst ? away : moved, hiddenFirst ? moved : away}
                                               : QList<QObject *>{moved};
        QTRY_COMPARE(manager->SelectedComps().toList(), want);
        QCOMPARE(window.designCenter()->SelectedComps().toList(), want);
        QCOMPARE(manager->Sizers()->Count(), want.size());
        for (QObject *c : want) {
            TQorSizer *sizer = manager->Sizers()->SizerOf(static_cast<QWidget *>(c));
            QVERIFY2(sizer && sizer->Control() == c, qPrintable(c->objectName()));
        }
        if (siblings)
            QTRY_COMPARE(away->geometry().topLeft(), was.topLeft() + QPoint(12, 6));
    }

    void aControlTheApplicationFreesLeavesTheTreesSelection()
    {
        SampleDesigner d;
        QVERIFY(d.start());
        auto *line = d.named("LineEdit1");
        d.select(line);
        QCOMPARE(d.tree()->SelectedComps().toList(), QList<QObject *>{line});
        delete line;
        // Once the other lists let go of it...
        QCOMPARE(d.manager->SelectedComps().toList(), QList<QObject *>());
        QCOMPARE(d.center->SelectedComps().toList(), QList<QObject *>());
        QTRY_COMPARE(d.window.inspector()->GetActiveComponents(), QList<QObject *>());
        // ...the tree's row stays until the tree is rebuilt, but answers
        // nothing.
        QCOMPARE(d.tree()->SelectedComps().toList(), QList<QObject *>());
    }

    void aDeletionThroughTheCenterLeavesTheStageSelectedByItsSizer()
    {
        SampleDesigner d;
        QVERIFY(d.start());
        d.select(d.named("LineEdit1"));
        QCOMPARE(d.manager->StageSizer()->Control(), nullptr);
        d.center->DelSelCtrls();
        QCOMPARE(d.manager->SelectedComps().toList(), QList<QObject *>{d.stage});
        QCOMPARE(d.center->SelectedComps().toList(), QList<QObject *>{d.stage});
        QCOMPARE(d.manager->StageSizer()->Control(), d.stage);
        QCOMPARE(d.manager->Sizers()->Count(), 0);
    }

    void aControlPlacedWhileDesigningWasOffIsInTheTreeWhenItStarts()
    {
        SampleDesigner d;
        QVERIFY(d.start());
        d.window.designAction()->setChecked(false);
        auto *later = new QPushButton(QStringLiteral("Later"), d.stage);
        later->setObjectName(QStringLiteral("LateButton"));
        later->setGeometry(400, 400, 80, 24);
        later->show();
        QVERIFY(!d.row(QStringLiteral("LateButton")));
        d.window.designAction()->setChecked(true);
        QCOMPARE(Owner(later), d.stage);
        QVERIFY(d.row(QStringLiteral("LateButton")));
        // And it can be chosen there.
        d.window.componentTree()->setCurrentItem(d.row(QStringLiteral("LateButton")));
        QCOMPARE(d.manager->SelectedComps().toList(), QList<QObject *>{later});
    }

    void aSelectedControlMovedAlongOrOnAPageKeepsItsSizerAroundIt_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<QString>("moved");
        QTest::newRow("a button carried by its group box") << QStringLiteral("Button1") << QStringLiteral("GroupBox1");
        QTest::newRow("a button on a tab page") << QStringLiteral("Button2") << QStringLiteral("Button2");
    }
    void aSelectedControlMovedAlongOrOnAPageKeepsItsSizerAroundIt()
    {
        QFETCH(QString, control);
        QFETCH(QString, moved);
        SampleDesigner d;
        QVERIFY(d.start());
        auto *selected = d.named(qPrintable(control));
        auto *mover = d.named(qPrintable(moved));
        d.select(selected);
        QTRY_COMPARE(d.sizerBounds(selected), d.around(selected));
        const QRect was = d.around(selected);
        // The application moves it (or its container).
        mover->move(mover->pos() + QPoint(10, 7));
        QCOMPARE(d.around(selected), was.translated(10, 7));
        QTRY_COMPARE(d.sizerBounds(selected), d.around(selected));
    }

    void arrangingAControlOnAHiddenPageKeepsItsSizerAroundIt_data()
    {
        QTest::addColumn<Arrange>("how");
        QTest::newRow("same size") << Arrange::Size;
        QTest::newRow("scaled") << Arrange::Scale;
        QTest::newRow("the stage flipped") << Arrange::FlipAll;
    }
    void arrangingAControlOnAHiddenPageKeepsItsSizerAroundIt()
    {
        QFETCH(Arrange, how);
        SampleDesigner d;
        QVERIFY(d.start());
        QWidget *button = d.onHiddenPage;
        d.select(button);
        QCOMPARE(d.sizerBounds(button), d.around(button));
        const QRect was = button->geometry();
        switch (how) {
        case Arrange::Size: d.manager->SetSelCtrlDesignSize(ssCustom, ssCustom, 60, 40); break;
        case Arrange::Scale: d.manager->ScaleControls(150, ssSelected); break;
        case Arrange::FlipAll: d.manager->FlipChildren(fcAll); break;
        }
        QVERIFY(button->geometry() != was);
        // The button does not show, and hears of its bounds only later.
        QVERIFY(!button->isVisible());
        QCOMPARE(d.sizerBounds(button), d.around(button));
    }

    void aSpreadThatFailsAfterTheAlignmentMovedAControlLeavesItsSizerAroundIt()
    {
        SampleDesigner d;
        QVERIFY(d.start());
        QWidget *button = d.onHiddenPage;
        d.select(button);
        const QPoint was = button->pos();
        // Centred across, then spread down: one control cannot be spread.
        QVERIFY_THROWS_EXCEPTION(EZeroDivide, d.manager->SetSelCtrlDesignAligment(asCenterInWindow, asSpaceEqual));
        QVERIFY(button->pos() != was);
        QCOMPARE(d.sizerBounds(button), d.around(button));
    }

    void aFreedControlBesideTheStageChosenInTheTreeLeavesOneSelection()
    {
        SampleDesigner d;
        QVERIFY(d.start());
        QTreeWidget *tree = d.window.componentTree();
        auto *line = d.named("LineEdit1");
        auto *check = d.named("CheckBox1");
        tree->setCurrentItem(d.row(QStringLiteral("Stage")));
        d.row(QStringLiteral("LineEdit1"))->setSelected(true);
        d.row(QStringLiteral("CheckBox1"))->setSelected(true);
        QCOMPARE(d.manager->SelectedComps().Count(), 3);
        QCOMPARE(d.center->SelectedComps().toList(), d.manager->SelectedComps().toList());
        delete line;
        QCOMPARE(d.manager->SelectedComps().toList(), QList<QObject *>{check});
        QCOMPARE(d.center->SelectedComps().toList(), QList<QObject *>{check});
        QCOMPARE(d.tree()->SelectedComps().toList(), QList<QObject *>{check});
        QCOMPARE(d.manager->StageSizer()->Control(), nullptr);
    }

    void lettingGoOfTheLastChosenRowInTheTreeLeavesNoSizer()
    {
        SampleDesigner d;
        QVERIFY(d.start());
        QTreeWidget *tree = d.window.componentTree();
        auto *line = d.named("LineEdit1");
        tree->setCurrentItem(d.row(QStringLiteral("LineEdit1")));
        QCOMPARE(d.manager->SelectedComps().toList(), QList<QObject *>{line});
        QVERIFY(d.manager->Sizers()->SizerOf(line));
        d.row(QStringLiteral("LineEdit1"))->setSelected(false);
        QCOMPARE(d.manager->SelectedComps().toList(), QList<QObject *>());
        QCOMPARE(d.center->SelectedComps().toList(), QList<QObject *>());
        QCOMPARE(d.manager->Sizers()->Count(), 0);
        QCOMPARE(d.manager->StageSizer()->Control(), nullptr);
    }

    // ---- The long walk ----

    void aRandomWalkKeepsTheDesignConsistent_data()
    {
        QTest::addColumn<quint32>("seed");
        QTest::addColumn<int>("steps");
        QTest::newRow("the long walk") << quint32(envNumber("QORDESIGN_SOAK_SEED", int(defaultSeed)))
                                       << envNumber("QORDESIGN_SOAK_STEPS", defaultSteps);
    }
    void aRandomWalkKeepsTheDesignConsistent()
    {
        QFETCH(quint32, seed);
        QFETCH(int, steps);
        Walk walk(seed);
        walk.setTrace(qEnvironmentVariableIntValue("QORDESIGN_SOAK_TRACE") != 0);
        QVERIFY(walk.start());
        QElapsedTimer clock;
        clock.start();
        for (int i = 1; i <= steps; ++i) {
            const QString fault = walk.step(i);
            if (!fault.isEmpty())
                QFAIL(qPrintable(fault));
            if (i % 2500 == 0)
                qInfo("seed %u: %d steps in %.1f s", seed, i, double(clock.elapsed()) / 1000.0);
        }
        qInfo("seed %u: %d steps in %.1f s", seed, steps, double(clock.elapsed()) / 1000.0);
        qInfo("%s", qPrintable(walk.costs()));
    }
};

// Qt Test stops a test function after five minutes; the long walk on a
// busy machine may come near that, so the suite's own limit per test
// executable (CTest's) decides instead, unless the environment sets one.
int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QTEST_FUNCTION_TIMEOUT"))
        qputenv("QTEST_FUNCTION_TIMEOUT", "900000");
    QApplication app(argc, argv);
    QTEST_SET_MAIN_SOURCE_PATH
    tst_QorSoak test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_qorsoak.moc"
