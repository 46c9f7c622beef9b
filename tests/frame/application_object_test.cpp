#include "frame/application_object.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

using ::testing::ElementsAre;

TEST(ApplicationObject, ShowsTheProjectAndItsVersion) {
    ApplicationObject application;

    EXPECT_EQ(application.Name(), "Application");
    EXPECT_EQ(application.Get("Title"), Value("Job_83"));
    EXPECT_EQ(application.Get("Major"), Value(8));
    EXPECT_EQ(application.Get("Minor"), Value(3));
    EXPECT_EQ(application.Get("Revision"), Value(1202));
}

TEST(ApplicationObject, NamesItsMembersInTheOrderOfTheirDispatchNumbers) {
    EXPECT_THAT(ApplicationObject().MemberNames(), ElementsAre("Title", "Major", "Minor", "Revision"));
}

TEST(ApplicationObject, HasNothingElse) {
    ApplicationObject application;
    try {
        application.Get("Path");
        FAIL() << "an unknown property was read";
    } catch (const AutomationError& error) {
        EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x80020003U));
    }
}

}  // namespace
}  // namespace kxjob
