#include "work/host/result_buffer.h"

#include <utility>

namespace kxjob::command {

void ResultBuffer::Add(ItemResult result, double squaredIncrement) {
    const std::lock_guard lock(mutex_);
    if (results_.empty()) oldest_ = Clock::now();
    results_.push_back(std::move(result));
    squaredIncrements_ += squaredIncrement;
}

FinishedItems ResultBuffer::Write(JobStore& store, const TaskName& name) {
    const std::lock_guard lock(mutex_);
    return WriteLocked(store, name);
}

FinishedItems ResultBuffer::WriteIfOlderThan(std::chrono::milliseconds age, JobStore& store,
                                             const TaskName& name) {
    const std::unique_lock lock(mutex_, std::try_to_lock);  // who holds it is writing
    if (!lock.owns_lock() || results_.empty() || Clock::now() - oldest_ < age) return {};
    return WriteLocked(store, name);
}

FinishedItems ResultBuffer::WriteLocked(JobStore& store, const TaskName& name) {
    FinishItems(store, name, results_, squaredIncrements_);
    FinishedItems finished;
    for (const ItemResult& result : results_) ++(result.succeeded ? finished.succeeded : finished.failed);
    results_.clear();
    squaredIncrements_ = 0;
    return finished;
}

}  // namespace kxjob::command
