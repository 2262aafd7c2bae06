// SPDX-License-Identifier: MIT
// The inspector layer's interfaces: IDesigner, through which property and
// component editors reach the designer that runs them, the selection lists
// editors are enumerated for, and what the object inspector needs of the
// design center it reports to. The design console implements IDesigner and
// IQorInspectorCenter; the inspector finds the center's interface on the
// object it was given as its center.
#pragma once

#include "qordesign_export.h"

#include "foundation/qorcomponents.h"
#include "foundation/vhortti.h"

#include <QPoint>
#include <QRect>
#include <QString>
#include <QtPlugin>

#include <functional>

class IDesignerSelections;

using TGetStrProc = std::function<void(const QString &)>;

// The designer an editor works through. Each method says what an editor
// may rely on, and what the library's own designer (TVhoDesigner, on top
// of the design manager) answers where a design at run time has nothing
// to give: there is no source code, no project and no environment behind
// it, so those questions get empty answers rather than errors.
class QORDESIGN_EXPORT IDesigner
{
    Q_DISABLE_COPY_MOVE(IDesigner)

public:
    virtual ~IDesigner();

    // ---- The design as a whole ----
    // Brings the design to the front. The library's designer does nothing:
    // the application's window is already where the user works.
    virtual void Activate() = 0;
    // Tells the designer that an editor changed the design, so that it can
    // be marked unsaved. The library's designer does nothing; the inspector
    // and the design center keep the unsaved flag themselves.
    virtual void Modified() = 0;
    // True while the design is loaded but not being edited. The library's
    // designer answers true: there is no source behind the design to wake.
    virtual bool GetIsDormant() const = 0;
    // The scroll ranges of the design's window at a scroll position. Empty
    // here: the stage scrolls in the application's own scroll area.
    virtual QPoint GetScrollRanges(const QPoint &ScrollPosition) = 0;
    // The root of the design: the one selected component here (null when
    // nothing is selected), and its class name.
    virtual QObject *GetRoot() const = 0;
    virtual QString GetRootClassName() const = 0;
    // The keyboard modifiers held when the editor was started. None here.
    virtual Qt::KeyboardModifiers GetShiftState() const = 0;

    // ---- Event handlers ----
    // An editor may ask for, name, list, rename, show and chain the methods
    // that handle a component's events. There is no source code behind a
    // design at run time: the library's designer creates no method, finds
    // none (empty names, false, no calls of Proc) and shows none.
    virtual QString CreateMethod(const QString &Name, PTypeInfo TypeData) = 0;
    virtual QString GetMethodName(const QString &Method) = 0;
    virtual void GetMethods(PTypeInfo TypeData, const TGetStrProc &Proc) = 0;
    virtual bool MethodExists(const QString &Name) = 0;
    virtual void RenameMethod(const QString &CurName, const QString &NewName) = 0;
    virtual void ShowMethod(const QString &Name) = 0;
    virtual bool MethodFromAncestor(const QString &Method) = 0;
    virtual void ChainCall(const QString &MethodName, const QString &InstanceName, const QString &InstanceMethod,
                           PTypeInfo TypeData) = 0;

    // ---- The environment ----
    // The path of the running program (the application's executable here).
    virtual QString GetPathAndBaseExeName() const = 0;
    // Where the environment keeps its private files and its settings key,
    // and its options object: empty and null here.
    virtual QString GetPrivateDirectory() const = 0;
    virtual QString GetBaseRegKey() const = 0;
    virtual QObject *GetIDEOptions() const = 0;
    // The modules of the project: none here (Proc is not called).
    virtual void GetProjectModules(const TGetStrProc &Proc) = 0;
    // The designer of the design this one inherits from: null here.
    virtual IDesigner *GetAncestorDesigner() const = 0;
    // True when the design's source must not be changed: false here.
    virtual bool IsSourceReadOnly() const = 0;
    // The file names of the design's module: left as they are here.
    virtual void ModuleFileNames(QString &ImplFileName, QString &IntfFileName, QString &FormFileName) = 0;
    // The class group active in the environment: empty here.
    virtual QString GetActiveClassGroup() const = 0;
    // The root class an ancestor name leads to: empty here.
    virtual QString FindRootAncestor(const QString &AncestorClassName) = 0;

    // ---- The selection ----
    // Adds the selected components to List, in selection order. Does
    // nothing for a null list or without a design manager.
    virtual void GetSelections(IDesignerSelections *List) = 0;
    // Replaces the selection. The library's designer ignores it: editors
    // change the selection through SelectComponent.
    virtual void SetSelections(IDesignerSelections *List) = 0;
    // Makes Instance (null: nothing) the shared selection without telling
    // the design's elements; they follow at their next refresh.
    virtual void SelectComponent(QObject *Instance) = 0;
    // Deselects every component.
    virtual void ClearSelection() = 0;
    // Leaves no component selected: the library's designer deletes the
    // selected controls, as the design manager's deletion does.
    virtual void NoSelection() = 0;
    // Selects a property by name in the inspector: ignored here.
    virtual void SelectItemName(const QString &PropertyName) = 0;

