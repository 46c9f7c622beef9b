#include "support/job_helper_test.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using ::testing::InSequence;
using ::testing::Throw;
using testing_support::JobHelperTest;
using testing_support::kRefusal;
using testing_support::kStatementFailure;

class UpdateTaskRegistration : public JobHelperTest {};

TEST_F(UpdateTaskRegistration, WritesTheItemBeforeTheState) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    ExpectTrace("Job Task {T} is updating state to RUNNING", 4, "UpdateTaskRegistration");
    EXPECT_CALL(data, Execute("db", 2, 1,
                              "UPDATE kx_jobtask SET lastjobitem = V(i7), jobtaskstateid = V(RUNNING)"
                              " WHERE jobtaskguid = G({T})"));

    helper.UpdateTaskRegistration("db", "kx_", "{T}", "i7", "RUNNING");
}

TEST_F(UpdateTaskRegistration, WritesTheItemAloneWithoutAComma) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    ExpectTrace("Job Task {T} is updating state to ", 4, "UpdateTaskRegistration");
    EXPECT_CALL(data,
                Execute("db", 2, 1, "UPDATE kx_jobtask SET lastjobitem = V(i7) WHERE jobtaskguid = G({T})"));

    helper.UpdateTaskRegistration("db", "kx_", "{T}", "i7", "");
}

TEST_F(UpdateTaskRegistration, WritesTheStateAloneWithoutAComma) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    ExpectTrace("Job Task {T} is updating state to FAILED", 4, "UpdateTaskRegistration");
    EXPECT_CALL(data, Execute("db", 2, 1,
                              "UPDATE kx_jobtask SET jobtaskstateid = V(FAILED)"
                              " WHERE jobtaskguid = G({T})"));

    helper.UpdateTaskRegistration("db", "kx_", "{T}", "", "FAILED");
}

TEST_F(UpdateTaskRegistration, TakesAnyTextForAState) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    ExpectTrace("Job Task {T} is updating state to it's resting", 4, "UpdateTaskRegistration");
    EXPECT_CALL(data, Execute("db", 2, 1,
                              "UPDATE kx_jobtask SET lastjobitem = V( ), jobtaskstateid = V(it's resting)"
                              " WHERE jobtaskguid = G({T})"));

    helper.UpdateTaskRegistration("db", "kx_", "{T}", " ", "it's resting");
}

TEST_F(UpdateTaskRegistration, RefusesAnUpdateOfNothingAfterItsTraceLine) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    ExpectTrace("Job Task {T} is updating state to ", 4, "UpdateTaskRegistration");

    ExpectOwnError([&] { helper.UpdateTaskRegistration("db", "kx_", "{T}", "", ""); }, 747,
                   "UpdateTaskRegistration", "No update specified", {"UpdateTaskRegistration"});
}

TEST_F(UpdateTaskRegistration, UsesAnEmptyConnectionAndQualifierAsTheyAre) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    ExpectTrace("Job Task {T} is updating state to ", 4, "UpdateTaskRegistration");
    EXPECT_CALL(data, Execute("", 2, 1, "UPDATE jobtask SET lastjobitem = V(i7) WHERE jobtaskguid = G({T})"));

    helper.UpdateTaskRegistration("", "", "{T}", "i7", "");
    EXPECT_EQ(made.settings, 0);
}

TEST_F(UpdateTaskRegistration, StopsAtARefusedQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx;", "NameQualifier")).WillOnce(Throw(kRefusal));

    ExpectPassedOn([&] { helper.UpdateTaskRegistration("db", "kx;", "{T}", "i7", "RUNNING"); }, kRefusal,
                   {"UpdateTaskRegistration"});
}

TEST_F(UpdateTaskRegistration, StopsAtARefusedTaskBeforeItsTraceLine) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{T'", "JobTaskGUID")).WillOnce(Throw(kRefusal));

    ExpectPassedOn([&] { helper.UpdateTaskRegistration("db", "kx_", "{T'", "i7", "RUNNING"); }, kRefusal,
                   {"UpdateTaskRegistration"});
}

TEST_F(UpdateTaskRegistration, StopsWhenItsTraceLineFails) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter).Times(2);
    EXPECT_CALL(trace, Write).WillOnce(Throw(kStatementFailure));

    ExpectPassedOn([&] { helper.UpdateTaskRegistration("db", "kx_", "{T}", "i7", "RUNNING"); },
                   kStatementFailure, {"UpdateTaskRegistration"});
}

TEST_F(UpdateTaskRegistration, PassesOnAFailingStatement) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter).Times(2);
    EXPECT_CALL(trace, Write);
    EXPECT_CALL(data, Execute).WillOnce(Throw(kStatementFailure));

    ExpectPassedOn([&] { helper.UpdateTaskRegistration("db", "kx_", "{T}", "i7", "RUNNING"); },
                   kStatementFailure, {"UpdateTaskRegistration"});
}

