#pragma once

#include <ostream>
#include <vector>

#include "insight/stats/job_statistics.h"

namespace kxjob::command {

/// One line a job.
void PrintStatistics(std::ostream& out, const std::vector<JobStatistics>& jobs);

}  // namespace kxjob::command
