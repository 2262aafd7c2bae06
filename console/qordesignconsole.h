// SPDX-License-Identifier: MIT
// The design center: the one object the pieces of the design system talk
// through. The design manager, the object inspector, the component tree and
// the palette each report their changes here, and the center passes the
// new selection on to the others and refreshes them. It keeps the shared
// list of selected components, carries out copy, cut, paste and delete on
// it, and tells whether any of its elements holds unsaved changes.
#pragma once

#include "qordesign_export.h"

#include "console/qorconsoleintf.h"
#include "designer/qordesigner.h"
#include "designer/qordesignintf.h"
#include "foundation/qorcomponents.h"
#include "inspector/qorinspectorintf.h"

#include <QMenu>
#include <QObject>
#include <QPointer>

#include <functional>
#include <initializer_list>
#include <memory>

class QUndoStack;
class TQorDesignHistory;
class TQorDesignManager;
class TQorFormDesigner;
class TVhoObjInspector;

// The elements the center refreshes, in the order it refreshes them.
enum TDesignElement { deDesignManager, deCompTreeView, deObjInspector };

// A set of elements.
class TDesignElements
{
public:
    constexpr TDesignElements() = default;
    constexpr TDesignElements(std::initializer_list<TDesignElement> Elements)
    {
        for (TDesignElement element : Elements)
            m_bits |= 1u << element;
    }
    constexpr bool contains(TDesignElement Element) const { return (m_bits & (1u << Element)) != 0; }

private:
    unsigned m_bits = 0;
};

class QORDESIGN_EXPORT TQorDesignCenter : public QObject, public IQorDesignCenter, public IQorInspectorCenter
{
    Q_OBJECT
    Q_INTERFACES(IQorDesignCenter IQorInspectorCenter)
    Q_CLASSINFO("QorDesignObject", "true")
    Q_MOC_INCLUDE("designer/qormanager.h")
    Q_MOC_INCLUDE("inspector/qorinspector.h")
    Q_PROPERTY(bool Enabled READ GetEnabled WRITE SetEnabled)
    Q_PROPERTY(bool PersistEnabled READ PersistEnabled WRITE SetPersistEnabled)
    Q_PROPERTY(TVhoObjInspector *ObjInspector READ ObjInspector WRITE SetObjInspector)
    Q_PROPERTY(TQorDesignManager *DesignManager READ DesignManager WRITE SetDesignManager)
    Q_PROPERTY(QWidget *CompTreeView READ CompTreeView WRITE SetCompTreeView)
    Q_PROPERTY(QObject *CompPalleteToolBar READ CompPalleteToolBar WRITE SetCompPalleteToolBar)
    Q_PROPERTY(QMenu *DesignPopupMenu READ DesignPopupMenu WRITE SetDesignPopupMenu)
    Q_PROPERTY(int ClipPasteLeftOffset READ ClipPasteLeftOffset WRITE SetClipPasteLeftOffset)
    Q_PROPERTY(int ClipPasteTopOffset READ ClipPasteTopOffset WRITE SetClipPasteTopOffset)

public:
    explicit TQorDesignCenter(QObject *Owner = nullptr);
    ~TQorDesignCenter() override;

    // ---- Links ----
    // Each setter does nothing when the reference does not change. The
    // center holds its elements weakly: an element that is destroyed is
    // dropped from its link.
    TQorDesignManager *DesignManager() const;
    void SetDesignManager(TQorDesignManager *Manager);
    TVhoObjInspector *ObjInspector() const;
    void SetObjInspector(TVhoObjInspector *Inspector);
    // A widget that implements IQorCompTreeView; other widgets are refused.
    QWidget *CompTreeView() const { return m_compTreeView; }
    void SetCompTreeView(QWidget *TreeView);
    // An object that implements IQorCompPallete; other objects are refused.
    QObject *CompPalleteToolBar() const { return m_compPalleteToolBar; }
    void SetCompPalleteToolBar(QObject *Pallete);
    // Any menu; one implementing IQorCenterPopupMenu is told of the center.
    QMenu *DesignPopupMenu() const { return m_designPopupMenu; }
    void SetDesignPopupMenu(QMenu *Menu);

    bool GetEnabled() const { return m_enabled; }
    void SetEnabled(bool Value);
    // Whether the center's Enabled wins over the design manager's when
    // the two are linked.
    bool PersistEnabled() const { return m_persistEnabled; }
    void SetPersistEnabled(bool Value) { m_persistEnabled = Value; }
    int ClipPasteLeftOffset() const { return m_clipPasteLeftOffset; }
    void SetClipPasteLeftOffset(int Value) { m_clipPasteLeftOffset = Value; }
    int ClipPasteTopOffset() const { return m_clipPasteTopOffset; }
    void SetClipPasteTopOffset(int Value) { m_clipPasteTopOffset = Value; }

    // The design manager's stage mouse-move event: empty while no design
    // manager is linked, and setting it then is dropped.
    TQorStageMouseMoveEvent OnStageMouseMove() const;
    void SetOnStageMouseMove(const TQorStageMouseMoveEvent &Event);

