#pragma once

#include <memory>

#include "collaborators/data_access.h"
#include "defaults/store/session_cache.h"

namespace kxjob {

/// Data access on the sessions of one thread. The connection string alone decides which engine a statement
/// goes to.
class StoreDataAccess : public DataAccess {
public:
    explicit StoreDataAccess(std::shared_ptr<SessionCache> sessions) : sessions_(std::move(sessions)) {}

    void Execute(const std::string& connectionString, DataStoreProvider provider, std::int32_t mode,
                 const std::string& sql) override;
    /// Raises 0x80040000 + 702 when there is no row and that is not allowed.
    Value Query(const std::string& connectionString, DataStoreProvider provider, std::int32_t mode,
                const std::string& sql, bool allowEmpty) override;
    /// Raises 0x80040000 + 706 for a text that no store can keep, before the store is touched.
    void WriteLongText(const std::string& connectionString, DataStoreProvider provider, std::int32_t mode,
                       const std::string& nameQualifier, const std::string& baseTableName,
                       const std::string& keyColumn, const std::string& keyValue,
                       const std::string& valueColumn, const std::string& value,
                       LongTextOutputs& outputs) override;

private:
    std::shared_ptr<SessionCache> sessions_;
};

}  // namespace kxjob
