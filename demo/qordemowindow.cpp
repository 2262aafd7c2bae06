// SPDX-License-Identifier: MIT
#include "qordemowindow.h"

#include "browsing/qorclassesman.h"
#include "browsing/qorcomptreeview.h"
#include "browsing/qorimages.h"
#include "browsing/qorpallete.h"
#include "console/qorcompeditors.h"
#include "console/qorcustomizationrecorder.h"
#include "console/qorcustomizationstore.h"
#include "console/qordesignactions.h"
#include "console/qordesignconsole.h"
#include "console/qordesignhistory.h"
#include "console/qordesigndocument.h"
#include "console/qordesignpopupmenu.h"
#include "console/qordsnconst.h"
#include "console/qordesignintfimpls.h"
#include "designer/qormanager.h"
#include "foundation/vhoclipbrdutils.h"
#include "foundation/qorclasses.h"
#include "foundation/qorcomponents.h"
#include "foundation/vhortti.h"
#include "foundation/qoruifile.h"
#include "foundation/qorerror.h"
#include "inspector/qorinspector.h"
#include "inspector/qortransinspector.h"
#include "translation/qortransutils.h"

#include <QActionGroup>
#include <QCheckBox>
#include <QDir>
#include <QStackedWidget>
#include <QStandardPaths>
#include <QCloseEvent>
#include <QFileDialog>
#include <QMessageBox>
#include <QSettings>
#include <QUndoStack>
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

    // The palette: the classes on their pages, a tab for each page above
    // the tool bar of the page's classes.
    fillClassList();
    auto *paletteDock = new QDockWidget(tr("Palette"), this);
    paletteDock->setObjectName(QStringLiteral("PaletteDock"));
    auto *paletteBox = new QWidget(paletteDock);
    auto *paletteLayout = new QVBoxLayout(paletteBox);
    paletteLayout->setContentsMargins(0, 0, 0, 0);
    paletteLayout->setSpacing(0);
    m_paletteTabs = new TQorCompPalleteTab(paletteBox);
    m_paletteTabs->setObjectName(QStringLiteral("PaletteTabs"));
    m_paletteTabs->setExpanding(false);
    // The bar lies in a holder of its own height that gives it its width:
    // a page of a hundred classes changes the bar's size hints, and the
    // window's layout of docks and stage has no need to hear of it.
    auto *barHolder = new QWidget(paletteBox);
    m_paletteBar = new TQorCompPalleteToolBar(barHolder);
    m_paletteBar->setObjectName(QStringLiteral("PaletteBar"));
    m_paletteBar->SetDeselectorImageIndex(m_deselectorImage);
    m_paletteBar->SetClassList(m_classes.get());
    m_paletteTabs->SetPalleteToolBar(m_paletteBar);
    m_paletteTabs->SetAutoFillTabs(true);
    m_paletteTabs->UpdateToolBarPallete();
    paletteLayout->addWidget(m_paletteTabs);
    barHolder->setFixedHeight(m_paletteBar->sizeHint().height());
    barHolder->installEventFilter(this);
    m_paletteHolder = barHolder;
    paletteLayout->addWidget(barHolder);
    paletteBox->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    paletteDock->setWidget(paletteBox);
    // Across the top, where the pages have room for their tabs.
    addDockWidget(Qt::TopDockWidgetArea, paletteDock);

    auto *treeDock = new QDockWidget(tr("Components"), this);
    treeDock->setObjectName(QStringLiteral("ComponentsDock"));
    m_tree = new TQorCompTreeView(treeDock);
    m_tree->setObjectName(QStringLiteral("ComponentTree"));
    m_tree->SetClassList(m_classes.get());
    // Every container open: the user sees each component at once.
    connect(m_tree, &TQorCompTreeView::TreeGenerated, this, [this] {
        m_tree->expandAll();
        Q_EMIT componentTreeRebuilt();
    });
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
            m_tree->Refresh();
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
    m_center->SetCompPalleteToolBar(m_paletteBar);
    // The design as a document: saved and opened, with a recovery copy
    // written while it holds unsaved work.
    m_document = new TQorDesignDocument(m_center, this);
    m_document->setObjectName(QStringLiteral("Document"));
    connect(m_document, &TQorDesignDocument::ModifiedChanged, this, &QorDemoWindow::updateTitle);
    connect(m_document, &TQorDesignDocument::FileNameChanged, this, &QorDemoWindow::updateTitle);
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
    createCustomizeMenu();
    retranslate();
    m_tree->Refresh();
    // The first window shows the whole stage beside the docks.
    resize(std::max(sizeHint().width(), 1180), std::max(sizeHint().height(), 720));
    statusBar()->showMessage(tr("%n component(s) on the stage", nullptr, ComponentCount(m_stage)));
}

