#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apps/insight/insight_store.h"

namespace kxjob {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;
using testing_support::Finished;
using testing_support::InsightStore;

class WhyCommand : public ::testing::Test {
protected:
    std::string Why(const std::string& job) {
        const Finished finished = store_.Run({"why", job});
        EXPECT_EQ(finished.exitStatus, 0) << finished.err;
        return finished.out;
    }
    nlohmann::json Json(const std::string& job) { return store_.Json({"why", job}); }

    InsightStore store_;
};

TEST_F(WhyCommand, SaysThatAJobIsNext) {
    store_.AddJob("a", "QUEUED");
    store_.AddItem("i1", "a", 0);
    store_.AddItem("i2", "a", 1, "FAILED");

    EXPECT_EQ(Why("a"),
              "The job is QUEUED.\n"
              "It is the job that the next worker gets.\n"
              "Of its items 1 wait, 0 are in work and 1 have ended.\n"
              "No task of it is RUNNING.\n");
    EXPECT_EQ(Json("a").at("verdict"), "next");
}

TEST_F(WhyCommand, NamesTheJobsAheadInTheirOrder) {
    store_.AddJob("late", "RUNNING");
    store_.AddItem("i", "late", 0);
    store_.AddTask("t", "late", "", "2020-01-01T00:00:00.000Z");
    store_.AddJob("idle", "RUNNING");
    store_.AddJob("queued", "QUEUED");

    EXPECT_THAT(
        Why("late"),
        HasSubstr("2 jobs come before it (queued, idle): a QUEUED job comes before every RUNNING one"));
    const nlohmann::json why = Json("late");
    EXPECT_EQ(why.at("verdict"), "waiting");
    EXPECT_EQ(why.at("jobsAhead"), nlohmann::json({"queued", "idle"}));
}

TEST_F(WhyCommand, SaysHowManyShareThePlace) {
    for (const char* job : {"a", "b", "c"}) store_.AddJob(job, "QUEUED");

    EXPECT_THAT(Why("a"), HasSubstr("the next worker may get: 2 other jobs share its place."));
    EXPECT_EQ(Json("a").at("jobsBeside"), nlohmann::json({"b", "c"}));
}

TEST_F(WhyCommand, TellsOfTasksTheirClaimsAndTheEditorLock) {
    store_.AddJob("a", "RUNNING");
    store_.AddItem("i", "a", 0, "RUNNING");
    store_.AddTask("holds", "a", "2020-01-01T00:00:00.000Z", "9020-01-01T00:00:00.000Z", "L1");
    store_.AddTask("late", "a", "2020-01-02T00:00:00.000Z", "2020-01-02T00:10:00.000Z");
    store_.AddTask("other", "a", "2020-01-03T00:00:00.000Z");
    store_.Tables().Execute("UPDATE k_job SET jobeditorlockguid = 'L1'");

    const std::string text = Why("a");
    EXPECT_THAT(text, StartsWith("The job is RUNNING and worked on.\n"));
    EXPECT_THAT(text, HasSubstr("The task holds (process 71 on elsewhere) has been RUNNING for "));
    EXPECT_THAT(text, HasSubstr("its claim holds for another "));
    EXPECT_THAT(text, HasSubstr("ago: the next worker takes its items over."));
    EXPECT_THAT(text, HasSubstr("it makes no claim that could run out."));
    EXPECT_THAT(text,
                HasSubstr("Its editor lock is held by the RUNNING task holds (process 71 on elsewhere)."));

    const nlohmann::json why = Json("a");
    EXPECT_EQ(why.at("verdict"), "in-work");
    EXPECT_EQ(why.at("tasks").at(0).at("claim"), "holds");
    EXPECT_EQ(why.at("tasks").at(0).at("holdsLock"), true);
    EXPECT_EQ(why.at("tasks").at(1).at("claim"), "ran out");
    EXPECT_LT(why.at("tasks").at(1).at("claimSeconds"), 0);
    EXPECT_EQ(why.at("tasks").at(2).at("claim"), "none");
    EXPECT_EQ(why.at("tasks").at(2).at("claimSeconds"), nullptr);
}

TEST_F(WhyCommand, ATaskWhoseClaimRanOutDoesNotWorkOnItsJob) {
    store_.AddJob("a", "RUNNING");
    store_.AddItem("i", "a", 0, "RUNNING");
    store_.AddTask("late", "a", "2020-01-02T00:00:00.000Z", "2020-01-02T00:10:00.000Z");

    EXPECT_EQ(Json("a").at("verdict"), "next");
}

TEST_F(WhyCommand, SaysThatThisMachineCannotWorkOnIt) {
    store_.AddJob("a", "QUEUED", "CANNOT");

    EXPECT_THAT(Why("a"),
                HasSubstr("the component No_83.Thing of its type CANNOT cannot be created (Class not "
                          "registered: No_83.Thing)."));
    EXPECT_EQ(Json("a").at("verdict"), "component-missing");
}

TEST_F(WhyCommand, SaysThatOneJobWithoutATypeStopsAll) {
    store_.AddJob("orphan", "RUNNING", "GONE");
    store_.AddJob("a", "QUEUED");

    EXPECT_EQ(Json("orphan").at("verdict"), "type-missing");
    EXPECT_EQ(Json("a").at("verdict"), "selection-fails");
    EXPECT_THAT(Why("a"), HasSubstr("it has no type GONE, of which the job orphan is."));
}

TEST_F(WhyCommand, SaysWhatTheStatesMeanInWhichNobodyWorks) {
    for (const char* state : {"CREATING", "READY", "COMPLETE", "CANCELLED", "PAUSED"})
        store_.AddJob(state, state);

    EXPECT_EQ(Why("CREATING"), "The job is CREATING: workers get it once it is QUEUED.\n");
    EXPECT_EQ(Why("READY"), "The job is READY: workers get it once it is QUEUED.\n");
    EXPECT_EQ(Why("COMPLETE"), "The job is COMPLETE: there is nothing left to do.\n");
    EXPECT_EQ(Why("CANCELLED"), "The job is CANCELLED: there is nothing left to do.\n");
    EXPECT_THAT(Why("PAUSED"), HasSubstr("'PAUSED', which workers do not know"));
    EXPECT_EQ(Json("READY").at("verdict"), "not-started");
    EXPECT_EQ(Json("COMPLETE").at("verdict"), "ended");
}

TEST_F(WhyCommand, SaysThatNoItemIsLeft) {
    store_.AddJob("a", "RUNNING");
    store_.AddItem("i", "a", 0, "COMPLETE");

    EXPECT_EQ(Json("a").at("verdict"), "no-items-left");
    EXPECT_THAT(Why("a"), StartsWith("The job is RUNNING, but has no item left to work on.\n"));
}

TEST_F(WhyCommand, FailsForAJobThatIsNotThere) {
    const Finished finished = store_.Run({"why", "nobody"});

    EXPECT_EQ(finished.exitStatus, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_THAT(finished.err, HasSubstr("There is no job nobody"));
}

TEST_F(WhyCommand, RefusesWrongUsage) {
    EXPECT_EQ(store_.Run({"why"}).exitStatus, 2);
    EXPECT_EQ(store_.Run({"why", "a", "b"}).exitStatus, 2);
    EXPECT_EQ(store_.Run({"why", "a", "--loudly"}).exitStatus, 2);
    EXPECT_EQ(store_.Run({"why", "--help"}).exitStatus, 0);
}

}  // namespace
}  // namespace kxjob
