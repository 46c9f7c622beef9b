#include "defaults/system/clock_random_source.h"

#include <gtest/gtest.h>

#include <array>
#include <set>

namespace kxjob {
namespace {

TEST(ClockRandomSource, StaysWithinZeroAndOne) {
    ClockRandomSource random;
    std::array<int, 10> counts{};
    for (int i = 0; i < 100'000; ++i) {
        const float number = random.Next();
        ASSERT_GE(number, 0.0F);
        ASSERT_LT(number, 1.0F);
        ++counts[static_cast<std::size_t>(number * 10)];
    }
    // 10,000 each on average, with a standard deviation of 95.
    for (const int count : counts) {
        EXPECT_GT(count, 9000);
        EXPECT_LT(count, 11'000);
    }
}

TEST(ClockRandomSource, SourcesMadeAtOnceDiffer) {
    std::set<std::array<float, 3>> beginnings;
    for (int i = 0; i < 100; ++i) {
        ClockRandomSource random;
        beginnings.insert({random.Next(), random.Next(), random.Next()});
    }
    EXPECT_EQ(beginnings.size(), 100U);
}

TEST(ClockRandomSource, SeedingStartsAnotherSequence) {
    ClockRandomSource random;
    std::set<std::array<float, 3>> beginnings;
    for (int i = 0; i < 100; ++i) {
        random.SeedFromTimer();
        beginnings.insert({random.Next(), random.Next(), random.Next()});
    }
    EXPECT_EQ(beginnings.size(), 100U);
}

}  // namespace
}  // namespace kxjob
