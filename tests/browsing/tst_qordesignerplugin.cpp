// SPDX-License-Identifier: MIT
// The Qt Designer plugin: what it tells Designer and uic about each of the
// library's widgets, and a run of Qt Designer itself on the build's
// plugins, driven by real input: a widget found through the widget box's
// filter and dragged onto a new form, the form saved through the file
// dialog and read back with Qt's form loader.
// The tree's header needs the design center declared.
#include "console/qordesignconsole.h"

#include "browsing/qorcomptreeview.h"
#include "inspector/qorinspector.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"

#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QJsonObject>
#include <QPluginLoader>
#include <QProcess>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QUiLoader>
#include <QXmlStreamReader>

#include <memory>

namespace {

const char pluginFile[] = QOR_DESIGNER_PLUGIN;
const char pluginPath[] = QOR_PLUGIN_PATH;

const QStringList widgetClasses{QStringLiteral("TQorCompTreeView"), QStringLiteral("TQorObjInspector"),
                                QStringLiteral("TQorCompPalleteToolBar"), QStringLiteral("TQorCompPalleteTab")};

// What a domXml text describes: the widget's class and name, and its size.
struct DomWidget
{
    QString Class;
    QString Name;
    int Width = 0;
    int Height = 0;
};

// Reads the first widget of a domXml text; an empty class when the text
// is no well-formed <ui> document holding one.
DomWidget readDomXml(const QString &Xml)
{
    DomWidget result;
    QXmlStreamReader reader(Xml);
    if (!reader.readNextStartElement() || reader.name() != QLatin1String("ui"))
        return {};
    QString inGeometry;
    while (!reader.atEnd()) {
        reader.readNext();
        if (!reader.isStartElement())
            continue;
        if (reader.name() == QLatin1String("widget") && result.Class.isEmpty()) {
            result.Class = reader.attributes().value(QLatin1String("class")).toString();
            result.Name = reader.attributes().value(QLatin1String("name")).toString();
        } else if (reader.name() == QLatin1String("width")) {
            result.Width = reader.readElementText().toInt();
        } else if (reader.name() == QLatin1String("height")) {
            result.Height = reader.readElementText().toInt();
        }
    }
    if (reader.hasError())
        return {};
    return result;
}

// The screen as it shows now, other programs' windows included.
QImage screenImage()
{
    return QGuiApplication::primaryScreen()->grabWindow(0).toImage();
}

bool isViewBase(QRgb Pixel)
{
    return qRed(Pixel) == 255 && qGreen(Pixel) == 255 && qBlue(Pixel) == 255;
}

bool isText(QRgb Pixel)
{
    return qGray(Pixel) < 110;
}

// How many pixels of Area are white.
int whitePixels(const QImage &Screen, const QRect &Area)
{
    int count = 0;
    for (int y = Area.top(); y <= Area.bottom(); ++y) {
        for (int x = Area.left(); x <= Area.right(); ++x)
            count += isViewBase(Screen.pixel(x, y)) ? 1 : 0;
    }
    return count;
}

// The runs of rows, from Top down to Bottom, whose pixel in column X is
// white (the base colour of Designer's line edits and views), as
// rectangles one pixel wide.
QList<QRect> whiteRuns(const QImage &Screen, int X, int Top, int Bottom)
{
    QList<QRect> runs;
    int start = -1;
    for (int y = Top; y <= Bottom + 1; ++y) {
        const bool white = y <= Bottom && isViewBase(Screen.pixel(X, y));
        if (white && start < 0)
            start = y;
        if (!white && start >= 0) {
            runs.append(QRect(X, start, 1, y - start));
            start = -1;
        }
    }
    return runs;
}

// The bands of rows of Area holding dark (text or icon) pixels: the entries
// a list shows, one band each.
QList<QRect> textBands(const QImage &Screen, const QRect &Area)
{
    QList<QRect> bands;
    int start = -1;
    for (int y = Area.top(); y <= Area.bottom() + 1; ++y) {
        bool dark = false;
        for (int x = Area.left(); y <= Area.bottom() && x <= Area.right() && !dark; ++x)
            dark = isText(Screen.pixel(x, y));
        if (dark && start < 0)
            start = y;
        if (!dark && start >= 0) {
            bands.append(QRect(Area.left(), start, Area.width(), y - start));
            start = -1;
        }
    }
    return bands;
}

} // namespace

