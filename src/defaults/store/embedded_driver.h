#pragma once

#include "defaults/store/connection_string.h"

namespace kxjob {

/// Whether a connection string asks for the engine that is linked in: "Driver=SQLite".
bool NamesEmbeddedDriver(const ConnectionString& connection);

}  // namespace kxjob
