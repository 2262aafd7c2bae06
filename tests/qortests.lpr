{ QorDesign tests — the console runner of the whole FPCUnit suite.

  Runs every registered test (or those whose path contains --filter=TEXT),
  prints one line per test and ends with "N passed, N failed, N skipped".
  The exit code is 1 when any test failed or raised. The heap-trace report of
  this program (built with -gh) is checked by tests/run-tests.sh, which counts
  it as one more test, because heaptrc writes it only after the program ends.

  --print-design-messages prints the numbers of the twelve design messages as
  this process registers them, after registering an unrelated name first and
  the twelve in reverse order: the test of Part 1.1's "same numbers in a
  second module" starts this program as that second module. }
program qortests;

{$mode objfpc}{$H+}

uses
  // RTL / FCL
  {$IFDEF UNIX}cthreads,{$ENDIF}
  Classes, SysUtils, DateUtils, fpcunit, testregistry,
  // LCL
  Interfaces, Forms,
  // ours
  QorDesigner,
  // the suites
  QorGuiTest, TestRealInput, TestQorDesignerDefs, TestVhoRTTI, TestVhoSysUtils,
  TestObjTranslate, TestQorTransUtils, TestQorDict, TestDesignSurface, TestSurfaceEdges, TestObjInspect, TestInspectorGui, TestDemo, TestArrange, TestVhoClipbrdUtils, TestQorDesignCenter, TestDesignIntf, TestQorCompTreeView;

type

  { TPlainListener
    Prints each test as it ends and counts the outcomes. }

  TPlainListener = class(TInterfacedObject, ITestListener)
  private
    FCurrentFailed, FCurrentSkipped: Boolean;
    FMessage: string;
    FStart: TDateTime;
  public
    Passed, Failed, Skipped: Integer;
    FailedNames: TStringList;
    constructor Create;
    destructor Destroy; override;
    procedure AddFailure(ATest: TTest; AFailure: TTestFailure);
    procedure AddError(ATest: TTest; AError: TTestFailure);
    procedure StartTest(ATest: TTest);
    procedure EndTest(ATest: TTest);
    procedure StartTestSuite(ATestSuite: TTestSuite);
    procedure EndTestSuite(ATestSuite: TTestSuite);
  end;

constructor TPlainListener.Create;
begin
  inherited Create;
  FailedNames := TStringList.Create;
end;

destructor TPlainListener.Destroy;
begin
  FailedNames.Free;
  inherited Destroy;
end;

procedure TPlainListener.AddFailure(ATest: TTest; AFailure: TTestFailure);
begin
  if AFailure.IsIgnoredTest then
  begin
    FCurrentSkipped := True;
    FMessage := AFailure.ExceptionMessage;
  end
  else
  begin
    FCurrentFailed := True;
    FMessage := AFailure.ExceptionMessage;
  end;
end;

procedure TPlainListener.AddError(ATest: TTest; AError: TTestFailure);
begin
  FCurrentFailed := True;
  FMessage := AError.ExceptionClassName + ': ' + AError.ExceptionMessage;
end;

procedure TPlainListener.StartTest(ATest: TTest);
begin
  FCurrentFailed := False;
  FCurrentSkipped := False;
  FMessage := '';
  FStart := Now;
end;

procedure TPlainListener.EndTest(ATest: TTest);
var
  Name: string;
  Ms: Int64;
begin
  Name := ATest.TestSuiteName + '.' + ATest.TestName;
  Ms := MilliSecondsBetween(Now, FStart);
  if FCurrentFailed then
  begin
    Inc(Failed);
    FailedNames.Add(Name);
    WriteLn('  FAIL ', Name, ' (', Ms, ' ms): ', FMessage);
  end
  else if FCurrentSkipped then
  begin
    Inc(Skipped);
    WriteLn('  skip ', Name, ': ', FMessage);
  end
  else
  begin
    Inc(Passed);
    WriteLn('  ok   ', Name, ' (', Ms, ' ms)');
  end;
  Flush(Output);
end;

procedure TPlainListener.StartTestSuite(ATestSuite: TTestSuite);
begin
end;

procedure TPlainListener.EndTestSuite(ATestSuite: TTestSuite);
begin
end;

{ Collects the test cases under ATest whose full path contains Filter. }
procedure CollectTests(ATest: TTest; const Path, Filter: string; Into: TFPList);
var
  I: Integer;
  Full: string;
begin
  if ATest is TTestSuite then
  begin
    for I := 0 to TTestSuite(ATest).ChildTestCount - 1 do
      CollectTests(TTestSuite(ATest).Test[I], Path + ATest.TestName + '.', Filter, Into);
  end
  else if ATest is TTestCase then
  begin
    Full := Path + ATest.TestName;
    if (Filter = '') or (Pos(LowerCase(Filter), LowerCase(Full)) > 0) then
      Into.Add(ATest);
  end;
end;

procedure PrintDesignMessages;
var
  I: Integer;
begin
  QorRegisterWindowMessage('Some.Other.Module.Message');
  for I := High(QorDesignMessageNames) downto 0 do
    QorRegisterWindowMessage(QorDesignMessageNames[I]);
  for I := 0 to High(QorDesignMessageNames) do
    WriteLn(QorDesignMessageNames[I], '=', QorRegisterWindowMessage(QorDesignMessageNames[I]));
end;

var
  Listener: TPlainListener;
  ListenerRef: ITestListener;
  TestResult: TTestResult;
  Tests: TFPList;
  Filter: string;
  I: Integer;
begin
  if ParamStr(1) = '--print-design-messages' then
  begin
    PrintDesignMessages;
    Halt(0);
  end;
  Filter := '';
  for I := 1 to ParamCount do
    if Pos('--filter=', ParamStr(I)) = 1 then
      Filter := Copy(ParamStr(I), Length('--filter=') + 1, MaxInt);

  Application.Initialize;
  if ParamStr(1) = '--clip-paste' then
  begin
    RunClipboardPasteProcess;
    Exit;
  end;
  Listener := TPlainListener.Create;
  ListenerRef := Listener;
  TestResult := TTestResult.Create;
  Tests := TFPList.Create;
  try
    TestResult.AddListener(ListenerRef);
    CollectTests(GetTestRegistry, '', Filter, Tests);
    for I := 0 to Tests.Count - 1 do
      TTestCase(Tests[I]).Run(TestResult);
    if Listener.Failed > 0 then
    begin
      WriteLn;
      WriteLn('Failed tests:');
      for I := 0 to Listener.FailedNames.Count - 1 do
        WriteLn('  ', Listener.FailedNames[I]);
    end;
    WriteLn(Format('%d passed, %d failed, %d skipped',
      [Listener.Passed, Listener.Failed, Listener.Skipped]));
    if (Listener.Failed > 0) or (Tests.Count = 0) then
      ExitCode := 1;
  finally
    Tests.Free;
    TestResult.Free;
    ListenerRef := nil;
  end;
end.
