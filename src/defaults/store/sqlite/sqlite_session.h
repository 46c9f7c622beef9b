#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "defaults/store/kept_statements.h"
#include "defaults/store/session.h"
#include "defaults/store/sqlite/sqlite_error.h"
#include "defaults/store/sqlite/sqlite_handles.h"
#include "defaults/store/statement_shape.h"

namespace kxjob {

/// A session on a SQLite database file. Takes exactly one statement a call. A file that was moved or deleted
/// under the session is an error before the statement runs: SQLite would go on writing where nobody looks any
/// more. Statements that differ only in literals are prepared once.
class SqliteSession : public Session {
public:
    static constexpr std::chrono::milliseconds kPatience{30000};

    /// Raises 0x80040000 + 704 when the file is missing or is no database; see OpenSqliteFile.
    explicit SqliteSession(const std::string& file, std::chrono::milliseconds patience = kPatience);

    void Execute(const std::string& sql) override;
    Value Query(const std::string& sql) override;
    void WriteLongText(const std::string& table, const std::string& keyColumn, const std::string& keyValue,
                       const std::string& valueColumn, const std::string& value) override;
    void RunBatch(std::span<const std::string> statements) override;
    std::string EngineName() override { return "SQLite"; }
    std::string EngineVersion() override;
    std::string NowQuery() const override { return "SELECT strftime('%Y-%m-%dT%H:%M:%fZ', 'now')"; }
    bool IsLost() const override { return lost_; }

private:
    class Transaction;

    void RequireFileInPlace();
    void RequireNothingMore(const char* rest);
    SqliteStatement Prepare(const std::string& sql);
    /// Null when it cannot be prepared as it stands.
    SqliteStatement PrepareShape();
    /// A statement that is ready to run, its literals bound; to be let go of before `sql` goes.
    RunningStatement Ready(const std::string& sql);
    void Bind(sqlite3_stmt* statement, int place, const SqlLiteral& literal);
    void Bind(sqlite3_stmt* statement, int place, std::string_view text);
    /// Whether there is a row.
    bool Step(sqlite3_stmt* statement);
    void Run(const std::string& sql);
    /// Raises the connection's latest error.
    [[noreturn]] void RaiseLatest(SqliteStage stage);

    SqliteDatabase database_;
    StatementShape shape_;  // of the latest statement
    KeptStatements<SqliteStatement> kept_;
    bool lost_ = false;
};

}  // namespace kxjob
