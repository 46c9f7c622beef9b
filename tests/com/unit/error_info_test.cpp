#include "com/errors/error_info.h"

#include <gtest/gtest.h>

#include "com/errors/at_boundary.h"

namespace kxjob {
namespace {

TEST(AFailedCallOfTheSystem, IsAnErrorOfThisLibraryWhateverAnEarlierCallLeft) {
    Publish(IID_IDispatch, AutomationError(-7000, "Somebody.Else", "an error that nobody fetched"));
    try {
        RequireSuccess(DISP_E_BADINDEX);
        FAIL() << "nothing was raised";
    } catch (const AutomationError& error) {
        EXPECT_EQ(error.Number(), DISP_E_BADINDEX);
        EXPECT_EQ(error.Source(), "Job_83");
        EXPECT_NE(error.Description(), "");
        EXPECT_NE(error.Description(), "an error that nobody fetched");
    }
    SetErrorInfo(0, nullptr);
}

TEST(AFailedCallOfTheSystem, IsNoneWhenItSucceeded) {
    EXPECT_NO_THROW(RequireSuccess(S_OK));
    EXPECT_NO_THROW(RequireSuccess(S_FALSE));
}

}  // namespace
}  // namespace kxjob
