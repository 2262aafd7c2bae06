// SPDX-License-Identifier: MIT
// The captions of the design commands under their numbers, and the
// library's Chinese translation: complete in the tree, installed at run
// time, turning the actions, the popup menu, the dialogs and the
// inspector's messages into Chinese with their mnemonics working.
#include "console/qordesignactions.h"
#include "console/qordesignconsole.h"
#include "console/qordesignpopupmenu.h"
#include "console/qordesignposalignform.h"
#include "console/qordsnconst.h"
#include "designer/qormanager.h"
#include "foundation/qorcomponents.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"

#include <QApplication>
#include <QFile>
#include <QPushButton>
#include <QTest>
#include <QXmlStreamReader>

namespace {

// Installs the Chinese translation for one test function.
struct Chinese
{
    Chinese() { installed = QorInstallTranslator(QLocale(QLocale::Chinese, QLocale::China)) != nullptr; }
    ~Chinese() { QorRemoveTranslator(); }
    bool installed = false;
};

} // namespace

class tst_QorDsnConst : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyCaptionHasItsNumber();
    void anUnknownNumberHasNoText();
    void theTranslationInTheTreeIsComplete();
    void theLibraryHasChinese();
    void anUnknownLanguageInstallsNothing();
    void theCaptionsTurnChineseWithTheirMnemonics();
    void actionsFollowTheLanguageUnlessGivenATextOfTheirOwn();
    void theDialogsAndTheInspectorsMessagesTurnChinese();
    void theChinesePopupMenuWorksByMnemonics();
};

void tst_QorDsnConst::everyCaptionHasItsNumber()
{
    using namespace QorDsnConst;
    const QList<std::pair<int, const char *>> table{
        {65504, "&Flip Children"},     {65505, "&All"},
        {65506, "&Selected"},          {65507, "&Position"},
        {65508, "&Align..."},          {65509, "&Size..."},
        {65510, "Scal&e..."},          {65511, "Attri&b..."},
        {65512, "&Event..."},          {65521, "Image List Editor"},
        {65522, "Add"},                {65523, "Divide"},
        {65524, "Graphic Unsupported"}, {65525, "Image List Editor..."},
        {65526, "Invalid Property Value;"}, {65527, "&Edit"},
        {65528, "&Copy"},              {65529, "&Cut"},
        {65530, "&Paste"},             {65531, "Select &All"},
        {65532, "&Delete"},            {65533, "&Control"},
        {65534, "&Bring to Front"},    {65535, "&Send to Back"}};
    QList<int> ids;
    for (const auto &[id, text] : table) {
        ids << id;
        QCOMPARE(QLatin1String(SourceText(id)), QLatin1String(text));
        QCOMPARE(LoadStr(id), QLatin1String(text));
    }
    QCOMPARE(StringIds(), ids);
    QCOMPARE(int(SCopy), 65528);
    QCOMPARE(int(SFlipChildren), 65504);
    QCOMPARE(int(SSendToBack), 65535);
}

void tst_QorDsnConst::anUnknownNumberHasNoText()
{
    QVERIFY(!QorDsnConst::SourceText(65513));
    QVERIFY(QorDsnConst::LoadStr(65513).isEmpty());
    QVERIFY(QorDsnConst::LoadStr(-1).isEmpty());
}

void tst_QorDsnConst::theTranslationInTheTreeIsComplete()
{
    QFile file(qEnvironmentVariable("QORDESIGN_SOURCE_DIR") + QStringLiteral("/resources/translations/qordesign_zh_CN.ts"));
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.fileName()));
    QXmlStreamReader xml(&file);
    QString context;
    QString source;
    int messages = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("source")) {
            source = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            const bool unfinished = xml.attributes().value(QLatin1String("type")) == QLatin1String("unfinished");
            const QString translation = xml.readElementText();
            const QString where = context + QStringLiteral(": ") + source;
            QVERIFY2(!unfinished && !translation.isEmpty(), qPrintable(where));
            // A mnemonic in English has one in Chinese.
            QCOMPARE(translation.contains(QLatin1Char('&')), source.contains(QLatin1Char('&')));
            ++messages;
        }
    }
    QVERIFY(!xml.hasError());
    QVERIFY(messages > 100);
}

void tst_QorDsnConst::theLibraryHasChinese()
{
    QVERIFY(QorTranslationLanguages().contains(QStringLiteral("zh_CN")));
}

void tst_QorDsnConst::anUnknownLanguageInstallsNothing()
{
    QVERIFY(!QorInstallTranslator(QLocale(QLocale::Swahili)));
    QCOMPARE(QorDsnConst::LoadStr(QorDsnConst::SCopy), QStringLiteral("&Copy"));
    // Removing what is not there is fine.
    QorRemoveTranslator();
}

