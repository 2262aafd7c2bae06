// SPDX-License-Identifier: MIT
#include "console/qordesignhistory.h"

#include "console/qordesignconsole.h"
#include "console/qordesignrecords_p.h"
#include "designer/qormanager.h"
#include "foundation/qorerror.h"
#include "foundation/qorlogging_p.h"
#include "foundation/qorrepaintonce_p.h"
#include "inspector/qorinspector.h"

#include <QUndoStack>
#include <QWidget>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

// A control a move step acts on: the control itself while it lives on the
// stage, else the component of its name (the design was read anew since).
struct TPlace
{
    QPointer<QWidget> widget;
    QString name;
    bool stage = false;
};
using TPlaces = std::shared_ptr<const std::vector<TPlace>>;

QWidget *resolve(const TPlace &Place, QWidget *Stage)
{
    if (!Stage)
        return nullptr;
    if (Place.stage)
        return Stage;
    if (Place.widget && Owner(Place.widget) == Stage)
        return Place.widget;
    if (Place.name.isEmpty())
        return nullptr;
    return qobject_cast<QWidget *>(FindComponent(Stage, Place.name));
}

bool samePlaces(const std::vector<TPlace> &A, const std::vector<TPlace> &B)
{
    return A.size() == B.size()
        && std::equal(A.cbegin(), A.cend(), B.cbegin(), [](const TPlace &a, const TPlace &b) {
               return a.widget == b.widget && a.stage == b.stage && a.name == b.name;
           });
}

constexpr int kNudgeId = 0x51d0;

// Controls moved or resized. A plain move of them all by one offset keeps
// the offset alone: a history of many nudges of a large selection holds one
// shared list of the controls and an offset per step.
class TMoveStep final : public QUndoCommand
{
public:
    TMoveStep(TQorDesignHistory *History, const QString &Text, TPlaces Targets, quint64 Run, bool ByKeys)
        : QUndoCommand(Text)
        , m_history(History)
        , m_targets(std::move(Targets))
        , m_run(Run)
        , m_byKeys(ByKeys)
    {
    }

    void setOffset(QPoint Offset) { m_offset = Offset; }
    void setRects(std::vector<QRect> Before, std::vector<QRect> After)
    {
        m_uniform = false;
        m_before = std::move(Before);
        m_after = std::move(After);
    }
    const TPlaces &targets() const { return m_targets; }

    int id() const override { return m_byKeys ? kNudgeId : -1; }

    bool mergeWith(const QUndoCommand *Other) override
    {
        const auto *other = static_cast<const TMoveStep *>(Other);
        if (!other->m_byKeys || other->m_run != m_run || other->m_targets != m_targets || !m_uniform
            || !other->m_uniform)
            return false;
        m_offset += other->m_offset;
        return true;
    }

    void undo() override { apply(false); }

    void redo() override
    {
        // Pushed after the controls moved: the first redo is the move itself.
        if (m_done) {
            m_done = false;
            return;
        }
        apply(true);
    }

private:
    void apply(bool Forward)
    {
        QWidget *stage = m_history->Stage();
        QList<QObject *> moved;
        const auto &targets = *m_targets;
        moved.reserve(qsizetype(targets.size()));
        for (size_t i = 0; i < targets.size(); ++i) {
            if (QWidget *w = resolve(targets[i], stage))
                moved.append(w);
        }
        m_history->BeginApplying();
        {
            const QorRepaintOnce repaint(moved);
            for (size_t i = 0; i < targets.size(); ++i) {
                QWidget *w = resolve(targets[i], stage);
                if (!w)
                    continue;
                if (targets[i].stage)
                    w->resize((Forward ? m_after[i] : m_before[i]).size());
                else if (m_uniform)
                    w->move(w->pos() + (Forward ? m_offset : -m_offset));
                else
                    w->setGeometry(Forward ? m_after[i] : m_before[i]);
            }
        }
        m_history->ApplyingDone();
    }

    TQorDesignHistory *m_history;
    TPlaces m_targets;
    quint64 m_run;
    bool m_byKeys;
    bool m_uniform = true;
    bool m_done = true;
    QPoint m_offset;
    std::vector<QRect> m_before;
    std::vector<QRect> m_after;
};

// Any other change: the design's records before and after, with the
// selection of either moment.
class TDesignStep final : public QUndoCommand
{
public:
    struct State
    {
        QByteArray records;
        QStringList selection;
        bool stageSelected = false;
    };

    TDesignStep(TQorDesignHistory *History, const QString &Text, State Before, State After)
        : QUndoCommand(Text)
        , m_history(History)
        , m_before(std::move(Before))
        , m_after(std::move(After))
    {
    }

    const QByteArray &after() const { return m_after.records; }

    void undo() override { m_history->ApplyRecords(m_before.records, m_before.selection, m_before.stageSelected); }

    void redo() override
    {
        if (m_done) {
            m_done = false;
            return;
        }
        m_history->ApplyRecords(m_after.records, m_after.selection, m_after.stageSelected);
    }

private:
    TQorDesignHistory *m_history;
    State m_before;
    State m_after;
    bool m_done = true;
};

} // namespace

TQorDesignHistory::TQorDesignHistory(TQorDesignCenter *Center)
    : QObject(Center)
    , m_center(Center)
    , m_stack(new QUndoStack(this))
{
}

TQorDesignHistory::~TQorDesignHistory() = default;

QWidget *TQorDesignHistory::Stage() const
{
    return m_center ? m_center->GetDesignStage() : nullptr;
}

