// SPDX-License-Identifier: MIT
// Reading and writing published properties through their descriptors: the
// ordinal, float, text, enumeration, set, object and variant accessors the
// object inspector's value texts are made of, the colour and cursor names,
// and the value objects that stand for a value-typed property (a widget's
// font, its geometry) so that its fields are edited like a sub-object's
// properties. Every accessor looks the property up again by name in the
// instance's own class, so one descriptor serves objects of several
// classes. Conversion failures throw EConvertError, missing or refused
// properties EPropertyError.
#pragma once

#include "qordesign_export.h"

#include "foundation/vhortti.h"

#include <QColor>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariant>

// The value of a value-typed property of one object (its font, its size
// policy...), seen as an object whose published properties are the
// fields of the value type. Reading a field reads the property of the
// target; writing one writes the whole value back into the target. There
// is one per target and property; it lives as long as its target.
class QORDESIGN_EXPORT TQorValueObject : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("QorDesignObject", "true")

public:
    QObject *Target() const { return m_target; }
    PPropInfo TargetProp() const { return m_prop; }
    // The descriptor class of the value type.
    const QMetaObject *Descriptor() const { return m_prop->PropType->TypeData.ClassType; }
    QVariant Value() const;
    // Writes the whole value into the target; false when it refuses it.
    bool SetValue(const QVariant &Value);

    // The value object of a value-typed property of Target; null when the
    // property is not value-typed with fields or there is no target.
    static TQorValueObject *Of(QObject *Target, PPropInfo Prop);

private:
    TQorValueObject(QObject *Target, PPropInfo Prop);

    QPointer<QObject> m_target;
    PPropInfo m_prop;
};

// The class whose published properties an object has: its own class, or
// for a value object the descriptor of its value type.
QORDESIGN_EXPORT const QMetaObject *InstanceClass(const QObject *Instance);
// The published property named like PropInfo in the instance's own class;
// throws EPropertyError when it has none.
QORDESIGN_EXPORT PPropInfo InstancePropInfo(const QObject *Instance, PPropInfo PropInfo);

// The value as Qt holds it, and a write of such a value (EPropertyError
// when the property is read-only or refuses the value).
QORDESIGN_EXPORT QVariant GetPropValue(const QObject *Instance, PPropInfo PropInfo);
QORDESIGN_EXPORT void SetPropValue(QObject *Instance, PPropInfo PropInfo, const QVariant &Value);

// The integer inside an enumeration or flags value (or any integer).
QORDESIGN_EXPORT qint64 OrdinalOf(const QVariant &Value);

QORDESIGN_EXPORT qint64 GetOrdProp(const QObject *Instance, PPropInfo PropInfo);
QORDESIGN_EXPORT void SetOrdProp(QObject *Instance, PPropInfo PropInfo, qint64 Value);
QORDESIGN_EXPORT qint64 GetInt64Prop(const QObject *Instance, PPropInfo PropInfo);
QORDESIGN_EXPORT double GetFloatProp(const QObject *Instance, PPropInfo PropInfo);
QORDESIGN_EXPORT void SetFloatProp(QObject *Instance, PPropInfo PropInfo, double Value);
QORDESIGN_EXPORT QString GetStrProp(const QObject *Instance, PPropInfo PropInfo);
// The identifier of an enumeration value ("True"/"False" for bool).
QORDESIGN_EXPORT QString GetEnumProp(const QObject *Instance, PPropInfo PropInfo);
// Writes an enumeration by its identifier (case-insensitive); an unknown
// one throws EConvertError.
QORDESIGN_EXPORT void SetEnumProp(QObject *Instance, PPropInfo PropInfo, const QString &Value);
QORDESIGN_EXPORT QString GetSetProp(const QObject *Instance, PPropInfo PropInfo, bool Brackets);
QORDESIGN_EXPORT void SetSetProp(QObject *Instance, PPropInfo PropInfo, const QString &Value);
// The object a class-typed property holds: the referenced component, or
// the value object of a value-typed property.
QORDESIGN_EXPORT QObject *GetObjectProp(QObject *Instance, PPropInfo PropInfo);
// Stores a component reference; with Validate, an object that is not of
// the property's class throws EPropertyError.
QORDESIGN_EXPORT void SetObjectProp(QObject *Instance, PPropInfo PropInfo, QObject *Value, bool Validate);

// A set's text: its elements' identifiers in ascending order, joined by
// ",", in brackets when asked; bits no single element names are shown by
// the first identifier that covers them. And back: brackets and blanks
// are optional, identifiers compare without case; an unknown one throws
// EConvertError.
QORDESIGN_EXPORT QString SetToString(PTypeInfo SetType, qint64 Value, bool Brackets);
QORDESIGN_EXPORT qint64 StringToSet(PTypeInfo SetType, const QString &Value);

// A colour's text: the name of a colour constant or named colour equal to
// it, else "#rrggbb" ("#aarrggbb" when not opaque); "" for no colour. And
// back, EConvertError for a text that names no colour.
QORDESIGN_EXPORT QString ColorToString(const QColor &Color);
QORDESIGN_EXPORT QColor StringToColor(const QString &Text);
// A cursor shape's identifier; false when the shape has none, as for the
// picture cursors (BitmapCursor, CustomCursor): those read as numbers.
QORDESIGN_EXPORT bool CursorToIdent(int Cursor, QString &Ident);
// A cursor shape by identifier or number; EConvertError otherwise.
QORDESIGN_EXPORT int StringToCursor(const QString &Text);

// Conversions of the value texts: EConvertError for a text that is not a
// number of the kind.
QORDESIGN_EXPORT qint32 StrToInt(const QString &Text);
QORDESIGN_EXPORT double StrToFloat(const QString &Text);
// The shortest text of a number, at most 15 significant digits.
QORDESIGN_EXPORT QString FloatToStr(double Value);
// "True"/"False" (UseBoolStrs) or "-1"/"0"; and back, where any integer
// other than 0 is true.
QORDESIGN_EXPORT QString BoolToStr(bool Value, bool UseBoolStrs);
QORDESIGN_EXPORT bool StrToBool(const QString &Text);
