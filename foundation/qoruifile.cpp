// SPDX-License-Identifier: MIT
#include "foundation/qoruifile.h"

#include "foundation/qorclasses.h"
#include "foundation/qorclasses_p.h"
#include "foundation/qorcomponents.h"
#include "foundation/qordesignerxml_p.h"
#include "foundation/qorerror.h"
#include "foundation/qorlogging_p.h"
#include "foundation/qorvaluecheck_p.h"
#include "foundation/vhosysutils.h"

#include <QCoreApplication>
#include <QFile>
#include <QFormLayout>
#include <QGridLayout>
#include <QMap>
#include <QMetaEnum>
#include <QPointer>
#include <QSaveFile>
#include <QScrollArea>
#include <QSet>
#include <QSpacerItem>
#include <QStackedWidget>
#include <QStyle>
#include <QStyleOption>
#include <QTabWidget>
#include <QToolBox>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <memory>

using QorDesignerXml::Dialect;

namespace {

// ---- Writing -------------------------------------------------------------

// Qt's widget classes as Qt Designer knows them; any other class is a
// custom widget to Designer and to uic.
bool isDesignerClass(const char *ClassName)
{
    static const QSet<QByteArray> classes{
        "QWidget", "QFrame", "QLabel", "QPushButton", "QToolButton", "QCheckBox", "QRadioButton",
        "QCommandLinkButton", "QDialogButtonBox", "QLineEdit", "QTextEdit", "QPlainTextEdit", "QTextBrowser",
        "QComboBox", "QFontComboBox", "QSpinBox", "QDoubleSpinBox", "QSlider", "QDial", "QScrollBar",
        "QProgressBar", "QDateEdit", "QTimeEdit", "QDateTimeEdit", "QKeySequenceEdit", "QGroupBox", "QTabWidget",
        "QStackedWidget", "QToolBox", "QScrollArea", "QListWidget", "QTreeWidget", "QTableWidget", "QListView",
        "QTreeView", "QTableView", "QColumnView", "QUndoView", "QCalendarWidget", "QLCDNumber", "QGraphicsView",
        "QMdiArea", "QDockWidget", "QSplitter", "QMainWindow", "QDialog", "QMenuBar", "QStatusBar", "QToolBar"};
    return classes.contains(QByteArray(ClassName));
}

bool isIdentifier(const QString &Name)
{
    if (Name.isEmpty() || !(Name.at(0).isLetter() || Name.at(0) == QLatin1Char('_')))
        return false;
    return std::all_of(Name.begin(), Name.end(), [](QChar c) { return c.isLetterOrNumber() || c == QLatin1Char('_'); });
}

class FormWriter
{
public:
    FormWriter(QWidget *Stage, QXmlStreamWriter &Xml)
        : m_stage(Stage)
        , m_xml(Xml)
    {
        for (QObject *component : ComponentList(Stage)) {
            if (component->isWidgetType())
                m_owned.insert(component);
            else
                qCInfo(lcQorFoundation).noquote() << "Form file: left out" << component->objectName()
                                                  << "- a form file holds widgets only";
        }
    }

    void writeForm()
    {
        const QString name = isIdentifier(m_stage->objectName()) ? m_stage->objectName() : QStringLiteral("Form");
        m_xml.writeStartElement(QStringLiteral("ui"));
        m_xml.writeAttribute(QStringLiteral("version"), QStringLiteral("4.0"));
        m_xml.writeTextElement(QStringLiteral("class"), name);
        m_xml.writeStartElement(QStringLiteral("widget"));
        m_xml.writeAttribute(QStringLiteral("class"), QStringLiteral("QWidget"));
        m_xml.writeAttribute(QStringLiteral("name"), name);
        m_xml.writeStartElement(QStringLiteral("property"));
        m_xml.writeAttribute(QStringLiteral("name"), QStringLiteral("geometry"));
        m_xml.writeStartElement(QStringLiteral("rect"));
        for (const auto &[field, value] : {std::pair{"x", 0}, {"y", 0}, {"width", m_stage->width()}, {"height", m_stage->height()}})
            m_xml.writeTextElement(QLatin1String(field), QString::number(value));
        m_xml.writeEndElement();
        m_xml.writeEndElement();
        if (!m_stage->windowTitle().isEmpty())
            writeStringProperty(QStringLiteral("windowTitle"), m_stage->windowTitle());
        writeChildren(m_stage, 0);
        m_xml.writeEndElement();
        writeCustomWidgets();
        m_xml.writeEmptyElement(QStringLiteral("resources"));
        m_xml.writeEmptyElement(QStringLiteral("connections"));
        m_xml.writeEndElement();
    }

private:
    void writeStringProperty(const QString &Name, const QString &Value)
    {
        m_xml.writeStartElement(QStringLiteral("property"));
        m_xml.writeAttribute(QStringLiteral("name"), Name);
        m_xml.writeTextElement(QStringLiteral("string"), Value);
        m_xml.writeEndElement();
    }

