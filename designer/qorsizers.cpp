// SPDX-License-Identifier: MIT
#include "designer/qorsizers_p.h"

#include "designer/qormanager.h"
#include "designer/qorproxies_p.h"
#include "designer/qorrunlater_p.h"
#include "foundation/qorcomponents.h"
#include "translation/qortransutils.h"

#include <QApplication>
#include <QChildEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPaintEvent>

namespace {

QPointer<TQorSizer> activeDrag;

// The eight handles' hit codes in index order.
constexpr std::array<qintptr, 8> handleCodes = {HTTOPLEFT,     HTTOP,    HTTOPRIGHT,   HTRIGHT,
                                                HTBOTTOMRIGHT, HTBOTTOM, HTBOTTOMLEFT, HTLEFT};

// A delta packed into LParam: dx in the low, dy in the high 16 bits, both
// read back as signed words.
qintptr packDelta(int dx, int dy)
{
    return qintptr((quint32(quint16(qint16(dx)))) | (quint32(quint16(qint16(dy))) << 16));
}

QPoint unpackDelta(qintptr lParam)
{
    return QPoint(qint16(quint16(lParam & 0xFFFF)), qint16(quint16((lParam >> 16) & 0xFFFF)));
}

// Maps a rectangle from one widget's coordinates into another's through the
// screen; either side may be null (then the rectangle is taken as it is).
QRect mapRect(const QWidget *from, const QWidget *to, const QRect &r)
{
    if (!from || !to || from == to)
        return r;
    QPoint topLeft;
    if (to->isAncestorOf(from))
        topLeft = from->mapTo(to, r.topLeft());
    else
        topLeft = to->mapFromGlobal(from->mapToGlobal(r.topLeft()));
    return QRect(topLeft, r.size());
}

constexpr Qt::KeyboardModifiers modifierMask =
    Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

bool isModifierKey(int key)
{
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
        return true;
    default:
        return false;
    }
}

Qt::CursorShape cursorOfHitCode(qintptr code)
{
    switch (code) {
    case HTTOPLEFT:
    case HTBOTTOMRIGHT:
        return Qt::SizeFDiagCursor;
    case HTTOPRIGHT:
    case HTBOTTOMLEFT:
        return Qt::SizeBDiagCursor;
    case HTTOP:
    case HTBOTTOM:
        return Qt::SizeVerCursor;
    case HTLEFT:
    case HTRIGHT:
        return Qt::SizeHorCursor;
    default:
        return Qt::ArrowCursor;
    }
}

} // namespace

// ---- TQorSizer ---------------------------------------------------------

TQorSizer::TQorSizer(QWidget *Parent, QWidget *Control)
    : QWidget(Parent)
    , m_singleSelColor(QApplication::palette().color(QPalette::ButtonText))
    , m_multiSelColor(QApplication::palette().color(QPalette::Dark))
    , m_hitCodes(handleCodes)
{
    setObjectName(QString());
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::ClickFocus);
    setMouseTracking(true);
    hide();
    if (Control)
        SetControl(Control);
}

TQorSizer::~TQorSizer()
{
    if (activeDrag == this)
        activeDrag = nullptr;
    if (m_sizerList) {
        TQorSizerList *list = m_sizerList;
        m_sizerList = nullptr;
        list->freeSizer(this);
    }
}

TQorSizer *TQorSizer::ActiveDragSizer()
{
    return activeDrag;
}

void TQorSizer::SetControl(QWidget *Control)
{
    if (Control == m_control)
        return;
    // A sizer is never bound to another sizer.
    if (qobject_cast<TQorSizer *>(Control))
        Control = nullptr;
    if (m_control)
        disconnect(m_controlDestroyed);
    m_control = Control;
    if (Control)
        m_controlDestroyed = connect(Control, &QObject::destroyed, this, &TQorSizer::ControlDestroyed);
    BindToControl();
    m_caption = GetCompTransedName(Control, nullptr);
    setToolTip(m_caption);
}

void TQorSizer::ControlDestroyed()
{
    m_control = nullptr;
    BindToControl();
    if (m_sizerList)
        m_sizerList->DelUnassignedSizers();
}

void TQorSizer::SetSizerMode(TQorSizerMode Mode)
{
    if (m_sizerMode == Mode)
        return;
    m_sizerMode = Mode;
    UpdateBounds();
    UpdateShape();
}

void TQorSizer::SetSingleSelColor(const QColor &Color)
{
    m_singleSelColor = Color;
    if (m_sizerMode == smSingle)
        update();
}

void TQorSizer::SetMultiSelColor(const QColor &Color)
{
    m_multiSelColor = Color;
    if (m_sizerMode == smMulti && m_sizerList)
        m_sizerList->InvalidateMarks(this, geometry());
}

QWidget *TQorSizer::SizerParent() const
{
    if (!m_control || !m_control->parentWidget())
        return nullptr;
    if (m_sizerList && m_sizerList->DesignManager() && m_sizerList->DesignManager()->DesignStage())
        return m_sizerList->DesignManager()->DesignStage();
    return m_control->parentWidget();
}

void TQorSizer::UpdatePaintRects()
{
    const int w = width();
    const int h = height();
    const int s = HandleSize;
    m_handles = {RectFromEdges(0, 0, s, s),
                 RectFromEdges(w / 2 - 3, 0, w / 2 + 2, s),
                 RectFromEdges(w - s, 0, w, s),
                 RectFromEdges(w - s, h / 2 - 3, w, h / 2 + 2),
                 RectFromEdges(w - s, h - s, w, h),
                 RectFromEdges(w / 2 - 3, h - s, w / 2 + 2, h),
                 RectFromEdges(0, h - s, s, h),
                 RectFromEdges(0, h / 2 - 3, s, h / 2 + 2)};
}

