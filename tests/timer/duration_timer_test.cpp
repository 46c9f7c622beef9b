#include "kxjob/duration_timer.h"

#include "support/job_helper_test.h"

namespace kxjob {
namespace {

using ::testing::ElementsAre;
using ::testing::InSequence;
using ::testing::IsEmpty;
using ::testing::Return;
using ::testing::StrictMock;
using ::testing::Throw;
using testing_support::ErrorOf;
using testing_support::FakeDebugTools;
using testing_support::JobHelperTest;
using testing_support::MockComponent;

const AutomationError kTimerFailure(-88, "The timer", "it failed");

class DurationTimerTest : public JobHelperTest {
protected:
    using TimerMock = StrictMock<MockComponent>;

    /// A new timer component is made and started.
    static void ExpectSettingUp(TimerMock& timer) {
        EXPECT_CALL(timer, CallMember("setModuleName", ElementsAre(Value("DurationTimer"))))
            .WillOnce(Return(Value()));
        EXPECT_CALL(timer, LetMember("logLevel", Value(4)));
        EXPECT_CALL(timer, CallMember("Start", IsEmpty())).WillOnce(Return(Value()));
    }
    void ExpectStart(const std::shared_ptr<TimerMock>& timer) {
        ExpectComponent("kxTimer_%v.Timer", timer);
        ExpectSettingUp(*timer);
    }

    /// Members of DurationTimer, not of JobHelper, have told of `kTimerFailure`.
    void ExpectToldByTimer(const std::vector<std::string>& members) const {
        ASSERT_EQ(debugTools->told.size(), members.size());
        for (std::size_t i = 0; i < members.size(); ++i) {
            const FakeDebugTools::Told& told = debugTools->told[i];
            EXPECT_EQ(told.project, "Job_83");
            EXPECT_EQ(told.className, "DurationTimer");
            EXPECT_EQ(told.method, members[i]);
            EXPECT_GT(told.line, 0);
        }
    }
    void ExpectTimerPassesOn(const std::function<void()>& call,
                             const std::vector<std::string>& members) const {
        const AutomationError error = ErrorOf(call);
        EXPECT_EQ(error.Number(), -88);
        EXPECT_EQ(error.Source(), "The timer");
        EXPECT_EQ(error.Description(), "it failed");
        ExpectToldByTimer(members);
    }