    // The widgets right under Widget that the form shows as its children,
    // other than pages; widgets that are no components are looked through.
    void writeChildren(QWidget *Widget, int Depth)
    {
        QStringList stacking;
        collectChildren(Widget, Depth, stacking);
        // The order in which the loader raises them: the stacking order the
        // elements are written in already.
        for (const QString &name : std::as_const(stacking))
            m_xml.writeTextElement(QStringLiteral("zorder"), name);
    }

    void collectChildren(QWidget *Widget, int Depth, QStringList &Stacking)
    {
        if (Depth > QorLimits::kMaxComponentDepth)
            return;
        for (QObject *child : DesignChildren(Widget)) {
            auto *w = qobject_cast<QWidget *>(child);
            if (!w || w->parentWidget() != Widget)
                continue;
            if (m_owned.contains(w)) {
                writeComponent(w, Depth + 1);
                Stacking.append(w->objectName());
            } else {
                collectChildren(w, Depth + 1, Stacking);
            }
        }
    }

    // A page of a container and the attributes that name it.
    struct Page
    {
        QWidget *widget;
        QList<std::pair<QString, QString>> attributes;
    };

    QList<Page> pagesOf(QWidget *Container)
    {
        QList<Page> pages;
        if (auto *tabs = qobject_cast<QTabWidget *>(Container)) {
            for (int i = 0; i < tabs->count(); ++i) {
                Page page{tabs->widget(i), {{QStringLiteral("title"), tabs->tabText(i)}}};
                if (!tabs->tabToolTip(i).isEmpty())
                    page.attributes.append({QStringLiteral("toolTip"), tabs->tabToolTip(i)});
                pages.append(page);
            }
        } else if (auto *box = qobject_cast<QToolBox *>(Container)) {
            for (int i = 0; i < box->count(); ++i) {
                Page page{box->widget(i), {{QStringLiteral("label"), box->itemText(i)}}};
                if (!box->itemToolTip(i).isEmpty())
                    page.attributes.append({QStringLiteral("toolTip"), box->itemToolTip(i)});
                pages.append(page);
            }
        } else if (auto *stack = qobject_cast<QStackedWidget *>(Container)) {
            for (int i = 0; i < stack->count(); ++i)
                pages.append(Page{stack->widget(i), {}});
        }
        return pages;
    }

    // One component with what it holds; a page of a container (Page not
    // null) carries the attributes that name it instead of a geometry.
    void writeComponent(QWidget *Widget, int Depth, const Page *AsPage = nullptr)
    {
        const QMetaObject *meta = Widget->metaObject();
        if (!isDesignerClass(meta->className()))
            m_custom.insert(QByteArray(meta->className()), meta);
        m_xml.writeStartElement(QStringLiteral("widget"));
        m_xml.writeAttribute(QStringLiteral("class"), QString::fromLatin1(meta->className()));
        m_xml.writeAttribute(QStringLiteral("name"), Widget->objectName());
        QorDesignerXml::writeProperties(m_xml, Widget, Dialect::FormFile, !AsPage);
        if (AsPage) {
            for (const auto &[name, value] : AsPage->attributes) {
                m_xml.writeStartElement(QStringLiteral("attribute"));
                m_xml.writeAttribute(QStringLiteral("name"), name);
                m_xml.writeTextElement(QStringLiteral("string"), value);
                m_xml.writeEndElement();
            }
        }
        if (Depth <= QorLimits::kMaxComponentDepth)
            writeContents(Widget, Depth);
        m_xml.writeEndElement();
    }

    void writeContents(QWidget *Widget, int Depth)
    {
        if (qobject_cast<QTabWidget *>(Widget) || qobject_cast<QToolBox *>(Widget) || qobject_cast<QStackedWidget *>(Widget)) {
            for (const Page &page : pagesOf(Widget)) {
                if (m_owned.contains(page.widget))
                    writeComponent(page.widget, Depth + 1, &page);
            }
            return;
        }
        auto *area = qobject_cast<QScrollArea *>(Widget);
        if (!area) {
            writeChildren(Widget, Depth);
            return;
        }
        QWidget *contents = area->widget();
        if (!contents)
            return;
        if (m_owned.contains(contents)) {
            writeComponent(contents, Depth + 1);
            return;
        }
        // The scroll area's own contents widget: Designer's scroll area
        // holds one, so it is written under a name that reads back as an
        // inner part.
        m_xml.writeStartElement(QStringLiteral("widget"));
        m_xml.writeAttribute(QStringLiteral("class"), QStringLiteral("QWidget"));
        m_xml.writeAttribute(QStringLiteral("name"), QLatin1String("qt_") + Widget->objectName() + QLatin1String("_contents"));
        QorDesignerXml::writeProperties(m_xml, contents, Dialect::FormFile);
        writeChildren(contents, Depth + 1);
        m_xml.writeEndElement();
    }

