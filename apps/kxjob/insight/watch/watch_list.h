#pragma once

#include <string>
#include <vector>

#include "insight/watch/watch_view.h"
#include "kxjob/configured_connection.h"

namespace kxjob::command {

/// The jobs that are watched, from one look to the next.
class WatchList {
public:
    /// One job until it has ended or, when `job` is empty, every job that is QUEUED or RUNNING.
    WatchList(StoreConnection store, std::string job) : store_(std::move(store)), job_(std::move(job)) {}

    /// Looks at them at a time in seconds. A job is among them once more after its end.
    const std::vector<WatchedJob>& Look(double time);
    /// Whether the last look has found no job that goes on.
    bool IsDone() const;
    /// Whether the one job has been removed.
    bool IsRemoved() const { return !job_.empty() && !jobs_.empty() && jobs_.front().isRemoved; }

private:
    void LookAgain(WatchedJob& job) const;

    StoreConnection store_;
    std::string job_;
    std::vector<WatchedJob> jobs_;
};

}  // namespace kxjob::command
