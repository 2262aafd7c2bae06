// SPDX-License-Identifier: MIT
// The demo designer used as a user uses it, with real input: the keys of a
// selection however it was made, controls the user cannot see, the stage's
// own handles, and what the palette and the arrange commands leave behind.
#include "designer/qordesigner_p.h"
#include "console/qordesignconsole.h"
#include "designer/qormanager.h"
#include "designer/qorsizers_p.h"
#include "foundation/qorcomponents.h"
#include "foundation/vhoclipbrdutils.h"
#include "browsing/qorclassesman.h"
#include "browsing/qorcomptreeview.h"
#include "browsing/qorpallete.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"
#include "inspector/qorinspector.h"
#include "qordemowindow.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalSpy>
#include <QScreen>
#include <QScrollBar>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>
#include <QTextEdit>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

namespace {

// Where the keyboard is when a shortcut is typed.
enum { KeysAfterClick, KeysInSizer, KeysInStage };

// How a selection is made on the demo's stage.
enum class SelectBy { CtrlA, EditMenu, RubberBand, ShiftClicks, ClickOnSelected };


// The demo window, shown, designing, with its stage's widgets at hand.
struct Demo
{
    QorDemoWindow window;
    QWidget *stage = nullptr;
    TQorDesignManager *manager = nullptr;
    QLineEdit *line = nullptr;
    QCheckBox *check = nullptr;
    QComboBox *combo = nullptr;
    QSpinBox *spin = nullptr;

    bool start()
    {
        if (!QorGuiTest::showAndActivate(&window, QPoint(0, 0)))
            return false;
        window.designAction()->setChecked(true);
        stage = window.stage();
        manager = window.designManager();
        line = stage->findChild<QLineEdit *>(QStringLiteral("LineEdit1"));
        check = stage->findChild<QCheckBox *>(QStringLiteral("CheckBox1"));
        combo = stage->findChild<QComboBox *>(QStringLiteral("ComboBox1"));
        spin = stage->findChild<QSpinBox *>(QStringLiteral("SpinBox1"));
        return manager->IsDesigning() && line && check && combo && spin;
    }

    QList<QObject *> selected() const { return manager->SelectedComps().toList(); }
    QList<QObject *> centerSelected() const { return window.designCenter()->SelectedComps().toList(); }

    // The four controls in the stage's right column, in the stage's order.
    QList<QWidget *> column() const { return {line, check, combo, spin}; }

    // Makes a selection of the right column (or of everything, for the
    // select-all ways) the given way; returns the controls selected.
    QList<QObject *> select(SelectBy how)
    {
        switch (how) {
        case SelectBy::CtrlA:
            RealInput::click(stage, QPoint(545, 200));
            if (!QTest::qWaitFor([this] { return selected() == QList<QObject *>{stage}; }))
                return {};
            RealInput::key("a", Qt::ControlModifier);
            return QTest::qWaitFor([this] { return selected().size() > 4; }) ? selected() : QList<QObject *>();
        case SelectBy::EditMenu:
            if (!QorGuiTest::chooseFromMenu(&window, "EditMenu", "SelectAllAction"))
                return {};
            return QTest::qWaitFor([this] { return selected().size() > 4; }) ? selected() : QList<QObject *>();
        case SelectBy::RubberBand:
            // From the empty strip right of the column down and left over it.
            RealInput::drag(stage, QPoint(545, 20), QPoint(300, 150), 8);
            break;
        case SelectBy::ShiftClicks:
            RealInput::click(line, QPoint(line->width() - 8, 8));
            for (QWidget *w : {static_cast<QWidget *>(check), static_cast<QWidget *>(combo),
                               static_cast<QWidget *>(spin)})
                RealInput::click(w, QPoint(w->width() - 8, 8), Qt::LeftButton, Qt::ShiftModifier);
            break;
        case SelectBy::ClickOnSelected:
            RealInput::click(line, QPoint(line->width() - 8, 8));
            for (QWidget *w : {static_cast<QWidget *>(check), static_cast<QWidget *>(combo),
                               static_cast<QWidget *>(spin)})
                RealInput::click(w, QPoint(w->width() - 8, 8), Qt::LeftButton, Qt::ShiftModifier);
            if (!QTest::qWaitFor([this] { return selected().size() == 4; }))
                return {};
            // A plain click on one of them keeps the selection.
            RealInput::click(combo, QPoint(combo->width() - 8, 8));
            break;
        }
        const QList<QObject *> want{line, check, combo, spin};
        return QTest::qWaitFor([&] { return selected() == want; }) ? selected() : QList<QObject *>();
    }
};

void addSelectionRows()
{
    QTest::addColumn<SelectBy>("how");
    QTest::newRow("by Ctrl+A") << SelectBy::CtrlA;
    QTest::newRow("by the Edit menu") << SelectBy::EditMenu;
    QTest::newRow("by a rubber band") << SelectBy::RubberBand;
    QTest::newRow("by Shift-clicks") << SelectBy::ShiftClicks;
    QTest::newRow("after a click on a selected control") << SelectBy::ClickOnSelected;
}

} // namespace

