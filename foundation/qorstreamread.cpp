// SPDX-License-Identifier: MIT
// Reading the component stream's plain tree into objects: the decoded tree
// is checked against the classes first, so that a record that cannot be read
// fails before anything is made, then the objects are made, and undone
// again when making them fails.
#include "foundation/qorstream_p.h"

#include "foundation/qorclasses.h"
#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "foundation/qorlogging_p.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QIcon>
#include <QMetaEnum>
#include <QPair>
#include <QPointer>
#include <QScrollArea>
#include <QSet>
#include <QStackedWidget>
#include <QTabWidget>
#include <QToolBox>
#include <QWidget>

namespace QorStreamPrivate {
namespace {

struct PlannedProperty
{
    const PropertyInfo *info = nullptr;
    QVariant value;
    QString reference;
};

struct Plan
{
    const StoredObject *stored = nullptr;
    const QMetaObject *metaObject = nullptr;
    QList<PlannedProperty> properties;
    QList<QPair<QByteArray, QVariant>> dynamicProperties;
    QHash<QByteArray, QVariant> pseudo;
    bool hidden = false;
    bool scrollAreaWidget = false;
    std::vector<Plan> children;

    QString text(const QByteArray &name) const { return pseudo.value(name).toString(); }
    QIcon icon(const QByteArray &name) const { return pseudo.value(name).value<QIcon>(); }
};

[[noreturn]] void noSuchProperty(const QString &className, const QByteArray &name)
{
    throw EReadError(QCoreApplication::translate("QorDesign", "Class %1 has no property %2").arg(className, QString::fromUtf8(name)));
}

[[noreturn]] void badValue(const QString &className, const QByteArray &name)
{
    throw EReadError(QCoreApplication::translate("QorDesign", "Invalid value of property %2 of class %1")
                         .arg(className, QString::fromUtf8(name)));
}

void checkPseudo(const QString &className, const StoredProperty &p, Plan &plan)
{
    static const QHash<QByteArray, QMetaType> types = {
        {kTabText, QMetaType::fromType<QString>()},    {kTabIcon, QMetaType::fromType<QIcon>()},
        {kTabToolTip, QMetaType::fromType<QString>()}, {kTabEnabled, QMetaType::fromType<bool>()},
        {kItemText, QMetaType::fromType<QString>()},   {kItemIcon, QMetaType::fromType<QIcon>()},
        {kItemToolTip, QMetaType::fromType<QString>()}, {kItemEnabled, QMetaType::fromType<bool>()},
        {kScrollAreaWidget, QMetaType::fromType<bool>()}, {kHidden, QMetaType::fromType<bool>()},
        {kComboItems, QMetaType::fromType<QStringList>()},
    };
    const auto it = types.constFind(p.name);
    if (it == types.constEnd())
        noSuchProperty(className, p.name);
    if (p.kind != kValue || p.value.metaType() != *it)
        badValue(className, p.name);
    plan.pseudo.insert(p.name, p.value);
    if (p.name == kHidden)
        plan.hidden = p.value.toBool();
    else if (p.name == kScrollAreaWidget)
        plan.scrollAreaWidget = p.value.toBool();
}

void planObject(const StoredObject &o, Plan &plan, const QMetaObject *container, int depth)
{
    plan.stored = &o;
    plan.metaObject = FindClass(o.className);
    const QString className = QString::fromLatin1(plan.metaObject->className());
    const bool widget = IsWidgetClass(plan.metaObject);
    if (widget && container && !IsWidgetClass(container))
        throw EReadError(QCoreApplication::translate("QorDesign", "A widget of class %1 is nested in the non-visual %2")
                             .arg(className, QString::fromLatin1(container->className())));
    ClassInfo &info = classInfo(plan.metaObject);

    for (const StoredProperty &p : o.properties) {
        if (p.name.startsWith("qor.")) {
            checkPseudo(className, p, plan);
            continue;
        }
        const int index = info.byName.value(p.name, -1);
        if (index < 0) {
            if (plan.metaObject->indexOfProperty(p.name.constData()) >= 0)
                throw EReadError(QCoreApplication::translate("QorDesign", "Property %2 of class %1 cannot be written")
                                     .arg(className, QString::fromUtf8(p.name)));
            noSuchProperty(className, p.name);
        }
        const PropertyInfo &pi = info.properties[size_t(index)];
        PlannedProperty pp;
        pp.info = &pi;
        switch (p.kind) {
        case kEnumKey:
        case kFlagKeys: {
            if (!pi.property.isEnumType())
                badValue(className, p.name);
            const QMetaEnum me = pi.property.enumerator();
            bool ok = false;
            const int value = p.kind == kFlagKeys ? me.keysToValue(p.keys.constData(), &ok)
                                                  : me.keyToValue(p.keys.constData(), &ok);
            if (!ok)
                badValue(className, p.name);
            pp.value = value;
            break;
        }
        case kReference:
            if (pi.kind != kReference)
                badValue(className, p.name);
            pp.reference = p.reference;
            break;
        default: {
            if (!p.value.isValid())
                badValue(className, p.name);
            const QMetaType target = pi.property.metaType();
            pp.value = p.value;
            if (target.id() != QMetaType::QVariant && pp.value.metaType() != target) {
                // Enumerations take a plain number; other types are converted
                // here, so that a value of the wrong type fails before
                // anything is made.
                const bool number = pp.value.canConvert<int>() && pi.property.isEnumType();
                if (!number && !pp.value.convert(target))
                    badValue(className, p.name);
            }
            break;
        }
        }
        plan.properties.append(std::move(pp));
    }
    for (const StoredProperty &p : o.dynamicProperties) {
        if (!p.value.isValid() || plan.metaObject->indexOfProperty(p.name.constData()) >= 0)
            badValue(className, p.name);
        plan.dynamicProperties.append({p.name, p.value});
    }

    plan.children.resize(o.children.size());
    for (size_t i = 0; i < o.children.size(); ++i) {
        if (depth >= kMaxDepth)
            damaged();
        planObject(o.children[i], plan.children[i], plan.metaObject, depth + 1);
    }
    // A scroll area holds either its own widget or the controls on its
    // content widget, never both: setting its widget destroys the content
    // widget with whatever was put on it.
    if (plan.metaObject->inherits(&QScrollArea::staticMetaObject)) {
        int areaWidgets = 0;
        int contentWidgets = 0;
        for (const Plan &child : plan.children) {
            if (IsWidgetClass(child.metaObject))
                ++(child.scrollAreaWidget ? areaWidgets : contentWidgets);
        }
        if (areaWidgets > 1 || (areaWidgets == 1 && contentWidgets > 0))
            damaged();
    }
}

void collectNames(const Plan &plan, QSet<QString> &names, const QObject *instance)
{
    for (const Plan &child : plan.children) {
        const QString key = child.stored->name.toCaseFolded();
        if (!key.isEmpty()) {
            if (names.contains(key) || (instance && FindComponent(instance, child.stored->name)))
                throw EComponentError(QCoreApplication::translate("QorDesign", "A component named %1 already exists").arg(child.stored->name));
            names.insert(key);
        }
        collectNames(child, names, instance);
    }
}

// Puts a widget into the widget it is read into, by the container's rules.
// True when the container manages the widget's visibility (a page).
bool placeWidget(QWidget *container, QWidget *w, const Plan &plan)
{
    if (auto *tabs = qobject_cast<QTabWidget *>(container)) {
        const int index = tabs->addTab(w, plan.icon(kTabIcon), plan.text(kTabText));
        if (plan.pseudo.contains(kTabToolTip))
            tabs->setTabToolTip(index, plan.text(kTabToolTip));
        if (plan.pseudo.contains(kTabEnabled))
            tabs->setTabEnabled(index, plan.pseudo.value(kTabEnabled).toBool());
        return true;
    }
    if (auto *box = qobject_cast<QToolBox *>(container)) {
        const int index = box->addItem(w, plan.icon(kItemIcon), plan.text(kItemText));
        if (plan.pseudo.contains(kItemToolTip))
            box->setItemToolTip(index, plan.text(kItemToolTip));
        if (plan.pseudo.contains(kItemEnabled))
            box->setItemEnabled(index, plan.pseudo.value(kItemEnabled).toBool());
        return true;
    }
    if (auto *stack = qobject_cast<QStackedWidget *>(container)) {
        stack->addWidget(w);
        return true;
    }
    if (auto *area = qobject_cast<QScrollArea *>(container)) {
        if (plan.scrollAreaWidget || !area->widget()) {
            // Replaces (and deletes at once) the content widget the area
            // was made with.
            area->setWidget(w);
            return true;
        }
        w->setParent(area->widget());
        return false;
    }
    w->setParent(container);
    return false;
}

class Builder
{
public:
    explicit Builder(QObject *instance)
        : m_instance(instance)
    {
    }

