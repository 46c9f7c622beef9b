#include <string>

#include "support/job_helper_test.h"

namespace kxjob {
namespace {

using ::testing::_;
using ::testing::InSequence;
using ::testing::Return;
using ::testing::Throw;
using testing_support::JobHelperTest;

class FilteredQueryTest : public JobHelperTest {
protected:
    void ExpectQualifier(const std::string& qualifier) {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter(qualifier, "NameQualifier"));
    }

    const AutomationError refusal{error_number::kGuardRefusal, "InputGuard", "unsafe"};
    const AutomationError failure{error_number::kStatementFailed, "DataAccess", "[HY000] it is gone"};
};

class GetJob : public FilteredQueryTest {
protected:
    static Value OneJob() {
        return Rows(14, {{"{J}", "May", "REPORT", "<parameters/>", "READY", 1, 7, 0, 0, "2026-05-01", Null{},
                          0.5, "{A}", Null{}}});
    }
};

TEST_F(GetJob, FiltersByAllFourInFixedOrderAndReturnsTheRowsAsTheyCame) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobguid, description, jobtypeid, parameters, jobstateid, nextjobitem,"
                            " totalitemcount, succeededitemcount, faileditemcount, startdt,"
                            " lastcompletiondt, sumoftimeincsq, appstateguid, failurenote  FROM kx_job"
                            " WHERE  jobguid = G({J}) AND  jobtypeid = G(REPORT) AND  jobstateid = G(READY)"
                            " AND  appstateguid = G({A})",
                            true))
        .WillOnce(Return(OneJob()));

    EXPECT_EQ(helper.GetJob("db", 5, "kx_", "{J}", "REPORT", "READY", "{A}"), OneJob());

    EXPECT_EQ(made.objectFactories, 1);
    EXPECT_EQ(made.settings, 0);
    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(GetJob, ReturnsEveryJobWithoutAFilter) {
    InSequence inThisOrder;
    ExpectQualifier("kx_");
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobguid, description, jobtypeid, parameters, jobstateid, nextjobitem,"
                            " totalitemcount, succeededitemcount, faileditemcount, startdt,"
                            " lastcompletiondt, sumoftimeincsq, appstateguid, failurenote  FROM kx_job",
                            true))
        .WillOnce(Return(OneJob()));

    EXPECT_EQ(helper.GetJob("db", 5, "kx_"), OneJob());
}

TEST_F(GetJob, FiltersByTheJobAlone) {
    InSequence inThisOrder;
    ExpectQualifier("kx_");
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobguid, description, jobtypeid, parameters, jobstateid, nextjobitem,"
                            " totalitemcount, succeededitemcount, faileditemcount, startdt,"
                            " lastcompletiondt, sumoftimeincsq, appstateguid, failurenote  FROM kx_job"
                            " WHERE  jobguid = G({J})",
                            true));

    helper.GetJob("db", 5, "kx_", "{J}");
}

TEST_F(GetJob, FiltersByTheStateAloneWithoutATrailingAnd) {
    InSequence inThisOrder;
    ExpectQualifier("kx_");
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobguid, description, jobtypeid, parameters, jobstateid, nextjobitem,"
                            " totalitemcount, succeededitemcount, faileditemcount, startdt,"
                            " lastcompletiondt, sumoftimeincsq, appstateguid, failurenote  FROM kx_job"
                            " WHERE  jobstateid = G(QUEUED)",
                            true));

    helper.GetJob("db", 5, "kx_", "", "", "QUEUED");
}

TEST_F(GetJob, FiltersByTheTypeAlone) {
    InSequence inThisOrder;
    ExpectQualifier("kx_");
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobguid, description, jobtypeid, parameters, jobstateid, nextjobitem,"
                            " totalitemcount, succeededitemcount, faileditemcount, startdt,"
                            " lastcompletiondt, sumoftimeincsq, appstateguid, failurenote  FROM kx_job"
                            " WHERE  jobtypeid = G(REPORT)",
                            true));

    helper.GetJob("db", 5, "kx_", "", "REPORT");
}

TEST_F(GetJob, FiltersByTheApplicationStateAlone) {
    InSequence inThisOrder;
    ExpectQualifier("kx_");
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobguid, description, jobtypeid, parameters, jobstateid, nextjobitem,"
                            " totalitemcount, succeededitemcount, faileditemcount, startdt,"
                            " lastcompletiondt, sumoftimeincsq, appstateguid, failurenote  FROM kx_job"
                            " WHERE  appstateguid = G({A})",
                            true));

    helper.GetJob("db", 5, "kx_", "", "", "", "{A}");
}

