// SPDX-License-Identifier: MIT
// The translation hooks of the object inspector hand every text back as it
// came; the class label and component display name fall back to the class
// name and the component's name; the identifier and separator character
// sets reached through the translation unit are the naming functions' own.
#include "foundation/vhortti.h"
#include "translation/objtranslate.h"
#include "translation/qortransutils.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace {

using Hook = QString (*)(PTypeInfo, const QString &);

struct NamedHook
{
    const char *name;
    Hook hook;
};

const NamedHook hooks[] = {
    {"TranslatePropertyName", &TranslatePropertyName},
    {"TranslateEnumValue", &TranslateEnumValue},
    {"TranslateClassName", &TranslateClassName},
    {"TranslateObjectName", &TranslateObjectName},
    {"TranslateToPropertyName", &TranslateToPropertyName},
    {"TranslateToEnumValue", &TranslateToEnumValue},
    {"TranslateToClassName", &TranslateToClassName},
    {"TranslateToObjectName", &TranslateToObjectName},
};

} // namespace

Q_DECLARE_METATYPE(Hook)

class tst_ObjTranslate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Edge cases

    void everyHookReturnsItsTextWhateverTheTypeInformation_data()
    {
        QTest::addColumn<Hook>("hook");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("withType");
        const QStringList texts = {QString(), QStringLiteral(""), QStringLiteral("Caption"),
                                   QStringLiteral(" clRed "), QStringLiteral("[akLeft,akTop]"),
                                   QStringLiteral("Kn\u00f6pfe \u6309\u94ae")};
        for (const NamedHook &h : hooks) {
            for (int i = 0; i < texts.size(); ++i) {
                for (bool withType : {false, true}) {
                    QTest::addRow("%s text %d %s", h.name, i, withType ? "typed" : "null type")
                        << h.hook << texts.at(i) << withType;
                }
            }
        }
    }

    void everyHookReturnsItsTextWhateverTheTypeInformation()
    {
        QFETCH(Hook, hook);
        QFETCH(QString, text);
        QFETCH(bool, withType);
        const PTypeInfo type = withType ? TypeInfoOfClass(&QPushButton::staticMetaObject) : nullptr;
        QCOMPARE(bool(type), withType);
        const QString result = hook(type, text);
        QCOMPARE(result, text);
        QCOMPARE(result.isNull(), text.isNull());
        // The caller's own string comes back, not a copy of it.
        QCOMPARE(result.constData(), text.constData());
    }

    // The other rules

    void everyHookPassesTextsOfEveryKindOfType()
    {
        const QList<PTypeInfo> types = {TypeInfoOfClass(&QLabel::staticMetaObject),
                                        TypeInfoOfMetaType(QMetaType::fromType<int>()),
                                        TypeInfoOfMetaType(QMetaType::fromType<QString>()),
                                        TypeInfoOfEnum(QMetaEnum::fromType<Qt::CursorShape>())};
        const QString text = QStringLiteral("alignment");
        for (PTypeInfo type : types) {
            QVERIFY(type);
            for (const NamedHook &h : hooks)
                QCOMPARE(h.hook(type, text), text);
        }
    }

    void classLabelIsTheClassNameUntilADictionaryIsAttached()
    {
        QCOMPARE(ClassToTransedName(&QPushButton::staticMetaObject), QStringLiteral("QPushButton"));
        QCOMPARE(ClassToTransedName(&QObject::staticMetaObject), QStringLiteral("QObject"));
        QCOMPARE(ClassToTransedName(nullptr), QString());
    }

    void newComponentsAreNamedThroughTheClassLabel()
    {
        // The translation layer hands its class labels to the naming
        // functions when the library loads.
        const IQorClassLabels *installed = SetClassLabels(nullptr);
        SetClassLabels(installed);
        QVERIFY(installed);
        QCOMPARE(installed->ClassLabel(&QPushButton::staticMetaObject),
                 ClassToTransedName(&QPushButton::staticMetaObject));
        QCOMPARE(GetCompUniqueCNName(&QPushButton::staticMetaObject, nullptr), QStringLiteral("PushButton1"));
    }

    void componentDisplayNameIsItsName()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        auto *button = new QPushButton(&form);
        button->setObjectName(QStringLiteral(" Button1 "));
        QCOMPARE(GetCompTransedName(button, &form), QStringLiteral(" Button1 "));
        QCOMPARE(GetCompTransedName(button, nullptr), QStringLiteral(" Button1 "));
        button->setObjectName(QString());
        QCOMPARE(GetCompTransedName(button, &form), QString());
        QCOMPARE(GetCompTransedName(nullptr, &form), QString());
    }

    void characterSetsAreTheNamingFunctionsOwn()
    {
        QCOMPARE(QString(IdentCharset),
                 QStringLiteral("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz"));
        QCOMPARE(QString(SeperatorCharset), QStringLiteral(" (),[]{}"));
        for (int code = 0; code < 256; ++code) {
            const QChar c(code);
            QCOMPARE(IsIdentChar(c), (c.isLetterOrNumber() && c.unicode() < 128) || c == u'_');
            QCOMPARE(IsSeperatorChar(c), QStringLiteral(" (),[]{}").contains(c));
        }
        QVERIFY(!IsIdentChar(QChar(0x00e9)));
        QVERIFY(!IsIdentChar(QChar(0x0130)));
        QVERIFY(!IsSeperatorChar(QChar(0x3000)));
    }
};

QTEST_MAIN(tst_ObjTranslate)
#include "tst_objtranslate.moc"
