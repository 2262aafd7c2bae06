// SPDX-License-Identifier: MIT
// The arrange dialogs (alignment, size, scale): their forms, the answers
// they give and the fallbacks of those answers, the shared instances that
// keep the last choices, translation of their captions, and real input
// while they run modally: clicks, typing, Escape, Enter and mnemonics.
#include "console/qordesignposalignform.h"
#include "console/qordesignposscaleform.h"
#include "console/qordesignpossizeform.h"
#include "console/qorradiogroup.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"

#include <QApplication>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QTranslator>
#include <QValidator>

#include <cstdio>
#include <functional>
#include <memory>

using namespace QorDesigner;

namespace {

// Makes the test program run as the second program of
// theSharedDialogsGoWithTheApplicationObject.
const char sharedDialogsSwitch[] = "--shared-dialogs-program";

template<class T = QWidget>
T *part(const QWidget *Dialog, const char *Name)
{
    return Dialog->findChild<T *>(QLatin1String(Name));
}

QStringList itemsOf(const QWidget *Dialog, const char *Group)
{
    QStringList items;
    const auto *box = part<QGroupBox>(Dialog, Group);
    if (!box)
        return items;
    for (const QRadioButton *button : box->findChildren<QRadioButton *>(Qt::FindDirectChildrenOnly))
        items.append(button->text());
    return items;
}

// The radio button of a group's item, clicked on its indicator: a click
// on the blank part of a wide button beside its caption does nothing.
QRadioButton *item(const QWidget *Dialog, const char *Group, int Index)
{
    const auto *box = part<QGroupBox>(Dialog, Group);
    const auto buttons = box ? box->findChildren<QRadioButton *>(Qt::FindDirectChildrenOnly)
                             : QList<QRadioButton *>{};
    return Index < buttons.size() ? buttons.at(Index) : nullptr;
}

void clickItem(const QWidget *Dialog, const char *Group, int Index)
{
    QRadioButton *button = item(Dialog, Group, Index);
    QVERIFY2(button, Group);
    RealInput::click(button, QPoint(7, button->height() / 2));
    QTRY_VERIFY(button->isChecked());
}

// Runs a dialog's Execute while Drive works it with real input. A dialog
// the driving leaves open is cancelled after a while, so that a failing
// step fails the test instead of hanging it.
struct Run
{
    bool result = false;
    bool driven = false;
};

Run execute(QDialog *Dialog, const std::function<bool()> &Execute, const std::function<void(QWidget *)> &Drive)
{
    QTimer guard;
    guard.setSingleShot(true);
    QObject::connect(&guard, &QTimer::timeout, Dialog, &QDialog::reject);
    const auto driven = QorGuiTest::whenModalOpens([Dialog, Drive, &guard](QWidget *Modal) {
        guard.start(10000);
        if (Modal == Dialog)
            Drive(Modal);
        else
            QFAIL("the modal window is not the dialog run");
    });
    Run run;
    run.result = Execute();
    run.driven = *driven;
    return run;
}

// A translation that puts every caption of the arrange dialogs in
// brackets, and leaves everything else alone.
class BracketTranslator : public QTranslator
{
public:
    QString translate(const char *Context, const char *Source, const char *, int) const override
    {
        if (!QByteArrayView(Context).startsWith("TDialogPos"))
            return {};
        return QLatin1Char('[') + QString::fromUtf8(Source) + QLatin1Char(']');
    }
    bool isEmpty() const override { return false; }
};

} // namespace

class tst_QorArrangeDialogs : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

    // The shared dialogs the tests have asked for: they stay alive, hidden,
    // until the application object goes.
    QList<QPointer<QDialog>> m_shared;

    template<class T>
    T *shared(T *Dialog)
    {
        if (!m_shared.contains(Dialog))
            m_shared.append(Dialog);
        return Dialog;
    }

