#include "defaults/store/sqlite/sqlite_error.h"

#include <sqlite3.h>

namespace kxjob {
namespace {

constexpr int Primary(int resultCode) {
    return resultCode & 0xFF;
}

std::string_view StateOfFaultyStatement(std::string_view message, SqliteStage stage) {
    if (message.starts_with("no such table")) return "42S02";
    if (message.starts_with("no such column")) return "42S22";
    if (message.starts_with("table ") && message.find(" has no column named ") != std::string_view::npos) {
        return "42S22";
    }
    return stage == SqliteStage::Preparing ? "42000" : "HY000";
}

}  // namespace

std::string_view SqliteState(int resultCode, std::string_view message, SqliteStage stage) {
    switch (Primary(resultCode)) {
        case SQLITE_ERROR: return StateOfFaultyStatement(message, stage);
        case SQLITE_CONSTRAINT: return "23000";
        case SQLITE_BUSY:
        case SQLITE_LOCKED: return "HYT00";
        case SQLITE_READONLY: return "25006";
        case SQLITE_FULL: return "53100";
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB: return "XX001";
        default: return "HY000";
    }
}

bool IsSqliteFileLost(int resultCode) {
    switch (Primary(resultCode)) {
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
        case SQLITE_IOERR: return true;
        default: return resultCode == SQLITE_READONLY_DBMOVED;
    }
}

}  // namespace kxjob
