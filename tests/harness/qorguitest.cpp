// SPDX-License-Identifier: MIT
#include "qorguitest.h"
#include "qorrealinput.h"

#include "foundation/vhoclipbrdutils.h"

#include <QApplication>
#include <QClipboard>
#include <QDeadlineTimer>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QTest>
#include <QTimer>
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
        // Menus and tool tips hide themselves and are kept by Qt for reuse,
        // the arrange dialogs by the library.
        if (w->isWindow() && !w->inherits("QMenu") && !w->inherits("QTipLabel")
            && !w->objectName().startsWith(QLatin1String("qt_"))
            && !(w->isHidden() && w->property("qorKeptByLibrary").toBool()))
            ++count;
    }
    return count;
}

void endRealInputTest()
{
    RealInput::releaseAll();
    QTRY_COMPARE(liveTopLevelWidgets(), 0);
}

void RealInputTestCase::initTestCase()
{
    QVERIFY2(RealInput::open(), "no X display with XTest");
}

void RealInputTestCase::cleanup()
{
    endRealInputTest();
}

std::shared_ptr<bool> whenModalOpens(std::function<void(QWidget *)> Drive, int TimeoutMs)
{
    auto driven = std::make_shared<bool>(false);
    // Polls without blocking: whatever opens the window (a click, a call)
    // may still be on its way when the polling starts.
    auto *poll = new QTimer;
    poll->setInterval(20);
    auto deadline = std::make_shared<QDeadlineTimer>(TimeoutMs);
    QObject::connect(poll, &QTimer::timeout, [poll, driven, deadline, Drive = std::move(Drive)] {
        QWidget *modal = QApplication::activeModalWidget();
        if (modal && modal->isActiveWindow()) {
            poll->stop();
            poll->deleteLater();
            *driven = true;
            Drive(modal);
        } else if (deadline->hasExpired()) {
            poll->stop();
            poll->deleteLater();
        }
    });
    poll->start();
    return driven;
}

QLineEdit *numberField(QWidget *Parent)
{
    QLineEdit *found = nullptr;
    for (QLineEdit *edit : Parent->findChildren<QLineEdit *>()) {
        bool number = false;
        edit->text().toInt(&number);
        if (number)
            found = edit;
    }
    return found;
}

void putRecords(const QByteArray &Bytes)
{
    auto *data = new QMimeData;
    data->setData(CF_QorComponents(), Bytes);
    QGuiApplication::clipboard()->setMimeData(data);
}

bool chooseFromMenu(QMainWindow *Window, QMenu *Menu, const char *ActionName)
{
    if (!Window || !Menu)
        return false;
    QMenuBar *bar = Window->menuBar();
    RealInput::click(bar, bar->actionGeometry(Menu->menuAction()).center());
    if (!QTest::qWaitFor([Menu] { return Menu->isVisible(); }))
        return false;
    QAction *action = Menu->findChild<QAction *>(QLatin1String(ActionName));
    if (!action)
        action = Window->findChild<QAction *>(QLatin1String(ActionName));
    if (!action)
        return false;
    RealInput::click(Menu, Menu->actionGeometry(action).center());
    return QTest::qWaitFor([Menu] { return !Menu->isVisible(); });
}

bool chooseFromMenu(QMainWindow *Window, const char *MenuName, const char *ActionName)
{
    return Window && chooseFromMenu(Window, Window->findChild<QMenu *>(QLatin1String(MenuName)), ActionName);
}

} // namespace QorGuiTest
