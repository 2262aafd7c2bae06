{ QorDesign tests — Part 1.1, design messages and shared definitions. }
unit TestQorDesignerDefs;

{$mode objfpc}{$H+}

interface

uses
  // RTL / FCL
  Classes, SysUtils, TypInfo, Process, DynLibs, fpcunit, testregistry,
  // LCL
  LCLType, LMessages, Types, Controls, StdCtrls, ExtCtrls, Forms,
  // ours
  QorDesigner;

type

  { TTestQorDesignerDefs }

  TTestQorDesignerDefs = class(TTestCase)
  private
    FEventSender: TObject;
    FEventComp: TComponent;
    procedure DynInserted(Sender: TObject; Component: TComponent);
    procedure CheckEnum(PTI: PTypeInfo; const Names: array of string);
  published
    // Edge cases worth testing
    procedure TestPointOnRightOrBottomEdgeIsInsidePointInRect;
    procedure TestRectWithRightLessThanLeftContainsNoPoint;
    procedure TestControlCanInlineEditTrueForMemoAndEditFalseForLabelAndPanel;
    procedure TestSizerMovedWithOwnHandleMovesNothing;
    procedure TestLoadingTheUnitTwiceInOneProcessGivesSameMessageNumbers;
    procedure TestSecondProcessRegisteringInAnotherOrderGetsSameNumbers;
    // Other rules of the Part
    procedure TestMessagesRegisteredUnderTheirExactStrings;
    procedure TestMessageNumbersDistinctAndInRegisteredRange;
    procedure TestRegisterWindowMessageSameNameSameNumber;
    procedure TestRegisteringAgainKeepsTheNumbers;
    procedure TestQorDesigningFalseAtStart;
    procedure TestEnumerationsValuesInOrder;
    procedure TestMouseDownResultCodes;
    procedure TestKeyStateShiftGivesToggleFirst;
    procedure TestKeyStateControlGivesClear;
    procedure TestKeyStateNoneGivesSelect;
    procedure TestPointInRectInsideAndOutside;
    procedure TestPointInRectUnlikePtInRect;
    procedure TestControlCanInlineEditNilIsFalse;
    procedure TestDynInsComponentEventCarriesSenderAndComponent;
  end;

implementation

procedure TTestQorDesignerDefs.DynInserted(Sender: TObject; Component: TComponent);
begin
  FEventSender := Sender;
  FEventComp := Component;
end;

procedure TTestQorDesignerDefs.CheckEnum(PTI: PTypeInfo; const Names: array of string);
var
  I: Integer;
begin
  AssertEquals(PTI^.Name + ' value count', Length(Names), GetTypeData(PTI)^.MaxValue + 1);
  AssertEquals(PTI^.Name + ' starts at 0', 0, GetTypeData(PTI)^.MinValue);
  for I := 0 to High(Names) do
    AssertEquals(Format('%s value %d', [PTI^.Name, I]), Names[I], GetEnumName(PTI, I));
end;

procedure TTestQorDesignerDefs.TestPointOnRightOrBottomEdgeIsInsidePointInRect;
var
  R: TRect;
begin
  R := Rect(10, 20, 110, 70);
  AssertTrue('right edge', PointInRect(Point(110, 40), R));
  AssertTrue('bottom edge', PointInRect(Point(50, 70), R));
  AssertTrue('bottom-right corner', PointInRect(Point(110, 70), R));
  AssertTrue('left edge', PointInRect(Point(10, 40), R));
  AssertTrue('top edge', PointInRect(Point(50, 20), R));
end;

procedure TTestQorDesignerDefs.TestRectWithRightLessThanLeftContainsNoPoint;
var
  R: TRect;
  X, Y: Integer;
begin
  R := Rect(100, 10, 50, 60);
  for X := 40 to 110 do
    for Y := 0 to 70 do
      AssertFalse(Format('(%d,%d) in an inverted rectangle', [X, Y]), PointInRect(Point(X, Y), R));
end;

procedure TTestQorDesignerDefs.TestControlCanInlineEditTrueForMemoAndEditFalseForLabelAndPanel;
var
  Owner: TComponent;