QorDemoWindow::~QorDemoWindow()
{
    // The stage and its manager outlive this window's members: the manager
    // lets go of the center before the center goes.
    // The user's customization of the form is kept for the next start.
    keepCustomization();
    // A window that closes in order leaves no recovery copy behind.
    m_document->Close();
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
    // White as an empty form is, through its role: a palette set on the
    // stage would give each control on it a palette of its own, and the
    // style caches a button's look per palette (a thousand buttons would
    // each be drawn from scratch).
    stage->setAutoFillBackground(true);
    stage->setBackgroundRole(QPalette::Base);
    if (m_start == StartStage::Empty)
        return stage;
    buildSampleForm(stage, 1);
    return stage;
}

void QorDemoWindow::buildSampleForm(QWidget *stage, int Version)
{
    auto *group = place(new QGroupBox(QStringLiteral("Customer"), stage), "GroupBox1", QRect(16, 16, 250, 120));
    place(new QLabel(QStringLiteral("Name:"), group), "Label1", QRect(14, 34, 60, 24));
    place(new QPushButton(QStringLiteral("Look up"), group), "Button1", QRect(80, 74, 150, 30));

    place(new QLineEdit(QStringLiteral("Ada Lovelace"), stage), "LineEdit1", QRect(290, 24, 240, 28));
    // The second version of the form moves the check box down, names the
    // combo box after what it holds, drops the spin box and asks for an
    // e-mail address where it was.
    place(new QCheckBox(QStringLiteral("Regular customer"), stage), "CheckBox1",
          Version >= 2 ? QRect(290, 184, 240, 24) : QRect(290, 64, 240, 24));
    auto *combo = place(new QComboBox(stage), Version >= 2 ? "KindCombo" : "ComboBox1", QRect(290, 100, 240, 28));
    combo->addItems({QStringLiteral("Retail"), QStringLiteral("Wholesale"), QStringLiteral("Online")});
    if (Version >= 2)
        place(new QLineEdit(QStringLiteral("ada@example.org"), stage), "EmailEdit", QRect(290, 140, 240, 28));
    else
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

void QorDemoWindow::createFileMenu()
{
    QMenu *file = menuBar()->addMenu(QString());
    file->setObjectName(QStringLiteral("FileMenu"));
    auto add = [this, file](const char *Name, QKeySequence Keys, const char *Icon, void (QorDemoWindow::*Slot)()) {
        auto *action = file->addAction(QString());
        action->setObjectName(QLatin1String(Name));
        action->setShortcut(Keys);
        if (Icon)
            action->setIcon(tangoIcon(Icon));
        connect(action, &QAction::triggered, this, Slot);
        return action;
    };
    m_newAction = add("NewAction", QKeySequence::New, "document-new", &QorDemoWindow::newDesign);
    m_openAction = add("OpenAction", QKeySequence::Open, "document-open", &QorDemoWindow::openDesign);
    m_saveAction = add("SaveAction", QKeySequence::Save, "document-save", &QorDemoWindow::saveDesign);
    m_saveAsAction = add("SaveAsAction", QKeySequence(), "document-save-as", &QorDemoWindow::saveDesignAs);
    file->addSeparator();
    m_importAction = add("ImportUiAction", QKeySequence(), nullptr, &QorDemoWindow::importUi);
    m_exportAction = add("ExportUiAction", QKeySequence(), nullptr, &QorDemoWindow::exportUi);
    file->addSeparator();
    m_recentMenu = file->addMenu(QString());
    m_recentMenu->setObjectName(QStringLiteral("RecentMenu"));
    connect(m_recentMenu, &QMenu::aboutToShow, this, &QorDemoWindow::fillRecentMenu);
    file->addSeparator();
    m_quitAction = add("QuitAction", QKeySequence::Quit, "system-log-out", &QorDemoWindow::quit);
    m_fileMenu = file;
}

void QorDemoWindow::createCustomizeMenu()
{
    m_customizeMenu = menuBar()->addMenu(QString());
    m_customizeMenu->setObjectName(QStringLiteral("CustomizeMenu"));
    auto *versions = new QActionGroup(this);
    // A design of a file with unsaved changes is asked about first; kept,
    // the version that shows stays checked.
    auto chooseVersion = [this](int Version) {
        if (maybeKeepWork())
            switchFormVersion(Version);
        else
            (m_formVersion == 2 ? m_version2Action : m_version1Action)->setChecked(true);
    };
    m_version1Action = m_customizeMenu->addAction(QString(), this, [chooseVersion] { chooseVersion(1); });
    m_version1Action->setObjectName(QStringLiteral("FormVersion1Action"));
    m_version2Action = m_customizeMenu->addAction(QString(), this, [chooseVersion] { chooseVersion(2); });
    m_version2Action->setObjectName(QStringLiteral("FormVersion2Action"));
    for (QAction *action : {m_version1Action, m_version2Action}) {
        action->setCheckable(true);
        versions->addAction(action);
    }
    m_customizeMenu->addSeparator();
    m_resetAction = m_customizeMenu->addAction(QString(), this, [this] {
        if (m_recorder && m_recorder->IsRecording())
            m_recorder->ResetToDefault();
    });
    m_resetAction->setObjectName(QStringLiteral("ResetToDefaultAction"));
    // What an administrator would read: the customization in words.
    m_changesAction = m_customizeMenu->addAction(QString(), this, [this] {
        if (!m_recorder)
            return;
        const QStringList lines = m_recorder->Delta().Describe();
        QMessageBox box(QMessageBox::Information, tr("Customize"),
                        lines.isEmpty() ? tr("The form is as the program built it.")
                                        : tr("%n change(s) to the form as the program built it:", nullptr,
                                             int(lines.size())),
                        QMessageBox::Ok, this);
        box.setObjectName(QStringLiteral("CustomizationChanges"));
        box.setInformativeText(lines.join(QLatin1Char('\n')));
        box.exec();
    });
    m_changesAction->setObjectName(QStringLiteral("CustomizationChangesAction"));
    m_customizeMenu->setEnabled(false);
}

bool QorDemoWindow::startCustomizing(int Version, const QString &StoreFile)
{
    const QString file = StoreFile.isEmpty()
        ? QDir(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation))
              .filePath(QStringLiteral("customizations.db"))
        : StoreFile;
    QDir().mkpath(QFileInfo(file).absolutePath());
    auto store = std::make_unique<TQorCustomizationStore>();
    if (!store->Open(file)) {
        QMessageBox::warning(this, tr("Customize"), store->ErrorString());
        return false;
    }
    m_customizations = std::move(store);
    if (!m_recorder)
        m_recorder = new TQorCustomizationRecorder(m_center, this);
    m_customizeMenu->setEnabled(true);
    switchFormVersion(Version);
    return true;
}

