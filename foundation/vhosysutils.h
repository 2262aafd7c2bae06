// SPDX-License-Identifier: MIT
// Naming of components and finding them again: unique names for new
// components, tests for name collisions, the dotted name path of a
// component ("Form1.Button1") and back, the display-name (CN) entry points,
// and small helpers over value texts, classes and component lists that the
// design surface, the object inspector and the translation manager share.
//
// A component has exactly one name, its objectName(). The CN (display name)
// functions exist so that callers can be written against display names; each
// forwards to its plain counterpart and no second name is stored anywhere.
// Names compare case-insensitively throughout.
#pragma once

#include "qordesign_export.h"

#include "foundation/qorcomponents.h"

#include <QChar>
#include <QList>
#include <QString>
#include <QtPlugin>

class QObject;
class QWidget;
struct QMetaObject;

// Where the naming functions get the label a class is shown under. The
// translation layer, which sits above this one, installs its dictionary
// lookup here when the library loads; without one a class's label is its
// name.
class QORDESIGN_EXPORT IQorClassLabels
{
    Q_DISABLE_COPY_MOVE(IQorClassLabels)

public:
    virtual ~IQorClassLabels() = default;
    // The translated label of a non-null class, or its class name when it
    // has none.
    virtual QString ClassLabel(const QMetaObject *AClass) const = 0;

protected:
    IQorClassLabels() = default;
};
Q_DECLARE_INTERFACE(IQorClassLabels, "org.qordesign.IQorClassLabels/1.0")

// Installs Labels (null: none) and answers the one it replaces. The object
// stays the caller's and must outlive its use.
QORDESIGN_EXPORT const IQorClassLabels *SetClassLabels(const IQorClassLabels *Labels);

// The characters of an identifier.
inline constexpr QLatin1String IdentCharset("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz");
// The characters that end an identifier inside a value text such as the set
// value "[a, b]" or the detail text "Font (QFont)".
inline constexpr QLatin1String SeperatorCharset(" (),[]{}");

// Membership in the two character sets above (false for any character
// outside Latin-1).
QORDESIGN_EXPORT bool IsIdentChar(QChar C);
QORDESIGN_EXPORT bool IsSeperatorChar(QChar C);

// The components of the application, where a form is looked up by name:
// first the components the application object owns (ComponentList(qApp), in
// that order), then the top-level widgets that have no owner, in the order
// QApplication::topLevelWidgets() gives them.
QORDESIGN_EXPORT QList<QObject *> ApplicationComponents();

// ---- Name tests and generation ------------------------------------------

// False without an owner; true when a component owned by Owner, or Owner
// itself, is named Name.
QORDESIGN_EXPORT bool CompNameExists(const QString &Name, QObject *Owner);

// The first component owned by Owner (in its component order) that has
// Comp's name and is not Comp itself (Comp counts when IncludeSelf is true);
// failing that Owner, when Owner has Comp's name (whatever IncludeSelf is);
// else null. Null when Comp or Owner is null.
QORDESIGN_EXPORT QObject *CompNameExists(QObject *Comp, QObject *Owner, bool IncludeSelf);

// The first of BaseName + "1", BaseName + "2", ... (decimal, no leading
// zeros) that CompNameExists(Name, Owner) rejects; never BaseName alone.
// Takes one pass over the owner's component names, so it stays fast on an
// owner of thousands of components.
QORDESIGN_EXPORT QString GetUniqueName(const QString &BaseName, QObject *Owner);

// The class name without its one prefix: the part after the last "::", then
// without a leading "Q" when an upper-case letter follows it (QPushButton ->
// PushButton), else without a leading upper-case "T" (TTimer -> Timer), else
// whole. Exactly one prefix is removed: QTimer -> Timer, TQorSizer ->
// QorSizer.
QORDESIGN_EXPORT QString classNameWithoutPrefix(const QString &ClassName);

// A new component's name: the class name without its prefix, numbered as
// GetUniqueName does (QPushButton on a form holding PushButton1 gives
// PushButton2). Empty for a null class.
QORDESIGN_EXPORT QString GetCompUniqueID(const QMetaObject *AClass, QObject *Owner);

// A new component's display name: the class's translated label (the class
// name without its prefix when it has no translation) followed by "1". It
// neither tests for collisions nor counts upwards: it always ends in "1".
// Owner is not used. Empty for a null class.
QORDESIGN_EXPORT QString GetCompUniqueCNName(const QMetaObject *AClass, QObject *Owner);

