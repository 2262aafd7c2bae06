// SPDX-License-Identifier: MIT
#include "console/qordesignpopupmenu.h"

#include "console/qorcommanderror_p.h"
#include "console/qordesignactions.h"
#include "console/qordesignconsole.h"
#include "console/qordesignintfimpls.h"
#include "console/qordsnconst.h"
#include "designer/qormanager.h"

#include <QCoreApplication>

#include <array>

namespace {

// The shared actions, in the order QorDefDesignActions lists them.
enum SharedAction {
    saCopy,
    saCut,
    saPaste,
    saSelAll,
    saDelSel,
    saBringToFront,
    saSendToBack,
    saFlipSelected,
    saFlipAll,
    saAlign,
    saSize,
    saScale,
    saCount
};

std::array<QPointer<TQorDesignAction>, saCount> sharedActions;
bool sharedActionsRoutineAdded = false;

void freeSharedActions()
{
    // An action the application already freed is not freed again.
    for (QPointer<TQorDesignAction> &action : sharedActions)
        delete action.data();
}

void ensureSharedActions()
{
    if (!QCoreApplication::instance())
        return;
    auto make = [](SharedAction Which) -> TQorDesignAction * {
        switch (Which) {
        case saCopy: return new TQorDesignEditCopy;
        case saCut: return new TQorDesignEditCut;
        case saPaste: return new TQorDesignEditPaste;
        case saSelAll: return new TQorDesignEditSelAll;
        case saDelSel: return new TQorDesignEditDelSel;
        case saBringToFront: return new TQorDesignSelCtrlBringToFront;
        case saSendToBack: return new TQorDesignSelCtrlSendToBack;
        case saFlipSelected: return new TQorDesignSelCtrlFlipSelChildren;
        case saFlipAll: return new TQorDesignSelCtrlFlipAllChildren;
        case saAlign: return new TQorDesignSelCtrlPositionAlign;
        case saSize: return new TQorDesignSelCtrlPositionSize;
        case saScale: return new TQorDesignSelCtrlPositionScale;
        case saCount: break;
        }
        return nullptr;
    };
    for (int i = 0; i < saCount; ++i) {
        if (!sharedActions[i])
            sharedActions[i] = make(SharedAction(i));
    }
    if (!sharedActionsRoutineAdded) {
        sharedActionsRoutineAdded = true;
        qAddPostRoutine([] {
            freeSharedActions();
            sharedActionsRoutineAdded = false;
        });
    }
}

} // namespace

QList<TQorDesignAction *> QorDefDesignActions()
{
    ensureSharedActions();
    QList<TQorDesignAction *> list;
    for (const QPointer<TQorDesignAction> &action : sharedActions)
        list.append(action);
    return list;
}

// ---- TQorDesignCompPopupMenu ------------------------------------------------

TQorDesignCompPopupMenu::TQorDesignCompPopupMenu(QWidget *Parent)
    : QMenu(Parent)
{
    // However the menu comes up (a tree's context menu, PopupBaseOnComp,
    // exec), it is made ready first.
    connect(this, &QMenu::aboutToShow, this, [this] { DoPopup(this); });
}

TQorDesignCompPopupMenu::~TQorDesignCompPopupMenu() = default;

TQorDesignCenter *TQorDesignCompPopupMenu::ConsoleCenter() const
{
    return m_consoleCenter;
}

void TQorDesignCompPopupMenu::SetConsoleCenter(TQorDesignCenter *Center)
{
    m_consoleCenter = Center;
}

const TComponentList *TQorDesignCompPopupMenu::GetSelComps() const
{
    return m_consoleCenter ? &m_consoleCenter->SelectedComps() : nullptr;
}

void TQorDesignCompPopupMenu::PopupBaseOnComp(QObject *Component, int X, int Y)
{
    m_popupComponent = Component;
    Popup(X, Y);
}

void TQorDesignCompPopupMenu::Popup(int X, int Y)
{
    popup(QPoint(X, Y));
}

