#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "apps/call_fixture.h"

namespace kxjob::command {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing_support::ContentOf;
using testing_support::Finished;

std::vector<Json> EventsIn(const std::string& file) {
    std::istringstream lines(ContentOf(file));
    std::vector<Json> events;
    for (std::string line; std::getline(lines, line);) events.push_back(Json::parse(line));
    return events;
}

std::vector<std::string> MembersOf(const Json& object) {
    std::vector<std::string> names;
    for (const auto& [name, value] : object.items()) names.push_back(name);
    return names;
}

TEST_F(CallOnStore, JournalsASuccessStepByStep) {
    const std::string journal = folder.File("journal");
    AnswerOf("UpdateJobStatus", {{"JobGUID", kJob}, {"JobStateID", "READY"}, {"explain", journal}});
    const std::vector<Json> events = EventsIn(journal);
    ASSERT_GE(events.size(), 10U);

    EXPECT_THAT(MembersOf(events.front()), ElementsAre("event", "method", "line", "arguments"));
    EXPECT_EQ(events.front()["event"], "enter");
    EXPECT_EQ(events.front()["method"], "UpdateJobStatus");
    EXPECT_EQ(events.front()["line"], 0);
    EXPECT_EQ(OneLine(events.front()["arguments"]),
              R"({"ConnectionString":")" + connection + R"(","Provider":5,"NameQualfier":"kx_",)" +
                  R"("JobGUID":")" + kJob + R"(","JobStateID":"READY"})");
    EXPECT_EQ(OneLine(events.back()), R"({"event":"leave","method":"UpdateJobStatus","arguments":{}})");

    std::vector<std::string> steps;
    for (const Json& event : events) {
        std::string step = event["event"].get<std::string>() + " " + event["method"].get<std::string>();
        if (event["event"] == "call") {
            EXPECT_GT(event["line"], 0) << event;
            step = event["object"].get<std::string>() + "." + event["operation"].get<std::string>();
        }
        steps.push_back(step);
    }
    EXPECT_THAT(steps, testing::IsSupersetOf(
                           {"ObjectFactory.CreateVersioned", "TableNameHelper_%v.TableNameHelper.job",
                            "InputGuard.CheckParameter", "SqlFormatter.FormatValue", "DataAccess.Execute",
                            "enter piAdminHistoryWrite", "AppModelAdmin_%v.Admin.AdminHistoryWrite",
                            "leave piAdminHistoryWrite"}));

    const auto statement = std::find_if(events.begin(), events.end(), [](const Json& event) {
        return event.value("object", "") == "DataAccess";
    });
    ASSERT_NE(statement, events.end());
    EXPECT_THAT(MembersOf(*statement),
                ElementsAre("event", "method", "line", "object", "operation", "arguments"));
    EXPECT_EQ(OneLine((*statement)["arguments"]),
              R"([")" + connection + R"(",5,1,"UPDATE kx_job SET jobstateid = 'READY' WHERE jobguid = ')" +
                  kJob + R"('"])");
}

TEST_F(CallOnStore, JournalsAQueryWithItsRows) {
    const std::string journal = folder.File("journal");
    AnswerOf("GetJobType", {{"JobTypeID", "IMPORT"}, {"explain", journal}});
    const std::vector<Json> events = EventsIn(journal);
    const auto query = std::find_if(events.begin(), events.end(), [](const Json& event) {
        return event.value("operation", "") == "Query";
    });
    ASSERT_NE(query, events.end());
    const std::string rows = R"({"rows":[["IMPORT","Import of files","DebugTools_83.Helper",""]]})";
    EXPECT_EQ(OneLine((*query)["result"]), rows);
    EXPECT_EQ(OneLine(events.back()),
              R"({"event":"leave","method":"GetJobType","result":)" + rows + R"(,"arguments":{}})");
}

TEST_F(CallOnStore, JournalsArgumentsByReferenceOnLeave) {
    CreateJob();
    AnswerOf("UpdateJobStatus", {{"JobGUID", kJob}, {"JobStateID", "QUEUED"}});
    const std::string journal = folder.File("journal");
    AnswerOf("GetNextJob", {{"explain", journal}});
    EXPECT_EQ(OneLine(EventsIn(journal).back()),
              R"({"event":"leave","method":"GetNextJob","arguments":{"JobGUID":")" + std::string(kJob) +
                  R"(","JobRank":1.0}})");
}

