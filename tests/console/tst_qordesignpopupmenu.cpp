// SPDX-License-Identifier: MIT
// The design popup menus and the attribute editors: the verb items and
// their tags, the separators that gather as designed, the default menu's
// commands, the selection kept to what was right-clicked, the registry of
// attribute editors, and right clicks with real input on the stage and
// on designed controls.
#include "console/qorattribeditors.h"
#include "console/qordesignactions.h"
#include "console/qordesignconsole.h"
#include "console/qordesignintfimpls.h"
#include "console/qordesignpopupmenu.h"
#include "consolefixture.h"
#include "designer/qormanager.h"
#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"

#include <QApplication>
#include <QGroupBox>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

using namespace QorDesigner;

// A button class of the application's, with an attribute editor.
class TGaugeButton : public QPushButton
{
    Q_OBJECT

public:
    using QPushButton::QPushButton;
    int resets = 0;
    int calibrations = 0;
};

class TFancyGaugeButton : public TGaugeButton
{
    Q_OBJECT

public:
    using TGaugeButton::TGaugeButton;
};

namespace {

// Verbs "Reset", "Calibrate", "Test" (in this order).
class GaugeAttribEditor : public TQorCompAttribEditor
{
public:
    using TQorCompAttribEditor::TQorCompAttribEditor;
    int GetVerbCount() const override { return 3; }
    QString GetVerb(int Index) const override
    {
        return QStringList{QStringLiteral("Reset"), QStringLiteral("Calibrate"), QStringLiteral("Test")}.value(Index);
    }
    void ExecuteVerb(int Index) override
    {
        auto *gauge = qobject_cast<TGaugeButton *>(Component());
        if (!gauge)
            return;
        if (Index == 0)
            ++gauge->resets;
        if (Index == 1)
            ++gauge->calibrations;
        if (Index == 2)
            throw EQorError(QStringLiteral("The gauge has no test"));
        // The designer handed to the editor is the form designer.
        if (auto *designer = dynamic_cast<IQorFormDesigner *>(Designer()))
            lastSelected = designer->GetSelectedComponent();
    }
    static inline QObject *lastSelected = nullptr;
};

class OneVerbEditor : public TQorCompAttribEditor
{
public:
    OneVerbEditor(QObject *Component, IDesigner *Designer, QString Verb)
        : TQorCompAttribEditor(Component, Designer)
        , m_verb(std::move(Verb))
    {
    }
    int GetVerbCount() const override { return 1; }
    QString GetVerb(int) const override { return m_verb; }

private:
    QString m_verb;
};

TQorAttribEditorFactory oneVerb(const QString &Verb)
{
    return [Verb](QObject *Component, IDesigner *Designer) {
        return std::make_shared<OneVerbEditor>(Component, Designer, Verb);
    };
}

struct Fixture : QorConsoleTest::StageFixture
{
    QPushButton *b1 = new QPushButton(QStringLiteral("One"), form.get());
    QPushButton *b2 = new QPushButton(QStringLiteral("Two"), form.get());
    QGroupBox *group = new QGroupBox(QStringLiteral("Group"), form.get());
    QPushButton *inner = new QPushButton(QStringLiteral("Inner"), group);
    QTabWidget *tabs = new QTabWidget(form.get());
    TGaugeButton *gauge = new TGaugeButton(QStringLiteral("Gauge"), form.get());
    QObject *timer = new QObject(form.get());

