// SPDX-License-Identifier: MIT
#include "designer/qorproxies_p.h"

#include "designer/qormanager.h"
#include "designer/qorstage.h"
#include "designer/qorsizers_p.h"
#include "foundation/qorclasses.h"
#include "foundation/qorcomponents.h"
#include "foundation/qorlogging_p.h"
#include "foundation/vhosysutils.h"

#include <QAbstractButton>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QHash>
#include <QMenu>
#include <QMouseEvent>
#include <QScopeGuard>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTabWidget>
#include <QToolBox>
#include <QWindow>

namespace {

// ---- The per-widget chains ---------------------------------------------

// Set by the oldest proxy of a chain when a message goes on to the widget's
// own handling.
bool passedToWidget = false;

class ProxyDispatcher final : public QObject
{
public:
    ProxyDispatcher() { setObjectName(QStringLiteral("qt_qor_proxy_dispatcher")); }

    QHash<const QWidget *, std::vector<TQorWndProcProxy *>> chains;

    TQorWndProcProxy *top(const QWidget *w) const
    {
        const auto it = chains.constFind(w);
        return it == chains.constEnd() || it->empty() ? nullptr : it->back();
    }

    // Runs a message through a widget's chain; true when it went on to the
    // widget's own handling.
    bool dispatch(const QWidget *w, TMessage &message)
    {
        TQorWndProcProxy *proxy = top(w);
        if (!proxy)
            return true;
        const bool saved = passedToWidget;
        passedToWidget = false;
        proxy->ProxyWndMethod(message);
        const bool passed = passedToWidget;
        passedToWidget = saved;
        return passed;
    }

    // The widget's proxy takes its input now (not while it is edited in
    // place).
    bool interceptsFor(const QWidget *w) const
    {
        auto *proxy = dynamic_cast<TQorDesignWndProcProxy *>(top(w));
        return proxy && proxy->IsInterceptMsgs();
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *w = static_cast<QWidget *>(watched);
        TMessage message;
        switch (event->type()) {
        case QEvent::Move:
            message.Msg = WM_MOVE;
            message.LParam = PointToLParam(w->pos());
            break;
        case QEvent::Resize:
            message.Msg = WM_SIZE;
            message.LParam = PointToLParam(QPoint(w->width(), w->height()));
            break;
        case QEvent::FocusOut:
            message.Msg = WM_KILLFOCUS;
            if (static_cast<QFocusEvent *>(event)->reason() == Qt::PopupFocusReason) {
                // A popup menu taking the keys for a while: a designed
                // widget shows no focus, and repainting it (a form of a
                // thousand controls) on the way out and back in would be
                // all the popup costs.
                dispatch(w, message);
                return interceptsFor(w);
            }
            break;
        case QEvent::FocusIn:
            if (static_cast<QFocusEvent *>(event)->reason() == Qt::PopupFocusReason)
                return interceptsFor(w);
            return designedStage(w);
        case QEvent::Show:
        case QEvent::Hide:
            // Also when an ancestor is shown or hidden (a tab page that
            // becomes current or stops being current).
            message.Msg = WM_SHOWWINDOW;
            message.WParam = event->type() == QEvent::Show ? 1 : 0;
            break;
        case QEvent::ShortcutOverride: {
            // A designed widget with the keys claims none of them for
            // itself (a designed line edit would keep Ctrl+C): the
            // application's shortcuts work while the design has the keys.
            return interceptsFor(w);
        }
        case QEvent::Shortcut: {
            // The designed widgets' own shortcuts (a button's mnemonic) stay
            // quiet: they would click, toggle or focus the widget.
            return interceptsFor(w);
        }
        default:
            if (TQorMessageEvent *designMessage = QorMessageOf(event)) {
                dispatch(w, designMessage->Message);
                return true;
            }
            return false;
        }
        // Moves, resizes and focus changes have happened already: the
        // widget always sees them, whatever the proxies did; but the stage
        // being designed, which holds the keys for a multiple selection, is
        // not told of its focus: a widget repaints itself, and so the whole
        // design, each time it gains or loses it.
        dispatch(w, message);
        return event->type() == QEvent::FocusOut && designedStage(w);
    }

