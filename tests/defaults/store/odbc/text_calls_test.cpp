#include "defaults/store/odbc/text_calls.h"

#include <gtest/gtest.h>

namespace kxjob {
namespace {

TEST(WholeCharacters, TakesTheWholeOfAShortText) {
    EXPECT_EQ(WholeCharacters("", 4), 0U);
    EXPECT_EQ(WholeCharacters("abcd", 4), 4U);
}

TEST(WholeCharacters, CutsBetweenCharactersOnly) {
    EXPECT_EQ(WholeCharacters("abcde", 4), 4U);
    EXPECT_EQ(WholeCharacters("abc\u00E9", 4), 3U);
    EXPECT_EQ(WholeCharacters("ab\U0001F600", 5), 2U);
    EXPECT_EQ(WholeCharacters("ab\U0001F600c", 6), 6U);
}

TEST(WholeCharacters, GoesOnInATextThatIsNoUtf8) {
    EXPECT_EQ(WholeCharacters("\x80\x80\x80\x80\x80\x80", 4), 4U);
}

TEST(DriverText, ComesBackAsItWas) {
    const std::string text = "it's \u00E9 \U0001F600 \xED\xA0\x80";

    EXPECT_EQ(FromDriverText(ToDriverText(text)), text);
}

}  // namespace
}  // namespace kxjob