    Fixture()
        : StageFixture(QSize(520, 360))
    {
        place(b1, "Button1", QRect(20, 20, 80, 30));
        place(b2, "Button2", QRect(20, 80, 80, 30));
        place(group, "GroupBox1", QRect(300, 20, 180, 120));
        place(inner, "Inner1", QRect(20, 40, 80, 30));
        place(tabs, "TabWidget1", QRect(20, 160, 260, 150));
        auto *page = new QWidget;
        page->setObjectName(QStringLiteral("TabPage1"));
        tabs->addTab(page, QStringLiteral("Page"));
        InsertComponent(form.get(), page);
        place(gauge, "Gauge1", QRect(300, 170, 100, 30));
        timer->setObjectName(QStringLiteral("Timer1"));
        InsertComponent(form.get(), timer);
        center->SetDesignManager(manager);
    }
};

QStringList texts(const QMenu *Menu)
{
    QStringList list;
    for (const QAction *action : Menu->actions())
        list << (action->isSeparator() ? QStringLiteral("-") : action->text());
    return list;
}

QList<int> tags(const QMenu *Menu)
{
    QList<int> list;
    for (const QAction *action : Menu->actions())
        list << action->data().toInt();
    return list;
}

QMenu *subMenu(const QMenu *Menu, const QString &Title)
{
    for (QAction *action : Menu->actions()) {
        if (action->menu() && action->text() == Title)
            return action->menu();
    }
    return nullptr;
}

// Picks an item of a shown menu with a real click.
void clickItem(QMenu *Menu, QAction *Item)
{
    QTRY_VERIFY(Menu->isVisible());
    RealInput::click(Menu, Menu->actionGeometry(Item).center());
}

QAction *itemByText(const QMenu *Menu, const QString &Text)
{
    for (QAction *action : Menu->actions()) {
        if (action->text() == Text)
            return action;
    }
    return nullptr;
}

} // namespace

class tst_QorDesignPopupMenu : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void componentEditorVerbsComeFirstWithTheirTags();
    void separatorsGatherOverPopupsAsDesigned();
    void twoSelectedComponentsGetNoEditorItems();
    void attributeVerbsComeLastInReverseOrder();
    void theMostDerivedAndLatestRegistrationWins();
    void aRegistrationForTheRootClassNeverMatches();
    void anEditorThatIsNoAttributeEditorIsRefused();
    void theDefaultMenuHasTheFixedCommands();
    void theLastDefaultMenuToPopUpServesTheSharedActions();
    void thePopupKeepsTheClickedControlsSiblings();
    void aNonVisualComponentDeselectsEveryControl();
    void aMenuOnADesignedFormBuildsNothing();
    void aRightClickOnAMultiSelectionKeepsSiblingsThenRunsACommand();
    void aRightClickOnTheStagePopsTheMenuForTheStage();
    void aComponentEditorVerbRunsFromThePopup();
    void anAttributeEditorVerbRunsFromThePopup();
    void aVerbThatFailsIsShownNotThrown();
};

void tst_QorDesignPopupMenu::cleanup()
{
    UnregisterQorComponentAttribEditors(&TGaugeButton::staticMetaObject);
    UnregisterQorComponentAttribEditors(&TFancyGaugeButton::staticMetaObject);
    UnregisterQorComponentAttribEditors(&QPushButton::staticMetaObject);
    UnregisterQorComponentAttribEditors(&QObject::staticMetaObject);
    UnregisterQorComponentAttribEditors(&QWidget::staticMetaObject);
    QorGuiTest::RealInputTestCase::cleanup();
}

void tst_QorDesignPopupMenu::componentEditorVerbsComeFirstWithTheirTags()
{
    Fixture f;
    TQorDesignCompPopupMenu menu;
    menu.addAction(QStringLiteral("Mine"));
    f.center->SetDesignPopupMenu(&menu);
    QCOMPARE(menu.ConsoleCenter(), f.center.get());
    QVERIFY(f.design());
    f.select({f.tabs});
    menu.SetPopupComponent(f.tabs);
    menu.DoPopup(&menu);
    QCOMPARE(texts(&menu), (QStringList{QStringLiteral("Add Page"), QStringLiteral("Delete Page"),
                                        QStringLiteral("Next Page"), QStringLiteral("Previous Page"),
                                        QStringLiteral("-"), QStringLiteral("Mine")}));
    QCOMPARE(tags(&menu), (QList<int>{1000, 1001, 1002, 1003, 0, 0}));
    QCOMPARE(menu.LastCompEditorItemCount(), 4);
    // The verb runs through the editor; the design is dirty.
    f.center->SetDirty(false);
    const int pages = f.tabs->count();
    menu.CompEditorItemOnClick(menu.actions().at(0));
    QCOMPARE(f.tabs->count(), pages + 1);
    QVERIFY(f.center->GetDirty());
    // A sender that is no menu item runs nothing.
    menu.CompEditorItemOnClick(&menu);
    QCOMPARE(f.tabs->count(), pages + 1);
}