    bool designedStage(const QWidget *w) const
    {
        auto *proxy = dynamic_cast<TQorDesignStageProxy *>(top(w));
        return proxy && proxy->IsInterceptMsgs();
    }
};

ProxyDispatcher *dispatcher()
{
    static QPointer<ProxyDispatcher> instance;
    if (!instance)
        instance = new ProxyDispatcher;
    return instance;
}

QWidget *nearestProxied(QWidget *w, const QWidget *stop)
{
    ProxyDispatcher *d = dispatcher();
    for (; w; w = w->parentWidget()) {
        if (d->top(w))
            return w;
        if (w == stop)
            break;
    }
    return nullptr;
}

bool isLibraryWidget(const QWidget *w, const QWidget *stop)
{
    for (; w && w != stop; w = w->parentWidget()) {
        if (IsQorDesignObject(w))
            return true;
    }
    return false;
}

quint32 downMessageOf(Qt::MouseButton button)
{
    switch (button) {
    case Qt::LeftButton: return WM_LBUTTONDOWN;
    case Qt::RightButton: return WM_RBUTTONDOWN;
    case Qt::MiddleButton: return WM_MBUTTONDOWN;
    default: return 0;
    }
}

quint32 upMessageOf(Qt::MouseButton button)
{
    switch (button) {
    case Qt::LeftButton: return WM_LBUTTONUP;
    case Qt::RightButton: return WM_RBUTTONUP;
    case Qt::MiddleButton: return WM_MBUTTONUP;
    default: return 0;
    }
}

// A new button, label or group box shows its name, as in form designers,
// so that it is not an empty box on the stage. Other classes (a line
// edit's text is the user's data) stay as they are made.
void giveCaption(QObject *component)
{
    const QString name = component->objectName();
    if (auto *button = qobject_cast<QAbstractButton *>(component))
        button->setText(name);
    else if (auto *label = qobject_cast<QLabel *>(component))
        label->setText(name);
    else if (auto *group = qobject_cast<QGroupBox *>(component))
        group->setTitle(name);
}

} // namespace

// ---- The window filter -------------------------------------------------

// Holds the input of the stage's window while it is designed and hands it
// to the proxies (see the header).
class TQorDesignWindowFilter final : public QObject
{
public:
    explicit TQorDesignWindowFilter(TQorDesignStageProxy *stageProxy)
        : m_stageProxy(stageProxy)
    {
        setObjectName(QStringLiteral("qt_qor_design_window_filter"));
    }

    void install()
    {
        QWidget *stage = m_stageProxy->Control();
        if (!stage)
            return;
        QWidget *top = stage->window();
        if (!top->windowHandle())
            (void)top->winId();
        m_window = top->windowHandle();
        if (m_window)
            m_window->installEventFilter(this);
    }

    void uninstall()
    {
        if (m_window) {
            m_window->removeEventFilter(this);
            // The widget under the mouse sets its own cursor again.
            m_window->unsetCursor();
        }
        m_window = nullptr;
        reset();
    }

    void reset()
    {
        m_pressTarget = nullptr;
        m_pressPassed = false;
        m_pressSwallowed = false;
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool mouseEvent(QMouseEvent *event);
    bool keyEvent(QKeyEvent *event);
    // The widget whose proxy gets a mouse event at a point of the window,
    // after the design surface's own hit test; null: not the design's.
    QWidget *targetAt(const QPoint &windowPos, bool *libraryWidget);
    TQorDesignManager *manager() const { return m_stageProxy->DesignManager(); }

    TQorDesignStageProxy *m_stageProxy;
    QPointer<QWindow> m_window;
    QPointer<QWidget> m_pressTarget;
    bool m_pressPassed = false;
    bool m_pressSwallowed = false;
};

bool TQorDesignWindowFilter::eventFilter(QObject *, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
        return mouseEvent(static_cast<QMouseEvent *>(event));
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return keyEvent(static_cast<QKeyEvent *>(event));
    case QEvent::Wheel: {
        bool library = false;
        const QPoint pos = static_cast<QWheelEvent *>(event)->position().toPoint();
        return targetAt(pos, &library) != nullptr;
    }
    default:
        return false;
    }
}

QWidget *TQorDesignWindowFilter::targetAt(const QPoint &windowPos, bool *libraryWidget)
{
    *libraryWidget = false;
    QWidget *stage = m_stageProxy->Control();
    if (!stage)
        return nullptr;
    QWidget *top = stage->window();
    QWidget *hit = top->childAt(windowPos);
    if (!hit)
        hit = top;
    if (hit != stage && !stage->isAncestorOf(hit))
        return nullptr;
    if (isLibraryWidget(hit, stage)) {
        *libraryWidget = true;
        return nullptr;
    }
    QWidget *target = nearestProxied(hit, stage);
    if (!target)
        return nullptr;
    auto *proxy = dynamic_cast<TQorDesignWndProcProxy *>(QorProxyOf(target));
    if (!proxy || !proxy->IsInterceptMsgs())
        return nullptr;
    TQorDesignManager *m = manager();
    // What the hit test passes over to reach the widget beneath: any
    // control while the rubber band runs, and controls that cannot hold a
    // new component while one is being inserted.
    if (m && m->IsRubbering() && target != stage)
        return stage;
    if (m && m->IsDynInsComp()) {
        while (target != stage) {
            proxy = dynamic_cast<TQorDesignWndProcProxy *>(QorProxyOf(target));
            if (proxy && proxy->CanAcceptChild())
                break;
            QWidget *up = nearestProxied(target->parentWidget(), stage);
            if (!up)
                return stage;
            target = up;
        }
    }
    return target;
}