namespace {

// Whose customization the demo keeps, and of which form.
QString customizingUser()
{
    return qEnvironmentVariable("USER", QStringLiteral("user"));
}

const QString kCustomerForm = QStringLiteral("CustomerForm");

} // namespace

bool QorDemoWindow::keepCustomization()
{
    if (!m_customizations || !m_recorder || m_formVersion == 0 || !m_recorder->IsRecording())
        return false;
    // An empty delta is kept too: the form of this version as it was built
    // is what the user wants, not the older version's customization.
    if (!m_customizations->Write(customizingUser(), kCustomerForm, QString::number(m_formVersion),
                                 m_recorder->Delta())) {
        statusBar()->showMessage(m_customizations->ErrorString());
        return false;
    }
    return true;
}

void QorDemoWindow::switchFormVersion(int Version)
{
    if (!m_customizations || !m_recorder)
        return;
    keepCustomization();
    m_recorder->Stop();
    // The form as this version of the program builds it, designed again if
    // it was.
    const bool designing = m_manager->IsDesigning();
    const QList<QObject *> former = ComponentList(m_stage);
    QList<QPointer<QWidget>> formerControls;
    for (QObject *component : former) {
        auto *w = qobject_cast<QWidget *>(component);
        if (w && w->parentWidget() == m_stage)
            formerControls.append(w);
    }
    m_document->New();
    m_manager->SetIsDesigning(false);
    // Not designed, the stage is no design to the document: what it still
    // owns goes here.
    for (QObject *component : ComponentList(m_stage)) {
        if (Owner(component) == m_stage)
            FreeComponent(component);
    }
    // The freed controls leave the stage now, before they are destroyed:
    // the new form's controls take their names.
    for (const QPointer<QWidget> &w : std::as_const(formerControls)) {
        if (w && !Owner(w))
            w->setParent(nullptr);
    }
    m_center->History()->Clear();
    buildSampleForm(m_stage, Version);
    AdoptNamedDescendants(m_stage);
    for (QObject *component : ComponentList(m_stage)) {
        auto *w = qobject_cast<QWidget *>(component);
        // A tab widget shows its pages itself.
        if (w && !qobject_cast<QStackedWidget *>(w->parentWidget()))
            w->show();
    }
    m_formVersion = Version;
    (Version == 2 ? m_version2Action : m_version1Action)->setChecked(true);
    m_manager->SetIsDesigning(designing);
    TQorCustomization saved;
    if (!m_customizations->Read(customizingUser(), kCustomerForm, QString::number(Version), saved)
        && !m_customizations->ErrorString().isEmpty())
        statusBar()->showMessage(m_customizations->ErrorString());
    m_customizationIssues = m_recorder->Start(saved);
    m_center->SetDirty(false);
    m_tree->Refresh();
    fitStageToControls();
    statusBar()->showMessage(tr("Version %1 of the form").arg(Version));
    if (m_customizationIssues.isEmpty())
        return;
    QStringList lines;
    for (const TQorCustomizationIssue &issue : std::as_const(m_customizationIssues))
        lines << issue.Text;
    QMessageBox box(QMessageBox::Information, tr("Customize"),
                    tr("Some of your changes could not be kept in version %1 of the form.").arg(Version),
                    QMessageBox::Ok, this);
    box.setObjectName(QStringLiteral("CustomizationReport"));
    box.setInformativeText(lines.join(QLatin1Char('\n')));
    box.exec();
}

