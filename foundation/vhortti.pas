{ QorDesign — run-time type information wrappers.

  Part 3.1: three small information classes (TRTTIInformation,
  TClassInformation, TEnumInformation) and free functions over FPC's TypInfo,
  used by the object inspector, the translation manager and the naming
  utilities.

  Type kinds are FPC's (PLATFORM.md): TypeKindName gives FPC's own names from
  the type information of TTypeKind. LCL's TColor is an alias of
  TGraphicsColor, so its type information is named "TGraphicsColor"; the
  tests for "TColor" below therefore accept TColor's own type information as
  well as the name (docs/platform-notes.md).

  Sections:
    - Information classes
    - Free functions }
unit VhoRTTI;

{$mode objfpc}{$H+}

interface

uses
  // RTL / FCL
  Classes, SysUtils, Math, TypInfo, Contnrs,
  // LCL
  Graphics, Controls;

{************ Information classes }

type

  { TRTTIInformation
    Describes one type. Assigning PTI calls the virtual Update, which derived
    classes override to rebuild what they derive from the type; Update must
    accept nil (PTD becomes nil, derived data may stay as it is). }

  TRTTIInformation = class(TObject)
  private
    FPTD: PTypeData;
    FPTI: PTypeInfo;
    function GetTypeKind: TTypeKind;
    function GetTypeKindName: string;
    function GetTypeName: string;
    procedure SetPTI(AValue: PTypeInfo);
  public
    procedure Update; virtual;
    property PTI: PTypeInfo read FPTI write SetPTI;
    property PTD: PTypeData read FPTD;
    property TypeKind: TTypeKind read GetTypeKind;
    property TypeKindName: string read GetTypeKindName;
    property TypeName: string read GetTypeName;
  end;

  { TClassInformation
    A class type: its ancestors by name and its published properties sorted
    by name. A PTI of another kind describes a class without properties. }

  TClassInformation = class(TRTTIInformation)
  private
    FParentClassNames: TStringList;
    FPropCount: Integer;
    FPropList: PPropList;
    function GetClassNameStr: string;
    function GetClassTypeRef: TClass;
    function GetDefineUnit: string;
    function GetClassSize: Integer;
    function GetParentClass: TClass;
    function GetPropNameStr(Index: Integer): string;
    function GetPropTypeStr(Index: Integer): string;
    procedure FreePropList;
  public
    constructor Create;
    destructor Destroy; override;
    procedure Update; override;
    property ParentClassNames: TStringList read FParentClassNames;
    property PropCount: Integer read FPropCount;
    property PropList: PPropList read FPropList;
    property ClassNameStr: string read GetClassNameStr;
    property ClassTypeRef: TClass read GetClassTypeRef;
    property DefineUnit: string read GetDefineUnit;
    { The instance size of the information object's own class, the same for
      every described class (Part 3.1 keeps it so). }
    property ClassSize: Integer read GetClassSize;
    property ParentClass: TClass read GetParentClass;
    property PropNameStr[Index: Integer]: string read GetPropNameStr;
    property PropTypeStr[Index: Integer]: string read GetPropTypeStr;
  end;

  { TEnumInformation
    A type shown as a list of named values: an enumeration, Boolean, or the
    integer types TColor and TCursor with their named values. }

  TEnumInformation = class(TRTTIInformation)
  private
    FEnumNames: TStringList;
    function GetBasedTypeInfo: PTypeInfo;
    function GetMinValue: Integer;
    function GetMaxValue: Integer;
  public
    constructor Create;
    destructor Destroy; override;
    procedure Update; override;
    procedure AddToEnumNames(const S: string);
    procedure ListEnumValuesEx(APTI: PTypeInfo; Strings: TStrings);
    class function IsEnumExType(APTI: PTypeInfo): Boolean;
    property EnumNames: TStringList read FEnumNames;
    property BasedTypeInfo: PTypeInfo read GetBasedTypeInfo;
    property MinValue: Integer read GetMinValue;
    property MaxValue: Integer read GetMaxValue;
  end;

{************ Free functions }

