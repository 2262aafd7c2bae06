{ QorDesign tests — the qordict tool's conversions (unit QorDictCsv):
  CSV rows, malformed rows reported by line, and the dictionary it writes
  read back by the translation manager. }
unit TestQorDict;

{$mode objfpc}{$H+}

interface

uses
  // RTL / FCL
  Classes, SysUtils, TypInfo, fpcunit, testregistry,
  // LCL
  Controls, StdCtrls,
  // ours
  QorTransUtils, QorDictCsv;

type
  { TTestQorDict }

  TTestQorDict = class(TTestCase)
  private
    FRows: TList;
    function Parse(const Text: string): Integer;
    procedure CheckMalformed(const Text: string; Line: Integer; const Part: string);
    function TempName(const AName: string): string;
  protected
    procedure SetUp; override;
    procedure TearDown; override;
  published
    procedure TestHeaderOptionalBlankLinesSkippedQuotesUnescaped;
    procedure TestWrongFieldCountReportsItsLine;
    procedure TestUnterminatedQuoteReportsTheRowsFirstLine;
    procedure TestQuoteInsideUnquotedFieldAndTextAfterClosingQuoteAreMalformed;
    procedure TestCsvToXmlIsReadByTheManagerAndConvertsBack;
    procedure TestMalformedCsvWritesNoDictionary;
    procedure TestShippedDictionaryMatchesItsCsvAndTranslatesTheStage;
  end;

implementation

procedure TTestQorDict.SetUp;
begin
  FRows := TList.Create;
end;

procedure TTestQorDict.TearDown;
begin
  FreeDictRows(FRows);
  FreeAndNil(FRows);
  DeleteFile(TempName('d.csv'));
  DeleteFile(TempName('d.xml'));
  DeleteFile(TempName('back.csv'));
end;

function TTestQorDict.TempName(const AName: string): string;
begin
  Result := IncludeTrailingPathDelimiter(GetTempDir(False)) + 'qordict-' +
    IntToStr(GetProcessID) + '-' + AName;
end;

function TTestQorDict.Parse(const Text: string): Integer;
begin
  FreeDictRows(FRows);
  ParseDictCsv(Text, FRows);
  Result := FRows.Count;
end;

procedure TTestQorDict.CheckMalformed(const Text: string; Line: Integer; const Part: string);
var
  Msg: string;
begin
  Msg := '';
  try
    Parse(Text);
  except
    on E: EQorDictCsv do
      Msg := E.Message;
  end;
  AssertEquals('line of ' + Text, 'line ' + IntToStr(Line) + ':', Copy(Msg, 1, Pos(':', Msg)));
  AssertTrue(Msg + ' names ' + Part, Pos(Part, Msg) > 0);
end;

