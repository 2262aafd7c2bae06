{ QorDesign tests — Part 3.2, component naming and lookup. }
unit TestVhoSysUtils;

{$mode objfpc}{$H+}

interface

uses
  // RTL / FCL
  Classes, SysUtils, Contnrs, fpcunit, testregistry,
  // LCL
  Graphics, Controls, StdCtrls, ExtCtrls, Forms,
  // ours
  VhoSysUtils;

type
  { A component class whose name has no leading "T". }
  QThing = class(TComponent)
  end;

  { One whose leading "t" is lower-case: not stripped. }
  tLowerThing = class(TComponent)
  end;

  { A descendant of TButton: a different class from TButton. }
  TButtonChild = class(TButton)
  end;

  { TTestVhoSysUtils }

  TTestVhoSysUtils = class(TTestCase)
  private
    FOwned: TComponentList;
    function Own(AComponent: TComponent): TComponent;
    function NewForm(const AName: string; AOwner: TComponent): TForm;
  protected
    procedure SetUp; override;
    procedure TearDown; override;
  published
    // Edge cases worth testing
    procedure TestGetUniqueNameOwnersOwnNameCountsAsTaken;
    procedure TestGetCompUniqueIDTimerAndClassWithoutLeadingT;
    procedure TestCompToNSNameEmptyNameGivesNoNameUnderRootAndOtherForm;
    procedure TestCompToNSNameDataModuleOwnerNotRootGivesEmpty;
    procedure TestNSNameToCompFindsFormThenComponentAndFormDotFindsNothing;
    procedure TestGetStrPairValueSplitsAtFirstEquals;
    // Other rules of the Part
    procedure TestCharsets;
    procedure TestCompNameExistsCaseInsensitiveOwnedOrOwner;
    procedure TestCompNameExistsComponentIncludeSelf;
    procedure TestGetUniqueNameFirstFreeNumber;
    procedure TestGetUniqueNameNilOwner;
    procedure TestGetCompUniqueCNNameAlwaysEndsInOne;
    procedure TestCNFunctionsForward;
    procedure TestCompToNSNameStripsDotsAndOwnerRoot;
    procedure TestCompToNSNameNilIsEmpty;
    procedure TestNsNameToNsCnNameAndBack;
    procedure TestNSNameToCompUnknownIsNil;
    procedure TestCnNameToForm;
    procedure TestExtractMainStrFromDetail;
    procedure TestGetStrPairValueWithoutEquals;
    procedure TestGetCommonParentClassOfUnrelatedBranches;
    procedure TestGetCommonParentClassOfRelatedClasses;
    procedure TestGetObjectsParentClass;
    procedure TestControlCountInCompList;
    procedure TestRemoveComponentFromCompListKeepsControlsFreesNothing;
    procedure TestCloneComponentOfSameClassCopiesProperties;
    procedure TestCloneComponentOfDifferentClassesLeavesThemUntouched;
  end;

implementation

procedure TTestVhoSysUtils.SetUp;
begin
  FOwned := TComponentList.Create(True);
end;

procedure TTestVhoSysUtils.TearDown;
begin
  FreeAndNil(FOwned);
end;

function TTestVhoSysUtils.Own(AComponent: TComponent): TComponent;
begin
  FOwned.Add(AComponent);
  Result := AComponent;
end;

function TTestVhoSysUtils.NewForm(const AName: string; AOwner: TComponent): TForm;
begin
  Result := TForm.CreateNew(AOwner);
  Own(Result);
  Result.Name := AName;
end;

procedure TTestVhoSysUtils.TestGetUniqueNameOwnersOwnNameCountsAsTaken;
var
  F: TForm;
begin
  F := NewForm('Edit1', nil);
  AssertEquals(0, F.ComponentCount);
  AssertEquals('Edit2', GetUniqueName('Edit', F));
end;

procedure TTestVhoSysUtils.TestGetCompUniqueIDTimerAndClassWithoutLeadingT;
var
  F: TForm;
  B: TButton;
begin
  F := NewForm('Form1', nil);
  AssertEquals('Timer1', GetCompUniqueID(TTimer, F));
  AssertEquals('QThing1', GetCompUniqueID(QThing, F));
  AssertEquals('a lower-case t is kept', 'tLowerThing1', GetCompUniqueID(tLowerThing, F));
  B := TButton.Create(F);
  B.Name := 'Button1';
  AssertEquals('Button2', GetCompUniqueID(TButton, F));
end;

procedure TTestVhoSysUtils.TestCompToNSNameEmptyNameGivesNoNameUnderRootAndOtherForm;
var
  Root, Form1: TForm;
  C1, C2: TComponent;
