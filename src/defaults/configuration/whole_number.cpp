#include "defaults/configuration/whole_number.h"

#include <charconv>
#include <system_error>

namespace kxjob {

std::optional<std::int32_t> WholeNumber(std::string_view text) {
    std::int32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stopped, problem] = std::from_chars(text.data(), end, number);
    if (problem != std::errc() || stopped != end) return std::nullopt;
    return number;
}

}  // namespace kxjob
