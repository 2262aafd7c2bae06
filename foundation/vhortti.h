// SPDX-License-Identifier: MIT
// Type information: what kind of type a property has, the published
// properties of a class in name order, the names of an enumeration's values,
// whether a class is a component class. Built over Qt's meta-object system:
// every type the designer meets is described once by an interned type
// descriptor (PTypeInfo), every published property by a property descriptor
// (PPropInfo); the information classes below wrap them for the object
// inspector, the naming functions and the translation manager.
#pragma once

#include "qordesign_export.h"

#include <QList>
#include <QMetaEnum>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QMetaType>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <initializer_list>

namespace VhoRTTI {
Q_NAMESPACE_EXPORT(QORDESIGN_EXPORT)

// The kinds of types, in the order the type system numbers them. Which Qt
// types fall under which kind is decided in one place, TypeInfoOfMetaType.
enum TTypeKind {
    tkUnknown,
    tkInteger,
    tkChar,
    tkEnumeration,
    tkFloat,
    tkString,
    tkSet,
    tkClass,
    tkMethod,
    tkWChar,
    tkLString,
    tkWString,
    tkVariant,
    tkArray,
    tkRecord,
    tkInterface,
    tkInt64,
    tkDynArray
};
Q_ENUM_NS(TTypeKind)

} // namespace VhoRTTI

using VhoRTTI::TTypeKind;

// A set of type kinds.
class QORDESIGN_EXPORT TTypeKinds
{
public:
    constexpr TTypeKinds() = default;
    constexpr TTypeKinds(std::initializer_list<TTypeKind> kinds)
    {
        for (TTypeKind kind : kinds)
            m_bits |= bit(kind);
    }
    // Every kind.
    static constexpr TTypeKinds all()
    {
        TTypeKinds kinds;
        kinds.m_bits = (quint32(1) << (int(VhoRTTI::tkDynArray) + 1)) - 1;
        return kinds;
    }
    constexpr bool contains(TTypeKind kind) const { return (m_bits & bit(kind)) != 0; }
    constexpr bool isEmpty() const { return m_bits == 0; }

private:
    static constexpr quint32 bit(TTypeKind kind) { return quint32(1) << int(kind); }
    quint32 m_bits = 0;
};

struct TTypeInfo;
struct TPropInfo;
using PTypeInfo = const TTypeInfo *;
using PPropInfo = const TPropInfo *;

// What the type system knows beyond a type's kind and name. Which fields
// mean something depends on the kind: the class fields for tkClass, the
// ordinal fields for tkEnumeration, tkInteger, tkChar and tkWChar, CompType
// for tkSet.
struct TTypeData
{
    // tkClass: the class (a QObject class, or the descriptor of a value
    // type such as QFont), its parent's type, the number of its published
    // properties (inherited ones included) and the module that defines it.
    const QMetaObject *ClassType = nullptr;
    PTypeInfo ParentInfo = nullptr;
    qint32 PropCount = 0;
    QString UnitName;
    // Ordinals: the smallest and largest value, the type they are taken from.
    qint32 MinValue = 0;
    qint32 MaxValue = 0;
    PTypeInfo BaseType = nullptr;
    // tkSet: the enumeration whose keys the set holds.
    PTypeInfo CompType = nullptr;
};
using PTypeData = const TTypeData *;

// One type. Descriptors are made once per type and live as long as the
// process, so pointers to them can be compared and kept.
struct TTypeInfo
{
    TTypeKind Kind = VhoRTTI::tkUnknown;
    QString Name;
    // The Qt type of values of this type; invalid for classes and methods.
    QMetaType MetaType;
    // Enumerations and sets: the enumerator that names the values.
    QMetaEnum Enum;
    TTypeData TypeData;
};

// One published property of a class: a designable Qt property, the most
// derived declaration where a class declares a name again.
struct TPropInfo
{
    QString Name;
    PTypeInfo PropType = nullptr;
    QMetaProperty Property;
    // The class the property is looked up in (not necessarily the one that
    // declares it).
    const QMetaObject *OwnerClass = nullptr;
    // Events (kind tkMethod): the signal; invalid for properties.
    QMetaMethod Method;
};

