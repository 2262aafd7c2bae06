// SPDX-License-Identifier: MIT
#include "qordemowindow.h"

#include "console/qorcompeditors.h"
#include "console/qordesignactions.h"
#include "console/qordesignconsole.h"
#include "console/qordesignpopupmenu.h"
#include "console/qordsnconst.h"
#include "console/qordesignintfimpls.h"
#include "designer/qormanager.h"
#include "foundation/vhoclipbrdutils.h"
#include "foundation/qorclasses.h"
#include "foundation/qorcomponents.h"
#include "foundation/vhortti.h"
#include "inspector/qorinspector.h"
#include "inspector/qortransinspector.h"
#include "translation/qortransutils.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QFileInfo>
#include <QIcon>
#include <QComboBox>
#include <QDockWidget>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QScopedValueRollback>
#include <QSet>
#include <QSpinBox>
#include <QTabBar>
#include <QStatusBar>
#include <QTabWidget>
#include <QTextEdit>
#include <QTranslator>
#include <QToolBar>
#include <QTreeWidget>
#include <QHash>
#include <QVBoxLayout>

#include <algorithm>
#include <optional>

// The arrange commands name their styles unqualified.
using namespace QorDesigner;

namespace {

template<class T>
T *place(T *widget, const char *name, const QRect &geometry)
{
    widget->setObjectName(QLatin1String(name));
    widget->setGeometry(geometry);
    return widget;
}

} // namespace

// The component tree of the demo, linked to the design center: the stage
// and its components nested by container. A selection made here goes to
// the center; the center's selection shows here without echo.
class QorDemoWindow::DemoTree final : public QTreeWidget, public IQorCompTreeView
{
    Q_OBJECT
    Q_INTERFACES(IQorCompTreeView)

public:
    DemoTree(QorDemoWindow *Window, QWidget *Parent)
        : QTreeWidget(Parent)
        , m_window(Window)
    {
        setSelectionMode(QAbstractItemView::ExtendedSelection);
        connect(this, &QTreeWidget::itemSelectionChanged, this, [this] {
            if (m_quiet)
                return;
            m_chosen.reset();
            if (m_center)
                m_center->CompTreeSelCompChanged();
        });
        setContextMenuPolicy(Qt::CustomContextMenu);
        connect(this, &QWidget::customContextMenuRequested, this, [this](const QPoint &at) {
            if (!m_popupMenu)
                return;
            // The design menu pops up for the component of the row clicked:
            // its selected siblings stay selected with it.
            const QPoint global = viewport()->mapToGlobal(at);
            QTreeWidgetItem *item = itemAt(at);
            if (auto *designMenu = qobject_cast<IQorCompPopupMenu *>(m_popupMenu.data()); designMenu && item)
                designMenu->PopupBaseOnComp(m_objects.value(item), global.x(), global.y());
            else
                m_popupMenu->popup(global);
        });
    }

