#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "contract/contract_engine.h"
#include "contract/library_thread.h"
#include "defaults/configuration/environment_variable.h"
#include "files/temporary_folder.h"
#include "kxjob/job_helper.h"
#include "kxjob/store.h"

namespace kxjob::testing_support {

/// What the library as a whole must do on every engine, through its published interface alone. On Windows the
/// methods are those of the registered server.
class StoreContract : public testing::TestWithParam<ContractEngine> {
protected:
    void SetUp() override;
    /// Closes this thread's connections.
    void TearDown() override;

    /// The one cell of a query's one row.
    Value Cell(const std::string& sql) { return Cell(*tables_, sql); }
    static Value Cell(Store& store, const std::string& sql);
    /// A job with `items` items whose identifiers are "0", "1" and so on; gives its GUID.
    std::string MakeJob(int items);
    /// Gives a text to all kinds of methods that keep one, and reads it back.
    void ExpectEveryMethodKeeps(const std::string& text);
    /// The same for the methods that take texts of any length.
    void ExpectLongTextsAreKept(const std::string& text);

    TemporaryFolder folder_;
    EnvironmentVariable configuration_{"KXJOB_CONFIG", folder_.File("kxjob.conf")};
    std::unique_ptr<LibraryThread> thread_;
    DataStoreProvider provider_ = GetParam().provider;
    std::unique_ptr<ContractStore> store_;
    std::string connectionString_;
    /// The tables of the qualifier "kx_", where the type TYPE is known.
    std::unique_ptr<Store> tables_;
    JobHelper jobs_;
};

}  // namespace kxjob::testing_support
