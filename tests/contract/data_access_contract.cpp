#include "contract/data_access_contract.h"

#include <gmock/gmock.h>

#include <limits>
#include <vector>

#include "defaults/store/store_test_support.h"
#include "defaults/text/standard_sql_formatter.h"
#include "support/sample_errors.h"

namespace kxjob::testing_support {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// Texts that some engine, driver or literal has been known to change.
const std::vector<std::string> kDelicateTexts = {
    "",
    "it's 'quoted'",
    "\"double\" `back` [brackets]",
    "back\\slash \\n \\' \\",
    "? :p $1 $$ @x #temp",
    "{d '2026-03-01'} {fn NOW()} {call x(?)}",
    "; -- /* */",
    "line\r\nline\nline\rend\r\n",
    "tab\tbell\aescape\x1B"
    "substitute\x1A",
    "trailing blanks   ",
    "   leading blanks",
    "\u00E9\u4E2D\U0001F600\uFFFF\uFEFF",
    "{3F2504E0-4F89-41D3-9A0C-0305E82C3301}",
    "0123",
    "1e5",
    "NULL",
};

}  // namespace

void DataAccessContract::SetUp() {
    if (!GetParam().whyMissing.empty()) GTEST_SKIP() << GetParam().whyMissing;
    store_ = GetParam().makeStore();
    connectionString_ = store_->ConnectionString();
    Execute(
        "CREATE TABLE t (k varchar(64) NOT NULL PRIMARY KEY, n integer, big bigint, d double precision, v " +
        GetParam().longText + ")");
}

void DataAccessContract::Execute(const std::string& sql) {
    data_.Execute(connectionString_, 2, 1, sql);
}

Value DataAccessContract::Query(const std::string& sql, bool allowEmpty) {
    return data_.Query(connectionString_, 2, 1, sql, allowEmpty);
}

void DataAccessContract::WriteLongText(const std::string& key, const std::string& text) {
    LongTextOutputs outputs;
    data_.WriteLongText(connectionString_, 2, 1, "", "t", "k", key, "v", text, outputs);
}

void DataAccessContract::Insert(const std::string& key, const std::string& textLiteral) {
    Execute("INSERT INTO t (k, v) VALUES (" + StandardSqlFormatter().FormatValue(key) + ", " + textLiteral +
            ")");
}

INSTANTIATE_TEST_SUITE_P(Engines, DataAccessContract, testing::ValuesIn(EveryEngine()), EngineName);

// Rows -------------------------------------------------------------------------------------------------

TEST_P(DataAccessContract, GivesRowsInSelectOrder) {
    Execute("INSERT INTO t (k, n, big, d, v) VALUES ('a', 1, 4294967296, 0.5, 'one')");
    Execute("INSERT INTO t (k, n, big, d, v) VALUES ('b', -2, 7, 30, '')");

    EXPECT_EQ(Query("SELECT v, k, n, big, d FROM t ORDER BY k"),
              Rows({{"one", "a", 1, std::int64_t{4294967296}, 0.5}, {"", "b", -2, 7, 30.0}}));
}

TEST_P(DataAccessContract, GivesNullCells) {
    Insert("a");

    EXPECT_EQ(Query("SELECT n, big, d, v FROM t"), Rows({{Null{}, Null{}, Null{}, Null{}}}));
}

TEST_P(DataAccessContract, CountsIn32Bits) {
    EXPECT_EQ(Query("SELECT COUNT(*) FROM t"), Rows({{0}}));
}

TEST_P(DataAccessContract, KeepsTheLimitsOfWholeNumbers) {
    Execute("INSERT INTO t (k, n, big) VALUES ('a', 2147483647, 9223372036854775807)");
    Execute("INSERT INTO t (k, n, big) VALUES ('b', -2147483648, -2147483649)");

    EXPECT_EQ(Query("SELECT n, big FROM t ORDER BY k"),
              Rows({{std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int64_t>::max()},
                    {std::numeric_limits<std::int32_t>::min(), std::int64_t{-2147483649}}}));
}

TEST_P(DataAccessContract, KeepsDoublesOfEverySize) {
    Execute("INSERT INTO t (k, d) VALUES ('a', 1e20)");
    Execute("INSERT INTO t (k, d) VALUES ('b', 0.1)");
    Execute("INSERT INTO t (k, d) VALUES ('c', -1.5e-7)");

    EXPECT_EQ(Query("SELECT d FROM t ORDER BY k"), Rows({{1e20}, {0.1}, {-1.5e-7}}));
}

TEST_P(DataAccessContract, KeepsEveryBitOfADouble) {
    if (!GetParam().whyDoublesLoseBits.empty()) GTEST_SKIP() << GetParam().whyDoublesLoseBits;
    Execute("INSERT INTO t (k, d) VALUES ('a', 0.30000000000000004)");
    Execute("INSERT INTO t (k, d) VALUES ('b', -12345.678901234567)");

    EXPECT_EQ(Query("SELECT d FROM t ORDER BY k"), Rows({{0.30000000000000004}, {-12345.678901234567}}));
}

