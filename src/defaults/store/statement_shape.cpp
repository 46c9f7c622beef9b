#include "defaults/store/statement_shape.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <optional>
#include <utility>

#include "defaults/store/quoted_text.h"

namespace kxjob {
namespace {

/// Of a longer one the preparation is not what costs. There is room for a hundred rows of a batch.
constexpr std::size_t kLongest = 32768;
constexpr std::size_t kMostLiterals = 512;
constexpr std::size_t kSurelyFitting = 18;  // digits of a number of 64 bits

/// What a character can be; a byte beyond ASCII is a letter.
enum Role : unsigned char {
    kBeginsName = 1,
    kContinuesName = 2,
    kDecimal = 4,
    kQuote = 8,
    kObscure = 16,  // a parameter, another statement, or what engines read in different ways
    kMayBeObscure = 32,
};

constexpr std::array<unsigned char, 256> kRoles = [] {
    std::array<unsigned char, 256> roles{};
    const auto give = [&](std::string_view characters, int role) {
        for (const char character : characters) {
            unsigned char& all = roles[static_cast<unsigned char>(character)];
            all = static_cast<unsigned char>(all | role);
        }
    };
    give("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_", kBeginsName | kContinuesName);
    give("0123456789", kDecimal | kContinuesName);
    give("$", kContinuesName | kObscure);
    give("'\"`", kQuote);
    give("?:@#\\;[", kObscure);
    give("-/&", kMayBeObscure);
    for (std::size_t byte = 0x80; byte < roles.size(); ++byte) roles[byte] = kBeginsName | kContinuesName;
    return roles;
}();

bool Is(char character, int role) {
    return (kRoles[static_cast<unsigned char>(character)] & role) != 0;
}

/// Goes through a statement from left to right, and gives a piece at a time.
class Pieces {
public:
    explicit Pieces(std::string_view sql) : sql_(sql) {}

    bool AtEnd() const { return place_ == sql_.size(); }
    char Next() const { return At(place_); }
    char Behind() const { return At(place_ + 1); }
    std::size_t Place() const { return place_; }
    void Skip() { ++place_; }
    std::string_view Name() {
        std::size_t end = place_;
        while (Is(At(end), kContinuesName)) ++end;
        return Until(end);
    }
    std::string_view Number() {
        std::size_t end = place_;
        while (Is(At(end), kContinuesName) || At(end) == '.' || IsSignOfExponent(end)) ++end;
        return Until(end);
    }
    /// With its quotes. Empty when it does not end.
    std::string_view Quoted() {
        const std::size_t end = EndOfQuoted(sql_, place_);
        return end == std::string_view::npos ? std::string_view() : Until(end);
    }

private:
    char At(std::size_t place) const { return place < sql_.size() ? sql_[place] : '\0'; }
    bool IsSignOfExponent(std::size_t place) const {
        return (At(place) == '+' || At(place) == '-') && (At(place - 1) == 'e' || At(place - 1) == 'E');
    }
    std::string_view Until(std::size_t end) {
        const std::string_view piece = sql_.substr(place_, end - place_);
        place_ = end;
        return piece;
    }

    std::string_view sql_;
    std::size_t place_ = 0;
};

std::optional<SqlLiteral> TakenText(std::string_view quoted) {
    const std::string_view text = quoted.substr(1, quoted.size() - 2);
    if (text.find('\'') != std::string_view::npos) return std::nullopt;
    return SqlLiteral{.isText = true, .text = text};
}

std::optional<SqlLiteral> TakenNumber(std::string_view digits) {
    SqlLiteral literal;
    const auto [end, problem] = std::from_chars(digits.data(), digits.data() + digits.size(), literal.number);
    const bool isWhole = problem == std::errc() && end == digits.data() + digits.size();
    if (!isWhole || digits.size() > kSurelyFitting) return std::nullopt;
    return literal;
}

/// What the words so far say of a statement.
class Words {
public:
    /// False when the statement is of no kind to take apart.
    bool Add(std::string_view word) {
        const bool isFirst = std::exchange(isBefore_, false);
        if (isFirst && !IsWord(word, "select") && !IsWord(word, "insert") && !IsWord(word, "update") &&
            !IsWord(word, "delete"))
            return false;
        if (IsWord(word, "select") || IsWord(word, "order") || IsWord(word, "over"))
            numbersAreValues_ = false;
        return true;
    }
    bool NumbersAreValues() const { return numbersAreValues_; }

private:
    static bool IsWord(std::string_view word, std::string_view keyword) {
        constexpr unsigned char kCase = 0x20;  // what a letter of ASCII differs in from its other form
        return std::equal(
            word.begin(), word.end(), keyword.begin(), keyword.end(), [](char one, char letter) {
                return (static_cast<unsigned char>(one) | kCase) == static_cast<unsigned char>(letter);
            });
    }

    bool isBefore_ = true;
    bool numbersAreValues_ = true;
};

/// Where a comment begins, or a text with U& before it.
bool AreObscure(char next, char behind) {
    return (next == '-' && behind == '-') || (next == '/' && behind == '*') ||
           (next == '&' && behind == '\'');
}

/// False for a kind of statement to leave as it is, and before a text that is no plain one: x'', E'',
/// _utf8''.
bool ReadWord(Pieces& pieces, Words& words) {
    const std::string_view word = pieces.Name();
    return words.Add(word) && pieces.Next() != '\'';
}

/// Goes over one piece, and gives the literal when it is one to take out. False when it is not understood.
bool ReadPiece(Pieces& pieces, Words& words, std::optional<SqlLiteral>& literal) {
    const char next = pieces.Next();
    if (Is(next, kBeginsName)) return ReadWord(pieces, words);
    if (Is(next, kDecimal) || (next == '.' && Is(pieces.Behind(), kDecimal))) {
        const std::string_view digits = pieces.Number();
        if (words.NumbersAreValues()) literal = TakenNumber(digits);
        return true;
    }
    if (Is(next, kQuote)) {
        const std::string_view quoted = pieces.Quoted();
        if (next == '\'' && !quoted.empty()) literal = TakenText(quoted);
        return !quoted.empty();
    }
    if (Is(next, kObscure)) return false;
    if (Is(next, kMayBeObscure) && AreObscure(next, pieces.Behind())) return false;
    pieces.Skip();
    return true;
}

}  // namespace

bool StatementShape::Read(std::string_view sql) {
    text_.clear();
    literals_.clear();
    if (sql.size() > kLongest || sql.find('\0') != std::string_view::npos) return false;
    Words words;
    std::size_t written = 0;  // as much of the statement is in the text, or is a literal
    for (Pieces pieces(sql); !pieces.AtEnd();) {
        const std::size_t start = pieces.Place();
        std::optional<SqlLiteral> literal;
        if (!ReadPiece(pieces, words, literal)) return false;
        if (!literal) continue;
        if (literals_.size() == kMostLiterals) return false;
        literals_.push_back(*literal);
        text_.append(sql.substr(written, start - written)).append("?");
        written = pieces.Place();
    }
    text_.append(sql.substr(written));
    return true;
}

}  // namespace kxjob
