// SPDX-License-Identifier: MIT
#include "qorcomponents.h"

#include "qorerror.h"

#include <QApplication>
#include <QCoreApplication>
#include <QHash>
#include <QMetaObject>
#include <QScrollArea>
#include <QThread>
#include <QTabWidget>
#include <QToolBox>
#include <QWidget>

#include <algorithm>
#include <limits>
#include <memory>

namespace {

QString nameKey(const QString &name)
{
    return name.toCaseFolded();
}

// What the library keeps about one owner. Not a child of the owner: it must
// outlive the owner's children, which leave the list while the owner's
// destructor deletes them.
struct OwnerData
{
    QObject *owner = nullptr;
    // The owned components in order. A component that leaves from the
    // middle leaves a hole (null) behind, so that the positions of the others
    // stay as they are; the holes are closed before the list is read by
    // position. A deletion of thousands of components thus never moves the
    // list or re-indexes it once per component.
    mutable QList<QObject *> components;
    mutable int holes = 0;
    // Position of each component in `components`; rebuilt after the holes
    // were closed or a component moved.
    mutable QHash<const QObject *, int> indexes;
    mutable bool indexesValid = true;

    int count() const { return int(components.size()) - holes; }

    // The list without holes.
    const QList<QObject *> &compacted() const
    {
        if (holes > 0) {
            components.removeAll(nullptr);
            holes = 0;
            indexesValid = false;
        }
        return components;
    }
    // Owned components by folded name, to answer name look-ups at once.
    QMultiHash<QString, QObject *> byName;
    // For a folded base name ("pushbutton"), a number below which every
    // numbered name of that base is known to be taken, by the owner or a
    // component: finding the first free number starts there. A name that
    // leaves lowers it again.
    QHash<QString, qsizetype> freeFrom;
    QMetaObject::Connection ownerRenamed;

    void nameLeft(const QString &key)
    {
        for (auto it = freeFrom.begin(); it != freeFrom.end(); ++it) {
            const qsizetype number = numberAfter(key, it.key());
            if (number > 0 && number < it.value())
                it.value() = number;
        }
    }

    // N of a folded name that is the folded base followed by N's digits
    // without leading zeros; 0 for any other name.
    static qsizetype numberAfter(const QString &key, const QString &base)
    {
        if (key.size() <= base.size() || !key.startsWith(base) || key.at(base.size()) == u'0')
            return 0;
        qsizetype number = 0;
        for (qsizetype i = base.size(); i < key.size(); ++i) {
            const char16_t c = key.at(i).unicode();
            if (c < u'0' || c > u'9' || number > (std::numeric_limits<qsizetype>::max() - 9) / 10)
                return 0;
            number = number * 10 + (c - u'0');
        }
        return number;
    }
    std::unique_ptr<TQorOwnerNotifier> notifier;
    QMetaObject::Connection ownerDestroyed;

