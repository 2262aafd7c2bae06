{ QorDesign tests — Part 3.3, designed components on the system clipboard:
  the Part's edge cases, the properties that travel, a second process of
  this program pasting what this one copied under the same X display, and
  damaged blocks under the "QOR Components" format (truncated, random, a
  good record followed by junk) pasting what can be read without a crash or
  a leak. }
unit TestVhoClipbrdUtils;

{$mode objfpc}{$H+}
{$modeswitch nestedprocvars}

interface

uses
  // RTL / FCL
  Classes, SysUtils, Contnrs, Process, fpcunit, testregistry,
  // LCL
  Controls, StdCtrls, ExtCtrls, Forms, Graphics, Clipbrd,
  // ours
  QorGuiTest, VhoClipbrdUtils;

type

  { TTestVhoClipbrdUtils }

  TTestVhoClipbrdUtils = class(TQorGuiTestCase)
  private
    Form: TQorTestForm;
    Pasted: TComponentList;
    function NewPanel: TPanel;
    { Panel1, a Button1 "Press" and a Timer1 (250 ms) on the form. }
    procedure NewThree(out P: TPanel; out B: TButton; out T: TTimer);
    procedure CopyOf(const Comps: array of TComponent; WithChildren: Boolean = False);
    procedure PutBlock(Stream: TMemoryStream);
    function RecordOf(AComponent: TComponent): TMemoryStream;
    function Paste(Owner, Parent: TComponent): TComponent;
  protected
    procedure SetUp; override;
    procedure TearDown; override;
  published
    procedure TestCopyingAnEmptySelectionLeavesTheClipboardAsItWas;
    procedure TestPastingIntoTheSameParentOffsetsOnceThenTwice;
    procedure TestPastingANonVisualComponentChangesNoPosition;
    procedure TestPasteWalksPastControlsStandingAtTheNextCorners;
    procedure TestPastingWithNilOwnerCreatesComponentsWithoutOwner;
    procedure TestClipboardWithAnotherFormatOnlyGivesNil;
    procedure TestPanelCaptionFontButtonAndNonVisualTravelWithTheirProperties;
    procedure TestRecordsFollowTheListAndChildrenDepthFirst;
    procedure TestOwnerWithTheNameAlreadySkipsTheComponentAndReadsOn;
    procedure TestRenameDuplicatesGivesAUniqueName;
    procedure TestTwoRecordsOfOneNameInOnePasteKeepTheFirst;
    procedure TestSecondProcessPastesWhatThisOneCopied;
    procedure TestTruncatedRecordPastesNothingAndDoesNotCrash;
    procedure TestGoodRecordFollowedByJunkPastesTheGoodOne;
    procedure TestUnknownClassIsSkippedAndTheNextRecordRead;
    procedure TestRandomBlocksNeverCrash;
  end;

{ The second process of TestSecondProcessPastesWhatThisOneCopied: pastes
  the clipboard onto a form and prints one line per pasted component. }
procedure RunClipboardPasteProcess;

implementation

procedure RegisterPastable;
begin
  RegisterClasses([TPanel, TButton, TLabel, TEdit, TTimer]);
end;

{ One line per component: class, name, place, caption, font. }
function Describe(C: TComponent): string;
begin
  Result := C.ClassName + ' ' + C.Name;
  if C is TControl then
    Result := Result + Format(' %d,%d %dx%d "%s"', [TControl(C).Left, TControl(C).Top,
      TControl(C).Width, TControl(C).Height, TControl(C).Caption]);
  if C is TPanel then
    Result := Result + Format(' font=%s/%d/%d', [TPanel(C).Font.Name, TPanel(C).Font.Size,
      Integer(TPanel(C).Font.Color)]);
  if C is TTimer then
    Result := Result + Format(' interval=%d', [TTimer(C).Interval]);
end;

procedure RunClipboardPasteProcess;
var
  F: TForm;
  I: Integer;
begin
  RegisterPastable;
  F := TForm.CreateNew(nil);
  try
    F.Name := 'PasteForm';
    F.SetBounds(600, 40, 400, 300);
    F.Show;
    Application.ProcessMessages;
    if VhoClipboard.GetComponents(F, F, 4, 4) = nil then
      WriteLn('nothing');
    for I := 0 to F.ComponentCount - 1 do
      WriteLn('pasted ', Describe(F.Components[I]));
    WriteLn('end');
  finally
    F.Free;
  end;
end;

{ TTestVhoClipbrdUtils }

procedure TTestVhoClipbrdUtils.SetUp;
begin
  inherited SetUp;
  RegisterPastable;
  Form := NewForm(40, 40, 500, 400);
  Form.Name := 'ClipForm';
  ShowForm(Form);
  Pasted := TComponentList.Create(True);
