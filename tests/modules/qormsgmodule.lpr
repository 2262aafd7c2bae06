{ QorDesign tests — a second module that links unit QorDesigner on its own.
  The test of Part 1.1's edge case "loading the package twice in one process"
  loads this library into the test program and compares the message numbers
  its copy of the unit registered with the program's. }
library qormsgmodule;

{$mode objfpc}{$H+}

uses
  // ours
  QorDesigner;

{ The number this module's copy of QorDesigner holds for message Index
  (0..11, the order of QorDesignMessageNames). }
function QorModuleMessage(Index: Integer): Cardinal; cdecl;
begin
  case Index of
    0: Result := QORM_SizerMoved;
    1: Result := QORM_SizerMoveEnd;
    2: Result := QORM_SizerMoveStart;
    3: Result := QORM_ControlSelected;
    4: Result := QORM_ControlSelectedAtPos;
    5: Result := QORN_SelCtrlChanged;
    6: Result := QORN_CtrlMoved;
    7: Result := QORN_SelCtrlMoved;
    8: Result := QORN_StartInlineEdit;
    9: Result := QORN_EndInlineEdit;
    10: Result := QORN_DynCompCreated;
    11: Result := QORN_DelSelCtrls;
  else
    Result := 0;
  end;
end;

exports
  QorModuleMessage;

end.
