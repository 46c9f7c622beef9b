#pragma once

#include <string_view>

namespace kxjob {

/// Whether anybody reads this key of a configuration document; `foldedKey` is in lower case.
bool IsKnownKey(std::string_view foldedKey);

}  // namespace kxjob
