// SPDX-License-Identifier: MIT
#include "console/qorattribeditors.h"

#include "foundation/qorlogging_p.h"

#include <QObject>

#include <list>

namespace {

struct Registration
{
    const QMetaObject *componentClass;
    TQorAttribEditorFactory factory;
};

// The most recent registration first. Made on the first registration and
// gone with the library.
std::list<Registration> &registrations()
{
    static std::list<Registration> list;
    return list;
}

} // namespace

IQorAttribEditor::~IQorAttribEditor() = default;

TQorCompAttribEditor::TQorCompAttribEditor(QObject *Component, IDesigner *Designer)
    : TComponentEditor(Component, Designer)
{
}

TQorCompAttribEditor::~TQorCompAttribEditor() = default;

int TQorCompAttribEditor::GetVerbCount() const
{
    return TComponentEditor::GetVerbCount();
}

QString TQorCompAttribEditor::GetVerb(int Index) const
{
    return TComponentEditor::GetVerb(Index);
}

void TQorCompAttribEditor::ExecuteVerb(int Index)
{
    TComponentEditor::ExecuteVerb(Index);
}

void TQorCompAttribEditor::Edit()
{
    TComponentEditor::Edit();
}

bool TQorCompAttribEditor::GetDefaultEvoke()
{
    return true;
}

void TQorCompAttribEditor::LaunchPropertyDialog()
{
}

void TQorCompAttribEditor::StartEmbedEdit()
{
}

void TQorCompAttribEditor::EndEmbedEdit()
{
}

void RegisterQorComponentAttribEditor(const QMetaObject *ComponentClass, TQorAttribEditorFactory Editor)
{
    if (ComponentClass && Editor)
        registrations().push_front({ComponentClass, std::move(Editor)});
}

void UnregisterQorComponentAttribEditors(const QMetaObject *ComponentClass)
{
    registrations().remove_if([ComponentClass](const Registration &r) { return r.componentClass == ComponentClass; });
}

void GetQorComponentAttribEditor(QObject *Component, IDesigner *Designer, IQorAttribEditorRef &Editor)
{
    if (!Component)
        return;
    // The root class is the best so far: a registration for it is never
    // taken, and a class must derive from the best to replace it, so the
    // most derived class wins and, the newest coming first, the newest
    // registration among those of one class.
    const QMetaObject *best = &QObject::staticMetaObject;
    const Registration *chosen = nullptr;
    for (const Registration &r : registrations()) {
        if (Component->metaObject()->inherits(r.componentClass) && r.componentClass != best
            && r.componentClass->inherits(best)) {
            best = r.componentClass;
            chosen = &r;
        }
    }
    if (!chosen)
        return;
    std::shared_ptr<TComponentEditor> editor = chosen->factory(Component, Designer);
    if (auto attrib = std::dynamic_pointer_cast<TQorCompAttribEditor>(editor)) {
        Editor = attrib;
        return;
    }
    qCInfo(lcQorConsole).noquote() << "Attribute editor for" << Component->metaObject()->className()
                                   << "refused: it is not an attribute editor";
}