function SetObjStrProp(Obj: TObject; const PropName, Value: string): Boolean;
function IsComponentPTI(PTI: PTypeInfo): Boolean;
procedure ListEnumValues(PTI: PTypeInfo; Strings: TStrings);
procedure GetParentClassNames(PTD: PTypeData; Strings: TStrings);
procedure GetClassPropertyNames(PTI: PTypeInfo; Strings: TStrings);
function PropInfoInComps(PropInfo: PPropInfo; Objects: TObjectList): Boolean;

{ Delphi's SortPropList, which FPC's TypInfo lacks: sorts the first PropCount
  entries by property name, case-insensitively (alphabetical, as the object
  inspector lists them), in O(n log n). }
procedure SortPropList(PropList: PPropList; PropCount: Integer);

{ True when PTI is the colour type (by name "TColor" or as LCL's TColor). }
function IsColorTypeInfo(PTI: PTypeInfo): Boolean;
{ True when PTI is the cursor type (by name "TCursor" or as LCL's TCursor). }
function IsCursorTypeInfo(PTI: PTypeInfo): Boolean;

implementation

const
  { Kinds whose type data holds an ordinal range that GetEnumName can name. }
  NamedOrdinalKinds = [tkEnumeration, tkBool];
  OrdinalKinds = [tkInteger, tkChar, tkEnumeration, tkBool, tkWChar, tkUChar];

function IsColorTypeInfo(PTI: PTypeInfo): Boolean;
begin
  // The length first: SameText would make two strings of every name.
  Result := (PTI <> nil) and ((PTI = TypeInfo(TColor)) or
    ((Length(PTI^.Name) = 6) and SameText(PTI^.Name, 'TColor')));
end;

function IsCursorTypeInfo(PTI: PTypeInfo): Boolean;
begin
  Result := (PTI <> nil) and ((PTI = TypeInfo(TCursor)) or
    ((Length(PTI^.Name) = 7) and SameText(PTI^.Name, 'TCursor')));
end;

function IsBooleanTypeInfo(PTI: PTypeInfo): Boolean;
begin
  Result := (PTI <> nil) and (Length(PTI^.Name) = 7) and SameText(PTI^.Name, 'Boolean');
end;

{ Sorted property lists, one per class, made once: type information never
  changes while the program runs, and the inspector points a class
  information at the same few classes for every row it builds. }

var
  SortedPropLists: TFPHashList = nil; // hex address of the PTI -> PPropList

function SortedPropListOf(PTI: PTypeInfo): PPropList;
var
  Key: ShortString;
  Count: Integer;
begin
  if SortedPropLists = nil then
    SortedPropLists := TFPHashList.Create;
  Key := HexStr(PTI);
  Result := PPropList(SortedPropLists.Find(Key));
  if Result <> nil then
    Exit;
  Count := GetTypeData(PTI)^.PropCount;
  GetMem(Result, Max(Count, 1) * SizeOf(PPropInfo));
  GetPropInfos(PTI, Result);
  SortPropList(Result, Count);
  SortedPropLists.Add(Key, Result);
end;

procedure FreeSortedPropLists;
var
  I: Integer;
begin
  if SortedPropLists = nil then
    Exit;
  for I := 0 to SortedPropLists.Count - 1 do
    FreeMem(SortedPropLists[I]);
  FreeAndNil(SortedPropLists);
end;

{ TRTTIInformation }

function TRTTIInformation.GetTypeKind: TTypeKind;
begin
  if FPTI = nil then
    Result := tkUnknown
  else
    Result := FPTI^.Kind;
end;

function TRTTIInformation.GetTypeKindName: string;
begin
  Result := GetEnumName(TypeInfo(TTypeKind), Ord(GetTypeKind));
end;

function TRTTIInformation.GetTypeName: string;
begin
  if FPTI = nil then
    Result := ''
  else
    Result := FPTI^.Name;
end;

procedure TRTTIInformation.SetPTI(AValue: PTypeInfo);
begin
  FPTI := AValue;
  Update;
end;

procedure TRTTIInformation.Update;
begin
  if FPTI = nil then
    FPTD := nil
  else
    FPTD := GetTypeData(FPTI);
end;

{ TClassInformation }

constructor TClassInformation.Create;
begin
  inherited Create;
  FParentClassNames := TStringList.Create;
end;

destructor TClassInformation.Destroy;
begin
  FreePropList;
  FParentClassNames.Free;
  inherited Destroy;
end;

procedure TClassInformation.FreePropList;
begin
  if FPropList <> nil then
    FreeMem(FPropList);
  FPropList := nil;
end;

procedure TClassInformation.Update;
begin
  inherited Update;
  if PTI = nil then
    Exit;
  FreePropList;
  if PTI^.Kind <> tkClass then
  begin
    // Not a class: nothing to list, and the type data has no class layout.
    FParentClassNames.Clear;
    FPropCount := 0;
    Exit;
  end;
  GetParentClassNames(PTD, FParentClassNames);
  FPropCount := PTD^.PropCount;
  if FPropCount > 0 then
  begin
    GetMem(FPropList, FPropCount * SizeOf(PPropInfo));
    Move(SortedPropListOf(PTI)^, FPropList^, FPropCount * SizeOf(PPropInfo));
  end;
end;

function TClassInformation.GetClassNameStr: string;
begin
  if ClassTypeRef = nil then
    Result := ''
  else
    Result := ClassTypeRef.ClassName;
end;

function TClassInformation.GetClassTypeRef: TClass;
begin
  if (PTD = nil) or (PTI^.Kind <> tkClass) then
    Result := nil
  else
    Result := PTD^.ClassType;
end;

function TClassInformation.GetDefineUnit: string;
begin
  if (PTD = nil) or (PTI^.Kind <> tkClass) then
    Result := ''
  else
    Result := PTD^.UnitName;
end;

function TClassInformation.GetClassSize: Integer;
begin
  Result := InstanceSize;
end;

function TClassInformation.GetParentClass: TClass;
begin
  if ClassTypeRef = nil then
    Result := nil
  else
    Result := ClassTypeRef.ClassParent;
end;

function TClassInformation.GetPropNameStr(Index: Integer): string;
begin
  Result := FPropList^[Index]^.Name;
end;

function TClassInformation.GetPropTypeStr(Index: Integer): string;
begin
  Result := FPropList^[Index]^.PropType^.Name;
end;

{ TEnumInformation }

constructor TEnumInformation.Create;
begin
  inherited Create;
  FEnumNames := TStringList.Create;
end;

destructor TEnumInformation.Destroy;
begin
  FEnumNames.Free;
  inherited Destroy;
end;

procedure TEnumInformation.Update;
begin
  inherited Update;
  ListEnumValuesEx(PTI, FEnumNames);
end;

procedure TEnumInformation.AddToEnumNames(const S: string);
begin
  FEnumNames.Add(S);
end;

procedure TEnumInformation.ListEnumValuesEx(APTI: PTypeInfo; Strings: TStrings);
begin
  Strings.Clear;
  if APTI = nil then
    Exit;
  // Part 3.1: colour and cursor names go to EnumNames, not to Strings.
  if IsColorTypeInfo(APTI) then
    GetColorValues(@AddToEnumNames)
  else if IsCursorTypeInfo(APTI) then
    GetCursorValues(@AddToEnumNames)
  else if IsBooleanTypeInfo(APTI) then
  begin
    Strings.Add('False');
    Strings.Add('True');
  end
  else
    ListEnumValues(APTI, Strings);
end;

class function TEnumInformation.IsEnumExType(APTI: PTypeInfo): Boolean;
begin
  if APTI = nil then
    Exit(False);
  Result := (APTI^.Kind = tkEnumeration) or IsColorTypeInfo(APTI) or
    IsCursorTypeInfo(APTI) or IsBooleanTypeInfo(APTI);
end;

function TEnumInformation.GetBasedTypeInfo: PTypeInfo;
begin
  if (PTD = nil) or (PTI^.Kind <> tkEnumeration) then
    Exit(nil);
  // FPC leaves BaseType nil for an enumeration that is its own base, where
  // Delphi points it at the type itself; callers get Delphi's answer.
  Result := PTD^.BaseType;
  if Result = nil then
    Result := PTI;
end;

function TEnumInformation.GetMinValue: Integer;
begin
  if (PTD = nil) or not (PTI^.Kind in OrdinalKinds) then
    Result := 0
  else
    Result := PTD^.MinValue;
end;

function TEnumInformation.GetMaxValue: Integer;
begin
  if (PTD = nil) or not (PTI^.Kind in OrdinalKinds) then
    Result := 0
  else
    Result := PTD^.MaxValue;
end;

{ Free functions }

procedure SortPropList(PropList: PPropList; PropCount: Integer);

  procedure QuickSort(L, R: Integer);
  var
    I, J: Integer;
    Pivot: ShortString;
    T: PPropInfo;
  begin
    repeat
      I := L;
      J := R;
      Pivot := PropList^[(L + R) shr 1]^.Name;
      repeat
        while CompareText(PropList^[I]^.Name, Pivot) < 0 do
          Inc(I);
        while CompareText(PropList^[J]^.Name, Pivot) > 0 do
          Dec(J);
        if I <= J then
        begin
          T := PropList^[I];
          PropList^[I] := PropList^[J];
          PropList^[J] := T;
          Inc(I);
          Dec(J);
        end;
      until I > J;
      if L < J then
        QuickSort(L, J);
      L := I;
    until I >= R;
  end;

begin
  if (PropList <> nil) and (PropCount > 1) then
    QuickSort(0, PropCount - 1);
end;

function SetObjStrProp(Obj: TObject; const PropName, Value: string): Boolean;
begin
  Result := (Obj <> nil) and (GetPropInfo(Obj, PropName) <> nil);
  if Result then
    SetStrProp(Obj, PropName, Value);
end;

function IsComponentPTI(PTI: PTypeInfo): Boolean;
begin
  Result := (PTI <> nil) and (PTI^.Kind = tkClass) and
    GetTypeData(PTI)^.ClassType.InheritsFrom(TComponent);
end;

procedure ListEnumValues(PTI: PTypeInfo; Strings: TStrings);
var
  PTD: PTypeData;
  V: Integer;
begin
  Strings.Clear;
  // Only kinds whose values have names; an integer range would be billions.
  if (PTI = nil) or not (PTI^.Kind in NamedOrdinalKinds) then
    Exit;
  PTD := GetTypeData(PTI);
  Strings.BeginUpdate;
  try
    for V := PTD^.MinValue to PTD^.MaxValue do
      Strings.Add(GetEnumName(PTI, V));
  finally
    Strings.EndUpdate;
  end;
end;

procedure GetParentClassNames(PTD: PTypeData; Strings: TStrings);
var
  C: TClass;
begin
  Strings.Clear;
  if (PTD = nil) or (PTD^.ClassType = nil) then
    Exit;
  C := PTD^.ClassType.ClassParent;
  while C <> nil do
  begin
    Strings.Add(C.ClassName);
    C := C.ClassParent;
  end;
end;

procedure GetClassPropertyNames(PTI: PTypeInfo; Strings: TStrings);
var
  Count, I: Integer;
  List: PPropList;
begin
  Strings.Clear;
  if (PTI = nil) or (PTI^.Kind <> tkClass) then
    Exit;
  Count := GetTypeData(PTI)^.PropCount;
  if Count = 0 then
    Exit;
  GetMem(List, Count * SizeOf(PPropInfo));
  try
    GetPropInfos(PTI, List);
    SortPropList(List, Count);
    for I := 0 to Count - 1 do
      Strings.Add(List^[I]^.Name);
  finally
    FreeMem(List);
  end;
end;

function PropInfoInComps(PropInfo: PPropInfo; Objects: TObjectList): Boolean;
var
  I: Integer;
  Obj: TObject;
begin
  Result := True;
  if Objects = nil then
    Exit;
  for I := 0 to Objects.Count - 1 do
  begin
    Obj := Objects[I];
    // A nil entry has no properties at all, so it lacks this one.
    if (Obj = nil) or (PropInfo = nil) or
      (GetPropInfo(Obj.ClassInfo, PropInfo^.Name, [PropInfo^.PropType^.Kind]) = nil) then
      Exit(False);
  end;
end;

finalization
  FreeSortedPropLists;
end.