end;

procedure TTestVhoClipbrdUtils.TearDown;
begin
  FreeAndNil(Pasted);
  VhoClipboard.RenameDuplicates := False;
  inherited TearDown;
end;

function TTestVhoClipbrdUtils.NewPanel: TPanel;
begin
  Result := TPanel.Create(Form);
  Result.Name := 'Panel1';
  Result.Parent := Form;
  Result.SetBounds(20, 30, 150, 80);
  Result.Caption := 'Hello panel';
  Result.Font.Name := 'DejaVu Sans';
  Result.Font.Size := 13;
  Result.Font.Color := clNavy;
end;

procedure TTestVhoClipbrdUtils.NewThree(out P: TPanel; out B: TButton; out T: TTimer);
begin
  P := NewPanel;
  B := TButton.Create(Form);
  B.Name := 'Button1';
  B.Parent := Form;
  B.SetBounds(200, 40, 90, 28);
  B.Caption := 'Press';
  T := TTimer.Create(Form);
  T.Name := 'Timer1';
  T.Interval := 250;
end;

procedure TTestVhoClipbrdUtils.CopyOf(const Comps: array of TComponent;
  WithChildren: Boolean);
var
  L: TComponentList;
  I: Integer;
begin
  L := TComponentList.Create(False);
  try
    for I := 0 to High(Comps) do
      L.Add(Comps[I]);
    VhoClipboard.SetComponents(L, WithChildren);
  finally
    L.Free;
  end;
end;

procedure TTestVhoClipbrdUtils.PutBlock(Stream: TMemoryStream);
begin
  Stream.Position := 0;
  VhoClipboard.Open;
  try
    VhoClipboard.Clear;
    VhoClipboard.AddFormat(CF_QorComponents, Stream);
  finally
    VhoClipboard.Close;
  end;
end;

function TTestVhoClipbrdUtils.RecordOf(AComponent: TComponent): TMemoryStream;
begin
  Result := TMemoryStream.Create;
  Result.WriteComponent(AComponent);
end;

{ Pastes; what arrives without owner is freed by TearDown. }
function TTestVhoClipbrdUtils.Paste(Owner, Parent: TComponent): TComponent;
begin
  Result := VhoClipboard.GetComponents(Owner, Parent, 4, 4);
  if (Result <> nil) and (Result.Owner = nil) then
    Pasted.Add(Result);
end;

procedure TTestVhoClipbrdUtils.TestCopyingAnEmptySelectionLeavesTheClipboardAsItWas;
var
  L: TComponentList;
begin
  VhoClipboard.AsText := 'keep me';
  L := TComponentList.Create(False);
  try
    VhoClipboard.SetComponents(L, False);
    VhoClipboard.SetComponents(nil, True);
  finally
    L.Free;
  end;
  AssertEquals('text still there', 'keep me', VhoClipboard.AsText);
  AssertFalse('no component data', VhoClipboard.HasFormat(CF_QorComponents));
end;

procedure TTestVhoClipbrdUtils.TestPastingIntoTheSameParentOffsetsOnceThenTwice;
var
  P: TPanel;
  First, Second: TComponent;
begin
  P := NewPanel;
  CopyOf([P]);
  First := Paste(nil, Form);
  AssertNotNull('pasted', First);
  AssertEquals('first copy left', 24, TControl(First).Left);
  AssertEquals('first copy top', 34, TControl(First).Top);
  AssertSame('under the paste parent', Form, TControl(First).Parent);
  Second := Paste(nil, Form);
  AssertNotNull('pasted again', Second);
  AssertEquals('second copy left', 28, TControl(Second).Left);
  AssertEquals('second copy top', 38, TControl(Second).Top);
  AssertEquals('the original stays', 20, P.Left);
end;

procedure TTestVhoClipbrdUtils.TestPasteWalksPastControlsStandingAtTheNextCorners;
var
  P: TPanel;
  Blocker1, Blocker2: TButton;
  C: TComponent;
begin
  P := NewPanel;
  CopyOf([P]);
  // Controls already at (24, 34) and (28, 38): the copy goes on to (32, 42).
  Blocker1 := TButton.Create(Form);
  Blocker1.Name := 'Blocker1';
  Blocker1.Parent := Form;
  Blocker1.SetBounds(24, 34, 10, 10);
  Blocker2 := TButton.Create(Form);
  Blocker2.Name := 'Blocker2';
  Blocker2.Parent := Form;
  Blocker2.SetBounds(28, 38, 10, 10);
  C := Paste(nil, Form);
  AssertNotNull('pasted', C);
  AssertEquals('left after three steps', 32, TControl(C).Left);
  AssertEquals('top after three steps', 42, TControl(C).Top);
  // A paste with the offsets 0 looks once and stays.
  C := VhoClipboard.GetComponents(nil, Form, 0, 0);
  Pasted.Add(C);
  AssertEquals('no offset: stays at its place', 20, TControl(C).Left);
