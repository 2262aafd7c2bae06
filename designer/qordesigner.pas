{ QorDesign — the design surface of the run-time form designer.

  Part 1.1 (design messages and shared definitions): the twelve registered
  design messages, the flag QorDesigning, the enumerations shared by the design
  surface and the arrange dialogs, the mouse-down result codes, PointInRect,
  ControlCanInlineEdit and the key-state-to-selection-mode rule.

  Later Parts of subsystem 1 (proxies, sizers, stage, manager, arrange) join
  this unit; each will live in an include file of its own.

  Sections:
    - Registered design messages
    - Shared enumerations and event types
    - Mouse-down result codes
    - Free functions }
unit QorDesigner;

{$mode objfpc}{$H+}

interface

uses
  // RTL / FCL
  Classes, SysUtils,
  // LCL
  LCLType, LMessages, Controls, StdCtrls;

{************ Registered design messages }

var
  { Process-wide numbers of the design messages (Part 1.1). Read them when a
    message is handled or posted; never cache them. }
  QORM_SizerMoved: Cardinal = 0;
  QORM_SizerMoveEnd: Cardinal = 0;
  QORM_SizerMoveStart: Cardinal = 0;
  QORM_ControlSelected: Cardinal = 0;
  QORM_ControlSelectedAtPos: Cardinal = 0;
  QORN_SelCtrlChanged: Cardinal = 0;
  QORN_CtrlMoved: Cardinal = 0;
  QORN_SelCtrlMoved: Cardinal = 0;
  QORN_StartInlineEdit: Cardinal = 0;
  QORN_EndInlineEdit: Cardinal = 0;
  QORN_DynCompCreated: Cardinal = 0;
  QORN_DelSelCtrls: Cardinal = 0;

  { Set by the host application while designing is in progress; the package
    itself neither sets nor reads it. }
  QorDesigning: Boolean = False;

