// SPDX-License-Identifier: MIT
#include "foundation/vhoclipbrdutils.h"

#include "foundation/qorclasses.h"
#include "foundation/qorclasses_p.h"
#include "foundation/qordesignerxml_p.h"
#include "foundation/qorerror.h"
#include "foundation/qorlogging_p.h"
#include "foundation/qorquietshow_p.h"
#include "foundation/qorrepaintonce_p.h"
#include "foundation/qorstream.h"
#include "foundation/qorvaluecheck_p.h"
#include "foundation/vhosysutils.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QMimeData>
#include <QPointer>
#include <QSet>
#include <QWidget>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>

namespace {

constexpr int kHeaderSize = 8;

void writeWithChildren(QBuffer &Buffer, QObject *Component, bool WithChildren)
{
    WriteComponent(Buffer, Component);
    if (!WithChildren || !Component->isWidgetType())
        return;
    for (QObject *child : DesignChildren(Component)) {
        if (child->isWidgetType())
            writeWithChildren(Buffer, child, true);
    }
}

// Where the record after the one at Offset starts: by its length when its
// header is sound, else at the next signature further on.
qsizetype nextRecord(const QByteArray &Bytes, qsizetype Offset)
{
    if (Offset + kHeaderSize <= Bytes.size() && std::memcmp(Bytes.constData() + Offset, "QOR1", 4) == 0) {
        const quint32 length = qFromBigEndian<quint32>(Bytes.constData() + Offset + 4);
        if (qsizetype(length) <= Bytes.size() - Offset - kHeaderSize)
            return Offset + kHeaderSize + qsizetype(length);
    }
    const qsizetype next = Bytes.indexOf("QOR1", Offset + 1);
    return next < 0 ? Bytes.size() : next;
}

// Reads the records one after the other, each without a parent, and hands
// each component read to Take; a record that cannot be read is skipped and
// reading goes on at the next one. The records come from any program.
template<typename Taker>
void readRecords(const QByteArray &Bytes, Taker &&Take)
{
    QBuffer buffer;
    buffer.setData(Bytes);
    buffer.open(QIODevice::ReadOnly);
    while (buffer.pos() < buffer.size()) {
        const qsizetype start = buffer.pos();
        QObject *component = nullptr;
        try {
            component = ReadComponent(buffer, nullptr, nullptr, nullptr);
        } catch (const EQorError &error) {
            qCInfo(lcQorClipboard).noquote() << "Skipped the damaged clipboard record at byte" << start << "-"
                                             << error.message();
            buffer.seek(nextRecord(Bytes, start));
            continue;
        }
        Take(component);
    }
}

// Where pasted widgets go. A pasted widget moves by (DX, DY) until no
// widget of the parent has its corner; it stands at its stored place
// itself, so it always moves at least one step. The corners of the
// parent's widgets are taken once per paste and kept up to date as pasted
// widgets join: the parent does not lay out its children meanwhile.
class PastePlacer
{
public:
    PastePlacer(QWidget *Parent, int DX, int DY)
        : m_parent(Parent)
        , m_dx(DX)
        , m_dy(DY)
    {
        if (!Parent)
            return;
        for (QObject *child : Parent->children()) {
            if (child->isWidgetType() && !static_cast<QWidget *>(child)->isWindow())
                m_corners.insert(key(static_cast<QWidget *>(child)->pos()));
        }
    }

    // Moves the widget to its corner and makes it the parent's child (a
    // widget read without a parent joins only now, placed: the parent sees
    // no move of a new child). A widget the record did not hide is shown.
    void place(QWidget *Widget)
    {
        const bool hidden = Widget->testAttribute(Qt::WA_WState_ExplicitShowHide) && Widget->isHidden();
        QPoint corner = Widget->pos();
        // With both steps 0 the walk would never end: it looks once; a step
        // held at the end of the coordinate range ends it too.
        for (;;) {
            const QPoint next = step(corner, Widget->size());
            const bool moved = next != corner;
            corner = next;
            if (!moved || (m_dx == 0 && m_dy == 0) || !m_corners.contains(key(corner)))
                break;
        }
        if (Widget->parentWidget() != m_parent)
            Widget->setParent(m_parent);
        Widget->move(corner);
        m_corners.insert(key(corner));
        if (!hidden)
            show(Widget);
    }

private:
    // One step of the walk, held where the widget's far edges (left + width,
    // top + height) would leave the int range: a control stored at the end
    // of the range stays there rather than wrapping around.
    QPoint step(const QPoint &Corner, const QSize &Size) const
    {
        const auto along = [](int From, int By, int Extent) {
            const qint64 last = qint64(std::numeric_limits<int>::max()) - std::max(Extent, 0);
            return int(std::clamp(qint64(From) + By, qint64(std::numeric_limits<int>::min()), last));
        };
        return {along(Corner.x(), m_dx, Size.width()), along(Corner.y(), m_dy, Size.height())};
    }

