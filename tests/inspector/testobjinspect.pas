{ QorDesign tests — Parts 2.1, 2.2 and 2.4: property details, value text,
  designer selections and property lists (no grid on screen). }
unit TestObjInspect;

{$mode objfpc}{$H+}

interface

uses
  // RTL / FCL
  Classes, SysUtils, TypInfo, Contnrs, fpcunit, testregistry,
  // LCL
  Graphics, Controls, StdCtrls, ExtCtrls, Forms,
  // ours
  ObjInspect, QorTransUtils;

type
  {$M+}
  { Counts the writes of its properties, so a test sees a write that did
    not happen. }
  TInspectedThing = class(TComponent)
  private
    FCaption: string;
    FColor: TColor;
    FCursor: TCursor;
    FBig: Int64;
    FFont: TFont;
    FBuddy: TComponent;
    FOnPing: TNotifyEvent;
    FAnchors: TAnchors;
    FNothing: TFont;
    FWrites: Integer;
    procedure SetCaption(const Value: string);
    procedure SetAnchors(Value: TAnchors);
  public
    constructor Create(AOwner: TComponent); override;
    destructor Destroy; override;
    property Writes: Integer read FWrites write FWrites;
  published
    property Caption: string read FCaption write SetCaption;
    property Color: TColor read FColor write FColor;
    property Cursor: TCursor read FCursor write FCursor;
    property Big: Int64 read FBig write FBig;
    property Font: TFont read FFont write FFont;
    property Nothing: TFont read FNothing write FNothing;
    property Buddy: TComponent read FBuddy write FBuddy;
    property OnPing: TNotifyEvent read FOnPing write FOnPing;
    property Anchors: TAnchors read FAnchors write SetAnchors;
  end;
  {$M-}

  { A detail that counts its refreshes. }
  TCountingDetail = class(TPropertyDetailEx)
  public
    Refreshes: Integer;
    procedure Refresh; override;
  end;

  { TTestObjInspect }

  TTestObjInspect = class(TTestCase)
  private
    FOwner: TComponent;
    FUpper: Integer;
    procedure UpperIdent(Sender: TObject; PTI: PTypeInfo; const Src: string;
      TransRole: TTransRole; var Dest: string);
    function Thing(const AName, ACaption: string): TInspectedThing;
    function Lines(List: TObjInspecPropListEx): TStringList;
    function NameOfLine(const S: string): string;
    procedure Ping(Sender: TObject);
  protected
    procedure SetUp; override;
    procedure TearDown; override;
  published
    // Part 2.1, edge cases worth testing
    procedure TestTwoObjectsWithDifferentCaptionsShowEmptyAndEmptyTextChangesNeither;
    procedure TestNilObjectInSelectionIsSkippedReadingAndWriting;
    procedure TestColorShowsColorToStringUntranslated;
    procedure TestCursorShowsIdentifierAndCursorWithoutIdentifierShowsNumber;
    procedure TestClassPropertyWithoutObjectEmptyNonComponentBracketedClassName;
    procedure TestEventPropertyShowsEmptyText;
    procedure TestInt64Property4294967296ShowsZeroAnd4294967295ShowsMinusOne;
    procedure TestChangeSetValueStrPresentIncludeOrAbsentExcludeReturnsFalseWithoutWrite;
    procedure TestWritingShownTextDoesNotWriteAndDoesNotRefresh;
    procedure TestIndentStrLevelZeroAndLevelTwoCollapsed;
    // Part 2.1, the set text arithmetic
    procedure TestChangeSetValueStrIncludeAndExcludeTexts;
    // Part 2.4
    procedure TestSelectionFromListWithNonPersistentAndNilHoldsOnlyPersistentsInOrder;
    // Part 2.2, edge cases worth testing
    procedure TestOutputPropNamesNameAndLeftListOnlyThoseWhateverConcealed;
    procedure TestEditorWithoutMultiSelectDisappearsWithTwoObjects;
    procedure TestNewListShowsNoEventsUntilPfEventAdded;
    procedure TestExpandedClassRowIsFollowedBySubRowsOneLevelDeeper;
    procedure TestExpandedSetRowListsTrueFalseRowsWithUntranslatedLabels;
    procedure TestTwoObjectsOfDifferentClassesListOnlyCommonProperties;
    // Part 2.2, values with the IDEIntf editors
    procedure TestRowsComeInNameOrderWithEditorsAttached;
    procedure TestComponentReferenceRowOffersOwnedComponentsOfItsClass;
    // Editors made for the rows (ListAllPropEditors)
    procedure TestMixedClassSelectionGetsEditorsOverAllObjectsAndOnlySharedRows;
    procedure TestEventEditorsAreMadeWhenEventsAreAskedFor;
  end;

