// SPDX-License-Identifier: MIT
// The design manager: what an application puts on a window to make a
// design stage (a form or another widget) designable while it runs. It owns
// the proxies, the sizers, the stage proxy and the stage sizer, keeps the
// list of selected components, answers the selection requests of proxies
// and sizers, and tells the design center, the object inspector and the
// application (through its signals) what changed.
#pragma once

#include "qordesign_export.h"

#include "designer/qordesigner.h"
#include "designer/qordesignintf.h"
#include "foundation/qorcomponents.h"

#include <QMenu>
#include <QMetaObject>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <memory>

class QPixmap;
class TQorDesignStageProxy;
class TQorDesignWndProcProxyList;
class TQorSizer;
class TQorSizerList;
class TQorStageSizer;

class TQorDesignManager;

// Holds a design manager's reports for the time it lives (BeginUpdate in
// the constructor, EndUpdate in the destructor); the manager may go first.
class QORDESIGN_EXPORT TQorDesignUpdateScope
{
public:
    explicit TQorDesignUpdateScope(TQorDesignManager *Manager);
    ~TQorDesignUpdateScope();
    TQorDesignUpdateScope(const TQorDesignUpdateScope &) = delete;
    TQorDesignUpdateScope &operator=(const TQorDesignUpdateScope &) = delete;

private:
    QPointer<TQorDesignManager> m_manager;
};

class QORDESIGN_EXPORT TQorDesignManager : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("QorDesignObject", "true")
    Q_PROPERTY(bool Enabled READ Enabled WRITE SetEnabled)
    Q_PROPERTY(QWidget *DesignStage READ DesignStage WRITE SetDesignStage)
    Q_PROPERTY(QMenu *DesignPopupMenu READ DesignPopupMenu WRITE SetDesignPopupMenu)
    Q_PROPERTY(bool IsDesigning READ IsDesigning WRITE SetIsDesigning NOTIFY IsDesigningChanged DESIGNABLE false)
    Q_PROPERTY(bool DisplayGrid READ DisplayGrid WRITE SetDisplayGrid DESIGNABLE false)
    Q_PROPERTY(int GridSizeX READ GridSizeX WRITE SetGridSizeX DESIGNABLE false)
    Q_PROPERTY(int GridSizeY READ GridSizeY WRITE SetGridSizeY DESIGNABLE false)