const
  { The registered strings, in the order of the unit's initialisation. }
  QorDesignMessageNames: array[0..11] of string = (
    'QOR.SizerMovedMsg',
    'QOR.SizerMoveEndMsg',
    'QOR.SizerMoveStartMsg',
    'QOR.Design.ControlSelected',
    'QOR.Design.ControlSelectedAtPos',
    'QOR.Design.SelectControlChanged',
    'QOR.Design.ControlMoved',
    'QOR.Design.SelectControlMoved',
    'QOR.Design.StartInlineEdit',
    'QOR.Design.EndInlineEdit',
    'QOR.Design.DynamicComponentCreated',
    'QOR.Design.DelSelectControls');

  { First and last number QorRegisterWindowMessage hands out (the Win32 range
    of registered messages). }
  QorFirstRegisteredMessage = $C000;
  QorLastRegisteredMessage = $FFFF;

{ Replaces Win32's RegisterWindowMessageA (PLATFORM.md). The same name, compared
  case-insensitively as Win32 does, always gives the same number. The number is
  derived from the name itself, so two modules of one process (or two
  processes) that register the same name get the same number without sharing
  any table; only a hash collision between two different names moves the later
  one to the next free number of this module's table. }
function QorRegisterWindowMessage(const Name: string): Cardinal;

{ Registers the twelve design messages into their variables, in the order of
  Part 1.1. Called by the unit initialisation; calling it again changes
  nothing, because every name gives back its number. }
procedure RegisterQorDesignMessages;

{************ Shared enumerations and event types }

type
  TQorSizerMode = (smSingle, smMulti, smConceal, smNone);
  TQorStageSizerMode = (ssmNormal, ssmFixed, ssmFixedTopLeft);
  TControlSelectMode = (csmSelect, csmAdd, csmDel, csmToggle, csmClear);
  TFlipChildrenMode = (fcSelected, fcAll);
  TQorDesignAlignmentStyle = (asNoChange, asLeftOrTop, asCenters,
    asRightOrBottom, asSpaceEqual, asCenterInWindow);
  TQorDesignSizeStyle = (ssNoChange, ssToSmallest, ssToLargest, ssCustom);
  TQorDesignScaleStyle = (ssAll, ssSelected);

  { Fired by the design manager for a component inserted dynamically. }
  TDynInsComponentEvent = procedure(Sender: TObject; Component: TComponent) of object;

{************ Mouse-down result codes }

const
  { Written by a design proxy into the mouse-down message's Result and read
    back by the stage proxy (Part 1.2). }
  QorMouseDownNotHandled = 0;
  QorMouseDownSelectedSelf = 101;
  QorMouseDownSelectedGraphicChild = 102;
  QorMouseDownPassedToParent = 201;
  QorMouseDownComponentInserted = 301;

{************ Free functions }

{ All four edges inclusive, unlike the platform's PtInRect. }
function PointInRect(const Point: TPoint; const Rect: TRect): Boolean;

{ True exactly for TCustomEdit and its descendants; nil gives False. }
function ControlCanInlineEdit(Control: TControl): Boolean;

{ The stage proxy's rule (Part 1.1): MK_SHIFT gives csmToggle, else MK_CONTROL
  gives csmClear, else csmSelect. Shift is tested first. }
function KeyStateToSelectMode(KeyState: PtrUInt): TControlSelectMode;

{ True when a sizer message (QORM_SizerMoved, QORM_SizerMoveEnd,
  QORM_SizerMoveStart) was sent by the receiving sizer itself: its wParam is
  the receiver's own handle, and the receiver must ignore it (Part 1.1). }
function IsOwnSizerMessage(const Message: TLMessage; OwnHandle: THandle): Boolean;

implementation

{************ Registered design messages }

const
  RangeSize = QorLastRegisteredMessage - QorFirstRegisteredMessage + 1;

var
  InitCount: Integer = 0;
  RegisteredNames: TStringList = nil;   // upper-case name -> number (Objects), sorted
  UsedNumbers: array[0..RangeSize - 1] of Boolean;

{ FNV-1a over the upper-cased name: stable across modules, processes and runs. }
function NameHash(const UpperName: string): Cardinal;
var
  I: Integer;
begin
  Result := 2166136261;
  for I := 1 to Length(UpperName) do
  begin
    Result := Result xor Ord(UpperName[I]);
    Result := Cardinal(QWord(Result) * 16777619);
  end;
end;

function QorRegisterWindowMessage(const Name: string): Cardinal;
var
  Key: string;
  Idx, Slot, Tries: Integer;
begin
  if RegisteredNames = nil then
  begin
    RegisteredNames := TStringList.Create;
    RegisteredNames.Sorted := True;
    RegisteredNames.CaseSensitive := True;
  end;
  Key := UpperCase(Name);
  if RegisteredNames.Find(Key, Idx) then
    Exit(Cardinal(PtrUInt(RegisteredNames.Objects[Idx])));
  Slot := NameHash(Key) mod RangeSize;
  Tries := 0;
  while UsedNumbers[Slot] do
  begin
    Inc(Tries);
    if Tries >= RangeSize then
      raise ERangeError.CreateFmt('No free registered message number left for "%s"', [Name]);
    Slot := (Slot + 1) mod RangeSize;
  end;
  UsedNumbers[Slot] := True;
  Result := QorFirstRegisteredMessage + Slot;
  RegisteredNames.AddObject(Key, TObject(PtrUInt(Result)));
end;

procedure RegisterQorDesignMessages;
begin
  QORM_SizerMoved := QorRegisterWindowMessage(QorDesignMessageNames[0]);
  QORM_SizerMoveEnd := QorRegisterWindowMessage(QorDesignMessageNames[1]);
  QORM_SizerMoveStart := QorRegisterWindowMessage(QorDesignMessageNames[2]);
  QORM_ControlSelected := QorRegisterWindowMessage(QorDesignMessageNames[3]);
  QORM_ControlSelectedAtPos := QorRegisterWindowMessage(QorDesignMessageNames[4]);
  QORN_SelCtrlChanged := QorRegisterWindowMessage(QorDesignMessageNames[5]);
  QORN_CtrlMoved := QorRegisterWindowMessage(QorDesignMessageNames[6]);
  QORN_SelCtrlMoved := QorRegisterWindowMessage(QorDesignMessageNames[7]);
  QORN_StartInlineEdit := QorRegisterWindowMessage(QorDesignMessageNames[8]);
  QORN_EndInlineEdit := QorRegisterWindowMessage(QorDesignMessageNames[9]);
  QORN_DynCompCreated := QorRegisterWindowMessage(QorDesignMessageNames[10]);
  QORN_DelSelCtrls := QorRegisterWindowMessage(QorDesignMessageNames[11]);
end;

{************ Free functions }

function PointInRect(const Point: TPoint; const Rect: TRect): Boolean;
begin
  Result := (Point.X >= Rect.Left) and (Point.X <= Rect.Right) and
    (Point.Y >= Rect.Top) and (Point.Y <= Rect.Bottom);
end;

function ControlCanInlineEdit(Control: TControl): Boolean;
begin
  Result := Control is TCustomEdit;
end;

function KeyStateToSelectMode(KeyState: PtrUInt): TControlSelectMode;
begin
  if KeyState and MK_SHIFT <> 0 then
    Result := csmToggle
  else if KeyState and MK_CONTROL <> 0 then
    Result := csmClear
  else
    Result := csmSelect;
end;

function IsOwnSizerMessage(const Message: TLMessage; OwnHandle: THandle): Boolean;
begin
  Result := ((Message.Msg = QORM_SizerMoved) or (Message.Msg = QORM_SizerMoveEnd) or
    (Message.Msg = QORM_SizerMoveStart)) and (THandle(Message.WParam) = OwnHandle);
end;

initialization
  Inc(InitCount);
  if InitCount = 1 then
    RegisterQorDesignMessages;

finalization
  // The numbers stay valid to process end (Part 1.1); only our table goes.
  FreeAndNil(RegisteredNames);

end.
