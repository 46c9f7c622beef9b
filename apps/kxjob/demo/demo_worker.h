#pragma once

#include <atomic>
#include <string>
#include <vector>

#include "demo/job_progress.h"
#include "kxjob/configured_connection.h"

namespace kxjob::command {

struct DemoItem {
    std::string guid;
    std::string identifier;
};

/// The items of one job, handed out to threads one at a time.
class DemoItems {
public:
    explicit DemoItems(std::vector<DemoItem> items) : items_(std::move(items)) {}
    /// The next item that nobody has taken; null when all are.
    const DemoItem* Take();

private:
    std::vector<DemoItem> items_;
    std::atomic<std::size_t> next_ = 0;
};

/// One worker: registers a job task for the calling thread, does items until none is left, and unregisters.
/// An item that fails gets a failure note, and the work goes on. Raises what the store raises; the task is
/// FAILED then.
void WorkAsTask(const StoreConnection& connection, const std::string& jobGuid, const std::string& progId,
                const std::string& description, DemoItems& items, JobProgress& progress);

}  // namespace kxjob::command
