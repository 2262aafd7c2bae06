{ QorDesign tests — Parts 1.2 to 1.5, the design surface driven by real X
  input on a shown stage: selection, drags, handles, keys, rubber band,
  insertion, switching designing off, and frees while designing. }
unit TestDesignSurface;

{$mode objfpc}{$H+}
{$modeswitch nestedprocvars}

interface

uses
  // RTL / FCL
  Classes, SysUtils, Contnrs, fpcunit, testregistry,
  // LCL
  LCLType, LCLIntf, LMessages, Controls, StdCtrls, ExtCtrls, Forms, Graphics,
  // ours
  QorGuiTest, QorDesigner, QorDesignConsole;

type

  { TQorSurfaceTestCase
    A stage form (owner of its controls, of the manager and of the center)
    with a panel holding a button and a label, an edit, a memo, a check box
    and two more buttons; designing switched on. }

  TQorSurfaceTestCase = class(TQorGuiTestCase)
  protected
    Stage: TQorTestForm;
    Manager: TQorDesignManager;
    Center: TQorDesignCenter;
    Panel: TPanel;
    PanelButton: TButton;
    PanelLabel: TLabel;
    Edit: TEdit;
    Memo: TMemo;
    CheckBox: TCheckBox;
    Button2, Button3: TButton;
    Clicks: Integer;
    procedure AnyClick(Sender: TObject);
    procedure SetUp; override;
    procedure TearDown; override;
    procedure BuildStage; virtual;
    procedure StartDesigning;
    function SelNames: string;
    function SizerOf(C: TControl): TQorSizer;
    { Presses at (X, Y) of C, moves by (DX, DY) in three steps, releases. }
    procedure DragBy(C: TControl; X, Y, DX, DY: Integer; const Keys: string = '');
    procedure ShiftClick(C: TControl; X, Y: Integer);
    procedure WaitSelection(const Expected: string);
  end;

  { TTestDesignSurface }

  TTestDesignSurface = class(TQorSurfaceTestCase)
  published
    procedure TestDesigningOnSelectsTheStage;
    procedure TestClickOnButtonSelectsItWithoutOnClick;
    procedure TestScreenshotsShowHandlesAndControls;
  end;

implementation

{ TQorSurfaceTestCase }

procedure TQorSurfaceTestCase.AnyClick(Sender: TObject);
begin
  Inc(Clicks);
end;

procedure TQorSurfaceTestCase.SetUp;
begin
  inherited SetUp;
  Clicks := 0;
  BuildStage;
  ShowForm(Stage);
end;

procedure TQorSurfaceTestCase.TearDown;
begin
  if Manager <> nil then
    Manager.IsDesigning := False;
  inherited TearDown;
  Manager := nil;
  Center := nil;
end;

procedure TQorSurfaceTestCase.BuildStage;
begin
  Stage := NewForm(40, 40, 640, 480);
  Stage.Name := 'StageForm';
  Panel := TPanel.Create(Stage);
  Panel.Name := 'Panel1';
  Panel.Parent := Stage;
  Panel.SetBounds(20, 20, 260, 160);
  Panel.Caption := '';
  PanelButton := TButton.Create(Stage);
  PanelButton.Name := 'Button1';
  PanelButton.Parent := Panel;
  PanelButton.SetBounds(20, 20, 100, 30);
  PanelButton.OnClick := @AnyClick;
  PanelLabel := TLabel.Create(Stage);
  PanelLabel.Name := 'Label1';
  PanelLabel.Parent := Panel;
  PanelLabel.AutoSize := False;
  PanelLabel.SetBounds(20, 80, 90, 24);
  PanelLabel.Caption := 'Label1';
  PanelLabel.OnClick := @AnyClick;
  Edit := TEdit.Create(Stage);
  Edit.Name := 'Edit1';
  Edit.Parent := Stage;
  Edit.SetBounds(320, 20, 160, 28);
  Memo := TMemo.Create(Stage);
  Memo.Name := 'Memo1';
  Memo.Parent := Stage;
  Memo.SetBounds(20, 220, 200, 100);
  CheckBox := TCheckBox.Create(Stage);
  CheckBox.Name := 'CheckBox1';
  CheckBox.Parent := Stage;
  CheckBox.SetBounds(320, 80, 150, 24);
  CheckBox.OnClick := @AnyClick;
  Button2 := TButton.Create(Stage);
  Button2.Name := 'Button2';
  Button2.Parent := Stage;
  Button2.SetBounds(320, 140, 100, 30);
  Button2.OnClick := @AnyClick;
  Button3 := TButton.Create(Stage);
  Button3.Name := 'Button3';
  Button3.Parent := Stage;
  Button3.SetBounds(320, 200, 100, 30);
  Button3.OnClick := @AnyClick;
  Manager := TQorDesignManager.Create(Stage);
  Manager.Name := 'DesignManager1';
  Center := TQorDesignCenter.Create(Stage);
  Center.Name := 'DesignCenter1';
  Center.DesignManager := Manager;
