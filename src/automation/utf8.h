#pragma once

#include <cstddef>
#include <string_view>

namespace kxjob {

/// A character of a UTF-8 text. A surrogate that stands alone, which UTF-16 text may hold and UTF-8 knows no
/// form for, is written in the three bytes that its number would take.
struct Utf8Character {
    char32_t codePoint = 0;
    std::size_t length = 0;  // in bytes; 0: no character starts there
};

/// The character that starts at byte `place` of `text`, which is in front of its end.
Utf8Character Utf8CharacterAt(std::string_view text, std::size_t place);

/// A surrogate is one half of a character in UTF-16 and no character by itself.
bool IsSurrogate(char32_t codePoint);

}  // namespace kxjob
