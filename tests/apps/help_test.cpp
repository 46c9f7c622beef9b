#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apps/command_process.h"

namespace kxjob {
namespace {

using ::testing::HasSubstr;
using testing_support::Finished;
using testing_support::RunCommand;
using testing_support::TemporaryFolder;

TEST(Help, GroupsTheSubCommandsInTheOrderOfTheirUse) {
    const TemporaryFolder folder;

    const std::string help = RunCommand(folder, {"--help"}, {}).out;

    std::size_t last = 0;
    for (const char* group : {"\nSetting up:\n", "\nJobs:\n", "\nExecution:\n", "\nUpkeep:\n",
                              "\nFor programs and for trying out:\n"}) {
        const std::size_t place = help.find(group);
        ASSERT_NE(place, std::string::npos) << group;
        EXPECT_GT(place, last) << group;
        last = place;
    }
}

TEST(Help, ShowsAnExampleOfEachAdministrativeSubCommand) {
    const TemporaryFolder folder;
    for (const std::vector<std::string>& command : {std::vector<std::string>{"type", "add"},
                                                    {"type", "list"},
                                                    {"type", "remove"},
                                                    {"create"},
                                                    {"list"},
                                                    {"show"},
                                                    {"items"},
                                                    {"item"},
                                                    {"tasks"},
                                                    {"set-state"},
                                                    {"note"},
                                                    {"remove"},
                                                    {"sweep"},
                                                    {"history"}}) {
        std::vector<std::string> arguments = command;
        arguments.emplace_back("--help");
        const Finished finished = RunCommand(folder, arguments, {});
        EXPECT_EQ(finished.exitStatus, 0);
        EXPECT_THAT(finished.out, HasSubstr("  kxjob " + command[0])) << command.back();
        EXPECT_THAT(finished.out, HasSubstr("--json"));
        EXPECT_THAT(finished.out, HasSubstr("--connection"));
    }
}

}  // namespace
}  // namespace kxjob
