#pragma once

#include <cstdint>
#include <string>

#include "collaborators/environment_info.h"

namespace kxjob {

/// The machine is shown as domain\host, the user as host\user.
class ProcessEnvironmentInfo : public EnvironmentInfo {
public:
    std::int32_t ProcessId() override;
    std::int32_t ThreadId() override;
    std::string FirstMachineText() override;
    std::string SecondMachineText() override;
    std::string FirstUserText() override;
    std::string SecondUserText() override;
};

/// The part of a host name in front of its first dot.
std::string HostPart(const std::string& hostName);

/// What follows the first dot of a host name, else "local".
std::string DomainPart(const std::string& hostName);

}  // namespace kxjob
