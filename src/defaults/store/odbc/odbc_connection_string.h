#pragma once

#include <string>

#include "defaults/store/connection_string.h"

namespace kxjob {

/// Whether a connection string is for ODBC: it names a driver, a data source, or an OLE DB provider.
bool IsForOdbc(const ConnectionString& connection);

/// What goes to ODBC for a connection string: its own text, or its translation from OLE DB, and behind it
/// those settings that this library needs of the driver named there, unless the text says otherwise:
/// time-outs where the driver has its own, texts in UTF-8 and with the line breaks that they have, no new
/// file for a wrong name. Raises 0x80040000 + 704 for an OLE DB provider that is not known.
std::string OdbcConnectionString(const ConnectionString& connection);

/// Whether the driver keeps a database in a file, which it makes when it connects.
bool DriverMakesFiles(const ConnectionString& connection);

/// The same, but for a driver that makes the missing file: it is allowed to.
std::string OdbcCreatingConnectionString(const ConnectionString& connection);

}  // namespace kxjob
