#include "defaults/store/odbc/odbc_cell.h"

#include <charconv>
#include <cstdint>
#include <utility>

namespace kxjob {

CellKind CellKindOf(SQLSMALLINT sqlType, SQLSMALLINT scale) {
    switch (sqlType) {
        case SQL_BIT:
        case SQL_TINYINT:
        case SQL_SMALLINT:
        case SQL_INTEGER:
        case SQL_BIGINT: return CellKind::kWholeNumber;
        case SQL_DECIMAL:
        case SQL_NUMERIC: return scale == 0 ? CellKind::kDigits : CellKind::kDouble;
        case SQL_FLOAT:
        case SQL_REAL:
        case SQL_DOUBLE: return CellKind::kDouble;
        default: return CellKind::kText;
    }
}

Value WholeNumberCell(std::int64_t number) {
    if (std::in_range<std::int32_t>(number)) return static_cast<std::int32_t>(number);
    return number;
}

Value DigitsCell(std::string_view digits) {
    const char* const end = digits.data() + digits.size();
    std::int64_t whole = 0;
    const auto wholeRead = std::from_chars(digits.data(), end, whole);
    if (wholeRead.ec == std::errc() && wholeRead.ptr == end) return WholeNumberCell(whole);
    double number = 0;
    const auto numberRead = std::from_chars(digits.data(), end, number);
    if (numberRead.ec == std::errc() && numberRead.ptr == end) return number;
    return std::string(digits);
}

}  // namespace kxjob
