#pragma once

#include <algorithm>
#include <cstdint>
#include <ranges>

#include "frame/frame.h"

namespace kxjob {

/// The row indexes of a query result, ascending: `for (const std::int32_t row : RowIndexes(frame, rows))`.
inline auto RowIndexes(Frame& frame, const Value& rows, Frame::Place place = Frame::Place::current()) {
    const std::int32_t lower = frame.LowerBound(rows, place);
    const std::int32_t upper = frame.UpperBound(rows, place);
    return std::views::iota(lower, std::max(lower, upper + 1));
}

}  // namespace kxjob
