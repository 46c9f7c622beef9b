#pragma once

#include <string>
#include <string_view>

namespace kxjob::command {

/// A GUID as the library makes it, "{8-4-4-4-12}" in upper case, from one that a person typed without braces
/// or in another letter case. Any other text stays as it is: keys are the callers' own.
std::string GuidText(std::string_view typed);

/// Whether the text is "{8-4-4-4-12}" hexadecimal digits, in any letter case.
bool IsGuid(std::string_view text);

}  // namespace kxjob::command
