#pragma once

#include <string>
#include <vector>

#include "insight/why/job_standing.h"
#include "value_json.h"

namespace kxjob::command {

/// Who works on a job, for how long already, whose claim ran out, and who holds its editor lock.
std::vector<std::string> TaskSentences(const JobStanding& standing);

/// The RUNNING tasks: {"task","machine","process","ageSeconds","claim","claimSeconds","holdsLock"}. "claim"
/// is "none", "holds" or "ran out"; "claimSeconds" is how long it still holds, negative when it does not.
Json TasksJson(const JobStanding& standing);

}  // namespace kxjob::command
