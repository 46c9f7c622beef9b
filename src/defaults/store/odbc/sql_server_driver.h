#pragma once

#include <string_view>

namespace kxjob {

/// The ODBC driver that stands in for an OLE DB provider for SQL Server, named in lower case without its
/// version.
std::string_view SqlServerDriver(std::string_view provider);

}  // namespace kxjob
