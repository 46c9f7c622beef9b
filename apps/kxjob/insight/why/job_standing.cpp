#include "insight/why/job_standing.h"

#include <algorithm>

#include "kxjob/automation_error.h"
#include "kxjob/caller_texts.h"
#include "kxjob/component_registry.h"
#include "kxjob/store.h"
#include "records/item_count_record.h"
#include "records/job_type_record.h"
#include "records/row.h"

namespace kxjob::command {
namespace {

std::string ProblemOfCreating(const std::string& progId) {
    try {
        CreateComponent(progId);
        return "";
    } catch (const AutomationError& error) {
        return error.Description();
    }
}

void ReadItemCounts(const StoreConnection& store, JobStanding& standing) {
    for (const StateCount& count : CountItemsByState(store, standing.job.guid)) {
        std::int64_t& items = count.state.empty()        ? standing.itemsWaiting
                              : count.state == "RUNNING" ? standing.itemsInWork
                                                         : standing.itemsEnded;
        items += count.items;
    }
}

std::string EditorLock(Store& store, const std::string& job) {
    const Value rows = store.Query("SELECT jobeditorlockguid FROM " + store.Table("job") +
                                   " WHERE jobguid = " + store.Literal(job));
    return rows.IsEmpty() ? "" : Row(rows.Rows(), 0).Text(0);
}

}  // namespace

JobStanding ReadStanding(const StoreConnection& connection, const std::string& guid) {
    Store store(connection.connectionString, connection.provider, connection.nameQualifier);
    JobStanding standing;
    standing.job = ReadJob(connection, guid);
    const std::vector<JobTypeRecord> types = ReadJobTypes(connection, standing.job.type);
    if (!types.empty()) {
        standing.component = types.front().component;
        standing.componentProblem = ProblemOfCreating(standing.component);
    }
    standing.offered = ReadOfferedJobs(connection);
    standing.tasks = ReadTasks(connection, standing.job.guid);
    ReadItemCounts(connection, standing);
    standing.lock = EditorLock(store, standing.job.guid);
    standing.storeTime = store.NowISODateTime();
    if (standing.storeTime.empty()) standing.storeTime = NowISODateTime();
    return standing;
}

const OfferedJob* Offered(const JobStanding& standing) {
    const auto found = std::ranges::find(standing.offered, standing.job.guid, &OfferedJob::guid);
    return found == standing.offered.end() ? nullptr : &*found;
}

Claim ClaimOf(const TaskRecord& task, const std::string& storeTime) {
    if (!task.ended) return Claim::None;
    return *task.ended < storeTime ? Claim::RanOut : Claim::Holds;
}

}  // namespace kxjob::command