void tst_QorDesignPopupMenu::separatorsGatherOverPopupsAsDesigned()
{
    Fixture f;
    TQorDesignCompPopupMenuEx menu;
    f.center->SetDesignPopupMenu(&menu);
    RegisterQorComponentAttribEditor<GaugeAttribEditor>(&TGaugeButton::staticMetaObject);
    QVERIFY(f.design());
    f.select({f.gauge});
    menu.SetPopupComponent(f.gauge);
    for (int popup = 1; popup <= 3; ++popup) {
        menu.DoPopup(&menu);
        const QStringList items = texts(&menu);
        // One separator from each popup's component editor (it has no
        // verbs) and one before each popup's attribute verbs.
        QCOMPARE(items.count(QStringLiteral("-")), 2 * popup);
        QCOMPARE(items.mid(items.size() - 3),
                 (QStringList{QStringLiteral("Test"), QStringLiteral("Calibrate"), QStringLiteral("Reset")}));
        QCOMPARE(items.size(), 2 * popup + 3);
    }
}

void tst_QorDesignPopupMenu::twoSelectedComponentsGetNoEditorItems()
{
    Fixture f;
    TQorDesignCompPopupMenuEx menu;
    f.center->SetDesignPopupMenu(&menu);
    RegisterQorComponentAttribEditor<GaugeAttribEditor>(&QPushButton::staticMetaObject);
    QVERIFY(f.design());
    f.select({f.tabs, f.gauge});
    menu.SetPopupComponent(f.gauge);
    menu.DoPopup(&menu);
    QCOMPARE(texts(&menu), QStringList());
    QVERIFY(!menu.GetCompEditor());
    QVERIFY(!menu.GetAttribEditor());
}

void tst_QorDesignPopupMenu::attributeVerbsComeLastInReverseOrder()
{
    Fixture f;
    TQorDesignCompPopupMenuEx menu;
    menu.addAction(QStringLiteral("Mine"));
    f.center->SetDesignPopupMenu(&menu);
    RegisterQorComponentAttribEditor<GaugeAttribEditor>(&TGaugeButton::staticMetaObject);
    QVERIFY(f.design());
    f.select({f.gauge});
    menu.SetPopupComponent(f.gauge);
    menu.DoPopup(&menu);
    QCOMPARE(texts(&menu), (QStringList{QStringLiteral("-"), QStringLiteral("Mine"), QStringLiteral("-"),
                                        QStringLiteral("Test"), QStringLiteral("Calibrate"), QStringLiteral("Reset")}));
    QCOMPARE(tags(&menu), (QList<int>{0, 0, 0, 1002, 1001, 1000}));
    QCOMPARE(menu.LastAttribItemCount(), 3);
    f.center->SetDirty(false);
    menu.AttribEditorItemOnClick(menu.actions().at(4));
    QCOMPARE(f.gauge->calibrations, 1);
    QCOMPARE(GaugeAttribEditor::lastSelected, f.gauge);
    QVERIFY(f.center->GetDirty());
}

