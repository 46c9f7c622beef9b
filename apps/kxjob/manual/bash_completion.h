#pragma once

#include <CLI/CLI.hpp>
#include <ostream>

namespace kxjob::command {

/// Writes the script by which bash completes the command: its sub-commands, their options, the values that
/// can be listed, files, and the methods and arguments of `call`.
void WriteBashCompletion(std::ostream& out, const CLI::App& app);

}  // namespace kxjob::command
