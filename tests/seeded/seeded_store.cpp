#include "seeded/seeded_store.h"

#include <utility>
#include <vector>

#include "support/every_method.h"

namespace kxjob::testing_support {
namespace {

/// Columns and their texts.
using Row = std::vector<std::pair<const char*, Value>>;

std::string Insert(Store& store, const std::string& table, const Row& row) {
    std::string columns;
    std::string literals;
    for (const auto& [column, value] : row) {
        const char* const separator = columns.empty() ? "" : ", ";
        columns.append(separator).append(column);
        literals.append(separator).append(store.Literal(value));
    }
    return "INSERT INTO " + store.Table(table) + " (" + columns + ") VALUES (" + literals + ")";
}

}  // namespace

void SeedStore(const std::string& connectionString, const std::string& qualifier,
               DataStoreProvider provider) {
    Store store(connectionString, provider, qualifier);
    store.CreateDatabase();
    store.CreateTables();
    for (const std::string& sql : SeedStatements(store)) store.Execute(sql);
}

std::vector<std::string> SeedStatements(Store& store) {
    return {
        Insert(store, "JobType",
               {{"jobtypeid", kJobType},
                {"description", "nightly work"},
                {"implprogid", "kxTimer_83.Timer"},
                {"notificationprogid", ""}}),
        Insert(store, "job",
               {{"jobguid", kJobGuid},
                {"jobtypeid", kJobType},
                {"description", "an earlier job"},
                {"parameters", "<parameters><parameter>1</parameter></parameters>"},
                {"appstateguid", kStateGuid},
                {"jobstateid", "RUNNING"},
                {"nextjobitem", 1},
                {"totalitemcount", 1},
                {"startdt", "2026-03-01T09:30:15.123Z"},
                {"sumoftimeincsq", 0.25},
                {"failurenote", "an old note"},
                {"jobeditorlockguid", kLockGuid},
                {"lockduration", 60.0}}),
        Insert(store, "JobItem",
               {{"jobitemguid", kItemGuid},
                {"jobguid", kJobGuid},
                {"identifier", kIdentifierGuid},
                {"sequence", 0},
                {"data", "some data"},
                {"jobitemstateid", "RUNNING"},
                {"startdt", "2026-03-01T09:30:16.000Z"},
                {"jobtaskguid", kTaskGuid}}),
        Insert(store, "jobtask",
               {{"jobtaskguid", kTaskGuid},
                {"description", "a task"},
                {"jobguid", kJobGuid},
                {"usercontext", "a user"},
                {"machine", "a machine"},
                {"processid", 71},
                {"threadid", 72},
                {"startdt", "2026-03-01T09:30:15.500Z"},
                {"jobtaskstateid", "RUNNING"},
                {"lockguid", kLockGuid}}),
        Insert(store, "applicationstate", {{"stateid", "PRODUCTION"}, {"stateguid", kProductionGuid}}),
        Insert(store, "applicationstate", {{"stateid", "DEVELOPMENT"}, {"stateguid", kDevelopmentGuid}}),
        Insert(store, "subsystem", {{"subsystemid", "REPORTING"}}),
        Insert(store, "subsystem", {{"subsystemid", "RUNTIME"}}),
    };
}

}  // namespace kxjob::testing_support
