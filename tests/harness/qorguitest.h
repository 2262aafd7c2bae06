// Helpers shared by the GUI tests: showing a window so that real input
// reaches it, and checking that a test left no window behind.
#pragma once

#include <QPoint>

class QWidget;

namespace QorGuiTest {

// Shows a top-level widget at a fixed place on the screen, gives it the
// keyboard and waits until the window system has mapped, exposed and
// activated it. False when that did not happen in time.
bool showAndActivate(QWidget *window, const QPoint &at = QPoint(40, 40));

// The number of top-level widgets still alive (Qt's own hidden helper
// windows excluded): a test's cleanup() compares it with zero.
int liveTopLevelWidgets();

} // namespace QorGuiTest
