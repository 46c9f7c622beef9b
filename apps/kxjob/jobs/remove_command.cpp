#include <algorithm>
#include <iostream>
#include <memory>

#include "command_groups.h"
#include "exit_status.h"
#include "jobs/job_commands.h"
#include "kxjob/job_helper.h"
#include "records/item_count_record.h"
#include "records/job_record.h"
#include "store/store_options.h"
#include "terminal/confirmation.h"
#include "terminal/counted.h"
#include "terminal/printable.h"

namespace kxjob::command {
namespace {

struct RemoveOptions {
    StoreOptions store;
    std::vector<std::string> jobs;
    Confirmation confirmation;
    bool json = false;
};

struct Doomed {
    JobRecord job;
    std::int64_t items = 0;
};

/// The jobs as typed, each once; raises when there is one that the store does not have.
std::vector<Doomed> Find(const StoreConnection& connection, const std::vector<std::string>& typed) {
    std::vector<Doomed> found;
    for (const std::string& guid : typed) {
        JobRecord job = ReadJob(connection, guid);
        const bool isTwice =
            std::ranges::any_of(found, [&](const Doomed& other) { return other.job.guid == job.guid; });
        if (isTwice) continue;
        const std::int64_t items = CountItems(connection, job.guid);
        found.push_back({.job = std::move(job), .items = items});
    }
    return found;
}

std::string Question(const std::vector<Doomed>& jobs) {
    std::int64_t items = 0;
    std::size_t running = 0;
    for (const Doomed& doomed : jobs) {
        items += doomed.items;
        if (doomed.job.state == "RUNNING") ++running;
    }
    std::string question = "Remove ";
    question += jobs.size() == 1 ? "job " + jobs.front().job.guid : Counted(jobs.size(), "job");
    question += " with " + Counted(items, "item") + "?";
    if (running > 0)
        question += jobs.size() == 1 ? " It is RUNNING." : " RUNNING are " + std::to_string(running) + ".";
    return question;
}

void Remove(const RemoveOptions& options, int& exitStatus) {
    const StoreConnection connection = options.store.ResolveForJobs();
    const std::vector<Doomed> jobs = Find(connection, options.jobs);
    if (!options.confirmation.Given(Question(jobs))) {
        exitStatus = kFailed;
        return;
    }
    Json removed = Json::array();
    for (const Doomed& doomed : jobs) {
        JobHelper().RemoveJobAndItems(connection.connectionString, connection.provider,
                                      connection.nameQualifier, doomed.job.guid);
        removed.push_back({{"job", doomed.job.guid}, {"items", doomed.items}});
        if (!options.json) {
            std::cout << "Removed job " << OnOneLine(doomed.job.guid) << " with "
                      << Counted(doomed.items, "item") << ".\n";
        }
    }
    if (options.json) std::cout << OneLine({{"removed", removed}}) << '\n';
}

}  // namespace

void AddRemoveCommand(CLI::App& app, int& exitStatus) {
    CLI::App* const command = app.add_subcommand("remove", "Remove jobs with their items and tasks");
    command->group(kJobs);
    const auto options = std::make_shared<RemoveOptions>();
    command->add_option("JOB", options->jobs, "The GUIDs of the jobs")->type_name("")->required();
    options->confirmation.AddTo(*command);
    command->add_flag("--json", options->json, "Print one JSON object");
    options->store.AddTo(*command);
    command->footer("Example:\n  kxjob remove 6F9619FF-8B86-4D01-B42D-00CF4FC964FF --yes\n");
    command->callback([options, &exitStatus] { Remove(*options, exitStatus); });
}

}  // namespace kxjob::command
