{ This file was automatically created by Lazarus. Do not edit!
  This source is only used to compile and install the package.
 }

unit QorDesign;

{$warn 5023 off : no warning about unused units}
interface

uses
  QorDesigner, VhoRTTI, VhoSysUtils, ObjTranslate, QorTransUtils, 
  QorDesignConsole, ObjInspect, VhoClipbrdUtils, VhoDesignIntfImpls, 
  QorDesignIntfImpls, QorCompTreeView;

implementation

end.