    // Each class that is not Qt's own, based on its nearest class that is.
    void writeCustomWidgets()
    {
        if (m_custom.isEmpty())
            return;
        m_xml.writeStartElement(QStringLiteral("customwidgets"));
        for (auto it = m_custom.cbegin(); it != m_custom.cend(); ++it) {
            const QMetaObject *base = it.value()->superClass();
            while (base && !isDesignerClass(base->className()))
                base = base->superClass();
            m_xml.writeStartElement(QStringLiteral("customwidget"));
            m_xml.writeTextElement(QStringLiteral("class"), QString::fromLatin1(it.key()));
            m_xml.writeTextElement(QStringLiteral("extends"), base ? QString::fromLatin1(base->className()) : QStringLiteral("QWidget"));
            m_xml.writeTextElement(QStringLiteral("header"), QString::fromLatin1(it.key()).toLower() + QLatin1String(".h"));
            m_xml.writeEndElement();
        }
        m_xml.writeEndElement();
    }

    QWidget *m_stage;
    QXmlStreamWriter &m_xml;
    QSet<const QObject *> m_owned;
    QMap<QByteArray, const QMetaObject *> m_custom;
};

} // namespace

QString UiTextOf(QWidget *Stage)
{
    QString text;
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(1);
    xml.writeStartDocument();
    FormWriter(Stage, xml).writeForm();
    xml.writeEndDocument();
    return text;
}

void ExportUiFile(QWidget *Stage, const QString &FileName)
{
    const QByteArray bytes = UiTextOf(Stage).toUtf8();
    QSaveFile file(FileName);
    if (!file.open(QIODevice::WriteOnly))
        throw EQorError(QStringLiteral("Cannot write the form file %1: %2").arg(FileName, file.errorString()));
    if (file.write(bytes) != bytes.size() || !file.commit())
        throw EQorError(QStringLiteral("Cannot write the form file %1: %2").arg(FileName, file.errorString()));
}

namespace {

// ---- Reading -------------------------------------------------------------

// Positions in a grid or form layout beyond any form's are damage: Qt's
// layouts would make room for every row up to them.
constexpr int kMaxLayoutCell = 10000;

int cellAttribute(const QXmlStreamAttributes &Attributes, QLatin1String Name, int Default, int Lowest)
{
    if (!Attributes.hasAttribute(Name))
        return Default;
    bool ok = false;
    const int value = Attributes.value(Name).toInt(&ok);
    if (!ok || value < Lowest || value >= kMaxLayoutCell)
        throw EReadError(QStringLiteral("The form file places a layout item at %1 %2").arg(Name, Attributes.value(Name)));
    return value;
}

// A list of numbers such as a layout's stretch ("1,0,2").
QList<int> numberList(const QXmlStreamAttributes &Attributes, QLatin1String Name)
{
    QList<int> numbers;
    const QStringList parts = Attributes.value(Name).toString().split(QLatin1Char(','), Qt::SkipEmptyParts);
    if (parts.size() > kMaxLayoutCell)
        throw EReadError(QStringLiteral("The form file gives a layout %1 for too many cells").arg(Name));
    for (const QString &part : parts)
        numbers.append(std::clamp(part.trimmed().toInt(), 0, 10000));
    return numbers;
}

// Where an item sits in its layout.
struct Cell
{
    int row = 0;
    int column = 0;
    int rowSpan = 1;
    int columnSpan = 1;
    Qt::Alignment alignment;
};

QFormLayout::ItemRole formRole(const Cell &At)
{
    if (At.columnSpan > 1)
        return QFormLayout::SpanningRole;
    return At.column == 0 ? QFormLayout::LabelRole : QFormLayout::FieldRole;
}

// A cell a form layout has filled already keeps its first item.
bool formCellTaken(QFormLayout *Form, const Cell &At)
{
    return At.row < Form->rowCount() && Form->itemAt(At.row, formRole(At));
}

// Adds a widget, a layout or a spacer to Layout at a cell, as Qt's own
// loader does; false when the cell is taken and the item was not added.
bool addToLayout(QLayout *Layout, QWidget *Widget, QLayout *Inner, QSpacerItem *Spacer, const Cell &At)
{
    if (auto *grid = qobject_cast<QGridLayout *>(Layout)) {
        if (Widget)
            grid->addWidget(Widget, At.row, At.column, At.rowSpan, At.columnSpan, At.alignment);
        else if (Inner)
            grid->addLayout(Inner, At.row, At.column, At.rowSpan, At.columnSpan, At.alignment);
        else
            grid->addItem(Spacer, At.row, At.column, At.rowSpan, At.columnSpan, At.alignment);
        return true;
    }
    if (auto *form = qobject_cast<QFormLayout *>(Layout)) {
        if (formCellTaken(form, At))
            return false;
        if (Widget)
            form->setWidget(At.row, formRole(At), Widget);
        else if (Inner)
            form->setLayout(At.row, formRole(At), Inner);
        else
            form->setItem(At.row, formRole(At), Spacer);
        return true;
    }
    auto *box = static_cast<QBoxLayout *>(Layout);
    if (Widget) {
        box->addWidget(Widget, 0, At.alignment);
    } else if (Inner) {
        box->addLayout(Inner);
        box->setAlignment(Inner, At.alignment);
    } else {
        box->addItem(Spacer);
    }
    return true;
}

// A new layout of a class Designer writes; null for another class.
QLayout *newLayout(const QString &ClassName)
{
    if (ClassName == QLatin1String("QGridLayout"))
        return new QGridLayout;
    if (ClassName == QLatin1String("QHBoxLayout"))
        return new QHBoxLayout;
    if (ClassName == QLatin1String("QVBoxLayout"))
        return new QVBoxLayout;
    if (ClassName == QLatin1String("QFormLayout"))
        return new QFormLayout;
    return nullptr;
}

// The text of the value inside the property element Xml stands on; Xml is
// left at the property's end.
QString valueText(QXmlStreamReader &Xml)
{
    QString text;
    if (Xml.readNextStartElement()) {
        text = Xml.readElementText(QXmlStreamReader::SkipChildElements).trimmed();
        Xml.skipCurrentElement();
    }
    return text;
}

class FormReader
{
public:
    FormReader(QXmlStreamReader &Xml, QStringList &Skipped)
        : m_xml(Xml)
        , m_skipped(Skipped)
        , m_holder(std::make_unique<QWidget>())
    {
    }

