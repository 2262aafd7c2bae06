// SPDX-License-Identifier: MIT
// Design messages and the definitions the design surface shares with
// applications: the registered message numbers by which proxies, sizers and
// the stage talk to each other, the enumerations of sizer, stage, selection
// and arrange modes, and the arrange helpers (scale, flip, containers).
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

// The event the design manager reports a dynamically inserted component by.
using TDynInsComponentEvent = std::function<void(QObject *Sender, QObject *Component)>;
// The event the design manager reports the mouse moving over the stage by:
// the control under the mouse and the point in the stage's coordinates.
using TQorStageMouseMoveEvent =
    std::function<void(QObject *Sender, QWidget *Control, Qt::KeyboardModifiers Shift, int X, int Y)>;

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

// Posts a design message to a receiver: it runs after the current handler,
// in the order of posting.
QORDESIGN_EXPORT void QorPostMessage(QObject *receiver, quint32 msg, quintptr wParam, qintptr lParam);
// Sends a design message at once and returns the result its handler wrote
// (0 for a null receiver).
QORDESIGN_EXPORT qintptr QorSendMessage(QObject *receiver, quint32 msg, quintptr wParam, qintptr lParam);

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
