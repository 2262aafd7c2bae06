// SPDX-License-Identifier: MIT
#include "designer/qormanager.h"

#include "designer/qorproxies_p.h"
#include "designer/qorrunlater_p.h"
#include "designer/qordesigngrid_p.h"
#include "designer/qorrubberband_p.h"
#include "designer/qorstage.h"
#include "designer/qorsizers_p.h"
#include "foundation/qorerror.h"
#include "foundation/qorlogging_p.h"
#include "foundation/vhosysutils.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QHash>
#include <QMenu>
#include <QPixmap>
#include <QScopeGuard>
#include <QWidget>

#include <algorithm>
#include <cmath>

IQorDesignCenter::~IQorDesignCenter() = default;
IQorObjInspector::~IQorObjInspector() = default;
IQorCompPopupMenu::~IQorCompPopupMenu() = default;

TQorDesignUpdateScope::TQorDesignUpdateScope(TQorDesignManager *Manager)
    : m_manager(Manager)
{
    if (m_manager)
        m_manager->BeginUpdate();
}

TQorDesignUpdateScope::~TQorDesignUpdateScope()
{
    if (m_manager)
        m_manager->EndUpdate();
}

TQorDesignManager::TQorDesignManager(QObject *Owner)
    : QObject(Owner)
    , m_designProxies(std::make_unique<TQorDesignWndProcProxyList>())
    , m_sizers(std::make_unique<TQorSizerList>(this))
    , m_stageProxy(std::make_unique<TQorDesignStageProxy>())
    , m_stageSizer(new TQorStageSizer)
{
    if (Owner && Owner->isWidgetType())
        m_designStage = static_cast<QWidget *>(Owner);
    m_stageProxy->SetDesignManager(this);
}

TQorDesignManager::~TQorDesignManager()
{
    SetIsDesigning(false);
    m_destroying = true;
    unwatchStage();
    m_designProxies.reset();
    m_stageProxy.reset();
    m_sizers.reset();
    delete m_stageSizer.data();
}

TQorStageSizer *TQorDesignManager::StageSizer() const
{
    return m_stageSizer;
}

// ---- Designing ---------------------------------------------------------

void TQorDesignManager::SetIsDesigning(bool Value)
{
    if (m_isDesigning == Value)
        return;
    m_isDesigning = Value;
    if (Value)
        InitDesigning();
    else
        DoneDesigning();
    Q_EMIT IsDesigningChanged(Value);
}

void TQorDesignManager::SetDesignStage(QWidget *Stage)
{
    if (m_designStage == Stage)
        return;
    DoneDesigning();
    m_designStage = Stage;
    InitDesigning();
    Q_EMIT DesignStageChanged(Stage);
}

void TQorDesignManager::InitDesigning()
{
    if (!m_designStage || !m_isDesigning)
        return;
    // A ready-made form's named widgets become the stage's components.
    const int adopted = AdoptNamedDescendants(m_designStage);
    watchStage();
    InstallAllSizers();
    InstallStageSizer();
    InstallStageProxy();
    InstallAllProxies();
    // Widgets placed while designing was off (the nested components of a
    // pasted form among them) joined the stage unreported: the tree shows
    // them now.
    if (adopted > 0 && m_consoleCenter)
        m_consoleCenter->RefreshCompTree();
}

void TQorDesignManager::DoneDesigning()
{
    ReleaseAllSizers();
    ReleaseStageSizer();
    ReleaseAllProxies();
    ReleaseStageProxy();
    unwatchStage();
    m_selectedComps.Clear();
}

void TQorDesignManager::InstallAllSizers()
{
}

void TQorDesignManager::InstallStageSizer()
{
    SelectControl(m_designStage, QPoint(-1, -1), csmSelect, true, true);
    if (m_stageSizer)
        m_stageSizer->SetPopupMenu(m_designPopupMenu);
}

void TQorDesignManager::InstallStageProxy()
{
    m_stageProxy->SetControl(m_designStage);
    m_stageProxy->SetOwnerControl(m_designStage);
    m_stageProxy->SetDesignManager(this);
}

void TQorDesignManager::InstallAllProxies()
{
    if (!m_designStage)
        return;
    for (QObject *component : ComponentList(m_designStage)) {
        if (component->isWidgetType() && !IsQorDesignCtrl(component))
            AddProxiedControl(static_cast<QWidget *>(component));
    }
}

void TQorDesignManager::ReleaseAllSizers()
{
    // The overlay goes first: the sizers freed after it have no marks left
    // to take off the screen one by one.
    m_sizers->ReleaseOverlay();
    m_sizers->ClearSizer();
}

void TQorDesignManager::ReleaseStageSizer()
{
    if (m_stageSizer)
        m_stageSizer->SetControl(nullptr);
}

void TQorDesignManager::ReleaseAllProxies()
{
    m_designProxies->ClearProxies();
}