class UpdateJobTaskLock : public JobHelperTest {};

TEST_F(UpdateJobTaskLock, WritesTheLockAsATextAndFindsTheTaskByItsKey) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    EXPECT_CALL(data,
                Execute("db", 2, 1, "UPDATE kx_jobtask SET lockguid = V({L}) WHERE jobtaskguid = G({T})"));

    helper.UpdateJobTaskLock("db", "kx_", "{T}", "{L}");

    EXPECT_EQ(made.objectFactories, 1);
}

TEST_F(UpdateJobTaskLock, ClearsTheLockWithAnEmptyText) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    EXPECT_CALL(data, Execute("db", 2, 1, "UPDATE kx_jobtask SET lockguid = V() WHERE jobtaskguid = G({T})"));

    helper.UpdateJobTaskLock("db", "kx_", "{T}", "");
}

TEST_F(UpdateJobTaskLock, LooksForNoRowSoAnUnknownTaskIsNoError) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("unknown", "JobTaskGUID"));
    EXPECT_CALL(
        data, Execute("db", 2, 1, "UPDATE kx_jobtask SET lockguid = V({L}) WHERE jobtaskguid = G(unknown)"));
    EXPECT_CALL(data, Query).Times(0);

    EXPECT_NO_THROW(helper.UpdateJobTaskLock("db", "kx_", "unknown", "{L}"));
}

TEST_F(UpdateJobTaskLock, UsesAnEmptyConnectionAndQualifierAsTheyAre) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    EXPECT_CALL(data, Execute("", 2, 1, "UPDATE jobtask SET lockguid = V({L}) WHERE jobtaskguid = G({T})"));

    helper.UpdateJobTaskLock("", "", "{T}", "{L}");
    EXPECT_EQ(made.settings, 0);
}

TEST_F(UpdateJobTaskLock, StopsAtARefusedQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx;", "NameQualifier")).WillOnce(Throw(kRefusal));

    ExpectPassedOn([&] { helper.UpdateJobTaskLock("db", "kx;", "{T}", "{L}"); }, kRefusal,
                   {"UpdateJobTaskLock"});
}

TEST_F(UpdateJobTaskLock, StopsAtARefusedTask) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{T'", "JobTaskGUID")).WillOnce(Throw(kRefusal));

    ExpectPassedOn([&] { helper.UpdateJobTaskLock("db", "kx_", "{T'", "{L}"); }, kRefusal,
                   {"UpdateJobTaskLock"});
}

TEST_F(UpdateJobTaskLock, PassesOnAFailingStatement) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter).Times(2);
    EXPECT_CALL(data, Execute).WillOnce(Throw(kStatementFailure));

    ExpectPassedOn([&] { helper.UpdateJobTaskLock("db", "kx_", "{T}", "{L}"); }, kStatementFailure,
                   {"UpdateJobTaskLock"});
}

class UpdateTaskCommand : public JobHelperTest {};

TEST_F(UpdateTaskCommand, WritesTheCommandAndLeavesTheTaskUnchecked) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(
        data, Execute("db", 2, 1, "UPDATE kx_jobtask SET command = V(STOP) WHERE jobtaskguid = G({T}';--)"));

    helper.UpdateTaskCommand("db", "kx_", "{T}';--", "STOP");

    EXPECT_EQ(made.objectFactories, 1);
}

TEST_F(UpdateTaskCommand, WritesAnEmptyCommandToo) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Execute("db", 2, 1, "UPDATE kx_jobtask SET command = V() WHERE jobtaskguid = G({T})"));

    helper.UpdateTaskCommand("db", "kx_", "{T}", "");
}

TEST_F(UpdateTaskCommand, UsesAnEmptyConnectionAndQualifierAsTheyAre) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    EXPECT_CALL(data, Execute("", 2, 1, "UPDATE jobtask SET command = V(STOP) WHERE jobtaskguid = G({T})"));

    helper.UpdateTaskCommand("", "", "{T}", "STOP");
    EXPECT_EQ(made.settings, 0);
}

TEST_F(UpdateTaskCommand, StopsAtARefusedQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx;", "NameQualifier")).WillOnce(Throw(kRefusal));

    ExpectPassedOn([&] { helper.UpdateTaskCommand("db", "kx;", "{T}", "STOP"); }, kRefusal,
                   {"UpdateTaskCommand"});
}

TEST_F(UpdateTaskCommand, PassesOnAFailingStatement) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter);
    EXPECT_CALL(data, Execute).WillOnce(Throw(kStatementFailure));

    ExpectPassedOn([&] { helper.UpdateTaskCommand("db", "kx_", "{T}", "STOP"); }, kStatementFailure,
                   {"UpdateTaskCommand"});
}

}  // namespace
}  // namespace kxjob
