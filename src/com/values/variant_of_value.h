#pragma once

#include "com/handles/variant.h"
#include "kxjob/value.h"

namespace kxjob {

/// A value as clients get it. Rows are a two-dimensional array of variants, (column, row) from 0; objects are
/// IDispatch. Raises std::bad_alloc without memory.
Variant VariantOf(const Value& value);

}  // namespace kxjob