begin
  Owner := TComponent.Create(nil);
  try
    AssertTrue('memo', ControlCanInlineEdit(TMemo.Create(Owner)));
    AssertTrue('single-line edit', ControlCanInlineEdit(TEdit.Create(Owner)));
    AssertFalse('label', ControlCanInlineEdit(TLabel.Create(Owner)));
    AssertFalse('panel', ControlCanInlineEdit(TPanel.Create(Owner)));
    AssertFalse('button', ControlCanInlineEdit(TButton.Create(Owner)));
  finally
    Owner.Free;
  end;
end;

procedure TTestQorDesignerDefs.TestSizerMovedWithOwnHandleMovesNothing;
var
  M: TLMessage;
begin
  // The sizer (Part 1.3) asks IsOwnSizerMessage before it moves; a message
  // carrying its own handle is ignored, one from another sizer is not.
  FillChar(M, SizeOf(M), 0);
  M.Msg := QORM_SizerMoved;
  M.WParam := 4242;
  M.LParam := (5 shl 16) or 7;
  AssertTrue('own handle: ignored', IsOwnSizerMessage(M, 4242));
  AssertFalse('another sizer''s handle: acted on', IsOwnSizerMessage(M, 4343));
  M.Msg := QORM_SizerMoveEnd;
  AssertTrue('move end with own handle: ignored', IsOwnSizerMessage(M, 4242));
  M.Msg := QORM_SizerMoveStart;
  AssertTrue('move start with own handle: ignored', IsOwnSizerMessage(M, 4242));
  M.Msg := QORN_CtrlMoved;
  AssertFalse('not a sizer message', IsOwnSizerMessage(M, 4242));
end;

procedure TTestQorDesignerDefs.TestSecondProcessRegisteringInAnotherOrderGetsSameNumbers;
var
  Proc: TProcess;
  Lines: TStringList;
  I: Integer;
begin
  // This test program again, in its own process, registers another name
  // first and the twelve in reverse order: the numbers must still be the
  // ones this process holds. Its heap trace is switched off: the leak check
  // is about this process.
  Proc := TProcess.Create(nil);
  Lines := TStringList.Create;
  try
    Proc.Executable := ParamStr(0);
    Proc.Parameters.Add('--print-design-messages');
    for I := 0 to GetEnvironmentVariableCount - 1 do
      if Pos('HEAPTRC=', GetEnvironmentString(I)) <> 1 then
        Proc.Environment.Add(GetEnvironmentString(I));
    Proc.Environment.Add('HEAPTRC=disabled');
    Proc.Options := [poUsePipes, poWaitOnExit];
    Proc.Execute;
    Lines.LoadFromStream(Proc.Output);
    AssertEquals('second module exit status', 0, Proc.ExitStatus);
    for I := 0 to High(QorDesignMessageNames) do
      AssertEquals(QorDesignMessageNames[I] + ' in the second module',
        IntToStr(QorRegisterWindowMessage(QorDesignMessageNames[I])),
        Lines.Values[QorDesignMessageNames[I]]);
  finally
    Lines.Free;
    Proc.Free;
  end;
end;

procedure TTestQorDesignerDefs.TestLoadingTheUnitTwiceInOneProcessGivesSameMessageNumbers;
type
  TModuleMessage = function(Index: Integer): Cardinal; cdecl;
var
  Lib: TLibHandle;
  ModuleMessage: TModuleMessage;
  I: Integer;
begin
  // build/qormsgmodule is a shared library with its own copy of QorDesigner,
  // initialised when it is loaded: a second module in this process.
  Lib := LoadLibrary(ExtractFilePath(ParamStr(0)) + 'qormsgmodule');
  AssertTrue('the second module loads: ' + GetLoadErrorStr, Lib <> NilHandle);
  try
    ModuleMessage := TModuleMessage(GetProcAddress(Lib, 'QorModuleMessage'));
    AssertTrue('the second module exports QorModuleMessage', Assigned(ModuleMessage));
    for I := 0 to High(QorDesignMessageNames) do
      AssertEquals(QorDesignMessageNames[I] + ' in the second module',
        QorRegisterWindowMessage(QorDesignMessageNames[I]), ModuleMessage(I));
  finally
    UnloadLibrary(Lib);
  end;
