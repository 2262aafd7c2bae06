// SPDX-License-Identifier: MIT
// The store of users' customizations: writing, reading, listing and
// removing deltas, the fallback of a newer application version to the
// newest older delta, a write that fails, export and import, and files
// that are damaged or no store.
#include "console/qorcustomization.h"
#include "console/qorcustomizationstore.h"
#include "foundation/qorerror.h"

#include <QFile>
#include <QRect>
#include <QTemporaryDir>
#include <QTest>

#include <sqlite3.h>

namespace {

TQorCustomization deltaMoving(const QString &Name, const QRect &To)
{
    TQorCustomization delta;
    delta.SetPropertyValue(Name, QStringLiteral("QPushButton"), "geometry", To);
    return delta;
}

QRect movedTo(const TQorCustomization &Delta, const QString &Name)
{
    return Delta.PropertyValue(Name, "geometry").toRect();
}

void writeFile(const QString &Path, const QByteArray &Bytes)
{
    QFile file(Path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(Bytes), Bytes.size());
}

} // namespace

class tst_QorCustomizationStore : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    QString path(const QString &Name) const { return m_dir.filePath(Name); }

private Q_SLOTS:
    // Edge cases worth testing

    void aDamagedDatabaseFileGivesAClearError_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("text") << QByteArray("These are the user's notes, not a database.\n").repeated(200);
        QByteArray header("SQLite format 3\0", 16);
        QTest::newRow("a header and junk") << header + QByteArray(4080, '\x5a');
    }

    void aDamagedDatabaseFileGivesAClearError()
    {
        QFETCH(QByteArray, content);
        const QString file = path(QStringLiteral("damaged-%1.sqlite").arg(QString::fromLatin1(QTest::currentDataTag()).replace(QLatin1Char(' '), QLatin1Char('-'))));
        writeFile(file, content);
        TQorCustomizationStore store;
        QVERIFY(!store.Open(file));
        QVERIFY(!store.IsOpen());
        QVERIFY2(store.ErrorString().contains(file), qPrintable(store.ErrorString()));
        QVERIFY2(store.ErrorString().contains(QStringLiteral("database")), qPrintable(store.ErrorString()));
        // The file is left as it was.
        QFile check(file);
        QVERIFY(check.open(QIODevice::ReadOnly));
        QCOMPARE(check.readAll(), content);
    }

    void aStoreThatIsNotOpenSaysSo()
    {
        TQorCustomizationStore store;
        QVERIFY(!store.Write(QStringLiteral("ann"), QStringLiteral("Main"), QStringLiteral("1"), TQorCustomization()));
        QVERIFY(!store.ErrorString().isEmpty());
        TQorCustomization delta;
        QVERIFY(!store.Read(QStringLiteral("ann"), QStringLiteral("Main"), QStringLiteral("1"), delta));
        QVERIFY(!store.ErrorString().isEmpty());
    }

    void bytesThatAreNoDeltaAreNotStored()
    {
        TQorCustomizationStore store;
        QVERIFY(store.Open(path(QStringLiteral("junk.sqlite"))));
        QVERIFY(!store.WriteBytes(QStringLiteral("ann"), QStringLiteral("Main"), QStringLiteral("1"), "QORC junk"));
        QVERIFY(!store.ErrorString().isEmpty());
        QVERIFY(store.List().isEmpty());
    }

    // The other rules

    void deltasAreWrittenReadListedAndRemoved()
    {
        const QString file = path(QStringLiteral("store.sqlite"));
        {
            TQorCustomizationStore store;
            QVERIFY2(store.Open(file), qPrintable(store.ErrorString()));
            QVERIFY(store.Write(QStringLiteral("ann"), QStringLiteral("Main"), QStringLiteral("1.0"), deltaMoving(QStringLiteral("Button1"), QRect(1, 2, 3, 4))));
            QVERIFY(store.Write(QStringLiteral("bob"), QStringLiteral("Main"), QStringLiteral("1.0"), deltaMoving(QStringLiteral("Button1"), QRect(5, 6, 7, 8))));
            QVERIFY(store.Write(QStringLiteral("ann"), QStringLiteral("Orders"), QStringLiteral("1.0"), deltaMoving(QStringLiteral("Edit1"), QRect(9, 9, 9, 9))));
            // A second write for the same key replaces the first.
            QVERIFY(store.Write(QStringLiteral("ann"), QStringLiteral("Main"), QStringLiteral("1.0"), deltaMoving(QStringLiteral("Button1"), QRect(10, 20, 30, 40))));
        }
        TQorCustomizationStore store;
        QVERIFY(store.Open(file));
        const QList<TQorCustomizationInfo> all = store.List();
        QCOMPARE(all.size(), 3);
        QCOMPARE(all.at(0).User, QStringLiteral("ann"));
        QCOMPARE(all.at(0).Form, QStringLiteral("Main"));
        QCOMPARE(all.at(1).Form, QStringLiteral("Orders"));
        QCOMPARE(all.at(2).User, QStringLiteral("bob"));
        QCOMPARE(all.at(0).Size, deltaMoving(QStringLiteral("Button1"), QRect(10, 20, 30, 40)).ToBytes().size());
        QVERIFY(qAbs(all.at(0).Written.secsTo(QDateTime::currentDateTimeUtc())) < 60);
        QCOMPARE(store.List(QStringLiteral("ann")).size(), 2);
        QCOMPARE(store.List(QStringLiteral("ann"), QStringLiteral("Orders")).size(), 1);

        TQorCustomization delta;
        QVERIFY(store.Read(QStringLiteral("ann"), QStringLiteral("Main"), QStringLiteral("1.0"), delta));
        QCOMPARE(movedTo(delta, QStringLiteral("Button1")), QRect(10, 20, 30, 40));
        QVERIFY(store.Read(QStringLiteral("bob"), QStringLiteral("Main"), QStringLiteral("1.0"), delta));
        QCOMPARE(movedTo(delta, QStringLiteral("Button1")), QRect(5, 6, 7, 8));

        QVERIFY(store.Remove(QStringLiteral("bob"), QStringLiteral("Main"), QStringLiteral("1.0")));
        QVERIFY(!store.Remove(QStringLiteral("bob"), QStringLiteral("Main"), QStringLiteral("1.0")));
        QVERIFY(!store.Read(QStringLiteral("bob"), QStringLiteral("Main"), QStringLiteral("1.0"), delta));
        QVERIFY(store.ErrorString().isEmpty());
        QCOMPARE(store.List().size(), 2);
    }

    void aNewerVersionReadsTheNewestOlderDelta()
    {
        TQorCustomizationStore store;
        QVERIFY(store.Open(path(QStringLiteral("versions.sqlite"))));
        QVERIFY(store.Write(QStringLiteral("ann"), QStringLiteral("Main"), QStringLiteral("1.2"), deltaMoving(QStringLiteral("B"), QRect(1, 2, 1, 1))));
        QVERIFY(store.Write(QStringLiteral("ann"), QStringLiteral("Main"), QStringLiteral("1.9"), deltaMoving(QStringLiteral("B"), QRect(1, 9, 1, 1))));
        QVERIFY(store.Write(QStringLiteral("ann"), QStringLiteral("Main"), QStringLiteral("3.0"), deltaMoving(QStringLiteral("B"), QRect(3, 0, 1, 1))));
        QVERIFY(store.Write(QStringLiteral("bob"), QStringLiteral("Main"), QStringLiteral("2.5"), deltaMoving(QStringLiteral("B"), QRect(2, 5, 1, 1))));
        TQorCustomization delta;
        QString found;
        QVERIFY(store.Read(QStringLiteral("ann"), QStringLiteral("Main"), QStringLiteral("2.0"), delta, &found));
        QCOMPARE(found, QStringLiteral("1.9"));
        QCOMPARE(movedTo(delta, QStringLiteral("B")), QRect(1, 9, 1, 1));
        // Versions compare by their numbers: 1.10 comes after 1.9.
        QVERIFY(store.Read(QStringLiteral("ann"), QStringLiteral("Main"), QStringLiteral("1.10"), delta, &found));
        QCOMPARE(found, QStringLiteral("1.9"));
        QVERIFY(store.Read(QStringLiteral("ann"), QStringLiteral("Main"), QStringLiteral("3.0"), delta, &found));
        QCOMPARE(found, QStringLiteral("3.0"));
        QVERIFY(!store.Read(QStringLiteral("ann"), QStringLiteral("Main"), QStringLiteral("1.0"), delta, &found));
        QVERIFY(store.ErrorString().isEmpty());
        QVERIFY(!store.Read(QStringLiteral("ann"), QStringLiteral("Orders"), QStringLiteral("9"), delta, &found));
    }

    void aFailedWriteKeepsTheLastGoodDelta()
    {
        const QString file = path(QStringLiteral("busy.sqlite"));
        TQorCustomizationStore store;
        QVERIFY(store.Open(file));
        store.SetBusyTimeout(50);
        QVERIFY(store.Write(QStringLiteral("ann"), QStringLiteral("Main"), QStringLiteral("1"), deltaMoving(QStringLiteral("B"), QRect(1, 1, 1, 1))));
        // Another program holds the file for writing.
        sqlite3 *other = nullptr;
        QCOMPARE(sqlite3_open(QFile::encodeName(file).constData(), &other), SQLITE_OK);
        QCOMPARE(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
        const bool written = store.Write(QStringLiteral("ann"), QStringLiteral("Main"), QStringLiteral("1"),
                                         deltaMoving(QStringLiteral("B"), QRect(2, 2, 2, 2)));
        const QString error = store.ErrorString();
        sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close(other);
        QVERIFY(!written);
        QVERIFY2(error.contains(QStringLiteral("locked")), qPrintable(error));
        TQorCustomization delta;
        QVERIFY(store.Read(QStringLiteral("ann"), QStringLiteral("Main"), QStringLiteral("1"), delta));
        QCOMPARE(movedTo(delta, QStringLiteral("B")), QRect(1, 1, 1, 1));
        // Once the file is free, writes go through again.
        QVERIFY(store.Write(QStringLiteral("ann"), QStringLiteral("Main"), QStringLiteral("1"), deltaMoving(QStringLiteral("B"), QRect(3, 3, 3, 3))));
        QVERIFY(store.Read(QStringLiteral("ann"), QStringLiteral("Main"), QStringLiteral("1"), delta));
        QCOMPARE(movedTo(delta, QStringLiteral("B")), QRect(3, 3, 3, 3));
    }

    void aCustomizationIsExportedAndImported()
    {
        TQorCustomizationStore store;
        QVERIFY(store.Open(path(QStringLiteral("export.sqlite"))));
        const TQorCustomization original = deltaMoving(QStringLiteral("Button1"), QRect(4, 5, 6, 7));
        QVERIFY(store.Write(QStringLiteral("ann"), QStringLiteral("Main"), QStringLiteral("1"), original));
        const QString file = path(QStringLiteral("ann-main.qorcustom"));
        QVERIFY2(store.Export(QStringLiteral("ann"), QStringLiteral("Main"), QStringLiteral("1"), file), qPrintable(store.ErrorString()));
        QCOMPARE(TQorCustomizationStore::ImportFromFile(file).ToBytes(), original.ToBytes());
        QVERIFY(store.Import(file, QStringLiteral("carl"), QStringLiteral("Main"), QStringLiteral("2")));
        TQorCustomization delta;
        QVERIFY(store.Read(QStringLiteral("carl"), QStringLiteral("Main"), QStringLiteral("2"), delta));
        QCOMPARE(delta.ToBytes(), original.ToBytes());
        // Nothing to export is said so.
        QVERIFY(!store.Export(QStringLiteral("nobody"), QStringLiteral("Main"), QStringLiteral("1"), path(QStringLiteral("none"))));
        QVERIFY(!store.ErrorString().isEmpty());
        QVERIFY(!QFile::exists(path(QStringLiteral("none"))));
    }

    void aDamagedExportFileIsRefusedWithAReason()
    {
        const QString file = path(QStringLiteral("damaged.qorcustom"));
        QByteArray bytes = deltaMoving(QStringLiteral("Button1"), QRect(4, 5, 6, 7)).ToBytes();
        bytes.chop(3);
        writeFile(file, bytes);
        try {
            TQorCustomizationStore::ImportFromFile(file);
            QFAIL("a damaged file was read");
        } catch (const EReadError &error) {
            QVERIFY2(error.message().contains(file), qPrintable(error.message()));
        }
        TQorCustomizationStore store;
        QVERIFY(store.Open(path(QStringLiteral("import.sqlite"))));
        QVERIFY(!store.Import(file, QStringLiteral("ann"), QStringLiteral("Main"), QStringLiteral("1")));
        QVERIFY(store.ErrorString().contains(file));
        QVERIFY(store.List().isEmpty());
        // An export onto a folder fails and says why.
        QString error;
        QVERIFY(!TQorCustomizationStore::ExportToFile(TQorCustomization(), m_dir.path(), &error));
        QVERIFY(error.contains(m_dir.path()));
    }
};

QTEST_GUILESS_MAIN(tst_QorCustomizationStore)
#include "tst_qorcustomizationstore.moc"
