#include "defaults/store/script_statements.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kxjob {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ScriptStatements, EndAtASemicolonBeforeALineBreak) {
    EXPECT_THAT(ScriptStatements("CREATE TABLE a (b);\nCREATE TABLE c (d);\n"),
                ElementsAre("CREATE TABLE a (b)", "CREATE TABLE c (d)"));
}

TEST(ScriptStatements, MayBeSeparatedByCarriageReturnAndLineFeed) {
    EXPECT_THAT(ScriptStatements("SELECT 1;\r\nSELECT 2;\r\n"), ElementsAre("SELECT 1", "SELECT 2"));
}

TEST(ScriptStatements, KeepLineBreaksAndSemicolonsOfTheirOwn) {
    EXPECT_THAT(ScriptStatements("INSERT INTO a VALUES ('x;y',\n 1);\nBEGIN; COMMIT;\n"),
                ElementsAre("INSERT INTO a VALUES ('x;y',\n 1)", "BEGIN; COMMIT"));
}

TEST(ScriptStatements, NeedNoLineBreakAtTheEndOfTheScript) {
    EXPECT_THAT(ScriptStatements("SELECT 1;\nSELECT 2;"), ElementsAre("SELECT 1", "SELECT 2"));
    EXPECT_THAT(ScriptStatements("SELECT 1;\nSELECT 2"), ElementsAre("SELECT 1", "SELECT 2"));
}

TEST(ScriptStatements, AreNotBlank) {
    EXPECT_THAT(ScriptStatements(""), IsEmpty());
    EXPECT_THAT(ScriptStatements("\n;\n \r\n;\n"), IsEmpty());
    EXPECT_THAT(ScriptStatements("\n\nSELECT 1;\n\n;\n"), ElementsAre("SELECT 1"));
}

}  // namespace
}  // namespace kxjob
