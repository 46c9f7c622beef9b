#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kxjob/caller_texts.h"
#include "support/job_helper_test.h"
#include "support/raised_error.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using ::testing::Return;

using testing_support::kObjectNotSet;
using testing_support::NumberOf;

using FailureNoteWithoutEnvironment = testing_support::JobHelperTest;

class FailureNoteText : public testing_support::JobHelperTest {
protected:
    FailureNoteText() {
        EXPECT_CALL(times, NowISODateTime()).WillOnce(Return("NOW"));
        EXPECT_CALL(environment, FirstMachineText()).WillOnce(Return("M1"));
        EXPECT_CALL(environment, SecondMachineText()).WillOnce(Return("M2"));
        EXPECT_CALL(environment, FirstUserText()).WillOnce(Return("U1"));
        EXPECT_CALL(environment, SecondUserText()).WillOnce(Return("U2"));
        EXPECT_CALL(environment, ProcessId()).WillOnce(Return(7));
        EXPECT_CALL(environment, ThreadId()).WillOnce(Return(8));
    }

    const std::string block =
        "NOW\r\n\r\nMachine details: M1\\M2\r\n\r\nUser details: U1\\U2\r\n\r\n"
        "Process ID / Thread ID: 7 / 8\r\n\r\n";
};

TEST_F(FailureNoteText, SaysWhenAndWhoAheadOfTheNote) {
    EXPECT_EQ(FailureNote("", "why"), block + "why");
}

TEST_F(FailureNoteText, LeavesAnEarlierNoteInFront) {
    EXPECT_EQ(FailureNote("before", "why"), "before\r\n\r\n" + block + "why");
}

TEST_F(FailureNoteText, DropsAnEarlierNoteOfBlanks) {
    EXPECT_EQ(FailureNote("   ", "why"), block + "why");
}

TEST_F(FailureNoteWithoutEnvironment, RaisesObjectNotSet) {
    environmentRef = nullptr;
    EXPECT_EQ(NumberOf([] { FailureNote("", "why"); }), kObjectNotSet);
}

}  // namespace
}  // namespace kxjob
