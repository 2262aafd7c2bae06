{ QorDesign tests — Part 3.1, run-time type information. }
unit TestVhoRTTI;

{$mode objfpc}{$H+}

interface

uses
  // RTL / FCL
  Classes, SysUtils, TypInfo, Contnrs, fpcunit, testregistry,
  // LCL
  Graphics, Controls, StdCtrls, ExtCtrls,
  // ours
  VhoRTTI;

type
  {$M+}
  TNoPropsThing = class(TPersistent)
  end;

  TIntValueThing = class(TPersistent)
  private
    FValue: Integer;
  published
    property Value: Integer read FValue write FValue;
  end;

  TStrValueThing = class(TPersistent)
  private
    FValue: string;
    FOther: Integer;
  published
    property Value: string read FValue write FValue;
    property Other: Integer read FOther write FOther;
  end;

  TMixedCaseThing = class(TPersistent)
  private
    FA, FB, FC, FD: Integer;
  published
    property zeta: Integer read FA write FA;
    property Alpha: Integer read FB write FB;
    property beta: Integer read FC write FC;
    property Gamma: Integer read FD write FD;
  end;
  {$M-}

  TTestThreeLetters = (tlA, tlB, tlC, tlD, tlE);
  TTestSubRange = tlB..tlD;

  { TTestVhoRTTI }

  TTestVhoRTTI = class(TTestCase)
  published
    // Edge cases worth testing
    procedure TestClassWithoutPublishedPropertiesGivesEmptyListAndNoPropList;
    procedure TestGetParentClassNamesOfRootClassIsEmpty;
    procedure TestIsEnumExTypeTrueForColorAndCursorFalseForSet;
    procedure TestListEnumValuesExOnBooleanGivesFalseTrue;
    procedure TestPropInfoInCompsWithDifferentKindGivesFalse;
    procedure TestClassSizeSameForEveryDescribedClass;
    // Other rules of the Part
    procedure TestTypeKindNameUsesFPCNames;
    procedure TestClassInformationDescribesClass;
    procedure TestClassInformationPropsSortedByNameIgnoringCase;
    procedure TestClassInformationRepointRebuilds;
    procedure TestClassInformationNilPTIKeepsDerivedData;
    procedure TestClassInformationNonClassHasNoProps;
    procedure TestEnumInformationListsNamesAndRange;
    procedure TestEnumInformationSubRangeListsItsValues;
    procedure TestColorAndCursorNamesGoToEnumNamesNotStrings;
    procedure TestEnumNamesAfterUpdateForColor;
    procedure TestIsEnumExTypeForEnumBooleanAndInteger;
    procedure TestSetObjStrPropMissingPropertyGivesFalse;
    procedure TestSetObjStrPropSetsValue;
    procedure TestIsComponentPTI;
    procedure TestGetParentClassNamesNearestFirstRootLast;
    procedure TestGetClassPropertyNamesAlphabetical;
    procedure TestPropInfoInCompsAllHaveItOrEmpty;
    procedure TestListEnumValuesOnIntegerTypeIsEmpty;
  end;

implementation

procedure TTestVhoRTTI.TestClassWithoutPublishedPropertiesGivesEmptyListAndNoPropList;
var
  L: TStringList;
  CI: TClassInformation;
begin
  L := TStringList.Create;
  CI := TClassInformation.Create;
  try
    L.Add('stale');
    GetClassPropertyNames(TypeInfo(TNoPropsThing), L);
    AssertEquals('no property names', 0, L.Count);
    CI.PTI := TypeInfo(TNoPropsThing);
    AssertEquals('PropCount', 0, CI.PropCount);
    AssertTrue('no PropList', CI.PropList = nil);
  finally
    CI.Free;
    L.Free;
  end;
end;

procedure TTestVhoRTTI.TestGetParentClassNamesOfRootClassIsEmpty;
var
  L: TStringList;
begin
  L := TStringList.Create;
  try
    L.Add('stale');
    GetParentClassNames(GetTypeData(TypeInfo(TObject)), L);
    AssertEquals(0, L.Count);
  finally
    L.Free;
  end;
end;

procedure TTestVhoRTTI.TestIsEnumExTypeTrueForColorAndCursorFalseForSet;
begin
  AssertTrue('TColor is an integer type', PTypeInfo(TypeInfo(TColor))^.Kind = tkInteger);
  AssertTrue('TColor', TEnumInformation.IsEnumExType(TypeInfo(TColor)));
  AssertTrue('TCursor is an integer type', PTypeInfo(TypeInfo(TCursor))^.Kind = tkInteger);
  AssertTrue('TCursor', TEnumInformation.IsEnumExType(TypeInfo(TCursor)));
  AssertFalse('a set type', TEnumInformation.IsEnumExType(TypeInfo(TFontStyles)));
  AssertFalse('nil', TEnumInformation.IsEnumExType(nil));
