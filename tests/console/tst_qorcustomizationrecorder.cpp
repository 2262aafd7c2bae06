// SPDX-License-Identifier: MIT
// The customization recorder: nudges by real keys, a value written to
// several controls, a deletion and its undo, a saved customization applied
// at the start, and the form put back as the application built it.
#include "console/qorcustomization.h"
#include "console/qorcustomizationrecorder.h"
#include "console/qordesignconsole.h"
#include "console/qordesignhistory.h"
#include "designer/qormanager.h"
#include "foundation/qorcomponents.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"
#include "consolefixture.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QUndoStack>

namespace {

// The application's form, as each version of it is built.
struct Form : QorConsoleTest::StageFixture
{
    QPushButton *b1 = new QPushButton(QStringLiteral("One"), form.get());
    QPushButton *b2 = new QPushButton(QStringLiteral("Two"), form.get());
    QLabel *label = new QLabel(QStringLiteral("Note"), form.get());
    TQorCustomizationRecorder recorder{center.get()};

    explicit Form(bool Version2 = false)
        : StageFixture(QSize(360, 240))
    {
        place(b1, "Button1", QRect(20, 20, 80, 30));
        place(b2, "Button2", QRect(20, 70, 80, 30));
        place(label, "Label1", QRect(140, 20, 100, 24));
        if (Version2) {
            // The next version moves the label and has a third button.
            label->move(140, 120);
            auto *b3 = new QPushButton(QStringLiteral("Three"), form.get());
            place(b3, "Button3", QRect(20, 120, 80, 30));
        }
        center->SetDesignManager(manager);
    }

    QWidget *named(const QString &name) const { return qobject_cast<QWidget *>(FindComponent(form.get(), name)); }
    QUndoStack *stack() const { return center->UndoStack(); }
};

} // namespace

