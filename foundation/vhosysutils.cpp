// SPDX-License-Identifier: MIT
#include "foundation/vhosysutils.h"

#include "foundation/qorstream.h"

#include <QApplication>
#include <QMetaObject>
#include <QObject>
#include <QWidget>

#include <utility>
#include <vector>

namespace {

const QLatin1String NoName("[NoName]");

// Constant-initialised, so installing from another unit's load-time
// initialiser cannot race this unit's own initialisation.
constinit const IQorClassLabels *classLabels = nullptr;

bool sameText(const QString &a, const QString &b)
{
    return QString::compare(a, b, Qt::CaseInsensitive) == 0;
}

bool inLatin1Set(QChar c, QLatin1String set)
{
    return c.unicode() < 256 && set.contains(QLatin1Char(char(c.unicode())));
}

// One leading and one trailing "." off a name path.
QString stripDots(QString path)
{
    if (path.startsWith(u'.'))
        path.remove(0, 1);
    if (path.endsWith(u'.'))
        path.chop(1);
    return path;
}

bool isForm(const QObject *object)
{
    return object && object->isWidgetType() && static_cast<const QWidget *>(object)->isWindow();
}

// The component of that name in a list, the first when several share it.
QObject *findIn(const QList<QObject *> &components, const QString &name)
{
    if (name.isEmpty())
        return nullptr;
    for (QObject *component : components) {
        if (sameText(component->objectName(), name))
            return component;
    }
    return nullptr;
}

} // namespace

const IQorClassLabels *SetClassLabels(const IQorClassLabels *Labels)
{
    return std::exchange(classLabels, Labels);
}

bool IsIdentChar(QChar C)
{
    return inLatin1Set(C, IdentCharset);
}

bool IsSeperatorChar(QChar C)
{
    return inLatin1Set(C, SeperatorCharset);
}

QList<QObject *> ApplicationComponents()
{
    QList<QObject *> result = ComponentList(QCoreApplication::instance());
    // Without a widget application there are no top-level widgets; the
    // static call is safe and answers an empty list then.
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (!Owner(window))
            result.append(window);
    }
    return result;
}

bool CompNameExists(const QString &Name, QObject *Owner)
{
    if (!Owner)
        return false;
    if (sameText(Owner->objectName(), Name))
        return true;
    if (!Name.isEmpty())
        return FindComponent(Owner, Name) != nullptr;
    // Unnamed components are not filed by name: look at each.
    for (QObject *component : ComponentList(Owner)) {
        if (component->objectName().isEmpty())
            return true;
    }
    return false;
}

QObject *CompNameExists(QObject *Comp, QObject *Owner, bool IncludeSelf)
{
    if (!Comp || !Owner)
        return nullptr;
    const QString name = Comp->objectName();
    if (name.isEmpty()) {
        // Unnamed components are not filed by name: look at each.
        for (QObject *component : ComponentList(Owner)) {
            if ((IncludeSelf || component != Comp) && component->objectName().isEmpty())
                return component;
        }
    } else {
        for (QObject *component : FindComponents(Owner, name)) {
            if (IncludeSelf || component != Comp)
                return component;
        }
    }
    return sameText(Owner->objectName(), name) ? Owner : nullptr;
}

QString GetUniqueName(const QString &BaseName, QObject *Owner)
{
    if (!Owner)
        return BaseName + u'1';
    return BaseName + QString::number(FirstFreeNameNumber(Owner, BaseName));
}

QString classNameWithoutPrefix(const QString &ClassName)
{
    QString name = ClassName;
    const qsizetype scope = name.lastIndexOf(QLatin1String("::"));
    if (scope >= 0)
        name.remove(0, scope + 2);
    if (name.size() >= 2 && name.at(0) == u'Q' && name.at(1).isUpper())
        name.remove(0, 1);
    else if (name.startsWith(u'T'))
        name.remove(0, 1);
    return name;
}

QString GetCompUniqueID(const QMetaObject *AClass, QObject *Owner)
{
    if (!AClass)
        return QString();
    return GetUniqueName(classNameWithoutPrefix(QString::fromLatin1(AClass->className())), Owner);
}

QString GetCompUniqueCNName(const QMetaObject *AClass, QObject *Owner)
{
    Q_UNUSED(Owner);
    if (!AClass)
        return QString();
    const QString className = QString::fromLatin1(AClass->className());
    QString label = classLabels ? classLabels->ClassLabel(AClass) : className;
    // An untranslated class shows its name as new components are named.
    if (label == className)
        label = classNameWithoutPrefix(className);
    return label + u'1';
}

QString GetCompCnName(QObject *Comp, QObject *Owner)
{
    Q_UNUSED(Owner);
    return Comp ? Comp->objectName() : QString();
}

