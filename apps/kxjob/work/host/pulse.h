#pragma once

#include <atomic>
#include <chrono>

#include "work/host/host_context.h"
#include "work/protocol/job_store.h"

namespace kxjob::command {

/// What a host does at regular times, on a thread of its own: lets the claims of its tasks hold on, hears
/// what became of the tasks, writes results that a long item would keep, and takes over tasks of hosts that
/// died.
class Pulse {
public:
    explicit Pulse(HostContext& host);

    /// Until Stop.
    void Run();
    void Stop();
    /// Does now what is due.
    void Beat();

private:
    using Clock = std::chrono::steady_clock;

    void Renew();
    void WriteOldResults();
    void TakeOverExpired();

    HostContext& host_;
    JobStore store_;
    std::atomic<bool> isStopped_ = false;
    Clock::duration lease_;
    Clock::time_point nextRenewal_ = Clock::now();
    Clock::time_point nextTakeover_;
};

}  // namespace kxjob::command