    void SetConsoleCenter(TQorDesignCenter *Center) override { m_center = Center; }
    TComponentList SelectedComps() const override
    {
        // A component the application freed since the last rebuild keeps
        // its row until the next one, but is no longer answered.
        TComponentList list;
        for (QTreeWidgetItem *item : selectedItems()) {
            if (QObject *component = m_objects.value(item))
                list.Add(component);
        }
        return list;
    }
    void SetSelectedComps(const TComponentList &List) override
    {
        // The rows chosen already (a popup menu keeping a large selection):
        // nothing to choose again.
        const QList<QObject *> wanted = List.toList();
        QSet<QObject *> wantedSet(wanted.begin(), wanted.end());
        if (!m_chosen)
            m_chosen = selectedSet();
        if (wantedSet == *m_chosen)
            return;
        m_chosen = std::move(wantedSet);
        const QScopedValueRollback quiet(m_quiet, true);
        // The items of the components, in the tree's order.
        QList<QTreeWidgetItem *> items;
        for (QObject *component : List.toList()) {
            // A freed component's address may belong to a new one now.
            if (QTreeWidgetItem *item = m_items.value(component); item && m_objects.value(item) == component)
                items.append(item);
        }
        std::sort(items.begin(), items.end(), [this](QTreeWidgetItem *a, QTreeWidgetItem *b) {
            return m_order.value(a) < m_order.value(b);
        });
        // The items' rows go to the selection model in one selection: one
        // item at a time would have the view repaint and re-sort its
        // selection once per item. Neighbouring rows of one parent go in as
        // one range.
        QItemSelection selection;
        QModelIndex runStart, runEnd;
        auto closeRun = [&] {
            if (runStart.isValid())
                selection.select(runStart, runEnd.siblingAtColumn(columnCount() - 1));
            runStart = runEnd = QModelIndex();
        };
        for (QTreeWidgetItem *item : std::as_const(items)) {
            const QModelIndex index = indexFromItem(item);
            if (runEnd.isValid() && index.parent() == runEnd.parent() && index.row() == runEnd.row() + 1) {
                runEnd = index;
                continue;
            }
            closeRun();
            runStart = runEnd = index;
        }
        closeRun();
        QTreeWidgetItem *first = items.value(0);
        if (first)
            setCurrentItem(first, 0, QItemSelectionModel::NoUpdate);
        selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    }
    void Refresh() override { m_window->fillComponentTree(); }
    QSet<QObject *> selectedSet() const
    {
        QSet<QObject *> set;
        for (QTreeWidgetItem *item : selectedItems()) {
            if (QObject *component = m_objects.value(item))
                set.insert(component);
        }
        return set;
    }
    // Files an item under its component, in the order the tree shows them.
    void file(QTreeWidgetItem *Item, QObject *Component)
    {
        m_order.insert(Item, int(m_order.size()));
        m_items.insert(Component, Item);
        m_objects.insert(Item, Component);
    }
    void forgetItems()
    {
        m_chosen.reset();
        m_items.clear();
        m_order.clear();
        m_objects.clear();
    }
    bool Dirty() const override { return m_dirty; }
    void SetDirty(bool Value) override { m_dirty = Value; }
    void SetPopupMenu(QMenu *Menu) override { m_popupMenu = Menu; }

private:
    QorDemoWindow *m_window;
    QPointer<TQorDesignCenter> m_center;
    QPointer<QMenu> m_popupMenu;
    bool m_quiet = false;
    bool m_dirty = false;
    // The components last chosen here, by the center or the user; none
    // while unknown (the tree rebuilt, a row chosen by the user).
    std::optional<QSet<QObject *>> m_chosen;
    QHash<const QObject *, QTreeWidgetItem *> m_items;
    QHash<const QTreeWidgetItem *, int> m_order;
    // The component of each row, followed: the application may free one
    // while its row is shown.
    QHash<const QTreeWidgetItem *, QPointer<QObject>> m_objects;
};

// The demo's palette as the design center sees it: the chosen class is the
// one a click on the stage inserts; after the insertion the palette goes
// back to choosing nothing.
class QorDemoWindow::DemoPalette final : public QObject, public IQorCompPallete
{
    Q_OBJECT
    Q_INTERFACES(IQorCompPallete)

public:
    DemoPalette(QListWidget *List)
        : QObject(List)
        , m_list(List)
    {
    }

    const QMetaObject *GetCurrClass() const override
    {
        const QListWidgetItem *item = m_list->currentItem();
        if (!item || !m_list->selectionModel()->hasSelection())
            return nullptr;
        return GetClass(item->data(Qt::UserRole).toString());
    }
    void DeselectComps() override { m_list->clearSelection(); }

private:
    QListWidget *m_list;
};

