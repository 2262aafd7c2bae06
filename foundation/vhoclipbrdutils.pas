{ QorDesign — designed components on the system clipboard (Part 3.3).

  Copy writes each component's binary component stream ("TPF0", as
  TStream.WriteComponent writes it) one after another, with no header, under
  the private format "QOR Components"; paste reads the records back until the
  block ends, places each control one offset step further until no control
  of the paste parent stands exactly at its corner, and inserts it into the
  owner. A record that cannot be read or inserted is skipped; the rest are
  still read.

  LCL mapping (PLATFORM.md): RegisterClipboardFormat is
  ClipboardRegisterFormat, asked on first use (the widgetset is not there
  yet when the unit starts); SetBuffer is Clear + AddFormat between Open and
  Close; GlobalLock/GlobalSize are GetFormat into a memory stream, without
  Open (the LCL's Open means "collect changes": an open clipboard reads its
  own cache only). On X the
  data lives in the copying process while it runs. FPC's
  TReader.ReadRootComponent(nil) neither names the root through OnSetName
  nor gives it Reader.Parent (the VCL's TControl.ReadState does): the root
  control gets the paste parent right after it is read, before it is
  placed, so the placing walk sees it as the Part says. }
unit VhoClipbrdUtils;

{$mode objfpc}{$H+}

interface

uses
  // RTL / FCL
  Classes, SysUtils, Contnrs, Generics.Collections,
  // LCL
  LCLType, LCLIntf, Controls, Clipbrd;

type

  { TVhoClipboard
    The system clipboard with the component records of Part 3.3. }

  TVhoClipboard = class(TClipboard)
  private
    FRenameDuplicates: Boolean;
    procedure WriteWithChildren(Stream: TStream; AComponent: TComponent;
      WithChildren: Boolean);
    function PlaceAndInsert(AComponent, Owner, Parent: TComponent; DX, DY: Integer;
      Index: TObject): Boolean;
    function ReadRecords(Stream: TMemoryStream; Owner, Parent: TComponent;
      DX, DY: Integer): TComponent;
  public
    { Writes the listed components (with their child controls, depth first,
      when WithChildren) as the clipboard's whole content; an empty list
      leaves the clipboard as it was. }
    procedure SetComponents(Components: TComponentList; WithChildren: Boolean);
    { Reads every record, puts each control under Parent shifted by (DX, DY)
      steps off any control at its corner, inserts into Owner; the last
      component read, or nil when the clipboard holds none. }
    function GetComponents(Owner, Parent: TComponent; DX, DY: Integer): TComponent;
    { Not in the Part (names are kept there): a pasted root whose name Owner
      already has gets GetCompUniqueID's name instead of being skipped. The
      design center sets it, since its paste "names them uniquely". }
    property RenameDuplicates: Boolean read FRenameDuplicates write FRenameDuplicates;
  end;

{ The clipboard format "QOR Components": the same number in every program
  that registers the name. }
function CF_QorComponents: TClipboardFormat;

{ The single clipboard object, made on first call, freed at unit shutdown. }
function VhoClipboard: TVhoClipboard;

implementation

uses
  // ours
  VhoSysUtils;

var
  GClipboard: TVhoClipboard;
  GFormat: TClipboardFormat;

function CF_QorComponents: TClipboardFormat;
begin
  if GFormat = 0 then
    GFormat := ClipboardRegisterFormat('QOR Components');
  Result := GFormat;
end;

function VhoClipboard: TVhoClipboard;
begin
  if GClipboard = nil then
    GClipboard := TVhoClipboard.Create;
  Result := GClipboard;
end;

{************ TVhoClipboard }

procedure TVhoClipboard.WriteWithChildren(Stream: TStream; AComponent: TComponent;
  WithChildren: Boolean);
var
  I: Integer;
begin
  Stream.WriteComponent(AComponent);
  if WithChildren and (AComponent is TWinControl) then
    for I := 0 to TWinControl(AComponent).ControlCount - 1 do
      WriteWithChildren(Stream, TWinControl(AComponent).Controls[I], True);
end;

procedure TVhoClipboard.SetComponents(Components: TComponentList; WithChildren: Boolean);
var
  Stream: TMemoryStream;
  I: Integer;
begin
  if (Components = nil) or (Components.Count = 0) then
    Exit;
  Stream := TMemoryStream.Create;
  try
    Stream.Position := 0;
    for I := 0 to Components.Count - 1 do
      WriteWithChildren(Stream, Components[I], WithChildren);
    Stream.Position := 0;
    // SetBuffer of the Part: the whole clipboard content is replaced.
    Open;
    try
      Clear;
      AddFormat(CF_QorComponents, Stream);
    finally
      Close;
    end;
  finally
    Stream.Free;
  end;
