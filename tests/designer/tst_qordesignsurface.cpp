// SPDX-License-Identifier: MIT
// The design surface as a user meets it: gestures that run through the
// proxies, the sizers and the design manager together (a click that
// selects, a drag that moves, an insertion, designing off, also in the
// middle of a drag) and the pictures of the documentation.
#include "designer/qordesigner_p.h"
#include "designer/qordesigngrid_p.h"
#include "designer/qormanager.h"
#include "designer/qorproxies_p.h"
#include "designer/qorsizers_p.h"
#include "designer/qorrubberband_p.h"
#include "designer/qorstage.h"
#include "designfixture.h"
#include "foundation/qorcomponents.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

using namespace QorDesignFixture;

class tst_QorDesignSurface : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

private Q_SLOTS:
    // ---- Selecting ----

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

    // ---- Moving ----

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
};

QTEST_MAIN(tst_QorDesignSurface)
#include "tst_qordesignsurface.moc"
