#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>

#include "command_groups.h"
#include "jobs/job_commands.h"
#include "kxjob/automation_error.h"
#include "kxjob/job_helper.h"
#include "records/guid_text.h"
#include "records/job_record.h"
#include "records/task_record.h"
#include "store/store_options.h"
#include "terminal/counted.h"
#include "terminal/printable.h"
#include "terminal/text_table.h"

namespace kxjob::command {
namespace {

struct TasksOptions {
    StoreOptions store;
    std::string job;
    std::string state;
    std::string stopped;
    bool json = false;
};

void PrintTable(const std::vector<TaskRecord>& tasks) {
    TextTable table({"task", "job", "state", "machine", "process", "thread", "user", "started", "ended",
                     "command", "description"});
    for (const TaskRecord& task : tasks) {
        table.AddCells({{task.guid},
                        {task.job},
                        StateCell(task.state),
                        {task.machine},
                        {std::to_string(task.process)},
                        {std::to_string(task.thread)},
                        {task.user},
                        {task.started.value_or("")},
                        {task.state == "RUNNING" ? "" : task.ended.value_or("")},
                        {task.command},
                        {task.description}});
    }
    table.Print(std::cout, Counted(tasks.size(), "task"), Palette::OfStandardOutput());
}

void ListTasks(const TasksOptions& options, const StoreConnection& connection) {
    std::vector<TaskRecord> tasks =
        ReadTasks(connection, options.job.empty() ? "" : ReadJob(connection, options.job).guid);
    if (!options.state.empty()) {
        std::erase_if(tasks, [&](const TaskRecord& task) { return task.state != options.state; });
    }
    if (!options.json) return PrintTable(tasks);
    Json list = Json::array();
    for (const TaskRecord& task : tasks) list.push_back(ToJson(task));
    std::cout << OneLine({{"tasks", list}}) << '\n';
}

void StopTask(const TasksOptions& options, const StoreConnection& connection) {
    const std::vector<TaskRecord> tasks = ReadTasks(connection);
    const auto task = std::ranges::find_if(tasks, [&](const TaskRecord& one) {
        return one.guid == options.stopped || one.guid == GuidText(options.stopped);
    });
    if (task == tasks.end()) {
        throw AutomationError(error_number::kNoRow, "kxjob", "There is no task " + options.stopped);
    }
    JobHelper().UpdateTaskCommand(connection.connectionString, connection.nameQualifier, task->guid, "STOP");
    if (options.json) {
        std::cout << OneLine({{"task", task->guid}, {"state", task->state}, {"command", "STOP"}}) << '\n';
    } else {
        std::cout << "Task " << OnOneLine(task->guid) << ", which is " << OnOneLine(task->state)
                  << ", is told to stop.\n";
    }
}

void Tasks(const TasksOptions& options) {
    const StoreConnection connection = options.store.ResolveForJobs();
    if (options.stopped.empty()) {
        ListTasks(options, connection);
    } else {
        StopTask(options, connection);
    }
}

}  // namespace

void AddTasksCommand(CLI::App& app) {
    CLI::App* const command =
        app.add_subcommand("tasks", "List the tasks that work or have worked on jobs; tell one to stop");
    command->group(kExecution);
    const auto options = std::make_shared<TasksOptions>();
    CLI::Option* const job =
        command->add_option("JOB", options->job, "Only those on this job")->type_name("");
    CLI::Option* const state =
        command->add_option("--state", options->state, "Only those in this state, e.g. RUNNING")
            ->type_name("STATE");
    command
        ->add_option("--stop", options->stopped,
                     "Tell this task to stop; its worker does it when it next looks")
        ->type_name("TASK")
        ->excludes(job)
        ->excludes(state);
    command->add_flag("--json", options->json, "Print one JSON object");
    options->store.AddTo(*command);
    command->footer("Example:\n  kxjob tasks --state RUNNING\n");
    command->callback([options] { Tasks(*options); });
}

}  // namespace kxjob::command
