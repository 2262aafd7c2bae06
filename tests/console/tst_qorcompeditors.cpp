// SPDX-License-Identifier: MIT
// Component editors: the registry's choice, the page verbs on a designed
// stage (a new page owned, named and selectable), the items of item views
// and combo boxes, and a real double click opening the items dialog.
#include "designer/qordesigner_p.h"
#include "console/qorcompeditors.h"
#include "console/qordesignintfimpls.h"
#include "designer/qormanager.h"
#include "designer/qorsizers_p.h"
#include "foundation/qorcomponents.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QToolBox>
#include <QTreeWidget>

class FancyTabs : public QTabWidget
{
    Q_OBJECT

public:
    using QTabWidget::QTabWidget;
};

namespace {

class FancyEditor : public TComponentEditor
{
public:
    using TComponentEditor::TComponentEditor;
    int GetVerbCount() const override { return 1; }
    QString GetVerb(int) const override { return QStringLiteral("Fancy"); }
};

struct Stage
{
    std::unique_ptr<QWidget> form = std::make_unique<QWidget>();
    TQorDesignManager *manager = new TQorDesignManager(form.get());

    Stage()
    {
        form->setObjectName(QStringLiteral("Form1"));
        form->resize(420, 300);
    }

    template<class T>
    T *place(const char *name, const QRect &geometry)
    {
        auto *w = new T(form.get());
        w->setObjectName(QLatin1String(name));
        w->setGeometry(geometry);
        InsertComponent(form.get(), w);
        return w;
    }
};

QStringList verbs(const TComponentEditorRef &editor)
{
    QStringList list;
    for (int i = 0; i < editor->GetVerbCount(); ++i)
        list.append(editor->GetVerb(i));
    return list;
}

} // namespace