    int indexOf(const QObject *component) const
    {
        if (!indexesValid) {
            indexes.clear();
            indexes.reserve(components.size());
            for (int i = 0; i < components.size(); ++i) {
                if (components.at(i))
                    indexes.insert(components.at(i), i);
            }
            indexesValid = true;
        }
        return indexes.value(component, -1);
    }
};

// What the library keeps about one owned component.
struct ComponentData
{
    OwnerData *owner = nullptr;
    QString key; // folded name, as filed in the owner's byName
    QMetaObject::Connection destroyed;
    QMetaObject::Connection renamed;
};

struct Registry
{
    QHash<const QObject *, OwnerData *> owners;
    QHash<const QObject *, ComponentData> components;
};

// Never destroyed: owners alive at exit keep their entries.
Registry &registry()
{
    static Registry *r = new Registry;
    return *r;
}

void ownerDestroyed(QObject *owner);

OwnerData *ownerData(const QObject *owner, bool create)
{
    Registry &r = registry();
    OwnerData *data = r.owners.value(owner);
    if (!data && create && owner) {
        data = new OwnerData;
        data->owner = const_cast<QObject *>(owner);
        data->ownerDestroyed = QObject::connect(owner, &QObject::destroyed,
                                                [](QObject *o) { ownerDestroyed(o); });
        // The owner's own name takes a number too.
        data->ownerRenamed = QObject::connect(owner, &QObject::objectNameChanged,
                                              [data] { data->freeFrom.clear(); });
        r.owners.insert(owner, data);
    }
    return data;
}

void notifyRemoved(OwnerData *data, QObject *component)
{
    if (data->notifier)
        Q_EMIT data->notifier->ComponentRemoved(component);
}

// Takes a component out of its owner's list (its QObject parent stays).
// A component about to be destroyed keeps its connections: they find it
// in no list when they fire, and undoing them would cost more.
void detach(QObject *component, bool dying = false)
{
    Registry &r = registry();
    auto it = r.components.find(component);
    if (it == r.components.end())
        return;
    ComponentData cd = *it;
    r.components.erase(it);
    if (!dying) {
        QObject::disconnect(cd.destroyed);
        QObject::disconnect(cd.renamed);
    }
    OwnerData *data = cd.owner;
    const int index = data->indexOf(component);
    if (index >= 0) {
        data->indexes.remove(component);
        if (index == data->components.size() - 1) {
            data->components.removeLast();
            while (!data->components.isEmpty() && !data->components.constLast()) {
                data->components.removeLast();
                --data->holes;
            }
        } else {
            data->components[index] = nullptr;
            ++data->holes;
        }
    }
    data->byName.remove(cd.key, component);
    data->nameLeft(cd.key);
    notifyRemoved(data, component);
}

void ownerDestroyed(QObject *owner)
{
    Registry &r = registry();
    OwnerData *data = r.owners.value(owner);
    if (!data)
        return;
    // An owner destroys what it still owns: components shown elsewhere than
    // under the owner, which the owner's own destructor does not reach.
    data->compacted();
    while (!data->components.isEmpty()) {
        QObject *component = data->components.last();
        detach(component);
        delete component;
    }
    r.owners.remove(owner);
    QObject::disconnect(data->ownerRenamed);
    delete data;
}

void componentRenamed(QObject *component)
{
    Registry &r = registry();
    auto it = r.components.find(component);
    if (it == r.components.end())
        return;
    OwnerData *data = it->owner;
    data->byName.remove(it->key, component);
    data->nameLeft(it->key);
    it->key = nameKey(component->objectName());
    data->byName.insert(it->key, component);
}

} // namespace

TQorOwnerNotifier::TQorOwnerNotifier(QObject *owner)
    : m_owner(owner)
{
}

TQorOwnerNotifier::~TQorOwnerNotifier() = default;

QObject *Owner(const QObject *Component)
{
    const Registry &r = registry();
    auto it = r.components.constFind(Component);
    return it == r.components.constEnd() ? nullptr : it->owner->owner;
}

int ComponentCount(const QObject *Owner)
{
    const OwnerData *data = ownerData(Owner, false);
    return data ? data->count() : 0;
}

QObject *Components(const QObject *Owner, int Index)
{
    const OwnerData *data = ownerData(Owner, false);
    if (!data || Index < 0 || Index >= data->count())
        return nullptr;
    return data->compacted().at(Index);
}

QList<QObject *> ComponentList(const QObject *Owner)
{
    const OwnerData *data = ownerData(Owner, false);
    return data ? data->compacted() : QList<QObject *>();
}

int ComponentIndex(const QObject *Component)
{
    const Registry &r = registry();
    auto it = r.components.constFind(Component);
    if (it == r.components.constEnd())
        return -1;
    it->owner->compacted();
    return it->owner->indexOf(Component);
}

void SetComponentIndex(QObject *Component, int Index)
{
    const Registry &r = registry();
    auto it = r.components.constFind(Component);
    if (it == r.components.constEnd())
        return;
    OwnerData *data = it->owner;
    data->compacted();
    const int from = data->indexOf(Component);
    const int to = std::clamp(Index, 0, int(data->components.size()) - 1);
    if (from < 0 || from == to)
        return;
    data->components.move(from, to);
    data->indexesValid = false;
}

