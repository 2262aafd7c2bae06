// SPDX-License-Identifier: MIT
// The design actions: captions and hints, when each is enabled (judged at
// once when the selection, the enabled states or the stage's visibility
// change), what each runs and in which order, the dirty mark, and the
// dialog commands driven by real clicks.
#include "console/qordesignactions.h"
#include "consolefixture.h"
#include "console/qordesignconsole.h"
#include "console/qordesignposalignform.h"
#include "console/qordesignpossizeform.h"
#include "designer/qormanager.h"
#include "foundation/qorclasses.h"
#include "foundation/qorcomponents.h"
#include "foundation/vhoclipbrdutils.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"

#include <QApplication>
#include <QClipboard>
#include <QGroupBox>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>

using namespace QorDesigner;

namespace {

struct Fixture : QorConsoleTest::StageFixture
{
    QPushButton *b1 = new QPushButton(QStringLiteral("One"), form.get());
    QPushButton *b2 = new QPushButton(QStringLiteral("Two"), form.get());
    QGroupBox *group = new QGroupBox(QStringLiteral("Group"), form.get());
    QPushButton *inner1 = new QPushButton(QStringLiteral("A"), group);
    QPushButton *inner2 = new QPushButton(QStringLiteral("B"), group);
    std::unique_ptr<QObject> holder = std::make_unique<QObject>();
    TQorDesignEditCopy *copy = new TQorDesignEditCopy(holder.get());
    TQorDesignEditCut *cut = new TQorDesignEditCut(holder.get());
    TQorDesignEditPaste *paste = new TQorDesignEditPaste(holder.get());
    TQorDesignEditSelAll *selAll = new TQorDesignEditSelAll(holder.get());
    TQorDesignEditDelSel *delSel = new TQorDesignEditDelSel(holder.get());
    TQorDesignSelCtrlBringToFront *front = new TQorDesignSelCtrlBringToFront(holder.get());
    TQorDesignSelCtrlSendToBack *back = new TQorDesignSelCtrlSendToBack(holder.get());
    TQorDesignSelCtrlFlipSelChildren *flipSel = new TQorDesignSelCtrlFlipSelChildren(holder.get());
    TQorDesignSelCtrlFlipAllChildren *flipAll = new TQorDesignSelCtrlFlipAllChildren(holder.get());
    TQorDesignSelCtrlPositionAlign *align = new TQorDesignSelCtrlPositionAlign(holder.get());
    TQorDesignSelCtrlPositionSize *size = new TQorDesignSelCtrlPositionSize(holder.get());
    TQorDesignSelCtrlPositionScale *scale = new TQorDesignSelCtrlPositionScale(holder.get());

    Fixture()
        : StageFixture(QSize(420, 300))
    {
        place(b1, "Button1", QRect(20, 20, 80, 30));
        place(b2, "Button2", QRect(20, 80, 120, 40));
        place(group, "GroupBox1", QRect(200, 20, 180, 140));
        place(inner1, "Inner1", QRect(10, 30, 60, 30));
        place(inner2, "Inner2", QRect(10, 80, 90, 30));
        center->SetDesignManager(manager);
    }
    ~Fixture() { holder.reset(); }

    QList<TQorDesignAction *> all() const
    {
        return {copy, cut, paste, selAll, delSel, front, back, flipSel, flipAll, align, size, scale};
    }
    QList<TQorDesignAction *> selCtrl() const { return {front, back, flipSel, flipAll, align, size, scale}; }

    void link()
    {
        for (TQorDesignAction *action : all())
            action->SetConsoleCenter(center.get());
    }
    bool design()
    {
        link();
        return StageFixture::design();
    }
    QStringList enabledNames() const
    {
        QStringList names;
        for (TQorDesignAction *action : all()) {
            if (action->isEnabled())
                names << QLatin1String(action->metaObject()->className());
        }
        return names;
    }
};

QStringList names(const QList<TQorDesignAction *> &Actions)
{
    QStringList list;
    for (TQorDesignAction *action : Actions)
        list << QLatin1String(action->metaObject()->className());
    return list;
}

} // namespace

