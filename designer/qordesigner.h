// SPDX-License-Identifier: MIT
// Design messages and the definitions the design surface shares: the
// registered message numbers by which proxies, sizers and the stage talk to
// each other, the enumerations of sizer, stage, selection and arrange modes,
// the mouse-down result codes, and a few small helpers.
#pragma once

#include "qordesign_export.h"

#include <QEvent>
#include <QObject>
#include <QPoint>
#include <QRect>

#include <functional>

class QWidget;

// Returns the process-wide number of a design message name. Names compare
// case-insensitively; the first request of a name takes a free Qt event type
// and every later request of that name, from any module of the process,
// gets the same number. Numbers depend on the order of first requests, so
// they are never stored or sent to another process.
QORDESIGN_EXPORT quint32 QorRegisterWindowMessage(const QString &name);

// The design messages, registered when the library is loaded and kept for
// the life of the process. Read them when a message is handled or posted.
QORDESIGN_EXPORT extern quint32 QORM_SizerMoved;
QORDESIGN_EXPORT extern quint32 QORM_SizerMoveEnd;
QORDESIGN_EXPORT extern quint32 QORM_SizerMoveStart;
QORDESIGN_EXPORT extern quint32 QORM_ControlSelected;
QORDESIGN_EXPORT extern quint32 QORM_ControlSelectedAtPos;
QORDESIGN_EXPORT extern quint32 QORN_SelCtrlChanged;
QORDESIGN_EXPORT extern quint32 QORN_CtrlMoved;
QORDESIGN_EXPORT extern quint32 QORN_SelCtrlMoved;
QORDESIGN_EXPORT extern quint32 QORN_StartInlineEdit;
QORDESIGN_EXPORT extern quint32 QORN_EndInlineEdit;
QORDESIGN_EXPORT extern quint32 QORN_DynCompCreated;
QORDESIGN_EXPORT extern quint32 QORN_DelSelCtrls;

// The registered strings of the twelve messages, in the order of
// registration.
QORDESIGN_EXPORT extern const char *const QorDesignMessageNames[12];

// Set by the host application while it designs; the library neither sets
// nor reads it.
QORDESIGN_EXPORT extern bool QorDesigning;

namespace QorDesigner {
Q_NAMESPACE_EXPORT(QORDESIGN_EXPORT)

// How a sizer shows itself.
enum TQorSizerMode { smSingle, smMulti, smConceal, smNone };
Q_ENUM_NS(TQorSizerMode)

// What the sizer of the design stage lets the user change.
enum TQorStageSizerMode { ssmNormal, ssmFixed, ssmFixedTopLeft };
Q_ENUM_NS(TQorStageSizerMode)

// How a selection request changes the selection.
enum TControlSelectMode { csmSelect, csmAdd, csmDel, csmToggle, csmClear };
Q_ENUM_NS(TControlSelectMode)

// Which children a flip moves.
enum TFlipChildrenMode { fcSelected, fcAll };
Q_ENUM_NS(TFlipChildrenMode)

// One axis of an alignment request.
enum TQorDesignAlignmentStyle {
    asNoChange,
    asLeftOrTop,
    asCenters,
    asRightOrBottom,
    asSpaceEqual,
    asCenterInWindow
};
Q_ENUM_NS(TQorDesignAlignmentStyle)

// One axis of a size request.
enum TQorDesignSizeStyle { ssNoChange, ssToSmallest, ssToLargest, ssCustom };
Q_ENUM_NS(TQorDesignSizeStyle)

// Which controls a scale request touches.
enum TQorDesignScaleStyle { ssAll, ssSelected };
Q_ENUM_NS(TQorDesignScaleStyle)

} // namespace QorDesigner

