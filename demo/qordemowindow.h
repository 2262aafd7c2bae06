// The demo designer's main window: the design stage in the middle, the
// palette and the component tree on the left, the inspector on the right.
#pragma once

#include <QMainWindow>

class QListWidget;
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
};