end;

procedure TTestVhoRTTI.TestListEnumValuesExOnBooleanGivesFalseTrue;
var
  EI: TEnumInformation;
  L: TStringList;
begin
  EI := TEnumInformation.Create;
  L := TStringList.Create;
  try
    L.Add('stale');
    EI.ListEnumValuesEx(TypeInfo(Boolean), L);
    AssertEquals('count', 2, L.Count);
    AssertEquals('first', 'False', L[0]);
    AssertEquals('second', 'True', L[1]);
  finally
    L.Free;
    EI.Free;
  end;
end;

procedure TTestVhoRTTI.TestPropInfoInCompsWithDifferentKindGivesFalse;
var
  List: TObjectList;
begin
  List := TObjectList.Create(True);
  try
    List.Add(TStrValueThing.Create);
    AssertFalse(PropInfoInComps(GetPropInfo(TIntValueThing, 'Value'), List));
  finally
    List.Free;
  end;
end;

procedure TTestVhoRTTI.TestClassSizeSameForEveryDescribedClass;
var
  CI: TClassInformation;
  First: Integer;
begin
  CI := TClassInformation.Create;
  try
    CI.PTI := TypeInfo(TButton);
    First := CI.ClassSize;
    AssertEquals('the information object''s own size', TClassInformation.InstanceSize, First);
    AssertTrue('not the described class''s size', First <> TButton.InstanceSize);
    CI.PTI := TypeInfo(TNoPropsThing);
    AssertEquals(First, CI.ClassSize);
    CI.PTI := TypeInfo(TPanel);
    AssertEquals(First, CI.ClassSize);
  finally
    CI.Free;
  end;
end;

procedure TTestVhoRTTI.TestTypeKindNameUsesFPCNames;
var
  RI: TRTTIInformation;
begin
  RI := TRTTIInformation.Create;
  try
    AssertEquals('no type', 'tkUnknown', RI.TypeKindName);
    AssertTrue('no type data', RI.PTD = nil);
    RI.PTI := TypeInfo(Integer);
    AssertEquals('tkInteger', RI.TypeKindName);
    AssertTrue('type data', RI.PTD <> nil);
    RI.PTI := TypeInfo(string);
    AssertEquals('long string', 'tkAString', RI.TypeKindName);
    RI.PTI := TypeInfo(Boolean);
    AssertEquals('Boolean has its own kind in FPC', 'tkBool', RI.TypeKindName);
    AssertEquals('Boolean', RI.TypeName);
    RI.PTI := TypeInfo(TAlign);
    AssertEquals('tkEnumeration', RI.TypeKindName);
    AssertTrue(RI.TypeKind = tkEnumeration);
    AssertEquals('TAlign', RI.TypeName);
  finally
    RI.Free;
  end;
end;

procedure TTestVhoRTTI.TestClassInformationDescribesClass;
var
  CI: TClassInformation;
begin
  CI := TClassInformation.Create;
  try
    CI.PTI := TypeInfo(TButton);
    AssertEquals('class name', 'TButton', CI.ClassNameStr);
    AssertTrue('class reference', CI.ClassTypeRef = TButton);
    AssertEquals('unit', 'StdCtrls', CI.DefineUnit);
    AssertTrue('parent class', CI.ParentClass = TCustomButton);
    AssertEquals('property count', GetTypeData(TypeInfo(TButton))^.PropCount, CI.PropCount);
    AssertEquals('first ancestor', 'TCustomButton', CI.ParentClassNames[0]);
    AssertEquals('root last', 'TObject', CI.ParentClassNames[CI.ParentClassNames.Count - 1]);
  finally
    CI.Free;
  end;
end;

procedure TTestVhoRTTI.TestClassInformationPropsSortedByNameIgnoringCase;
var
  CI: TClassInformation;
  I: Integer;
begin
  CI := TClassInformation.Create;
  try
    CI.PTI := TypeInfo(TMixedCaseThing);
    AssertEquals(4, CI.PropCount);
    AssertEquals('Alpha', CI.PropNameStr[0]);
    AssertEquals('beta', CI.PropNameStr[1]);
    AssertEquals('Gamma', CI.PropNameStr[2]);
    AssertEquals('zeta', CI.PropNameStr[3]);
    AssertEquals('property type name', 'LongInt', CI.PropTypeStr[0]);
    CI.PTI := TypeInfo(TButton);
    for I := 1 to CI.PropCount - 1 do
      AssertTrue(Format('%s before %s', [CI.PropNameStr[I - 1], CI.PropNameStr[I]]),
        CompareText(CI.PropNameStr[I - 1], CI.PropNameStr[I]) < 0);
  finally
    CI.Free;
  end;
