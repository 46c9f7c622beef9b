#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "apps/command_process.h"
#include "kxjob/data_store_provider.h"
#include "kxjob/store.h"
#include "method_table.h"
#include "value_json.h"

namespace kxjob::command {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;
using testing_support::ContentOf;
using testing_support::Finished;
using testing_support::RunCommand;
using testing_support::TemporaryFolder;

constexpr const char* kJob = "{11111111-1111-4111-8111-111111111111}";
constexpr const char* kState = "{22222222-2222-4222-8222-222222222222}";
constexpr const char* kItem = "{33333333-3333-4333-8333-333333333333}";
constexpr const char* kGuidAnswer = R"re(\{"result":"\{[-0-9A-F]{36}\}"\})re";

using Named = std::vector<std::pair<std::string, std::string>>;

/// The command, each time as a process of its own.
class CallCommand : public testing::Test {
protected:
    CallCommand() { Configure(""); }

    Finished Run(const std::vector<std::string>& arguments) {
        return RunCommand(folder, arguments, {{"KXJOB_CONFIG", folder.File("kxjob.conf")}});
    }
    void Configure(const std::string& document) { std::ofstream(folder.File("kxjob.conf")) << document; }

    /// `kxjob call`, each argument as "--Name value".
    Finished Call(const std::string& method, const Named& arguments) {
        std::vector<std::string> all{"call", method};
        for (const auto& [name, value] : arguments) {
            all.push_back("--" + name);
            all.push_back(value);
        }
        return Run(all);
    }

    TemporaryFolder folder;
};

/// The same with a store of its own.
class CallOnStore : public CallCommand {
protected:
    CallOnStore() {
        store.CreateDatabase();
        store.CreateTables();
        store.Execute(
            "INSERT INTO kx_JobType (jobtypeid, description, implprogid, notificationprogid)"
            " VALUES ('IMPORT', 'Import of files', 'DebugTools_83.Helper', '')");
    }

    /// Adds those of the three connection arguments that the method has.
    Finished CallStore(const std::string& method, Named arguments = {}) {
        const std::map<std::string, std::string> connected{{"ConnectionString", connection},
                                                           {"Provider", "5"},
                                                           {"NameQualifier", "kx_"},
                                                           {"NameQualfier", "kx_"}};
        for (const MethodArgument& argument : FindMethod(method)->arguments) {
            const auto found = connected.find(argument.name);
            if (found != connected.end()) arguments.push_back(*found);
        }
        called.insert(method);
        return Call(method, arguments);
    }
    /// The same; gives the answer of a call that must succeed.
    std::string AnswerOf(const std::string& method, const Named& arguments = {}) {
        const Finished finished = CallStore(method, arguments);
        EXPECT_EQ(finished.exitStatus, 0) << method << ": " << finished.out << finished.err;
        return finished.out;
    }
    /// The text in {"result":"text"}.
    std::string TextOf(const std::string& answer) {
        return Json::parse(answer).at("result").get<std::string>();
    }
    void CreateJob(const std::string& description = "a job") {
        ASSERT_EQ(AnswerOf("CreateJob", {{"GUID", kJob},
                                         {"JobTypeID", "IMPORT"},
                                         {"Description", description},
                                         {"ApplicationStateGUID", kState},
                                         {"Parameters", "<parameters/>"},
                                         {"TotalItemCount", "3"}}),
                  "{}\n");
    }

