#pragma once

#include "insight/doctor/finding.h"
#include "kxjob/configured_connection.h"

namespace kxjob::command {

/// Whether this machine can create what executes the items of each job type, and what is told of its jobs'
/// ends, and whether every job that waits for workers has a type.
void CheckJobTypes(const StoreConnection& store, Findings& findings);

}  // namespace kxjob::command
