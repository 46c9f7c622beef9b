#include "automation/utf8.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace kxjob {
namespace {

void ExpectCharacter(const std::string& bytes, char32_t codePoint) {
    const std::string text = "x" + bytes + "x";
    const Utf8Character character = Utf8CharacterAt(text, 1);
    EXPECT_EQ(character.length, bytes.size()) << bytes;
    EXPECT_EQ(character.codePoint, codePoint) << bytes;
}

void ExpectNone(const std::string& bytes) {
    EXPECT_EQ(Utf8CharacterAt(bytes, 0).length, 0U) << bytes;
}

TEST(Utf8CharacterAt, ReadsTheFirstAndTheLastCharacterOfEachLength) {
    ExpectCharacter(std::string(1, '\0'), 0);
    ExpectCharacter("\x7F", 0x7F);
    ExpectCharacter("\xC2\x80", 0x80);
    ExpectCharacter("\xDF\xBF", 0x7FF);
    ExpectCharacter("\xE0\xA0\x80", 0x800);
    ExpectCharacter("\xEF\xBF\xBF", 0xFFFF);
    ExpectCharacter("\xF0\x90\x80\x80", 0x10000);
    ExpectCharacter("\xF4\x8F\xBF\xBF", 0x10FFFF);
}

TEST(Utf8CharacterAt, ReadsLoneSurrogates) {
    ExpectCharacter("\xED\xA0\x80", 0xD800);
    ExpectCharacter("\xED\xBF\xBF", 0xDFFF);
}

TEST(Utf8CharacterAt, RefusesOverlongForms) {
    ExpectNone("\xC0\x80");
    ExpectNone("\xC1\xBF");
    ExpectNone("\xE0\x9F\xBF");
    ExpectNone("\xF0\x8F\xBF\xBF");
}

TEST(Utf8CharacterAt, RefusesWhatIsBeyondTheLastCharacter) {
    ExpectNone("\xF4\x90\x80\x80");
    ExpectNone("\xF7\xBF\xBF\xBF");
    ExpectNone("\xF8\x88\x80\x80\x80");
    ExpectNone("\xF8\x90\x80\x80");
    ExpectNone("\xFF");
}

TEST(Utf8CharacterAt, RefusesContinuationsWithoutAStartAndStartsWithoutContinuations) {
    ExpectNone("\x80");
    ExpectNone("\xBF");
    ExpectNone("\xC3");
    ExpectNone("\xC3x");
    ExpectNone("\xE2\x82");
    ExpectNone("\xE2\x82\xC3");
    ExpectNone("\xF0\x9F\x98");
    ExpectNone("\xF0\x9Fx\x80");
}

TEST(Utf8CharacterAt, ReadsNothingBeyondTheEnd) {
    constexpr std::string_view kLonger = "a\xC3\xA9";

    EXPECT_EQ(Utf8CharacterAt(kLonger.substr(1, 1), 0).length, 0U);
    EXPECT_EQ(Utf8CharacterAt(kLonger.substr(0, 2), 1).length, 0U);
}

TEST(IsSurrogate, HoldsForHalvesOfCharactersOnly) {
    EXPECT_FALSE(IsSurrogate(0xD7FF));
    EXPECT_TRUE(IsSurrogate(0xD800));
    EXPECT_TRUE(IsSurrogate(0xDFFF));
    EXPECT_FALSE(IsSurrogate(0xE000));
}

}  // namespace
}  // namespace kxjob