    std::string connection = "Driver=SQLite;Database=" + folder.File("jobs.db");
    Store store{connection, dspSqlite, "kx_"};
    std::set<std::string> called;
};

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

struct WrongUsage {
    const char* meaning;
    std::vector<std::string> arguments;
    const char* sentence;
};

void PrintTo(const WrongUsage& usage, std::ostream* out) {
    *out << usage.meaning;
}

class CallUsage : public CallCommand, public testing::WithParamInterface<WrongUsage> {};

TEST_P(CallUsage, IsRefusedWithOneSentenceAndNothingElse) {
    const Finished finished = Run(GetParam().arguments);
    EXPECT_EQ(finished.exitStatus, 2);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(finished.err, std::string(GetParam().sentence) + "\n");
}

constexpr const char* kNoJson = "The value of --IdentifierGUIDs is wrong: it is no JSON.";

/// All that CreateSimpleJobItems wants, its array as given.
WrongUsage WrongArray(const char* meaning, const char* array, const char* sentence) {
    return {meaning,
            {"call", "CreateSimpleJobItems", "--ConnectionString", "x", "--Provider", "5", "--NameQualifier",
             "", "--JobGUID", "j", "--IdentifierGUIDs", array},
            sentence};
}

/// All that UnRegisterJobTaskIndicatingStatus wants, its Boolean as given.
WrongUsage WrongBoolean(const char* meaning, const char* boolean) {
    return {meaning,
            {"call", "UnRegisterJobTaskIndicatingStatus", "--ConnectionString", "x", "--NameQualifier", "",
             "--JobTaskGUID", "t", "--Succeeded", boolean},
            "The value of --Succeeded is wrong: it must be true or false."};
}

WrongUsage WrongProvider(const char* meaning, const char* provider) {
    return {meaning,
            {"call", "GetJob", "--ConnectionString", "x", "--Provider", provider, "--NameQualifier", ""},
            "The value of --Provider is wrong: it must be a whole number that fits 32 bits."};
}

WrongUsage WrongOptions(const char* meaning, const char* options, const char* sentence) {
    return {meaning,
            {"call", "JobTableCreationScript", "--Provider", "5", "--NameQualifier", "", "--providerOptions",
             options},
            sentence};
}

INSTANTIATE_TEST_SUITE_P(
    Wrong, CallUsage,
    testing::Values(
        WrongUsage{"no sub-command", {}, "A subcommand is required"},
        WrongUsage{"no method", {"call"}, "METHOD is required"},
        WrongUsage{"unknown method", {"call", "Nope"}, "There is no method Nope."},
        WrongUsage{"empty method", {"call", ""}, "There is no method ."},
        WrongUsage{"method in another letter case", {"call", "getjob"}, "There is no method getjob."},
        WrongUsage{
            "private method", {"call", "piAdminHistoryWrite"}, "There is no method piAdminHistoryWrite."},
        WrongUsage{"unknown argument",
                   {"call", "IsJobRunning", "--StateID", "QUEUED"},
                   "The method IsJobRunning has no argument --StateID."},
        WrongUsage{"argument of another method",
                   {"call", "Version", "--Provider", "5"},
                   "The method Version has no argument --Provider."},
        WrongUsage{"value without a name",
                   {"call", "IsJobRunning", "QUEUED"},
                   "A value stands without a name: arguments of IsJobRunning are given as --Name value."},
        WrongUsage{"name with one dash",
                   {"call", "IsJobRunning", "-StateId", "QUEUED"},
                   "A value stands without a name: arguments of IsJobRunning are given as --Name value."},
        WrongUsage{"name without value",
                   {"call", "IsJobRunning", "--StateId"},
                   "The argument --StateId has no value."},
        WrongUsage{"argument twice",
                   {"call", "IsJobRunning", "--StateId", "QUEUED", "--StateId", "QUEUED"},
                   "The argument --StateId is given twice."},
        WrongUsage{
            "required argument missing", {"call", "IsJobRunning"}, "The argument --StateId is missing."},
        WrongUsage{"one of many missing",
                   {"call", "GetJob", "--ConnectionString", "x", "--NameQualifier", ""},
                   "The argument --Provider is missing."},
        WrongProvider("a word as number", "five"), WrongProvider("an empty number", ""),
        WrongProvider("a fraction", "5.5"), WrongProvider("a whole fraction", "5.0"),
        WrongProvider("33 bits", "4294967296"), WrongProvider("one too many", "2147483648"),
        WrongProvider("blanks", " 5"),
        WrongUsage{
            "a duration that is no number",
            {"call", "GetNewLockExcludingInterlopers", "--ConnectionString", "x", "--NameQualifier", "",
             "--JobGUID", "j", "--JobTaskGUID", "t", "--OldLockGUID", "o", "--NewLockDuration", "1,5"},
            "The value of --NewLockDuration is wrong: it must be a number."},
        WrongBoolean("an empty Boolean", ""), WrongBoolean("a number as Boolean", "2"),
        WrongArray("an array that does not end", "[1", kNoJson),
        WrongArray("a brace that is no JSON", "{x", kNoJson),
        WrongArray("a GUID that is too short", "{01234567-89AB-CDEF-0123-456789ABCDE}", kNoJson),
        WrongArray(
            "an object that is no value", R"({"a":1})",
            R"(The value of --IdentifierGUIDs is wrong: a JSON object that stands for a value is {"lower":n,"items":[...]} or )"
            R"({"empty":true}.)"),
        WrongArray("an array with indexes of more than 32 bits", R"({"lower":2147483647,"items":[1,2]})",
                   "The value of --IdentifierGUIDs is wrong: the indexes of an array are whole numbers of 32 "
                   "bits."),
        WrongOptions("options that are no JSON", "a=b",
                     "The value of --providerOptions is wrong: it is no JSON."),
        WrongOptions("options that are no object", "[]",
                     "The value of --providerOptions is wrong: it must be a JSON object."),
        WrongUsage{"journal without a file",
                   {"call", "Version", "--explain"},
                   "The argument --explain has no value."},
        WrongUsage{"journal twice",
                   {"call", "Version", "--explain", "/dev/null", "--explain", "/dev/null"},
                   "The argument --explain is given twice."},
        WrongUsage{"journal in a folder that is not there",
                   {"call", "Version", "--explain", "/nowhere/at/all/journal"},
                   "The file for --explain cannot be written: No such file or directory."},
        WrongUsage{"journal in place of a folder",
                   {"call", "Version", "--explain", "/tmp"},
                   "The file for --explain cannot be written: Is a directory."}));

TEST_F(CallOnStore, DoesNothingWhenTheJournalCannotBeWritten) {
    const Finished finished = CallStore("CreateJob", {{"GUID", kJob},
                                                      {"JobTypeID", "IMPORT"},
                                                      {"Description", ""},
                                                      {"ApplicationStateGUID", kState},
                                                      {"Parameters", ""},
                                                      {"TotalItemCount", "1"},
                                                      {"explain", folder.File("no folder/journal")}});
    EXPECT_EQ(finished.exitStatus, 2);
    EXPECT_TRUE(store.Query("SELECT jobguid FROM kx_job").IsEmpty());
}

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