    // Reads the root widget element Xml stands on into the holder.
    void readRoot(const QString &RootClass)
    {
        readBody(m_holder.get(), 2, RootClass == QLatin1String("QMainWindow") ? Body::MainWindow : Body::Form);
    }

    // Lays the form out at its size as Qt shows it, then drops the layouts:
    // the widgets keep the places they were given.
    void layOut(const QFont &Font)
    {
        QWidget *holder = m_holder.get();
        holder->setAttribute(Qt::WA_DontShowOnScreen);
        holder->setFont(Font);
        holder->ensurePolished();
        holder->resize(m_formSize.isEmpty() ? holder->sizeHint() : m_formSize);
        holder->show();
        showEveryPage(holder);
        settle();
        for (const QPointer<QLayout> &layout : std::as_const(m_layouts))
            delete layout.data();
        holder->hide();
    }

    // Moves the form's widgets onto the stage, owned by it.
    void moveTo(QWidget *Stage)
    {
        QList<QWidget *> tops;
        for (QObject *child : m_holder->children()) {
            if (auto *w = qobject_cast<QWidget *>(child))
                tops.append(w);
        }
        for (QWidget *w : std::as_const(tops))
            w->setParent(Stage);
        for (const QPointer<QWidget> &w : std::as_const(m_made)) {
            // A name reserved for inner parts stays one (a scroll area's
            // contents); every other widget of the form is a component.
            if (!w || w->objectName().startsWith(QLatin1String("qt_")))
                continue;
            w->setObjectName(freeName(w, Stage));
            InsertComponent(Stage, w);
        }
        for (QWidget *w : std::as_const(tops)) {
            if (Stage->isVisible() && !m_hiddenByForm.contains(w))
                w->show();
        }
    }

private:
    enum class Body { Widget, Form, MainWindow, Central };

    static QString freeName(QWidget *Widget, QWidget *Stage)
    {
        const QString name = Widget->objectName();
        if (!isIdentifier(name))
            return GetUniqueName(classNameWithoutPrefix(QString::fromLatin1(Widget->metaObject()->className())), Stage);
        if (!CompNameExists(name, Stage))
            return name;
        qsizetype stem = name.size();
        while (stem > 0 && name.at(stem - 1).isDigit())
            --stem;
        return GetUniqueName(name.left(stem), Stage);
    }