QorDemoWindow::QorDemoWindow(QWidget *parent, StartStage start)
    : QMainWindow(parent)
    , m_start(start)
{
    setWindowTitle(tr("QorDesign demo"));

    auto *stageFrame = new QScrollArea(this);
    stageFrame->setObjectName(QStringLiteral("StageFrame"));
    m_stage = createStage();
    stageFrame->setWidget(m_stage);
    setCentralWidget(stageFrame);

    auto *paletteDock = new QDockWidget(tr("Palette"), this);
    paletteDock->setObjectName(QStringLiteral("PaletteDock"));
    m_palette = new QListWidget(paletteDock);
    m_palette->setObjectName(QStringLiteral("Palette"));
    paletteDock->setWidget(m_palette);
    addDockWidget(Qt::LeftDockWidgetArea, paletteDock);

    auto *treeDock = new QDockWidget(tr("Components"), this);
    treeDock->setObjectName(QStringLiteral("ComponentsDock"));
    m_tree = new DemoTree(this, treeDock);
    m_tree->setObjectName(QStringLiteral("ComponentTree"));
    m_tree->setHeaderLabels({tr("Name"), tr("Class")});
    // Every row has the same height, and the columns fit the texts of the
    // first rows once per rebuild: a tree of thousands of components would
    // otherwise measure every row at each change.
    m_tree->setUniformRowHeights(true);
    m_tree->header()->setResizeContentsPrecision(100);
    treeDock->setWidget(m_tree);
    addDockWidget(Qt::LeftDockWidgetArea, treeDock);

    auto *inspectorDock = new QDockWidget(tr("Inspector"), this);
    inspectorDock->setObjectName(QStringLiteral("InspectorDock"));
    auto *inspectorBox = new QWidget(inspectorDock);
    auto *inspectorLayout = new QVBoxLayout(inspectorBox);
    inspectorLayout->setContentsMargins(0, 0, 0, 0);
    inspectorLayout->setSpacing(0);
    m_chineseSwitch = new QCheckBox(QStringLiteral("中文"), inspectorBox);
    m_chineseSwitch->setObjectName(QStringLiteral("ChineseSwitch"));
    inspectorLayout->addWidget(m_chineseSwitch);
    connect(m_chineseSwitch, &QCheckBox::toggled, this, &QorDemoWindow::setChinese);
    m_inspectorSwitch = new QTabBar(inspectorBox);
    m_inspectorSwitch->setObjectName(QStringLiteral("InspectorSwitch"));
    m_inspectorSwitch->addTab(tr("Properties"));
    m_inspectorSwitch->addTab(tr("Events"));
    m_inspector = new TQorObjInspector(inspectorBox);
    m_inspector->setObjectName(QStringLiteral("ObjInspector"));
    m_inspector->setMinimumWidth(300);
    inspectorLayout->addWidget(m_inspectorSwitch);
    inspectorLayout->addWidget(m_inspector, 1);
    inspectorDock->setWidget(inspectorBox);
    addDockWidget(Qt::RightDockWidgetArea, inspectorDock);
    connect(m_inspectorSwitch, &QTabBar::currentChanged, this, [this](int index) {
        m_inspector->SetPropertyFilterStyles(index == 1 ? pfEvent : pfProperty);
    });
    // A renamed component shows its new name in the tree.
    connect(m_inspector, &TVhoObjInspector::OnPropNameChanged, this, [this](QObject *, const QString &name) {
        if (name == QLatin1String("objectName"))
            fillComponentTree();
    });

    // The stage owns what the form shows, in the order of the form's tree.
    AdoptNamedDescendants(m_stage);

    // Designing: a switch on the tool bar; the palette's chosen class is
    // inserted where the stage is clicked; the stage's mouse position shows
    // in the status bar.
    // The design center joins the stage's design manager, the inspector,
    // the tree and the palette: each tells the center what changed, and the
    // center tells the others.
    m_manager = new TQorDesignManager(m_stage);
    m_center = new TQorDesignCenter(this);
    m_center->setObjectName(QStringLiteral("DesignCenter"));
    m_center->SetObjInspector(m_inspector);
    m_center->SetDesignManager(m_manager);
    m_center->SetCompTreeView(m_tree);
    m_center->SetCompPalleteToolBar(new DemoPalette(m_palette));
    // A control moved, scaled or pasted past the stage's edge stays within
    // reach: the stage grows (the scroll area around it scrolls).
    connect(m_center, &TQorDesignCenter::OnControlsMoved, this, &QorDemoWindow::fitStageToControls);
    connect(m_center, &TQorDesignCenter::OnCompsChange, this, [this] {
        statusBar()->showMessage(tr("%n component(s) selected", nullptr, m_center->SelectedComps().Count()));
    });
    m_tools = addToolBar(tr("Design"));
    m_tools->setObjectName(QStringLiteral("DesignToolBar"));
    m_designAction = m_tools->addAction(tr("Design"));
    m_designAction->setObjectName(QStringLiteral("DesignAction"));
    m_designAction->setCheckable(true);
    connect(m_designAction, &QAction::toggled, m_manager, &TQorDesignManager::SetIsDesigning);
    connect(m_manager, &TQorDesignManager::OnStageMouseMove, this,
            [this](QObject *, QWidget *, Qt::KeyboardModifiers, int x, int y) {
                statusBar()->showMessage(tr("Stage: %1, %2").arg(x).arg(y));
            });
    createMenus(stageFrame);
    retranslate();
    fillPalette();
    fillComponentTree();
    m_tree->setCurrentItem(m_tree->topLevelItem(0));
    // The first window shows the whole stage beside the docks.
    resize(std::max(sizeHint().width(), 1180), std::max(sizeHint().height(), 720));
    statusBar()->showMessage(tr("%n component(s) on the stage", nullptr, ComponentCount(m_stage)));
}

