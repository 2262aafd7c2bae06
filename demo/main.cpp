// SPDX-License-Identifier: MIT
// The demo designer. With --screenshot=FILE it shows its window, saves a
// picture of it to FILE and exits (the headless run of `make demo`).
#include "qordemowindow.h"

#include "designer/qormanager.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QPixmap>
#include <QTimer>

#include <cstdio>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("qordemo"));

    QCommandLineParser parser;
    parser.addHelpOption();
    QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                  QStringLiteral("Save a picture of the window to <file> and exit."),
                                  QStringLiteral("file"));
    parser.addOption(screenshot);
    parser.process(app);

    QorDemoWindow window;
    window.show();
    if (parser.isSet(screenshot)) {
        // The picture shows the stage designed, with three controls
        // selected.
        window.designAction()->setChecked(true);
        TQorDesignManager *manager = window.designManager();
        for (const char *name : {"LineEdit1", "CheckBox1", "ComboBox1"}) {
            if (auto *w = window.stage()->findChild<QWidget *>(QLatin1String(name)))
                manager->SelectControl(w, QPoint(-1, -1), QorDesigner::csmAdd, true, false);
        }
        const QString file = parser.value(screenshot);
        // Once the window has been laid out and painted.
        QTimer::singleShot(300, &window, [&window, file] {
            const bool saved = window.grab().save(file);
            std::printf("%s %s\n", saved ? "wrote" : "could not write", qPrintable(file));
            QCoreApplication::exit(saved ? 0 : 1);
        });
    }
    return app.exec();
}
