{ QorDesign tests — Part 5.1, the design center: linking, enabled state,
  the stage mouse-move event, dirty flag, deletion, copy, cut, paste and
  select all, with the manager's, the inspector's and the center's lists
  kept equal. }
unit TestQorDesignCenter;

{$mode objfpc}{$H+}
{$modeswitch nestedprocvars}

interface

uses
  // RTL / FCL
  Classes, SysUtils, Contnrs, fpcunit, testregistry,
  // LCL
  Controls, StdCtrls, ExtCtrls, Forms,
  // ours
  QorGuiTest, QorDesigner, QorDesignConsole, ObjInspect, VhoClipbrdUtils, TestDesignSurface;

type

  { A center that counts its design-manager notifications. }
  TCountingCenter = class(TQorDesignCenter)
  public
    ManagerChanges: Integer;
    procedure NotifyDesignManagerChanged; override;
  end;

  { TTestQorDesignCenter }

  TTestQorDesignCenter = class(TQorSurfaceTestCase)
  private
    InspForm: TQorTestForm;
    Insp: TQorObjInspector;
    FMouseMoves: Integer;
    procedure StageMouseMove(Sender: TObject; AControl: TControl; Shift: TShiftState;
      X, Y: Integer);
    procedure AssertListsEqual(const Expected: string);
  protected
    procedure SetUp; override;
  published
    procedure TestLinkingTheSameDesignManagerTwiceNotifiesOnce;
    procedure TestPersistEnabledFalseCopiesTheManagersEnabledTrueImposesTheCenters;
    procedure TestDeletingWithOnlyTheStageSelectedFreesNothing;
    procedure TestDeletingSeveralControlsLeavesExactlyTheStageSelected;
    procedure TestDeletingAPanelFreesItsChildrenAsTheVclDoes;
    procedure TestPasteWithOneContainerSelectedGoesIntoItOffsetBy4And4;
    procedure TestPasteWithTwoControlsSelectedGoesOntoTheStage;
    procedure TestPasteWithAButtonSelectedGoesToItsContainerWithANewName;
    procedure TestCutRemovesAndPasteBringsItBack;
    procedure TestSelectAllKeepsTheThreeListsEqual;
    procedure TestRemovalNotificationChangesNothing;
    procedure TestOnStageMouseMoveBeforeAManagerIsLinkedHasNoLastingEffect;
    procedure TestDirtyIsFalseWithNoElementLinked;
    procedure TestDirtyFollowsManagerAndInspector;
  end;

implementation

procedure TCountingCenter.NotifyDesignManagerChanged;
begin
  Inc(ManagerChanges);
  inherited NotifyDesignManagerChanged;
end;

procedure TTestQorDesignCenter.SetUp;
begin
  inherited SetUp;
  RegisterClasses([TPanel, TButton, TLabel, TEdit, TMemo, TCheckBox]);
  InspForm := NewForm(700, 40, 400, 600);
  Insp := TQorObjInspector.Create(InspForm);
  Insp.Parent := InspForm;
  Insp.Align := alClient;
  Center.ObjInspector := Insp;
  ShowForm(InspForm);
  StartDesigning;
end;

procedure TTestQorDesignCenter.StageMouseMove(Sender: TObject; AControl: TControl;
  Shift: TShiftState; X, Y: Integer);
begin
  Inc(FMouseMoves);
end;

procedure TTestQorDesignCenter.AssertListsEqual(const Expected: string);
begin
  AssertEquals('center', Expected, CompNames(Center.SelectedComps));
  AssertEquals('manager', Expected, CompNames(Manager.SelectedComps));
  AssertEquals('inspector', Expected, InspectedNames(Insp));
end;

procedure TTestQorDesignCenter.TestLinkingTheSameDesignManagerTwiceNotifiesOnce;
var
  C: TCountingCenter;
