// SPDX-License-Identifier: MIT
#include "inspector/qorpropdetail.h"

#include "foundation/qortypinfo.h"
#include "foundation/vhosysutils.h"
#include "translation/objtranslate.h"
#include "foundation/vhortti_p.h"

#include <QHash>
#include <QVarLengthArray>

#include <algorithm>

namespace {

bool isNamed(PTypeInfo PTI, const char *Name)
{
    return PTI && PTI->Name.compare(QLatin1String(Name), Qt::CaseInsensitive) == 0;
}

QList<QObject *> plain(const QList<QPointer<QObject>> &Objects)
{
    QList<QObject *> list;
    list.reserve(Objects.size());
    for (const QPointer<QObject> &object : Objects)
        list.append(object.data());
    return list;
}

} // namespace

// ---- Free functions ----------------------------------------------------

QString GetPropertyValueStr(QObject *Object, PPropInfo PropInfo)
{
    if (!Object || !PropInfo)
        return {};
    // Looked up again in the object's own class: one descriptor serves the
    // objects of a multiple selection whatever their classes.
    PPropInfo own = InstancePropInfo(Object, PropInfo);
    const PTypeInfo type = own->PropType;
    if (TEnumInformation::IsEnumExType(type)) {
        if (isNamed(type, "QColor"))
            return ColorToString(GetPropValue(Object, own).value<QColor>());
        const qint64 value = GetOrdProp(Object, own);
        if (isNamed(type, "QCursor")) {
            QString ident;
            if (CursorToIdent(int(value), ident))
                return TranslateEnumValue(type, ident);
            return QString::number(value);
        }
        return TranslateEnumValue(type, GetEnumName(type, int(value)));
    }
    switch (type->Kind) {
    case tkInteger:
    case tkInt64:
        // The low 32 bits, signed: what a 32-bit write gives back.
        return QString::number(qint32(quint32(quint64(GetInt64Prop(Object, own)))));
    case tkFloat:
        return FloatToStr(GetFloatProp(Object, own));
    case tkChar:
    case tkWChar:
        return QString(QChar(char16_t(GetOrdProp(Object, own))));
    case tkString:
    case tkLString:
    case tkWString:
        return GetStrProp(Object, own);
    case tkSet:
        return GetSetProp(Object, own, true);
    case tkClass: {
        QObject *held = GetObjectProp(Object, own);
        if (!held)
            return {};
        if (!qobject_cast<TQorValueObject *>(held))
            return TranslateObjectName(type, held->objectName());
        return QLatin1Char('[') + TranslateClassName(type, QorClassName(InstanceClass(held))) + QLatin1Char(']');
    }
    case tkVariant:
        return GetPropValue(Object, own).toString();
    default:
        return {};
    }
}

QString GetPropertyValueStr(const QList<QObject *> &Objects, PPropInfo PropInfo)
{
    QString result;
    bool first = true;
    for (QObject *object : Objects) {
        if (!object)
            continue;
        const QString text = GetPropertyValueStr(object, PropInfo);
        if (first) {
            result = text;
            first = false;
        } else if (text != result) {
            return {};
        }
    }
    return result;
}

void SetPropertyValueStr(QObject *Object, PPropInfo PropInfo, const QString &Text)
{
    if (!Object || !PropInfo)
        return;
    PPropInfo own = InstancePropInfo(Object, PropInfo);
    const PTypeInfo type = own->PropType;
    if (TEnumInformation::IsEnumExType(type)) {
        if (isNamed(type, "QColor"))
            SetPropValue(Object, own, StringToColor(Text));
        else if (isNamed(type, "QCursor"))
            SetOrdProp(Object, own, qint16(StringToCursor(Text)));
        else
            SetEnumProp(Object, own, Text);
        return;
    }
    switch (type->Kind) {
    case tkInteger:
    case tkInt64:
        SetOrdProp(Object, own, StrToInt(Text));
        break;
    case tkFloat:
        SetFloatProp(Object, own, StrToFloat(Text));
        break;
    case tkChar:
    case tkWChar:
        SetOrdProp(Object, own, Text.isEmpty() ? 0 : Text.at(0).unicode());
        break;
    case tkString:
    case tkLString:
    case tkWString:
        SetPropValue(Object, own, Text);
        break;
    case tkSet:
        SetSetProp(Object, own, Text);
        break;
    case tkVariant:
        SetPropValue(Object, own, QVariant(Text));
        break;
    default:
        // Objects are stored through SetPropertyValueObj.
        break;
    }
}

