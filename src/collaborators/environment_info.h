#pragma once

#include <cstdint>
#include <string>

namespace kxjob {

/// Describes the process that runs a method.
class EnvironmentInfo {
public:
    virtual ~EnvironmentInfo() = default;
    virtual std::int32_t ProcessId() = 0;
    virtual std::int32_t ThreadId() = 0;
    /// The machine, shown as first\second.
    virtual std::string FirstMachineText() = 0;
    virtual std::string SecondMachineText() = 0;
    /// The user, shown as first\second.
    virtual std::string FirstUserText() = 0;
    virtual std::string SecondUserText() = 0;
};

}  // namespace kxjob
