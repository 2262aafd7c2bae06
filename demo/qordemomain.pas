{ QorDesign demo — the designer application that every issue grows.

  The main window holds the palette area (top), the component tree area
  (left) and the object inspector area (right); the stage form beside it is
  the form the user designs. The palette area has the Design switch and a
  provisional palette (arrow, TButton, TLabel, TEdit, TPanel) until the
  palette component (Part 6.2) replaces it; the tree area waits for its
  issue. The inspector area has the switch between identifiers and the
  Chinese labels of the shipped dictionary (Parts 4.2 and 2.2). The menu
  bar has the Edit commands (cut, copy, paste, delete, select all) and the
  Arrange operations of Part 1.6, all through the design center (Part 5.1),
  and a Component menu with the verbs of the selected component's Lazarus
  component editor, run with the designer of Part 5.2;
  their shortcuts work while the stage has the keyboard, and leave the
  inspector's editors their own Ctrl+C, Ctrl+V, Ctrl+X and Ctrl+A.

  Sections:
    - TQorDemoMain
    - Menus
    - Labels
    - Stage
    - Screenshot }
unit QorDemoMain;

{$mode objfpc}{$H+}

interface

uses
  // RTL / FCL
  Classes, SysUtils, TypInfo,
  // LCL
  LCLType, LCLIntf, LMessages, Graphics, Controls, StdCtrls, ExtCtrls, Buttons, Forms,
  Menus, ComCtrls, Grids,
  // IDEIntf
  ComponentEditors,
  // ours
  QorDesigner, QorDesignConsole, ObjInspect, QorTransUtils, QorDesignIntfImpls, QorCompTreeView;

type

  { TQorDemoMain }

  TQorDemoMain = class(TForm)
  private
    FPaletteArea: TPanel;
    FTreeArea: TPanel;
    FInspectorArea: TPanel;
    FInspector: TQorObjInspector;
    FTree: TQorCompTreeView;
    FCenterArea: TPanel;
    FStage: TForm;
    FManager: TQorDesignManager;
    FCenter: TQorDesignCenter;
    FDesignSwitch: TCheckBox;
    FPaletteButtons: array of TSpeedButton;
    FStatus: TLabel;
    FLabelsSwitch: TCheckBox;
    FMainMenu: TMainMenu;
    FComponentMenu: TMenuItem;
    procedure RebuildVerbs;
    procedure VerbClick(Sender: TObject);
    procedure BuildPalette;
    procedure BuildMenus;
    function AddItem(AParent: TMenuItem; const ACaption: string; AShortCut: TShortCut;
      ATag: Integer; AHandler: TNotifyEvent): TMenuItem;
    procedure EditClick(Sender: TObject);
    procedure ArrangeClick(Sender: TObject);
    procedure AppShortcut(var Msg: TLMKey; var Handled: Boolean);
    procedure BuildLabelsSwitch;
    procedure LabelsSwitchClick(Sender: TObject);
    procedure ShowPaletteCaptions;
    procedure InspIdentToLabel(Sender: TObject; PTI: PTypeInfo; const Src: string;
      TransRole: TTransRole; var Dest: string);
    procedure InspLabelToIdent(Sender: TObject; PTI: PTypeInfo; const Src: string;
      TransRole: TTransRole; var Dest: string);
    procedure DesignSwitchClick(Sender: TObject);
    procedure PaletteClick(Sender: TObject);
    procedure PaletteChanged(Sender: TObject);
    procedure SelectionChanged(Sender: TObject);
    function NewArea(const ACaption: string; AAlign: TAlign; ASize: Integer): TPanel;
    procedure BuildStage;
    procedure MainClose(Sender: TObject; var CloseAction: TCloseAction);
  public
    constructor CreateNew(AOwner: TComponent; Num: Integer = 0); override;
    destructor Destroy; override;
    { The menu's shortcuts, except while an inspector editor has the keys. }
    function IsShortcut(var Message: TLMKey): Boolean; override;
    property MainMenu: TMainMenu read FMainMenu;
    { The selected component's editor verbs (Lazarus' component editors). }
    property ComponentMenu: TMenuItem read FComponentMenu;
    property PaletteArea: TPanel read FPaletteArea;
    property TreeArea: TPanel read FTreeArea;
    property InspectorArea: TPanel read FInspectorArea;
    property Stage: TForm read FStage;
    property Manager: TQorDesignManager read FManager;
    property DesignSwitch: TCheckBox read FDesignSwitch;
    property Center: TQorDesignCenter read FCenter;
    function PaletteButtonOf(AClass: TComponentClass): TSpeedButton;
    property Inspector: TQorObjInspector read FInspector;
    property Tree: TQorCompTreeView read FTree;
    property LabelsSwitch: TCheckBox read FLabelsSwitch;
  end;

