{ QorDesign tests — Part 5.2, the designer that Lazarus' property editors
  and component editors use at run time: the Part's edge cases, names,
  selection and hook answers, and real component editors (a page control's
  "add page" verb, a string grid's editor dialog) run against the stage. }
unit TestDesignIntf;

{$mode objfpc}{$H+}
{$modeswitch nestedprocvars}

interface

uses
  // RTL / FCL
  Classes, SysUtils, Contnrs, fpcunit, testregistry,
  // LCL
  Controls, StdCtrls, ExtCtrls, ComCtrls, Grids, Forms, ImgList,
  // IDEIntf
  PropEditUtils, PropEdits, ComponentEditors,
  // ours
  QorGuiTest, QorDesigner, QorDesignConsole, VhoDesignIntfImpls, QorDesignIntfImpls,
  TestDesignSurface;

type

  { TTestDesignIntf }

  TTestDesignIntf = class(TQorSurfaceTestCase)
  private
    D: TQorFormDesigner;
    FTimer: TTimer;
    FDialogSeen: string;
    procedure CloseDialog(Sender: TObject);
  protected
    procedure SetUp; override;
    procedure TearDown; override;
  published
    procedure TestGetRootWithAnEmptySelectionIsNoneAndRootClassNameEmpty;
    procedure TestNoSelectionWithASelectedButtonDeletesTheButton;
    procedure TestIsComponentHiddenTrueForControlsFalseForNonVisual;
    procedure TestCreateComponentWithNoDesignStageCreatesNothing;
    procedure TestCreateComponentNamesItAndPutsItOnTheStage;
    procedure TestSelectOnlyThisComponentReplacesTheCentersListSilently;
    procedure TestUniqueNamesFromBaseAndFromClassName;
    procedure TestHookAnswersComponentsNamesAndTheSelection;
    procedure TestGetSelectedComponentOnlyForASingleSelection;
    procedure TestPageControlEditorAddPageVerbAddsANamedPageOnTheStage;
    procedure TestStringGridEditorOpensItsDialog;
    procedure TestListViewAndImageListEditorsOpenTheirDialogs;
    procedure TestDeleteAndClearSelectionGoThroughTheManager;
  end;

implementation

procedure TTestDesignIntf.SetUp;
begin
  inherited SetUp;
  RegisterClasses([TPanel, TButton, TLabel, TEdit, TMemo, TCheckBox]);
  StartDesigning;
  D := TQorFormDesigner.Create(Manager);
end;

procedure TTestDesignIntf.TearDown;
begin
  FreeAndNil(FTimer);
  FreeAndNil(D);
  inherited TearDown;
end;

procedure TTestDesignIntf.CloseDialog(Sender: TObject);
var
  I: Integer;
  F: TCustomForm;
begin
  for I := 0 to Screen.CustomFormCount - 1 do
  begin
    F := Screen.CustomForms[I];
    if (fsModal in F.FormState) and F.Visible then
    begin
      FDialogSeen := F.ClassName;
      F.ModalResult := mrCancel;
      FTimer.Enabled := False;
      Exit;
    end;
  end;
end;

procedure TTestDesignIntf.TestGetRootWithAnEmptySelectionIsNoneAndRootClassNameEmpty;
var
  Loose: TVhoDesigner;
begin
  Manager.SelectedComps.Clear;
  AssertNull('no root', D.GetRoot);
  AssertEquals('no class name', '', D.GetRootClassName);
  Loose := TVhoDesigner.Create(nil);
  try
    AssertNull('no manager: no root', Loose.GetRoot);
    AssertEquals('no manager: no class name', '', Loose.GetRootClassName);
  finally
    Loose.Free;
  end;
  SelectOnly([Button2]);
  AssertSame('the first selected, not the stage', Button2, D.GetRoot);
  AssertEquals('its class', 'TButton', D.GetRootClassName);
end;

procedure TTestDesignIntf.TestNoSelectionWithASelectedButtonDeletesTheButton;
begin
  SelectOnly([Button2]);
  D.NoSelection;
  DrainMessages(50);
  AssertNull('deleted, not deselected', Stage.FindComponent('Button2'));
  Button2 := nil;
end;

procedure TTestDesignIntf.TestIsComponentHiddenTrueForControlsFalseForNonVisual;
var
  NonVisual: TComponent;
begin
  NonVisual := TComponent.Create(Stage);
  AssertTrue('a button', D.IsComponentHidden(Button2));
  AssertTrue('a label', D.IsComponentHidden(PanelLabel));
  AssertTrue('the stage', D.IsComponentHidden(Stage));
  AssertFalse('a non-visual component', D.IsComponentHidden(NonVisual));
  AssertFalse('the manager', D.IsComponentHidden(Manager));
end;

procedure TTestDesignIntf.TestCreateComponentWithNoDesignStageCreatesNothing;
var
  Loose: TVhoDesigner;
  M: TQorDesignManager;
begin
  Loose := TVhoDesigner.Create(nil);
  M := TQorDesignManager.Create(nil);
  try
    AssertNull('no manager', Loose.CreateComponent(TButton, nil, 1, 2, 30, 20));
    Loose.SetDesignStage(Stage);
    AssertNull('a stage but no manager', Loose.CreateComponent(TButton, nil, 1, 2, 30, 20));
    Loose.SetDesigner(M);
    AssertNull('a manager without a stage', Loose.CreateComponent(TButton, nil, 1, 2, 30, 20));
  finally
    M.Free;
    Loose.Free;
  end;
  AssertNull('no Button4 anywhere', Stage.FindComponent('Button4'));
end;

procedure TTestDesignIntf.TestCreateComponentNamesItAndPutsItOnTheStage;
var
  C, C2: TComponent;
begin
  C := D.CreateComponent(TButton, nil, 11, 22, 33, 44);
  AssertNotNull('created', C);
  AssertEquals('the next free name', 'Button4', C.Name);
  AssertSame('owned by the stage', Stage, C.Owner);
  AssertSame('on the stage', Stage, TControl(C).Parent);
  AssertEquals('left', 11, TControl(C).Left);
  AssertEquals('top', 22, TControl(C).Top);
  AssertEquals('width', 33, TControl(C).Width);
  AssertEquals('height', 44, TControl(C).Height);
  // The Parent argument owns it; the stage still parents it.
  C2 := D.CreateComponent(TLabel, Panel, 5, 6, 40, 20);
  AssertSame('owned by the given parent', Panel, C2.Owner);
  AssertSame('parented by the stage', Stage, TControl(C2).Parent);
end;

procedure TTestDesignIntf.TestSelectOnlyThisComponentReplacesTheCentersListSilently;
var
  Changes: Integer;
begin
  SelectOnly([Button2, Button3]);
  Changes := Manager.SelectedComps.Count;
  D.SelectOnlyThisComponent(Edit);
  AssertEquals('the center holds only Edit1', 1, Center.SelectedComps.Count);
  AssertSame('Edit1', Edit, Center.SelectedComps[0]);
  AssertEquals('nobody told: the manager keeps its own', Changes, Manager.SelectedComps.Count);
  D.SelectOnlyThisComponent(nil);
  AssertEquals('nil: an empty list', 0, Center.SelectedComps.Count);
end;

procedure TTestDesignIntf.TestUniqueNamesFromBaseAndFromClassName;
begin
  AssertEquals('from a base name', 'Button4', D.UniqueName('Button'));
  AssertEquals('from a class name', 'TabSheet1', D.CreateUniqueComponentName('TTabSheet'));
  AssertEquals('Edit taken', 'Edit2', D.CreateUniqueComponentName('TEdit'));
end;

procedure TTestDesignIntf.TestHookAnswersComponentsNamesAndTheSelection;
var
  Sel: TPersistentSelectionList;
begin
  AssertSame('the stage is the lookup root', Stage, D.PropertyEditorHook.LookupRoot);
  AssertSame('a component by name', Panel, D.PropertyEditorHook.GetComponent('Panel1'));
  AssertEquals('a component''s name', 'Button1',
    D.PropertyEditorHook.GetComponentName(PanelButton));
  SelectOnly([Button2, Edit]);
  Sel := TPersistentSelectionList.Create;
  try
    D.PropertyEditorHook.GetSelection(Sel);
    AssertEquals('the manager''s selection', 2, Sel.Count);
    AssertSame('first', Button2, Sel[0]);
    AssertSame('second', Edit, Sel[1]);
  finally
    Sel.Free;
  end;
  AssertTrue('dormant', D.IsDormant);
  AssertNull('no ancestor', D.AncestorDesigner);
  AssertEquals('the program', Application.ExeName, D.GetPathAndBaseExeName);
end;

procedure TTestDesignIntf.TestGetSelectedComponentOnlyForASingleSelection;
begin
  SelectOnly([Button2]);
  AssertSame('one', Button2, D.GetSelectedComponent);
  SelectOnly([Button2, Button3]);
  AssertNull('two', D.GetSelectedComponent);
end;

procedure TTestDesignIntf.TestPageControlEditorAddPageVerbAddsANamedPageOnTheStage;
var
  PC: TPageControl;
  Editor: TBaseComponentEditor;
  Stamp: Int64;
begin
  PC := TPageControl.Create(Stage);
  PC.Name := 'PageControl1';
  PC.Parent := Stage;
  PC.SetBounds(300, 260, 200, 120);
  DrainMessages(50);
  SelectOnly([PC]);
  Stamp := D.ChangeStamp;
  Editor := GetComponentEditor(PC, D);
  try
    AssertNotNull('Lazarus'' page control editor', Editor);
    AssertTrue('it has verbs', Editor.GetVerbCount > 0);
    Editor.ExecuteVerb(0);
  finally
    Editor.Free;
  end;
  AssertEquals('a page added', 1, PC.PageCount);
  // The manager names a nameless newcomer on the stage (TabSheet1, Part
  // 1.5); the editor then asks the designer for the next free name.
  AssertEquals('named by the designer', 'TabSheet2', PC.Pages[0].Name);
  AssertEquals('its caption too', 'TabSheet2', PC.Pages[0].Caption);
  AssertSame('owned by the stage', Stage, PC.Pages[0].Owner);
  AssertTrue('the editor said it modified the design', D.ChangeStamp > Stamp);
end;

procedure TTestDesignIntf.TestStringGridEditorOpensItsDialog;
var
  Grid: TStringGrid;
begin
  Grid := TStringGrid.Create(Stage);
  Grid.Name := 'StringGrid1';
  Grid.Parent := Stage;
  Grid.SetBounds(300, 260, 200, 120);
  DrainMessages(50);
  SelectOnly([Grid]);
  FDialogSeen := '';
  FTimer := TTimer.Create(nil);
  FTimer.Interval := 200;
  FTimer.OnTimer := @CloseDialog;
  FTimer.Enabled := True;
  D.Edit(Grid);
  AssertEquals('the string grid editor dialog came up', 'TStringGridEditorDlg', FDialogSeen);
end;

procedure TTestDesignIntf.TestListViewAndImageListEditorsOpenTheirDialogs;
var
  View: TListView;
  Images: TImageList;

  procedure EditAndWatch(C: TComponent);
  begin
    FDialogSeen := '';
    FreeAndNil(FTimer);
    FTimer := TTimer.Create(nil);
    FTimer.Interval := 200;
    FTimer.OnTimer := @CloseDialog;
    FTimer.Enabled := True;
    D.Edit(C);
  end;

begin
  View := TListView.Create(Stage);
  View.Name := 'ListView1';
  View.Parent := Stage;
  View.SetBounds(300, 260, 200, 120);
  Images := TImageList.Create(Stage);
  Images.Name := 'ImageList1';
  DrainMessages(50);
  SelectOnly([View]);
  EditAndWatch(View);
  AssertTrue('the list view items dialog came up: ' + FDialogSeen, FDialogSeen <> '');
  EditAndWatch(Images);
  AssertTrue('the image list dialog came up: ' + FDialogSeen, FDialogSeen <> '');
end;

procedure TTestDesignIntf.TestDeleteAndClearSelectionGoThroughTheManager;
begin
  SelectOnly([Button3]);
  AssertTrue('copy', D.CopySelection);
  AssertTrue('delete', D.DeleteSelection);
  DrainMessages(50);
  AssertNull('deleted', Stage.FindComponent('Button3'));
  Button3 := nil;
  SelectOnly([Button2]);
  AssertTrue('clear', D.ClearSelection);
  AssertEquals('the stage is selected', 'StageForm', SelNames);
  AssertTrue('paste is possible', D.CanPaste);
  AssertFalse('but goes through the center', D.PasteSelection([]));
end;

initialization
  RegisterTest(TTestDesignIntf);
end.