implementation

{ TInspectedThing }

constructor TInspectedThing.Create(AOwner: TComponent);
begin
  inherited Create(AOwner);
  FFont := TFont.Create;
end;

destructor TInspectedThing.Destroy;
begin
  FFont.Free;
  inherited Destroy;
end;

procedure TInspectedThing.SetCaption(const Value: string);
begin
  FCaption := Value;
  Inc(FWrites);
end;

procedure TInspectedThing.SetAnchors(Value: TAnchors);
begin
  FAnchors := Value;
  Inc(FWrites);
end;

{ TCountingDetail }

procedure TCountingDetail.Refresh;
begin
  inherited Refresh;
  Inc(Refreshes);
end;

{ TTestObjInspect }

procedure TTestObjInspect.SetUp;
begin
  FOwner := TComponent.Create(nil);
  FUpper := 0;
end;

procedure TTestObjInspect.TearDown;
begin
  FreeAndNil(FOwner);
end;

procedure TTestObjInspect.UpperIdent(Sender: TObject; PTI: PTypeInfo; const Src: string;
  TransRole: TTransRole; var Dest: string);
begin
  Inc(FUpper);
  Dest := UpperCase(Src);
end;

function TTestObjInspect.Thing(const AName, ACaption: string): TInspectedThing;
begin
  Result := TInspectedThing.Create(FOwner);
  Result.Name := AName;
  Result.Caption := ACaption;
  Result.Writes := 0;
end;

function TTestObjInspect.Lines(List: TObjInspecPropListEx): TStringList;
begin
  Result := TStringList.Create;
  List.AppendToStrings(Result);
end;

procedure TTestObjInspect.Ping(Sender: TObject);
begin
end;

function TTestObjInspect.NameOfLine(const S: string): string;
begin
  Result := Trim(Copy(S, 1, Pos('=', S) - 1));
end;

procedure TTestObjInspect.TestTwoObjectsWithDifferentCaptionsShowEmptyAndEmptyTextChangesNeither;
var
  A, B: TInspectedThing;
  L: TObjectList;
  Info: PPropInfo;
begin
  A := Thing('A', 'one');
  B := Thing('B', 'two');
  L := TObjectList.Create(False);
  try
    L.Add(A);
    L.Add(B);
    Info := GetPropInfo(A, 'Caption');
    AssertEquals('disagreeing captions', '', GetPropertyValueStr(L, Info));
    SetPropertyValueStr(L, Info, '');
    AssertEquals('A kept', 'one', A.Caption);
    AssertEquals('B kept', 'two', B.Caption);
    AssertEquals('no write at all', 0, A.Writes + B.Writes);
    B.Caption := 'one';
    AssertEquals('agreeing captions', 'one', GetPropertyValueStr(L, Info));
  finally
    L.Free;
  end;
end;

procedure TTestObjInspect.TestNilObjectInSelectionIsSkippedReadingAndWriting;
var
  A, B: TInspectedThing;
  L: TObjectList;
  Info: PPropInfo;
begin
  A := Thing('A', 'same');
  B := Thing('B', 'same');
  L := TObjectList.Create(False);
  try
    L.Add(nil);
    L.Add(A);
    L.Add(nil);
    L.Add(B);
    Info := GetPropInfo(A, 'Caption');
    AssertEquals('read skips nil', 'same', GetPropertyValueStr(L, Info));
    SetPropertyValueStr(L, Info, 'new');
    AssertEquals('A written', 'new', A.Caption);
    AssertEquals('B written', 'new', B.Caption);
  finally
    L.Free;
  end;
