#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>

namespace kxjob {

/// A text as drivers take and give it here: bytes, which are UTF-8.
using DriverText = std::string;

/// What such a text is called in C, and what a parameter for a text of any length is called in SQL.
constexpr SQLSMALLINT kDriverText = SQL_C_CHAR;
constexpr SQLSMALLINT kDriverLongText = SQL_LONGVARCHAR;

}  // namespace kxjob
