// SPDX-License-Identifier: MIT
// Replays the fuzz targets' seed corpora and the inputs fuzzing found
// (tests/fuzz/corpus/<target>/, tests/fuzz/regressions/<target>/) through
// the same target functions libFuzzer drives, so that a fixed crash stays
// fixed. Inputs that still crash the readers are listed with their reason
// in regressions/known-crashes.txt and skipped until the fix lands.
#include "qorfuzz.h"
#include "qorfuzzfixture_p.h"

#include "foundation/qorcomponents.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QPushButton>
#include <QTest>

namespace {

const QString fuzzDir = QStringLiteral(QORFUZZ_DIR);

// "target/file" -> why it is skipped.
QHash<QString, QString> knownCrashes()
{
    QHash<QString, QString> known;
    QFile file(fuzzDir + QStringLiteral("/regressions/known-crashes.txt"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return known;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        const qsizetype space = line.indexOf(QLatin1Char(' '));
        known.insert(line.left(space), space < 0 ? QString() : line.mid(space + 1).trimmed());
    }
    return known;
}

QStringList inputsOf(const QString &Folder)
{
    return QDir(Folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

} // namespace

class TstFuzzRegressions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Edge cases
    void everyTargetHasSeeds()
    {
        for (const QorFuzzTarget &target : QorFuzzTargets()) {
            const QString folder = fuzzDir + QStringLiteral("/corpus/") + QLatin1String(target.name);
            QVERIFY2(!inputsOf(folder).isEmpty(), qPrintable(folder + QStringLiteral(" holds no seed")));
        }
    }

    void theFormSnapshotSeesEveryChangeTheTargetsCheck()
    {
        QWidget *form = QorFuzzForm();
        const QorFormSnapshot before = QorSnapshot(form, form);
        QVERIFY(QorSnapshotDifference(before, QorSnapshot(form, form)).isEmpty());
        QObject *first = ComponentList(form).first();
        auto *button = qobject_cast<QPushButton *>(first);
        QVERIFY(button);

        button->setObjectName(QStringLiteral("Renamed"));
        QVERIFY(!QorSnapshotDifference(before, QorSnapshot(form, form)).isEmpty());
        button->setObjectName(before.components.first().name);

        button->move(button->pos() + QPoint(1, 0));
        QVERIFY(!QorSnapshotDifference(before, QorSnapshot(form, form)).isEmpty());
        button->move(button->pos() - QPoint(1, 0));

        SetComponentIndex(button, 1);
        QVERIFY(!QorSnapshotDifference(before, QorSnapshot(form, form)).isEmpty());
        SetComponentIndex(button, 0);

        auto *stray = new QWidget(button);
        QVERIFY(!QorSnapshotDifference(before, QorSnapshot(form, form)).isEmpty());
        delete stray;
        QVERIFY(QorSnapshotDifference(before, QorSnapshot(form, form)).isEmpty());
    }

    void replay_data()
    {
        QTest::addColumn<int>("target");
        QTest::addColumn<QString>("file");
        const QList<QorFuzzTarget> &targets = QorFuzzTargets();
        for (int t = 0; t < targets.size(); ++t) {
            for (const char *kind : {"corpus", "regressions"}) {
                const QString folder = fuzzDir + QLatin1Char('/') + QLatin1String(kind) + QLatin1Char('/') + QLatin1String(targets.at(t).name);
                for (const QString &name : inputsOf(folder)) {
                    const QString row = QLatin1String(targets.at(t).name) + QLatin1Char('/') + QLatin1String(kind) + QLatin1Char('/') + name;
                    QTest::newRow(qPrintable(row)) << t << folder + QLatin1Char('/') + name;
                }
            }
        }
    }

    // Each input goes through its target as libFuzzer gives it (cut to the
    // target's length limit); a target stops the program on a broken
    // property, as it does under the fuzzer.
    void replay()
    {
        QFETCH(int, target);
        QFETCH(QString, file);
        const QorFuzzTarget &t = QorFuzzTargets().at(target);
        const QString key = QLatin1String(t.name) + QLatin1Char('/') + QFileInfo(file).fileName();
        const QHash<QString, QString> known = knownCrashes();
        if (known.contains(key) && file.contains(QLatin1String("/regressions/")))
            QSKIP(qPrintable(QStringLiteral("still crashes the reader: ") + known.value(key)));
        QFile input(file);
        QVERIFY(input.open(QIODevice::ReadOnly));
        const QByteArray bytes = input.readAll().left(qsizetype(t.maxLength));
        QCOMPARE(t.run(reinterpret_cast<const uint8_t *>(bytes.constData()), size_t(bytes.size())), 0);
        QorFuzzFlushDeletes();
    }

    void cleanupTestCase() { delete QorFuzzForm(); }
};

int main(int argc, char **argv)
{
    // The targets run as under the fuzzer: offscreen, with the clipboard
    // inside the process.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    TstFuzzRegressions test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_fuzzregressions.moc"
