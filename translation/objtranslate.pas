{ QorDesign — translation entry points.

  Part 4.3: the fixed hook functions through which the object inspector's
  value formatting passes every identifier it shows and every text it stores
  when no translation manager is attached. They are pass-throughs: the
  dictionary translation of Part 4.2 is attached through the inspector's
  OnTranslateIdent / OnTranslateToIdent events instead.

  Sections:
    - Identifier to label
    - Label to identifier }
unit ObjTranslate;

{$mode objfpc}{$H+}

interface

uses
  // RTL / FCL
  TypInfo;

{************ Identifier to label }

function TranslatePropertyName(PTI: PTypeInfo; Name: string): string;
function TranslateEnumValue(PTI: PTypeInfo; Name: string): string;
function TranslateClassName(PTI: PTypeInfo; Name: string): string;
function TranslateObjectName(PTI: PTypeInfo; Name: string): string;

{************ Label to identifier }

function TranslateToPropertyName(PTI: PTypeInfo; Name: string): string;
function TranslateToEnumValue(PTI: PTypeInfo; Name: string): string;
function TranslateToClassName(PTI: PTypeInfo; Name: string): string;
function TranslateToObjectName(PTI: PTypeInfo; Name: string): string;

implementation

{ Each returns its text unchanged; PTI is accepted and not used (Part 4.3). }

function TranslatePropertyName(PTI: PTypeInfo; Name: string): string;
begin
  Result := Name;
end;

function TranslateEnumValue(PTI: PTypeInfo; Name: string): string;
begin
  Result := Name;
end;

function TranslateClassName(PTI: PTypeInfo; Name: string): string;
begin
  Result := Name;
end;

function TranslateObjectName(PTI: PTypeInfo; Name: string): string;
begin
  Result := Name;
end;

function TranslateToPropertyName(PTI: PTypeInfo; Name: string): string;
begin
  Result := Name;
end;

function TranslateToEnumValue(PTI: PTypeInfo; Name: string): string;
begin
  Result := Name;
end;

function TranslateToClassName(PTI: PTypeInfo; Name: string): string;
begin
  Result := Name;
end;

function TranslateToObjectName(PTI: PTypeInfo; Name: string): string;
begin
  Result := Name;
end;

end.
