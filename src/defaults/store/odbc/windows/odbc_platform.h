#pragma once

// clang-format off
#include <windows.h>  // sql.h needs its types
// clang-format on
#include <sql.h>
#include <sqlext.h>

#include <string>

namespace kxjob {

/// A text as drivers take and give it here: UTF-16.
using DriverText = std::wstring;

/// What such a text is called in C, and what parameters for a short one and for one of any length are called
/// in SQL.
constexpr SQLSMALLINT kDriverText = SQL_C_WCHAR;
constexpr SQLSMALLINT kDriverShortText = SQL_WVARCHAR;
constexpr SQLSMALLINT kDriverLongText = SQL_WLONGVARCHAR;

}  // namespace kxjob
