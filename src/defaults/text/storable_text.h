#pragma once

#include <string>
#include <string_view>

namespace kxjob {

/// What keeps a store from keeping `text` as it is, and at which byte, counted from 1: a NUL character,
/// invalid UTF-8 or a lone surrogate. Empty when nothing does.
std::string StorageFlaw(std::string_view text);

/// Raises 0x80040000 + 706 when `text` has such a flaw; the description names it.
void RequireStorable(std::string_view text);

/// `text` with U+FFFD in place of each byte that cannot be stored.
std::string StorableCopy(std::string_view text);

}  // namespace kxjob
