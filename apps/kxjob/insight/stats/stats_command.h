#pragma once

#include <CLI/CLI.hpp>

namespace kxjob::command {

/// `kxjob stats [JOB...]`: how jobs went, as a table and as a plot of their finished items.
void AddStatsCommand(CLI::App& app);

}  // namespace kxjob::command
