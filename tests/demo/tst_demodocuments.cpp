// SPDX-License-Identifier: MIT
// The demo designer's history and files, used as a user uses them with
// real input: a drag and a run of nudges taken back with Ctrl+Z, a deletion
// undone and redone, a design saved, replaced by a new one and opened
// again, the question before unsaved work is dropped, the work of a demo
// program killed with SIGKILL offered back when it starts again, and a
// user's customization of the sample form carried from its first version
// to its second.
#include "console/qorcustomization.h"
#include "console/qorcustomizationrecorder.h"
#include "console/qorcustomizationstore.h"
#include "console/qordesignactions.h"
#include "console/qordesignconsole.h"
#include "console/qordesigndocument.h"
#include "designer/qormanager.h"
#include "foundation/qorcomponents.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"
#include "qordemowindow.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDirIterator>
#include <QProcess>
#include <QScopeGuard>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QScreen>
#include <QImage>
#include <QGuiApplication>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QUndoStack>

#include <algorithm>
#include <functional>

namespace {

struct Demo
{
    QorDemoWindow window;
    QWidget *stage = nullptr;
    QLineEdit *line = nullptr;

    bool start()
    {
        if (!QorGuiTest::showAndActivate(&window, QPoint(0, 0)))
            return false;
        window.designAction()->setChecked(true);
        stage = window.stage();
        line = stage->findChild<QLineEdit *>(QStringLiteral("LineEdit1"));
        return window.designManager()->IsDesigning() && line;
    }

    QUndoStack *stack() const { return window.designCenter()->UndoStack(); }

    // Each component's name, class, parent and geometry, in owner order.
    QStringList design() const
    {
        QStringList out;
        for (QObject *component : ComponentList(stage)) {
            QString entry = component->objectName() + QLatin1Char(' ')
                + QLatin1String(component->metaObject()->className());
            if (auto *w = qobject_cast<QWidget *>(component))
                entry += QStringLiteral(" in %1 at %2,%3 %4x%5")
                             .arg(w->parentWidget()->objectName())
                             .arg(w->x())
                             .arg(w->y())
                             .arg(w->width())
                             .arg(w->height());
            out << entry;
        }
        return out;
    }
};

// Answers the next file dialog with a path typed into its name field.
std::shared_ptr<bool> typeIntoFileDialog(const QString &Path)
{
    return QorGuiTest::whenModalOpens([Path](QWidget *modal) {
        auto *dialog = qobject_cast<QFileDialog *>(modal);
        QVERIFY(dialog);
        auto *name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        QVERIFY(name);
        RealInput::click(name);
        RealInput::key("a", Qt::ControlModifier);
        QVERIFY(RealInput::typeText(Path));
        RealInput::key("Return");
    });
}

// Clicks the button of the next message box that has the role.
std::shared_ptr<bool> answerMessageBox(QMessageBox::StandardButton Button, QString *Name = nullptr)
{
    return QorGuiTest::whenModalOpens([Button, Name](QWidget *modal) {
        auto *box = qobject_cast<QMessageBox *>(modal);
        QVERIFY(box);
        if (Name)
            *Name = box->objectName();
        RealInput::click(box->button(Button));
    });
}

// The demo program's environment with settings, recovery copies and
// customizations of its own under Home, not the user's.
QProcessEnvironment environmentUnder(const QTemporaryDir &Home)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), Home.filePath(QStringLiteral("config")));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), Home.filePath(QStringLiteral("data")));
    return environment;
}

// The program's window of Size at At, as Qt's command line places it.
QString windowGeometry(const QSize &Size, const QPoint &At)
{
    return QStringLiteral("%1x%2+%3+%4").arg(Size.width()).arg(Size.height()).arg(At.x()).arg(At.y());
}

// Waits for another program's window titled Title (a question or a
// report), gives it the keyboard and accepts it with Return.
bool acceptWindowOfOtherProgram(const QString &Title)
{
    QRect window;
    if (!QTest::qWaitFor(
            [&] {
                window = RealInput::windowNamed(Title, Qt::MatchExactly);
                return !window.isEmpty();
            },
            20000)
        || !RealInput::focusWindowAt(window.center()))
        return false;
    RealInput::key("Return");
    return true;
}

} // namespace

