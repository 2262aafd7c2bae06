// SPDX-License-Identifier: MIT
// The property-editor framework of the object inspector.
//
// A property editor knows how one property of the selected objects is
// shown and changed: its text (GetValue, SetValue), the values a pick list
// offers (GetValues), its sub-properties (GetProperties) and a dialog
// (Edit). The inspector asks GetComponentProperties for one editor per
// property the selection shares and shows each row through its editor.
//
// Applications bring editors of their own:
//
//   class TMyAngleEditor : public TPropertyEditor
//   {
//   public:
//       using TPropertyEditor::TPropertyEditor;
//       TPropertyAttributes GetAttributes() const override
//       { return TPropertyEditor::GetAttributes() | paDialog; }
//       QString GetValue() const override { return GetStrValue() + QStringLiteral(" deg"); }
//       void Edit() override { ... open a dialog, then SetStrValue(...) ... }
//   };
//   RegisterPropertyEditor<TMyAngleEditor>(TypeInfoOf<double>(), &TMyGauge::staticMetaObject,
//                                          QStringLiteral("angle"));
//
// The contract:
// - An editor is made for PropCount objects and given, for each, the
//   object and its own descriptor of the property (SetPropEntry), then
//   Initialize runs. Objects may die while an editor lives: GetComponent
//   answers null for them and the value helpers skip them.
// - GetValue answers the text of the first object; SetValue writes every
//   object and calls Modified. Conversion errors (EConvertError,
//   EPropertyError) leave SetValue and reach the inspector, which shows
//   them and changes nothing else.
// - GetAttributes: paValueList (GetValues offers values), paSortList (sort
//   them), paSubProperties (GetProperties gives sub-editors), paDialog (Edit
//   opens a dialog; the inspector shows an ellipsis button), paMultiSelect
//   (the editor can edit several objects at once; without it the row is
//   hidden for a multiple selection), paAutoUpdate (each keystroke is
//   written), paReadOnly (the text cannot be typed).
// - Look-up: RegisterPropertyEditor(type, class, name, editor). A null class
//   matches every class, an empty name every property, a null type every
//   type; a class type also matches the types of its subclasses. The most
//   specific registration wins: a name beats no name, then the nearer
//   component class, then the nearer property type; among equals the one
//   registered last. Without any, the library's editor for the kind of
//   the type is used.
#pragma once

#include "qordesign_export.h"

#include "foundation/vhortti.h"
#include "inspector/qoreditorintf.h"

#include <QFlags>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariant>

#include <functional>
#include <memory>
#include <vector>

class QWidget;

enum TPropertyAttribute {
    paValueList = 0x1,
    paSubProperties = 0x2,
    paDialog = 0x4,
    paMultiSelect = 0x8,
    paAutoUpdate = 0x10,
    paSortList = 0x20,
    paReadOnly = 0x40,
    paRevertable = 0x80,
};
Q_DECLARE_FLAGS(TPropertyAttributes, TPropertyAttribute)
Q_DECLARE_OPERATORS_FOR_FLAGS(TPropertyAttributes)

class TPropertyEditor;
using TPropertyEditorRef = std::shared_ptr<TPropertyEditor>;
using TGetPropProc = std::function<void(const TPropertyEditorRef &)>;

class QORDESIGN_EXPORT TPropertyEditor
{
public:
    TPropertyEditor(IDesigner *Designer, int PropCount);
    virtual ~TPropertyEditor();
    TPropertyEditor(const TPropertyEditor &) = delete;
    TPropertyEditor &operator=(const TPropertyEditor &) = delete;

