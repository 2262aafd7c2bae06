{ QorDesign tests — the "Edge cases worth testing" of Parts 1.2 to 1.5 that
  the gesture tests of TestDesignSurface do not already cover, by direct
  calls and messages on a shown, designed stage. }
unit TestSurfaceEdges;

{$mode objfpc}{$H+}
{$modeswitch nestedprocvars}

interface

uses
  // RTL / FCL
  Classes, SysUtils, Types, Contnrs, fpcunit, testregistry,
  // LCL
  LCLType, LCLIntf, LMessages, Controls, StdCtrls, ExtCtrls, Forms, Graphics,
  // ours
  QorGuiTest, QorDesigner, QorDesignConsole, TestDesignSurface;

type
  { A control class without a default size. }
  TZeroSizeControl = class(TCustomControl)
  protected
    class function GetControlClassDefaultSize: TSize; override;
  end;

  { TTestSurfaceEdges }

  TTestSurfaceEdges = class(TQorSurfaceTestCase)
  published
    // Part 1.2
    procedure TestClickOnLabelInPanelGivesResult102;
    procedure TestProgrammaticMoveClimbsToStageManagerHearsOnce;
    procedure TestNewComponentWithoutDefaultSizeIs50By50OtherKeepsItsSize;
    procedure TestDestroyingProxyDuringInlineEditingEndsItFirst;
    // Part 1.3
    procedure TestSizerOver40By20ControlIs44By24WithTopMiddleHandleAt19To24;
    procedure TestCtrlRightMovesThreeSiblingsAndFreesFourthInOtherContainer;
    procedure TestClickOnChildInsideSelectedPanelReachesTheChild;
    // Part 1.4
    procedure TestRubberBandFrom50_50To10_80HasBounds10_50_50_80;
    procedure TestRubberBandDraggedToMinus20Minus5EndsAt1_1;
    procedure TestSetGridSizeBelowOneSetsFour;
    procedure TestDrawGridOn100By50Draws26By13Dots;
    // Part 1.5
    procedure TestRubberBandTouchingOnlyAnEdgeSelects;
    procedure TestDroppedComponentWithClashingNameIsRenamed;
    procedure TestPrintStageOnPanelStageDoesNothing;
    procedure TestDeselectUnsiblingControlKeepsSiblingsInOrder;
    // Ours: a sizer broadcast runs its followers inside one batch
    procedure TestDragStepBatchEndsWhenFollowersHaveMoved;
    procedure TestDesigningOffWithBatchPendingFreesTheStage;
    procedure TestFollowerLeavesFocusWithSender;
    // Ours: bulk changes on a crowded stage freeze its child windows
    procedure TestSelectAllOnCrowdedStageShowsEverySizerAndStaysLive;
  end;

implementation

class function TZeroSizeControl.GetControlClassDefaultSize: TSize;
begin
  Result.cx := 0;
  Result.cy := 0;
end;

function MouseMsg(Msg: Cardinal; X, Y: Integer; Keys: PtrInt = MK_LBUTTON): TLMessage;
begin
  FillChar(Result, SizeOf(Result), 0);
  Result.Msg := Msg;
  Result.WParam := Keys;
  Result.LParam := PointToMsgPos(X, Y);
end;

{ TTestSurfaceEdges }

procedure TTestSurfaceEdges.TestClickOnLabelInPanelGivesResult102;
var
  M: TLMessage;
begin
  StartDesigning;
  M := MouseMsg(LM_LBUTTONDOWN, PanelLabel.Left + 5, PanelLabel.Top + 5, 0);
  Panel.WindowProc(M);
  AssertEquals('a graphic child was named', QorMouseDownSelectedGraphicChild, M.Result);
  WaitSelection('Label1');
  M := MouseMsg(LM_LBUTTONDOWN, 200, 10, 0);
  Panel.WindowProc(M);
  AssertEquals('the panel itself', QorMouseDownSelectedSelf, M.Result);
  WaitSelection('Panel1');