    static quint64 key(const QPoint &Point) { return (quint64(quint32(Point.x())) << 32) | quint32(Point.y()); }

    // The grab holder is made for the paste's first widget and kept for the
    // rest of it. A paste of many widgets holds the parent's repainting
    // until it ends: each widget shown marks its own area, and every widget
    // of a region of a thousand areas is painted clipped to all of them.
    void show(QWidget *Widget)
    {
        if (!m_quiet)
            m_quiet = std::make_unique<QorQuietShow>(m_parent);
        if (++m_shown == QorRepaintOnce::kFrom && m_parent->isVisible() && m_parent->updatesEnabled()) {
            m_parent->setUpdatesEnabled(false);
            m_held.widget = m_parent;
        }
        Widget->show();
    }

    // Gives the parent's repainting back, with one repaint of it, when the
    // paste ends.
    struct Held
    {
        QPointer<QWidget> widget;
        Held() = default;
        Held(const Held &) = delete;
        Held &operator=(const Held &) = delete;
        ~Held()
        {
            if (widget)
                widget->setUpdatesEnabled(true);
        }
    };

    QWidget *m_parent;
    int m_dx;
    int m_dy;
    QSet<quint64> m_corners;
    std::unique_ptr<QorQuietShow> m_quiet;
    qsizetype m_shown = 0;
    Held m_held;
};

// Frees a pasted component that could not be kept; a widget leaves its
// parent at once, before events reach it again.
void discard(QObject *Component)
{
    if (auto *w = qobject_cast<QWidget *>(Component)) {
        w->hide();
        w->setParent(nullptr);
    }
    Component->deleteLater();
}

} // namespace

QObject *pasteDesignerText(const QString &Text, QObject *Owner, QWidget *Parent, int DX, int DY);

namespace {

// What a copy puts on the clipboard: the records, and Qt Designer's text of
// the widgets among them. The text is made from the records when a program
// first asks for it (most pastes never do): a copy costs no more than its
// records, and the text shows what the records hold, as a paste here would
// make it, even after the copied components changed or went.
class ComponentMimeData final : public QMimeData
{
public:
    ComponentMimeData(const QByteArray &Records, bool HasWidgets)
        : m_records(Records)
        , m_hasWidgets(HasWidgets)
    {
    }

    QStringList formats() const override
    {
        QStringList list{CF_QorComponents()};
        if (m_hasWidgets)
            list << QStringLiteral("text/plain");
        return list;
    }

    bool hasFormat(const QString &MimeType) const override { return formats().contains(MimeType); }

protected:
    QVariant retrieveData(const QString &MimeType, QMetaType Type) const override
    {
        if (MimeType == CF_QorComponents())
            return m_records;
        if (MimeType != QLatin1String("text/plain") || !m_hasWidgets)
            return QMimeData::retrieveData(MimeType, Type);
        if (!m_textMade) {
            m_text = designerText();
            m_textMade = true;
        }
        return m_text;
    }

private:
    QString designerText() const
    {
        std::vector<std::unique_ptr<QObject>> read;
        readRecords(m_records, [&read](QObject *Component) { read.emplace_back(Component); });
        QList<QObject *> components;
        for (const auto &component : read)
            components.append(component.get());
        return DesignerTextOf(components);
    }

    QByteArray m_records;
    bool m_hasWidgets;
    mutable QString m_text;
    mutable bool m_textMade = false;
};

} // namespace

QString CF_QorComponents()
{
    return QStringLiteral("application/x-qor-components");
}

void TVhoClipboard::SetComponents(const TComponentList &Components, bool WithChildren)
{
    const QList<QObject *> list = Components.toList();
    if (list.isEmpty())
        return;
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    for (QObject *component : list)
        writeWithChildren(buffer, component, WithChildren);
    buffer.close();
    const bool widgets = std::any_of(list.begin(), list.end(), [](QObject *c) { return c && c->isWidgetType(); });
    QGuiApplication::clipboard()->setMimeData(new ComponentMimeData(bytes, widgets));
}

bool TVhoClipboard::HasComponents() const
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    return data && data->hasFormat(CF_QorComponents());
}