end;

{ TPasteIndex
  What the placing walk and the name check ask of the paste parent and the
  owner, kept for one paste: the corners of the parent's controls (how many
  stand at each) and the owner's component names. The Part scans the
  parent's controls at every step and FindComponent scans the owner's
  components: quadratic for a paste of a thousand components onto a
  thousand. The answers are the same: while the paste runs the parent does
  not align (GetComponents disables it), so only the pasted control moves.
  The sets grow with their content: FPC's string hash table has a fixed
  size of 196,613 buckets, whose allocation and release cost a paste of a
  thousand components a quarter of its time. }

type
  TCornerMap = specialize TDictionary<Int64, Integer>;
  TNameSet = specialize THashSet<string>;

  TPasteIndex = class
  private
    FCorners: TCornerMap;
    FNames: TNameSet;
  public
    constructor Create(Owner, Parent: TComponent);
    destructor Destroy; override;
    procedure AddCorner(L, T: Integer);
    procedure RemoveCorner(L, T: Integer);
    function HasCorner(L, T: Integer): Boolean;
    function TakeName(const AName: string): Boolean;
    procedure ReleaseName(const AName: string);
  end;

function CornerKey(L, T: Integer): Int64; inline;
begin
  Result := (Int64(L) shl 32) or Int64(Cardinal(T));
end;

constructor TPasteIndex.Create(Owner, Parent: TComponent);
var
  I: Integer;
begin
  inherited Create;
  FCorners := TCornerMap.Create;
  FNames := TNameSet.Create;
  if Parent is TWinControl then
    for I := 0 to TWinControl(Parent).ControlCount - 1 do
      AddCorner(TWinControl(Parent).Controls[I].Left, TWinControl(Parent).Controls[I].Top);
  if Owner <> nil then
    for I := 0 to Owner.ComponentCount - 1 do
      TakeName(Owner.Components[I].Name);
end;

destructor TPasteIndex.Destroy;
begin
  FNames.Free;
  FCorners.Free;
  inherited Destroy;
end;

procedure TPasteIndex.AddCorner(L, T: Integer);
var
  N: Integer;
begin
  if FCorners.TryGetValue(CornerKey(L, T), N) then
    FCorners[CornerKey(L, T)] := N + 1
  else
    FCorners.Add(CornerKey(L, T), 1);
end;

procedure TPasteIndex.RemoveCorner(L, T: Integer);
var
  N: Integer;
begin
  if not FCorners.TryGetValue(CornerKey(L, T), N) then
    Exit;
  if N > 1 then
    FCorners[CornerKey(L, T)] := N - 1
  else
    FCorners.Remove(CornerKey(L, T));
end;

function TPasteIndex.HasCorner(L, T: Integer): Boolean;
begin
  Result := FCorners.ContainsKey(CornerKey(L, T));
end;

{ Component names are identifiers (ASCII), compared without case as
  FindComponent does. False when the name was taken already. }
function TPasteIndex.TakeName(const AName: string): Boolean;
begin
  Result := FNames.Add(UpperCase(AName));
end;

procedure TPasteIndex.ReleaseName(const AName: string);
begin
  FNames.Remove(UpperCase(AName));
end;

{ Step 3 and 4 of the Part's read loop; false when the component had to be
  freed (placing or inserting raised). }
function TVhoClipboard.PlaceAndInsert(AComponent, Owner, Parent: TComponent;
  DX, DY: Integer; Index: TObject): Boolean;
var
  L, T, L0, T0: Integer;
  Host: TWinControl;
  Found, Placed: Boolean;
  Caption: TCaption;
  Idx: TPasteIndex;
  TakenName: string;
