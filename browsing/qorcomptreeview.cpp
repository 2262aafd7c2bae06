// SPDX-License-Identifier: MIT
#include "browsing/qorcomptreeview.h"

#include "browsing/qorclassesman.h"
#include "browsing/qorimages.h"
#include "console/qorattribeditors.h"
#include "console/qorcommanderror_p.h"
#include "console/qorcompeditors.h"
#include "console/qordesignconsole.h"
#include "console/vhodesignintfimpls.h"
#include "designer/qordesignintf.h"
#include "foundation/qorerror.h"
#include "translation/qortransutils.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QItemSelection>
#include <QMenu>
#include <QMouseEvent>
#include <QScopeGuard>
#include <QScopedValueRollback>

namespace {

// The tree's glyphs, in the order of the first four images.
constexpr const char *GlyphNames[] = {"GlyphDefEmpty", "GlyphDefComp", "GlyphDefControl", "GlyphDefForm"};
constexpr int GlyphCount = 4;
constexpr int FormImage = 3;

const char *const NoNameText = QT_TRANSLATE_NOOP("QorDesign", "[NoName]");


// The parent under which a control shows: its nearest ancestor that is not
// an inner part of a composite widget (a tab widget's page sits in the
// tab widget's inner stack, a scroll area's content in its viewport).
QWidget *designParent(const QWidget *Control)
{
    QWidget *parent = Control->parentWidget();
    while (parent && IsInnerPart(parent) && parent->parentWidget())
        parent = parent->parentWidget();
    return parent;
}

} // namespace

// A node of the tree. Its tool tip, the label of the component's class,
// is read when shown, so that a change of language reaches it without a
// rebuild of thousands of nodes.
class TQorCompTreeNode final : public QTreeWidgetItem
{
public:
    TQorCompTreeNode(QObject *Component, const QString &Text)
        : QTreeWidgetItem(QStringList{Text})
        , component(Component)
        , cls(Component->metaObject())
    {
    }
    QVariant data(int Column, int Role) const override
    {
        if (Role == Qt::ToolTipRole && Column == 0)
            return ClassToTransedName(cls);
        return QTreeWidgetItem::data(Column, Role);
    }

    QPointer<QObject> component;
    const QMetaObject *cls;
    int imageIndex = -1;
};

TQorCompTreeView::TQorCompTreeView(QWidget *Parent)
    : QTreeWidget(Parent)
{
    setHeaderHidden(true);
    setColumnCount(1);
    // Ctrl adds and removes nodes, Shift takes in the visible nodes between.
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::SelectedClicked);
    setExpandsOnDoubleClick(true);
    setIconSize(QSize(16, 16));
    setUniformRowHeights(true);
    // The selection stays visible while another part of the designer has
    // the focus.
    QPalette pal = palette();
    pal.setColor(QPalette::Inactive, QPalette::Highlight, pal.color(QPalette::Active, QPalette::Highlight));
    pal.setColor(QPalette::Inactive, QPalette::HighlightedText, pal.color(QPalette::Active, QPalette::HighlightedText));
    setPalette(pal);
    ImportImagesFrom(nullptr, 0);
    connect(this, &QTreeWidget::itemSelectionChanged, this, &TQorCompTreeView::Change);
    connect(this, &QTreeWidget::itemChanged, this, &TQorCompTreeView::edited);
}

TQorCompTreeView::~TQorCompTreeView()
{
    // No selection reports while the nodes go.
    disconnect(this, nullptr, this, nullptr);
    m_updating = true;
    m_nodes.clear();
    clear();
}

TQorDesignCenter *TQorCompTreeView::ConsoleCenter() const
{
    return m_center;
}

void TQorCompTreeView::SetConsoleCenter(TQorDesignCenter *Center)
{
    if (m_center == Center)
        return;
    m_center = Center;
    if (Center && Center->DesignManager()) {
        m_rootControl = Center->DesignManager()->DesignStage();
        GenerateTree();
    }
    if (Center)
        SetPopupMenu(Center->DesignPopupMenu());
}

