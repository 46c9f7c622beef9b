#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iostream>
#include <memory>
#include <string_view>

#include "command_groups.h"
#include "exit_status.h"
#include "jobs/job_commands.h"
#include "kxjob/job_helper.h"
#include "records/job_record.h"
#include "store/store_options.h"
#include "terminal/confirmation.h"
#include "terminal/printable.h"
#include "usage_error.h"

namespace kxjob::command {
namespace {

constexpr std::array<std::string_view, 6> kStates{"CREATING", "READY",    "QUEUED",
                                                  "RUNNING",  "COMPLETE", "CANCELLED"};

struct SetStateOptions {
    StoreOptions store;
    std::string job;
    std::string state;
    Confirmation confirmation;
    bool force = false;
    bool json = false;
};

bool IsKnownState(const std::string& state) {
    return std::ranges::find(kStates, state) != kStates.end();
}

bool EndsJob(const std::string& state) {
    return state == "COMPLETE" || state == "CANCELLED";
}

void SetState(const SetStateOptions& options, int& exitStatus) {
    if (!options.force && !IsKnownState(options.state)) {
        throw UsageError(fmt::format("{} is none of {}; --force sets it all the same.", options.state,
                                     fmt::join(kStates, ", ")));
    }
    const StoreConnection connection = options.store.ResolveForJobs();
    const JobRecord job = ReadJob(connection, options.job);
    const bool endsWork = job.state == "RUNNING" && EndsJob(options.state);
    if (endsWork &&
        !options.confirmation.Given("Job " + job.guid + " is RUNNING. Make it " + options.state + "?")) {
        exitStatus = kFailed;
        return;
    }
    JobHelper().UpdateJobStatus(connection.connectionString, connection.provider, connection.nameQualifier,
                                job.guid, options.state);
    if (options.json) {
        std::cout << OneLine({{"job", job.guid}, {"before", job.state}, {"state", options.state}}) << '\n';
    } else {
        std::cout << "Job " << OnOneLine(job.guid) << " was " << OnOneLine(job.state) << " and is now "
                  << OnOneLine(options.state) << ".\n";
    }
}

}  // namespace

void AddSetStateCommand(CLI::App& app, int& exitStatus) {
    CLI::App* const command = app.add_subcommand("set-state", "Set the state of a job");
    command->group(kJobs);
    const auto options = std::make_shared<SetStateOptions>();
    command->add_option("JOB", options->job, "The GUID of the job")->type_name("")->required();
    command->add_option("STATE", options->state, "CREATING, READY, QUEUED, RUNNING, COMPLETE or CANCELLED")
        ->required();
    command->add_flag("--force", options->force, "Set any other state too");
    options->confirmation.AddTo(*command);
    command->add_flag("--json", options->json, "Print one JSON object");
    options->store.AddTo(*command);
    command->footer("Example:\n  kxjob set-state 6F9619FF-8B86-4D01-B42D-00CF4FC964FF CANCELLED --yes\n");
    command->callback([options, &exitStatus] { SetState(*options, exitStatus); });
}

}  // namespace kxjob::command