void TQorSizer::SetBoundsQuiet(const QRect &Bounds)
{
    const QRect old = geometry();
    if (old == Bounds)
        return;
    setGeometry(Bounds);
    if (old.size() != Bounds.size()) {
        // A hidden widget gets no resize event: the handles follow here.
        UpdatePaintRects();
        if (isVisible())
            setMask(MarksRegion());
    }
    if (m_sizerList && isHidden())
        m_sizerList->InvalidateMarks(this, old);
}

void TQorSizer::UpdateBounds()
{
    if (!m_control) {
        SetBoundsQuiet(QRect());
        return;
    }
    const bool sender = m_sender;
    QWidget *parent = m_control->parentWidget();
    const QRect r = parent ? m_control->geometry() : m_control->rect();
    // The sizer stands 2 pixels outside the control on every side (the
    // bounds inflated by 3 that would come first are never seen).
    SetBoundsQuiet(mapRect(parent, SizerParent(), r.adjusted(-2, -2, 2, 2)));
    m_sender = sender;
}

void TQorSizer::FeedbackBounds()
{
    if (!m_control)
        return;
    if (QWidget *parent = m_control->parentWidget()) {
        const QRect r = mapRect(SizerParent(), parent, geometry().adjusted(2, 2, -2, -2));
        if (r != m_control->geometry()) {
            // Moving the control redraws it.
            m_control->setGeometry(r);
            return;
        }
    }
    m_control->update();
}

void TQorSizer::BindToControl()
{
    if (!m_control) {
        SetBoundsQuiet(QRect());
        hide();
        return;
    }
    m_sender = false;
    UpdateBounds();
    if (m_control->parentWidget()) {
        QWidget *parent = SizerParent();
        // A sizer of a list lives where UpdateShape puts it.
        if (!m_sizerList && parentWidget() != parent) {
            const bool hidden = isHidden();
            setParent(parent);
            setHidden(hidden);
        }
        UpdateShape();
        if (!m_following) {
            if (isVisible()) {
                if (m_sizerList)
                    m_sizerList->SetKeySizer(this);
                setFocus(Qt::OtherFocusReason);
            } else if (m_sizerList) {
                // A sizer of a multiple selection is hidden and cannot hold
                // the keys: the stage holds them for the selection.
                m_sizerList->TakeKeyboard();
            }
        }
    }
}

QRegion TQorSizer::MarksRegion() const
{
    if (m_moving) {
        const QRect frame = rect();
        return QRegion(frame).subtracted(QRegion(frame.adjusted(4, 4, -4, -4)));
    }
    QRegion region;
    if (m_sizerMode == smSingle) {
        for (const QRect &handle : m_handles)
            region += handle;
    } else {
        for (int index : {0, 2, 4, 6})
            region += m_handles[size_t(index)];
    }
    return region;
}

namespace {

// The frame a moving sizer shows: grey, two pixels wide, inside its edges.
QPen movingFramePen()
{
    return QPen(QColor(0x80, 0x80, 0x80), 2, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin);
}

} // namespace

QRectF TQorSizer::MovingFrame() const
{
    return QRectF(RectFromEdges(2, 2, width() - 2, height() - 2)).adjusted(-1, -1, 0, 0);
}

QColor TQorSizer::MarkColor() const
{
    return m_sizerMode == smSingle ? m_singleSelColor : m_multiSelColor;
}

void TQorSizer::AppendMarks(QList<QRect> &Rects, const QPoint &Offset) const
{
    // Every handle in the single mode, the four corners in any other.
    if (m_sizerMode == smSingle) {
        for (const QRect &handle : m_handles)
            Rects.append(handle.translated(Offset));
    } else {
        for (int index : {0, 2, 4, 6})
            Rects.append(m_handles[size_t(index)].translated(Offset));
    }
}

void TQorSizer::PaintMarks(QPainter &Painter) const
{
    if (!m_control)
        return;
    if (m_moving) {
        Painter.setBrush(Qt::NoBrush);
        Painter.setPen(movingFramePen());
        Painter.drawRect(MovingFrame());
        return;
    }
    QList<QRect> marks;
    AppendMarks(marks, QPoint());
    for (const QRect &mark : std::as_const(marks))
        Painter.fillRect(mark, MarkColor());
}

bool TQorSizer::ControlShowing() const
{
    if (!m_control)
        return false;
    QWidget *stage = SizerParent();
    return stage ? m_control->isVisibleTo(stage) : !m_control->isHidden();
}

void TQorSizer::UpdateShape()
{
    // A control the user cannot see (on a tab page that is not current)
    // shows no marks: they would lie over the controls that are showing.
    QWidget *home = m_control ? SizerParent() : nullptr;
    const bool shown = m_control && m_sizerMode == smSingle && home && ControlShowing();
    if (shown) {
        if (parentWidget() != home)
            setParent(home);
        UpdatePaintRects();
        setMask(MarksRegion());
        if (isHidden())
            show();
        raise();
        update();
    } else {
        if (!isHidden()) {
            // Hiding the widget with the keys would pass them on to the
            // window's next widget, out of the design.
            if (m_sizerList)
                m_sizerList->keepKeyboard(this);
            hide();
        }
        if (m_sizerList) {
            // A hidden sizer of a list lives under the list's overlay, which
            // shares the stage's coordinates: the stage's own children stay
            // its controls, however many are selected.
            if (TQorSizerOverlay *overlay = home ? m_sizerList->overlayFor(home) : nullptr;
                overlay && parentWidget() != overlay)
                setParent(overlay);
            m_sizerList->InvalidateMarks(this, geometry());
        } else if (home && parentWidget() != home) {
            setParent(home);
        }
    }
}

void TQorSizer::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    PaintMarks(painter);
}

void TQorSizer::resizeEvent(QResizeEvent *)
{
    // WM_SIZE: the handles follow the size, except while editing in place.
    if (m_inlineEditing)
        return;
    UpdatePaintRects();
    if (isVisible())
        setMask(MarksRegion());
}

