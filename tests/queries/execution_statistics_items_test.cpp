#include <limits>

#include "support/job_helper_test.h"

namespace kxjob {
namespace {

using ::testing::_;
using ::testing::InSequence;
using ::testing::Return;
using ::testing::Throw;
using testing_support::JobHelperTest;

class ItemStatisticsTest : public JobHelperTest {
protected:
    void ExpectGuards(const std::string& qualifier) {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
        EXPECT_CALL(guard, CheckParameter(qualifier, "NameQualifier"));
    }

    const AutomationError refusal{error_number::kGuardRefusal, "InputGuard", "unsafe"};
    const AutomationError failure{error_number::kStatementFailed, "DataAccess", "[HY000] it is gone"};
};

class GetJobItemExecutionStatistics : public ItemStatisticsTest {};

TEST_F(GetJobItemExecutionStatistics, ReturnsStateAndTimesOfTheItemWithTheNumber) {
    const Value row = Rows(3, {{"COMPLETE", "2026-05-01", "2026-05-02"}});
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobitemstateid, startdt, enddt FROM kx_JobItem"
                            " WHERE jobguid = G({J}) AND sequence = 12",
                            false))
        .WillOnce(Return(row));

    EXPECT_EQ(helper.GetJobItemExecutionStatistics("db", 5, "kx_", "{J}", 12), row);

    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(GetJobItemExecutionStatistics, WritesTheNumberZeroAsADigit) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobitemstateid, startdt, enddt FROM kx_JobItem"
                            " WHERE jobguid = G({J}) AND sequence = 0",
                            false));

    helper.GetJobItemExecutionStatistics("db", 5, "kx_", "{J}", 0);
}

TEST_F(GetJobItemExecutionStatistics, WritesANegativeNumberWithItsSign) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobitemstateid, startdt, enddt FROM kx_JobItem"
                            " WHERE jobguid = G({J}) AND sequence = -2147483648",
                            false));

    helper.GetJobItemExecutionStatistics("db", 5, "kx_", "{J}", std::numeric_limits<std::int32_t>::min());
}

TEST_F(GetJobItemExecutionStatistics, PassesOnThatThereIsNoSuchItem) {
    const AutomationError noRow(error_number::kNoRow, "DataAccess", "no row");
    InSequence inThisOrder;
    ExpectGuards("kx_");
    EXPECT_CALL(data, Query("db", 5, 1, _, false)).WillOnce(Throw(noRow));

    ExpectPassedOn([&] { helper.GetJobItemExecutionStatistics("db", 5, "kx_", "{J}", 12); }, noRow,
                   {"GetJobItemExecutionStatistics"});
}

TEST_F(GetJobItemExecutionStatistics, UsesAnEmptyConnectionAndQualifierAsGiven) {
    InSequence inThisOrder;
    ExpectGuards("");
    EXPECT_CALL(data, Query("", 5, 1,
                            "SELECT jobitemstateid, startdt, enddt FROM JobItem"
                            " WHERE jobguid = G({J}) AND sequence = 1",
                            false));

    helper.GetJobItemExecutionStatistics("", 5, "", "{J}", 1);

    EXPECT_EQ(made.settings, 0);
}

TEST_F(GetJobItemExecutionStatistics, PassesOnTheRefusalOfTheJobGuid) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.GetJobItemExecutionStatistics("db", 5, "kx_", "{J}", 12); }, refusal,
                   {"GetJobItemExecutionStatistics"});
}

TEST_F(GetJobItemExecutionStatistics, PassesOnTheRefusalOfTheQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.GetJobItemExecutionStatistics("db", 5, "kx_", "{J}", 12); }, refusal,
                   {"GetJobItemExecutionStatistics"});
}

class JobItemsAtState : public ItemStatisticsTest {};

TEST_F(JobItemsAtState, CountsTheItemsAtOneState) {
    const Value row = Rows(2, {{"COMPLETE", 4}});
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Query("db", 2, 1,
                            "SELECT jobitemstateid, COUNT(*) FROM kx_JobItem WHERE jobguid = G({J})"
                            " AND jobitemstateid = G(COMPLETE) GROUP BY jobitemstateid",
                            true))
        .WillOnce(Return(row));

    EXPECT_EQ(helper.JobItemsAtState("db", "kx_", "{J}", "COMPLETE"), row);

    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(JobItemsAtState, CountsTheItemsAtEveryStateWithoutOne) {
    const Value rows = Rows(2, {{"COMPLETE", 4}, {"FAILED", 1}, {Null{}, 2}});
    InSequence inThisOrder;
    ExpectGuards("kx_");
    EXPECT_CALL(data, Query("db", 2, 1,
                            "SELECT jobitemstateid, COUNT(*) FROM kx_JobItem WHERE jobguid = G({J})"
                            " GROUP BY jobitemstateid",
                            true))
        .WillOnce(Return(rows));

    EXPECT_EQ(helper.JobItemsAtState("db", "kx_", "{J}"), rows);
}

