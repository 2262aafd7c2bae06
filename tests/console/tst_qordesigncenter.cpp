// SPDX-License-Identifier: MIT
// The design center: linking its elements, the routing of every selection
// change between the design manager, the inspector and the tree, the
// clipboard and deletion commands on the shared selection, the dirty flag,
// and the three selection lists kept equal through all of it.
#include "designer/qordesigner_p.h"
#include "console/qordesignconsole.h"
#include "console/qordesignintfimpls.h"
#include "designer/qormanager.h"
#include "designer/qorsizers_p.h"
#include "foundation/qorcomponents.h"
#include "foundation/qorstream.h"
#include "foundation/vhoclipbrdutils.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"
#include "inspector/qorinspector.h"

#include <QApplication>
#include <QClipboard>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QRandomGenerator>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

namespace {

// A tree view that only records what the center asks of it.
class RecordingTree : public QWidget, public IQorCompTreeView
{
    Q_OBJECT
    Q_INTERFACES(IQorCompTreeView)

public:
    void SetConsoleCenter(TQorDesignCenter *Center) override { center = Center; }
    TComponentList SelectedComps() const override { return selected; }
    void SetSelectedComps(const TComponentList &List) override
    {
        selected = List;
        ++setCount;
    }
    void Refresh() override { ++refreshCount; }
    bool Dirty() const override { return dirty; }
    void SetDirty(bool Value) override { dirty = Value; }
    void SetPopupMenu(QMenu *Menu) override { popupMenu = Menu; }

    QPointer<TQorDesignCenter> center;
    TComponentList selected;
    int setCount = 0;
    int refreshCount = 0;
    bool dirty = false;
    QMenu *popupMenu = nullptr;
};

class RecordingPallete : public QObject, public IQorCompPallete
{
    Q_OBJECT
    Q_INTERFACES(IQorCompPallete)

public:
    const QMetaObject *GetCurrClass() const override { return chosen; }
    void DeselectComps() override { chosen = nullptr; }

    const QMetaObject *chosen = nullptr;
};

class CenterMenu : public QMenu, public IQorCenterPopupMenu
{
    Q_OBJECT
    Q_INTERFACES(IQorCenterPopupMenu)

public:
    void SetConsoleCenter(TQorDesignCenter *Center) override { center = Center; }
    TQorDesignCenter *center = nullptr;
};

class CountingCenter : public TQorDesignCenter
{
public:
    void NotifyDesignManagerChanged() override
    {
        ++managerChanges;
        TQorDesignCenter::NotifyDesignManagerChanged();
    }
    int managerChanges = 0;
};

struct Fixture
{
    std::unique_ptr<QWidget> form = std::make_unique<QWidget>();
    TQorDesignManager *manager = new TQorDesignManager(form.get());
    QGroupBox *group = new QGroupBox(QStringLiteral("Group"), form.get());
    QLabel *label = new QLabel(QStringLiteral("Inside"), group);
    QPushButton *b1 = new QPushButton(QStringLiteral("One"), form.get());
    QPushButton *b2 = new QPushButton(QStringLiteral("Two"), form.get());
    QTimer *timer = new QTimer(form.get());
    std::unique_ptr<TQorObjInspector> inspector = std::make_unique<TQorObjInspector>();
    std::unique_ptr<TQorDesignCenter> center = std::make_unique<TQorDesignCenter>();

    explicit Fixture(bool Link = true)
    {
        form->setObjectName(QStringLiteral("Form1"));
        form->resize(420, 300);
        place(group, "GroupBox1", QRect(200, 20, 180, 140));
        place(label, "Label1", QRect(20, 40, 80, 24));
        place(b1, "Button1", QRect(20, 20, 80, 30));
        place(b2, "Button2", QRect(20, 80, 80, 30));
        timer->setObjectName(QStringLiteral("Timer1"));
        InsertComponent(form.get(), timer);
        inspector->resize(300, 500);
        if (Link) {
            center->SetObjInspector(inspector.get());
            center->SetDesignManager(manager);
        }
    }

    ~Fixture()
    {
        // The center goes first: it lets go of the manager.
        center.reset();
    }

    void place(QWidget *w, const char *name, const QRect &r)
    {
        w->setObjectName(QLatin1String(name));
        w->setGeometry(r);
        InsertComponent(form.get(), w);
    }

    bool design()
    {
        manager->SetIsDesigning(true);
        return QorGuiTest::showAndActivate(form.get(), QPoint(20, 20))
            && QorGuiTest::showAndActivate(inspector.get(), QPoint(500, 20));
    }

    // The center's, the manager's and the inspector's lists are the same.
    bool listsEqual() const
    {
        const QList<QObject *> shared = center->SelectedComps().toList();
        return shared == manager->SelectedComps().toList() && shared == inspector->GetActiveComponents();
    }

    QList<QObject *> selection() const { return center->SelectedComps().toList(); }

    // Selects a control with a real click and copies it.
    void selectAndCopy(QWidget *Control, const QPoint &At = QPoint(-1, -1))
    {
        RealInput::click(Control, At);
        QTRY_COMPARE(selection(), QList<QObject *>{Control});
        center->CopySelComps();
        QTRY_VERIFY(VhoClipboard()->HasComponents());
    }

