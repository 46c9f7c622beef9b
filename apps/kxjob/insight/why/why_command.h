#pragma once

#include <CLI/CLI.hpp>

namespace kxjob::command {

/// `kxjob why JOB`: why a job is not worked on, or that it is.
void AddWhyCommand(CLI::App& app);

}  // namespace kxjob::command
