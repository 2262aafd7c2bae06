// SPDX-License-Identifier: MIT
// A second program for the clipboard test: it copies a button to the
// system clipboard and keeps it there until told to quit ("copy"), or
// pastes what the clipboard holds onto a form of its own and prints what
// it got ("paste").
#include "foundation/qorcomponents.h"
#include "foundation/vhoclipbrdutils.h"

#include <QApplication>
#include <QPushButton>
#include <QSocketNotifier>
#include <QTimer>

#include <cstdio>
#include <unistd.h>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    const QString mode = app.arguments().value(1);
    QWidget form;
    form.setObjectName(QStringLiteral("MateForm"));
    form.resize(200, 100);
    if (mode == QLatin1String("copy")) {
        auto *button = new QPushButton(QStringLiteral("From the mate"), &form);
        button->setObjectName(QStringLiteral("MateButton"));
        button->setGeometry(11, 22, 90, 30);
        InsertComponent(&form, button);
        VhoClipboard()->SetComponents(TComponentList{button}, false);
        std::printf("ready\n");
        std::fflush(stdout);
        // Owns the clipboard until a line arrives on its input.
        QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
        QObject::connect(&input, &QSocketNotifier::activated, &app, &QCoreApplication::quit);
        return app.exec();
    }
    if (mode == QLatin1String("paste")) {
        QObject *pasted = VhoClipboard()->GetComponents(&form, &form, 8, 6);
        auto *button = qobject_cast<QPushButton *>(pasted);
        if (!button) {
            std::printf("nothing\n");
            return 1;
        }
        std::printf("%s %s %s %d,%d\n", button->metaObject()->className(), qPrintable(button->objectName()),
                    qPrintable(button->text().replace(QLatin1Char(' '), QLatin1Char('_'))), button->x(), button->y());
        return 0;
    }
    return 2;
}