end;

procedure TTestVhoRTTI.TestClassInformationRepointRebuilds;
var
  CI: TClassInformation;
begin
  CI := TClassInformation.Create;
  try
    CI.PTI := TypeInfo(TButton);
    AssertTrue('TButton has properties', CI.PropCount > 0);
    CI.PTI := TypeInfo(TStrValueThing);
    AssertEquals(2, CI.PropCount);
    AssertEquals('Other', CI.PropNameStr[0]);
    AssertEquals('Value', CI.PropNameStr[1]);
    AssertEquals('TPersistent', CI.ParentClassNames[0]);
    AssertEquals(2, CI.ParentClassNames.Count);
  finally
    CI.Free;
  end;
end;

procedure TTestVhoRTTI.TestClassInformationNilPTIKeepsDerivedData;
var
  CI: TClassInformation;
begin
  CI := TClassInformation.Create;
  try
    CI.PTI := TypeInfo(TStrValueThing);
    CI.PTI := nil;
    AssertTrue('PTD is nil', CI.PTD = nil);
    AssertEquals('PropCount unchanged', 2, CI.PropCount);
    AssertEquals('parent names unchanged', 2, CI.ParentClassNames.Count);
  finally
    CI.Free;
  end;
end;

procedure TTestVhoRTTI.TestClassInformationNonClassHasNoProps;
var
  CI: TClassInformation;
begin
  CI := TClassInformation.Create;
  try
    CI.PTI := TypeInfo(TStrValueThing);
    CI.PTI := TypeInfo(Integer);
    AssertEquals(0, CI.PropCount);
    AssertTrue(CI.PropList = nil);
    AssertTrue(CI.ClassTypeRef = nil);
    AssertEquals('', CI.ClassNameStr);
  finally
    CI.Free;
  end;
end;

procedure TTestVhoRTTI.TestEnumInformationListsNamesAndRange;
var
  EI: TEnumInformation;
begin
  EI := TEnumInformation.Create;
  try
    EI.PTI := TypeInfo(TTestThreeLetters);
    AssertEquals(5, EI.EnumNames.Count);
    AssertEquals('tlA', EI.EnumNames[0]);
    AssertEquals('tlE', EI.EnumNames[4]);
    AssertEquals(0, EI.MinValue);
    AssertEquals(4, EI.MaxValue);
    AssertTrue('base type', EI.BasedTypeInfo = PTypeInfo(TypeInfo(TTestThreeLetters)));
  finally
    EI.Free;
  end;
end;

procedure TTestVhoRTTI.TestEnumInformationSubRangeListsItsValues;
var
  L: TStringList;
  EI: TEnumInformation;
