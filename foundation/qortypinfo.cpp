// SPDX-License-Identifier: MIT
#include "foundation/qortypinfo.h"

#include "foundation/qorerror.h"
#include "foundation/qorvaluetypes_p.h"
#include "foundation/vhortti_p.h"

#include <QCursor>
#include <QHash>
#include <QLocale>
#include <QMetaEnum>

#include <cstring>

namespace {

using ValueObjectKey = std::pair<const QObject *, PPropInfo>;

QHash<ValueObjectKey, TQorValueObject *> &valueObjects()
{
    static QHash<ValueObjectKey, TQorValueObject *> objects;
    return objects;
}

QString classNameOf(const QObject *Instance)
{
    return Instance ? QorClassName(InstanceClass(Instance)) : QString();
}

// The value object an instance is, found without walking its class chain
// (the class has no subclasses: its constructor is private). Every value
// the inspector reads asks this of its object.
TQorValueObject *asValueObject(const QObject *Instance)
{
    return Instance && Instance->metaObject() == &TQorValueObject::staticMetaObject
        ? static_cast<TQorValueObject *>(const_cast<QObject *>(Instance))
        : nullptr;
}

bool isNamed(PTypeInfo PTI, const char *Name)
{
    return PTI && PTI->Name.compare(QLatin1String(Name), Qt::CaseInsensitive) == 0;
}

} // namespace

// ---- Value objects -----------------------------------------------------

TQorValueObject::TQorValueObject(QObject *Target, PPropInfo Prop)
    // A child of its target: it goes with it and needs no bookkeeping.
    : QObject(Target)
    , m_target(Target)
    , m_prop(Prop)
{
    connect(this, &QObject::destroyed, [key = ValueObjectKey(Target, Prop)] { valueObjects().remove(key); });
}

QVariant TQorValueObject::Value() const
{
    return m_target ? m_prop->Property.read(m_target) : QVariant();
}

bool TQorValueObject::SetValue(const QVariant &Value)
{
    return m_target && m_prop->Property.isWritable() && m_prop->Property.write(m_target, Value);
}

TQorValueObject *TQorValueObject::Of(QObject *Target, PPropInfo Prop)
{
    if (!Target || !Prop || !Prop->PropType || Prop->PropType->Kind != tkClass || IsComponentPTI(Prop->PropType)
        || !Prop->PropType->TypeData.ClassType || !DescribedValueType(Prop->PropType->TypeData.ClassType).isValid())
        return nullptr;
    auto &objects = valueObjects();
    const ValueObjectKey key(Target, Prop);
    if (TQorValueObject *known = objects.value(key))
        return known;
    auto *object = new TQorValueObject(Target, Prop);
    objects.insert(key, object);
    return object;
}

// ---- Looking properties up ---------------------------------------------

const QMetaObject *InstanceClass(const QObject *Instance)
{
    if (!Instance)
        return nullptr;
    if (auto *value = asValueObject(Instance))
        return value->Descriptor();
    return Instance->metaObject();
}

PPropInfo InstancePropInfo(const QObject *Instance, PPropInfo PropInfo)
{
    if (!Instance || !PropInfo)
        throw EPropertyError(QStringLiteral("No property"));
    const QMetaObject *cls = InstanceClass(Instance);
    if (PropInfo->OwnerClass == cls)
        return PropInfo;
    if (PPropInfo own = GetPropInfo(cls, PropInfo->Name))
        return own;
    throw EPropertyError(QStringLiteral("Property %1 does not exist in %2").arg(PropInfo->Name, classNameOf(Instance)));
}

QVariant GetPropValue(const QObject *Instance, PPropInfo PropInfo)
{
    PPropInfo own = InstancePropInfo(Instance, PropInfo);
    if (auto *value = asValueObject(Instance))
        return GetValueTypeField(value->Value(), own);
    return own->Property.read(Instance);
}