void TQorDesignManager::ReleaseStageProxy()
{
    m_stageProxy->SetControl(nullptr);
}

void TQorDesignManager::AddProxiedControl(QWidget *Control)
{
    const int index = m_designProxies->AddControl(Control, true);
    if (index < 0)
        return;
    TQorDesignWndProcProxy *proxy = m_designProxies->Proxies(index);
    Q_ASSERT(proxy); // the index the list just answered
    proxy->SetOwnerControl(m_designStage);
    proxy->SetDesignManager(this);
}

bool TQorDesignManager::ComponentBelongToStage(const QObject *Component) const
{
    return Component && m_designStage && Owner(Component) == m_designStage;
}

bool TQorDesignManager::IsQorDesignCtrl(const QObject *Component)
{
    // Sizers, overlays and the rubber band declare themselves the library's.
    return IsQorDesignObject(Component);
}

void TQorDesignManager::watchStage()
{
    unwatchStage();
    if (!m_designStage)
        return;
    TQorOwnerNotifier *notifier = OwnerNotifier(m_designStage);
    m_insertedConnection = connect(notifier, &TQorOwnerNotifier::ComponentInserted, this,
                                   [this](QObject *c) { Notification(c, TQorCompOperation::opInsert); });
    m_removedConnection = connect(notifier, &TQorOwnerNotifier::ComponentRemoved, this,
                                  [this](QObject *c) { Notification(c, TQorCompOperation::opRemove); });
    m_stageDestroyedConnection =
        connect(m_designStage, &QObject::destroyed, this, &TQorDesignManager::stageDestroyed);
}

void TQorDesignManager::unwatchStage()
{
    disconnect(m_insertedConnection);
    disconnect(m_removedConnection);
    disconnect(m_stageDestroyedConnection);
}

void TQorDesignManager::stageDestroyed()
{
    // The stage and everything on it are gone: release what referred to
    // them without touching them.
    m_isDesigning = false;
    DoneDesigning();
    Q_EMIT IsDesigningChanged(false);
    Q_EMIT DesignStageChanged(nullptr);
}

void TQorDesignManager::Notification(QObject *Component, TQorCompOperation Operation)
{
    if (m_destroying || !m_isDesigning || !Component || IsQorDesignCtrl(Component))
        return;
    auto *center = m_consoleCenter;
    if (Operation == TQorCompOperation::opInsert) {
        if (Owner(Component) != m_designStage)
            return;
        const QString name = Component->objectName();
        if (name.isEmpty() || CompNameExists(Component, m_designStage, false))
            Component->setObjectName(GetCompUniqueID(Component->metaObject(), m_designStage));
        if (Component->isWidgetType())
            AddProxiedControl(static_cast<QWidget *>(Component));
        m_dirty = true;
        if (m_updateCount > 0) {
            // Reported once the command is done: the last one inserted.
            m_pendingInsert = Component;
            return;
        }
        if (center)
            center->DesignStageCompsModified(Component, Operation);
    } else {
        m_dirty = true;
        const bool report = m_updateCount == 0;
        if (center && report)
            center->DesignStageCompsModified(Component, Operation);
        // Only the address is compared: the component may be dying.
        auto *w = reinterpret_cast<QWidget *>(Component);
        m_sizers->DelControl(w);
        m_designProxies->DelControl(w);
        if (!report) {
            m_pendingRemoval = true;
            return;
        }
        if (center)
            center->DesignStageCompsModified(Component, Operation);
        // The list is refilled from the sizers; where that drops more than
        // the component that went (the stage chosen in the tree beside
        // controls), the center and the other elements hear of it.
        QList<QObject *> expected = m_selectedComps.toList();
        expected.removeAll(Component);
        FillSelectedComps();
        // Compared by hand: Qt's list comparison hands an empty list's null
        // data to memcmp.
        const QList<QObject *> now = m_selectedComps.toList();
        if (now.size() != expected.size() || !std::equal(now.cbegin(), now.cend(), expected.cbegin()))
            notifyCenterSelection();
    }
}

void TQorDesignManager::BeginUpdate()
{
    ++m_updateCount;
}

void TQorDesignManager::EndUpdate()
{
    if (m_updateCount == 0 || --m_updateCount > 0)
        return;
    if (m_pendingRemoval) {
        // What the command left selected stays; what left the stage goes.
        m_pendingRemoval = false;
        QList<QObject *> kept;
        for (QObject *component : m_selectedComps.toList()) {
            if (component == m_designStage || ComponentBelongToStage(component))
                kept.append(component);
        }
        if (kept.size() != m_selectedComps.Count())
            m_selectedComps = TComponentList(kept);
    }
    if (QObject *inserted = m_pendingInsert) {
        m_pendingInsert = nullptr;
        if (m_consoleCenter && !m_destroying && m_isDesigning)
            m_consoleCenter->DesignStageCompsModified(inserted, TQorCompOperation::opInsert);
    }
}

