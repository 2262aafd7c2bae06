// SPDX-License-Identifier: MIT
// The value-list grid the object inspector is built on: TValueListEditor
// shows "name=value" lines with each line's edit style (typed, pick list,
// ellipsis button); TVhoValueListEditor adds the draggable line between the
// columns.
#pragma once

#include "qordesign_export.h"

#include "inspector/qorvaluelist.h"

#include <QTableView>

#include <functional>

class QorValueListModel;
class QorValueListDelegate;

// A grid of "name=value" lines without a title row: row n shows line n of
// Strings(), the name column fixed, the value column edited in place.
class QORDESIGN_EXPORT TValueListEditor : public QTableView
{
    Q_OBJECT

public:
    explicit TValueListEditor(QWidget *Parent = nullptr);
    ~TValueListEditor() override;

    TValueListStrings *Strings() const { return m_strings; }
    int RowCount() const { return m_strings->Count(); }
    int Row() const;
    void SetRow(int Row);
    int ColWidth0() const;
    void SetColWidth0(int Width);
    // The in-place editor of the current value, null when none is open.
    QWidget *InplaceEditor() const;

    // Hooks: the ellipsis button of a line was clicked; a key went down.
    std::function<void(QObject *Sender)> OnEditButtonClick;
    std::function<void(QObject *Sender, int &Key, Qt::KeyboardModifiers Shift)> OnKeyDown;

    // An edit was finished (Enter, a pick, leaving the cell): the current
    // line is validated.
    virtual void DoOnValidate();
    // Validates one line; the in-place editor calls it for the line it
    // edited once its text is in the strings.
    virtual void ValidateLine(int Row);
    // The in-place editor's text changed (a pick takes effect at once).
    virtual void InplaceEditorOnChange(QObject *Sender);
    virtual void InplaceEditorOnKeyPress(QObject *Sender, int &Key);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    // Typed keys belong to the value's editor: on a line that cannot be
    // typed into they do nothing, rather than look for another line by its
    // first letters (whose editor would then take the next keys).
    void keyboardSearch(const QString &search) override;
    virtual void KeyDown(int &Key, Qt::KeyboardModifiers Shift);
    // A line that becomes current opens its editor only while the grid has
    // the keyboard: a grid refreshed for a new selection would otherwise
    // take the keys from the design.
    bool edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) override;

private:
    friend class QorValueListModel;
    friend class QorValueListDelegate;

    TValueListStrings *m_strings;
    QorValueListModel *m_model;
    QorValueListDelegate *m_delegate;
    int m_rowBeforeReset = 0;
};

// The value-list grid with a line between the columns the mouse can drag.
class QORDESIGN_EXPORT TVhoValueListEditor : public TValueListEditor
{
    Q_OBJECT

public:
    explicit TVhoValueListEditor(QWidget *Parent = nullptr);

    bool CanResizeCol() const { return m_canResizeCol; }
    void SetCanResizeCol(bool Value) { m_canResizeCol = Value; }
    bool Resizing() const { return m_resizing; }
    // X (in the grid's coordinates) within 3 pixels of the name column's
    // right edge, both ends included.
    bool PosAtColLine(int X) const;
    void StartResizeCol(const QPoint &Point);
    void ResizeColTo(const QPoint &Point);
    void EndResizeCol(const QPoint &Point);
    // Where the "+" or "-" marker of a line's name is drawn, with a few
    // pixels around it (in the viewport's coordinates); empty for a line
    // without a marker.
    QRect MarkerRect(int Row) const;

protected:
    bool viewportEvent(QEvent *event) override;
    // The left button went down on the grid (after the line's handling).
    virtual void LeftButtonDown(const QPoint &Point);
    virtual void DoubleClicked(const QPoint &Point);

private:
    Qt::CursorShape m_savedCursor = Qt::ArrowCursor;
    bool m_savedCursorSet = false;
    bool m_resizing = false;
    bool m_canResizeCol = true;
    QPoint m_lastResizePos;
};
