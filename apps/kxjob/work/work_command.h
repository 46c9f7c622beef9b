#pragma once

#include <CLI/CLI.hpp>

namespace kxjob::command {

/// `kxjob work`: a host that executes the jobs of a store.
void AddWorkCommand(CLI::App& app);

}  // namespace kxjob::command