QObject *TVhoClipboard::GetComponents(QObject *Owner, QWidget *Parent, int DX, int DY)
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    // Read once: on X an owner that is slow to answer gives inconsistent
    // answers to several questions.
    const QByteArray bytes = data ? data->data(CF_QorComponents()) : QByteArray();
    if (bytes.isEmpty())
        return data && data->hasText() ? pasteDesignerText(data->text(), Owner, Parent, DX, DY) : nullptr;
    PastePlacer placer(Parent, DX, DY);
    QObject *last = nullptr;
    // Read without a parent: a widget joins Parent once placed.
    readRecords(bytes, [&](QObject *component) {
        try {
            if (auto *w = qobject_cast<QWidget *>(component); w && Parent)
                placer.place(w);
            if (Owner) {
                if (m_renameDuplicates
                    && (component->objectName().isEmpty() || FindComponent(Owner, component->objectName())))
                    component->setObjectName(GetCompUniqueID(component->metaObject(), Owner));
                InsertComponent(Owner, component);
            }
            last = component;
        } catch (const EQorError &error) {
            qCInfo(lcQorClipboard).noquote() << "Dropped the pasted component" << component->objectName() << "-"
                                             << error.message();
            discard(component);
        }
    });
    return last;
}

TVhoClipboard *VhoClipboard()
{
    static TVhoClipboard clipboard;
    return &clipboard;
}

// ---- Qt Designer's text ------------------------------------------------

namespace {

void writeWidget(QXmlStreamWriter &Xml, QWidget *Widget)
{
    Xml.writeStartElement(QStringLiteral("widget"));
    Xml.writeAttribute(QStringLiteral("class"), QString::fromLatin1(Widget->metaObject()->className()));
    Xml.writeAttribute(QStringLiteral("name"), Widget->objectName());
    QorDesignerXml::writeProperties(Xml, Widget, QorDesignerXml::Dialect::ClipboardText);
    for (QObject *child : DesignChildren(Widget)) {
        if (auto *w = qobject_cast<QWidget *>(child); w && w->parentWidget() == Widget)
            writeWidget(Xml, w);
    }
    Xml.writeEndElement();
}

QWidget *readWidget(QXmlStreamReader &Xml, QWidget *Parent, QList<QPointer<QWidget>> &Made, int Depth);

// Reads the elements inside a widget (or inside one of its layouts, whose
// own properties are not the widget's) up to the element's end.
void readContent(QXmlStreamReader &Xml, QWidget *Widget, QList<QPointer<QWidget>> &Made, bool InLayout, int Depth)
{
    QorDesignerXml::checkDepth(Depth);
    while (Xml.readNextStartElement()) {
        if (Xml.name() == QLatin1String("property") && !InLayout) {
            QorDesignerXml::readProperty(Xml, Widget, QorDesignerXml::Dialect::ClipboardText);
        } else if (Xml.name() == QLatin1String("widget")) {
            readWidget(Xml, Widget, Made, Depth + 1);
        } else if (Xml.name() == QLatin1String("layout") || Xml.name() == QLatin1String("item")) {
            // Widgets inside a layout are taken, the layout itself is not.
            readContent(Xml, Widget, Made, true, Depth + 1);
        } else {
            Xml.skipCurrentElement();
        }
    }
}

QWidget *readWidget(QXmlStreamReader &Xml, QWidget *Parent, QList<QPointer<QWidget>> &Made, int Depth)
{
    QorDesignerXml::checkDepth(Depth);
    const QString className = Xml.attributes().value(QLatin1String("class")).toString();
    const QString name = Xml.attributes().value(QLatin1String("name")).toString();
    // A registered class that makes no widget (a timer) has no place in a
    // form's widgets: what it made goes again.
    const QMetaObject *registered = GetClass(className);
    std::unique_ptr<QObject> made(NewRegisteredInstance(registered));
    QWidget *widget = qobject_cast<QWidget *>(made.get());
    if (!widget) {
        // An unknown class: its element and everything in it are skipped.
        qCInfo(lcQorClipboard).noquote() << "Qt Designer text: skipped widget" << name << "and its contents - class"
                                         << className << (registered ? "makes no widget" : "is not registered");
        Xml.skipCurrentElement();
        return nullptr;
    }
    made.release();
    widget->setParent(Parent);
    widget->setObjectName(name);
    Made.append(widget);
    readContent(Xml, widget, Made, false, Depth + 1);
    return widget;
}

} // namespace

