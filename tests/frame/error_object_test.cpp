#include "frame/error_object.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kxjob {
namespace {

TEST(ErrorObject, ShowsTheNumberTheSourceAndTheDescription) {
    ErrorObject error(AutomationError(-2147220761, "Job_83.JobHelper.IsJobComplete", "not known", 12));

    EXPECT_EQ(error.Name(), "Err");
    EXPECT_EQ(error.Get("Number"), Value(-2147220761));
    EXPECT_EQ(error.Get("Source"), Value("Job_83.JobHelper.IsJobComplete"));
    EXPECT_EQ(error.Get("Description"), Value("not known"));
}

TEST(ErrorObject, NamesItsMembersInTheOrderOfTheirDispatchNumbers) {
    EXPECT_THAT(ErrorObject(AutomationError(1, "s", "d")).MemberNames(),
                ::testing::ElementsAre("Number", "Source", "Description"));
}

TEST(ErrorObject, HasNoHelpFileAndNoMethods) {
    ErrorObject error(AutomationError(1, "s", "d"));

    EXPECT_THROW(error.Get("HelpFile"), AutomationError);
    EXPECT_THROW(error.Get("number"), AutomationError);
    EXPECT_THROW(error.Let("Number", 2), AutomationError);
    EXPECT_THROW(error.Call("Raise", {}), AutomationError);
    EXPECT_EQ(error.Get("Number"), Value(1));
}

}  // namespace
}  // namespace kxjob
