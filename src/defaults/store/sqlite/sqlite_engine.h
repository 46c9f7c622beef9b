#pragma once

#include "defaults/store/engine.h"

namespace kxjob {

/// SQLite files by SQLite's own interface: "Driver=SQLite;Database=FILE".
Engine SqliteEngine();

}  // namespace kxjob
