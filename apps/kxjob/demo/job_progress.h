#pragma once

#include <chrono>
#include <cstddef>
#include <mutex>
#include <string>

#include "kxjob/configured_connection.h"
#include "kxjob/store.h"

namespace kxjob::command {

/// How many items have ended.
struct ItemCounts {
    std::size_t succeeded = 0;
    std::size_t failed = 0;
};

inline std::size_t Done(const ItemCounts& counts) {
    return counts.succeeded + counts.failed;
}

/// The counters of a job that several threads work on: counted in memory, written to the job's row every so
/// often and at the end. The increments of time between completions go in squared, as the statistics want
/// them.
class JobProgress {
public:
    JobProgress(StoreConnection connection, std::string jobGuid);

    /// An item has ended, at `endTime` as ISO text. On any thread.
    void ItemEnded(bool succeeded, const std::string& endTime);
    /// Writes the counters as they are now.
    void Write();

    ItemCounts Now() const;

private:
    std::string UpdateStatement();

    Store store_;  // runs on the connection of the thread that calls
    std::string jobGuid_;
    std::string startTime_;
    mutable std::mutex mutex_;
    ItemCounts counts_;
    std::string lastCompletion_;
    double sumOfSquaredIncrements_ = 0;
    std::chrono::steady_clock::time_point lastEnd_ = std::chrono::steady_clock::now();
};

}  // namespace kxjob::command
