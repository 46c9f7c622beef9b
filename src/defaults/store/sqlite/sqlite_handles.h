#pragma once

#include <sqlite3.h>

#include <memory>

namespace kxjob {

struct CloseSqliteDatabase {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
struct FinalizeSqliteStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

/// Closed when it goes; an open transaction is rolled back.
using SqliteDatabase = std::unique_ptr<sqlite3, CloseSqliteDatabase>;
using SqliteStatement = std::unique_ptr<sqlite3_stmt, FinalizeSqliteStatement>;

}  // namespace kxjob