void SetPropertyValueStr(const QList<QObject *> &Objects, PPropInfo PropInfo, const QString &Text)
{
    // An empty edit never overwrites a multiple selection.
    if (Text.isEmpty())
        return;
    for (QObject *object : Objects) {
        if (object)
            SetPropertyValueStr(object, PropInfo, Text);
    }
}

QObject *GetPropertyValueObj(QObject *Object, PPropInfo PropInfo)
{
    if (!Object || !PropInfo)
        return nullptr;
    return GetObjectProp(Object, PropInfo);
}

QObject *GetPropertyValueObj(const QList<QObject *> &Objects, PPropInfo PropInfo)
{
    // Each object has its own value object: two objects never share one,
    // and need not make theirs to find that out.
    if (PropInfo && PropInfo->PropType && PropInfo->PropType->Kind == tkClass && !IsComponentPTI(PropInfo->PropType)) {
        QObject *live = nullptr;
        for (QObject *object : Objects) {
            if (object && live && object != live)
                return nullptr;
            if (object)
                live = object;
        }
    }
    QObject *result = nullptr;
    bool first = true;
    for (QObject *object : Objects) {
        if (!object)
            continue;
        QObject *held = GetPropertyValueObj(object, PropInfo);
        if (first) {
            result = held;
            first = false;
        } else if (held != result) {
            return nullptr;
        }
    }
    return result;
}

void SetPropertyValueObj(QObject *Object, PPropInfo PropInfo, QObject *Value)
{
    if (Object && PropInfo)
        SetObjectProp(Object, PropInfo, Value, true);
}

void SetPropertyValueObj(const QList<QObject *> &Objects, PPropInfo PropInfo, QObject *Value)
{
    if (!Value)
        return;
    for (QObject *object : Objects) {
        if (object)
            SetObjectProp(object, PropInfo, Value, false);
    }
}

bool ChangeSetValueStr(TSetItemConst *SetItem, bool Include)
{
    if (!SetItem || !SetItem->BasedProperty())
        return false;
    TPropertyDetailEx *property = SetItem->BasedProperty();
    QString text = property->GetPropValueStr();
    const QString ident = SetItem->GetValueString();
    // A plain substring test: an identifier inside a longer one counts as
    // present.
    const bool present = text.contains(ident);
    if (Include == present)
        return false;
    text = text.trimmed();
    if (Include) {
        const int close = text.indexOf(QLatin1Char(']'));
        const int at = close < 0 ? text.size() : close;
        text.insert(at, text.size() > 2 ? QLatin1Char(',') + ident : ident);
    } else {
        const int at = text.indexOf(ident);
        text.remove(at, ident.size());
        if (text.size() > 2) {
            if (at < text.size() && text.at(at) == QLatin1Char(','))
                text.remove(at, 1);
            else if (at > 0)
                text.remove(at - 1, 1);
        }
    }
    property->SetPropValueStr(text);
    return true;
}

QString GetObjInspecIndentStr(int Level, bool Expandable, bool Expanded)
{
    QString indent = QString(QLatin1String("  ")).repeated(std::max(Level, 0));
    if (!Expandable)
        return indent + QLatin1String("  ");
    return indent + (Expanded ? QLatin1String("- ") : QLatin1String("+ "));
}

// ---- TPropertyDetail ---------------------------------------------------

namespace {

// The live objects and their serials; objects are made and freed on the
// thread that owns the inspector.
QHash<const TObject *, quint64> &liveObjects()
{
    static QHash<const TObject *, quint64> live;
    return live;
}

quint64 nextSerial()
{
    static quint64 serial = 0;
    return ++serial;
}

} // namespace

TObject::TObject()
    : m_serial(nextSerial())
{
    liveObjects().insert(this, m_serial);
}

TObject::TObject(const TObject &)
    : TObject()
{
}

TObject &TObject::operator=(const TObject &)
{
    // An object keeps its own serial: it is the same object.
    return *this;
}

TObject::~TObject()
{
    liveObjects().remove(this);
}

