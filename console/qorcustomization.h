// SPDX-License-Identifier: MIT
// An end user's customization of one of the application's own forms, kept
// as what differs from the form as the application built it: changed
// properties, added, deleted, renamed and moved components. The delta
// outlives a new version of the application: applied to the form that
// version builds, it keeps what the user changed and reports, in plain
// words, what it could not keep.
#pragma once

#include "qordesign_export.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

class QWidget;
struct QMetaObject;

// What the application does not let its users change: a property by name
// (for every component, for the components of a class and its subclasses,
// or for one component) or a whole component (which then can be neither
// changed, moved, renamed nor deleted). A change that a lock covers is left
// out of a delta taken by Diff, and skipped, with a report, by Apply.
class QORDESIGN_EXPORT TQorCustomizationLocks
{
public:
    // ClassName empty: components of any class. Path null (QString()): any
    // component; an empty but not null path is the form itself.
    void LockProperty(const QByteArray &Name, const QString &ClassName = QString(), const QString &Path = QString());
    void LockComponent(const QString &Path);

    bool IsComponentLocked(const QString &Path) const;
    // Class: the component's class (null: the lock's class is not matched).
    bool IsPropertyLocked(const QString &Path, const QMetaObject *Class, const QByteArray &Name) const;
    bool IsEmpty() const;

private:
    struct PropertyLock
    {
        QByteArray name;
        QString className;
        QString path;
    };
    QList<PropertyLock> m_properties;
    QStringList m_components; // case-folded
};

// One thing Apply could not keep.
struct QORDESIGN_EXPORT TQorCustomizationIssue
{
    // The component, by its name path in the delta; "" for the form.
    QString Path;
    // The property concerned; empty when the whole component is.
    QByteArray Property;
    // What happened, in plain words for the user.
    QString Text;
};

class TQorCustomizationPrivate;

// The delta of a user's customization over a form.
//
// Components are named by name paths: the names of the owners from the form
// down, joined by "." ("Button1" for a component the form owns; the form
// itself is ""). A delta names each component by the path it had in the
// form as the application built it, or, for a component the user added, by
// the path it was added under. Names compare case-insensitively.
//
// Merge rules when the delta is applied to a form of a later version:
// - a property the user changed takes the user's value, whatever the new
//   version's default is;
// - a component the new version no longer has takes the user's changes to
//   it along: each lost change is reported;
// - a component the new version added stays where that version put it;
// - a component the user added whose parent is gone goes onto the form, and
//   that is reported;
// - a component the user added or renamed whose name is taken in the new
//   version gets a unique name of that stem, and that is reported;
// - a property the component's class no longer has (or whose value it no
//   longer takes) is reported and skipped;
// - a change a lock covers is skipped and reported.
class QORDESIGN_EXPORT TQorCustomization
{
public:
    TQorCustomization();
    TQorCustomization(const TQorCustomization &Other);
    TQorCustomization(TQorCustomization &&Other) noexcept;
    TQorCustomization &operator=(const TQorCustomization &Other);
    TQorCustomization &operator=(TQorCustomization &&Other) noexcept;
    ~TQorCustomization();

    // The form's design as the component stream's records (the stage with
    // every component it owns, and their owner order): what the application
    // keeps of its form as built, before the user designs, to diff against.
    static QByteArray FormRecords(QWidget *Stage);

    // The delta between the form as the application built it (its records,
    // FormRecords of the stage taken before the user designs) and the
    // stage now. Applied to the unchanged form, it gives the stage's design
    // exactly. A renamed component is seen as deleted and added again: only
    // the incremental setters know that one component took another name.
    // Throws EReadError when BaseRecords cannot be decoded.
    static TQorCustomization Diff(const QByteArray &BaseRecords, QWidget *Stage,
                                  const TQorCustomizationLocks &Locks = TQorCustomizationLocks());

    // Applies the delta onto the form the application has just built (of
    // the version the delta was taken on or a later one) and returns what
    // could not be kept. Per-change problems are reported, never thrown;
    // a component the delta adds is either made whole or not at all.
    QList<TQorCustomizationIssue> Apply(QWidget *Stage,
                                        const TQorCustomizationLocks &Locks = TQorCustomizationLocks()) const;

    // What the delta changes, one sentence per change, for an administrator.
    QStringList Describe() const;

    bool IsEmpty() const;
    void Clear();
    // How many components the delta touches.
    int ComponentCount() const;

    // The library's own binary form: a signature, a format version and the
    // changes. FromBytes throws EReadError on bytes that are damaged,
    // truncated or no delta.
    QByteArray ToBytes() const;
    static TQorCustomization FromBytes(const QByteArray &Bytes);

    // ---- Incremental changes -----------------------------------------
    // A recorder keeps a delta up to date step by step with these. Path is
    // the component's path as the stage shows it now (after renames the
    // delta already holds). The form itself (the empty path) takes property
    // changes only. Each takes time independent of the number of
    // components the delta holds, but for a logarithmic look-up.

    // A property's new value (Value invalid: the property went back to its
    // default). ClassName is the component's class, kept for Describe and
    // for class locks. Dynamic properties too.
    void SetPropertyValue(const QString &Path, const QString &ClassName, const QByteArray &Name, const QVariant &Value);
    // A component the user added: Record is its component record (the
    // stream's ComponentToBytes of it); ParentPath its parent ("" the form).
    void AddComponent(const QString &Path, const QByteArray &Record, const QString &ParentPath);
    void DeleteComponent(const QString &Path, const QString &ClassName = QString());
    void RenameComponent(const QString &Path, const QString &NewName);
    void ReparentComponent(const QString &Path, const QString &NewParentPath);
    // The component now lies directly above the sibling named (empty: at the
    // bottom of its parent's stacking order).
    void SetZOrder(const QString &Path, const QString &AboveSiblingPath);
    // The component now follows the component named in its owner's list
    // (empty: first).
    void SetOwnerOrder(const QString &Path, const QString &AfterPath);

    // The property changes the delta holds for a component (by its path in
    // the delta), for applications and tests that look inside.
    QVariant PropertyValue(const QString &Path, const QByteArray &Name) const;
    bool HasComponent(const QString &Path) const;

private:
    std::unique_ptr<TQorCustomizationPrivate> d;
};
