// SPDX-License-Identifier: MIT
// The component palette: the buttons of the page shown after the
// deselector, the all-pages name, the class that is down, the tabs made
// of the pages, and with real input: a class chosen on a page inserted by
// a click on the stage, the palette back to its arrow, and a tab change.
#include "browsing/qorclassesman.h"
#include "browsing/qorpallete.h"
#include "console/qordesignconsole.h"
#include "designer/qormanager.h"
#include "foundation/qorcomponents.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

namespace {

// Buttons and check box on page "A", a label on "", a line edit on "B".
struct Classes
{
    TQorDesignClassList list;
    Classes()
    {
        list.AddClass(&QPushButton::staticMetaObject, QStringLiteral("A"), 0, true, true);
        list.AddClass(&QLabel::staticMetaObject, QString(), 1, true, true);
        list.AddClass(&QLineEdit::staticMetaObject, QStringLiteral("B"), 2, true, true);
        list.AddClass(&QCheckBox::staticMetaObject, QStringLiteral("A"), 3, true, true);
    }
};

QList<const QMetaObject *> classesOn(const TQorCompPalleteToolBar &Bar)
{
    QList<const QMetaObject *> classes;
    for (int i = 1; i < Bar.ButtonCount(); ++i)
        classes << static_cast<TQorClassToolBtn *>(Bar.Buttons(i))->ClassRef;
    return classes;
}

} // namespace

