{ QorDesign tests — Parts 4.1 and 4.2: the translation cache, the
  translation manager and its dictionary, and damaged dictionaries. }
unit TestQorTransUtils;

{$mode objfpc}{$H+}

interface

uses
  // RTL / FCL
  Classes, SysUtils, TypInfo, DB, BufDataset, fpcunit, testregistry,
  // LCL
  Controls, Forms, Graphics, StdCtrls,
  // ours
  QorTransUtils;

type
  { TTestQorTransCache }

  TTestQorTransCache = class(TTestCase)
  private
    FCache: TQorTransCache;
    procedure Fill(Count: Integer);
  protected
    procedure SetUp; override;
    procedure TearDown; override;
  published
    // Part 4.1, edge cases worth testing
    procedure TestAdding201stEntryToFullCacheLeaves199WithoutTheTwoLeastFrequent;
    procedure TestSetMaxLength10OnCacheOf50Leaves9;
    procedure TestLookupThatFindsNothingStillCountsTowardsEnvokedCount;
    procedure TestAfter4001CountedCallsEachCallResetsAllFrequenciesBeforeTheFoundEntryGoesTo1;
    procedure TestLocateIdentWithKindInAnotherLetterCaseStillMatches;
    // Beyond them
    procedure TestEvictionAfter1000RandomAddsAndLookupsMatchesAModel;
    procedure TestKindFormsReturnItemOrNil;
  end;

  { TTestQorTransMan }

  TTestQorTransMan = class(TTestCase)
  private
    FMan: TQorTransMan;
    FTemp: string;
    function FixtureName: string;
    function TempFile(const AName: string): string;
    procedure EmptyGlobalCache;
    procedure WriteFile(const AName, Text: string);
    procedure CheckDoesNotOpen(const AName: string);
  protected
    procedure SetUp; override;
    procedure TearDown; override;
  published
    // Part 4.2, edge cases worth testing
    procedure TestNoFileNameIdentToLabelReturnsIdent;
    procedure TestRowFoundCaseInsensitivelyThenServedFromCache;
    procedure TestEventFoundByIdentifierAloneAndDirectCallWithTypeNameNeverHitsCache;
    procedure TestSetValueTranslatedWordByWordAndBareWordUnchanged;
    procedure TestNonComponentClassValueLooksUpClassValue;
    procedure TestComponentReferenceReexpressedRelativeToComponent;
    // Other rules of the Part
    procedure TestFirstMatchingRowWins;
    procedure TestLabelTypedBackMapsToIdentifier;
    procedure TestEventLabelDirectionMatchesIdentifierColumn;
    procedure TestRoleFormsUsePropNameAndEnum;
    procedure TestClassToTransedNameUsesClassValue;
    procedure TestWordWalkLeavesTextAfterLastSeparatorAndBlanksCount;
    procedure TestFilterStringsAreFormattedWithoutQuoting;
    procedure TestBinaryDictionaryIsAcceptedToo;
    procedure TestDbFileNameChangeReopensAndEmptyNameCloses;
    // Damaged dictionaries
    procedure TestMissingFileDoesNotOpenAndPassesThrough;
    procedure TestEmptyFileDoesNotOpenAndPassesThrough;
    procedure TestTruncatedXmlDoesNotOpenAndPassesThrough;
    procedure TestWrongFieldNamesPassIdentifiersThroughAndLabelsRaise;
    procedure TestDirectoryAsFileNameDoesNotOpen;
    procedure Test1000MutatedFixturesNeverRaiseInIdentifierDirection;
  end;

implementation

{ TTestQorTransCache }

procedure TTestQorTransCache.SetUp;
begin
  FCache := TQorTransCache.Create;
end;

procedure TTestQorTransCache.TearDown;
begin
  FreeAndNil(FCache);
end;

procedure TTestQorTransCache.Fill(Count: Integer);
var
  I: Integer;
begin
  for I := 0 to Count - 1 do
    FCache.AddItem('ENUM', 'T', 'id' + IntToStr(I), 'label' + IntToStr(I));
end;

procedure TTestQorTransCache.TestAdding201stEntryToFullCacheLeaves199WithoutTheTwoLeastFrequent;
var
  I: Integer;
