#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "apps/call_fixture.h"

namespace kxjob::command {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;
using testing_support::Finished;

constexpr const char* kGuidAnswer = R"re(\{"result":"\{[-0-9A-F]{36}\}"\})re";

TEST_F(CallCommand, TellsItsVersion) {
    const Finished finished = Run({"--version"});
    EXPECT_EQ(finished.exitStatus, 0);
    EXPECT_EQ(finished.out, "8.3.1202.0\n");
}

TEST_F(CallCommand, HelpsWithTheCommandAndWithEachMethod) {
    EXPECT_THAT(Run({"--help"}).out, HasSubstr("call"));
    EXPECT_THAT(Run({"call", "--help"}).out, AllOf(HasSubstr("METHOD"), HasSubstr("\n  GetNextJob\n")));
    const Finished finished = Run({"call", "UpdateJobStatus", "--help"});
    EXPECT_EQ(finished.exitStatus, 0);
    for (const char* argument : {"--ConnectionString TEXT", "--Provider WHOLE NUMBER", "--NameQualfier",
                                 "--JobGUID", "--explain FILE"}) {
        EXPECT_THAT(finished.out, HasSubstr(argument));
    }
    EXPECT_EQ(Run({"call", "UpdateJobStatus", "--JobGUID", "x", "-h"}).out, finished.out);
}

TEST_F(CallCommand, PrintsAnErrorAsJsonAndFails) {
    const Finished finished = Run({"call", "IsJobComplete", "--StateId", "complete"});
    EXPECT_EQ(finished.exitStatus, 1);
    EXPECT_EQ(finished.out, R"({"error":{"number":-2147220761,"source":"Job_83.JobHelper.IsJobComplete",)"
                            R"("description":"The Job StateID 'complete' is not known"}})"
                            "\n");
}

TEST_F(CallCommand, TakesAnEmptyValueInBothForms) {
    const Finished apart = Run({"call", "IsJobComplete", "--StateId", ""});
    EXPECT_THAT(apart.out, HasSubstr("The Job StateID '' is not known"));
    EXPECT_EQ(Run({"call", "IsJobComplete", "--StateId="}).out, apart.out);
    EXPECT_EQ(Run({"call", "IsJobComplete", "--StateId=COMPLETE"}).out, "{\"result\":true}\n");
}

TEST_F(CallCommand, ReportsAMissingDatabase) {
    const Finished finished =
        Call("GetJob", {{"ConnectionString", "Driver=SQLite;Database=" + folder.File("no.db")},
                        {"Provider", "5"},
                        {"NameQualifier", "kx_"}});
    EXPECT_EQ(finished.exitStatus, 1);
    EXPECT_THAT(finished.out, StartsWith(R"({"error":{"number":-2147220800,)"));  // + 704
}

TEST_F(CallCommand, ReportsADamagedDatabase) {
    std::ofstream(folder.File("damaged.db")) << std::string(8192, 'x');
    const Finished finished =
        Call("GetJob", {{"ConnectionString", "Driver=SQLite;Database=" + folder.File("damaged.db")},
                        {"Provider", "5"},
                        {"NameQualifier", "kx_"}});
    EXPECT_EQ(finished.exitStatus, 1);
    // + 704 or + 703: whether opening or the first statement finds it out is the engine's business.
    EXPECT_THAT(finished.out, MatchesRegex(R"re(\{"error":\{"number":-21472208(00|01),.*)re"
                                           "\n"));
}

TEST_F(CallOnStore, ReachesEveryMethod) {
    EXPECT_EQ(AnswerOf("Version"), "{\"result\":\"8.3.1202.0\"}\n");
    EXPECT_EQ(AnswerOf("IsJobComplete", {{"StateId", "COMPLETE"}}), "{\"result\":true}\n");
    EXPECT_EQ(AnswerOf("IsJobRunning", {{"StateId", "COMPLETE"}}), "{\"result\":false}\n");
    EXPECT_EQ(AnswerOf("ParametersTagName"), "{\"result\":\"parameters\"}\n");
    EXPECT_EQ(AnswerOf("ParameterTagName"), "{\"result\":\"parameter\"}\n");
    EXPECT_THAT(AnswerOf("JobTableCreationScript", {{"providerOptions", R"({"Fill":90})"}}),
                AllOf(StartsWith(R"({"result":"CREATE TABLE)"),
                      HasSubstr(R"("providerOptions":{"object":"Collection"}})")));

    CreateJob();
    const std::string item = TextOf(
        AnswerOf("CreateJobItem",
                 {{"JobGUID", kJob}, {"IdentifierGUID", kItem}, {"Data", "data"}, {"Sequence", "-1"}}));
    EXPECT_EQ(AnswerOf("CreateSimpleJobItems", {{"JobGUID", kJob}, {"IdentifierGUIDs", R"(["a","b"])"}}),
              "{}\n");
    const std::string task = TextOf(AnswerOf("RegisterJobTask", {{"Description", "d"},
                                                                 {"JobGUID", kJob},
                                                                 {"User", "u"},
                                                                 {"MachineName", "m"},
                                                                 {"PID", "7"},
                                                                 {"ThreadID", "-8"}}));

    EXPECT_EQ(
        AnswerOf("GetJob", {{"JobStateID", "CREATING"}, {"ApplicationStateGUID", kState}}),
        R"({"result":{"rows":[["{11111111-1111-4111-8111-111111111111}","a job","IMPORT","<parameters/>",)"
        R"("CREATING",0,3,0,0,null,null,0.0,"{22222222-2222-4222-8222-222222222222}",null]]},)"
        R"("ApplicationStateGUID":"{22222222-2222-4222-8222-222222222222}"})"
        "\n");
    EXPECT_EQ(AnswerOf("GetJob", {{"JobTypeID", "OTHER"}}),
              R"({"result":{"empty":true},"ApplicationStateGUID":""})"
              "\n");
    EXPECT_EQ(AnswerOf("GetJobType"),
              R"({"result":{"rows":[["IMPORT","Import of files","DebugTools_83.Helper",""]]}})"
              "\n");
    EXPECT_EQ(AnswerOf("GetJobParameters", {{"JobGUID", kJob}}), "{\"result\":\"<parameters/>\"}\n");
    EXPECT_EQ(AnswerOf("GetJobItem", {{"JobItemGUID", item}}),
              R"({"result":{"rows":[["{33333333-3333-4333-8333-333333333333}",null,"data",null,null,")" +
                  item +
                  R"(",null]]}})"
                  "\n");
    EXPECT_EQ(Json::parse(AnswerOf("GetJobItems", {{"JobGUID", kJob}}))["result"]["rows"].size(), 3U);
    EXPECT_THAT(AnswerOf("GetJobTasks", {{"JobGUID", kJob}}),
                StartsWith(R"({"result":{"rows":[[")" + task + R"(","d",")" + kJob + R"(","m",7,-8,)"));
    const std::string statistics = AnswerOf("GetJobExecutionStatistics");
    EXPECT_THAT(statistics,
                StartsWith(R"({"result":{"rows":[[")" + std::string(kJob) + R"(","a job","IMPORT",)"));
    EXPECT_EQ(AnswerOf("GetJobExecutionStatisticsAllowMissing", {{"JobGUID", kJob}}), statistics);
    EXPECT_EQ(AnswerOf("GetJobItemExecutionStatistics", {{"JobGUID", kJob}, {"SequenceNumber", "-1"}}),
              "{\"result\":{\"rows\":[[null,null,null]]}}\n");

    EXPECT_EQ(AnswerOf("UpdateJobItemStatus", {{"JobItemGUID", item},
                                               {"JobItemStateID", "RUNNING"},
                                               {"StartISODateTime", "2026-03-01T09:30:15.123Z"},
                                               {"EndISODateTime", ""},
                                               {"JobTaskGUID", task}}),
              "{}\n");
    EXPECT_EQ(AnswerOf("JobItemsAtState", {{"JobGUID", kJob}, {"StateId", "RUNNING"}}),
              "{\"result\":{\"rows\":[[\"RUNNING\",1]]}}\n");
    EXPECT_EQ(AnswerOf("OwnersOfJobItemsAtState", {{"JobGUID", kJob}}),
              "{\"result\":{\"rows\":[[\"m\",\"RUNNING\",1]]}}\n");
    EXPECT_EQ(AnswerOf("AppendJobFailureNote", {{"JobGUID", kJob}, {"AdditionalNote", "note"}}), "{}\n");
    EXPECT_EQ(AnswerOf("AppendJobItemFailureNote", {{"JobItemGUID", item}, {"AdditionalNote", "note"}}),
              "{}\n");

    EXPECT_EQ(AnswerOf("UpdateTaskRegistration",
                       {{"JobTaskGUID", task}, {"LastJobItem", item}, {"JobTaskStateID", "RUNNING"}}),
              "{}\n");
    EXPECT_EQ(AnswerOf("UpdateJobTaskLock", {{"JobTaskGUID", task}, {"LockGUID", "lock"}}), "{}\n");
    EXPECT_EQ(AnswerOf("UpdateTaskCommand", {{"JobTaskGUID", task}, {"Command", "STOP"}}), "{}\n");
    store.Execute("UPDATE kx_job SET jobeditorlockguid = 'old'");
    EXPECT_THAT(
        AnswerOf(
            "GetNewLockExcludingInterlopers",
            {{"JobGUID", kJob}, {"JobTaskGUID", task}, {"OldLockGUID", "old"}, {"NewLockDuration", "1.5"}}),
        testing::ContainsRegex(kGuidAnswer));
    EXPECT_EQ(AnswerOf("UpdateJobStatus", {{"JobGUID", kJob}, {"JobStateID", "QUEUED"}}), "{}\n");
    EXPECT_EQ(AnswerOf("GetNextJob"), "{\"JobGUID\":\"" + std::string(kJob) + "\",\"JobRank\":1.0}\n");
    EXPECT_EQ(AnswerOf("UnRegisterJobTask", {{"JobTaskGUID", task}}), "{}\n");
    EXPECT_EQ(AnswerOf("UnRegisterJobTaskIndicatingStatus", {{"JobTaskGUID", task}, {"Succeeded", "no"}}),
              "{}\n");

    EXPECT_EQ(AnswerOf("RemoveIrrelevantJobsInContainer",
                       {{"ProductionStateGUID", kState}, {"DevelopmentStateGUID", kState}}),
              "{}\n");
    EXPECT_EQ(AnswerOf("RemoveJobAndItems", {{"JobGUID", kJob}}), "{}\n");
    EXPECT_EQ(AnswerOf("RemoveIrrelevantJobsInAllContainers"), "{}\n");
    EXPECT_EQ(AnswerOf("GetNextJob", {{"JobGUID", "kept"}, {"JobRank", "0.25"}}),
              "{\"JobGUID\":\"kept\",\"JobRank\":0.25}\n");

    std::set<std::string> published;
    for (const Method& method : Methods()) published.insert(method.name);
    EXPECT_EQ(published.size(), 35U);
    EXPECT_EQ(called, published);
}

