#include "defaults/store/sqlite/sqlite_session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>
#include <system_error>
#include <thread>
#include <vector>

#include "defaults/store/create_database_file.h"
#include "defaults/store/sqlite/sqlite_opening.h"
#include "defaults/store/store_test_support.h"
#include "kxjob/array.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using std::chrono::milliseconds;
using testing::HasSubstr;
using testing::StartsWith;
using testing_support::ErrorOf;
using testing_support::kConnectionFailed;
using testing_support::kStatementFailed;
using testing_support::Overwrite;
using testing_support::Rows;
using testing_support::TemporaryDatabase;
using testing_support::TemporaryFolder;

/// Gives up the right to write to every file, which root has, for as long as it lives.
class AsAnyUser {
public:
    AsAnyUser() {
        if (own_ == 0 && seteuid(kNobody) != 0) throw std::system_error(errno, std::generic_category());
    }
    AsAnyUser(const AsAnyUser&) = delete;
    AsAnyUser& operator=(const AsAnyUser&) = delete;
    ~AsAnyUser() { EXPECT_EQ(seteuid(own_), 0); }

private:
    static constexpr uid_t kNobody = 65534;

    uid_t own_ = geteuid();
};

class SqliteSessionTest : public testing::Test {
protected:
    std::string WhyRefused(const std::string& sql) { return WhyRefused(session_, sql); }
    static std::string WhyRefused(SqliteSession& session, const std::string& sql) {
        const AutomationError error = ErrorOf([&] { session.Execute(sql); });
        EXPECT_EQ(error.Number(), kStatementFailed) << error.Description();
        EXPECT_EQ(error.Source(), "kxJob.DataAccess");
        return error.Description();
    }
    static std::string WhyNotOpened(const std::string& file,
                                    milliseconds patience = SqliteSession::kPatience) {
        const AutomationError error = ErrorOf([&] { SqliteSession session(file, patience); });
        EXPECT_EQ(error.Number(), kConnectionFailed) << error.Description();
        EXPECT_EQ(error.Source(), "kxJob.DataAccess");
        return error.Description();
    }
    Value Scalar(const std::string& sql) { return session_.Query(sql).Rows().Cell(0, 0); }

    TemporaryDatabase database_;
    SqliteSession session_{database_.File()};
};

// Opening ----------------------------------------------------------------------------------------------

TEST_F(SqliteSessionTest, OpensWithWriteAheadLoggingAndNormalSynchronisation) {
    EXPECT_EQ(Scalar("PRAGMA journal_mode"), Value("wal"));
    EXPECT_EQ(Scalar("PRAGMA synchronous"), Value(1));
    EXPECT_EQ(Scalar("PRAGMA busy_timeout"), Value(30000));
}

TEST_F(SqliteSessionTest, RefusesAMissingFileAndDoesNotMakeIt) {
    const std::string missing = database_.Folder().Path("missing.db").string();

    EXPECT_THAT(WhyNotOpened(missing), StartsWith("[08001] The connection could not be opened: " + missing +
                                                  ": unable to open database file"));
    EXPECT_FALSE(std::filesystem::exists(missing));
}

TEST_F(SqliteSessionTest, RefusesADirectory) {
    const std::string folder = database_.Folder().Path("folder").string();
    std::filesystem::create_directory(folder);

    EXPECT_THAT(WhyNotOpened(folder),
                StartsWith("[08001] The connection could not be opened: " + folder + ": "));
}

TEST_F(SqliteSessionTest, RefusesAFileOfOtherContent) {
    const std::string file = database_.Folder().Path("other.db").string();
    std::ofstream(file, std::ios::binary) << std::string(5000, '\x5A');

    EXPECT_THAT(WhyNotOpened(file), StartsWith("[08001] The connection could not be opened: " + file +
                                               ": file is not a database"));
}

TEST_F(SqliteSessionTest, RefusesADatabaseWhoseSchemaIsDamaged) {
    const std::string file = database_.Folder().Path("damaged.db").string();
    CreateSqliteFile(file);
    SqliteSession(file).Execute("CREATE TABLE t (k text)");
    Overwrite(file, 100, std::string(3900, '\x7F'));

    EXPECT_THAT(WhyNotOpened(file), StartsWith("[08001] The connection could not be opened: " + file + ": "));
}