void TQorDesignManager::SetEnabled(bool Value)
{
    if (m_enabled == Value)
        return;
    m_enabled = Value;
    m_sizers->SetAllEnabled(Value);
    m_designProxies->SetAllEnabled(Value);
    m_stageProxy->SetEnbaled(Value);
    if (m_stageSizer)
        m_stageSizer->SetEnabled(Value);
    Q_EMIT EnabledChanged(Value);
}

void TQorDesignManager::SetDesignPopupMenu(QMenu *Menu)
{
    m_designPopupMenu = Menu;
}

void TQorDesignManager::SetDirty(bool Value)
{
    if (m_dirty == Value)
        return;
    m_dirty = Value;
    if (m_consoleCenter)
        m_consoleCenter->SetDirty(Value);
}

IQorObjInspector *TQorDesignManager::ObjInspector() const
{
    if (m_objInspectorIsObject && !m_objInspectorObject)
        return nullptr;
    return m_objInspector;
}

void TQorDesignManager::SetObjInspector(IQorObjInspector *Inspector)
{
    m_objInspector = Inspector;
    m_objInspectorObject = dynamic_cast<QObject *>(Inspector);
    m_objInspectorIsObject = m_objInspectorObject != nullptr;
    NotifyObjInspector();
}

bool TQorDesignManager::DisplayGrid() const
{
    return m_stageProxy->DisplayGrid();
}

void TQorDesignManager::SetDisplayGrid(bool Value)
{
    m_stageProxy->SetDisplayGrid(Value);
}

int TQorDesignManager::GridSizeX() const
{
    return m_stageProxy->GridSizeX();
}

void TQorDesignManager::SetGridSizeX(int Value)
{
    m_stageProxy->SetGridSizeX(Value);
}

int TQorDesignManager::GridSizeY() const
{
    return m_stageProxy->GridSizeY();
}

void TQorDesignManager::SetGridSizeY(int Value)
{
    m_stageProxy->SetGridSizeY(Value);
}

// ---- Selection ---------------------------------------------------------

void TQorDesignManager::SelectControl(QWidget *Control, const QPoint &Pos, TControlSelectMode Mode, bool Notify,
                                      bool BeginMove)
{
    if (!m_isDesigning || !m_enabled || !Control)
        return;
    QWidget *stage = m_designStage;
    auto addSizer = [&] {
        const int index = m_sizers->AddControl(Control, this, true);
        if (TQorSizer *sizer = m_sizers->Sizers(index))
            sizer->SetPopupMenu(m_designPopupMenu);
    };
    switch (Mode) {
    case csmSelect:
        // Freed sizers take their marks off the screen themselves: the stage
        // is not redrawn as a whole (on a stage of a thousand controls every
        // click would repaint them all).
        m_sizers->ClearSizer();
        if (m_stageSizer)
            m_stageSizer->SetControl(nullptr);
        if (Control != stage)
            addSizer();
        else if (m_stageSizer)
            m_stageSizer->SetControl(stage);
        break;
    case csmAdd:
        if (Control != stage)
            addSizer();
        else if (m_stageSizer)
            m_stageSizer->SetControl(stage);
        break;
    case csmDel:
        m_sizers->DelControl(Control);
        break;
    case csmToggle:
        if (Control == stage) {
            if (m_stageSizer && m_stageSizer->Control() == stage)
                m_stageSizer->SetControl(nullptr);
            else if (m_stageSizer)
                m_stageSizer->SetControl(stage);
        } else if (m_sizers->SizerOf(Control)) {
            m_sizers->DelControl(Control);
        } else {
            addSizer();
        }
        break;
    case csmClear:
        m_sizers->ClearSizer();
        if (m_stageSizer)
            m_stageSizer->SetControl(stage);
        break;
    }
    if (Notify)
        notifyCenterSelection();
    if (Mode == csmSelect && Control != stage && Pos.x() >= 1 && Pos.y() >= 1 && BeginMove) {
        const QPoint global = Control->mapToGlobal(Pos);
        QPointer<TQorSizer> sizer = m_sizers->SizerOf(Control);
        // The new sizer shows before the drag begins; the button may have
        // been let go meanwhile (a quick click), then nothing is dragged.
        QCoreApplication::processEvents();
        if (sizer && sizer->Control() == Control && QGuiApplication::mouseButtons().testFlag(Qt::LeftButton))
            sizer->BeginMoveAsSender(global);
    }
}

void TQorDesignManager::notifyCenterSelection()
{
    // The selection list is filled whether or not a center listens, so
    // that the application's own code can read it.
    FillSelectedComps();
    if (m_consoleCenter)
        m_consoleCenter->DesignerSelCompChanged();
    else
        // Without a center to pass it on, the inspector hears of it here.
        NotifyObjInspector();
    Q_EMIT SelectionChanged();
}

