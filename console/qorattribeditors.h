// SPDX-License-Identifier: MIT
// Attribute editors: the design commands a component class adds to the
// design popup menu, next to what its component editor offers. An
// application registers an attribute editor for a class of its own; the
// popup menu asks for the editor of the one selected component and lists
// its verbs at the end of the menu, the last verb first.
#pragma once

#include "qordesign_export.h"

#include "console/qorcompeditors.h"

#include <functional>
#include <memory>

class IDesigner;

// What the popup menu and the design system ask of an attribute editor:
// the verbs, as of a component editor, and the attribute operations.
class QORDESIGN_EXPORT IQorAttribEditor
{
    Q_DISABLE_COPY_MOVE(IQorAttribEditor)

public:
    virtual ~IQorAttribEditor();

    virtual int GetVerbCount() const = 0;
    virtual QString GetVerb(int Index) const = 0;
    virtual void ExecuteVerb(int Index) = 0;
    virtual void Edit() = 0;
    // Whether a double click on the component runs the editor's default
    // action.
    virtual bool GetDefaultEvoke() = 0;
    // Opens a dialog of the component's properties.
    virtual void LaunchPropertyDialog() = 0;
    // Editing the component in place starts and ends.
    virtual void StartEmbedEdit() = 0;
    virtual void EndEmbedEdit() = 0;

protected:
    IQorAttribEditor() = default;
};

using IQorAttribEditorRef = std::shared_ptr<IQorAttribEditor>;

// The base of attribute editors. An editor is made for one component and
// the designer of the popup (a TQorFormDesigner, which also answers
// IQorFormDesigner), asked for its verbs, runs one and is dropped: keep no
// state in it between popups. A subclass overrides:
//   - GetVerbCount, GetVerb, ExecuteVerb: the menu's items. The menu shows
//     the verbs at its end in reverse order (the last verb first) and runs
//     ExecuteVerb(index) when one is chosen; the design center is then
//     refreshed (unless the component is being edited in place) and the
//     design marked dirty. A verb that changes the component tells the
//     designer (Designer()->Modified()).
//   - GetDefaultEvoke (true here), LaunchPropertyDialog, StartEmbedEdit,
//     EndEmbedEdit (nothing here): the attribute operations.
// Errors a verb meets are its own to report; nothing may be thrown out
// of ExecuteVerb.
//
//   class TMyGaugeAttribEditor : public TQorCompAttribEditor
//   {
//   public:
//       using TQorCompAttribEditor::TQorCompAttribEditor;
//       int GetVerbCount() const override { return 1; }
//       QString GetVerb(int) const override { return QStringLiteral("Reset Range"); }
//       void ExecuteVerb(int) override { ...; Designer()->Modified(); }
//   };
//   RegisterQorComponentAttribEditor<TMyGaugeAttribEditor>(&TMyGauge::staticMetaObject);
class QORDESIGN_EXPORT TQorCompAttribEditor : public TComponentEditor, public IQorAttribEditor
{
public:
    TQorCompAttribEditor(QObject *Component, IDesigner *Designer);
    ~TQorCompAttribEditor() override;

    int GetVerbCount() const override;
    QString GetVerb(int Index) const override;
    void ExecuteVerb(int Index) override;
    void Edit() override;
    bool GetDefaultEvoke() override;
    void LaunchPropertyDialog() override;
    void StartEmbedEdit() override;
    void EndEmbedEdit() override;
};

// Makes an attribute editor for a component and a designer; an editor
// that is not a TQorCompAttribEditor is refused when it is asked for.
using TQorAttribEditorFactory = std::function<std::shared_ptr<TComponentEditor>(QObject *Component, IDesigner *Designer)>;

// Registers an attribute editor for a class and its subclasses. The most
// derived registered class of a component wins, the latest among
// registrations of one class; a registration for QObject itself matches
// nothing.
QORDESIGN_EXPORT void RegisterQorComponentAttribEditor(const QMetaObject *ComponentClass, TQorAttribEditorFactory Editor);
template<class Editor>
void RegisterQorComponentAttribEditor(const QMetaObject *ComponentClass)
{
    RegisterQorComponentAttribEditor(ComponentClass, [](QObject *Component, IDesigner *Designer) {
        return std::make_shared<Editor>(Component, Designer);
    });
}
// Takes the registrations of a class out again.
QORDESIGN_EXPORT void UnregisterQorComponentAttribEditors(const QMetaObject *ComponentClass);
// The attribute editor of a component, made for Designer. Editor is left
// as it was when no registration matches: clear it first.
QORDESIGN_EXPORT void GetQorComponentAttribEditor(QObject *Component, IDesigner *Designer, IQorAttribEditorRef &Editor);
