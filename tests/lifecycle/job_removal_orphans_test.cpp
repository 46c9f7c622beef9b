#include "support/job_helper_test.h"

namespace kxjob {
namespace {

using ::testing::InSequence;
using ::testing::Return;
using ::testing::Throw;
using testing_support::JobHelperTest;

/// The private orphan step, behind a sweep that finds no irrelevant job.
class RemoveOrphanedJobInformation : public JobHelperTest {
protected:
    void ExpectSweepWithoutIrrelevantJobs() {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter("{dev}", "DevelopmentStateGUID"));
        EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
        EXPECT_CALL(guids, NullGuid()).WillOnce(Return("{0}"));
        EXPECT_CALL(
            data,
            Query("db", 5, 1, "SELECT jobguid, jobtypeid FROM kx_job WHERE  appstateguid <> G({dev})", true))
            .WillOnce(Return(Value()));
    }

    void ExpectJobs(const Value& rows) {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
        EXPECT_CALL(data, Query("db", 5, 1, "SELECT jobguid FROM kx_job", true)).WillOnce(Return(rows));
    }

    void Sweep() { helper.RemoveIrrelevantJobsInContainer("db", 5, "kx_", "{0}", "{dev}"); }

    const AutomationError refusal{error_number::kGuardRefusal, "InputGuard", "unsafe"};
    const AutomationError failure{error_number::kStatementFailed, "DataAccess", "[HY000] it is gone"};
};

TEST_F(RemoveOrphanedJobInformation, RemovesItemsThenTasksOfNoneOfTwoJobsNamedInTheOrderFound) {
    InSequence inThisOrder;
    ExpectSweepWithoutIrrelevantJobs();
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Query("db", 5, 1, "SELECT jobguid FROM kx_job", true))
        .WillOnce(Return(Rows(1, {{"{2}"}, {"{1}"}})));
    ExpectTrace("Removing any orphaned rows in JobItem", 4, "RemoveOrphanedJobInformation");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_JobItem WHERE jobguid NOT IN(G({2}), G({1}))"));
    ExpectTrace("Removing any orphaned rows in jobtask", 4, "RemoveOrphanedJobInformation");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_jobtask WHERE jobguid NOT IN(G({2}), G({1}))"));

    Sweep();

    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(RemoveOrphanedJobInformation, NamesASingleJobWithoutASeparator) {
    InSequence inThisOrder;
    ExpectSweepWithoutIrrelevantJobs();
    ExpectJobs(Rows(1, {{"{1}"}}));
    ExpectTrace("Removing any orphaned rows in JobItem", 4, "RemoveOrphanedJobInformation");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_JobItem WHERE jobguid NOT IN(G({1}))"));
    ExpectTrace("Removing any orphaned rows in jobtask", 4, "RemoveOrphanedJobInformation");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_jobtask WHERE jobguid NOT IN(G({1}))"));

    Sweep();
}

TEST_F(RemoveOrphanedJobInformation, EmptiesBothTablesWhenThereIsNoJob) {
    InSequence inThisOrder;
    ExpectSweepWithoutIrrelevantJobs();
    ExpectJobs({});
    ExpectTrace("Removing any orphaned rows in JobItem", 4, "RemoveOrphanedJobInformation");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_JobItem"));
    ExpectTrace("Removing any orphaned rows in jobtask", 4, "RemoveOrphanedJobInformation");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_jobtask"));

    Sweep();
}

TEST_F(RemoveOrphanedJobInformation, PassesOnTheRefusalOfTheQualifier) {
    InSequence inThisOrder;
    ExpectSweepWithoutIrrelevantJobs();
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { Sweep(); }, refusal,
                   {"RemoveOrphanedJobInformation", "RemoveIrrelevantJobsInContainer"});
}

TEST_F(RemoveOrphanedJobInformation, RemovesNothingWhenTheJobsCannotBeRead) {
    InSequence inThisOrder;
    ExpectSweepWithoutIrrelevantJobs();
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Query("db", 5, 1, "SELECT jobguid FROM kx_job", true)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { Sweep(); }, failure,
                   {"RemoveOrphanedJobInformation", "RemoveIrrelevantJobsInContainer"});
}

TEST_F(RemoveOrphanedJobInformation, LeavesTheTasksWhenTheItemsCannotBeRemoved) {
    InSequence inThisOrder;
    ExpectSweepWithoutIrrelevantJobs();
    ExpectJobs(Rows(1, {{"{1}"}}));
    ExpectTrace("Removing any orphaned rows in JobItem", 4, "RemoveOrphanedJobInformation");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_JobItem WHERE jobguid NOT IN(G({1}))"))
        .WillOnce(Throw(failure));

    ExpectPassedOn([&] { Sweep(); }, failure,
                   {"RemoveOrphanedJobInformation", "RemoveIrrelevantJobsInContainer"});
}

TEST_F(RemoveOrphanedJobInformation, PassesOnThatTheTasksCannotBeRemoved) {
    InSequence inThisOrder;
    ExpectSweepWithoutIrrelevantJobs();
    ExpectJobs(Rows(1, {{"{1}"}}));
    ExpectTrace("Removing any orphaned rows in JobItem", 4, "RemoveOrphanedJobInformation");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_JobItem WHERE jobguid NOT IN(G({1}))"));
    ExpectTrace("Removing any orphaned rows in jobtask", 4, "RemoveOrphanedJobInformation");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_jobtask WHERE jobguid NOT IN(G({1}))"))
        .WillOnce(Throw(failure));

    ExpectPassedOn([&] { Sweep(); }, failure,
                   {"RemoveOrphanedJobInformation", "RemoveIrrelevantJobsInContainer"});
}

}  // namespace
}  // namespace kxjob
