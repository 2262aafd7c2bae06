// SPDX-License-Identifier: MIT
// The component palette: a tool bar with one check button per class of the
// current page, after an arrow button (the deselector) that means "no
// class, a click selects", and a tab bar whose tabs are the pages of the
// class list. The button that is down names the class the next click on
// the stage inserts; the design center reads it (GetCurrClass) and puts the
// palette back to the arrow (DeselectComps) once a component was made.
#pragma once

#include "qordesign_export.h"

#include "console/qorconsoleintf.h"

#include <QList>
#include <QPointer>
#include <QTabBar>
#include <QToolBar>
#include <QToolButton>

class QButtonGroup;
class TQorDesignClassInformation;
class TQorDesignClassList;

// A tool bar whose buttons can be put at a place, appended, put first,
// removed and cleared.
class QORDESIGN_EXPORT TQorToolBar : public QToolBar
{
    Q_OBJECT

public:
    explicit TQorToolBar(QWidget *Parent = nullptr);
    ~TQorToolBar() override;

    int ButtonCount() const { return int(m_buttons.size()); }
    // The button at an index, in the bar's order; null out of range.
    QWidget *Buttons(int Index) const;

    // Puts Control at Index (after the last button for an index past the
    // end, first for one below 1); the bar takes it.
    virtual void InsButton(QWidget *Control, int Index);
    virtual void AppendButton(QWidget *Control);
    virtual void AddButtonToHead(QWidget *Control);
    void BeginUpdate() {}
    void EndUpdate() {}
    // Frees every button.
    void Clear();
    // Frees the button at an index.
    void RemoveButton(int Index);

protected:
    // A button is about to leave the bar.
    virtual void ButtonLeaving(QWidget *Button);

private:
    struct Entry
    {
        QPointer<QWidget> button;
        QAction *action;
    };
    QList<Entry> m_buttons;
};

// A tool bar whose buttons are check buttons of one group, one down at a
// time, while Grouped (set at creation).
class QORDESIGN_EXPORT TQorPalleteToolBar : public TQorToolBar
{
    Q_OBJECT
    Q_PROPERTY(bool Grouped READ Grouped WRITE SetGrouped)

public:
    explicit TQorPalleteToolBar(QWidget *Parent = nullptr);
    ~TQorPalleteToolBar() override;

    void InsButton(QWidget *Control, int Index) override;
    bool Grouped() const { return m_grouped; }
    void SetGrouped(bool Value);

protected:
    QButtonGroup *ButtonGroup() const { return m_group; }
    void ButtonLeaving(QWidget *Button) override;

private:
    bool m_grouped = true;
    QButtonGroup *m_group;
};

// A palette button: the class it inserts; null for the deselector.
class QORDESIGN_EXPORT TQorClassToolBtn : public QToolButton
{
    Q_OBJECT
    // A part of the design system, never a component of a designed form.
    Q_CLASSINFO("QorDesignObject", "true")

public:
    Q_INVOKABLE explicit TQorClassToolBtn(QWidget *Parent = nullptr);
    ~TQorClassToolBtn() override;

    const QMetaObject *ClassRef = nullptr;
};

class QORDESIGN_EXPORT TQorCompPalleteToolBar : public TQorPalleteToolBar, public IQorCompPallete
{
    Q_OBJECT
    Q_INTERFACES(IQorCompPallete)
    Q_PROPERTY(QString Pallete READ Pallete WRITE SetPallete)
    Q_PROPERTY(QString PalleteAllStr READ PalleteAllStr WRITE SetPalleteAllStr)
    Q_PROPERTY(int DeselectorImageIndex READ DeselectorImageIndex WRITE SetDeselectorImageIndex)
    Q_PROPERTY(bool ShowDeselector READ ShowDeselector WRITE SetShowDeselector)

public:
    // Takes the default class list (DefDesignClassList) and shows its
    // buttons at once.
    explicit TQorCompPalleteToolBar(QWidget *Parent = nullptr);
    ~TQorCompPalleteToolBar() override;

    // The page shown; compared as given (case matters).
    QString Pallete() const { return m_pallete; }
    void SetPallete(const QString &Value);
    // The page name that means every page.
    QString PalleteAllStr() const { return m_palleteAllStr; }
    void SetPalleteAllStr(const QString &Value);
    int DeselectorImageIndex() const { return m_deselectorImageIndex; }
    void SetDeselectorImageIndex(int Value);
    bool ShowDeselector() const { return m_showDeselector; }
    void SetShowDeselector(bool Value);
    // The classes offered; referenced, not owned.
    TQorDesignClassList *ClassList() const { return m_classList; }
    void SetClassList(TQorDesignClassList *List);

    // True when the page shown is the all-pages name.
    bool IsPalleteAll(bool Reset = false) const;
    // The first button that is down; null when none is.
    QToolButton *SelectedButton() const;
    // The class the button that is down inserts; null for the deselector
    // and when no button is down.
    const QMetaObject *GetCurrClass() const override;
    const QMetaObject *CurrClass() const { return GetCurrClass(); }
    // The first button while the deselector is shown, else null.
    QToolButton *Deselector() const;
    // Back to the deselector (or to no button down without one).
    void DeselectComps() override;
    // A button for an entry of the class list, appended.
    void AddClassInfo(const TQorDesignClassInformation *Info);
    // The buttons made again for the page shown.
    void UpdateButtons();
    // The class list's images taken again, and the buttons made again.
    void Refresh();

private:
    TQorClassToolBtn *newButton();

    QString m_pallete;
    QString m_palleteAllStr;
    int m_deselectorImageIndex = -1;
    bool m_showDeselector = true;
    bool m_constructed = false;
    TQorDesignClassList *m_classList = nullptr;
};

// The pages of the palette as tabs: choosing a tab shows that page on the
// palette tool bar.
class QORDESIGN_EXPORT TQorCompPalleteTab : public QTabBar
{
    Q_OBJECT
    Q_PROPERTY(bool AutoFillTabs READ AutoFillTabs WRITE SetAutoFillTabs)
    Q_PROPERTY(TQorCompPalleteToolBar *PalleteToolBar READ PalleteToolBar WRITE SetPalleteToolBar)

public:
    explicit TQorCompPalleteTab(QWidget *Parent = nullptr);
    ~TQorCompPalleteTab() override;

    bool AutoFillTabs() const { return m_autoFillTabs; }
    void SetAutoFillTabs(bool Value);
    TQorCompPalleteToolBar *PalleteToolBar() const { return m_toolBar; }
    void SetPalleteToolBar(TQorCompPalleteToolBar *ToolBar);
    // The tabs made again from the tool bar's class list (the non-empty
    // page names), the first chosen.
    void UpdateTabs();
    // The tool bar shows the page of the chosen tab.
    void UpdateToolBarPallete();
    // The tabs made again, then the tool bar.
    void Refresh();

private:
    bool m_autoFillTabs = false;
    bool m_updating = false;
    QPointer<TQorCompPalleteToolBar> m_toolBar;
};
