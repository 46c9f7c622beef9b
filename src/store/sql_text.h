#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "kxjob/value.h"

namespace kxjob {

/// Joins the pieces of a statement from left to right. Knows no SQL.
class SqlText {
public:
    SqlText() = default;

    SqlText& operator<<(std::string_view piece) {
        text_ += piece;
        return *this;
    }
    SqlText& operator<<(std::int32_t number) { return *this << std::string_view(std::to_string(number)); }
    SqlText& operator<<(double number) { return *this << std::string_view(DoubleText(number)); }

    bool Empty() const { return text_.empty(); }
    const std::string& Text() const { return text_; }
    operator const std::string&() const { return text_; }

private:
    std::string text_;
};

}  // namespace kxjob
