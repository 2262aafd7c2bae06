// SPDX-License-Identifier: MIT
#include "console/qordesignconsole.h"

#include "console/qordesignhistory.h"
#include "console/qordesignintfimpls.h"
#include "console/qordsnconst.h"
#include "designer/qordesigner.h"
#include "designer/qormanager.h"
#include "foundation/qorlogging_p.h"
#include "foundation/qorrepaintonce_p.h"
#include "foundation/vhoclipbrdutils.h"
#include "foundation/vhosysutils.h"
#include "inspector/qorinspector.h"

#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QUndoStack>

IQorCompTreeView::~IQorCompTreeView() = default;
IQorCompPallete::~IQorCompPallete() = default;
IQorCenterPopupMenu::~IQorCenterPopupMenu() = default;

TQorDesignCenter::TQorDesignCenter(QObject *Owner)
    : QObject(Owner)
    , m_history(new TQorDesignHistory(this))
{
    SetEnabled(true);
    m_persistEnabled = true;
    QUndoStack *stack = m_history->Stack();
    // The history's clean step is the saved design: going back to it
    // clears the elements' dirty marks, leaving it sets them.
    connect(stack, &QUndoStack::cleanChanged, this, [this](bool Clean) {
        const QScopedValueRollback following(m_followingClean, true);
        SetDirty(!Clean);
    });
    connect(stack, &QUndoStack::indexChanged, this, [this] { Q_EMIT DesignStateChanged(); });
}

TQorDesignCenter::~TQorDesignCenter()
{
    ReleaseAllElements();
}

void TQorDesignCenter::ReleaseAllElements()
{
    // The manager keeps a plain reference to its center: it must not
    // outlive the center's answer. The inspector and the tree hold the
    // center weakly and need no word.
    if (m_designManager && m_designManager->ConsoleCenter() == this)
        m_designManager->SetConsoleCenter(nullptr);
    m_designManager = nullptr;
    m_compTreeView = nullptr;
    m_objInspector = nullptr;
    if (m_watchedStage)
        m_watchedStage->removeEventFilter(this);
}

IQorCompTreeView *TQorDesignCenter::treeView() const
{
    return qobject_cast<IQorCompTreeView *>(m_compTreeView.data());
}

IQorCompPallete *TQorDesignCenter::pallete() const
{
    return qobject_cast<IQorCompPallete *>(m_compPalleteToolBar.data());
}

// ---- Links --------------------------------------------------------------

TQorDesignManager *TQorDesignCenter::DesignManager() const
{
    return m_designManager;
}

TVhoObjInspector *TQorDesignCenter::ObjInspector() const
{
    return m_objInspector;
}

void TQorDesignCenter::SetDesignManager(TQorDesignManager *Manager)
{
    if (Manager == m_designManager)
        return;
    if (m_designManager && m_designManager->ConsoleCenter() == this)
        m_designManager->SetConsoleCenter(nullptr);
    m_designManager = Manager;
    if (m_designManager) {
        m_designManager->SetConsoleCenter(this);
        if (m_persistEnabled)
            m_designManager->SetEnabled(m_enabled);
        else
            m_enabled = m_designManager->Enabled();
    }
    if (!m_designManager)
        m_designer.reset();
    else if (m_designer)
        m_designer->SetDesigner(m_designManager);
    else
        m_designer = std::make_unique<TQorFormDesigner>(m_designManager);
    watchManager();
    NotifyDesignManagerChanged();
    Q_EMIT DesignStateChanged();
}

void TQorDesignCenter::watchManager()
{
    for (const QMetaObject::Connection &c : std::as_const(m_managerConnections))
        disconnect(c);
    m_managerConnections.clear();
    if (m_designManager) {
        m_managerConnections.append(connect(m_designManager, &TQorDesignManager::EnabledChanged, this,
                                            &TQorDesignCenter::DesignStateChanged));
        m_managerConnections.append(connect(m_designManager, &TQorDesignManager::DesignStageChanged, this, [this] {
            watchStage();
            Q_EMIT DesignStateChanged();
        }));
        // A manager that goes away takes its stage's state with it.
        m_managerConnections.append(connect(m_designManager, &QObject::destroyed, this, [this] {
            watchStage();
            Q_EMIT DesignStateChanged();
        }));
    }
    watchStage();
}

void TQorDesignCenter::watchStage()
{
    QWidget *stage = GetDesignStage();
    if (stage == m_watchedStage)
        return;
    // Another design: the history of the former one means nothing to it.
    m_history->Clear();
    if (m_watchedStage)
        m_watchedStage->removeEventFilter(this);
    m_watchedStage = stage;
    if (stage)
        stage->installEventFilter(this);
}

