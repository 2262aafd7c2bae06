{ QorDesign — the design center (Part 5.1).

  The mediator: the design manager (Part 1.5) and the inspector (Part 2.3)
  report their changes here, and the center pushes the shared selection to
  the others and refreshes them; it carries out the clipboard (Part 3.3)
  and deletion commands on the selection and tells whether the design is
  dirty. The component tree view (Part 6.1) takes its steps of the routing
  table. The palette (Part 6.2) and the design popup menu class (Part 5.4)
  are linked when their issues build them; until then the palette's class
  choice is PalleteSelectedClass, and DesignPopupMenu takes any
  TPopupMenu.

  Sections:
    - Design elements
    - TQorDesignCenter
    - Free functions }
unit QorDesignConsole;

{$mode objfpc}{$H+}

interface

uses
  // RTL / FCL
  Classes, SysUtils, Contnrs,
  // LCL
  Controls, Menus,
  // ours
  QorDesigner, ObjInspect, VhoSysUtils, VhoClipbrdUtils, QorCompTreeView;

{************ Design elements }

type
  TDesignElement = (deDesignManager, deCompTreeView, deObjInspector);
  TDesignElements = set of TDesignElement;

{************ TQorDesignCenter }

  { TQorDesignCenter
    The mediator between the design manager and the other elements. Until
    the palette exists (Part 6.2), PalleteSelectedClass holds the class
    chosen for insertion; DynCompCreated drops the choice again. }

  TQorDesignCenter = class(TComponent)
  private
    FDesignManager: TQorDesignManager;
    FObjInspector: TVhoObjInspector;
    FSelectedComps: TComponentList;
    FCompTreeView: TQorCompTreeView;
    FDesignPopupMenu: TPopupMenu;
    FAfterDynInsComponent: TDynInsComponentEvent;
    FClipPasteLeftOffset: Integer;
    FClipPasteTopOffset: Integer;
    FEnabled: Boolean;
    FPersistEnabled: Boolean;
    FOnCompsChange: TNotifyEvent;
    FOnControlsMoved: TNotifyEvent;
    FOnInspectorPropChange: TNotifyEvent;
    FPalleteSelectedClass: TComponentClass;
    FKeepPalleteChoice: Boolean;
    FOnPalleteChange: TNotifyEvent;
    procedure SetDesignManager(Value: TQorDesignManager);
    procedure SetObjInspector(Value: TVhoObjInspector);
    procedure SetCompTreeView(Value: TQorCompTreeView);
    procedure SetDesignPopupMenu(Value: TPopupMenu);
    procedure SetEnabled(Value: Boolean);
    function GetEnabled: Boolean;
    procedure SetPersistEnabled(Value: Boolean);
    procedure SetPalleteSelectedClass(Value: TComponentClass);
    function GetOnStageMouseMove: TQorStageMouseMoveEvent;
    procedure SetOnStageMouseMove(Value: TQorStageMouseMoveEvent);
    procedure ReleaseAllElements;
    procedure PushToInspectorAndManager;
  protected
    procedure Notification(AComponent: TComponent; Operation: TOperation); override;
  public
    constructor Create(AOwner: TComponent); override;
    destructor Destroy; override;
    // change notifications
    procedure NotifyObjInspectorChanged; virtual;
    procedure NotifyDesignManagerChanged; virtual;
    procedure NotifyCompTreeViewChanged; virtual;
    procedure NotifyDesignPopupMenuChanged; virtual;
    procedure Refresh; virtual;
    procedure RefreshAllExcept(Elements: TDesignElements);
    // events from the elements (the routing table)
    procedure DesignerSelCompChanged;
    procedure CompTreeSelCompChanged;
    procedure ConsoleCompListChanged;
    procedure DesignerSelCompMoved;
    procedure InspectorPropChanged;
    procedure CompTreeNodeNameChanged;
    procedure DesignStageCompsModified(AComponent: TComponent; Operation: TOperation);
    procedure DynCompCreated(AComponent: TComponent);
    procedure PalleteSelCompDynCreated;
    function GetPalleteSelectedClass: TComponentClass;
    function GetDesignStage: TWinControl;
    // selection editing
    procedure DeselectComponent;
    procedure DeselectControl;
    procedure DeselectUnsiblingControl(AControl: TControl; ADelComps: Boolean);
    procedure SelectAllControls;
    // commands
    procedure CopySelComps;
    procedure CutSelComps;
    procedure DelSelCtrls;
    procedure PasteComps;
    procedure SetDirty(Value: Boolean);
    function GetDirty: Boolean;
    procedure InstallDesignPopupMenu;
    property SelectedComps: TComponentList read FSelectedComps;
    { The class chosen for insertion (the palette's choice, until the
      palette of Part 6.2 is linked). }
    property PalleteSelectedClass: TComponentClass read FPalleteSelectedClass
      write SetPalleteSelectedClass;
    { Keep the choice after an insertion (the palette's sticky mode). }
    property KeepPalleteChoice: Boolean read FKeepPalleteChoice write FKeepPalleteChoice;
    property Dirty: Boolean read GetDirty write SetDirty;
    property OnPalleteChange: TNotifyEvent read FOnPalleteChange write FOnPalleteChange;
  published
    property Enabled: Boolean read GetEnabled write SetEnabled default True;
    property PersistEnabled: Boolean read FPersistEnabled write SetPersistEnabled default True;
    property ObjInspector: TVhoObjInspector read FObjInspector write SetObjInspector;
    property DesignManager: TQorDesignManager read FDesignManager write SetDesignManager;
    property CompTreeView: TQorCompTreeView read FCompTreeView write SetCompTreeView;
    property DesignPopupMenu: TPopupMenu read FDesignPopupMenu write SetDesignPopupMenu;
    property AfterDynInsComponent: TDynInsComponentEvent read FAfterDynInsComponent
      write FAfterDynInsComponent;
    property ClipPasteLeftOffset: Integer read FClipPasteLeftOffset write FClipPasteLeftOffset
      default 4;
    property ClipPasteTopOffset: Integer read FClipPasteTopOffset write FClipPasteTopOffset
      default 4;
    property OnStageMouseMove: TQorStageMouseMoveEvent read GetOnStageMouseMove
      write SetOnStageMouseMove;
    property OnCompsChange: TNotifyEvent read FOnCompsChange write FOnCompsChange;
    property OnControlsMoved: TNotifyEvent read FOnControlsMoved write FOnControlsMoved;
    property OnInspectorPropChange: TNotifyEvent read FOnInspectorPropChange
      write FOnInspectorPropChange;
  end;

{************ Free functions }

{ True for the design system's own objects, which are never listed,
  selected or shown in the tree (Part 5.1). The popup menu and the actions
  join the list when their classes exist. }
function IsQorDesignCtrl(AComponent: TComponent): Boolean;

implementation

{************ TQorDesignCenter }

constructor TQorDesignCenter.Create(AOwner: TComponent);
begin
  inherited Create(AOwner);
  FSelectedComps := TComponentList.Create(False);
  FClipPasteLeftOffset := 4;
  FClipPasteTopOffset := 4;
  SetEnabled(True);
  FPersistEnabled := True;
end;

destructor TQorDesignCenter.Destroy;
begin
  ReleaseAllElements;
  FreeAndNil(FSelectedComps);
  inherited Destroy;
end;

{ Clears the links without telling the elements: each holds a free
  notification of the center and lets go of it itself. }
procedure TQorDesignCenter.ReleaseAllElements;
begin
  FDesignManager := nil;
  FCompTreeView := nil;
  FObjInspector := nil;
end;

procedure TQorDesignCenter.Notification(AComponent: TComponent; Operation: TOperation);
begin
  inherited Notification(AComponent, Operation);
  if (csDestroying in ComponentState) or (Operation <> opRemove) then
    Exit;
  // The first reference that matches; palette and popup menu stay.
  if AComponent = FDesignManager then
    FDesignManager := nil
  else if AComponent = FCompTreeView then
    FCompTreeView := nil
  else if AComponent = FObjInspector then
    FObjInspector := nil;
end;

{ Linking }

procedure TQorDesignCenter.SetDesignManager(Value: TQorDesignManager);
begin
  if Value = FDesignManager then
    Exit;
  if FDesignManager <> nil then
    FDesignManager.SetConsoleCenter(nil);
  FDesignManager := Value;
  if FDesignManager <> nil then
  begin
    FDesignManager.FreeNotification(Self);
    FDesignManager.SetConsoleCenter(Self);
    if FPersistEnabled then
      FDesignManager.Enabled := FEnabled
    else
      FEnabled := FDesignManager.Enabled;
  end;
  NotifyDesignManagerChanged;
end;

procedure TQorDesignCenter.SetObjInspector(Value: TVhoObjInspector);
begin
  if Value = FObjInspector then
    Exit;
  if FObjInspector <> nil then
    FObjInspector.SetConsoleCenter(nil);
  FObjInspector := Value;
  if FObjInspector <> nil then
  begin
    FObjInspector.FreeNotification(Self);
    FObjInspector.SetConsoleCenter(Self);
  end;
  NotifyObjInspectorChanged;
end;

procedure TQorDesignCenter.SetCompTreeView(Value: TQorCompTreeView);
begin
  if Value = FCompTreeView then
    Exit;
  if FCompTreeView <> nil then
    FCompTreeView.SetConsoleCenter(nil);
  FCompTreeView := Value;
  if FCompTreeView <> nil then
  begin
    FCompTreeView.FreeNotification(Self);
    FCompTreeView.SetConsoleCenter(Self);
  end;
  NotifyCompTreeViewChanged;
end;

procedure TQorDesignCenter.SetDesignPopupMenu(Value: TPopupMenu);
begin
  if Value = FDesignPopupMenu then
    Exit;
  // Part 5.4's TQorDesignCompPopupMenu is told of the center once it
  // exists; any other TPopupMenu is installed without being told.
  FDesignPopupMenu := Value;
  NotifyDesignPopupMenuChanged;
end;

procedure TQorDesignCenter.SetEnabled(Value: Boolean);
begin
  FEnabled := Value;
  if FDesignManager <> nil then
    FDesignManager.Enabled := Value;
end;

function TQorDesignCenter.GetEnabled: Boolean;
begin
  Result := FEnabled;
end;

procedure TQorDesignCenter.SetPersistEnabled(Value: Boolean);
begin
  FPersistEnabled := Value;
end;

procedure TQorDesignCenter.SetPalleteSelectedClass(Value: TComponentClass);
begin
  if Value = FPalleteSelectedClass then
    Exit;
  FPalleteSelectedClass := Value;
  if Assigned(FOnPalleteChange) then
    FOnPalleteChange(Self);
end;

function TQorDesignCenter.GetOnStageMouseMove: TQorStageMouseMoveEvent;
begin
  if FDesignManager <> nil then
    Result := FDesignManager.OnStageMouseMove
  else
    Result := nil;
end;

procedure TQorDesignCenter.SetOnStageMouseMove(Value: TQorStageMouseMoveEvent);
begin
  // No field of its own: without a design manager the event is dropped.
  if FDesignManager <> nil then
    FDesignManager.OnStageMouseMove := Value;
end;

{ Change notifications }

procedure TQorDesignCenter.NotifyDesignManagerChanged;
begin
  if FDesignManager = nil then
    Exit;
  if FObjInspector <> nil then
    FObjInspector.SetActiveComponent(GetDesignStage);
  RefreshAllExcept([deDesignManager]);
end;

procedure TQorDesignCenter.NotifyCompTreeViewChanged;
begin
  if FCompTreeView <> nil then
    RefreshAllExcept([deCompTreeView]);
end;

procedure TQorDesignCenter.NotifyObjInspectorChanged;
begin
  if FObjInspector <> nil then
    RefreshAllExcept([deObjInspector]);
end;

procedure TQorDesignCenter.NotifyDesignPopupMenuChanged;
begin
  InstallDesignPopupMenu;
end;

procedure TQorDesignCenter.RefreshAllExcept(Elements: TDesignElements);
begin
  if not (deDesignManager in Elements) and (FDesignManager <> nil) then
    FDesignManager.Refresh;
  if not (deCompTreeView in Elements) and (FCompTreeView <> nil) then
    FCompTreeView.Refresh;
  if not (deObjInspector in Elements) and (FObjInspector <> nil) then
    FObjInspector.Refresh;
end;

procedure TQorDesignCenter.Refresh;
begin
  if FDesignManager <> nil then
  begin
    FDesignManager.SetSelectedComps(FSelectedComps);
    FDesignManager.Refresh;
  end;
  if FCompTreeView <> nil then
  begin
    FCompTreeView.SetSelectedComps(FSelectedComps);
    FCompTreeView.Refresh;
  end;
  if FObjInspector <> nil then
  begin
    FObjInspector.SetActiveComponents(FSelectedComps);
    FObjInspector.Refresh;
  end;
end;

function TQorDesignCenter.GetDesignStage: TWinControl;
begin
  if FDesignManager <> nil then
    Result := FDesignManager.DesignStage
  else
    Result := nil;
end;

{ Events from the elements }

procedure TQorDesignCenter.DesignerSelCompChanged;
begin
  if FDesignManager <> nil then
    FSelectedComps.Assign(FDesignManager.SelectedComps, laCopy);
  if FObjInspector <> nil then
    FObjInspector.SetActiveComponents(FSelectedComps);
  if FCompTreeView <> nil then
    FCompTreeView.SetSelectedComps(FSelectedComps);
  if Assigned(FOnCompsChange) then
    FOnCompsChange(Self);
end;

procedure TQorDesignCenter.PushToInspectorAndManager;
begin
  if FObjInspector <> nil then
    FObjInspector.SetActiveComponents(FSelectedComps);
  if FDesignManager <> nil then
    FDesignManager.SetSelectedComps(FSelectedComps);
end;

procedure TQorDesignCenter.CompTreeSelCompChanged;
begin
  if FCompTreeView <> nil then
    FSelectedComps.Assign(FCompTreeView.SelectedComps, laCopy);
  PushToInspectorAndManager;
end;

procedure TQorDesignCenter.ConsoleCompListChanged;
begin
  if FCompTreeView <> nil then
    FCompTreeView.SetSelectedComps(FSelectedComps);
  PushToInspectorAndManager;
end;

procedure TQorDesignCenter.DesignerSelCompMoved;
begin
  if FObjInspector <> nil then
    FObjInspector.RefreshValues;
  if Assigned(FOnControlsMoved) then
    FOnControlsMoved(Self);
end;

procedure TQorDesignCenter.InspectorPropChanged;
begin
  if FDesignManager <> nil then
    FDesignManager.RefreshSizers;
  if Assigned(FOnInspectorPropChange) then
    FOnInspectorPropChange(Self);
end;

procedure TQorDesignCenter.CompTreeNodeNameChanged;
begin
  if FObjInspector <> nil then
    FObjInspector.Refresh;
end;

procedure TQorDesignCenter.DesignStageCompsModified(AComponent: TComponent; Operation: TOperation);
begin
  // Only with a tree view linked and on insertion: the new component
  // becomes the sole selection. A removal does nothing here.
  if (FCompTreeView = nil) or (Operation <> opInsert) then
    Exit;
  FCompTreeView.Refresh;
  FSelectedComps.Clear;
  FSelectedComps.Add(AComponent);
  FCompTreeView.SetSelectedComps(FSelectedComps);
  CompTreeSelCompChanged;
end;

procedure TQorDesignCenter.DynCompCreated(AComponent: TComponent);
begin
  PalleteSelCompDynCreated;
  if Assigned(FAfterDynInsComponent) then
    FAfterDynInsComponent(Self, AComponent);
end;

procedure TQorDesignCenter.PalleteSelCompDynCreated;
begin
  if not FKeepPalleteChoice then
    PalleteSelectedClass := nil;
end;

function TQorDesignCenter.GetPalleteSelectedClass: TComponentClass;
begin
  Result := FPalleteSelectedClass;
end;

{ Selection editing }

procedure TQorDesignCenter.DeselectComponent;
var
  I: Integer;
begin
  for I := FSelectedComps.Count - 1 downto 0 do
    if not (FSelectedComps[I] is TControl) then
      FSelectedComps.Delete(I);
  ConsoleCompListChanged;
end;

procedure TQorDesignCenter.DeselectControl;
var
  I: Integer;
begin
  for I := FSelectedComps.Count - 1 downto 0 do
    if FSelectedComps[I] is TControl then
      FSelectedComps.Delete(I);
  ConsoleCompListChanged;
end;

procedure TQorDesignCenter.DeselectUnsiblingControl(AControl: TControl; ADelComps: Boolean);
var
  I: Integer;
  C: TComponent;
begin
  for I := FSelectedComps.Count - 1 downto 0 do
  begin
    C := FSelectedComps[I];
    if C is TControl then
    begin
      if (AControl <> nil) and (TControl(C).Parent <> AControl.Parent) then
        FSelectedComps.Delete(I);
    end
    else if ADelComps then
      FSelectedComps.Delete(I);
  end;
  ConsoleCompListChanged;
end;

procedure TQorDesignCenter.SelectAllControls;
begin
  if FDesignManager <> nil then
    FDesignManager.SelectAllControls;
end;

{ Commands }

procedure TQorDesignCenter.CopySelComps;
begin
  VhoClipboard.SetComponents(FSelectedComps, False);
end;

procedure TQorDesignCenter.CutSelComps;
begin
  CopySelComps;
  DelSelCtrls;
end;

procedure TQorDesignCenter.DelSelCtrls;
var
  I: Integer;
  C: TComponent;
  Stage: TWinControl;
begin
  Stage := GetDesignStage;
  if FDesignManager <> nil then
    FDesignManager.BeginBatch(FSelectedComps.Count);
  try
    for I := FSelectedComps.Count - 1 downto 0 do
    begin
      // A container freed before took its selected children out of the
      // list (free notifications).
      if I >= FSelectedComps.Count then
        Continue;
      C := FSelectedComps[I];
      if C <> Stage then
      begin
        FSelectedComps.Delete(I);
        FreeComponentAndChildren(C);
      end;
    end;
  finally
    if FDesignManager <> nil then
      FDesignManager.EndBatch;
  end;
  if (Stage <> nil) and (FSelectedComps.Count = 0) then
    FSelectedComps.Add(Stage);
  ConsoleCompListChanged;
  RefreshAllExcept([deObjInspector]);
end;

procedure TQorDesignCenter.PasteComps;
var
  Renaming: Boolean;
  Stage: TWinControl;
  Parent: TWinControl;
  C: TControl;
  I: Integer;
begin
  Stage := GetDesignStage;
  Parent := nil;
  if ControlCountInCompList(FSelectedComps) >= 2 then
    Parent := Stage
  else
  begin
    C := nil;
    for I := 0 to FSelectedComps.Count - 1 do
      if FSelectedComps[I] is TControl then
      begin
        C := TControl(FSelectedComps[I]);
        Break;
      end;
    // A single panel receives the paste itself, a button passes it to its
    // container; no control at all: the stage (left to the implementer).
    while (C <> nil) and (Parent = nil) do
    begin
      if (C = Stage) or ((C is TWinControl) and (csAcceptsControls in C.ControlStyle)) then
        Parent := TWinControl(C)
      else
        C := C.Parent;
    end;
    if Parent = nil then
      Parent := Stage;
  end;
  Renaming := VhoClipboard.RenameDuplicates;
  VhoClipboard.RenameDuplicates := True;
  try
    VhoClipboard.GetComponents(Stage, Parent, FClipPasteLeftOffset, FClipPasteTopOffset);
  finally
    VhoClipboard.RenameDuplicates := Renaming;
  end;
end;

procedure TQorDesignCenter.SetDirty(Value: Boolean);
begin
  if (FDesignManager <> nil) and (FDesignManager.Dirty <> Value) then
    FDesignManager.Dirty := Value;
  if FObjInspector <> nil then
    FObjInspector.Modified := Value;
  if FCompTreeView <> nil then
    FCompTreeView.Dirty := Value;
end;

function TQorDesignCenter.GetDirty: Boolean;
begin
  Result := ((FDesignManager <> nil) and FDesignManager.Dirty) or
    ((FObjInspector <> nil) and FObjInspector.Modified) or
    ((FCompTreeView <> nil) and FCompTreeView.Dirty);
end;

procedure TQorDesignCenter.InstallDesignPopupMenu;
begin
  if FCompTreeView <> nil then
    FCompTreeView.PopupMenu := FDesignPopupMenu;
  if FDesignManager <> nil then
    FDesignManager.DesignPopupMenu := FDesignPopupMenu;
end;

{************ Free functions }

function IsQorDesignCtrl(AComponent: TComponent): Boolean;
begin
  Result := (AComponent is TQorSizer) or (AComponent is TQorRubberBand) or
    (AComponent is TQorDesignManager) or (AComponent is TQorDesignCenter) or
    (AComponent is TQorCompTreeView);
end;

end.