bool TQorDesignWindowFilter::mouseEvent(QMouseEvent *event)
{
    QWidget *stage = m_stageProxy->Control();
    TQorDesignManager *m = manager();
    if (!stage || !m)
        return false;
    const QEvent::Type type = event->type();
    const bool buttonDown = type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick;
    const bool allUp = type == QEvent::MouseButtonRelease && event->buttons() == Qt::NoButton;

    // A press that went to the library's own widgets (a sizer's handle)
    // keeps its moves and release there.
    if (m_pressPassed && !buttonDown) {
        if (allUp)
            reset();
        return false;
    }
    const QPoint global = event->globalPosition().toPoint();
    // A sizer running a drag it began from a press on its control.
    if (TQorSizer *drag = TQorSizer::ActiveDragSizer(); drag && !m_pressPassed) {
        if (type == QEvent::MouseMove) {
            drag->DragMouseMove(global, event->buttons(), event->modifiers());
            return true;
        }
        if (type == QEvent::MouseButtonRelease && event->button() == Qt::LeftButton) {
            drag->DragMouseMove(global, event->buttons() | Qt::LeftButton, event->modifiers());
            drag->WMLButtonUp();
            if (allUp)
                reset();
            return true;
        }
    }

    const QPoint windowPos = event->position().toPoint();
    QWidget *target = nullptr;
    if (buttonDown || !m_pressSwallowed) {
        bool library = false;
        target = targetAt(windowPos, &library);
        if (buttonDown && !m_pressSwallowed && library) {
            m_pressPassed = true;
            return false;
        }
        if (!target)
            return false;
        if (buttonDown) {
            if (!m_pressSwallowed)
                m_pressTarget = target;
            m_pressSwallowed = true;
        }
    } else if (m->IsRubbering()) {
        // The rubber band holds the mouse for the stage.
        target = stage;
    } else {
        target = m_pressTarget;
        if (!target) {
            if (allUp)
                reset();
            return true;
        }
    }

    // The designed widgets do not set the cursor: over them the window
    // shows the arrow (their own cursors come back when designing ends).
    if (m_window && m_window->cursor().shape() != Qt::ArrowCursor)
        m_window->setCursor(Qt::ArrowCursor);

    const quintptr keyState = KeyStateOf(event->buttons(), event->modifiers());
    const QPoint local = target->mapFromGlobal(global);
    TMessage message;
    message.WParam = keyState;
    message.LParam = PointToLParam(local);
    switch (type) {
    case QEvent::MouseButtonPress:
        message.Msg = downMessageOf(event->button());
        break;
    case QEvent::MouseButtonDblClick:
        message.Msg = event->button() == Qt::LeftButton ? WM_LBUTTONDBLCLK : 0;
        break;
    case QEvent::MouseButtonRelease:
        message.Msg = upMessageOf(event->button());
        break;
    default:
        message.Msg = WM_MOUSEMOVE;
        break;
    }
    if (allUp)
        reset();
    if (message.Msg == 0)
        return true;

    // A selected control: its sizer takes the press on its body, the
    // double click and the right button, as the sizer lying over it would.
    TQorSizer *sizer = target != stage && !m->IsDynInsComp() ? m->Sizers()->SizerOf(target) : nullptr;
    if (sizer && sizer->Enabled()) {
        if (message.Msg == WM_LBUTTONDOWN) {
            sizer->WmLButtonDown(keyState, global);
            return true;
        }
        if (message.Msg == WM_LBUTTONDBLCLK) {
            sizer->WMLButtonDblClk();
            return true;
        }
        if (message.Msg == WM_RBUTTONUP) {
            sizer->WMRButtonUp(global);
            return true;
        }
        if (message.Msg == WM_RBUTTONDOWN)
            return true;
    }
    if (!sizer && message.Msg == WM_RBUTTONUP && target != stage && m->DesignPopupMenu()) {
        // The press selected the control through posted messages that a
        // quick click's release overtakes: the menu comes once they are
        // through, from the new sizer, as for a control selected before.
        QPointer<QWidget> clicked = target;
        QPointer<TQorDesignManager> manager = m;
        QMetaObject::invokeMethod(
            m,
            [clicked, manager, global] {
                if (!clicked || !manager)
                    return;
                TQorSizer *later = manager->Sizers()->SizerOf(clicked);
                if (later && later->Enabled())
                    later->WMRButtonUp(global);
            },
            Qt::QueuedConnection);
    }
    dispatcher()->dispatch(target, message);
    return true;
}

