#pragma once

#include <chrono>
#include <string>

#include "defaults/store/sqlite/sqlite_handles.h"

namespace kxjob {

/// Opens an existing database file and sets the connection up: it waits up to `patience` for locks, writes
/// ahead (several processes read while one writes), and takes "..." for names only. A file that cannot be
/// written to is opened for reading. Raises 0x80040000 + 704, naming the file and what SQLite says.
SqliteDatabase OpenSqliteFile(const std::string& file, std::chrono::milliseconds patience);

/// Makes an empty database file; one that is there is left as it is. Raises 0x80040000 + 704 when it cannot.
void CreateSqliteFile(const std::string& file);

}  // namespace kxjob
