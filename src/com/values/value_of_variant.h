#pragma once

#include <ole2.h>
#include <windows.h>

#include "kxjob/value.h"

namespace kxjob {

/// A client's value: references are followed, and arrays of any bounds and element type are copied. Unsigned
/// and 64-bit numbers become the smallest kind that holds them, Single, Currency and Decimal a double, a date
/// its ISO text, a left-out argument Empty. Raises Type mismatch (0x800A000D) for what has no counterpart.
Value ValueOf(const VARIANT& variant);

}  // namespace kxjob
