#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kxjob {

/// What a connection string says: `Key=Value;Key={va;lue}`. Letter case of keys and blanks around keys and
/// values do not count. A value in braces or double quotes may hold anything, its closing character doubled.
/// Of two entries with the same key the first counts.
class ConnectionString {
public:
    /// Raises 0x80040000 + 704 when `text` cannot be understood. No value is shown in the error.
    explicit ConnectionString(std::string_view text);

    /// The value under a key; the empty text when there is none.
    std::string_view Value(std::string_view key) const;
    bool Has(std::string_view key) const;
    /// The text as it was given.
    const std::string& Text() const { return text_; }
    /// The entries in their order: keys in lower case, values without their braces or quotes.
    const std::vector<std::pair<std::string, std::string>>& Entries() const { return entries_; }

private:
    const std::string* Find(std::string_view key) const;

    std::string text_;
    std::vector<std::pair<std::string, std::string>> entries_;
};

}  // namespace kxjob
