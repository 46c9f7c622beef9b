#include "work/work_command.h"

#include <unistd.h>

#include <iostream>
#include <memory>

#include "store/store_options.h"
#include "work/host/work_host.h"

namespace kxjob::command {
namespace {

struct GivenOptions {
    StoreOptions store;
    WorkOptions work;
};

void Work(GivenOptions& given) {
    given.work.store = given.store.Resolve();
    WorkReport report(std::cout, std::cerr,
                      {given.work.json, !given.work.json && isatty(STDOUT_FILENO) != 0});
    RunHost(given.work, report);
}

}  // namespace

void AddWorkCommand(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("work", "Execute jobs: claim their items and run them");
    const auto given = std::make_shared<GivenOptions>();
    WorkOptions& work = given->work;
    command->add_option("--threads", work.threads, "How many items are worked on at once")
        ->check(CLI::Range(1, 256))
        ->capture_default_str();
    command->add_option("--type", work.type, "Only jobs of this type")->type_name("TEXT");
    CLI::Option* const once =
        command->add_flag("--once", work.once, "End after one job was worked to its end");
    command->add_flag("--until-empty", work.untilEmpty, "End when no job has anything left to do")
        ->excludes(once);
    command->add_option("--lease", work.leaseSeconds, "Seconds without a sign of life that end a claim")
        ->check(CLI::Range(0.2, 86400.0))
        ->capture_default_str();
    command->add_option("--poll", work.pollSeconds, "Seconds between two looks for work when there is none")
        ->check(CLI::Range(0.01, 3600.0))
        ->capture_default_str();
    command->add_option("--lot-limit", work.mostInALot, "The most items that a thread claims at once")
        ->check(CLI::Range(1, 10000))
        ->capture_default_str();
    command->add_flag("--json", work.json, "Print one JSON object for each event");
    given->store.AddTo(*command);
    command->callback([given] { Work(*given); });
}

}  // namespace kxjob::command
