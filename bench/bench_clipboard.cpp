// SPDX-License-Identifier: MIT
// Bench rows of the component clipboard with 1000 components (800 buttons,
// 200 timers): copying them, and pasting them onto a designed stage through
// the design center until painted, beside writing and reading the same
// components with the component stream, and beside Qt's form loader
// loading the same buttons from the .ui file Qt's form writer saves.
#include "qorbench.h"

#include "designer/qordesigner_p.h"
#include "console/qordesignconsole.h"
#include "designer/qormanager.h"
#include "foundation/qorcomponents.h"
#include "foundation/qorstream.h"
#include "foundation/vhoclipbrdutils.h"

#include <QBuffer>
#include <QFormBuilder>
#include <QPushButton>
#include <QTimer>
#include <QUiLoader>
#include <QWidget>

#include <memory>

namespace {

constexpr int kButtons = 800;
constexpr int kTimers = 200;
constexpr int kRounds = 5;

std::unique_ptr<QWidget> makeSource()
{
    auto form = std::make_unique<QWidget>();
    form->setObjectName(QStringLiteral("Source"));
    for (int i = 0; i < kButtons; ++i) {
        auto *button = new QPushButton(QStringLiteral("B%1").arg(i + 1), form.get());
        button->setObjectName(QStringLiteral("Button%1").arg(i + 1));
        button->setGeometry(10 + (i % 25) * 48, 10 + (i / 25) * 22, 44, 18);
        InsertComponent(form.get(), button);
    }
    for (int i = 0; i < kTimers; ++i) {
        auto *timer = new QTimer(form.get());
        timer->setObjectName(QStringLiteral("Timer%1").arg(i + 1));
        timer->setInterval(100 + i);
        InsertComponent(form.get(), timer);
    }
    return form;
}

// An empty designed stage, shown, with its design center.
struct Stage
{
    std::unique_ptr<QWidget> form = std::make_unique<QWidget>();
    TQorDesignManager *manager = new TQorDesignManager(form.get());
    std::unique_ptr<TQorDesignCenter> center = std::make_unique<TQorDesignCenter>();

    Stage()
    {
        form->setObjectName(QStringLiteral("Form1"));
        form->resize(1240, 760);
        form->move(0, 0);
        form->show();
        center->SetDesignManager(manager);
        manager->SetIsDesigning(true);
        benchSettle();
    }
    ~Stage()
    {
        center.reset();
        form.reset();
        benchSettle();
    }
};

QByteArray records(const TComponentList &components)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    for (QObject *component : components.toList())
        WriteComponent(buffer, component);
    return bytes;
}

QList<BenchRow> clipboardRows()
{
    QList<BenchRow> rows;
    const std::unique_ptr<QWidget> source = makeSource();
    const TComponentList all(ComponentList(source.get()));

    // Copy: the records (and Qt Designer's text of the buttons) on the
    // system clipboard, beside the records written into memory.
    const BenchPair copy = benchInTurn(
        kRounds, nullptr, [&] { VhoClipboard()->SetComponents(all, false); }, [&] { records(all); });
    rows.append({QStringLiteral("clipboard.copy_1000"), copy.ms, QStringLiteral("write_component_1000"), copy.floorMs});

    // Paste: the clipboard's records onto a designed stage, placed, owned
    // and painted, beside the same records read onto the same stage and
    // painted.
    VhoClipboard()->SetComponents(all, false);
    const QByteArray bytes = records(all);
    std::unique_ptr<Stage> stage;
    auto fresh = [&] {
        stage.reset();
        stage = std::make_unique<Stage>();
    };
    auto paste = [&] {
        stage->center->PasteComps();
        benchSettle();
    };
    const BenchPair read = benchInTurn(kRounds, fresh, paste, [&] {
        QBuffer buffer;
        buffer.setData(bytes);
        buffer.open(QIODevice::ReadOnly);
        while (buffer.pos() < buffer.size())
            ReadComponent(buffer, nullptr, stage->form.get());
        benchSettle();
    });
    if (ComponentCount(stage->form.get()) != 0)
        qWarning("clipboard bench: the floor's stage owns components");
    rows.append({QStringLiteral("clipboard.paste_1000"), read.ms, QStringLiteral("read_component_1000"), read.floorMs});

    // The same paste beside Qt's form loader making the buttons from the
    // .ui file Qt's form writer saves for them.
    QByteArray ui;
    {
        QBuffer buffer(&ui);
        buffer.open(QIODevice::WriteOnly);
        QFormBuilder builder;
        const BenchQuietMessages quiet;
        builder.save(&buffer, source.get());
    }
    const BenchPair loader = benchInTurn(kRounds, fresh, paste, [&] {
        QBuffer buffer;
        buffer.setData(ui);
        buffer.open(QIODevice::ReadOnly);
        QUiLoader uiLoader;
        if (QWidget *loaded = uiLoader.load(&buffer, stage->form.get()))
            loaded->show();
        benchSettle();
    });
    stage.reset();
    rows.append({QStringLiteral("clipboard.paste_1000_ui"), loader.ms, QStringLiteral("uiloader.load_800"),
                 loader.floorMs});
    return rows;
}

const BenchRegistrar registrar("clipboard", clipboardRows, {QStringLiteral("clipboard.copy_1000"), QStringLiteral("clipboard.paste_1000"), QStringLiteral("clipboard.paste_1000_ui")});

} // namespace
