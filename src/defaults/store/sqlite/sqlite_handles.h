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

/// A statement that is kept can run again.
class LetGoOfSqliteStatement {
public:
    explicit LetGoOfSqliteStatement(bool isKept) : isKept_(isKept) {}

    void operator()(sqlite3_stmt* statement) const {
        if (!isKept_) {
            sqlite3_finalize(statement);
            return;
        }
        sqlite3_reset(statement);
        sqlite3_clear_bindings(statement);
    }

private:
    bool isKept_;
};

/// Closed when it goes; an open transaction is rolled back.
using SqliteDatabase = std::unique_ptr<sqlite3, CloseSqliteDatabase>;
using SqliteStatement = std::unique_ptr<sqlite3_stmt, FinalizeSqliteStatement>;
/// While it lives, the statement's locks are held.
using RunningStatement = std::unique_ptr<sqlite3_stmt, LetGoOfSqliteStatement>;

}  // namespace kxjob
