#pragma once

#include <string>

#include "kxjob/data_store_provider.h"
#include "kxjob/export.h"

namespace kxjob {

/// What a call needs to find its store.
struct StoreConnection {
    std::string connectionString;
    DataStoreProvider provider = dspSqlite;
    std::string nameQualifier;
};

/// The connection that the configuration file names. The file is the first of `KXJOB_CONFIG`, ./kxjob.conf,
/// $XDG_CONFIG_HOME/kxjob/kxjob.conf and /etc/kxjob.conf. Raises 0x80040000 + 704 when none names one.
KXJOB_EXPORT StoreConnection ConfiguredConnection();

}  // namespace kxjob
