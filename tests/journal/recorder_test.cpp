#include "journal/recorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "journal/event_text.h"

namespace kxjob {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::KeepingSink;

class RecorderTest : public testing::Test {
protected:
    /// A call without arguments or result.
    template <typename Work>
    void Call(const char* operation, Work&& work) {
        recorder.Call("Object", operation, {}, work, [] { return Value(); });
    }
    void Call(const char* operation) {
        Call(operation, [] {});
    }
    void Enter(const char* method) { recorder.Enter("JobHelper", method, {}); }

    KeepingSink sink;
    Recorder recorder{sink};
};

TEST_F(RecorderTest, GivesACallTheLineThatItsMethodHasReached) {
    Enter("CreateJob");
    recorder.At(12);
    Call("First");
    recorder.At(15);
    Call("Second");
    EXPECT_THAT(sink.events, ElementsAre("enter CreateJob()", "CreateJob:12 Object.First()",
                                         "CreateJob:15 Object.Second()"));
}

TEST_F(RecorderTest, ReturnsToTheOuterMethodsLineWhenAnInnerOneLeaves) {
    Enter("CreateJob");
    recorder.At(12);
    Enter("GetJob");
    Call("BeforeAnyLine");
    recorder.At(7);
    Call("Inside");
    recorder.Leave("GetJob", nullptr, {});
    Call("Outside");
    EXPECT_THAT(sink.events,
                ElementsAre("enter CreateJob()", "enter GetJob()", "GetJob:0 Object.BeforeAnyLine()",
                            "GetJob:7 Object.Inside()", "leave GetJob()", "CreateJob:12 Object.Outside()"));
}

TEST_F(RecorderTest, ReturnsToTheOuterMethodsLineWhenAnInnerOneRaises) {
    Enter("CreateJob");
    recorder.At(12);
    Enter("GetJob");
    recorder.At(7);
    recorder.Raise("GetJob", {5, "source", "broken"});
    Call("Outside");
    EXPECT_THAT(sink.events, ElementsAre("enter CreateJob()", "enter GetJob()", "raise GetJob ! 5 broken",
                                         "CreateJob:12 Object.Outside()"));
}

TEST_F(RecorderTest, ShowsACallOutsideAnyMethodWithoutOne) {
    Call("Alone");
    recorder.Leave("NeverEntered", nullptr, {});
    Call("Alone");
    EXPECT_THAT(sink.events, ElementsAre(":0 Object.Alone()", "leave NeverEntered()", ":0 Object.Alone()"));
}

TEST_F(RecorderTest, ShowsAllArgumentsOnEnterAndThoseByReferenceOnLeave) {
    const std::string given = "{G}";
    std::string changed = "before";
    double rank = 0;
    const std::vector<Argument> arguments{
        {"JobGUID", given}, ByReference("Changed", changed), ByReference("JobRank", rank)};
    recorder.Enter("JobHelper", "GetNextJob", arguments);
    changed = "after";
    rank = 0.5;
    const Value result = true;
    recorder.Leave("GetNextJob", &result, arguments);
    EXPECT_THAT(sink.events, ElementsAre("enter GetNextJob(JobGUID='{G}', Changed='before', JobRank=0d)",
                                         "leave GetNextJob(Changed='after', JobRank=0.5d) = True"));
}

TEST_F(RecorderTest, HidesThePasswordOfAConnectionString) {
    const std::string connection = "DSN=x;PWD=tiger";
    const Value variant = "DSN=x;PWD=tiger";
    const std::string other = "PWD=no secret here";
    recorder.Enter("JobHelper", "A",
                   std::vector<Argument>{{"ConnectionString", connection}, {"Data", other}});
    recorder.Enter("JobHelper", "B", std::vector<Argument>{{"ConnectionString", variant}});
    EXPECT_THAT(sink.events,
                ElementsAre("enter A(ConnectionString='DSN=x;PWD=***', Data='PWD=no secret here')",
                            "enter B(ConnectionString='DSN=x;PWD=***')"));
}

TEST_F(RecorderTest, PassesTheResultOnAndShowsIt) {
    const std::string result = recorder.Call(
        "Object", "Operation", {1, "two"}, [] { return std::string("real"); },
        [](const std::string& text) { return Value("shown " + text); });
    EXPECT_EQ(result, "real");
    EXPECT_THAT(sink.events, ElementsAre(":0 Object.Operation(1, 'two') = 'shown real'"));
}

TEST_F(RecorderTest, WritesTheErrorOfAFailedCallAndRaisesItUnchanged) {
    try {
        Call("Fails", [] { throw AutomationError(-5, "somewhere", "broken", 77); });
        FAIL() << "nothing was raised";
    } catch (const AutomationError& error) {
        EXPECT_EQ(error.Number(), -5);
        EXPECT_EQ(error.Source(), "somewhere");
        EXPECT_EQ(error.Line(), 77);
    }
    Call("Next");
    EXPECT_THAT(sink.events, ElementsAre(":0 Object.Fails() ! -5 broken", ":0 Object.Next()"));
}

TEST_F(RecorderTest, ShowsAFailureOfAnotherKindAsAnInternalError) {
    EXPECT_THROW(Call("Fails", [] { throw std::runtime_error("odd"); }), std::runtime_error);
    EXPECT_THAT(sink.events, ElementsAre(":0 Object.Fails() ! -2146828237 odd"));
}

TEST_F(RecorderTest, LeavesOutWhatACollaboratorDoesForItself) {
    Enter("CreateJob");
    Call("Outer", [&] { Call("Inner"); });
    Call("Next");
    EXPECT_THAT(sink.events,
                ElementsAre("enter CreateJob()", "CreateJob:0 Object.Outer()", "CreateJob:0 Object.Next()"));
}

TEST_F(RecorderTest, RecordsAMethodThatACollaboratorCalls) {
    Call("Outer", [&] {
        Enter("Version");
        Call("Inner");
        recorder.Leave("Version", nullptr, {});
        Call("Unseen");
    });
    EXPECT_THAT(sink.events, ElementsAre("enter Version()", "Version:0 Object.Inner()", "leave Version()",
                                         ":0 Object.Outer()"));
}

TEST_F(RecorderTest, RecordsNothingOnceItIsDetached) {
    recorder.Detach();
    bool hasRun = false;
    Enter("CreateJob");
    Call("Works", [&] { hasRun = true; });
    recorder.Raise("CreateJob", {1, "", ""});
    EXPECT_TRUE(hasRun);
    EXPECT_THAT(sink.events, IsEmpty());
}

/// Fails the calls of one operation.
class FailingSink : public KeepingSink {
public:
    void BeforeCall(const JournalEvent& call) override {
        EXPECT_FALSE(call.result || call.error);
        if (call.operation == "Refused") throw AutomationError(9, "sink", "refused by the sink");
    }
};

TEST(RecorderWithAFailingSink, RaisesWhatTheSinkRaisesInPlaceOfTheCall) {
    FailingSink sink;
    Recorder recorder(sink);
    bool hasRun = false;
    const auto call = [&](const char* operation) {
        recorder.Call(
            "Object", operation, {}, [&] { hasRun = true; }, [] { return Value(); });
    };
    EXPECT_THROW(call("Refused"), AutomationError);
    EXPECT_FALSE(hasRun);
    call("Allowed");
    EXPECT_TRUE(hasRun);
    EXPECT_THAT(sink.events,
                ElementsAre(":0 Object.Refused() ! 9 refused by the sink", ":0 Object.Allowed()"));
}

}  // namespace
}  // namespace kxjob
