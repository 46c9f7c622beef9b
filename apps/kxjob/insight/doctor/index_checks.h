#pragma once

#include <string>

#include "insight/doctor/finding.h"
#include "kxjob/store.h"

namespace kxjob::command {

/// Whether the indexes are there that keep the library's statements fast, as far as the engine can be asked.
void CheckIndexes(Store& store, const std::string& nameQualifier, Findings& findings);

}  // namespace kxjob::command
