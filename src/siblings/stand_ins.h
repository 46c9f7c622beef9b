#pragma once

#include <memory>

#include "collaborators/trace_log.h"
#include "defaults/components/component_catalog.h"
#include "defaults/store/session_cache.h"

namespace kxjob {

/// Adds the stand-ins of the application's components to a thread's catalog. They work on the thread's own
/// sessions and log.
void AddStandIns(ComponentCatalog& catalog, const std::shared_ptr<SessionCache>& sessions,
                 const std::shared_ptr<TraceLog>& log);

}  // namespace kxjob