end;

procedure TTestVhoClipbrdUtils.TestPastingANonVisualComponentChangesNoPosition;
var
  T: TTimer;
  P: TPanel;
  C: TComponent;
begin
  P := NewPanel;
  T := TTimer.Create(Form);
  T.Name := 'Timer1';
  T.Interval := 1234;
  T.Enabled := False;
  T.DesignInfo := (77 shl 16) or 55;
  CopyOf([T]);
  C := Paste(nil, Form);
  AssertNotNull('pasted', C);
  AssertEquals('a timer', 'TTimer', C.ClassName);
  AssertEquals('its designed place kept', (77 shl 16) or 55, C.DesignInfo);
  AssertEquals('properties', 1234, TTimer(C).Interval);
  AssertEquals('the panel did not move', 20, P.Left);
end;

procedure TTestVhoClipbrdUtils.TestPastingWithNilOwnerCreatesComponentsWithoutOwner;
var
  C: TComponent;
begin
  CopyOf([NewPanel]);
  C := Paste(nil, Form);
  AssertNotNull('pasted', C);
  AssertNull('no owner', C.Owner);
  AssertEquals('the form owns only its own', 1, Form.ComponentCount);
end;

procedure TTestVhoClipbrdUtils.TestClipboardWithAnotherFormatOnlyGivesNil;
begin
  VhoClipboard.AsText := 'only text';
  AssertNull('nothing of ours', Paste(Form, Form));
  AssertEquals('nothing created', 0, Form.ComponentCount);
end;

procedure TTestVhoClipbrdUtils.TestPanelCaptionFontButtonAndNonVisualTravelWithTheirProperties;
var
  P: TPanel;
  B: TButton;
  T: TTimer;
  Holder: TComponent;
  Last: TComponent;
begin
  NewThree(P, B, T);
  CopyOf([P, B, T]);
  Holder := TComponent.Create(nil);
  try
    Last := Paste(Holder, Form);
    AssertEquals('three arrived', 3, Holder.ComponentCount);
    AssertSame('the last read is returned', Holder.Components[2], Last);
    AssertEquals('panel', 'TPanel Panel1 24,34 150x80 "Hello panel" font=DejaVu Sans/13/' +
      IntToStr(Integer(clNavy)), Describe(Holder.Components[0]));
    AssertEquals('button', 'TButton Button1 204,44 90x28 "Press"', Describe(Holder.Components[1]));
    AssertEquals('timer', 'TTimer Timer1 interval=250', Describe(Holder.Components[2]));
  finally
    Holder.Free;
  end;
end;

procedure TTestVhoClipbrdUtils.TestRecordsFollowTheListAndChildrenDepthFirst;
var
  P: TPanel;
  Inner: TPanel;
  B, B2: TButton;
  Holder: TComponent;
  I: Integer;
  Names: string;
begin
  P := NewPanel;
  Inner := TPanel.Create(Form);
  Inner.Name := 'Inner';
  Inner.Parent := P;
  Inner.SetBounds(5, 5, 60, 40);
  B := TButton.Create(Form);
  B.Name := 'Deep';
  B.Parent := Inner;
  B.SetBounds(2, 2, 30, 20);
  B2 := TButton.Create(Form);
  B2.Name := 'Side';
  B2.Parent := P;
  B2.SetBounds(90, 5, 40, 20);
  CopyOf([P]);
  Holder := TComponent.Create(nil);
  try
    VhoClipboard.GetComponents(Holder, nil, 4, 4);
    AssertEquals('without children: the panel alone', 1, Holder.ComponentCount);
  finally
    Holder.Free;
  end;
  CopyOf([P], True);
  Names := '';
  Holder := TComponent.Create(nil);
  try
    VhoClipboard.GetComponents(Holder, nil, 4, 4);
    for I := 0 to Holder.ComponentCount - 1 do
      Names := Names + Holder.Components[I].Name + ' ';
  finally
    Holder.Free;
  end;
  AssertEquals('panel, its children depth first', 'Panel1 Inner Deep Side ', Names);
end;

procedure TTestVhoClipbrdUtils.TestOwnerWithTheNameAlreadySkipsTheComponentAndReadsOn;
var
  P: TPanel;
  B: TButton;
  T: TTimer;
