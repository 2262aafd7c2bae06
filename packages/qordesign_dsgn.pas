{ This file was automatically created by Lazarus. Do not edit!
  This source is only used to compile and install the package.
 }

unit QorDesign_Dsgn;

{$warn 5023 off : no warning about unused units}
interface

uses
  VhoDsnSysReg, LazarusPackageIntf;

implementation

procedure Register;
begin
  RegisterUnit('VhoDsnSysReg', @VhoDsnSysReg.Register);
end;

initialization
  RegisterPackage('QorDesignDsgn', @Register);
end.