{ The shipped Chinese dictionary beside the program (build/ -> resources/dict),
  or '' when it is not there. }
function DemoDictionaryFile: string;

{ Writes the screen's content inside Area as a PNG file (the demo's headless
  mode). }
procedure SaveScreenshot(const FileName: string; const Area: TRect);

implementation

{************ TQorDemoMain }

constructor TQorDemoMain.CreateNew(AOwner: TComponent; Num: Integer);
var
  HintLabel: TLabel;
begin
  inherited CreateNew(AOwner, Num);
  Name := 'QorDemoMain';
  Caption := 'QorDesign demo';
  Position := poDesigned;
  SetBounds(0, 0, 1260, 760);
  FPaletteArea := NewArea('Palette', alTop, 64);
  FTreeArea := NewArea('Components', alLeft, 260);
  FInspectorArea := NewArea('Object Inspector', alRight, 300);
  FCenterArea := TPanel.Create(Self);
  FCenterArea.Parent := Self;
  FCenterArea.Align := alClient;
  FCenterArea.BevelOuter := bvNone;
  FCenterArea.Caption := '';
  HintLabel := TLabel.Create(Self);
  HintLabel.Parent := FCenterArea;
  HintLabel.Align := alBottom;
  HintLabel.BorderSpacing.Around := 8;
  HintLabel.Caption := 'The stage form is the form being designed.';
  OnClose := @MainClose;
  // Pasting finds classes by name (Part 3.3): the stage's and the palette's.
  RegisterClasses([TButton, TLabel, TEdit, TPanel, TMemo, TCheckBox, TPageControl,
    TTabSheet, TStringGrid]);
  BuildStage;
  BuildPalette;
  BuildLabelsSwitch;
  BuildMenus;
  // The stage is another window: its key presses reach the menu here.
  Application.OnShortcut := @AppShortcut;
end;

destructor TQorDemoMain.Destroy;
begin
  if Application.OnShortcut = @AppShortcut then
    Application.OnShortcut := nil;
  inherited Destroy;
end;

const
  PaletteClasses: array[0..4] of TComponentClass = (nil, TButton, TLabel, TEdit, TPanel);
  PaletteCaptions: array[0..4] of string = ('Arrow', 'TButton', 'TLabel', 'TEdit', 'TPanel');

procedure TQorDemoMain.BuildPalette;
var
  I: Integer;
  B: TSpeedButton;
begin
  FDesignSwitch := TCheckBox.Create(Self);
  FDesignSwitch.Parent := FPaletteArea;
  FDesignSwitch.SetBounds(8, 30, 80, 24);
  FDesignSwitch.Caption := 'Design';
  FDesignSwitch.OnClick := @DesignSwitchClick;
  SetLength(FPaletteButtons, Length(PaletteClasses));
  for I := 0 to High(PaletteClasses) do
  begin
    B := TSpeedButton.Create(Self);
    B.Parent := FPaletteArea;
    B.SetBounds(100 + I * 84, 28, 80, 28);
    B.Caption := PaletteCaptions[I];
    B.GroupIndex := 1;
    B.Tag := I;
    B.Down := I = 0;
    B.OnClick := @PaletteClick;
    FPaletteButtons[I] := B;
  end;
  FStatus := TLabel.Create(Self);
  FStatus.Parent := FPaletteArea;
  FStatus.SetBounds(530, 34, 700, 20);
  FStatus.Caption := 'Switch Design on, then click, Shift-click, drag, resize by the handles, '
    + 'Ctrl+arrows, Delete, or pick a class and click on the stage.';
