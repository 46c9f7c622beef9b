#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "apps/command_store.h"

namespace kxjob {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;
using testing_support::CommandStore;
using testing_support::Finished;

class InsightOnStore : public ::testing::TestWithParam<testing_support::ContractEngine> {
protected:
    void SetUp() override {
        if (!GetParam().whyMissing.empty()) GTEST_SKIP() << GetParam().whyMissing;
        store_ = std::make_unique<CommandStore>(GetParam());
    }
    std::vector<std::string> Found(int number) {
        const Finished finished = store_->Run({"doctor", "--json"});
        std::vector<std::string> sentences;
        for (const auto& finding : nlohmann::json::parse(finished.out)) {
            if (finding.at("number") == number) sentences.push_back(finding.at("sentence"));
        }
        return sentences;
    }

    std::unique_ptr<CommandStore> store_;
};

TEST_P(InsightOnStore, DoctorFindsANewStoreInOrder) {
    const Finished finished = store_->Run({"doctor"});

    EXPECT_EQ(finished.exitStatus, 0) << finished.out << finished.err;
    EXPECT_THAT(finished.out, HasSubstr("The store is " + GetParam().engineName));
    EXPECT_THAT(Found(50), SizeIs(8)) << "tables";
    EXPECT_THAT(Found(60), SizeIs(4)) << "indexes";
    EXPECT_THAT(Found(70), SizeIs(1)) << "the clock";
}

TEST_P(InsightOnStore, DoctorMissesAnIndexAndATable) {
    const bool namesTable = GetParam().provider == dspMariaDb;
    store_->Tables().Execute(namesTable ? "DROP INDEX job_state ON c_job" : "DROP INDEX c_job_state");
    EXPECT_THAT(Found(61), ElementsAre(HasSubstr("The table c_job has no index on jobstateid")));

    store_->Tables().Execute("DROP TABLE c_JobItem");
    EXPECT_THAT(Found(51), ElementsAre(HasSubstr("The table c_JobItem is not there")));
    EXPECT_EQ(store_->Run({"doctor"}).exitStatus, 1);
}

TEST_P(InsightOnStore, WhyWatchAndStatsTellOfAJob) {
    const std::string job = store_->MakeJob({"a", "b"}, testing_support::StateGuid('1'));

    EXPECT_EQ(store_->Answer({"why", job}).at("verdict"), "next");
    EXPECT_EQ(store_->Answer({"stats", job}).at("jobs").at(0).at("totalItems"), 2);
    store_->Tables().Execute("UPDATE c_job SET jobstateid = 'COMPLETE', succeededitemcount = 2");
    EXPECT_THAT(store_->Run({"watch", job}).out, HasSubstr("COMPLETE, 100 %, 2 of 2 items"));
}

INSTANTIATE_TEST_SUITE_P(Engines, InsightOnStore, ::testing::ValuesIn(testing_support::EveryEngine()),
                         testing_support::EngineName);

}  // namespace
}  // namespace kxjob