QorDemoWindow::~QorDemoWindow()
{
    // The stage and its manager outlive this window's members: the manager
    // lets go of the center before the center goes.
    m_manager->SetIsDesigning(false);
    m_center->SetCompTreeView(nullptr);
    m_center->SetDesignManager(nullptr);
    // The dictionary is the process's: the next window starts without it.
    if (m_chineseSwitch->isChecked()) {
        QorTransMan()->SetDbFileName(QString());
        QorRemoveTranslator();
        if (m_demoTranslator)
            QCoreApplication::removeTranslator(m_demoTranslator);
    }
}

QWidget *QorDemoWindow::createStage()
{
    auto *stage = new QWidget;
    stage->setObjectName(QStringLiteral("Stage"));
    stage->setMinimumSize(560, 460);
    stage->setAutoFillBackground(true);
    QPalette palette = stage->palette();
    palette.setColor(QPalette::Window, palette.color(QPalette::Base));
    stage->setPalette(palette);
    if (m_start == StartStage::Empty)
        return stage;

    auto *group = place(new QGroupBox(QStringLiteral("Customer"), stage), "GroupBox1", QRect(16, 16, 250, 120));
    place(new QLabel(QStringLiteral("Name:"), group), "Label1", QRect(14, 34, 60, 24));
    place(new QPushButton(QStringLiteral("Look up"), group), "Button1", QRect(80, 74, 150, 30));

    place(new QLineEdit(QStringLiteral("Ada Lovelace"), stage), "LineEdit1", QRect(290, 24, 240, 28));
    place(new QCheckBox(QStringLiteral("Regular customer"), stage), "CheckBox1", QRect(290, 64, 240, 24));
    auto *combo = place(new QComboBox(stage), "ComboBox1", QRect(290, 100, 240, 28));
    combo->addItems({QStringLiteral("Retail"), QStringLiteral("Wholesale"), QStringLiteral("Online")});
    place(new QSpinBox(stage), "SpinBox1", QRect(290, 140, 100, 28))->setValue(3);

    auto *memo = place(new QTextEdit(stage), "TextEdit1", QRect(16, 150, 250, 110));
    memo->setPlainText(QStringLiteral("Notes about the customer."));

    auto *tabs = place(new QTabWidget(stage), "TabWidget1", QRect(16, 276, 514, 160));
    auto *page = new QWidget;
    page->setObjectName(QStringLiteral("TabPage1"));
    tabs->addTab(page, QStringLiteral("Orders"));
    place(new QPushButton(QStringLiteral("New order"), page), "Button2", QRect(16, 16, 140, 30));
    auto *second = new QWidget;
    second->setObjectName(QStringLiteral("TabPage2"));
    tabs->addTab(second, QStringLiteral("Invoices"));
    return stage;
}

namespace {

// An icon of the Tango theme (public domain, Debian's tango-icon-theme),
// at the sizes the theme draws; the desktop's theme when Tango is not
// installed.
QIcon tangoIcon(const char *Name)
{
    QIcon icon;
    for (const char *size : {"16x16", "22x22", "32x32"}) {
        const QString file = QStringLiteral("/usr/share/icons/Tango/%1/actions/%2.png")
                                 .arg(QLatin1String(size), QLatin1String(Name));
        if (QFileInfo::exists(file))
            icon.addFile(file);
    }
    return icon.isNull() ? QIcon::fromTheme(QLatin1String(Name)) : icon;
}

} // namespace

