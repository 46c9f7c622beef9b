#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "insight/watch/item_pace.h"
#include "insight/watch/job_line.h"
#include "insight/watch/live_area.h"

namespace kxjob::command {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::SizeIs;

JobLook Half() {
    return {.guid = "{J}",
            .description = "the job",
            .state = "RUNNING",
            .totalItems = 100,
            .succeededItems = 45,
            .failedItems = 5};
}

ItemPace FiveASecond() {
    ItemPace pace;
    pace.See(100, 0);
    pace.See(110, 50);
    return pace;
}

TEST(ItemPace, IsThatOfTheLastMinute) {
    ItemPace pace;
    EXPECT_EQ(pace.ItemsPerSecond(), 0);
    pace.See(0, 0);
    EXPECT_EQ(pace.ItemsPerSecond(), 0);
    pace.See(30, 300);
    EXPECT_EQ(pace.ItemsPerSecond(), 10);
    for (double time = 31; time <= 130; ++time) pace.See(time, 300);
    EXPECT_EQ(pace.ItemsPerSecond(), 0) << "nothing has ended for longer than it remembers";
    EXPECT_EQ(pace.SecondsFor(5), std::nullopt);
}

TEST(ItemPace, TellsHowLongTheRestTakes) {
    EXPECT_EQ(FiveASecond().SecondsFor(50), 10.0);
    EXPECT_EQ(FiveASecond().SecondsFor(0), 0.0);
}

TEST(ItemPace, BeginsAnewWithAJobThatDoes) {
    ItemPace pace = FiveASecond();
    pace.See(111, 0);
    EXPECT_EQ(pace.ItemsPerSecond(), 0);
    pace.See(112, 3);
    EXPECT_EQ(pace.ItemsPerSecond(), 3);
}

TEST(PlainLine, TellsCountsPaceAndTimeLeft) {
    EXPECT_EQ(PlainLine(Half(), FiveASecond()),
              "the job: RUNNING, 50 %, 50 of 100 items, 5 failed, 5.0 items/s, 10 s left");
    EXPECT_EQ(PlainLine(Half(), ItemPace()), "the job: RUNNING, 50 %, 50 of 100 items, 5 failed");
}

TEST(PlainLine, OfAnEndedJobTellsNoTimeLeft) {
    JobLook look = Half();
    look.state = "CANCELLED";
    EXPECT_EQ(PlainLine(look, FiveASecond()), "the job: CANCELLED, 50 %, 50 of 100 items, 5 failed");
}

TEST(PlainLine, IsOneLineWhateverTheDescription) {
    JobLook look = Half();
    look.description = "two\nlines \033[31m";
    EXPECT_THAT(PlainLine(look, ItemPace()), Not(HasSubstr("\n")));
    EXPECT_THAT(PlainLine(look, ItemPace()), Not(HasSubstr("\033")));
    look.description = "";
    EXPECT_THAT(PlainLine(look, ItemPace()), HasSubstr("{J}: RUNNING"));
}

TEST(PlainLine, TellsLongTimesInMinutesAndHours) {
    JobLook look = Half();
    look.totalItems = 50 + 5 * 600;
    EXPECT_THAT(PlainLine(look, FiveASecond()), HasSubstr(", 10 min left"));
    look.totalItems = 50 + 5 * 7'500;
    EXPECT_THAT(PlainLine(look, FiveASecond()), HasSubstr(", 2 h 5 min left"));
}

TEST(BarLine, IsAsLongAsTheShare) {
    EXPECT_EQ(
        BarLine(Half(), FiveASecond(), 200, Palette()),
        "the job              [##########..........] RUNNING, 50 %, 50 of 100 items, 5 failed, 5.0 items/s, "
        "10 s left");
}

TEST(BarLine, FitsTheWindow) {
    for (const std::size_t width : {1U, 20U, 60U, 90U, 100U})
        EXPECT_THAT(BarLine(Half(), FiveASecond(), width, Palette()), SizeIs(::testing::Le(width)));
    JobLook look = Half();
    look.description =
        "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9";
    EXPECT_EQ(BarLine(look, FiveASecond(), 5, Palette()), "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9")
        << "cut between characters";
}

TEST(LiveArea, DrawsOverItsLinesAndLeavesThoseThatAreKept) {
    std::ostringstream out;
    {
        LiveArea area(out);
        area.Draw({"a", "b"});
        area.Keep({"end of a"});
        area.Draw({"c"});
    }
    EXPECT_EQ(out.str(),
              "\033[?25l"
              "a\033[K\nb\033[K\n\033[J"
              "\033[2Aend of a\033[K\n\033[J"
              "c\033[K\n\033[J"
              "\033[?25h");
}

}  // namespace
}  // namespace kxjob::command