public:
    // The owner becomes the stage when it is a widget.
    explicit TQorDesignManager(QObject *Owner = nullptr);
    ~TQorDesignManager() override;

    // ---- Designing ----
    bool IsDesigning() const { return m_isDesigning; }
    void SetIsDesigning(bool Value);
    QWidget *DesignStage() const { return m_designStage; }
    void SetDesignStage(QWidget *Stage);
    bool Enabled() const { return m_enabled; }
    void SetEnabled(bool Value);
    QMenu *DesignPopupMenu() const { return m_designPopupMenu; }
    void SetDesignPopupMenu(QMenu *Menu);
    bool Dirty() const { return m_dirty; }
    // The moves being reported were made by Ctrl+arrow keys (the history
    // merges such nudges); set by the sizers, cleared after the report.
    bool LastMoveByKeys() const { return m_movedByKeys; }
    void NoteMoveByKeys() { m_movedByKeys = true; }
    // A sizer is about to move its control: the center hears of it.
    void NoteMoveStarting();
    void SetDirty(bool Value);

    TQorDesignWndProcProxyList *DesignProxies() const { return m_designProxies.get(); }
    TQorSizerList *Sizers() const { return m_sizers.get(); }
    TQorDesignStageProxy *StageProxy() const { return m_stageProxy.get(); }
    TQorStageSizer *StageSizer() const;
    const TComponentList &SelectedComps() const { return m_selectedComps; }

    // The center and the inspector stay their owners'; each must be
    // detached (set to null) before it goes if the manager lives on, also
    // while the stage is being destroyed.
    IQorDesignCenter *ConsoleCenter() const { return m_consoleCenter; }
    void SetConsoleCenter(IQorDesignCenter *Center) { m_consoleCenter = Center; }
    // Null once the inspector is destroyed.
    IQorObjInspector *ObjInspector() const;
    void SetObjInspector(IQorObjInspector *Inspector);

    // The event the application hears of inserted components by, besides
    // the signal.
    TDynInsComponentEvent OnDynInsComponentHandler;
    // The event the mouse moving over the stage is reported by, besides
    // the signal (the design center reads and writes it).
    TQorStageMouseMoveEvent OnStageMouseMoveHandler;

    bool DisplayGrid() const;
    void SetDisplayGrid(bool Value);
    int GridSizeX() const;
    void SetGridSizeX(int Value);
    int GridSizeY() const;
    void SetGridSizeY(int Value);

    void InitDesigning();
    void DoneDesigning();
    void InstallAllSizers();
    void InstallStageSizer();
    void InstallStageProxy();
    void InstallAllProxies();
    void ReleaseAllSizers();
    void ReleaseStageSizer();
    void ReleaseAllProxies();
    void ReleaseStageProxy();
    void AddProxiedControl(QWidget *Control);
    bool ComponentBelongToStage(const QObject *Component) const;
    // True for the library's own objects on the stage (sizers, rubber band).
    static bool IsQorDesignCtrl(const QObject *Component);

    // ---- Selection ----
    void SelectControl(QWidget *Control, const QPoint &Pos, TControlSelectMode Mode, bool Notify, bool BeginMove);
    void SelectControlInRect(const QRect &Rect, TControlSelectMode Mode);
    bool ControlInRect(const QWidget *Control, const QRect &Rect) const;
    // True for a control the user can see on the stage: it and its
    // containers up to the stage are shown. Select All and the rubber band
    // pass over the others (the controls of a tab page that is not
    // current, a hidden widget).
    bool IsControlShowing(const QWidget *Control) const;
    void SelectAllControls();
    void DeselectAll();
    void ReSelectComps();
    void DeselectUnsiblingControl(QWidget *Control, bool DeleteNonControls);
    void DeselectComponent();
    void FillSelectedComps();
    void SetSelectedComps(const TComponentList &List);
    TQorSizer *GetSelectSizer() const;
    void RefreshSizers();
    void RepaintSizers();
    void Refresh();

    // ---- Notifications ----
    void NotifyObjInspector();
    void SizersMoved();
    // Tells the center (and, with Signal, the application through
    // OnControlsMoved) that controls moved: once, after the last of a
    // burst of such reports.
    void ReportMoved(bool Signal);
    void SizersModified();
    // The list freed sizers whose controls went away: the selection is
    // refilled and reported.
    void SizersChanged();
    void CtrlMoved(QWidget *Control);
    // A designed control was shown or hidden (also with a container): its
    // sizer shows or hides its marks.
    void CtrlShownOrHidden(QWidget *Control);
    void EnvokeStageMouseMove(QWidget *Control, Qt::KeyboardModifiers Shift, const QPoint &Pos);

    // ---- Insertion ----
    bool GetIsDynInsComp() const;
    bool IsDynInsComp() const { return GetIsDynInsComp(); }
    const QMetaObject *GetDynInsCompClass() const;
    void DynInsCompDone(QObject *Component);

    // ---- Inline editing ----
    void StartEmbedEdit();
    void EndEmbedEdit();
    bool IsEmbeddedEditing() const { return m_embeddedEditing; }
    bool CanProxyInterceptMsgs() const { return !m_embeddedEditing; }

    // Groups what a command that changes many components reports (a
    // paste, a deletion): the stage's insertions are reported once, for
    // the last component inserted, when the outermost EndUpdate comes, and
    // components that left the stage leave the selection once. Calls nest.
    void BeginUpdate();
    void EndUpdate();
    bool IsUpdating() const { return m_updateCount > 0; }

    // True from the start of the manager's destruction on.
    bool IsDestroying() const { return m_destroying; }
    // True while the stage's rubber band is being dragged.
    bool IsRubbering() const;
    // True for a widget that is still alive and designed on this stage.
    bool IsLiveControl(const QWidget *Control) const;
    // Runs the component editor the application installed for a double
    // click (OnLaunchComponentEditor); true when it edited.
    bool LaunchComponentEditor(QObject *Component);
    std::function<bool(QObject *)> OnLaunchComponentEditor;
    // What runs a component's editor when the application installed none
    // on the manager: the design console installs the library's component
    // editors here.
    using TComponentEditorLauncher = std::function<bool(TQorDesignManager *Manager, QObject *Component)>;
    static void SetDefaultComponentEditorLauncher(TComponentEditorLauncher Launcher);

    // ---- Arranging the selection ----
    // Aligns the selected controls on each axis to the box around them
    // (or centres them in their parents); asSpaceEqual spreads their edges
    // evenly and throws EZeroDivide for a single control.
    void SetSelCtrlDesignAligment(TQorDesignAlignmentStyle HorzStyle, TQorDesignAlignmentStyle VertStyle);
    // Gives the selected controls the smallest, the largest or the given
    // width and height; a negative given size is ignored.
    void SetSelCtrlDesignSize(TQorDesignSizeStyle WidthStyle, TQorDesignSizeStyle HeightStyle, int AWidth,
                              int AHeight);
    // Scales the stage, or each selected control, with its children.
    void ScaleControls(int Percent, TQorDesignScaleStyle Style);
    // Mirrors the children of the stage, or of each selected control.
    void FlipChildren(TFlipChildrenMode Mode);

    // ---- Deletion, z-order, image ----
    void DelSelectedControls();
    void BringSelCtrlsToFront();
    void SendSelCtrlsToBack();
    void GetStageBitmap(QPixmap &Bitmap);
    void GetStagePicture(QPixmap &Picture);
    void PrintStage();

