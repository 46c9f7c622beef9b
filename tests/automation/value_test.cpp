#include "kxjob/value.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "kxjob/array.h"
#include "kxjob/automation_error.h"
#include "kxjob/collection.h"
#include "support/raised_error.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using testing_support::kInvalidUseOfNull;
using testing_support::kObjectNotSet;
using testing_support::kOverflow;
using testing_support::kTypeMismatch;
using testing_support::NumberOf;

Value SomeRows() {
    RowArray rows(1);
    rows.AddRow({1});
    return rows;
}

Value SomeObject() {
    return ComponentRef(std::make_shared<Collection>());
}

/// How many of the questions after its kind a value answers with yes, and whether this one is among them.
void ExpectOnlyKind(const Value& value, bool (Value::*isKind)() const) {
    EXPECT_TRUE((value.*isKind)());
    int kinds = 0;
    for (const auto question :
         {&Value::IsEmpty, &Value::IsNull, &Value::IsBoolean, &Value::IsInt32, &Value::IsInt64,
          &Value::IsDouble, &Value::IsText, &Value::IsObject, &Value::IsRowArray, &Value::IsGeneralArray}) {
        if ((value.*question)()) ++kinds;
    }
    EXPECT_EQ(kinds, 1);
}

TEST(Value, IsOfExactlyOneKind) {
    ExpectOnlyKind(Value(), &Value::IsEmpty);
    ExpectOnlyKind(Null(), &Value::IsNull);
    ExpectOnlyKind(true, &Value::IsBoolean);
    ExpectOnlyKind(std::int32_t{1}, &Value::IsInt32);
    ExpectOnlyKind(std::int64_t{1}, &Value::IsInt64);
    ExpectOnlyKind(1.0, &Value::IsDouble);
    ExpectOnlyKind("text", &Value::IsText);
    ExpectOnlyKind(std::string("text"), &Value::IsText);
    ExpectOnlyKind(std::string_view("text"), &Value::IsText);
    ExpectOnlyKind(SomeRows(), &Value::IsRowArray);
    ExpectOnlyKind(Array::List({}), &Value::IsGeneralArray);
    ExpectOnlyKind(SomeObject(), &Value::IsObject);
}

TEST(Value, CallsEitherKindOfArrayAnArray) {
    EXPECT_TRUE(SomeRows().IsArray());
    EXPECT_TRUE(Value(Array::List({1})).IsArray());
    EXPECT_FALSE(Value("text").IsArray());
    EXPECT_FALSE(Value().IsArray());
}

TEST(Value, MakesNoBooleanOfAPointer) {
    EXPECT_FALSE((std::is_constructible_v<Value, const int*>));
    EXPECT_FALSE((std::is_constructible_v<Value, std::nullptr_t*>));
    EXPECT_TRUE((std::is_constructible_v<Value, bool>));
}

TEST(Value, KeepsTextByteByByte) {
    const std::string text("a\0b \xED\xA0\x80 'quoted' ", 16);
    EXPECT_EQ(Value(text).Text(), text);
    EXPECT_EQ(Value(text).ToText(), text);
    EXPECT_EQ(Value(std::string_view(text)).Text(), text);
}

TEST(Value, GivesWhatItHoldsAndNothingElse) {
    EXPECT_EQ(Value("text").Text(), "text");
    EXPECT_EQ(SomeRows().Rows().Rows(), 1);
    EXPECT_EQ(Value(Array::List({7}, 1)).General().At(1), Value(7));
    EXPECT_EQ(SomeObject().Object()->Name(), "Collection");

    EXPECT_EQ(NumberOf([] { static_cast<void>(Value(1).Text()); }), kTypeMismatch);
    EXPECT_EQ(NumberOf([] { static_cast<void>(Value().Text()); }), kTypeMismatch);
    EXPECT_EQ(NumberOf([] { static_cast<void>(Value(Array::List({})).Rows()); }), kTypeMismatch);
    EXPECT_EQ(NumberOf([] { static_cast<void>(SomeRows().General()); }), kTypeMismatch);
    EXPECT_EQ(NumberOf([] { static_cast<void>(Value("text").Object()); }), kTypeMismatch);
}

