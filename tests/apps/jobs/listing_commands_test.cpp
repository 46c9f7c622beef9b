#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apps/command_store.h"
#include "kxjob/array.h"

namespace kxjob {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using Json = nlohmann::json;
using testing_support::CommandStore;
using testing_support::Finished;
using testing_support::StateGuid;

/// Three jobs: "new" has not started, "early" and "late" have; "early" is the one with items and tasks.
class ListingCommands : public ::testing::Test {
protected:
    ListingCommands() {
        Store& store = store_.Tables();
        store.Execute("INSERT INTO c_applicationstate (stateid, stateguid) VALUES ('PRODUCTION', '" +
                      StateGuid('1') + "')");
        store.Execute(
            "INSERT INTO c_job (jobguid, jobtypeid, description, parameters, appstateguid, jobstateid,"
            " nextjobitem, totalitemcount, succeededitemcount, faileditemcount, startdt, lastcompletiondt,"
            " sumoftimeincsq, failurenote) VALUES ('early', 'TYPE', 'caf\xC3\xA9', "
            "'<parameters>\n</parameters>',"
            " '" +
            StateGuid('1') +
            "', 'RUNNING', 4, 8, 3, 1, '2026-03-01T09:00:00.000Z',"
            " '2026-03-01T09:00:08.000Z', 20, 'first line\r\nsecond line')");
        store.Execute(
            "INSERT INTO c_job (jobguid, jobtypeid, appstateguid, jobstateid, totalitemcount,"
            " succeededitemcount, startdt, lastcompletiondt) VALUES ('late', 'OTHER', '" +
            StateGuid('2') + "', 'COMPLETE', 5, 5, '2026-03-02T09:00:00.000Z', '2026-03-02T09:00:10.000Z')");
        store.Execute(
            "INSERT INTO c_job (jobguid, jobtypeid, appstateguid, jobstateid, totalitemcount) VALUES ('new',"
            " 'TYPE', '" +
            StateGuid('2') + "', 'QUEUED', 3000000000)");
        for (const char* values :
             {"'i0', 'early', 'north', 0, 'COMPLETE', 't1'", "'i1', 'early', 'south', 1, 'FAILED', 't1'",
              "'i2', 'early', 'west', 2, NULL, NULL", "'i3', 'early', 'east', 3, '', NULL"}) {
            store.Execute(
                "INSERT INTO c_JobItem (jobitemguid, jobguid, identifier, sequence, jobitemstateid,"
                " jobtaskguid) VALUES (" +
                std::string(values) + ")");
        }
        for (const char* values :
             {"'t1', 'early', 'a worker', 'host1', 71, 72, 'RUNNING', '2026-03-01T09:00:00.000Z'",
              "'t2', 'late', 'another', 'host2', 81, 82, 'FAILED', '2026-03-02T09:00:00.000Z'"}) {
            store.Execute(
                "INSERT INTO c_jobtask (jobtaskguid, jobguid, description, machine, processid, threadid,"
                " jobtaskstateid, startdt) VALUES (" +
                std::string(values) + ")");
        }
    }

    std::vector<std::string> Listed(std::vector<std::string> options) {
        options.insert(options.begin(), "list");
        std::vector<std::string> jobs;
        const Json answer = store_.Answer(options);
        for (const Json& job : answer.at("jobs")) jobs.push_back(job.at("job"));
        return jobs;
    }
    std::vector<std::string> Items(std::vector<std::string> options) {
        options.insert(options.begin(), {"items", "early"});
        std::vector<std::string> items;
        const Json answer = store_.Answer(options);
        for (const Json& item : answer.at("items")) items.push_back(item.at("identifier"));
        return items;
    }