end;

procedure TTestQorDesignerDefs.TestMessagesRegisteredUnderTheirExactStrings;
begin
  AssertEquals(QORM_SizerMoved, QorRegisterWindowMessage('QOR.SizerMovedMsg'));
  AssertEquals(QORM_SizerMoveEnd, QorRegisterWindowMessage('QOR.SizerMoveEndMsg'));
  AssertEquals(QORM_SizerMoveStart, QorRegisterWindowMessage('QOR.SizerMoveStartMsg'));
  AssertEquals(QORM_ControlSelected, QorRegisterWindowMessage('QOR.Design.ControlSelected'));
  AssertEquals(QORM_ControlSelectedAtPos, QorRegisterWindowMessage('QOR.Design.ControlSelectedAtPos'));
  AssertEquals(QORN_SelCtrlChanged, QorRegisterWindowMessage('QOR.Design.SelectControlChanged'));
  AssertEquals(QORN_CtrlMoved, QorRegisterWindowMessage('QOR.Design.ControlMoved'));
  AssertEquals(QORN_SelCtrlMoved, QorRegisterWindowMessage('QOR.Design.SelectControlMoved'));
  AssertEquals(QORN_StartInlineEdit, QorRegisterWindowMessage('QOR.Design.StartInlineEdit'));
  AssertEquals(QORN_EndInlineEdit, QorRegisterWindowMessage('QOR.Design.EndInlineEdit'));
  AssertEquals(QORN_DynCompCreated, QorRegisterWindowMessage('QOR.Design.DynamicComponentCreated'));
  AssertEquals(QORN_DelSelCtrls, QorRegisterWindowMessage('QOR.Design.DelSelectControls'));
end;

procedure TTestQorDesignerDefs.TestMessageNumbersDistinctAndInRegisteredRange;
var
  Numbers: array[0..11] of Cardinal;
  I, J: Integer;
begin
  Numbers[0] := QORM_SizerMoved;
  Numbers[1] := QORM_SizerMoveEnd;
  Numbers[2] := QORM_SizerMoveStart;
  Numbers[3] := QORM_ControlSelected;
  Numbers[4] := QORM_ControlSelectedAtPos;
  Numbers[5] := QORN_SelCtrlChanged;
  Numbers[6] := QORN_CtrlMoved;
  Numbers[7] := QORN_SelCtrlMoved;
  Numbers[8] := QORN_StartInlineEdit;
  Numbers[9] := QORN_EndInlineEdit;
  Numbers[10] := QORN_DynCompCreated;
  Numbers[11] := QORN_DelSelCtrls;
  for I := 0 to High(Numbers) do
  begin
    AssertTrue(Format('message %d is at least $C000', [I]), Numbers[I] >= $C000);
    AssertTrue(Format('message %d is at most $FFFF', [I]), Numbers[I] <= $FFFF);
    for J := I + 1 to High(Numbers) do
      AssertTrue(Format('messages %d and %d differ', [I, J]), Numbers[I] <> Numbers[J]);
  end;
end;

procedure TTestQorDesignerDefs.TestRegisterWindowMessageSameNameSameNumber;
var
  A, B: Cardinal;
begin
  A := QorRegisterWindowMessage('QorTests.SomeMessage');
  B := QorRegisterWindowMessage('QorTests.SomeMessage');
  AssertEquals('same name, same number', A, B);
  AssertEquals('names compare case-insensitively', A, QorRegisterWindowMessage('qortests.somemessage'));
  AssertTrue('another name, another number', A <> QorRegisterWindowMessage('QorTests.OtherMessage'));
end;

procedure TTestQorDesignerDefs.TestRegisteringAgainKeepsTheNumbers;
var
  Before: Cardinal;
begin
  Before := QORN_DelSelCtrls;
  RegisterQorDesignMessages;
  AssertEquals(Before, QORN_DelSelCtrls);
end;

procedure TTestQorDesignerDefs.TestQorDesigningFalseAtStart;
begin
  AssertFalse(QorDesigning);
end;

