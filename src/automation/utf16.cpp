#include "automation/utf16.h"

#include <cstddef>

#include "automation/utf8.h"

namespace kxjob {
namespace {

constexpr char32_t kFirstSupplementary = 0x10000;
constexpr char16_t kFirstHigh = 0xD800;
constexpr char16_t kFirstLow = 0xDC00;
constexpr char16_t kLastLow = 0xDFFF;

bool IsHigh(char16_t unit) {
    return unit >= kFirstHigh && unit < kFirstLow;
}

bool IsLow(char16_t unit) {
    return unit >= kFirstLow && unit <= kLastLow;
}

void AppendUtf16(std::u16string& text, char32_t codePoint) {
    if (codePoint < kFirstSupplementary) {
        text += static_cast<char16_t>(codePoint);
        return;
    }
    const char32_t offset = codePoint - kFirstSupplementary;
    text += static_cast<char16_t>(kFirstHigh + (offset >> 10U));
    text += static_cast<char16_t>(kFirstLow + (offset & 0x3FFU));
}

/// The byte of a character that carries the six bits above the `shift` lowest ones.
char Continuation(char32_t codePoint, unsigned shift) {
    return static_cast<char>(0x80U | ((codePoint >> shift) & 0x3FU));
}

void AppendUtf8(std::string& text, char32_t codePoint) {
    if (codePoint < 0x80) {
        text += static_cast<char>(codePoint);
        return;
    }
    if (codePoint < 0x800) {
        text += static_cast<char>(0xC0U | (codePoint >> 6U));
    } else {
        if (codePoint < kFirstSupplementary) {
            text += static_cast<char>(0xE0U | (codePoint >> 12U));
        } else {
            text += static_cast<char>(0xF0U | (codePoint >> 18U));
            text += Continuation(codePoint, 12);
        }
        text += Continuation(codePoint, 6);
    }
    text += Continuation(codePoint, 0);
}

}  // namespace

std::u16string ToUtf16(std::string_view text) {
    constexpr char16_t kReplacement = 0xFFFD;
    std::u16string units;
    units.reserve(text.size());
    for (std::size_t place = 0; place < text.size();) {
        const Utf8Character character = Utf8CharacterAt(text, place);
        if (character.length == 0) {
            units += kReplacement;
            ++place;
        } else {
            AppendUtf16(units, character.codePoint);
            place += character.length;
        }
    }
    return units;
}

std::string ToUtf8(std::u16string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t place = 0; place < text.size(); ++place) {
        const char16_t unit = text[place];
        if (IsHigh(unit) && place + 1 < text.size() && IsLow(text[place + 1])) {
            const char32_t high = unit - char32_t{kFirstHigh};
            const char32_t low = text[++place] - char32_t{kFirstLow};
            AppendUtf8(bytes, kFirstSupplementary + (high << 10U) + low);
        } else {
            AppendUtf8(bytes, unit);
        }
    }
    return bytes;
}

}  // namespace kxjob
