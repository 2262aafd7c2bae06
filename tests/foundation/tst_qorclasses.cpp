// SPDX-License-Identifier: MIT
// The class registry: the stock classes a designer offers, look-ups by
// name, factories, and the errors for unknown classes.
#include "foundation/qorclasses.h"
#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "harness/qorguitest.h"

#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QTest>
#include <QTimer>

namespace {

class RegisteredPanel : public QLabel
{
    Q_OBJECT
};

const char *const stockClasses[] = {
    "QPushButton", "QToolButton", "QLabel", "QLineEdit", "QTextEdit", "QPlainTextEdit",
    "QCheckBox", "QRadioButton", "QComboBox", "QSpinBox", "QDoubleSpinBox", "QSlider",
    "QDial", "QProgressBar", "QDateEdit", "QTimeEdit", "QDateTimeEdit", "QGroupBox",
    "QFrame", "QWidget", "QTabWidget", "QStackedWidget", "QToolBox", "QScrollArea",
    "QListWidget", "QTreeWidget", "QTableWidget", "QCalendarWidget", "QLCDNumber", "QTimer",
};

// The design commands and the palette's button a stream may hold,
// registered by the library too.
const char *const actionClasses[] = {"TQorDesignSelCtrlBringToFront", "TQorDesignSelCtrlSendToBack",
                                     "TQorDesignSelCtrlFlipSelChildren", "TQorDesignSelCtrlFlipAllChildren",
                                     "TQorClassToolBtn"};

} // namespace

class tst_QorClasses : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        UnRegisterClass(&RegisteredPanel::staticMetaObject);
        QTRY_COMPARE(QorGuiTest::liveTopLevelWidgets(), 0);
    }

    void stockClassesAreRegisteredFromTheStart()
    {
        QStringList registered;
        for (const QMetaObject *mo : RegisteredClasses())
            registered << QString::fromLatin1(mo->className());
        for (const char *name : stockClasses)
            QVERIFY2(registered.contains(QLatin1String(name)), name);
        for (const char *name : actionClasses)
            QVERIFY2(registered.contains(QLatin1String(name)), name);
        QCOMPARE(registered.size(), int(std::size(stockClasses) + std::size(actionClasses)));
        QCOMPARE(registered.first(), QStringLiteral("QPushButton"));
    }

    void everyStockClassMakesAnInstanceOfItself()
    {
        for (const char *name : stockClasses) {
            std::unique_ptr<QObject> made(CreateRegisteredComponent(QString::fromLatin1(name)));
            QVERIFY(made);
            QCOMPARE(made->metaObject()->className(), name);
            QCOMPARE(made->parent(), nullptr);
        }
    }

    void getClassIsCaseInsensitiveAndNilForUnknownNames()
    {
        QCOMPARE(GetClass(QStringLiteral("qpushbutton")), &QPushButton::staticMetaObject);
        QCOMPARE(GetClass(QStringLiteral("QTIMER")), &QTimer::staticMetaObject);
        QCOMPARE(GetClass(QStringLiteral("QNoSuchWidget")), nullptr);
        QCOMPARE(GetClass(QString()), nullptr);
    }

    void findClassThrowsForAnUnknownClass()
    {
        QCOMPARE(FindClass(QStringLiteral("QLabel")), &QLabel::staticMetaObject);
        QVERIFY_THROWS_EXCEPTION(EClassNotFound, FindClass(QStringLiteral("QNoSuchWidget")));
        try {
            CreateRegisteredComponent(QStringLiteral("QNoSuchWidget"));
            QFAIL("no exception");
        } catch (const EClassNotFound &e) {
            QVERIFY(e.message().contains(QLatin1String("QNoSuchWidget")));
            QVERIFY(QString::fromUtf8(e.what()).contains(QLatin1String("QNoSuchWidget")));
        }
    }

    void anUnregisteredClassCannotBeCreatedByItsMetaObject()
    {
        QVERIFY_THROWS_EXCEPTION(EClassNotFound,
                                 CreateRegisteredComponent(&RegisteredPanel::staticMetaObject));
        QVERIFY_THROWS_EXCEPTION(EClassNotFound,
                                 CreateRegisteredComponent(static_cast<const QMetaObject *>(nullptr)));
    }

    void anApplicationRegistersItsOwnClass()
    {
        const int before = int(RegisteredClasses().size());
        RegisterClass<RegisteredPanel>();
        QCOMPARE(GetClass(QStringLiteral("RegisteredPanel")), &RegisteredPanel::staticMetaObject);
        QCOMPARE(RegisteredClasses().size(), before + 1);
        QCOMPARE(RegisteredClasses().last(), &RegisteredPanel::staticMetaObject);
        std::unique_ptr<QObject> made(CreateRegisteredComponent(QStringLiteral("registeredpanel")));
        QVERIFY(qobject_cast<RegisteredPanel *>(made.get()));
    }

    void registeringAgainReplacesTheFactoryAndKeepsThePlace()
    {
        RegisterClass<RegisteredPanel>();
        const auto order = RegisteredClasses();
        RegisterClass(&RegisteredPanel::staticMetaObject, [] {
            auto *panel = new RegisteredPanel;
            panel->setText(QStringLiteral("made by the second factory"));
            return static_cast<QObject *>(panel);
        });
        QCOMPARE(RegisteredClasses(), order);
        std::unique_ptr<QObject> made(CreateRegisteredComponent(&RegisteredPanel::staticMetaObject));
        QCOMPARE(static_cast<RegisteredPanel *>(made.get())->text(),
                 QStringLiteral("made by the second factory"));
    }

    void unregisteringTakesTheClassOut()
    {
        RegisterClass<RegisteredPanel>();
        UnRegisterClass(&RegisteredPanel::staticMetaObject);
        QCOMPARE(GetClass(QStringLiteral("RegisteredPanel")), nullptr);
        // The stock classes after it are still found.
        QCOMPARE(GetClass(QStringLiteral("QTimer")), &QTimer::staticMetaObject);
        QCOMPARE(GetClass(QStringLiteral("QPushButton")), &QPushButton::staticMetaObject);
    }

    void aTimerIsANonVisualComponent()
    {
        QVERIFY(!IsWidgetClass(&QTimer::staticMetaObject));
        QVERIFY(IsWidgetClass(&QPushButton::staticMetaObject));
        QVERIFY(IsWidgetClass(&QWidget::staticMetaObject));
        QVERIFY(!IsWidgetClass(nullptr));
    }

    void aScrollAreaComesWithContentsThatAreAnInnerPart()
    {
        std::unique_ptr<QObject> made(CreateRegisteredComponent(QStringLiteral("QScrollArea")));
        auto *area = qobject_cast<QScrollArea *>(made.get());
        QVERIFY(area && area->widget());
        QVERIFY(IsInnerPart(area->widget()));
        QVERIFY(area->widgetResizable());
    }
};

QTEST_MAIN(tst_QorClasses)
#include "tst_qorclasses.moc"
