#pragma once

#include <odbc_platform.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "defaults/store/odbc/odbc_diagnostic.h"

// The calls of ODBC that take or give text. Interface and texts are bytes on one platform and 16-bit
// characters on the other; here they are UTF-8 on both.
namespace kxjob {

DriverText ToDriverText(std::string_view text);
std::string FromDriverText(const DriverText& text);

/// How much of `text` is at most `length` long and cuts no character in two.
std::size_t WholeCharacters(std::basic_string_view<DriverText::value_type> text, std::size_t length);

/// Connects without asking anybody anything.
SQLRETURN Connect(SQLHDBC connection, const std::string& connectionString);
SQLRETURN ExecuteText(SQLHSTMT statement, const std::string& sql);
SQLRETURN PrepareText(SQLHSTMT statement, const std::string& sql);
/// A text that a driver tells about itself; empty when it does not.
std::string InfoText(SQLHDBC connection, SQLUSMALLINT what);
/// The record with this number, counted from 1; nothing when there are fewer.
std::optional<Diagnostic> DiagnosticRecord(SQLSMALLINT handleType, SQLHANDLE handle, SQLSMALLINT number);
/// A column's SQL type and how many digits stand behind its point. Columns count from 1.
SQLRETURN DescribeColumn(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT& type, SQLSMALLINT& scale);

}  // namespace kxjob
