#pragma once

#include <span>
#include <string_view>

namespace kxjob::command {

/// A table as the library uses it.
struct ExpectedTable {
    std::string_view name;                      // behind the qualifier
    std::span<const std::string_view> columns;  // all of them
    std::span<const std::string_view> indexes;  // the columns that each begins with
    bool isNeeded = true;                       // no method works without it
};

std::span<const ExpectedTable> ExpectedTables();

}  // namespace kxjob::command
