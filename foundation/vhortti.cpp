// SPDX-License-Identifier: MIT
#include "foundation/vhortti.h"

#include "foundation/qorerror.h"
#include "foundation/qortypinfo.h"
#include "foundation/qorvaluetypes_p.h"
#include "foundation/vhortti_p.h"

#include <QColor>
#include <QCursor>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <QVarLengthArray>

#include <algorithm>
#include <bit>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

#if defined(Q_OS_UNIX)
#include <dlfcn.h>
#endif

namespace {

// Every descriptor made so far. Descriptors are never freed before the
// process ends, so the pointers handed out stay valid; the look-ups are
// guarded because descriptors may be asked for from any thread.
struct TypeRegistry
{
    std::recursive_mutex mutex;
    std::vector<std::unique_ptr<TTypeInfo>> types;
    QHash<QString, PTypeInfo> byKey;
    QHash<const QMetaObject *, PTypeInfo> byClass;
    std::map<std::pair<const QMetaObject *, int>, std::unique_ptr<TPropInfo>> props;
    QHash<const QMetaObject *, QList<PPropInfo>> propLists;
    std::map<std::pair<const QMetaObject *, int>, std::unique_ptr<TPropInfo>> events;
    QHash<const QMetaObject *, QList<PPropInfo>> eventLists;
    // The published property of a class by name; null for none.
    QHash<std::pair<const QMetaObject *, QString>, PPropInfo> byName;
};

TypeRegistry &registry()
{
    static TypeRegistry instance;
    return instance;
}

TTypeInfo *addType(TypeRegistry &reg, const QString &key, TTypeKind kind, const QString &name)
{
    auto info = std::make_unique<TTypeInfo>();
    info->Kind = kind;
    info->Name = name;
    TTypeInfo *raw = info.get();
    reg.types.push_back(std::move(info));
    reg.byKey.insert(key, raw);
    return raw;
}

QString keyOf(TTypeKind kind, const QString &name)
{
    return TypeKindToString(kind) + QLatin1Char(':') + name;
}

QString enumTypeName(const QMetaEnum &e, bool asSet)
{
    const QString name = QString::fromLatin1(asSet ? e.name() : e.enumName());
    const QString scope = QString::fromLatin1(e.scope());
    return scope.isEmpty() ? name : scope + QLatin1String("::") + name;
}

void setOrdinalRange(TTypeInfo *info, const QMetaEnum &e)
{
    if (e.keyCount() == 0)
        return;
    qint32 lo = std::numeric_limits<qint32>::max();
    qint32 hi = std::numeric_limits<qint32>::min();
    for (int i = 0; i < e.keyCount(); ++i) {
        lo = std::min(lo, qint32(e.value(i)));
        hi = std::max(hi, qint32(e.value(i)));
    }
    info->TypeData.MinValue = lo;
    info->TypeData.MaxValue = hi;
}

// The enumeration named by an enumerator: for a flag enumerator, the
// enumeration of its single flags.
PTypeInfo enumInfo(TypeRegistry &reg, const QMetaEnum &e)
{
    const QString name = enumTypeName(e, false);
    const QString key = keyOf(tkEnumeration, name);
    if (PTypeInfo known = reg.byKey.value(key))
        return known;
    TTypeInfo *info = addType(reg, key, tkEnumeration, name);
    info->Enum = e;
    setOrdinalRange(info, e);
    info->TypeData.BaseType = info;
    return info;
}

PTypeInfo setInfo(TypeRegistry &reg, const QMetaEnum &e)
{
    const QString name = enumTypeName(e, true);
    const QString key = keyOf(tkSet, name);
    if (PTypeInfo known = reg.byKey.value(key))
        return known;
    PTypeInfo comp = enumInfo(reg, e);
    TTypeInfo *info = addType(reg, key, tkSet, name);
    info->Enum = e;
    info->TypeData.CompType = comp;
    return info;
}

PTypeInfo simpleInfo(TypeRegistry &reg, TTypeKind kind, const QString &name, QMetaType type,
                     qint32 minValue = 0, qint32 maxValue = 0)
{
    const QString key = keyOf(kind, name);
    if (PTypeInfo known = reg.byKey.value(key))
        return known;
    TTypeInfo *info = addType(reg, key, kind, name);
    info->MetaType = type;
    info->TypeData.MinValue = minValue;
    info->TypeData.MaxValue = maxValue;
    if (kind == tkInteger || kind == tkChar || kind == tkWChar || kind == tkEnumeration)
        info->TypeData.BaseType = info;
    return info;
}

template<typename T>
qint32 clampedMin()
{
    return qint32(std::max<qint64>(qint64(std::numeric_limits<T>::min()), std::numeric_limits<qint32>::min()));
}

template<typename T>
qint32 clampedMax()
{
    return qint32(std::min<quint64>(quint64(std::numeric_limits<T>::max()), quint64(std::numeric_limits<qint32>::max())));
}

// The module a class comes from: the shared object or program holding its
// meta-object ("Qt6Widgets", "QorDesign", the program's name); a class
// can name its own with Q_CLASSINFO("QorUnit", ...).
QString unitNameOf(const QMetaObject *meta)
{
    const int info = meta->indexOfClassInfo("QorUnit");
    if (info >= 0)
        return QString::fromUtf8(meta->classInfo(info).value());
#if defined(Q_OS_UNIX)
    Dl_info where{};
    if (dladdr(static_cast<const void *>(meta), &where) && where.dli_fname) {
        QString file = QFileInfo(QString::fromLocal8Bit(where.dli_fname)).fileName();
        const int so = file.indexOf(QLatin1String(".so"));
        if (so > 0)
            file.truncate(so);
        if (file.startsWith(QLatin1String("lib")) && so > 0)
            file.remove(0, 3);
        return file;
    }
#endif
    return {};
}

PTypeInfo classInfo(TypeRegistry &reg, const QMetaObject *meta);

QList<PPropInfo> propInfosOf(TypeRegistry &reg, const QMetaObject *meta);

PPropInfo propInfo(TypeRegistry &reg, const QMetaObject *meta, int index)
{
    auto &slot = reg.props[{meta, index}];
    if (!slot) {
        auto info = std::make_unique<TPropInfo>();
        info->Property = meta->property(index);
        info->Name = QString::fromLatin1(info->Property.name());
        info->OwnerClass = meta;
        info->PropType = TypeInfoOfProperty(info->Property);
        slot = std::move(info);
    }
    return slot.get();
}

PTypeInfo classInfo(TypeRegistry &reg, const QMetaObject *meta)
{
    if (!meta)
        return nullptr;
    if (PTypeInfo known = reg.byClass.value(meta))
        return known;
    auto owned = std::make_unique<TTypeInfo>();
    TTypeInfo *info = owned.get();
    info->Kind = tkClass;
    info->Name = QorClassName(meta);
    info->MetaType = DescribedValueType(meta);
    reg.types.push_back(std::move(owned));
    // Registered before its parent and properties are looked up, so that a
    // property typed with its own class finds it.
    reg.byClass.insert(meta, info);
    info->TypeData.ClassType = meta;
    info->TypeData.UnitName = unitNameOf(meta);
    info->TypeData.ParentInfo = classInfo(reg, meta->superClass());
    info->TypeData.PropCount = qint32(propInfosOf(reg, meta).size());
    return info;
}

QList<PPropInfo> propInfosOf(TypeRegistry &reg, const QMetaObject *meta)
{
    auto cached = reg.propLists.constFind(meta);
    if (cached != reg.propLists.constEnd())
        return *cached;
    QList<PPropInfo> list;
    for (int i = 0; i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        // A class that declares a name again hides the ancestor's property,
        // also from the designer when it makes it undesignable.
        if (meta->indexOfProperty(property.name()) != i || !property.isDesignable())
            continue;
        list.append(propInfo(reg, meta, i));
    }
    reg.propLists.insert(meta, list);
    return list;
}

bool sameName(const QString &a, const char *b)
{
    return a.compare(QLatin1String(b), Qt::CaseInsensitive) == 0;
}

} // namespace

