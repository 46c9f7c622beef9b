#pragma once

#include <CLI/CLI.hpp>

namespace kxjob::command {

/// `kxjob doctor`: whether everything is in order that jobs need, on this machine and in the store.
void AddDoctorCommand(CLI::App& app, int& exitStatus);

}  // namespace kxjob::command
