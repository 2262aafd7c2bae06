// SPDX-License-Identifier: MIT
// The visible object inspector: TVhoObjInspector shows the selection's
// property list in the value-list grid, writes every accepted value back to
// all selected objects and tells its design center; TQorObjInspector is the
// one applications put on their forms.
#pragma once

#include "qordesign_export.h"

#include "designer/qordesignintf.h"
#include "inspector/qorproplist.h"
#include "inspector/qorinspectorintf.h"
#include "inspector/qorvaluelisteditor.h"

#include <QPointer>
#include <QSet>
#include <QTableView>

#include <functional>
#include <memory>

class QLabel;

class QORDESIGN_EXPORT TVhoObjInspector : public TVhoValueListEditor, public IQorObjInspector
{
    Q_OBJECT
    Q_INTERFACES(IQorObjInspector)
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

Q_SIGNALS:
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
    // Runs a change of a property's value, showing what it refuses; the
    // change is one step of the center's history. Objects, when given, are
    // the ones whose property PropName itself is written (a top-level row):
    // the step then keeps their values alone.
    void guarded(const QString &PropName, const std::function<void()> &Change,
                 const QList<QObject *> *Objects = nullptr);
    void clearError();
    IQorInspectorCenter *center() const;
    void placeErrorLabel();
    void watchComponents();
    void componentDestroyed(QObject *Component);
    void dropDestroyedComponents();
    // Opens or closes the row of the line when Point is on its marker.
    bool toggleAtMarker(const QPoint &Point);

    bool m_refreshing = false;
    bool m_dropPending = false;
    std::unique_ptr<TObjInspecPropListEx> m_propList;
    QSet<QObject *> m_watched;
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
