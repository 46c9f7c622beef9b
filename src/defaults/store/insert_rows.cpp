#include "defaults/store/insert_rows.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "automation/letter_case.h"
#include "defaults/store/quoted_text.h"

namespace kxjob {
namespace {

constexpr std::size_t kMostColumns = 64;
constexpr std::string_view kGaps = " \t\r\n";
constexpr std::string_view kDecimals = "0123456789";

/// INSERT INTO name (name, ...) VALUES (literal, ...)
struct OneRow {
    std::string_view head;        // up to and with VALUES
    std::string_view row;         // in its parentheses
    std::uint64_t mayBeMade = 0;  // a bit for each column whose value the server may make
};

bool BelongsToName(char character) {
    constexpr std::string_view kOthers = "0123456789_$#";
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z') ||
           kOthers.find(character) != std::string_view::npos;
}

bool MayBeMade(std::string_view literal) {
    if (literal.front() == 'N' || literal.front() == 'n') return true;
    const std::size_t first = literal.find_first_not_of(" \t\r\n'+-");
    return first == std::string_view::npos || literal[first] == '0' || literal[first] == '.';
}

/// Each step goes over blanks and then over what it is named after, or says that something else stands there.
class InsertReader {
public:
    explicit InsertReader(std::string_view sql) : sql_(sql) {}

    std::size_t Place() const { return place_; }
    bool Word(std::string_view word) {
        SkipBlanks();
        const std::size_t end = EndOf([](char c) { return BelongsToName(c); });
        return FoldedCase(sql_.substr(place_, end - place_)) == word && GoTo(end);
    }
    bool Mark(char mark) {
        SkipBlanks();
        return At(place_) == mark && GoTo(place_ + 1);
    }
    /// Of parts, plain or quoted, with points between them.
    bool Name() {
        SkipBlanks();
        do {
            if (!Part()) return false;
        } while (At(place_) == '.' && GoTo(place_ + 1));
        return true;
    }
    std::optional<std::string_view> Literal() {
        SkipBlanks();
        const std::size_t start = place_;
        const bool isLiteral = At(start) == '\'' ? Text() : (Number() || Word("null"));
        if (!isLiteral) return std::nullopt;
        return sql_.substr(start, place_ - start);
    }
    bool End() {
        SkipBlanks();
        return place_ == sql_.size();
    }
    void SkipBlanks() { place_ = std::min(sql_.find_first_not_of(kGaps, place_), sql_.size()); }

private:
    char At(std::size_t place) const { return place < sql_.size() ? sql_[place] : '\0'; }
    bool GoTo(std::size_t place) {
        place_ = place;
        return true;
    }
    template <typename Belongs>
    std::size_t EndOf(Belongs belongs) const {
        std::size_t end = place_;
        while (end < sql_.size() && belongs(sql_[end])) ++end;
        return end;
    }
    bool Part() {
        const char first = At(place_);
        if (first == '"' || first == '`') {
            const std::size_t end = sql_.find(first, place_ + 1);
            return end != std::string_view::npos && GoTo(end + 1);
        }
        const std::size_t end = EndOf(BelongsToName);
        return end > place_ && GoTo(end);
    }
    bool Text() {
        const std::size_t end = EndOfQuoted(sql_, place_);
        return end != std::string_view::npos && GoTo(end);
    }
    bool Digits() {
        const std::size_t end = std::min(sql_.find_first_not_of(kDecimals, place_), sql_.size());
        return end > place_ && GoTo(end);
    }
    bool Number() {
        if (At(place_) == '-') GoTo(place_ + 1);
        if (!Digits()) return false;
        if (At(place_) == '.' && GoTo(place_ + 1) && !Digits()) return false;
        if (At(place_) != 'e' && At(place_) != 'E') return true;
        GoTo(place_ + 1);
        if (At(place_) == '+' || At(place_) == '-') GoTo(place_ + 1);
        return Digits();
    }

    std::string_view sql_;
    std::size_t place_ = 0;
};

bool ReadHead(InsertReader& reader) {
    if (!reader.Word("insert") || !reader.Word("into") || !reader.Name() || !reader.Mark('(')) return false;
    do {
        if (!reader.Name()) return false;
    } while (reader.Mark(','));
    return reader.Mark(')') && reader.Word("values");
}

std::optional<OneRow> ReadOneRow(std::string_view sql) {
    InsertReader reader(sql);
    OneRow insert;
    if (!ReadHead(reader)) return std::nullopt;
    insert.head = sql.substr(0, reader.Place());
    reader.SkipBlanks();
    const std::size_t start = reader.Place();
    if (!reader.Mark('(')) return std::nullopt;
    std::size_t column = 0;
    do {
        const std::optional<std::string_view> literal = reader.Literal();
        if (!literal || column == kMostColumns) return std::nullopt;
        if (MayBeMade(*literal)) insert.mayBeMade |= std::uint64_t{1} << column;
        ++column;
    } while (reader.Mark(','));
    if (!reader.Mark(')')) return std::nullopt;
    insert.row = sql.substr(start, reader.Place() - start);
    return reader.End() ? std::optional(insert) : std::nullopt;
}

}  // namespace

std::vector<std::string> WithRowsJoined(std::span<const std::string> statements) {
    std::vector<std::string> joined;
    std::optional<OneRow> last;
    for (const std::string& statement : statements) {
        const std::optional<OneRow> insert = ReadOneRow(statement);
        if (insert && last && insert->head == last->head && insert->mayBeMade == last->mayBeMade) {
            joined.back().append(",\n").append(insert->row);
        } else {
            joined.push_back(statement);
        }
        last = insert;
    }
    return joined;
}

}  // namespace kxjob
