#include <memory>
#include <string>
#include <vector>

#include "frame/factory_over_fixture.h"
#include "frame/frame.h"
#include "support/job_helper_test.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using ::testing::ElementsAre;
using ::testing::Eq;
using ::testing::InSequence;
using ::testing::Ref;
using ::testing::Return;
using ::testing::SetArgReferee;
using ::testing::StrictMock;
using ::testing::Throw;
using testing_support::ErrorOf;
using testing_support::FactoryOverFixture;
using testing_support::FakeDebugTools;
using testing_support::FakeKeyedCollection;
using testing_support::FakeTableNameHelper;
using testing_support::JobHelperTest;
using testing_support::kFailure;
using testing_support::MockComponent;

class FrameAccess : public JobHelperTest {};

TEST_F(FrameAccess, RunsStatementsInModeOneAsTheyAre) {
    InSequence inThisOrder;
    EXPECT_CALL(data, Execute("db", 5, 1, " UPDATE  x "));
    EXPECT_CALL(data, Query("db", 3, 1, " SELECT 1 ", true)).WillOnce(Return(Value(7)));
    EXPECT_CALL(data, Query("db", 4, 1, "SELECT 2", false)).WillOnce(Return(Value(8)));

    InFrame("Probe", {}, [](Frame& frame) {
        frame.Execute("db", 5, " UPDATE  x ");
        EXPECT_EQ(frame.Query("db", 3, " SELECT 1 ", true), Value(7));
        EXPECT_EQ(frame.Query("db", 4, "SELECT 2", false), Value(8));
    });
}

TEST_F(FrameAccess, WritesLongTextsInModeOne) {
    EXPECT_CALL(
        data, WriteLongText("db", 5, 1, "kx_", "job", "jobguid", "{J}", "parameters", "<p/>", ::testing::_));

    InFrame("Probe", {}, [](Frame& frame) {
        frame.WriteLongText("db", 5, "kx_", "job", "jobguid", "{J}", "parameters", "<p/>");
    });
}

TEST_F(FrameAccess, TracesInTheNameOfTheMethod) {
    InSequence inThisOrder;
    EXPECT_CALL(trace, Write("one", Eq(2), "Job_83", "JobHelper", "Probe"));
    EXPECT_CALL(trace, Write("two", Eq(3), "Job_83", "DurationTimer", "Start"));

    InFrame("Probe", {}, [](Frame& frame) { frame.Trace(kWarning, "one"); });
    InFrameOf("DurationTimer", "Start", {}, [](Frame& frame) { frame.Trace(kDecision, "two"); });
}

TEST_F(FrameAccess, GivesEachTraceLineALevelOfItsOwn) {
    InSequence inThisOrder;
    EXPECT_CALL(trace, Write("one", Eq(4), "Job_83", "JobHelper", "Probe")).WillOnce(SetArgReferee<1>(99));
    EXPECT_CALL(trace, Write("two", Eq(4), "Job_83", "JobHelper", "Probe"));

    InFrame("Probe", {}, [](Frame& frame) {
        for (const char* message : {"one", "two"}) frame.Trace(kProgress, message);
    });
}

TEST_F(FrameAccess, AsksForScriptsComplete) {
    Collection options;
    EXPECT_CALL(scripts, GetScript(Ref(options), 5, "kx_", "A script", true)).WillOnce(Return("its text"));

    InFrame("Probe", {},
            [&](Frame& frame) { EXPECT_EQ(frame.GetScript(options, 5, "kx_", "A script"), "its text"); });
}

TEST_F(FrameAccess, SpeaksToOneObjectFactoryInTheWholeCall) {
    InSequence inThisOrder;
    ExpectComponent("A_%v.A", tableNames);
    EXPECT_CALL(factory, CanCreate("B_83.B")).WillOnce(Return(true));
    ExpectComponent("C_%v.C", tableNames);

    InFrame("Probe", {}, [](Frame& frame) {
        frame.CreateVersioned("A_%v.A");
        EXPECT_TRUE(frame.CanCreate("B_83.B"));
        frame.CreateVersioned("C_%v.C");
    });

    EXPECT_EQ(made.objectFactories, 1);
}