TEST_F(JobItemsAtState, ReturnsEmptyWhenNoItemIsAtTheState) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    EXPECT_CALL(data, Query("db", 2, 1, _, true)).WillOnce(Return(Value()));

    EXPECT_TRUE(helper.JobItemsAtState("db", "kx_", "{J}", "COMPLETE").IsEmpty());
}

TEST_F(JobItemsAtState, UsesAnEmptyConnectionAndQualifierAsGiven) {
    InSequence inThisOrder;
    ExpectGuards("");
    EXPECT_CALL(data, Query("", 2, 1,
                            "SELECT jobitemstateid, COUNT(*) FROM JobItem WHERE jobguid = G({J})"
                            " GROUP BY jobitemstateid",
                            true));

    helper.JobItemsAtState("", "", "{J}");

    EXPECT_EQ(made.settings, 0);
}

TEST_F(JobItemsAtState, PassesOnTheRefusalOfTheJobGuid) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.JobItemsAtState("db", "kx_", "{J}"); }, refusal, {"JobItemsAtState"});
}

TEST_F(JobItemsAtState, PassesOnTheRefusalOfTheQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.JobItemsAtState("db", "kx_", "{J}"); }, refusal, {"JobItemsAtState"});
}

TEST_F(JobItemsAtState, PassesOnAFailingQuery) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    EXPECT_CALL(data, Query("db", 2, 1, _, true)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { helper.JobItemsAtState("db", "kx_", "{J}"); }, failure, {"JobItemsAtState"});
}

class OwnersOfJobItemsAtState : public ItemStatisticsTest {};

TEST_F(OwnersOfJobItemsAtState, CountsTheItemsAtOneStateByMachineOfTheirTask) {
    const Value rows = Rows(3, {{"HOST-A", "COMPLETE", 4}, {"HOST-B", "COMPLETE", 1}});
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Query("db", 2, 1,
                            "SELECT machine, jobitemstateid, COUNT(*) FROM kx_JobItem JobItem ,"
                            " kx_jobtask jobtask WHERE JobItem.jobguid = G({J})"
                            " AND JobItem.jobtaskguid = jobtask.jobtaskguid"
                            " AND jobitemstateid = G(COMPLETE) GROUP BY machine,jobitemstateid",
                            true))
        .WillOnce(Return(rows));

    EXPECT_EQ(helper.OwnersOfJobItemsAtState("db", "kx_", "{J}", "COMPLETE"), rows);

    EXPECT_TRUE(debugTools->told.empty());
}

// The plain join on the task is what leaves out the items that no task has claimed.
TEST_F(OwnersOfJobItemsAtState, CountsTheItemsAtEveryStateWithoutOneAndLeavesOutThoseOfNoTask) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    EXPECT_CALL(data, Query("db", 2, 1,
                            "SELECT machine, jobitemstateid, COUNT(*) FROM kx_JobItem JobItem ,"
                            " kx_jobtask jobtask WHERE JobItem.jobguid = G({J})"
                            " AND JobItem.jobtaskguid = jobtask.jobtaskguid"
                            " GROUP BY machine,jobitemstateid",
                            true));

    helper.OwnersOfJobItemsAtState("db", "kx_", "{J}");
}

TEST_F(OwnersOfJobItemsAtState, ReturnsEmptyWhenNoItemHasAnOwner) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    EXPECT_CALL(data, Query("db", 2, 1, _, true)).WillOnce(Return(Value()));

    EXPECT_TRUE(helper.OwnersOfJobItemsAtState("db", "kx_", "{J}").IsEmpty());
}

TEST_F(OwnersOfJobItemsAtState, UsesAnEmptyConnectionAndQualifierAsGiven) {
    InSequence inThisOrder;
    ExpectGuards("");
    EXPECT_CALL(data, Query("", 2, 1,
                            "SELECT machine, jobitemstateid, COUNT(*) FROM JobItem JobItem ,"
                            " jobtask jobtask WHERE JobItem.jobguid = G({J})"
                            " AND JobItem.jobtaskguid = jobtask.jobtaskguid"
                            " GROUP BY machine,jobitemstateid",
                            true));

    helper.OwnersOfJobItemsAtState("", "", "{J}");

    EXPECT_EQ(made.settings, 0);
}

TEST_F(OwnersOfJobItemsAtState, PassesOnTheRefusalOfTheJobGuid) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.OwnersOfJobItemsAtState("db", "kx_", "{J}"); }, refusal,
                   {"OwnersOfJobItemsAtState"});
}

TEST_F(OwnersOfJobItemsAtState, PassesOnTheRefusalOfTheQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.OwnersOfJobItemsAtState("db", "kx_", "{J}"); }, refusal,
                   {"OwnersOfJobItemsAtState"});
}

TEST_F(OwnersOfJobItemsAtState, PassesOnAFailingQuery) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    EXPECT_CALL(data, Query("db", 2, 1, _, true)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { helper.OwnersOfJobItemsAtState("db", "kx_", "{J}"); }, failure,
                   {"OwnersOfJobItemsAtState"});
}

}  // namespace
}  // namespace kxjob
