#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>

#include "defaults/store/store_batch_executor.h"
#include "defaults/store/store_data_access.h"

namespace kxjob::testing_support {

/// An empty store that lives as long as this object.
class ContractStore {
public:
    virtual ~ContractStore() = default;
    virtual std::string ConnectionString() const = 0;
};

/// One engine under the contract.
struct ContractEngine {
    std::string name;
    std::function<std::unique_ptr<ContractStore>()> makeStore;
    /// The type of a column for texts of any length.
    std::string longText;
    /// Why doubles lose bits on their way; empty when they do not.
    std::string whyDoublesLoseBits = {};

    friend void PrintTo(const ContractEngine& engine, std::ostream* out) { *out << engine.name; }
};

/// What every engine must do behind DataAccess and BatchSqlExecutor. Each engine is one instance:
///     INSTANTIATE_TEST_SUITE_P(Name, DataAccessContract, testing::Values(ContractEngine{...}), EngineName);
class DataAccessContract : public testing::TestWithParam<ContractEngine> {
protected:
    /// The table t: k (text key), n (integer), big (64-bit integer), d (double), v (long text).
    DataAccessContract();

    void Execute(const std::string& sql);
    Value Query(const std::string& sql, bool allowEmpty = false);
    void WriteLongText(const std::string& key, const std::string& text);
    /// Adds a row that has a key and a text.
    void Insert(const std::string& key, const std::string& textLiteral = "NULL");

    std::unique_ptr<ContractStore> store_ = GetParam().makeStore();
    std::string connectionString_ = store_->ConnectionString();
    std::shared_ptr<SessionCache> sessions_ = std::make_shared<SessionCache>();
    StoreDataAccess data_{sessions_};
    StoreBatchExecutor batch_{sessions_};
};

std::string EngineName(const testing::TestParamInfo<ContractEngine>& info);

}  // namespace kxjob::testing_support