class tst_DemoDocuments : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QorGuiTest::RealInputTestCase::initTestCase();
        // Settings and recovery copies of their own, not the user's.
        QStandardPaths::setTestModeEnabled(true);
    }

    void aDragIsTakenBackWithCtrlZ()
    {
        Demo d;
        QVERIFY(d.start());
        const QStringList before = d.design();
        const QRect was = d.line->geometry();
        RealInput::drag(d.line, QPoint(30, 10), QPoint(30 + 40, 10 + 30), 8);
        QTRY_COMPARE(d.line->geometry(), was.translated(40, 30));
        QTRY_COMPARE(d.stack()->count(), 1);
        QVERIFY(d.window.isWindowModified());
        RealInput::key("z", Qt::ControlModifier);
        QTRY_COMPARE(d.design(), before);
        QTRY_VERIFY(!d.window.isWindowModified());
    }

    void aRunOfNudgesIsUndoneInOneStep()
    {
        Demo d;
        QVERIFY(d.start());
        const QRect was = d.line->geometry();
        RealInput::click(d.line);
        QTRY_COMPARE(d.window.designCenter()->SelectedComps().First(), d.line);
        for (int i = 1; i <= 4; ++i) {
            RealInput::key("Right", Qt::ControlModifier);
            QTRY_COMPARE(d.line->x(), was.x() + i);
        }
        QTRY_COMPARE(d.stack()->count(), 1);
        QCOMPARE(d.window.undoAction()->text(), QStringLiteral("&Undo Nudge"));
        RealInput::key("z", Qt::ControlModifier);
        QTRY_COMPARE(d.line->geometry(), was);
        QVERIFY(!d.window.undoAction()->isEnabled());
    }

    void aDeletionIsUndoneAndRedoneByKeysAndMenu()
    {
        Demo d;
        QVERIFY(d.start());
        const QStringList before = d.design();
        RealInput::click(d.line);
        QTRY_COMPARE(d.window.designCenter()->SelectedComps().First(), d.line);
        RealInput::key("Delete");
        QTRY_VERIFY(!FindComponent(d.stage, QStringLiteral("LineEdit1")));
        const QStringList deleted = d.design();
        QVERIFY(QorGuiTest::chooseFromMenu(&d.window, "EditMenu", "UndoAction"));
        QTRY_COMPARE(d.design(), before);
        QCOMPARE(d.window.designCenter()->SelectedComps().First()->objectName(), QStringLiteral("LineEdit1"));
        RealInput::key("y", Qt::ControlModifier);
        QTRY_COMPARE(d.design(), deleted);
        RealInput::key("z", Qt::ControlModifier);
        QTRY_COMPARE(d.design(), before);
        RealInput::key("z", Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_COMPARE(d.design(), deleted);
    }

    void aSavedDesignComesBackAfterNewAndOpen()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString file = dir.filePath(QStringLiteral("customer.qord"));
        Demo d;
        QVERIFY(d.start());
        // A change first, so that the saved design is not the start's.
        RealInput::click(d.line);
        QTRY_COMPARE(d.window.designCenter()->SelectedComps().First(), d.line);
        RealInput::key("Down", Qt::ControlModifier);
        QTRY_COMPARE(d.stack()->count(), 1);
        const QStringList saved = d.design();

        auto typed = typeIntoFileDialog(file);
        QVERIFY(QorGuiTest::chooseFromMenu(&d.window, "FileMenu", "SaveAsAction"));
        QTRY_VERIFY(*typed);
        QTRY_VERIFY(QFileInfo::exists(file));
        QCOMPARE(d.window.document()->FileName(), file);
        QTRY_VERIFY(!d.window.isWindowModified());
        QVERIFY(d.window.windowTitle().startsWith(QStringLiteral("customer.qord")));

        QVERIFY(QorGuiTest::chooseFromMenu(&d.window, "FileMenu", "NewAction"));
        QTRY_COMPARE(ComponentCount(d.stage), 0);
        QVERIFY(d.window.document()->FileName().isEmpty());
        QCOMPARE(d.stack()->count(), 0);

        auto opened = typeIntoFileDialog(file);
        QVERIFY(QorGuiTest::chooseFromMenu(&d.window, "FileMenu", "OpenAction"));
        QTRY_VERIFY(*opened);
        QTRY_COMPARE(d.design(), saved);
        QCOMPARE(d.window.document()->FileName(), file);
        QVERIFY(!d.window.isWindowModified());
        QCOMPARE(d.window.recentFiles().value(0), QFileInfo(file).absoluteFilePath());
    }

    void unsavedWorkIsAskedAboutBeforeItGoes()
    {
        Demo d;
        QVERIFY(d.start());
        RealInput::click(d.line);
        QTRY_COMPARE(d.window.designCenter()->SelectedComps().First(), d.line);
        RealInput::key("Delete");
        QTRY_VERIFY(d.window.isWindowModified());
        const QStringList changed = d.design();
        // Cancel keeps everything.
        QString boxName;
        auto cancelled = answerMessageBox(QMessageBox::Cancel, &boxName);
        QVERIFY(QorGuiTest::chooseFromMenu(&d.window, "FileMenu", "NewAction"));
        QTRY_VERIFY(*cancelled);
        QCOMPARE(boxName, QStringLiteral("UnsavedChangesBox"));
        QCOMPARE(d.design(), changed);
        QVERIFY(d.window.isWindowModified());
        // Discard lets it go.
        auto discarded = answerMessageBox(QMessageBox::Discard);
        QVERIFY(QorGuiTest::chooseFromMenu(&d.window, "FileMenu", "NewAction"));
        QTRY_VERIFY(*discarded);
        QTRY_COMPARE(ComponentCount(d.stage), 0);
        QVERIFY(!d.window.isWindowModified());
    }

    // The demo program is killed with SIGKILL while its design holds
    // unsaved work: its recovery copy holds that work, and the next start
    // offers it back.
    void workOfAKilledDemoIsOfferedBackAtTheNextStart()
    {
        // This window lays out as the program's does: a point of it is the
        // same point of the program's window, moved.
        Demo d;
        QVERIFY(d.start());
        const QRect lineBefore = d.line->geometry();
        const QPoint programAt(40, 30);
        const QPoint lineSpot = programAt + d.line->mapTo(&d.window, d.line->rect().center());
        const QSize size = d.window.size();
        d.window.hide();

        QTemporaryDir home;
        QVERIFY(home.isValid());
        const QProcessEnvironment environment = environmentUnder(home);
        const QStringList arguments{QStringLiteral("-qwindowgeometry"), windowGeometry(size, programAt),
                                    QStringLiteral("--design")};
        const QString title = QStringLiteral("Untitled - QorDesign demo");
        const QString modifiedTitle = QStringLiteral("Untitled* - QorDesign demo");
        auto recoveryCopies = [&home] {
            QStringList found;
            QDirIterator it(home.filePath(QStringLiteral("data")), QDir::Files, QDirIterator::Subdirectories);
            while (it.hasNext()) {
                const QString file = it.next();
                if (!file.endsWith(QStringLiteral(".lock")))
                    found << file;
            }
            return found;
        };

        QProcess first;
        first.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        first.setProcessEnvironment(environment);
        first.start(QStringLiteral(QORDEMO), arguments);
        QVERIFY(first.waitForStarted(10000));
        auto stopFirst = qScopeGuard([&first] {
            first.kill();
            first.waitForFinished(10000);
        });
        QVERIFY(QTest::qWaitFor([&] { return RealInput::windowNamed(title, Qt::MatchExactly).topLeft() == programAt; }, 20000));
        QVERIFY(recoveryCopies().isEmpty());
        // The line edit is chosen and nudged down, until the title shows
        // the change: keys that reach the program before it took the click
        // are lost, as a user's would be.
        QVERIFY(RealInput::focusWindowAt(lineSpot));
        bool changed = false;
        for (int attempt = 0; attempt < 5 && !changed; ++attempt) {
            RealInput::clickAt(lineSpot);
            RealInput::key("Down", Qt::ControlModifier);
            changed = QTest::qWaitFor([&] { return !RealInput::windowNamed(modifiedTitle, Qt::MatchExactly).isEmpty(); },
                                      3000);
        }
        QVERIFY(changed);
        QVERIFY(QTest::qWaitFor([&] { return !recoveryCopies().isEmpty(); }, 20000));
        first.kill();
        QVERIFY(first.waitForFinished(10000));
        QCOMPARE(first.exitStatus(), QProcess::CrashExit);
        stopFirst.dismiss();
        const QStringList left = recoveryCopies();
        QVERIFY2(!left.isEmpty(), "the killed program's recovery copy is gone");

        // The next start asks; Yes brings the work back, unsaved.
        QProcess second;
        second.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        second.setProcessEnvironment(environment);
        second.start(QStringLiteral(QORDEMO), arguments);
        QVERIFY(second.waitForStarted(10000));
        const auto stopSecond = qScopeGuard([&second] {
            second.kill();
            second.waitForFinished(10000);
        });
        QVERIFY(acceptWindowOfOtherProgram(QStringLiteral("QorDesign demo")));
        QVERIFY(QTest::qWaitFor([&] { return !RealInput::windowNamed(modifiedTitle, Qt::MatchExactly).isEmpty(); }, 20000));
        QVERIFY(RealInput::windowNamed(QStringLiteral("QorDesign demo"), Qt::MatchExactly).isEmpty());

        // What the copy holds: the line edit one step down.
        QTemporaryDir folder;
        QVERIFY(folder.isValid());
        QVERIFY(QFile::copy(left.first(), folder.filePath(QFileInfo(left.first()).fileName())));
        Demo reader;
        QVERIFY(reader.start());
        reader.window.document()->SetRecoveryFolder(folder.path());
        const QList<TQorRecoveryCopy> copies = reader.window.document()->FindRecoveryCopies();
        QCOMPARE(copies.size(), 1);
        QVERIFY2(reader.window.document()->LoadRecovery(copies.first()),
                 qPrintable(reader.window.document()->ErrorString()));
        auto *line = qobject_cast<QLineEdit *>(FindComponent(reader.stage, QStringLiteral("LineEdit1")));
        QVERIFY(line);
        QVERIFY(line != reader.line);
        QVERIFY(line->y() > lineBefore.y());
        QCOMPARE(line->geometry(), lineBefore.translated(0, line->y() - lineBefore.y()));
        QVERIFY(reader.window.document()->Modified());
    }

    // A user's customization of version 1 of the form, made with real
    // input, comes back in version 2 when the window starts again: what
    // version 2 dropped is reported, what it added stays where it put it.
    // Reset to Default puts version 2's form back, and Ctrl+Z the user's.
    void aCustomizationOfVersion1ComesBackInVersion2()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString store = dir.filePath(QStringLiteral("customizations.db"));
        auto named = [](QWidget *stage, const char *name) {
            return qobject_cast<QWidget *>(FindComponent(stage, QLatin1String(name)));
        };
        QRect lineMoved;
        {
            Demo d;
            QVERIFY(d.start());
            QVERIFY(d.window.startCustomizing(1, store));
            QCOMPARE(d.window.formVersion(), 1);
            QWidget *line = named(d.stage, "LineEdit1");
            QWidget *spin = named(d.stage, "SpinBox1");
            QVERIFY(line && spin && d.window.designManager()->IsDesigning());
            RealInput::click(line);
            auto selectedName = [&d] {
                QObject *first = d.window.designCenter()->SelectedComps().First();
                return first ? first->objectName() : QString();
            };
            QTRY_COMPARE(selectedName(), QStringLiteral("LineEdit1"));
            RealInput::key("Down", Qt::ControlModifier);
            RealInput::key("Down", Qt::ControlModifier);
            QTRY_COMPARE(line->y(), 26);
            RealInput::click(spin);
            QTRY_COMPARE(selectedName(), QStringLiteral("SpinBox1"));
            RealInput::key("Right", Qt::ControlModifier);
            QTRY_COMPARE(spin->x(), 291);
            lineMoved = line->geometry();
            QVERIFY(d.window.customizationRecorder()->Delta().HasComponent(QStringLiteral("SpinBox1")));
        }

        Demo d;
        QVERIFY(d.start());
        QString boxName;
        auto reported = answerMessageBox(QMessageBox::Ok, &boxName);
        QVERIFY(d.window.startCustomizing(2, store));
        QTRY_VERIFY(*reported);
        QCOMPARE(boxName, QStringLiteral("CustomizationReport"));
        QCOMPARE(d.window.formVersion(), 2);
        const QList<TQorCustomizationIssue> issues = d.window.customizationIssues();
        QVERIFY(std::any_of(issues.cbegin(), issues.cend(),
                            [](const TQorCustomizationIssue &i) { return i.Path == QLatin1String("SpinBox1"); }));
        QCOMPARE(named(d.stage, "LineEdit1")->geometry(), lineMoved);
        QVERIFY(!named(d.stage, "SpinBox1"));
        QCOMPARE(named(d.stage, "EmailEdit")->geometry(), QRect(290, 140, 240, 28));
        QCOMPARE(named(d.stage, "CheckBox1")->geometry(), QRect(290, 184, 240, 24));
        QVERIFY(named(d.stage, "KindCombo"));

        QVERIFY(QorGuiTest::chooseFromMenu(&d.window, "CustomizeMenu", "ResetToDefaultAction"));
        QTRY_COMPARE(named(d.stage, "LineEdit1")->geometry(), QRect(290, 24, 240, 28));
        QVERIFY2(d.window.customizationRecorder()->Delta().IsEmpty(),
                 qPrintable(d.window.customizationRecorder()->Delta().Describe().join(QLatin1Char('\n'))));
        QCOMPARE(qobject_cast<QComboBox *>(named(d.stage, "KindCombo"))->count(), 3);
        RealInput::click(d.stage, QPoint(d.stage->width() - 20, d.stage->height() - 20));
        RealInput::key("z", Qt::ControlModifier);
        QTRY_COMPARE(named(d.stage, "LineEdit1")->geometry(), lineMoved);
        QVERIFY(d.window.customizationRecorder()->Delta().HasComponent(QStringLiteral("LineEdit1")));
    }

    // Switching the form's version while a file's design holds unsaved
    // changes asks first; cancelled, the design and the version stay.
    void anotherVersionAsksBeforeUnsavedWorkGoes()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        Demo d;
        QVERIFY(d.start());
        QVERIFY(d.window.startCustomizing(1, dir.filePath(QStringLiteral("customizations.db"))));
        auto *line = qobject_cast<QWidget *>(FindComponent(d.stage, QStringLiteral("LineEdit1")));
        QVERIFY(line);
        QVERIFY(d.window.document()->SaveAs(dir.filePath(QStringLiteral("mine.qord"))));
        RealInput::click(line);
        QTRY_COMPARE(d.window.designCenter()->SelectedComps().First(), line);
        RealInput::key("Down", Qt::ControlModifier);
        QTRY_VERIFY(d.window.isWindowModified());
        QString boxName;
        auto cancelled = answerMessageBox(QMessageBox::Cancel, &boxName);
        QVERIFY(QorGuiTest::chooseFromMenu(&d.window, "CustomizeMenu", "FormVersion2Action"));
        QTRY_VERIFY(*cancelled);
        QCOMPARE(boxName, QStringLiteral("UnsavedChangesBox"));
        QCOMPARE(d.window.formVersion(), 1);
        QVERIFY(d.window.findChild<QAction *>(QStringLiteral("FormVersion1Action"))->isChecked());
        QCOMPARE(FindComponent(d.stage, QStringLiteral("LineEdit1")), line);
        QVERIFY(d.window.isWindowModified());
    }

    // The demo program as a user runs it: version 1 customized with real
    // input and quit from the File menu's keys, then version 2 started,
    // which reports what it could not keep and holds the rest.
    void aCustomizationSurvivesQuittingAndTheNextVersion()
    {
        Demo d;
        QVERIFY(d.start());
        const QPoint programAt(40, 30);
        const QPoint lineSpot = programAt + d.line->mapTo(&d.window, d.line->rect().center());
        const QRect lineBefore = d.line->geometry();
        const QSize size = d.window.size();
        d.window.hide();

        QTemporaryDir home;
        QVERIFY(home.isValid());
        QProcessEnvironment environment = environmentUnder(home);
        environment.insert(QStringLiteral("USER"), QStringLiteral("ada"));
        const QString geometry = windowGeometry(size, programAt);
        const QString title = QStringLiteral("Untitled - QorDesign demo");
        const QString store = home.filePath(QStringLiteral("config/QorDesign/qordemo/customizations.db"));
        auto run = [&](QProcess &program, int version) {
            program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
            program.setProcessEnvironment(environment);
            program.start(QStringLiteral(QORDEMO), {QStringLiteral("-qwindowgeometry"), geometry, QStringLiteral("--design"),
                                                    QStringLiteral("--form-version=%1").arg(version)});
            return program.waitForStarted(10000);
        };
        auto stored = [&store](const char *version) {
            TQorCustomizationStore customizations;
            TQorCustomization delta;
            if (!customizations.Open(store)
                || !customizations.Read(QStringLiteral("ada"), QStringLiteral("CustomerForm"), QLatin1String(version),
                                        delta))
                return TQorCustomization();
            return delta;
        };

        // Version 1: the line edit chosen, everything selected and nudged
        // right, then quit. The program shows each step on the screen (the
        // marks of the chosen controls), and each key is sent once the step
        // before it shows: keys that come earlier may be lost, as a user's
        // typing ahead would be.
        auto marked = [](const QPoint &global) {
            const QImage pixel = QGuiApplication::primaryScreen()->grabWindow(0, global.x(), global.y(), 1, 1).toImage();
            return !pixel.isNull() && qGray(pixel.pixel(0, 0)) < 160;
        };
        // Two pixels outside a control's top left corner: the stage's
        // white until the control's marks cover it.
        auto cornerOf = [&](const QWidget *control) {
            return programAt + d.stage->mapTo(&d.window, control->geometry().topLeft() - QPoint(2, 2));
        };
        const QPoint lineCorner = cornerOf(d.line);
        const QPoint spinCorner = cornerOf(d.stage->findChild<QWidget *>(QStringLiteral("SpinBox1")));
        auto untilShown = [&](const std::function<void()> &Step, const std::function<bool()> &Shown) {
            for (int attempt = 0; attempt < 5; ++attempt) {
                Step();
                if (QTest::qWaitFor(Shown, 3000))
                    return true;
            }
            return false;
        };
        const QString modified = QStringLiteral("Untitled* - QorDesign demo");
        QProcess first;
        QVERIFY(run(first, 1));
        auto stopFirst = qScopeGuard([&first] {
            first.kill();
            first.waitForFinished(10000);
        });
        QVERIFY(QTest::qWaitFor([&] { return RealInput::windowNamed(title, Qt::MatchExactly).topLeft() == programAt; },
                                20000));
        // Painted, and nothing chosen yet.
        QVERIFY(QTest::qWaitFor([&] { return !marked(lineCorner) && !marked(spinCorner); }, 10000));
        QVERIFY(RealInput::focusWindowAt(lineSpot));
        QVERIFY(untilShown([&] { RealInput::clickAt(lineSpot); }, [&] { return marked(lineCorner); }));
        QVERIFY(untilShown([] { RealInput::key("a", Qt::ControlModifier); }, [&] { return marked(spinCorner); }));
        QVERIFY(untilShown([] { RealInput::key("Right", Qt::ControlModifier); },
                           [&] { return !RealInput::windowNamed(modified, Qt::MatchExactly).isEmpty(); }));
        // Quit: the customization is kept without a question.
        RealInput::key("q", Qt::ControlModifier);
        QVERIFY(first.waitForFinished(20000));
        stopFirst.dismiss();
        QCOMPARE(first.exitStatus(), QProcess::NormalExit);
        const TQorCustomization kept = stored("1");
        const QRect lineKept = kept.PropertyValue(QStringLiteral("LineEdit1"), "geometry").toRect();
        QVERIFY(lineKept.x() > lineBefore.x());
        QCOMPARE(lineKept.y(), lineBefore.y());
        QVERIFY(kept.HasComponent(QStringLiteral("SpinBox1")));

        // Version 2: the spin box is gone, which is reported; the rest is kept.
        QProcess second;
        QVERIFY(run(second, 2));
        auto stopSecond = qScopeGuard([&second] {
            second.kill();
            second.waitForFinished(10000);
        });
        QVERIFY(acceptWindowOfOtherProgram(QStringLiteral("Customize")));
        QVERIFY(QTest::qWaitFor([&] { return RealInput::windowNamed(QStringLiteral("Customize"), Qt::MatchExactly).isEmpty(); }, 10000));
        const QRect main = RealInput::windowNamed(title, Qt::MatchExactly);
        QVERIFY(!main.isEmpty());
        QVERIFY(RealInput::focusWindowAt(main.center()));
        RealInput::key("q", Qt::ControlModifier);
        QVERIFY(second.waitForFinished(20000));
        stopSecond.dismiss();
        const TQorCustomization inVersion2 = stored("2");
        QCOMPARE(inVersion2.PropertyValue(QStringLiteral("LineEdit1"), "geometry").toRect(), lineKept);
        QVERIFY(!inVersion2.HasComponent(QStringLiteral("SpinBox1")));
    }
};

QTEST_MAIN(tst_DemoDocuments)
#include "tst_demodocuments.moc"
