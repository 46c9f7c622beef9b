#include "siblings/timer.h"

#include <gtest/gtest.h>

#include "defaults/store/store_test_support.h"
#include "kxjob/automation_error.h"
#include "kxjob/value.h"

namespace kxjob {
namespace {

using testing_support::ErrorOf;

TEST(Timer, ShowsNothingBeforeItsStart) {
    EXPECT_EQ(Timer().Get("Duration"), Value(0.0));
}

TEST(Timer, GoesOnWhileItIsRead) {
    Timer timer;
    timer.Call("Start", {});
    const double first = timer.Get("Duration").ToDouble();
    double later = first;
    while (later == first) later = timer.Get("Duration").ToDouble();
    EXPECT_GE(first, 0);
    EXPECT_GT(later, first);
    EXPECT_LT(later, 60);
}

TEST(Timer, BeginsAgainWithEachStart) {
    Timer timer;
    timer.Call("Start", {});
    while (timer.Get("Duration").ToDouble() < 0.02) {
    }
    timer.Call("Start", {});
    EXPECT_LT(timer.Get("Duration").ToDouble(), 0.02);
}

TEST(Timer, KeepsItsModuleNameAndLogLevel) {
    Timer timer;
    const Value name[] = {"DurationTimer"};
    EXPECT_EQ(timer.Call("setModuleName", name), Value());
    timer.Let("logLevel", 4);
    EXPECT_EQ(timer.Get("moduleName"), Value("DurationTimer"));
    EXPECT_EQ(timer.Get("logLevel"), Value(4));
}

TEST(Timer, HasNoOtherMembers) {
    Timer timer;
    EXPECT_EQ(ErrorOf([&] { timer.Get("Start"); }).Number(), error_number::kUnknownMember);
    EXPECT_EQ(ErrorOf([&] { timer.Let("Duration", 1); }).Number(), error_number::kUnknownMember);
    EXPECT_EQ(ErrorOf([&] { timer.Call("Stop", {}); }).Number(), error_number::kUnknownMember);
    EXPECT_EQ(ErrorOf([&] { timer.Call("setModuleName", {}); }).Number(), error_number::kWrongArgumentCount);
}

}  // namespace
}  // namespace kxjob
