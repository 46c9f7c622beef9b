#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "work/protocol/task_claims.h"

namespace kxjob::command {

/// How the work on a claimed item went.
struct ItemResult {
    std::string item;
    std::int64_t sequence = 0;
    bool succeeded = false;
    std::string start;
    std::string end;
    std::string note;  // empty: what the item's row holds stays
};

/// Writes how items went, and counts them in the job's row, in one transaction. It changes and counts the
/// items that the task still holds and no others: sent a second time, or after the claim was lost, it changes
/// nothing. `sumOfSquaredIncrements`: what the time between the completions adds to the job's sum.
void FinishItems(JobStore& store, const TaskName& name, const std::vector<ItemResult>& results,
                 double sumOfSquaredIncrements);

}  // namespace kxjob::command
