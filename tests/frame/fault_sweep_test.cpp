#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "collaborators/this_thread.h"
#include "support/every_method.h"
#include "support/faulty_world.h"
#include "support/sweep_sentence.h"

namespace kxjob {
namespace {

using testing_support::ErrorLogger;
using testing_support::FaultyRun;
using testing_support::StoredJobs;

/// One call of the library, and the world that it meets.
struct Subject {
    std::string name;
    std::string className;
    std::string method;
    StoredJobs storedJobs;
    bool keepsSettings;  // the instance may cache them
    std::function<void(JobHelper&)> call;
};

void PrintTo(const Subject& subject, std::ostream* out) {
    *out << subject.name;
}

std::vector<Subject> EverySubject() {
    std::vector<Subject> subjects;
    for (const testing_support::MethodCall& method : testing_support::EveryMethod()) {
        const auto given = [call = method.call](JobHelper& helper) { call(helper, "given", 5, "kx_"); };
        const auto leftOut = [call = method.call](JobHelper& helper) { call(helper, "", 5, "kx_"); };
        subjects.push_back(
            {method.name, "JobHelper", method.name, StoredJobs::QueuedAndRunning, false, given});
        if (method.name == "GetNextJob") {  // the only one whose road depends on the jobs' states
            subjects.push_back({method.name + "WithRunningJobsOnly", "JobHelper", method.name,
                                StoredJobs::RunningOnly, false, given});
        }
        if (method.hasConfigurationFallback) {
            subjects.push_back({method.name + "FromTheConfiguration", "JobHelper", method.name,
                                StoredJobs::QueuedAndRunning, true, leftOut});
        }
    }
    for (const testing_support::TimerCall& member : testing_support::EveryTimerMember()) {
        subjects.push_back({"DurationTimer" + member.name, "DurationTimer", member.name,
                            StoredJobs::QueuedAndRunning, false,
                            [call = member.call](JobHelper&) { call(); }});
    }
    return subjects;
}

/// Which method may run another: the inner of two that are told of the same error, and the outer.
bool MayRun(const std::string& outer, const std::string& inner) {
    static const std::set<std::pair<std::string, std::string>> known{
        {"UnRegisterJobTask", "UnRegisterJobTaskIndicatingStatus"},
        {"GetNewLockExcludingInterlopers", "UpdateJobTaskLock"},
        {"CreateJob", "GetJobType"},
        {"CreateJob", "GetJob"},
        {"CreateJob", "RemoveJobAndItems"},
        {"RemoveIrrelevantJobsInAllContainers", "RemoveIrrelevantJobsInContainer"},
        {"RemoveIrrelevantJobsInContainer", "RemoveJobAndItems"},
        {"RemoveIrrelevantJobsInContainer", "RemoveOrphanedJobInformation"},
        {"GetJobExecutionStatistics", "piGetJobExecutionStatistics"},
        {"GetJobExecutionStatisticsAllowMissing", "piGetJobExecutionStatistics"},
        {"UpdateJobStatus", "piAdminHistoryWrite"},
        {"GetNextJob", "LowImpactGetNextJob"},
        {"LowImpactGetNextJob", "GetQueuedAndRunningJobs"},
        {"LowImpactGetNextJob", "GetHighestRankingRunningJobs"},
        {"GetQueuedAndRunningJobs", "GetJobTypeProgIDs"},
        {"GetJobTypeProgIDs", "GetJobType"},
        {"CreateJob", "RMConnectionDocument"},
        {"CreateJobItem", "RMConnectionDocument"},
        {"RemoveJobAndItems", "RMConnectionDocument"},
        {"GetJob", "RMConnectionDocument"},
        {"GetJobTasks", "RMConnectionDocument"},
        {"piGetJobExecutionStatistics", "RMConnectionDocument"},
        {"UpdateJobStatus", "RMConnectionDocument"},
        {"Class_Initialize", "Start"},
    };
    return known.contains({outer, inner});
}

class FaultSweep : public ::testing::TestWithParam<Subject> {
protected:
    ~FaultSweep() override { InstallCollaborators(nullptr); }

    /// Runs the subject in a new world and checks what has to hold after any run: nothing that the call made
    /// is alive. Gives the error that reached the caller.
    static std::optional<AutomationError> Perform(FaultyRun& run) {
        const Subject& subject = GetParam();
        run.storedJobs = subject.storedJobs;
        InstallCollaborators(testing_support::MakeFaultyWorld(run));
        std::optional<AutomationError> raised;
        {
            JobHelper helper;
            try {
                subject.call(helper);
            } catch (const AutomationError& error) {
                raised = error;
            }
            std::map<std::string, int> left = run.alive;
            if (subject.keepsSettings && left["ConnectionSettings"] <= 1) left.erase("ConnectionSettings");
            EXPECT_EQ(left, (std::map<std::string, int>())) << "alive after the call";
        }
        EXPECT_EQ(run.alive, (std::map<std::string, int>())) << "alive after the instance";
        EXPECT_TRUE(run.running.empty());
        InstallCollaborators(nullptr);
        return raised;
    }

