#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kxjob {

/// A literal of a statement: a text, or a whole number.
struct SqlLiteral {
    bool isText = false;
    std::string_view text = {};  // without its quotes; lies in the statement
    std::int64_t number = 0;
};

/// What statements have in common that differ only in their literals: the text with a question mark for each
/// of them. Made for engines that keep prepared statements.
class StatementShape {
public:
    /// Takes a statement apart. False for one that is better sent as it stands: it is long, or of another
    /// kind than SELECT, INSERT, UPDATE and DELETE, or is followed by another one, or holds something that
    /// not every engine understands in the same way: a comment, brackets, a text with a letter before it. A
    /// text with a doubled quote stays where it is, and so does a number that could count columns (ORDER BY
    /// 1) or is more than digits.
    bool Read(std::string_view sql);

    const std::string& Text() const { return text_; }
    /// In the order of the question marks; good for as long as the statement lives.
    const std::vector<SqlLiteral>& Literals() const { return literals_; }

private:
    std::string text_;
    std::vector<SqlLiteral> literals_;
};

}  // namespace kxjob