void TQorDesignManager::SelectControlInRect(const QRect &Rect, TControlSelectMode Mode)
{
    if (!m_isDesigning || Rect.width() <= 0 || Rect.height() <= 0 || !m_designStage)
        return;
    for (QObject *component : ComponentList(m_designStage)) {
        if (!component->isWidgetType() || IsQorDesignCtrl(component))
            continue;
        auto *w = static_cast<QWidget *>(component);
        if (IsControlShowing(w) && ControlInRect(w, Rect))
            SelectControl(w, QPoint(0, 0), Mode, false, false);
    }
    notifyCenterSelection();
}

bool TQorDesignManager::IsControlShowing(const QWidget *Control) const
{
    return Control && m_designStage && (Control == m_designStage || Control->isVisibleTo(m_designStage));
}

bool TQorDesignManager::ControlInRect(const QWidget *Control, const QRect &Rect) const
{
    if (!Control || !m_designStage)
        return false;
    QPoint topLeft;
    if (m_designStage->isAncestorOf(Control))
        topLeft = Control->mapTo(m_designStage, QPoint(0, 0));
    else
        topLeft = m_designStage->mapFromGlobal(Control->mapToGlobal(QPoint(0, 0)));
    // Any overlap counts, and a band that only touches an edge touches.
    const int left = topLeft.x();
    const int top = topLeft.y();
    const int right = left + Control->width();
    const int bottom = top + Control->height();
    return left <= RectRight(Rect) && Rect.left() <= right && top <= RectBottom(Rect) && Rect.top() <= bottom;
}

void TQorDesignManager::SelectAllControls()
{
    if (!m_isDesigning || !m_designStage)
        return;
    for (QObject *component : ComponentList(m_designStage)) {
        if (component->isWidgetType() && !IsQorDesignCtrl(component)
            && IsControlShowing(static_cast<QWidget *>(component)))
            SelectControl(static_cast<QWidget *>(component), QPoint(0, 0), csmAdd, false, false);
    }
    notifyCenterSelection();
}

void TQorDesignManager::DeselectAll()
{
    if (!m_designStage)
        return;
    m_selectedComps = TComponentList({m_designStage.data()});
    ReSelectComps();
}

void TQorDesignManager::ReSelectComps()
{
    if (!m_isDesigning)
        return;
    if (m_selectedComps.isEmpty()) {
        // Nothing chosen (the tree's last chosen row let go): no sizer
        // stays for a control that is no longer selected.
        m_sizers->ClearSizer();
        if (m_stageSizer)
            m_stageSizer->SetControl(nullptr);
        return;
    }
    QList<QWidget *> wanted;
    bool stageWanted = false;
    for (QObject *component : m_selectedComps.toList()) {
        // The stage in the list is selected too (by the stage sizer): a
        // deletion through the center leaves it as the selection.
        if (component != m_designStage
            && (!component->isWidgetType() || !ComponentBelongToStage(component) || IsQorDesignCtrl(component)))
            continue;
        if (component == m_designStage)
            stageWanted = true;
        wanted.append(static_cast<QWidget *>(component));
    }
    // Sizers that stand for the selection already (the inspector or the
    // tree refreshing the design after a change) are kept and follow their
    // controls: made anew, the marks of a large selection would be taken
    // off the screen and put back, and the design under them repainted.
    if (m_enabled && keepsSizersFor(wanted, stageWanted)) {
        for (int i = 0; i < m_sizers->Count(); ++i) {
            TQorSizer *sizer = m_sizers->Sizers(i);
            sizer->SetPopupMenu(m_designPopupMenu);
            sizer->UpdateBounds();
        }
        // The one sizer of a single selection shows its marks itself; those
        // of a multiple one are painted by the overlay as their controls go.
        if (m_sizers->Count() == 1)
            m_sizers->UpdateAllShapes();
        if (m_stageSizer && stageWanted)
            m_stageSizer->UpdateBounds();
        return;
    }
    m_sizers->ClearSizer();
    bool first = true;
    for (QWidget *control : std::as_const(wanted)) {
        SelectControl(control, QPoint(-1, -1), first ? csmSelect : csmAdd, false, false);
        first = false;
    }
}

bool TQorDesignManager::keepsSizersFor(const QList<QWidget *> &Controls, bool StageWanted) const
{
    if (StageWanted != (m_stageSizer && m_stageSizer->Control() == m_designStage))
        return false;
    int at = 0;
    for (QWidget *control : Controls) {
        if (control == m_designStage)
            continue;
        TQorSizer *sizer = at < m_sizers->Count() ? m_sizers->Sizers(at) : nullptr;
        if (!sizer || sizer->Control() != control)
            return false;
        ++at;
    }
    return at == m_sizers->Count() && (at > 0 || StageWanted);
}

