#include "defaults/store/insert_rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kxjob {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

TEST(InsertRows, JoinsThoseThatFollowEachOther) {
    const std::vector<std::string> statements = {
        "INSERT INTO kx_JobItem (jobguid, sequence) VALUES ('a', 1)",
        "INSERT INTO kx_JobItem (jobguid, sequence) VALUES ('it''s, (b)', -2.5e3)",
        "UPDATE kx_job SET totalitemcount = 2",
        "INSERT INTO kx_JobItem (jobguid, sequence) VALUES ('c', 3)",
    };

    EXPECT_THAT(WithRowsJoined(statements),
                ElementsAre("INSERT INTO kx_JobItem (jobguid, sequence) VALUES ('a', 1),\n"
                            "('it''s, (b)', -2.5e3)",
                            "UPDATE kx_job SET totalitemcount = 2",
                            "INSERT INTO kx_JobItem (jobguid, sequence) VALUES ('c', 3)"));
}

TEST(InsertRows, KeepsOtherTablesAndColumnsApart) {
    const std::vector<std::string> statements = {
        "INSERT INTO t (a) VALUES ('1')", "INSERT INTO u (a) VALUES ('1')",
        "INSERT INTO u (b) VALUES ('1')", "INSERT INTO \"my u\".`t` (b) VALUES ('1')",
        "insert into t (a) VALUES ('1')",
    };

    EXPECT_THAT(WithRowsJoined(statements), ElementsAreArray(statements));
}

TEST(InsertRows, KeepsRowsApartWhoseValuesTheServerMayMake) {
    const std::vector<std::string> statements = {
        "INSERT INTO t (a) VALUES (0)",     "INSERT INTO t (a) VALUES (1)",
        "INSERT INTO t (a) VALUES (NULL)",  "INSERT INTO t (a) VALUES ('5')",
        "INSERT INTO t (a) VALUES (' +0')", "INSERT INTO t (a) VALUES (2)",
    };

    EXPECT_THAT(WithRowsJoined(statements), ElementsAreArray(statements));
}

TEST(InsertRows, LeavesAloneWhatIsNotARowOfLiterals) {
    const char* const plain = "INSERT INTO t (a, b) VALUES ('1', 1)";
    for (const char* other :
         {"INSERT INTO t (a, b) VALUES ('1', 1), ('2', 2)",
          "INSERT INTO t (a, b) VALUES ('1', 1) RETURNING a", "INSERT INTO t (a, b) VALUES ('1', 1 + 1)",
          "INSERT INTO t (a, b) VALUES ('1', DEFAULT)", "INSERT INTO t (a, b) VALUES (E'1', 1)",
          "INSERT INTO t (a, b) VALUES ('1', 1) -- b", "INSERT INTO t (a, b) VALUES ('1', 1.)",
          "INSERT INTO t (a, b) VALUES ('1' '2', 1)", "INSERT INTO t (a, b) VALUES ('1', TRUE)",
          "INSERT INTO t VALUES ('1', 1)", "INSERT INTO t (a, b) VALUES ('1",
          "INSERT INTO t (a, b) VALUES ()", "INSERT INTO t (a, b) SELECT 1, 2",
          "INSERT INTO t (a, b) VALUES ('1', 1);", "REPLACE INTO t (a, b) VALUES ('1', 1)", "", "'"}) {
        const std::vector<std::string> statements = {plain, other, other, plain};
        EXPECT_THAT(WithRowsJoined(statements), ElementsAreArray(statements));
    }
}

}  // namespace
}  // namespace kxjob
