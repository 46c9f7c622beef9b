#pragma once

#include <string>
#include <vector>

#include "kxjob/data_store_provider.h"
#include "kxjob/store.h"

namespace kxjob::testing_support {

/// Makes a store that every call of tests/support/every_method.h finds work in: a RUNNING job with an item, a
/// RUNNING task, an editor lock and a failure note, in an application state that is neither of its
/// container's two; its type, which this machine can create; a RUNTIME subsystem without a KVR flag.
void SeedStore(const std::string& connectionString, const std::string& qualifier,
               DataStoreProvider provider = dspSqlite);

/// The statements that put its rows into the empty tables.
std::vector<std::string> SeedStatements(Store& store);

}  // namespace kxjob::testing_support