class tst_QorCompEditors : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { RealInputTestCase::initTestCase(); }
    void cleanup()
    {
        UnregisterComponentEditors(&FancyTabs::staticMetaObject);
        RealInputTestCase::cleanup();
    }

    void theNearestRegisteredClassGivesTheEditor()
    {
        QTabWidget tabs;
        FancyTabs fancy;
        QPushButton button;
        QCOMPARE(verbs(GetComponentEditor(&tabs, nullptr)),
                 QStringList({QStringLiteral("Add Page"), QStringLiteral("Delete Page"), QStringLiteral("Next Page"),
                              QStringLiteral("Previous Page")}));
        QCOMPARE(verbs(GetComponentEditor(&fancy, nullptr)).size(), 4);
        RegisterComponentEditor<FancyEditor>(&FancyTabs::staticMetaObject);
        QCOMPARE(verbs(GetComponentEditor(&fancy, nullptr)), QStringList({QStringLiteral("Fancy")}));
        QCOMPARE(verbs(GetComponentEditor(&tabs, nullptr)).size(), 4);
        UnregisterComponentEditors(&FancyTabs::staticMetaObject);
        QCOMPARE(verbs(GetComponentEditor(&fancy, nullptr)).size(), 4);
        QCOMPARE(GetComponentEditor(&button, nullptr)->GetVerbCount(), 0);
        QCOMPARE(GetComponentEditor(nullptr, nullptr), nullptr);
        QListWidget list;
        QCOMPARE(verbs(GetComponentEditor(&list, nullptr)), QStringList({QStringLiteral("Edit Items...")}));
    }

    void aNewPageIsOwnedNamedAndSelectable()
    {
        Stage s;
        auto *tabs = s.place<QTabWidget>("Tabs1", {10, 10, 300, 200});
        auto *first = new QWidget;
        first->setObjectName(QStringLiteral("Page1"));
        tabs->addTab(first, QStringLiteral("First"));
        s.manager->SetIsDesigning(true);
        QVERIFY(QorGuiTest::showAndActivate(s.form.get()));
        TQorFormDesigner designer(s.manager);
        TComponentEditorRef editor = GetComponentEditor(tabs, &designer);
        editor->ExecuteVerb(0);
        QCOMPARE(tabs->count(), 2);
        QWidget *page = tabs->widget(1);
        QCOMPARE(tabs->currentIndex(), 1);
        QCOMPARE(page->objectName(), QStringLiteral("Page2"));
        QCOMPARE(Owner(page), s.form.get());
        // The design manager takes it in: selecting it puts a sizer on it.
        s.manager->SelectControl(page, QPoint(-1, -1), csmSelect, true, false);
        QCOMPARE(s.manager->SelectedComps().toList(), QList<QObject *>{page});
        QVERIFY(s.manager->Sizers()->SizerOf(page));
        // Previous, next (wrapping), delete.
        editor->ExecuteVerb(3);
        QCOMPARE(tabs->currentIndex(), 0);
        editor->ExecuteVerb(3);
        QCOMPARE(tabs->currentIndex(), 1);
        editor->ExecuteVerb(2);
        QCOMPARE(tabs->currentIndex(), 0);
        QPointer<QWidget> gone = tabs->widget(0);
        editor->ExecuteVerb(1);
        QCOMPARE(tabs->count(), 1);
        QTRY_VERIFY(gone.isNull());
        QCOMPARE(ComponentCount(s.form.get()), 2);
    }

    void stackedWidgetsAndToolBoxesHaveTheSamePageVerbs()
    {
        Stage s;
        auto *stack = s.place<QStackedWidget>("Stack1", {10, 10, 100, 100});
        auto *box = s.place<QToolBox>("Box1", {120, 10, 100, 100});
        TQorFormDesigner designer(s.manager);
        GetComponentEditor(stack, &designer)->ExecuteVerb(0);
        GetComponentEditor(stack, &designer)->ExecuteVerb(0);
        GetComponentEditor(box, &designer)->ExecuteVerb(0);
        QCOMPARE(stack->count(), 2);
        QCOMPARE(box->count(), 1);
        QCOMPARE(stack->widget(0)->objectName(), QStringLiteral("Page1"));
        QCOMPARE(stack->widget(1)->objectName(), QStringLiteral("Page2"));
        QCOMPARE(box->widget(0)->objectName(), QStringLiteral("Page3"));
        QCOMPARE(box->itemText(0), QStringLiteral("Page3"));
        GetComponentEditor(box, &designer)->ExecuteVerb(1);
        GetComponentEditor(box, &designer)->ExecuteVerb(1);
        QCOMPARE(box->count(), 0);
    }

    void itemsAreReadAndWrittenAsLines()
    {
        QListWidget list;
        QComboBox combo;
        QTreeWidget tree;
        QTableWidget table;
        for (QWidget *w : {static_cast<QWidget *>(&list), static_cast<QWidget *>(&combo),
                           static_cast<QWidget *>(&tree)}) {
            TQorItemsEditor editor(w, nullptr);
            editor.SetItemsText(QStringLiteral("one\ntwo\nthree"));
            QCOMPARE(editor.ItemsText(), QStringLiteral("one\ntwo\nthree"));
        }
        QCOMPARE(list.count(), 3);
        QCOMPARE(combo.itemText(1), QStringLiteral("two"));
        QCOMPARE(tree.topLevelItem(2)->text(0), QStringLiteral("three"));
        TQorItemsEditor cells(&table, nullptr);
        cells.SetItemsText(QStringLiteral("a\tb\nc\td"));
        QCOMPARE(table.rowCount(), 2);
        QCOMPARE(table.item(1, 1)->text(), QStringLiteral("d"));
        QCOMPARE(cells.ItemsText(), QStringLiteral("a\tb\nc\td"));
        TQorItemsEditor(&list, nullptr).SetItemsText(QString());
        QCOMPARE(list.count(), 0);
    }

    void aDoubleClickOnADesignedListOpensItsItemsDialog()
    {
        Stage s;
        auto *list = s.place<QListWidget>("List1", {30, 30, 150, 120});
        list->addItem(QStringLiteral("old"));
        s.manager->SetIsDesigning(true);
        QVERIFY(QorGuiTest::showAndActivate(s.form.get()));
        RealInput::click(list);
        QTRY_COMPARE(s.manager->SelectedComps().toList(), QList<QObject *>{list});
        const auto driven = QorGuiTest::whenModalOpens([](QWidget *modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("QorItemsDialog"));
            auto *text = modal->findChild<QPlainTextEdit *>();
            RealInput::click(text);
            RealInput::key("a", Qt::ControlModifier);
            RealInput::typeText(QStringLiteral("red"));
            RealInput::key("Return");
            RealInput::typeText(QStringLiteral("green"));
            RealInput::click(modal->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok));
        });
        RealInput::doubleClick(list);
        QTRY_VERIFY(*driven);
        QTRY_COMPARE(list->count(), 2);
        QCOMPARE(list->item(0)->text(), QStringLiteral("red"));
        QCOMPARE(list->item(1)->text(), QStringLiteral("green"));
        // The list itself took no input: nothing in it is selected.
        QVERIFY(list->selectedItems().isEmpty());
    }
};

QTEST_MAIN(tst_QorCompEditors)
#include "tst_qorcompeditors.moc"
