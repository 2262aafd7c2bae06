{ QorDesign — registration with the Lazarus IDE.

  Part 6.3. The design-time package QorDesignDsgn holds only this unit. The
  palette page "QOR-DesignSys" and the action category "QOR Design Actions"
  receive the library's components and actions as the issues that build them
  land; until then Register has nothing to register. }
unit VhoDsnSysReg;

{$mode objfpc}{$H+}

interface

uses
  // RTL / FCL
  Classes;

const
  QorPalettePage = 'QOR-DesignSys';
  QorActionCategory = 'QOR Design Actions';

procedure Register;

implementation

procedure Register;
begin
  // The components and actions register here once they exist (Part 6.3).
end;

end.
