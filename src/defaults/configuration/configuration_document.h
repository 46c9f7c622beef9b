#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kxjob {

/// Lines `key = value`. Keys are compared without regard to letter case, blanks around keys and values do not
/// count, and of two lines with the same key the last one holds. A `#` that begins a line or stands behind a
/// blank starts a comment; blank lines say nothing.
class ConfigurationDocument {
public:
    ConfigurationDocument() = default;
    /// Raises 0x80040000 + 704 for a line that is none of these, naming its number.
    explicit ConfigurationDocument(std::string_view text);

    /// What the document says under `key`; nothing for a key without a value.
    std::optional<std::string> Find(std::string_view key) const;
    /// All of them, in lower case and in alphabetical order.
    std::vector<std::string> Keys() const;

private:
    void TakeLine(std::string_view line, std::size_t number);

    std::unordered_map<std::string, std::string> values_;  // by folded key
};

}  // namespace kxjob
