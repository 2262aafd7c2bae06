{ QorDesign — the design surface of the run-time form designer.

  Part 1.1 (design messages and shared definitions): the twelve registered
  design messages, the flag QorDesigning, the enumerations shared by the design
  surface and the arrange dialogs, the mouse-down result codes, PointInRect,
  ControlCanInlineEdit and the key-state-to-selection-mode rule.

  Part 1.2 (window-procedure proxies, qorproxies.inc), Part 1.3 (sizers,
  qorsizers.inc), Part 1.4 (rubber band, grid and design stage,
  qorstage.inc) and Part 1.5 (design manager, qormanager.inc).

  The Win32 mechanisms are replaced as PLATFORM.md says: a proxy hooks the
  control's WindowProc; every designed component carries csDesigning and the
  stage's form gets a TIDesigner (TQorDesignHook) that keeps the designed
  controls inert; sizers and the rubber band are shaped windows; the sizer
  runs its own resize loop. docs/platform-notes.md lists every departure.

  Sections:
    - Registered design messages
    - Shared enumerations and event types
    - Mouse-down result codes
    - Free functions
    - Window-procedure proxies (Part 1.2)
    - Sizers (Part 1.3)
    - Rubber band and design stage (Part 1.4)
    - Design manager (Part 1.5) }
unit QorDesigner;

{$mode objfpc}{$H+}

interface

uses
  // RTL / FCL
  Classes, SysUtils, Contnrs, Types, Math,
  // LCL
  LCLType, LCLIntf, LMessages, Graphics, Controls, StdCtrls, ExtCtrls, Forms, Menus;

{************ Registered design messages }

var
  { Process-wide numbers of the design messages (Part 1.1). Read them when a
    message is handled or posted; never cache them. }
  QORM_SizerMoved: Cardinal = 0;
  QORM_SizerMoveEnd: Cardinal = 0;
  QORM_SizerMoveStart: Cardinal = 0;
  QORM_ControlSelected: Cardinal = 0;
  QORM_ControlSelectedAtPos: Cardinal = 0;
  QORN_SelCtrlChanged: Cardinal = 0;
  QORN_CtrlMoved: Cardinal = 0;
  QORN_SelCtrlMoved: Cardinal = 0;
  QORN_StartInlineEdit: Cardinal = 0;
  QORN_EndInlineEdit: Cardinal = 0;
  QORN_DynCompCreated: Cardinal = 0;
  QORN_DelSelCtrls: Cardinal = 0;
  { Ours, not the Part's: closes a batch opened by a sizer broadcast
    (TQorDesignManager.HoldBatchUntilPosted); wParam is the batch generation. }
  QORI_SizerBatchEnd: Cardinal = 0;

const
  { Window changes from which a batch freezes the stage (one repaint of the
    whole stage costs about as much as this many separate changes). }
  QorFreezeMinOps = 16;

  { Set by the host application while designing is in progress; the package
    itself neither sets nor reads it. }
  QorDesigning: Boolean = False;

