// SPDX-License-Identifier: MIT
// The component stream's text form: indented JSON, one object per record,
// with the common value types readable and every other value as the base64
// of its bytes, so that text and records turn into each other unchanged.
#include "foundation/qorstream_p.h"

#include "foundation/qorerror.h"
#include "foundation/qorvaluecheck_p.h"

#include <QCoreApplication>
#include <QColor>
#include <QCursor>
#include <QDate>
#include <QDateTime>
#include <QFont>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QKeySequence>
#include <QLocale>
#include <QMetaEnum>
#include <QRect>
#include <QSizePolicy>
#include <QTime>
#include <QUrl>

#include <cmath>
#include <limits>

namespace QorStreamPrivate {
namespace {

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

QString requiredString(const QJsonObject &o, const char *key)
{
    const QJsonValue v = o.value(QLatin1String(key));
    if (!v.isString())
        badText(QCoreApplication::translate("QorDesign", "\"%1\" is missing or not a text").arg(QLatin1String(key)));
    return v.toString();
}

StoredProperty propertyOfText(const QJsonValue &j, bool dynamic)
{
    if (!j.isObject())
        badText(QCoreApplication::translate("QorDesign", "a property is not an object"));
    const QJsonObject o = j.toObject();
    StoredProperty p;
    p.name = requiredString(o, "name").toUtf8();
    if (p.name.isEmpty())
        badText(QCoreApplication::translate("QorDesign", "a property has no name"));
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
            badText(QCoreApplication::translate("QorDesign", "the data of property %1 is not base64").arg(QString::fromUtf8(p.name)));
        const auto value = variantFromBytes(*decoded);
        if (!value || (o.contains(QLatin1String("type")) && requiredString(o, "type") != typeName(*value)))
            badText(QCoreApplication::translate("QorDesign", "the data of property %1 is not a value").arg(QString::fromUtf8(p.name)));
        p.value = *value;
        p.raw = *decoded;
    } else {
        const auto value = valueOfReadable(requiredString(o, "type"), o.value(QLatin1String("value")));
        if (!value)
            badText(QCoreApplication::translate("QorDesign", "the value of property %1 does not fit its type").arg(QString::fromUtf8(p.name)));
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
        badText(QCoreApplication::translate("QorDesign", "\"%1\" is not a list").arg(QLatin1String(key)));
    return v.toArray();
}

} // namespace

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
    throw EReadError(QCoreApplication::translate("QorDesign", "The component text is damaged: %1").arg(why));
}

StoredObject objectOfText(const QJsonValue &j, int depth)
{
    if (!j.isObject() || depth > kMaxDepth)
        badText(QCoreApplication::translate("QorDesign", "a component is not an object"));
    const QJsonObject o = j.toObject();
    StoredObject s;
    s.className = requiredString(o, "class");
    if (s.className.isEmpty())
        badText(QCoreApplication::translate("QorDesign", "a component has no class"));
    s.name = requiredString(o, "name");
    for (const QJsonValue &p : requiredArray(o, "properties"))
        s.properties.append(propertyOfText(p, false));
    for (const QJsonValue &p : requiredArray(o, "dynamicProperties"))
        s.dynamicProperties.append(propertyOfText(p, true));
    for (const QJsonValue &c : requiredArray(o, "children"))
        s.children.push_back(objectOfText(c, depth + 1));
    return s;
}

} // namespace QorStreamPrivate
