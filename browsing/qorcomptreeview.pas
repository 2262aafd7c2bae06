{ QorDesign — the component tree view (Part 6.1), as far as the design
  center (Part 5.1) routes through it.

  The stage at the root, its non-visual components and its controls below
  it, the controls nested by parent; selecting nodes selects the components
  everywhere through the center, and selections made elsewhere come back
  through SetSelectedComps. Built here: the tree, its filter, the selection
  both ways, the right button that never changes the selection, moving the
  selection up and down. Not yet: the class list and its images (Part 6.2),
  renaming by label and the attribute editors of a double click (Part 5.4);
  until then every component is known (no class list) and node labels are
  not editable.

  The center is held as a TComponent (as the design manager and the
  inspector hold it): its unit uses this one for IsQorDesignCtrl and the
  CompTreeView link, so this unit reaches it only from its implementation. }
unit QorCompTreeView;

{$mode objfpc}{$H+}

interface

uses
  // RTL / FCL
  Classes, SysUtils, Contnrs, Generics.Collections,
  // LCL
  LMessages, Controls, ComCtrls, Forms, ImgList;

type
  TCompFilterStyle = (cfComponent, cfControl);
  TCompFilterStyles = set of TCompFilterStyle;

  { TQorCompTreeView }

  TQorCompTreeView = class(TTreeView)
  private
    FUpdating: Boolean;
    FConsoleCenter: TComponent;
    FRootControl: TWinControl;
    FSelectedComps: TComponentList;
    FImageList: TImageList;
    FCompFilterStyles: TCompFilterStyles;
    FDirty: Boolean;
    FShowKnownCompsOnly: Boolean;
    // Each listed component's node: FindComponentNode answers at once on
    // a stage of thousands (the Part's walk is linear per component).
    FNodeOf: specialize TDictionary<TComponent, TTreeNode>;
    // The tree's selection as ReSelectComps left it, in selection order.
    FReselected: TFPList;
    function SelectionIsReselected: Boolean;
    procedure StoreRootControl(Value: TWinControl);
    procedure SetRootControl(Value: TWinControl);
    procedure SetCompFilterStyles(Value: TCompFilterStyles);
    procedure FillSelectedComps;
    function AddTreeNodeChild(ParentNode: TTreeNode; AComponent: TComponent): TTreeNode;
    procedure AddControlsOf(ParentNode: TTreeNode; AParent: TWinControl);
    procedure MoveSelCompIndexesBy(Shift: Integer);
    procedure WMRButtonDown(var Message: TLMRButtonDown); message LM_RBUTTONDOWN;
    procedure WMRButtonUp(var Message: TLMRButtonUp); message LM_RBUTTONUP;
  protected
    procedure Change(Node: TTreeNode); override;
    procedure Notification(AComponent: TComponent; Operation: TOperation); override;
  public
    constructor Create(AOwner: TComponent); override;
    destructor Destroy; override;
    procedure SetConsoleCenter(Center: TComponent);
    { Part 6.1's Refresh: the root from the center, the tree again, the
      selection again. TControl's Refresh (a repaint) is not virtual. }
    procedure Refresh; reintroduce;
    procedure SetSelectedComps(List: TComponentList);
    function GetClassIndex(AClass: TClass): Integer;
    function CompsIsKnown(AComponent: TComponent): Boolean;
    function CheckIfOutputThisComp(AComponent: TComponent): Boolean;
    function FindComponentNode(AComponent: TComponent): TTreeNode;
    procedure GenerateTree;
    procedure ReSelectComps;
    procedure MoveSelCompIndexesUp(Delta: Integer);
    procedure MoveSelCompIndexesDown(Delta: Integer);
    property ConsoleCenter: TComponent read FConsoleCenter;
    property SelectedComps: TComponentList read FSelectedComps;
    property Dirty: Boolean read FDirty write FDirty;
  published
    property RootControl: TWinControl read FRootControl write SetRootControl;
    property CompFilterStyles: TCompFilterStyles read FCompFilterStyles
      write SetCompFilterStyles default [cfComponent, cfControl];
    property ShowKnownCompsOnly: Boolean read FShowKnownCompsOnly
      write FShowKnownCompsOnly default True;
  end;

implementation

uses
  // ours
  QorTransUtils, QorDesignConsole;

const
  // The reserved images of Part 6.1's image list; the class images of Part
  // 6.2 follow them.
  ReservedImages = 4;
  RootImage = 3;       // "GlyphDefForm"

constructor TQorCompTreeView.Create(AOwner: TComponent);
begin
  inherited Create(AOwner);
  FSelectedComps := TComponentList.Create(False);
  FNodeOf := specialize TDictionary<TComponent, TTreeNode>.Create;
  FReselected := TFPList.Create;
  FImageList := TImageList.Create(nil);
  FImageList.Height := 16;
  FImageList.Width := 16;
  Images := FImageList;
  MultiSelect := True;
  MultiSelectStyle := [msControlSelect, msShiftSelect, msVisibleOnly];
  HideSelection := False;
  ReadOnly := True;
  FCompFilterStyles := [cfComponent, cfControl];
  FShowKnownCompsOnly := True;
end;

destructor TQorCompTreeView.Destroy;
begin
  FUpdating := True;
  Images := nil;
  FreeAndNil(FImageList);
  FreeAndNil(FSelectedComps);
  inherited Destroy;
  FreeAndNil(FNodeOf);
  FreeAndNil(FReselected);
end;

procedure TQorCompTreeView.Notification(AComponent: TComponent; Operation: TOperation);
begin
  inherited Notification(AComponent, Operation);
  if Operation <> opRemove then
    Exit;
  if AComponent = FConsoleCenter then
    FConsoleCenter := nil;
  if AComponent = FRootControl then
  begin
    FRootControl := nil;
    if not (csDestroying in ComponentState) then
      GenerateTree;
  end;
end;

procedure TQorCompTreeView.SetConsoleCenter(Center: TComponent);
begin
  if Center = FConsoleCenter then
    Exit;
  if FConsoleCenter <> nil then
    FConsoleCenter.RemoveFreeNotification(Self);
  FConsoleCenter := Center;
  if FConsoleCenter = nil then
    Exit;
  FConsoleCenter.FreeNotification(Self);
  if TQorDesignCenter(FConsoleCenter).DesignManager <> nil then
  begin
    // Generated whether the root changed or not (the setter's rule differs).
    StoreRootControl(TQorDesignCenter(FConsoleCenter).GetDesignStage);
    GenerateTree;
  end;
  PopupMenu := TQorDesignCenter(FConsoleCenter).DesignPopupMenu;
end;

{ The root with a free notification on it. }
procedure TQorCompTreeView.StoreRootControl(Value: TWinControl);
begin
  if FRootControl <> nil then
    FRootControl.RemoveFreeNotification(Self);
  FRootControl := Value;
  if FRootControl <> nil then
    FRootControl.FreeNotification(Self);
end;

procedure TQorCompTreeView.SetRootControl(Value: TWinControl);
begin
  if Value = FRootControl then
    Exit;
  StoreRootControl(Value);
  GenerateTree;
end;

procedure TQorCompTreeView.SetCompFilterStyles(Value: TCompFilterStyles);
begin
  if Value = FCompFilterStyles then
    Exit;
  FCompFilterStyles := Value;
  Refresh;
end;

procedure TQorCompTreeView.Refresh;
begin
  if FConsoleCenter <> nil then
    SetRootControl(TQorDesignCenter(FConsoleCenter).GetDesignStage);
  GenerateTree;
  ReSelectComps;
end;

procedure TQorCompTreeView.SetSelectedComps(List: TComponentList);
begin
  if List <> FSelectedComps then
    FSelectedComps.Assign(List, laCopy);
  ReSelectComps;
end;

{ No class list yet (Part 6.2): no class has an image of its own. }
function TQorCompTreeView.GetClassIndex(AClass: TClass): Integer;
begin
  Result := -1;
end;

{ Without a class list every component is known (Part 6.1). }
function TQorCompTreeView.CompsIsKnown(AComponent: TComponent): Boolean;
begin
  Result := True;
end;

function TQorCompTreeView.CheckIfOutputThisComp(AComponent: TComponent): Boolean;
begin
  if IsQorDesignCtrl(AComponent) then
    Exit(False);
  if AComponent is TControl then
    Result := cfControl in FCompFilterStyles
  else
    Result := cfComponent in FCompFilterStyles;
  if Result and FShowKnownCompsOnly then
    Result := CompsIsKnown(AComponent);
end;

function TQorCompTreeView.FindComponentNode(AComponent: TComponent): TTreeNode;
begin
  if (AComponent = nil) or not FNodeOf.TryGetValue(AComponent, Result) then
    Result := nil;
end;

function TQorCompTreeView.AddTreeNodeChild(ParentNode: TTreeNode;
  AComponent: TComponent): TTreeNode;
var
  S: string;
  Image: Integer;
begin
  S := GetCompTransedName(AComponent, FRootControl);
  if Trim(S) = '' then
    S := '[NoName]';
  Result := Items.AddChildObject(ParentNode, S, AComponent);
  // A class the class list does not know gets "GlyphDefForm" (index 3),
  // as the Part intends.
  Image := GetClassIndex(AComponent.ClassType) + ReservedImages;
  if Image <= 0 then
    Image := -1;
  Result.ImageIndex := Image;
  Result.SelectedIndex := Image;
  if not FNodeOf.ContainsKey(AComponent) then
    FNodeOf.Add(AComponent, Result);
end;

{ Step 4 of GenerateTree: the root's components in their order, those whose
  parent is AParent, each followed at once by its own children. Each
  control is looked at under its own parent only (one pass per container
  over the root's controls would be quadratic on a crowded stage); the
  order is the Part's: siblings in the owner's component order, depth
  first. }
procedure TQorCompTreeView.AddControlsOf(ParentNode: TTreeNode; AParent: TWinControl);
var
  Children: specialize TObjectDictionary<TWinControl, TFPList>;
  Root: TWinControl;

  procedure AddUnder(Node: TTreeNode; P: TWinControl);
  var
    L: TFPList;
    I: Integer;
    C: TControl;
    ChildNode: TTreeNode;
  begin
    if not Children.TryGetValue(P, L) then
      Exit;
    for I := 0 to L.Count - 1 do
    begin
      C := TControl(L[I]);
      ChildNode := AddTreeNodeChild(Node, C);
      if C is TWinControl then
        AddUnder(ChildNode, TWinControl(C));
    end;
  end;

var
  I: Integer;
  C: TComponent;
  L: TFPList;
begin
  Root := FRootControl;
  Children := specialize TObjectDictionary<TWinControl, TFPList>.Create([doOwnsValues]);
  try
    for I := 0 to Root.ComponentCount - 1 do
    begin
      C := Root.Components[I];
      if not (C is TControl) or (TControl(C).Parent = nil) or
        not CheckIfOutputThisComp(C) then
        Continue;
      if not Children.TryGetValue(TControl(C).Parent, L) then
      begin
        L := TFPList.Create;
        Children.Add(TControl(C).Parent, L);
      end;
      L.Add(C);
    end;
    AddUnder(ParentNode, AParent);
  finally
    Children.Free;
  end;
end;

procedure TQorCompTreeView.GenerateTree;
var
  RootNode: TTreeNode;
  I: Integer;
  C: TComponent;
begin
  FUpdating := True;
  Items.BeginUpdate;
  try
    Items.Clear;
    FNodeOf.Clear;
    if FRootControl = nil then
      Exit;
    RootNode := Items.AddObject(nil, GetCompTransedName(FRootControl, FRootControl), FRootControl);
    if Trim(RootNode.Text) = '' then
      RootNode.Text := '[NoName]';
    RootNode.ImageIndex := RootImage;
    RootNode.SelectedIndex := RootImage;
    FNodeOf.Add(FRootControl, RootNode);
    if cfComponent in FCompFilterStyles then
      for I := 0 to FRootControl.ComponentCount - 1 do
      begin
        C := FRootControl.Components[I];
        if CheckIfOutputThisComp(C) and not (C is TControl) then
          AddTreeNodeChild(RootNode, C);
      end;
    if cfControl in FCompFilterStyles then
      AddControlsOf(RootNode, FRootControl);
    RootNode.Expand(False);
  finally
    Items.EndUpdate;
    // No node is selected now, and the LCL's late report of that is ours.
    FReselected.Clear;
    FUpdating := False;
  end;
end;

procedure TQorCompTreeView.ReSelectComps;
var
  I: Integer;
  Node: TTreeNode;
  First: Boolean;
begin
  FUpdating := True;
  try
    ClearSelection;
    First := True;
    for I := 0 to FSelectedComps.Count - 1 do
    begin
      Node := FindComponentNode(FSelectedComps[I]);
      if Node = nil then
        Continue;
      if First then
        Select(Node)
      else
        Select(Node, [ssCtrl]);
      First := False;
    end;
    FReselected.Clear;
    for I := 0 to Integer(SelectionCount) - 1 do
      FReselected.Add(Selections[I].Data);
  finally
    FUpdating := False;
  end;
end;

function TQorCompTreeView.SelectionIsReselected: Boolean;
var
  I: Integer;
begin
  Result := Integer(SelectionCount) = FReselected.Count;
  if Result then
    for I := 0 to FReselected.Count - 1 do
      if Selections[I].Data <> FReselected[I] then
        Exit(False);
end;

procedure TQorCompTreeView.FillSelectedComps;
var
  I: Integer;
begin
  FSelectedComps.Clear;
  for I := 0 to Integer(SelectionCount) - 1 do
    if TObject(Selections[I].Data) is TComponent then
      FSelectedComps.Add(TComponent(Selections[I].Data));
end;

{ The LCL's tree reports a selection change from a timer, after the change:
  the selection ReSelectComps made arrives here once it has returned, and
  is not the user's. Only a selection other than that one is reported. }
procedure TQorCompTreeView.Change(Node: TTreeNode);
begin
  inherited Change(Node);
  if FUpdating or SelectionIsReselected then
    Exit;
  FReselected.Clear;
  FillSelectedComps;
  if FConsoleCenter <> nil then
    TQorDesignCenter(FConsoleCenter).CompTreeSelCompChanged;
end;

{ Right button: the plain control's handling only, the mouse events; the
  popup menu comes with the context-menu message as for any control. The
  tree's own MouseDown/MouseUp are not run, so a right click never changes
  the tree's selection. }
procedure TQorCompTreeView.WMRButtonDown(var Message: TLMRButtonDown);
begin
  if Assigned(OnMouseDown) then
    OnMouseDown(Self, mbRight, KeysToShiftState(Message.Keys), Message.XPos, Message.YPos);
end;

procedure TQorCompTreeView.WMRButtonUp(var Message: TLMRButtonUp);
begin
  if Assigned(OnMouseUp) then
    OnMouseUp(Self, mbRight, KeysToShiftState(Message.Keys), Message.XPos, Message.YPos);
end;

procedure TQorCompTreeView.MoveSelCompIndexesUp(Delta: Integer);
begin
  MoveSelCompIndexesBy(-Delta);
end;

procedure TQorCompTreeView.MoveSelCompIndexesDown(Delta: Integer);
begin
  MoveSelCompIndexesBy(Delta);
end;

{ Both moves of the Part: the component index by Shift in the owner (which
  keeps it in range), the place among the parent's controls by Shift too,
  except that a move up never asks for a place before the first. }
procedure TQorCompTreeView.MoveSelCompIndexesBy(Shift: Integer);
var
  I, Position: Integer;
  C: TComponent;
begin
  for I := 0 to FSelectedComps.Count - 1 do
  begin
    C := FSelectedComps[I];
    if C.Owner <> nil then
      C.ComponentIndex := C.ComponentIndex + Shift;
    if (FRootControl is TCustomForm) and (C is TControl) and (TControl(C).Parent <> nil) then
    begin
      Position := TControl(C).Parent.GetControlIndex(TControl(C));
      if (Position >= 0) and ((Shift >= 0) or (Position + Shift >= 0)) then
        TControl(C).Parent.SetControlIndex(TControl(C), Position + Shift);
    end;
  end;
  FDirty := True;
  if FConsoleCenter <> nil then
    TQorDesignCenter(FConsoleCenter).SetDirty(True);
  Refresh;
end;

end.
