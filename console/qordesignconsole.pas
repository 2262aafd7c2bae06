{ QorDesign — the design center.

  Part 5.1, so far as the design manager (Part 1.5) and the inspector
  (Part 2.3) call it: the shared selection list, the inspector link, the
  selection, move and property-change notifications with their events,
  the palette class choice for insertion, the insertion hand-over, deletion
  of the selection and the dirty flag. The links to the inspector, the tree
  view, the palette and the popup menu, the clipboard commands and the
  refresh routing complete it in the design-center issue.

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
  QorDesigner, ObjInspect;

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
    FOnInspectorPropChange: TNotifyEvent;
    FSelectedComps: TComponentList;
    FAfterDynInsComponent: TDynInsComponentEvent;
    FEnabled: Boolean;
    FPersistEnabled: Boolean;
    FDirty: Boolean;
    FPalleteSelectedClass: TComponentClass;
    FKeepPalleteChoice: Boolean;
    FOnCompsChange: TNotifyEvent;
    FOnControlsMoved: TNotifyEvent;
    FOnPalleteChange: TNotifyEvent;
    procedure SetDesignManager(Value: TQorDesignManager);
    procedure SetObjInspector(Value: TVhoObjInspector);
    procedure SetEnabled(Value: Boolean);
    procedure SetPalleteSelectedClass(Value: TComponentClass);
  protected
    procedure Notification(AComponent: TComponent; Operation: TOperation); override;
  public
    constructor Create(AOwner: TComponent); override;
    destructor Destroy; override;
    // calls from the design manager (Part 1.5)
    procedure DesignerSelCompChanged;
    procedure DesignerSelCompMoved;
    // calls from the inspector (Part 2.3)
    procedure InspectorPropChanged;
    procedure NotifyObjInspectorChanged; virtual;
    procedure DesignStageCompsModified(AComponent: TComponent; Operation: TOperation);
    procedure DynCompCreated(AComponent: TComponent);
    procedure PalleteSelCompDynCreated;
    procedure DelSelCtrls;
    function GetPalleteSelectedClass: TComponentClass;
    procedure SetDirty(Value: Boolean);
    function GetDirty: Boolean;
    property SelectedComps: TComponentList read FSelectedComps;
    { The class chosen for insertion (the palette's choice). }
    property PalleteSelectedClass: TComponentClass read FPalleteSelectedClass
      write SetPalleteSelectedClass;
    { Keep the choice after an insertion (the palette's sticky mode). }
    property KeepPalleteChoice: Boolean read FKeepPalleteChoice write FKeepPalleteChoice;
    property Dirty: Boolean read GetDirty write SetDirty;
    property OnPalleteChange: TNotifyEvent read FOnPalleteChange write FOnPalleteChange;
  published
    property Enabled: Boolean read FEnabled write SetEnabled default True;
    property PersistEnabled: Boolean read FPersistEnabled write FPersistEnabled default True;
    property ObjInspector: TVhoObjInspector read FObjInspector write SetObjInspector;
    property DesignManager: TQorDesignManager read FDesignManager write SetDesignManager;
    property AfterDynInsComponent: TDynInsComponentEvent read FAfterDynInsComponent
      write FAfterDynInsComponent;
    property OnCompsChange: TNotifyEvent read FOnCompsChange write FOnCompsChange;
    property OnControlsMoved: TNotifyEvent read FOnControlsMoved write FOnControlsMoved;
    property OnInspectorPropChange: TNotifyEvent read FOnInspectorPropChange
      write FOnInspectorPropChange;
  end;

{************ Free functions }

{ True for the design system's own objects, which are never listed,
  selected or shown in the tree (Part 5.1). The popup menu, the actions and
  the tree view join the list when their classes exist. }
function IsQorDesignCtrl(AComponent: TComponent): Boolean;

implementation

{************ TQorDesignCenter }

constructor TQorDesignCenter.Create(AOwner: TComponent);
begin
  inherited Create(AOwner);
  FSelectedComps := TComponentList.Create(False);
  FEnabled := True;
  FPersistEnabled := True;
end;

destructor TQorDesignCenter.Destroy;
begin
  DesignManager := nil;
  ObjInspector := nil;
  FreeAndNil(FSelectedComps);
  inherited Destroy;
end;

procedure TQorDesignCenter.Notification(AComponent: TComponent; Operation: TOperation);
begin
  inherited Notification(AComponent, Operation);
  if (Operation = opRemove) and (AComponent = FDesignManager) then
    FDesignManager := nil;
  if (Operation = opRemove) and (AComponent = FObjInspector) then
    FObjInspector := nil;
end;

procedure TQorDesignCenter.SetDesignManager(Value: TQorDesignManager);
begin
  if Value = FDesignManager then
    Exit;
  if FDesignManager <> nil then
  begin
    FDesignManager.RemoveFreeNotification(Self);
    FDesignManager.SetConsoleCenter(nil);
  end;
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
end;

procedure TQorDesignCenter.SetEnabled(Value: Boolean);
begin
  FEnabled := Value;
  if FDesignManager <> nil then
    FDesignManager.Enabled := Value;
end;

procedure TQorDesignCenter.SetPalleteSelectedClass(Value: TComponentClass);
begin
  if Value = FPalleteSelectedClass then
    Exit;
  FPalleteSelectedClass := Value;
  if Assigned(FOnPalleteChange) then
    FOnPalleteChange(Self);
end;

procedure TQorDesignCenter.DesignerSelCompChanged;
begin
  if FDesignManager <> nil then
    FSelectedComps.Assign(FDesignManager.SelectedComps, laCopy);
  if FObjInspector <> nil then
    FObjInspector.SetActiveComponents(FSelectedComps);
  if Assigned(FOnCompsChange) then
    FOnCompsChange(Self);
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

procedure TQorDesignCenter.SetObjInspector(Value: TVhoObjInspector);
begin
  if Value = FObjInspector then
    Exit;
  if FObjInspector <> nil then
  begin
    FObjInspector.SetConsoleCenter(nil);
    FObjInspector.RemoveFreeNotification(Self);
  end;
  FObjInspector := Value;
  if FObjInspector <> nil then
  begin
    FObjInspector.FreeNotification(Self);
    FObjInspector.SetConsoleCenter(Self);
  end;
  NotifyObjInspectorChanged;
end;

procedure TQorDesignCenter.NotifyObjInspectorChanged;
begin
  // RefreshAllExcept([deObjInspector]) of Part 5.1 once the tree view
  // exists: the design manager's refresh is all there is to run.
  if (FObjInspector <> nil) and (FDesignManager <> nil) then
    FDesignManager.RefreshSizers;
end;

procedure TQorDesignCenter.DesignStageCompsModified(AComponent: TComponent; Operation: TOperation);
begin
  // The tree view (Part 6.1) is refreshed here once it exists.
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

procedure TQorDesignCenter.DelSelCtrls;
begin
  // Part 5.1 asks before deleting; until the dialogs exist the selection
  // is deleted at once, as the manager does without a center.
  if FDesignManager = nil then
    Exit;
  FDesignManager.Sizers.RemoveAllSizerAndCtrls;
  // The stage is what remains selected.
  FDesignManager.SelectControl(FDesignManager.DesignStage, Point(-1, -1), csmSelect, True, False);
end;

function TQorDesignCenter.GetPalleteSelectedClass: TComponentClass;
begin
  Result := FPalleteSelectedClass;
end;

procedure TQorDesignCenter.SetDirty(Value: Boolean);
begin
  FDirty := Value;
  if (FDesignManager <> nil) and (FDesignManager.Dirty <> Value) then
    FDesignManager.Dirty := Value;
end;

function TQorDesignCenter.GetDirty: Boolean;
begin
  Result := FDirty or ((FDesignManager <> nil) and FDesignManager.Dirty);
end;

{************ Free functions }

function IsQorDesignCtrl(AComponent: TComponent): Boolean;
begin
  Result := (AComponent is TQorSizer) or (AComponent is TQorRubberBand) or
    (AComponent is TQorDesignManager) or (AComponent is TQorDesignCenter);
end;

end.