    /// The number of steps in a run without a fault.
    static std::size_t StepsWithoutAFault() {
        FaultyRun run;
        Perform(run);
        return run.steps.size();
    }

    /// Fails the first step, then the second ... until a run meets no fault; `check` is called for each run
    /// that does.
    static void Sweep(
        ErrorLogger errorLogger, bool isObserved,
        const std::function<void(const FaultyRun&, const std::optional<AutomationError>&)>& check) {
        const std::size_t total = StepsWithoutAFault();
        std::size_t faults = 0;
        for (std::size_t step = 1; step <= total + 1; ++step) {
            FaultyRun run;
            run.failingStep = step;
            run.errorLogger = errorLogger;
            run.isObserved = isObserved;
            const std::optional<AutomationError> raised = Perform(run);
            if (!run.fault.has_value()) {
                EXPECT_FALSE(raised.has_value());
                EXPECT_TRUE(run.told.empty());
                break;
            }
            ++faults;
            SCOPED_TRACE("step " + std::to_string(step) + ": " + run.steps.back());
            check(run, raised);
        }
        EXPECT_EQ(faults, total);
    }

    /// The description that the fault has when `frames` of the running methods have passed it on.
    static std::string ExpectedDescription(const FaultyRun& run, std::size_t frames) {
        std::vector<std::string> running;
        for (const FaultyRun::RunningMethod& method : run.runningAtFault) running.push_back(method.method);
        return testing_support::DescriptionBehind(running, frames, run.steps.back(),
                                                  run.fault->Description());
    }

    static void ExpectToldByEveryRunningMethod(const FaultyRun& run) {
        const Subject& subject = GetParam();
        const std::vector<FaultyRun::RunningMethod>& running = run.runningAtFault;
        ASSERT_FALSE(running.empty());
        ASSERT_EQ(run.told.size(), running.size());
        for (std::size_t i = 0; i < running.size(); ++i) {
            SCOPED_TRACE("told by " + running[i].method);
            const FaultyRun::Told& told = run.told[i];
            EXPECT_EQ(told.number, run.fault->Number());
            EXPECT_EQ(told.source, run.fault->Source());
            EXPECT_EQ(told.description, ExpectedDescription(run, i + 1));
            EXPECT_EQ(told.application, "Job_83 8.3.1202");
            EXPECT_GT(told.line, 0);
            EXPECT_EQ(told.line, running[i].line);
            EXPECT_EQ(told.project, "Job_83");
            EXPECT_EQ(told.className, subject.className);
            EXPECT_EQ(told.method, running[i].method);
            EXPECT_TRUE(i == 0 || MayRun(told.method, run.told[i - 1].method));
        }
        // A timer is always created first, so that its constructor may be the outermost.
        const std::string& outermost = running.back().method;
        EXPECT_TRUE(outermost == subject.method || outermost == "Class_Initialize") << outermost;
    }
};

TEST_P(FaultSweep, LeavesNothingAliveWithoutAFault) {
    FaultyRun run;
    EXPECT_FALSE(Perform(run).has_value());
    EXPECT_TRUE(run.told.empty());
    const bool needsNobody =
        GetParam().method == "ParametersTagName" || GetParam().method == "ParameterTagName";
    EXPECT_EQ(run.steps.empty(), needsNobody);
}

TEST_P(FaultSweep, TellsEveryFaultOnceAMethodAndPassesItOn) {
    Sweep(ErrorLogger::RaisesAgain, true,
          [](const FaultyRun& run, const std::optional<AutomationError>& raised) {
              ASSERT_TRUE(raised.has_value());
              EXPECT_EQ(raised->Number(), run.fault->Number());
              EXPECT_EQ(raised->Source(), run.fault->Source());
              EXPECT_EQ(raised->Description(), ExpectedDescription(run, run.runningAtFault.size()));
              EXPECT_TRUE(run.stepsAfterFault.empty()) << run.stepsAfterFault.front();
              ExpectToldByEveryRunningMethod(run);
          });
}

TEST_P(FaultSweep, PassesEveryFaultOnWhenTheErrorLoggerCannotBeCreated) {
    Sweep(ErrorLogger::CannotBeCreated, false,
          [](const FaultyRun& run, const std::optional<AutomationError>& raised) {
              ASSERT_TRUE(raised.has_value());
              EXPECT_EQ(raised->Number(), run.fault->Number());
              EXPECT_EQ(raised->Source(), run.fault->Source());
              EXPECT_TRUE(raised->Description().ends_with(run.fault->Description())) << raised->Description();
              EXPECT_TRUE(run.told.empty());
              EXPECT_TRUE(run.stepsAfterFault.empty()) << run.stepsAfterFault.front();
          });
}

TEST_P(FaultSweep, ReturnsFromEveryFaultWhenTheErrorLoggerReturns) {
    Sweep(ErrorLogger::Returns, false,
          [](const FaultyRun& run, const std::optional<AutomationError>& raised) {
              EXPECT_FALSE(raised.has_value()) << raised->Description();
              ASSERT_FALSE(run.told.empty());
              EXPECT_EQ(run.told.front().number, run.fault->Number());
          });
}

INSTANTIATE_TEST_SUITE_P(EveryMethod, FaultSweep, ::testing::ValuesIn(EverySubject()),
                         [](const auto& subject) { return subject.param.name; });

/// The sweep proves little unless the methods have all of their work to do.
class FaultSweepRoads : public ::testing::Test {
protected:
    ~FaultSweepRoads() override { InstallCollaborators(nullptr); }

