#pragma once

#include <string>

namespace kxjob {

/// The machine's name: "host.domain" where the operating system knows a domain, else "host".
std::string OwnHostName();

/// The login name of the user that this process runs as, or what the operating system shows for one without.
std::string OwnUserName();

}  // namespace kxjob