TEST_F(FrameAccess, MakesANewObjectFactoryForEachCall) {
    EXPECT_CALL(factory, CreateVersioned("A_%v.A")).Times(3).WillRepeatedly(Return(tableNames));
    const auto call = [] { InFrame("Probe", {}, [](Frame& frame) { frame.CreateVersioned("A_%v.A"); }); };

    InFrame("Outer", {}, [&](Frame& frame) {
        frame.CreateVersioned("A_%v.A");
        call();
    });
    call();

    EXPECT_EQ(made.objectFactories, 3);
}

TEST_F(FrameAccess, CreatesCompleteProgIdsWithoutAnObjectFactory) {
    EXPECT_CALL(platform, CreateObject("A_83.A")).WillOnce(Return(tableNames));

    InFrame("Probe", {}, [&](Frame& frame) { EXPECT_EQ(frame.CreateObject("A_83.A").Object(), tableNames); });

    EXPECT_EQ(made.objectFactories, 0);
}

TEST_F(FrameAccess, CallsComponentsByTheNameOfTheMember) {
    const auto component = std::make_shared<StrictMock<MockComponent>>();
    InSequence inThisOrder;
    ExpectComponent("A_%v.A", component);
    EXPECT_CALL(*component, LetMember("Level", Value(4)));
    EXPECT_CALL(*component, CallMember("Write", ElementsAre(Value("a"), Value(2), Value())))
        .WillOnce(Return(Value("done")));
    EXPECT_CALL(*component, GetMember("Count")).WillOnce(Return(Value(3)));

    InFrame("Probe", {}, [](Frame& frame) {
        const LateObject late = frame.CreateVersioned("A_%v.A");
        late.Let("Level", 4);
        EXPECT_EQ(late.Call("Write", {"a", 2, Value()}), Value("done"));
        EXPECT_EQ(late.Get("Count"), Value(3));
    });
}

class UnsetObject : public JobHelperTest {
protected:
    /// `use` must raise Object not set.
    void ExpectObjectNotSet(const std::function<void(Frame&)>& use) {
        const AutomationError error = ErrorOf([&] { InFrame("Probe", {}, use); });
        EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x800A005BU));
        EXPECT_EQ(error.Description(), "Object not set");
        ExpectTold(error, {"Probe"});
    }
};

TEST_F(UnsetObject, CannotBeUsed) {
    ExpectObjectNotSet([](Frame& frame) { frame.UseObject(std::shared_ptr<Collection>()); });
}

TEST_F(UnsetObject, HasNoPropertyToRead) {
    ExpectObjectNotSet([](Frame& frame) { LateObject(frame, nullptr).Get("Duration"); });
}

TEST_F(UnsetObject, HasNoPropertyToSet) {
    ExpectObjectNotSet([](Frame& frame) { LateObject(frame, nullptr).Let("logLevel", 4); });
}

TEST_F(UnsetObject, HasNoMethodToCall) {
    ExpectObjectNotSet([](Frame& frame) { LateObject(frame, nullptr).Call("Start", {}); });
}

TEST_F(UnsetObject, IsReportedAtTheLineOfItsUse) {
    int line = 0;
    ExpectObjectNotSet([&](Frame& frame) {
        const LateObject unset(frame, nullptr);
        line = __LINE__ + 1;
        unset.Get("Duration");
    });

    ASSERT_EQ(debugTools->told.size(), 1U);
    EXPECT_EQ(debugTools->told[0].line, line);
}

/// Hands out object factories and keyed collections that only the method holds, and watches them go.
class WatchedFactory : public FactoryOverFixture {
public:
    using FactoryOverFixture::FactoryOverFixture;

    std::shared_ptr<ObjectFactory> MakeObjectFactory() override {
        return Watched(std::make_shared<TableNameFactory>(*this));
    }
    std::shared_ptr<KeyedCollection> MakeKeyedCollection() override {
        return Watched(std::make_shared<FakeKeyedCollection>());
    }