    // Reads the elements inside a widget element up to its end; for a
    // container's page, answers the attributes that name it.
    QMap<QString, QString> readBody(QWidget *Widget, int Depth, Body Kind)
    {
        QorDesignerXml::checkDepth(Depth);
        QMap<QString, QString> attributes;
        QStringList stacking;
        int currentIndex = -1;
        bool central = false;
        while (m_xml.readNextStartElement()) {
            const auto element = m_xml.name();
            if (element == QLatin1String("property")) {
                readWidgetProperty(Widget, Kind, currentIndex);
            } else if (element == QLatin1String("attribute")) {
                const QString name = m_xml.attributes().value(QLatin1String("name")).toString();
                attributes.insert(name, valueText(m_xml));
            } else if (element == QLatin1String("widget")) {
                // A main window's central widget is the form's body.
                if (Kind == Body::MainWindow && !central
                    && m_xml.attributes().value(QLatin1String("class")) == QLatin1String("QWidget")) {
                    central = true;
                    readBody(Widget, Depth + 1, Body::Central);
                } else {
                    readWidget(Widget, Depth + 1);
                }
            } else if (element == QLatin1String("layout") && !Widget->layout()) {
                QLayout *layout = newLayout(m_xml.attributes().value(QLatin1String("class")).toString());
                if (!layout) {
                    skipLayout();
                    continue;
                }
                Widget->setLayout(layout);
                // Qt's loader fixes a layout's margins when it makes it: a
                // window's for the form and for a container's pages (made
                // without a parent), a child widget's for any other,
                // unless the form names others.
                QWidget *container = Widget->parentWidget();
                QStyleOption window;
                if (Widget == m_holder.get() || qobject_cast<QTabWidget *>(container) || qobject_cast<QStackedWidget *>(container)
                    || qobject_cast<QToolBox *>(container))
                    window.state |= QStyle::State_Window;
                const QStyle *style = Widget->style();
                layout->setContentsMargins(style->pixelMetric(QStyle::PM_LayoutLeftMargin, &window),
                                           style->pixelMetric(QStyle::PM_LayoutTopMargin, &window),
                                           style->pixelMetric(QStyle::PM_LayoutRightMargin, &window),
                                           style->pixelMetric(QStyle::PM_LayoutBottomMargin, &window));
                m_layouts.append(layout);
                readLayout(layout, Widget, Depth + 1);
            } else if (element == QLatin1String("zorder")) {
                stacking.append(m_xml.readElementText(QXmlStreamReader::SkipChildElements).trimmed());
            } else {
                m_xml.skipCurrentElement();
            }
        }
        // The pages are there now.
        if (currentIndex >= 0) {
            if (auto *tabs = qobject_cast<QTabWidget *>(Widget))
                tabs->setCurrentIndex(currentIndex);
            else if (auto *stack = qobject_cast<QStackedWidget *>(Widget))
                stack->setCurrentIndex(currentIndex);
            else if (auto *box = qobject_cast<QToolBox *>(Widget))
                box->setCurrentIndex(currentIndex);
        }
        for (const QString &name : std::as_const(stacking)) {
            if (QWidget *child = Widget->findChild<QWidget *>(name, Qt::FindDirectChildrenOnly))
                child->raise();
        }
        return attributes;
    }

    void readWidgetProperty(QWidget *Widget, Body Kind, int &CurrentIndex)
    {
        const auto name = m_xml.attributes().value(QLatin1String("name"));
        if (Kind == Body::Widget && name == QLatin1String("currentIndex")
            && (qobject_cast<QTabWidget *>(Widget) || qobject_cast<QStackedWidget *>(Widget) || qobject_cast<QToolBox *>(Widget))) {
            CurrentIndex = valueText(m_xml).toInt();
            return;
        }
        if (Kind == Body::Widget) {
            QorDesignerXml::readProperty(m_xml, Widget, Dialect::FormFile);
            return;
        }
        // Of the form itself only its size counts: the stage keeps its own
        // properties.
        if (Kind != Body::Central && name == QLatin1String("geometry")) {
            const QMetaProperty geometry = QWidget::staticMetaObject.property(QWidget::staticMetaObject.indexOfProperty("geometry"));
            if (m_xml.readNextStartElement()) {
                m_formSize = QorDesignerXml::readValue(m_xml, geometry, Dialect::FormFile).toRect().size();
                m_xml.skipCurrentElement();
            }
            return;
        }
        m_xml.skipCurrentElement();
    }

