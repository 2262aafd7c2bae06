// SPDX-License-Identifier: MIT
// Ownership of components: the owner's ordered list, its signals, names,
// destruction and the adoption of a ready-made form's named descendants.
#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "foundation/qorrepaintonce_p.h"
#include "harness/qorguitest.h"

#include <QGroupBox>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include <stdexcept>

namespace {

// One of the library's own objects, never owned as a designed component.
class LibraryHelper : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("QorDesignObject", "true")
};

class DerivedLibraryHelper : public LibraryHelper
{
    Q_OBJECT
};

template<class T>
T *named(T *o, const char *name)
{
    o->setObjectName(QLatin1String(name));
    return o;
}

QStringList namesOf(const QList<QObject *> &list)
{
    QStringList names;
    for (QObject *o : list)
        names << o->objectName();
    return names;
}

} // namespace

class tst_QorComponents : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QTRY_COMPARE(QorGuiTest::liveTopLevelWidgets(), 0); }

    // A container of many changed widgets is held from repainting while
    // they change and repainted once afterwards; one of few is never held,
    // and one held by someone else stays held.
    void aContainerOfManyChangedWidgetsIsRepaintedOnce()
    {
        QWidget form;
        form.resize(200, 200);
        QWidget *group = new QWidget(&form);
        QList<QObject *> many, few;
        for (int i = 0; i < QorRepaintOnce::kFrom; ++i)
            many.append(new QWidget(&form));
        for (int i = 0; i < QorRepaintOnce::kFrom - 1; ++i)
            few.append(new QWidget(group));
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        {
            const QorRepaintOnce hold(many);
            QVERIFY(!form.updatesEnabled());
        }
        QVERIFY(form.updatesEnabled());
        {
            const QorRepaintOnce hold(few + many.mid(0, 1));
            QVERIFY(group->updatesEnabled());
            QVERIFY(form.updatesEnabled());
        }
        form.setUpdatesEnabled(false);
        {
            const QorRepaintOnce hold(many);
        }
        QVERIFY(!form.updatesEnabled());
        form.setUpdatesEnabled(true);
        // Given back also when the command fails.
        try {
            const QorRepaintOnce hold(many);
            throw std::runtime_error("refused");
        } catch (const std::runtime_error &) {
        }
        QVERIFY(form.updatesEnabled());
    }

    // Freed components are hidden and out of their owner's list at once and
    // destroyed at the next turn of the event loop, however many there are
    // and in whatever order they were freed, also a container freed after
    // or before a component inside it.
    void freedComponentsGoAtTheNextTurnInAnyOrder()
    {
        QWidget form;
        QList<QPointer<QWidget>> freed;
        QList<QWidget *> buttons;
        for (int i = 0; i < 80; ++i) {
            auto *b = new QPushButton(&form);
            b->setObjectName(QStringLiteral("Button%1").arg(i + 1));
            InsertComponent(&form, b);
            buttons.append(b);
        }
        auto *first = new QGroupBox(&form);
        first->setObjectName(QStringLiteral("GroupBox1"));
        auto *inFirst = new QPushButton(first);
        inFirst->setObjectName(QStringLiteral("Inner1"));
        auto *second = new QGroupBox(&form);
        second->setObjectName(QStringLiteral("GroupBox2"));
        auto *inSecond = new QPushButton(second);
        inSecond->setObjectName(QStringLiteral("Inner2"));
        for (QWidget *w : {static_cast<QWidget *>(first), static_cast<QWidget *>(inFirst),
                           static_cast<QWidget *>(second), static_cast<QWidget *>(inSecond)})
            InsertComponent(&form, w);
        auto *kept = new QPushButton(&form);
        kept->setObjectName(QStringLiteral("Kept"));
        InsertComponent(&form, kept);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));

        // Every other button from the last, then the rest from the first.
        for (int i = buttons.size() - 1; i >= 0; i -= 2)
            freed.append(buttons.at(i));
        for (int i = 0; i < buttons.size(); i += 2)
            freed.append(buttons.at(i));
        freed << first << inFirst << inSecond << second;
        for (const QPointer<QWidget> &w : std::as_const(freed))
            FreeComponent(w);
        for (const QPointer<QWidget> &w : std::as_const(freed)) {
            QVERIFY(w);
            QVERIFY(w->isHidden());
        }
        QCOMPARE(ComponentCount(&form), 1);
        QTRY_VERIFY(std::none_of(freed.begin(), freed.end(), [](const QPointer<QWidget> &w) { return w; }));
        QCOMPARE(form.findChildren<QWidget *>(), QList<QWidget *>{kept});
        QCOMPARE(ComponentCount(&form), 1);
    }

    void insertedComponentsKeepTheOrderOfInsertion()
    {
        QWidget form;
        QObject *a = named(new QPushButton(&form), "Button1");
        QObject *b = named(new QLabel(&form), "Label1");
        QObject *c = named(new QTimer, "Timer1");
        InsertComponent(&form, a);
        InsertComponent(&form, b);
        InsertComponent(&form, c);
        QCOMPARE(ComponentCount(&form), 3);
        QCOMPARE(ComponentList(&form), QList<QObject *>({a, b, c}));
        QCOMPARE(Components(&form, 1), b);
        QCOMPARE(Components(&form, 3), nullptr);
        QCOMPARE(Components(&form, -1), nullptr);
        QCOMPARE(ComponentIndex(c), 2);
        QCOMPARE(Owner(a), &form);
        QCOMPARE(Owner(&form), nullptr);
        QCOMPARE(ComponentIndex(&form), -1);
    }

    void insertionIsReportedAfterTheComponentJoined()
    {
        QWidget form;
        QSignalSpy inserted(OwnerNotifier(&form), &TQorOwnerNotifier::ComponentInserted);
        auto *button = named(new QPushButton(&form), "Button1");
        int countSeen = -1;
        connect(OwnerNotifier(&form), &TQorOwnerNotifier::ComponentInserted, this,
                [&] { countSeen = ComponentCount(&form); });
        InsertComponent(&form, button);
        QCOMPARE(inserted.count(), 1);
        QCOMPARE(inserted.at(0).at(0).value<QObject *>(), button);
        QCOMPARE(countSeen, 1);
    }

    void aComponentDestroyedWhileOwnedLeavesTheList()
    {
        QWidget form;
        auto *a = named(new QPushButton(&form), "Button1");
        auto *b = named(new QPushButton(&form), "Button2");
        auto *c = named(new QPushButton(&form), "Button3");
        for (QObject *o : {a, b, c})
            InsertComponent(&form, o);
        QSignalSpy removed(OwnerNotifier(&form), &TQorOwnerNotifier::ComponentRemoved);
        delete b;
        QCOMPARE(removed.count(), 1);
        QCOMPARE(removed.at(0).at(0).value<QObject *>(), static_cast<QObject *>(b));
        QCOMPARE(ComponentList(&form), QList<QObject *>({a, c}));
        QCOMPARE(ComponentIndex(c), 1);
        QCOMPARE(FindComponent(&form, QStringLiteral("Button2")), nullptr);
        QCOMPARE(Owner(b), nullptr); // the address is no longer known
    }

    void insertionIntoASecondOwnerMovesTheComponent()
    {
        QWidget first, second;
        auto *button = named(new QPushButton(&first), "Button1");
        InsertComponent(&first, button);
        QSignalSpy removed(OwnerNotifier(&first), &TQorOwnerNotifier::ComponentRemoved);
        QSignalSpy inserted(OwnerNotifier(&second), &TQorOwnerNotifier::ComponentInserted);
        InsertComponent(&second, button);
        QCOMPARE(Owner(button), &second);
        QCOMPARE(ComponentCount(&first), 0);
        QCOMPARE(ComponentList(&second), QList<QObject *>({button}));
        QCOMPARE(removed.count(), 1);
        QCOMPARE(inserted.count(), 1);
        QCOMPARE(FindComponent(&first, QStringLiteral("Button1")), nullptr);
        QCOMPARE(FindComponent(&second, QStringLiteral("button1")), button);
        QCOMPARE(button->parent(), &first); // a widget keeps its visual parent
    }

    void insertingTwiceIntoTheSameOwnerChangesNothing()
    {
        QWidget form;
        auto *button = named(new QPushButton(&form), "Button1");
        InsertComponent(&form, button);
        QSignalSpy inserted(OwnerNotifier(&form), &TQorOwnerNotifier::ComponentInserted);
        InsertComponent(&form, button);
        QCOMPARE(ComponentCount(&form), 1);
        QCOMPARE(inserted.count(), 0);
    }

    void aSecondComponentOfTheSameNameIsRefused()
    {
        QWidget form, elsewhere;
        auto *first = named(new QPushButton(&form), "Button1");
        auto *second = named(new QPushButton(&form), "BUTTON1");
        InsertComponent(&elsewhere, second);
        InsertComponent(&form, first);
        QVERIFY_THROWS_EXCEPTION(EComponentError, InsertComponent(&form, second));
        QCOMPARE(ComponentList(&form), QList<QObject *>({first}));
        QCOMPARE(Owner(second), &elsewhere); // nothing changed
        try {
            InsertComponent(&form, second);
        } catch (const EComponentError &e) {
            QVERIFY(e.message().contains(QLatin1String("BUTTON1")));
        }
    }

    void componentsWithoutNameMayBeSeveral()
    {
        QWidget form;
        auto *a = new QLabel(&form);
        auto *b = new QLabel(&form);
        InsertComponent(&form, a);
        InsertComponent(&form, b);
        QCOMPARE(ComponentCount(&form), 2);
        QCOMPARE(FindComponent(&form, QString()), nullptr);
    }

    void aNonVisualComponentGetsItsOwnerAsParent()
    {
        QWidget form;
        QObject *holder = new QObject;
        auto *timer = named(new QTimer(holder), "Timer1");
        InsertComponent(&form, timer);
        QCOMPARE(timer->parent(), &form);
        delete holder;
        QCOMPARE(ComponentList(&form), QList<QObject *>({timer}));
    }

    void aWidgetKeepsItsVisualParent()
    {
        QWidget form;
        auto *box = named(new QGroupBox(&form), "GroupBox1");
        auto *button = named(new QPushButton(box), "Button1");
        InsertComponent(&form, box);
        InsertComponent(&form, button);
        QCOMPARE(button->parentWidget(), box);
        QCOMPARE(Owner(button), &form);
    }

    void removingAComponentKeepsItAlive()
    {
        QWidget form;
        QPointer<QPushButton> button = new QPushButton(&form);
        button->setObjectName(QStringLiteral("Button1"));
        InsertComponent(&form, button);
        QSignalSpy removed(OwnerNotifier(&form), &TQorOwnerNotifier::ComponentRemoved);
        RemoveComponent(&form, button);
        QVERIFY(button);
        QCOMPARE(Owner(button), nullptr);
        QCOMPARE(ComponentCount(&form), 0);
        QCOMPARE(removed.count(), 1);
        // Removing it from an owner that does not own it changes nothing.
        QWidget other;
        InsertComponent(&other, button);
        RemoveComponent(&form, button);
        QCOMPARE(Owner(button), &other);
    }

    void findComponentIsCaseInsensitiveAndFollowsRenames()
    {
        QWidget form;
        auto *button = named(new QPushButton(&form), "OkButton");
        InsertComponent(&form, button);
        QCOMPARE(FindComponent(&form, QStringLiteral("okbutton")), button);
        button->setObjectName(QStringLiteral("CancelButton"));
        QCOMPARE(FindComponent(&form, QStringLiteral("OkButton")), nullptr);
        QCOMPARE(FindComponent(&form, QStringLiteral("CANCELBUTTON")), button);
        QCOMPARE(FindComponent(nullptr, QStringLiteral("CancelButton")), nullptr);
    }

    void aUserRenameTakesIdentifiersThatAreFreeInTheOwner()
    {
        QWidget form;
        auto *ok = named(new QPushButton(&form), "OkButton");
        auto *cancel = named(new QPushButton(&form), "CancelButton");
        InsertComponent(&form, ok);
        InsertComponent(&form, cancel);
        SetComponentName(ok, QStringLiteral("_Accept2"));
        QCOMPARE(ok->objectName(), QStringLiteral("_Accept2"));
        QCOMPARE(FindComponent(&form, QStringLiteral("_accept2")), ok);
        // Its own name in another case is no clash.
        SetComponentName(ok, QStringLiteral("_ACCEPT2"));
        QCOMPARE(ok->objectName(), QStringLiteral("_ACCEPT2"));
        for (const char *bad : {"2nd", "Ok Button", "Ok-Button", "Knöpfchen", " "}) {
            QVERIFY_THROWS_EXCEPTION(EComponentError, SetComponentName(ok, QString::fromUtf8(bad)));
            QCOMPARE(ok->objectName(), QStringLiteral("_ACCEPT2"));
        }
        try {
            SetComponentName(ok, QStringLiteral("cancelbutton"));
            QFAIL("a taken name was accepted");
        } catch (const EComponentError &error) {
            QCOMPARE(error.message(), QStringLiteral("A component named cancelbutton already exists"));
        }
        QCOMPARE(ok->objectName(), QStringLiteral("_ACCEPT2"));
        // No name at all is allowed, as for any component.
        SetComponentName(ok, QString());
        QVERIFY(ok->objectName().isEmpty());
        // Without an owner only the form of the name counts.
        QPushButton loose;
        SetComponentName(&loose, QStringLiteral("CancelButton"));
        QCOMPARE(loose.objectName(), QStringLiteral("CancelButton"));
    }

    void findComponentGivesTheFirstInListOrderWhenNamesRepeat()
    {
        QWidget form;
        auto *a = named(new QPushButton(&form), "A");
        auto *b = named(new QPushButton(&form), "B");
        InsertComponent(&form, a);
        InsertComponent(&form, b);
        // A rename behind the owner's back may make two names equal.
        b->setObjectName(QStringLiteral("a"));
        QCOMPARE(FindComponent(&form, QStringLiteral("A")), a);
        SetComponentIndex(b, 0);
        QCOMPARE(FindComponent(&form, QStringLiteral("A")), b);
    }

    void findComponentsGivesEveryOneOfTheNameInListOrder()
    {
        QWidget form;
        auto *a = named(new QPushButton(&form), "A");
        auto *b = named(new QPushButton(&form), "B");
        auto *c = named(new QPushButton(&form), "C");
        for (QObject *component : {static_cast<QObject *>(a), static_cast<QObject *>(b), static_cast<QObject *>(c)})
            InsertComponent(&form, component);
        QCOMPARE(FindComponents(&form, QStringLiteral("b")), QList<QObject *>{b});
        c->setObjectName(QStringLiteral("a"));
        b->setObjectName(QStringLiteral("A"));
        QCOMPARE(FindComponents(&form, QStringLiteral("A")), (QList<QObject *>{a, b, c}));
        SetComponentIndex(c, 0);
        QCOMPARE(FindComponents(&form, QStringLiteral("a")), (QList<QObject *>{c, a, b}));
        RemoveComponent(&form, a);
        QCOMPARE(FindComponents(&form, QStringLiteral("a")), (QList<QObject *>{c, b}));
        QVERIFY(FindComponents(&form, QStringLiteral("B")).isEmpty());
        QVERIFY(FindComponents(&form, QString()).isEmpty());
        QVERIFY(FindComponents(nullptr, QStringLiteral("A")).isEmpty());
    }

    void setComponentIndexMovesWithinTheList()
    {
        QWidget form;
        QList<QObject *> list;
        for (const char *n : {"A", "B", "C", "D"}) {
            list << named(new QLabel(&form), n);
            InsertComponent(&form, list.last());
        }
        SetComponentIndex(list.at(3), 1);
        QCOMPARE(namesOf(ComponentList(&form)),
                 QStringList({QStringLiteral("A"), QStringLiteral("D"), QStringLiteral("B"), QStringLiteral("C")}));
        QCOMPARE(ComponentIndex(list.at(1)), 2);
        SetComponentIndex(list.at(0), 99);
        QCOMPARE(namesOf(ComponentList(&form)),
                 QStringList({QStringLiteral("D"), QStringLiteral("B"), QStringLiteral("C"), QStringLiteral("A")}));
        QCOMPARE(ComponentIndex(list.at(0)), 3);
    }

    void anOwnerDestroysTheComponentsItStillOwns()
    {
        QPointer<QPushButton> shownElsewhere;
        QPointer<QTimer> timer;
        QWidget elsewhere;
        {
            QWidget form;
            shownElsewhere = new QPushButton(&elsewhere);
            shownElsewhere->setObjectName(QStringLiteral("Button1"));
            timer = new QTimer;
            timer->setObjectName(QStringLiteral("Timer1"));
            InsertComponent(&form, shownElsewhere);
            InsertComponent(&form, timer);
        }
        QVERIFY(!shownElsewhere);
        QVERIFY(!timer);
        QVERIFY(elsewhere.children().isEmpty());
    }

    void destroyingAnOwnerWithChildrenLeavesNoEntryBehind()
    {
        auto *form = new QWidget;
        auto *box = named(new QGroupBox(form), "GroupBox1");
        auto *button = named(new QPushButton(box), "Button1");
        InsertComponent(form, box);
        InsertComponent(form, button);
        QSignalSpy removed(OwnerNotifier(form), &TQorOwnerNotifier::ComponentRemoved);
        delete form;
        QCOMPARE(removed.count(), 2); // reported while the owner goes, as they leave
        QCOMPARE(Owner(button), nullptr);
        QCOMPARE(ComponentCount(form), 0);
    }

    void adoptionTakesNamedDescendantsDepthFirst()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        auto *box = named(new QGroupBox(&form), "GroupBox1");
        named(new QPushButton(box), "Button1");
        named(new QLabel(box), "Label1");
        named(new QPushButton(&form), "Button2");
        auto *timer = named(new QTimer(&form), "Timer1");
        QCOMPARE(AdoptNamedDescendants(&form), 5);
        QCOMPARE(namesOf(ComponentList(&form)),
                 QStringList({QStringLiteral("GroupBox1"), QStringLiteral("Button1"), QStringLiteral("Label1"),
                              QStringLiteral("Button2"), QStringLiteral("Timer1")}));
        QCOMPARE(timer->parent(), &form);
        // Adopting again takes nothing new.
        QCOMPARE(AdoptNamedDescendants(&form), 0);
        QCOMPARE(ComponentCount(&form), 5);
    }

    void adoptionSkipsInnerPartsOfCompositeWidgets()
    {
        QWidget form;
        named(new QSpinBox(&form), "SpinBox1");
        auto *tabs = named(new QTabWidget(&form), "TabWidget1");
        auto *page = new QWidget;
        page->setObjectName(QStringLiteral("Page1"));
        tabs->addTab(page, QStringLiteral("First"));
        named(new QPushButton(page), "PageButton");
        auto *area = named(new QScrollArea(&form), "ScrollArea1");
        area->setWidget(new QWidget); // unnamed contents
        new QLabel(&form); // unnamed
        named(new QLabel(&form), "qt_helper_label");

        auto *named_contents = named(new QWidget, "Contents");
        auto *area2 = named(new QScrollArea(&form), "ScrollArea2");
        area2->setWidget(named_contents);
        named(new QLabel(named_contents), "InArea");

        AdoptNamedDescendants(&form);
        // The page sits inside the tab widget's inner stacked widget and the
        // contents inside the scroll area's viewport: found as pages. The
        // spin box's line edit and the tab bar (with its named scroll
        // buttons) are not taken.
        QCOMPARE(namesOf(ComponentList(&form)),
                 QStringList({QStringLiteral("SpinBox1"), QStringLiteral("TabWidget1"), QStringLiteral("Page1"),
                              QStringLiteral("PageButton"), QStringLiteral("ScrollArea1"),
                              QStringLiteral("ScrollArea2"), QStringLiteral("Contents"), QStringLiteral("InArea")}));
        for (QObject *c : ComponentList(&form))
            QVERIFY(!IsInnerPart(c));
    }

    void adoptionSkipsTheLibrarysOwnObjects()
    {
        QWidget form;
        named(new LibraryHelper, "Manager1")->setParent(&form);
        named(new DerivedLibraryHelper, "Manager2")->setParent(&form);
        named(new QLabel(&form), "Label1");
        AdoptNamedDescendants(&form);
        QCOMPARE(namesOf(ComponentList(&form)), QStringList({QStringLiteral("Label1")}));
        QVERIFY(IsQorDesignObject(OwnerNotifier(&form)));
        QVERIFY(!IsQorDesignObject(&form));
        QVERIFY(!IsQorDesignObject(nullptr));
    }

    void adoptionRenamesASecondDescendantOfATakenName()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        named(new QPushButton(&form), "Button1");
        auto *box = named(new QGroupBox(&form), "GroupBox1");
        auto *twin = named(new QPushButton(box), "button1");
        auto *formTwin = named(new QLabel(box), "Form1");
        AdoptNamedDescendants(&form);
        QCOMPARE(twin->objectName(), QStringLiteral("button2"));
        QCOMPARE(Owner(twin), &form);
        QCOMPARE(formTwin->objectName(), QStringLiteral("Form1")); // only owned names collide
    }

    void innerPartsAreUnnamedOrQtNamed()
    {
        QObject o;
        QVERIFY(IsInnerPart(&o));
        o.setObjectName(QStringLiteral("qt_spinbox_lineedit"));
        QVERIFY(IsInnerPart(&o));
        o.setObjectName(QStringLiteral("Edit1"));
        QVERIFY(!IsInnerPart(&o));
        QVERIFY(IsInnerPart(nullptr));
    }

    void componentListSkipsDestroyedEntries()
    {
        auto *a = new QObject;
        auto *b = new QObject;
        auto *c = new QObject;
        TComponentList list{a, b, c};
        QCOMPARE(list.Count(), 3);
        delete b;
        QCOMPARE(list.Count(), 2);
        QCOMPARE(list.Items(1), c);
        QCOMPARE(list.IndexOf(c), 1);
        QCOMPARE(list.toList(), QList<QObject *>({a, c}));
        delete a;
        delete c;
        QVERIFY(list.isEmpty());
        QCOMPARE(list.First(), nullptr);
    }

    void componentListOperationsNeverDestroyComponents()
    {
        QObject a, b, c;
        TComponentList list;
        QCOMPARE(list.Add(&a), 0);
        QCOMPARE(list.Add(&c), 1);
        list.Insert(1, &b);
        QCOMPARE(list.toList(), QList<QObject *>({&a, &b, &c}));
        QCOMPARE(list.First(), &a);
        QCOMPARE(list.Last(), &c);
        QCOMPARE(list.Remove(&b), 1);
        QCOMPARE(list.Remove(&b), -1);
        list.Delete(0);
        QCOMPARE(list.toList(), QList<QObject *>({&c}));
        list.Clear();
        QCOMPARE(list.Count(), 0);
        QCOMPARE(list.Items(0), nullptr);
    }
    void theFirstFreeNumberFollowsNamesThatComeAndGo()
    {
        QObject form;
        form.setObjectName(QStringLiteral("Form1"));
        QList<QObject *> buttons;
        for (int i = 1; i <= 5; ++i) {
            auto *b = new QObject(&form);
            b->setObjectName(QStringLiteral("Button%1").arg(i));
            InsertComponent(&form, b);
            buttons.append(b);
        }
        QCOMPARE(FirstFreeNameNumber(&form, QStringLiteral("Button")), 6);
        // Asked again, nothing changed: the same answer.
        QCOMPARE(FirstFreeNameNumber(&form, QStringLiteral("Button")), 6);
        auto *sixth = new QObject(&form);
        sixth->setObjectName(QStringLiteral("button6"));
        InsertComponent(&form, sixth);
        QCOMPARE(FirstFreeNameNumber(&form, QStringLiteral("Button")), 7);
        RemoveComponent(&form, buttons.at(2));
        QCOMPARE(FirstFreeNameNumber(&form, QStringLiteral("Button")), 3);
        buttons.at(1)->setObjectName(QStringLiteral("Other"));
        QCOMPARE(FirstFreeNameNumber(&form, QStringLiteral("Button")), 2);
        buttons.at(1)->setObjectName(QStringLiteral("Button2"));
        QCOMPARE(FirstFreeNameNumber(&form, QStringLiteral("Button")), 3);
        // The owner's own name takes its number too.
        form.setObjectName(QStringLiteral("BUTTON3"));
        QCOMPARE(FirstFreeNameNumber(&form, QStringLiteral("Button")), 7);
        form.setObjectName(QStringLiteral("Form1"));
        QCOMPARE(FirstFreeNameNumber(&form, QStringLiteral("Button")), 3);
        // A destroyed component frees its number; leading zeros are no
        // number of the base.
        delete buttons.at(0);
        QCOMPARE(FirstFreeNameNumber(&form, QStringLiteral("Button")), 1);
        auto *zero = new QObject(&form);
        zero->setObjectName(QStringLiteral("Button01"));
        InsertComponent(&form, zero);
        QCOMPARE(FirstFreeNameNumber(&form, QStringLiteral("Button")), 1);
        QCOMPARE(FirstFreeNameNumber(&form, QStringLiteral("Label")), 1);
    }
};

QTEST_MAIN(tst_QorComponents)
#include "tst_qorcomponents.moc"
