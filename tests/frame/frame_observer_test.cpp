#include <memory>
#include <string>

#include "frame/factory_over_fixture.h"
#include "frame/frame.h"
#include "kxjob/duration_timer.h"
#include "support/job_helper_test.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using ::testing::_;
using ::testing::InSequence;
using ::testing::IsNull;
using ::testing::Pointee;
using ::testing::Property;
using ::testing::Return;
using ::testing::SizeIs;
using ::testing::StrictMock;
using ::testing::Throw;
using testing_support::ErrorOf;
using testing_support::JobHelperTest;
using testing_support::kFailure;
using testing_support::MockComponent;
using testing_support::MockMethodObserver;
using testing_support::ObservedFactory;

class ObservedMethod : public JobHelperTest {
protected:
    ObservedMethod() {
        InstallCollaborators(std::make_shared<ObservedFactory>(ThisThread().SharedFactory(), observerRef));
    }

    std::shared_ptr<StrictMock<MockMethodObserver>> observerRef =
        std::make_shared<StrictMock<MockMethodObserver>>();
    MockMethodObserver& observer = *observerRef;
};

TEST_F(ObservedMethod, IsEnteredReachesItsStatementsAndIsLeft) {
    const auto body = [](Frame& frame) {
        frame.CheckParameter("value", "Name");
        frame.Trace(kProgress, "message");
    };
    const int end = __LINE__ - 1;
    InSequence inThisOrder;
    EXPECT_CALL(observer, Enter("JobHelper", "Probe", SizeIs(0)));
    EXPECT_CALL(observer, At(end - 2));
    EXPECT_CALL(guard, CheckParameter("value", "Name"));
    EXPECT_CALL(observer, At(end - 1));
    ExpectTrace("message", 4, "Probe");
    EXPECT_CALL(observer, Leave("Probe", IsNull(), SizeIs(0)));

    InFrame("Probe", {}, body);
}

TEST_F(ObservedMethod, ReachesEachLineThatAsksAboutAnArray) {
    const Value array = Array::List({"a", "b"});
    const auto body = [&array](Frame& frame) {
        frame.LowerBound(array);
        frame.UpperBound(array);
        frame.ElementCount(array);
        frame.DimensionCount(array);
    };
    const int end = __LINE__ - 1;
    InSequence inThisOrder;
    EXPECT_CALL(observer, Enter("JobHelper", "Probe", SizeIs(0)));
    for (int line = end - 4; line < end; ++line) EXPECT_CALL(observer, At(line));
    EXPECT_CALL(observer, Leave("Probe", IsNull(), SizeIs(0)));

    InFrame("Probe", {}, body);
}

TEST_F(ObservedMethod, IsLeftWithItsResult) {
    InSequence inThisOrder;
    EXPECT_CALL(observer, Enter("JobHelper", "ParameterTagName", SizeIs(0)));
    EXPECT_CALL(observer, Leave("ParameterTagName", Pointee(Value("parameter")), SizeIs(0)));

    helper.ParameterTagName();
}

TEST_F(ObservedMethod, RaisesAfterTheErrorLoggingComponentHasBeenTold) {
    InSequence inThisOrder;
    EXPECT_CALL(observer, Enter("JobHelper", "Probe", _));
    EXPECT_CALL(observer, At(_));
    EXPECT_CALL(guard, CheckParameter("value", "Name")).WillOnce(Throw(kFailure));
    EXPECT_CALL(platform, CreateObject("DebugTools_83.Helper")).WillOnce(Return(debugTools));
    EXPECT_CALL(observer, Raise("Probe", Property(&AutomationError::Number, -88))).WillOnce([&] {
        EXPECT_EQ(debugTools->told.size(), 1U);
    });

    ErrorOf([] { InFrame("Probe", {}, [](Frame& frame) { frame.CheckParameter("value", "Name"); }); });
}

TEST_F(ObservedMethod, RaisesWhatReachesTheCaller) {
    const auto debug = std::make_shared<StrictMock<MockComponent>>();
    InSequence inThisOrder;
    EXPECT_CALL(observer, Enter);
    EXPECT_CALL(observer, At);
    EXPECT_CALL(platform, CreateObject("DebugTools_83.Helper")).WillOnce(Return(debug));
    EXPECT_CALL(*debug, CallMember).WillOnce(Throw(kFailure));
    EXPECT_CALL(observer, Raise("Probe", Property(&AutomationError::Description, "it failed")));

    ErrorOf([] { InFrame("Probe", {}, [](Frame& frame) { frame.Raise(747, "No update specified"); }); });
}

TEST_F(ObservedMethod, RaisesThePendingErrorWhenNothingCanLogIt) {
    InSequence inThisOrder;
    EXPECT_CALL(observer, Enter);
    EXPECT_CALL(observer, At);
    EXPECT_CALL(platform, CreateObject("DebugTools_83.Helper")).WillOnce(Throw(kFailure));
    EXPECT_CALL(observer, Raise("Probe", Property(&AutomationError::Description, "No update specified")));

    ErrorOf([] { InFrame("Probe", {}, [](Frame& frame) { frame.Raise(747, "No update specified"); }); });
}

TEST_F(ObservedMethod, IsLeftWithTheDefaultResultWhenTheErrorIsSwallowed) {
    debugTools->returnsInsteadOfRaising = true;
    InSequence inThisOrder;
    EXPECT_CALL(observer, Enter("JobHelper", "IsJobRunning", _));
    EXPECT_CALL(observer, At(_));
    EXPECT_CALL(guard, CheckParameter("RUNNING", "StateID")).WillOnce(Throw(kFailure));
    EXPECT_CALL(observer, Leave("IsJobRunning", Pointee(Value(false)), _));

    EXPECT_FALSE(helper.IsJobRunning("RUNNING"));
}

