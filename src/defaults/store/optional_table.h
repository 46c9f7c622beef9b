#pragma once

#include <string>

#include "defaults/store/session_cache.h"
#include "kxjob/value.h"

namespace kxjob {

/// The rows of a SELECT on a table that a container need not have: Empty when there is no row or no table.
Value QueryOptionalTable(SessionCache& sessions, const std::string& connectionString, const std::string& sql);

}  // namespace kxjob
