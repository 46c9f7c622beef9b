#include "journal/connection_secrets.h"

#include <algorithm>
#include <array>

namespace kxjob {
namespace {

/// What may stand around keywords and values, and what ends a value that nothing encloses.
struct Layout {
    std::string_view blanks;
    std::string_view endsOfValue;
};

/// A connection string has no lines: a break in it is a blank, or part of a value.
constexpr Layout kConnectionString{" \t\r\n", ";"};
constexpr Layout kDocument{" \t", ";\r\n"};

constexpr std::array<std::string_view, 2> kSecretKeywords{"pwd", "password"};

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool EndsInSecretKeyword(std::string_view text) {
    return std::any_of(kSecretKeywords.begin(), kSecretKeywords.end(), [&](std::string_view keyword) {
        if (text.size() < keyword.size()) return false;
        const std::string_view end = text.substr(text.size() - keyword.size());
        return std::equal(end.begin(), end.end(), keyword.begin(),
                          [](char a, char b) { return Lower(a) == b; });
    });
}

/// The keyword in front of the equals sign at `equals`, without the blanks after it.
std::string_view UpToKeyword(std::string_view text, std::size_t equals, const Layout& layout) {
    const std::size_t last = text.find_last_not_of(layout.blanks, equals == 0 ? 0 : equals - 1);
    return equals == 0 || last == std::string_view::npos ? std::string_view() : text.substr(0, last + 1);
}

/// The character that ends a value which begins with `first`; 0 for a plain value.
char ClosingDelimiter(char first) {
    switch (first) {
        case '{': return '}';
        case '"': return '"';
        case '\'': return '\'';
        default: return '\0';
    }
}

/// Where the value that begins at `begin` ends. Inside delimiters a doubled closing one stands for itself,
/// and a value that is never closed takes up the rest of the text.
std::size_t EndOfValue(std::string_view text, std::size_t begin, const Layout& layout) {
    std::size_t place = begin;
    const char closing = place < text.size() ? ClosingDelimiter(text[place]) : '\0';
    if (closing != '\0') {
        ++place;
        for (;;) {
            place = text.find(closing, place);
            if (place == std::string_view::npos) return text.size();
            ++place;
            if (place == text.size() || text[place] != closing) break;
            ++place;
        }
    }
    return std::min(text.find_first_of(layout.endsOfValue, place), text.size());
}

std::string Redacted(std::string_view text, const Layout& layout) {
    std::string shown;
    std::size_t copied = 0;
    for (std::size_t equals = text.find('='); equals != std::string_view::npos;
         equals = text.find('=', equals)) {
        const bool isSecret = EndsInSecretKeyword(UpToKeyword(text, equals, layout));
        ++equals;
        if (!isSecret) continue;
        const std::size_t value = std::min(text.find_first_not_of(layout.blanks, equals), text.size());
        shown.append(text.substr(copied, value - copied)).append("***");
        copied = equals = EndOfValue(text, value, layout);
    }
    return shown.append(text.substr(copied));
}

}  // namespace

std::string WithoutSecrets(std::string_view text) {
    return Redacted(text, kConnectionString);
}

Value ValueWithoutSecrets(const Value& value) {
    return value.IsText() ? Value(WithoutSecrets(value.Text())) : value;
}

std::string DocumentWithoutSecrets(std::string_view text) {
    return Redacted(text, kDocument);
}

Value DocumentValueWithoutSecrets(const Value& value) {
    return value.IsText() ? Value(DocumentWithoutSecrets(value.Text())) : value;
}

}  // namespace kxjob