TEST_F(GetJob, ReturnsEmptyWhenNoJobMatches) {
    InSequence inThisOrder;
    ExpectQualifier("kx_");
    EXPECT_CALL(data, Query("db", 5, 1, _, true)).WillOnce(Return(Value()));

    EXPECT_TRUE(helper.GetJob("db", 5, "kx_", "{J}").IsEmpty());
}

TEST_F(GetJob, LeavesTheCallersApplicationStateAlone) {
    std::string applicationState = "{A}";
    InSequence inThisOrder;
    ExpectQualifier("kx_");
    EXPECT_CALL(data, Query("db", 5, 1, _, true)).WillOnce(Return(OneJob()));

    helper.GetJob("db", 5, "kx_", "", "", "", applicationState);

    EXPECT_EQ(applicationState, "{A}");
}

TEST_F(GetJob, TakesAllThreeFromTheConfigurationWithoutAConnectionString) {
    InSequence inThisOrder;
    ExpectConfiguration("cfg-db", 3, "cfg_");
    ExpectQualifier("cfg_");
    EXPECT_CALL(data, Query("cfg-db", 3, 1,
                            "SELECT jobguid, description, jobtypeid, parameters, jobstateid, nextjobitem,"
                            " totalitemcount, succeededitemcount, faileditemcount, startdt,"
                            " lastcompletiondt, sumoftimeincsq, appstateguid, failurenote  FROM cfg_job"
                            " WHERE  jobguid = G({J})",
                            true))
        .WillOnce(Return(OneJob()));

    EXPECT_EQ(helper.GetJob("", 5, "kx_", "{J}"), OneJob());
}

TEST_F(GetJob, TakesAllThreeFromTheConfigurationWithoutAQualifier) {
    InSequence inThisOrder;
    ExpectConfiguration("cfg-db", 3, "cfg_");
    ExpectQualifier("cfg_");
    EXPECT_CALL(data, Query("cfg-db", 3, 1,
                            "SELECT jobguid, description, jobtypeid, parameters, jobstateid, nextjobitem,"
                            " totalitemcount, succeededitemcount, faileditemcount, startdt,"
                            " lastcompletiondt, sumoftimeincsq, appstateguid, failurenote  FROM cfg_job"
                            " WHERE  jobguid = G({J})",
                            true))
        .WillOnce(Return(OneJob()));

    EXPECT_EQ(helper.GetJob("db", 5, "", "{J}"), OneJob());
}

TEST_F(GetJob, PassesOnTheRefusalOfTheQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.GetJob("db", 5, "kx_", "{J}"); }, refusal, {"GetJob"});
}

TEST_F(GetJob, PassesOnThatThereAreNoTableNames) {
    const AutomationError missing(error_number::kClassNotRegistered, "ObjectFactory", "not registered");
    EXPECT_CALL(factory, CreateVersioned("TableNameHelper_%v.TableNameHelper")).WillOnce(Throw(missing));

    ExpectPassedOn([&] { helper.GetJob("db", 5, "kx_"); }, missing, {"GetJob"});
}

TEST_F(GetJob, PassesOnAFailingQuery) {
    InSequence inThisOrder;
    ExpectQualifier("kx_");
    EXPECT_CALL(data, Query("db", 5, 1, _, true)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { helper.GetJob("db", 5, "kx_"); }, failure, {"GetJob"});
}

class GetJobType : public FilteredQueryTest {};

TEST_F(GetJobType, ReturnsTheRowOfOneType) {
    const Value row = Rows(4, {{"REPORT", "Monthly reports", "Impl.Report", "Notify.Report"}});
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobtypeid, description, implprogid, notificationprogid  FROM kx_JobType"
                            " WHERE jobtypeid = G(REPORT)",
                            true))
        .WillOnce(Return(row));

    EXPECT_EQ(helper.GetJobType("db", 5, "kx_", "REPORT"), row);

    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(GetJobType, ReturnsEveryTypeWithoutOne) {
    const Value rows = Rows(4, {{"A", "a", "Impl.A", Null{}}, {"B", "b", "Impl.B", Null{}}});
    InSequence inThisOrder;
    ExpectQualifier("kx_");
    EXPECT_CALL(data,
                Query("db", 5, 1,
                      "SELECT jobtypeid, description, implprogid, notificationprogid  FROM kx_JobType", true))
        .WillOnce(Return(rows));

    EXPECT_EQ(helper.GetJobType("db", 5, "kx_"), rows);
}

TEST_F(GetJobType, ReturnsEmptyForAnUnknownType) {
    InSequence inThisOrder;
    ExpectQualifier("kx_");
    EXPECT_CALL(data, Query("db", 5, 1, _, true)).WillOnce(Return(Value()));

    EXPECT_TRUE(helper.GetJobType("db", 5, "kx_", "NONE").IsEmpty());
}

