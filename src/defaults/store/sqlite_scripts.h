#pragma once

#include <span>

#include "defaults/store/script_text.h"

namespace kxjob {

/// The scripts for SQLite. An index carries the schema, and then its table must not.
std::span<const ScriptText> SqliteScripts();

}  // namespace kxjob
