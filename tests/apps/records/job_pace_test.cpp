#include "records/job_pace.h"

#include <gtest/gtest.h>

namespace kxjob::command {
namespace {

/// Four items in eight seconds, one of them failed: increments of 1, 1, 3 and 3 s.
JobRecord FourOfTen() {
    JobRecord job;
    job.state = "RUNNING";
    job.totalItems = 10;
    job.succeededItems = 3;
    job.failedItems = 1;
    job.started = "2026-03-01T09:00:00.000Z";
    job.lastCompletion = "2026-03-01T09:00:08.000Z";
    job.sumOfSquaredIncrements = 20;
    return job;
}

const Moment kNow = ParseIsoTime("2026-03-01T09:01:00.000Z").value();

TEST(JobPace, ComesFromTheCountersAlone) {
    const std::optional<JobPace> pace = PaceOf(FourOfTen(), kNow);

    ASSERT_TRUE(pace);
    EXPECT_DOUBLE_EQ(pace->meanIncrement, 2);
    EXPECT_DOUBLE_EQ(pace->itemsPerSecond, 0.5);
    EXPECT_DOUBLE_EQ(pace->variance.value(), 1);
    EXPECT_EQ(IsoTime(pace->estimatedEnd.value()), "2026-03-01T09:01:12.000Z") << "six items of two seconds";
    EXPECT_DOUBLE_EQ(PercentDone(FourOfTen()), 40);
}

TEST(JobPace, HasNoVarianceThatItsCountersDoNotAllow) {
    JobRecord job = FourOfTen();
    for (const double sum : {0.0, 15.9}) {  // four increments of 2 s on average have 16 at least
        job.sumOfSquaredIncrements = sum;
        EXPECT_EQ(PaceOf(job, kNow).value().variance, std::nullopt) << sum;
    }
    job.sumOfSquaredIncrements = 16;
    EXPECT_DOUBLE_EQ(PaceOf(job, kNow).value().variance.value(), 0) << "all of one length";
    job.succeededItems = 0;
    job.sumOfSquaredIncrements = 64;
    EXPECT_EQ(PaceOf(job, kNow).value().variance, std::nullopt) << "a single increment does not vary";
}

TEST(JobPace, EndsOnlyForAJobThatIsRunningAndHasItemsLeft) {
    JobRecord job = FourOfTen();
    job.totalItems = 4;
    EXPECT_EQ(PaceOf(job, kNow).value().estimatedEnd, std::nullopt);
    job = FourOfTen();
    job.state = "CANCELLED";
    EXPECT_EQ(PaceOf(job, kNow).value().estimatedEnd, std::nullopt);
}

TEST(JobPace, IsUnknownBeforeAnItemHasEnded) {
    JobRecord job = FourOfTen();
    job.lastCompletion = std::nullopt;
    EXPECT_FALSE(PaceOf(job, kNow));
    job.lastCompletion = job.started;
    EXPECT_FALSE(PaceOf(job, kNow)) << "no time has passed";
    job = FourOfTen();
    job.started = "yesterday";
    EXPECT_FALSE(PaceOf(job, kNow));
    job = FourOfTen();
    job.succeededItems = job.failedItems = 0;
    EXPECT_FALSE(PaceOf(job, kNow));
    EXPECT_DOUBLE_EQ(PercentDone(JobRecord()), 0);
}

TEST(IsoTime, IsReadAndWritten) {
    for (const char* text :
         {"2026-03-01T09:30:15.123Z", "1999-12-31T23:59:59.999Z", "2024-02-29T00:00:00.000Z"}) {
        EXPECT_EQ(IsoTime(ParseIsoTime(text).value()), text);
    }
    EXPECT_EQ(IsoTime(ParseIsoTime("2026-03-01T09:30:15Z").value()), "2026-03-01T09:30:15.000Z");
    EXPECT_EQ(IsoTime(ParseIsoTime("2026-03-01T09:30:15.5Z").value()), "2026-03-01T09:30:15.500Z");
    EXPECT_EQ(IsoTime(ParseIsoTime("2026-03-01T09:30:15.1234567Z").value()), "2026-03-01T09:30:15.123Z");
}

TEST(IsoTime, IsNoOtherText) {
    for (const char* text :
         {"", "2026-03-01", "2026-03-01T09:30:15", "2026-03-01 09:30:15Z", "2026-02-30T09:30:15Z",
          "2026-03-01T24:30:15Z", "2026-03-01T09:60:15Z", "2026-03-01T-9:30:15Z", "2026-03-01T09:30:15.Z",
          "2026-03-01T09:30:15.1234xZ", "2026-03-01T09:30:15+01:00", "2026-3-01T09:30:15.123Z"}) {
        EXPECT_FALSE(ParseIsoTime(text)) << text;
    }
}

TEST(DurationInWords, IsAsExactAsAPersonWants) {
    EXPECT_EQ(DurationInWords(0.123), "0.12 s");
    EXPECT_EQ(DurationInWords(42.4), "42 s");
    EXPECT_EQ(DurationInWords(245), "4 min 5 s");
    EXPECT_EQ(DurationInWords(3 * 3600 + 120), "3 h 2 min");
    EXPECT_EQ(DurationInWords(2 * 86400 + 3 * 3600), "2 d 3 h");
}

}  // namespace
}  // namespace kxjob::command
