#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace kxjob::command {

/// Takes what follows `call METHOD` out of the program's arguments: a value may be empty or look like an
/// option, and must reach its method as it is.
std::vector<std::string> TakeMethodArguments(std::vector<std::string>& arguments);

/// `kxjob call METHOD [--Argument value ...] [--explain FILE]`: one method of JobHelper, the answer as JSON.
void AddCallCommand(CLI::App& app, std::vector<std::string> methodArguments, int& exitStatus);

}  // namespace kxjob::command
