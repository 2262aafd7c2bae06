// SPDX-License-Identifier: MIT
#include "foundation/qorclasses.h"
#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "foundation/qoruifile.h"

#include "qoruifixture.h"
#include "qoruifixture_uic.h"

#include <QBuffer>
#include <QColor>
#include <QDir>
#include <QFile>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTimer>
#include <QUiLoader>
#include <QtTest>

#include <memory>

// A widget of the application's own with a colour, registered with the
// library but unknown to Qt Designer.
class TSwatch : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor colour READ colour WRITE setColour)

public:
    QColor colour() const { return m_colour; }
    void setColour(const QColor &Colour) { m_colour = Colour; }

private:
    QColor m_colour = Qt::black;
};

namespace {

QString dataFile(const QString &Name)
{
    return QStringLiteral(QORUIFILE_DATA "/") + Name;
}

QString readData(const QString &Name)
{
    QFile file(dataFile(Name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll());
}

std::unique_ptr<QWidget> loadWithQt(const QString &Text)
{
    QUiLoader loader;
    QBuffer buffer;
    buffer.setData(Text.toUtf8());
    return std::unique_ptr<QWidget>(loader.load(&buffer));
}

// What a stage is made of: each component with its class, parent, place
// and name, and every widget under the stage.
QStringList snapshot(QWidget *Stage)
{
    QStringList lines;
    for (QObject *c : ComponentList(Stage)) {
        auto *w = qobject_cast<QWidget *>(c);
        lines << QStringLiteral("%1 %2 %3").arg(c->objectName(), QString::fromLatin1(c->metaObject()->className()),
                                               w ? QStringLiteral("%1,%2").arg(w->x()).arg(w->y()) : QString());
    }
    for (QWidget *w : Stage->findChildren<QWidget *>())
        lines << QLatin1String("widget ") + w->objectName();
    return lines;
}

} // namespace

class tst_QorUiFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { RegisterClass<TSwatch>(); }
    void cleanupTestCase() { UnRegisterClass(&TSwatch::staticMetaObject); }

    // Edge cases

    void aDamagedFormThrowsAndLeavesTheStageAsItWas_data()
    {
        QTest::addColumn<QString>("text");
        const QString sound = readData(QStringLiteral("nestedlayouts.ui"));
        QTest::newRow("cut in the middle of the form") << sound.left(sound.indexOf(QLatin1String("advancedTab")));
        QTest::newRow("broken at the end") << sound.left(sound.size() - 8) + QLatin1String("</uix>");
        QTest::newRow("another root element") << QStringLiteral("<form><widget class=\"QWidget\" name=\"f\"/></form>");
        QTest::newRow("no XML at all") << QStringLiteral("just some words");
        QTest::newRow("no form widget") << QStringLiteral("<ui version=\"4.0\"><class>X</class></ui>");
        QString deep = QStringLiteral("<ui version=\"4.0\"><widget class=\"QWidget\" name=\"f\">");
        for (int i = 0; i < 400; ++i)
            deep += QStringLiteral("<widget class=\"QFrame\" name=\"f%1\">").arg(i);
        for (int i = 0; i < 400; ++i)
            deep += QStringLiteral("</widget>");
        QTest::newRow("nested too deeply") << deep + QStringLiteral("</widget></ui>");
        QTest::newRow("grid cell far away")
            << QStringLiteral("<ui version=\"4.0\"><widget class=\"QWidget\" name=\"f\"><layout class=\"QGridLayout\">"
                              "<item row=\"2000000000\" column=\"0\"><widget class=\"QLabel\" name=\"l\"/></item>"
                              "</layout></widget></ui>");
    }

