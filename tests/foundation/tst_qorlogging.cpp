// SPDX-License-Identifier: MIT
// What the library skips or refuses leaves a trace in its logging
// categories: nothing by default, one message in the layer's category once
// the "qor.*" categories are switched on.
#include "foundation/qorcomponents.h"
#include "foundation/qorstream.h"
#include "foundation/vhoclipbrdutils.h"
#include "harness/qorguitest.h"
#include "inspector/qorinspector.h"
#include "translation/qortransutils.h"

#include <QFile>
#include <QLoggingCategory>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace {

struct Message
{
    QString category;
    QString text;
};

// The library's messages (categories "qor.*") a test function produced;
// every other message goes on to Qt Test's own handler.
QList<Message> g_messages;
QtMessageHandler g_previousHandler = nullptr;

void collect(QtMsgType Type, const QMessageLogContext &Context, const QString &Text)
{
    if (Context.category && QByteArray(Context.category).startsWith("qor.")) {
        g_messages.append({QString::fromLatin1(Context.category), Text});
        return;
    }
    if (g_previousHandler)
        g_previousHandler(Type, Context, Text);
}

QStringList categoriesOf(const QList<Message> &Messages)
{
    QStringList categories;
    for (const Message &m : Messages)
        categories.append(m.category);
    return categories;
}

// Exactly one library message since the test function began, in Category,
// naming Subject.
void expectOneMessage(const char *Category, const QString &Subject)
{
    QCOMPARE(categoriesOf(g_messages), QStringList{QLatin1String(Category)});
    QVERIFY2(g_messages.first().text.contains(Subject), qPrintable(g_messages.first().text));
}

// A form with one component, and the records of that component with a
// damaged record between two sound ones.
struct Form
{
    std::unique_ptr<QWidget> form = std::make_unique<QWidget>();
    QPushButton *button = new QPushButton(QStringLiteral("Button"), form.get());

    Form()
    {
        form->setObjectName(QStringLiteral("Form1"));
        button->setObjectName(QStringLiteral("Button1"));
        button->setGeometry(10, 10, 80, 25);
        InsertComponent(form.get(), button);
    }

    // Puts the button's record on the clipboard, then a damaged copy of it,
    // then the record again, and pastes them into a new form; the number of
    // components pasted.
    int pasteWithADamagedRecord() const
    {
        QByteArray damaged = ComponentToBytes(button);
        // The header and its length intact, the body spoilt.
        for (qsizetype i = 12; i < damaged.size(); i += 3)
            damaged[i] = char(0xee);
        QorGuiTest::putRecords(ComponentToBytes(button) + damaged + ComponentToBytes(button));
        QWidget target;
        target.setObjectName(QStringLiteral("Form2"));
        if (!VhoClipboard()->GetComponents(&target, &target, 8, 8))
            return 0;
        return ComponentCount(&target);
    }
};

} // namespace

class tst_QorLogging : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        // A pasted duplicate is renamed, not dropped (which is reported too).
        m_renamedDuplicates = VhoClipboard()->RenameDuplicates();
        VhoClipboard()->SetRenameDuplicates(true);
        g_messages.clear();
        g_previousHandler = qInstallMessageHandler(collect);
    }

    void cleanup()
    {
        qInstallMessageHandler(g_previousHandler);
        QLoggingCategory::setFilterRules(QString());
        VhoClipboard()->SetRenameDuplicates(m_renamedDuplicates);
        QTRY_COMPARE(QorGuiTest::liveTopLevelWidgets(), 0);
    }

    // Edge cases

    void aDamagedClipboardRecordIsSkippedSilentlyByDefault()
    {
        // Both sound records pasted: the damaged one was met and skipped.
        QCOMPARE(Form().pasteWithADamagedRecord(), 2);
        QCOMPARE(categoriesOf(g_messages), QStringList());
    }

    // The library's skips, one message each in the layer's category

    void aDamagedClipboardRecordIsReportedOnceInTheClipboardCategory()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("qor.*=true"));
        QCOMPARE(Form().pasteWithADamagedRecord(), 2);
        expectOneMessage("qor.clipboard", QStringLiteral("damaged clipboard record"));
    }

    void anUnreadableDictionaryIsReportedOnceInTheTranslationCategory()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("qor.*=true"));
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString path = dir.filePath(QStringLiteral("dictionary.db"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(4096, 'x'));
        file.close();
        TQorTransMan manager(path);
        // Each look-up tries the file again; it is reported once.
        QCOMPARE(manager.IdentToLabel(ttkPropName, QStringLiteral("QPushButton"), QStringLiteral("text"), nullptr),
                 QStringLiteral("text"));
        QCOMPARE(manager.IdentToLabel(ttkPropName, QStringLiteral("QPushButton"), QStringLiteral("flat"), nullptr),
                 QStringLiteral("flat"));
        expectOneMessage("qor.translation", path);
    }

    void anUnregisteredClassInDesignerTextIsReportedOnceInTheClipboardCategory()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("qor.*=true"));
        const QString text = QStringLiteral(
            "<ui version=\"4.0\"><widget class=\"QWidget\" name=\"Form\">"
            "<widget class=\"QorNoSuchWidget\" name=\"Odd1\"/>"
            "<widget class=\"QPushButton\" name=\"Button1\"/>"
            "</widget></ui>");
        const QList<QWidget *> roots = WidgetsFromDesignerText(text, nullptr);
        QCOMPARE(roots.size(), 1);
        const std::unique_ptr<QWidget> form(roots.first());
        QVERIFY(form->findChild<QPushButton *>(QStringLiteral("Button1")));
        expectOneMessage("qor.clipboard", QStringLiteral("QorNoSuchWidget"));
    }

    void aRefusedInspectorValueIsReportedOnceInTheInspectorCategory()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("qor.*=true"));
        Form f;
        f.button->setAutoRepeatDelay(300);
        TQorObjInspector inspector;
        inspector.SetActiveComponent(f.button);
        TValueListStrings *strings = inspector.Strings();
        int row = -1;
        for (int i = 0; i < strings->Count() && row < 0; ++i) {
            if (strings->Names(i).trimmed() == QLatin1String("autoRepeatDelay"))
                row = i;
        }
        QVERIFY(row >= 0);
        g_messages.clear();
        strings->SetValueFromIndex(row, QStringLiteral("abc"));
        inspector.ValidateLine(row);
        QVERIFY(!inspector.LastError().isEmpty());
        QCOMPARE(f.button->autoRepeatDelay(), 300);
        expectOneMessage("qor.inspector", QStringLiteral("autoRepeatDelay"));
    }

private:
    bool m_renamedDuplicates = false;
};

QTEST_MAIN(tst_QorLogging)
#include "tst_qorlogging.moc"