    // paMultiSelect and paRevertable.
    virtual TPropertyAttributes GetAttributes() const;
    // The first object's value as the inspector shows it.
    virtual QString GetValue() const;
    // Writes the text to every object, then Modified.
    virtual void SetValue(const QString &Value);
    virtual void GetValues(const TGetStrProc &Proc) const;
    virtual void GetProperties(const TGetPropProc &Proc) const;
    // The editor's dialog; nothing in the base class.
    virtual void Edit();
    // The property's name.
    virtual QString GetName() const;
    virtual void Initialize();
    // True when every object has the same text.
    virtual bool AllEqual() const;
    // The text of the object at Index on its own ("" for a dead one).
    // GetValue and AllEqual are made of it: an editor with texts of its
    // own overrides this one and gets both right for several objects.
    virtual QString GetValueAt(int Index) const;
    // True when an object's text depends on its value alone: objects whose
    // values are equal then need one text between them, which spares a
    // large selection a text per object. False here, since an editor's
    // own texts may read more than the value (a file name, the owner).
    virtual bool TextFollowsValue() const;

    IDesigner *Designer() const { return m_designer; }
    int PropCount() const { return int(m_count); }
    void SetPropEntry(int Index, QObject *Instance, PPropInfo PropInfo);
    // The object and descriptor at Index; null for a dead object.
    QObject *GetComponent(int Index) const;
    PPropInfo GetPropInfo(int Index = 0) const;
    PTypeInfo GetPropType() const;

    // Reading the first object, writing all of them (then Modified).
    QString GetStrValue() const;
    void SetStrValue(const QString &Value);
    qint64 GetOrdValue() const;
    void SetOrdValue(qint64 Value);
    double GetFloatValue() const;
    void SetFloatValue(double Value);
    QVariant GetVarValue() const;
    void SetVarValue(const QVariant &Value);
    // Tells the designer of a change.
    void Modified();

    // The widget an editor's dialog opens over (the inspector sets it).
    static QWidget *DialogParent();
    static void SetDialogParent(QWidget *Parent);

private:
    friend struct TPropertyEditorEntries;
    IDesigner *m_designer;
    // The objects are often one list shared by every editor of a selection
    // (a selection of thousands holds one guarded pointer per object, not one
    // per object and property); SetPropEntry copies it before changing it.
    // Likewise the descriptors: one for all when the objects share a class
    // (m_infos empty), else one per object.
    size_t m_count;
    std::shared_ptr<std::vector<QPointer<QObject>>> m_objects;
    PPropInfo m_uniformInfo = nullptr;
    std::vector<PPropInfo> m_infos;
    PPropInfo infoAt(size_t Index) const { return m_infos.empty() ? m_uniformInfo : m_infos[Index]; }
};

using TPropertyEditorFactory = std::function<TPropertyEditorRef(IDesigner *Designer, int PropCount)>;

QORDESIGN_EXPORT void RegisterPropertyEditor(PTypeInfo PropertyType, const QMetaObject *ComponentClass,
                                             const QString &PropertyName, TPropertyEditorFactory Factory);
template<class Editor>
void RegisterPropertyEditor(PTypeInfo PropertyType, const QMetaObject *ComponentClass, const QString &PropertyName)
{
    RegisterPropertyEditor(PropertyType, ComponentClass, PropertyName, [](IDesigner *Designer, int PropCount) {
        return std::make_shared<Editor>(Designer, PropCount);
    });
}
// The editor used for a kind of type when nothing more specific is
// registered (the library registers one per kind).
QORDESIGN_EXPORT void SetKindPropertyEditor(TTypeKind Kind, TPropertyEditorFactory Factory);
// Forgets the registrations made after the library's own (for tests and
// plug-ins that unload).
QORDESIGN_EXPORT void UnregisterPropertyEditors(const QMetaObject *ComponentClass);

// The editor for one property of Instance's class, made for PropCount
// objects but with no entries set; null when nothing edits the property.
QORDESIGN_EXPORT TPropertyEditorRef CreatePropertyEditor(IDesigner *Designer, const QObject *Instance,
                                                         PPropInfo PropInfo, int PropCount);
// Calls Proc with an initialized editor for every property (and event) of
// the kinds in Filter that all objects of the selection share, in name
// order.
QORDESIGN_EXPORT void GetComponentProperties(const IDesignerSelections &Components, TTypeKinds Filter,
                                             IDesigner *Designer, const TGetPropProc &Proc);
