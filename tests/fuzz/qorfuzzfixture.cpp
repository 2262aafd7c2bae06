// SPDX-License-Identifier: MIT
#include "qorfuzzfixture_p.h"

#include "foundation/qorcomponents.h"

#include <QApplication>
#include <QCoreApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSqlDatabase>
#include <QTimer>
#include <QWidget>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

void QorFuzzEnsureApplication()
{
    if (QCoreApplication::instance())
        return;
    // libFuzzer runs without a display; the offscreen platform also keeps
    // the clipboard inside the process.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "qorfuzz";
    static char *argv[] = {name, nullptr};
    new QApplication(argc, argv);
    // Qt SQL's tables of drivers and connections are made on first use and
    // destroyed at exit in the reverse order of their making; made now,
    // they outlive the application deleted below, which still closes the
    // dictionary's connection.
    QSqlDatabase::connectionNames();
    // libFuzzer leaves by exit(): the form and the application go first, so
    // that the leak check at exit sees Qt's fonts and platform released.
    std::atexit([] {
        delete QorFuzzForm();
        delete QCoreApplication::instance();
    });
}

QWidget *QorFuzzForm()
{
    static QPointer<QWidget> form;
    if (form)
        return form;
    form = new QWidget;
    form->setObjectName(QStringLiteral("FuzzForm"));
    form->setGeometry(0, 0, 400, 300);
    auto *button = new QPushButton(QStringLiteral("Button"), form);
    button->setObjectName(QStringLiteral("Button1"));
    button->setGeometry(10, 10, 80, 24);
    auto *box = new QGroupBox(QStringLiteral("Box"), form);
    box->setObjectName(QStringLiteral("GroupBox1"));
    box->setGeometry(10, 50, 200, 100);
    auto *label = new QLabel(QStringLiteral("Label"), box);
    label->setObjectName(QStringLiteral("Label1"));
    label->setGeometry(8, 20, 60, 20);
    auto *edit = new QLineEdit(form);
    edit->setObjectName(QStringLiteral("Edit1"));
    edit->setGeometry(220, 10, 120, 24);
    auto *timer = new QTimer(form);
    timer->setObjectName(QStringLiteral("Timer1"));
    for (QObject *c : std::initializer_list<QObject *>{button, box, label, edit, timer})
        InsertComponent(form, c);
    return form;
}

bool QorObjectState::operator==(const QorObjectState &Other) const
{
    return address == Other.address && object == Other.object && name == Other.name && className == Other.className
        && parent == Other.parent && geometry == Other.geometry && hidden == Other.hidden;
}

namespace {

QorObjectState stateOf(QObject *Object)
{
    QorObjectState s;
    s.object = Object;
    s.address = Object;
    s.name = Object->objectName();
    s.className = Object->metaObject()->className();
    s.parent = Object->parent();
    if (auto *w = qobject_cast<QWidget *>(Object)) {
        s.geometry = w->geometry();
        s.hidden = w->isHidden();
    }
    return s;
}

void walk(QObject *Object, QList<QorObjectState> &Out)
{
    Out.append(stateOf(Object));
    for (QObject *child : Object->children())
        walk(child, Out);
}

QString describe(const QorObjectState &S)
{
    return QStringLiteral("%1 \"%2\" (%3) parent %4 geometry %5,%6 %7x%8%9")
        .arg(QString::fromLatin1(S.className), S.name)
        .arg(quintptr(S.address), 0, 16)
        .arg(quintptr(S.parent), 0, 16)
        .arg(S.geometry.x())
        .arg(S.geometry.y())
        .arg(S.geometry.width())
        .arg(S.geometry.height())
        .arg(S.hidden ? QStringLiteral(" hidden") : QString());
}

QString listDifference(const char *What, const QList<QorObjectState> &Before, const QList<QorObjectState> &After)
{
    for (qsizetype i = 0; i < std::max(Before.size(), After.size()); ++i) {
        if (i >= Before.size())
            return QStringLiteral("%1 #%2 is new: %3").arg(QLatin1String(What)).arg(i).arg(describe(After.at(i)));
        if (i >= After.size())
            return QStringLiteral("%1 #%2 is gone: %3").arg(QLatin1String(What)).arg(i).arg(describe(Before.at(i)));
        if (!(Before.at(i) == After.at(i))) {
            return QStringLiteral("%1 #%2 was %3, is %4")
                .arg(QLatin1String(What))
                .arg(i)
                .arg(describe(Before.at(i)), describe(After.at(i)));
        }
    }
    return {};
}

} // namespace

QorFormSnapshot QorSnapshot(QObject *Owner, QObject *Parent)
{
    QorFormSnapshot s;
    for (QObject *c : ComponentList(Owner))
        s.components.append(stateOf(c));
    walk(Parent, s.tree);
    return s;
}

QString QorSnapshotDifference(const QorFormSnapshot &Before, const QorFormSnapshot &After)
{
    const QString components = listDifference("component", Before.components, After.components);
    return components.isEmpty() ? listDifference("object of the form's tree", Before.tree, After.tree) : components;
}

void QorFuzzRequire(bool Condition, const QString &Why)
{
    if (Condition)
        return;
    std::fprintf(stderr, "qorfuzz: %s\n", qPrintable(Why));
    std::fflush(stderr);
    std::abort();
}

void QorFuzzRequireUnchanged(const QorFormSnapshot &Before, const QorFormSnapshot &After, const char *Where)
{
    const QString difference = QorSnapshotDifference(Before, After);
    QorFuzzRequire(difference.isEmpty(), QStringLiteral("%1 changed the form: %2").arg(QLatin1String(Where), difference));
}

void QorFuzzCheckAddedAndRemove(const QorFormSnapshot &Before, QObject *Owner, QObject *Parent, const char *Where)
{
    const QList<QObject *> now = ComponentList(Owner);
    QorFuzzRequire(now.size() >= Before.components.size(),
                   QStringLiteral("%1 lost components of the owner").arg(QLatin1String(Where)));
    for (qsizetype i = 0; i < Before.components.size(); ++i) {
        const QorObjectState s = stateOf(now.at(i));
        QorFuzzRequire(s == Before.components.at(i),
                       QStringLiteral("%1 changed component #%2: was %3, is %4")
                           .arg(QLatin1String(Where))
                           .arg(i)
                           .arg(describe(Before.components.at(i)), describe(s)));
    }
    QList<QPointer<QObject>> added;
    for (qsizetype i = Before.components.size(); i < now.size(); ++i)
        added.append(now.at(i));
    for (qsizetype i = added.size() - 1; i >= 0; --i)
        delete added.at(i).data();
    // What was read but not kept (unowned leftovers under the parent) must
    // not stay either.
    QorFuzzFlushDeletes();
    QorFuzzRequireUnchanged(Before, QorSnapshot(Owner, Parent), Where);
}

void QorFuzzFlushDeletes()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
