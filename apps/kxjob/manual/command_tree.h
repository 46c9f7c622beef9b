#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace kxjob::command {

/// The sub-commands of a command that its help shows, by name.
std::vector<const CLI::App*> ShownCommands(const CLI::App& app);

/// The options of a command that its help shows, positional ones included.
std::vector<const CLI::Option*> ShownOptions(const CLI::App& app);

/// "--name", or the name of a positional one.
std::string NameOf(const CLI::Option& option);

/// Whether a value stands behind its name.
bool TakesValue(const CLI::Option& option);

/// What stands for the value, "FILE"; what it has to fulfil is left out.
std::string KindOf(const CLI::Option& option);

/// The values that it takes, when they can be listed.
std::vector<std::string> ChoicesOf(const CLI::Option& option);

}  // namespace kxjob::command