class tst_QorDesignActions : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void constructorsSetTheCaptionAndTheHintOnly();
    void anActionWithoutCenterIsDisabled();
    void onlyTheStageSelectedDisablesCopyCutAndDelete();
    void aHiddenStageOrADisabledCenterOrManagerDisablesEverything();
    void theEnabledStateFollowsTheSelectionAtOnce();
    void aDestroyedCenterDisablesItsActions();
    void selectAllNeverMarksDirtyCopyDoes();
    void editCommandsRunOnExecuteBeforeTheirWork();
    void selectedControlCommandsRunTheirWorkBeforeOnExecute();
    void cutCopiesThenDeletesAndTheStageIsLeftSelected();
    void pasteRunsThroughTheCenter();
    void flipCommandsMirrorTheStageOrTheSelectedContainers();
    void updateTargetFollowsItsFlagAndTheStage();
    void theFourStreamedClassesAreRegistered();
    void cancellingTheSizeDialogChangesNothingButMarksDirty();
    void theSizeDialogsChoiceIsApplied();
    void anAlignmentThatFailsIsReportedNotThrown();
};

void tst_QorDesignActions::constructorsSetTheCaptionAndTheHintOnly()
{
    Fixture f;
    const QStringList captions{QStringLiteral("&Copy"),           QStringLiteral("&Cut"),
                               QStringLiteral("&Paste"),          QStringLiteral("Select &All"),
                               QStringLiteral("&Delete"),         QStringLiteral("&Bring to Front"),
                               QStringLiteral("&Send to Back"),   QStringLiteral("&Selected"),
                               QStringLiteral("&All"),            QStringLiteral("&Align..."),
                               QStringLiteral("&Size..."),        QStringLiteral("Scal&e...")};
    const QList<TQorDesignAction *> actions = f.all();
    for (int i = 0; i < actions.size(); ++i) {
        TQorDesignAction *action = actions[i];
        QCOMPARE(action->text(), captions[i]);
        QVERIFY(action->shortcut().isEmpty());
        QVERIFY(action->shortcuts().isEmpty());
        QVERIFY(action->icon().isNull());
        QVERIFY(IsQorDesignCtrl(action));
        const bool selCtrl = f.selCtrl().contains(action);
        QCOMPARE(action->Hint(), selCtrl ? captions[i] + QLatin1Char('|') + captions[i] : QString());
        QCOMPARE(action->toolTip().isEmpty(), false);
        if (selCtrl) {
            QCOMPARE(action->toolTip(), captions[i]);
            QCOMPARE(action->statusTip(), captions[i]);
        }
    }
    // A hint of two parts: the short one is the tool tip, the long one the
    // status tip.
    f.copy->SetHint(QStringLiteral("Copy|Copies the selection"));
    QCOMPARE(f.copy->toolTip(), QStringLiteral("Copy"));
    QCOMPARE(f.copy->statusTip(), QStringLiteral("Copies the selection"));
}

void tst_QorDesignActions::anActionWithoutCenterIsDisabled()
{
    Fixture f;
    for (TQorDesignAction *action : f.all()) {
        QVERIFY(!action->isEnabled());
        QVERIFY(!action->JudgeEnabled());
        QVERIFY(action->Update());
        QVERIFY(!action->isEnabled());
    }
    // Running one without a center does nothing and fails nothing.
    QSignalSpy executed(f.copy, &TQorDesignAction::OnExecute);
    f.copy->Execute();
    QCOMPARE(executed.count(), 1);
}

void tst_QorDesignActions::onlyTheStageSelectedDisablesCopyCutAndDelete()
{
    Fixture f;
    QVERIFY(f.design());
    QCOMPARE(f.center->SelectedComps().toList(), QList<QObject *>{f.form.get()});
    QStringList expected = names({f.paste, f.selAll});
    expected += names(f.selCtrl());
    QCOMPARE(f.enabledNames(), expected);
}

void tst_QorDesignActions::aHiddenStageOrADisabledCenterOrManagerDisablesEverything()
{
    Fixture f;
    QVERIFY(f.design());
    f.select({f.b1});
    QCOMPARE(f.enabledNames().size(), 12);

    f.center->SetEnabled(false);
    QCOMPARE(f.enabledNames(), QStringList());
    f.center->SetEnabled(true);
    QCOMPARE(f.enabledNames().size(), 12);

    // The manager disabled on its own, the center still enabled.
    f.manager->SetEnabled(false);
    QCOMPARE(f.enabledNames(), QStringList());
    f.manager->SetEnabled(true);
    QCOMPARE(f.enabledNames().size(), 12);

    f.form->hide();
    QTRY_COMPARE(f.enabledNames(), QStringList());
    f.form->show();
    QTRY_COMPARE(f.enabledNames().size(), 12);

    // No stage at all.
    f.manager->SetDesignStage(nullptr);
    QCOMPARE(f.enabledNames(), QStringList());
}

