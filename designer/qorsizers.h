// SPDX-License-Identifier: MIT
// Sizers: what shows a selected control on the design stage and lets the
// user move it, resize it by its handles, nudge it with Ctrl+arrows and
// delete it. One sizer per selected control, kept in the design manager's
// sizer list; the stage sizer lies behind the stage and resizes the stage.
//
// A sizer is a child widget of the stage. A single selection shows its
// sizer: a widget masked to its eight handles (to a frame while it moves),
// so a press on its body reaches the control beneath and a press on a handle
// reaches the sizer. The sizers of a multiple selection stay hidden widgets
// whose corner marks and moving frames one overlay of the list paints: a
// thousand masked widgets would make selecting everything slow, and their
// marks take no input anyway.
#pragma once

#include "qordesign_export.h"

#include "designer/qordesigner.h"

#include <QColor>
#include <QHash>
#include <QMenu>
#include <QPointer>
#include <QWidget>

#include <array>
#include <memory>
#include <vector>

class TQorDesignManager;
class TQorSizerList;
class TQorSizerOverlay;

class QORDESIGN_EXPORT TQorSizer : public QWidget
{
    Q_OBJECT
    Q_CLASSINFO("QorDesignObject", "true")
    Q_PROPERTY(QWidget *Control READ Control WRITE SetControl)
    Q_PROPERTY(QorDesigner::TQorSizerMode SizerMode READ SizerMode WRITE SetSizerMode)
    Q_PROPERTY(bool SimulateMouseDownWhenSetControl READ SimulateMouseDownWhenSetControl WRITE
                   SetSimulateMouseDownWhenSetControl)
    Q_PROPERTY(QColor SingleSelColor READ SingleSelColor WRITE SetSingleSelColor)
    Q_PROPERTY(QColor MultiSelColor READ MultiSelColor WRITE SetMultiSelColor)

public:
    // Every handle is a square of this size.
    static constexpr int HandleSize = 5;

    explicit TQorSizer(QWidget *Parent = nullptr, QWidget *Control = nullptr);
    ~TQorSizer() override;

    QWidget *Control() const { return m_control; }
    void SetControl(QWidget *Control);
    TQorSizerMode SizerMode() const { return m_sizerMode; }
    void SetSizerMode(TQorSizerMode Mode);
    TQorSizerList *SizerList() const { return m_sizerList; }
    void SetSizerList(TQorSizerList *List) { m_sizerList = List; }
    bool SimulateMouseDownWhenSetControl() const { return m_simulateMouseDown; }
    void SetSimulateMouseDownWhenSetControl(bool Value) { m_simulateMouseDown = Value; }
    QColor SingleSelColor() const { return m_singleSelColor; }
    void SetSingleSelColor(const QColor &Color);
    QColor MultiSelColor() const { return m_multiSelColor; }
    void SetMultiSelColor(const QColor &Color);
    QMenu *PopupMenu() const { return m_popupMenu; }
    void SetPopupMenu(QMenu *Menu) { m_popupMenu = Menu; }
    bool Enabled() const { return m_enabled; }
    void SetEnabled(bool Value) { m_enabled = Value; }

    // The rectangle of handle 1..8 (top left, top middle, top right, right
    // middle, bottom right, bottom middle, bottom left, left middle) in the
    // sizer's coordinates, and its hit code.
    QRect HandleRect(int Index) const { return m_handles.at(Index - 1); }
    qintptr HitCode(int Index) const { return m_hitCodes.at(Index - 1); }
    QString CaptionText() const { return m_caption; }
    bool IsSender() const { return m_sender; }
    bool IsMoving() const { return m_moving; }
    bool IsInlineEditing() const { return m_inlineEditing; }
    // The sizer's bounds as the design surface counts them, also while the
    // sizer is hidden (a sizer of a multiple selection).
    QRect BoundsRect() const { return geometry(); }
    // True while the bound control can be seen on the stage: it and its
    // containers up to the stage are shown.
    bool ControlShowing() const;

    virtual QWidget *SizerParent() const;
    virtual void UpdatePaintRects();
    virtual void UpdateBounds();
    virtual void FeedbackBounds();
    virtual void BindToControl();

