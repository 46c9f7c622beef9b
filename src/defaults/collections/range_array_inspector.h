#pragma once

#include "collaborators/array_inspector.h"

namespace kxjob {

/// Reads the shape off the arrays themselves. Empty has bounds 0 and -1, no element and no dimension.
class RangeArrayInspector : public ArrayInspector {
public:
    std::int32_t LowerBound(const Value& array) override;
    /// Raises Overflow when the bound does not fit 32 bits; so does `ElementCount`.
    std::int32_t UpperBound(const Value& array) override;
    std::int32_t ElementCount(const Value& array) override;
    std::int32_t DimensionCount(const Value& array) override;
};

}  // namespace kxjob
