#include "defaults/system/process_environment_info.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <thread>

#include "defaults/system/posix/posix_names.h"

namespace kxjob {
namespace {

TEST(ProcessEnvironmentInfo, TellsThisProcessAndThread) {
    ProcessEnvironmentInfo environment;
    EXPECT_EQ(environment.ProcessId(), getpid());
    EXPECT_EQ(environment.ThreadId(), gettid());
    std::int32_t other = 0;
    std::thread([&] { other = ProcessEnvironmentInfo().ThreadId(); }).join();
    EXPECT_NE(other, environment.ThreadId());
    EXPECT_GT(other, 0);
}

TEST(ProcessEnvironmentInfo, NamesTheHostForMachineAndUser) {
    ProcessEnvironmentInfo environment;
    char name[256] = {};
    ASSERT_EQ(gethostname(name, sizeof name - 1), 0);
    EXPECT_EQ(environment.SecondMachineText(), HostPart(name));
    EXPECT_EQ(environment.FirstUserText(), environment.SecondMachineText());
    EXPECT_NE(environment.FirstMachineText(), "");
    EXPECT_EQ(environment.SecondUserText(), LoginName(geteuid()));
}

TEST(HostPart, EndsAtTheFirstDot) {
    EXPECT_EQ(HostPart("worker7"), "worker7");
    EXPECT_EQ(HostPart("worker7.plant.example"), "worker7");
}

TEST(DomainPart, IsWhatFollowsTheFirstDot) {
    EXPECT_EQ(DomainPart("worker7.plant.example"), "plant.example");
    EXPECT_EQ(DomainPart("worker7."), "local");
    EXPECT_EQ(DomainPart("worker7"), "local");
}

}  // namespace
}  // namespace kxjob
