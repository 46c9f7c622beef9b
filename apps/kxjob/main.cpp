#include <CLI/CLI.hpp>
#include <algorithm>
#include <exception>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "call_command.h"
#include "demo/demo_command.h"
#include "demo/file_digest.h"
#include "exit_status.h"
#include "given_passwords.h"
#include "init_command.h"
#include "insight/doctor/doctor_command.h"
#include "insight/stats/stats_command.h"
#include "insight/watch/watch_command.h"
#include "insight/why/why_command.h"
#include "jobs/job_commands.h"
#include "kxjob/component_registry.h"
#include "kxjob/job_helper.h"
#include "manual/manual_commands.h"
#include "types/type_command.h"
#include "usage_error.h"
#include "work/work_command.h"

namespace kxjob::command {
namespace {

int Run(std::vector<std::string> arguments) {
    CLI::App app("Create, schedule, track and clean up background jobs", "kxjob");
    app.set_version_flag("--version", [] { return JobHelper().Version(); });
    app.require_subcommand(1);
    int exitStatus = kDone;
    // Built in, for the demo's worker hosts.
    RegisterComponent(FileDigest::kProgId, [] { return std::make_shared<FileDigest>(); });
    AddInitCommand(app);
    AddTypeCommand(app, exitStatus);
    AddCreateCommand(app);
    AddListCommand(app);
    AddShowCommand(app);
    AddItemCommands(app);
    AddSetStateCommand(app, exitStatus);
    AddNoteCommand(app);
    AddRemoveCommand(app, exitStatus);
    AddTasksCommand(app);
    AddSweepCommand(app, exitStatus);
    AddHistoryCommand(app);
    AddWorkCommand(app);
    AddWhyCommand(app);
    AddWatchCommand(app, exitStatus);
    AddStatsCommand(app);
    AddDoctorCommand(app, exitStatus);
    AddCompletionCommand(app);
    AddManualFlag(app);
    AddDemoCommand(app, exitStatus);
    AddCallCommand(app, TakeMethodArguments(arguments), exitStatus);
    const std::vector<std::string> given = arguments;
    try {
        std::reverse(arguments.begin(), arguments.end());  // the parser takes them from the back
        app.parse(std::move(arguments));
    } catch (const CLI::Success& helpOrVersion) {
        return app.exit(helpOrVersion);
    } catch (const CLI::ParseError& error) {
        throw UsageError(WithoutGivenPasswords(error.what(), given));
    }
    return exitStatus;
}

}  // namespace
}  // namespace kxjob::command

int main(int argc, char** argv) {
    try {
        return kxjob::command::Run({argv + 1, argv + argc});
    } catch (const kxjob::command::UsageError& error) {
        std::cerr << error.what() << '\n';
        return kxjob::command::kWrongUsage;
    } catch (const std::exception& exception) {
        std::cerr << exception.what() << '\n';
        return kxjob::command::kFailed;
    }
}
