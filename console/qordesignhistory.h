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

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QRect>

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
    void EndChange();
    bool Recording() const { return m_depth > 0; }
    bool Applying() const { return m_applying; }

    // The selection changed: its controls' places are where the next move
    // starts from.
    void SelectionChanged();
    // The selected controls were moved or resized (a drag, a nudge): one
    // step, merged into the last when both are nudges of one selection.
    void ControlsMoved(bool ByKeys);

    // Forgets every step (another design came in, or the application asks).
    void Clear();

    // Used by the steps.
    QWidget *Stage() const;
    void BeginApplying() { m_applying = true; }
    void ApplyRecords(const QByteArray &Records, const QStringList &Selection, bool StageSelected);
    void ApplyingDone();
    QStringList SelectionNames(bool *StageSelected) const;

private:
    void takeBase();
    QRect placeOf(const QWidget *Control) const;

    TQorDesignCenter *m_center;
    QUndoStack *m_stack;
    int m_depth = 0;
    bool m_applying = false;
    QString m_text;
    QByteArray m_before;
    QStringList m_selectionBefore;
    bool m_stageBefore = false;
    // Where the selected controls stood when the last move ended or the
    // selection was made.
    QHash<const QObject *, QRect> m_base;
    // A new selection or another step ends a run of nudges.
    quint64 m_run = 0;
};