void TQorCompTreeView::SetSelectedComps(const TComponentList &List)
{
    m_selectedComps = List;
    ReSelectComps();
}

void TQorCompTreeView::Refresh()
{
    if (m_center)
        m_rootControl = m_center->GetDesignStage();
    GenerateTree();
    ReSelectComps();
}

void TQorCompTreeView::SetPopupMenu(QMenu *Menu)
{
    m_popupMenu = Menu;
}

void TQorCompTreeView::SetClassList(TQorDesignClassList *Value)
{
    if (m_classList == Value)
        return;
    m_classList = Value;
    if (Value && Value->Images() && Value->Images()->Count() >= GlyphCount)
        ImportImagesFrom(Value->Images(), 0);
}

void TQorCompTreeView::SetRootControl(QWidget *Value)
{
    if (m_rootControl == Value)
        return;
    m_rootControl = Value;
    GenerateTree();
}

void TQorCompTreeView::SetCompFilterStyles(TCompFilterStyles Value)
{
    if (m_filter == Value)
        return;
    m_filter = Value;
    Refresh();
}

void TQorCompTreeView::SetShowKnownCompsOnly(bool Value)
{
    m_showKnownCompsOnly = Value;
}

void TQorCompTreeView::RefreshImageList()
{
    if (m_classList)
        ImportImagesFrom(m_classList->Images(), 1);
}

void TQorCompTreeView::ImportImagesFrom(const TQorClassesImageList *ImageList, int StartIndex)
{
    m_images.clear();
    for (const char *name : GlyphNames)
        m_images.append(QorGlyph(QLatin1String(name)));
    if (!ImageList)
        return;
    for (int i = std::max(StartIndex, 0); i < ImageList->Count(); ++i)
        m_images.append(ImageList->Icon(i));
}

int TQorCompTreeView::GetClassIndex(const QMetaObject *Class) const
{
    if (!m_classList || !Class)
        return -1;
    const TQorDesignClassInformation *info = m_classList->ClassInfos(m_classList->ClassIndex(Class));
    return info ? info->ImageIndex : -1;
}

bool TQorCompTreeView::CompsIsKnown(const QObject *Component) const
{
    if (!m_classList)
        return true;
    return Component && m_classList->ClassExists(Component->metaObject());
}

bool TQorCompTreeView::CheckIfOutputThisComp(QObject *Component) const
{
    if (!Component || IsQorDesignCtrl(Component))
        return false;
    const bool passed = Component->isWidgetType() ? m_filter.testFlag(cfControl) : m_filter.testFlag(cfComponent);
    if (!passed)
        return false;
    return !m_showKnownCompsOnly || CompsIsKnown(Component);
}

QString TQorCompTreeView::CompDisplayName(QObject *Component) const
{
    return GetCompTransedName(Component, m_rootControl);
}

QTreeWidgetItem *TQorCompTreeView::FindComponentNode(const QObject *Component) const
{
    // A freed component's address may belong to a new one now.
    TQorCompTreeNode *node = m_nodes.value(Component);
    return node && node->component == Component ? node : nullptr;
}

QObject *TQorCompTreeView::NodeComponent(const QTreeWidgetItem *Node) const
{
    if (!Node || Node->treeWidget() != this)
        return nullptr;
    return static_cast<const TQorCompTreeNode *>(Node)->component;
}

int TQorCompTreeView::NodeImageIndex(const QTreeWidgetItem *Node) const
{
    if (!Node || Node->treeWidget() != this)
        return -1;
    return static_cast<const TQorCompTreeNode *>(Node)->imageIndex;
}

QString TQorCompTreeView::nodeText(QObject *Component) const
{
    const QString text = CompDisplayName(Component);
    return text.trimmed().isEmpty() ? QCoreApplication::translate("QorDesign", NoNameText) : text;
}

