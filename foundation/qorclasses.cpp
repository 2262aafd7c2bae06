// SPDX-License-Identifier: MIT
#include "qorclasses.h"

#include "qorclasses_p.h"
#include "qorerror.h"
#include "qorlogging_p.h"

#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDateEdit>
#include <QDateTimeEdit>
#include <QDial>
#include <QDoubleSpinBox>
#include <QFrame>
#include <QGroupBox>
#include <QHash>
#include <QLCDNumber>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QSlider>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTableWidget>
#include <QTextEdit>
#include <QTimeEdit>
#include <QTimer>
#include <QToolBox>
#include <QToolButton>
#include <QTreeWidget>

namespace {

struct ClassEntry
{
    const QMetaObject *metaObject = nullptr;
    TComponentFactory factory;
};

struct ClassRegistry
{
    QList<ClassEntry> entries;
    QHash<QString, qsizetype> byName; // folded class name -> index in entries

    qsizetype indexOf(const QString &name) const { return byName.value(name.toCaseFolded(), -1); }
    void rebuildIndex()
    {
        byName.clear();
        for (qsizetype i = 0; i < entries.size(); ++i)
            byName.insert(QString::fromLatin1(entries.at(i).metaObject->className()).toCaseFolded(), i);
    }
};

template<class T>
void addStock(ClassRegistry &r)
{
    r.entries.append({&T::staticMetaObject, [] { return static_cast<QObject *>(new T()); }});
}

ClassRegistry &classRegistry()
{
    // Never destroyed: factories may be asked for while other statics go.
    static ClassRegistry *r = [] {
        auto *reg = new ClassRegistry;
        addStock<QPushButton>(*reg);
        addStock<QToolButton>(*reg);
        addStock<QLabel>(*reg);
        addStock<QLineEdit>(*reg);
        addStock<QTextEdit>(*reg);
        addStock<QPlainTextEdit>(*reg);
        addStock<QCheckBox>(*reg);
        addStock<QRadioButton>(*reg);
        addStock<QComboBox>(*reg);
        addStock<QSpinBox>(*reg);
        addStock<QDoubleSpinBox>(*reg);
        addStock<QSlider>(*reg);
        addStock<QDial>(*reg);
        addStock<QProgressBar>(*reg);
        addStock<QDateEdit>(*reg);
        addStock<QTimeEdit>(*reg);
        addStock<QDateTimeEdit>(*reg);
        addStock<QGroupBox>(*reg);
        addStock<QFrame>(*reg);
        addStock<QWidget>(*reg);
        addStock<QTabWidget>(*reg);
        addStock<QStackedWidget>(*reg);
        addStock<QToolBox>(*reg);
        // A scroll area made on the stage holds a content widget to place
        // controls on; it is an inner part ("qt_" name), re-made with the
        // area rather than stored.
        reg->entries.append({&QScrollArea::staticMetaObject, [] {
                                 auto *area = new QScrollArea;
                                 auto *contents = new QWidget;
                                 contents->setObjectName(QStringLiteral("qt_qor_scrollarea_contents"));
                                 area->setWidget(contents);
                                 area->setWidgetResizable(true);
                                 return static_cast<QObject *>(area);
                             }});
        addStock<QListWidget>(*reg);
        addStock<QTreeWidget>(*reg);
        addStock<QTableWidget>(*reg);
        addStock<QCalendarWidget>(*reg);
        addStock<QLCDNumber>(*reg);
        addStock<QTimer>(*reg);
        reg->rebuildIndex();
        return reg;
    }();
    return *r;
}

QString classNotFound(const QString &name)
{
    return QCoreApplication::translate("QorDesign", "Class %1 not found").arg(name);
}

} // namespace

void RegisterClass(const QMetaObject *Class, TComponentFactory Factory)
{
    if (!Class || !Factory)
        return;
    ClassRegistry &r = classRegistry();
    const qsizetype index = r.indexOf(QString::fromLatin1(Class->className()));
    if (index >= 0) {
        r.entries[index] = {Class, std::move(Factory)};
        return;
    }
    r.entries.append({Class, std::move(Factory)});
    r.byName.insert(QString::fromLatin1(Class->className()).toCaseFolded(), r.entries.size() - 1);
}

void UnRegisterClass(const QMetaObject *Class)
{
    if (!Class)
        return;
    ClassRegistry &r = classRegistry();
    const qsizetype index = r.indexOf(QString::fromLatin1(Class->className()));
    if (index >= 0 && r.entries.at(index).metaObject == Class) {
        r.entries.removeAt(index);
        r.rebuildIndex();
    }
}

const QMetaObject *GetClass(const QString &ClassName)
{
    const ClassRegistry &r = classRegistry();
    const qsizetype index = r.indexOf(ClassName);
    return index >= 0 ? r.entries.at(index).metaObject : nullptr;
}

const QMetaObject *FindClass(const QString &ClassName)
{
    const QMetaObject *mo = GetClass(ClassName);
    if (!mo)
        throw EClassNotFound(classNotFound(ClassName));
    return mo;
}

QList<const QMetaObject *> RegisteredClasses()
{
    QList<const QMetaObject *> list;
    for (const ClassEntry &e : classRegistry().entries)
        list.append(e.metaObject);
    return list;
}

namespace {

// The factory of the class registered under this very meta-object, or null.
const TComponentFactory *factoryOf(const QMetaObject *Class)
{
    if (!Class)
        return nullptr;
    const ClassRegistry &r = classRegistry();
    const qsizetype index = r.indexOf(QString::fromLatin1(Class->className()));
    if (index < 0 || r.entries.at(index).metaObject != Class)
        return nullptr;
    return &r.entries.at(index).factory;
}

[[noreturn]] void refuseUnregistered(const QString &ClassName)
{
    qCInfo(lcQorFoundation).noquote() << "No component made: class" << ClassName << "is not registered";
    throw EClassNotFound(classNotFound(ClassName));
}

} // namespace

QObject *CreateRegisteredComponent(const QMetaObject *Class)
{
    const TComponentFactory *factory = factoryOf(Class);
    if (!factory)
        refuseUnregistered(Class ? QString::fromLatin1(Class->className()) : QString());
    return (*factory)();
}

QObject *CreateRegisteredComponent(const QString &ClassName)
{
    const QMetaObject *mo = GetClass(ClassName);
    if (!mo)
        refuseUnregistered(ClassName);
    return CreateRegisteredComponent(mo);
}

QObject *NewRegisteredInstance(const QMetaObject *Class)
{
    const TComponentFactory *factory = factoryOf(Class);
    if (!factory)
        return nullptr;
    // An application's factory may refuse; its caller goes on without the
    // instance, as it does for a class that is not registered.
    try {
        return (*factory)();
    } catch (const EQorError &error) {
        qCInfo(lcQorFoundation).noquote() << "The factory of class" << QString::fromLatin1(Class->className())
                                          << "failed:" << error.message();
        return nullptr;
    }
}

bool IsWidgetClass(const QMetaObject *Class)
{
    return Class && Class->inherits(&QWidget::staticMetaObject);
}
