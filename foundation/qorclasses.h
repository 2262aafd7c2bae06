// SPDX-License-Identifier: MIT
// The class registry: component classes by name, each with the factory that
// makes an instance. Reading a component stream, pasting and inserting from
// the palette create components only through it, so a stream can make only
// what the application registered. Qt's stock widgets a designer offers and
// QTimer (a non-visual component) are registered from the start.
#pragma once

#include "qordesign_export.h"

#include <QList>
#include <QMetaObject>
#include <QString>

#include <functional>

class QObject;

// Makes a new instance without parent.
using TComponentFactory = std::function<QObject *()>;

// Registers a class under its class name with the factory that makes it. A
// class registered again gets the new factory and keeps its place.
QORDESIGN_EXPORT void RegisterClass(const QMetaObject *Class, TComponentFactory Factory);

// Registers a class that has a default constructor.
template<class T>
void RegisterClass()
{
    RegisterClass(&T::staticMetaObject, [] { return static_cast<QObject *>(new T()); });
}

// Takes a class out of the registry.
QORDESIGN_EXPORT void UnRegisterClass(const QMetaObject *Class);

// The registered class of that name (case-insensitive), or null.
QORDESIGN_EXPORT const QMetaObject *GetClass(const QString &ClassName);

// The registered class of that name; throws EClassNotFound when there is
// none.
QORDESIGN_EXPORT const QMetaObject *FindClass(const QString &ClassName);

// The registered classes, in the order of registration.
QORDESIGN_EXPORT QList<const QMetaObject *> RegisteredClasses();

// A new instance of a registered class, without parent; throws
// EClassNotFound for a class that is not registered.
QORDESIGN_EXPORT QObject *CreateRegisteredComponent(const QMetaObject *Class);
QORDESIGN_EXPORT QObject *CreateRegisteredComponent(const QString &ClassName);

// True for a class whose instances are widgets (shown on the stage), false
// for non-visual components.
QORDESIGN_EXPORT bool IsWidgetClass(const QMetaObject *Class);
