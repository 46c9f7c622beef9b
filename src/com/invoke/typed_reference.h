#pragma once

#include <ole2.h>
#include <windows.h>

#include "com/handles/variant.h"

namespace kxjob {

/// Whether a value can be stored behind a reference of this type (VT_BYREF and a simple type).
bool CanStore(VARTYPE reference);

/// Moves a value into the variable that `reference` points to, which is of the same type, and releases what
/// the variable held.
void StoreBehind(const VARIANT& reference, Variant& value);

}  // namespace kxjob
