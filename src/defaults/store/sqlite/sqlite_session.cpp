#include "defaults/store/sqlite/sqlite_session.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <new>
#include <utility>

#include "defaults/store/data_access_error.h"
#include "defaults/store/sqlite/sqlite_opening.h"
#include "kxjob/array.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

Value WholeNumber(sqlite3_int64 number) {
    if (std::in_range<std::int32_t>(number)) return static_cast<std::int32_t>(number);
    return static_cast<std::int64_t>(number);
}

Value Text(sqlite3_stmt* statement, int column) {
    const bool asStored =
        sqlite3_column_type(statement, column) == SQLITE_BLOB;  // a text may have to be recoded
    const void* bytes =
        asStored ? sqlite3_column_blob(statement, column) : sqlite3_column_text(statement, column);
    const auto length = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
    if (bytes != nullptr) return std::string(static_cast<const char*>(bytes), length);
    if (!asStored || length > 0) throw std::bad_alloc();
    return std::string();
}

Value Cell(sqlite3_stmt* statement, int column) {
    switch (sqlite3_column_type(statement, column)) {
        case SQLITE_NULL: return Null{};
        case SQLITE_INTEGER: return WholeNumber(sqlite3_column_int64(statement, column));
        case SQLITE_FLOAT: return sqlite3_column_double(statement, column);
        default: return Text(statement, column);
    }
}

}  // namespace

/// Takes the write lock at once, and rolls back unless it was committed. The session is lost if even that
/// fails.
class SqliteSession::Transaction {
public:
    explicit Transaction(SqliteSession& session) : session_(session) { session_.Run("BEGIN IMMEDIATE"); }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction() {
        sqlite3* database = session_.database_.get();
        if (sqlite3_get_autocommit(database) != 0) return;  // committed, or rolled back by SQLite itself
        if (sqlite3_exec(database, "ROLLBACK", nullptr, nullptr, nullptr) != SQLITE_OK) session_.lost_ = true;
    }

    void Commit() { session_.Run("COMMIT"); }

private:
    SqliteSession& session_;
};

SqliteSession::SqliteSession(const std::string& file, std::chrono::milliseconds patience)
    : database_(OpenSqliteFile(file, patience)) {}

void SqliteSession::Execute(const std::string& sql) {
    RequireFileInPlace();
    Run(sql);
}

Value SqliteSession::Query(const std::string& sql) {
    RequireFileInPlace();
    const RunningStatement statement = Ready(sql);
    if (!Step(statement.get())) return {};
    const int columns = sqlite3_column_count(statement.get());
    RowArray rows(columns);
    do {
        for (int column = 0; column < columns; ++column) rows.AddCell(Cell(statement.get(), column));
    } while (Step(statement.get()));
    return rows;
}

void SqliteSession::WriteLongText(const std::string& table, const std::string& keyColumn,
                                  const std::string& keyValue, const std::string& valueColumn,
                                  const std::string& value) {
    RequireFileInPlace();
    const SqliteStatement statement =
        Prepare("UPDATE " + table + " SET " + valueColumn + " = ? WHERE " + keyColumn + " = ?");
    Bind(statement.get(), 1, value);
    Bind(statement.get(), 2, keyValue);
    while (Step(statement.get())) {
    }
}

void SqliteSession::RunBatch(std::span<const std::string> statements) {
    if (statements.empty()) return;
    RequireFileInPlace();
    Transaction transaction(*this);
    for (std::size_t i = 0; i < statements.size(); ++i) {
        try {
            Run(statements[i]);
        } catch (const AutomationError& error) {
            throw AutomationError(error.Number(), error.Source(),
                                  WithPlace(error.Description(), PlaceInBatch(i, statements.size())));
        }
    }
    transaction.Commit();
}

std::string SqliteSession::EngineVersion() {
    return sqlite3_libversion();
}

