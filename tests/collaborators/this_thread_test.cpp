#include "collaborators/this_thread.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "kxjob/automation_error.h"
#include "kxjob/job_helper.h"
#include "support/fake_collaborators.h"
#include "support/mock_collaborators.h"

namespace kxjob {
namespace {

using ::testing::NiceMock;
using ::testing::Return;

/// Counts what it makes, and watches how long that lives.
class CountingFactory : public CollaboratorFactory {
public:
    std::shared_ptr<InputGuard> MakeInputGuard() override {
        return Make<NiceMock<testing_support::MockInputGuard>>("InputGuard");
    }
    std::shared_ptr<SqlFormatter> MakeSqlFormatter() override {
        return Make<testing_support::FakeSqlFormatter>("SqlFormatter");
    }
    std::shared_ptr<DataAccess> MakeDataAccess() override {
        return Make<NiceMock<testing_support::MockDataAccess>>("DataAccess");
    }
    std::shared_ptr<TraceLog> MakeTraceLog() override {
        const auto log = Make<NiceMock<testing_support::MockTraceLog>>("TraceLog");
        ON_CALL(*log, VersionOf).WillByDefault(Return(version));
        return log;
    }
    std::shared_ptr<GuidService> MakeGuidService() override {
        return Make<NiceMock<testing_support::MockGuidService>>("GuidService");
    }
    std::shared_ptr<TimeService> MakeTimeService() override {
        return Make<NiceMock<testing_support::MockTimeService>>("TimeService");
    }
    std::shared_ptr<ArrayInspector> MakeArrayInspector() override {
        return Make<testing_support::FakeArrayInspector>("ArrayInspector");
    }
    std::shared_ptr<ScriptLibrary> MakeScriptLibrary() override {
        return Make<NiceMock<testing_support::MockScriptLibrary>>("ScriptLibrary");
    }
    std::shared_ptr<RandomSource> MakeRandomSource() override {
        return Make<NiceMock<testing_support::MockRandomSource>>("RandomSource");
    }
    std::shared_ptr<Platform> MakePlatform() override {
        return Make<NiceMock<testing_support::MockPlatform>>("Platform");
    }
    std::shared_ptr<ObjectFactory> MakeObjectFactory() override {
        return Make<NiceMock<testing_support::MockObjectFactory>>("ObjectFactory");
    }
    std::shared_ptr<ConnectionSettings> MakeConnectionSettings() override {
        return Make<NiceMock<testing_support::MockConnectionSettings>>("ConnectionSettings");
    }
    std::shared_ptr<SystemFlagReader> MakeSystemFlagReader() override {
        return Make<NiceMock<testing_support::MockSystemFlagReader>>("SystemFlagReader");
    }
    std::shared_ptr<BatchSqlExecutor> MakeBatchSqlExecutor() override {
        return Make<NiceMock<testing_support::MockBatchSqlExecutor>>("BatchSqlExecutor");
    }
    std::shared_ptr<EnvironmentInfo> MakeEnvironmentInfo() override {
        return Make<NiceMock<testing_support::MockEnvironmentInfo>>("EnvironmentInfo");
    }
    std::shared_ptr<KeyedCollection> MakeKeyedCollection() override {
        return Make<testing_support::FakeKeyedCollection>("KeyedCollection");
    }
    std::shared_ptr<MethodObserver> MakeMethodObserver() override {
        ++observersAskedFor;
        return nullptr;
    }

