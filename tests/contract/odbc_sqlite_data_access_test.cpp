#include "contract/data_access_contract.h"
#include "defaults/store/store_test_support.h"

namespace kxjob::testing_support {
namespace {

class SqliteFileBehindOdbc : public ContractStore {
public:
    std::string ConnectionString() const override {
        return "Driver={SQLite3};Database=" + database_.File() + ";";
    }

private:
    TemporaryDatabase database_;
};

INSTANTIATE_TEST_SUITE_P(SqliteBehindOdbc, DataAccessContract,
                         testing::Values(ContractEngine{
                             "SqliteFileBehindOdbc", [] { return std::make_unique<SqliteFileBehindOdbc>(); },
                             "text", "the driver fetches a double as a text of 15 digits"}),
                         EngineName);

}  // namespace
}  // namespace kxjob::testing_support
