#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apps/command_store.h"
#include "kxjob/array.h"

namespace kxjob {
namespace {

using ::testing::HasSubstr;
using Json = nlohmann::json;
using testing_support::CommandStore;
using testing_support::Finished;
using testing_support::StateGuid;

TEST(TypeCommand, AddsATypeThatJobsCanHave) {
    CommandStore store;

    const Finished added = store.Run({"type", "add", "REPORT", "--component", "Reports_83.Writer",
                                      "--description", "it's monthly", "--notify", "Mail_83.Sender"});

    EXPECT_EQ(added.exitStatus, 0) << added.err;
    EXPECT_EQ(added.out, "Added job type REPORT.\n");
    EXPECT_EQ(store.Answer({"type", "list"}).at("types").at(0),
              Json::parse(R"({"type":"REPORT","description":"it's monthly","component":"Reports_83.Writer",)"
                          R"("notificationComponent":"Mail_83.Sender"})"));
    EXPECT_EQ(store.Run({"create", "--type", "REPORT", "item"}).exitStatus, 0);
}

TEST(TypeCommand, ListsTheTypesByName) {
    CommandStore store;
    store.Answer({"type", "add", "A", "--component", "A_83.A", "--description", "\xC3\xA9\xC3\xA9"});

    EXPECT_EQ(store.Run({"type", "list"}).out,
              "2 job types\n"
              "  type  component         notified at the end  description\n"
              "  A     A_83.A                                 \xC3\xA9\xC3\xA9\n"
              "  TYPE  kxTimer_83.Timer                       nightly work\n\n");
}

TEST(TypeCommand, ChangesATypeOnlyWhenItIsTold) {
    CommandStore store;

    const Finished refused = store.Run({"type", "add", "TYPE", "--component", "Other_83.Writer"});
    EXPECT_EQ(refused.exitStatus, 1);
    EXPECT_THAT(refused.err, HasSubstr("There is a job type TYPE already; --replace changes it"));
    EXPECT_EQ(store.Cell("SELECT implprogid FROM c_JobType"), Value("kxTimer_83.Timer"));

    const Finished changed =
        store.Run({"type", "add", "TYPE", "--component", "Other_83.Writer", "--replace"});
    EXPECT_EQ(changed.out, "Changed job type TYPE.\n");
    EXPECT_EQ(store.Cell("SELECT implprogid FROM c_JobType"), Value("Other_83.Writer"));
    EXPECT_EQ(store.Cell("SELECT COUNT(*) FROM c_JobType"), Value(1));
}

TEST(TypeCommand, KeepsATypeThatJobsHaveAndSaysHowMany) {
    CommandStore store;
    store.MakeJob({"a"}, StateGuid('1'));
    store.MakeJob({"b"}, StateGuid('2'));

    const Finished refused = store.Run({"type", "remove", "TYPE", "--yes"});
    EXPECT_EQ(refused.exitStatus, 1);
    EXPECT_THAT(refused.err, HasSubstr("2 jobs of type TYPE are there, so that it is not removed"));
    EXPECT_EQ(store.Cell("SELECT COUNT(*) FROM c_JobType"), Value(1));

    EXPECT_EQ(store.Answer({"type", "remove", "TYPE", "--force", "--yes"}),
              Json::parse(R"({"removed":"TYPE","jobs":2})"));
    EXPECT_EQ(store.Cell("SELECT COUNT(*) FROM c_JobType"), Value(0));
}

TEST(TypeCommand, RemovesATypeOnlyWithAYesWhereNobodyCanBeAsked) {
    CommandStore store;

    const Finished asked = store.Run({"type", "remove", "TYPE"});
    EXPECT_EQ(asked.exitStatus, 2);
    EXPECT_EQ(asked.err, "Remove job type TYPE? There is no terminal to ask on: --yes is the answer.\n");
    EXPECT_EQ(store.Cell("SELECT COUNT(*) FROM c_JobType"), Value(1));

    EXPECT_EQ(store.Run({"type", "remove", "TYPE", "--yes"}).out, "Removed job type TYPE.\n");
    EXPECT_EQ(store.Cell("SELECT COUNT(*) FROM c_JobType"), Value(0));
}

TEST(TypeCommand, RefusesWrongUsage) {
    CommandStore store;

    EXPECT_EQ(store.Run({"type"}).exitStatus, 2);
    EXPECT_EQ(store.Run({"type", "add", "T"}).exitStatus, 2);
    EXPECT_EQ(store.Run({"type", "add", "", "--component", "C"}).exitStatus, 2);
    EXPECT_EQ(store.Run({"type", "add", "T", "--component", ""}).exitStatus, 2);
    EXPECT_EQ(store.Run({"type", "remove", "NOBODY", "--yes"}).exitStatus, 1);
    EXPECT_EQ(store.Cell("SELECT COUNT(*) FROM c_JobType"), Value(1));
}

}  // namespace
}  // namespace kxjob