qintptr TQorSizer::WmNcHitTest(const QPoint &Pos) const
{
    if (!m_control)
        return HTCLIENT;
    if (m_inlineEditing)
        return HTTRANSPARENT;
    if (m_sizerList && m_sizerList->DesignManager() && m_sizerList->DesignManager()->IsDynInsComp())
        return HTTRANSPARENT;
    const qintptr code = m_sizerMode == smSingle ? HandleCodeAt(Pos) : HTNOWHERE;
    return code == HTNOWHERE ? HTCLIENT : code;
}

qintptr TQorSizer::HandleCodeAt(const QPoint &Pos) const
{
    // The last handle that holds the point wins.
    qintptr code = HTNOWHERE;
    for (size_t i = 0; i < m_handles.size(); ++i) {
        if (PointInRect(Pos, m_handles[i]))
            code = m_hitCodes[i];
    }
    return code;
}

void TQorSizer::WmLButtonDown(quintptr KeyState, const QPoint &GlobalPos)
{
    if (!m_control)
        return;
    if (!(KeyState & (MK_SHIFT | MK_CONTROL))) {
        const QPoint local = mapFromGlobal(GlobalPos);
        m_startPoint = QPoint(qint16(local.x()), qint16(local.y()));
        m_startOffset = QPoint(0, 0);
        m_lastPoint = GlobalPos;
        BeginMoveAsSender(m_lastPoint);
        return;
    }
    // Shift or Ctrl: the bound control's proxy toggles or climbs.
    QorDeliverMouseMessage(m_control, WM_LBUTTONDOWN, KeyState, m_control->mapFromGlobal(GlobalPos));
}

void TQorSizer::BeginMoveAsSender(const QPoint &GlobalPoint)
{
    m_sender = true;
    m_lastPoint = GlobalPoint;
    activeDrag = this;
    if (m_sizerList) {
        // The control the user took hold of decides, for the keys too,
        // which siblings go along.
        m_sizerList->SetKeySizer(this);
        m_sizerList->DelAllUnSibling(this);
    }
}

void TQorSizer::DragMouseMove(const QPoint &GlobalPos, Qt::MouseButtons Buttons, Qt::KeyboardModifiers Modifiers)
{
    if (m_resizeCode != HTNOWHERE) {
        QRect r = m_resizeStart;
        const QPoint d = GlobalPos - m_resizeGlobalStart;
        int left = r.left(), top = r.top(), right = RectRight(r), bottom = RectBottom(r);
        const int minimum = 2 * 2 + 1;
        switch (m_resizeCode) {
        case HTTOPLEFT: left += d.x(); top += d.y(); break;
        case HTTOP: top += d.y(); break;
        case HTTOPRIGHT: right += d.x(); top += d.y(); break;
        case HTRIGHT: right += d.x(); break;
        case HTBOTTOMRIGHT: right += d.x(); bottom += d.y(); break;
        case HTBOTTOM: bottom += d.y(); break;
        case HTBOTTOMLEFT: left += d.x(); bottom += d.y(); break;
        case HTLEFT: left += d.x(); break;
        default: break;
        }
        if (right - left < minimum) {
            if (left != r.left())
                left = right - minimum;
            else
                right = left + minimum;
        }
        if (bottom - top < minimum) {
            if (top != r.top())
                top = bottom - minimum;
            else
                bottom = top + minimum;
        }
        setGeometry(RectFromEdges(left, top, right, bottom));
    } else if (Buttons.testFlag(Qt::LeftButton) && m_sender && GlobalPos != m_lastPoint) {
        const QPoint d = GlobalPos - m_lastPoint;
        const bool wasMoving = m_moving;
        m_moving = true;
        m_lastPoint = GlobalPos;
        SetBoundsQuiet(geometry().translated(d));
        if (!wasMoving)
            UpdateShapeWhileMoving();
        update();
        BroadcastMovedMsg(d.x(), d.y());
    }
    if (m_sizerList && m_sizerList->DesignManager() && m_control) {
        TQorDesignManager *manager = m_sizerList->DesignManager();
        if (QWidget *stage = manager->DesignStage())
            manager->EnvokeStageMouseMove(stage, Modifiers, stage->mapFromGlobal(GlobalPos));
    }
}

void TQorSizer::UpdateShapeWhileMoving()
{
    if (isVisible())
        setMask(MarksRegion());
    else if (m_sizerList)
        m_sizerList->InvalidateMarks(this, geometry());
}

void TQorSizer::WMLButtonUp()
{
    if (activeDrag == this)
        activeDrag = nullptr;
    m_resizeCode = HTNOWHERE;
    EndMove();
}

void TQorSizer::StartMove()
{
    if (!m_control || m_inlineEditing)
        return;
    if (m_sizerList && m_sizerList->DesignManager())
        m_sizerList->DesignManager()->NoteMoveStarting();
    m_moving = true;
    if (m_sender)
        BroadcastMoveStartMsg();
    UpdateBounds();
    UpdateShapeWhileMoving();
    m_startPos = pos();
}

void TQorSizer::EndMove()
{
    if (m_inlineEditing)
        return;
    // The control moves here: whoever keeps its former place takes it now.
    if (m_sizerList && m_sizerList->DesignManager())
        m_sizerList->DesignManager()->NoteMoveStarting();
    if (m_sender)
        BroadcastMoveEndMsg();
    const bool follower = !m_sender;
    const bool wasMoving = m_moving;
    // The frame goes before the control moves, so the marks come back at
    // the control's new place.
    m_moving = false;
    FeedbackBounds();
    UpdateBounds();
    m_following = follower && activeDrag != this && m_sizerList && m_sizerList->m_keySizer
                  && m_sizerList->m_keySizer != this;
    BindToControl();
    m_following = false;
    if (wasMoving && m_sizerList)
        m_sizerList->NotifyMoved();
}

void TQorSizer::ManualMove(int DX, int DY, bool Broadcast, bool EndAfter)
{
    if (Broadcast)
        m_sender = true;
    else
        StartMove();
    SetBoundsQuiet(geometry().translated(DX, DY));
    update();
    if (Broadcast)
        BroadcastMovedMsg(DX, DY);
    if (EndAfter)
        EndMove();
}

