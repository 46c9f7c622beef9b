#pragma once

#include <string>
#include <string_view>

#include "kxjob/value.h"

namespace kxjob {

/// A connection string, or a configuration document that holds one, with the value of every keyword that ends
/// in PWD or Password replaced by "***". Where a value's end is in doubt, more is hidden rather than less.
std::string WithoutSecrets(std::string_view text);

/// The same for a text; any other value as it is.
Value ValueWithoutSecrets(const Value& value);

}  // namespace kxjob
