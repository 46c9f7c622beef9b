#include "records/guid_text.h"

#include <algorithm>
#include <cctype>

namespace kxjob::command {

bool IsGuid(std::string_view text) {
    constexpr std::string_view kShape = "{hhhhhhhh-hhhh-hhhh-hhhh-hhhhhhhhhhhh}";
    return std::ranges::equal(text, kShape, [](char c, char shape) {
        return shape == 'h' ? std::isxdigit(static_cast<unsigned char>(c)) != 0 : c == shape;
    });
}

std::string GuidText(std::string_view typed) {
    std::string guid(typed);
    if (!typed.starts_with('{')) guid = "{" + guid + "}";
    if (!IsGuid(guid)) return std::string(typed);
    std::ranges::transform(guid, guid.begin(), [](unsigned char digit) { return std::toupper(digit); });
    return guid;
}

}  // namespace kxjob::command
