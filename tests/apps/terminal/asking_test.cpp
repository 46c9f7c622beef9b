#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>

#include "apps/command_store.h"
#include "apps/terminal_process.h"
#include "kxjob/array.h"

namespace kxjob {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using testing_support::CommandStore;
using testing_support::StateGuid;
using testing_support::TerminalProcess;

constexpr const char* kYellowQueued = "\033[33mQUEUED\033[0m";

/// Before a person.
class OnATerminal : public ::testing::Test {
protected:
    std::unique_ptr<TerminalProcess> Start(const std::vector<std::string>& arguments,
                                           std::map<std::string, std::string> environment = {}) {
        environment["KXJOB_CONFIG"] = "/dev/null";
        return std::make_unique<TerminalProcess>(store_.OnThisStore(arguments), environment);
    }
    Value Jobs() { return store_.Cell("SELECT COUNT(*) FROM c_job"); }

    CommandStore store_;
    std::string job_ = store_.MakeJob({"a", "b"}, StateGuid('1'));
};

TEST_F(OnATerminal, AYesGoesOn) {
    const auto terminal = Start({"remove", job_});
    terminal->WaitFor("Remove job " + job_ + " with 2 items? [y/N] ");
    EXPECT_EQ(Jobs(), Value(1)) << "not before the answer";

    terminal->Type("y\n");

    EXPECT_EQ(terminal->ExitStatus(), 0);
    EXPECT_THAT(terminal->Screen(), HasSubstr("Removed job " + job_ + " with 2 items.\n"));
    EXPECT_EQ(Jobs(), Value(0));
}

TEST_F(OnATerminal, AnythingElseChangesNothing) {
    for (const char* answer : {"n\n", "\n", "yesterday\n", "\x04"}) {
        const auto terminal = Start({"remove", job_});
        terminal->WaitFor("[y/N] ");

        terminal->Type(answer);

        EXPECT_EQ(terminal->ExitStatus(), 1) << answer;
        EXPECT_THAT(terminal->Screen(), HasSubstr("Nothing has been changed.\n"));
        EXPECT_EQ(Jobs(), Value(1));
    }
}

TEST_F(OnATerminal, AnInterruptedQuestionChangesNothing) {
    const auto terminal = Start({"remove", job_});
    terminal->WaitFor("[y/N] ");

    terminal->Type("\x03");

    EXPECT_EQ(terminal->ExitStatus(), 128 + SIGINT);
    EXPECT_EQ(Jobs(), Value(1));
}

TEST_F(OnATerminal, NobodyIsAskedWhoHasSaidYes) {
    const auto terminal = Start({"remove", job_, "--yes"});

    EXPECT_EQ(terminal->ExitStatus(), 0);
    EXPECT_THAT(terminal->Screen(), Not(HasSubstr("[y/N]")));
}

TEST_F(OnATerminal, EveryDestructiveSubCommandAsks) {
    store_.Answer({"set-state", job_, "RUNNING"});
    store_.Answer({"type", "add", "UNUSED", "--component", "Some_83.Thing"});
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"sweep"},
                                                      {"set-state", job_, "CANCELLED"},
                                                      {"type", "remove", "UNUSED"}}) {
        const auto terminal = Start(arguments);
        terminal->WaitFor("? [y/N] ");
        terminal->Type("n\n");
        EXPECT_EQ(terminal->ExitStatus(), 1) << arguments[0];
    }
    EXPECT_EQ(store_.Cell("SELECT jobstateid FROM c_job"), Value("RUNNING"));
    EXPECT_EQ(store_.Cell("SELECT COUNT(*) FROM c_JobType"), Value(2));
}

TEST_F(OnATerminal, StatesAreColoured) {
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"list"}, {"show", job_}}) {
        const auto terminal = Start(arguments);
        EXPECT_EQ(terminal->ExitStatus(), 0);
        EXPECT_THAT(terminal->Screen(), HasSubstr(kYellowQueued)) << arguments[0];
    }
}

TEST_F(OnATerminal, NothingIsColouredWhereThatIsNotWanted) {
    for (const std::map<std::string, std::string>& wish :
         {std::map<std::string, std::string>{{"NO_COLOR", "1"}}, {{"TERM", "dumb"}}}) {
        const auto terminal = Start({"list"}, wish);
        EXPECT_EQ(terminal->ExitStatus(), 0);
        EXPECT_THAT(terminal->Screen(), HasSubstr("QUEUED"));
        EXPECT_THAT(terminal->Screen(), Not(HasSubstr("\033")));
    }
}

TEST_F(OnATerminal, JsonIsNotColoured) {
    const auto terminal = Start({"list", "--json"});

    EXPECT_EQ(terminal->ExitStatus(), 0);
    EXPECT_THAT(terminal->Screen(), Not(HasSubstr("\033")));
}

}  // namespace
}  // namespace kxjob
