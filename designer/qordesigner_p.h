// SPDX-License-Identifier: MIT
// What the design surface's own classes share and applications never see:
// the window-message, key-state and hit-test numbers the proxies and sizers
// speak in, the results of a proxy's mouse-down handling, the packing of
// points and key states into a message's words, and the enumeration values
// without their namespace.
#pragma once

#include "designer/qordesigner.h"
#include "qordesign_export.h"

using enum QorDesigner::TQorSizerMode;
using enum QorDesigner::TQorStageSizerMode;
using enum QorDesigner::TControlSelectMode;
using enum QorDesigner::TFlipChildrenMode;
using enum QorDesigner::TQorDesignAlignmentStyle;
using enum QorDesigner::TQorDesignSizeStyle;
using enum QorDesigner::TQorDesignScaleStyle;

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
QORDESIGN_AUTOTEST_EXPORT quintptr KeyStateOf(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers);

// The selection mode a click with this key state asks for: Shift toggles,
// otherwise Ctrl clears, otherwise the control is selected alone. Shift is
// tested first.
QORDESIGN_AUTOTEST_EXPORT TControlSelectMode SelectModeOfKeyState(quintptr keyState);

// A point packed into LParam: x in the low, y in the high 16 bits.
QORDESIGN_AUTOTEST_EXPORT qintptr PointToLParam(const QPoint &point);
// The point of an LParam, both words read as unsigned.
QORDESIGN_AUTOTEST_EXPORT QPoint LParamToPoint(qintptr lParam);

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

// True when a sizer message names the receiving sizer itself as its sender
// (WParam): a sizer that moved has already moved itself and ignores it.
QORDESIGN_AUTOTEST_EXPORT bool IsOwnSizerMessage(const TMessage &Message, const QObject *Sizer);

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
QORDESIGN_AUTOTEST_EXPORT bool PointInRect(const QPoint &Point, const QRect &Rect);

// True for the text editors a control can be edited in place with: Qt's
// single-line and multi-line editors and their subclasses. False for null.
QORDESIGN_AUTOTEST_EXPORT bool ControlCanInlineEdit(const QWidget *Control);
