// SPDX-License-Identifier: MIT
// The library installed into a prefix is found by find_package(QorDesign)
// and links into an application's program.
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
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

private Q_SLOTS:
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

    // Only the public headers are installed, and none of them brings an
    // internal header, a using-directive or a using-enum into an
    // application's global namespace.
    void theInstallHoldsThePublicHeadersOnly()
    {
        const QDir include(QDir(m_prefix).filePath(QStringLiteral("include/QorDesign")));
        QStringList installed;
        QDirIterator it(include.path(), {QStringLiteral("*")}, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext())
            installed << include.relativeFilePath(it.next());
        installed.sort();
        QStringList expected{
            QStringLiteral("browsing/qorclassesman.h"),      QStringLiteral("browsing/qorpallete.h"),
            QStringLiteral("browsing/qorcomptreeview.h"),   QStringLiteral("browsing/qorimages.h"),
            QStringLiteral("browsing/qordsnsysreg.h"),
            QStringLiteral("console/qorattribeditors.h"),   QStringLiteral("console/qorcompeditors.h"),
            QStringLiteral("console/qorconsoleintf.h"),     QStringLiteral("console/qordesignactions.h"),
            QStringLiteral("console/qorcustomization.h"),   QStringLiteral("console/qorcustomizationrecorder.h"),
            QStringLiteral("console/qorcustomizationstore.h"),
            QStringLiteral("console/qordesignconsole.h"),   QStringLiteral("console/qordesigndocument.h"),
            QStringLiteral("console/qordesignhistory.h"),
            QStringLiteral("console/qordesignintfimpls.h"),
            QStringLiteral("console/qordesignpopupmenu.h"), QStringLiteral("console/qordesignposalignform.h"),
            QStringLiteral("console/qordesignposscaleform.h"), QStringLiteral("console/qordesignpossizeform.h"),
            QStringLiteral("console/qordsnconst.h"),        QStringLiteral("console/qorradiogroup.h"),
            QStringLiteral("console/vhodesignintfimpls.h"), QStringLiteral("designer/qordesigner.h"),
            QStringLiteral("designer/qordesignintf.h"),     QStringLiteral("designer/qormanager.h"),
            QStringLiteral("designer/qorsizers.h"),         QStringLiteral("designer/qorstage.h"),
            QStringLiteral("foundation/qorclasses.h"),      QStringLiteral("foundation/qorcomponents.h"),
            QStringLiteral("foundation/qorerror.h"),        QStringLiteral("foundation/qorstream.h"),
            QStringLiteral("foundation/qoruifile.h"),
            QStringLiteral("foundation/qortypinfo.h"),      QStringLiteral("foundation/vhoclipbrdutils.h"),
            QStringLiteral("foundation/vhortti.h"),         QStringLiteral("foundation/vhosysutils.h"),
            QStringLiteral("inspector/qoreditorintf.h"),    QStringLiteral("inspector/qorinspector.h"),
            QStringLiteral("inspector/qorinspectorintf.h"), QStringLiteral("inspector/qorpropdetail.h"),
            QStringLiteral("inspector/qorpropedit.h"),      QStringLiteral("inspector/qorpropeditors.h"),
            QStringLiteral("inspector/qorproplist.h"),      QStringLiteral("inspector/qortransinspector.h"),
            QStringLiteral("inspector/qorvaluelist.h"),     QStringLiteral("inspector/qorvaluelisteditor.h"),
            QStringLiteral("qordesign_export.h"),           QStringLiteral("translation/objtranslate.h"),
            QStringLiteral("translation/qortransutils.h")};
        expected.sort();
        QCOMPARE(installed, expected);

        static const QRegularExpression forbidden(
            QStringLiteral("^\\s*(using\\s+enum\\b|using\\s+namespace\\b|#\\s*include\\s*[<\"][^>\"]*_p\\.h[>\"])"),
            QRegularExpression::MultilineOption);
        for (const QString &header : std::as_const(installed)) {
            QFile file(include.filePath(header));
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QString text = QString::fromUtf8(file.readAll());
            const QRegularExpressionMatch match = forbidden.match(text);
            QVERIFY2(!match.hasMatch(), qPrintable(header + QStringLiteral(": ") + match.captured(0)));
        }
    }

    // The Qt Designer plugin goes where Qt's own Designer plugins are under
    // the prefix, and finds the library installed beside it.
    void theInstallHoldsTheQtDesignerPlugin()
    {
#ifdef QOR_QT_PLUGIN_DIR
        const QString plugin = QDir(m_prefix).filePath(QStringLiteral(QOR_QT_PLUGIN_DIR "/designer/libqordesignerplugin.so"));
        QVERIFY2(QFileInfo::exists(plugin), qPrintable(plugin));
        QString linked;
        QVERIFY(run(QStringLiteral("ldd"), {plugin}, &linked));
        const QRegularExpression library(QStringLiteral("libQorDesign\\.so\\S* => (\\S+)"));
        const QRegularExpressionMatch match = library.match(linked);
        QVERIFY2(match.hasMatch(), qPrintable(linked));
        QCOMPARE(QFileInfo(match.captured(1)).canonicalPath(),
                 QFileInfo(QDir(m_prefix).filePath(QStringLiteral("lib"))).canonicalFilePath());
#else
        QSKIP("the Qt Designer plugin is not built (Qt's UiPlugin package was not found)");
#endif
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

    // Every installed header compiles in one translation unit after the
    // Win32 macros of window messages, key states and hit-test codes, with
    // the strict warnings and Qt defines as errors.
    void theHeadersClashWithNoWindowsNameAndBuildStrictly()
    {
        const QString build = m_work.filePath(QStringLiteral("consumer-build"));
        QVERIFY2(QFileInfo::exists(QDir(build).filePath(QStringLiteral("CMakeCache.txt"))),
                 "the consumer was not configured");
        QVERIFY(run(QStringLiteral(QOR_CMAKE_COMMAND),
                    {QStringLiteral("--build"), build, QStringLiteral("--target"), QStringLiteral("headercheck")}));
        QVERIFY(QFileInfo::exists(QDir(build).filePath(QStringLiteral("headercheck"))));
    }
};

QTEST_GUILESS_MAIN(tst_Package)
#include "tst_package.moc"