TEST_F(SqliteSessionTest, TakesEveryNameAsTheNameOfAFile) {
    EXPECT_THAT(WhyNotOpened(":memory:"), HasSubstr(":memory:: unable to open database file"));
    EXPECT_THAT(WhyNotOpened("file:kxjob_none?mode=memory"), HasSubstr("unable to open database file"));
    EXPECT_THAT(WhyNotOpened(""), HasSubstr("names no database file"));
}

TEST_F(SqliteSessionTest, GivesUpWhenTheFileStaysLocked) {
    SqliteDatabase owner;
    sqlite3* raw = nullptr;
    const std::string file = database_.Folder().Path("locked.db").string();
    ASSERT_EQ(sqlite3_open(file.c_str(), &raw), SQLITE_OK);
    owner.reset(raw);
    ASSERT_EQ(sqlite3_exec(raw, "CREATE TABLE t (k text); BEGIN EXCLUSIVE", nullptr, nullptr, nullptr),
              SQLITE_OK);

    EXPECT_THAT(WhyNotOpened(file, milliseconds(20)), HasSubstr(file + ": database is locked"));
}

TEST_F(SqliteSessionTest, OpensAFreshFileOnManyThreadsAtOnce) {
    for (int round = 0; round < 5; ++round) {
        const std::string file = database_.Folder().Path("fresh" + std::to_string(round)).string();
        CreateSqliteFile(file);
        std::vector<std::thread> threads;
        std::vector<std::string> modes(8);
        for (std::string& mode : modes) {
            threads.emplace_back([&file, &mode] {
                try {
                    mode = SqliteSession(file).Query("PRAGMA journal_mode").Rows().Cell(0, 0).Text();
                } catch (const AutomationError& error) {
                    mode = error.Description();
                }
            });
        }
        for (std::thread& thread : threads) thread.join();
        EXPECT_THAT(modes, testing::Each("wal"));
    }
}

TEST_F(SqliteSessionTest, ReadsADatabaseThatItMayNotWriteTo) {
    session_.Execute("CREATE TABLE t (k text)");
    const std::filesystem::path copy = database_.Folder().Path("readonly.db");
    const std::string intoCopy = "VACUUM INTO '" + copy.string() + "'";
    session_.Execute(intoCopy);
    std::filesystem::permissions(copy, static_cast<std::filesystem::perms>(0444));
    database_.Folder().OpenToAll();
    const AsAnyUser notRoot;

    SqliteSession readOnly(copy.string());

    EXPECT_EQ(readOnly.Query("SELECT COUNT(*) FROM t"), Rows({{0}}));
    EXPECT_THAT(WhyRefused(readOnly, "INSERT INTO t VALUES ('a')"), StartsWith("[25006] "));
}

// Cells ------------------------------------------------------------------------------------------------

TEST_F(SqliteSessionTest, GivesEachCellTheKindOfItsOwnValue) {
    session_.Execute("CREATE TABLE t (a integer, b text, c real, d)");
    session_.Execute("INSERT INTO t VALUES (7, 'seven', 30, NULL)");
    session_.Execute("INSERT INTO t VALUES (NULL, '', 0.5, 'seven')");

    EXPECT_EQ(session_.Query("SELECT a, b, c, d FROM t ORDER BY rowid"),
              Rows({{7, "seven", 30.0, Null{}}, {Null{}, "", 0.5, "seven"}}));
}

TEST_F(SqliteSessionTest, GivesWholeNumbersAs32BitsWhereTheyFit) {
    EXPECT_EQ(session_.Query("SELECT 2147483647, -2147483648, 2147483648, -2147483649, COUNT(*)"),
              Rows({{std::int32_t{2147483647}, std::numeric_limits<std::int32_t>::min(),
                     std::int64_t{2147483648}, std::int64_t{-2147483649}, std::int32_t{1}}}));
    EXPECT_EQ(Scalar("SELECT 9223372036854775807"), Value(std::numeric_limits<std::int64_t>::max()));
}

TEST_F(SqliteSessionTest, GivesLargeAndSmallNumbersAsDoubles) {
    EXPECT_EQ(session_.Query("SELECT 1e20, 0.1, -1.5, 1e300"), Rows({{1e20, 0.1, -1.5, 1e300}}));
}

