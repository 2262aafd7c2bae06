// SPDX-License-Identifier: MIT
// The library's logging categories, one per layer. What the library skips
// or refuses without telling its caller (a damaged clipboard record, a
// dictionary it cannot read, a value the inspector refused) is reported
// here with qCInfo: silent by default, shown with
// QT_LOGGING_RULES="qor.*=true" (or one category, "qor.clipboard=true").
#pragma once

#include <QLoggingCategory>

// Component stream, class registry, type information, naming.
Q_DECLARE_LOGGING_CATEGORY(lcQorFoundation)
// Clipboard records and Qt Designer's text.
Q_DECLARE_LOGGING_CATEGORY(lcQorClipboard)
// Design manager, stage, proxies and sizers.
Q_DECLARE_LOGGING_CATEGORY(lcQorDesigner)
// Object inspector and property editors.
Q_DECLARE_LOGGING_CATEGORY(lcQorInspector)
// Translation manager and its dictionary.
Q_DECLARE_LOGGING_CATEGORY(lcQorTranslation)
// Design console and component editors.
Q_DECLARE_LOGGING_CATEGORY(lcQorConsole)