end;

procedure TQorDemoMain.DesignSwitchClick(Sender: TObject);
begin
  FManager.IsDesigning := FDesignSwitch.Checked;
  if not FDesignSwitch.Checked then
    FStatus.Caption := 'Designing is off: the controls act as controls.';
end;

procedure TQorDemoMain.PaletteClick(Sender: TObject);
begin
  FCenter.PalleteSelectedClass := PaletteClasses[TSpeedButton(Sender).Tag];
end;

function TQorDemoMain.PaletteButtonOf(AClass: TComponentClass): TSpeedButton;
var
  I: Integer;
begin
  for I := 0 to High(PaletteClasses) do
    if PaletteClasses[I] = AClass then
      Exit(FPaletteButtons[I]);
  Result := nil;
end;

procedure TQorDemoMain.ShowPaletteCaptions;
var
  I: Integer;
begin
  for I := 0 to High(PaletteClasses) do
    if (PaletteClasses[I] <> nil) and FLabelsSwitch.Checked then
      FPaletteButtons[I].Caption := QorTransMan.ClassToTransedName(PaletteClasses[I])
    else
      FPaletteButtons[I].Caption := PaletteCaptions[I];
end;

procedure TQorDemoMain.PaletteChanged(Sender: TObject);
var
  I: Integer;
begin
  // After an insertion the center drops the choice: back to the arrow.
  for I := 0 to High(PaletteClasses) do
    if PaletteClasses[I] = FCenter.PalleteSelectedClass then
      FPaletteButtons[I].Down := True;
end;

procedure TQorDemoMain.SelectionChanged(Sender: TObject);
var
  I: Integer;
  S: string;
begin
  S := '';
  for I := 0 to FCenter.SelectedComps.Count - 1 do
  begin
    if S <> '' then
      S := S + ', ';
    S := S + FCenter.SelectedComps[I].Name;
  end;
  FStatus.Caption := 'Selected: ' + S;
  RebuildVerbs;
end;

procedure TQorDemoMain.MainClose(Sender: TObject; var CloseAction: TCloseAction);
begin
  // Made with CreateNew, this window is not the application's MainForm:
  // closing it ends the program explicitly.
  Application.Terminate;
end;

function TQorDemoMain.NewArea(const ACaption: string; AAlign: TAlign; ASize: Integer): TPanel;
var
  Header: TLabel;
begin
  Result := TPanel.Create(Self);
  Result.Parent := Self;
  Result.Align := AAlign;
  if AAlign in [alTop, alBottom] then
    Result.Height := ASize
  else
    Result.Width := ASize;
  Result.BevelOuter := bvLowered;
  Result.Caption := '';
  Header := TLabel.Create(Self);
  Header.Parent := Result;
  Header.Align := alTop;
  Header.BorderSpacing.Around := 4;
  Header.Font.Style := [fsBold];
  Header.Caption := ACaption;
end;

{************ Menus }

const
  EditCut = 1;
  EditCopy = 2;
  EditPaste = 3;
  EditDelete = 4;
  EditSelectAll = 5;

type
  TArrangeCommand = record
    Caption: string;
    Kind: Char;   // 'A' align, 'S' size, 'C' scale, 'F' flip, 'Z' z-order
    H, V: TQorDesignAlignmentStyle;
    W, Ht: TQorDesignSizeStyle;
    Number: Integer;
  end;

