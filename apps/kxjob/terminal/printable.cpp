#include "terminal/printable.h"

#include <algorithm>

namespace kxjob::command {
namespace {

bool IsControl(unsigned char byte) {
    constexpr unsigned char kFirstPrintable = 0x20;
    constexpr unsigned char kDelete = 0x7F;
    return byte < kFirstPrintable || byte == kDelete;
}

/// U+0080 to U+009F are control characters too; in UTF-8 they begin with this byte.
constexpr unsigned char kLeadOfControl = 0xC2;

bool IsControlPair(std::string_view text, std::size_t place) {
    return static_cast<unsigned char>(text[place]) == kLeadOfControl && place + 1 < text.size() &&
           static_cast<unsigned char>(text[place + 1]) < 0xA0U;
}

}  // namespace

std::size_t WidthOf(std::string_view text) {
    constexpr unsigned kContinuation = 0x80;
    constexpr unsigned kLeadingBits = 0xC0;
    return static_cast<std::size_t>(std::ranges::count_if(
        text, [](char byte) { return (static_cast<unsigned char>(byte) & kLeadingBits) != kContinuation; }));
}

std::string OnOneLine(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isPair = IsControlPair(text, i);
        line += isPair || IsControl(static_cast<unsigned char>(text[i])) ? ' ' : text[i];
        if (isPair) ++i;
    }
    return line;
}

std::string Indented(std::string_view text, std::string_view indent) {
    std::string lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (!line.empty()) lines.append(indent).append(OnOneLine(line));
        lines += '\n';
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

}  // namespace kxjob::command