    std::shared_ptr<TimerMock> first = std::make_shared<TimerMock>();
    std::shared_ptr<TimerMock> second = std::make_shared<TimerMock>();
};

TEST_F(DurationTimerTest, StartsATimerComponentWhenItIsCreated) {
    InSequence inThisOrder;
    ExpectComponent("kxTimer_%v.Timer", first);
    EXPECT_CALL(*first, CallMember("setModuleName", ElementsAre(Value("DurationTimer"))))
        .WillOnce(Return(Value()));
    EXPECT_CALL(*first, LetMember("logLevel", Value(4)));
    EXPECT_CALL(*first, CallMember("Start", IsEmpty())).WillOnce(Return(Value()));

    const DurationTimer timer;

    EXPECT_EQ(made.objectFactories, 1);
    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(DurationTimerTest, GivesTheTimeSinceItsCreation) {
    InSequence inThisOrder;
    ExpectStart(first);
    EXPECT_CALL(*first, GetMember("Duration")).WillOnce(Return(Value(0.25)));

    const DurationTimer timer;

    EXPECT_EQ(timer.Duration(), 0.25);
}

TEST_F(DurationTimerTest, NeitherStopsNorResetsTheTimerByReadingIt) {
    InSequence inThisOrder;
    ExpectStart(first);
    EXPECT_CALL(*first, GetMember("Duration")).WillOnce(Return(Value(0.5)));
    EXPECT_CALL(*first, GetMember("Duration")).WillOnce(Return(Value(1.5)));

    const DurationTimer timer;

    EXPECT_EQ(timer.Duration(), 0.5);
    EXPECT_EQ(timer.Duration(), 1.5);
    EXPECT_EQ(made.objectFactories, 1);
}

TEST_F(DurationTimerTest, ConvertsWholeNumbersAndTexts) {
    InSequence inThisOrder;
    ExpectStart(first);
    EXPECT_CALL(*first, GetMember("Duration")).WillOnce(Return(Value(3)));
    EXPECT_CALL(*first, GetMember("Duration")).WillOnce(Return(Value(std::int64_t{5000000000})));
    EXPECT_CALL(*first, GetMember("Duration")).WillOnce(Return(Value("2.5")));
    EXPECT_CALL(*first, GetMember("Duration")).WillOnce(Return(Value()));

    const DurationTimer timer;

    EXPECT_EQ(timer.Duration(), 3.0);
    EXPECT_EQ(timer.Duration(), 5000000000.0);
    EXPECT_EQ(timer.Duration(), 2.5);
    EXPECT_EQ(timer.Duration(), 0.0);
}

TEST_F(DurationTimerTest, CannotConvertATextThatIsNoNumber) {
    InSequence inThisOrder;
    ExpectStart(first);
    EXPECT_CALL(*first, GetMember("Duration")).WillOnce(Return(Value("soon")));

    const DurationTimer timer;

    EXPECT_EQ(ErrorOf([&] { timer.Duration(); }).Number(), static_cast<std::int32_t>(0x800A000DU));
    ExpectToldByTimer({"Duration"});
}

TEST_F(DurationTimerTest, StartsAgainOnANewTimerComponent) {
    InSequence inThisOrder;
    ExpectStart(first);
    EXPECT_CALL(*first, GetMember("Duration")).WillOnce(Return(Value(7.0)));
    ExpectStart(second);
    EXPECT_CALL(*second, GetMember("Duration")).WillOnce(Return(Value(0.0)));

    DurationTimer timer;
    EXPECT_EQ(timer.Duration(), 7.0);
    timer.Start();

    EXPECT_EQ(timer.Duration(), 0.0);
    EXPECT_EQ(made.objectFactories, 2);
}

TEST_F(DurationTimerTest, ReleasesTheTimerComponentThatItReplaces) {
    std::weak_ptr<TimerMock> replaced;
    EXPECT_CALL(factory, CreateVersioned("kxTimer_%v.Timer"))
        .WillOnce([&](const std::string&) -> ComponentRef {
            auto timer = std::make_shared<TimerMock>();
            ExpectSettingUp(*timer);
            replaced = timer;
            return timer;
        })
        .WillOnce([&](const std::string&) -> ComponentRef {
            EXPECT_FALSE(replaced.expired());
            ExpectSettingUp(*second);
            return second;
        });

    DurationTimer timer;
    timer.Start();

    EXPECT_TRUE(replaced.expired());
}

TEST_F(DurationTimerTest, ReleasesItsTimerComponentWhenItEnds) {
    std::weak_ptr<TimerMock> held;
    EXPECT_CALL(factory, CreateVersioned("kxTimer_%v.Timer"))
        .WillOnce([&](const std::string&) -> ComponentRef {
            auto timer = std::make_shared<TimerMock>();
            ExpectSettingUp(*timer);
            held = timer;
            return timer;
        });

    {
        const DurationTimer timer;
        EXPECT_FALSE(held.expired());
    }

    EXPECT_TRUE(held.expired());
}

TEST_F(DurationTimerTest, CannotBeCreatedWithoutATimerComponent) {
    EXPECT_CALL(factory, CreateVersioned("kxTimer_%v.Timer")).WillOnce(Throw(kTimerFailure));

    ExpectTimerPassesOn([] { const DurationTimer timer; }, {"Start", "Class_Initialize"});
}

TEST_F(DurationTimerTest, CannotBeCreatedWhenTheModuleNameIsRefused) {
    InSequence inThisOrder;
    ExpectComponent("kxTimer_%v.Timer", first);
    EXPECT_CALL(*first, CallMember("setModuleName", ElementsAre(Value("DurationTimer"))))
        .WillOnce(Throw(kTimerFailure));

    ExpectTimerPassesOn([] { const DurationTimer timer; }, {"Start", "Class_Initialize"});
}

TEST_F(DurationTimerTest, CannotBeCreatedWhenTheLogLevelIsRefused) {
    InSequence inThisOrder;
    ExpectComponent("kxTimer_%v.Timer", first);
    EXPECT_CALL(*first, CallMember("setModuleName", ElementsAre(Value("DurationTimer"))))
        .WillOnce(Return(Value()));
    EXPECT_CALL(*first, LetMember("logLevel", Value(4))).WillOnce(Throw(kTimerFailure));

    ExpectTimerPassesOn([] { const DurationTimer timer; }, {"Start", "Class_Initialize"});
}

TEST_F(DurationTimerTest, CannotBeCreatedWhenTheTimerComponentDoesNotStart) {
    InSequence inThisOrder;
    ExpectComponent("kxTimer_%v.Timer", first);
    EXPECT_CALL(*first, CallMember("setModuleName", ElementsAre(Value("DurationTimer"))))
        .WillOnce(Return(Value()));
    EXPECT_CALL(*first, LetMember("logLevel", Value(4)));
    EXPECT_CALL(*first, CallMember("Start", IsEmpty())).WillOnce(Throw(kTimerFailure));

    ExpectTimerPassesOn([] { const DurationTimer timer; }, {"Start", "Class_Initialize"});
}

TEST_F(DurationTimerTest, KeepsItsTimerComponentWhenNoNewOneCanBeMade) {
    InSequence inThisOrder;
    ExpectStart(first);
    EXPECT_CALL(factory, CreateVersioned("kxTimer_%v.Timer")).WillOnce(Throw(kTimerFailure));
    EXPECT_CALL(*first, GetMember("Duration")).WillOnce(Return(Value(2.0)));

    DurationTimer timer;
    ExpectTimerPassesOn([&] { timer.Start(); }, {"Start"});

    EXPECT_EQ(timer.Duration(), 2.0);
}

TEST_F(DurationTimerTest, HoldsTheNewTimerComponentEvenWhenItDoesNotStart) {
    InSequence inThisOrder;
    ExpectStart(first);
    ExpectComponent("kxTimer_%v.Timer", second);
    EXPECT_CALL(*second, CallMember("setModuleName", ElementsAre(Value("DurationTimer"))))
        .WillOnce(Throw(kTimerFailure));
    EXPECT_CALL(*second, GetMember("Duration")).WillOnce(Return(Value(0.0)));

    DurationTimer timer;
    ExpectTimerPassesOn([&] { timer.Start(); }, {"Start"});

    EXPECT_EQ(timer.Duration(), 0.0);
}

TEST_F(DurationTimerTest, PassesOnAFailureToReadTheDuration) {
    InSequence inThisOrder;
    ExpectStart(first);
    EXPECT_CALL(*first, GetMember("Duration")).WillOnce(Throw(kTimerFailure));

    const DurationTimer timer;

    ExpectTimerPassesOn([&] { timer.Duration(); }, {"Duration"});
}

TEST_F(DurationTimerTest, HasNoTimerComponentToReadWhenTheFailureToMakeOneWasSwallowed) {
    debugTools->returnsInsteadOfRaising = true;
    EXPECT_CALL(factory, CreateVersioned("kxTimer_%v.Timer")).WillOnce(Throw(kTimerFailure));

    const DurationTimer timer;
    ExpectToldByTimer({"Start"});

    EXPECT_EQ(timer.Duration(), 0.0);
    ExpectToldByTimer({"Start", "Duration"});
    EXPECT_EQ(debugTools->told[1].number, static_cast<std::int32_t>(0x800A005BU));
}

}  // namespace
}  // namespace kxjob