void TQorDesignManager::DeselectUnsiblingControl(QWidget *Control, bool DeleteNonControls)
{
    const QWidget *parent = Control ? Control->parentWidget() : nullptr;
    for (int i = m_selectedComps.Count() - 1; i >= 0; --i) {
        QObject *component = m_selectedComps.Items(i);
        if (component && component->isWidgetType()) {
            if (static_cast<QWidget *>(component)->parentWidget() != parent)
                m_selectedComps.Delete(i);
        } else if (DeleteNonControls) {
            m_selectedComps.Delete(i);
        }
    }
    ReSelectComps();
}

void TQorDesignManager::DeselectComponent()
{
    RemoveComponentFromCompList(m_selectedComps);
    ReSelectComps();
}

void TQorDesignManager::FillSelectedComps()
{
    QList<QObject *> selected;
    if (m_sizers->Count() > 0) {
        if (m_stageSizer)
            m_stageSizer->SetControl(nullptr);
        selected.reserve(m_sizers->Count());
        for (int i = 0; i < m_sizers->Count(); ++i) {
            if (QWidget *control = m_sizers->Sizers(i)->Control())
                selected.append(control);
        }
    } else if (m_stageSizer && m_stageSizer->Control() && m_designStage) {
        selected.append(m_designStage);
    }
    // Filled in one go: adding one by one would tidy the list each time.
    m_selectedComps = TComponentList(selected);
}

void TQorDesignManager::SetSelectedComps(const TComponentList &List)
{
    // The selection shown already (a popup menu keeping every control of
    // a large selection): its sizers stand as they are, rather than being
    // made again one by one.
    if (List == m_selectedComps && selectionShown())
        return;
    m_selectedComps = List;
    ReSelectComps();
}

bool TQorDesignManager::selectionShown() const
{
    if (!m_isDesigning || m_selectedComps.isEmpty())
        return false;
    // What ReSelectComps would make: a sizer for each selected control of
    // the stage, the stage's sizer bound when the stage is selected.
    int controls = 0;
    bool stage = false;
    for (QObject *component : m_selectedComps.toList()) {
        if (component == m_designStage) {
            stage = true;
            continue;
        }
        // A control with a sizer is shown; one without is shown only when
        // ReSelectComps would pass over it too.
        if (component->isWidgetType() && m_sizers->SizerOf(static_cast<QWidget *>(component))) {
            ++controls;
            continue;
        }
        if (component->isWidgetType() && ComponentBelongToStage(component) && !IsQorDesignCtrl(component))
            return false;
    }
    const bool stageBound = m_stageSizer && m_stageSizer->Control() == m_designStage.data();
    return controls == m_sizers->Count() && stage == stageBound;
}

TQorSizer *TQorDesignManager::GetSelectSizer() const
{
    return m_sizers->Count() == 1 ? m_sizers->Sizers(0) : nullptr;
}

void TQorDesignManager::RefreshSizers()
{
    if (m_sizers->Count() == 0) {
        if (m_stageSizer)
            m_stageSizer->UpdateBounds();
        return;
    }
    for (int i = 0; i < m_sizers->Count(); ++i)
        m_sizers->Sizers(i)->UpdateBounds();
}

void TQorDesignManager::RepaintSizers()
{
    m_sizers->RepaintSizers();
}

void TQorDesignManager::Refresh()
{
    ReSelectComps();
}

// ---- Notifications -----------------------------------------------------

void TQorDesignManager::NotifyObjInspector()
{
    IQorObjInspector *inspector = ObjInspector();
    if (!inspector)
        return;
    FillSelectedComps();
    inspector->SetActiveComponents(m_selectedComps);
}

void TQorDesignManager::SizersMoved()
{
    m_dirty = true;
    ReportMoved(true);
}

void TQorDesignManager::ReportMoved(bool Signal)
{
    // A drag or a nudge of many controls ends each sizer's move, and each
    // control that moves reports it again: the application and the center
    // hear of it once, when the reports have stopped coming.
    m_movedSignal = m_movedSignal || Signal;
    ++m_movedRequests;
    if (m_movedQueued)
        return;
    m_movedQueued = true;
    queueMovedCheck();
}

void TQorDesignManager::queueMovedCheck()
{
    m_movedSeen = m_movedRequests;
    QMetaObject::invokeMethod(this, &TQorDesignManager::checkMoved, Qt::QueuedConnection);
}

void TQorDesignManager::checkMoved()
{
    // Reports that came meanwhile were posted before this check was, so a
    // turn of the event loop without a new one means they are all in.
    if (m_movedRequests != m_movedSeen) {
        queueMovedCheck();
        return;
    }
    const bool signal = m_movedSignal;
    m_movedQueued = false;
    m_movedSignal = false;
    m_movedRequests = 0;
    if (m_destroying)
        return;
    if (signal)
        Q_EMIT OnControlsMoved(this);
    if (m_consoleCenter)
        m_consoleCenter->DesignerSelCompMoved();
    m_movedByKeys = false;
}

