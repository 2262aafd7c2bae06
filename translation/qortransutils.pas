{ QorDesign — translation cache, translation manager and dictionary.

  Part 4.1: TQorTransCache, the bounded frequency cache of dictionary
  answers (linear, as the Part says: at most MaxLength entries).
  Part 4.2: TQorTransMan, which maps the identifiers the designer shows to
  display labels and back through a dictionary dataset, with the cache in
  front of it.

  LCL mapping (PLATFORM.md): the dictionary is an fcl-db TBufDataset (for
  Delphi's TClientDataSet) reading the ClientDataSet XML datapacket
  (fcl-db's XML datapacket reader) or TBufDataset's binary format. It is
  loaded with LoadFromFile and never given the dataset's FileName, since a
  TBufDataset with a FileName writes itself back over that file when it
  closes. When the dictionary opens, it is indexed by hash on the three
  look-up keys; a search answers what Locate with loCaseInsensitive answers
  (the first row in file order), so a miss costs a hash probe instead of a
  scan of the whole dictionary (docs/platform-notes.md).

  Sections:
    - Enumerations, tables and variables
    - Translation cache (Part 4.1)
    - Translation manager (Part 4.2)
    - Free functions }
unit QorTransUtils;

{$mode objfpc}{$H+}

interface

uses
  // RTL / FCL
  Classes, SysUtils, TypInfo, Variants, Contnrs, DB, BufDataset, XMLDatapacketReader,
  // ours
  VhoSysUtils;

{************ Enumerations, tables and variables }

type
  { What an identifier is. }
  TTransTypeKind = (ttkEnum, ttkSet, ttkClass, ttkClassValue, ttkPropName, ttkCompName, ttkEvent);
  { The inspector's view of a text: a property's name or its value. }
  TTransRole = (trPropName, trPropValue);
  TTranslateLan = (tlDefault, tlEnglish, tlChinese);

  TCharsSet = TQorCharset;
  TStringArray = array of string;
  { Replaces one word of an expression (TransComplexExpression). }
  TIdentsWalkThroughProc = procedure(APTI: PTypeInfo; const Src: string;
    var Dest: string) of object;

const
  TransTypeKindStrs: array[TTransTypeKind] of string =
    ('ENUM', 'SET', 'CLASS', 'CLASSVALUE', 'PROPNAME', 'COMPNAME', 'EVENT');
  { Delphi's 18 type kinds, by name (FPC's TTypeKind has more). }
  TypeKindStrs: array[0..17] of string =
    ('tkUnknown', 'tkInteger', 'tkChar', 'tkEnumeration', 'tkFloat', 'tkString', 'tkSet',
     'tkClass', 'tkMethod', 'tkWChar', 'tkLString', 'tkWString', 'tkVariant', 'tkArray',
     'tkRecord', 'tkInterface', 'tkInt64', 'tkDynArray');

var
  { Kept for applications; nothing here changes by it. }
  TranslateLan: TTranslateLan = tlChinese;
  { Part 3.2's two character sets. }
  IdentCharset: TCharsSet;
  SeperatorCharset: TCharsSet;

{************ Translation cache (Part 4.1) }

type
  { One dictionary answer. }
  TQorTransCacheItem = class(TObject)
  public
    CnLabel: string;
    TranTypeKind: string;
    TypeName: string;
    Indent: string;
    Frequency: Integer;
  end;

  { TQorTransCache
    The most used answers, at most MaxLength of them; the least used go
    first when it overflows, and every use count is wiped once more than
    MaxEnvokedCount look-ups have been made. }
  TQorTransCache = class(TList)
  private
    FEnvokedCount: Integer;
    FMaxLength: Integer;
    FMaxEnvokedCount: Integer;
    function GetTransItems(Index: Integer): TQorTransCacheItem;
    procedure SetTransItems(Index: Integer; Value: TQorTransCacheItem);
    function LocateBy(const ATranTypeKind, ATypeName, AText: string;
      ByLabel, IncFrequency: Boolean): Integer;
    function ItemAt(Index: Integer): TQorTransCacheItem;
  public
    constructor Create;
    destructor Destroy; override;
    procedure Clear; override;
    function AddItem(const ATranTypeKind, ATypeName, AIndent, ACnLabel: string): Integer;
    function Add(Item: TQorTransCacheItem; AFrequency: Integer): Integer; overload;
    function LocateIdent(const ATranTypeKind, ATypeName, AIndent: string;
      IncFrequency: Boolean): Integer; overload;
    function LocateLabel(const ATranTypeKind, ATypeName, ACnLabel: string;
      IncFrequency: Boolean): Integer; overload;
    function LocateIdent(Kind: TTransTypeKind; const ATypeName, AIndent: string;
      IncFrequency: Boolean): TQorTransCacheItem; overload;
    function LocateLabel(Kind: TTransTypeKind; const ATypeName, ACnLabel: string;
      IncFrequency: Boolean): TQorTransCacheItem; overload;
    procedure IncItemFrequency(Index: Integer);
    procedure RemoveItem(Index: Integer);
    procedure EmptyAllFrequencies;
    procedure DelOverflowItems;
    procedure SetMaxLength(Value: Integer);
    procedure SetEnvokedCount(Value: Integer);
    property TransItems[Index: Integer]: TQorTransCacheItem read GetTransItems write SetTransItems;
    property EnvokedCount: Integer read FEnvokedCount write SetEnvokedCount;
    property MaxLength: Integer read FMaxLength write SetMaxLength;
    property MaxEnvokedCount: Integer read FMaxEnvokedCount write FMaxEnvokedCount;
  end;

{************ Translation manager (Part 4.2) }

  { TQorTransMan
    Identifier <-> label through the dictionary, the cache in front. }
  TQorTransMan = class(TObject)
  private
    FCache: TQorTransCache;
    FDataSet: TBufDataset;
    FDbFileName: string;
    // Built when the dictionary opens; nil while it is not (or cannot be)
    // indexed, and then the look-ups Locate as the Part says.
    FByIdent: TFPStringHashTable;     // kind, type name, identifier -> label
    FByEventIdent: TFPStringHashTable; // kind, identifier -> label
    FByLabel: TFPStringHashTable;     // kind, type name, label -> identifier
    function GetDbFileName: string;
    procedure SetDbFileName(const Value: string);
    procedure BuildIndex;
    procedure DropIndex;
    procedure DataSetChanged(DataSet: TDataSet);
  public
    constructor Create(const ADbFileName: string);
    destructor Destroy; override;
    function OpenDb: Boolean;
    { Core look-ups; TypeKind and Component are not used. }
    function IdentToLabel(Kind: TTransTypeKind; TypeKind: TTypeKind;
      const TypeName, Ident: string; Component: TComponent): string; overload;
    function LabelToIdent(Kind: TTransTypeKind; TypeKind: TTypeKind;
      const TypeName, CnLabel: string; Component: TComponent): string; overload;
    function IdentToLabel(Kind: TTransTypeKind; const TypeName, Ident: string;
      Component: TComponent): string; overload;
    function LabelToIdent(Kind: TTransTypeKind; const TypeName, CnLabel: string;
      Component: TComponent): string; overload;
    { Type-driven look-ups. }
    function IdentToLabel(Kind: TTransTypeKind; PTI: PTypeInfo; const Ident: string;
      PassTypeKind: Boolean; Component: TComponent): string; overload;
    function LabelToIdent(Kind: TTransTypeKind; PTI: PTypeInfo; const CnLabel: string;
      PassTypeKind: Boolean; Component: TComponent): string; overload;
    { The object inspector's: trPropName is ttkPropName, trPropValue ttkEnum. }
    function IdentToLabel(Role: TTransRole; PTI: PTypeInfo; const Ident: string;
      Component: TComponent): string; overload;
    function LabelToIdent(Role: TTransRole; PTI: PTypeInfo; const CnLabel: string;
      Component: TComponent): string; overload;
    function ClassToTransedName(AClass: TClass): string;
    function TransComplexExpression(Kind: TTransTypeKind; PTI: PTypeInfo;
      const Expr: string; ToLabel: Boolean): string;
    procedure ExSetIdentToLabel(APTI: PTypeInfo; const Src: string; var Dest: string);
    procedure ExSetLabelToIdent(APTI: PTypeInfo; const Src: string; var Dest: string);
    procedure ExClassIdentToLabel(APTI: PTypeInfo; const Src: string; var Dest: string);
    procedure ExClassLabelToIdent(APTI: PTypeInfo; const Src: string; var Dest: string);
    function GenerateIdentToLabelFilterStr(Kind: TTransTypeKind;
      const TypeName, Ident: string): string;
    function GenerateLabelToIdentFilterStr(Kind: TTransTypeKind;
      const TypeName, CnLabel: string): string;
    property Cache: TQorTransCache read FCache;
    property DataSet: TBufDataset read FDataSet;
    property DbFileName: string read GetDbFileName write SetDbFileName;
  end;

{************ Free functions }

function QorTransCache: TQorTransCache;
function QorTransMan: TQorTransMan;

{ The display label of a class (the global manager's ClassToTransedName). }
function ClassToTransedName(AClass: TClass): string;

{ The display name of a component: its Name, unchanged (Part 4.2). }
function GetCompTransedName(Comp, Owner: TComponent): string;

implementation

uses
  // ours
  VhoRTTI;

const
  KeySep = #1;

var
  GCache: TQorTransCache = nil;
  GMan: TQorTransMan = nil;

{************ Translation cache }

function CompareFrequency(Item1, Item2: Pointer): Integer;
begin
  Result := TQorTransCacheItem(Item1).Frequency - TQorTransCacheItem(Item2).Frequency;
end;

constructor TQorTransCache.Create;
begin
  inherited Create;
  FMaxLength := 200;
  FMaxEnvokedCount := 4000;
end;

{ The Part lets the entries outlive the cache; they are freed here, since
  the program's heap check counts them as lost (docs/platform-notes.md). }
destructor TQorTransCache.Destroy;
begin
  Clear;
  inherited Destroy;
end;

{ Empties the cache and frees its entries (TList.Clear would lose them). }
procedure TQorTransCache.Clear;
var
  I: Integer;
begin
  for I := 0 to Count - 1 do
    TObject(Items[I]).Free;
  inherited Clear;
end;

function TQorTransCache.GetTransItems(Index: Integer): TQorTransCacheItem;
begin
  Result := TQorTransCacheItem(Items[Index]);
end;

procedure TQorTransCache.SetTransItems(Index: Integer; Value: TQorTransCacheItem);
begin
  Items[Index] := Value;
end;

function TQorTransCache.AddItem(const ATranTypeKind, ATypeName, AIndent, ACnLabel: string): Integer;
var
  Item: TQorTransCacheItem;
begin
  Item := TQorTransCacheItem.Create;
  Item.TranTypeKind := ATranTypeKind;
  Item.TypeName := ATypeName;
  Item.Indent := AIndent;
  Item.CnLabel := ACnLabel;
  Result := Add(Item, 1);
end;

function TQorTransCache.Add(Item: TQorTransCacheItem; AFrequency: Integer): Integer;
begin
  SetEnvokedCount(FEnvokedCount + 1);
  Item.Frequency := AFrequency;
  Result := inherited Add(Item);
  if Count > FMaxLength then
    DelOverflowItems;
end;

{ The first entry, from index 0 up, whose kind, type name and identifier
  (or label) equal the arguments case-insensitively; every call counts.
  The walk reads the list's array and the entries' strings in place: an
  inspector refresh makes dozens of these calls. }
function TQorTransCache.LocateBy(const ATranTypeKind, ATypeName, AText: string;
  ByLabel, IncFrequency: Boolean): Integer;
var
  I, N: Integer;
  Entries: PPointerList;
  Item: TQorTransCacheItem;
begin
  SetEnvokedCount(FEnvokedCount + 1);
  N := Length(AText);
  Entries := List;
  for I := 0 to Count - 1 do
  begin
    Item := TQorTransCacheItem(Entries^[I]);
    // SameText folds ASCII only: equal texts have equal lengths, and the
    // length test spares the character walk of most misses.
    if ByLabel then
    begin
      if (Length(Item.CnLabel) <> N) or not SameText(Item.CnLabel, AText) then
        Continue;
    end
    else if (Length(Item.Indent) <> N) or not SameText(Item.Indent, AText) then
      Continue;
    if SameText(Item.TypeName, ATypeName) and SameText(Item.TranTypeKind, ATranTypeKind) then
    begin
      if IncFrequency then
        Inc(Item.Frequency);
      Exit(I);
    end;
  end;
  Result := -1;
end;

function TQorTransCache.ItemAt(Index: Integer): TQorTransCacheItem;
begin
  if (Index >= 0) and (Index < Count) then
    Result := TQorTransCacheItem(Items[Index])
  else
    Result := nil;
end;

function TQorTransCache.LocateIdent(const ATranTypeKind, ATypeName, AIndent: string;
  IncFrequency: Boolean): Integer;
begin
  Result := LocateBy(ATranTypeKind, ATypeName, AIndent, False, IncFrequency);
end;

function TQorTransCache.LocateLabel(const ATranTypeKind, ATypeName, ACnLabel: string;
  IncFrequency: Boolean): Integer;
begin
  Result := LocateBy(ATranTypeKind, ATypeName, ACnLabel, True, IncFrequency);
end;

function TQorTransCache.LocateIdent(Kind: TTransTypeKind; const ATypeName, AIndent: string;
  IncFrequency: Boolean): TQorTransCacheItem;
begin
  Result := ItemAt(LocateIdent(TransTypeKindStrs[Kind], ATypeName, AIndent, IncFrequency));
end;

function TQorTransCache.LocateLabel(Kind: TTransTypeKind; const ATypeName, ACnLabel: string;
  IncFrequency: Boolean): TQorTransCacheItem;
begin
  Result := ItemAt(LocateLabel(TransTypeKindStrs[Kind], ATypeName, ACnLabel, IncFrequency));
end;

procedure TQorTransCache.IncItemFrequency(Index: Integer);
begin
  Inc(TQorTransCacheItem(Items[Index]).Frequency);
end;

procedure TQorTransCache.RemoveItem(Index: Integer);
var
  Item: TObject;
begin
  Item := TObject(Items[Index]);
  Delete(Index);
  Item.Free;
end;

procedure TQorTransCache.EmptyAllFrequencies;
var
  I: Integer;
  Entries: PPointerList;
begin
  Entries := List;
  for I := 0 to Count - 1 do
    TQorTransCacheItem(Entries^[I]).Frequency := 0;
end;

procedure TQorTransCache.DelOverflowItems;
var
  I, Removals: Integer;
begin
  Sort(@CompareFrequency);
  if FMaxLength < Count then
  begin
    // One more than the excess, on purpose (Part 4.1); never past empty.
    Removals := Count - FMaxLength + 1;
    for I := 1 to Removals do
      if Count > 0 then
        RemoveItem(0);
  end;
end;

procedure TQorTransCache.SetMaxLength(Value: Integer);
begin
  FMaxLength := Value;
  DelOverflowItems;
end;

procedure TQorTransCache.SetEnvokedCount(Value: Integer);
begin
  FEnvokedCount := Value;
  if FEnvokedCount > FMaxEnvokedCount then
    EmptyAllFrequencies;
end;

{************ Translation manager }

{ AnsiUpperCase, without its round trip through wide characters when S is
  plain ASCII (identifiers nearly always are): the same result there. }
function KeyUpper(const S: string): string;
begin
  if IsPlainAscii(S) then
    Result := UpperCase(S)
  else
    Result := AnsiUpperCase(S);
end;

{ One string upper-cased once: the separator has no case, so this is the
  parts upper-cased one by one, with one allocation instead of four. }
function IndexKey(const A, B, C: string): string;
begin
  Result := KeyUpper(A + KeySep + B + KeySep + C);
end;

constructor TQorTransMan.Create(const ADbFileName: string);
begin
  inherited Create;
  FDataSet := TBufDataset.Create(nil);
  // The Part's one Boolean switched on at creation: the dictionary is read,
  // never written.
  FDataSet.ReadOnly := True;
  FDataSet.AfterPost := @DataSetChanged;
  FDataSet.AfterDelete := @DataSetChanged;
  FDataSet.BeforeClose := @DataSetChanged;
  FCache := QorTransCache;
  if Trim(ADbFileName) <> '' then
    SetDbFileName(ADbFileName);
end;

destructor TQorTransMan.Destroy;
begin
  DropIndex;
  FDataSet.Free;
  inherited Destroy;
end;

function TQorTransMan.GetDbFileName: string;
begin
  Result := FDbFileName;
end;

procedure TQorTransMan.SetDbFileName(const Value: string);
begin
  if SameText(Value, FDbFileName) then
    Exit;
  FDbFileName := Value;
  FDataSet.Close;
  if Trim(Value) <> '' then
    OpenDb;
end;

function TQorTransMan.OpenDb: Boolean;
begin
  if FDataSet.Active then
  begin
    if FByIdent = nil then
      BuildIndex;
    Exit(True);
  end;
  if Trim(FDbFileName) = '' then
    Exit(False);
  try
    // A directory or a missing file would otherwise open as an empty
    // stream error deep in the reader; either way: not opened.
    if not FileExists(FDbFileName) or DirectoryExists(FDbFileName) then
      Exit(False);
    FDataSet.LoadFromFile(FDbFileName, dfAny);
    BuildIndex;
    Result := FDataSet.Active;
  except
    FDataSet.Close;
    Result := False;
  end;
end;

procedure TQorTransMan.DataSetChanged(DataSet: TDataSet);
begin
  DropIndex;
end;

procedure TQorTransMan.DropIndex;
begin
  FreeAndNil(FByIdent);
  FreeAndNil(FByEventIdent);
  FreeAndNil(FByLabel);
end;

{ One pass over the rows; the first row of a key wins, as Locate finds the
  first. A dictionary without the four fields is not indexed: its look-ups
  go to Locate and fail as the Part says. }
procedure TQorTransMan.BuildIndex;
var
  FKind, FType, FIdent, FLabel: TField;
  K, T, I, L, Key: string;
  Size: Integer;
begin
  DropIndex;
  if not FDataSet.Active then
    Exit;
  FKind := FDataSet.FindField('TranTypeKind');
  FType := FDataSet.FindField('TypeName');
  FIdent := FDataSet.FindField('Indent');
  FLabel := FDataSet.FindField('CnLabel');
  if (FKind = nil) or (FType = nil) or (FIdent = nil) or (FLabel = nil) then
    Exit;
  Size := 1024;
  while Size < FDataSet.RecordCount * 2 do
    Size := Size * 2;
  FByIdent := TFPStringHashTable.CreateWith(Size, @RSHash);
  FByEventIdent := TFPStringHashTable.CreateWith(Size, @RSHash);
  FByLabel := TFPStringHashTable.CreateWith(Size, @RSHash);
  FDataSet.DisableControls;
  try
    FDataSet.First;
    while not FDataSet.EOF do
    begin
      K := FKind.AsString;
      T := FType.AsString;
      I := FIdent.AsString;
      L := FLabel.AsString;
      Key := IndexKey(K, T, I);
      if FByIdent.Find(Key) = nil then
        FByIdent.Add(Key, L);
      Key := IndexKey(K, '', I);
      if FByEventIdent.Find(Key) = nil then
        FByEventIdent.Add(Key, L);
      Key := IndexKey(K, T, L);
      if FByLabel.Find(Key) = nil then
        FByLabel.Add(Key, I);
      FDataSet.Next;
    end;
    FDataSet.First;
  finally
    FDataSet.EnableControls;
  end;
end;

function FindIn(Table: TFPStringHashTable; const Key: string; out Value: string): Boolean;
var
  Node: THTCustomNode;
begin
  Node := Table.Find(Key);
  Result := Node <> nil;
  if Result then
    Value := THTStringNode(Node).Data;
end;

function TQorTransMan.IdentToLabel(Kind: TTransTypeKind; TypeKind: TTypeKind;
  const TypeName, Ident: string; Component: TComponent): string;
var
  Item: TQorTransCacheItem;
  KindStr, Found: string;
  Hit: Boolean;
begin
  Result := Ident;
  if not OpenDb then
    Exit;
  Item := FCache.LocateIdent(Kind, TypeName, Ident, True);
  if Item <> nil then
    Exit(Item.CnLabel);
  KindStr := TransTypeKindStrs[Kind];
  try
    if FByIdent <> nil then
    begin
      if Kind = ttkEvent then
        Hit := FindIn(FByEventIdent, IndexKey(KindStr, '', Ident), Found)
      else
        Hit := FindIn(FByIdent, IndexKey(KindStr, TypeName, Ident), Found);
    end
    else
    begin
      if Kind = ttkEvent then
        Hit := FDataSet.Locate('TranTypeKind;Indent',
          VarArrayOf([KindStr, Ident]), [loCaseInsensitive])
      else
        Hit := FDataSet.Locate('TranTypeKind;TypeName;Indent',
          VarArrayOf([KindStr, TypeName, Ident]), [loCaseInsensitive]);
      if Hit then
        Found := FDataSet.FieldByName('CnLabel').AsString;
    end;
    if Hit then
    begin
      Result := Found;
      if Kind = ttkEvent then
        FCache.AddItem(KindStr, '', Ident, Result)
      else
        FCache.AddItem(KindStr, TypeName, Ident, Result);
    end;
  except
    Result := Ident;
  end;
end;

function TQorTransMan.LabelToIdent(Kind: TTransTypeKind; TypeKind: TTypeKind;
  const TypeName, CnLabel: string; Component: TComponent): string;
var
  Item: TQorTransCacheItem;
  KindStr, Found: string;
  Hit: Boolean;
begin
  Result := CnLabel;
  if not OpenDb then
    Exit;
  Item := FCache.LocateLabel(Kind, TypeName, CnLabel, True);
  if Item <> nil then
    Exit(Item.Indent);
  KindStr := TransTypeKindStrs[Kind];
  // No exception is caught in this direction (Part 4.2).
  if FByIdent <> nil then
  begin
    // Events match the label against the identifier column and answer
    // with the label column, as the identifier direction does.
    if Kind = ttkEvent then
      Hit := FindIn(FByEventIdent, IndexKey(KindStr, '', CnLabel), Found)
    else
      Hit := FindIn(FByLabel, IndexKey(KindStr, TypeName, CnLabel), Found);
  end
  else if Kind = ttkEvent then
  begin
    Hit := FDataSet.Locate('TranTypeKind;Indent', VarArrayOf([KindStr, CnLabel]),
      [loCaseInsensitive]);
    if Hit then
      Found := FDataSet.FieldByName('CnLabel').AsString;
  end
  else
  begin
    Hit := FDataSet.Locate('TranTypeKind;TypeName;CnLabel',
      VarArrayOf([KindStr, TypeName, CnLabel]), [loCaseInsensitive]);
    if Hit then
      Found := FDataSet.FieldByName('Indent').AsString;
  end;
  if Hit then
  begin
    Result := Found;
    if Kind = ttkEvent then
      FCache.AddItem(KindStr, '', Result, CnLabel)
    else
      FCache.AddItem(KindStr, TypeName, Result, CnLabel);
  end;
end;

function TQorTransMan.IdentToLabel(Kind: TTransTypeKind; const TypeName, Ident: string;
  Component: TComponent): string;
begin
  Result := IdentToLabel(Kind, tkUnknown, TypeName, Ident, Component);
end;

function TQorTransMan.LabelToIdent(Kind: TTransTypeKind; const TypeName, CnLabel: string;
  Component: TComponent): string;
begin
  Result := LabelToIdent(Kind, tkUnknown, TypeName, CnLabel, Component);
end;

function PassedKind(PTI: PTypeInfo; PassTypeKind: Boolean): TTypeKind; inline;
begin
  if PassTypeKind then
    Result := PTI^.Kind
  else
    Result := tkUnknown;
end;

function TQorTransMan.IdentToLabel(Kind: TTransTypeKind; PTI: PTypeInfo; const Ident: string;
  PassTypeKind: Boolean; Component: TComponent): string;
var
  IsComp: Boolean;
begin
  if PTI = nil then
    Exit(Ident);
  if PTI^.Kind = tkMethod then
    Exit(IdentToLabel(ttkEvent, PassedKind(PTI, PassTypeKind), '', Ident, Component));
  if (PTI^.Kind = tkSet) and (Kind <> ttkPropName) then
    Exit(TransComplexExpression(ttkSet, PTI, Ident, True));
  IsComp := IsComponentPTI(PTI);
  if (Kind <> ttkClassValue) and (PTI^.Kind = tkClass) and not IsComp and
    (Kind <> ttkPropName) then
    Exit(TransComplexExpression(ttkClass, PTI, Ident, True));
  if IsComp and (Kind <> ttkPropName) then
    Exit(NsNameToNsCnName(Ident, Component));
  Result := IdentToLabel(Kind, PassedKind(PTI, PassTypeKind), PTI^.Name, Ident, Component);
end;

function TQorTransMan.LabelToIdent(Kind: TTransTypeKind; PTI: PTypeInfo; const CnLabel: string;
  PassTypeKind: Boolean; Component: TComponent): string;
begin
  if PTI = nil then
    Exit(CnLabel);
  if PTI^.Kind = tkMethod then
    Exit(LabelToIdent(ttkEvent, PassedKind(PTI, PassTypeKind), '', CnLabel, Component));
  if PTI^.Kind = tkSet then
    Exit(TransComplexExpression(ttkSet, PTI, CnLabel, False));
  if not IsComponentPTI(PTI) or (Kind = ttkPropName) then
    Exit(LabelToIdent(Kind, PassedKind(PTI, PassTypeKind), PTI^.Name, CnLabel, Component));
  Result := NsCnNameToNsName(CnLabel, Component);
end;

const
  RoleKinds: array[TTransRole] of TTransTypeKind = (ttkPropName, ttkEnum);

function TQorTransMan.IdentToLabel(Role: TTransRole; PTI: PTypeInfo; const Ident: string;
  Component: TComponent): string;
begin
  Result := IdentToLabel(RoleKinds[Role], PTI, Ident, False, Component);
end;

function TQorTransMan.LabelToIdent(Role: TTransRole; PTI: PTypeInfo; const CnLabel: string;
  Component: TComponent): string;
begin
  Result := LabelToIdent(RoleKinds[Role], PTI, CnLabel, False, Component);
end;

function TQorTransMan.ClassToTransedName(AClass: TClass): string;
begin
  if AClass = nil then
    Exit('');
  Result := IdentToLabel(ttkClassValue, tkUnknown, AClass.ClassName, AClass.ClassName, nil);
end;

{ The word walk of Part 4.2: the first character is taken as an opening
  bracket, and the text after the last separator is never translated. }
procedure WalkWords(PTI: PTypeInfo; var S: string; Proc: TIdentsWalkThroughProc);
var
  P, Last: Integer;
  Word, Repl: string;
begin
  Last := 1;
  P := 1;
  while P <= Length(S) do
  begin
    if not (S[P] in SeperatorCharset) then
    begin
      Inc(P);
      Continue;
    end;
    if P <= Last + 1 then
    begin
      Last := P;
      Inc(P);
      Continue;
    end;
    Word := Copy(S, Last + 1, P - Last - 1);
    Repl := Word;
    Proc(PTI, Word, Repl);
    System.Delete(S, Last + 1, Length(Word));
    System.Insert(Repl, S, Last + 1);
    P := Last + 1 + Length(Repl);
    Last := Last + Length(Repl);
  end;
end;

function TQorTransMan.TransComplexExpression(Kind: TTransTypeKind; PTI: PTypeInfo;
  const Expr: string; ToLabel: Boolean): string;
begin
  Result := Expr;
  case Kind of
    ttkSet:
      if ToLabel then
        WalkWords(GetTypeData(PTI)^.CompType, Result, @ExSetIdentToLabel)
      else
        WalkWords(GetTypeData(PTI)^.CompType, Result, @ExSetLabelToIdent);
    ttkClass:
      if ToLabel then
        WalkWords(PTI, Result, @ExClassIdentToLabel)
      else
        WalkWords(PTI, Result, @ExClassLabelToIdent);
  end;
end;

procedure TQorTransMan.ExSetIdentToLabel(APTI: PTypeInfo; const Src: string; var Dest: string);
begin
  Dest := IdentToLabel(ttkEnum, APTI, Src, False, nil);
end;

procedure TQorTransMan.ExSetLabelToIdent(APTI: PTypeInfo; const Src: string; var Dest: string);
begin
  Dest := LabelToIdent(ttkEnum, APTI, Src, False, nil);
end;

procedure TQorTransMan.ExClassIdentToLabel(APTI: PTypeInfo; const Src: string; var Dest: string);
begin
  Dest := IdentToLabel(ttkClassValue, APTI, Src, False, nil);
end;

procedure TQorTransMan.ExClassLabelToIdent(APTI: PTypeInfo; const Src: string; var Dest: string);
begin
  Dest := LabelToIdent(ttkClassValue, APTI, Src, False, nil);
end;

function TQorTransMan.GenerateIdentToLabelFilterStr(Kind: TTransTypeKind;
  const TypeName, Ident: string): string;
begin
  Result := Format('(TranTypeKind=''%s'') and (TypeName=''%s'') and (Indent=''%s'')',
    [TransTypeKindStrs[Kind], TypeName, Ident]);
end;

function TQorTransMan.GenerateLabelToIdentFilterStr(Kind: TTransTypeKind;
  const TypeName, CnLabel: string): string;
begin
  Result := Format('(TranTypeKind=''%s'') and (TypeName=''%s'') and (CnLabel=''%s'')',
    [TransTypeKindStrs[Kind], TypeName, CnLabel]);
end;

{************ Free functions }

function QorTransCache: TQorTransCache;
begin
  if GCache = nil then
    GCache := TQorTransCache.Create;
  Result := GCache;
end;

function QorTransMan: TQorTransMan;
begin
  if GMan = nil then
    GMan := TQorTransMan.Create('');
  Result := GMan;
end;

function ClassToTransedName(AClass: TClass): string;
begin
  Result := QorTransMan.ClassToTransedName(AClass);
end;

function GetCompTransedName(Comp, Owner: TComponent): string;
begin
  if Comp = nil then
    Result := ''
  else
    Result := Comp.Name;
end;

initialization
  IdentCharset := VhoSysUtils.IdentCharset;
  SeperatorCharset := VhoSysUtils.SeperatorCharset;

finalization
  FreeAndNil(GMan);
  FreeAndNil(GCache);
end.
