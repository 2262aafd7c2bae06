// SPDX-License-Identifier: MIT
// The captions of the design commands, each under its number, and the
// library's translations. The texts are English; with the library's
// translator installed (QorInstallTranslator) they, the arrange dialogs
// and the inspector's messages read in that language.
#pragma once

#include "qordesign_export.h"

#include <QList>
#include <QLocale>
#include <QString>

class QTranslator;

namespace QorDsnConst {

// The numbers of the captions.
enum TQorDsnStringId : int {
    SFlipChildren = 65504,
    SFlipAll = 65505,
    SFlipSelected = 65506,
    SPosition = 65507,
    SPosAlign = 65508,
    SPosSize = 65509,
    SPosScale = 65510,
    // From here to SInvalidPropValue: kept for applications, unused by
    // the library's own menus and actions.
    SAttrib = 65511,
    SEvent = 65512,
    SImageListEditor = 65521,
    SImageListAdd = 65522,
    SImageListDivide = 65523,
    SGraphicUnsupported = 65524,
    SImageListEditorMenu = 65525,
    SInvalidPropValue = 65526,
    SEdit = 65527,
    SCopy = 65528,
    SCut = 65529,
    SPaste = 65530,
    SSelectAll = 65531,
    SDelete = 65532,
    SControl = 65533,
    SBringToFront = 65534,
    SSendToBack = 65535,
};

// Every number, in ascending order.
QORDESIGN_EXPORT QList<int> StringIds();
// The English text of a number; null for a number that is none.
QORDESIGN_EXPORT const char *SourceText(int Id);
// The text of a number in the language of the installed translators;
// empty for a number that is none.
QORDESIGN_EXPORT QString LoadStr(int Id);

} // namespace QorDsnConst

// The languages the library has translations for, as locale names
// ("zh_CN").
QORDESIGN_EXPORT QStringList QorTranslationLanguages();
// Loads the library's translation for Locale and installs it in the
// application; the library's texts change language at once (menus built
// afresh, actions, dialogs). Returns the translator, owned by the
// application object, or null when the library has no translation for
// Locale. A second call replaces the first translator.
QORDESIGN_EXPORT QTranslator *QorInstallTranslator(const QLocale &Locale);
// Removes the translator QorInstallTranslator installed: the texts are
// English again.
QORDESIGN_EXPORT void QorRemoveTranslator();
