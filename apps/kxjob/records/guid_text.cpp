#include "records/guid_text.h"

#include <algorithm>
#include <cctype>
#include <regex>

namespace kxjob::command {

std::string GuidText(std::string_view typed) {
    static const std::regex kForm(
        R"(\{?([0-9A-Fa-f]{8}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{12})\}?)");
    std::cmatch match;
    if (!std::regex_match(typed.data(), typed.data() + typed.size(), match, kForm)) return std::string(typed);
    std::string guid = "{" + match[1].str() + "}";
    std::ranges::transform(guid, guid.begin(), [](unsigned char digit) { return std::toupper(digit); });
    return guid;
}

}  // namespace kxjob::command
