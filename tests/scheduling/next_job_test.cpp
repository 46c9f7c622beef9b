#include <cmath>
#include <limits>
#include <map>

#include "scheduling/next_job_test_support.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using ::testing::_;
using ::testing::AnyNumber;
using ::testing::InSequence;
using ::testing::Return;
using ::testing::Throw;
using testing_support::kRaised;
using testing_support::NextJobTest;

class GetNextJob : public NextJobTest {
protected:
    /// What is picked of `count` QUEUED jobs, {1}, {2} ..., when `drawn` is drawn.
    std::string PickOf(int count, float drawn) {
        std::vector<std::vector<Value>> jobs;
        for (int i = 1; i <= count; ++i) jobs.push_back({"{" + std::to_string(i) + "}", "T1", "QUEUED"});
        const Value types = Rows(4, {{"T1", "d", "Impl_83.Totals", "n"}});
        EXPECT_CALL(times, NowISODateTime()).WillOnce(Return("now"));
        EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).Times(2);
        EXPECT_CALL(factory, CreateVersioned("TableNameHelper_%v.TableNameHelper"))
            .Times(2)
            .WillRepeatedly(Return(tableNames));
        EXPECT_CALL(data, Query("db", 5, 1, kJobsQuery, true)).WillOnce(Return(Rows(3, jobs)));
        EXPECT_CALL(data, Query("db", 5, 1, kJobTypesQuery, true)).WillOnce(Return(types));
        ExpectCreatable(count);
        EXPECT_CALL(trace, Write(_, _, "Job_83", "JobHelper", "LowImpactGetNextJob")).Times(2);
        {
            InSequence seededFirst;
            ExpectPick(drawn);
        }
        NextJobTest::GetNextJob();
        testing::Mock::VerifyAndClearExpectations(&times);
        testing::Mock::VerifyAndClearExpectations(&guard);
        testing::Mock::VerifyAndClearExpectations(&factory);
        testing::Mock::VerifyAndClearExpectations(&data);
        testing::Mock::VerifyAndClearExpectations(&trace);
        testing::Mock::VerifyAndClearExpectations(&random);
        return jobGuid;
    }
};

TEST_F(GetNextJob, RecommendsAQueuedJobWithRankOne) {
    InSequence inThisOrder;
    ExpectJobs({{"{A}", "T1", "QUEUED"}, {"{B}", "T2", "QUEUED"}, {"{C}", "T1", "QUEUED"}});
    ExpectJobTypes({{"T1", "Impl_83.Totals"}, {"T2", "Impl_83.Letters"}});
    EXPECT_CALL(factory, CanCreate("Impl_83.Totals")).WillOnce(Return(true));
    EXPECT_CALL(factory, CanCreate("Impl_83.Letters")).WillOnce(Return(true));
    EXPECT_CALL(factory, CanCreate("Impl_83.Totals")).WillOnce(Return(true));
    ExpectTrace("There were 3 QUEUED Job(s)", 4, "LowImpactGetNextJob");
    ExpectPick(0.5F);
    ExpectRecommended("{B}", "1");

    NextJobTest::GetNextJob();
    ExpectAnswer("{B}", 1.0);
    EXPECT_EQ(made.objectFactories, 2);
    EXPECT_EQ(made.keyedCollections, 1);
    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(GetNextJob, LooksAtQueuedJobsOnlyWhenThereAreAny) {
    InSequence inThisOrder;
    ExpectJobs({{"{R1}", "T1", "RUNNING"}, {"{Q}", "T1", "QUEUED"}, {"{R2}", "T1", "RUNNING"}});
    ExpectJobTypes({{"T1", "Impl_83.Totals"}});
    ExpectCreatable(3);
    ExpectTrace("There were 1 QUEUED Job(s)", 4, "LowImpactGetNextJob");
    ExpectPick(0.99F);
    ExpectRecommended("{Q}", "1");

    NextJobTest::GetNextJob();
    ExpectAnswer("{Q}", 1.0);
}

TEST_F(GetNextJob, LeavesTheCallersValuesAloneWhenNoJobIsQueuedOrRunning) {
    InSequence inThisOrder;
    ExpectJobs({});
    ExpectNothingFound();

    NextJobTest::GetNextJob();
    ExpectAnswer("before", -1);
    EXPECT_EQ(made.keyedCollections, 0);
}

TEST_F(GetNextJob, ShowsTheQualifierWithoutItsDots) {
    InSequence inThisOrder;
    EXPECT_CALL(times, NowISODateTime()).WillOnce(Return("now"));
    EXPECT_CALL(guard, CheckParameter("a.b.", "NameQualifier"));
    ExpectTableNames();
    EXPECT_CALL(
        data,
        Query("db", 5, 1,
              "SELECT jobguid, jobtypeid, jobstateid FROM a.b.job WHERE jobstateid IN (G(RUNNING),G(QUEUED))",
              true))
        .WillOnce(Return(Value()));
    ExpectTrace("There are no jobs in 'ab' that this machine can create that are QUEUED or RUNNING", 4,
                "LowImpactGetNextJob");

    helper.GetNextJob("db", 5, "a.b.", jobGuid, jobRank);
}

TEST_F(GetNextJob, ShowsTheQualifierWithoutItsDotsInARecommendationToo) {
    InSequence inThisOrder;
    EXPECT_CALL(times, NowISODateTime()).WillOnce(Return("now"));
    EXPECT_CALL(guard, CheckParameter("a.b.", "NameQualifier"));
    ExpectTableNames();
    EXPECT_CALL(data, Query("db", 5, 1, _, true)).WillOnce(Return(Rows(3, {{"{A}", "T1", "QUEUED"}})));
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("a.b.", "NameQualifier"));
    EXPECT_CALL(
        data, Query("db", 5, 1,
                    "SELECT jobtypeid, description, implprogid, notificationprogid  FROM a.b.JobType", true))
        .WillOnce(Return(Rows(4, {{"T1", "d", "Impl_83.Totals", "n"}})));
    ExpectCreatable(1);
    ExpectTrace("There were 1 QUEUED Job(s)", 4, "LowImpactGetNextJob");
    ExpectPick(0);
    ExpectTrace("Recommending that job {A} in 'ab' is run, it has rank 1", 3, "LowImpactGetNextJob");

    helper.GetNextJob("db", 5, "a.b.", jobGuid, jobRank);
}

