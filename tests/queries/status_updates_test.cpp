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

class StatusUpdateTest : public JobHelperTest {
protected:
    const AutomationError refusal{error_number::kGuardRefusal, "InputGuard", "unsafe"};
    const AutomationError failure{error_number::kStatementFailed, "DataAccess", "[HY000] it is gone"};
};

class UpdateJobStatus : public StatusUpdateTest {
protected:
    void ExpectGuards(const std::string& qualifier) {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
        EXPECT_CALL(guard, CheckParameter("READY", "JobStateID"));
        EXPECT_CALL(guard, CheckParameter(qualifier, "NameQualifier"));
    }

    void ExpectUpdateOnTheConfiguredStore() {
        ExpectConfiguration("cfg-db", 3, "cfg_");
        ExpectGuards("cfg_");
        EXPECT_CALL(
            data, Execute("cfg-db", 3, 1, "UPDATE cfg_job SET jobstateid = V(READY) WHERE jobguid = G({J})"));
        ExpectComponent("AppModelAdmin_%v.Admin", admin);
        EXPECT_CALL(*admin, CallMember("AdminHistoryWrite",
                                       ElementsAre(Value("cfg-db"), Value("cfg_"), Value("JOB_STATUS_UPDATE"),
                                                   Value("<job><jobguid>{J}</jobguid>"
                                                         "<jobstateid>READY</jobstateid></job>"))));
    }

    std::shared_ptr<StrictMock<MockComponent>> admin = std::make_shared<StrictMock<MockComponent>>();
};

// The store does not say whether a row was there: this is the road of an unknown job too.
TEST_F(UpdateJobStatus, SetsTheStateThenWritesTheHistoryWhetherTheJobIsKnownOrNot) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("READY", "JobStateID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Execute("db", 5, 1, "UPDATE kx_job SET jobstateid = V(READY) WHERE jobguid = G({J})"));
    ExpectComponent("AppModelAdmin_%v.Admin", admin);
    EXPECT_CALL(*admin, CallMember("AdminHistoryWrite",
                                   ElementsAre(Value("db"), Value("kx_"), Value("JOB_STATUS_UPDATE"),
                                               Value("<job><jobguid>{J}</jobguid>"
                                                     "<jobstateid>READY</jobstateid></job>"))));

    helper.UpdateJobStatus("db", 5, "kx_", "{J}", "READY");

    EXPECT_EQ(made.settings, 0);
    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(UpdateJobStatus, StoresAnyStateAndPutsItsMarkupIntoTheHistoryUnescaped) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("<x>&", "JobStateID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Execute("db", 5, 1, "UPDATE kx_job SET jobstateid = V(<x>&) WHERE jobguid = G({J})"));
    ExpectComponent("AppModelAdmin_%v.Admin", admin);
    EXPECT_CALL(*admin, CallMember("AdminHistoryWrite",
                                   ElementsAre(Value("db"), Value("kx_"), Value("JOB_STATUS_UPDATE"),
                                               Value("<job><jobguid>{J}</jobguid>"
                                                     "<jobstateid><x>&</jobstateid></job>"))));

    helper.UpdateJobStatus("db", 5, "kx_", "{J}", "<x>&");
}

TEST_F(UpdateJobStatus, TakesAllThreeFromTheConfigurationWithoutAConnectionString) {
    InSequence inThisOrder;
    ExpectUpdateOnTheConfiguredStore();

    helper.UpdateJobStatus("", 5, "kx_", "{J}", "READY");
}

TEST_F(UpdateJobStatus, TakesAllThreeFromTheConfigurationWithoutAQualifier) {
    InSequence inThisOrder;
    ExpectUpdateOnTheConfiguredStore();

    helper.UpdateJobStatus("db", 5, "", "{J}", "READY");
}

TEST_F(UpdateJobStatus, PassesOnTheRefusalOfTheJobGuid) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.UpdateJobStatus("db", 5, "kx_", "{J}", "READY"); }, refusal,
                   {"UpdateJobStatus"});
}

TEST_F(UpdateJobStatus, PassesOnTheRefusalOfTheState) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("READY", "JobStateID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.UpdateJobStatus("db", 5, "kx_", "{J}", "READY"); }, refusal,
                   {"UpdateJobStatus"});
}