bool TQorDesignWindowFilter::keyEvent(QKeyEvent *event)
{
    QWidget *stage = m_stageProxy->Control();
    TQorDesignManager *m = manager();
    if (!stage || !m)
        return false;
    QWidget *focus = QApplication::focusWidget();
    if (qobject_cast<TQorSizer *>(focus))
        return false;
    if (focus && focus != stage && !stage->isAncestorOf(focus))
        return false;
    if (focus) {
        QWidget *owner = nearestProxied(focus, stage);
        auto *proxy = owner ? dynamic_cast<TQorDesignWndProcProxy *>(QorProxyOf(owner)) : nullptr;
        if (proxy && !proxy->IsInterceptMsgs())
            return false;
        if (isLibraryWidget(focus, stage))
            return false;
    }
    // The keys of the design go to the sizer that has the selection's keys.
    TQorSizer *sizer = m->Sizers()->KeySizer();
    if (!sizer)
        sizer = m->StageSizer();
    if (sizer) {
        if (event->type() == QEvent::KeyPress)
            sizer->KeyDown(event->key(), event->modifiers());
        else if (!event->isAutoRepeat())
            sizer->KeyUp(event->key(), event->modifiers());
    }
    return true;
}

// ---- TQorWndProcProxy --------------------------------------------------

TQorWndProcProxy::TQorWndProcProxy(QWidget *Control)
{
    m_enabled = true;
    m_reserved = true;
    // The constructor's call installs the base's procedure; subclasses add
    // theirs through the same virtual once they are complete.
    TQorWndProcProxy::SetControl(Control);
}

TQorWndProcProxy::~TQorWndProcProxy()
{
    TQorWndProcProxy::ReleaseNewWndProc();
}

void TQorWndProcProxy::SetControl(QWidget *Control)
{
    if (Control == m_control && (m_installed || !Control))
        return;
    ReleaseNewWndProc();
    m_control = Control;
    CreateNewWndProc();
}

void TQorWndProcProxy::CreateNewWndProc()
{
    if (!m_control || m_installed)
        return;
    ProxyDispatcher *d = dispatcher();
    QWidget *control = m_control;
    auto &chain = d->chains[control];
    if (chain.empty()) {
        control->installEventFilter(d);
        // A widget that dies takes its chain with it; its proxies stay with
        // their lists until those hear of the removal.
        QObject::connect(control, &QObject::destroyed, d, [d, control] {
            const auto it = d->chains.find(control);
            if (it == d->chains.end())
                return;
            for (TQorWndProcProxy *proxy : *it)
                proxy->m_installed = false;
            d->chains.erase(it);
        });
    }
    chain.push_back(this);
    m_chainKey = control;
    m_installed = true;
}

void TQorWndProcProxy::ReleaseNewWndProc()
{
    if (!m_installed)
        return;
    m_installed = false;
    ProxyDispatcher *d = dispatcher();
    const auto it = d->chains.find(m_chainKey);
    if (it == d->chains.end())
        return;
    auto &chain = it.value();
    const auto found = std::find(chain.begin(), chain.end(), this);
    if (found != chain.end())
        chain.erase(found);
    if (chain.empty()) {
        if (m_control) {
            m_control->removeEventFilter(d);
            QObject::disconnect(m_control, &QObject::destroyed, d, nullptr);
        }
        d->chains.erase(it);
    }
}

void TQorWndProcProxy::ProxyWndMethod(TMessage &Message)
{
    if (m_control)
        CallOldWndProc(Message);
}

void TQorWndProcProxy::CallOldWndProc(TMessage &Message)
{
    ProxyDispatcher *d = dispatcher();
    const auto it = d->chains.constFind(m_control.data());
    if (it != d->chains.constEnd()) {
        const auto &chain = *it;
        const auto self = std::find(chain.begin(), chain.end(), this);
        if (self != chain.end() && self != chain.begin()) {
            (*(self - 1))->ProxyWndMethod(Message);
            return;
        }
    }
    passedToWidget = true;
}

TQorWndProcProxy *QorProxyOf(const QWidget *Control)
{
    return Control ? dispatcher()->top(Control) : nullptr;
}

void QorDeliverMouseMessage(QWidget *Control, quint32 Msg, quintptr KeyState, const QPoint &Pos)
{
    QorPostMessage(Control, Msg, KeyState, PointToLParam(Pos));
}

// ---- TQorDesignWndProcProxy --------------------------------------------

TQorDesignWndProcProxy::TQorDesignWndProcProxy(QWidget *Control)
    : TQorWndProcProxy(Control)
{
    if (Control && Owner(Control) && Owner(Control)->isWidgetType())
        m_ownerControl = static_cast<QWidget *>(Owner(Control));
}

TQorDesignWndProcProxy::~TQorDesignWndProcProxy()
{
    EndInLineEdit();
}

void TQorDesignWndProcProxy::SetDesignManager(TQorDesignManager *Manager)
{
    m_designManager = Manager;
}

