#include "support/qualified_tables.h"

#include <sqlite3.h>

#include <vector>

#include "automation/letter_case.h"
#include "support/fuzz_store.h"

namespace kxjob::fuzz {
namespace {

constexpr const char* kColumns =
    " (jobguid, jobtypeid, description, parameters, appstateguid, jobstateid, nextjobitem, totalitemcount,"
    " succeededitemcount, faileditemcount, startdt, lastcompletiondt, sumoftimeincsq, failurenote,"
    " jobeditorlockguid, lockduration, jobitemguid, identifier, sequence, data, jobitemstateid, enddt, "
    "jobtaskguid,"
    " usercontext, machine, processid, threadid, jobtaskstateid, lastjobitem, command, lockguid, implprogid,"
    " notificationprogid, flagname, flagvalue, historyid, writtendt, actioncode, detail, stateid, stateguid,"
    " subsystemid)";

std::string Quoted(const std::string& name) {
    std::string quoted = "\"";
    for (const char character : name) quoted += character == '"' ? "\"\"" : std::string(1, character);
    return quoted + "\"";
}

/// The parts between the dots that no quotes enclose, without their quotes.
std::vector<std::string> PartsOf(const std::string& qualifier) {
    std::vector<std::string> parts(1);
    char closing = '\0';
    for (const char character : qualifier) {
        if (closing != '\0') {
            if (character == closing) {
                closing = '\0';
            } else {
                parts.back() += character;
            }
        } else if (character == '.') {
            parts.emplace_back();
        } else if (character == '"' || character == '`' || character == '[') {
            closing = character == '[' ? ']' : character;
        } else {
            parts.back() += character;
        }
    }
    return parts;
}

void Create(const std::string& schema, const std::string& table) {
    FuzzStore::Instance().Run("CREATE TABLE IF NOT EXISTS " + Quoted(schema) + "." + Quoted(table) +
                              kColumns);
}

}  // namespace

QualifiedTables::QualifiedTables(const std::string& qualifier) {
    const std::vector<std::string> parts = PartsOf(qualifier);
    if (parts.size() > 2) return;
    std::string schema = "main";
    if (parts.size() == 2) {
        schema = parts[0];
        const bool isThere = FoldedCase(schema) == "main" || FoldedCase(schema) == "temp";
        if (!isThere && FuzzStore::Instance().Run("ATTACH DATABASE ':memory:' AS " + Quoted(schema))) {
            attached_ = schema;
        }
    }
    for (const std::string& table : TableNames()) {
        Create(schema, parts.back() + table);
        named_.insert(FoldedCase(schema + "." + parts.back() + table));
    }
    for (const std::string& part : parts) {
        if (!part.empty()) Create("main", part);
    }
}

QualifiedTables::~QualifiedTables() {
    FuzzStore& store = FuzzStore::Instance();
    if (!attached_.empty()) store.Run("DETACH DATABASE " + Quoted(attached_));
    std::vector<std::string> extra;
    sqlite3_exec(
        store.Database(),
        "SELECT name FROM main.sqlite_master WHERE type = 'table' AND name NOT LIKE 'kx\\_%' ESCAPE '\\'",
        [](void* names, int, char** cells, char**) {
            static_cast<std::vector<std::string>*>(names)->emplace_back(cells[0]);
            return 0;
        },
        &extra, nullptr);
    for (const std::string& name : extra) store.Run("DROP TABLE main." + Quoted(name));
}

}  // namespace kxjob::fuzz
