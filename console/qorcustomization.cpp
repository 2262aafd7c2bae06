// SPDX-License-Identifier: MIT
// A customization's delta: taken from two designs of one form, kept step by
// step, written to bytes and read back, and applied onto a form the
// application has just built.
//
// The delta's bytes:
//
//   delta    := "QORC" version:quint32 entryCount:quint32 entry*   (nothing may follow)
//   entry    := key:text className:text flags:quint8
//               [newName:text]                       (flag 0x04)
//               [parent:text]                        (flag 0x08)
//               [zAbove:text zSeq:quint64]           (flag 0x10)
//               [ownerAfter:text ownerSeq:quint64]   (flag 0x20)
//               [record:bytes]                       (flag 0x01, added)
//               propertyCount:quint32 property*
//               (flag 0x02: deleted)
//   property := name:bytes op:quint8 [kind:quint8 payload]          (op Set, DynamicSet)
//               kind 'V': the value as the component stream writes it (bytes)
//               kind 'K', 'S': enumeration or flag keys (bytes)
//               kind 'R': the referenced component's name (text)
//   text     := bytes of UTF-8;  bytes := length:quint32 data
//
// Numbers are big-endian. Every length and count is held against the bytes
// that follow before anything is allocated, and values and records are
// checked by the component stream's own readers, so damaged bytes end in
// EReadError.
#include "console/qorcustomization.h"

#include "console/qordesignrecords_p.h"
#include "foundation/qorclasses.h"
#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "foundation/qorstream.h"
#include "foundation/qorstream_p.h"
#include "foundation/vhosysutils.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QHash>
#include <QIcon>
#include <QMetaEnum>
#include <QPointer>
#include <QRect>
#include <QScrollArea>
#include <QSet>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBox>
#include <QWidget>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <map>
#include <vector>

using namespace QorStreamPrivate;

namespace {

inline constexpr char kMagic[4] = {'Q', 'O', 'R', 'C'};
inline constexpr quint32 kVersion = 1;
// The stage's owner order travels in its records as this dynamic property.
const QByteArray kOrderProperty = QByteArrayLiteral("qorComponentOrder");

enum EntryFlag : quint8 {
    fAdded = 0x01,
    fDeleted = 0x02,
    fRenamed = 0x04,
    fParent = 0x08,
    fZOrder = 0x10,
    fOwnerOrder = 0x20,
    fAllFlags = 0x3f
};

enum PropertyOp : quint8 { opSet = 1, opReset = 2, opDynamicSet = 3, opDynamicRemove = 4 };

QString fold(const QString &S)
{
    return S.toCaseFolded();
}

} // namespace

// ---------------------------------------------------------------------------
// Locks

void TQorCustomizationLocks::LockProperty(const QByteArray &Name, const QString &ClassName, const QString &Path)
{
    m_properties.append({Name, ClassName, Path.isNull() ? QString() : fold(Path)});
}

void TQorCustomizationLocks::LockComponent(const QString &Path)
{
    m_components.append(fold(Path));
}

bool TQorCustomizationLocks::IsComponentLocked(const QString &Path) const
{
    return !m_components.isEmpty() && m_components.contains(fold(Path));
}

bool TQorCustomizationLocks::IsPropertyLocked(const QString &Path, const QMetaObject *Class, const QByteArray &Name) const
{
    for (const PropertyLock &lock : m_properties) {
        if (lock.name != Name)
            continue;
        if (!lock.path.isNull() && lock.path != fold(Path))
            continue;
        if (!lock.className.isEmpty()) {
            bool matches = false;
            for (const QMetaObject *mo = Class; mo && !matches; mo = mo->superClass())
                matches = QString::compare(QLatin1String(mo->className()), lock.className, Qt::CaseInsensitive) == 0;
            if (!matches)
                continue;
        }
        return true;
    }
    return false;
}

bool TQorCustomizationLocks::IsEmpty() const
{
    return m_properties.isEmpty() && m_components.isEmpty();
}

// ---------------------------------------------------------------------------
// The delta's data

struct PropChange
{
    quint8 op = opSet;
    quint8 kind = kValue;
    QVariant value;
    QByteArray keys;
    QString reference;
    QByteArray raw; // the value's stream bytes when known
};

struct Entry
{
    QString key;
    QString className;
    quint8 flags = 0;
    QString newName;
    QString parent;
    QString zAbove;
    QString ownerAfter;
    quint64 zSeq = 0;
    quint64 ownerSeq = 0;
    QByteArray record;
    std::map<QByteArray, PropChange> props;
    bool dead = false;

    bool has(quint8 flag) const { return (flags & flag) != 0; }
};

class TQorCustomizationPrivate
{
public:
    std::vector<Entry> entries;
    QHash<QString, size_t> byKey;          // folded key -> entry
    QHash<QString, QString> currentToKey;  // folded path as the stage shows it -> key
    quint64 seq = 0;

    Entry *find(const QString &key)
    {
        const auto it = byKey.constFind(fold(key));
        return it == byKey.constEnd() ? nullptr : &entries[*it];
    }
    const Entry *find(const QString &key) const { return const_cast<TQorCustomizationPrivate *>(this)->find(key); }

    Entry &touch(const QString &key, const QString &className = QString())
    {
        const QString folded = fold(key);
        if (const auto it = byKey.constFind(folded); it != byKey.constEnd()) {
            Entry &e = entries[*it];
            if (e.className.isEmpty())
                e.className = className;
            return e;
        }
        byKey.insert(folded, entries.size());
        Entry e;
        e.key = key;
        e.className = className;
        entries.push_back(std::move(e));
        return entries.back();
    }

    // The entry of a component a structural step names; none for the form.
    Entry *structural(const QString &path) { return path.isEmpty() ? nullptr : &touch(keyOf(path)); }

    // The delta's key of a component the stage now shows under Path.
    QString keyOf(const QString &path) const
    {
        if (path.isEmpty())
            return path;
        return currentToKey.value(fold(path), path);
    }

    void kill(Entry &e)
    {
        byKey.remove(fold(e.key));
        e.dead = true;
        e.props.clear();
    }
};

