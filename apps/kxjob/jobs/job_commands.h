#pragma once

#include <CLI/CLI.hpp>

namespace kxjob::command {

/// `kxjob create`: a whole job with its items, or none.
void AddCreateCommand(CLI::App& app);
/// `kxjob list`: the jobs of a container.
void AddListCommand(CLI::App& app);
/// `kxjob show JOB`: all that the store holds of a job.
void AddShowCommand(CLI::App& app);
/// `kxjob items JOB` and `kxjob item ITEM`.
void AddItemCommands(CLI::App& app);
/// `kxjob tasks [JOB]`: the tasks, or a word to one of them.
void AddTasksCommand(CLI::App& app);
/// `kxjob set-state JOB STATE`.
void AddSetStateCommand(CLI::App& app, int& exitStatus);
/// `kxjob note JOB TEXT`.
void AddNoteCommand(CLI::App& app);
/// `kxjob remove JOB...`.
void AddRemoveCommand(CLI::App& app, int& exitStatus);
/// `kxjob sweep`: removes the jobs that belong to no application state of their container.
void AddSweepCommand(CLI::App& app, int& exitStatus);
/// `kxjob history`: what the administration history tells.
void AddHistoryCommand(CLI::App& app);

}  // namespace kxjob::command
