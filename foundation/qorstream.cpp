// SPDX-License-Identifier: MIT
// The component stream.
//
// A record holds one root component and the components it owns:
//
//   record   := "QOR1" bodyLength:quint32 body          (bodyLength = bytes of body)
//   body     := object                                   (nothing may follow it)
//   object   := 'O' className:text name:text
//               propertyCount:quint32 property*
//               dynamicCount:quint32 dynamic*
//               childCount:quint32 object*
//               'E'                                      (end of the object)
//   property := name:text kind:quint8 payload
//               kind 'V': a QVariant as QDataStream writes it
//               kind 'K': an enumeration value as its key        (text)
//               kind 'S': a flag value as its keys joined by '|' (text)
//               kind 'R': a component reference as the component's name (text)
//   dynamic  := name:text QVariant
//   text     := length:quint32 UTF-8 bytes
//
// All numbers are big-endian; QVariant values use QDataStream::Qt_6_0. The
// body length lets a reader find a truncated record before it decodes
// anything, and a body that ends before or after its root object is
// damaged. Enumerations travel as key texts so that a stream survives a
// change of the numbers behind the keys.
//
// Properties whose names start with "qor." are the stream's own: what a
// container keeps about a page rather than the page itself (the tab text of
// a tab widget's page, the item text of a tool box page, the widget of a
// scroll area) and a widget that was hidden on purpose ("qor.hidden").
//
// Records are concatenated with nothing between them; a reader stops at the
// end of one record.
#include "foundation/qorstream.h"

#include "foundation/qorclasses.h"
#include "foundation/qorclasses_p.h"
#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "foundation/qorlogging_p.h"
#include "foundation/qortypinfo.h"
#include "foundation/qorvaluecheck_p.h"

#include <QBuffer>
#include <QColor>
#include <QCoreApplication>
#include <QCursor>
#include <QDataStream>
#include <QDate>
#include <QDateTime>
#include <QFont>
#include <QHash>
#include <QIcon>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QKeySequence>
#include <QLocale>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QPixmap>
#include <QPointer>
#include <QRect>
#include <QScrollArea>
#include <QSet>
#include <QSizePolicy>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTime>
#include <QToolBox>
#include <QUrl>
#include <QWidget>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>
#include <vector>

