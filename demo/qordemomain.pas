{ QorDesign demo — the designer application that every issue grows.

  The main window holds the palette area (top), the component tree area
  (left) and the object inspector area (right); the stage form beside it is
  the form the user designs. Each area is an empty frame until the issue
  that builds its component lands and puts the component there.

  Sections:
    - TQorDemoMain
    - Stage
    - Screenshot }
unit QorDemoMain;

{$mode objfpc}{$H+}

interface

uses
  // RTL / FCL
  Classes, SysUtils,
  // LCL
  LCLType, LCLIntf, Graphics, Controls, StdCtrls, ExtCtrls, Forms;

type

  { TQorDemoMain }

  TQorDemoMain = class(TForm)
  private
    FPaletteArea: TPanel;
    FTreeArea: TPanel;
    FInspectorArea: TPanel;
    FCenterArea: TPanel;
    FStage: TForm;
    function NewArea(const ACaption: string; AAlign: TAlign; ASize: Integer): TPanel;
    procedure BuildStage;
    procedure MainClose(Sender: TObject; var CloseAction: TCloseAction);
  public
    constructor CreateNew(AOwner: TComponent; Num: Integer = 0); override;
    property PaletteArea: TPanel read FPaletteArea;
    property TreeArea: TPanel read FTreeArea;
    property InspectorArea: TPanel read FInspectorArea;
    property Stage: TForm read FStage;
  end;

{ Writes the screen's content inside Area as a PNG file (the demo's headless
  mode). }
procedure SaveScreenshot(const FileName: string; const Area: TRect);

implementation

{************ TQorDemoMain }

constructor TQorDemoMain.CreateNew(AOwner: TComponent; Num: Integer);
var
  HintLabel: TLabel;
begin
  inherited CreateNew(AOwner, Num);
  Name := 'QorDemoMain';
  Caption := 'QorDesign demo';
  Position := poDesigned;
  SetBounds(0, 0, 1260, 760);
  FPaletteArea := NewArea('Palette', alTop, 64);
  FTreeArea := NewArea('Components', alLeft, 260);
  FInspectorArea := NewArea('Object Inspector', alRight, 300);
  FCenterArea := TPanel.Create(Self);
  FCenterArea.Parent := Self;
  FCenterArea.Align := alClient;
  FCenterArea.BevelOuter := bvNone;
  FCenterArea.Caption := '';
  HintLabel := TLabel.Create(Self);
  HintLabel.Parent := FCenterArea;
  HintLabel.Align := alBottom;
  HintLabel.BorderSpacing.Around := 8;
  HintLabel.Caption := 'The stage form is the form being designed.';
  OnClose := @MainClose;
  BuildStage;
end;

procedure TQorDemoMain.MainClose(Sender: TObject; var CloseAction: TCloseAction);
begin
  // Made with CreateNew, this window is not the application's MainForm:
  // closing it ends the program explicitly.
  Application.Terminate;
end;

function TQorDemoMain.NewArea(const ACaption: string; AAlign: TAlign; ASize: Integer): TPanel;
var
  Header: TLabel;
begin
  Result := TPanel.Create(Self);
  Result.Parent := Self;
  Result.Align := AAlign;
  if AAlign in [alTop, alBottom] then
    Result.Height := ASize
  else
    Result.Width := ASize;
  Result.BevelOuter := bvLowered;
  Result.Caption := '';
  Header := TLabel.Create(Self);
  Header.Parent := Result;
  Header.Align := alTop;
  Header.BorderSpacing.Around := 4;
  Header.Font.Style := [fsBold];
  Header.Caption := ACaption;
end;

{************ Stage }

procedure TQorDemoMain.BuildStage;
var
  Panel: TPanel;
  Button: TButton;
  Lbl: TLabel;
  Edit: TEdit;
  Memo: TMemo;
  Check: TCheckBox;
begin
  // The stage's components are owned by the stage, as a designed form's are.
  FStage := TForm.CreateNew(Self);
  FStage.Name := 'StageForm';
  FStage.Caption := 'Stage';
  FStage.Position := poDesigned;
  FStage.SetBounds(290, 100, 600, 440);

  Panel := TPanel.Create(FStage);
  Panel.Name := 'Panel1';
  Panel.Parent := FStage;
  Panel.SetBounds(16, 16, 300, 160);
  Panel.Caption := '';

  Button := TButton.Create(FStage);
  Button.Name := 'Button1';
  Button.Parent := Panel;
  Button.SetBounds(16, 16, 110, 32);
  Button.Caption := 'Button1';

  Lbl := TLabel.Create(FStage);
  Lbl.Name := 'Label1';
  Lbl.Parent := Panel;
  Lbl.SetBounds(16, 72, 120, 20);
  Lbl.Caption := 'Label1';

  Edit := TEdit.Create(FStage);
  Edit.Name := 'Edit1';
  Edit.Parent := FStage;
  Edit.SetBounds(340, 16, 220, 28);
  Edit.Text := 'Edit1';

  Memo := TMemo.Create(FStage);
  Memo.Name := 'Memo1';
  Memo.Parent := FStage;
  Memo.SetBounds(16, 200, 300, 150);
  Memo.Lines.Text := 'Memo1';

  Check := TCheckBox.Create(FStage);
  Check.Name := 'CheckBox1';
  Check.Parent := FStage;
  Check.SetBounds(340, 64, 200, 24);
  Check.Caption := 'CheckBox1';
end;

{************ Screenshot }

procedure SaveScreenshot(const FileName: string; const Area: TRect);
var
  ScreenDC: HDC;
  Bitmap: TBitmap;
  Png: TPortableNetworkGraphic;
begin
  Bitmap := TBitmap.Create;
  Png := TPortableNetworkGraphic.Create;
  ScreenDC := GetDC(0);
  try
    Bitmap.LoadFromDevice(ScreenDC);
    Png.SetSize(Area.Width, Area.Height);
    Png.Canvas.CopyRect(Rect(0, 0, Area.Width, Area.Height), Bitmap.Canvas, Area);
    Png.SaveToFile(FileName);
  finally
    ReleaseDC(0, ScreenDC);
    Png.Free;
    Bitmap.Free;
  end;
end;

end.
