// SPDX-License-Identifier: MIT
// What the design manager needs from the pieces above it: the design
// center (which keeps the component tree, the palette and the dialogs) and
// the object inspector. Those layers implement these interfaces; the design
// surface calls them and never includes their headers.
#pragma once

#include "qordesign_export.h"

#include "foundation/qorcomponents.h"

#include <QString>
#include <QtPlugin>

class QObject;
class QWidget;
struct QMetaObject;

// How a component of the stage changed, as the center is told of it.
enum class TQorCompOperation { opInsert, opRemove };

class QORDESIGN_EXPORT IQorDesignCenter
{
    Q_DISABLE_COPY_MOVE(IQorDesignCenter)

public:
    virtual ~IQorDesignCenter();

    // The selection changed; the manager's SelectedComps is filled.
    virtual void DesignerSelCompChanged() = 0;
    // The selected controls were moved or resized.
    virtual void DesignerSelCompMoved() = 0;
    // The design was changed (or saved, for false).
    virtual void SetDirty(bool Value) = 0;
    // A component was inserted into the stage or removed from it.
    virtual void DesignStageCompsModified(QObject *Component, TQorCompOperation Operation) = 0;
    // The class chosen on the palette for insertion, or null.
    virtual const QMetaObject *GetPalleteSelectedClass() const = 0;
    // A component of the chosen class was created; the center clears the
    // palette's choice.
    virtual void DynCompCreated(QObject *Component) = 0;
    // The user asked to delete the selected controls: the center asks and
    // deletes.
    virtual void DelSelCtrls() = 0;
    // The stacking order of controls changed: the component tree follows.
    virtual void RefreshCompTree() = 0;
    // A change of the design begins (Text names it in the history) or
    // ends. Pairs nest; the center records what happens between the
    // outermost pair as one step of its history.
    virtual void BeginDesignChange(const QString &Text) { Q_UNUSED(Text) }
    virtual void EndDesignChange() {}
    // Controls of the selection are about to move or resize (a drag, a
    // handle, a nudge): told before each sizer moves its control.
    virtual void DesignerMoveStarting() {}

protected:
    IQorDesignCenter() = default;
};
Q_DECLARE_INTERFACE(IQorDesignCenter, "org.qordesign.IQorDesignCenter/1.0")

class QORDESIGN_EXPORT IQorObjInspector
{
    Q_DISABLE_COPY_MOVE(IQorObjInspector)

public:
    virtual ~IQorObjInspector();

    // The components the inspector shows from now on.
    virtual void SetActiveComponents(const TComponentList &Components) = 0;

protected:
    IQorObjInspector() = default;
};
Q_DECLARE_INTERFACE(IQorObjInspector, "org.qordesign.IQorObjInspector/1.0")

// A popup menu that pops up for a component (the design popup menus): the
// stage and the sizers pop such a menu up through PopupBaseOnComp with the
// control the right click was on, any other menu at the pointer.
class QORDESIGN_EXPORT IQorCompPopupMenu
{
    Q_DISABLE_COPY_MOVE(IQorCompPopupMenu)

public:
    virtual ~IQorCompPopupMenu();

    // Pops up at the global point (X, Y) for Component.
    virtual void PopupBaseOnComp(QObject *Component, int X, int Y) = 0;

protected:
    IQorCompPopupMenu() = default;
};
Q_DECLARE_INTERFACE(IQorCompPopupMenu, "org.qordesign.IQorCompPopupMenu/1.0")