bool TQorDesignCenter::eventFilter(QObject *Watched, QEvent *Event)
{
    // The stage shown or hidden, also with its window or a container.
    if (Watched == m_watchedStage && (Event->type() == QEvent::Show || Event->type() == QEvent::Hide))
        Q_EMIT DesignStateChanged();
    return QObject::eventFilter(Watched, Event);
}

void TQorDesignCenter::SetSelectedCompsSilently(const TComponentList &List)
{
    m_selectedComps = List;
    m_history->SelectionChanged();
    Q_EMIT DesignStateChanged();
}

void TQorDesignCenter::SetObjInspector(TVhoObjInspector *Inspector)
{
    if (Inspector == m_objInspector)
        return;
    if (m_objInspector && m_objInspector->ConsoleCenter() == this)
        m_objInspector->SetConsoleCenter(nullptr);
    m_objInspector = Inspector;
    if (m_objInspector)
        m_objInspector->SetConsoleCenter(this);
    NotifyObjInspectorChanged();
}

void TQorDesignCenter::SetCompTreeView(QWidget *TreeView)
{
    if (TreeView && !qobject_cast<IQorCompTreeView *>(TreeView)) {
        qCInfo(lcQorConsole).noquote() << "Component tree view not taken:" << TreeView->objectName()
                                       << "does not implement the tree view's interface";
        return;
    }
    if (TreeView == m_compTreeView)
        return;
    if (IQorCompTreeView *old = treeView())
        old->SetConsoleCenter(nullptr);
    m_compTreeView = TreeView;
    if (IQorCompTreeView *tree = treeView())
        tree->SetConsoleCenter(this);
    NotifyCompTreeViewChanged();
}

void TQorDesignCenter::SetCompPalleteToolBar(QObject *Pallete)
{
    if (Pallete && !qobject_cast<IQorCompPallete *>(Pallete)) {
        qCInfo(lcQorConsole).noquote() << "Component palette not taken:" << Pallete->objectName()
                                       << "does not implement the palette's interface";
        return;
    }
    m_compPalleteToolBar = Pallete;
}

void TQorDesignCenter::SetDesignPopupMenu(QMenu *Menu)
{
    if (Menu == m_designPopupMenu)
        return;
    if (auto *old = qobject_cast<IQorCenterPopupMenu *>(m_designPopupMenu.data()))
        old->SetConsoleCenter(nullptr);
    m_designPopupMenu = Menu;
    if (auto *menu = qobject_cast<IQorCenterPopupMenu *>(Menu))
        menu->SetConsoleCenter(this);
    NotifyDesignPopupMenuChanged();
}

void TQorDesignCenter::SetEnabled(bool Value)
{
    m_enabled = Value;
    if (m_designManager)
        m_designManager->SetEnabled(Value);
    Q_EMIT DesignStateChanged();
}

TQorStageMouseMoveEvent TQorDesignCenter::OnStageMouseMove() const
{
    return m_designManager ? m_designManager->OnStageMouseMoveHandler : TQorStageMouseMoveEvent();
}

void TQorDesignCenter::SetOnStageMouseMove(const TQorStageMouseMoveEvent &Event)
{
    if (m_designManager)
        m_designManager->OnStageMouseMoveHandler = Event;
}

QWidget *TQorDesignCenter::GetDesignStage() const
{
    return m_designManager ? m_designManager->DesignStage() : nullptr;
}

IDesigner *TQorDesignCenter::InspectorDesigner() const
{
    return m_designer.get();
}

// ---- Changes of the links -------------------------------------------------

void TQorDesignCenter::NotifyDesignManagerChanged()
{
    if (!m_designManager)
        return;
    if (m_objInspector)
        m_objInspector->SetActiveComponent(GetDesignStage());
    RefreshAllExcept({deDesignManager});
}

void TQorDesignCenter::NotifyCompTreeViewChanged()
{
    if (!treeView())
        return;
    RefreshAllExcept({deCompTreeView});
}

void TQorDesignCenter::NotifyObjInspectorChanged()
{
    if (!m_objInspector)
        return;
    RefreshAllExcept({deObjInspector});
}

void TQorDesignCenter::NotifyDesignPopupMenuChanged()
{
    InstallDesignPopupMenu();
}

void TQorDesignCenter::InstallDesignPopupMenu()
{
    if (IQorCompTreeView *tree = treeView())
        tree->SetPopupMenu(m_designPopupMenu);
    if (m_designManager)
        m_designManager->SetDesignPopupMenu(m_designPopupMenu);
}

void TQorDesignCenter::RefreshAllExcept(TDesignElements Elements)
{
    if (!Elements.contains(deDesignManager) && m_designManager)
        m_designManager->Refresh();
    if (!Elements.contains(deCompTreeView))
        if (IQorCompTreeView *tree = treeView())
            tree->Refresh();
    if (!Elements.contains(deObjInspector) && m_objInspector)
        m_objInspector->Refresh();
}

