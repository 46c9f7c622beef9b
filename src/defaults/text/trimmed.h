#pragma once

#include <string_view>

namespace kxjob {

/// A text without the blanks, tabs and line breaks at its ends.
std::string_view Trimmed(std::string_view text);

}  // namespace kxjob
