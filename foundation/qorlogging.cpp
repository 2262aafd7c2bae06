// SPDX-License-Identifier: MIT
#include "foundation/qorlogging_p.h"

// Warnings and above are on by default; what the library skips is reported
// at info level, so it stays silent until a rule switches the category on.
Q_LOGGING_CATEGORY(lcQorFoundation, "qor.foundation", QtWarningMsg)
Q_LOGGING_CATEGORY(lcQorClipboard, "qor.clipboard", QtWarningMsg)
Q_LOGGING_CATEGORY(lcQorDesigner, "qor.designer", QtWarningMsg)
Q_LOGGING_CATEGORY(lcQorInspector, "qor.inspector", QtWarningMsg)
Q_LOGGING_CATEGORY(lcQorTranslation, "qor.translation", QtWarningMsg)
Q_LOGGING_CATEGORY(lcQorConsole, "qor.console", QtWarningMsg)
