#include "defaults/store/sqlite/sqlite_error.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace kxjob {
namespace {

TEST(SqliteState, TellsFaultyStatementsApartByTheMessage) {
    EXPECT_EQ(SqliteState(SQLITE_ERROR, "no such table: main.job", SqliteStage::Preparing), "42S02");
    EXPECT_EQ(SqliteState(SQLITE_ERROR, "no such column: x", SqliteStage::Preparing), "42S22");
    EXPECT_EQ(SqliteState(SQLITE_ERROR, "table job has no column named x", SqliteStage::Preparing), "42S22");
    EXPECT_EQ(SqliteState(SQLITE_ERROR, "near \"x\": syntax error", SqliteStage::Preparing), "42000");
}

TEST(SqliteState, OfAFaultMetWhileRunningIsTheGeneralOne) {
    EXPECT_EQ(SqliteState(SQLITE_ERROR, "integer overflow", SqliteStage::Running), "HY000");
    EXPECT_EQ(SqliteState(SQLITE_ERROR, "no such table: job", SqliteStage::Running), "42S02");
}

TEST(SqliteState, IgnoresTheExtensionOfAResultCode) {
    EXPECT_EQ(SqliteState(SQLITE_CONSTRAINT_PRIMARYKEY, "", SqliteStage::Running), "23000");
    EXPECT_EQ(SqliteState(SQLITE_BUSY_SNAPSHOT, "", SqliteStage::Running), "HYT00");
    EXPECT_EQ(SqliteState(SQLITE_LOCKED_SHAREDCACHE, "", SqliteStage::Running), "HYT00");
    EXPECT_EQ(SqliteState(SQLITE_READONLY_DBMOVED, "", SqliteStage::Running), "25006");
    EXPECT_EQ(SqliteState(SQLITE_FULL, "", SqliteStage::Running), "53100");
    EXPECT_EQ(SqliteState(SQLITE_CORRUPT_INDEX, "", SqliteStage::Running), "XX001");
    EXPECT_EQ(SqliteState(SQLITE_NOTADB, "", SqliteStage::Running), "XX001");
    EXPECT_EQ(SqliteState(SQLITE_IOERR_WRITE, "", SqliteStage::Running), "HY000");
}

TEST(IsSqliteFileLost, IsTrueForAFileThatCannotBeWorkedWith) {
    EXPECT_TRUE(IsSqliteFileLost(SQLITE_NOTADB));
    EXPECT_TRUE(IsSqliteFileLost(SQLITE_CORRUPT));
    EXPECT_TRUE(IsSqliteFileLost(SQLITE_CORRUPT_INDEX));
    EXPECT_TRUE(IsSqliteFileLost(SQLITE_IOERR_READ));
    EXPECT_TRUE(IsSqliteFileLost(SQLITE_READONLY_DBMOVED));
}

TEST(IsSqliteFileLost, IsFalseForAnErrorOfTheStatement) {
    for (const int code : {SQLITE_ERROR, SQLITE_CONSTRAINT_UNIQUE, SQLITE_BUSY, SQLITE_READONLY, SQLITE_FULL,
                           SQLITE_TOOBIG, SQLITE_READONLY_DIRECTORY}) {
        EXPECT_FALSE(IsSqliteFileLost(code)) << code;
    }
}

}  // namespace
}  // namespace kxjob
