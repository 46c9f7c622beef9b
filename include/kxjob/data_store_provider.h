#pragma once

#include <cstdint>

namespace kxjob {

/// The database flavours. The connection string alone decides which engine a statement goes to; the code
/// selects only the creation scripts, and 1 is reserved.
enum DataStoreProviders : std::int32_t {
    dspOracle = 1,
    dspSqlServer = 2,
    dspPostgreSql = 3,
    dspMariaDb = 4,
    dspSqlite = 5,
};

/// One of `DataStoreProviders`; callers may pass any code, and it is handed on as it is.
using DataStoreProvider = std::int32_t;

}  // namespace kxjob
