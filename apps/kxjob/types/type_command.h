#pragma once

#include <CLI/CLI.hpp>

namespace kxjob::command {

/// `kxjob type add|list|remove`: the job types of a container.
void AddTypeCommand(CLI::App& app, int& exitStatus);

}  // namespace kxjob::command