TEST(Value, RaisesObjectNotSetForAnObjectThatIsNone) {
    EXPECT_EQ(NumberOf([] { static_cast<void>(Value(ComponentRef()).Object()); }), kObjectNotSet);
}

TEST(Value, BecomesText) {
    EXPECT_EQ(Value().ToText(), "");
    EXPECT_EQ(Value(true).ToText(), "True");
    EXPECT_EQ(Value(false).ToText(), "False");
    EXPECT_EQ(Value(std::int32_t{-2147483647} - 1).ToText(), "-2147483648");
    EXPECT_EQ(Value(std::int64_t{9007199254740993}).ToText(), "9007199254740993");
    EXPECT_EQ(Value(1.0).ToText(), "1");
    EXPECT_EQ(Value(1.0 / 3).ToText(), "0.333333333333333");
    EXPECT_EQ(Value(" as it is ").ToText(), " as it is ");
}

TEST(Value, AddsNothingToALongerTextForNull) {
    EXPECT_EQ(Value(Null()).ToJoinedText(), "");
    EXPECT_EQ(Value().ToJoinedText(), "");
    EXPECT_EQ(Value(12).ToJoinedText(), "12");
    EXPECT_EQ(NumberOf([] { static_cast<void>(SomeRows().ToJoinedText()); }), kTypeMismatch);
}

TEST(Value, BecomesAWholeNumber) {
    EXPECT_EQ(Value().ToInt32(), 0);
    EXPECT_EQ(Value(true).ToInt32(), -1);
    EXPECT_EQ(Value(false).ToInt32(), 0);
    EXPECT_EQ(Value(std::int64_t{5}).ToInt32(), 5);
    EXPECT_EQ(Value("5").ToInt32(), 5);
    EXPECT_EQ(Value(" -12\t").ToInt32(), -12);
    EXPECT_EQ(Value("\t12 ").ToInt32(), 12);
    EXPECT_EQ(Value("+3").ToInt32(), 3);
    EXPECT_EQ(Value("1e3").ToInt32(), 1000);
}

TEST(Value, RoundsHalvesToTheEvenWholeNumber) {
    EXPECT_EQ(Value(0.5).ToInt32(), 0);
    EXPECT_EQ(Value(1.5).ToInt32(), 2);
    EXPECT_EQ(Value(2.5).ToInt32(), 2);
    EXPECT_EQ(Value(-0.5).ToInt32(), 0);
    EXPECT_EQ(Value(-1.5).ToInt32(), -2);
    EXPECT_EQ(Value(2.51).ToInt32(), 3);
    EXPECT_EQ(Value("2.5").ToInt32(), 2);
}

