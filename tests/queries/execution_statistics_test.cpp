#include "support/job_helper_test.h"

namespace kxjob {
namespace {

using ::testing::_;
using ::testing::InSequence;
using ::testing::Return;
using ::testing::Throw;
using testing_support::JobHelperTest;

class StatisticsTest : public JobHelperTest {
protected:
    // Here, unlike elsewhere, the qualifier is checked before the table names are made.
    void ExpectQualifier(const std::string& qualifier) {
        EXPECT_CALL(guard, CheckParameter(qualifier, "NameQualifier"));
        ExpectTableNames();
    }

    static Value OneJob() {
        return Rows(13, {{"{J}", "May", "REPORT", "RUNNING", 4, 7, 2, 1, "2026-05-01", "2026-05-02", 0.25,
                          Null{}, "{A}"}});
    }

    const AutomationError refusal{error_number::kGuardRefusal, "InputGuard", "unsafe"};
    const AutomationError noRow{error_number::kNoRow, "DataAccess", "no row"};
    const AutomationError failure{error_number::kStatementFailed, "DataAccess", "[HY000] it is gone"};
};

class GetJobExecutionStatistics : public StatisticsTest {};

TEST_F(GetJobExecutionStatistics, ReturnsTheCountersOfOneJobWhichMustBeThere) {
    InSequence inThisOrder;
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    ExpectTableNames();
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobguid, description, jobtypeid, jobstateid, nextjobitem,"
                            " totalitemcount, succeededitemcount, faileditemcount, startdt,"
                            " lastcompletiondt, sumoftimeincsq, failurenote, appstateguid FROM kx_job"
                            " WHERE jobguid = G({J})",
                            false))
        .WillOnce(Return(OneJob()));

    EXPECT_EQ(helper.GetJobExecutionStatistics("db", 5, "kx_", "{J}"), OneJob());

    EXPECT_EQ(made.settings, 0);
    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(GetJobExecutionStatistics, ReturnsTheCountersOfEveryJobWithoutOne) {
    InSequence inThisOrder;
    ExpectQualifier("kx_");
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobguid, description, jobtypeid, jobstateid, nextjobitem,"
                            " totalitemcount, succeededitemcount, faileditemcount, startdt,"
                            " lastcompletiondt, sumoftimeincsq, failurenote, appstateguid FROM kx_job",
                            true))
        .WillOnce(Return(OneJob()));

    EXPECT_EQ(helper.GetJobExecutionStatistics("db", 5, "kx_"), OneJob());
}

TEST_F(GetJobExecutionStatistics, ReturnsEmptyWhenThereIsNoJobAtAll) {
    InSequence inThisOrder;
    ExpectQualifier("kx_");
    EXPECT_CALL(data, Query("db", 5, 1, _, true)).WillOnce(Return(Value()));

    EXPECT_TRUE(helper.GetJobExecutionStatistics("db", 5, "kx_").IsEmpty());
}

TEST_F(GetJobExecutionStatistics, FailsForAnUnknownJobInBothMethodsNames) {
    InSequence inThisOrder;
    ExpectQualifier("kx_");
    EXPECT_CALL(data, Query("db", 5, 1, _, false)).WillOnce(Throw(noRow));

    ExpectPassedOn([&] { helper.GetJobExecutionStatistics("db", 5, "kx_", "{J}"); }, noRow,
                   {"piGetJobExecutionStatistics", "GetJobExecutionStatistics"});
}

TEST_F(GetJobExecutionStatistics, TakesAllThreeFromTheConfigurationWithoutAConnectionString) {
    InSequence inThisOrder;
    ExpectConfiguration("cfg-db", 3, "cfg_");
    ExpectQualifier("cfg_");
    EXPECT_CALL(data, Query("cfg-db", 3, 1,
                            "SELECT jobguid, description, jobtypeid, jobstateid, nextjobitem,"
                            " totalitemcount, succeededitemcount, faileditemcount, startdt,"
                            " lastcompletiondt, sumoftimeincsq, failurenote, appstateguid FROM cfg_job"
                            " WHERE jobguid = G({J})",
                            false));

    helper.GetJobExecutionStatistics("", 5, "kx_", "{J}");
}

TEST_F(GetJobExecutionStatistics, TakesAllThreeFromTheConfigurationWithoutAQualifier) {
    InSequence inThisOrder;
    ExpectConfiguration("cfg-db", 3, "cfg_");
    ExpectQualifier("cfg_");
    EXPECT_CALL(data, Query("cfg-db", 3, 1,
                            "SELECT jobguid, description, jobtypeid, jobstateid, nextjobitem,"
                            " totalitemcount, succeededitemcount, faileditemcount, startdt,"
                            " lastcompletiondt, sumoftimeincsq, failurenote, appstateguid FROM cfg_job"
                            " WHERE jobguid = G({J})",
                            false));

    helper.GetJobExecutionStatistics("db", 5, "", "{J}");
}

