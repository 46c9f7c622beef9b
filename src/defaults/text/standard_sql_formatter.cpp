#include "defaults/text/standard_sql_formatter.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <variant>

#include "automation/runtime_error.h"
#include "defaults/text/storable_text.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

std::string TextLiteral(std::string_view text) {
    RequireStorable(text);
    std::string literal;
    literal.reserve(text.size() + 2);
    literal += '\'';
    while (true) {
        const std::size_t end = text.find('\'');
        literal += text.substr(0, end);
        if (end == std::string_view::npos) break;
        literal += "''";
        text.remove_prefix(end + 1);
    }
    literal += '\'';
    return literal;
}

std::string NumberLiteral(double number) {
    if (!std::isfinite(number)) {
        throw AutomationError(error_number::kUnstorableText, "kxJob.SqlFormatter",
                              "No store can keep a number that is infinite or not a number");
    }
    std::array<char, 32> buffer{};
    const auto [end, problem] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return {buffer.data(), end};
}

}  // namespace

std::string StandardSqlFormatter::FormatValue(const Value& value) {
    return value.Visit([](const auto& held) -> std::string {
        using T = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<T, std::monostate> || std::is_same_v<T, Null>) {
            return "NULL";
        } else if constexpr (std::is_same_v<T, bool>) {
            return held ? "1" : "0";
        } else if constexpr (std::is_same_v<T, std::int32_t> || std::is_same_v<T, std::int64_t>) {
            return std::to_string(held);
        } else if constexpr (std::is_same_v<T, double>) {
            return NumberLiteral(held);
        } else if constexpr (std::is_same_v<T, std::string>) {
            return TextLiteral(held);
        } else {
            RaiseRuntimeError(error_number::kTypeMismatch);
        }
    });
}

std::string StandardSqlFormatter::FormatGuid(const std::string& guid) {
    return TextLiteral(guid);
}

}  // namespace kxjob
