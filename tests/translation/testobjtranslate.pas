{ QorDesign tests — Part 4.3, translation entry points. }
unit TestObjTranslate;

{$mode objfpc}{$H+}

interface

uses
  // RTL / FCL
  Classes, SysUtils, TypInfo, fpcunit, testregistry,
  // LCL
  Controls,
  // ours
  ObjTranslate;

type
  TTranslateFunc = function(PTI: PTypeInfo; Name: string): string;

  { TTestObjTranslate }

  TTestObjTranslate = class(TTestCase)
  private
    procedure CheckPassThrough(const FuncName: string; Func: TTranslateFunc);
  published
    // Edge case worth testing: each returns exactly its input, whatever PTI.
    procedure TestTranslatePropertyNameReturnsInput;
    procedure TestTranslateEnumValueReturnsInput;
    procedure TestTranslateClassNameReturnsInput;
    procedure TestTranslateObjectNameReturnsInput;
    procedure TestTranslateToPropertyNameReturnsInput;
    procedure TestTranslateToEnumValueReturnsInput;
    procedure TestTranslateToClassNameReturnsInput;
    procedure TestTranslateToObjectNameReturnsInput;
  end;

implementation

procedure TTestObjTranslate.CheckPassThrough(const FuncName: string; Func: TTranslateFunc);
const
  Texts: array[0..4] of string = ('', 'Caption', 'alClient', 'Button1', ' with blanks [a, b] ');
var
  PTIs: array[0..3] of PTypeInfo;
  I, J: Integer;
begin
  PTIs[0] := nil;
  PTIs[1] := TypeInfo(TAlign);
  PTIs[2] := TypeInfo(string);
  PTIs[3] := TypeInfo(TControl);
  for I := 0 to High(PTIs) do
    for J := 0 to High(Texts) do
      AssertEquals(Format('%s(%d, "%s")', [FuncName, I, Texts[J]]), Texts[J], Func(PTIs[I], Texts[J]));
end;

procedure TTestObjTranslate.TestTranslatePropertyNameReturnsInput;
begin
  CheckPassThrough('TranslatePropertyName', @TranslatePropertyName);
end;

procedure TTestObjTranslate.TestTranslateEnumValueReturnsInput;
begin
  CheckPassThrough('TranslateEnumValue', @TranslateEnumValue);
end;

procedure TTestObjTranslate.TestTranslateClassNameReturnsInput;
begin
  CheckPassThrough('TranslateClassName', @TranslateClassName);
end;

procedure TTestObjTranslate.TestTranslateObjectNameReturnsInput;
begin
  CheckPassThrough('TranslateObjectName', @TranslateObjectName);
end;

procedure TTestObjTranslate.TestTranslateToPropertyNameReturnsInput;
begin
  CheckPassThrough('TranslateToPropertyName', @TranslateToPropertyName);
end;

procedure TTestObjTranslate.TestTranslateToEnumValueReturnsInput;
begin
  CheckPassThrough('TranslateToEnumValue', @TranslateToEnumValue);
end;

procedure TTestObjTranslate.TestTranslateToClassNameReturnsInput;
begin
  CheckPassThrough('TranslateToClassName', @TranslateToClassName);
end;

procedure TTestObjTranslate.TestTranslateToObjectNameReturnsInput;
begin
  CheckPassThrough('TranslateToObjectName', @TranslateToObjectName);
end;

initialization
  RegisterTest(TTestObjTranslate);
end.
