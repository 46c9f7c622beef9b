#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "apps/command_store.h"
#include "contract/native/file_engines.h"
#include "kxjob/array.h"

namespace kxjob {
namespace {

using ::testing::HasSubstr;
using Json = nlohmann::json;
using testing_support::CommandStore;
using testing_support::ContractEngine;
using testing_support::StateGuid;

/// The administrators' sub-commands on every store.
class AdministrationOnStore : public testing::TestWithParam<ContractEngine> {
protected:
    void SetUp() override {
        if (!GetParam().whyMissing.empty()) GTEST_SKIP() << GetParam().whyMissing;
        store_ = std::make_unique<CommandStore>(GetParam());
    }

    std::unique_ptr<CommandStore> store_;
};

TEST_P(AdministrationOnStore, TakesAJobFromItsTypeToItsRemoval) {
    store_->Answer({"type", "add", "REPORT", "--component", "Reports_83.Writer"});
    EXPECT_EQ(store_->Answer({"type", "list"}).at("types").size(), 2U);
    const std::string job =
        store_
            ->Answer({"create", "--type", "REPORT", "--parameters", "<p>\xC3\xA9</p>", "--items", "-"},
                     R"({"identifier":"it's","data":"\u00e9 'x'"})"
                     "\n"
                     R"({"identifier":"b"})")
            .at("job");
    const Json items = store_->Answer({"items", job}).at("items");
    ASSERT_EQ(items.size(), 2U);
    const std::string item = items.at(0).at("item");
    EXPECT_EQ(store_->Answer({"item", item}).at("data"), "\xC3\xA9 'x'");
    store_->Answer({"note", "--item", item, "on the item"});
    store_->Answer({"note", job, "on the job"});
    EXPECT_THAT(store_->Answer({"item", item}).at("note").get<std::string>(), HasSubstr("on the item"));

    EXPECT_EQ(store_->Answer({"set-state", job, "RUNNING"}).at("before"), "QUEUED");
    const Json shown = store_->Answer({"show", job});
    EXPECT_EQ(shown.at("state"), "RUNNING");
    EXPECT_EQ(shown.at("parameters"), "<p>\xC3\xA9</p>");
    EXPECT_EQ(shown.at("itemStates"), Json::parse(R"([{"state":"","items":2}])"));
    EXPECT_THAT(shown.at("failureNote").get<std::string>(), HasSubstr("on the job"));
    EXPECT_EQ(store_->Answer({"list", "--type", "REPORT"}).at("jobs").at(0).at("job"), job);
    EXPECT_EQ(store_->Answer({"history", "--job", job, "--limit", "3"}).at("history").size(), 3U);

    EXPECT_EQ(store_->Answer({"remove", job, "--yes"}).at("removed").at(0).at("items"), 2);
    EXPECT_EQ(store_->Answer({"list"}).at("found"), 0);
    EXPECT_EQ(store_->Answer({"type", "remove", "REPORT", "--yes"}).at("jobs"), 0);
}

TEST_P(AdministrationOnStore, CreatesManyItemsInTheirOrder) {
    constexpr int kItems = 1234;
    std::string input;
    for (int i = 0; i < kItems; ++i) input += "item " + std::to_string(i) + "\n";
    const std::string job = store_->Answer({"create", "--type", "TYPE", "--items", "-"}, input).at("job");

    const Json items = store_->Answer({"items", job}).at("items");

    ASSERT_EQ(items.size(), 1234U);
    for (int i = 0; i < kItems; ++i) {
        EXPECT_EQ(items.at(static_cast<std::size_t>(i)).at("identifier"), "item " + std::to_string(i));
    }
}

TEST_P(AdministrationOnStore, DoesWithoutTheTablesThatAContainerNeedNotHave) {
    store_->Tables().Execute("DROP TABLE c_applicationstate");
    const std::string job = store_->MakeJob({"a"}, StateGuid('1'));
    EXPECT_TRUE(store_->Answer({"show", job}).at("applicationStateName").is_null());
    EXPECT_EQ(store_->Answer({"sweep", "--dry-run"}).at("jobs").size(), 1U);

    store_->Tables().Execute("DROP TABLE c_adminhistory");
    EXPECT_THAT(store_->Run({"history"}).err, HasSubstr("This store has no administration history"));
}

INSTANTIATE_TEST_SUITE_P(Engines, AdministrationOnStore,
                         testing::Values(testing_support::SqliteFile(), testing_support::PostgreSqlServer(),
                                         testing_support::MariaDbServer()),
                         testing_support::EngineName);

}  // namespace
}  // namespace kxjob
