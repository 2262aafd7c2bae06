// SPDX-License-Identifier: MIT
#include "designer/qordesigner_p.h"

#include "foundation/qorcomponents.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThread>
#include <QDockWidget>
#include <QFrame>
#include <QFont>
#include <QGroupBox>
#include <QMdiSubWindow>
#include <QStackedWidget>
#include <QVariant>
#include <QHash>
#include <QLineEdit>
#include <QMutex>
#include <QPlainTextEdit>
#include <QTextEdit>

#include <vector>

namespace {

struct MessageTable
{
    QMutex mutex;
    QHash<QString, quint32> numbers;
};

MessageTable &messageTable()
{
    static MessageTable table;
    return table;
}

} // namespace

quint32 QorRegisterWindowMessage(const QString &name)
{
    MessageTable &table = messageTable();
    const QString key = name.toUpper();
    QMutexLocker lock(&table.mutex);
    auto it = table.numbers.constFind(key);
    if (it != table.numbers.constEnd())
        return *it;
    const quint32 number = quint32(QEvent::registerEventType());
    table.numbers.insert(key, number);
    return number;
}

const char *const QorDesignMessageNames[12] = {
    "QOR.SizerMovedMsg",
    "QOR.SizerMoveEndMsg",
    "QOR.SizerMoveStartMsg",
    "QOR.Design.ControlSelected",
    "QOR.Design.ControlSelectedAtPos",
    "QOR.Design.SelectControlChanged",
    "QOR.Design.ControlMoved",
    "QOR.Design.SelectControlMoved",
    "QOR.Design.StartInlineEdit",
    "QOR.Design.EndInlineEdit",
    "QOR.Design.DynamicComponentCreated",
    "QOR.Design.DelSelectControls",
};

// Registered when the library is loaded, in the order of the names above.
quint32 QORM_SizerMoved = QorRegisterWindowMessage(QLatin1String(QorDesignMessageNames[0]));
quint32 QORM_SizerMoveEnd = QorRegisterWindowMessage(QLatin1String(QorDesignMessageNames[1]));
quint32 QORM_SizerMoveStart = QorRegisterWindowMessage(QLatin1String(QorDesignMessageNames[2]));
quint32 QORM_ControlSelected = QorRegisterWindowMessage(QLatin1String(QorDesignMessageNames[3]));
quint32 QORM_ControlSelectedAtPos = QorRegisterWindowMessage(QLatin1String(QorDesignMessageNames[4]));
quint32 QORN_SelCtrlChanged = QorRegisterWindowMessage(QLatin1String(QorDesignMessageNames[5]));
quint32 QORN_CtrlMoved = QorRegisterWindowMessage(QLatin1String(QorDesignMessageNames[6]));
quint32 QORN_SelCtrlMoved = QorRegisterWindowMessage(QLatin1String(QorDesignMessageNames[7]));
quint32 QORN_StartInlineEdit = QorRegisterWindowMessage(QLatin1String(QorDesignMessageNames[8]));
quint32 QORN_EndInlineEdit = QorRegisterWindowMessage(QLatin1String(QorDesignMessageNames[9]));
quint32 QORN_DynCompCreated = QorRegisterWindowMessage(QLatin1String(QorDesignMessageNames[10]));
quint32 QORN_DelSelCtrls = QorRegisterWindowMessage(QLatin1String(QorDesignMessageNames[11]));

bool QorDesigning = false;

quintptr KeyStateOf(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers)
{
    quintptr state = 0;
    if (buttons.testFlag(Qt::LeftButton))
        state |= MK_LBUTTON;
    if (buttons.testFlag(Qt::RightButton))
        state |= MK_RBUTTON;
    if (buttons.testFlag(Qt::MiddleButton))
        state |= MK_MBUTTON;
    if (modifiers.testFlag(Qt::ShiftModifier))
        state |= MK_SHIFT;
    if (modifiers.testFlag(Qt::ControlModifier))
        state |= MK_CONTROL;
    return state;
}

TControlSelectMode SelectModeOfKeyState(quintptr keyState)
{
    if (keyState & MK_SHIFT)
        return csmToggle;
    if (keyState & MK_CONTROL)
        return csmClear;
    return csmSelect;
}

qintptr PointToLParam(const QPoint &point)
{
    return qintptr((quint32(quint16(point.y())) << 16) | quint16(point.x()));
}

QPoint LParamToPoint(qintptr lParam)
{
    const auto bits = quint32(quintptr(lParam));
    return QPoint(int(bits & 0xFFFF), int(bits >> 16));
}

namespace {

const QEvent::Type windowMessageType = QEvent::Type(QEvent::registerEventType());

QEvent::Type eventTypeOf(quint32 msg)
{
    return msg < quint32(QEvent::User) ? windowMessageType : QEvent::Type(msg);
}

} // namespace

TQorMessageEvent::TQorMessageEvent(quint32 msg, quintptr wParam, qintptr lParam)
    : QEvent(eventTypeOf(msg))
{
    Message.Msg = msg;
    Message.WParam = wParam;
    Message.LParam = lParam;
}

TQorMessageEvent::~TQorMessageEvent() = default;

TQorMessageEvent *QorMessageOf(QEvent *event)
{
    if (!event || event->type() < QEvent::User)
        return nullptr;
    return dynamic_cast<TQorMessageEvent *>(event);
}

bool IsOwnSizerMessage(const TMessage &Message, const QObject *Sizer)
{
    return Sizer && Message.WParam == quintptr(Sizer);
}