begin
  Fill(200);
  // Every entry but id7 and id9 is used once more.
  for I := 0 to 199 do
    if (I <> 7) and (I <> 9) then
      FCache.LocateIdent('ENUM', 'T', 'id' + IntToStr(I), True);
  AssertEquals('full', 200, FCache.Count);
  FCache.AddItem('ENUM', 'T', 'new', 'new label');
  AssertEquals('one more than the excess removed', 199, FCache.Count);
  AssertEquals('id7 gone', -1, FCache.LocateIdent('ENUM', 'T', 'id7', False));
  AssertEquals('id9 gone', -1, FCache.LocateIdent('ENUM', 'T', 'id9', False));
  AssertTrue('others kept', FCache.LocateIdent('ENUM', 'T', 'id8', False) >= 0);
end;

procedure TTestQorTransCache.TestSetMaxLength10OnCacheOf50Leaves9;
begin
  Fill(50);
  FCache.SetMaxLength(10);
  AssertEquals(9, FCache.Count);
  AssertEquals('stored', 10, FCache.MaxLength);
end;

procedure TTestQorTransCache.TestLookupThatFindsNothingStillCountsTowardsEnvokedCount;
begin
  Fill(3);
  AssertEquals('three additions', 3, FCache.EnvokedCount);
  AssertEquals('not found', -1, FCache.LocateIdent('ENUM', 'T', 'nothing', True));
  AssertEquals('counted', 4, FCache.EnvokedCount);
  AssertEquals('label miss', -1, FCache.LocateLabel('ENUM', 'T', 'nothing', True));
  AssertEquals('counted too', 5, FCache.EnvokedCount);
end;

procedure TTestQorTransCache.TestAfter4001CountedCallsEachCallResetsAllFrequenciesBeforeTheFoundEntryGoesTo1;
var
  I: Integer;
begin
  Fill(2);
  for I := 1 to 3998 do
    FCache.LocateIdent('ENUM', 'T', 'id0', True);
  AssertEquals('4000 calls so far', 4000, FCache.EnvokedCount);
  AssertEquals('id0 counted up', 3999, FCache.TransItems[0].Frequency);
  FCache.LocateIdent('ENUM', 'T', 'id1', True);
  AssertEquals('call 4001 wiped id0', 0, FCache.TransItems[0].Frequency);
  AssertEquals('then the found one is 1', 1, FCache.TransItems[1].Frequency);
  FCache.LocateIdent('ENUM', 'T', 'id0', True);
  AssertEquals('call 4002: id0 is 1', 1, FCache.TransItems[0].Frequency);
  AssertEquals('call 4002: id1 wiped', 0, FCache.TransItems[1].Frequency);
end;

procedure TTestQorTransCache.TestLocateIdentWithKindInAnotherLetterCaseStillMatches;
begin
  FCache.AddItem('ENUM', 'TAlign', 'alClient', 'label');
  AssertEquals(0, FCache.LocateIdent('enum', 'talign', 'ALCLIENT', False));
  AssertEquals(0, FCache.LocateLabel('Enum', 'TALIGN', 'LABEL', False));
end;

{ The model: the entries present and their use counts. Which of several
  equally used entries an overflow removes is the sort's business, so after
  an overflow the test checks that the removed ones were the least used and
  then takes the cache's survivors as the model's. }
procedure TTestQorTransCache.TestEvictionAfter1000RandomAddsAndLookupsMatchesAModel;
var
  Model: TStringList; // key=frequency
  Step, I, Next, Pick, Invoked, Expected, Removed, MaxRemoved, MinKept: Integer;
  Key: string;

  procedure Age;
  var
    K: Integer;
  begin
    Inc(Invoked);
    if Invoked > FCache.MaxEnvokedCount then
      for K := 0 to Model.Count - 1 do
        Model.ValueFromIndex[K] := '0';
  end;