    // The inspector line of a property, whatever its indent and marker.
    int line(const QString &Name) const
    {
        TValueListStrings *lines = inspector->Strings();
        for (int i = 0; i < lines->Count(); ++i) {
            QString label = lines->Names(i).trimmed();
            if (label.startsWith(QLatin1String("+ ")) || label.startsWith(QLatin1String("- ")))
                label = label.mid(2);
            if (label == Name)
                return i;
        }
        return -1;
    }
};

// What the stage holds: each component's class, parent and geometry.
QStringList stageContents(QWidget *Stage)
{
    QStringList contents;
    for (QObject *component : ComponentList(Stage)) {
        QString entry = component->objectName() + QLatin1Char(' ') + QLatin1String(component->metaObject()->className());
        if (auto *w = qobject_cast<QWidget *>(component)) {
            entry += QStringLiteral(" in %1 at %2,%3 %4x%5")
                         .arg(w->parentWidget() ? w->parentWidget()->objectName() : QString())
                         .arg(w->x())
                         .arg(w->y())
                         .arg(w->width())
                         .arg(w->height());
        }
        contents << entry;
    }
    return contents;
}

// Every widget right on the stage or in one of its containers is one of
// the stage's components: nothing pasted is left half-made (once the
// objects given up are gone).
bool nothingHalfMade(QWidget *Stage)
{
    QList<QWidget *> parents{Stage};
    for (QObject *component : ComponentList(Stage)) {
        if (auto *w = qobject_cast<QWidget *>(component))
            parents << w;
    }
    for (QWidget *parent : parents) {
        for (QObject *child : parent->children()) {
            if (!child->isWidgetType() || IsQorDesignObject(child) || IsInnerPart(child))
                continue;
            if (Owner(child) != Stage)
                return false;
        }
    }
    return true;
}

} // namespace

class tst_QorDesignCenter : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