void tst_QorDesignActions::theEnabledStateFollowsTheSelectionAtOnce()
{
    Fixture f;
    QVERIFY(f.design());
    QVERIFY(!f.copy->isEnabled());
    // Selected by a click, as a user selects.
    RealInput::click(f.b1);
    QTRY_COMPARE(f.center->SelectedComps().toList(), QList<QObject *>{f.b1});
    QVERIFY(f.copy->isEnabled());
    QVERIFY(f.cut->isEnabled());
    QVERIFY(f.delSel->isEnabled());
    // Deleted: the stage is the selection again.
    f.delSel->trigger();
    QCOMPARE(f.center->SelectedComps().toList(), QList<QObject *>{f.form.get()});
    QVERIFY(!f.copy->isEnabled());
    QVERIFY(!f.delSel->isEnabled());
    QVERIFY(f.front->isEnabled());
    // The center edits its list: the actions hear of it too.
    f.select({f.b2});
    QVERIFY(f.copy->isEnabled());
    f.center->DeselectControl();
    QVERIFY(f.center->SelectedComps().isEmpty());
    QVERIFY(!f.copy->isEnabled());
    QVERIFY(!f.front->isEnabled());
    QVERIFY(f.paste->isEnabled());
}

void tst_QorDesignActions::aDestroyedCenterDisablesItsActions()
{
    Fixture f;
    QVERIFY(f.design());
    QVERIFY(f.paste->isEnabled());
    f.center.reset();
    for (TQorDesignAction *action : f.all()) {
        QVERIFY(!action->ConsoleCenter());
        action->Update();
        QVERIFY(!action->isEnabled());
    }
}

void tst_QorDesignActions::selectAllNeverMarksDirtyCopyDoes()
{
    Fixture f;
    QVERIFY(f.design());
    f.center->SetDirty(false);
    QSignalSpy selAllRan(f.selAll, &TQorDesignAction::OnExecute);
    f.selAll->trigger();
    // Every control, those in the group too.
    QCOMPARE(f.center->SelectedComps().Count(), 5);
    QCOMPARE(selAllRan.count(), 0);
    QVERIFY(!f.center->GetDirty());

    QSignalSpy copyRan(f.copy, &TQorDesignAction::OnExecute);
    f.copy->trigger();
    QCOMPARE(copyRan.count(), 1);
    QVERIFY(f.center->GetDirty());
}

void tst_QorDesignActions::editCommandsRunOnExecuteBeforeTheirWork()
{
    Fixture f;
    QVERIFY(f.design());
    f.select({f.b1});
    QGuiApplication::clipboard()->clear();
    QTRY_VERIFY(!VhoClipboard()->HasComponents());
    bool clipboardHadThem = true;
    connect(f.copy, &TQorDesignAction::OnExecute, f.copy, [&] { clipboardHadThem = VhoClipboard()->HasComponents(); });
    f.copy->trigger();
    QVERIFY(!clipboardHadThem);
    QTRY_VERIFY(VhoClipboard()->HasComponents());

    QPointer<QWidget> b1 = f.b1;
    bool aliveAtExecute = false;
    connect(f.delSel, &TQorDesignAction::OnExecute, f.delSel, [&] { aliveAtExecute = b1 && Owner(b1) == f.form.get(); });
    f.delSel->trigger();
    QVERIFY(aliveAtExecute);
    QTRY_VERIFY(!b1);
}

