#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "kxjob/configured_connection.h"
#include "value_json.h"

namespace kxjob::command {

struct TaskRecord {
    std::string guid;
    std::string description;
    std::string job;
    std::string machine;
    std::int64_t process = 0;
    std::int64_t thread = 0;
    std::string lastItem;
    std::string command;
    std::string user;
    std::string state;
    std::optional<std::string> started;
    /// Of a task in state RUNNING: until when its claims hold, by the store's clock; nothing when it makes
    /// none.
    std::optional<std::string> ended;
    std::string lock;
};

/// The tasks of a job, or of every job when `job` is empty; in the order in which they started.
std::vector<TaskRecord> ReadTasks(const StoreConnection& store, const std::string& job = {});

Json ToJson(const TaskRecord& task);

}  // namespace kxjob::command
