#include "defaults/configuration/environment_variable.h"

#include <windows.h>

#include "defaults/system/windows/wide_text.h"

namespace kxjob::testing_support {

void EnvironmentVariable::Set(const std::optional<std::string>& value) {
    SetEnvironmentVariableW(ToWide(name_).c_str(), value ? ToWide(*value).c_str() : nullptr);
}

}  // namespace kxjob::testing_support
