// SPDX-License-Identifier: MIT
// Connects an object inspector to the translation manager in one call: its
// property names and values are shown as the dictionary's labels, and
// labels typed or picked are stored as identifiers.
#pragma once

#include "qordesign_export.h"

class TVhoObjInspector;
class TQorTransMan;

// Manager null: the process's manager (QorTransMan()). The inspector shows
// the labels at once.
QORDESIGN_EXPORT void QorTranslateInspector(TVhoObjInspector *Inspector, TQorTransMan *Manager = nullptr);
// Back to the identifiers themselves.
QORDESIGN_EXPORT void QorUntranslateInspector(TVhoObjInspector *Inspector);