begin
  RandSeed := 4242;
  FCache.MaxLength := 50;
  FCache.MaxEnvokedCount := 700;
  Model := TStringList.Create;
  try
    Invoked := 0;
    Next := 0;
    for Step := 1 to 1000 do
    begin
      if (Model.Count = 0) or (Random(10) < 6) then
      begin
        Key := 'k' + IntToStr(Next);
        Inc(Next);
        Age;
        Model.Add(Key + '=1');
        FCache.AddItem('ENUM', 'T', Key, 'L' + Key);
        if Model.Count > FCache.MaxLength then
        begin
          Expected := FCache.MaxLength - 1;
          AssertEquals('count after overflow at step ' + IntToStr(Step), Expected, FCache.Count);
          // Removed entries were used no more than any kept one.
          MaxRemoved := -1;
          MinKept := MaxInt;
          Removed := 0;
          for I := 0 to Model.Count - 1 do
            if FCache.LocateIdent('ENUM', 'T', Model.Names[I], False) < 0 then
            begin
              Inc(Removed);
              if StrToInt(Model.ValueFromIndex[I]) > MaxRemoved then
                MaxRemoved := StrToInt(Model.ValueFromIndex[I]);
            end
            else if StrToInt(Model.ValueFromIndex[I]) < MinKept then
              MinKept := StrToInt(Model.ValueFromIndex[I]);
          // The checks above were look-ups too.
          Inc(Invoked, Model.Count);
          AssertEquals('removed at step ' + IntToStr(Step), Model.Count - Expected, Removed);
          AssertTrue('least used removed at step ' + IntToStr(Step), MaxRemoved <= MinKept);
          // The survivors, with their counts after those look-ups.
          Model.Clear;
          for I := 0 to FCache.Count - 1 do
            Model.Add(FCache.TransItems[I].Indent + '=' + IntToStr(FCache.TransItems[I].Frequency));
        end;
      end
      else
      begin
        Pick := Random(Model.Count);
        Age;
        Model.ValueFromIndex[Pick] := IntToStr(StrToInt(Model.ValueFromIndex[Pick]) + 1);
        AssertTrue('present', FCache.LocateIdent('ENUM', 'T', Model.Names[Pick], True) >= 0);
      end;
      AssertEquals('count at step ' + IntToStr(Step), Model.Count, FCache.Count);
      AssertEquals('invocations at step ' + IntToStr(Step), Invoked, FCache.EnvokedCount);
      // Each check is a look-up too: once past the ageing bound it wipes
      // every frequency before the entry is read.
      for I := 0 to Model.Count - 1 do
      begin
        Pick := FCache.LocateIdent('ENUM', 'T', Model.Names[I], False);
        if Invoked + I + 1 > FCache.MaxEnvokedCount then
          Expected := 0
        else
          Expected := StrToInt(Model.ValueFromIndex[I]);
        AssertEquals('frequency of ' + Model.Names[I] + ' at step ' + IntToStr(Step),
          Expected, FCache.TransItems[Pick].Frequency);
      end;
      Inc(Invoked, Model.Count);
      if Invoked > FCache.MaxEnvokedCount then
        for I := 0 to Model.Count - 1 do
          Model.ValueFromIndex[I] := '0';
    end;
    AssertTrue('ageing was reached', Invoked > FCache.MaxEnvokedCount);
  finally
    Model.Free;
  end;
end;

procedure TTestQorTransCache.TestKindFormsReturnItemOrNil;
begin
  FCache.AddItem('EVENT', '', 'OnClick', 'click');
  AssertNotNull(FCache.LocateIdent(ttkEvent, '', 'onclick', False));
  AssertEquals('click', FCache.LocateLabel(ttkEvent, '', 'CLICK', False).CnLabel);
  AssertNull(FCache.LocateIdent(ttkEnum, '', 'OnClick', False));
end;

{ TTestQorTransMan }

procedure TTestQorTransMan.SetUp;
begin
  EmptyGlobalCache;
  FTemp := IncludeTrailingPathDelimiter(GetTempDir(False)) + 'qortrans-' + IntToStr(GetProcessID);
  ForceDirectories(FTemp);
  FMan := TQorTransMan.Create('');
end;

procedure TTestQorTransMan.TearDown;
var
  Info: TSearchRec;