private Q_SLOTS:
    // Any window besides the shared dialogs (which the harness does not
    // count while hidden) is one a test left behind, and no shared dialog
    // stays on the screen.
    void cleanup()
    {
        QorGuiTest::endRealInputTest();
        for (const QPointer<QDialog> &dialog : std::as_const(m_shared))
            QVERIFY(!dialog || !dialog->isVisible());
    }

    // The answers' fallbacks.

    void noChosenItemGivesNoChange()
    {
        TDialogPosAlign align;
        align.SetHorizontalIndex(3);
        align.SetVerticalIndex(5);
        QCOMPARE(align.GetHorizontalAlignment(), asRightOrBottom);
        QCOMPARE(align.GetVerticalAlignment(), asCenterInWindow);
        align.SetHorizontalIndex(-1);
        align.SetVerticalIndex(-1);
        QCOMPARE(align.HorizontalIndex(), -1);
        QCOMPARE(align.VerticalIndex(), -1);
        QVERIFY(!item(&align, "RadioGroupHorizontal", 3)->isChecked());
        QCOMPARE(align.GetHorizontalAlignment(), asNoChange);
        QCOMPARE(align.GetVerticalAlignment(), asNoChange);

        TDialogPosSize size;
        size.SetWidthIndex(2);
        size.SetHeightIndex(3);
        QCOMPARE(size.GetWidthSizeStyle(), ssToLargest);
        QCOMPARE(size.GetHeightSizeStyle(), ssCustom);
        size.SetWidthIndex(-1);
        size.SetHeightIndex(-1);
        QCOMPARE(size.WidthIndex(), -1);
        QCOMPARE(size.HeightIndex(), -1);
        QCOMPARE(size.GetWidthSizeStyle(), ssNoChange);
        QCOMPARE(size.GetHeightSizeStyle(), ssNoChange);
    }

    void anIndexPastTheItemsChoosesTheLast()
    {
        TDialogPosAlign align;
        align.SetHorizontalIndex(9);
        QCOMPARE(align.HorizontalIndex(), 5);
        QCOMPARE(align.GetHorizontalAlignment(), asCenterInWindow);
        TDialogPosSize size;
        size.SetHeightIndex(4);
        QCOMPARE(size.HeightIndex(), 3);
    }

    void aSizeIsMinusOneUnlessTheFieldHoldsAnInteger_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("size");
        QTest::newRow("empty") << QString() << -1;
        QTest::newRow("blanks") << QStringLiteral("   ") << -1;
        QTest::newRow("letters") << QStringLiteral("abc") << -1;
        QTest::newRow("digits then letters") << QStringLiteral("12px") << -1;
        QTest::newRow("too large for an integer") << QStringLiteral("99999999999") << -1;
        QTest::newRow("a number") << QStringLiteral("120") << 120;
        QTest::newRow("a number among blanks") << QStringLiteral(" 42 ") << 42;
    }

    void aSizeIsMinusOneUnlessTheFieldHoldsAnInteger()
    {
        QFETCH(QString, text);
        QFETCH(int, size);
        TDialogPosSize dialog;
        dialog.SetWidthIndex(3);
        dialog.SetHeightIndex(3);
        // Set by code, the text passes the field's digits-only rule.
        part<QLineEdit>(&dialog, "EditWidth")->setText(text);
        part<QLineEdit>(&dialog, "EditHeight")->setText(text);
        QCOMPARE(dialog.GetWidthSize(), size);
        QCOMPARE(dialog.GetHeightSize(), size);
        QCOMPARE(dialog.GetWidthSizeStyle(), ssCustom);
        QCOMPARE(dialog.GetHeightSizeStyle(), ssCustom);
    }

    void aScaleFactorThatIsNoIntegerGives100_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("factor");
        QTest::newRow("letters") << QStringLiteral("abc") << 100;
        QTest::newRow("empty") << QString() << 100;
        QTest::newRow("a fraction") << QStringLiteral("50.5") << 100;
        QTest::newRow("fifty") << QStringLiteral("50") << 50;
        QTest::newRow("two hundred") << QStringLiteral("200") << 200;
    }

    void aScaleFactorThatIsNoIntegerGives100()
    {
        QFETCH(QString, text);
        QFETCH(int, factor);
        TDialogPosScale dialog;
        part<QLineEdit>(&dialog, "EditScaleFactor")->setText(text);
        QCOMPARE(dialog.GetScaleFactor(), factor);
    }

    void cancelAnswersFalse()
    {
        TDialogPosAlign dialog;
        const Run run = execute(&dialog, [&] { return dialog.Execute(); }, [](QWidget *Modal) {
            clickItem(Modal, "RadioGroupHorizontal", 2);
            RealInput::click(part(Modal, "CancelBtn"));
        });
        QVERIFY(run.driven);
        QCOMPARE(run.result, false);
        QVERIFY(!dialog.isVisible());
    }

    void lettersTypedIntoAWidthAreKeptOut()
    {
        TDialogPosSize dialog;
        const Run run = execute(&dialog, [&] { return dialog.Execute(); }, [](QWidget *Modal) {
            clickItem(Modal, "RadioGroupWidth", 3);
            auto *edit = part<QLineEdit>(Modal, "EditWidth");
            RealInput::click(edit);
            QTRY_VERIFY(edit->hasFocus());
            RealInput::typeText(QStringLiteral("a7bc"));
            // The digit between the letters got in, so the keys did arrive.
            QTRY_COMPARE(edit->text(), QStringLiteral("7"));
            RealInput::key("BackSpace");
            QTRY_COMPARE(edit->text(), QString());
            RealInput::typeText(QStringLiteral("abc"));
            RealInput::click(part(Modal, "OKBtn"));
        });
        QVERIFY(run.driven);
        QVERIFY(run.result);
        QCOMPARE(part<QLineEdit>(&dialog, "EditWidth")->text(), QString());
        QCOMPARE(dialog.GetWidthSizeStyle(), ssCustom);
        QCOMPARE(dialog.GetWidthSize(), -1);
    }

    void aScaleFactorTypedAsLettersGives100_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("factor");
        QTest::newRow("letters") << QStringLiteral("abc") << 100;
        QTest::newRow("fifty") << QStringLiteral("50") << 50;
    }

    void aScaleFactorTypedAsLettersGives100()
    {
        QFETCH(QString, typed);
        QFETCH(int, factor);
        TDialogPosScale dialog;
        const Run run = execute(&dialog, [&] { return dialog.Execute(); }, [typed](QWidget *Modal) {
            auto *edit = part<QLineEdit>(Modal, "EditScaleFactor");
            // The factor has the keyboard when the dialog opens, all of it
            // chosen, so typing replaces it.
            QTRY_VERIFY(edit->hasFocus());
            RealInput::typeText(typed);
            QTRY_COMPARE(edit->text(), typed);
            RealInput::click(part(Modal, "OKBtn"));
        });
        QVERIFY(run.driven);
        QVERIFY(run.result);
        QCOMPARE(dialog.GetScaleFactor(), factor);
        QCOMPARE(dialog.GetScaleStyle(), ssAll);
    }

    // The forms

    void theAlignmentDialogIsBuiltAsDesigned()
    {
        TDialogPosAlign dialog;
        QCOMPARE(dialog.objectName(), QStringLiteral("DialogPosAlign"));
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Alignment"));
        QCOMPARE(part<QGroupBox>(&dialog, "RadioGroupHorizontal")->title(), QStringLiteral("Horizontal"));
        QCOMPARE(part<QGroupBox>(&dialog, "RadioGroupVertical")->title(), QStringLiteral("Vertical"));
        QCOMPARE(itemsOf(&dialog, "RadioGroupHorizontal"),
                 (QStringList{QStringLiteral("&No Change"), QStringLiteral("&Left Sides"), QStringLiteral("&Center"),
                              QStringLiteral("&Right Sides"), QStringLiteral("&Space Equally"),
                              QStringLiteral("Center in &Window")}));
        QCOMPARE(itemsOf(&dialog, "RadioGroupVertical"),
                 (QStringList{QStringLiteral("&No Change"), QStringLiteral("&Top Sides"), QStringLiteral("C&enter"),
                              QStringLiteral("&Bottom Sides"), QStringLiteral("&Space Equally"),
                              QStringLiteral("Center in &Window")}));
        QCOMPARE(dialog.HorizontalIndex(), 0);
        QCOMPARE(dialog.VerticalIndex(), 0);
        QCOMPARE(dialog.GetHorizontalAlignment(), asNoChange);
        QCOMPARE(dialog.GetVerticalAlignment(), asNoChange);
        checkFrame(&dialog, QSize(300, 172));
    }

    void theSizeDialogIsBuiltAsDesigned()
    {
        TDialogPosSize dialog;
        QCOMPARE(dialog.objectName(), QStringLiteral("DialogPosSize"));
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Size"));
        QCOMPARE(part<QGroupBox>(&dialog, "RadioGroupWidth")->title(), QStringLiteral("Width:"));
        QCOMPARE(part<QGroupBox>(&dialog, "RadioGroupHeight")->title(), QStringLiteral("Height:"));
        QCOMPARE(itemsOf(&dialog, "RadioGroupWidth"),
                 (QStringList{QStringLiteral("&No Change"), QStringLiteral("&Shrink to Smallest"),
                              QStringLiteral("&Grow to Largest"), QStringLiteral("&Width:")}));
        QCOMPARE(itemsOf(&dialog, "RadioGroupHeight"),
                 (QStringList{QStringLiteral("&No Change"), QStringLiteral("Shrin&k to Smallest"),
                              QStringLiteral("Grow to &Largest"), QStringLiteral("&Height:")}));
        QCOMPARE(dialog.WidthIndex(), 0);
        QCOMPARE(dialog.HeightIndex(), 0);
        QCOMPARE(dialog.GetWidthSizeStyle(), ssNoChange);
        QCOMPARE(dialog.GetHeightSizeStyle(), ssNoChange);
        QCOMPARE(dialog.GetWidthSize(), -1);
        QCOMPARE(dialog.GetHeightSize(), -1);
        checkFrame(&dialog, QSize(404, 158));
    }

    void theSizeFieldsSitBesideTheLastItems_data()
    {
        QTest::addColumn<QString>("group");
        QTest::addColumn<QString>("edit");
        QTest::newRow("width") << QStringLiteral("RadioGroupWidth") << QStringLiteral("EditWidth");
        QTest::newRow("height") << QStringLiteral("RadioGroupHeight") << QStringLiteral("EditHeight");
    }

    void theSizeFieldsSitBesideTheLastItems()
    {
        QFETCH(QString, group);
        QFETCH(QString, edit);
        TDialogPosSize dialog;
        const QByteArray groupName = group.toLatin1();
        auto *field = part<QLineEdit>(&dialog, edit.toLatin1().constData());
        QVERIFY(field);
        QRadioButton *last = item(&dialog, groupName.constData(), 3);
        QCOMPARE(field->parentWidget(), last->parentWidget());
        // On the same line, right of the item, not over it, inside the group.
        QVERIFY(qAbs(field->geometry().center().y() - last->geometry().center().y()) <= 2);
        QVERIFY(field->x() >= last->geometry().right());
        QVERIFY(field->parentWidget()->rect().contains(field->geometry()));
        // Digits only.
        QVERIFY(field->validator());
        QString text = QStringLiteral("12a");
        int at = 0;
        QCOMPARE(field->validator()->validate(text, at), QValidator::Invalid);
        text = QStringLiteral("123");
        QCOMPARE(field->validator()->validate(text, at), QValidator::Acceptable);
    }

    void theScaleDialogIsBuiltAsDesigned()
    {
        TDialogPosScale dialog;
        QCOMPARE(dialog.objectName(), QStringLiteral("DialogPosScale"));
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Scale"));
        QVERIFY(part<QFrame>(&dialog, "Bevel1"));
        auto *label = part<QLabel>(&dialog, "Label1");
        QCOMPARE(label->text(), QStringLiteral("&Scaling factor:"));
        QCOMPARE(label->buddy(), part(&dialog, "EditScaleFactor"));
        QCOMPARE(part<QLabel>(&dialog, "Label2")->text(), QStringLiteral("%"));
        QCOMPARE(part<QLineEdit>(&dialog, "EditScaleFactor")->text(), QStringLiteral("100"));
        checkFrame(&dialog, QSize(241, 95));
    }

    void theScaleDialogHidesItsChoiceOfControls()
    {
        TDialogPosScale dialog;
        auto *all = part<QRadioButton>(&dialog, "RBtnAll");
        auto *selected = part<QRadioButton>(&dialog, "RBtnSelected");
        QCOMPARE(all->text(), QStringLiteral("全部(&A)"));
        QCOMPARE(selected->text(), QStringLiteral("选中者(&S)"));
        QVERIFY(all->isChecked());
        QVERIFY(!selected->isChecked());
        QVERIFY(QorGuiTest::showAndActivate(&dialog));
        QVERIFY(!all->isVisible());
        QVERIFY(!selected->isVisible());
        QCOMPARE(dialog.GetScaleStyle(), ssAll);
        // Hidden, "selected" does not answer Alt+S: the factor's label
        // does, and hands the keyboard to the factor.
        part(&dialog, "CancelBtn")->setFocus();
        QTRY_VERIFY(part(&dialog, "CancelBtn")->hasFocus());
        RealInput::key("s", Qt::AltModifier);
        QTRY_VERIFY(part(&dialog, "EditScaleFactor")->hasFocus());
        QVERIFY(all->isChecked());
        selected->setChecked(true);
        QVERIFY(!all->isChecked());
        QCOMPARE(dialog.GetScaleStyle(), ssSelected);
    }

    void theScaleFactorIsBackTo100AtEveryShowing()
    {
        TDialogPosScale dialog;
        auto *edit = part<QLineEdit>(&dialog, "EditScaleFactor");
        for (int showing = 0; showing < 3; ++showing) {
            edit->setText(QStringLiteral("250"));
            QCOMPARE(dialog.GetScaleFactor(), 250);
            dialog.show();
            QCOMPARE(edit->text(), QStringLiteral("100"));
            QCOMPARE(dialog.GetScaleFactor(), 100);
            dialog.hide();
        }
        edit->setText(QStringLiteral("30"));
        dialog.FormShow();
        QCOMPARE(edit->text(), QStringLiteral("100"));
    }

    // The shared instances

    void theSharedDialogsAreMadeOnceWithoutParent()
    {
        TDialogPosAlign *align = shared(QorDialogPosAlign());
        TDialogPosSize *size = shared(QorDialogPosSize());
        TDialogPosScale *scale = shared(QorDialogPosScale());
        QVERIFY(align && size && scale);
        QCOMPARE(QorDialogPosAlign(), align);
        QCOMPARE(QorDialogPosSize(), size);
        QCOMPARE(QorDialogPosScale(), scale);
        QCOMPARE(align->parent(), nullptr);
        QCOMPARE(size->parent(), nullptr);
        QCOMPARE(scale->parent(), nullptr);
        QVERIFY(!align->isVisible());
    }

    void theSharedDialogsKeepTheLastChoices()
    {
        TDialogPosAlign *align = shared(QorDialogPosAlign());
        Run run = execute(align, [&] { return align->Execute(); }, [](QWidget *Modal) {
            clickItem(Modal, "RadioGroupHorizontal", 3);
            clickItem(Modal, "RadioGroupVertical", 4);
            RealInput::click(part(Modal, "OKBtn"));
        });
        QVERIFY(run.driven);
        QVERIFY(run.result);
        QCOMPARE(QorDialogPosAlign()->GetHorizontalAlignment(), asRightOrBottom);
        QCOMPARE(QorDialogPosAlign()->GetVerticalAlignment(), asSpaceEqual);
        // Shown again, the dialog offers the same choices.
        run = execute(align, [&] { return QorDialogPosAlign()->Execute(); }, [](QWidget *Modal) {
            QVERIFY(item(Modal, "RadioGroupHorizontal", 3)->isChecked());
            QVERIFY(item(Modal, "RadioGroupVertical", 4)->isChecked());
            RealInput::key("Escape");
        });
        QVERIFY(run.driven);
        QVERIFY(!run.result);
        QCOMPARE(align->HorizontalIndex(), 3);

        TDialogPosSize *size = shared(QorDialogPosSize());
        run = execute(size, [&] { return size->Execute(); }, [](QWidget *Modal) {
            clickItem(Modal, "RadioGroupHeight", 3);
            RealInput::click(part(Modal, "EditHeight"));
            RealInput::typeText(QStringLiteral("64"));
            QTRY_COMPARE(part<QLineEdit>(Modal, "EditHeight")->text(), QStringLiteral("64"));
            RealInput::click(part(Modal, "OKBtn"));
        });
        QVERIFY(run.driven);
        QVERIFY(run.result);
        QCOMPARE(QorDialogPosSize()->GetHeightSizeStyle(), ssCustom);
        QCOMPARE(QorDialogPosSize()->GetHeightSize(), 64);
        QCOMPARE(QorDialogPosSize()->HeightIndex(), 3);
    }

    void aRadioGroupIsReadAndSetAsAnItemIndex()
    {
        QGroupBox box;
        for (const char *caption : {"&One", "&Two", "T&hree"})
            new QRadioButton(QLatin1String(caption), &box);
        // A button inside a frame of the box is no item of it.
        new QRadioButton(QStringLiteral("Inner"), new QFrame(&box));
        auto *group = new TQorRadioGroup(&box);
        QCOMPARE(group->Box(), &box);
        QCOMPARE(group->ItemCount(), 3);
        QCOMPARE(group->Items(), (QStringList{QStringLiteral("&One"), QStringLiteral("&Two"), QStringLiteral("T&hree")}));
        QCOMPARE(group->ItemIndex(), -1);
        QSignalSpy changed(group, &TQorRadioGroup::ItemIndexChanged);
        group->SetItemIndex(2);
        QCOMPARE(group->ItemIndex(), 2);
        QVERIFY(group->button(2)->isChecked());
        group->SetItemIndex(0);
        QVERIFY(!group->button(2)->isChecked());
        group->SetItemIndex(-1);
        QCOMPARE(group->ItemIndex(), -1);
        QVERIFY(!group->button(0)->isChecked());
        QCOMPARE(changed.size(), 3);
        QCOMPARE(changed.at(0).at(0).toInt(), 2);
        QCOMPARE(changed.at(1).at(0).toInt(), 0);
        QCOMPARE(changed.at(2).at(0).toInt(), -1);
        // Still exclusive after letting go of its choice.
        group->button(1)->setChecked(true);
        group->button(0)->setChecked(true);
        QVERIFY(!group->button(1)->isChecked());
        QCOMPARE(group->property("ItemIndex").toInt(), 0);
    }

    // Run in a program of its own, under the same sanitizers: the
    // dialogs go when the application object goes, before anything of Qt
    // they need is gone, and none is left over as a leak.
    void theSharedDialogsGoWithTheApplicationObject()
    {
        QProcess program;
        program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        program.start(QCoreApplication::applicationFilePath(), {QLatin1String(sharedDialogsSwitch)});
        QVERIFY(program.waitForFinished(60000));
        const QByteArray output = program.readAllStandardOutput();
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QVERIFY2(output.contains("destroyed 3"), output.constData());
        QCOMPARE(program.exitCode(), 0);
    }

    // Real input

    void clickedItemsAndATypedWidthAreTheAnswer()
    {
        TDialogPosSize dialog;
        const Run run = execute(&dialog, [&] { return dialog.Execute(); }, [](QWidget *Modal) {
            clickItem(Modal, "RadioGroupWidth", 3);
            RealInput::click(part(Modal, "EditWidth"));
            RealInput::typeText(QStringLiteral("120"));
            QTRY_COMPARE(part<QLineEdit>(Modal, "EditWidth")->text(), QStringLiteral("120"));
            clickItem(Modal, "RadioGroupHeight", 2);
            RealInput::click(part(Modal, "OKBtn"));
        });
        QVERIFY(run.driven);
        QVERIFY(run.result);
        QCOMPARE(dialog.GetWidthSizeStyle(), ssCustom);
        QCOMPARE(dialog.GetWidthSize(), 120);
        QCOMPARE(dialog.GetHeightSizeStyle(), ssToLargest);
        QCOMPARE(dialog.GetHeightSize(), -1);
    }

    void clickedAlignmentsAreTheAnswer()
    {
        TDialogPosAlign dialog;
        const Run run = execute(&dialog, [&] { return dialog.Execute(); }, [](QWidget *Modal) {
            clickItem(Modal, "RadioGroupHorizontal", 5);
            clickItem(Modal, "RadioGroupVertical", 2);
            RealInput::click(part(Modal, "OKBtn"));
        });
        QVERIFY(run.driven);
        QVERIFY(run.result);
        QCOMPARE(dialog.GetHorizontalAlignment(), asCenterInWindow);
        QCOMPARE(dialog.GetVerticalAlignment(), asCenters);
    }

    void escapeCancels()
    {
        TDialogPosScale dialog;
        const Run run = execute(&dialog, [&] { return dialog.Execute(); }, [](QWidget *) {
            RealInput::key("Escape");
        });
        QVERIFY(run.driven);
        QCOMPARE(run.result, false);
    }

    void enterAcceptsThroughTheDefaultButton()
    {
        TDialogPosSize dialog;
        QVERIFY(part<QPushButton>(&dialog, "OKBtn")->isDefault());
        const Run run = execute(&dialog, [&] { return dialog.Execute(); }, [](QWidget *Modal) {
            clickItem(Modal, "RadioGroupWidth", 1);
            RealInput::key("Return");
        });
        QVERIFY(run.driven);
        QVERIFY(run.result);
        QCOMPARE(dialog.GetWidthSizeStyle(), ssToSmallest);
    }

    void aMnemonicChoosesAnItem()
    {
        TDialogPosAlign dialog;
        const Run run = execute(&dialog, [&] { return dialog.Execute(); }, [](QWidget *Modal) {
            RealInput::key("l", Qt::AltModifier);
            QTRY_VERIFY(item(Modal, "RadioGroupHorizontal", 1)->isChecked());
            RealInput::key("b", Qt::AltModifier);
            QTRY_VERIFY(item(Modal, "RadioGroupVertical", 3)->isChecked());
            RealInput::key("o", Qt::AltModifier);
        });
        QVERIFY(run.driven);
        QVERIFY(run.result);
        QCOMPARE(dialog.GetHorizontalAlignment(), asLeftOrTop);
        QCOMPARE(dialog.GetVerticalAlignment(), asRightOrBottom);
    }

    void aMnemonicOfTheSizeDialogChoosesAnItemAndCancelCloses()
    {
        TDialogPosSize dialog;
        const Run run = execute(&dialog, [&] { return dialog.Execute(); }, [](QWidget *Modal) {
            RealInput::key("k", Qt::AltModifier);
            QTRY_VERIFY(item(Modal, "RadioGroupHeight", 1)->isChecked());
            RealInput::key("c", Qt::AltModifier);
        });
        QVERIFY(run.driven);
        QCOMPARE(run.result, false);
        // What was chosen stays chosen, cancelled or not.
        QCOMPARE(dialog.GetHeightSizeStyle(), ssToSmallest);
    }

    // Translation

    void aNewLanguageRetranslatesTheCaptionsAndKeepsTheChoices()
    {
        TDialogPosAlign align;
        TDialogPosSize size;
        TDialogPosScale scale;
        align.SetHorizontalIndex(4);
        size.SetWidthIndex(3);
        part<QLineEdit>(&size, "EditWidth")->setText(QStringLiteral("77"));
        part<QLineEdit>(&scale, "EditScaleFactor")->setText(QStringLiteral("150"));
        // One of them has been on the screen: a dialog with a window of its
        // own hears of the new language through that window.
        align.show();
        QVERIFY(QTest::qWaitForWindowExposed(&align));
        align.hide();

        BracketTranslator translator;
        QVERIFY(QCoreApplication::installTranslator(&translator));
        QTRY_COMPARE(align.windowTitle(), QStringLiteral("[Alignment]"));
        QTRY_COMPARE(size.windowTitle(), QStringLiteral("[Size]"));
        QTRY_COMPARE(scale.windowTitle(), QStringLiteral("[Scale]"));
        QCOMPARE(item(&align, "RadioGroupHorizontal", 1)->text(), QStringLiteral("[&Left Sides]"));
        QCOMPARE(part<QGroupBox>(&size, "RadioGroupHeight")->title(), QStringLiteral("[Height:]"));
        QCOMPARE(part<QLabel>(&scale, "Label1")->text(), QStringLiteral("[&Scaling factor:]"));
        QCOMPARE(part<QPushButton>(&scale, "CancelBtn")->text(), QStringLiteral("[&Cancel]"));
        // The two hidden choices keep their captions: they are not for
        // translation.
        QCOMPARE(part<QRadioButton>(&scale, "RBtnAll")->text(), QStringLiteral("全部(&A)"));

        QCOMPARE(align.HorizontalIndex(), 4);
        QCOMPARE(size.WidthIndex(), 3);
        QCOMPARE(size.GetWidthSize(), 77);
        QCOMPARE(scale.GetScaleFactor(), 150);

        QVERIFY(QCoreApplication::removeTranslator(&translator));
        QTRY_COMPARE(align.windowTitle(), QStringLiteral("Alignment"));
        QCOMPARE(item(&align, "RadioGroupHorizontal", 1)->text(), QStringLiteral("&Left Sides"));
        QCOMPARE(align.HorizontalIndex(), 4);
    }