    ~Builder()
    {
        if (!m_done)
            rollback();
    }

    QObject *build(const Plan &plan, QWidget *parent)
    {
        m_plan = &plan;
        QObject *root = m_instance;
        if (m_instance)
            m_savedName = m_instance->objectName();
        else
            root = create(plan);
        m_root = root;
        if (root->objectName() != plan.stored->name)
            root->setObjectName(plan.stored->name);
        if (auto *w = qobject_cast<QWidget *>(root); w && parent && !m_instance)
            place(parent, w, plan);
        fill(root, plan);
        resolveReferences();
        applyVisibility();
        return root;
    }

    void commit() { m_done = true; }

private:
    QObject *create(const Plan &plan)
    {
        QObject *o = CreateRegisteredComponent(plan.metaObject);
        if (!o)
            throw EReadError(QCoreApplication::translate("QorDesign", "Class %1 made no component")
                                 .arg(QString::fromLatin1(plan.metaObject->className())));
        m_created.append(o);
        return o;
    }

    void place(QWidget *container, QWidget *w, const Plan &plan)
    {
        const bool page = placeWidget(container, w, plan);
        if (!page)
            m_shown.append({w, &plan});
    }

    void write(QObject *o, const PlannedProperty &pp)
    {
        if (!pp.reference.isNull()) {
            m_references.append({o, &pp});
            return;
        }
        if (o == m_instance)
            m_saved.append({pp.info->property, pp.info->property.read(o)});
        if (!pp.info->property.write(o, pp.value)) {
            throw EReadError(QCoreApplication::translate("QorDesign", "Property %2 of class %1 cannot take the value read")
                                 .arg(QString::fromLatin1(o->metaObject()->className()),
                                      QString::fromUtf8(pp.info->name)));
        }
    }