    // The shared selection.
    const TComponentList &SelectedComps() const { return m_selectedComps; }
    // The selection without telling the elements (the designer
    // interface's SelectComponent); the design actions still judge
    // themselves anew.
    void SetSelectedCompsSilently(const TComponentList &List);
    // The control being designed; null without a design manager.
    QWidget *GetDesignStage() const;
    // The designer the inspector's property editors work with; null without
    // a design manager.
    TQorFormDesigner *FormDesigner() const { return m_designer.get(); }

    // ---- Changes of the links ----
    virtual void NotifyObjInspectorChanged();
    virtual void NotifyDesignManagerChanged();
    virtual void NotifyCompTreeViewChanged();
    virtual void NotifyDesignPopupMenuChanged();
    // Pushes the shared selection to every element and refreshes it.
    virtual void Refresh();
    // Refreshes the linked elements not named, pushing no selection.
    void RefreshAllExcept(TDesignElements Elements);
    // The tree view and the design manager show the design popup menu.
    void InstallDesignPopupMenu();

    // ---- Reports from the elements ----
    void DesignerSelCompChanged() override;
    void DesignerSelCompMoved() override;
    void DesignStageCompsModified(QObject *Component, TQorCompOperation Operation) override;
    const QMetaObject *GetPalleteSelectedClass() const override;
    void DynCompCreated(QObject *Component) override;
    void RefreshCompTree() override;
    void CompTreeSelCompChanged();
    void CompTreeNodeNameChanged();
    void ConsoleCompListChanged();
    void PalleteSelCompDynCreated();
    void InspectorPropChanged() override;
    TComponentList InspectorSelection() const override { return m_selectedComps; }
    IDesigner *InspectorDesigner() const override;

    // ---- Editing the selection ----
    // Drops the components that are not controls.
    void DeselectComponent();
    // Drops the controls.
    void DeselectControl();
    // Drops the controls whose parent is not Control's parent, and the
    // components that are not controls when DeleteComps is set.
    void DeselectUnsiblingControl(QWidget *Control, bool DeleteComps);
    void SelectAllControls();

    // ---- Commands ----
    void CopySelComps();
    void CutSelComps();
    // Frees every selected component but the stage; the stage is selected
    // when nothing else is left.
    void DelSelCtrls() override;
    // Pastes into the one selected container, the container of the one
    // selected control, or the stage; pasted components whose names are
    // taken get new ones, and each lands offset from what it would cover.
    void PasteComps();

    // True when any linked element holds unsaved changes.
    bool GetDirty() const;
    // Also takes the history's present step as the clean one when false.
    void SetDirty(bool Value) override;

    // The history of the user's changes to the design: undo and redo.
    TQorDesignHistory *History() const { return m_history; }
    QUndoStack *UndoStack() const;
    void BeginDesignChange(const QString &Text) override;
    void EndDesignChange() override;
    void BeginPropertyChange(const QList<QObject *> &Objects, const QString &Property) override;
    void DesignerMoveStarting() override;

Q_SIGNALS:
    // The design manager changed the selection.
    void OnCompsChange(QObject *Sender);
    // The design manager moved, resized or aligned the selection.
    void OnControlsMoved(QObject *Sender);
    // The inspector changed a property.
    void OnInspectorPropChange(QObject *Sender);
    // A component chosen on the palette was inserted.
    void AfterDynInsComponent(QObject *Sender, QObject *Component);
    // What the design commands judge by may have changed: the selection,
    // the center's or the design manager's enabled state, the linked
    // design manager, its stage or the stage's visibility.
    void DesignStateChanged();

protected:
    bool eventFilter(QObject *Watched, QEvent *Event) override;

private:
    IQorCompTreeView *treeView() const;
    IQorCompPallete *pallete() const;
    void ReleaseAllElements();
    void watchManager();
    // Keeps the selected components Keep says yes to, then tells the
    // elements.
    void keepSelected(const std::function<bool(QObject *)> &Keep);
    void watchStage();

    QPointer<TQorDesignManager> m_designManager;
    QPointer<TVhoObjInspector> m_objInspector;
    TComponentList m_selectedComps;
    QPointer<QWidget> m_compTreeView;
    QPointer<QObject> m_compPalleteToolBar;
    QPointer<QMenu> m_designPopupMenu;
    int m_clipPasteLeftOffset = 4;
    int m_clipPasteTopOffset = 4;
    bool m_enabled = true;
    bool m_persistEnabled = true;
    std::unique_ptr<TQorFormDesigner> m_designer;
    QList<QMetaObject::Connection> m_managerConnections;
    QPointer<QWidget> m_watchedStage;
    TQorDesignHistory *m_history;
    bool m_followingClean = false;
};

// True for the design system's own parts: sizers, the rubber band, design
// managers and centers, design popup menus, design actions and component
// trees (and their subclasses). Lists of a stage's components leave them
// out.
QORDESIGN_EXPORT bool IsQorDesignCtrl(const QObject *Component);
