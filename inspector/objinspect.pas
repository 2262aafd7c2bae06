{ QorDesign — the object inspector.

  Part 2.1 (property details and value text, objpropdetail.inc): the free
  functions that read and write a published property as text for one object
  or several, TPropertyDetail, TPropertyDetailEx, TSetItemConst and the row
  indent.
  Part 2.4 (designer selections): TQorDesignerSelections on IDEIntf's
  TPersistentSelectionList (PLATFORM.md), the selection the property editors
  are enumerated for.
  Part 2.2 (property lists, objproplist.inc): the rows of the grid, with
  IDEIntf's property editors attached (GetPersistentProperties with a
  TPropertyEditorHook), their filters, nesting and output lines.
  Part 2.3 (inspector control, objinspector.inc): TVhoValueListEditor,
  TVhoObjInspector and TQorObjInspector on the LCL's TValueListEditor.

  Values are read and written through FPC's TypInfo by property name; the
  display texts of enumerations, components and classes pass through the
  translation entry points of Part 4.3 (ObjTranslate).

  Sections:
    - Shared types
    - Property details (Part 2.1)
    - Designer selections (Part 2.4)
    - Property lists (Part 2.2)
    - Inspector control (Part 2.3) }
unit ObjInspect;

{$mode objfpc}{$H+}

interface

uses
  // RTL / FCL
  Classes, SysUtils, TypInfo, Contnrs, Variants,
  // LCL
  LCLType, LMessages, Graphics, Controls, StdCtrls, Forms, Grids, ValEdit,
  // IDEIntf
  PropEditUtils, PropEdits,
  // ours
  VhoRTTI, VhoSysUtils, ObjTranslate, QorTransUtils;

{************ Shared types }

type
  TPropertyFilterStyle = (pfProperty, pfEvent);
  TPropertyFilterStyles = set of TPropertyFilterStyle;

  { Maps Src (an identifier or a label, by role) to Dest, which arrives
    holding Src (Part 2.2). }
  TRttiTranslateEvent = procedure(Sender: TObject; PTI: PTypeInfo; const Src: string;
    TransRole: TTransRole; var Dest: string) of object;

  TPropChangedEvent = procedure(Sender: TObject; const PropName: string) of object;