namespace {

// The design messages posted on the user-interface thread travel together:
// the first one waiting posts one event to this queue, and that event hands
// every message waiting then to its receiver, in the order they were
// posted. A drag or a nudge of a thousand controls posts thousands of
// messages; one Qt event (and one wake-up of the event loop) each would
// cost more than handling them. Messages posted while the queue is being
// emptied wait for the next turn, as posted events do.
class MessageQueue final : public QObject
{
public:
    MessageQueue() { setObjectName(QStringLiteral("qt_qor_message_queue")); }

    void post(QObject *receiver, quint32 msg, quintptr wParam, qintptr lParam)
    {
        m_waiting.push_back({receiver, msg, wParam, lParam});
        if (m_waiting.size() == 1)
            QCoreApplication::postEvent(this, new QEvent(deliverType()));
    }

protected:
    bool event(QEvent *e) override
    {
        if (e->type() != deliverType())
            return QObject::event(e);
        std::vector<Entry> now;
        now.swap(m_waiting);
        for (const Entry &entry : now) {
            if (!entry.receiver)
                continue;
            TQorMessageEvent message(entry.msg, entry.wParam, entry.lParam);
            QCoreApplication::sendEvent(entry.receiver, &message);
        }
        return true;
    }

private:
    struct Entry
    {
        QPointer<QObject> receiver;
        quint32 msg;
        quintptr wParam;
        qintptr lParam;
    };

    static QEvent::Type deliverType()
    {
        static const QEvent::Type type = QEvent::Type(QEvent::registerEventType());
        return type;
    }

    std::vector<Entry> m_waiting;
};

MessageQueue *messageQueue()
{
    static QPointer<MessageQueue> queue;
    if (!queue)
        queue = new MessageQueue;
    return queue;
}

} // namespace

void QorPostMessage(QObject *receiver, quint32 msg, quintptr wParam, qintptr lParam)
{
    if (!receiver)
        return;
    MessageQueue *queue = messageQueue();
    if (receiver->thread() == queue->thread() && QThread::currentThread() == queue->thread())
        queue->post(receiver, msg, wParam, lParam);
    else
        QCoreApplication::postEvent(receiver, new TQorMessageEvent(msg, wParam, lParam));
}

qintptr QorSendMessage(QObject *receiver, quint32 msg, quintptr wParam, qintptr lParam)
{
    if (!receiver)
        return 0;
    TQorMessageEvent event(msg, wParam, lParam);
    QCoreApplication::sendEvent(receiver, &event);
    return event.Result();
}

bool PointInRect(const QPoint &Point, const QRect &Rect)
{
    return Rect.left() <= Point.x() && Point.x() <= RectRight(Rect) && Rect.top() <= Point.y()
        && Point.y() <= RectBottom(Rect);
}

bool ControlCanInlineEdit(const QWidget *Control)
{
    return qobject_cast<const QLineEdit *>(Control) || qobject_cast<const QTextEdit *>(Control)
        || qobject_cast<const QPlainTextEdit *>(Control);
}

bool AcceptsControls(const QWidget *Control)
{
    if (!Control)
        return false;
    const QVariant own = Control->property("qorAcceptsControls");
    if (own.isValid())
        return own.toBool();
    const QMetaObject *meta = Control->metaObject();
    if (meta == &QWidget::staticMetaObject || meta == &QFrame::staticMetaObject)
        return true;
    if (qobject_cast<const QGroupBox *>(Control))
        return true;
    // A page or content widget is known by the container that holds it.
    const QWidget *holder = Control->parentWidget();
    // Pages of stacked widgets and tab widgets (whose pages sit in an inner
    // stacked widget); the widget of a scroll area and a tool box's pages
    // (which sit in scroll areas of their own).
    if (holder && qobject_cast<const QStackedWidget *>(holder))
        return true;
    if (holder && holder->objectName() == QLatin1String("qt_scrollarea_viewport"))
        return true;
    if (holder && qobject_cast<const QDockWidget *>(holder))
        return static_cast<const QDockWidget *>(holder)->widget() == Control;
    if (holder && qobject_cast<const QMdiSubWindow *>(holder))
        return static_cast<const QMdiSubWindow *>(holder)->widget() == Control;
    return false;
}

namespace {

int scaled(int Value, int M, int D)
{
    return qRound(double(Value) * M / D);
}

void scaleFont(QWidget *Control, int M, int D)
{
    if (!Control->testAttribute(Qt::WA_SetFont))
        return;
    QFont font = Control->font();
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * M / D);
    else if (font.pixelSize() > 0)
        font.setPixelSize(std::max(1, scaled(font.pixelSize(), M, D)));
    Control->setFont(font);
}

void scaleChildren(QWidget *Control, int M, int D)
{
    for (QObject *child : DesignChildren(Control)) {
        auto *w = qobject_cast<QWidget *>(child);
        if (!w || w->isWindow())
            continue;
        if (w->parentWidget() == Control) {
            const QRect g = w->geometry();
            w->setGeometry(scaled(g.x(), M, D), scaled(g.y(), M, D), scaled(g.width(), M, D),
                           scaled(g.height(), M, D));
            scaleFont(w, M, D);
        }
        scaleChildren(w, M, D);
    }
}

} // namespace

void QorScaleBy(QWidget *Control, int M, int D)
{
    if (!Control || D == 0)
        return;
    scaleChildren(Control, M, D);
    Control->resize(scaled(Control->width(), M, D), scaled(Control->height(), M, D));
    scaleFont(Control, M, D);
}

void QorFlipChildren(QWidget *Control, bool AllLevels)
{
    if (!Control)
        return;
    const int width = Control->width();
    for (QObject *child : DesignChildren(Control)) {
        auto *w = qobject_cast<QWidget *>(child);
        if (!w || w->isWindow())
            continue;
        if (w->parentWidget() == Control)
            w->move(width - w->x() - w->width(), w->y());
        if (AllLevels)
            QorFlipChildren(w, true);
    }
}