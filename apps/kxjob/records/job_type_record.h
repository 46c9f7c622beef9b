#pragma once

#include <string>
#include <vector>

#include "kxjob/configured_connection.h"
#include "value_json.h"

namespace kxjob::command {

struct JobTypeRecord {
    std::string type;
    std::string description;
    std::string component;              // the ProgID of what executes an item
    std::string notificationComponent;  // and of what is told about the end of a job; empty for nobody
};

/// One job type, or every one when `type` is empty; by name.
std::vector<JobTypeRecord> ReadJobTypes(const StoreConnection& store, const std::string& type = {});

/// Whether this machine can create the component of this ProgID: next-job selection leaves jobs alone that it
/// cannot do.
bool CanCreateHere(const std::string& progId);

Json ToJson(const JobTypeRecord& type);

}  // namespace kxjob::command
