// SPDX-License-Identifier: MIT
// The registration of the library's components and design actions: the
// component pages and action categories a development tool (the Qt
// Designer plugin among them) reads to offer the library's classes, and
// Register(), which fills them with everything the library offers.
#pragma once

#include "qordesign_export.h"

#include <QList>
#include <QMetaObject>
#include <QString>
#include <QStringList>

// Registers the library's ten components on the page "QOR-DesignSys" (the
// design center, the component tree, the design manager, the three design
// popup menus, the object inspector, the class images and the two palette
// controls) and its twelve design actions in the category "QOR Design
// Actions", without a resource class. Calling it again changes nothing:
// every registration below lists a class once.
QORDESIGN_EXPORT void Register();

// Appends Classes to Page, in their order. A class already registered on a
// page (this one or another) keeps its place and is not listed again, so a
// palette shows one button per class; null entries are skipped. Page names
// compare exactly, and a page exists from its first registration on, even
// when nothing new was listed.
QORDESIGN_EXPORT void RegisterComponents(const QString &Page, const QList<const QMetaObject *> &Classes);

// Appends Classes to the action Category, in their order, as
// RegisterComponents does for pages. Resource is the class holding the
// category's ready-made action instances, if any; the first registration
// of the category that names one sets it, later ones keep it.
QORDESIGN_EXPORT void RegisterActions(const QString &Category, const QList<const QMetaObject *> &Classes,
                                      const QMetaObject *Resource = nullptr);

// The pages in the order they were first registered.
QORDESIGN_EXPORT QStringList RegisteredComponentPages();
// The classes of a page in registration order; empty for an unknown page.
QORDESIGN_EXPORT QList<const QMetaObject *> RegisteredComponents(const QString &Page);
// The action categories in the order they were first registered.
QORDESIGN_EXPORT QStringList RegisteredActionCategories();
// The action classes of a category in registration order; empty for an
// unknown category.
QORDESIGN_EXPORT QList<const QMetaObject *> RegisteredActions(const QString &Category);
// The resource class of a category; null when none was given or the
// category is unknown.
QORDESIGN_EXPORT const QMetaObject *RegisteredActionResource(const QString &Category);

// Forgets every page and category, so that a test or a tool can register
// from the start again.
QORDESIGN_EXPORT void UnRegisterComponentsAndActions();
