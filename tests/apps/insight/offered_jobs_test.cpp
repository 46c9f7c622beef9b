#include "insight/selection/offered_jobs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

#include "apps/insight/insight_store.h"
#include "kxjob/automation_error.h"
#include "kxjob/job_helper.h"

namespace kxjob::command {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;
using testing_support::InsightStore;

std::vector<std::string> Guids(const std::vector<OfferedJob>& jobs) {
    std::vector<std::string> guids;
    for (const OfferedJob& job : jobs) guids.push_back(job.guid);
    return guids;
}

OfferedJob Running(const std::string& guid, std::int64_t tasks) {
    return {.guid = guid,
            .type = "T",
            .state = "RUNNING",
            .runningTasks = tasks,
            .hasType = true,
            .canBeWorkedOn = true};
}

OfferedJob Queued(const std::string& guid) {
    OfferedJob job = Running(guid, 0);
    job.state = "QUEUED";
    return job;
}

class SelectionOfRandomStores : public ::testing::Test {
protected:
    /// Some jobs in all states and of all types, some of them with tasks.
    void FillAtRandom() {
        for (const char* table : {"job", "jobtask"})
            statements_.push_back("DELETE FROM " + store_.Tables().Table(table));
        const int jobs = Up(6);
        // A store without QUEUED jobs is the interesting one, and too rare by itself.
        const std::vector<std::string> states =
            Up(2) == 0 ? std::vector<std::string>{"CREATING", "READY", "QUEUED", "RUNNING", "COMPLETE"}
                       : std::vector<std::string>{"RUNNING", "RUNNING", "CANCELLED"};
        for (int i = 0; i < jobs; ++i) {
            const std::string guid = "j" + std::to_string(i);
            const std::string& state =
                states[static_cast<std::size_t>(Up(static_cast<int>(states.size()) - 1))];
            statements_.push_back("INSERT INTO k_job (jobguid, jobtypeid, jobstateid) VALUES ('" + guid +
                                  "', '" + (Up(3) == 0 ? "CANNOT" : "CAN") + "', '" + state + "')");
            const int tasks = Up(3);
            for (int task = 0; task < tasks; ++task) {
                statements_.push_back(
                    "INSERT INTO k_jobtask (jobtaskguid, jobguid, jobtaskstateid) VALUES ('" + guid + "t" +
                    std::to_string(task) + "', '" + guid + "', '" + (Up(3) == 0 ? "COMPLETE" : "RUNNING") +
                    "')");
            }
        }
        store_.Tables().ExecuteTogether(statements_);
        statements_.clear();
    }
    int Up(int most) { return std::uniform_int_distribution<int>(0, most)(random_); }
    std::string Selected() {
        std::string job;
        double rank = 0;
        JobHelper().GetNextJob(store_.Connection(), dspSqlite, "k_", job, rank);
        return job;
    }

    InsightStore store_;
    std::mt19937 random_{20'261'121};
    std::vector<std::string> statements_;
};

TEST_F(SelectionOfRandomStores, GivesOneOfTheJobsThatAreSaidToBeNext) {
    int withChoice = 0;
    int withNone = 0;
    for (int round = 0; round < 200; ++round) {
        FillAtRandom();
        const std::vector<std::string> next = Guids(NextJobs(ReadOfferedJobs(store_.Where())));
        for (int draw = 0; draw < 5; ++draw) {
            const std::string selected = Selected();
            if (next.empty()) {
                ASSERT_EQ(selected, "") << "round " << round;
            } else {
                ASSERT_THAT(next, Contains(selected)) << "round " << round;
            }
        }
        withChoice += next.size() > 1 ? 1 : 0;
        withNone += next.empty() ? 1 : 0;
    }
    EXPECT_GT(withChoice, 20) << "the stores are too poor to tell anything";
    EXPECT_GT(withNone, 5);
}

TEST_F(SelectionOfRandomStores, GivesEachOfTheJobsThatAreSaidToBeNext) {
    store_.AddJob("busy", "RUNNING");
    store_.AddTask("t", "busy");
    for (const char* job : {"a", "b", "c"}) store_.AddJob(job, "RUNNING");
    std::set<std::string> selected;
    for (int draw = 0; draw < 200; ++draw) selected.insert(Selected());

    EXPECT_THAT(selected, UnorderedElementsAre("a", "b", "c"));
    EXPECT_THAT(Guids(NextJobs(ReadOfferedJobs(store_.Where()))), UnorderedElementsAre("a", "b", "c"));
}

TEST_F(SelectionOfRandomStores, FailsForAJobWhoseTypeIsThereInAnotherLetterCase) {
    store_.AddJob("a", "QUEUED", "can");

    EXPECT_THROW(Selected(), AutomationError);
    const std::vector<OfferedJob> jobs = ReadOfferedJobs(store_.Where());
    EXPECT_FALSE(jobs.at(0).hasType);
    EXPECT_THAT(NextJobs(jobs), ElementsAre());
}

TEST(OfferedJobs, QueuedOnesComeBeforeTheRunningOnesWithTheFewestTasks) {
    const std::vector<OfferedJob> jobs{Running("two", 2), Queued("q"), Running("none", 0), Running("one", 1)};

    EXPECT_THAT(Guids(NextJobs(jobs)), ElementsAre("q"));
    EXPECT_THAT(Guids(JobsAheadOf(3, jobs)), ElementsAre("q", "none", "one"));
    EXPECT_THAT(Guids(JobsAt(2, jobs)), ElementsAre("one"));
}

TEST(OfferedJobs, OneWithTwoHundredFiftySixTasksHasNoPlace) {
    EXPECT_EQ(PlaceOf(Running("j", 255)), 256);
    EXPECT_EQ(PlaceOf(Running("j", 256)), std::nullopt);
}

TEST(OfferedJobs, OneThatThisMachineCannotWorkOnHasNoPlace) {
    OfferedJob job = Queued("j");
    job.canBeWorkedOn = false;
    EXPECT_EQ(PlaceOf(job), std::nullopt);
    EXPECT_THAT(NextJobs({job}), ElementsAre());
}

}  // namespace
}  // namespace kxjob::command
