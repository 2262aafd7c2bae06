// SPDX-License-Identifier: MIT
// The design popup menus: what a right click on the stage, on a designed
// control or on the component tree offers. Each popup first adjusts the
// selection to what was clicked, then builds the menu afresh:
//   - TQorDesignCompPopupMenu: the verbs of the one selected component's
//     component editor on top, then a separator; the application's own
//     items follow.
//   - TQorDesignCompPopupMenuEx: also the verbs of the component's
//     attribute editor at the end, after a separator, the last verb first.
//   - TQorDefDesignCompPopupMenu: the editors' verbs and then the design
//     commands (Edit, Control, Position, Flip Children), made of the
//     library's shared design actions.
// The first two menus remove only the verb items before a popup, so the
// separators they add stay and gather over repeated popups; the default
// menu clears all of its items each time. A verb item carries its verb
// index plus 1000 in QAction::data().
#pragma once

#include "qordesign_export.h"

#include "console/qorattribeditors.h"
#include "console/qorcompeditors.h"
#include "console/qorconsoleintf.h"
#include "designer/qordesignintf.h"
#include "foundation/qorcomponents.h"

#include <QList>
#include <QMenu>
#include <QPointer>

#include <functional>
#include <memory>

class TQorDesignAction;
class TQorDesignCenter;
class TQorFormDesigner;

class QORDESIGN_EXPORT TQorDesignCompPopupMenu : public QMenu, public IQorCenterPopupMenu, public IQorCompPopupMenu
{
    Q_OBJECT
    Q_INTERFACES(IQorCenterPopupMenu IQorCompPopupMenu)
    Q_CLASSINFO("QorDesignObject", "true")
    Q_PROPERTY(QObject *PopupComponent READ PopupComponent WRITE SetPopupComponent)

public:
    // The tag of the first verb item; every item tagged this or more is a
    // verb item.
    static constexpr int VerbTagBase = 1000;

    explicit TQorDesignCompPopupMenu(QWidget *Parent = nullptr);
    ~TQorDesignCompPopupMenu() override;

    TQorDesignCenter *ConsoleCenter() const;
    void SetConsoleCenter(TQorDesignCenter *Center) override;
    // The component the menu pops up for: the control right-clicked, the
    // stage, the tree.
    QObject *PopupComponent() const { return m_popupComponent; }
    void SetPopupComponent(QObject *Component) { m_popupComponent = Component; }
    // The center's selection; null without a center.
    const TComponentList *GetSelComps() const;
    // How many component-editor verbs the last popup added.
    int LastCompEditorItemCount() const { return m_ceItemCount; }

    void PopupBaseOnComp(QObject *Component, int X, int Y) override;
    void Popup(int X, int Y);

    // Before the menu shows: keeps the selection to what was clicked (a
    // control and its selected siblings; the non-visual components when
    // a non-visual component was clicked), then builds the items.
    virtual void DoPopup(QObject *Sender);
    virtual void InitMenuItems();

    // The component editor of the one selected component, made without a
    // designer; null unless exactly one component is selected.
    TComponentEditorRef GetCompEditor() const;
    void AddCompEditorItems();
    // Deletes every verb item, the attribute editor's too; separators stay.
    void RemoveLastCEItems();
    void CompEditorItemOnClick(QObject *Sender);
    void ExecCompEditorItem(int Index);

protected:
    // True when the menu lies on a form that is being designed: it is a
    // component there like any other and builds nothing.
    bool IsInDesignMode() const;
    // What follows a verb's run: the center refreshed (unless a control
    // is edited in place) and the design marked dirty.
    void AfterVerb();
    // The tag of a menu item sender; -1 for a sender that is no item.
    static int TagOf(QObject *Sender);
    // Runs a verb chosen from the menu, showing what it fails with.
    void runVerb(QAction *Item, const std::function<void()> &Run);

private:
    QPointer<QObject> m_popupComponent;
    int m_ceItemCount = 0;
    QPointer<TQorDesignCenter> m_consoleCenter;
};

class QORDESIGN_EXPORT TQorDesignCompPopupMenuEx : public TQorDesignCompPopupMenu
{
    Q_OBJECT

public:
    explicit TQorDesignCompPopupMenuEx(QWidget *Parent = nullptr);
    ~TQorDesignCompPopupMenuEx() override;

    void InitMenuItems() override;
    // The attribute editor of the one selected component, made for a new
    // designer of the center's design manager; null unless exactly one
    // component is selected and an editor is registered for it.
    IQorAttribEditorRef GetAttribEditor();
    void AddCompAttribEditorItems();
    // Nothing: RemoveLastCEItems removes the attribute verbs too.
    void RemoveLastAttribItems();
    void AttribEditorItemOnClick(QObject *Sender);
    void ExecAttribEditorItem(int Index);
    // How many attribute-editor verbs the last popup added.
    int LastAttribItemCount() const { return m_attribItemCount; }

private:
    int m_attribItemCount = 0;
    // The designer the last attribute editor was made for; kept until the
    // next one is made, as the editor may use it while its verb runs.
    std::unique_ptr<TQorFormDesigner> m_attribDesigner;
};

class QORDESIGN_EXPORT TQorDefDesignCompPopupMenu : public TQorDesignCompPopupMenuEx
{
    Q_OBJECT

public:
    explicit TQorDefDesignCompPopupMenu(QWidget *Parent = nullptr);
    ~TQorDefDesignCompPopupMenu() override;

    // Makes sure the shared design actions exist and links them to this
    // menu's center: the last default menu to pop up serves them.
    void UpdateActions();
    void InitMenuItems() override;

private:
    QList<QPointer<QMenu>> m_subMenus;
};

// The design actions every default popup menu shares, made on first use:
// copy, cut, paste, select all, delete, bring to front, send to back, flip
// selected, flip all, align, size, scale. They go with the library.
QORDESIGN_EXPORT QList<TQorDesignAction *> QorDefDesignActions();
