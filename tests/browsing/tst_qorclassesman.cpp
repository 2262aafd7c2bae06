// SPDX-License-Identifier: MIT
// The design class list: adding classes once, their pages, entries found
// by their very class, the first entry surviving a clear, registration
// with the class registry, and the labels classes show.
#include "browsing/qorclassesman.h"
#include "foundation/qorclasses.h"
#include "translation/qortransutils.h"

#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTest>

// A button of the application's own, with an invokable constructor.
class TAppButton : public QPushButton
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit TAppButton(QWidget *Parent = nullptr)
        : QPushButton(Parent)
    {
    }
};

// One without: only a factory makes it.
class TAppPanel : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;
};

class tst_QorClassesMan : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        UnRegisterClass(&TAppButton::staticMetaObject);
        UnRegisterClass(&TAppPanel::staticMetaObject);
    }

    void aClassIsAddedOnceWhenUnique()
    {
        TQorDesignClassList list;
        QCOMPARE(list.AddClass(&QPushButton::staticMetaObject, QStringLiteral("Standard"), 0, true, true), 0);
        QCOMPARE(list.AddClass(&QPushButton::staticMetaObject, QStringLiteral("Standard"), 0, true, true), -1);
        QCOMPARE(list.Count(), 1);
        // Not unique: a second entry.
        QCOMPARE(list.AddClass(&QPushButton::staticMetaObject, QStringLiteral("Other"), 3, false, true), 1);
        QCOMPARE(list.ClassInfos(1)->Pallete, QStringLiteral("Other"));
        QCOMPARE(list.ClassInfos(1)->ImageIndex, 3);
        QCOMPARE(list.Classes(0), &QPushButton::staticMetaObject);
        QVERIFY(!list.Classes(2));
        QVERIFY(!list.ClassInfos(-1));
    }

    void aNewEntryHasNoImage()
    {
        TQorDesignClassInformation info;
        QCOMPARE(info.ImageIndex, -1);
        QVERIFY(info.Pallete.isEmpty());
    }

    void thePagesAreTheDistinctNamesInOrder()
    {
        TQorDesignClassList list;
        list.AddClass(&QPushButton::staticMetaObject, QStringLiteral("A"), 0, true, false);
        list.AddClass(&QLabel::staticMetaObject, QString(), 0, true, false);
        list.AddClass(&QCheckBox::staticMetaObject, QStringLiteral("B"), 0, true, false);
        list.AddClass(&QWidget::staticMetaObject, QStringLiteral("A"), 0, true, false);
        QStringList pages{QStringLiteral("left over")};
        list.FillPalleteStrings(pages, true);
        QCOMPARE(pages, (QStringList{QStringLiteral("A"), QStringLiteral("B")}));
        list.FillPalleteStrings(pages, false);
        QCOMPARE(pages, (QStringList{QStringLiteral("A"), QString(), QStringLiteral("B")}));
    }

    void anEntryIsFoundByItsVeryClass()
    {
        TQorDesignClassList list;
        list.AddClass(&QWidget::staticMetaObject, QString(), 0, true, false);
        list.AddClass(&QPushButton::staticMetaObject, QString(), 0, true, false);
        QCOMPARE(list.ClassIndex(&QPushButton::staticMetaObject), 1);
        QCOMPARE(list.ClassIndex(&QAbstractButton::staticMetaObject), -1);
        QVERIFY(list.ClassExists(&QWidget::staticMetaObject));
        QVERIFY(!list.ClassExists(&QLabel::staticMetaObject));
        QCOMPARE(list.ClassInfoIndex(list.ClassInfos(1)), 1);
        TQorDesignClassInformation stranger;
        QCOMPARE(list.ClassInfoIndex(&stranger), -1);
        // Re-pointing an entry at another class.
        list.SetClasses(1, &QLabel::staticMetaObject);
        QCOMPARE(list.ClassIndex(&QLabel::staticMetaObject), 1);
        TQorDesignClassInformation check;
        check.SetPTI(TypeInfoOfClass(&QCheckBox::staticMetaObject));
        list.SetClassInfos(0, &check);
        QCOMPARE(list.Classes(0), &QCheckBox::staticMetaObject);
        QVERIFY(list.ClassInfoIndex(&check) < 0);
        list.DelClass(&QCheckBox::staticMetaObject);
        QCOMPARE(list.Count(), 1);
        QCOMPARE(list.Classes(0), &QLabel::staticMetaObject);
        list.DelClassInfo(0);
        QCOMPARE(list.Count(), 0);
        list.DelClassInfo(5);
    }

    void clearingKeepsTheFirstEntryAlive()
    {
        TQorDesignClassList list;
        list.AddClass(&QPushButton::staticMetaObject, QStringLiteral("A"), 1, true, false);
        list.AddClass(&QLabel::staticMetaObject, QStringLiteral("B"), 2, true, false);
        TQorDesignClassInformation *first = list.ClassInfos(0);
        list.ClearClasses();
        QCOMPARE(list.Count(), 0);
        // Still readable: it left the list without being freed.
        QCOMPARE(first->ClassTypeRef(), &QPushButton::staticMetaObject);
        QCOMPARE(first->Pallete, QStringLiteral("A"));
        list.ClearClasses();
        QCOMPARE(list.Count(), 0);
    }

    void anEntryAddedByTheCallerBelongsToTheList()
    {
        TQorDesignClassList list;
        auto *info = new TQorDesignClassInformation;
        info->SetPTI(TypeInfoOfClass(&TAppButton::staticMetaObject));
        info->Pallete = QStringLiteral("Mine");
        QCOMPARE(list.AddClassInfo(info), 0);
        QCOMPARE(list.ClassInfos(0), info);
        // Registered through its invokable constructor.
        QCOMPARE(GetClass(QStringLiteral("TAppButton")), &TAppButton::staticMetaObject);
        std::unique_ptr<QObject> made(CreateRegisteredComponent(&TAppButton::staticMetaObject));
        QVERIFY(qobject_cast<TAppButton *>(made.get()));
        QCOMPARE(list.AddClassInfo(nullptr), -1);
    }

    void classesAreRegisteredAsTheyAreAddedWhileAutoRegisterIsOn()
    {
        TQorDesignClassList list;
        QVERIFY(list.AutoRegister());
        // Without a factory or an invokable constructor nothing can be
        // registered.
        list.AddClass(&TAppPanel::staticMetaObject, QString(), 0, true, true);
        QVERIFY(!GetClass(QStringLiteral("TAppPanel")));
        list.DelClass(&TAppPanel::staticMetaObject);
        QCOMPARE(list.AddClass<TAppPanel>(QStringLiteral("Mine"), 0), 0);
        QCOMPARE(GetClass(QStringLiteral("TAppPanel")), &TAppPanel::staticMetaObject);
        UnRegisterClass(&TAppPanel::staticMetaObject);
        // Register false: not now.
        TQorDesignClassList quiet;
        quiet.AddClass<TAppPanel>(QString(), 0, true, false);
        QVERIFY(!GetClass(QStringLiteral("TAppPanel")));
        // AutoRegister off, then on: every listed class is registered.
        TQorDesignClassList later;
        later.SetAutoRegister(false);
        later.AddClass<TAppPanel>(QString(), 0);
        later.AddClass(&TAppButton::staticMetaObject, QString(), 0, true, true);
        QVERIFY(!GetClass(QStringLiteral("TAppPanel")));
        QVERIFY(!GetClass(QStringLiteral("TAppButton")));
        later.SetAutoRegister(true);
        QCOMPARE(GetClass(QStringLiteral("TAppPanel")), &TAppPanel::staticMetaObject);
        QCOMPARE(GetClass(QStringLiteral("TAppButton")), &TAppButton::staticMetaObject);
        // A stock class keeps its own factory.
        list.AddClass(&QPushButton::staticMetaObject, QString(), 0, true, true);
        std::unique_ptr<QObject> button(CreateRegisteredComponent(&QPushButton::staticMetaObject));
        QCOMPARE(button->metaObject(), &QPushButton::staticMetaObject);
    }

    void theDefaultListIsTheApplicationsUntilItGoes()
    {
        QVERIFY(!DefDesignClassList());
        {
            TQorDesignClassList list;
            SetDefDesignClassList(&list);
            QCOMPARE(DefDesignClassList(), &list);
        }
        QVERIFY(!DefDesignClassList());
    }

    void theImagesAre24By24()
    {
        TQorClassesImageList images;
        QCOMPARE(images.Size(), QSize(24, 24));
        QCOMPARE(images.Add(QIcon()), 0);
        QCOMPARE(images.Count(), 1);
        QVERIFY(images.Icon(7).isNull());
        TQorDesignClassList list;
        QVERIFY(!list.Images());
        list.SetImages(&images);
        QCOMPARE(list.Images(), &images);
    }

    void aClassShowsItsTranslatedLabelOrItsName()
    {
        QorTransMan()->SetDbFileName(QString());
        QCOMPARE(GetClassLabel(&QPushButton::staticMetaObject), QStringLiteral("QPushButton"));
        QVERIFY(GetClassLabel(nullptr).isEmpty());
        const QString dictionary =
            qEnvironmentVariable("QORDESIGN_SOURCE_DIR") + QStringLiteral("/resources/dict/qordesign-zh.sqlite");
        QVERIFY2(QFile::exists(dictionary), qPrintable(dictionary));
        QorTransMan()->SetDbFileName(dictionary);
        QCOMPARE(GetClassLabel(&QPushButton::staticMetaObject), QStringLiteral("按钮"));
        // A class the dictionary does not know shows its name.
        QCOMPARE(GetClassLabel(&TAppPanel::staticMetaObject), QStringLiteral("TAppPanel"));
        QorTransMan()->SetDbFileName(QString());
    }
};

QTEST_MAIN(tst_QorClassesMan)
#include "tst_qorclassesman.moc"
