#include "records/guid_text.h"

#include <gtest/gtest.h>

namespace kxjob::command {
namespace {

constexpr const char* kGuid = "{6F9619FF-8B86-4D01-B42D-00CF4FC964FF}";

TEST(GuidText, IsTheLibrarysFormOfWhatAPersonTypes) {
    EXPECT_EQ(GuidText(kGuid), kGuid);
    EXPECT_EQ(GuidText("6f9619ff-8b86-4d01-b42d-00cf4fc964ff"), kGuid);
    EXPECT_EQ(GuidText("{6f9619ff-8b86-4d01-b42d-00cf4fc964ff}"), kGuid);
}

TEST(GuidText, LeavesOtherKeysAsTheyAre) {
    for (const char* text :
         {"", "{", "{}", "key", "6f9619ff-8b86-4d01-b42d-00cf4fc964fg", "6f9619ff-8b86-4d01-b42d-00cf4fc964f",
          "6f9619ff8b864d01b42d00cf4fc964ff", "{6f9619ff-8b86-4d01-b42d-00cf4fc964ff",
          "6f9619ff-8b86-4d01-b42d-00cf4fc964ff "}) {
        EXPECT_EQ(GuidText(text), text);
    }
}

TEST(GuidText, TellsGuidsInBracesFromOtherTexts) {
    EXPECT_TRUE(IsGuid(kGuid));
    EXPECT_TRUE(IsGuid("{6f9619ff-8b86-4d01-b42d-00cf4fc964ff}"));
    EXPECT_FALSE(IsGuid("6F9619FF-8B86-4D01-B42D-00CF4FC964FF"));
    EXPECT_FALSE(IsGuid("{\"identifier\":\"a\"}"));
    EXPECT_FALSE(IsGuid(""));
}

}  // namespace
}  // namespace kxjob::command
