// SPDX-License-Identifier: MIT
#include "console/qordesignhistory.h"

#include "console/qordesignconsole.h"
#include "console/qordesignrecords_p.h"
#include "designer/qormanager.h"
#include "designer/qorsizers.h"
#include "designer/qorsizers_p.h"
#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "foundation/qorlogging_p.h"
#include "foundation/qorrepaintonce_p.h"

#include <QHash>
#include <QUndoStack>
#include <QWidget>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace {

// A control a move step acts on: the control itself while it lives on the
// stage, else the component of its name (the design was read anew since).
struct TPlace
{
    QPointer<QWidget> widget;
    QString name;
    bool stage = false;
    // A component that is no widget (kept by property steps).
    QPointer<QObject> object;
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
        const auto &targets = *m_targets;
        std::vector<QWidget *> found(targets.size());
        QList<QObject *> moved;
        moved.reserve(qsizetype(targets.size()));
        for (size_t i = 0; i < targets.size(); ++i) {
            found[i] = resolve(targets[i], stage);
            if (found[i])
                moved.append(found[i]);
        }
        m_history->BeginApplying();
        // A plain move of what is selected goes the way a nudge goes, through
        // the sizers: the controls and their marks move once.
        if (m_uniform && m_history->MoveSelection(moved, Forward ? m_offset : -m_offset)) {
            m_history->ApplyingDone();
            m_history->ReportMoved(moved);
            return;
        }
        {
            const QorRepaintOnce repaint(moved);
            for (size_t i = 0; i < targets.size(); ++i) {
                QWidget *w = found[i];
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
        m_history->ReportMoved(moved);
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
        // The components the stage owned at that moment.
        QStringList names;
    };

    TDesignStep(TQorDesignHistory *History, const QString &Text, State Before, State After)
        : QUndoCommand(Text)
        , m_history(History)
        , m_before(std::move(Before))
        , m_after(std::move(After))
    {
    }

    const QByteArray &after() const { return m_after.records; }

    // A component the step left on the stage that is gone now was freed
    // by the application: the records put back leave it out.
    void undo() override
    {
        m_history->ApplyRecords(m_before.records, m_before.selection, m_before.stageSelected, m_after.names);
    }

    void redo() override
    {
        if (m_done) {
            m_done = false;
            return;
        }
        m_history->ApplyRecords(m_after.records, m_after.selection, m_after.stageSelected, m_before.names);
    }

private:
    TQorDesignHistory *m_history;
    State m_before;
    State m_after;
    bool m_done = true;
};

// A value written to one property of some objects: their values of it
// before and after.
class TPropertyStep final : public QUndoCommand
{
public:
    TPropertyStep(TQorDesignHistory *History, const QString &Text, std::vector<TPlace> Targets, QByteArray Property,
                  QVariantList Before, QVariantList After)
        : QUndoCommand(Text)
        , m_history(History)
        , m_targets(std::move(Targets))
        , m_property(std::move(Property))
        , m_before(std::move(Before))
        , m_after(std::move(After))
    {
    }

    void undo() override { apply(m_before); }

    void redo() override
    {
        if (m_done) {
            m_done = false;
            return;
        }
        apply(m_after);
    }

private:
    void apply(const QVariantList &Values)
    {
        QWidget *stage = m_history->Stage();
        QList<QObject *> objects;
        m_history->BeginApplying();
        for (size_t i = 0; i < m_targets.size(); ++i) {
            QWidget *target = resolve(m_targets[i], stage);
            QObject *object = target ? target : m_targets[i].object.data();
            if (!object || (object != stage && Owner(object) != stage))
                continue;
            object->setProperty(m_property.constData(), Values.at(qsizetype(i)));
            objects.append(object);
        }
        m_history->SelectObjects(objects);
        m_history->ReportChange(objects, m_property);
    }

    TQorDesignHistory *m_history;
    std::vector<TPlace> m_targets;
    QByteArray m_property;
    QVariantList m_before;
    QVariantList m_after;
    bool m_done = true;
};

// Whether the history may keep a change of Property by its values: a
// writable property of each object's class, and not the name the history
// finds components by.
bool keptByValue(const QList<QObject *> &Objects, const QByteArray &Property)
{
    if (Objects.isEmpty() || Property.isEmpty() || Property == "objectName")
        return false;
    return std::all_of(Objects.cbegin(), Objects.cend(), [&Property](const QObject *object) {
        if (!object)
            return false;
        const int index = object->metaObject()->indexOfProperty(Property.constData());
        return index >= 0 && object->metaObject()->property(index).isWritable();
    });
}

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
    m_namesBefore = ComponentNames(stage);
    m_selectionBefore = SelectionNames(&m_stageBefore);
}