void TQorDesignWndProcProxy::ProxyWndMethod(TMessage &Message)
{
    const quint32 msg = Message.Msg;
    if (!m_enabled && msg != WM_KILLFOCUS) {
        if (msg != QORN_EndInlineEdit && msg != WM_SETCURSOR && msg != WM_SIZE && msg != WM_MOVE
            && msg != CM_FOCUSCHANGED && msg != WM_SHOWWINDOW) {
            CallOldWndProc(Message);
            return;
        }
    }
    if (!m_control)
        return;
    switch (msg) {
    case WM_NCHITTEST:
        if (!IsStageProxy() && m_designManager && m_designManager->IsRubbering())
            Message.Result = HTTRANSPARENT;
        else if (m_designManager && m_designManager->IsDynInsComp() && !CanAcceptChild())
            Message.Result = HTTRANSPARENT;
        break;
    case WM_MOVE: ProxyMoved(Message); break;
    case WM_SIZE: ProxySized(Message); break;
    case WM_EXITSIZEMOVE: ProxyExitSizeMove(Message); break;
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN: ProxyMouseDown(Message); break;
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
    case WM_MBUTTONUP: ProxyMouseUp(Message); break;
    case WM_LBUTTONDBLCLK: ProxyMouseDblClick(Message); break;
    case WM_MOUSEMOVE: ProxyMouseMove(Message); break;
    case WM_KILLFOCUS: ProxyKillFocus(Message); break;
    case WM_SHOWWINDOW: ProxyShowWindow(Message); break;
    default:
        if (msg == QORN_CtrlMoved) {
            ProxyQORNCtrlMoved(Message);
        } else if (msg == QORN_StartInlineEdit) {
            StartInLineEdit();
            Message.Result = 1;
        } else if (msg == QORN_EndInlineEdit) {
            EndInLineEdit();
            Message.Result = 1;
        }
        break;
    }
    if (Message.Result == 0)
        CallOldWndProc(Message);
}

QWidget *TQorDesignWndProcProxy::InsertionParent() const
{
    QWidget *w = m_control;
    if (auto *tabs = qobject_cast<QTabWidget *>(w))
        return tabs->currentWidget() ? tabs->currentWidget() : w;
    if (auto *stack = qobject_cast<QStackedWidget *>(w))
        return stack->currentWidget() ? stack->currentWidget() : w;
    if (auto *box = qobject_cast<QToolBox *>(w))
        return box->currentWidget() ? box->currentWidget() : w;
    if (auto *area = qobject_cast<QScrollArea *>(w))
        return area->widget() ? area->widget() : w;
    return w;
}

bool TQorDesignWndProcProxy::GetCanAcceptChild() const
{
    return m_control && AcceptsControls(InsertionParent())
           && !(m_designManager && m_designManager->IsEmbeddedEditing());
}

QWidget *TQorDesignWndProcProxy::GetSelectedGraphicCtrl(const TMessage &Message) const
{
    Q_UNUSED(Message);
    return nullptr;
}

void TQorDesignWndProcProxy::ProxyMouseDown(TMessage &Message)
{
    // (a) A class is chosen on the palette: the click creates it here.
    if (m_designManager && m_designManager->IsDynInsComp() && CanAcceptChild() && Message.Msg == WM_LBUTTONDOWN) {
        const QPoint at = LParamToPoint(Message.LParam);
        // The insertion is one step of the center's history.
        IQorDesignCenter *center = m_designManager->ConsoleCenter();
        const QMetaObject *cls = m_designManager->GetDynInsCompClass();
        if (center)
            center->BeginDesignChange(QCoreApplication::translate("TQorDesignHistory", "Insert %1")
                                          .arg(QString::fromLatin1(cls->className())));
        const auto end = qScopeGuard([center] {
            if (center)
                center->EndDesignChange();
        });
        QWidget *parent = InsertionParent();
        const QPoint inParent = parent == m_control ? at : parent->mapFrom(m_control.data(), at);
        QObject *component = DynCreateChildControl(m_designManager->GetDynInsCompClass(),
                                                   QRect(inParent, QSize(0, 0)));
        m_designManager->DynInsCompDone(component);
        if (auto *w = qobject_cast<QWidget *>(component))
            m_designManager->SelectControl(w, QPoint(-1, -1), csmSelect, false, true);
        Message.Result = mdrCreatedComponent;
    }
    // (b) Ctrl held: the click climbs to the container.
    if (Message.Result == 0 && (Message.WParam & MK_CONTROL)) {
        QWidget *stage = m_designManager ? m_designManager->DesignStage() : nullptr;
        if (QWidget *parent = nearestProxied(m_control->parentWidget(), stage)) {
            const QPoint at = parent->mapFrom(m_control->window(),
                                              m_control->mapTo(m_control->window(), LParamToPoint(Message.LParam)));
            QorPostMessage(parent, Message.Msg, Message.WParam, PointToLParam(at));
        }
        Message.Result = mdrPassedToParent;
    }
    // (c) The control is selected through the stage, after this handler.
    if (Message.Result == 0) {
        QWidget *owner = m_ownerControl;
        QorPostMessage(owner, QORM_ControlSelectedAtPos, Message.WParam, Message.LParam);
        QWidget *graphic = GetSelectedGraphicCtrl(Message);
        QWidget *selected = graphic ? graphic : m_control.data();
        Message.Result = graphic ? mdrSelectedChild : mdrSelectedControl;
        QorPostMessage(owner, QORM_ControlSelected, Message.WParam, qintptr(selected));
    }
}

