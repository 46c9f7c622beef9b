#include "defaults/collections/range_array_inspector.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "kxjob/array.h"
#include "kxjob/automation_error.h"
#include "support/raised_error.h"

namespace kxjob {
namespace {

using testing_support::NumberOf;

TEST(RangeArrayInspector, SeesARowArrayAsColumnsByRows) {
    RangeArrayInspector inspector;
    RowArray rows(3);
    rows.AddRow({1, 2, 3});
    rows.AddRow({4, 5, 6});
    const Value array(std::move(rows));
    EXPECT_EQ(inspector.LowerBound(array), 0);
    EXPECT_EQ(inspector.UpperBound(array), 1);
    EXPECT_EQ(inspector.ElementCount(array), 6);
    EXPECT_EQ(inspector.DimensionCount(array), 2);
}

TEST(RangeArrayInspector, SeesEmptyAsNoRows) {
    RangeArrayInspector inspector;
    EXPECT_EQ(inspector.LowerBound({}), 0);
    EXPECT_EQ(inspector.UpperBound({}), -1);
    EXPECT_EQ(inspector.ElementCount({}), 0);
    EXPECT_EQ(inspector.DimensionCount({}), 0);
}

TEST(RangeArrayInspector, TakesTheBoundsOfTheLastDimension) {
    RangeArrayInspector inspector;
    const Value array(Array({{1, 2}, {-3, 4}}));
    EXPECT_EQ(inspector.LowerBound(array), -3);
    EXPECT_EQ(inspector.UpperBound(array), 0);
    EXPECT_EQ(inspector.ElementCount(array), 8);
    EXPECT_EQ(inspector.DimensionCount(array), 2);
}

TEST(RangeArrayInspector, GivesAnEmptyListAnUpperBoundBelowItsLowerOne) {
    RangeArrayInspector inspector;
    const Value list(Array::List({}, 5));
    EXPECT_EQ(inspector.LowerBound(list), 5);
    EXPECT_EQ(inspector.UpperBound(list), 4);
    EXPECT_EQ(inspector.ElementCount(list), 0);
    EXPECT_EQ(inspector.DimensionCount(list), 1);
}

TEST(RangeArrayInspector, RaisesOverflowForABoundBelow32Bits) {
    RangeArrayInspector inspector;
    const Value below(Array::List({}, std::numeric_limits<std::int32_t>::min()));
    EXPECT_EQ(NumberOf([&] { inspector.UpperBound(below); }), error_number::kOverflow);
    const Value highest(Array::List({1}, std::numeric_limits<std::int32_t>::max()));
    EXPECT_EQ(inspector.UpperBound(highest), 2147483647);
}

TEST(RangeArrayInspector, RaisesTypeMismatchForWhatIsNoArray) {
    RangeArrayInspector inspector;
    for (const Value& value : {Value(Null()), Value("text"), Value(1), Value(ComponentRef())}) {
        EXPECT_EQ(NumberOf([&] { inspector.LowerBound(value); }), error_number::kTypeMismatch);
        EXPECT_EQ(NumberOf([&] { inspector.UpperBound(value); }), error_number::kTypeMismatch);
        EXPECT_EQ(NumberOf([&] { inspector.ElementCount(value); }), error_number::kTypeMismatch);
        EXPECT_EQ(NumberOf([&] { inspector.DimensionCount(value); }), error_number::kTypeMismatch);
    }
}

}  // namespace
}  // namespace kxjob