bool TObject::Alive(const TObject *Object, quint64 Serial)
{
    if (!Object)
        return false;
    const auto it = liveObjects().constFind(Object);
    return it != liveObjects().cend() && it.value() == Serial;
}

TPropertyDetail::TPropertyDetail(QObject *Object, const QString &PropName)
    : TPropertyDetail(Object, GetPropInfo(InstanceClass(Object), PropName))
{
}

TPropertyDetail::TPropertyDetail(QObject *Object, PPropInfo PropInfo)
    : m_propInfo(PropInfo)
    , m_basedObject(Object)
    , m_classInformation(std::make_unique<TClassInformation>())
{
    if (Object)
        m_classInformation->SetPTI(TypeInfoOfClass(InstanceClass(Object)));
}

TPropertyDetail::TPropertyDetail(const QList<QObject *> &Objects, PPropInfo PropInfo)
    : m_propInfo(PropInfo)
    , m_classInformation(std::make_unique<TClassInformation>())
    , m_hasBasedObjects(true)
{
    for (QObject *object : Objects)
        m_basedObjects.append(object);
    if (!Objects.isEmpty())
        m_basedObject = Objects.first();
    RefreshClassInformation();
}

TPropertyDetail::~TPropertyDetail() = default;

QList<QObject *> TPropertyDetail::GetBasedObjects() const
{
    return plain(m_basedObjects);
}

QString TPropertyDetail::GetPropValueStr() const
{
    if (!m_propInfo)
        return {};
    if (m_hasBasedObjects)
        return GetPropertyValueStr(plain(m_basedObjects), m_propInfo);
    return GetPropertyValueStr(m_basedObject.data(), m_propInfo);
}

void TPropertyDetail::SetPropValueStr(const QString &Text)
{
    if (GetPropValueStr() == Text)
        return;
    if (m_propInfo) {
        if (!m_hasBasedObjects)
            SetPropertyValueStr(m_basedObject.data(), m_propInfo, Text);
        else if (m_basedObjects.size() < 2)
            SetPropertyValueStr(m_basedObjects.value(0).data(), m_propInfo, Text);
        else
            SetPropertyValueStr(plain(m_basedObjects), m_propInfo, Text);
    }
    Refresh();
}

QObject *TPropertyDetail::GetPropValueObject() const
{
    if (!m_propInfo)
        return nullptr;
    if (m_hasBasedObjects)
        return GetPropertyValueObj(plain(m_basedObjects), m_propInfo);
    return GetPropertyValueObj(m_basedObject.data(), m_propInfo);
}

void TPropertyDetail::SetPropValueObject(QObject *Value)
{
    if (!m_propInfo || m_propInfo->PropType->Kind != tkClass)
        return;
    if (!m_hasBasedObjects)
        SetPropertyValueObj(m_basedObject.data(), m_propInfo, Value);
    else if (m_basedObjects.size() < 2)
        SetPropertyValueObj(m_basedObjects.value(0).data(), m_propInfo, Value);
    else
        SetPropertyValueObj(plain(m_basedObjects), m_propInfo, Value);
}

void TPropertyDetail::RefreshClassInformation()
{
    if (!m_hasBasedObjects) {
        if (m_basedObject)
            m_classInformation->SetPTI(TypeInfoOfClass(InstanceClass(m_basedObject)));
        return;
    }
    if (m_basedObjects.isEmpty())
        return;
    // The nearest class all of them share; value objects count as their
    // value type's descriptor.
    const QMetaObject *common = nullptr;
    for (const QPointer<QObject> &object : std::as_const(m_basedObjects)) {
        if (!object)
            continue;
        const QMetaObject *cls = InstanceClass(object);
        if (cls != common)
            common = common ? GetCommonParentClass(common, cls) : cls;
    }
    if (common)
        m_classInformation->SetPTI(TypeInfoOfClass(common));
}

void TPropertyDetail::Refresh()
{
}

void TPropertyDetail::SetBasedObject(QObject *Object)
{
    if (m_basedObject == Object)
        return;
    m_basedObject = Object;
    if (m_hasBasedObjects) {
        m_basedObjects.clear();
        m_basedObjects.append(Object);
    }
    RefreshClassInformation();
}

