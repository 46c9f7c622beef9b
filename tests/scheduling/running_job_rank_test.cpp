#include "scheduling/next_job_test_support.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using ::testing::InSequence;
using ::testing::Return;
using ::testing::Throw;
using testing_support::ErrorOf;
using testing_support::kRaised;
using testing_support::NextJobTest;

const std::vector<std::string> kFrames{"GetHighestRankingRunningJobs", "LowImpactGetNextJob", "GetNextJob"};

class GetHighestRankingRunningJobs : public NextJobTest {};

TEST_F(GetHighestRankingRunningJobs, PrefersTheJobsWithTheFewestRunningTasks) {
    InSequence inThisOrder;
    ExpectRunningJobs({"{A}", "{B}", "{C}"});
    ExpectTaskCounts("G({A}), G({B}), G({C})", {{"{A}", 2}, {"{B}", 1}, {"{C}", 1}});
    ExpectPick(0.49F);
    ExpectRecommended("{B}", "0.5");

    GetNextJob();
    ExpectAnswer("{B}", 0.5);
    EXPECT_EQ(made.objectFactories, 3);
}

TEST_F(GetHighestRankingRunningJobs, KeepsJobsOfTheSameCountInTheOrderOfTheCounts) {
    InSequence inThisOrder;
    ExpectRunningJobs({"{A}", "{B}", "{C}"});
    ExpectTaskCounts("G({A}), G({B}), G({C})", {{"{C}", 1}, {"{A}", 2}, {"{B}", 1}});
    ExpectPick(0.5F);
    ExpectRecommended("{B}", "0.5");

    GetNextJob();
    ExpectAnswer("{B}", 0.5);
}

TEST_F(GetHighestRankingRunningJobs, DropsEarlierCandidatesForALowerCount) {
    InSequence inThisOrder;
    ExpectRunningJobs({"{A}", "{B}", "{C}"});
    ExpectTaskCounts("G({A}), G({B}), G({C})", {{"{A}", 5}, {"{B}", 5}, {"{C}", 3}});
    ExpectPick(0.99F);
    ExpectRecommended("{C}", "0.25");

    GetNextJob();
    ExpectAnswer("{C}", 0.25);
}

TEST_F(GetHighestRankingRunningJobs, ShowsARankOfOneThirdWithFifteenDigits) {
    InSequence inThisOrder;
    ExpectRunningJobs({"{A}"});
    ExpectTaskCounts("G({A})", {{"{A}", std::int64_t{2}}});
    ExpectPick(0);
    ExpectRecommended("{A}", "0.333333333333333");

    GetNextJob();
    ExpectAnswer("{A}", 1.0 / 3);
}

TEST_F(GetHighestRankingRunningJobs, PrefersAJobWithoutAnyRunningTask) {
    InSequence inThisOrder;
    ExpectRunningJobs({"{A}", "{D}"});
    ExpectTaskCounts("G({A}), G({D})", {{"{A}", 2}});
    ExpectPick(0.99F);
    ExpectRecommended("{D}", "1");

    GetNextJob();
    ExpectAnswer("{D}", 1.0);
}

TEST_F(GetHighestRankingRunningJobs, FindsTheJobOfACountWhateverItsLetterCase) {
    InSequence inThisOrder;
    ExpectRunningJobs({"{AB}", "{D}"});
    ExpectTaskCounts("G({AB}), G({D})", {{"{ab}", 2}});
    ExpectPick(0.99F);
    ExpectRecommended("{D}", "1");

    GetNextJob();
}

TEST_F(GetHighestRankingRunningJobs, TakesEveryRunningJobWhenNoTaskIsRunning) {
    InSequence inThisOrder;
    ExpectRunningJobs({"{A}", "{B}", "{C}"});
    ExpectTaskCounts("G({A}), G({B}), G({C})", {});
    ExpectPick(0.99F);
    ExpectRecommended("{C}", "1");

    GetNextJob();
    ExpectAnswer("{C}", 1.0);
}

TEST_F(GetHighestRankingRunningJobs, ChangesOnlyTheRankWhenEveryJobIsAboveTheCeiling) {
    InSequence inThisOrder;
    ExpectRunningJobs({"{A}", "{B}"});
    ExpectTaskCounts("G({A}), G({B})", {{"{A}", 257}, {"{B}", 300}});
    ExpectNothingFound();

    GetNextJob();
    ExpectAnswer("before", 1.0 / 257);
}

