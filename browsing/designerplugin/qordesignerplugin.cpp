// SPDX-License-Identifier: MIT
#include "qordesignerplugin.h"

// The tree's header needs the design center declared.
#include "console/qordesignconsole.h"

#include "browsing/qorcomptreeview.h"
#include "browsing/qordsnsysreg.h"
#include "browsing/qorpallete.h"
#include "inspector/qorinspector.h"

#include <QFile>
#include <QXmlStreamWriter>

#include <algorithm>
#include <iterator>

namespace {

template<class T>
QWidget *create(QWidget *Parent)
{
    return new T(Parent);
}

// The widgets of the page Designer can hold. The page's other classes
// (the design center and manager, the popup menus, the class images) are
// no widgets that sit on a form: applications create them in code.
const TQorDesignerWidgetInfo knownWidgets[] = {
    {&TQorCompTreeView::staticMetaObject, "browsing/qorcomptreeview.h", "Component tree",
     "The components of the design stage as a tree, the stage at the root and its controls nested by parent. "
     "It follows and drives the design center's selection.",
     QSize(200, 300), &create<TQorCompTreeView>},
    {&TQorObjInspector::staticMetaObject, "inspector/qorinspector.h", "Object inspector",
     "The properties (and, on its Events tab, the signals) of the components selected in the design center, "
     "edited in place, by pick list or through a dialog.",
     QSize(250, 400), &create<TQorObjInspector>},
    {&TQorCompPalleteToolBar::staticMetaObject, "browsing/qorpallete.h", "Component palette",
     "A tool bar of the classes of one palette page: the class chosen is inserted where the design stage "
     "is clicked.",
     QSize(400, 32), &create<TQorCompPalleteToolBar>},
    {&TQorCompPalleteTab::staticMetaObject, "browsing/qorpallete.h", "Component palette pages",
     "The tabs of the palette pages; the tab chosen sets the page a component palette shows.",
     QSize(400, 28), &create<TQorCompPalleteTab>},
};

const TQorDesignerWidgetInfo *knownWidget(const QMetaObject *Class)
{
    const auto found = std::find_if(std::begin(knownWidgets), std::end(knownWidgets),
                                    [Class](const TQorDesignerWidgetInfo &w) { return w.Class == Class; });
    return found != std::end(knownWidgets) ? found : nullptr;
}

} // namespace

// ---- TQorDesignerWidget ---------------------------------------------------------

TQorDesignerWidget::TQorDesignerWidget(const TQorDesignerWidgetInfo &Info, QObject *Parent)
    : QObject(Parent)
    , m_info(Info)
{
}

QString TQorDesignerWidget::name() const
{
    return QString::fromLatin1(m_info.Class->className());
}

QString TQorDesignerWidget::group() const
{
    return QStringLiteral("QOR-DesignSys");
}

QString TQorDesignerWidget::toolTip() const
{
    return QString::fromUtf8(m_info.ToolTip);
}

QString TQorDesignerWidget::whatsThis() const
{
    return QString::fromUtf8(m_info.WhatsThis);
}

QString TQorDesignerWidget::includeFile() const
{
    return QString::fromLatin1(m_info.IncludeFile);
}

QIcon TQorDesignerWidget::icon() const
{
    // The library carries the class images as resources; without one
    // Designer shows its default icon.
    const QString file = QStringLiteral(":/qordesign/images/classes/") + name() + QStringLiteral(".png");
    return QFile::exists(file) ? QIcon(file) : QIcon();
}

QWidget *TQorDesignerWidget::createWidget(QWidget *parent)
{
    return m_info.Create(parent);
}

void TQorDesignerWidget::initialize(QDesignerFormEditorInterface *)
{
    m_initialized = true;
}

QString TQorDesignerWidget::domXml() const
{
    // The object name a new widget gets: the class name without its "TQor"
    // prefix, in lower camel case ("compTreeView").
    QString objectName = name();
    if (objectName.startsWith(QLatin1String("TQor")))
        objectName.remove(0, 4);
    if (!objectName.isEmpty())
        objectName[0] = objectName.at(0).toLower();

    QString xml;
    QXmlStreamWriter writer(&xml);
    writer.writeStartElement(QStringLiteral("ui"));
    writer.writeAttribute(QStringLiteral("language"), QStringLiteral("c++"));
    writer.writeStartElement(QStringLiteral("widget"));
    writer.writeAttribute(QStringLiteral("class"), name());
    writer.writeAttribute(QStringLiteral("name"), objectName);
    writer.writeStartElement(QStringLiteral("property"));
    writer.writeAttribute(QStringLiteral("name"), QStringLiteral("geometry"));
    writer.writeStartElement(QStringLiteral("rect"));
    writer.writeTextElement(QStringLiteral("x"), QStringLiteral("0"));
    writer.writeTextElement(QStringLiteral("y"), QStringLiteral("0"));
    writer.writeTextElement(QStringLiteral("width"), QString::number(m_info.DefaultSize.width()));
    writer.writeTextElement(QStringLiteral("height"), QString::number(m_info.DefaultSize.height()));
    writer.writeEndElement(); // rect
    writer.writeEndElement(); // property
    writer.writeEndElement(); // widget
    writer.writeEndElement(); // ui
    return xml;
}

// ---- TQorDesignerWidgetCollection -----------------------------------------------

TQorDesignerWidgetCollection::TQorDesignerWidgetCollection(QObject *Parent)
    : QObject(Parent)
{
    // Registering again changes nothing, whoever registered first.
    Register();
    for (const QMetaObject *c : RegisteredComponents(QStringLiteral("QOR-DesignSys"))) {
        if (const TQorDesignerWidgetInfo *info = knownWidget(c))
            m_widgets.append(new TQorDesignerWidget(*info, this));
    }
}