void tst_QorDesignActions::selectedControlCommandsRunTheirWorkBeforeOnExecute()
{
    Fixture f;
    QVERIFY(f.design());
    f.select({f.b1});
    auto zIndex = [&f](QWidget *w) {
        int index = 0;
        for (QObject *child : f.form->children()) {
            if (child == w)
                return index;
            if (child->isWidgetType() && Owner(child) == f.form.get())
                ++index;
        }
        return -1;
    };
    QCOMPARE(zIndex(f.b1), 0);
    int atExecute = -1;
    connect(f.front, &TQorDesignAction::OnExecute, f.front, [&] { atExecute = zIndex(f.b1); });
    f.center->SetDirty(false);
    f.front->trigger();
    QCOMPARE(atExecute, 2);
    QCOMPARE(zIndex(f.b1), 2);
    QVERIFY(f.center->GetDirty());

    int backAtExecute = -1;
    connect(f.back, &TQorDesignAction::OnExecute, f.back, [&] { backAtExecute = zIndex(f.b1); });
    f.back->trigger();
    QCOMPARE(backAtExecute, 0);
}

void tst_QorDesignActions::cutCopiesThenDeletesAndTheStageIsLeftSelected()
{
    Fixture f;
    QVERIFY(f.design());
    QGuiApplication::clipboard()->clear();
    f.select({f.b1, f.b2});
    QPointer<QWidget> b1 = f.b1;
    QPointer<QWidget> b2 = f.b2;
    QSignalSpy ran(f.cut, &TQorDesignAction::OnExecute);
    f.cut->trigger();
    QCOMPARE(ran.count(), 1);
    QCOMPARE(f.center->SelectedComps().toList(), QList<QObject *>{f.form.get()});
    QTRY_VERIFY(!b1 && !b2);
    QTRY_VERIFY(VhoClipboard()->HasComponents());
    // The clipboard holds both: pasting brings them back.
    f.paste->trigger();
    QTRY_VERIFY(f.form->findChild<QPushButton *>(QStringLiteral("Button1")));
    QVERIFY(f.form->findChild<QPushButton *>(QStringLiteral("Button2")));
}

void tst_QorDesignActions::pasteRunsThroughTheCenter()
{
    Fixture f;
    QVERIFY(f.design());
    f.select({f.b1});
    f.copy->trigger();
    QTRY_VERIFY(VhoClipboard()->HasComponents());
    f.center->SetDirty(false);
    const int before = ComponentCount(f.form.get());
    f.paste->trigger();
    QCOMPARE(ComponentCount(f.form.get()), before + 1);
    QVERIFY(f.center->GetDirty());
}

void tst_QorDesignActions::flipCommandsMirrorTheStageOrTheSelectedContainers()
{
    Fixture f;
    QVERIFY(f.design());
    f.select({f.group});
    const int inner1Left = f.inner1->x();
    const int b1Left = f.b1->x();
    f.flipSel->trigger();
    QCOMPARE(f.inner1->x(), f.group->width() - inner1Left - f.inner1->width());
    QCOMPARE(f.b1->x(), b1Left);
    f.flipAll->trigger();
    QCOMPARE(f.b1->x(), f.form->width() - b1Left - f.b1->width());
}

void tst_QorDesignActions::updateTargetFollowsItsFlagAndTheStage()
{
    Fixture f;
    f.paste->UpdateTarget(nullptr);
    QVERIFY(!f.paste->isEnabled());
    QVERIFY(f.design());
    f.paste->UpdateTarget(nullptr);
    QVERIFY(f.paste->isEnabled());
    f.paste->SetDisableIfNoHandler(false);
    f.paste->UpdateTarget(nullptr);
    QVERIFY(!f.paste->isEnabled());
    // Copy also wants a selection; the stage counts here.
    f.copy->UpdateTarget(nullptr);
    QVERIFY(f.copy->isEnabled());
    f.center->DeselectControl();
    f.copy->UpdateTarget(nullptr);
    QVERIFY(!f.copy->isEnabled());
    f.form->hide();
    f.paste->SetDisableIfNoHandler(true);
    f.paste->UpdateTarget(nullptr);
    QVERIFY(!f.paste->isEnabled());
}

void tst_QorDesignActions::theFourStreamedClassesAreRegistered()
{
    for (const char *name : {"TQorDesignSelCtrlBringToFront", "TQorDesignSelCtrlSendToBack",
                             "TQorDesignSelCtrlFlipSelChildren", "TQorDesignSelCtrlFlipAllChildren"}) {
        const QMetaObject *cls = GetClass(QLatin1String(name));
        QVERIFY2(cls, name);
        std::unique_ptr<QObject> made(CreateRegisteredComponent(cls));
        QVERIFY(qobject_cast<TQorDesignSelCtrlAction *>(made.get()));
    }
    for (const char *name : {"TQorDesignEditCopy", "TQorDesignSelCtrlPositionAlign"})
        QVERIFY2(!GetClass(QLatin1String(name)), name);
}