void InsertComponent(QObject *Owner, QObject *Component)
{
    if (!Owner || !Component || Owner == Component)
        return;
    const QString key = nameKey(Component->objectName());
    OwnerData *data = ownerData(Owner, true);
    if (::Owner(Component) == Owner)
        return;
    if (!key.isEmpty()) {
        const auto others = data->byName.values(key);
        if (!others.isEmpty()) {
            throw EComponentError(
                QCoreApplication::translate("QorDesign", "A component named %1 already exists")
                    .arg(Component->objectName()));
        }
    }
    detach(Component);

    ComponentData cd;
    cd.owner = data;
    cd.key = key;
    cd.destroyed = QObject::connect(Component, &QObject::destroyed,
                                    [](QObject *c) { detach(c); });
    cd.renamed = QObject::connect(Component, &QObject::objectNameChanged,
                                  [Component] { componentRenamed(Component); });
    registry().components.insert(Component, cd);
    if (data->indexesValid)
        data->indexes.insert(Component, int(data->components.size()));
    data->components.append(Component);
    data->byName.insert(key, Component);
    if (!Component->isWidgetType() && Component->parent() != Owner)
        Component->setParent(Owner);
    if (data->notifier)
        Q_EMIT data->notifier->ComponentInserted(Component);
}

void RemoveComponent(QObject *Owner, QObject *Component)
{
    if (Owner && Component && ::Owner(Component) == Owner)
        detach(Component);
}

void SetComponentName(QObject *Component, const QString &Name)
{
    if (!Component || Component->objectName() == Name)
        return;
    const auto identChar = [](QChar c, bool first) {
        return c == QLatin1Char('_') || (c.unicode() < 128 && (c.isLetter() || (!first && c.isDigit())));
    };
    bool valid = true;
    for (qsizetype i = 0; i < Name.size() && valid; ++i)
        valid = identChar(Name.at(i), i == 0);
    if (!valid) {
        throw EComponentError(
            QCoreApplication::translate("QorDesign", "'%1' is not a valid component name").arg(Name));
    }
    if (const QObject *owner = ::Owner(Component)) {
        const QObject *other = FindComponent(owner, Name);
        if (other && other != Component) {
            throw EComponentError(
                QCoreApplication::translate("QorDesign", "A component named %1 already exists").arg(Name));
        }
    }
    Component->setObjectName(Name);
}

QObject *FindComponent(const QObject *Owner, const QString &Name)
{
    const OwnerData *data = ownerData(Owner, false);
    if (!data || Name.isEmpty())
        return nullptr;
    const QList<QObject *> found = data->byName.values(nameKey(Name));
    if (found.size() <= 1)
        return found.value(0);
    QObject *first = nullptr;
    int firstIndex = std::numeric_limits<int>::max();
    for (QObject *c : found) {
        const int index = data->indexOf(c);
        if (index < firstIndex) {
            firstIndex = index;
            first = c;
        }
    }
    return first;
}

QList<QObject *> FindComponents(const QObject *Owner, const QString &Name)
{
    const OwnerData *data = ownerData(Owner, false);
    if (!data || Name.isEmpty())
        return {};
    QList<QObject *> found = data->byName.values(nameKey(Name));
    if (found.size() > 1)
        std::sort(found.begin(), found.end(),
                  [data](QObject *a, QObject *b) { return data->indexOf(a) < data->indexOf(b); });
    return found;
}

qsizetype FirstFreeNameNumber(const QObject *Owner, const QString &BaseName)
{
    const QString base = nameKey(BaseName);
    const QString ownerKey = Owner ? nameKey(Owner->objectName()) : QString();
    OwnerData *data = ownerData(Owner, false);
    qsizetype number = data ? data->freeFrom.value(base, 1) : 1;
    for (;; ++number) {
        const QString key = base + QString::number(number);
        if (key != ownerKey && !(data && data->byName.contains(key)))
            break;
    }
    if (data)
        data->freeFrom.insert(base, number);
    return number;
}

TQorOwnerNotifier *OwnerNotifier(QObject *Owner)
{
    OwnerData *data = ownerData(Owner, true);
    if (!data)
        return nullptr;
    if (!data->notifier)
        data->notifier = std::make_unique<TQorOwnerNotifier>(Owner);
    return data->notifier.get();
}

