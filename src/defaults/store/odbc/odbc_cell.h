#pragma once

#include <odbc_platform.h>

#include <string_view>

#include "kxjob/value.h"

namespace kxjob {

/// How the cells of a column are fetched, and what they become.
enum class CellKind { kWholeNumber, kDouble, kDigits, kText };

/// Decided by the column's SQL type. An exact number without digits behind its point is fetched as digits: it
/// may be whole and still need more than 64 bits.
CellKind CellKindOf(SQLSMALLINT sqlType, SQLSMALLINT scale);

/// Whole numbers that fit have 32 bits.
Value WholeNumberCell(std::int64_t number);

/// A whole number when the digits are one that fits 64 bits, else a double.
Value DigitsCell(std::string_view digits);

}  // namespace kxjob
