#pragma once

#include <CLI/CLI.hpp>

namespace kxjob::command {

/// `kxjob demo [FOLDER]`: one job on the whole road, on real files, in a store of its own.
void AddDemoCommand(CLI::App& app, int& exitStatus);

}  // namespace kxjob::command
