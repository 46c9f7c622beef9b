#include "insight/why/why_command.h"

#include <iostream>
#include <memory>

#include "command_groups.h"
#include "insight/why/explanation.h"
#include "store/store_options.h"

namespace kxjob::command {
namespace {

struct WhyOptions {
    std::string job;
    StoreOptions store;
    bool json = false;
};

void RunWhy(const WhyOptions& options) {
    const JobStanding standing = ReadStanding(options.store.ResolveForJobs(), options.job);
    const Explanation explanation = Explain(standing);
    if (options.json) {
        std::cout << OneLine(ToJson(standing, explanation)) << '\n';
    } else {
        for (const std::string& sentence : explanation.sentences) std::cout << sentence << '\n';
    }
}

}  // namespace

void AddWhyCommand(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("why", "Tell why a job is not worked on, or that it is");
    command->group(kExecution);
    const auto options = std::make_shared<WhyOptions>();
    command->add_option("JOB", options->job, "The job's GUID")->required();
    options->store.AddTo(*command);
    command->add_flag("--json", options->json, "Print one JSON object");
    command->callback([options] { RunWhy(*options); });
}

}  // namespace kxjob::command