end;

procedure TTestObjInspect.TestColorShowsColorToStringUntranslated;
var
  A: TInspectedThing;
  D: TPropertyDetailEx;
begin
  A := Thing('A', '');
  A.Color := clRed;
  D := TPropertyDetailEx.Create(A, 'Color');
  try
    AssertEquals('colour identifier', 'clRed', D.GetPropValueStr);
    A.Color := TColor($123456);
    AssertEquals('no identifier: hex', ColorToString(TColor($123456)), D.GetPropValueStr);
    AssertTrue('hex form', Pos('$', D.GetPropValueStr) = 1);
    D.SetPropValueStr('clBlue');
    AssertEquals('written by identifier', Integer(clBlue), Integer(A.Color));
  finally
    D.Free;
  end;
end;

procedure TTestObjInspect.TestCursorShowsIdentifierAndCursorWithoutIdentifierShowsNumber;
var
  A: TInspectedThing;
  D: TPropertyDetailEx;
begin
  A := Thing('A', '');
  A.Cursor := crHourGlass;
  D := TPropertyDetailEx.Create(A, 'Cursor');
  try
    // The translation of Part 4.3 gives the identifier itself until a
    // dictionary is open.
    AssertEquals('cursor identifier', 'crHourGlass', D.GetPropValueStr);
    A.Cursor := 77;
    AssertEquals('no identifier: decimal', '77', D.GetPropValueStr);
    D.SetPropValueStr('crHandPoint');
    AssertEquals('written by identifier', Integer(crHandPoint), Integer(A.Cursor));
  finally
    D.Free;
  end;
end;

procedure TTestObjInspect.TestClassPropertyWithoutObjectEmptyNonComponentBracketedClassName;
var
  A, B: TInspectedThing;
begin
  A := Thing('A', '');
  B := Thing('B', '');
  AssertEquals('no object', '', GetPropertyValueStr(A, GetPropInfo(A, 'Nothing')));
  AssertEquals('non-component', '[TFont]', GetPropertyValueStr(A, GetPropInfo(A, 'Font')));
  A.Buddy := B;
  AssertEquals('component: its name', 'B', GetPropertyValueStr(A, GetPropInfo(A, 'Buddy')));
end;

procedure TTestObjInspect.TestEventPropertyShowsEmptyText;
var
  A: TInspectedThing;
begin
  A := Thing('A', '');
  A.OnPing := @Ping;
  AssertTrue('handler set', Assigned(A.OnPing));
  AssertEquals('event text', '', GetPropertyValueStr(A, GetPropInfo(A, 'OnPing')));
end;

procedure TTestObjInspect.TestInt64Property4294967296ShowsZeroAnd4294967295ShowsMinusOne;
var
  A: TInspectedThing;
  Info: PPropInfo;
begin
  A := Thing('A', '');
  Info := GetPropInfo(A, 'Big');
  A.Big := 4294967296;
  AssertEquals('2^32', '0', GetPropertyValueStr(A, Info));
  A.Big := 4294967295;
  AssertEquals('2^32-1', '-1', GetPropertyValueStr(A, Info));
  A.Big := 12;
  AssertEquals('small', '12', GetPropertyValueStr(A, Info));
end;

procedure TTestObjInspect.TestChangeSetValueStrPresentIncludeOrAbsentExcludeReturnsFalseWithoutWrite;
var
  A: TInspectedThing;
  D: TPropertyDetailEx;
  Left, Right: TSetItemConst;
begin
  A := Thing('A', '');
  A.Anchors := [akLeft];
  A.Writes := 0;
  D := TPropertyDetailEx.Create(A, 'Anchors');
  Left := TSetItemConst.Create(D, Ord(akLeft));
  Right := TSetItemConst.Create(D, Ord(akRight));
  try
    AssertEquals('element identifier', 'akLeft', Left.GetValueString);
    AssertFalse('include present', ChangeSetValueStr(Left, True));
    AssertFalse('exclude absent', ChangeSetValueStr(Right, False));
    AssertEquals('no write', 0, A.Writes);
    AssertTrue('include absent', ChangeSetValueStr(Right, True));
    AssertEquals('one write', 1, A.Writes);
    AssertTrue('set now', A.Anchors = [akLeft, akRight]);
  finally
    Right.Free;
    Left.Free;
    D.Free;
  end;
