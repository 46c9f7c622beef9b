#include "apps/terminal_process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace kxjob::testing_support {
namespace {

using ::testing::HasSubstr;

TEST(TerminalProcess, ShowsWhatTheCommandPrints) {
    TerminalProcess terminal({"--help"});

    EXPECT_EQ(terminal.ExitStatus(), 0);
    EXPECT_THAT(terminal.Screen(), HasSubstr("Usage: kxjob"));
    EXPECT_THAT(terminal.Screen(), HasSubstr("\n  -h,--help"));
}

TEST(TerminalProcess, GivesTheExitStatus) {
    EXPECT_EQ(TerminalProcess({"--nonsense"}).ExitStatus(), 2);
}

TEST(TerminalProcess, SaysWhatWasShownInsteadOfTheTextThatNeverComes) {
    TerminalProcess terminal({"--version"});

    EXPECT_THROW(terminal.WaitFor("another text"), std::runtime_error);
    EXPECT_EQ(terminal.ExitStatus(), 0) << "the end is still there to be had";
}

}  // namespace
}  // namespace kxjob::testing_support