class tst_QorDesignerPlugin : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        RealInputTestCase::initTestCase();
        m_loader.setFileName(QString::fromLocal8Bit(pluginFile));
        QVERIFY2(m_loader.load(), qPrintable(m_loader.errorString()));
        m_collection = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(m_loader.instance());
        QVERIFY(m_collection);
    }

    void cleanupTestCase() { stopDesigner(); }

    // Edge cases
    void thePluginIsFoundWhereQtsPluginPathLeadsDesigner()
    {
        const QFileInfo file(QString::fromLocal8Bit(pluginFile));
        QCOMPARE(file.absoluteDir(), QDir(QString::fromLocal8Bit(pluginPath) + QStringLiteral("/designer")));
        QCOMPARE(m_loader.metaData().value(QLatin1String("IID")).toString(),
                 QStringLiteral("org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface"));
    }

    void theCollectionHoldsTheWidgetsOfThePageInOrder()
    {
        QStringList names;
        for (QDesignerCustomWidgetInterface *w : m_collection->customWidgets()) {
            names.append(w->name());
            QCOMPARE(w->group(), QStringLiteral("QOR-DesignSys"));
            QVERIFY(!w->isContainer());
        }
        QCOMPARE(names, widgetClasses);
    }

    void eachEntryMakesAWidgetOfItsClass_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString &name : widgetClasses)
            QTest::newRow(qPrintable(name)) << name;
    }

    void eachEntryMakesAWidgetOfItsClass()
    {
        QFETCH(QString, name);
        QDesignerCustomWidgetInterface *entry = entryNamed(name);
        QVERIFY(entry);
        QWidget parent;
        QWidget *made = entry->createWidget(&parent);
        QVERIFY(made);
        QCOMPARE(QString::fromLatin1(made->metaObject()->className()), name);
        QCOMPARE(made->parentWidget(), &parent);
    }

    void eachEntryDescribesItselfForDesignerAndUic_data() { eachEntryMakesAWidgetOfItsClass_data(); }

    void eachEntryDescribesItselfForDesignerAndUic()
    {
        QFETCH(QString, name);
        QDesignerCustomWidgetInterface *entry = entryNamed(name);
        QVERIFY(entry);
        QVERIFY(!entry->toolTip().isEmpty());
        QVERIFY(entry->whatsThis().size() > entry->toolTip().size());

        // uic writes the include as an application reaches the installed
        // header: <folder>/<file>.h, a public header declaring the class.
        const QString include = entry->includeFile();
        QVERIFY2(QRegularExpression(QStringLiteral("^[a-z]+/[a-z]+\\.h$")).match(include).hasMatch(),
                 qPrintable(include));
        QVERIFY(!include.endsWith(QLatin1String("_p.h")));
        QFile header(QDir(qEnvironmentVariable("QORDESIGN_SOURCE_DIR")).filePath(include));
        QVERIFY2(header.open(QIODevice::ReadOnly), qPrintable(header.fileName()));
        QVERIFY(header.readAll().contains(QByteArray("class QORDESIGN_EXPORT " + name.toLatin1() + " : public")));

        const DomWidget dom = readDomXml(entry->domXml());
        QCOMPARE(dom.Class, name);
        QVERIFY(!dom.Name.isEmpty());
        QVERIFY(dom.Name.at(0).isLower());
        QVERIFY(dom.Width >= 20);
        QVERIFY(dom.Height >= 20);
    }

    void qtsFormLoaderFindsTheWidgetsOnThePluginPath()
    {
        QUiLoader loader;
        loader.addPluginPath(QString::fromLocal8Bit(pluginPath) + QStringLiteral("/designer"));
        const QStringList available = loader.availableWidgets();
        for (const QString &name : widgetClasses)
            QVERIFY2(available.contains(name), qPrintable(name));
        std::unique_ptr<QWidget> made(loader.createWidget(QStringLiteral("TQorObjInspector")));
        QVERIFY(qobject_cast<TQorObjInspector *>(made.get()));
    }

    void aWidgetPlacedInQtDesignerIsSavedAndLoadsBack();