void QorDemoWindow::createMenus(QWidget *StageArea)
{
    // The design commands are the library's actions, linked to the center:
    // each enables itself by the selection. Their keys work while the
    // design area has the keyboard (the inspector and its editors keep
    // their own); Ctrl+arrows stay the nudge of the selection.
    struct Command
    {
        TQorDesignAction *action;
        const char *name;
        QKeySequence keys;
        const char *icon;
    };
    const Command commands[] = {
        {new TQorDesignEditCopy(this), "CopyAction", QKeySequence(QStringLiteral("Ctrl+C")), "edit-copy"},
        {new TQorDesignEditCut(this), "CutAction", QKeySequence(QStringLiteral("Ctrl+X")), "edit-cut"},
        {new TQorDesignEditPaste(this), "PasteAction", QKeySequence(QStringLiteral("Ctrl+V")), "edit-paste"},
        {new TQorDesignEditSelAll(this), "SelectAllAction", QKeySequence(QStringLiteral("Ctrl+A")), "edit-select-all"},
        {new TQorDesignEditDelSel(this), "DeleteAction", QKeySequence(QStringLiteral("Del")), "edit-delete"},
        {new TQorDesignSelCtrlBringToFront(this), "FrontAction", QKeySequence(QStringLiteral("Ctrl+]")), "go-top"},
        {new TQorDesignSelCtrlSendToBack(this), "BackAction", QKeySequence(QStringLiteral("Ctrl+[")), "go-bottom"},
        {new TQorDesignSelCtrlFlipSelChildren(this), "FlipSelectedAction", QKeySequence(), "go-previous"},
        {new TQorDesignSelCtrlFlipAllChildren(this), "FlipAllAction", QKeySequence(), "go-first"},
        {new TQorDesignSelCtrlPositionAlign(this), "AlignAction", QKeySequence(QStringLiteral("Ctrl+Shift+A")),
         "format-justify-left"},
        {new TQorDesignSelCtrlPositionSize(this), "SizeAction", QKeySequence(QStringLiteral("Ctrl+Shift+S")),
         "view-fullscreen"},
        {new TQorDesignSelCtrlPositionScale(this), "ScaleAction", QKeySequence(QStringLiteral("Ctrl+Shift+E")),
         "system-search"},
    };
    for (const Command &command : commands) {
        TQorDesignAction *action = command.action;
        action->setObjectName(QLatin1String(command.name));
        action->setIcon(tangoIcon(command.icon));
        if (!command.keys.isEmpty()) {
            action->setShortcut(command.keys);
            action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
            StageArea->addAction(action);
        }
        action->SetConsoleCenter(m_center);
        m_designActions.append(action);
    }
    auto byName = [this](const char *Name) { return findChild<TQorDesignAction *>(QLatin1String(Name)); };
    // What moves controls may move them past the stage's edge.
    for (const char *name : {"PasteAction", "ScaleAction", "FlipSelectedAction", "FlipAllAction", "SizeAction"})
        connect(byName(name), &QAction::triggered, this, &QorDemoWindow::fitStageToControls);

    QMenu *edit = menuBar()->addMenu(QString());
    edit->setObjectName(QStringLiteral("EditMenu"));
    for (const char *name : {"CutAction", "CopyAction", "PasteAction", "DeleteAction"})
        edit->addAction(byName(name));
    edit->addSeparator();
    edit->addAction(byName("SelectAllAction"));

    m_arrangeMenu = menuBar()->addMenu(QString());
    m_arrangeMenu->setObjectName(QStringLiteral("ArrangeMenu"));
    for (const char *name : {"AlignAction", "SizeAction", "ScaleAction"})
        m_arrangeMenu->addAction(byName(name));
    m_arrangeMenu->addSeparator();
    m_arrangeMenu->addAction(byName("FrontAction"));
    m_arrangeMenu->addAction(byName("BackAction"));
    m_flipMenu = m_arrangeMenu->addMenu(QString());
    m_flipMenu->setObjectName(QStringLiteral("FlipMenu"));
    m_flipMenu->addAction(byName("FlipAllAction"));
    m_flipMenu->addAction(byName("FlipSelectedAction"));

    // The tool bar: the same actions, as icons.
    m_tools->addSeparator();
    for (const char *name : {"CutAction", "CopyAction", "PasteAction", "DeleteAction", "SelectAllAction"})
        m_tools->addAction(byName(name));
    m_tools->addSeparator();
    for (const char *name : {"AlignAction", "SizeAction", "ScaleAction", "FrontAction", "BackAction",
                             "FlipAllAction"})
        m_tools->addAction(byName(name));

    // A right click on the stage, a designed control or the tree: the
    // library's default menu, with the clicked component's verbs on top.
    m_popupMenu = new TQorDefDesignCompPopupMenu(this);
    m_popupMenu->setObjectName(QStringLiteral("DesignPopupMenu"));
    m_center->SetDesignPopupMenu(m_popupMenu);

    // Component: the verbs of the selected component's editor.
    m_componentMenu = menuBar()->addMenu(QString());
    m_componentMenu->setObjectName(QStringLiteral("ComponentMenu"));
    connect(m_componentMenu, &QMenu::aboutToShow, this, [this] {
        m_componentMenu->clear();
        const TComponentList &selected = m_manager->SelectedComps();
        QObject *target = selected.Count() == 1 ? selected.First() : nullptr;
        auto designer = std::make_shared<TQorFormDesigner>(m_manager);
        TComponentEditorRef editor = target ? GetComponentEditor(target, designer.get()) : nullptr;
        if (!editor || editor->GetVerbCount() == 0) {
            m_componentMenu->addAction(tr("(no verbs)"))->setEnabled(false);
            return;
        }
        for (int i = 0; i < editor->GetVerbCount(); ++i) {
            QAction *verb = m_componentMenu->addAction(editor->GetVerb(i));
            // Verbs are tagged with their index past 1000.
            verb->setData(1000 + i);
            connect(verb, &QAction::triggered, this, [this, editor, designer, i] {
                editor->ExecuteVerb(i);
                fillComponentTree();
            });
        }
    });
}