    // ---- Components and names ----
    // The component a dotted name path leads to from the design stage, and
    // back; null and empty when there is none. GetObject is GetComponent.
    virtual QObject *GetComponent(const QString &Name) = 0;
    virtual QString GetComponentName(QObject *Component) = 0;
    virtual QObject *GetObject(const QString &Name) = 0;
    // The name of a non-component object: empty here.
    virtual QString GetObjectName(QObject *Instance) = 0;
    // Calls Proc with the name of each component (or object) of a type:
    // not called here; reference editors list the stage's components
    // themselves.
    virtual void GetComponentNames(PTypeInfo TypeData, const TGetStrProc &Proc) = 0;
    virtual void GetObjectNames(PTypeInfo TypeData, QObject *Context, const TGetStrProc &Proc) = 0;
    // A name no component of the stage has yet, made from BaseName and the
    // first free number.
    virtual QString UniqueName(const QString &BaseName) = 0;
    // Creates a registered class on the stage, owned by Parent (the stage
    // when null), named uniquely, placed at the given bounds and shown
    // when it is a widget. Null without a design manager or a class.
    virtual QObject *CreateComponent(const QMetaObject *ComponentClass, QObject *Parent, int Left, int Top, int Width,
                                     int Height) = 0;
    // Creates the palette's current class: null here.
    virtual QObject *CreateCurrentComponent(QObject *Parent, const QRect &Rect) = 0;
    // Whether a component may be the value of a reference property
    // (always here), whether reference lists leave it out (widgets are
    // left out here: references point at non-visual components), and
    // making one linkable (nothing to do here).
    virtual bool IsComponentLinkable(QObject *Component) = 0;
    virtual bool IsComponentHidden(QObject *Component) = 0;
    virtual void MakeComponentLinkable(QObject *Component) = 0;
    // Puts a property back to its inherited value: nothing here, a design
    // at run time inherits nothing.
    virtual void Revert(QObject *Instance, PPropInfo PropInfo) = 0;
    // Brings back a component a command removed: nothing here.
    virtual void Resurrect() = 0;

    // ---- Commands ----
    // Runs the component editor of Component (the one the application
    // installed on the design manager, or the library's).
    virtual void Edit(QObject *Component) = 0;
    // Copies the selection to the clipboard; Cut copies and deletes it.
    virtual void CopySelection() = 0;
    virtual void CutSelection() = 0;
    // Whether pasting is possible (always true here) and pasting itself,
    // which the library's designer leaves to the design center.
    virtual bool CanPaste() = 0;
    virtual void PasteSelection() = 0;
    // Deletes the selected controls.
    virtual void DeleteSelection() = 0;
    // Lets the user edit a value in a modal editor started by a key: not
    // offered here (a null character).
    virtual QChar ModalEdit(QChar EditKey, QObject *ReturnWindow) = 0;

protected:
    IDesigner() = default;
};
Q_DECLARE_INTERFACE(IDesigner, "org.qordesign.IDesigner/1.0")

// A selection of objects as editors are enumerated for it.
class QORDESIGN_EXPORT IDesignerSelections
{
    Q_DISABLE_COPY_MOVE(IDesignerSelections)

public:
    virtual ~IDesignerSelections();

    virtual int Count() const = 0;
    // Null once the object is gone.
    virtual QObject *Get(int Index) const = 0;
    virtual int Add(QObject *Item) = 0;
    // True when both hold the same objects in the same order.
    virtual bool Equals(const IDesignerSelections &List) const = 0;

protected:
    IDesignerSelections() = default;
};
Q_DECLARE_INTERFACE(IDesignerSelections, "org.qordesign.IDesignerSelections/1.0")


// What the inspector needs of the design center it reports to.
class QORDESIGN_EXPORT IQorInspectorCenter
{
    Q_DISABLE_COPY_MOVE(IQorInspectorCenter)

public:
    virtual ~IQorInspectorCenter();

    virtual void SetDirty(bool Value) = 0;
    // A value was changed through the inspector.
    virtual void InspectorPropChanged() = 0;
    // The objects the center has selected.
    virtual TComponentList InspectorSelection() const = 0;
    // The designer property editors are made for; may be null.
    virtual IDesigner *InspectorDesigner() const = 0;
    // A change of the design begins (Text names it in the history) or
    // ends. Pairs nest; the center records what happens between the
    // outermost pair as one step of its history.
    virtual void BeginDesignChange(const QString &Text) { Q_UNUSED(Text) }
    virtual void EndDesignChange() {}
    // A value of the property of these objects is about to be written (the
    // step keeps their values of it alone); ends with EndDesignChange.
    virtual void BeginPropertyChange(const QList<QObject *> &Objects, const QString &Property)
    {
        Q_UNUSED(Objects)
        BeginDesignChange(Property);
    }

protected:
    IQorInspectorCenter() = default;
};
Q_DECLARE_INTERFACE(IQorInspectorCenter, "org.qordesign.IQorInspectorCenter/1.0")
