// SPDX-License-Identifier: MIT
// The component tree: the nodes it generates and their order, texts and
// images, the filters and the known classes, re-selection, renaming,
// moving up and down, and with real input: selecting with Ctrl and Shift,
// following the stage, the label editor, a right click and a double click.
#include "browsing/qorclassesman.h"
#include "browsing/qorcomptreeview.h"
#include "console/qorattribeditors.h"
#include "console/qordesignactions.h"
#include "console/qordesignconsole.h"
#include "console/qordesignpopupmenu.h"
#include "designer/qormanager.h"
#include "foundation/qorcomponents.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"
#include "inspector/qorinspector.h"

#include <QApplication>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

namespace {

// The texts of a node's children, in order.
QStringList childTexts(const QTreeWidgetItem *Node)
{
    QStringList texts;
    for (int i = 0; i < Node->childCount(); ++i)
        texts << Node->child(i)->text(0);
    return texts;
}

QStringList names(std::initializer_list<const char *> Texts)
{
    QStringList list;
    for (const char *text : Texts)
        list << QString::fromUtf8(text);
    return list;
}

QStringList selectedTexts(const QTreeWidget &Tree)
{
    QStringList texts;
    for (QTreeWidgetItem *node : Tree.selectedItems())
        texts << node->text(0);
    return texts;
}

template<class T>
T *place(QWidget *Stage, QWidget *Parent, const char *Name, const QRect &Rect = QRect(10, 10, 80, 24))
{
    auto *w = new T(Parent);
    w->setObjectName(QLatin1String(Name));
    w->setGeometry(Rect);
    InsertComponent(Stage, w);
    return w;
}

QTimer *placeTimer(QWidget *Stage, const char *Name)
{
    auto *t = new QTimer;
    t->setObjectName(QLatin1String(Name));
    InsertComponent(Stage, t);
    return t;
}

// A tree that shows a label of its own for the components named "Label…",
// as an application's translated labels.
class LabelledTree : public TQorCompTreeView
{
protected:
    QString CompDisplayName(QObject *Component) const override
    {
        const QString name = TQorCompTreeView::CompDisplayName(Component);
        return name.startsWith(QLatin1String("Label")) ? QStringLiteral("标签") : name;
    }
};

// The designer of the real-input tests: palette-less, a stage, the tree
// and the inspector side by side, all linked to one center.
struct Designer
{
    QWidget window;
    QWidget *stage = new QWidget;
    TQorCompTreeView *tree = new TQorCompTreeView;
    TQorObjInspector *inspector = new TQorObjInspector;
    TQorDesignManager *manager = nullptr;
    TQorDesignCenter center;
    TQorDefDesignCompPopupMenu menu;

    Designer()
    {
        window.resize(900, 420);
        auto *layout = new QHBoxLayout(&window);
        layout->addWidget(tree);
        stage->setObjectName(QStringLiteral("Form1"));
        stage->setMinimumSize(420, 360);
        stage->setAutoFillBackground(true);
        layout->addWidget(stage, 1);
        layout->addWidget(inspector);
        tree->setMinimumWidth(180);
        manager = new TQorDesignManager(stage);
    }
    ~Designer()
    {
        manager->SetIsDesigning(false);
        center.SetCompTreeView(nullptr);
        center.SetObjInspector(nullptr);
        center.SetDesignPopupMenu(nullptr);
        center.SetDesignManager(nullptr);
    }
    bool start()
    {
        center.SetDesignManager(manager);
        center.SetObjInspector(inspector);
        center.SetDesignPopupMenu(&menu);
        center.SetCompTreeView(tree);
        manager->SetIsDesigning(true);
        return QorGuiTest::showAndActivate(&window);
    }
    // A click on a component's node: the component alone is selected.
    bool clickNode(QObject *Component)
    {
        RealInput::click(tree->viewport(), nodePoint(Component));
        return QTest::qWaitFor([&] { return manager->SelectedComps().toList() == QList<QObject *>{Component}; });
    }
    QPoint nodePoint(const QObject *Component) const
    {
        return tree->visualItemRect(tree->FindComponentNode(Component)).center();
    }
};

} // namespace

