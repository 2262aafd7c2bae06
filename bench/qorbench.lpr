{ QorDesign benchmarks — prints a table and writes it as TSV.

  Each row times one operation and, in the same run, a floor: the least work
  any algorithm for that operation must do (for a name search, reading every
  name once). The ratio ms / floor_ms shows whether the operation stays within
  a constant factor of its floor as stages grow to thousands of components.

  Usage: qorbench [RESULTS.tsv] [--only=TEXT[,TEXT...]]
    RESULTS.tsv defaults to bench/results.tsv; --only runs the rows whose
    name contains one of the TEXTs (for profiling one row, or a row after
    another).

  Rows:
    unique_name_5000   GetUniqueName('Button', Owner) on an owner that holds
                       Button1..Button5000; floor: one CompareText pass over
                       the 5000 names.
    surface.*          a shown stage form with 1000 buttons (Part 1.5):
      design_on_1000   IsDesigning := True; floor: hooking the WindowProc of
                       the 1000 controls and marking them designing
      design_off_1000  IsDesigning := False; floor: putting the 1000
                       WindowProcs back and unmarking them
      select_all_1000  SelectAllControls until every sizer is on screen;
                       floor: creating and showing 1000 plain child windows
      drag_step_200    one drag step of 200 selected siblings, from the first
                       moved sizer until every control has its new bounds;
                       floor: moving the same 200 controls with SetBounds
    inspector.*        TQorObjInspector (Part 2.3) on a shown form; floor:
                       IDEIntf's TOIPropertyGrid on a shown form of the same
                       size given the same selection, in the same run
      show_1           switching between two single buttons
      show_100         switching between two selections of 100 buttons
      show_100_mixed   the same with 100 controls of six classes
      refresh_values   RefreshValues after one Width change (the grid's
                       RefreshPropertyValues for the floor)
    translation.*      TQorTransMan (Part 4.2) over a generated dictionary of
                       100,000 rows (plus the shipped one's); floor: the
                       linear TBufDataset.Locate of the same key
      hit              IdentToLabel answered by the cache
      miss_found       IdentToLabel of a key the cache lacks and the
                       dictionary has (a fresh key each call)
      miss_absent      IdentToLabel of a key nobody has (not cached, by
                       the Part: every repaint asks again)
      inspector_refresh  the inspector's refresh_values with the demo's
                       translate events on; floor: the same, translation off
    clipboard.*        Part 3.3 with 1000 components (800 buttons, 200
                       timers) of a shown form
      copy_1000        VhoClipboard.SetComponents; floor: WriteComponent of
                       each into a memory stream
      paste_1000       VhoClipboard.GetComponents onto an empty form (not
                       shown: no window handles); floor: ReadComponent of
                       each record from a memory stream }
program qorbench;

{$mode objfpc}{$H+}

uses
  // RTL / FCL
  {$IFDEF UNIX}cthreads,{$ENDIF}
  Classes, SysUtils, Math, {$IFDEF LINUX}Linux, UnixType,{$ENDIF}
  // LCL
  Interfaces, Forms, Controls, StdCtrls, ExtCtrls, LMessages, Contnrs, TypInfo,
  DB, BufDataset, Variants,
  // IDEIntf
  PropEdits, PropEditUtils, ObjectInspector,
  {$IFDEF LCLGTK2}gdk2,{$ENDIF}
  // ours
  QorDesign, VhoSysUtils, QorDesigner, ObjInspect, QorTransUtils, VhoClipbrdUtils;

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
const
  MsPerSec: Double = 1000;
  NsPerMs: Double = 1000000;
var
  T: TTimeSpec;
begin
  clock_gettime(CLOCK_MONOTONIC, @T);
  // Typed constants: FPC would evaluate 1000.0 in single precision.
  Result := Double(T.tv_sec) * MsPerSec + Double(T.tv_nsec) / NsPerMs;
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

{ As TimeIt, with Prepare run before each call of Proc and not timed. }
function TimeItPrepared(Prepare, Proc: TBenchProc; Repeats, Rounds: Integer): Double;
var
  R, I: Integer;
  T0, T: Double;
begin
  Result := MaxInt;
  for R := 1 to Rounds do
  begin
    T := 0;
    for I := 1 to Repeats do
    begin
      Prepare();
      T0 := NowMs;
      Proc();
      T := T + NowMs - T0;
    end;
    T := T / Repeats;
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

{ A row whose two sides run a round each in turn, the best round of each: a
  slow phase of this shared machine (seconds long, measured at a third more
  time for either side) then weighs on both, not on whichever side ran
  during it. Prepare, when given, runs untimed before each call. }
procedure AddRowInTurn(const AName, AFloorName: string; Proc, FloorProc,
  Prepare: TBenchProc; Repeats, Rounds: Integer);
var
  R: Integer;
  Ms, FloorMs: Double;
begin
  Ms := MaxInt;
  FloorMs := MaxInt;
  for R := 1 to Rounds do
    if Assigned(Prepare) then
    begin
      Ms := Min(Ms, TimeItPrepared(Prepare, Proc, Repeats, 1));
      FloorMs := Min(FloorMs, TimeItPrepared(Prepare, FloorProc, Repeats, 1));
    end
    else
    begin
      Ms := Min(Ms, TimeIt(Proc, Repeats, 1));
      FloorMs := Min(FloorMs, TimeIt(FloorProc, Repeats, 1));
    end;
  AddRow(AName, AFloorName, Ms, FloorMs);
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

{ surface.* }

type
  TCompAccess = class(TComponent);

  { TSurfaceBench }

  TSurfaceBench = class
    Stage: TForm;
    Manager: TQorDesignManager;
    Buttons: array of TButton;
    SavedProcs: array of TWndMethod;
    procedure Dummy(var Message: TLMessage);
    procedure Build(Count: Integer);
    procedure Settle;
    function Time(Proc: TProcedure): Double;
  end;

var
  SB: TSurfaceBench;

procedure TSurfaceBench.Dummy(var Message: TLMessage);
begin
end;

procedure TSurfaceBench.Build(Count: Integer);
var
  I: Integer;
  B: TButton;
begin
  Stage := TForm.CreateNew(nil);
  Stage.Name := 'BenchStage';
  Stage.Position := poDesigned;
  Stage.SetBounds(0, 0, 1240, 900);
  Stage.DisableAlign;
  SetLength(Buttons, Count);
  for I := 0 to Count - 1 do
  begin
    B := TButton.Create(Stage);
    B.Name := 'B' + IntToStr(I + 1);
    B.SetBounds(10 + (I mod 40) * 30, 10 + (I div 40) * 34, 26, 24);
    B.Caption := '';
    B.Parent := Stage;
    Buttons[I] := B;
  end;
  Stage.EnableAlign;
  Stage.Show;
  Settle;
  Manager := TQorDesignManager.Create(Stage);
end;

procedure TSurfaceBench.Settle;
var
  I: Integer;
begin
  for I := 1 to 5 do
    Application.ProcessMessages;
end;

function TSurfaceBench.Time(Proc: TProcedure): Double;
var
  T0: Double;
begin
  Settle;
  T0 := NowMs;
  Proc();
  Settle;
  Result := NowMs - T0;
  // For `perf report --time` (record with -k CLOCK_MONOTONIC).
  if GetEnvironmentVariable('QORBENCH_TRACE') <> '' then
    WriteLn(StdErr, Format('timed %.6f,%.6f', [T0 / 1000, (T0 + Result) / 1000]));
end;

procedure DesignOn;
begin
  SB.Manager.IsDesigning := True;
end;

procedure DesignOff;
begin
  SB.Manager.IsDesigning := False;
end;

procedure HookFloor;
var
  I: Integer;
begin
  SetLength(SB.SavedProcs, Length(SB.Buttons));
  for I := 0 to High(SB.Buttons) do
  begin
    SB.SavedProcs[I] := SB.Buttons[I].WindowProc;
    SB.Buttons[I].WindowProc := @SB.Dummy;
    TCompAccess(SB.Buttons[I]).SetDesigning(True, False);
  end;
end;

procedure UnhookFloor;
var
  I: Integer;
begin
  for I := 0 to High(SB.Buttons) do
  begin
    SB.Buttons[I].WindowProc := SB.SavedProcs[I];
    TCompAccess(SB.Buttons[I]).SetDesigning(False, False);
  end;
end;

procedure SelectAll;
begin
  SB.Manager.SelectAllControls;
end;

var
  FloorWindows: TList;

procedure WindowsFloor;
var
  I: Integer;
  C: TCustomControl;
begin
  SB.Stage.DisableAlign;
  for I := 0 to High(SB.Buttons) do
  begin
    C := TCustomControl.Create(nil);
    C.SetBounds(SB.Buttons[I].Left - 2, SB.Buttons[I].Top - 2, 30, 28);
    C.Parent := SB.Stage;
    FloorWindows.Add(C);
  end;
  SB.Stage.EnableAlign;
end;

procedure DragStep;
var
  Target: Integer;
  Guard: Integer;
begin
  Target := SB.Buttons[199].Left + 1;
  SB.Manager.Sizers.Sizers[0].ManualMove(1, 0, True, True);
  // Until the last control has its new bounds (bounded).
  Guard := 0;
  while (SB.Buttons[199].Left <> Target) and (Guard < 100000) do
  begin
    Application.ProcessMessages;
    Inc(Guard);
  end;
end;

procedure MoveFloor;
var
  I: Integer;
begin
  SB.Stage.DisableAlign;
  for I := 0 to 199 do
    with SB.Buttons[I] do
      SetBounds(Left + 1, Top, Width, Height);
  SB.Stage.EnableAlign;
end;

var
  Only: string = '';

{ True when the row should run: all rows, or those whose name holds --only. }
{ Whether --only (texts separated by commas, any of them) names the row. }
function Wanted(const RowName: string): Boolean;
var
  Parts: TStringArray;
  I: Integer;
begin
  if Only = '' then
    Exit(True);
  Parts := Only.Split([',']);
  for I := 0 to High(Parts) do
    if (Parts[I] <> '') and (Pos(Parts[I], RowName) > 0) then
      Exit(True);
  Result := False;
end;

procedure BenchSurface;
var
  I: Integer;
  OnMs, OffMs, HookMs, UnhookMs, SelMs, WinMs, DragMs, MoveMs: Double;
begin
  if not (Wanted('surface.design_on_1000') or Wanted('surface.design_off_1000') or
    Wanted('surface.select_all_1000') or Wanted('surface.drag_step_200')) then
    Exit;
  SB := TSurfaceBench.Create;
  FloorWindows := TList.Create;
  try
    SB.Build(1000);
    if Wanted('surface.design_on_1000') or Wanted('surface.design_off_1000') or
      Wanted('surface.select_all_1000') then
    begin
      HookMs := SB.Time(@HookFloor);
      UnhookMs := SB.Time(@UnhookFloor);
      OnMs := SB.Time(@DesignOn);
      SelMs := SB.Time(@SelectAll);
      OffMs := SB.Time(@DesignOff);
      WinMs := SB.Time(@WindowsFloor);
      for I := 0 to FloorWindows.Count - 1 do
        TObject(FloorWindows[I]).Free;
      FloorWindows.Clear;
      AddRow('surface.design_on_1000', 'hook_windowprocs_1000', OnMs, HookMs);
      AddRow('surface.design_off_1000', 'unhook_windowprocs_1000', OffMs, UnhookMs);
      AddRow('surface.select_all_1000', 'show_windows_1000', SelMs, WinMs);
    end;
    if Wanted('surface.drag_step_200') then
    begin
      // 200 sibling controls selected, then one drag step.
      SB.Manager.IsDesigning := True;
      for I := 0 to 199 do
        SB.Manager.SelectControl(SB.Buttons[I], Point(-1, -1), csmAdd, False, False);
      SB.Settle;
      DragMs := SB.Time(@DragStep);
      MoveMs := SB.Time(@MoveFloor);
      AddRow('surface.drag_step_200', 'setbounds_200', DragMs, MoveMs);
      SB.Manager.IsDesigning := False;
    end;
  finally
    FloorWindows.Free;
    SB.Stage.Free;
    SB.Free;
  end;
end;

{ inspector.* }

{ Paints what is waiting to be painted, and nothing more. TWinControl.Update
  does not do for this: on gtk2 it first marks the whole control for a
  repaint (gtk_widget_queue_draw), so a control that repaints only what
  changed would be timed repainting everything. }
procedure FlushPaints;
begin
  {$IFDEF LCLGTK2}
  gdk_window_process_all_updates;
  {$ENDIF}
  Application.ProcessMessages;
end;

var
  InspStage, InspForm, OIForm: TForm;
  Insp: TQorObjInspector;
  OI: TOIPropertyGrid;
  OIHook: TPropertyEditorHook;
  SelA, SelB: TObjectList;
  OISelA, OISelB: TPersistentSelectionList;
  Flip: Boolean;
  InspButton: TButton;

procedure FillSelections(First, Count, Stride: Integer);
var
  I: Integer;
begin
  SelA.Clear;
  SelB.Clear;
  OISelA.Clear;
  OISelB.Clear;
  for I := 0 to Count - 1 do
  begin
    SelA.Add(InspStage.Components[First + I * Stride]);
    OISelA.Add(InspStage.Components[First + I * Stride]);
    SelB.Add(InspStage.Components[First + 1 + I * Stride]);
    OISelB.Add(InspStage.Components[First + 1 + I * Stride]);
  end;
end;

procedure InspShow;
begin
  Flip := not Flip;
  if Flip then
    Insp.SetActiveComponents(SelA)
  else
    Insp.SetActiveComponents(SelB);
  FlushPaints;
end;

procedure OIShow;
begin
  Flip := not Flip;
  if Flip then
    OI.Selection := OISelA
  else
    OI.Selection := OISelB;
  FlushPaints;
end;

{ The property change of the refresh rows, untimed: it costs the same
  whichever inspector refreshes, and the stage's relayout and repaint of a
  crowded form would hide the difference. }
procedure ChangeInspButton;
begin
  // Left: a row the inspector shows without scrolling.
  InspButton.Left := InspButton.Left xor 1;
  FlushPaints;
end;

procedure InspRefresh;
begin
  Insp.RefreshValues;
  FlushPaints;
end;

procedure OIRefresh;
begin
  OI.RefreshPropertyValues;
  FlushPaints;
end;

procedure BenchInspector;
const
  Classes: array[0..5] of TControlClass = (TButton, TLabel, TEdit, TPanel, TCheckBox, TMemo);
var
  I: Integer;
  C: TControl;
begin
  InspStage := TForm.CreateNew(nil);
  InspForm := TForm.CreateNew(nil);
  OIForm := TForm.CreateNew(nil);
  SelA := TObjectList.Create(False);
  SelB := TObjectList.Create(False);
  OISelA := TPersistentSelectionList.Create;
  OISelB := TPersistentSelectionList.Create;
  OIHook := TPropertyEditorHook.Create(nil);
  try
    InspStage.SetBounds(10, 10, 600, 600);
    // 0..201: buttons; 202..401: six classes in turn.
    for I := 0 to 401 do
    begin
      if I < 202 then
        C := TButton.Create(InspStage)
      else
        C := Classes[I mod 6].Create(InspStage);
      C.Name := 'C' + IntToStr(I);
      C.SetBounds((I mod 20) * 28, (I div 20) * 28, 26, 26);
      C.Parent := InspStage;
    end;
    InspButton := TButton(InspStage.Components[0]);
    InspStage.Show;
    // Side by side, neither covering the other: both grids paint in full.
    InspForm.SetBounds(620, 10, 320, 700);
    Insp := TQorObjInspector.Create(InspForm);
    Insp.Parent := InspForm;
    Insp.Align := alClient;
    InspForm.Show;
    OIForm.SetBounds(950, 10, 320, 700);
    OIHook.LookupRoot := InspStage;
    OI := TOIPropertyGrid.CreateWithParams(OIForm, OIHook, tkAny - [tkMethod], 0);
    OI.Parent := OIForm;
    OI.Align := alClient;
    OIForm.Show;
    Application.ProcessMessages;
    Flip := False;
    FillSelections(0, 1, 1);
    if Wanted('inspector.show_1') then
      AddRowInTurn('inspector.show_1', 'oi_property_grid_show_1',
        @InspShow, @OIShow, nil, 20, 8);
    FillSelections(0, 100, 2);
    if Wanted('inspector.show_100') then
      AddRowInTurn('inspector.show_100', 'oi_property_grid_show_100',
        @InspShow, @OIShow, nil, 4, 8);
    FillSelections(202, 100, 2);
    if Wanted('inspector.show_100_mixed') then
      AddRowInTurn('inspector.show_100_mixed', 'oi_property_grid_show_100_mixed',
        @InspShow, @OIShow, nil, 4, 8);
    FillSelections(0, 1, 1);
    Insp.SetActiveComponent(InspButton);
    OISelA.Clear;
    OISelA.Add(InspButton);
    OI.Selection := OISelA;
    Application.ProcessMessages;
    if Wanted('inspector.refresh_values') then
      AddRowInTurn('inspector.refresh_values', 'oi_property_grid_refresh_values',
        @InspRefresh, @OIRefresh, @ChangeInspButton, 20, 8);
  finally
    OIForm.Free;
    InspForm.Free;
    InspStage.Free;
    OIHook.Free;
    OISelB.Free;
    OISelA.Free;
    SelB.Free;
    SelA.Free;
  end;
end;

{ translation.* }

const
  DictRows = 100000;
  KindNames: array[0..2] of string = ('PROPNAME', 'ENUM', 'CLASSVALUE');

var
  TransMan: TQorTransMan;
  KeyIndex: Integer;
  FloorKey: Integer;

{ Row I of the generated part: kind, type name, identifier, label. }
function DictKind(I: Integer): string;
begin
  Result := KindNames[I mod 3];
end;

function DictType(I: Integer): string;
begin
  Result := 'TBenchType' + IntToStr(I mod 997);
end;

function DictIdent(I: Integer): string;
begin
  Result := 'BenchIdent' + IntToStr(I);
end;

{ Keys spread over the whole dictionary, in a fixed order. }
function SpreadKey(N: Integer): Integer;
begin
  Result := (Int64(N) * 7919) mod DictRows;
end;

procedure WriteBenchDictionary(const FileName, ShippedFile: string);
var
  Dict, Shipped: TBufDataset;
  I: Integer;
begin
  Dict := TBufDataset.Create(nil);
  Shipped := nil;
  try
    Dict.FieldDefs.Add('TranTypeKind', ftString, 20);
    Dict.FieldDefs.Add('TypeName', ftString, 60);
    Dict.FieldDefs.Add('Indent', ftString, 60);
    Dict.FieldDefs.Add('CnLabel', ftString, 120);
    Dict.CreateDataset;
    // The shipped rows first: the inspector's real names find their labels.
    if FileExists(ShippedFile) then
    begin
      Shipped := TBufDataset.Create(nil);
      Shipped.LoadFromFile(ShippedFile);
      Shipped.First;
      while not Shipped.EOF do
      begin
        Dict.AppendRecord([Shipped.FieldByName('TranTypeKind').AsString,
          Shipped.FieldByName('TypeName').AsString, Shipped.FieldByName('Indent').AsString,
          Shipped.FieldByName('CnLabel').AsString]);
        Shipped.Next;
      end;
    end;
    for I := 0 to DictRows - 1 do
    begin
      Dict.AppendRecord([DictKind(I), DictType(I), DictIdent(I), '标签' + IntToStr(I)]);
      // TBufDataset searches its change log at each append: kept short.
      if I mod 1000 = 999 then
        Dict.MergeChangeLog;
    end;
    Dict.SaveToFile(FileName, dfXML);
  finally
    Shipped.Free;
    Dict.Free;
  end;
end;

function KindOf(I: Integer): TTransTypeKind;
begin
  case I mod 3 of
    0: Result := ttkPropName;
    1: Result := ttkEnum;
  else
    Result := ttkClassValue;
  end;
end;

procedure CheckLabel(const Got, Want: string);
begin
  if Got <> Want then
    raise Exception.CreateFmt('translation gave "%s", not "%s"', [Got, Want]);
end;

procedure TransHit;
var
  K: Integer;
begin
  // Ten keys the cache holds, spread over the dictionary, in turn.
  KeyIndex := KeyIndex mod 10 + 1;
  K := SpreadKey(KeyIndex);
  CheckLabel(TransMan.IdentToLabel(KindOf(K), DictType(K), DictIdent(K), nil),
    '标签' + IntToStr(K));
end;

procedure TransMissFound;
var
  K: Integer;
begin
  // A key never asked before: the cache cannot have it.
  Inc(KeyIndex);
  K := SpreadKey(KeyIndex);
  CheckLabel(TransMan.IdentToLabel(KindOf(K), DictType(K), DictIdent(K), nil),
    '标签' + IntToStr(K));
end;

procedure TransMissAbsent;
begin
  KeyIndex := (KeyIndex + 1) mod 1000;
  CheckLabel(TransMan.IdentToLabel(ttkEnum, 'TBenchType1', 'NoSuchIdent' + IntToStr(KeyIndex),
    nil), 'NoSuchIdent' + IntToStr(KeyIndex));
end;

{ The floor: what the manager did before the index, a case-insensitive
  Locate over the rows. }
procedure LocateFloor(const Kind, TypeName, Ident: string; Expect: Boolean);
begin
  if TransMan.DataSet.Locate('TranTypeKind;TypeName;Indent',
    VarArrayOf([Kind, TypeName, Ident]), [loCaseInsensitive]) <> Expect then
    raise Exception.Create('Locate answered wrongly');
end;

procedure LocateHitFloor;
var
  K: Integer;
begin
  FloorKey := FloorKey mod 10 + 1;
  K := SpreadKey(FloorKey);
  LocateFloor(DictKind(K), DictType(K), DictIdent(K), True);
end;

procedure LocateFoundFloor;
var
  K: Integer;
begin
  Inc(FloorKey);
  K := SpreadKey(FloorKey);
  LocateFloor(DictKind(K), DictType(K), DictIdent(K), True);
end;

procedure LocateAbsentFloor;
begin
  FloorKey := (FloorKey + 1) mod 1000;
  LocateFloor('ENUM', 'TBenchType1', 'NoSuchIdent' + IntToStr(FloorKey), False);
end;

type
  { The demo's wiring of the inspector's translate events. }
  TBenchTranslator = class
    procedure IdentToLabel(Sender: TObject; PTI: PTypeInfo; const Src: string;
      TransRole: TTransRole; var Dest: string);
    procedure LabelToIdent(Sender: TObject; PTI: PTypeInfo; const Src: string;
      TransRole: TTransRole; var Dest: string);
  end;

procedure TBenchTranslator.IdentToLabel(Sender: TObject; PTI: PTypeInfo;
  const Src: string; TransRole: TTransRole; var Dest: string);
begin
  Dest := TransMan.IdentToLabel(TransRole, PTI, Src, nil);
end;

procedure TBenchTranslator.LabelToIdent(Sender: TObject; PTI: PTypeInfo;
  const Src: string; TransRole: TTransRole; var Dest: string);
begin
  Dest := TransMan.LabelToIdent(TransRole, PTI, Src, nil);
end;

procedure BenchTranslation;
var
  DictFile: string;
  Translator: TBenchTranslator;
  HitMs, HitFloor, FoundMs, FoundFloor, AbsentMs, AbsentFloor, OnMs, OffMs: Double;
  I: Integer;
begin
  if not (Wanted('translation.hit') or Wanted('translation.miss_found') or
    Wanted('translation.miss_absent') or Wanted('translation.inspector_refresh')) then
    Exit;
  DictFile := GetTempDir + 'qorbench-dict-' + IntToStr(GetProcessID) + '.xml';
  WriteBenchDictionary(DictFile, 'resources/dict/qordesign-zh.xml');
  TransMan := TQorTransMan.Create(DictFile);
  Translator := TBenchTranslator.Create;
  InspStage := TForm.CreateNew(nil);
  InspForm := TForm.CreateNew(nil);
  try
    if not TransMan.OpenDb then
      raise Exception.Create('the generated dictionary did not open');
    QorTransCache.Clear;
    // The hit keys enter the cache once, untimed.
    for I := 1 to 10 do
      TransMan.IdentToLabel(KindOf(SpreadKey(I)), DictType(SpreadKey(I)),
        DictIdent(SpreadKey(I)), nil);
    KeyIndex := 0;
    FloorKey := 0;
    HitMs := TimeIt(@TransHit, 2000, 5);
    HitFloor := TimeIt(@LocateHitFloor, 10, 3);
    KeyIndex := 100;
    FloorKey := 100;
    FoundMs := TimeIt(@TransMissFound, 2000, 5);
    FoundFloor := TimeIt(@LocateFoundFloor, 10, 3);
    KeyIndex := 0;
    FloorKey := 0;
    AbsentMs := TimeIt(@TransMissAbsent, 2000, 5);
    AbsentFloor := TimeIt(@LocateAbsentFloor, 5, 3);
    if Wanted('translation.hit') then
      AddRow('translation.hit', 'locate_100000', HitMs, HitFloor);
    if Wanted('translation.miss_found') then
      AddRow('translation.miss_found', 'locate_100000', FoundMs, FoundFloor);
    if Wanted('translation.miss_absent') then
      AddRow('translation.miss_absent', 'locate_100000', AbsentMs, AbsentFloor);

    // The inspector of the inspector rows, one button, the dictionary on.
    InspStage.SetBounds(10, 10, 300, 300);
    InspButton := TButton.Create(InspStage);
    InspButton.Name := 'Button1';
    InspButton.SetBounds(10, 10, 80, 26);
    InspButton.Parent := InspStage;
    InspStage.Show;
    InspForm.SetBounds(620, 10, 320, 700);
    Insp := TQorObjInspector.Create(InspForm);
    Insp.Parent := InspForm;
    Insp.Align := alClient;
    Insp.OnTranslateIdent := @Translator.IdentToLabel;
    Insp.OnTranslateToIdent := @Translator.LabelToIdent;
    InspForm.Show;
    Insp.SetActiveComponent(InspButton);
    Application.ProcessMessages;
    if Wanted('translation.inspector_refresh') then
    begin
      // On, off, on, off: each the best of both, so neither gains from
      // going first.
      OnMs := MaxInt;
      OffMs := MaxInt;
      for I := 1 to 2 do
      begin
        Insp.Translate := True;
        Application.ProcessMessages;
        OnMs := Min(OnMs, TimeItPrepared(@ChangeInspButton, @InspRefresh, 20, 8));
        Insp.Translate := False;
        Application.ProcessMessages;
        OffMs := Min(OffMs, TimeItPrepared(@ChangeInspButton, @InspRefresh, 20, 8));
      end;
      AddRow('translation.inspector_refresh', 'inspector_refresh_untranslated', OnMs, OffMs);
    end;
  finally
    InspForm.Free;
    InspStage.Free;
    Translator.Free;
    FreeAndNil(TransMan);
    DeleteFile(DictFile);
  end;
end;

{ clipboard.* }

var
  ClipSource: TForm;
  ClipList: TComponentList;
  ClipStream: TMemoryStream;

procedure ClipCopy;
begin
  VhoClipboard.SetComponents(ClipList, False);
end;

procedure WriteFloor;
var
  I: Integer;
begin
  ClipStream.Clear;
  for I := 0 to ClipList.Count - 1 do
    ClipStream.WriteComponent(ClipList[I]);
end;

{ Best of Rounds, each on a fresh empty form: the time of Paste alone. }
function TimePaste(Floor: Boolean; Rounds: Integer): Double;
var
  R: Integer;
  Target: TForm;
  T0, T: Double;
  Last: TComponent;
begin
  Result := MaxInt;
  for R := 1 to Rounds do
  begin
    Target := TForm.CreateNew(nil);
    try
      T0 := NowMs;
      if Floor then
      begin
        ClipStream.Position := 0;
        while ClipStream.Position < ClipStream.Size do
          Target.InsertComponent(ClipStream.ReadComponent(nil));
      end
      else
      begin
        Last := VhoClipboard.GetComponents(Target, Target, 4, 4);
        if Last = nil then
          raise Exception.Create('paste gave nothing');
      end;
      T := NowMs - T0;
      if Target.ComponentCount <> ClipList.Count then
        raise Exception.CreateFmt('pasted %d of %d', [Target.ComponentCount, ClipList.Count]);
      if T < Result then
        Result := T;
    finally
      Target.Free;
    end;
  end;
end;

procedure BenchClipboard;
var
  I: Integer;
  C: TComponent;
  PasteMs, PasteFloor: Double;
begin
  if not (Wanted('clipboard.copy_1000') or Wanted('clipboard.paste_1000')) then
    Exit;
  RegisterClasses([TButton, TTimer]);
  ClipSource := TForm.CreateNew(nil);
  ClipList := TComponentList.Create(False);
  ClipStream := TMemoryStream.Create;
  try
    ClipSource.SetBounds(10, 10, 600, 600);
    for I := 0 to 999 do
    begin
      if I mod 5 = 4 then
        C := TTimer.Create(ClipSource)
      else
      begin
        C := TButton.Create(ClipSource);
        TButton(C).SetBounds((I mod 25) * 24, (I div 25) * 14, 22, 12);
        TButton(C).Caption := 'B' + IntToStr(I);
        TButton(C).Parent := ClipSource;
      end;
      C.Name := 'C' + IntToStr(I);
      ClipList.Add(C);
    end;
    // On X the copying program must have a shown window.
    ClipSource.Show;
    Application.ProcessMessages;
    if Wanted('clipboard.copy_1000') then
      AddRowInTurn('clipboard.copy_1000', 'write_component_1000', @ClipCopy, @WriteFloor,
        nil, 5, 9);
    if Wanted('clipboard.paste_1000') then
    begin
      ClipCopy;
      WriteFloor;
      // Floor and paste in turn, the best of each: neither gains from
      // running on a heap the other warmed.
      PasteMs := MaxInt;
      PasteFloor := MaxInt;
      for I := 1 to 6 do
      begin
        PasteFloor := Min(PasteFloor, TimePaste(True, 3));
        PasteMs := Min(PasteMs, TimePaste(False, 3));
      end;
      AddRow('clipboard.paste_1000', 'read_component_1000', PasteMs, PasteFloor);
    end;
  finally
    ClipStream.Free;
    ClipList.Free;
    ClipSource.Free;
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
    WriteLn(Format('%-26s %12s  %-26s %12s %8s', ['name', 'ms', 'floor_name', 'floor_ms', 'ratio']));
    for Row in Rows do
    begin
      if Row.FloorMs > 0 then
        Ratio := Row.Ms / Row.FloorMs
      else
        Ratio := 0;
      Tsv.Add(Format('%s'#9'%.4f'#9'%s'#9'%.4f'#9'%.2f',
        [Row.Name, Row.Ms, Row.FloorName, Row.FloorMs, Ratio], FS));
      WriteLn(Format('%-26s %12.4f  %-26s %12.4f %8.2f',
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
  I: Integer;
begin
  OutFile := 'bench/results.tsv';
  for I := 1 to ParamCount do
    if Copy(ParamStr(I), 1, 7) = '--only=' then
      Only := Copy(ParamStr(I), 8, MaxInt)
    else
      OutFile := ParamStr(I);
  Application.Initialize;
  if Wanted('unique_name_5000') then
    BenchUniqueName;
  BenchSurface;
  BenchInspector;
  BenchTranslation;
  BenchClipboard;
  WriteResults(OutFile);
end.
