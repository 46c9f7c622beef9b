#include "records/row.h"

#include <cmath>

namespace kxjob::command {

std::optional<std::string> Row::OptionalText(std::int32_t column) const {
    std::string text = Text(column);
    if (text.empty()) return std::nullopt;
    return text;
}

std::int64_t Row::Whole(std::int32_t column) const {
    return Cell(column).Visit([&](const auto& held) -> std::int64_t {
        if constexpr (std::is_same_v<std::decay_t<decltype(held)>, std::int64_t>) {
            return held;
        } else {
            return Cell(column).IsNull() ? 0 : std::llround(Cell(column).ToDouble());
        }
    });
}

}  // namespace kxjob::command