QString TypeKindToString(TTypeKind Kind)
{
    return QString::fromLatin1(QMetaEnum::fromType<TTypeKind>().valueToKey(Kind));
}

QString QorClassName(const QMetaObject *Class)
{
    if (!Class)
        return {};
    const int info = Class->indexOfClassInfo("QorValueType");
    if (info >= 0)
        return QString::fromLatin1(Class->classInfo(info).value());
    return QString::fromLatin1(Class->className());
}

PTypeInfo TypeInfoOfClass(const QMetaObject *Class)
{
    TypeRegistry &reg = registry();
    std::lock_guard lock(reg.mutex);
    return classInfo(reg, Class);
}

PTypeInfo TypeInfoOfEnum(const QMetaEnum &Enum)
{
    if (!Enum.isValid())
        return TypeInfoOfMetaType(QMetaType());
    TypeRegistry &reg = registry();
    std::lock_guard lock(reg.mutex);
    return Enum.isFlag() ? setInfo(reg, Enum) : enumInfo(reg, Enum);
}

PTypeInfo TypeInfoOfMetaType(QMetaType Type)
{
    TypeRegistry &reg = registry();
    std::lock_guard lock(reg.mutex);
    if (!Type.isValid())
        return simpleInfo(reg, tkUnknown, QString(), Type);
    if (Type.flags().testFlag(QMetaType::PointerToQObject) && Type.metaObject())
        return classInfo(reg, Type.metaObject());
    if (const QMetaObject *descriptor = ValueTypeDescriptor(Type))
        return classInfo(reg, descriptor);
    if (Type.flags().testFlag(QMetaType::IsEnumeration) && Type.metaObject()) {
        // A registered enumeration: its enumerator is declared in the
        // meta-object of its scope under the type's last name.
        QByteArray name = Type.name();
        const int colons = name.lastIndexOf("::");
        if (colons >= 0)
            name = name.mid(colons + 2);
        const int index = Type.metaObject()->indexOfEnumerator(name.constData());
        if (index >= 0) {
            const QMetaEnum e = Type.metaObject()->enumerator(index);
            return e.isFlag() ? setInfo(reg, e) : enumInfo(reg, e);
        }
    }
    const QString name = QString::fromLatin1(Type.name());
    switch (Type.id()) {
    case QMetaType::Bool:
        return simpleInfo(reg, tkEnumeration, name, Type, 0, 1);
    case QMetaType::Int:
        return simpleInfo(reg, tkInteger, name, Type, clampedMin<int>(), clampedMax<int>());
    case QMetaType::UInt:
        return simpleInfo(reg, tkInteger, name, Type, clampedMin<uint>(), clampedMax<uint>());
    case QMetaType::Short:
        return simpleInfo(reg, tkInteger, name, Type, clampedMin<short>(), clampedMax<short>());
    case QMetaType::UShort:
        return simpleInfo(reg, tkInteger, name, Type, clampedMin<ushort>(), clampedMax<ushort>());
    case QMetaType::Long:
        return simpleInfo(reg, tkInteger, name, Type, clampedMin<long>(), clampedMax<long>());
    case QMetaType::ULong:
        return simpleInfo(reg, tkInteger, name, Type, clampedMin<ulong>(), clampedMax<ulong>());
    case QMetaType::Char:
        return simpleInfo(reg, tkInteger, name, Type, clampedMin<char>(), clampedMax<char>());
    case QMetaType::SChar:
        return simpleInfo(reg, tkInteger, name, Type, clampedMin<signed char>(), clampedMax<signed char>());
    case QMetaType::UChar:
        return simpleInfo(reg, tkInteger, name, Type, clampedMin<uchar>(), clampedMax<uchar>());
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return simpleInfo(reg, tkInt64, name, Type);
    case QMetaType::Double:
    case QMetaType::Float:
        return simpleInfo(reg, tkFloat, name, Type);
    case QMetaType::QChar:
    case QMetaType::Char16:
        return simpleInfo(reg, tkWChar, name, Type, 0, 0xFFFF);
    case QMetaType::QString:
    case QMetaType::QByteArray:
        return simpleInfo(reg, tkLString, name, Type);
    case QMetaType::QVariant:
        return simpleInfo(reg, tkVariant, name, Type);
    // Colours and cursors are numbers with named values, like the enumerations.
    case QMetaType::QColor:
    case QMetaType::QCursor:
        return simpleInfo(reg, tkInteger, name, Type);
    case QMetaType::QStringList:
    case QMetaType::QByteArrayList:
    case QMetaType::QVariantList:
        return simpleInfo(reg, tkDynArray, name, Type);
    default:
        break;
    }
    if (name.startsWith(QLatin1String("QList<")) || name.startsWith(QLatin1String("QVector<")))
        return simpleInfo(reg, tkDynArray, name, Type);
    if (Type.flags().testFlag(QMetaType::IsPointer))
        return simpleInfo(reg, tkUnknown, name, Type);
    // Other values with a structure of their own (dates, key sequences,
    // icons, brushes...).
    return simpleInfo(reg, tkRecord, name, Type);
}