class tst_QorPallete : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aNewBarTakesTheDefaultListAndShowsEveryClass()
    {
        Classes c;
        SetDefDesignClassList(&c.list);
        TQorCompPalleteToolBar bar;
        SetDefDesignClassList(nullptr);
        QCOMPARE(bar.ClassList(), &c.list);
        QVERIFY(bar.ShowDeselector());
        QVERIFY(bar.Grouped());
        QVERIFY(bar.minimumHeight() >= 34);
        // Page and all-pages name both empty: every class.
        QCOMPARE(classesOn(bar), (QList<const QMetaObject *>{&QPushButton::staticMetaObject, &QLabel::staticMetaObject,
                                                             &QLineEdit::staticMetaObject, &QCheckBox::staticMetaObject}));
        QCOMPARE(bar.Deselector(), bar.Buttons(0));
        QVERIFY(bar.Deselector()->isChecked());
        QVERIFY(!bar.GetCurrClass());
        // A button shows its class's label, as tip too.
        auto *first = static_cast<TQorClassToolBtn *>(bar.Buttons(1));
        QCOMPARE(first->text(), QStringLiteral("QPushButton"));
        QCOMPARE(first->toolTip(), QStringLiteral("QPushButton"));
        QVERIFY(first->isCheckable());
    }

    void onlyThePagesClassesGetButtonsAfterTheFirst()
    {
        Classes c;
        TQorCompPalleteToolBar bar;
        bar.SetClassList(&c.list);
        bar.SetPallete(QStringLiteral("A"));
        QCOMPARE(classesOn(bar), (QList<const QMetaObject *>{&QPushButton::staticMetaObject, &QCheckBox::staticMetaObject}));
        QVERIFY(!static_cast<TQorClassToolBtn *>(bar.Buttons(0))->ClassRef);
        // Page names are compared as given.
        bar.SetPallete(QStringLiteral("a"));
        QCOMPARE(classesOn(bar), QList<const QMetaObject *>());
        QCOMPARE(bar.ButtonCount(), 1);
    }

    void theAllPagesNameShowsEveryClass()
    {
        Classes c;
        TQorCompPalleteToolBar bar;
        bar.SetClassList(&c.list);
        bar.SetPallete(QStringLiteral("All"));
        QCOMPARE(bar.ButtonCount(), 1);
        bar.SetPalleteAllStr(QStringLiteral("All"));
        QVERIFY(bar.IsPalleteAll());
        QCOMPARE(bar.ButtonCount(), 5);
    }

    void theFirstButtonIsMadeEvenWithoutADeselector()
    {
        Classes c;
        TQorCompPalleteToolBar bar;
        bar.SetClassList(&c.list);
        bar.SetShowDeselector(false);
        QCOMPARE(bar.ButtonCount(), 5);
        QVERIFY(!bar.Deselector());
        QVERIFY(!bar.SelectedButton());
        QVERIFY(!bar.GetCurrClass());
        // Down, the first button stands for no class.
        static_cast<QToolButton *>(bar.Buttons(0))->setChecked(true);
        QVERIFY(!bar.GetCurrClass());
        static_cast<QToolButton *>(bar.Buttons(2))->setChecked(true);
        QCOMPARE(bar.GetCurrClass(), &QLabel::staticMetaObject);
        // Released without a deselector: nothing is down.
        bar.DeselectComps();
        QVERIFY(!bar.SelectedButton());
    }

    void theClassThatIsDownIsTheCurrentClass()
    {
        Classes c;
        TQorCompPalleteToolBar bar;
        bar.SetClassList(&c.list);
        static_cast<QToolButton *>(bar.Buttons(3))->setChecked(true);
        QCOMPARE(bar.GetCurrClass(), &QLineEdit::staticMetaObject);
        QCOMPARE(bar.CurrClass(), &QLineEdit::staticMetaObject);
        QVERIFY(!bar.Deselector()->isChecked());
        bar.DeselectComps();
        QVERIFY(bar.Deselector()->isChecked());
        QVERIFY(!bar.GetCurrClass());
        // No class list at all: the first button alone.
        bar.SetClassList(nullptr);
        QCOMPARE(bar.ButtonCount(), 1);
        QVERIFY(!bar.GetCurrClass());
    }

    void theToolBarPutsButtonsWhereAsked()
    {
        TQorToolBar bar;
        auto *one = new QToolButton;
        auto *two = new QToolButton;
        auto *three = new QToolButton;
        auto *four = new QToolButton;
        bar.AppendButton(one);
        bar.AddButtonToHead(two);
        bar.InsButton(three, 1);
        bar.InsButton(four, 99);
        QCOMPARE(bar.ButtonCount(), 4);
        QCOMPARE(bar.Buttons(0), two);
        QCOMPARE(bar.Buttons(1), three);
        QCOMPARE(bar.Buttons(2), one);
        QCOMPARE(bar.Buttons(3), four);
        QPointer<QToolButton> removed = three;
        bar.RemoveButton(1);
        QCOMPARE(bar.ButtonCount(), 3);
        QTRY_VERIFY(!removed);
        bar.Clear();
        QCOMPARE(bar.ButtonCount(), 0);
        QVERIFY(!bar.Buttons(0));
    }

    void theTabsAreTheNonEmptyPages()
    {
        Classes c;
        TQorCompPalleteToolBar bar;
        bar.SetClassList(&c.list);
        TQorCompPalleteTab tabs;
        tabs.SetPalleteToolBar(&bar);
        QCOMPARE(tabs.count(), 0);
        tabs.SetAutoFillTabs(true);
        QCOMPARE(tabs.count(), 2);
        QCOMPARE(tabs.tabText(0), QStringLiteral("A"));
        QCOMPARE(tabs.tabText(1), QStringLiteral("B"));
        QCOMPARE(tabs.currentIndex(), 0);
        // Choosing a tab shows its page.
        tabs.setCurrentIndex(1);
        QCOMPARE(bar.Pallete(), QStringLiteral("B"));
        QCOMPARE(classesOn(bar), QList<const QMetaObject *>{&QLineEdit::staticMetaObject});
    }

    void theSameTabAgainBuildsNothing()
    {
        Classes c;
        TQorCompPalleteToolBar bar;
        bar.SetClassList(&c.list);
        TQorCompPalleteTab tabs;
        tabs.SetPalleteToolBar(&bar);
        tabs.SetAutoFillTabs(true);
        tabs.setCurrentIndex(1);
        QPointer<QWidget> button = bar.Buttons(1);
        tabs.UpdateToolBarPallete();
        bar.SetPallete(QStringLiteral("B"));
        QCOMPARE(bar.Buttons(1), button.data());
        QTest::qWait(0);
        QVERIFY(button);
    }

    void aClassChosenOnAPageIsInsertedByAClickOnTheStage()
    {
        Classes c;
        QWidget window;
        window.resize(600, 460);
        auto *layout = new QVBoxLayout(&window);
        auto *tabs = new TQorCompPalleteTab(&window);
        auto *bar = new TQorCompPalleteToolBar(&window);
        bar->SetClassList(&c.list);
        tabs->SetPalleteToolBar(bar);
        tabs->SetAutoFillTabs(true);
        tabs->UpdateToolBarPallete();
        auto *stage = new QWidget(&window);
        stage->setObjectName(QStringLiteral("Form1"));
        stage->setMinimumSize(500, 320);
        stage->setAutoFillBackground(true);
        layout->addWidget(tabs);
        layout->addWidget(bar);
        layout->addWidget(stage, 1);
        auto *manager = new TQorDesignManager(stage);
        TQorDesignCenter center;
        center.SetDesignManager(manager);
        center.SetCompPalleteToolBar(bar);
        manager->SetIsDesigning(true);
        QVERIFY(QorGuiTest::showAndActivate(&window));
        QCOMPARE(bar->Pallete(), QStringLiteral("A"));

        // Tab B, by a click: the line edit's button.
        RealInput::click(tabs, tabs->tabRect(1).center());
        QTRY_COMPARE(bar->Pallete(), QStringLiteral("B"));
        QTRY_COMPARE(bar->ButtonCount(), 2);
        RealInput::click(bar->Buttons(1));
        QTRY_COMPARE(bar->GetCurrClass(), &QLineEdit::staticMetaObject);
        RealInput::click(stage, QPoint(120, 80));
        QLineEdit *made = nullptr;
        QTRY_VERIFY((made = stage->findChild<QLineEdit *>()));
        QCOMPARE(made->pos(), QPoint(120, 80));
        QCOMPARE(Owner(made), stage);
        // The deselector is down again: the next click selects.
        QTRY_VERIFY(bar->Deselector()->isChecked());
        QVERIFY(!bar->GetCurrClass());
        RealInput::click(stage, QPoint(400, 250));
        QTRY_COMPARE(manager->SelectedComps().toList(), QList<QObject *>{stage});
        QCOMPARE(stage->findChildren<QLineEdit *>().size(), 1);
        manager->SetIsDesigning(false);
        center.SetDesignManager(nullptr);
    }
};

QTEST_MAIN(tst_QorPallete)
#include "tst_qorpallete.moc"
