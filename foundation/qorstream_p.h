// SPDX-License-Identifier: MIT
// What the sources of the component stream share: the record format's
// constants, the plain tree a record decodes into and encodes from, what the
// stream knows about a class, and how its writer, reader and text form are
// reached. The record format itself is described in qorstream.cpp.
//
// Internal to the library: not installed, and nothing here is exported.
#pragma once

#include "foundation/qorvaluecheck_p.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QMetaProperty>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QtGlobal>

#include <optional>
#include <vector>

class QIODevice;
class QJsonValue;
class QObject;
class QWidget;

namespace QorStreamPrivate {

// ---------------------------------------------------------------------------
// The record format.

inline constexpr char kSignature[4] = {'Q', 'O', 'R', '1'};
inline constexpr qint64 kHeaderSize = 8;
// How a property's value is stored.
inline constexpr quint8 kValue = 'V';
inline constexpr quint8 kEnumKey = 'K';
inline constexpr quint8 kFlagKeys = 'S';
inline constexpr quint8 kReference = 'R';
// Deeper nesting than any form has; it keeps a damaged stream from
// exhausting the stack.
inline constexpr int kMaxDepth = QorLimits::kMaxComponentDepth;

// The stream's own pseudo properties.
inline const QByteArray kTabText = QByteArrayLiteral("qor.tabText");
inline const QByteArray kTabIcon = QByteArrayLiteral("qor.tabIcon");
inline const QByteArray kTabToolTip = QByteArrayLiteral("qor.tabToolTip");
inline const QByteArray kTabEnabled = QByteArrayLiteral("qor.tabEnabled");
inline const QByteArray kItemText = QByteArrayLiteral("qor.itemText");
inline const QByteArray kItemIcon = QByteArrayLiteral("qor.itemIcon");
inline const QByteArray kItemToolTip = QByteArrayLiteral("qor.itemToolTip");
inline const QByteArray kItemEnabled = QByteArrayLiteral("qor.itemEnabled");
inline const QByteArray kScrollAreaWidget = QByteArrayLiteral("qor.scrollAreaWidget");
inline const QByteArray kHidden = QByteArrayLiteral("qor.hidden");
// The texts of a combo box's items, which no property of it holds.
inline const QByteArray kComboItems = QByteArrayLiteral("qor.comboItems");

// Throws the EReadError of a record whose bytes make no sense.
[[noreturn]] void damaged();

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

// A value as the record stores it, and back.
QByteArray variantBytes(const QVariant &value);
std::optional<QVariant> variantFromBytes(const QByteArray &bytes);

// One whole record, header included.
QByteArray encodeRecord(const StoredObject &root);

// Reads the header and the body of one record and leaves the device right
// after it.
QByteArray readRecordBody(QIODevice &device);

// Whether a decoded value keeps the bytes it was read from
// (StoredProperty::raw), as the text form needs.
enum class ValueBytes { Drop, Keep };
StoredObject decodeRecordBody(const QByteArray &body, ValueBytes valueBytes);

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
    // A switch of the class, stored before this property, that changes its
    // fresh value when turned (a group box made checkable checks itself):
    // while the switch is turned, the value it gives is the default.
    int switchedBy = -1;
    QVariant switchedValue;
    int switchedInt = 0;
};

struct ClassInfo
{
    const QMetaObject *metaObject = nullptr;
    std::vector<PropertyInfo> properties; // every writable property, in index order
    QHash<QByteArray, int> byName;
    bool defaultsRead = false;
};

ClassInfo &classInfo(const QMetaObject *mo);
// Fills in the defaults of the class's stored properties, once.
void readDefaults(ClassInfo &info);
// True when the widget's own setting of a gated property is to be written.
bool gateOpen(const QWidget *w, Gate gate);
bool equalValues(const QVariant &a, const QVariant &b);
// True when the object's value of the property is its default, the value
// the reader leaves it with when the stream holds none.
bool isDefaultValue(const ClassInfo &info, const PropertyInfo &pi, const QObject *object, const QVariant &value);

// ---------------------------------------------------------------------------
// Writing, reading and the text form.

// The plain tree of a live component and the components it owns.
StoredObject storeComponent(QObject *component);

// Makes the objects of one record body, checked against the classes first
// (ReadComponent's contract). With skipped given, components of classes the
// registry does not know are left out, and named there, instead of failing
// the read.
QObject *readRecord(const QByteArray &body, QObject *instance, QWidget *parent, QObject *owner,
                    QStringList *skipped = nullptr);

// The text of one decoded object (indented by indent) appended to out, and
// the object of a parsed text; damaged text throws through badText().
void appendObjectText(QByteArray &out, const StoredObject &o, const QByteArray &indent);
StoredObject objectOfText(const QJsonValue &j, int depth);
[[noreturn]] void badText(const QString &why);

} // namespace QorStreamPrivate
