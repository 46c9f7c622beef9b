#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "apps/command_store.h"
#include "kxjob/array.h"

namespace kxjob {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using Json = nlohmann::json;
using testing_support::CommandStore;
using testing_support::Finished;
using testing_support::StateGuid;

class ChangingCommands : public ::testing::Test {
protected:
    std::string StateOf(const std::string& job) {
        return store_.Cell("SELECT jobstateid FROM c_job WHERE jobguid = '" + job + "'").ToText();
    }

    CommandStore store_;
    std::string job_ = store_.MakeJob({"a", "b"}, StateGuid('1'));
};

TEST_F(ChangingCommands, SetTheStateOfAJob) {
    const Finished finished = store_.Run({"set-state", job_, "READY"});

    EXPECT_EQ(finished.out, "Job " + job_ + " was QUEUED and is now READY.\n");
    EXPECT_EQ(StateOf(job_), "READY");
    EXPECT_EQ(store_.Answer({"set-state", job_, "RUNNING"}),
              (Json{{"job", job_}, {"before", "READY"}, {"state", "RUNNING"}}));
}

TEST_F(ChangingCommands, TakeAGuidAsAPersonTypesIt) {
    std::string typed = job_.substr(1, job_.size() - 2);
    std::ranges::transform(typed, typed.begin(), [](unsigned char c) { return std::tolower(c); });

    EXPECT_EQ(store_.Run({"set-state", typed, "READY"}).exitStatus, 0);
    EXPECT_EQ(StateOf(job_), "READY");
}

TEST_F(ChangingCommands, SetOtherStatesOnlyByForce) {
    const Finished refused = store_.Run({"set-state", job_, "ready"});
    EXPECT_EQ(refused.exitStatus, 2);
    EXPECT_THAT(refused.err,
                HasSubstr("ready is none of CREATING, READY, QUEUED, RUNNING, COMPLETE, CANCELLED;"));
    EXPECT_EQ(StateOf(job_), "QUEUED");

    EXPECT_EQ(store_.Run({"set-state", job_, "PARKED", "--force"}).exitStatus, 0);
    EXPECT_EQ(StateOf(job_), "PARKED");
}

TEST_F(ChangingCommands, EndARunningJobOnlyWithAYes) {
    store_.Answer({"set-state", job_, "RUNNING"});

    for (const char* state : {"COMPLETE", "CANCELLED"}) {
        const Finished asked = store_.Run({"set-state", job_, state});
        EXPECT_EQ(asked.exitStatus, 2);
        EXPECT_EQ(asked.err, "Job " + job_ + " is RUNNING. Make it " + state +
                                 "? There is no terminal to ask on: --yes is the answer.\n");
    }
    EXPECT_EQ(StateOf(job_), "RUNNING");
    EXPECT_EQ(store_.Run({"set-state", job_, "CANCELLED", "--yes"}).exitStatus, 0);
    EXPECT_EQ(StateOf(job_), "CANCELLED");
    EXPECT_EQ(store_.Run({"set-state", job_, "COMPLETE"}).exitStatus, 0)
        << "it runs no more: nobody is asked";
}

TEST_F(ChangingCommands, AddANoteToAJob) {
    EXPECT_EQ(store_.Run({"note", job_, "it's stopped"}).out, "The note stands with job " + job_ + ".\n");
    EXPECT_EQ(store_.Run({"note", job_, "-"}, "two\nlines\n").exitStatus, 0);

    const std::string note = store_.Answer({"show", job_}).at("failureNote");
    EXPECT_THAT(note, HasSubstr("it's stopped\r\n"));
    EXPECT_THAT(note, EndsWith("two\nlines"));
}

TEST_F(ChangingCommands, AddANoteToAnItem) {
    const std::string item = store_.Answer({"items", job_}).at("items").at(1).at("item");

    EXPECT_EQ(store_.Answer({"note", "--item", item, "broken"}), (Json{{"item", item}}));

    EXPECT_THAT(store_.Answer({"item", item}).at("note").get<std::string>(), EndsWith("broken"));
    EXPECT_EQ(store_.Answer({"show", job_}).at("failureNote"), "");
}

TEST_F(ChangingCommands, RemoveJobsWithAllThatTheyHave) {
    const std::string second = store_.MakeJob({"c"}, StateGuid('2'));
    const std::string third = store_.MakeJob({"d"}, StateGuid('3'));

    const Finished asked = store_.Run({"remove", job_});
    EXPECT_EQ(asked.exitStatus, 2);
    EXPECT_EQ(asked.err,
              "Remove job " + job_ + " with 2 items? There is no terminal to ask on: --yes is the answer.\n");
    EXPECT_EQ(store_.Cell("SELECT COUNT(*) FROM c_job"), Value(3));

    const Finished removed = store_.Run({"remove", job_, second, job_, "--yes"});
    EXPECT_EQ(removed.out,
              "Removed job " + job_ + " with 2 items.\nRemoved job " + second + " with 1 item.\n");
    EXPECT_EQ(store_.Cell("SELECT jobguid FROM c_job"), Value(third));
    EXPECT_EQ(store_.Cell("SELECT COUNT(*) FROM c_JobItem"), Value(1));
    EXPECT_EQ(store_.Answer({"remove", third, "--yes"}),
              (Json{{"removed", Json::array({{{"job", third}, {"items", 1}}})}}));
}

TEST_F(ChangingCommands, RemoveNothingWhenOneOfTheJobsIsNotThere) {
    const Finished finished = store_.Run({"remove", job_, "nobody", "--yes"});

    EXPECT_EQ(finished.exitStatus, 1);
    EXPECT_EQ(finished.err, "There is no job nobody\n");
    EXPECT_EQ(StateOf(job_), "QUEUED");
}

TEST_F(ChangingCommands, RefuseWrongUsage) {
    EXPECT_EQ(store_.Run({"remove"}).exitStatus, 2);
    EXPECT_EQ(store_.Run({"set-state", job_}).exitStatus, 2);
    EXPECT_EQ(store_.Run({"note", job_}).exitStatus, 2);
    EXPECT_EQ(store_.Run({"note", job_, ""}).exitStatus, 2);
    EXPECT_EQ(store_.Run({"note", job_, "-"}, "\n").exitStatus, 2);
    EXPECT_EQ(store_.Run({"note", "nobody", "text"}).exitStatus, 1);
    EXPECT_EQ(store_.Run({"note", "--item", job_, "text"}).exitStatus, 1);
    EXPECT_EQ(store_.Run({"set-state", "nobody", "READY"}).exitStatus, 1);
}

}  // namespace
}  // namespace kxjob
