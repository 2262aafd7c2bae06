// SPDX-License-Identifier: MIT
#include "foundation/qordesignerxml_p.h"

#include "foundation/qorclasses_p.h"
#include "foundation/qorerror.h"
#include "foundation/qorlogging_p.h"
#include "foundation/qortypinfo.h"
#include "foundation/qorvaluecheck_p.h"

#include <QColor>
#include <QCursor>
#include <QDateTime>
#include <QFont>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QRect>
#include <QSizePolicy>
#include <QWidget>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <memory>

namespace QorDesignerXml {
namespace {

bool isDesignerType(const QMetaProperty &Property, Dialect Kinds)
{
    if (Property.isEnumType() || Property.isFlagType())
        return true;
    switch (Property.metaType().id()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Double:
    case QMetaType::QString:
    case QMetaType::QRect:
    case QMetaType::QSize:
    case QMetaType::QPoint:
    case QMetaType::QColor:
        return true;
    case QMetaType::QFont:
    case QMetaType::QSizePolicy:
    case QMetaType::QCursor:
    case QMetaType::QDate:
    case QMetaType::QTime:
    case QMetaType::QDateTime:
        return Kinds == Dialect::FormFile;
    default:
        return false;
    }
}

// A widget's font and cursor are written only where the widget sets its
// own: inherited ones come with the parent.
bool ownSetting(const QWidget *Widget, const QMetaProperty &Property)
{
    switch (Property.metaType().id()) {
    case QMetaType::QFont: return Widget->testAttribute(Qt::WA_SetFont) && Widget->font().resolveMask() != 0;
    case QMetaType::QCursor: return Widget->testAttribute(Qt::WA_SetCursor);
    default: return true;
    }
}

QString scopedKeys(const QMetaEnum &Enum, int Value)
{
    const QString scope = QString::fromLatin1(Enum.scope()) + QLatin1String("::");
    // Flags by their single elements, as the inspector names them (Qt's own
    // spelling picks aliases such as AlignTrailing).
    const QStringList names = Enum.isFlag() ? SetToString(TypeInfoOfEnum(Enum), Value, false).split(QLatin1Char(','), Qt::SkipEmptyParts)
                                            : QStringList{QString::fromLatin1(Enum.valueToKey(Value))};
    QStringList keys;
    for (const QString &key : names) {
        if (!key.isEmpty())
            keys.append(scope + key);
    }
    return keys.join(QLatin1Char('|'));
}

QString boolText(bool Value)
{
    return Value ? QStringLiteral("true") : QStringLiteral("false");
}

void writeFields(QXmlStreamWriter &Xml, const char *Element, std::initializer_list<std::pair<const char *, int>> Values)
{
    Xml.writeStartElement(QLatin1String(Element));
    for (const auto &[name, value] : Values)
        Xml.writeTextElement(QLatin1String(name), QString::number(value));
    Xml.writeEndElement();
}

// The fields of a font the widget set itself, as Designer names them.
void writeFont(QXmlStreamWriter &Xml, const QFont &Font)
{
    const QFont::ResolveProperties set = QFont::ResolveProperties(Font.resolveMask());
    Xml.writeStartElement(QStringLiteral("font"));
    if (set & (QFont::FamilyResolved | QFont::FamiliesResolved))
        Xml.writeTextElement(QStringLiteral("family"), Font.family());
    if ((set & QFont::SizeResolved) && Font.pointSize() > 0)
        Xml.writeTextElement(QStringLiteral("pointsize"), QString::number(Font.pointSize()));
    if (set & QFont::StyleResolved)
        Xml.writeTextElement(QStringLiteral("italic"), boolText(Font.italic()));
    if (set & QFont::WeightResolved)
        Xml.writeTextElement(QStringLiteral("bold"), boolText(Font.bold()));
    if (set & QFont::UnderlineResolved)
        Xml.writeTextElement(QStringLiteral("underline"), boolText(Font.underline()));
    if (set & QFont::StrikeOutResolved)
        Xml.writeTextElement(QStringLiteral("strikeout"), boolText(Font.strikeOut()));
    Xml.writeEndElement();
}

void writeValue(QXmlStreamWriter &Xml, const QMetaProperty &Property, const QVariant &Value)
{
    if (Property.isEnumType() || Property.isFlagType()) {
        const QString keys = scopedKeys(Property.enumerator(), int(OrdinalOf(Value)));
        Xml.writeTextElement(Property.isFlagType() ? QStringLiteral("set") : QStringLiteral("enum"), keys);
        return;
    }
    switch (Property.metaType().id()) {
    case QMetaType::Bool: Xml.writeTextElement(QStringLiteral("bool"), boolText(Value.toBool())); break;
    case QMetaType::Int:
    case QMetaType::UInt: Xml.writeTextElement(QStringLiteral("number"), QString::number(Value.toLongLong())); break;
    case QMetaType::Double: Xml.writeTextElement(QStringLiteral("double"), QString::number(Value.toDouble(), 'g', 15)); break;
    case QMetaType::QString: Xml.writeTextElement(QStringLiteral("string"), Value.toString()); break;
    case QMetaType::QRect: {
        const QRect r = Value.toRect();
        writeFields(Xml, "rect", {{"x", r.x()}, {"y", r.y()}, {"width", r.width()}, {"height", r.height()}});
        break;
    }
    case QMetaType::QSize: writeFields(Xml, "size", {{"width", Value.toSize().width()}, {"height", Value.toSize().height()}}); break;
    case QMetaType::QPoint: writeFields(Xml, "point", {{"x", Value.toPoint().x()}, {"y", Value.toPoint().y()}}); break;
    case QMetaType::QColor: {
        const QColor c = Value.value<QColor>();
        Xml.writeStartElement(QStringLiteral("color"));
        Xml.writeAttribute(QStringLiteral("alpha"), QString::number(c.alpha()));
        Xml.writeTextElement(QStringLiteral("red"), QString::number(c.red()));
        Xml.writeTextElement(QStringLiteral("green"), QString::number(c.green()));
        Xml.writeTextElement(QStringLiteral("blue"), QString::number(c.blue()));
        Xml.writeEndElement();
        break;
    }
    case QMetaType::QFont: writeFont(Xml, Value.value<QFont>()); break;
    case QMetaType::QSizePolicy: {
        const auto policy = Value.value<QSizePolicy>();
        const QMetaEnum policies = QMetaEnum::fromType<QSizePolicy::Policy>();
        Xml.writeStartElement(QStringLiteral("sizepolicy"));
        Xml.writeAttribute(QStringLiteral("hsizetype"), QString::fromLatin1(policies.valueToKey(policy.horizontalPolicy())));
        Xml.writeAttribute(QStringLiteral("vsizetype"), QString::fromLatin1(policies.valueToKey(policy.verticalPolicy())));
        Xml.writeTextElement(QStringLiteral("horstretch"), QString::number(policy.horizontalStretch()));
        Xml.writeTextElement(QStringLiteral("verstretch"), QString::number(policy.verticalStretch()));
        Xml.writeEndElement();
        break;
    }
    case QMetaType::QCursor: {
        const QMetaEnum shapes = QMetaEnum::fromType<Qt::CursorShape>();
        Xml.writeTextElement(QStringLiteral("cursorShape"),
                             QString::fromLatin1(shapes.valueToKey(Value.value<QCursor>().shape())));
        break;
    }
    case QMetaType::QDate: {
        const QDate d = Value.toDate();
        writeFields(Xml, "date", {{"year", d.year()}, {"month", d.month()}, {"day", d.day()}});
        break;
    }
    case QMetaType::QTime: {
        const QTime t = Value.toTime();
        writeFields(Xml, "time", {{"hour", t.hour()}, {"minute", t.minute()}, {"second", t.second()}});
        break;
    }
    case QMetaType::QDateTime: {
        const QDateTime dt = Value.toDateTime();
        const QDate d = dt.date();
        const QTime t = dt.time();
        writeFields(Xml, "datetime",
                    {{"hour", t.hour()}, {"minute", t.minute()}, {"second", t.second()}, {"year", d.year()},
                     {"month", d.month()}, {"day", d.day()}});
        break;
    }
    default: break;
    }
}

int intOf(const QString &Text)
{
    return Text.trimmed().toInt();
}

// The integer fields of a compound value by name; a field not given reads 0.
QHash<QString, int> readFields(QXmlStreamReader &Xml)
{
    QHash<QString, int> fields;
    while (Xml.readNextStartElement()) {
        const QString field = Xml.name().toString();
        fields.insert(field, intOf(Xml.readElementText()));
    }
    return fields;
}

QVariant readFont(QXmlStreamReader &Xml)
{
    QFont font;
    while (Xml.readNextStartElement()) {
        const QString field = Xml.name().toString();
        const QString text = Xml.readElementText().trimmed();
        const bool on = text == QLatin1String("true");
        if (field == QLatin1String("family"))
            font.setFamily(text);
        else if (field == QLatin1String("pointsize") && intOf(text) > 0)
            font.setPointSize(intOf(text));
        else if (field == QLatin1String("bold"))
            font.setBold(on);
        else if (field == QLatin1String("italic"))
            font.setItalic(on);
        else if (field == QLatin1String("underline"))
            font.setUnderline(on);
        else if (field == QLatin1String("strikeout"))
            font.setStrikeOut(on);
    }
    return font;
}

QVariant readSizePolicy(QXmlStreamReader &Xml)
{
    const QMetaEnum policies = QMetaEnum::fromType<QSizePolicy::Policy>();
    const auto policyOf = [&](QLatin1String Attribute, bool &Ok) {
        const QByteArray key = Xml.attributes().value(Attribute).toLatin1();
        bool found = false;
        const int value = policies.keyToValue(key.constData(), &found);
        Ok = Ok && found;
        return QSizePolicy::Policy(value);
    };
    bool ok = true;
    const QSizePolicy::Policy horizontal = policyOf(QLatin1String("hsizetype"), ok);
    const QSizePolicy::Policy vertical = policyOf(QLatin1String("vsizetype"), ok);
    const QHash<QString, int> fields = readFields(Xml);
    if (!ok)
        return {};
    QSizePolicy policy(horizontal, vertical);
    policy.setHorizontalStretch(fields.value(QStringLiteral("horstretch")));
    policy.setVerticalStretch(fields.value(QStringLiteral("verstretch")));
    return QVariant::fromValue(policy);
}

// The richer values of a form file; invalid for any other element.
QVariant readFormValue(QXmlStreamReader &Xml, const QString &Element)
{
    if (Element == QLatin1String("font"))
        return readFont(Xml);
    if (Element == QLatin1String("sizepolicy"))
        return readSizePolicy(Xml);
    if (Element == QLatin1String("date") || Element == QLatin1String("time") || Element == QLatin1String("datetime")) {
        const QHash<QString, int> f = readFields(Xml);
        const QDate date(f.value(QStringLiteral("year")), f.value(QStringLiteral("month")), f.value(QStringLiteral("day")));
        const QTime time(f.value(QStringLiteral("hour")), f.value(QStringLiteral("minute")), f.value(QStringLiteral("second")));
        if (Element == QLatin1String("date"))
            return date.isValid() ? QVariant(date) : QVariant();
        if (Element == QLatin1String("time"))
            return time.isValid() ? QVariant(time) : QVariant();
        return date.isValid() && time.isValid() ? QVariant(QDateTime(date, time)) : QVariant();
    }
    if (Element == QLatin1String("cursorShape")) {
        const QByteArray key = Xml.readElementText().trimmed().toLatin1();
        bool ok = false;
        const int shape = QMetaEnum::fromType<Qt::CursorShape>().keyToValue(key.constData(), &ok);
        return ok ? QVariant(QCursor(Qt::CursorShape(shape))) : QVariant();
    }
    return {};
}

} // namespace

void writeProperties(QXmlStreamWriter &Xml, QWidget *Widget, Dialect Kinds, bool WithGeometry)
{
    // Only what differs from a new widget of the class, as Designer writes.
    // A class the registry does not make has no defaults: all its values
    // are written.
    const std::unique_ptr<QObject> fresh(NewRegisteredInstance(Widget->metaObject()));
    const QMetaObject *meta = Widget->metaObject();
    for (int i = 0; i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        if (!property.isDesignable() || !property.isStored() || !property.isWritable() || !isDesignerType(property, Kinds))
            continue;
        const bool geometry = qstrcmp(property.name(), "geometry") == 0;
        if (geometry && !WithGeometry)
            continue;
        if (!ownSetting(Widget, property))
            continue;
        const QVariant value = property.read(Widget);
        if (!geometry && fresh && property.read(fresh.get()) == value)
            continue;
        if (qstrcmp(property.name(), "objectName") == 0)
            continue;
        Xml.writeStartElement(QStringLiteral("property"));
        Xml.writeAttribute(QStringLiteral("name"), QString::fromLatin1(property.name()));
        writeValue(Xml, property, value);
        Xml.writeEndElement();
    }
}

QVariant readValue(QXmlStreamReader &Xml, const QMetaProperty &Property, Dialect Kinds)
{
    const QString element = Xml.name().toString();
    if (element == QLatin1String("rect") || element == QLatin1String("size") || element == QLatin1String("point")
        || element == QLatin1String("color")) {
        const int alpha = Xml.attributes().hasAttribute(QLatin1String("alpha"))
            ? Xml.attributes().value(QLatin1String("alpha")).toInt()
            : 255;
        const QHash<QString, int> f = readFields(Xml);
        const int x = f.value(QStringLiteral("x")), y = f.value(QStringLiteral("y"));
        const int width = f.value(QStringLiteral("width")), height = f.value(QStringLiteral("height"));
        // A rectangle whose far edges an int cannot hold is not taken.
        if (element == QLatin1String("rect"))
            return QorLimits::rectFits(x, y, width, height) ? QVariant(QRect(x, y, width, height)) : QVariant();
        if (element == QLatin1String("size"))
            return QSize(width, height);
        if (element == QLatin1String("point"))
            return QPoint(x, y);
        return QColor(f.value(QStringLiteral("red")), f.value(QStringLiteral("green")), f.value(QStringLiteral("blue")), alpha);
    }
    if (Kinds == Dialect::FormFile) {
        const QVariant value = readFormValue(Xml, element);
        if (value.isValid() || !Xml.isStartElement())
            return value;
    }
    const QString text = Xml.readElementText(QXmlStreamReader::SkipChildElements);
    if (element == QLatin1String("enum") || element == QLatin1String("set")) {
        if (!Property.isEnumType() && !Property.isFlagType())
            return {};
        // Keys come scoped ("Qt::AlignLeft"); the enumerator knows them bare.
        QStringList keys;
        for (const QString &key : text.split(QLatin1Char('|'), Qt::SkipEmptyParts))
            keys.append(key.mid(key.lastIndexOf(QLatin1Char(':')) + 1).trimmed());
        bool ok = false;
        const QByteArray joined = keys.join(QLatin1Char('|')).toLatin1();
        const int value = Property.isFlagType() ? Property.enumerator().keysToValue(joined.constData(), &ok)
                                                : Property.enumerator().keyToValue(joined.constData(), &ok);
        return ok ? QVariant(value) : QVariant();
    }
    if (element == QLatin1String("bool"))
        return text.trimmed() == QLatin1String("true");
    if (element == QLatin1String("number"))
        return text.trimmed().toLongLong();
    if (element == QLatin1String("double"))
        return text.trimmed().toDouble();
    if (element == QLatin1String("string") || element == QLatin1String("cstring"))
        return text;
    return {};
}

void readProperty(QXmlStreamReader &Xml, QObject *Object, Dialect Kinds)
{
    const QByteArray property = Xml.attributes().value(QLatin1String("name")).toLatin1();
    const int index = Object->metaObject()->indexOfProperty(property.constData());
    if (index < 0)
        qCInfo(lcQorClipboard).noquote() << "Qt Designer text: skipped property" << QString::fromLatin1(property)
                                         << "which class" << QString::fromLatin1(Object->metaObject()->className())
                                         << "does not have";
    if (index < 0 || !Xml.readNextStartElement()) {
        if (!Xml.isEndElement())
            Xml.skipCurrentElement();
        return;
    }
    const QMetaProperty meta = Object->metaObject()->property(index);
    const QVariant value = readValue(Xml, meta, Kinds);
    if (value.isValid() && meta.isWritable())
        meta.write(Object, value);
    else
        qCInfo(lcQorClipboard).noquote() << "Qt Designer text: skipped a value of property"
                                         << QString::fromLatin1(meta.name()) << "of" << Object->objectName()
                                         << "that cannot be read or written";
    // Past the end of the property element.
    Xml.skipCurrentElement();
}

void checkDepth(int Depth)
{
    if (Depth > QorLimits::kMaxUiElementDepth)
        throw EReadError(QStringLiteral("The Qt Designer document nests its widgets too deeply"));
}

} // namespace QorDesignerXml