private:
    // The client size, fixed; the dialog's font; OK and Cancel at the
    // bottom right, OK the default.
    static void checkFrame(QDialog *Dialog, const QSize &Client)
    {
        QCOMPARE(Dialog->size(), Client);
        QCOMPARE(Dialog->minimumSize(), Client);
        QCOMPARE(Dialog->maximumSize(), Client);
        QCOMPARE(Dialog->font().family(), QStringLiteral("Arial"));
        QCOMPARE(Dialog->font().pixelSize(), 11);
        auto *ok = part<QPushButton>(Dialog, "OKBtn");
        auto *cancel = part<QPushButton>(Dialog, "CancelBtn");
        QVERIFY(ok && cancel);
        QCOMPARE(ok->text(), QStringLiteral("&OK"));
        QCOMPARE(cancel->text(), QStringLiteral("&Cancel"));
        QVERIFY(ok->isDefault());
        QVERIFY(!cancel->isDefault());
        QCOMPARE(ok->y(), cancel->y());
        QVERIFY(ok->geometry().right() < cancel->x());
        QVERIFY(Client.width() - (cancel->x() + cancel->width()) <= 12);
        QVERIFY(Client.height() - (cancel->y() + cancel->height()) <= 12);
        // Every control lies inside the client area.
        for (const QWidget *child : Dialog->findChildren<QWidget *>(Qt::FindDirectChildrenOnly))
            QVERIFY2(Dialog->rect().contains(child->geometry()), qPrintable(child->objectName()));
        // Shown, it keeps that size, in the middle of the screen.
        Dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(Dialog));
        QCOMPARE(Dialog->size(), Client);
        const QPoint offCentre = Dialog->frameGeometry().center() - Dialog->screen()->availableGeometry().center();
        // Qt leaves room for the frame a window manager would add (its
        // guess where there is none: 10 by 40 pixels), so the window sits
        // a little up and left of the exact middle.
        QVERIFY2(qAbs(offCentre.x()) <= 12 && qAbs(offCentre.y()) <= 45, qPrintable(QStringLiteral("%1, %2").arg(offCentre.x()).arg(offCentre.y())));
        Dialog->hide();
    }
};

namespace {

// The second program of theSharedDialogsGoWithTheApplicationObject: it
// makes and shows the three shared dialogs, lets its application object
// go, and says how many of the three were destroyed with it.
int sharedDialogsProgram(int argc, char **argv)
{
    int destroyed = 0;
    {
        QApplication app(argc, argv);
        for (QDialog *dialog : std::initializer_list<QDialog *>{QorDialogPosAlign(), QorDialogPosSize(), QorDialogPosScale()}) {
            QObject::connect(dialog, &QObject::destroyed, [&destroyed] { ++destroyed; });
            dialog->show();
            if (!QTest::qWaitForWindowExposed(dialog))
                return 2;
            dialog->hide();
        }
        if (destroyed != 0)
            return 3;
    }
    std::fprintf(stdout, "destroyed %d\n", destroyed);
    return destroyed == 3 ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc > 1 && qstrcmp(argv[1], sharedDialogsSwitch) == 0)
        return sharedDialogsProgram(argc, argv);
    // What QTEST_MAIN does.
    QApplication app(argc, argv);
    app.setAttribute(Qt::AA_Use96Dpi, true);
    tst_QorArrangeDialogs test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}
#include "tst_qorarrangedialogs.moc"