TEST_F(GetJobExecutionStatistics, PassesOnTheRefusalOfTheQualifierBeforeTheTableNamesAreMade) {
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.GetJobExecutionStatistics("db", 5, "kx_", "{J}"); }, refusal,
                   {"piGetJobExecutionStatistics", "GetJobExecutionStatistics"});
    EXPECT_EQ(made.objectFactories, 0);
}

TEST_F(GetJobExecutionStatistics, PassesOnThatThereAreNoTableNames) {
    const AutomationError missing(error_number::kClassNotRegistered, "ObjectFactory", "not registered");
    InSequence inThisOrder;
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(factory, CreateVersioned("TableNameHelper_%v.TableNameHelper")).WillOnce(Throw(missing));

    ExpectPassedOn([&] { helper.GetJobExecutionStatistics("db", 5, "kx_", "{J}"); }, missing,
                   {"piGetJobExecutionStatistics", "GetJobExecutionStatistics"});
}

class GetJobExecutionStatisticsAllowMissing : public StatisticsTest {};

TEST_F(GetJobExecutionStatisticsAllowMissing, ReturnsTheCountersOfOneJobWhichMayBeMissing) {
    InSequence inThisOrder;
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    ExpectTableNames();
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobguid, description, jobtypeid, jobstateid, nextjobitem,"
                            " totalitemcount, succeededitemcount, faileditemcount, startdt,"
                            " lastcompletiondt, sumoftimeincsq, failurenote, appstateguid FROM kx_job"
                            " WHERE jobguid = G({J})",
                            true))
        .WillOnce(Return(OneJob()));

    EXPECT_EQ(helper.GetJobExecutionStatisticsAllowMissing("db", 5, "kx_", "{J}"), OneJob());

    EXPECT_EQ(made.settings, 0);
    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(GetJobExecutionStatisticsAllowMissing, ReturnsEmptyForAnUnknownJob) {
    InSequence inThisOrder;
    ExpectQualifier("kx_");
    EXPECT_CALL(data, Query("db", 5, 1, _, true)).WillOnce(Return(Value()));

    EXPECT_TRUE(helper.GetJobExecutionStatisticsAllowMissing("db", 5, "kx_", "{J}").IsEmpty());
}

TEST_F(GetJobExecutionStatisticsAllowMissing, ReturnsTheCountersOfEveryJobForAnEmptyGuid) {
    InSequence inThisOrder;
    ExpectQualifier("kx_");
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobguid, description, jobtypeid, jobstateid, nextjobitem,"
                            " totalitemcount, succeededitemcount, faileditemcount, startdt,"
                            " lastcompletiondt, sumoftimeincsq, failurenote, appstateguid FROM kx_job",
                            true));

    helper.GetJobExecutionStatisticsAllowMissing("db", 5, "kx_", "");
}

TEST_F(GetJobExecutionStatisticsAllowMissing, TakesAllThreeFromTheConfigurationWithoutAConnectionString) {
    InSequence inThisOrder;
    ExpectConfiguration("cfg-db", 3, "cfg_");
    ExpectQualifier("cfg_");
    EXPECT_CALL(data, Query("cfg-db", 3, 1, _, true));

    helper.GetJobExecutionStatisticsAllowMissing("", 5, "kx_", "{J}");
}

TEST_F(GetJobExecutionStatisticsAllowMissing, TakesAllThreeFromTheConfigurationWithoutAQualifier) {
    InSequence inThisOrder;
    ExpectConfiguration("cfg-db", 3, "cfg_");
    ExpectQualifier("cfg_");
    EXPECT_CALL(data, Query("cfg-db", 3, 1, _, true));

    helper.GetJobExecutionStatisticsAllowMissing("db", 5, "", "{J}");
}

TEST_F(GetJobExecutionStatisticsAllowMissing, PassesOnTheRefusalOfTheQualifier) {
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.GetJobExecutionStatisticsAllowMissing("db", 5, "kx_", "{J}"); }, refusal,
                   {"piGetJobExecutionStatistics", "GetJobExecutionStatisticsAllowMissing"});
}

TEST_F(GetJobExecutionStatisticsAllowMissing, PassesOnAFailingQueryInBothMethodsNames) {
    InSequence inThisOrder;
    ExpectQualifier("kx_");
    EXPECT_CALL(data, Query("db", 5, 1, _, true)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { helper.GetJobExecutionStatisticsAllowMissing("db", 5, "kx_", "{J}"); }, failure,
                   {"piGetJobExecutionStatistics", "GetJobExecutionStatisticsAllowMissing"});
}

}  // namespace
}  // namespace kxjob
