#include "defaults/text/storable_text.h"

#include <cstddef>

#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

constexpr unsigned char kFirstContinuation = 0x80;
constexpr unsigned char kLastContinuation = 0xBF;
constexpr unsigned char kSurrogateLead = 0xED;
constexpr unsigned char kFirstSurrogateSecond = 0xA0;

/// A sequence of bytes that starts with a known first byte. The range of the second byte shuts out overlong
/// forms, surrogates and what lies beyond U+10FFFF.
struct Sequence {
    std::size_t length;  // 0: no sequence starts so
    unsigned char secondFrom;
    unsigned char secondTo;
};

Sequence SequenceOf(unsigned char first) {
    if (first == 0) return {0, 0, 0};
    if (first < 0x80) return {1, 0, 0};
    if (first < 0xC2) return {0, 0, 0};
    if (first < 0xE0) return {2, kFirstContinuation, kLastContinuation};
    if (first == 0xE0) return {3, 0xA0, kLastContinuation};
    if (first == kSurrogateLead) return {3, kFirstContinuation, kFirstSurrogateSecond - 1};
    if (first < 0xF0) return {3, kFirstContinuation, kLastContinuation};
    if (first == 0xF0) return {4, 0x90, kLastContinuation};
    if (first < 0xF4) return {4, kFirstContinuation, kLastContinuation};
    if (first == 0xF4) return {4, kFirstContinuation, 0x8F};
    return {0, 0, 0};
}

unsigned char ByteAt(std::string_view text, std::size_t place) {
    return static_cast<unsigned char>(text[place]);
}

bool IsContinuation(std::string_view text, std::size_t place) {
    return place < text.size() && ByteAt(text, place) >= kFirstContinuation &&
           ByteAt(text, place) <= kLastContinuation;
}

/// How many bytes the character at `place` takes; 0 when no character that can be stored starts there.
std::size_t CharacterLength(std::string_view text, std::size_t place) {
    const Sequence sequence = SequenceOf(ByteAt(text, place));
    for (std::size_t i = 1; i < sequence.length; ++i) {
        if (!IsContinuation(text, place + i)) return 0;
    }
    if (sequence.length > 1) {
        const unsigned char second = ByteAt(text, place + 1);
        if (second < sequence.secondFrom || second > sequence.secondTo) return 0;
    }
    return sequence.length;
}

const char* NameOfFlaw(std::string_view text, std::size_t place) {
    if (ByteAt(text, place) == 0) return "a NUL character";
    const bool isSurrogate = ByteAt(text, place) == kSurrogateLead && IsContinuation(text, place + 1) &&
                             ByteAt(text, place + 1) >= kFirstSurrogateSecond &&
                             IsContinuation(text, place + 2);
    return isSurrogate ? "a lone surrogate" : "invalid UTF-8";
}

}  // namespace

std::string StorageFlaw(std::string_view text) {
    std::size_t place = 0;
    while (place < text.size()) {
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