end;

procedure TTestSurfaceEdges.TestProgrammaticMoveClimbsToStageManagerHearsOnce;
var
  Before: Integer;

  function Heard: Boolean;
  begin
    Result := Manager.CtrlMovedCount > Before;
  end;

begin
  StartDesigning;
  Manager.SelectControl(PanelButton, Point(-1, -1), csmSelect, True, False);
  DrainMessages(150);
  Before := Manager.CtrlMovedCount;
  PanelButton.Left := PanelButton.Left + 7;
  AssertWait('the stage heard of the move', @Heard);
  DrainMessages(250);
  AssertEquals('the manager heard of it once', Before + 1, Manager.CtrlMovedCount);
  AssertEquals('the sizer stands 2 px outside, in stage coordinates',
    Stage.ScreenToClient(PanelButton.ClientToScreen(Point(0, 0))).X - 2, SizerOf(PanelButton).Left);
end;

procedure TTestSurfaceEdges.TestNewComponentWithoutDefaultSizeIs50By50OtherKeepsItsSize;
var
  Proxy: TQorDesignWndProcProxy;
  C: TComponent;
  Fresh: TButton;
begin
  StartDesigning;
  Proxy := Manager.DesignProxies.Proxies[Manager.DesignProxies.GetControlIndex(Panel)];
  C := Proxy.DynCreateChildControl(TZeroSizeControl, Rect(30, 40, 0, 0));
  AssertEquals('width', 50, TControl(C).Width);
  AssertEquals('height', 50, TControl(C).Height);
  AssertEquals('left', 30, TControl(C).Left);
  AssertEquals('top', 40, TControl(C).Top);
  AssertEquals('named after its class', 'ZeroSizeControl1', C.Name);
  AssertSame('owned by the stage', Stage, C.Owner);
  Fresh := TButton.Create(nil);
  try
    C := Proxy.DynCreateChildControl(TButton, Rect(5, 6, 0, 0));
    AssertTrue('a button has a default size', Fresh.Width > 0);
    AssertEquals('a button keeps its default width', Fresh.Width, TControl(C).Width);
    AssertEquals('and height', Fresh.Height, TControl(C).Height);
  finally
    Fresh.Free;
  end;
  AssertEquals('Button4', C.Name);
end;

procedure TTestSurfaceEdges.TestDestroyingProxyDuringInlineEditingEndsItFirst;
var
  I: Integer;
  Proxy: TQorDesignWndProcProxy;
begin
  StartDesigning;
  Click(Edit, 20, 10);
  WaitSelection('Edit1');
  Manager.StartEmbedEdit;
  I := Manager.DesignProxies.GetControlIndex(Edit);
  Proxy := Manager.DesignProxies.Proxies[I];
  AssertTrue('inline editing runs', Proxy.InlineEditing);
  AssertTrue('the manager is in embedded editing', Manager.EmbeddedEditing);
  AssertFalse('the edit acts as an edit meanwhile', csDesigning in Edit.ComponentState);
  Manager.DesignProxies.DelProxy(I);
  AssertFalse('destroying the proxy ended the embedded editing', Manager.EmbeddedEditing);
  AssertTrue('the edit is designed again', csDesigning in Edit.ComponentState);
end;

procedure TTestSurfaceEdges.TestSizerOver40By20ControlIs44By24WithTopMiddleHandleAt19To24;
var
  Sizer: TQorSizer;
  R: TRect;
begin
  StartDesigning;
  Button3.SetBounds(330, 250, 40, 20);
  Manager.SelectControl(Button3, Point(-1, -1), csmSelect, True, False);
  DrainMessages(60);
  Sizer := SizerOf(Button3);
  AssertEquals('width', 44, Sizer.Width);
  AssertEquals('height', 24, Sizer.Height);
  AssertEquals('2 px left of it', 328, Sizer.Left);
  AssertEquals('2 px above it', 248, Sizer.Top);
  R := Sizer.HandleRects[2];
  AssertEquals('top-middle handle from x', 19, R.Left);
  AssertEquals('to x', 24, R.Right);
  AssertEquals('5 px high', 5, R.Bottom - R.Top);
