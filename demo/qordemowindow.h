// The demo designer's main window: the design stage in the middle, the
// palette and the component tree on the left, the inspector on the right.
#pragma once

#include "designer/qordesignintf.h"

#include <QMainWindow>

#include <memory>

class QAction;
class QListWidget;
class TQorDesignManager;
class QTreeWidget;
class QTreeWidgetItem;
class QWidget;

class QorDemoWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit QorDemoWindow(QWidget *parent = nullptr);
    ~QorDemoWindow() override;

    // The form the user designs.
    QWidget *stage() const { return m_stage; }
    QTreeWidget *componentTree() const { return m_tree; }
    QListWidget *paletteList() const { return m_palette; }
    // The published properties of the component chosen in the tree.
    QTreeWidget *propertyList() const { return m_properties; }
    // The design manager of the stage and the switch that turns designing
    // on and off.
    TQorDesignManager *designManager() const { return m_manager; }
    QAction *designAction() const { return m_designAction; }

private:
    QWidget *createStage();
    void fillPalette();
    void fillComponentTree();
    void addTreeNodes(QTreeWidgetItem *parent, QObject *object);
    void showProperties(QObject *component);

    QWidget *m_stage = nullptr;
    QListWidget *m_palette = nullptr;
    QTreeWidget *m_tree = nullptr;
    QTreeWidget *m_properties = nullptr;
    TQorDesignManager *m_manager = nullptr;
    QAction *m_designAction = nullptr;
    // Stands in for the design center until it comes: the palette's chosen
    // class is the one a click on the stage inserts.
    class DemoCenter;
    std::unique_ptr<DemoCenter> m_center;
};
