#include "work/host/work_host.h"

#include <atomic>
#include <exception>
#include <string>
#include <thread>
#include <vector>

#include "work/host/pulse.h"
#include "work/host/stop_signals.h"
#include "work/host/worker.h"

namespace kxjob::command {
namespace {

constexpr int kLookAround = 200;  // milliseconds

/// Whatever is wrong with the store from the start is no outage, and ends the host.
void RequireTables(const StoreConnection& connection) {
    JobStore store(connection);
    for (const char* table : {"job", "JobItem", "jobtask", "JobType"}) {
        store.Query("SELECT COUNT(*) FROM " + store.Table(table) + " WHERE 1 = 0");
    }
}

void RunWorker(HostContext& host, int number) {
    Worker worker(host, number);
    try {
        worker.Run();
    } catch (...) {
        host.state.Fail(std::current_exception());
        worker.GiveUp();
    }
}

/// Ends when all workers have.
void LookAfter(HostContext& host, StopSignals& signals, const std::atomic<int>& atWork) {
    while (atWork > 0) {
        if (signals.Wait(kLookAround) && !host.state.Stopping()) {
            host.report.Stopping();
            host.state.Stop();
        }
        host.report.ShowProgress();
    }
}

}  // namespace

void RunHost(const WorkOptions& options, WorkReport& report) {
    RequireTables(options.store);
    HostContext host(options, report);
    StopSignals signals;
    report.Begin(options.threads);
    Pulse pulse(host);
    std::jthread pulsing([&] { pulse.Run(); });
    std::atomic<int> atWork = options.threads;
    {
        std::vector<std::jthread> workers;
        for (int number = 1; number <= options.threads; ++number) {
            workers.emplace_back([&host, &atWork, number] {
                RunWorker(host, number);
                --atWork;
                StopSignals::Wake();
            });
        }
        LookAfter(host, signals, atWork);
    }
    pulse.Stop();
    pulsing.join();
    report.Summary();
    if (const std::exception_ptr failure = host.state.Failure()) std::rethrow_exception(failure);
}

}  // namespace kxjob::command