    QWidget *readWidget(QWidget *Parent, int Depth)
    {
        QorDesignerXml::checkDepth(Depth);
        QString className = m_xml.attributes().value(QLatin1String("class")).toString();
        const QString name = m_xml.attributes().value(QLatin1String("name")).toString();
        // Designer's line is a frame drawn as one.
        if (className == QLatin1String("Line"))
            className = QStringLiteral("QFrame");
        const QMetaObject *registered = GetClass(className);
        std::unique_ptr<QObject> made(NewRegisteredInstance(registered));
        auto *widget = qobject_cast<QWidget *>(made.get());
        if (!widget) {
            qCInfo(lcQorFoundation).noquote() << "Form file: skipped widget" << name << "and its contents - class"
                                              << className << (registered ? "makes no widget" : "is not registered");
            m_skipped.append(QStringLiteral("%1 (%2)").arg(name, className));
            m_xml.skipCurrentElement();
            return nullptr;
        }
        made.release();
        widget->setParent(Parent);
        widget->setObjectName(name);
        m_made.append(widget);
        const QMap<QString, QString> attributes = readBody(widget, Depth + 1, Body::Widget);
        if (Parent == m_holder.get() && widget->isHidden() && widget->testAttribute(Qt::WA_WState_ExplicitShowHide))
            m_hiddenByForm.insert(widget);
        placeInContainer(Parent, widget, attributes);
        return widget;
    }

    static void placeInContainer(QWidget *Container, QWidget *Page, const QMap<QString, QString> &Attributes)
    {
        if (auto *tabs = qobject_cast<QTabWidget *>(Container)) {
            const int index = tabs->addTab(Page, Attributes.value(QStringLiteral("title")));
            tabs->setTabToolTip(index, Attributes.value(QStringLiteral("toolTip")));
        } else if (auto *box = qobject_cast<QToolBox *>(Container)) {
            const int index = box->addItem(Page, Attributes.value(QStringLiteral("label")));
            box->setItemToolTip(index, Attributes.value(QStringLiteral("toolTip")));
        } else if (auto *stack = qobject_cast<QStackedWidget *>(Container)) {
            stack->addWidget(Page);
        } else if (auto *area = qobject_cast<QScrollArea *>(Container)) {
            area->setWidget(Page);
        }
    }

    // Reads the layout element Xml stands on into Layout, whose widgets go
    // to Widget.
    void readLayout(QLayout *Layout, QWidget *Widget, int Depth)
    {
        QorDesignerXml::checkDepth(Depth);
        const QXmlStreamAttributes attributes = m_xml.attributes();
        Layout->setObjectName(attributes.value(QLatin1String("name")).toString());
        QMargins margins = Layout->contentsMargins();
        bool marginsGiven = false;
        while (m_xml.readNextStartElement()) {
            if (m_xml.name() == QLatin1String("property")) {
                const auto name = m_xml.attributes().value(QLatin1String("name"));
                const auto margin = [&](auto Set) {
                    Set(std::clamp(valueText(m_xml).toInt(), 0, QWIDGETSIZE_MAX));
                    marginsGiven = true;
                };
                if (name == QLatin1String("leftMargin"))
                    margin([&](int v) { margins.setLeft(v); });
                else if (name == QLatin1String("topMargin"))
                    margin([&](int v) { margins.setTop(v); });
                else if (name == QLatin1String("rightMargin"))
                    margin([&](int v) { margins.setRight(v); });
                else if (name == QLatin1String("bottomMargin"))
                    margin([&](int v) { margins.setBottom(v); });
                else if (name == QLatin1String("margin"))
                    margin([&](int v) { margins = QMargins(v, v, v, v); });
                else
                    QorDesignerXml::readProperty(m_xml, Layout, Dialect::FormFile);
            } else if (m_xml.name() == QLatin1String("item")) {
                readItem(Layout, Widget, Depth + 1);
            } else {
                m_xml.skipCurrentElement();
            }
        }
        if (marginsGiven)
            Layout->setContentsMargins(margins);
        applyStretch(Layout, attributes);
    }

    static void applyStretch(QLayout *Layout, const QXmlStreamAttributes &Attributes)
    {
        if (auto *box = qobject_cast<QBoxLayout *>(Layout)) {
            const QList<int> stretch = numberList(Attributes, QLatin1String("stretch"));
            for (int i = 0; i < std::min(int(stretch.size()), box->count()); ++i)
                box->setStretch(i, stretch.at(i));
        } else if (auto *grid = qobject_cast<QGridLayout *>(Layout)) {
            const auto each = [&](const char *Name, auto Apply) {
                const QList<int> values = numberList(Attributes, QLatin1String(Name));
                for (int i = 0; i < values.size(); ++i)
                    Apply(i, values.at(i));
            };
            each("rowstretch", [grid](int i, int v) { grid->setRowStretch(i, v); });
            each("columnstretch", [grid](int i, int v) { grid->setColumnStretch(i, v); });
            each("rowminimumheight", [grid](int i, int v) { grid->setRowMinimumHeight(i, v); });
            each("columnminimumwidth", [grid](int i, int v) { grid->setColumnMinimumWidth(i, v); });
        }
    }