void TQorDesignCompPopupMenu::DoPopup(QObject *)
{
    QObject *component = m_popupComponent;
    if (m_consoleCenter && !IsQorDesignCtrl(component)) {
        if (component && component->isWidgetType())
            m_consoleCenter->DeselectUnsiblingControl(static_cast<QWidget *>(component), true);
        else
            m_consoleCenter->DeselectControl();
    }
    InitMenuItems();
}

void TQorDesignCompPopupMenu::InitMenuItems()
{
    if (!IsInDesignMode())
        AddCompEditorItems();
}

TComponentEditorRef TQorDesignCompPopupMenu::GetCompEditor() const
{
    const TComponentList *selected = GetSelComps();
    if (!selected || selected->Count() != 1)
        return {};
    return GetComponentEditor(selected->First(), nullptr);
}

void TQorDesignCompPopupMenu::AddCompEditorItems()
{
    RemoveLastCEItems();
    const TComponentEditorRef editor = GetCompEditor();
    if (!editor)
        return;
    m_ceItemCount = editor->GetVerbCount();
    for (int i = 0; i < m_ceItemCount; ++i) {
        auto *item = new QAction(editor->GetVerb(i), this);
        item->setData(i + VerbTagBase);
        connect(item, &QAction::triggered, this, [this, item] { runVerb(item, [this, item] { CompEditorItemOnClick(item); }); });
        insertAction(actions().value(i), item);
    }
    insertSeparator(actions().value(m_ceItemCount));
}

void TQorDesignCompPopupMenu::RemoveLastCEItems()
{
    const QList<QAction *> items = actions();
    for (auto it = items.crbegin(); it != items.crend(); ++it) {
        QAction *item = *it;
        if (item->data().toInt() >= VerbTagBase) {
            removeAction(item);
            if (item->parent() == this)
                item->deleteLater();
        }
    }
}

int TQorDesignCompPopupMenu::TagOf(QObject *Sender)
{
    auto *item = qobject_cast<QAction *>(Sender);
    return item ? item->data().toInt() : -1;
}

void TQorDesignCompPopupMenu::CompEditorItemOnClick(QObject *Sender)
{
    const int tag = TagOf(Sender);
    if (tag < 0)
        return;
    ExecCompEditorItem(tag % VerbTagBase);
    AfterVerb();
}

void TQorDesignCompPopupMenu::runVerb(QAction *Item, const std::function<void()> &Run)
{
    // A verb chosen from the menu: what an editor throws is shown, not
    // passed on into the event loop. What it changed is one step of the
    // history.
    QPointer<TQorDesignCenter> center = m_consoleCenter.data();
    if (center)
        center->BeginDesignChange(Item->text());
    const QString failure = QorRunCaught(Run);
    if (center)
        center->EndDesignChange();
    if (!failure.isEmpty())
        QorShowCommandError(m_consoleCenter ? m_consoleCenter->GetDesignStage() : nullptr, Item->text(), failure);
}

void TQorDesignCompPopupMenu::AfterVerb()
{
    if (!m_consoleCenter)
        return;
    TQorDesignManager *manager = m_consoleCenter->DesignManager();
    if (!manager || !manager->IsEmbeddedEditing())
        m_consoleCenter->Refresh();
    m_consoleCenter->SetDirty(true);
}

void TQorDesignCompPopupMenu::ExecCompEditorItem(int Index)
{
    if (const TComponentEditorRef editor = GetCompEditor())
        editor->ExecuteVerb(Index);
}

bool TQorDesignCompPopupMenu::IsInDesignMode() const
{
    for (QObject *owner = Owner(this); owner; owner = Owner(owner)) {
        const auto managers = owner->findChildren<TQorDesignManager *>(Qt::FindDirectChildrenOnly);
        for (TQorDesignManager *manager : managers) {
            if (manager->IsDesigning() && manager->DesignStage() == owner)
                return true;
        }
    }
    return false;
}

// ---- TQorDesignCompPopupMenuEx ---------------------------------------------------

TQorDesignCompPopupMenuEx::TQorDesignCompPopupMenuEx(QWidget *Parent)
    : TQorDesignCompPopupMenu(Parent)
{
}