void TQorSizer::BroadcastMovedMsg(int DX, int DY)
{
    if (!m_sizerList || (DX == 0 && DY == 0))
        return;
    m_sizerList->DelAllUnSibling(this);
    m_sizerList->BroadcastMessageToAllSizers(QORM_SizerMoved, quintptr(this), packDelta(DX, DY));
}

void TQorSizer::BroadcastMoveStartMsg()
{
    if (m_sizerList)
        m_sizerList->BroadcastMessageToAllSizers(QORM_SizerMoveStart, quintptr(this), 0);
}

void TQorSizer::BroadcastMoveEndMsg()
{
    if (m_sizerList)
        m_sizerList->BroadcastMessageToAllSizers(QORM_SizerMoveEnd, quintptr(this), 0);
}

bool TQorSizer::SizerWndProc(TMessage &Message)
{
    // A sizer kept for later belongs to no selection.
    if (!m_sizerList && !m_control)
        return true;
    if (Message.Msg == WM_ENTERSIZEMOVE) {
        StartMove();
        return true;
    }
    if (Message.Msg == WM_EXITSIZEMOVE) {
        EndMove();
        return true;
    }
    const bool own = IsOwnSizerMessage(Message, this);
    if (Message.Msg == QORM_SizerMoved) {
        if (own) {
            m_sender = true;
        } else {
            m_sender = false;
            const QPoint d = unpackDelta(Message.LParam);
            SetBoundsQuiet(geometry().translated(d));
        }
        return true;
    }
    if (Message.Msg == QORM_SizerMoveStart) {
        if (!own)
            StartMove();
        return true;
    }
    if (Message.Msg == QORM_SizerMoveEnd) {
        if (!own)
            EndMove();
        return true;
    }
    return false;
}

bool TQorSizer::event(QEvent *event)
{
    if (TQorMessageEvent *message = QorMessageOf(event)) {
        SizerWndProc(message->Message);
        return true;
    }
    switch (event->type()) {
    case QEvent::KeyPress:
        // Every key stays with the sizer: Tab would otherwise move the focus
        // into the designed controls, and an unhandled key would climb to
        // the stage (Escape closes a dialog).
        keyPressEvent(static_cast<QKeyEvent *>(event));
        event->accept();
        return true;
    case QEvent::ShortcutOverride:
        // The sizer keeps the keys it acts on; any other key may be one of
        // the application's shortcuts (copy, paste, select all).
        if (IsSizerKey(static_cast<QKeyEvent *>(event))) {
            event->accept();
            return true;
        }
        return QWidget::event(event);
    default:
        return QWidget::event(event);
    }
}

void TQorSizer::mousePressEvent(QMouseEvent *event)
{
    event->accept();
    if (!m_control || !m_enabled)
        return;
    if (event->button() == Qt::LeftButton) {
        const qintptr code = WmNcHitTest(event->position().toPoint());
        if (code >= HTLEFT && code <= HTBOTTOMRIGHT) {
            // The own resize loop: WM_ENTERSIZEMOVE, WM_SIZE per step,
            // WM_EXITSIZEMOVE.
            m_resizeCode = code;
            m_resizeStart = geometry();
            m_resizeGlobalStart = event->globalPosition().toPoint();
            activeDrag = this;
            StartMove();
            return;
        }
        WmLButtonDown(KeyStateOf(event->buttons(), event->modifiers()), event->globalPosition().toPoint());
    }
}

void TQorSizer::mouseMoveEvent(QMouseEvent *event)
{
    event->accept();
    if (activeDrag == this) {
        DragMouseMove(event->globalPosition().toPoint(), event->buttons(), event->modifiers());
        return;
    }
    if (m_enabled)
        setCursor(cursorOfHitCode(WmNcHitTest(event->position().toPoint())));
}

void TQorSizer::mouseReleaseEvent(QMouseEvent *event)
{
    event->accept();
    if (event->button() == Qt::LeftButton && activeDrag == this) {
        DragMouseMove(event->globalPosition().toPoint(), event->buttons() | Qt::LeftButton, event->modifiers());
        WMLButtonUp();
    } else if (event->button() == Qt::RightButton) {
        WMRButtonUp(event->globalPosition().toPoint());
    }
}

void TQorSizer::mouseDoubleClickEvent(QMouseEvent *event)
{
    event->accept();
    if (event->button() == Qt::LeftButton)
        WMLButtonDblClk();
}

bool TQorSizer::IsSizerKey(const QKeyEvent *Event)
{
    switch (Event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
        return Event->modifiers().testFlag(Qt::ControlModifier);
    case Qt::Key_Delete:
        // Delete alone is the sizer's (it deletes when it goes up); with a
        // modifier it never deletes here, and may be one of the
        // application's shortcuts (Shift+Delete cuts where the application
        // gives it to its cut command).
        return !(Event->modifiers() & modifierMask);
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return true;
    default:
        return false;
    }
}

void TQorSizer::keyPressEvent(QKeyEvent *event)
{
    event->accept();
    KeyDown(event->key(), event->modifiers());
}

void TQorSizer::keyReleaseEvent(QKeyEvent *event)
{
    event->accept();
    if (!event->isAutoRepeat())
        KeyUp(event->key(), event->modifiers());
}

void TQorSizer::KeyDown(int Key, Qt::KeyboardModifiers Shift)
{
    // Delete deletes when it goes up, and only when it went down alone and
    // no modifier joined it meanwhile: Shift+Delete never deletes, whichever
    // key the user lets go of first.
    if (m_sizerList) {
        if (Key == Qt::Key_Delete)
            m_sizerList->m_deleteArmed = !(Shift & modifierMask);
        else if (isModifierKey(Key))
            m_sizerList->m_deleteArmed = false;
    }
    if (!m_enabled || !Shift.testFlag(Qt::ControlModifier))
        return;
    int dx = 0;
    int dy = 0;
    switch (Key) {
    case Qt::Key_Left: dx = -1; break;
    case Qt::Key_Right: dx = 1; break;
    case Qt::Key_Up: dy = -1; break;
    case Qt::Key_Down: dy = 1; break;
    default: return;
    }
    if (m_sizerList && m_sizerList->DesignManager())
        m_sizerList->DesignManager()->NoteMoveByKeys();
    ManualMove(dx, dy, true, true);
}

