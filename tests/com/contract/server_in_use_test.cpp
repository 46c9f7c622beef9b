#include <gtest/gtest.h>
#include <windows.h>

#include "contract/library_thread.h"
#include "kxjob/job_helper.h"

namespace kxjob::testing_support {
namespace {

TEST(ServerInUse, IsTheOneThatAnswersTheMethods) {
    const LibraryThread thread;
    ASSERT_EQ(GetModuleHandleW(L"kxJob.dll"), nullptr);

    EXPECT_EQ(JobHelper().Version(), "8.3.1202.0");

    EXPECT_NE(GetModuleHandleW(L"kxJob.dll"), nullptr);
}

}  // namespace
}  // namespace kxjob::testing_support