void tst_QorDesignPopupMenu::theMostDerivedAndLatestRegistrationWins()
{
    Fixture f;
    TFancyGaugeButton fancy;
    TQorFormDesigner designer(f.manager);
    auto verbOf = [&designer](QObject *Component) {
        IQorAttribEditorRef editor;
        GetQorComponentAttribEditor(Component, &designer, editor);
        return editor ? editor->GetVerb(0) : QStringLiteral("(none)");
    };
    RegisterQorComponentAttribEditor(&TGaugeButton::staticMetaObject, oneVerb(QStringLiteral("gauge")));
    RegisterQorComponentAttribEditor(&QPushButton::staticMetaObject, oneVerb(QStringLiteral("button")));
    RegisterQorComponentAttribEditor(&QWidget::staticMetaObject, oneVerb(QStringLiteral("widget")));
    // The nearest class wins, whatever the order of registration.
    QCOMPARE(verbOf(f.gauge), QStringLiteral("gauge"));
    QCOMPARE(verbOf(&fancy), QStringLiteral("gauge"));
    QCOMPARE(verbOf(f.b1), QStringLiteral("button"));
    QCOMPARE(verbOf(f.group), QStringLiteral("widget"));
    QCOMPARE(verbOf(f.timer), QStringLiteral("(none)"));
    // Among registrations of one class, the latest.
    RegisterQorComponentAttribEditor(&TGaugeButton::staticMetaObject, oneVerb(QStringLiteral("gauge 2")));
    QCOMPARE(verbOf(f.gauge), QStringLiteral("gauge 2"));
    RegisterQorComponentAttribEditor(&TFancyGaugeButton::staticMetaObject, oneVerb(QStringLiteral("fancy")));
    QCOMPARE(verbOf(&fancy), QStringLiteral("fancy"));
    QCOMPARE(verbOf(f.gauge), QStringLiteral("gauge 2"));
}

void tst_QorDesignPopupMenu::aRegistrationForTheRootClassNeverMatches()
{
    Fixture f;
    RegisterQorComponentAttribEditor(&QObject::staticMetaObject, oneVerb(QStringLiteral("root")));
    IQorAttribEditorRef editor;
    GetQorComponentAttribEditor(f.timer, nullptr, editor);
    QVERIFY(!editor);
    GetQorComponentAttribEditor(f.b1, nullptr, editor);
    QVERIFY(!editor);
    // Nothing matched: what was there stays.
    IQorAttribEditorRef kept = std::make_shared<TQorCompAttribEditor>(f.b1, nullptr);
    IQorAttribEditor *before = kept.get();
    GetQorComponentAttribEditor(f.b1, nullptr, kept);
    QCOMPARE(kept.get(), before);
    // The base editor's operations.
    QCOMPARE(kept->GetVerbCount(), 0);
    QVERIFY(kept->GetDefaultEvoke());
    kept->LaunchPropertyDialog();
    kept->StartEmbedEdit();
    kept->EndEmbedEdit();
}

void tst_QorDesignPopupMenu::anEditorThatIsNoAttributeEditorIsRefused()
{
    Fixture f;
    RegisterQorComponentAttribEditor(&QPushButton::staticMetaObject, [](QObject *Component, IDesigner *Designer) {
        return std::make_shared<TQorPagesEditor>(Component, Designer);
    });
    IQorAttribEditorRef editor;
    GetQorComponentAttribEditor(f.b1, nullptr, editor);
    QVERIFY(!editor);
}

