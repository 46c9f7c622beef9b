#include "model/steps.h"

namespace kxjob::model {
namespace {

Step UpdateJobStatus(Draw& draw, const Tables& tables) {
    const Address given = draw.Place();
    const Address at = draw.Configured(given);
    const std::string job = draw.JobGuid(tables);
    const std::string state = draw.State();
    return {.name = "UpdateJobStatus",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                jobs.UpdateJobStatus(given.connection, given.provider, given.qualifier, job, state);
                return {};
            },
            .effect = [=](Tables& changed) -> Result {
                CheckKey(job);
                CheckKey(state);
                CheckQualifier(at.qualifier);
                CheckStorable(state);
                CheckStorable(job);
                at.CheckReachable();
                changed.job.ForEach("jobguid", job, [&](Row& row) { row["jobstateid"] = Value(state); });
                changed.WriteHistory("JOB_STATUS_UPDATE", "<job><jobguid>" + job + "</jobguid><jobstateid>" +
                                                              state + "</jobstateid></job>");
                return {};
            }};
}

Step UpdateJobItemStatus(Draw& draw, const Tables& tables) {
    const Address at = draw.Place();
    const std::string item = draw.ItemGuid(tables);
    const std::string state = draw.State();
    const std::string start = draw.Time();
    const std::string end = draw.Time();
    const std::string task = draw.TaskGuid(tables);
    return {.name = "UpdateJobItemStatus",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                jobs.UpdateJobItemStatus(at.connection, at.provider, at.qualifier, item, state, start, end,
                                         task);
                return {};
            },
            .effect = [=](Tables& changed) -> Result {
                CheckQualifier(at.qualifier);
                CheckKey(item);
                CheckKey(state);
                for (const std::string& text : {state, task, item}) CheckStorable(text);
                at.CheckReachable();
                changed.jobItem.ForEach("jobitemguid", item, [&](Row& row) {
                    row["jobitemstateid"] = Value(state);
                    row["startdt"] = Value(start);
                    row["enddt"] = Value(end);
                    row["jobtaskguid"] = Value(task);
                });
                return {};
            }};
}

void AppendNote(Table& table, const std::string& keyColumn, const std::string& key, const std::string& note) {
    if (!table.Has(keyColumn, key)) RaiseOwn(702);
    CheckStorable(note);
    table.ForEach(keyColumn, key, [&](Row& row) {
        const Value old = Held(row, "failurenote");
        const bool isBlank = old.IsNull() || old.Text().find_first_not_of(' ') == std::string::npos;
        row["failurenote"] = Note{isBlank ? "" : old.Text() + "\r\n\r\n", note};
    });
}

Step AppendJobFailureNote(Draw& draw, const Tables& tables) {
    const Address at = draw.Place();
    const std::string job = draw.JobGuid(tables);
    const std::string note = draw.Text();
    return {.name = "AppendJobFailureNote",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                jobs.AppendJobFailureNote(at.connection, at.provider, at.qualifier, job, note);
                return {};
            },
            .effect = [=](Tables& changed) -> Result {
                CheckKey(job);
                CheckQualifier(at.qualifier);
                CheckStorable(job);
                at.CheckReachable();
                AppendNote(changed.job, "jobguid", job, note);
                return {};
            }};
}

Step AppendJobItemFailureNote(Draw& draw, const Tables& tables) {
    const Address at = draw.Place();
    const std::string item = draw.ItemGuid(tables);
    const std::string note = draw.Text();
    return {.name = "AppendJobItemFailureNote",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                jobs.AppendJobItemFailureNote(at.connection, at.provider, at.qualifier, item, note);
                return {};
            },
            .effect = [=](Tables& changed) -> Result {
                CheckQualifier(at.qualifier);
                CheckKey(item);
                CheckStorable(item);
                at.CheckReachable();
                AppendNote(changed.jobItem, "jobitemguid", item, note);
                return {};
            }};
}

}  // namespace

std::vector<StepKind> StatusSteps() {
    return {
        {"UpdateJobStatus", 6, UpdateJobStatus},
        {"UpdateJobItemStatus", 8, UpdateJobItemStatus},
        {"AppendJobFailureNote", 4, AppendJobFailureNote},
        {"AppendJobItemFailureNote", 2, AppendJobItemFailureNote},
    };
}

}  // namespace kxjob::model
