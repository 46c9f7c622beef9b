#include "frame/frame.h"

#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/job_helper_test.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using ::testing::Return;
using ::testing::StrictMock;
using ::testing::Throw;
using testing_support::ErrorOf;
using testing_support::JobHelperTest;
using testing_support::kFailure;
using testing_support::MockComponent;

/// A method that does one thing, which fails.
void FailingMethod(const char* method) {
    InFrame(method, {}, [](Frame& frame) { frame.CheckParameter("value", "Name"); });
}

class ErrorHandler : public JobHelperTest {
protected:
    void FailGuardWith(const AutomationError& error) {
        EXPECT_CALL(guard, CheckParameter("value", "Name")).WillOnce(Throw(error));
    }
    /// The error-logging component of this test's own; it is expected to be made once.
    std::shared_ptr<StrictMock<MockComponent>> ExpectOwnDebugTools() {
        auto component = std::make_shared<StrictMock<MockComponent>>();
        EXPECT_CALL(platform, CreateObject("DebugTools_83.Helper")).WillOnce(Return(component));
        return component;
    }
};

TEST_F(ErrorHandler, HandsOverSixArgumentsInTheirOrder) {
    FailGuardWith(kFailure);
    std::vector<Value> arguments;
    const auto debug = ExpectOwnDebugTools();
    EXPECT_CALL(*debug, CallMember("LogAndReRaiseVBError", ::testing::_))
        .WillOnce([&](const std::string&, const std::vector<Value>& given) -> Value {
            arguments = given;
            throw kFailure;
        });

    int line = 0;
    const auto call = [&] {
        InFrame("Probe", {}, [&](Frame& frame) {
            line = __LINE__ + 1;
            frame.CheckParameter("value", "Name");
        });
    };
    ErrorOf(call);

    ASSERT_EQ(arguments.size(), 6U);
    Component& error = *arguments[0].Object();
    EXPECT_EQ(error.Get("Number"), Value(-88));
    EXPECT_EQ(error.Get("Source"), Value("A collaborator"));
    EXPECT_EQ(error.Get("Description"), Value("it failed"));
    Component& application = *arguments[1].Object();
    EXPECT_EQ(application.Get("Title"), Value("Job_83"));
    EXPECT_EQ(application.Get("Major"), Value(8));
    EXPECT_EQ(application.Get("Minor"), Value(3));
    EXPECT_EQ(application.Get("Revision"), Value(1202));
    EXPECT_EQ(arguments[2], Value(line));
    EXPECT_EQ(arguments[3], Value("Job_83"));
    EXPECT_EQ(arguments[4], Value("JobHelper"));
    EXPECT_EQ(arguments[5], Value("Probe"));
}

TEST_F(ErrorHandler, NamesTheClassOfTheMethod) {
    FailGuardWith(kFailure);

    ErrorOf([] {
        InFrameOf("DurationTimer", "Start", {}, [](Frame& frame) { frame.CheckParameter("value", "Name"); });
    });

    ASSERT_EQ(debugTools->told.size(), 1U);
    EXPECT_EQ(debugTools->told[0].project, "Job_83");
    EXPECT_EQ(debugTools->told[0].className, "DurationTimer");
    EXPECT_EQ(debugTools->told[0].method, "Start");
}

TEST_F(ErrorHandler, TellsNothingWithoutAnError) {
    EXPECT_CALL(guard, CheckParameter("value", "Name"));
    EXPECT_CALL(platform, CreateObject).Times(0);

    FailingMethod("Probe");
}

TEST_F(ErrorHandler, ReportsTheLineOfTheStatementThatFailed) {
    EXPECT_CALL(guard, CheckParameter("first", "A"));
    EXPECT_CALL(guard, CheckParameter("second", "B")).WillOnce(Throw(kFailure));
    int line = 0;
    const auto call = [&] {
        InFrame("Probe", {}, [&](Frame& frame) {
            frame.CheckParameter("first", "A");
            line = __LINE__ + 1;
            frame.CheckParameter("second", "B");
            frame.CheckParameter("third", "C");
        });
    };

    const AutomationError error = ErrorOf(call);

    ASSERT_EQ(debugTools->told.size(), 1U);
    EXPECT_EQ(debugTools->told[0].line, line);
    EXPECT_EQ(error.Line(), line);
}