    CommandStore store_;
};

TEST_F(ListingCommands, ListsJobsInTheOrderThatIsWanted) {
    EXPECT_THAT(Listed({}), ElementsAre("new", "late", "early"));
    EXPECT_THAT(Listed({"--reverse"}), ElementsAre("early", "late", "new"));
    EXPECT_THAT(Listed({"--sort", "guid"}), ElementsAre("early", "late", "new"));
    EXPECT_THAT(Listed({"--sort", "type"}), ElementsAre("late", "early", "new"));
    EXPECT_THAT(Listed({"--sort", "state"}), ElementsAre("late", "new", "early"));
    EXPECT_THAT(Listed({"--sort", "progress"}), ElementsAre("late", "early", "new"));
    EXPECT_THAT(Listed({"--sort", "failed"}), ElementsAre("early", "late", "new"));
    EXPECT_THAT(Listed({"--sort", "total"}), ElementsAre("new", "early", "late"));
}

TEST_F(ListingCommands, ListsTheJobsThatAreWanted) {
    EXPECT_THAT(Listed({"--type", "TYPE"}), ElementsAre("new", "early"));
    EXPECT_THAT(Listed({"--state", "COMPLETE"}), ElementsAre("late"));
    EXPECT_THAT(Listed({"--application-state", "PRODUCTION"}), ElementsAre("early"));
    EXPECT_THAT(Listed({"--application-state", StateGuid('2')}), ElementsAre("new", "late"));
    EXPECT_THAT(Listed({"--limit", "1"}), ElementsAre("new"));
    EXPECT_EQ(store_.Answer({"list", "--limit", "1"}).at("found"), 3);
    EXPECT_EQ(store_.Answer({"list", "--type", "TYPE"}).at("jobs").at(0).at("totalItems"), 3000000000);
}

TEST_F(ListingCommands, ShowsJobsToPeople) {
    EXPECT_EQ(
        store_.Run({"list"}).out,
        "3 jobs\n"
        "  job    type   state     done   items            failed  started                   description\n"
        "  new    TYPE   QUEUED      0 %  0 of 3000000000  0\n"
        "  late   OTHER  COMPLETE  100 %  5 of 5           0       2026-03-02T09:00:00.000Z\n"
        "  early  TYPE   RUNNING    50 %  4 of 8           1       2026-03-01T09:00:00.000Z  "
        "caf\xC3\xA9\n\n");
    EXPECT_THAT(store_.Run({"list", "--limit", "2"}).out, HasSubstr("2 of 3 jobs\n"));
    EXPECT_EQ(store_.Run({"list", "--state", "NONE"}).out, "0 jobs\n\n");
}

TEST_F(ListingCommands, ShowsAWholeJob) {
    const std::string out = store_.Run({"show", "early"}).out;

    EXPECT_THAT(out, HasSubstr("Job early\n"
                               "  description        caf\xC3\xA9\n"
                               "  type               TYPE, executed by kxTimer_83.Timer\n"
                               "  state              RUNNING\n"
                               "  application state  " +
                               StateGuid('1') +
                               ", PRODUCTION\n"
                               "  progress           50 %, 4 of 8 items ended, 1 of them failed; the next is"
                               " number 4\n"
                               "  started            2026-03-01T09:00:00.000Z\n"
                               "  last item ended    2026-03-01T09:00:08.000Z\n"
                               "  rate               0.5 items/s, 2.00 s an item on average\n"
                               "  variance           1 s\xC2\xB2 of the time between two ends of items\n"
                               "  estimated end      "));
    EXPECT_THAT(out, HasSubstr("Parameters\n  <parameters>\n  </parameters>\n"));
    EXPECT_THAT(out, HasSubstr("Items by state\n"
                               "  state     items\n"
                               "  waiting   2\n"
                               "  COMPLETE  1\n"
                               "  FAILED    1\n"));
    EXPECT_THAT(out, HasSubstr("Items by machine\n"
                               "  machine  state     items\n"
                               "  host1    COMPLETE  1\n"
                               "  host1    FAILED    1\n"));
    EXPECT_THAT(
        out, HasSubstr("  t1    RUNNING  a worker     host1    71       72      2026-03-01T09:00:00.000Z\n"));
    EXPECT_THAT(out, HasSubstr("Failure note\n  first line\n  second line\n"));
    EXPECT_THAT(out, Not(HasSubstr("\033"))) << "nobody watches";
}

TEST_F(ListingCommands, TellsProgramsOfAWholeJob) {
    const Json job = store_.Answer({"show", "early"});

    EXPECT_EQ(job.at("percentDone"), 50);
    EXPECT_EQ(job.at("applicationStateName"), "PRODUCTION");
    EXPECT_EQ(job.at("pace").at("itemsPerSecond"), 0.5);
    EXPECT_EQ(job.at("pace").at("variance"), 1);
    EXPECT_EQ(job.at("itemStates"), Json::parse(R"([{"state":"","items":2},{"state":"COMPLETE","items":1},)"
                                                R"({"state":"FAILED","items":1}])"));
    EXPECT_EQ(job.at("owners").size(), 2U);
    EXPECT_EQ(job.at("tasks").at(0).at("task"), "t1");
    EXPECT_EQ(job.at("failureNote"), "first line\r\nsecond line");
    EXPECT_TRUE(store_.Answer({"show", "new"}).at("pace").is_null());
    EXPECT_TRUE(store_.Answer({"show", "late"}).at("pace").at("estimatedEnd").is_null());
}

TEST_F(ListingCommands, ListsTheItemsOfAJob) {
    EXPECT_EQ(store_.Run({"items", "early"}).out,
              "4 items\n"
              "  number  item  state     identifier\n"
              "  0       i0    COMPLETE  north\n"
              "  1       i1    FAILED    south\n"
              "  2       i2    waiting   west\n"
              "  3       i3    waiting   east\n\n");
    EXPECT_THAT(Items({"--state", "FAILED"}), ElementsAre("south"));
    EXPECT_THAT(Items({"--state", "waiting"}), ElementsAre("west", "east"));
    EXPECT_THAT(Items({"--offset", "1", "--limit", "2"}), ElementsAre("south", "west"));
    EXPECT_THAT(Items({"--offset", "9"}), ElementsAre());
    EXPECT_THAT(store_.Run({"items", "early", "--limit", "1"}).out, HasSubstr("1 of 4 items\n"));
    EXPECT_EQ(store_.Run({"items", "new"}).out, "0 items\n\n");
}

TEST_F(ListingCommands, ShowsAnItemWithItsDataAndNote) {
    store_.Tables().Execute(
        "UPDATE c_JobItem SET data = 'one\ntwo', failurenote = 'why\033[31m', startdt ="
        " '2026-03-01T09:00:01.000Z' WHERE jobitemguid = 'i1'");

    EXPECT_EQ(store_.Run({"item", "i1"}).out,
              "Item i1\n"
              "  identifier  south\n"
              "  state       FAILED\n"
              "  started     2026-03-01T09:00:01.000Z\n\n"
              "Data\n  one\n  two\n\n"
              "Note\n  why [31m\n\n")
        << "what others wrote does not command the terminal";
    EXPECT_EQ(store_.Answer({"item", "i1"}).at("data"), "one\ntwo");
}

TEST_F(ListingCommands, ListsTasks) {
    EXPECT_EQ(store_.Answer({"tasks"}).at("tasks").size(), 2U);
    EXPECT_EQ(store_.Answer({"tasks", "late"}).at("tasks").at(0).at("task"), "t2");
    EXPECT_EQ(store_.Answer({"tasks", "--state", "RUNNING"}).at("tasks").at(0).at("task"), "t1");
    const std::string out = store_.Run({"tasks"}).out;
    EXPECT_THAT(out, HasSubstr("2 tasks\n  task  job    state    machine  process"));
    EXPECT_THAT(out, HasSubstr("  t1    early  RUNNING  host1    71       72"));
}

TEST_F(ListingCommands, TellsATaskToStop) {
    EXPECT_EQ(store_.Run({"tasks", "--stop", "t1"}).out, "Task t1, which is RUNNING, is told to stop.\n");
    EXPECT_EQ(store_.Cell("SELECT command FROM c_jobtask WHERE jobtaskguid = 't1'"), Value("STOP"));
    EXPECT_EQ(store_.Cell("SELECT COUNT(*) FROM c_jobtask WHERE command = 'STOP'"), Value(1));
    EXPECT_EQ(store_.Run({"tasks", "--stop", "nobody"}).exitStatus, 1);
    EXPECT_EQ(store_.Run({"tasks", "early", "--stop", "t1"}).exitStatus, 2);
}

TEST_F(ListingCommands, TellsTheHistoryFromItsEnd) {
    const std::string job = store_.MakeJob({"a"}, StateGuid('3'));
    const std::string other = store_.MakeJob({"a"}, StateGuid('4'));

    const Json all = store_.Answer({"history"}).at("history");
    EXPECT_EQ(all.size(), 6U);
    EXPECT_GE(all.at(0).at("written"), all.at(5).at("written"));
    EXPECT_EQ(store_.Answer({"history", "--job", job}).at("history").size(), 3U);
    EXPECT_EQ(store_.Answer({"history", "--job", "%"}).at("history").size(), 0U) << "no wildcard";
    EXPECT_EQ(store_.Answer({"history", "--limit", "2"}).at("history").size(), 2U);
    const std::string out = store_.Run({"history", "--limit", "1", "--job", other}).out;
    EXPECT_THAT(out, HasSubstr("1 action\n  written"));
    EXPECT_THAT(out, HasSubstr("  JOB_"));
}

TEST_F(ListingCommands, SaysThatThereIsNoHistory) {
    store_.Tables().Execute("DROP TABLE c_adminhistory");

    const Finished finished = store_.Run({"history"});

    EXPECT_EQ(finished.exitStatus, 1);
    EXPECT_EQ(finished.err, "This store has no administration history: kxjob init makes its table\n");
}

TEST_F(ListingCommands, SayWhatIsNotThere) {
    for (const std::vector<std::string>& call :
         {std::vector<std::string>{"show", "nobody"}, {"items", "nobody"}, {"tasks", "nobody"}}) {
        const Finished finished = store_.Run(call);
        EXPECT_EQ(finished.exitStatus, 1) << call[0];
        EXPECT_EQ(finished.err, "There is no job nobody\n");
    }
    EXPECT_EQ(store_.Run({"item", "nobody"}).err, "There is no item nobody\n");
    EXPECT_THAT(store_.Run({"list", "--application-state", "NONE"}).err,
                HasSubstr("no application state NONE"));
}

TEST_F(ListingCommands, RefuseWrongUsage) {
    EXPECT_EQ(store_.Run({"show"}).exitStatus, 2);
    EXPECT_EQ(store_.Run({"items"}).exitStatus, 2);
    EXPECT_EQ(store_.Run({"item"}).exitStatus, 2);
    EXPECT_EQ(store_.Run({"list", "--sort", "colour"}).exitStatus, 2);
    EXPECT_EQ(store_.Run({"list", "--limit", "-1"}).exitStatus, 2);
    EXPECT_EQ(store_.Run({"items", "early", "--limit", "many"}).exitStatus, 2);
    EXPECT_EQ(store_.Run({"history", "--limit", "0"}).exitStatus, 2);
    EXPECT_EQ(store_.Run({"list", "unexpected"}).exitStatus, 2);
}

TEST_F(ListingCommands, NeverLookForJobsInAnotherStoreThanTheOneThatIsNamed) {
    const Finished finished = testing_support::RunCommand(
        store_.Folder(),
        {"list", "--connection", "Driver=SQLite;Database=" + store_.Folder().File("other.db")},
        {{"KXJOB_CONFIG", "/dev/null"}});

    EXPECT_EQ(finished.exitStatus, 2);
    EXPECT_THAT(finished.err, HasSubstr("Jobs need --qualifier"));
}

}  // namespace
}  // namespace kxjob
