// SPDX-License-Identifier: MIT
// The design center's history: each change a user makes to the design is
// one step of a QUndoStack, and undoing it puts the design back as it was,
// with the selection of that moment.
//
// Two kinds of step. Moves and resizes of controls (drags, Ctrl+arrow
// nudges) keep the controls' rectangles, or one offset for a plain move;
// consecutive nudges of one selection merge into one step. Every other
// change (insertion, deletion, paste, a property, a name, the stacking or
// owner order, a component editor's verb) keeps the design's records from
// before and after, and undoing it reads the former records back onto the
// stage: the components are made anew, and steps further back find them
// by name.
#pragma once

#include "qordesign_export.h"

#include "foundation/qorcomponents.h"

#include <QObject>
#include <QPointer>
#include <QRect>
#include <QVariant>

#include <vector>

class QUndoStack;
class TQorDesignCenter;

class QORDESIGN_EXPORT TQorDesignHistory : public QObject
{
    Q_OBJECT

public:
    explicit TQorDesignHistory(TQorDesignCenter *Center);
    ~TQorDesignHistory() override;

    QUndoStack *Stack() const { return m_stack; }
    TQorDesignCenter *Center() const { return m_center; }

    // A change of the design begins or ends; pairs nest, and what happens
    // between the outermost pair becomes one step named Text (nothing when
    // the design is the same afterwards). While a step is undone or redone
    // nothing is recorded.
    void BeginChange(const QString &Text);
    // As BeginChange, for a change that writes one property of these
    // objects: the step keeps their values of it (the inspector's rows).
    // A name, or a property an object does not have as a writable one of
    // its class, is kept as any other change is.
    void BeginPropertyChange(const QList<QObject *> &Objects, const QString &Property);
    void EndChange();
    bool Recording() const { return m_depth > 0; }
    bool Applying() const { return m_applying; }

    // The selection changed: its controls' places are where the next move
    // starts from.
    void SelectionChanged();
    // The selected controls are about to move: their places are taken now
    // unless they were since the selection was made or the last move.
    void PrepareMove();
    // The selected controls were moved or resized (a drag, a nudge): one
    // step, merged into the last when both are nudges of one selection.
    void ControlsMoved(bool ByKeys);

    // Forgets every step (another design came in, or the application asks).
    void Clear();

    // Used by the steps.
    QWidget *Stage() const;
    void BeginApplying() { m_applying = true; }
    // Puts Records on the stage, leaving out each component named in Left
    // that is no longer there.
    void ApplyRecords(const QByteArray &Records, const QStringList &Selection, bool StageSelected,
                      const QStringList &Left);
    static QStringList ComponentNames(QWidget *Stage);
    void ApplyingDone();
    // Selects the objects a step put back (the stage when none) and
    // refreshes the center's elements.
    void SelectObjects(const QList<QObject *> &Objects);
    // Moves the controls by Offset as a nudge does, when they are what is
    // selected; false (nothing moved) otherwise.
    bool MoveSelection(const QList<QObject *> &Controls, QPoint Offset);
    QStringList SelectionNames(bool *StageSelected) const;
    // Tells who follows the design what a step (done, undone or redone)
    // changed.
    void ReportChange(const QList<QObject *> &Objects, const QByteArray &Property);
    // The same for moved or resized controls: their geometry, the stage's
    // size.
    void ReportMoved(const QList<QObject *> &Moved);

Q_SIGNALS:
    // A step was done, undone or redone. With objects: it changed their
    // Property ("geometry" of moved controls, "size" of the stage); without:
    // the design as a whole.
    void DesignChanged(const QList<QObject *> &Objects, const QByteArray &Property);

private:
    void takeBase();
    void endPropertyChange();
    static QRect placeOf(const QWidget *Control, const QWidget *Stage);

    TQorDesignCenter *m_center;
    QUndoStack *m_stack;
    int m_depth = 0;
    bool m_applying = false;
    QString m_text;
    // A property change under way: the objects and their former values.
    QByteArray m_property;
    QList<QPointer<QObject>> m_propertyObjects;
    QVariantList m_propertyBefore;
    QByteArray m_before;
    QStringList m_namesBefore;
    QStringList m_selectionBefore;
    bool m_stageBefore = false;
    // Where the selected controls stood when the last move ended or the
    // selection was made: the selection then, and a rectangle for each
    // entry (a selection of thousands is taken often, looked at rarely).
    QList<QObject *> m_baseList;
    std::vector<QRect> m_baseRects;
    bool m_baseStale = true;
    bool m_moveAnnounced = false;
    // A new selection or another step ends a run of nudges.
    quint64 m_run = 0;
};
