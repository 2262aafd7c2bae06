{ QorDesign — qordict: makes translation dictionaries (Part 4.2 leaves
  their making outside the system).

    qordict csv2xml IN.csv OUT.xml   CSV -> ClientDataSet XML dictionary
    qordict xml2csv IN.xml OUT.csv   XML (or TBufDataset binary) -> CSV

  The CSV has the fields TranTypeKind,TypeName,Indent,CnLabel, UTF-8,
  quoted fields allowed, an optional header row. A malformed row is
  reported as "FILE:LINE: message" and nothing is written (exit code 1). }
program qordict;

{$mode objfpc}{$H+}

uses
  // RTL / FCL
  {$IFDEF UNIX}cwstring,{$ENDIF} SysUtils,
  // ours
  QorDictCsv;

procedure Usage;
begin
  WriteLn(StdErr, 'usage: qordict csv2xml IN.csv OUT.xml');
  WriteLn(StdErr, '       qordict xml2csv IN.xml OUT.csv');
  Halt(2);
end;

begin
  // The CSV and the dictionary hold UTF-8, whatever the locale says.
  DefaultSystemCodePage := CP_UTF8;
  SetMultiByteConversionCodePage(CP_UTF8);
  if ParamCount <> 3 then
    Usage;
  try
    if ParamStr(1) = 'csv2xml' then
      CsvToDict(ParamStr(2), ParamStr(3))
    else if ParamStr(1) = 'xml2csv' then
      DictToCsv(ParamStr(2), ParamStr(3))
    else
      Usage;
  except
    on E: Exception do
    begin
      WriteLn(StdErr, 'qordict: ', E.Message);
      Halt(1);
    end;
  end;
end.
