#pragma once

#include <optional>
#include <string>

#include "kxjob/store.h"

namespace kxjob::command {

/// The rows of a SELECT on a table that a container need not have; nothing where it has none.
std::optional<Value> QueryOptionalTable(Store& store, const std::string& sql);

}  // namespace kxjob::command
