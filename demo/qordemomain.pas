{ QorDesign demo — the designer application that every issue grows.

  The main window holds the palette area (top), the component tree area
  (left) and the object inspector area (right); the stage form beside it is
  the form the user designs. The palette area has the Design switch and a
  provisional palette (arrow, TButton, TLabel, TEdit, TPanel) until the
  palette component (Part 6.2) replaces it; the tree area waits for its
  issue. The inspector area has the switch between identifiers and the
  Chinese labels of the shipped dictionary (Parts 4.2 and 2.2).

  Sections:
    - TQorDemoMain
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
  LCLType, LCLIntf, Graphics, Controls, StdCtrls, ExtCtrls, Buttons, Forms,
  // ours
  QorDesigner, QorDesignConsole, ObjInspect, QorTransUtils;

type

  { TQorDemoMain }

  TQorDemoMain = class(TForm)
  private
    FPaletteArea: TPanel;
    FTreeArea: TPanel;
    FInspectorArea: TPanel;
    FInspector: TQorObjInspector;
    FCenterArea: TPanel;
    FStage: TForm;
    FManager: TQorDesignManager;
    FCenter: TQorDesignCenter;
    FDesignSwitch: TCheckBox;
    FPaletteButtons: array of TSpeedButton;
    FStatus: TLabel;
    FLabelsSwitch: TCheckBox;
    procedure BuildPalette;
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
    property PaletteArea: TPanel read FPaletteArea;
    property TreeArea: TPanel read FTreeArea;
    property InspectorArea: TPanel read FInspectorArea;
    property Stage: TForm read FStage;
    property Manager: TQorDesignManager read FManager;
    property DesignSwitch: TCheckBox read FDesignSwitch;
    property Center: TQorDesignCenter read FCenter;
    function PaletteButtonOf(AClass: TComponentClass): TSpeedButton;
    property Inspector: TQorObjInspector read FInspector;
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
  BuildStage;
  BuildPalette;
  BuildLabelsSwitch;
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