TEST_F(ErrorHandler, ReportsTheLineOfARaise) {
    int line = 0;
    const auto call = [&] {
        InFrame("Probe", {}, [&](Frame& frame) {
            line = __LINE__ + 1;
            frame.Raise(747, "No");
        });
    };

    EXPECT_EQ(ErrorOf(call).Line(), line);
    ASSERT_EQ(debugTools->told.size(), 1U);
    EXPECT_EQ(debugTools->told[0].line, line);
}

TEST_F(ErrorHandler, ReportsTheLineAtWhichAnObjectIsUsed) {
    int line = 0;
    const auto call = [&] {
        InFrame("Probe", {}, [&](Frame& frame) {
            const Value text = "no number";
            line = __LINE__ + 1;
            return frame.Use(text).ToInt32();
        });
    };

    ErrorOf(call);

    ASSERT_EQ(debugTools->told.size(), 1U);
    EXPECT_EQ(debugTools->told[0].number, static_cast<std::int32_t>(0x800A000DU));
    EXPECT_EQ(debugTools->told[0].line, line);
}

TEST_F(ErrorHandler, ReportsADifferentLineForEachStatementOfAMethod) {
    const auto call = [&] { helper.UpdateJobTaskLock("db", "kx_", "{T}", "{L}"); };
    EXPECT_CALL(factory, CreateVersioned).WillOnce(Throw(kFailure)).WillRepeatedly(Return(tableNames));
    EXPECT_CALL(guard, CheckParameter)
        .WillOnce(Throw(kFailure))
        .WillOnce(Return())
        .WillOnce(Throw(kFailure))
        .WillRepeatedly(Return());
    EXPECT_CALL(data, Execute).WillOnce(Throw(kFailure));

    for (int failing = 0; failing < 4; ++failing) ErrorOf(call);

    ASSERT_EQ(debugTools->told.size(), 4U);
    for (std::size_t i = 1; i < 4; ++i) {
        EXPECT_GT(debugTools->told[i].line, debugTools->told[i - 1].line);
    }
}

TEST_F(ErrorHandler, ReportsTheLineOfEachFrameItsOwn) {
    FailGuardWith(kFailure);
    int innerLine = 0;
    int outerLine = 0;
    const auto inner = [&] {
        InFrame("Inner", {}, [&](Frame& frame) {
            innerLine = __LINE__ + 1;
            frame.CheckParameter("value", "Name");
        });
    };
    const auto outer = [&] {
        InFrame("Outer", {}, [&](Frame& frame) {
            outerLine = __LINE__ + 1;
            frame.Use(inner)();
        });
    };

    ErrorOf(outer);

    ASSERT_EQ(debugTools->told.size(), 2U);
    EXPECT_EQ(debugTools->told[0].line, innerLine);
    EXPECT_EQ(debugTools->told[1].line, outerLine);
}

TEST_F(ErrorHandler, TellsOnceInEachFrameInnermostFirst) {
    FailGuardWith(kFailure);

    const auto middle = [] {
        InFrame("Middle", {}, [](Frame& frame) { frame.Use(FailingMethod)("Inner"); });
    };

    ExpectPassedOn([&] { InFrame("Outer", {}, [&](Frame& frame) { frame.Use(middle)(); }); }, kFailure,
                   {"Inner", "Middle", "Outer"});
}

TEST_F(ErrorHandler, MakesAFreshErrorLoggingComponentInEachFrame) {
    FailGuardWith(kFailure);
    EXPECT_CALL(platform, CreateObject("DebugTools_83.Helper"))
        .Times(2)
        .WillRepeatedly([](const std::string&) -> ComponentRef {
            return std::make_shared<testing_support::FakeDebugTools>();
        });

    ErrorOf([] { InFrame("Outer", {}, [](Frame&) { FailingMethod("Inner"); }); });
}

TEST_F(ErrorHandler, NamesTheMethodAsTheSourceOfAnOwnError) {
    ExpectOwnError([] { InFrame("Probe", {}, [](Frame& frame) { frame.Raise(854, "A sentence."); }); }, 854,
                   "Probe", "A sentence.", {"Probe"});
}

TEST_F(ErrorHandler, RaisesThePendingErrorUnchangedWhenNothingCanLogIt) {
    FailGuardWith(kFailure);
    EXPECT_CALL(platform, CreateObject("DebugTools_83.Helper"))
        .WillOnce(Throw(AutomationError(-1, "The platform", "no such class")));

    ExpectPassedOn([] { FailingMethod("Probe"); }, kFailure, {});
}

