{ QorDesign — dictionary conversion for the qordict tool.

  Part 4.2 leaves the making of dictionaries outside the system; this unit
  converts between a CSV file (TranTypeKind,TypeName,Indent,CnLabel; UTF-8;
  RFC 4180 quoting; an optional header row) and the ClientDataSet XML
  dictionary that TQorTransMan reads. A malformed row is reported with its
  line number and nothing is written. }
unit QorDictCsv;

{$mode objfpc}{$H+}

interface

uses
  // RTL / FCL
  Classes, SysUtils, DB, BufDataset, XMLDatapacketReader;

type
  EQorDictCsv = class(Exception);

const
  DictFieldNames: array[0..3] of string = ('TranTypeKind', 'TypeName', 'Indent', 'CnLabel');

{ Parses CSV text into Rows (each row a TStringList of 4 fields, owned by
  Rows' objects). Raises EQorDictCsv "line N: ..." on a malformed row. }
procedure ParseDictCsv(const Text: string; Rows: TList);
procedure FreeDictRows(Rows: TList);

{ CSV file -> XML dictionary; XML (or binary) dictionary -> CSV file. }
procedure CsvToDict(const CsvFile, DictFile: string);
procedure DictToCsv(const DictFile, CsvFile: string);

implementation

function ReadFileText(const AName: string): string;
var
  S: TFileStream;
begin
  S := TFileStream.Create(AName, fmOpenRead or fmShareDenyWrite);
  try
    SetLength(Result, S.Size);
    if Result <> '' then
      S.ReadBuffer(Result[1], Length(Result));
  finally
    S.Free;
  end;
end;

procedure FreeDictRows(Rows: TList);
var
  I: Integer;
begin
  for I := 0 to Rows.Count - 1 do
    TObject(Rows[I]).Free;
  Rows.Clear;
end;

procedure ParseDictCsv(const Text: string; Rows: TList);
var
  P, Line, RowLine: Integer;
  Fields: TStringList;
  Field: string;
  Quoted, AtFieldStart: Boolean;

  procedure Fail(ALine: Integer; const Msg: string);
  begin
    raise EQorDictCsv.CreateFmt('line %d: %s', [ALine, Msg]);
  end;

  procedure EndRow;
  var
    IsHeader: Boolean;
    K: Integer;
  begin
    Fields.Add(Field);
    Field := '';
    // A blank line is no row.
    if (Fields.Count = 1) and (Fields[0] = '') then
    begin
      Fields.Clear;
      Exit;
    end;
    if Fields.Count <> 4 then
      Fail(RowLine, Format('expected 4 fields (TranTypeKind,TypeName,Indent,CnLabel), found %d',
        [Fields.Count]));
    IsHeader := Rows.Count = 0;
    for K := 0 to 3 do
      IsHeader := IsHeader and SameText(Trim(Fields[K]), DictFieldNames[K]);
    if IsHeader then
      Fields.Clear
    else
    begin
      Rows.Add(Fields);
      Fields := TStringList.Create;
    end;
  end;

begin
  Fields := TStringList.Create;
  try
    P := 1;
    Line := 1;
    RowLine := 1;
    Field := '';
    AtFieldStart := True;
    // A UTF-8 byte order mark is not part of the first field.
    if Copy(Text, 1, 3) = #$EF#$BB#$BF then
      P := 4;
    while P <= Length(Text) do
    begin
      if AtFieldStart and (Text[P] = '"') then
      begin
        Quoted := True;
        AtFieldStart := False;
        Inc(P);
        while True do
        begin
          if P > Length(Text) then
            Fail(RowLine, 'unterminated quoted field');
          if Text[P] = '"' then
          begin
            if (P < Length(Text)) and (Text[P + 1] = '"') then
            begin
              Field := Field + '"';
              Inc(P, 2);
              Continue;
            end;
            Inc(P);
            Break;
          end;
          if Text[P] = #10 then
            Inc(Line);
          Field := Field + Text[P];
          Inc(P);
        end;
        if (P <= Length(Text)) and not (Text[P] in [',', #13, #10]) then
          Fail(RowLine, 'text after a closing quote');
        Continue;
      end;
      Quoted := False;
      case Text[P] of
        ',':
          begin
            Fields.Add(Field);
            Field := '';
            AtFieldStart := True;
          end;
        #13: ;
        #10:
          begin
            EndRow;
            Inc(Line);
            RowLine := Line;
            AtFieldStart := True;
          end;
        '"':
          Fail(RowLine, 'quote inside an unquoted field');
      else
        Field := Field + Text[P];
        AtFieldStart := False;
      end;
      Inc(P);
    end;
    if (Field <> '') or (Fields.Count > 0) or Quoted then
      EndRow;
  finally
    Fields.Free;
  end;
end;

procedure CsvToDict(const CsvFile, DictFile: string);
var
  Rows: TList;
  DS: TBufDataset;
  Widths: array[0..3] of Integer;
  I, K: Integer;
  Row: TStringList;
begin
  Rows := TList.Create;
  DS := TBufDataset.Create(nil);
  try
    try
      ParseDictCsv(ReadFileText(CsvFile), Rows);
    except
      on E: EQorDictCsv do
        raise EQorDictCsv.Create(CsvFile + ':' + Copy(E.Message, 6, MaxInt));
    end;
    for K := 0 to 3 do
      Widths[K] := 1;
    for I := 0 to Rows.Count - 1 do
    begin
      Row := TStringList(Rows[I]);
      for K := 0 to 3 do
        if Length(Row[K]) > Widths[K] then
          Widths[K] := Length(Row[K]);
    end;
    for K := 0 to 3 do
      DS.FieldDefs.Add(DictFieldNames[K], ftString, Widths[K]);
    DS.CreateDataset;
    for I := 0 to Rows.Count - 1 do
    begin
      Row := TStringList(Rows[I]);
      DS.Append;
      for K := 0 to 3 do
        DS.Fields[K].AsString := Row[K];
      DS.Post;
      // TBufDataset searches its change log at each post: kept short, or a
      // dictionary of 100,000 rows takes minutes.
      if I mod 1000 = 999 then
        DS.MergeChangeLog;
    end;
    DS.MergeChangeLog;
    DS.SaveToFile(DictFile, dfXML);
  finally
    DS.Free;
    FreeDictRows(Rows);
    Rows.Free;
  end;
end;

function CsvField(const S: string): string;
begin
  if (S <> '') and ((Pos(',', S) > 0) or (Pos('"', S) > 0) or (Pos(#10, S) > 0) or
    (Pos(#13, S) > 0) or (S[1] = ' ') or (S[Length(S)] = ' ')) then
    Result := '"' + StringReplace(S, '"', '""', [rfReplaceAll]) + '"'
  else
    Result := S;
end;

procedure DictToCsv(const DictFile, CsvFile: string);
var
  DS: TBufDataset;
  Out: TStringList;
  Fields: array[0..3] of TField;
  K: Integer;
begin
  DS := TBufDataset.Create(nil);
  Out := TStringList.Create;
  try
    DS.LoadFromFile(DictFile, dfAny);
    for K := 0 to 3 do
    begin
      Fields[K] := DS.FindField(DictFieldNames[K]);
      if Fields[K] = nil then
        raise EQorDictCsv.CreateFmt('%s: no field %s', [DictFile, DictFieldNames[K]]);
    end;
    Out.Add(string.Join(',', DictFieldNames));
    DS.First;
    while not DS.EOF do
    begin
      Out.Add(CsvField(Fields[0].AsString) + ',' + CsvField(Fields[1].AsString) + ',' +
        CsvField(Fields[2].AsString) + ',' + CsvField(Fields[3].AsString));
      DS.Next;
    end;
    Out.LineBreak := #10;
    Out.SaveToFile(CsvFile);
  finally
    Out.Free;
    DS.Free;
  end;
end;

end.
