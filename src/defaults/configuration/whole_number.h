#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace kxjob {

/// The 32-bit whole number that `text` consists of; nothing for any other text.
std::optional<std::int32_t> WholeNumber(std::string_view text);

}  // namespace kxjob
