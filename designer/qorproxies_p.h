// SPDX-License-Identifier: MIT
// The design proxies: while the stage is designed, every designed widget
// and the stage itself have a proxy that sees their input as design
// messages and decides, message by message, to act, to swallow or to pass
// the message on. Widgets keep their classes and their own event handling;
// designing off removes every proxy and leaves them as they were.
//
// Input reaches the proxies through one event filter on the stage's
// top-level window, installed by the stage proxy: it hit-tests each mouse
// event, finds the nearest widget with a proxy and hands the proxy the
// event as a window message; designed widgets never see their input, so
// composite widgets (tab widgets, spin boxes, combo boxes, text edits)
// cannot act on it. What does not pass the window (moves, resizes, focus
// loss, posted design messages) reaches each proxy through a plain event
// filter on its own widget. Proxies installed on one widget form a chain:
// the newest sees a message first and passes it on to the one installed
// before it, the oldest to the widget itself.
#pragma once

#include "qordesign_export.h"

#include "designer/qordesigner_p.h"
#include "designer/qorrubberband_p.h"
#include "designer/qordesigngrid_p.h"

#include <QPointer>
#include <QWidget>

#include <memory>
#include <vector>

class QObject;
class TQorDesignManager;
class TQorRubberBand;
class TQorDesignWindowFilter;

class QORDESIGN_AUTOTEST_EXPORT TQorWndProcProxy
{
public:
    explicit TQorWndProcProxy(QWidget *Control);
    virtual ~TQorWndProcProxy();
    TQorWndProcProxy(const TQorWndProcProxy &) = delete;
    TQorWndProcProxy &operator=(const TQorWndProcProxy &) = delete;

    QWidget *Control() const { return m_control; }
    bool Enabled() const { return m_enabled; }
    // The setter keeps the name the design surface has always used.
    void SetEnbaled(bool Value) { m_enabled = Value; }
    bool GetEnabled() const { return m_enabled; }

    virtual void CreateNewWndProc();
    virtual void ReleaseNewWndProc();
    virtual void SetControl(QWidget *Control);
    // Hands the message to the procedure installed before this proxy: the
    // previous proxy of the chain, or the widget's own handling.
    virtual void ProxyWndMethod(TMessage &Message);

    // True while this proxy is in its widget's chain.
    bool IsInstalled() const { return m_installed; }

protected:
    void CallOldWndProc(TMessage &Message);

    QPointer<QWidget> m_control;
    bool m_enabled = true;
    bool m_reserved = true;
    bool m_installed = false;
    // The widget's address while installed, to find its chain also after
    // the widget died.
    const QWidget *m_chainKey = nullptr;
};

class QORDESIGN_AUTOTEST_EXPORT TQorDesignWndProcProxy : public TQorWndProcProxy
{
public:
    explicit TQorDesignWndProcProxy(QWidget *Control);
    ~TQorDesignWndProcProxy() override;

    QWidget *OwnerControl() const { return m_ownerControl; }
    void SetOwnerControl(QWidget *Control) { m_ownerControl = Control; }
    TQorDesignManager *DesignManager() const { return m_designManager; }
    void SetDesignManager(TQorDesignManager *Manager);
    bool IsInlineEditing() const { return m_inlineEditing; }

    void ProxyWndMethod(TMessage &Message) override;

    virtual QObject *DynCreateChildControl(const QMetaObject *ComponentClass, const QRect &Rect);
    virtual void ProxyKillFocus(TMessage &Message);
    // The widget was shown or hidden, itself or with an ancestor.
    virtual void ProxyShowWindow(TMessage &Message);
    virtual void ProxyMouseDown(TMessage &Message);
    virtual void ProxyMouseUp(TMessage &Message);
    virtual void ProxyMouseMove(TMessage &Message);
    virtual void ProxyMouseDblClick(TMessage &Message);
    virtual void ProxyMoved(TMessage &Message);
    virtual void ProxySized(TMessage &Message);
    virtual void ProxyQORNCtrlMoved(TMessage &Message);
    // Passes a control's move report on to Parent's proxy.
    void postCtrlMoved(QWidget *Parent, quintptr Control, qintptr LParam);
    virtual void ProxyExitSizeMove(TMessage &Message);