void TQorDesignHistory::BeginPropertyChange(const QList<QObject *> &Objects, const QString &Property)
{
    if (m_applying)
        return;
    const QByteArray property = Property.toLatin1();
    if (m_depth > 0 || !keptByValue(Objects, property)) {
        BeginChange(Property);
        return;
    }
    ++m_depth;
    m_text = Property;
    m_property = property;
    m_propertyObjects.clear();
    m_propertyBefore.clear();
    for (QObject *object : Objects) {
        m_propertyObjects.append(object);
        m_propertyBefore.append(object->property(property.constData()));
    }
}

void TQorDesignHistory::endPropertyChange()
{
    QWidget *stage = Stage();
    std::vector<TPlace> targets;
    QVariantList before;
    QVariantList after;
    bool changed = false;
    for (qsizetype i = 0; i < m_propertyObjects.size(); ++i) {
        QObject *object = m_propertyObjects.at(i);
        if (!object)
            continue;
        QVariant now = object->property(m_property.constData());
        changed = changed || now != m_propertyBefore.at(i);
        auto *w = qobject_cast<QWidget *>(object);
        targets.push_back({w, object == stage ? QString() : object->objectName(), object == stage, object});
        before.append(m_propertyBefore.at(i));
        after.append(std::move(now));
    }
    if (changed) {
        QList<QObject *> objects;
        objects.reserve(qsizetype(targets.size()));
        for (const TPlace &place : targets)
            objects.append(place.object.data());
        m_stack->push(new TPropertyStep(this, m_text, std::move(targets), m_property, std::move(before), std::move(after)));
        ReportChange(objects, m_property);
    }
    m_property.clear();
    m_propertyObjects.clear();
    m_propertyBefore.clear();
}

bool TQorDesignHistory::MoveSelection(const QList<QObject *> &Controls, QPoint Offset)
{
    TQorDesignManager *manager = m_center->DesignManager();
    TQorSizerList *sizers = manager ? manager->Sizers() : nullptr;
    QWidget *stage = Stage();
    if (!sizers || Controls.isEmpty() || sizers->Count() != Controls.size())
        return false;
    QList<QObject *> selected = m_center->SelectedComps().toList();
    QList<QObject *> wanted = Controls;
    if (selected.size() != wanted.size())
        return false;
    std::sort(selected.begin(), selected.end());
    std::sort(wanted.begin(), wanted.end());
    if (selected != wanted || wanted.contains(stage))
        return false;
    TQorSizer *sizer = sizers->SizerOf(static_cast<QWidget *>(Controls.first()));
    if (!sizer)
        return false;
    sizer->ManualMove(Offset.x(), Offset.y(), true, true);
    return true;
}

void TQorDesignHistory::SelectObjects(const QList<QObject *> &Objects)
{
    if (!Objects.isEmpty())
        m_center->SetSelectedCompsSilently(TComponentList(Objects));
    m_center->Refresh();
    ApplyingDone();
}

void TQorDesignHistory::EndChange()
{
    if (m_applying || m_depth == 0 || --m_depth > 0)
        return;
    if (!m_property.isEmpty()) {
        ++m_run;
        endPropertyChange();
        m_baseStale = true;
        return;
    }
    QWidget *stage = Stage();
    QByteArray after = stage ? QorDesignRecords(stage) : QByteArray();
    ++m_run;
    if (after != m_before && stage) {
        // Steps in a row share the records between them.
        if (const auto *last = dynamic_cast<const TDesignStep *>(m_stack->command(m_stack->index() - 1));
            last && last->after() == m_before)
            m_before = last->after();
        TDesignStep::State before{m_before, m_selectionBefore, m_stageBefore, m_namesBefore};
        TDesignStep::State now{after, {}, false, ComponentNames(stage)};
        now.selection = SelectionNames(&now.stageSelected);
        QString text = m_text;
        text.remove(QLatin1Char('&'));
        m_stack->push(new TDesignStep(this, text, std::move(before), std::move(now)));
        ReportChange({}, {});
    }
    m_before.clear();
    m_selectionBefore.clear();
    m_namesBefore.clear();
    m_baseStale = true;
}

// Where a control stands; of the stage only its size is the design's (the
// window it is, or the area it sits in, places it).
QRect TQorDesignHistory::placeOf(const QWidget *Control, const QWidget *Stage)
{
    return Control == Stage ? QRect(QPoint(), Control->size()) : Control->geometry();
}

void TQorDesignHistory::takeBase()
{
    m_baseStale = false;
    const QWidget *stage = Stage();
    m_baseList = m_center->SelectedComps().toList();
    m_baseRects.resize(size_t(m_baseList.size()));
    for (qsizetype i = 0; i < m_baseList.size(); ++i) {
        QObject *component = m_baseList.at(i);
        m_baseRects[size_t(i)] = component->isWidgetType() ? placeOf(static_cast<QWidget *>(component), stage) : QRect();
    }
}

