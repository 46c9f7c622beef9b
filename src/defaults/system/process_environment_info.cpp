#include "defaults/system/process_environment_info.h"

#include <cstddef>

#include "defaults/system/own_ids.h"
#include "defaults/system/own_names.h"

namespace kxjob {

std::string HostPart(const std::string& hostName) {
    return hostName.substr(0, hostName.find('.'));
}

std::string DomainPart(const std::string& hostName) {
    const std::size_t dot = hostName.find('.');
    return dot != std::string::npos && dot + 1 < hostName.size() ? hostName.substr(dot + 1) : "local";
}

std::int32_t ProcessEnvironmentInfo::ProcessId() {
    return OwnProcessId();
}

std::int32_t ProcessEnvironmentInfo::ThreadId() {
    return OwnThreadId();
}

std::string ProcessEnvironmentInfo::FirstMachineText() {
    return DomainPart(OwnHostName());
}

std::string ProcessEnvironmentInfo::SecondMachineText() {
    return HostPart(OwnHostName());
}

std::string ProcessEnvironmentInfo::FirstUserText() {
    return SecondMachineText();
}

std::string ProcessEnvironmentInfo::SecondUserText() {
    return OwnUserName();
}

}  // namespace kxjob