const
  ArrangeCommands: array[0..16] of TArrangeCommand = (
    (Caption: 'Align &Left Edges'; Kind: 'A'; H: asLeftOrTop; V: asNoChange;
      W: ssNoChange; Ht: ssNoChange; Number: 0),
    (Caption: 'Align &Right Edges'; Kind: 'A'; H: asRightOrBottom; V: asNoChange;
      W: ssNoChange; Ht: ssNoChange; Number: 0),
    (Caption: 'Align &Tops'; Kind: 'A'; H: asNoChange; V: asLeftOrTop;
      W: ssNoChange; Ht: ssNoChange; Number: 0),
    (Caption: 'Align &Bottoms'; Kind: 'A'; H: asNoChange; V: asRightOrBottom;
      W: ssNoChange; Ht: ssNoChange; Number: 0),
    (Caption: 'Align Horizontal &Centers'; Kind: 'A'; H: asCenters; V: asNoChange;
      W: ssNoChange; Ht: ssNoChange; Number: 0),
    (Caption: 'Align &Vertical Centers'; Kind: 'A'; H: asNoChange; V: asCenters;
      W: ssNoChange; Ht: ssNoChange; Number: 0),
    (Caption: 'Center &Horizontally in Window'; Kind: 'A'; H: asCenterInWindow; V: asNoChange;
      W: ssNoChange; Ht: ssNoChange; Number: 0),
    (Caption: 'Center Vertically in &Window'; Kind: 'A'; H: asNoChange; V: asCenterInWindow;
      W: ssNoChange; Ht: ssNoChange; Number: 0),
    (Caption: 'Space &Equally Horizontally'; Kind: 'A'; H: asSpaceEqual; V: asNoChange;
      W: ssNoChange; Ht: ssNoChange; Number: 0),
    (Caption: 'Space Equally Verticall&y'; Kind: 'A'; H: asNoChange; V: asSpaceEqual;
      W: ssNoChange; Ht: ssNoChange; Number: 0),
    (Caption: 'Same &Width (Largest)'; Kind: 'S'; H: asNoChange; V: asNoChange;
      W: ssToLargest; Ht: ssNoChange; Number: 0),
    (Caption: 'Same Height (Lar&gest)'; Kind: 'S'; H: asNoChange; V: asNoChange;
      W: ssNoChange; Ht: ssToLargest; Number: 0),
    (Caption: '&Scale Selected 200%'; Kind: 'C'; H: asNoChange; V: asNoChange;
      W: ssNoChange; Ht: ssNoChange; Number: 200),
    (Caption: 'Scale Selected 50%'; Kind: 'C'; H: asNoChange; V: asNoChange;
      W: ssNoChange; Ht: ssNoChange; Number: 50),
    (Caption: '&Flip Children of Selected'; Kind: 'F'; H: asNoChange; V: asNoChange;
      W: ssNoChange; Ht: ssNoChange; Number: 0),
    (Caption: 'Bring to &Front'; Kind: 'Z'; H: asNoChange; V: asNoChange;
      W: ssNoChange; Ht: ssNoChange; Number: 1),
    (Caption: 'Send to Bac&k'; Kind: 'Z'; H: asNoChange; V: asNoChange;
      W: ssNoChange; Ht: ssNoChange; Number: 0));

function TQorDemoMain.AddItem(AParent: TMenuItem; const ACaption: string;
  AShortCut: TShortCut; ATag: Integer; AHandler: TNotifyEvent): TMenuItem;
begin
  Result := TMenuItem.Create(Self);
  Result.Caption := ACaption;
  Result.ShortCut := AShortCut;
  Result.Tag := ATag;
  Result.OnClick := AHandler;
  AParent.Add(Result);
end;

procedure TQorDemoMain.BuildMenus;
var
  Edit, Arrange: TMenuItem;
  I: Integer;
