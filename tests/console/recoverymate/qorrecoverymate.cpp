// SPDX-License-Identifier: MIT
// A designer that dies with unsaved work: it saves a small design, changes
// it, and says "ready" with the recovery file's path once the copy of the
// change is on disk. The document test then kills it with SIGKILL.
//
// Usage: qorrecoverymate RECOVERY_FOLDER DOCUMENT_FILE
#include "console/qordesignconsole.h"
#include "console/qordesigndocument.h"
#include "designer/qormanager.h"
#include "foundation/qorcomponents.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

#include <cstdio>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: qorrecoverymate RECOVERY_FOLDER DOCUMENT_FILE\n");
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const QString file = QString::fromLocal8Bit(argv[2]);

    QWidget stage;
    stage.setObjectName(QStringLiteral("Form1"));
    stage.resize(400, 300);
    auto *manager = new TQorDesignManager(&stage);
    TQorDesignCenter center;
    center.SetDesignManager(manager);
    manager->SetIsDesigning(true);
    auto *saved = new QPushButton(QStringLiteral("Saved"), &stage);
    saved->setObjectName(QStringLiteral("Saved1"));
    saved->setGeometry(10, 10, 80, 24);
    InsertComponent(&stage, saved);

    TQorDesignDocument document(&center);
    document.SetRecoveryFolder(folder);
    document.SetAutosaveDelay(50);
    if (!document.SaveAs(file, TQorDesignDocument::dfBinary)) {
        std::fprintf(stderr, "%s\n", qPrintable(document.ErrorString()));
        return 1;
    }
    QObject::connect(&document, &TQorDesignDocument::RecoveryWritten, &app, [](const QString &path) {
        std::printf("ready %s\n", qPrintable(path));
        std::fflush(stdout);
    });

    // The work nobody saves.
    auto *unsaved = new QLineEdit(QStringLiteral("not saved"), &stage);
    unsaved->setObjectName(QStringLiteral("Unsaved1"));
    unsaved->setGeometry(10, 50, 120, 24);
    InsertComponent(&stage, unsaved);

    const int result = QApplication::exec();
    center.SetDesignManager(nullptr);
    return result;
}
