#pragma once

#include <string>
#include <string_view>

namespace kxjob {

/// `text` in UTF-16. Each byte that belongs to no character becomes U+FFFD; the three bytes of a lone
/// surrogate (utf8.h) become that surrogate.
///
/// Where the system's wide characters have 16 bits they are the same units under another name:
/// `std::wstring(units.begin(), units.end())` copies them, and `reinterpret_cast<const
/// wchar_t*>(units.c_str())` hands them to a system call.
std::u16string ToUtf16(std::string_view text);

/// `text` in UTF-8, whatever its units are: `ToUtf16` gives every text back as it was, lone surrogates and
/// NUL included.
std::string ToUtf8(std::u16string_view text);

}  // namespace kxjob
