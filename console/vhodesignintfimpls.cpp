// SPDX-License-Identifier: MIT
#include "console/vhodesignintfimpls.h"

#include "console/qordesignconsole.h"

#include "designer/qormanager.h"
#include "foundation/qorclasses.h"
#include "foundation/qorcomponents.h"
#include "foundation/qorlogging_p.h"
#include "foundation/vhoclipbrdutils.h"
#include "foundation/vhosysutils.h"

#include <QCoreApplication>

TVhoDesigner::TVhoDesigner(TQorDesignManager *DesignManager)
    : m_designManager(DesignManager)
{
}

TVhoDesigner::~TVhoDesigner() = default;

QWidget *TVhoDesigner::GetDesignStage() const
{
    return m_designManager ? m_designManager->DesignStage() : m_designStage.data();
}

void TVhoDesigner::Activate() {}
void TVhoDesigner::Modified() {}
QString TVhoDesigner::CreateMethod(const QString &, PTypeInfo) { return {}; }
QString TVhoDesigner::GetMethodName(const QString &) { return {}; }
void TVhoDesigner::GetMethods(PTypeInfo, const TGetStrProc &) {}

QString TVhoDesigner::GetPathAndBaseExeName() const
{
    return QCoreApplication::applicationFilePath();
}

QString TVhoDesigner::GetPrivateDirectory() const { return {}; }
QString TVhoDesigner::GetBaseRegKey() const { return {}; }
QObject *TVhoDesigner::GetIDEOptions() const { return nullptr; }

void TVhoDesigner::GetSelections(IDesignerSelections *List)
{
    if (!List || !m_designManager)
        return;
    for (QObject *component : m_designManager->SelectedComps().toList())
        List->Add(component);
}

bool TVhoDesigner::MethodExists(const QString &) { return false; }
void TVhoDesigner::RenameMethod(const QString &, const QString &) {}

void TVhoDesigner::SelectComponent(QObject *Instance)
{
    // The shared selection list, without a notification to anyone.
    const TComponentList list = Instance ? TComponentList{Instance} : TComponentList();
    if (!m_designManager)
        return;
    if (auto *center = dynamic_cast<TQorDesignCenter *>(m_designManager->ConsoleCenter()))
        center->SetSelectedCompsSilently(list);
    else
        m_designManager->SetSelectedComps(list);
}

void TVhoDesigner::SetSelections(IDesignerSelections *) {}
void TVhoDesigner::ShowMethod(const QString &) {}
void TVhoDesigner::GetComponentNames(PTypeInfo, const TGetStrProc &) {}

QObject *TVhoDesigner::GetComponent(const QString &Name)
{
    return NSNameToComp(Name, GetDesignStage());
}

QString TVhoDesigner::GetComponentName(QObject *Component)
{
    return Component ? CompToNSName(Component, Owner(Component), GetDesignStage()) : QString();
}

QObject *TVhoDesigner::GetObject(const QString &Name)
{
    return GetComponent(Name);
}

QString TVhoDesigner::GetObjectName(QObject *) { return {}; }
void TVhoDesigner::GetObjectNames(PTypeInfo, QObject *, const TGetStrProc &) {}
bool TVhoDesigner::MethodFromAncestor(const QString &) { return false; }

QObject *TVhoDesigner::CreateComponent(const QMetaObject *ComponentClass, QObject *Parent, int Left, int Top,
                                       int Width, int Height)
{
    QWidget *stage = GetDesignStage();
    if (!m_designManager || !stage || !ComponentClass) {
        qCInfo(lcQorConsole) << "No component created for a component editor:"
                             << (!ComponentClass ? "no class is given" : "there is no design stage");
        return nullptr;
    }
    const QString name = GetCompUniqueID(ComponentClass, stage);
    QObject *component = CreateRegisteredComponent(ComponentClass);
    component->setObjectName(name);
    if (auto *w = qobject_cast<QWidget *>(component)) {
        // The stage is the visual parent whatever owns it.
        w->setParent(stage);
        w->setGeometry(Left, Top, Width, Height);
        w->show();
    }
    InsertComponent(Parent ? Parent : stage, component);
    return component;
}

QObject *TVhoDesigner::CreateCurrentComponent(QObject *, const QRect &) { return nullptr; }
bool TVhoDesigner::IsComponentLinkable(QObject *) { return true; }

bool TVhoDesigner::IsComponentHidden(QObject *Component)
{
    // Reference editors list only the non-visual components.
    return Component && Component->isWidgetType();
}

void TVhoDesigner::MakeComponentLinkable(QObject *) {}
void TVhoDesigner::Revert(QObject *, PPropInfo) {}
bool TVhoDesigner::GetIsDormant() const { return true; }
void TVhoDesigner::GetProjectModules(const TGetStrProc &) {}
IDesigner *TVhoDesigner::GetAncestorDesigner() const { return nullptr; }
bool TVhoDesigner::IsSourceReadOnly() const { return false; }
QPoint TVhoDesigner::GetScrollRanges(const QPoint &) { return {}; }

void TVhoDesigner::Edit(QObject *Component)
{
    // The component's editor: the one the application installed on the
    // manager until component editors are registered.
    if (m_designManager && Component)
        m_designManager->LaunchComponentEditor(Component);
}

void TVhoDesigner::ChainCall(const QString &, const QString &, const QString &, PTypeInfo) {}

void TVhoDesigner::CopySelection()
{
    if (m_designManager)
        VhoClipboard()->SetComponents(m_designManager->SelectedComps(), false);
}

void TVhoDesigner::CutSelection()
{
    CopySelection();
    if (m_designManager)
        m_designManager->DelSelectedControls();
}

bool TVhoDesigner::CanPaste() { return true; }
void TVhoDesigner::PasteSelection() {}

void TVhoDesigner::DeleteSelection()
{
    if (m_designManager)
        m_designManager->DelSelectedControls();
}

void TVhoDesigner::ClearSelection()
{
    if (m_designManager)
        m_designManager->DeselectAll();
}

void TVhoDesigner::NoSelection()
{
    if (m_designManager)
        m_designManager->DelSelectedControls();
}

void TVhoDesigner::ModuleFileNames(QString &, QString &, QString &) {}

QString TVhoDesigner::GetRootClassName() const
{
    QObject *root = GetRoot();
    return root ? QString::fromLatin1(root->metaObject()->className()) : QString();
}

QString TVhoDesigner::UniqueName(const QString &BaseName)
{
    return GetUniqueName(BaseName, GetDesignStage());
}

QObject *TVhoDesigner::GetRoot() const
{
    return m_designManager ? m_designManager->SelectedComps().First() : nullptr;
}

Qt::KeyboardModifiers TVhoDesigner::GetShiftState() const { return {}; }
QChar TVhoDesigner::ModalEdit(QChar, QObject *) { return QChar(); }
void TVhoDesigner::SelectItemName(const QString &) {}
void TVhoDesigner::Resurrect() {}
QString TVhoDesigner::GetActiveClassGroup() const { return {}; }
QString TVhoDesigner::FindRootAncestor(const QString &) { return {}; }
