#pragma once

#include "insight/doctor/finding.h"
#include "kxjob/store.h"

namespace kxjob::command {

/// Whether every table is there with every column, and may be read.
void CheckTables(Store& store, Findings& findings);

}  // namespace kxjob::command