void TQorDesignManager::NoteMoveStarting()
{
    if (m_consoleCenter && !m_destroying)
        m_consoleCenter->DesignerMoveStarting();
}

void TQorDesignManager::SizersModified()
{
    m_dirty = true;
    FillSelectedComps();
    Q_EMIT OnCompsChange(this);
    if (m_consoleCenter) {
        m_consoleCenter->DesignerSelCompChanged();
        m_consoleCenter->SetDirty(true);
    }
}

void TQorDesignManager::SizersChanged()
{
    if (m_destroying)
        return;
    notifyCenterSelection();
}

void TQorDesignManager::CtrlMoved(QWidget *Control)
{
    if (!Control)
        return;
    // The address is compared only: the control may have gone since the
    // notification was posted.
    const bool selected = Control == m_designStage || m_sizers->SizerOf(Control);
    // A control that is not selected may carry selected ones along (a
    // group box, a tab widget laying out its pages).
    if (!selected && m_sizers->Count() == 0)
        return;
    // Moving a selection of many controls reports each of them: the sizers
    // are brought up to date once, after the last report waiting.
    QorRunOnceLater(this, m_refreshQueued, [this] { RefreshSizers(); });
    if (selected)
        ReportMoved(false);
}

void TQorDesignManager::CtrlShownOrHidden(QWidget *Control)
{
    if (!Control || !m_sizers->SizerOf(Control))
        return;
    // A page that becomes current or stops being current reports each of
    // its controls: the sizers are reshaped once, after the last report.
    QorRunOnceLater(this, m_reshapeQueued, [this] { m_sizers->UpdateAllShapes(); });
}

void TQorDesignManager::EnvokeStageMouseMove(QWidget *Control, Qt::KeyboardModifiers Shift, const QPoint &Pos)
{
    if (!m_designStage || !Control)
        return;
    QPoint at = Pos;
    if (Control != m_designStage) {
        if (m_designStage->isAncestorOf(Control))
            at = Control->mapTo(m_designStage, Pos);
        else
            at = m_designStage->mapFromGlobal(Control->mapToGlobal(Pos));
    }
    if (OnStageMouseMoveHandler)
        OnStageMouseMoveHandler(this, Control, Shift, at.x(), at.y());
    Q_EMIT OnStageMouseMove(this, Control, Shift, at.x(), at.y());
}

// ---- Insertion ---------------------------------------------------------

bool TQorDesignManager::GetIsDynInsComp() const
{
    return GetDynInsCompClass() != nullptr;
}

const QMetaObject *TQorDesignManager::GetDynInsCompClass() const
{
    return m_consoleCenter ? m_consoleCenter->GetPalleteSelectedClass() : nullptr;
}

void TQorDesignManager::DynInsCompDone(QObject *Component)
{
    if (Component) {
        if (OnDynInsComponentHandler)
            OnDynInsComponentHandler(this, Component);
        Q_EMIT OnDynInsComponent(this, Component);
    }
    if (m_consoleCenter)
        m_consoleCenter->DynCompCreated(Component);
}

// ---- Inline editing ----------------------------------------------------

void TQorDesignManager::StartEmbedEdit()
{
    if (m_sizers->Count() != 1)
        return;
    Q_ASSERT(m_sizers->Sizers(0));
    m_sizers->Sizers(0)->StartEmbedEdit();
    m_embeddedEditing = m_sizers->Sizers(0)->IsInlineEditing();
}

void TQorDesignManager::EndEmbedEdit()
{
    if (m_sizers->Count() != 1)
        return;
    Q_ASSERT(m_sizers->Sizers(0));
    m_sizers->Sizers(0)->EndEmbedEdit();
    m_embeddedEditing = false;
}

bool TQorDesignManager::IsRubbering() const
{
    TQorRubberBand *band = m_stageProxy->RubberBand();
    return band && band->isVisible();
}

bool TQorDesignManager::IsLiveControl(const QWidget *Control) const
{
    // Looked up by address: every designed widget and the stage have a
    // proxy for exactly as long as they live.
    return Control && QorProxyOf(Control) != nullptr;
}

namespace {

TQorDesignManager::TComponentEditorLauncher &defaultLauncher()
{
    static TQorDesignManager::TComponentEditorLauncher launcher;
    return launcher;
}

} // namespace

void TQorDesignManager::SetDefaultComponentEditorLauncher(TComponentEditorLauncher Launcher)
{
    defaultLauncher() = std::move(Launcher);
}

bool TQorDesignManager::LaunchComponentEditor(QObject *Component)
{
    if (OnLaunchComponentEditor)
        return OnLaunchComponentEditor(Component);
    return defaultLauncher() ? defaultLauncher()(this, Component) : false;
}

