#include "model/steps.h"

namespace kxjob::model {
namespace {

const std::vector<std::string> kJobColumns = {
    "jobguid",          "description",    "jobtypeid",          "parameters",      "jobstateid",
    "nextjobitem",      "totalitemcount", "succeededitemcount", "faileditemcount", "startdt",
    "lastcompletiondt", "sumoftimeincsq", "appstateguid",       "failurenote"};
const std::vector<std::string> kTypeColumns = {"jobtypeid", "description", "implprogid",
                                               "notificationprogid"};
const std::vector<std::string> kItemColumns = {"identifier", "jobitemstateid", "data",       "startdt",
                                               "enddt",      "jobitemguid",    "failurenote"};
const std::vector<std::string> kItemsColumns = {"jobitemguid", "identifier", "jobitemstateid", "sequence"};
const std::vector<std::string> kTaskColumns = {
    "jobtaskguid", "description", "jobguid",        "machine", "processid", "threadid", "lastjobitem",
    "command",     "usercontext", "jobtaskstateid", "startdt", "enddt",     "lockguid"};

using Filters = std::vector<std::pair<std::string, std::string>>;

/// The rows that pass every filter that is not empty.
ExpectedRows Found(const Table& table, const std::vector<std::string>& columns, const Filters& filters) {
    ExpectedRows found;
    for (const Row& row : table.rows) {
        bool passes = true;
        for (const auto& [column, filter] : filters) {
            passes = passes && (filter.empty() || Holds(row, column, filter));
        }
        if (passes) found.rows.push_back(Project(row, columns));
    }
    return found;
}

Step GetJob(Draw& draw, const Tables& tables) {
    const Address given = draw.Place();
    const Address at = draw.Configured(given);
    const std::string job = draw.Below(2) == 0 ? "" : draw.JobGuid(tables);
    const std::string type = draw.Below(2) == 0 ? "" : draw.JobTypeId();
    const std::string state = draw.Below(2) == 0 ? "" : draw.State();
    const std::string application = draw.Below(2) == 0 ? "" : draw.ApplicationState();
    return {.name = "GetJob",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                return jobs.GetJob(given.connection, given.provider, given.qualifier, job, type, state,
                                   application);
            },
            .effect = [=](Tables& read) -> Result {
                CheckQualifier(at.qualifier);  // filters are not checked
                for (const std::string& filter : {job, type, state, application}) CheckStorable(filter);
                at.CheckReachable();
                return Found(read.job, kJobColumns,
                             {{"jobguid", job},
                              {"jobtypeid", type},
                              {"jobstateid", state},
                              {"appstateguid", application}});
            }};
}

Step GetJobType(Draw& draw, const Tables& /*tables*/) {
    const Address at = draw.Place();
    const std::string type = draw.JobTypeId();
    return {.name = "GetJobType",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                return jobs.GetJobType(at.connection, at.provider, at.qualifier, type);
            },
            .effect = [=](Tables& read) -> Result {
                CheckQualifier(at.qualifier);
                CheckStorable(type);
                at.CheckReachable();
                return Found(read.jobType, kTypeColumns, {{"jobtypeid", type}});
            }};
}

Step GetJobParameters(Draw& draw, const Tables& tables) {
    const Address at = draw.Place();
    const std::string job = draw.JobGuid(tables);
    return {.name = "GetJobParameters",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                return jobs.GetJobParameters(at.connection, at.provider, at.qualifier, job);
            },
            .effect = [=](Tables& read) -> Result {
                CheckQualifier(at.qualifier);
                CheckKey(job);
                CheckStorable(job);
                at.CheckReachable();
                const std::vector<const Row*> found =
                    read.job.Where([&](const Row& row) { return Holds(row, "jobguid", job); });
                if (found.empty()) RaiseOwn(702);
                const Value& parameters = Held(*found.front(), "parameters");
                if (parameters.IsNull()) Raise(0x800A005EU);
                return OneOf{parameters};
            }};
}

Step GetJobItem(Draw& draw, const Tables& tables) {
    const Address at = draw.Place();
    const std::string item = draw.ItemGuid(tables);
    return {.name = "GetJobItem",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                return jobs.GetJobItem(at.connection, at.provider, at.qualifier, item);
            },
            .effect = [=](Tables& read) -> Result {
                CheckQualifier(at.qualifier);
                CheckKey(item);
                CheckStorable(item);
                at.CheckReachable();
                ExpectedRows found;
                read.jobItem.ForEach("jobitemguid", item,
                                     [&](Row& row) { found.rows.push_back(Project(row, kItemColumns)); });
                return SomeRows(found);
            }};
}

Step GetJobItems(Draw& draw, const Tables& tables) {
    constexpr std::size_t kSequence = 3;
    const Address at = draw.Place();
    const std::string job = draw.JobOfItems(tables);
    return {.name = "GetJobItems",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                return jobs.GetJobItems(at.connection, at.provider, at.qualifier, job);
            },
            .effect = [=](Tables& read) -> Result {
                CheckQualifier(at.qualifier);
                CheckKey(job);
                CheckStorable(job);
                at.CheckReachable();
                ExpectedRows found{.rows = {}, .ascending = kSequence};
                read.jobItem.ForEach("jobguid", job,
                                     [&](Row& row) { found.rows.push_back(Project(row, kItemsColumns)); });
                return SomeRows(found);
            }};
}

Step GetJobTasks(Draw& draw, const Tables& tables) {
    const Address given = draw.Place();
    const Address at = draw.Configured(given);
    const std::string job = draw.Below(2) == 0 ? "" : draw.JobGuid(tables);
    return {.name = "GetJobTasks",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                return jobs.GetJobTasks(given.connection, given.provider, given.qualifier, job);
            },
            .effect = [=](Tables& read) -> Result {
                CheckQualifier(at.qualifier);
                CheckStorable(job);
                at.CheckReachable();
                return Found(read.jobTask, kTaskColumns, {{"jobguid", job}});
            }};
}

}  // namespace

ExpectedRows SomeRows(ExpectedRows found) {
    if (found.rows.empty()) RaiseOwn(702);
    return found;
}

std::vector<StepKind> QuerySteps() {
    return {
        {"GetJob", 3, GetJob},
        {"GetJobType", 2, GetJobType},
        {"GetJobParameters", 2, GetJobParameters},
        {"GetJobItem", 2, GetJobItem},
        {"GetJobItems", 2, GetJobItems},
        {"GetJobTasks", 2, GetJobTasks},
    };
}

}  // namespace kxjob::model