end;

procedure TTestSurfaceEdges.TestCtrlRightMovesThreeSiblingsAndFreesFourthInOtherContainer;
var
  B2, B3, E, PB: TPoint;
begin
  ClickSelectThreeSiblings;
  ShiftClick(PanelButton, 30, 12);
  WaitSelection('Button2,Button3,Edit1,Button1');
  B2 := Button2.BoundsRect.TopLeft;
  B3 := Button3.BoundsRect.TopLeft;
  E := Edit.BoundsRect.TopLeft;
  PB := PanelButton.BoundsRect.TopLeft;
  // The focus is with the last selected sizer (the one in the panel): the
  // keys go to a sibling of the three instead.
  FocusSizerOf(Button2);
  PressKey('ctrl+Right');
  DrainMessages(200);
  AssertNull('the sizer in the other container is freed', SizerOf(PanelButton));
  AssertEquals('Button2', B2.X + 1, Button2.Left);
  AssertEquals('Button3', B3.X + 1, Button3.Left);
  AssertEquals('Edit1', E.X + 1, Edit.Left);
  AssertEquals('the control in the panel did not move', PB.X, PanelButton.Left);
end;

procedure TTestSurfaceEdges.TestClickOnChildInsideSelectedPanelReachesTheChild;
begin
  StartDesigning;
  Click(Panel, 200, 130);
  WaitSelection('Panel1');
  Click(PanelButton, 30, 12);
  WaitSelection('Button1');
end;

procedure TTestSurfaceEdges.TestRubberBandFrom50_50To10_80HasBounds10_50_50_80;
var
  Band: TQorRubberBand;
begin
  Band := TQorRubberBand.Create(nil);
  try
    Band.Parent := Stage;
    Band.SetPointStart(Point(50, 50));
    Band.SetPointEnd(Point(10, 80));
    AssertEquals('left', 10, Band.Left);
    AssertEquals('top', 50, Band.Top);
    AssertEquals('right', 50, Band.Left + Band.Width);
    AssertEquals('bottom', 80, Band.Top + Band.Height);
    AssertEquals('the band never takes the mouse', HTTRANSPARENT, Band.WmNcHitTest);
  finally
    Band.Free;
  end;
end;

procedure TTestSurfaceEdges.TestRubberBandDraggedToMinus20Minus5EndsAt1_1;
var
  Band: TQorRubberBand;
begin
  Band := TQorRubberBand.Create(nil);
  try
    Band.Parent := Stage;
    AssertEquals('start x after construction', -1, Band.PointStart.X);
    AssertEquals('end y after construction', -1, Band.PointEnd.Y);
    Band.SetPointStart(Point(30, 40));
    Band.SetPointEnd(Point(-20, -5));
    AssertEquals('end x', 1, Band.PointEnd.X);
    AssertEquals('end y', 1, Band.PointEnd.Y);
    AssertEquals('left', 1, Band.Left);
    AssertEquals('top', 1, Band.Top);
  finally
    Band.Free;
  end;
end;

procedure TTestSurfaceEdges.TestSetGridSizeBelowOneSetsFour;
begin
  Manager.GridSizeX := 8;
  AssertEquals(8, Manager.GridSizeX);
  Manager.GridSizeX := 0;
  AssertEquals('0 sets 4', 4, Manager.GridSizeX);
  Manager.GridSizeX := 8;
  Manager.GridSizeX := -3;
  AssertEquals('-3 sets 4', 4, Manager.GridSizeX);
  Manager.GridSizeY := 0;
  AssertEquals('the same for Y', 4, Manager.GridSizeY);
  Manager.GridSizeY := 6;
  AssertEquals(6, Manager.StageProxy.GridTemplate.Height);
