// SPDX-License-Identifier: MIT
// The sizers: their size and handles around a control, their colours for
// one and for several selected controls, resizing by each handle, moving
// the selection by a drag and by Ctrl+arrows, deleting it by the Delete
// key, and the stage sizer around a panel stage.
#include "designer/qordesigner_p.h"
#include "designer/qormanager.h"
#include "designer/qorsizers_p.h"
#include "designfixture.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"

#include <QFrame>
#include <QTest>

using namespace QorDesignFixture;

class tst_QorSizers : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

private Q_SLOTS:
    // Edge cases

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

    // The other rules

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
};

QTEST_MAIN(tst_QorSizers)
#include "tst_qorsizers.moc"