begin
  Root := NewForm('Root', nil);
  Form1 := NewForm('Form1', nil);
  C1 := TComponent.Create(Root);
  C2 := TComponent.Create(Form1);
  AssertEquals('owner is the root', '[NoName]', CompToNSName(C1, Root, Root));
  AssertEquals('owner is another form', 'Form1.[NoName]', CompToNSName(C2, Form1, Root));
end;

procedure TTestVhoSysUtils.TestCompToNSNameDataModuleOwnerNotRootGivesEmpty;
var
  Root: TForm;
  DM: TDataModule;
  C: TComponent;
begin
  Root := NewForm('Root', nil);
  DM := TDataModule.CreateNew(nil);
  Own(DM);
  DM.Name := 'DataModule1';
  C := TComponent.Create(DM);
  C.Name := 'Thing1';
  AssertEquals('', CompToNSName(C, DM, Root));
  AssertEquals('but a data module as root names it', 'Thing1', CompToNSName(C, DM, DM));
end;

procedure TTestVhoSysUtils.TestNSNameToCompFindsFormThenComponentAndFormDotFindsNothing;
var
  Form2: TForm;
  B: TButton;
begin
  Form2 := NewForm('Form2', Application);
  B := TButton.Create(Form2);
  B.Name := 'Button1';
  AssertSame('form found among the application''s components', Form2, NSNameToComp('Form2', nil));
  AssertSame('component found in the form', B, NSNameToComp('Form2.Button1', nil));
  AssertNull('Form2. finds nothing', NSNameToComp('Form2.', nil));
  AssertSame('names compare case-insensitively', B, NSNameToComp('form2.button1', nil));
end;

procedure TTestVhoSysUtils.TestGetStrPairValueSplitsAtFirstEquals;
begin
  AssertEquals('b=c', GetStrPairValue('a=b=c', False));
  AssertEquals('Flag is ignored', 'b=c', GetStrPairValue('a=b=c', True));
end;

procedure TTestVhoSysUtils.TestCharsets;
var
  C: AnsiChar;
  N: Integer;
begin
  N := 0;
  for C := #0 to #255 do
    if C in IdentCharset then
      Inc(N);
  AssertEquals('10 digits, 52 letters and "_"', 63, N);
  AssertTrue('_', '_' in IdentCharset);
  AssertFalse('.', '.' in IdentCharset);
  N := 0;
  for C := #0 to #255 do
    if C in SeperatorCharset then
      Inc(N);
  AssertEquals(8, N);
  for C in [' ', '(', ')', ',', '[', ']', '{', '}'] do
    AssertTrue(C, C in SeperatorCharset);
end;

procedure TTestVhoSysUtils.TestCompNameExistsCaseInsensitiveOwnedOrOwner;
var
  F: TForm;
  B: TButton;
begin
  F := NewForm('Form1', nil);
  B := TButton.Create(F);
  B.Name := 'Button1';
  AssertTrue('owned', CompNameExists('Button1', F));
  AssertTrue('case-insensitive', CompNameExists('BUTTON1', F));
  AssertTrue('the owner''s own name', CompNameExists('form1', F));
  AssertFalse('absent', CompNameExists('Button2', F));
  AssertFalse('nil owner', CompNameExists('Button1', nil));
end;

procedure TTestVhoSysUtils.TestCompNameExistsComponentIncludeSelf;
var
  F, G: TForm;
  B, Other: TButton;
begin
  F := NewForm('Form1', nil);
  G := NewForm('Form9', nil);
  B := TButton.Create(F);
  B.Name := 'Button1';
  AssertNull('itself does not count', CompNameExists(B, F, False));
  AssertSame('itself counts with IncludeSelf', B, CompNameExists(B, F, True));
  Other := TButton.Create(G);
  Other.Name := 'button1';
  AssertSame('another component of that name', B, CompNameExists(Other, F, False));
  Other.Name := 'Form1';
  AssertSame('the owner''s name, regardless of IncludeSelf', F, CompNameExists(Other, F, False));
  AssertSame('the owner''s name with IncludeSelf', F, CompNameExists(Other, F, True));
  Other.Name := 'Nothing1';
  AssertNull('no collision', CompNameExists(Other, F, True));
end;

procedure TTestVhoSysUtils.TestGetUniqueNameFirstFreeNumber;
var
  F: TForm;

  procedure Add(const AName: string);
  var
    C: TComponent;
  begin
    C := TComponent.Create(F);
    C.Name := AName;
  end;

begin
  F := NewForm('Form1', nil);
  AssertEquals('Button1', GetUniqueName('Button', F));
  Add('Button1');
  Add('Button2');
  Add('button4');
  Add('Button03');
  Add('Button');
  Add('ButtonX3');
  AssertEquals('Button3', GetUniqueName('Button', F));
  Add('Button3');
  AssertEquals('Button5', GetUniqueName('Button', F));
  AssertEquals('another base', 'Label1', GetUniqueName('Label', F));