end;

procedure TTestObjInspect.TestWritingShownTextDoesNotWriteAndDoesNotRefresh;
var
  A: TInspectedThing;
  D: TCountingDetail;
  Before: Integer;
begin
  A := Thing('A', 'same');
  D := TCountingDetail.Create(A, 'Caption');
  try
    Before := D.Refreshes;
    D.SetPropValueStr('same');
    AssertEquals('no write', 0, A.Writes);
    AssertEquals('no refresh', Before, D.Refreshes);
    D.SetPropValueStr('other');
    AssertEquals('written', 1, A.Writes);
    AssertEquals('refreshed once', Before + 1, D.Refreshes);
  finally
    D.Free;
  end;
end;

procedure TTestObjInspect.TestIndentStrLevelZeroAndLevelTwoCollapsed;
begin
  AssertEquals('level 0, plain', '  ', GetObjInspecIndentStr(0, False, False));
  AssertEquals('level 2, collapsed', '    + ', GetObjInspecIndentStr(2, True, False));
  AssertEquals('level 1, expanded', '  - ', GetObjInspecIndentStr(1, True, True));
  AssertEquals('negative level', '  ', GetObjInspecIndentStr(-3, False, False));
end;

procedure TTestObjInspect.TestChangeSetValueStrIncludeAndExcludeTexts;
var
  A: TInspectedThing;
  D: TPropertyDetailEx;
  Elements: array[TAnchorKind] of TSetItemConst;
  K: TAnchorKind;
begin
  A := Thing('A', '');
  A.Anchors := [];
  D := TPropertyDetailEx.Create(A, 'Anchors');
  for K := Low(K) to High(K) do
    Elements[K] := TSetItemConst.Create(D, Ord(K));
  try
    AssertTrue(ChangeSetValueStr(Elements[akTop], True));
    AssertEquals('[] + akTop', '[akTop]', D.GetPropValueStr);
    AssertTrue(ChangeSetValueStr(Elements[akRight], True));
    AssertTrue(ChangeSetValueStr(Elements[akBottom], True));
    AssertEquals('three', '[akTop,akRight,akBottom]', D.GetPropValueStr);
    AssertTrue(ChangeSetValueStr(Elements[akRight], False));
    AssertEquals('middle out', '[akTop,akBottom]', D.GetPropValueStr);
    AssertTrue(ChangeSetValueStr(Elements[akBottom], False));
    AssertEquals('last out', '[akTop]', D.GetPropValueStr);
    AssertTrue(ChangeSetValueStr(Elements[akTop], False));
    AssertEquals('empty', '[]', D.GetPropValueStr);
  finally
    for K := Low(K) to High(K) do
      Elements[K].Free;
    D.Free;
  end;
end;

procedure TTestObjInspect.TestSelectionFromListWithNonPersistentAndNilHoldsOnlyPersistentsInOrder;
var
  L: TObjectList;
  A, B: TInspectedThing;
  Plain: TObject;
  Sel, Other: TQorDesignerSelections;
begin
  A := Thing('A', '');
  B := Thing('B', '');
  Plain := TObject.Create;
  L := TObjectList.Create(False);
  try
    L.Add(B);
    L.Add(Plain);
    L.Add(nil);
    L.Add(A);
    Sel := BuildDesignerSelections(L);
    Other := TQorDesignerSelections.Create;
    try
      AssertEquals('persistents only', 2, Sel.Count);
      AssertSame('first', B, Sel[0]);
      AssertSame('second', A, Sel[1]);
      AssertEquals('Add gives the index', 0, Other.Add(B));
      AssertFalse('not yet equal', Sel.Equals(Other));
      Other.Add(A);
      AssertTrue('equal', Sel.Equals(Other));
    finally
      Other.Free;
      Sel.Free;
    end;
  finally
    L.Free;
    Plain.Free;
  end;