begin
  NewThree(P, B, T);
  CopyOf([P, B]);
  B.Name := 'ButtonOld';
  // Form still owns Panel1: that record is skipped, Button1 arrives.
  AssertNotNull('the button arrived', Paste(Form, Form));
  AssertEquals('panel skipped, button pasted', 4, Form.ComponentCount);
  AssertNotNull('Button1 there', Form.FindComponent('Button1'));
  AssertEquals('one panel only', 1, Ord(Form.FindComponent('Panel1') <> nil));
end;

procedure TTestVhoClipbrdUtils.TestRenameDuplicatesGivesAUniqueName;
var
  P: TPanel;
  C: TComponent;
begin
  P := NewPanel;
  CopyOf([P]);
  VhoClipboard.RenameDuplicates := True;
  C := Paste(Form, Form);
  AssertNotNull('pasted under a new name', C);
  AssertEquals('the next free name', 'Panel2', C.Name);
  AssertSame('owned by the form', Form, C.Owner);
end;

{ Names pasted earlier in the same paste count as the owner's: the second
  "Twin" is skipped, or renamed when duplicates are renamed. }
procedure TTestVhoClipbrdUtils.TestTwoRecordsOfOneNameInOnePasteKeepTheFirst;
var
  Other: TComponent;
  First, Second: TButton;
  Target: TForm;
begin
  First := TButton.Create(Form);
  First.Name := 'Twin';
  First.Caption := 'first';
  First.Parent := Form;
  Other := TComponent.Create(nil);
  try
    Second := TButton.Create(Other);
    Second.Name := 'Twin';
    Second.Caption := 'second';
    CopyOf([First, Second]);
  finally
    Other.Free;
  end;
  Target := TForm.CreateNew(nil);
  try
    AssertNotNull('the first arrived', Paste(Target, Target));
    AssertEquals('the second skipped', 1, Target.ComponentCount);
    AssertEquals('the first kept its caption', 'first', TButton(Target.Components[0]).Caption);
    AssertEquals('the skipped one left no control behind', 1, Target.ControlCount);
  finally
    Target.Free;
  end;
  VhoClipboard.RenameDuplicates := True;
  Target := TForm.CreateNew(nil);
  try
    AssertNotNull('both arrived', Paste(Target, Target));
    AssertEquals('two components', 2, Target.ComponentCount);
    AssertEquals('first keeps the name', 'Twin', Target.Components[0].Name);
    AssertEquals('second renamed', 'Button1', Target.Components[1].Name);
    AssertEquals('second keeps its caption', 'second', TButton(Target.Components[1]).Caption);
  finally
    Target.Free;
  end;
end;

procedure TTestVhoClipbrdUtils.TestSecondProcessPastesWhatThisOneCopied;
var
  P: TPanel;
  B: TButton;
  T: TTimer;
  Child: TProcess;
  Output: TStringList;
  Buf: string;
  N: Integer;

  function ChildDone: Boolean;
  begin
    // This process must answer the child's clipboard request meanwhile:
    // the waiting loop pumps our messages.
    while Child.Output.NumBytesAvailable > 0 do
    begin
      SetLength(Buf, Child.Output.NumBytesAvailable);
      N := Child.Output.Read(Buf[1], Length(Buf));
      Output.Text := Output.Text + Copy(Buf, 1, N);
    end;
    Result := Pos('end', Output.Text) > 0;
  end;

begin
  NewThree(P, B, T);
  CopyOf([P, B, T]);
  Output := TStringList.Create;
  Child := TProcess.Create(nil);
  try
    Child.Executable := ParamStr(0);
    Child.Parameters.Add('--clip-paste');
    Child.Options := [poUsePipes, poStderrToOutPut];
    // The child's heap report must not land in this run's log.
    for N := 1 to GetEnvironmentVariableCount do
      if Pos('HEAPTRC=', GetEnvironmentString(N)) <> 1 then
        Child.Environment.Add(GetEnvironmentString(N));
    Child.Environment.Add('HEAPTRC=log=/dev/null');
    Child.Execute;
    AssertWait('the second process pasted and reported', @ChildDone, 20000);
    AssertTrue('panel arrived: ' + Output.Text, Output.IndexOf(
      'pasted TPanel Panel1 24,34 150x80 "Hello panel" font=DejaVu Sans/13/' +
      IntToStr(Integer(clNavy))) >= 0);
    AssertTrue('button arrived: ' + Output.Text,
      Output.IndexOf('pasted TButton Button1 204,44 90x28 "Press"') >= 0);
    AssertTrue('timer arrived: ' + Output.Text,
      Output.IndexOf('pasted TTimer Timer1 interval=250') >= 0);
  finally
    if Child.Running then
      Child.Terminate(1);
    Child.Free;
    Output.Free;
  end;