// ---- Deletion, z-order, image ------------------------------------------

void TQorDesignManager::DelSelectedControls()
{
    if (m_consoleCenter) {
        m_consoleCenter->DelSelCtrls();
        return;
    }
    if (m_sizers->Count() == 0)
        return;
    m_sizers->RemoveAllSizerAndCtrls();
    // With the selection gone, the stage is selected.
    SelectControl(m_designStage, QPoint(-1, -1), csmSelect, true, false);
}

// ---- Arranging the selection ------------------------------------------

namespace {

// Halves go to the even neighbour.
int roundHalfEven(double Value)
{
    return int(std::nearbyint(Value));
}

} // namespace

void TQorDesignManager::SetSelCtrlDesignAligment(TQorDesignAlignmentStyle HorzStyle,
                                                 TQorDesignAlignmentStyle VertStyle)
{
    QList<QWidget *> controls;
    for (QObject *component : m_selectedComps.toList()) {
        if (component && component->isWidgetType())
            controls.append(static_cast<QWidget *>(component));
    }
    // The box around them all, each in its own parent's coordinates, with
    // right and bottom one past the last pixel.
    int left = -1, top = -1, right = -1, bottom = -1;
    bool first = true;
    for (QWidget *c : controls) {
        const QRect g = c->geometry();
        if (first) {
            first = false;
            left = g.x();
            top = g.y();
            right = RectRight(g);
            bottom = RectBottom(g);
        } else {
            left = std::min(left, g.x());
            top = std::min(top, g.y());
            right = std::max(right, RectRight(g));
            bottom = std::max(bottom, RectBottom(g));
        }
    }
    // Nothing is aligned without a control, nor when the box starts left
    // of or above the parent's origin, whichever control is first.
    if (left < 0)
        return;
    // The sizers follow also when spreading a single control fails after
    // the pass moved it.
    const auto refresh = qScopeGuard([this] {
        RefreshSizers();
        ReportMoved(false);
    });
    auto place = [](TQorDesignAlignmentStyle Style, int Low, int High, int Size, int ParentSize, int Current) {
        switch (Style) {
        case asLeftOrTop: return Low;
        // From the parent's origin, not from the box's: kept as it is.
        case asCenters: return roundHalfEven((High - Low + 1 - Size) / 2.0);
        case asRightOrBottom: return High - Size;
        case asCenterInWindow: return roundHalfEven((ParentSize - Size) / 2.0);
        default: return Current;
        }
    };
    for (QWidget *c : controls) {
        QWidget *parent = c->parentWidget();
        const int x = place(HorzStyle, left, right, c->width(), parent ? parent->width() : 0, c->x());
        const int y = place(VertStyle, top, bottom, c->height(), parent ? parent->height() : 0, c->y());
        if (QPoint(x, y) != c->pos())
            c->move(x, y);
    }
    // The edges are spread from the box's start over its whole span, so the
    // last one lands one past the box: kept as it is.
    auto spread = [&controls](int Low, int High, bool Horizontal) {
        QList<QWidget *> rest = controls;
        const int n = int(rest.size());
        if (n - 1 == 0)
            throw EZeroDivide(QStringLiteral("Floating point division by zero"));
        const double step = double(High - Low + 1) / (n - 1);
        for (int k = 0; k < n; ++k) {
            auto first = std::min_element(rest.begin(), rest.end(), [Horizontal](QWidget *a, QWidget *b) {
                return Horizontal ? a->x() < b->x() : a->y() < b->y();
            });
            QWidget *c = *first;
            rest.erase(first);
            const int edge = Low + roundHalfEven(k * step);
            c->move(Horizontal ? edge : c->x(), Horizontal ? c->y() : edge);
        }
    };
    if (HorzStyle == asSpaceEqual)
        spread(left, right, true);
    if (VertStyle == asSpaceEqual)
        spread(top, bottom, false);
}

void TQorDesignManager::SetSelCtrlDesignSize(TQorDesignSizeStyle WidthStyle, TQorDesignSizeStyle HeightStyle,
                                             int AWidth, int AHeight)
{
    QList<QWidget *> controls;
    for (QObject *component : m_selectedComps.toList()) {
        if (component && component->isWidgetType())
            controls.append(static_cast<QWidget *>(component));
    }
    auto target = [&controls](TQorDesignSizeStyle Style, int Custom, bool Width) {
        switch (Style) {
        case ssToSmallest: {
            int least = 2147483647;
            for (QWidget *c : controls)
                least = std::min(least, Width ? c->width() : c->height());
            return least;
        }
        case ssToLargest: {
            int most = -1;
            for (QWidget *c : controls)
                most = std::max(most, Width ? c->width() : c->height());
            return most;
        }
        case ssCustom: return Custom;
        default: return -1;
        }
    };
    const int width = target(WidthStyle, AWidth, true);
    const int height = target(HeightStyle, AHeight, false);
    for (QWidget *c : controls) {
        const int w = WidthStyle != ssNoChange && width >= 0 ? width : c->width();
        const int h = HeightStyle != ssNoChange && height >= 0 ? height : c->height();
        if (QSize(w, h) != c->size())
            c->resize(w, h);
    }
    // A control that is not showing (on a tab page that is not current)
    // hears of its new size only when it shows again: its sizer follows
    // now, as after an alignment.
    RefreshSizers();
    ReportMoved(false);
}

