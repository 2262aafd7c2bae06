{ QorDesign benchmarks — prints a table and writes it as TSV.

  Each row times one operation and, in the same run, a floor: the least work
  any algorithm for that operation must do (for a name search, reading every
  name once). The ratio ms / floor_ms shows whether the operation stays within
  a constant factor of its floor as stages grow to thousands of components.

  Usage: qorbench [RESULTS.tsv]   (default bench/results.tsv)

  Rows:
    unique_name_5000   GetUniqueName('Button', Owner) on an owner that holds
                       Button1..Button5000; floor: one CompareText pass over
                       the 5000 names. }
program qorbench;

{$mode objfpc}{$H+}

uses
  // RTL / FCL
  {$IFDEF UNIX}cthreads,{$ENDIF}
  Classes, SysUtils, {$IFDEF LINUX}Linux, UnixType,{$ENDIF}
  // LCL
  Interfaces, Forms,
  // ours
  QorDesign, VhoSysUtils;

type
  TBenchProc = procedure;

  TBenchRow = record
    Name, FloorName: string;
    Ms, FloorMs: Double;
  end;

var
  Rows: array of TBenchRow;
  Owner: TComponent;
  Sink: PtrInt;

function NowMs: Double;
{$IFDEF LINUX}
var
  T: TTimeSpec;
begin
  clock_gettime(CLOCK_MONOTONIC, @T);
  Result := T.tv_sec * 1000.0 + T.tv_nsec / 1e6;
end;
{$ELSE}
begin
  Result := GetTickCount64;
end;
{$ENDIF}

{ Best of Rounds timings of Repeats calls, in ms per call. }
function TimeIt(Proc: TBenchProc; Repeats, Rounds: Integer): Double;
var
  R, I: Integer;
  T0, T: Double;
begin
  Result := MaxInt;
  for R := 1 to Rounds do
  begin
    T0 := NowMs;
    for I := 1 to Repeats do
      Proc();
    T := (NowMs - T0) / Repeats;
    if T < Result then
      Result := T;
  end;
end;

procedure AddRow(const AName, AFloorName: string; AMs, AFloorMs: Double);
begin
  SetLength(Rows, Length(Rows) + 1);
  with Rows[High(Rows)] do
  begin
    Name := AName;
    FloorName := AFloorName;
    Ms := AMs;
    FloorMs := AFloorMs;
  end;
end;

{ unique_name_5000 }

procedure UniqueNameOp;
begin
  if GetUniqueName('Button', Owner) <> 'Button5001' then
    raise Exception.Create('GetUniqueName gave a wrong name');
end;

procedure ScanNamesFloor;
var
  I: Integer;
begin
  for I := 0 to Owner.ComponentCount - 1 do
    if CompareText(Owner.Components[I].Name, 'Button') = 0 then
      Inc(Sink);
end;

procedure BenchUniqueName;
var
  I: Integer;
  C: TComponent;
begin
  Owner := TComponent.Create(nil);
  try
    for I := 1 to 5000 do
    begin
      C := TComponent.Create(Owner);
      C.Name := 'Button' + IntToStr(I);
    end;
    AddRow('unique_name_5000', 'scan_names_5000',
      TimeIt(@UniqueNameOp, 200, 7), TimeIt(@ScanNamesFloor, 200, 7));
  finally
    FreeAndNil(Owner);
  end;
end;

procedure WriteResults(const FileName: string);
var
  Tsv: TStringList;
  Row: TBenchRow;
  Ratio: Double;
  FS: TFormatSettings;
begin
  FS := DefaultFormatSettings;
  FS.DecimalSeparator := '.';
  Tsv := TStringList.Create;
  try
    Tsv.Add('name'#9'ms'#9'floor_name'#9'floor_ms'#9'ratio');
    WriteLn(Format('%-24s %12s  %-24s %12s %8s', ['name', 'ms', 'floor_name', 'floor_ms', 'ratio']));
    for Row in Rows do
    begin
      if Row.FloorMs > 0 then
        Ratio := Row.Ms / Row.FloorMs
      else
        Ratio := 0;
      Tsv.Add(Format('%s'#9'%.4f'#9'%s'#9'%.4f'#9'%.2f',
        [Row.Name, Row.Ms, Row.FloorName, Row.FloorMs, Ratio], FS));
      WriteLn(Format('%-24s %12.4f  %-24s %12.4f %8.2f',
        [Row.Name, Row.Ms, Row.FloorName, Row.FloorMs, Ratio], FS));
    end;
    Tsv.SaveToFile(FileName);
    WriteLn('wrote ', FileName);
  finally
    Tsv.Free;
  end;
end;

var
  OutFile: string;
begin
  OutFile := 'bench/results.tsv';
  if ParamCount >= 1 then
    OutFile := ParamStr(1);
  Application.Initialize;
  BenchUniqueName;
  WriteResults(OutFile);
end.