TEST_F(ObservedMethod, SurroundsTheMethodsThatItCalls) {
    InSequence inThisOrder;
    EXPECT_CALL(observer, Enter("JobHelper", "UnRegisterJobTask", SizeIs(3)));
    EXPECT_CALL(observer, At(_));
    EXPECT_CALL(observer, Enter("JobHelper", "UnRegisterJobTaskIndicatingStatus", SizeIs(4)));
    EXPECT_CALL(observer, At(_));
    ExpectTableNames();
    EXPECT_CALL(observer, At(_));
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID")).WillOnce(Throw(kFailure));
    EXPECT_CALL(observer, Raise("UnRegisterJobTaskIndicatingStatus", _));
    EXPECT_CALL(observer, Raise("UnRegisterJobTask", _));

    ErrorOf([&] { helper.UnRegisterJobTask("db", "kx_", "{T}"); });
}

TEST_F(ObservedMethod, ShowsPrivateMethodsUnderTheirOwnNames) {
    EXPECT_CALL(observer, At(_)).Times(::testing::AnyNumber());
    EXPECT_CALL(guard, CheckParameter).WillRepeatedly(Return());
    EXPECT_CALL(data, Query).WillRepeatedly(Return(Value()));
    EXPECT_CALL(factory, CreateVersioned).WillRepeatedly(Return(tableNames));
    InSequence inThisOrder;
    EXPECT_CALL(observer, Enter("JobHelper", "GetJobExecutionStatistics", SizeIs(4)));
    EXPECT_CALL(observer, Enter("JobHelper", "piGetJobExecutionStatistics", SizeIs(5)));
    EXPECT_CALL(observer, Leave("piGetJobExecutionStatistics", Pointee(Value()), _));
    EXPECT_CALL(observer, Leave("GetJobExecutionStatistics", Pointee(Value()), _));

    helper.GetJobExecutionStatistics("db", 2, "kx_", "{J}");
}

TEST_F(ObservedMethod, ShowsThePrivateDocumentByItsClass) {
    EXPECT_CALL(observer, At(_)).Times(::testing::AnyNumber());
    EXPECT_CALL(guard, CheckParameter).WillRepeatedly(Return());
    EXPECT_CALL(data, Query).WillRepeatedly(Return(Value()));
    EXPECT_CALL(factory, CreateVersioned).WillRepeatedly(Return(tableNames));
    ExpectConfiguration("cfgdb", 5, "cfg_");
    InSequence inThisOrder;
    EXPECT_CALL(observer, Enter("JobHelper", "GetJobTasks", _));
    EXPECT_CALL(observer, Enter("JobHelper", "RMConnectionDocument", SizeIs(0)));
    EXPECT_CALL(observer, Leave("RMConnectionDocument", _, _))
        .WillOnce([](std::string_view, const Value* result, Arguments) {
            ASSERT_NE(result, nullptr);
            EXPECT_EQ(result->Object()->Name(), "ConnectionSettings");
        });
    EXPECT_CALL(observer, Leave("GetJobTasks", _, _));

    helper.GetJobTasks("", 2, "");
}

TEST_F(ObservedMethod, ShowsItsArgumentsUnderTheirPublishedNames) {
    EXPECT_CALL(guard, CheckParameter);
    EXPECT_CALL(observer, At(_));
    InSequence inThisOrder;
    EXPECT_CALL(observer, Enter("JobHelper", "IsJobComplete", _))
        .WillOnce([](std::string_view, std::string_view, Arguments arguments) {
            ASSERT_EQ(arguments.size(), 1U);
            EXPECT_STREQ(arguments[0].Name(), "StateId");
            EXPECT_EQ(arguments[0].Read(), Value("COMPLETE"));
            EXPECT_FALSE(arguments[0].IsByReference());
        });
    EXPECT_CALL(observer, Leave("IsJobComplete", Pointee(Value(true)), SizeIs(1)));

    helper.IsJobComplete("COMPLETE");
}

TEST_F(ObservedMethod, ShowsWhatAnArgumentByReferenceHoldsAtTheEnd) {
    InSequence inThisOrder;
    EXPECT_CALL(observer, Enter("JobHelper", "Probe", _))
        .WillOnce([](std::string_view, std::string_view, Arguments arguments) {
            ASSERT_EQ(arguments.size(), 1U);
            EXPECT_EQ(arguments[0].Read(), Value("before"));
        });
    EXPECT_CALL(observer, Leave("Probe", IsNull(), _))
        .WillOnce([](std::string_view, const Value*, Arguments arguments) {
            ASSERT_EQ(arguments.size(), 1U);
            EXPECT_TRUE(arguments[0].IsByReference());
            EXPECT_EQ(arguments[0].Read(), Value("after"));
        });

    std::string text = "before";
    const ArgumentList given = {ByReference("JobGUID", text)};
    InFrame("Probe", given, [&](Frame&) { text = "after"; });
}

TEST_F(ObservedMethod, MayBelongToTheDurationTimer) {
    const auto timer = std::make_shared<::testing::NiceMock<MockComponent>>();
    EXPECT_CALL(observer, At(_)).Times(::testing::AnyNumber());
    ExpectComponent("kxTimer_%v.Timer", timer);
    InSequence inThisOrder;
    EXPECT_CALL(observer, Enter("DurationTimer", "Class_Initialize", SizeIs(0)));
    EXPECT_CALL(observer, Enter("DurationTimer", "Start", SizeIs(0)));
    EXPECT_CALL(observer, Leave("Start", IsNull(), _));
    EXPECT_CALL(observer, Leave("Class_Initialize", IsNull(), _));

    const DurationTimer duration;
}

}  // namespace
}  // namespace kxjob
