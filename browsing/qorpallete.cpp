// SPDX-License-Identifier: MIT
#include "browsing/qorpallete.h"

#include "browsing/qorclassesman.h"
#include "foundation/qorclasses.h"

#include <QButtonGroup>

namespace {

void registerButtonClass()
{
    RegisterClass<TQorClassToolBtn>();
}
Q_CONSTRUCTOR_FUNCTION(registerButtonClass)

} // namespace

// ---- TQorToolBar --------------------------------------------------------------

TQorToolBar::TQorToolBar(QWidget *Parent)
    : QToolBar(Parent)
{
}

TQorToolBar::~TQorToolBar() = default;

QWidget *TQorToolBar::Buttons(int Index) const
{
    return Index >= 0 && Index < ButtonCount() ? m_buttons[Index].button.data() : nullptr;
}

void TQorToolBar::InsButton(QWidget *Control, int Index)
{
    if (!Control)
        return;
    const int count = ButtonCount();
    const int at = Index >= count ? count : std::max(Index, 0);
    QAction *action = at < count ? insertWidget(m_buttons[at].action, Control) : addWidget(Control);
    m_buttons.insert(at, {Control, action});
}

void TQorToolBar::AppendButton(QWidget *Control)
{
    InsButton(Control, ButtonCount());
}

void TQorToolBar::AddButtonToHead(QWidget *Control)
{
    InsButton(Control, 0);
}

void TQorToolBar::Clear()
{
    for (int i = ButtonCount(); i > 0; --i)
        RemoveButton(0);
}

void TQorToolBar::RemoveButton(int Index)
{
    if (Index < 0 || Index >= ButtonCount())
        return;
    const Entry entry = m_buttons.takeAt(Index);
    if (entry.button)
        ButtonLeaving(entry.button);
    removeAction(entry.action);
    // The action takes its button with it; a click on that button may
    // still be under way.
    entry.action->deleteLater();
}

void TQorToolBar::ButtonLeaving(QWidget *)
{
}

// ---- TQorPalleteToolBar ------------------------------------------------------------

TQorPalleteToolBar::TQorPalleteToolBar(QWidget *Parent)
    : TQorToolBar(Parent)
    , m_group(new QButtonGroup(this))
{
    m_group->setExclusive(true);
}

TQorPalleteToolBar::~TQorPalleteToolBar() = default;

void TQorPalleteToolBar::InsButton(QWidget *Control, int Index)
{
    TQorToolBar::InsButton(Control, Index);
    if (auto *button = qobject_cast<QToolButton *>(Control); button && m_grouped) {
        button->setCheckable(true);
        m_group->addButton(button);
    }
}

void TQorPalleteToolBar::SetGrouped(bool Value)
{
    if (Value == m_grouped)
        return;
    m_grouped = Value;
    for (int i = 0; i < ButtonCount(); ++i) {
        auto *button = qobject_cast<QToolButton *>(Buttons(i));
        if (!button)
            continue;
        button->setCheckable(true);
        if (Value)
            m_group->addButton(button);
        else
            m_group->removeButton(button);
    }
}

void TQorPalleteToolBar::ButtonLeaving(QWidget *Button)
{
    if (auto *button = qobject_cast<QAbstractButton *>(Button))
        m_group->removeButton(button);
}

// ---- TQorClassToolBtn --------------------------------------------------------------

TQorClassToolBtn::TQorClassToolBtn(QWidget *Parent)
    : QToolButton(Parent)
{
    setToolButtonStyle(Qt::ToolButtonIconOnly);
    setAutoRaise(true);
}

TQorClassToolBtn::~TQorClassToolBtn() = default;

// ---- TQorCompPalleteToolBar ------------------------------------------------------------

TQorCompPalleteToolBar::TQorCompPalleteToolBar(QWidget *Parent)
    : TQorPalleteToolBar(Parent)
{
    setMinimumHeight(34);
    setIconSize(QSize(24, 24));
    m_classList = DefDesignClassList();
    m_constructed = true;
    UpdateButtons();
}

TQorCompPalleteToolBar::~TQorCompPalleteToolBar() = default;

void TQorCompPalleteToolBar::SetPallete(const QString &Value)
{
    if (Value == m_pallete)
        return;
    m_pallete = Value;
    UpdateButtons();
}

void TQorCompPalleteToolBar::SetPalleteAllStr(const QString &Value)
{
    if (Value == m_palleteAllStr)
        return;
    m_palleteAllStr = Value;
    if (IsPalleteAll())
        UpdateButtons();
}

void TQorCompPalleteToolBar::SetDeselectorImageIndex(int Value)
{
    if (Value == m_deselectorImageIndex)
        return;
    m_deselectorImageIndex = Value;
    if (QToolButton *deselector = Deselector())
        deselector->setIcon(m_classList && m_classList->Images() ? m_classList->Images()->Icon(Value) : QIcon());
}

void TQorCompPalleteToolBar::SetShowDeselector(bool Value)
{
    if (Value == m_showDeselector)
        return;
    m_showDeselector = Value;
    UpdateButtons();
}

