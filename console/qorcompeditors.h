// SPDX-License-Identifier: MIT
// Component editors: the verbs a component offers while it is designed
// (add a page, edit the items) and what a double click on it does. A
// component editor is made for one component and one designer, runs a verb
// and is dropped. Applications register their own for their classes:
//
//   class TMyChartEditor : public TComponentEditor
//   {
//   public:
//       using TComponentEditor::TComponentEditor;
//       int GetVerbCount() const override { return 1; }
//       QString GetVerb(int) const override { return QStringLiteral("Add Series"); }
//       void ExecuteVerb(int) override { ... then Designer()->Modified(); }
//   };
//   RegisterComponentEditor<TMyChartEditor>(&TMyChart::staticMetaObject);
//
// The editor registered for the nearest class of a component wins, the
// later among registrations for one class.
#pragma once

#include "qordesign_export.h"

#include "inspector/qoreditorintf.h"

#include <QPointer>
#include <QString>

#include <functional>
#include <memory>

class QORDESIGN_EXPORT TComponentEditor
{
public:
    TComponentEditor(QObject *Component, IDesigner *Designer);
    virtual ~TComponentEditor();
    TComponentEditor(const TComponentEditor &) = delete;
    TComponentEditor &operator=(const TComponentEditor &) = delete;

    virtual int GetVerbCount() const;
    virtual QString GetVerb(int Index) const;
    virtual void ExecuteVerb(int Index);
    // A double click: the first verb, when there is one.
    virtual void Edit();

    QObject *Component() const { return m_component; }
    IDesigner *Designer() const { return m_designer; }

private:
    QPointer<QObject> m_component;
    IDesigner *m_designer;
};

using TComponentEditorRef = std::shared_ptr<TComponentEditor>;
using TComponentEditorFactory = std::function<TComponentEditorRef(QObject *Component, IDesigner *Designer)>;

QORDESIGN_EXPORT void RegisterComponentEditor(const QMetaObject *ComponentClass, TComponentEditorFactory Factory);
template<class Editor>
void RegisterComponentEditor(const QMetaObject *ComponentClass)
{
    RegisterComponentEditor(ComponentClass, [](QObject *Component, IDesigner *Designer) {
        return std::make_shared<Editor>(Component, Designer);
    });
}
QORDESIGN_EXPORT void UnregisterComponentEditors(const QMetaObject *ComponentClass);
// The editor of a component: the registered one, else one without verbs.
QORDESIGN_EXPORT TComponentEditorRef GetComponentEditor(QObject *Component, IDesigner *Designer);

// Page containers (tab widget, stacked widget, tool box): "Add Page",
// "Delete Page", "Next Page", "Previous Page". A new page is a component of
// the container's owner, named uniquely.
class QORDESIGN_EXPORT TQorPagesEditor : public TComponentEditor
{
public:
    using TComponentEditor::TComponentEditor;
    int GetVerbCount() const override;
    QString GetVerb(int Index) const override;
    void ExecuteVerb(int Index) override;
};

// Item views and combo boxes: "Edit Items..." opens a dialog with one item
// per line (a table's cells separated by tabs).
class QORDESIGN_EXPORT TQorItemsEditor : public TComponentEditor
{
public:
    using TComponentEditor::TComponentEditor;
    int GetVerbCount() const override;
    QString GetVerb(int Index) const override;
    void ExecuteVerb(int Index) override;
    // The items as the dialog shows them, and back.
    QString ItemsText() const;
    void SetItemsText(const QString &Text);
};