PTypeInfo TypeInfoOfProperty(const QMetaProperty &Property)
{
    if (Property.isEnumType() || Property.isFlagType())
        return TypeInfoOfEnum(Property.enumerator());
    return TypeInfoOfMetaType(Property.metaType());
}

PTypeInfo TypeInfoOfMethod(const QMetaMethod &Method)
{
    QStringList parameters;
    for (const QByteArray &type : Method.parameterTypes())
        parameters.append(QString::fromLatin1(type));
    const QString returnType = QString::fromLatin1(Method.typeName());
    const QString name = (returnType.isEmpty() ? QStringLiteral("void") : returnType) + QLatin1Char('(')
        + parameters.join(QLatin1Char(',')) + QLatin1Char(')');
    TypeRegistry &reg = registry();
    std::lock_guard lock(reg.mutex);
    return simpleInfo(reg, tkMethod, name, QMetaType());
}

PTypeData GetTypeData(PTypeInfo PTI)
{
    return PTI ? &PTI->TypeData : nullptr;
}

QList<PPropInfo> GetPropInfos(const QMetaObject *Class)
{
    if (!Class)
        return {};
    TypeRegistry &reg = registry();
    std::lock_guard lock(reg.mutex);
    return propInfosOf(reg, Class);
}

QList<PPropInfo> GetEventInfos(const QMetaObject *Class)
{
    if (!Class)
        return {};
    TypeRegistry &reg = registry();
    std::lock_guard lock(reg.mutex);
    const auto cached = reg.eventLists.constFind(Class);
    if (cached != reg.eventLists.constEnd())
        return *cached;
    QList<PPropInfo> list;
    QSet<QByteArray> seen;
    for (int i = 0; i < Class->methodCount(); ++i) {
        const QMetaMethod method = Class->method(i);
        if (method.methodType() != QMetaMethod::Signal || method.access() != QMetaMethod::Public
            || seen.contains(method.name()))
            continue;
        seen.insert(method.name());
        auto &slot = reg.events[{Class, i}];
        if (!slot) {
            auto info = std::make_unique<TPropInfo>();
            info->Name = QString::fromLatin1(method.name());
            info->Method = method;
            info->OwnerClass = Class;
            info->PropType = TypeInfoOfMethod(method);
            slot = std::move(info);
        }
        list.append(slot.get());
    }
    reg.eventLists.insert(Class, list);
    return list;
}

