#include "defaults/store/odbc/sql_server_driver.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kxjob {
namespace {

using std::string_view;

/// Each provider's counterpart of the same generation.
constexpr std::array<std::pair<string_view, string_view>, 5> kDrivers = {{
    {"sqlncli", "SQL Native Client"},
    {"sqlncli10", "SQL Server Native Client 10.0"},
    {"sqlncli11", "SQL Server Native Client 11.0"},
    {"msoledbsql", "ODBC Driver 17 for SQL Server"},
    {"msoledbsql19", "ODBC Driver 18 for SQL Server"},
}};

/// Part of Windows.
constexpr string_view kOldest = "SQL Server";

}  // namespace

string_view SqlServerDriver(string_view provider) {
    const auto* driver = std::find_if(kDrivers.begin(), kDrivers.end(),
                                      [&](const auto& candidate) { return candidate.first == provider; });
    return driver == kDrivers.end() ? kOldest : driver->second;
}

}  // namespace kxjob
