#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>

namespace kxjob {

/// A text as drivers take and give it here: bytes, which are UTF-8.
using DriverText = std::string;

/// What such a text is called in C, and what parameters for a short one and for one of any length are called
/// in SQL.
constexpr SQLSMALLINT kDriverText = SQL_C_CHAR;
constexpr SQLSMALLINT kDriverShortText = SQL_VARCHAR;
constexpr SQLSMALLINT kDriverLongText = SQL_LONGVARCHAR;

}  // namespace kxjob
