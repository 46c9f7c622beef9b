#include "support/job_helper_test.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using ::testing::InSequence;
using ::testing::Return;
using ::testing::Throw;
using testing_support::ErrorOf;
using testing_support::JobHelperTest;
using testing_support::kRefusal;
using testing_support::kStatementFailure;

class RegisterJobTask : public JobHelperTest {};

TEST_F(RegisterJobTask, InsertsARunningTaskAndReturnsItsNewKey) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{new}"));
    EXPECT_CALL(times, NowISODateTime()).WillOnce(Return("2026-03-01T09:30:15.123Z"));
    EXPECT_CALL(data, Execute("db", 2, 1,
                              "INSERT INTO kx_jobtask ( jobtaskguid, description, jobguid, usercontext,"
                              " machine, processid, threadid, startdt, jobtaskstateid) VALUES (V({new}),"
                              " V(Night run), V({J}), V(ann), V(pc7), 1234, 56, V(2026-03-01T09:30:15.123Z),"
                              " V(RUNNING))"));

    EXPECT_EQ(helper.RegisterJobTask("db", "kx_", "Night run", "{J}", "ann", "pc7", 1234, 56), "{new}");
    EXPECT_EQ(made.objectFactories, 1);
    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(RegisterJobTask, ReturnsAnotherKeyForEachCall) {
    InSequence inThisOrder;
    for (const char* key : {"{first}", "{second}"}) {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
        EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
        EXPECT_CALL(guids, NewGuid()).WillOnce(Return(key));
        EXPECT_CALL(times, NowISODateTime()).WillOnce(Return("now"));
        EXPECT_CALL(data, Execute);
    }

    EXPECT_EQ(helper.RegisterJobTask("db", "kx_", "d", "{J}", "u", "m", 1, 2), "{first}");
    EXPECT_EQ(helper.RegisterJobTask("db", "kx_", "d", "{J}", "u", "m", 1, 2), "{second}");
}

TEST_F(RegisterJobTask, HandsValuesThatAreNoTextToTheFormatterAsTheyAre) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{new}"));
    EXPECT_CALL(times, NowISODateTime()).WillOnce(Return("now"));
    EXPECT_CALL(data, Execute("7", 2, 1,
                              "INSERT INTO kx_jobtask ( jobtaskguid, description, jobguid, usercontext,"
                              " machine, processid, threadid, startdt, jobtaskstateid) VALUES (V({new}),"
                              " NULL, V({J}), NULL, V(12), -1234, 0, V(now), V(RUNNING))"));

    helper.RegisterJobTask(7, "kx_", Null(), "{J}", Value(), 12, -1234, 0);
}

TEST_F(RegisterJobTask, UsesAnEmptyConnectionAndQualifierAsTheyAre) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("", "JobGUID"));
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{new}"));
    EXPECT_CALL(times, NowISODateTime()).WillOnce(Return("now"));
    EXPECT_CALL(data, Execute("", 2, 1,
                              "INSERT INTO jobtask ( jobtaskguid, description, jobguid, usercontext,"
                              " machine, processid, threadid, startdt, jobtaskstateid) VALUES (V({new}),"
                              " V(), V(), V(), V(), 1, 2, V(now), V(RUNNING))"));

    EXPECT_EQ(helper.RegisterJobTask("", "", "", "", "", "", 1, 2), "{new}");
    EXPECT_EQ(made.settings, 0);
}

TEST_F(RegisterJobTask, StopsAtARefusedQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx;", "NameQualifier")).WillOnce(Throw(kRefusal));

    ExpectPassedOn([&] { helper.RegisterJobTask("db", "kx;", "d", "{J}", "u", "m", 1, 2); }, kRefusal,
                   {"RegisterJobTask"});
}

TEST_F(RegisterJobTask, StopsAtARefusedJob) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{J'", "JobGUID")).WillOnce(Throw(kRefusal));

    ExpectPassedOn([&] { helper.RegisterJobTask("db", "kx_", "d", "{J'", "u", "m", 1, 2); }, kRefusal,
                   {"RegisterJobTask"});
}

