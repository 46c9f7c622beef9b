#include "defaults/configuration/default_settings.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "defaults/store/store_test_support.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

DefaultSettings SettingsOf(const std::string& text) {
    return DefaultSettings(ConfigurationDocument(text));
}

TEST(DefaultSettings, HoldWithoutAConfiguration) {
    const DefaultSettings settings = SettingsOf("");
    EXPECT_EQ(settings.LogLevel(), 2);
    EXPECT_EQ(settings.LogFile(), "");
    EXPECT_EQ(settings.ComponentVersion(), "83");
    EXPECT_EQ(settings.ComponentLibrary("Shop_83.Import"), std::nullopt);
    EXPECT_EQ(settings.ComponentCommand("Shop_83.Import"), std::nullopt);
}

TEST(DefaultSettings, ComeFromTheConfiguration) {
    const DefaultSettings settings = SettingsOf(
        "log.level = 4\nlog.file = /tmp/kxjob.log\ncomponent.version = 90\n"
        "component.Shop_83.Import.library = /opt/shop.so\ncomponent.Shop_83.Export.command = /bin/cat -\n");
    EXPECT_EQ(settings.LogLevel(), 4);
    EXPECT_EQ(settings.LogFile(), "/tmp/kxjob.log");
    EXPECT_EQ(settings.ComponentVersion(), "90");
    EXPECT_EQ(settings.ComponentLibrary("SHOP_83.Import"), "/opt/shop.so");
    EXPECT_EQ(settings.ComponentCommand("Shop_83.export"), "/bin/cat -");
    EXPECT_EQ(settings.ComponentCommand("Shop_83.Import"), std::nullopt);
}

TEST(DefaultSettings, RefuseALogLevelThatIsNone) {
    for (const char* level : {"high", "-1", "2.5", "4 5"}) {
        const DefaultSettings settings = SettingsOf(std::string("log.level = ") + level);
        const AutomationError error = testing_support::ErrorOf([&] { settings.LogLevel(); });
        EXPECT_EQ(error.Number(), error_number::kConnectionFailed);
        EXPECT_EQ(error.Description(), "log.level of the configuration is no whole number from 0 on");
    }
}

}  // namespace
}  // namespace kxjob
