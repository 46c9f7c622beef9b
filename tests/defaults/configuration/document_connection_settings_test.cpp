#include "defaults/configuration/document_connection_settings.h"

#include <gtest/gtest.h>

#include "defaults/store/store_test_support.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

using testing_support::ErrorOf;

TEST(DocumentConnectionSettings, GivesTheThreeItems) {
    DocumentConnectionSettings settings;
    settings.LoadFromText(
        "ADOConnectionString = Driver=SQLite;Database=/tmp/a b.db\nProvider = 5\nNameSpaceQualifier = kx_\n");
    EXPECT_EQ(settings.ADOConnectionString(), "Driver=SQLite;Database=/tmp/a b.db");
    EXPECT_EQ(settings.Provider(), Value(5));
    EXPECT_EQ(settings.NameSpaceQualifier(), "kx_");
}

TEST(DocumentConnectionSettings, LeavesOutProviderAndQualifierThatTheDocumentLeavesOut) {
    DocumentConnectionSettings settings;
    settings.LoadFromText("ADOConnectionString = DSN=x\n");
    EXPECT_EQ(settings.Provider(), Value());
    EXPECT_EQ(settings.NameSpaceQualifier(), "");
}

TEST(DocumentConnectionSettings, RaisesForADocumentWithoutConnection) {
    DocumentConnectionSettings settings;
    settings.LoadFromText("Provider = 5\n");
    const AutomationError error = ErrorOf([&] { settings.ADOConnectionString(); });
    EXPECT_EQ(error.Number(), error_number::kConnectionFailed);
    EXPECT_EQ(error.Description(), "The configuration names no connection: it has no ADOConnectionString");
}

TEST(DocumentConnectionSettings, RaisesForAProviderThatIsNoWholeNumber) {
    for (const char* provider : {"SQLite", "5.5", "5x", "99999999999"}) {
        DocumentConnectionSettings settings;
        settings.LoadFromText(std::string("Provider = ") + provider);
        EXPECT_EQ(ErrorOf([&] { settings.Provider(); }).Description(),
                  "The Provider of the configuration is no whole number")
            << provider;
    }
}

TEST(DocumentConnectionSettings, TakesTheLatestDocumentOnly) {
    DocumentConnectionSettings settings;
    settings.LoadFromText("ADOConnectionString = DSN=x\nNameSpaceQualifier = kx_\n");
    settings.LoadFromText("ADOConnectionString = DSN=y\n");
    EXPECT_EQ(settings.ADOConnectionString(), "DSN=y");
    EXPECT_EQ(settings.NameSpaceQualifier(), "");
}

TEST(DocumentConnectionSettings, RaisesForADocumentThatItDoesNotUnderstand) {
    DocumentConnectionSettings settings;
    EXPECT_EQ(ErrorOf([&] { settings.LoadFromText("<configuration/>"); }).Number(),
              error_number::kConnectionFailed);
}

}  // namespace
}  // namespace kxjob
