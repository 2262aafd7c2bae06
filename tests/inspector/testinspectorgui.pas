{ QorDesign tests — Part 2.3, the inspector control on screen, driven by real
  X input: typing, pick lists, expanding, the strings dialog, bad values,
  the column line, and the inspector following the design stage. }
unit TestInspectorGui;

{$mode objfpc}{$H+}
{$modeswitch nestedprocvars}

interface

uses
  // RTL / FCL
  Classes, SysUtils, Contnrs, TypInfo, fpcunit, testregistry,
  // LCL
  LCLType, Math, Controls, StdCtrls, ExtCtrls, Forms, Graphics, Grids, ValEdit,
    IntfGraphics,
  // IDEIntf
  PropEdits,
  // ours
  QorGuiTest, QorDesigner, QorDesignConsole, ObjInspect, TestDesignSurface;

type

  { TTestInspectorGui
    The stage of the surface tests, and beside it a form holding a
    TQorObjInspector linked to the stage's design center. }

  TTestInspectorGui = class(TQorSurfaceTestCase)
  private
    InspForm: TQorTestForm;
    Insp: TQorObjInspector;
    FErrors: TStringList;
    FActiveChanges, FRefreshes: Integer;
    FTimer: TTimer;
    FDialogClass, FDialogText: string;
    FDialogSeen, FDialogAccept: Boolean;
    FDriveStep: Integer;
    FDrawnRows: TList;
    procedure AppException(Sender: TObject; E: Exception);
    procedure ActiveChanged(Sender: TObject);
    procedure Refreshed(Sender: TObject);
    procedure DriveDialog(Sender: TObject);
    function RowOf(const PropName: string): Integer;
    function ValueOf(const PropName: string): string;
    function CellPoint(ACol, ARow: Integer): TPoint;
    procedure ClickCell(ACol, ARow: Integer);
    procedure DoubleClickName(const PropName: string);
    procedure EditValue(const PropName, NewText: string);
    procedure GrabAndSave(const FileName: string);
    procedure WatchDialog(const AClassName, AText: string; Accept: Boolean);
    procedure CountDrawnCell(Sender: TObject; ACol, ARow: Integer; ARect: TRect;
      AState: TGridDrawState);
    function GrabInspectorPainted: TLazIntfImage;
  protected
    procedure SetUp; override;
    procedure TearDown; override;
  published
    // Part 2.3, edge cases worth testing
    procedure TestSettingSameActiveComponentTwiceRebuildsNothingAndRaisesNoEvent;
    procedure TestSetCurrItemIndexMinusFiveSelectsRowZeroPastEndSelectsLastRow;
    procedure TestRefreshThatRemovedRowsFallsBackToLastRow;
    procedure TestEnterInInplaceEditorWritesValueAtOnce;
    procedure TestPickListEntryIsWrittenWithoutEnter;
    procedure TestDraggingColumnLineChangesNameWidthByMouseTravelAndReleaseAnywhereEndsIt;
    procedure TestDoubleClickExpandableRowTogglesIt;
    procedure TestDoubleClickRowWithDialogEditorOpensDialog;
    // The issue's gestures
    procedure TestButtonListsPublishedPropertiesInNameOrderWithValues;
    procedure TestAnchorsExpandIntoElementRowsAndTogglingOneChangesTheSet;
    procedure TestMemoLinesEditButtonOpensStringsDialogAndOkStoresTheLine;
    procedure TestTwoButtonsWithDifferentCaptionsShowEmptyAndEmptyEntryChangesNeither;
    procedure TestAbcInWidthGivesClearErrorWidthStaysAndInspectorKeepsWorking;
    procedure TestUnknownNameTypedIntoAlignGivesClearErrorAndAlignStays;
    procedure TestPfEventListsEventsWithEmptyValues;
    procedure TestSelectingAndMovingOnStageShowsAndUpdatesValues;
    procedure TestEditInInspectorMovesTheSizer;
    // Lines laid over the old ones (RefreshOutput) and pick lists filled
    // when the editor opens
    procedure TestSelectingAnotherButtonShowsItsValuesAndEditsIt;
    // Speed of the display (issue 4): changed rows only, the editor fitting
    procedure TestSelectingALikeButtonPaintsTheChangedRowsNotTheRowsBetween;
    procedure TestNewRowsShowTheEditorOfTheCurrentRowsStyle;
    procedure TestRowsDrawnWithoutCellClipsLookAsTheGridDrawsThem;
  end;

{ The row whose name, without indent and expansion mark, is AName; -1. }
function InspRowOf(Insp: TVhoObjInspector; const AName: string): Integer;

implementation

function InspRowOf(Insp: TVhoObjInspector; const AName: string): Integer;
var
  S: string;
begin
  for Result := 0 to Insp.Strings.Count - 1 do
  begin
    S := Trim(Insp.Strings.Names[Result]);
    if (Copy(S, 1, 2) = '+ ') or (Copy(S, 1, 2) = '- ') then
      Delete(S, 1, 2);
    if S = AName then
      Exit;
  end;
  Result := -1;
end;

procedure TTestInspectorGui.SetUp;
begin
  inherited SetUp;
  FErrors := TStringList.Create;
  FActiveChanges := 0;
  FRefreshes := 0;
  Application.OnException := @AppException;
  InspForm := NewForm(700, 40, 520, 720);
  InspForm.Name := 'InspectorForm';
  Insp := TQorObjInspector.Create(InspForm);
  Insp.Name := 'Inspector1';
  Insp.Parent := InspForm;
  Insp.Align := alClient;
  Insp.ColWidths[0] := 160;
  Insp.OnChangeActiveComponent := @ActiveChanged;
  Insp.OnRefresh := @Refreshed;
  Center.ObjInspector := Insp;
  ShowForm(InspForm);
end;

procedure TTestInspectorGui.TearDown;
begin
  FreeAndNil(FTimer);
  Application.OnException := nil;
  inherited TearDown;
  FreeAndNil(FErrors);
end;

procedure TTestInspectorGui.AppException(Sender: TObject; E: Exception);
begin
  FErrors.Add(E.ClassName + ': ' + E.Message);
end;

procedure TTestInspectorGui.ActiveChanged(Sender: TObject);
begin
  Inc(FActiveChanges);
end;

procedure TTestInspectorGui.Refreshed(Sender: TObject);
begin
  Inc(FRefreshes);
end;

function TTestInspectorGui.RowOf(const PropName: string): Integer;
begin
  Result := InspRowOf(Insp, PropName);
end;

function TTestInspectorGui.ValueOf(const PropName: string): string;
var
  R: Integer;
begin
  R := RowOf(PropName);
  AssertTrue('row ' + PropName + ' listed', R >= 0);
  Result := Insp.Strings.ValueFromIndex[R];
end;

function TTestInspectorGui.CellPoint(ACol, ARow: Integer): TPoint;
var
  R: TRect;
begin
  R := Insp.CellRect(ACol, ARow);
  Result := Point((R.Left + R.Right) div 2, (R.Top + R.Bottom) div 2);
end;

procedure TTestInspectorGui.ClickCell(ACol, ARow: Integer);
begin
  ClickGridCell(Insp, ACol, ARow);
end;

procedure TTestInspectorGui.DoubleClickName(const PropName: string);
var
  R: Integer;
  P: TPoint;
begin
  R := RowOf(PropName);
  AssertTrue('row ' + PropName, R >= 0);
  Insp.TopRow := Max(0, R - 3);
  DrainMessages(30);
  P := CellPoint(0, R);
  MouseMoveTo(Insp, P.X, P.Y);
  XDo('click --repeat 2 --delay 80 1');
  DrainMessages(150);
end;

{ Clicks the value cell, selects its text, types NewText (no Enter). }
procedure TTestInspectorGui.EditValue(const PropName, NewText: string);
var
  R: Integer;

  function EditorOnRow: Boolean;
  begin
    Result := (Insp.Row = R) and (Insp.Editor <> nil) and Insp.Editor.Visible and
      Insp.Editor.Focused;
  end;

begin
  R := RowOf(PropName);
  AssertTrue('row ' + PropName, R >= 0);
  ClickCell(1, R);
  AssertWait('editor on ' + PropName, @EditorOnRow);
  PressKey('ctrl+a');
  TypeText(NewText);
  DrainMessages(60);
end;

procedure TTestInspectorGui.GrabAndSave(const FileName: string);
var
  B: TBitmap;
begin
  B := GrabClient(InspForm);
  try
    SavePng(B, FileName);
  finally
    B.Free;
  end;
end;

procedure TTestInspectorGui.WatchDialog(const AClassName, AText: string; Accept: Boolean);
begin
  FDialogClass := AClassName;
  FDialogText := AText;
  FDialogAccept := Accept;
  FDialogSeen := False;
  FDriveStep := 0;
  FTimer := TTimer.Create(nil);
  FTimer.Interval := 150;
  FTimer.OnTimer := @DriveDialog;
  FTimer.Enabled := True;
end;

function FindButton(Parent: TWinControl; Wanted: TModalResult): TCustomButton;
var
  I: Integer;
  C: TControl;
begin
  Result := nil;
  for I := 0 to Parent.ControlCount - 1 do
  begin
    C := Parent.Controls[I];
    if (C is TCustomButton) and (TCustomButton(C).ModalResult = Wanted) and C.IsVisible then
      Exit(TCustomButton(C));
    if C is TWinControl then
    begin
      Result := FindButton(TWinControl(C), Wanted);
      if Result <> nil then
        Exit;
    end;
  end;
end;

{ Runs inside the dialog's modal loop: types into it and closes it by a
  real click on its OK (or Cancel) button. }
procedure TTestInspectorGui.DriveDialog(Sender: TObject);
var
  I: Integer;
  F: TCustomForm;
  B: TCustomButton;
  M: TCustomMemo;
  Wanted: TModalResult;
  P: TPoint;
begin
  F := nil;
  for I := 0 to Screen.CustomFormCount - 1 do
    if Screen.CustomForms[I].ClassNameIs(FDialogClass) and Screen.CustomForms[I].Visible and
      Screen.CustomForms[I].HandleAllocated then
      F := Screen.CustomForms[I];
  if F = nil then
    Exit;
  FDialogSeen := True;
  // Without a window manager the keys go to the window under the pointer:
  // the memo is clicked before typing.
  case FDriveStep of
    1:
      if FDialogText <> '' then
      begin
        M := nil;
        for I := 0 to F.ComponentCount - 1 do
          if F.Components[I] is TCustomMemo then
            M := TCustomMemo(F.Components[I]);
        if M <> nil then
        begin
          P := M.ClientToScreen(Point(M.Width div 2, M.Height div 2));
          XDo(Format('mousemove --sync %d %d', [P.X, P.Y]));
          XDo('click 1');
        end;
      end;
    2:
      if FDialogText <> '' then
        TypeText(FDialogText);
    3:
      begin
        if FDialogAccept then
          Wanted := mrOK
        else
          Wanted := mrCancel;
        // The buttons of a TButtonPanel are the panel's components.
        B := FindButton(F, Wanted);
        if B <> nil then
        begin
          P := B.ClientToScreen(Point(B.Width div 2, B.Height div 2));
          XDo(Format('mousemove --sync %d %d', [P.X, P.Y]));
          XDo('click 1');
        end;
        FTimer.Enabled := False;
      end;
  end;
  Inc(FDriveStep);
end;

{ Edge cases }

procedure TTestInspectorGui.TestSettingSameActiveComponentTwiceRebuildsNothingAndRaisesNoEvent;
var
  FirstRow: TObject;
  Events, Refreshes: Integer;
begin
  Insp.SetActiveComponent(PanelButton);
  AssertTrue('rows listed', Insp.Strings.Count > 10);
  FirstRow := Insp.Strings.Objects[0];
  Events := FActiveChanges;
  Refreshes := FRefreshes;
  AssertEquals('one change event', 1, Events);
  Insp.SetActiveComponent(PanelButton);
  AssertEquals('no event', Events, FActiveChanges);
  AssertEquals('no refresh', Refreshes, FRefreshes);
  AssertSame('same row objects', FirstRow, Insp.Strings.Objects[0]);
  Insp.SetActiveComponent(Edit);
  AssertEquals('another component: event', Events + 1, FActiveChanges);
end;

procedure TTestInspectorGui.TestSetCurrItemIndexMinusFiveSelectsRowZeroPastEndSelectsLastRow;
begin
  Insp.SetActiveComponent(PanelButton);
  Insp.SetCurrItemIndex(7);
  AssertEquals('row 7', 7, Insp.Row);
  Insp.SetCurrItemIndex(-5);
  AssertEquals('row 0', 0, Insp.Row);
  AssertEquals('remembered', 0, Insp.SavedItemIndex);
  Insp.SetCurrItemIndex(Insp.RowCount + 40);
  AssertEquals('last row', Insp.RowCount - 1, Insp.Row);
  Insp.SetCurrItemIndex(3);
  Insp.Row := 5;
  Insp.ReturnToOldPos;
  AssertEquals('back to the remembered row', 3, Insp.Row);
end;

procedure TTestInspectorGui.TestRefreshThatRemovedRowsFallsBackToLastRow;
begin
  Insp.SetActiveComponent(PanelButton);
  Insp.SetCurrItemIndex(30);
  AssertEquals('row 30', 30, Insp.Row);
  // The list itself, not its setter, so nothing is rebuilt before Refresh.
  Insp.OutputPropNames.CommaText := 'Caption,Left,Top';
  AssertTrue('not rebuilt yet', Insp.Strings.Count > 30);
  Insp.Refresh;
  AssertEquals('three rows', 3, Insp.Strings.Count);
  AssertEquals('the last row', 2, Insp.Row);
end;

procedure TTestInspectorGui.TestEnterInInplaceEditorWritesValueAtOnce;
begin
  PanelButton.Caption := 'Hello';
  Insp.SetActiveComponent(PanelButton);
  AssertEquals('shown', 'Hello', ValueOf('Caption'));
  EditValue('Caption', 'World');
  AssertEquals('typing alone writes nothing', 'Hello', PanelButton.Caption);
  PressKey('Return');
  DrainMessages(100);
  AssertEquals('Enter wrote it', 'World', PanelButton.Caption);
  AssertTrue('modified', Insp.Modified);
  AssertEquals('no error', '', FErrors.Text);
end;

procedure TTestInspectorGui.TestPickListEntryIsWrittenWithoutEnter;
var
  R: Integer;

  function Combo: Boolean;
  begin
    Result := (Insp.Row = R) and (Insp.Editor is TCustomComboBox) and Insp.Editor.Visible;
  end;

  function Dropped: Boolean;
  begin
    Result := (Insp.Editor is TCustomComboBox) and TCustomComboBox(Insp.Editor).DroppedDown;
  end;

  function Aligned: Boolean;
  begin
    Result := PanelButton.Align = alClient;
  end;

var
  P: TPoint;
  I: Integer;
begin
  Insp.SetActiveComponent(PanelButton);
  R := RowOf('Align');
  ClickCell(1, R);
  AssertWait('pick list on Align', @Combo);
  AssertEquals('offered', 'alNone,alTop,alBottom,alLeft,alRight,alClient,alCustom',
    TCustomComboBox(Insp.Editor).Items.CommaText);
  // The arrow at the right end of the pick list opens it.
  P := Insp.Editor.ClientToScreen(Point(Insp.Editor.Width - 8, Insp.Editor.Height div 2));
  XDo(Format('mousemove --sync %d %d', [P.X, P.Y]));
  XDo('click 1');
  AssertWait('list dropped down', @Dropped);
  DrainMessages(150);
  // The list opens with nothing highlighted: the first Down reaches alNone.
  for I := 1 to 6 do
    PressKey('Down');
  DrainMessages(100);
  AssertEquals('nothing written while choosing', Ord(alNone), Ord(PanelButton.Align));
  PressKey('Return');
  AssertWait('alClient applied', @Aligned);
  AssertEquals('shown', 'alClient', ValueOf('Align'));
end;

procedure TTestInspectorGui.TestDraggingColumnLineChangesNameWidthByMouseTravelAndReleaseAnywhereEndsIt;
var
  W0, Y: Integer;
  P: TPoint;
begin
  Insp.SetActiveComponent(PanelButton);
  W0 := Insp.ColWidths[0];
  Y := CellPoint(0, 2).Y;
  MouseMoveTo(Insp, W0, Y);
  AssertEquals('split cursor over the line', Integer(crHSplit), Integer(Insp.Cursor));
  MouseDown;
  DrainMessages(60);
  AssertTrue('dragging', Insp.Resizing);
  P := ScreenPoint(Insp, W0, Y);
  XDo(Format('mousemove --sync %d %d', [P.X + 20, P.Y]));
  DrainMessages(40);
  XDo(Format('mousemove --sync %d %d', [P.X + 57, P.Y + 5]));
  DrainMessages(60);
  AssertEquals('width follows the mouse', W0 + 57, Insp.ColWidths[0]);
  // Released outside the inspector's form, below it.
  XDo(Format('mousemove --sync %d %d', [P.X + 80, InspForm.Top + InspForm.Height + 60]));
  DrainMessages(60);
  MouseUp;
  DrainMessages(80);
  AssertFalse('drag ended', Insp.Resizing);
  AssertEquals('the travel exactly', W0 + 80, Insp.ColWidths[0]);
  XDo(Format('mousemove --sync %d %d', [P.X + 10, P.Y]));
  DrainMessages(60);
  AssertEquals('moving after the release changes nothing', W0 + 80, Insp.ColWidths[0]);
  // No minimum but zero (an LCL grid takes a negative width as "default").
  Insp.StartResizeCol(Point(W0, 5));
  Insp.EndResizeCol(Point(W0 - 1000, 5));
  AssertEquals('down to nothing', 0, Insp.ColWidths[0]);
end;

procedure TTestInspectorGui.TestDoubleClickExpandableRowTogglesIt;
var
  Lines: Integer;
begin
  Insp.SetActiveComponent(PanelButton);
  Lines := Insp.Strings.Count;
  AssertTrue('collapsed Font', Insp.Strings.IndexOfName('+ Font') >= 0);
  DoubleClickName('Font');
  AssertTrue('expanded Font', Insp.Strings.IndexOfName('- Font') >= 0);
  AssertTrue('sub-rows added', Insp.Strings.Count > Lines + 5);
  AssertEquals('Size one level deeper', IntToStr(PanelButton.Font.Size),
    Insp.Strings.Values['    Size']);
  AssertEquals('the row stays current', RowOf('Font'), Insp.Row);
  DoubleClickName('Font');
  AssertTrue('collapsed again', Insp.Strings.IndexOfName('+ Font') >= 0);
  AssertEquals('sub-rows gone', Lines, Insp.Strings.Count);
end;

procedure TTestInspectorGui.TestDoubleClickRowWithDialogEditorOpensDialog;

  function Stored: Boolean;
  begin
    Result := Trim(Memo.Hint) = 'hint text';
  end;

begin
  Memo.Hint := '';
  Insp.SetActiveComponent(Memo);
  AssertTrue('Hint has a dialog editor',
    paDialog in (Insp.PropList.GetPropItemsByName('Hint').PropEditor.GetAttributes));
  WatchDialog('TStringsPropEditorDlg', 'hint text', True);
  DoubleClickName('Hint');
  AssertWait('the dialog stored the hint', @Stored, 8000);
  AssertTrue('the strings dialog was shown', FDialogSeen);
  AssertEquals('shown', 'hint text', Trim(ValueOf('Hint')));
end;

{ The issue's gestures }

procedure TTestInspectorGui.TestButtonListsPublishedPropertiesInNameOrderWithValues;
var
  I: Integer;
  Item: TObjInspecPropertyItem;
  Prev: string;
begin
  PanelButton.Caption := 'Press';
  Center.DesignManager.IsDesigning := True;
  DrainMessages(50);
  Click(PanelButton, 10, 10);
  DrainMessages(120);
  AssertSame('the inspector shows the clicked button', PanelButton, Insp.ActiveComponent);
  Prev := '';
  for I := 0 to Insp.Strings.Count - 1 do
  begin
    Item := Insp.Strings.Objects[I] as TObjInspecPropertyItem;
    AssertTrue('name order: ' + Item.GetPropName, CompareText(Prev, Item.GetPropName) < 0);
    Prev := Item.GetPropName;
  end;
  AssertEquals('Caption', 'Press', ValueOf('Caption'));
  AssertEquals('Left', IntToStr(PanelButton.Left), ValueOf('Left'));
  AssertEquals('Width', IntToStr(PanelButton.Width), ValueOf('Width'));
  AssertEquals('Name', 'Button1', ValueOf('Name'));
  AssertEquals('no events', -1, RowOf('OnClick'));
end;

procedure TTestInspectorGui.TestAnchorsExpandIntoElementRowsAndTogglingOneChangesTheSet;
var
  R: Integer;
  P: TPoint;

  function Anchored: Boolean;
  begin
    Result := PanelButton.Anchors = [akTop, akLeft, akRight];
  end;

begin
  PanelButton.Anchors := [akTop, akLeft];
  Insp.SetActiveComponent(PanelButton);
  AssertEquals('set text', '[akTop,akLeft]', ValueOf('Anchors'));
  DoubleClickName('Anchors');
  R := RowOf('Anchors');
  AssertEquals('akTop', 'akTop', Trim(Insp.Strings.Names[R + 1]));
  AssertEquals('akTop in', 'True', Insp.Strings.ValueFromIndex[R + 1]);
  AssertEquals('akRight', 'akRight', Trim(Insp.Strings.Names[R + 3]));
  AssertEquals('akRight out', 'False', Insp.Strings.ValueFromIndex[R + 3]);
  AssertEquals('akBottom out', 'False', Insp.Strings.ValueFromIndex[R + 4]);
  // Toggle akRight through its True/False pick list, by the keyboard.
  ClickCell(1, R + 3);
  AssertTrue('pick list', Insp.Editor is TCustomComboBox);
  AssertEquals('offered', 'True,False', TCustomComboBox(Insp.Editor).Items.CommaText);
  P := Insp.Editor.ClientToScreen(Point(Insp.Editor.Width - 8, Insp.Editor.Height div 2));
  XDo(Format('mousemove --sync %d %d', [P.X, P.Y]));
  XDo('click 1');
  DrainMessages(250);
  PressKey('Down');
  PressKey('Return');
  AssertWait('akRight included', @Anchored);
  AssertEquals('row shows it', 'True', Insp.Strings.ValueFromIndex[R + 3]);
  AssertEquals('set row shows it', '[akTop,akLeft,akRight]', ValueOf('Anchors'));
end;

procedure TTestInspectorGui.TestMemoLinesEditButtonOpensStringsDialogAndOkStoresTheLine;
var
  R: Integer;
  Ed: TWinControl;
  P: TPoint;

  function Ellipsis: Boolean;
  begin
    Result := (Insp.Row = R) and (Insp.Editor is TCompositeCellEditor) and Insp.Editor.Visible;
  end;

  function Stored: Boolean;
  begin
    Result := Pos('typed line', Memo.Lines.Text) > 0;
  end;

begin
  Memo.Lines.Text := '';
  Insp.SetActiveComponent(Memo);
  R := RowOf('Lines');
  AssertEquals('strings editor text', '(TStrings)', ValueOf('Lines'));
  ClickCell(1, R);
  AssertWait('edit button on Lines', @Ellipsis);
  Ed := Insp.Editor;
  WatchDialog('TStringsPropEditorDlg', 'typed line', True);
  // The button is the right end of the composite editor.
  P := Ed.ClientToScreen(Point(Ed.Width - 6, Ed.Height div 2));
  XDo(Format('mousemove --sync %d %d', [P.X, P.Y]));
  XDo('click 1');
  AssertWait('the dialog stored the line', @Stored, 8000);
  AssertTrue('dialog seen', FDialogSeen);
  AssertEquals('one line', 1, Memo.Lines.Count);
end;

procedure TTestInspectorGui.TestTwoButtonsWithDifferentCaptionsShowEmptyAndEmptyEntryChangesNeither;
var
  L: TObjectList;
begin
  Button2.Caption := 'first';
  Button3.Caption := 'second';
  L := TObjectList.Create(False);
  try
    L.Add(Button2);
    L.Add(Button3);
    Insp.SetActiveComponents(L);
  finally
    L.Free;
  end;
  AssertEquals('disagreeing caption', '', ValueOf('Caption'));
  AssertEquals('Name hidden for two', -1, RowOf('Name'));
  EditValue('Caption', 'x');
  PressKey('ctrl+a');
  PressKey('Delete');
  DrainMessages(60);
  AssertEquals('the entry is empty', '', Insp.Cells[1, RowOf('Caption')]);
  PressKey('Return');
  DrainMessages(100);
  AssertEquals('first kept', 'first', Button2.Caption);
  AssertEquals('second kept', 'second', Button3.Caption);
  EditValue('Caption', 'both');
  PressKey('Return');
  DrainMessages(100);
  AssertEquals('first written', 'both', Button2.Caption);
  AssertEquals('second written', 'both', Button3.Caption);
  AssertEquals('now agreeing', 'both', ValueOf('Caption'));
end;

procedure TTestInspectorGui.TestAbcInWidthGivesClearErrorWidthStaysAndInspectorKeepsWorking;
var
  W: Integer;

  function Reported: Boolean;
  begin
    Result := FErrors.Count > 0;
  end;

begin
  Insp.SetActiveComponent(PanelButton);
  W := PanelButton.Width;
  EditValue('Width', 'abc');
  PressKey('Return');
  AssertWait('an error was reported', @Reported);
  AssertTrue('names the property: ' + FErrors.Text, Pos('Width', FErrors[0]) > 0);
  AssertTrue('names the value: ' + FErrors.Text, Pos('abc', FErrors[0]) > 0);
  AssertTrue('prefixed: ' + FErrors.Text, Pos('Invalid Property Value;', FErrors[0]) > 0);
  AssertEquals('width unchanged', W, PanelButton.Width);
  AssertEquals('row shows the width again', IntToStr(W), ValueOf('Width'));
  EditValue('Width', IntToStr(W + 33));
  PressKey('Return');
  DrainMessages(100);
  AssertEquals('the inspector still writes', W + 33, PanelButton.Width);
  AssertEquals('one error only', 1, FErrors.Count);
end;

{ Lazarus' enumeration editor drops an unknown name silently; the inspector
  reports it as Delphi's would, and typing into the pick list writes nothing
  before Enter (no error for the half-typed text). }
procedure TTestInspectorGui.TestUnknownNameTypedIntoAlignGivesClearErrorAndAlignStays;
var
  R: Integer;

  function Combo: Boolean;
  begin
    Result := (Insp.Row = R) and (Insp.Editor is TCustomComboBox) and Insp.Editor.Visible;
  end;

  function Reported: Boolean;
  begin
    Result := FErrors.Count > 0;
  end;

begin
  PanelButton.Align := alNone;
  Insp.SetActiveComponent(PanelButton);
  R := RowOf('Align');
  ClickCell(1, R);
  AssertWait('pick list on Align', @Combo);
  Click(Insp.Editor, 10, Insp.Editor.Height div 2);
  DrainMessages(100);
  PressKey('ctrl+a');
  TypeText('alMiddle');
  DrainMessages(100);
  AssertEquals('nothing reported while typing', '', FErrors.Text);
  PressKey('Return');
  AssertWait('an error was reported', @Reported);
  AssertTrue('names the property: ' + FErrors.Text, Pos('Align', FErrors[0]) > 0);
  AssertTrue('names the value: ' + FErrors.Text, Pos('alMiddle', FErrors[0]) > 0);
  AssertEquals('Align unchanged', Ord(alNone), Ord(PanelButton.Align));
  AssertEquals('row shows alNone again', 'alNone', ValueOf('Align'));
  AssertEquals('one error only', 1, FErrors.Count);
end;

procedure TTestInspectorGui.TestPfEventListsEventsWithEmptyValues;
begin
  PanelButton.OnClick := nil;
  Insp.SetActiveComponent(PanelButton);
  AssertEquals('no events by default', -1, RowOf('OnClick'));
  Insp.PropertyFilterStyles := [pfProperty, pfEvent];
  AssertTrue('OnClick listed', RowOf('OnClick') >= 0);
  AssertTrue('OnKeyDown listed', RowOf('OnKeyDown') >= 0);
  AssertEquals('empty value', '', ValueOf('OnClick'));
  AssertTrue('event line read-only', Insp.ItemProps[RowOf('OnClick')].ReadOnly);
  AssertTrue('properties still there', RowOf('Caption') >= 0);
end;

procedure TTestInspectorGui.TestSelectingAndMovingOnStageShowsAndUpdatesValues;
var
  L0, T0: Integer;

  function Moved: Boolean;
  begin
    Result := ValueOf('Left') = IntToStr(PanelButton.Left);
  end;

begin
  L0 := PanelButton.Left;
  T0 := PanelButton.Top;
  StartDesigning;
  Click(PanelButton, 10, 10);
  DrainMessages(100);
  AssertSame('selected button shown', PanelButton, Insp.ActiveComponent);
  AssertEquals('Left', IntToStr(L0), ValueOf('Left'));
  DragBy(PanelButton, 10, 10, 40, 24);
  AssertTrue('moved', PanelButton.Left <> L0);
  AssertWait('Left follows', @Moved);
  AssertEquals('Top follows', IntToStr(PanelButton.Top), ValueOf('Top'));
  AssertTrue('Top moved', PanelButton.Top <> T0);
end;

procedure TTestInspectorGui.TestEditInInspectorMovesTheSizer;
var
  S: TQorSizer;
  L0: Integer;
begin
  L0 := PanelButton.Left;
  StartDesigning;
  Click(PanelButton, 10, 10);
  DrainMessages(100);
  S := SizerOf(PanelButton);
  AssertNotNull('sizer', S);
  EditValue('Left', IntToStr(PanelButton.Left + 30));
  PressKey('Return');
  DrainMessages(150);
  AssertEquals('button moved', L0 + 30, PanelButton.Left);
  AssertTrue('design marked dirty', Center.Dirty);
  S := SizerOf(PanelButton);
  AssertNotNull('still selected', S);
  AssertEquals('the sizer frames the new place',
    Stage.ScreenToClient(PanelButton.ClientToScreen(Point(0, 0))).X - 2, S.Left);
end;

procedure TTestInspectorGui.TestSelectingAnotherButtonShowsItsValuesAndEditsIt;
var
  Fresh: TQorObjInspector;
  I, R: Integer;

  function Combo: Boolean;
  begin
    Result := (Insp.Row = R) and (Insp.Editor is TCustomComboBox) and Insp.Editor.Visible;
  end;

begin
  Button2.Caption := 'first';
  Button2.Width := 77;
  Button3.Caption := 'second';
  Button3.Width := 88;
  Insp.SetActiveComponent(Button2);
  AssertEquals('first shown', 'first', ValueOf('Caption'));
  Insp.SetActiveComponent(Button3);
  AssertEquals('second caption', 'second', ValueOf('Caption'));
  AssertEquals('second width', '88', ValueOf('Width'));
  // The same lines as a new inspector given the second button alone.
  Fresh := TQorObjInspector.Create(InspForm);
  try
    Fresh.Parent := InspForm;
    Fresh.Visible := False;
    Fresh.SetActiveComponent(Button3);
    AssertEquals('line count', Fresh.Strings.Count, Insp.Strings.Count);
    for I := 0 to Fresh.Strings.Count - 1 do
      AssertEquals('line ' + IntToStr(I), Fresh.Strings[I], Insp.Strings[I]);
  finally
    Fresh.Free;
  end;
  R := RowOf('Align');
  AssertTrue('Align line is a pick list', Insp.ItemProps[R - Insp.FixedRows].EditStyle = esPickList);
  ClickCell(1, R);
  AssertWait('pick list on Align', @Combo);
  AssertEquals('offered when opened', 'alNone,alTop,alBottom,alLeft,alRight,alClient,alCustom',
    TCustomComboBox(Insp.Editor).Items.CommaText);
  EditValue('Caption', 'edited');
  PressKey('Return');
  DrainMessages(100);
  AssertEquals('the shown button written', 'edited', Button3.Caption);
  AssertEquals('the one shown before untouched', 'first', Button2.Caption);
end;

procedure TTestInspectorGui.CountDrawnCell(Sender: TObject; ACol, ARow: Integer;
  ARect: TRect; AState: TGridDrawState);
begin
  if FDrawnRows.IndexOf(Pointer(PtrInt(ARow))) < 0 then
    FDrawnRows.Add(Pointer(PtrInt(ARow)));
end;

{ Caption changes near the top, Left further down; the rows between them
  (Color, Cursor, Enabled, ...) read the same for both buttons and are not
  drawn again, though one paint of the box around both would draw them. }
procedure TTestInspectorGui.TestSelectingALikeButtonPaintsTheChangedRowsNotTheRowsBetween;
var
  RCaption, RLeft, RCursor: Integer;

  function CaptionAndLeftDrawn: Boolean;
  begin
    Result := (FDrawnRows.IndexOf(Pointer(PtrInt(RCaption))) >= 0) and
      (FDrawnRows.IndexOf(Pointer(PtrInt(RLeft))) >= 0);
  end;

begin
  Button2.Caption := 'first';
  Button3.Caption := 'second';
  Button3.Left := Button2.Left + 40;
  Insp.Row := 0;
  Insp.SetActiveComponent(Button2);
  DrainMessages(150);
  RCaption := RowOf('Caption');
  RLeft := RowOf('Left');
  RCursor := RowOf('Cursor');
  AssertTrue('Cursor lies between Caption and Left', (RCaption < RCursor) and (RCursor < RLeft));
  AssertTrue('Left is on screen', RLeft < Insp.TopRow + Insp.VisibleRowCount);
  FDrawnRows := TList.Create;
  try
    Insp.OnDrawCell := @CountDrawnCell;
    Insp.SetActiveComponent(Button3);
    AssertWait('Caption and Left drawn', @CaptionAndLeftDrawn);
    DrainMessages(150);
    AssertEquals('the second caption shown', 'second', ValueOf('Caption'));
    AssertTrue('Cursor, the same for both, not drawn',
      FDrawnRows.IndexOf(Pointer(PtrInt(RCursor))) < 0);
    AssertTrue('fewer rows drawn than lie between Caption and Left',
      FDrawnRows.Count < RLeft - RCaption + 1);
  finally
    Insp.OnDrawCell := nil;
    FreeAndNil(FDrawnRows);
  end;
end;

{ A button's first row is Action (a plain edit when no action exists); a
  panel's is Align, a pick list. Rows filled in place must leave the combo
  there, not the edit of the rows before. }
procedure TTestInspectorGui.TestNewRowsShowTheEditorOfTheCurrentRowsStyle;
var
  ButtonRows: Integer;

  function ComboOnAlign: Boolean;
  begin
    Result := (Insp.Row = RowOf('Align')) and (Insp.Editor is TCustomComboBox) and
      Insp.Editor.Visible;
  end;

begin
  Insp.SetActiveComponent(Button2);
  Insp.Row := 0;
  DrainMessages(100);
  AssertEquals('a button starts with Action', 'Action', Trim(Insp.Strings.Names[0]));
  AssertFalse('a plain edit on Action', Insp.Editor is TCustomComboBox);
  ButtonRows := Insp.Strings.Count;
  Insp.SetActiveComponent(Panel);
  AssertEquals('a panel starts with Align', 0, RowOf('Align'));
  AssertTrue('rows added or removed', Insp.Strings.Count <> ButtonRows);
  AssertWait('the pick list shown on Align', @ComboOnAlign);
end;

{ The inspector's client as on screen once a full paint has drawn its
  cells (counted by CountDrawnCell when that is the OnDrawCell handler). }
function TTestInspectorGui.GrabInspectorPainted: TLazIntfImage;
var
  B: TBitmap;

  function Drawn: Boolean;
  begin
    Result := FDrawnRows.Count > 0;
  end;

begin
  FDrawnRows.Clear;
  Insp.Invalidate;
  if Assigned(Insp.OnDrawCell) then
    AssertWait('the inspector painted again', @Drawn);
  DrainMessages(200);
  B := GrabClient(Insp);
  try
    Result := B.CreateIntfImage;
  finally
    B.Free;
  end;
end;

{ The inspector draws its rows without the grid's clip per cell (DrawRow);
  an OnDrawCell handler sends it the grid's way, cell by cell inside clips.
  Both must give the same pixels, also where text is longer than its cell:
  names longer than a narrow name column, a caption longer than the value
  column, Chinese text (drawn by the grid's own text routine). The editor's
  rectangle is left out (its caret blinks). }
procedure TTestInspectorGui.TestRowsDrawnWithoutCellClipsLookAsTheGridDrawsThem;
var
  Unclipped, Clipped: TLazIntfImage;
  EdRect: TRect;
  X, Y, Differ, Compared: Integer;
begin
  Button2.Caption := StringOfChar('W', 120);
  Button2.Hint := '中文的提示文字，比一格长得多的一句话，还有更多的字';
  Insp.ColWidths[0] := 60; Insp.AutoFillColumns := False; Insp.ColWidths[1] := 150;
  Insp.SetActiveComponent(Button2);
  Insp.Row := 0;
  DrainMessages(150);
  AssertTrue('Caption on screen', RowOf('Caption') < Insp.TopRow + Insp.VisibleRowCount);
  AssertTrue('Hint on screen', RowOf('Hint') < Insp.TopRow + Insp.VisibleRowCount);
  EdRect := Insp.Editor.BoundsRect;
  FDrawnRows := TList.Create;
  Unclipped := nil;
  Clipped := nil;
  try
    Unclipped := GrabInspectorPainted;
    Insp.OnDrawCell := @CountDrawnCell;
    Clipped := GrabInspectorPainted;
    AssertEquals('same size', Unclipped.Width, Clipped.Width);
    Differ := 0;
    Compared := 0;
    for Y := 0 to Clipped.Height - 1 do
      for X := 0 to Clipped.Width - 1 do
        if not ((X >= EdRect.Left) and (X < EdRect.Right) and
          (Y >= EdRect.Top) and (Y < EdRect.Bottom)) then
        begin
          Inc(Compared);
          if Unclipped.TColors[X, Y] <> Clipped.TColors[X, Y] then
            Inc(Differ);
        end;
    AssertTrue('most of the grid compared', Compared > Clipped.Width * Clipped.Height div 2);
    AssertEquals('pixels that differ', 0, Differ);
  finally
    Insp.OnDrawCell := nil;
    Unclipped.Free;
    Clipped.Free;
    FreeAndNil(FDrawnRows);
  end;
end;

initialization
  RegisterTest(TTestInspectorGui);

end.