namespace {

constexpr char kSignature[4] = {'Q', 'O', 'R', '1'};
constexpr qint64 kHeaderSize = 8;
constexpr QDataStream::Version kVersion = QDataStream::Qt_6_0;
constexpr quint8 kObjectTag = 'O';
constexpr quint8 kEndTag = 'E';
constexpr quint8 kValue = 'V';
constexpr quint8 kEnumKey = 'K';
constexpr quint8 kFlagKeys = 'S';
constexpr quint8 kReference = 'R';
// Deeper nesting than any form has; it keeps a damaged stream from
// exhausting the stack.
constexpr int kMaxDepth = QorLimits::kMaxComponentDepth;

// The stream's own pseudo properties.
const QByteArray kTabText = QByteArrayLiteral("qor.tabText");
const QByteArray kTabIcon = QByteArrayLiteral("qor.tabIcon");
const QByteArray kTabToolTip = QByteArrayLiteral("qor.tabToolTip");
const QByteArray kTabEnabled = QByteArrayLiteral("qor.tabEnabled");
const QByteArray kItemText = QByteArrayLiteral("qor.itemText");
const QByteArray kItemIcon = QByteArrayLiteral("qor.itemIcon");
const QByteArray kItemToolTip = QByteArrayLiteral("qor.itemToolTip");
const QByteArray kItemEnabled = QByteArrayLiteral("qor.itemEnabled");
const QByteArray kScrollAreaWidget = QByteArrayLiteral("qor.scrollAreaWidget");
const QByteArray kHidden = QByteArrayLiteral("qor.hidden");

QString tr(const char *text)
{
    return QCoreApplication::translate("QorDesign", text);
}

[[noreturn]] void notAStream()
{
    throw EReadError(tr("Not a component stream"));
}

[[noreturn]] void truncated()
{
    throw EReadError(tr("The component stream ends inside a component"));
}

[[noreturn]] void damaged()
{
    throw EReadError(tr("The component stream is damaged"));
}

// ---------------------------------------------------------------------------
// The plain tree a record decodes into, and encodes from.

struct StoredProperty
{
    QByteArray name;
    quint8 kind = kValue;
    QVariant value;    // kValue
    QByteArray keys;   // kEnumKey, kFlagKeys
    QString reference; // kReference
    QByteArray raw;    // kValue: the value's bytes as read, kept for the text form
};

struct StoredObject
{
    QString className;
    QString name;
    QList<StoredProperty> properties;
    QList<StoredProperty> dynamicProperties;
    std::vector<StoredObject> children;
};

QDataStream &setUp(QDataStream &s)
{
    s.setVersion(kVersion);
    s.setByteOrder(QDataStream::BigEndian);
    return s;
}

QByteArray variantBytes(const QVariant &value)
{
    QByteArray bytes;
    QDataStream s(&bytes, QIODevice::WriteOnly);
    setUp(s) << value;
    return bytes;
}

// A QVariant from exactly these bytes; nothing when they hold anything else
// or a value Qt's reader must not be handed.
std::optional<QVariant> variantFromBytes(const QByteArray &bytes)
{
    if (QorValueCheck::streamedVariantSize(bytes.constData(), bytes.size()) != bytes.size())
        return std::nullopt;
    QDataStream s(bytes);
    QVariant value;
    setUp(s) >> value;
    if (s.status() != QDataStream::Ok || !s.atEnd())
        return std::nullopt;
    return value;
}

void writeText(QDataStream &s, const QByteArray &utf8)
{
    s << quint32(utf8.size());
    s.writeRawData(utf8.constData(), int(utf8.size()));
}

void writeText(QDataStream &s, const QString &text)
{
    writeText(s, text.toUtf8());
}

void encodeProperty(QDataStream &s, const StoredProperty &p)
{
    writeText(s, p.name);
    s << p.kind;
    switch (p.kind) {
    case kEnumKey:
    case kFlagKeys:
        writeText(s, p.keys);
        break;
    case kReference:
        writeText(s, p.reference);
        break;
    default:
        if (!p.raw.isEmpty())
            s.writeRawData(p.raw.constData(), int(p.raw.size()));
        else
            s << p.value;
        break;
    }
}

void encodeObject(QDataStream &s, const StoredObject &o)
{
    s << kObjectTag;
    writeText(s, o.className);
    writeText(s, o.name);
    s << quint32(o.properties.size());
    for (const StoredProperty &p : o.properties)
        encodeProperty(s, p);
    s << quint32(o.dynamicProperties.size());
    for (const StoredProperty &p : o.dynamicProperties) {
        writeText(s, p.name);
        if (!p.raw.isEmpty())
            s.writeRawData(p.raw.constData(), int(p.raw.size()));
        else
            s << p.value;
    }
    s << quint32(o.children.size());
    for (const StoredObject &child : o.children)
        encodeObject(s, child);
    s << kEndTag;
}

QByteArray encodeRecord(const StoredObject &root)
{
    QByteArray record;
    record.reserve(4096);
    {
        QDataStream s(&record, QIODevice::WriteOnly);
        setUp(s);
        s.writeRawData(kSignature, 4);
        s << quint32(0); // the body length, filled in below
        encodeObject(s, root);
    }
    qToBigEndian<quint32>(quint32(record.size() - kHeaderSize), record.data() + 4);
    return record;
}

class Decoder
{
public:
    Decoder(const QByteArray &body, bool keepRaw)
        : m_body(body)
        , m_stream(body)
        , m_keepRaw(keepRaw)
    {
        setUp(m_stream);
    }

    StoredObject decodeRoot()
    {
        StoredObject root;
        decodeObject(root, 0);
        if (!m_stream.atEnd())
            damaged();
        return root;
    }

private:
    qint64 pos() const { return m_stream.device()->pos(); }
    qint64 remaining() const { return m_body.size() - pos(); }

    void check() const
    {
        if (m_stream.status() != QDataStream::Ok)
            damaged();
    }

    quint8 readByte()
    {
        quint8 b = 0;
        m_stream >> b;
        check();
        return b;
    }

    quint32 readCount()
    {
        quint32 n = 0;
        m_stream >> n;
        check();
        return n;
    }