void QorDemoWindow::createMenus(QWidget *StageArea)
{
    createFileMenu();
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

    // Undo and Redo: the center's history. Their keys work in the whole
    // window; a text editor with the keyboard keeps its own.
    m_undoAction = new TQorDesignEditUndo(this);
    m_undoAction->setObjectName(QStringLiteral("UndoAction"));
    m_undoAction->setShortcuts(QKeySequence::Undo);
    m_undoAction->setIcon(tangoIcon("edit-undo"));
    m_redoAction = new TQorDesignEditRedo(this);
    m_redoAction->setObjectName(QStringLiteral("RedoAction"));
    m_redoAction->setShortcuts({QKeySequence(QStringLiteral("Ctrl+Shift+Z")), QKeySequence(QStringLiteral("Ctrl+Y"))});
    m_redoAction->setIcon(tangoIcon("edit-redo"));
    for (TQorDesignAction *action : {static_cast<TQorDesignAction *>(m_undoAction), static_cast<TQorDesignAction *>(m_redoAction)}) {
        action->SetConsoleCenter(m_center);
        addAction(action);
        m_designActions.append(action);
    }

    QMenu *edit = menuBar()->addMenu(QString());
    edit->setObjectName(QStringLiteral("EditMenu"));
    edit->addAction(m_undoAction);
    edit->addAction(m_redoAction);
    edit->addSeparator();
    for (const char *name : {"CutAction", "CopyAction", "PasteAction", "DeleteAction"})
        edit->addAction(byName(name));
    edit->addSeparator();
    edit->addAction(byName("SelectAllAction"));

    // The tree's commands: rename the current component through the tree's
    // label editor, move the selected ones in their owner's order. Their
    // keys work in the tree and on the stage.
    m_renameAction = new QAction(this);
    m_renameAction->setObjectName(QStringLiteral("RenameAction"));
    m_renameAction->setShortcut(QKeySequence(Qt::Key_F2));
    connect(m_renameAction, &QAction::triggered, this, [this] {
        QTreeWidgetItem *node = m_tree->currentItem();
        if (const TComponentList &selected = m_center->SelectedComps(); selected.Count() == 1)
            node = m_tree->FindComponentNode(selected.First());
        if (!node)
            return;
        m_tree->setFocus(Qt::ShortcutFocusReason);
        m_tree->scrollToItem(node);
        m_tree->editItem(node);
    });
    m_moveUpAction = new QAction(this);
    m_moveUpAction->setObjectName(QStringLiteral("MoveUpAction"));
    m_moveUpAction->setShortcut(QKeySequence(Qt::ALT | Qt::Key_Up));
    connect(m_moveUpAction, &QAction::triggered, this, [this] { m_tree->MoveSelCompIndexesUp(); });
    m_moveDownAction = new QAction(this);
    m_moveDownAction->setObjectName(QStringLiteral("MoveDownAction"));
    m_moveDownAction->setShortcut(QKeySequence(Qt::ALT | Qt::Key_Down));
    connect(m_moveDownAction, &QAction::triggered, this, [this] { m_tree->MoveSelCompIndexesDown(); });
    edit->addSeparator();
    for (QAction *action : {m_renameAction, m_moveUpAction, m_moveDownAction}) {
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        m_tree->addAction(action);
        StageArea->addAction(action);
        edit->addAction(action);
    }
    // The stage itself is neither renamed here nor moved.
    // The stage is only ever selected alone: the first entry tells. Asked
    // at every change of the selection, so nothing here walks the list (a
    // rename of several renames the tree's current one).
    auto updateTreeCommands = [this] {
        const TComponentList &selected = m_center->SelectedComps();
        const bool components = !selected.isEmpty() && selected.First() != m_stage;
        m_renameAction->setEnabled(components);
        m_moveUpAction->setEnabled(components);
        m_moveDownAction->setEnabled(components);
    };
    connect(m_center, &TQorDesignCenter::DesignStateChanged, this, updateTreeCommands);
    updateTreeCommands();

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
    m_tools->addAction(m_undoAction);
    m_tools->addAction(m_redoAction);
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
                m_tree->Refresh();
            });
        }
    });
}