begin
  FreeAndNil(FMan);
  EmptyGlobalCache;
  if FindFirst(IncludeTrailingPathDelimiter(FTemp) + '*', faAnyFile, Info) = 0 then
  begin
    repeat
      if (Info.Attr and faDirectory) = 0 then
        DeleteFile(IncludeTrailingPathDelimiter(FTemp) + Info.Name)
      else if (Info.Name <> '.') and (Info.Name <> '..') then
        RemoveDir(IncludeTrailingPathDelimiter(FTemp) + Info.Name);
    until FindNext(Info) <> 0;
    FindClose(Info);
  end;
  RemoveDir(FTemp);
end;

procedure TTestQorTransMan.EmptyGlobalCache;
begin
  while QorTransCache.Count > 0 do
    QorTransCache.RemoveItem(0);
end;

function TTestQorTransMan.FixtureName: string;
begin
  Result := ExpandFileName(ExtractFilePath(ParamStr(0)) +
    '../tests/translation/fixtures/dict.xml');
end;

function TTestQorTransMan.TempFile(const AName: string): string;
begin
  Result := IncludeTrailingPathDelimiter(FTemp) + AName;
end;

procedure TTestQorTransMan.WriteFile(const AName, Text: string);
var
  S: TFileStream;
begin
  S := TFileStream.Create(AName, fmCreate);
  try
    if Text <> '' then
      S.WriteBuffer(Text[1], Length(Text));
  finally
    S.Free;
  end;
end;

{ The dictionary AName does not open, and texts pass through both ways. }
procedure TTestQorTransMan.CheckDoesNotOpen(const AName: string);
begin
  FMan.DbFileName := AName;
  AssertFalse('not opened: ' + AName, FMan.OpenDb);
  AssertEquals('alTop', FMan.IdentToLabel(ttkEnum, 'TAlign', 'alTop', nil));
  AssertEquals('顶部', FMan.LabelToIdent(ttkEnum, 'TAlign', '顶部', nil));
end;

procedure TTestQorTransMan.TestNoFileNameIdentToLabelReturnsIdent;
begin
  AssertFalse('nothing to open', FMan.OpenDb);
  AssertEquals('alClient', FMan.IdentToLabel(ttkEnum, 'TAlign', 'alClient', nil));
  AssertEquals('and back', 'x', FMan.LabelToIdent(ttkEnum, 'TAlign', 'x', nil));
end;

procedure TTestQorTransMan.TestRowFoundCaseInsensitivelyThenServedFromCache;
begin
  FMan.DbFileName := FixtureName;
  AssertTrue('opened', FMan.OpenDb);
  AssertEquals('found', '客户区', FMan.IdentToLabel(ttkEnum, 'TAlign', 'alclient', nil));
  AssertEquals('cached once', 1, FMan.Cache.Count);
  AssertEquals('cached as asked', 'alclient', FMan.Cache.TransItems[0].Indent);
  AssertEquals('cached label', '客户区', FMan.Cache.TransItems[0].CnLabel);
  // Served from the cache: the cache's answer is what comes back.
  FMan.Cache.TransItems[0].CnLabel := 'from the cache';
  AssertEquals('from the cache', FMan.IdentToLabel(ttkEnum, 'TALIGN', 'ALCLIENT', nil));
  AssertEquals('nothing added', 1, FMan.Cache.Count);
  AssertEquals('used twice', 2, FMan.Cache.TransItems[0].Frequency);
end;

procedure TTestQorTransMan.TestEventFoundByIdentifierAloneAndDirectCallWithTypeNameNeverHitsCache;
begin
  FMan.DbFileName := FixtureName;
  AssertEquals('by the event type', '单击',
    FMan.IdentToLabel(ttkEnum, TypeInfo(TNotifyEvent), 'OnClick', False, nil));
  AssertEquals('cached with no type name', '', FMan.Cache.TransItems[0].TypeName);
  AssertEquals('served from the cache', '单击',
    FMan.IdentToLabel(ttkEnum, TypeInfo(TNotifyEvent), 'OnClick', False, nil));
  AssertEquals('one entry', 1, FMan.Cache.Count);
  AssertEquals('any type name finds it', '单击',
    FMan.IdentToLabel(ttkEvent, 'TMouseEvent', 'OnClick', nil));
  AssertEquals('not from the cache: a second entry', 2, FMan.Cache.Count);
  FMan.IdentToLabel(ttkEvent, 'TMouseEvent', 'OnClick', nil);
  AssertEquals('and a third', 3, FMan.Cache.Count);