void TPropertyDetail::SetBasedObjects(const QList<QObject *> &Objects)
{
    if (m_hasBasedObjects && GetBasedObjects() == Objects)
        return;
    m_hasBasedObjects = true;
    m_basedObjects.clear();
    for (QObject *object : Objects)
        m_basedObjects.append(object);
    if (!Objects.isEmpty())
        m_basedObject = Objects.first();
    RefreshClassInformation();
}

void TPropertyDetail::SetBasedObjects(const QList<QPointer<QObject>> &Objects)
{
    if (m_hasBasedObjects && m_basedObjects == Objects)
        return;
    m_hasBasedObjects = true;
    m_basedObjects = Objects;
    if (!Objects.isEmpty())
        m_basedObject = Objects.first();
    RefreshClassInformation();
}

void TPropertyDetail::SetPropInfoRef(PPropInfo PropInfo)
{
    if (m_propInfo == PropInfo)
        return;
    m_propInfo = PropInfo;
    Refresh();
}

QString TPropertyDetail::GetPropName() const
{
    return m_propInfo ? m_propInfo->Name : QString();
}

void TPropertyDetail::SetPropName(const QString &Name)
{
    SetPropInfoRef(GetPropInfo(InstanceClass(m_basedObject), Name));
}

PTypeInfo TPropertyDetail::GetPropTypeInfoRef() const
{
    return m_propInfo ? m_propInfo->PropType : nullptr;
}

bool TPropertyDetail::GetPropWritable() const
{
    if (!m_propInfo || !m_propInfo->Property.isValid())
        return true;
    const QList<QPointer<QObject>> objects = m_hasBasedObjects ? m_basedObjects : QList<QPointer<QObject>>{m_basedObject};
    // A selection of many objects holds few classes: each is asked once.
    QVarLengthArray<const QMetaObject *, 8> asked;
    for (QObject *object : objects) {
        if (!object)
            continue;
        if (auto *value = qobject_cast<TQorValueObject *>(object)) {
            if (!value->TargetProp()->Property.isWritable())
                return false;
            continue;
        }
        const QMetaObject *cls = object->metaObject();
        if (std::find(asked.begin(), asked.end(), cls) != asked.end())
            continue;
        asked.append(cls);
        PPropInfo own = cls == m_propInfo->OwnerClass ? m_propInfo : GetPropInfo(cls, m_propInfo->Name);
        if (own && !own->Property.isWritable())
            return false;
    }
    return true;
}

// ---- TPropertyDetailEx -------------------------------------------------

TPropertyDetailEx::TPropertyDetailEx(QObject *Object, const QString &PropName)
    : TPropertyDetail(Object, PropName)
    , m_enumInformation(std::make_unique<TEnumInformation>())
{
    TPropertyDetailEx::Refresh();
}

TPropertyDetailEx::TPropertyDetailEx(QObject *Object, PPropInfo PropInfo)
    : TPropertyDetail(Object, PropInfo)
    , m_enumInformation(std::make_unique<TEnumInformation>())
{
    TPropertyDetailEx::Refresh();
}

TPropertyDetailEx::~TPropertyDetailEx() = default;

void TPropertyDetailEx::Refresh()
{
    TPropertyDetail::Refresh();
    const PTypeInfo type = GetPropTypeInfoRef();
    if (!type)
        return;
    if (TEnumInformation::IsEnumExType(type))
        m_enumInformation->SetPTI(type);
    else if (type->Kind == tkSet)
        m_enumInformation->SetPTI(type->TypeData.CompType);
}

// ---- TSetItemConst -----------------------------------------------------

TSetItemConst::TSetItemConst(TPropertyDetailEx *BasedProperty, qint32 EnumIndex)
    : m_basedProperty(BasedProperty)
    , m_enumIndex(EnumIndex)
{
}

TSetItemConst::~TSetItemConst() = default;

void TSetItemConst::SetBasedProperty(TPropertyDetailEx *Value)
{
    if (m_basedProperty != Value)
        m_basedProperty = Value;
}

void TSetItemConst::SetEnumIndex(qint32 Value)
{
    if (m_enumIndex != Value)
        m_enumIndex = Value;
}

TEnumInformation *TSetItemConst::GetEnumInformation() const
{
    return m_basedProperty ? &m_basedProperty->GetEnumInformation() : nullptr;
}

QString TSetItemConst::GetValueString() const
{
    TEnumInformation *info = GetEnumInformation();
    return info ? info->EnumNames().value(m_enumIndex) : QString();
}