void TQorDesignCenter::Refresh()
{
    if (m_designManager) {
        m_designManager->SetSelectedComps(m_selectedComps);
        m_designManager->Refresh();
    }
    if (IQorCompTreeView *tree = treeView()) {
        tree->SetSelectedComps(m_selectedComps);
        tree->Refresh();
    }
    if (m_objInspector) {
        m_objInspector->SetActiveComponents(m_selectedComps);
        m_objInspector->Refresh();
    }
    m_history->SelectionChanged();
    Q_EMIT DesignStateChanged();
}

// ---- Reports from the elements ---------------------------------------------

void TQorDesignCenter::DesignerSelCompChanged()
{
    if (m_designManager)
        m_selectedComps = m_designManager->SelectedComps();
    if (m_objInspector)
        m_objInspector->SetActiveComponents(m_selectedComps);
    if (IQorCompTreeView *tree = treeView())
        tree->SetSelectedComps(m_selectedComps);
    m_history->SelectionChanged();
    Q_EMIT OnCompsChange(this);
    Q_EMIT DesignStateChanged();
}

void TQorDesignCenter::CompTreeSelCompChanged()
{
    if (IQorCompTreeView *tree = treeView())
        m_selectedComps = tree->SelectedComps();
    if (m_objInspector)
        m_objInspector->SetActiveComponents(m_selectedComps);
    if (m_designManager)
        m_designManager->SetSelectedComps(m_selectedComps);
    m_history->SelectionChanged();
    Q_EMIT DesignStateChanged();
}

void TQorDesignCenter::ConsoleCompListChanged()
{
    if (IQorCompTreeView *tree = treeView())
        tree->SetSelectedComps(m_selectedComps);
    if (m_objInspector)
        m_objInspector->SetActiveComponents(m_selectedComps);
    if (m_designManager)
        m_designManager->SetSelectedComps(m_selectedComps);
    m_history->SelectionChanged();
    Q_EMIT DesignStateChanged();
}

void TQorDesignCenter::DesignerSelCompMoved()
{
    m_history->ControlsMoved(m_designManager && m_designManager->LastMoveByKeys());
    if (m_objInspector)
        m_objInspector->RefreshValues();
    Q_EMIT OnControlsMoved(this);
}

void TQorDesignCenter::InspectorPropChanged()
{
    if (m_designManager)
        m_designManager->RefreshSizers();
    Q_EMIT OnInspectorPropChange(this);
}

void TQorDesignCenter::CompTreeNodeNameChanged()
{
    if (m_objInspector)
        m_objInspector->Refresh();
}

void TQorDesignCenter::DesignStageCompsModified(QObject *Component, TQorCompOperation Operation)
{
    IQorCompTreeView *tree = treeView();
    if (!tree || Operation != TQorCompOperation::opInsert)
        return;
    tree->Refresh();
    m_selectedComps.Clear();
    m_selectedComps.Add(Component);
    tree->SetSelectedComps(m_selectedComps);
    CompTreeSelCompChanged();
}

void TQorDesignCenter::DynCompCreated(QObject *Component)
{
    PalleteSelCompDynCreated();
    Q_EMIT AfterDynInsComponent(this, Component);
}

void TQorDesignCenter::PalleteSelCompDynCreated()
{
    if (IQorCompPallete *p = pallete())
        p->DeselectComps();
}

const QMetaObject *TQorDesignCenter::GetPalleteSelectedClass() const
{
    IQorCompPallete *p = pallete();
    return p ? p->GetCurrClass() : nullptr;
}

void TQorDesignCenter::RefreshCompTree()
{
    if (IQorCompTreeView *tree = treeView())
        tree->Refresh();
}

// ---- Editing the selection ---------------------------------------------------

void TQorDesignCenter::keepSelected(const std::function<bool(QObject *)> &Keep)
{
    // One pass over the list, which is made again only when something
    // leaves it: a popup keeping every control of a large selection costs
    // no more than a look at each.
    const QList<QObject *> items = m_selectedComps.toList();
    QList<QObject *> kept;
    kept.reserve(items.size());
    for (QObject *item : items) {
        if (Keep(item))
            kept.append(item);
    }
    if (kept.size() != items.size())
        m_selectedComps = TComponentList(kept);
    ConsoleCompListChanged();
}

void TQorDesignCenter::DeselectComponent()
{
    keepSelected([](QObject *item) { return item->isWidgetType(); });
}

void TQorDesignCenter::DeselectControl()
{
    keepSelected([](QObject *item) { return !item->isWidgetType(); });
}

void TQorDesignCenter::DeselectUnsiblingControl(QWidget *Control, bool DeleteComps)
{
    QWidget *parent = Control ? Control->parentWidget() : nullptr;
    keepSelected([parent, DeleteComps](QObject *item) {
        return item->isWidgetType() ? static_cast<QWidget *>(item)->parentWidget() == parent : !DeleteComps;
    });
}

