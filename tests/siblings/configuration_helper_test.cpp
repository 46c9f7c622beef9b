#include "siblings/configuration_helper.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <optional>

#include "defaults/configuration/environment_variable.h"
#include "kxjob/automation_error.h"
#include "siblings/container.h"

namespace kxjob {
namespace {

using testing::HasSubstr;
using testing_support::Call;
using testing_support::EnvironmentVariable;
using testing_support::ErrorOf;
using testing_support::TemporaryFolder;

TEST(ConfigurationHelper, GivesTheTextOfTheConfigurationFile) {
    const TemporaryFolder folder;
    std::ofstream(folder.Path("my.conf")) << "Provider = 5\n# end\n";
    const EnvironmentVariable named("KXJOB_CONFIG", folder.Path("my.conf").string());
    ConfigurationHelper helper;
    EXPECT_EQ(Call(helper, "Init", {""}), Value());
    EXPECT_EQ(helper.Get("RMConnectionDocument"), Value("Provider = 5\n# end\n"));
}

TEST(ConfigurationHelper, SaysWhereItHasLooked) {
    if (std::filesystem::exists("/etc/kxjob.conf")) GTEST_SKIP() << "this machine has a configuration file";
    const TemporaryFolder folder;
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path(""));
    const EnvironmentVariable named("KXJOB_CONFIG", std::nullopt);
    const EnvironmentVariable home("XDG_CONFIG_HOME", folder.Path("xdg").string());
    ConfigurationHelper helper;
    const AutomationError error = ErrorOf([&] { helper.Get("RMConnectionDocument"); });
    std::filesystem::current_path(before);
    EXPECT_EQ(error.Number(), error_number::kConnectionFailed);
    EXPECT_EQ(error.Description(), "There is no configuration file; looked for ./kxjob.conf, " +
                                       folder.Path("xdg").string() + "/kxjob/kxjob.conf, /etc/kxjob.conf");
}

TEST(ConfigurationHelper, HandsOnThatTheNamedFileIsMissing) {
    const EnvironmentVariable named("KXJOB_CONFIG", "/no/such/kxjob.conf");
    ConfigurationHelper helper;
    const AutomationError error = ErrorOf([&] { helper.Get("RMConnectionDocument"); });
    EXPECT_EQ(error.Number(), error_number::kConnectionFailed);
    EXPECT_THAT(error.Description(), HasSubstr("/no/such/kxjob.conf"));
}

TEST(ConfigurationHelper, HasNoOtherMembers) {
    ConfigurationHelper helper;
    EXPECT_EQ(ErrorOf([&] { helper.Get("Other"); }).Number(), error_number::kUnknownMember);
    EXPECT_EQ(ErrorOf([&] { Call(helper, "Other", {}); }).Number(), error_number::kUnknownMember);
    EXPECT_EQ(ErrorOf([&] { Call(helper, "Init", {}); }).Number(), error_number::kWrongArgumentCount);
}

}  // namespace
}  // namespace kxjob
