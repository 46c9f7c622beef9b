#include "defaults/store/odbc/odbc_cell.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace kxjob {
namespace {

CellKind KindOf(int type) {
    return CellKindOf(static_cast<SQLSMALLINT>(type), 0);
}

TEST(OdbcCell, IsFetchedByTheTypeOfItsColumn) {
    for (const int type : {SQL_BIT, SQL_TINYINT, SQL_SMALLINT, SQL_INTEGER, SQL_BIGINT}) {
        EXPECT_EQ(KindOf(type), CellKind::kWholeNumber) << type;
    }
    for (const int type : {SQL_FLOAT, SQL_REAL, SQL_DOUBLE}) {
        EXPECT_EQ(KindOf(type), CellKind::kDouble) << type;
    }
    for (const int type : {SQL_CHAR, SQL_VARCHAR, SQL_LONGVARCHAR, SQL_WCHAR, SQL_WVARCHAR, SQL_WLONGVARCHAR,
                           SQL_GUID, SQL_TYPE_TIMESTAMP, SQL_BINARY}) {
        EXPECT_EQ(KindOf(type), CellKind::kText) << type;
    }
    EXPECT_EQ(CellKindOf(SQL_DECIMAL, 0), CellKind::kDigits);
    EXPECT_EQ(CellKindOf(SQL_NUMERIC, 2), CellKind::kDouble);
}

TEST(OdbcCell, HasTheSmallestWholeNumberThatFits) {
    EXPECT_EQ(WholeNumberCell(2147483647), Value(2147483647));
    EXPECT_EQ(WholeNumberCell(2147483648), Value(std::int64_t{2147483648}));
    EXPECT_EQ(WholeNumberCell(-2147483648), Value(std::int32_t{-2147483648}));
}

TEST(OdbcCell, IsWholeWhenItsDigitsAre) {
    EXPECT_EQ(DigitsCell("42"), Value(42));
    EXPECT_EQ(DigitsCell("-9223372036854775808"), Value(std::numeric_limits<std::int64_t>::min()));
    EXPECT_EQ(DigitsCell("9223372036854775808"), Value(9223372036854775808.0));
    EXPECT_EQ(DigitsCell("1.5"), Value(1.5));
    EXPECT_EQ(DigitsCell("nothing"), Value("nothing"));
}

}  // namespace
}  // namespace kxjob
