#include <memory>

#include "support/job_helper_test.h"

namespace kxjob {
namespace {

using ::testing::_;
using ::testing::ElementsAre;
using ::testing::InSequence;
using ::testing::StrictMock;
using ::testing::Throw;
using testing_support::JobHelperTest;
using testing_support::MockComponent;

class RemoveJobAndItems : public JobHelperTest {
protected:
    void ExpectGuards() {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
        EXPECT_CALL(guard, CheckParameter("kx_", "NameQualfier"));
    }

    void ExpectRemovalOnTheConfiguredStore() {
        ExpectConfiguration("cfg-db", "3", "cfg_");
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
        EXPECT_CALL(guard, CheckParameter("cfg_", "NameQualfier"));
        ExpectTrace("Removing Job Items for {J}", 4, "RemoveJobAndItems");
        EXPECT_CALL(data, Execute("cfg-db", 3, 1, "DELETE FROM cfg_JobItem WHERE jobguid = G({J})"));
        ExpectTrace("Removing Job Tasks for {J}", 4, "RemoveJobAndItems");
        EXPECT_CALL(data, Execute("cfg-db", 3, 1, "DELETE FROM cfg_jobtask WHERE jobguid = G({J})"));
        ExpectTrace("Removing Job {J}", 4, "RemoveJobAndItems");
        EXPECT_CALL(data, Execute("cfg-db", 3, 1, "DELETE FROM cfg_job WHERE jobguid = G({J})"));
        ExpectComponent("AppModelAdmin_%v.Admin", admin);
        EXPECT_CALL(*admin, CallMember("AdminHistoryWrite",
                                       ElementsAre(Value("cfg-db"), Value("cfg_"), Value("JOB_REMOVED"),
                                                   Value("<job><jobguid>{J}</jobguid></job>"))));
    }

    std::shared_ptr<StrictMock<MockComponent>> admin = std::make_shared<StrictMock<MockComponent>>();
    const AutomationError refusal{error_number::kGuardRefusal, "InputGuard", "unsafe"};
    const AutomationError failure{error_number::kStatementFailed, "DataAccess", "[HY000] it is gone"};
};

// The store does not say whether rows were there: this is the road of an unknown job too.
TEST_F(RemoveJobAndItems, RemovesItemsThenTasksThenTheJobWhetherItIsKnownOrNot) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualfier"));
    ExpectTrace("Removing Job Items for {J}", 4, "RemoveJobAndItems");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_JobItem WHERE jobguid = G({J})"));
    ExpectTrace("Removing Job Tasks for {J}", 4, "RemoveJobAndItems");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_jobtask WHERE jobguid = G({J})"));
    ExpectTrace("Removing Job {J}", 4, "RemoveJobAndItems");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_job WHERE jobguid = G({J})"));
    ExpectComponent("AppModelAdmin_%v.Admin", admin);
    EXPECT_CALL(*admin,
                CallMember("AdminHistoryWrite", ElementsAre(Value("db"), Value("kx_"), Value("JOB_REMOVED"),
                                                            Value("<job><jobguid>{J}</jobguid></job>"))));

    helper.RemoveJobAndItems("db", 5, "kx_", "{J}");

    EXPECT_EQ(made.objectFactories, 1);
    EXPECT_EQ(made.settings, 0);
    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(RemoveJobAndItems, TakesAllThreeFromTheConfigurationBeforeTheGuardWithoutAQualifier) {
    InSequence inThisOrder;
    ExpectRemovalOnTheConfiguredStore();

    helper.RemoveJobAndItems("db", 5, "", "{J}");
}

TEST_F(RemoveJobAndItems, TakesAllThreeFromTheConfigurationBeforeTheGuardWithoutAConnectionString) {
    InSequence inThisOrder;
    ExpectRemovalOnTheConfiguredStore();

    helper.RemoveJobAndItems("", 5, "kx_", "{J}");
}

TEST_F(RemoveJobAndItems, PassesOnTheRefusalOfTheJobGuid) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.RemoveJobAndItems("db", 5, "kx_", "{J}"); }, refusal, {"RemoveJobAndItems"});
}

TEST_F(RemoveJobAndItems, PassesOnTheRefusalOfTheQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualfier")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.RemoveJobAndItems("db", 5, "kx_", "{J}"); }, refusal, {"RemoveJobAndItems"});
}

TEST_F(RemoveJobAndItems, LeavesTasksAndJobWhenTheItemsCannotBeRemoved) {
    InSequence inThisOrder;
    ExpectGuards();
    ExpectTrace("Removing Job Items for {J}", 4, "RemoveJobAndItems");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_JobItem WHERE jobguid = G({J})"))
        .WillOnce(Throw(failure));

    ExpectPassedOn([&] { helper.RemoveJobAndItems("db", 5, "kx_", "{J}"); }, failure, {"RemoveJobAndItems"});
}

TEST_F(RemoveJobAndItems, LeavesTheJobWhenItsTasksCannotBeRemoved) {
    InSequence inThisOrder;
    ExpectGuards();
    ExpectTrace("Removing Job Items for {J}", 4, "RemoveJobAndItems");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_JobItem WHERE jobguid = G({J})"));
    ExpectTrace("Removing Job Tasks for {J}", 4, "RemoveJobAndItems");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_jobtask WHERE jobguid = G({J})"))
        .WillOnce(Throw(failure));

    ExpectPassedOn([&] { helper.RemoveJobAndItems("db", 5, "kx_", "{J}"); }, failure, {"RemoveJobAndItems"});
}

TEST_F(RemoveJobAndItems, WritesNoHistoryWhenTheJobCannotBeRemoved) {
    InSequence inThisOrder;
    ExpectGuards();
    ExpectTrace("Removing Job Items for {J}", 4, "RemoveJobAndItems");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_JobItem WHERE jobguid = G({J})"));
    ExpectTrace("Removing Job Tasks for {J}", 4, "RemoveJobAndItems");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_jobtask WHERE jobguid = G({J})"));
    ExpectTrace("Removing Job {J}", 4, "RemoveJobAndItems");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_job WHERE jobguid = G({J})"))
        .WillOnce(Throw(failure));

    ExpectPassedOn([&] { helper.RemoveJobAndItems("db", 5, "kx_", "{J}"); }, failure, {"RemoveJobAndItems"});
}

TEST_F(RemoveJobAndItems, PassesOnThatTheHistoryCannotBeWrittenInItsOwnNameOnly) {
    InSequence inThisOrder;
    ExpectGuards();
    ExpectTrace("Removing Job Items for {J}", 4, "RemoveJobAndItems");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_JobItem WHERE jobguid = G({J})"));
    ExpectTrace("Removing Job Tasks for {J}", 4, "RemoveJobAndItems");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_jobtask WHERE jobguid = G({J})"));
    ExpectTrace("Removing Job {J}", 4, "RemoveJobAndItems");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_job WHERE jobguid = G({J})"));
    ExpectComponent("AppModelAdmin_%v.Admin", admin);
    EXPECT_CALL(*admin, CallMember("AdminHistoryWrite", _)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { helper.RemoveJobAndItems("db", 5, "kx_", "{J}"); }, failure, {"RemoveJobAndItems"});
}

TEST_F(RemoveJobAndItems, StopsWhenItsProgressCannotBeTraced) {
    InSequence inThisOrder;
    ExpectGuards();
    EXPECT_CALL(trace, Write(_, _, _, _, _)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { helper.RemoveJobAndItems("db", 5, "kx_", "{J}"); }, failure, {"RemoveJobAndItems"});
}

}  // namespace
}  // namespace kxjob
