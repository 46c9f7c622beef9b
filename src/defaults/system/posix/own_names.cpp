#include "defaults/system/own_names.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <vector>

#include "defaults/system/posix/posix_names.h"

namespace kxjob {
namespace {

/// Reads a name with one of the calls that fill a buffer and end the text with NUL.
std::string SystemName(int (*read)(char*, std::size_t)) {
    std::array<char, 257> buffer{};  // the last NUL stays whatever the call does
    if (read(buffer.data(), buffer.size() - 1) != 0) return {};
    return buffer.data();
}

}  // namespace

std::string WithNisDomain(const std::string& hostName, const std::string& nisDomain) {
    const std::size_t dot = hostName.find('.');
    const bool hasOwnDomain = dot != std::string::npos && dot + 1 < hostName.size();
    const bool hasNisDomain = !nisDomain.empty() && nisDomain != "(none)";  // the kernel's word for none
    return hasOwnDomain || !hasNisDomain ? hostName : hostName.substr(0, dot) + "." + nisDomain;
}

std::string LoginName(uid_t user) {
    constexpr std::size_t kRoomForOneEntry = 16'384;
    std::vector<char> buffer(kRoomForOneEntry);
    passwd entry{};
    passwd* found = nullptr;
    const int problem = getpwuid_r(user, &entry, buffer.data(), buffer.size(), &found);
    return problem == 0 && found != nullptr ? std::string(found->pw_name) : std::to_string(user);
}

std::string OwnHostName() {
    return WithNisDomain(SystemName(gethostname), SystemName(getdomainname));
}

std::string OwnUserName() {
    return LoginName(geteuid());
}

}  // namespace kxjob