TEST_F(SqliteSessionTest, GivesBytesAsTheyAreStored) {
    EXPECT_EQ(Scalar("SELECT x'00FF0041'"), Value(std::string("\0\xFF\0A", 4)));
    EXPECT_EQ(Scalar("SELECT x''"), Value(""));
    EXPECT_EQ(Scalar("SELECT 'a' || char(0) || 'b'"), Value(std::string("a\0b", 3)));
}

TEST_F(SqliteSessionTest, GivesTextsAsUtf8WhateverTheDatabaseKeeps) {
    const std::string file = database_.Folder().Path("utf16.db").string();
    SqliteDatabase owner;
    sqlite3* raw = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &raw), SQLITE_OK);
    owner.reset(raw);
    ASSERT_EQ(
        sqlite3_exec(raw, "PRAGMA encoding='UTF-16'; CREATE TABLE t (k text)", nullptr, nullptr, nullptr),
        SQLITE_OK);
    SqliteSession session(file);

    session.Execute("INSERT INTO t VALUES ('\u00E9\U0001F600')");

    EXPECT_EQ(session.Query("SELECT k FROM t"), Rows({{"\u00E9\U0001F600"}}));
}

TEST_F(SqliteSessionTest, KeepsQuotesBackslashesLineBreaksAndEmoji) {
    session_.Execute("CREATE TABLE t (k text)");
    session_.Execute("INSERT INTO t VALUES ('it''s \"a\" \\n ? ;-- /* \U0001F600 \r\n\t[x] $1 :p  ')");

    EXPECT_EQ(Scalar("SELECT k FROM t"), Value("it's \"a\" \\n ? ;-- /* \U0001F600 \r\n\t[x] $1 :p  "));
}

TEST_F(SqliteSessionTest, GivesEmptyWithoutARow) {
    session_.Execute("CREATE TABLE t (k text)");

    EXPECT_TRUE(session_.Query("SELECT k FROM t").IsEmpty());
    EXPECT_TRUE(session_.Query("UPDATE t SET k = 'a'").IsEmpty());
}

// Faulty statements ------------------------------------------------------------------------------------

TEST_F(SqliteSessionTest, NamesAMissingTable) {
    EXPECT_EQ(WhyRefused("UPDATE nowhere SET a = 1"), "[42S02] no such table: nowhere");
    EXPECT_EQ(ErrorOf([&] { session_.Query("SELECT * FROM main.nowhere"); }).Description(),
              "[42S02] no such table: main.nowhere");
}

TEST_F(SqliteSessionTest, NamesAMissingColumn) {
    session_.Execute("CREATE TABLE t (k text)");

    EXPECT_EQ(WhyRefused("UPDATE t SET a = 1"), "[42S22] no such column: a");
    EXPECT_EQ(WhyRefused("INSERT INTO t (a) VALUES (1)"), "[42S22] table t has no column named a");
}

TEST_F(SqliteSessionTest, TakesDoubleQuotesForNamesOnly) {
    EXPECT_EQ(WhyRefused("SELECT \"text\""), "[42S22] no such column: text");
}

TEST_F(SqliteSessionTest, NamesASyntaxError) {
    EXPECT_EQ(WhyRefused("SELEKT 1"), "[42000] near \"SELEKT\": syntax error");
    EXPECT_EQ(WhyRefused("SELECT 'open"), "[42000] unrecognized token: \"'open\"");
}

TEST_F(SqliteSessionTest, NamesABrokenConstraint) {
    session_.Execute("CREATE TABLE t (k text NOT NULL PRIMARY KEY)");
    session_.Execute("INSERT INTO t VALUES ('a')");

    EXPECT_EQ(WhyRefused("INSERT INTO t VALUES ('a')"), "[23000] UNIQUE constraint failed: t.k");
    EXPECT_EQ(WhyRefused("INSERT INTO t VALUES (NULL)"), "[23000] NOT NULL constraint failed: t.k");
}

TEST_F(SqliteSessionTest, NamesAReadOnlyDatabase) {
    session_.Execute("CREATE TABLE t (k text)");
    session_.Execute("PRAGMA query_only = ON");

    EXPECT_EQ(WhyRefused("INSERT INTO t VALUES ('a')"), "[25006] attempt to write a readonly database");
    EXPECT_FALSE(session_.IsLost());
}

TEST_F(SqliteSessionTest, NamesAFullStore) {
    session_.Execute("CREATE TABLE t (k text)");
    session_.Execute("PRAGMA max_page_count = 3");

    EXPECT_EQ(WhyRefused("INSERT INTO t VALUES (zeroblob(100000))"), "[53100] database or disk is full");
}

