#include "defaults/store/sqlite/sqlite_opening.h"

#include <algorithm>
#include <string_view>
#include <system_error>
#include <thread>

#include "defaults/store/data_access_error.h"

namespace kxjob {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// Pages of the write-ahead log (64 MB) before they go into the file. GUIDs change pages all over a large
/// index: the longer the log, the more changes of a page are written into the file at once.
constexpr int kPagesOfLog = 16'384;

[[noreturn]] void RaiseNotOpened(const std::string& file, sqlite3* database) {
    std::string why = file + ": " + sqlite3_errmsg(database);
    if (const int systemError = sqlite3_system_errno(database); systemError != 0) {
        why += " (" + std::system_category().message(systemError) + ")";
    }
    RaiseConnectionFailed(why);
}

/// SQLite has names that mean no file: ":memory:" and "file:...?options". Here a name is always a file's.
std::string PathOf(const std::string& file) {
    return file.starts_with(':') || file.starts_with("file:") ? "./" + file : file;
}

SqliteDatabase Opened(const std::string& file, int flags) {
    if (file.empty()) RaiseConnectionFailed("the connection string names no database file");
    sqlite3* opened = nullptr;
    const int result = sqlite3_open_v2(PathOf(file).c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    SqliteDatabase database(opened);  // there is a handle after a failure too
    if (result != SQLITE_OK) RaiseNotOpened(file, database.get());
    return database;
}

int KeepText(void* text, int /*columns*/, char** cells, char** /*names*/) {
    if (cells[0] != nullptr) *static_cast<std::string*>(text) = cells[0];
    return 0;
}

/// The first processes that switch a new file at the same moment are refused without having waited.
int SwitchToWriteAhead(sqlite3* database, milliseconds patience, std::string& mode) {
    const steady_clock::time_point deadline = steady_clock::now() + patience;
    while (true) {
        const int result = sqlite3_exec(database, "PRAGMA journal_mode=WAL", KeepText, &mode, nullptr);
        if ((result & 0xFF) != SQLITE_BUSY || steady_clock::now() >= deadline) return result;
        std::this_thread::sleep_for(milliseconds(2));
    }
}

int SetUp(sqlite3* database, milliseconds patience) {
    sqlite3_busy_timeout(database, static_cast<int>(patience.count()));
    sqlite3_extended_result_codes(database, 1);
    sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    if (sqlite3_db_readonly(database, "main") == 1) {
        return sqlite3_exec(database, "PRAGMA schema_version", nullptr, nullptr, nullptr);
    }
    std::string mode;
    const int result = SwitchToWriteAhead(database, patience, mode);
    if (result != SQLITE_OK || mode != "wal") return result;  // without the log NORMAL is not safe enough
    sqlite3_wal_autocheckpoint(database, kPagesOfLog);
    return sqlite3_exec(database, "PRAGMA synchronous=NORMAL", nullptr, nullptr, nullptr);
}

}  // namespace

SqliteDatabase OpenSqliteFile(const std::string& file, milliseconds patience) {
    SqliteDatabase database = Opened(file, SQLITE_OPEN_READWRITE);
    if (SetUp(database.get(), patience) != SQLITE_OK) RaiseNotOpened(file, database.get());
    return database;
}

void CreateSqliteFile(const std::string& file) {
    Opened(file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
}

}  // namespace kxjob