private Q_SLOTS:
    // Edge cases

    void linkingTheSameDesignManagerTwiceNotifiesOnce()
    {
        Fixture f(false);
        CountingCenter center;
        center.SetDesignManager(f.manager);
        center.SetDesignManager(f.manager);
        QCOMPARE(center.managerChanges, 1);
        QCOMPARE(f.manager->ConsoleCenter(), static_cast<IQorDesignCenter *>(&center));
        center.SetDesignManager(nullptr);
        QCOMPARE(center.managerChanges, 2);
        QCOMPARE(f.manager->ConsoleCenter(), nullptr);
    }

    void persistEnabledFalseCopiesTheManagersStateTrueImposesTheCenters()
    {
        Fixture f(false);
        f.manager->SetEnabled(false);
        TQorDesignCenter copying;
        copying.SetPersistEnabled(false);
        QVERIFY(copying.GetEnabled());
        copying.SetDesignManager(f.manager);
        QVERIFY(!copying.GetEnabled());
        QVERIFY(!f.manager->Enabled());
        copying.SetDesignManager(nullptr);

        TQorDesignCenter imposing;
        QVERIFY(imposing.PersistEnabled());
        imposing.SetDesignManager(f.manager);
        QVERIFY(imposing.GetEnabled());
        QVERIFY(f.manager->Enabled());
        imposing.SetEnabled(false);
        QVERIFY(!f.manager->Enabled());
        imposing.SetDesignManager(nullptr);
    }

    void deletingWithOnlyTheStageSelectedFreesNothing()
    {
        Fixture f;
        QVERIFY(f.design());
        // A real click on the empty stage selects it; Delete frees nothing.
        RealInput::click(f.form.get(), QPoint(150, 250));
        QTRY_COMPARE(f.selection(), QList<QObject *>{f.form.get()});
        const int before = ComponentCount(f.form.get());
        f.center->DelSelCtrls();
        QCOMPARE(f.selection(), QList<QObject *>{f.form.get()});
        QCOMPARE(ComponentCount(f.form.get()), before);
        QVERIFY(f.listsEqual());
        QVERIFY(f.form->isVisible());
    }

    void deletingSeveralControlsWithTheDeleteKeyLeavesExactlyTheStageSelected()
    {
        Fixture f;
        QVERIFY(f.design());
        QPointer<QPushButton> b1 = f.b1;
        QPointer<QPushButton> b2 = f.b2;
        RealInput::click(f.b1);
        RealInput::click(f.b2, QPoint(-1, -1), Qt::LeftButton, Qt::ShiftModifier);
        QTRY_COMPARE(f.selection(), QList<QObject *>({f.b1, f.b2}));
        QVERIFY(f.listsEqual());
        RealInput::key("Delete");
        QTRY_VERIFY(!b1 && !b2);
        QCOMPARE(f.selection(), QList<QObject *>{f.form.get()});
        QVERIFY(f.listsEqual());
        QCOMPARE(FindComponent(f.form.get(), QStringLiteral("Button1")), nullptr);
        // The keyboard stays with the design (here the stage, which is a
        // window of its own and has no sizer to show).
        QCOMPARE(QApplication::focusWidget(), f.form.get());
    }

    void deletingAContainerTakesWhatIsInsideOutOfTheDesign()
    {
        Fixture f;
        QVERIFY(f.design());
        QPointer<QLabel> label = f.label;
        RealInput::click(f.group, QPoint(150, 120));
        QTRY_COMPARE(f.selection(), QList<QObject *>{f.group});
        f.center->DelSelCtrls();
        // Out of the stage's list at once, freed once the loop runs.
        QCOMPARE(FindComponent(f.form.get(), QStringLiteral("Label1")), nullptr);
        QCOMPARE(FindComponent(f.form.get(), QStringLiteral("GroupBox1")), nullptr);
        QTRY_VERIFY(!label);
        QCOMPARE(f.selection(), QList<QObject *>{f.form.get()});
    }

    void pastingWithOneContainerSelectedPastesIntoItOffsetBy4And4()
    {
        Fixture f;
        QVERIFY(f.design());
        f.selectAndCopy(f.b1);
        RealInput::click(f.group, QPoint(150, 120));
        QTRY_COMPARE(f.selection(), QList<QObject *>{f.group});
        f.center->PasteComps();
        auto *copy = qobject_cast<QPushButton *>(FindComponent(f.form.get(), QStringLiteral("PushButton1")));
        QVERIFY(copy);
        QCOMPARE(copy->parentWidget(), f.group);
        QCOMPARE(copy->pos(), QPoint(24, 24));
        QCOMPARE(copy->text(), QStringLiteral("One"));
        QCOMPARE(Owner(copy), f.form.get());
    }

    void pastingWithTwoControlsSelectedPastesOntoTheStage()
    {
        Fixture f;
        QVERIFY(f.design());
        f.selectAndCopy(f.label);
        RealInput::click(f.b1);
        RealInput::click(f.group, QPoint(150, 120), Qt::LeftButton, Qt::ShiftModifier);
        QTRY_COMPARE(f.selection(), QList<QObject *>({f.b1, f.group}));
        f.center->PasteComps();
        auto *copy = qobject_cast<QLabel *>(FindComponent(f.form.get(), QStringLiteral("Label2")));
        QVERIFY(copy);
        QCOMPARE(copy->parentWidget(), f.form.get());
        QCOMPARE(copy->pos(), QPoint(24, 44));
    }

    void pastingWithAButtonSelectedPastesIntoItsContainerUnderANewName()
    {
        Fixture f;
        QVERIFY(f.design());
        f.selectAndCopy(f.b2);
        f.center->PasteComps();
        auto *copy = qobject_cast<QPushButton *>(FindComponent(f.form.get(), QStringLiteral("PushButton1")));
        QVERIFY(copy);
        QCOMPARE(copy->parentWidget(), f.form.get());
        QCOMPARE(copy->pos(), QPoint(24, 84));
        // Pasted again: the next name, the next free corner.
        f.center->PasteComps();
        auto *second = qobject_cast<QPushButton *>(FindComponent(f.form.get(), QStringLiteral("PushButton2")));
        QVERIFY(second);
        QCOMPARE(second->pos(), QPoint(28, 88));
        QCOMPARE(FindComponent(f.form.get(), QStringLiteral("Button2")), f.b2);
    }

    void aNonVisualSelectionPastesOntoTheStage()
    {
        Fixture f;
        QVERIFY(f.design());
        f.selectAndCopy(f.b1);
        f.center->SetSelectedCompsSilently(TComponentList{f.timer});
        f.center->PasteComps();
        auto *copy = qobject_cast<QPushButton *>(FindComponent(f.form.get(), QStringLiteral("PushButton1")));
        QVERIFY(copy);
        QCOMPARE(copy->parentWidget(), f.form.get());
    }

    void anInsertedComponentBecomesTheSoleSelectionEverywhereAndARemovalChangesNothing()
    {
        Fixture f;
        RecordingTree tree;
        f.center->SetCompTreeView(&tree);
        QCOMPARE(tree.center, f.center.get());
        QVERIFY(f.design());
        RealInput::click(f.b1);
        QTRY_COMPARE(f.selection(), QList<QObject *>{f.b1});
        QCOMPARE(tree.selected.toList(), QList<QObject *>{f.b1});
        const int refreshes = tree.refreshCount;
        auto *added = new QPushButton(QStringLiteral("New"), f.form.get());
        added->setObjectName(QStringLiteral("Added1"));
        added->setGeometry(120, 200, 60, 25);
        added->show();
        InsertComponent(f.form.get(), added);
        QCOMPARE(tree.refreshCount, refreshes + 1);
        QCOMPARE(f.selection(), QList<QObject *>{added});
        QCOMPARE(tree.selected.toList(), QList<QObject *>{added});
        QVERIFY(f.listsEqual());
        // A removal routes nothing.
        const int sets = tree.setCount;
        RemoveComponent(f.form.get(), f.timer);
        QCOMPARE(tree.setCount, sets);
        QCOMPARE(tree.refreshCount, refreshes + 1);
        QCOMPARE(f.selection(), QList<QObject *>{added});
        InsertComponent(f.form.get(), f.timer);
        f.center->SetCompTreeView(nullptr);
        QCOMPARE(tree.center, nullptr);
    }

    void theTreesSelectionReachesTheManagerAndInspectorWithoutOnCompsChange()
    {
        Fixture f;
        RecordingTree tree;
        f.center->SetCompTreeView(&tree);
        QVERIFY(f.design());
        QSignalSpy changed(f.center.get(), &TQorDesignCenter::OnCompsChange);
        const int sets = tree.setCount;
        tree.selected = TComponentList{f.b2, f.timer};
        f.center->CompTreeSelCompChanged();
        QCOMPARE(f.selection(), QList<QObject *>({f.b2, f.timer}));
        QVERIFY(f.listsEqual());
        QVERIFY(f.manager->Sizers()->SizerOf(f.b2));
        QCOMPARE(changed.count(), 0);
        // The tree is not told back.
        QCOMPARE(tree.setCount, sets);
        // The manager's own change is told to the tree and fires the event.
        RealInput::click(f.b1);
        QTRY_COMPARE(f.selection(), QList<QObject *>{f.b1});
        QCOMPARE(tree.selected.toList(), QList<QObject *>{f.b1});
        QVERIFY(changed.count() >= 1);
        f.center->SetCompTreeView(nullptr);
    }

    void settingOnStageMouseMoveBeforeAManagerIsLinkedHasNoLastingEffect()
    {
        Fixture f(false);
        int calls = 0;
        f.center->SetOnStageMouseMove([&calls](QObject *, QWidget *, Qt::KeyboardModifiers, int, int) { ++calls; });
        QVERIFY(!f.center->OnStageMouseMove());
        f.center->SetDesignManager(f.manager);
        QVERIFY(!f.center->OnStageMouseMove());
        QVERIFY(!f.manager->OnStageMouseMoveHandler);
        QVERIFY(f.design());
        QSignalSpy moves(f.manager, &TQorDesignManager::OnStageMouseMove);
        RealInput::moveTo(f.form.get(), QPoint(150, 250), 3);
        QTRY_VERIFY(moves.count() > 0);
        QCOMPARE(calls, 0);
        // Set with the manager linked, it is the manager's event.
        QPoint seen;
        f.center->SetOnStageMouseMove(
            [&seen](QObject *, QWidget *, Qt::KeyboardModifiers, int X, int Y) { seen = QPoint(X, Y); });
        QVERIFY(f.center->OnStageMouseMove());
        QVERIFY(f.manager->OnStageMouseMoveHandler);
        RealInput::moveTo(f.form.get(), QPoint(160, 240), 2);
        QTRY_COMPARE(seen, QPoint(160, 240));
    }

    void dirtyIsFalseWithNoElementLinked()
    {
        TQorDesignCenter center;
        QVERIFY(!center.GetDirty());
        center.SetDirty(true);
        QVERIFY(!center.GetDirty());
    }

    void dirtyFollowsTheManagerTheInspectorAndTheTree()
    {
        Fixture f;
        RecordingTree tree;
        f.center->SetCompTreeView(&tree);
        QVERIFY(!f.center->GetDirty());
        f.manager->SetDirty(true);
        QVERIFY(f.center->GetDirty());
        f.center->SetDirty(false);
        QVERIFY(!f.manager->Dirty());
        QVERIFY(!f.inspector->Modified());
        QVERIFY(!tree.dirty);
        f.inspector->SetModified(true);
        QVERIFY(f.center->GetDirty());
        f.inspector->SetModified(false);
        tree.dirty = true;
        QVERIFY(f.center->GetDirty());
        f.center->SetDirty(true);
        QVERIFY(f.manager->Dirty() && f.inspector->Modified() && tree.dirty);
        f.center->SetCompTreeView(nullptr);
    }

    // Damaged clipboard contents

    void truncatedRecordsLoseNothingOfTheStage()
    {
        Fixture f;
        QVERIFY(f.design());
        const QByteArray whole = ComponentToBytes(f.b1) + ComponentToBytes(f.group);
        const QStringList before = stageContents(f.form.get());
        f.center->SetSelectedCompsSilently(TComponentList{f.form.get()});
        for (qsizetype length = 1; length < whole.size(); length += 5) {
            QorGuiTest::putRecords(whole.left(length));
            const int count = ComponentCount(f.form.get());
            f.center->PasteComps();
            const QStringList after = stageContents(f.form.get());
            // What was there stays as it was; at most the whole first
            // record arrives.
            QCOMPARE(after.mid(0, before.size()), before);
            QVERIFY2(after.size() <= count + 1, qPrintable(QString::number(length)));
        }
        QTRY_VERIFY(nothingHalfMade(f.form.get()));
    }

    void aJunkTailedBlockPastesItsWholeRecords()
    {
        Fixture f;
        QVERIFY(f.design());
        QByteArray junk(257, '\0');
        QRandomGenerator random(7);
        for (char &c : junk)
            c = char(random.bounded(256));
        QorGuiTest::putRecords(ComponentToBytes(f.b1) + junk);
        const int before = ComponentCount(f.form.get());
        f.center->PasteComps();
        QCOMPARE(ComponentCount(f.form.get()), before + 1);
        auto *copy = qobject_cast<QPushButton *>(Components(f.form.get(), before));
        QVERIFY(copy);
        QCOMPARE(copy->text(), QStringLiteral("One"));
        QCOMPARE(copy->objectName(), QStringLiteral("PushButton1"));
        QTRY_VERIFY(nothingHalfMade(f.form.get()));
    }

    void aRecordOfAnUnknownClassIsSkippedAndTheNextOnePasted()
    {
        Fixture f;
        QVERIFY(f.design());
        QByteArray unknown = ComponentToBytes(f.b1);
        const qsizetype at = unknown.indexOf("QPushButton");
        QVERIFY(at >= 0);
        unknown.replace(at, 11, "QPushBottom");
        QorGuiTest::putRecords(unknown + ComponentToBytes(f.label));
        const QStringList before = stageContents(f.form.get());
        f.center->PasteComps();
        const QStringList after = stageContents(f.form.get());
        QCOMPARE(after.mid(0, before.size()), before);
        QCOMPARE(after.size(), before.size() + 1);
        QVERIFY(after.last().startsWith(QStringLiteral("Label2 QLabel")));
        QTRY_VERIFY(nothingHalfMade(f.form.get()));
    }

    void twoHundredRandomBlocksNeverCrashAndLoseNothing()
    {
        Fixture f;
        QVERIFY(f.design());
        const QByteArray valid = ComponentToBytes(f.b1) + ComponentToBytes(f.timer) + ComponentToBytes(f.group);
        const QStringList before = stageContents(f.form.get());
        QRandomGenerator random(19);
        int pasted = 0;
        for (int i = 0; i < 200; ++i) {
            QByteArray block;
            if (i % 2 == 0) {
                block.resize(random.bounded(1, 2000));
                for (char &c : block)
                    c = char(random.bounded(256));
            } else {
                // A real copy with a few bytes spoilt, sometimes cut short.
                block = valid;
                for (int n = random.bounded(1, 12); n > 0; --n)
                    block[random.bounded(int(block.size()))] = char(random.bounded(256));
                if (random.bounded(3) == 0)
                    block.truncate(random.bounded(1, int(block.size())));
            }
            QorGuiTest::putRecords(block);
            const int count = ComponentCount(f.form.get());
            f.center->PasteComps();
            pasted += ComponentCount(f.form.get()) - count;
            QCOMPARE(stageContents(f.form.get()).mid(0, before.size()), before);
        }
        // Some spoilt copies still carry whole records.
        QVERIFY(pasted > 0);
        QTRY_VERIFY(nothingHalfMade(f.form.get()));
        QVERIFY(f.listsEqual());
    }

    void malformedDesignerTextsPasteNothingAndLoseNothing()
    {
        Fixture f;
        QVERIFY(f.design());
        const QString good = QStringLiteral(
            "<ui version=\"4.0\"><widget class=\"QWidget\" name=\"__qt_fake_top_level\">"
            "<widget class=\"QPushButton\" name=\"fromText\"><property name=\"geometry\"><rect><x>5</x><y>6</y>"
            "<width>70</width><height>20</height></rect></property><property name=\"text\"><string>T</string>"
            "</property></widget></widget></ui>");
        QStringList texts{
            QString(), QStringLiteral("plain words"), QStringLiteral("<ui"), QStringLiteral("<ui version=\"4.0\"/>"),
            QStringLiteral("<html><body>no form</body></html>"),
            QStringLiteral("<ui version=\"4.0\"><widget/></ui>"),
            QStringLiteral("<ui version=\"4.0\"><widget class=\"QWidget\" name=\"__qt_fake_top_level\">"
                           "<widget name=\"noClass\"/></widget></ui>"),
            QStringLiteral("<ui version=\"4.0\"><widget class=\"QWidget\" name=\"__qt_fake_top_level\">"
                           "<widget class=\"QPushButton\" name=\"b\"><property name=\"geometry\"><rect><x>abc</x>"
                           "<y>99999999999</y><width>-5</width></rect></property><property name=\"checked\">"
                           "<string>maybe</string></property><property name=\"noSuchProperty\"><number>1</number>"
                           "</property></widget></widget></ui>"),
        };
        for (int cut = 7; cut < good.size(); cut += 11)
            texts << good.left(cut);
        QString deep = QStringLiteral("<ui version=\"4.0\"><widget class=\"QWidget\" name=\"__qt_fake_top_level\">");
        for (int i = 0; i < 300; ++i)
            deep += QStringLiteral("<widget class=\"QFrame\" name=\"f%1\">").arg(i);
        texts << deep;
        const QStringList before = stageContents(f.form.get());
        for (const QString &text : std::as_const(texts)) {
            QGuiApplication::clipboard()->setText(text);
            f.center->PasteComps();
            const QStringList after = stageContents(f.form.get());
            QCOMPARE(after.mid(0, before.size()), before);
        }
        QTRY_VERIFY(nothingHalfMade(f.form.get()));
        // A good text still pastes afterwards.
        QGuiApplication::clipboard()->setText(good);
        f.center->PasteComps();
        auto *button = qobject_cast<QPushButton *>(FindComponent(f.form.get(), QStringLiteral("fromText")));
        QVERIFY(button);
        QCOMPARE(button->text(), QStringLiteral("T"));
    }

    // The rest of the center

    void aCenterWithNothingLinkedAcceptsEveryCallAndDoesNothing()
    {
        TQorDesignCenter center;
        QCOMPARE(center.GetDesignStage(), nullptr);
        QCOMPARE(center.GetPalleteSelectedClass(), nullptr);
        QCOMPARE(center.InspectorDesigner(), nullptr);
        center.Refresh();
        center.RefreshAllExcept({});
        center.DesignerSelCompChanged();
        center.DesignerSelCompMoved();
        center.CompTreeSelCompChanged();
        center.CompTreeNodeNameChanged();
        center.ConsoleCompListChanged();
        center.InspectorPropChanged();
        center.DesignStageCompsModified(&center, TQorCompOperation::opInsert);
        center.DynCompCreated(nullptr);
        center.DeselectComponent();
        center.DeselectControl();
        center.DeselectUnsiblingControl(nullptr, true);
        center.SelectAllControls();
        center.CopySelComps();
        center.DelSelCtrls();
        center.PasteComps();
        center.InstallDesignPopupMenu();
        QVERIFY(center.SelectedComps().isEmpty());
    }

    void theSelectionListsStayEqualThroughEveryCommand()
    {
        Fixture f;
        QVERIFY(f.design());
        RealInput::click(f.b1);
        QTRY_COMPARE(f.selection(), QList<QObject *>{f.b1});
        QVERIFY(f.listsEqual());
        f.center->SelectAllControls();
        QVERIFY(f.selection().contains(f.group) && f.selection().contains(f.b1) && f.selection().contains(f.b2));
        QVERIFY(f.listsEqual());
        f.center->CopySelComps();
        const int copied = f.selection().size();
        QTRY_VERIFY(VhoClipboard()->HasComponents());
        QVERIFY(f.listsEqual());
        f.center->DeselectUnsiblingControl(f.b1, false);
        const QList<QObject *> siblings = f.selection();
        QCOMPARE(QSet<QObject *>(siblings.begin(), siblings.end()), QSet<QObject *>({f.group, f.b1, f.b2}));
        QCOMPARE(f.selection().size(), 3);
        QVERIFY(f.listsEqual());
        f.center->DeselectUnsiblingControl(f.label, false);
        QCOMPARE(f.selection(), QList<QObject *>());
        QVERIFY(f.listsEqual());
        f.center->SelectAllControls();
        f.center->CutSelComps();
        QCOMPARE(f.selection(), QList<QObject *>{f.form.get()});
        QVERIFY(f.listsEqual());
        // Only the timer is left.
        QCOMPARE(ComponentCount(f.form.get()), 1);
        f.center->PasteComps();
        QCOMPARE(ComponentCount(f.form.get()), 1 + copied);
        QVERIFY(FindComponent(f.form.get(), QStringLiteral("Button1")));
        QVERIFY(f.listsEqual());
        f.center->SelectAllControls();
        QVERIFY(f.selection().size() >= 3);
        QVERIFY(f.listsEqual());
        f.center->DelSelCtrls();
        QCOMPARE(f.selection(), QList<QObject *>{f.form.get()});
        QVERIFY(f.listsEqual());
    }

    void cutTakesTheControlAwayAndPasteBringsItBackUnderItsName()
    {
        Fixture f;
        QVERIFY(f.design());
        RealInput::click(f.b2);
        QTRY_COMPARE(f.selection(), QList<QObject *>{f.b2});
        QPointer<QPushButton> gone = f.b2;
        f.center->CutSelComps();
        QTRY_VERIFY(!gone);
        QCOMPARE(FindComponent(f.form.get(), QStringLiteral("Button2")), nullptr);
        f.center->PasteComps();
        auto *back = qobject_cast<QPushButton *>(FindComponent(f.form.get(), QStringLiteral("Button2")));
        QVERIFY(back);
        QCOMPARE(back->text(), QStringLiteral("Two"));
        QCOMPARE(back->pos(), QPoint(24, 84));
    }

    void editingTheSelectionKeepsOrDropsControlsAndComponents()
    {
        Fixture f;
        QVERIFY(f.design());
        f.center->SetSelectedCompsSilently(TComponentList{f.b1, f.timer, f.label, f.b2});
        f.center->DeselectUnsiblingControl(f.b1, false);
        QCOMPARE(f.selection(), QList<QObject *>({f.b1, f.timer, f.b2}));
        QVERIFY(f.listsEqual());
        f.center->DeselectComponent();
        QCOMPARE(f.selection(), QList<QObject *>({f.b1, f.b2}));
        f.center->SetSelectedCompsSilently(TComponentList{f.b1, f.timer, f.label});
        f.center->DeselectUnsiblingControl(f.b1, true);
        QCOMPARE(f.selection(), QList<QObject *>{f.b1});
        f.center->SetSelectedCompsSilently(TComponentList{f.b1, f.timer});
        f.center->DeselectControl();
        QCOMPARE(f.selection(), QList<QObject *>{f.timer});
        QVERIFY(f.listsEqual());
    }

    void movingWithTheMouseRefreshesTheInspectorAndFiresOnControlsMoved()
    {
        Fixture f;
        QVERIFY(f.design());
        QSignalSpy moved(f.center.get(), &TQorDesignCenter::OnControlsMoved);
        // Selected with a click well away from where the drag starts (a
        // press there soon after would make a double click).
        RealInput::click(f.b1, QPoint(8, 8));
        QTRY_COMPARE(f.inspector->ActiveComponent(), f.b1);
        TValueListStrings *lines = f.inspector->Strings();
        const int row = f.line(QStringLiteral("geometry"));
        QVERIFY(row >= 0);
        const QString before = lines->ValueFromIndex(row);
        QVERIFY(before.contains(QLatin1String("20")));
        RealInput::drag(f.b1, QPoint(40, 15), QPoint(70, 45));
        QTRY_COMPARE(f.b1->pos(), QPoint(50, 50));
        QTRY_VERIFY(moved.count() >= 1);
        QTRY_VERIFY(lines->ValueFromIndex(row).contains(QString::number(f.b1->pos().x())));
        QVERIFY(lines->ValueFromIndex(row) != before);
        QVERIFY(f.listsEqual());
    }

    void anInspectorEditRefreshesTheSizersAndFiresOnInspectorPropChange()
    {
        Fixture f;
        QVERIFY(f.design());
        QSignalSpy changed(f.center.get(), &TQorDesignCenter::OnInspectorPropChange);
        RealInput::click(f.b1);
        QTRY_COMPARE(f.inspector->ActiveComponent(), f.b1);
        // The width typed into the inspector's "geometry" fields.
        TValueListStrings *lines = f.inspector->Strings();
        const int row = f.line(QStringLiteral("geometry"));
        QVERIFY(row >= 0);
        f.inspector->scrollTo(f.inspector->model()->index(row, 0));
        RealInput::doubleClick(f.inspector->viewport(),
                               f.inspector->visualRect(f.inspector->model()->index(row, 0)).center());
        QTRY_COMPARE(lines->Names(row), QStringLiteral("- geometry"));
        const int width = f.line(QStringLiteral("width"));
        QVERIFY(width > row);
        f.inspector->scrollTo(f.inspector->model()->index(width, 1));
        RealInput::click(f.inspector->viewport(), f.inspector->visualRect(f.inspector->model()->index(width, 1)).center());
        QTRY_VERIFY(qobject_cast<QLineEdit *>(QApplication::focusWidget()));
        RealInput::key("a", Qt::ControlModifier);
        RealInput::typeText(QStringLiteral("120"));
        RealInput::key("Return");
        QTRY_COMPARE(f.b1->width(), 120);
        QTRY_VERIFY(changed.count() >= 1);
        TQorSizer *sizer = f.manager->Sizers()->SizerOf(f.b1);
        QVERIFY(sizer);
        QTRY_COMPARE(sizer->geometry().width(), 124);
        QVERIFY(f.center->GetDirty());
    }

    void thePalettesChoiceIsInsertedAndThePaletteGoesBackToTheArrow()
    {
        Fixture f;
        RecordingPallete pallete;
        QObject notAPallete;
        f.center->SetCompPalleteToolBar(&notAPallete);
        QCOMPARE(f.center->CompPalleteToolBar(), nullptr);
        f.center->SetCompPalleteToolBar(&pallete);
        pallete.chosen = &QPushButton::staticMetaObject;
        QCOMPARE(f.center->GetPalleteSelectedClass(), &QPushButton::staticMetaObject);
        QVERIFY(f.design());
        QSignalSpy inserted(f.center.get(), &TQorDesignCenter::AfterDynInsComponent);
        RealInput::click(f.form.get(), QPoint(120, 200));
        QTRY_COMPARE(inserted.count(), 1);
        auto *button = qobject_cast<QPushButton *>(inserted.first().at(1).value<QObject *>());
        QVERIFY(button);
        QCOMPARE(button->pos(), QPoint(120, 200));
        QCOMPARE(inserted.first().at(0).value<QObject *>(), f.center.get());
        QCOMPARE(pallete.chosen, nullptr);
        QCOMPARE(f.center->GetPalleteSelectedClass(), nullptr);
    }

    void theDesignPopupMenuGoesToTheManagerAndTheTree()
    {
        Fixture f;
        RecordingTree tree;
        f.center->SetCompTreeView(&tree);
        CenterMenu menu;
        f.center->SetDesignPopupMenu(&menu);
        QCOMPARE(menu.center, f.center.get());
        QCOMPARE(f.manager->DesignPopupMenu(), &menu);
        QCOMPARE(tree.popupMenu, &menu);
        QMenu plain;
        f.center->SetDesignPopupMenu(&plain);
        QCOMPARE(menu.center, nullptr);
        QCOMPARE(f.manager->DesignPopupMenu(), &plain);
        QCOMPARE(tree.popupMenu, &plain);
        f.center->SetCompTreeView(nullptr);
    }

    void linkingTheInspectorShowsTheStageOnceAManagerIsLinked()
    {
        Fixture f(false);
        f.center->SetObjInspector(f.inspector.get());
        QCOMPARE(f.inspector->ConsoleCenter(), f.center.get());
        f.center->SetDesignManager(f.manager);
        QCOMPARE(f.inspector->ActiveComponent(), f.form.get());
        QCOMPARE(f.center->InspectorDesigner(), static_cast<IDesigner *>(f.center->FormDesigner()));
        QCOMPARE(f.center->FormDesigner()->Designer(), f.manager);
        f.center->SetObjInspector(nullptr);
        QCOMPARE(f.inspector->ConsoleCenter(), nullptr);
    }

    void elementsThatGoAreDroppedAndACenterThatGoesLetsGoOfTheManager()
    {
        Fixture f;
        {
            auto inspector = std::make_unique<TQorObjInspector>();
            f.center->SetObjInspector(inspector.get());
        }
        QCOMPARE(f.center->ObjInspector(), nullptr);
        auto center = std::make_unique<TQorDesignCenter>();
        center->SetDesignManager(f.manager);
        center.reset();
        QCOMPARE(f.manager->ConsoleCenter(), nullptr);
        // The manager still selects without a center.
        QVERIFY(f.design());
        RealInput::click(f.b1);
        QTRY_COMPARE(f.manager->SelectedComps().toList(), QList<QObject *>{f.b1});
        // The manager going: the center drops it.
        f.center->SetDesignManager(f.manager);
        QPointer<TQorDesignManager> manager = f.manager;
        f.manager->deleteLater();
        QTRY_VERIFY(!manager);
        QCOMPARE(f.center->DesignManager(), nullptr);
        QCOMPARE(f.center->GetDesignStage(), nullptr);
        f.center->DelSelCtrls();
    }

    // The application frees a selected control behind the center's back:
    // it drops out of every list, and every command goes on with the rest.
    void aSelectedControlTheApplicationFreesDropsOutOfEveryList()
    {
        Fixture f;
        QVERIFY(f.design());
        RealInput::click(f.b1);
        RealInput::click(f.b2, QPoint(-1, -1), Qt::LeftButton, Qt::ShiftModifier);
        QTRY_COMPARE(f.selection(), (QList<QObject *>{f.b1, f.b2}));
        QPointer<QPushButton> gone = f.b1;
        delete f.b1;
        QVERIFY(!gone);
        QCOMPARE(f.selection(), QList<QObject *>{f.b2});
        QCOMPARE(f.manager->SelectedComps().toList(), QList<QObject *>{f.b2});
        // The inspector rebuilds its lines for the rest once back in the
        // event loop.
        QTRY_COMPARE(f.inspector->GetActiveComponents(), QList<QObject *>{f.b2});
        QCOMPARE(f.inspector->ActiveComponent(), f.b2);
        QVERIFY(f.listsEqual());
        QCOMPARE(FindComponent(f.form.get(), QStringLiteral("Button1")), nullptr);
        f.center->CopySelComps();
        QTRY_VERIFY(VhoClipboard()->HasComponents());
        f.center->PasteComps();
        QTRY_VERIFY(FindComponent(f.form.get(), QStringLiteral("PushButton1")));
        QCOMPARE(qobject_cast<QPushButton *>(FindComponent(f.form.get(), QStringLiteral("PushButton1")))->text(),
                 QStringLiteral("Two"));
        f.center->SelectAllControls();
        QTRY_VERIFY(f.listsEqual());
        QVERIFY(!f.selection().contains(nullptr));
        QPointer<QPushButton> b2 = f.b2;
        RealInput::click(f.form.get(), QPoint(150, 250));
        QTRY_COMPARE(f.selection(), QList<QObject *>{f.form.get()});
        // Its pasted copy covers all of it but its top left corner.
        RealInput::click(f.b2, QPoint(2, 2));
        QTRY_COMPARE(f.selection(), QList<QObject *>{f.b2});
        QTRY_VERIFY(f.listsEqual());
        f.center->DelSelCtrls();
        QTRY_VERIFY(!b2);
        QTRY_COMPARE(f.selection(), QList<QObject *>{f.form.get()});
        QVERIFY(f.listsEqual());
        QVERIFY(FindComponent(f.form.get(), QStringLiteral("PushButton1")));
    }

    void theDesignersSelectComponentSetsTheSharedListWithoutTellingAnyone()
    {
        Fixture f;
        QVERIFY(f.design());
        RealInput::click(f.b1);
        QTRY_COMPARE(f.selection(), QList<QObject *>{f.b1});
        QSignalSpy changed(f.center.get(), &TQorDesignCenter::OnCompsChange);
        f.center->FormDesigner()->SelectComponent(f.timer);
        QCOMPARE(f.selection(), QList<QObject *>{f.timer});
        QCOMPARE(f.manager->SelectedComps().toList(), QList<QObject *>{f.b1});
        QCOMPARE(changed.count(), 0);
    }

    void theDesignSystemsOwnPartsAreRecognised()
    {
        Fixture f;
        QVERIFY(IsQorDesignCtrl(f.manager));
        QVERIFY(IsQorDesignCtrl(f.center.get()));
        CountingCenter derived;
        QVERIFY(IsQorDesignCtrl(&derived));
        TQorSizer sizer;
        QVERIFY(IsQorDesignCtrl(&sizer));
        QVERIFY(!IsQorDesignCtrl(f.b1));
        QVERIFY(!IsQorDesignCtrl(f.timer));
        QVERIFY(!IsQorDesignCtrl(f.inspector.get()));
        QVERIFY(!IsQorDesignCtrl(nullptr));
    }
};

QTEST_MAIN(tst_QorDesignCenter)
#include "tst_qordesigncenter.moc"