begin
  C := TCountingCenter.Create(nil);
  try
    Center.DesignManager := nil;
    C.DesignManager := Manager;
    AssertEquals('first link', 1, C.ManagerChanges);
    C.DesignManager := Manager;
    AssertEquals('the same again: nothing', 1, C.ManagerChanges);
    AssertSame('the manager knows its center', C, Manager.ConsoleCenter);
  finally
    C.Free;
  end;
  AssertNull('the manager let go of the freed center', Manager.ConsoleCenter);
end;

procedure TTestQorDesignCenter.TestPersistEnabledFalseCopiesTheManagersEnabledTrueImposesTheCenters;
var
  C: TQorDesignCenter;
  M: TQorDesignManager;
begin
  M := TQorDesignManager.Create(nil);
  C := TQorDesignCenter.Create(nil);
  try
    M.Enabled := False;
    C.PersistEnabled := False;
    C.DesignManager := M;
    AssertFalse('the manager''s state copied', C.Enabled);
    C.DesignManager := nil;
    C.PersistEnabled := True;
    C.Enabled := True;
    C.DesignManager := M;
    AssertTrue('the center''s state imposed', M.Enabled);
  finally
    C.Free;
    M.Free;
  end;
end;

procedure TTestQorDesignCenter.TestDeletingWithOnlyTheStageSelectedFreesNothing;
var
  N: Integer;
begin
  SelectOnly([Stage]);
  N := Stage.ComponentCount;
  Center.DelSelCtrls;
  AssertEquals('nothing freed', N, Stage.ComponentCount);
  AssertListsEqual('StageForm');
end;

procedure TTestQorDesignCenter.TestDeletingSeveralControlsLeavesExactlyTheStageSelected;
begin
  SelectOnly([Button2, Button3, Edit]);
  AssertListsEqual('Button2,Button3,Edit1');
  Center.DelSelCtrls;
  DrainMessages(50);
  AssertNull('Button2 freed', Stage.FindComponent('Button2'));
  AssertNull('Button3 freed', Stage.FindComponent('Button3'));
  AssertNull('Edit1 freed', Stage.FindComponent('Edit1'));
  Button2 := nil;
  Button3 := nil;
  Edit := nil;
  AssertListsEqual('StageForm');
  AssertEquals('no sizer left for them', 0, Manager.Sizers.Count);
end;

procedure TTestQorDesignCenter.TestDeletingAPanelFreesItsChildrenAsTheVclDoes;
begin
  // Panel1 holds Button1 and Label1, both owned by the stage.
  SelectOnly([Panel]);
  Center.DelSelCtrls;
  DrainMessages(50);
  AssertNull('panel freed', Stage.FindComponent('Panel1'));
  AssertNull('its button freed', Stage.FindComponent('Button1'));
  AssertNull('its label freed', Stage.FindComponent('Label1'));
  Panel := nil;
  PanelButton := nil;
  PanelLabel := nil;
  AssertListsEqual('StageForm');
end;

procedure TTestQorDesignCenter.TestPasteWithOneContainerSelectedGoesIntoItOffsetBy4And4;
var
  B: TButton;
begin
  SelectOnly([Button2]);
  Center.CopySelComps;
  SelectOnly([Panel]);
  Center.PasteComps;
  DrainMessages(50);
  B := Stage.FindComponent('Button4') as TButton;
  AssertNotNull('pasted under a new name', B);
  AssertSame('into the selected panel', Panel, B.Parent);
  AssertEquals('left + 4', Button2.Left + 4, B.Left);
  AssertEquals('top + 4', Button2.Top + 4, B.Top);
  AssertSame('owned by the stage', Stage, B.Owner);
  AssertTrue('designing like the rest', csDesigning in B.ComponentState);
end;

procedure TTestQorDesignCenter.TestPasteWithTwoControlsSelectedGoesOntoTheStage;
var
  B: TComponent;
begin
  SelectOnly([PanelButton]);
  Center.CopySelComps;
  SelectOnly([Panel, Edit]);
  Center.PasteComps;
  B := Stage.FindComponent('Button4');
  AssertNotNull('pasted', B);
  AssertSame('onto the stage', Stage, TControl(B).Parent);
  AssertEquals('left + 4', PanelButton.Left + 4, TControl(B).Left);
