// SPDX-License-Identifier: MIT
// The property editors the library brings, one per kind of value: numbers,
// texts (with a dialog for several lines), characters, truth values,
// enumerations, flags (one True/False sub-row per flag), colours (the
// colour dialog and the named colours), fonts (the font dialog and the
// font's fields), cursors, the values with fields (size, point, rectangle,
// margins, size policy), key sequences, icons and pixmaps (a file dialog),
// string lists (a dialog), dates and times, component references (the
// owner's components) and events (the form's slots, connected at run
// time). They are registered when the library loads; an application's own
// registrations take precedence over them.
#pragma once

#include "qordesign_export.h"

#include "inspector/qorpropedit.h"

#include <QStringList>

// Numbers and texts read and written through the value texts.
class QORDESIGN_EXPORT TIntegerProperty : public TPropertyEditor
{
public:
    using TPropertyEditor::TPropertyEditor;
    bool TextFollowsValue() const override { return true; }
};

// The whole 64 bits, signed or unsigned as the property is.
class QORDESIGN_EXPORT TInt64Property : public TPropertyEditor
{
public:
    using TPropertyEditor::TPropertyEditor;
    bool TextFollowsValue() const override { return true; }
    QString GetValueAt(int Index) const override;
    void SetValue(const QString &Value) override;
};

class QORDESIGN_EXPORT TFloatProperty : public TPropertyEditor
{
public:
    using TPropertyEditor::TPropertyEditor;
    bool TextFollowsValue() const override { return true; }
};

// One character, or "#" and its code for one that cannot be typed; ""
// for the null character.
class QORDESIGN_EXPORT TCharProperty : public TPropertyEditor
{
public:
    using TPropertyEditor::TPropertyEditor;
    bool TextFollowsValue() const override { return true; }
    QString GetValueAt(int Index) const override;
    void SetValue(const QString &Value) override;
};

// A text; its dialog edits several lines.
class QORDESIGN_EXPORT TStringProperty : public TPropertyEditor
{
public:
    using TPropertyEditor::TPropertyEditor;
    bool TextFollowsValue() const override { return true; }
    TPropertyAttributes GetAttributes() const override;
    void Edit() override;
};

// The identifiers of an enumeration.
class QORDESIGN_EXPORT TEnumProperty : public TPropertyEditor
{
public:
    using TPropertyEditor::TPropertyEditor;
    bool TextFollowsValue() const override { return true; }
    TPropertyAttributes GetAttributes() const override;
    void GetValues(const TGetStrProc &Proc) const override;
};

// "False" and "True".
class QORDESIGN_EXPORT TBoolProperty : public TEnumProperty
{
public:
    using TEnumProperty::TEnumProperty;
    TPropertyAttributes GetAttributes() const override;
    void GetValues(const TGetStrProc &Proc) const override;
};

// Flags: "[A,B]", with one sub-editor per flag.
class QORDESIGN_EXPORT TSetProperty : public TPropertyEditor
{
public:
    using TPropertyEditor::TPropertyEditor;
    bool TextFollowsValue() const override { return true; }
    TPropertyAttributes GetAttributes() const override;
    void GetProperties(const TGetPropProc &Proc) const override;
};

// One flag of a set: "True" when the set holds it.
class QORDESIGN_EXPORT TSetElementProperty : public TPropertyEditor
{
public:
    TSetElementProperty(IDesigner *Designer, int PropCount, const QString &Element);
    bool TextFollowsValue() const override { return true; }
    TPropertyAttributes GetAttributes() const override;
    QString GetName() const override;
    QString GetValueAt(int Index) const override;
    void SetValue(const QString &Value) override;
    void GetValues(const TGetStrProc &Proc) const override;

private:
    QString m_element;
};

// A colour by name or "#rrggbb"; the dialog is the colour dialog.
class QORDESIGN_EXPORT TColorProperty : public TPropertyEditor
{
public:
    using TPropertyEditor::TPropertyEditor;
    bool TextFollowsValue() const override { return true; }
    TPropertyAttributes GetAttributes() const override;
    void GetValues(const TGetStrProc &Proc) const override;
    void Edit() override;
};

// A cursor by its shape's name.
class QORDESIGN_EXPORT TCursorProperty : public TPropertyEditor
{
public:
    using TPropertyEditor::TPropertyEditor;
    bool TextFollowsValue() const override { return true; }
    TPropertyAttributes GetAttributes() const override;
    void GetValues(const TGetStrProc &Proc) const override;
};

