// SPDX-License-Identifier: MIT
#include "console/qorcommanderror_p.h"

#include "foundation/qorerror.h"
#include "foundation/qorlogging_p.h"

#include <QMessageBox>
#include <QWidget>

QString QorRunCaught(const std::function<void()> &Command)
{
    try {
        Command();
        return {};
    } catch (const EQorError &error) {
        return error.message().isEmpty() ? QStringLiteral("?") : error.message();
    } catch (const std::exception &error) {
        return QString::fromUtf8(error.what());
    }
}

void QorShowCommandError(QWidget *Stage, const QString &Command, const QString &Message)
{
    const QString title = QString(Command).remove(QLatin1Char('&'));
    qCInfo(lcQorConsole).noquote() << "Command" << title << "failed:" << Message;
    auto *box = new QMessageBox(QMessageBox::Warning, title, Message, QMessageBox::Ok, Stage ? Stage->window() : nullptr);
    box->setObjectName(QStringLiteral("QorDesignCommandError"));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}
