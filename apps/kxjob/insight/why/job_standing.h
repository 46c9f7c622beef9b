#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "insight/selection/offered_jobs.h"
#include "records/job_record.h"
#include "records/task_record.h"

namespace kxjob::command {

/// Everything that decides whether a job is worked on, as the store tells it.
struct JobStanding {
    JobRecord job;
    std::string component;            // of its type; empty when the type is not there
    std::string componentProblem;     // why this machine cannot create it; empty when it can
    std::vector<OfferedJob> offered;  // every QUEUED and RUNNING job, this one included if it is one
    std::vector<TaskRecord> tasks;
    std::int64_t itemsWaiting = 0;
    std::int64_t itemsInWork = 0;
    std::int64_t itemsEnded = 0;
    std::string lock;       // the editor lock; empty when nobody has ever taken it
    std::string storeTime;  // ISO text
};

/// Raises 0x80040000 + 702 for an unknown job.
JobStanding ReadStanding(const StoreConnection& connection, const std::string& guid);

/// The job as one of those that are offered; null when it is neither QUEUED nor RUNNING.
const OfferedJob* Offered(const JobStanding& standing);

/// How the claim of a RUNNING task stands.
enum class Claim { None, Holds, RanOut };
Claim ClaimOf(const TaskRecord& task, const std::string& storeTime);

}  // namespace kxjob::command
