#include "defaults/configuration/environment_variable.h"

namespace kxjob::testing_support {

void EnvironmentVariable::Set(const std::optional<std::string>& value) {
    if (value) {
        setenv(name_.c_str(), value->c_str(), 1);
    } else {
        unsetenv(name_.c_str());
    }
}

}  // namespace kxjob::testing_support
