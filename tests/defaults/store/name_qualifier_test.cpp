#include "defaults/store/name_qualifier.h"

#include <gtest/gtest.h>

namespace kxjob {
namespace {

TEST(PrefixWithinSchema, IsTheWholeQualifierWithoutADot) {
    EXPECT_EQ(PrefixWithinSchema(""), "");
    EXPECT_EQ(PrefixWithinSchema("kx_"), "kx_");
}

TEST(PrefixWithinSchema, IsWhatStandsBehindTheLastDot) {
    EXPECT_EQ(PrefixWithinSchema("main."), "");
    EXPECT_EQ(PrefixWithinSchema("main.app_"), "app_");
    EXPECT_EQ(PrefixWithinSchema("db.main.app_"), "app_");
}

TEST(PrefixWithinSchema, DoesNotCountDotsInQuotedNames) {
    EXPECT_EQ(PrefixWithinSchema("\"my.q\"."), "");
    EXPECT_EQ(PrefixWithinSchema("\"my.q\".app_"), "app_");
    EXPECT_EQ(PrefixWithinSchema("[my.q].app_"), "app_");
    EXPECT_EQ(PrefixWithinSchema("`my.q`.app_"), "app_");
}

TEST(PrefixWithinSchema, TakesADoubledQuoteAsPartOfTheName) {
    EXPECT_EQ(PrefixWithinSchema("\"a\"\".b\".c_"), "c_");
    EXPECT_EQ(PrefixWithinSchema("[a]].b].c_"), "c_");
}

}  // namespace
}  // namespace kxjob