end;

procedure TTestSurfaceEdges.TestDrawGridOn100By50Draws26By13Dots;
var
  Host: TPanel;
  Proxy: TQorDesignStageProxy;
  Bmp: TBitmap;
  I, J, Dots: Integer;
begin
  Host := TPanel.Create(nil);
  Proxy := TQorDesignStageProxy.Create(nil);
  Bmp := TBitmap.Create;
  try
    Host.BevelOuter := bvNone;
    Host.SetBounds(0, 0, 100, 50);
    Proxy.SetControl(Host);
    AssertEquals(100, Host.ClientWidth);
    AssertEquals(50, Host.ClientHeight);
    Bmp.SetSize(120, 70);
    Bmp.Canvas.Brush.Color := clWhite;
    Bmp.Canvas.FillRect(0, 0, 120, 70);
    Proxy.DrawGrid(Bmp.Canvas.Handle);
    Dots := 0;
    for J := 0 to 16 do
      for I := 0 to 28 do
        if Bmp.Canvas.Pixels[I * 4, J * 4] = clBlack then
          Inc(Dots);
    AssertEquals('26 by 13 dots', 26 * 13, Dots);
    AssertEquals('the first is centred at (0, 0)', clBlack, Bmp.Canvas.Pixels[0, 0]);
    AssertEquals('a dot is 2 by 2: (3,3) belongs to the dot at (4,4)', clBlack, Bmp.Canvas.Pixels[3, 3]);
    AssertEquals('between the dots nothing', clWhite, Bmp.Canvas.Pixels[2, 2]);
    AssertEquals('the last column is at x = 100', clBlack, Bmp.Canvas.Pixels[100, 48]);
    AssertEquals('none beyond it', clWhite, Bmp.Canvas.Pixels[104, 0]);
  finally
    Bmp.Free;
    Proxy.Free;
    Host.Free;
  end;
end;

procedure TTestSurfaceEdges.TestRubberBandTouchingOnlyAnEdgeSelects;
begin
  StartDesigning;
  // Button2 spans x 320..420 (right edge at 420), y 140..170.
  Manager.SelectControlInRect(Rect(420, 130, 500, 160), csmAdd);
  AssertEquals('touching the right edge selects', 'Button2', SelNames);
  Manager.SelectControl(Stage, Point(-1, -1), csmSelect, True, False);
  Manager.SelectControlInRect(Rect(421, 130, 500, 160), csmAdd);
  AssertEquals('one pixel further does not', 'StageForm', SelNames);
end;

procedure TTestSurfaceEdges.TestDroppedComponentWithClashingNameIsRenamed;
var
  B, C: TButton;
begin
  StartDesigning;
  B := TButton.Create(nil);
  B.Name := 'Button2';
  B.Parent := Stage;
  Stage.InsertComponent(B);
  AssertEquals('renamed through GetCompUniqueID', 'Button4', B.Name);
  AssertTrue('designed', csDesigning in B.ComponentState);
  C := TButton.Create(nil);
  C.Name := 'OkButton';
  C.Parent := Stage;
  Stage.InsertComponent(C);
  AssertEquals('a free name is kept', 'OkButton', C.Name);
  C := TButton.Create(nil);
  C.Parent := Stage;
  Stage.InsertComponent(C);
  AssertEquals('an empty name is given one', 'Button5', C.Name);
  AssertTrue('the manager is dirty', Manager.Dirty);
end;

procedure TTestSurfaceEdges.TestPrintStageOnPanelStageDoesNothing;
var
  M2: TQorDesignManager;
begin
  M2 := TQorDesignManager.Create(nil);
  try
    M2.DesignStage := Panel;
    Panel.InsertComponent(TComponent.Create(nil));
    M2.IsDesigning := True;
    DrainMessages(50);
    M2.SelectControl(Panel, Point(-1, -1), csmSelect, True, False);
    AssertEquals(1, M2.SelectedComps.Count);
    M2.SelectedComps.Add(Stage);
    M2.PrintStage;
    AssertEquals('the selection is left as it was', 2, M2.SelectedComps.Count);
    M2.IsDesigning := False;
  finally
    M2.Free;
  end;
