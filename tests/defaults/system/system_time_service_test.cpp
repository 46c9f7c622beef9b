#include "defaults/system/system_time_service.h"

#include <gmock/gmock.h>

#include <cmath>
#include <ctime>
#include <string>
#include <utility>
#include <vector>

namespace kxjob {
namespace {

using testing::MatchesRegex;

TEST(SystemTimeService, WritesTheTimeWithMilliseconds) {
    EXPECT_THAT(
        SystemTimeService().NowISODateTime(),
        MatchesRegex("[0-9]+-[01][0-9]-[0-3][0-9]T[0-2][0-9]:[0-5][0-9]:[0-6][0-9]\\.[0-9][0-9][0-9]Z"));
}

TEST(SystemTimeService, TellsTheTimeInUtc) {
    const std::time_t before = std::time(nullptr);
    const std::string text = SystemTimeService().NowISODateTime();
    const std::time_t after = std::time(nullptr);
    std::tm parts{};
    ASSERT_NE(strptime(text.c_str(), "%Y-%m-%dT%H:%M:%S", &parts), nullptr);
    const std::time_t told = timegm(&parts);
    EXPECT_GE(told, before - 1);
    EXPECT_LE(told, after + 1);
    EXPECT_EQ(text.size(), std::string("2026-03-01T09:30:15.123Z").size());
}

TEST(SystemTimeService, LaterTimesSortBehindEarlierOnes) {
    SystemTimeService times;
    std::string last = times.NowISODateTime();
    for (int i = 0; i < 1000; ++i) {
        std::string next = times.NowISODateTime();
        ASSERT_LE(last, next);
        last = std::move(next);
    }
}

TEST(SystemTimeService, ShowsADurationAsPeopleReadIt) {
    const std::vector<std::pair<double, std::string>> durations{
        {0, "0 s"},
        {-0.0, "0 s"},
        {0.0004, "0 s"},
        {-0.0004, "0 s"},
        {0.001, "0.001 s"},
        {1, "1 s"},
        {4.5, "4.5 s"},
        {1.2345, "1.235 s"},
        {59.999, "59.999 s"},
        {59.9999, "1 min 0 s"},
        {60, "1 min 0 s"},
        {61.25, "1 min 1.25 s"},
        {3599.9999, "1 h 0 min 0 s"},
        {3600, "1 h 0 min 0 s"},
        {7384.5, "2 h 3 min 4.5 s"},
        {86399.9999, "1 day 0 h 0 min 0 s"},
        {93784.5, "1 day 2 h 3 min 4.5 s"},
        {180184.5, "2 days 2 h 3 min 4.5 s"},
        {-4.5, "-4.5 s"},
        {-93784.5, "-1 day 2 h 3 min 4.5 s"},
        {864000000, "10000 days 0 h 0 min 0 s"},
        {86400e12, "1000000000000 days"},
        {-86400e12, "-1000000000000 days"},
        {86400e20, "1E+20 days"},
        {HUGE_VAL, "endless"},
        {-HUGE_VAL, "-endless"},
        {std::nan(""), "an unknown time"},
    };
    SystemTimeService times;
    for (const auto& [seconds, text] : durations) EXPECT_EQ(times.DurationText(seconds), text) << seconds;
}

}  // namespace
}  // namespace kxjob
