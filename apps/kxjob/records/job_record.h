#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "kxjob/configured_connection.h"
#include "value_json.h"

namespace kxjob::command {

struct JobRecord {
    std::string guid;
    std::string description;
    std::string type;
    std::string parameters;
    std::string state;
    std::int64_t nextItem = 0;  // a sequence number
    std::int64_t totalItems = 0;
    std::int64_t succeededItems = 0;
    std::int64_t failedItems = 0;
    std::optional<std::string> started;  // ISO text, as every time here
    std::optional<std::string> lastCompletion;
    double sumOfSquaredIncrements = 0;  // of the seconds between two completions
    std::string applicationState;       // its GUID
    std::string failureNote;
};

/// What a job has to be; an empty text fits all.
struct JobFilter {
    std::string guid = {};
    std::string type = {};
    std::string state = {};
    std::string applicationState = {};
};

/// In the store's order.
std::vector<JobRecord> ReadJobs(const StoreConnection& store, const JobFilter& filter = {});

/// The job with this GUID, as typed or as GuidText makes it. Raises 0x80040000 + 702 when there is none.
JobRecord ReadJob(const StoreConnection& store, const std::string& guid);

/// How many of the job's items have ended.
inline std::int64_t EndedItems(const JobRecord& job) {
    return job.succeededItems + job.failedItems;
}

Json ToJson(const JobRecord& job);

}  // namespace kxjob::command
