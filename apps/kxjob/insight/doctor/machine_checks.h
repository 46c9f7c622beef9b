#pragma once

#include "insight/doctor/finding.h"

namespace kxjob::command {

/// Which configuration file is used, and which of its keys nobody reads. False when the file cannot be read:
/// everything else would fail with it.
bool CheckConfigurationFile(Findings& findings);

/// Drivers that the machine's driver manager lets only one thread at a time into.
void CheckDriverThreads(Findings& findings);

}  // namespace kxjob::command
