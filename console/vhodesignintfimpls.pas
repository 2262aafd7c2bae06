{ QorDesign — the designer object that Lazarus' property editors and
  component editors talk to at run time (Part 5.2, TVhoDesigner).

  PLATFORM.md: Delphi's IDesigner is, for component editors, Lazarus'
  TComponentEditorDesigner (a TIDesigner), and for property editors a
  TPropertyEditorHook that the designer owns. Methods with a Lazarus
  counterpart keep the Part's behaviour; the Part's methods Lazarus does
  not have stay as plain public methods (for this system's own callers);
  Lazarus' abstract methods the Part does not name answer as its "does
  nothing" entries do.

  Mapping (Part -> here):
    Activate, ChainCall, ModuleFileNames, Revert, Resurrect,
      SelectItemName, GetProjectModules, GetMethods, ShowMethod,
      RenameMethod, SetSelections, MakeComponentLinkable  dropped
      (no caller in Lazarus' editors; nothing to do)
    Modified                 Modified (the inherited change stamp only)
    CreateMethod, GetMethodName, MethodExists, MethodFromAncestor,
      GetPrivateDirectory, GetBaseRegKey, GetIDEOptions,
      GetObjectName, GetObjectNames, CreateCurrentComponent,
      FindRootAncestor, GetActiveClassGroup, ModalEdit  dropped
    GetPathAndBaseExeName    public, Application.ExeName
    GetSelections(List)      public; also the hook's GetSelection
    SelectComponent          SelectOnlyThisComponent (TIDesigner)
    GetComponent, GetObject  public; also the hook's GetComponent
    GetComponentName         public; also the hook's GetComponentName
    GetComponentNames        does nothing (the hook has no handler)
    CreateComponent          public; AddComponent runs it
    IsComponentLinkable      public, true
    IsComponentHidden        public
    GetIsDormant, GetAncestorDesigner   properties IsDormant, AncestorDesigner
    IsSourceReadOnly         public, false
    GetScrollRanges          public, a zero point
    Edit(Component)          Edit; InvokeComponentEditor runs it
    CopySelection, CutSelection, CanPaste, PasteSelection,
      DeleteSelection, ClearSelection   the Lazarus methods of those names
    NoSelection              public
    GetRootClassName, GetRoot   public
    UniqueName               UniqueName (TIDesigner); CreateUniqueComponentName
                             takes a class name and drops its leading T
    GetShiftState            GetShiftState (TIDesigner), the empty set
  Lazarus only: IsDesignMsg (false), UTF8KeyPress, Notification, PaintGrid,
  ValidateRename, PrepareFreeDesigner, DrawDesignerItems (nothing),
  CanCopy (a selection exists), CopySelectionToStream (the clipboard's
  records), InsertFromStream, ChangeClass, Undo, Redo, AddUndoAction,
  CanUndo, CanRedo, IsUndoLocked (false), AddComponentCheckParent (leaves
  the parent), ShowNonVisualComponents (stored). }
unit VhoDesignIntfImpls;

{$mode objfpc}{$H+}

interface

uses
  // RTL / FCL
  Classes, SysUtils, Types,
  // LCL
  LCLType, LMessages, Controls, Forms,
  // IDEIntf
  PropEditUtils, PropEdits, ComponentEditors, ComponentReg,
  // ours
  QorDesigner;

type

  { TVhoDesigner }

  TVhoDesigner = class(TComponentEditorDesigner)
  private
    FDesignStage: TComponent;
    FDesignManager: TQorDesignManager;
    FHook: TPropertyEditorHook;
    FShowNonVisual: Boolean;
    procedure HookGetSelection(const ASelection: TPersistentSelectionList);
    function HookGetComponent(const ComponentPath: string): TComponent;
    function HookGetComponentName(AComponent: TComponent): string;
    function GetIsDormant: Boolean;
    function GetAncestorDesigner: TVhoDesigner;
    procedure UpdateLookupRoot;
  protected
    function GetPropertyEditorHook: TPropertyEditorHook; override;
    function GetShowNonVisualComponents: Boolean; override;
    procedure SetShowNonVisualComponents(AValue: Boolean); override;
  public
    constructor Create(ADesignManager: TQorDesignManager); virtual;
    destructor Destroy; override;
    procedure SetDesigner(ADesignManager: TQorDesignManager);
    procedure SetDesignStage(AStage: TComponent);
    function GetDesignStage: TComponent;
    // the Part's IDesigner, where Lazarus has no counterpart
    function GetPathAndBaseExeName: string;
    procedure GetSelections(List: TPersistentSelectionList);
    function GetComponent(const AName: string): TComponent;
    function GetComponentName(AComponent: TComponent): string;
    function GetObject(const AName: string): TPersistent;
    function CreateComponent(ComponentClass: TComponentClass; AParent: TComponent;
      ALeft, ATop, AWidth, AHeight: Integer): TComponent;
    function IsComponentLinkable(AComponent: TComponent): Boolean;
    function IsComponentHidden(AComponent: TComponent): Boolean;
    function IsSourceReadOnly: Boolean;
    function GetScrollRanges(const ScrollPosition: TPoint): TPoint;
    procedure Edit(AComponent: TComponent);
    procedure NoSelection;
    function GetRootClassName: string;
    function GetRoot: TComponent;
    // TIDesigner
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
    // TComponentEditorDesigner
    function CopySelection: Boolean; override;
    function CutSelection: Boolean; override;
    function CanCopy: Boolean; override;
    function CanPaste: Boolean; override;
    function PasteSelection(Flags: TComponentPasteSelectionFlags): Boolean; override;
    function ClearSelection: Boolean; override;
    function DeleteSelection: Boolean; override;
    function CopySelectionToStream(S: TStream): Boolean; override;
    function InsertFromStream(S: TStream; AParent: TWinControl;
      Flags: TComponentPasteSelectionFlags): Boolean; override;
    function InvokeComponentEditor(AComponent: TComponent): Boolean; override;
    function ChangeClass: Boolean; override;
    function CanUndo: Boolean; override;
    function CanRedo: Boolean; override;
    function Undo: Boolean; override;
    function Redo: Boolean; override;
    function AddUndoAction(const aPersistent: TPersistent; aOpType: TUndoOpType;
      IsSetNewId: Boolean; aFieldName: string; const aOldVal, aNewVal: Variant): Boolean; override;
    function IsUndoLocked: Boolean; override;
    procedure AddComponent(const NewRegisteredComponent: TRegisteredComponent;
      const NewComponentClass: TComponentClass; const NewParent: TComponent;
      const NewLeft, NewTop, NewWidth, NewHeight: Integer); override;
    procedure AddComponentCheckParent(var NewParent: TComponent;
      const OriginComponent: TComponent; const OriginWinControl: TWinControl;
      const NewComponentClass: TComponentClass); override;
    procedure DrawDesignerItems(OnlyIfNeeded: Boolean); override;
    function CreateUniqueComponentName(const AClassName: string): string; override;
  published
    property IsDormant: Boolean read GetIsDormant;
    property AncestorDesigner: TVhoDesigner read GetAncestorDesigner;
    property DesignStage: TComponent read GetDesignStage write SetDesignStage;
    property Designer: TQorDesignManager read FDesignManager write SetDesigner;
  end;

implementation

uses
  // IDEIntf: the units that register Lazarus' editors of the LCL's controls
  // (linked here, so GetComponentEditor finds them at run time)
  ImageListEditor, ListViewPropEdit, TreeViewPropEdit, StatusBarPropEdit,
  HeaderControlPropEdit, MaskPropEdit,
  // ours
  VhoSysUtils, VhoClipbrdUtils, QorDesignConsole;

{************ TVhoDesigner }

constructor TVhoDesigner.Create(ADesignManager: TQorDesignManager);
begin
  inherited Create;
  FDesignManager := ADesignManager;
  FHook := TPropertyEditorHook.Create(nil);
  FHook.AddHandlerGetSelection(@HookGetSelection);
  FHook.AddHandlerGetComponent(@HookGetComponent);
  FHook.AddHandlerGetComponentName(@HookGetComponentName);
  UpdateLookupRoot;
end;

destructor TVhoDesigner.Destroy;
begin
  FreeAndNil(FHook);
  inherited Destroy;
end;

{ The stage is where the editors look components up, for the hook and for
  TIDesigner's LookupRoot alike. }
procedure TVhoDesigner.UpdateLookupRoot;
begin
  FHook.LookupRoot := GetDesignStage;
  FLookupRoot := GetDesignStage;
end;

procedure TVhoDesigner.SetDesigner(ADesignManager: TQorDesignManager);
begin
  FDesignManager := ADesignManager;
  UpdateLookupRoot;
end;

procedure TVhoDesigner.SetDesignStage(AStage: TComponent);
begin
  FDesignStage := AStage;
  UpdateLookupRoot;
end;

function TVhoDesigner.GetDesignStage: TComponent;
begin
  if FDesignManager <> nil then
    Result := FDesignManager.DesignStage
  else
    Result := FDesignStage;
end;

{ The selected list of the table: the design manager's. }

procedure TVhoDesigner.GetSelections(List: TPersistentSelectionList);
var
  I: Integer;
begin
  if (FDesignManager = nil) or (List = nil) then
    Exit;
  for I := 0 to FDesignManager.SelectedComps.Count - 1 do
    List.Add(FDesignManager.SelectedComps[I]);
end;

procedure TVhoDesigner.HookGetSelection(const ASelection: TPersistentSelectionList);
begin
  GetSelections(ASelection);
end;

function TVhoDesigner.HookGetComponent(const ComponentPath: string): TComponent;
begin
  Result := GetComponent(ComponentPath);
end;

function TVhoDesigner.HookGetComponentName(AComponent: TComponent): string;
begin
  Result := GetComponentName(AComponent);
end;

function TVhoDesigner.GetIsDormant: Boolean;
begin
  Result := True;
end;

function TVhoDesigner.GetAncestorDesigner: TVhoDesigner;
begin
  Result := nil;
end;

function TVhoDesigner.GetPropertyEditorHook: TPropertyEditorHook;
begin
  Result := FHook;
end;

function TVhoDesigner.GetShowNonVisualComponents: Boolean;
begin
  Result := FShowNonVisual;
end;

procedure TVhoDesigner.SetShowNonVisualComponents(AValue: Boolean);
begin
  FShowNonVisual := AValue;
end;

function TVhoDesigner.GetPathAndBaseExeName: string;
begin
  Result := Application.ExeName;
end;

function TVhoDesigner.GetComponent(const AName: string): TComponent;
begin
  Result := NSNameToComp(AName, GetDesignStage);
end;

function TVhoDesigner.GetComponentName(AComponent: TComponent): string;
begin
  if AComponent = nil then
    Exit('');
  Result := CompToNSName(AComponent, AComponent.Owner, GetDesignStage);
end;

function TVhoDesigner.GetObject(const AName: string): TPersistent;
begin
  Result := GetComponent(AName);
end;

function TVhoDesigner.CreateComponent(ComponentClass: TComponentClass; AParent: TComponent;
  ALeft, ATop, AWidth, AHeight: Integer): TComponent;
var
  Stage: TComponent;
begin
  Result := nil;
  Stage := GetDesignStage;
  if (FDesignManager = nil) or (Stage = nil) or (ComponentClass = nil) then
    Exit;
  Result := ComponentClass.Create(nil);
  try
    Result.Name := GetCompUniqueID(ComponentClass, Stage);
    if Result is TControl then
    begin
      // The stage is the visual parent whatever AParent says (Part 5.2).
      if Stage is TWinControl then
        TControl(Result).Parent := TWinControl(Stage);
      TControl(Result).Top := ATop;
      TControl(Result).Left := ALeft;
      TControl(Result).Width := AWidth;
      TControl(Result).Height := AHeight;
      TControl(Result).Show;
    end;
    if AParent <> nil then
      AParent.InsertComponent(Result)
    else
      Stage.InsertComponent(Result);
  except
    FreeAndNil(Result);
    raise;
  end;
end;

function TVhoDesigner.IsComponentLinkable(AComponent: TComponent): Boolean;
begin
  Result := True;
end;

function TVhoDesigner.IsComponentHidden(AComponent: TComponent): Boolean;
begin
  Result := AComponent is TControl;
end;

function TVhoDesigner.IsSourceReadOnly: Boolean;
begin
  Result := False;
end;

function TVhoDesigner.GetScrollRanges(const ScrollPosition: TPoint): TPoint;
begin
  Result := Point(0, 0);
end;

procedure TVhoDesigner.Edit(AComponent: TComponent);
var
  Editor: TBaseComponentEditor;
begin
  if AComponent = nil then
    Exit;
  Editor := GetComponentEditor(AComponent, Self);
  try
    if Editor <> nil then
      Editor.Edit;
  finally
    Editor.Free;
  end;
end;

procedure TVhoDesigner.NoSelection;
begin
  // Deletes rather than deselects: the Part's defined behaviour.
  if FDesignManager <> nil then
    FDesignManager.DelSelectedControls;
end;

function TVhoDesigner.GetRootClassName: string;
begin
  if GetRoot = nil then
    Result := ''
  else
    Result := GetRoot.ClassName;
end;

function TVhoDesigner.GetRoot: TComponent;
begin
  if (FDesignManager = nil) or (FDesignManager.SelectedComps.Count = 0) then
    Result := nil
  else
    Result := FDesignManager.SelectedComps[0];
end;

function TVhoDesigner.IsDesignMsg(Sender: TControl; var Message: TLMessage): Boolean;
begin
  Result := False;
end;

procedure TVhoDesigner.UTF8KeyPress(var UTF8Key: TUTF8Char);
begin
end;

procedure TVhoDesigner.Modified;
begin
  // The Part's Modified does nothing; the caller of an editor marks the
  // design dirty (Part 5.4). Lazarus' change stamp still counts.
  inherited Modified;
end;

procedure TVhoDesigner.Notification(AComponent: TComponent; Operation: TOperation);
begin
end;

procedure TVhoDesigner.PaintGrid;
begin
end;

procedure TVhoDesigner.ValidateRename(AComponent: TComponent; const CurName, NewName: string);
begin
end;

function TVhoDesigner.GetShiftState: TShiftState;
begin
  Result := [];
end;

procedure TVhoDesigner.SelectOnlyThisComponent(AComponent: TComponent);
var
  Center: TComponent;
begin
  // SelectComponent of the Part: the center's list, without notification.
  if FDesignManager = nil then
    Exit;
  Center := FDesignManager.ConsoleCenter;
  if not (Center is TQorDesignCenter) then
    Exit;
  TQorDesignCenter(Center).SelectedComps.Clear;
  if AComponent <> nil then
    TQorDesignCenter(Center).SelectedComps.Add(AComponent);
end;

function TVhoDesigner.UniqueName(const BaseName: string): string;
begin
  Result := GetUniqueName(BaseName, GetDesignStage);
end;

procedure TVhoDesigner.PrepareFreeDesigner(AFreeComponent: Boolean);
begin
end;

function TVhoDesigner.CopySelection: Boolean;
begin
  Result := FDesignManager <> nil;
  if Result then
    VhoClipboard.SetComponents(FDesignManager.SelectedComps, False);
end;

function TVhoDesigner.CutSelection: Boolean;
begin
  Result := CopySelection;
  if Result then
    FDesignManager.DelSelectedControls;
end;

function TVhoDesigner.CanCopy: Boolean;
begin
  Result := (FDesignManager <> nil) and (FDesignManager.SelectedComps.Count > 0);
end;

function TVhoDesigner.CanPaste: Boolean;
begin
  Result := True;
end;

function TVhoDesigner.PasteSelection(Flags: TComponentPasteSelectionFlags): Boolean;
begin
  // Pasting goes through the design center (Part 5.1).
  Result := False;
end;

function TVhoDesigner.ClearSelection: Boolean;
begin
  Result := FDesignManager <> nil;
  if Result then
    FDesignManager.DeselectAll;
end;

function TVhoDesigner.DeleteSelection: Boolean;
begin
  Result := FDesignManager <> nil;
  if Result then
    FDesignManager.DelSelectedControls;
end;

function TVhoDesigner.CopySelectionToStream(S: TStream): Boolean;
var
  I: Integer;
begin
  Result := (FDesignManager <> nil) and (S <> nil);
  if Result then
    for I := 0 to FDesignManager.SelectedComps.Count - 1 do
      S.WriteComponent(FDesignManager.SelectedComps[I]);
end;

function TVhoDesigner.InsertFromStream(S: TStream; AParent: TWinControl;
  Flags: TComponentPasteSelectionFlags): Boolean;
begin
  Result := False;
end;

function TVhoDesigner.InvokeComponentEditor(AComponent: TComponent): Boolean;
begin
  Result := AComponent <> nil;
  Edit(AComponent);
end;

function TVhoDesigner.ChangeClass: Boolean;
begin
  Result := False;
end;

function TVhoDesigner.CanUndo: Boolean;
begin
  Result := False;
end;

function TVhoDesigner.CanRedo: Boolean;
begin
  Result := False;
end;

function TVhoDesigner.Undo: Boolean;
begin
  Result := False;
end;

function TVhoDesigner.Redo: Boolean;
begin
  Result := False;
end;

function TVhoDesigner.AddUndoAction(const aPersistent: TPersistent; aOpType: TUndoOpType;
  IsSetNewId: Boolean; aFieldName: string; const aOldVal, aNewVal: Variant): Boolean;
begin
  Result := False;
end;

function TVhoDesigner.IsUndoLocked: Boolean;
begin
  Result := False;
end;

procedure TVhoDesigner.AddComponent(const NewRegisteredComponent: TRegisteredComponent;
  const NewComponentClass: TComponentClass; const NewParent: TComponent;
  const NewLeft, NewTop, NewWidth, NewHeight: Integer);
begin
  CreateComponent(NewComponentClass, NewParent, NewLeft, NewTop, NewWidth, NewHeight);
end;

procedure TVhoDesigner.AddComponentCheckParent(var NewParent: TComponent;
  const OriginComponent: TComponent; const OriginWinControl: TWinControl;
  const NewComponentClass: TComponentClass);
begin
end;

procedure TVhoDesigner.DrawDesignerItems(OnlyIfNeeded: Boolean);
begin
end;

function TVhoDesigner.CreateUniqueComponentName(const AClassName: string): string;
var
  Base: string;
begin
  Base := AClassName;
  if (Length(Base) > 1) and (UpCase(Base[1]) = 'T') then
    Delete(Base, 1, 1);
  Result := UniqueName(Base);
end;

end.
