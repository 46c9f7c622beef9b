#pragma once

#include <string>
#include <vector>

namespace kxjob {

/// Where a configuration file may be on this platform when none is named, the first place first.
std::vector<std::string> UsualPlaces();

}  // namespace kxjob
