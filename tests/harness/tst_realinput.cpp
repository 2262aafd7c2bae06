// SPDX-License-Identifier: MIT
// The real-input harness proves itself: input injected through XTest
// reaches ordinary Qt widgets as a user's does.
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <QWidget>

namespace {

// Records the travel of a press-move-release in local coordinates.
class TravelPad : public QWidget
{
public:
    QPoint pressAt, releaseAt;
    int moves = 0;
    bool released = false;

protected:
    void mousePressEvent(QMouseEvent *e) override { pressAt = e->position().toPoint(); }
    void mouseMoveEvent(QMouseEvent *) override { ++moves; }
    void mouseReleaseEvent(QMouseEvent *e) override
    {
        releaseAt = e->position().toPoint();
        released = true;
    }
};

// Opens a context menu on a right click and remembers it.
class MenuPad : public QWidget
{
public:
    QMenu *menu = nullptr;

protected:
    void contextMenuEvent(QContextMenuEvent *e) override
    {
        menu = new QMenu(this);
        menu->addAction(QStringLiteral("First"));
        menu->addAction(QStringLiteral("Second"));
        menu->popup(e->globalPos());
    }
};

} // namespace

class tst_RealInput : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void realClickOnAButtonEmitsClicked()
    {
        QWidget window;
        window.resize(200, 120);
        auto *button = new QPushButton(QStringLiteral("Press me"), &window);
        button->setGeometry(40, 30, 120, 40);
        QSignalSpy clicked(button, &QPushButton::clicked);
        QVERIFY(QorGuiTest::showAndActivate(&window));

        RealInput::click(button);
        QTRY_COMPARE(clicked.count(), 1);
    }

    void realClickOutsideTheButtonDoesNotClickIt()
    {
        QWidget window;
        window.resize(200, 120);
        auto *button = new QPushButton(QStringLiteral("Press me"), &window);
        button->setGeometry(40, 30, 120, 40);
        QSignalSpy clicked(button, &QPushButton::clicked);
        QVERIFY(QorGuiTest::showAndActivate(&window));

        RealInput::click(&window, QPoint(10, 100));
        RealInput::click(button);
        QTRY_COMPARE(clicked.count(), 1);
        QCOMPARE(clicked.count(), 1);
    }

    void realKeysTypeAbcIntoALineEdit()
    {
        QWidget window;
        window.resize(240, 80);
        auto *edit = new QLineEdit(&window);
        edit->setGeometry(20, 20, 200, 30);
        QVERIFY(QorGuiTest::showAndActivate(&window));
        RealInput::click(edit);
        QTRY_VERIFY(edit->hasFocus());

        QVERIFY(RealInput::typeText(QStringLiteral("abc")));
        QTRY_COMPARE(edit->text(), QStringLiteral("abc"));
    }

    void realKeysWithModifiersReachTheWidget()
    {
        QWidget window;
        window.resize(240, 80);
        auto *edit = new QLineEdit(&window);
        edit->setGeometry(20, 20, 200, 30);
        QVERIFY(QorGuiTest::showAndActivate(&window));
        RealInput::click(edit);
        QTRY_VERIFY(edit->hasFocus());

        QVERIFY(RealInput::typeText(QStringLiteral("Qor Design")));
        QTRY_COMPARE(edit->text(), QStringLiteral("Qor Design"));
        RealInput::key("a", Qt::ControlModifier); // select all
        QTRY_COMPARE(edit->selectedText(), QStringLiteral("Qor Design"));
        RealInput::key("BackSpace");
        QTRY_VERIFY(edit->text().isEmpty());
    }

    void realPressMoveReleaseReportsTheExactTravel()
    {
        TravelPad pad;
        pad.resize(400, 300);
        QVERIFY(QorGuiTest::showAndActivate(&pad));

        RealInput::drag(&pad, QPoint(50, 60), QPoint(50 + 137, 60 + 91), 10);
        QTRY_VERIFY(pad.released);
        QCOMPARE(pad.pressAt, QPoint(50, 60));
        QCOMPARE(pad.releaseAt - pad.pressAt, QPoint(137, 91));
        QVERIFY(pad.moves >= 1);
    }

    void realDragReleasedOutsideTheWindowStillEnds()
    {
        TravelPad pad;
        pad.resize(200, 150);
        QVERIFY(QorGuiTest::showAndActivate(&pad, QPoint(40, 40)));

        // The implicit grab brings the release from outside the window.
        RealInput::drag(&pad, QPoint(100, 75), QPoint(500, 400), 6);
        QTRY_VERIFY(pad.released);
        QCOMPARE(pad.releaseAt, QPoint(500, 400));
    }

    void realRightClickOpensAContextMenu()
    {
        MenuPad pad;
        pad.resize(300, 200);
        QVERIFY(QorGuiTest::showAndActivate(&pad));

        RealInput::click(&pad, QPoint(60, 50), Qt::RightButton);
        QTRY_VERIFY(pad.menu && pad.menu->isVisible());
        QCOMPARE(pad.menu->actions().size(), 2);
        const QPoint menuAt = pad.menu->pos();
        QVERIFY((menuAt - pad.mapToGlobal(QPoint(60, 50))).manhattanLength() <= 2);
        RealInput::key("Escape");
        QTRY_VERIFY(!pad.menu->isVisible());
    }

    void realWheelScrollsAScrollAreaBothWays()
    {
        QScrollArea area;
        area.resize(200, 150);
        auto *content = new QWidget;
        content->resize(180, 2000);
        area.setWidget(content);
        QVERIFY(QorGuiTest::showAndActivate(&area));
        QScrollBar *bar = area.verticalScrollBar();
        QCOMPARE(bar->value(), 0);
        RealInput::wheel(area.viewport(), -3);
        QTRY_VERIFY(bar->value() > 0);
        const int down = bar->value();
        RealInput::wheel(area.viewport(), 1);
        QTRY_VERIFY(bar->value() < down);
    }
};

QTEST_MAIN(tst_RealInput)
#include "tst_realinput.moc"