void SetPropValue(QObject *Instance, PPropInfo PropInfo, const QVariant &Value)
{
    PPropInfo own = InstancePropInfo(Instance, PropInfo);
    // Qt writes an empty variant as the type's default value: refused here.
    if (!Value.isValid())
        throw EPropertyError(QStringLiteral("Property %1 cannot take an empty value").arg(own->Name));
    if (auto *value = asValueObject(Instance)) {
        QVariant whole = value->Value();
        if (!SetValueTypeField(whole, own, Value) || !value->SetValue(whole))
            throw EPropertyError(QStringLiteral("Property %1 cannot take this value").arg(own->Name));
        return;
    }
    if (!own->Property.isWritable())
        throw EPropertyError(QStringLiteral("Property %1 is read-only").arg(own->Name));
    if (!own->Property.write(Instance, Value))
        throw EPropertyError(QStringLiteral("Property %1 cannot take this value").arg(own->Name));
}

// ---- Typed accessors ---------------------------------------------------

qint64 OrdinalOf(const QVariant &Value)
{
    switch (Value.metaType().id()) {
    case QMetaType::Bool: return Value.toBool() ? 1 : 0;
    case QMetaType::QChar: return Value.toChar().unicode();
    case QMetaType::QColor: return qint64(Value.value<QColor>().rgba());
    case QMetaType::QCursor: return Value.value<QCursor>().shape();
    default: break;
    }
    bool ok = false;
    const qint64 i = Value.toLongLong(&ok);
    if (ok)
        return i;
    // Enumerations and flags Qt does not convert: their storage is an int.
    int raw = 0;
    if (Value.isValid() && Value.metaType().sizeOf() == sizeof(int))
        std::memcpy(&raw, Value.constData(), sizeof(int));
    return raw;
}

qint64 GetOrdProp(const QObject *Instance, PPropInfo PropInfo)
{
    return OrdinalOf(GetPropValue(Instance, PropInfo));
}

void SetOrdProp(QObject *Instance, PPropInfo PropInfo, qint64 Value)
{
    const PTypeInfo type = PropInfo ? PropInfo->PropType : nullptr;
    if (isNamed(type, "QColor"))
        SetPropValue(Instance, PropInfo, QColor::fromRgba(QRgb(Value)));
    else if (isNamed(type, "QCursor"))
        SetPropValue(Instance, PropInfo, QCursor(Qt::CursorShape(Value)));
    else if (type && type->MetaType.id() == QMetaType::QChar)
        SetPropValue(Instance, PropInfo, QChar(char16_t(Value)));
    else if (type && type->MetaType.id() == QMetaType::Bool)
        SetPropValue(Instance, PropInfo, Value != 0);
    else
        SetPropValue(Instance, PropInfo, QVariant(int(Value)));
}

qint64 GetInt64Prop(const QObject *Instance, PPropInfo PropInfo)
{
    return OrdinalOf(GetPropValue(Instance, PropInfo));
}

double GetFloatProp(const QObject *Instance, PPropInfo PropInfo)
{
    return GetPropValue(Instance, PropInfo).toDouble();
}

void SetFloatProp(QObject *Instance, PPropInfo PropInfo, double Value)
{
    SetPropValue(Instance, PropInfo, Value);
}

QString GetStrProp(const QObject *Instance, PPropInfo PropInfo)
{
    return GetPropValue(Instance, PropInfo).toString();
}

QString GetEnumProp(const QObject *Instance, PPropInfo PropInfo)
{
    return GetEnumName(PropInfo ? PropInfo->PropType : nullptr, int(GetOrdProp(Instance, PropInfo)));
}

void SetEnumProp(QObject *Instance, PPropInfo PropInfo, const QString &Value)
{
    const PTypeInfo type = PropInfo ? PropInfo->PropType : nullptr;
    QStringList names;
    ListEnumValues(type, names);
    if (type && type->MetaType.id() == QMetaType::Bool)
        names = {QStringLiteral("False"), QStringLiteral("True")};
    const QString key = Value.trimmed();
    bool known = false;
    if (type && type->Enum.isValid()) {
        for (int i = 0; i < type->Enum.keyCount() && !known; ++i)
            known = key.compare(QLatin1String(type->Enum.key(i)), Qt::CaseInsensitive) == 0;
    } else {
        known = names.contains(key, Qt::CaseInsensitive);
    }
    if (!known)
        throw EConvertError(QStringLiteral("'%1' is not a valid value").arg(Value));
    SetOrdProp(Instance, PropInfo, GetEnumValue(type, key));
}

