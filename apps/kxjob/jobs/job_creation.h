#pragma once

#include <functional>
#include <string>
#include <vector>

#include "jobs/item_input.h"
#include "kxjob/configured_connection.h"

namespace kxjob::command {

/// A job that is to be created.
struct NewJob {
    std::string guid;
    std::string type;
    std::string description;
    std::string applicationState;  // its GUID
    std::string parameters;
    std::vector<NewItem> items;
    bool leaveCreating = false;  // not made READY and then QUEUED
};

/// Creates the job with all of its items. When something fails, what has been made of it is removed again,
/// and the error raised; one that tells where the removal failed too. `itemsDone` is called with the number
/// of items so far.
void CreateWholeJob(const StoreConnection& store, const NewJob& job,
                    const std::function<void(std::size_t)>& itemsDone);

}  // namespace kxjob::command