QList<PPropInfo> GetPropInfos(PTypeInfo PTI)
{
    if (!PTI || PTI->Kind != tkClass)
        return {};
    return GetPropInfos(PTI->TypeData.ClassType);
}

void SortPropList(QList<PPropInfo> &PropList)
{
    std::stable_sort(PropList.begin(), PropList.end(), [](PPropInfo a, PPropInfo b) {
        const int byText = a->Name.compare(b->Name, Qt::CaseInsensitive);
        return byText != 0 ? byText < 0 : a->Name < b->Name;
    });
}

PPropInfo GetPropInfo(const QMetaObject *Class, const QString &PropName, TTypeKinds Kinds)
{
    if (!Class || PropName.isEmpty())
        return nullptr;
    TypeRegistry &reg = registry();
    std::lock_guard lock(reg.mutex);
    // Each class and name is looked up once: the inspector asks again for
    // every row and every class of a selection.
    const auto key = std::make_pair(Class, PropName);
    auto known = reg.byName.constFind(key);
    if (known == reg.byName.constEnd()) {
        const int index = Class->indexOfProperty(PropName.toLatin1().constData());
        const bool published = index >= 0 && Class->property(index).isDesignable();
        known = reg.byName.insert(key, published ? propInfo(reg, Class, index) : nullptr);
    }
    const PPropInfo info = *known;
    if (!info) {
        if (!Kinds.contains(tkMethod))
            return nullptr;
        for (PPropInfo event : GetEventInfos(Class)) {
            if (event->Name == PropName)
                return event;
        }
        return nullptr;
    }
    return Kinds.contains(info->PropType->Kind) ? info : nullptr;
}

