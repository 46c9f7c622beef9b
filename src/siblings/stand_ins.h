#pragma once

#include <memory>
#include <span>

#include "collaborators/trace_log.h"
#include "defaults/store/session_cache.h"
#include "kxjob/component.h"

namespace kxjob {

/// What the stand-ins of a thread work on: its own sessions and its log.
struct StandInParts {
    std::shared_ptr<SessionCache> sessions;
    std::shared_ptr<TraceLog> log;
};

/// A stand-in for one of the application's components.
struct StandIn {
    const char* progId;
    ComponentRef (*create)(const StandInParts& parts);
};

/// All of them, in static storage.
std::span<const StandIn> StandIns();

}  // namespace kxjob
