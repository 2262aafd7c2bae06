// SPDX-License-Identifier: MIT
// The object inspector as a user works it: typing a value and Enter,
// picking from a list, expanding rows, dragging the column line, editing
// several widgets at once, refused values, and the link with the design
// surface; and its rows, positions and events.
#include "designer/qordesigner_p.h"
#include "designer/qormanager.h"
#include "designer/qorsizers_p.h"
#include "foundation/qorcomponents.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"
#include "inspector/qorinspector.h"

#include <QAbstractItemModelTester>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFontDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QTest>
#include <QToolButton>

namespace {

struct Fixture
{
    std::unique_ptr<QWidget> form = std::make_unique<QWidget>();
    QPushButton *b1, *b2, *b3;
    QLabel *label;
    std::unique_ptr<TQorObjInspector> inspector = std::make_unique<TQorObjInspector>();

    Fixture()
    {
        form->setObjectName(QStringLiteral("Form1"));
        form->resize(420, 300);
        b1 = button("Button1", 20);
        b2 = button("Button2", 120);
        b3 = button("Button3", 220);
        label = new QLabel(QStringLiteral("Label"), form.get());
        label->setObjectName(QStringLiteral("Label1"));
        label->setGeometry(20, 100, 120, 40);
        InsertComponent(form.get(), label);
        inspector->resize(320, 600);
    }

    QPushButton *button(const char *name, int x)
    {
        auto *b = new QPushButton(QLatin1String(name), form.get());
        b->setObjectName(QLatin1String(name));
        b->setGeometry(x, 20, 80, 30);
        InsertComponent(form.get(), b);
        return b;
    }

    bool show()
    {
        return QorGuiTest::showAndActivate(form.get(), QPoint(20, 20))
            && QorGuiTest::showAndActivate(inspector.get(), QPoint(500, 20));
    }

    // The line of a property, whatever its indent and marker.
    int row(const QString &name) const
    {
        TValueListStrings *strings = inspector->Strings();
        for (int i = 0; i < strings->Count(); ++i) {
            QString label = strings->Names(i).trimmed();
            if (label.startsWith(QLatin1String("+ ")) || label.startsWith(QLatin1String("- ")))
                label = label.mid(2);
            if (label == name)
                return i;
        }
        return -1;
    }

    QRect cell(int row, int column) const
    {
        inspector->scrollTo(inspector->model()->index(row, column));
        return inspector->visualRect(inspector->model()->index(row, column));
    }

    QString value(const QString &name) const { return inspector->Strings()->ValueFromIndex(row(name)); }

    // The "+" or "-" of a row with fields, drawn where the delegate draws
    // the name's text: after the cell's text margin.
    QPoint marker(int row) const
    {
        const int margin = inspector->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, inspector.get()) + 1;
        return QPoint(cell(row, 0).left() + margin + inspector->fontMetrics().horizontalAdvance(QLatin1Char('+')) / 2,
                      cell(row, 0).center().y());
    }

    // Clicks the value of a property and types a new one.
    void type(const QString &name, const QString &text)
    {
        QVERIFY2(row(name) >= 0, qPrintable(name));
        RealInput::click(inspector->viewport(), cell(row(name), 1).center());
        // A line edit, or the pick list of a line that has one.
        QTRY_VERIFY(qobject_cast<QLineEdit *>(QApplication::focusWidget())
                    || qobject_cast<QComboBox *>(QApplication::focusWidget()));
        RealInput::key("a", Qt::ControlModifier);
        RealInput::typeText(text);
        RealInput::key("Return");
    }
};

// Counts the paintings of a widget from the moment it is last reset.
struct PaintCounter : QObject {
    explicit PaintCounter(QWidget *w) { w->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *e) override
    {
        if (e->type() == QEvent::Paint)
            ++count;
        return false;
    }
    int count = 0;
};

} // namespace

class tst_QorInspector : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