bool IsQorDesignObject(const QObject *Object)
{
    return Object && Object->metaObject()->indexOfClassInfo("QorDesignObject") >= 0;
}

bool IsInnerPart(const QObject *Object)
{
    if (!Object)
        return true;
    const QString name = Object->objectName();
    return name.isEmpty() || name.startsWith(QLatin1String("qt_"));
}

QList<QObject *> DesignChildren(const QObject *Object)
{
    QList<QObject *> result;
    if (!Object)
        return result;
    const auto candidate = [](const QObject *o) { return !IsInnerPart(o) && !IsQorDesignObject(o); };
    for (QObject *child : Object->children()) {
        if (candidate(child))
            result.append(child);
    }
    QList<QWidget *> pages;
    if (auto *tabs = qobject_cast<const QTabWidget *>(Object)) {
        for (int i = 0; i < tabs->count(); ++i)
            pages.append(tabs->widget(i));
    } else if (auto *box = qobject_cast<const QToolBox *>(Object)) {
        for (int i = 0; i < box->count(); ++i)
            pages.append(box->widget(i));
    } else if (auto *area = qobject_cast<const QScrollArea *>(Object)) {
        pages.append(area->widget());
    }
    for (QWidget *page : std::as_const(pages)) {
        if (page && candidate(page) && page->parent() != Object)
            result.append(page);
    }
    return result;
}

namespace {

// The first free name of a name's stem: the name without its trailing
// digits, followed by 1, 2, ...
QString freeNameLike(const QObject *owner, const QString &name)
{
    qsizetype stemLength = name.size();
    while (stemLength > 0 && name.at(stemLength - 1).isDigit())
        --stemLength;
    const QString stem = name.left(stemLength);
    for (int n = 1;; ++n) {
        const QString candidate = stem + QString::number(n);
        if (!FindComponent(owner, candidate)
            && QString::compare(owner->objectName(), candidate, Qt::CaseInsensitive) != 0)
            return candidate;
    }
}

void adoptUnder(QObject *owner, QObject *object, int &count)
{
    for (QObject *child : DesignChildren(object)) {
        if (Owner(child) != owner) {
            if (FindComponent(owner, child->objectName()))
                child->setObjectName(freeNameLike(owner, child->objectName()));
            InsertComponent(owner, child);
            ++count;
        }
        adoptUnder(owner, child, count);
    }
}

} // namespace

namespace {

// What FreeComponent frees in one turn of the event loop is destroyed
// together: the holder is deleted later, as each component would be. A
// deletion of thousands of components posts one event instead of one each.
// Siblings are destroyed in the order they sit in their parent: a parent
// looks for a leaving child from the front of its list, so any other order
// makes a large deletion quadratic.
class Graveyard final : public QObject
{
public:
    Graveyard() { setObjectName(QStringLiteral("qt_qor_graveyard")); }
    ~Graveyard() override
    {
        for (const QPointer<QObject> &component : inParentOrder())
            delete component.data();
    }

    void hold(QObject *Component) { m_held.append(Component); }

private:
    // The held components, grouped by parent in the order each parent first
    // appears, each group in its parent's order.
    QList<QPointer<QObject>> inParentOrder() const
    {
        constexpr qsizetype sortFrom = 32;
        if (m_held.size() < sortFrom)
            return m_held;
        QList<QObject *> parents;
        QHash<QObject *, QList<QPointer<QObject>>> byParent;
        for (const QPointer<QObject> &component : m_held) {
            if (!component)
                continue;
            QObject *parent = component->parent();
            auto group = byParent.find(parent);
            if (group == byParent.end()) {
                parents.append(parent);
                group = byParent.insert(parent, {});
            }
            group->append(component);
        }
        QList<QPointer<QObject>> ordered;
        ordered.reserve(m_held.size());
        for (QObject *parent : std::as_const(parents)) {
            QList<QPointer<QObject>> &group = byParent[parent];
            if (parent && group.size() > 1) {
                QHash<const QObject *, qsizetype> position;
                const QObjectList &siblings = parent->children();
                position.reserve(siblings.size());
                for (qsizetype i = 0; i < siblings.size(); ++i)
                    position.insert(siblings.at(i), i);
                std::stable_sort(group.begin(), group.end(), [&position](const QPointer<QObject> &a, const QPointer<QObject> &b) {
                    return position.value(a.data(), -1) < position.value(b.data(), -1);
                });
            }
            ordered.append(group);
        }
        return ordered;
    }