void TQorSizer::KeyUp(int Key, Qt::KeyboardModifiers Shift)
{
    if (!m_enabled || Key != Qt::Key_Delete)
        return;
    const bool armed = !m_sizerList || m_sizerList->m_deleteArmed;
    if (m_sizerList)
        m_sizerList->m_deleteArmed = false;
    // The modifiers of the event and those held now: either shows a
    // modifier, nothing is deleted.
    const Qt::KeyboardModifiers held = Shift | QGuiApplication::queryKeyboardModifiers();
    if (!armed || (held & modifierMask))
        return;
    if (m_sizerList && m_sizerList->DesignManager() && m_sizerList->DesignManager()->DesignStage())
        QorPostMessage(m_sizerList->DesignManager()->DesignStage(), QORN_DelSelCtrls, 0, 0);
}

void TQorSizer::WMRButtonUp(const QPoint &GlobalPos)
{
    if (!m_popupMenu)
        return;
    if (m_sizerList && m_sizerList->DesignManager())
        Q_EMIT m_sizerList->DesignManager()->OnDesignPopup(m_popupMenu, m_control, GlobalPos);
    // The signal's receivers may have changed the menu's fate.
    if (!m_popupMenu)
        return;
    if (auto *designMenu = qobject_cast<IQorCompPopupMenu *>(m_popupMenu.data()))
        designMenu->PopupBaseOnComp(m_control, GlobalPos.x(), GlobalPos.y());
    else
        m_popupMenu->popup(GlobalPos);
}

void TQorSizer::WMLButtonDblClk()
{
    if (m_control)
        LaunchCompEditor(m_control);
}

void TQorSizer::LaunchCompEditor(QObject *Component)
{
    // The component and attribute editors come with the designer object;
    // until an application gives one, a double click re-binds the sizer and
    // lets the manager report it.
    bool edited = false;
    if (m_sizerList && m_sizerList->DesignManager())
        edited = m_sizerList->DesignManager()->LaunchComponentEditor(Component);
    BindToControl();
    if (edited && m_sizerList && m_sizerList->DesignManager())
        m_sizerList->DesignManager()->SizersModified();
}

void TQorSizer::DelCurrControl()
{
    if (m_sizerList && m_sizerList->DesignManager()) {
        m_sizerList->DesignManager()->DelSelectedControls();
    } else if (!m_sizerList && m_control) {
        QWidget *control = m_control;
        SetControl(nullptr);
        control->hide();
        control->deleteLater();
    }
}

void TQorSizer::BringCtrlToFront()
{
    if (m_control)
        m_control->raise();
}

void TQorSizer::SendCtrlToBack()
{
    if (m_control)
        m_control->lower();
}

void TQorSizer::FlipChildren(bool AllLevels)
{
    if (m_control)
        QorFlipChildren(m_control, AllLevels);
}

void TQorSizer::StartEmbedEdit()
{
    if (!m_control)
        return;
    if (QorSendMessage(m_control, QORN_StartInlineEdit, 0, 0) != 0) {
        m_inlineEditing = true;
        if (activeDrag == this)
            activeDrag = nullptr;
        UpdateBounds();
        // The control takes the mouse and the keys while it is edited.
        hide();
        if (m_sizerList)
            m_sizerList->InvalidateMarks(this, geometry());
    }
}

void TQorSizer::EndEmbedEdit()
{
    if (!m_control || !m_inlineEditing)
        return;
    QorSendMessage(m_control, QORN_EndInlineEdit, 0, 0);
    m_inlineEditing = false;
    UpdateBounds();
    UpdateShape();
}

// ---- TQorSizerList -----------------------------------------------------

TQorSizerList::TQorSizerList(TQorDesignManager *Manager)
    : m_manager(Manager)
{
}

TQorSizerList::~TQorSizerList()
{
    ClearSizer();
    ClearSpare();
    delete m_overlay.data();
}

void TQorSizerList::retire(TQorSizer *Sizer)
{
    // Freed sizers are kept, hidden and unbound under the overlay, for the
    // next selection: making and destroying a widget per control is most of
    // what selecting or deleting thousands of controls would cost. A sizer
    // kept now is handed out again only after the messages posted to it
    // before were delivered (and ignored).
    Sizer->m_sizerList = nullptr;
    if (activeDrag == Sizer)
        activeDrag = nullptr;
    if (m_keySizer == Sizer)
        m_keySizer = nullptr;
    // Unbound without the caption's update: a kept sizer shows nothing,
    // and binding it again sets its caption.
    if (Sizer->m_control)
        QObject::disconnect(Sizer->m_controlDestroyed);
    Sizer->m_control = nullptr;
    if (!Sizer->isHidden())
        Sizer->hide();
    Sizer->m_moving = false;
    Sizer->m_sender = false;
    Sizer->m_inlineEditing = false;
    Sizer->m_following = false;
    Sizer->m_resizeCode = HTNOWHERE;
    Sizer->m_popupMenu = nullptr;
    if (!m_overlay || QCoreApplication::closingDown()) {
        delete Sizer;
        return;
    }
    if (Sizer->parentWidget() != m_overlay)
        Sizer->setParent(m_overlay);
    m_fresh.push_back(Sizer);
    QorRunOnceLater(m_overlay, m_promoteQueued, [this] {
        m_spare.insert(m_spare.end(), m_fresh.begin(), m_fresh.end());
        m_fresh.clear();
    });
}

