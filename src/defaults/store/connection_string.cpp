#include "defaults/store/connection_string.h"

#include <algorithm>
#include <cstddef>

#include "automation/letter_case.h"
#include "defaults/store/data_access_error.h"
#include "defaults/text/trimmed.h"

namespace kxjob {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

/// Reads entry by entry. What is wrong is said by the number of the entry alone: a password with a stray
/// ";" or "=" in it looks like further entries, keys included.
class Reader {
public:
    explicit Reader(std::string_view text) : rest_(text) {}

    bool AtEnd() {
        rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\r\n;"), rest_.size()));
        return rest_.empty();
    }

    std::pair<std::string, std::string> Next() {
        ++number_;
        const std::size_t end = rest_.find_first_of("=;");
        if (end == std::string_view::npos || rest_[end] == ';') Refuse("has no \"=\"");
        const std::string_view key = Trimmed(rest_.substr(0, end));
        if (key.empty()) Refuse("has no key before its \"=\"");
        rest_.remove_prefix(end + 1);
        std::string value = NextValue();
        return {FoldedCase(key), std::move(value)};
    }

private:
    std::string NextValue() {
        rest_.remove_prefix(std::min(rest_.find_first_not_of(kBlanks), rest_.size()));
        if (rest_.starts_with('{')) return Enclosed('}', "has no closing brace");
        if (rest_.starts_with('"')) return Enclosed('"', "has no closing quote");
        const std::string_view value = rest_.substr(0, rest_.find(';'));
        rest_.remove_prefix(value.size());
        return std::string(Trimmed(value));
    }

    std::string Enclosed(char closing, const char* unclosed) {
        rest_.remove_prefix(1);
        std::string value;
        while (true) {
            const std::size_t end = rest_.find(closing);
            if (end == std::string_view::npos) Refuse(unclosed);
            value += rest_.substr(0, end);
            rest_.remove_prefix(end + 1);
            if (!rest_.starts_with(closing)) break;
            value += closing;
            rest_.remove_prefix(1);
        }
        const std::string_view behind = rest_.substr(0, rest_.find(';'));
        if (!Trimmed(behind).empty()) Refuse("has text behind its closing brace or quote");
        rest_.remove_prefix(behind.size());
        return value;
    }

    [[noreturn]] void Refuse(const char* what) const {
        RaiseConnectionFailed("entry " + std::to_string(number_) + " of the connection string " + what);
    }

    std::string_view rest_;
    int number_ = 0;
};

}  // namespace

ConnectionString::ConnectionString(std::string_view text) : text_(text) {
    if (text.find('\0') != std::string_view::npos) {
        RaiseConnectionFailed("the connection string holds a NUL character");
    }
    Reader reader(text);
    while (!reader.AtEnd()) entries_.push_back(reader.Next());
}

std::string_view ConnectionString::Value(std::string_view key) const {
    const std::string* value = Find(key);
    return value == nullptr ? std::string_view() : *value;
}

bool ConnectionString::Has(std::string_view key) const {
    return Find(key) != nullptr;
}

const std::string* ConnectionString::Find(std::string_view key) const {
    const std::string folded = FoldedCase(key);
    const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const auto& candidate) { return candidate.first == folded; });
    return entry == entries_.end() ? nullptr : &entry->second;
}

}  // namespace kxjob
