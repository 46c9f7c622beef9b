#pragma once

#include <CLI/CLI.hpp>

namespace kxjob::command {

/// `kxjob watch [JOB]`: how far one job is, or every job that is worked on, until it has ended.
void AddWatchCommand(CLI::App& app, int& exitStatus);

}  // namespace kxjob::command
