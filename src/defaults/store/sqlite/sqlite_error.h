#pragma once

#include <string_view>

namespace kxjob {

enum class SqliteStage { Preparing, Running };

/// The SQLSTATE of an extended result code. SQLite has one code for most faults of a statement; its message
/// tells them apart.
std::string_view SqliteState(int resultCode, std::string_view message, SqliteStage stage);

/// Whether a result code says that the database file cannot be worked with any more.
bool IsSqliteFileLost(int resultCode);

}  // namespace kxjob
