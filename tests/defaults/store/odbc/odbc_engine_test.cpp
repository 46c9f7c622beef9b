#include "defaults/store/odbc/odbc_engine.h"

#include <gtest/gtest.h>

#include <ostream>

namespace kxjob {
namespace {

TEST(OdbcEngine, IsFoundByTheNameThatDriversGive) {
    for (const char* name : {"PostgreSQL", "MariaDB", "MySQL", "Microsoft SQL Server", "SQLite"}) {
        EXPECT_EQ(OdbcEngineNamed(name).dbmsName, name);
        EXPECT_FALSE(OdbcEngineNamed(name).setUp.empty()) << name;
    }
}

TEST(OdbcEngine, HasNoPeculiaritiesWhenItIsNotKnown) {
    const OdbcEngine& other = OdbcEngineNamed("Some Database");

    EXPECT_TRUE(other.setUp.empty());
    EXPECT_TRUE(other.errors.empty());
    EXPECT_TRUE(other.batch.transaction);
    EXPECT_FALSE(other.batch.joined);
}

TEST(OdbcEngine, MakesEveryBatchATransactionInOneWay) {
    for (const char* name : {"PostgreSQL", "MariaDB", "MySQL", "Microsoft SQL Server", "SQLite", "Other"}) {
        const BatchForm& batch = OdbcEngineNamed(name).batch;
        EXPECT_TRUE(batch.transaction || batch.joined) << name;
    }
    // Here the exchange is the transaction: PostgreSQL's by itself, MariaDB's by its block.
    EXPECT_FALSE(OdbcEngineNamed("PostgreSQL").batch.transaction);
    EXPECT_FALSE(OdbcEngineNamed("MariaDB").batch.transaction);
    EXPECT_EQ(OdbcEngineNamed("MariaDB").batch.before,
              "BEGIN NOT ATOMIC\n"
              "DECLARE EXIT HANDLER FOR SQLEXCEPTION BEGIN ROLLBACK; RESIGNAL; END;\n"
              "START TRANSACTION;\n");
    EXPECT_EQ(OdbcEngineNamed("MariaDB").batch.after, ";\nCOMMIT;\nEND");
}

/// What a driver says, and what that means.
struct Said {
    const char* engine;
    Diagnostic error;
    const char* state;
    bool lost;
};

void PrintTo(const Said& said, std::ostream* out) {
    *out << said.engine << ' ' << said.error.state << '/' << said.error.native;
}

class ErrorMeaningTest : public testing::TestWithParam<Said> {};

TEST_P(ErrorMeaningTest, IsThatOfTheEngine) {
    const Said& said = GetParam();

    const ErrorMeaning meaning = MeaningOf(said.error, OdbcEngineNamed(said.engine));

    EXPECT_EQ(meaning.state, said.state);
    EXPECT_EQ(meaning.lost, said.lost);
}

INSTANTIATE_TEST_SUITE_P(
    OfEachEngine, ErrorMeaningTest,
    testing::Values(Said{"Other", {"42000", 1205, "no such table"}, "42000", false},
                    Said{"Other", {"08003", 0, "not connected"}, "08003", true},
                    Said{"PostgreSQL", {"42P01", 1, "relation"}, "42S02", false},
                    Said{"PostgreSQL", {"42703", 1, "column"}, "42S22", false},
                    Said{"PostgreSQL", {"23505", 1, "duplicate"}, "23505", false},
                    Said{"PostgreSQL", {"55P03", 1, "lock"}, "HYT00", false},
                    Said{"PostgreSQL", {"57P01", 1, "terminating"}, "57P01", true},
                    Said{"PostgreSQL", {"08S01", 1, "closed"}, "08S01", true},
                    Said{"PostgreSQL", {"25006", 1, "read-only"}, "25006", true},
                    Said{"PostgreSQL", {"HY000", 1, "The connection has been lost;"}, "08S01", true},
                    Said{"PostgreSQL", {"HY000", 1, "something else"}, "HY000", false},
                    Said{"MariaDB", {"HY000", 2013, "Lost connection"}, "08S01", true},
                    Said{"MariaDB", {"08S01", 2006, "gone away"}, "08S01", true},
                    Said{"MariaDB", {"HY000", 32, "Write error: Broken pipe (32)"}, "08S01", true},
                    Said{"MariaDB", {"HY000", 104, "Read error: Connection reset (104)"}, "08S01", true},
                    Said{"MariaDB", {"08S01", 1047, "not yet prepared"}, "08S01", true},
                    Said{"MariaDB",
                         {"HY000", 0, "The number differs from number of columns in resultset"},
                         "0A000",
                         false},
                    Said{"MariaDB", {"HY000", 1205, "Lock wait"}, "HYT00", false},
                    Said{"MariaDB", {"40001", 1213, "Deadlock"}, "40001", false},
                    Said{"MariaDB", {"21S01", 1136, "Column count"}, "42000", false},
                    Said{"MySQL", {"HY000", 2006, "gone away"}, "08S01", true},
                    Said{"Microsoft SQL Server", {"01000", 20017, "Unexpected EOF"}, "08S01", true},
                    Said{"Microsoft SQL Server", {"42000", 1222, "Lock request"}, "HYT00", false},
                    Said{"Microsoft SQL Server", {"42000", 1205, "deadlock"}, "40001", false},
                    Said{"Microsoft SQL Server", {"23000", 2627, "duplicate"}, "23000", false},
                    Said{"SQLite", {"HY000", 1, "[SQLite]no such table: a (1)"}, "42S02", false},
                    Said{"SQLite", {"HY000", 1, "[SQLite]no such column: a (1)"}, "42S22", false},
                    Said{"SQLite", {"HY000", 1, "table t has no column named a"}, "42S22", false},
                    Said{"SQLite", {"HY000", 1, "near \"SELEKT\": syntax error"}, "42000", false},
                    Said{"SQLite", {"HY000", 19, "UNIQUE constraint failed"}, "23000", false},
                    Said{"SQLite", {"HY000", 5, "database is locked"}, "HYT00", false},
                    Said{"SQLite", {"HY000", 26, "file is not a database"}, "XX001", true}));

}  // namespace
}  // namespace kxjob
