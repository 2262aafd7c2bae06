#include "qorguitest.h"

#include <QApplication>
#include <QTest>
#include <QWidget>

namespace QorGuiTest {

bool showAndActivate(QWidget *window, const QPoint &at)
{
    window->move(at);
    window->show();
    if (!QTest::qWaitForWindowExposed(window))
        return false;
    window->activateWindow();
    window->raise();
    return QTest::qWaitForWindowActive(window);
}

int liveTopLevelWidgets()
{
    int count = 0;
    for (QWidget *w : QApplication::topLevelWidgets()) {
        // Menus and tool tips hide themselves and are kept by Qt for reuse.
        if (w->isWindow() && !w->inherits("QMenu") && !w->inherits("QTipLabel")
            && !w->objectName().startsWith(QLatin1String("qt_")))
            ++count;
    }
    return count;
}

} // namespace QorGuiTest