    void aDamagedFormThrowsAndLeavesTheStageAsItWas()
    {
        QFETCH(QString, text);
        QWidget stage;
        stage.resize(300, 200);
        auto *kept = new QPushButton(QStringLiteral("Kept"), &stage);
        kept->setObjectName(QStringLiteral("titleLabel"));
        kept->move(5, 6);
        InsertComponent(&stage, kept);
        const QStringList before = snapshot(&stage);
        QVERIFY_THROWS_EXCEPTION(EReadError, ImportUiText(text, &stage));
        QCOMPARE(snapshot(&stage), before);
    }

    void aFormFileThatCannotBeWrittenThrows()
    {
        QWidget stage;
        const QString path = QDir::tempPath() + QStringLiteral("/no-such-folder-of-qorui/form.ui");
        QVERIFY_THROWS_EXCEPTION(EQorError, ExportUiFile(&stage, path));
        QVERIFY(!QFile::exists(path));
        QVERIFY_THROWS_EXCEPTION(EReadError, ImportUiFile(path, &stage));
    }

    void componentsThatAreNoWidgetsAreLeftOut()
    {
        QWidget stage;
        auto *timer = new QTimer;
        timer->setObjectName(QStringLiteral("Ticker"));
        InsertComponent(&stage, timer);
        auto *button = new QPushButton(&stage);
        button->setObjectName(QStringLiteral("Button1"));
        InsertComponent(&stage, button);
        const QString text = UiTextOf(&stage);
        QVERIFY(!text.contains(QLatin1String("Ticker")));
        QVERIFY(text.contains(QLatin1String("name=\"Button1\"")));
        // A widget that is no component of the stage is no part of the form.
        auto *stray = new QLabel(&stage);
        stray->setObjectName(QStringLiteral("Stray"));
        QVERIFY(!UiTextOf(&stage).contains(QLatin1String("Stray")));
    }

    // Export

