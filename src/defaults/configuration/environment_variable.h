#pragma once

#include <string>

namespace kxjob {

/// The value of an environment variable in UTF-8; empty when it is not set.
std::string VariableValue(const std::string& name);

}  // namespace kxjob