end;

procedure TTestObjInspect.TestOutputPropNamesNameAndLeftListOnlyThoseWhateverConcealed;
var
  Button: TButton;
  List: TObjInspecPropListEx;
  Names, S: TStringList;
begin
  Button := TButton.Create(FOwner);
  Button.Name := 'Button1';
  List := TObjInspecPropListEx.Create(Button, True);
  Names := TStringList.Create;
  S := nil;
  try
    Names.CommaText := 'Left,Name';
    List.ConcealedPropNames := Names;
    Names.CommaText := 'Name,Left';
    List.OutputPropNames := Names;
    S := Lines(List);
    AssertEquals('two rows', 2, S.Count);
    AssertEquals('Left', NameOfLine(S[0]));
    AssertEquals('Name', NameOfLine(S[1]));
    AssertEquals('value', 'Button1', S.ValueFromIndex[1]);
  finally
    S.Free;
    Names.Free;
    List.Free;
  end;
end;

procedure TTestObjInspect.TestEditorWithoutMultiSelectDisappearsWithTwoObjects;
var
  B1, B2: TButton;
  List: TObjInspecPropListEx;
  Objects: TObjectList;
  S: TStringList;
begin
  B1 := TButton.Create(FOwner);
  B1.Name := 'Button1';
  B2 := TButton.Create(FOwner);
  B2.Name := 'Button2';
  List := TObjInspecPropListEx.Create(B1, True);
  Objects := TObjectList.Create(False);
  S := nil;
  try
    S := Lines(List);
    AssertTrue('one object: Name listed', S.IndexOfName('  Name') >= 0);
    AssertNotNull('Name has an editor', List.GetPropItemsByName('Name').PropEditor);
    FreeAndNil(S);
    Objects.Add(B1);
    Objects.Add(B2);
    List.SetBasedObjects(Objects);
    S := Lines(List);
    AssertTrue('row exists', List.IndexOfPropName('Name') >= 0);
    AssertEquals('two objects: Name hidden', -1, S.IndexOfName('  Name'));
    AssertTrue('Caption still listed', S.IndexOfName('  Caption') >= 0);
  finally
    S.Free;
    Objects.Free;
    List.Free;
  end;
end;

procedure TTestObjInspect.TestNewListShowsNoEventsUntilPfEventAdded;
var
  Button: TButton;
  List: TObjInspecPropListEx;
  S: TStringList;
begin
  Button := TButton.Create(FOwner);
  List := TObjInspecPropListEx.Create(Button, True);
  S := nil;
  try
    AssertTrue('default styles', List.PropertyFilterStyles = [pfProperty]);
    S := Lines(List);
    AssertEquals('no OnClick', -1, S.IndexOfName('  OnClick'));
    AssertTrue('Caption', S.IndexOfName('  Caption') >= 0);
    FreeAndNil(S);
    List.PropertyFilterStyles := [pfProperty, pfEvent];
    S := Lines(List);
    AssertTrue('OnClick now', S.IndexOfName('  OnClick') >= 0);
    AssertEquals('event value empty', '', S.Values['  OnClick']);
    FreeAndNil(S);
    List.PropertyFilterStyles := [pfEvent];
    S := Lines(List);
    AssertEquals('no Caption with events only', -1, S.IndexOfName('  Caption'));
  finally
    S.Free;
    List.Free;
  end;
end;

procedure TTestObjInspect.TestExpandedClassRowIsFollowedBySubRowsOneLevelDeeper;
var
  Button: TButton;
  List: TObjInspecPropListEx;
  S: TStringList;
  FontLine, I: Integer;
