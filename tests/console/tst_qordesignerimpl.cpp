// SPDX-License-Identifier: MIT
// The run-time designer: the selection, names and components through the
// design manager, creating a component on the stage, the clipboard
// commands, and the answers that stand for what has no counterpart.
#include "designer/qordesigner_p.h"
#include "console/qordesignintfimpls.h"
#include "designer/qormanager.h"
#include "designer/qorsizers_p.h"
#include "foundation/qorcomponents.h"
#include "foundation/vhoclipbrdutils.h"
#include "harness/qorguitest.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace {

struct Stage
{
    std::unique_ptr<QWidget> form = std::make_unique<QWidget>();
    TQorDesignManager *manager = new TQorDesignManager(form.get());
    QPushButton *button = new QPushButton(QStringLiteral("One"), form.get());
    QTimer *timer = new QTimer(form.get());

    Stage()
    {
        form->setObjectName(QStringLiteral("Form1"));
        form->resize(300, 200);
        button->setObjectName(QStringLiteral("Button1"));
        button->setGeometry(10, 10, 80, 25);
        timer->setObjectName(QStringLiteral("Timer1"));
        InsertComponent(form.get(), button);
        InsertComponent(form.get(), timer);
    }

    bool design()
    {
        manager->SetIsDesigning(true);
        return QorGuiTest::showAndActivate(form.get());
    }
};

} // namespace