{************ Property details (Part 2.1) }

  TPropertyDetailEx = class;

  { TPropertyDetail
    One published property of one object, or of several edited at once
    (BasedObjects, not owned; BasedObject is then the first of them). }

  TPropertyDetail = class(TObject)
  private
    FPropInfoRef: PPropInfo;
    FBasedObject: TObject;
    FClassInformation: TClassInformation;
    FClassInfoStale: Boolean; // RefreshClassInformation's work is due
    FBasedObjects: TObjectList;
    function GetClassInformation: TClassInformation;
  protected
    { The Part 2.1 write, dispatched between one object and several. }
    procedure WriteValueStr(const Value: string);
  public
    constructor Create(AObject: TObject; const APropName: string); overload;
    constructor Create(AObject: TObject; APropInfo: PPropInfo); overload;
    constructor Create(AObjects: TObjectList; APropInfo: PPropInfo); overload;
    destructor Destroy; override;
    function GetPropValueStr: string; virtual;
    procedure SetPropValueStr(const Value: string); virtual;
    procedure RefreshClassInformation; virtual;
    procedure Refresh; virtual;
    function GetBasedObject: TObject;
    function GetPropInfoRef: PPropInfo;
    function GetPropName: string;
    function GetPropTypeInfoRef: PTypeInfo;
    function GetPropValueObject: TObject;
    procedure SetPropValueObject(Value: TObject);
    procedure SetBasedObject(Value: TObject);
    procedure SetBasedObjects(Value: TObjectList);
    procedure SetPropInfoRef(Value: PPropInfo);
    procedure SetPropName(const Value: string);
    property PropInfoRef: PPropInfo read FPropInfoRef write SetPropInfoRef;
    property BasedObject: TObject read FBasedObject write SetBasedObject;
    property ClassInformation: TClassInformation read GetClassInformation;
    property BasedObjects: TObjectList read FBasedObjects write SetBasedObjects;
    property PropName: string read GetPropName write SetPropName;
  end;

  { TPropertyDetailEx
    Adds the enumeration information of the property's enumeration-like type
    or of its set's element type. }

  TPropertyDetailEx = class(TPropertyDetail)
  private
    FEnumInformation: TEnumInformation;
  public
    constructor Create(AObject: TObject; const APropName: string); overload;
    constructor Create(AObject: TObject; APropInfo: PPropInfo); overload;
    destructor Destroy; override;
    procedure Refresh; override;
    function GetEnumInformation: TEnumInformation;
    property EnumInformation: TEnumInformation read FEnumInformation;
  end;

  { TSetItemConst
    One element of a set-typed property. }

  TSetItemConst = class(TObject)
  private
    FBasedProperty: TPropertyDetailEx;
    FEnumIndex: Integer;
  public
    constructor Create(ABasedProperty: TPropertyDetailEx; AEnumIndex: Integer);
    procedure SetBasedProperty(Value: TPropertyDetailEx);
    procedure SetEnumIndex(Value: Integer);
    function GetEnumInformation: TEnumInformation;
    function GetValueString: string;
    { The element occurs in the set's text (a substring test, Part 2.2). }
    function IsIncludedIn(const SetText: string): Boolean;
    property BasedProperty: TPropertyDetailEx read FBasedProperty write SetBasedProperty;
    property EnumIndex: Integer read FEnumIndex write SetEnumIndex;
  end;

function GetPropertyValueStr(AObject: TObject; PropInfo: PPropInfo): string; overload;
function GetPropertyValueStr(Objects: TObjectList; PropInfo: PPropInfo): string; overload;
procedure SetPropertyValueStr(AObject: TObject; PropInfo: PPropInfo; const Value: string); overload;
procedure SetPropertyValueStr(Objects: TObjectList; PropInfo: PPropInfo; const Value: string); overload;
function GetPropertyValueObj(AObject: TObject; PropInfo: PPropInfo): TObject; overload;
function GetPropertyValueObj(Objects: TObjectList; PropInfo: PPropInfo): TObject; overload;
procedure SetPropertyValueObj(AObject: TObject; PropInfo: PPropInfo; Value: TObject); overload;
procedure SetPropertyValueObj(Objects: TObjectList; PropInfo: PPropInfo; Value: TObject); overload;
function ChangeSetValueStr(SetItem: TSetItemConst; Include: Boolean): Boolean;
function GetObjInspecIndentStr(Level: Integer; Expandable, Expanded: Boolean): string;

{************ Designer selections (Part 2.4) }

type
  { TQorDesignerSelections
    IDEIntf's selection list with Add and Equals callable on the object. }

  TQorDesignerSelections = class(TPersistentSelectionList)
  public
    function Add(APersistent: TPersistent): Integer;
    function Equals(Selections: TPersistentSelectionList): Boolean; reintroduce; overload;
  end;

{ A selection of the persistent objects of Objects, in list order (other
  objects and empty entries are skipped); the caller frees it. }
function BuildDesignerSelections(Objects: TObjectList): TQorDesignerSelections;

{************ Property lists (Part 2.2) }

type
  TObjInspecPropListEx = class;
  TObjInspecPropertyItem = class;
  TVhoObjInspector = class;

  { TObjInspecList
    The rows of one level of the inspector, with the label mapping they
    share. Its output methods do nothing; the lists below fill them in. }

  TObjInspecList = class(TList)
  private
    FOnTranslateToIdent: TRttiTranslateEvent;
    FOnTranslateIdent: TRttiTranslateEvent;
    FValueListStrings: TStrings;
    FLevel: Integer;
    FAutoUpdateOutput: Boolean;
    FUpperList: TObjInspecList;
    FTranslate: Boolean;
  public
    procedure AppendToStrings(Strings: TStrings); virtual;
    function IdentToLabel(PTI: PTypeInfo; const Ident: string; Role: TTransRole): string; virtual;
    function LabelToIdent(PTI: PTypeInfo; const ALabel: string; Role: TTransRole): string; virtual;
    procedure UpdateOutputList; virtual;
    procedure AppendToValueListStrings; virtual;
    procedure CopyDetailsFrom(AList: TObjInspecList); virtual;
    procedure CopyDetailFromUpperLevel(AList: TObjInspecList); virtual;
    procedure SetOnTranslateIdent(Value: TRttiTranslateEvent);
    procedure SetOnTranslateToIdent(Value: TRttiTranslateEvent);
    procedure SetValueListStrings(Value: TStrings);
    procedure SetAutoUpdateOutput(Value: Boolean);
    procedure SetTranslate(Value: Boolean);
    property OnTranslateToIdent: TRttiTranslateEvent read FOnTranslateToIdent write SetOnTranslateToIdent;
    property OnTranslateIdent: TRttiTranslateEvent read FOnTranslateIdent write SetOnTranslateIdent;
    property ValueListStrings: TStrings read FValueListStrings write SetValueListStrings;
    property Level: Integer read FLevel write FLevel;
    property AutoUpdateOutput: Boolean read FAutoUpdateOutput write SetAutoUpdateOutput;
    property UpperList: TObjInspecList read FUpperList write FUpperList;
    property Translate: Boolean read FTranslate write SetTranslate;
  end;

  { TObjInspecPropList
    One row per published property that every based object has, each with
    IDEIntf's property editor for it when ListPropEditors is set. The
    editors are created against PropertyHook (Part 5.2 gives the designer's;
    without one the list makes its own, looking up from the owner object). }

  TObjInspecPropList = class(TObjInspecList)
  private
    FClassInformation: TClassInformation;
    FOwnerObject: TComponent;
    FBasedObjects: TObjectList;
    FListPropEditors: Boolean;
    FOwnerObjects: TComponentList;
    FPropertyHook: TPropertyEditorHook;
    FOwnHook: TPropertyEditorHook;
    function GetPropertyItems(Index: Integer): TObjInspecPropertyItem;
    procedure SetPropertyItems(Index: Integer; Value: TObjInspecPropertyItem);
    function GetPropertyHook: TPropertyEditorHook;
    procedure SetPropertyHook(Value: TPropertyEditorHook);
  protected
    { The type kinds ListAllPropEditors asks IDEIntf editors for. }
    function EditorKinds: TTypeKinds; virtual;
  public
    constructor Create(ABasedObject: TObject; AListPropEditors: Boolean); virtual;
    destructor Destroy; override;
    procedure Clear; override;
    procedure SetBasedObject(Value: TObject); virtual;
    procedure ListAllProps; virtual;
    procedure ListAllPropEditors; virtual;
    procedure UpdateList; virtual;
    procedure UpdateOwnerObject; virtual;
    function GetBasedObject: TObject;
    function IndexOfPropInfo(PropInfo: PPropInfo): Integer;
    function IndexOfPropName(const AName: string): Integer;
    function GetPropItemsByInfo(PropInfo: PPropInfo): TObjInspecPropertyItem;
    function GetPropItemsByName(const AName: string): TObjInspecPropertyItem;
    procedure SetPropItemsByInfo(PropInfo: PPropInfo; Value: TObjInspecPropertyItem);
    procedure SetPropItemsByName(const AName: string; Value: TObjInspecPropertyItem);
    procedure SetBasedObjects(Value: TObjectList);
    procedure SetOwnerObject(Value: TComponent);
    procedure SetOwnerObjects(Value: TComponentList);
    procedure AddObjectToOwnerObjects(AComponent: TComponent; ToFront: Boolean);
    procedure ClearOwnerObjects;
    function GetOwnerObject: TComponent;
    { The callback given to GetPersistentProperties: the editor goes to the
      row of its property and is owned by it; without a row it is freed. }
    procedure GetPropEditor(Prop: TPropertyEditor);
    procedure GetPropEditors(Prop: TPropertyEditor);
    property PropertyItems[Index: Integer]: TObjInspecPropertyItem read GetPropertyItems
      write SetPropertyItems; default;
    property ClassInformation: TClassInformation read FClassInformation;
    property OwnerObject: TComponent read GetOwnerObject write SetOwnerObject;
    property BasedObjects: TObjectList read FBasedObjects;
    property ListPropEditors: Boolean read FListPropEditors;
    property OwnerObjects: TComponentList read FOwnerObjects;
    property PropertyHook: TPropertyEditorHook read GetPropertyHook write SetPropertyHook;
  end;

  { TObjInspecPropListEx
    Decides which rows are shown and writes them as name=value lines. }

  TObjInspecPropListEx = class(TObjInspecPropList)
  private
    FFillDepth: Integer;
    FPropertyFilterStyles: TPropertyFilterStyles;
    FEnumValues: TStringList;
    FInspector: TVhoObjInspector;
    FConcealedPropNames: TStringList;
    FOutputEventNames: TStringList;
    FOutputPropNames: TStringList;
    FConcealedEventNames: TStringList;
    function GetFilling: Boolean;
  protected
    function EditorKinds: TTypeKinds; override;
  public
    { Edit style, pick list and read-only flag of grid line LineIndex,
      showing Item (Part 2.2, item properties of a line). }
    procedure SetLineItemProps(LineIndex: Integer; Item: TObjInspecPropertyItem);
    { The pick list of a pick-list line showing Item, filled when the line's
      editor opens (SetLineItemProps leaves it empty). }
    procedure FillLinePickList(Item: TObjInspecPropertyItem; Pick: TStrings);
    constructor Create(ABasedObject: TObject; AListPropEditors: Boolean); override;
    destructor Destroy; override;
    function CheckIfOutputThisProp(Item: TObjInspecPropertyItem): Boolean; virtual;
    procedure AppendToStrings(Strings: TStrings); override;
    function IdentToLabel(PTI: PTypeInfo; const Ident: string; Role: TTransRole): string; override;
    function LabelToIdent(PTI: PTypeInfo; const ALabel: string; Role: TTransRole): string; override;
    procedure UpdateOutputList; override;
    procedure AppendToValueListStrings; override;
    procedure CopyDetailsFrom(AList: TObjInspecList); override;
    procedure CopyDetailFromUpperLevel(AList: TObjInspecList); override;
    procedure SetBasedObject(Value: TObject); override;
    procedure StartFillList;
    procedure EndFillList;
    procedure CreateOutputInspecStringList;
    procedure AppendOutputInspecStringList;
    function GetIndentStrs(Index: Integer): string;
    function GetPropNameDisplayLabels(Index: Integer): string;
    function GetPropertyItemsByLabel(const ALabel: string): TObjInspecPropertyItem;
    procedure SetPropertyItemsByLabel(const ALabel: string; Value: TObjInspecPropertyItem);
    procedure GetPropEditorEnumValues(const Value: string);
    procedure SetPropertyFilterStyles(Value: TPropertyFilterStyles);
    procedure SetConcealedPropNames(Value: TStringList);
    procedure SetOutputEventNames(Value: TStringList);
    procedure SetOutputPropNames(Value: TStringList);
    procedure SetConcealedEventNames(Value: TStringList);
    property Filling: Boolean read GetFilling;
    property PropertyFilterStyles: TPropertyFilterStyles read FPropertyFilterStyles
      write SetPropertyFilterStyles;
    property EnumValues: TStringList read FEnumValues;
    property Inspector: TVhoObjInspector read FInspector write FInspector;
    property ConcealedPropNames: TStringList read FConcealedPropNames write SetConcealedPropNames;
    property OutputEventNames: TStringList read FOutputEventNames write SetOutputEventNames;
    property OutputPropNames: TStringList read FOutputPropNames write SetOutputPropNames;
    property ConcealedEventNames: TStringList read FConcealedEventNames write SetConcealedEventNames;
  end;

  { TObjInspecPropertyItem
    One row: a property of the based objects, its editor, the identifiers
    offered for its value and, when expanded, its nested list. }

  TObjInspecPropertyItem = class(TPropertyDetailEx)
  private
    FSubList: TObjInspecList;
    FExpanded: Boolean;
    FValueList: TStringList;
    FValueListStale: Boolean; // FillValueList is due when ValueList is read
    FOwnerObject: TComponent;
    FOwnerObjects: TComponentList;
    FPropList: TObjInspecPropListEx;
    FPropEditor: TPropertyEditor;
    procedure SetPropEditor(Value: TPropertyEditor);
    procedure FillValueList;
  public
    constructor Create(AObject: TObject; const APropName: string); overload;
    constructor Create(AObject: TObject; APropInfo: PPropInfo); overload;
    destructor Destroy; override;
    function GetPropValueStr: string; override;
    procedure SetPropValueStr(const Value: string); override;
    procedure Refresh; override;
    procedure RefreshEx(UpdateOutput: Boolean); virtual;
    function GetExpandable: Boolean;
    function GetExpanded: Boolean;
    procedure SetExpanded(Value: Boolean);
    function GetHasValueList: Boolean;
    function GetOwnerObject: TComponent;
    procedure SetOwnerObject(Value: TComponent);
    function GetOwnerObjects: TComponentList;
    procedure SetOwnerObjects(Value: TComponentList);
    procedure SetObjInspecPropList(Value: TObjInspecPropListEx);
    procedure SetValueList(Value: TStringList);
    function GetValueList: TStringList;
    function IsEvent: Boolean;
    { The value the row shows, before label mapping (Part 2.2, output line
      step 2); several objects that disagree show an empty text. }
    function GetShownValue: string;
    { The row reads and writes through its editor: it has one and is not a
      class-typed row with a value list (Parts 2.2 and 2.3). }
    function UsesPropEditor: Boolean;
    property SubList: TObjInspecList read FSubList;
    property Expanded: Boolean read GetExpanded write SetExpanded;
    property Expandable: Boolean read GetExpandable;
    property HasValueList: Boolean read GetHasValueList;
    property ValueList: TStringList read GetValueList write SetValueList;
    property OwnerObject: TComponent read GetOwnerObject write SetOwnerObject;
    property OwnerObjects: TComponentList read GetOwnerObjects write SetOwnerObjects;
    property PropList: TObjInspecPropListEx read FPropList write SetObjInspecPropList;
    { Owned by the row. }
    property PropEditor: TPropertyEditor read FPropEditor write SetPropEditor;
  end;

  { TObjInspecSetExpandList
    One True/False row per element of a set-typed row. }

  TObjInspecSetExpandList = class(TObjInspecList)
  private
    FBasedProperty: TObjInspecPropertyItem;
    function GetSetItemConsts(Index: Integer): TSetItemConst;
  public
    constructor Create(ABasedProperty: TObjInspecPropertyItem);
    procedure Clear; override;
    procedure SetBasedProperty(Value: TObjInspecPropertyItem);
    procedure ListAllItemConsts;
    function GetIndentStr: string;
    procedure UpdateList; virtual;
    procedure AppendToStrings(Strings: TStrings); override;
    { The True/False pick list of an element's grid line. }
    procedure SetLineItemProps(Grid: TValueListEditor; LineIndex: Integer);
    procedure CopyDetailsFrom(AList: TObjInspecList); override;
    procedure CopyDetailFromUpperLevel(AList: TObjInspecList); override;
    { Part 2.2's name for the step above. }
    procedure CopyDetailsFromUpperLevel(AList: TObjInspecList);
    property SetItemConsts[Index: Integer]: TSetItemConst read GetSetItemConsts; default;
    property BasedProperty: TObjInspecPropertyItem read FBasedProperty write SetBasedProperty;
  end;

{************ Inspector control (Part 2.3) }

  { TVhoValueListEditor
    A value-list grid with no title row and a line between the columns that
    the user drags to size the name column (the grid's own column sizing is
    off, so the travel is applied once). }

  TVhoValueListEditor = class(TValueListEditor)
  private
    FSavedCursor: TCursor;
    FResizing: Boolean;
    FCanResizeCol: Boolean;
    FLastResizePos: TPoint;
    FLineHeight: Integer;           // one line of the canvas font, per paint
    FCellsUnclipped: Boolean;       // DrawRow draws without the cell clips
    function CanDrawCellsUnclipped: Boolean;
    function RightCellCovers(ACol: Integer): Boolean;
  protected
    procedure Paint; override;
    procedure DrawRow(aRow: Integer); override;
    procedure DrawCellGrid(aCol, aRow: Integer; aRect: TRect; aState: TGridDrawState); override;
    procedure DrawCellText(aCol, aRow: Integer; aRect: TRect; aState: TGridDrawState;
      aText: string); override;
    procedure MouseDown(Button: TMouseButton; Shift: TShiftState; X, Y: Integer); override;
    procedure MouseMove(Shift: TShiftState; X, Y: Integer); override;
    procedure MouseUp(Button: TMouseButton; Shift: TShiftState; X, Y: Integer); override;
    { The cursor over the column line (the Part's WM_NCHITTEST step). }
    procedure UpdateColLineCursor(X: Integer);
  public
    constructor Create(AOwner: TComponent); override;
    function PosAtColLine(X: Integer): Boolean;
    procedure StartResizeCol(const P: TPoint);
    procedure ResizeColTo(const P: TPoint);
    procedure EndResizeCol(const P: TPoint);
    property SavedCursor: TCursor read FSavedCursor;
    property Resizing: Boolean read FResizing;
    property CanResizeCol: Boolean read FCanResizeCol write FCanResizeCol;
    property LastResizePos: TPoint read FLastResizePos;
  end;

  { TVhoObjInspector
    The object inspector: shows the property list of the active components
    and writes the user's edits back through the property editors. }

  TVhoObjInspector = class(TVhoValueListEditor)
  private
    FRefreshing: Boolean;
    FPropList: TObjInspecPropListEx;
    FSavedItemIndex: Integer;
    FOnChangeOwnerComponent: TNotifyEvent;
    FOnRefresh: TNotifyEvent;
    FOnChangeActiveComponent: TNotifyEvent;
    FConsoleCenter: TComponent;
    FModified: Boolean;
    FOnPropNameChanged: TPropChangedEvent;
    FLinesChange: TNotifyEvent;     // the grid's own handler of its strings' change
    FTrackLines: Boolean;           // lines rewritten in place: paint only those
    FChangedLines: array of Integer;
    FMerging: Boolean;              // RefreshOutput lays new lines over the old
    FRowsChanged: Boolean;          // the last merge added or removed rows
    function GetOwnerComponent: TComponent;
    function GetActiveComponent: TComponent;
    function GetPropertyFilterStyles: TPropertyFilterStyles;
    function GetAutoUpdateOutput: Boolean;
    procedure SetAutoUpdateOutput(Value: Boolean);
    function GetOutputPropNames: TStringList;
    procedure SetOutputPropNames(Value: TStringList);
    function GetConcealedPropNames: TStringList;
    function GetOutputEventNames: TStringList;
    function GetConcealedEventNames: TStringList;
    procedure SetConcealedEventNames(Value: TStringList);
    function GetTranslate: Boolean;
    function GetOnTranslateIdent: TRttiTranslateEvent;
    procedure SetOnTranslateIdent(Value: TRttiTranslateEvent);
    function GetOnTranslateToIdent: TRttiTranslateEvent;
    procedure SetOnTranslateToIdent(Value: TRttiTranslateEvent);
    function LineValue(Index: Integer): string;
    procedure GridButtonClick(Sender: TObject; ACol, ARow: Integer);
    procedure LinesChanged(Sender: TObject);
    procedure PaintChangedLines;
    procedure ShowFittingEditor;
    procedure SetLineInPlace(Index: Integer; const S: string);
    procedure MergeLines(Fresh: TStrings);
  protected
    function GetDefaultEditor(Column: Integer): TWinControl; override;
    procedure KeyDown(var Key: Word; Shift: TShiftState); override;
    procedure MouseDown(Button: TMouseButton; Shift: TShiftState; X, Y: Integer); override;
    procedure DblClick; override;
    function ValidateEntry(const ACol, ARow: Integer; const OldValue: string;
      var NewValue: string): Boolean; override;
    procedure Notification(AComponent: TComponent; Operation: TOperation); override;
  public
    constructor Create(AOwner: TComponent); override;
    destructor Destroy; override;
    procedure EditButtonClick(Sender: TObject); virtual;
    procedure SetPropertyFilterStyles(Value: TPropertyFilterStyles); virtual;
    procedure SetConcealedPropNames(Value: TStringList); virtual;
    procedure SetOutputEventNames(Value: TStringList); virtual;
    procedure SetTranslate(Value: Boolean); virtual;
    procedure RelateComponentChanged; virtual;
    procedure RefreshOutput; virtual;
    procedure StartFillList; virtual;
    procedure EndFillList; virtual;
    procedure Refresh; virtual; reintroduce;
    procedure RefreshValues; virtual;
    { Sets the item properties of every line; run when a fill has ended,
      since the grid gives none while its strings are updating. }
    procedure ApplyLineItemProps;
    { Runs PropertyValueChanged for the current row; an error is reported
      through the application (Part 2.3, left to the implementer) after the
      row shows the property's value again. Result false on an error. }
    function DoOnValidate: Boolean; virtual;
    procedure SetActiveComponent(Value: TComponent);
    procedure SetActiveComponents(Value: TObjectList);
    procedure AddActiveComponent(Value: TComponent);
    procedure ClearActiveComponents;
    function GetActiveComponents: TObjectList;
    procedure SetOwnerComponent(Value: TComponent);
    procedure SetOwnerComponents(Value: TComponentList);
    procedure ClearOwnerComponents;
    function GetOwnerComponents: TComponentList;
    procedure SetConsoleCenter(Value: TComponent);
    procedure SetPropList(Value: TObjInspecPropListEx);
    function GetCurrPropItem: TObjInspecPropertyItem;
    function GetPropRow(PropInfo: PPropInfo): Integer;
    function GetClassInformation: TClassInformation;
    function GetCurrItemIndex: Integer;
    procedure SetCurrItemIndex(Value: Integer);
    procedure ReturnToOldPos;
    procedure PropertyValueChanged(ARow: Integer);
    procedure InplaceEditorOnChange(Sender: TObject);
    procedure InplaceEditorOnKeyPress(Sender: TObject; var Key: Char);
    procedure SelfKeyDown(Sender: TObject; var Key: Word; Shift: TShiftState);
    property PropList: TObjInspecPropListEx read FPropList write SetPropList;
    property ConsoleCenter: TComponent read FConsoleCenter write SetConsoleCenter;
    property Modified: Boolean read FModified write FModified;
    property Refreshing: Boolean read FRefreshing;
    property SavedItemIndex: Integer read FSavedItemIndex;
  published
    property OwnerComponent: TComponent read GetOwnerComponent write SetOwnerComponent;
    property ActiveComponent: TComponent read GetActiveComponent write SetActiveComponent;
    property PropertyFilterStyles: TPropertyFilterStyles read GetPropertyFilterStyles
      write SetPropertyFilterStyles;
    property AutoUpdateOutput: Boolean read GetAutoUpdateOutput write SetAutoUpdateOutput
      default True;
    property CurrItemIndex: Integer read GetCurrItemIndex write SetCurrItemIndex stored False;
    property OutputPropNames: TStringList read GetOutputPropNames write SetOutputPropNames;
    property ConcealedPropNames: TStringList read GetConcealedPropNames write SetConcealedPropNames;
    property OutputEventNames: TStringList read GetOutputEventNames write SetOutputEventNames;
    property ConcealedEventNames: TStringList read GetConcealedEventNames
      write SetConcealedEventNames;
    property Translate: Boolean read GetTranslate write SetTranslate;
    property OnTranslateIdent: TRttiTranslateEvent read GetOnTranslateIdent
      write SetOnTranslateIdent;
    property OnTranslateToIdent: TRttiTranslateEvent read GetOnTranslateToIdent
      write SetOnTranslateToIdent;
    property OnChangeActiveComponent: TNotifyEvent read FOnChangeActiveComponent
      write FOnChangeActiveComponent;
    property OnChangeOwnerComponent: TNotifyEvent read FOnChangeOwnerComponent
      write FOnChangeOwnerComponent;
    property OnRefresh: TNotifyEvent read FOnRefresh write FOnRefresh;
    property OnPropNameChanged: TPropChangedEvent read FOnPropNameChanged write FOnPropNameChanged;
  end;

  { TQorObjInspector
    The inspector applications place on their forms. }

  TQorObjInspector = class(TVhoObjInspector)
  end;

  { Raised (and reported through the application) when a typed value is
    rejected; the message names the property and carries the conversion
    error, after the string table's "Invalid Property Value;". }
  EQorInvalidPropValue = class(Exception);

resourcestring
  SInvalidPropertyValue = 'Invalid Property Value;';

implementation

uses
  // RTL / FCL
  Math,
  // LCL
  LCLIntf,
  // LCL widgetset (objwspaint.inc)
  {$IFDEF LCLGTK2}gdk2, gtk2, Gtk2Proc,{$ENDIF}
  // IDEIntf: registers the colour, cursor, font, graphic and image-index
  // editors that PropEdits alone leaves to the integer and class editors.
  GraphPropEdits,
  // ours
  QorDesignConsole;

{$I objpropdetail.inc}
{$I objproplist.inc}
{$I objwspaint.inc}
{$I objinspector.inc}

end.
