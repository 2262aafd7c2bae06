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
  LCLType, LCLIntf, LCLProc, LMessages, Controls, StdCtrls, ExtCtrls, Forms, Graphics,
  // ours
  QorGuiTest, QorDesigner, QorDesignConsole, ObjInspect;

{ The components' names, comma-separated, in list order. }
function CompNames(List: TComponentList): string;

{ The names of the components the inspector shows, comma-separated. }
function InspectedNames(Insp: TVhoObjInspector): string;

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
    { Designing on; Button2 clicked, Button3 and Edit1 Shift-clicked. }
    procedure ClickSelectThreeSiblings;
    { Gives the sizer of C the LCL and the widgetset focus. }
    procedure FocusSizerOf(C: TControl);
    procedure WaitForComponent(const AName: string);
    { Selects the controls by calls, the first alone, the rest added. }
    procedure SelectOnly(const Controls: array of TControl);
  end;

  { TTestDesignSurface }

  TTestDesignSurface = class(TQorSurfaceTestCase)
  published
    procedure TestDesigningOnSelectsTheStage;
    procedure TestClickOnButtonSelectsItWithoutOnClick;
    procedure TestScreenshotsShowHandlesAndControls;
    procedure TestPressAndDragMovesControlByTheTravel;
    procedure TestDragOfThreeSelectedSiblingsMovesAllThree;
    procedure TestDragDeselectsControlInAnotherContainerFirst;
    procedure TestShiftClickThreeGivesClickOrderAndToggleKeepsOrder;
    procedure TestSecondSelectedControlSwitchesToCornerMarks;
    procedure TestEachHandleResizesByTheTravel;
    procedure TestCtrlArrowsMoveSelectionOnePixelPlainArrowsNothing;
    procedure TestDeleteDeletesSelectionOnceOnKeyUpShiftDeleteNothing;
    procedure TestRubberBandSelectsEveryTouchedControlEdgeIncluded;
    procedure TestClickOnLabelInPanelSelectsTheLabel;
    procedure TestCtrlClickOnButtonInPanelStartsRubberBandOnStage;
    procedure TestClassChosenClickOnPanelInsertsInsideAtClick;
    procedure TestClassChosenClickThroughButtonReachesContainer;
    procedure TestDesigningOffRestoresWindowProcsBoundsAndClicks;
    procedure TestControlFreedWhileSelectedLeavesNoSizerNoProxy;
    procedure TestFreeingManagerWhileDesigningLeavesStageUsable;
    procedure TestFreeingStageThatOwnsItsManagerWhileDesigningFreesCleanly;
  end;

implementation

function CompNames(List: TComponentList): string;
var
  I: Integer;
begin
  Result := '';
  for I := 0 to List.Count - 1 do
  begin
    if I > 0 then
      Result := Result + ',';
    Result := Result + List[I].Name;
  end;
end;

function InspectedNames(Insp: TVhoObjInspector): string;
var
  I: Integer;
begin
  Result := '';
  if (Insp.PropList.BasedObjects <> nil) and (Insp.PropList.BasedObjects.Count > 0) then
    for I := 0 to Insp.PropList.BasedObjects.Count - 1 do
    begin
      if I > 0 then
        Result := Result + ',';
      Result := Result + TComponent(Insp.PropList.BasedObjects[I]).Name;
    end
  else if Insp.PropList.GetBasedObject is TComponent then
    Result := TComponent(Insp.PropList.GetBasedObject).Name;
end;

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

procedure TQorSurfaceTestCase.SelectOnly(const Controls: array of TControl);
var
  I: Integer;
begin
  for I := 0 to High(Controls) do
    if I = 0 then
      Manager.SelectControl(Controls[I], Point(-1, -1), csmSelect, True, False)
    else
      Manager.SelectControl(Controls[I], Point(-1, -1), csmAdd, True, False);
  DrainMessages(30);
  AssertEquals('selected', Length(Controls), Manager.SelectedComps.Count);
end;

procedure TQorSurfaceTestCase.StartDesigning;
begin
  Manager.IsDesigning := True;
  DrainMessages(50);
end;

function TQorSurfaceTestCase.SelNames: string;
begin
  Result := CompNames(Manager.SelectedComps);
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
    KeyHold(Keys);
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
    KeyRelease(Keys);
  DrainMessages(80);
end;

procedure TQorSurfaceTestCase.ShiftClick(C: TControl; X, Y: Integer);
begin
  MouseMoveTo(C, X, Y);
  KeyHold('shift');
  XDo('click 1');
  KeyRelease('shift');
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

procedure TQorSurfaceTestCase.ClickSelectThreeSiblings;
begin
  StartDesigning;
  Click(Button2, 30, 12);
  WaitSelection('Button2');
  ShiftClick(Button3, 30, 12);
  ShiftClick(Edit, 30, 10);
  WaitSelection('Button2,Button3,Edit1');
end;

procedure TQorSurfaceTestCase.FocusSizerOf(C: TControl);
begin
  SizerOf(C).SetFocus;
  LCLIntf.SetFocus(SizerOf(C).Handle);
  DrainMessages(50);
end;

procedure TQorSurfaceTestCase.WaitForComponent(const AName: string);

  function Exists: Boolean;
  begin
    Result := Stage.FindComponent(AName) <> nil;
  end;

begin
  AssertWait(AName + ' was created', @Exists);
  DrainMessages(60);
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
  I, Dots: Integer;
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
  // Three selected: corner marks in the multi colour, controls visible.
  ShiftClick(Button3, 30, 12);
  ShiftClick(Edit, 30, 10);
  WaitSelection('Button2,Button3,Edit1');
  DrainMessages(200);
  Bmp := GrabClient(Stage);
  try
    SavePng(Bmp, Dir + 'surface-three-selected.png');
    Sizer := SizerOf(Edit);
    AssertEquals('a corner mark of the edit''s sizer', ColorToRGB(Sizer.MultiSelColor),
      Bmp.Canvas.Pixels[Sizer.Left + Sizer.Width - 2, Sizer.Top + 1]);
    AssertEquals('the edit shows through its sizer (white field)', clWhite,
      Bmp.Canvas.Pixels[Edit.Left + Edit.Width - 8, Edit.Top + Edit.Height div 2]);
  finally
    Bmp.Free;
  end;
  // A rubber band in progress: its dotted outline is drawn.
  MouseMoveTo(Stage, 560, 300);
  MouseDown;
  DrainMessages(60);
  P := ScreenPoint(Stage, 0, 0);
  XDo(Format('mousemove --sync %d %d', [P.X + 500, P.Y + 250]));
  DrainMessages(40);
  XDo(Format('mousemove --sync %d %d', [P.X + 300, P.Y + 120]));
  DrainMessages(200);
  Bmp := GrabClient(Stage);
  try
    SavePng(Bmp, Dir + 'surface-rubber-band.png');
    AssertTrue('the band shows', Manager.IsRubbering);
    Dots := 0;
    for I := 300 to 559 do
      if Bmp.Canvas.Pixels[I, 300 - 1] = clBlack then
        Inc(Dots);
    AssertTrue(Format('the band''s bottom edge is dotted black (%d black pixels)', [Dots]),
      (Dots > 40) and (Dots < 240));
  finally
    Bmp.Free;
  end;
  MouseUp;
  DrainMessages(100);
end;

procedure TTestDesignSurface.TestPressAndDragMovesControlByTheTravel;
var
  Before: TRect;
begin
  StartDesigning;
  Before := Button2.BoundsRect;
  DragBy(Button2, 30, 12, 37, 23);
  AssertEquals('SelectedComps', 'Button2', SelNames);
  AssertEquals('left moved by the travel', Before.Left + 37, Button2.Left);
  AssertEquals('top moved by the travel', Before.Top + 23, Button2.Top);
  AssertEquals('width kept', Before.Right - Before.Left, Button2.Width);
  AssertEquals('OnClick does not fire', 0, Clicks);
  AssertTrue('the sizer follows the control',
    (SizerOf(Button2).Left = Button2.Left - 2) and (SizerOf(Button2).Top = Button2.Top - 2));
end;

procedure TTestDesignSurface.TestDragOfThreeSelectedSiblingsMovesAllThree;
var
  B2, B3, E: TPoint;
begin
  ClickSelectThreeSiblings;
  B2 := Button2.BoundsRect.TopLeft;
  B3 := Button3.BoundsRect.TopLeft;
  E := Edit.BoundsRect.TopLeft;
  DragBy(Button3, 30, 12, -41, 17);
  AssertEquals('selection kept', 'Button2,Button3,Edit1', SelNames);
  AssertEquals('Button3 left', B3.X - 41, Button3.Left);
  AssertEquals('Button3 top', B3.Y + 17, Button3.Top);
  AssertEquals('Button2 left', B2.X - 41, Button2.Left);
  AssertEquals('Button2 top', B2.Y + 17, Button2.Top);
  AssertEquals('Edit1 left', E.X - 41, Edit.Left);
  AssertEquals('Edit1 top', E.Y + 17, Edit.Top);
end;

procedure TTestDesignSurface.TestDragDeselectsControlInAnotherContainerFirst;
var
  PB: TRect;
  B2: TPoint;
begin
  StartDesigning;
  Click(Button2, 30, 12);
  WaitSelection('Button2');
  ShiftClick(PanelButton, 30, 12);
  WaitSelection('Button2,Button1');
  PB := PanelButton.BoundsRect;
  B2 := Button2.BoundsRect.TopLeft;
  DragBy(Button2, 30, 12, 15, 9);
  AssertNull('the sizer of the control in the panel is freed', SizerOf(PanelButton));
  AssertEquals('one sizer left', 1, Manager.Sizers.Count);
  AssertEquals('Button2 moved', B2.X + 15, Button2.Left);
  AssertTrue('the control in the panel did not move', EqualRect(PB, PanelButton.BoundsRect));
end;

procedure TTestDesignSurface.TestShiftClickThreeGivesClickOrderAndToggleKeepsOrder;
begin
  StartDesigning;
  ShiftClick(Button3, 30, 12);
  ShiftClick(Edit, 30, 10);
  ShiftClick(Button2, 30, 12);
  WaitSelection('Button3,Edit1,Button2');
  ShiftClick(Edit, 30, 10);
  WaitSelection('Button3,Button2');
  AssertEquals('OnClick does not fire', 0, Clicks);
end;

procedure TTestDesignSurface.TestSecondSelectedControlSwitchesToCornerMarks;
var
  Bmp: TBitmap;
  S2, S3: TQorSizer;
begin
  StartDesigning;
  Click(Button2, 30, 12);
  WaitSelection('Button2');
  AssertTrue('one selected: single mode', SizerOf(Button2).SizerMode = smSingle);
  ShiftClick(Button3, 30, 12);
  WaitSelection('Button2,Button3');
  S2 := SizerOf(Button2);
  S3 := SizerOf(Button3);
  AssertTrue('first sizer in multi mode', S2.SizerMode = smMulti);
  AssertTrue('second sizer in multi mode', S3.SizerMode = smMulti);
  DrainMessages(150);
  Bmp := GrabClient(Stage);
  try
    AssertEquals('a corner mark in the multi colour', ColorToRGB(S2.MultiSelColor),
      Bmp.Canvas.Pixels[S2.Left + 1, S2.Top + 1]);
    AssertTrue('no top-middle handle any more',
      Bmp.Canvas.Pixels[S2.Left + S2.Width div 2, S2.Top + 1] <> ColorToRGB(S2.MultiSelColor));
    AssertTrue('nor one in the single colour',
      Bmp.Canvas.Pixels[S2.Left + S2.Width div 2, S2.Top + 1] <> ColorToRGB(S2.SingleSelColor));
  finally
    Bmp.Free;
  end;
end;

procedure TTestDesignSurface.TestEachHandleResizesByTheTravel;
const
  DX = 13;
  DY = 9;
var
  I: Integer;
  Before, Expected: TRect;
  Sizer: TQorSizer;
  R: TRect;
  C: TPoint;
begin
  StartDesigning;
  for I := 1 to 8 do
  begin
    Click(Button2, 30, 12);
    WaitSelection('Button2');
    DrainMessages(60);
    Sizer := SizerOf(Button2);
    AssertNotNull('sizer', Sizer);
    Before := Button2.BoundsRect;
    R := Sizer.HandleRects[I];
    C := Point((R.Left + R.Right) div 2, (R.Top + R.Bottom) div 2);
    DragBy(Sizer, C.X, C.Y, DX, DY);
    Expected := Before;
    case Sizer.HitCodes[I] of
      HTTOPLEFT: begin Inc(Expected.Left, DX); Inc(Expected.Top, DY); end;
      HTTOP: Inc(Expected.Top, DY);
      HTTOPRIGHT: begin Inc(Expected.Right, DX); Inc(Expected.Top, DY); end;
      HTRIGHT: Inc(Expected.Right, DX);
      HTBOTTOMRIGHT: begin Inc(Expected.Right, DX); Inc(Expected.Bottom, DY); end;
      HTBOTTOM: Inc(Expected.Bottom, DY);
      HTBOTTOMLEFT: begin Inc(Expected.Left, DX); Inc(Expected.Bottom, DY); end;
      HTLEFT: Inc(Expected.Left, DX);
    end;
    AssertEquals(Format('handle %d left', [I]), Expected.Left, Button2.Left);
    AssertEquals(Format('handle %d top', [I]), Expected.Top, Button2.Top);
    AssertEquals(Format('handle %d width', [I]), Expected.Right - Expected.Left, Button2.Width);
    AssertEquals(Format('handle %d height', [I]), Expected.Bottom - Expected.Top, Button2.Height);
    Button2.BoundsRect := Before;
  end;
end;

procedure TTestDesignSurface.TestCtrlArrowsMoveSelectionOnePixelPlainArrowsNothing;
var
  B2, B3: TPoint;

  procedure Check(const Key: string; DX, DY: Integer);
  begin
    PressKey(Key);
    DrainMessages(120);
    // The arrow must not move the focus on to a control of the stage.
    AssertTrue(Key + ': focus stays on a sizer', Screen.ActiveControl is TQorSizer);
    AssertEquals(Key + ': Button2 left', B2.X + DX, Button2.Left);
    AssertEquals(Key + ': Button2 top', B2.Y + DY, Button2.Top);
    AssertEquals(Key + ': Button3 left', B3.X + DX, Button3.Left);
    AssertEquals(Key + ': Button3 top', B3.Y + DY, Button3.Top);
    B2 := Button2.BoundsRect.TopLeft;
    B3 := Button3.BoundsRect.TopLeft;
  end;

begin
  StartDesigning;
  Click(Button2, 30, 12);
  WaitSelection('Button2');
  ShiftClick(Button3, 30, 12);
  WaitSelection('Button2,Button3');
  B2 := Button2.BoundsRect.TopLeft;
  B3 := Button3.BoundsRect.TopLeft;
  Check('ctrl+Right', 1, 0);
  Check('ctrl+Left', -1, 0);
  Check('ctrl+Down', 0, 1);
  Check('ctrl+Up', 0, -1);
  Check('Right', 0, 0);
  Check('Down', 0, 0);
  AssertEquals('selection kept', 'Button2,Button3', SelNames);
end;

procedure TTestDesignSurface.TestDeleteDeletesSelectionOnceOnKeyUpShiftDeleteNothing;
var
  Deleted: Boolean;
  Count0: Integer;

  function Gone: Boolean;
  begin
    Result := Stage.FindComponent('Button3') = nil;
  end;

begin
  StartDesigning;
  Click(Button3, 30, 12);
  WaitSelection('Button3');
  Count0 := Stage.ComponentCount;
  KeyHold('shift');
  DrainMessages(30);
  PressKey('Delete');
  DrainMessages(150);
  KeyRelease('shift');
  DrainMessages(50);
  AssertNotNull('Shift+Delete deletes nothing', Stage.FindComponent('Button3'));
  KeyHold('Delete');
  DrainMessages(150);
  AssertNotNull('nothing is deleted on key down', Stage.FindComponent('Button3'));
  KeyRelease('Delete');
  Deleted := WaitUntil(@Gone);
  AssertTrue('plain Delete deletes the selection on key up', Deleted);
  Button3 := nil;
  DrainMessages(100);
  AssertEquals('exactly one component deleted', Count0 - 1, Stage.ComponentCount);
  AssertEquals('the stage is selected afterwards', 'StageForm', SelNames);
  AssertEquals('no sizer left', 0, Manager.Sizers.Count);
end;

procedure TTestDesignSurface.TestRubberBandSelectsEveryTouchedControlEdgeIncluded;
var
  P0: TPoint;
  Band: TQorRubberBand;
  Seen: Boolean;
begin
  StartDesigning;
  // From the empty stage right of the buttons to exactly Button2's right
  // edge column (x = 419) and down over Button3: Button2 and Button3 are
  // touched, Button3 only... both at their right edge.
  MouseMoveTo(Stage, 540, 130);
  MouseDown;
  DrainMessages(80);
  P0 := ScreenPoint(Stage, 0, 0);
  XDo(Format('mousemove --sync %d %d', [P0.X + 480, P0.Y + 170]));
  DrainMessages(40);
  XDo(Format('mousemove --sync %d %d', [P0.X + 419, P0.Y + 215]));
  DrainMessages(80);
  Band := Manager.StageProxy.RubberBand;
  Seen := (Band <> nil) and Band.Visible;
  AssertTrue('a rubber band is shown while dragging', Seen);
  AssertEquals('band left', 419, Band.Left);
  AssertEquals('band top', 130, Band.Top);
  AssertEquals('band right', 540, Band.Left + Band.Width);
  AssertEquals('band bottom', 215, Band.Top + Band.Height);
  MouseUp;
  DrainMessages(120);
  AssertNull('the band is gone after the release', Manager.StageProxy.RubberBand);
  AssertEquals('SelectedComps in stage component order', 'Button2,Button3', SelNames);
end;

procedure TTestDesignSurface.TestClickOnLabelInPanelSelectsTheLabel;
begin
  StartDesigning;
  Click(PanelLabel, 10, 8);
  WaitSelection('Label1');
  AssertEquals('OnClick of the label does not fire', 0, Clicks);
end;

procedure TTestDesignSurface.TestCtrlClickOnButtonInPanelStartsRubberBandOnStage;
var
  P: TPoint;

  function Rubbering: Boolean;
  begin
    Result := Manager.IsRubbering;
  end;

begin
  StartDesigning;
  MouseMoveTo(PanelButton, 30, 12);
  KeyHold('ctrl');
  MouseDown;
  AssertWait('a Ctrl-press on the button starts a rubber band on the stage', @Rubbering);
  AssertNull('the press did not select the button', SizerOf(PanelButton));
  AssertEquals('the press selected the stage', 'StageForm', SelNames);
  P := ScreenPoint(Stage, 5, 5);
  XDo(Format('mousemove --sync %d %d', [P.X + 100, P.Y + 100]));
  XDo(Format('mousemove --sync %d %d', [P.X, P.Y]));
  DrainMessages(60);
  MouseUp;
  KeyRelease('ctrl');
  DrainMessages(120);
  AssertFalse('the band ended', Manager.IsRubbering);
  // The band reached from the button to the stage's corner: it touches the
  // panel and the button in it (every stage component, any depth).
  AssertEquals('the band selected what it touched', 'Panel1,Button1', SelNames);
end;

procedure TTestDesignSurface.TestClassChosenClickOnPanelInsertsInsideAtClick;
var
  B: TComponent;
begin
  StartDesigning;
  Center.PalleteSelectedClass := TButton;
  Click(Panel, 150, 100);
  WaitForComponent('Button4');
  B := Stage.FindComponent('Button4');
  // The new component gets the only sizer; the Part selects it without
  // notifying (the tree view's insert path refreshes the lists).
  AssertNotNull('the new button has a sizer', SizerOf(TControl(B)));
  AssertEquals('only it', 1, Manager.Sizers.Count);
  AssertNotNull('a new button named after GetCompUniqueID', B);
  AssertSame('inside the panel', Panel, TControl(B).Parent);
  AssertEquals('at the click x', 150, TControl(B).Left);
  AssertEquals('at the click y', 100, TControl(B).Top);
  AssertSame('owned by the stage', Stage, B.Owner);
  AssertTrue('the palette choice is dropped', Center.PalleteSelectedClass = nil);
  AssertTrue('the new button is designed', csDesigning in B.ComponentState);
  AssertTrue('and proxied', Manager.DesignProxies.GetControlIndex(TControl(B)) >= 0);
end;

procedure TTestDesignSurface.TestClassChosenClickThroughButtonReachesContainer;
var
  B: TControl;
begin
  StartDesigning;
  Center.PalleteSelectedClass := TLabel;
  // A button cannot hold children: the click reaches the panel beneath.
  Click(PanelButton, 10, 10);
  WaitForComponent('Label2');
  B := TControl(Stage.FindComponent('Label2'));
  AssertNotNull(B);
  AssertNotNull('the new label has a sizer', SizerOf(B));
  AssertNull('the button was not selected', SizerOf(PanelButton));
  AssertSame('the label went into the panel', Panel, B.Parent);
  AssertEquals('at the click, in the panel''s coordinates', PanelButton.Left + 10, B.Left);
  AssertEquals(PanelButton.Top + 10, B.Top);
end;

procedure TTestDesignSurface.TestDesigningOffRestoresWindowProcsBoundsAndClicks;
var
  Procs: array of TMethod;
  Bounds: array of TRect;
  Ctrls: array of TControl;
  I: Integer;

  function Clicked: Boolean;
  begin
    Result := Clicks > 0;
  end;

begin
  SetLength(Ctrls, 7);
  Ctrls[0] := Panel; Ctrls[1] := PanelButton; Ctrls[2] := Edit; Ctrls[3] := Memo;
  Ctrls[4] := CheckBox; Ctrls[5] := Button2; Ctrls[6] := Stage;
  SetLength(Procs, Length(Ctrls));
  SetLength(Bounds, Length(Ctrls));
  for I := 0 to High(Ctrls) do
  begin
    Procs[I] := TMethod(Ctrls[I].WindowProc);
    Bounds[I] := Ctrls[I].BoundsRect;
  end;
  StartDesigning;
  AssertTrue('designing replaced the button''s WindowProc',
    TMethod(PanelButton.WindowProc).Code <> Procs[1].Code);
  Click(Button2, 30, 12);
  WaitSelection('Button2');
  ShiftClick(Button3, 30, 12);
  Manager.IsDesigning := False;
  DrainMessages(100);
  for I := 0 to High(Ctrls) do
  begin
    AssertTrue(Ctrls[I].Name + ': WindowProc code restored', TMethod(Ctrls[I].WindowProc).Code = Procs[I].Code);
    AssertTrue(Ctrls[I].Name + ': WindowProc data restored', TMethod(Ctrls[I].WindowProc).Data = Procs[I].Data);
    AssertTrue(Ctrls[I].Name + ': bounds unchanged', EqualRect(Bounds[I], Ctrls[I].BoundsRect));
    AssertFalse(Ctrls[I].Name + ': not designing', csDesigning in Ctrls[I].ComponentState);
  end;
  AssertEquals('no sizer remains', 0, Manager.Sizers.Count);
  AssertNull('no rubber band remains', Manager.StageProxy.RubberBand);
  AssertNull('the stage sizer is unbound', Manager.StageSizer.Control);
  for I := 0 to Stage.ControlCount - 1 do
    AssertFalse('no sizer window on the stage', Stage.Controls[I] is TQorSizer);
  Click(Button2, 30, 12);
  AssertWait('the button acts as a button again', @Clicked);
end;

procedure TTestDesignSurface.TestControlFreedWhileSelectedLeavesNoSizerNoProxy;
var
  I: Integer;
begin
  StartDesigning;
  Click(Button2, 30, 12);
  WaitSelection('Button2');
  AssertTrue('proxied', Manager.DesignProxies.GetControlIndex(Button2) >= 0);
  Button2.Free;
  Button2 := nil;
  DrainMessages(100);
  AssertEquals('no sizer', 0, Manager.Sizers.Count);
  for I := 0 to Manager.DesignProxies.Count - 1 do
    AssertTrue('no proxy without its control', Manager.DesignProxies.Proxies[I].Control <> nil);
  for I := 0 to Stage.ControlCount - 1 do
    AssertFalse('no sizer window on the stage', Stage.Controls[I] is TQorSizer);
  AssertTrue('not in the selection', Pos('Button2', SelNames) = 0);
  // Designing goes on: another control can be selected.
  Click(Button3, 30, 12);
  WaitSelection('Button3');
end;

procedure TTestDesignSurface.TestFreeingManagerWhileDesigningLeavesStageUsable;
var
  Proc: TMethod;

  function Clicked: Boolean;
  begin
    Result := Clicks > 0;
  end;

begin
  Proc := TMethod(Button2.WindowProc);
  StartDesigning;
  Click(Button2, 30, 12);
  WaitSelection('Button2');
  FreeAndNil(Manager);
  DrainMessages(100);
  AssertTrue('WindowProc restored', TMethod(Button2.WindowProc).Code = Proc.Code);
  AssertFalse('not designing', csDesigning in Button2.ComponentState);
  AssertNull('no designer on the form', Stage.Designer);
  Click(Button2, 30, 12);
  AssertWait('the stage is usable: the button clicks', @Clicked);
end;

{ The application frees the stage form while designing, the manager among
  its own components: they are freed after the controls were marked
  destroying, and a control removed from its parent afterwards must not
  reach a freed hook. }
procedure TTestDesignSurface.TestFreeingStageThatOwnsItsManagerWhileDesigningFreesCleanly;
var
  Errors: Integer;
begin
  StartDesigning;
  Click(Button2, 30, 12);
  WaitSelection('Button2');
  AssertTrue('the manager belongs to the stage', Manager.Owner = Stage);
  Errors := 0;
  try
    FreeForm(Stage);
  except
    Inc(Errors);
  end;
  Manager := nil;
  Center := nil;
  Stage := nil;
  DrainMessages(100);
  AssertEquals('freed without an error', 0, Errors);
end;

initialization
  RegisterTest(TTestDesignSurface);
end.