    std::map<std::string, int> made;
    std::vector<std::weak_ptr<void>> alive;
    int observersAskedFor = 0;
    int failures = 0;  // so many makings fail
    std::string version = "8.3.1202.0";

private:
    template <typename T>
    std::shared_ptr<T> Make(const std::string& what) {
        ++made[what];
        if (failures > 0) {
            --failures;
            throw AutomationError(-99, "Test_83", what + " cannot be made");
        }
        auto object = std::make_shared<T>();
        alive.push_back(object);
        return object;
    }
};

struct Slot {
    std::string name;
    std::function<const void*()> use;
};

const std::vector<Slot>& EverySlot() {
    static const std::vector<Slot> slots{
        {"InputGuard", [] { return static_cast<const void*>(&ThisThread().Guard()); }},
        {"SqlFormatter", [] { return static_cast<const void*>(&ThisThread().Formatter()); }},
        {"DataAccess", [] { return static_cast<const void*>(&ThisThread().Data()); }},
        {"TraceLog", [] { return static_cast<const void*>(&ThisThread().Log()); }},
        {"GuidService", [] { return static_cast<const void*>(&ThisThread().Guids()); }},
        {"TimeService", [] { return static_cast<const void*>(&ThisThread().Times()); }},
        {"ArrayInspector", [] { return static_cast<const void*>(&ThisThread().Arrays()); }},
        {"ScriptLibrary", [] { return static_cast<const void*>(&ThisThread().Scripts()); }},
        {"RandomSource", [] { return static_cast<const void*>(&ThisThread().Random()); }},
        {"Platform", [] { return static_cast<const void*>(&ThisThread().Objects()); }},
    };
    return slots;
}

class ThisThreadTest : public ::testing::Test {
protected:
    ~ThisThreadTest() override { InstallCollaborators(nullptr); }
};

TEST_F(ThisThreadTest, MakesNothingInAdvance) {
    const auto factory = std::make_shared<CountingFactory>();
    InstallCollaborators(factory);
    EXPECT_TRUE(factory->made.empty());
    EXPECT_EQ(&ThisThread().Factory(), factory.get());
    EXPECT_EQ(ThisThread().SharedFactory(), factory);
    EXPECT_TRUE(factory->made.empty());
}

TEST_F(ThisThreadTest, MakesEachCollaboratorOnFirstUseAndKeepsIt) {
    for (const Slot& slot : EverySlot()) {
        SCOPED_TRACE(slot.name);
        const auto factory = std::make_shared<CountingFactory>();
        InstallCollaborators(factory);
        const void* const first = slot.use();
        EXPECT_EQ(slot.use(), first);
        EXPECT_EQ(slot.use(), first);
        EXPECT_EQ(factory->made, (std::map<std::string, int>{{slot.name, 1}}));
    }
}

TEST_F(ThisThreadTest, AsksForAnObserverOnceWhenTheFactoryIsInstalled) {
    const auto factory = std::make_shared<CountingFactory>();
    InstallCollaborators(factory);
    EXPECT_EQ(factory->observersAskedFor, 1);
    EXPECT_EQ(ThisThread().Observer(), nullptr);
    EXPECT_EQ(factory->observersAskedFor, 1);
}

TEST_F(ThisThreadTest, MakesObjectsOfOneCallAnewEachTime) {
    const auto factory = std::make_shared<CountingFactory>();
    InstallCollaborators(factory);
    const std::shared_ptr<ObjectFactory> first = ThisThread().Factory().MakeObjectFactory();
    EXPECT_NE(ThisThread().Factory().MakeObjectFactory(), first);
    EXPECT_EQ(factory->made["ObjectFactory"], 2);
}

TEST_F(ThisThreadTest, TriesAgainAfterAMakingThatFailed) {
    const auto factory = std::make_shared<CountingFactory>();
    factory->failures = 1;
    InstallCollaborators(factory);
    EXPECT_THROW(ThisThread().Data(), AutomationError);
    EXPECT_NO_THROW(ThisThread().Data());
    EXPECT_NO_THROW(ThisThread().Data());
    EXPECT_EQ(factory->made["DataAccess"], 2);
}

TEST_F(ThisThreadTest, ReleasesTheOldFactoryAndWhatItMadeWhenAnotherIsInstalled) {
    auto old = std::make_shared<CountingFactory>();
    InstallCollaborators(old);
    for (const Slot& slot : EverySlot()) slot.use();
    const std::vector<std::weak_ptr<void>> made = old->alive;
    ASSERT_EQ(made.size(), EverySlot().size());
    const std::weak_ptr<CountingFactory> watched = old;
    old.reset();
    EXPECT_FALSE(watched.expired());

    const auto next = std::make_shared<CountingFactory>();
    InstallCollaborators(next);
    EXPECT_TRUE(watched.expired());
    for (const std::weak_ptr<void>& object : made) EXPECT_TRUE(object.expired());
    EXPECT_EQ(&ThisThread().Factory(), next.get());
}

TEST_F(ThisThreadTest, UsesTheNewCollaboratorsFromTheNextCallOn) {
    JobHelper helper;
    const auto first = std::make_shared<CountingFactory>();
    InstallCollaborators(first);
    EXPECT_EQ(helper.Version(), "8.3.1202.0");
    const auto second = std::make_shared<CountingFactory>();
    second->version = "another";
    InstallCollaborators(second);
    EXPECT_EQ(helper.Version(), "another");
    EXPECT_EQ(first->made["TraceLog"], 1);
    EXPECT_EQ(second->made["TraceLog"], 1);
}

TEST_F(ThisThreadTest, KeepsTheCollaboratorsBeyondTheInstancesThatUseThem) {
    const auto factory = std::make_shared<CountingFactory>();
    InstallCollaborators(factory);
    for (int i = 0; i < 3; ++i) {
        JobHelper helper;
        helper.Version();
    }
    EXPECT_EQ(factory->made, (std::map<std::string, int>{{"TraceLog", 1}}));
}

TEST_F(ThisThreadTest, ReturnsToThePlatformsOwnForNull) {
    auto factory = std::make_shared<CountingFactory>();
    const std::weak_ptr<CountingFactory> watched = factory;
    InstallCollaborators(std::move(factory));
    InstallCollaborators(nullptr);
    EXPECT_TRUE(watched.expired());
    // In this program the platform has none, and says so.
    EXPECT_THROW(ThisThread(), AutomationError);
}

TEST_F(ThisThreadTest, GivesEachThreadItsOwn) {
    const auto mine = std::make_shared<CountingFactory>();
    InstallCollaborators(mine);
    const void* const myData = &ThisThread().Data();

    const auto theirs = std::make_shared<CountingFactory>();
    const void* firstOfTheirs = nullptr;
    const void* secondOfTheirs = nullptr;
    bool beganWithNone = false;
    std::thread other([&] {
        try {
            ThisThread();
        } catch (const AutomationError&) {
            beganWithNone = true;  // what this thread has installed is not seen there
        }
        InstallCollaborators(theirs);
        firstOfTheirs = &ThisThread().Data();
        secondOfTheirs = &ThisThread().Data();
    });
    other.join();

    EXPECT_TRUE(beganWithNone);
    EXPECT_EQ(firstOfTheirs, secondOfTheirs);
    EXPECT_EQ(theirs->made, (std::map<std::string, int>{{"DataAccess", 1}}));
    EXPECT_EQ(&ThisThread().Data(), myData);
    EXPECT_EQ(mine->made, (std::map<std::string, int>{{"DataAccess", 1}}));
}

TEST_F(ThisThreadTest, KeepsTwoThreadsApartThatWorkAtTheSameTime) {
    struct Worker {
        std::shared_ptr<CountingFactory> factory = std::make_shared<CountingFactory>();
        std::set<std::string> answers;
        std::set<const void*> logs;
    };
    Worker first;
    Worker second;
    first.factory->version = "first";
    second.factory->version = "second";
    const auto work = [](Worker& worker) {
        InstallCollaborators(worker.factory);
        JobHelper helper;
        for (int i = 0; i < 200; ++i) {
            worker.answers.insert(helper.Version());
            worker.logs.insert(&ThisThread().Log());
        }
    };
    std::thread one(work, std::ref(first));
    std::thread two(work, std::ref(second));
    one.join();
    two.join();

    EXPECT_EQ(first.answers, (std::set<std::string>{"first"}));
    EXPECT_EQ(second.answers, (std::set<std::string>{"second"}));
    EXPECT_EQ(first.logs.size(), 1U);
    EXPECT_EQ(second.logs.size(), 1U);
    EXPECT_EQ(first.factory->made, (std::map<std::string, int>{{"TraceLog", 1}}));
    EXPECT_EQ(second.factory->made, (std::map<std::string, int>{{"TraceLog", 1}}));
}

TEST_F(ThisThreadTest, ReleasesWhatAThreadHadWhenItEnds) {
    auto factory = std::make_shared<CountingFactory>();
    const std::weak_ptr<CountingFactory> watched = factory;
    std::weak_ptr<void> data;
    std::thread other([&data, installed = std::move(factory)]() mutable {
        CountingFactory& made = *installed;
        InstallCollaborators(std::move(installed));
        ThisThread().Data();
        data = made.alive.front();
    });
    other.join();
    EXPECT_TRUE(data.expired());
    EXPECT_TRUE(watched.expired());
}

}  // namespace
}  // namespace kxjob
