#include "defaults/components/command_line.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "defaults/configuration/environment_variable.h"
#include "defaults/store/store_test_support.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::EnvironmentVariable;
using testing_support::ErrorOf;
using testing_support::TemporaryFolder;

TEST(SplitCommandLine, PartsWordsAtBlanks) {
    EXPECT_THAT(SplitCommandLine("/bin/cat  -u\t-n "), ElementsAre("/bin/cat", "-u", "-n"));
    EXPECT_THAT(SplitCommandLine(""), IsEmpty());
    EXPECT_THAT(SplitCommandLine("  \t"), IsEmpty());
}

TEST(SplitCommandLine, KeepsQuotedBlanks) {
    EXPECT_THAT(SplitCommandLine("\"/opt/my tool/run\" --name='a \"b\" c' \"it's\""),
                ElementsAre("/opt/my tool/run", "--name=a \"b\" c", "it's"));
    EXPECT_THAT(SplitCommandLine("run '' \"\""), ElementsAre("run", "", ""));
}

TEST(SplitCommandLine, GivesNoOtherCharacterAMeaning) {
    EXPECT_THAT(SplitCommandLine("run $HOME * a\\ b;c|d>e"),
                ElementsAre("run", "$HOME", "*", "a\\", "b;c|d>e"));
}

TEST(SplitCommandLine, RaisesForAQuoteWithoutItsPartner) {
    EXPECT_EQ(ErrorOf([] { SplitCommandLine("run 'a"); }).Number(), error_number::kConnectionFailed);
    EXPECT_EQ(ErrorOf([] { SplitCommandLine("run \"a'"); }).Number(), error_number::kConnectionFailed);
}

class FindProgramTest : public testing::Test {
protected:
    std::string Write(const std::string& name, bool isExecutable) {
        const std::filesystem::path path = folder_.Path(name);
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << "#!/bin/sh\n";
        const auto permissions = isExecutable ? std::filesystem::perms(0700) : std::filesystem::perms(0600);
        std::filesystem::permissions(path, permissions);
        return path.string();
    }

    TemporaryFolder folder_;
};

TEST_F(FindProgramTest, TakesAPathAsItIs) {
    const std::string program = Write("tool", true);
    EXPECT_EQ(FindProgram(program), program);
    EXPECT_EQ(FindProgram(Write("notes", false)), "");
    EXPECT_EQ(FindProgram(program + "-missing"), "");
    EXPECT_EQ(FindProgram(folder_.Path("").string()), "");
    EXPECT_EQ(FindProgram(""), "");
}

TEST_F(FindProgramTest, LooksForANameOnThePath) {
    Write("first/tool", false);
    const std::string second = Write("second/tool", true);
    Write("third/tool", true);
    const EnvironmentVariable path("PATH", ":" + folder_.Path("first").string() + ":" +
                                               folder_.Path("second").string() + ":" +
                                               folder_.Path("third").string());
    EXPECT_EQ(FindProgram("tool"), second);
    EXPECT_EQ(FindProgram("other"), "");
}

TEST_F(FindProgramTest, FindsNoNameWithoutAPath) {
    const EnvironmentVariable path("PATH", std::nullopt);
    EXPECT_EQ(FindProgram("sh"), "");
}

}  // namespace
}  // namespace kxjob