end;

procedure TTestSurfaceEdges.TestDeselectUnsiblingControlKeepsSiblingsInOrder;
var
  L: TComponentList;
begin
  StartDesigning;
  L := TComponentList.Create(False);
  try
    L.Add(Button3);
    L.Add(PanelButton);
    L.Add(Edit);
    L.Add(PanelLabel);
    L.Add(Button2);
    Manager.SetSelectedComps(L);
    Manager.FillSelectedComps;
    AssertEquals('Button3,Button1,Edit1,Label1,Button2', SelNames);
    Manager.DeselectUnsiblingControl(Button2, False);
    Manager.FillSelectedComps;
    AssertEquals('Button3,Edit1,Button2', SelNames);
  finally
    L.Free;
  end;
end;

type
  TControlAccess = class(TControl);

{ A broadcast holds the stage's align (and the sizers' shapes) until the
  followers have handled their messages, then lets it go: no lock is left. }
procedure TTestSurfaceEdges.TestDragStepBatchEndsWhenFollowersHaveMoved;
var
  B2, B3, E: TPoint;
  Lock0: Integer;

  function StageLock: Integer;
  begin
    Result := TControlAccess(Stage).AutoSizingLockCount;
  end;

  function Moved: Boolean;
  begin
    Result := (Button3.Left = B3.X + 1) and (Edit.Left = E.X + 1);
  end;

begin
  StartDesigning;
  Manager.SelectControl(Button2, Point(-1, -1), csmAdd, False, False);
  Manager.SelectControl(Button3, Point(-1, -1), csmAdd, False, False);
  Manager.SelectControl(Edit, Point(-1, -1), csmAdd, False, False);
  DrainMessages(50);
  B2 := Button2.BoundsRect.TopLeft;
  B3 := Button3.BoundsRect.TopLeft;
  E := Edit.BoundsRect.TopLeft;
  Lock0 := StageLock;
  SizerOf(Button2).ManualMove(1, 0, True, True);
  AssertTrue('the stage is held while the messages are queued',
    StageLock > Lock0);
  AssertWait('followers moved', @Moved);
  DrainMessages(30);
  AssertEquals('the lock is given back', Lock0, StageLock);
  AssertEquals('Button2', B2.X + 1, Button2.Left);
  AssertEquals('Button3 sizer follows', Button3.Left - 2, SizerOf(Button3).Left);
  AssertEquals('Edit1 sizer follows', Edit.Left - 2, SizerOf(Edit).Left);
  AssertFalse('no follower is left moving', SizerOf(Edit).Moving);
end;

{ Designing ends before the closing message arrives: the lock is given back
  at once and the late message changes nothing. }
procedure TTestSurfaceEdges.TestDesigningOffWithBatchPendingFreesTheStage;
var
  Lock0: Integer;

  function StageLock: Integer;
  begin
    Result := TControlAccess(Stage).AutoSizingLockCount;
  end;

begin
  StartDesigning;
  Manager.SelectControl(Button2, Point(-1, -1), csmAdd, False, False);
  Manager.SelectControl(Button3, Point(-1, -1), csmAdd, False, False);
  DrainMessages(50);
  Lock0 := StageLock;
  SizerOf(Button2).ManualMove(1, 0, True, True);
  Manager.IsDesigning := False;
  AssertEquals('lock given back when designing ends', Lock0, StageLock);
  DrainMessages(50);
  AssertEquals('the late message takes nothing', Lock0, StageLock);
  // A new designing session is not closed by stale messages either.
  Manager.IsDesigning := True;
  Manager.SelectControl(Button2, Point(-1, -1), csmAdd, False, False);
  Manager.SelectControl(Button3, Point(-1, -1), csmAdd, False, False);
  SizerOf(Button2).ManualMove(1, 0, True, True);
  Manager.IsDesigning := False;
  Manager.IsDesigning := True;
  DrainMessages(50);
  AssertEquals('stale messages after a restart take nothing', Lock0, StageLock);