class tst_QorDesignerImpl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QTRY_COMPARE(QorGuiTest::liveTopLevelWidgets(), 0); }

    // Edge cases

    void anEmptySelectionHasNoRootAndNoRootClassName()
    {
        Stage s;
        TVhoDesigner designer(s.manager);
        s.manager->SetSelectedComps(TComponentList());
        QCOMPARE(designer.GetRoot(), nullptr);
        QCOMPARE(designer.GetRootClassName(), QString());
        s.manager->SetSelectedComps(TComponentList{s.button});
        QCOMPARE(designer.GetRoot(), s.button);
        QCOMPARE(designer.GetRootClassName(), QStringLiteral("QPushButton"));
    }

    void noSelectionDeletesTheSelectedButton()
    {
        Stage s;
        QVERIFY(s.design());
        s.manager->SelectControl(s.button, QPoint(-1, -1), csmSelect, true, false);
        QPointer<QPushButton> button = s.button;
        TVhoDesigner designer(s.manager);
        designer.NoSelection();
        QTRY_VERIFY(button.isNull());
        QCOMPARE(ComponentCount(s.form.get()), 1);
    }

    void controlsAreHiddenFromReferencesAndComponentsAreNot()
    {
        Stage s;
        TVhoDesigner designer(s.manager);
        QVERIFY(designer.IsComponentHidden(s.button));
        QVERIFY(designer.IsComponentHidden(s.form.get()));
        QVERIFY(!designer.IsComponentHidden(s.timer));
        QVERIFY(!designer.IsComponentHidden(nullptr));
    }

    void withoutAStageNothingIsCreated()
    {
        TVhoDesigner lone;
        QCOMPARE(lone.CreateComponent(&QPushButton::staticMetaObject, nullptr, 0, 0, 10, 10), nullptr);
        auto *manager = new TQorDesignManager;
        TVhoDesigner noStage(manager);
        QCOMPARE(noStage.CreateComponent(&QPushButton::staticMetaObject, nullptr, 0, 0, 10, 10), nullptr);
        delete manager;
    }

    // The other rules

    void aComponentIsCreatedOnTheStageWithAFreeName()
    {
        Stage s;
        QVERIFY(s.design());
        TVhoDesigner designer(s.manager);
        QObject *made = designer.CreateComponent(&QPushButton::staticMetaObject, nullptr, 40, 50, 70, 22);
        auto *button = qobject_cast<QPushButton *>(made);
        QVERIFY(button);
        QCOMPARE(button->objectName(), QStringLiteral("PushButton1"));
        QCOMPARE(button->parentWidget(), s.form.get());
        QCOMPARE(button->geometry(), QRect(40, 50, 70, 22));
        QVERIFY(button->isVisible());
        QCOMPARE(Owner(button), s.form.get());
        QCOMPARE(designer.CreateComponent(&QPushButton::staticMetaObject, nullptr, 0, 0, 5, 5)->objectName(),
                 QStringLiteral("PushButton2"));
        // A non-visual one: owned by the given parent.
        QObject *timer = designer.CreateComponent(&QTimer::staticMetaObject, s.timer, 0, 0, 0, 0);
        QCOMPARE(Owner(timer), s.timer);
    }

    void namesAndComponentsAreFoundThroughTheStage()
    {
        Stage s;
        TVhoDesigner designer(s.manager);
        QCOMPARE(designer.GetDesignStage(), s.form.get());
        QCOMPARE(designer.GetComponent(QStringLiteral("button1")), s.button);
        QCOMPARE(designer.GetObject(QStringLiteral("Timer1")), s.timer);
        QCOMPARE(designer.GetComponentName(s.timer), QStringLiteral("Timer1"));
        QCOMPARE(designer.UniqueName(QStringLiteral("Button")), QStringLiteral("Button2"));
        TVhoDesigner standalone;
        standalone.SetDesignStage(s.form.get());
        QCOMPARE(standalone.GetDesignStage(), s.form.get());
        QCOMPARE(standalone.GetComponent(QStringLiteral("Timer1")), s.timer);
    }

    void theSelectionIsListedAndReplacedQuietly()
    {
        Stage s;
        QVERIFY(s.design());
        s.manager->SelectControl(s.button, QPoint(-1, -1), csmSelect, true, false);
        TVhoDesigner designer(s.manager);
        TQorDesignerSelections list;
        designer.GetSelections(&list);
        QCOMPARE(list.Count(), 1);
        QCOMPARE(list.Get(0), s.button);
        designer.SelectComponent(s.timer);
        QCOMPARE(s.manager->SelectedComps().toList(), QList<QObject *>{s.timer});
        designer.ClearSelection();
        QCOMPARE(s.manager->Sizers()->Count(), 0);
    }

    void copyAndCutGoThroughTheClipboard()
    {
        Stage s;
        QVERIFY(s.design());
        s.manager->SelectControl(s.button, QPoint(-1, -1), csmSelect, true, false);
        TVhoDesigner designer(s.manager);
        QVERIFY(designer.CanPaste());
        designer.CopySelection();
        QVERIFY(VhoClipboard()->HasComponents());
        QPointer<QPushButton> button = s.button;
        designer.CutSelection();
        QTRY_VERIFY(button.isNull());
        QWidget other;
        other.setObjectName(QStringLiteral("Form2"));
        auto *pasted = qobject_cast<QPushButton *>(VhoClipboard()->GetComponents(&other, &other, 8, 6));
        QVERIFY(pasted);
        QCOMPARE(pasted->text(), QStringLiteral("One"));
    }

    void whatHasNoCounterpartAnswersNothing()
    {
        Stage s;
        TVhoDesigner designer(s.manager);
        QVERIFY(designer.GetIsDormant());
        QCOMPARE(designer.GetAncestorDesigner(), nullptr);
        QCOMPARE(designer.CreateMethod(QStringLiteral("x"), nullptr), QString());
        QVERIFY(!designer.MethodExists(QStringLiteral("x")));
        QVERIFY(designer.IsComponentLinkable(s.timer));
        QCOMPARE(designer.GetScrollRanges(QPoint(5, 5)), QPoint());
        QCOMPARE(designer.GetShiftState(), Qt::KeyboardModifiers());
        QCOMPARE(designer.ModalEdit(QLatin1Char('a'), nullptr), QChar());
        QCOMPARE(designer.GetPathAndBaseExeName(), QCoreApplication::applicationFilePath());
        QCOMPARE(designer.CreateCurrentComponent(nullptr, QRect()), nullptr);
        QCOMPARE(designer.property("IsDormant").toBool(), true);
    }

    void theFormDesignerKnowsTheOneSelectedComponent()
    {
        Stage s;
        QVERIFY(s.design());
        TQorFormDesigner designer(s.manager);
        s.manager->SetSelectedComps(TComponentList{s.button, s.timer});
        QCOMPARE(designer.GetSelectedComponent(), nullptr);
        s.manager->SetSelectedComps(TComponentList{s.button});
        QCOMPARE(designer.GetSelectedComponent(), s.button);
        IQorFormDesigner *form = &designer;
        // The selected control is edited in place, and the editing ends.
        form->StartControlEmbedEdit();
        QVERIFY(s.manager->IsEmbeddedEditing());
        QVERIFY(s.manager->GetSelectSizer()->IsInlineEditing());
        form->EndControlEmbedEdit();
        QVERIFY(!s.manager->IsEmbeddedEditing());
        QVERIFY(!s.manager->GetSelectSizer()->IsInlineEditing());
        QCOMPARE(s.button->text(), QStringLiteral("One"));
        // With two selected there is no one component: nothing starts.
        s.manager->SetSelectedComps(TComponentList{s.button, s.timer});
        form->StartControlEmbedEdit();
        QVERIFY(!s.manager->IsEmbeddedEditing());
    }
};

QTEST_MAIN(tst_QorDesignerImpl)
#include "tst_qordesignerimpl.moc"
