// SPDX-License-Identifier: MIT
// The registration of the library's components and design actions: the
// page and the category Register() fills, in their order, registering
// again, and the pages and categories an application adds itself.
#include "browsing/qorclassesman.h"
#include "browsing/qordsnsysreg.h"

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace {

QStringList classNames(const QList<const QMetaObject *> &Classes)
{
    QStringList names;
    for (const QMetaObject *c : Classes)
        names.append(QString::fromLatin1(c ? c->className() : "(null)"));
    return names;
}

const QStringList designSysComponents{
    QStringLiteral("TQorDesignCenter"),         QStringLiteral("TQorCompTreeView"),
    QStringLiteral("TQorDesignManager"),        QStringLiteral("TQorDesignCompPopupMenu"),
    QStringLiteral("TQorDesignCompPopupMenuEx"), QStringLiteral("TQorDefDesignCompPopupMenu"),
    QStringLiteral("TQorObjInspector"),         QStringLiteral("TQorClassesImageList"),
    QStringLiteral("TQorCompPalleteToolBar"),   QStringLiteral("TQorCompPalleteTab")};

const QStringList designActions{QStringLiteral("TQorDesignEditCopy"),
                                QStringLiteral("TQorDesignEditCut"),
                                QStringLiteral("TQorDesignEditPaste"),
                                QStringLiteral("TQorDesignEditSelAll"),
                                QStringLiteral("TQorDesignEditDelSel"),
                                QStringLiteral("TQorDesignSelCtrlBringToFront"),
                                QStringLiteral("TQorDesignSelCtrlSendToBack"),
                                QStringLiteral("TQorDesignSelCtrlFlipSelChildren"),
                                QStringLiteral("TQorDesignSelCtrlFlipAllChildren"),
                                QStringLiteral("TQorDesignSelCtrlPositionAlign"),
                                QStringLiteral("TQorDesignSelCtrlPositionSize"),
                                QStringLiteral("TQorDesignSelCtrlPositionScale")};

} // namespace

