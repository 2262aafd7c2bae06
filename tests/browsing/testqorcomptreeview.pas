{ QorDesign tests — Part 6.1 as far as it is built (the tree, its filter,
  the selection both ways, the right button, moving up and down) and the
  design center's routing through it (Part 5.1): real clicks on nodes and
  on the stage, the three lists and the tree's kept equal. }
unit TestQorCompTreeView;

{$mode objfpc}{$H+}
{$modeswitch nestedprocvars}

interface

uses
  // RTL / FCL
  Classes, SysUtils, Contnrs, fpcunit, testregistry,
  // LCL
  Controls, StdCtrls, ExtCtrls, Forms, ComCtrls, Menus,
  // ours
  QorGuiTest, QorDesigner, QorDesignConsole, ObjInspect, QorCompTreeView,
  TestDesignSurface;

type

  { TTestQorCompTreeView
    The surface tests' stage, designing, with an inspector and a tree view
    linked to its design center on a second form. }

  TTestQorCompTreeView = class(TQorSurfaceTestCase)
  private
    SideForm: TQorTestForm;
    Tree: TQorCompTreeView;
    Insp: TQorObjInspector;
    FPopups: Integer;
    FMenu: TPopupMenu;
    FCloser: TTimer;
    procedure Popped(Sender: TObject);
    procedure CloseMenu(Sender: TObject);
    function TreeText: string;
    function TreeSelNames: string;
    procedure AssertAllSelect(const Expected: string);
    procedure ClickNode(C: TComponent; const Keys: string = '');
  protected
    procedure SetUp; override;
  published
    // Part 5.1 (with a tree view linked)
    procedure TestInsertedComponentBecomesTheSoleSelectionEverywhereRemovalChangesNothing;
    procedure TestLinkingTheTreeBuildsItAndPushesTheSelection;
    // Part 6.1, edge cases worth testing (those of the parts built)
    procedure TestStageWithNoComponentsShowsOnlyTheRootExpanded;
    procedure TestShowKnownCompsOnlyWithoutClassListListsEveryComponent;
    procedure TestBlankNameShowsNoName;
    procedure TestComponentWithoutNodeIsSkippedAndTheNextBecomesTheFirst;
    procedure TestMovingUpPastTheFirstPositionChangesNoChildOrder;
    // Part 6.1, the tree
    procedure TestNonVisualFirstThenControlsNestedInComponentOrder;
    procedure TestFilterWithoutControlsListsOnlyNonVisual;
    procedure TestMovingDownSwapsComponentAndChildOrder;
    procedure TestSelectionPushedIntoTheTreeIsNotReportedBackLater;
    // Real input
    procedure TestClickingANodeSelectsItOnStageAndInInspector;
    procedure TestCtrlClickingNodesAddsThemInOrder;
    procedure TestClickOnStageSelectsTheNodeInTheTree;
    procedure TestRightClickPopsTheMenuAndKeepsTheSelection;
  end;

implementation

procedure TTestQorCompTreeView.SetUp;
begin
  inherited SetUp;
  SideForm := NewForm(700, 40, 420, 640);
  SideForm.Name := 'SideForm';
  Tree := TQorCompTreeView.Create(SideForm);
  Tree.Parent := SideForm;
  Tree.SetBounds(0, 0, 200, 640);
  Insp := TQorObjInspector.Create(SideForm);
  Insp.Parent := SideForm;
  Insp.SetBounds(200, 0, 220, 640);
  Center.ObjInspector := Insp;
  Center.CompTreeView := Tree;
  ShowForm(SideForm);
  StartDesigning;
end;

{ The menu pops up; gtk2 runs it modally inside the click's handling, so a
  timer closes it from within, with the Escape key. }
procedure TTestQorCompTreeView.Popped(Sender: TObject);
begin
  Inc(FPopups);
  FCloser.Enabled := True;
end;

procedure TTestQorCompTreeView.CloseMenu(Sender: TObject);
begin
  FCloser.Enabled := False;
  PressKey('Escape');
end;

{ The tree as text: each node's label, children in brackets. }
function TTestQorCompTreeView.TreeText: string;

  function NodeText(N: TTreeNode): string;
  var
    C: TTreeNode;
  begin
    Result := N.Text;
    C := N.GetFirstChild;
    if C = nil then
      Exit;
    Result := Result + '(';
    while C <> nil do
    begin
      Result := Result + NodeText(C);
      C := C.GetNextSibling;
      if C <> nil then
        Result := Result + ',';
    end;
    Result := Result + ')';
  end;

begin
  if Tree.Items.GetFirstNode = nil then
    Result := ''
  else
    Result := NodeText(Tree.Items.GetFirstNode);
end;

function TTestQorCompTreeView.TreeSelNames: string;
var
  I: Integer;
begin
  Result := '';
  for I := 0 to Integer(Tree.SelectionCount) - 1 do
  begin
    if I > 0 then
      Result := Result + ',';
    Result := Result + TComponent(Tree.Selections[I].Data).Name;
  end;
end;

procedure TTestQorCompTreeView.AssertAllSelect(const Expected: string);
begin
  AssertEquals('center', Expected, CompNames(Center.SelectedComps));
  AssertEquals('manager', Expected, SelNames);
  AssertEquals('tree', Expected, TreeSelNames);
  AssertEquals('inspector', Expected, InspectedNames(Insp));
end;

{ Clicks the node of C (with Keys held) and waits until the tree has it
  selected: the tree reads the modifier keys when it handles the click, so
  the next click's keys must not be down before then. }
procedure TTestQorCompTreeView.ClickNode(C: TComponent; const Keys: string);
var
  Node: TTreeNode;
  R: TRect;

  function NodeSelected: Boolean;
  begin
    Result := Node.Selected;
  end;

begin
  Node := Tree.FindComponentNode(C);
  AssertNotNull('a node for ' + C.Name, Node);
  R := Node.DisplayRect(True);
  if Keys <> '' then
    KeyHold(Keys);
  try
    Click(Tree, (R.Left + R.Right) div 2, (R.Top + R.Bottom) div 2);
    WaitUntil(@NodeSelected);
  finally
    if Keys <> '' then
      KeyRelease(Keys);
  end;
end;

{ Part 5.1: with a tree view linked, a component inserted into the stage
  becomes the sole selection in the tree, the inspector and the manager;
  the removal notification changes nothing. }
procedure TTestQorCompTreeView.TestInsertedComponentBecomesTheSoleSelectionEverywhereRemovalChangesNothing;
var
  T: TTimer;
begin
  SelectOnly([Button2, Button3]);
  AssertAllSelect('Button2,Button3');
  T := TTimer.Create(Stage);
  AssertEquals('named by the manager', 'Timer1', T.Name);
  AssertAllSelect('Timer1');
  AssertNotNull('the tree lists it', Tree.FindComponentNode(T));
  Center.DesignStageCompsModified(Button2, opRemove);
  AssertAllSelect('Timer1');
end;

procedure TTestQorCompTreeView.TestLinkingTheTreeBuildsItAndPushesTheSelection;
var
  Other: TQorCompTreeView;
begin
  SelectOnly([Edit]);
  Other := TQorCompTreeView.Create(SideForm);
  try
    Other.Parent := SideForm;
    AssertNull('no tree before linking', Other.Items.GetFirstNode);
    Center.CompTreeView := Other;
    AssertSame('the tree knows its center', Center, Other.ConsoleCenter);
    AssertSame('the stage is its root', Stage, Other.RootControl);
    AssertNotNull('the stage at the root', Other.FindComponentNode(Stage));
    AssertSame('the old tree was told', nil, Tree.ConsoleCenter);
  finally
    Other.Free;
  end;
  AssertNull('the center let go of the freed tree', Center.CompTreeView);
end;

procedure TTestQorCompTreeView.TestStageWithNoComponentsShowsOnlyTheRootExpanded;
var
  Empty: TQorTestForm;
  Alone: TQorCompTreeView;
begin
  Empty := NewForm(300, 300, 100, 100);
  Empty.Name := 'EmptyForm';
  Alone := TQorCompTreeView.Create(SideForm);
  Alone.Parent := SideForm;
  Alone.RootControl := Empty;
  AssertEquals('one node', 1, Alone.Items.Count);
  AssertEquals('the root', 'EmptyForm', Alone.Items.GetFirstNode.Text);
  // Expanded as far as a node without children can be: the LCL's tree
  // keeps such a node's Expanded false, and shows no expander.
  AssertFalse('nothing to expand', Alone.Items.GetFirstNode.HasChildren);
  AssertEquals('the root image is "GlyphDefForm"', 3, Alone.Items.GetFirstNode.ImageIndex);
end;

procedure TTestQorCompTreeView.TestShowKnownCompsOnlyWithoutClassListListsEveryComponent;
var
  T: TTimer;
begin
  AssertTrue('ShowKnownCompsOnly by default', Tree.ShowKnownCompsOnly);
  T := TTimer.Create(Stage);
  AssertTrue('known without a class list', Tree.CompsIsKnown(T));
  AssertNotNull('the timer listed', Tree.FindComponentNode(T));
  AssertNotNull('a button listed', Tree.FindComponentNode(Button3));
  AssertEquals('unknown classes get "GlyphDefForm"', 3, Tree.FindComponentNode(T).ImageIndex);
end;

procedure TTestQorCompTreeView.TestBlankNameShowsNoName;
var
  T: TTimer;
begin
  T := TTimer.Create(Stage);
  T.Name := '';
  Tree.Refresh;
  AssertEquals('label', '[NoName]', Tree.FindComponentNode(T).Text);
end;

{ A selected component the tree does not list (the filter leaves out the
  controls) is skipped: the next listed one is selected alone. }
procedure TTestQorCompTreeView.TestComponentWithoutNodeIsSkippedAndTheNextBecomesTheFirst;
var
  T1, T2: TTimer;
  L: TComponentList;
begin
  T1 := TTimer.Create(Stage);
  T2 := TTimer.Create(Stage);
  Tree.CompFilterStyles := [cfComponent];
  L := TComponentList.Create(False);
  try
    L.Add(Button2);
    L.Add(T2);
    L.Add(T1);
    Tree.SetSelectedComps(L);
  finally
    L.Free;
  end;
  AssertNull('no node for the button', Tree.FindComponentNode(Button2));
  AssertEquals('the tree selects the timers, Timer2 first', 'Timer2,Timer1', TreeSelNames);
  AssertSame('Timer2 selected first', T2, TObject(Tree.Selections[0].Data));
  AssertEquals('the list keeps all three', 3, Tree.SelectedComps.Count);
end;

{ Up past the first position: the component index is still handed to the
  owner (which keeps it in range), but no child order change is made. }
procedure TTestQorCompTreeView.TestMovingUpPastTheFirstPositionChangesNoChildOrder;
var
  L: TComponentList;
begin
  AssertEquals('the panel is the first child', 0, Stage.GetControlIndex(Panel));
  L := TComponentList.Create(False);
  try
    L.Add(Panel);
    Tree.SetSelectedComps(L);
  finally
    L.Free;
  end;
  Tree.MoveSelCompIndexesUp(3);
  AssertEquals('component index limited to the first', 0, Panel.ComponentIndex);
  AssertEquals('child order unchanged', 0, Stage.GetControlIndex(Panel));
  AssertTrue('dirty', Tree.Dirty);
  AssertTrue('the design is dirty', Center.Dirty);
end;

procedure TTestQorCompTreeView.TestNonVisualFirstThenControlsNestedInComponentOrder;
begin
  TTimer.Create(Stage);
  AssertEquals('tree',
    'StageForm(Timer1,Panel1(Button1,Label1),Edit1,Memo1,CheckBox1,Button2,Button3)',
    TreeText);
  AssertTrue('root expanded', Tree.Items.GetFirstNode.Expanded);
  AssertNull('the design system is not listed', Tree.FindComponentNode(Manager));
  AssertNull('nor the center', Tree.FindComponentNode(Center));
  AssertTrue('a tree view is a part of the design system', IsQorDesignCtrl(Tree));
end;

procedure TTestQorCompTreeView.TestFilterWithoutControlsListsOnlyNonVisual;
begin
  TTimer.Create(Stage);
  Tree.CompFilterStyles := [cfComponent];
  AssertEquals('tree', 'StageForm(Timer1)', TreeText);
  Tree.CompFilterStyles := [cfControl];
  AssertEquals('tree',
    'StageForm(Panel1(Button1,Label1),Edit1,Memo1,CheckBox1,Button2,Button3)', TreeText);
end;

procedure TTestQorCompTreeView.TestMovingDownSwapsComponentAndChildOrder;
var
  L: TComponentList;
  Index, Position: Integer;
begin
  Index := Edit.ComponentIndex;
  Position := Stage.GetControlIndex(Edit);
  L := TComponentList.Create(False);
  try
    L.Add(Edit);
    Tree.SetSelectedComps(L);
  finally
    L.Free;
  end;
  Tree.MoveSelCompIndexesDown(1);
  AssertEquals('component index + 1', Index + 1, Edit.ComponentIndex);
  AssertEquals('child order + 1', Position + 1, Stage.GetControlIndex(Edit));
  AssertEquals('the tree follows the component order',
    'StageForm(Panel1(Button1,Label1),Memo1,Edit1,CheckBox1,Button2,Button3)', TreeText);
  AssertEquals('still selected', 'Edit1', TreeSelNames);
end;

{ The LCL's tree reports selection changes from a timer, after the fact: a
  selection the center pushed into the tree must not come back later as
  the user's (it would undo what happened in between, here the inspector
  showing the stage). A regenerated tree, empty of selection, neither. }
procedure TTestQorCompTreeView.TestSelectionPushedIntoTheTreeIsNotReportedBackLater;
begin
  Center.SelectAllControls;
  DrainMessages(50);
  Insp.SetActiveComponent(Stage);
  Tree.GenerateTree;
  DrainMessages(200);
  AssertEquals('the inspector still shows the stage', 'StageForm', InspectedNames(Insp));
  AssertEquals('the center keeps all controls', Manager.SelectedComps.Count,
    Center.SelectedComps.Count);
  AssertTrue('more than one selected', Center.SelectedComps.Count > 1);
end;

procedure TTestQorCompTreeView.TestClickingANodeSelectsItOnStageAndInInspector;

  function Selected: Boolean;
  begin
    Result := SelNames = 'Button3';
  end;

begin
  SelectOnly([Edit]);
  ClickNode(Button3);
  AssertWait('the manager selects Button3', @Selected);
  AssertAllSelect('Button3');
  AssertNotNull('a sizer on Button3', SizerOf(Button3));
end;

procedure TTestQorCompTreeView.TestCtrlClickingNodesAddsThemInOrder;

  function Three: Boolean;
  begin
    Result := SelNames = 'Button3,Memo1,CheckBox1';
  end;

begin
  ClickNode(Button3);
  ClickNode(Memo, 'ctrl');
  ClickNode(CheckBox, 'ctrl');
  AssertWait('three selected in click order', @Three);
  AssertAllSelect('Button3,Memo1,CheckBox1');
end;

procedure TTestQorCompTreeView.TestClickOnStageSelectsTheNodeInTheTree;

  function TreeFollows: Boolean;
  begin
    Result := TreeSelNames = 'CheckBox1';
  end;

begin
  SelectOnly([Edit]);
  Click(CheckBox, 10, 10);
  AssertWait('the tree selects CheckBox1', @TreeFollows);
  AssertAllSelect('CheckBox1');
end;

procedure TTestQorCompTreeView.TestRightClickPopsTheMenuAndKeepsTheSelection;
var
  Node: TTreeNode;
  R: TRect;

  function PoppedUp: Boolean;
  begin
    Result := (FPopups > 0) and not FCloser.Enabled;
  end;

begin
  FMenu := TPopupMenu.Create(SideForm);
  FMenu.Items.Add(NewItem('Nothing', 0, False, True, nil, 0, 'NothingItem'));
  FMenu.OnPopup := @Popped;
  FCloser := TTimer.Create(SideForm);
  FCloser.Enabled := False;
  FCloser.Interval := 200;
  FCloser.OnTimer := @CloseMenu;
  Center.DesignPopupMenu := FMenu;
  AssertSame('the tree got the menu', FMenu, Tree.PopupMenu);
  // The LCL tree would select the node under a right click with this on;
  // the tree's own handling of the right button is bypassed.
  Tree.Options := Tree.Options + [tvoRightClickSelect];
  SelectOnly([Edit]);
  Node := Tree.FindComponentNode(Button2);
  R := Node.DisplayRect(True);
  Click(Tree, (R.Left + R.Right) div 2, (R.Top + R.Bottom) div 2, 3);
  AssertWait('the menu popped up and closed', @PoppedUp);
  DrainMessages(100);
  AssertAllSelect('Edit1');
end;

initialization
  RegisterTest(TTestQorCompTreeView);

end.
