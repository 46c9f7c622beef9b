#include "store/sql_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace kxjob {
namespace {

/// What one number becomes within a statement.
template <typename Number>
std::string Written(Number number) {
    SqlText sql;
    sql << number;
    return sql.Text();
}

TEST(SqlText, IsEmptyToBeginWith) {
    const SqlText sql;

    EXPECT_TRUE(sql.Empty());
    EXPECT_EQ(sql.Text(), "");
}

TEST(SqlText, JoinsPiecesFromTheLeftWithAllTheirBlanks) {
    SqlText sql;
    sql << "SELECT a "
        << " FROM " << std::string("kx_job");
    sql << " ( x"
        << ""
        << ")";

    EXPECT_FALSE(sql.Empty());
    EXPECT_EQ(sql.Text(), "SELECT a  FROM kx_job ( x)");
}

TEST(SqlText, EvaluatesItsPiecesFromTheLeft) {
    std::string order;
    const auto piece = [&](const char* text) {
        order += text;
        return std::string(text);
    };
    SqlText sql;
    sql << piece("1") << piece("2") << piece("3") << piece("4");

    EXPECT_EQ(order, "1234");
    EXPECT_EQ(sql.Text(), "1234");
}

TEST(SqlText, WritesWholeNumbersAsDigits) {
    EXPECT_EQ(Written(0), "0");
    EXPECT_EQ(Written(250), "250");
    EXPECT_EQ(Written(-3), "-3");
    EXPECT_EQ(Written(1234567), "1234567");
    EXPECT_EQ(Written(std::numeric_limits<std::int32_t>::max()), "2147483647");
    EXPECT_EQ(Written(std::numeric_limits<std::int32_t>::min()), "-2147483648");
}

TEST(SqlText, WritesDoublesPlainlyWithAPoint) {
    EXPECT_EQ(Written(0.0), "0");
    EXPECT_EQ(Written(1.0), "1");
    EXPECT_EQ(Written(0.5), "0.5");
    EXPECT_EQ(Written(-90.25), "-90.25");
    EXPECT_EQ(Written(1.0 / 3), "0.333333333333333");
    EXPECT_EQ(Written(3600.0), "3600");
    EXPECT_EQ(Written(1e20), "1E+20");
}

TEST(SqlText, IsATextWhereOneIsWanted) {
    SqlText sql;
    sql << "x = " << 7;
    const std::string& text = sql;

    EXPECT_EQ(text, "x = 7");
}

}  // namespace
}  // namespace kxjob