namespace {

QString lastPart(const QString &Path)
{
    const qsizetype dot = Path.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? Path : Path.mid(dot + 1);
}

QString ownerPart(const QString &Path)
{
    const qsizetype dot = Path.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? QString() : Path.left(dot);
}

QString joinPath(const QString &Owner, const QString &Name)
{
    return Owner.isEmpty() ? Name : Owner + QLatin1Char('.') + Name;
}

// A free name like Name: its stem (without trailing digits) numbered as new
// components are ("Check1" taken gives "Check2").
QString freeNameLike(const QString &Name, QObject *Owner)
{
    qsizetype end = Name.size();
    while (end > 0 && Name.at(end - 1).isDigit())
        --end;
    return GetUniqueName(end > 0 ? Name.left(end) : Name, Owner);
}

QObject *resolvePath(QObject *Stage, const QString &Path)
{
    if (Path.isEmpty())
        return Stage;
    QObject *at = Stage;
    for (const QString &part : Path.split(QLatin1Char('.'))) {
        at = FindComponent(at, part);
        if (!at)
            return nullptr;
    }
    return at;
}

StoredObject decodeOne(const QByteArray &Records)
{
    QBuffer buffer;
    buffer.setData(Records);
    buffer.open(QIODevice::ReadOnly);
    const QByteArray body = readRecordBody(buffer);
    if (!buffer.atEnd())
        damaged();
    return decodeRecordBody(body, ValueBytes::Keep);
}

PropChange changeOf(const StoredProperty &P, quint8 Op)
{
    PropChange c;
    c.op = Op;
    c.kind = P.kind;
    c.value = P.value;
    c.keys = P.keys;
    c.reference = P.reference;
    c.raw = P.raw;
    return c;
}

bool sameProperty(const StoredProperty &A, const StoredProperty &B)
{
    if (A.kind != B.kind)
        return false;
    switch (A.kind) {
    case kEnumKey:
    case kFlagKeys:
        return A.keys == B.keys;
    case kReference:
        return A.reference == B.reference;
    default:
        return (A.raw.isEmpty() ? variantBytes(A.value) : A.raw) == (B.raw.isEmpty() ? variantBytes(B.value) : B.raw);
    }
}

// ---- Text of values, for Describe ----------------------------------------

QString valueText(const PropChange &C)
{
    if (C.kind == kEnumKey || C.kind == kFlagKeys)
        return QString::fromLatin1(C.keys);
    if (C.kind == kReference)
        return C.reference;
    const QVariant &v = C.value;
    switch (v.typeId()) {
    case QMetaType::QRect: {
        const QRect r = v.toRect();
        return QStringLiteral("%1, %2, %3 x %4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
    }
    case QMetaType::QSize:
        return QStringLiteral("%1 x %2").arg(v.toSize().width()).arg(v.toSize().height());
    case QMetaType::QPoint:
        return QStringLiteral("%1, %2").arg(v.toPoint().x()).arg(v.toPoint().y());
    case QMetaType::Bool:
        return v.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    case QMetaType::QStringList:
        return v.toStringList().join(QStringLiteral(", "));
    default:
        break;
    }
    if (v.canConvert<QString>()) {
        const QString text = v.toString();
        if (!text.isEmpty() || v.typeId() == QMetaType::QString)
            return text;
    }
    return QStringLiteral("(%1)").arg(QString::fromLatin1(v.typeName()));
}

QString shownPath(const QString &Path)
{
    return Path.isEmpty() ? QCoreApplication::translate("TQorCustomization", "The form") : Path;
}

// ---- The longest run of components that keep their order -----------------

// Of Target, the items whose relative order already holds in Base: the
// longest increasing run of their places in Base. Everything else is
// placed explicitly, which gives Target exactly.
QSet<QString> keptInOrder(const QStringList &Base, const QStringList &Target)
{
    QHash<QString, int> place;
    for (int i = 0; i < Base.size(); ++i)
        place.insert(Base.at(i), i);
    std::vector<int> positions;
    std::vector<QString> keys;
    for (const QString &k : Target) {
        if (const auto it = place.constFind(k); it != place.constEnd()) {
            positions.push_back(*it);
            keys.push_back(k);
        }
    }
    // Patience sorting with the predecessor of each item.
    std::vector<int> tails;     // index into positions of the run's end, per length
    std::vector<int> previous(positions.size(), -1);
    for (int i = 0; i < int(positions.size()); ++i) {
        const auto it = std::lower_bound(tails.begin(), tails.end(), positions[size_t(i)],
                                         [&](int t, int value) { return positions[size_t(t)] < value; });
        const int length = int(it - tails.begin());
        if (length > 0)
            previous[size_t(i)] = tails[size_t(length - 1)];
        if (it == tails.end())
            tails.push_back(i);
        else
            *it = i;
    }
    QSet<QString> kept;
    for (int i = tails.empty() ? -1 : tails.back(); i >= 0; i = previous[size_t(i)])
        kept.insert(keys[size_t(i)]);
    return kept;
}

// ---- The plain trees of two designs, flattened -------------------------------

struct Flat
{
    const StoredObject *node = nullptr;
    QString parent; // folded key of the parent
};

struct FlatDesign
{
    StoredObject root;
    QHash<QString, Flat> byKey;          // folded key
    QStringList preOrder;                // folded keys
    QHash<QString, QString> spelled;     // folded -> as written
    QHash<QString, QStringList> widgets; // folded parent key -> folded widget children in order
    QStringList ownerOrder;              // folded

    void flatten(const StoredObject &node, const QString &key, int depth)
    {
        if (depth > kMaxDepth)
            damaged();
        QStringList children;
        for (const StoredObject &child : node.children) {
            if (child.name.isEmpty())
                continue;
            const QString childKey = fold(child.name);
            if (byKey.contains(childKey))
                continue;
            byKey.insert(childKey, {&child, key});
            spelled.insert(childKey, child.name);
            preOrder.append(childKey);
            const QMetaObject *mo = GetClass(child.className);
            if (!mo || IsWidgetClass(mo))
                children.append(childKey);
            flatten(child, childKey, depth + 1);
        }
        widgets.insert(key, children);
    }

    explicit FlatDesign(const QByteArray &Records)
        : root(decodeOne(Records))
    {
        for (qsizetype i = 0; i < root.dynamicProperties.size(); ++i) {
            if (root.dynamicProperties.at(i).name == kOrderProperty) {
                const QVariant order = root.dynamicProperties.at(i).value;
                for (const QString &name : order.toStringList())
                    ownerOrder.append(fold(name));
                root.dynamicProperties.removeAt(i);
                break;
            }
        }
        flatten(root, QString(), 0);
        if (ownerOrder.isEmpty())
            ownerOrder = preOrder;
    }
};

void diffProperties(const QList<StoredProperty> &Base, const QList<StoredProperty> &Now, bool Dynamic, Entry &E,
                    const QMetaObject *Class, const TQorCustomizationLocks &Locks)
{
    QHash<QByteArray, const StoredProperty *> base;
    for (const StoredProperty &p : Base)
        base.insert(p.name, &p);
    for (const StoredProperty &p : Now) {
        const StoredProperty *before = base.take(p.name);
        if (before && sameProperty(*before, p))
            continue;
        if (!Locks.IsEmpty() && Locks.IsPropertyLocked(E.key, Class, p.name))
            continue;
        E.props[p.name] = changeOf(p, Dynamic ? opDynamicSet : opSet);
    }
    for (auto it = base.cbegin(); it != base.cend(); ++it) {
        if (!Locks.IsEmpty() && Locks.IsPropertyLocked(E.key, Class, it.key()))
            continue;
        PropChange c;
        c.op = Dynamic ? opDynamicRemove : opReset;
        E.props[it.key()] = c;
    }
}

// The component's record without what is nested in it (placed by entries
// of its own) and without references (set once everything is there).
QByteArray addedRecord(const StoredObject &Node, Entry &E)
{
    StoredObject alone;
    alone.className = Node.className;
    alone.name = Node.name;
    alone.dynamicProperties = Node.dynamicProperties;
    for (const StoredProperty &p : Node.properties) {
        if (p.kind == kReference)
            E.props[p.name] = changeOf(p, opSet);
        else
            alone.properties.append(p);
    }
    return encodeRecord(alone);
}

// ---- Applying -------------------------------------------------------------

// The widget a component's children sit on.
QWidget *childArea(QObject *Container)
{
    if (auto *area = qobject_cast<QScrollArea *>(Container); area && area->widget() && IsInnerPart(area->widget()))
        return area->widget();
    return qobject_cast<QWidget *>(Container);
}

template <typename T>
T *pageContainerOf(QWidget *W)
{
    int up = 0;
    for (QWidget *p = W->parentWidget(); p && up < 4; p = p->parentWidget(), ++up) {
        if (auto *c = qobject_cast<T *>(p); c && c->indexOf(W) >= 0)
            return c;
    }
    return nullptr;
}

void leavePageContainer(QWidget *W)
{
    if (auto *tabs = pageContainerOf<QTabWidget>(W))
        tabs->removeTab(tabs->indexOf(W));
    else if (auto *box = pageContainerOf<QToolBox>(W))
        box->removeItem(box->indexOf(W));
    else if (auto *stack = qobject_cast<QStackedWidget *>(W->parentWidget()); stack && stack->indexOf(W) >= 0)
        stack->removeWidget(W);
    else if (auto *area = qobject_cast<QScrollArea *>(W->parentWidget() ? W->parentWidget()->parentWidget() : nullptr);
             area && area->widget() == W)
        area->takeWidget();
}

void placeInto(QObject *Container, QWidget *W)
{
    const bool hidden = W->isHidden() && W->testAttribute(Qt::WA_WState_ExplicitShowHide);
    leavePageContainer(W);
    if (auto *tabs = qobject_cast<QTabWidget *>(Container)) {
        tabs->addTab(W, QString());
        return;
    }
    if (auto *box = qobject_cast<QToolBox *>(Container)) {
        box->addItem(W, QString());
        return;
    }
    if (auto *stack = qobject_cast<QStackedWidget *>(Container)) {
        stack->addWidget(W);
        return;
    }
    QWidget *area = childArea(Container);
    if (!area)
        return;
    W->setParent(area);
    if (!hidden)
        W->show();
}

QWidget *containerOf(QWidget *W)
{
    if (auto *tabs = pageContainerOf<QTabWidget>(W))
        return tabs;
    if (auto *box = pageContainerOf<QToolBox>(W))
        return box;
    return W->parentWidget();
}

// Puts W directly above Below among the components beside it (Below null:
// at the bottom).
void placeAbove(QWidget *W, QWidget *Below)
{
    if (Below && containerOf(Below) != containerOf(W))
        return;
    if (auto *tabs = pageContainerOf<QTabWidget>(W)) {
        const int from = tabs->indexOf(W);
        const int below = Below ? tabs->indexOf(Below) : -1;
        if (Below && below < 0)
            return;
        const int to = !Below ? 0 : (below < from ? below + 1 : below);
        if (from != to)
            tabs->tabBar()->moveTab(from, to);
        return;
    }
    if (auto *stack = qobject_cast<QStackedWidget *>(W->parentWidget()); stack && stack->indexOf(W) >= 0) {
        const int from = stack->indexOf(W);
        const int below = Below ? stack->indexOf(Below) : -1;
        if (Below && below < 0)
            return;
        const int to = !Below ? 0 : (below < from ? below + 1 : below);
        if (from != to) {
            const int current = stack->currentIndex();
            QWidget *shown = stack->widget(current);
            stack->removeWidget(W);
            stack->insertWidget(to, W);
            if (shown)
                stack->setCurrentWidget(shown);
        }
        return;
    }
    QWidget *parent = W->parentWidget();
    if (!parent)
        return;
    QList<QWidget *> siblings;
    for (QObject *child : parent->children()) {
        if (child != W && child->isWidgetType() && Owner(child))
            siblings.append(static_cast<QWidget *>(child));
    }
    if (!Below) {
        if (!siblings.isEmpty())
            W->stackUnder(siblings.first());
        return;
    }
    const qsizetype at = siblings.indexOf(Below);
    if (at < 0)
        return;
    if (at + 1 < siblings.size())
        W->stackUnder(siblings.at(at + 1));
    else
        W->raise();
}

// What a tab widget or a tool box keeps about a page: its text, icon, tip
// and enabled state, named as the stream names them.
template<typename Container>
bool writePageInfo(QWidget *W, const QByteArray &Name, const QVariant &Value, const std::array<QByteArray, 4> &Names,
                   void (Container::*SetText)(int, const QString &), void (Container::*SetIcon)(int, const QIcon &),
                   void (Container::*SetTip)(int, const QString &), void (Container::*SetEnabled)(int, bool))
{
    auto *container = pageContainerOf<Container>(W);
    if (!container)
        return false;
    const int i = container->indexOf(W);
    const bool reset = !Value.isValid();
    if (Name == Names[0])
        (container->*SetText)(i, reset ? QString() : Value.toString());
    else if (Name == Names[1])
        (container->*SetIcon)(i, reset ? QIcon() : Value.value<QIcon>());
    else if (Name == Names[2])
        (container->*SetTip)(i, reset ? QString() : Value.toString());
    else if (Name == Names[3])
        (container->*SetEnabled)(i, reset || Value.toBool());
    else
        return false;
    return true;
}

// The stream's own pseudo properties: what a container keeps about its
// page, and a widget hidden on purpose. Value invalid: back to the default.
bool writePseudo(QObject *O, const QByteArray &Name, const QVariant &Value)
{
    auto *w = qobject_cast<QWidget *>(O);
    if (!w)
        return false;
    const bool reset = !Value.isValid();
    if (Name == kHidden) {
        w->setVisible(reset ? true : !Value.toBool());
        return true;
    }
    if (Name == kScrollAreaWidget)
        return true;
    if (Name.startsWith("qor.tab"))
        return writePageInfo<QTabWidget>(w, Name, Value, {kTabText, kTabIcon, kTabToolTip, kTabEnabled},
                                         &QTabWidget::setTabText, &QTabWidget::setTabIcon,
                                         &QTabWidget::setTabToolTip, &QTabWidget::setTabEnabled);
    if (Name.startsWith("qor.item"))
        return writePageInfo<QToolBox>(w, Name, Value, {kItemText, kItemIcon, kItemToolTip, kItemEnabled},
                                       &QToolBox::setItemText, &QToolBox::setItemIcon, &QToolBox::setItemToolTip,
                                       &QToolBox::setItemEnabled);
    return false;
}

class Applier
{
public:
    Applier(QWidget *Stage, const TQorCustomizationLocks &Locks)
        : m_stage(Stage)
        , m_locks(Locks)
    {
    }

    QList<TQorCustomizationIssue> issues;

    void report(const QString &Path, const QByteArray &Property, const QString &Text)
    {
        issues.append({Path, Property, Text});
    }

    QObject *live(const QString &Key)
    {
        const QString folded = fold(Key);
        if (const auto it = m_live.constFind(folded); it != m_live.constEnd())
            return it->data();
        QObject *o = resolvePath(m_stage, Key);
        m_live.insert(folded, o);
        return o;
    }
    void setLive(const QString &Key, QObject *O) { m_live.insert(fold(Key), O); }

    void run(const std::vector<const Entry *> &Entries)
    {
        // Every component is found by the path it had before anything moves
        // or is renamed.
        std::vector<const Entry *> kept;
        for (const Entry *e : Entries) {
            if (e->has(fDeleted) || !e->has(fAdded))
                live(e->key);
            if (m_locks.IsComponentLocked(e->key)) {
                report(e->key, QByteArray(), QCoreApplication::translate("TQorCustomization", "%1 is locked: its changes were not applied").arg(shownPath(e->key)));
                continue;
            }
            if (!e->has(fAdded) && !e->has(fDeleted) && !live(e->key)) {
                lostChanges(*e);
                continue;
            }
            if (e->has(fDeleted))
                m_doomed.insert(live(e->key));
            kept.push_back(e);
        }
        // A component replaced by another of its name goes first, so that
        // the name is free; the others go once the components the user took
        // out of them have moved.
        for (const Entry *e : kept) {
            if (e->has(fDeleted) && e->has(fAdded))
                free(live(e->key));
        }
        renameComponents(kept);
        addComponents(kept);
        reparentComponents(kept);
        for (const Entry *e : kept) {
            if (e->has(fDeleted) && !e->has(fAdded)) {
                free(live(e->key));
                setLive(e->key, nullptr);
            }
        }
        for (const Entry *e : kept)
            writeProperties(*e);
        order(kept);
    }

private:
    void free(QObject *O)
    {
        if (O && O != m_stage && Owner(O))
            FreeComponent(O);
    }

    void lostChanges(const Entry &E)
    {
        const QString path = shownPath(E.key);
        if (E.has(fRenamed))
            report(E.key, QByteArray(), QCoreApplication::translate("TQorCustomization", "%1 no longer exists: its renaming to %2 is lost").arg(path, E.newName));
        if (E.has(fParent))
            report(E.key, QByteArray(), QCoreApplication::translate("TQorCustomization", "%1 no longer exists: its move onto %2 is lost").arg(path, shownPath(E.parent)));
        if (E.has(fZOrder) || E.has(fOwnerOrder))
            report(E.key, QByteArray(), QCoreApplication::translate("TQorCustomization", "%1 no longer exists: its new place in the order is lost").arg(path));
        for (const auto &[name, change] : E.props)
            report(E.key, name, QCoreApplication::translate("TQorCustomization", "%1 no longer exists: its change of %2 is lost").arg(path, QString::fromUtf8(name)));
    }

    void renameComponents(const std::vector<const Entry *> &Entries)
    {
        std::vector<std::pair<QObject *, const Entry *>> pending;
        for (const Entry *e : Entries) {
            if (e->has(fRenamed) && !e->has(fAdded)) {
                if (QObject *o = live(e->key); o && o != m_stage)
                    pending.emplace_back(o, e);
            }
        }
        // A name another renamed component is about to give up waits for it.
        bool progress = true;
        while (!pending.empty() && progress) {
            progress = false;
            for (auto it = pending.begin(); it != pending.end();) {
                QObject *owner = Owner(it->first);
                QObject *holder = owner ? FindComponent(owner, it->second->newName) : nullptr;
                if (holder && holder != it->first && m_doomed.contains(holder)) {
                    free(holder);
                    holder = nullptr;
                }
                if (!holder || holder == it->first) {
                    SetComponentName(it->first, it->second->newName);
                    it = pending.erase(it);
                    progress = true;
                } else {
                    ++it;
                }
            }
        }
        for (const auto &[o, e] : pending) {
            const QString unique = freeNameLike(e->newName, Owner(o));
            SetComponentName(o, unique);
            report(e->key, QByteArray(), QCoreApplication::translate("TQorCustomization", "%1 could not be renamed to %2, which is taken: it is named %3")
                                             .arg(shownPath(e->key), e->newName, unique));
        }
    }

    void addComponents(const std::vector<const Entry *> &Entries)
    {
        std::vector<const Entry *> pending;
        QSet<QString> waiting;
        for (const Entry *e : Entries) {
            if (e->has(fAdded)) {
                pending.push_back(e);
                waiting.insert(fold(e->key));
            }
        }
        // Parents the delta adds come first, whatever order the steps were
        // recorded in.
        bool progress = true;
        while (!pending.empty() && progress) {
            progress = false;
            for (auto it = pending.begin(); it != pending.end();) {
                const Entry *e = *it;
                if (!e->parent.isEmpty() && waiting.contains(fold(e->parent)) && e->parent.compare(e->key, Qt::CaseInsensitive) != 0) {
                    ++it;
                    continue;
                }
                addComponent(*e);
                waiting.remove(fold(e->key));
                it = pending.erase(it);
                progress = true;
            }
        }
        for (const Entry *e : pending)
            addComponent(*e); // a cycle of parents: each lands on the form
    }

    void addComponent(const Entry &E)
    {
        const QString path = shownPath(E.key);
        QObject *owner = resolvePath(m_stage, ownerPart(E.key));
        if (!owner) {
            report(E.key, QByteArray(), QCoreApplication::translate("TQorCustomization", "%1 could not be added: its owner %2 is gone").arg(path, ownerPart(E.key)));
            return;
        }
        QObject *parent = E.parent.isEmpty() ? m_stage : live(E.parent);
        if (!parent) {
            report(E.key, QByteArray(), QCoreApplication::translate("TQorCustomization", "%1 was put onto the form: its parent %2 is gone").arg(path, E.parent));
            parent = m_stage;
        }
        QString name = E.has(fRenamed) ? E.newName : lastPart(E.key);
        if (FindComponent(owner, name)
            || (!name.isEmpty() && QString::compare(owner->objectName(), name, Qt::CaseInsensitive) == 0)) {
            const QString unique = freeNameLike(name, owner);
            report(E.key, QByteArray(), QCoreApplication::translate("TQorCustomization", "%1 was added as %2: its name is taken").arg(path, unique));
            name = unique;
        }
        QObject *made = nullptr;
        try {
            QWidget *area = nullptr;
            const QMetaObject *mo = FindClass(E.className);
            // A control whose parent is no widget (the delta's bytes said so)
            // goes onto the form rather than into a window of its own.
            if (IsWidgetClass(mo)) {
                area = qobject_cast<QWidget *>(parent);
                if (!area)
                    area = m_stage;
            }
            made = ComponentFromBytes(E.record, nullptr, area, nullptr);
        } catch (const EQorError &error) {
            report(E.key, QByteArray(), QCoreApplication::translate("TQorCustomization", "%1 could not be added: %2").arg(path, error.message()));
            return;
        }
        if (made->objectName() != name)
            made->setObjectName(name);
        InsertComponent(owner, made);
        setLive(E.key, made);
    }

    void reparentComponents(const std::vector<const Entry *> &Entries)
    {
        for (const Entry *e : Entries) {
            if (!e->has(fParent) || e->has(fAdded))
                continue;
            auto *w = qobject_cast<QWidget *>(live(e->key));
            if (!w || w == m_stage)
                continue;
            QObject *parent = e->parent.isEmpty() ? m_stage : live(e->parent);
            if (!parent) {
                report(e->key, QByteArray(), QCoreApplication::translate("TQorCustomization", "%1 was left where it is: its new parent %2 is gone")
                                                 .arg(shownPath(e->key), e->parent));
                continue;
            }
            if (parent == w || w->isAncestorOf(qobject_cast<QWidget *>(parent)))
                continue;
            placeInto(parent, w);
        }
    }

    void writeProperties(const Entry &E)
    {
        QObject *o = live(E.key);
        if (!o)
            return;
        const QMetaObject *mo = o->metaObject();
        // Written in the order of the class's properties, as the stream
        // reads them: one property may change another (a button made
        // checkable, a slider's value and its position).
        const ClassInfo &info = classInfo(mo);
        std::vector<std::pair<int, const std::pair<const QByteArray, PropChange> *>> ordered;
        ordered.reserve(E.props.size());
        for (const auto &item : E.props)
            ordered.emplace_back(info.byName.value(item.first, std::numeric_limits<int>::max()), &item);
        std::stable_sort(ordered.begin(), ordered.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
        for (const auto &[index, item] : ordered) {
            const QByteArray &name = item->first;
            const PropChange &change = item->second;
            if (m_locks.IsPropertyLocked(E.key, mo, name)) {
                report(E.key, name, QCoreApplication::translate("TQorCustomization", "%1: %2 is locked; the change was not applied")
                                        .arg(shownPath(E.key), QString::fromUtf8(name)));
                continue;
            }
            if (!writeProperty(o, name, change))
                report(E.key, name, QCoreApplication::translate("TQorCustomization", "%1: %2 could not be set; the class %3 no longer takes it")
                                        .arg(shownPath(E.key), QString::fromUtf8(name), QString::fromLatin1(mo->className())));
        }
    }

    bool writeProperty(QObject *O, const QByteArray &Name, const PropChange &C)
    {
        if (C.op == opDynamicSet || C.op == opDynamicRemove) {
            if (O->metaObject()->indexOfProperty(Name.constData()) >= 0)
                return false;
            O->setProperty(Name.constData(), C.op == opDynamicSet ? C.value : QVariant());
            return true;
        }
        if (Name.startsWith("qor."))
            return writePseudo(O, Name, C.op == opReset ? QVariant() : C.value);
        ClassInfo &info = classInfo(O->metaObject());
        const int index = info.byName.value(Name, -1);
        if (index < 0)
            return false;
        const PropertyInfo &pi = info.properties[size_t(index)];
        if (C.op == opReset) {
            if (pi.property.isResettable())
                return pi.property.reset(O);
            readDefaults(info);
            if (pi.kind == kReference)
                return pi.property.write(O, QVariant::fromValue<QObject *>(nullptr));
            if (!pi.hasDefault)
                return false;
            return pi.property.write(O, pi.kind == kValue ? pi.defaultValue : QVariant(pi.defaultInt));
        }
        switch (C.kind) {
        case kEnumKey:
        case kFlagKeys: {
            if (!pi.property.isEnumType())
                return false;
            const QMetaEnum me = pi.property.enumerator();
            bool ok = false;
            const int value = C.kind == kFlagKeys ? me.keysToValue(C.keys.constData(), &ok) : me.keyToValue(C.keys.constData(), &ok);
            return ok && pi.property.write(O, value);
        }
        case kReference: {
            if (pi.kind != kReference)
                return false;
            QObject *target = FindComponent(m_stage, C.reference);
            if (!target && QString::compare(m_stage->objectName(), C.reference, Qt::CaseInsensitive) == 0)
                target = m_stage;
            return pi.property.write(O, QVariant::fromValue(target));
        }
        default: {
            QVariant value = C.value;
            const QMetaType target = pi.property.metaType();
            if (!value.isValid())
                return false;
            if (target.id() != QMetaType::QVariant && value.metaType() != target) {
                const bool number = value.canConvert<int>() && pi.property.isEnumType();
                if (!number && !value.convert(target))
                    return false;
            }
            return pi.property.write(O, value);
        }
        }
    }

    void order(const std::vector<const Entry *> &Entries)
    {
        std::vector<const Entry *> z;
        std::vector<const Entry *> owned;
        for (const Entry *e : Entries) {
            if (e->has(fZOrder))
                z.push_back(e);
            if (e->has(fOwnerOrder))
                owned.push_back(e);
        }
        std::stable_sort(z.begin(), z.end(), [](const Entry *a, const Entry *b) { return a->zSeq < b->zSeq; });
        std::stable_sort(owned.begin(), owned.end(), [](const Entry *a, const Entry *b) { return a->ownerSeq < b->ownerSeq; });
        for (const Entry *e : z) {
            auto *w = qobject_cast<QWidget *>(live(e->key));
            if (!w || w == m_stage)
                continue;
            auto *below = e->zAbove.isEmpty() ? nullptr : qobject_cast<QWidget *>(live(e->zAbove));
            if (!e->zAbove.isEmpty() && !below)
                continue; // its neighbour is gone: it stays where it is
            placeAbove(w, below);
        }
        for (const Entry *e : owned) {
            QObject *o = live(e->key);
            if (!o || o == m_stage || !Owner(o))
                continue;
            QObject *after = e->ownerAfter.isEmpty() ? nullptr : live(e->ownerAfter);
            if (!e->ownerAfter.isEmpty() && (!after || Owner(after) != Owner(o)))
                continue;
            const int from = ComponentIndex(o);
            if (!after) {
                if (from != 0)
                    SetComponentIndex(o, 0);
                continue;
            }
            const int at = ComponentIndex(after);
            const int to = at < from ? at + 1 : at;
            if (to != from)
                SetComponentIndex(o, to);
        }
    }

    QWidget *m_stage;
    const TQorCustomizationLocks &m_locks;
    QHash<QString, QPointer<QObject>> m_live;
    QSet<QObject *> m_doomed;
};

// ---- Bytes -----------------------------------------------------------------

class Writer
{
public:
    QByteArray out;
    void u8(quint8 V) { out.append(char(V)); }
    void u32(quint32 V)
    {
        char b[4];
        qToBigEndian(V, b);
        out.append(b, 4);
    }
    void u64(quint64 V)
    {
        char b[8];
        qToBigEndian(V, b);
        out.append(b, 8);
    }
    void bytes(const QByteArray &B)
    {
        u32(quint32(B.size()));
        out.append(B);
    }
    void text(const QString &S) { bytes(S.toUtf8()); }
};

class Reader
{
public:
    explicit Reader(const QByteArray &In)
        : m_in(In)
    {
    }
    qsizetype left() const { return m_in.size() - m_at; }
    void need(qsizetype N) const
    {
        if (N < 0 || N > left())
            damaged();
    }
    quint8 u8()
    {
        need(1);
        return quint8(m_in.at(m_at++));
    }
    quint32 u32()
    {
        need(4);
        const quint32 v = qFromBigEndian<quint32>(m_in.constData() + m_at);
        m_at += 4;
        return v;
    }
    quint64 u64()
    {
        need(8);
        const quint64 v = qFromBigEndian<quint64>(m_in.constData() + m_at);
        m_at += 8;
        return v;
    }
    QByteArray bytes()
    {
        const quint32 n = u32();
        need(qsizetype(n));
        const QByteArray b = m_in.mid(m_at, n);
        m_at += n;
        return b;
    }
    QString text() { return QString::fromUtf8(bytes()); }

private:
    const QByteArray &m_in;
    qsizetype m_at = 0;
};

} // namespace

// ---------------------------------------------------------------------------
// TQorCustomization

TQorCustomization::TQorCustomization()
    : d(std::make_unique<TQorCustomizationPrivate>())
{
}

TQorCustomization::TQorCustomization(const TQorCustomization &Other)
    : d(std::make_unique<TQorCustomizationPrivate>(*Other.d))
{
}

TQorCustomization::TQorCustomization(TQorCustomization &&Other) noexcept
    : d(std::move(Other.d))
{
    Other.d = std::make_unique<TQorCustomizationPrivate>();
}

TQorCustomization &TQorCustomization::operator=(const TQorCustomization &Other)
{
    if (this != &Other)
        *d = *Other.d;
    return *this;
}

TQorCustomization &TQorCustomization::operator=(TQorCustomization &&Other) noexcept
{
    std::swap(d, Other.d);
    return *this;
}

TQorCustomization::~TQorCustomization() = default;

bool TQorCustomization::IsEmpty() const
{
    return d->byKey.isEmpty();
}

void TQorCustomization::Clear()
{
    *d = TQorCustomizationPrivate();
}

int TQorCustomization::ComponentCount() const
{
    return int(d->byKey.size());
}

bool TQorCustomization::HasComponent(const QString &Path) const
{
    return d->find(Path) != nullptr;
}

QVariant TQorCustomization::PropertyValue(const QString &Path, const QByteArray &Name) const
{
    const Entry *e = d->find(Path);
    if (!e)
        return QVariant();
    const auto it = e->props.find(Name);
    if (it == e->props.end())
        return QVariant();
    const PropChange &c = it->second;
    if (c.kind == kEnumKey || c.kind == kFlagKeys)
        return QString::fromLatin1(c.keys);
    if (c.kind == kReference)
        return c.reference;
    return c.value;
}

QByteArray TQorCustomization::FormRecords(QWidget *Stage)
{
    if (!Stage)
        throw EQorError(QCoreApplication::translate("TQorCustomization", "There is no design stage"));
    return QorDesignRecords(Stage);
}

TQorCustomization TQorCustomization::Diff(const QByteArray &BaseRecords, QWidget *Stage, const TQorCustomizationLocks &Locks)
{
    if (!Stage)
        throw EQorError(QCoreApplication::translate("TQorCustomization", "There is no design stage"));
    const FlatDesign base(BaseRecords);
    const FlatDesign now(QorDesignRecords(Stage));
    TQorCustomization result;
    TQorCustomizationPrivate &p = *result.d;

    const auto locked = [&](const QString &key) { return !Locks.IsEmpty() && Locks.IsComponentLocked(key); };
    const auto sameClass = [](const StoredObject *a, const StoredObject *b) {
        return a->className.compare(b->className, Qt::CaseInsensitive) == 0;
    };

    {
        Entry form;
        form.className = now.root.className;
        const QMetaObject *mo = GetClass(form.className);
        diffProperties(base.root.properties, now.root.properties, false, form, mo, Locks);
        diffProperties(base.root.dynamicProperties, now.root.dynamicProperties, true, form, mo, Locks);
        if (!form.props.empty() && !locked(QString()))
            p.touch(QString(), form.className).props = std::move(form.props);
    }

    QSet<QString> replaced; // folded keys whose component is not the base's one
    for (const QString &key : now.preOrder) {
        const Flat &c = now.byKey[key];
        const QString spelled = now.spelled.value(key);
        if (locked(spelled))
            continue;
        const auto b = base.byKey.constFind(key);
        if (b == base.byKey.constEnd() || !sameClass(b->node, c.node)) {
            Entry &e = p.touch(spelled, c.node->className);
            e.className = c.node->className;
            e.flags |= fAdded | fParent;
            if (b != base.byKey.constEnd())
                e.flags |= fDeleted;
            e.parent = now.spelled.value(c.parent);
            e.record = addedRecord(*c.node, e);
            replaced.insert(key);
            continue;
        }
        Entry e;
        e.key = spelled;
        const QMetaObject *mo = GetClass(c.node->className);
        diffProperties(b->node->properties, c.node->properties, false, e, mo, Locks);
        diffProperties(b->node->dynamicProperties, c.node->dynamicProperties, true, e, mo, Locks);
        if (b->parent != c.parent) {
            e.flags |= fParent;
            e.parent = now.spelled.value(c.parent);
        }
        if (!e.props.empty() || e.flags) {
            Entry &kept = p.touch(spelled, c.node->className);
            kept.flags |= e.flags;
            kept.parent = e.parent;
            kept.props = std::move(e.props);
        }
    }
    for (const QString &key : base.preOrder) {
        if (now.byKey.contains(key))
            continue;
        const QString spelled = base.spelled.value(key);
        if (locked(spelled))
            continue;
        p.touch(spelled, base.byKey[key].node->className).flags |= fDeleted;
    }

    // Stacking order: the components that kept their order stay, the
    // others are placed above their neighbour below, bottom to top.
    QStringList parents = now.preOrder;
    parents.prepend(QString());
    for (const QString &parentKey : std::as_const(parents)) {
        const auto it = now.widgets.constFind(parentKey);
        if (it == now.widgets.constEnd())
            continue;
        const QStringList &target = it.value();
        QStringList before;
        const bool parentKept = parentKey.isEmpty() || (base.byKey.contains(parentKey) && !replaced.contains(parentKey));
        if (parentKept) {
            for (const QString &k : base.widgets.value(parentKey)) {
                if (now.byKey.contains(k) && !replaced.contains(k) && now.byKey[k].parent == parentKey)
                    before.append(k);
            }
        }
        const QSet<QString> kept = keptInOrder(before, target);
        for (qsizetype i = 0; i < target.size(); ++i) {
            const QString &k = target.at(i);
            if (kept.contains(k) || locked(now.spelled.value(k)))
                continue;
            Entry &e = p.touch(now.spelled.value(k), now.byKey[k].node->className);
            e.flags |= fZOrder;
            e.zAbove = i == 0 ? QString() : now.spelled.value(target.at(i - 1));
            e.zSeq = ++p.seq;
        }
    }
    // Owner order likewise.
    {
        QStringList before;
        for (const QString &k : base.ownerOrder) {
            if (now.byKey.contains(k) && !replaced.contains(k))
                before.append(k);
        }
        const QSet<QString> kept = keptInOrder(before, now.ownerOrder);
        for (qsizetype i = 0; i < now.ownerOrder.size(); ++i) {
            const QString &k = now.ownerOrder.at(i);
            if (kept.contains(k) || !now.byKey.contains(k) || locked(now.spelled.value(k)))
                continue;
            Entry &e = p.touch(now.spelled.value(k), now.byKey[k].node->className);
            e.flags |= fOwnerOrder;
            e.ownerAfter = i == 0 ? QString() : now.spelled.value(now.ownerOrder.at(i - 1));
            e.ownerSeq = ++p.seq;
        }
    }
    return result;
}

QList<TQorCustomizationIssue> TQorCustomization::Apply(QWidget *Stage, const TQorCustomizationLocks &Locks) const
{
    if (!Stage)
        throw EQorError(QCoreApplication::translate("TQorCustomization", "There is no design stage"));
    std::vector<const Entry *> entries;
    entries.reserve(d->entries.size());
    for (const Entry &e : d->entries) {
        if (!e.dead)
            entries.push_back(&e);
    }
    Applier applier(Stage, Locks);
    applier.run(entries);
    return applier.issues;
}

QStringList TQorCustomization::Describe() const
{
    QStringList out;
    for (const Entry &e : d->entries) {
        if (e.dead)
            continue;
        const QString path = shownPath(e.key);
        if (e.has(fDeleted))
            out.append(QCoreApplication::translate("TQorCustomization", "%1 deleted").arg(path));
        if (e.has(fAdded))
            out.append(QCoreApplication::translate("TQorCustomization", "%1 added on %2").arg(e.has(fRenamed) ? joinPath(ownerPart(e.key), e.newName) : path,
                                               e.parent.isEmpty() ? QCoreApplication::translate("TQorCustomization", "the form") : e.parent));
        if (e.has(fRenamed) && !e.has(fAdded))
            out.append(QCoreApplication::translate("TQorCustomization", "%1 renamed to %2").arg(path, e.newName));
        if (e.has(fParent) && !e.has(fAdded))
            out.append(QCoreApplication::translate("TQorCustomization", "%1 moved onto %2").arg(path, e.parent.isEmpty() ? QCoreApplication::translate("TQorCustomization", "the form") : e.parent));
        if (e.has(fZOrder))
            out.append(e.zAbove.isEmpty() ? QCoreApplication::translate("TQorCustomization", "%1 sent to the back").arg(path)
                                          : QCoreApplication::translate("TQorCustomization", "%1 placed above %2").arg(path, e.zAbove));
        if (e.has(fOwnerOrder))
            out.append(e.ownerAfter.isEmpty() ? QCoreApplication::translate("TQorCustomization", "%1 first in the component order").arg(path)
                                              : QCoreApplication::translate("TQorCustomization", "%1 after %2 in the component order").arg(path, e.ownerAfter));
        for (const auto &[name, change] : e.props) {
            const QString property = QString::fromUtf8(name);
            if (change.op == opReset || change.op == opDynamicRemove)
                out.append(QCoreApplication::translate("TQorCustomization", "%1: %2 set back to its default").arg(path, property));
            else
                out.append(QCoreApplication::translate("TQorCustomization", "%1: %2 changed to %3").arg(path, property, valueText(change)));
        }
    }
    return out;
}

QByteArray TQorCustomization::ToBytes() const
{
    Writer w;
    w.out.append(kMagic, 4);
    w.u32(kVersion);
    w.u32(quint32(d->byKey.size()));
    for (const Entry &e : d->entries) {
        if (e.dead)
            continue;
        w.text(e.key);
        w.text(e.className);
        w.u8(e.flags);
        if (e.has(fRenamed))
            w.text(e.newName);
        if (e.has(fParent))
            w.text(e.parent);
        if (e.has(fZOrder)) {
            w.text(e.zAbove);
            w.u64(e.zSeq);
        }
        if (e.has(fOwnerOrder)) {
            w.text(e.ownerAfter);
            w.u64(e.ownerSeq);
        }
        if (e.has(fAdded))
            w.bytes(e.record);
        w.u32(quint32(e.props.size()));
        for (const auto &[name, change] : e.props) {
            w.bytes(name);
            w.u8(change.op);
            if (change.op == opReset || change.op == opDynamicRemove)
                continue;
            w.u8(change.kind);
            if (change.kind == kEnumKey || change.kind == kFlagKeys)
                w.bytes(change.keys);
            else if (change.kind == kReference)
                w.text(change.reference);
            else
                w.bytes(change.raw.isEmpty() ? variantBytes(change.value) : change.raw);
        }
    }
    return w.out;
}

TQorCustomization TQorCustomization::FromBytes(const QByteArray &Bytes)
{
    if (Bytes.size() < 8 || std::memcmp(Bytes.constData(), kMagic, 4) != 0)
        throw EReadError(QCoreApplication::translate("TQorCustomization", "These bytes hold no customization"));
    if (Bytes.size() > QorLimits::kMaxRecordBytes)
        damaged();
    Reader r(Bytes);
    r.need(4);
    r.u32(); // the magic, checked above
    if (r.u32() != kVersion)
        throw EReadError(QCoreApplication::translate("TQorCustomization", "The customization was written by a later version of the library"));
    TQorCustomization result;
    TQorCustomizationPrivate &p = *result.d;
    const quint32 count = r.u32();
    // An entry takes at least 13 bytes: no count can claim more.
    r.need(qsizetype(count) * 13);
    for (quint32 i = 0; i < count; ++i) {
        Entry e;
        e.key = r.text();
        e.className = r.text();
        e.flags = r.u8();
        if (e.flags & ~fAllFlags)
            damaged();
        if (e.has(fRenamed))
            e.newName = r.text();
        if (e.has(fParent))
            e.parent = r.text();
        if (e.has(fZOrder)) {
            e.zAbove = r.text();
            e.zSeq = r.u64();
        }
        if (e.has(fOwnerOrder)) {
            e.ownerAfter = r.text();
            e.ownerSeq = r.u64();
        }
        p.seq = std::max({p.seq, e.zSeq, e.ownerSeq});
        if (e.has(fAdded)) {
            e.record = r.bytes();
            // The record must be one whole component record of the class named.
            const StoredObject added = decodeOne(e.record);
            if (added.className.compare(e.className, Qt::CaseInsensitive) != 0 || !added.children.empty())
                damaged();
        }
        const quint32 props = r.u32();
        r.need(qsizetype(props) * 5);
        for (quint32 j = 0; j < props; ++j) {
            const QByteArray name = r.bytes();
            PropChange c;
            c.op = r.u8();
            if (c.op < opSet || c.op > opDynamicRemove || name.isEmpty())
                damaged();
            if (c.op == opSet || c.op == opDynamicSet) {
                c.kind = r.u8();
                if (c.kind == kEnumKey || c.kind == kFlagKeys) {
                    if (c.op != opSet)
                        damaged();
                    c.keys = r.bytes();
                } else if (c.kind == kReference) {
                    if (c.op != opSet)
                        damaged();
                    c.reference = r.text();
                } else if (c.kind == kValue) {
                    c.raw = r.bytes();
                    const std::optional<QVariant> value = variantFromBytes(c.raw);
                    if (!value || !value->isValid())
                        damaged();
                    c.value = *value;
                } else {
                    damaged();
                }
            }
            if (!e.props.emplace(name, std::move(c)).second)
                damaged();
        }
        const QString folded = fold(e.key);
        if (p.byKey.contains(folded) || (e.key.isEmpty() && e.flags != 0))
            damaged();
        if (e.has(fRenamed))
            p.currentToKey.insert(fold(joinPath(ownerPart(e.key), e.newName)), e.key);
        p.byKey.insert(folded, p.entries.size());
        p.entries.push_back(std::move(e));
    }
    if (r.left() != 0)
        damaged();
    return result;
}

// ---- Incremental changes ------------------------------------------------

void TQorCustomization::SetPropertyValue(const QString &Path, const QString &ClassName, const QByteArray &Name,
                                         const QVariant &Value)
{
    Entry &e = d->touch(d->keyOf(Path), ClassName);
    const QMetaObject *mo = GetClass(e.className);
    int index = -1;
    PropertyInfo *pi = nullptr;
    if (mo && !Name.startsWith("qor.")) {
        ClassInfo &info = classInfo(mo);
        index = info.byName.value(Name, -1);
        if (index >= 0)
            pi = &info.properties[size_t(index)];
    }
    const bool dynamic = !Name.startsWith("qor.") && mo && mo->indexOfProperty(Name.constData()) < 0;
    PropChange c;
    if (!Value.isValid()) {
        c.op = dynamic ? opDynamicRemove : opReset;
    } else if (pi && pi->kind != kValue && pi->kind != kReference && pi->property.isEnumType()) {
        const QMetaEnum me = pi->property.enumerator();
        const int value = int(Value.toInt());
        c.kind = pi->kind;
        c.keys = pi->kind == kFlagKeys ? me.valueToKeys(value) : QByteArray(me.valueToKey(value));
        if (c.keys.isEmpty()) {
            c.kind = kValue;
            c.value = value;
        }
    } else if (pi && pi->kind == kReference) {
        c.kind = kReference;
        const QObject *target = Value.value<QObject *>();
        c.reference = target ? target->objectName() : Value.toString();
    } else {
        c.op = dynamic ? opDynamicSet : opSet;
        c.value = Value;
    }
    e.props[Name] = std::move(c);
}

void TQorCustomization::AddComponent(const QString &Path, const QByteArray &Record, const QString &ParentPath)
{
    // The form itself is neither added, deleted, renamed nor moved.
    if (Path.isEmpty())
        return;
    const StoredObject added = decodeOne(Record);
    StoredObject alone = added;
    alone.children.clear();
    Entry &e = d->touch(Path, added.className);
    const bool wasDeleted = e.has(fDeleted);
    const QString key = e.key;
    e = Entry();
    e.key = key;
    e.className = added.className;
    e.flags = fAdded | fParent | (wasDeleted ? fDeleted : 0);
    e.parent = d->keyOf(ParentPath);
    e.record = addedRecord(alone, e);
    if (QString::compare(lastPart(Path), added.name, Qt::CaseInsensitive) != 0) {
        e.flags |= fRenamed;
        e.newName = lastPart(Path);
    }
}

void TQorCustomization::DeleteComponent(const QString &Path, const QString &ClassName)
{
    if (Path.isEmpty())
        return;
    const QString key = d->keyOf(Path);
    d->currentToKey.remove(fold(Path));
    Entry &e = d->touch(key, ClassName);
    if (e.has(fAdded) && !e.has(fDeleted)) {
        d->kill(e);
        return;
    }
    e.flags = fDeleted;
    e.props.clear();
    e.record.clear();
}

void TQorCustomization::RenameComponent(const QString &Path, const QString &NewName)
{
    if (Path.isEmpty())
        return;
    const QString key = d->keyOf(Path);
    d->currentToKey.remove(fold(Path));
    Entry &e = d->touch(key);
    if (!e.has(fAdded) && QString::compare(lastPart(key), NewName, Qt::CaseInsensitive) == 0
        && lastPart(key) == NewName) {
        e.flags &= quint8(~fRenamed);
        e.newName.clear();
        return;
    }
    e.flags |= fRenamed;
    e.newName = NewName;
    d->currentToKey.insert(fold(joinPath(ownerPart(key), NewName)), key);
}

void TQorCustomization::ReparentComponent(const QString &Path, const QString &NewParentPath)
{
    Entry *e = d->structural(Path);
    if (!e)
        return;
    e->flags |= fParent;
    e->parent = d->keyOf(NewParentPath);
}

void TQorCustomization::SetZOrder(const QString &Path, const QString &AboveSiblingPath)
{
    Entry *e = d->structural(Path);
    if (!e)
        return;
    e->flags |= fZOrder;
    e->zAbove = d->keyOf(AboveSiblingPath);
    e->zSeq = ++d->seq;
}

void TQorCustomization::SetOwnerOrder(const QString &Path, const QString &AfterPath)
{
    Entry *e = d->structural(Path);
    if (!e)
        return;
    e->flags |= fOwnerOrder;
    e->ownerAfter = d->keyOf(AfterPath);
    e->ownerSeq = ++d->seq;
}