QString SetToString(PTypeInfo SetType, qint64 Value, bool Brackets)
{
    QStringList keys;
    if (SetType && SetType->Enum.isValid()) {
        const QMetaEnum e = SetType->Enum;
        QStringList single;
        ListEnumValues(SetType->TypeData.CompType, single);
        qint64 covered = 0;
        for (const QString &name : single) {
            const qint64 bit = quint32(e.keyToValue(name.toLatin1().constData()));
            if (bit && (Value & bit) == bit) {
                keys.append(name);
                covered |= bit;
            }
        }
        // Bits no single element names (a multi-bit key only): its name.
        for (int i = 0; i < e.keyCount() && (Value & ~covered) != 0; ++i) {
            const qint64 k = quint32(e.value(i));
            if (k && (Value & ~covered & k) == k) {
                keys.append(QString::fromLatin1(e.key(i)));
                covered |= k;
            }
        }
    }
    const QString joined = keys.join(QLatin1Char(','));
    return Brackets ? QLatin1Char('[') + joined + QLatin1Char(']') : joined;
}

qint64 StringToSet(PTypeInfo SetType, const QString &Value)
{
    QString text = Value.trimmed();
    if (text.startsWith(QLatin1Char('[')) && text.endsWith(QLatin1Char(']')))
        text = text.mid(1, text.size() - 2);
    qint64 result = 0;
    for (const QString &part : text.split(QLatin1Char(','))) {
        const QString name = part.trimmed();
        if (name.isEmpty())
            continue;
        bool found = false;
        if (SetType && SetType->Enum.isValid()) {
            for (int i = 0; i < SetType->Enum.keyCount() && !found; ++i) {
                if (name.compare(QLatin1String(SetType->Enum.key(i)), Qt::CaseInsensitive) == 0) {
                    result |= quint32(SetType->Enum.value(i));
                    found = true;
                }
            }
        }
        if (!found)
            throw EConvertError(QStringLiteral("'%1' is not a valid element of the set").arg(name));
    }
    return result;
}

QString GetSetProp(const QObject *Instance, PPropInfo PropInfo, bool Brackets)
{
    return SetToString(PropInfo ? PropInfo->PropType : nullptr, GetOrdProp(Instance, PropInfo), Brackets);
}

void SetSetProp(QObject *Instance, PPropInfo PropInfo, const QString &Value)
{
    const qint64 bits = StringToSet(PropInfo ? PropInfo->PropType : nullptr, Value);
    SetPropValue(Instance, PropInfo, QVariant(int(bits)));
}

QObject *GetObjectProp(QObject *Instance, PPropInfo PropInfo)
{
    if (!Instance || !PropInfo || PropInfo->PropType->Kind != tkClass)
        return nullptr;
    if (IsComponentPTI(PropInfo->PropType))
        return GetPropValue(Instance, PropInfo).value<QObject *>();
    return TQorValueObject::Of(Instance, InstancePropInfo(Instance, PropInfo));
}

void SetObjectProp(QObject *Instance, PPropInfo PropInfo, QObject *Value, bool Validate)
{
    if (!PropInfo || !IsComponentPTI(PropInfo->PropType))
        throw EPropertyError(QStringLiteral("Property %1 holds no component").arg(PropInfo ? PropInfo->Name : QString()));
    const QMetaObject *cls = PropInfo->PropType->TypeData.ClassType;
    if (Validate && Value && !Value->metaObject()->inherits(cls))
        throw EPropertyError(QStringLiteral("Invalid property value: %1 is not a %2")
                                 .arg(QString::fromLatin1(Value->metaObject()->className()), QorClassName(cls)));
    PPropInfo own = InstancePropInfo(Instance, PropInfo);
    // The variant must hold the pointer type the property declares.
    const QVariant typed(own->Property.metaType(), &Value);
    SetPropValue(Instance, own, typed);
}

