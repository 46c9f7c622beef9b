#include "defaults/store/statement_shape.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kxjob {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The literals as they were written, but for the quotes.
std::vector<std::string> LiteralsOf(const StatementShape& shape) {
    std::vector<std::string> texts;
    for (const SqlLiteral& literal : shape.Literals()) {
        texts.push_back(literal.isText ? std::string(literal.text) : std::to_string(literal.number));
    }
    return texts;
}

TEST(StatementShape, TakesTextsAndWholeNumbersOutOfAnInsert) {
    const std::string sql =
        "INSERT INTO kx_JobItem (jobguid, identifier, sequence) VALUES ('{A-1}', '', -17)";
    StatementShape shape;

    ASSERT_TRUE(shape.Read(sql));

    EXPECT_EQ(shape.Text(), "INSERT INTO kx_JobItem (jobguid, identifier, sequence) VALUES (?, ?, -?)");
    EXPECT_THAT(LiteralsOf(shape), ElementsAre("{A-1}", "", "17"));
}

TEST(StatementShape, LeavesNumbersThatCouldCountColumns) {
    const std::string select = "SELECT a, 1 FROM t2 WHERE b = 'x' ORDER BY 2";
    const std::string update = "UPDATE t SET n = 5 WHERE k = 'x' ORDER BY 1 LIMIT 1";
    const std::string copy = "INSERT INTO t SELECT 7, 'x' FROM t";
    StatementShape shape;

    ASSERT_TRUE(shape.Read(select));
    EXPECT_EQ(shape.Text(), "SELECT a, 1 FROM t2 WHERE b = ? ORDER BY 2");
    ASSERT_TRUE(shape.Read(update));
    EXPECT_EQ(shape.Text(), "UPDATE t SET n = ? WHERE k = ? ORDER BY 1 LIMIT 1");
    ASSERT_TRUE(shape.Read(copy));
    EXPECT_EQ(shape.Text(), "INSERT INTO t SELECT 7, ? FROM t");
}

TEST(StatementShape, LeavesWhatIsMoreThanDigitsOrADoubledQuote) {
    const std::string sql =
        "INSERT INTO t VALUES (1.5, .5, 1e+5, 0x1F, 1234567890123456789, NULL, 'it''s', '''', \"a'b\", "
        "`c'd`)";
    StatementShape shape;

    ASSERT_TRUE(shape.Read(sql));

    EXPECT_EQ(shape.Text(), sql);
    EXPECT_THAT(shape.Literals(), IsEmpty());
}

TEST(StatementShape, RefusesWhatItDoesNotUnderstandForCertain) {
    StatementShape shape;
    for (const char* sql :
         {"INSERT INTO t VALUES (x'00')", "INSERT INTO t VALUES ('a') -- b", "SELECT /* b */ 'a'", "SELECT ?",
          "SELECT :a", "SELECT @a", "SELECT $a", "SELECT 'a", "SELECT \"a", "CREATE TABLE t AS SELECT 'a'",
          "PRAGMA table_info('t')", "WITH a AS (SELECT 'a') SELECT * FROM a", "REPLACE INTO t VALUES ('a')",
          "SELECT E'\\'', 'a'", "SELECT U&'a'", "SELECT _utf8'a'", "SELECT [a'b], 'c'",
          "UPDATE t SET a = 'b'; DELETE FROM t"}) {
        EXPECT_FALSE(shape.Read(sql)) << sql;
    }
    EXPECT_FALSE(shape.Read("SELECT 'a' WHERE b = '" + std::string(40'000, 'b') + "'"));
    EXPECT_FALSE(shape.Read(std::string_view("SELECT 'a'\0", 11)));
    EXPECT_FALSE(shape.Read(std::string_view("SELECT 'a\0b'", 12)));
}

TEST(StatementShape, ForgetsTheStatementBefore) {
    StatementShape shape;
    ASSERT_TRUE(shape.Read("SELECT 'a'"));

    ASSERT_TRUE(shape.Read("DELETE FROM t"));

    EXPECT_EQ(shape.Text(), "DELETE FROM t");
    EXPECT_THAT(shape.Literals(), IsEmpty());
}

}  // namespace
}  // namespace kxjob
