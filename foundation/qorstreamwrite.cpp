// SPDX-License-Identifier: MIT
// Writing live components into the component stream's plain tree: the
// stored properties that differ from a fresh instance (or from what a
// switch set before them gives), what a container keeps about its pages,
// the texts of a combo box's items, and the owned components nested under
// their visual parents.
#include "foundation/qorstream_p.h"

#include "foundation/qorcomponents.h"
#include "foundation/qorlogging_p.h"
#include "foundation/qortypinfo.h"
#include "foundation/qorvaluecheck_p.h"

#include <QComboBox>
#include <QIcon>
#include <QMetaEnum>
#include <QScrollArea>
#include <QSet>
#include <QStackedWidget>
#include <QTabWidget>
#include <QToolBox>
#include <QWidget>

#include <algorithm>
#include <limits>

namespace QorStreamPrivate {
namespace {

StoredProperty pseudo(const QByteArray &name, const QVariant &value)
{
    StoredProperty p;
    p.name = name;
    p.value = value;
    return p;
}

// What a container keeps about the widget nested in it; true when the
// widget is one of its pages (whose visibility the container manages).
bool storePageOf(QObject *container, QWidget *w, QList<StoredProperty> &out)
{
    if (auto *tabs = qobject_cast<QTabWidget *>(container)) {
        const int index = tabs->indexOf(w);
        if (index < 0)
            return false;
        out.append(pseudo(kTabText, tabs->tabText(index)));
        if (const QIcon icon = tabs->tabIcon(index); !icon.isNull())
            out.append(pseudo(kTabIcon, icon));
        if (const QString tip = tabs->tabToolTip(index); !tip.isEmpty())
            out.append(pseudo(kTabToolTip, tip));
        if (!tabs->isTabEnabled(index))
            out.append(pseudo(kTabEnabled, false));
        return true;
    }
    if (auto *box = qobject_cast<QToolBox *>(container)) {
        const int index = box->indexOf(w);
        if (index < 0)
            return false;
        out.append(pseudo(kItemText, box->itemText(index)));
        if (const QIcon icon = box->itemIcon(index); !icon.isNull())
            out.append(pseudo(kItemIcon, icon));
        if (const QString tip = box->itemToolTip(index); !tip.isEmpty())
            out.append(pseudo(kItemToolTip, tip));
        if (!box->isItemEnabled(index))
            out.append(pseudo(kItemEnabled, false));
        return true;
    }
    if (auto *stack = qobject_cast<QStackedWidget *>(container))
        return stack->indexOf(w) >= 0;
    if (auto *area = qobject_cast<QScrollArea *>(container)) {
        if (area->widget() != w)
            return false;
        out.append(pseudo(kScrollAreaWidget, true));
        return true;
    }
    return false;
}

bool explicitlyHidden(const QWidget *w)
{
    return w->isHidden() && w->testAttribute(Qt::WA_WState_ExplicitShowHide);
}

StoredObject storeObject(QObject *c, QObject *container)
{
    StoredObject o;
    const QMetaObject *mo = c->metaObject();
    o.className = QString::fromLatin1(mo->className());
    o.name = c->objectName();

    auto *w = qobject_cast<QWidget *>(c);
    if (w) {
        const bool page = container && storePageOf(container, w, o.properties);
        if (!page && explicitlyHidden(w))
            o.properties.append(pseudo(kHidden, true));
        if (auto *combo = qobject_cast<QComboBox *>(w); combo && combo->count() > 0) {
            QStringList items;
            items.reserve(combo->count());
            for (int i = 0; i < combo->count(); ++i)
                items.append(combo->itemText(i));
            o.properties.append(pseudo(kComboItems, items));
        }
    }

    ClassInfo &info = classInfo(mo);
    readDefaults(info);
    for (const PropertyInfo &pi : info.properties) {
        if (!pi.stored || (w && pi.gate != Gate::None && !gateOpen(w, pi.gate)))
            continue;
        QVariant v = pi.property.read(c);
        if (!v.isValid())
            continue;
        StoredProperty p;
        p.name = pi.name;
        if (pi.kind == kEnumKey || pi.kind == kFlagKeys) {
            if (isDefaultValue(info, pi, c, v))
                continue;
            const int value = int(OrdinalOf(v));
            const QMetaEnum me = pi.property.enumerator();
            p.keys = pi.kind == kFlagKeys ? me.valueToKeys(value) : QByteArray(me.valueToKey(value));
            bool ok = false;
            const int back = pi.kind == kFlagKeys ? me.keysToValue(p.keys.constData(), &ok)
                                                  : me.keyToValue(p.keys.constData(), &ok);
            if (ok && back == value && !p.keys.isEmpty()) {
                p.kind = pi.kind;
            } else {
                // A value no key names: kept as its number.
                p.keys.clear();
                p.value = value;
            }
        } else if (pi.kind == kReference) {
            const QObject *target = v.value<QObject *>();
            if (!target || target->objectName().isEmpty())
                continue;
            p.kind = kReference;
            p.reference = target->objectName();
        } else {
            if (isDefaultValue(info, pi, c, v))
                continue;
            // What a reader refuses is not written (a value of a property
            // typed QVariant may be of any type).
            if (!QorValueCheck::isCheckedType(v.metaType())) {
                qCInfo(lcQorFoundation).noquote() << "Not stored: property" << QString::fromUtf8(pi.name) << "of"
                                                  << o.name << "holds a" << QString::fromLatin1(v.typeName())
                                                  << "which the stream does not carry";
                continue;
            }
            p.value = std::move(v);
        }
        o.properties.append(std::move(p));
    }

    for (const QByteArray &name : c->dynamicPropertyNames()) {
        if (name.startsWith("_q_"))
            continue;
        const QVariant v = c->property(name.constData());
        if (!v.isValid())
            continue;
        if (!v.metaType().hasRegisteredDataStreamOperators() || !QorValueCheck::isCheckedType(v.metaType())) {
            qCInfo(lcQorFoundation).noquote() << "Not stored: dynamic property" << QString::fromUtf8(name) << "of"
                                              << o.name << "holds a" << QString::fromLatin1(v.typeName())
                                              << "which the stream does not carry";
            continue;
        }
        StoredProperty p;
        p.name = name;
        p.value = v;
        o.dynamicProperties.append(std::move(p));
    }
    return o;
}

// The objects under an object in the visual tree that may be components,
// with the pages of a stacked widget in page order and the content widget
// that a scroll area holds as an inner part looked through.
QList<QObject *> visualChildren(QObject *object)
{
    QList<QObject *> children = DesignChildren(object);
    if (auto *area = qobject_cast<QScrollArea *>(object)) {
        QWidget *content = area->widget();
        if (content && IsInnerPart(content))
            children += DesignChildren(content);
    } else if (auto *stack = qobject_cast<QStackedWidget *>(object)) {
        std::stable_sort(children.begin(), children.end(), [stack](QObject *a, QObject *b) {
            const auto rank = [stack](QObject *o) {
                const int i = o->isWidgetType() ? stack->indexOf(static_cast<QWidget *>(o)) : -1;
                return i < 0 ? std::numeric_limits<int>::max() : i;
            };
            return rank(a) < rank(b);
        });
    }
    return children;
}

void storeChildren(QObject *object, QObject *nodeObject, StoredObject &node,
                   const QSet<const QObject *> &owned, int depth)
{
    if (depth > kMaxDepth)
        return;
    for (QObject *child : visualChildren(object)) {
        if (!child->isWidgetType())
            continue;
        if (owned.contains(child)) {
            StoredObject c = storeObject(child, nodeObject);
            storeChildren(child, child, c, owned, depth + 1);
            node.children.push_back(std::move(c));
        } else {
            storeChildren(child, nodeObject, node, owned, depth + 1);
        }
    }
}

} // namespace

StoredObject storeComponent(QObject *component)
{
    StoredObject root = storeObject(component, nullptr);
    const QList<QObject *> ownedList = ComponentList(component);
    if (ownedList.isEmpty())
        return root;
    QSet<const QObject *> owned;
    owned.reserve(ownedList.size());
    for (QObject *c : ownedList)
        owned.insert(c);
    storeChildren(component, component, root, owned, 0);
    for (QObject *c : ownedList) {
        if (!c->isWidgetType())
            root.children.push_back(storeObject(c, nullptr));
    }
    return root;
}

} // namespace QorStreamPrivate
