#include "kxjob/call_journal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

#include "frame/error_object.h"
#include "journal/event_text.h"
#include "kxjob/automation_error.h"
#include "kxjob/collection.h"
#include "kxjob/job_helper.h"

namespace kxjob {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::SizeIs;
using testing::StartsWith;
using testing_support::KeepingSink;

TEST(CallJournal, WritesWhatAMethodDoesInOrder) {
    KeepingSink sink;
    {
        const CallJournal journal(sink);
        EXPECT_TRUE(JobHelper().IsJobRunning("QUEUED"));
    }
    EXPECT_THAT(
        sink.events,
        ElementsAre(
            "enter IsJobRunning(StateId='QUEUED')",
            MatchesRegex("IsJobRunning:[1-9][0-9]* InputGuard.CheckParameter\\('QUEUED', 'StateID'\\)"),
            "leave IsJobRunning() = True"));
}

TEST(CallJournal, WritesWhatAFailingMethodDoes) {
    KeepingSink sink;
    {
        const CallJournal journal(sink);
        EXPECT_THROW(JobHelper().IsJobRunning("queued"), AutomationError);
    }
    const std::string error = " ! -2147220760 The Job StateID 'queued' is not known";
    EXPECT_THAT(
        sink.events,
        ElementsAre("enter IsJobRunning(StateId='queued')", HasSubstr("InputGuard.CheckParameter"),
                    EndsWith("Platform.CreateObject('DebugTools_83.Helper') = <DebugTools_83.Helper>"),
                    AllOf(HasSubstr(" DebugTools_83.Helper.LogAndReRaiseVBError(<Err>, <Application>, "),
                          EndsWith("'Job_83', 'JobHelper', 'IsJobRunning')" + error)),
                    "raise IsJobRunning" + error));
}

TEST(CallJournal, SeesNothingBeforeAndAfterItsLife) {
    KeepingSink sink;
    JobHelper helper;
    helper.ParameterTagName();
    {
        const CallJournal journal(sink);
        helper.ParameterTagName();
    }
    helper.ParameterTagName();
    EXPECT_THAT(sink.events,
                ElementsAre("enter ParameterTagName()", "leave ParameterTagName() = 'parameter'"));
}

/// Refuses the first call.
class RefusingSink : public KeepingSink {
public:
    void BeforeCall(const JournalEvent& /*call*/) override {
        if (hasRefused_) return;
        hasRefused_ = true;
        throw AutomationError(4711, "test", "the first call fails");
    }

private:
    bool hasRefused_ = false;
};

TEST(CallJournal, LetsASinkFailACallAsIfTheCollaboratorHad) {
    RefusingSink sink;
    const CallJournal journal(sink);
    try {
        JobHelper().IsJobRunning("QUEUED");
        FAIL() << "nothing was raised";
    } catch (const AutomationError& error) {
        EXPECT_EQ(error.Number(), 4711);
        EXPECT_EQ(error.Description(), "the first call fails");
    }
    ASSERT_THAT(sink.events, SizeIs(5));
    EXPECT_THAT(sink.events[1],
                EndsWith("InputGuard.CheckParameter('QUEUED', 'StateID') ! 4711 the first call fails"));
    EXPECT_THAT(sink.events[4], StartsWith("raise IsJobRunning ! 4711"));
}

TEST(HeldError, IsTheErrorOfTheErrorObject) {
    const Value held =
        ComponentRef(std::make_shared<ErrorObject>(AutomationError(-7, "source", "description")));
    const std::optional<AutomationError> error = HeldError(held);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), -7);
    EXPECT_EQ(error->Source(), "source");
    EXPECT_EQ(error->Description(), "description");
}

/// Has the error object's name and nothing else of it.
class Namesake : public Component {
public:
    std::string Name() const override { return "Err"; }
};

TEST(HeldError, IsNoneForAnyOtherValue) {
    EXPECT_FALSE(HeldError(Value()));
    EXPECT_FALSE(HeldError("Err"));
    EXPECT_FALSE(HeldError(ComponentRef()));
    EXPECT_FALSE(HeldError(ComponentRef(std::make_shared<Collection>())));
    EXPECT_FALSE(HeldError(ComponentRef(std::make_shared<Namesake>())));
}

}  // namespace
}  // namespace kxjob
