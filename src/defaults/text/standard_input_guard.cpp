#include "defaults/text/standard_input_guard.h"

#include <cstddef>
#include <string_view>

#include "defaults/text/storable_text.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

constexpr std::size_t kNotAPart = std::string_view::npos;

std::string ControlCharacterName(unsigned char character) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    return std::string("the control character 0x") + kDigits[character >> 4U] + kDigits[character & 0xFU];
}

/// What makes a text unsafe in any statement; empty when nothing does.
std::string UnsafePieceOf(std::string_view value) {
    for (std::size_t i = 0; i < value.size(); ++i) {
        const auto character = static_cast<unsigned char>(value[i]);
        if (character < 0x20 || character == 0x7F) return ControlCharacterName(character);
        if (character == '\'') return "a single quote (')";
        if (character == ';') return "a semicolon (;)";
        if (character != '-' && character != '/' && character != '*') continue;
        const std::string_view pair = value.substr(i, 2);
        if (pair == "--" || pair == "/*" || pair == "*/") return "the comment mark " + std::string(pair);
    }
    return {};
}

bool IsPlainNameCharacter(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z') ||
           (character >= '0' && character <= '9') || character == '_' || character == '$' || character == '#';
}

/// The character that ends a quoted part which starts with `opening`; 0 when no quoted part starts so.
char ClosingQuote(char opening) {
    switch (opening) {
        case '"': return '"';
        case '`': return '`';
        case '[': return ']';
        default: return '\0';
    }
}

/// Where the part that starts at `start` ends; a plain part may be empty.
std::size_t EndOfPart(std::string_view name, std::size_t start) {
    const char closing = start < name.size() ? ClosingQuote(name[start]) : '\0';
    if (closing == '\0') {
        std::size_t end = start;
        while (end < name.size() && IsPlainNameCharacter(name[end])) ++end;
        return end;
    }
    // Engines differ in which quotes they know, so that no quoted part may hold any of them.
    const std::size_t end = name.find_first_of("\"`[]", start + 1);
    const bool isClosed = end != std::string_view::npos && name[end] == closing && end > start + 1;
    return isClosed ? end + 1 : kNotAPart;
}

/// A table's name follows directly. Behind a quoted part without its dot it would not be one with it, but a
/// second name for another table.
bool IsDottedName(std::string_view name) {
    std::size_t start = 0;
    for (;;) {
        const std::size_t end = EndOfPart(name, start);
        if (end == kNotAPart) return false;
        if (end == name.size()) return end == start || ClosingQuote(name[start]) == '\0';
        if (name[end] != '.' || end == start) return false;  // only the last part may be empty
        start = end + 1;
    }
}

[[noreturn]] void Refuse(const std::string& parameterName, const std::string& reason) {
    throw AutomationError(error_number::kGuardRefusal, "kxJob.InputGuard",
                          "The parameter " + parameterName + " is refused: it " + reason);
}

}  // namespace

void StandardInputGuard::CheckParameter(const std::string& value, const std::string& parameterName) {
    const std::string unsafePiece = UnsafePieceOf(value);
    if (!unsafePiece.empty()) Refuse(parameterName, "holds " + unsafePiece);
    if (parameterName != "NameQualifier" && parameterName != "NameQualfier") return;  // sic
    const std::string flaw = StorageFlaw(value);
    if (!flaw.empty()) Refuse(parameterName, "has " + flaw);
    if (!IsDottedName(value)) Refuse(parameterName, "is not a dotted name of plain or quoted parts");
}

}  // namespace kxjob
