#pragma once

#include <string>

namespace kxjob::testing_support {

/// A statement with its values replaced by what they are, as ":JobGUID"; values that the library itself puts
/// there stay. Lists of values become one: "IN (:JobGUID, ...)".
std::string WithPlaceholders(const std::string& sql);

}  // namespace kxjob::testing_support