begin
  L := TStringList.Create;
  EI := TEnumInformation.Create;
  try
    ListEnumValues(TypeInfo(TTestSubRange), L);
    AssertEquals('tlB'#10'tlC'#10'tlD', StringReplace(Trim(L.Text), LineEnding, #10, [rfReplaceAll]));
    EI.PTI := TypeInfo(TTestSubRange);
    AssertEquals('min', 1, EI.MinValue);
    AssertEquals('max', 3, EI.MaxValue);
    AssertTrue('base type of a subrange', EI.BasedTypeInfo = PTypeInfo(TypeInfo(TTestThreeLetters)));
  finally
    EI.Free;
    L.Free;
  end;
end;

procedure TTestVhoRTTI.TestColorAndCursorNamesGoToEnumNamesNotStrings;
var
  EI: TEnumInformation;
  L: TStringList;
begin
  EI := TEnumInformation.Create;
  L := TStringList.Create;
  try
    EI.ListEnumValuesEx(TypeInfo(TColor), L);
    AssertEquals('nothing in the given list', 0, L.Count);
    AssertTrue('clBlack among the names', EI.EnumNames.IndexOf('clBlack') >= 0);
    EI.EnumNames.Clear;
    EI.ListEnumValuesEx(TypeInfo(TCursor), L);
    AssertEquals('nothing in the given list', 0, L.Count);
    AssertTrue('crDefault among the names', EI.EnumNames.IndexOf('crDefault') >= 0);
  finally
    L.Free;
    EI.Free;
  end;
end;

procedure TTestVhoRTTI.TestEnumNamesAfterUpdateForColor;
var
  EI: TEnumInformation;
begin
  EI := TEnumInformation.Create;
  try
    EI.PTI := TypeInfo(TColor);
    AssertTrue('clRed', EI.EnumNames.IndexOf('clRed') >= 0);
    EI.PTI := TypeInfo(Boolean);
    AssertEquals('re-pointed: the list is rebuilt', 2, EI.EnumNames.Count);
  finally
    EI.Free;
  end;
end;

procedure TTestVhoRTTI.TestIsEnumExTypeForEnumBooleanAndInteger;
begin
  AssertTrue('enumeration', TEnumInformation.IsEnumExType(TypeInfo(TAlign)));
  AssertTrue('Boolean', TEnumInformation.IsEnumExType(TypeInfo(Boolean)));
  AssertFalse('Integer', TEnumInformation.IsEnumExType(TypeInfo(Integer)));
  AssertFalse('string', TEnumInformation.IsEnumExType(TypeInfo(string)));
end;

procedure TTestVhoRTTI.TestSetObjStrPropMissingPropertyGivesFalse;
var
  T: TStrValueThing;
begin
  T := TStrValueThing.Create;
  try
    AssertFalse(SetObjStrProp(T, 'NoSuchProperty', 'x'));
    AssertFalse('nil object', SetObjStrProp(nil, 'Value', 'x'));
    AssertEquals('', T.Value);
  finally
    T.Free;
  end;
end;

procedure TTestVhoRTTI.TestSetObjStrPropSetsValue;
var
  T: TStrValueThing;
begin
  T := TStrValueThing.Create;
  try
    AssertTrue(SetObjStrProp(T, 'Value', 'hello'));
    AssertEquals('hello', T.Value);
  finally
    T.Free;
  end;
end;

procedure TTestVhoRTTI.TestIsComponentPTI;
begin
  AssertTrue('TButton', IsComponentPTI(TypeInfo(TButton)));
  AssertTrue('TComponent', IsComponentPTI(TypeInfo(TComponent)));
  AssertFalse('TFont', IsComponentPTI(TypeInfo(TFont)));
  AssertFalse('Integer', IsComponentPTI(TypeInfo(Integer)));
  AssertFalse('nil', IsComponentPTI(nil));
end;

procedure TTestVhoRTTI.TestGetParentClassNamesNearestFirstRootLast;
var
  L: TStringList;
begin
  L := TStringList.Create;
  try
    GetParentClassNames(GetTypeData(TypeInfo(TPanel)), L);
    AssertEquals('nearest', 'TCustomPanel', L[0]);
    AssertTrue('the class itself is not listed', L.IndexOf('TPanel') < 0);
    AssertTrue('TWinControl among them', L.IndexOf('TWinControl') > L.IndexOf('TCustomControl'));
    AssertEquals('root', 'TObject', L[L.Count - 1]);
  finally
    L.Free;
  end;
end;

procedure TTestVhoRTTI.TestGetClassPropertyNamesAlphabetical;
var
  L: TStringList;
begin
  L := TStringList.Create;
  try
    GetClassPropertyNames(TypeInfo(TMixedCaseThing), L);
    AssertEquals('Alpha'#10'beta'#10'Gamma'#10'zeta',
      StringReplace(Trim(L.Text), LineEnding, #10, [rfReplaceAll]));
  finally
    L.Free;
  end;
end;

procedure TTestVhoRTTI.TestPropInfoInCompsAllHaveItOrEmpty;
var
  List: TObjectList;
begin
  List := TObjectList.Create(True);
  try
    AssertTrue('empty list', PropInfoInComps(GetPropInfo(TIntValueThing, 'Value'), List));
    List.Add(TIntValueThing.Create);
    List.Add(TStrValueThing.Create);
    AssertFalse('TIntValueThing lacks Other', PropInfoInComps(GetPropInfo(TStrValueThing, 'Other'), List));
    List.Delete(0);
    AssertTrue('Other is there', PropInfoInComps(GetPropInfo(TStrValueThing, 'Other'), List));
    List.Add(TNoPropsThing.Create);
    AssertFalse('one object lacks it', PropInfoInComps(GetPropInfo(TStrValueThing, 'Other'), List));
  finally
    List.Free;
  end;
end;

procedure TTestVhoRTTI.TestListEnumValuesOnIntegerTypeIsEmpty;
var
  L: TStringList;
begin
  L := TStringList.Create;
  try
    L.Add('stale');
    ListEnumValues(TypeInfo(Integer), L);
    AssertEquals(0, L.Count);
  finally
    L.Free;
  end;
end;

initialization
  RegisterTest(TTestVhoRTTI);
end.
