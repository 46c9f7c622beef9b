#pragma once

#include <string>

#include "kxjob/data_store_provider.h"

namespace kxjob::testing_support {

/// Makes a store that every call of tests/support/every_method.h finds work in: a RUNNING job with an item, a
/// RUNNING task, an editor lock and a failure note, in an application state that is neither of its
/// container's two; its type, which this machine can create; a RUNTIME subsystem without a KVR flag.
void SeedStore(const std::string& connectionString, const std::string& qualifier,
               DataStoreProvider provider = dspSqlite);

}  // namespace kxjob::testing_support