begin
  Result := True;
  Idx := TPasteIndex(Index);
  Placed := False;
  TakenName := '';
  try
    if (AComponent is TControl) and (Parent is TWinControl) then
    begin
      Host := TWinControl(Parent);
      L0 := TControl(AComponent).Left;
      T0 := TControl(AComponent).Top;
      L := L0;
      T := T0;
      // The walk includes the pasted control at its stored place (the Part
      // makes it a child first), so it always moves at least one step. It
      // joins the parent once placed, which spares the parent a move of its
      // new child.
      repeat
        Found := ((L = L0) and (T = T0)) or Idx.HasCorner(L, T);
        if Found then
        begin
          Inc(L, DX);
          Inc(T, DY);
        end;
      // With no offset the walk would never end (the control stands at its
      // own corner): one look is all it gets.
      until not Found or ((DX = 0) and (DY = 0));
      TControl(AComponent).SetBounds(L, T, TControl(AComponent).Width,
        TControl(AComponent).Height);
      TControl(AComponent).Parent := Host;
      L0 := TControl(AComponent).Left;
      T0 := TControl(AComponent).Top;
      Idx.AddCorner(L0, T0);
      Placed := True;
    end;
    if Owner <> nil then
    begin
      if (AComponent.Name <> '') and not Idx.TakeName(AComponent.Name) then
      begin
        // FPC's InsertComponent lets a second component of a name in; the
        // VCL's refuses it, and the Part skips such a component.
        if not FRenameDuplicates then
          raise EComponentError.CreateFmt('Duplicate name: A component named "%s" already exists',
            [AComponent.Name]);
        // Renaming a control whose caption is its name would rename the
        // caption too: the copy keeps the caption it was copied with.
        if AComponent is TControl then
        begin
          Caption := TControl(AComponent).Caption;
          AComponent.Name := GetCompUniqueID(AComponent.ClassType, Owner);
          TControl(AComponent).Caption := Caption;
        end
        else
          AComponent.Name := GetCompUniqueID(AComponent.ClassType, Owner);
        Idx.TakeName(AComponent.Name);
      end;
      TakenName := AComponent.Name;
      Owner.InsertComponent(AComponent);
    end;
  except
    if Placed then
      Idx.RemoveCorner(L0, T0);
    if TakenName <> '' then
      Idx.ReleaseName(TakenName);
    AComponent.Free;
    Result := False;
  end;
end;

{ The offset of the next "TPF0" at or after From, or the stream's size. }
function NextSignature(Stream: TMemoryStream; From: Int64): Int64;
const
  Sig: array[0..3] of Char = ('T', 'P', 'F', '0');
var
  P: PChar;
  I: Int64;
begin
  P := PChar(Stream.Memory);
  I := From;
  while I <= Stream.Size - 4 do
  begin
    if (P[I] = Sig[0]) and (P[I + 1] = Sig[1]) and (P[I + 2] = Sig[2]) and (P[I + 3] = Sig[3]) then
      Exit(I);
    Inc(I);
  end;
  Result := Stream.Size;
end;

{ Reads the records one by one (Part 3.3). }
function TVhoClipboard.ReadRecords(Stream: TMemoryStream; Owner, Parent: TComponent;
  DX, DY: Integer): TComponent;
var
  Reader: TReader;
  Component: TComponent;
  Start: Int64;
  Index: TPasteIndex;
begin
  Result := nil;
  Index := TPasteIndex.Create(Owner, Parent);
  try
    while Stream.Position < Stream.Size do
    begin
      Start := Stream.Position;
      Component := nil;
      Reader := TReader.Create(Stream, 4096);
      try
        Reader.Parent := Parent;
        try
          Component := Reader.ReadRootComponent(nil);
        except
          // A record that cannot be read is skipped (Part 3.3).
          Component := nil;
        end;
      finally
        // Freeing the reader puts the stream back where reading stopped.
        Reader.Free;
      end;
      if Component = nil then
        // The next record is where the next signature is: the failed one
        // may have stopped anywhere inside itself (Part 3.3 lets later
        // records fail then; finding them pastes what can be read).
        Stream.Position := NextSignature(Stream, Start + 1)
      else if PlaceAndInsert(Component, Owner, Parent, DX, DY, Index) then
        Result := Component;
    end;
  finally
    Index.Free;
  end;
end;

function TVhoClipboard.GetComponents(Owner, Parent: TComponent; DX, DY: Integer): TComponent;
var
  Stream: TMemoryStream;
begin
  Result := nil;
  Stream := TMemoryStream.Create;
  try
    // No Open here: an open LCL clipboard answers from its own cache only,
    // and another program's data would never be seen.
    if not HasFormat(CF_QorComponents) or not GetFormat(CF_QorComponents, Stream) then
      Exit;
    Stream.Position := 0;
    // One layout pass for the whole paste, not one per pasted control (the
    // LCL re-aligns and re-sizes the parent at each new child).
    if Parent is TWinControl then
    begin
      TWinControl(Parent).DisableAutoSizing;
      TWinControl(Parent).DisableAlign;
    end;
    try
      Result := ReadRecords(Stream, Owner, Parent, DX, DY);
    finally
      if Parent is TWinControl then
      begin
        TWinControl(Parent).EnableAlign;
        TWinControl(Parent).EnableAutoSizing;
      end;
    end;
  finally
    Stream.Free;
  end;
end;

finalization
  FreeAndNil(GClipboard);
end.
