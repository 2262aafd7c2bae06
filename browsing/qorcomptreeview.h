// SPDX-License-Identifier: MIT
// The component tree: the design stage's components as a tree (the stage
// at the root, its non-visual components, then its controls nested by
// parent) that follows and drives the design center's selection, renames
// components through the label editor and moves them up and down in their
// owner's order.
#pragma once

#include "qordesign_export.h"

#include "console/qorconsoleintf.h"
#include "foundation/qorcomponents.h"

#include <QFlags>
#include <QHash>
#include <QIcon>
#include <QList>
#include <QPointer>
#include <QTreeWidget>

class TQorDesignCenter;
class TQorCompTreeNode;
class TQorDesignClassList;

// Which kinds of component the tree lists.
enum TCompFilterStyle { cfComponent = 0x1, cfControl = 0x2 };
Q_DECLARE_FLAGS(TCompFilterStyles, TCompFilterStyle)
Q_DECLARE_OPERATORS_FOR_FLAGS(TCompFilterStyles)

class QORDESIGN_EXPORT TQorCompTreeView : public QTreeWidget, public IQorCompTreeView
{
    Q_OBJECT
    Q_INTERFACES(IQorCompTreeView)
    Q_CLASSINFO("QorDesignObject", "true")
    // Linked at run time, not in a form editor.
    Q_PROPERTY(QWidget *RootControl READ RootControl WRITE SetRootControl DESIGNABLE false)
    Q_PROPERTY(int CompFilterStyles READ compFilterStylesInt WRITE setCompFilterStylesInt)
    Q_PROPERTY(bool ShowKnownCompsOnly READ ShowKnownCompsOnly WRITE SetShowKnownCompsOnly)

public:
    explicit TQorCompTreeView(QWidget *Parent = nullptr);
    ~TQorCompTreeView() override;

    // IQorCompTreeView
    void SetConsoleCenter(TQorDesignCenter *Center) override;
    TComponentList SelectedComps() const override { return m_selectedComps; }
    void SetSelectedComps(const TComponentList &List) override;
    void Refresh() override;
    bool Dirty() const override { return m_dirty; }
    void SetDirty(bool Value) override { m_dirty = Value; }
    void SetPopupMenu(QMenu *Menu) override;

    TQorDesignCenter *ConsoleCenter() const;
    // The known classes and their images; referenced, not owned.
    TQorDesignClassList *ClassList() const { return m_classList; }
    void SetClassList(TQorDesignClassList *Value);
    // The control whose components are shown.
    QWidget *RootControl() const { return m_rootControl; }
    void SetRootControl(QWidget *Value);
    TCompFilterStyles CompFilterStyles() const { return m_filter; }
    void SetCompFilterStyles(TCompFilterStyles Value);
    bool ShowKnownCompsOnly() const { return m_showKnownCompsOnly; }
    void SetShowKnownCompsOnly(bool Value);

    // The node images: the four glyphs, then the class list's images.
    int ImageCount() const { return int(m_images.size()); }
    QIcon Image(int Index) const { return m_images.value(Index); }
    void RefreshImageList();

    void GenerateTree();
    void ReSelectComps();
    int GetClassIndex(const QMetaObject *Class) const;
    bool CompsIsKnown(const QObject *Component) const;
    bool CheckIfOutputThisComp(QObject *Component) const;
    // The first node, in the tree's order, of a component; null if none.
    QTreeWidgetItem *FindComponentNode(const QObject *Component) const;
    // The component a node stands for; null for none or one freed.
    QObject *NodeComponent(const QTreeWidgetItem *Node) const;
    // The image index a node has; -1 for none.
    int NodeImageIndex(const QTreeWidgetItem *Node) const;

    void MoveSelCompIndexesUp(int Delta = 1);
    void MoveSelCompIndexesDown(int Delta = 1);

Q_SIGNALS:
    // The nodes were made anew from the root control's components.
    void TreeGenerated();

protected:
    void ImportImagesFrom(const class TQorClassesImageList *ImageList, int StartIndex);
    // The text a component's node shows: its display name. A subclass that
    // shows translated labels answers them here; renaming through the
    // label editor then leaves the component's name alone.
    virtual QString CompDisplayName(QObject *Component) const;
    // The tree's selection changed: unless the tree made the change itself,
    // the selection list follows and the center hears of it.
    void Change();
    void FillSelectedComps();

    void mousePressEvent(QMouseEvent *Event) override;
    void mouseReleaseEvent(QMouseEvent *Event) override;
    void mouseDoubleClickEvent(QMouseEvent *Event) override;
    void contextMenuEvent(QContextMenuEvent *Event) override;

private:
    // A node's text: the display name, "[NoName]" for a blank one.
    QString nodeText(QObject *Component) const;
    TQorCompTreeNode *makeNode(QTreeWidgetItem *ParentNode, QObject *Component);
    void setNodeImage(TQorCompTreeNode *Node, int Index);
    int imageIndexOf(const QMetaObject *Class, QHash<const QMetaObject *, int> &Cache) const;
    void edited(QTreeWidgetItem *Node, int Column);
    void moveSelComps(int Delta);
    int compFilterStylesInt() const { return int(m_filter); }
    void setCompFilterStylesInt(int Value) { SetCompFilterStyles(TCompFilterStyles(Value)); }

    QPointer<TQorDesignCenter> m_center;
    TQorDesignClassList *m_classList = nullptr;
    QPointer<QWidget> m_rootControl;
    QPointer<QMenu> m_popupMenu;
    // The first node of each component, for look-ups by component.
    QHash<const QObject *, TQorCompTreeNode *> m_nodes;
    TComponentList m_selectedComps;
    QList<QIcon> m_images;
    TCompFilterStyles m_filter = TCompFilterStyles(cfComponent | cfControl);
    bool m_showKnownCompsOnly = true;
    bool m_dirty = false;
    bool m_updating = false;
};
