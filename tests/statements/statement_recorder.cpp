#include "statements/statement_recorder.h"

#include <sqlite3.h>

#include <memory>

namespace kxjob::testing_support {
namespace {

StatementRecorder* theRecorder = nullptr;

int OnStatement(unsigned /*kind*/, void* /*context*/, void* statement, void* /*text*/) {
    const std::unique_ptr<char, void (*)(void*)> sql(
        sqlite3_expanded_sql(static_cast<sqlite3_stmt*>(statement)), sqlite3_free);
    if (theRecorder != nullptr && sql != nullptr) theRecorder->Trace(sql.get());
    return 0;
}

int OnOpening(sqlite3* database, const char** /*error*/, const sqlite3_api_routines* /*routines*/) {
    return sqlite3_trace_v2(database, SQLITE_TRACE_STMT, OnStatement, nullptr);
}

/// The type that SQLite wants does not tell the arguments.
void (*AsExtension(int (*opening)(sqlite3*, const char**, const sqlite3_api_routines*)))() {
    return reinterpret_cast<void (*)()>(opening);
}

bool MayUseTheStore(const JournalEvent& call) {
    if (call.object == "DataAccess" || call.object == "SystemFlagReader") return true;
    if (call.object == "BatchSqlExecutor") return call.operation != "Open";
    // A component's member may do anything; a property of the table names does not.
    return call.object.find("_%v.") != std::string::npos && !call.object.starts_with("TableNameHelper_%v.");
}

}  // namespace

StatementRecorder::StatementRecorder() {
    theRecorder = this;
    sqlite3_auto_extension(AsExtension(OnOpening));
}

StatementRecorder::~StatementRecorder() {
    sqlite3_cancel_auto_extension(AsExtension(OnOpening));
    theRecorder = nullptr;
}

void StatementRecorder::BeforeCall(const JournalEvent& call) {
    isCalling_ = true;
    call_ = {call.method, call.line, ""};
    if (MayUseTheStore(call)) storeCalls_.emplace_back(call.method, call.line);
}

void StatementRecorder::Write(const JournalEvent& event) {
    switch (event.kind) {
        case JournalEvent::Kind::Enter:
            entered_.emplace_back(event.method, running_.empty() ? "" : running_.back());
            running_.push_back(event.method);
            break;
        case JournalEvent::Kind::Call: isCalling_ = false; break;
        case JournalEvent::Kind::Leave:
        case JournalEvent::Kind::Raise: running_.pop_back(); break;
    }
}

void StatementRecorder::Clear() {
    statements_.clear();
    entered_.clear();
    storeCalls_.clear();
}

/// What nobody called for is a session's own: how it is set up, and what time its clock shows.
void StatementRecorder::Trace(const std::string& sql) {
    if (!isCalling_ || sql.starts_with("BEGIN") || sql.starts_with("COMMIT") || sql.starts_with("PRAGMA")) {
        return;
    }
    statements_.push_back(call_);
    statements_.back().sql = sql;
}

}  // namespace kxjob::testing_support