    template <typename T>
    std::shared_ptr<T> Watched(std::shared_ptr<T> object) {
        watched_.emplace_back(object);
        return object;
    }
    std::size_t Count() const { return watched_.size(); }
    std::size_t Alive() const {
        std::size_t alive = 0;
        for (const std::weak_ptr<void>& object : watched_) {
            if (!object.expired()) ++alive;
        }
        return alive;
    }

private:
    class TableNameFactory : public ObjectFactory {
    public:
        explicit TableNameFactory(WatchedFactory& owner) : owner_(owner) {}
        ComponentRef CreateVersioned(const std::string& /*progIdTemplate*/) override {
            return owner_.Watched(std::make_shared<FakeTableNameHelper>());
        }
        bool CanCreate(const std::string& /*progId*/) override { return true; }

    private:
        WatchedFactory& owner_;
    };

    std::vector<std::weak_ptr<void>> watched_;
};

class ReleasedObjects : public JobHelperTest {
protected:
    ReleasedObjects() {
        InstallCollaborators(watched);
        EXPECT_CALL(platform, CreateObject("DebugTools_83.Helper"))
            .WillRepeatedly([this](const std::string&) -> ComponentRef {
                return watched->Watched(std::make_shared<FakeDebugTools>());
            });
    }

    std::shared_ptr<WatchedFactory> watched = std::make_shared<WatchedFactory>(ThisThread().SharedFactory());
};

TEST_F(ReleasedObjects, AreGoneAfterASuccess) {
    EXPECT_CALL(guard, CheckParameter).Times(2);
    EXPECT_CALL(data, Execute).WillOnce([&] { EXPECT_EQ(watched->Alive(), 2U); });

    helper.UpdateJobTaskLock("db", "kx_", "{T}", "{L}");

    EXPECT_EQ(watched->Count(), 2U);
    EXPECT_EQ(watched->Alive(), 0U);
}

TEST_F(ReleasedObjects, AreGoneAfterAnError) {
    EXPECT_CALL(guard, CheckParameter).Times(2);
    EXPECT_CALL(data, Execute).WillOnce(Throw(kFailure));

    const AutomationError error = ErrorOf([&] { helper.UpdateJobTaskLock("db", "kx_", "{T}", "{L}"); });

    EXPECT_EQ(error.Number(), -88);
    EXPECT_EQ(watched->Count(), 3U);  // the error-logging component too
    EXPECT_EQ(watched->Alive(), 0U);
}

TEST_F(ReleasedObjects, AreGoneAfterAnErrorInAnInnerMethod) {
    EXPECT_CALL(guard, CheckParameter).Times(2);
    EXPECT_CALL(times, NowISODateTime()).WillOnce(Throw(kFailure));

    ErrorOf([&] { helper.UnRegisterJobTask("db", "kx_", "{T}"); });

    EXPECT_EQ(watched->Count(), 4U);
    EXPECT_EQ(watched->Alive(), 0U);
}

TEST_F(ReleasedObjects, AreGoneWhenTheErrorIsSwallowed) {
    EXPECT_CALL(platform, CreateObject("DebugTools_83.Helper")).WillOnce([this](const std::string&) {
        auto component = watched->Watched(std::make_shared<FakeDebugTools>());
        component->returnsInsteadOfRaising = true;
        return ComponentRef(component);
    });
    EXPECT_CALL(guard, CheckParameter).WillOnce(Throw(kFailure));

    helper.UpdateJobTaskLock("db", "kx_", "{T}", "{L}");

    EXPECT_EQ(watched->Count(), 3U);
    EXPECT_EQ(watched->Alive(), 0U);
}

TEST_F(ReleasedObjects, IncludeTheCollectionsThatABodyHolds) {
    ErrorOf([&] {
        InFrame("Probe", {}, [&](Frame& frame) {
            const LateObject component = frame.CreateVersioned("A_%v.A");
            const std::shared_ptr<KeyedCollection> map = frame.NewKeyedCollection();
            frame.UseObject(map).Add(component.Object(), "key");
            EXPECT_EQ(watched->Alive(), 3U);
            frame.Raise(747, "No");
        });
    });

    EXPECT_EQ(watched->Count(), 4U);
    EXPECT_EQ(watched->Alive(), 0U);
}

}  // namespace
}  // namespace kxjob
