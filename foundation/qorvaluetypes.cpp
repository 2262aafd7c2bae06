// SPDX-License-Identifier: MIT
#include "foundation/qorvaluetypes_p.h"

namespace {

using FieldReader = QVariant (*)(const QVariant &value, const QMetaProperty &field);
using FieldWriter = bool (*)(QVariant &value, const QMetaProperty &field, const QVariant &fieldValue);

struct Described
{
    QMetaType type;
    const QMetaObject *descriptor;
    FieldReader read;
    FieldWriter write;
};

template<typename Fields, typename Value>
QVariant readField(const QVariant &value, const QMetaProperty &field)
{
    Fields fields;
    fields.value = value.value<Value>();
    return field.readOnGadget(&fields);
}

template<typename Fields, typename Value>
bool writeField(QVariant &value, const QMetaProperty &field, const QVariant &fieldValue)
{
    // An empty value would be taken as 0 or "" by the gadget's setter.
    if (!fieldValue.isValid())
        return false;
    Fields fields;
    fields.value = value.value<Value>();
    if (!field.writeOnGadget(&fields, fieldValue))
        return false;
    value = QVariant::fromValue(fields.value);
    return true;
}

#define QOR_DESCRIBED(Value, Fields)                                                               \
    {QMetaType::fromType<Value>(), &Fields::staticMetaObject, &readField<Fields, Value>,          \
     &writeField<Fields, Value>}

const Described *describedTypes(int *count)
{
    static const Described table[] = {
        QOR_DESCRIBED(QFont, TQorFontFields),
        QOR_DESCRIBED(QSize, TQorSizeFields),
        QOR_DESCRIBED(QPoint, TQorPointFields),
        QOR_DESCRIBED(QRect, TQorRectFields),
        QOR_DESCRIBED(QMargins, TQorMarginsFields),
        QOR_DESCRIBED(QSizePolicy, TQorSizePolicyFields),
        QOR_DESCRIBED(QPalette, TQorPaletteFields),
    };
    *count = int(std::size(table));
    return table;
}

const Described *describedBy(const QMetaObject *descriptor)
{
    int count = 0;
    const Described *table = describedTypes(&count);
    for (int i = 0; i < count; ++i) {
        if (table[i].descriptor == descriptor)
            return &table[i];
    }
    return nullptr;
}

} // namespace

void TQorFontFields::setPointSize(int v)
{
    // QFont warns about and ignores sizes below 1; keep the value as it is.
    if (v > 0)
        value.setPointSize(v);
}

void TQorFontFields::setWeight(int v)
{
    value.setWeight(QFont::Weight(qBound(1, v, 1000)));
}

const QMetaObject *ValueTypeDescriptor(QMetaType Type)
{
    int count = 0;
    const Described *table = describedTypes(&count);
    for (int i = 0; i < count; ++i) {
        if (table[i].type == Type)
            return table[i].descriptor;
    }
    return nullptr;
}

QMetaType DescribedValueType(const QMetaObject *Descriptor)
{
    const Described *described = describedBy(Descriptor);
    return described ? described->type : QMetaType();
}

QVariant ReadValueField(const QVariant &Value, const QMetaObject *Descriptor, const QMetaProperty &Field)
{
    const Described *described = describedBy(Descriptor);
    if (!described || Value.metaType() != described->type)
        return {};
    return described->read(Value, Field);
}

bool WriteValueField(QVariant &Value, const QMetaObject *Descriptor, const QMetaProperty &Field,
                     const QVariant &FieldValue)
{
    const Described *described = describedBy(Descriptor);
    if (!described || Value.metaType() != described->type)
        return false;
    return described->write(Value, Field, FieldValue);
}
