#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "work/host/result_buffer.h"

namespace kxjob::command {

/// A task of this process that a worker is busy with.
struct ActiveTask {
    TaskName name;
    ResultBuffer results;
    std::atomic<bool> isLost = false;        // no longer RUNNING in the store: nothing that it does counts
    std::atomic<bool> isToldToStop = false;  // by a command in its row
};

/// Those of all workers, as the pulse wants them.
class ActiveTasks {
public:
    void Add(std::shared_ptr<ActiveTask> task);
    void Remove(const std::shared_ptr<ActiveTask>& task);
    std::vector<std::shared_ptr<ActiveTask>> All() const;

private:
    mutable std::mutex mutex_;
    std::vector<std::shared_ptr<ActiveTask>> tasks_;
};

}  // namespace kxjob::command
