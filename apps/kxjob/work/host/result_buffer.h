#pragma once

#include <chrono>
#include <cstdint>
#include <mutex>
#include <vector>

#include "work/protocol/item_results.h"

namespace kxjob::command {

/// How many items a write has finished.
struct FinishedItems {
    std::uint64_t succeeded = 0;
    std::uint64_t failed = 0;
};

/// The results of one task that are not in the store yet. Its worker adds; the worker and the pulse write, so
/// that a long item does not keep the results of those before it.
class ResultBuffer {
public:
    void Add(ItemResult result, double squaredIncrement);
    /// Writes all of them. When that fails they stay, to be written again.
    FinishedItems Write(JobStore& store, const TaskName& name);
    /// The same if the oldest is older than that.
    FinishedItems WriteIfOlderThan(std::chrono::milliseconds age, JobStore& store, const TaskName& name);

private:
    using Clock = std::chrono::steady_clock;

    FinishedItems WriteLocked(JobStore& store, const TaskName& name);

    std::mutex mutex_;
    std::vector<ItemResult> results_;
    double squaredIncrements_ = 0;
    Clock::time_point oldest_;
};

}  // namespace kxjob::command