TQorSizer *TQorSizerList::takeSpare()
{
    while (!m_spare.empty()) {
        QPointer<TQorSizer> sizer = m_spare.back();
        m_spare.pop_back();
        if (!sizer)
            continue;
        sizer->m_enabled = true;
        sizer->m_sizerMode = smNone;
        return sizer;
    }
    return nullptr;
}

void TQorSizerList::ClearSpare()
{
    std::vector<QPointer<TQorSizer>> all;
    all.swap(m_spare);
    all.insert(all.end(), m_fresh.begin(), m_fresh.end());
    m_fresh.clear();
    for (const QPointer<TQorSizer> &sizer : all)
        delete sizer.data();
}

void TQorSizerList::forgetOverlay(TQorSizerOverlay *Overlay)
{
    // The overlay is being destroyed with the sizers kept under it.
    if (m_overlay == Overlay)
        m_overlay = nullptr;
    m_spare.clear();
    m_fresh.clear();
    m_promoteQueued = false;
}

TQorSizer *TQorSizerList::Sizers(int Index) const
{
    return Index >= 0 && Index < Count() ? m_sizers[size_t(Index)] : nullptr;
}

int TQorSizerList::GetControlIndex(const QWidget *Control) const
{
    TQorSizer *sizer = SizerOf(Control);
    if (!sizer)
        return -1;
    // Searched from the end: a selection is taken apart from its last
    // member first, so the one asked for is usually there.
    const auto it = std::find(m_sizers.rbegin(), m_sizers.rend(), sizer);
    // A sizer filed under its control is in the list: both lose it together.
    Q_ASSERT(it != m_sizers.rend());
    return it == m_sizers.rend() ? -1 : int(m_sizers.rend() - it) - 1;
}

TQorSizer *TQorSizerList::SizerOf(const QWidget *Control) const
{
    return Control ? m_byControl.value(Control, nullptr) : nullptr;
}

int TQorSizerList::AddControl(QWidget *Control, QObject *Owner, bool CheckExists)
{
    Q_UNUSED(Owner);
    if (CheckExists && SizerOf(Control))
        return -1;
    TQorSizer *sizer = takeSpare();
    if (!sizer) {
        // Made right under the parent it is going to live in: a widget made
        // without one starts as a window, which costs a selection of
        // thousands its screen and font look-ups per sizer.
        QWidget *home = nullptr;
        if (Control && Control->parentWidget())
            home = m_manager && m_manager->DesignStage() ? m_manager->DesignStage() : Control->parentWidget();
        sizer = new TQorSizer(m_sizers.empty() || !home ? home : overlayFor(home));
    }
    sizer->SetSizerList(this);
    // The mode the list is in decides whether the new sizer shows itself.
    sizer->m_sizerMode = m_sizers.empty() ? smSingle : smMulti;
    sizer->SetControl(Control);
    return AddSizer(sizer);
}

int TQorSizerList::AddSizer(TQorSizer *Sizer)
{
    Sizer->SetSizerList(this);
    m_sizers.push_back(Sizer);
    if (Sizer->Control() && !m_byControl.contains(Sizer->Control()))
        m_byControl.insert(Sizer->Control(), Sizer);
    UpdateAllSizerMode();
    return Count() - 1;
}

void TQorSizerList::keepKeyboard(TQorSizer *Sizer)
{
    // A sizer that goes while it has the keys leaves them to the stage:
    // otherwise the focus would wander to the window's next widget and the
    // design would lose the keyboard (and with it the application's
    // shortcuts that act on the design). The sizer or stage sizer bound
    // next takes them from the stage.
    if (QApplication::focusWidget() == Sizer)
        giveStageFocus();
}

void TQorSizerList::giveStageFocus()
{
    if (!m_manager || m_manager->IsDestroying() || QCoreApplication::closingDown())
        return;
    QWidget *stage = m_manager->DesignStage();
    if (stage && stage->isVisible())
        stage->setFocus(Qt::OtherFocusReason);
}

void TQorSizerList::freeSizer(TQorSizer *Sizer)
{
    // Called from the sizer's destructor or before it is deleted.
    const auto it = std::find(m_sizers.rbegin(), m_sizers.rend(), Sizer);
    if (it == m_sizers.rend())
        return;
    keepKeyboard(Sizer);
    const QRect bounds = Sizer->geometry();
    m_sizers.erase(std::next(it).base());
    // Filed under its control; a sizer whose control went is looked for.
    const QWidget *control = Sizer->Control();
    if (control && m_byControl.value(control) == Sizer) {
        m_byControl.remove(control);
    } else {
        for (auto i = m_byControl.begin(); i != m_byControl.end();) {
            if (i.value() == Sizer)
                i = m_byControl.erase(i);
            else
                ++i;
        }
    }
    if (m_overlay)
        m_overlay->MarkDirty(bounds);
}

void TQorSizerList::DelSizer(int Index)
{
    TQorSizer *sizer = Sizers(Index);
    if (!sizer)
        return;
    freeSizer(sizer);
    retire(sizer);
    UpdateAllSizerMode();
}

void TQorSizerList::DelControl(const QWidget *Control)
{
    const int index = GetControlIndex(Control);
    if (index >= 0)
        DelSizer(index);
}

void TQorSizerList::DelAllUnSibling(TQorSizer *Sizer)
{
    if (!Sizer)
        return;
    const QWidget *parent = Sizer->Control() ? Sizer->Control()->parentWidget() : nullptr;
    std::vector<TQorSizer *> gone;
    for (TQorSizer *sizer : m_sizers) {
        if (!sizer->Control() || sizer->Control()->parentWidget() != parent)
            gone.push_back(sizer);
    }
    if (gone.empty())
        return;
    for (TQorSizer *sizer : gone) {
        freeSizer(sizer);
        retire(sizer);
    }
    UpdateAllSizerMode();
    // The selection shrank: the manager, the center and the other
    // elements hear of it now, not at some later selection.
    if (m_manager)
        m_manager->SizersChanged();
}