TEST_F(CallOnStore, HandsAnyTextOnAsItIs) {
    for (const char* text : {"",          "-",           "--",
                             "-x",        "--help",      "-h",
                             "--JobGUID", "--explain",   "--explain=x",
                             "[x",        "[a,b]",       "[]",
                             "{}",        "{a",          "%",
                             "%%",        "a=b",         "=",
                             "it's",      "\"quoted\"",  "'",
                             ";",         "back\\slash", "two\nlines\r\n",
                             "\ttab",     " blanks ",    "call",
                             "GetJob",    "null",        "gr\xC3\xBC\xC3\x9F \xF0\x9F\x98\x80"}) {
        CreateJob(text);
        const Json answer = Json::parse(AnswerOf("GetJob"));
        EXPECT_EQ(answer["result"]["rows"][0][1], text);
    }
}

TEST_F(CallOnStore, RefusesATextThatIsNoUtf8) {
    CreateJob();
    const Finished finished =
        CallStore("AppendJobFailureNote", {{"JobGUID", kJob}, {"AdditionalNote", "a\xFFz"}});
    EXPECT_EQ(finished.exitStatus, 1);
    EXPECT_THAT(finished.out, StartsWith(R"({"error":{"number":-2147220798,)"));  // + 706
}

TEST_F(CallOnStore, TakesArraysWithLowerBoundsAndWithTwoDimensions) {
    const auto add = [&](const char* array) {
        return CallStore("CreateSimpleJobItems", {{"JobGUID", kJob}, {"IdentifierGUIDs", array}});
    };
    EXPECT_EQ(add(R"({"lower":1,"items":["first","second",3]})").out, "{}\n");
    EXPECT_EQ(add("[]").out, "{}\n");
    EXPECT_EQ(OneLine(ToJson(store.Query("SELECT identifier, sequence FROM kx_JobItem ORDER BY sequence"))),
              R"({"rows":[["first",0],["second",1],["3",2]]})");
    EXPECT_THAT(add(R"([["a","b"],["c","d"]])").out,
                StartsWith(R"({"error":{"number":-2147220754,)"));                         // + 750
    EXPECT_THAT(add("plain text").out, StartsWith(R"({"error":{"number":-2147220755,)"));  // + 749
    EXPECT_THAT(add(kItem).out, StartsWith(R"({"error":{"number":-2147220755,)"));
}

TEST_F(CallOnStore, TakesAGuidAsTheTextOfAVariant) {
    AnswerOf("RegisterJobTask", {{"Description", kItem},
                                 {"JobGUID", kJob},
                                 {"User", ""},
                                 {"MachineName", "m"},
                                 {"PID", "1"},
                                 {"ThreadID", "2"}});
    EXPECT_EQ(OneLine(ToJson(store.Query("SELECT description, usercontext FROM kx_jobtask"))),
              R"({"rows":[["{33333333-3333-4333-8333-333333333333}",""]]})");
}
}  // namespace
}  // namespace kxjob::command
