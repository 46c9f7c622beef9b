#pragma once

#include <functional>
#include <optional>
#include <string>

#include "work/protocol/job_store.h"

namespace kxjob::command {

/// A job that this host can do, and the components that its type names.
struct WorkableJob {
    std::string guid;
    std::string progId;
    std::string notificationProgId;  // empty: nobody wants to know
};

/// Which jobs a host takes.
struct WantedJobs {
    std::string type;  // empty: any
    std::string only;  // the one job; empty: any
    std::function<bool(const std::string& job)> isAvoided = [](const std::string&) { return false; };
};

struct JobChoice {
    /// A job with items to claim, or with nothing left but to be ended.
    std::optional<WorkableJob> job;
    /// Whether one of the jobs has items that wait or are in work anywhere.
    bool anythingLeft = false;
};

/// The job to work on next: the one that GetNextJob recommends if there is something to do, else of the
/// QUEUED and RUNNING jobs the one with the fewest RUNNING tasks. Nothing is written.
JobChoice ChooseJob(JobStore& store, const WantedJobs& wanted);

}  // namespace kxjob::command
