#pragma once

#include <set>
#include <string>

namespace kxjob::testing_support {

/// Why a statement may read all rows of a table on an engine; empty when it must not.
std::string ReasonToReadAll(const std::string& shape, const std::string& engine);

/// The statements that may, on an engine.
std::set<std::string> ShapesThatReadAll(const std::string& engine);

}  // namespace kxjob::testing_support