PPropInfo GetPropInfo(const QObject *Instance, const QString &PropName, TTypeKinds Kinds)
{
    // A value object has the fields of its value type.
    return Instance ? GetPropInfo(InstanceClass(Instance), PropName, Kinds) : nullptr;
}

QString GetEnumName(PTypeInfo PTI, int Value)
{
    if (!PTI)
        return {};
    if (PTI->Kind == tkEnumeration && PTI->Enum.isValid())
        return QString::fromLatin1(PTI->Enum.valueToKey(Value));
    if (PTI->Kind == tkEnumeration && PTI->MetaType.id() == QMetaType::Bool) {
        if (Value == 0)
            return QStringLiteral("False");
        if (Value == 1)
            return QStringLiteral("True");
    }
    return {};
}

int GetEnumValue(PTypeInfo PTI, const QString &Name)
{
    if (!PTI || PTI->Kind != tkEnumeration)
        return -1;
    if (PTI->Enum.isValid()) {
        for (int i = 0; i < PTI->Enum.keyCount(); ++i) {
            if (Name.compare(QLatin1String(PTI->Enum.key(i)), Qt::CaseInsensitive) == 0)
                return PTI->Enum.value(i);
        }
        return -1;
    }
    if (PTI->MetaType.id() == QMetaType::Bool) {
        if (sameName(Name, "False"))
            return 0;
        if (sameName(Name, "True"))
            return 1;
    }
    return -1;
}

void SetStrProp(QObject *Instance, PPropInfo PropInfo, const QString &Value)
{
    if (!Instance || !PropInfo)
        throw EPropertyError(QStringLiteral("No property to write"));
    const TTypeKind kind = PropInfo->PropType->Kind;
    if (kind != tkString && kind != tkLString && kind != tkWString) {
        throw EPropertyError(QStringLiteral("Property %1 of %2 is not a text property")
                                 .arg(PropInfo->Name, QString::fromLatin1(Instance->metaObject()->className())));
    }
    if (!PropInfo->Property.write(Instance, Value)) {
        throw EPropertyError(QStringLiteral("Property %1 of %2 cannot be written")
                                 .arg(PropInfo->Name, QString::fromLatin1(Instance->metaObject()->className())));
    }
}

QVariant GetValueTypeField(const QVariant &Value, PPropInfo Field)
{
    return Field ? ReadValueField(Value, Field->OwnerClass, Field->Property) : QVariant();
}

bool SetValueTypeField(QVariant &Value, PPropInfo Field, const QVariant &FieldValue)
{
    return Field && WriteValueField(Value, Field->OwnerClass, Field->Property, FieldValue);
}

QStringList ColorValueNames()
{
    static const QStringList names = [] {
        QStringList list;
        // Qt's own colour constants first; color0 and color1 are bitmap
        // planes, not colours to pick.
        const QMetaEnum global = QMetaEnum::fromType<Qt::GlobalColor>();
        for (int i = 0; i < global.keyCount(); ++i) {
            const QString key = QString::fromLatin1(global.key(i));
            if (key != QLatin1String("color0") && key != QLatin1String("color1"))
                list.append(key);
        }
        // Then the named colours Qt parses, without the names taken above.
        for (const QString &name : QColor::colorNames()) {
            if (!list.contains(name, Qt::CaseInsensitive))
                list.append(name);
        }
        return list;
    }();
    return names;
}

