{ QorDesign — translation manager and dictionary.

  Part 4.2. For now this unit holds only the two free functions that the
  naming utilities (Part 3.2) call, as pass-throughs: with no manager and no
  dictionary every class is shown under its own name, exactly what Part 4.2
  gives when the dictionary has no entry. The translation issue puts the
  manager behind them here; their callers stay as they are.

  Sections:
    - Enumerations
    - Free functions }
unit QorTransUtils;

{$mode objfpc}{$H+}

interface

uses
  // RTL / FCL
  Classes, SysUtils;

{************ Enumerations }

type
  { The inspector's view of a text: a property's name or its value. }
  TTransRole = (trPropName, trPropValue);

{************ Free functions }

{ The display label of a class (Part 4.2: kind "CLASSVALUE", the class name
  as type name and identifier). }
function ClassToTransedName(AClass: TClass): string;

{ The display name of a component: its Name, unchanged (Part 4.2). }
function GetCompTransedName(Comp, Owner: TComponent): string;

implementation

function ClassToTransedName(AClass: TClass): string;
begin
  if AClass = nil then
    Result := ''
  else
    Result := AClass.ClassName;
end;

function GetCompTransedName(Comp, Owner: TComponent): string;
begin
  if Comp = nil then
    Result := ''
  else
    Result := Comp.Name;
end;

end.