// A value with fields (size, point, rectangle, margins, size policy,
// palette): a short text of the value and one sub-editor per field. The
// short text can be typed back, in looser forms too: numbers apart by
// commas, blanks or an "x", brackets optional ("80x30", "10, 20, 80, 30");
// a size policy's stretches and a font's size may be left out (each
// object keeps its own). A palette has no text form: it is read-only.
class QORDESIGN_EXPORT TClassProperty : public TPropertyEditor
{
public:
    using TPropertyEditor::TPropertyEditor;
    bool TextFollowsValue() const override { return true; }
    TPropertyAttributes GetAttributes() const override;
    QString GetValueAt(int Index) const override;
    void SetValue(const QString &Value) override;
    void GetProperties(const TGetPropProc &Proc) const override;
};

// A font: its family and size; the dialog is the font dialog.
class QORDESIGN_EXPORT TFontProperty : public TClassProperty
{
public:
    using TClassProperty::TClassProperty;
    TPropertyAttributes GetAttributes() const override;
    void Edit() override;
};

// A key sequence in its portable text; the dialog records one.
class QORDESIGN_EXPORT TKeySequenceProperty : public TPropertyEditor
{
public:
    using TPropertyEditor::TPropertyEditor;
    bool TextFollowsValue() const override { return true; }
    TPropertyAttributes GetAttributes() const override;
    QString GetValueAt(int Index) const override;
    void SetValue(const QString &Value) override;
    void Edit() override;
};

// An icon or a pixmap loaded from an image file the dialog chooses; the
// text is the file's name, "(none)" without a picture.
class QORDESIGN_EXPORT TPictureProperty : public TPropertyEditor
{
public:
    using TPropertyEditor::TPropertyEditor;
    TPropertyAttributes GetAttributes() const override;
    QString GetValueAt(int Index) const override;
    void SetValue(const QString &Value) override;
    void Edit() override;
    // Loads the file into every object's property ("" clears it).
    void LoadFile(const QString &FileName);
};

// A list of texts, one line per item in its dialog.
class QORDESIGN_EXPORT TStringListProperty : public TPropertyEditor
{
public:
    using TPropertyEditor::TPropertyEditor;
    bool TextFollowsValue() const override { return true; }
    TPropertyAttributes GetAttributes() const override;
    QString GetValueAt(int Index) const override;
    void SetValue(const QString &Value) override;
    void Edit() override;
};

// Dates and times in their ISO texts; "" clears the value.
class QORDESIGN_EXPORT TDateTimeProperty : public TPropertyEditor
{
public:
    using TPropertyEditor::TPropertyEditor;
    bool TextFollowsValue() const override { return true; }
    QString GetValueAt(int Index) const override;
    void SetValue(const QString &Value) override;
};

// Any other value: shown as its text when it has one, never typed into.
class QORDESIGN_EXPORT TRecordProperty : public TPropertyEditor
{
public:
    using TPropertyEditor::TPropertyEditor;
    bool TextFollowsValue() const override { return true; }
    TPropertyAttributes GetAttributes() const override;
    QString GetValueAt(int Index) const override;
};

// A reference to a component of the edited object's owner.
class QORDESIGN_EXPORT TComponentProperty : public TPropertyEditor
{
public:
    using TPropertyEditor::TPropertyEditor;
    TPropertyAttributes GetAttributes() const override;
    QString GetValueAt(int Index) const override;
    void SetValue(const QString &Value) override;
    void GetValues(const TGetStrProc &Proc) const override;
};

// An event: the slot of the form (the edited component's owner) its
// signal is connected to. Choosing a slot connects it at once and records
// the choice on the component; "" disconnects.
class QORDESIGN_EXPORT TMethodProperty : public TPropertyEditor
{
public:
    using TPropertyEditor::TPropertyEditor;
    TPropertyAttributes GetAttributes() const override;
    QString GetValueAt(int Index) const override;
    void SetValue(const QString &Value) override;
    void GetValues(const TGetStrProc &Proc) const override;
    void Edit() override;
};

// The dynamic property of a component that records its event
// connections: a map of signal name to slot name.
QORDESIGN_EXPORT const char *QorEventConnectionsProperty();
// The dynamic property prefix that remembers the image file of a picture
// property ("qorPictureFile_" followed by the property's name).
QORDESIGN_EXPORT QByteArray QorPictureFileProperty(const QString &PropName);