begin
  Button := TButton.Create(FOwner);
  List := TObjInspecPropListEx.Create(Button, True);
  S := nil;
  try
    List.GetPropItemsByName('Font').Expanded := True;
    S := Lines(List);
    FontLine := S.IndexOfName('- Font');
    AssertTrue('expanded marker', FontLine >= 0);
    AssertEquals('collapsed marker gone', -1, S.IndexOfName('+ Font'));
    // TFont's published properties follow, one level (two spaces) deeper.
    AssertEquals('first sub-row', '    CharSet', S.Names[FontLine + 1]);
    I := FontLine + 1;
    while (I < S.Count) and (TObjInspecPropertyItem(S.Objects[I]).PropList <> List) do
    begin
      AssertEquals('sub-row indented a level: ' + S.Names[I], '  ', Copy(S.Names[I], 1, 2));
      AssertTrue('sub-row name after the marker: ' + S.Names[I], S.Names[I][5] <> ' ');
      Inc(I);
    end;
    AssertTrue('several sub-rows', I - FontLine > 5);
    AssertTrue('sub-rows include Size', S.IndexOfName('    Size') in [FontLine + 1..I - 1]);
    AssertEquals('next parent row', '  Height', S.Names[I]);
  finally
    S.Free;
    List.Free;
  end;
end;

procedure TTestObjInspect.TestExpandedSetRowListsTrueFalseRowsWithUntranslatedLabels;
var
  Button: TButton;
  List: TObjInspecPropListEx;
  S: TStringList;
  Line: Integer;
begin
  Button := TButton.Create(FOwner);
  Button.Anchors := [akLeft, akBottom];
  List := TObjInspecPropListEx.Create(Button, True);
  S := nil;
  try
    List.OnTranslateIdent := @UpperIdent;
    AssertTrue('translate on', List.Translate);
    List.GetPropItemsByName('Anchors').Expanded := True;
    S := Lines(List);
    Line := S.IndexOfName('- ANCHORS');
    AssertTrue('the row name is translated', Line >= 0);
    AssertEquals('akTop', '    akTop', S.Names[Line + 1]);
    AssertEquals('akTop out', 'False', S.ValueFromIndex[Line + 1]);
    AssertEquals('akLeft', '    akLeft', S.Names[Line + 2]);
    AssertEquals('akLeft in', 'True', S.ValueFromIndex[Line + 2]);
    AssertEquals('akRight out', 'False', S.ValueFromIndex[Line + 3]);
    AssertEquals('akBottom', '    akBottom', S.Names[Line + 4]);
    AssertEquals('akBottom in', 'True', S.ValueFromIndex[Line + 4]);
    AssertTrue('element rows carry their element', S.Objects[Line + 4] is TSetItemConst);
  finally
    S.Free;
    List.Free;
  end;
end;

procedure TTestObjInspect.TestTwoObjectsOfDifferentClassesListOnlyCommonProperties;
var
  Button: TButton;
  Lbl: TLabel;
  List: TObjInspecPropListEx;
  Objects: TObjectList;
  I: Integer;
begin
  Button := TButton.Create(FOwner);
  Lbl := TLabel.Create(FOwner);
  Objects := TObjectList.Create(False);
  Objects.Add(Button);
  Objects.Add(Lbl);
  List := TObjInspecPropListEx.Create(nil, True);
  try
    List.SetBasedObjects(Objects);
    AssertTrue('Caption shared', List.IndexOfPropName('Caption') >= 0);
    AssertTrue('Left shared', List.IndexOfPropName('Left') >= 0);
    AssertEquals('Cancel is the button''s', -1, List.IndexOfPropName('Cancel'));
    AssertEquals('WordWrap is the label''s', -1, List.IndexOfPropName('WordWrap'));
    for I := 0 to List.Count - 1 do
      AssertNotNull(List[I].GetPropName + ' in the label',
        GetPropInfo(Lbl, List[I].GetPropName));
  finally
    List.Free;
    Objects.Free;
  end;
end;

procedure TTestObjInspect.TestRowsComeInNameOrderWithEditorsAttached;
var
  Button: TButton;
  List: TObjInspecPropListEx;
  I: Integer;
  S: TStringList;
