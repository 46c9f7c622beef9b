#include "statements/crowded_store.h"

#include <array>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "collaborators/this_thread.h"
#include "defaults/store/open_session.h"
#include "seeded/seeded_store.h"
#include "statements/variant.h"
#include "support/every_method.h"

namespace kxjob::testing_support {
namespace {

constexpr int kJobs = 2000;
constexpr int kItemsOfAJob = 12;
constexpr int kTasksOfAJob = 2;
constexpr int kTypes = 400;
constexpr int kSmallRows = 4000;  // of tables that are small: a page or two would be read whole
constexpr int kStates = 40;
constexpr int kRowsOfAStatement = 400;

std::string Guid(const char* kind, int number) {
    std::array<char, 48> text{};
    std::snprintf(text.data(), text.size(), "'{%08d-0000-4000-9000-%s}'", number, kind);
    return text.data();
}

std::string JobGuid(int job) {
    return Guid("00000000AAAA", job);
}

/// One in a hundred is at work, one waits.
const char* StateOf(int job) {
    if (job % 100 == 0) return "'RUNNING'";
    return job % 100 == 1 ? "'QUEUED'" : "'COMPLETE'";
}

std::string JobRow(int job) {
    return JobGuid(job) + ", 'TYPE " + std::to_string(job % kTypes) + "', " +
           Guid("00000000EEEE", job % kStates) + ", " + StateOf(job) + ", 12";
}

std::string ItemRow(int item) {
    const int job = item / kItemsOfAJob;
    return Guid("00000000BBBB", item) + ", " + JobGuid(job) + ", " + std::to_string(item % kItemsOfAJob) +
           ", " + StateOf(job) + ", " + Guid("00000000CCCC", job * kTasksOfAJob);
}

std::string TaskRow(int task) {
    const int job = task / kTasksOfAJob;
    return Guid("00000000CCCC", task) + ", " + JobGuid(job) + ", " + StateOf(job) + ", 'machine " +
           std::to_string(task % 10) + "', '2026-02-01T00:00:00.000Z'";
}

std::string NumberedRow(int number) {
    return "'NUMBER " + std::to_string(number) + "'";
}

struct Crowd {
    const char* table;
    const char* columns;
    int rows;
    std::function<std::string(int)> row;
};

void Fill(Session& session, const Crowd& crowd) {
    std::string values;
    for (int row = 0; row < crowd.rows; ++row) {
        values += (values.empty() ? "(" : ", (") + crowd.row(row) + ")";
        if ((row + 1) % kRowsOfAStatement != 0 && row + 1 != crowd.rows) continue;
        session.Execute(std::string("INSERT INTO ") + crowd.table + " (" + crowd.columns + ") VALUES " +
                        values);
        values.clear();
    }
}

std::vector<Crowd> EveryCrowd() {
    return {
        {"kx_job", "jobguid, jobtypeid, appstateguid, jobstateid, totalitemcount", kJobs, JobRow},
        {"kx_JobItem", "jobitemguid, jobguid, sequence, jobitemstateid, jobtaskguid", kJobs * kItemsOfAJob,
         ItemRow},
        {"kx_jobtask", "jobtaskguid, jobguid, jobtaskstateid, machine, enddt", kJobs * kTasksOfAJob, TaskRow},
        {"kx_JobType", "jobtypeid", kSmallRows, NumberedRow},
        {"kx_systemflag", "flagname", kSmallRows, NumberedRow},
        {"kx_applicationstate", "stateid", kSmallRows, NumberedRow}};
}

void TakeStatistics(Session& session, DataStoreProvider provider) {
    switch (provider) {
        case dspPostgreSql:
            session.Execute("VACUUM ANALYZE");
            session.Execute(
                "SET max_parallel_workers_per_gather = 0");  // how many there are is the machine's
            break;
        case dspMariaDb:
            session.Query(
                "ANALYZE TABLE kx_job, kx_JobItem, kx_jobtask, kx_JobType, kx_systemflag, "
                "kx_applicationstate");
            break;
        default: session.Execute("ANALYZE");
    }
}

}  // namespace

CrowdedStore::CrowdedStore(const ContractEngine& engine) : store_(engine.makeStore()) {
    SeedStore(store_->ConnectionString(), "kx_", engine.provider);
    InstallCollaborators(nullptr);
    session_ = OpenSession(store_->ConnectionString());
    for (const Crowd& crowd : EveryCrowd()) Fill(*session_, crowd);
    session_->Execute("INSERT INTO kx_systemflag (flagname, flagvalue) VALUES ('KVR_TRANSACTION', '')");
    // The item that hosts finish is there: of an item that is not, MariaDB plans nothing.
    session_->Execute(
        "UPDATE kx_JobItem SET jobitemstateid = 'RUNNING', sequence = " + std::to_string(kItemSequence) +
        ", jobtaskguid = '" + kTaskGuid + "' WHERE jobitemguid = '" + kItemGuid + "'");
    TakeStatistics(*session_, engine.provider);
}

std::string CrowdedStore::Fitting(std::string sql) {
    const auto replace = [&](const std::string& value, const std::string& by) {
        for (std::size_t at = sql.find(value); at != std::string::npos;
             at = sql.find(value, at + by.size())) {
            sql.replace(at, value.size(), by);
        }
    };
    replace(std::string("'") + kAnyJobState + "'", "'RUNNING'");
    if (sql.find("jobtaskstateid IN ('COMPLETE', 'FAILED')") != std::string::npos) {
        constexpr int kCompleteTask = 10;
        replace(std::string("'") + kTaskGuid + "'", Guid("00000000CCCC", kCompleteTask));
    }
    return sql;
}

}  // namespace kxjob::testing_support