void tst_QorDesignPopupMenu::theDefaultMenuHasTheFixedCommands()
{
    Fixture f;
    TQorDefDesignCompPopupMenu menu;
    menu.addAction(QStringLiteral("Mine"));
    f.center->SetDesignPopupMenu(&menu);
    QVERIFY(f.design());
    f.select({f.b1, f.b2});
    menu.SetPopupComponent(f.b1);
    menu.DoPopup(&menu);
    // Two selected: no verbs; the application's own item is cleared.
    QCOMPARE(texts(&menu), (QStringList{QStringLiteral("&Edit"), QStringLiteral("&Control"), QStringLiteral("-"),
                                        QStringLiteral("&Position"), QStringLiteral("&Flip Children")}));
    const QList<TQorDesignAction *> shared = QorDefDesignActions();
    QCOMPARE(shared.size(), 12);
    auto list = [&shared](std::initializer_list<int> Indexes) {
        QList<QAction *> actions;
        for (int i : Indexes)
            actions << (i < 0 ? nullptr : shared[i]);
        return actions;
    };
    auto actionsOf = [](const QMenu *Menu) {
        QList<QAction *> actions;
        for (QAction *action : Menu->actions())
            actions << (action->isSeparator() ? nullptr : action);
        return actions;
    };
    QCOMPARE(actionsOf(subMenu(&menu, QStringLiteral("&Edit"))), list({0, 1, 2, 3, -1, 4}));
    QCOMPARE(texts(subMenu(&menu, QStringLiteral("&Edit"))),
             (QStringList{QStringLiteral("&Copy"), QStringLiteral("&Cut"), QStringLiteral("&Paste"),
                          QStringLiteral("Select &All"), QStringLiteral("-"), QStringLiteral("&Delete")}));
    QCOMPARE(actionsOf(subMenu(&menu, QStringLiteral("&Control"))), list({5, 6}));
    QCOMPARE(actionsOf(subMenu(&menu, QStringLiteral("&Position"))), list({9, 10, 11}));
    QCOMPARE(texts(subMenu(&menu, QStringLiteral("&Position"))),
             (QStringList{QStringLiteral("&Align..."), QStringLiteral("&Size..."), QStringLiteral("Scal&e...")}));
    QCOMPARE(actionsOf(subMenu(&menu, QStringLiteral("&Flip Children"))), list({8, 7}));
    // The classes, in the order of the list.
    QCOMPARE(QLatin1String(shared[0]->metaObject()->className()), QLatin1String("TQorDesignEditCopy"));
    QCOMPARE(QLatin1String(shared[7]->metaObject()->className()), QLatin1String("TQorDesignSelCtrlFlipSelChildren"));
    QCOMPARE(QLatin1String(shared[11]->metaObject()->className()), QLatin1String("TQorDesignSelCtrlPositionScale"));
    for (TQorDesignAction *action : shared)
        QCOMPARE(action->ConsoleCenter(), f.center.get());
    QVERIFY(shared[0]->isEnabled());

    // One selected component: its verbs on top, then the commands; built
    // afresh, with no separators left from before.
    f.select({f.tabs});
    menu.SetPopupComponent(f.tabs);
    menu.DoPopup(&menu);
    QCOMPARE(texts(&menu).mid(0, 6), (QStringList{QStringLiteral("Add Page"), QStringLiteral("Delete Page"),
                                                  QStringLiteral("Next Page"), QStringLiteral("Previous Page"),
                                                  QStringLiteral("-"), QStringLiteral("&Edit")}));
    QCOMPARE(menu.actions().size(), 10);
}

void tst_QorDesignPopupMenu::theLastDefaultMenuToPopUpServesTheSharedActions()
{
    Fixture f;
    Fixture g;
    TQorDefDesignCompPopupMenu first;
    TQorDefDesignCompPopupMenu second;
    f.center->SetDesignPopupMenu(&first);
    g.center->SetDesignPopupMenu(&second);
    first.DoPopup(&first);
    for (TQorDesignAction *action : QorDefDesignActions())
        QCOMPARE(action->ConsoleCenter(), f.center.get());
    second.DoPopup(&second);
    for (TQorDesignAction *action : QorDefDesignActions())
        QCOMPARE(action->ConsoleCenter(), g.center.get());
}

void tst_QorDesignPopupMenu::thePopupKeepsTheClickedControlsSiblings()
{
    Fixture f;
    TQorDesignCompPopupMenu menu;
    f.center->SetDesignPopupMenu(&menu);
    QVERIFY(f.design());
    f.select({f.b1, f.inner, f.b2});
    f.center->SetSelectedCompsSilently(TComponentList(QList<QObject *>{f.b1, f.inner, f.b2, f.timer}));
    menu.SetPopupComponent(f.b2);
    menu.DoPopup(&menu);
    QCOMPARE(f.selection(), (QList<QObject *>{f.b1, f.b2}));
    QCOMPARE(f.manager->SelectedComps().toList(), (QList<QObject *>{f.b1, f.b2}));
    // A design part clicked (the menu's own tree, a sizer): nothing changes.
    f.select({f.b1, f.inner});
    TQorDesignCenter other;
    menu.SetPopupComponent(&other);
    menu.DoPopup(&menu);
    QCOMPARE(f.selection(), (QList<QObject *>{f.b1, f.inner}));
}

