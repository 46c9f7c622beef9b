#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "kxjob/configured_connection.h"

namespace kxjob::command {

/// Worker hosts of this program that run beside it until the jobs of one type have nothing left to do.
class DemoHosts {
public:
    /// Starts two hosts that share `threads`, or one for one thread.
    DemoHosts(const StoreConnection& store, const std::string& jobType, int threads);
    DemoHosts(const DemoHosts&) = delete;
    DemoHosts& operator=(const DemoHosts&) = delete;
    /// Waits for those that are left, having asked them to stop.
    ~DemoHosts();

    /// Whether one of them still runs. Raises when one has failed.
    bool AreAtWork();

private:
    void Start(const StoreConnection& store, const std::string& jobType, int threads);

    std::vector<pid_t> processes_;
};

}  // namespace kxjob::command
