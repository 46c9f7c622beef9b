#pragma once

#include <CLI/CLI.hpp>
#include <ostream>
#include <string>

namespace kxjob::command {

/// Writes the man page of a command and all of its sub-commands.
void WriteManPage(std::ostream& out, const CLI::App& app, const std::string& version);

}  // namespace kxjob::command