void QorDemoWindow::fillClassList()
{
    // The pages of the palette and their classes; a class registered by
    // the application beyond these goes on "Other".
    static const struct
    {
        const char *page;
        std::initializer_list<const char *> classes;
    } pages[] = {
        {"Buttons", {"QPushButton", "QToolButton", "QCheckBox", "QRadioButton"}},
        {"Input", {"QLineEdit", "QTextEdit", "QPlainTextEdit", "QComboBox", "QSpinBox", "QDoubleSpinBox", "QSlider",
                   "QDial"}},
        {"Dates", {"QDateEdit", "QTimeEdit", "QDateTimeEdit", "QCalendarWidget"}},
        {"Containers", {"QGroupBox", "QFrame", "QWidget", "QTabWidget", "QStackedWidget", "QToolBox", "QScrollArea"}},
        {"Display", {"QLabel", "QProgressBar", "QLCDNumber"}},
        {"Items", {"QListWidget", "QTreeWidget", "QTableWidget"}},
        {"System", {"QTimer"}},
    };
    m_images = std::make_unique<TQorClassesImageList>();
    m_classes = std::make_unique<TQorDesignClassList>();
    m_classes->SetImages(m_images.get());
    // The pointer of the palette first: the deselector shows it.
    m_deselectorImage = m_images->Add(QorPaletteImage(QStringLiteral("Deselector")));
    auto add = [this](const QMetaObject *Class, const QString &Page) {
        // The classes are registered already: the list only offers them.
        m_classes->AddClass(Class, Page, m_images->Add(QorClassImage(Class)), true, false);
    };
    QSet<QString> placed;
    for (const auto &page : pages) {
        for (const char *name : page.classes) {
            if (const QMetaObject *cls = GetClass(QLatin1String(name))) {
                add(cls, QLatin1String(page.page));
                placed.insert(QLatin1String(name));
            }
        }
    }
    for (const QMetaObject *cls : RegisteredClasses()) {
        // The design system's own classes are no components a user places.
        if (cls->indexOfClassInfo("QorDesignObject") < 0 && !placed.contains(QLatin1String(cls->className())))
            add(cls, QStringLiteral("Other"));
    }
}