end;

procedure TTestVhoSysUtils.TestGetUniqueNameNilOwner;
begin
  AssertEquals('Edit1', GetUniqueName('Edit', nil));
end;

procedure TTestVhoSysUtils.TestGetCompUniqueCNNameAlwaysEndsInOne;
var
  F: TForm;
  B: TButton;
begin
  F := NewForm('Form1', nil);
  B := TButton.Create(F);
  B.Name := 'Button1';
  AssertEquals('no collision test, no counting', 'Button1', GetCompUniqueCNName(TButton, F));
  AssertEquals('QThing1', GetCompUniqueCNName(QThing, F));
end;

procedure TTestVhoSysUtils.TestCNFunctionsForward;
var
  F: TForm;
  B: TButton;
begin
  F := NewForm('Form1', nil);
  B := TButton.Create(F);
  B.Name := 'Button1';
  AssertEquals('GetCompCnName', 'Button1', GetCompCnName(B, nil));
  SetCompCNName(B, F, 'Other');
  AssertEquals('SetCompCNName does nothing', 'Button1', B.Name);
  AssertTrue(CompCNNameExists('button1', F));
  AssertFalse(CompCNNameExists('Button2', F));
  AssertTrue('Comp is ignored', CompCNNameExists(nil, 'Button1', F));
  AssertSame(B, CompCNNameExists(B, F, True));
  AssertNull(CompCNNameExists(B, F, False));
  AssertEquals('Button1', CompToNsCnName(B, F, F));
  AssertSame(B, NsCnNameToComp('Button1', F));
end;

procedure TTestVhoSysUtils.TestCompToNSNameStripsDotsAndOwnerRoot;
var
  Root, Unnamed: TForm;
  B: TButton;
begin
  Root := NewForm('Root', nil);
  Unnamed := NewForm('', nil);
  B := TButton.Create(Unnamed);
  B.Name := 'Button1';
  AssertEquals('the leading dot of an unnamed form is removed', 'Button1', CompToNSName(B, Unnamed, Root));
  AssertEquals('owner as root', 'Button1', CompToNSName(B, Unnamed, Unnamed));
  B.Name := '';
  AssertEquals('[NoName]', CompToNSName(B, Unnamed, Root));
end;

procedure TTestVhoSysUtils.TestCompToNSNameNilIsEmpty;
begin
  AssertEquals('', CompToNSName(nil, nil, nil));
end;

procedure TTestVhoSysUtils.TestNsNameToNsCnNameAndBack;
var
  Form3: TForm;
  B: TButton;
begin
  Form3 := NewForm('Form3', Application);
  B := TButton.Create(Form3);
  B.Name := 'Button7';
  AssertEquals('within its root', 'Button7', NsNameToNsCnName('Button7', Form3));
  AssertEquals('from outside', 'Form3.Button7', NsNameToNsCnName('Form3.Button7', nil));
  AssertEquals('unknown', '', NsNameToNsCnName('Form3.Nothing', nil));
  AssertEquals('Form3.Button7', NsCnNameToNsName('Form3.Button7', nil));
  AssertEquals('Button7', NsCnNameToNsName('Button7', Form3));
end;

procedure TTestVhoSysUtils.TestNSNameToCompUnknownIsNil;
begin
  AssertNull(NSNameToComp('NoSuchForm.Button1', nil));
  AssertNull(NSNameToComp('', nil));
end;

procedure TTestVhoSysUtils.TestCnNameToForm;
var
  Form4: TForm;
begin
  Form4 := NewForm('Form4', Application);
  AssertSame(Form4, CnNameToForm('form4'));
  AssertNull(CnNameToForm('Form404'));
end;

procedure TTestVhoSysUtils.TestExtractMainStrFromDetail;
begin
  AssertEquals('Font', ExtractMainStrFromDetail('Font (TFont)'));
  AssertEquals('starts with a separator', '', ExtractMainStrFromDetail('[a, b]'));
  AssertEquals('no separator', 'Caption', ExtractMainStrFromDetail('Caption'));
  AssertEquals('stops at a brace', 'a', ExtractMainStrFromDetail('a{b}'));
end;

procedure TTestVhoSysUtils.TestGetStrPairValueWithoutEquals;
begin
  AssertEquals('abc', GetStrPairValue('abc', False));
  AssertEquals('', GetStrPairValue('a=', False));
end;

procedure TTestVhoSysUtils.TestGetCommonParentClassOfUnrelatedBranches;
begin
  AssertTrue('button and label share TControl', GetCommonParentClass(TButton, TLabel) = TControl);
  AssertTrue('button and font share TPersistent', GetCommonParentClass(TButton, TFont) = TPersistent);
  AssertTrue('edit and memo share TCustomEdit', GetCommonParentClass(TEdit, TMemo) = TCustomEdit);