end;

procedure TTestQorTransMan.TestSetValueTranslatedWordByWordAndBareWordUnchanged;
begin
  FMan.DbFileName := FixtureName;
  AssertEquals('[粗体,斜体]',
    FMan.IdentToLabel(ttkEnum, TypeInfo(TFontStyles), '[fsBold,fsItalic]', False, nil));
  AssertEquals('fsBold', FMan.IdentToLabel(ttkEnum, TypeInfo(TFontStyles), 'fsBold', False, nil));
  AssertEquals('back', '[fsBold,fsItalic]',
    FMan.LabelToIdent(ttkEnum, TypeInfo(TFontStyles), '[粗体,斜体]', False, nil));
  AssertEquals('back for a property name too', '[fsBold]',
    FMan.LabelToIdent(ttkPropName, TypeInfo(TFontStyles), '[粗体]', False, nil));
end;

procedure TTestQorTransMan.TestNonComponentClassValueLooksUpClassValue;
begin
  FMan.DbFileName := FixtureName;
  AssertEquals('(字体)', FMan.IdentToLabel(trPropValue, TypeInfo(TFont), '(TFont)', nil));
  AssertEquals('CLASSVALUE', FMan.Cache.TransItems[0].TranTypeKind);
  AssertEquals('TFont', FMan.Cache.TransItems[0].TypeName);
end;

procedure TTestQorTransMan.TestComponentReferenceReexpressedRelativeToComponent;
var
  Form1, Form2: TForm;
  B: TButton;
begin
  Form1 := TForm.CreateNew(Application);
  Form2 := TForm.CreateNew(Application);
  try
    Form1.Name := 'TransForm1';
    Form2.Name := 'TransForm2';
    B := TButton.Create(Form1);
    B.Name := 'Button1';
    AssertEquals('relative to its form', 'Button1',
      FMan.IdentToLabel(trPropValue, TypeInfo(TButton), 'TransForm1.Button1', Form1));
    AssertEquals('from another form', 'TransForm1.Button1',
      FMan.IdentToLabel(trPropValue, TypeInfo(TButton), 'TransForm1.Button1', Form2));
    AssertEquals('resolves to nothing', '',
      FMan.IdentToLabel(trPropValue, TypeInfo(TButton), 'TransForm1.Nothing', Form1));
    AssertEquals('typed back', 'TransForm1.Button1',
      FMan.LabelToIdent(trPropValue, TypeInfo(TButton), 'TransForm1.Button1', Form2));
  finally
    Form2.Free;
    Form1.Free;
  end;
end;

procedure TTestQorTransMan.TestFirstMatchingRowWins;
begin
  FMan.DbFileName := FixtureName;
  AssertEquals('the first of two alClient rows', '客户区',
    FMan.IdentToLabel(ttkEnum, 'TAlign', 'alClient', nil));
end;

procedure TTestQorTransMan.TestLabelTypedBackMapsToIdentifier;
begin
  FMan.DbFileName := FixtureName;
  AssertEquals('alTop', FMan.LabelToIdent(trPropValue, TypeInfo(TAlign), '顶部', nil));
  AssertEquals('cached', 'alTop', FMan.Cache.TransItems[0].Indent);
  AssertEquals('unknown label unchanged', 'nowhere',
    FMan.LabelToIdent(trPropValue, TypeInfo(TAlign), 'nowhere', nil));
end;

procedure TTestQorTransMan.TestEventLabelDirectionMatchesIdentifierColumn;
begin
  FMan.DbFileName := FixtureName;
  // Kept as the Part says: the label is matched against the identifier
  // column and the label column answers.
  AssertEquals('单击', FMan.LabelToIdent(ttkEvent, '', 'OnClick', nil));
  AssertEquals('the label itself is not found', '单击',
    FMan.LabelToIdent(ttkEvent, '', '单击', nil));
end;