TQorCompTreeNode *TQorCompTreeView::makeNode(QTreeWidgetItem *ParentNode, QObject *Component)
{
    auto *node = new TQorCompTreeNode(Component, nodeText(Component));
    node->setFlags(node->flags() | Qt::ItemIsEditable);
    if (!m_nodes.contains(Component))
        m_nodes.insert(Component, node);
    if (ParentNode)
        ParentNode->addChild(node);
    return node;
}

void TQorCompTreeView::setNodeImage(TQorCompTreeNode *Node, int Index)
{
    Node->imageIndex = Index;
    if (Index >= 0)
        Node->setIcon(0, m_images.value(Index));
}

int TQorCompTreeView::imageIndexOf(const QMetaObject *Class, QHash<const QMetaObject *, int> &Cache) const
{
    auto it = Cache.constFind(Class);
    if (it != Cache.constEnd())
        return *it;
    const int index = GetClassIndex(Class) + GlyphCount;
    const int image = index <= 0 ? -1 : index;
    Cache.insert(Class, image);
    return image;
}

void TQorCompTreeView::GenerateTree()
{
    const QScopedValueRollback guard(m_updating, true);
    m_nodes.clear();
    clear();
    if (!m_rootControl) {
        Q_EMIT TreeGenerated();
        return;
    }

    // The nodes are made apart from the tree and join it in one insertion:
    // a tree of thousands would otherwise tell its view of each.
    TQorCompTreeNode *root = makeNode(nullptr, m_rootControl);
    setNodeImage(root, FormImage);
    QHash<const QMetaObject *, int> images;
    const QList<QObject *> owned = ComponentList(m_rootControl);

    if (m_filter.testFlag(cfComponent)) {
        for (QObject *component : owned) {
            if (!component->isWidgetType() && CheckIfOutputThisComp(component))
                setNodeImage(makeNode(root, component), imageIndexOf(component->metaObject(), images));
        }
    }
    if (m_filter.testFlag(cfControl)) {
        // The listed controls of each parent, in the owner's order; then
        // depth first from the root, each control followed at once by what
        // it holds. One pass over the owner's list instead of one per
        // parent.
        QHash<const QWidget *, QList<QWidget *>> byParent;
        for (QObject *component : owned) {
            if (component->isWidgetType() && CheckIfOutputThisComp(component)) {
                auto *control = static_cast<QWidget *>(component);
                byParent[designParent(control)].append(control);
            }
        }
        struct Level
        {
            const QList<QWidget *> *controls;
            qsizetype next;
            QTreeWidgetItem *node;
        };
        std::vector<Level> stack;
        if (auto it = byParent.constFind(m_rootControl.data()); it != byParent.constEnd())
            stack.push_back({&*it, 0, root});
        while (!stack.empty()) {
            Level &level = stack.back();
            if (level.next >= level.controls->size()) {
                stack.pop_back();
                continue;
            }
            QWidget *control = level.controls->at(level.next++);
            TQorCompTreeNode *node = makeNode(level.node, control);
            setNodeImage(node, imageIndexOf(control->metaObject(), images));
            if (auto it = byParent.constFind(control); it != byParent.constEnd())
                stack.push_back({&*it, 0, node});
        }
    }
    addTopLevelItem(root);
    root->setExpanded(true);
    Q_EMIT TreeGenerated();
}

