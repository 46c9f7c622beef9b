#include "contract/data_access_contract.h"
#include "defaults/store/store_test_support.h"

namespace kxjob::testing_support {
namespace {

class SqliteFile : public ContractStore {
public:
    std::string ConnectionString() const override { return database_.ConnectionString(); }

private:
    TemporaryDatabase database_;
};

INSTANTIATE_TEST_SUITE_P(Sqlite, DataAccessContract,
                         testing::Values(ContractEngine{
                             "SqliteFile", [] { return std::make_unique<SqliteFile>(); }, "text"}),
                         EngineName);

}  // namespace
}  // namespace kxjob::testing_support