void QorDemoWindow::retranslate()
{
    if (auto *dock = findChild<QDockWidget *>(QStringLiteral("PaletteDock")))
        dock->setWindowTitle(tr("Palette"));
    if (auto *dock = findChild<QDockWidget *>(QStringLiteral("ComponentsDock")))
        dock->setWindowTitle(tr("Components"));
    if (auto *dock = findChild<QDockWidget *>(QStringLiteral("InspectorDock")))
        dock->setWindowTitle(tr("Inspector"));
    m_renameAction->setText(tr("&Rename"));
    m_moveUpAction->setText(tr("Move &Up"));
    m_moveDownAction->setText(tr("Move &Down"));
    m_inspectorSwitch->setTabText(0, tr("Properties"));
    m_inspectorSwitch->setTabText(1, tr("Events"));
    m_tools->setWindowTitle(tr("Design"));
    m_designAction->setText(tr("Design"));
    m_fileMenu->setTitle(tr("&File"));
    m_customizeMenu->setTitle(tr("&Customize"));
    m_version1Action->setText(tr("Form Version &1"));
    m_version2Action->setText(tr("Form Version &2"));
    m_resetAction->setText(tr("&Reset to Default"));
    m_changesAction->setText(tr("&What I Changed..."));
    m_newAction->setText(tr("&New"));
    m_openAction->setText(tr("&Open..."));
    m_saveAction->setText(tr("&Save"));
    m_saveAsAction->setText(tr("Save &As..."));
    m_importAction->setText(tr("&Import .ui..."));
    m_exportAction->setText(tr("&Export .ui..."));
    m_recentMenu->setTitle(tr("&Recent Files"));
    m_quitAction->setText(tr("&Quit"));
    updateTitle();
    if (auto *edit = findChild<QMenu *>(QStringLiteral("EditMenu")))
        edit->setTitle(QorDsnConst::LoadStr(QorDsnConst::SEdit));
    m_arrangeMenu->setTitle(tr("&Arrange"));
    m_flipMenu->setTitle(QorDsnConst::LoadStr(QorDsnConst::SFlipChildren));
    m_componentMenu->setTitle(tr("&Component"));
}

bool QorDemoWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_paletteHolder && event->type() == QEvent::Resize)
        m_paletteBar->setGeometry(m_paletteHolder->rect());
    return QMainWindow::eventFilter(watched, event);
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
    // The palette's buttons and the tree's texts in the new language.
    m_paletteBar->UpdateButtons();
    m_tree->Refresh();
}

// ---- The design as a document ----------------------------------------------

