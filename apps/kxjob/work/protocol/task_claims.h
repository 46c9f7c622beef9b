#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "work/protocol/job_store.h"

namespace kxjob::command {

/// One registered task: who may hold items of which job.
struct TaskName {
    std::string job;
    std::string task;
};

/// Where in a job, by sequence number, the items of a task are.
struct SequenceRange {
    std::int64_t first = 0;
    std::int64_t last = -1;  // before `first`: nowhere
};

/// How a task stands in the store.
struct TaskStanding {
    std::string task;
    bool isRunning = false;
    std::string command;
};

/// A RUNNING task whose claim has run out, and until when it held.
struct ExpiredTask {
    TaskName name;
    std::string heldUntil;
};

/// Registers a task of the calling thread, whose claim holds for `leaseSeconds` from now; gives its GUID.
/// Rows that an earlier try of this thread left without a claim are closed first.
std::string RegisterTask(JobStore& store, const std::string& job, const std::string& description,
                         double leaseSeconds);

/// Lets the claims of these tasks hold for `leaseSeconds` from now, if they are still RUNNING.
void RenewClaims(JobStore& store, const std::vector<std::string>& tasks, double leaseSeconds);

/// How these tasks stand; one whose row is gone is not RUNNING.
std::vector<TaskStanding> StandingsOf(JobStore& store, const std::vector<std::string>& tasks);

/// Ends a RUNNING task as COMPLETE or FAILED, and gives back the items that it still holds. These are looked
/// for in `where`, in the whole job when it is not known.
void CloseTask(JobStore& store, const TaskName& name, bool succeeded,
               const std::optional<SequenceRange>& where = std::nullopt);

/// The RUNNING tasks whose claims have run out by the store's clock. Those of other programs, which have no
/// claim, are none of them.
std::vector<ExpiredTask> ExpiredTasks(JobStore& store);

/// Ends a task as FAILED and gives back its items, unless its claim has been renewed since it was read.
void TakeOver(JobStore& store, const ExpiredTask& task);

/// True when the task is FAILED.
bool IsTakenOver(JobStore& store, const std::string& task);

}  // namespace kxjob::command
