// SPDX-License-Identifier: MIT
// The design surface as a user meets it: a form designed through the design
// manager, driven by real X input (clicks, drags, handles, keys, rubber
// band, insertion), and the faults an application can cause while it runs.
#include "designer/qormanager.h"
#include "designer/qorproxies.h"
#include "designer/qorstage.h"
#include "designer/qorsizers.h"
#include "foundation/qorcomponents.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>
#include <QTableView>
#include <QTextEdit>
#include <QToolButton>
#include <QToolTip>
#include <QWindow>

#include <memory>

namespace {

// A design center that records what the manager tells it and offers a
// class for insertion.
class FakeCenter final : public IQorDesignCenter
{
public:
    const QMetaObject *chosen = nullptr;
    int selChanged = 0;
    int selMoved = 0;
    int created = 0;
    QList<QObject *> modified;

    void DesignerSelCompChanged() override { ++selChanged; }
    void DesignerSelCompMoved() override { ++selMoved; }
    void SetDirty(bool) override {}
    void DesignStageCompsModified(QObject *Component, TQorCompOperation) override { modified.append(Component); }
    const QMetaObject *GetPalleteSelectedClass() const override { return chosen; }
    void DynCompCreated(QObject *) override
    {
        ++created;
        chosen = nullptr;
    }
    void DelSelCtrls() override {}
    void RefreshCompTree() override {}
};

template<class T>
T *placed(QWidget *parent, const char *name, const QRect &geometry)
{
    auto *w = new T(parent);
    w->setObjectName(QLatin1String(name));
    w->setGeometry(geometry);
    return w;
}

// The form every test designs: three buttons in a row, a group box with a
// button and a label, a line edit, a spin box, a combo box, a text edit
// and a tab widget with two pages.
struct Form
{
    std::unique_ptr<QWidget> form;
    QPushButton *b1, *b2, *b3, *b4, *b5;
    QGroupBox *group;
    QLabel *label;
    QLineEdit *edit;
    QSpinBox *spin;
    QComboBox *combo;
    QTextEdit *text;
    QTabWidget *tabs;
    QWidget *page1, *page2;
    TQorDesignManager *manager;

    Form()
        : form(std::make_unique<QWidget>())
    {
        form->setObjectName(QStringLiteral("Form1"));
        form->resize(640, 480);
        b1 = placed<QPushButton>(form.get(), "Button1", QRect(20, 20, 80, 30));
        b2 = placed<QPushButton>(form.get(), "Button2", QRect(120, 20, 80, 30));
        b3 = placed<QPushButton>(form.get(), "Button3", QRect(220, 20, 80, 30));
        group = placed<QGroupBox>(form.get(), "GroupBox1", QRect(20, 100, 220, 160));
        b4 = placed<QPushButton>(group, "Button4", QRect(20, 30, 80, 30));
        label = placed<QLabel>(group, "Label1", QRect(20, 90, 80, 20));
        label->setText(QStringLiteral("Label"));
        edit = placed<QLineEdit>(form.get(), "Edit1", QRect(320, 20, 120, 24));
        spin = placed<QSpinBox>(form.get(), "Spin1", QRect(460, 20, 80, 24));
        combo = placed<QComboBox>(form.get(), "Combo1", QRect(320, 60, 120, 24));
        combo->addItems({QStringLiteral("one"), QStringLiteral("two")});
        text = placed<QTextEdit>(form.get(), "Memo1", QRect(460, 60, 150, 80));
        tabs = placed<QTabWidget>(form.get(), "Tabs1", QRect(300, 180, 300, 200));
        page1 = new QWidget;
        page1->setObjectName(QStringLiteral("Page1"));
        page2 = new QWidget;
        page2->setObjectName(QStringLiteral("Page2"));
        tabs->addTab(page1, QStringLiteral("First"));
        tabs->addTab(page2, QStringLiteral("Second"));
        b5 = placed<QPushButton>(page1, "Button5", QRect(10, 10, 80, 30));
        manager = new TQorDesignManager(form.get());
    }

    bool design()
    {
        manager->SetIsDesigning(true);
        return QorGuiTest::showAndActivate(form.get());
    }

    QList<QObject *> selected() const { return manager->SelectedComps().toList(); }
};

QRect outside(const QRect &r, int by)
{
    return r.adjusted(-by, -by, by, by);
}

} // namespace

