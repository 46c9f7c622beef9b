#pragma once

#include <string>

#include "defaults/store/connection_string.h"

namespace kxjob {

/// Whether a connection string is one of OLE DB: it names a provider.
bool IsOleDb(const ConnectionString& connection);

/// The same store in ODBC's keywords. Known are the providers for SQL Server (SQLOLEDB, SQLNCLI...,
/// MSOLEDBSQL...) and the one for ODBC (MSDASQL); raises 0x80040000 + 704 for any other. Of SQL Server's, a
/// "Driver" entry chooses the driver; what has no counterpart is left out, what is not known is handed on as
/// it is.
std::string OleDbAsOdbc(const ConnectionString& connection);

}  // namespace kxjob