end;

procedure TTestVhoSysUtils.TestGetCommonParentClassOfRelatedClasses;
begin
  AssertTrue('same class', GetCommonParentClass(TButton, TButton) = TButton);
  AssertTrue('B descends from A', GetCommonParentClass(TCustomButton, TButton) = TCustomButton);
  AssertTrue('A descends from B', GetCommonParentClass(TButton, TCustomButton) = TCustomButton);
  AssertTrue('nil B', GetCommonParentClass(TButton, nil) = nil);
end;

procedure TTestVhoSysUtils.TestGetObjectsParentClass;
var
  List: TObjectList;
  Owner: TComponent;
begin
  List := TObjectList.Create(False);
  Owner := TComponent.Create(nil);
  try
    AssertTrue('empty', GetObjectsParentClass(List) = nil);
    List.Add(nil);
    List.Add(TButton.Create(Owner));
    AssertTrue('first item nil', GetObjectsParentClass(List) = nil);
    List.Clear;
    List.Add(TButton.Create(Owner));
    AssertTrue('one item', GetObjectsParentClass(List) = TButton);
    List.Add(nil);
    List.Add(TLabel.Create(Owner));
    AssertTrue('nil items skipped', GetObjectsParentClass(List) = TControl);
    List.Add(TFont.Create);
    AssertTrue('folded over all', GetObjectsParentClass(List) = TPersistent);
    List[List.Count - 1].Free;
  finally
    Owner.Free;
    List.Free;
  end;
end;

procedure TTestVhoSysUtils.TestControlCountInCompList;
var
  List: TComponentList;
  Owner: TComponent;
begin
  List := TComponentList.Create(False);
  Owner := TComponent.Create(nil);
  try
    AssertEquals(0, ControlCountInCompList(List));
    List.Add(TButton.Create(Owner));
    List.Add(TComponent.Create(Owner));
    List.Add(TLabel.Create(Owner));
    AssertEquals(2, ControlCountInCompList(List));
  finally
    Owner.Free;
    List.Free;
  end;
end;

procedure TTestVhoSysUtils.TestRemoveComponentFromCompListKeepsControlsFreesNothing;
var
  List: TComponentList;
  Owner, Plain1, Plain2: TComponent;
  B, L: TControl;
begin
  List := TComponentList.Create(False);
  Owner := TComponent.Create(nil);
  try
    Plain1 := TComponent.Create(Owner);
    B := TButton.Create(Owner);
    Plain2 := TComponent.Create(Owner);
    L := TLabel.Create(Owner);
    List.Add(Plain1);
    List.Add(B);
    List.Add(Plain2);
    List.Add(L);
    RemoveComponentFromCompList(List);
    AssertEquals(2, List.Count);
    AssertSame(B, List[0]);
    AssertSame(L, List[1]);
    AssertEquals('nothing freed', 4, Owner.ComponentCount);
  finally
    Owner.Free;
    List.Free;
  end;
end;

procedure TTestVhoSysUtils.TestCloneComponentOfSameClassCopiesProperties;
var
  Owner: TComponent;
  Source, Dest: TButton;
begin
  Owner := TComponent.Create(nil);
  try
    Source := TButton.Create(Owner);
    Source.Caption := 'Cloned';
    Source.SetBounds(11, 12, 133, 44);
    Source.Tag := 77;
    Dest := TButton.Create(Owner);
    CloneComponent(Source, Dest);
    AssertEquals('Cloned', Dest.Caption);
    AssertEquals(133, Dest.Width);
    AssertEquals(12, Dest.Top);
    AssertEquals(77, Dest.Tag);
  finally
    Owner.Free;
  end;
end;

procedure TTestVhoSysUtils.TestCloneComponentOfDifferentClassesLeavesThemUntouched;
var
  Owner: TComponent;
  Source: TButton;
  Dest: TLabel;
  Sub: TButtonChild;
begin
  Owner := TComponent.Create(nil);
  try
    Source := TButton.Create(Owner);
    Source.Caption := 'Source';
    Source.Tag := 5;
    Dest := TLabel.Create(Owner);
    Dest.Caption := 'Dest';
    CloneComponent(Source, Dest);
    AssertEquals('label untouched', 'Dest', Dest.Caption);
    AssertEquals('label tag untouched', 0, Dest.Tag);
    AssertEquals('source untouched', 'Source', Source.Caption);
    // A descendant is a different class too.
    Sub := TButtonChild.Create(Owner);
    CloneComponent(Source, Sub);
    AssertEquals(0, Sub.Tag);
  finally
    Owner.Free;
  end;
end;

initialization
  RegisterTest(TTestVhoSysUtils);
end.
