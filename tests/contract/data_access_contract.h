#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "contract/contract_engine.h"
#include "defaults/store/store_batch_executor.h"
#include "defaults/store/store_data_access.h"

namespace kxjob::testing_support {

/// What every engine must do behind DataAccess and BatchSqlExecutor.
class DataAccessContract : public testing::TestWithParam<ContractEngine> {
protected:
    /// Makes the table t: k (text key), n (integer), big (64-bit integer), d (double), v (long text).
    void SetUp() override;

    void Execute(const std::string& sql);
    Value Query(const std::string& sql, bool allowEmpty = false);
    void WriteLongText(const std::string& key, const std::string& text);
    /// Adds a row that has a key and a text.
    void Insert(const std::string& key, const std::string& textLiteral = "NULL");

    std::unique_ptr<ContractStore> store_;
    std::string connectionString_;
    std::shared_ptr<SessionCache> sessions_ = std::make_shared<SessionCache>();
    StoreDataAccess data_{sessions_};
    StoreBatchExecutor batch_{sessions_};
};

}  // namespace kxjob::testing_support
