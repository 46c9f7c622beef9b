#include "apps/terminal_process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <stdexcept>

#include "files/temporary_folder.h"

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

TEST(TerminalProcess, TypesAsAPersonDoes) {
    const TemporaryFolder folder;
    TerminalProcess terminal({"demo", "/usr/share/doc", "--threads", "1"},
                             {{"TMPDIR", folder.File("")}, {"KXJOB_CONFIG", "/dev/null"}});
    terminal.WaitFor("Created job");

    terminal.Type("\x03");

    EXPECT_EQ(terminal.ExitStatus(), 128 + SIGINT);
}

}  // namespace
}  // namespace kxjob::testing_support
