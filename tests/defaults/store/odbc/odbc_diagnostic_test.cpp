#include "defaults/store/odbc/odbc_diagnostic.h"

#include <gtest/gtest.h>

#include <vector>

namespace kxjob {
namespace {

TEST(DecisiveDiagnostic, IsTheFirstThatIsMoreThanAWarning) {
    const std::vector<Diagnostic> records = {
        {"01000", 7, "a warning"}, {"08S01", 8, "the reason"}, {"08001", 9, "what follows from it"}};

    EXPECT_EQ(Decisive(records).state, "08S01");
    EXPECT_EQ(Decisive(records).native, 8);
    EXPECT_EQ(Decisive(records).message, "the reason");
}

TEST(DecisiveDiagnostic, IsTheFirstWhenAllAreWarnings) {
    const std::vector<Diagnostic> records = {{"01000", 20017, "first"}, {"01S00", 0, "second"}};

    EXPECT_EQ(Decisive(records).message, "first");
}

TEST(DecisiveDiagnostic, LeavesOutTheLineBreaksAroundAMessage) {
    const std::vector<Diagnostic> records = {{"08001", 0, "timeout expired\n\n"}};

    EXPECT_EQ(Decisive(records).message, "timeout expired");
}

TEST(DecisiveDiagnostic, SaysWhenADriverGivesNoReason) {
    EXPECT_EQ(Decisive({}).state, "HY000");
    EXPECT_EQ(Decisive({}).message, "The driver gives no reason");
}

}  // namespace
}  // namespace kxjob
