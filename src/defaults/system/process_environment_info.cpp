#include "defaults/system/process_environment_info.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <vector>

namespace kxjob {
namespace {

/// Reads a name with one of the calls that fill a buffer and end the text with NUL.
std::string SystemName(int (*read)(char*, std::size_t)) {
    std::array<char, 257> buffer{};  // the last NUL stays whatever the call does
    if (read(buffer.data(), buffer.size() - 1) != 0) return {};
    return buffer.data();
}

std::string HostName() {
    return SystemName(gethostname);
}

}  // namespace

std::string HostPart(const std::string& hostName) {
    return hostName.substr(0, hostName.find('.'));
}

std::string DomainPart(const std::string& hostName, const std::string& nisDomain) {
    const std::size_t dot = hostName.find('.');
    if (dot != std::string::npos && dot + 1 < hostName.size()) return hostName.substr(dot + 1);
    const bool hasNisDomain = !nisDomain.empty() && nisDomain != "(none)";  // the kernel's word for none
    return hasNisDomain ? nisDomain : "local";
}

std::string UserName(uid_t user) {
    constexpr std::size_t kRoomForOneEntry = 16'384;
    std::vector<char> buffer(kRoomForOneEntry);
    passwd entry{};
    passwd* found = nullptr;
    const int problem = getpwuid_r(user, &entry, buffer.data(), buffer.size(), &found);
    return problem == 0 && found != nullptr ? std::string(found->pw_name) : std::to_string(user);
}

std::int32_t ProcessEnvironmentInfo::ProcessId() {
    return getpid();
}

std::int32_t ProcessEnvironmentInfo::ThreadId() {
    return gettid();
}

std::string ProcessEnvironmentInfo::FirstMachineText() {
    return DomainPart(HostName(), SystemName(getdomainname));
}

std::string ProcessEnvironmentInfo::SecondMachineText() {
    return HostPart(HostName());
}

std::string ProcessEnvironmentInfo::FirstUserText() {
    return SecondMachineText();
}

std::string ProcessEnvironmentInfo::SecondUserText() {
    return UserName(geteuid());
}

}  // namespace kxjob
