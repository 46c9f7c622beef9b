#include "defaults/store/open_session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "defaults/store/create_database_file.h"
#include "defaults/store/store_test_support.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using testing_support::ErrorOf;
using testing_support::kConnectionFailed;
using testing_support::Rows;
using testing_support::TemporaryDatabase;
using testing_support::TemporaryFolder;

std::string Content(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(OpenSession, OpensAFileWithTheEmbeddedEngine) {
    const TemporaryDatabase database;

    EXPECT_EQ(OpenSession("Driver=SQLite;Database=" + database.File())->Query("SELECT 1"), Rows({{1}}));
    EXPECT_EQ(OpenSession("database={" + database.File() + "}; DRIVER={sqlite}")->Query("SELECT 1"),
              Rows({{1}}));
}

TEST(OpenSession, SaysWhichConnectionStringsItTakes) {
    for (const char* connectionString : {"Database=a", "Server=h;PWD=secret", ""}) {
        const AutomationError error = ErrorOf([&] { OpenSession(connectionString); });
        EXPECT_EQ(error.Number(), kConnectionFailed) << connectionString;
        EXPECT_THAT(error.Description(), StartsWith("[08001] The connection could not be opened: "))
            << connectionString;
        EXPECT_THAT(error.Description(), HasSubstr("Driver=SQLite;Database=FILE")) << connectionString;
        EXPECT_THAT(error.Description(), HasSubstr("Driver={...};...")) << connectionString;
        EXPECT_THAT(error.Description(), Not(HasSubstr("secret"))) << connectionString;
    }
}

TEST(OpenSession, OpensAFileBehindOdbc) {
    const TemporaryDatabase database;

    EXPECT_EQ(OpenSession("Driver={SQLite3};Database=" + database.File())->Query("SELECT 1"), Rows({{1}}));
}

TEST(OpenSession, RefusesAConnectionStringWithoutDatabase) {
    const AutomationError error = ErrorOf([&] { OpenSession("Driver=SQLite"); });

    EXPECT_EQ(error.Number(), kConnectionFailed);
    EXPECT_THAT(error.Description(), HasSubstr("names no database file"));
}

TEST(CreateDatabaseFile, MakesAnEmptyDatabase) {
    const TemporaryFolder folder;
    const std::string connectionString = "Driver=SQLite;Database=" + folder.Path("new.db").string();

    CreateDatabaseFile(connectionString);

    EXPECT_EQ(OpenSession(connectionString)->Query("SELECT COUNT(*) FROM sqlite_schema"), Rows({{0}}));
}

TEST(CreateDatabaseFile, LeavesAnExistingDatabaseAsItIs) {
    const TemporaryDatabase database;
    OpenSession(database.ConnectionString())->Execute("CREATE TABLE t (k text)");
    const std::string before = Content(database.File());

    CreateDatabaseFile(database.ConnectionString());

    EXPECT_EQ(Content(database.File()), before);
    EXPECT_FALSE(before.empty());
}

TEST(CreateDatabaseFile, RaisesWhereNoFileCanBe) {
    const TemporaryFolder folder;
    const std::string file = folder.Path("no/such/folder/new.db").string();

    for (const std::string& path : {file, folder.Path("").string()}) {
        const AutomationError error = ErrorOf([&] { CreateDatabaseFile("Driver=SQLite;Database=" + path); });
        EXPECT_EQ(error.Number(), kConnectionFailed);
        EXPECT_THAT(error.Description(),
                    StartsWith("[08001] The connection could not be opened: " + path + ": "));
    }
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST(CreateDatabaseFile, RefusesAConnectionStringThatNamesNoStore) {
    EXPECT_EQ(ErrorOf([] { CreateDatabaseFile("Database=a"); }).Number(), kConnectionFailed);
}

}  // namespace
}  // namespace kxjob