end;

{ After a drag step the focus stays with the sizer that moved, not with the
  follower that handled its message last. }
procedure TTestSurfaceEdges.TestFollowerLeavesFocusWithSender;
begin
  ClickSelectThreeSiblings;
  FocusSizerOf(Button3);
  PressKey('ctrl+Down');
  DrainMessages(150);
  AssertSame('focus with the sender', SizerOf(Button3), Screen.ActiveControl);
end;

{ 40 more buttons make Select All and designing off bulk changes (the stage's
  child windows are frozen meanwhile): afterwards every sizer is on screen
  with its corner marks, the buttons show through, a click still selects,
  and with designing off a click reaches the button again. }
procedure TTestSurfaceEdges.TestSelectAllOnCrowdedStageShowsEverySizerAndStaysLive;
var
  I: Integer;
  B: TButton;
  Extra: array of TButton;
  Bmp: TBitmap;
  S: TQorSizer;
  Total: Integer;

  function ClickedOnce: Boolean;
  begin
    Result := Clicks = 1;
  end;

  function AllShown: Boolean;
  var
    K: Integer;
  begin
    Result := Manager.Sizers.Count = Total;
    if Result then
      for K := 0 to Manager.Sizers.Count - 1 do
        if not Manager.Sizers.Sizers[K].HandleAllocated or
          not IsWindowVisible(Manager.Sizers.Sizers[K].Handle) then
          Exit(False);
  end;

begin
  SetLength(Extra, 40);
  for I := 0 to High(Extra) do
  begin
    B := TButton.Create(Stage);
    B.Name := 'Crowd' + IntToStr(I + 1);
    B.Caption := '';
    B.SetBounds(440 + (I mod 5) * 38, 20 + (I div 5) * 34, 30, 24);
    B.OnClick := @AnyClick;
    B.Parent := Stage;
    Extra[I] := B;
  end;
  DrainMessages(100);
  StartDesigning;
  Manager.SelectAllControls;
  Total := Manager.SelectedComps.Count;
  // The eight controls of the stage and the forty buttons: enough to freeze.
  AssertEquals('all selected', 8 + 40, Total);
  AssertTrue('a bulk change', Total >= QorFreezeMinOps);
  AssertWait('every sizer on screen', @AllShown);
  DrainMessages(200);
  Bmp := GrabClient(Stage);
  try
    for I := 0 to High(Extra) do
    begin
      S := SizerOf(Extra[I]);
      AssertEquals(Extra[I].Name + ': corner mark drawn', ColorToRGB(S.MultiSelColor),
        Bmp.Canvas.Pixels[S.Left + 1, S.Top + 1]);
      AssertTrue(Extra[I].Name + ': the button shows through',
        Bmp.Canvas.Pixels[Extra[I].Left + Extra[I].Width div 2, Extra[I].Top + Extra[I].Height div 2] <>
        ColorToRGB(S.MultiSelColor));
    end;
  finally
    Bmp.Free;
  end;
  // The surface still takes input: a click on the empty stage selects the
  // stage, then a click selects one button.
  Click(Stage, 620, 420);
  WaitSelection('StageForm');
  Click(Extra[7], 15, 12);
  WaitSelection('Crowd8');
  AssertEquals('no OnClick while designing', 0, Clicks);
  Manager.IsDesigning := False;
  AssertEquals('no sizer left', 0, Manager.Sizers.Count);
  Click(Extra[12], 15, 12);
  AssertWait('a click reaches the button again', @ClickedOnce);
end;

initialization
  RegisterTest(TTestSurfaceEdges);
end.