TEST_F(CallOnStore, JournalsAFailureUpToTheErrorThatLeaves) {
    const std::string journal = folder.File("journal");
    const Finished finished = CallStore("GetJobParameters", {{"JobGUID", "{unknown}"}, {"explain", journal}});
    EXPECT_EQ(finished.exitStatus, 1);
    const Json error = Json::parse(finished.out)["error"];
    EXPECT_EQ(error["number"], -2147220802);  // + 702

    const std::vector<Json> events = EventsIn(journal);
    ASSERT_GE(events.size(), 4U);
    const Json& query = events[events.size() - 4];
    EXPECT_EQ(query["operation"], "Query");
    EXPECT_EQ(query["error"], error);
    EXPECT_FALSE(query.contains("result"));
    const Json& created = events[events.size() - 3];
    EXPECT_EQ(created["object"], "Platform");
    EXPECT_EQ(OneLine(created["result"]), R"({"object":"DebugTools_83.Helper"})");
    const Json& logged = events[events.size() - 2];
    EXPECT_EQ(logged["operation"], "LogAndReRaiseVBError");
    EXPECT_EQ(logged["arguments"].size(), 6U);
    EXPECT_EQ(OneLine(logged["arguments"][0]), R"({"error":)" + OneLine(error) + "}");
    EXPECT_EQ(OneLine(logged["arguments"][1]), R"({"object":"Application"})");
    EXPECT_EQ(logged["arguments"][2], query["line"]);
    EXPECT_EQ(logged["arguments"][5], "GetJobParameters");
    EXPECT_EQ(logged["error"], error);
    EXPECT_EQ(OneLine(events.back()),
              R"({"event":"raise","method":"GetJobParameters","error":)" + OneLine(error) + "}");
}

TEST_F(CallOnStore, KeepsPasswordsOutOfTheJournalAndOfStandardError) {
    const std::string journal = folder.File("journal");
    for (const char* secret : {";PWD=TIGER", ";pwd={TIGER;}}TIGER}", ";Password=\"TIGER;TIGER\";Mode=x"}) {
        connection = "Driver=SQLite;Database=" + folder.File("jobs.db") + secret;
        Configure("ADOConnectionString = " + connection + "\nProvider = 5\nNameSpaceQualifier = kx_\n");
        CreateJob();
        const std::vector<std::pair<std::string, Named>> calls{
            {"CreateJob",
             {{"GUID", kJob},
              {"JobTypeID", "IMPORT"},
              {"Description", ""},
              {"ApplicationStateGUID", kState},
              {"Parameters", ""},
              {"TotalItemCount", "1"}}},
            {"CreateSimpleJobItems", {{"JobGUID", kJob}, {"IdentifierGUIDs", "[\"a\"]"}}},
            {"RegisterJobTask",
             {{"Description", ""},
              {"JobGUID", kJob},
              {"User", ""},
              {"MachineName", ""},
              {"PID", "1"},
              {"ThreadID", "1"}}},
            {"AppendJobFailureNote", {{"JobGUID", kJob}, {"AdditionalNote", "note"}}},
            {"GetJobParameters", {{"JobGUID", "{unknown}"}}},
            {"GetNextJob", {}},
            {"RemoveIrrelevantJobsInAllContainers", {}}};
        for (auto [method, arguments] : calls) {
            arguments.emplace_back("explain", journal);
            const Finished finished = CallStore(method, arguments);
            EXPECT_THAT(ContentOf(journal), AllOf(HasSubstr("=***"), Not(HasSubstr("TIGER")))) << method;
            EXPECT_THAT(finished.out + finished.err, Not(HasSubstr("TIGER"))) << method;
        }
        // The connection comes from the configuration.
        const Finished finished =
            Call("GetJob",
                 {{"ConnectionString", ""}, {"Provider", "0"}, {"NameQualifier", ""}, {"explain", journal}});
        EXPECT_EQ(finished.exitStatus, 0) << finished.out;
        EXPECT_THAT(ContentOf(journal), AllOf(HasSubstr("LoadFromText"), HasSubstr("ADOConnectionString"),
                                              HasSubstr("=***"), Not(HasSubstr("TIGER"))));
    }
}

TEST_F(CallCommand, SaysWhenTheJournalIsNotWhole) {
    const Finished finished = Run({"call", "Version", "--explain", "/dev/full"});
    EXPECT_EQ(finished.exitStatus, 1);
    EXPECT_EQ(finished.out, "{\"result\":\"8.3.1202.0\"}\n");
    EXPECT_EQ(finished.err, "The call has been made, but its journal could not be written whole.\n");
}

}  // namespace
}  // namespace kxjob::command