void tst_QorDesignPopupMenu::aNonVisualComponentDeselectsEveryControl()
{
    Fixture f;
    TQorDesignCompPopupMenu menu;
    f.center->SetDesignPopupMenu(&menu);
    QVERIFY(f.design());
    f.center->SetSelectedCompsSilently(TComponentList(QList<QObject *>{f.b1, f.timer, f.b2}));
    menu.SetPopupComponent(f.timer);
    menu.DoPopup(&menu);
    QCOMPARE(f.selection(), QList<QObject *>{f.timer});
}

void tst_QorDesignPopupMenu::aMenuOnADesignedFormBuildsNothing()
{
    Fixture f;
    // A component of the form, as a form keeps its menus.
    auto menu = std::make_unique<TQorDefDesignCompPopupMenu>();
    menu->setObjectName(QStringLiteral("PopupMenu1"));
    InsertComponent(f.form.get(), menu.get());
    f.center->SetDesignPopupMenu(menu.get());
    menu->addAction(QStringLiteral("Designed item"));
    QVERIFY(f.design());
    f.select({f.tabs});
    menu->DoPopup(menu.get());
    QCOMPARE(texts(menu.get()), QStringList{QStringLiteral("Designed item")});
    // Designing off: the menu is the design's menu again.
    f.manager->SetIsDesigning(false);
    menu->DoPopup(menu.get());
    QCOMPARE(texts(menu.get()).first(), QStringLiteral("&Edit"));
    f.center->SetDesignPopupMenu(nullptr);
}

void tst_QorDesignPopupMenu::aRightClickOnAMultiSelectionKeepsSiblingsThenRunsACommand()
{
    Fixture f;
    TQorDefDesignCompPopupMenu menu;
    f.center->SetDesignPopupMenu(&menu);
    QVERIFY(f.design());
    // Selected as a user selects: a click, then Shift-clicks.
    RealInput::click(f.b1);
    QTRY_COMPARE(f.selection(), QList<QObject *>{f.b1});
    RealInput::click(f.inner, QPoint(-1, -1), Qt::LeftButton, Qt::ShiftModifier);
    RealInput::click(f.b2, QPoint(-1, -1), Qt::LeftButton, Qt::ShiftModifier);
    QTRY_COMPARE(f.selection().size(), 3);
    // A right click on one of them: its sibling stays, the control in the
    // group goes.
    RealInput::click(f.b2, QPoint(10, 10), Qt::RightButton);
    QTRY_VERIFY(menu.isVisible());
    QCOMPARE(menu.PopupComponent(), f.b2);
    QCOMPARE(f.selection(), (QList<QObject *>{f.b1, f.b2}));
    QCOMPARE(f.manager->SelectedComps().toList(), (QList<QObject *>{f.b1, f.b2}));
    // Control > Bring to Front.
    QMenu *control = subMenu(&menu, QStringLiteral("&Control"));
    QVERIFY(control);
    clickItem(&menu, control->menuAction());
    QTRY_VERIFY(control->isVisible());
    clickItem(control, QorDefDesignActions().at(5));
    QTRY_VERIFY(!menu.isVisible());
    QWidgetList order;
    for (QObject *child : f.form->children()) {
        if (child->isWidgetType() && Owner(child) == f.form.get())
            order << static_cast<QWidget *>(child);
    }
    QCOMPARE(order.mid(order.size() - 2), (QWidgetList{f.b1, f.b2}));
    QVERIFY(f.center->GetDirty());
}

void tst_QorDesignPopupMenu::aRightClickOnTheStagePopsTheMenuForTheStage()
{
    Fixture f;
    TQorDefDesignCompPopupMenu menu;
    f.center->SetDesignPopupMenu(&menu);
    QVERIFY(f.design());
    RealInput::click(f.b1);
    QTRY_COMPARE(f.selection(), QList<QObject *>{f.b1});
    RealInput::click(f.form.get(), QPoint(450, 300), Qt::RightButton);
    QTRY_VERIFY(menu.isVisible());
    QCOMPARE(menu.PopupComponent(), f.form.get());
    QCOMPARE(f.selection(), QList<QObject *>{f.form.get()});
    // Only the stage: copy is off, the commands on the selection are on.
    QVERIFY(!QorDefDesignActions().at(0)->isEnabled());
    QVERIFY(QorDefDesignActions().at(5)->isEnabled());
    RealInput::key("Escape");
    QTRY_VERIFY(!menu.isVisible());
}