void TQorDesignHistory::SelectionChanged()
{
    ++m_run;
    m_baseStale = true;
}

void TQorDesignHistory::PrepareMove()
{
    if (m_applying)
        return;
    m_moveAnnounced = true;
    if (m_baseStale)
        takeBase();
}

void TQorDesignHistory::ControlsMoved(bool ByKeys)
{
    // Moves nobody announced (the application's own) are not steps; nor
    // are those while a step is put back or a recorded change goes on.
    const bool announced = std::exchange(m_moveAnnounced, false);
    if (m_applying || m_depth > 0 || m_baseStale || !announced) {
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
    const QList<QObject *> selected = m_center->SelectedComps().toList();
    // The selection is the one the places were taken for, entry by entry;
    // else each control is looked up.
    const bool aligned = selected == m_baseList;
    QHash<const QObject *, qsizetype> at;
    if (!aligned) {
        for (qsizetype i = 0; i < m_baseList.size(); ++i)
            at.insert(m_baseList.at(i), i);
    }
    for (qsizetype i = 0; i < selected.size(); ++i) {
        QObject *component = selected.at(i);
        if (!component->isWidgetType())
            continue;
        auto *w = static_cast<QWidget *>(component);
        const qsizetype index = aligned ? i : at.value(component, -1);
        if (index < 0)
            continue;
        const QRect *base = &m_baseRects[size_t(index)];
        const QRect now = placeOf(w, stage);
        if (now == *base)
            continue;
        const QPoint by = now.topLeft() - base->topLeft();
        if (now.size() != base->size())
            resized = true;
        if (places.empty())
            offset = by;
        else if (by != offset)
            uniform = false;
        places.push_back({w, w == stage ? QString() : w->objectName(), w == stage, nullptr});
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
    // Taken before the push: a nudge merged into the last step is gone
    // after it.
    QList<QObject *> moved;
    moved.reserve(qsizetype(step->targets()->size()));
    for (const TPlace &place : *step->targets()) {
        if (place.widget)
            moved.append(place.widget.data());
    }
    m_stack->push(step);
    ReportMoved(moved);
}

QStringList TQorDesignHistory::ComponentNames(QWidget *Stage)
{
    QStringList names;
    if (!Stage)
        return names;
    const QList<QObject *> owned = ComponentList(Stage);
    names.reserve(owned.size());
    for (const QObject *component : owned)
        names.append(component->objectName());
    return names;
}

void TQorDesignHistory::ApplyRecords(const QByteArray &Records, const QStringList &Selection, bool StageSelected,
                                     const QStringList &Left)
{
    TQorDesignCenter *center = m_center;
    QWidget *stage = Stage();
    if (!stage)
        return;
    QStringList freed;
    for (const QString &name : Left) {
        if (!name.isEmpty() && !FindComponent(stage, name))
            freed.append(name);
    }
    BeginApplying();
    QStringList skipped;
    try {
        QorReplaceDesign(center, Records, skipped, true);
    } catch (const EQorError &error) {
        // The records are the history's own: reading them fails only where
        // a class left the registry meanwhile. The design stays as it was.
        qCWarning(lcQorConsole).noquote() << "The history could not put the design back:" << error.message();
    }
    // What the application freed stays freed (with what sits inside it).
    for (const QString &name : std::as_const(freed)) {
        if (QObject *component = FindComponent(stage, name))
            FreeComponent(component);
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
    ReportChange({}, {});
}

void TQorDesignHistory::ReportChange(const QList<QObject *> &Objects, const QByteArray &Property)
{
    Q_EMIT DesignChanged(Objects, Property);
}

void TQorDesignHistory::ReportMoved(const QList<QObject *> &Moved)
{
    QWidget *stage = Stage();
    QList<QObject *> controls;
    controls.reserve(Moved.size());
    bool stageResized = false;
    for (QObject *object : Moved) {
        if (object == stage)
            stageResized = true;
        else
            controls.append(object);
    }
    if (!controls.isEmpty())
        ReportChange(controls, "geometry");
    if (stageResized)
        ReportChange({stage}, "size");
}

// The elements follow by themselves: the sizers and the inspector's values
// hear of moved controls through the design manager's report, a design or
// values put back refresh the center.
void TQorDesignHistory::ApplyingDone()
{
    m_applying = false;
    ++m_run;
    m_baseStale = true;
}

void TQorDesignHistory::Clear()
{
    m_stack->clear();
    ++m_run;
    m_baseStale = true;
}