TEST_P(DataAccessContract, GivesEmptyForNoRowWhereThatIsAllowed) {
    EXPECT_TRUE(Query("SELECT k FROM t", true).IsEmpty());
}

TEST_P(DataAccessContract, RaisesForNoRowWhereOneIsNeeded) {
    const AutomationError error = ErrorOf([&] { Query("SELECT k FROM t", false); });

    EXPECT_EQ(error.Number(), kNoRow);
    EXPECT_EQ(error.Source(), "kxJob.DataAccess");
    EXPECT_EQ(error.Description(), "[02000] The query found no row");
}

TEST_P(DataAccessContract, ChangesNothingWithoutAnError) {
    EXPECT_NO_THROW(Execute("UPDATE t SET n = 1 WHERE k = 'nobody'"));
    EXPECT_NO_THROW(Execute("DELETE FROM t WHERE k = 'nobody'"));
}

TEST_P(DataAccessContract, ComparesKeysExactly) {
    Insert("a");
    Insert("A");

    EXPECT_EQ(Query("SELECT k FROM t WHERE k = 'a'"), Rows({{"a"}}));
    EXPECT_TRUE(Query("SELECT k FROM t WHERE k = 'a  '", true).IsEmpty());
}

// Texts ------------------------------------------------------------------------------------------------

TEST_P(DataAccessContract, KeepsDelicateTextsGivenAsLiterals) {
    for (const std::string& text : kDelicateTexts) {
        Insert("a", StandardSqlFormatter().FormatValue(text));
        EXPECT_EQ(Query("SELECT v FROM t"), Rows({{text}}));
        Execute("DELETE FROM t");
    }
}

TEST_P(DataAccessContract, KeepsDelicateTextsWrittenAsLongTexts) {
    Insert("a", "'old'");
    for (const std::string& text : kDelicateTexts) {
        WriteLongText("a", text);
        EXPECT_EQ(Query("SELECT v FROM t"), Rows({{text}}));
    }
}

TEST_P(DataAccessContract, WritesALongTextIntoTheRowOfItsKeyOnly) {
    Insert("it's", "'old'");
    Insert("other", "'old'");
    std::string text;
    while (text.size() < (std::size_t{8} << 20U)) text += "';?\\ \r\n\U0001F600\u00E9 ";

    WriteLongText("it's", text);

    EXPECT_TRUE(Query("SELECT v FROM t WHERE k = 'it''s'") == Rows({{text}}));  // no output of 8 MB
    EXPECT_EQ(Query("SELECT v FROM t WHERE k = 'other'"), Rows({{"old"}}));
}

TEST_P(DataAccessContract, WritesALongTextForAnUnknownKeyWithoutAnError) {
    EXPECT_NO_THROW(WriteLongText("nobody", "text"));
}

TEST_P(DataAccessContract, RefusesTextsThatSomeStoreCannotKeep) {
    Insert("a", "'old'");
    for (const std::string& text :
         {std::string("a\0b", 3), std::string("\xED\xA0\x80"), std::string("\xC0\xAF"),
          std::string("\xF4\x90\x80\x80"), std::string("cut \xE2\x82")}) {
        EXPECT_EQ(ErrorOf([&] { WriteLongText("a", text); }).Number(), kUnstorableText);
    }
    EXPECT_EQ(Query("SELECT v FROM t"), Rows({{"old"}}));
}

// Errors -----------------------------------------------------------------------------------------------

TEST_P(DataAccessContract, RaisesForAMissingTable) {
    const AutomationError error = ErrorOf([&] { Query("SELECT k FROM nowhere"); });

    EXPECT_EQ(error.Number(), kStatementFailed);
    EXPECT_EQ(error.Source(), "kxJob.DataAccess");
    EXPECT_TRUE(IsMissingTable(error)) << error.Description();
}

TEST_P(DataAccessContract, DescribesAFaultyStatementWithItsState) {
    for (const char* sql : {"SELEKT 1", "UPDATE t SET nothing = 1", "INSERT INTO t (k) VALUES ('a', 'b')"}) {
        const AutomationError error = ErrorOf([&] { Execute(sql); });
        EXPECT_EQ(error.Number(), kStatementFailed) << sql;
        EXPECT_THAT(error.Description(), StartsWith("[42")) << sql;
        EXPECT_FALSE(IsMissingTable(error)) << sql;
    }
}

TEST_P(DataAccessContract, RaisesForADuplicateKey) {
    Insert("a");

    EXPECT_THAT(ErrorOf([&] { Insert("a"); }).Description(), StartsWith("[23"));
    EXPECT_EQ(Query("SELECT COUNT(*) FROM t"), Rows({{1}}));
}

