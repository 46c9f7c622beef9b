#include <gtest/gtest.h>

#include <iostream>

#include "contract/native/file_engines.h"
#include "faults/case_sweep.h"
#include "proof/proof_output.h"

namespace kxjob::testing_support {
namespace {

/// Every call of every method fails in turn, in every way that the engine can be brought to.
class FaultMatrix : public testing::TestWithParam<ContractEngine> {
protected:
    void SetUp() override {
        if (!GetParam().whyMissing.empty()) GTEST_SKIP() << GetParam().whyMissing;
    }
    static bool IsFile() { return GetParam().serverName.empty(); }
};

TEST_P(FaultMatrix, IsSurvivedWithTheRightErrorAndTheRightRows) {
    FaultWorld world(GetParam());
    const StoreFault cut = ConnectionCut(world);
    std::vector<StoreFault> storeFaults{cut};
    std::string notes = "What a full disk does is asked of the engine that is linked in.\n";
    if (IsFile()) {
        storeFaults.push_back(DiskFull());
        notes =
            "The connection is cut by taking the file away. Only writing meets a full\n"
            "disk, which fills up before the first, the second ... write to the file that the call makes.\n";
    }
    std::vector<std::string> names{kErrorRaised};
    for (const StoreFault& fault : storeFaults) names.push_back(fault.name);
    FaultTable table(GetParam().name, names, notes);

    for (const FaultCase& given : EveryFaultCase()) {
        CaseSweep sweep(world, given, table);
        sweep.FailEveryCall();
        for (const StoreFault& fault : storeFaults) sweep.MeetEveryCall(fault);
        if (IsFile()) sweep.TakeTheStoreFromOtherCalls(cut);
    }

    const FaultTally total = table.Total();
    EXPECT_EQ(total.survived, total.failed);
    std::cout << table.Markdown();
    WriteProof("faults-" + GetParam().name, table.Markdown());
    Prove("faults survived on " + GetParam().name, total.survived, IsFile() ? 1040 : 755);
}

INSTANTIATE_TEST_SUITE_P(Engines, FaultMatrix,
                         testing::Values(SqliteFile(), PostgreSqlServer(), MariaDbServer()), EngineName);

}  // namespace
}  // namespace kxjob::testing_support
