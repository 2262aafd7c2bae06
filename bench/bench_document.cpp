// SPDX-License-Identifier: MIT
// Bench rows of documents: saving a shown, designed stage of 1000 buttons to
// a file, and opening that file until the stage shows the buttons painted,
// beside Qt's form writer saving the same form and Qt's form loader loading
// what it wrote, shown and painted.
#include "qorbench.h"

#include "console/qordesignconsole.h"
#include "console/qordesigndocument.h"
#include "designer/qormanager.h"
#include "foundation/qorcomponents.h"

#include <QCoreApplication>
#include <QFile>
#include <QFormBuilder>
#include <QPushButton>
#include <QTemporaryDir>
#include <QUiLoader>
#include <QWidget>

#include <memory>

namespace {

constexpr int kButtons = 1000;
constexpr int kRounds = 7;
const QSize kStageSize(25 * 48 + 20, (kButtons / 25 + 1) * 22 + 20);

// A shown stage designed through a design center, with its document.
struct DesignedStage
{
    std::unique_ptr<QWidget> stage = std::make_unique<QWidget>();
    TQorDesignManager *manager = new TQorDesignManager(stage.get());
    std::unique_ptr<TQorDesignCenter> center = std::make_unique<TQorDesignCenter>();
    std::unique_ptr<TQorDesignDocument> doc;

    explicit DesignedStage(int buttons)
    {
        stage->setObjectName(QStringLiteral("Form1"));
        stage->resize(kStageSize);
        for (int i = 0; i < buttons; ++i) {
            auto *button = new QPushButton(QStringLiteral("B%1").arg(i + 1), stage.get());
            button->setObjectName(QStringLiteral("Button%1").arg(i + 1));
            button->setGeometry(10 + (i % 25) * 48, 10 + (i / 25) * 22, 44, 18);
            InsertComponent(stage.get(), button);
        }
        center->SetDesignManager(manager);
        manager->SetIsDesigning(true);
        doc = std::make_unique<TQorDesignDocument>(center.get());
        doc->SetAutosaveEnabled(false);
        stage->move(0, 0);
        stage->show();
        benchSettle();
    }
    ~DesignedStage()
    {
        doc.reset();
        manager->SetIsDesigning(false);
        center.reset();
        stage.reset();
        benchSettle();
    }
    DesignedStage(const DesignedStage &) = delete;
    DesignedStage &operator=(const DesignedStage &) = delete;
};

QList<BenchRow> documentRows()
{
    QList<BenchRow> rows;
    QTemporaryDir dir;
    const QString ours = dir.filePath(QStringLiteral("form.qor"));
    const QString ui = dir.filePath(QStringLiteral("form.ui"));
    {
        DesignedStage designed(kButtons);
        const BenchPair save = benchInTurn(
            kRounds, nullptr, [&] { designed.doc->SaveAs(ours, TQorDesignDocument::dfBinary); },
            [&] {
                QFile file(ui);
                file.open(QIODevice::WriteOnly | QIODevice::Truncate);
                QFormBuilder builder;
                const BenchQuietMessages quiet;
                builder.save(&file, designed.stage.get());
            });
        if (benchWanted(QStringLiteral("document.save_1000")))
            rows.append({QStringLiteral("document.save_1000"), save.ms, QStringLiteral("formbuilder.save_1000"),
                         save.floorMs});
    }
    if (!benchWanted(QStringLiteral("document.open_1000")))
        return rows;

    std::unique_ptr<DesignedStage> target;
    std::unique_ptr<QWidget> plain;
    const BenchPair open = benchInTurn(
        kRounds,
        [&] {
            target.reset();
            plain.reset();
            target = std::make_unique<DesignedStage>(0);
            plain = std::make_unique<QWidget>();
            plain->resize(kStageSize);
            plain->move(0, 0);
            plain->show();
            benchSettle();
        },
        [&] {
            if (!target->doc->Open(ours))
                qFatal("document.open_1000: %s", qPrintable(target->doc->ErrorString()));
            benchSettle();
        },
        [&] {
            QFile file(ui);
            file.open(QIODevice::ReadOnly);
            QUiLoader loader;
            QWidget *loaded = loader.load(&file, plain.get());
            loaded->setGeometry(plain->rect());
            loaded->show();
            benchSettle();
        });
    target.reset();
    plain.reset();
    benchSettle();
    rows.append({QStringLiteral("document.open_1000"), open.ms, QStringLiteral("uiloader.load_1000_shown"),
                 open.floorMs});
    return rows;
}

const BenchRegistrar registrar("document", documentRows,
                               {QStringLiteral("document.save_1000"), QStringLiteral("document.open_1000")});

} // namespace