QStringList TQorDesignHistory::SelectionNames(bool *StageSelected) const
{
    QStringList names;
    *StageSelected = false;
    QWidget *stage = Stage();
    for (QObject *component : m_center->SelectedComps().toList()) {
        if (component == stage)
            *StageSelected = true;
        else if (!component->objectName().isEmpty())
            names.append(component->objectName());
    }
    return names;
}

void TQorDesignHistory::BeginChange(const QString &Text)
{
    if (m_applying)
        return;
    if (m_depth++ > 0)
        return;
    m_text = Text;
    QWidget *stage = Stage();
    m_before = stage ? QorDesignRecords(stage) : QByteArray();
    m_selectionBefore = SelectionNames(&m_stageBefore);
}

void TQorDesignHistory::EndChange()
{
    if (m_applying || m_depth == 0 || --m_depth > 0)
        return;
    QWidget *stage = Stage();
    QByteArray after = stage ? QorDesignRecords(stage) : QByteArray();
    ++m_run;
    if (after != m_before && stage) {
        // Steps in a row share the records between them.
        if (const auto *last = dynamic_cast<const TDesignStep *>(m_stack->command(m_stack->index() - 1));
            last && last->after() == m_before)
            m_before = last->after();
        TDesignStep::State before{m_before, m_selectionBefore, m_stageBefore};
        TDesignStep::State now{after, {}, false};
        now.selection = SelectionNames(&now.stageSelected);
        QString text = m_text;
        text.remove(QLatin1Char('&'));
        m_stack->push(new TDesignStep(this, text, std::move(before), std::move(now)));
    }
    m_before.clear();
    m_selectionBefore.clear();
    takeBase();
}

// Where a control stands; of the stage only its size is the design's (the
// window it is, or the area it sits in, places it).
QRect TQorDesignHistory::placeOf(const QWidget *Control) const
{
    return Control == Stage() ? QRect(QPoint(), Control->size()) : Control->geometry();
}

void TQorDesignHistory::takeBase()
{
    m_base.clear();
    for (QObject *component : m_center->SelectedComps().toList()) {
        if (component->isWidgetType())
            m_base.insert(component, placeOf(static_cast<QWidget *>(component)));
    }
}

void TQorDesignHistory::SelectionChanged()
{
    ++m_run;
    takeBase();
}

void TQorDesignHistory::ControlsMoved(bool ByKeys)
{
    if (m_applying || m_depth > 0) {
        takeBase();
        return;
    }
    QWidget *stage = Stage();
    std::vector<TPlace> places;
    std::vector<QRect> before;
    std::vector<QRect> after;
    bool uniform = true;
    bool resized = false;
    QPoint offset;
    for (QObject *component : m_center->SelectedComps().toList()) {
        if (!component->isWidgetType())
            continue;
        auto *w = static_cast<QWidget *>(component);
        const auto base = m_base.constFind(component);
        if (base == m_base.constEnd())
            continue;
        const QRect now = placeOf(w);
        if (now == *base)
            continue;
        const QPoint by = now.topLeft() - base->topLeft();
        if (now.size() != base->size())
            resized = true;
        if (places.empty())
            offset = by;
        else if (by != offset)
            uniform = false;
        places.push_back({w, w == stage ? QString() : w->objectName(), w == stage});
        before.push_back(*base);
        after.push_back(now);
    }
    takeBase();
    if (places.empty())
        return;
    // The stage only ever changes its size.
    uniform = uniform && !resized && std::none_of(places.cbegin(), places.cend(), [](const TPlace &p) { return p.stage; });
    // Nudges of one selection share its list of controls.
    TPlaces targets;
    if (const auto *last = dynamic_cast<const TMoveStep *>(m_stack->command(m_stack->index() - 1));
        last && samePlaces(*last->targets(), places))
        targets = last->targets();
    else
        targets = std::make_shared<const std::vector<TPlace>>(std::move(places));
    const QString text = ByKeys ? tr("Nudge") : (resized ? tr("Resize") : tr("Move"));
    auto *step = new TMoveStep(this, text, std::move(targets), m_run, ByKeys);
    if (uniform)
        step->setOffset(offset);
    else
        step->setRects(std::move(before), std::move(after));
    m_stack->push(step);
}

void TQorDesignHistory::ApplyRecords(const QByteArray &Records, const QStringList &Selection, bool StageSelected)
{
    TQorDesignCenter *center = m_center;
    QWidget *stage = Stage();
    if (!stage)
        return;
    BeginApplying();
    QStringList skipped;
    try {
        QorReplaceDesign(center, Records, skipped, true);
    } catch (const EQorError &error) {
        // The records are the history's own: reading them fails only where
        // a class left the registry meanwhile. The design stays as it was.
        qCWarning(lcQorConsole).noquote() << "The history could not put the design back:" << error.message();
    }
    QList<QObject *> selected;
    if (StageSelected)
        selected.append(stage);
    for (const QString &name : Selection) {
        if (QObject *component = FindComponent(stage, name))
            selected.append(component);
    }
    if (selected.isEmpty())
        selected.append(stage);
    center->SetSelectedCompsSilently(TComponentList(selected));
    center->Refresh();
    ApplyingDone();
}

void TQorDesignHistory::ApplyingDone()
{
    if (TQorDesignManager *manager = m_center->DesignManager())
        manager->RefreshSizers();
    if (TVhoObjInspector *inspector = m_center->ObjInspector())
        inspector->RefreshValues();
    m_applying = false;
    ++m_run;
    takeBase();
}

void TQorDesignHistory::Clear()
{
    m_stack->clear();
    ++m_run;
    takeBase();
}