TEST_F(UpdateJobStatus, PassesOnTheRefusalOfTheQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("READY", "JobStateID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.UpdateJobStatus("db", 5, "kx_", "{J}", "READY"); }, refusal,
                   {"UpdateJobStatus"});
}

TEST_F(UpdateJobStatus, WritesNoHistoryWhenTheUpdateFails) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    EXPECT_CALL(data, Execute("db", 5, 1, _)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { helper.UpdateJobStatus("db", 5, "kx_", "{J}", "READY"); }, failure,
                   {"UpdateJobStatus"});
}

TEST_F(UpdateJobStatus, LeavesTheNewStateWhenTheHistoryCannotBeWritten) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    EXPECT_CALL(data, Execute("db", 5, 1, "UPDATE kx_job SET jobstateid = V(READY) WHERE jobguid = G({J})"));
    ExpectComponent("AppModelAdmin_%v.Admin", admin);
    EXPECT_CALL(*admin, CallMember("AdminHistoryWrite", _)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { helper.UpdateJobStatus("db", 5, "kx_", "{J}", "READY"); }, failure,
                   {"piAdminHistoryWrite", "UpdateJobStatus"});
}

class UpdateJobItemStatus : public StatusUpdateTest {
protected:
    void Update() {
        helper.UpdateJobItemStatus("db", 5, "kx_", "{I}", "FAILED", "2026-05-01", "2026-05-02", "{T}");
    }
};

TEST_F(UpdateJobItemStatus, SetsStateTimesAndTaskWithoutHistory) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{I}", "JobItemGUID"));
    EXPECT_CALL(guard, CheckParameter("FAILED", "JobItemStateID"));
    EXPECT_CALL(data, Execute("db", 5, 1,
                              "UPDATE kx_JobItem SET jobitemstateid = V(FAILED), startdt = V(2026-05-01),"
                              " enddt = V(2026-05-02), jobtaskguid = V({T}) WHERE jobitemguid = G({I})"));

    Update();

    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(UpdateJobItemStatus, AssignsEmptyTimesAndAnEmptyTaskToo) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{I}", "JobItemGUID"));
    EXPECT_CALL(guard, CheckParameter("", "JobItemStateID"));
    EXPECT_CALL(data, Execute("db", 5, 1,
                              "UPDATE kx_JobItem SET jobitemstateid = V(), startdt = V(), enddt = V(),"
                              " jobtaskguid = V() WHERE jobitemguid = G({I})"));

    helper.UpdateJobItemStatus("db", 5, "kx_", "{I}", "", "", "", "");
}

TEST_F(UpdateJobItemStatus, UsesAnEmptyConnectionAndQualifierAsGiven) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{I}", "JobItemGUID"));
    EXPECT_CALL(guard, CheckParameter("FAILED", "JobItemStateID"));
    EXPECT_CALL(data, Execute("", 5, 1,
                              "UPDATE JobItem SET jobitemstateid = V(FAILED), startdt = V(s),"
                              " enddt = V(e), jobtaskguid = V({T}) WHERE jobitemguid = G({I})"));

    helper.UpdateJobItemStatus("", 5, "", "{I}", "FAILED", "s", "e", "{T}");

    EXPECT_EQ(made.settings, 0);
}

TEST_F(UpdateJobItemStatus, PassesOnTheRefusalOfTheQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { Update(); }, refusal, {"UpdateJobItemStatus"});
}

TEST_F(UpdateJobItemStatus, PassesOnTheRefusalOfTheItemGuid) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{I}", "JobItemGUID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { Update(); }, refusal, {"UpdateJobItemStatus"});
}

TEST_F(UpdateJobItemStatus, PassesOnTheRefusalOfTheState) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{I}", "JobItemGUID"));
    EXPECT_CALL(guard, CheckParameter("FAILED", "JobItemStateID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { Update(); }, refusal, {"UpdateJobItemStatus"});
}

TEST_F(UpdateJobItemStatus, PassesOnAFailingUpdate) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{I}", "JobItemGUID"));
    EXPECT_CALL(guard, CheckParameter("FAILED", "JobItemStateID"));
    EXPECT_CALL(data, Execute("db", 5, 1, _)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { Update(); }, failure, {"UpdateJobItemStatus"});
}

}  // namespace
}  // namespace kxjob