begin
  FMainMenu := TMainMenu.Create(Self);
  Edit := AddItem(FMainMenu.Items, '&Edit', 0, 0, nil);
  AddItem(Edit, 'Cu&t', ShortCut(VK_X, [ssCtrl]), EditCut, @EditClick);
  AddItem(Edit, '&Copy', ShortCut(VK_C, [ssCtrl]), EditCopy, @EditClick);
  AddItem(Edit, '&Paste', ShortCut(VK_V, [ssCtrl]), EditPaste, @EditClick);
  // The stage deletes on the Delete key itself (Part 1.5).
  AddItem(Edit, '&Delete', 0, EditDelete, @EditClick);
  AddItem(Edit, 'Select &All', ShortCut(VK_A, [ssCtrl]), EditSelectAll, @EditClick);
  Arrange := AddItem(FMainMenu.Items, '&Arrange', 0, 0, nil);
  for I := 0 to High(ArrangeCommands) do
    AddItem(Arrange, ArrangeCommands[I].Caption, 0, I, @ArrangeClick);
  FComponentMenu := AddItem(FMainMenu.Items, 'C&omponent', 0, 0, nil);
  RebuildVerbs;
  Menu := FMainMenu;
end;

{ The verbs of the one selected component's editor, as Part 5.4's popup
  menu lists them; rebuilt whenever the selection changes. }
procedure TQorDemoMain.RebuildVerbs;
var
  FormDesigner: TQorFormDesigner;
  Editor: TBaseComponentEditor;
  I: Integer;
begin
  if FComponentMenu = nil then
    Exit;
  FComponentMenu.Clear;
  Editor := nil;
  FormDesigner := TQorFormDesigner.Create(FManager);
  try
    if FormDesigner.GetSelectedComponent <> nil then
      Editor := GetComponentEditor(FormDesigner.GetSelectedComponent, FormDesigner);
    if Editor <> nil then
      for I := 0 to Editor.GetVerbCount - 1 do
        AddItem(FComponentMenu, Editor.GetVerb(I), 0, I, @VerbClick);
  finally
    Editor.Free;
    FormDesigner.Free;
  end;
  if FComponentMenu.Count = 0 then
    AddItem(FComponentMenu, '(select one component)', 0, -1, nil).Enabled := False;
end;

