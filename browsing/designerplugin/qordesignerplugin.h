// SPDX-License-Identifier: MIT
// The Qt Designer plugin: the widgets of the library's component page, as
// Designer's widget box shows them and uic writes them into a form's code.
#pragma once

#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <QIcon>
#include <QList>
#include <QObject>
#include <QSize>
#include <QString>

// What Designer needs to know of one widget class beyond its meta-object.
struct TQorDesignerWidgetInfo
{
    const QMetaObject *Class = nullptr;
    // The header an application includes, as installed.
    const char *IncludeFile = nullptr;
    const char *ToolTip = nullptr;
    const char *WhatsThis = nullptr;
    // The size a new widget has on a form.
    QSize DefaultSize;
    QWidget *(*Create)(QWidget *Parent) = nullptr;
};

// One widget class in Designer's widget box.
class TQorDesignerWidget : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    TQorDesignerWidget(const TQorDesignerWidgetInfo &Info, QObject *Parent);

    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override { return false; }
    QWidget *createWidget(QWidget *parent) override;
    bool isInitialized() const override { return m_initialized; }
    void initialize(QDesignerFormEditorInterface *core) override;
    QString domXml() const override;

private:
    TQorDesignerWidgetInfo m_info;
    bool m_initialized = false;
};

// The collection Designer loads: the widget classes registered on the page
// "QOR-DesignSys", in their registration order.
class TQorDesignerWidgetCollection : public QObject, public QDesignerCustomWidgetCollectionInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)

public:
    explicit TQorDesignerWidgetCollection(QObject *Parent = nullptr);

    QList<QDesignerCustomWidgetInterface *> customWidgets() const override { return m_widgets; }

private:
    QList<QDesignerCustomWidgetInterface *> m_widgets;
};
