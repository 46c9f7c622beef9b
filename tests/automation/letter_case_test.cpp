#include "automation/letter_case.h"

#include <gtest/gtest.h>

namespace kxjob {
namespace {

TEST(FoldedCase, LowersAsciiLettersAndNothingElse) {
    EXPECT_EQ(FoldedCase("Job_83.JobHELPER [@Z`{]"), "job_83.jobhelper [@z`{]");
    EXPECT_EQ(FoldedCase("\xC3\x84"), "\xC3\x84");
    EXPECT_EQ(FoldedCase(""), "");
}

}  // namespace
}  // namespace kxjob