void TQorDesignWndProcProxy::ProxyMouseMove(TMessage &Message)
{
    if (m_designManager) {
        const Qt::KeyboardModifiers shift =
            ((Message.WParam & MK_SHIFT) ? Qt::ShiftModifier : Qt::NoModifier)
            | ((Message.WParam & MK_CONTROL) ? Qt::ControlModifier : Qt::NoModifier);
        m_designManager->EnvokeStageMouseMove(m_control, shift, LParamToPoint(Message.LParam));
    }
}

void TQorDesignWndProcProxy::ProxyMouseUp(TMessage &Message)
{
    Q_UNUSED(Message);
}

void TQorDesignWndProcProxy::ProxyKillFocus(TMessage &Message)
{
    Q_UNUSED(Message);
}

void TQorDesignWndProcProxy::ProxyShowWindow(TMessage &Message)
{
    Q_UNUSED(Message);
    if (m_designManager)
        m_designManager->CtrlShownOrHidden(m_control);
}

void TQorDesignWndProcProxy::ProxyMouseDblClick(TMessage &Message)
{
    Q_UNUSED(Message);
}

void TQorDesignWndProcProxy::ProxyMoved(TMessage &Message)
{
    if (QWidget *parent = m_control->parentWidget()) {
        postCtrlMoved(parent, quintptr(m_control.data()), Message.LParam);
        Message.Result = 1;
    }
}

void TQorDesignWndProcProxy::postCtrlMoved(QWidget *Parent, quintptr Control, qintptr LParam)
{
    // A parent without a proxy (the pages' stack inside a tab widget)
    // would drop the report: the manager hears of it directly.
    if (!QorProxyOf(Parent) && m_designManager && m_control != m_designManager->DesignStage())
        m_designManager->CtrlMoved(reinterpret_cast<QWidget *>(Control));
    else
        QorPostMessage(Parent, QORN_CtrlMoved, Control, LParam);
}

void TQorDesignWndProcProxy::ProxySized(TMessage &Message)
{
    ProxyMoved(Message);
}

void TQorDesignWndProcProxy::ProxyExitSizeMove(TMessage &Message)
{
    ProxyMoved(Message);
}

void TQorDesignWndProcProxy::ProxyQORNCtrlMoved(TMessage &Message)
{
    if (QWidget *parent = m_control->parentWidget()) {
        postCtrlMoved(parent, Message.WParam, Message.LParam);
        Message.Result = 1;
    }
}

void TQorDesignWndProcProxy::StartInLineEdit()
{
    if (!m_control)
        return;
    m_enabled = false;
    m_inlineEditing = true;
    m_control->setFocus(Qt::OtherFocusReason);
}

void TQorDesignWndProcProxy::EndInLineEdit()
{
    if (!m_control || !m_inlineEditing)
        return;
    m_enabled = true;
    m_inlineEditing = false;
    if (m_designManager)
        m_designManager->EndEmbedEdit();
}

QObject *TQorDesignWndProcProxy::DynCreateChildControl(const QMetaObject *ComponentClass, const QRect &Rect)
{
    if (!m_designManager || !m_designManager->DesignStage() || !ComponentClass) {
        qCInfo(lcQorDesigner) << "No component inserted:"
                              << (!ComponentClass ? "no class is given" : "the proxy has no design stage");
        return nullptr;
    }
    QWidget *stage = m_designManager->DesignStage();
    const QString name = GetCompUniqueID(ComponentClass, stage);
    QObject *component = CreateRegisteredComponent(ComponentClass);
    if (!component)
        return nullptr;
    component->setObjectName(name);
    giveCaption(component);
    if (auto *w = qobject_cast<QWidget *>(component)) {
        w->setParent(InsertionParent());
        int width = Rect.width() > 0 ? Rect.width() : 0;
        int height = Rect.height() > 0 ? Rect.height() : 0;
        if (width == 0 && height == 0) {
            // A class without a size of its own comes out 50 by 50.
            const QSize own = w->sizeHint();
            if (own.isValid() && !own.isEmpty())
                w->resize(own);
            else
                w->resize(50, 50);
        } else {
            w->resize(width > 0 ? width : w->width(), height > 0 ? height : w->height());
        }
        w->move(Rect.left(), Rect.top());
        w->show();
    }
    InsertComponent(stage, component);
    return component;
}

