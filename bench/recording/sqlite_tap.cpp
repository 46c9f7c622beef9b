#include <sqlite3.h>

#include "recording/statement_tap.h"

namespace kxjob::bench {
namespace {

int Keep(unsigned /*event*/, void* /*context*/, void* statement, void* /*text*/) {
    if (Recording() == nullptr) return 0;
    char* const expanded = sqlite3_expanded_sql(static_cast<sqlite3_stmt*>(statement));
    Recording()->push_back({expanded});
    sqlite3_free(expanded);
    return 0;
}

int Listen(sqlite3* database, const char** /*error*/, const void* /*functions*/) {
    return sqlite3_trace_v2(database, SQLITE_TRACE_STMT, &Keep, nullptr);
}

/// How SQLite wants it declared.
void (*AsExtension())() {
    return reinterpret_cast<void (*)()>(&Listen);
}

}  // namespace

SqliteTap::SqliteTap() {
    sqlite3_auto_extension(AsExtension());
}

SqliteTap::~SqliteTap() {
    sqlite3_cancel_auto_extension(AsExtension());
}

}  // namespace kxjob::bench
