#pragma once

#include <string>
#include <string_view>

namespace kxjob {

/// `text` with its ASCII letters in lower case: equal for names that differ in nothing but letter case.
std::string FoldedCase(std::string_view text);

}  // namespace kxjob
