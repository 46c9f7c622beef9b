#include <gtest/gtest.h>

#include <cstdint>

#include "kxjob/array.h"
#include "kxjob/automation_error.h"
#include "support/raised_error.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using testing_support::kSubscriptOutOfRange;
using testing_support::NumberOf;

RowArray TwoRowsOfThree() {
    RowArray rows(3);
    rows.AddRow({"a", 1, Null()});
    rows.AddRow({"b", 2, 0.5});
    return rows;
}

TEST(RowArray, IsIndexedByColumnThenRow) {
    const RowArray rows = TwoRowsOfThree();
    EXPECT_EQ(rows.Columns(), 3);
    EXPECT_EQ(rows.Rows(), 2);
    EXPECT_EQ(rows.Cell(0, 0), Value("a"));
    EXPECT_EQ(rows.Cell(2, 0), Value(Null()));
    EXPECT_EQ(rows.Cell(0, 1), Value("b"));
    EXPECT_EQ(rows.Cell(1, 1), Value(2));
    EXPECT_EQ(rows.Cell(2, 1), Value(0.5));
}

TEST(RowArray, RefusesACellThatItDoesNotHave) {
    const RowArray rows = TwoRowsOfThree();
    EXPECT_EQ(NumberOf([&] { static_cast<void>(rows.Cell(-1, 0)); }), kSubscriptOutOfRange);
    EXPECT_EQ(NumberOf([&] { static_cast<void>(rows.Cell(3, 0)); }), kSubscriptOutOfRange);
    EXPECT_EQ(NumberOf([&] { static_cast<void>(rows.Cell(0, -1)); }), kSubscriptOutOfRange);
    EXPECT_EQ(NumberOf([&] { static_cast<void>(rows.Cell(0, 2)); }), kSubscriptOutOfRange);
}

TEST(RowArray, HoldsNoRowAtFirst) {
    const RowArray rows(2);
    EXPECT_EQ(rows.Rows(), 0);
    EXPECT_EQ(rows.Columns(), 2);
    EXPECT_EQ(NumberOf([&] { static_cast<void>(rows.Cell(0, 0)); }), kSubscriptOutOfRange);
    EXPECT_EQ(RowArray(0).Rows(), 0);
}

TEST(RowArray, RefusesARowOfAnotherLengthAndStaysAsItWas) {
    RowArray rows = TwoRowsOfThree();
    EXPECT_EQ(NumberOf([&] { rows.AddRow({"c", 3}); }), kSubscriptOutOfRange);
    EXPECT_EQ(NumberOf([&] { rows.AddRow({"c", 3, 1, 2}); }), kSubscriptOutOfRange);
    EXPECT_EQ(NumberOf([&] { rows.AddRow({}); }), kSubscriptOutOfRange);
    EXPECT_EQ(rows, TwoRowsOfThree());
}

TEST(RowArray, FindsEveryCellOfManyRows) {
    constexpr std::int32_t kRows = 5000;
    RowArray rows(3);
    for (std::int32_t row = 0; row < kRows; ++row) rows.AddRow({row, "text", -row});

    ASSERT_EQ(rows.Rows(), kRows);
    for (std::int32_t row = 0; row < kRows; ++row) {
        ASSERT_EQ(rows.Cell(0, row), Value(row));
        ASSERT_EQ(rows.Cell(2, row), Value(-row));
    }
    EXPECT_EQ(NumberOf([&] { static_cast<void>(rows.Cell(0, kRows)); }), kSubscriptOutOfRange);
}

TEST(RowArray, CompletesARowWithItsLastCell) {
    RowArray rows(2);
    rows.AddCell("a");
    EXPECT_EQ(rows.Rows(), 0);
    rows.AddCell(1);
    EXPECT_EQ(rows.Rows(), 1);
    EXPECT_EQ(rows.Cell(1, 0), Value(1));
    rows.AddCell("b");
    EXPECT_EQ(rows.Rows(), 1);
    EXPECT_EQ(NumberOf([&] { static_cast<void>(rows.Cell(0, 1)); }), kSubscriptOutOfRange);
}

TEST(RowArray, IsTheSameFilledByCellOrByRow) {
    RowArray byCell(3);
    for (const Value& cell : {Value("a"), Value(1), Value(Null()), Value("b"), Value(2), Value(0.5)}) {
        byCell.AddCell(cell);
    }
    EXPECT_EQ(byCell, TwoRowsOfThree());
}

}  // namespace
}  // namespace kxjob