begin
  Button := TButton.Create(FOwner);
  Button.Caption := 'Hello';
  Button.Width := 123;
  List := TObjInspecPropListEx.Create(Button, True);
  S := nil;
  try
    for I := 1 to List.Count - 1 do
      AssertTrue('name order at ' + List[I].GetPropName,
        CompareText(List[I - 1].GetPropName, List[I].GetPropName) < 0);
    S := Lines(List);
    AssertEquals('caption', 'Hello', S.Values['  Caption']);
    AssertEquals('width', '123', S.Values['  Width']);
    AssertEquals('align by the enum editor', 'alNone', S.Values['  Align']);
    AssertEquals('font row by the class editor', '(TFont)', S.Values['+ Font']);
    AssertEquals('enum editor', 'TEnumPropertyEditor',
      List.GetPropItemsByName('Align').PropEditor.ClassName);
  finally
    S.Free;
    List.Free;
  end;
end;

procedure TTestObjInspect.TestComponentReferenceRowOffersOwnedComponentsOfItsClass;
var
  A, B, C: TInspectedThing;
  Plain: TComponent;
  List: TObjInspecPropListEx;
  Row: TObjInspecPropertyItem;
begin
  A := Thing('A', '');
  B := Thing('B', '');
  C := Thing('C', '');
  Plain := TComponent.Create(FOwner);
  Plain.Name := 'Plain';
  TComponent.Create(FOwner); // no name: not offered
  List := TObjInspecPropListEx.Create(A, False);
  try
    Row := List.GetPropItemsByName('Buddy');
    AssertTrue('has a value list', Row.HasValueList);
    AssertEquals('named owned components', 'A,B,C,Plain', Row.ValueList.CommaText);
    Row.SetPropValueStr('C');
    AssertSame('stored by name', C, A.Buddy);
    AssertEquals('shown by name', 'C', Row.GetPropValueStr);
    AssertSame('B unused', B, List.GetPropItemsByName('Buddy').OwnerObject.FindComponent('B'));
  finally
    List.Free;
  end;
end;

procedure TTestObjInspect.TestMixedClassSelectionGetsEditorsOverAllObjectsAndOnlySharedRows;
var
  Button: TButton;
  Lbl: TLabel;
  Objects: TObjectList;
  List: TObjInspecPropListEx;
  Row: TObjInspecPropertyItem;
begin
  Button := TButton.Create(FOwner);
  Button.Hint := 'Same';
  Lbl := TLabel.Create(FOwner);
  Lbl.Hint := 'Same';
  Objects := TObjectList.Create(False);
  List := nil;
  try
    Objects.Add(Button);
    Objects.Add(Lbl);
    List := TObjInspecPropListEx.Create(nil, True);
    List.SetBasedObjects(Objects);
    AssertEquals('a button-only property has no row', -1, List.IndexOfPropName('Cancel'));
    AssertEquals('a label-only property has no row', -1, List.IndexOfPropName('Layout'));
    Row := List.GetPropItemsByName('Hint');
    AssertNotNull('hint editor', Row.PropEditor);
    AssertEquals('one editor over both objects', 2, Row.PropEditor.PropCount);
    AssertEquals('agreeing value', 'Same', Row.GetShownValue);
    Row.PropEditor.SetValue('Both');
    AssertEquals('button written', 'Both', Button.Hint);
    AssertEquals('label written', 'Both', Lbl.Hint);
    // Lazarus gives a label's caption its own editor class: as in its
    // object inspector, the shared row gets no editor.
    AssertNull('caption editors differ by class', List.GetPropItemsByName('Caption').PropEditor);
  finally
    List.Free;
    Objects.Free;
  end;
end;

procedure TTestObjInspect.TestEventEditorsAreMadeWhenEventsAreAskedFor;
var
  Button: TButton;
  List: TObjInspecPropListEx;
begin
  Button := TButton.Create(FOwner);
  List := TObjInspecPropListEx.Create(Button, True);
  try
    AssertNotNull('event row listed', List.GetPropItemsByName('OnClick'));
    AssertNull('no event editor while events are hidden',
      List.GetPropItemsByName('OnClick').PropEditor);
    List.PropertyFilterStyles := [pfProperty, pfEvent];
    AssertNotNull('event editor once events are shown',
      List.GetPropItemsByName('OnClick').PropEditor);
    AssertNotNull('property editors kept', List.GetPropItemsByName('Align').PropEditor);
  finally
    List.Free;
  end;
end;

initialization
  RegisterTest(TTestObjInspect);

end.