void SetCompCNName(QObject *Comp, QObject *Owner, const QString &CnName)
{
    Q_UNUSED(Comp);
    Q_UNUSED(Owner);
    Q_UNUSED(CnName);
}

bool CompCNNameExists(const QString &CnName, QObject *Owner)
{
    return CompNameExists(CnName, Owner);
}

bool CompCNNameExists(QObject *Comp, const QString &CnName, QObject *Owner)
{
    Q_UNUSED(Comp);
    return CompNameExists(CnName, Owner);
}

QObject *CompCNNameExists(QObject *Comp, QObject *Owner, bool IncludeSelf)
{
    return CompNameExists(Comp, Owner, IncludeSelf);
}

QString CompToNsCnName(QObject *Comp, QObject *Owner, QObject *Root)
{
    return stripDots(CompToNSName(Comp, Owner, Root));
}

QObject *NsCnNameToComp(const QString &NsCnName, QObject *Root)
{
    return NSNameToComp(NsCnName, Root);
}

QString CompToNSName(QObject *Comp, QObject *Owner, QObject *Root)
{
    if (!Comp)
        return QString();
    QString name = Comp->objectName();
    if (name.trimmed().isEmpty())
        name = NoName;
    QString path;
    if (Owner == Root)
        path = name;
    else if (isForm(Owner))
        path = Owner->objectName() + u'.' + name;
    return stripDots(path);
}

QObject *NSNameToComp(const QString &NsName, QObject *Root)
{
    const qsizetype dot = NsName.indexOf(u'.');
    if (dot >= 0) {
        QObject *left = NSNameToComp(NsName.left(dot), nullptr);
        return left ? NSNameToComp(NsName.mid(dot + 1), left) : nullptr;
    }
    if (Root)
        return FindComponent(Root, NsName);
    return findIn(ApplicationComponents(), NsName);
}

QString NsNameToNsCnName(const QString &NsName, QObject *Root)
{
    QObject *comp = NSNameToComp(NsName, Root);
    return stripDots(comp ? CompToNsCnName(comp, Owner(comp), Root) : QString());
}

QString NsCnNameToNsName(const QString &NsCnName, QObject *Root)
{
    QObject *comp = NsCnNameToComp(NsCnName, Root);
    return stripDots(comp ? CompToNSName(comp, Owner(comp), Root) : QString());
}

QWidget *CnNameToForm(const QString &CnName)
{
    for (QObject *component : ApplicationComponents()) {
        if (isForm(component) && sameText(component->objectName(), CnName))
            return static_cast<QWidget *>(component);
    }
    return nullptr;
}

QString ExtractMainStrFromDetail(const QString &S)
{
    for (qsizetype i = 0; i < S.size(); ++i) {
        if (IsSeperatorChar(S.at(i)))
            return S.left(i);
    }
    return S;
}

QString GetStrPairValue(const QString &S, bool Flag)
{
    Q_UNUSED(Flag);
    const qsizetype equals = S.indexOf(u'=');
    return equals >= 0 ? S.mid(equals + 1) : S;
}

const QMetaObject *GetCommonParentClass(const QMetaObject *A, const QMetaObject *B)
{
    if (!B)
        return nullptr;
    for (const QMetaObject *c = A; c; c = c->superClass()) {
        if (c == B || B->inherits(c))
            return c;
    }
    return nullptr;
}

const QMetaObject *GetObjectsParentClass(const QList<QObject *> &List)
{
    if (List.isEmpty() || !List.first())
        return nullptr;
    const QMetaObject *result = List.first()->metaObject();
    for (qsizetype i = 1; i < List.size(); ++i) {
        if (const QObject *object = List.at(i))
            result = GetCommonParentClass(result, object->metaObject());
    }
    return result;
}

int ControlCountInCompList(const TComponentList &List)
{
    int count = 0;
    for (const QObject *item : List.toList()) {
        if (item->isWidgetType())
            ++count;
    }
    return count;
}

void RemoveComponentFromCompList(TComponentList &List)
{
    for (int i = List.Count() - 1; i >= 0; --i) {
        const QObject *item = List.Items(i);
        if (!item->isWidgetType())
            List.Delete(i);
    }
}

void CloneComponent(QObject *Source, QObject *Dest)
{
    if (!Source || !Dest || Source == Dest || Source->metaObject() != Dest->metaObject())
        return;
    const QByteArray bytes = ComponentToBytes(Source);
    // Read into Dest where it stands: same visual parent, ownership as it is.
    QWidget *parent = Dest->isWidgetType() ? static_cast<QWidget *>(Dest)->parentWidget() : nullptr;
    ComponentFromBytes(bytes, Dest, parent, nullptr);
}
