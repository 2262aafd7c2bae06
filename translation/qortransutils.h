// The translation unit's free functions: the display label of a class and
// the display name of a component, through which every caller gets the
// texts it shows for classes and components. The character sets by which
// value texts are split into identifiers (IdentCharset, SeperatorCharset,
// IsIdentChar, IsSeperatorChar) are the naming functions' own sets, reached
// here through the include below: there is one definition of each.
#pragma once

#include "qordesign_export.h"

#include "foundation/vhosysutils.h"

#include <QString>

class QObject;
struct QMetaObject;

// What an inspector text is: a property's name or its value.
enum TTransRole { trPropName, trPropValue };

// The display label of a class. Until a dictionary is attached this is the
// class name itself; callers that show a class to the user go through here
// so that a translation reaches all of them at once. Empty for nil.
QORDESIGN_EXPORT QString ClassToTransedName(const QMetaObject *AClass);

// The display name of a component: its name, unchanged ("" for nil). Owner
// is not used.
QORDESIGN_EXPORT QString GetCompTransedName(QObject *Comp, QObject *Owner);