TEST_F(SqliteSessionTest, NamesAnyOtherFaultAsGeneral) {
    EXPECT_EQ(ErrorOf([&] { session_.Query("SELECT abs(-9223372036854775808)"); }).Description(),
              "[HY000] integer overflow");
}

TEST_F(SqliteSessionTest, StaysUsableAfterAFaultyStatement) {
    WhyRefused("SELEKT 1");

    EXPECT_FALSE(session_.IsLost());
    EXPECT_EQ(Scalar("SELECT 1"), Value(1));
}

// One statement a call ---------------------------------------------------------------------------------

TEST_F(SqliteSessionTest, RefusesASecondStatementAndRunsNone) {
    session_.Execute("CREATE TABLE t (k text)");
    session_.Execute("INSERT INTO t VALUES ('a')");

    for (const char* sql : {"DELETE FROM t; DELETE FROM t", "DELETE FROM t; not a statement",
                            "DELETE FROM t; /* c */ -- d\n SELECT 1", "DELETE FROM t;;;SELECT 1"}) {
        EXPECT_EQ(WhyRefused(sql), "[42000] There is more than one statement in a call") << sql;
        EXPECT_EQ(ErrorOf([&] { session_.Query(sql); }).Number(), kStatementFailed) << sql;
    }
    EXPECT_EQ(Scalar("SELECT COUNT(*) FROM t"), Value(1));
}

TEST_F(SqliteSessionTest, TakesBlanksCommentsAndSemicolonsBehindTheStatement) {
    EXPECT_EQ(Scalar("SELECT 1;"), Value(1));
    EXPECT_EQ(Scalar("SELECT 2 ; \r\n ;; -- the end"), Value(2));
    EXPECT_EQ(Scalar("SELECT 3; /* the ; end */ "), Value(3));
    EXPECT_EQ(Scalar("/* first */ SELECT 4 -- the end"), Value(4));
}

TEST_F(SqliteSessionTest, RefusesATextWithoutStatement) {
    for (const char* sql : {"", "  ", ";", "-- nothing", "/* nothing */;"}) {
        EXPECT_EQ(WhyRefused(sql), "[42000] There is no statement in the text") << sql;
    }
}

TEST_F(SqliteSessionTest, RefusesANulInAStatementAndRunsNothing) {
    session_.Execute("CREATE TABLE t (k text)");
    session_.Execute("INSERT INTO t VALUES ('a')");

    EXPECT_EQ(WhyRefused(std::string("DELETE FROM t\0 WHERE k = 'b'", 28)),
              "[42000] The statement holds a NUL character");
    EXPECT_EQ(Scalar("SELECT COUNT(*) FROM t"), Value(1));
}

// Other connections ------------------------------------------------------------------------------------

TEST_F(SqliteSessionTest, RaisesWhenAnotherWriterHoldsTheStoreForTooLong) {
    session_.Execute("CREATE TABLE t (k text)");
    session_.Execute("BEGIN IMMEDIATE");
    SqliteSession other(database_.File(), milliseconds(20));

    EXPECT_EQ(WhyRefused(other, "INSERT INTO t VALUES ('a')"), "[HYT00] database is locked");
    EXPECT_FALSE(other.IsLost());
    EXPECT_EQ(other.Query("SELECT COUNT(*) FROM t"), Rows({{0}})) << "reading goes on beside a writer";

    session_.Execute("COMMIT");
    other.Execute("INSERT INTO t VALUES ('a')");
    EXPECT_EQ(Scalar("SELECT COUNT(*) FROM t"), Value(1));
}

TEST_F(SqliteSessionTest, WaitsForTheOtherWriter) {
    session_.Execute("CREATE TABLE t (k integer)");
    std::vector<std::thread> writers;
    for (int writer = 0; writer < 2; ++writer) {
        writers.emplace_back([this] {
            SqliteSession own(database_.File());
            for (int i = 0; i < 100; ++i) own.Execute("INSERT INTO t VALUES (1)");
        });
    }
    for (std::thread& writer : writers) writer.join();

    EXPECT_EQ(Scalar("SELECT COUNT(*) FROM t"), Value(200));
}

// Lost files -------------------------------------------------------------------------------------------

