#pragma once

#include <cstdint>
#include <string>

#include "kxjob/data_store_provider.h"

namespace kxjob {

/// Runs many statements in groups. Every added statement is executed once, in order; a group is stored whole
/// or not at all, and groups before a failing one stay.
class BatchSqlExecutor {
public:
    virtual ~BatchSqlExecutor() = default;
    /// Comes first. At most `batchSize` statements form a group.
    virtual void Open(const std::string& connectionString, DataStoreProvider provider,
                      std::int32_t batchSize) = 0;
    /// Takes one complete statement, and sends the group that it completes. An error names the failing
    /// statement.
    virtual void Add(const std::string& sql) = 0;
    /// Sends what is pending.
    virtual void Flush() = 0;
};

}  // namespace kxjob
