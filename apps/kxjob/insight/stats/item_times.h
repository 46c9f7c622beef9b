#pragma once

#include <map>
#include <string>
#include <vector>

#include "insight/stats/job_statistics.h"
#include "kxjob/configured_connection.h"

namespace kxjob::command {

/// The times of the items that have ended, by the GUID of their job.
std::map<std::string, std::vector<ItemTime>> ReadItemTimes(const StoreConnection& connection,
                                                           const std::vector<JobRecord>& jobs);

}  // namespace kxjob::command