    FaultyRun& Perform(const std::string& name) {
        const std::vector<Subject> subjects = EverySubject();
        const auto subject = std::find_if(subjects.begin(), subjects.end(),
                                          [&](const Subject& candidate) { return candidate.name == name; });
        run_ = {};
        run_.storedJobs = subject->storedJobs;
        InstallCollaborators(testing_support::MakeFaultyWorld(run_));
        JobHelper helper;
        subject->call(helper);
        return run_;
    }

private:
    FaultyRun run_;
};

TEST_F(FaultSweepRoads, CreateJobRemovesTwoEarlierJobsAndWritesItsParameters) {
    const FaultyRun& run = Perform("CreateJob");
    EXPECT_EQ(run.CountOf("SystemFlagReader.ReadFlag"), 1);
    EXPECT_EQ(run.CountOf("DataAccess.Execute"), 7);
    EXPECT_EQ(run.CountOf("DataAccess.WriteLongText"), 1);
    EXPECT_EQ(run.CountOf("component.AdminHistoryWrite"), 3);
}

TEST_F(FaultSweepRoads, TheSweepRemovesTwoJobsAndTheOrphansOfTwoTables) {
    const FaultyRun& run = Perform("RemoveIrrelevantJobsInAllContainers");
    EXPECT_EQ(run.CountOf("DataAccess.Execute"), 8);
    EXPECT_EQ(run.CountOf("component.AdminHistoryWrite"), 2);
    EXPECT_EQ(run.CountOf("component.ApplicationStateReadGUID"), 2);
}

TEST_F(FaultSweepRoads, GetNextJobPicksAmongQueuedJobsAndAmongRankedOnes) {
    EXPECT_EQ(Perform("GetNextJob").CountOf("DataAccess.Query"), 2);
    const FaultyRun& ranked = Perform("GetNextJobWithRunningJobsOnly");
    EXPECT_EQ(ranked.CountOf("DataAccess.Query"), 3);
    EXPECT_EQ(ranked.CountOf("ObjectFactory.CanCreate"), 5);
    EXPECT_EQ(ranked.CountOf("RandomSource.Next"), 1);
}

TEST_F(FaultSweepRoads, TheOthersReachTheirLastStep) {
    EXPECT_EQ(Perform("CreateSimpleJobItems").CountOf("BatchSqlExecutor.Add"), 2);
    EXPECT_EQ(Perform("CreateSimpleJobItems").steps.back(), "BatchSqlExecutor.Flush");
    EXPECT_EQ(Perform("AppendJobFailureNote").steps.back(), "component.ContentBlobUpdate");
    EXPECT_EQ(Perform("AppendJobItemFailureNote").steps.back(), "component.ContentBlobUpdate");
    EXPECT_EQ(Perform("GetNewLockExcludingInterlopers").CountOf("DataAccess.Execute"), 2);
    EXPECT_EQ(Perform("GetJobFromTheConfiguration").CountOf("ConnectionSettings.NameSpaceQualifier"), 1);
}

TEST(EveryMethod, ListsTheThirtyFiveMethodsOnce) {
    std::set<std::string> names;
    std::set<std::string> withFallback;
    for (const testing_support::MethodCall& method : testing_support::EveryMethod()) {
        names.insert(method.name);
        if (method.hasConfigurationFallback) withFallback.insert(method.name);
    }
    EXPECT_EQ(testing_support::EveryMethod().size(), 35U);
    EXPECT_EQ(names.size(), 35U);
    // The statistics share one reader, which has the fallback.
    EXPECT_EQ(withFallback,
              (std::set<std::string>{"CreateJob", "CreateJobItem", "GetJob", "GetJobTasks", "UpdateJobStatus",
                                     "RemoveJobAndItems", "GetJobExecutionStatistics",
                                     "GetJobExecutionStatisticsAllowMissing"}));
}

}  // namespace
}  // namespace kxjob
