#pragma once

#include <sys/types.h>

#include <vector>

#include "stores/bench_store.h"

namespace kxjob::bench {

/// `kxjob work` in so many processes, which work on a store until nothing is left there. Its items' component
/// does nothing.
class HostProcesses {
public:
    HostProcesses(const BenchStore& store, int hosts);
    HostProcesses(const HostProcesses&) = delete;
    HostProcesses& operator=(const HostProcesses&) = delete;
    /// Kills those that still run.
    ~HostProcesses();

    /// Throws when one ends with an error.
    void WaitForEnd();

    static constexpr const char* kComponent = "Work_83.Worker";

private:
    std::vector<pid_t> processes_;
};

}  // namespace kxjob::bench
