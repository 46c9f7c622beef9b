#pragma once

#include "defaults/store/engine.h"

namespace kxjob {

/// Every store that has an ODBC driver: "Driver={...};...", "DSN=...;...", or an OLE DB connection string.
Engine OdbcFamily();

}  // namespace kxjob
