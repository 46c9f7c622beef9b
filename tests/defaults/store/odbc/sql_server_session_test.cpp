#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "automation/utf16.h"
#include "defaults/store/odbc/odbc_connection_string.h"
#include "defaults/store/odbc/odbc_session.h"
#include "defaults/store/odbc/tds_stub.h"
#include "defaults/store/store_test_support.h"
#include "kxjob/array.h"

// What goes to a SQL Server, and what comes back: by its protocol, for there is none to ask.
namespace kxjob {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using namespace std::string_literals;
using testing_support::ErrorOf;
using testing_support::Rows;
using testing_support::TdsStub;

/// What this driver sends when transactions are over.
constexpr const char* kBackToAutocommit = "rollback";

class SqlServerSession : public testing::Test {
protected:
    /// What has been asked since the session was set up.
    std::vector<std::string> Asked() const {
        std::vector<std::string> requests = server_.Requests();
        requests.erase(requests.begin(), requests.begin() + static_cast<std::ptrdiff_t>(before_));
        return requests;
    }

    TdsStub server_;
    OdbcSession session_{OdbcConnectionString(ConnectionString(server_.ConnectionString()))};
    std::size_t before_ = server_.Requests().size();
};

TEST_F(SqlServerSession, IsSetUpOnce) {
    EXPECT_THAT(server_.Requests(),
                Contains("SET TEXTSIZE 2147483647; SET QUOTED_IDENTIFIER ON; SET ANSI_NULLS ON; "
                         "SET XACT_ABORT ON; SET NOCOUNT ON; SET LOCK_TIMEOUT 30000")
                    .Times(1));
}

TEST_F(SqlServerSession, SendsStatementsAsTheyAre) {
    const std::string sql =
        "UPDATE t SET v = 'it''s \u00E9 \U0001F600 {d ''2026-03-01''} ? -- x' WHERE k = 1";

    session_.Execute(sql);

    EXPECT_THAT(Asked(), ElementsAre(sql));
}

TEST_F(SqlServerSession, ReadsNumbersAndTexts) {
    std::u16string text;
    while (text.size() < 20000) text += u"it's \u00E9 \U0001F600 ";
    server_.Answer("SELECT", TdsStub::Row(-7, text));

    EXPECT_TRUE(session_.Query("SELECT n, v FROM t") == Rows({{-7, ToUtf8(text)}}));
}

TEST_F(SqlServerSession, BindsLongTextsAsTextsOf16BitCharacters) {
    session_.WriteLongText("kx_job", "jobguid", "{K}", "failurenote", "\u00E9\U0001F600");

    ASSERT_EQ(Asked().size(), 1U);
    const std::string bytes = Asked()[0];
    const std::string sql = "UPDATE kx_job SET failurenote = ";
    const std::u16string wide = ToUtf16(sql);
    EXPECT_NE(bytes.find(std::string(reinterpret_cast<const char*>(wide.data()), wide.size() * 2)),
              std::string::npos);
    EXPECT_NE(bytes.find("\xE9\x00\x3D\xD8\x00\xDE"s), std::string::npos);
}

TEST_F(SqlServerSession, SendsABatchAsOneTransaction) {
    session_.RunBatch(std::vector<std::string>{"INSERT 1", "INSERT 2", "INSERT 3"});

    EXPECT_THAT(Asked(), ElementsAre("begin", "INSERT 1;\nINSERT 2;\nINSERT 3", "commit", kBackToAutocommit));
}

TEST_F(SqlServerSession, UndoesAFailedBatchAndFindsThePlaceInAnother) {
    server_.Answer("INSERT 2", TdsStub::Error(2627, "Violation of PRIMARY KEY constraint"));

    const AutomationError error = ErrorOf([&] {
        session_.RunBatch(std::vector<std::string>{"INSERT 1", "INSERT 2", "INSERT 3"});
    });

    EXPECT_THAT(error.Description(), StartsWith("[23000] statement 2 of 3: "));
    EXPECT_THAT(error.Description(), HasSubstr("Violation of PRIMARY KEY constraint"));
    EXPECT_THAT(Asked(), ElementsAre("begin", "INSERT 1;\nINSERT 2;\nINSERT 3", "rollback", kBackToAutocommit,
                                     "begin", "INSERT 1", "INSERT 2", "rollback", kBackToAutocommit));
    EXPECT_FALSE(session_.IsLost());
}

TEST_F(SqlServerSession, NamesNoPlaceWhenNoStatementFailsByItself) {
    server_.Answer("INSERT 1;", TdsStub::Error(2627, "Violation of PRIMARY KEY constraint"));

    const AutomationError error = ErrorOf([&] {
        session_.RunBatch(std::vector<std::string>{"INSERT 1", "INSERT 2"});
    });

    EXPECT_THAT(error.Description(), Not(HasSubstr("statement")));
    EXPECT_THAT(Asked(), ElementsAre("begin", "INSERT 1;\nINSERT 2", "rollback", kBackToAutocommit, "begin",
                                     "INSERT 1", "INSERT 2", "rollback", kBackToAutocommit));
}

TEST_F(SqlServerSession, NamesNoPlaceWhenAStatementFailsInAnotherWayByItself) {
    server_.Answer("INSERT 1;", TdsStub::Error(2627, "Violation of PRIMARY KEY constraint"));
    server_.Answer("INSERT 2", TdsStub::Error(208, "Invalid object name."));

    EXPECT_THAT(ErrorOf([&] {
                    session_.RunBatch(std::vector<std::string>{"INSERT 1", "INSERT 2"});
                }).Description(),
                Not(HasSubstr("statement")));
}

TEST_F(SqlServerSession, RunsNothingAgainThatMayCommitByItself) {
    server_.Answer("INSERT 2", TdsStub::Error(2627, "Violation of PRIMARY KEY constraint"));

    const AutomationError error = ErrorOf([&] {
        session_.RunBatch(std::vector<std::string>{"INSERT 1", "CREATE TABLE a", "INSERT 2"});
    });

    EXPECT_THAT(error.Description(), Not(HasSubstr("statement")));
    EXPECT_THAT(Asked(), ElementsAre("begin", "INSERT 1;\nCREATE TABLE a;\nINSERT 2", "rollback",
                                     kBackToAutocommit, "begin", "INSERT 1", "rollback", kBackToAutocommit));
}

TEST_F(SqlServerSession, RunsNothingAgainThatWaitedForALockInVain) {
    server_.Answer("UPDATE 2", TdsStub::Error(1222, "Lock request time out period exceeded."));

    ErrorOf([&] { session_.RunBatch(std::vector<std::string>{"INSERT 1", "UPDATE 2"}); });

    EXPECT_THAT(Asked(), ElementsAre("begin", "INSERT 1;\nUPDATE 2", "rollback", kBackToAutocommit));
}

TEST_F(SqlServerSession, TellsItsErrorsApart) {
    server_.Answer("missing", TdsStub::Error(208, "Invalid object name 'missing'."));
    server_.Answer("locked", TdsStub::Error(1222, "Lock request time out period exceeded."));
    server_.Answer("deadlocked", TdsStub::Error(1205, "Transaction was deadlocked."));

    EXPECT_THAT(ErrorOf([&] { session_.Query("SELECT * FROM missing"); }).Description(),
                StartsWith("[42S02] "));
    EXPECT_THAT(ErrorOf([&] { session_.Execute("UPDATE locked"); }).Description(), StartsWith("[HYT00] "));
    EXPECT_FALSE(session_.IsLost());
}

TEST_F(SqlServerSession, IsLostWhenTheServerHangsUp) {
    server_.HangUpOn("UPDATE t");

    EXPECT_THAT(ErrorOf([&] { session_.Execute("UPDATE t"); }).Description(), StartsWith("[08"));
    EXPECT_TRUE(session_.IsLost());
}

TEST_F(SqlServerSession, IsLostWhenTheServerHangsUpInABatch) {
    server_.HangUpOn("INSERT 2");

    ErrorOf([&] { session_.RunBatch(std::vector<std::string>{"INSERT 1", "INSERT 2"}); });

    EXPECT_TRUE(session_.IsLost());
}

}  // namespace
}  // namespace kxjob