TEST_F(SqliteSessionTest, IsLostWhenTheFileIsDeletedUnderIt) {
    session_.Execute("CREATE TABLE t (k text)");
    std::filesystem::remove(database_.File());

    EXPECT_EQ(WhyRefused("INSERT INTO t VALUES ('a')"), "[08S01] The database file was moved or deleted");
    EXPECT_TRUE(session_.IsLost());
    EXPECT_THAT(WhyNotOpened(database_.File()), HasSubstr("unable to open database file"));
}

TEST_F(SqliteSessionTest, IsLostWhenAnotherFileTakesThePlaceOfItsOwn) {
    session_.Execute("CREATE TABLE t (k text)");
    const std::filesystem::path moved = database_.Folder().Path("moved.db");
    std::filesystem::rename(database_.File(), moved);
    CreateSqliteFile(database_.File());

    const auto write = [&] { session_.WriteLongText("t", "k", "a", "k", "b"); };
    const std::vector<std::string> batch = {"INSERT INTO t VALUES ('a')"};

    EXPECT_EQ(ErrorOf([&] { session_.Query("SELECT * FROM t"); }).Number(), kStatementFailed);
    EXPECT_EQ(ErrorOf(write).Description(), "[08S01] The database file was moved or deleted");
    EXPECT_EQ(ErrorOf([&] { session_.RunBatch(batch); }).Description(),
              "[08S01] The database file was moved or deleted");
    EXPECT_TRUE(session_.IsLost());
}

TEST_F(SqliteSessionTest, IsLostWhenAStatementMeetsDamage) {
    const std::string file = database_.Folder().Path("damaged.db").string();
    CreateSqliteFile(file);
    {
        SqliteSession writer(file);
        writer.Execute("CREATE TABLE t (k integer PRIMARY KEY, v text)");
        writer.Execute(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 200)"
            " INSERT INTO t SELECT i, hex(zeroblob(500)) FROM n");
    }
    Overwrite(file, 4096, std::string(8192, '\x7F'));  // the first page with the schema stays whole
    SqliteSession session(file);

    EXPECT_EQ(WhyRefused(session, "SELECT SUM(length(v)) FROM t"),
              "[XX001] database disk image is malformed");
    EXPECT_TRUE(session.IsLost());
}

// Batches ----------------------------------------------------------------------------------------------

TEST_F(SqliteSessionTest, RunsABatchInOrder) {
    session_.Execute("CREATE TABLE t (k integer)");
    const std::vector<std::string> batch = {"INSERT INTO t VALUES (1)", "UPDATE t SET k = k + 1",
                                            "INSERT INTO t VALUES (1);", "UPDATE t SET k = k * 10"};

    session_.RunBatch(batch);

    EXPECT_EQ(session_.Query("SELECT k FROM t ORDER BY rowid"), Rows({{20}, {10}}));
}

TEST_F(SqliteSessionTest, KeepsNothingOfABatchThatFails) {
    session_.Execute("CREATE TABLE t (k text NOT NULL PRIMARY KEY)");
    std::vector<std::string> batch;
    for (int i = 1; i <= 100; ++i) batch.push_back("INSERT INTO t VALUES ('" + std::to_string(i) + "')");
    batch[56] = "INSERT INTO t VALUES ('1')";

    const AutomationError error = ErrorOf([&] { session_.RunBatch(batch); });

    EXPECT_EQ(error.Number(), kStatementFailed);
    EXPECT_EQ(error.Source(), "kxJob.DataAccess");
    EXPECT_EQ(error.Description(), "[23000] statement 57 of 100: UNIQUE constraint failed: t.k");
    EXPECT_EQ(Scalar("SELECT COUNT(*) FROM t"), Value(0));
    EXPECT_FALSE(session_.IsLost());
}

TEST_F(SqliteSessionTest, CanRunABatchAgainAfterOneThatFailed) {
    session_.Execute("CREATE TABLE t (k text)");
    const std::vector<std::string> faulty = {"INSERT INTO t VALUES ('a')",
                                             "INSERT INTO nowhere VALUES ('a')"};
    const std::vector<std::string> sound = {"INSERT INTO t VALUES ('b')"};

    EXPECT_EQ(ErrorOf([&] { session_.RunBatch(faulty); }).Description(),
              "[42S02] statement 2 of 2: no such table: nowhere");
    session_.RunBatch(sound);

    EXPECT_EQ(session_.Query("SELECT k FROM t"), Rows({{"b"}}));
}

