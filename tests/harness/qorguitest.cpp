#include "qorguitest.h"

#include "foundation/vhoclipbrdutils.h"

#include <QApplication>
#include <QClipboard>
#include <QDeadlineTimer>
#include <QLineEdit>
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
        // Menus and tool tips hide themselves and are kept by Qt for reuse.
        if (w->isWindow() && !w->inherits("QMenu") && !w->inherits("QTipLabel")
            && !w->objectName().startsWith(QLatin1String("qt_")))
            ++count;
    }
    return count;
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

} // namespace QorGuiTest
