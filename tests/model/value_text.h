#pragma once

#include <span>
#include <string>

#include "kxjob/value.h"

namespace kxjob::model {

/// A value with its kind, so that equal texts are equal values; for people too.
std::string ValueText(const Value& value);
std::string RowText(std::span<const Value> cells);

}  // namespace kxjob::model
