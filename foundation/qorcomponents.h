// SPDX-License-Identifier: MIT
// Ownership of components. A widget's QObject parent stays its visual
// parent; ownership (lifetime beyond the visual tree, unique names, the
// ordered list of an owner's components) is kept here, once for the whole
// library: each owner has an ordered list of the components it owns, a
// component has at most one owner and leaves its owner's list when it is
// destroyed, and an owner destroys the components it still owns when it is
// destroyed itself.
#pragma once

#include "qordesign_export.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>

// Reports the changes of one owner's component list.
class QORDESIGN_EXPORT TQorOwnerNotifier : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("QorDesignObject", "true")

public:
    explicit TQorOwnerNotifier(QObject *owner);
    ~TQorOwnerNotifier() override;

    QObject *owner() const { return m_owner; }

Q_SIGNALS:
    // After the component joined the owner's list (at its end).
    void ComponentInserted(QObject *Component);
    // After the component left the owner's list: removed, given to another
    // owner, or being destroyed (then only its address may be compared).
    void ComponentRemoved(QObject *Component);

private:
    QObject *m_owner;
};

// The owner of a component; null when it has none.
QORDESIGN_EXPORT QObject *Owner(const QObject *Component);
// How many components the owner owns.
QORDESIGN_EXPORT int ComponentCount(const QObject *Owner);
// The owner's component at an index of its list; null out of range.
QORDESIGN_EXPORT QObject *Components(const QObject *Owner, int Index);
// The owner's components in list order.
QORDESIGN_EXPORT QList<QObject *> ComponentList(const QObject *Owner);
// The component's index in its owner's list; -1 when it has no owner.
QORDESIGN_EXPORT int ComponentIndex(const QObject *Component);
// Moves a component to another index of its owner's list (clamped).
QORDESIGN_EXPORT void SetComponentIndex(QObject *Component, int Index);

// Makes the owner own the component, at the end of its list. A component
// owned elsewhere leaves that owner first. A non-visual component also
// gets the owner as its QObject parent; a widget keeps its parent. Throws
// EComponentError when the owner already owns another component of the
// same (non-empty) name, compared case-insensitively; nothing changes then.
QORDESIGN_EXPORT void InsertComponent(QObject *Owner, QObject *Component);
// Takes the component out of the owner's list (it is not destroyed).
QORDESIGN_EXPORT void RemoveComponent(QObject *Owner, QObject *Component);

// Frees a designed component the way a deletion on the design surface
// does: a widget disappears at once, the component and every component
// inside it leave their owners' lists now (lists and trees read the design
// without them from here on), and the objects are destroyed once control
// is back in the event loop, where none of their events is being handled.
// A component still parented stays so until then, so that it goes with its
// parent should the loop never run again.
QORDESIGN_EXPORT void FreeComponent(QObject *Component);

// Renames a component the way the user renames one: the new name must be
// empty or an identifier (a letter or an underscore, then letters, digits
// and underscores) that no other component of the same owner has
// (compared case-insensitively). Throws EComponentError otherwise; the
// component keeps its name then.
QORDESIGN_EXPORT void SetComponentName(QObject *Component, const QString &Name);

// The owned component of that name (case-insensitive), the first in list
// order when several share it; null when none.
QORDESIGN_EXPORT QObject *FindComponent(const QObject *Owner, const QString &Name);

// Every owned component of that name (case-insensitive), in list order;
// empty for an empty name.
QORDESIGN_EXPORT QList<QObject *> FindComponents(const QObject *Owner, const QString &Name);

// The smallest N >= 1 for which BaseName followed by N is neither the
// owner's name nor an owned component's name (compared case-insensitively).
// Quick however many numbered names the owner has: the owner remembers
// where the free numbers start for each base.
QORDESIGN_EXPORT qsizetype FirstFreeNameNumber(const QObject *Owner, const QString &BaseName);

// The object that reports the owner's insertions and removals; made on
// first use and destroyed with the owner.
QORDESIGN_EXPORT TQorOwnerNotifier *OwnerNotifier(QObject *Owner);

// True for the library's own objects (sizers, rubber band, manager, the
// notifiers above...): classes that declare Q_CLASSINFO("QorDesignObject").
// They are never owned as designed components.
QORDESIGN_EXPORT bool IsQorDesignObject(const QObject *Object);

// True for the inner parts of composite widgets: objects without a name or
// with a name starting with "qt_" (a spin box's line edit, a tab widget's
// tab bar, a scroll area's scroll bars). They are never components.
QORDESIGN_EXPORT bool IsInnerPart(const QObject *Object);

// The objects right under an object that can be components: its children
// that are neither inner parts nor library objects, then the pages of a
// container that keeps them inside its inner parts (the pages of a tab
// widget or tool box, the widget of a scroll area) in page order. The
// subtree of an inner part holds no components but those pages: a tab
// bar's scroll buttons carry names, yet are part of the tab bar.
QORDESIGN_EXPORT QList<QObject *> DesignChildren(const QObject *Object);

// Takes ownership of a ready-made form's named descendants, in the order
// of a depth-first walk of DesignChildren(): every descendant that is not
// yet owned by this owner. A
// descendant whose name the owner already has gets the first free name of
// its stem with a number ("Button1" taken: "Button2"). Returns how many
// components were taken.
QORDESIGN_EXPORT int AdoptNamedDescendants(QObject *Owner);

// An ordered list of components that owns none of them: entries that were
// destroyed drop out of the list.
class QORDESIGN_EXPORT TComponentList
{
public:
    TComponentList() = default;
    TComponentList(std::initializer_list<QObject *> components);
    explicit TComponentList(const QList<QObject *> &components);

    int Count() const;
    QObject *Items(int Index) const;
    QObject *First() const;
    QObject *Last() const;
    int Add(QObject *Component);
    void Insert(int Index, QObject *Component);
    int IndexOf(const QObject *Component) const;
    int Remove(const QObject *Component);
    void Delete(int Index);
    void Clear();
    bool isEmpty() const { return First() == nullptr; }
    QList<QObject *> toList() const;

    bool operator==(const TComponentList &other) const { return toList() == other.toList(); }

private:
    void compact() const;
    mutable QList<QPointer<QObject>> m_items;
};
