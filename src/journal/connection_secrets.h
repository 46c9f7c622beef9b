#pragma once

#include <string>
#include <string_view>

#include "kxjob/value.h"

namespace kxjob {

/// A connection string with the value of every keyword that ends in PWD or Password replaced by "***". Where
/// a value's end is in doubt, more is hidden rather than less.
std::string WithoutSecrets(std::string_view text);

/// The same for a text; any other value as it is.
Value ValueWithoutSecrets(const Value& value);

/// The same for a configuration document that holds a connection string: there a value ends with its line.
std::string DocumentWithoutSecrets(std::string_view text);
Value DocumentValueWithoutSecrets(const Value& value);

}  // namespace kxjob
