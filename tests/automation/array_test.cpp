#include "kxjob/array.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

#include "kxjob/automation_error.h"
#include "support/raised_error.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using testing_support::kSubscriptOutOfRange;
using testing_support::NumberOf;

template <std::size_t Count>
Value ElementAt(const Array& array, const std::array<std::int32_t, Count>& index) {
    return array.At(std::span<const std::int32_t>(index));
}

TEST(Array, BeginsWithEveryElementEmpty) {
    const Array array({{-1, 2}, {5, 3}});
    EXPECT_EQ(array.ElementCount(), 6U);
    EXPECT_EQ(ElementAt(array, std::array{-1, 5}), Value());
    EXPECT_EQ(ElementAt(array, std::array{0, 7}), Value());
}

TEST(Array, KnowsItsDimensions) {
    const Array array({{-1, 2}, {5, 3}, {0, 4}});
    ASSERT_EQ(array.Dimensions().size(), 3U);
    EXPECT_EQ(array.Dimensions()[0], (Array::Dimension{-1, 2}));
    EXPECT_EQ(array.Dimensions()[1], (Array::Dimension{5, 3}));
    EXPECT_EQ(array.Dimensions()[2], (Array::Dimension{0, 4}));
    EXPECT_EQ(array.ElementCount(), 24U);
}

TEST(Array, ListsItemsFromItsLowerBound) {
    const Array list = Array::List({"a", 2, Null()}, 1);
    ASSERT_EQ(list.Dimensions().size(), 1U);
    EXPECT_EQ(list.Dimensions()[0], (Array::Dimension{1, 3}));
    EXPECT_EQ(list.At(1), Value("a"));
    EXPECT_EQ(list.At(2), Value(2));
    EXPECT_EQ(list.At(3), Value(Null()));
    EXPECT_EQ(NumberOf([&] { static_cast<void>(list.At(0)); }), kSubscriptOutOfRange);
    EXPECT_EQ(NumberOf([&] { static_cast<void>(list.At(4)); }), kSubscriptOutOfRange);
}

TEST(Array, ListsFromZeroUnlessToldOtherwise) {
    EXPECT_EQ(Array::List({"a"}).Dimensions()[0].lowerBound, 0);
    EXPECT_EQ(Array::List({"a"}).At(0), Value("a"));
}

TEST(Array, MayBeEmpty) {
    const Array list = Array::List({}, 1);
    EXPECT_EQ(list.ElementCount(), 0U);
    EXPECT_EQ(list.Dimensions()[0], (Array::Dimension{1, 0}));
    EXPECT_EQ(NumberOf([&] { static_cast<void>(list.At(1)); }), kSubscriptOutOfRange);
    EXPECT_EQ(Array({{0, 3}, {0, 0}}).ElementCount(), 0U);
}

TEST(Array, RefusesToBeWithoutADimensionOrOfANegativeSize) {
    EXPECT_EQ(NumberOf([] { const Array array({}); }), kSubscriptOutOfRange);
    EXPECT_EQ(NumberOf([] { const Array array({{0, 2}, {0, -1}}); }), kSubscriptOutOfRange);
}

TEST(Array, RefusesIndexesOfMoreThan32Bits) {
    constexpr std::int32_t kLast = std::numeric_limits<std::int32_t>::max();
    EXPECT_EQ(Array::List({1}, kLast).At(kLast), Value(1));
    EXPECT_THROW(Array::List({1, 2}, kLast), AutomationError);
    EXPECT_THROW(Array({{kLast - 1, 3}}), AutomationError);
}

TEST(Array, WantsOneIndexForEachDimension) {
    const Array array({{0, 2}, {0, 2}});
    EXPECT_EQ(NumberOf([&] { static_cast<void>(array.At(0)); }), kSubscriptOutOfRange);
    EXPECT_EQ(NumberOf([&] {
                  static_cast<void>(ElementAt(array, std::array{0, 0, 0}));
              }),
              kSubscriptOutOfRange);
    EXPECT_EQ(NumberOf([&] { static_cast<void>(array.At(std::span<const std::int32_t>())); }),
              kSubscriptOutOfRange);
}

TEST(Array, RefusesAnIndexOutsideOfAnyDimension) {
    const Array array({{-1, 2}, {5, 3}});
    EXPECT_EQ(NumberOf([&] {
                  static_cast<void>(ElementAt(array, std::array{-2, 5}));
              }),
              kSubscriptOutOfRange);
    EXPECT_EQ(NumberOf([&] { static_cast<void>(ElementAt(array, std::array{1, 5})); }), kSubscriptOutOfRange);
    EXPECT_EQ(NumberOf([&] { static_cast<void>(ElementAt(array, std::array{0, 4})); }), kSubscriptOutOfRange);
    EXPECT_EQ(NumberOf([&] { static_cast<void>(ElementAt(array, std::array{0, 8})); }), kSubscriptOutOfRange);
}

TEST(Array, ReachesElementsAtTheEndsOfTheIndexRange) {
    constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
    const Array lowest = Array::List({"first", "second"}, kMin);
    EXPECT_EQ(lowest.At(kMin), Value("first"));
    EXPECT_EQ(NumberOf([&] { static_cast<void>(lowest.At(kMax)); }), kSubscriptOutOfRange);
    const Array highest = Array::List({"last"}, kMax);
    EXPECT_EQ(highest.At(kMax), Value("last"));
    EXPECT_EQ(NumberOf([&] { static_cast<void>(highest.At(kMin)); }), kSubscriptOutOfRange);
}

TEST(Array, KeepsEveryElementAtItsOwnIndexes) {
    std::mt19937 random(20260304);
    std::uniform_int_distribution<std::int32_t> bound(-3, 3);
    std::uniform_int_distribution<std::int32_t> size(1, 4);
    for (int round = 0; round < 50; ++round) {
        const std::vector<Array::Dimension> shape{
            {bound(random), size(random)}, {bound(random), size(random)}, {bound(random), size(random)}};
        Array array(shape);
        const auto forEachIndex = [&](const auto& visit) {
            std::int32_t label = 0;
            for (std::int32_t i = 0; i < shape[0].count; ++i) {
                for (std::int32_t j = 0; j < shape[1].count; ++j) {
                    for (std::int32_t k = 0; k < shape[2].count; ++k) {
                        const std::array<std::int32_t, 3> index{
                            shape[0].lowerBound + i, shape[1].lowerBound + j, shape[2].lowerBound + k};
                        visit(std::span<const std::int32_t>(index), label++);
                    }
                }
            }
        };
        forEachIndex(
            [&](std::span<const std::int32_t> index, std::int32_t label) { array.At(index) = label; });
        forEachIndex([&](std::span<const std::int32_t> index, std::int32_t label) {
            ASSERT_EQ(array.At(index), Value(label));
        });
    }
}

TEST(Array, IsEqualOnlyToTheSameShapeWithTheSameElements) {
    EXPECT_EQ(Array::List({1, 2}), Array::List({1, 2}));
    EXPECT_NE(Array::List({1, 2}), Array::List({2, 1}));
    EXPECT_NE(Array::List({1, 2}), Array::List({1, 2}, 1));
    EXPECT_NE(Array({{0, 2}, {0, 3}}), Array({{0, 3}, {0, 2}}));
}

}  // namespace
}  // namespace kxjob
