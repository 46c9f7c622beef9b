#include "insight/watch/watch_command.h"

#include <unistd.h>

#include <chrono>
#include <iostream>
#include <memory>

#include "command_groups.h"
#include "exit_status.h"
#include "insight/watch/signal_pause.h"
#include "insight/watch/watch_list.h"
#include "insight/watch/watch_view.h"
#include "records/job_record.h"
#include "store/store_options.h"

namespace kxjob::command {
namespace {

constexpr int kRoundsBetweenPlainLines = 5;

struct WatchOptions {
    std::string job;
    StoreOptions store;
    double interval = 1;
    bool untilComplete = false;
    bool json = false;
};

std::unique_ptr<WatchView> ViewFor(const WatchOptions& options) {
    if (options.json) return MakeJsonView(std::cout);
    if (isatty(STDOUT_FILENO) != 0) return MakeBarView(std::cout);
    return MakePlainView(std::cout, kRoundsBetweenPlainLines);
}

double Seconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// Shows one look after the other. Gives the signal that ended it, or 0 for an end by itself.
int WatchUntilTheEnd(WatchList& list, const WatchOptions& options, SignalPause& pause) {
    const std::unique_ptr<WatchView> view = ViewFor(options);
    const bool hasEnd = options.untilComplete || !options.job.empty();
    for (;;) {
        view->Show(list.Look(Seconds()));
        if (hasEnd && list.IsDone()) return 0;
        if (const int signal = pause.Wait(options.interval); signal != 0) return signal;
    }
}

int RunWatch(const WatchOptions& options) {
    const StoreConnection store = options.store.ResolveForJobs();
    WatchList list(store, options.job.empty() ? "" : ReadJob(store, options.job).guid);
    int signal = 0;
    {
        SignalPause pause;
        signal = WatchUntilTheEnd(list, options, pause);
    }
    if (signal != 0) EndBySignal(signal);
    return list.IsRemoved() ? kFailed : kDone;
}

}  // namespace

void AddWatchCommand(CLI::App& app, int& exitStatus) {
    CLI::App* const command =
        app.add_subcommand("watch", "Show how far one job is, or every job that is QUEUED or RUNNING");
    command->group(kExecution);
    const auto options = std::make_shared<WatchOptions>();
    command->add_option("JOB", options->job, "The job's GUID; it is watched until it has ended");
    command->add_option("--interval", options->interval, "How many seconds lie between two looks")
        ->check(CLI::Range(0.01, 86'400.0))
        ->capture_default_str();
    command->add_flag("--until-complete", options->untilComplete, "Without JOB: end when no job is left");
    options->store.AddTo(*command);
    command->add_flag("--json", options->json, "Print one JSON object a line, for every job at every look");
    command->callback([options, &exitStatus] { exitStatus = RunWatch(*options); });
}
}  // namespace kxjob::command
