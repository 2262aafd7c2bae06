// SPDX-License-Identifier: MIT
// The design console's interfaces. What the design center needs of the
// elements an application links to it besides the design manager and the
// inspector: a component tree view, a component palette and a design popup
// menu; and what the library's attribute editors need of the designer they
// work with beyond IDesigner (IQorFormDesigner). The center finds these
// interfaces on the linked objects with qobject_cast, so an implementing
// class names them in Q_INTERFACES.
#pragma once

#include "qordesign_export.h"

#include "foundation/qorcomponents.h"

#include <QtPlugin>

class QMenu;
class TQorDesignCenter;
struct QMetaObject;

// What the center needs of a component tree view. The tree reports its
// own selection changes to the center (CompTreeSelCompChanged) and never
// to the other elements.
class QORDESIGN_EXPORT IQorCompTreeView
{
    Q_DISABLE_COPY_MOVE(IQorCompTreeView)

public:
    virtual ~IQorCompTreeView();

    virtual void SetConsoleCenter(TQorDesignCenter *Center) = 0;
    // The components the tree shows selected.
    virtual TComponentList SelectedComps() const = 0;
    virtual void SetSelectedComps(const TComponentList &List) = 0;
    virtual void Refresh() = 0;
    virtual bool Dirty() const = 0;
    virtual void SetDirty(bool Value) = 0;
    virtual void SetPopupMenu(QMenu *Menu) = 0;

protected:
    IQorCompTreeView() = default;
};
Q_DECLARE_INTERFACE(IQorCompTreeView, "org.qordesign.IQorCompTreeView/1.0")

// What the center needs of a component palette.
class QORDESIGN_EXPORT IQorCompPallete
{
    Q_DISABLE_COPY_MOVE(IQorCompPallete)

public:
    virtual ~IQorCompPallete();

    // The class chosen for insertion; null for the arrow.
    virtual const QMetaObject *GetCurrClass() const = 0;
    // Drops the choice: the palette goes back to the arrow.
    virtual void DeselectComps() = 0;

protected:
    IQorCompPallete() = default;
};
Q_DECLARE_INTERFACE(IQorCompPallete, "org.qordesign.IQorCompPallete/1.0")

// A design popup menu that wants to know the center it serves.
class QORDESIGN_EXPORT IQorCenterPopupMenu
{
    Q_DISABLE_COPY_MOVE(IQorCenterPopupMenu)

public:
    virtual ~IQorCenterPopupMenu();

    virtual void SetConsoleCenter(TQorDesignCenter *Center) = 0;

protected:
    IQorCenterPopupMenu() = default;
};
Q_DECLARE_INTERFACE(IQorCenterPopupMenu, "org.qordesign.IQorCenterPopupMenu/1.0")

// What the library's own attribute editors need of the designer beyond
// IDesigner: the selected component and the editing of a control in place.
class QORDESIGN_EXPORT IQorFormDesigner
{
    Q_DISABLE_COPY_MOVE(IQorFormDesigner)

public:
    virtual ~IQorFormDesigner();
    // The one selected component; null unless exactly one is selected.
    virtual QObject *GetSelectedComponent() const = 0;
    virtual void StartControlEmbedEdit() = 0;
    virtual void EndControlEmbedEdit() = 0;

protected:
    IQorFormDesigner() = default;
};
Q_DECLARE_INTERFACE(IQorFormDesigner, "org.qordesign.IQorFormDesigner/1.0")
