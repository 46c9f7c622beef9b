#include "insight/selection/offered_jobs.h"

#include <algorithm>
#include <iterator>
#include <map>

#include "kxjob/automation_error.h"
#include "kxjob/store.h"
#include "records/job_record.h"
#include "records/job_type_record.h"
#include "records/row.h"

namespace kxjob::command {
namespace {

constexpr const char* kQueuedJobs = "QUEUED";
constexpr const char* kRunningJobs = "RUNNING";

/// A RUNNING job with as many RUNNING tasks as this gets no more of them.
constexpr std::int64_t kMostTasks = 256;

/// Of each job type, whether this machine can create its component.
std::map<std::string, bool> Types(const StoreConnection& store) {
    std::map<std::string, bool> types;
    for (const JobTypeRecord& type : ReadJobTypes(store)) types[type.type] = CanCreateHere(type.component);
    return types;
}

std::map<std::string, std::int64_t> RunningTasks(const StoreConnection& connection) {
    Store store(connection.connectionString, connection.provider, connection.nameQualifier);
    std::map<std::string, std::int64_t> tasks;
    ReadRows(store.Query("SELECT jobguid, COUNT(*) FROM " + store.Table("jobtask") +
                         " WHERE jobtaskstateid = 'RUNNING' GROUP BY jobguid"),
             [&](const Row& row) { return tasks[row.Text(0)] = row.Whole(1); });
    return tasks;
}

}  // namespace

std::vector<OfferedJob> ReadOfferedJobs(const StoreConnection& store) {
    const std::map<std::string, bool> types = Types(store);
    const std::map<std::string, std::int64_t> tasks = RunningTasks(store);
    std::vector<OfferedJob> jobs;
    for (const char* state : {kQueuedJobs, kRunningJobs}) {
        for (const JobRecord& job : ReadJobs(store, {.state = state})) {
            const auto type = types.find(job.type);
            const auto running = tasks.find(job.guid);
            jobs.push_back({.guid = job.guid,
                            .type = job.type,
                            .state = job.state,
                            .runningTasks = running == tasks.end() ? 0 : running->second,
                            .hasType = type != types.end(),
                            .canBeWorkedOn = type != types.end() && type->second});
        }
    }
    return jobs;
}

std::optional<std::int64_t> PlaceOf(const OfferedJob& job) {
    if (!job.canBeWorkedOn) return std::nullopt;
    if (job.state == kQueuedJobs) return 0;
    if (job.runningTasks >= kMostTasks) return std::nullopt;
    return 1 + job.runningTasks;
}

std::vector<OfferedJob> JobsAheadOf(std::int64_t place, const std::vector<OfferedJob>& jobs) {
    std::vector<OfferedJob> ahead;
    std::ranges::copy_if(jobs, std::back_inserter(ahead),
                         [&](const OfferedJob& job) { return PlaceOf(job).value_or(place) < place; });
    std::ranges::stable_sort(ahead, {}, [](const OfferedJob& job) { return PlaceOf(job); });
    return ahead;
}

std::vector<OfferedJob> JobsAt(std::int64_t place, const std::vector<OfferedJob>& jobs) {
    std::vector<OfferedJob> there;
    std::ranges::copy_if(jobs, std::back_inserter(there),
                         [&](const OfferedJob& job) { return PlaceOf(job) == place; });
    return there;
}

std::vector<OfferedJob> NextJobs(const std::vector<OfferedJob>& jobs) {
    std::optional<std::int64_t> lowest;
    for (const OfferedJob& job : jobs) {
        const std::optional<std::int64_t> place = PlaceOf(job);
        if (place && (!lowest || *place < *lowest)) lowest = place;
    }
    return lowest ? JobsAt(*lowest, jobs) : std::vector<OfferedJob>();
}

}  // namespace kxjob::command