TEST_F(SqliteSessionTest, KeepsNothingOfABatchThatFillsTheStore) {
    session_.Execute("CREATE TABLE t (k text)");
    session_.Execute("PRAGMA max_page_count = 3");
    const std::vector<std::string> batch = {"INSERT INTO t VALUES ('a')",
                                            "INSERT INTO t VALUES (zeroblob(100000))"};

    EXPECT_EQ(ErrorOf([&] { session_.RunBatch(batch); }).Description(),
              "[53100] statement 2 of 2: database or disk is full");
    EXPECT_EQ(Scalar("SELECT COUNT(*) FROM t"), Value(0));
    EXPECT_FALSE(session_.IsLost());
}

TEST_F(SqliteSessionTest, RefusesABatchWhileAnotherWriterHoldsTheStore) {
    session_.Execute("CREATE TABLE t (k text)");
    session_.Execute("BEGIN IMMEDIATE");
    SqliteSession other(database_.File(), milliseconds(20));
    const std::vector<std::string> batch = {"INSERT INTO t VALUES ('a')"};

    EXPECT_EQ(ErrorOf([&] { other.RunBatch(batch); }).Description(), "[HYT00] database is locked");
    session_.Execute("ROLLBACK");
    other.RunBatch(batch);

    EXPECT_EQ(Scalar("SELECT COUNT(*) FROM t"), Value(1));
}

TEST_F(SqliteSessionTest, LeavesATransactionOfItsCallerAlone) {
    session_.Execute("CREATE TABLE t (k text)");
    session_.Execute("BEGIN");
    session_.Execute("INSERT INTO t VALUES ('mine')");
    const std::vector<std::string> batch = {"INSERT INTO t VALUES ('a')"};

    EXPECT_THAT(ErrorOf([&] { session_.RunBatch(batch); }).Description(), HasSubstr("within a transaction"));
    session_.Execute("COMMIT");

    EXPECT_EQ(session_.Query("SELECT k FROM t"), Rows({{"mine"}}));
}

TEST_F(SqliteSessionTest, TakesAnEmptyBatch) {
    EXPECT_NO_THROW(session_.RunBatch({}));
    EXPECT_NO_THROW(session_.Execute("BEGIN")) << "no transaction was left open";
}

// Long texts -------------------------------------------------------------------------------------------

TEST_F(SqliteSessionTest, WritesALongTextIntoTheRowOfItsKey) {
    session_.Execute("CREATE TABLE t (k text, v text)");
    session_.Execute("INSERT INTO t VALUES ('a', 'old')");
    session_.Execute("INSERT INTO t VALUES ('it''s', 'old')");
    std::string text;
    while (text.size() < (std::size_t{8} << 20U)) text += "';\"?\\ \r\n\U0001F600 ";

    session_.WriteLongText("t", "k", "it's", "v", text);

    EXPECT_EQ(Scalar("SELECT v FROM t WHERE k = 'a'"), Value("old"));
    EXPECT_TRUE(Scalar("SELECT v FROM t WHERE k = 'it''s'").Text() == text);
    EXPECT_EQ(Scalar("SELECT typeof(v) FROM t WHERE k = 'it''s'"), Value("text"));
}

TEST_F(SqliteSessionTest, WritesTheEmptyTextAsEmptyAndNotAsNull) {
    session_.Execute("CREATE TABLE t (k text, v text)");
    session_.Execute("INSERT INTO t VALUES ('a', 'old')");

    session_.WriteLongText("t", "k", "a", "v", "");

    EXPECT_EQ(Scalar("SELECT v FROM t"), Value(""));
}

TEST_F(SqliteSessionTest, WritesNoLongTextWithoutARow) {
    session_.Execute("CREATE TABLE t (k text, v text)");

    session_.WriteLongText("t", "k", "a", "v", "text");

    EXPECT_TRUE(session_.Query("SELECT v FROM t").IsEmpty());
}

TEST_F(SqliteSessionTest, RaisesWhenALongTextHasNoPlace) {
    EXPECT_EQ(ErrorOf([&] { session_.WriteLongText("t", "k", "a", "v", "text"); }).Description(),
              "[42S02] no such table: t");
}

}  // namespace
}  // namespace kxjob
