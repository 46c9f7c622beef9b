#include "driver/sqlite_handles.h"

#include <stdexcept>

namespace kxjob::bench {

SqliteDatabase OpenSqlite(const std::string& file) {
    sqlite3* opened = nullptr;
    const int result =
        sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    SqliteDatabase database(opened);
    RequireSqlite(opened, result == SQLITE_OK);
    sqlite3_busy_timeout(opened, 30'000);
    for (const char* pragma :
         {"PRAGMA journal_mode=WAL", "PRAGMA synchronous=NORMAL", "PRAGMA wal_autocheckpoint=16384"}) {
        RequireSqlite(opened, sqlite3_exec(opened, pragma, nullptr, nullptr, nullptr) == SQLITE_OK);
    }
    return database;
}

SqliteStatement Compiled(sqlite3* database, const std::string& sql) {
    sqlite3_stmt* compiled = nullptr;
    const int length = static_cast<int>(sql.size() + 1);
    RequireSqlite(database,
                  sqlite3_prepare_v2(database, sql.c_str(), length, &compiled, nullptr) == SQLITE_OK);
    return SqliteStatement(compiled);
}

void RequireSqlite(sqlite3* database, bool done) {
    if (!done) throw std::runtime_error(sqlite3_errmsg(database));
}

}  // namespace kxjob::bench