TEST_P(DataAccessContract, GoesOnAfterAFaultyStatement) {
    ErrorOf([&] { Execute("SELEKT 1"); });

    Insert("a");
    EXPECT_EQ(Query("SELECT COUNT(*) FROM t"), Rows({{1}}));
}

TEST_P(DataAccessContract, CommitsEveryStatementByItself) {
    StoreDataAccess other(std::make_shared<SessionCache>());
    Insert("a");

    EXPECT_EQ(other.Query(connectionString_, 2, 1, "SELECT k FROM t", false), Rows({{"a"}}));
}

TEST_P(DataAccessContract, RefusesANulInAStatement) {
    Insert("a");

    EXPECT_EQ(ErrorOf([&] { Execute(std::string("DELETE FROM t\0 WHERE k = 'b'", 28)); }).Number(),
              kStatementFailed);
    EXPECT_EQ(Query("SELECT COUNT(*) FROM t"), Rows({{1}}));
}

// Batches ----------------------------------------------------------------------------------------------

TEST_P(DataAccessContract, RunsEveryStatementOfABatchOnceAndInOrder) {
    batch_.Open(connectionString_, 2, 100);
    batch_.Add("INSERT INTO t (k, n) VALUES ('last', 0)");
    for (int i = 1; i < 250; ++i) {
        batch_.Add("INSERT INTO t (k, n) VALUES ('" + std::to_string(i) + "', " + std::to_string(i) + ")");
        batch_.Add("UPDATE t SET n = " + std::to_string(i) +
                   " WHERE k = 'last' AND n = " + std::to_string(i - 1));
    }
    batch_.Flush();

    EXPECT_EQ(Query("SELECT COUNT(*) FROM t"), Rows({{250}}));
    EXPECT_EQ(Query("SELECT n FROM t WHERE k = 'last'"), Rows({{249}}));
}

TEST_P(DataAccessContract, KeepsDelicateTextsInABatch) {
    batch_.Open(connectionString_, 2, 100);
    for (std::size_t i = 0; i < kDelicateTexts.size(); ++i) {
        batch_.Add("INSERT INTO t (k, n, v) VALUES ('" + std::to_string(i) + "', " + std::to_string(i) +
                   ", " + StandardSqlFormatter().FormatValue(kDelicateTexts[i]) + ")");
    }
    batch_.Flush();

    std::vector<std::vector<Value>> expected;
    for (const std::string& text : kDelicateTexts) expected.push_back({text});
    EXPECT_EQ(Query("SELECT v FROM t ORDER BY n"), Rows(expected));
}

TEST_P(DataAccessContract, KeepsTheGroupsBeforeAFailingOneAndNothingOfIt) {
    batch_.Open(connectionString_, 2, 10);
    for (int i = 1; i <= 26; ++i) batch_.Add("INSERT INTO t (k) VALUES ('" + std::to_string(i) + "')");
    batch_.Add("INSERT INTO t (k) VALUES ('25')");

    const AutomationError error = ErrorOf([&] { batch_.Flush(); });

    EXPECT_EQ(error.Number(), kStatementFailed);
    EXPECT_THAT(error.Description(), StartsWith("[23"));
    EXPECT_THAT(error.Description(), HasSubstr("] group 21 to 27: statement 7 of 7: "));
    EXPECT_EQ(Query("SELECT COUNT(*) FROM t"), Rows({{20}}));
}

TEST_P(DataAccessContract, NamesThePlaceOfAFailingStatementWithoutAnyTakingEffect) {
    Execute("INSERT INTO t (k, n) VALUES ('a', 0)");
    batch_.Open(connectionString_, 2, 10);
    batch_.Add("UPDATE t SET n = n + 1");
    batch_.Add("INSERT INTO t (k, n) VALUES ('b', 0)");
    batch_.Add("UPDATE t SET missing = 1");
    batch_.Add("DELETE FROM t");

    const AutomationError error = ErrorOf([&] { batch_.Flush(); });

    EXPECT_THAT(error.Description(), StartsWith("[42S22] group 1 to 4: statement 3 of 4: "));
    EXPECT_EQ(Query("SELECT k, n FROM t"), Rows({{"a", 0}}));
}

TEST_P(DataAccessContract, GoesOnInAutocommitAfterAFailedBatch) {
    StoreDataAccess other(std::make_shared<SessionCache>());
    batch_.Open(connectionString_, 2, 10);
    batch_.Add("SELEKT 1");
    ErrorOf([&] { batch_.Flush(); });

    Insert("a");
    batch_.Add("INSERT INTO t (k) VALUES ('b')");
    batch_.Flush();

    EXPECT_EQ(other.Query(connectionString_, 2, 1, "SELECT k FROM t ORDER BY k", false),
              Rows({{"a"}, {"b"}}));
}

}  // namespace kxjob::testing_support