{ Runs the verb with a designer made for the call, then refreshes the
  design and marks it dirty (Part 5.4's CompEditorItemOnClick). }
procedure TQorDemoMain.VerbClick(Sender: TObject);
var
  FormDesigner: TQorFormDesigner;
  Editor: TBaseComponentEditor;
begin
  FormDesigner := TQorFormDesigner.Create(FManager);
  Editor := nil;
  try
    if FormDesigner.GetSelectedComponent = nil then
      Exit;
    Editor := GetComponentEditor(FormDesigner.GetSelectedComponent, FormDesigner);
    if Editor = nil then
      Exit;
    Editor.ExecuteVerb(TMenuItem(Sender).Tag);
  finally
    Editor.Free;
    FormDesigner.Free;
  end;
  FCenter.Refresh;
  FCenter.SetDirty(True);
end;

procedure TQorDemoMain.EditClick(Sender: TObject);
begin
  if not FManager.IsDesigning then
    Exit;
  case TMenuItem(Sender).Tag of
    EditCut: FCenter.CutSelComps;
    EditCopy: FCenter.CopySelComps;
    EditPaste: FCenter.PasteComps;
    EditDelete: FCenter.DelSelCtrls;
    EditSelectAll: FCenter.SelectAllControls;
  end;
end;

procedure TQorDemoMain.ArrangeClick(Sender: TObject);
var
  C: TArrangeCommand;
begin
  if not FManager.IsDesigning then
    Exit;
  C := ArrangeCommands[TMenuItem(Sender).Tag];
  try
    case C.Kind of
      'A': FManager.SetSelCtrlDesignAligment(C.H, C.V);
      'S': FManager.SetSelCtrlDesignSize(C.W, C.Ht, -1, -1);
      'C': FManager.ScaleControls(C.Number, ssSelected);
      'F': FManager.FlipChildren(fcSelected);
      'Z':
        if C.Number = 1 then
          FManager.BringSelCtrlsToFront
        else
          FManager.SendSelCtrlsToBack;
    end;
  except
    // Spacing one control divides by zero (Part 1.6): say so, keep going.
    on E: EZeroDivide do
      FStatus.Caption := 'Space equally needs two or more controls.';
  end;
end;

function TQorDemoMain.IsShortcut(var Message: TLMKey): Boolean;
begin
  if (ActiveControl <> nil) and ((ActiveControl = FInspector) or
    FInspector.IsParentOf(ActiveControl)) then
    Exit(False);
  Result := inherited IsShortcut(Message);
end;

procedure TQorDemoMain.AppShortcut(var Msg: TLMKey; var Handled: Boolean);
begin
  if Screen.ActiveCustomForm = FStage then
    Handled := FMainMenu.IsShortCut(Msg);
end;

{************ Labels }

function DemoDictionaryFile: string;
const
  Candidates: array[0..1] of string = ('../resources/dict/', 'dict/');
var
  I: Integer;
begin
  for I := 0 to High(Candidates) do
  begin
    Result := ExpandFileName(ExtractFilePath(ParamStr(0)) + Candidates[I] +
      'qordesign-zh.xml');
    if FileExists(Result) then
      Exit;
  end;
  Result := '';
end;

procedure TQorDemoMain.BuildLabelsSwitch;
var
  DictFile: string;
begin
  FLabelsSwitch := TCheckBox.Create(Self);
  FLabelsSwitch.Parent := FInspectorArea;
  FLabelsSwitch.Align := alTop;
  FLabelsSwitch.BorderSpacing.Around := 4;
  FLabelsSwitch.Caption := 'Chinese labels (中文)';
  DictFile := DemoDictionaryFile;
  if DictFile <> '' then
    QorTransMan.DbFileName := DictFile;
  // A missing or unreadable dictionary leaves the identifiers, switch off.
  FLabelsSwitch.Enabled := QorTransMan.OpenDb;
  if not FLabelsSwitch.Enabled then
    FLabelsSwitch.Hint := 'No dictionary found beside the program.';
  FLabelsSwitch.ShowHint := True;
  FLabelsSwitch.OnClick := @LabelsSwitchClick;
  // The identifiers first; the switch turns the dictionary's labels on.
  FInspector.OnTranslateIdent := @InspIdentToLabel;
  FInspector.OnTranslateToIdent := @InspLabelToIdent;
  FInspector.Translate := False;
end;

procedure TQorDemoMain.LabelsSwitchClick(Sender: TObject);
begin
  FInspector.Translate := FLabelsSwitch.Checked;
  ShowPaletteCaptions;
end;

{ The root for component references is the inspected component's owner, so
  that "Panel1" names the stage's panel. }
function ListOwner(Sender: TObject): TComponent;
begin
  if Sender is TObjInspecPropList then
    Result := TObjInspecPropList(Sender).OwnerObject
  else
    Result := nil;
end;

procedure TQorDemoMain.InspIdentToLabel(Sender: TObject; PTI: PTypeInfo;
  const Src: string; TransRole: TTransRole; var Dest: string);
begin
  Dest := QorTransMan.IdentToLabel(TransRole, PTI, Src, ListOwner(Sender));
end;

procedure TQorDemoMain.InspLabelToIdent(Sender: TObject; PTI: PTypeInfo;
  const Src: string; TransRole: TTransRole; var Dest: string);
begin
  Dest := QorTransMan.LabelToIdent(TransRole, PTI, Src, ListOwner(Sender));
end;

{************ Stage }

procedure TQorDemoMain.BuildStage;
var
  Panel: TPanel;
  Button: TButton;
  Lbl: TLabel;
  Edit: TEdit;
  Memo: TMemo;
  Check: TCheckBox;
  Pages: TPageControl;
  Sheet: TTabSheet;
  Grid: TStringGrid;
begin
  // The stage's components are owned by the stage, as a designed form's are.
  FStage := TForm.CreateNew(Self);
  FStage.Name := 'StageForm';
  FStage.Caption := 'Stage';
  FStage.Position := poDesigned;
  FStage.SetBounds(290, 100, 600, 440);

  Panel := TPanel.Create(FStage);
  Panel.Name := 'Panel1';
  Panel.Parent := FStage;
  Panel.SetBounds(16, 16, 300, 160);
  Panel.Caption := '';

  Button := TButton.Create(FStage);
  Button.Name := 'Button1';
  Button.Parent := Panel;
  Button.SetBounds(16, 16, 110, 32);
  Button.Caption := 'Button1';

  Lbl := TLabel.Create(FStage);
  Lbl.Name := 'Label1';
  Lbl.Parent := Panel;
  Lbl.SetBounds(16, 72, 120, 20);
  Lbl.Caption := 'Label1';

  Edit := TEdit.Create(FStage);
  Edit.Name := 'Edit1';
  Edit.Parent := FStage;
  Edit.SetBounds(340, 16, 220, 28);
  Edit.Text := 'Edit1';

  Memo := TMemo.Create(FStage);
  Memo.Name := 'Memo1';
  Memo.Parent := FStage;
  Memo.SetBounds(16, 200, 300, 150);
  Memo.Lines.Text := 'Memo1';

  Check := TCheckBox.Create(FStage);
  Check.Name := 'CheckBox1';
  Check.Parent := FStage;
  Check.SetBounds(340, 64, 200, 24);
  Check.Caption := 'CheckBox1';

  Pages := TPageControl.Create(FStage);
  Pages.Name := 'PageControl1';
  Pages.Parent := FStage;
  Pages.SetBounds(340, 110, 230, 110);
  // Owned by the stage, as a designed form's pages are (and as the page
  // control's editor makes them), so the page is designed too.
  Sheet := TTabSheet.Create(FStage);
  Sheet.Name := 'TabSheet1';
  Sheet.PageControl := Pages;
  Sheet.Caption := 'TabSheet1';

  Grid := TStringGrid.Create(FStage);
  Grid.Name := 'StringGrid1';
  Grid.Parent := FStage;
  Grid.SetBounds(340, 240, 230, 110);

  FManager := TQorDesignManager.Create(FStage);
  FManager.Name := 'DesignManager1';
  FCenter := TQorDesignCenter.Create(FStage);
  FCenter.Name := 'DesignCenter1';
  FCenter.DesignManager := FManager;
  FCenter.OnCompsChange := @SelectionChanged;
  FCenter.OnPalleteChange := @PaletteChanged;

  // The inspector follows the stage selection through the center and
  // edits it (Part 2.3); owned by the main form, not by the stage.
  FInspector := TQorObjInspector.Create(Self);
  FInspector.Name := 'ObjInspector1';
  FInspector.Parent := FInspectorArea;
  FInspector.Align := alClient;
  FInspector.ColWidths[0] := 130;
  FCenter.ObjInspector := FInspector;
  FInspector.SetActiveComponent(FStage);

  // The stage's components as a tree that follows and drives the
  // selection (Part 6.1), also owned by the main form.
  FTree := TQorCompTreeView.Create(Self);
  FTree.Name := 'CompTreeView1';
  FTree.Parent := FTreeArea;
  FTree.Align := alClient;
  FCenter.CompTreeView := FTree;
end;

{************ Screenshot }

procedure SaveScreenshot(const FileName: string; const Area: TRect);
var
  ScreenDC: HDC;
  Bitmap: TBitmap;
  Png: TPortableNetworkGraphic;
begin
  Bitmap := TBitmap.Create;
  Png := TPortableNetworkGraphic.Create;
  ScreenDC := GetDC(0);
  try
    Bitmap.LoadFromDevice(ScreenDC);
    Png.SetSize(Area.Width, Area.Height);
    Png.Canvas.CopyRect(Rect(0, 0, Area.Width, Area.Height), Bitmap.Canvas, Area);
    Png.SaveToFile(FileName);
  finally
    ReleaseDC(0, ScreenDC);
    Png.Free;
    Bitmap.Free;
  end;
end;

end.
