#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "apps/insight/insight_store.h"

namespace kxjob {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
using testing_support::ContentOf;
using testing_support::Finished;
using testing_support::InsightStore;
using testing_support::RunCommand;

class StatsCommand : public ::testing::Test {
protected:
    StatsCommand() {
        store_.AddJob("a", "COMPLETE", "CAN", 4);
        store_.Tables().Execute(
            "UPDATE k_job SET succeededitemcount = 3, faileditemcount = 1,"
            " startdt = '2026-01-01T00:00:00.000Z', lastcompletiondt = '2026-01-01T00:00:08.000Z',"
            " sumoftimeincsq = 20, description = 'it''s \"odd\" \\ $(x)'");
        for (int i = 0; i < 4; ++i) {
            const std::string second = std::to_string(2 * i);
            store_.AddItem("i" + second, "a", i, i == 3 ? "FAILED" : "COMPLETE",
                           "2026-01-01T00:00:0" + second + ".000Z",
                           "2026-01-01T00:00:0" + std::to_string(2 * i + 1) + ".000Z");
        }
        store_.AddItem("waits", "a", 9);
        store_.AddJob("b", "READY", "CANNOT", 7);
    }
    Finished Stats(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "stats");
        return store_.Run(std::move(arguments));
    }
    static bool HasGnuplot() { return std::system("command -v gnuplot > /dev/null") == 0; }

    InsightStore store_;
};

TEST_F(StatsCommand, PrintsALineForEveryJob) {
    const Finished finished = Stats({});

    EXPECT_EQ(finished.exitStatus, 0) << finished.err;
    EXPECT_THAT(
        finished.out,
        HasSubstr("job  state     items  succeeded  failed  seconds  items/s  mean increment  deviation  "
                  "item median  item 90 %\n"));
    EXPECT_THAT(finished.out,
                HasSubstr("a    COMPLETE  4      3          1       8.000    0.500    2.000           "
                          "1.000      1.000        1.000\n"));
    EXPECT_THAT(finished.out,
                HasSubstr("b    READY     7      0          0       -        -        -               "
                          "-          -            -\n"));
}

TEST_F(StatsCommand, PrintsJson) {
    const nlohmann::json statistics = store_.Json({"stats", "a"}).at("jobs");

    ASSERT_EQ(statistics.size(), 1U);
    EXPECT_EQ(statistics.at(0).at("job"), "a");
    EXPECT_EQ(statistics.at(0).at("durationSeconds"), 8.0);
    EXPECT_EQ(statistics.at(0).at("itemsPerSecond"), 0.5);
    EXPECT_EQ(statistics.at(0).at("incrementDeviationSeconds"), 1.0);
    EXPECT_EQ(statistics.at(0).at("itemMedianSeconds"), 1.0);
}

TEST_F(StatsCommand, TakesTheJobsOfOneType) {
    const nlohmann::json statistics = store_.Json({"stats", "--type", "CANNOT"}).at("jobs");

    ASSERT_EQ(statistics.size(), 1U);
    EXPECT_EQ(statistics.at(0).at("job"), "b");
    EXPECT_EQ(statistics.at(0).at("durationSeconds"), nullptr);
}

TEST_F(StatsCommand, PlotsTheFinishedItemsInTheGivenWidth) {
    if (!HasGnuplot()) GTEST_SKIP() << "this machine does not have gnuplot";
    const Finished finished = Stats({"a", "--width", "60"});

    EXPECT_EQ(finished.exitStatus, 0) << finished.err;
    const std::string plot = finished.out.substr(finished.out.find("\n\n") + 2);
    EXPECT_THAT(plot, AllOf(HasSubstr("items finished"), HasSubstr("seconds since the start"),
                            HasSubstr("it s  odd    $(x)"), HasSubstr("***")));
    std::istringstream lines(plot);
    std::size_t widest = 0;
    for (std::string line; std::getline(lines, line);) widest = std::max(widest, line.size());
    EXPECT_LE(widest, 60U);
    EXPECT_GT(widest, 50U);
}

TEST_F(StatsCommand, PlotsNothingWhenNothingHasEnded) {
    const Finished finished = Stats({"b"});

    EXPECT_EQ(finished.exitStatus, 0) << finished.err;
    EXPECT_THAT(finished.out, Not(HasSubstr("items finished")));
}

TEST_F(StatsCommand, WritesThePlotAsAPicture) {
    if (!HasGnuplot()) GTEST_SKIP() << "this machine does not have gnuplot";
    const std::string picture = store_.Folder().File("plot.svg");

    const Finished finished = Stats({"a", "--svg", picture, "--json"});

    EXPECT_EQ(finished.exitStatus, 0) << finished.err;
    EXPECT_TRUE(nlohmann::json::parse(finished.out).contains("jobs"));
    EXPECT_THAT(ContentOf(picture),
                AllOf(HasSubstr("<svg "), HasSubstr("items finished"), HasSubstr("</svg>")));
}

TEST_F(StatsCommand, SaysWhyThereIsNoPicture) {
    EXPECT_EQ(Stats({"b", "--svg", store_.Folder().File("b.svg")}).exitStatus, 1);
    const Finished without =
        RunCommand(store_.Folder(), store_.Arguments({"stats", "a", "--svg", store_.Folder().File("a.svg")}),
                   {{"KXJOB_CONFIG", "/dev/null"}, {"PATH", store_.Folder().File("")}});
    EXPECT_EQ(without.exitStatus, 1);
    EXPECT_THAT(without.out,
                HasSubstr("There is no plot: this machine does not have the program gnuplot.\n"));
    EXPECT_THAT(without.err, HasSubstr("does not have the program gnuplot"));
    EXPECT_FALSE(std::filesystem::exists(store_.Folder().Path("a.svg")));
    if (!HasGnuplot()) return;
    const Finished nowhere = Stats({"a", "--svg", store_.Folder().File("no/such/folder.svg")});
    EXPECT_EQ(nowhere.exitStatus, 1);
    EXPECT_THAT(nowhere.err, HasSubstr("cannot be written: No such file or directory."));
}

TEST_F(StatsCommand, FailsForAJobThatIsNotThere) {
    EXPECT_EQ(Stats({"nobody"}).exitStatus, 1);
}

TEST_F(StatsCommand, RefusesWrongUsage) {
    EXPECT_EQ(Stats({"a", "--type", "CAN"}).exitStatus, 2);
    EXPECT_EQ(Stats({"--width", "3"}).exitStatus, 2);
    EXPECT_EQ(Stats({"--help"}).exitStatus, 0);
}

}  // namespace
}  // namespace kxjob