    void fill(QObject *o, const Plan &plan)
    {
        // The items first: the current index and text pick among them.
        if (o != m_instance) {
            if (auto *combo = qobject_cast<QComboBox *>(o); combo && plan.pseudo.contains(kComboItems)) {
                combo->clear();
                combo->addItems(plan.pseudo.value(kComboItems).toStringList());
            }
        }
        for (const PlannedProperty &pp : plan.properties) {
            if (!pp.info->deferred)
                write(o, pp);
        }
        for (const auto &[name, value] : plan.dynamicProperties) {
            if (o == m_instance)
                m_savedDynamic.append({name, o->property(name.constData())});
            o->setProperty(name.constData(), value);
        }
        for (const Plan &childPlan : plan.children) {
            QObject *child = create(childPlan);
            child->setObjectName(childPlan.stored->name);
            if (auto *w = qobject_cast<QWidget *>(child))
                place(static_cast<QWidget *>(o), w, childPlan);
            InsertComponent(m_root, child);
            fill(child, childPlan);
        }
        for (const PlannedProperty &pp : plan.properties) {
            if (pp.info->deferred)
                write(o, pp);
        }
    }

    // References point into the record, so they are set once all of it
    // exists; a name that is not there leaves the property unset.
    void resolveReferences()
    {
        for (const auto &[o, pp] : std::as_const(m_references)) {
            QObject *target = FindComponent(m_root, pp->reference);
            if (!target && !pp->reference.isEmpty()
                && QString::compare(m_root->objectName(), pp->reference, Qt::CaseInsensitive) == 0)
                target = m_root;
            if (!target) {
                if (!pp->reference.isEmpty())
                    qCInfo(lcQorFoundation).noquote()
                        << "Left unset: property" << QString::fromUtf8(pp->info->name) << "of" << o->objectName()
                        << "names" << pp->reference << "which the record does not hold";
                continue;
            }
            if (o == m_instance)
                m_saved.append({pp->info->property, pp->info->property.read(o)});
            pp->info->property.write(o, QVariant::fromValue(target));
        }
    }

