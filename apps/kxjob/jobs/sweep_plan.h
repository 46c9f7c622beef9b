#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "kxjob/configured_connection.h"
#include "value_json.h"

namespace kxjob::command {

/// A job that a sweep removes.
struct IrrelevantJob {
    std::string guid;
    std::string type;
    std::string state;
    std::string applicationState;  // neither production's nor development's
    std::int64_t items = 0;
};

/// An item or a task that a sweep removes because its job does not exist.
struct Orphan {
    std::string guid;
    std::string job;  // empty for a task of none
};

/// What a sweep of the container would remove if it came now.
struct SweepPlan {
    std::string production;  // the GUIDs of the two states; a null GUID where there is none
    std::string development;
    std::vector<IrrelevantJob> jobs;
    std::vector<Orphan> items;
    std::vector<Orphan> tasks;
};

/// Whether there is nothing to remove.
inline bool IsEmpty(const SweepPlan& plan) {
    return plan.jobs.empty() && plan.items.empty() && plan.tasks.empty();
}

/// Looks with the conditions that RemoveIrrelevantJobsInAllContainers has in its statements.
SweepPlan PlanSweep(const StoreConnection& connection);

/// Why the job goes, as a sentence.
std::string ReasonFor(const SweepPlan& plan, const IrrelevantJob& job);

Json ToJson(const SweepPlan& plan);

}  // namespace kxjob::command
