#include "defaults/store/odbc/odbc_session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

#include "defaults/store/create_database_file.h"
#include "defaults/store/open_session.h"
#include "defaults/store/store_test_support.h"
#include "kxjob/array.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using testing_support::ErrorOf;
using testing_support::kConnectionFailed;
using testing_support::kStatementFailed;
using testing_support::Overwrite;
using testing_support::Rows;
using testing_support::TemporaryDatabase;
using testing_support::TemporaryFolder;

std::string BehindOdbc(const std::string& file) {
    return "Driver={SQLite3};Database=" + file + ";";
}

class OdbcSessionTest : public testing::Test {
protected:
    OdbcSessionTest() { session_.Execute("CREATE TABLE t (k varchar(64) NOT NULL PRIMARY KEY, v text)"); }

    TemporaryDatabase database_;
    OdbcSession session_{BehindOdbc(database_.File())};
};

TEST_F(OdbcSessionTest, KeepsNullAndTheEmptyTextApart) {
    session_.Execute("INSERT INTO t VALUES ('a', '')");
    session_.Execute("INSERT INTO t VALUES ('b', NULL)");

    EXPECT_EQ(session_.Query("SELECT v FROM t ORDER BY k"), Rows({{""}, {Null{}}}));
}

TEST_F(OdbcSessionTest, ReadsTextsOfEveryLengthAroundItsBuffer) {
    for (std::size_t length = 4090; length <= 4100; ++length) {
        const std::string text = std::string(length - 4, 'x') + "\U0001F600";
        session_.Execute("DELETE FROM t");
        session_.Execute("INSERT INTO t VALUES ('a', '" + text + "')");
        EXPECT_TRUE(session_.Query("SELECT v FROM t") == Rows({{text}})) << length;
    }
}

TEST_F(OdbcSessionTest, WritesTextsOfEveryLengthAroundItsPieces) {
    constexpr std::size_t kPiece = 65536;
    session_.Execute("INSERT INTO t VALUES ('a', NULL)");
    for (std::size_t length = kPiece - 3; length <= kPiece + 5; ++length) {
        const std::string text = std::string(length - 4, 'x') + "\U0001F600";
        session_.WriteLongText("t", "k", "a", "v", text);
        EXPECT_TRUE(session_.Query("SELECT v FROM t") == Rows({{text}})) << length;
    }
}

TEST_F(OdbcSessionTest, GivesEmptyForAStatementThatIsNoQuery) {
    EXPECT_TRUE(session_.Query("DELETE FROM t").IsEmpty());
}

TEST_F(OdbcSessionTest, NamesThePlaceOfAFailingStatement) {
    const std::vector<std::string> batch = {
        "INSERT INTO t VALUES ('a', '')", "INSERT INTO t VALUES ('a', '')", "INSERT INTO t VALUES ('b', '')"};

    const AutomationError error = ErrorOf([&] { session_.RunBatch(batch); });

    EXPECT_EQ(error.Number(), kStatementFailed);
    EXPECT_THAT(error.Description(), StartsWith("[23000] statement 2 of 3: "));
    EXPECT_FALSE(session_.IsLost());
    EXPECT_TRUE(session_.Query("SELECT k FROM t").IsEmpty());
}

TEST_F(OdbcSessionTest, IsNotLostByAFaultyStatement) {
    ErrorOf([&] { session_.Execute("SELEKT 1"); });

    EXPECT_FALSE(session_.IsLost());
}

TEST_F(OdbcSessionTest, IsLostWithItsDatabase) {
    session_.Execute("INSERT INTO t VALUES ('a', 'v')");
    Overwrite(database_.File(), 0, std::string(4096, '\x55'));

    const AutomationError error = ErrorOf([&] { session_.Query("SELECT v FROM t"); });

    EXPECT_THAT(error.Description(), StartsWith("[XX001] "));
    EXPECT_TRUE(session_.IsLost());
}

TEST(OpenOdbcSession, RaisesForADriverThatIsNotInstalled) {
    const AutomationError error =
        ErrorOf([] { OpenSession("Driver={Nothing like this};Server=h;UID=kx;PWD=topsecret"); });

    EXPECT_EQ(error.Number(), kConnectionFailed);
    EXPECT_EQ(error.Source(), "kxJob.DataAccess");
    EXPECT_THAT(error.Description(), HasSubstr("] The connection could not be opened: "));
    EXPECT_THAT(error.Description(), HasSubstr("Nothing like this"));
    EXPECT_THAT(error.Description(), Not(HasSubstr("topsecret")));
}

TEST(OpenOdbcSession, BlotsOutAPasswordThatADriverShows) {
    // Here the driver's name, which the driver manager shows, is the password too.
    const AutomationError error = ErrorOf([] { OpenSession("Driver={topsecret};PWD={topsecret}"); });

    EXPECT_THAT(error.Description(), HasSubstr("***"));
    EXPECT_THAT(error.Description(), Not(HasSubstr("topsecret")));
}

TEST(OpenOdbcSession, BlotsOutWhatAnyKeyThatEndsInPasswordHolds) {
    for (const char* key : {"SSLPassword", "ProxyPwd", "TRUSTSTOREPASSWORD"}) {
        const AutomationError error =
            ErrorOf([key] { OpenSession(std::string("Driver={topsecret};") + key + "={topsecret}"); });

        EXPECT_THAT(error.Description(), HasSubstr("***")) << key;
        EXPECT_THAT(error.Description(), Not(HasSubstr("topsecret"))) << key;
    }
}

TEST(OpenOdbcSession, NeedsAnExistingFile) {
    const TemporaryFolder folder;
    const std::string file = folder.Path("store.db").string();

    EXPECT_EQ(ErrorOf([&] { OpenSession(BehindOdbc(file)); }).Number(), kConnectionFailed);
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST(OpenOdbcSession, RaisesForAFileThatIsNoDatabase) {
    const TemporaryDatabase database;
    OpenSession(database.ConnectionString())->Execute("CREATE TABLE t (k text)");
    Overwrite(database.File(), 0, std::string(4096, '\x55'));

    EXPECT_EQ(ErrorOf([&] { OpenSession(BehindOdbc(database.File())); }).Number(), kConnectionFailed);
}

TEST(CreateOdbcDatabase, MakesTheFileOfADriverThatKeepsFiles) {
    const TemporaryFolder folder;
    const std::string file = folder.Path("store.db").string();

    CreateDatabaseFile(BehindOdbc(file));

    EXPECT_TRUE(std::filesystem::exists(file));
    EXPECT_EQ(OpenSession(BehindOdbc(file))->Query("SELECT COUNT(*) FROM sqlite_master"), Rows({{0}}));
}

TEST(CreateOdbcDatabase, AsksNothingOfAServer) {
    EXPECT_NO_THROW(CreateDatabaseFile("Driver={Nothing like this};Server=h"));
}

}  // namespace
}  // namespace kxjob