end;

procedure TTestQorDesignCenter.TestPasteWithAButtonSelectedGoesToItsContainerWithANewName;
var
  B: TComponent;
begin
  SelectOnly([PanelButton]);
  Center.CopySelComps;
  Center.PasteComps;
  B := Stage.FindComponent('Button4');
  AssertNotNull('pasted', B);
  AssertSame('the button passes it to its panel', Panel, TControl(B).Parent);
  AssertEquals('beside the original', PanelButton.Left + 4, TControl(B).Left);
end;

procedure TTestQorDesignCenter.TestCutRemovesAndPasteBringsItBack;
var
  Caption: string;
  B: TComponent;
begin
  Caption := Button3.Caption;
  SelectOnly([Button3]);
  Center.CutSelComps;
  DrainMessages(50);
  AssertNull('cut away', Stage.FindComponent('Button3'));
  Button3 := nil;
  AssertListsEqual('StageForm');
  Center.PasteComps;
  B := Stage.FindComponent('Button3');
  AssertNotNull('back under its own name (free again)', B);
  AssertEquals('with its caption', Caption, TButton(B).Caption);
  AssertSame('onto the stage', Stage, TControl(B).Parent);
end;

procedure TTestQorDesignCenter.TestSelectAllKeepsTheThreeListsEqual;
var
  Expected: string;
begin
  Center.SelectAllControls;
  DrainMessages(50);
  Expected := CompNames(Manager.SelectedComps);
  AssertTrue('several selected', Manager.SelectedComps.Count > 5);
  AssertListsEqual(Expected);
end;

procedure TTestQorDesignCenter.TestRemovalNotificationChangesNothing;
begin
  SelectOnly([Button2]);
  Center.DesignStageCompsModified(Button3, opRemove);
  Center.DesignStageCompsModified(Button3, opInsert);
  AssertListsEqual('Button2');
end;

procedure TTestQorDesignCenter.TestOnStageMouseMoveBeforeAManagerIsLinkedHasNoLastingEffect;
var
  C: TQorDesignCenter;
  M: TQorDesignManager;
begin
  C := TQorDesignCenter.Create(nil);
  M := TQorDesignManager.Create(nil);
  try
    C.OnStageMouseMove := @StageMouseMove;
    AssertFalse('nothing kept', Assigned(C.OnStageMouseMove));
    C.DesignManager := M;
    AssertFalse('the manager got nothing', Assigned(M.OnStageMouseMove));
    C.OnStageMouseMove := @StageMouseMove;
    AssertTrue('now the manager''s event', Assigned(M.OnStageMouseMove));
    AssertTrue('read back through the center', Assigned(C.OnStageMouseMove));
  finally
    C.Free;
    M.Free;
  end;
end;

procedure TTestQorDesignCenter.TestDirtyIsFalseWithNoElementLinked;
var
  C: TQorDesignCenter;
begin
  C := TQorDesignCenter.Create(nil);
  try
    AssertFalse('clean', C.Dirty);
    C.Dirty := True;
    AssertFalse('still nothing to be dirty', C.Dirty);
    AssertNull('no stage', C.GetDesignStage);
    AssertNull('no class', C.GetPalleteSelectedClass);
  finally
    C.Free;
  end;
end;

procedure TTestQorDesignCenter.TestDirtyFollowsManagerAndInspector;
begin
  Center.Dirty := False;
  AssertFalse('clean', Center.Dirty);
  Insp.Modified := True;
  AssertTrue('the inspector''s flag', Center.Dirty);
  Center.Dirty := False;
  AssertFalse('cleared on the inspector', Insp.Modified);
  Manager.Dirty := True;
  AssertTrue('the manager''s flag', Center.Dirty);
end;

initialization
  RegisterTest(TTestQorDesignCenter);
end.