void TQorCompPalleteToolBar::SetClassList(TQorDesignClassList *List)
{
    m_classList = List;
    UpdateButtons();
}

bool TQorCompPalleteToolBar::IsPalleteAll(bool) const
{
    return m_pallete == m_palleteAllStr;
}

QToolButton *TQorCompPalleteToolBar::SelectedButton() const
{
    for (int i = 0; i < ButtonCount(); ++i) {
        auto *button = qobject_cast<QToolButton *>(Buttons(i));
        if (button && button->isChecked())
            return button;
    }
    return nullptr;
}

const QMetaObject *TQorCompPalleteToolBar::GetCurrClass() const
{
    auto *button = qobject_cast<TQorClassToolBtn *>(SelectedButton());
    return button ? button->ClassRef : nullptr;
}

QToolButton *TQorCompPalleteToolBar::Deselector() const
{
    return m_showDeselector ? qobject_cast<QToolButton *>(Buttons(0)) : nullptr;
}

void TQorCompPalleteToolBar::DeselectComps()
{
    if (QToolButton *deselector = Deselector()) {
        deselector->setChecked(true);
        return;
    }
    if (QToolButton *selected = SelectedButton()) {
        // One button of an exclusive group cannot be let go alone.
        const bool exclusive = ButtonGroup()->exclusive();
        ButtonGroup()->setExclusive(false);
        selected->setChecked(false);
        ButtonGroup()->setExclusive(exclusive);
    }
}

TQorClassToolBtn *TQorCompPalleteToolBar::newButton()
{
    auto *button = new TQorClassToolBtn(this);
    return button;
}

void TQorCompPalleteToolBar::AddClassInfo(const TQorDesignClassInformation *Info)
{
    if (!Info)
        return;
    TQorClassToolBtn *button = newButton();
    button->ClassRef = Info->ClassTypeRef();
    button->setObjectName(QLatin1String(button->ClassRef ? button->ClassRef->className() : "") + QLatin1String("Button"));
    if (m_classList && m_classList->Images())
        button->setIcon(m_classList->Images()->Icon(Info->ImageIndex));
    const QString label = GetClassLabel(button->ClassRef);
    button->setText(label);
    button->setToolTip(label);
    AppendButton(button);
}

void TQorCompPalleteToolBar::UpdateButtons()
{
    // Nothing while the bar is being made; its constructor builds it once
    // it is whole.
    if (!m_constructed)
        return;
    BeginUpdate();
    Clear();
    // The first button is made whether it is shown as the deselector or
    // not.
    TQorClassToolBtn *first = newButton();
    first->setObjectName(QStringLiteral("Deselector"));
    if (m_classList && m_classList->Images())
        first->setIcon(m_classList->Images()->Icon(m_deselectorImageIndex));
    first->setArrowType(Qt::NoArrow);
    AddButtonToHead(first);
    if (m_classList) {
        for (int i = 0; i < m_classList->Count(); ++i) {
            const TQorDesignClassInformation *info = m_classList->ClassInfos(i);
            if (info && (info->Pallete == m_pallete || IsPalleteAll()))
                AddClassInfo(info);
        }
    }
    if (QToolButton *deselector = Deselector())
        deselector->setChecked(true);
    EndUpdate();
}

void TQorCompPalleteToolBar::Refresh()
{
    UpdateButtons();
}

// ---- TQorCompPalleteTab -------------------------------------------------------------------

TQorCompPalleteTab::TQorCompPalleteTab(QWidget *Parent)
    : QTabBar(Parent)
{
    connect(this, &QTabBar::currentChanged, this, [this] {
        if (!m_updating)
            UpdateToolBarPallete();
    });
}

TQorCompPalleteTab::~TQorCompPalleteTab() = default;

void TQorCompPalleteTab::SetAutoFillTabs(bool Value)
{
    if (Value == m_autoFillTabs)
        return;
    m_autoFillTabs = Value;
    if (Value)
        UpdateTabs();
}

void TQorCompPalleteTab::SetPalleteToolBar(TQorCompPalleteToolBar *ToolBar)
{
    if (ToolBar == m_toolBar)
        return;
    m_toolBar = ToolBar;
    if (m_autoFillTabs)
        UpdateTabs();
}

void TQorCompPalleteTab::UpdateTabs()
{
    if (!m_toolBar || !m_toolBar->ClassList())
        return;
    QStringList pages;
    m_toolBar->ClassList()->FillPalleteStrings(pages, true);
    m_updating = true;
    while (count() > 0)
        removeTab(count() - 1);
    for (const QString &page : std::as_const(pages))
        addTab(page);
    // Choosing the first tab here is no user's choice: the tool bar keeps
    // its page until a tab is chosen (or UpdateToolBarPallete is called).
    setCurrentIndex(0);
    m_updating = false;
}

void TQorCompPalleteTab::UpdateToolBarPallete()
{
    if (m_toolBar && currentIndex() >= 0)
        m_toolBar->SetPallete(tabText(currentIndex()));
}

void TQorCompPalleteTab::Refresh()
{
    UpdateTabs();
    if (m_toolBar)
        m_toolBar->Refresh();
}
