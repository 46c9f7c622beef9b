#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "kxjob/configured_connection.h"

namespace kxjob::command {

/// How far a job is, seen once.
struct JobLook {
    std::string guid;
    std::string description;
    std::string state;
    std::int64_t totalItems = 0;
    std::int64_t succeededItems = 0;
    std::int64_t failedItems = 0;
};

inline std::int64_t EndedItems(const JobLook& look) {
    return look.succeededItems + look.failedItems;
}

/// Nobody works on the job any more.
inline bool HasEnded(const JobLook& look) {
    return look.state == "COMPLETE" || look.state == "CANCELLED";
}

/// Nothing when the job is not there.
std::optional<JobLook> LookAt(const StoreConnection& store, const std::string& guid);

/// Every job that is QUEUED or RUNNING.
std::vector<JobLook> LookAtOpenJobs(const StoreConnection& store);

}  // namespace kxjob::command