procedure TTestQorDict.TestHeaderOptionalBlankLinesSkippedQuotesUnescaped;
begin
  AssertEquals('header skipped', 2, Parse('TranTypeKind,TypeName,Indent,CnLabel'#10 +
    'ENUM,TAlign,alTop,顶部'#13#10#10'"ENUM","TAlign","alClient","客户, ""区"""'#10));
  AssertEquals('顶部', TStringList(FRows[0])[3]);
  AssertEquals('客户, "区"', TStringList(FRows[1])[3]);
  AssertEquals('no header, no final newline', 1, Parse(#$EF#$BB#$BF'EVENT,,OnClick,单击'));
  AssertEquals('BOM dropped', 'EVENT', TStringList(FRows[0])[0]);
  AssertEquals('empty type name', '', TStringList(FRows[0])[1]);
  AssertEquals('line break inside quotes', 'a'#10'b',
    TStringList(FRows[Parse('ENUM,T,x,"a'#10'b"')- 1])[3]);
end;

procedure TTestQorDict.TestWrongFieldCountReportsItsLine;
begin
  CheckMalformed('ENUM,TAlign,alTop,x'#10'ENUM,TAlign,alClient'#10, 2, 'found 3');
  CheckMalformed('ENUM,TAlign,alTop,x,y'#10, 1, 'found 5');
end;

procedure TTestQorDict.TestUnterminatedQuoteReportsTheRowsFirstLine;
begin
  CheckMalformed('ENUM,TAlign,alTop,x'#10'ENUM,TAlign,alClient,"open'#10'more'#10, 2,
    'unterminated');
end;

procedure TTestQorDict.TestQuoteInsideUnquotedFieldAndTextAfterClosingQuoteAreMalformed;
begin
  CheckMalformed('ENUM,TAl"ign,alTop,x'#10, 1, 'quote inside');
  CheckMalformed('ENUM,T,a,b'#10'ENUM,"TAlign"x,alTop,x'#10, 2, 'after a closing quote');
end;

procedure TTestQorDict.TestCsvToXmlIsReadByTheManagerAndConvertsBack;
var
  S: TStringList;
  Man: TQorTransMan;
begin
  S := TStringList.Create;
  try
    S.Text := 'TranTypeKind,TypeName,Indent,CnLabel'#10'ENUM,TAlign,alClient,客户区'#10 +
      'EVENT,,OnClick,"单击, 按下"';
    S.SaveToFile(TempName('d.csv'));
    CsvToDict(TempName('d.csv'), TempName('d.xml'));
    Man := TQorTransMan.Create(TempName('d.xml'));
    try
      AssertTrue('opens', Man.OpenDb);
      AssertEquals('客户区', Man.IdentToLabel(ttkEnum, 'TAlign', 'alClient', nil));
      AssertEquals('单击, 按下', Man.IdentToLabel(ttkEvent, '', 'OnClick', nil));
    finally
      Man.Free;
    end;
    DictToCsv(TempName('d.xml'), TempName('back.csv'));
    S.LoadFromFile(TempName('back.csv'));
    AssertEquals('header', 'TranTypeKind,TypeName,Indent,CnLabel', S[0]);
    AssertEquals('row', 'ENUM,TAlign,alClient,客户区', S[1]);
    AssertEquals('quoted again', 'EVENT,,OnClick,"单击, 按下"', S[2]);
  finally
    S.Free;
    while QorTransCache.Count > 0 do
      QorTransCache.RemoveItem(0);
  end;
end;

procedure TTestQorDict.TestMalformedCsvWritesNoDictionary;
var
  S: TStringList;
  Msg: string;
begin
  S := TStringList.Create;
  try
    S.Text := 'ENUM,TAlign,alClient,x'#10'ENUM,TAlign'#10;
    S.SaveToFile(TempName('d.csv'));
  finally
    S.Free;
  end;
  Msg := '';
  try
    CsvToDict(TempName('d.csv'), TempName('d.xml'));
  except
    on E: EQorDictCsv do
      Msg := E.Message;
  end;
  AssertEquals('file and line', TempName('d.csv') + ':2:', Copy(Msg, 1, Length(TempName('d.csv')) + 3));
  AssertFalse('nothing written', FileExists(TempName('d.xml')));
end;

procedure TTestQorDict.TestShippedDictionaryMatchesItsCsvAndTranslatesTheStage;
var
  Dir: string;
  Shipped, Made: TStringList;
  Man: TQorTransMan;
begin
  Dir := ExpandFileName(ExtractFilePath(ParamStr(0)) + '../resources/dict/');
  Shipped := TStringList.Create;
  Made := TStringList.Create;
  Man := TQorTransMan.Create(Dir + 'qordesign-zh.xml');
  try
    // The XML is the CSV, made with qordict.
    DictToCsv(Dir + 'qordesign-zh.xml', TempName('back.csv'));
    Shipped.LoadFromFile(TempName('back.csv'));
    Made.LoadFromFile(Dir + 'qordesign-zh.csv');
    AssertEquals('same rows as its CSV', Made.Text, Shipped.Text);
    AssertTrue('at least 150 rows', Made.Count - 1 >= 150);
    AssertTrue('opens', Man.OpenDb);
    AssertEquals('property name', '标题',
      Man.IdentToLabel(trPropName, GetPropInfo(TButton, 'Caption')^.PropType, 'Caption', nil));
    AssertEquals('enumeration value', '客户区', Man.IdentToLabel(trPropValue, TypeInfo(TAlign), 'alClient', nil));
    AssertEquals('typed back', 'alClient', Man.LabelToIdent(trPropValue, TypeInfo(TAlign), '客户区', nil));
    AssertEquals('anchors', '[上,左]', Man.IdentToLabel(trPropValue, TypeInfo(TAnchors), '[akTop,akLeft]', nil));
    AssertEquals('event', '单击', Man.IdentToLabel(trPropValue, TypeInfo(TNotifyEvent), 'OnClick', nil));
    AssertEquals('class', '按钮', Man.ClassToTransedName(TButton));
  finally
    Man.Free;
    Made.Free;
    Shipped.Free;
    while QorTransCache.Count > 0 do
      QorTransCache.RemoveItem(0);
  end;
end;

initialization
  RegisterTest(TTestQorDict);

end.