class tst_QorCompTreeView : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aNewTreeListsBothKindsOfKnownComponentsAndSelectsMany()
    {
        TQorCompTreeView tree;
        QCOMPARE(tree.CompFilterStyles(), TCompFilterStyles(cfComponent | cfControl));
        QVERIFY(tree.ShowKnownCompsOnly());
        QCOMPARE(tree.selectionMode(), QAbstractItemView::ExtendedSelection);
        QCOMPARE(tree.iconSize(), QSize(16, 16));
        // The four glyphs come first.
        QCOMPARE(tree.ImageCount(), 4);
        QCOMPARE(tree.topLevelItemCount(), 0);
    }

    void aStageWithoutComponentsShowsOnlyItsRootExpanded()
    {
        QWidget stage;
        stage.setObjectName(QStringLiteral("Form1"));
        TQorCompTreeView tree;
        tree.SetRootControl(&stage);
        QCOMPARE(tree.topLevelItemCount(), 1);
        QTreeWidgetItem *root = tree.topLevelItem(0);
        QCOMPARE(root->text(0), QStringLiteral("Form1"));
        QCOMPARE(root->childCount(), 0);
        QVERIFY(root->isExpanded());
        QCOMPARE(tree.NodeComponent(root), &stage);
        QCOMPARE(tree.NodeImageIndex(root), 3);
    }

    void nonVisualComponentsComeFirstThenControlsDepthFirstInOwnerOrder()
    {
        QWidget stage;
        stage.setObjectName(QStringLiteral("Form1"));
        auto *group = new QGroupBox(&stage);
        // Owned before its parent: still listed under it.
        auto *early = place<QLabel>(&stage, group, "Early");
        place<QPushButton>(&stage, &stage, "Button1");
        group->setObjectName(QStringLiteral("Group1"));
        InsertComponent(&stage, group);
        placeTimer(&stage, "Timer1");
        auto *inner = place<QLineEdit>(&stage, group, "Edit1");
        place<QPushButton>(&stage, &stage, "Button2");
        placeTimer(&stage, "Timer2");
        // Created on top of its siblings, listed in the owner's order.
        inner->raise();
        early->lower();

        TQorCompTreeView tree;
        tree.SetRootControl(&stage);
        QTreeWidgetItem *root = tree.topLevelItem(0);
        QCOMPARE(childTexts(root), names({"Timer1", "Timer2", "Button1", "Group1", "Button2"}));
        QCOMPARE(childTexts(root->child(3)), names({"Early", "Edit1"}));
        QCOMPARE(tree.FindComponentNode(inner), root->child(3)->child(1));
        QCOMPARE(tree.NodeComponent(root->child(0)), Components(&stage, 3));
    }

    void aBlankNameShowsNoNameAndOtherNamesStayUntrimmed()
    {
        QWidget stage;
        auto *blank = place<QPushButton>(&stage, &stage, "   ");
        place<QPushButton>(&stage, &stage, " Spaced ");
        TQorCompTreeView tree;
        tree.SetRootControl(&stage);
        // The stage has no name either.
        QCOMPARE(tree.topLevelItem(0)->text(0), QStringLiteral("[NoName]"));
        QCOMPARE(childTexts(tree.topLevelItem(0)), names({"[NoName]", " Spaced "}));
        QCOMPARE(tree.NodeComponent(tree.topLevelItem(0)->child(0)), blank);
    }

    void imageIndexesAreTheClassImageAfterTheGlyphsAndTheFormGlyphForUnknownClasses()
    {
        TQorDesignClassList list;
        list.AddClass(&QPushButton::staticMetaObject, QString(), 2, true, false);
        list.AddClass(&QLineEdit::staticMetaObject, QString(), -4, true, false);
        list.AddClass(&QLabel::staticMetaObject, QString(), -9, true, false);
        QWidget stage;
        auto *button = place<QPushButton>(&stage, &stage, "Button1");
        auto *edit = place<QLineEdit>(&stage, &stage, "Edit1");
        auto *label = place<QLabel>(&stage, &stage, "Label1");
        auto *group = place<QGroupBox>(&stage, &stage, "Group1");
        TQorCompTreeView tree;
        tree.SetShowKnownCompsOnly(false);
        tree.SetClassList(&list);
        tree.SetRootControl(&stage);
        QCOMPARE(tree.GetClassIndex(&QPushButton::staticMetaObject), 2);
        QCOMPARE(tree.GetClassIndex(&QGroupBox::staticMetaObject), -1);
        QCOMPARE(tree.NodeImageIndex(tree.FindComponentNode(button)), 6);
        // A sum of 0 or less: no image.
        QCOMPARE(tree.NodeImageIndex(tree.FindComponentNode(edit)), -1);
        QCOMPARE(tree.NodeImageIndex(tree.FindComponentNode(label)), -1);
        QVERIFY(tree.FindComponentNode(label)->icon(0).isNull());
        // Unknown: -1 + 4, the form glyph.
        QCOMPARE(tree.NodeImageIndex(tree.FindComponentNode(group)), 3);
        QCOMPARE(tree.FindComponentNode(group)->icon(0).cacheKey(), tree.Image(3).cacheKey());
    }

    void withoutAClassListEveryComponentIsKnown()
    {
        QWidget stage;
        place<QPushButton>(&stage, &stage, "Button1");
        placeTimer(&stage, "Timer1");
        TQorCompTreeView tree;
        QVERIFY(tree.ShowKnownCompsOnly());
        tree.SetRootControl(&stage);
        QCOMPARE(childTexts(tree.topLevelItem(0)), names({"Timer1", "Button1"}));
        QVERIFY(tree.CompsIsKnown(Components(&stage, 0)));
    }

    void onlyKnownClassesAreListedWhenAsked()
    {
        TQorDesignClassList list;
        list.AddClass(&QPushButton::staticMetaObject, QString(), 0, true, false);
        list.AddClass(&QLabel::staticMetaObject, QString(), 0, true, false);
        QWidget stage;
        place<QPushButton>(&stage, &stage, "Button1");
        auto *group = place<QGroupBox>(&stage, &stage, "Group1");
        // Under an unknown parent: no node to hang from.
        place<QLabel>(&stage, group, "Label1");
        place<QLabel>(&stage, &stage, "Label2");
        placeTimer(&stage, "Timer1");
        TQorCompTreeView tree;
        tree.SetClassList(&list);
        tree.SetRootControl(&stage);
        QCOMPARE(childTexts(tree.topLevelItem(0)), names({"Button1", "Label2"}));
        // A subclass is not the class.
        QVERIFY(!tree.CompsIsKnown(new QTimer(&stage)));
        tree.SetShowKnownCompsOnly(false);
        tree.GenerateTree();
        QCOMPARE(childTexts(tree.topLevelItem(0)), names({"Timer1", "Button1", "Group1", "Label2"}));
    }

    void theFiltersChooseTheKindsAndRebuild()
    {
        QWidget stage;
        place<QPushButton>(&stage, &stage, "Button1");
        placeTimer(&stage, "Timer1");
        TQorCompTreeView tree;
        tree.SetRootControl(&stage);
        tree.SetCompFilterStyles(cfComponent);
        QCOMPARE(childTexts(tree.topLevelItem(0)), names({"Timer1"}));
        tree.SetCompFilterStyles(cfControl);
        QCOMPARE(childTexts(tree.topLevelItem(0)), names({"Button1"}));
        tree.SetCompFilterStyles({});
        QCOMPARE(tree.topLevelItem(0)->childCount(), 0);
        QVERIFY(!tree.CheckIfOutputThisComp(Components(&stage, 0)));
    }

    void theDesignSystemsOwnPartsAreNeverListed()
    {
        QWidget stage;
        place<QPushButton>(&stage, &stage, "Button1");
        auto *action = new TQorDesignEditCopy(&stage);
        action->setObjectName(QStringLiteral("Copy1"));
        InsertComponent(&stage, action);
        TQorCompTreeView tree;
        tree.SetRootControl(&stage);
        QVERIFY(!tree.CheckIfOutputThisComp(action));
        QCOMPARE(childTexts(tree.topLevelItem(0)), names({"Button1"}));
    }

    void reSelectingSkipsComponentsWithoutANode()
    {
        QWidget stage;
        auto *b1 = place<QPushButton>(&stage, &stage, "Button1");
        auto *b2 = place<QPushButton>(&stage, &stage, "Button2");
        QTimer *t1 = placeTimer(&stage, "Timer1");
        TQorCompTreeView tree;
        tree.SetCompFilterStyles(cfControl);
        tree.SetRootControl(&stage);
        QSignalSpy changes(&tree, &QTreeWidget::itemSelectionChanged);
        tree.SetSelectedComps(TComponentList{t1, b2, b1});
        // The list keeps what it was given; the tree shows what has nodes,
        // the first found node current.
        QCOMPARE(tree.SelectedComps().toList(), (QList<QObject *>{t1, b2, b1}));
        QCOMPARE(tree.currentItem(), tree.FindComponentNode(b2));
        QCOMPARE(selectedTexts(tree).size(), 2);
        QVERIFY(tree.FindComponentNode(b1)->isSelected());
        QVERIFY(tree.FindComponentNode(b2)->isSelected());
        QVERIFY(changes.count() >= 1);
        // A rebuild keeps the selection.
        tree.Refresh();
        QVERIFY(tree.FindComponentNode(b1)->isSelected());
        QCOMPARE(tree.SelectedComps().Count(), 3);
    }

    void theClassListsImagesAreImportedFromTheFirstOrTheSecond()
    {
        TQorClassesImageList images;
        for (int i = 0; i < 5; ++i) {
            QPixmap pixmap(24, 24);
            pixmap.fill(QColor::fromHsv(i * 60, 200, 200));
            images.Add(QIcon(pixmap));
        }
        TQorDesignClassList list;
        list.SetImages(&images);
        TQorCompTreeView tree;
        tree.SetClassList(&list);
        QCOMPARE(tree.ImageCount(), 4 + 5);
        QCOMPARE(tree.Image(4).cacheKey(), images.Icon(0).cacheKey());
        tree.RefreshImageList();
        QCOMPARE(tree.ImageCount(), 4 + 4);
        QCOMPARE(tree.Image(4).cacheKey(), images.Icon(1).cacheKey());
        // Fewer than four images: nothing imported by the class list.
        TQorClassesImageList few;
        few.Add(images.Icon(0));
        TQorDesignClassList other;
        other.SetImages(&few);
        TQorCompTreeView second;
        second.SetClassList(&other);
        QCOMPARE(second.ImageCount(), 4);
    }

    void editingALabelRenamesTheComponentAndMarksTheDesignDirty()
    {
        QWidget stage;
        auto *button = place<QPushButton>(&stage, &stage, "Button1");
        TQorCompTreeView tree;
        tree.SetRootControl(&stage);
        tree.FindComponentNode(button)->setText(0, QStringLiteral("OkButton"));
        QCOMPARE(button->objectName(), QStringLiteral("OkButton"));
        QVERIFY(tree.Dirty());
    }

    void aRefusedNameLeavesTheComponentAndShowsTheError()
    {
        QWidget stage;
        auto *button = place<QPushButton>(&stage, &stage, "Button1");
        place<QPushButton>(&stage, &stage, "Button2");
        TQorCompTreeView tree;
        tree.SetRootControl(&stage);
        QTreeWidgetItem *node = tree.FindComponentNode(button);
        node->setText(0, QStringLiteral("button2"));
        QCOMPARE(button->objectName(), QStringLiteral("Button1"));
        QCOMPARE(node->text(0), QStringLiteral("Button1"));
        QVERIFY(!tree.Dirty());
        QMessageBox *box = nullptr;
        QTRY_VERIFY((box = tree.findChild<QMessageBox *>(QStringLiteral("QorDesignCommandError"))));
        QCOMPARE(box->text(), QStringLiteral("A component named button2 already exists"));
        box->close();
        // Not an identifier.
        node->setText(0, QStringLiteral("2nd button"));
        QCOMPARE(button->objectName(), QStringLiteral("Button1"));
        box->deleteLater();
        QTRY_VERIFY((box = tree.findChild<QMessageBox *>(QStringLiteral("QorDesignCommandError"))) && box->text() != QStringLiteral("A component named button2 already exists"));
        QCOMPARE(box->text(), QStringLiteral("'2nd button' is not a valid component name"));
        box->close();
    }

    void aTranslatedLabelIsEditedWithoutRenamingButMarksTheDesignDirty()
    {
        QWidget stage;
        auto *label = place<QLabel>(&stage, &stage, "Label1");
        LabelledTree tree;
        tree.SetRootControl(&stage);
        QTreeWidgetItem *node = tree.FindComponentNode(label);
        QCOMPARE(node->text(0), QStringLiteral("标签"));
        node->setText(0, QStringLiteral("Caption"));
        QCOMPARE(label->objectName(), QStringLiteral("Label1"));
        QCOMPARE(node->text(0), QStringLiteral("Caption"));
        QVERIFY(tree.Dirty());
    }

    void movingUpAndDownChangesTheOwnersOrderAndTheChildOrder()
    {
        QWidget stage;
        auto *a = place<QPushButton>(&stage, &stage, "A");
        auto *b = place<QPushButton>(&stage, &stage, "B");
        auto *c = place<QPushButton>(&stage, &stage, "C");
        TQorCompTreeView tree;
        tree.SetRootControl(&stage);
        tree.SetSelectedComps(TComponentList{c});
        tree.MoveSelCompIndexesUp();
        QCOMPARE(ComponentList(&stage), (QList<QObject *>{a, c, b}));
        QCOMPARE(stage.children(), (QObjectList{a, c, b}));
        QCOMPARE(childTexts(tree.topLevelItem(0)), names({"A", "C", "B"}));
        QVERIFY(tree.Dirty());
        QVERIFY(tree.FindComponentNode(c)->isSelected());
        tree.MoveSelCompIndexesDown();
        QCOMPARE(ComponentList(&stage), (QList<QObject *>{a, b, c}));
        QCOMPARE(stage.children(), (QObjectList{a, b, c}));
        // Down past the last: both orders stay.
        tree.MoveSelCompIndexesDown();
        QCOMPARE(ComponentList(&stage), (QList<QObject *>{a, b, c}));
        QCOMPARE(stage.children(), (QObjectList{a, b, c}));
    }

    void movingUpPastTheFirstKeepsTheChildOrder()
    {
        QWidget stage;
        auto *a = place<QPushButton>(&stage, &stage, "A");
        auto *b = place<QPushButton>(&stage, &stage, "B");
        auto *c = place<QPushButton>(&stage, &stage, "C");
        // The owner's order and the child order differ: the owner's index
        // is limited to the first place, the child order is left alone.
        b->lower();
        QCOMPARE(stage.children(), (QObjectList{b, a, c}));
        TQorCompTreeView tree;
        tree.SetRootControl(&stage);
        tree.SetSelectedComps(TComponentList{b});
        tree.MoveSelCompIndexesUp(2);
        QCOMPARE(ComponentList(&stage), (QList<QObject *>{b, a, c}));
        QCOMPARE(stage.children(), (QObjectList{b, a, c}));
        tree.SetSelectedComps(TComponentList{a});
        tree.MoveSelCompIndexesUp(5);
        QCOMPARE(ComponentList(&stage), (QList<QObject *>{a, b, c}));
        QCOMPARE(stage.children(), (QObjectList{b, a, c}));
    }

    void theCenterGivesItsStageAndMenuAndHearsOfSelectionsAndRenames()
    {
        Designer d;
        auto *b1 = place<QPushButton>(d.stage, d.stage, "Button1", QRect(20, 20, 90, 26));
        QVERIFY(d.start());
        QCOMPARE(d.tree->RootControl(), d.stage);
        QCOMPARE(d.tree->ConsoleCenter(), &d.center);
        QCOMPARE(childTexts(d.tree->topLevelItem(0)), names({"Button1"}));
        d.tree->setCurrentItem(d.tree->FindComponentNode(b1));
        QCOMPARE(d.center.SelectedComps().toList(), QList<QObject *>{b1});
        QCOMPARE(d.manager->SelectedComps().toList(), QList<QObject *>{b1});
        QCOMPARE(d.inspector->GetActiveComponents(), QList<QObject *>{b1});
        d.tree->FindComponentNode(b1)->setText(0, QStringLiteral("Okay"));
        QCOMPARE(b1->objectName(), QStringLiteral("Okay"));
        QVERIFY(d.manager->Dirty());
    }

    // ---- Real input ----

    void ctrlAndShiftSelectInTheTreeAndEverywhere()
    {
        Designer d;
        auto *b1 = place<QPushButton>(d.stage, d.stage, "Button1", QRect(20, 20, 90, 26));
        auto *b2 = place<QPushButton>(d.stage, d.stage, "Button2", QRect(20, 60, 90, 26));
        auto *b3 = place<QPushButton>(d.stage, d.stage, "Button3", QRect(20, 100, 90, 26));
        auto *b4 = place<QPushButton>(d.stage, d.stage, "Button4", QRect(20, 140, 90, 26));
        QVERIFY(d.start());
        RealInput::click(d.tree->viewport(), d.nodePoint(b1));
        QTRY_COMPARE(d.manager->SelectedComps().toList(), QList<QObject *>{b1});
        RealInput::click(d.tree->viewport(), d.nodePoint(b3), Qt::LeftButton, Qt::ControlModifier);
        QTRY_COMPARE(d.manager->SelectedComps().toList(), (QList<QObject *>{b1, b3}));
        QCOMPARE(d.inspector->GetActiveComponents(), (QList<QObject *>{b1, b3}));
        // Shift: the nodes from the one last clicked to the one clicked now,
        // beside those chosen before.
        RealInput::click(d.tree->viewport(), d.nodePoint(b4), Qt::LeftButton, Qt::ShiftModifier);
        QTRY_COMPARE(d.manager->SelectedComps().Count(), 3);
        const QList<QObject *> chosen = d.center.SelectedComps().toList();
        QCOMPARE(QSet<QObject *>(chosen.begin(), chosen.end()), (QSet<QObject *>{b1, b3, b4}));
        RealInput::click(d.tree->viewport(), d.nodePoint(b1), Qt::LeftButton, Qt::ShiftModifier);
        QTRY_VERIFY(!d.manager->SelectedComps().toList().contains(b4));
        const QList<QObject *> three = d.inspector->GetActiveComponents();
        QCOMPARE(QSet<QObject *>(three.begin(), three.end()), (QSet<QObject *>{b1, b2, b3}));
    }

    void aSelectionOnTheStageSelectsInTheTree()
    {
        Designer d;
        auto *b1 = place<QPushButton>(d.stage, d.stage, "Button1", QRect(20, 20, 90, 26));
        auto *b2 = place<QPushButton>(d.stage, d.stage, "Button2", QRect(20, 80, 90, 26));
        QVERIFY(d.start());
        RealInput::click(b2);
        QTRY_COMPARE(selectedTexts(*d.tree), names({"Button2"}));
        RealInput::click(b1, QPoint(-1, -1), Qt::LeftButton, Qt::ShiftModifier);
        QTRY_COMPARE(selectedTexts(*d.tree).size(), 2);
        QVERIFY(d.tree->FindComponentNode(b1)->isSelected());
        QVERIFY(d.tree->FindComponentNode(b2)->isSelected());
    }

    void theLabelEditorRenamesByF2AndBySlowSecondClick()
    {
        Designer d;
        auto *b1 = place<QPushButton>(d.stage, d.stage, "Button1", QRect(20, 20, 90, 26));
        auto *b2 = place<QPushButton>(d.stage, d.stage, "Button2", QRect(20, 80, 90, 26));
        QVERIFY(d.start());
        QVERIFY(d.clickNode(b1));
        QTRY_VERIFY(d.tree->hasFocus());
        RealInput::key("F2");
        QLineEdit *editor = nullptr;
        QTRY_VERIFY((editor = d.tree->viewport()->findChild<QLineEdit *>()) && editor->isVisible());
        RealInput::key("a", Qt::ControlModifier);
        QVERIFY(RealInput::typeText(QStringLiteral("OkButton")));
        RealInput::key("Return");
        QTRY_COMPARE(b1->objectName(), QStringLiteral("OkButton"));
        QTRY_COMPARE(d.tree->FindComponentNode(b1)->text(0), QStringLiteral("OkButton"));
        QVERIFY(d.manager->Dirty());

        // A second click on the selected node, after the double-click time:
        // the pause is the gesture itself, not a wait for the program.
        RealInput::click(d.tree->viewport(), d.nodePoint(b2));
        QTRY_COMPARE(d.manager->SelectedComps().toList(), QList<QObject *>{b2});
        QTest::qWait(QApplication::doubleClickInterval() + 100);
        RealInput::click(d.tree->viewport(), d.nodePoint(b2));
        QTRY_VERIFY((editor = d.tree->viewport()->findChild<QLineEdit *>()) && editor->isVisible());
        RealInput::key("a", Qt::ControlModifier);
        // Taken by the first button: refused.
        QVERIFY(RealInput::typeText(QStringLiteral("okbutton")));
        RealInput::key("Return");
        QMessageBox *box = nullptr;
        QTRY_VERIFY((box = d.window.findChild<QMessageBox *>(QStringLiteral("QorDesignCommandError"))) && box->isVisible());
        QCOMPARE(box->text(), QStringLiteral("A component named okbutton already exists"));
        QCOMPARE(b2->objectName(), QStringLiteral("Button2"));
        QCOMPARE(d.tree->FindComponentNode(b2)->text(0), QStringLiteral("Button2"));
        RealInput::key("Return");
        QTRY_VERIFY(!d.window.findChild<QMessageBox *>(QStringLiteral("QorDesignCommandError"))
                    || !d.window.findChild<QMessageBox *>(QStringLiteral("QorDesignCommandError"))->isVisible());
    }

    void aRightClickKeepsTheTreesSelectionAndPopsTheDesignMenu()
    {
        Designer d;
        auto *b1 = place<QPushButton>(d.stage, d.stage, "Button1", QRect(20, 20, 90, 26));
        auto *b2 = place<QPushButton>(d.stage, d.stage, "Button2", QRect(20, 80, 90, 26));
        QVERIFY(d.start());
        QVERIFY(d.clickNode(b1));
        RealInput::click(d.tree->viewport(), d.nodePoint(b2), Qt::RightButton);
        QTRY_VERIFY(d.menu.isVisible());
        QCOMPARE(selectedTexts(*d.tree), names({"Button1"}));
        QCOMPARE(d.tree->currentItem(), d.tree->FindComponentNode(b1));
        QCOMPARE(d.manager->SelectedComps().toList(), QList<QObject *>{b1});
        RealInput::key("Escape");
        QTRY_VERIFY(!d.menu.isVisible());
        QCOMPARE(selectedTexts(*d.tree), names({"Button1"}));
    }

    void aDoubleClickRunsTheComponentEditor()
    {
        Designer d;
        auto *tabs = place<QTabWidget>(d.stage, d.stage, "Tabs1", QRect(20, 20, 240, 160));
        QVERIFY(d.start());
        const int pages = tabs->count();
        RealInput::doubleClick(d.tree->viewport(), d.nodePoint(tabs));
        // The page container's editor adds a page.
        QTRY_COMPARE(tabs->count(), pages + 1);
        QVERIFY(d.manager->Dirty());
        // The new page is a component, and the rebuilt tree shows it.
        QTRY_VERIFY(d.tree->FindComponentNode(tabs->widget(pages)));
    }

    void aDoubleClickRunsTheAttributeEditorBeforeTheComponentEditor()
    {
        // An attribute editor of labels that counts its runs.
        static int edits = 0;
        struct CountingEditor : TQorCompAttribEditor
        {
            using TQorCompAttribEditor::TQorCompAttribEditor;
            void Edit() override { ++edits; }
        };
        edits = 0;
        RegisterQorComponentAttribEditor<CountingEditor>(&QLabel::staticMetaObject);
        const auto unregister = qScopeGuard([] { UnregisterQorComponentAttribEditors(&QLabel::staticMetaObject); });
        Designer d;
        auto *label = place<QLabel>(d.stage, d.stage, "Label1", QRect(20, 20, 90, 26));
        place<QLabel>(d.stage, d.stage, "Label2", QRect(20, 60, 90, 26));
        QVERIFY(d.start());
        RealInput::doubleClick(d.tree->viewport(), d.nodePoint(label));
        QTRY_COMPARE(edits, 1);
        QTRY_VERIFY(d.manager->Dirty());
    }
};

QTEST_MAIN(tst_QorCompTreeView)
#include "tst_qorcomptreeview.moc"
