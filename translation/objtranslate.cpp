// SPDX-License-Identifier: MIT
#include "translation/objtranslate.h"

// Each hook hands back the caller's own string (shared, not copied).

QString TranslatePropertyName(PTypeInfo PTI, const QString &Name)
{
    Q_UNUSED(PTI);
    return Name;
}

QString TranslateEnumValue(PTypeInfo PTI, const QString &Name)
{
    Q_UNUSED(PTI);
    return Name;
}

QString TranslateClassName(PTypeInfo PTI, const QString &Name)
{
    Q_UNUSED(PTI);
    return Name;
}

QString TranslateObjectName(PTypeInfo PTI, const QString &Name)
{
    Q_UNUSED(PTI);
    return Name;
}

QString TranslateToPropertyName(PTypeInfo PTI, const QString &Name)
{
    Q_UNUSED(PTI);
    return Name;
}

QString TranslateToEnumValue(PTypeInfo PTI, const QString &Name)
{
    Q_UNUSED(PTI);
    return Name;
}

QString TranslateToClassName(PTypeInfo PTI, const QString &Name)
{
    Q_UNUSED(PTI);
    return Name;
}

QString TranslateToObjectName(PTypeInfo PTI, const QString &Name)
{
    Q_UNUSED(PTI);
    return Name;
}
