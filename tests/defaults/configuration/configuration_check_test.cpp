#include "kxjob/configuration_check.h"

#include <gmock/gmock.h>

#include <fstream>

#include "defaults/configuration/environment_variable.h"
#include "defaults/store/store_test_support.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

using testing::ElementsAre;
using testing_support::EnvironmentVariable;
using testing_support::ErrorOf;
using testing_support::TemporaryFolder;

TEST(ConfigurationCheck, NamesTheFileAndTheKeysThatNobodyReads) {
    TemporaryFolder folder;
    std::ofstream(folder.File("a.conf")) << "adoCONNECTIONstring = x\nProvider = 5\nNameSpaceQualifier = k_\n"
                                            "log.level = 2\nlog.file = f\ncomponent.version = 83\n"
                                            "component.A_83.B.library = l\ncomponent.A_83.B.command = c\n"
                                            "Zoo = 1\ncomponent.library = 1\ncomponent..comand = 1\n";
    const EnvironmentVariable named("KXJOB_CONFIG", folder.File("a.conf"));

    const ConfigurationCheck check = CheckConfiguration();

    EXPECT_EQ(check.file, folder.File("a.conf"));
    EXPECT_THAT(check.unknownKeys, ElementsAre("component..comand", "component.library", "zoo"));
}

TEST(ConfigurationCheck, RaisesForAFileThatCannotBeUnderstood) {
    TemporaryFolder folder;
    std::ofstream(folder.File("a.conf")) << "no key\n";
    const EnvironmentVariable named("KXJOB_CONFIG", folder.File("a.conf"));

    EXPECT_EQ(ErrorOf([] { CheckConfiguration(); }).Number(), error_number::kConnectionFailed);
}

}  // namespace
}  // namespace kxjob
