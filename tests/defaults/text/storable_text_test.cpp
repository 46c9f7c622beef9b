#include "defaults/text/storable_text.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

using std::string_view_literals::operator""sv;

TEST(StorageFlaw, IsNoneForTextOfEveryLength) {
    EXPECT_EQ(StorageFlaw(""), "");
    EXPECT_EQ(StorageFlaw("plain\r\n\t\x01\x7F"), "");
    EXPECT_EQ(StorageFlaw("\xC2\x80 \xDF\xBF"), "");                       // U+0080, U+07FF
    EXPECT_EQ(StorageFlaw("\xE0\xA0\x80 \xED\x9F\xBF \xEE\x80\x80"), "");  // U+0800, U+D7FF, U+E000
    EXPECT_EQ(StorageFlaw("\xEF\xBF\xBF \xF0\x90\x80\x80"), "");           // U+FFFF, U+10000
    EXPECT_EQ(StorageFlaw("\xF3\xA0\x80\x81 \xF4\x8F\xBF\xBF"), "");       // U+E0001, U+10FFFF
}

TEST(StorageFlaw, NamesANulAndItsByte) {
    EXPECT_EQ(StorageFlaw("\0"sv), "a NUL character at byte 1");
    EXPECT_EQ(StorageFlaw("ab\0c"sv), "a NUL character at byte 3");
    EXPECT_EQ(StorageFlaw("\xC3\xA4\0"sv), "a NUL character at byte 3");
}

TEST(StorageFlaw, NamesALoneSurrogateAndItsByte) {
    EXPECT_EQ(StorageFlaw("x\xED\xA0\x80"), "a lone surrogate at byte 2");
    EXPECT_EQ(StorageFlaw("\xED\xBF\xBFy"), "a lone surrogate at byte 1");
}

TEST(StorageFlaw, NamesEveryOtherBrokenSequence) {
    const char* const broken[] = {
        "ab\x80",              // a continuation byte alone
        "ab\xC0\x80",          // overlong NUL
        "ab\xC1\xBF",          // overlong of two bytes
        "ab\xE0\x9F\xBF",      // overlong of three bytes
        "ab\xF0\x8F\xBF\xBF",  // overlong of four bytes
        "ab\xF4\x90\x80\x80",  // U+110000
        "ab\xF5\x80\x80\x80",  // beyond every code point
        "ab\xFF",
        "ab\xC3",          // cut off
        "ab\xE2\x82",      // cut off
        "ab\xED\xA0",      // a surrogate cut off
        "ab\xF0\x9F\x98",  // cut off
        "ab\xC3(",         // the next character comes too soon
        "ab\xE2\x82(",
        "ab\xF0\x9F\x98(",
    };
    for (const char* text : broken) EXPECT_EQ(StorageFlaw(text), "invalid UTF-8 at byte 3") << text;
}

TEST(RequireStorable, RaisesWithTheFlawInTheDescription) {
    try {
        RequireStorable("ab\0"sv);
        FAIL() << "nothing was raised";
    } catch (const AutomationError& error) {
        EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x80040000U + 706));
        EXPECT_EQ(error.Description(), "The text cannot be stored: it has a NUL character at byte 3");
    }
}

TEST(RequireStorable, ReturnsForATextWithoutFlaw) {
    EXPECT_NO_THROW(
        RequireStorable("Gr\xC3\xB6\xC3\x9F"
                        "e"));
}

TEST(StorableCopy, ReplacesEachByteThatCannotBeStored) {
    EXPECT_EQ(StorableCopy("Gr\xC3\xB6\xC3\x9F"
                           "e"),
              "Gr\xC3\xB6\xC3\x9F"
              "e");
    EXPECT_EQ(StorableCopy("a\0b"sv),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(StorableCopy("\xE9t\xE9"), "\xEF\xBF\xBDt\xEF\xBF\xBD");
    EXPECT_EQ(StorableCopy("\xED\xA0\x80"), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(StorableCopy(""), "");
}

}  // namespace
}  // namespace kxjob