    void readItem(QLayout *Layout, QWidget *Widget, int Depth)
    {
        QorDesignerXml::checkDepth(Depth);
        const QXmlStreamAttributes attributes = m_xml.attributes();
        Cell at;
        at.row = cellAttribute(attributes, QLatin1String("row"), 0, 0);
        at.column = cellAttribute(attributes, QLatin1String("column"), 0, 0);
        at.rowSpan = cellAttribute(attributes, QLatin1String("rowspan"), 1, -1);
        at.columnSpan = cellAttribute(attributes, QLatin1String("colspan"), 1, -1);
        // A span of nothing takes its one cell.
        at.rowSpan = at.rowSpan == 0 ? 1 : at.rowSpan;
        at.columnSpan = at.columnSpan == 0 ? 1 : at.columnSpan;
        if (attributes.hasAttribute(QLatin1String("alignment"))) {
            QStringList keys;
            for (const QString &key : attributes.value(QLatin1String("alignment")).toString().split(QLatin1Char('|'), Qt::SkipEmptyParts))
                keys.append(key.mid(key.lastIndexOf(QLatin1Char(':')) + 1).trimmed());
            bool ok = false;
            const int value = QMetaEnum::fromType<Qt::Alignment>().keysToValue(keys.join(QLatin1Char('|')).toLatin1().constData(), &ok);
            if (ok)
                at.alignment = Qt::Alignment(value);
        }
        while (m_xml.readNextStartElement()) {
            if (m_xml.name() == QLatin1String("widget")) {
                if (QWidget *child = readWidget(Widget, Depth + 1))
                    addToLayout(Layout, child, nullptr, nullptr, at);
            } else if (m_xml.name() == QLatin1String("layout")) {
                QLayout *inner = newLayout(m_xml.attributes().value(QLatin1String("class")).toString());
                if (!inner) {
                    skipLayout();
                    continue;
                }
                // Held by the outer layout from here on, also when reading fails.
                if (!addToLayout(Layout, nullptr, inner, nullptr, at)) {
                    delete inner;
                    m_xml.skipCurrentElement();
                    continue;
                }
                readLayout(inner, Widget, Depth + 1);
            } else if (m_xml.name() == QLatin1String("spacer")) {
                QSpacerItem *spacer = readSpacer();
                if (!addToLayout(Layout, nullptr, nullptr, spacer, at))
                    delete spacer;
            } else {
                m_xml.skipCurrentElement();
            }
        }
    }

    // A layout of a class no loader knows: its widgets are not made.
    void skipLayout()
    {
        qCInfo(lcQorFoundation).noquote() << "Form file: skipped a layout of class"
                                          << m_xml.attributes().value(QLatin1String("class")).toString();
        m_xml.skipCurrentElement();
    }

    // A spacer takes room in its layout as Qt's loader gives it; it is
    // not kept.
    QSpacerItem *readSpacer()
    {
        Qt::Orientation orientation = Qt::Horizontal;
        QSizePolicy::Policy sizeType = QSizePolicy::Expanding;
        QSize hint(0, 0);
        while (m_xml.readNextStartElement()) {
            if (m_xml.name() != QLatin1String("property")) {
                m_xml.skipCurrentElement();
                continue;
            }
            const QString name = m_xml.attributes().value(QLatin1String("name")).toString();
            if (name == QLatin1String("sizeHint")) {
                const QMetaProperty size = QWidget::staticMetaObject.property(QWidget::staticMetaObject.indexOfProperty("minimumSize"));
                if (m_xml.readNextStartElement()) {
                    hint = QorDesignerXml::readValue(m_xml, size, Dialect::FormFile).toSize();
                    m_xml.skipCurrentElement();
                }
                continue;
            }
            const QString text = valueText(m_xml);
            if (name == QLatin1String("orientation")) {
                orientation = text.endsWith(QLatin1String("Vertical")) ? Qt::Vertical : Qt::Horizontal;
            } else if (name == QLatin1String("sizeType")) {
                bool ok = false;
                const QByteArray key = text.mid(text.lastIndexOf(QLatin1Char(':')) + 1).toLatin1();
                const int value = QMetaEnum::fromType<QSizePolicy::Policy>().keyToValue(key.constData(), &ok);
                if (ok)
                    sizeType = QSizePolicy::Policy(value);
            }
        }
        const int width = std::clamp(hint.width(), 0, QWIDGETSIZE_MAX);
        const int height = std::clamp(hint.height(), 0, QWIDGETSIZE_MAX);
        return orientation == Qt::Horizontal ? new QSpacerItem(width, height, sizeType, QSizePolicy::Minimum)
                                             : new QSpacerItem(width, height, QSizePolicy::Minimum, sizeType);
    }

