// SPDX-License-Identifier: MIT
// Bench rows of the component stream: writing and reading a form of 1000
// buttons, beside Qt's own form writer and loader doing the same.
#include "qorbench.h"

#include "foundation/qorcomponents.h"
#include "foundation/qorstream.h"

#include <QBuffer>
#include <QFormBuilder>
#include <QPushButton>
#include <QUiLoader>
#include <QWidget>

#include <memory>

namespace {

constexpr int kButtons = 1000;
constexpr int kRounds = 7;

std::unique_ptr<QWidget> makeForm()
{
    auto form = std::make_unique<QWidget>();
    form->setObjectName(QStringLiteral("Form1"));
    form->resize(1200, 900);
    for (int i = 0; i < kButtons; ++i) {
        auto *button = new QPushButton(form.get());
        button->setObjectName(QStringLiteral("Button%1").arg(i + 1));
        button->setText(QStringLiteral("Button %1").arg(i + 1));
        button->setGeometry((i % 25) * 46, (i / 25) * 22, 44, 20);
        InsertComponent(form.get(), button);
    }
    return form;
}

QList<BenchRow> streamRows()
{
    QList<BenchRow> rows;
    const std::unique_ptr<QWidget> form = makeForm();

    QByteArray ours;
    QByteArray ui;
    const BenchPair write = benchInTurn(
        kRounds, nullptr,
        [&] {
            QBuffer buffer(&ours);
            buffer.open(QIODevice::WriteOnly | QIODevice::Truncate);
            WriteComponent(buffer, form.get());
        },
        [&] {
            QBuffer buffer(&ui);
            buffer.open(QIODevice::WriteOnly | QIODevice::Truncate);
            QFormBuilder builder;
            const BenchQuietMessages quiet;
            builder.save(&buffer, form.get());
        });
    rows.append({QStringLiteral("stream.write_1000"), write.ms, QStringLiteral("formbuilder.save_1000"),
                 write.floorMs});

    std::unique_ptr<QWidget> parent;
    const BenchPair read = benchInTurn(
        kRounds, [&] { parent = std::make_unique<QWidget>(); },
        [&] {
            QBuffer buffer(&ours);
            buffer.open(QIODevice::ReadOnly);
            ReadComponent(buffer, nullptr, parent.get());
        },
        [&] {
            QBuffer buffer(&ui);
            buffer.open(QIODevice::ReadOnly);
            QUiLoader loader;
            loader.load(&buffer, parent.get());
        });
    parent.reset();
    rows.append({QStringLiteral("stream.read_1000"), read.ms, QStringLiteral("uiloader.load_1000"), read.floorMs});
    return rows;
}

const BenchRegistrar registrar("stream", streamRows, {QStringLiteral("stream.write_1000"), QStringLiteral("stream.read_1000")});

} // namespace