TEST_F(GetHighestRankingRunningJobs, PassesOverAJobAboveTheCeiling) {
    InSequence inThisOrder;
    ExpectRunningJobs({"{A}", "{B}"});
    ExpectTaskCounts("G({A}), G({B})", {{"{A}", 300}, {"{B}", 255}});
    ExpectPick(0.99F);
    ExpectRecommended("{B}", "0.00390625");

    GetNextJob();
    ExpectAnswer("{B}", 1.0 / 256);
}

TEST_F(GetHighestRankingRunningJobs, PassesOverACountThatNeedsMoreThanThirtyTwoBits) {
    InSequence inThisOrder;
    ExpectRunningJobs({"{A}", "{B}"});
    ExpectTaskCounts("G({A}), G({B})", {{"{A}", std::int64_t{5'000'000'000}}, {"{B}", 1}});
    ExpectPick(0);
    ExpectRecommended("{B}", "0.5");

    GetNextJob();
    ExpectAnswer("{B}", 0.5);
}

TEST_F(GetHighestRankingRunningJobs, FailsOnAFirstJobExactlyAtTheCeiling) {
    InSequence inThisOrder;
    ExpectRunningJobs({"{A}", "{B}"});
    ExpectTaskCounts("G({A}), G({B})", {{"{A}", 256}, {"{B}", 1}});

    const AutomationError error = ErrorOf([&] { GetNextJob(); });
    EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x800A005BU));
    ExpectTold(error, kFrames);
    ExpectAnswer("before", -1);
}

TEST_F(GetHighestRankingRunningJobs, FailsOnAJobAtTheCeilingBehindOneAboveIt) {
    InSequence inThisOrder;
    ExpectRunningJobs({"{A}", "{B}"});
    ExpectTaskCounts("G({A}), G({B})", {{"{A}", 300}, {"{B}", 256}});

    const AutomationError error = ErrorOf([&] { GetNextJob(); });
    EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x800A005BU));
    ExpectTold(error, kFrames);
    ExpectAnswer("before", -1);
}

TEST_F(GetHighestRankingRunningJobs, PassesOverAJobAtTheCeilingBehindALowerOne) {
    InSequence inThisOrder;
    ExpectRunningJobs({"{A}", "{B}"});
    ExpectTaskCounts("G({A}), G({B})", {{"{A}", 4}, {"{B}", 256}});
    ExpectPick(0.99F);
    ExpectRecommended("{A}", "0.2");

    GetNextJob();
    ExpectAnswer("{A}", 0.2);
}

TEST_F(GetHighestRankingRunningJobs, FailsOnACountOfAJobThatIsNotRunning) {
    InSequence inThisOrder;
    ExpectRunningJobs({"{A}"});
    ExpectTaskCounts("G({A})", {{"{Z}", 1}});

    const AutomationError error = ErrorOf([&] { GetNextJob(); });
    EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x800A0005U));
    ExpectTold(error, kFrames);
    ExpectAnswer("before", -1);
}

TEST_F(GetHighestRankingRunningJobs, PassesOnAFailureToCountTheTasks) {
    InSequence inThisOrder;
    ExpectRunningJobs({"{A}"});
    ExpectTableNames();
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobguid, COUNT(*) FROM kx_jobtask WHERE jobtaskstateid = G(RUNNING)"
                            " AND jobguid IN (G({A})) GROUP BY jobguid",
                            true))
        .WillOnce(Throw(kRaised));

    ExpectPassedOn([&] { GetNextJob(); }, kRaised, kFrames);
    ExpectAnswer("before", -1);
}

TEST_F(GetHighestRankingRunningJobs, PassesOnAFailureToFindTheTableNames) {
    InSequence inThisOrder;
    ExpectRunningJobs({"{A}"});
    EXPECT_CALL(factory, CreateVersioned("TableNameHelper_%v.TableNameHelper")).WillOnce(Throw(kRaised));

    ExpectPassedOn([&] { GetNextJob(); }, kRaised, kFrames);
}

}  // namespace
}  // namespace kxjob