TEST_F(RegisterJobTask, StopsWithoutAKey) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter).Times(2);
    EXPECT_CALL(guids, NewGuid()).WillOnce(Throw(kStatementFailure));

    ExpectPassedOn([&] { helper.RegisterJobTask("db", "kx_", "d", "{J}", "u", "m", 1, 2); },
                   kStatementFailure, {"RegisterJobTask"});
}

TEST_F(RegisterJobTask, StopsWithoutATime) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter).Times(2);
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{new}"));
    EXPECT_CALL(times, NowISODateTime()).WillOnce(Throw(kStatementFailure));

    ExpectPassedOn([&] { helper.RegisterJobTask("db", "kx_", "d", "{J}", "u", "m", 1, 2); },
                   kStatementFailure, {"RegisterJobTask"});
}

TEST_F(RegisterJobTask, PassesOnAFailingStatement) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter).Times(2);
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{new}"));
    EXPECT_CALL(times, NowISODateTime()).WillOnce(Return("now"));
    EXPECT_CALL(data, Execute).WillOnce(Throw(kStatementFailure));

    ExpectPassedOn([&] { helper.RegisterJobTask("db", "kx_", "d", "{J}", "u", "m", 1, 2); },
                   kStatementFailure, {"RegisterJobTask"});
}

TEST_F(RegisterJobTask, CannotTakeNullForAConnection) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter).Times(2);
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{new}"));
    EXPECT_CALL(times, NowISODateTime()).WillOnce(Return("now"));

    const AutomationError error =
        ErrorOf([&] { helper.RegisterJobTask(Null(), "kx_", "d", "{J}", "u", "m", 1, 2); });

    EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x800A005EU));
    ExpectTold(error, {"RegisterJobTask"});
}

TEST_F(RegisterJobTask, StopsWithoutTheTableNames) {
    EXPECT_CALL(factory, CreateVersioned("TableNameHelper_%v.TableNameHelper"))
        .WillOnce(Throw(kStatementFailure));

    ExpectPassedOn([&] { helper.RegisterJobTask("db", "kx_", "d", "{J}", "u", "m", 1, 2); },
                   kStatementFailure, {"RegisterJobTask"});
}

class UnRegisterJobTask : public JobHelperTest {};

TEST_F(UnRegisterJobTask, ClosesTheTaskAsComplete) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(times, NowISODateTime()).WillOnce(Return("2026-03-01T09:30:15.123Z"));
    EXPECT_CALL(data, Execute("db", 2, 1,
                              "UPDATE kx_jobtask SET jobtaskstateid = V(COMPLETE),"
                              " enddt = V(2026-03-01T09:30:15.123Z) WHERE jobtaskguid = G({T})"));

    helper.UnRegisterJobTask("db", "kx_", "{T}");

    EXPECT_EQ(made.objectFactories, 1);
}

TEST_F(UnRegisterJobTask, PassesARefusedTaskOnThroughBothMethods) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{T'", "JobTaskGUID")).WillOnce(Throw(kRefusal));

    ExpectPassedOn([&] { helper.UnRegisterJobTask("db", "kx_", "{T'"); }, kRefusal,
                   {"UnRegisterJobTaskIndicatingStatus", "UnRegisterJobTask"});
}

TEST_F(UnRegisterJobTask, PassesAFailingStatementOnThroughBothMethods) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter).Times(2);
    EXPECT_CALL(times, NowISODateTime()).WillOnce(Return("now"));
    EXPECT_CALL(data, Execute).WillOnce(Throw(kStatementFailure));

    ExpectPassedOn([&] { helper.UnRegisterJobTask("db", "kx_", "{T}"); }, kStatementFailure,
                   {"UnRegisterJobTaskIndicatingStatus", "UnRegisterJobTask"});
}

class UnRegisterJobTaskIndicatingStatus : public JobHelperTest {};

