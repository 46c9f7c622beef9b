#include "terminal/printable.h"

#include <gtest/gtest.h>

namespace kxjob::command {
namespace {

TEST(Printable, CountsCharactersNotBytes) {
    EXPECT_EQ(WidthOf(""), 0U);
    EXPECT_EQ(WidthOf("caf\xC3\xA9"), 4U);
    EXPECT_EQ(WidthOf("\xE2\x82\xAC\xF0\x9F\x98\x80"), 2U);
}

TEST(Printable, LeavesNoControlCharacter) {
    EXPECT_EQ(OnOneLine("a\r\nb\tc\x1B[31m\x7F"), "a  b c [31m ");
    EXPECT_EQ(OnOneLine("a\xC2\x9B"
                        "b\xC2\xA9"),
              "a b\xC2\xA9")
        << "an escape of two bytes goes, a sign of two bytes stays";
}

TEST(Printable, IndentsLines) {
    EXPECT_EQ(Indented("one\r\n\ntwo\x1B", "  "), "  one\n\n  two \n");
    EXPECT_EQ(Indented("", "  "), "");
}

}  // namespace
}  // namespace kxjob::command