void TQorDesignCenter::SelectAllControls()
{
    if (m_designManager)
        m_designManager->SelectAllControls();
}

// ---- Commands ----------------------------------------------------------------

void TQorDesignCenter::CopySelComps()
{
    VhoClipboard()->SetComponents(m_selectedComps, false);
}

void TQorDesignCenter::CutSelComps()
{
    BeginDesignChange(QorDsnConst::LoadStr(QorDsnConst::SCut));
    const auto end = qScopeGuard([this] { EndDesignChange(); });
    CopySelComps();
    DelSelCtrls();
}

void TQorDesignCenter::DelSelCtrls()
{
    BeginDesignChange(QorDsnConst::LoadStr(QorDsnConst::SDelete));
    const auto end = qScopeGuard([this] { EndDesignChange(); });
    // The elements hear of the deletion once, however many go.
    const TQorDesignUpdateScope update(m_designManager);
    QWidget *stage = GetDesignStage();
    // From the last to the first; freeing destroys nothing before control
    // returns to the event loop, so the entries stay valid meanwhile.
    const QList<QObject *> items = m_selectedComps.toList();
    // Many controls going: their container is repainted once afterwards,
    // rather than marked for repainting once per control hidden.
    const QorRepaintOnce repaint(items);
    QList<QObject *> kept;
    for (auto it = items.crbegin(); it != items.crend(); ++it) {
        if (*it == stage)
            kept.prepend(*it);
        else
            FreeComponent(*it);
    }
    m_selectedComps = TComponentList(kept);
    if (stage && m_selectedComps.isEmpty())
        m_selectedComps.Add(stage);
    ConsoleCompListChanged();
    RefreshAllExcept({deObjInspector});
}

void TQorDesignCenter::PasteComps()
{
    QWidget *stage = GetDesignStage();
    if (!stage) {
        qCInfo(lcQorConsole) << "Nothing pasted: there is no design stage";
        return;
    }
    QWidget *parent = nullptr;
    if (ControlCountInCompList(m_selectedComps) < 2) {
        QWidget *control = nullptr;
        for (QObject *item : m_selectedComps.toList()) {
            if (item->isWidgetType()) {
                control = static_cast<QWidget *>(item);
                break;
            }
        }
        for (; control; control = control->parentWidget()) {
            if (control == stage || AcceptsControls(control)) {
                parent = control;
                break;
            }
        }
    }
    // Two or more controls, no control at all, or one outside any
    // container of the design: onto the stage.
    if (!parent)
        parent = stage;
    BeginDesignChange(QorDsnConst::LoadStr(QorDsnConst::SPaste));
    const auto end = qScopeGuard([this] { EndDesignChange(); });
    // The pasted components are reported once, the last one selected.
    const TQorDesignUpdateScope update(m_designManager);
    TVhoClipboard *clipboard = VhoClipboard();
    const bool renamed = clipboard->RenameDuplicates();
    clipboard->SetRenameDuplicates(true);
    clipboard->GetComponents(stage, parent, m_clipPasteLeftOffset, m_clipPasteTopOffset);
    clipboard->SetRenameDuplicates(renamed);
}

bool TQorDesignCenter::GetDirty() const
{
    if (m_designManager && m_designManager->Dirty())
        return true;
    if (m_objInspector && m_objInspector->Modified())
        return true;
    IQorCompTreeView *tree = treeView();
    return tree && tree->Dirty();
}

QUndoStack *TQorDesignCenter::UndoStack() const
{
    return m_history->Stack();
}

void TQorDesignCenter::BeginDesignChange(const QString &Text)
{
    m_history->BeginChange(Text);
}

void TQorDesignCenter::EndDesignChange()
{
    m_history->EndChange();
}

void TQorDesignCenter::DesignerMoveStarting()
{
    m_history->PrepareMove();
}

void TQorDesignCenter::BeginPropertyChange(const QList<QObject *> &Objects, const QString &Property)
{
    m_history->BeginPropertyChange(Objects, Property);
}

void TQorDesignCenter::SetDirty(bool Value)
{
    if (!Value && !m_followingClean)
        m_history->Stack()->setClean();
    if (m_designManager)
        m_designManager->SetDirty(Value);
    if (m_objInspector)
        m_objInspector->SetModified(Value);
    if (IQorCompTreeView *tree = treeView())
        tree->SetDirty(Value);
}

bool IsQorDesignCtrl(const QObject *Component)
{
    if (!Component)
        return false;
    for (const char *name : {"TQorSizer", "TQorRubberBand", "TQorDesignManager", "TQorDesignCenter",
                             "TQorDesignCompPopupMenu", "TQorDesignAction", "TQorCompTreeView"}) {
        if (Component->inherits(name))
            return true;
    }
    return false;
}
