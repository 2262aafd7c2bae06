// SPDX-License-Identifier: MIT
// The demo designer's window: its areas, the stage's widgets and the
// components the stage owns, shown in the component tree.
#include "designer/qordesigner_p.h"
#include "console/qordesignconsole.h"
#include "console/qordesignpopupmenu.h"
#include "designer/qormanager.h"
#include "foundation/qorcomponents.h"
#include "foundation/vhoclipbrdutils.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"
#include "browsing/qorclassesman.h"
#include "browsing/qorcomptreeview.h"
#include "browsing/qorpallete.h"
#include "inspector/qorinspector.h"
#include "qordemowindow.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDockWidget>
#include <QGroupBox>
#include <QLineEdit>
#include <QTabBar>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QScopeGuard>
#include <QStatusBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>
#include <QToolBar>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include <memory>

namespace {

// The inspector line of a property, whatever its indent and marker.
int lineOf(TQorObjInspector *inspector, const QString &name)
{
    TValueListStrings *lines = inspector->Strings();
    for (int i = 0; i < lines->Count(); ++i) {
        if (lines->Names(i).mid(2) == name)
            return i;
    }
    return -1;
}


} // namespace

class tst_Demo : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theWindowHasAreasForPaletteTreeAndInspector()
    {
        QorDemoWindow window;
        QStringList docks;
        for (QDockWidget *dock : window.findChildren<QDockWidget *>())
            docks << dock->windowTitle();
        docks.sort();
        QCOMPARE(docks,
                 QStringList({QStringLiteral("Components"), QStringLiteral("Inspector"), QStringLiteral("Palette")}));
        // The palette's pages as tabs; the first page's classes on the bar
        // after the arrow.
        QStringList pages;
        for (int i = 0; i < window.paletteTabs()->count(); ++i)
            pages << window.paletteTabs()->tabText(i);
        for (const char *page : {"Buttons", "Input", "Containers", "Display", "Items"})
            QVERIFY2(pages.contains(QLatin1String(page)), page);
        QVERIFY(window.classList()->Count() >= 30);
        QCOMPARE(window.paletteBar()->Pallete(), QStringLiteral("Buttons"));
        QVERIFY(window.paletteBar()->Deselector()->isChecked());
        QCOMPARE(window.paletteBar()->Buttons(1)->toolTip(), QStringLiteral("QPushButton"));
    }

    void theStageOwnsItsNamedWidgetsInFormOrder()
    {
        QorDemoWindow window;
        QStringList names;
        for (QObject *c : ComponentList(window.stage()))
            names << c->objectName();
        QCOMPARE(names,
                 QStringList({QStringLiteral("GroupBox1"), QStringLiteral("Label1"), QStringLiteral("Button1"),
                              QStringLiteral("LineEdit1"), QStringLiteral("CheckBox1"), QStringLiteral("ComboBox1"),
                              QStringLiteral("SpinBox1"), QStringLiteral("TextEdit1"), QStringLiteral("TabWidget1"),
                              QStringLiteral("TabPage1"), QStringLiteral("Button2"), QStringLiteral("TabPage2")}));
        auto *group = window.stage()->findChild<QGroupBox *>(QStringLiteral("GroupBox1"));
        QVERIFY(group);
        QCOMPARE(window.stage()->findChild<QPushButton *>(QStringLiteral("Button1"))->parentWidget(), group);
        auto *tabs = window.stage()->findChild<QTabWidget *>(QStringLiteral("TabWidget1"));
        QVERIFY(tabs);
        QCOMPARE(tabs->widget(0)->findChild<QPushButton *>()->objectName(), QStringLiteral("Button2"));
    }

    void theStageCanStartEmpty()
    {
        QorDemoWindow window(nullptr, QorDemoWindow::StartStage::Empty);
        QCOMPARE(ComponentCount(window.stage()), 0);
        QVERIFY(window.stage()->findChildren<QWidget *>().isEmpty());
        QTreeWidget *tree = window.componentTree();
        QCOMPARE(tree->topLevelItemCount(), 1);
        QCOMPARE(tree->topLevelItem(0)->childCount(), 0);
    }

    void theComponentTreeNestsComponentsByContainer()
    {
        QorDemoWindow window;
        QTreeWidget *tree = window.componentTree();
        QCOMPARE(tree->topLevelItemCount(), 1);
        QTreeWidgetItem *root = tree->topLevelItem(0);
        QCOMPARE(root->text(0), QStringLiteral("Stage"));
        QCOMPARE(root->child(0)->text(0), QStringLiteral("GroupBox1"));
        QCOMPARE(root->child(0)->childCount(), 2);
        const auto pages = tree->findItems(QStringLiteral("TabPage1"), Qt::MatchRecursive);
        QCOMPARE(pages.size(), 1);
        QCOMPARE(pages.first()->parent()->text(0), QStringLiteral("TabWidget1"));
        QCOMPARE(pages.first()->child(0)->text(0), QStringLiteral("Button2"));
        // No inner part of a composite widget is listed.
        QVERIFY(tree->findItems(QStringLiteral("qt_"), Qt::MatchStartsWith | Qt::MatchRecursive).isEmpty());
    }

    void aClickOnATreeNodeShowsThatComponentsProperties()
    {
        QorDemoWindow window;
        QVERIFY(QorGuiTest::showAndActivate(&window, QPoint(0, 0)));
        QTreeWidget *tree = window.componentTree();
        TQorObjInspector *inspector = window.inspector();
        // The stage is shown first.
        QTRY_COMPARE(inspector->ActiveComponent(), window.stage());
        QCOMPARE(lineOf(inspector, QStringLiteral("autoDefault")), -1);
        const auto nodes = tree->findItems(QStringLiteral("Button1"), Qt::MatchExactly | Qt::MatchRecursive);
        QCOMPARE(nodes.size(), 1);
        const QRect node = tree->visualItemRect(nodes.first());
        QVERIFY(!node.isEmpty());
        RealInput::click(tree->viewport(), node.center());
        QTRY_COMPARE(tree->currentItem(), nodes.first());
        QTRY_COMPARE(inspector->ActiveComponent()->objectName(), QStringLiteral("Button1"));
        TValueListStrings *lines = inspector->Strings();
        QCOMPARE(lines->ValueFromIndex(lineOf(inspector, QStringLiteral("text"))), QStringLiteral("Look up"));
        QCOMPARE(lines->ValueFromIndex(lineOf(inspector, QStringLiteral("focusPolicy"))), QStringLiteral("StrongFocus"));
        QVERIFY(lineOf(inspector, QStringLiteral("autoDefault")) >= 0);
        // Listed by name.
        QStringList names;
        for (int i = 0; i < lines->Count(); ++i)
            names << lines->Names(i).mid(2);
        QStringList sorted = names;
        std::sort(sorted.begin(), sorted.end(),
                  [](const QString &a, const QString &b) { return a.compare(b, Qt::CaseInsensitive) < 0; });
        QCOMPARE(names, sorted);
    }

    void theEventsSwitchShowsTheSignalsInsteadOfTheProperties()
    {
        QorDemoWindow window;
        QVERIFY(QorGuiTest::showAndActivate(&window, QPoint(0, 0)));
        TQorObjInspector *inspector = window.inspector();
        inspector->SetActiveComponent(window.stage()->findChild<QWidget *>(QStringLiteral("Button1")));
        QVERIFY(lineOf(inspector, QStringLiteral("text")) >= 0);
        QCOMPARE(lineOf(inspector, QStringLiteral("clicked")), -1);
        QTabBar *tabs = window.inspectorSwitch();
        RealInput::click(tabs, tabs->tabRect(1).center());
        QTRY_VERIFY(lineOf(inspector, QStringLiteral("clicked")) >= 0);
        QCOMPARE(lineOf(inspector, QStringLiteral("text")), -1);
        RealInput::click(tabs, tabs->tabRect(0).center());
        QTRY_VERIFY(lineOf(inspector, QStringLiteral("text")) >= 0);
    }

    void theChineseSwitchShowsTheDictionarysLabelsAndBack()
    {
        QVERIFY(!QorDemoWindow::dictionaryFile().isEmpty());
        QorDemoWindow window;
        QVERIFY(QorGuiTest::showAndActivate(&window, QPoint(0, 0)));
        TQorObjInspector *inspector = window.inspector();
        QTRY_COMPARE(inspector->ActiveComponent(), window.stage());
        QVERIFY(lineOf(inspector, QStringLiteral("enabled")) >= 0);
        const QToolButton *buttonClass = window.paletteBar()->findChild<QToolButton *>(QStringLiteral("QPushButtonButton"));
        QVERIFY(buttonClass);
        QCOMPARE(buttonClass->toolTip(), QStringLiteral("QPushButton"));
        // The box and its text take the click, not the width beside them.
        const QPoint box(8, window.chineseSwitch()->height() / 2);
        RealInput::click(window.chineseSwitch(), box);
        QTRY_VERIFY(window.chineseSwitch()->isChecked());
        QTRY_VERIFY(lineOf(inspector, QStringLiteral("可用")) >= 0);
        QCOMPARE(inspector->Strings()->ValueFromIndex(lineOf(inspector, QStringLiteral("可用"))), QStringLiteral("是"));
        QCOMPARE(lineOf(inspector, QStringLiteral("enabled")), -1);
        // The palette's buttons are made again with the labels; inserting
        // still knows the class behind the label.
        auto *labelled = window.paletteBar()->findChild<TQorClassToolBtn *>(QStringLiteral("QPushButtonButton"));
        QTRY_VERIFY((labelled = window.paletteBar()->findChild<TQorClassToolBtn *>(QStringLiteral("QPushButtonButton")))
                    && labelled->toolTip() == QStringLiteral("按钮"));
        QCOMPARE(labelled->ClassRef, &QPushButton::staticMetaObject);
        RealInput::click(window.chineseSwitch(), box);
        QTRY_VERIFY(lineOf(inspector, QStringLiteral("enabled")) >= 0);
        QTRY_VERIFY((labelled = window.paletteBar()->findChild<TQorClassToolBtn *>(QStringLiteral("QPushButtonButton")))
                    && labelled->toolTip() == QStringLiteral("QPushButton"));
    }

    void theChineseSwitchTurnsTheMenusTheToolBarAndTheDialogsChinese()
    {
        QorDemoWindow window;
        QVERIFY(QorGuiTest::showAndActivate(&window, QPoint(0, 0)));
        window.designAction()->setChecked(true);
        QMenu *edit = window.findChild<QMenu *>(QStringLiteral("EditMenu"));
        QMenu *arrange = window.findChild<QMenu *>(QStringLiteral("ArrangeMenu"));
        auto *copy = window.findChild<QAction *>(QStringLiteral("CopyAction"));
        auto *front = window.findChild<QAction *>(QStringLiteral("FrontAction"));
        QVERIFY(edit && arrange && copy && front);
        QCOMPARE(edit->title(), QStringLiteral("&Edit"));
        QCOMPARE(copy->toolTip(), QStringLiteral("Copy"));
        const QPoint box(8, window.chineseSwitch()->height() / 2);
        RealInput::click(window.chineseSwitch(), box);
        QTRY_COMPARE(edit->title(), QStringLiteral("编辑(&E)"));
        QTRY_COMPARE(arrange->title(), QStringLiteral("排列(&A)"));
        QTRY_COMPARE(copy->text(), QStringLiteral("复制(&C)"));
        // Qt makes the tip of the caption without its ampersand.
        QCOMPARE(copy->toolTip(), QStringLiteral("复制(C)"));
        QCOMPARE(front->toolTip(), QStringLiteral("置于顶层(&B)"));
        QCOMPARE(window.designAction()->text(), QStringLiteral("设计"));
        // The dialogs too, opened from the Chinese menu with real clicks.
        auto *check = window.stage()->findChild<QCheckBox *>(QStringLiteral("CheckBox1"));
        RealInput::click(check);
        QTRY_COMPARE(window.designManager()->SelectedComps().toList(), QList<QObject *>{check});
        auto title = std::make_shared<QString>();
        const auto driven = QorGuiTest::whenModalOpens([title](QWidget *modal) {
            *title = modal->windowTitle();
            RealInput::key("Escape");
        });
        QVERIFY(QorGuiTest::chooseFromMenu(&window, arrange, "SizeAction"));
        QTRY_VERIFY(*driven);
        QCOMPARE(*title, QStringLiteral("大小"));
        // And back.
        RealInput::click(window.chineseSwitch(), box);
        QTRY_COMPARE(edit->title(), QStringLiteral("&Edit"));
        QTRY_COMPARE(copy->text(), QStringLiteral("&Copy"));
        QCOMPARE(window.designAction()->text(), QStringLiteral("Design"));
        window.designAction()->setChecked(false);
    }

    void theToolBarsButtonsRunTheDesignCommands()
    {
        QorDemoWindow window;
        QVERIFY(QorGuiTest::showAndActivate(&window, QPoint(0, 0)));
        window.designAction()->setChecked(true);
        QToolBar *tools = window.designToolBar();
        auto buttonOf = [tools, &window](const char *name) {
            return tools->widgetForAction(window.findChild<QAction *>(QLatin1String(name)));
        };
        // Nothing but the stage selected: copy and delete are off, the
        // commands on the selection are on; every button shows an icon.
        QTRY_VERIFY(!buttonOf("CopyAction")->isEnabled());
        QVERIFY(buttonOf("FrontAction")->isEnabled());
        for (QAction *action : tools->actions()) {
            if (action != window.designAction() && !action->isSeparator())
                QVERIFY2(!action->icon().isNull(), qPrintable(action->objectName()));
        }
        QWidget *stage = window.stage();
        auto *line = stage->findChild<QLineEdit *>(QStringLiteral("LineEdit1"));
        auto *group = stage->findChild<QWidget *>(QStringLiteral("GroupBox1"));
        auto depth = [stage](QWidget *w) { return stage->children().indexOf(w); };
        RealInput::click(line, QPoint(line->width() / 2, 5));
        QTRY_COMPARE(window.designManager()->SelectedComps().toList(), QList<QObject *>{line});
        QTRY_VERIFY(buttonOf("CopyAction")->isEnabled());
        RealInput::click(buttonOf("BackAction"));
        QTRY_VERIFY(depth(line) < depth(group));
        RealInput::click(buttonOf("FrontAction"));
        QTRY_VERIFY(depth(line) > depth(group));
        // Copy, then paste: a second line edit.
        const int before = ComponentCount(stage);
        RealInput::click(buttonOf("CopyAction"));
        QTRY_VERIFY(VhoClipboard()->HasComponents());
        RealInput::click(buttonOf("PasteAction"));
        QTRY_COMPARE(ComponentCount(stage), before + 1);
        window.designAction()->setChecked(false);
    }

    void aRightClickInTheTreeOpensTheDesignMenuForTheSelection()
    {
        QorDemoWindow window;
        QVERIFY(QorGuiTest::showAndActivate(&window, QPoint(0, 0)));
        window.designAction()->setChecked(true);
        TQorCompTreeView *tree = window.componentTree();
        auto *tabs = window.stage()->findChild<QTabWidget *>(QStringLiteral("TabWidget1"));
        QTreeWidgetItem *row = tree->FindComponentNode(tabs);
        QVERIFY(row);
        tree->scrollToItem(row);
        RealInput::click(tree->viewport(), tree->visualItemRect(row).center());
        QTRY_COMPARE(window.designCenter()->SelectedComps().toList(), QList<QObject *>{tabs});
        // A right click on another row: the menu is the tree's, for what is
        // selected; the tree's selection stays.
        QTreeWidgetItem *other = tree->FindComponentNode(window.stage()->findChild<QLineEdit *>(QStringLiteral("LineEdit1")));
        RealInput::click(tree->viewport(), tree->visualItemRect(other).center(), Qt::RightButton);
        TQorDefDesignCompPopupMenu *menu = window.designPopupMenu();
        QTRY_VERIFY(menu->isVisible());
        QCOMPARE(menu->PopupComponent(), tree);
        QCOMPARE(window.designCenter()->SelectedComps().toList(), QList<QObject *>{tabs});
        QCOMPARE(tree->selectedItems(), QList<QTreeWidgetItem *>{row});
        // The tab widget's verbs on top.
        QCOMPARE(menu->actions().at(0)->text(), QStringLiteral("Add Page"));
        RealInput::key("Escape");
        QTRY_VERIFY(!menu->isVisible());
        window.designAction()->setChecked(false);
    }

    void copyAndPasteFromTheEditMenuMakeANewlyNamedComponent()
    {
        QorDemoWindow window;
        QVERIFY(QorGuiTest::showAndActivate(&window, QPoint(0, 0)));
        window.designAction()->setChecked(true);
        auto *check = window.stage()->findChild<QCheckBox *>(QStringLiteral("CheckBox1"));
        RealInput::click(check);
        QTRY_COMPARE(window.designManager()->SelectedComps().toList(), QList<QObject *>{check});
        const int before = ComponentCount(window.stage());
        QMenu *edit = window.findChild<QMenu *>(QStringLiteral("EditMenu"));
        QVERIFY(edit);
        QVERIFY(QorGuiTest::chooseFromMenu(&window, edit, "CopyAction"));
        QTRY_VERIFY(VhoClipboard()->HasComponents());
        QVERIFY(QorGuiTest::chooseFromMenu(&window, edit, "PasteAction"));
        QTRY_COMPARE(ComponentCount(window.stage()), before + 1);
        auto *copy = qobject_cast<QCheckBox *>(FindComponent(window.stage(), QStringLiteral("CheckBox2")));
        QVERIFY(copy);
        QCOMPARE(copy->text(), check->text());
        QCOMPARE(copy->pos(), check->pos() + QPoint(4, 4));
        QTRY_VERIFY(!window.componentTree()->findItems(QStringLiteral("CheckBox2"), Qt::MatchRecursive).isEmpty());
        window.designAction()->setChecked(false);
    }

    void theEditKeysCutCopyPasteSelectAllAndDeleteOnTheStage()
    {
        QorDemoWindow window;
        QVERIFY(QorGuiTest::showAndActivate(&window, QPoint(0, 0)));
        window.designAction()->setChecked(true);
        TQorDesignManager *manager = window.designManager();
        auto *check = window.stage()->findChild<QCheckBox *>(QStringLiteral("CheckBox1"));
        RealInput::click(check);
        QTRY_COMPARE(manager->SelectedComps().toList(), QList<QObject *>{check});
        QGuiApplication::clipboard()->setText(QStringLiteral("nothing yet"));

        RealInput::key("c", Qt::ControlModifier);
        QTRY_VERIFY(VhoClipboard()->HasComponents());
        RealInput::key("v", Qt::ControlModifier);
        QTRY_VERIFY(FindComponent(window.stage(), QStringLiteral("CheckBox2")));
        QPointer<QCheckBox> copy = qobject_cast<QCheckBox *>(FindComponent(window.stage(), QStringLiteral("CheckBox2")));
        QVERIFY(copy);
        QCOMPARE(copy->parentWidget(), window.stage());
        QCOMPARE(copy->pos(), check->pos() + QPoint(4, 4));

        // Select all: every control right on the stage.
        RealInput::key("a", Qt::ControlModifier);
        QTRY_VERIFY(manager->SelectedComps().Count() > 2);
        const QList<QObject *> all = manager->SelectedComps().toList();
        QVERIFY(all.contains(check) && all.contains(copy.data()));
        QVERIFY(all.contains(window.stage()->findChild<QLineEdit *>(QStringLiteral("LineEdit1"))));
        QCOMPARE(window.designCenter()->SelectedComps().toList(), all);

        // Cut takes the copy away; paste brings it back under its name.
        RealInput::click(window.stage(), QPoint(278, 220));
        QTRY_COMPARE(manager->SelectedComps().toList(), QList<QObject *>{window.stage()});
        RealInput::click(copy, QPoint(copy->width() - 6, copy->height() / 2));
        QTRY_COMPARE(manager->SelectedComps().toList(), QList<QObject *>{copy.data()});
        RealInput::key("x", Qt::ControlModifier);
        QTRY_VERIFY(!copy);
        QCOMPARE(manager->SelectedComps().toList(), QList<QObject *>{window.stage()});
        RealInput::key("v", Qt::ControlModifier);
        QTRY_VERIFY(FindComponent(window.stage(), QStringLiteral("CheckBox2")));
        copy = qobject_cast<QCheckBox *>(FindComponent(window.stage(), QStringLiteral("CheckBox2")));
        QVERIFY(copy);
        QTRY_COMPARE(window.componentTree()->findItems(QStringLiteral("CheckBox2"), Qt::MatchRecursive).size(), 1);

        // Delete frees the selected control; the stage is selected then.
        RealInput::click(copy, QPoint(copy->width() - 6, copy->height() / 2));
        QTRY_COMPARE(manager->SelectedComps().toList(), QList<QObject *>{copy.data()});
        RealInput::key("Delete");
        QTRY_VERIFY(!copy);
        QCOMPARE(manager->SelectedComps().toList(), QList<QObject *>{window.stage()});
        QCOMPARE(window.designCenter()->SelectedComps().toList(), QList<QObject *>{window.stage()});
        QTRY_VERIFY(window.componentTree()->findItems(QStringLiteral("CheckBox2"), Qt::MatchRecursive).isEmpty());
        QVERIFY(FindComponent(window.stage(), QStringLiteral("CheckBox1")));
        window.designAction()->setChecked(false);
    }

    // A second demo program, lower right of this one's window, copies a
    // button this one pastes, and pastes a check box this one copied: both
    // by the keys on the stages, with real input into both programs.
    void twoDemosExchangeComponentsThroughTheClipboard()
    {
        QorDemoWindow window;
        QVERIFY(QorGuiTest::showAndActivate(&window, QPoint(0, 0)));
        window.designAction()->setChecked(true);
        QGuiApplication::clipboard()->setText(QStringLiteral("nothing yet"));
        QVERIFY(!VhoClipboard()->HasComponents());

        const QPoint secondAt(180, 344);
        QProcess second;
        second.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        // Settings and recovery copies of its own: nothing of another run
        // places its window or offers work back.
        QTemporaryDir home;
        QVERIFY(home.isValid());
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home.filePath(QStringLiteral("config")));
        environment.insert(QStringLiteral("XDG_DATA_HOME"), home.filePath(QStringLiteral("data")));
        second.setProcessEnvironment(environment);
        // The title as the window system shows it (unmodified).
        const QString title = QString(window.windowTitle()).remove(QStringLiteral("[*]"));
        second.start(QStringLiteral(QORDEMO),
                     {QStringLiteral("-qwindowgeometry"),
                      QStringLiteral("%1x%2+%3+%4").arg(window.width()).arg(window.height()).arg(secondAt.x()).arg(secondAt.y())});
        QVERIFY(second.waitForStarted(10000));
        const auto stopSecond = qScopeGuard([&second] {
            second.kill();
            second.waitForFinished(10000);
        });
        QVERIFY(QTest::qWaitFor([&] { return RealInput::windowNamed(title).topLeft() == secondAt; }, 20000));
        QCOMPARE(RealInput::windowNamed(title).size(), window.size());
        // Both windows are laid out alike: a point of the second is the
        // same point of this one, moved.
        auto inSecond = [&](const QWidget *widget, const QPoint &local) {
            return secondAt + widget->mapTo(&window, local);
        };
        QToolBar *bar = window.findChild<QToolBar *>(QStringLiteral("DesignToolBar"));
        QVERIFY(bar);
        QWidget *designButton = bar->widgetForAction(window.designAction());
        QVERIFY(designButton);
        auto *button = window.stage()->findChild<QPushButton *>(QStringLiteral("Button1"));
        auto *check = window.stage()->findChild<QCheckBox *>(QStringLiteral("CheckBox1"));
        QVERIFY(button && check);
        const QPoint stageSpot(278, 100);
        // The spots this window is clicked at are not under the second one.
        QVERIFY(!QRect(secondAt, window.size()).contains(window.stage()->mapTo(&window, stageSpot)));
        QVERIFY(!QRect(secondAt, window.size()).contains(check->mapTo(&window, check->rect().center())));

        // The second demo designs, selects its Button1 and copies it.
        QVERIFY(RealInput::focusWindowAt(inSecond(designButton, designButton->rect().center())));
        QTRY_VERIFY(!window.isActiveWindow());
        RealInput::clickAt(inSecond(designButton, designButton->rect().center()));
        RealInput::clickAt(inSecond(button, button->rect().center()));
        RealInput::key("c", Qt::ControlModifier);
        QTRY_VERIFY_WITH_TIMEOUT(VhoClipboard()->HasComponents(), 10000);
        QVERIFY(!QGuiApplication::clipboard()->ownsClipboard());

        // Pasted here onto the stage, under a new name of its class.
        const int before = ComponentCount(window.stage());
        QVERIFY(RealInput::focusWindowAt(window.stage()->mapToGlobal(stageSpot)));
        QTRY_VERIFY(window.isActiveWindow());
        RealInput::click(window.stage(), stageSpot);
        QTRY_COMPARE(window.designManager()->SelectedComps().toList(), QList<QObject *>{window.stage()});
        RealInput::key("v", Qt::ControlModifier);
        QTRY_COMPARE(ComponentCount(window.stage()), before + 1);
        auto *pasted = qobject_cast<QPushButton *>(FindComponent(window.stage(), QStringLiteral("PushButton1")));
        QVERIFY(pasted);
        QCOMPARE(pasted->text(), button->text());
        QCOMPARE(pasted->parentWidget(), window.stage());
        QCOMPARE(pasted->pos(), button->pos() + QPoint(4, 4));
        QVERIFY(pasted->isVisible());

        // This one copies its check box; the second pastes it onto its
        // stage, selects all there and copies that.
        RealInput::click(check);
        QTRY_COMPARE(window.designManager()->SelectedComps().toList(), QList<QObject *>{check});
        RealInput::key("c", Qt::ControlModifier);
        QTRY_VERIFY(QGuiApplication::clipboard()->ownsClipboard() && VhoClipboard()->HasComponents());
        QVERIFY(RealInput::focusWindowAt(inSecond(window.stage(), stageSpot)));
        QTRY_VERIFY(!window.isActiveWindow());
        RealInput::clickAt(inSecond(window.stage(), stageSpot));
        RealInput::key("v", Qt::ControlModifier);
        RealInput::key("a", Qt::ControlModifier);
        RealInput::key("c", Qt::ControlModifier);
        QTRY_VERIFY_WITH_TIMEOUT(!QGuiApplication::clipboard()->ownsClipboard() && VhoClipboard()->HasComponents(), 10000);
        QWidget copied;
        QVERIFY(VhoClipboard()->GetComponents(&copied, &copied, 0, 0));
        auto *theirs = qobject_cast<QCheckBox *>(FindComponent(&copied, QStringLiteral("CheckBox2")));
        QVERIFY(theirs);
        QCOMPARE(theirs->text(), check->text());
        QCOMPARE(theirs->pos(), check->pos() + QPoint(4, 4));
        QVERIFY(qobject_cast<QCheckBox *>(FindComponent(&copied, QStringLiteral("CheckBox1"))));
        QVERIFY(!FindComponent(&copied, QStringLiteral("PushButton1")));
        window.designAction()->setChecked(false);
    }

    // The Arrange menu works on the selection made with real clicks: left
    // edges to the selection's box, the widest width for all, and the
    // stacking order.
    void theArrangeMenuAlignsSizesAndRestacksTheSelection()
    {
        QorDemoWindow window;
        QVERIFY(QorGuiTest::showAndActivate(&window, QPoint(0, 0)));
        window.designAction()->setChecked(true);
        QWidget *stage = window.stage();
        auto *text = stage->findChild<QTextEdit *>(QStringLiteral("TextEdit1"));
        auto *line = stage->findChild<QLineEdit *>(QStringLiteral("LineEdit1"));
        QVERIFY(text && line);
        QVERIFY(text->x() != line->x() && text->width() != line->width());
        const int left = std::min(text->x(), line->x());
        const int widest = std::max(text->width(), line->width());
        const QRect textWas = text->geometry(), lineWas = line->geometry();
        RealInput::click(text, QPoint(text->width() / 2, text->height() - 5));
        RealInput::click(line, QPoint(line->width() / 2, 5), Qt::LeftButton, Qt::ShiftModifier);
        QTRY_COMPARE(window.designManager()->SelectedComps().toList(), (QList<QObject *>{text, line}));

        QMenu *arrange = window.findChild<QMenu *>(QStringLiteral("ArrangeMenu"));
        QVERIFY(arrange);
        auto choose = [&](const char *name) { return QorGuiTest::chooseFromMenu(&window, arrange, name); };
        // Align...: "Left Sides" horizontally, vertically no change.
        auto driven = QorGuiTest::whenModalOpens([](QWidget *modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("DialogPosAlign"));
            RealInput::click(modal->findChild<QGroupBox *>(QStringLiteral("RadioGroupHorizontal"))
                                 ->findChildren<QRadioButton *>()
                                 .value(1));
            RealInput::click(modal->findChild<QPushButton *>(QStringLiteral("OKBtn")));
        });
        QVERIFY(choose("AlignAction"));
        QTRY_VERIFY(*driven);
        QTRY_COMPARE(line->x(), left);
        QCOMPARE(text->x(), left);
        QCOMPARE(line->y(), lineWas.y());
        QCOMPARE(text->y(), textWas.y());
        // Size...: "Grow to Largest" for the width.
        driven = QorGuiTest::whenModalOpens([](QWidget *modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("DialogPosSize"));
            RealInput::click(modal->findChild<QGroupBox *>(QStringLiteral("RadioGroupWidth"))
                                 ->findChildren<QRadioButton *>()
                                 .value(2));
            RealInput::click(modal->findChild<QPushButton *>(QStringLiteral("OKBtn")));
        });
        QVERIFY(choose("SizeAction"));
        QTRY_VERIFY(*driven);
        QTRY_COMPARE(line->width(), widest);
        QCOMPARE(text->width(), widest);
        QCOMPARE(line->height(), lineWas.height());
        QVERIFY(window.designManager()->Dirty());

        // Stacking: children are listed from the back to the front.
        auto depth = [stage](QWidget *w) { return stage->children().indexOf(w); };
        QWidget *group = stage->findChild<QWidget *>(QStringLiteral("GroupBox1"));
        QVERIFY(group && depth(group) < depth(line));
        QVERIFY(choose("BackAction"));
        QTRY_VERIFY(depth(line) < depth(group) && depth(text) < depth(group));
        QVERIFY(choose("FrontAction"));
        QTRY_VERIFY(depth(line) > depth(group) && depth(text) > depth(group));
        QCOMPARE(window.designManager()->SelectedComps().toList(), (QList<QObject *>{text, line}));
        window.designAction()->setChecked(false);
    }

    void theInspectorsEditorKeepsItsOwnEditKeys()
    {
        // With the keyboard in an editor of the inspector, Ctrl+A selects
        // the editor's text and nothing on the stage.
        QorDemoWindow window;
        QVERIFY(QorGuiTest::showAndActivate(&window, QPoint(0, 0)));
        window.designAction()->setChecked(true);
        auto *check = window.stage()->findChild<QCheckBox *>(QStringLiteral("CheckBox1"));
        RealInput::click(check);
        QTRY_COMPARE(window.designManager()->SelectedComps().toList(), QList<QObject *>{check});
        TQorObjInspector *inspector = window.inspector();
        QTRY_COMPARE(inspector->ActiveComponent(), check);
        const int row = lineOf(inspector, QStringLiteral("text"));
        inspector->scrollTo(inspector->model()->index(row, 1));
        RealInput::click(inspector->viewport(), inspector->visualRect(inspector->model()->index(row, 1)).center());
        QTRY_VERIFY(qobject_cast<QLineEdit *>(QApplication::focusWidget()));
        auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
        editor->deselect();
        RealInput::key("a", Qt::ControlModifier);
        QTRY_COMPARE(editor->selectedText(), QStringLiteral("Regular customer"));
        QCOMPARE(window.designManager()->SelectedComps().toList(), QList<QObject *>{check});
        window.designAction()->setChecked(false);
    }

    void aPageVerbIsChosenFromTheComponentMenu()
    {
        QorDemoWindow window;
        QVERIFY(QorGuiTest::showAndActivate(&window, QPoint(0, 0)));
        window.designAction()->setChecked(true);
        auto *tabs = window.stage()->findChild<QTabWidget *>(QStringLiteral("TabWidget1"));
        QCOMPARE(tabs->count(), 2);
        // The tab bar belongs to the tab widget: a click there selects it.
        RealInput::click(tabs, QPoint(tabs->width() - 20, 10));
        QTRY_COMPARE(window.designManager()->SelectedComps().toList(), QList<QObject *>{tabs});
        QMenu *menu = window.findChild<QMenu *>(QStringLiteral("ComponentMenu"));
        QVERIFY(menu);
        QMenuBar *bar = window.menuBar();
        RealInput::click(bar, bar->actionGeometry(menu->menuAction()).center());
        QTRY_VERIFY(menu->isVisible());
        QAction *add = nullptr;
        for (QAction *action : menu->actions()) {
            if (action->text() == QStringLiteral("Add Page"))
                add = action;
        }
        QVERIFY(add);
        QCOMPARE(add->data().toInt(), 1000);
        RealInput::click(menu, menu->actionGeometry(add).center());
        QTRY_COMPARE(tabs->count(), 3);
        QWidget *page = tabs->widget(2);
        QCOMPARE(Owner(page), window.stage());
        QVERIFY(page->objectName().startsWith(QStringLiteral("Page")));
        window.designAction()->setChecked(false);
    }

    void aSelectionOnTheStageIsShownAndEditedInTheInspector()
    {
        QorDemoWindow window;
        QVERIFY(QorGuiTest::showAndActivate(&window, QPoint(0, 0)));
        window.designAction()->setChecked(true);
        auto *check = window.stage()->findChild<QCheckBox *>(QStringLiteral("CheckBox1"));
        RealInput::click(check);
        TQorObjInspector *inspector = window.inspector();
        QTRY_COMPARE(inspector->ActiveComponent(), check);
        const int row = lineOf(inspector, QStringLiteral("text"));
        inspector->scrollTo(inspector->model()->index(row, 1));
        RealInput::click(inspector->viewport(), inspector->visualRect(inspector->model()->index(row, 1)).center());
        QTRY_VERIFY(qobject_cast<QLineEdit *>(QApplication::focusWidget()));
        RealInput::key("a", Qt::ControlModifier);
        RealInput::typeText(QStringLiteral("Gold customer"));
        RealInput::key("Return");
        QTRY_COMPARE(check->text(), QStringLiteral("Gold customer"));
        window.designAction()->setChecked(false);
    }

    void theStageWidgetsWorkUntilDesigningStarts()
    {
        // Nothing intercepts input yet: a real click toggles the check box.
        QorDemoWindow window;
        QVERIFY(QorGuiTest::showAndActivate(&window, QPoint(0, 0)));
        auto *check = window.stage()->findChild<QCheckBox *>(QStringLiteral("CheckBox1"));
        QVERIFY(check && !check->isChecked());
        RealInput::click(check, QPoint(8, check->height() / 2));
        QTRY_VERIFY(check->isChecked());
    }

    void theDesignSwitchMakesTheStageDesignableAndThePaletteInserts()
    {
        QorDemoWindow window;
        QVERIFY(QorGuiTest::showAndActivate(&window, QPoint(0, 0)));
        TQorDesignManager *manager = window.designManager();
        auto *tools = window.findChild<QToolBar *>(QStringLiteral("DesignToolBar"));
        QVERIFY(tools);
        QWidget *designButton = tools->widgetForAction(window.designAction());
        RealInput::click(designButton);
        QTRY_VERIFY(manager->IsDesigning());
        QCOMPARE(manager->SelectedComps().toList(), QList<QObject *>{window.stage()});

        // A click selects without acting; the status bar shows where the
        // mouse is on the stage.
        auto *check = window.stage()->findChild<QCheckBox *>(QStringLiteral("CheckBox1"));
        RealInput::click(check, QPoint(8, check->height() / 2));
        QTRY_COMPARE(manager->SelectedComps().toList(), QList<QObject *>{check});
        QVERIFY(!check->isChecked());
        RealInput::moveTo(window.stage(), QPoint(400, 200), 2);
        QTRY_COMPARE(window.statusBar()->currentMessage(), QStringLiteral("Stage: 400, 200"));

        // The palette's chosen class is inserted where the stage is clicked.
        auto *buttonClass = window.paletteBar()->findChild<QToolButton *>(QStringLiteral("QPushButtonButton"));
        QVERIFY(buttonClass);
        RealInput::click(buttonClass);
        QTRY_COMPARE(window.paletteBar()->GetCurrClass(), &QPushButton::staticMetaObject);
        RealInput::click(window.stage(), QPoint(420, 200));
        QTRY_VERIFY(window.stage()->findChild<QPushButton *>(QStringLiteral("PushButton1")));
        auto *inserted = window.stage()->findChild<QPushButton *>(QStringLiteral("PushButton1"));
        QCOMPARE(inserted->pos(), QPoint(420, 200));
        QCOMPARE(Owner(inserted), window.stage());
        // The arrow is down again.
        QTRY_VERIFY(window.paletteBar()->Deselector()->isChecked());
        QCOMPARE(window.componentTree()->findItems(QStringLiteral("PushButton1"),
                                                   Qt::MatchExactly | Qt::MatchRecursive).size(), 1);

        // Designing is on when the window closes at the end of this test.
        RealInput::click(check, QPoint(8, check->height() / 2));
        QTRY_COMPARE(manager->SelectedComps().toList(), QList<QObject *>{check});

        // Off again: the check box works.
        RealInput::click(designButton);
        QTRY_VERIFY(!manager->IsDesigning());
        RealInput::click(check, QPoint(8, check->height() / 2));
        QTRY_VERIFY(check->isChecked());
    }

    void theWindowClosesCleanlyWhileDesigning()
    {
        auto window = std::make_unique<QorDemoWindow>();
        QVERIFY(QorGuiTest::showAndActivate(window.get(), QPoint(0, 0)));
        window->designAction()->setChecked(true);
        QVERIFY(window->designManager()->IsDesigning());
        window->designManager()->SelectAllControls();
        QPointer<QWidget> stage = window->stage();
        window.reset();
        QVERIFY(!stage);
    }
};

QTEST_MAIN(tst_Demo)
#include "tst_demo.moc"