    void applyVisibility()
    {
        // The instance keeps its place; a record that hid it hides it.
        if (auto *w = qobject_cast<QWidget *>(m_instance); w && m_plan->hidden)
            w->hide();
        for (const auto &[w, plan] : std::as_const(m_shown)) {
            if (plan->hidden)
                w->hide();
        }
        for (const auto &[w, plan] : std::as_const(m_shown)) {
            if (!plan->hidden && !w->isVisible() && w->parentWidget() && w->parentWidget()->isVisible())
                w->show();
        }
    }

    void rollback()
    {
        // The objects made here have received no events yet: they go at once.
        for (qsizetype i = m_created.size() - 1; i >= 0; --i)
            delete m_created.at(i).data();
        for (qsizetype i = m_saved.size() - 1; i >= 0; --i)
            m_saved.at(i).first.write(m_instance, m_saved.at(i).second);
        for (qsizetype i = m_savedDynamic.size() - 1; i >= 0; --i)
            m_instance->setProperty(m_savedDynamic.at(i).first.constData(), m_savedDynamic.at(i).second);
        if (m_instance && !m_savedName.isNull() && m_instance->objectName() != m_savedName)
            m_instance->setObjectName(m_savedName);
    }

    QObject *m_instance;
    const Plan *m_plan = nullptr;
    QObject *m_root = nullptr;
    bool m_done = false;
    QString m_savedName;
    QList<QPointer<QObject>> m_created;
    QList<QPair<QMetaProperty, QVariant>> m_saved;
    QList<QPair<QByteArray, QVariant>> m_savedDynamic;
    QList<QPair<QObject *, const PlannedProperty *>> m_references;
    QList<QPair<QWidget *, const Plan *>> m_shown;
};

QString skippedEntry(const StoredObject &o)
{
    return o.name.isEmpty() ? QStringLiteral("(%1)").arg(o.className) : QStringLiteral("%1 (%2)").arg(o.name, o.className);
}

void listAll(const StoredObject &o, QStringList &skipped)
{
    skipped.append(skippedEntry(o));
    for (const StoredObject &child : o.children)
        listAll(child, skipped);
}

// Takes the components of unknown classes out of the tree before it is
// planned. What is nested in such a component goes with it: its place and
// meaning came from the component that cannot be made.
void dropUnknownClasses(StoredObject &o, QStringList &skipped, int depth)
{
    if (depth >= kMaxDepth)
        damaged();
    std::vector<StoredObject> kept;
    kept.reserve(o.children.size());
    for (StoredObject &child : o.children) {
        if (GetClass(child.className)) {
            dropUnknownClasses(child, skipped, depth + 1);
            kept.push_back(std::move(child));
        } else {
            listAll(child, skipped);
        }
    }
    o.children = std::move(kept);
}

} // namespace

QObject *readRecord(const QByteArray &body, QObject *instance, QWidget *parent, QObject *owner, QStringList *skipped)
{
    StoredObject stored = decodeRecordBody(body, ValueBytes::Drop);
    QStringList dropped;
    if (skipped)
        dropUnknownClasses(stored, dropped, 0);
    Plan plan;
    planObject(stored, plan, nullptr, 0);
    if (instance && instance->metaObject() != plan.metaObject) {
        throw EReadError(QCoreApplication::translate("QorDesign", "A component of class %1 cannot be read into a %2")
                             .arg(QString::fromLatin1(plan.metaObject->className()),
                                  QString::fromLatin1(instance->metaObject()->className())));
    }
    QSet<QString> names;
    collectNames(plan, names, instance);
    // The root's name must be free in the owner it goes to and, read into
    // an instance, in the owner that instance already has: a rename there
    // would go behind that owner's back.
    for (QObject *rootOwner : {owner, instance ? Owner(instance) : nullptr}) {
        if (!rootOwner || stored.name.isEmpty())
            continue;
        const QObject *taken = FindComponent(rootOwner, stored.name);
        if (taken && taken != instance)
            throw EComponentError(QCoreApplication::translate("QorDesign", "A component named %1 already exists").arg(stored.name));
    }

    Builder builder(instance);
    QObject *root = builder.build(plan, parent);
    if (owner)
        InsertComponent(owner, root);
    builder.commit();
    if (skipped)
        skipped->append(dropped);
    return root;
}

} // namespace QorStreamPrivate
