#include "defaults/store/sqlite/sqlite_session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <limits>
#include <vector>

#include "defaults/store/sqlite/sqlite_session_fixture.h"
#include "kxjob/array.h"

namespace kxjob {
namespace {

using std::chrono::milliseconds;
using testing::HasSubstr;
using testing_support::ErrorOf;
using testing_support::kStatementFailed;
using testing_support::Rows;

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