void TQorSizerList::DelUnassignedSizers()
{
    std::vector<TQorSizer *> gone;
    for (TQorSizer *sizer : m_sizers) {
        if (!sizer->Control())
            gone.push_back(sizer);
    }
    for (TQorSizer *sizer : gone) {
        freeSizer(sizer);
        // The sizer may be inside its own notification: it is kept, not
        // destroyed.
        retire(sizer);
    }
    UpdateAllSizerMode();
    if (m_manager)
        m_manager->SizersChanged();
}

void TQorSizerList::ClearSizer()
{
    std::vector<TQorSizer *> all;
    all.swap(m_sizers);
    m_byControl.clear();
    m_multi = false;
    for (TQorSizer *sizer : all) {
        keepKeyboard(sizer);
        retire(sizer);
    }
    if (m_overlay)
        m_overlay->update();
}

void TQorSizerList::RemoveAllSizerAndCtrls()
{
    // The list deletes the bound controls itself. Going through each
    // sizer's DelCurrControl would ask the manager to delete the selection
    // again from inside this loop; here each selected control is deleted
    // exactly once, after every sizer is gone.
    QList<QPointer<QWidget>> controls;
    for (TQorSizer *sizer : m_sizers) {
        if (sizer->Control())
            controls.append(sizer->Control());
    }
    ClearSizer();
    for (const QPointer<QWidget> &control : controls) {
        if (control) {
            control->hide();
            control->deleteLater();
        }
    }
}

void TQorSizerList::BroadcastMessageToAllSizers(quint32 Msg, quintptr WParam, qintptr LParam)
{
    for (TQorSizer *sizer : m_sizers)
        QorPostMessage(sizer, Msg, WParam, LParam);
    if (Msg == QORM_SizerMoveEnd)
        NotifyMoved();
}

void TQorSizerList::NotifyMoved()
{
    if (m_manager)
        m_manager->SizersMoved();
}

void TQorSizerList::NotifySizerModified()
{
    if (m_manager)
        m_manager->SizersModified();
}

void TQorSizerList::UpdateAllSizerMode()
{
    if (m_sizers.size() > 1) {
        // Only a list that was not multiple before revisits its sizers.
        if (!m_multi) {
            for (TQorSizer *sizer : m_sizers)
                sizer->SetSizerMode(smMulti);
            m_multi = true;
        } else {
            m_sizers.back()->SetSizerMode(smMulti);
        }
    } else {
        m_multi = false;
        if (m_sizers.size() == 1)
            m_sizers.front()->SetSizerMode(m_sizers.front()->Control() ? smSingle : smNone);
    }
}

void TQorSizerList::RaiseMarks()
{
    // Controls raised to the front would cover the marks.
    for (TQorSizer *sizer : m_sizers) {
        if (sizer->isVisible())
            sizer->raise();
    }
    if (m_overlay)
        m_overlay->raise();
}

void TQorSizerList::UpdateAllShapes()
{
    for (TQorSizer *sizer : m_sizers)
        sizer->UpdateShape();
}

void TQorSizerList::RepaintAllSizers()
{
    RepaintSizers();
}

void TQorSizerList::RepaintSizers()
{
    for (TQorSizer *sizer : m_sizers) {
        if (sizer->isVisible())
            sizer->repaint();
    }
    if (m_overlay)
        m_overlay->repaint();
}

void TQorSizerList::SetAllEnabled(bool Value)
{
    for (auto it = m_sizers.rbegin(); it != m_sizers.rend(); ++it)
        (*it)->SetEnabled(Value);
}

void TQorSizerList::ReleaseOverlay()
{
    // The hidden sizers and the kept ones go with it.
    delete m_overlay.data();
    ClearSpare();
}

TQorSizer *TQorSizerList::KeySizer() const
{
    if (m_keySizer && m_keySizer->m_sizerList == this)
        return m_keySizer;
    // Without a sizer the user took hold of, the first selected leads.
    return m_sizers.empty() ? nullptr : m_sizers.front();
}

void TQorSizerList::TakeKeyboard()
{
    QWidget *focus = QApplication::focusWidget();
    if (m_manager && focus == m_manager->DesignStage())
        return;
    if (qobject_cast<TQorSizer *>(focus) && focus->isVisible())
        return;
    giveStageFocus();
}

TQorSizerOverlay *TQorSizerList::overlayFor(QWidget *Parent)
{
    if (!Parent)
        return nullptr;
    if (m_overlay && m_overlay->parentWidget() != Parent) {
        // The sizers that lived under the old overlay move to their own
        // parents; the kept ones go with it.
        for (TQorSizer *sizer : m_sizers) {
            if (sizer->parentWidget() == m_overlay)
                sizer->setParent(sizer->SizerParent());
        }
        delete m_overlay.data();
        ClearSpare();
    }
    if (!m_overlay)
        m_overlay = new TQorSizerOverlay(this, Parent);
    return m_overlay;
}

void TQorSizerList::InvalidateMarks(const TQorSizer *Sizer, const QRect &OldBounds)
{
    QWidget *parent = Sizer->SizerParent();
    if (!parent)
        return;
    TQorSizerOverlay *overlay = overlayFor(parent);
    if (!overlay)
        return;
    if (overlay->isHidden()) {
        overlay->setGeometry(parent->rect());
        overlay->show();
    }
    overlay->MarkDirty(OldBounds.united(Sizer->geometry()));
}

// ---- TQorStageSizer ----------------------------------------------------

TQorStageSizer::TQorStageSizer(QWidget *Parent)
    : TQorSizer(Parent)
{
    m_sizerMode = smSingle;
}

void TQorStageSizer::BindToControl()
{
    if (!m_control) {
        SetBoundsQuiet(QRect());
        hide();
        return;
    }
    m_sender = false;
    QWidget *parent = m_control->parentWidget();
    if (!parent) {
        // A top-level stage has no parent to lie in: the stage counts as
        // selected, but its sizer is not shown.
        hide();
        return;
    }
    if (parentWidget() != parent)
        setParent(parent);
    UpdateBounds();
    UpdatePaintRects();
    setMask(MarksRegion());
    show();
    // Behind the stage: only the border around it can be reached.
    stackUnder(m_control);
    // The keys a removed sizer left with the stage come here.
    if (QApplication::focusWidget() == m_control)
        setFocus(Qt::OtherFocusReason);
}

