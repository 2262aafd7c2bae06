// SPDX-License-Identifier: MIT
// Real X input for the GUI tests: pointer moves, button presses and key
// strokes injected through the XTest extension of the X server the tests
// run on, so that they reach Qt exactly as a user's input does (through the
// window system, the top-level window and every event filter on the way).
#pragma once

#include <QPoint>
#include <QRect>
#include <QString>
#include <Qt>

class QWidget;

namespace RealInput {

// Opens the test process's own connection to the display and checks for
// XTest. Every other function opens it on first use; false means that no
// real input can be given (no X display, or a server without XTest).
bool open();

// Whether each function below lets Qt read its events before it returns
// (on by default). Off, a function returns as soon as the X server has
// taken the input: the benchmark times a gesture from its first event and
// waits for the effect itself, and a fixed pause would count as the
// program's time.
void setSettling(bool On);

// The pointer's position in global (root window) coordinates.
QPoint pointer();

// Moves the pointer to a global position in `steps` equal steps from where
// it is now, letting Qt read its events after each step.
void moveTo(const QPoint &global, int steps = 1);
// Moves to a point given in the widget's own coordinates.
void moveTo(const QWidget *widget, const QPoint &local, int steps = 1);

void press(Qt::MouseButton button = Qt::LeftButton);
void release(Qt::MouseButton button = Qt::LeftButton);

// Moves to the point (the widget's centre when none is given), holds the
// modifiers, presses and releases the button, lets the modifiers go.
void click(const QWidget *widget, const QPoint &local = QPoint(-1, -1),
           Qt::MouseButton button = Qt::LeftButton,
           Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void doubleClick(const QWidget *widget, const QPoint &local = QPoint(-1, -1));
// The same at a global position: for the windows of other programs.
void clickAt(const QPoint &global, Qt::MouseButton button = Qt::LeftButton,
             Qt::KeyboardModifiers modifiers = Qt::NoModifier);

// Where the mapped top-level window of any program whose title contains
// `title` is on the screen (the first such window found, stacked highest);
// an empty rectangle when there is none. Other programs' windows are found
// this way to be driven with real input. With Qt::MatchExactly the title
// must be `title` itself: a program may name its main window with a text
// its other windows' titles end with.
QRect windowNamed(const QString &title, Qt::MatchFlags match = Qt::MatchContains);

// Gives the keyboard to the top-level window at a global position, as a
// click-to-focus window manager does when the window is clicked (under
// Xvfb there is none). False when no window is there.
bool focusWindowAt(const QPoint &global);

// Press-move-release from one point of the widget to another, the move in
// `steps` steps.
void drag(const QWidget *widget, const QPoint &from, const QPoint &to, int steps = 8,
          Qt::MouseButton button = Qt::LeftButton);

// Turns the wheel over the widget's point (its centre when none is given)
// by the given number of notches: positive away from the user.
void wheel(const QWidget *widget, int notches, const QPoint &local = QPoint(-1, -1));

// A key by its X keysym name ("a", "Delete", "Left", "Return", "F2"),
// pressed and released with the modifiers held around it.
void key(const char *keysym, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void keyDown(const char *keysym);
void keyUp(const char *keysym);

// Holds or lets go of the keys of a set of modifiers.
void holdModifiers(Qt::KeyboardModifiers modifiers);
void releaseModifiers(Qt::KeyboardModifiers modifiers);

// Types text key by key; characters on a shifted level of the keyboard
// map are typed with Shift. False (and nothing typed from that character
// on) for a character the keyboard map does not have.
bool typeText(const QString &text);

// Lets go of every button and modifier the tests may have left held, so that
// one failed test does not leave the next one with a key down.
void releaseAll();

} // namespace RealInput