Q_SIGNALS:
    void OnStageMouseMove(QObject *Sender, QWidget *Control, Qt::KeyboardModifiers Shift, int X, int Y);
    void OnCompsChange(QObject *Sender);
    void OnControlsMoved(QObject *Sender);
    void OnDynInsComponent(QObject *Sender, QObject *Component);
    // The selection changed (after SelectedComps was filled).
    void SelectionChanged();
    // A design popup menu is about to show for a control (the stage for
    // the stage's menu).
    void OnDesignPopup(QMenu *Menu, QWidget *Control, const QPoint &GlobalPos);
    void IsDesigningChanged(bool Designing);
    // Enabled changed.
    void EnabledChanged(bool Enabled);
    // Another stage, or none, is designed (also when the stage is
    // destroyed).
    void DesignStageChanged(QWidget *Stage);

private:
    void Notification(QObject *Component, TQorCompOperation Operation);
    void notifyCenterSelection();
    // True when the sizers stand for Controls in their order already.
    bool keepsSizersFor(const QList<QWidget *> &Controls, bool StageWanted) const;
    void queueMovedCheck();
    void checkMoved();
    // The sizers show exactly the selected components.
    bool selectionShown() const;
    QList<TQorSizer *> sizersBackToFront() const;
    void watchStage();
    void unwatchStage();
    void stageDestroyed();

    bool m_embeddedEditing = false;
    std::unique_ptr<TQorDesignWndProcProxyList> m_designProxies;
    bool m_isDesigning = false;
    QPointer<QWidget> m_designStage;
    std::unique_ptr<TQorSizerList> m_sizers;
    std::unique_ptr<TQorDesignStageProxy> m_stageProxy;
    QPointer<TQorStageSizer> m_stageSizer;
    TComponentList m_selectedComps;
    IQorObjInspector *m_objInspector = nullptr;
    // Watches the inspector when it is an object, which it usually is.
    QPointer<QObject> m_objInspectorObject;
    bool m_objInspectorIsObject = false;
    IQorDesignCenter *m_consoleCenter = nullptr;
    QPointer<QMenu> m_designPopupMenu;
    bool m_dirty = false;
    bool m_enabled = true;
    bool m_destroying = false;
    bool m_refreshQueued = false;
    bool m_reshapeQueued = false;
    int m_updateCount = 0;
    QPointer<QObject> m_pendingInsert;
    bool m_pendingRemoval = false;
    bool m_movedQueued = false;
    bool m_movedByKeys = false;
    bool m_movedSignal = false;
    quint64 m_movedRequests = 0;
    quint64 m_movedSeen = 0;
    QMetaObject::Connection m_insertedConnection;
    QMetaObject::Connection m_removedConnection;
    QMetaObject::Connection m_stageDestroyedConnection;
};