void QorDemoWindow::retranslate()
{
    setWindowTitle(tr("QorDesign demo"));
    if (auto *dock = findChild<QDockWidget *>(QStringLiteral("PaletteDock")))
        dock->setWindowTitle(tr("Palette"));
    if (auto *dock = findChild<QDockWidget *>(QStringLiteral("ComponentsDock")))
        dock->setWindowTitle(tr("Components"));
    if (auto *dock = findChild<QDockWidget *>(QStringLiteral("InspectorDock")))
        dock->setWindowTitle(tr("Inspector"));
    m_tree->setHeaderLabels({tr("Name"), tr("Class")});
    m_inspectorSwitch->setTabText(0, tr("Properties"));
    m_inspectorSwitch->setTabText(1, tr("Events"));
    m_tools->setWindowTitle(tr("Design"));
    m_designAction->setText(tr("Design"));
    if (auto *edit = findChild<QMenu *>(QStringLiteral("EditMenu")))
        edit->setTitle(QorDsnConst::LoadStr(QorDsnConst::SEdit));
    m_arrangeMenu->setTitle(tr("&Arrange"));
    m_flipMenu->setTitle(QorDsnConst::LoadStr(QorDsnConst::SFlipChildren));
    m_componentMenu->setTitle(tr("&Component"));
}

void QorDemoWindow::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QMainWindow::changeEvent(event);
}

void QorDemoWindow::fitStageToControls()
{
    constexpr int margin = 8;
    QRect reach;
    for (QObject *child : m_stage->children()) {
        if (child->isWidgetType() && Owner(child) == m_stage && !static_cast<QWidget *>(child)->isHidden())
            reach |= static_cast<QWidget *>(child)->geometry();
    }
    const QSize need(std::max(m_stage->width(), reach.x() + reach.width() + margin),
                     std::max(m_stage->height(), reach.y() + reach.height() + margin));
    if (need != m_stage->size())
        m_stage->resize(need);
}