QString DesignerTextOf(const QList<QObject *> &Components)
{
    QString text;
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(1);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("ui"));
    xml.writeAttribute(QStringLiteral("version"), QStringLiteral("4.0"));
    xml.writeStartElement(QStringLiteral("widget"));
    xml.writeAttribute(QStringLiteral("class"), QStringLiteral("QWidget"));
    xml.writeAttribute(QStringLiteral("name"), QStringLiteral("__qt_fake_top_level"));
    for (QObject *component : Components) {
        if (auto *w = qobject_cast<QWidget *>(component))
            writeWidget(xml, w);
    }
    xml.writeEndElement();
    xml.writeEmptyElement(QStringLiteral("resources"));
    xml.writeEmptyElement(QStringLiteral("connections"));
    xml.writeEndDocument();
    return text;
}

namespace {

// Nothing half-made stays: the widgets made so far that are not inside
// another one made here go, with what they hold.
void discardMade(const QList<QPointer<QWidget>> &Made, QWidget *Parent)
{
    for (const QPointer<QWidget> &w : Made) {
        if (w && w->parentWidget() == Parent) {
            w->setParent(nullptr);
            delete w.data();
        }
    }
}

void readDocument(QXmlStreamReader &xml, QWidget *Parent, QList<QWidget *> &roots, QList<QPointer<QWidget>> &made)
{
    while (xml.readNextStartElement()) {
        if (xml.name() != QLatin1String("widget")) {
            xml.skipCurrentElement();
            continue;
        }
        // The fake top level holds the copied widgets; a plain form is
        // taken whole.
        const bool fake = xml.attributes().value(QLatin1String("name")) == QLatin1String("__qt_fake_top_level");
        if (!fake) {
            if (QWidget *w = readWidget(xml, Parent, made, 1))
                roots.append(w);
            continue;
        }
        while (xml.readNextStartElement()) {
            if (xml.name() == QLatin1String("widget")) {
                if (QWidget *w = readWidget(xml, Parent, made, 2))
                    roots.append(w);
            } else {
                xml.skipCurrentElement();
            }
        }
    }
}

} // namespace

QList<QWidget *> WidgetsFromDesignerText(const QString &Text, QWidget *Parent)
{
    if (Text.size() > QorLimits::kMaxTextBytes / 2)
        throw EReadError(QStringLiteral("The Qt Designer document is too long"));
    QXmlStreamReader xml(Text);
    QList<QWidget *> roots;
    QList<QPointer<QWidget>> made;
    if (!xml.readNextStartElement() || xml.name() != QLatin1String("ui"))
        throw EReadError(QStringLiteral("Not a Qt Designer document"));
    try {
        readDocument(xml, Parent, roots, made);
    } catch (const EQorError &) {
        discardMade(made, Parent);
        throw;
    }
    if (xml.hasError()) {
        discardMade(made, Parent);
        throw EReadError(QStringLiteral("Broken Qt Designer document: %1").arg(xml.errorString()));
    }
    return roots;
}


// Widgets copied in Qt Designer: made through the class registry, placed
// as pasted records are, named uniquely in Owner with all they hold.
QObject *pasteDesignerText(const QString &Text, QObject *Owner, QWidget *Parent, int DX, int DY)
{
    if (!Text.trimmed().startsWith(QLatin1String("<?xml")) && !Text.trimmed().startsWith(QLatin1String("<ui")))
        return nullptr;
    PastePlacer placer(Parent, DX, DY);
    QList<QWidget *> widgets;
    try {
        widgets = WidgetsFromDesignerText(Text, Parent);
    } catch (const EQorError &error) {
        qCInfo(lcQorClipboard).noquote() << "Nothing pasted: the Qt Designer text on the clipboard cannot be read -"
                                         << error.message();
        return nullptr;
    }
    QObject *last = nullptr;
    for (QWidget *w : widgets) {
        if (Parent)
            placer.place(w);
        if (Owner) {
            QList<QWidget *> all{w};
            all += w->findChildren<QWidget *>();
            for (QWidget *part : all) {
                // An unnamed widget inside another is an inner part of it;
                // a pasted widget itself is always a component, named here
                // when the text gave it no name of its own.
                const bool unnamed = part->objectName().isEmpty() || part->objectName().startsWith(QLatin1String("qt_"));
                if (unnamed && part != w)
                    continue;
                if (unnamed || CompNameExists(part->objectName(), Owner))
                    part->setObjectName(GetUniqueName(classNameWithoutPrefix(QString::fromLatin1(part->metaObject()->className())), Owner));
                InsertComponent(Owner, part);
            }
        }
        last = w;
    }
    return last;
}
