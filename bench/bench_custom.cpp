// SPDX-License-Identifier: MIT
// Bench row of customizations: an application builds a form of 1000
// buttons and applies a user's delta that moves and recaptions every one of
// them (read from its bytes), until the form is shown and painted; beside
// building and painting the same form with those values set in code.
#include "qorbench.h"

#include "console/qorcustomization.h"
#include "foundation/qorcomponents.h"

#include <QPushButton>
#include <QWidget>

#include <memory>

namespace {

constexpr int kButtons = 1000;
constexpr int kRounds = 7;
const QSize kStageSize(25 * 48 + 20, (kButtons / 25 + 1) * 22 + 20);

// The application's form; Customized: with the user's places and captions
// set directly.
std::unique_ptr<QWidget> buildForm(bool Customized)
{
    auto stage = std::make_unique<QWidget>();
    stage->setObjectName(QStringLiteral("Form1"));
    stage->resize(kStageSize);
    for (int i = 0; i < kButtons; ++i) {
        auto *button = new QPushButton(stage.get());
        button->setObjectName(QStringLiteral("Button%1").arg(i + 1));
        if (Customized) {
            button->setText(QStringLiteral("User %1").arg(i + 1));
            button->setGeometry(12 + (i % 25) * 48, 14 + (i / 25) * 22, 46, 19);
        } else {
            button->setText(QStringLiteral("B%1").arg(i + 1));
            button->setGeometry(10 + (i % 25) * 48, 10 + (i / 25) * 22, 44, 18);
        }
        InsertComponent(stage.get(), button);
    }
    return stage;
}

void showAndPaint(QWidget *Stage)
{
    Stage->move(0, 0);
    Stage->show();
    benchSettle();
}

QList<BenchRow> customRows()
{
    QByteArray delta;
    {
        const std::unique_ptr<QWidget> base = buildForm(false);
        const std::unique_ptr<QWidget> user = buildForm(true);
        delta = TQorCustomization::Diff(TQorCustomization::FormRecords(base.get()), user.get()).ToBytes();
    }
    std::unique_ptr<QWidget> ours;
    std::unique_ptr<QWidget> plain;
    const BenchPair apply = benchInTurn(
        kRounds,
        [&] {
            ours.reset();
            plain.reset();
            benchSettle();
        },
        [&] {
            ours = buildForm(false);
            const QList<TQorCustomizationIssue> issues = TQorCustomization::FromBytes(delta).Apply(ours.get());
            if (!issues.isEmpty())
                qFatal("custom.apply_1000: %s", qPrintable(issues.first().Text));
            showAndPaint(ours.get());
        },
        [&] {
            plain = buildForm(true);
            showAndPaint(plain.get());
        });
    ours.reset();
    plain.reset();
    benchSettle();
    return {{QStringLiteral("custom.apply_1000"), apply.ms, QStringLiteral("form.built_customized_1000"), apply.floorMs}};
}

const BenchRegistrar registrar("custom", customRows, {QStringLiteral("custom.apply_1000")});

} // namespace