private:
    QDesignerCustomWidgetInterface *entryNamed(const QString &Name) const
    {
        for (QDesignerCustomWidgetInterface *w : m_collection->customWidgets()) {
            if (w->name() == Name)
                return w;
        }
        return nullptr;
    }

    bool startDesigner(const QString &Home);
    void stopDesigner();
    QString designerLog() const;

    QPluginLoader m_loader;
    QDesignerCustomWidgetCollectionInterface *m_collection = nullptr;
    QProcess m_designer;
    QString m_designerLog;
};

// Starts Qt Designer with a home of its own: top-level windows (the widget
// box in the main window, each form a window of its own, found by its
// title) and the new-form dialog on start.
bool tst_QorDesignerPlugin::startDesigner(const QString &Home)
{
    QFile settings(QDir(Home).filePath(QStringLiteral(".config/QtProject/Designer.conf")));
    if (!QDir(Home).mkpath(QStringLiteral(".config/QtProject")) || !settings.open(QIODevice::WriteOnly))
        return false;
    settings.write("[newFormDialog]\nShowOnStartup=true\n[UI]\ncurrentMode=1\n");
    settings.close();

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), Home);
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment.insert(QStringLiteral("QT_PLUGIN_PATH"), QString::fromLocal8Bit(pluginPath));
#ifdef QOR_ASAN_RUNTIME
    // The plugin and the library are built with the address sanitizer and
    // Designer is not: its runtime has to be loaded before anything else.
    // Designer's own leaks are none of ours.
    environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(QOR_ASAN_RUNTIME));
    environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
    environment.remove(QStringLiteral("LSAN_OPTIONS"));
#endif
    m_designerLog = QDir(Home).filePath(QStringLiteral("designer.log"));
    m_designer.setProcessEnvironment(environment);
    m_designer.setProcessChannelMode(QProcess::MergedChannels);
    m_designer.setStandardOutputFile(m_designerLog);
    m_designer.start(QStringLiteral(QTDESIGNER), {});
    return m_designer.waitForStarted(20000);
}

void tst_QorDesignerPlugin::stopDesigner()
{
    RealInput::releaseAll();
    if (m_designer.state() != QProcess::NotRunning) {
        m_designer.kill();
        m_designer.waitForFinished(10000);
    }
}

QString tst_QorDesignerPlugin::designerLog() const
{
    QFile log(m_designerLog);
    return log.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(log.readAll()) : QString();
}