TEST_F(GetJobType, UsesAnEmptyConnectionAndQualifierAsGiven) {
    InSequence inThisOrder;
    ExpectQualifier("");
    EXPECT_CALL(
        data,
        Query("", 5, 1, "SELECT jobtypeid, description, implprogid, notificationprogid  FROM JobType", true));

    helper.GetJobType("", 5, "");

    EXPECT_EQ(made.settings, 0);
}

TEST_F(GetJobType, PassesOnTheRefusalOfTheQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.GetJobType("db", 5, "kx_", "REPORT"); }, refusal, {"GetJobType"});
}

TEST_F(GetJobType, PassesOnAFailingQuery) {
    InSequence inThisOrder;
    ExpectQualifier("kx_");
    EXPECT_CALL(data, Query("db", 5, 1, _, true)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { helper.GetJobType("db", 5, "kx_", "REPORT"); }, failure, {"GetJobType"});
}

class GetJobTasks : public FilteredQueryTest {
protected:
    static Value TwoTasks() {
        return Rows(13, {{"{T}", "one", "{J}", "HOST", 4711, 815, "i7", Null{}, "ann", "RUNNING",
                          "2026-05-01", Null{}, "{L}"},
                         {"{U}", "two", "{J}", "HOST", 4711, 816, Null{}, "STOP", "ann", "COMPLETE",
                          "2026-05-01", "2026-05-02", Null{}}});
    }
};

TEST_F(GetJobTasks, ReturnsTheTasksOfOneJob) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobtaskguid, description, jobguid, machine, processid, threadid,"
                            " lastjobitem, command, usercontext, jobtaskstateid, startdt, enddt, lockguid"
                            " FROM kx_jobtask WHERE jobguid = G({J})",
                            true))
        .WillOnce(Return(TwoTasks()));

    EXPECT_EQ(helper.GetJobTasks("db", 5, "kx_", "{J}"), TwoTasks());

    EXPECT_EQ(made.settings, 0);
    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(GetJobTasks, ReturnsTheTasksOfAllJobsWithoutAJob) {
    InSequence inThisOrder;
    ExpectQualifier("kx_");
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobtaskguid, description, jobguid, machine, processid, threadid,"
                            " lastjobitem, command, usercontext, jobtaskstateid, startdt, enddt, lockguid"
                            " FROM kx_jobtask",
                            true))
        .WillOnce(Return(TwoTasks()));

    EXPECT_EQ(helper.GetJobTasks("db", 5, "kx_"), TwoTasks());
}

TEST_F(GetJobTasks, ReturnsEmptyWhenThereIsNoTask) {
    InSequence inThisOrder;
    ExpectQualifier("kx_");
    EXPECT_CALL(data, Query("db", 5, 1, _, true)).WillOnce(Return(Value()));

    EXPECT_TRUE(helper.GetJobTasks("db", 5, "kx_", "{J}").IsEmpty());
}

TEST_F(GetJobTasks, TakesAllThreeFromTheConfigurationWithoutAConnectionString) {
    InSequence inThisOrder;
    ExpectConfiguration("cfg-db", 3, "cfg_");
    ExpectQualifier("cfg_");
    EXPECT_CALL(data, Query("cfg-db", 3, 1,
                            "SELECT jobtaskguid, description, jobguid, machine, processid, threadid,"
                            " lastjobitem, command, usercontext, jobtaskstateid, startdt, enddt, lockguid"
                            " FROM cfg_jobtask WHERE jobguid = G({J})",
                            true));

    helper.GetJobTasks("", 5, "kx_", "{J}");
}

TEST_F(GetJobTasks, TakesAllThreeFromTheConfigurationWithoutAQualifier) {
    InSequence inThisOrder;
    ExpectConfiguration("cfg-db", 3, "cfg_");
    ExpectQualifier("cfg_");
    EXPECT_CALL(data, Query("cfg-db", 3, 1,
                            "SELECT jobtaskguid, description, jobguid, machine, processid, threadid,"
                            " lastjobitem, command, usercontext, jobtaskstateid, startdt, enddt, lockguid"
                            " FROM cfg_jobtask WHERE jobguid = G({J})",
                            true));

    helper.GetJobTasks("db", 5, "", "{J}");
}

TEST_F(GetJobTasks, PassesOnTheRefusalOfTheQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.GetJobTasks("db", 5, "kx_", "{J}"); }, refusal, {"GetJobTasks"});
}

TEST_F(GetJobTasks, PassesOnAFailingQuery) {
    InSequence inThisOrder;
    ExpectQualifier("kx_");
    EXPECT_CALL(data, Query("db", 5, 1, _, true)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { helper.GetJobTasks("db", 5, "kx_", "{J}"); }, failure, {"GetJobTasks"});
}

}  // namespace
}  // namespace kxjob
