#include "defaults/store/name_qualifier.h"

#include <cstddef>

namespace kxjob {
namespace {

constexpr char kUnquoted = '\0';

char ClosingOf(char opening) {
    switch (opening) {
        case '"':
        case '`': return opening;
        case '[': return ']';
        default: return kUnquoted;
    }
}

}  // namespace

std::string_view PrefixWithinSchema(std::string_view nameQualifier) {
    std::size_t prefix = 0;
    char closing = kUnquoted;
    for (std::size_t i = 0; i < nameQualifier.size(); ++i) {
        const char character = nameQualifier[i];
        if (closing != kUnquoted) {
            if (character == closing) closing = kUnquoted;  // a doubled one opens again at once
        } else if (character == '.') {
            prefix = i + 1;
        } else {
            closing = ClosingOf(character);
        }
    }
    return nameQualifier.substr(prefix);
}

}  // namespace kxjob