TEST(Value, OverflowsBeyondThirtyTwoBits) {
    EXPECT_EQ(Value(2147483647.0).ToInt32(), 2147483647);
    EXPECT_EQ(Value(2147483647.4).ToInt32(), 2147483647);
    EXPECT_EQ(Value(-2147483648.0).ToInt32(), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(Value(-2147483648.5).ToInt32(), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(Value(std::int64_t{-2147483648}).ToInt32(), std::numeric_limits<std::int32_t>::min());
    for (const Value& tooLarge :
         {Value(2147483647.5), Value(-2147483649.0), Value(std::int64_t{2147483648}), Value("2147483648"),
          Value(1e300), Value(std::nan("")), Value(std::numeric_limits<double>::infinity())}) {
        EXPECT_EQ(NumberOf([&] { static_cast<void>(tooLarge.ToInt32()); }), kOverflow) << tooLarge.ToText();
    }
}

TEST(Value, BecomesADouble) {
    EXPECT_EQ(Value().ToDouble(), 0.0);
    EXPECT_EQ(Value(true).ToDouble(), -1.0);
    EXPECT_EQ(Value(7).ToDouble(), 7.0);
    EXPECT_EQ(Value(std::int64_t{1} << 40).ToDouble(), 1099511627776.0);
    EXPECT_EQ(Value(0.1).ToDouble(), 0.1);
    EXPECT_EQ(Value("-1.25e-3").ToDouble(), -0.00125);
    EXPECT_EQ(NumberOf([] { static_cast<void>(Value("1e999").ToDouble()); }), kOverflow);
}

TEST(Value, RefusesATextThatIsNoNumber) {
    for (const char* text : {"", " ", "five", "x5", "5x", "5 tasks", "1,5", "1 2", "+", "-", "+-1", "--1",
                             "0x10", "nan", "inf", "infinity", "1e", "."}) {
        EXPECT_EQ(NumberOf([&] { static_cast<void>(Value(text).ToDouble()); }), kTypeMismatch) << text;
        EXPECT_EQ(NumberOf([&] { static_cast<void>(Value(text).ToInt32()); }), kTypeMismatch) << text;
    }
}

TEST(Value, RaisesInvalidUseOfNullForEveryConversionOfNull) {
    EXPECT_EQ(NumberOf([] { static_cast<void>(Value(Null()).ToText()); }), kInvalidUseOfNull);
    EXPECT_EQ(NumberOf([] { static_cast<void>(Value(Null()).ToInt32()); }), kInvalidUseOfNull);
    EXPECT_EQ(NumberOf([] { static_cast<void>(Value(Null()).ToDouble()); }), kInvalidUseOfNull);
}

TEST(Value, ConvertsNeitherArraysNorObjects) {
    for (const Value& value : {SomeRows(), Value(Array::List({1})), SomeObject(), Value(ComponentRef())}) {
        EXPECT_EQ(NumberOf([&] { static_cast<void>(value.ToText()); }), kTypeMismatch);
        EXPECT_EQ(NumberOf([&] { static_cast<void>(value.ToInt32()); }), kTypeMismatch);
        EXPECT_EQ(NumberOf([&] { static_cast<void>(value.ToDouble()); }), kTypeMismatch);
    }
}

TEST(Value, IsEqualOnlyToTheSameKindWithTheSameContent) {
    EXPECT_EQ(Value(), Value());
    EXPECT_EQ(Value(Null()), Value(Null()));
    EXPECT_EQ(Value("a"), Value(std::string("a")));
    EXPECT_EQ(SomeRows(), SomeRows());
    EXPECT_EQ(Value(Array::List({1, "a"})), Value(Array::List({1, "a"})));

    EXPECT_NE(Value(), Value(Null()));
    EXPECT_NE(Value(), Value(""));
    EXPECT_NE(Value(1), Value(std::int64_t{1}));
    EXPECT_NE(Value(1), Value(1.0));
    EXPECT_NE(Value(1), Value("1"));
    EXPECT_NE(Value(-1), Value(true));
    EXPECT_NE(Value("a"), Value("A"));
    EXPECT_NE(Value(Array::List({1})), Value(Array::List({1}, 1)));
    EXPECT_NE(SomeRows(), Value(Array::List({1})));
}

TEST(Value, TakesTwoObjectsForEqualOnlyWhenTheyAreTheSame) {
    const Value object = SomeObject();
    const Value theSame = object;
    EXPECT_EQ(object, theSame);
    EXPECT_NE(object, SomeObject());
}

TEST(Value, SharesItsArrayWithItsCopies) {
    const Value rows = SomeRows();
    const Value copy =
        rows;  // NOLINT(performance-unnecessary-copy-initialization): the copy is what is tested
    EXPECT_EQ(&rows.Rows(), &copy.Rows());
}

TEST(Value, ShowsAVisitorWhatItHolds) {
    const auto isNumber = [](const auto& held) {
        return std::is_same_v<decltype(held), const std::int32_t&>;
    };
    EXPECT_TRUE(Value(1).Visit(isNumber));
    EXPECT_FALSE(Value("1").Visit(isNumber));
    EXPECT_FALSE(Value().Visit(isNumber));
}

TEST(Value, GivesEveryWholeNumberBackThroughText) {
    std::mt19937 random(20260303);
    for (int i = 0; i < 5'000; ++i) {
        const auto number = static_cast<std::int32_t>(random());
        ASSERT_EQ(Value(Value(number).ToText()).ToInt32(), number);
        ASSERT_EQ(Value(static_cast<double>(number)).ToText(), Value(number).ToText());
        ASSERT_EQ(Value(static_cast<std::int64_t>(number)).ToInt32(), number);
    }
}

}  // namespace
}  // namespace kxjob