using QorDesigner::TControlSelectMode;
using QorDesigner::TFlipChildrenMode;
using QorDesigner::TQorDesignAlignmentStyle;
using QorDesigner::TQorDesignScaleStyle;
using QorDesigner::TQorDesignSizeStyle;
using QorDesigner::TQorSizerMode;
using QorDesigner::TQorStageSizerMode;
using enum QorDesigner::TQorSizerMode;
using enum QorDesigner::TQorStageSizerMode;
using enum QorDesigner::TControlSelectMode;
using enum QorDesigner::TFlipChildrenMode;
using enum QorDesigner::TQorDesignAlignmentStyle;
using enum QorDesigner::TQorDesignSizeStyle;
using enum QorDesigner::TQorDesignScaleStyle;

// The event the design manager reports a dynamically inserted component by.
using TDynInsComponentEvent = std::function<void(QObject *Sender, QObject *Component)>;
// The event the design manager reports the mouse moving over the stage by:
// the control under the mouse and the point in the stage's coordinates.
using TQorStageMouseMoveEvent =
    std::function<void(QObject *Sender, QWidget *Control, Qt::KeyboardModifiers Shift, int X, int Y)>;

// What a design proxy's mouse-down handling wrote into the message result.
constexpr qintptr mdrNotHandled = 0;       // not handled yet
constexpr qintptr mdrSelectedControl = 101; // selection posted for the proxied control
constexpr qintptr mdrSelectedChild = 102;   // selection posted for a windowless child
constexpr qintptr mdrPassedToParent = 201;  // Ctrl held: left to the parent or the rubber band
constexpr qintptr mdrCreatedComponent = 301; // a component of the palette's class was created

// Key-state bits of a mouse message, as they travel in WParam.
constexpr quintptr MK_LBUTTON = 0x0001;
constexpr quintptr MK_RBUTTON = 0x0002;
constexpr quintptr MK_SHIFT = 0x0004;
constexpr quintptr MK_CONTROL = 0x0008;
constexpr quintptr MK_MBUTTON = 0x0010;

// The key-state bits of Qt's buttons and modifiers.
QORDESIGN_EXPORT quintptr KeyStateOf(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers);

// The selection mode a click with this key state asks for: Shift toggles,
// otherwise Ctrl clears, otherwise the control is selected alone. Shift is
// tested first.
QORDESIGN_EXPORT TControlSelectMode SelectModeOfKeyState(quintptr keyState);

// A point packed into LParam: x in the low, y in the high 16 bits.
QORDESIGN_EXPORT qintptr PointToLParam(const QPoint &point);
// The point of an LParam, both words read as unsigned.
QORDESIGN_EXPORT QPoint LParamToPoint(qintptr lParam);

// Numbers of the window messages the design surface handles. Qt delivers
// none of them: the design surface makes them from Qt's events (mouse, move,
// resize, focus) and hands them to its proxies and sizers.
constexpr quint32 WM_MOVE = 3;
constexpr quint32 WM_SIZE = 5;
constexpr quint32 WM_KILLFOCUS = 8;
constexpr quint32 WM_SHOWWINDOW = 24;
constexpr quint32 WM_SETCURSOR = 32;
constexpr quint32 WM_NCHITTEST = 132;
constexpr quint32 WM_KEYDOWN = 256;
constexpr quint32 WM_KEYUP = 257;
constexpr quint32 WM_CHAR = 258;
constexpr quint32 WM_MOUSEMOVE = 512;
constexpr quint32 WM_LBUTTONDOWN = 513;
constexpr quint32 WM_LBUTTONUP = 514;
constexpr quint32 WM_LBUTTONDBLCLK = 515;
constexpr quint32 WM_RBUTTONDOWN = 516;
constexpr quint32 WM_RBUTTONUP = 517;
constexpr quint32 WM_MBUTTONDOWN = 519;
constexpr quint32 WM_MBUTTONUP = 520;
constexpr quint32 WM_MOVING = 534;
constexpr quint32 WM_ENTERSIZEMOVE = 561;
constexpr quint32 WM_EXITSIZEMOVE = 562;
constexpr quint32 CM_FOCUSCHANGED = 0xB007;

