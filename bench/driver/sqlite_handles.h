#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>

namespace kxjob::bench {

struct FinalizeSqlite {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
struct CloseSqlite {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
};
using SqliteStatement = std::unique_ptr<sqlite3_stmt, FinalizeSqlite>;
using SqliteDatabase = std::unique_ptr<sqlite3, CloseSqlite>;

/// Set up as the library sets up its own. Throws std::runtime_error, as do the others.
SqliteDatabase OpenSqlite(const std::string& file);
SqliteStatement Compiled(sqlite3* database, const std::string& sql);
void RequireSqlite(sqlite3* database, bool done);

}  // namespace kxjob::bench