QStringList CursorValueNames()
{
    static const QStringList names = [] {
        QStringList list;
        const QMetaEnum shapes = QMetaEnum::fromType<Qt::CursorShape>();
        for (int i = 0; i < shapes.keyCount(); ++i) {
            // The shapes a user can pick: bitmap and custom cursors need
            // pictures, and LastCursor is another name of the last shape.
            if (shapes.value(i) <= Qt::LastCursor && qstrcmp(shapes.key(i), "LastCursor") != 0)
                list.append(QString::fromLatin1(shapes.key(i)));
        }
        return list;
    }();
    return names;
}

TRTTIInformation::TRTTIInformation() = default;
TRTTIInformation::~TRTTIInformation() = default;

void TRTTIInformation::SetPTI(PTypeInfo Value)
{
    m_PTI = Value;
    Update();
}

TTypeKind TRTTIInformation::TypeKind() const
{
    return m_PTI ? m_PTI->Kind : tkUnknown;
}

QString TRTTIInformation::TypeKindName() const
{
    return TypeKindToString(TypeKind());
}

QString TRTTIInformation::TypeName() const
{
    return m_PTI ? m_PTI->Name : QString();
}

void TRTTIInformation::Update()
{
    m_PTD = m_PTI ? GetTypeData(m_PTI) : nullptr;
}

TClassInformation::TClassInformation() = default;
TClassInformation::~TClassInformation() = default;

void TClassInformation::Update()
{
    TRTTIInformation::Update();
    if (!m_PTI)
        return;
    // Every row of the inspector describes its objects' class: the sorted
    // lists are made once per class, and shared afterwards.
    struct Sorted
    {
        QStringList parents;
        QList<PPropInfo> props;
        QList<PPropInfo> events;
        QList<PPropInfo> both;
    };
    static QHash<PTypeInfo, Sorted> cache;
    TypeRegistry &reg = registry();
    std::lock_guard lock(reg.mutex);
    auto known = cache.constFind(m_PTI);
    if (known == cache.constEnd()) {
        Sorted sorted;
        GetParentClassNames(m_PTD, sorted.parents);
        if (m_PTD->PropCount != 0) {
            sorted.props = GetPropInfos(m_PTI);
            // The fields of a value read in their natural order (x, y,
            // width, height), which their descriptor declares; a class's
            // properties are many, and found by name.
            if (!DescribedValueType(m_PTD->ClassType).isValid())
                SortPropList(sorted.props);
        }
        sorted.events = GetEventInfos(m_PTD->ClassType);
        SortPropList(sorted.events);
        sorted.both = sorted.props;
        if (!sorted.events.isEmpty()) {
            sorted.both += sorted.events;
            SortPropList(sorted.both);
        }
        known = cache.insert(m_PTI, sorted);
    }
    m_ParentClassNames = known->parents;
    m_PropCount = m_PTD->PropCount;
    m_PropList = known->props;
    m_EventList = known->events;
    m_PropAndEventList = known->both;
}

QString TClassInformation::ClassNameStr() const
{
    return QorClassName(ClassTypeRef());
}

const QMetaObject *TClassInformation::ClassTypeRef() const
{
    return m_PTD ? m_PTD->ClassType : nullptr;
}

QString TClassInformation::DefineUnit() const
{
    return m_PTD ? m_PTD->UnitName : QString();
}

int TClassInformation::ClassSize() const
{
    return int(sizeof(TClassInformation));
}

const QMetaObject *TClassInformation::ParentClass() const
{
    const QMetaObject *cls = ClassTypeRef();
    return cls ? cls->superClass() : nullptr;
}

QString TClassInformation::PropNameStr(int Index) const
{
    return Index >= 0 && Index < m_PropList.size() ? m_PropList.at(Index)->Name : QString();
}

QString TClassInformation::PropTypeStr(int Index) const
{
    return Index >= 0 && Index < m_PropList.size() ? m_PropList.at(Index)->PropType->Name : QString();
}

TEnumInformation::TEnumInformation() = default;
TEnumInformation::~TEnumInformation() = default;

PTypeInfo TEnumInformation::BasedTypeInfo() const
{
    return m_PTD ? m_PTD->BaseType : nullptr;
}

qint32 TEnumInformation::MinValue() const
{
    return m_PTD ? m_PTD->MinValue : 0;
}

