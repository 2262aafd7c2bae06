{ QorDesign — the designer given to this system's attribute editors
  (Part 5.2, TQorFormDesigner): TVhoDesigner plus the selected component
  and the embedded editing of the selected control in its sizer. }
unit QorDesignIntfImpls;

{$mode objfpc}{$H+}
{$interfaces corba}

interface

uses
  // RTL / FCL
  Classes, SysUtils,
  // ours
  QorDesigner, VhoDesignIntfImpls;

type
  { The operations Part 5.4's attribute editors need. A CORBA interface:
    the designer is a plain object, freed by whoever made it. }
  IQorFormDesigner = interface
    ['{6F1A2C0E-6B0D-4C55-9D8B-5C1E7A3F2B10}']
    function GetSelectedComponent: TComponent;
    procedure StartControlEmbedEdit;
    procedure EndControlEmbedEdit;
  end;

  { TQorFormDesigner }

  TQorFormDesigner = class(TVhoDesigner, IQorFormDesigner)
  public
    function GetSelectedComponent: TComponent;
    procedure StartControlEmbedEdit;
    procedure EndControlEmbedEdit;
  end;

implementation

function TQorFormDesigner.GetSelectedComponent: TComponent;
begin
  if (Designer <> nil) and (Designer.SelectedComps.Count = 1) then
    Result := Designer.SelectedComps[0]
  else
    Result := nil;
end;

procedure TQorFormDesigner.StartControlEmbedEdit;
begin
  if GetSelectedComponent <> nil then
    Designer.StartEmbedEdit;
end;

procedure TQorFormDesigner.EndControlEmbedEdit;
begin
  if Designer <> nil then
    Designer.EndEmbedEdit;
end;

end.
