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
#include "designer/qorsizers.h"

#include <QApplication>
#include <QCheckBox>
#include <QCommandLineParser>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>
#include <QScreen>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace {

int finish(bool saved, const QString &file)
{
    std::printf("%s %s\n", saved ? "wrote" : "could not write", qPrintable(file));
    QCoreApplication::exit(saved ? 0 : 1);
    return saved ? 0 : 1;
}

// Opens a menu of the window's menu bar, saves a picture of the window's
// upper part with the menu, closes it and goes on with Next.
void shootMenu(QMainWindow *Window, QMenu *Menu, const QString &File, const std::function<void()> &Next)
{
    Window->menuBar()->setActiveAction(Menu->menuAction());
    QTimer::singleShot(300, Window, [Window, Menu, File, Next] {
        const QRect area = Window->frameGeometry().united(Menu->geometry());
        const QRect shot = QRect(area.topLeft(), QSize(std::min(area.width(), 760), std::min(area.height(), 420)));
        const bool saved = Window->screen()->grabWindow(0, shot.x(), shot.y(), shot.width(), shot.height()).save(File);
        Menu->close();
        if (!saved) {
            finish(false, File);
            return;
        }
        std::printf("wrote %s\n", qPrintable(File));
        QTimer::singleShot(200, Window, Next);
    });
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
    QCommandLineOption menuShots(QStringLiteral("menu-screenshots"),
                                 QStringLiteral("Nudge a control, then save pictures of the Edit, File and Customize menus "
                                                "into <folder> and exit."),
                                 QStringLiteral("folder"));
    QCommandLineOption formVersion(QStringLiteral("form-version"),
                                   QStringLiteral("Build version <n> (1 or 2) of the sample form and apply the "
                                                  "user's customization kept for it."),
                                   QStringLiteral("n"), QStringLiteral("1"));
    QCommandLineOption design(QStringLiteral("design"), QStringLiteral("Start with designing on."));
    parser.addOptions({screenshot, popupShot, dialogShot, chinese, menuShots, formVersion, design});
    parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("A design to open."), QStringLiteral("[file]"));
    parser.process(app);

    QorDemoWindow window;
    const bool picture = parser.isSet(screenshot) || parser.isSet(popupShot) || parser.isSet(dialogShot)
        || parser.isSet(menuShots);
    if (!picture)
        window.restoreLayout();
    window.show();
    // The user's customization of the sample form comes back (the pictures
    // customize a form of their own, in a store that goes with them); work
    // a crash left unsaved is offered first; else the file named.
    QTemporaryDir pictureStore;
    if (!picture)
        window.startCustomizing(std::clamp(parser.value(formVersion).toInt(), 1, 2));
    else if (pictureStore.isValid())
        window.startCustomizing(1, pictureStore.filePath(QStringLiteral("customizations.db")));
    if (!picture && !window.offerRecovery() && !parser.positionalArguments().isEmpty())
        window.openFile(parser.positionalArguments().constFirst());
    if (parser.isSet(design))
        window.designAction()->setChecked(true);
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
    } else if (parser.isSet(menuShots)) {
        const QString folder = parser.value(menuShots);
        QTimer::singleShot(300, &window, [&window, folder] {
            // Two nudges of the line edit by its keys: the Edit menu offers
            // to undo them in one step.
            QWidget *line = window.stage()->findChild<QWidget *>(QStringLiteral("LineEdit1"));
            window.designManager()->SelectControl(line, QPoint(-1, -1), QorDesigner::csmSelect, true, false);
            QWidget *keys = window.designManager()->GetSelectSizer();
            for (int i = 0; keys && i < 2; ++i) {
                QKeyEvent press(QEvent::KeyPress, Qt::Key_Right, Qt::ControlModifier);
                QCoreApplication::sendEvent(keys, &press);
            }
            QTimer::singleShot(300, &window, [&window, folder] {
                shootMenu(&window, window.findChild<QMenu *>(QStringLiteral("EditMenu")),
                          folder + QStringLiteral("/edit-menu.png"), [&window, folder] {
                              shootMenu(&window, window.fileMenu(), folder + QStringLiteral("/file-menu.png"),
                                        [&window, folder] {
                                            shootMenu(&window, window.findChild<QMenu *>(QStringLiteral("CustomizeMenu")),
                                                      folder + QStringLiteral("/customize-menu.png"),
                                                      [folder] { finish(true, folder); });
                                        });
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