qint32 TEnumInformation::MaxValue() const
{
    return m_PTD ? m_PTD->MaxValue : 0;
}

void TEnumInformation::Update()
{
    TRTTIInformation::Update();
    if (m_PTI)
        ListEnumValuesEx(m_PTI, m_EnumNames);
}

void TEnumInformation::AddToEnumNames(const QString &S)
{
    m_EnumNames.append(S);
}

void TEnumInformation::ListEnumValuesEx(PTypeInfo PTI, QStringList &Strings)
{
    Strings.clear();
    const QString name = PTI ? PTI->Name : QString();
    if (sameName(name, "QColor")) {
        for (const QString &colour : ColorValueNames())
            AddToEnumNames(colour);
    } else if (sameName(name, "QCursor")) {
        for (const QString &shape : CursorValueNames())
            AddToEnumNames(shape);
    } else if (sameName(name, "bool")) {
        Strings << QStringLiteral("False") << QStringLiteral("True");
    } else {
        ListEnumValues(PTI, Strings);
    }
}

bool TEnumInformation::IsEnumExType(PTypeInfo PTI)
{
    if (!PTI)
        return false;
    if (PTI->Kind == tkEnumeration)
        return true;
    return sameName(PTI->Name, "QColor") || sameName(PTI->Name, "QCursor") || sameName(PTI->Name, "bool");
}

bool SetObjStrProp(QObject *Obj, const QString &PropName, const QString &Value)
{
    PPropInfo info = GetPropInfo(Obj, PropName);
    if (!info)
        return false;
    SetStrProp(Obj, info, Value);
    return true;
}

bool IsComponentPTI(PTypeInfo PTI)
{
    return PTI && PTI->Kind == tkClass && PTI->TypeData.ClassType
        && PTI->TypeData.ClassType->inherits(&QObject::staticMetaObject);
}

void ListEnumValues(PTypeInfo PTI, QStringList &Strings)
{
    Strings.clear();
    if (!PTI || PTI->Kind != tkEnumeration)
        return;
    if (!PTI->Enum.isValid()) {
        for (qint64 value = PTI->TypeData.MinValue; value <= PTI->TypeData.MaxValue; ++value)
            Strings.append(GetEnumName(PTI, int(value)));
        return;
    }
    // Qt's enumerations may leave values out and give one value several
    // names: one name per value, the first declared, in ascending order.
    // The elements of a flags type are its single bits; its other names
    // (none, masks, combinations) are shorthands, not elements.
    const bool flags = PTI->Enum.isFlag();
    std::map<qint32, QString> byValue;
    for (int i = 0; i < PTI->Enum.keyCount(); ++i) {
        const qint32 value = qint32(PTI->Enum.value(i));
        if (!flags || std::has_single_bit(quint32(value)))
            byValue.try_emplace(value, QString::fromLatin1(PTI->Enum.key(i)));
    }
    for (const auto &[value, key] : byValue)
        Strings.append(key);
}

void GetParentClassNames(PTypeData PTD, QStringList &Strings)
{
    Strings.clear();
    if (!PTD || !PTD->ClassType)
        return;
    for (const QMetaObject *cls = PTD->ClassType->superClass(); cls; cls = cls->superClass())
        Strings.append(QorClassName(cls));
}

void GetClassPropertyNames(PTypeInfo PTI, QStringList &Strings)
{
    Strings.clear();
    QList<PPropInfo> list = GetPropInfos(PTI);
    if (list.isEmpty())
        return;
    SortPropList(list);
    for (PPropInfo info : std::as_const(list))
        Strings.append(info->Name);
}

bool PropInfoInComps(PPropInfo PropInfo, const QList<QObject *> &Objects)
{
    if (!PropInfo)
        return Objects.isEmpty();
    // A selection of thousands holds few classes: each is asked once.
    QVarLengthArray<const QMetaObject *, 8> asked;
    for (QObject *object : Objects) {
        const QMetaObject *cls = InstanceClass(object);
        if (std::find(asked.begin(), asked.end(), cls) != asked.end())
            continue;
        if (!GetPropInfo(cls, PropInfo->Name, {PropInfo->PropType->Kind}))
            return false;
        asked.append(cls);
    }
    return true;
}
