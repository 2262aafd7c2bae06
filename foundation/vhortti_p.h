// SPDX-License-Identifier: MIT
// The type kinds named without their namespace (tkClass, tkSet, ...), for
// the library's own sources; applications write VhoRTTI::tkClass.
#pragma once

#include "foundation/vhortti.h"

using enum VhoRTTI::TTypeKind;