class tst_QorDsnSysReg : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { UnRegisterComponentsAndActions(); }

    // Edge cases
    void nothingIsRegisteredBeforeRegister()
    {
        QVERIFY(RegisteredComponentPages().isEmpty());
        QVERIFY(RegisteredActionCategories().isEmpty());
        QVERIFY(RegisteredComponents(QStringLiteral("QOR-DesignSys")).isEmpty());
        QVERIFY(RegisteredActions(QStringLiteral("QOR Design Actions")).isEmpty());
        QVERIFY(!RegisteredActionResource(QStringLiteral("QOR Design Actions")));
    }

    void thePageListsTheTenComponentsInOrder()
    {
        Register();
        QCOMPARE(RegisteredComponentPages(), QStringList{QStringLiteral("QOR-DesignSys")});
        QCOMPARE(classNames(RegisteredComponents(QStringLiteral("QOR-DesignSys"))), designSysComponents);
    }

    void theCategoryListsTheTwelveActionsInOrderWithoutAResource()
    {
        Register();
        QCOMPARE(RegisteredActionCategories(), QStringList{QStringLiteral("QOR Design Actions")});
        QCOMPARE(classNames(RegisteredActions(QStringLiteral("QOR Design Actions"))), designActions);
        QVERIFY(!RegisteredActionResource(QStringLiteral("QOR Design Actions")));
    }

    void registeringAgainListsEveryClassOnce()
    {
        Register();
        Register();
        QCOMPARE(RegisteredComponentPages(), QStringList{QStringLiteral("QOR-DesignSys")});
        QCOMPARE(classNames(RegisteredComponents(QStringLiteral("QOR-DesignSys"))), designSysComponents);
        QCOMPARE(RegisteredActionCategories(), QStringList{QStringLiteral("QOR Design Actions")});
        QCOMPARE(classNames(RegisteredActions(QStringLiteral("QOR Design Actions"))), designActions);
    }

    void pageAndCategoryNamesCompareExactly()
    {
        Register();
        QVERIFY(RegisteredComponents(QStringLiteral("qor-designsys")).isEmpty());
        QVERIFY(RegisteredComponents(QStringLiteral("QOR DesignSys")).isEmpty());
        QVERIFY(RegisteredActions(QStringLiteral("QOR-Design Actions")).isEmpty());
    }

    // Every registered component is a QObject. The widgets that sit on a
    // form are the tree, the inspector and the two palette controls; the
    // popup menus are widgets that pop up.
    void theWidgetsOfThePageAreThePopupMenusTheTreeTheInspectorAndThePalette()
    {
        Register();
        QStringList onForm;
        QStringList menus;
        for (const QMetaObject *c : RegisteredComponents(QStringLiteral("QOR-DesignSys"))) {
            QVERIFY(c->inherits(&QObject::staticMetaObject));
            if (c->inherits(&QMenu::staticMetaObject))
                menus.append(QString::fromLatin1(c->className()));
            else if (c->inherits(&QWidget::staticMetaObject))
                onForm.append(QString::fromLatin1(c->className()));
        }
        QCOMPARE(onForm, (QStringList{QStringLiteral("TQorCompTreeView"), QStringLiteral("TQorObjInspector"),
                                      QStringLiteral("TQorCompPalleteToolBar"), QStringLiteral("TQorCompPalleteTab")}));
        QCOMPARE(menus, (QStringList{QStringLiteral("TQorDesignCompPopupMenu"),
                                     QStringLiteral("TQorDesignCompPopupMenuEx"),
                                     QStringLiteral("TQorDefDesignCompPopupMenu")}));
        for (const QMetaObject *c : RegisteredActions(QStringLiteral("QOR Design Actions")))
            QVERIFY2(c->inherits(&QAction::staticMetaObject), c->className());
    }

    void theClassImagesAreAComponentItsOwnerFrees()
    {
        QObject owner;
        QPointer<TQorClassesImageList> images = new TQorClassesImageList(&owner);
        QCOMPARE(images->parent(), &owner);
        QCOMPARE(images->Size(), QSize(24, 24));
        QCOMPARE(images->Add(QIcon()), 0);
        QCOMPARE(images->Count(), 1);
        delete static_cast<QObject *>(images);
        QVERIFY(images.isNull());
        QVERIFY(owner.children().isEmpty());
        TQorClassesImageList alone;
        QVERIFY(!alone.parent());
    }

    // The rules of RegisterComponents and RegisterActions.
    void classesKeepTheirRegistrationOrder()
    {
        RegisterComponents(QStringLiteral("Mine"), {&QPushButton::staticMetaObject, &QTimer::staticMetaObject});
        RegisterComponents(QStringLiteral("Mine"), {&QLabel::staticMetaObject});
        QCOMPARE(classNames(RegisteredComponents(QStringLiteral("Mine"))),
                 (QStringList{QStringLiteral("QPushButton"), QStringLiteral("QTimer"), QStringLiteral("QLabel")}));
    }

    void aClassAlreadyRegisteredKeepsItsPlace()
    {
        RegisterComponents(QStringLiteral("First"), {&QPushButton::staticMetaObject, &QLabel::staticMetaObject});
        RegisterComponents(QStringLiteral("First"), {&QLabel::staticMetaObject, &QTimer::staticMetaObject,
                                                     &QTimer::staticMetaObject});
        RegisterComponents(QStringLiteral("Second"), {&QPushButton::staticMetaObject, &QWidget::staticMetaObject});
        QCOMPARE(classNames(RegisteredComponents(QStringLiteral("First"))),
                 (QStringList{QStringLiteral("QPushButton"), QStringLiteral("QLabel"), QStringLiteral("QTimer")}));
        QCOMPARE(classNames(RegisteredComponents(QStringLiteral("Second"))), QStringList{QStringLiteral("QWidget")});
        // A page holds classes, not the classes they derive from or that
        // derive from them.
        RegisterComponents(QStringLiteral("Second"), {&QAbstractButton::staticMetaObject});
        QCOMPARE(classNames(RegisteredComponents(QStringLiteral("Second"))),
                 (QStringList{QStringLiteral("QWidget"), QStringLiteral("QAbstractButton")}));
    }

    void pagesAndCategoriesKeepTheOrderTheyFirstCameIn()
    {
        RegisterComponents(QStringLiteral("B"), {&QLabel::staticMetaObject});
        RegisterComponents(QStringLiteral("A"), {});
        RegisterComponents(QStringLiteral("B"), {&QTimer::staticMetaObject});
        QCOMPARE(RegisteredComponentPages(), (QStringList{QStringLiteral("B"), QStringLiteral("A")}));
        QVERIFY(RegisteredComponents(QStringLiteral("A")).isEmpty());
        RegisterActions(QStringLiteral("Z"), {});
        RegisterActions(QStringLiteral("Y"), {&QAction::staticMetaObject});
        QCOMPARE(RegisteredActionCategories(), (QStringList{QStringLiteral("Z"), QStringLiteral("Y")}));
        // Pages and categories are apart: a class may be both.
        RegisterActions(QStringLiteral("Z"), {&QLabel::staticMetaObject});
        QCOMPARE(classNames(RegisteredActions(QStringLiteral("Z"))), QStringList{QStringLiteral("QLabel")});
    }

    void nullClassesAreSkipped()
    {
        RegisterComponents(QStringLiteral("Mine"), {nullptr, &QLabel::staticMetaObject, nullptr});
        RegisterActions(QStringLiteral("Acts"), {nullptr});
        QCOMPARE(classNames(RegisteredComponents(QStringLiteral("Mine"))), QStringList{QStringLiteral("QLabel")});
        QVERIFY(RegisteredActions(QStringLiteral("Acts")).isEmpty());
        QCOMPARE(RegisteredActionCategories(), QStringList{QStringLiteral("Acts")});
    }

    void theFirstResourceNamedStays()
    {
        RegisterActions(QStringLiteral("Acts"), {&QAction::staticMetaObject});
        QVERIFY(!RegisteredActionResource(QStringLiteral("Acts")));
        RegisterActions(QStringLiteral("Acts"), {}, &QObject::staticMetaObject);
        QCOMPARE(RegisteredActionResource(QStringLiteral("Acts")), &QObject::staticMetaObject);
        RegisterActions(QStringLiteral("Acts"), {}, &QTimer::staticMetaObject);
        RegisterActions(QStringLiteral("Acts"), {}, nullptr);
        QCOMPARE(RegisteredActionResource(QStringLiteral("Acts")), &QObject::staticMetaObject);
        QVERIFY(!RegisteredActionResource(QStringLiteral("Unknown")));
    }

    void unregisteringForgetsPagesAndCategories()
    {
        Register();
        RegisterComponents(QStringLiteral("Mine"), {&QLabel::staticMetaObject});
        UnRegisterComponentsAndActions();
        QVERIFY(RegisteredComponentPages().isEmpty());
        QVERIFY(RegisteredActionCategories().isEmpty());
        // A class once registered can be registered anew, elsewhere.
        RegisterComponents(QStringLiteral("Other"), {&QLabel::staticMetaObject});
        QCOMPARE(classNames(RegisteredComponents(QStringLiteral("Other"))), QStringList{QStringLiteral("QLabel")});
        Register();
        QCOMPARE(classNames(RegisteredComponents(QStringLiteral("QOR-DesignSys"))), designSysComponents);
    }
};

QTEST_MAIN(tst_QorDsnSysReg)
#include "tst_qordsnsysreg.moc"
