// SPDX-License-Identifier: MIT
// The design center's history: each change a user makes is one step that
// undo puts back exactly (geometry, parent, stacking order, owner order,
// names, stored properties, the selection of that moment) and redo makes
// again; nudges of one selection merge; a component the application freed
// is skipped; the history's clean step is the saved design.
#include "console/qordesignactions.h"
#include "console/qordesignconsole.h"
#include "console/qordesignhistory.h"
#include "console/qorconsoleintf.h"
#include "designer/qormanager.h"
#include "designer/qorsizers.h"
#include "designer/qorsizers_p.h"
#include "foundation/qorcomponents.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"
#include "inspector/qorinspector.h"
#include "browsing/qorcomptreeview.h"
#include "consolefixture.h"

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QUndoStack>

namespace {

// A palette with a class chosen, as the center asks of one.
class ChosenClass : public QObject, public IQorCompPallete
{
    Q_OBJECT
    Q_INTERFACES(IQorCompPallete)

public:
    const QMetaObject *GetCurrClass() const override { return chosen; }
    void DeselectComps() override { chosen = nullptr; }

    const QMetaObject *chosen = nullptr;
};

struct Fixture : QorConsoleTest::StageFixture
{
    QGroupBox *group = new QGroupBox(QStringLiteral("Group"), form.get());
    QLabel *label = new QLabel(QStringLiteral("Inside"), group);
    QPushButton *b1 = new QPushButton(QStringLiteral("One"), form.get());
    QPushButton *b2 = new QPushButton(QStringLiteral("Two"), form.get());
    QPushButton *b3 = new QPushButton(QStringLiteral("Three"), form.get());
    QTimer *timer = new QTimer(form.get());
    std::unique_ptr<TQorObjInspector> inspector = std::make_unique<TQorObjInspector>();
    std::unique_ptr<TQorCompTreeView> tree = std::make_unique<TQorCompTreeView>();
    TQorDesignEditUndo *undo = new TQorDesignEditUndo(form.get());
    TQorDesignEditRedo *redo = new TQorDesignEditRedo(form.get());

    Fixture()
        : StageFixture(QSize(420, 300))
    {
        place(group, "GroupBox1", QRect(200, 20, 180, 140));
        place(label, "Label1", QRect(20, 40, 80, 24));
        place(b1, "Button1", QRect(20, 20, 80, 30));
        place(b2, "Button2", QRect(20, 80, 80, 30));
        place(b3, "Button3", QRect(20, 140, 80, 30));
        b2->setToolTip(QStringLiteral("Second"));
        b3->setEnabled(false);
        timer->setObjectName(QStringLiteral("Timer1"));
        timer->setInterval(250);
        InsertComponent(form.get(), timer);
        inspector->resize(300, 500);
        tree->resize(200, 300);
        center->SetObjInspector(inspector.get());
        center->SetCompTreeView(tree.get());
        center->SetDesignManager(manager);
        for (TQorDesignAction *action : {static_cast<TQorDesignAction *>(undo), static_cast<TQorDesignAction *>(redo)})
            action->SetConsoleCenter(center.get());
        undo->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z));
        redo->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z));
        form->addAction(undo);
        form->addAction(redo);
    }

    ~Fixture() { center.reset(); }

    bool design()
    {
        const bool shown = StageFixture::design();
        center->SetDirty(false);
        return shown;
    }

    QUndoStack *stack() const { return center->UndoStack(); }

    QWidget *named(const QString &name) const { return qobject_cast<QWidget *>(FindComponent(form.get(), name)); }

    QStringList selectionNames() const
    {
        QStringList names;
        for (QObject *component : center->SelectedComps().toList())
            names << component->objectName();
        return names;
    }

    void select(const QList<QObject *> &components)
    {
        manager->SetSelectedComps(TComponentList(components));
        center->DesignerSelCompChanged();
    }

    // Everything undo has to put back: per component in owner order its
    // name, class, parent, place among its siblings, geometry and some
    // stored properties.
    QStringList state() const
    {
        QStringList out;
        for (QObject *component : ComponentList(form.get())) {
            QString entry = component->objectName() + QLatin1Char(' ')
                + QLatin1String(component->metaObject()->className());
            if (auto *w = qobject_cast<QWidget *>(component)) {
                QWidget *parent = w->parentWidget();
                // The place among the parent's designed controls.
                QList<QObject *> siblings;
                for (QObject *child : parent ? parent->children() : QObjectList()) {
                    if (child->isWidgetType() && Owner(child) == form.get())
                        siblings.append(child);
                }
                entry += QStringLiteral(" in %1 #%2 at %3,%4 %5x%6 enabled=%7 tip=%8")
                             .arg(parent ? parent->objectName() : QString())
                             .arg(siblings.indexOf(w))
                             .arg(w->x())
                             .arg(w->y())
                             .arg(w->width())
                             .arg(w->height())
                             .arg(w->isEnabled())
                             .arg(w->toolTip());
                if (auto *button = qobject_cast<QPushButton *>(w))
                    entry += QStringLiteral(" text=") + button->text();
            } else if (auto *t = qobject_cast<QTimer *>(component)) {
                entry += QStringLiteral(" interval=%1").arg(t->interval());
            }
            out << entry;
        }
        return out;
    }
};

} // namespace

