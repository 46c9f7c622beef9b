#pragma once

#include <string_view>

namespace kxjob {

/// The part of a name qualifier behind its last dot: what is put directly in front of a table's name within
/// its schema. Dots in names quoted by "...", [...] or backquotes do not count.
std::string_view PrefixWithinSchema(std::string_view nameQualifier);

}  // namespace kxjob
