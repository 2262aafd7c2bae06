// SPDX-License-Identifier: MIT
// The demo designer's history and files, used as a user uses them with
// real input: a drag and a run of nudges taken back with Ctrl+Z, a deletion
// undone and redone, a design saved, replaced by a new one and opened
// again, and the question before unsaved work is dropped.
#include "console/qordesignactions.h"
#include "console/qordesignconsole.h"
#include "console/qordesigndocument.h"
#include "designer/qormanager.h"
#include "foundation/qorcomponents.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"
#include "qordemowindow.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QUndoStack>

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
};

QTEST_MAIN(tst_DemoDocuments)
#include "tst_demodocuments.moc"