procedure TTestQorTransMan.TestRoleFormsUsePropNameAndEnum;
begin
  FMan.DbFileName := FixtureName;
  AssertEquals('property name', '标题', FMan.IdentToLabel(ttkPropName, 'TCaption', 'Caption', nil));
  AssertEquals('value by type', '客户区', FMan.IdentToLabel(trPropValue, TypeInfo(TAlign), 'alClient', nil));
  AssertEquals('a name is not a value', 'alClient',
    FMan.IdentToLabel(trPropName, TypeInfo(TAlign), 'alClient', nil));
  AssertEquals('nil type', 'x', FMan.IdentToLabel(trPropValue, nil, 'x', nil));
end;

procedure TTestQorTransMan.TestClassToTransedNameUsesClassValue;
begin
  FMan.DbFileName := FixtureName;
  AssertEquals('按钮', FMan.ClassToTransedName(TButton));
  AssertEquals('no row', 'TLabel', FMan.ClassToTransedName(TLabel));
  AssertEquals('the global one, with no dictionary', 'TButton', ClassToTransedName(TButton));
end;

procedure TTestQorTransMan.TestWordWalkLeavesTextAfterLastSeparatorAndBlanksCount;
begin
  FMan.DbFileName := FixtureName;
  AssertEquals('[粗体, 斜体]',
    FMan.TransComplexExpression(ttkSet, TypeInfo(TFontStyles), '[fsBold, fsItalic]', True));
  AssertEquals('after the last separator', '[粗体]fsItalic',
    FMan.TransComplexExpression(ttkSet, TypeInfo(TFontStyles), '[fsBold]fsItalic', True));
  AssertEquals('first character is never a word', 'fsBold,斜体]',
    FMan.TransComplexExpression(ttkSet, TypeInfo(TFontStyles), 'fsBold,fsItalic]', True));
  AssertEquals('other kinds unchanged', '[fsBold]',
    FMan.TransComplexExpression(ttkEnum, TypeInfo(TFontStyles), '[fsBold]', True));
end;

