// SPDX-License-Identifier: MIT
// The hooks through which the object inspector's value texts pass every
// identifier it is about to show (identifier to label) and every label it
// is about to store (label to identifier) when no translation manager is
// attached. They return their text unchanged, so the inspector shows and
// accepts the components' own identifiers; a dictionary is attached through
// the inspector's translation events instead, not here. The type argument
// says what the text names and is not used.
#pragma once

#include "qordesign_export.h"

#include "foundation/vhortti.h"

#include <QString>

// Identifier to label.
QORDESIGN_EXPORT QString TranslatePropertyName(PTypeInfo PTI, const QString &Name);
// Also colour and cursor names.
QORDESIGN_EXPORT QString TranslateEnumValue(PTypeInfo PTI, const QString &Name);
QORDESIGN_EXPORT QString TranslateClassName(PTypeInfo PTI, const QString &Name);
QORDESIGN_EXPORT QString TranslateObjectName(PTypeInfo PTI, const QString &Name);

// Label to identifier.
QORDESIGN_EXPORT QString TranslateToPropertyName(PTypeInfo PTI, const QString &Name);
QORDESIGN_EXPORT QString TranslateToEnumValue(PTypeInfo PTI, const QString &Name);
QORDESIGN_EXPORT QString TranslateToClassName(PTypeInfo PTI, const QString &Name);
QORDESIGN_EXPORT QString TranslateToObjectName(PTypeInfo PTI, const QString &Name);