procedure TTestQorDesignerDefs.TestEnumerationsValuesInOrder;
begin
  CheckEnum(TypeInfo(TQorSizerMode), ['smSingle', 'smMulti', 'smConceal', 'smNone']);
  CheckEnum(TypeInfo(TQorStageSizerMode), ['ssmNormal', 'ssmFixed', 'ssmFixedTopLeft']);
  CheckEnum(TypeInfo(TControlSelectMode), ['csmSelect', 'csmAdd', 'csmDel', 'csmToggle', 'csmClear']);
  CheckEnum(TypeInfo(TFlipChildrenMode), ['fcSelected', 'fcAll']);
  CheckEnum(TypeInfo(TQorDesignAlignmentStyle), ['asNoChange', 'asLeftOrTop', 'asCenters',
    'asRightOrBottom', 'asSpaceEqual', 'asCenterInWindow']);
  CheckEnum(TypeInfo(TQorDesignSizeStyle), ['ssNoChange', 'ssToSmallest', 'ssToLargest', 'ssCustom']);
  CheckEnum(TypeInfo(TQorDesignScaleStyle), ['ssAll', 'ssSelected']);
end;

procedure TTestQorDesignerDefs.TestMouseDownResultCodes;
begin
  AssertEquals(0, QorMouseDownNotHandled);
  AssertEquals(101, QorMouseDownSelectedSelf);
  AssertEquals(102, QorMouseDownSelectedGraphicChild);
  AssertEquals(201, QorMouseDownPassedToParent);
  AssertEquals(301, QorMouseDownComponentInserted);
end;

procedure TTestQorDesignerDefs.TestKeyStateShiftGivesToggleFirst;
begin
  AssertTrue('Shift', KeyStateToSelectMode(MK_SHIFT) = csmToggle);
  AssertTrue('Shift+Ctrl: Shift is tested first', KeyStateToSelectMode(MK_SHIFT or MK_CONTROL) = csmToggle);
  AssertTrue('Shift with the left button', KeyStateToSelectMode(MK_SHIFT or MK_LBUTTON) = csmToggle);
end;

procedure TTestQorDesignerDefs.TestKeyStateControlGivesClear;
begin
  AssertTrue('Ctrl', KeyStateToSelectMode(MK_CONTROL) = csmClear);
  AssertTrue('Ctrl with the left button', KeyStateToSelectMode(MK_CONTROL or MK_LBUTTON) = csmClear);
end;

procedure TTestQorDesignerDefs.TestKeyStateNoneGivesSelect;
begin
  AssertTrue('no key', KeyStateToSelectMode(0) = csmSelect);
  AssertTrue('only the left button', KeyStateToSelectMode(MK_LBUTTON) = csmSelect);
end;

procedure TTestQorDesignerDefs.TestPointInRectInsideAndOutside;
var
  R: TRect;
begin
  R := Rect(10, 20, 110, 70);
  AssertTrue('inside', PointInRect(Point(50, 40), R));
  AssertFalse('right of it', PointInRect(Point(111, 40), R));
  AssertFalse('below it', PointInRect(Point(50, 71), R));
  AssertFalse('left of it', PointInRect(Point(9, 40), R));
  AssertFalse('above it', PointInRect(Point(50, 19), R));
end;

procedure TTestQorDesignerDefs.TestPointInRectUnlikePtInRect;
var
  R: TRect;
begin
  R := Rect(10, 20, 110, 70);
  AssertFalse('PtInRect excludes the right edge', PtInRect(R, Point(110, 40)));
  AssertTrue('PointInRect includes it', PointInRect(Point(110, 40), R));
end;

procedure TTestQorDesignerDefs.TestControlCanInlineEditNilIsFalse;
begin
  AssertFalse(ControlCanInlineEdit(nil));
end;

procedure TTestQorDesignerDefs.TestDynInsComponentEventCarriesSenderAndComponent;
var
  Event: TDynInsComponentEvent;
  C: TComponent;
begin
  C := TComponent.Create(nil);
  try
    Event := @DynInserted;
    Event(Self, C);
    AssertSame('sender', Self, FEventSender);
    AssertSame('component', C, FEventComp);
  finally
    C.Free;
  end;
end;

initialization
  RegisterTest(TTestQorDesignerDefs);
end.
