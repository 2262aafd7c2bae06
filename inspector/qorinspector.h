// SPDX-License-Identifier: MIT
// The visible object inspector: a two-column grid of property names and
// values. TValueListEditor shows "name=value" lines with each line's edit
// style (typed, pick list, ellipsis button); TVhoValueListEditor adds the
// draggable line between the columns; TVhoObjInspector shows the selection's
// property list, writes every accepted value back to all selected objects
// and tells its design center; TQorObjInspector is the one applications put
// on their forms.
#pragma once

#include "qordesign_export.h"

#include "designer/qordesignintf.h"
#include "inspector/qorproplist.h"
#include "inspector/qorvaluelist.h"

#include <QPointer>
#include <QTableView>

#include <functional>
#include <memory>

class QLabel;
class QorValueListModel;
class QorValueListDelegate;

// What the inspector needs of the design center it reports to.
class QORDESIGN_EXPORT IQorInspectorCenter
{
public:
    virtual ~IQorInspectorCenter();

    virtual void SetDirty(bool Value) = 0;
    // A value was changed through the inspector.
    virtual void InspectorPropChanged() = 0;
    // The objects the center has selected.
    virtual TComponentList InspectorSelection() const = 0;
    // The designer property editors are made for; may be null.
    virtual IDesigner *InspectorDesigner() const = 0;
};

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

class QORDESIGN_EXPORT TVhoObjInspector : public TVhoValueListEditor, public IQorObjInspector
{
    Q_OBJECT
    Q_PROPERTY(QObject *OwnerComponent READ OwnerComponent WRITE SetOwnerComponent)
    Q_PROPERTY(QObject *ActiveComponent READ ActiveComponent WRITE SetActiveComponent)
    Q_PROPERTY(int PropertyFilterStyles READ PropertyFilterStylesInt WRITE SetPropertyFilterStylesInt)
    Q_PROPERTY(bool AutoUpdateOutput READ AutoUpdateOutput WRITE SetAutoUpdateOutput)
    Q_PROPERTY(int CurrItemIndex READ GetCurrItemIndex WRITE SetCurrItemIndex STORED false)
    Q_PROPERTY(QStringList OutputPropNames READ OutputPropNames WRITE SetOutputPropNames)
    Q_PROPERTY(QStringList ConcealedPropNames READ ConcealedPropNames WRITE SetConcealedPropNames)
    Q_PROPERTY(QStringList OutputEventNames READ OutputEventNames WRITE SetOutputEventNames)
    Q_PROPERTY(QStringList ConcealedEventNames READ ConcealedEventNames WRITE SetConcealedEventNames)
    Q_PROPERTY(bool Translate READ Translate WRITE SetTranslate)

public:
    explicit TVhoObjInspector(QWidget *Parent = nullptr);
    ~TVhoObjInspector() override;

    // Selection.
    QObject *ActiveComponent() const;
    void SetActiveComponent(QObject *Component);
    void SetActiveComponents(const TComponentList &Components) override;
    void SetActiveComponents(const QList<QObject *> &Objects);
    void AddActiveComponent(QObject *Component);
    void ClearActiveComponents();
    QList<QObject *> GetActiveComponents() const;
    QObject *OwnerComponent() const;
    void SetOwnerComponent(QObject *Component);
    void SetOwnerComponents(const QList<QObject *> &Components);
    void ClearOwnerComponents();
    QList<QObject *> GetOwnerComponents() const;
    QObject *ConsoleCenter() const { return m_consoleCenter; }
    void SetConsoleCenter(QObject *Center);
    TObjInspecPropListEx *PropList() const { return m_propList.get(); }
    void SetPropList(std::unique_ptr<TObjInspecPropListEx> List);

    // Rows.
    TObjInspecPropertyItem *GetCurrPropItem() const;
    int GetPropRow(PPropInfo PropInfo) const;
    TClassInformation *GetClassInformation() const;

    // Position.
    int GetCurrItemIndex();
    void SetCurrItemIndex(int Index);
    void ReturnToOldPos();

