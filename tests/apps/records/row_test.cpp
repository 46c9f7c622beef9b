#include "records/row.h"

#include <gtest/gtest.h>

namespace kxjob::command {
namespace {

constexpr std::int64_t kBeyond32Bits = 3'000'000'000;

class RowTest : public ::testing::Test {
protected:
    RowTest() { rows_.AddRow({Null(), "", "text", 7, kBeyond32Bits, 2.5}); }

    RowArray rows_{6};
    Row row_{rows_, 0};
};

TEST_F(RowTest, TakesNullForTheEmptyText) {
    EXPECT_EQ(row_.Text(0), "");
    EXPECT_EQ(row_.Text(2), "text");
    EXPECT_EQ(row_.Text(3), "7");
}

TEST_F(RowTest, TakesNullAndTheEmptyTextForNoText) {
    EXPECT_EQ(row_.OptionalText(0), std::nullopt);
    EXPECT_EQ(row_.OptionalText(1), std::nullopt);
    EXPECT_EQ(row_.OptionalText(2), "text");
}

TEST_F(RowTest, TakesNumbersOf64Bits) {
    EXPECT_EQ(row_.Whole(0), 0);
    EXPECT_EQ(row_.Whole(3), 7);
    EXPECT_EQ(row_.Whole(4), kBeyond32Bits);
}

TEST_F(RowTest, TakesNumbersWithAFraction) {
    EXPECT_EQ(row_.Real(0), 0);
    EXPECT_EQ(row_.Real(3), 7);
    EXPECT_EQ(row_.Real(5), 2.5);
}

TEST_F(RowTest, ReadsEveryRowInItsOrder) {
    RowArray rows(1);
    rows.AddRow({"b"});
    rows.AddRow({"a"});

    EXPECT_EQ(ReadRows(Value(rows), [](const Row& row) { return row.Text(0); }),
              (std::vector<std::string>{"b", "a"}));
    EXPECT_TRUE(ReadRows(Value(), [](const Row& row) { return row.Text(0); }).empty());
}

}  // namespace
}  // namespace kxjob::command