class tst_QorDesignHistory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY2(RealInput::open(), "real X input (XTest) is needed"); }
    void cleanup() { RealInput::releaseAll(); }

    void aDeletionIsUndoneAndRedoneWithItsSelection()
    {
        Fixture f;
        QVERIFY(f.design());
        const QStringList before = f.state();
        f.select({f.b2, f.group});
        QVERIFY(!f.undo->isEnabled());
        f.center->DelSelCtrls();
        QTRY_VERIFY(!f.named(QStringLiteral("Button2")));
        QVERIFY(!f.named(QStringLiteral("Label1")));
        const QStringList deleted = f.state();
        QCOMPARE(f.stack()->count(), 1);
        QVERIFY(f.undo->isEnabled());
        QCOMPARE(f.undo->text(), QStringLiteral("&Undo Delete"));
        QVERIFY(f.center->GetDirty());

        f.stack()->undo();
        QCOMPARE(f.state(), before);
        QCOMPARE(f.selectionNames(), (QStringList{QStringLiteral("Button2"), QStringLiteral("GroupBox1")}));
        QCOMPARE(f.manager->SelectedComps().Count(), 2);
        QCOMPARE(f.inspector->GetActiveComponents().size(), 2);
        QVERIFY(!f.center->GetDirty());
        QVERIFY(f.redo->isEnabled());

        f.stack()->redo();
        QCOMPARE(f.state(), deleted);
        QVERIFY(f.center->GetDirty());
        f.stack()->undo();
        QCOMPARE(f.state(), before);
    }

    void theDeleteKeyAndCtrlZByRealInput()
    {
        Fixture f;
        QVERIFY(f.design());
        const QStringList before = f.state();
        RealInput::click(f.b1);
        QTRY_COMPARE(f.selectionNames(), QStringList{QStringLiteral("Button1")});
        RealInput::key("Delete");
        QTRY_VERIFY(!f.named(QStringLiteral("Button1")));
        QTRY_VERIFY(f.undo->isEnabled());
        RealInput::key("z", Qt::ControlModifier);
        QTRY_COMPARE(f.state(), before);
        QCOMPARE(f.selectionNames(), QStringList{QStringLiteral("Button1")});
        RealInput::key("z", Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_VERIFY(!f.named(QStringLiteral("Button1")));
    }

    void nudgesOfOneSelectionMergeAndAnotherSelectionStartsAnewStep()
    {
        Fixture f;
        QVERIFY(f.design());
        const QStringList before = f.state();
        RealInput::click(f.b1);
        QTRY_COMPARE(f.selectionNames(), QStringList{QStringLiteral("Button1")});
        for (int i = 0; i < 3; ++i) {
            RealInput::key("Right", Qt::ControlModifier);
            QTRY_COMPARE(f.b1->x(), 21 + i);
            QTRY_COMPARE(f.stack()->count(), 1);
        }
        RealInput::key("Down", Qt::ControlModifier);
        QTRY_COMPARE(f.b1->y(), 21);
        QTRY_COMPARE(f.stack()->index(), 1);
        QCOMPARE(f.stack()->count(), 1);
        QCOMPARE(f.undo->text(), QStringLiteral("&Undo Nudge"));
        const QStringList nudged = f.state();
        // Another selection, then back: a new run.
        RealInput::click(f.b2);
        QTRY_COMPARE(f.selectionNames(), QStringList{QStringLiteral("Button2")});
        RealInput::click(f.b1);
        QTRY_COMPARE(f.selectionNames(), QStringList{QStringLiteral("Button1")});
        RealInput::key("Left", Qt::ControlModifier);
        QTRY_COMPARE(f.b1->x(), 22);
        QTRY_COMPARE(f.stack()->count(), 2);
        RealInput::key("z", Qt::ControlModifier);
        QTRY_COMPARE(f.state(), nudged);
        RealInput::key("z", Qt::ControlModifier);
        QTRY_COMPARE(f.state(), before);
        QVERIFY(!f.center->GetDirty());
    }

    void aDragIsOneStepAndUndoPutsTheControlsBack()
    {
        Fixture f;
        QVERIFY(f.design());
        const QStringList before = f.state();
        RealInput::drag(f.b2, QPoint(40, 15), QPoint(90, 45), 8);
        QTRY_COMPARE(f.b2->pos(), QPoint(70, 110));
        QTRY_COMPARE(f.stack()->count(), 1);
        QCOMPARE(f.undo->text(), QStringLiteral("&Undo Move"));
        const QStringList dragged = f.state();
        RealInput::key("z", Qt::ControlModifier);
        QTRY_COMPARE(f.state(), before);
        RealInput::key("z", Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_COMPARE(f.state(), dragged);
    }

    void aMoveStepSkipsAControlTheApplicationFreed()
    {
        Fixture f;
        QVERIFY(f.design());
        f.select({f.b1, f.b2});
        // As the sizers do: the center hears first that controls will move.
        f.center->DesignerMoveStarting();
        f.b1->move(f.b1->pos() + QPoint(5, 0));
        f.b2->move(f.b2->pos() + QPoint(5, 0));
        f.center->DesignerSelCompMoved();
        QCOMPARE(f.stack()->count(), 1);
        delete f.b2;
        f.stack()->undo();
        QCOMPARE(f.b1->pos(), QPoint(20, 20));
        QVERIFY(!f.named(QStringLiteral("Button2")));
        f.stack()->redo();
        QCOMPARE(f.b1->pos(), QPoint(25, 20));
    }

    void aDesignStepLeavesOutComponentsTheApplicationFreed()
    {
        // What undo should give: the design with Button2 and without the
        // group the application frees in between.
        QStringList expected;
        {
            Fixture g;
            delete g.group;
            QVERIFY(g.design());
            expected = g.state();
        }
        QVERIFY(expected.size() == 4);
        Fixture f;
        QVERIFY(f.design());
        f.select({f.b2});
        f.center->DelSelCtrls();
        QTRY_VERIFY(!f.named(QStringLiteral("Button2")));
        QCOMPARE(f.stack()->count(), 1);
        delete f.group;
        QVERIFY(!f.named(QStringLiteral("Label1")));

        f.stack()->undo();
        QCOMPARE(f.state(), expected);
        QVERIFY(!f.named(QStringLiteral("GroupBox1")));
        QVERIFY(!f.named(QStringLiteral("Label1")));
        QCOMPARE(f.selectionNames(), QStringList{QStringLiteral("Button2")});

        // Freed again, now that the step is undone: redo leaves it out too.
        delete f.named(QStringLiteral("Button3"));
        f.stack()->redo();
        QVERIFY(!f.named(QStringLiteral("Button2")));
        QVERIFY(!f.named(QStringLiteral("Button3")));
        QVERIFY(!f.named(QStringLiteral("GroupBox1")));
        QVERIFY(f.named(QStringLiteral("Button1")));
        QCOMPARE(ComponentList(f.form.get()).size(), 2);
    }

    void aMoveIsUndoneAfterTheDesignWasReadAnew()
    {
        // The nudge's controls are found by name once a later step's undo
        // made them anew.
        Fixture f;
        QVERIFY(f.design());
        f.select({f.b1});
        f.center->DesignerMoveStarting();
        f.b1->move(30, 20);
        f.center->DesignerSelCompMoved();
        // A move nobody announced is the application's: not a step.
        f.b1->move(31, 20);
        f.center->DesignerSelCompMoved();
        QCOMPARE(f.stack()->count(), 1);
        f.b1->move(30, 20);
        f.select({f.b3});
        f.center->DelSelCtrls();
        QCOMPARE(f.stack()->count(), 2);
        f.stack()->undo();
        QWidget *again = f.named(QStringLiteral("Button1"));
        QVERIFY(again);
        QCOMPARE(again->pos(), QPoint(30, 20));
        f.stack()->undo();
        QCOMPARE(f.named(QStringLiteral("Button1"))->pos(), QPoint(20, 20));
        f.stack()->redo();
        QCOMPARE(f.named(QStringLiteral("Button1"))->pos(), QPoint(30, 20));
    }

    void aPropertySetThroughTheInspectorIsOneStepForAllSelected()
    {
        Fixture f;
        QVERIFY(f.design());
        const QStringList before = f.state();
        f.select({f.b1, f.b2, f.b3});
        QTRY_COMPARE(f.inspector->GetActiveComponents().size(), 3);
        TValueListStrings *lines = f.inspector->Strings();
        int row = -1;
        for (int i = 0; i < lines->Count(); ++i) {
            if (lines->Names(i).trimmed() == QLatin1String("toolTip"))
                row = i;
        }
        QVERIFY(row >= 0);
        lines->SetValueFromIndex(row, QStringLiteral("Shared"));
        f.inspector->ValidateLine(row);
        QCOMPARE(f.b1->toolTip(), QStringLiteral("Shared"));
        QCOMPARE(f.b3->toolTip(), QStringLiteral("Shared"));
        QCOMPARE(f.stack()->count(), 1);
        QCOMPARE(f.stack()->undoText(), QStringLiteral("toolTip"));
        f.stack()->undo();
        QCOMPARE(f.state(), before);
        QCOMPARE(f.center->SelectedComps().Count(), 3);
        // A refused value changes nothing and adds no step.
        f.stack()->redo();
        const int steps = f.stack()->count();
        for (int i = 0; i < lines->Count(); ++i) {
            if (lines->Names(i).trimmed() == QLatin1String("width"))
                row = i;
        }
        lines->SetValueFromIndex(row, QStringLiteral("abc"));
        f.inspector->ValidateLine(row);
        QCOMPARE(f.stack()->count(), steps);
    }

    void aRenameAndAMoveInTheTreeAreSteps()
    {
        Fixture f;
        QVERIFY(f.design());
        const QStringList before = f.state();
        f.select({f.b1});
        f.tree->MoveSelCompIndexesDown(1);
        QCOMPARE(f.stack()->count(), 1);
        const QStringList moved = f.state();
        QVERIFY(moved != before);
        QTreeWidgetItem *node = f.tree->FindComponentNode(f.b2);
        QVERIFY(node);
        node->setText(0, QStringLiteral("Renamed"));
        QCOMPARE(f.b2->objectName(), QStringLiteral("Renamed"));
        QCOMPARE(f.stack()->count(), 2);
        f.stack()->undo();
        QCOMPARE(f.state(), moved);
        QVERIFY(f.named(QStringLiteral("Button2")));
        f.stack()->undo();
        QCOMPARE(f.state(), before);
    }

    void stackingOrderAndPagesAreSteps()
    {
        Fixture f;
        auto *tabs = new QTabWidget(f.form.get());
        f.place(tabs, "Tabs1", QRect(120, 180, 200, 100));
        auto *page = new QWidget;
        page->setObjectName(QStringLiteral("Page1"));
        tabs->addTab(page, QStringLiteral("First"));
        InsertComponent(f.form.get(), page);
        QVERIFY(f.design());
        const QStringList before = f.state();
        TQorDesignSelCtrlSendToBack back;
        back.SetConsoleCenter(f.center.get());
        f.select({f.b3});
        QTRY_VERIFY(back.isEnabled());
        back.trigger();
        QCOMPARE(f.stack()->count(), 1);
        const QStringList sent = f.state();
        QVERIFY(sent != before);
        f.stack()->undo();
        QCOMPARE(f.state(), before);
        f.stack()->redo();
        QCOMPARE(f.state(), sent);

        // A double click runs the tab widget's editor: a page is added, one
        // step; undo leaves the one page it had.
        // The undo made the design anew: the tab widget is found by name.
        tabs = qobject_cast<QTabWidget *>(f.named(QStringLiteral("Tabs1")));
        QVERIFY(tabs);
        RealInput::click(tabs, QPoint(170, 8));
        QTRY_COMPARE(f.selectionNames(), QStringList{QStringLiteral("Tabs1")});
        RealInput::doubleClick(tabs, QPoint(170, 8));
        QTRY_COMPARE(tabs->count(), 2);
        QTRY_COMPARE(f.stack()->count(), 2);
        f.stack()->undo();
        auto *again = qobject_cast<QTabWidget *>(f.named(QStringLiteral("Tabs1")));
        QVERIFY(again);
        QCOMPARE(again->count(), 1);
        QCOMPARE(again->tabText(0), QStringLiteral("First"));
        QCOMPARE(f.state(), sent);
    }

    void pasteAndCutAreOneStepEach()
    {
        Fixture f;
        QVERIFY(f.design());
        const QStringList before = f.state();
        f.select({f.b1, f.b2});
        f.center->CopySelComps();
        f.center->PasteComps();
        QTRY_COMPARE(ComponentCount(f.form.get()), 8);
        QCOMPARE(f.stack()->count(), 1);
        QCOMPARE(f.stack()->undoText(), QStringLiteral("Paste"));
        const QStringList pasted = f.state();
        f.stack()->undo();
        QCOMPARE(f.state(), before);
        f.stack()->redo();
        QCOMPARE(f.state(), pasted);
        // A cut copies and deletes: one step, named by the cut.
        f.select({f.named(QStringLiteral("Button3"))});
        f.center->CutSelComps();
        QVERIFY(!f.named(QStringLiteral("Button3")));
        QCOMPARE(f.stack()->count(), 2);
        QCOMPARE(f.stack()->undoText(), QStringLiteral("Cut"));
        f.stack()->undo();
        QCOMPARE(f.state(), pasted);
    }

    void theArrangeCommandsAreSteps()
    {
        Fixture f;
        QVERIFY(f.design());
        const QStringList before = f.state();
        TQorDesignSelCtrlBringToFront front;
        TQorDesignSelCtrlFlipAllChildren flip;
        for (TQorDesignAction *action : {static_cast<TQorDesignAction *>(&front), static_cast<TQorDesignAction *>(&flip)})
            action->SetConsoleCenter(f.center.get());
        f.select({f.b1});
        QTRY_VERIFY(front.isEnabled());
        front.trigger();
        const QStringList fronted = f.state();
        QVERIFY(fronted != before);
        f.select({f.group});
        QTRY_VERIFY(flip.isEnabled());
        flip.trigger();
        const QStringList flipped = f.state();
        QVERIFY(flipped != fronted);
        QCOMPARE(f.stack()->count(), 2);
        f.stack()->undo();
        QCOMPARE(f.state(), fronted);
        f.stack()->undo();
        QCOMPARE(f.state(), before);
        f.stack()->redo();
        f.stack()->redo();
        QCOMPARE(f.state(), flipped);
    }

    void anInsertionFromThePaletteIsAStep()
    {
        Fixture f;
        ChosenClass palette;
        f.center->SetCompPalleteToolBar(&palette);
        QVERIFY(f.design());
        const QStringList before = f.state();
        palette.chosen = &QPushButton::staticMetaObject;
        RealInput::click(f.form.get(), QPoint(150, 250));
        QTRY_COMPARE(ComponentCount(f.form.get()), 7);
        QTRY_COMPARE(f.stack()->count(), 1);
        QCOMPARE(f.stack()->undoText(), QStringLiteral("Insert QPushButton"));
        const QStringList inserted = f.state();
        RealInput::key("z", Qt::ControlModifier);
        QTRY_COMPARE(f.state(), before);
        RealInput::key("z", Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_COMPARE(f.state(), inserted);
    }

    void theCleanStepIsTheSavedDesign()
    {
        Fixture f;
        QVERIFY(f.design());
        f.select({f.b1});
        f.center->DelSelCtrls();
        QVERIFY(f.center->GetDirty());
        f.center->SetDirty(false);
        QVERIFY(f.stack()->isClean());
        f.stack()->undo();
        QVERIFY(f.center->GetDirty());
        f.stack()->redo();
        QVERIFY(!f.center->GetDirty());
        // A selection changes nothing of the design: no step.
        f.select({f.b2});
        QCOMPARE(f.stack()->count(), 1);
    }
};

QTEST_MAIN(tst_QorDesignHistory)
#include "tst_qordesignhistory.moc"
