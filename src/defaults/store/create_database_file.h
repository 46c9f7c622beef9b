#pragma once

#include <string>

namespace kxjob {

/// Makes the empty database that a connection string names, where the engine keeps one in a file and the file
/// is missing; else does nothing. Raises 0x80040000 + 704 when it cannot be made.
void CreateDatabaseFile(const std::string& connectionString);

}  // namespace kxjob
