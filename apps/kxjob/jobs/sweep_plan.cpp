#include "jobs/sweep_plan.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "kxjob/store.h"
#include "records/application_state_record.h"
#include "records/item_count_record.h"
#include "records/row.h"

namespace kxjob::command {
namespace {

/// A job without an application state is compared with none: it stays.
std::vector<IrrelevantJob> FindIrrelevantJobs(Store& store, const SweepPlan& plan) {
    std::string sql = "SELECT jobguid, jobtypeid, jobstateid, appstateguid FROM " + store.Table("job");
    sql += " WHERE ";
    if (plan.production != kNullGuid) sql += "appstateguid <> " + store.Literal(plan.production) + " AND ";
    sql += "appstateguid <> " + store.Literal(plan.development);
    return ReadRows(store.Query(sql), [](const Row& row) {
        return IrrelevantJob{
            .guid = row.Text(0), .type = row.Text(1), .state = row.Text(2), .applicationState = row.Text(3)};
    });
}

/// True of the rows whose job will not be there. When no job will, it is left out, as by the sweep: then even
/// the rows go that name no job.
std::string OrphanFilter(Store& store, const std::set<std::string>& going) {
    const auto jobs = ReadRows(store.Query("SELECT jobguid FROM " + store.Table("job")),
                               [](const Row& row) { return row.Text(0); });
    std::string staying;
    for (const std::string& job : jobs) {
        if (going.contains(job)) continue;
        staying += (staying.empty() ? "" : ", ") + store.Literal(job);
    }
    return staying.empty() ? "" : " WHERE jobguid NOT IN (" + staying + ")";
}

/// What goes with a job goes before the sweep looks for orphans.
std::vector<Orphan> FindOrphans(Store& store, const std::string& table, const std::string& key,
                                const std::string& filter, const std::set<std::string>& going) {
    std::vector<Orphan> orphans =
        ReadRows(store.Query(fmt::format("SELECT {}, jobguid FROM {}{}", key, store.Table(table), filter)),
                 [](const Row& row) { return Orphan{.guid = row.Text(0), .job = row.Text(1)}; });
    std::erase_if(orphans, [&](const Orphan& orphan) { return going.contains(orphan.job); });
    std::ranges::sort(orphans, {}, &Orphan::guid);
    return orphans;
}

Json OrphansJson(const std::vector<Orphan>& orphans, const char* kind) {
    Json list = Json::array();
    for (const Orphan& orphan : orphans) list.push_back({{kind, orphan.guid}, {"job", orphan.job}});
    return list;
}

}  // namespace

SweepPlan PlanSweep(const StoreConnection& connection) {
    const ApplicationStates states(connection);
    SweepPlan plan;
    plan.production = states.GuidOf("PRODUCTION");
    plan.development = states.GuidOf("DEVELOPMENT");
    Store store(connection.connectionString, connection.provider, connection.nameQualifier);
    plan.jobs = FindIrrelevantJobs(store, plan);
    std::ranges::sort(plan.jobs, {}, &IrrelevantJob::guid);
    std::set<std::string> going;
    for (IrrelevantJob& job : plan.jobs) {
        job.items = CountItems(connection, job.guid);
        going.insert(job.guid);
    }
    const std::string filter = OrphanFilter(store, going);
    plan.items = FindOrphans(store, "JobItem", "jobitemguid", filter, going);
    plan.tasks = FindOrphans(store, "jobtask", "jobtaskguid", filter, going);
    return plan;
}

std::string ReasonFor(const SweepPlan& plan, const IrrelevantJob& job) {
    const auto named = [](const char* name, const std::string& guid) {
        return guid == kNullGuid ? std::string(name) + ", which the container does not have"
                                 : std::string(name) + " " + guid;
    };
    return "its application state " + job.applicationState + " is neither " +
           named("PRODUCTION", plan.production) + " nor " + named("DEVELOPMENT", plan.development);
}

Json ToJson(const SweepPlan& plan) {
    Json jobs = Json::array();
    for (const IrrelevantJob& job : plan.jobs) {
        jobs.push_back({{"job", job.guid},
                        {"type", job.type},
                        {"state", job.state},
                        {"applicationState", job.applicationState},
                        {"items", job.items},
                        {"reason", ReasonFor(plan, job)}});
    }
    return {{"jobs", jobs},
            {"orphanedItems", OrphansJson(plan.items, "item")},
            {"orphanedTasks", OrphansJson(plan.tasks, "task")}};
}

}  // namespace kxjob::command
