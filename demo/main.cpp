// SPDX-License-Identifier: MIT
// The demo designer. With --screenshot=FILE it shows its window, saves a
// picture of it to FILE and exits (the headless run of `make demo`);
// --popup-screenshot=FILE and --dialog-screenshot=FILE picture the design
// popup menu over the stage and the size dialog instead. --chinese starts
// in Chinese. A file named on the command line is opened; work a crash
// left unsaved is offered back first.
#include "qordemowindow.h"

#include "console/qordesignpopupmenu.h"
#include "console/qordesignpossizeform.h"
#include "designer/qormanager.h"

#include <QApplication>
#include <QCheckBox>
#include <QCommandLineParser>
#include <QPixmap>
#include <QScreen>
#include <QTimer>

#include <cstdio>

namespace {

int finish(bool saved, const QString &file)
{
    std::printf("%s %s\n", saved ? "wrote" : "could not write", qPrintable(file));
    QCoreApplication::exit(saved ? 0 : 1);
    return saved ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("qordemo"));
    QApplication::setOrganizationName(QStringLiteral("QorDesign"));

    QCommandLineParser parser;
    parser.addHelpOption();
    QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                  QStringLiteral("Save a picture of the window to <file> and exit."),
                                  QStringLiteral("file"));
    QCommandLineOption popupShot(QStringLiteral("popup-screenshot"),
                                 QStringLiteral("Save a picture of the design popup menu to <file> and exit."),
                                 QStringLiteral("file"));
    QCommandLineOption dialogShot(QStringLiteral("dialog-screenshot"),
                                  QStringLiteral("Save a picture of the size dialog to <file> and exit."),
                                  QStringLiteral("file"));
    QCommandLineOption chinese(QStringLiteral("chinese"), QStringLiteral("Start in Chinese."));
    parser.addOptions({screenshot, popupShot, dialogShot, chinese});
    parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("A design to open."), QStringLiteral("[file]"));
    parser.process(app);

    QorDemoWindow window;
    const bool picture = parser.isSet(screenshot) || parser.isSet(popupShot) || parser.isSet(dialogShot);
    if (!picture)
        window.restoreLayout();
    window.show();
    // Work a crash left unsaved is offered first; else the file named.
    if (!picture && !window.offerRecovery() && !parser.positionalArguments().isEmpty())
        window.openFile(parser.positionalArguments().constFirst());
    if (parser.isSet(chinese))
        window.chineseSwitch()->setChecked(true);
    if (picture) {
        // The pictures show the stage designed, with three controls
        // selected.
        window.designAction()->setChecked(true);
        TQorDesignManager *manager = window.designManager();
        for (const char *name : {"LineEdit1", "CheckBox1", "ComboBox1"}) {
            if (auto *w = window.stage()->findChild<QWidget *>(QLatin1String(name)))
                manager->SelectControl(w, QPoint(-1, -1), QorDesigner::csmAdd, true, false);
        }
    }
    if (parser.isSet(screenshot)) {
        const QString file = parser.value(screenshot);
        // Once the window has been laid out and painted.
        QTimer::singleShot(300, &window, [&window, file] { finish(window.grab().save(file), file); });
    } else if (parser.isSet(popupShot)) {
        const QString file = parser.value(popupShot);
        QTimer::singleShot(300, &window, [&window, file] {
            QWidget *combo = window.stage()->findChild<QWidget *>(QStringLiteral("ComboBox1"));
            const QPoint at = combo->mapToGlobal(QPoint(40, combo->height() / 2));
            TQorDefDesignCompPopupMenu *menu = window.designPopupMenu();
            menu->PopupBaseOnComp(combo, at.x(), at.y());
            // Edit opened, as the user points at it.
            QTimer::singleShot(300, &window, [&window, menu, file] {
                menu->setActiveAction(menu->actions().value(0));
                if (QMenu *edit = menu->actions().value(0)->menu())
                    edit->popup(menu->mapToGlobal(menu->actionGeometry(menu->actions().value(0)).topRight()));
                QTimer::singleShot(300, &window, [&window, menu, file] {
                    QRect area = window.frameGeometry().united(menu->geometry());
                    for (QAction *action : menu->actions()) {
                        if (action->menu() && action->menu()->isVisible())
                            area = area.united(action->menu()->geometry());
                    }
                    const QRect shot = QRect(menu->geometry().topLeft() - QPoint(260, 120), QSize(700, 360)) & area;
                    finish(window.screen()->grabWindow(0, shot.x(), shot.y(), shot.width(), shot.height()).save(file),
                           file);
                });
            });
        });
    } else if (parser.isSet(dialogShot)) {
        const QString file = parser.value(dialogShot);
        QTimer::singleShot(300, &window, [file] {
            TDialogPosSize *dialog = QorDialogPosSize();
            dialog->show();
            QTimer::singleShot(300, dialog, [dialog, file] {
                const bool saved = dialog->grab().save(file);
                dialog->hide();
                finish(saved, file);
            });
        });
    }
    return app.exec();
}
