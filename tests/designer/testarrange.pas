{ QorDesign tests — Part 1.6, the arrange operations of the design manager
  (align, size, scale, flip) on a shown, designed stage: every "Edge case
  worth testing" of the Part, the space-equal division by zero, and the
  sizers and the center following an alignment. }
unit TestArrange;

{$mode objfpc}{$H+}
{$modeswitch nestedprocvars}

interface

uses
  // RTL / FCL
  Classes, SysUtils, Contnrs, fpcunit, testregistry,
  // LCL
  Controls, StdCtrls, ExtCtrls, Forms,
  // ours
  QorGuiTest, QorDesigner, QorDesignConsole, TestDesignSurface;

type

  { TTestArrange }

  TTestArrange = class(TQorSurfaceTestCase)
  private
    FMoves: Integer;
    procedure Moved(Sender: TObject);
    function NewButton(AParent: TWinControl; const AName: string;
      ALeft, ATop, AWidth, AHeight: Integer): TButton;
    function NewPanel(const AName: string; ALeft, ATop, AWidth, AHeight: Integer): TPanel;
  protected
    procedure SetUp; override;
  published
    procedure TestTwoButtonsAt10And200AlignLeftRightAndCentersTo10_200_96;
    procedure TestCenterInWindowParentWidth301Width100GivesLeft100;
    procedure TestToLargestWidthMakes40_75_60All75HeightsStay;
    procedure TestToSmallestHeightTakesTheMinimumWidthsStay;
    procedure TestCustomWidthMinusOneLeavesWidthsUnchanged;
    procedure TestOnlyNonVisualComponentsSelectedAlignmentDoesNothing;
    procedure TestSpaceEqualThreeControlsSpan100GivesLefts10_60_110InOrderOfLeft;
    procedure TestSpaceEqualVerticalSpreadsTopEdges;
    procedure TestSpaceEqualWithOneControlRaisesFloatingDivisionByZero;
    procedure TestAlignmentMovesTheSizersAndTellsTheCenter;
    procedure TestScaleSelectedDoublesPanelAndItsChildrenNotAGraphicControl;
    procedure TestScaleAllScalesTheStagesControls;
    procedure TestFlipSelectedPanelMirrorsItsChildren;
  end;

implementation

procedure TTestArrange.SetUp;
begin
  inherited SetUp;
  FMoves := 0;
  Center.OnControlsMoved := @Moved;
  StartDesigning;
end;

procedure TTestArrange.Moved(Sender: TObject);
begin
  Inc(FMoves);
end;

function TTestArrange.NewButton(AParent: TWinControl; const AName: string;
  ALeft, ATop, AWidth, AHeight: Integer): TButton;
begin
  Result := TButton.Create(Stage);
  Result.Name := AName;
  Result.Parent := AParent;
  Result.SetBounds(ALeft, ATop, AWidth, AHeight);
  DrainMessages(20);
end;

function TTestArrange.NewPanel(const AName: string;
  ALeft, ATop, AWidth, AHeight: Integer): TPanel;
begin
  Result := TPanel.Create(Stage);
  Result.Name := AName;
  Result.Parent := Stage;
  Result.SetBounds(ALeft, ATop, AWidth, AHeight);
end;

procedure TTestArrange.TestTwoButtonsAt10And200AlignLeftRightAndCentersTo10_200_96;
var
  A, B: TButton;

  procedure Reset;
  begin
    A.Left := 10;
    B.Left := 200;
  end;

begin
  A := NewButton(Stage, 'ButtonA', 10, 300, 75, 25);
  B := NewButton(Stage, 'ButtonB', 200, 340, 75, 25);
  SelectOnly([A, B]);
  Manager.SetSelCtrlDesignAligment(asLeftOrTop, asNoChange);
  AssertEquals('A left', 10, A.Left);
  AssertEquals('B left', 10, B.Left);
  AssertEquals('tops unchanged', 340, B.Top);
  Reset;
  Manager.SetSelCtrlDesignAligment(asRightOrBottom, asNoChange);
  AssertEquals('A right-aligned', 200, A.Left);
  AssertEquals('B right-aligned', 200, B.Left);
  Reset;
  Manager.SetSelCtrlDesignAligment(asCenters, asNoChange);
  // Round((275 - 10 + 1 - 75) / 2) = Round(95.5) = 96, from the parent's origin.
  AssertEquals('A centred', 96, A.Left);
  AssertEquals('B centred', 96, B.Left);
end;

