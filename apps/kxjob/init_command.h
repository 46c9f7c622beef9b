#pragma once

#include <CLI/CLI.hpp>

namespace kxjob::command {

/// `kxjob init`: makes the tables of a store, and its database file where there is none yet.
void AddInitCommand(CLI::App& app);

}  // namespace kxjob::command