    // The answer of the hit test at a point in the sizer's coordinates:
    // a handle's code, HTTRANSPARENT, or HTCLIENT for the body.
    virtual qintptr WmNcHitTest(const QPoint &Pos) const;
    // The hit code of the handle at a point, HTNOWHERE if none.
    qintptr HandleCodeAt(const QPoint &Pos) const;

    // A left press meant for the bound control's body, in global
    // coordinates, with the key state of the press.
    virtual void WmLButtonDown(quintptr KeyState, const QPoint &GlobalPos);
    void WMLButtonDblClk();
    void WMRButtonUp(const QPoint &GlobalPos);
    void BeginMoveAsSender(const QPoint &GlobalPoint);
    // A move and the release of the drag this sizer runs.
    void DragMouseMove(const QPoint &GlobalPos, Qt::MouseButtons Buttons, Qt::KeyboardModifiers Modifiers);
    void WMLButtonUp();

    void StartMove();
    void EndMove();
    void ManualMove(int DX, int DY, bool Broadcast, bool EndAfter);
    void BroadcastMovedMsg(int DX, int DY);
    void BroadcastMoveStartMsg();
    void BroadcastMoveEndMsg();

    // Ctrl+arrows nudge; Delete (key up, no modifier) deletes the selection.
    void KeyDown(int Key, Qt::KeyboardModifiers Shift);
    void KeyUp(int Key, Qt::KeyboardModifiers Shift);

    void LaunchCompEditor(QObject *Component);
    void DelCurrControl();
    void BringCtrlToFront();
    void SendCtrlToBack();
    void FlipChildren(bool AllLevels);
    void StartEmbedEdit();
    void EndEmbedEdit();

    // The sizer that runs a mouse drag or resize now, if any.
    static TQorSizer *ActiveDragSizer();

    // Runs the window procedure's part of a design message sent or posted
    // to the sizer; true when the sizer handled it.
    bool SizerWndProc(TMessage &Message);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    // The keys the sizer acts on itself and claims before any shortcut.
    static bool IsSizerKey(const QKeyEvent *Event);
    void keyReleaseEvent(QKeyEvent *event) override;

    // Paints the marks of the sizer with a painter whose origin is the
    // sizer's top left, on the sizer itself or on the list's overlay.
    virtual void PaintMarks(QPainter &Painter) const;
    // The filled marks (handles or corners) with the sizer's top left at
    // Offset, and their colour; the frame a moving sizer shows instead.
    void AppendMarks(QList<QRect> &Rects, const QPoint &Offset) const;
    QColor MarkColor() const;
    QRectF MovingFrame() const;
    // What the sizer's mask keeps: its handles, or its frame while moving.
    virtual QRegion MarksRegion() const;
    void UpdateShape();
    void UpdateShapeWhileMoving();
    void SetBoundsQuiet(const QRect &Bounds);
    void ControlDestroyed();
    // True while a follower ends a move: it leaves the keys with the sizer
    // the user moved.
    bool m_following = false;

    QPointer<QWidget> m_control;
    TQorSizerMode m_sizerMode = QorDesigner::smNone;
    TQorSizerList *m_sizerList = nullptr;
    bool m_simulateMouseDown = false;
    QColor m_singleSelColor;
    QColor m_multiSelColor;
    QPointer<QMenu> m_popupMenu;
    bool m_enabled = true;
    bool m_sender = false;
    QPoint m_startPoint;
    QPoint m_startOffset;
    QPoint m_lastPoint;
    std::array<QRect, 8> m_handles;
    std::array<qintptr, 8> m_hitCodes;
    bool m_moving = false;
    bool m_inlineEditing = false;
    QString m_caption;
    QPoint m_startPos;
    // The handle of a running resize (0: a move), and where it started.
    qintptr m_resizeCode = 0;
    QRect m_resizeStart;
    QPoint m_resizeGlobalStart;
    QMetaObject::Connection m_controlDestroyed;

    friend class TQorSizerList;
    friend class TQorSizerOverlay;
};