Q_DECLARE_METATYPE(SelectBy)

class tst_DemoGestures : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

private Q_SLOTS:
    // ---- Keys of a selection ----

    void ctrlArrowsMoveEverySelectedControl_data() { addSelectionRows(); }
    void ctrlArrowsMoveEverySelectedControl()
    {
        QFETCH(SelectBy, how);
        Demo d;
        QVERIFY(d.start());
        const QList<QObject *> chosen = d.select(how);
        QVERIFY(chosen.size() >= 4);
        for (QWidget *w : d.column())
            QVERIFY(chosen.contains(w));
        QHash<QWidget *, QRect> was;
        for (QObject *c : chosen)
            was.insert(static_cast<QWidget *>(c), static_cast<QWidget *>(c)->geometry());

        RealInput::key("Right", Qt::ControlModifier);
        for (QWidget *w : d.column())
            QTRY_COMPARE(w->geometry(), was.value(w).translated(1, 0));
        RealInput::key("Down", Qt::ControlModifier);
        for (QWidget *w : d.column())
            QTRY_COMPARE(w->geometry(), was.value(w).translated(1, 1));
        // Every selected control that shares the stage as its parent moved;
        // the ones inside containers stay where their containers put them.
        for (auto it = was.cbegin(); it != was.cend(); ++it) {
            if (it.key()->parentWidget() == d.stage)
                QTRY_COMPARE(it.key()->geometry(), it.value().translated(1, 1));
            else
                QCOMPARE(it.key()->geometry(), it.value());
        }
        QCOMPARE(d.centerSelected(), d.selected());
    }

    void deleteDeletesEverySelectedControl_data() { addSelectionRows(); }
    void deleteDeletesEverySelectedControl()
    {
        QFETCH(SelectBy, how);
        Demo d;
        QVERIFY(d.start());
        const QList<QObject *> chosen = d.select(how);
        QVERIFY(chosen.size() >= 4);
        QList<QPointer<QObject>> watched;
        for (QObject *c : chosen)
            watched.append(c);
        RealInput::key("Delete");
        QTRY_VERIFY(std::all_of(watched.cbegin(), watched.cend(), [](const QPointer<QObject> &p) { return !p; }));
        QTRY_COMPARE(d.selected(), QList<QObject *>{d.stage});
        QCOMPARE(d.centerSelected(), QList<QObject *>{d.stage});
    }

    void shiftDeleteNeverDeletes_data()
    {
        QTest::addColumn<bool>("shiftFirst");
        QTest::newRow("Shift let go first") << true;
        QTest::newRow("Delete let go first") << false;
    }
    void shiftDeleteNeverDeletes()
    {
        QFETCH(bool, shiftFirst);
        Demo d;
        QVERIFY(d.start());
        d.select(SelectBy::ShiftClicks);
        QTRY_COMPARE(d.selected().size(), 4);
        QList<QPointer<QWidget>> watched;
        for (QWidget *w : d.column())
            watched.append(w);
        RealInput::keyDown("Shift_L");
        RealInput::keyDown("Delete");
        if (shiftFirst) {
            RealInput::keyUp("Shift_L");
            RealInput::keyUp("Delete");
        } else {
            RealInput::keyUp("Delete");
            RealInput::keyUp("Shift_L");
        }
        QVERIFY(!QTest::qWaitFor(
            [&] { return std::any_of(watched.cbegin(), watched.cend(), [](const QPointer<QWidget> &p) { return !p; }); },
            300));
        QCOMPARE(d.selected().size(), 4);
        // A plain Delete afterwards still deletes.
        RealInput::key("Delete");
        QTRY_VERIFY(std::all_of(watched.cbegin(), watched.cend(), [](const QPointer<QWidget> &p) { return !p; }));
    }

    // ---- The design commands' shortcuts ----

    void everyShortcutWorksOnAControlSelectedByAClick_data()
    {
        QTest::addColumn<int>("holder");
        QTest::addColumn<QString>("command");
        const QStringList all{QStringLiteral("copy"),   QStringLiteral("cut"),         QStringLiteral("paste"),
                              QStringLiteral("select all"), QStringLiteral("delete"),  QStringLiteral("shift delete"),
                              QStringLiteral("front"),  QStringLiteral("back"),        QStringLiteral("align"),
                              QStringLiteral("size"),   QStringLiteral("scale"),       QStringLiteral("nudge")};
        for (const QString &command : all)
            QTest::newRow(qPrintable(QStringLiteral("after the click: ") + command)) << int(KeysAfterClick) << command;
        for (const QString &command : {QStringLiteral("copy"), QStringLiteral("cut"), QStringLiteral("select all"),
                                       QStringLiteral("delete"), QStringLiteral("front"), QStringLiteral("nudge")}) {
            QTest::newRow(qPrintable(QStringLiteral("sizer has the keys: ") + command)) << int(KeysInSizer) << command;
            QTest::newRow(qPrintable(QStringLiteral("stage has the keys: ") + command)) << int(KeysInStage) << command;
        }
    }
    void everyShortcutWorksOnAControlSelectedByAClick()
    {
        QFETCH(int, holder);
        QFETCH(QString, command);
        Demo d;
        QVERIFY(d.start());
        TQorDesignCenter *center = d.window.designCenter();
        RealInput::click(d.check, QPoint(d.check->width() - 20, d.check->height() / 2));
        QTRY_COMPARE(d.selected(), QList<QObject *>{d.check});
        if (holder == KeysInSizer) {
            TQorSizer *sizer = d.manager->Sizers()->SizerOf(d.check);
            QVERIFY(sizer);
            sizer->setFocus();
            QTRY_COMPARE(QApplication::focusWidget(), sizer);
        } else if (holder == KeysInStage) {
            d.stage->setFocus();
            QTRY_COMPARE(QApplication::focusWidget(), d.stage);
        }
        QPointer<QWidget> check = d.check;
        const int components = ComponentCount(d.stage);
        auto stackIndex = [&d](QWidget *w) {
            QList<QObject *> controls;
            for (QObject *child : d.stage->children()) {
                if (child->isWidgetType() && Owner(child) == d.stage)
                    controls << child;
            }
            return std::pair<int, int>(int(controls.indexOf(w)), int(controls.size()));
        };
        // The name of the dialog a key opened (and Escape closed); empty
        // when none opened.
        auto dialogOpenedBy = [](const char *Key) {
            auto name = std::make_shared<QString>();
            const auto driven = QorGuiTest::whenModalOpens([name](QWidget *modal) {
                *name = modal->objectName();
                RealInput::key("Escape");
            });
            // The keys go out whole before the dialog's own event loop
            // starts: with the modifiers still held, Escape would not be
            // Escape.
            RealInput::setSettling(false);
            RealInput::key(Key, Qt::ControlModifier | Qt::ShiftModifier);
            RealInput::setSettling(true);
            if (!QTest::qWaitFor([driven] { return *driven && !QApplication::activeModalWidget(); }, 5000))
                return QStringLiteral("(still open)");
            return *name;
        };
        if (command == QLatin1String("copy")) {
            QGuiApplication::clipboard()->clear();
            QTRY_VERIFY(!VhoClipboard()->HasComponents());
            RealInput::key("c", Qt::ControlModifier);
            QTRY_VERIFY(VhoClipboard()->HasComponents());
            QVERIFY(check);
        } else if (command == QLatin1String("cut")) {
            QGuiApplication::clipboard()->clear();
            RealInput::key("x", Qt::ControlModifier);
            QTRY_VERIFY(!check);
            QTRY_VERIFY(VhoClipboard()->HasComponents());
            QCOMPARE(d.selected(), QList<QObject *>{d.stage});
        } else if (command == QLatin1String("paste")) {
            center->CopySelComps();
            QTRY_VERIFY(VhoClipboard()->HasComponents());
            RealInput::key("v", Qt::ControlModifier);
            QTRY_COMPARE(ComponentCount(d.stage), components + 1);
        } else if (command == QLatin1String("select all")) {
            RealInput::key("a", Qt::ControlModifier);
            QTRY_VERIFY(d.selected().size() > 5);
            QCOMPARE(d.centerSelected(), d.selected());
        } else if (command == QLatin1String("delete")) {
            // Deleted once, whether the sizer or the action takes the key.
            QSignalSpy rebuilt(&d.window, &QorDemoWindow::componentTreeRebuilt);
            RealInput::key("Delete");
            QTRY_VERIFY(!check);
            QTRY_COMPARE(d.selected(), QList<QObject *>{d.stage});
            QVERIFY(!QTest::qWaitFor([&rebuilt] { return rebuilt.count() > 1; }, 300));
            QCOMPARE(rebuilt.count(), 1);
            QCOMPARE(ComponentCount(d.stage), components - 1);
        } else if (command == QLatin1String("shift delete")) {
            RealInput::key("Delete", Qt::ShiftModifier);
            QVERIFY(!QTest::qWaitFor([&check] { return !check; }, 300));
            QCOMPARE(d.selected(), QList<QObject *>{d.check});
        } else if (command == QLatin1String("front")) {
            QVERIFY(stackIndex(d.check).first < stackIndex(d.check).second - 1);
            RealInput::key("bracketright", Qt::ControlModifier);
            QTRY_COMPARE(stackIndex(d.check).first, stackIndex(d.check).second - 1);
        } else if (command == QLatin1String("back")) {
            QVERIFY(stackIndex(d.check).first > 0);
            RealInput::key("bracketleft", Qt::ControlModifier);
            QTRY_COMPARE(stackIndex(d.check).first, 0);
        } else if (command == QLatin1String("align")) {
            QCOMPARE(dialogOpenedBy("a"), QStringLiteral("DialogPosAlign"));
        } else if (command == QLatin1String("size")) {
            QCOMPARE(dialogOpenedBy("s"), QStringLiteral("DialogPosSize"));
        } else if (command == QLatin1String("scale")) {
            QCOMPARE(dialogOpenedBy("e"), QStringLiteral("DialogPosScale"));
        } else if (command == QLatin1String("nudge")) {
            const QPoint was = d.check->pos();
            RealInput::key("Right", Qt::ControlModifier);
            QTRY_COMPARE(d.check->pos(), was + QPoint(1, 0));
        }
    }

    // A shortcut typed into the inspector's editor is the editor's.
    void theInspectorsEditorKeepsTheDesignShortcuts()
    {
        Demo d;
        QVERIFY(d.start());
        RealInput::click(d.check, QPoint(d.check->width() - 20, d.check->height() / 2));
        QTRY_COMPARE(d.selected(), QList<QObject *>{d.check});
        TQorObjInspector *inspector = d.window.inspector();
        QTRY_COMPARE(inspector->ActiveComponent(), d.check);
        int row = -1;
        for (int i = 0; i < inspector->Strings()->Count(); ++i) {
            if (inspector->Strings()->Names(i).trimmed() == QLatin1String("text"))
                row = i;
        }
        QVERIFY(row >= 0);
        inspector->scrollTo(inspector->model()->index(row, 1));
        RealInput::click(inspector->viewport(), inspector->visualRect(inspector->model()->index(row, 1)).center());
        QTRY_VERIFY(qobject_cast<QLineEdit *>(QApplication::focusWidget()));
        auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
        editor->setCursorPosition(0);
        QGuiApplication::clipboard()->clear();
        // Delete takes the editor's first character, not the control.
        RealInput::key("Delete");
        QTRY_COMPARE(editor->text(), QStringLiteral("egular customer"));
        QVERIFY(d.check);
        // Ctrl+A and Ctrl+C: the editor's text to the clipboard, no
        // component.
        RealInput::key("a", Qt::ControlModifier);
        RealInput::key("c", Qt::ControlModifier);
        QTRY_COMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("egular customer"));
        QVERIFY(!VhoClipboard()->HasComponents());
        QCOMPARE(d.selected(), QList<QObject *>{d.check});
        RealInput::key("Escape");
    }

    // ---- Stacking ----

    void sendToBackAndBringToFrontKeepTheSelectionsOwnOrder()
    {
        Demo d;
        QVERIFY(d.start());
        auto order = [&d] {
            QList<QObject *> controls;
            for (QObject *c : d.stage->children()) {
                if (c->isWidgetType() && Owner(c) == d.stage)
                    controls.append(c);
            }
            return controls;
        };
        const QList<QObject *> before = order();
        QVERIFY(QorGuiTest::chooseFromMenu(&d.window, "EditMenu", "SelectAllAction"));
        QTRY_VERIFY(d.selected().size() > 4);
        QVERIFY(QorGuiTest::chooseFromMenu(&d.window, "ArrangeMenu", "BackAction"));
        QVERIFY(!QTest::qWaitFor([&] { return order() != before; }, 200));
        QCOMPARE(order(), before);
        QVERIFY(QorGuiTest::chooseFromMenu(&d.window, "ArrangeMenu", "FrontAction"));
        QVERIFY(!QTest::qWaitFor([&] { return order() != before; }, 200));
        QCOMPARE(order(), before);

        // Two of them go behind the rest and stay in their own order.
        RealInput::click(d.stage, QPoint(545, 200));
        QTRY_COMPARE(d.selected(), QList<QObject *>{d.stage});
        RealInput::click(d.check, QPoint(d.check->width() - 8, 8));
        RealInput::click(d.line, QPoint(d.line->width() - 8, 8), Qt::LeftButton, Qt::ShiftModifier);
        QTRY_COMPARE(d.selected(), (QList<QObject *>{d.check, d.line}));
        QVERIFY(QorGuiTest::chooseFromMenu(&d.window, "ArrangeMenu", "BackAction"));
        QTRY_COMPARE(order().mid(0, 2), (QList<QObject *>{d.line, d.check}));
        QVERIFY(QorGuiTest::chooseFromMenu(&d.window, "ArrangeMenu", "FrontAction"));
        QTRY_COMPARE(order().mid(order().size() - 2), (QList<QObject *>{d.line, d.check}));
        // The marks stay above the controls brought to the front.
        const QObjectList children = d.stage->children();
        const auto overlay = std::find_if(children.cbegin(), children.cend(),
                                          [](QObject *c) { return c->inherits("TQorSizerOverlay"); });
        QVERIFY(overlay != children.cend());
        QVERIFY(children.indexOf(*overlay) > children.indexOf(d.check));
    }

    // ---- Controls the user cannot see ----

    void selectAllAndTheRubberBandPassOverControlsThatAreNotShowing_data()
    {
        QTest::addColumn<bool>("band");
        QTest::newRow("a rubber band") << true;
        QTest::newRow("Ctrl+A") << false;
    }
    void selectAllAndTheRubberBandPassOverControlsThatAreNotShowing()
    {
        QFETCH(bool, band);
        Demo d;
        auto *tabs = d.window.stage()->findChild<QTabWidget *>(QStringLiteral("TabWidget1"));
        QWidget *hiddenPage = tabs->widget(1);
        auto *onHiddenPage = new QPushButton(QStringLiteral("Later"), hiddenPage);
        onHiddenPage->setObjectName(QStringLiteral("Button9"));
        onHiddenPage->setGeometry(16, 16, 140, 30);
        InsertComponent(d.window.stage(), onHiddenPage);
        auto *hidden = new QLabel(QStringLiteral("Hidden"), d.window.stage());
        hidden->setObjectName(QStringLiteral("HiddenLabel"));
        hidden->setGeometry(400, 380, 100, 20);
        hidden->hide();
        InsertComponent(d.window.stage(), hidden);
        QVERIFY(d.start());
        QVERIFY(!onHiddenPage->isVisible());
        if (band) {
            RealInput::drag(d.stage, QPoint(545, 450), QPoint(100, 300), 8);
            QTRY_VERIFY(d.selected().contains(tabs));
        } else {
            RealInput::click(d.stage, QPoint(545, 200));
            QTRY_COMPARE(d.selected(), QList<QObject *>{d.stage});
            RealInput::key("a", Qt::ControlModifier);
            QTRY_VERIFY(d.selected().size() > 4);
        }
        const QList<QObject *> chosen = d.selected();
        QVERIFY(chosen.contains(tabs));
        QVERIFY(chosen.contains(tabs->widget(0)));
        QVERIFY(chosen.contains(d.stage->findChild<QPushButton *>(QStringLiteral("Button2"))));
        QVERIFY(!chosen.contains(hiddenPage));
        QVERIFY(!chosen.contains(onHiddenPage));
        QVERIFY(!chosen.contains(hidden));
        QCOMPARE(d.centerSelected(), chosen);
        QCOMPARE(d.manager->Sizers()->Count(), chosen.size());
    }

    void aSelectedControlOnAPageThatStopsShowingKeepsItsSizerAndDrawsNoMarks()
    {
        Demo d;
        QVERIFY(d.start());
        auto *tabs = d.stage->findChild<QTabWidget *>(QStringLiteral("TabWidget1"));
        auto *button = d.stage->findChild<QPushButton *>(QStringLiteral("Button2"));
        QVERIFY(tabs && button);
        // Button2 and the line edit, chosen with Ctrl in the tree.
        QTreeWidget *tree = d.window.componentTree();
        auto node = [tree](const QString &name) {
            return tree->findItems(name, Qt::MatchExactly | Qt::MatchRecursive).value(0);
        };
        tree->scrollToItem(node(QStringLiteral("Button2")));
        RealInput::click(tree->viewport(), tree->visualItemRect(node(QStringLiteral("Button2"))).center());
        QTRY_COMPARE(d.selected(), QList<QObject *>{button});
        RealInput::click(tree->viewport(), tree->visualItemRect(node(QStringLiteral("LineEdit1"))).center(),
                         Qt::LeftButton, Qt::ControlModifier);
        QTRY_COMPARE(d.selected().size(), 2);
        QVERIFY(d.selected().contains(button) && d.selected().contains(d.line));
        TQorSizer *buttonSizer = d.manager->Sizers()->SizerOf(button);
        QVERIFY(buttonSizer);
        const QPoint corner = buttonSizer->geometry().topLeft() + QPoint(1, 1);
        const QRgb markColour = buttonSizer->MultiSelColor().rgb();
        QTRY_COMPARE(d.stage->grab().toImage().pixel(corner), markColour);

        // The page goes; the selection and its sizers stay, the marks go.
        tabs->setCurrentIndex(1);
        QVERIFY(!button->isVisible());
        QTRY_VERIFY(d.stage->grab().toImage().pixel(corner) != markColour);
        QCOMPARE(d.manager->Sizers()->Count(), 2);
        QCOMPARE(d.manager->Sizers()->SizerOf(button), buttonSizer);
        QCOMPARE(d.centerSelected(), d.selected());

        // Dragging the line edit drops the control of another parent: the
        // design manager and the center agree on what is left.
        const QRect lineWas = d.line->geometry();
        RealInput::drag(d.line, QPoint(d.line->width() - 8, 8), QPoint(d.line->width() - 8 + 10, 8 + 6), 4);
        QTRY_COMPARE(d.line->geometry(), lineWas.translated(10, 6));
        QTRY_COMPARE(d.selected(), QList<QObject *>{d.line});
        QCOMPARE(d.centerSelected(), QList<QObject *>{d.line});
        QCOMPARE(d.manager->Sizers()->Count(), 1);
        QCOMPARE(d.manager->Sizers()->SizerOf(button), nullptr);
    }

    // ---- The stage's own sizer ----

    void theInnermostPixelOfTheStagesCornerHandleResizesTheStage()
    {
        Demo d;
        QVERIFY(d.start());
        QTRY_VERIFY(d.manager->StageSizer()->isVisible());
        const QRect was = d.stage->geometry();
        // The first pixel right of and below the stage.
        const QPoint corner(d.stage->width(), d.stage->height());
        RealInput::drag(d.stage, corner, corner + QPoint(20, 10), 4);
        QTRY_COMPARE(d.stage->geometry(), QRect(was.topLeft(), was.size() + QSize(20, 10)));
    }
    void theFirstWindowShowsTheWholeStage()
    {
        QorDemoWindow window;
        QVERIFY(QorGuiTest::showAndActivate(&window, QPoint(0, 0)));
        auto *area = window.findChild<QScrollArea *>(QStringLiteral("StageFrame"));
        QVERIFY(area);
        QWidget *stage = window.stage();
        const QRect shown(stage->mapTo(area->viewport(), QPoint(0, 0)), stage->size());
        QVERIFY2(area->viewport()->rect().contains(shown),
                 qPrintable(QStringLiteral("stage %1 x %2 in a viewport of %3 x %4")
                                .arg(stage->width()).arg(stage->height())
                                .arg(area->viewport()->width()).arg(area->viewport()->height())));
        QVERIFY(window.frameGeometry().right() < window.screen()->geometry().width());
    }

    // ---- The component tree's commands ----

    void theTreeRenamesByF2AndMovesByAltArrowsAndTheEditMenu()
    {
        Demo d;
        QVERIFY(d.start());
        TQorCompTreeView *tree = d.window.componentTree();
        auto index = [&d](QObject *c) { return ComponentIndex(c); };
        // The check box chosen in the tree; F2 opens its label.
        QTreeWidgetItem *node = tree->FindComponentNode(d.check);
        tree->scrollToItem(node);
        RealInput::click(tree->viewport(), tree->visualItemRect(node).center());
        QTRY_COMPARE(d.selected(), QList<QObject *>{d.check});
        QTRY_VERIFY(tree->hasFocus());
        RealInput::key("F2");
        QLineEdit *editor = nullptr;
        QTRY_VERIFY((editor = tree->viewport()->findChild<QLineEdit *>()) && editor->isVisible());
        RealInput::key("a", Qt::ControlModifier);
        QVERIFY(RealInput::typeText(QStringLiteral("Regular")));
        RealInput::key("Return");
        QTRY_COMPARE(d.check->objectName(), QStringLiteral("Regular"));
        // The inspector shows the new name.
        auto shownName = [&d] {
            TValueListStrings *lines = d.window.inspector()->Strings();
            for (int i = 0; i < lines->Count(); ++i) {
                if (lines->Names(i).mid(2) == QLatin1String("objectName"))
                    return lines->ValueFromIndex(i);
            }
            return QString();
        };
        QTRY_COMPARE(shownName(), QStringLiteral("Regular"));

        // Alt+Up: one place up in the stage's order, and in the tree.
        const int was = index(d.check);
        QTRY_VERIFY(d.window.moveUpAction()->isEnabled());
        RealInput::key("Up", Qt::AltModifier);
        QTRY_COMPARE(index(d.check), was - 1);
        QTRY_VERIFY(tree->FindComponentNode(d.check)->isSelected());
        QCOMPARE(d.selected(), QList<QObject *>{d.check});
        const QTreeWidgetItem *root = tree->topLevelItem(0);
        QVERIFY(root->indexOfChild(tree->FindComponentNode(d.check)) < root->indexOfChild(tree->FindComponentNode(d.line)));
        // Alt+Down: back.
        RealInput::key("Down", Qt::AltModifier);
        QTRY_COMPARE(index(d.check), was);
        // Move Down from the Edit menu.
        QVERIFY(QorGuiTest::chooseFromMenu(&d.window, "EditMenu", "MoveDownAction"));
        QTRY_COMPARE(index(d.check), was + 1);
        QVERIFY(d.manager->Dirty());

        // F2 on the stage: the selected control's label in the tree.
        RealInput::click(d.spin, QPoint(6, 6));
        QTRY_COMPARE(d.selected(), QList<QObject *>{d.spin});
        RealInput::key("F2");
        QTRY_VERIFY((editor = tree->viewport()->findChild<QLineEdit *>()) && editor->isVisible()
                    && editor->text() == QStringLiteral("SpinBox1"));
        // The editor goes when given up.
        const QPointer<QLineEdit> spinEditor = editor;
        RealInput::key("Escape");
        QTRY_VERIFY(!spinEditor || !spinEditor->isVisible());
        QCOMPARE(d.spin->objectName(), QStringLiteral("SpinBox1"));
    }

    void theChineseSwitchRelabelsTheTreesClasses()
    {
        Demo d;
        QVERIFY(d.start());
        TQorCompTreeView *tree = d.window.componentTree();
        QTreeWidgetItem *node = tree->FindComponentNode(d.stage->findChild<QPushButton *>(QStringLiteral("Button1")));
        QCOMPARE(node->toolTip(0), QStringLiteral("QPushButton"));
        d.window.setChinese(true);
        QTRY_COMPARE(tree->FindComponentNode(d.stage->findChild<QPushButton *>(QStringLiteral("Button1")))->toolTip(0),
                     QStringLiteral("按钮"));
        d.window.setChinese(false);
        QTRY_COMPARE(tree->FindComponentNode(d.stage->findChild<QPushButton *>(QStringLiteral("Button1")))->toolTip(0),
                     QStringLiteral("QPushButton"));
    }

    // ---- What the palette and the arrange commands leave ----

    void aControlFromThePaletteShowsItsNameWhereItsClassHasACaption_data()
    {
        QTest::addColumn<QString>("className");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("caption");
        QTest::newRow("a button's text") << "QPushButton" << "PushButton1" << "PushButton1";
        QTest::newRow("a label's text") << "QLabel" << "Label2" << "Label2";
        QTest::newRow("a group box's title") << "QGroupBox" << "GroupBox2" << "GroupBox2";
        QTest::newRow("a line edit keeps no text") << "QLineEdit" << "LineEdit2" << "";
    }
    void aControlFromThePaletteShowsItsNameWhereItsClassHasACaption()
    {
        QFETCH(QString, className);
        QFETCH(QString, name);
        QFETCH(QString, caption);
        Demo d;
        QVERIFY(d.start());
        // The tab of the class's page, then the class's button.
        TQorDesignClassList *classes = d.window.classList();
        const TQorDesignClassInformation *info = classes->ClassInfos(classes->ClassIndex(GetClass(className)));
        QVERIFY(info);
        TQorCompPalleteTab *tabs = d.window.paletteTabs();
        int tab = -1;
        for (int i = 0; i < tabs->count(); ++i) {
            if (tabs->tabText(i) == info->Pallete)
                tab = i;
        }
        QVERIFY(tab >= 0);
        RealInput::click(tabs, tabs->tabRect(tab).center());
        QTRY_COMPARE(d.window.paletteBar()->Pallete(), info->Pallete);
        QToolButton *button = nullptr;
        QTRY_VERIFY((button = d.window.paletteBar()->findChild<QToolButton *>(className + QLatin1String("Button")))
                    && button->isVisible());
        RealInput::click(button);
        QTRY_COMPARE(d.window.paletteBar()->GetCurrClass(), GetClass(className));
        RealInput::click(d.stage, QPoint(400, 190));
        QTRY_VERIFY(FindComponent(d.stage, name));
        QObject *made = FindComponent(d.stage, name);
        const char *property = qobject_cast<QGroupBox *>(made) ? "title" : "text";
        QCOMPARE(made->property(property).toString(), caption);
    }

    void scalingAControlPastTheEdgeGrowsTheStage()
    {
        Demo d;
        QVERIFY(d.start());
        RealInput::click(d.line, QPoint(d.line->width() - 8, 8));
        QTRY_COMPARE(d.selected(), QList<QObject *>{d.line});
        const int stageWidth = d.stage->width();
        QVERIFY(d.line->x() + d.line->width() * 3 / 2 > stageWidth);
        // Scale...: 150 % typed over the factor.
        const auto driven = QorGuiTest::whenModalOpens([](QWidget *modal) {
            auto *factor = modal->findChild<QLineEdit *>(QStringLiteral("EditScaleFactor"));
            QVERIFY(factor);
            RealInput::click(factor);
            RealInput::key("a", Qt::ControlModifier);
            RealInput::typeText(QStringLiteral("150"));
            RealInput::click(modal->findChild<QPushButton *>(QStringLiteral("OKBtn")));
        });
        QVERIFY(QorGuiTest::chooseFromMenu(&d.window, "ArrangeMenu", "ScaleAction"));
        QTRY_VERIFY(*driven);
        QTRY_VERIFY(d.line->x() + d.line->width() > stageWidth);
        QTRY_VERIFY(d.stage->width() >= d.line->x() + d.line->width());
        // The scroll area's scroll bar reaches the far edge.
        auto *area = d.window.findChild<QScrollArea *>(QStringLiteral("StageFrame"));
        QVERIFY(area);
        QTRY_VERIFY(area->horizontalScrollBar()->maximum() + area->viewport()->width()
                    >= d.line->x() + d.line->width());
    }
    // ---- One report per command ----

    void pastingTwoThousandWidgetsRebuildsTheTreeAndTheInspectorOnce()
    {
        Demo d;
        QVERIFY(d.start());
        constexpr int count = 2000;
        QString text = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ui version=\"4.0\">\n"
                                      " <widget class=\"QWidget\" name=\"__qt_fake_top_level\">\n");
        for (int i = 0; i < count; ++i) {
            text += QStringLiteral("  <widget class=\"QPushButton\" name=\"pushButton_%1\">"
                                   "<property name=\"geometry\"><rect><x>%2</x><y>%3</y><width>20</width>"
                                   "<height>10</height></rect></property></widget>\n")
                        .arg(i + 1)
                        .arg(4 + (i % 50) * 22)
                        .arg(4 + (i / 50) * 12);
        }
        text += QStringLiteral(" </widget>\n</ui>\n");
        QGuiApplication::clipboard()->setText(text);
        RealInput::click(d.stage, QPoint(545, 200));
        QTRY_COMPARE(d.selected(), QList<QObject *>{d.stage});
        const int before = ComponentCount(d.stage);
        int treeBuilds = 0;
        int inspectorBuilds = 0;
        connect(&d.window, &QorDemoWindow::componentTreeRebuilt, this, [&] { ++treeBuilds; });
        connect(d.window.inspector(), &TVhoObjInspector::OnRefresh, this, [&] { ++inspectorBuilds; });
        RealInput::key("v", Qt::ControlModifier);
        QTRY_COMPARE_WITH_TIMEOUT(ComponentCount(d.stage), before + count, 60000);
        QObject *last = FindComponent(d.stage, QStringLiteral("pushButton_%1").arg(count));
        QVERIFY(last);
        QTRY_COMPARE(d.selected(), QList<QObject *>{last});
        QVERIFY(!QTest::qWaitFor([&] { return treeBuilds > 1 || inspectorBuilds > 1; }, 300));
        QCOMPARE(treeBuilds, 1);
        QCOMPARE(inspectorBuilds, 1);
        QCOMPARE(d.window.inspector()->ActiveComponent(), last);
        QCOMPARE(d.centerSelected(), QList<QObject *>{last});
        QTreeWidget *tree = d.window.componentTree();
        int items = 0;
        for (QTreeWidgetItemIterator it(tree); *it; ++it)
            ++items;
        QCOMPARE(items, 1 + ComponentCount(d.stage));
    }
};

QTEST_MAIN(tst_DemoGestures)
#include "tst_demogestures.moc"
