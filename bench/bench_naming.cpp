// SPDX-License-Identifier: MIT
// Naming rows: a new component's unique name on an owner of thousands of
// components, beside one plain pass over the owner's component names.
#include "qorbench.h"

#include "foundation/qorcomponents.h"
#include "foundation/vhosysutils.h"

#include <QObject>

#include <memory>

namespace {

QList<BenchRow> runNaming()
{
    constexpr int Count = 5000;
    const auto owner = std::make_unique<QObject>();
    owner->setObjectName(QStringLiteral("Form1"));
    for (int i = 1; i <= Count; ++i) {
        auto *component = new QObject;
        component->setObjectName(QStringLiteral("Button%1").arg(i));
        InsertComponent(owner.get(), component);
    }

    const QString base = QStringLiteral("Button");
    const QString expected = QStringLiteral("Button%1").arg(Count + 1);
    QString unique;
    int matches = 0;
    const BenchPair pair = benchInTurn(
        30, nullptr,
        [&] { unique = GetUniqueName(base, owner.get()); },
        [&] {
            // The least any answer takes: each name read and compared once.
            const QString probe = QStringLiteral("button2500");
            int found = 0;
            for (QObject *component : ComponentList(owner.get())) {
                if (QString::compare(component->objectName(), probe, Qt::CaseInsensitive) == 0)
                    ++found;
            }
            matches = found;
        });
    if (unique != expected || matches != 1)
        qFatal("bench naming: got %s and %d matches", qPrintable(unique), matches);

    BenchRow row;
    row.name = QStringLiteral("unique_name_5000");
    row.ms = pair.ms;
    row.floorName = QStringLiteral("name_pass_5000");
    row.floorMs = pair.floorMs;
    return {row};
}

const BenchRegistrar registrar("naming", runNaming, {QStringLiteral("unique_name_5000")});

} // namespace
