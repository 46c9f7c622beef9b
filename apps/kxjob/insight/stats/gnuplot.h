#pragma once

#include <optional>
#include <string>

namespace kxjob::command {

/// What the program gnuplot prints for a script; nothing when this machine does not have it. Raises
/// std::runtime_error when it fails.
std::optional<std::string> RunGnuplot(const std::string& script);

}  // namespace kxjob::command
