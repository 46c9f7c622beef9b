#include <iostream>
#include <map>
#include <memory>

#include "command_groups.h"
#include "exit_status.h"
#include "jobs/job_commands.h"
#include "jobs/sweep_plan.h"
#include "kxjob/job_helper.h"
#include "records/application_state_record.h"
#include "store/store_options.h"
#include "terminal/confirmation.h"
#include "terminal/counted.h"
#include "terminal/text_table.h"

namespace kxjob::command {
namespace {

struct SweepOptions {
    StoreOptions store;
    Confirmation confirmation;
    bool dryRun = false;
    bool json = false;
};

std::string Summary(const SweepPlan& plan) {
    return Counted(plan.jobs.size(), "job") + ", " + Counted(plan.items.size(), "orphaned item") + " and " +
           Counted(plan.tasks.size(), "orphaned task");
}

std::string NamedState(const std::string& guid) {
    return guid == kNullGuid ? "not there" : guid;
}

/// By the job that is missing: a list of each would tell a person less.
void PrintOrphans(const std::vector<Orphan>& orphans, const std::string& kind) {
    if (orphans.empty()) return;
    std::map<std::string, std::size_t> counts;
    for (const Orphan& orphan : orphans) ++counts[orphan.job];
    TextTable table({"of job", kind + "s", "why"});
    for (const auto& [job, count] : counts) {
        table.AddRow({job, std::to_string(count),
                      job.empty() ? "of no job, and no job stays" : "there is no such job"});
    }
    table.Print(std::cout, Counted(orphans.size(), "orphaned " + kind));
}

void Print(const SweepPlan& plan) {
    std::cout << "PRODUCTION is " << NamedState(plan.production) << ", DEVELOPMENT is "
              << NamedState(plan.development) << ".\n\n";
    if (IsEmpty(plan)) {
        std::cout << "There is nothing to remove.\n";
        return;
    }
    if (!plan.jobs.empty()) {
        TextTable table({"job", "type", "state", "items", "application state, which is neither"});
        for (const IrrelevantJob& job : plan.jobs) {
            table.AddCells({{job.guid},
                            {job.type},
                            StateCell(job.state),
                            {std::to_string(job.items)},
                            {job.applicationState}});
        }
        table.Print(std::cout, Counted(plan.jobs.size(), "irrelevant job"), Palette::OfStandardOutput());
    }
    PrintOrphans(plan.items, "item");
    PrintOrphans(plan.tasks, "task");
}

void Sweep(const SweepOptions& options, int& exitStatus) {
    const StoreConnection connection = options.store.ResolveForJobs();
    const SweepPlan plan = PlanSweep(connection);
    if (!options.json) Print(plan);
    if (!options.dryRun && !IsEmpty(plan)) {
        if (!options.confirmation.Given("Remove " + Summary(plan) + "?")) {
            exitStatus = kFailed;
            return;
        }
        JobHelper().RemoveIrrelevantJobsInAllContainers(connection.connectionString, connection.provider,
                                                        connection.nameQualifier);
        if (!options.json) std::cout << "Removed " << Summary(plan) << ".\n";
    }
    if (options.json) {
        Json json = ToJson(plan);
        json["removed"] = !options.dryRun && !IsEmpty(plan);
        std::cout << OneLine(json) << '\n';
    }
}

}  // namespace

void AddSweepCommand(CLI::App& app, int& exitStatus) {
    CLI::App* const command = app.add_subcommand(
        "sweep", "Remove the jobs that are neither of PRODUCTION nor of DEVELOPMENT, and what has no job");
    command->group(kUpkeep);
    const auto options = std::make_shared<SweepOptions>();
    command->add_flag("--dry-run", options->dryRun, "Only show what would be removed, and why");
    options->confirmation.AddTo(*command);
    command->add_flag("--json", options->json, "Print one JSON object");
    options->store.AddTo(*command);
    command->footer("Example:\n  kxjob sweep --dry-run\n");
    command->callback([options, &exitStatus] { Sweep(*options, exitStatus); });
}

}  // namespace kxjob::command