const
  { The registered strings, in the order of the unit's initialisation. }
  QorDesignMessageNames: array[0..11] of string = (
    'QOR.SizerMovedMsg',
    'QOR.SizerMoveEndMsg',
    'QOR.SizerMoveStartMsg',
    'QOR.Design.ControlSelected',
    'QOR.Design.ControlSelectedAtPos',
    'QOR.Design.SelectControlChanged',
    'QOR.Design.ControlMoved',
    'QOR.Design.SelectControlMoved',
    'QOR.Design.StartInlineEdit',
    'QOR.Design.EndInlineEdit',
    'QOR.Design.DynamicComponentCreated',
    'QOR.Design.DelSelectControls');

  { First and last number QorRegisterWindowMessage hands out (the Win32 range
    of registered messages). }
  QorFirstRegisteredMessage = $C000;
  QorLastRegisteredMessage = $FFFF;

{ Replaces Win32's RegisterWindowMessageA (PLATFORM.md). The same name, compared
  case-insensitively as Win32 does, always gives the same number. The number is
  derived from the name itself, so two modules of one process (or two
  processes) that register the same name get the same number without sharing
  any table; only a hash collision between two different names moves the later
  one to the next free number of this module's table. }
function QorRegisterWindowMessage(const Name: string): Cardinal;

{ Registers the twelve design messages into their variables, in the order of
  Part 1.1. Called by the unit initialisation; calling it again changes
  nothing, because every name gives back its number. }
procedure RegisterQorDesignMessages;

{************ Shared enumerations and event types }

type
  TQorSizerMode = (smSingle, smMulti, smConceal, smNone);
  TQorStageSizerMode = (ssmNormal, ssmFixed, ssmFixedTopLeft);
  TControlSelectMode = (csmSelect, csmAdd, csmDel, csmToggle, csmClear);
  TFlipChildrenMode = (fcSelected, fcAll);
  TQorDesignAlignmentStyle = (asNoChange, asLeftOrTop, asCenters,
    asRightOrBottom, asSpaceEqual, asCenterInWindow);
  TQorDesignSizeStyle = (ssNoChange, ssToSmallest, ssToLargest, ssCustom);
  TQorDesignScaleStyle = (ssAll, ssSelected);

  { Fired by the design manager for a component inserted dynamically. }
  TDynInsComponentEvent = procedure(Sender: TObject; Component: TComponent) of object;

{************ Mouse-down result codes }

const
  { Written by a design proxy into the mouse-down message's Result and read
    back by the stage proxy (Part 1.2). }
  QorMouseDownNotHandled = 0;
  QorMouseDownSelectedSelf = 101;
  QorMouseDownSelectedGraphicChild = 102;
  QorMouseDownPassedToParent = 201;
  QorMouseDownComponentInserted = 301;

  { The platform's non-client hit codes of the sizer handles (Part 1.3);
    the LCL defines only HTTRANSPARENT. }
  HTLEFT = 10;
  HTRIGHT = 11;
  HTTOP = 12;
  HTTOPLEFT = 13;
  HTTOPRIGHT = 14;
  HTBOTTOM = 15;
  HTBOTTOMLEFT = 16;
  HTBOTTOMRIGHT = 17;

{************ Free functions }

{ All four edges inclusive, unlike the platform's PtInRect. }
function PointInRect(const Point: TPoint; const Rect: TRect): Boolean;

{ True exactly for TCustomEdit and its descendants; nil gives False. }
function ControlCanInlineEdit(Control: TControl): Boolean;

{ The stage proxy's rule (Part 1.1): MK_SHIFT gives csmToggle, else MK_CONTROL
  gives csmClear, else csmSelect. Shift is tested first. }
function KeyStateToSelectMode(KeyState: PtrUInt): TControlSelectMode;

{ True when a sizer message (QORM_SizerMoved, QORM_SizerMoveEnd,
  QORM_SizerMoveStart) was sent by the receiving sizer itself: its wParam is
  the receiver's own handle, and the receiver must ignore it (Part 1.1). }
function IsOwnSizerMessage(const Message: TLMessage; OwnHandle: THandle): Boolean;

{ Reads the position packed into a mouse message's lParam as the design
  surface does everywhere: x and y as unsigned 16-bit words (Part 1.2). }
function MsgPosToPoint(LParam: PtrInt): TPoint;
{ Packs x and y into an lParam, each as its low 16 bits. }
function PointToMsgPos(X, Y: Integer): PtrInt;

type
  TQorDesignManager = class;
  TQorSizerList = class;
  TQorRubberBand = class;

{************ Window-procedure proxies (Part 1.2) }

  { TQorWndProcProxy
    Replaces the WindowProc of one windowed control by its own method and puts
    the previous one back. Override ProxyWndMethod to act on messages; call
    the inherited method (or CallOldWndProc) to pass one on. CreateNewWndProc
    and ReleaseNewWndProc install and restore; SetControl re-points the proxy.
    A control being destroyed is left alone on release. }

  TQorWndProcProxy = class(TObject)
  private
    FControl: TWinControl;
    FOldWndProc: TWndMethod;
    FEnabled: Boolean;
    FActive: Boolean;   // the Part's second Boolean: set, not otherwise used
    function GetEnabled: Boolean;
    procedure SetEnbaled(Value: Boolean);
  protected
    procedure CallOldWndProc(var Message: TLMessage);
  public
    procedure CreateNewWndProc; virtual;
    procedure ReleaseNewWndProc; virtual;
    procedure SetControl(AControl: TWinControl); virtual;
    procedure ProxyWndMethod(var Message: TLMessage); virtual;
    constructor Create(AControl: TWinControl); virtual;
    destructor Destroy; override;
    { True while our method is the control's WindowProc. }
    function IsInstalled: Boolean;
    property Control: TWinControl read FControl write SetControl;
    property OldWndProc: TWndMethod read FOldWndProc;
    property Enabled: Boolean read GetEnabled write SetEnbaled;
  end;

  { TQorDesignWndProcProxy
    The design behaviour of one control of the stage (Part 1.2): a press
    selects (posting the selection messages to the owner control), a
    Ctrl-press climbs to the parent, a press with a palette class chosen
    inserts a component, moves and resizes are reported upward. }

  TQorDesignWndProcProxy = class(TQorWndProcProxy)
  private
    FInlineEditing: Boolean;
    FOwnerControl: TWinControl;
    FDesignManager: TQorDesignManager;
    function GetCanAcceptChild: Boolean;
    function RouteThrough(var Message: TLMessage): Boolean;
  protected
    function IsStageProxy: Boolean; virtual;
  public
    constructor Create(AControl: TWinControl); override;
    destructor Destroy; override;
    procedure ProxyWndMethod(var Message: TLMessage); override;
    function DynCreateChildControl(ComponentClass: TComponentClass; const ARect: TRect): TComponent; virtual;
    procedure ProxyKillFocus(var Message: TLMessage); virtual;
    procedure ProxyMouseDown(var Message: TLMessage); virtual;
    procedure ProxyMouseUp(var Message: TLMessage); virtual;
    procedure ProxyMouseMove(var Message: TLMessage); virtual;
    procedure ProxyMouseDblClick(var Message: TLMessage); virtual;
    procedure ProxyMoved(var Message: TLMessage); virtual;
    procedure ProxySized(var Message: TLMessage); virtual;
    procedure ProxyQORNCtrlMoved(var Message: TLMessage); virtual;
    procedure ProxyExitSizeMove(var Message: TLMessage); virtual;
    function GetSelectedGraphicCtrl(const Message: TLMessage): TControl;
    function IsInterceptMsgs: Boolean;
    procedure StartInLineEdit;
    procedure EndInLineEdit;
    procedure SetDesignManager(AManager: TQorDesignManager);
    property CanAcceptChild: Boolean read GetCanAcceptChild;
    property InlineEditing: Boolean read FInlineEditing;
    property OwnerControl: TWinControl read FOwnerControl write FOwnerControl;
    property DesignManager: TQorDesignManager read FDesignManager write SetDesignManager;
  end;

  { TQorDesignStageProxy
    The proxy of the design stage: selection, deletion, rubber band, grid. }

  TQorDesignStageProxy = class(TQorDesignWndProcProxy)
  private
    FLastSelPos: TPoint;
    FRubberBand: TQorRubberBand;
    FRubberPending: Boolean;
    FRubberTimer: TTimer;
    FGridTemplate: TBitmap;
    FDisplayGrid: Boolean;
    FGridSizeX: Integer;
    FGridSizeY: Integer;
    procedure SetGridSizeX(Value: Integer);
    procedure SetGridSizeY(Value: Integer);
    procedure RubberTimerTick(Sender: TObject);
    procedure ProxyMouseMoveBand(const P: TPoint);
  protected
    function IsStageProxy: Boolean; override;
  public
    constructor Create(AControl: TWinControl); override;
    destructor Destroy; override;
    procedure CreateNewWndProc; override;
    procedure ReleaseNewWndProc; override;
    procedure SetControl(AControl: TWinControl); override;
    procedure ProxyWndMethod(var Message: TLMessage); override;
    procedure ProxyMouseDown(var Message: TLMessage); override;
    procedure ProxyMouseUp(var Message: TLMessage); override;
    procedure ProxyMouseMove(var Message: TLMessage); override;
    procedure ProxyMouseDblClick(var Message: TLMessage); override;
    procedure ProxyMoved(var Message: TLMessage); override;
    procedure ProxySized(var Message: TLMessage); override;
    procedure ProxyQORNCtrlMoved(var Message: TLMessage); override;
    procedure SelectControl(AControl: TControl; KeyState: Integer; const Pos: TPoint); virtual;
    procedure StartRubberBand(const Pos: TPoint);
    procedure EndRubberBand;
    procedure DrawGridTemplate;
    procedure DrawGrid(DC: HDC);
    procedure SetDisplayGrid(Value: Boolean);
    property LastSelPos: TPoint read FLastSelPos;
    property RubberBand: TQorRubberBand read FRubberBand;
    { A press started a band that no move has given an area yet. }
    property RubberPending: Boolean read FRubberPending;
    property GridTemplate: TBitmap read FGridTemplate;
    property DisplayGrid: Boolean read FDisplayGrid write SetDisplayGrid;
    property GridSizeX: Integer read FGridSizeX write SetGridSizeX;
    property GridSizeY: Integer read FGridSizeY write SetGridSizeY;
  end;

  { TQorControlSet
    A counted set of controls by address. The proxy and sizer lists ask it
    before they scan, so a control without a proxy or sizer costs no scan. }

  TQorControlSet = class
  private
    FItems: TFPHashList;   // hex address -> count
  public
    constructor Create;
    destructor Destroy; override;
    procedure Include(AControl: TControl);
    procedure Exclude(AControl: TControl);
    function Contains(AControl: TControl): Boolean;
    procedure Clear;
  end;

  { TQorDesignWndProcProxyList
    Owns the proxies of one design manager. A control has at most one proxy
    when callers pass CheckExists (they do); look-ups go through a hash of
    the controls, so thousands of proxies cost no linear scans. }

  TQorDesignWndProcProxyList = class(TList)
  private
    FIndex: TQorControlSet;
    function GetProxies(Index: Integer): TQorDesignWndProcProxy;
    procedure SetProxies(Index: Integer; Value: TQorDesignWndProcProxy);
  public
    constructor Create;
    destructor Destroy; override;
    function AddControl(AControl: TWinControl; CheckExists: Boolean): Integer;
    function AddProxy(Proxy: TQorDesignWndProcProxy; CheckExists: Boolean): Integer;
    function GetControlIndex(AControl: TControl): Integer;
    procedure DelProxy(Index: Integer);
    procedure DelControl(AControl: TControl);
    procedure DelUnassignedProxies;
    procedure ClearProxies;
    procedure SetAllEnabled(Value: Boolean);
    property Proxies[Index: Integer]: TQorDesignWndProcProxy read GetProxies write SetProxies;
  end;

{************ Sizers (Part 1.3) }

  { TQorSizer
    The selection mark of one control: a window shaped to its handles (or,
    while moving, to a frame), laid over the control 2 pixels outside it.
    A press on a handle resizes in the sizer's own loop (StartMove,
    UpdatePaintRects per step, EndMove); a press elsewhere, or on the bound
    control's body, drags it, and the sibling sizers follow through the
    posted sizer messages. Ctrl+arrows nudge, Delete (on key up) deletes.
    Override UpdateBounds/BindToControl/Paint for another look or place
    (TQorStageSizer does). }

  TQorSizer = class(TCustomControl)
  private
    FControl: TControl;
    FSizerMode: TQorSizerMode;
    FSizerList: TQorSizerList;
    FSimulateMouseDownWhenSetControl: Boolean;
    FSingleSelColor: TColor;
    FMultiSelColor: TColor;
    FSender: Boolean;
    FStartPoint: TPoint;
    FStartOffset: TPoint;
    FLastPoint: TPoint;
    FHandleRects: array[1..8] of TRect;
    FHitCodes: array[1..8] of Integer;
    FMoving: Boolean;
    FInlineEditing: Boolean;
    FCaptionText: string;
    FStartPos: TPoint;
    // own resize loop (replaces the platform's move/size loop)
    FSizingHit: Integer;
    FSizingStartBounds: TRect;
    FSizingStartMouse: TPoint;
    FDragging: Boolean;
    FShapeKey: string;
    FShapeDeferredBy: TQorDesignManager; // the manager that will shape us
    FShapeDeferredAt: Integer; // our entry in its deferred-shape list
    FFollowing: Boolean;       // ending a move another sizer started
    function GetHandleRect(Index: Integer): TRect;
    function GetHitCode(Index: Integer): Integer;
    procedure SetSingleSelColor(Value: TColor);
    procedure SetMultiSelColor(Value: TColor);
    procedure SetSizerMode(Value: TQorSizerMode);
    procedure SetSizerList(Value: TQorSizerList);
    procedure UpdateShape;
    procedure ApplyShape;
    procedure TakeFocus;
    function IsAboveControls: Boolean;
    procedure CMWantSpecialKey(var Message: TLMessage); message CM_WANTSPECIALKEY;
  protected
    procedure SetControl(AControl: TControl); virtual;
    procedure Notification(AComponent: TComponent; Operation: TOperation); override;
    procedure Paint; override;
    procedure Resize; override;
    procedure WndProc(var Message: TLMessage); override;
    procedure MouseDown(Button: TMouseButton; Shift: TShiftState; X, Y: Integer); override;
    procedure MouseMove(Shift: TShiftState; X, Y: Integer); override;
    procedure MouseUp(Button: TMouseButton; Shift: TShiftState; X, Y: Integer); override;
    procedure DblClick; override;
    procedure KeyDown(var Key: Word; Shift: TShiftState); override;
    procedure KeyUp(var Key: Word; Shift: TShiftState); override;
    procedure KeyPress(var Key: Char); override;
    procedure WmLButtonDown(const ClientPos: TPoint; KeyState: PtrUInt); virtual;
    procedure SizingStep(const ScreenPos: TPoint);
    procedure PaintHandles(AColor: TColor; CornersOnly: Boolean);
    { Adds to Rgn what Paint draws; the window is shaped to it. }
    procedure AddShapeTo(Rgn: TRegion); virtual;
  public
    constructor Create(AOwner: TComponent); override;
    constructor CreateWithControl(AOwner: TComponent; AControl: TControl);
    destructor Destroy; override;
    function SizerParent: TWinControl; virtual;
    procedure UpdatePaintRects; virtual;
    procedure UpdateBounds; virtual;
    procedure FeedbackBounds; virtual;
    procedure BindToControl; virtual;
    { The hit code (HTTOPLEFT ... HTLEFT) of the handle at client P, 0 for
      none or HTTRANSPARENT; the Part's WmNcHitTest. }
    function WmNcHitTest(const ClientPos: TPoint): Integer; virtual;
    procedure BeginMoveAsSender(const ScreenPoint: TPoint);
    { One drag step to the cursor at ScreenPos (the Part's MouseMove). }
    procedure DragTo(const ScreenPos: TPoint);
    { Ends a drag or a resize begun by this sizer (the button went up). }
    procedure EndDrag;
    procedure StartMove;
    procedure EndMove;
    procedure ManualMove(DX, DY: Integer; ABroadcast, EndAfter: Boolean);
    procedure BroadcastMovedMsg(DX, DY: Integer);
    procedure BroadcastMoveStartMsg;
    procedure BroadcastMoveEndMsg;
    procedure DelCurrControl;
    procedure BringCtrlToFront;
    procedure SendCtrlToBack;
    procedure FlipChildren(AllLevels: Boolean); override;
    procedure StartEmbedEdit;
    procedure EndEmbedEdit;
    procedure LaunchCompEditor(AComponent: TComponent);
    property IsSender: Boolean read FSender;
    property Moving: Boolean read FMoving;
    property Dragging: Boolean read FDragging;
    property Sizing: Integer read FSizingHit;
    property InlineEditing: Boolean read FInlineEditing;
    property CaptionText: string read FCaptionText;
    property HandleRects[Index: Integer]: TRect read GetHandleRect;
    property HitCodes[Index: Integer]: Integer read GetHitCode;
  published
    property Control: TControl read FControl write SetControl;
    property SizerMode: TQorSizerMode read FSizerMode write SetSizerMode;
    property SizerList: TQorSizerList read FSizerList write SetSizerList;
    property SimulateMouseDownWhenSetControl: Boolean read FSimulateMouseDownWhenSetControl
      write FSimulateMouseDownWhenSetControl;
    property SingleSelColor: TColor read FSingleSelColor write SetSingleSelColor default clBtnText;
    property MultiSelColor: TColor read FMultiSelColor write SetMultiSelColor default clBtnShadow;
    property Enabled;
    property OnClick;
    property OnMouseDown;
    property OnMouseUp;
  end;

  { TQorSizerList
    The sizers of one design manager, in selection order; owns them. Finding
    the sizer of a control goes through a hash, not a scan. }

  TQorSizerList = class(TList)
  private
    FDesignManager: TQorDesignManager;
    FIndex: TQorControlSet;
    function GetSizers(Index: Integer): TQorSizer;
  protected
    procedure Notify(Ptr: Pointer; Action: TListNotification); override;
  public
    constructor Create;
    destructor Destroy; override;
    function AddControl(AControl: TControl; AOwner: TComponent; CheckExists: Boolean): Integer;
    function AddSizer(Sizer: TQorSizer): Integer;
    function GetControlIndex(AControl: TControl): Integer;
    function SizerOf(AControl: TControl): TQorSizer;
    procedure DelSizer(Index: Integer);
    procedure DelControl(AControl: TControl);
    procedure DelAllUnSibling(Sizer: TQorSizer);
    procedure DelUnassignedSizers;
    procedure ClearSizer;
    procedure RemoveAllSizerAndCtrls;
    procedure BroadcastMessageToAllSizers(Msg: Cardinal; WParam: WParam; LParam: LParam);
    procedure NotifyMoved;
    procedure NotifySizerModified;
    procedure UpdateAllSizerMode;
    procedure RepaintAllSizers;
    procedure RepaintSizers;
    procedure SetAllEnabled(Value: Boolean);
    { Re-keys the index after a sizer changed its control. }
    procedure SizerControlChanged(Sizer: TQorSizer; OldControl: TControl);
    property DesignManager: TQorDesignManager read FDesignManager write FDesignManager;
    property Sizers[Index: Integer]: TQorSizer read GetSizers;
  end;

  { TQorStageSizer
    The sizer of the design stage: it lies behind the stage, in the stage's
    parent, so only its border around the stage can be grabbed. }

  TQorStageSizer = class(TQorSizer)
  private
    FStageSizerMode: TQorStageSizerMode;
    procedure SetStageSizerMode(Value: TQorStageSizerMode);
  protected
    procedure Paint; override;
    procedure WmLButtonDown(const ClientPos: TPoint; KeyState: PtrUInt); override;
    procedure AddShapeTo(Rgn: TRegion); override;
  public
    procedure UpdateBounds; override;
    procedure BindToControl; override;
    function WmNcHitTest(const ClientPos: TPoint): Integer; override;
  published
    property StageSizerMode: TQorStageSizerMode read FStageSizerMode write SetStageSizerMode;
  end;

{************ Rubber band and design stage (Part 1.4) }

  { TQorRubberBand
    The dotted selection rectangle of the stage: a window shaped to its
    one-pixel outline, which never takes the mouse. }

  TQorRubberBand = class(TCustomControl)
  private
    FPointEnd: TPoint;
    FPointStart: TPoint;
    FShapeSize: TPoint;
  protected
    procedure Paint; override;
    procedure Resize; override;
    procedure Notification(AComponent: TComponent; Operation: TOperation); override;
  public
    constructor Create(AOwner: TComponent); override;
    procedure SetPointStart(const P: TPoint);
    procedure SetPointEnd(const P: TPoint);
    procedure UpdateBounds;
    function WmNcHitTest: Integer;
    property PointStart: TPoint read FPointStart;
    property PointEnd: TPoint read FPointEnd;
  end;

  { TQorDesignStage
    A ready-made container that accepts child controls and puts a sizer on
    the control under a click, with a sizer list of its own. }

  TQorDesignStage = class(TCustomControl)
  private
    FSizers: TQorSizerList;
  protected
    procedure Paint; override;
    procedure MouseDown(Button: TMouseButton; Shift: TShiftState; X, Y: Integer); override;
  public
    constructor Create(AOwner: TComponent); override;
    destructor Destroy; override;
    function PointedControl(const P: TPoint; ReturnParent: Boolean): TControl;
    function PointInControl(const P: TPoint; AControl: TControl): Boolean;
    property Sizers: TQorSizerList read FSizers;
  published
    property Align;
    property Color;
    property Visible;
  end;

{************ Design manager (Part 1.5) }

  TQorStageMouseMoveEvent = procedure(Sender: TObject; AControl: TControl;
    Shift: TShiftState; X, Y: Integer) of object;

  { TQorDesignHook
    The TIDesigner given to the stage's form while designing (PLATFORM.md):
    LCL hands it every message of a csDesigning control after that control's
    proxy passed the message on, and it keeps input from making the control
    act (no click, focus, toggling or pressed look). }

  TQorDesignHook = class(TIDesigner)
  private
    FManager: TQorDesignManager;
  public
    constructor Create(AManager: TQorDesignManager);
    function IsDesignMsg(Sender: TControl; var Message: TLMessage): Boolean; override;
    procedure UTF8KeyPress(var UTF8Key: TUTF8Char); override;
    procedure Modified; override;
    procedure Notification(AComponent: TComponent; Operation: TOperation); override;
    procedure PaintGrid; override;
    procedure ValidateRename(AComponent: TComponent; const CurName, NewName: string); override;
    function GetShiftState: TShiftState; override;
    procedure SelectOnlyThisComponent(AComponent: TComponent); override;
    function UniqueName(const BaseName: string): string; override;
    procedure PrepareFreeDesigner(AFreeComponent: Boolean); override;
  end;

  { TQorDesignManager
    Makes a design stage designable: owns the proxies, the sizers, the stage
    proxy and the stage sizer, keeps SelectedComps in selection order and
    tells the design center and the inspector of changes (Part 1.5). }

  TQorDesignManager = class(TComponent)
  private
    FEmbeddedEditing: Boolean;
    FDesignProxies: TQorDesignWndProcProxyList;
    FIsDesigning: Boolean;
    FDesignStage: TWinControl;
    FSizers: TQorSizerList;
    FStageProxy: TQorDesignStageProxy;
    FStageSizer: TQorStageSizer;
    FSelectedComps: TComponentList;
    FObjInspector: TComponent;
    FConsoleCenter: TComponent;
    FDesignPopupMenu: TPopupMenu;
    FDirty: Boolean;
    FOnDynInsComponent: TDynInsComponentEvent;
    FOnStageMouseMove: TQorStageMouseMoveEvent;
    FOnCompsChange: TNotifyEvent;
    FOnControlsMoved: TNotifyEvent;
    FEnabled: Boolean;
    // LCL mechanics (PLATFORM.md)
    FHook: TQorDesignHook;
    FHookForm: TCustomForm;
    FMarked: TFPList;          // components we set csDesigning on
    FDragSizer: TQorSizer;     // the sizer being dragged or resized, if any
    FBatchDepth: Integer;
    FPostedBatches: Integer;   // batches closed by a posted message
    FBatchGeneration: PtrUInt; // tells stale closing messages apart
    FDeferredShapes: TFPList;  // sizers to shape when the batch ends
    FFrozen: Pointer;          // FreezeStageWindows' result, while frozen
    FFrozenDepth: Integer;     // the batch depth that froze
    FPendingProxies: TFPList;  // controls to proxy once constructed
    FCtrlMovedCount: Integer;
    procedure AsyncAddProxied(Data: PtrInt);
    function GetDisplayGrid: Boolean;
    function GetGridSizeX: Integer;
    function GetGridSizeY: Integer;
    procedure SetDisplayGrid(Value: Boolean);
    procedure SetGridSizeX(Value: Integer);
    procedure SetGridSizeY(Value: Integer);
    procedure SetIsDesigning(Value: Boolean);
    procedure SetDesignStage(Value: TWinControl);
    procedure SetDesignPopupMenu(Value: TPopupMenu);
    procedure SetObjInspector(Value: TComponent);
    procedure SetEnabled(Value: Boolean);
    procedure MarkDesigning(AComponent: TComponent);
    procedure UnmarkAll;
    procedure InstallHook;
    procedure ReleaseHook;
    function CenterIsDesignCenter: Boolean;
  protected
    procedure Notification(AComponent: TComponent; Operation: TOperation); override;
    procedure InitDesigning; virtual;
    procedure DoneDesigning; virtual;
    procedure InstallAllSizers; virtual;
    procedure InstallStageSizer; virtual;
    procedure InstallStageProxy; virtual;
    procedure InstallAllProxies; virtual;
    procedure ReleaseAllSizers; virtual;
    procedure ReleaseStageSizer; virtual;
    procedure ReleaseAllProxies; virtual;
    procedure ReleaseStageProxy; virtual;
  public
    constructor Create(AOwner: TComponent); override;
    destructor Destroy; override;
    function CanProxyInterceptMsgs: Boolean;
    procedure AddProxiedControl(AControl: TWinControl);
    function ComponentBelongToStage(AComponent: TComponent): Boolean;
    // selection
    procedure SelectControl(AControl: TControl; const Pos: TPoint; Mode: TControlSelectMode;
      Notify: Boolean; BeginMove: Boolean);
    procedure SelectControlInRect(const ARect: TRect; Mode: TControlSelectMode);
    function ControlInRect(AControl: TControl; const ARect: TRect): Boolean;
    procedure SelectAllControls;
    procedure DeselectAll;
    procedure ReSelectComps;
    procedure DeselectUnsiblingControl(AControl: TControl; DeleteNonControls: Boolean);
    procedure DeselectComponent;
    procedure FillSelectedComps;
    procedure SetSelectedComps(List: TComponentList);
    function GetSelectSizer: TQorSizer;
    procedure RefreshSizers;
    procedure RepaintSizers;
    procedure Refresh;
    // notifications
    procedure NotifyObjInspector;
    procedure NotifyCenterSelChanged;
    procedure SizersMoved;
    procedure SizersModified;
    procedure CtrlMoved(AControl: TControl);
    procedure SetDirty(Value: Boolean);
    procedure EnvokeStageMouseMove(AControl: TControl; Shift: TShiftState; const Pos: TPoint);
    procedure SetConsoleCenter(ACenter: TComponent);
    // dynamic insertion
    function GetIsDynInsComp: Boolean;
    function GetDynInsCompClass: TComponentClass;
    procedure DynInsCompDone(AComponent: TComponent);
    // inline editing
    procedure StartEmbedEdit;
    procedure EndEmbedEdit;
    // deletion and z-order
    procedure DelSelectedControls;
    procedure BringSelCtrlsToFront;
    procedure SendSelCtrlsToBack;
    // arrange operations (Part 1.6)
    procedure SetSelCtrlDesignAligment(HorzStyle, VertStyle: TQorDesignAlignmentStyle);
    procedure SetSelCtrlDesignSize(WidthStyle, HeightStyle: TQorDesignSizeStyle;
      AWidth, AHeight: Integer);
    procedure ScaleControls(Percent: Integer; Style: TQorDesignScaleStyle);
    procedure FlipChildren(Mode: TFlipChildrenMode);
    // stage image
    procedure GetStageBitmap(Bitmap: TBitmap);
    procedure GetStagePicture(Picture: TPicture);
    procedure PrintStage;
    { True while the stage proxy drags a rubber band. }
    function IsRubbering: Boolean;
    { True for the stage and for a control owned by the stage: a pointer that
      arrived in a posted message is checked before it is used. }
    function IsKnownControl(AControl: TControl): Boolean;
    { Marks or unmarks one component as designing (csDesigning), remembering
      which marks are ours to take back. }
    procedure SetControlDesigning(AComponent: TComponent; Value: Boolean);
    { The sizer that a press started dragging or resizing, if any; the proxies
      route the moves and the release of that press to it. }
    property DragSizer: TQorSizer read FDragSizer write FDragSizer;
    { Bulk changes of many controls: one align pass of the stage, and the
      sizers' window shapes set once, when the outermost batch ends. A batch
      expecting at least QorFreezeMinOps window changes, run at once (not
      across messages), also freezes the stage's child windows
      (qorwsfreeze.inc) until it ends. }
    procedure BeginBatch(ExpectedOps: Integer = 0);
    procedure EndBatch;
    { Opens a batch that a message posted now to the stage closes: the work
      of messages posted before it (a sizer broadcast) runs inside the batch. }
    procedure HoldBatchUntilPosted;
    { Handles the closing message of HoldBatchUntilPosted. }
    procedure EndPostedBatch(Generation: PtrUInt);
    { Closes every batch still waiting for its message (designing ends). }
    procedure DropPostedBatches;
    { Shapes Sizer's window when the current batch ends. }
    procedure DeferShape(Sizer: TQorSizer);
    procedure CancelDeferredShape(Sizer: TQorSizer);
    property EmbeddedEditing: Boolean read FEmbeddedEditing;
    { How many CtrlMoved reports the manager acted on (for hosts and tests). }
    property CtrlMovedCount: Integer read FCtrlMovedCount;
    property IsDynInsComp: Boolean read GetIsDynInsComp;
    property DesignProxies: TQorDesignWndProcProxyList read FDesignProxies;
    property IsDesigning: Boolean read FIsDesigning write SetIsDesigning;
    property Sizers: TQorSizerList read FSizers;
    property StageProxy: TQorDesignStageProxy read FStageProxy;
    property StageSizer: TQorStageSizer read FStageSizer;
    property SelectedComps: TComponentList read FSelectedComps;
    property ObjInspector: TComponent read FObjInspector write SetObjInspector;
    property ConsoleCenter: TComponent read FConsoleCenter write SetConsoleCenter;
    property Dirty: Boolean read FDirty write SetDirty;
    property OnDynInsComponent: TDynInsComponentEvent read FOnDynInsComponent write FOnDynInsComponent;
    property DisplayGrid: Boolean read GetDisplayGrid write SetDisplayGrid;
    property GridSizeX: Integer read GetGridSizeX write SetGridSizeX;
    property GridSizeY: Integer read GetGridSizeY write SetGridSizeY;
  published
    property Enabled: Boolean read FEnabled write SetEnabled default True;
    property DesignStage: TWinControl read FDesignStage write SetDesignStage;
    property DesignPopupMenu: TPopupMenu read FDesignPopupMenu write SetDesignPopupMenu;
    property OnStageMouseMove: TQorStageMouseMoveEvent read FOnStageMouseMove write FOnStageMouseMove;
    property OnCompsChange: TNotifyEvent read FOnCompsChange write FOnCompsChange;
    property OnControlsMoved: TNotifyEvent read FOnControlsMoved write FOnControlsMoved;
  end;

{ Sends Message to every child control of AParent, synchronously, through
  each child's WindowProc (the VCL's TWinControl.Broadcast). }
procedure BroadcastToChildren(AParent: TWinControl; var Message: TLMessage);


implementation

uses
  // RTL
  SysConst,
  // LCL widgetset (qorwsfreeze.inc)
  {$IFDEF LCLGTK2}glib2, gdk2, gtk2, Gtk2Proc,{$ENDIF}
  // ours
  VhoSysUtils, QorTransUtils, QorDesignConsole, ObjInspect;

{$I qorwsfreeze.inc}

{************ Registered design messages }

const
  RangeSize = QorLastRegisteredMessage - QorFirstRegisteredMessage + 1;

var
  InitCount: Integer = 0;
  RegisteredNames: TStringList = nil;   // upper-case name -> number (Objects), sorted
  UsedNumbers: array[0..RangeSize - 1] of Boolean;

{ FNV-1a over the upper-cased name: stable across modules, processes and runs. }
function NameHash(const UpperName: string): Cardinal;
var
  I: Integer;
begin
  Result := 2166136261;
  for I := 1 to Length(UpperName) do
  begin
    Result := Result xor Ord(UpperName[I]);
    Result := Cardinal(QWord(Result) * 16777619);
  end;
end;

function QorRegisterWindowMessage(const Name: string): Cardinal;
var
  Key: string;
  Idx, Slot, Tries: Integer;
begin
  if RegisteredNames = nil then
  begin
    RegisteredNames := TStringList.Create;
    RegisteredNames.Sorted := True;
    RegisteredNames.CaseSensitive := True;
  end;
  Key := UpperCase(Name);
  if RegisteredNames.Find(Key, Idx) then
    Exit(Cardinal(PtrUInt(RegisteredNames.Objects[Idx])));
  Slot := NameHash(Key) mod RangeSize;
  Tries := 0;
  while UsedNumbers[Slot] do
  begin
    Inc(Tries);
    if Tries >= RangeSize then
      raise ERangeError.CreateFmt('No free registered message number left for "%s"', [Name]);
    Slot := (Slot + 1) mod RangeSize;
  end;
  UsedNumbers[Slot] := True;
  Result := QorFirstRegisteredMessage + Slot;
  RegisteredNames.AddObject(Key, TObject(PtrUInt(Result)));
end;

procedure RegisterQorDesignMessages;
begin
  QORM_SizerMoved := QorRegisterWindowMessage(QorDesignMessageNames[0]);
  QORM_SizerMoveEnd := QorRegisterWindowMessage(QorDesignMessageNames[1]);
  QORM_SizerMoveStart := QorRegisterWindowMessage(QorDesignMessageNames[2]);
  QORM_ControlSelected := QorRegisterWindowMessage(QorDesignMessageNames[3]);
  QORM_ControlSelectedAtPos := QorRegisterWindowMessage(QorDesignMessageNames[4]);
  QORN_SelCtrlChanged := QorRegisterWindowMessage(QorDesignMessageNames[5]);
  QORN_CtrlMoved := QorRegisterWindowMessage(QorDesignMessageNames[6]);
  QORN_SelCtrlMoved := QorRegisterWindowMessage(QorDesignMessageNames[7]);
  QORN_StartInlineEdit := QorRegisterWindowMessage(QorDesignMessageNames[8]);
  QORN_EndInlineEdit := QorRegisterWindowMessage(QorDesignMessageNames[9]);
  QORN_DynCompCreated := QorRegisterWindowMessage(QorDesignMessageNames[10]);
  QORN_DelSelCtrls := QorRegisterWindowMessage(QorDesignMessageNames[11]);
  QORI_SizerBatchEnd := QorRegisterWindowMessage('QOR_SizerBatchEnd');
end;

{************ Free functions }

function PointInRect(const Point: TPoint; const Rect: TRect): Boolean;
begin
  Result := (Point.X >= Rect.Left) and (Point.X <= Rect.Right) and
    (Point.Y >= Rect.Top) and (Point.Y <= Rect.Bottom);
end;

function ControlCanInlineEdit(Control: TControl): Boolean;
begin
  Result := Control is TCustomEdit;
end;

function KeyStateToSelectMode(KeyState: PtrUInt): TControlSelectMode;
begin
  if KeyState and MK_SHIFT <> 0 then
    Result := csmToggle
  else if KeyState and MK_CONTROL <> 0 then
    Result := csmClear
  else
    Result := csmSelect;
end;

function IsOwnSizerMessage(const Message: TLMessage; OwnHandle: THandle): Boolean;
begin
  Result := ((Message.Msg = QORM_SizerMoved) or (Message.Msg = QORM_SizerMoveEnd) or
    (Message.Msg = QORM_SizerMoveStart)) and (THandle(Message.WParam) = OwnHandle);
end;

function MsgPosToPoint(LParam: PtrInt): TPoint;
begin
  Result.X := Word(LParam and $FFFF);
  Result.Y := Word((LParam shr 16) and $FFFF);
end;

function PointToMsgPos(X, Y: Integer): PtrInt;
begin
  Result := PtrInt((Word(Y) shl 16) or Word(X));
end;

procedure BroadcastToChildren(AParent: TWinControl; var Message: TLMessage);
var
  I: Integer;
begin
  if AParent = nil then
    Exit;
  for I := 0 to AParent.ControlCount - 1 do
  begin
    AParent.Controls[I].WindowProc(Message);
    if Message.Result <> 0 then
      Exit;
  end;
end;

type
  TQorComponentAccess = class(TComponent);

{$I qorproxies.inc}
{$I qorsizers.inc}
{$I qorstage.inc}
{$I qormanager.inc}

initialization
  Inc(InitCount);
  if InitCount = 1 then
    RegisterQorDesignMessages;

finalization
  // The numbers stay valid to process end (Part 1.1); only our table goes.
  FreeAndNil(RegisteredNames);

end.