    QByteArray readBytes()
    {
        const quint32 n = readCount();
        if (qint64(n) > remaining())
            damaged();
        QByteArray bytes(qsizetype(n), Qt::Uninitialized);
        if (m_stream.readRawData(bytes.data(), int(n)) != int(n))
            damaged();
        return bytes;
    }

    QString readString() { return QString::fromUtf8(readBytes()); }

    // The value's bytes are walked first: Qt's reader trusts the counts it
    // finds, and must read exactly what the walk accepted.
    void readVariant(StoredProperty &p)
    {
        const qint64 start = pos();
        const qsizetype size = QorValueCheck::streamedVariantSize(m_body.constData() + start, m_body.size() - start);
        if (size < 0)
            damaged();
        m_stream >> p.value;
        check();
        if (pos() - start != size)
            damaged();
        if (m_keepRaw)
            p.raw = m_body.mid(start, pos() - start);
    }

    void decodeObject(StoredObject &o, int depth)
    {
        if (depth > kMaxDepth || readByte() != kObjectTag)
            damaged();
        o.className = readString();
        o.name = readString();
        if (o.className.isEmpty())
            damaged();
        for (quint32 i = 0, n = readCount(); i < n; ++i) {
            StoredProperty p;
            p.name = readBytes();
            p.kind = readByte();
            switch (p.kind) {
            case kValue:
                readVariant(p);
                break;
            case kEnumKey:
            case kFlagKeys:
                p.keys = readBytes();
                break;
            case kReference:
                p.reference = readString();
                break;
            default:
                damaged();
            }
            if (p.name.isEmpty())
                damaged();
            o.properties.append(std::move(p));
        }
        for (quint32 i = 0, n = readCount(); i < n; ++i) {
            StoredProperty p;
            p.name = readBytes();
            readVariant(p);
            if (p.name.isEmpty())
                damaged();
            o.dynamicProperties.append(std::move(p));
        }
        for (quint32 i = 0, n = readCount(); i < n; ++i) {
            o.children.emplace_back();
            decodeObject(o.children.back(), depth + 1);
        }
        if (readByte() != kEndTag)
            damaged();
    }

