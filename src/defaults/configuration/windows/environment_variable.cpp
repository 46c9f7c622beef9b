#include "defaults/configuration/environment_variable.h"

#include <windows.h>

#include "defaults/system/windows/wide_text.h"

namespace kxjob {

std::string VariableValue(const std::string& name) {
    const std::wstring wideName = ToWide(name);
    std::wstring value;
    // The room that it takes, or the length once there was room enough; another thread may let it grow in
    // between.
    DWORD size = GetEnvironmentVariableW(wideName.c_str(), nullptr, 0);
    while (size > value.size()) {
        value.resize(size);
        size = GetEnvironmentVariableW(wideName.c_str(), value.data(), size);
    }
    value.resize(size);
    return ToUtf8(value);
}

}  // namespace kxjob