    bool GetCanAcceptChild() const;
    bool CanAcceptChild() const { return GetCanAcceptChild(); }
    // Every widget is windowed here: no windowless child is ever found.
    QWidget *GetSelectedGraphicCtrl(const TMessage &Message) const;
    bool IsInterceptMsgs() const { return m_enabled; }
    void StartInLineEdit();
    void EndInLineEdit();

    // The widget a new component goes into when this proxy's widget is
    // clicked: a tab widget's, stacked widget's or tool box's current page,
    // a scroll area's widget, or the widget itself.
    QWidget *InsertionParent() const;

    virtual bool IsStageProxy() const { return false; }

protected:
    bool m_inlineEditing = false;
    QPointer<QWidget> m_ownerControl;
    QPointer<TQorDesignManager> m_designManager;
};

class QORDESIGN_AUTOTEST_EXPORT TQorDesignStageProxy : public TQorDesignWndProcProxy
{
public:
    explicit TQorDesignStageProxy(QWidget *Control = nullptr);
    ~TQorDesignStageProxy() override;

    void CreateNewWndProc() override;
    void ReleaseNewWndProc() override;
    void SetControl(QWidget *Control) override;
    void ProxyWndMethod(TMessage &Message) override;
    void ProxyMouseDown(TMessage &Message) override;
    void ProxyMouseUp(TMessage &Message) override;
    void ProxyMouseMove(TMessage &Message) override;
    void ProxyMouseDblClick(TMessage &Message) override;
    void ProxyMoved(TMessage &Message) override;
    void ProxySized(TMessage &Message) override;
    void ProxyQORNCtrlMoved(TMessage &Message) override;
    virtual void SelectControl(QWidget *Control, quintptr KeyState, const QPoint &Pos);

    bool IsStageProxy() const override { return true; }

    void StartRubberBand(const QPoint &Pos);
    void EndRubberBand();
    TQorRubberBand *RubberBand() const;
    QPoint LastSelectionPos() const { return m_lastSelectionPos; }

    // The grid of dots the stage's painting code draws.
    TQorDesignGrid &Grid() { return m_grid; }
    bool DisplayGrid() const { return m_grid.DisplayGrid(); }
    void SetDisplayGrid(bool Value) { m_grid.SetDisplayGrid(Value); }
    int GridSizeX() const { return m_grid.GridSizeX(); }
    int GridSizeY() const { return m_grid.GridSizeY(); }
    void SetGridSizeX(int Value) { m_grid.SetGridSizeX(Value); }
    void SetGridSizeY(int Value) { m_grid.SetGridSizeY(Value); }

private:
    QPoint m_lastSelectionPos;
    QPointer<TQorRubberBand> m_rubberBand;
    TQorDesignGrid m_grid;
    std::unique_ptr<TQorDesignWindowFilter> m_windowFilter;
};

// The proxies of one design manager; owns them.
class QORDESIGN_AUTOTEST_EXPORT TQorDesignWndProcProxyList
{
public:
    TQorDesignWndProcProxyList();
    ~TQorDesignWndProcProxyList();
    TQorDesignWndProcProxyList(const TQorDesignWndProcProxyList &) = delete;
    TQorDesignWndProcProxyList &operator=(const TQorDesignWndProcProxyList &) = delete;

    int Count() const { return int(m_proxies.size()); }
    TQorDesignWndProcProxy *Proxies(int Index) const;
    void SetProxies(int Index, TQorDesignWndProcProxy *Proxy);
    // -1 when CheckExists and Control has a proxy of this list already.
    int AddControl(QWidget *Control, bool CheckExists);
    int AddProxy(TQorDesignWndProcProxy *Proxy, bool CheckExists);
    int GetControlIndex(const QWidget *Control) const;
    TQorDesignWndProcProxy *ProxyOf(const QWidget *Control) const;
    void DelProxy(int Index);
    void DelControl(const QWidget *Control);
    void DelUnassignedProxies();
    void ClearProxies();
    void SetAllEnabled(bool Value);

private:
    std::vector<std::unique_ptr<TQorDesignWndProcProxy>> m_proxies;
};

// The newest proxy installed on a widget, or null.
QORDESIGN_AUTOTEST_EXPORT TQorWndProcProxy *QorProxyOf(const QWidget *Control);

// Posts a mouse window message (WM_LBUTTONDOWN...) to a widget's proxy
// chain, the point in the widget's coordinates.
QORDESIGN_AUTOTEST_EXPORT void QorDeliverMouseMessage(QWidget *Control, quint32 Msg, quintptr KeyState, const QPoint &Pos);
