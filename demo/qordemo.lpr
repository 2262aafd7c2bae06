{ QorDesign demo — starts the demo designer.
  --screenshot=FILE shows the windows, writes the screen to FILE (PNG) and
  exits: the headless mode of "make demo"; --chinese turns the inspector's
  Chinese labels on first. }
program qordemo;

{$mode objfpc}{$H+}

uses
  // RTL / FCL
  {$IFDEF UNIX}cthreads,{$ENDIF}
  Classes, SysUtils, DateUtils,
  // LCL
  Interfaces, Forms, Controls,
  // ours
  QorDesign, QorDesigner, QorDemoMain;

{ Lets the windows map and paint for Ms milliseconds (headless mode only). }
procedure PumpFor(Ms: Integer);
var
  Deadline: TDateTime;
begin
  Deadline := IncMilliSecond(Now, Ms);
  while Now < Deadline do
  begin
    Application.ProcessMessages;
    Sleep(10);
  end;
end;

var
  Main: TQorDemoMain;
  ShotFile: string;
  Chinese: Boolean;
  I: Integer;
begin
  ShotFile := '';
  Chinese := False;
  for I := 1 to ParamCount do
    if Pos('--screenshot=', ParamStr(I)) = 1 then
      ShotFile := Copy(ParamStr(I), Length('--screenshot=') + 1, MaxInt)
    else if ParamStr(I) = '--chinese' then
      Chinese := True;

  RequireDerivedFormResource := False;
  Application.Initialize;
  Main := TQorDemoMain.CreateNew(Application);
  Main.Show;
  Main.Stage.Show;
  if ShotFile = '' then
  begin
    Application.Run;
    Exit;
  end;
  // Headless: let both windows map, design the stage with two controls
  // selected, let it paint, then take the picture.
  PumpFor(700);
  Main.DesignSwitch.Checked := True;
  Main.LabelsSwitch.Checked := Chinese;
  Main.Manager.SelectControl(TControl(Main.Stage.FindComponent('Button1')), Point(-1, -1),
    csmSelect, True, False);
  Main.Manager.SelectControl(TControl(Main.Stage.FindComponent('Edit1')), Point(-1, -1),
    csmAdd, True, False);
  PumpFor(800);
  SaveScreenshot(ShotFile, Rect(0, 0, Main.Width, Main.Height));
  WriteLn('demo: wrote ', ShotFile);
end.