TQorDesignDocument *QorDemoWindow::document() const
{
    return m_document;
}

void QorDemoWindow::updateTitle()
{
    const QString name = m_document->FileName().isEmpty() ? tr("Untitled")
                                                          : QFileInfo(m_document->FileName()).fileName();
    setWindowTitle(tr("%1[*] - QorDesign demo").arg(name));
    setWindowModified(m_document->Modified());
}

bool QorDemoWindow::maybeKeepWork()
{
    if (!m_document->Modified())
        return true;
    // Changes to the sample form are the user's customization, kept by
    // themselves: nothing to ask.
    if (m_recorder && m_recorder->IsRecording() && m_document->FileName().isEmpty())
        return keepCustomization();
    QMessageBox box(QMessageBox::Warning, tr("QorDesign demo"),
                    tr("The design has unsaved changes. Save them first?"),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
    box.setObjectName(QStringLiteral("UnsavedChangesBox"));
    box.setDefaultButton(QMessageBox::Save);
    switch (box.exec()) {
    case QMessageBox::Save:
        saveDesign();
        return !m_document->Modified();
    case QMessageBox::Discard:
        return true;
    default:
        return false;
    }
}

void QorDemoWindow::newDesign()
{
    if (!maybeKeepWork())
        return;
    // Another design is no customization of the form.
    keepCustomization();
    if (m_recorder)
        m_recorder->Stop();
    m_document->New();
}

bool QorDemoWindow::openFile(const QString &FileName)
{
    keepCustomization();
    if (!m_document->Open(FileName)) {
        QMessageBox::warning(this, tr("Open"), m_document->ErrorString());
        return false;
    }
    if (!m_document->SkippedComponents().isEmpty())
        QMessageBox::information(this, tr("Open"),
                                 tr("Left out, of classes this program does not know:\n%1")
                                     .arg(m_document->SkippedComponents().join(QLatin1Char('\n'))));
    if (m_recorder)
        m_recorder->Stop();
    rememberFile(FileName);
    fitStageToControls();
    return true;
}

void QorDemoWindow::openDesign()
{
    if (!maybeKeepWork())
        return;
    const QString name = QFileDialog::getOpenFileName(this, tr("Open"), lastFolder(),
                                                      tr("Designs (*.qord *.qordt);;All files (*)"));
    if (!name.isEmpty())
        openFile(name);
}

void QorDemoWindow::saveDesign()
{
    if (m_document->FileName().isEmpty()) {
        saveDesignAs();
        return;
    }
    if (!m_document->Save())
        QMessageBox::warning(this, tr("Save"), m_document->ErrorString());
}

void QorDemoWindow::saveDesignAs()
{
    QString filter;
    QString name = QFileDialog::getSaveFileName(this, tr("Save As"), lastFolder(),
                                                tr("Designs (*.qord);;Readable designs (*.qordt)"), &filter);
    if (name.isEmpty())
        return;
    const bool text = filter.contains(QLatin1String("qordt")) || name.endsWith(QLatin1String(".qordt"));
    if (QFileInfo(name).suffix().isEmpty())
        name += text ? QStringLiteral(".qordt") : QStringLiteral(".qord");
    if (!m_document->SaveAs(name, text ? TQorDesignDocument::dfText : TQorDesignDocument::dfBinary)) {
        QMessageBox::warning(this, tr("Save As"), m_document->ErrorString());
        return;
    }
    rememberFile(name);
}

void QorDemoWindow::importUi()
{
    const QString name = QFileDialog::getOpenFileName(this, tr("Import .ui"), lastFolder(),
                                                      tr("Qt Designer forms (*.ui)"));
    if (name.isEmpty())
        return;
    // The import is one step of the history: undo takes it back.
    QStringList skipped;
    m_center->BeginDesignChange(tr("Import"));
    try {
        skipped = ImportUiFile(name, m_stage);
    } catch (const EQorError &error) {
        m_center->EndDesignChange();
        QMessageBox::warning(this, tr("Import .ui"), error.message());
        return;
    }
    m_center->Refresh();
    m_center->SetDirty(true);
    m_center->EndDesignChange();
    fitStageToControls();
    if (!skipped.isEmpty())
        QMessageBox::information(this, tr("Import .ui"),
                                 tr("Left out, of classes this program does not know:\n%1")
                                     .arg(skipped.join(QLatin1Char('\n'))));
}

void QorDemoWindow::exportUi()
{
    QString name = QFileDialog::getSaveFileName(this, tr("Export .ui"), lastFolder(), tr("Qt Designer forms (*.ui)"));
    if (name.isEmpty())
        return;
    if (QFileInfo(name).suffix().isEmpty())
        name += QStringLiteral(".ui");
    try {
        ExportUiFile(m_stage, name);
    } catch (const EQorError &error) {
        QMessageBox::warning(this, tr("Export .ui"), error.message());
    }
}

void QorDemoWindow::quit()
{
    close();
}

void QorDemoWindow::closeEvent(QCloseEvent *event)
{
    if (!maybeKeepWork()) {
        event->ignore();
        return;
    }
    // A design left on purpose needs no recovery copy.
    m_document->Close();
    QSettings settings;
    settings.setValue(QStringLiteral("window/geometry"), saveGeometry());
    settings.setValue(QStringLiteral("window/state"), saveState());
    event->accept();
}

void QorDemoWindow::restoreLayout()
{
    QSettings settings;
    restoreGeometry(settings.value(QStringLiteral("window/geometry")).toByteArray());
    restoreState(settings.value(QStringLiteral("window/state")).toByteArray());
}

QStringList QorDemoWindow::recentFiles() const
{
    return QSettings().value(QStringLiteral("recentFiles")).toStringList();
}

void QorDemoWindow::rememberFile(const QString &FileName)
{
    QStringList files = recentFiles();
    const QString path = QFileInfo(FileName).absoluteFilePath();
    files.removeAll(path);
    files.prepend(path);
    while (files.size() > 8)
        files.removeLast();
    QSettings().setValue(QStringLiteral("recentFiles"), files);
}

QString QorDemoWindow::lastFolder() const
{
    const QStringList files = recentFiles();
    return files.isEmpty() ? QString() : QFileInfo(files.first()).absolutePath();
}

void QorDemoWindow::fillRecentMenu()
{
    m_recentMenu->clear();
    const QStringList files = recentFiles();
    for (const QString &file : files) {
        QAction *action = m_recentMenu->addAction(QFileInfo(file).fileName());
        action->setToolTip(file);
        connect(action, &QAction::triggered, this, [this, file] {
            if (maybeKeepWork())
                openFile(file);
        });
    }
    if (files.isEmpty())
        m_recentMenu->addAction(tr("(none)"))->setEnabled(false);
}

bool QorDemoWindow::offerRecovery()
{
    const QList<TQorRecoveryCopy> copies = m_document->FindRecoveryCopies();
    if (copies.isEmpty())
        return false;
    const TQorRecoveryCopy &copy = copies.first();
    QMessageBox box(QMessageBox::Question, tr("QorDesign demo"),
                    tr("Unsaved work of %1 was found (%2). Recover it?")
                        .arg(copy.OriginalFileName.isEmpty() ? tr("an untitled design")
                                                             : QFileInfo(copy.OriginalFileName).fileName(),
                             QLocale().toString(copy.Written.toLocalTime(), QLocale::ShortFormat)),
                    QMessageBox::Yes | QMessageBox::No, this);
    box.setObjectName(QStringLiteral("RecoveryBox"));
    if (box.exec() == QMessageBox::Yes) {
        if (!m_document->LoadRecovery(copy)) {
            QMessageBox::warning(this, tr("Recover"), m_document->ErrorString());
            return false;
        }
        // The recovered design is not the form the customization is of.
        if (m_recorder)
            m_recorder->Stop();
        fitStageToControls();
        return true;
    }
    m_document->DiscardRecovery(copy);
    return false;
}