void SqliteSession::RequireFileInPlace() {
    int moved = 0;
    sqlite3_file_control(database_.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    if (moved == 0) return;
    lost_ = true;
    RaiseStatementFailed("08S01", "The database file was moved or deleted");
}

void SqliteSession::RequireNothingMore(const char* rest) {
    while (*rest != '\0') {
        sqlite3_stmt* second = nullptr;
        const char* begin = rest;
        const int result = sqlite3_prepare_v2(database_.get(), begin, -1, &second, &rest);
        const SqliteStatement owner(second);
        if (result != SQLITE_OK || second != nullptr || rest == begin) {
            RaiseStatementFailed("42000", "There is more than one statement in a call");
        }
    }
}

SqliteStatement SqliteSession::Prepare(const std::string& sql) {
    if (sql.find('\0') != std::string::npos) {
        RaiseStatementFailed("42000", "The statement holds a NUL character");
    }
    // One beyond what SQLite can be told is far beyond what it takes: it refuses by itself.
    const std::size_t length = std::min<std::size_t>(sql.size() + 1, std::numeric_limits<int>::max());
    sqlite3_stmt* prepared = nullptr;
    const char* rest = nullptr;
    const int result =
        sqlite3_prepare_v2(database_.get(), sql.c_str(), static_cast<int>(length), &prepared, &rest);
    SqliteStatement statement(prepared);
    if (result != SQLITE_OK) RaiseLatest(SqliteStage::Preparing);
    if (statement == nullptr) RaiseStatementFailed("42000", "There is no statement in the text");
    RequireNothingMore(rest);
    return statement;
}

SqliteStatement SqliteSession::PrepareShape() {
    const std::string& text = shape_.Text();
    sqlite3_stmt* prepared = nullptr;
    const char* rest = nullptr;
    const int result = sqlite3_prepare_v3(database_.get(), text.c_str(), static_cast<int>(text.size() + 1),
                                          SQLITE_PREPARE_PERSISTENT, &prepared, &rest);
    SqliteStatement statement(prepared);
    const bool isAlone = result == SQLITE_OK && *rest == '\0';
    return isAlone ? std::move(statement) : nullptr;
}

RunningStatement SqliteSession::Ready(const std::string& sql) {
    const LetGoOfSqliteStatement finalize(false);
    if (!shape_.Read(sql)) return {Prepare(sql).release(), finalize};
    SqliteStatement* kept = kept_.Find(shape_.Text());
    if (kept == nullptr) {
        SqliteStatement statement = PrepareShape();
        if (statement == nullptr) return {Prepare(sql).release(), finalize};
        kept = &kept_.Keep(shape_.Text(), std::move(statement));
    }
    RunningStatement running(kept->get(), LetGoOfSqliteStatement(true));
    int place = 0;
    for (const SqlLiteral& literal : shape_.Literals()) Bind(running.get(), ++place, literal);
    return running;
}

void SqliteSession::Bind(sqlite3_stmt* statement, int place, const SqlLiteral& literal) {
    if (literal.isText) return Bind(statement, place, literal.text);
    if (sqlite3_bind_int64(statement, place, literal.number) != SQLITE_OK) RaiseLatest(SqliteStage::Running);
}

void SqliteSession::Bind(sqlite3_stmt* statement, int place, std::string_view text) {
    const int result =
        sqlite3_bind_text64(statement, place, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8);
    if (result != SQLITE_OK) RaiseLatest(SqliteStage::Running);
}

bool SqliteSession::Step(sqlite3_stmt* statement) {
    switch (sqlite3_step(statement)) {
        case SQLITE_ROW: return true;
        case SQLITE_DONE: return false;
        default: RaiseLatest(SqliteStage::Running);
    }
}

void SqliteSession::Run(const std::string& sql) {
    const RunningStatement statement = Ready(sql);
    while (Step(statement.get())) {
    }
}

void SqliteSession::RaiseLatest(SqliteStage stage) {
    const int result = sqlite3_extended_errcode(database_.get());
    if (IsSqliteFileLost(result)) lost_ = true;
    const std::string message = sqlite3_errmsg(database_.get());
    RaiseStatementFailed(SqliteState(result, message, stage), message);
}

}  // namespace kxjob
