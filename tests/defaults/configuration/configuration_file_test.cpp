#include "defaults/configuration/configuration_file.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "defaults/configuration/environment_variable.h"
#include "defaults/store/store_test_support.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing_support::EnvironmentVariable;
using testing_support::ErrorOf;
using testing_support::TemporaryFolder;

class ConfigurationFile : public testing::Test {
protected:
    ConfigurationFile() : formerFolder_(std::filesystem::current_path()) {
        std::filesystem::create_directories(folder_.Path("work"));
        std::filesystem::create_directories(folder_.Path("xdg/kxjob"));
        std::filesystem::create_directories(folder_.Path("home/.config/kxjob"));
        std::filesystem::current_path(folder_.Path("work"));
    }
    ~ConfigurationFile() override { std::filesystem::current_path(formerFolder_); }

    std::string Write(const std::string& name, const std::string& text) {
        std::ofstream(folder_.Path(name)) << text;
        return Path(name);
    }
    std::string Path(const std::string& name) { return folder_.Path(name).string(); }

    TemporaryFolder folder_;
    std::filesystem::path formerFolder_;
    EnvironmentVariable named_{"KXJOB_CONFIG", std::nullopt};
    EnvironmentVariable configurationHome_{"XDG_CONFIG_HOME", Path("xdg")};
    EnvironmentVariable home_{"HOME", Path("home")};
};

TEST_F(ConfigurationFile, IsLookedForInThesePlacesInThisOrder) {
    EXPECT_THAT(ConfigurationPlaces(),
                ElementsAre("./kxjob.conf", Path("xdg") + "/kxjob/kxjob.conf", "/etc/kxjob.conf"));
}

TEST_F(ConfigurationFile, IsLookedForInTheHomeFolderWhenNoOtherIsSetForConfigurations) {
    const EnvironmentVariable unset("XDG_CONFIG_HOME", std::nullopt);
    EXPECT_THAT(ConfigurationPlaces(),
                ElementsAre("./kxjob.conf", Path("home") + "/.config/kxjob/kxjob.conf", "/etc/kxjob.conf"));
    const EnvironmentVariable homeless("HOME", std::nullopt);
    EXPECT_THAT(ConfigurationPlaces(), ElementsAre("./kxjob.conf", "/etc/kxjob.conf"));
}

TEST_F(ConfigurationFile, TheNearestOneIsRead) {
    Write("xdg/kxjob/kxjob.conf", "from = xdg\n");
    EXPECT_EQ(ConfigurationText(), "from = xdg\n");
    Write("work/kxjob.conf", "from = work\n");
    EXPECT_EQ(ConfigurationText(), "from = work\n");
    const EnvironmentVariable named("KXJOB_CONFIG", Write("other.conf", "from = other\n"));
    EXPECT_EQ(ConfigurationText(), "from = other\n");
    EXPECT_THAT(ConfigurationPlaces(), ElementsAre(Path("other.conf")));
}

TEST_F(ConfigurationFile, AnEmptyVariableNamesNone) {
    const EnvironmentVariable named("KXJOB_CONFIG", "");
    Write("work/kxjob.conf", "from = work\n");
    EXPECT_EQ(ConfigurationText(), "from = work\n");
}

TEST_F(ConfigurationFile, ThatIsNamedMustBeThere) {
    Write("work/kxjob.conf", "from = work\n");
    const EnvironmentVariable named("KXJOB_CONFIG", Path("missing.conf"));
    const AutomationError error = ErrorOf([] { ConfigurationText(); });
    EXPECT_EQ(error.Number(), error_number::kConnectionFailed);
    EXPECT_THAT(error.Description(), HasSubstr(Path("missing.conf")));
}

TEST_F(ConfigurationFile, ThatIsNamedMustBeNoFolder) {
    const EnvironmentVariable named("KXJOB_CONFIG", Path("work"));
    EXPECT_EQ(ErrorOf([] { ConfigurationText(); }).Number(), error_number::kConnectionFailed);
}

TEST_F(ConfigurationFile, MayBeMissingEverywhere) {
    EXPECT_EQ(FirstTextAmong({Path("a.conf"), Path("b.conf")}), std::nullopt);
    EXPECT_EQ(FirstTextAmong({}), std::nullopt);
}

TEST_F(ConfigurationFile, FoldersOfThatNameArePassedOver) {
    EXPECT_EQ(FirstTextAmong({Path("work"), Write("b.conf", "b = 1\n")}), "b = 1\n");
}

TEST_F(ConfigurationFile, MayBeEmpty) {
    EXPECT_EQ(FirstTextAmong({Write("a.conf", ""), "b.conf"}), "");
}

TEST_F(ConfigurationFile, ThatCannotBeReadIsNotPassedOver) {
    // The memory of this process, read from its unmapped beginning, gives an error to every user.
    const AutomationError error = ErrorOf([&] {
        FirstTextAmong({"/proc/self/mem", Write("b.conf", "b = 1\n")});
    });
    EXPECT_EQ(error.Number(), error_number::kConnectionFailed);
    EXPECT_THAT(error.Description(), HasSubstr("/proc/self/mem"));
}

}  // namespace
}  // namespace kxjob