procedure TTestArrange.TestCenterInWindowParentWidth301Width100GivesLeft100;
var
  P: TPanel;
  A: TButton;
begin
  P := NewPanel('Panel301', 300, 260, 301, 120);
  A := NewButton(P, 'ButtonA', 7, 9, 100, 25);
  SelectOnly([A]);
  Manager.SetSelCtrlDesignAligment(asCenterInWindow, asNoChange);
  AssertEquals('Round(100.5) = 100, halves to even', 100, A.Left);
  Manager.SetSelCtrlDesignAligment(asNoChange, asCenterInWindow);
  // Round((120 - 25) / 2) = Round(47.5) = 48.
  AssertEquals('vertical centre in the parent''s Height', 48, A.Top);
end;

procedure TTestArrange.TestToLargestWidthMakes40_75_60All75HeightsStay;
var
  A, B, C: TButton;
begin
  A := NewButton(Stage, 'ButtonA', 10, 300, 40, 21);
  B := NewButton(Stage, 'ButtonB', 100, 300, 75, 27);
  C := NewButton(Stage, 'ButtonC', 200, 300, 60, 33);
  SelectOnly([A, B, C]);
  Manager.SetSelCtrlDesignSize(ssToLargest, ssNoChange, 0, 0);
  AssertEquals('A', 75, A.Width);
  AssertEquals('B', 75, B.Width);
  AssertEquals('C', 75, C.Width);
  AssertEquals('A height', 21, A.Height);
  AssertEquals('B height', 27, B.Height);
  AssertEquals('C height', 33, C.Height);
end;

procedure TTestArrange.TestToSmallestHeightTakesTheMinimumWidthsStay;
var
  A, B: TButton;
begin
  A := NewButton(Stage, 'ButtonA', 10, 300, 40, 21);
  B := NewButton(Stage, 'ButtonB', 100, 300, 75, 37);
  SelectOnly([A, B]);
  Manager.SetSelCtrlDesignSize(ssNoChange, ssToSmallest, 0, 0);
  AssertEquals('A height', 21, A.Height);
  AssertEquals('B height', 21, B.Height);
  AssertEquals('A width', 40, A.Width);
  AssertEquals('B width', 75, B.Width);
  Manager.SetSelCtrlDesignSize(ssCustom, ssCustom, 90, 30);
  AssertEquals('custom width', 90, B.Width);
  AssertEquals('custom height', 30, A.Height);
end;

procedure TTestArrange.TestCustomWidthMinusOneLeavesWidthsUnchanged;
var
  A, B: TButton;
begin
  A := NewButton(Stage, 'ButtonA', 10, 300, 40, 21);
  B := NewButton(Stage, 'ButtonB', 100, 300, 75, 27);
  SelectOnly([A, B]);
  Manager.SetSelCtrlDesignSize(ssCustom, ssCustom, -1, 44);
  AssertEquals('A width', 40, A.Width);
  AssertEquals('B width', 75, B.Width);
  AssertEquals('heights set', 44, B.Height);
end;

procedure TTestArrange.TestOnlyNonVisualComponentsSelectedAlignmentDoesNothing;
var
  Timer: TComponent;
  List: TComponentList;
  L: Integer;
begin
  Timer := TComponent.Create(Stage);
  Timer.Name := 'NonVisual1';
  List := TComponentList.Create(False);
  try
    List.Add(Timer);
    Manager.SetSelectedComps(List);
  finally
    List.Free;
  end;
  AssertEquals('only the non-visual component', 1, Manager.SelectedComps.Count);
  AssertSame('it', Timer, Manager.SelectedComps[0]);
  L := Button2.Left;
  FMoves := 0;
  Manager.SetSelCtrlDesignAligment(asLeftOrTop, asLeftOrTop);
  Manager.SetSelCtrlDesignAligment(asSpaceEqual, asSpaceEqual);
  AssertEquals('the center heard nothing', 0, FMoves);
  AssertEquals('nothing moved', L, Button2.Left);
end;

procedure TTestArrange.TestSpaceEqualThreeControlsSpan100GivesLefts10_60_110InOrderOfLeft;
var
  A, B, C: TButton;
begin
  // Selection order B, C, A; Left order A (10), B (45), C (89): R = 10..109.
  A := NewButton(Stage, 'ButtonA', 10, 300, 20, 21);
  B := NewButton(Stage, 'ButtonB', 45, 330, 20, 21);
  C := NewButton(Stage, 'ButtonC', 89, 360, 20, 21);
  SelectOnly([B, C, A]);
  Manager.SetSelCtrlDesignAligment(asSpaceEqual, asNoChange);
  AssertEquals('first by Left', 10, A.Left);
  AssertEquals('second by Left', 60, B.Left);
  AssertEquals('third by Left, R.Right + 1', 110, C.Left);
  AssertEquals('tops unchanged', 360, C.Top);
