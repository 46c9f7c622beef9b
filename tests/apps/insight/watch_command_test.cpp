#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <future>
#include <map>
#include <sstream>

#include "apps/insight/insight_store.h"
#include "apps/terminal_process.h"

namespace kxjob {
namespace {

using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;
using testing_support::Finished;
using testing_support::InsightStore;
using testing_support::TerminalProcess;

class WatchCommand : public ::testing::Test {
protected:
    WatchCommand() { store_.AddJob("a", "RUNNING", "CAN", 4); }

    Finished Watch(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"watch", "--interval", "0.02"});
        return store_.Run(std::move(arguments));
    }
    std::future<Finished> StartToWatch(std::vector<std::string> arguments) {
        return std::async(std::launch::async, [=, this] { return Watch(arguments); });
    }
    std::vector<std::string> OnTerminal(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"watch", "--interval", "0.02"});
        return store_.Arguments(std::move(arguments));
    }
    void Set(const std::string& job, const std::string& what) {
        store_.Tables().Execute("UPDATE k_job SET " + what + " WHERE jobguid = '" + job + "'");
    }

    InsightStore store_;
    std::map<std::string, std::string> environment_{{"KXJOB_CONFIG", "/dev/null"}};
};

TEST_F(WatchCommand, EndsWithItsJob) {
    std::future<Finished> watch = StartToWatch({"a"});
    Set("a", "succeededitemcount = 3, faileditemcount = 1, jobstateid = 'COMPLETE'");

    const Finished finished = watch.get();

    EXPECT_EQ(finished.exitStatus, 0) << finished.err;
    EXPECT_THAT(finished.out, EndsWith("the job a: COMPLETE, 100 %, 4 of 4 items, 1 failed\n"));
    EXPECT_THAT(finished.out, Not(HasSubstr("\033"))) << "nobody watches: plain lines only";
}

TEST_F(WatchCommand, OfACancelledJobIsNoFailure) {
    Set("a", "jobstateid = 'CANCELLED'");

    const Finished finished = Watch({"a"});

    EXPECT_EQ(finished.exitStatus, 0);
    EXPECT_EQ(finished.out, "the job a: CANCELLED, 0 %, 0 of 4 items, 0 failed\n");
}

TEST_F(WatchCommand, FailsWhenItsJobIsRemoved) {
    TerminalProcess watch(OnTerminal({"a"}), environment_);
    watch.WaitFor("the job a");
    store_.Tables().Execute("DELETE FROM k_job");

    EXPECT_EQ(watch.ExitStatus(), 1);
    EXPECT_THAT(watch.Screen(), HasSubstr("The job a has been removed."));
}

TEST_F(WatchCommand, FailsForAJobThatIsNotThere) {
    const Finished finished = Watch({"nobody"});

    EXPECT_EQ(finished.exitStatus, 1);
    EXPECT_THAT(finished.err, HasSubstr("There is no job nobody"));
}

TEST_F(WatchCommand, WithoutAJobShowsAllThatAreOpenUntilNoneIs) {
    store_.AddJob("b", "QUEUED", "CAN", 2);
    store_.AddJob("c", "READY", "CAN", 2);
    TerminalProcess watch(OnTerminal({"--until-complete"}), environment_);
    watch.WaitFor("the job b");
    Set("b", "jobstateid = 'COMPLETE', succeededitemcount = 2");
    watch.WaitFor("COMPLETE, 100 %");
    store_.AddJob("d", "RUNNING");
    watch.WaitFor("the job d");
    store_.Tables().Execute("DELETE FROM k_job WHERE jobguid = 'd'");
    Set("a", "jobstateid = 'CANCELLED'");

    EXPECT_EQ(watch.ExitStatus(), 0);
    EXPECT_THAT(watch.Screen(), AllOf(HasSubstr("CANCELLED, 0 %"), HasSubstr("The job d has been removed."),
                                      Not(HasSubstr("the job c"))));
}

TEST_F(WatchCommand, HasNothingToShowWhenNoJobIsOpen) {
    Set("a", "jobstateid = 'READY'");

    const Finished finished = Watch({"--until-complete"});

    EXPECT_EQ(finished.exitStatus, 0);
    EXPECT_EQ(finished.out, "");
}

TEST_F(WatchCommand, PrintsJsonLines) {
    std::future<Finished> watch = StartToWatch({"a", "--json"});
    Set("a", "succeededitemcount = 4, jobstateid = 'COMPLETE'");
    const Finished finished = watch.get();

    EXPECT_EQ(finished.exitStatus, 0) << finished.err;
    std::istringstream lines(finished.out);
    nlohmann::json last;
    for (std::string line; std::getline(lines, line);) {
        last = nlohmann::json::parse(line);
        EXPECT_EQ(last.at("job"), "a");
        EXPECT_EQ(last.at("totalItems"), 4);
    }
    EXPECT_EQ(last.at("state"), "COMPLETE");
    EXPECT_EQ(last.at("succeededItems"), 4);
    EXPECT_EQ(last.at("removed"), false);
    EXPECT_EQ(last.at("secondsLeft"), nullptr);
}

TEST_F(WatchCommand, DrawsABarOnATerminal) {
    TerminalProcess watch(OnTerminal({"a"}), environment_);
    watch.WaitFor("[....................] RUNNING, 0 %");
    Set("a", "succeededitemcount = 2");
    watch.WaitFor("[\033[32m##########\033[0m..........] RUNNING, 50 %");
    Set("a", "jobstateid = 'COMPLETE'");

    EXPECT_EQ(watch.ExitStatus(), 0);
    EXPECT_THAT(watch.Screen(), StartsWith("\033[?25l"));
    EXPECT_THAT(watch.Screen(), EndsWith("\033[?25h")) << "the cursor is back";
}

TEST_F(WatchCommand, GivesTheCursorBackWhenItIsInterrupted) {
    environment_["NO_COLOR"] = "1";
    Set("a", "succeededitemcount = 2");
    std::vector<std::string> arguments = store_.Arguments({"watch", "a", "--interval", "3600"});
    TerminalProcess watch(arguments, environment_);
    watch.WaitFor("[##########..........]");
    watch.Type("\x03");

    EXPECT_EQ(watch.ExitStatus(), 128 + SIGINT) << "at once, for all its interval";
    EXPECT_THAT(watch.Screen(), EndsWith("\033[?25h"));
}

TEST_F(WatchCommand, RefusesWrongUsage) {
    EXPECT_EQ(Watch({"a", "b"}).exitStatus, 2);
    EXPECT_EQ(store_.Run({"watch", "a", "--interval", "0"}).exitStatus, 2);
    EXPECT_EQ(store_.Run({"watch", "a", "--interval", "soon"}).exitStatus, 2);
    EXPECT_EQ(store_.Run({"watch", "--help"}).exitStatus, 0);
}

}  // namespace
}  // namespace kxjob