void tst_QorDesignerPlugin::aWidgetPlacedInQtDesignerIsSavedAndLoadsBack()
{
    // scripts/ensure-deps.sh installs Designer; a machine without it cannot
    // run Designer on the plugin, which is no fault of the plugin.
    if (!QFile::exists(QStringLiteral(QTDESIGNER)))
        QSKIP("Qt Designer (designer-qt6) is not installed");
    QTemporaryDir home;
    QVERIFY(home.isValid());
    // Designer goes before its home does.
    const auto stop = qScopeGuard([this] { stopDesigner(); });
    QVERIFY(startDesigner(home.path()));
    auto failed = qScopeGuard([this] { qWarning().noquote() << "Qt Designer's output:\n" << designerLog(); });

    // A new form from the dialog's first template.
    QRect dialog;
    QVERIFY(QTest::qWaitFor([&] { return !(dialog = RealInput::windowNamed(QStringLiteral("New Form"))).isEmpty(); },
                            60000));
    QVERIFY(RealInput::focusWindowAt(dialog.center()));
    RealInput::key("Return");
    QRect form;
    QVERIFY(QTest::qWaitFor([&] { return !(form = RealInput::windowNamed(QStringLiteral("untitled"))).isEmpty(); },
                            30000));

    // The widget box fills the main window below its menu and tool bars;
    // its filter is the first white box down a column near its right edge.
    const QRect main = RealInput::windowNamed(QStringLiteral("Qt Designer"), Qt::MatchExactly);
    QVERIFY(!main.isEmpty());
    const int column = main.right() - 40;
    QRect filter;
    QVERIFY(QTest::qWaitFor(
        [&] {
            for (const QRect &run : whiteRuns(screenImage(), column, main.top(), main.bottom())) {
                if (run.height() >= 14 && run.height() <= 40) {
                    filter = run;
                    return true;
                }
            }
            return false;
        },
        10000));
    QVERIFY(RealInput::focusWindowAt(filter.center()));
    RealInput::clickAt(filter.center());
    QVERIFY(RealInput::typeText(QStringLiteral("TQor")));

    // Below the filter, the group's heading, then its entries on white.
    const auto entries = [&] {
        const QImage screen = screenImage();
        for (const QRect &run : whiteRuns(screen, column, filter.bottom() + 1, main.bottom() - 10)) {
            // Thin white lines are the edges of the filter and the heading.
            if (run.height() >= 20) {
                return textBands(screen,
                                 QRect(main.left() + 6, run.top() + 2, main.width() - 40, run.height() - 4));
            }
        }
        return QList<QRect>();
    };
    QList<QRect> shown;
    QVERIFY(QTest::qWaitFor([&] { return (shown = entries()).size() == widgetClasses.size(); }, 10000));
    // Only the tree is left with its whole name.
    QVERIFY(RealInput::typeText(QStringLiteral("CompTreeView")));
    QVERIFY(QTest::qWaitFor([&] { return (shown = entries()).size() == 1; }, 10000));

    // Dragged onto the form, where the tree's white view shows...
    const int whiteBefore = whitePixels(screenImage(), form);
    const QPoint from(main.left() + 60, shown.first().center().y());
    RealInput::moveTo(from, 2);
    RealInput::press();
    RealInput::moveTo(from + QPoint(20, 0), 4);
    RealInput::moveTo(form.center(), 12);
    RealInput::release();
    QVERIFY(QTest::qWaitFor([&] { return whitePixels(screenImage(), form) > whiteBefore + 5000; }, 10000));

    // ... and saved where the file dialog is told. Ctrl+S is pressed
    // again until the dialog shows: a key can be lost while Designer
    // still takes the drop in.
    const QString saved = QDir(home.path()).filePath(QStringLiteral("placed.ui"));
    QVERIFY(RealInput::focusWindowAt(form.center()));
    QRect fileDialog;
    QVERIFY(QTest::qWaitFor(
        [&] {
            RealInput::key("s", Qt::ControlModifier);
            return QTest::qWaitFor(
                [&] { return !(fileDialog = RealInput::windowNamed(QStringLiteral("Save Form"))).isEmpty(); }, 3000);
        },
        20000));
    QVERIFY(RealInput::focusWindowAt(fileDialog.center()));
    QVERIFY(RealInput::typeText(saved));
    // Return may first close the file name's completion list: it is
    // pressed again until the dialog has saved.
    QByteArray text;
    QVERIFY(QTest::qWaitFor(
        [&] {
            RealInput::key("Return");
            return QTest::qWaitFor(
                [&] {
                    QFile file(saved);
                    text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
                    return text.trimmed().endsWith("</ui>");
                },
                3000);
        },
        20000));
    QVERIFY2(text.contains("class=\"TQorCompTreeView\""), text.constData());
    QVERIFY(text.contains("<customwidget>"));
    QVERIFY(text.contains("<class>TQorCompTreeView</class>"));
    QVERIFY(text.contains("<header>browsing/qorcomptreeview.h</header>"));

    // Qt's form loader makes the widget through the plugin again.
    QUiLoader loader;
    loader.addPluginPath(QString::fromLocal8Bit(pluginPath) + QStringLiteral("/designer"));
    QFile file(saved);
    QVERIFY(file.open(QIODevice::ReadOnly));
    std::unique_ptr<QWidget> loaded(loader.load(&file));
    QVERIFY2(loaded, qPrintable(loader.errorString()));
    const QList<TQorCompTreeView *> trees = loaded->findChildren<TQorCompTreeView *>();
    QCOMPARE(trees.size(), 1);
    QCOMPARE(trees.first()->objectName(), QStringLiteral("compTreeView"));

    // The library's code ran inside Designer under the sanitizers too.
    const QString log = designerLog();
    QVERIFY2(!log.contains(QLatin1String("Sanitizer")) && !log.contains(QLatin1String("runtime error")),
             qPrintable(log));
    failed.dismiss();
}

QTEST_MAIN(tst_QorDesignerPlugin)
#include "tst_qordesignerplugin.moc"