TEST_F(GetNextJob, UsesEmptyArgumentsAsGiven) {
    InSequence inThisOrder;
    EXPECT_CALL(times, NowISODateTime()).WillOnce(Return("now"));
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    ExpectTableNames();
    EXPECT_CALL(
        data,
        Query("", 2, 1,
              "SELECT jobguid, jobtypeid, jobstateid FROM job WHERE jobstateid IN (G(RUNNING),G(QUEUED))",
              true))
        .WillOnce(Return(Value()));
    ExpectTrace("There are no jobs in '' that this machine can create that are QUEUED or RUNNING", 4,
                "LowImpactGetNextJob");

    helper.GetNextJob("", 2, "", jobGuid, jobRank);
    EXPECT_EQ(made.settings, 0);
}

TEST_F(GetNextJob, PicksByTheWholePartOfTheDrawnShareOfThree) {
    const float third = 1.0F / 3;
    const float twoThirds = 2.0F / 3;
    EXPECT_EQ(PickOf(3, 0.0F), "{1}");
    EXPECT_EQ(PickOf(3, std::nextafter(third, 0.0F)), "{1}");
    EXPECT_EQ(PickOf(3, third), "{2}");
    EXPECT_EQ(PickOf(3, std::nextafter(twoThirds, 0.0F)), "{2}");
    EXPECT_EQ(PickOf(3, twoThirds), "{3}");
    EXPECT_EQ(PickOf(3, std::nextafter(1.0F, 0.0F)), "{3}");
}

TEST_F(GetNextJob, MultipliesInDoublePrecision) {
    // The float nearest to 0.29 lies below it; in single precision the product would round up to 29.
    EXPECT_EQ(PickOf(100, 0.29F), "{29}");
}

TEST_F(GetNextJob, PicksEachCandidateEquallyOften) {
    constexpr int kDraws = 60;
    for (int candidates = 1; candidates <= 6; ++candidates) {
        std::map<std::string, int> picked;
        for (int i = 0; i < kDraws; ++i) {
            const float drawn = (static_cast<float>(i) + 0.5F) / kDraws;
            ++picked[PickOf(candidates, drawn)];
        }
        EXPECT_EQ(picked.size(), static_cast<std::size_t>(candidates));
        for (const auto& [guid, count] : picked) EXPECT_EQ(count, kDraws / candidates) << guid;
    }
}

TEST_F(GetNextJob, PassesOnARefusedQualifierBeforeAnyStatement) {
    InSequence inThisOrder;
    EXPECT_CALL(times, NowISODateTime()).WillOnce(Return("now"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(kRaised));

    ExpectPassedOn([&] { NextJobTest::GetNextJob(); }, kRaised, {"LowImpactGetNextJob", "GetNextJob"});
    ExpectAnswer("before", -1);
    EXPECT_EQ(made.objectFactories, 0);
}

TEST_F(GetNextJob, PassesOnAFailureOfTheClock) {
    EXPECT_CALL(times, NowISODateTime()).WillOnce(Throw(kRaised));

    ExpectPassedOn([&] { NextJobTest::GetNextJob(); }, kRaised, {"LowImpactGetNextJob", "GetNextJob"});
    ExpectAnswer("before", -1);
}

TEST_F(GetNextJob, PassesOnAFailureToSeedWithoutAJob) {
    InSequence inThisOrder;
    ExpectJobs({{"{A}", "T1", "QUEUED"}});
    ExpectJobTypes({{"T1", "Impl_83.Totals"}});
    ExpectCreatable(1);
    ExpectTrace("There were 1 QUEUED Job(s)", 4, "LowImpactGetNextJob");
    EXPECT_CALL(random, SeedFromTimer()).WillOnce(Throw(kRaised));

    ExpectPassedOn([&] { NextJobTest::GetNextJob(); }, kRaised, {"LowImpactGetNextJob", "GetNextJob"});
    EXPECT_EQ(jobGuid, "before");
}

}  // namespace
}  // namespace kxjob
