#include "defaults/text/storable_text.h"

#include <cstddef>

#include "automation/utf8.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

bool IsPlain(char byte) {
    return byte != 0 && static_cast<unsigned char>(byte) < 0x80;  // ASCII, and no NUL
}

/// How many bytes the character at `place` takes; 0 when no character that can be stored starts there.
std::size_t CharacterLength(std::string_view text, std::size_t place) {
    const Utf8Character character = Utf8CharacterAt(text, place);
    return character.codePoint == 0 || IsSurrogate(character.codePoint) ? 0 : character.length;
}

const char* NameOfFlaw(std::string_view text, std::size_t place) {
    if (text[place] == '\0') return "a NUL character";
    return IsSurrogate(Utf8CharacterAt(text, place).codePoint) ? "a lone surrogate" : "invalid UTF-8";
}

}  // namespace

std::string StorageFlaw(std::string_view text) {
    std::size_t place = 0;
    while (place < text.size()) {
        if (IsPlain(text[place])) {
            ++place;
            continue;
        }
        const std::size_t length = CharacterLength(text, place);
        if (length == 0)
            return std::string(NameOfFlaw(text, place)) + " at byte " + std::to_string(place + 1);
        place += length;
    }
    return {};
}

void RequireStorable(std::string_view text) {
    const std::string flaw = StorageFlaw(text);
    if (flaw.empty()) return;
    throw AutomationError(error_number::kUnstorableText, "kxJob.StorableText",
                          "The text cannot be stored: it has " + flaw);
}

std::string StorableCopy(std::string_view text) {
    constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
    std::string copy;
    copy.reserve(text.size());
    std::size_t place = 0;
    while (place < text.size()) {
        const std::size_t length = CharacterLength(text, place);
        copy += length == 0 ? kReplacement : text.substr(place, length);
        place += length == 0 ? 1 : length;
    }
    return copy;
}

}  // namespace kxjob
