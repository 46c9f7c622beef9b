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

/// The pulse on its thread, for as long as this lives.
class PulseThread {
public:
    explicit PulseThread(HostContext& host) : pulse_(host), thread_([this] { pulse_.Run(); }) {}
    PulseThread(const PulseThread&) = delete;
    PulseThread& operator=(const PulseThread&) = delete;
    ~PulseThread() { pulse_.Stop(); }

private:
    Pulse pulse_;
    std::jthread thread_;
};

/// The workers on their threads. Ends when all of them have.
class WorkerThreads {
public:
    explicit WorkerThreads(HostContext& host) : host_(host) {
        try {
            for (int number = 1; number <= host.options.threads; ++number) Start(number);
        } catch (...) {
            host_.state.Fail(std::current_exception());  // those that run end, and the host with them
        }
    }
    bool AreAtWork() const { return atWork_ > 0; }

private:
    void Start(int number) {
        ++atWork_;
        try {
            threads_.emplace_back([this, number] { Run(number); });
        } catch (...) {
            --atWork_;
            throw;
        }
    }
    void Run(int number) {
        Worker worker(host_, number);
        try {
            worker.Run();
        } catch (...) {
            host_.state.Fail(std::current_exception());
            worker.GiveUp();
        }
        --atWork_;
        StopSignals::Wake();
    }

    HostContext& host_;
    std::atomic<int> atWork_ = 0;
    std::vector<std::jthread> threads_;
};

}  // namespace

void RunHost(const WorkOptions& options, WorkReport& report) {
    RequireTables(options.store);
    HostContext host{options, report};
    StopSignals signals;
    report.Begin(options.threads);
    {
        const PulseThread pulse(host);
        const WorkerThreads workers(host);
        while (workers.AreAtWork()) {
            if (signals.Wait(kLookAround) && !host.state.Stopping()) {
                report.Stopping();
                host.state.Stop();
            }
            report.ShowProgress();
        }
    }
    report.Summary();
    if (const std::exception_ptr failure = host.state.Failure()) std::rethrow_exception(failure);
}

}  // namespace kxjob::command
