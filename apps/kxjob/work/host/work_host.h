#pragma once

#include "work/host/host_context.h"

namespace kxjob::command {

/// Works jobs until there is nothing more to do, or a signal ends it. Raises the first error that waiting
/// does not mend.
void RunHost(const WorkOptions& options, WorkReport& report);

}  // namespace kxjob::command
