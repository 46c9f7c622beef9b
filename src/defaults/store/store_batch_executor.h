#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "collaborators/batch_sql_executor.h"
#include "defaults/store/session_cache.h"

namespace kxjob {

/// Collects statements and sends each full group as one transaction. The description of an error names the
/// group by the places of its statements in everything added so far, and then the place in the group where
/// the session can tell it. The statements of a failed group are dropped: none ever takes effect twice.
class StoreBatchExecutor : public BatchSqlExecutor {
public:
    explicit StoreBatchExecutor(std::shared_ptr<SessionCache> sessions) : sessions_(std::move(sessions)) {}

    /// Raises Invalid procedure call (0x800A0005) for a batch size below 1. What an earlier Open left unsent
    /// is dropped.
    void Open(const std::string& connectionString, DataStoreProvider provider,
              std::int32_t batchSize) override;
    /// Raises Invalid procedure call before Open; so does Flush.
    void Add(const std::string& sql) override;
    void Flush() override;

private:
    void RequireOpen() const;

    std::shared_ptr<SessionCache> sessions_;
    std::string connectionString_;
    std::size_t batchSize_ = 0;  // 0: not open
    std::vector<std::string> pending_;
    std::size_t sent_ = 0;
};

}  // namespace kxjob
