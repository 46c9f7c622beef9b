#include <gtest/gtest.h>
#include <stdlib.h>  // setenv is POSIX

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "collaborators/this_thread.h"
#include "composition/counting_collaborators.h"
#include "files/temporary_folder.h"
#include "journal/journaling_collaborators.h"
#include "kxjob/call_journal.h"
#include "kxjob/job_helper.h"
#include "seeded/seeded_store.h"
#include "support/every_method.h"

namespace kxjob {
namespace {

using testing_support::Census;
using testing_support::CountingCollaborators;
using testing_support::EveryMethod;
using testing_support::MethodCall;
using testing_support::SeedStore;
using testing_support::TemporaryFolder;

constexpr std::int32_t kInjectedNumber = -123456;
constexpr const char* kInjectedSource = "the test";
constexpr const char* kInjectedDescription = "injected";

/// Keeps the events, and fails the call with a certain number.
class FailingSink : public JournalSink {
public:
    void FailCall(int number) { failAt_ = number; }

    void BeforeCall(const JournalEvent& /*call*/) override {
        if (++calls_ == failAt_)
            throw AutomationError(kInjectedNumber, kInjectedSource, kInjectedDescription);
    }
    void Write(const JournalEvent& event) override {
        events.push_back(event);
        events.back().result.reset();  // an event must not keep a component alive
    }

    bool HasFailed() const { return failAt_ != 0 && calls_ >= failAt_; }

    std::vector<JournalEvent> events;

private:
    int calls_ = 0;
    int failAt_ = 0;
};

/// A seeded SQLite file, and the thread's collaborators counted and recorded.
class World {
public:
    explicit World(FailingSink& sink) {
        connectionString = "Driver=SQLite;Database=" + folder_.File("seeded.db");
        InstallCollaborators(nullptr);
        SeedStore(connectionString, "kx_");
        const std::string configuration = folder_.File("kxjob.conf");
        std::ofstream(configuration) << "ADOConnectionString = " << connectionString
                                     << "\nProvider = 5\nNameSpaceQualifier = kx_\nlog.file = "
                                     << folder_.File("log") << "\n";
        setenv("KXJOB_CONFIG", configuration.c_str(), 1);
        InstallCollaborators(std::make_shared<JournalingCollaborators>(
            std::make_shared<CountingCollaborators>(MakePlatformCollaborators(), census), sink));
    }
    World(const World&) = delete;
    World& operator=(const World&) = delete;
    ~World() {
        InstallCollaborators(nullptr);
        unsetenv("KXJOB_CONFIG");
    }

    std::string connectionString;
    std::shared_ptr<Census> census = std::make_shared<Census>();

private:
    TemporaryFolder folder_;
};

struct SweepCase {
    const MethodCall* method;
    bool fromConfiguration;
};

void PrintTo(const SweepCase& sweepCase, std::ostream* out) {
    *out << sweepCase.method->name;
}

class EveryCallOnARealStore : public ::testing::TestWithParam<SweepCase> {
protected:
    static void Run(JobHelper& helper, const World& world) {
        const SweepCase& given = GetParam();
        given.method->call(helper, given.fromConfiguration ? "" : world.connectionString, dspSqlite,
                           given.fromConfiguration ? "" : "kx_");
    }
};

/// What happened from the failed call on: that call, then only the handing over of the error in each method.
void ExpectOnlyTheHandOver(const std::vector<JournalEvent>& events) {
    const auto failed = std::find_if(events.begin(), events.end(),
                                     [](const JournalEvent& event) { return event.error.has_value(); });
    ASSERT_NE(failed, events.end());
    EXPECT_EQ(failed->error->Number(), kInjectedNumber);
    std::size_t told = 0;
    std::size_t raised = 0;
    for (auto event = failed + 1; event != events.end(); ++event) {
        if (event->kind == JournalEvent::Kind::Raise) {
            ++raised;
        } else {
            ASSERT_EQ(event->kind, JournalEvent::Kind::Call);
            if (event->object == "Platform") {
                EXPECT_EQ(event->arguments.at(0), Value("DebugTools_83.Helper"));
                continue;
            }
            EXPECT_EQ(event->operation, "LogAndReRaiseVBError");
            ++told;
        }
    }
    const auto entered = std::count_if(events.begin(), events.end(), [](const JournalEvent& event) {
        return event.kind == JournalEvent::Kind::Enter;
    });
    const auto left = std::count_if(events.begin(), events.end(), [](const JournalEvent& event) {
        return event.kind == JournalEvent::Kind::Leave;
    });
    EXPECT_GE(told, 1U);
    EXPECT_EQ(told, raised);
    EXPECT_EQ(static_cast<std::size_t>(entered - left), raised)
        << "each method that was entered left or raised";
}

TEST_P(EveryCallOnARealStore, ReleasesAllItMadeAndRaisesWhatFailed) {
    int failures = 0;
    for (int failAt = 1;; ++failAt) {
        SCOPED_TRACE("call " + std::to_string(failAt) + " fails");
        FailingSink sink;
        World world(sink);
        sink.FailCall(failAt);
        bool raised = false;
        {
            JobHelper helper;
            try {
                Run(helper, world);
            } catch (const AutomationError& error) {
                raised = true;
                EXPECT_EQ(error.Number(), kInjectedNumber);
                EXPECT_EQ(error.Source(), kInjectedSource);
                EXPECT_TRUE(error.Description().ends_with(kInjectedDescription)) << error.Description();
            }
            EXPECT_EQ(helper.ParameterTagName(), "parameter") << "the next call works";
        }
        EXPECT_EQ(world.census->alive, 0) << "of " << world.census->made << " objects";
        if (!sink.HasFailed()) {
            EXPECT_FALSE(raised);
            break;
        }
        ++failures;
        EXPECT_TRUE(raised);
        // The last two events are those of the call that came after.
        ASSERT_GE(sink.events.size(), 2U);
        sink.events.resize(sink.events.size() - 2);
        ExpectOnlyTheHandOver(sink.events);
        if (HasFailure()) break;
    }
    const bool callsNobody =
        GetParam().method->name == "ParametersTagName" || GetParam().method->name == "ParameterTagName";
    EXPECT_EQ(failures == 0, callsNobody);
}

std::vector<SweepCase> AllCases() {
    std::vector<SweepCase> cases;
    for (const MethodCall& method : EveryMethod()) {
        cases.push_back({&method, false});
        if (method.hasConfigurationFallback) cases.push_back({&method, true});
    }
    return cases;
}

INSTANTIATE_TEST_SUITE_P(Methods, EveryCallOnARealStore, ::testing::ValuesIn(AllCases()),
                         [](const ::testing::TestParamInfo<SweepCase>& given) {
                             return given.param.method->name +
                                    (given.param.fromConfiguration ? "FromTheConfiguration" : "");
                         });

}  // namespace
}  // namespace kxjob
