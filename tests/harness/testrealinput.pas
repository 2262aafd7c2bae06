{ QorDesign tests — proof that the harness drives real windows with real X
  input: a click reaches a button, keys reach an edit, and a press-move-release
  reports its exact travel. Every later real-input test rests on these. }
unit TestRealInput;

{$mode objfpc}{$H+}
{$modeswitch nestedprocvars}

interface

uses
  // RTL / FCL
  Classes, SysUtils, fpcunit, testregistry,
  // LCL
  Controls, StdCtrls, ExtCtrls, Forms,
  // ours
  QorGuiTest;

type

  { TTestRealInput }

  TTestRealInput = class(TQorGuiTestCase)
  private
    FClicks: Integer;
    FDown, FUp: Boolean;
    FDownPt, FMovePt, FUpPt: TPoint;
    FMovesWithButton: Integer;
    procedure ButtonClick(Sender: TObject);
    procedure PanelMouseDown(Sender: TObject; Button: TMouseButton; Shift: TShiftState; X, Y: Integer);
    procedure PanelMouseMove(Sender: TObject; Shift: TShiftState; X, Y: Integer);
    procedure PanelMouseUp(Sender: TObject; Button: TMouseButton; Shift: TShiftState; X, Y: Integer);
  published
    procedure TestRealClickFiresButtonOnClick;
    procedure TestRealKeyPressesTypeAbcIntoEdit;
    procedure TestRealPressMoveReleaseReportsExactTravel;
  end;

implementation

procedure TTestRealInput.ButtonClick(Sender: TObject);
begin
  Inc(FClicks);
end;

procedure TTestRealInput.PanelMouseDown(Sender: TObject; Button: TMouseButton;
  Shift: TShiftState; X, Y: Integer);
begin
  if Button <> mbLeft then
    Exit;
  FDown := True;
  FDownPt := Point(X, Y);
  FMovePt := FDownPt;
end;

procedure TTestRealInput.PanelMouseMove(Sender: TObject; Shift: TShiftState; X, Y: Integer);
begin
  if FDown and (ssLeft in Shift) then
  begin
    Inc(FMovesWithButton);
    FMovePt := Point(X, Y);
  end;
end;

procedure TTestRealInput.PanelMouseUp(Sender: TObject; Button: TMouseButton;
  Shift: TShiftState; X, Y: Integer);
begin
  if Button <> mbLeft then
    Exit;
  FUp := True;
  FUpPt := Point(X, Y);
end;

procedure TTestRealInput.TestRealClickFiresButtonOnClick;
var
  F: TQorTestForm;
  B: TButton;

  function Clicked: Boolean;
  begin
    Result := FClicks > 0;
  end;

begin
  F := NewForm(60, 60, 320, 200);
  B := TButton.Create(F);
  B.Parent := F;
  B.SetBounds(40, 50, 120, 34);
  B.Caption := 'Press me';
  B.OnClick := @ButtonClick;
  ShowForm(F);
  AssertEquals('no click before the gesture', 0, FClicks);
  Click(B, 30, 12);
  AssertWait('a real click fires OnClick', @Clicked);
  DrainMessages(50);
  AssertEquals('one click fires OnClick once', 1, FClicks);
end;

procedure TTestRealInput.TestRealKeyPressesTypeAbcIntoEdit;
var
  F: TQorTestForm;
  E: TEdit;

  function EditFocused: Boolean;
  begin
    Result := E.Focused;
  end;

  function Typed: Boolean;
  begin
    Result := E.Text = 'abc';
  end;

begin
  F := NewForm(60, 60, 320, 200);
  E := TEdit.Create(F);
  E.Parent := F;
  E.SetBounds(40, 50, 200, 28);
  E.Text := '';
  ShowForm(F);
  Click(E, 20, 10);
  AssertWait('a real click focuses the edit', @EditFocused);
  TypeText('abc');
  WaitUntil(@Typed);
  AssertEquals('real key presses type into the edit', 'abc', E.Text);
end;

procedure TTestRealInput.TestRealPressMoveReleaseReportsExactTravel;
const
  StartX = 50;
  StartY = 40;
  TravelX = 73;
  TravelY = 41;
var
  F: TQorTestForm;
  P: TPanel;
  Target: TPoint;

  function Pressed: Boolean;
  begin
    Result := FDown;
  end;

  function ArrivedInMove: Boolean;
  begin
    Result := (FMovePt.X = StartX + TravelX) and (FMovePt.Y = StartY + TravelY);
  end;

  function Released: Boolean;
  begin
    Result := FUp;
  end;

begin
  F := NewForm(60, 60, 420, 320);
  P := TPanel.Create(F);
  P.Parent := F;
  P.SetBounds(10, 10, 380, 280);
  P.OnMouseDown := @PanelMouseDown;
  P.OnMouseMove := @PanelMouseMove;
  P.OnMouseUp := @PanelMouseUp;
  ShowForm(F);
  MouseMoveTo(P, StartX, StartY);
  MouseDown;
  AssertWait('the press reaches the panel', @Pressed);
  AssertEquals('press X', StartX, FDownPt.X);
  AssertEquals('press Y', StartY, FDownPt.Y);
  // Three steps, the last one exactly on the target.
  Target := ScreenPoint(P, StartX + TravelX, StartY + TravelY);
  XDo(Format('mousemove --sync %d %d', [Target.X - 40, Target.Y - 20]));
  XDo(Format('mousemove --sync %d %d', [Target.X - 10, Target.Y - 5]));
  XDo(Format('mousemove --sync %d %d', [Target.X, Target.Y]));
  // The exact values are asserted below, so a miss shows where it ended.
  WaitUntil(@ArrivedInMove);
  MouseUp;
  AssertWait('the release reaches the panel', @Released);
  AssertTrue('moves were reported with the button held', FMovesWithButton >= 1);
  AssertEquals('horizontal travel in OnMouseMove', TravelX, FMovePt.X - FDownPt.X);
  AssertEquals('vertical travel in OnMouseMove', TravelY, FMovePt.Y - FDownPt.Y);
  AssertEquals('horizontal travel at release', TravelX, FUpPt.X - FDownPt.X);
  AssertEquals('vertical travel at release', TravelY, FUpPt.Y - FDownPt.Y);
end;

initialization
  RegisterTest(TTestRealInput);
end.
