#include "defaults/configuration/environment_variable.h"

#include <cstdlib>

namespace kxjob {

std::string VariableValue(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value == nullptr ? std::string() : std::string(value);
}

}  // namespace kxjob