void tst_QorDsnConst::theCaptionsTurnChineseWithTheirMnemonics()
{
    {
        Chinese chinese;
        QVERIFY(chinese.installed);
        QCOMPARE(QorDsnConst::LoadStr(QorDsnConst::SCopy), QStringLiteral("复制(&C)"));
        QCOMPARE(QorDsnConst::LoadStr(QorDsnConst::SEdit), QStringLiteral("编辑(&E)"));
        for (int id : QorDsnConst::StringIds()) {
            const QString text = QorDsnConst::LoadStr(id);
            QVERIFY2(text != QLatin1String(QorDsnConst::SourceText(id)), QorDsnConst::SourceText(id));
            QCOMPARE(text.contains(QLatin1Char('&')), QByteArray(QorDsnConst::SourceText(id)).contains('&'));
        }
        // A second installation replaces the first.
        QVERIFY(QorInstallTranslator(QLocale(QLocale::Chinese, QLocale::China)));
        QCOMPARE(QorDsnConst::LoadStr(QorDsnConst::SPaste), QStringLiteral("粘贴(&P)"));
    }
    QCOMPARE(QorDsnConst::LoadStr(QorDsnConst::SCopy), QStringLiteral("&Copy"));
}

void tst_QorDsnConst::actionsFollowTheLanguageUnlessGivenATextOfTheirOwn()
{
    TQorDesignEditCopy copy;
    TQorDesignSelCtrlBringToFront front;
    TQorDesignEditPaste paste;
    paste.setText(QStringLiteral("Paste here"));
    {
        Chinese chinese;
        QVERIFY(chinese.installed);
        QTRY_COMPARE(copy.text(), QStringLiteral("复制(&C)"));
        QTRY_COMPARE(front.text(), QStringLiteral("置于顶层(&B)"));
        QCOMPARE(front.Hint(), QStringLiteral("置于顶层(&B)|置于顶层(&B)"));
        QCOMPARE(paste.text(), QStringLiteral("Paste here"));
    }
    QTRY_COMPARE(copy.text(), QStringLiteral("&Copy"));
    QTRY_COMPARE(front.Hint(), QStringLiteral("&Bring to Front|&Bring to Front"));
    QCOMPARE(paste.text(), QStringLiteral("Paste here"));
}

void tst_QorDsnConst::theDialogsAndTheInspectorsMessagesTurnChinese()
{
    TDialogPosAlign *align = QorDialogPosAlign();
    QCOMPARE(align->windowTitle(), QStringLiteral("Alignment"));
    {
        Chinese chinese;
        QVERIFY(chinese.installed);
        QTRY_COMPARE(align->windowTitle(), QStringLiteral("对齐"));
        QCOMPARE(QCoreApplication::translate("TVhoObjInspector", "Invalid Property Value; %1"),
                 QStringLiteral("无效的属性值；%1"));
        QCOMPARE(QCoreApplication::translate("TPropertyEditor", "'%1' is not a valid integer value"),
                 QStringLiteral("“%1”不是有效的整数值"));
    }
    QTRY_COMPARE(align->windowTitle(), QStringLiteral("Alignment"));
}

void tst_QorDsnConst::theChinesePopupMenuWorksByMnemonics()
{
    Chinese chinese;
    QVERIFY(chinese.installed);
    QWidget form;
    form.setObjectName(QStringLiteral("Form1"));
    form.resize(400, 300);
    auto *button = new QPushButton(QStringLiteral("One"), &form);
    button->setObjectName(QStringLiteral("Button1"));
    button->setGeometry(20, 20, 80, 30);
    InsertComponent(&form, button);
    auto *manager = new TQorDesignManager(&form);
    TQorDesignCenter center;
    center.SetDesignManager(manager);
    TQorDefDesignCompPopupMenu menu;
    center.SetDesignPopupMenu(&menu);
    manager->SetIsDesigning(true);
    QVERIFY(QorGuiTest::showAndActivate(&form));
    RealInput::click(&form, QPoint(300, 200), Qt::RightButton);
    QTRY_VERIFY(menu.isVisible());
    QStringList titles;
    for (QAction *action : menu.actions())
        titles << action->text();
    // The stage alone is selected: its editor's separator (it has no
    // verbs) comes first.
    QCOMPARE(titles, (QStringList{QString(), QStringLiteral("编辑(&E)"), QStringLiteral("控件(&C)"), QString(),
                                  QStringLiteral("位置(&P)"), QStringLiteral("翻转子控件(&F)")}));
    // E opens Edit, A there is Select All.
    RealInput::key("e");
    QMenu *edit = menu.actions().at(1)->menu();
    QTRY_VERIFY(edit->isVisible());
    QCOMPARE(edit->actions().at(3)->text(), QStringLiteral("全选(&A)"));
    RealInput::key("a");
    QTRY_VERIFY(!menu.isVisible());
    QTRY_COMPARE(center.SelectedComps().toList(), QList<QObject *>{button});
    manager->SetIsDesigning(false);
    center.SetDesignManager(nullptr);
}

QTEST_MAIN(tst_QorDsnConst)
#include "tst_qordsnconst.moc"
