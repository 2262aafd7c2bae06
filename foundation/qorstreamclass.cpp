// SPDX-License-Identifier: MIT
// What the component stream needs to know about a class, found once per
// class: which properties it writes and how, which of them a widget inherits
// from its parent, and the values of a fresh instance.
#include "foundation/qorstream_p.h"

#include "foundation/qorclasses_p.h"
#include "foundation/qortypinfo.h"
#include "foundation/qorvaluecheck_p.h"

#include <QIcon>
#include <QMetaObject>
#include <QPixmap>
#include <QWidget>

#include <cstring>
#include <memory>

namespace QorStreamPrivate {
namespace {

bool isWidgetProperty(const QMetaProperty &p, const char *name)
{
    return p.enclosingMetaObject() == &QWidget::staticMetaObject && std::strcmp(p.name(), name) == 0;
}

Gate gateOf(const QMetaProperty &p)
{
    if (isWidgetProperty(p, "font"))
        return Gate::Font;
    if (isWidgetProperty(p, "palette"))
        return Gate::Palette;
    if (isWidgetProperty(p, "cursor"))
        return Gate::Cursor;
    if (isWidgetProperty(p, "layoutDirection"))
        return Gate::LayoutDirection;
    if (isWidgetProperty(p, "locale"))
        return Gate::Locale;
    if (isWidgetProperty(p, "enabled"))
        return Gate::Enabled;
    if (isWidgetProperty(p, "windowIcon"))
        return Gate::WindowIcon;
    return Gate::None;
}

bool isReferenceType(QMetaType type)
{
    return type.flags().testFlag(QMetaType::PointerToQObject);
}

QHash<const QMetaObject *, ClassInfo *> &classInfos()
{
    // Never destroyed: default values (fonts, palettes) must not outlive the
    // application object in a static destructor.
    static auto *infos = new QHash<const QMetaObject *, ClassInfo *>;
    return *infos;
}

} // namespace

bool gateOpen(const QWidget *w, Gate gate)
{
    switch (gate) {
    case Gate::None:
        return true;
    case Gate::Font:
        return w->testAttribute(Qt::WA_SetFont);
    case Gate::Palette:
        return w->testAttribute(Qt::WA_SetPalette);
    case Gate::Cursor:
        return w->testAttribute(Qt::WA_SetCursor);
    case Gate::LayoutDirection:
        return w->testAttribute(Qt::WA_SetLayoutDirection);
    case Gate::Locale:
        return w->testAttribute(Qt::WA_SetLocale);
    case Gate::Enabled:
        return w->testAttribute(Qt::WA_ForceDisabled);
    case Gate::WindowIcon:
        return w->testAttribute(Qt::WA_SetWindowIcon);
    }
    return true;
}

bool equalValues(const QVariant &a, const QVariant &b)
{
    if (a.metaType() != b.metaType())
        return false;
    switch (a.metaType().id()) {
    case QMetaType::QIcon: {
        const QIcon x = a.value<QIcon>(), y = b.value<QIcon>();
        return (x.isNull() && y.isNull()) || x.cacheKey() == y.cacheKey();
    }
    case QMetaType::QPixmap: {
        const QPixmap x = a.value<QPixmap>(), y = b.value<QPixmap>();
        return (x.isNull() && y.isNull()) || x.cacheKey() == y.cacheKey();
    }
    default:
        return a == b;
    }
}

ClassInfo &classInfo(const QMetaObject *mo)
{
    ClassInfo *&info = classInfos()[mo];
    if (info)
        return *info;
    info = new ClassInfo;
    info->metaObject = mo;
    for (int i = 0; i < mo->propertyCount(); ++i) {
        const QMetaProperty p = mo->property(i);
        if (!p.isWritable() || std::strcmp(p.name(), "objectName") == 0)
            continue;
        PropertyInfo pi;
        pi.property = p;
        pi.name = QByteArray(p.name());
        if (p.isEnumType())
            pi.kind = p.isFlagType() ? kFlagKeys : kEnumKey;
        else if (isReferenceType(p.metaType()))
            pi.kind = kReference;
        pi.gate = gateOf(p);
        const bool streamable = pi.kind != kValue || p.metaType().id() == QMetaType::QVariant
            || (p.metaType().hasRegisteredDataStreamOperators() && QorValueCheck::isCheckedType(p.metaType()));
        pi.stored = p.isReadable() && p.isStored() && p.isDesignable() && streamable
            && pi.name != "pos" && pi.name != "size" && pi.name != "visible";
        pi.deferred = pi.name == "currentIndex";
        info->byName.insert(pi.name, int(info->properties.size()));
        info->properties.push_back(std::move(pi));
    }
    return *info;
}

// The values of a fresh instance, read once per class from an instance the
// class registry makes and destroys at once. A class the registry does not
// make has no defaults: all its stored properties are written.
void readDefaults(ClassInfo &info)
{
    if (info.defaultsRead)
        return;
    info.defaultsRead = true;
    std::unique_ptr<QObject> fresh(NewRegisteredInstance(info.metaObject));
    if (!fresh)
        return;
    auto &properties = info.properties;
    for (PropertyInfo &pi : properties) {
        if (!pi.stored)
            continue;
        const QVariant v = pi.property.read(fresh.get());
        if (!v.isValid())
            continue;
        pi.hasDefault = true;
        if (pi.kind == kEnumKey || pi.kind == kFlagKeys)
            pi.defaultInt = int(OrdinalOf(v));
        else
            pi.defaultValue = v;
    }
    // Each stored switch is turned on an instance of its own, and the
    // properties stored after it that change with it are noted: written
    // against the value the switch gives them, they read back as they were.
    for (size_t b = 0; b < properties.size(); ++b) {
        const PropertyInfo &sw = properties[b];
        if (!sw.stored || !sw.hasDefault || sw.kind != kValue || sw.gate != Gate::None
            || sw.defaultValue.metaType().id() != QMetaType::Bool)
            continue;
        std::unique_ptr<QObject> turned(NewRegisteredInstance(info.metaObject));
        const bool on = !sw.defaultValue.toBool();
        if (!turned || !sw.property.write(turned.get(), on) || sw.property.read(turned.get()).toBool() != on)
            continue;
        for (size_t i = b + 1; i < properties.size(); ++i) {
            PropertyInfo &pi = properties[i];
            if (!pi.stored || !pi.hasDefault || pi.switchedBy >= 0 || pi.deferred)
                continue;
            const QVariant v = pi.property.read(turned.get());
            if (!v.isValid())
                continue;
            if (pi.kind == kEnumKey || pi.kind == kFlagKeys) {
                if (int(OrdinalOf(v)) != pi.defaultInt) {
                    pi.switchedBy = int(b);
                    pi.switchedInt = int(OrdinalOf(v));
                }
            } else if (pi.kind == kValue && !equalValues(v, pi.defaultValue)) {
                pi.switchedBy = int(b);
                pi.switchedValue = v;
            }
        }
    }
}

bool isDefaultValue(const ClassInfo &info, const PropertyInfo &pi, const QObject *object, const QVariant &value)
{
    if (!pi.hasDefault)
        return false;
    const bool enumerated = pi.kind == kEnumKey || pi.kind == kFlagKeys;
    bool switched = false;
    if (pi.switchedBy >= 0) {
        const PropertyInfo &sw = info.properties[size_t(pi.switchedBy)];
        switched = sw.property.read(object).toBool() != sw.defaultValue.toBool();
    }
    if (enumerated)
        return int(OrdinalOf(value)) == (switched ? pi.switchedInt : pi.defaultInt);
    return equalValues(value, switched ? pi.switchedValue : pi.defaultValue);
}

} // namespace QorStreamPrivate
