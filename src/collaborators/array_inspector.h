#pragma once

#include <cstdint>

#include "kxjob/value.h"

namespace kxjob {

/// The shape of an array. Bounds are those of the last dimension: the rows of a row array. Raises Type
/// mismatch for a value that is no array, except that Empty, the result of a query without rows, has bounds 0
/// and -1.
class ArrayInspector {
public:
    virtual ~ArrayInspector() = default;
    virtual std::int32_t LowerBound(const Value& array) = 0;
    virtual std::int32_t UpperBound(const Value& array) = 0;
    /// The number of elements in all dimensions together.
    virtual std::int32_t ElementCount(const Value& array) = 0;
    virtual std::int32_t DimensionCount(const Value& array) = 0;
};

}  // namespace kxjob