class tst_QorCustomizationRecorder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY2(RealInput::open(), "real X input (XTest) is needed"); }
    void cleanup() { RealInput::releaseAll(); }

    void nudgesByRealKeysAreTheControlsNewPlaces()
    {
        Form f;
        QVERIFY(f.design());
        f.recorder.Start();
        QVERIFY(f.recorder.Delta().IsEmpty());
        QSignalSpy changed(&f.recorder, &TQorCustomizationRecorder::DeltaChanged);
        RealInput::click(f.b1);
        QTRY_COMPARE(f.selection(), QList<QObject *>{f.b1});
        RealInput::click(f.b2, QPoint(-1, -1), Qt::LeftButton, Qt::ShiftModifier);
        QTRY_COMPARE(f.selection().size(), 2);
        RealInput::key("Right", Qt::ControlModifier);
        RealInput::key("Right", Qt::ControlModifier);
        QTRY_COMPARE(f.b2->pos(), QPoint(22, 70));
        QTRY_VERIFY(changed.size() >= 2);
        const TQorCustomization delta = f.recorder.Delta();
        QCOMPARE(delta.PropertyValue(QStringLiteral("Button1"), "geometry").toRect(), QRect(22, 20, 80, 30));
        QCOMPARE(delta.PropertyValue(QStringLiteral("Button2"), "geometry").toRect(), QRect(22, 70, 80, 30));
        QVERIFY(!delta.HasComponent(QStringLiteral("Label1")));

        // Undone, the places are the form's own again.
        f.stack()->undo();
        QCOMPARE(f.b1->pos(), QPoint(20, 20));
        QCOMPARE(f.recorder.Delta().PropertyValue(QStringLiteral("Button1"), "geometry").toRect(),
                 QRect(20, 20, 80, 30));

        // What was kept step by step builds the same design as the
        // difference to the form.
        f.stack()->redo();
        Form fresh;
        f.recorder.Delta().Apply(fresh.form.get());
        Form fromDiff;
        TQorCustomization::Diff(f.recorder.BaseRecords(), f.form.get()).Apply(fromDiff.form.get());
        QCOMPARE(TQorCustomization::FormRecords(fresh.form.get()), TQorCustomization::FormRecords(fromDiff.form.get()));
        // The form itself is a window here, placed on the screen.
        QCOMPARE(fresh.b1->geometry(), f.b1->geometry());
        QCOMPARE(fresh.b2->geometry(), f.b2->geometry());
        QCOMPARE(fresh.label->geometry(), f.label->geometry());
    }

    void aValueWrittenToSeveralControlsIsKeptForEach()
    {
        Form f;
        QVERIFY(f.design());
        f.recorder.Start();
        f.center->BeginPropertyChange({f.b1, f.b2}, QStringLiteral("text"));
        f.b1->setText(QStringLiteral("Go"));
        f.b2->setText(QStringLiteral("Go"));
        f.center->EndDesignChange();
        QCOMPARE(f.stack()->count(), 1);
        QCOMPARE(f.recorder.Delta().PropertyValue(QStringLiteral("Button1"), "text").toString(), QStringLiteral("Go"));
        QCOMPARE(f.recorder.Delta().PropertyValue(QStringLiteral("Button2"), "text").toString(), QStringLiteral("Go"));
    }

    void aDeletionAndItsUndoAreFollowed()
    {
        Form f;
        QVERIFY(f.design());
        f.recorder.Start();
        f.select({f.label});
        f.center->DelSelCtrls();
        QTRY_VERIFY(!f.named(QStringLiteral("Label1")));
        QVERIFY(!f.recorder.Delta().IsEmpty());
        QVERIFY(f.recorder.Delta().Describe().join(QLatin1Char('\n')).contains(QStringLiteral("Label1")));
        f.stack()->undo();
        QVERIFY(f.named(QStringLiteral("Label1")));
        QVERIFY(f.recorder.Delta().IsEmpty());
    }

    // The saved customization of version 1 goes onto version 2 at the
    // start: the user's places stay, the new button stays where version 2
    // put it, and a component version 2 dropped is reported.
    void aSavedCustomizationIsAppliedAtTheStart()
    {
        QByteArray saved;
        {
            Form v1;
            QVERIFY(v1.design());
            v1.recorder.Start();
            v1.select({v1.b1});
            v1.center->DesignerMoveStarting();
            v1.b1->move(40, 30);
            v1.center->DesignerSelCompMoved();
            auto *extra = new QPushButton(QStringLiteral("Mine"), v1.form.get());
            v1.center->BeginDesignChange(QStringLiteral("Insert"));
            v1.place(extra, "MyButton", QRect(200, 180, 80, 30));
            extra->show();
            v1.center->EndDesignChange();
            saved = v1.recorder.Delta().ToBytes();
        }
        Form v2(true);
        delete v2.b2;
        QVERIFY(v2.design());
        const QList<TQorCustomizationIssue> issues = v2.recorder.Start(TQorCustomization::FromBytes(saved));
        QCOMPARE(v2.b1->pos(), QPoint(40, 30));
        QVERIFY(v2.named(QStringLiteral("MyButton")));
        QCOMPARE(v2.named(QStringLiteral("Button3"))->pos(), QPoint(20, 120));
        QCOMPARE(v2.label->pos(), QPoint(140, 120));
        QVERIFY(issues.isEmpty());
        QVERIFY(v2.recorder.Delta().HasComponent(QStringLiteral("MyButton")));
    }

    void resetToDefaultIsOneStepUndoTakesBack()
    {
        Form f;
        QVERIFY(f.design());
        f.recorder.Start();
        const QByteArray base = f.recorder.BaseRecords();
        f.select({f.b1});
        f.center->DesignerMoveStarting();
        f.b1->move(60, 20);
        f.center->DesignerSelCompMoved();
        QVERIFY(!f.recorder.Delta().IsEmpty());
        f.recorder.ResetToDefault();
        QCOMPARE(TQorCustomization::FormRecords(f.form.get()), base);
        QVERIFY(f.recorder.Delta().IsEmpty());
        QCOMPARE(f.stack()->undoText(), QStringLiteral("Reset to Default"));
        f.stack()->undo();
        QCOMPARE(f.named(QStringLiteral("Button1"))->pos(), QPoint(60, 20));
        QVERIFY(!f.recorder.Delta().IsEmpty());
    }
};

QTEST_MAIN(tst_QorCustomizationRecorder)
#include "tst_qorcustomizationrecorder.moc"