TEST_F(ErrorHandler, AsksForTheErrorLoggingComponentInEveryFrameEvenWhenThereIsNone) {
    FailGuardWith(kFailure);
    EXPECT_CALL(platform, CreateObject("DebugTools_83.Helper"))
        .Times(2)
        .WillRepeatedly(Throw(std::runtime_error("no such class")));

    ExpectPassedOn([] { InFrame("Outer", {}, [](Frame&) { FailingMethod("Inner"); }); }, kFailure, {});
}

TEST_F(ErrorHandler, LetsAnotherErrorOfTheErrorLoggingComponentReachTheCaller) {
    FailGuardWith(kFailure);
    const AutomationError other(-99, "The error log", "the disk is full");
    const auto debug = ExpectOwnDebugTools();
    EXPECT_CALL(*debug, CallMember("LogAndReRaiseVBError", ::testing::_)).WillOnce(Throw(other));

    ExpectPassedOn([] { FailingMethod("Probe"); }, other, {});
}

TEST_F(ErrorHandler, MakesAnAutomationErrorOfWhateverTheErrorLoggingComponentThrows) {
    FailGuardWith(kFailure);
    const auto debug = ExpectOwnDebugTools();
    EXPECT_CALL(*debug, CallMember("LogAndReRaiseVBError", ::testing::_))
        .WillOnce(Throw(std::runtime_error("boom")));

    const AutomationError error = ErrorOf([] { FailingMethod("Probe"); });

    EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x800A0033U));
    EXPECT_EQ(error.Description(), "Internal error: boom");
}

TEST_F(ErrorHandler, KeepsTheLineWhenTheErrorIsRaisedAgainWithoutOne) {
    FailGuardWith(kFailure);
    const auto debug = ExpectOwnDebugTools();
    EXPECT_CALL(*debug, CallMember("LogAndReRaiseVBError", ::testing::_)).WillOnce(Throw(kFailure));
    int line = 0;
    const auto call = [&] {
        InFrame("Probe", {}, [&](Frame& frame) {
            line = __LINE__ + 1;
            frame.CheckParameter("value", "Name");
        });
    };

    EXPECT_EQ(ErrorOf(call).Line(), line);
}

TEST_F(ErrorHandler, ReportsThatMemoryRanOut) {
    EXPECT_CALL(guard, CheckParameter).WillOnce(Throw(std::bad_alloc()));

    ExpectPassedOn([] { FailingMethod("Probe"); },
                   AutomationError(static_cast<std::int32_t>(0x800A0007U), "Job_83", "Out of memory"),
                   {"Probe"});
}

TEST_F(ErrorHandler, ReportsAnyOtherExceptionAsAnInternalError) {
    EXPECT_CALL(guard, CheckParameter).WillOnce(Throw(std::out_of_range("index 7")));

    ExpectPassedOn(
        [] { FailingMethod("Probe"); },
        AutomationError(static_cast<std::int32_t>(0x800A0033U), "Job_83", "Internal error: index 7"),
        {"Probe"});
}

TEST_F(ErrorHandler, ReportsWhatIsNoExceptionAsAnInternalError) {
    EXPECT_CALL(guard, CheckParameter).WillOnce(Throw(42));

    ExpectPassedOn([] { FailingMethod("Probe"); },
                   AutomationError(static_cast<std::int32_t>(0x800A0033U), "Job_83", "Internal error"),
                   {"Probe"});
}

class ExplainedErrors : public ErrorHandler {
protected:
    static void ExplainedMethod() {
        InFrame("Probe", {}, [](Frame& frame) {
            frame.ExplainErrors("While sweeping.");
            frame.CheckParameter("value", "Name");
        });
    }
};

TEST_F(ExplainedErrors, CarryTheSentenceAndTwoLineBreaksInFront) {
    FailGuardWith(kFailure);

    ExpectPassedOn(ExplainedMethod,
                   AutomationError(-88, "A collaborator", "While sweeping.\r\n\r\nit failed"), {"Probe"});
}

TEST_F(ExplainedErrors, CarryItWhenNothingCanLogThem) {
    FailGuardWith(kFailure);
    EXPECT_CALL(platform, CreateObject("DebugTools_83.Helper")).WillOnce(Throw(std::bad_alloc()));

    EXPECT_EQ(ErrorOf(ExplainedMethod).Description(), "While sweeping.\r\n\r\nit failed");
}

