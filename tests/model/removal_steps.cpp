#include "model/removal.h"
#include "model/steps.h"

namespace kxjob::model {
namespace {

void RemoveJob(Tables& tables, const Value& job) {
    const auto isOfJob = [&](const Row& row) { return Holds(row, "jobguid", job); };
    tables.jobItem.Remove(isOfJob);
    tables.jobTask.Remove(isOfJob);
    tables.job.Remove(isOfJob);
    tables.WriteHistory("JOB_REMOVED", "<job><jobguid>" + job.Text() + "</jobguid></job>");
}

void RemoveOrphans(Tables& tables) {
    const auto isOrphan = [&](const Row& row) { return !tables.job.Has("jobguid", Held(row, "jobguid")); };
    tables.jobItem.Remove(isOrphan);
    tables.jobTask.Remove(isOrphan);
}

void Sweep(Tables& tables, const Address& at, const std::string& production, const std::string& development) {
    CheckKey(development);
    CheckQualifier(at.qualifier);
    CheckStorable(production);
    CheckStorable(development);
    at.CheckReachable();
    RemoveJobs(tables, [&](const Row& row) {
        const bool isProduction = production != kNullGuid && Holds(row, "appstateguid", production);
        return !isProduction && !Holds(row, "appstateguid", development);
    });
    RemoveOrphans(tables);
}

Step RemoveJobAndItems(Draw& draw, const Tables& tables) {
    const Address given = draw.Place();
    const Address at = draw.Configured(given);
    const std::string job = draw.JobGuid(tables);
    return {.name = "RemoveJobAndItems",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                jobs.RemoveJobAndItems(given.connection, given.provider, given.qualifier, job);
                return {};
            },
            .effect = [=](Tables& changed) -> Result {
                CheckKey(job);
                CheckQualifier(at.qualifier);
                CheckStorable(job);
                at.CheckReachable();
                RemoveJob(changed, job);
                return {};
            }};
}

Step RemoveIrrelevantJobsInContainer(Draw& draw, const Tables& /*tables*/) {
    const Address at = draw.Place();
    const std::string production = draw.Below(2) == 0 ? kNullGuid : draw.ApplicationState();
    const std::string development = draw.ApplicationState();
    return {.name = "RemoveIrrelevantJobsInContainer",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                jobs.RemoveIrrelevantJobsInContainer(at.connection, at.provider, at.qualifier, production,
                                                     development);
                return {};
            },
            .effect = [=](Tables& changed) -> Result {
                Sweep(changed, at, production, development);
                return {};
            }};
}

std::string StateGuid(const Tables& tables, const char* state) {
    const auto found = tables.applicationStates.find(state);
    return found == tables.applicationStates.end() ? kNullGuid : found->second;
}

Step RemoveIrrelevantJobsInAllContainers(Draw& draw, const Tables& /*tables*/) {
    const Address at = draw.Place();
    return {.name = "RemoveIrrelevantJobsInAllContainers",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                jobs.RemoveIrrelevantJobsInAllContainers(at.connection, at.provider, at.qualifier);
                return {};
            },
            .effect = [=](Tables& changed) -> Result {
                CheckQualifier(at.qualifier);
                Sweep(changed, at, StateGuid(changed, "PRODUCTION"), StateGuid(changed, "DEVELOPMENT"));
                return {};
            }};
}

}  // namespace

void RemoveJobs(Tables& tables, const std::function<bool(const Row&)>& which) {
    std::vector<Value> guids;
    for (const Row* row : tables.job.Where(which)) guids.push_back(Held(*row, "jobguid"));
    for (const Value& guid : guids) RemoveJob(tables, guid);
}

std::vector<StepKind> RemovalSteps() {
    return {
        {"RemoveJobAndItems", 2, RemoveJobAndItems},
        {"RemoveIrrelevantJobsInContainer", 1, RemoveIrrelevantJobsInContainer},
        {"RemoveIrrelevantJobsInAllContainers", 1, RemoveIrrelevantJobsInAllContainers},
    };
}

}  // namespace kxjob::model
