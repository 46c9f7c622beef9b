#include "contract/native/file_engines.h"

#include "defaults/store/store_test_support.h"

namespace kxjob::testing_support {
namespace {

class FileStore : public ContractStore {
public:
    explicit FileStore(std::string driver) : driver_(std::move(driver)) {}
    std::string ConnectionString() const override {
        return "Driver=" + driver_ + ";Database=" + database_.File() + ";";
    }

private:
    TemporaryDatabase database_;
    std::string driver_;
};

ContractEngine File(const std::string& name, const std::string& driver) {
    return {.name = name,
            .provider = dspSqlite,
            .makeStore = [driver] { return std::make_unique<FileStore>(driver); },
            .engineName = "SQLite",
            .longText = "text"};
}

}  // namespace

ContractEngine SqliteFile() {
    return File("SqliteFile", "SQLite");
}

std::vector<ContractEngine> FileEngines() {
    ContractEngine behindOdbc = File("SqliteFileBehindOdbc", "{SQLite3}");
    behindOdbc.whyDoublesLoseBits = "the driver fetches a double as a text of 15 digits";
    return {SqliteFile(), behindOdbc};
}

}  // namespace kxjob::testing_support