TQorDesignCompPopupMenuEx::~TQorDesignCompPopupMenuEx() = default;

void TQorDesignCompPopupMenuEx::InitMenuItems()
{
    TQorDesignCompPopupMenu::InitMenuItems();
    if (!IsInDesignMode())
        AddCompAttribEditorItems();
}

IQorAttribEditorRef TQorDesignCompPopupMenuEx::GetAttribEditor()
{
    IQorAttribEditorRef editor;
    const TComponentList *selected = GetSelComps();
    if (!selected)
        return editor;
    m_attribDesigner = std::make_unique<TQorFormDesigner>(ConsoleCenter()->DesignManager());
    if (selected->Count() == 1)
        GetQorComponentAttribEditor(selected->First(), m_attribDesigner.get(), editor);
    return editor;
}

void TQorDesignCompPopupMenuEx::AddCompAttribEditorItems()
{
    RemoveLastAttribItems();
    const IQorAttribEditorRef editor = GetAttribEditor();
    if (!editor)
        return;
    m_attribItemCount = editor->GetVerbCount();
    addSeparator();
    // The last verb first: the order the menu has always shown.
    for (int i = m_attribItemCount - 1; i >= 0; --i) {
        QAction *item = addAction(editor->GetVerb(i));
        item->setData(i + VerbTagBase);
        connect(item, &QAction::triggered, this, [this, item] { runVerb(item, [this, item] { AttribEditorItemOnClick(item); }); });
    }
}

void TQorDesignCompPopupMenuEx::RemoveLastAttribItems()
{
}

void TQorDesignCompPopupMenuEx::AttribEditorItemOnClick(QObject *Sender)
{
    const int tag = TagOf(Sender);
    if (tag < 0)
        return;
    ExecAttribEditorItem(tag % VerbTagBase);
    AfterVerb();
}

void TQorDesignCompPopupMenuEx::ExecAttribEditorItem(int Index)
{
    if (const IQorAttribEditorRef editor = GetAttribEditor())
        editor->ExecuteVerb(Index);
}

// ---- TQorDefDesignCompPopupMenu ----------------------------------------------------

TQorDefDesignCompPopupMenu::TQorDefDesignCompPopupMenu(QWidget *Parent)
    : TQorDesignCompPopupMenuEx(Parent)
{
    if (!IsInDesignMode())
        ensureSharedActions();
}

TQorDefDesignCompPopupMenu::~TQorDefDesignCompPopupMenu() = default;

void TQorDefDesignCompPopupMenu::UpdateActions()
{
    ensureSharedActions();
    for (const QPointer<TQorDesignAction> &action : sharedActions) {
        if (!action)
            continue;
        action->SetConsoleCenter(ConsoleCenter());
        // Judged again now, whatever the center last said.
        action->Update();
    }
}

void TQorDefDesignCompPopupMenu::InitMenuItems()
{
    if (IsInDesignMode())
        return;
    UpdateActions();
    clear();
    // The submenus of the last popup are hidden and go at the next turn
    // of the event loop.
    for (const QPointer<QMenu> &menu : std::as_const(m_subMenus)) {
        if (menu)
            menu->deleteLater();
    }
    m_subMenus.clear();
    TQorDesignCompPopupMenuEx::InitMenuItems();

    auto subMenu = [this](int CaptionId, std::initializer_list<SharedAction> Items) {
        auto *menu = new QMenu(QorDsnConst::LoadStr(CaptionId), this);
        m_subMenus.append(menu);
        for (SharedAction which : Items) {
            if (which == saCount)
                menu->addSeparator();
            else if (sharedActions[which])
                menu->addAction(sharedActions[which]);
        }
        addMenu(menu);
    };
    // saCount stands for a separator.
    subMenu(QorDsnConst::SEdit, {saCopy, saCut, saPaste, saSelAll, saCount, saDelSel});
    subMenu(QorDsnConst::SControl, {saBringToFront, saSendToBack});
    addSeparator();
    subMenu(QorDsnConst::SPosition, {saAlign, saSize, saScale});
    subMenu(QorDsnConst::SFlipChildren, {saFlipAll, saFlipSelected});
}