private Q_SLOTS:
    // The grid's model keeps Qt's rules for item models through what a
    // user does with the inspector: components shown, a row opened and
    // closed, a value written, a component freed, the grid emptied.
    void theGridsModelKeepsTheItemModelRules()
    {
        Fixture f;
        QAbstractItemModelTester tester(f.inspector->model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        f.inspector->SetActiveComponent(f.b1);
        QVERIFY(f.show());
        const int row = f.row(QStringLiteral("geometry"));
        const int rows = f.inspector->RowCount();
        RealInput::click(f.inspector->viewport(), f.marker(row));
        QTRY_COMPARE(f.inspector->RowCount(), rows + 4);
        RealInput::click(f.inspector->viewport(), f.marker(row));
        QTRY_COMPARE(f.inspector->RowCount(), rows);
        f.type(QStringLiteral("text"), QStringLiteral("Tested"));
        QTRY_COMPARE(f.b1->text(), QStringLiteral("Tested"));
        f.inspector->SetActiveComponents(QList<QObject *>{f.b1, f.b2, f.b3});
        QTRY_COMPARE(f.inspector->model()->rowCount(), f.inspector->Strings()->Count());
        FreeComponent(f.b2);
        QTRY_VERIFY(!f.inspector->GetActiveComponents().contains(f.b2));
        f.inspector->ClearActiveComponents();
        QCOMPARE(f.inspector->model()->rowCount(), f.inspector->Strings()->Count());
    }

    // Lines whose rows were rebuilt for a new selection are never read
    // from the rows that went: a value typed (its line stays current, with
    // its editor) and then a new selection given by the application.
    void aNewSelectionAfterATypedValueReadsOnlyTheNewRows()
    {
        Fixture f;
        f.inspector->SetActiveComponent(f.b1);
        QVERIFY(f.show());
        f.type(QStringLiteral("text"), QStringLiteral("Typed"));
        QTRY_COMPARE(f.b1->text(), QStringLiteral("Typed"));
        f.inspector->SetActiveComponents(QList<QObject *>{f.b1, f.b2, f.b3});
        QCOMPARE(f.inspector->GetActiveComponents().size(), 3);
        // They disagree on their text: it shows empty.
        QTRY_COMPARE(f.value(QStringLiteral("text")), QString());
        QCOMPARE(f.value(QStringLiteral("objectName")), QString());
        QCOMPARE(f.value(QStringLiteral("autoRepeatDelay")), QStringLiteral("300"));
    }

    void theGridShowsTheActiveComponentsProperties()
    {
        Fixture f;
        f.inspector->SetActiveComponent(f.b1);
        QCOMPARE(f.inspector->ActiveComponent(), f.b1);
        QCOMPARE(f.value(QStringLiteral("objectName")), QStringLiteral("Button1"));
        QCOMPARE(f.value(QStringLiteral("text")), QStringLiteral("Button1"));
        QCOMPARE(f.inspector->Strings()->Count(), f.inspector->model()->rowCount());
        QCOMPARE(f.inspector->OwnerComponent(), f.form.get());
        // No title row: row n is line n.
        QVERIFY(f.inspector->horizontalHeader()->isHidden());
        QCOMPARE(f.inspector->model()->index(3, 0).data().toString(), f.inspector->Strings()->Names(3));
    }

    void settingTheSameActiveComponentTwiceRebuildsNothing()
    {
        Fixture f;
        QSignalSpy changed(f.inspector.get(), &TVhoObjInspector::OnChangeActiveComponent);
        QSignalSpy refreshed(f.inspector.get(), &TVhoObjInspector::OnRefresh);
        f.inspector->SetActiveComponent(f.b1);
        QCOMPARE(changed.count(), 1);
        const int refreshes = refreshed.count();
        QVERIFY(refreshes >= 1);
        f.inspector->SetActiveComponent(f.b1);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(refreshed.count(), refreshes);
        f.inspector->SetActiveComponent(f.b2);
        QCOMPARE(changed.count(), 2);
    }

    void theCurrentRowIsClampedAndFallsBackToTheLast()
    {
        Fixture f;
        f.inspector->SetActiveComponent(f.b1);
        const int rows = f.inspector->RowCount();
        QVERIFY(rows > 10);
        f.inspector->SetCurrItemIndex(-5);
        QCOMPARE(f.inspector->GetCurrItemIndex(), 0);
        f.inspector->SetCurrItemIndex(rows + 10);
        QCOMPARE(f.inspector->GetCurrItemIndex(), rows - 1);
        f.inspector->SetCurrItemIndex(3);
        f.inspector->SetCurrItemIndex(rows - 1);
        f.inspector->SetCurrItemIndex(3);
        f.inspector->ReturnToOldPos();
        QCOMPARE(f.inspector->GetCurrItemIndex(), 3);
        // A refresh that leaves fewer rows lands on the last one.
        f.inspector->SetCurrItemIndex(rows - 1);
        f.inspector->SetOutputPropNames({QStringLiteral("objectName"), QStringLiteral("text")});
        f.inspector->Refresh();
        QCOMPARE(f.inspector->RowCount(), 2);
        QCOMPARE(f.inspector->GetCurrItemIndex(), 1);
    }

    void typingAValueAndEnterWritesItAtOnce()
    {
        Fixture f;
        f.inspector->SetActiveComponent(f.b1);
        QVERIFY(f.show());
        QSignalSpy named(f.inspector.get(), &TVhoObjInspector::OnPropNameChanged);
        f.type(QStringLiteral("autoRepeatDelay"), QStringLiteral("450"));
        QTRY_COMPARE(f.b1->autoRepeatDelay(), 450);
        QCOMPARE(f.value(QStringLiteral("autoRepeatDelay")), QStringLiteral("450"));
        QCOMPARE(named.count(), 1);
        QCOMPARE(named.first().at(1).toString(), QStringLiteral("autoRepeatDelay"));
        QVERIFY(f.inspector->Modified());
    }

    void aRefusedValueShowsWhyAndChangesNothing()
    {
        Fixture f;
        f.inspector->SetActiveComponent(f.b1);
        QVERIFY(f.show());
        QSignalSpy rejected(f.inspector.get(), &TVhoObjInspector::PropertyValueRejected);
        f.type(QStringLiteral("autoRepeatDelay"), QStringLiteral("abc"));
        QTRY_COMPARE(rejected.count(), 1);
        QVERIFY(f.inspector->LastError().startsWith(QStringLiteral("Invalid Property Value;")));
        QVERIFY(f.inspector->LastError().contains(QStringLiteral("abc")));
        auto *message = f.inspector->findChild<QLabel *>(QStringLiteral("qor_inspector_error"));
        QVERIFY(message && message->isVisible());
        QCOMPARE(message->text(), f.inspector->LastError());
        QCOMPARE(f.b1->autoRepeatDelay(), 300);
        QTRY_COMPARE(f.value(QStringLiteral("autoRepeatDelay")), QStringLiteral("300"));
        QVERIFY(!f.inspector->Modified());
        // The next accepted value takes the message away.
        f.type(QStringLiteral("autoRepeatDelay"), QStringLiteral("90"));
        QTRY_COMPARE(f.b1->autoRepeatDelay(), 90);
        QTRY_VERIFY(!message->isVisible());
        QCOMPARE(f.inspector->LastError(), QString());
    }

    void anUnknownEnumerationKeyIsRefused()
    {
        Fixture f;
        f.inspector->SetActiveComponent(f.b1);
        QVERIFY(f.show());
        const Qt::FocusPolicy before = f.b1->focusPolicy();
        f.type(QStringLiteral("focusPolicy"), QStringLiteral("SometimesFocus"));
        QTRY_VERIFY(!f.inspector->LastError().isEmpty());
        QCOMPARE(f.b1->focusPolicy(), before);
    }

    void aPickFromTheListIsWrittenWithoutEnter()
    {
        Fixture f;
        f.inspector->SetActiveComponent(f.b1);
        QVERIFY(f.show());
        const int row = f.row(QStringLiteral("focusPolicy"));
        QCOMPARE(f.inspector->Strings()->ItemProps(row).EditStyle, esPickList);
        RealInput::click(f.inspector->viewport(), f.cell(row, 1).center());
        QComboBox *combo = nullptr;
        QTRY_VERIFY((combo = f.inspector->viewport()->findChild<QComboBox *>()) && combo->isVisible());
        // The arrow at the right end opens the list.
        RealInput::click(combo, QPoint(combo->width() - 6, combo->height() / 2));
        QTRY_VERIFY(combo->view()->isVisible());
        const int item = combo->findText(QStringLiteral("NoFocus"));
        QVERIFY(item >= 0);
        const QModelIndex index = combo->view()->model()->index(item, 0);
        combo->view()->scrollTo(index);
        RealInput::click(combo->view()->viewport(), combo->view()->visualRect(index).center());
        QTRY_COMPARE(f.b1->focusPolicy(), Qt::NoFocus);
        QCOMPARE(f.value(QStringLiteral("focusPolicy")), QStringLiteral("NoFocus"));
    }

    void aDoubleClickExpandsAFlagsRowWhoseElementsArePicked()
    {
        Fixture f;
        f.label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        f.inspector->SetActiveComponent(f.label);
        QVERIFY(f.show());
        const int row = f.row(QStringLiteral("alignment"));
        QCOMPARE(f.inspector->Strings()->Names(row), QStringLiteral("+ alignment"));
        const int rows = f.inspector->RowCount();
        RealInput::doubleClick(f.inspector->viewport(), f.cell(row, 0).center());
        QTRY_COMPARE(f.inspector->Strings()->Names(row), QStringLiteral("- alignment"));
        QVERIFY(f.inspector->RowCount() > rows);
        QCOMPARE(f.inspector->GetCurrItemIndex(), row);
        const int right = f.row(QStringLiteral("AlignRight"));
        QVERIFY(right > row);
        QCOMPARE(f.inspector->Strings()->ValueFromIndex(right), QStringLiteral("False"));
        RealInput::click(f.inspector->viewport(), f.cell(right, 1).center());
        QComboBox *combo = nullptr;
        QTRY_VERIFY((combo = f.inspector->viewport()->findChild<QComboBox *>()) && combo->isVisible());
        RealInput::click(combo, QPoint(combo->width() - 6, combo->height() / 2));
        QTRY_VERIFY(combo->view()->isVisible());
        const QModelIndex yes = combo->view()->model()->index(combo->findText(QStringLiteral("True")), 0);
        RealInput::click(combo->view()->viewport(), combo->view()->visualRect(yes).center());
        QTRY_COMPARE(f.label->alignment(), Qt::AlignLeft | Qt::AlignRight | Qt::AlignVCenter);
        QTRY_COMPARE(f.inspector->Strings()->ValueFromIndex(f.row(QStringLiteral("alignment"))),
                     QStringLiteral("[AlignLeft,AlignRight,AlignVCenter]"));
        // A second double click folds the elements away.
        RealInput::doubleClick(f.inspector->viewport(), f.cell(f.row(QStringLiteral("alignment")), 0).center());
        QTRY_COMPARE(f.inspector->RowCount(), rows);
    }

    void theEllipsisButtonOpensTheFontDialogWhoseChoiceIsWritten()
    {
        Fixture f;
        f.inspector->SetActiveComponents(QList<QObject *>{f.b1, f.b2});
        QVERIFY(f.show());
        const int row = f.row(QStringLiteral("font"));
        QCOMPARE(f.inspector->Strings()->ItemProps(row).EditStyle, esEllipsis);
        RealInput::click(f.inspector->viewport(), f.cell(row, 1).center());
        QToolButton *button = nullptr;
        QTRY_VERIFY((button = f.inspector->viewport()->findChild<QToolButton *>(QStringLiteral("qor_inplace_button")))
                    && button->isVisible());
        const auto driven = QorGuiTest::whenModalOpens([](QWidget *modal) {
            auto *dialog = qobject_cast<QFontDialog *>(modal);
            QVERIFY(dialog);
            QLineEdit *size = QorGuiTest::numberField(dialog);
            QVERIFY(size);
            RealInput::click(size);
            RealInput::key("a", Qt::ControlModifier);
            RealInput::typeText(QStringLiteral("19"));
            RealInput::key("Tab");
            RealInput::click(dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok));
        });
        RealInput::click(button);
        QTRY_VERIFY(*driven);
        QTRY_COMPARE(f.b1->font().pointSize(), 19);
        QCOMPARE(f.b2->font().pointSize(), 19);
        QTRY_VERIFY(f.value(QStringLiteral("font")).endsWith(QStringLiteral(", 19")));
    }

    void aDoubleClickOnARowWithADialogOpensIt()
    {
        Fixture f;
        f.inspector->SetActiveComponent(f.b1);
        QVERIFY(f.show());
        const int row = f.row(QStringLiteral("toolTip"));
        const auto driven = QorGuiTest::whenModalOpens([](QWidget *modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("QorTextDialog"));
            RealInput::click(modal->findChild<QPlainTextEdit *>());
            RealInput::typeText(QStringLiteral("Press me"));
            RealInput::click(modal->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok));
        });
        RealInput::doubleClick(f.inspector->viewport(), f.cell(row, 0).center());
        QTRY_VERIFY(*driven);
        QTRY_COMPARE(f.b1->toolTip(), QStringLiteral("Press me"));
        QTRY_COMPARE(f.value(QStringLiteral("toolTip")), QStringLiteral("Press me"));
    }

    void theColumnLineFollowsTheMouseExactlyWithoutLimit()
    {
        Fixture f;
        f.inspector->SetActiveComponent(f.b1);
        QVERIFY(f.show());
        QWidget *viewport = f.inspector->viewport();
        const int start = f.inspector->ColWidth0();
        QCOMPARE(start, 100);
        QVERIFY(f.inspector->PosAtColLine(start + 3));
        QVERIFY(f.inspector->PosAtColLine(start - 3));
        QVERIFY(!f.inspector->PosAtColLine(start + 4));
        // Over the line the cursor turns into the splitter's.
        RealInput::moveTo(viewport, QPoint(start + 1, 30), 2);
        QTRY_COMPARE(viewport->cursor().shape(), Qt::SplitHCursor);
        RealInput::drag(viewport, QPoint(start + 1, 30), QPoint(start + 38, 30), 5);
        QTRY_COMPARE(f.inspector->ColWidth0(), start + 37);
        QVERIFY(!f.inspector->Resizing());
        // Past the grid's right edge and out of its window: no maximum,
        // and the release out there ends the drag.
        const int edge = f.inspector->ColWidth0();
        const int beyond = f.inspector->width() + 60 - edge;
        RealInput::drag(viewport, QPoint(edge, 40), QPoint(edge + beyond, 40), 6);
        QTRY_COMPARE(f.inspector->ColWidth0(), edge + beyond);
        QVERIFY(!f.inspector->Resizing());
        // Away from the line the cursor is the grid's own again.
        RealInput::moveTo(viewport, QPoint(20, 30), 2);
        QTRY_VERIFY(viewport->cursor().shape() != Qt::SplitHCursor);
    }

    void aValueTypedForThreeWidgetsReachesAllThree()
    {
        Fixture f;
        f.inspector->SetActiveComponents(QList<QObject *>{f.b1, f.b2, f.b3});
        QVERIFY(f.show());
        // They disagree on their text: it shows empty.
        QCOMPARE(f.value(QStringLiteral("text")), QString());
        QCOMPARE(f.value(QStringLiteral("autoRepeatInterval")), QStringLiteral("100"));
        f.type(QStringLiteral("autoRepeatInterval"), QStringLiteral("60"));
        QTRY_COMPARE(f.b3->autoRepeatInterval(), 60);
        QCOMPARE(f.b1->autoRepeatInterval(), 60);
        QCOMPARE(f.b2->autoRepeatInterval(), 60);
        QCOMPARE(f.value(QStringLiteral("autoRepeatInterval")), QStringLiteral("60"));
        f.type(QStringLiteral("text"), QStringLiteral("Same"));
        QTRY_COMPARE(f.b3->text(), QStringLiteral("Same"));
        QCOMPARE(f.b1->text(), QStringLiteral("Same"));
        QCOMPARE(f.b2->text(), QStringLiteral("Same"));
    }

    // A value typed for a hundred buttons reaches them all; their form is
    // held from repainting only while they are written, also when the
    // value is refused.
    void aValueTypedForAHundredButtonsRepaintsTheirFormOnce()
    {
        Fixture f;
        QList<QObject *> many;
        for (int i = 0; i < 100; ++i) {
            auto *b = new QPushButton(QStringLiteral("M%1").arg(i), f.form.get());
            b->setObjectName(QStringLiteral("Many%1").arg(i));
            b->setGeometry(4 * (i % 10), 60 + 4 * (i / 10), 30, 20);
            InsertComponent(f.form.get(), b);
            many.append(b);
        }
        PaintCounter paints(f.form.get());
        f.inspector->SetActiveComponents(many);
        QVERIFY(f.show());
        paints.count = 0;
        f.type(QStringLiteral("enabled"), QStringLiteral("False"));
        QTRY_VERIFY(std::none_of(many.begin(), many.end(), [](QObject *b) { return static_cast<QWidget *>(b)->isEnabled(); }));
        QVERIFY(f.form->updatesEnabled());
        // The form was repainted after the change.
        QTRY_VERIFY(paints.count > 0);
        QSignalSpy rejected(f.inspector.get(), &TVhoObjInspector::PropertyValueRejected);
        f.type(QStringLiteral("autoRepeatInterval"), QStringLiteral("abc"));
        QTRY_COMPARE(rejected.count(), 1);
        QVERIFY(f.form->updatesEnabled());
        QCOMPARE(static_cast<QPushButton *>(many.first())->autoRepeatInterval(), 100);
    }

    // The grid's cells look exactly as the style draws an item view's
    // cells: names, values, greyed values, the selected line, and values
    // cut short with an ellipsis in a narrow column.
    void theCellsLookAsTheStyleDrawsThem()
    {
        Fixture f;
        f.inspector->SetActiveComponents(QList<QObject *>{f.b1});
        QVERIFY(f.show());
        f.inspector->selectRow(2);
        auto compare = [&f] {
            QAbstractItemDelegate *ours = f.inspector->itemDelegate();
            const QImage mine = f.inspector->grab().toImage();
            QStyledItemDelegate plain;
            f.inspector->setItemDelegate(&plain);
            const QImage styles = f.inspector->grab().toImage();
            f.inspector->setItemDelegate(ours);
            return mine == styles;
        };
        QVERIFY(compare());
        f.inspector->setColumnWidth(0, 40);
        QVERIFY(compare());
    }

    // A shown component the application frees leaves the grid, which shows
    // the others' lines; typing into it afterwards reaches only those.
    void aFreedComponentLeavesTheGridWhichShowsTheRest()
    {
        Fixture f;
        f.b1->setText(QStringLiteral("Same"));
        f.b2->setText(QStringLiteral("Same"));
        f.b3->setText(QStringLiteral("Other"));
        f.inspector->SetActiveComponents(QList<QObject *>{f.b1, f.b2, f.b3});
        QVERIFY(f.show());
        QCOMPARE(f.value(QStringLiteral("text")), QString());
        QSignalSpy changed(f.inspector.get(), &TVhoObjInspector::OnChangeActiveComponent);
        delete f.b3;
        QTRY_COMPARE(f.inspector->GetActiveComponents(), (QList<QObject *>{f.b1, f.b2}));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(f.value(QStringLiteral("text")), QStringLiteral("Same"));
        f.type(QStringLiteral("autoRepeatInterval"), QStringLiteral("70"));
        QTRY_COMPARE(f.b2->autoRepeatInterval(), 70);
        QCOMPARE(f.b1->autoRepeatInterval(), 70);
        // Two freed at once: one rebuild, and the grid is empty.
        delete f.b1;
        delete f.b2;
        QTRY_VERIFY(f.inspector->GetActiveComponents().isEmpty());
        QCOMPARE(changed.count(), 2);
        QCOMPARE(f.inspector->Strings()->Count(), 0);
        // A component no longer shown goes without a rebuild.
        f.inspector->SetActiveComponent(f.label);
        QCOMPARE(changed.count(), 3);
        auto *spare = new QLabel(f.form.get());
        f.inspector->SetActiveComponent(spare);
        f.inspector->SetActiveComponent(f.label);
        QCOMPARE(changed.count(), 5);
        delete spare;
        QVERIFY(!QTest::qWaitFor([&] { return changed.count() > 5; }, 100));
        QCOMPARE(f.inspector->ActiveComponent(), f.label);
        // Shown, left and shown again, a component is still followed.
        auto *again = new QLabel(f.form.get());
        f.inspector->SetActiveComponents(QList<QObject *>{again, f.label});
        f.inspector->SetActiveComponent(f.label);
        f.inspector->SetActiveComponents(QList<QObject *>{again, f.label});
        delete again;
        QTRY_COMPARE(f.inspector->GetActiveComponents(), (QList<QObject *>{f.label}));
        // A new component born where a freed one lived is followed too.
        auto *reborn = new QLabel(f.form.get());
        f.inspector->SetActiveComponents(QList<QObject *>{reborn, f.label});
        delete reborn;
        QTRY_COMPARE(f.inspector->GetActiveComponents(), (QList<QObject *>{f.label}));
    }

    // ---- Values with fields typed whole ----

    void aRectangleTypedIntoTheGeometryRowMovesAndResizesTheWidget()
    {
        Fixture f;
        f.inspector->SetActiveComponent(f.b1);
        QVERIFY(f.show());
        QCOMPARE(f.value(QStringLiteral("geometry")), QStringLiteral("[(20, 20), 80 x 30]"));
        f.type(QStringLiteral("geometry"), QStringLiteral("[(150, 60), 90 x 40]"));
        QTRY_COMPARE(f.b1->geometry(), QRect(150, 60, 90, 40));
        QTRY_COMPARE(f.value(QStringLiteral("geometry")), QStringLiteral("[(150, 60), 90 x 40]"));
        // Four plain numbers do as well.
        f.type(QStringLiteral("geometry"), QStringLiteral("30, 40, 100, 35"));
        QTRY_COMPARE(f.b1->geometry(), QRect(30, 40, 100, 35));
        QTRY_COMPARE(f.value(QStringLiteral("geometry")), QStringLiteral("[(30, 40), 100 x 35]"));
        QCOMPARE(f.inspector->LastError(), QString());
        QVERIFY(f.inspector->Modified());
    }

    void aSizeTypedForTwoWidgetsReachesBoth()
    {
        Fixture f;
        f.inspector->SetActiveComponents(QList<QObject *>{f.b1, f.b2});
        QVERIFY(f.show());
        f.type(QStringLiteral("minimumSize"), QStringLiteral("60x20"));
        QTRY_COMPARE(f.b2->minimumSize(), QSize(60, 20));
        QCOMPARE(f.b1->minimumSize(), QSize(60, 20));
        QTRY_COMPARE(f.value(QStringLiteral("minimumSize")), QStringLiteral("60 x 20"));
        // A font typed in its own text: family and size; each keeps the rest.
        QFont bold = f.b1->font();
        bold.setBold(true);
        f.b1->setFont(bold);
        f.type(QStringLiteral("font"), QStringLiteral("Serif, 17"));
        QTRY_COMPARE(f.b2->font().pointSize(), 17);
        QCOMPARE(f.b1->font().family(), QStringLiteral("Serif"));
        QVERIFY(f.b1->font().bold());
        QVERIFY(!f.b2->font().bold());
    }

    void aRectangleThatDoesNotReadIsRefusedAndChangesNothing()
    {
        Fixture f;
        f.inspector->SetActiveComponent(f.b1);
        QVERIFY(f.show());
        QSignalSpy rejected(f.inspector.get(), &TVhoObjInspector::PropertyValueRejected);
        f.type(QStringLiteral("geometry"), QStringLiteral("10, 20, wide, 30"));
        QTRY_COMPARE(rejected.count(), 1);
        QCOMPARE(rejected.first().at(0).toString(), QStringLiteral("geometry"));
        QVERIFY(f.inspector->LastError().startsWith(QStringLiteral("Invalid Property Value;")));
        QVERIFY(f.inspector->LastError().contains(QStringLiteral("10, 20, wide, 30")));
        QCOMPARE(f.b1->geometry(), QRect(20, 20, 80, 30));
        QTRY_COMPARE(f.value(QStringLiteral("geometry")), QStringLiteral("[(20, 20), 80 x 30]"));
        QVERIFY(!f.inspector->Modified());
    }

    // ---- The expand marker ----

    void oneClickOnTheMarkerOpensTheRowAndOneMoreClosesIt()
    {
        Fixture f;
        f.inspector->SetActiveComponent(f.b1);
        QVERIFY(f.show());
        const int row = f.row(QStringLiteral("geometry"));
        QCOMPARE(f.inspector->Strings()->Names(row), QStringLiteral("+ geometry"));
        const int rows = f.inspector->RowCount();
        // A click on the name away from the marker only picks the line.
        RealInput::click(f.inspector->viewport(), f.cell(row, 0).center());
        QTRY_COMPARE(f.inspector->GetCurrItemIndex(), row);
        QVERIFY(!QTest::qWaitFor([&] { return f.inspector->RowCount() != rows; }, 300));
        RealInput::click(f.inspector->viewport(), f.marker(row));
        QTRY_COMPARE(f.inspector->Strings()->Names(row), QStringLiteral("- geometry"));
        QCOMPARE(f.inspector->RowCount(), rows + 4);
        // The fields of a rectangle: x, y, width, height.
        QCOMPARE(f.inspector->Strings()->Names(row + 1).trimmed(), QStringLiteral("x"));
        QCOMPARE(f.inspector->Strings()->Names(row + 2).trimmed(), QStringLiteral("y"));
        QCOMPARE(f.inspector->Strings()->Names(row + 3).trimmed(), QStringLiteral("width"));
        QCOMPARE(f.inspector->Strings()->Names(row + 4).trimmed(), QStringLiteral("height"));
        QCOMPARE(f.inspector->GetCurrItemIndex(), row);
        // The "-" closes it again (also when the click comes quick enough
        // to make a double click: each click on a marker counts).
        RealInput::click(f.inspector->viewport(), f.marker(row));
        QTRY_COMPARE(f.inspector->Strings()->Names(row), QStringLiteral("+ geometry"));
        QCOMPARE(f.inspector->RowCount(), rows);
    }

    void theMarkerOpensAFlagsRowWhoseElementLinesHaveNone()
    {
        Fixture f;
        f.inspector->SetActiveComponent(f.label);
        QVERIFY(f.show());
        const int alignment = f.row(QStringLiteral("alignment"));
        QCOMPARE(f.inspector->Strings()->Names(alignment), QStringLiteral("+ alignment"));
        const QRect marker = f.inspector->MarkerRect(alignment);
        QVERIFY(!marker.isEmpty());
        RealInput::click(f.inspector->viewport(), marker.center());
        QTRY_COMPARE(f.inspector->Strings()->Names(alignment), QStringLiteral("- alignment"));
        QCOMPARE(f.inspector->Strings()->Names(alignment + 1).trimmed(), QStringLiteral("AlignLeft"));
        // Element lines have no marker.
        QVERIFY(f.inspector->MarkerRect(alignment + 1).isEmpty());
    }

    // ---- Read-only properties ----

    void aPropertyThatCannotBeWrittenIsGreyAndTakesNoTyping()
    {
        Fixture f;
        f.inspector->SetActiveComponent(f.b1);
        QVERIFY(f.show());
        const int row = f.row(QStringLiteral("x"));
        QVERIFY(row >= 0);
        QVERIFY(f.inspector->Strings()->ItemProps(row).Locked);
        const QModelIndex value = f.inspector->model()->index(row, 1);
        const QColor grey = f.inspector->palette().color(QPalette::Disabled, QPalette::Text);
        QCOMPARE(value.data(Qt::ForegroundRole).value<QBrush>().color(), grey);
        QVERIFY(grey != f.inspector->palette().color(QPalette::Active, QPalette::Text));
        QVERIFY(!(value.flags() & Qt::ItemIsEditable));
        // A writable line keeps the normal text.
        QVERIFY(!f.inspector->model()->index(f.row(QStringLiteral("text")), 1).data(Qt::ForegroundRole).isValid());

        RealInput::click(f.inspector->viewport(), f.cell(row, 1).center());
        QTRY_COMPARE(f.inspector->GetCurrItemIndex(), row);
        QVERIFY(!QTest::qWaitFor([&] { return f.inspector->InplaceEditor() != nullptr; }, 300));
        QCOMPARE(QApplication::focusWidget(), f.inspector.get());
        // Typed keys neither open an editor nor go looking for another line
        // (the values "Button1" begin like this text).
        RealInput::typeText(QStringLiteral("Button2"));
        RealInput::typeText(QStringLiteral("77"));
        RealInput::key("Return");
        QVERIFY(!QTest::qWaitFor([&] { return f.inspector->InplaceEditor() != nullptr; }, 300));
        QCOMPARE(f.inspector->GetCurrItemIndex(), row);
        QCOMPARE(f.b1->x(), 20);
        QCOMPARE(f.b1->text(), QStringLiteral("Button1"));
        QCOMPARE(f.b1->objectName(), QStringLiteral("Button1"));
        QCOMPARE(f.value(QStringLiteral("x")), QStringLiteral("20"));
        QCOMPARE(f.inspector->LastError(), QString());
        QVERIFY(!f.inspector->Modified());
    }

    void theFieldsOfAValueThatCannotBeWrittenAreGreyToo()
    {
        Fixture f;
        f.inspector->SetActiveComponent(f.form.get());
        const int frame = f.row(QStringLiteral("frameGeometry"));
        QVERIFY(frame >= 0);
        QVERIFY(f.inspector->Strings()->ItemProps(frame).Locked);
        f.inspector->PropList()->GetPropItemsByName(QStringLiteral("frameGeometry"))->SetExpanded(true);
        QCOMPARE(f.inspector->Strings()->Names(frame + 3).trimmed(), QStringLiteral("width"));
        QVERIFY(f.inspector->Strings()->ItemProps(frame + 3).Locked);
        const int geometry = f.row(QStringLiteral("geometry"));
        QVERIFY(!f.inspector->Strings()->ItemProps(geometry).Locked);
        QVERIFY(!f.inspector->Strings()->ItemProps(geometry).ReadOnly);
    }

    // ---- The message of a refused value ----

    void escapeTakesTheMessageAway()
    {
        Fixture f;
        f.inspector->SetActiveComponent(f.b1);
        QVERIFY(f.show());
        auto *message = f.inspector->findChild<QLabel *>(QStringLiteral("qor_inspector_error"));
        f.type(QStringLiteral("autoRepeatDelay"), QStringLiteral("abc"));
        QTRY_VERIFY(message->isVisible());
        const int row = f.row(QStringLiteral("autoRepeatDelay"));
        QCOMPARE(f.inspector->GetCurrItemIndex(), row);
        QTRY_COMPARE(QApplication::focusWidget(), f.inspector.get());
        RealInput::key("Escape");
        QTRY_VERIFY(!message->isVisible());
        QCOMPARE(f.inspector->LastError(), QString());
        QCOMPARE(f.inspector->GetCurrItemIndex(), row);
        QCOMPARE(f.inspector->InplaceEditor(), nullptr);
        QCOMPARE(f.b1->autoRepeatDelay(), 300);
        // With the line's editor open again (F2), Escape gives the edit up
        // and takes the message away as well.
        const int interval = f.row(QStringLiteral("autoRepeatInterval"));
        f.type(QStringLiteral("autoRepeatInterval"), QStringLiteral("xyz"));
        QTRY_VERIFY(message->isVisible());
        QTRY_COMPARE(QApplication::focusWidget(), f.inspector.get());
        QCOMPARE(f.inspector->GetCurrItemIndex(), interval);
        RealInput::key("F2");
        QTRY_VERIFY(qobject_cast<QLineEdit *>(QApplication::focusWidget()));
        QVERIFY(message->isVisible());
        RealInput::typeText(QStringLiteral("5"));
        RealInput::key("Escape");
        QTRY_VERIFY(!message->isVisible());
        QCOMPARE(f.b1->autoRepeatInterval(), 100);
        QTRY_COMPARE(f.value(QStringLiteral("autoRepeatInterval")), QStringLiteral("100"));
    }

    void movingToAnotherLineTakesTheMessageAway()
    {
        Fixture f;
        f.inspector->SetActiveComponent(f.b1);
        QVERIFY(f.show());
        auto *message = f.inspector->findChild<QLabel *>(QStringLiteral("qor_inspector_error"));
        const int row = f.row(QStringLiteral("autoRepeatDelay"));
        // With the arrow key...
        f.type(QStringLiteral("autoRepeatDelay"), QStringLiteral("abc"));
        QTRY_VERIFY(message->isVisible());
        QTRY_COMPARE(QApplication::focusWidget(), f.inspector.get());
        RealInput::key("Down");
        QTRY_VERIFY(!message->isVisible());
        QCOMPARE(f.inspector->GetCurrItemIndex(), row + 1);
        // ...and with a click on another line.
        f.type(QStringLiteral("autoRepeatInterval"), QStringLiteral("abc"));
        QTRY_VERIFY(message->isVisible());
        // A line above: the message covers the grid's last lines.
        const int other = row - 1;
        RealInput::click(f.inspector->viewport(), f.cell(other, 0).center());
        QTRY_COMPARE(f.inspector->GetCurrItemIndex(), other);
        QTRY_VERIFY(!message->isVisible());
        QCOMPARE(f.inspector->LastError(), QString());
    }

    void aValueRefusedOnTheWayToAnotherLineStillShowsItsMessage()
    {
        Fixture f;
        f.inspector->SetActiveComponent(f.b1);
        QVERIFY(f.show());
        auto *message = f.inspector->findChild<QLabel *>(QStringLiteral("qor_inspector_error"));
        const int row = f.row(QStringLiteral("autoRepeatDelay"));
        RealInput::click(f.inspector->viewport(), f.cell(row, 1).center());
        QTRY_VERIFY(qobject_cast<QLineEdit *>(QApplication::focusWidget()));
        RealInput::key("a", Qt::ControlModifier);
        RealInput::typeText(QStringLiteral("abc"));
        // Leaving the line hands the text over; its refusal comes after.
        const int other = f.row(QStringLiteral("objectName"));
        RealInput::click(f.inspector->viewport(), f.cell(other, 0).center());
        QTRY_VERIFY(message->isVisible());
        QVERIFY(f.inspector->LastError().contains(QStringLiteral("abc")));
        QCOMPARE(f.b1->autoRepeatDelay(), 300);
    }

    // ---- Which properties are listed, and how they read ----

    void aControlInsideAFormListsNoWindowProperties()
    {
        Fixture f;
        const QStringList windowOnly = {QStringLiteral("windowTitle"),   QStringLiteral("windowIcon"),
                                        QStringLiteral("windowOpacity"), QStringLiteral("windowModality"),
                                        QStringLiteral("windowModified"), QStringLiteral("windowFilePath"),
                                        QStringLiteral("windowIconText"), QStringLiteral("fullScreen"),
                                        QStringLiteral("minimized"),     QStringLiteral("maximized"),
                                        QStringLiteral("isActiveWindow"), QStringLiteral("modal"),
                                        QStringLiteral("frameGeometry"), QStringLiteral("frameSize"),
                                        QStringLiteral("normalGeometry")};
        f.inspector->SetActiveComponent(f.b1);
        for (const QString &name : windowOnly)
            QVERIFY2(f.row(name) < 0, qPrintable(name));
        QVERIFY(f.row(QStringLiteral("geometry")) >= 0);
        QVERIFY(f.row(QStringLiteral("toolTip")) >= 0);
        // The form itself is a window: it lists them.
        f.inspector->SetActiveComponent(f.form.get());
        for (const QString &name : windowOnly)
            QVERIFY2(f.row(name) >= 0, qPrintable(name));
        // A window among the selection does not bring them back for a control.
        f.inspector->SetActiveComponents(QList<QObject *>{f.form.get(), f.b1});
        QCOMPARE(f.row(QStringLiteral("windowTitle")), -1);
        QVERIFY(f.row(QStringLiteral("geometry")) >= 0);
    }

    void aFormInsideTheApplicationsWindowKeepsItsWindowProperties()
    {
        Fixture f;
        QWidget host;
        f.form->setParent(&host);
        QVERIFY(!f.form->isWindow());
        f.inspector->SetActiveComponent(f.form.get());
        QVERIFY(f.row(QStringLiteral("windowTitle")) >= 0);
        f.inspector->SetActiveComponent(f.b2);
        QCOMPARE(f.row(QStringLiteral("windowTitle")), -1);
        f.form->setParent(nullptr);
    }

    void aPictureCursorReadsAsItsNumber()
    {
        Fixture f;
        QPixmap picture(16, 16);
        picture.fill(Qt::red);
        f.label->setCursor(QCursor(picture));
        f.inspector->SetActiveComponent(f.label);
        QCOMPARE(f.value(QStringLiteral("cursor")), QStringLiteral("24"));
        f.label->setCursor(Qt::IBeamCursor);
        f.inspector->RefreshValues();
        QCOMPARE(f.value(QStringLiteral("cursor")), QStringLiteral("IBeamCursor"));
    }

    // ---- Values read as lines are shown ----

    void refreshedValuesInViewAreReadAtOnceTheOthersWhenShown()
    {
        Fixture f;
        f.inspector->resize(320, 200);
        f.inspector->SetActiveComponents(QList<QObject *>{f.b1, f.b2});
        QVERIFY(f.show());
        QTRY_VERIFY(!f.inspector->Strings()->ValuePending(0));
        const int top = f.row(QStringLiteral("autoDefault"));
        const int bottom = f.row(QStringLiteral("whatsThis"));
        QVERIFY(top >= 0 && bottom > top);
        QVERIFY(f.inspector->visualRect(f.inspector->model()->index(top, 1)).intersects(f.inspector->viewport()->rect()));
        QVERIFY(!f.inspector->visualRect(f.inspector->model()->index(bottom, 1)).intersects(f.inspector->viewport()->rect()));
        // Lines nobody has looked at are not read.
        QVERIFY(f.inspector->Strings()->ValuePending(bottom));
        QSignalSpy lines(f.inspector->Strings(), &TValueListStrings::LineChanged);
        for (QPushButton *b : {f.b1, f.b2}) {
            b->setAutoDefault(true);
            b->setWhatsThis(QStringLiteral("Help"));
        }
        f.inspector->RefreshValues();
        // The line in view is read now and announced...
        QVERIFY(!f.inspector->Strings()->ValuePending(top));
        QCOMPARE(lines.count(), 1);
        QCOMPARE(lines.first().at(0).toInt(), top);
        QCOMPARE(f.inspector->Strings()->ValueFromIndex(top), QStringLiteral("True"));
        // ...the other one when shown.
        QVERIFY(f.inspector->Strings()->ValuePending(bottom));
        f.inspector->scrollTo(f.inspector->model()->index(bottom, 1));
        QTRY_VERIFY(!f.inspector->Strings()->ValuePending(bottom));
        QCOMPARE(f.value(QStringLiteral("whatsThis")), QStringLiteral("Help"));
    }

    void theDesignSurfaceFeedsTheInspectorAndFollowsItsEdits()
    {
        Fixture f;
        auto *manager = new TQorDesignManager(f.form.get());
        manager->SetObjInspector(f.inspector.get());
        manager->SetIsDesigning(true);
        QVERIFY(f.show());
        RealInput::click(f.b2);
        QTRY_COMPARE(f.inspector->ActiveComponent(), f.b2);
        QCOMPARE(f.value(QStringLiteral("objectName")), QStringLiteral("Button2"));
        // The geometry's fields: the left edge typed moves the widget and
        // its sizer comes along.
        const int geometry = f.row(QStringLiteral("geometry"));
        RealInput::doubleClick(f.inspector->viewport(), f.cell(geometry, 0).center());
        QTRY_COMPARE(f.inspector->Strings()->Names(geometry), QStringLiteral("- geometry"));
        f.type(QStringLiteral("x"), QStringLiteral("150"));
        QTRY_COMPARE(f.b2->geometry(), QRect(150, 20, 80, 30));
        TQorSizer *sizer = manager->Sizers()->SizerOf(f.b2);
        QVERIFY(sizer);
        QTRY_COMPARE(sizer->geometry(), QRect(148, 18, 84, 34));
        // Two selected on the stage: the inspector shows both.
        RealInput::click(f.b3, QPoint(-1, -1), Qt::LeftButton, Qt::ShiftModifier);
        QTRY_COMPARE(f.inspector->GetActiveComponents(), QList<QObject *>({f.b2, f.b3}));
    }
};

QTEST_MAIN(tst_QorInspector)
#include "tst_qorinspector.moc"