    void anExportedFormLoadsInQtsLoaderWithItsClassesNamesAndValues()
    {
        QWidget stage;
        buildFixtureForm(&stage);
        auto *ok = stage.findChild<QPushButton *>(QStringLiteral("OkButton"));
        ok->setFocusPolicy(Qt::NoFocus);
        QFont bold = ok->font();
        bold.setBold(true);
        bold.setPointSize(15);
        ok->setFont(bold);
        ok->setCursor(Qt::PointingHandCursor);
        auto *edit = stage.findChild<QLineEdit *>(QStringLiteral("NameEdit"));
        edit->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
        const QString text = UiTextOf(&stage);
        QVERIFY(text.contains(QLatin1String("<class>FixtureForm</class>")));
        // Only what differs from a new widget is written.
        QVERIFY(!text.contains(QLatin1String("\"autoDefault\"")));

        const std::unique_ptr<QWidget> loaded = loadWithQt(text);
        QVERIFY(loaded);
        QCOMPARE(loaded->objectName(), QStringLiteral("FixtureForm"));
        QCOMPARE(loaded->size(), QSize(480, 240));
        for (const FixturePart &part : fixtureParts()) {
            auto *w = loaded->findChild<QWidget *>(QString::fromLatin1(part.name));
            QVERIFY2(w, part.name);
            QCOMPARE(w->metaObject()->className(), part.className);
            if (!part.geometry.isEmpty())
                QCOMPARE(w->geometry(), part.geometry);
        }
        auto *loadedOk = loaded->findChild<QPushButton *>(QStringLiteral("OkButton"));
        QCOMPARE(loadedOk->text(), QStringLiteral("OK"));
        QVERIFY(loadedOk->isDefault());
        QCOMPARE(loadedOk->focusPolicy(), Qt::NoFocus);
        QVERIFY(loadedOk->font().bold());
        QCOMPARE(loadedOk->font().pointSize(), 15);
        QCOMPARE(loadedOk->cursor().shape(), Qt::PointingHandCursor);
        QCOMPARE(loaded->findChild<QLabel *>(QStringLiteral("NameLabel"))->alignment(), Qt::AlignRight | Qt::AlignVCenter);
        auto *loadedEdit = loaded->findChild<QLineEdit *>(QStringLiteral("NameEdit"));
        QCOMPARE(loadedEdit->maxLength(), 40);
        QCOMPARE(loadedEdit->echoMode(), QLineEdit::Password);
        QCOMPARE(loadedEdit->sizePolicy(), QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding));
        QVERIFY(loaded->findChild<QCheckBox *>(QStringLiteral("VerboseCheck"))->isChecked());
        QCOMPARE(loaded->findChild<QCheckBox *>(QStringLiteral("VerboseCheck"))->parentWidget()->objectName(),
                 QStringLiteral("OptionsBox"));
        auto *tabs = loaded->findChild<QTabWidget *>(QStringLiteral("Pages"));
        QCOMPARE(tabs->count(), 2);
        QCOMPARE(tabs->tabText(0), QStringLiteral("First"));
        QCOMPARE(tabs->tabText(1), QStringLiteral("Second"));
        QCOMPARE(tabs->widget(1)->objectName(), QStringLiteral("SecondPage"));
        QCOMPARE(loaded->findChild<QPushButton *>(QStringLiteral("PageButton"))->parentWidget(), tabs->widget(1));
    }

    void siblingsAreWrittenInStackingOrder()
    {
        QWidget stage;
        QList<QPushButton *> buttons;
        for (const char *name : {"Bottom", "Middle", "Top"}) {
            auto *b = new QPushButton(&stage);
            b->setObjectName(QString::fromLatin1(name));
            b->setGeometry(10, 10, 50, 20);
            InsertComponent(&stage, b);
            buttons << b;
        }
        // The owner's list keeps its order; the stacking changes.
        buttons.first()->raise();
        const std::unique_ptr<QWidget> loaded = loadWithQt(UiTextOf(&stage));
        QVERIFY(loaded);
        QStringList order;
        for (QPushButton *child : loaded->findChildren<QPushButton *>(Qt::FindDirectChildrenOnly))
            order << child->objectName();
        QCOMPARE(order, (QStringList{QStringLiteral("Middle"), QStringLiteral("Top"), QStringLiteral("Bottom")}));
    }

    void customClassesAndColoursTravelThroughTheFormFile()
    {
        QWidget stage;
        auto *swatch = new TSwatch;
        swatch->setParent(&stage);
        swatch->setObjectName(QStringLiteral("Swatch1"));
        swatch->setColour(QColor(10, 200, 30, 128));
        swatch->setGeometry(4, 5, 60, 40);
        InsertComponent(&stage, swatch);
        const QString text = UiTextOf(&stage);
        QVERIFY(text.contains(QLatin1String("<class>TSwatch</class>")));
        QVERIFY(text.contains(QLatin1String("<extends>QWidget</extends>")));
        // Qt's loader makes the class Designer would base it on.
        const std::unique_ptr<QWidget> loaded = loadWithQt(text);
        QVERIFY(loaded);
        QCOMPARE(loaded->findChild<QWidget *>(QStringLiteral("Swatch1"))->geometry(), QRect(4, 5, 60, 40));
        // The library, which knows the class, makes it again.
        QWidget other;
        QCOMPARE(ImportUiText(text, &other), QStringList());
        auto *again = other.findChild<TSwatch *>(QStringLiteral("Swatch1"));
        QVERIFY(again);
        QCOMPARE(again->colour(), QColor(10, 200, 30, 128));
        QCOMPARE(again->geometry(), QRect(4, 5, 60, 40));
        QCOMPARE(Owner(again), &other);
    }

    void theFormCompiledByUicHasTheFixturesNamesAndGeometry()
    {
        QWidget form;
        Ui::FixtureForm ui;
        ui.setupUi(&form);
        QCOMPARE(form.size(), QSize(480, 240));
        QCOMPARE(ui.OkButton->geometry(), QRect(12, 200, 90, 28));
        QCOMPARE(ui.OkButton->text(), QStringLiteral("OK"));
        QVERIFY(ui.OkButton->isDefault());
        QCOMPARE(ui.NameEdit->echoMode(), QLineEdit::Password);
        QCOMPARE(ui.NameLabel->alignment(), Qt::AlignRight | Qt::AlignVCenter);
        QVERIFY(ui.VerboseCheck->isChecked());
        QCOMPARE(ui.Pages->indexOf(ui.SecondPage), 1);
        QCOMPARE(ui.PageButton->parentWidget(), ui.SecondPage);
        for (const FixturePart &part : fixtureParts()) {
            auto *w = form.findChild<QWidget *>(QString::fromLatin1(part.name));
            QVERIFY2(w, part.name);
            QCOMPARE(w->metaObject()->className(), part.className);
            if (!part.geometry.isEmpty())
                QCOMPARE(w->geometry(), part.geometry);
        }
    }

    void anExportedFileReadsBackOntoAnotherStage()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString path = dir.filePath(QStringLiteral("form.ui"));
        QWidget stage;
        buildFixtureForm(&stage);
        ExportUiFile(&stage, path);
        QWidget other;
        other.resize(480, 240);
        QCOMPARE(ImportUiFile(path, &other), QStringList());
        QCOMPARE(ComponentCount(&other), ComponentCount(&stage));
        for (const FixturePart &part : fixtureParts()) {
            auto *w = qobject_cast<QWidget *>(FindComponent(&other, QString::fromLatin1(part.name)));
            QVERIFY2(w, part.name);
            QCOMPARE(w->metaObject()->className(), part.className);
            if (!part.geometry.isEmpty())
                QCOMPARE(w->geometry(), part.geometry);
        }
        auto *tabs = other.findChild<QTabWidget *>(QStringLiteral("Pages"));
        QCOMPARE(tabs->tabText(1), QStringLiteral("Second"));
        // Writing again replaces the file.
        stage.findChild<QPushButton *>(QStringLiteral("OkButton"))->setText(QStringLiteral("Changed"));
        ExportUiFile(&stage, path);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().contains("Changed"));
    }

    // Import

    void nestedLayoutsArePlacedAsQtsLoaderPlacesThem()
    {
        const QString text = readData(QStringLiteral("nestedlayouts.ui"));
        QVERIFY(!text.isEmpty());
        QWidget stage;
        stage.resize(600, 400);
        ImportUiText(text, &stage);
        // Qt's loader on the same form without the widgets the library
        // skips, shown at the form's size, every page in turn.
        QString withoutSkipped = text;
        withoutSkipped.remove(QRegularExpression(QStringLiteral("<item>\\s*<widget class=\"(FancyDial|QNoSuchWidget)\".*?</item>"),
                                                 QRegularExpression::DotMatchesEverythingOption));
        const std::unique_ptr<QWidget> loaded = loadWithQt(withoutSkipped);
        QVERIFY(loaded);
        QCOMPARE(loaded->size(), QSize(520, 380));
        loaded->setAttribute(Qt::WA_DontShowOnScreen);
        loaded->show();
        auto *tabs = loaded->findChild<QTabWidget *>(QStringLiteral("tabWidget"));
        QVERIFY(tabs);
        QMap<QString, QRect> expected;
        for (int page = 0; page < tabs->count(); ++page) {
            tabs->setCurrentIndex(page);
            QCoreApplication::processEvents();
            for (QWidget *w : loaded->findChildren<QWidget *>()) {
                // Inner parts: unnamed, "qt_" names, a tab bar's scroll buttons.
                if (!w->objectName().isEmpty() && !w->objectName().startsWith(QLatin1String("qt_"))
                    && !qobject_cast<QTabBar *>(w->parentWidget()))
                    expected.insert(w->objectName(), w->geometry());
            }
        }
        QCOMPARE(expected.size(), 13);
        for (auto it = expected.cbegin(); it != expected.cend(); ++it) {
            auto *w = qobject_cast<QWidget *>(FindComponent(&stage, it.key()));
            QVERIFY2(w, qPrintable(it.key()));
            QVERIFY2(w->geometry() == it.value(),
                     qPrintable(QStringLiteral("%1 at %2,%3 %4x%5").arg(it.key()).arg(w->x()).arg(w->y()).arg(w->width()).arg(w->height())));
        }
        // The layouts are gone, the widgets stay where they were put.
        const auto *box = stage.findChild<QGroupBox *>(QStringLiteral("choiceBox"));
        QCOMPARE(box->layout(), nullptr);
        QCOMPARE(stage.layout(), nullptr);
        QCOMPARE(box->parentWidget(), &stage);
        QCOMPARE(stage.findChild<QTabWidget *>(QStringLiteral("tabWidget"))->currentIndex(), 1);
        QVERIFY(!stage.findChild<QPushButton *>(QStringLiteral("resetButton"))->isEnabled());
        QCOMPARE(stage.findChild<QSpinBox *>(QStringLiteral("levelSpin"))->value(), 4);
        QVERIFY(stage.findChild<QRadioButton *>(QStringLiteral("firstRadio"))->isChecked());
    }

    void customAndUnknownClassesAreSkippedWithTheirContentsAndListed()
    {
        QWidget stage;
        const QStringList skipped = ImportUiFile(dataFile(QStringLiteral("nestedlayouts.ui")), &stage);
        QCOMPARE(skipped, (QStringList{QStringLiteral("fancyDial (FancyDial)"), QStringLiteral("mystery (QNoSuchWidget)")}));
        QVERIFY(!FindComponent(&stage, QStringLiteral("insideFancy")));
        QVERIFY(!stage.findChild<QWidget *>(QStringLiteral("insideFancy")));
        // Every widget made is a component of the stage; spacers are not.
        QCOMPARE(ComponentCount(&stage), 13);
        QCOMPARE(stage.findChildren<QWidget *>(QStringLiteral("verticalSpacer")).size(), 0);
        for (QObject *c : ComponentList(&stage))
            QVERIFY(c->isWidgetType());
    }

    void importedNamesAreUniqueInTheStage()
    {
        QWidget stage;
        auto *own = new QLabel(&stage);
        own->setObjectName(QStringLiteral("titleLabel"));
        InsertComponent(&stage, own);
        ImportUiFile(dataFile(QStringLiteral("nestedlayouts.ui")), &stage);
        ImportUiFile(dataFile(QStringLiteral("nestedlayouts.ui")), &stage);
        QCOMPARE(ComponentCount(&stage), 1 + 2 * 13);
        QSet<QString> names;
        for (QObject *c : ComponentList(&stage))
            names.insert(c->objectName().toLower());
        QCOMPARE(names.size(), 1 + 2 * 13);
        QVERIFY(FindComponent(&stage, QStringLiteral("titleLabel1")));
        QVERIFY(FindComponent(&stage, QStringLiteral("titleLabel2")));
        QCOMPARE(FindComponent(&stage, QStringLiteral("titleLabel")), own);
        QVERIFY(FindComponent(&stage, QStringLiteral("applyButton1")));
    }

    void aShownStageShowsTheImportedWidgets()
    {
        QWidget stage;
        stage.resize(540, 400);
        stage.setAttribute(Qt::WA_DontShowOnScreen);
        stage.show();
        ImportUiFile(dataFile(QStringLiteral("nestedlayouts.ui")), &stage);
        auto *apply = stage.findChild<QPushButton *>(QStringLiteral("applyButton"));
        QVERIFY(apply);
        QTRY_VERIFY(apply->isVisible());
        QVERIFY(stage.findChild<QTabWidget *>(QStringLiteral("tabWidget"))->isVisible());
    }
};

QTEST_MAIN(tst_QorUiFile)
#include "tst_qoruifile.moc"
