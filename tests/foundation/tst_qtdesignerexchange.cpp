// SPDX-License-Identifier: MIT
// The component clipboard beside a running Qt Designer: components copied
// here paste into Designer's form (and Designer saves them), widgets copied
// in Designer paste onto a form here. Designer runs as its own program on
// the test's X display and is driven by real input, like a user would.
#include "foundation/qorcomponents.h"
#include "foundation/vhoclipbrdutils.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"

#include <QBuffer>
#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QUiLoader>

#include <memory>

namespace {

// Designer's form: its background in a colour nothing else on the screen
// has, so that the test finds the form wherever Designer lays it out.
const QColor formColour(255, 0, 255);

const char formUi[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0">
 <class>Form</class>
 <widget class="QWidget" name="Form">
  <property name="geometry"><rect><x>0</x><y>0</y><width>400</width><height>300</height></rect></property>
  <property name="styleSheet"><string notr="true">QWidget#Form { background: #ff00ff; }</string></property>
  <widget class="QPushButton" name="pushButton">
   <property name="geometry"><rect><x>20</x><y>20</y><width>90</width><height>28</height></rect></property>
   <property name="text"><string>Existing</string></property>
  </widget>
  <widget class="QLabel" name="label">
   <property name="geometry"><rect><x>20</x><y>60</y><width>90</width><height>20</height></rect></property>
   <property name="text"><string>Right</string></property>
   <property name="alignment"><set>Qt::AlignRight|Qt::AlignVCenter</set></property>
  </widget>
 </widget>
 <resources/>
 <connections/>
</ui>
)";

// The middle of the part of Designer's form that shows on the screen; a
// null point while none shows.
QPoint formSpot()
{
    const QImage screen = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
    QRect found;
    for (int y = 0; y < screen.height(); y += 2) {
        for (int x = 0; x < screen.width(); x += 2) {
            if (screen.pixelColor(x, y) == formColour)
                found |= QRect(x, y, 1, 1);
        }
    }
    // Enough of it to click on, not a stray pixel.
    return found.width() > 40 && found.height() > 40 ? found.center() : QPoint();
}

QWidget *loadUi(const QByteArray &ui, QUiLoader &loader)
{
    QBuffer buffer;
    buffer.setData(ui);
    buffer.open(QIODevice::ReadOnly);
    return loader.load(&buffer);
}

} // namespace

