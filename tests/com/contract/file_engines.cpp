#include <string>

#include "com/support/test_store.h"
#include "contract/contract_engine.h"

namespace kxjob::testing_support {
namespace {

std::string FileOfThisTest() {
    std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
    name.resize(name.find('/'));
    return "contract_" + name + ".db";
}

class FileStore : public ContractStore {
public:
    std::string ConnectionString() const override { return connectionString_; }

private:
    std::string connectionString_ = TestStore::NewFile(FileOfThisTest());
};

}  // namespace

std::vector<ContractEngine> FileEngines() {
    return {{.name = "SqliteFileBehindOdbc",
             .provider = dspSqlite,
             .makeStore = [] { return std::make_unique<FileStore>(); },
             .engineName = "SQLite",
             .longText = "text",
             .whyLiteralsLosePlanes = "Wine calls this driver wide, and it is narrow"}};
}

}  // namespace kxjob::testing_support