TEST_F(UnRegisterJobTaskIndicatingStatus, ClosesAsCompleteAfterSuccess) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(times, NowISODateTime()).WillOnce(Return("now"));
    EXPECT_CALL(data, Execute("db", 2, 1,
                              "UPDATE kx_jobtask SET jobtaskstateid = V(COMPLETE), enddt = V(now)"
                              " WHERE jobtaskguid = G({T})"));

    helper.UnRegisterJobTaskIndicatingStatus("db", "kx_", "{T}", true);
}

TEST_F(UnRegisterJobTaskIndicatingStatus, ClosesAsFailedOtherwise) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(times, NowISODateTime()).WillOnce(Return("now"));
    EXPECT_CALL(data, Execute("db", 2, 1,
                              "UPDATE kx_jobtask SET jobtaskstateid = V(FAILED), enddt = V(now)"
                              " WHERE jobtaskguid = G({T})"));

    helper.UnRegisterJobTaskIndicatingStatus("db", "kx_", "{T}", false);
}

TEST_F(UnRegisterJobTaskIndicatingStatus, ClosesATaskTwiceWithoutComplaint) {
    InSequence inThisOrder;
    for (int call = 0; call < 2; ++call) {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter).Times(2);
        EXPECT_CALL(times, NowISODateTime()).WillOnce(Return("now"));
        EXPECT_CALL(data, Execute("db", 2, 1,
                                  "UPDATE kx_jobtask SET jobtaskstateid = V(FAILED), enddt = V(now)"
                                  " WHERE jobtaskguid = G({T})"));
    }

    helper.UnRegisterJobTaskIndicatingStatus("db", "kx_", "{T}", false);
    helper.UnRegisterJobTaskIndicatingStatus("db", "kx_", "{T}", false);
}

TEST_F(UnRegisterJobTaskIndicatingStatus, UsesAnEmptyConnectionAndQualifierAsTheyAre) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    EXPECT_CALL(times, NowISODateTime()).WillOnce(Return("now"));
    EXPECT_CALL(data, Execute("", 2, 1,
                              "UPDATE jobtask SET jobtaskstateid = V(COMPLETE), enddt = V(now)"
                              " WHERE jobtaskguid = G({T})"));

    helper.UnRegisterJobTaskIndicatingStatus("", "", "{T}", true);
    EXPECT_EQ(made.settings, 0);
}

TEST_F(UnRegisterJobTaskIndicatingStatus, StopsAtARefusedTaskBeforeTheQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{T'", "JobTaskGUID")).WillOnce(Throw(kRefusal));

    ExpectPassedOn([&] { helper.UnRegisterJobTaskIndicatingStatus("db", "kx_", "{T'", true); }, kRefusal,
                   {"UnRegisterJobTaskIndicatingStatus"});
}

TEST_F(UnRegisterJobTaskIndicatingStatus, StopsAtARefusedQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    EXPECT_CALL(guard, CheckParameter("kx;", "NameQualifier")).WillOnce(Throw(kRefusal));

    ExpectPassedOn([&] { helper.UnRegisterJobTaskIndicatingStatus("db", "kx;", "{T}", true); }, kRefusal,
                   {"UnRegisterJobTaskIndicatingStatus"});
}

TEST_F(UnRegisterJobTaskIndicatingStatus, StopsWithoutATime) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter).Times(2);
    EXPECT_CALL(times, NowISODateTime()).WillOnce(Throw(kStatementFailure));

    ExpectPassedOn([&] { helper.UnRegisterJobTaskIndicatingStatus("db", "kx_", "{T}", true); },
                   kStatementFailure, {"UnRegisterJobTaskIndicatingStatus"});
}

TEST_F(UnRegisterJobTaskIndicatingStatus, PassesOnAFailingStatement) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter).Times(2);
    EXPECT_CALL(times, NowISODateTime()).WillOnce(Return("now"));
    EXPECT_CALL(data, Execute).WillOnce(Throw(kStatementFailure));

    ExpectPassedOn([&] { helper.UnRegisterJobTaskIndicatingStatus("db", "kx_", "{T}", false); },
                   kStatementFailure, {"UnRegisterJobTaskIndicatingStatus"});
}

}  // namespace
}  // namespace kxjob