void QorDemoWindow::fillPalette()
{
    const int current = m_palette->currentRow();
    m_palette->clear();
    for (const QMetaObject *mo : RegisteredClasses()) {
        // The design system's own classes (the design actions a stream may
        // hold) are no components a user places.
        if (mo->indexOfClassInfo("QorDesignObject") >= 0)
            continue;
        // The label of the class; the item keeps the class's own name.
        auto *item = new QListWidgetItem(ClassToTransedName(mo), m_palette);
        item->setData(Qt::UserRole, QString::fromLatin1(mo->className()));
    }
    m_palette->setCurrentRow(current, QItemSelectionModel::NoUpdate);
}

QString QorDemoWindow::dictionaryFile()
{
    // Beside the program in the build tree, else where it is installed or
    // kept in the sources.
    const QString dir = QCoreApplication::applicationDirPath();
    for (const QString &candidate : {QString(dir + QStringLiteral("/../dict/qordesign-zh.sqlite")),
                                     QString(dir + QStringLiteral("/../share/QorDesign/dict/qordesign-zh.sqlite")),
                                     QStringLiteral(QORDESIGN_SOURCE_DICT)}) {
        if (QFileInfo(candidate).isFile())
            return QFileInfo(candidate).absoluteFilePath();
    }
    return {};
}

void QorDemoWindow::setChinese(bool On)
{
    // The library's texts and the window's own in Chinese; the inspector's
    // names and values and the palette's classes by the dictionary.
    if (On) {
        const QLocale chinese(QLocale::Chinese, QLocale::China);
        QorInstallTranslator(chinese);
        if (!m_demoTranslator) {
            m_demoTranslator = new QTranslator(this);
            if (m_demoTranslator->load(chinese, QStringLiteral("qordemo"), QStringLiteral("_"),
                                       QStringLiteral(":/qordemo/translations")))
                QCoreApplication::installTranslator(m_demoTranslator);
        }
    } else {
        QorRemoveTranslator();
        if (m_demoTranslator)
            QCoreApplication::removeTranslator(m_demoTranslator);
        delete m_demoTranslator;
        m_demoTranslator = nullptr;
    }
    QorTransMan()->SetDbFileName(On ? dictionaryFile() : QString());
    if (On)
        QorTranslateInspector(m_inspector);
    else
        QorUntranslateInspector(m_inspector);
    fillPalette();
}

void QorDemoWindow::addTreeNodes(QTreeWidgetItem *parent, QObject *object)
{
    for (QObject *child : DesignChildren(object)) {
        if (Owner(child) != m_stage)
            continue;
        auto *item = new QTreeWidgetItem(parent, {child->objectName(),
                                                  QString::fromLatin1(child->metaObject()->className())});
        item->setData(0, Qt::UserRole, QVariant::fromValue(child));
        static_cast<DemoTree *>(m_tree)->file(item, child);
        addTreeNodes(item, child);
    }
}

void QorDemoWindow::fillComponentTree()
{
    // Rebuilt quietly: what was selected stays selected.
    const TComponentList selected = static_cast<DemoTree *>(m_tree)->SelectedComps();
    {
        const QSignalBlocker quiet(m_tree);
        static_cast<DemoTree *>(m_tree)->forgetItems();
        m_tree->clear();
        // The items are made apart and join the tree in one insertion: a
        // tree of thousands would otherwise tell its view of each.
        auto *root = new QTreeWidgetItem(QStringList{m_stage->objectName(),
                                                     QString::fromLatin1(m_stage->metaObject()->className())});
        root->setData(0, Qt::UserRole, QVariant::fromValue<QObject *>(m_stage));
        static_cast<DemoTree *>(m_tree)->file(root, m_stage);
        addTreeNodes(root, m_stage);
        m_tree->addTopLevelItem(root);
        m_tree->expandAll();
        for (int column = 0; column < m_tree->columnCount(); ++column)
            m_tree->resizeColumnToContents(column);
    }
    static_cast<DemoTree *>(m_tree)->SetSelectedComps(selected);
    Q_EMIT componentTreeRebuilt();
}

#include "qordemowindow.moc"
