#include "defaults/collections/range_array_inspector.h"

#include <cstddef>
#include <cstdint>
#include <utility>

#include "automation/runtime_error.h"
#include "kxjob/array.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

template <typename Number>
std::int32_t Checked(Number number) {
    if (!std::in_range<std::int32_t>(number)) RaiseRuntimeError(error_number::kOverflow);
    return static_cast<std::int32_t>(number);
}

/// Empty is a last dimension without rows; `General` refuses what is no array.
kxjob::Array::Dimension LastDimension(const Value& array) {
    if (array.IsEmpty()) return {0, 0};
    if (array.IsRowArray()) return {0, array.Rows().Rows()};
    return array.General().Dimensions().back();
}

}  // namespace

std::int32_t RangeArrayInspector::LowerBound(const Value& array) {
    return LastDimension(array).lowerBound;
}

std::int32_t RangeArrayInspector::UpperBound(const Value& array) {
    const kxjob::Array::Dimension last = LastDimension(array);
    return Checked(std::int64_t{last.lowerBound} + last.count - 1);
}

std::int32_t RangeArrayInspector::ElementCount(const Value& array) {
    if (array.IsEmpty()) return 0;
    if (array.IsRowArray()) return Checked(std::int64_t{array.Rows().Columns()} * array.Rows().Rows());
    return Checked(array.General().ElementCount());
}

std::int32_t RangeArrayInspector::DimensionCount(const Value& array) {
    if (array.IsEmpty()) return 0;
    if (array.IsRowArray()) return 2;
    return Checked(array.General().Dimensions().size());
}

}  // namespace kxjob