class tst_QtDesignerExchange : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(RealInput::open(), "no X display with XTest");
        // scripts/ensure-deps.sh installs Designer; a machine without it
        // cannot run this exchange, which is no fault of the library.
        if (!QFile::exists(QStringLiteral(QTDESIGNER)))
            QSKIP("Qt Designer (designer-qt6) is not installed");
        QVERIFY(m_home.isValid());
        // A home of its own: no settings of an earlier run, no new-form
        // dialog on start.
        QVERIFY(QDir(m_home.path()).mkpath(QStringLiteral(".config/QtProject")));
        QFile settings(m_home.filePath(QStringLiteral(".config/QtProject/Designer.conf")));
        QVERIFY(settings.open(QIODevice::WriteOnly));
        settings.write("[newFormDialog]\nShowOnStartup=false\n");
        settings.close();
        QFile form(formFile());
        QVERIFY(form.open(QIODevice::WriteOnly));
        form.write(formUi);
        form.close();

        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), m_home.path());
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        m_designer.setProcessEnvironment(environment);
        m_designer.setProcessChannelMode(QProcess::MergedChannels);
        m_designer.setStandardOutputFile(QProcess::nullDevice());
        m_designer.start(QStringLiteral(QTDESIGNER), {formFile()});
        QVERIFY(m_designer.waitForStarted(20000));
        QVERIFY(QTest::qWaitFor([] { return !RealInput::windowNamed(QStringLiteral("Qt Designer")).isEmpty(); }, 60000));
        QVERIFY(QTest::qWaitFor([this] { return !(m_spot = formSpot()).isNull(); }, 60000));
        QVERIFY(RealInput::focusWindowAt(m_spot));
    }

    void cleanupTestCase()
    {
        RealInput::releaseAll();
        if (m_designer.state() != QProcess::NotRunning) {
            m_designer.kill();
            m_designer.waitForFinished(10000);
        }
    }

    void widgetsCopiedInQtDesignerPasteHere()
    {
        QGuiApplication::clipboard()->setText(QStringLiteral("nothing yet"));
        // Designer takes keys once its form is up; until then select all
        // and copy are tried again (both can be repeated harmlessly).
        const bool copied = QTest::qWaitFor(
            [] {
                RealInput::key("a", Qt::ControlModifier);
                RealInput::key("c", Qt::ControlModifier);
                return QTest::qWaitFor(
                    [] { return QGuiApplication::clipboard()->text().contains(QLatin1String("__qt_fake_top_level")); },
                    2000);
            },
            60000);
        QVERIFY(copied);
        QVERIFY(!QGuiApplication::clipboard()->ownsClipboard());
        QVERIFY(!VhoClipboard()->HasComponents());

        QWidget target;
        target.setObjectName(QStringLiteral("Form5"));
        auto *other = new QPushButton(QStringLiteral("Mine"), &target);
        other->setObjectName(QStringLiteral("label"));
        InsertComponent(&target, other);
        QVERIFY(VhoClipboard()->GetComponents(&target, &target, 8, 6));
        auto *button = qobject_cast<QPushButton *>(FindComponent(&target, QStringLiteral("pushButton")));
        QVERIFY(button);
        QCOMPARE(button->text(), QStringLiteral("Existing"));
        QCOMPARE(button->geometry(), QRect(28, 26, 90, 28));
        QCOMPARE(button->parentWidget(), &target);
        // The label's name is taken here: it comes under a name of its class.
        auto *label = qobject_cast<QLabel *>(FindComponent(&target, QStringLiteral("Label1")));
        QVERIFY(label);
        QCOMPARE(label->text(), QStringLiteral("Right"));
        QCOMPARE(label->alignment(), Qt::AlignRight | Qt::AlignVCenter);
        QCOMPARE(label->geometry(), QRect(28, 66, 90, 20));
        QCOMPARE(FindComponent(&target, QStringLiteral("label")), other);
        QCOMPARE(ComponentCount(&target), 3);
    }

    void componentsCopiedHerePasteIntoQtDesigner()
    {
        QWidget source;
        source.setObjectName(QStringLiteral("Source"));
        auto *button = new QPushButton(QStringLiteral("From QorDesign"), &source);
        button->setObjectName(QStringLiteral("QorButton"));
        button->setGeometry(150, 120, 120, 30);
        button->setFocusPolicy(Qt::NoFocus);
        auto *label = new QLabel(QStringLiteral("Centred"), &source);
        label->setObjectName(QStringLiteral("QorLabel"));
        label->setGeometry(150, 160, 100, 20);
        label->setAlignment(Qt::AlignHCenter | Qt::AlignBottom);
        auto *check = new QCheckBox(QStringLiteral("Ticked"), &source);
        check->setObjectName(QStringLiteral("QorCheck"));
        check->setGeometry(150, 190, 100, 20);
        check->setChecked(true);
        check->setLayoutDirection(Qt::RightToLeft);
        for (QObject *c : {static_cast<QObject *>(button), static_cast<QObject *>(label), static_cast<QObject *>(check)})
            InsertComponent(&source, c);
        VhoClipboard()->SetComponents(TComponentList{button, label, check}, false);
        QVERIFY(QGuiApplication::clipboard()->ownsClipboard());

        // The form itself selected, Designer pastes into it and saves.
        QVERIFY(RealInput::focusWindowAt(m_spot));
        RealInput::clickAt(m_spot);
        RealInput::key("v", Qt::ControlModifier);
        RealInput::key("s", Qt::ControlModifier);
        QByteArray saved;
        QVERIFY(QTest::qWaitFor(
            [&] {
                QFile file(formFile());
                saved = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
                return saved.contains("QorCheck") && saved.trimmed().endsWith("</ui>");
            },
            30000));

        QUiLoader loader;
        std::unique_ptr<QWidget> form(loadUi(saved, loader));
        QVERIFY(form);
        auto *theirButton = form->findChild<QPushButton *>(QStringLiteral("QorButton"));
        QVERIFY(theirButton);
        QCOMPARE(theirButton->text(), button->text());
        QCOMPARE(theirButton->size(), button->size());
        QCOMPARE(theirButton->focusPolicy(), Qt::NoFocus);
        auto *theirLabel = form->findChild<QLabel *>(QStringLiteral("QorLabel"));
        QVERIFY(theirLabel);
        QCOMPARE(theirLabel->text(), label->text());
        QCOMPARE(theirLabel->alignment(), label->alignment());
        auto *theirCheck = form->findChild<QCheckBox *>(QStringLiteral("QorCheck"));
        QVERIFY(theirCheck);
        QVERIFY(theirCheck->isChecked());
        QCOMPARE(theirCheck->layoutDirection(), Qt::RightToLeft);
        // What was on the form stays.
        QVERIFY(form->findChild<QPushButton *>(QStringLiteral("pushButton")));
    }

private:
    QString formFile() const { return m_home.filePath(QStringLiteral("form.ui")); }

    QTemporaryDir m_home;
    QProcess m_designer;
    QPoint m_spot;
};

QTEST_MAIN(tst_QtDesignerExchange)
#include "tst_qtdesignerexchange.moc"