void tst_QorDesignPopupMenu::aComponentEditorVerbRunsFromThePopup()
{
    Fixture f;
    TQorDefDesignCompPopupMenu menu;
    f.center->SetDesignPopupMenu(&menu);
    QVERIFY(f.design());
    const int pages = f.tabs->count();
    // A right click on the tab widget beside its tabs, not selected
    // before.
    RealInput::click(f.tabs, QPoint(f.tabs->width() - 20, 8), Qt::RightButton);
    QTRY_VERIFY(menu.isVisible());
    QCOMPARE(f.selection(), QList<QObject *>{f.tabs});
    QAction *add = itemByText(&menu, QStringLiteral("Add Page"));
    QVERIFY(add);
    QCOMPARE(add->data().toInt(), 1000);
    clickItem(&menu, add);
    QTRY_COMPARE(f.tabs->count(), pages + 1);
    QCOMPARE(Owner(f.tabs->widget(pages)), f.form.get());
    QVERIFY(f.center->GetDirty());
}

void tst_QorDesignPopupMenu::anAttributeEditorVerbRunsFromThePopup()
{
    Fixture f;
    RegisterQorComponentAttribEditor<GaugeAttribEditor>(&TGaugeButton::staticMetaObject);
    TQorDefDesignCompPopupMenu menu;
    f.center->SetDesignPopupMenu(&menu);
    QVERIFY(f.design());
    RealInput::click(f.gauge, QPoint(10, 10), Qt::RightButton);
    QTRY_VERIFY(menu.isVisible());
    const QStringList items = texts(&menu);
    // Component editor separator, no verbs; the attribute verbs after
    // their separator, before the commands.
    QCOMPARE(items.mid(0, 5), (QStringList{QStringLiteral("-"), QStringLiteral("-"), QStringLiteral("Test"),
                                           QStringLiteral("Calibrate"), QStringLiteral("Reset")}));
    clickItem(&menu, itemByText(&menu, QStringLiteral("Reset")));
    QTRY_COMPARE(f.gauge->resets, 1);
    QCOMPARE(f.gauge->calibrations, 0);
}

void tst_QorDesignPopupMenu::aVerbThatFailsIsShownNotThrown()
{
    Fixture f;
    RegisterQorComponentAttribEditor<GaugeAttribEditor>(&TGaugeButton::staticMetaObject);
    TQorDefDesignCompPopupMenu menu;
    f.center->SetDesignPopupMenu(&menu);
    QVERIFY(f.design());
    RealInput::click(f.gauge, QPoint(10, 10), Qt::RightButton);
    QTRY_VERIFY(menu.isVisible());
    clickItem(&menu, itemByText(&menu, QStringLiteral("Test")));
    QMessageBox *box = nullptr;
    QTRY_VERIFY((box = f.form->findChild<QMessageBox *>(QStringLiteral("QorDesignCommandError"))));
    QCOMPARE(box->text(), QStringLiteral("The gauge has no test"));
    QCOMPARE(box->windowTitle(), QStringLiteral("Test"));
    box->close();
    QTRY_VERIFY(!f.form->findChild<QMessageBox *>(QStringLiteral("QorDesignCommandError")));
    // The design goes on: the next verb runs.
    RealInput::click(f.gauge, QPoint(10, 10), Qt::RightButton);
    QTRY_VERIFY(menu.isVisible());
    clickItem(&menu, itemByText(&menu, QStringLiteral("Reset")));
    QTRY_COMPARE(f.gauge->resets, 1);
}

QTEST_MAIN(tst_QorDesignPopupMenu)
#include "tst_qordesignpopupmenu.moc"
