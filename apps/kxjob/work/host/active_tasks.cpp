#include "work/host/active_tasks.h"

#include <utility>

namespace kxjob::command {

void ActiveTasks::Add(std::shared_ptr<ActiveTask> task) {
    const std::lock_guard lock(mutex_);
    tasks_.push_back(std::move(task));
}

void ActiveTasks::Remove(const std::shared_ptr<ActiveTask>& task) {
    const std::lock_guard lock(mutex_);
    std::erase(tasks_, task);
}

std::vector<std::shared_ptr<ActiveTask>> ActiveTasks::All() const {
    const std::lock_guard lock(mutex_);
    return tasks_;
}

}  // namespace kxjob::command