end;

procedure TQorSurfaceTestCase.StartDesigning;
begin
  Manager.IsDesigning := True;
  DrainMessages(50);
end;

function TQorSurfaceTestCase.SelNames: string;
var
  I: Integer;
begin
  Result := '';
  for I := 0 to Manager.SelectedComps.Count - 1 do
  begin
    if I > 0 then
      Result := Result + ',';
    Result := Result + Manager.SelectedComps[I].Name;
  end;
end;

function TQorSurfaceTestCase.SizerOf(C: TControl): TQorSizer;
begin
  Result := Manager.Sizers.SizerOf(C);
end;

procedure TQorSurfaceTestCase.DragBy(C: TControl; X, Y, DX, DY: Integer; const Keys: string);
var
  P: TPoint;
begin
  MouseMoveTo(C, X, Y);
  if Keys <> '' then
    XDo('keydown ' + Keys);
  MouseDown;
  DrainMessages(60);
  P := ScreenPoint(C, X, Y);
  XDo(Format('mousemove --sync %d %d', [P.X + DX div 3, P.Y + DY div 3]));
  DrainMessages(30);
  XDo(Format('mousemove --sync %d %d', [P.X + (2 * DX) div 3, P.Y + (2 * DY) div 3]));
  DrainMessages(30);
  XDo(Format('mousemove --sync %d %d', [P.X + DX, P.Y + DY]));
  DrainMessages(60);
  MouseUp;
  if Keys <> '' then
    XDo('keyup ' + Keys);
  DrainMessages(80);
end;

procedure TQorSurfaceTestCase.ShiftClick(C: TControl; X, Y: Integer);
begin
  MouseMoveTo(C, X, Y);
  XDo('keydown shift');
  XDo('click 1');
  XDo('keyup shift');
  DrainMessages(80);
end;

procedure TQorSurfaceTestCase.WaitSelection(const Expected: string);

  function Selected: Boolean;
  begin
    Result := SelNames = Expected;
  end;

begin
  WaitUntil(@Selected);
  AssertEquals('SelectedComps', Expected, SelNames);
end;

{ TTestDesignSurface }

procedure TTestDesignSurface.TestDesigningOnSelectsTheStage;
begin
  StartDesigning;
  AssertEquals('SelectedComps', 'StageForm', SelNames);
  AssertSame('the stage sizer is bound to the stage', Stage, Manager.StageSizer.Control);
  AssertEquals('no control sizer', 0, Manager.Sizers.Count);
end;

procedure TTestDesignSurface.TestClickOnButtonSelectsItWithoutOnClick;
begin
  StartDesigning;
  Click(Button2, 30, 12);
  WaitSelection('Button2');
  DrainMessages(100);
  AssertEquals('one sizer', 1, Manager.Sizers.Count);
  AssertTrue('single mode', SizerOf(Button2).SizerMode = smSingle);
  AssertNull('the stage sizer is unbound', Manager.StageSizer.Control);
  AssertEquals('OnClick does not fire', 0, Clicks);
  AssertEquals('the center has the same selection', 1, Center.SelectedComps.Count);
end;

procedure TTestDesignSurface.TestScreenshotsShowHandlesAndControls;
var
  Bmp: TBitmap;
  P: TPoint;
  Handle5, Inside: TColor;
  Sizer: TQorSizer;
  Dir: string;
begin
  Dir := ExtractFilePath(ParamStr(0)) + '../docs/img/';
  StartDesigning;
  Click(Button2, 30, 12);
  WaitSelection('Button2');
  DrainMessages(200);
  Sizer := SizerOf(Button2);
  Bmp := GrabClient(Stage);
  try
    SavePng(Bmp, Dir + 'surface-one-selected.png');
    // The bottom-right handle is drawn in the single-selection colour.
    P := Point(Sizer.Left + Sizer.Width - 3, Sizer.Top + Sizer.Height - 3);
    Handle5 := Bmp.Canvas.Pixels[P.X, P.Y];
    AssertEquals('bottom-right handle pixel', ColorToRGB(Sizer.SingleSelColor), Handle5);
    // The button is still visible inside its sizer: its face is not the
    // sizer's or the stage's colour at its centre ... (sampled a few pixels
    // off the caption).
    Inside := Bmp.Canvas.Pixels[Button2.Left + 6, Button2.Top + Button2.Height div 2];
    AssertTrue('the button shows through its sizer', Inside <> ColorToRGB(Sizer.SingleSelColor));
  finally
    Bmp.Free;
  end;
end;

initialization
  RegisterTest(TTestDesignSurface);
end.