end;

procedure TTestVhoClipbrdUtils.TestTruncatedRecordPastesNothingAndDoesNotCrash;
var
  S, Cut: TMemoryStream;
  Holder: TComponent;
begin
  S := RecordOf(NewPanel);
  Cut := TMemoryStream.Create;
  Holder := TComponent.Create(nil);
  try
    Cut.CopyFrom(S, 0);
    Cut.Size := S.Size div 2;
    PutBlock(Cut);
    AssertNull('nothing whole to paste', VhoClipboard.GetComponents(Holder, Form, 4, 4));
    AssertEquals('nothing created', 0, Holder.ComponentCount);
    AssertEquals('the form unchanged', 1, Form.ControlCount);
  finally
    Holder.Free;
    Cut.Free;
    S.Free;
  end;
end;

procedure TTestVhoClipbrdUtils.TestGoodRecordFollowedByJunkPastesTheGoodOne;
var
  S: TMemoryStream;
  Holder: TComponent;
  Junk: array[0..199] of Byte;
  I: Integer;
begin
  S := RecordOf(NewPanel);
  Holder := TComponent.Create(nil);
  try
    RandSeed := 42;
    for I := 0 to High(Junk) do
      Junk[I] := Random(256);
    S.Seek(0, soEnd);
    S.WriteBuffer(Junk, SizeOf(Junk));
    PutBlock(S);
    AssertNotNull('the good record pasted', VhoClipboard.GetComponents(Holder, Form, 4, 4));
    AssertEquals('one component', 1, Holder.ComponentCount);
    AssertEquals('the panel', 'Hello panel', TPanel(Holder.Components[0]).Caption);
  finally
    Holder.Free;
    S.Free;
  end;
end;

procedure TTestVhoClipbrdUtils.TestUnknownClassIsSkippedAndTheNextRecordRead;
var
  S, Second: TMemoryStream;
  Holder: TComponent;
  B: TButton;
  P: PChar;
  I: Integer;
begin
  S := RecordOf(NewPanel);
  B := TButton.Create(Form);
  B.Name := 'Button1';
  B.Parent := Form;
  Second := RecordOf(B);
  Holder := TComponent.Create(nil);
  try
    // "TPanel" becomes "TPanex", a class nobody registered.
    P := PChar(S.Memory);
    for I := 0 to S.Size - 6 do
      if StrLComp(P + I, 'TPanel', 6) = 0 then
      begin
        P[I + 5] := 'x';
        Break;
      end;
    S.Seek(0, soEnd);
    Second.Position := 0;
    S.CopyFrom(Second, Second.Size);
    PutBlock(S);
    AssertNotNull('the button after it pasted', VhoClipboard.GetComponents(Holder, Form, 4, 4));
    AssertEquals('only the button', 'TButton', Holder.Components[0].ClassName);
    AssertEquals('one', 1, Holder.ComponentCount);
  finally
    Holder.Free;
    Second.Free;
    S.Free;
  end;
end;

procedure TTestVhoClipbrdUtils.TestRandomBlocksNeverCrash;
var
  Good, S: TMemoryStream;
  Holder: TComponent;
  Round, I, Errors, Opened: Integer;
  P: PByte;
begin
  Good := RecordOf(NewPanel);
  Errors := 0;
  Opened := 0;
  RandSeed := 7;
  try
    for Round := 1 to 200 do
    begin
      S := TMemoryStream.Create;
      Holder := TComponent.Create(nil);
      try
        if Round mod 2 = 0 then
        begin
          // Pure noise of random length.
          S.Size := 1 + Random(600);
          P := S.Memory;
          for I := 0 to S.Size - 1 do
            P[I] := Random(256);
        end
        else
        begin
          // The good record with a few bytes changed.
          S.CopyFrom(Good, 0);
          P := S.Memory;
          for I := 1 to 1 + Random(4) do
            P[Random(S.Size)] := Random(256);
        end;
        PutBlock(S);
        try
          if VhoClipboard.GetComponents(Holder, Form, 4, 4) <> nil then
            Inc(Opened);
        except
          Inc(Errors);
        end;
      finally
        Holder.Free;
        S.Free;
      end;
    end;
  finally
    Good.Free;
  end;
  AssertEquals('never an exception', 0, Errors);
  AssertTrue('some damaged records still paste', Opened > 0);
  AssertEquals('the form holds only its own panel', 1, Form.ControlCount);
end;

initialization
  RegisterTest(TTestVhoClipbrdUtils);
end.