void TQorStageSizer::UpdateBounds()
{
    if (!m_control || !m_control->parentWidget()) {
        SetBoundsQuiet(QRect());
        return;
    }
    SetBoundsQuiet(m_control->geometry().adjusted(-2, -2, 2, 2));
}

qintptr TQorStageSizer::WmNcHitTest(const QPoint &Pos) const
{
    if (!m_control)
        return TQorSizer::WmNcHitTest(Pos);
    qintptr code = HTNOWHERE;
    if (m_sizerMode == smSingle) {
        code = HandleCodeAt(Pos);
        if (m_stageSizerMode == ssmFixed && code != HTBOTTOMRIGHT && code != HTBOTTOM && code != HTRIGHT)
            code = HTNOWHERE;
    }
    // The stage covers its own pixels only: the pixels right of and below
    // it are the sizer's handles and border (a test that took the far
    // edges in would make the innermost pixel of a handle drag the stage).
    const QRect stageClient(mapFromGlobal(m_control->mapToGlobal(QPoint(0, 0))), m_control->size());
    if (stageClient.contains(Pos))
        return HTTRANSPARENT;
    return code == HTNOWHERE ? TQorSizer::WmNcHitTest(Pos) : code;
}

QRegion TQorStageSizer::MarksRegion() const
{
    // The frame and the handles: the rest lies behind the stage anyway.
    const QRect frame = rect();
    QRegion region = QRegion(frame).subtracted(QRegion(frame.adjusted(1, 1, -1, -1)));
    for (const QRect &handle : m_handles)
        region += handle;
    return region;
}

void TQorStageSizer::PaintMarks(QPainter &Painter) const
{
    if (!m_control)
        return;
    Painter.setBrush(Qt::NoBrush);
    Painter.setPen(QPen(m_singleSelColor, 1));
    Painter.drawRect(rect().adjusted(1, 1, -2, -2));
    for (const QRect &handle : m_handles)
        Painter.fillRect(handle, m_singleSelColor);
}

// ---- TQorSizerOverlay --------------------------------------------------

TQorSizerOverlay::~TQorSizerOverlay()
{
    if (m_list)
        m_list->forgetOverlay(this);
}

TQorSizerOverlay::TQorSizerOverlay(TQorSizerList *List, QWidget *Parent)
    : QWidget(Parent)
    , m_list(List)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
    setGeometry(Parent->rect());
    Parent->installEventFilter(this);
}

bool TQorSizerOverlay::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_watchedWindow && event->type() == QEvent::UpdateRequest) {
        FlushDirty();
        return false;
    }
    if (watched == parentWidget()) {
        if (event->type() == QEvent::Resize) {
            setGeometry(parentWidget()->rect());
        } else if (event->type() == QEvent::ChildAdded && !m_raiseQueued) {
            // A control placed later would cover the marks; the library's
            // own widgets (hidden sizers above all) do not count.
            QObject *child = static_cast<QChildEvent *>(event)->child();
            if (child->isWidgetType() && !IsQorDesignObject(child)) {
                m_raiseQueued = true;
                QMetaObject::invokeMethod(
                    this,
                    [this] {
                        m_raiseQueued = false;
                        raise();
                    },
                    Qt::QueuedConnection);
            }
        }
    }
    return false;
}

void TQorSizerOverlay::MarkDirty(const QRect &Rect)
{
    // Many sizers change at once (a whole selection moves or is made):
    // their areas are gathered and handed to the paint system once, just
    // before the window paints (beyond a few thousand, their bounding box
    // is cheaper than the region). The first area asks for that paint.
    if (m_dirty.empty()) {
        if (QWidget *top = window(); top != m_watchedWindow) {
            if (m_watchedWindow)
                m_watchedWindow->removeEventFilter(this);
            m_watchedWindow = top;
            top->installEventFilter(this);
        }
        update(Rect);
    }
    m_dirty.push_back(Rect);
}

void TQorSizerOverlay::FlushDirty()
{
    constexpr size_t regionLimit = 2048;
    if (m_dirty.size() > regionLimit) {
        QRect box;
        for (const QRect &r : m_dirty)
            box |= r;
        update(box);
    } else {
        for (const QRect &r : m_dirty)
            update(r);
    }
    m_dirty.clear();
}

void TQorSizerOverlay::paintEvent(QPaintEvent *event)
{
    if (!m_list)
        return;
    // The marks are gathered and drawn in one call per colour (and one for
    // the frames of moving sizers): the paint region of a thousand
    // repainted controls is complex, and each call is clipped to it anew.
    QPainter painter(this);
    const QRect dirty = event->rect();
    QHash<QRgb, QList<QRect>> marks;
    QList<QRectF> frames;
    for (TQorSizer *sizer : m_list->m_sizers) {
        if (!sizer->isHidden() || !sizer->Control() || sizer->m_inlineEditing || !sizer->ControlShowing())
            continue;
        const QRect bounds = sizer->geometry();
        if (!bounds.intersects(dirty))
            continue;
        if (sizer->m_moving)
            frames.append(sizer->MovingFrame().translated(bounds.topLeft()));
        else
            sizer->AppendMarks(marks[sizer->MarkColor().rgba()], bounds.topLeft());
    }
    painter.setPen(Qt::NoPen);
    for (auto it = marks.cbegin(); it != marks.cend(); ++it) {
        painter.setBrush(QColor::fromRgba(it.key()));
        painter.drawRects(it.value().constData(), int(it.value().size()));
    }
    if (!frames.isEmpty()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(movingFramePen());
        painter.drawRects(frames.constData(), int(frames.size()));
    }
}
