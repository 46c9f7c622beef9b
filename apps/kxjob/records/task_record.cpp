#include "records/task_record.h"

#include <algorithm>
#include <tuple>

#include "kxjob/job_helper.h"
#include "records/optional_json.h"
#include "records/row.h"

namespace kxjob::command {
namespace {

TaskRecord TaskOf(const Row& row) {
    return {.guid = row.Text(jtfJobTaskGUID),
            .description = row.Text(jtfDescription),
            .job = row.Text(jtfJobGUID),
            .machine = row.Text(jtfMachine),
            .process = row.Whole(jtfProcessID),
            .thread = row.Whole(jtfThreadID),
            .lastItem = row.Text(jtfLastJobItem),
            .command = row.Text(jtfCommand),
            .user = row.Text(jtfUser),
            .state = row.Text(jtfJobTaskStateID),
            .started = row.OptionalText(jtfStartDateTime),
            .ended = row.OptionalText(jtfEndDateTime),
            .lock = row.Text(jtfLockGUID)};
}

}  // namespace

std::vector<TaskRecord> ReadTasks(const StoreConnection& store, const std::string& job) {
    std::vector<TaskRecord> tasks = ReadRows(
        JobHelper().GetJobTasks(store.connectionString, store.provider, store.nameQualifier, job), TaskOf);
    std::ranges::sort(tasks, {}, [](const TaskRecord& task) { return std::tie(task.started, task.guid); });
    return tasks;
}

Json ToJson(const TaskRecord& task) {
    return {{"task", task.guid},
            {"job", task.job},
            {"state", task.state},
            {"description", task.description},
            {"machine", task.machine},
            {"process", task.process},
            {"thread", task.thread},
            {"user", task.user},
            {"started", OrNull(task.started)},
            {"ended", OrNull(task.ended)},
            {"lastItem", task.lastItem},
            {"command", task.command},
            {"lock", task.lock}};
}

}  // namespace kxjob::command