    QList<QPointer<QObject>> m_held;
};

QPointer<Graveyard> &currentGraveyard()
{
    static QPointer<Graveyard> graveyard;
    return graveyard;
}

void freeLater(QObject *Component)
{
    if (Component->thread() != QThread::currentThread()) {
        Component->deleteLater();
        return;
    }
    QPointer<Graveyard> &graveyard = currentGraveyard();
    if (!graveyard) {
        graveyard = new Graveyard;
        graveyard->deleteLater();
    }
    graveyard->hold(Component);
}

} // namespace

void FreeComponent(QObject *Component)
{
    if (!Component)
        return;
    if (Component->isWidgetType()) {
        auto *widget = static_cast<QWidget *>(Component);
        // The keyboard stays with the nearest widget that remains, rather
        // than wandering to whatever comes next in the window.
        QWidget *focus = QApplication::focusWidget();
        if (focus && (focus == widget || widget->isAncestorOf(focus)) && widget->parentWidget())
            widget->parentWidget()->setFocus(Qt::OtherFocusReason);
        widget->hide();
    }
    // The component and every component inside it leave their lists, for
    // good: each is destroyed with it.
    detach(Component, true);
    if (!Component->children().isEmpty()) {
        for (QObject *object : Component->findChildren<QObject *>())
            detach(object, true);
    }
    freeLater(Component);
}

int AdoptNamedDescendants(QObject *Owner)
{
    int count = 0;
    if (Owner)
        adoptUnder(Owner, Owner, count);
    return count;
}

TComponentList::TComponentList(std::initializer_list<QObject *> components)
{
    for (QObject *c : components)
        m_items.append(c);
}

TComponentList::TComponentList(const QList<QObject *> &components)
{
    for (QObject *c : components)
        m_items.append(c);
}

void TComponentList::compact() const
{
    // Looked through first: a list that lost nothing is left as it is, so
    // a list shared with another copy is not copied to be compacted.
    if (std::none_of(m_items.cbegin(), m_items.cend(), [](const QPointer<QObject> &p) { return p.isNull(); }))
        return;
    m_items.removeIf([](const QPointer<QObject> &p) { return p.isNull(); });
}

int TComponentList::Count() const
{
    compact();
    return int(m_items.size());
}

QObject *TComponentList::Items(int Index) const
{
    compact();
    return Index >= 0 && Index < m_items.size() ? m_items.at(Index).data() : nullptr;
}

QObject *TComponentList::First() const
{
    // The first entry still alive: what Items(0) gives after compacting,
    // without looking at the rest of the list.
    for (const QPointer<QObject> &p : std::as_const(m_items)) {
        if (!p.isNull())
            return p.data();
    }
    return nullptr;
}

QObject *TComponentList::Last() const
{
    return Items(Count() - 1);
}

int TComponentList::Add(QObject *Component)
{
    compact();
    m_items.append(Component);
    return int(m_items.size()) - 1;
}

void TComponentList::Insert(int Index, QObject *Component)
{
    compact();
    m_items.insert(std::clamp(Index, 0, int(m_items.size())), Component);
}

int TComponentList::IndexOf(const QObject *Component) const
{
    compact();
    for (int i = 0; i < m_items.size(); ++i) {
        if (m_items.at(i) == Component)
            return i;
    }
    return -1;
}

int TComponentList::Remove(const QObject *Component)
{
    const int index = IndexOf(Component);
    if (index >= 0)
        m_items.removeAt(index);
    return index;
}

void TComponentList::Delete(int Index)
{
    compact();
    if (Index >= 0 && Index < m_items.size())
        m_items.removeAt(Index);
}

void TComponentList::Clear()
{
    m_items.clear();
}

QList<QObject *> TComponentList::toList() const
{
    compact();
    QList<QObject *> list;
    list.reserve(m_items.size());
    for (const auto &p : m_items)
        list.append(p.data());
    return list;
}