    // Display.
    virtual void Refresh();
    virtual void RefreshOutput();
    virtual void RefreshValues();
    virtual void StartFillList();
    virtual void EndFillList();
    virtual void RelateComponentChanged();

    // Editing.
    void PropertyValueChanged(int Row);
    void DoOnValidate() override;
    void ValidateLine(int Row) override;
    void InplaceEditorOnChange(QObject *Sender) override;
    void InplaceEditorOnKeyPress(QObject *Sender, int &Key) override;
    void SelfKeyDown(QObject *Sender, int &Key, Qt::KeyboardModifiers Shift);
    virtual void EditButtonClick(QObject *Sender);

    // Settings passed through to the property list.
    TPropertyFilterStyles PropertyFilterStyles() const;
    virtual void SetPropertyFilterStyles(TPropertyFilterStyles Value);
    bool AutoUpdateOutput() const;
    void SetAutoUpdateOutput(bool Value);
    QStringList OutputPropNames() const;
    void SetOutputPropNames(const QStringList &Names);
    QStringList ConcealedPropNames() const;
    virtual void SetConcealedPropNames(const QStringList &Names);
    QStringList OutputEventNames() const;
    virtual void SetOutputEventNames(const QStringList &Names);
    QStringList ConcealedEventNames() const;
    void SetConcealedEventNames(const QStringList &Names);
    bool Translate() const;
    virtual void SetTranslate(bool Value);
    TRttiTranslateEvent OnTranslateIdent() const;
    void SetOnTranslateIdent(const TRttiTranslateEvent &Event);
    TRttiTranslateEvent OnTranslateToIdent() const;
    void SetOnTranslateToIdent(const TRttiTranslateEvent &Event);

    bool Modified() const { return m_modified; }
    void SetModified(bool Value) { m_modified = Value; }
    bool Refreshing() const { return m_refreshing; }
    // The message shown for the last value the inspector refused ("" when
    // the last edit was accepted).
    QString LastError() const { return m_lastError; }

signals:
    void OnChangeOwnerComponent(QObject *Sender);
    void OnRefresh(QObject *Sender);
    void OnChangeActiveComponent(QObject *Sender);
    void OnPropNameChanged(QObject *Sender, const QString &PropName);
    // A value was refused; Message says why. Nothing was changed.
    void PropertyValueRejected(const QString &PropName, const QString &Message);

protected:
    void KeyDown(int &Key, Qt::KeyboardModifiers Shift) override;
    void LeftButtonDown(const QPoint &Point) override;
    void DoubleClicked(const QPoint &Point) override;
    void resizeEvent(QResizeEvent *event) override;
    // The message of a refused value goes when the user leaves its line or
    // gives the edit up (Escape).
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    int PropertyFilterStylesInt() const { return int(PropertyFilterStyles()); }
    void SetPropertyFilterStylesInt(int Value) { SetPropertyFilterStyles(TPropertyFilterStyles(Value)); }
    void showError(const QString &PropName, const QString &Message);
    // Runs a change the user asked for; a value refused on the way is shown
    // and reported, never thrown into the event loop.
    void guarded(const QString &PropName, const std::function<void()> &Change);
    void clearError();
    IQorInspectorCenter *center() const;
    void placeErrorLabel();
    void watchComponents();
    void componentDestroyed();
    void dropDestroyedComponents();
    // Opens or closes the row of the line when Point is on its marker.
    bool toggleAtMarker(const QPoint &Point);

    bool m_refreshing = false;
    bool m_dropPending = false;
    std::unique_ptr<TObjInspecPropListEx> m_propList;
    int m_savedItemIndex = 0;
    QPointer<QObject> m_consoleCenter;
    bool m_modified = false;
    QString m_lastError;
    QLabel *m_errorLabel;
};

// The object inspector applications place on their forms.
class QORDESIGN_EXPORT TQorObjInspector : public TVhoObjInspector
{
    Q_OBJECT

public:
    using TVhoObjInspector::TVhoObjInspector;
};