end;

procedure TTestArrange.TestSpaceEqualVerticalSpreadsTopEdges;
var
  A, B, C: TButton;
begin
  // R.Top 300, R.Bottom 300 + 60 + 20 = 380: span 81, step 40.5.
  A := NewButton(Stage, 'ButtonA', 10, 360, 20, 20);
  B := NewButton(Stage, 'ButtonB', 40, 300, 20, 20);
  C := NewButton(Stage, 'ButtonC', 70, 320, 20, 20);
  SelectOnly([A, B, C]);
  Manager.SetSelCtrlDesignAligment(asNoChange, asSpaceEqual);
  AssertEquals('B first (Top 300)', 300, B.Top);
  AssertEquals('C second: 300 + Round(40.5) = 340', 340, C.Top);
  AssertEquals('A third: 300 + Round(81)', 381, A.Top);
end;

procedure TTestArrange.TestSpaceEqualWithOneControlRaisesFloatingDivisionByZero;
var
  A: TButton;
  Raised: Boolean;
begin
  A := NewButton(Stage, 'ButtonA', 10, 300, 20, 21);
  SelectOnly([A]);
  Raised := False;
  try
    Manager.SetSelCtrlDesignAligment(asSpaceEqual, asNoChange);
  except
    on E: EZeroDivide do
      Raised := True;
  end;
  AssertTrue('EZeroDivide, the floating-point division by zero', Raised);
  AssertEquals('not moved', 10, A.Left);
end;

procedure TTestArrange.TestAlignmentMovesTheSizersAndTellsTheCenter;
var
  A, B: TButton;
  S: TQorSizer;
begin
  A := NewButton(Stage, 'ButtonA', 10, 300, 75, 25);
  B := NewButton(Stage, 'ButtonB', 200, 340, 75, 25);
  SelectOnly([A, B]);
  FMoves := 0;
  Manager.SetSelCtrlDesignAligment(asLeftOrTop, asLeftOrTop);
  DrainMessages(60);
  // Step 4's DesignerSelCompMoved, besides the moved sizers' own reports.
  AssertTrue('the center heard of the move', FMoves >= 1);
  AssertEquals('B at R.Top', 300, B.Top);
  S := SizerOf(B);
  AssertNotNull('B keeps its sizer', S);
  AssertEquals('the sizer frames B where it is now',
    Stage.ScreenToClient(B.ClientToScreen(Point(0, 0))).X - 2, S.Left);
end;

procedure TTestArrange.TestScaleSelectedDoublesPanelAndItsChildrenNotAGraphicControl;
var
  P: TPanel;
  A: TButton;
  L: TLabel;
begin
  P := NewPanel('PanelS', 300, 260, 100, 60);
  A := NewButton(P, 'ButtonA', 10, 10, 40, 20);
  L := TLabel.Create(Stage);
  L.Name := 'LabelS';
  L.AutoSize := False;
  L.Parent := Stage;
  L.SetBounds(20, 400, 50, 20);
  SelectOnly([P, L]);
  Manager.ScaleControls(200, ssSelected);
  AssertEquals('panel width', 200, P.Width);
  AssertEquals('panel height', 120, P.Height);
  AssertEquals('child scaled with it', 80, A.Width);
  AssertEquals('child place scaled', 20, A.Left);
  AssertEquals('graphic control not scaled', 50, L.Width);
end;

procedure TTestArrange.TestScaleAllScalesTheStagesControls;
var
  W: Integer;
begin
  W := Button2.Width;
  SelectOnly([Button3]);
  Manager.ScaleControls(150, ssAll);
  AssertEquals('an unselected control scaled too', W * 3 div 2, Button2.Width);
end;

procedure TTestArrange.TestFlipSelectedPanelMirrorsItsChildren;
var
  P: TPanel;
  A: TButton;
begin
  P := NewPanel('PanelF', 300, 260, 200, 60);
  A := NewButton(P, 'ButtonA', 10, 10, 40, 20);
  SelectOnly([P]);
  Manager.FlipChildren(fcSelected);
  AssertEquals('mirrored inside the panel', P.ClientWidth - 10 - 40, A.Left);
  AssertEquals('the panel itself stays', 300, P.Left);
end;

initialization
  RegisterTest(TTestArrange);
end.