// The text of a type kind: "tkUnknown", "tkInteger", ...
QORDESIGN_EXPORT QString TypeKindToString(TTypeKind Kind);

// Type descriptors. A class's descriptor is named after the class; a value
// type described by a descriptor class (QFont, QSize, ...) gets the value
// type's name. Null only for a null class.
QORDESIGN_EXPORT PTypeInfo TypeInfoOfClass(const QMetaObject *Class);
QORDESIGN_EXPORT PTypeInfo TypeInfoOfMetaType(QMetaType Type);
QORDESIGN_EXPORT PTypeInfo TypeInfoOfEnum(const QMetaEnum &Enum);
QORDESIGN_EXPORT PTypeInfo TypeInfoOfProperty(const QMetaProperty &Property);
// A signal's type: kind tkMethod, named after its parameter types, e.g.
// "void(bool)".
QORDESIGN_EXPORT PTypeInfo TypeInfoOfMethod(const QMetaMethod &Method);
template<typename T>
PTypeInfo TypeInfoOf()
{
    if constexpr (std::is_base_of_v<QObject, T>)
        return TypeInfoOfClass(&T::staticMetaObject);
    else
        return TypeInfoOfMetaType(QMetaType::fromType<T>());
}

// The class name to show for a class: a value type's name for the
// descriptor of a value type, else the class's own name.
QORDESIGN_EXPORT QString QorClassName(const QMetaObject *Class);

// The type data of a type; null for null.
QORDESIGN_EXPORT PTypeData GetTypeData(PTypeInfo PTI);

// The published properties of a class, in the class's declaration order
// (ancestors first). GetPropInfos of a type that is not a class is empty.
QORDESIGN_EXPORT QList<PPropInfo> GetPropInfos(PTypeInfo PTI);
QORDESIGN_EXPORT QList<PPropInfo> GetPropInfos(const QMetaObject *Class);
// The events of a class: its public signals and its ancestors', one per
// name (the first declared), in declaration order; each is a property of
// kind tkMethod named after the signal.
QORDESIGN_EXPORT QList<PPropInfo> GetEventInfos(const QMetaObject *Class);
// Sorts properties by name.
QORDESIGN_EXPORT void SortPropList(QList<PPropInfo> &PropList);
// The published property of that name (case-sensitive, as Qt's property
// names are) whose type is of one of the kinds, or the event of that name
// when the kinds hold tkMethod and no property has it; null when there is
// none.
QORDESIGN_EXPORT PPropInfo GetPropInfo(const QMetaObject *Class, const QString &PropName,
                                       TTypeKinds Kinds = TTypeKinds::all());
QORDESIGN_EXPORT PPropInfo GetPropInfo(const QObject *Instance, const QString &PropName,
                                       TTypeKinds Kinds = TTypeKinds::all());

// The name of an enumeration's value; "False"/"True" for bool; "" for a
// value without a name.
QORDESIGN_EXPORT QString GetEnumName(PTypeInfo PTI, int Value);
// The value of an enumeration's name (case-insensitive); -1 when unknown.
QORDESIGN_EXPORT int GetEnumValue(PTypeInfo PTI, const QString &Name);

// Writes a text property. Throws EPropertyError when the property is not a
// text property or does not take the value.
QORDESIGN_EXPORT void SetStrProp(QObject *Instance, PPropInfo PropInfo, const QString &Value);

// Reads a field of a value type (a sub-property of a QFont, QSize, ...)
// out of a value of that type, and writes one into it. The field comes
// from GetPropInfos of the value type's descriptor. Writing answers false
// when the field does not take the value; the value is unchanged then.
QORDESIGN_EXPORT QVariant GetValueTypeField(const QVariant &Value, PPropInfo Field);
QORDESIGN_EXPORT bool SetValueTypeField(QVariant &Value, PPropInfo Field, const QVariant &FieldValue);

// The named colours a colour property offers, and the cursor shapes a
// cursor property offers, in the order a pick list shows them.
QORDESIGN_EXPORT QStringList ColorValueNames();
QORDESIGN_EXPORT QStringList CursorValueNames();