// Hit-test codes: where on a sizer the pointer is.
constexpr qintptr HTTRANSPARENT = -1;
constexpr qintptr HTNOWHERE = 0;
constexpr qintptr HTCLIENT = 1;
constexpr qintptr HTLEFT = 10;
constexpr qintptr HTRIGHT = 11;
constexpr qintptr HTTOP = 12;
constexpr qintptr HTTOPLEFT = 13;
constexpr qintptr HTTOPRIGHT = 14;
constexpr qintptr HTBOTTOM = 15;
constexpr qintptr HTBOTTOMLEFT = 16;
constexpr qintptr HTBOTTOMRIGHT = 17;

// A design message: what a window message carries, as a Qt event whose type
// is the message number. Result is written by whoever handles it.
struct TMessage
{
    quint32 Msg = 0;
    quintptr WParam = 0;
    qintptr LParam = 0;
    qintptr Result = 0;
};

// The event type a design message travels as: its own number for the
// registered design messages; one registered type shared by the window
// messages above, whose small numbers would collide with Qt's own events.
class QORDESIGN_EXPORT TQorMessageEvent : public QEvent
{
public:
    TQorMessageEvent(quint32 msg, quintptr wParam, qintptr lParam);
    ~TQorMessageEvent() override;

    TMessage Message;

    quint32 Msg() const { return Message.Msg; }
    quintptr WParam() const { return Message.WParam; }
    qintptr LParam() const { return Message.LParam; }
    qintptr Result() const { return Message.Result; }
    void SetResult(qintptr result) { Message.Result = result; }
};

// The design message an event carries; null for any other event.
QORDESIGN_EXPORT TQorMessageEvent *QorMessageOf(QEvent *event);

// True when a sizer message names the receiving sizer itself as its sender
// (WParam): a sizer that moved has already moved itself and ignores it.
QORDESIGN_EXPORT bool IsOwnSizerMessage(const TMessage &Message, const QObject *Sizer);

// Posts a design message to a receiver: it runs after the current handler,
// in the order of posting.
QORDESIGN_EXPORT void QorPostMessage(QObject *receiver, quint32 msg, quintptr wParam, qintptr lParam);
// Sends a design message at once and returns the result its handler wrote
// (0 for a null receiver).
QORDESIGN_EXPORT qintptr QorSendMessage(QObject *receiver, quint32 msg, quintptr wParam, qintptr lParam);

// The right and bottom edges of a rectangle as the design code counts them
// (left + width, top + height), and a rectangle made from its four edges.
inline int RectRight(const QRect &r) { return r.x() + r.width(); }
inline int RectBottom(const QRect &r) { return r.y() + r.height(); }
inline QRect RectFromEdges(int left, int top, int right, int bottom)
{
    return QRect(left, top, right - left, bottom - top);
}

// True when the point lies inside the rectangle or on any of its four
// edges, the right and bottom ones included; a rectangle whose right edge
// lies left of its left edge contains no point. (QRect::contains leaves the
// right and bottom edges out.)
QORDESIGN_EXPORT bool PointInRect(const QPoint &Point, const QRect &Rect);

// True for the text editors a control can be edited in place with: Qt's
// single-line and multi-line editors and their subclasses. False for null.
QORDESIGN_EXPORT bool ControlCanInlineEdit(const QWidget *Control);

// True when a widget can hold controls placed on it while it is designed:
// plain containers (QWidget and QFrame of exactly those classes), group
// boxes, the pages of tab widgets, stacked widgets and tool boxes, the
// widget of a scroll area, and the content of dock widgets and MDI
// sub-windows. A dynamic property "qorAcceptsControls" on the widget
// overrides the answer. False for null.
QORDESIGN_EXPORT bool AcceptsControls(const QWidget *Control);

// Scales a widget by M/D: its width and height (not its place), and the
// place and size of every child at all levels; fonts a widget sets itself
// are scaled too. Inner parts of composite widgets are left to their
// widget.
QORDESIGN_EXPORT void QorScaleBy(QWidget *Control, int M, int D);

// Mirrors the children of a widget horizontally within its width (each
// child's left edge becomes width - left - child width); with AllLevels,
// the children's children too. Inner parts of composite widgets stay.
QORDESIGN_EXPORT void QorFlipChildren(QWidget *Control, bool AllLevels);
