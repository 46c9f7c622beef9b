#include "automation/utf16.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace kxjob {
namespace {

void ExpectSame(const std::string& utf8, const std::u16string& utf16) {
    EXPECT_EQ(ToUtf16(utf8), utf16) << utf8;
    EXPECT_EQ(ToUtf8(utf16), utf8);
}

TEST(Utf16, SaysTheSameAsUtf8) {
    ExpectSame("", u"");
    ExpectSame("Job_83", u"Job_83");
    ExpectSame("\x7F\xC2\x80\xDF\xBF", u"\u007F\u0080\u07FF");
    ExpectSame("\xE0\xA0\x80\xEF\xBF\xBF", {u'\u0800', char16_t{0xFFFF}});
    ExpectSame(
        "Gr\xC3\xB6\xC3\x9F"
        "e \xE2\x82\xAC",
        u"Größe €");
}

TEST(Utf16, WritesTwoUnitsForACharacterAboveTheFirstPlane) {
    ExpectSame("\xF0\x90\x80\x80", {0xD800, 0xDC00});
    ExpectSame("a\xF0\x9F\x98\x80z", {u'a', 0xD83D, 0xDE00, u'z'});
    ExpectSame("\xF4\x8F\xBF\xBF", {0xDBFF, 0xDFFF});
}

TEST(Utf16, KeepsNul) {
    ExpectSame(std::string("a\0b", 3), std::u16string(u"a\0b", 3));
}

TEST(Utf16, KeepsLoneSurrogates) {
    ExpectSame("\xED\xA0\x80", {0xD800});
    ExpectSame("\xED\xAF\xBFx", {0xDBFF, u'x'});
    ExpectSame("x\xED\xB0\x80", {u'x', 0xDC00});
    ExpectSame("\xED\xBF\xBF\xED\xA0\x80", {0xDFFF, 0xD800});
    ExpectSame("\xED\xA0\x80\xEE\x80\x80", {0xD800, 0xE000});
    ExpectSame("\xED\xA0\x80\xF0\x90\x80\x80", {0xD800, 0xD800, 0xDC00});
    ExpectSame("\xED\xB0\x80\xED\xB0\x81", {0xDC00, 0xDC01});
}

TEST(Utf16, ReadsNothingBeyondTheEnd) {
    const std::u16string longer = {0xD800, 0xDC00};

    EXPECT_EQ(ToUtf8(std::u16string_view(longer).substr(0, 1)), "\xED\xA0\x80");
}

TEST(Utf16, KeepsEveryUnit) {
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const std::u16string text(1, static_cast<char16_t>(unit));
        ASSERT_EQ(ToUtf16(ToUtf8(text)), text) << unit;
    }
}

TEST(Utf16, TakesEachByteThatBelongsToNoCharacterForAReplacementCharacter) {
    EXPECT_EQ(ToUtf16("a\xFFz"), u"a\uFFFDz");
    EXPECT_EQ(ToUtf16("\x80\x80"), u"\uFFFD\uFFFD");
    EXPECT_EQ(ToUtf16("\xC3z"), u"\uFFFDz");
    EXPECT_EQ(ToUtf16("\xE2\x82"), u"\uFFFD\uFFFD");
    EXPECT_EQ(ToUtf16("\xC0\x80"), u"\uFFFD\uFFFD");
    EXPECT_EQ(ToUtf16("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD");
}

}  // namespace
}  // namespace kxjob
