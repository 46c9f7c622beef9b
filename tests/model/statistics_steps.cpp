#include <map>

#include "model/steps.h"
#include "model/value_text.h"

namespace kxjob::model {
namespace {

const std::vector<std::string> kStatisticsColumns = {
    "jobguid",        "description",        "jobtypeid",       "jobstateid", "nextjobitem",
    "totalitemcount", "succeededitemcount", "faileditemcount", "startdt",    "lastcompletiondt",
    "sumoftimeincsq", "failurenote",        "appstateguid"};

ExpectedRows Statistics(const Tables& read, const Address& at, const std::string& job, bool allowMissing) {
    CheckQualifier(at.qualifier);  // the job is not checked
    CheckStorable(job);
    at.CheckReachable();
    ExpectedRows found;
    for (const Row& row : read.job.rows) {
        if (job.empty() || Holds(row, "jobguid", job)) {
            found.rows.push_back(Project(row, kStatisticsColumns));
        }
    }
    return allowMissing || job.empty() ? found : SomeRows(found);
}

Step GetJobExecutionStatistics(Draw& draw, const Tables& tables) {
    const Address given = draw.Place();
    const Address at = draw.Configured(given);
    const std::string job = draw.Below(3) == 0 ? "" : draw.JobGuid(tables);
    return {.name = "GetJobExecutionStatistics",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                return jobs.GetJobExecutionStatistics(given.connection, given.provider, given.qualifier, job);
            },
            .effect = [=](Tables& read) -> Result { return Statistics(read, at, job, false); }};
}

Step GetJobExecutionStatisticsAllowMissing(Draw& draw, const Tables& tables) {
    const Address given = draw.Place();
    const Address at = draw.Configured(given);
    const std::string job = draw.Below(3) == 0 ? "" : draw.JobGuid(tables);
    return {.name = "GetJobExecutionStatisticsAllowMissing",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                return jobs.GetJobExecutionStatisticsAllowMissing(given.connection, given.provider,
                                                                  given.qualifier, job);
            },
            .effect = [=](Tables& read) -> Result { return Statistics(read, at, job, true); }};
}

void CheckJobAndPlace(const Address& at, const std::string& job, const std::string& state = {}) {
    CheckKey(job);
    CheckQualifier(at.qualifier);
    CheckStorable(job);
    CheckStorable(state);
    at.CheckReachable();
}

Step GetJobItemExecutionStatistics(Draw& draw, const Tables& tables) {
    const Address at = draw.Place();
    const std::string job = draw.JobOfItems(tables);
    const std::int32_t sequence = draw.Below(2) == 0 ? 0 : draw.Number();
    return {.name = "GetJobItemExecutionStatistics",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                return jobs.GetJobItemExecutionStatistics(at.connection, at.provider, at.qualifier, job,
                                                          sequence);
            },
            .effect = [=](Tables& read) -> Result {
                CheckJobAndPlace(at, job);
                ExpectedRows found;
                read.jobItem.ForEach("jobguid", job, [&](Row& row) {
                    if (!Holds(row, "sequence", sequence)) return;
                    found.rows.push_back(Project(row, {"jobitemstateid", "startdt", "enddt"}));
                });
                return SomeRows(found);
            }};
}

/// How many times each row occurs, as its last cell.
ExpectedRows Counted(const std::vector<std::vector<Value>>& rows) {
    std::map<std::string, std::pair<std::vector<Value>, std::int32_t>> groups;
    for (const std::vector<Value>& row : rows) {
        auto& [cells, count] = groups[RowText(row)];
        cells = row;
        ++count;
    }
    ExpectedRows counted;
    for (const auto& [text, group] : groups) {
        counted.rows.push_back(group.first);
        counted.rows.back().emplace_back(group.second);
    }
    return counted;
}

std::vector<const Row*> ItemsAtState(const Tables& read, const std::string& job, const std::string& state) {
    return read.jobItem.Where([&](const Row& row) {
        return Holds(row, "jobguid", job) && (state.empty() || Holds(row, "jobitemstateid", state));
    });
}

Step JobItemsAtState(Draw& draw, const Tables& tables) {
    const Address at = draw.Place();
    const std::string job = draw.JobOfItems(tables);
    const std::string state = draw.Below(2) == 0 ? "" : draw.State();
    return {.name = "JobItemsAtState",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                return jobs.JobItemsAtState(at.connection, at.qualifier, job, state);
            },
            .effect = [=](Tables& read) -> Result {
                CheckJobAndPlace(at, job, state);
                std::vector<std::vector<Value>> rows;
                for (const Row* item : ItemsAtState(read, job, state)) {
                    rows.push_back(Project(*item, {"jobitemstateid"}));
                }
                return Counted(rows);
            }};
}

Step OwnersOfJobItemsAtState(Draw& draw, const Tables& tables) {
    const Address at = draw.Place();
    const std::string job = draw.JobOfItems(tables);
    const std::string state = draw.Below(2) == 0 ? "" : draw.State();
    return {.name = "OwnersOfJobItemsAtState",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                return jobs.OwnersOfJobItemsAtState(at.connection, at.qualifier, job, state);
            },
            .effect = [=](Tables& read) -> Result {
                CheckJobAndPlace(at, job, state);
                std::vector<std::vector<Value>> rows;
                for (const Row* item : ItemsAtState(read, job, state)) {
                    read.jobTask.ForEach("jobtaskguid", Held(*item, "jobtaskguid"), [&](Row& task) {
                        rows.push_back({Held(task, "machine"), Held(*item, "jobitemstateid")});
                    });
                }
                return Counted(rows);
            }};
}

}  // namespace

std::vector<StepKind> StatisticsSteps() {
    return {
        {"GetJobExecutionStatistics", 2, GetJobExecutionStatistics},
        {"GetJobExecutionStatisticsAllowMissing", 2, GetJobExecutionStatisticsAllowMissing},
        {"GetJobItemExecutionStatistics", 2, GetJobItemExecutionStatistics},
        {"JobItemsAtState", 2, JobItemsAtState},
        {"OwnersOfJobItemsAtState", 5, OwnersOfJobItemsAtState},
    };
}

}  // namespace kxjob::model
