// SPDX-License-Identifier: MIT
// Helpers shared by the GUI tests: showing a window so that real input
// reaches it, checking that a test left no window behind, and putting raw
// component records on the clipboard.
#pragma once

#include <QByteArray>
#include <QObject>
#include <QPoint>

#include <functional>
#include <memory>

class QLineEdit;
class QMainWindow;
class QMenu;
class QWidget;

namespace QorGuiTest {

// Shows a top-level widget at a fixed place on the screen, gives it the
// keyboard and waits until the window system has mapped, exposed and
// activated it. False when that did not happen in time.
bool showAndActivate(QWidget *window, const QPoint &at = QPoint(40, 40));

// The number of top-level widgets still alive (Qt's own hidden helper
// windows excluded): a test's cleanup() compares it with zero.
int liveTopLevelWidgets();

// The end of every real-input test function (its cleanup()): keys and
// buttons it still holds are let go, and no window of it is left alive.
// A window left over fails the test function that left it.
void endRealInputTest();

// The base of a test class whose functions use real X input: the run
// fails at once without an X display that has XTest, and every test
// function ends as endRealInputTest() says. A class that needs more at
// either point defines its own slot and calls these first.
class RealInputTestCase : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void initTestCase();
    void cleanup();
};

// Runs Drive on the next modal window once it is shown and active, from
// inside that window's own event loop: a modal dialog blocks the code
// that opened it, so the driving has to be arranged before. The flag
// turns true once Drive has run; it stays false when no modal window
// came up in time.
std::shared_ptr<bool> whenModalOpens(std::function<void(QWidget *)> Drive, int TimeoutMs = 5000);

// The last line edit inside Parent whose text is a whole number (the size
// field of a font dialog, for one); null when there is none.
QLineEdit *numberField(QWidget *Parent);

// Puts bytes on the system clipboard as component records, and nothing
// else: damaged or made-up records for the paste to cope with.
void putRecords(const QByteArray &Bytes);

// Opens a menu of the window's menu bar and picks one of its actions, by
// object name, with real clicks; false when the menu does not open, the
// action is not there, or the menu does not close. A menu found by its
// object name is the window's child of that name.
bool chooseFromMenu(QMainWindow *Window, QMenu *Menu, const char *ActionName);
bool chooseFromMenu(QMainWindow *Window, const char *MenuName, const char *ActionName);

} // namespace QorGuiTest