// ---- Display-name (CN) entry points -------------------------------------

// Comp's name ("" for null); Owner is not used.
QORDESIGN_EXPORT QString GetCompCnName(QObject *Comp, QObject *Owner);
// Does nothing: the display name is the name.
QORDESIGN_EXPORT void SetCompCNName(QObject *Comp, QObject *Owner, const QString &CnName);
// CompNameExists(CnName, Owner).
QORDESIGN_EXPORT bool CompCNNameExists(const QString &CnName, QObject *Owner);
// CompNameExists(CnName, Owner); Comp is not used.
QORDESIGN_EXPORT bool CompCNNameExists(QObject *Comp, const QString &CnName, QObject *Owner);
// CompNameExists(Comp, Owner, IncludeSelf).
QORDESIGN_EXPORT QObject *CompCNNameExists(QObject *Comp, QObject *Owner, bool IncludeSelf);
// CompToNSName, then one leading and one trailing "." removed.
QORDESIGN_EXPORT QString CompToNsCnName(QObject *Comp, QObject *Owner, QObject *Root);
// NSNameToComp.
QORDESIGN_EXPORT QObject *NsCnNameToComp(const QString &NsCnName, QObject *Root);

// ---- Dotted name paths --------------------------------------------------

// The name path of Comp as seen from Root, Owner being Comp's owner as the
// caller sees it: "" for null Comp; the name when Owner is Root; the form's
// name, "." and the name when Owner is another form (a window widget); ""
// otherwise (an owner that is not a form, such as a plain QObject holding
// non-visual components). A name that is empty or blanks only is written
// "[NoName]"; any other name is used untrimmed. One leading and one
// trailing "." are removed.
QORDESIGN_EXPORT QString CompToNSName(QObject *Comp, QObject *Owner, QObject *Root);

// The component a name path names: "A.B" resolves A with a null root and B
// within what A found (split at the first "."); a plain name is looked up
// among Root's components, or among ApplicationComponents() when Root is
// null. Null for an unknown name.
QORDESIGN_EXPORT QObject *NSNameToComp(const QString &NsName, QObject *Root);

// Resolves the path with NSNameToComp and writes it again with
// CompToNsCnName as seen from Root; "" when nothing is found. One leading
// and one trailing "." are removed.
QORDESIGN_EXPORT QString NsNameToNsCnName(const QString &NsName, QObject *Root);

// Resolves the path with NsCnNameToComp and writes it again with
// CompToNSName as seen from Root; "" when nothing is found. One leading and
// one trailing "." are removed.
QORDESIGN_EXPORT QString NsCnNameToNsName(const QString &NsCnName, QObject *Root);

// The first of ApplicationComponents() that is a form (a window widget)
// named CnName; null if none.
QORDESIGN_EXPORT QWidget *CnNameToForm(const QString &CnName);

// ---- Text helpers -------------------------------------------------------

// The part of S before its first separator character; the whole of S when
// it has none ("Font (QFont)" -> "Font", "[a, b]" -> "").
QORDESIGN_EXPORT QString ExtractMainStrFromDetail(const QString &S);

// The text after the first "=" of S; the whole of S when it has none. Flag
// is accepted and not used.
QORDESIGN_EXPORT QString GetStrPairValue(const QString &S, bool Flag);

// ---- Classes and lists --------------------------------------------------

// Walking up from A, the first class C that is B or that B inherits from:
// the nearest shared ancestor. Null when either is null or they share none.
QORDESIGN_EXPORT const QMetaObject *GetCommonParentClass(const QMetaObject *A, const QMetaObject *B);

// The nearest class that every non-null object of the list is: the class of
// the first, folded with GetCommonParentClass over the others in list
// order. Null when the list is empty or its first item is null.
QORDESIGN_EXPORT const QMetaObject *GetObjectsParentClass(const QList<QObject *> &List);

// How many items of the list are widgets.
QORDESIGN_EXPORT int ControlCountInCompList(const TComponentList &List);

// Takes every item that is not a widget out of the list (none is freed).
QORDESIGN_EXPORT void RemoveComponentFromCompList(TComponentList &List);

// Copies Source into Dest through the component stream when both are of
// exactly the same class; leaves Dest untouched otherwise. Errors of the
// stream reach the caller.
QORDESIGN_EXPORT void CloneComponent(QObject *Source, QObject *Dest);
