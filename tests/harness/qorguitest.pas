{ QorDesign tests — the base class of every test that needs a real window.

  Forms are made with TForm.CreateNew (PLATFORM.md: CreateForm without an .lfm
  is slow), shown on the Xvfb display and driven with real X input: xdotool,
  which injects events through the XTest extension (docs/testing.md says why
  xdotool and not MouseAndKeyInput). Every wait is a bounded loop over
  Application.ProcessMessages that ends when its condition holds or its time
  is up; nothing waits on a bare sleep.

  Sections:
    - Conditions and waiting
    - TQorTestForm
    - TQorGuiTestCase }
unit QorGuiTest;

{$mode objfpc}{$H+}
{$modeswitch nestedprocvars}

interface

uses
  // RTL / FCL
  Classes, SysUtils, DateUtils, Process, fpcunit,
  // LCL
  LCLType, LCLIntf, Math, Graphics, Controls, Forms, Grids;

{************ Conditions and waiting }

type
  { A condition a test waits for; a nested function may see the test's locals. }
  TQorCondition = function: Boolean is nested;

const
  QorDefaultTimeoutMs = 5000;

{ Processes messages until Cond holds or TimeoutMs passed; the result is the
  last value of Cond. }
function WaitUntil(Cond: TQorCondition; TimeoutMs: Integer = QorDefaultTimeoutMs): Boolean;

{ Processes the messages already queued, for at least MinMs, without waiting
  for any condition: used only to let queued input settle before asserting
  that something did NOT happen. }
procedure DrainMessages(MinMs: Integer = 100);

{ True when an X display is there to show forms on. }
function HaveDisplay: Boolean;

{************ TQorTestForm }

type

  { TQorTestForm
    A plain form that counts its paints, so that a test knows when the window
    is really mapped and exposed at its place on the screen. }

  TQorTestForm = class(TForm)
  private
    FPaintCount: Integer;
  protected
    procedure Paint; override;
  public
    property PaintCount: Integer read FPaintCount;
  end;

{************ TQorGuiTestCase }

  EQorInputError = class(Exception);

  { TQorGuiTestCase
    SetUp ignores the test when there is no display. NewForm makes a form that
    TearDown frees; ShowForm shows it and waits until it is painted. The input
    methods take client coordinates of a control and send real X events;
    every mouse move reaches its target in two steps, because the first
    motion into a newly mapped window is sometimes lost (PLATFORM.md). }

  TQorGuiTestCase = class(TTestCase)
  private
    FForms: TFPList;
    FButtonDown: Boolean;
    FHeldKeys: TStringList;
  protected
    procedure SetUp; override;
    procedure TearDown; override;
    function NewForm(ALeft, ATop, AWidth, AHeight: Integer): TQorTestForm;
    procedure ShowForm(AForm: TQorTestForm);
    { Frees a form NewForm made, before TearDown would. }
    procedure FreeForm(AForm: TQorTestForm);
    procedure AssertWait(const AMessage: string; Cond: TQorCondition;
      TimeoutMs: Integer = QorDefaultTimeoutMs);
    // real input
    procedure XDo(const Args: array of string); overload;
    procedure XDo(const Args: string); overload;
    function ScreenPoint(AControl: TControl; X, Y: Integer): TPoint;
    procedure MouseMoveTo(AControl: TControl; X, Y: Integer);
    procedure MouseDown(Button: Integer = 1);
    procedure MouseUp(Button: Integer = 1);
    procedure Click(AControl: TControl; X, Y: Integer; Button: Integer = 1);
    { Scrolls ARow into view (three rows above it) and clicks the cell's middle. }
    procedure ClickGridCell(Grid: TCustomDrawGrid; ACol, ARow: Integer);
    procedure TypeText(const S: string);
    procedure PressKey(const KeySym: string);
    { Holds a key down until KeyRelease (TearDown releases what is held). }
    procedure KeyHold(const KeySym: string);
    procedure KeyRelease(const KeySym: string);
    // what is on the screen
    { The screen inside AControl's client area (as shown, windows above it
      included), as a bitmap the caller frees. }
    function GrabClient(AControl: TControl): TBitmap;
    procedure SavePng(ABitmap: TBitmap; const FileName: string);
  end;

implementation

{************ Conditions and waiting }

function WaitUntil(Cond: TQorCondition; TimeoutMs: Integer): Boolean;
var
  Deadline: TDateTime;
begin
  Deadline := IncMilliSecond(Now, TimeoutMs);
  Application.ProcessMessages;
  Result := Cond();
  while not Result and (Now < Deadline) do
  begin
    // Yield the CPU between passes; the loop is bounded by the deadline.
    Sleep(2);
    Application.ProcessMessages;
    Result := Cond();
  end;
end;

procedure DrainMessages(MinMs: Integer);
var
  Deadline: TDateTime;
begin
  Deadline := IncMilliSecond(Now, MinMs);
  repeat
    Application.ProcessMessages;
    Sleep(2);
  until Now >= Deadline;
  Application.ProcessMessages;
end;

function HaveDisplay: Boolean;
begin
  Result := GetEnvironmentVariable('DISPLAY') <> '';
end;

{************ TQorTestForm }

procedure TQorTestForm.Paint;
begin
  Inc(FPaintCount);
  inherited Paint;
end;

{************ TQorGuiTestCase }

procedure TQorGuiTestCase.SetUp;
begin
  inherited SetUp;
  if not HaveDisplay then
    Ignore('needs an X display (run the suite with make test)');
  FForms := TFPList.Create;
  FHeldKeys := TStringList.Create;
end;

procedure TQorGuiTestCase.TearDown;
var
  I: Integer;
begin
  try
    if FButtonDown then
      MouseUp(1);
    if FHeldKeys <> nil then
      while FHeldKeys.Count > 0 do
        KeyRelease(FHeldKeys[FHeldKeys.Count - 1]);
  finally
    FreeAndNil(FHeldKeys);
    if FForms <> nil then
    begin
      for I := FForms.Count - 1 downto 0 do
        TObject(FForms[I]).Free;
      FreeAndNil(FForms);
    end;
    Application.ProcessMessages;
    inherited TearDown;
  end;
end;

procedure TQorGuiTestCase.FreeForm(AForm: TQorTestForm);
begin
  FForms.Remove(AForm);
  AForm.Free;
end;

function TQorGuiTestCase.NewForm(ALeft, ATop, AWidth, AHeight: Integer): TQorTestForm;
begin
  Result := TQorTestForm.CreateNew(nil);
  FForms.Add(Result);
  Result.Position := poDesigned;
  Result.SetBounds(ALeft, ATop, AWidth, AHeight);
  Result.Caption := TestName;
end;

procedure TQorGuiTestCase.ShowForm(AForm: TQorTestForm);

  function Painted: Boolean;
  begin
    Result := AForm.HandleAllocated and AForm.Visible and (AForm.PaintCount > 0);
  end;

begin
  AForm.Show;
  AssertWait('form ' + AForm.Caption + ' was shown and painted', @Painted);
end;

procedure TQorGuiTestCase.AssertWait(const AMessage: string; Cond: TQorCondition;
  TimeoutMs: Integer);
begin
  AssertTrue(AMessage + Format(' (waited %d ms)', [TimeoutMs]), WaitUntil(Cond, TimeoutMs));
end;

procedure TQorGuiTestCase.XDo(const Args: array of string);
var
  Output: string;
  Params: array of string;
  ExitStatus, I: Integer;
begin
  SetLength(Params, Length(Args));
  for I := 0 to High(Args) do
    Params[I] := Args[I];
  Output := '';
  ExitStatus := 0;
  if RunCommandInDir('', 'xdotool', Params, Output, ExitStatus, [poStderrToOutPut]) <> 0 then
    raise EQorInputError.CreateFmt('xdotool %s could not be run', [Args[0]]);
  if ExitStatus <> 0 then
    raise EQorInputError.CreateFmt('xdotool %s failed (%d): %s', [Args[0], ExitStatus, Output]);
end;

procedure TQorGuiTestCase.XDo(const Args: string);
var
  Params: TStringList;
begin
  Params := TStringList.Create;
  try
    Params.Delimiter := ' ';
    Params.StrictDelimiter := True;
    Params.DelimitedText := Args;
    XDo(Params.ToStringArray);
  finally
    Params.Free;
  end;
end;

function TQorGuiTestCase.ScreenPoint(AControl: TControl; X, Y: Integer): TPoint;
begin
  Result := AControl.ClientToScreen(Point(X, Y));
end;

procedure TQorGuiTestCase.MouseMoveTo(AControl: TControl; X, Y: Integer);
var
  P: TPoint;
begin
  P := ScreenPoint(AControl, X, Y);
  XDo(Format('mousemove --sync %d %d', [P.X - 1, P.Y - 1]));
  XDo(Format('mousemove --sync %d %d', [P.X, P.Y]));
  Application.ProcessMessages;
end;

procedure TQorGuiTestCase.MouseDown(Button: Integer);
begin
  XDo(Format('mousedown %d', [Button]));
  FButtonDown := True;
end;

procedure TQorGuiTestCase.MouseUp(Button: Integer);
begin
  FButtonDown := False;
  XDo(Format('mouseup %d', [Button]));
end;

procedure TQorGuiTestCase.Click(AControl: TControl; X, Y: Integer; Button: Integer);
begin
  MouseMoveTo(AControl, X, Y);
  XDo(Format('click %d', [Button]));
end;

procedure TQorGuiTestCase.ClickGridCell(Grid: TCustomDrawGrid; ACol, ARow: Integer);
var
  R: TRect;
begin
  Grid.TopRow := Max(0, ARow - 3);
  DrainMessages(30);
  R := Grid.CellRect(ACol, ARow);
  Click(Grid, (R.Left + R.Right) div 2, (R.Top + R.Bottom) div 2);
  DrainMessages(60);
end;

procedure TQorGuiTestCase.TypeText(const S: string);
begin
  XDo(['type', '--delay', '5', S]);
end;

procedure TQorGuiTestCase.PressKey(const KeySym: string);
begin
  XDo('key ' + KeySym);
end;

procedure TQorGuiTestCase.KeyHold(const KeySym: string);
begin
  XDo('keydown ' + KeySym);
  FHeldKeys.Add(KeySym);
end;

procedure TQorGuiTestCase.KeyRelease(const KeySym: string);
var
  I: Integer;
begin
  I := FHeldKeys.IndexOf(KeySym);
  if I >= 0 then
    FHeldKeys.Delete(I);
  XDo('keyup ' + KeySym);
end;

function TQorGuiTestCase.GrabClient(AControl: TControl): TBitmap;
var
  ScreenDC: HDC;
  Whole: TBitmap;
  Origin: TPoint;
  W, H: Integer;
begin
  Application.ProcessMessages;
  Whole := TBitmap.Create;
  ScreenDC := GetDC(0);
  try
    Whole.LoadFromDevice(ScreenDC);
    Origin := AControl.ClientToScreen(Point(0, 0));
    W := AControl.ClientWidth;
    H := AControl.ClientHeight;
    Result := TBitmap.Create;
    Result.SetSize(W, H);
    Result.Canvas.CopyRect(Rect(0, 0, W, H), Whole.Canvas,
      Rect(Origin.X, Origin.Y, Origin.X + W, Origin.Y + H));
  finally
    ReleaseDC(0, ScreenDC);
    Whole.Free;
  end;
end;

procedure TQorGuiTestCase.SavePng(ABitmap: TBitmap; const FileName: string);
var
  Png: TPortableNetworkGraphic;
begin
  ForceDirectories(ExtractFileDir(FileName));
  Png := TPortableNetworkGraphic.Create;
  try
    Png.Assign(ABitmap);
    Png.SaveToFile(FileName);
  finally
    Png.Free;
  end;
end;

end.