void TQorDesignManager::ScaleControls(int Percent, TQorDesignScaleStyle Style)
{
    if (Style == ssAll) {
        QorScaleBy(m_designStage, Percent, 100);
    } else {
        for (QObject *component : m_selectedComps.toList()) {
            if (component && component->isWidgetType())
                QorScaleBy(static_cast<QWidget *>(component), Percent, 100);
        }
    }
    // Controls that are not showing report their new bounds only when they
    // show again.
    RefreshSizers();
}

void TQorDesignManager::FlipChildren(TFlipChildrenMode Mode)
{
    if (Mode == fcAll) {
        QorFlipChildren(m_designStage, true);
    } else {
        for (QObject *component : m_selectedComps.toList()) {
            if (component && component->isWidgetType())
                QorFlipChildren(static_cast<QWidget *>(component), true);
        }
    }
    // Controls that are not showing report their moves only when they show
    // again.
    RefreshSizers();
}

QList<TQorSizer *> TQorDesignManager::sizersBackToFront() const
{
    // The sizers by parent (in the order the parents first come in the
    // selection), each parent's in its stacking order: a parent lists its
    // children from the back to the front. Each parent is indexed once.
    struct Entry
    {
        TQorSizer *sizer;
        int parentRank;
        int depth;
    };
    QHash<const QWidget *, int> ranks;
    QHash<const QWidget *, QHash<const QObject *, int>> depths;
    std::vector<Entry> entries;
    for (int i = 0; i < m_sizers->Count(); ++i) {
        TQorSizer *sizer = m_sizers->Sizers(i);
        Q_ASSERT(sizer); // i is within the list
        QWidget *control = sizer->Control();
        if (!control)
            continue;
        const QWidget *parent = control->parentWidget();
        if (!ranks.contains(parent)) {
            ranks.insert(parent, int(ranks.size()));
            QHash<const QObject *, int> &depth = depths[parent];
            if (parent) {
                const QObjectList &children = parent->children();
                for (int k = 0; k < children.size(); ++k)
                    depth.insert(children.at(k), k);
            }
        }
        entries.push_back({sizer, ranks.value(parent), depths.value(parent).value(control, -1)});
    }
    std::stable_sort(entries.begin(), entries.end(), [](const Entry &a, const Entry &b) {
        return a.parentRank != b.parentRank ? a.parentRank < b.parentRank : a.depth < b.depth;
    });
    QList<TQorSizer *> sizers;
    sizers.reserve(qsizetype(entries.size()));
    for (const Entry &e : entries)
        sizers.append(e.sizer);
    return sizers;
}

void TQorDesignManager::BringSelCtrlsToFront()
{
    // Raised from the back to the front, so the selection keeps its own
    // order in front of the other controls.
    const QList<TQorSizer *> sizers = sizersBackToFront();
    for (TQorSizer *sizer : sizers)
        sizer->BringCtrlToFront();
    m_sizers->RaiseMarks();
    if (m_consoleCenter && !sizers.isEmpty())
        m_consoleCenter->RefreshCompTree();
}

void TQorDesignManager::SendSelCtrlsToBack()
{
    // Lowered from the front to the back, so the selection keeps its own
    // order behind the other controls.
    const QList<TQorSizer *> sizers = sizersBackToFront();
    for (auto it = sizers.crbegin(); it != sizers.crend(); ++it)
        (*it)->SendCtrlToBack();
    if (m_consoleCenter && !sizers.isEmpty())
        m_consoleCenter->RefreshCompTree();
}

void TQorDesignManager::GetStageBitmap(QPixmap &Bitmap)
{
    if (!m_designStage || !m_designStage->isWindow()) {
        qCInfo(lcQorDesigner) << "No stage image made:"
                              << (m_designStage ? "the stage is not a window" : "there is no stage");
        return;
    }
    DeselectAll();
    Bitmap = m_designStage->grab();
}

void TQorDesignManager::GetStagePicture(QPixmap &Picture)
{
    QPixmap bitmap;
    GetStageBitmap(bitmap);
    Picture = bitmap;
}

void TQorDesignManager::PrintStage()
{
    if (!m_designStage || !m_designStage->isWindow()) {
        qCInfo(lcQorDesigner) << "The stage is not printed:"
                              << (m_designStage ? "the stage is not a window" : "there is no stage");
        return;
    }
    DeselectAll();
}
