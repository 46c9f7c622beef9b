#include "terminal/progress_bar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace kxjob::command {
namespace {

using std::chrono::milliseconds;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::Not;
using ::testing::StartsWith;

TEST(ProgressBar, DrawsOverItselfOnATerminal) {
    std::ostringstream out;
    ProgressBar bar(out, true, 4);
    const auto start = ProgressBar::Clock::now();

    bar.UpdateAt(start + milliseconds(1000), 1, 0);
    EXPECT_THAT(out.str(),
                StartsWith("\r\033[K[#######.......................]  25 %  1 of 4 items, 0 failed, "));
    bar.UpdateAt(start + milliseconds(1050), 2, 0);
    EXPECT_THAT(out.str(), Not(HasSubstr("2 of 4"))) << "sooner than anybody can see";
    bar.UpdateAt(start + milliseconds(1100), 3, 1);
    EXPECT_THAT(out.str(), HasSubstr("3 of 4 items, 1 failed"));
    bar.Finish(4, 1);
    EXPECT_THAT(out.str(), HasSubstr("[##############################] 100 %  4 of 4 items, 1 failed"));
    EXPECT_THAT(out.str(), EndsWith("\n"));
}

TEST(ProgressBar, WritesAPlainLineEveryTwoSecondsElsewhere) {
    std::ostringstream out;
    ProgressBar bar(out, false, 10);
    const auto start = ProgressBar::Clock::now();

    for (int i = 1; i <= 9; ++i) bar.UpdateAt(start + milliseconds(500 * i), static_cast<std::size_t>(i), 0);

    EXPECT_THAT(out.str(), MatchesRegex(" 10 %  1 of 10 items, 0 failed, 2 items/s, . s left\n"
                                        " 50 %  5 of 10 items, 0 failed, 2 items/s, . s left\n"
                                        " 90 %  9 of 10 items, 0 failed, 2 items/s, . s left\n"));
}

TEST(ProgressBar, IsFullWhenThereIsNothingToDo) {
    std::ostringstream out;
    ProgressBar(out, false, 0).Finish(0, 0);
    EXPECT_THAT(out.str(), StartsWith("100 %  0 of 0 items"));
}

}  // namespace
}  // namespace kxjob::command
