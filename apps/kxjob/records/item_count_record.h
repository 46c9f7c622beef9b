#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "kxjob/configured_connection.h"
#include "value_json.h"

namespace kxjob::command {

/// How many items of a job are at one state.
struct StateCount {
    std::string state;  // empty: they wait to be worked on
    std::int64_t items = 0;
};

/// The same for the items that the tasks on one machine have worked on.
struct OwnerCount {
    std::string machine;
    std::string state;
    std::int64_t items = 0;
};

/// One for each state that an item of the job has, by name.
std::vector<StateCount> CountItemsByState(const StoreConnection& store, const std::string& job);

/// By machine and state.
std::vector<OwnerCount> CountItemsByOwner(const StoreConnection& store, const std::string& job);

/// How many items the job really has, whatever its counters say.
std::int64_t CountItems(const StoreConnection& store, const std::string& job);

Json ToJson(const StateCount& count);
Json ToJson(const OwnerCount& count);

}  // namespace kxjob::command
