#include <functional>
#include <memory>
#include <string>

#include "frame/factory_over_fixture.h"
#include "frame/frame.h"
#include "support/job_helper_test.h"

namespace kxjob {
namespace {

using ::testing::InSequence;
using ::testing::NiceMock;
using Place = Frame::Place;

/// A line is what an error tells of the place at which a method was.
class FrameLines : public testing_support::JobHelperTest {
protected:
    FrameLines() {
        InstallCollaborators(
            std::make_shared<testing_support::ObservedFactory>(ThisThread().SharedFactory(), observer_));
    }
    void ExpectLine(Place place) { EXPECT_CALL(*observer_, At(static_cast<std::int32_t>(place.line()))); }
    /// `access` is what the lambda does to the frame with a place that is not the lambda's own.
    void Run(const std::function<void(Frame&)>& access) { InFrame("Probe", {}, access); }

    const Place place_ = Place::current();
    std::shared_ptr<NiceMock<testing_support::MockMethodObserver>> observer_ =
        std::make_shared<NiceMock<testing_support::MockMethodObserver>>();
    InSequence inThisOrder_;
};

TEST_F(FrameLines, AreToldBeforeTheGuardAndTheFormatterAreAsked) {
    ExpectLine(place_);
    EXPECT_CALL(guard, CheckParameter("value", "Name"));
    ExpectLine(place_);
    ExpectLine(place_);

    Run([this](Frame& frame) {
        frame.CheckParameter("value", "Name", place_);
        frame.FormatValue("text", place_);
        frame.FormatGuid("{A}", place_);
    });
}

TEST_F(FrameLines, AreToldBeforeAStatementIsSent) {
    ExpectLine(place_);
    EXPECT_CALL(data, Execute);
    ExpectLine(place_);
    EXPECT_CALL(data, Query);
    ExpectLine(place_);
    EXPECT_CALL(data, WriteLongText);

    Run([this](Frame& frame) {
        frame.Execute("db", 2, "UPDATE", place_);
        frame.Query("db", 2, "SELECT", true, place_);
        frame.WriteLongText("db", 2, "kx_", "job", "jobguid", "{A}", "parameters", "text", place_);
    });
}

TEST_F(FrameLines, AreToldBeforeTheLogIsWritten) {
    ExpectLine(place_);
    EXPECT_CALL(trace, Write);
    ExpectLine(place_);
    EXPECT_CALL(trace, VersionOf);

    Run([this](Frame& frame) {
        frame.Trace(4, "message", place_);
        frame.VersionOfApplication(place_);
    });
}

TEST_F(FrameLines, AreToldBeforeGuidsAndTimesAreAskedFor) {
    ExpectLine(place_);
    EXPECT_CALL(guids, NewGuid);
    ExpectLine(place_);
    EXPECT_CALL(guids, NullGuid);
    ExpectLine(place_);
    EXPECT_CALL(times, NowISODateTime);
    ExpectLine(place_);
    EXPECT_CALL(times, DurationText(1.5));

    Run([this](Frame& frame) {
        frame.NewGuid(place_);
        frame.NullGuid(place_);
        frame.NowISODateTime(place_);
        frame.DurationText(1.5, place_);
    });
}

TEST_F(FrameLines, AreToldBeforeAnArrayIsMeasured) {
    for (int question = 0; question < 4; ++question) ExpectLine(place_);
    const Value array = Array::List({"a"});

    Run([&](Frame& frame) {
        frame.LowerBound(array, place_);
        frame.UpperBound(array, place_);
        frame.ElementCount(array, place_);
        frame.DimensionCount(array, place_);
    });
}

TEST_F(FrameLines, AreToldBeforeAScriptOrARandomNumberIsAskedFor) {
    Collection options;
    ExpectLine(place_);
    EXPECT_CALL(scripts, GetScript);
    ExpectLine(place_);
    EXPECT_CALL(random, SeedFromTimer);
    ExpectLine(place_);
    EXPECT_CALL(random, Next);

    Run([&](Frame& frame) {
        frame.GetScript(options, 2, "kx_", "script", place_);
        frame.SeedFromTimer(place_);
        frame.NextRandom(place_);
    });
}

TEST_F(FrameLines, AreToldBeforeAComponentIsMade) {
    ExpectLine(place_);
    EXPECT_CALL(factory, CreateVersioned);
    ExpectLine(place_);
    EXPECT_CALL(factory, CanCreate);
    ExpectLine(place_);
    EXPECT_CALL(platform, CreateObject("Some_83.Class"));

    Run([this](Frame& frame) {
        frame.CreateVersioned("Some_%v.Class", place_);
        frame.CanCreate("Some_83.Class", place_);
        frame.CreateObject("Some_83.Class", place_);
    });
}

TEST_F(FrameLines, AreToldBeforeAnObjectOfTheCallIsMade) {
    for (int object = 0; object < 5; ++object) ExpectLine(place_);

    Run([this](Frame& frame) {
        frame.NewConnectionSettings(place_);
        frame.NewSystemFlagReader(place_);
        frame.NewBatchSqlExecutor(place_);
        frame.NewEnvironmentInfo(place_);
        frame.NewKeyedCollection(place_);
    });
    EXPECT_EQ(made.settings + made.flagReaders + made.executors + made.environments + made.keyedCollections,
              5);
}

/// Gives out an object factory that nobody else holds.
class ForgettingFactory : public testing_support::FactoryOverFixture {
public:
    using FactoryOverFixture::FactoryOverFixture;

    std::shared_ptr<ObjectFactory> MakeObjectFactory() override {
        auto made = std::make_shared<NiceMock<testing_support::MockObjectFactory>>();
        latest = made;
        return made;
    }

    std::weak_ptr<ObjectFactory> latest;
};

using FrameObjects = testing_support::JobHelperTest;

TEST_F(FrameObjects, LetGoOfTheObjectFactoryBeforeAnErrorIsTold) {
    const auto forgetting = std::make_shared<ForgettingFactory>(ThisThread().SharedFactory());
    InstallCollaborators(forgetting);
    bool wasHeld = true;
    EXPECT_CALL(platform, CreateObject("DebugTools_83.Helper"))
        .WillOnce([&](const std::string&) -> ComponentRef {
            wasHeld = !forgetting->latest.expired();
            return debugTools;
        });

    testing_support::ErrorOf([] {
        InFrame("Probe", {}, [](Frame& frame) {
            frame.CanCreate("Some_83.Class");
            frame.Raise(747, "No");
        });
    });

    EXPECT_FALSE(wasHeld);
}

}  // namespace
}  // namespace kxjob