class tst_QorDesignSurface : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY2(RealInput::open(), "no X display with XTest"); }

    void cleanup()
    {
        QorGuiTest::endRealInputTest();
    }

    // ---- Selecting ----

    void designingOnSelectsTheStage()
    {
        Form f;
        QVERIFY(f.design());
        QCOMPARE(f.selected(), QList<QObject *>{f.form.get()});
        QCOMPARE(f.manager->StageSizer()->Control(), f.form.get());
        QCOMPARE(f.manager->Sizers()->Count(), 0);
        // Every named widget became a component of the stage and has a proxy.
        QCOMPARE(Owner(f.b4), f.form.get());
        QVERIFY(f.manager->DesignProxies()->ProxyOf(f.b4));
        QVERIFY(f.manager->DesignProxies()->ProxyOf(f.page1));
    }

    void aClickSelectsAButtonWithoutPressingIt()
    {
        Form f;
        QVERIFY(f.design());
        QSignalSpy clicked(f.b1, &QPushButton::clicked);
        RealInput::click(f.b1);
        QTRY_COMPARE(f.selected(), QList<QObject *>{f.b1});
        QCOMPARE(clicked.count(), 0);
        QVERIFY(!f.b1->isDown());
        TQorSizer *sizer = f.manager->GetSelectSizer();
        QVERIFY(sizer);
        QCOMPARE(sizer->SizerMode(), smSingle);
        QVERIFY(sizer->isVisible());
        QCOMPARE(sizer->geometry(), outside(f.b1->geometry(), 2));
        QCOMPARE(f.manager->StageSizer()->Control(), nullptr);
    }

    void shiftClicksSelectInClickOrderAndToggleKeepsTheOthersOrder()
    {
        Form f;
        QVERIFY(f.design());
        RealInput::click(f.b1);
        QTRY_COMPARE(f.selected(), QList<QObject *>{f.b1});
        RealInput::click(f.b3, QPoint(-1, -1), Qt::LeftButton, Qt::ShiftModifier);
        RealInput::click(f.b2, QPoint(-1, -1), Qt::LeftButton, Qt::ShiftModifier);
        QTRY_COMPARE(f.selected(), (QList<QObject *>{f.b1, f.b3, f.b2}));
        RealInput::click(f.b3, QPoint(-1, -1), Qt::LeftButton, Qt::ShiftModifier);
        QTRY_COMPARE(f.selected(), (QList<QObject *>{f.b1, f.b2}));
    }

    void aSecondSelectedControlSwitchesEverySizerToCornerMarks()
    {
        Form f;
        QVERIFY(f.design());
        f.manager->SelectControl(f.b1, QPoint(-1, -1), csmSelect, true, false);
        TQorSizer *first = f.manager->GetSelectSizer();
        QVERIFY(first);
        QCOMPARE(first->SizerMode(), smSingle);
        f.manager->SelectControl(f.b2, QPoint(-1, -1), csmAdd, true, false);
        QCOMPARE(f.manager->Sizers()->Count(), 2);
        for (int i = 0; i < 2; ++i)
            QCOMPARE(f.manager->Sizers()->Sizers(i)->SizerMode(), smMulti);
        // On screen: corner marks in the multi colour, no middle handles.
        const QRgb multi = first->MultiSelColor().rgb();
        QTRY_COMPARE(f.form->grab().toImage().pixel(f.b2->x() - 2, f.b2->y() - 2), multi);
        const QImage image = f.form->grab().toImage();
        const QRect s = outside(f.b2->geometry(), 2);
        QCOMPARE(image.pixel(s.left(), s.top()), multi);
        QCOMPARE(image.pixel(s.right(), s.bottom()), multi);
        QVERIFY(image.pixel(s.left() + s.width() / 2, s.top()) != multi);
    }

    void aSingleSelectionShowsEightHandlesInTheSingleColour()
    {
        Form f;
        QVERIFY(f.design());
        f.manager->SelectControl(f.b1, QPoint(-1, -1), csmSelect, true, false);
        TQorSizer *sizer = f.manager->GetSelectSizer();
        QVERIFY(sizer);
        const QRgb single = sizer->SingleSelColor().rgb();
        const QRect s = sizer->geometry();
        QTRY_COMPARE(f.form->grab().toImage().pixel(s.left() + sizer->HandleRect(2).left() + 2, s.top() + 2),
                     single);
        const QImage image = f.form->grab().toImage();
        for (int i = 1; i <= 8; ++i) {
            const QRect h = sizer->HandleRect(i).translated(s.topLeft());
            QCOMPARE(image.pixel(h.center()), single);
        }
    }

    // ---- Moving and sizing ----

    void aPressAndDragMovesTheControlByTheTravel()
    {
        Form f;
        QVERIFY(f.design());
        QSignalSpy moved(f.manager, &TQorDesignManager::OnControlsMoved);
        const QRect before = f.b1->geometry();
        RealInput::drag(f.b1, QPoint(40, 15), QPoint(40 + 37, 15 + 23), 8);
        QTRY_COMPARE(f.b1->geometry(), before.translated(37, 23));
        QTRY_COMPARE(f.selected(), QList<QObject *>{f.b1});
        QVERIFY(moved.count() >= 1);
        QTRY_COMPARE(f.manager->GetSelectSizer()->geometry(), outside(f.b1->geometry(), 2));
        QVERIFY(!TQorSizer::ActiveDragSizer());
    }

    void draggingOneOfThreeSelectedSiblingsMovesAllThree()
    {
        Form f;
        QVERIFY(f.design());
        f.manager->SelectControl(f.b1, QPoint(-1, -1), csmSelect, false, false);
        f.manager->SelectControl(f.b2, QPoint(-1, -1), csmAdd, false, false);
        f.manager->SelectControl(f.b3, QPoint(-1, -1), csmAdd, true, false);
        const QRect g1 = f.b1->geometry(), g2 = f.b2->geometry(), g3 = f.b3->geometry();
        RealInput::drag(f.b2, QPoint(40, 15), QPoint(40 + 12, 15 + 44), 6);
        QTRY_COMPARE(f.b2->geometry(), g2.translated(12, 44));
        QTRY_COMPARE(f.b1->geometry(), g1.translated(12, 44));
        QTRY_COMPARE(f.b3->geometry(), g3.translated(12, 44));
        QCOMPARE(f.manager->Sizers()->Count(), 3);
    }

    void aDragFreesTheSizersOfControlsInAnotherContainer()
    {
        Form f;
        QVERIFY(f.design());
        f.manager->SelectControl(f.b1, QPoint(-1, -1), csmSelect, false, false);
        f.manager->SelectControl(f.b4, QPoint(-1, -1), csmAdd, true, false);
        const QRect g4 = f.b4->geometry();
        const QRect g1 = f.b1->geometry();
        RealInput::drag(f.b1, QPoint(30, 10), QPoint(30 + 15, 10 + 5), 4);
        QTRY_COMPARE(f.b1->geometry(), g1.translated(15, 5));
        QCOMPARE(f.b4->geometry(), g4);
        QCOMPARE(f.manager->Sizers()->Count(), 1);
        QCOMPARE(f.manager->Sizers()->Sizers(0)->Control(), f.b1);
    }

    void eachHandleResizesTheControlByTheTravel_data()
    {
        QTest::addColumn<int>("handle");
        QTest::addColumn<QRect>("expected"); // as edges moved: dl, dt, dr, db
        const int dx = 9, dy = 7;
        QTest::newRow("top left") << 1 << QRect(dx, dy, 0, 0);
        QTest::newRow("top middle") << 2 << QRect(0, dy, 0, 0);
        QTest::newRow("top right") << 3 << QRect(0, dy, dx, 0);
        QTest::newRow("right middle") << 4 << QRect(0, 0, dx, 0);
        QTest::newRow("bottom right") << 5 << QRect(0, 0, dx, dy);
        QTest::newRow("bottom middle") << 6 << QRect(0, 0, 0, dy);
        QTest::newRow("bottom left") << 7 << QRect(dx, 0, 0, dy);
        QTest::newRow("left middle") << 8 << QRect(dx, 0, 0, 0);
    }

    void eachHandleResizesTheControlByTheTravel()
    {
        QFETCH(int, handle);
        QFETCH(QRect, expected);
        Form f;
        QVERIFY(f.design());
        f.b2->setGeometry(150, 200, 100, 60);
        f.manager->SelectControl(f.b2, QPoint(-1, -1), csmSelect, true, false);
        TQorSizer *sizer = f.manager->GetSelectSizer();
        QVERIFY(sizer);
        QTRY_VERIFY(sizer->isVisible());
        const QRect before = f.b2->geometry();
        const QPoint grip = sizer->HandleRect(handle).center();
        RealInput::drag(sizer, grip, grip + QPoint(9, 7), 5);
        const QRect want = RectFromEdges(before.left() + expected.left(), before.top() + expected.top(),
                                         RectRight(before) + expected.width(),
                                         RectBottom(before) + expected.height());
        QTRY_COMPARE(f.b2->geometry(), want);
        QTRY_COMPARE(sizer->geometry(), outside(want, 2));
    }

    void ctrlArrowsMoveTheSelectionOnePixelAndPlainArrowsDoNothing()
    {
        Form f;
        QVERIFY(f.design());
        RealInput::click(f.b1);
        QTRY_COMPARE(f.selected(), QList<QObject *>{f.b1});
        RealInput::click(f.b2, QPoint(-1, -1), Qt::LeftButton, Qt::ShiftModifier);
        RealInput::click(f.b3, QPoint(-1, -1), Qt::LeftButton, Qt::ShiftModifier);
        QTRY_COMPARE(f.selected().size(), 3);
        const QRect g1 = f.b1->geometry(), g2 = f.b2->geometry(), g3 = f.b3->geometry();
        RealInput::key("Right", Qt::ControlModifier);
        QTRY_COMPARE(f.b3->geometry(), g3.translated(1, 0));
        QTRY_COMPARE(f.b1->geometry(), g1.translated(1, 0));
        QTRY_COMPARE(f.b2->geometry(), g2.translated(1, 0));
        RealInput::key("Down", Qt::ControlModifier);
        QTRY_COMPARE(f.b1->geometry(), g1.translated(1, 1));
        QTRY_COMPARE(f.b2->geometry(), g2.translated(1, 1));
        RealInput::key("Left");
        RealInput::key("Up");
        RealInput::key("Right", Qt::ControlModifier);
        QTRY_COMPARE(f.b1->geometry(), g1.translated(2, 1));
        QCOMPARE(f.b2->geometry(), g2.translated(2, 1));
        QCOMPARE(f.selected().size(), 3);
    }

    void ctrlRightMovesSiblingsAndFreesTheSizerOfAControlElsewhere()
    {
        Form f;
        QVERIFY(f.design());
        for (QWidget *w : {static_cast<QWidget *>(f.b1), static_cast<QWidget *>(f.b2),
                           static_cast<QWidget *>(f.b3), static_cast<QWidget *>(f.b4)})
            f.manager->SelectControl(w, QPoint(-1, -1), csmAdd, false, false);
        f.manager->Sizers()->SetKeySizer(f.manager->Sizers()->SizerOf(f.b1));
        const QRect g4 = f.b4->geometry(), g1 = f.b1->geometry();
        RealInput::key("Right", Qt::ControlModifier);
        QTRY_COMPARE(f.b1->geometry(), g1.translated(1, 0));
        QCOMPARE(f.b4->geometry(), g4);
        QCOMPARE(f.manager->Sizers()->Count(), 3);
        QCOMPARE(f.manager->Sizers()->SizerOf(f.b4), nullptr);
    }

    void deleteDeletesTheSelectionOnceOnKeyUpAndShiftDeleteNothing()
    {
        Form f;
        QVERIFY(f.design());
        QPointer<QPushButton> b1 = f.b1, b2 = f.b2;
        int destroyed = 0;
        connect(f.b1, &QObject::destroyed, this, [&] { ++destroyed; });
        connect(f.b2, &QObject::destroyed, this, [&] { ++destroyed; });
        RealInput::click(f.b1);
        QTRY_COMPARE(f.selected(), QList<QObject *>{f.b1});
        RealInput::click(f.b2, QPoint(-1, -1), Qt::LeftButton, Qt::ShiftModifier);
        QTRY_COMPARE(f.selected().size(), 2);
        RealInput::key("Delete", Qt::ShiftModifier);
        QVERIFY(!QTest::qWaitFor([&] { return !b1 || !b2; }, 100));
        // Nothing happens while Delete is down; the key going up deletes.
        RealInput::keyDown("Delete");
        QVERIFY(!QTest::qWaitFor([&] { return !b1 || !b2; }, 100));
        RealInput::keyUp("Delete");
        QTRY_VERIFY(!b1 && !b2);
        QVERIFY(!QTest::qWaitFor([&] { return destroyed > 2; }, 50));
        QCOMPARE(destroyed, 2);
        QTRY_COMPARE(f.selected(), QList<QObject *>{f.form.get()});
        QCOMPARE(f.manager->Sizers()->Count(), 0);
        QVERIFY(f.manager->Dirty());
    }

    // ---- Rubber band ----

    void aRubberBandSelectsEveryControlItTouchesEdgeIncluded()
    {
        Form f;
        QVERIFY(f.design());
        // From the gap between Button1 and Button2 to Button2's left edge.
        const QPoint from(108, 5);
        const QPoint to(f.b2->x(), f.b2->y() + 5);
        RealInput::drag(f.form.get(), from, to, 6);
        QTRY_COMPARE(f.selected(), QList<QObject *>{f.b2});
        QVERIFY(!f.manager->IsRubbering());
        QCOMPARE(f.manager->StageProxy()->RubberBand(), nullptr);
    }

    void aRubberBandSelectsInTheStagesComponentOrder()
    {
        Form f;
        QVERIFY(f.design());
        RealInput::drag(f.form.get(), QPoint(305, 5), QPoint(10, 35), 8);
        QTRY_COMPARE(f.selected(), (QList<QObject *>{f.b1, f.b2, f.b3}));
    }

    void ctrlClickOnAButtonInAGroupBoxStartsARubberBandOnTheStage()
    {
        Form f;
        QVERIFY(f.design());
        RealInput::moveTo(f.b4, QPoint(10, 10));
        RealInput::holdModifiers(Qt::ControlModifier);
        RealInput::press();
        QTRY_VERIFY(f.manager->IsRubbering() || f.manager->StageProxy()->RubberBand());
        RealInput::moveTo(f.b4, QPoint(30, 25), 3);
        QTRY_VERIFY(f.manager->IsRubbering());
        QCOMPARE(f.selected(), QList<QObject *>{f.form.get()});
        const QPoint start = f.b4->mapTo(f.form.get(), QPoint(10, 10));
        QTRY_COMPARE(f.manager->StageProxy()->RubberBand()->PointStart(), start);
        RealInput::release();
        RealInput::releaseModifiers(Qt::ControlModifier);
        // The band covered part of the group box and of the button in it.
        QTRY_COMPARE(f.selected(), (QList<QObject *>{f.group, f.b4}));
    }

    // ---- Insertion ----

    void aChosenClassIsInsertedWhereTheStageIsClicked()
    {
        FakeCenter center;
        Form f;
        f.manager->SetConsoleCenter(&center);
        QVERIFY(f.design());
        QSignalSpy inserted(f.manager, &TQorDesignManager::OnDynInsComponent);
        center.chosen = &QPushButton::staticMetaObject;
        RealInput::click(f.form.get(), QPoint(40, 300));
        QTRY_COMPARE(inserted.count(), 1);
        auto *created = qobject_cast<QPushButton *>(inserted.at(0).at(1).value<QObject *>());
        QVERIFY(created);
        QCOMPARE(created->objectName(), QStringLiteral("PushButton1"));
        QCOMPARE(created->parentWidget(), f.form.get());
        QCOMPARE(created->pos(), QPoint(40, 300));
        // A button has a size of its own.
        QCOMPARE(created->size(), created->sizeHint());
        QCOMPARE(Owner(created), f.form.get());
        QCOMPARE(center.created, 1);
        QCOMPARE(center.chosen, nullptr);
        // Selected without a report: the center refreshes after the insertion.
        QCOMPARE(f.manager->GetSelectSizer()->Control(), created);
        QVERIFY(f.manager->DesignProxies()->ProxyOf(created));

        // A second one gets the next free name; a plain widget is 50 by 50.
        center.chosen = &QPushButton::staticMetaObject;
        RealInput::click(f.form.get(), QPoint(150, 300));
        QTRY_COMPARE(inserted.count(), 2);
        QCOMPARE(inserted.at(1).at(1).value<QObject *>()->objectName(), QStringLiteral("PushButton2"));
        center.chosen = &QWidget::staticMetaObject;
        RealInput::click(f.form.get(), QPoint(40, 400));
        QTRY_COMPARE(inserted.count(), 3);
        auto *plain = qobject_cast<QWidget *>(inserted.at(2).at(1).value<QObject *>());
        QCOMPARE(plain->size(), QSize(50, 50));
        QCOMPARE(plain->objectName(), QStringLiteral("Widget1"));
    }

    void aChosenClassGoesIntoAGroupBoxAtTheClickAndThroughAButton()
    {
        FakeCenter center;
        Form f;
        f.manager->SetConsoleCenter(&center);
        QVERIFY(f.design());
        QSignalSpy inserted(f.manager, &TQorDesignManager::OnDynInsComponent);
        center.chosen = &QLabel::staticMetaObject;
        RealInput::click(f.group, QPoint(130, 40));
        QTRY_COMPARE(inserted.count(), 1);
        auto *inGroup = qobject_cast<QWidget *>(inserted.at(0).at(1).value<QObject *>());
        QCOMPARE(inGroup->parentWidget(), f.group);
        QCOMPARE(inGroup->pos(), QPoint(130, 40));
        // The group box holds Label1 already.
        QCOMPARE(inGroup->objectName(), QStringLiteral("Label2"));
        // A button cannot hold a component: the click goes through it to the
        // group box beneath.
        center.chosen = &QLabel::staticMetaObject;
        RealInput::click(f.b4, QPoint(12, 8));
        QTRY_COMPARE(inserted.count(), 2);
        auto *through = qobject_cast<QWidget *>(inserted.at(1).at(1).value<QObject *>());
        QCOMPARE(through->parentWidget(), f.group);
        QCOMPARE(through->pos(), f.b4->pos() + QPoint(12, 8));
        QCOMPARE(through->objectName(), QStringLiteral("Label3"));
    }

    void aChosenClassGoesOntoTheCurrentTabPage()
    {
        FakeCenter center;
        Form f;
        f.manager->SetConsoleCenter(&center);
        QVERIFY(f.design());
        QSignalSpy inserted(f.manager, &TQorDesignManager::OnDynInsComponent);
        center.chosen = &QCheckBox::staticMetaObject;
        RealInput::click(f.page1, QPoint(120, 80));
        QTRY_COMPARE(inserted.count(), 1);
        auto *box = qobject_cast<QWidget *>(inserted.at(0).at(1).value<QObject *>());
        QCOMPARE(box->parentWidget(), f.page1);
        QCOMPARE(box->pos(), QPoint(120, 80));
        QCOMPARE(f.tabs->currentIndex(), 0);
    }

    // ---- Double click, right click ----

    void aDoubleClickOnASelectedControlReachesTheComponentEditor()
    {
        Form f;
        QVERIFY(f.design());
        QList<QObject *> edited;
        f.manager->OnLaunchComponentEditor = [&](QObject *c) {
            edited.append(c);
            return false;
        };
        RealInput::click(f.b1);
        QTRY_COMPARE(f.selected(), QList<QObject *>{f.b1});
        const QRect before = f.b1->geometry();
        RealInput::doubleClick(f.b1);
        QTRY_COMPARE(edited, QList<QObject *>{f.b1});
        QCOMPARE(f.b1->geometry(), before);
    }

    void aRightClickOnASelectedControlOpensTheDesignMenu()
    {
        Form f;
        QMenu menu;
        menu.addAction(QStringLiteral("Align"));
        f.manager->SetDesignPopupMenu(&menu);
        QVERIFY(f.design());
        QSignalSpy popup(f.manager, &TQorDesignManager::OnDesignPopup);
        RealInput::click(f.b1);
        QTRY_COMPARE(f.selected(), QList<QObject *>{f.b1});
        RealInput::click(f.b1, QPoint(10, 10), Qt::RightButton);
        QTRY_VERIFY(menu.isVisible());
        QCOMPARE(popup.count(), 1);
        QCOMPARE(popup.at(0).at(1).value<QWidget *>(), f.b1);
        menu.hide();
        // On the stage the stage's menu opens for the stage.
        RealInput::click(f.form.get(), QPoint(600, 450), Qt::RightButton);
        QTRY_VERIFY(menu.isVisible());
        QCOMPARE(popup.at(1).at(1).value<QWidget *>(), f.form.get());
        menu.hide();
    }

    void aDragReleasedOutsideTheWindowEndsThere()
    {
        Form f;
        QVERIFY(f.design());
        const QRect before = f.b3->geometry();
        const QPoint from(40, 15);
        // The release lies left of the window.
        const QPoint to = from + QPoint(-300, 10);
        RealInput::drag(f.b3, from, to, 10);
        QTRY_COMPARE(f.b3->geometry(), before.translated(-300, 10));
        QTRY_VERIFY(!TQorSizer::ActiveDragSizer());
        // The surface goes on working.
        RealInput::click(f.b1);
        QTRY_COMPARE(f.selected(), QList<QObject *>{f.b1});
    }

    // ---- Designed widgets do not act ----

    void compositeWidgetsDoNotActWhileDesigned()
    {
        Form f;
        QVERIFY(f.design());
        QWidget *focusBefore = QApplication::focusWidget();
        QSignalSpy tabChanged(f.tabs, &QTabWidget::currentChanged);
        QSignalSpy spinChanged(f.spin, &QSpinBox::valueChanged);
        // The second tab, the spin box's up arrow, the combo box, a right
        // click into the text edit, typing into the line edit.
        QTabBar *bar = f.tabs->tabBar();
        RealInput::click(bar, bar->tabRect(1).center());
        RealInput::click(f.spin, QPoint(f.spin->width() - 6, 5));
        RealInput::click(f.combo);
        RealInput::click(f.text, QPoint(20, 20), Qt::RightButton);
        RealInput::click(f.edit);
        RealInput::typeText(QStringLiteral("abc"));
        QTRY_COMPARE(f.selected(), QList<QObject *>{f.edit});
        QVERIFY(!QTest::qWaitFor(
            [&] {
                return tabChanged.count() || spinChanged.count() || f.combo->view()->isVisible()
                    || !f.edit->text().isEmpty() || QApplication::activePopupWidget();
            },
            100));
        QCOMPARE(tabChanged.count(), 0);
        QCOMPARE(spinChanged.count(), 0);
        QCOMPARE(f.spin->value(), 0);
        QVERIFY(!f.combo->view()->isVisible());
        QVERIFY(f.edit->text().isEmpty());
        QCOMPARE(QApplication::activePopupWidget(), nullptr);
        QVERIFY(!qobject_cast<QLineEdit *>(QApplication::focusWidget())
                || QApplication::focusWidget() == focusBefore);
    }

    void aCalendarAndAScrollAreaDoNotActWhileDesigned()
    {
        auto form = std::make_unique<QWidget>();
        form->setObjectName(QStringLiteral("Form1"));
        form->resize(640, 400);
        auto *calendar = placed<QCalendarWidget>(form.get(), "Calendar1", QRect(20, 20, 320, 240));
        auto *area = placed<QScrollArea>(form.get(), "ScrollBox1", QRect(360, 20, 200, 150));
        auto *content = new QWidget;
        content->resize(180, 2000);
        area->setWidget(content);
        auto *manager = new TQorDesignManager(form.get());
        manager->SetIsDesigning(true);
        QVERIFY(QorGuiTest::showAndActivate(form.get()));

        const QDate date = calendar->selectedDate();
        const int month = calendar->monthShown();
        QSignalSpy clicked(calendar, &QCalendarWidget::clicked);
        QSignalSpy selection(calendar, &QCalendarWidget::selectionChanged);
        QSignalSpy page(calendar, &QCalendarWidget::currentPageChanged);
        auto *days = calendar->findChild<QTableView *>();
        auto *nextMonth = calendar->findChild<QToolButton *>(QStringLiteral("qt_calendar_nextmonth"));
        QVERIFY(days && nextMonth);
        // A day other than the selected one, the next-month button, the
        // wheel over the days.
        const QModelIndex current = days->currentIndex();
        const QModelIndex other = days->model()->index(current.row() == 2 ? 3 : 2, 3);
        RealInput::click(days, days->visualRect(other).center());
        RealInput::click(nextMonth);
        RealInput::wheel(days, -2);
        QTRY_COMPARE(manager->SelectedComps().toList(), QList<QObject *>{calendar});

        // The scroll area: the wheel over its contents, a click on the
        // lower arrow of its scroll bar, a drag of the bar's handle.
        QScrollBar *bar = area->verticalScrollBar();
        RealInput::wheel(area->viewport(), -3);
        RealInput::click(bar, QPoint(bar->width() / 2, bar->height() - 4));
        RealInput::drag(bar, QPoint(bar->width() / 2, 30), QPoint(bar->width() / 2, 90), 4);
        QTRY_COMPARE(manager->SelectedComps().toList(), QList<QObject *>{area});
        // The drag of the handle moved the scroll area itself, as a drag of
        // any designed widget does.
        QTRY_COMPARE(area->geometry(), QRect(360, 80, 200, 150));

        QVERIFY(!QTest::qWaitFor(
            [&] { return clicked.count() || selection.count() || page.count() || bar->value() != 0; }, 100));
        QCOMPARE(clicked.count(), 0);
        QCOMPARE(selection.count(), 0);
        QCOMPARE(page.count(), 0);
        QCOMPARE(calendar->selectedDate(), date);
        QCOMPARE(calendar->monthShown(), month);
        QCOMPARE(bar->value(), 0);
        QCOMPARE(QApplication::activePopupWidget(), nullptr);
        QVERIFY(!days->hasFocus());
        QVERIFY(!area->viewport()->hasFocus());

        // Designing off: both act again.
        manager->SetIsDesigning(false);
        RealInput::wheel(area->viewport(), -3);
        QTRY_VERIFY(bar->value() > 0);
        RealInput::click(nextMonth);
        QTRY_COMPARE(page.count(), 1);
    }

    void designedWidgetsShowNoToolTipAndNoCursorOfTheirOwn()
    {
        Form f;
        f.edit->setToolTip(QStringLiteral("Type a name"));
        QVERIFY(f.design());
        QWindow *window = f.form->windowHandle();
        RealInput::moveTo(f.edit, QPoint(10, 10), 2);
        RealInput::moveTo(f.edit, QPoint(20, 12), 2);
        QTRY_COMPARE(window->cursor().shape(), Qt::ArrowCursor);
        // Longer than the tool tip's wake-up delay.
        QVERIFY(!QTest::qWaitFor([] { return QToolTip::isVisible(); }, 1200));
        QCOMPARE(window->cursor().shape(), Qt::ArrowCursor);
        // Designing off: the line edit's own cursor and tool tip come back.
        f.manager->SetIsDesigning(false);
        RealInput::moveTo(f.b1, QPoint(10, 10), 2);
        RealInput::moveTo(f.edit, QPoint(15, 10), 2);
        QTRY_COMPARE(window->cursor().shape(), Qt::IBeamCursor);
        QTRY_VERIFY_WITH_TIMEOUT(QToolTip::isVisible(), 5000);
        QToolTip::hideText();
    }

    // ---- Designing off ----

    void designingOffLeavesEveryWidgetAsItWas()
    {
        Form f;
        struct State
        {
            QRect geometry;
            Qt::FocusPolicy focus;
            bool ownCursor;
            Qt::CursorShape cursor;
            bool visible;
        };
        auto snapshot = [&] {
            QList<State> states;
            for (QWidget *w : f.form->findChildren<QWidget *>())
                states.append({w->geometry(), w->focusPolicy(), w->testAttribute(Qt::WA_SetCursor),
                               w->cursor().shape(), w->isVisible()});
            return states;
        };
        QVERIFY(QorGuiTest::showAndActivate(f.form.get()));
        const int children = f.form->findChildren<QWidget *>().size();
        const auto before = snapshot();
        f.manager->SetIsDesigning(true);
        RealInput::click(f.b1);
        QTRY_COMPARE(f.selected(), QList<QObject *>{f.b1});
        f.manager->SelectAllControls();
        f.manager->SetIsDesigning(false);
        QTRY_COMPARE(f.form->findChildren<QWidget *>().size(), children);
        const auto after = snapshot();
        QCOMPARE(after.size(), before.size());
        for (int i = 0; i < before.size(); ++i) {
            QCOMPARE(after[i].geometry, before[i].geometry);
            QCOMPARE(after[i].focus, before[i].focus);
            QCOMPARE(after[i].ownCursor, before[i].ownCursor);
            QCOMPARE(after[i].cursor, before[i].cursor);
            QCOMPARE(after[i].visible, before[i].visible);
        }
        // The widgets act again.
        QSignalSpy clicked(f.b1, &QPushButton::clicked);
        RealInput::click(f.b1);
        QTRY_COMPARE(clicked.count(), 1);
        RealInput::click(f.edit);
        QTRY_COMPARE(QApplication::focusWidget(), f.edit);
        RealInput::typeText(QStringLiteral("abc"));
        QTRY_COMPARE(f.edit->text(), QStringLiteral("abc"));
    }

    void designingOffInTheMiddleOfADragLeavesAWorkingForm()
    {
        Form f;
        QVERIFY(f.design());
        RealInput::moveTo(f.b1, QPoint(30, 10));
        RealInput::press();
        RealInput::moveTo(f.b1, QPoint(50, 20), 3);
        QTRY_VERIFY(TQorSizer::ActiveDragSizer());
        f.manager->SetIsDesigning(false);
        QVERIFY(!TQorSizer::ActiveDragSizer());
        RealInput::moveTo(f.b1, QPoint(60, 25), 2);
        RealInput::release();
        QSignalSpy clicked(f.b2, &QPushButton::clicked);
        RealInput::click(f.b2);
        QTRY_COMPARE(clicked.count(), 1);
    }

    // ---- Faults ----

    void aSelectedWidgetDeletedByTheApplicationLeavesNoSizerAndNoProxy()
    {
        Form f;
        QVERIFY(f.design());
        f.manager->SelectControl(f.b1, QPoint(-1, -1), csmSelect, false, false);
        f.manager->SelectControl(f.b2, QPoint(-1, -1), csmAdd, true, false);
        delete f.b1;
        QCOMPARE(f.manager->Sizers()->Count(), 1);
        QCOMPARE(f.selected(), QList<QObject *>{f.b2});
        QCOMPARE(f.manager->DesignProxies()->GetControlIndex(f.b2) >= 0, true);
        for (int i = 0; i < f.manager->DesignProxies()->Count(); ++i)
            QVERIFY(f.manager->DesignProxies()->Proxies(i)->Control());
        RealInput::click(f.b3);
        QTRY_COMPARE(f.selected(), QList<QObject *>{f.b3});
    }

    void theStageDeletedWhileDesigningFreesCleanly()
    {
        auto form = std::make_unique<QWidget>();
        form->setObjectName(QStringLiteral("Form2"));
        form->resize(300, 200);
        placed<QPushButton>(form.get(), "Button1", QRect(10, 10, 80, 30));
        TQorDesignManager manager;
        manager.SetDesignStage(form.get());
        manager.SetIsDesigning(true);
        QVERIFY(QorGuiTest::showAndActivate(form.get()));
        manager.SelectAllControls();
        QCOMPARE(manager.Sizers()->Count(), 1);
        form.reset();
        QVERIFY(!manager.IsDesigning());
        QCOMPARE(manager.Sizers()->Count(), 0);
        QCOMPARE(manager.DesignProxies()->Count(), 0);
        QCOMPARE(manager.DesignStage(), nullptr);
    }

    void theManagerDeletedWhileDesigningLeavesTheStageUsable()
    {
        Form f;
        QVERIFY(f.design());
        f.manager->SelectAllControls();
        delete f.manager;
        QSignalSpy clicked(f.b1, &QPushButton::clicked);
        RealInput::click(f.b1);
        QTRY_COMPARE(clicked.count(), 1);
        QCOMPARE(f.form->findChildren<TQorSizer *>().size(), 0);
    }

    // ---- Pictures ----

    // The pictures of the documentation, checked pixel by pixel; written to
    // the folder QORDESIGN_SCREENSHOTS names, when it is set.
    void picturesShowSelectionsTheRubberBandAndAnInsertion()
    {
        FakeCenter center;
        Form f;
        f.manager->SetConsoleCenter(&center);
        QVERIFY(f.design());
        const QString folder = qEnvironmentVariable("QORDESIGN_SCREENSHOTS");
        auto save = [&](const QImage &image, const char *name) {
            if (!folder.isEmpty())
                QVERIFY(image.save(folder + QLatin1Char('/') + QLatin1String(name)));
        };
        auto handleAt = [](const TQorSizer *sizer, int index) {
            return sizer->HandleRect(index).translated(sizer->geometry().topLeft()).center();
        };

        f.manager->SelectControl(f.b1, QPoint(-1, -1), csmSelect, true, false);
        TQorSizer *one = f.manager->GetSelectSizer();
        const QRgb single = one->SingleSelColor().rgb();
        QTRY_COMPARE(f.form->grab().toImage().pixel(handleAt(one, 6)), single);
        QImage image = f.form->grab().toImage();
        for (int i = 1; i <= 8; ++i)
            QCOMPARE(image.pixel(handleAt(one, i)), single);
        save(image, "one-selected.png");

        f.manager->SelectControl(f.b2, QPoint(-1, -1), csmAdd, false, false);
        f.manager->SelectControl(f.b3, QPoint(-1, -1), csmAdd, true, false);
        const QRgb multi = one->MultiSelColor().rgb();
        TQorSizer *third = f.manager->Sizers()->SizerOf(f.b3);
        QTRY_COMPARE(f.form->grab().toImage().pixel(handleAt(third, 5)), multi);
        image = f.form->grab().toImage();
        for (int s = 0; s < 3; ++s) {
            const TQorSizer *sizer = f.manager->Sizers()->Sizers(s);
            for (int i : {1, 3, 5, 7})
                QCOMPARE(image.pixel(handleAt(sizer, i)), multi);
            QVERIFY(image.pixel(handleAt(sizer, 2)) != multi);
        }
        save(image, "three-selected.png");

        f.manager->SelectControl(f.form.get(), QPoint(-1, -1), csmSelect, true, false);
        TQorDesignStageProxy *stageProxy = f.manager->StageProxy();
        stageProxy->StartRubberBand(QPoint(10, 8));
        stageProxy->RubberBand()->SetPointEnd(QPoint(250, 70));
        // Its top edge is dotted: black on about every other pixel.
        auto dotsOnTop = [&] {
            const QImage grabbed = f.form->grab().toImage();
            int dots = 0;
            for (int x = 10; x < 250; ++x)
                dots += grabbed.pixel(x, 8) == qRgb(0, 0, 0);
            return dots;
        };
        QTRY_VERIFY(dotsOnTop() > 60);
        QVERIFY(dotsOnTop() < 180);
        image = f.form->grab().toImage();
        save(image, "rubber-band.png");
        stageProxy->EndRubberBand();
        QTRY_COMPARE(f.selected(), (QList<QObject *>{f.b1, f.b2, f.b3}));

        center.chosen = &QPushButton::staticMetaObject;
        RealInput::click(f.form.get(), QPoint(40, 300));
        QTRY_VERIFY(f.form->findChild<QPushButton *>(QStringLiteral("PushButton1")));
        TQorSizer *inserted = f.manager->GetSelectSizer();
        QVERIFY(inserted);
        QCOMPARE(inserted->Control()->objectName(), QStringLiteral("PushButton1"));
        QTRY_COMPARE(f.form->grab().toImage().pixel(handleAt(inserted, 4)), single);
        save(f.form->grab().toImage(), "insertion.png");
    }

    // ---- Rules checked directly ----

    void aSizerOverA40By20ControlIs44By24WithTheTopMiddleHandleAt19To24()
    {
        Form f;
        QVERIFY(f.design());
        f.b1->setGeometry(50, 60, 40, 20);
        f.manager->SelectControl(f.b1, QPoint(-1, -1), csmSelect, false, false);
        TQorSizer *sizer = f.manager->GetSelectSizer();
        QCOMPARE(sizer->geometry(), QRect(48, 58, 44, 24));
        QCOMPARE(sizer->HandleRect(2), RectFromEdges(19, 0, 24, 5));
        QCOMPARE(sizer->HandleRect(5), RectFromEdges(39, 19, 44, 24));
        QCOMPARE(sizer->HandleRect(8), RectFromEdges(0, 9, 5, 14));
        QCOMPARE(sizer->HitCode(1), HTTOPLEFT);
        QCOMPARE(sizer->HitCode(8), HTLEFT);
        QCOMPARE(sizer->WmNcHitTest(QPoint(21, 2)), HTTOP);
        QCOMPARE(sizer->WmNcHitTest(QPoint(21, 12)), HTCLIENT);
    }

    void aClickOnAChildInsideASelectedGroupBoxReachesTheChild()
    {
        Form f;
        QVERIFY(f.design());
        f.manager->SelectControl(f.group, QPoint(-1, -1), csmSelect, true, false);
        RealInput::click(f.label);
        QTRY_COMPARE(f.selected(), QList<QObject *>{f.label});
    }

    void aProgrammaticMoveClimbsToTheStageWhichHearsOfItOnce()
    {
        FakeCenter center;
        Form f;
        f.manager->SetConsoleCenter(&center);
        QVERIFY(f.design());
        f.manager->SelectControl(f.b4, QPoint(-1, -1), csmSelect, true, false);
        // What the selection itself posted is delivered before counting.
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        center.selMoved = 0;
        f.b4->move(f.b4->pos() + QPoint(5, 0));
        QTRY_COMPARE(center.selMoved, 1);
        QTRY_COMPARE(f.manager->GetSelectSizer()->geometry(), outside(f.b4->geometry().translated(f.group->pos()), 2));
        QVERIFY(!QTest::qWaitFor([&] { return center.selMoved > 1; }, 50));
        QCOMPARE(center.selMoved, 1);
    }

    void destroyingAProxyDuringInlineEditingEndsTheEditingFirst()
    {
        Form f;
        QVERIFY(f.design());
        f.manager->SelectControl(f.edit, QPoint(-1, -1), csmSelect, true, false);
        f.manager->StartEmbedEdit();
        QVERIFY(f.manager->IsEmbeddedEditing());
        TQorDesignWndProcProxy *proxy = f.manager->DesignProxies()->ProxyOf(f.edit);
        QVERIFY(proxy && proxy->IsInlineEditing() && !proxy->IsInterceptMsgs());
        f.manager->DesignProxies()->DelControl(f.edit);
        QVERIFY(!f.manager->IsEmbeddedEditing());
        QVERIFY(!f.manager->GetSelectSizer()->IsInlineEditing());
    }

    void inlineEditingLetsTheEditorTakeTheKeys()
    {
        Form f;
        QVERIFY(f.design());
        f.manager->SelectControl(f.edit, QPoint(-1, -1), csmSelect, true, false);
        f.manager->StartEmbedEdit();
        QTRY_COMPARE(QApplication::focusWidget(), f.edit);
        RealInput::typeText(QStringLiteral("xy"));
        QTRY_COMPARE(f.edit->text(), QStringLiteral("xy"));
        f.manager->EndEmbedEdit();
        QVERIFY(!f.manager->IsEmbeddedEditing());
        RealInput::typeText(QStringLiteral("z"));
        QVERIFY(!QTest::qWaitFor([&] { return f.edit->text() != QLatin1String("xy"); }, 100));
    }

    void aDroppedComponentWithAClashingNameIsRenamed()
    {
        Form f;
        QVERIFY(f.design());
        auto *twin = new QPushButton(f.form.get());
        twin->setObjectName(QStringLiteral("Form1"));
        InsertComponent(f.form.get(), twin);
        QCOMPARE(twin->objectName(), QStringLiteral("PushButton1"));
        auto *unnamed = new QPushButton(f.form.get());
        InsertComponent(f.form.get(), unnamed);
        QCOMPARE(unnamed->objectName(), QStringLiteral("PushButton2"));
        QVERIFY(f.manager->DesignProxies()->ProxyOf(unnamed));
        QVERIFY(f.manager->Dirty());
    }

    void printStageOnAPanelStageDoesNothing()
    {
        QWidget host;
        host.setObjectName(QStringLiteral("Host"));
        host.resize(300, 200);
        auto *panel = placed<QFrame>(&host, "Panel1", QRect(20, 20, 200, 150));
        auto *button = placed<QPushButton>(panel, "Button1", QRect(10, 10, 80, 30));
        TQorDesignManager manager(panel);
        manager.SetIsDesigning(true);
        manager.SelectControl(button, QPoint(-1, -1), csmSelect, true, false);
        manager.PrintStage();
        QCOMPARE(manager.SelectedComps().toList(), QList<QObject *>{button});
        QPixmap image;
        manager.GetStageBitmap(image);
        QVERIFY(image.isNull());
        QCOMPARE(manager.SelectedComps().toList(), QList<QObject *>{button});
    }

    void deselectUnsiblingControlKeepsTheSiblingsInTheirOrder()
    {
        Form f;
        QVERIFY(f.design());
        for (QWidget *w : {static_cast<QWidget *>(f.b3), static_cast<QWidget *>(f.b4),
                           static_cast<QWidget *>(f.b1), static_cast<QWidget *>(f.label)})
            f.manager->SelectControl(w, QPoint(-1, -1), csmAdd, false, false);
        f.manager->FillSelectedComps();
        f.manager->DeselectUnsiblingControl(f.b1, true);
        f.manager->FillSelectedComps();
        QCOMPARE(f.selected(), (QList<QObject *>{f.b3, f.b1}));
    }

    void selectAllSelectsEveryShowingControlInComponentOrder()
    {
        Form f;
        QVERIFY(f.design());
        f.manager->SelectAllControls();
        // The tab widget's second page is not showing.
        QList<QObject *> expected;
        for (QObject *c : ComponentList(f.form.get())) {
            if (c->isWidgetType() && c != f.page2)
                expected.append(c);
        }
        QVERIFY(expected.contains(f.page1) && expected.contains(f.b5));
        QCOMPARE(f.selected(), expected);
        QCOMPARE(f.manager->StageSizer()->Control(), nullptr);
        f.manager->DeselectAll();
        QCOMPARE(f.manager->Sizers()->Count(), 0);
    }

    void theStageSizerResizesAPanelStage()
    {
        QWidget host;
        host.setObjectName(QStringLiteral("Host"));
        host.resize(400, 300);
        auto *panel = placed<QFrame>(&host, "Panel1", QRect(40, 40, 200, 150));
        placed<QPushButton>(panel, "Button1", QRect(10, 10, 80, 30));
        TQorDesignManager manager(panel);
        manager.SetIsDesigning(true);
        QVERIFY(QorGuiTest::showAndActivate(&host));
        TQorStageSizer *sizer = manager.StageSizer();
        QTRY_VERIFY(sizer->isVisible());
        QCOMPARE(sizer->parentWidget(), &host);
        QCOMPARE(sizer->geometry(), outside(panel->geometry(), 2));
        // Only the part of the handle outside the stage can be reached.
        const QPoint grip = sizer->HandleRect(5).bottomRight();
        RealInput::drag(sizer, grip, grip + QPoint(30, 20), 5);
        QTRY_COMPARE(panel->geometry(), QRect(40, 40, 230, 170));
        // A fixed stage sizer drops the other handles' codes, and then falls
        // back on the plain sizer's answer, which finds the handle again:
        // kept as the stage sizer has always behaved.
        sizer->SetStageSizerMode(ssmFixed);
        QCOMPARE(sizer->WmNcHitTest(sizer->HandleRect(1).topLeft()), HTTOPLEFT);
        QCOMPARE(sizer->WmNcHitTest(sizer->HandleRect(5).bottomRight()), HTBOTTOMRIGHT);
        // Inside the stage the stage sizer is transparent.
        QCOMPARE(sizer->WmNcHitTest(QPoint(50, 50)), HTTRANSPARENT);
    }

    void gridSizesBelowOneBecomeFour()
    {
        TQorDesignManager manager;
        QCOMPARE(manager.GridSizeX(), 4);
        manager.SetGridSizeX(0);
        QCOMPARE(manager.GridSizeX(), 4);
        manager.SetGridSizeY(-3);
        QCOMPARE(manager.GridSizeY(), 4);
        manager.SetGridSizeX(8);
        QCOMPARE(manager.GridSizeX(), 8);
    }

    void theStageMousePositionIsReported()
    {
        Form f;
        QVERIFY(f.design());
        QSignalSpy moves(f.manager, &TQorDesignManager::OnStageMouseMove);
        RealInput::moveTo(f.b4, QPoint(5, 6));
        RealInput::moveTo(f.b4, QPoint(7, 9), 1);
        const QPoint expected = f.b4->mapTo(f.form.get(), QPoint(7, 9));
        // The last report is of the last move, once its event has come.
        auto lastReported = [&moves] {
            if (moves.isEmpty())
                return QPoint(-1, -1);
            const QList<QVariant> last = moves.constLast();
            return QPoint(last.at(3).toInt(), last.at(4).toInt());
        };
        QTRY_COMPARE(lastReported(), expected);
    }
};

QTEST_MAIN(tst_QorDesignSurface)
#include "tst_qordesignsurface.moc"
