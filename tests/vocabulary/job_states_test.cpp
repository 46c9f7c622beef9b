#include <string>

#include "support/job_helper_test.h"

namespace kxjob {
namespace {

using ::testing::Throw;
using ::testing::ValuesIn;
using testing_support::ErrorOf;
using testing_support::JobHelperTest;

struct KnownState {
    const char* state;
    bool isComplete;
    bool isRunning;
};

constexpr KnownState kKnownStates[] = {
    {"CREATING", false, false}, {"READY", false, false},   {"QUEUED", false, true},
    {"RUNNING", false, true},   {"COMPLETE", true, false}, {"CANCELLED", true, false},
};

class KnownJobState : public JobHelperTest, public ::testing::WithParamInterface<KnownState> {};

TEST_P(KnownJobState, IsCompleteOnlyWhenNothingMoreWillHappen) {
    EXPECT_CALL(guard, CheckParameter(GetParam().state, "StateID"));

    EXPECT_EQ(helper.IsJobComplete(GetParam().state), GetParam().isComplete);
}

TEST_P(KnownJobState, IsRunningWhenQueuedOrRunning) {
    EXPECT_CALL(guard, CheckParameter(GetParam().state, "StateID"));

    EXPECT_EQ(helper.IsJobRunning(GetParam().state), GetParam().isRunning);
}

TEST_P(KnownJobState, NeedsNoObjectFactoryAndIsNoError) {
    EXPECT_CALL(guard, CheckParameter(GetParam().state, "StateID")).Times(2);

    helper.IsJobComplete(GetParam().state);
    helper.IsJobRunning(GetParam().state);

    EXPECT_EQ(made.objectFactories, 0);
    EXPECT_TRUE(debugTools->told.empty());
}

INSTANTIATE_TEST_SUITE_P(EveryState, KnownJobState, ValuesIn(kKnownStates),
                         [](const auto& instance) { return std::string(instance.param.state); });

struct UnknownState {
    const char* name;
    const char* state;
    const char* description;
};

constexpr UnknownState kUnknownStates[] = {
    {"LowerCase", "cancelled", "The Job StateID 'cancelled' is not known"},
    {"MixedCase", "Running", "The Job StateID 'Running' is not known"},
    {"OneLetterInLowerCase", "QUEUEd", "The Job StateID 'QUEUEd' is not known"},
    {"StateOfJobTasks", "FAILED", "The Job StateID 'FAILED' is not known"},
    {"ApplicationState", "PRODUCTION", "The Job StateID 'PRODUCTION' is not known"},
    {"Empty", "", "The Job StateID '' is not known"},
    {"BlankBehind", "READY ", "The Job StateID 'READY ' is not known"},
    {"BlankInFront", " READY", "The Job StateID ' READY' is not known"},
    {"BeginningOfAState", "READ", "The Job StateID 'READ' is not known"},
    {"AStateAndMore", "COMPLETED", "The Job StateID 'COMPLETED' is not known"},
    {"WithQuotes", "O'Neil", "The Job StateID 'O'Neil' is not known"},
};

class UnknownJobState : public JobHelperTest, public ::testing::WithParamInterface<UnknownState> {};

TEST_P(UnknownJobState, IsRefusedByIsJobCompleteWith743) {
    EXPECT_CALL(guard, CheckParameter(GetParam().state, "StateID"));

    ExpectOwnError([&] { helper.IsJobComplete(GetParam().state); }, 743, "IsJobComplete",
                   GetParam().description, {"IsJobComplete"});
}

TEST_P(UnknownJobState, IsRefusedByIsJobRunningWith744) {
    EXPECT_CALL(guard, CheckParameter(GetParam().state, "StateID"));

    ExpectOwnError([&] { helper.IsJobRunning(GetParam().state); }, 744, "IsJobRunning",
                   GetParam().description, {"IsJobRunning"});
}

INSTANTIATE_TEST_SUITE_P(EveryKind, UnknownJobState, ValuesIn(kUnknownStates),
                         [](const auto& instance) { return std::string(instance.param.name); });

class IsJobComplete : public JobHelperTest {};

TEST_F(IsJobComplete, RaisesThePublishedNumberForAnUnknownState) {
    EXPECT_CALL(guard, CheckParameter("DONE", "StateID"));

    const AutomationError error = ErrorOf([&] { helper.IsJobComplete("DONE"); });

    EXPECT_EQ(error.Number(), -2147220761);
    EXPECT_EQ(error.Source(), "Job_83.JobHelper.IsJobComplete");
}

TEST_F(IsJobComplete, PassesOnTheRefusalOfTheGuard) {
    const AutomationError refusal(-77, "The guard", "not this text");
    EXPECT_CALL(guard, CheckParameter("COMPLETE", "StateID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.IsJobComplete("COMPLETE"); }, refusal, {"IsJobComplete"});
}

TEST_F(IsJobComplete, AsksTheGuardBeforeItRefusesAnUnknownState) {
    const AutomationError refusal(-77, "The guard", "not this text");
    EXPECT_CALL(guard, CheckParameter("x';--", "StateID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.IsJobComplete("x';--"); }, refusal, {"IsJobComplete"});
}

TEST_F(IsJobComplete, IsFalseWhenTheErrorIsSwallowed) {
    debugTools->returnsInsteadOfRaising = true;
    EXPECT_CALL(guard, CheckParameter("DONE", "StateID"));

    EXPECT_FALSE(helper.IsJobComplete("DONE"));
    EXPECT_EQ(debugTools->told.size(), 1U);
}

class IsJobRunning : public JobHelperTest {};

TEST_F(IsJobRunning, RaisesThePublishedNumberForAnUnknownState) {
    EXPECT_CALL(guard, CheckParameter("DONE", "StateID"));

    const AutomationError error = ErrorOf([&] { helper.IsJobRunning("DONE"); });

    EXPECT_EQ(error.Number(), -2147220760);
    EXPECT_EQ(error.Source(), "Job_83.JobHelper.IsJobRunning");
}

TEST_F(IsJobRunning, PassesOnTheRefusalOfTheGuard) {
    const AutomationError refusal(-77, "The guard", "not this text");
    EXPECT_CALL(guard, CheckParameter("RUNNING", "StateID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.IsJobRunning("RUNNING"); }, refusal, {"IsJobRunning"});
}

TEST_F(IsJobRunning, AsksTheGuardBeforeItRefusesAnUnknownState) {
    const AutomationError refusal(-77, "The guard", "not this text");
    EXPECT_CALL(guard, CheckParameter("x';--", "StateID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.IsJobRunning("x';--"); }, refusal, {"IsJobRunning"});
}

}  // namespace
}  // namespace kxjob
