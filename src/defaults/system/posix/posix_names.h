#pragma once

#include <sys/types.h>

#include <string>

namespace kxjob {

/// The host's name with the NIS domain behind it, unless it has a domain of its own or there is none.
std::string WithNisDomain(const std::string& hostName, const std::string& nisDomain);

/// The login name of a user, or the number's digits when nobody has it.
std::string LoginName(uid_t user);

}  // namespace kxjob
