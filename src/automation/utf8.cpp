#include "automation/utf8.h"

namespace kxjob {
namespace {

/// What the first byte of a character says: how many bytes it takes, its own bits, and the least number that
/// may be written so.
struct Start {
    std::size_t length;  // 0: no character starts so
    char32_t bits;
    char32_t least;
};

Start StartOf(unsigned char first) {
    if (first < 0x80U) return {1, first, 0};
    if (first < 0xC0U) return {0, 0, 0};
    if (first < 0xE0U) return {2, first & 0x1FU, 0x80};
    if (first < 0xF0U) return {3, first & 0x0FU, 0x800};
    if (first < 0xF8U) return {4, first & 0x07U, 0x10000};
    return {0, 0, 0};
}

}  // namespace

Utf8Character Utf8CharacterAt(std::string_view text, std::size_t place) {
    constexpr char32_t kLastCodePoint = 0x10FFFF;
    const Start start = StartOf(static_cast<unsigned char>(text[place]));
    if (start.length == 0 || start.length > text.size() - place) return {};
    char32_t codePoint = start.bits;
    for (std::size_t i = 1; i < start.length; ++i) {
        const auto byte = static_cast<unsigned char>(text[place + i]);
        if ((byte & 0xC0U) != 0x80U) return {};
        codePoint = (codePoint << 6U) | (byte & 0x3FU);
    }
    if (codePoint < start.least || codePoint > kLastCodePoint) return {};
    return {codePoint, start.length};
}

bool IsSurrogate(char32_t codePoint) {
    return codePoint >= 0xD800 && codePoint <= 0xDFFF;
}

}  // namespace kxjob
