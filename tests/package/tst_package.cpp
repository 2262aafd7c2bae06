// SPDX-License-Identifier: MIT
// The library installed into a prefix is found by find_package(QorDesign)
// and links into an application's program.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

class tst_Package : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_work;
    QString m_prefix;

    // Runs a command; on failure the test fails with its output.
    bool run(const QString &program, const QStringList &args, QString *output = nullptr,
             const QProcessEnvironment &env = QProcessEnvironment::systemEnvironment())
    {
        QProcess p;
        p.setProcessEnvironment(env);
        p.setProcessChannelMode(QProcess::MergedChannels);
        p.start(program, args);
        if (!p.waitForFinished(300000)) {
            qWarning("%s did not finish", qPrintable(program));
            return false;
        }
        const QString out = QString::fromLocal8Bit(p.readAll());
        if (output)
            *output = out;
        if (p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0) {
            qWarning("%s %s failed:\n%s", qPrintable(program), qPrintable(args.join(u' ')),
                     qPrintable(out.right(4000)));
            return false;
        }
        return true;
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_work.isValid());
        m_prefix = m_work.filePath(QStringLiteral("prefix"));
        QVERIFY(run(QStringLiteral(QOR_CMAKE_COMMAND),
                    {QStringLiteral("--install"), QStringLiteral(QOR_BINARY_DIR),
                     QStringLiteral("--prefix"), m_prefix}));
    }

    void theInstallHoldsHeadersLibraryAndPackageFiles()
    {
        const QDir prefix(m_prefix);
        for (const char *file :
             {"include/QorDesign/qordesign_export.h", "include/QorDesign/foundation/qorcomponents.h",
              "include/QorDesign/foundation/qorclasses.h", "include/QorDesign/designer/qordesigner.h",
              "lib/cmake/QorDesign/QorDesignConfig.cmake",
              "lib/cmake/QorDesign/QorDesignConfigVersion.cmake",
              "lib/cmake/QorDesign/QorDesignTargets.cmake", "share/doc/QorDesign/LICENSE"}) {
            QVERIFY2(QFileInfo::exists(prefix.filePath(QLatin1String(file))), file);
        }
        QVERIFY(!QDir(prefix.filePath(QStringLiteral("lib"))).entryList({QStringLiteral("libQorDesign.so*")}).isEmpty());
        // The package names its licence.
        QFile config(prefix.filePath(QStringLiteral("lib/cmake/QorDesign/QorDesignConfig.cmake")));
        QVERIFY(config.open(QIODevice::ReadOnly));
        QVERIFY(config.readAll().contains("set(QorDesign_LICENSE \"MIT\")"));
        // Nothing of the build tree's tests, demo or bench is installed.
        QVERIFY(!QFileInfo::exists(prefix.filePath(QStringLiteral("include/QorDesign/tests"))));
    }

    void aProgramFindsThePackageBuildsAndRuns()
    {
        const QString build = m_work.filePath(QStringLiteral("consumer-build"));
        const QString flags = QStringLiteral(QOR_EXTRA_FLAGS);
        QStringList configure{QStringLiteral("-S"), QStringLiteral(QOR_CONSUMER_DIR),
                              QStringLiteral("-B"), build, QStringLiteral("-G"),
                              QStringLiteral("Ninja"),
                              QStringLiteral("-DCMAKE_PREFIX_PATH=%1").arg(m_prefix),
                              QStringLiteral("-DQt6_DIR=%1").arg(QStringLiteral(QOR_QT_DIR))};
        if (!flags.isEmpty()) {
            configure << QStringLiteral("-DCMAKE_CXX_FLAGS=%1").arg(flags)
                      << QStringLiteral("-DCMAKE_EXE_LINKER_FLAGS=%1").arg(flags);
        }
        QVERIFY(run(QStringLiteral(QOR_CMAKE_COMMAND), configure));
        QVERIFY(run(QStringLiteral(QOR_CMAKE_COMMAND), {QStringLiteral("--build"), build}));

        QString output;
        auto env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        QVERIFY(run(QDir(build).filePath(QStringLiteral("consumer")), {}, &output, env));
        QVERIFY2(output.contains(QLatin1String("same=1")), qPrintable(output));
        QVERIFY2(output.contains(QLatin1String("owned=1 first=Button1")), qPrintable(output));
        // The center shows the stage in the inspector once both are linked.
        QVERIFY2(output.contains(QLatin1String("center-stage=Form1 inspecting=Form1")), qPrintable(output));
    }
};

QTEST_GUILESS_MAIN(tst_Package)
#include "tst_package.moc"
