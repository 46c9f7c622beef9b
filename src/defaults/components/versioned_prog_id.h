#pragma once

#include <string>
#include <string_view>

namespace kxjob {

/// The ProgID that a template stands for: each "%v" is the installed version tag.
std::string VersionedProgId(const std::string& progIdTemplate, std::string_view versionTag);

}  // namespace kxjob