void TQorCompTreeView::ReSelectComps()
{
    const QScopedValueRollback guard(m_updating, true);
    // The nodes in the list's order: the first found is the current one.
    // Neighbouring rows of one parent that follow each other in the list go
    // to the selection model as one range, so that a select-all of
    // thousands is one selection and not thousands.
    QItemSelection selection;
    QModelIndex runStart, runEnd;
    auto closeRun = [&] {
        if (runStart.isValid())
            selection.append(QItemSelectionRange(runStart, runEnd));
        runStart = runEnd = QModelIndex();
    };
    QTreeWidgetItem *first = nullptr;
    for (QObject *component : m_selectedComps.toList()) {
        QTreeWidgetItem *node = FindComponentNode(component);
        if (!node)
            continue;
        if (!first)
            first = node;
        const QModelIndex index = indexFromItem(node);
        if (runEnd.isValid() && index.parent() == runEnd.parent() && index.row() == runEnd.row() + 1) {
            runEnd = index;
            continue;
        }
        closeRun();
        runStart = runEnd = index;
    }
    closeRun();
    if (first)
        setCurrentItem(first, 0, QItemSelectionModel::NoUpdate);
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

void TQorCompTreeView::Change()
{
    if (m_updating)
        return;
    FillSelectedComps();
    if (!m_center)
        return;
    // The stage's sizers take the keys when they show; a selection made
    // here keeps them here, for the label editor and the arrow keys.
    const bool hadFocus = hasFocus();
    m_center->CompTreeSelCompChanged();
    if (hadFocus && !hasFocus())
        setFocus(Qt::OtherFocusReason);
}

void TQorCompTreeView::FillSelectedComps()
{
    QList<QObject *> selected;
    for (QTreeWidgetItem *node : selectedItems()) {
        if (QObject *component = NodeComponent(node))
            selected.append(component);
    }
    m_selectedComps = TComponentList(selected);
}

void TQorCompTreeView::edited(QTreeWidgetItem *Node, int Column)
{
    if (m_updating || Column != 0)
        return;
    QObject *component = NodeComponent(Node);
    if (!component)
        return;
    // Only a node that showed the component's own name renames it; a
    // translated label is the user's to edit without touching the name.
    if (CompDisplayName(component) == component->objectName()) {
        // The rename is one step of the center's history.
        QPointer<TQorDesignCenter> center = m_center;
        if (center)
            center->BeginDesignChange(tr("Rename"));
        const auto end = qScopeGuard([center] {
            if (center)
                center->EndDesignChange();
        });
        try {
            SetComponentName(component, Node->text(0));
        } catch (const EQorError &error) {
            {
                const QScopedValueRollback guard(m_updating, true);
                Node->setText(0, nodeText(component));
            }
            QorShowCommandError(this, tr("Rename"), error.message());
            return;
        }
    }
    m_dirty = true;
    if (m_center) {
        m_center->SetDirty(true);
        m_center->CompTreeNodeNameChanged();
    }
}

void TQorCompTreeView::mousePressEvent(QMouseEvent *Event)
{
    // A right click leaves the tree's selection as it is: the menu it pops
    // acts on what is selected.
    if (Event->button() == Qt::RightButton) {
        QWidget::mousePressEvent(Event);
        return;
    }
    QTreeWidget::mousePressEvent(Event);
}

void TQorCompTreeView::mouseReleaseEvent(QMouseEvent *Event)
{
    if (Event->button() == Qt::RightButton) {
        QWidget::mouseReleaseEvent(Event);
        return;
    }
    QTreeWidget::mouseReleaseEvent(Event);
}

void TQorCompTreeView::contextMenuEvent(QContextMenuEvent *Event)
{
    if (!m_popupMenu) {
        QTreeWidget::contextMenuEvent(Event);
        return;
    }
    Event->accept();
    // The menu pops up for the tree itself, a part of the design system:
    // the selection it acts on stays as it is.
    if (auto *designMenu = qobject_cast<IQorCompPopupMenu *>(m_popupMenu.data()))
        designMenu->PopupBaseOnComp(this, Event->globalPos().x(), Event->globalPos().y());
    else
        m_popupMenu->popup(Event->globalPos());
}

void TQorCompTreeView::mouseDoubleClickEvent(QMouseEvent *Event)
{
    QTreeWidget::mouseDoubleClickEvent(Event);
    if (Event->button() != Qt::LeftButton || m_selectedComps.Count() != 1)
        return;
    QObject *component = m_selectedComps.First();
    // The editor runs against no designer, as from the tree there is no
    // form designer of a popup; the temporary designer stands for the
    // center's design manager while it runs.
    TVhoDesigner designer(m_center ? m_center->DesignManager() : nullptr);
    IQorAttribEditorRef attribEditor;
    GetQorComponentAttribEditor(component, nullptr, attribEditor);
    TComponentEditorRef componentEditor;
    if (!attribEditor)
        componentEditor = GetComponentEditor(component, nullptr);
    if (!attribEditor && !componentEditor)
        return;
    QPointer<TQorDesignCenter> center = m_center;
    if (center)
        center->BeginDesignChange(tr("Edit"));
    const auto end = qScopeGuard([center] {
        if (center)
            center->EndDesignChange();
    });
    const QString failure = QorRunCaught([&] {
        if (attribEditor)
            attribEditor->Edit();
        else
            componentEditor->Edit();
    });
    if (!failure.isEmpty()) {
        QorShowCommandError(this, tr("Edit"), failure);
        return;
    }
    if (m_center) {
        m_center->Refresh();
        m_center->SetDirty(true);
    }
}

namespace {

// The widgets under a parent that count as its controls: the library's
// own widgets (sizers, the rubber band) are not among them.
bool isLibraryWidget(const QObject *Child)
{
    return IsQorDesignCtrl(Child) || IsQorDesignObject(Child);
}

QList<QWidget *> controlsOf(const QWidget *Parent)
{
    QList<QWidget *> controls;
    for (QObject *child : Parent->children()) {
        if (child->isWidgetType() && !isLibraryWidget(child))
            controls.append(static_cast<QWidget *>(child));
    }
    return controls;
}

// Moves a control to a position among its parent's controls (Controls,
// the control among them), the first drawn lowest: the library's own
// widgets stay above them all.
void setChildOrder(QWidget *Control, QList<QWidget *> Controls, int Position)
{
    Controls.removeOne(Control);
    if (Position < 0)
        Position = 0;
    if (Position < Controls.size()) {
        Control->stackUnder(Controls.at(Position));
        return;
    }
    Control->raise();
    for (QObject *child : Control->parentWidget()->children()) {
        if (child->isWidgetType() && isLibraryWidget(child))
            static_cast<QWidget *>(child)->raise();
    }
}

} // namespace

void TQorCompTreeView::moveSelComps(int Delta)
{
    // Delta is negative to move up. The move is one step of the center's
    // history.
    QPointer<TQorDesignCenter> center = m_center;
    if (center)
        center->BeginDesignChange(Delta < 0 ? tr("Move Up") : tr("Move Down"));
    const auto end = qScopeGuard([center] {
        if (center)
            center->EndDesignChange();
    });
    for (QObject *component : m_selectedComps.toList()) {
        SetComponentIndex(component, ComponentIndex(component) + Delta);
        // The stage is the form being designed: its controls also change
        // places among their parent's controls.
        if (!m_rootControl || !component->isWidgetType())
            continue;
        auto *control = static_cast<QWidget *>(component);
        QWidget *parent = control->parentWidget();
        if (!parent)
            continue;
        const QList<QWidget *> controls = controlsOf(parent);
        const int position = int(controls.indexOf(control));
        if (position < 0 || position + Delta < 0)
            continue;
        setChildOrder(control, controls, position + Delta);
    }
    m_dirty = true;
    if (m_center)
        m_center->SetDirty(true);
    Refresh();
}

void TQorCompTreeView::MoveSelCompIndexesUp(int Delta)
{
    moveSelComps(-Delta);
}

void TQorCompTreeView::MoveSelCompIndexesDown(int Delta)
{
    moveSelComps(Delta);
}
