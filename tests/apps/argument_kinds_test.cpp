#include "argument_kinds.h"

#include <gtest/gtest.h>

#include <string>

#include "kxjob/array.h"
#include "usage_error.h"

namespace kxjob::command {
namespace {

template <typename T>
T Read(const std::string& text) {
    T argument{};
    ReadArgument(text, argument);
    return argument;
}

TEST(TextArgument, IsNeverInterpreted) {
    for (const char* text : {"", "[1]", "{\"a\":1}", "--x", "'", "a\nb", "%%", "a=b", "null"}) {
        EXPECT_EQ(Read<std::string>(text), text);
    }
}

TEST(WholeNumberArgument, TakesWhatFits32Bits) {
    EXPECT_EQ(Read<std::int32_t>("5"), 5);
    EXPECT_EQ(Read<std::int32_t>("-1"), -1);
    EXPECT_EQ(Read<std::int32_t>("2147483647"), 2147483647);
    EXPECT_EQ(Read<std::int32_t>("-2147483648"), -2147483647 - 1);
}

TEST(WholeNumberArgument, RefusesAnythingElse) {
    for (const char* text :
         {"", " ", "x", "5x", " 5", "5 ", "1.0", "1e3", "0x10", "2147483648", "-2147483649", "--1"}) {
        EXPECT_THROW(Read<std::int32_t>(text), UsageError) << text;
    }
}

TEST(NumberArgument, TakesNumbersWhateverTheLocale) {
    EXPECT_EQ(Read<double>("0.5"), 0.5);
    EXPECT_EQ(Read<double>("-2"), -2.0);
    EXPECT_EQ(Read<double>("1e3"), 1000.0);
}

TEST(NumberArgument, RefusesAnythingElse) {
    for (const char* text : {"", "x", "0,5", "1.5s", "inf", "nan", "1e999"}) {
        EXPECT_THROW(Read<double>(text), UsageError) << text;
    }
}

TEST(BooleanArgument, TakesItsWordsInAnyLetterCase) {
    for (const char* text : {"true", "TRUE", "Yes", "1", "-1"}) EXPECT_TRUE(Read<bool>(text)) << text;
    for (const char* text : {"false", "False", "NO", "0"}) EXPECT_FALSE(Read<bool>(text)) << text;
}

TEST(BooleanArgument, RefusesAnythingElse) {
    for (const char* text : {"", "2", "t", "truee", "on"}) EXPECT_THROW(Read<bool>(text), UsageError) << text;
}

TEST(VariantArgument, IsJsonOnlyBehindABracketOrBrace) {
    EXPECT_EQ(Read<Value>("[\"a\"]"), Value(Array::List({"a"})));
    EXPECT_EQ(Read<Value>("{\"empty\":true}"), Value());
    for (const char* text : {"", "5", "true", "null", "\"a\"", " [1]"})
        EXPECT_EQ(Read<Value>(text), Value(text));
}

TEST(VariantArgument, TakesAGuidAsText) {
    EXPECT_EQ(Read<Value>("{01234567-89ab-cdef-ABCD-EF0123456789}"),
              Value("{01234567-89ab-cdef-ABCD-EF0123456789}"));
    EXPECT_THROW(Read<Value>("{01234567-89ab-cdef-ABCD-EF012345678}"), UsageError);
    EXPECT_THROW(Read<Value>("{01234567-89ab-cdef-ABCD-EF012345678g}"), UsageError);
}

TEST(CollectionArgument, TakesAJsonObjectByKey) {
    Collection options;
    ReadArgument(R"({"Tablespace":"fast","Fill":90,"List":[1]})", options);
    EXPECT_EQ(options.Count(), 3U);
    EXPECT_EQ(options.Item("tablespace"), Value("fast"));
    EXPECT_EQ(options.Item("Fill"), Value(90));
    EXPECT_EQ(options.Item("List"), Value(Array::List({1})));
}

TEST(CollectionArgument, RefusesAnythingElse) {
    Collection options;
    EXPECT_THROW(ReadArgument("", options), UsageError);
    EXPECT_THROW(ReadArgument("[]", options), UsageError);
    EXPECT_THROW(ReadArgument("{\"a\":{}}", options), UsageError);
    EXPECT_THROW(ReadArgument("{\"a\":1,\"A\":2}", options), UsageError);
}

}  // namespace
}  // namespace kxjob::command