    const QByteArray &m_body;
    QDataStream m_stream;
    bool m_keepRaw;
};

// Reads the header and the body of one record and leaves the device right
// after it.
QByteArray readRecordBody(QIODevice &device)
{
    char header[kHeaderSize];
    const qint64 got = device.read(header, kHeaderSize);
    if (got < 0)
        truncated();
    if (std::memcmp(header, kSignature, size_t(std::min<qint64>(got, 4))) != 0)
        notAStream();
    if (got < kHeaderSize)
        truncated();
    const quint32 length = qFromBigEndian<quint32>(header + 4);
    if (qint64(length) > QorLimits::kMaxRecordBytes)
        damaged();
    if (!device.isSequential() && device.size() - device.pos() < qint64(length))
        truncated();
    QByteArray body;
    if (!device.isSequential()) {
        body.resize(qsizetype(length));
        if (device.read(body.data(), length) != qint64(length))
            truncated();
        return body;
    }
    // A sequential device does not tell its size: read in chunks, so that a
    // damaged length does not allocate what the data never fills.
    while (body.size() < qsizetype(length)) {
        const QByteArray chunk = device.read(std::min<qint64>(length - body.size(), 1 << 16));
        if (chunk.isEmpty())
            truncated();
        body.append(chunk);
    }
    return body;
}

// ---------------------------------------------------------------------------
// What the stream needs to know about a class, found once per class.

// Properties that a widget inherits from its parent unless it sets them
// itself; only a widget's own setting is written.
enum class Gate { None, Font, Palette, Cursor, LayoutDirection, Locale, Enabled, WindowIcon };

struct PropertyInfo
{
    QMetaProperty property;
    QByteArray name;
    quint8 kind = kValue;
    Gate gate = Gate::None;
    bool stored = false;   // written when it differs from the default
    bool deferred = false; // set after the children (a page index needs the pages)
    bool hasDefault = false;
    QVariant defaultValue;
    int defaultInt = 0;
};

struct ClassInfo
{
    const QMetaObject *metaObject = nullptr;
    std::vector<PropertyInfo> properties; // every writable property, in index order
    QHash<QByteArray, int> byName;
    bool defaultsRead = false;
};

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

bool isReferenceType(QMetaType type)
{
    return type.flags().testFlag(QMetaType::PointerToQObject);
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

QHash<const QMetaObject *, ClassInfo *> &classInfos()
{
    // Never destroyed: default values (fonts, palettes) must not outlive the
    // application object in a static destructor.
    static auto *infos = new QHash<const QMetaObject *, ClassInfo *>;
    return *infos;
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
    QObject *fresh = NewRegisteredInstance(info.metaObject);
    if (!fresh)
        return;
    for (PropertyInfo &pi : info.properties) {
        if (!pi.stored)
            continue;
        const QVariant v = pi.property.read(fresh);
        if (!v.isValid())
            continue;
        pi.hasDefault = true;
        if (pi.kind == kEnumKey || pi.kind == kFlagKeys)
            pi.defaultInt = int(OrdinalOf(v));
        else
            pi.defaultValue = v;
    }
    delete fresh;
}

// ---------------------------------------------------------------------------
// Writing live components into the plain tree.

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
            const int value = int(OrdinalOf(v));
            if (pi.hasDefault && value == pi.defaultInt)
                continue;
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
            if (pi.hasDefault && equalValues(v, pi.defaultValue))
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

// ---------------------------------------------------------------------------
// Reading: the decoded tree is checked against the classes first, then the
// objects are made.

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
    throw EReadError(tr("Class %1 has no property %2").arg(className, QString::fromUtf8(name)));
}

[[noreturn]] void badValue(const QString &className, const QByteArray &name)
{
    throw EReadError(tr("Invalid value of property %2 of class %1")
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
        throw EReadError(tr("A widget of class %1 is nested in the non-visual %2")
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
                throw EReadError(tr("Property %2 of class %1 cannot be written")
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
                throw EComponentError(tr("A component named %1 already exists").arg(child.stored->name));
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
            throw EReadError(tr("Class %1 made no component")
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
            throw EReadError(tr("Property %2 of class %1 cannot take the value read")
                                 .arg(QString::fromLatin1(o->metaObject()->className()),
                                      QString::fromUtf8(pp.info->name)));
        }
    }

    void fill(QObject *o, const Plan &plan)
    {
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

QObject *readRecord(const QByteArray &body, QObject *instance, QWidget *parent, QObject *owner)
{
    const StoredObject stored = Decoder(body, false).decodeRoot();
    Plan plan;
    planObject(stored, plan, nullptr, 0);
    if (instance && instance->metaObject() != plan.metaObject) {
        throw EReadError(tr("A component of class %1 cannot be read into a %2")
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
            throw EComponentError(tr("A component named %1 already exists").arg(stored.name));
    }

    Builder builder(instance);
    QObject *root = builder.build(plan, parent);
    if (owner)
        InsertComponent(owner, root);
    builder.commit();
    return root;
}

// ---------------------------------------------------------------------------
// The text form.

QString typeName(const QVariant &v)
{
    return QString::fromLatin1(v.metaType().name());
}

QJsonValue jsonOfString(const QString &s)
{
    return s.isNull() ? QJsonValue(QJsonValue::Null) : QJsonValue(s);
}

QJsonArray intArray(std::initializer_list<int> values)
{
    QJsonArray a;
    for (int v : values)
        a.append(v);
    return a;
}

// A readable form of the common value types; the text form keeps it only
// when it turns back into exactly the same bytes.
std::optional<QJsonValue> readableOf(const QVariant &v)
{
    switch (v.metaType().id()) {
    case QMetaType::Bool:
        return QJsonValue(v.toBool());
    case QMetaType::Int:
    case QMetaType::UInt:
        return QJsonValue(v.toLongLong());
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return QJsonValue(v.toString());
    case QMetaType::Double:
    case QMetaType::Float:
        if (!std::isfinite(v.toDouble()))
            return std::nullopt;
        return QJsonValue(v.toDouble());
    case QMetaType::QString:
        return jsonOfString(v.toString());
    case QMetaType::QStringList:
        return QJsonArray::fromStringList(v.toStringList());
    case QMetaType::QRect: {
        const QRect r = v.toRect();
        if (!QorLimits::rectFits(r))
            return std::nullopt;
        return intArray({r.x(), r.y(), r.width(), r.height()});
    }
    case QMetaType::QSize:
        return intArray({v.toSize().width(), v.toSize().height()});
    case QMetaType::QPoint:
        return intArray({v.toPoint().x(), v.toPoint().y()});
    case QMetaType::QColor: {
        const QColor c = v.value<QColor>();
        return QJsonValue(c.isValid() ? c.name(QColor::HexArgb) : QString());
    }
    case QMetaType::QFont:
        return QJsonValue(v.value<QFont>().toString());
    case QMetaType::QKeySequence:
        return QJsonValue(v.value<QKeySequence>().toString(QKeySequence::PortableText));
    case QMetaType::QDate:
        return QJsonValue(v.toDate().toString(Qt::ISODate));
    case QMetaType::QTime:
        return QJsonValue(v.toTime().toString(Qt::ISODateWithMs));
    case QMetaType::QDateTime:
        return QJsonValue(v.toDateTime().toString(Qt::ISODateWithMs));
    case QMetaType::QUrl:
        return QJsonValue(v.toUrl().toString());
    case QMetaType::QLocale:
        return QJsonValue(v.toLocale().name());
    case QMetaType::QCursor: {
        const QCursor c = v.value<QCursor>();
        if (c.shape() == Qt::BitmapCursor)
            return std::nullopt;
        return QJsonValue(QString::fromLatin1(QMetaEnum::fromType<Qt::CursorShape>().valueToKey(c.shape())));
    }
    case QMetaType::QSizePolicy: {
        const QSizePolicy p = v.value<QSizePolicy>();
        const QMetaEnum me = QMetaEnum::fromType<QSizePolicy::Policy>();
        QJsonObject o;
        o.insert(QStringLiteral("horizontalPolicy"), QString::fromLatin1(me.valueToKey(p.horizontalPolicy())));
        o.insert(QStringLiteral("verticalPolicy"), QString::fromLatin1(me.valueToKey(p.verticalPolicy())));
        o.insert(QStringLiteral("horizontalStretch"), p.horizontalStretch());
        o.insert(QStringLiteral("verticalStretch"), p.verticalStretch());
        return QJsonValue(o);
    }
    default:
        return std::nullopt;
    }
}

std::optional<int> intOf(const QJsonValue &j)
{
    if (!j.isDouble())
        return std::nullopt;
    const double d = j.toDouble();
    if (d != std::floor(d) || d < double(std::numeric_limits<int>::min())
        || d > double(std::numeric_limits<int>::max()))
        return std::nullopt;
    return int(d);
}

std::optional<QList<int>> intsOf(const QJsonValue &j, qsizetype count)
{
    const QJsonArray a = j.toArray();
    if (!j.isArray() || a.size() != count)
        return std::nullopt;
    QList<int> ints;
    for (const QJsonValue &e : a) {
        const auto i = intOf(e);
        if (!i)
            return std::nullopt;
        ints.append(*i);
    }
    return ints;
}

std::optional<QVariant> valueOfReadable(const QString &type, const QJsonValue &j)
{
    const QMetaType mt = QMetaType::fromName(type.toLatin1());
    const QString s = j.toString();
    switch (mt.id()) {
    case QMetaType::Bool:
        return j.isBool() ? std::optional<QVariant>(j.toBool()) : std::nullopt;
    case QMetaType::Int:
        if (const auto i = intOf(j))
            return QVariant(*i);
        return std::nullopt;
    case QMetaType::UInt: {
        const double d = j.toDouble(-1);
        if (!j.isDouble() || d < 0 || d > double(std::numeric_limits<uint>::max()) || d != std::floor(d))
            return std::nullopt;
        return QVariant(uint(d));
    }
    case QMetaType::LongLong: {
        bool ok = false;
        const qlonglong v = s.toLongLong(&ok);
        return ok ? std::optional<QVariant>(v) : std::nullopt;
    }
    case QMetaType::ULongLong: {
        bool ok = false;
        const qulonglong v = s.toULongLong(&ok);
        return ok ? std::optional<QVariant>(v) : std::nullopt;
    }
    case QMetaType::Double:
        return j.isDouble() ? std::optional<QVariant>(j.toDouble()) : std::nullopt;
    case QMetaType::Float:
        return j.isDouble() ? std::optional<QVariant>(float(j.toDouble())) : std::nullopt;
    case QMetaType::QString:
        if (j.isNull())
            return QVariant(QString());
        return j.isString() ? std::optional<QVariant>(s) : std::nullopt;
    case QMetaType::QStringList: {
        if (!j.isArray())
            return std::nullopt;
        QStringList list;
        for (const QJsonValue &e : j.toArray()) {
            if (!e.isString())
                return std::nullopt;
            list.append(e.toString());
        }
        return QVariant(list);
    }
    case QMetaType::QRect:
        if (const auto r = intsOf(j, 4); r && QorLimits::rectFits(r->at(0), r->at(1), r->at(2), r->at(3)))
            return QVariant(QRect(r->at(0), r->at(1), r->at(2), r->at(3)));
        return std::nullopt;
    case QMetaType::QSize:
        if (const auto r = intsOf(j, 2))
            return QVariant(QSize(r->at(0), r->at(1)));
        return std::nullopt;
    case QMetaType::QPoint:
        if (const auto r = intsOf(j, 2))
            return QVariant(QPoint(r->at(0), r->at(1)));
        return std::nullopt;
    default:
        break;
    }
    if (!j.isString() && mt.id() != QMetaType::QSizePolicy)
        return std::nullopt;
    switch (mt.id()) {
    case QMetaType::QColor: {
        if (s.isEmpty())
            return QVariant::fromValue(QColor());
        const QColor c(s);
        return c.isValid() ? std::optional<QVariant>(QVariant::fromValue(c)) : std::nullopt;
    }
    case QMetaType::QFont: {
        QFont f;
        return f.fromString(s) ? std::optional<QVariant>(QVariant::fromValue(f)) : std::nullopt;
    }
    case QMetaType::QKeySequence:
        return QVariant::fromValue(QKeySequence::fromString(s, QKeySequence::PortableText));
    case QMetaType::QDate:
        return QVariant(QDate::fromString(s, Qt::ISODate));
    case QMetaType::QTime:
        return QVariant(QTime::fromString(s, Qt::ISODateWithMs));
    case QMetaType::QDateTime:
        return QVariant(QDateTime::fromString(s, Qt::ISODateWithMs));
    case QMetaType::QUrl:
        return QVariant(QUrl(s));
    case QMetaType::QLocale:
        return QVariant(QLocale(s));
    case QMetaType::QCursor: {
        bool ok = false;
        const int shape = QMetaEnum::fromType<Qt::CursorShape>().keyToValue(s.toLatin1().constData(), &ok);
        return ok ? std::optional<QVariant>(QVariant::fromValue(QCursor(Qt::CursorShape(shape)))) : std::nullopt;
    }
    case QMetaType::QSizePolicy: {
        const QJsonObject o = j.toObject();
        const QMetaEnum me = QMetaEnum::fromType<QSizePolicy::Policy>();
        bool okH = false, okV = false;
        const int h = me.keyToValue(o.value(QStringLiteral("horizontalPolicy")).toString().toLatin1().constData(), &okH);
        const int v = me.keyToValue(o.value(QStringLiteral("verticalPolicy")).toString().toLatin1().constData(), &okV);
        const auto hs = intOf(o.value(QStringLiteral("horizontalStretch")));
        const auto vs = intOf(o.value(QStringLiteral("verticalStretch")));
        if (!j.isObject() || !okH || !okV || !hs || !vs)
            return std::nullopt;
        QSizePolicy p{QSizePolicy::Policy(h), QSizePolicy::Policy(v)};
        p.setHorizontalStretch(*hs);
        p.setVerticalStretch(*vs);
        return QVariant::fromValue(p);
    }
    default:
        return std::nullopt;
    }
}

QByteArray jsonText(const QJsonValue &v)
{
    const QByteArray wrapped = QJsonDocument(QJsonArray{v}).toJson(QJsonDocument::Compact);
    return wrapped.mid(1, wrapped.size() - 2);
}

QByteArray jsonText(const QString &s)
{
    return jsonText(QJsonValue(s));
}

QByteArray valueText(const StoredProperty &p)
{
    QByteArray line = "{\"name\": " + jsonText(QString::fromUtf8(p.name));
    switch (p.kind) {
    case kEnumKey:
        return line + ", \"enum\": " + jsonText(QString::fromUtf8(p.keys)) + '}';
    case kFlagKeys:
        return line + ", \"flags\": " + jsonText(QString::fromUtf8(p.keys)) + '}';
    case kReference:
        return line + ", \"reference\": " + jsonText(p.reference) + '}';
    default:
        break;
    }
    line += ", \"type\": " + jsonText(typeName(p.value));
    if (const auto readable = readableOf(p.value)) {
        const auto back = valueOfReadable(typeName(p.value), *readable);
        if (back && variantBytes(*back) == p.raw)
            return line + ", \"value\": " + jsonText(*readable) + '}';
    }
    return line + ", \"data\": " + jsonText(QString::fromLatin1(p.raw.toBase64())) + '}';
}

void appendList(QByteArray &out, const QByteArray &indent, const char *key, const QList<QByteArray> &items)
{
    out += indent + "    \"" + key + "\": [";
    if (items.isEmpty()) {
        out += "],\n";
        return;
    }
    out += '\n';
    for (qsizetype i = 0; i < items.size(); ++i)
        out += indent + "        " + items.at(i) + (i + 1 < items.size() ? ",\n" : "\n");
    out += indent + "    ],\n";
}

void appendObjectText(QByteArray &out, const StoredObject &o, const QByteArray &indent)
{
    out += indent + "{\n";
    out += indent + "    \"class\": " + jsonText(o.className) + ",\n";
    out += indent + "    \"name\": " + jsonText(o.name) + ",\n";
    QList<QByteArray> lines;
    for (const StoredProperty &p : o.properties)
        lines.append(valueText(p));
    appendList(out, indent, "properties", lines);
    lines.clear();
    for (const StoredProperty &p : o.dynamicProperties)
        lines.append(valueText(p));
    appendList(out, indent, "dynamicProperties", lines);
    out += indent + "    \"children\": [";
    if (o.children.empty()) {
        out += "]\n";
    } else {
        out += '\n';
        for (size_t i = 0; i < o.children.size(); ++i) {
            appendObjectText(out, o.children[i], indent + "        ");
            out += i + 1 < o.children.size() ? ",\n" : "\n";
        }
        out += indent + "    ]\n";
    }
    out += indent + '}';
}

[[noreturn]] void badText(const QString &why)
{
    throw EReadError(tr("The component text is damaged: %1").arg(why));
}

QString requiredString(const QJsonObject &o, const char *key)
{
    const QJsonValue v = o.value(QLatin1String(key));
    if (!v.isString())
        badText(tr("\"%1\" is missing or not a text").arg(QLatin1String(key)));
    return v.toString();
}

StoredProperty propertyOfText(const QJsonValue &j, bool dynamic)
{
    if (!j.isObject())
        badText(tr("a property is not an object"));
    const QJsonObject o = j.toObject();
    StoredProperty p;
    p.name = requiredString(o, "name").toUtf8();
    if (p.name.isEmpty())
        badText(tr("a property has no name"));
    if (!dynamic && o.contains(QLatin1String("enum"))) {
        p.kind = kEnumKey;
        p.keys = requiredString(o, "enum").toUtf8();
    } else if (!dynamic && o.contains(QLatin1String("flags"))) {
        p.kind = kFlagKeys;
        p.keys = requiredString(o, "flags").toUtf8();
    } else if (!dynamic && o.contains(QLatin1String("reference"))) {
        p.kind = kReference;
        p.reference = requiredString(o, "reference");
    } else if (o.contains(QLatin1String("data"))) {
        const auto decoded = QByteArray::fromBase64Encoding(requiredString(o, "data").toLatin1(),
                                                            QByteArray::AbortOnBase64DecodingErrors);
        if (!decoded)
            badText(tr("the data of property %1 is not base64").arg(QString::fromUtf8(p.name)));
        const auto value = variantFromBytes(*decoded);
        if (!value || (o.contains(QLatin1String("type")) && requiredString(o, "type") != typeName(*value)))
            badText(tr("the data of property %1 is not a value").arg(QString::fromUtf8(p.name)));
        p.value = *value;
        p.raw = *decoded;
    } else {
        const auto value = valueOfReadable(requiredString(o, "type"), o.value(QLatin1String("value")));
        if (!value)
            badText(tr("the value of property %1 does not fit its type").arg(QString::fromUtf8(p.name)));
        p.value = *value;
    }
    return p;
}

QJsonArray requiredArray(const QJsonObject &o, const char *key)
{
    const QJsonValue v = o.value(QLatin1String(key));
    if (v.isUndefined())
        return {};
    if (!v.isArray())
        badText(tr("\"%1\" is not a list").arg(QLatin1String(key)));
    return v.toArray();
}

StoredObject objectOfText(const QJsonValue &j, int depth)
{
    if (!j.isObject() || depth > kMaxDepth)
        badText(tr("a component is not an object"));
    const QJsonObject o = j.toObject();
    StoredObject s;
    s.className = requiredString(o, "class");
    if (s.className.isEmpty())
        badText(tr("a component has no class"));
    s.name = requiredString(o, "name");
    for (const QJsonValue &p : requiredArray(o, "properties"))
        s.properties.append(propertyOfText(p, false));
    for (const QJsonValue &p : requiredArray(o, "dynamicProperties"))
        s.dynamicProperties.append(propertyOfText(p, true));
    for (const QJsonValue &c : requiredArray(o, "children"))
        s.children.push_back(objectOfText(c, depth + 1));
    return s;
}

} // namespace

void WriteComponent(QIODevice &Stream, QObject *Component)
{
    if (!Component)
        throw EQorError(tr("No component to write"));
    const QByteArray record = encodeRecord(storeComponent(Component));
    if (Stream.write(record) != record.size())
        throw EQorError(tr("The component stream cannot be written"));
}

QObject *ReadComponent(QIODevice &Stream, QObject *Instance, QWidget *Parent, QObject *Owner)
{
    return readRecord(readRecordBody(Stream), Instance, Parent, Owner);
}

QList<QObject *> ReadComponents(QIODevice &Stream, QWidget *Parent, QObject *Owner)
{
    QList<QPointer<QObject>> roots;
    try {
        while (!Stream.atEnd())
            roots.append(ReadComponent(Stream, nullptr, Parent, Owner));
    } catch (...) {
        for (qsizetype i = roots.size() - 1; i >= 0; --i)
            delete roots.at(i).data();
        throw;
    }
    QList<QObject *> result;
    for (const QPointer<QObject> &r : std::as_const(roots))
        result.append(r.data());
    return result;
}

QByteArray ComponentToBytes(QObject *Component)
{
    if (!Component)
        throw EQorError(tr("No component to write"));
    return encodeRecord(storeComponent(Component));
}

QObject *ComponentFromBytes(const QByteArray &Bytes, QObject *Instance, QWidget *Parent, QObject *Owner)
{
    if (Bytes.size() >= kHeaderSize && std::memcmp(Bytes.constData(), kSignature, 4) == 0) {
        const quint32 length = qFromBigEndian<quint32>(Bytes.constData() + 4);
        if (Bytes.size() > kHeaderSize + qint64(length))
            throw EReadError(tr("Junk after the component"));
    }
    QBuffer buffer;
    buffer.setData(Bytes);
    buffer.open(QIODevice::ReadOnly);
    return ReadComponent(buffer, Instance, Parent, Owner);
}

QString ComponentBinaryToText(const QByteArray &Records)
{
    if (Records.size() > QorLimits::kMaxRecordBytes)
        damaged();
    QBuffer buffer;
    buffer.setData(Records);
    buffer.open(QIODevice::ReadOnly);
    QByteArray out = "[";
    bool first = true;
    while (!buffer.atEnd()) {
        const QByteArray body = readRecordBody(buffer);
        const StoredObject root = Decoder(body, true).decodeRoot();
        out += first ? "\n" : ",\n";
        first = false;
        appendObjectText(out, root, "    ");
    }
    out += first ? "]\n" : "\n]\n";
    return QString::fromUtf8(out);
}

QByteArray ComponentTextToBinary(const QString &Text)
{
    if (Text.size() > QorLimits::kMaxTextBytes / 2)
        badText(tr("it is longer than a component text may be"));
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(Text.toUtf8(), &error);
    if (error.error != QJsonParseError::NoError)
        badText(error.errorString());
    QJsonArray records;
    if (doc.isObject())
        records.append(doc.object());
    else
        records = doc.array();
    QByteArray bytes;
    for (const QJsonValue &record : std::as_const(records))
        bytes += encodeRecord(objectOfText(record, 0));
    return bytes;
}
