#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "kxjob/configured_connection.h"

namespace kxjob::command {

/// A QUEUED or RUNNING job, as the selection of the next job looks at it.
struct OfferedJob {
    std::string guid;
    std::string type;
    std::string state;
    std::int64_t runningTasks = 0;
    bool hasType = false;        // one job whose type is not there fails the whole selection
    bool canBeWorkedOn = false;  // this machine can create the component of its type
};

std::vector<OfferedJob> ReadOfferedJobs(const StoreConnection& store);

/// Where a job stands among others: JobHelper::GetNextJob gives one of the jobs with the lowest place, each
/// with the same chance. Nothing for a job that it never gives on this machine.
std::optional<std::int64_t> PlaceOf(const OfferedJob& job);

/// The jobs that come before one with this place, the next one first; and those that share it.
std::vector<OfferedJob> JobsAheadOf(std::int64_t place, const std::vector<OfferedJob>& jobs);
std::vector<OfferedJob> JobsAt(std::int64_t place, const std::vector<OfferedJob>& jobs);

/// The jobs that GetNextJob chooses among.
std::vector<OfferedJob> NextJobs(const std::vector<OfferedJob>& jobs);

}  // namespace kxjob::command