procedure TTestQorTransMan.TestFilterStringsAreFormattedWithoutQuoting;
begin
  AssertEquals('(TranTypeKind=''ENUM'') and (TypeName=''TAlign'') and (Indent=''al''Client'')',
    FMan.GenerateIdentToLabelFilterStr(ttkEnum, 'TAlign', 'al''Client'));
  AssertEquals('(TranTypeKind=''EVENT'') and (TypeName='''') and (CnLabel=''x'')',
    FMan.GenerateLabelToIdentFilterStr(ttkEvent, '', 'x'));
end;

procedure TTestQorTransMan.TestBinaryDictionaryIsAcceptedToo;
var
  Source: TBufDataset;
begin
  Source := TBufDataset.Create(nil);
  try
    Source.LoadFromFile(FixtureName, dfAny);
    Source.SaveToFile(TempFile('dict.bin'), dfBinary);
  finally
    Source.Free;
  end;
  FMan.DbFileName := TempFile('dict.bin');
  AssertTrue('opened', FMan.OpenDb);
  AssertEquals('顶部', FMan.IdentToLabel(ttkEnum, 'TAlign', 'alTop', nil));
end;

procedure TTestQorTransMan.TestDbFileNameChangeReopensAndEmptyNameCloses;
var
  Before: Int64;
begin
  Before := FileAge(FixtureName);
  FMan.DbFileName := FixtureName;
  AssertTrue('open', FMan.DataSet.Active);
  FMan.DbFileName := '  ';
  AssertFalse('closed', FMan.DataSet.Active);
  AssertEquals('name kept', '  ', FMan.DbFileName);
  AssertEquals('passes through', 'alTop', FMan.IdentToLabel(ttkEnum, 'TAlign', 'alTop', nil));
  AssertEquals('the dictionary file is never written', Before, FileAge(FixtureName));
end;

procedure TTestQorTransMan.TestMissingFileDoesNotOpenAndPassesThrough;
begin
  CheckDoesNotOpen(TempFile('nothing-here.xml'));
end;

procedure TTestQorTransMan.TestEmptyFileDoesNotOpenAndPassesThrough;
begin
  WriteFile(TempFile('empty.xml'), '');
  CheckDoesNotOpen(TempFile('empty.xml'));
end;

procedure TTestQorTransMan.TestTruncatedXmlDoesNotOpenAndPassesThrough;
var
  S: TStringList;
begin
  S := TStringList.Create;
  try
    S.LoadFromFile(FixtureName);
    WriteFile(TempFile('cut.xml'), Copy(S.Text, 1, Length(S.Text) div 2));
  finally
    S.Free;
  end;
  CheckDoesNotOpen(TempFile('cut.xml'));
end;

procedure TTestQorTransMan.TestWrongFieldNamesPassIdentifiersThroughAndLabelsRaise;
var
  Raised: Boolean;
begin
  WriteFile(TempFile('wrong.xml'),
    '<?xml version="1.0" standalone="yes"?><DATAPACKET Version="2.0"><METADATA><FIELDS>' +
    '<FIELD attrname="Kind" fieldtype="string" WIDTH="20"/>' +
    '<FIELD attrname="Ident" fieldtype="string" WIDTH="20"/>' +
    '</FIELDS><PARAMS/></METADATA><ROWDATA><ROW Kind="ENUM" Ident="alTop"/></ROWDATA></DATAPACKET>');
  FMan.DbFileName := TempFile('wrong.xml');
  AssertTrue('it is a dataset', FMan.OpenDb);
  AssertEquals('identifier direction passes through', 'alTop',
    FMan.IdentToLabel(ttkEnum, 'TAlign', 'alTop', nil));
  Raised := False;
  try
    FMan.LabelToIdent(ttkEnum, 'TAlign', 'x', nil);
  except
    on E: EDatabaseError do
      Raised := True;
  end;
  AssertTrue('label direction passes the dataset error on', Raised);
end;

procedure TTestQorTransMan.TestDirectoryAsFileNameDoesNotOpen;
begin
  ForceDirectories(TempFile('adir'));
  CheckDoesNotOpen(TempFile('adir'));
end;

procedure TTestQorTransMan.Test1000MutatedFixturesNeverRaiseInIdentifierDirection;
var
  Source, Mutant: string;
  S: TStringList;
  I, K, P, Opened: Integer;
  Answer: string;
begin
  S := TStringList.Create;
  try
    S.LoadFromFile(FixtureName);
    Source := S.Text;
  finally
    S.Free;
  end;
  RandSeed := 777;
  Opened := 0;
  for I := 1 to 1000 do
  begin
    Mutant := Source;
    for K := 1 to 1 + Random(4) do
    begin
      P := 1 + Random(Length(Mutant));
      case Random(3) of
        0: Mutant[P] := Chr(Random(256));
        1: System.Delete(Mutant, P, 1 + Random(8));
        2: System.Insert(Chr(32 + Random(95)), Mutant, P);
      end;
    end;
    WriteFile(TempFile('m.xml'), Mutant);
    FMan.Free;
    FMan := nil;
    EmptyGlobalCache;
    FMan := TQorTransMan.Create(TempFile('m.xml'));
    if FMan.OpenDb then
      Inc(Opened);
    try
      Answer := FMan.IdentToLabel(ttkEnum, 'TNothing', 'zzUnknown', nil);
    except
      on E: Exception do
        Fail('mutant ' + IntToStr(I) + ' raised ' + E.ClassName + ': ' + E.Message);
    end;
    AssertEquals('unmatched identifier unchanged in mutant ' + IntToStr(I), 'zzUnknown', Answer);
    try
      FMan.IdentToLabel(ttkEnum, 'TAlign', 'alTop', nil);
      FMan.IdentToLabel(trPropValue, TypeInfo(TFontStyles), '[fsBold,fsItalic]', nil);
    except
      on E: Exception do
        Fail('mutant ' + IntToStr(I) + ' raised ' + E.ClassName + ': ' + E.Message);
    end;
  end;
  AssertTrue('some mutants still open', Opened > 0);
  AssertTrue('some mutants do not', Opened < 1000);
end;

initialization
  RegisterTest(TTestQorTransCache);
  RegisterTest(TTestQorTransMan);

end.
