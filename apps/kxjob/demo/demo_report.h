#pragma once

#include <ostream>
#include <string>

#include "kxjob/configured_connection.h"

namespace kxjob::command {

/// Prints what the store says of a job, read back through JobHelper: statistics, item states, owners, tasks,
/// a few results, and the failure notes.
void PrintJobReport(std::ostream& out, const StoreConnection& store, const std::string& jobGuid);

}  // namespace kxjob::command