// ---- Colours and cursors -----------------------------------------------

QString ColorToString(const QColor &Color)
{
    if (!Color.isValid())
        return {};
    static const QHash<QRgb, QString> byValue = [] {
        QHash<QRgb, QString> names;
        for (const QString &name : ColorValueNames()) {
            const QColor c = StringToColor(name);
            if (!names.contains(c.rgba()))
                names.insert(c.rgba(), name);
        }
        return names;
    }();
    const auto it = byValue.constFind(Color.rgba());
    if (it != byValue.constEnd())
        return *it;
    return Color.alpha() == 255 ? Color.name(QColor::HexRgb) : Color.name(QColor::HexArgb);
}

QColor StringToColor(const QString &Text)
{
    const QString name = Text.trimmed();
    const QMetaEnum global = QMetaEnum::fromType<Qt::GlobalColor>();
    for (int i = 0; i < global.keyCount(); ++i) {
        if (name.compare(QLatin1String(global.key(i)), Qt::CaseInsensitive) == 0)
            return QColor(Qt::GlobalColor(global.value(i)));
    }
    const QColor parsed = QColor::fromString(name);
    if (!parsed.isValid())
        throw EConvertError(QStringLiteral("'%1' is not a valid colour").arg(Text));
    return parsed;
}

bool CursorToIdent(int Cursor, QString &Ident)
{
    // A picture cursor (BitmapCursor, CustomCursor) has a key in Qt's
    // enumeration, but writing that key back cannot bring the picture back:
    // only the shapes a user can pick have identifiers.
    if (Cursor < 0 || Cursor > Qt::LastCursor)
        return false;
    const char *key = QMetaEnum::fromType<Qt::CursorShape>().valueToKey(Cursor);
    if (!key)
        return false;
    Ident = QString::fromLatin1(key);
    return true;
}

int StringToCursor(const QString &Text)
{
    const QString name = Text.trimmed();
    const QMetaEnum shapes = QMetaEnum::fromType<Qt::CursorShape>();
    for (int i = 0; i < shapes.keyCount(); ++i) {
        if (name.compare(QLatin1String(shapes.key(i)), Qt::CaseInsensitive) == 0)
            return shapes.value(i);
    }
    bool ok = false;
    const int number = name.toInt(&ok);
    if (!ok)
        throw EConvertError(QStringLiteral("'%1' is not a valid cursor").arg(Text));
    return number;
}

// ---- Number and truth texts --------------------------------------------

qint32 StrToInt(const QString &Text)
{
    const QString text = Text.trimmed();
    bool ok = false;
    qint32 value = 0;
    if (text.startsWith(QLatin1Char('$')))
        value = qint32(text.mid(1).toUInt(&ok, 16));
    else if (text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive))
        value = qint32(text.mid(2).toUInt(&ok, 16));
    else
        value = text.toInt(&ok, 10);
    if (!ok)
        throw EConvertError(QStringLiteral("'%1' is not a valid integer value").arg(Text));
    return value;
}

double StrToFloat(const QString &Text)
{
    bool ok = false;
    const double value = QLocale::c().toDouble(Text.trimmed(), &ok);
    if (!ok)
        throw EConvertError(QStringLiteral("'%1' is not a valid floating point value").arg(Text));
    return value;
}

QString FloatToStr(double Value)
{
    return QString::number(Value, 'g', 15);
}

QString BoolToStr(bool Value, bool UseBoolStrs)
{
    if (UseBoolStrs)
        return Value ? QStringLiteral("True") : QStringLiteral("False");
    return Value ? QStringLiteral("-1") : QStringLiteral("0");
}

bool StrToBool(const QString &Text)
{
    const QString text = Text.trimmed();
    if (text.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0)
        return true;
    if (text.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0)
        return false;
    bool ok = false;
    const int number = text.toInt(&ok);
    if (!ok)
        throw EConvertError(QStringLiteral("'%1' is not a valid boolean value").arg(Text));
    return number != 0;
}
