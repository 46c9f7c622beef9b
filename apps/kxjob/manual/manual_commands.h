#pragma once

#include <CLI/CLI.hpp>

namespace kxjob::command {

/// The hidden `kxjob --man`: prints the man page.
void AddManualFlag(CLI::App& app);

/// `kxjob completion SHELL`: prints the script by which a shell completes the command.
void AddCompletionCommand(CLI::App& app);

}  // namespace kxjob::command