    // Shows each page of every container in turn, so that each is laid out
    // at the size its container gives it, then the page the form chose.
    void showEveryPage(QWidget *Widget)
    {
        const auto eachPage = [this](int Count, int Current, auto Choose, auto PageAt) {
            for (int i = 0; i < Count; ++i) {
                Choose(i);
                QWidget *page = PageAt(i);
                if (QLayout *stack = page->parentWidget() ? page->parentWidget()->layout() : nullptr) {
                    stack->invalidate();
                    stack->activate();
                }
                settle();
                showEveryPage(page);
            }
            if (Count > 0)
                Choose(std::max(Current, 0));
        };
        for (QObject *child : Widget->children()) {
            auto *w = qobject_cast<QWidget *>(child);
            if (!w)
                continue;
            if (auto *tabs = qobject_cast<QTabWidget *>(w))
                eachPage(tabs->count(), tabs->currentIndex(), [tabs](int i) { tabs->setCurrentIndex(i); }, [tabs](int i) { return tabs->widget(i); });
            else if (auto *stack = qobject_cast<QStackedWidget *>(w))
                eachPage(stack->count(), stack->currentIndex(), [stack](int i) { stack->setCurrentIndex(i); }, [stack](int i) { return stack->widget(i); });
            else if (auto *box = qobject_cast<QToolBox *>(w))
                eachPage(box->count(), box->currentIndex(), [box](int i) { box->setCurrentIndex(i); }, [box](int i) { return box->widget(i); });
            else
                showEveryPage(w);
        }
    }

    // Runs the layouts' pending requests until none is left.
    void settle()
    {
        for (int round = 0; round < 4; ++round) {
            bool changed = false;
            for (const QPointer<QLayout> &layout : std::as_const(m_layouts)) {
                if (layout)
                    changed = layout->activate() || changed;
            }
            QCoreApplication::sendPostedEvents(m_holder.get(), QEvent::LayoutRequest);
            for (const QPointer<QWidget> &w : std::as_const(m_made)) {
                if (w)
                    QCoreApplication::sendPostedEvents(w.data(), QEvent::LayoutRequest);
            }
            if (!changed)
                break;
        }
    }

    QXmlStreamReader &m_xml;
    QStringList &m_skipped;
    // The form is made here, away from the stage, until it is complete.
    std::unique_ptr<QWidget> m_holder;
    QList<QPointer<QWidget>> m_made;
    QList<QPointer<QLayout>> m_layouts;
    QSet<QWidget *> m_hiddenByForm;
    QSize m_formSize;
};

QStringList importUi(QXmlStreamReader &Xml, QWidget *Stage)
{
    if (!Xml.readNextStartElement() || Xml.name() != QLatin1String("ui")) {
        if (Xml.hasError())
            throw EReadError(QStringLiteral("The form file is damaged: %1 (line %2)").arg(Xml.errorString()).arg(Xml.lineNumber()));
        throw EReadError(QStringLiteral("Not a Qt Designer form: the document's root is <%1>, not <ui>").arg(Xml.name()));
    }
    QStringList skipped;
    FormReader reader(Xml, skipped);
    bool read = false;
    while (Xml.readNextStartElement()) {
        if (Xml.name() == QLatin1String("widget") && !read) {
            read = true;
            reader.readRoot(Xml.attributes().value(QLatin1String("class")).toString());
        } else {
            Xml.skipCurrentElement();
        }
    }
    // The whole document must be sound, not only the form's part.
    while (!Xml.atEnd())
        Xml.readNext();
    if (Xml.hasError() && Xml.error() != QXmlStreamReader::PrematureEndOfDocumentError)
        throw EReadError(QStringLiteral("The form file is damaged: %1 (line %2)").arg(Xml.errorString()).arg(Xml.lineNumber()));
    if (Xml.hasError())
        throw EReadError(QStringLiteral("The form file ends too early: %1").arg(Xml.errorString()));
    if (!read)
        throw EReadError(QStringLiteral("The form file holds no form widget"));
    reader.layOut(Stage->font());
    reader.moveTo(Stage);
    return skipped;
}

} // namespace

QStringList ImportUiText(const QString &Text, QWidget *Stage)
{
    if (Text.size() > QorLimits::kMaxTextBytes / 2)
        throw EReadError(QStringLiteral("The form file is too long"));
    QXmlStreamReader xml(Text);
    return importUi(xml, Stage);
}

QStringList ImportUiFile(const QString &FileName, QWidget *Stage)
{
    QFile file(FileName);
    if (!file.open(QIODevice::ReadOnly))
        throw EReadError(QStringLiteral("Cannot read the form file %1: %2").arg(FileName, file.errorString()));
    if (file.size() > QorLimits::kMaxTextBytes)
        throw EReadError(QStringLiteral("The form file %1 is too long").arg(FileName));
    // Read as bytes: the document's own declaration names its encoding.
    QXmlStreamReader xml(file.readAll());
    return importUi(xml, Stage);
}