// ---- TQorDesignStageProxy ----------------------------------------------

TQorDesignStageProxy::TQorDesignStageProxy(QWidget *Control)
    : TQorDesignWndProcProxy(nullptr)
{
    SetControl(Control);
}

TQorDesignStageProxy::~TQorDesignStageProxy()
{
    TQorDesignStageProxy::ReleaseNewWndProc();
}

void TQorDesignStageProxy::CreateNewWndProc()
{
    TQorDesignWndProcProxy::CreateNewWndProc();
    if (m_control && !m_windowFilter) {
        m_windowFilter = std::make_unique<TQorDesignWindowFilter>(this);
        m_windowFilter->install();
    }
}

void TQorDesignStageProxy::ReleaseNewWndProc()
{
    if (m_windowFilter) {
        m_windowFilter->uninstall();
        m_windowFilter.reset();
    }
    TQorDesignWndProcProxy::ReleaseNewWndProc();
    if (m_rubberBand) {
        delete m_rubberBand.data();
        m_rubberBand = nullptr;
    }
}

void TQorDesignStageProxy::SetControl(QWidget *Control)
{
    if (Control == m_control && (m_installed || !Control))
        return;
    ReleaseNewWndProc();
    m_control = Control;
    CreateNewWndProc();
}

TQorRubberBand *TQorDesignStageProxy::RubberBand() const
{
    return m_rubberBand;
}

void TQorDesignStageProxy::ProxyWndMethod(TMessage &Message)
{
    if (m_enabled && !(m_designManager && m_designManager->IsEmbeddedEditing())) {
        if (Message.Msg == QORM_ControlSelectedAtPos) {
            m_lastSelectionPos = LParamToPoint(Message.LParam);
            return;
        }
        if (Message.Msg == QORM_ControlSelected) {
            SelectControl(reinterpret_cast<QWidget *>(Message.LParam), Message.WParam, m_lastSelectionPos);
            Message.Result = 1;
            return;
        }
        if (Message.Msg == QORN_DelSelCtrls) {
            if (m_designManager)
                m_designManager->DelSelectedControls();
            return;
        }
    }
    TQorDesignWndProcProxy::ProxyWndMethod(Message);
}

void TQorDesignStageProxy::SelectControl(QWidget *Control, quintptr KeyState, const QPoint &Pos)
{
    if (!m_designManager)
        return;
    // The control may have gone between the click and this posted message.
    if (Control && !m_designManager->IsLiveControl(Control))
        return;
    const TControlSelectMode mode = SelectModeOfKeyState(KeyState);
    m_designManager->SelectControl(Control, Pos, mode, true, (KeyState & MK_LBUTTON) != 0);
}

void TQorDesignStageProxy::ProxyMouseDown(TMessage &Message)
{
    if (Message.WParam & MK_CONTROL)
        Message.Result = mdrPassedToParent;
    TQorDesignWndProcProxy::ProxyMouseDown(Message);
    const qintptr r = Message.Result;
    if ((r == 0 || r == mdrSelectedControl || r == mdrPassedToParent) && Message.Msg == WM_LBUTTONDOWN)
        StartRubberBand(LParamToPoint(Message.LParam));
}

void TQorDesignStageProxy::ProxyMouseMove(TMessage &Message)
{
    TQorDesignWndProcProxy::ProxyMouseMove(Message);
    if (Message.Result == 0 && (Message.WParam & MK_LBUTTON) && m_rubberBand && m_rubberBand->isVisible()) {
        m_rubberBand->SetPointEnd(LParamToPoint(Message.LParam));
        m_rubberBand->raise();
    }
}

void TQorDesignStageProxy::ProxyMouseUp(TMessage &Message)
{
    TQorDesignWndProcProxy::ProxyMouseUp(Message);
    if (m_rubberBand && m_rubberBand->isVisible())
        EndRubberBand();
    if (Message.Msg == WM_RBUTTONUP && m_designManager && m_designManager->DesignPopupMenu() && m_control) {
        const QPoint global = m_control->mapToGlobal(LParamToPoint(Message.LParam));
        QMenu *menu = m_designManager->DesignPopupMenu();
        Q_EMIT m_designManager->OnDesignPopup(menu, m_control, global);
        if (auto *designMenu = qobject_cast<IQorCompPopupMenu *>(menu))
            designMenu->PopupBaseOnComp(m_control, global.x(), global.y());
        else
            menu->popup(global);
    }
}

void TQorDesignStageProxy::ProxyMouseDblClick(TMessage &Message)
{
    TQorDesignWndProcProxy::ProxyMouseDblClick(Message);
}

void TQorDesignStageProxy::ProxyMoved(TMessage &Message)
{
    TQorDesignWndProcProxy::ProxyMoved(Message);
    if (m_designManager)
        m_designManager->CtrlMoved(m_control);
}

