#include "value_json.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <string>

#include "kxjob/array.h"
#include "kxjob/collection.h"
#include "usage_error.h"

namespace kxjob::command {
namespace {

std::string Text(const Value& value) {
    return OneLine(ToJson(value));
}
Value FromText(const std::string& json) {
    return FromJson(ParseJson(json));
}

TEST(ToJson, ShowsScalars) {
    EXPECT_EQ(Text({}), R"({"empty":true})");
    EXPECT_EQ(Text(Null()), "null");
    EXPECT_EQ(Text(true), "true");
    EXPECT_EQ(Text(-5), "-5");
    EXPECT_EQ(Text(std::int64_t{9223372036854775807}), "9223372036854775807");
    EXPECT_EQ(Text(0.5), "0.5");
    EXPECT_EQ(Text(1.0), "1.0");
    EXPECT_EQ(Text(""), R"("")");
}

TEST(ToJson, KeepsAnyTextOnOneLine) {
    EXPECT_EQ(Text("a\"b\\c\r\n\t\x01"), R"("a\"b\\c\r\n\t\u0001")");
    EXPECT_EQ(Text("gr\xC3\xBC\xC3\x9F \xF0\x9F\x98\x80"), "\"gr\xC3\xBC\xC3\x9F \xF0\x9F\x98\x80\"");
}

TEST(ToJson, ReplacesBytesThatAreNoUtf8) {
    EXPECT_EQ(Text("a\xFFz"), "\"a\xEF\xBF\xBDz\"");
}

TEST(ToJson, ShowsARowArrayRowByRow) {
    RowArray rows(3);
    rows.AddRow({"a", 1, Null()});
    rows.AddRow({"b", 2.5, "c"});
    EXPECT_EQ(Text(rows), R"({"rows":[["a",1,null],["b",2.5,"c"]]})");
    EXPECT_EQ(Text(RowArray(2)), R"({"rows":[]})");
}

TEST(ToJson, ShowsAGeneralArrayAsAList) {
    EXPECT_EQ(Text(Array::List({"a", 1, Value()})), R"(["a",1,{"empty":true}])");
    EXPECT_EQ(Text(Array::List({})), "[]");
    EXPECT_EQ(Text(Array::List({"a"}, 1)), R"({"lower":1,"items":["a"]})");
    EXPECT_EQ(Text(Array::List({}, -2)), R"({"lower":-2,"items":[]})");
}

TEST(ToJson, NestsTheListsOfMoreDimensions) {
    Array array({{0, 2}, {1, 2}});
    array.At(std::array{0, 1}) = "a";
    array.At(std::array{0, 2}) = "b";
    array.At(std::array{1, 1}) = "c";
    array.At(std::array{1, 2}) = "d";
    EXPECT_EQ(Text(array), R"([{"lower":1,"items":["a","b"]},{"lower":1,"items":["c","d"]}])");
}

TEST(ToJson, ShowsAnObjectByItsName) {
    EXPECT_EQ(Text(ComponentRef(std::make_shared<Collection>())), R"({"object":"Collection"})");
    EXPECT_EQ(Text(ComponentRef()), R"({"object":"Nothing"})");
}

TEST(ToJson, ShowsAnErrorWithItsSignedNumber) {
    EXPECT_EQ(
        OneLine(ToJson(AutomationError(static_cast<std::int32_t>(0x800402E7U), "Job_83.JobHelper.X", "why"))),
        R"({"number":-2147220761,"source":"Job_83.JobHelper.X","description":"why"})");
}

TEST(FromJson, GivesScalarsTheirKind) {
    EXPECT_EQ(FromText("null"), Value(Null()));
    EXPECT_EQ(FromText("true"), Value(true));
    EXPECT_EQ(FromText("2147483647"), Value(2147483647));
    EXPECT_EQ(FromText("-2147483648"), Value(std::numeric_limits<std::int32_t>::min()));
    EXPECT_EQ(FromText("2147483648"), Value(std::int64_t{2147483648}));
    EXPECT_EQ(FromText("9223372036854775807"), Value(std::int64_t{9223372036854775807}));
    EXPECT_EQ(FromText("18446744073709551615"), Value(18446744073709551615.0));
    EXPECT_EQ(FromText("1.0"), Value(1.0));
    EXPECT_EQ(FromText("1e3"), Value(1000.0));
    EXPECT_EQ(FromText(R"("text")"), Value("text"));
    EXPECT_EQ(FromText(R"({"empty":true})"), Value());
}

TEST(FromJson, ReadsAListAsAnArrayFromZero) {
    EXPECT_EQ(FromText(R"(["a",1,null])"), Value(Array::List({"a", 1, Null()})));
    EXPECT_EQ(FromText("[]"), Value(Array::List({})));
}

TEST(FromJson, ReadsALowerBound) {
    EXPECT_EQ(FromText(R"({"lower":1,"items":["a","b"]})"), Value(Array::List({"a", "b"}, 1)));
    EXPECT_EQ(FromText(R"({"items":[],"lower":-3})"), Value(Array::List({}, -3)));
}

TEST(FromJson, ReadsListsOfEqualLengthAsTwoDimensions) {
    const Value value = FromText(R"([["a","b","c"],["d","e","f"]])");
    const auto dimensions = value.General().Dimensions();
    ASSERT_EQ(dimensions.size(), 2U);
    EXPECT_EQ(dimensions[0], (Array::Dimension{0, 2}));
    EXPECT_EQ(dimensions[1], (Array::Dimension{0, 3}));
    EXPECT_EQ(value.General().At(std::array{1, 0}), Value("d"));
    EXPECT_EQ(value.General().At(std::array{0, 2}), Value("c"));
}

TEST(FromJson, ReadsThreeDimensionsWithTheirBounds) {
    const std::string json = R"({"lower":1,"items":[[["a"],["b"]],[["c"],["d"]]]})";
    const Value value = FromText(json);
    EXPECT_EQ(value.General().Dimensions().size(), 3U);
    EXPECT_EQ(value.General().At(std::array{2, 1, 0}), Value("d"));
    EXPECT_EQ(Text(value), json);
}

TEST(FromJson, KeepsListsOfUnequalLengthAsElements) {
    const Value value = FromText(R"([["a","b"],["c"]])");
    ASSERT_EQ(value.General().Dimensions().size(), 1U);
    EXPECT_EQ(value.General().At(0), Value(Array::List({"a", "b"})));
    EXPECT_EQ(value.General().At(1), Value(Array::List({"c"})));
    EXPECT_EQ(FromText(R"(["a",["b"]])").General().Dimensions().size(), 1U);
}

TEST(FromJson, RefusesAnObjectThatIsNoValue) {
    EXPECT_THROW(FromText("{}"), UsageError);
    EXPECT_THROW(FromText(R"({"empty":false})"), UsageError);
    EXPECT_THROW(FromText(R"({"lower":1})"), UsageError);
    EXPECT_THROW(FromText(R"({"lower":"1","items":[]})"), UsageError);
    EXPECT_THROW(FromText(R"({"lower":1.5,"items":[]})"), UsageError);
    EXPECT_THROW(FromText(R"({"lower":9999999999,"items":[]})"), UsageError);
    EXPECT_THROW(FromText(R"({"lower":1,"items":{}})"), UsageError);
    EXPECT_THROW(FromText(R"(["a",{"b":1}])"), UsageError);
}

TEST(FromJson, RefusesNestingBeyondWhatAnArrayHas) {
    EXPECT_EQ(FromText(std::string(60, '[') + std::string(60, ']')).General().Dimensions().size(), 60U);
    EXPECT_THROW(FromText(std::string(61, '[') + std::string(61, ']')), UsageError);
    EXPECT_THROW(FromText(std::string(100000, '[') + std::string(100000, ']')), UsageError);
}

TEST(ParseJson, RefusesWhatIsNoJson) {
    for (const char* text : {"", "[", "{a}", "[1,]", "[1]x", "\"\\ud800\"", "[\"\xFF\"]"}) {
        EXPECT_THROW(ParseJson(text), UsageError) << text;
    }
}

}  // namespace
}  // namespace kxjob::command
