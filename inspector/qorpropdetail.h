// SPDX-License-Identifier: MIT
// The object inspector's bottom layer: one published property of one
// object, or of the several objects of a multiple selection, read and
// written as text. Every value the inspector shows and every text the user
// types passes through the functions here. Sets read as bracketed lists of
// element identifiers, component references as their names, value objects
// (a font, a size) as their class name in brackets, and a property on which
// the selected objects disagree as an empty text.
#pragma once

#include "qordesign_export.h"

#include "foundation/vhortti.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>

// The root of the objects a line of the inspector carries: a property row
// or one element of a set.
class QORDESIGN_EXPORT TObject
{
public:
    TObject();
    TObject(const TObject &Other);
    TObject &operator=(const TObject &Other);
    virtual ~TObject();

    // A number no other object made in this process carries.
    quint64 Serial() const { return m_serial; }
    // Whether Object, which carried Serial, is still alive: a line of the
    // inspector may outlive the row it was made for (rows are rebuilt when
    // the selection changes while the lines wait to be refilled), and an
    // address alone may already belong to a newer row.
    static bool Alive(const TObject *Object, quint64 Serial);

private:
    quint64 m_serial;
};

// A property bound to the object or objects it is read from, with the type
// information of their class.
class QORDESIGN_EXPORT TPropertyDetail : public TObject
{
public:
    TPropertyDetail(QObject *Object, const QString &PropName);
    TPropertyDetail(QObject *Object, PPropInfo PropInfo);
    // Several objects at once; the first is the based object.
    TPropertyDetail(const QList<QObject *> &Objects, PPropInfo PropInfo);
    ~TPropertyDetail() override;
    TPropertyDetail(const TPropertyDetail &) = delete;
    TPropertyDetail &operator=(const TPropertyDetail &) = delete;

    // The value as text; a multiple selection that disagrees reads empty.
    virtual QString GetPropValueStr() const;
    // Writes the text unless the property shows it already, then Refresh.
    // Conversion errors reach the caller.
    virtual void SetPropValueStr(const QString &Text);
    virtual void RefreshClassInformation();
    virtual void Refresh();

    QObject *GetBasedObject() const { return m_basedObject; }
    void SetBasedObject(QObject *Object);
    // The objects of a multiple selection; empty when one object is edited.
    QList<QObject *> GetBasedObjects() const;
    bool HasBasedObjects() const { return m_hasBasedObjects; }
    void SetBasedObjects(const QList<QObject *> &Objects);
    // The same from a guarded list, shared rather than copied: a property
    // list hands its one list to each of its rows.
    void SetBasedObjects(const QList<QPointer<QObject>> &Objects);
    PPropInfo GetPropInfoRef() const { return m_propInfo; }
    void SetPropInfoRef(PPropInfo PropInfo);
    QString GetPropName() const;
    void SetPropName(const QString &Name);
    PTypeInfo GetPropTypeInfoRef() const;
    // False when the property of one of the objects cannot be written (Qt
    // gives it no write accessor), also for the fields of such a value.
    bool GetPropWritable() const;
    // The object a class-typed property holds; null when the objects of a
    // multiple selection hold different ones.
    QObject *GetPropValueObject() const;
    void SetPropValueObject(QObject *Value);
    TClassInformation &ClassInformation() const { return *m_classInformation; }

private:
    PPropInfo m_propInfo = nullptr;
    QPointer<QObject> m_basedObject;
    std::unique_ptr<TClassInformation> m_classInformation;
    QList<QPointer<QObject>> m_basedObjects;
    bool m_hasBasedObjects = false;
};

// A property detail that also knows its enumeration: the property's own
// type, or for a set the type of its elements.
class QORDESIGN_EXPORT TPropertyDetailEx : public TPropertyDetail
{
public:
    TPropertyDetailEx(QObject *Object, const QString &PropName);
    TPropertyDetailEx(QObject *Object, PPropInfo PropInfo);
    ~TPropertyDetailEx() override;

    void Refresh() override;
    TEnumInformation &GetEnumInformation() const { return *m_enumInformation; }

private:
    std::unique_ptr<TEnumInformation> m_enumInformation;
};

// One element of a set-typed property.
class QORDESIGN_EXPORT TSetItemConst : public TObject
{
public:
    TSetItemConst(TPropertyDetailEx *BasedProperty, qint32 EnumIndex);
    ~TSetItemConst() override;

    TPropertyDetailEx *BasedProperty() const { return m_basedProperty; }
    void SetBasedProperty(TPropertyDetailEx *Value);
    qint32 EnumIndex() const { return m_enumIndex; }
    void SetEnumIndex(qint32 Value);
    // The element type's information; null without a based property.
    TEnumInformation *GetEnumInformation() const;
    // The element's identifier.
    QString GetValueString() const;

private:
    TPropertyDetailEx *m_basedProperty;
    qint32 m_enumIndex;
};

// The value of a property as text, for one object or several (empty when
// they disagree; null entries are skipped).
QORDESIGN_EXPORT QString GetPropertyValueStr(QObject *Object, PPropInfo PropInfo);
QORDESIGN_EXPORT QString GetPropertyValueStr(const QList<QObject *> &Objects, PPropInfo PropInfo);
// Writes a text value; an empty text writes nothing to several objects.
QORDESIGN_EXPORT void SetPropertyValueStr(QObject *Object, PPropInfo PropInfo, const QString &Text);
QORDESIGN_EXPORT void SetPropertyValueStr(const QList<QObject *> &Objects, PPropInfo PropInfo, const QString &Text);
// The object a class-typed property holds (null when several disagree).
QORDESIGN_EXPORT QObject *GetPropertyValueObj(QObject *Object, PPropInfo PropInfo);
QORDESIGN_EXPORT QObject *GetPropertyValueObj(const QList<QObject *> &Objects, PPropInfo PropInfo);
// Stores a component into a class-typed property (checking its class for
// one object); null writes nothing to several objects.
QORDESIGN_EXPORT void SetPropertyValueObj(QObject *Object, PPropInfo PropInfo, QObject *Value);
QORDESIGN_EXPORT void SetPropertyValueObj(const QList<QObject *> &Objects, PPropInfo PropInfo, QObject *Value);
// Adds an element to its set or takes it out; false when it already was
// (or was not) in it. Presence is a plain substring test of the set text.
QORDESIGN_EXPORT bool ChangeSetValueStr(TSetItemConst *SetItem, bool Include);
// Two spaces per level, then "- " (expanded), "+ " (collapsed) or two
// spaces (not expandable).
QORDESIGN_EXPORT QString GetObjInspecIndentStr(int Level, bool Expandable, bool Expanded);