// The common base of the information classes: a type descriptor and its
// type data.
class QORDESIGN_EXPORT TRTTIInformation
{
public:
    TRTTIInformation();
    virtual ~TRTTIInformation();
    TRTTIInformation(const TRTTIInformation &) = delete;
    TRTTIInformation &operator=(const TRTTIInformation &) = delete;

    PTypeInfo PTI() const { return m_PTI; }
    // Describes another type; the derived data is rebuilt at once.
    void SetPTI(PTypeInfo Value);
    PTypeData PTD() const { return m_PTD; }
    TTypeKind TypeKind() const;
    QString TypeKindName() const;
    QString TypeName() const;

protected:
    virtual void Update();

    PTypeData m_PTD = nullptr;
    PTypeInfo m_PTI = nullptr;
};

// A class: its ancestors and its published properties in name order (a
// value type's fields in the order its descriptor declares them).
class QORDESIGN_EXPORT TClassInformation : public TRTTIInformation
{
public:
    TClassInformation();
    ~TClassInformation() override;

    // The nearest ancestor first, the root class last.
    const QStringList &ParentClassNames() const { return m_ParentClassNames; }
    qint32 PropCount() const { return m_PropCount; }
    // The published properties sorted by name (the fields of a value type
    // in their declaration order); empty while PropCount is 0.
    const QList<PPropInfo> &PropList() const { return m_PropList; }
    // The events sorted by name.
    const QList<PPropInfo> &EventList() const { return m_EventList; }
    // The properties and the events together, in the order the inspector
    // lists them: by name, a value type's fields as declared.
    const QList<PPropInfo> &PropAndEventList() const { return m_PropAndEventList; }

    QString ClassNameStr() const;
    const QMetaObject *ClassTypeRef() const;
    QString DefineUnit() const;
    // The size of this information object, whichever class it describes.
    int ClassSize() const;
    const QMetaObject *ParentClass() const;
    // Name and type name of the property at an index of PropList; "" out
    // of range.
    QString PropNameStr(int Index) const;
    QString PropTypeStr(int Index) const;

protected:
    void Update() override;

private:
    QStringList m_ParentClassNames;
    qint32 m_PropCount = 0;
    QList<PPropInfo> m_PropList;
    QList<PPropInfo> m_EventList;
    QList<PPropInfo> m_PropAndEventList;
};

// An enumeration, or a type shown as a list of named values.
class QORDESIGN_EXPORT TEnumInformation : public TRTTIInformation
{
public:
    TEnumInformation();
    ~TEnumInformation() override;

    QStringList &EnumNames() { return m_EnumNames; }
    const QStringList &EnumNames() const { return m_EnumNames; }
    PTypeInfo BasedTypeInfo() const;
    qint32 MinValue() const;
    qint32 MaxValue() const;

    // Appends a name to EnumNames; the colour and cursor tables call it for
    // each of their names.
    void AddToEnumNames(const QString &S);
    // Lists the named values of a type into Strings. Colours and cursors
    // go into this object's EnumNames instead, whatever Strings is.
    void ListEnumValuesEx(PTypeInfo PTI, QStringList &Strings);
    // True for enumerations, colours, cursors and bool.
    static bool IsEnumExType(PTypeInfo PTI);

protected:
    void Update() override;

private:
    QStringList m_EnumNames;
};

// Writes a text property by name; false when the object has no published
// property of that name. Errors of the write reach the caller.
QORDESIGN_EXPORT bool SetObjStrProp(QObject *Obj, const QString &PropName, const QString &Value);
// True for the type of a component class (a class derived from QObject).
QORDESIGN_EXPORT bool IsComponentPTI(PTypeInfo PTI);
// The names of an enumeration's values in ascending order of value.
QORDESIGN_EXPORT void ListEnumValues(PTypeInfo PTI, QStringList &Strings);
// The names of a class's ancestors, the nearest first.
QORDESIGN_EXPORT void GetParentClassNames(PTypeData PTD, QStringList &Strings);
// The names of a class's published properties in name order.
QORDESIGN_EXPORT void GetClassPropertyNames(PTypeInfo PTI, QStringList &Strings);
// True when every object has a published property of that name whose type
// is of the same kind; true for no objects.
QORDESIGN_EXPORT bool PropInfoInComps(PPropInfo PropInfo, const QList<QObject *> &Objects);