void TQorDesignStageProxy::ProxySized(TMessage &Message)
{
    TQorDesignWndProcProxy::ProxySized(Message);
    if (m_designManager)
        m_designManager->CtrlMoved(m_control);
}

void TQorDesignStageProxy::ProxyQORNCtrlMoved(TMessage &Message)
{
    TQorDesignWndProcProxy::ProxyQORNCtrlMoved(Message);
    if (m_designManager)
        m_designManager->CtrlMoved(reinterpret_cast<QWidget *>(Message.WParam));
}

void TQorDesignStageProxy::StartRubberBand(const QPoint &Pos)
{
    if (!m_control)
        return;
    if (!m_rubberBand)
        m_rubberBand = new TQorRubberBand(m_control);
    m_rubberBand->SetPointStart(Pos);
    m_rubberBand->show();
    m_rubberBand->raise();
}

void TQorDesignStageProxy::EndRubberBand()
{
    if (m_rubberBand && m_rubberBand->isVisible()) {
        m_rubberBand->hide();
        const QRect bounds = m_rubberBand->Bounds();
        if (m_designManager)
            m_designManager->SelectControlInRect(bounds, csmAdd);
    }
    if (m_rubberBand) {
        m_rubberBand->deleteLater();
        m_rubberBand = nullptr;
    }
}

// ---- TQorDesignWndProcProxyList ----------------------------------------

TQorDesignWndProcProxyList::TQorDesignWndProcProxyList() = default;

TQorDesignWndProcProxyList::~TQorDesignWndProcProxyList()
{
    ClearProxies();
}

TQorDesignWndProcProxy *TQorDesignWndProcProxyList::Proxies(int Index) const
{
    return Index >= 0 && Index < Count() ? m_proxies[size_t(Index)].get() : nullptr;
}

void TQorDesignWndProcProxyList::SetProxies(int Index, TQorDesignWndProcProxy *Proxy)
{
    if (Index >= 0 && Index < Count())
        m_proxies[size_t(Index)].reset(Proxy);
}

int TQorDesignWndProcProxyList::AddControl(QWidget *Control, bool CheckExists)
{
    if (CheckExists && ProxyOf(Control))
        return -1;
    m_proxies.push_back(std::make_unique<TQorDesignWndProcProxy>(Control));
    return Count() - 1;
}

int TQorDesignWndProcProxyList::AddProxy(TQorDesignWndProcProxy *Proxy, bool CheckExists)
{
    if (!Proxy)
        return -1;
    if (CheckExists && ProxyOf(Proxy->Control())) {
        delete Proxy;
        return -1;
    }
    m_proxies.emplace_back(Proxy);
    return Count() - 1;
}

int TQorDesignWndProcProxyList::GetControlIndex(const QWidget *Control) const
{
    if (!Control)
        return -1;
    // The chain of the widget says at once whether this list has a proxy
    // there; only then is the list searched, by the proxy's address.
    for (TQorWndProcProxy *p : dispatcher()->chains.value(Control)) {
        // From the end: controls leave the design mostly from the last
        // added, as a deleted selection does.
        const auto it = std::find_if(m_proxies.rbegin(), m_proxies.rend(),
                                     [p](const std::unique_ptr<TQorDesignWndProcProxy> &own) { return own.get() == p; });
        if (it != m_proxies.rend())
            return int(m_proxies.rend() - it) - 1;
    }
    return -1;
}

TQorDesignWndProcProxy *TQorDesignWndProcProxyList::ProxyOf(const QWidget *Control) const
{
    return Proxies(GetControlIndex(Control));
}

void TQorDesignWndProcProxyList::DelProxy(int Index)
{
    if (Index >= 0 && Index < Count())
        m_proxies.erase(m_proxies.begin() + Index);
}

void TQorDesignWndProcProxyList::DelControl(const QWidget *Control)
{
    const int index = GetControlIndex(Control);
    if (index >= 0)
        DelProxy(index);
    else
        // A destroyed widget's proxy has lost its control already.
        DelUnassignedProxies();
}

void TQorDesignWndProcProxyList::DelUnassignedProxies()
{
    for (size_t i = 0; i < m_proxies.size();) {
        if (!m_proxies[i] || !m_proxies[i]->Control())
            m_proxies.erase(m_proxies.begin() + qsizetype(i));
        else
            ++i;
    }
}

void TQorDesignWndProcProxyList::ClearProxies()
{
    while (!m_proxies.empty())
        m_proxies.pop_back();
}

void TQorDesignWndProcProxyList::SetAllEnabled(bool Value)
{
    for (auto it = m_proxies.rbegin(); it != m_proxies.rend(); ++it) {
        if (*it)
            (*it)->SetEnbaled(Value);
    }
}