void tst_QorDesignActions::cancellingTheSizeDialogChangesNothingButMarksDirty()
{
    Fixture f;
    QVERIFY(f.design());
    f.select({f.b1, f.b2});
    f.center->SetDirty(false);
    const QRect b1 = f.b1->geometry();
    const QRect b2 = f.b2->geometry();
    QSignalSpy ran(f.size, &TQorDesignAction::OnExecute);
    const auto driven = QorGuiTest::whenModalOpens([](QWidget *modal) {
        // A choice made and then cancelled.
        auto *group = modal->findChild<QGroupBox *>(QStringLiteral("RadioGroupWidth"));
        QVERIFY(group);
        RealInput::click(group->findChildren<QRadioButton *>().value(2));
        RealInput::click(modal->findChild<QPushButton *>(QStringLiteral("CancelBtn")));
    });
    f.size->trigger();
    QVERIFY(*driven);
    QCOMPARE(f.b1->geometry(), b1);
    QCOMPARE(f.b2->geometry(), b2);
    QCOMPARE(ran.count(), 1);
    QVERIFY(f.center->GetDirty());
}

void tst_QorDesignActions::theSizeDialogsChoiceIsApplied()
{
    Fixture f;
    QVERIFY(f.design());
    f.select({f.b1, f.b2});
    const auto driven = QorGuiTest::whenModalOpens([](QWidget *modal) {
        // Width: "Grow to Largest"; height: "Shrink to Smallest".
        RealInput::click(modal->findChild<QGroupBox *>(QStringLiteral("RadioGroupWidth"))
                             ->findChildren<QRadioButton *>()
                             .value(2));
        RealInput::click(modal->findChild<QGroupBox *>(QStringLiteral("RadioGroupHeight"))
                             ->findChildren<QRadioButton *>()
                             .value(1));
        RealInput::click(modal->findChild<QPushButton *>(QStringLiteral("OKBtn")));
    });
    f.size->trigger();
    QVERIFY(*driven);
    QCOMPARE(f.b1->size(), QSize(120, 30));
    QCOMPARE(f.b2->size(), QSize(120, 30));
    // The dialog keeps the choice for the next time.
    QCOMPARE(QorDialogPosSize()->GetWidthSizeStyle(), ssToLargest);
    QCOMPARE(QorDialogPosSize()->GetHeightSizeStyle(), ssToSmallest);
}

void tst_QorDesignActions::anAlignmentThatFailsIsReportedNotThrown()
{
    Fixture f;
    QVERIFY(f.design());
    f.select({f.b1});
    {
        QSignalSpy errors(f.align, &TQorDesignAction::OnError);
        const auto driven = QorGuiTest::whenModalOpens([](QWidget *modal) {
            // "Space Equally" for one control divides by zero.
            RealInput::click(modal->findChild<QGroupBox *>(QStringLiteral("RadioGroupHorizontal"))
                                 ->findChildren<QRadioButton *>()
                                 .value(4));
            RealInput::click(modal->findChild<QPushButton *>(QStringLiteral("OKBtn")));
        });
        f.align->trigger();
        QVERIFY(*driven);
        QCOMPARE(errors.count(), 1);
        QVERIFY(!errors.first().at(1).toString().isEmpty());
        QCOMPARE(f.b1->pos(), QPoint(20, 20));
    }
    // Without a receiver for OnError the user sees a message box; the
    // dialog kept the choice, so OK alone repeats it.
    const auto again = QorGuiTest::whenModalOpens([](QWidget *modal) {
        RealInput::click(modal->findChild<QPushButton *>(QStringLiteral("OKBtn")));
    });
    f.align->trigger();
    QVERIFY(*again);
    QMessageBox *box = nullptr;
    QTRY_VERIFY((box = f.form->findChild<QMessageBox *>(QStringLiteral("QorDesignCommandError"))));
    QVERIFY(!box->text().isEmpty());
    box->close();
    QTRY_VERIFY(!f.form->findChild<QMessageBox *>(QStringLiteral("QorDesignCommandError")));
}

QTEST_MAIN(tst_QorDesignActions)
#include "tst_qordesignactions.moc"
