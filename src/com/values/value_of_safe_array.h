#pragma once

#include <ole2.h>
#include <windows.h>

#include "kxjob/value.h"

namespace kxjob {

/// A general array with the same bounds and elements. Raises Subscript out of range (0x800A0009) for an array
/// that was never given bounds, Type mismatch for elements without a counterpart.
Value ValueOfArray(SAFEARRAY* array);

}  // namespace kxjob
