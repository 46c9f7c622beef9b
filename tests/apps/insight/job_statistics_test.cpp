#include "insight/stats/job_statistics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

namespace kxjob::command {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::Optional;

const Moment kStart = std::chrono::sys_days(std::chrono::year(2026) / 1 / 1);

Moment After(double seconds) {
    return kStart + std::chrono::milliseconds(static_cast<int>(seconds * 1000));
}

JobRecord TenItems() {
    JobRecord job;
    job.guid = "{J}";
    job.totalItems = 12;
    job.succeededItems = 8;
    job.failedItems = 2;
    job.started = "2026-01-01T00:00:00.000Z";
    job.lastCompletion = "2026-01-01T00:00:20.000Z";
    return job;
}

TEST(JobStatistics, TakeTheDeviationFromTheSumOfSquares) {
    JobRecord job = TenItems();
    // Five increments of one second and five of three.
    job.sumOfSquaredIncrements = 5 * 1 + 5 * 9;

    const JobStatistics statistics = StatisticsOf(job, {});

    EXPECT_EQ(statistics.duration, 20.0);
    EXPECT_EQ(statistics.itemsPerSecond, 0.5);
    EXPECT_EQ(statistics.meanIncrement, 2.0);
    EXPECT_THAT(statistics.incrementDeviation, Optional(DoubleNear(1.0, 1e-9)));
}

TEST(JobStatistics, AreNotFooledByRoundingIntoANegativeVariance) {
    JobRecord job = TenItems();
    job.sumOfSquaredIncrements = 10 * 4 - 1e-9;

    EXPECT_EQ(StatisticsOf(job, {}).incrementDeviation, 0.0);
}

TEST(JobStatistics, TellNothingOfAJobThatHasNotStarted) {
    const JobStatistics statistics = StatisticsOf(JobRecord(), {});

    EXPECT_EQ(statistics.duration, std::nullopt);
    EXPECT_EQ(statistics.itemsPerSecond, std::nullopt);
    EXPECT_EQ(statistics.meanIncrement, std::nullopt);
    EXPECT_EQ(statistics.itemMedian, std::nullopt);
    EXPECT_EQ(ToJson(statistics).at("durationSeconds"), nullptr);
}

TEST(JobStatistics, TellHowLongItemsTakeAndWhenTheyEnd) {
    std::vector<ItemTime> items;
    for (const int duration : {10, 3, 1, 2, 4, 5, 9, 6, 8, 7})
        items.push_back({.start = After(1), .end = After(1 + duration)});
    items.push_back({.start = std::nullopt, .end = After(0.5)});

    const JobStatistics statistics = StatisticsOf(TenItems(), items);

    EXPECT_EQ(statistics.itemMedian, 5.0);
    EXPECT_EQ(statistics.itemNineTenths, 9.0);
    EXPECT_THAT(statistics.ends, ElementsAre(0.5, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11));
}

TEST(JobStatistics, CountTheEndsFromTheFirstOneOfAJobThatDoesNotTellItsStart) {
    JobRecord job = TenItems();
    job.started.reset();

    EXPECT_THAT(StatisticsOf(job, {{.start = {}, .end = After(30)}, {.start = {}, .end = After(10)}}).ends,
                ElementsAre(0, 20));
}

}  // namespace
}  // namespace kxjob::command
