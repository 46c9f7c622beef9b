#pragma once

#include <string>
#include <string_view>

namespace kxjob {

/// UTF-8 as the system's calls take it: UTF-16 in wide characters. `utf16.h` says what becomes of which text.
std::wstring ToWide(std::string_view text);

/// What a system call gave, in UTF-8.
std::string ToUtf8(std::wstring_view text);

}  // namespace kxjob