TEST_F(ExplainedErrors, CarryItOnceThroughAnOuterFrame) {
    FailGuardWith(kFailure);

    ExpectPassedOn([] { InFrame("Outer", {}, [](Frame& frame) { frame.Use(ExplainedMethod)(); }); },
                   AutomationError(-88, "A collaborator", "While sweeping.\r\n\r\nit failed"),
                   {"Probe", "Outer"});
}

TEST_F(ExplainedErrors, CarryTheLaterSentence) {
    FailGuardWith(kFailure);

    ExpectPassedOn(
        [] {
            InFrame("Probe", {}, [](Frame& frame) {
                frame.ExplainErrors("While looking.");
                frame.ExplainErrors("While removing.");
                frame.CheckParameter("value", "Name");
            });
        },
        AutomationError(-88, "A collaborator", "While removing.\r\n\r\nit failed"), {"Probe"});
}

TEST_F(ExplainedErrors, AreLeftAloneAfterAnEmptySentence) {
    FailGuardWith(kFailure);

    ExpectPassedOn(
        [] {
            InFrame("Probe", {}, [](Frame& frame) {
                frame.ExplainErrors("While looking.");
                frame.ExplainErrors("");
                frame.CheckParameter("value", "Name");
            });
        },
        kFailure, {"Probe"});
}

TEST_F(ExplainedErrors, ExplainNothingThatTheErrorLoggingComponentRaisesItself) {
    FailGuardWith(kFailure);
    const AutomationError other(-99, "The error log", "the disk is full");
    const auto debug = ExpectOwnDebugTools();
    EXPECT_CALL(*debug, CallMember("LogAndReRaiseVBError", ::testing::_)).WillOnce(Throw(other));

    ExpectPassedOn(ExplainedMethod, other, {});
}

class SwallowedError : public ErrorHandler {
protected:
    SwallowedError() { debugTools->returnsInsteadOfRaising = true; }
};

TEST_F(SwallowedError, GivesEmptyText) {
    EXPECT_CALL(trace, VersionOf).WillOnce(Throw(kFailure));

    EXPECT_EQ(helper.Version(), "");
    EXPECT_EQ(debugTools->told.size(), 1U);
}

TEST_F(SwallowedError, GivesFalse) {
    EXPECT_CALL(guard, CheckParameter("RUNNING", "StateID")).WillOnce(Throw(kFailure));

    EXPECT_FALSE(helper.IsJobRunning("RUNNING"));
    EXPECT_EQ(debugTools->told.size(), 1U);
}

TEST_F(SwallowedError, GivesEmpty) {
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(kFailure));

    EXPECT_TRUE(helper.GetJobTasks("db", 2, "kx_").IsEmpty());
    EXPECT_EQ(debugTools->told.size(), 1U);
}

TEST_F(SwallowedError, EndsAMethodWithoutResultQuietlyAndDoesNoMore) {
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(kFailure));

    EXPECT_NO_THROW(helper.UpdateTaskCommand("db", "kx_", "{T}", "STOP"));
    EXPECT_EQ(debugTools->told.size(), 1U);
}

TEST_F(SwallowedError, OfAPrivateMethodGivesItsDefaultToThePublicOne) {
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter).WillRepeatedly(Return());
    EXPECT_CALL(data, Query).WillOnce(Throw(kFailure));

    EXPECT_TRUE(helper.GetJobExecutionStatistics("db", 2, "kx_", "{J}").IsEmpty());
    ExpectTold(kFailure, {"piGetJobExecutionStatistics"});
}

TEST_F(SwallowedError, OfThePrivateDocumentLeavesThePublicMethodWithoutAnObject) {
    EXPECT_CALL(platform, CreateObject("cfgApiCom_83.ComVTLConfigHelper")).WillOnce(Throw(kFailure));

    EXPECT_TRUE(helper.GetJobTasks("", 2, "kx_").IsEmpty());

    ASSERT_EQ(debugTools->told.size(), 2U);
    EXPECT_EQ(debugTools->told[0].method, "RMConnectionDocument");
    EXPECT_EQ(debugTools->told[0].number, -88);
    EXPECT_EQ(debugTools->told[1].method, "GetJobTasks");
    EXPECT_EQ(debugTools->told[1].number, static_cast<std::int32_t>(0x800A005BU));
}

}  // namespace
}  // namespace kxjob
