#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "apps/command_process.h"
#include "kxjob/store.h"
#include "seeded/seeded_store.h"
#include "support/every_method.h"

// Each case runs `kxjob call` on a seeded SQLite file, and compares its journal and its standard output with
// the file of its name in tests/apps/journals. What differs from run to run (times, new GUIDs, the machine,
// chance) and from edit to edit (line numbers) is put out of the way first. With KXJOB_WRITE_JOURNALS=1 the
// files are written anew, and the tests fail so that nobody takes that for a pass: read the difference before
// you commit it.

namespace kxjob {
namespace {

using testing_support::ContentOf;
using testing_support::Finished;
using testing_support::RunCommand;
using testing_support::SeedStore;
using testing_support::TemporaryFolder;

struct JournalCase {
    std::string name;
    std::vector<std::string> arguments;  // DB stands for the connection string
    std::string before = {};             // a statement that is run on the seeded store first
    int exitStatus = 0;
};

void PrintTo(const JournalCase& journalCase, std::ostream* out) {
    *out << journalCase.name;
}

std::string ReplacedAll(std::string text, const std::string& what, const std::string& by) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size())) {
        text.replace(at, what.size(), by);
    }
    return text;
}

/// New GUIDs as {NEW 1}, {NEW 2} ... in the order of their appearance; those of the seeded store stay.
std::string WithNumberedGuids(const std::string& text) {
    static const std::regex guid(
        R"(\{[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\})");
    std::vector<std::string> seen;
    std::string numbered;
    auto rest = text.cbegin();
    for (std::sregex_iterator match(text.begin(), text.end(), guid), end; match != end; ++match) {
        numbered.append(rest, (*match)[0].first);
        rest = (*match)[0].second;
        const std::string found = match->str();
        if (found.starts_with("{00000000-")) {
            numbered += found;
            continue;
        }
        const auto place = std::find(seen.begin(), seen.end(), found);
        const auto number = place - seen.begin() + 1;
        if (place == seen.end()) seen.push_back(found);
        numbered += "{NEW " + std::to_string(number) + "}";
    }
    return numbered.append(rest, text.cend());
}

std::string Repeatable(std::string text, const TemporaryFolder& folder) {
    text = ReplacedAll(std::move(text), "Driver=SQLite;Database=" + folder.File("seeded.db"), "DB");
    text = std::regex_replace(text, std::regex(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z)"), "TIME");
    text = std::regex_replace(text, std::regex(R"("line":[1-9]\d*)"), "\"line\":LINE");
    text = std::regex_replace(text, std::regex(R"(\{"object":"Application"\},[1-9]\d*)"),
                              "{\"object\":\"Application\"},LINE");
    text = std::regex_replace(text, std::regex(R"(("object":"EnvironmentInfo".*"result":)[^}]*)"),
                              "$1ENVIRONMENT");
    text = std::regex_replace(text, std::regex(R"((Machine|User) details: [^\r\n]*?(\\r\\n){2})"),
                              "$1 details: ENVIRONMENT");
    text = std::regex_replace(text, std::regex(R"(Thread ID: \d+ / \d+)"), "Thread ID: ENVIRONMENT");
    text = std::regex_replace(
        text, std::regex(R"(("object":"RandomSource","operation":"Next".*"result":)[^}]*)"), "$1CHANCE");
    return WithNumberedGuids(text);
}

class JournalOfCall : public ::testing::TestWithParam<JournalCase> {
protected:
    /// Journal and standard output, and nothing that differs from run to run.
    std::string Record() {
        const std::string connection = "Driver=SQLite;Database=" + folder_.File("seeded.db");
        SeedStore(connection, "kx_");
        if (!GetParam().before.empty()) Store(connection, dspSqlite, "kx_").Execute(GetParam().before);
        std::ofstream(folder_.File("kxjob.conf"))
            << "ADOConnectionString = " << connection << "\nProvider = 5\nNameSpaceQualifier = kx_\n";
        std::vector<std::string> arguments{"call"};
        for (const std::string& argument : GetParam().arguments) {
            arguments.push_back(argument == "DB" ? connection : argument);
        }
        arguments.insert(arguments.end(), {"--explain", folder_.File("journal")});
        const Finished finished =
            RunCommand(folder_, arguments, {{"KXJOB_CONFIG", folder_.File("kxjob.conf")}});
        EXPECT_EQ(finished.exitStatus, GetParam().exitStatus) << finished.err;
        return Repeatable(ContentOf(folder_.File("journal")) + "standard output: " + finished.out, folder_);
    }

    TemporaryFolder folder_;
};

TEST_P(JournalOfCall, IsTheOneThatWasReviewed) {
    const std::string file = std::string(KXJOB_JOURNALS) + "/" + GetParam().name + ".jsonl";
    const std::string recorded = Record();
    if (std::getenv("KXJOB_WRITE_JOURNALS") != nullptr) {
        std::ofstream(file) << recorded;
        FAIL() << file << " has been written; review it";
    }
    EXPECT_EQ(recorded, ContentOf(file));
}

// The keys of the seeded store.
const std::string kJob = testing_support::kJobGuid;
const std::string kItem = testing_support::kItemGuid;
const std::string kTask = testing_support::kTaskGuid;
const std::string kState = testing_support::kStateGuid;
const std::string kUnknown = "{00000000-0000-4000-8000-00000000FFFF}";

/// `method` with the three connection arguments, then others.
std::vector<std::string> On(const std::string& method, const std::vector<std::string>& others,
                            const std::string& qualifier = "--NameQualifier") {
    std::vector<std::string> arguments{method, "--ConnectionString", "DB", "--Provider", "5", qualifier,
                                       "kx_"};
    arguments.insert(arguments.end(), others.begin(), others.end());
    return arguments;
}

/// The same without a provider.
std::vector<std::string> OnDefault(const std::string& method, const std::vector<std::string>& others) {
    std::vector<std::string> arguments{method, "--ConnectionString", "DB", "--NameQualifier", "kx_"};
    arguments.insert(arguments.end(), others.begin(), others.end());
    return arguments;
}

std::vector<JournalCase> VocabularyAndStore() {
    return {
        {"Version", {"Version"}},
        {"IsJobComplete", {"IsJobComplete", "--StateId", "CANCELLED"}},
        {"IsJobCompleteUnknown", {"IsJobComplete", "--StateId", "cancelled"}, {}, 1},
        {"IsJobRunning", {"IsJobRunning", "--StateId", "QUEUED"}},
        {"IsJobRunningUnknown", {"IsJobRunning", "--StateId", "FAILED"}, {}, 1},
        {"ParametersTagName", {"ParametersTagName"}},
        {"ParameterTagName", {"ParameterTagName"}},
        {"JobTableCreationScript",
         {"JobTableCreationScript", "--providerOptions", "{}", "--Provider", "5", "--NameQualifier", "kx_"}},
        {"JobTableCreationScriptReserved",
         {"JobTableCreationScript", "--providerOptions", "{}", "--Provider", "1", "--NameQualifier", "kx_"},
         {},
         1},
    };
}

std::vector<JournalCase> Tasks() {
    return {
        {"RegisterJobTask",
         OnDefault("RegisterJobTask", {"--Description", "it's a task", "--JobGUID", kJob, "--User", "u",
                                       "--MachineName", "m", "--PID", "1234", "--ThreadID", "56"})},
        {"UnRegisterJobTask", OnDefault("UnRegisterJobTask", {"--JobTaskGUID", kTask})},
        {"UnRegisterJobTaskIndicatingStatus",
         OnDefault("UnRegisterJobTaskIndicatingStatus", {"--JobTaskGUID", kTask, "--Succeeded", "false"})},
        {"UpdateTaskRegistration",
         OnDefault("UpdateTaskRegistration",
                   {"--JobTaskGUID", kTask, "--LastJobItem", kItem, "--JobTaskStateID", "RUNNING"})},
        {"UpdateTaskRegistrationOfNothing",
         OnDefault("UpdateTaskRegistration",
                   {"--JobTaskGUID", kTask, "--LastJobItem", "", "--JobTaskStateID", ""}),
         {},
         1},
        {"UpdateJobTaskLock", OnDefault("UpdateJobTaskLock", {"--JobTaskGUID", kTask, "--LockGUID", ""})},
        {"UpdateTaskCommand", OnDefault("UpdateTaskCommand", {"--JobTaskGUID", kTask, "--Command", "STOP"})},
        {"GetNewLockExcludingInterlopers",
         OnDefault("GetNewLockExcludingInterlopers",
                   {"--JobGUID", kJob, "--JobTaskGUID", kTask, "--OldLockGUID", testing_support::kLockGuid,
                    "--NewLockDuration", "90.5"})},
        {"GetNewLockExcludingInterlopersTaken",
         OnDefault("GetNewLockExcludingInterlopers",
                   {"--JobGUID", kJob, "--JobTaskGUID", kTask, "--OldLockGUID",
                    testing_support::kOtherLockGuid, "--NewLockDuration", "0"}),
         {},
         1},
        {"GetNewLockExcludingInterlopersVanished",
         OnDefault("GetNewLockExcludingInterlopers",
                   {"--JobGUID", kUnknown, "--JobTaskGUID", kTask, "--OldLockGUID",
                    testing_support::kLockGuid, "--NewLockDuration", "1"}),
         {},
         1},
    };
}

std::vector<std::string> CreateJobArguments(const std::string& type, const std::string& count) {
    return On("CreateJob",
              {"--GUID", testing_support::kNewJobGuid, "--JobTypeID", type, "--Description", "it's new",
               "--ApplicationStateGUID", kState, "--Parameters", "<parameters/>", "--TotalItemCount", count});
}

std::vector<JournalCase> Lifecycle() {
    const std::string production = testing_support::kProductionGuid;
    const std::string development = testing_support::kDevelopmentGuid;
    return {
        {"CreateJob", CreateJobArguments("NIGHTLY", "2")},
        {"CreateJobWithoutItems", CreateJobArguments("NIGHTLY", "0"), {}, 1},
        {"CreateJobOfUnknownType", CreateJobArguments("UNKNOWN", "2"), {}, 1},
        {"CreateJobDuringKvr", CreateJobArguments("NIGHTLY", "2"),
         "INSERT INTO kx_systemflag (flagname, flagvalue) VALUES ('KVR_TRANSACTION', 'on')", 1},
        {"CreateJobItem", On("CreateJobItem", {"--JobGUID", kJob, "--IdentifierGUID", "what", "--Data",
                                               "long text", "--Sequence", "-3"})},
        {"CreateJobItemFromTheConfiguration",
         {"CreateJobItem", "--ConnectionString", "", "--Provider", "99", "--NameQualifier", "other_",
          "--JobGUID", kJob, "--IdentifierGUID", "what", "--Data", "", "--Sequence", "1"}},
        {"CreateSimpleJobItems", On("CreateSimpleJobItems", {"--JobGUID", kJob, "--IdentifierGUIDs",
                                                             R"({"lower":1,"items":["a","it's",3,null]})"})},
        {"CreateSimpleJobItemsOfNothing",
         On("CreateSimpleJobItems", {"--JobGUID", kJob, "--IdentifierGUIDs", "[]"})},
        {"CreateSimpleJobItemsOfText",
         On("CreateSimpleJobItems", {"--JobGUID", kJob, "--IdentifierGUIDs", "text"}),
         {},
         1},
        {"CreateSimpleJobItemsOfTwoDimensions",
         On("CreateSimpleJobItems", {"--JobGUID", kJob, "--IdentifierGUIDs", R"([["a","b"],["c","d"]])"}),
         {},
         1},
        {"RemoveJobAndItems", On("RemoveJobAndItems", {"--JobGUID", kJob}, "--NameQualfier")},
        {"RemoveIrrelevantJobsInAllContainers", On("RemoveIrrelevantJobsInAllContainers", {})},
        {"RemoveIrrelevantJobsInContainer",
         On("RemoveIrrelevantJobsInContainer",
            {"--ProductionStateGUID", "{00000000-0000-0000-0000-000000000000}", "--DevelopmentStateGUID",
             development})},
        {"RemoveIrrelevantJobsInContainerWithoutOne",
         On("RemoveIrrelevantJobsInContainer",
            {"--ProductionStateGUID", production, "--DevelopmentStateGUID", kState})},
    };
}

std::vector<JournalCase> Queries() {
    return {
        {"GetJob", On("GetJob", {"--JobGUID", kJob, "--JobTypeID", "NIGHTLY", "--JobStateID", "RUNNING",
                                 "--ApplicationStateGUID", kState})},
        {"GetJobAll", On("GetJob", {})},
        {"GetJobFromTheConfiguration",
         {"GetJob", "--ConnectionString", "", "--Provider", "1", "--NameQualifier", "other_"}},
        {"GetJobType", On("GetJobType", {})},
        {"GetJobParameters", On("GetJobParameters", {"--JobGUID", kJob})},
        {"GetJobParametersOfNull", On("GetJobParameters", {"--JobGUID", kJob}),
         "UPDATE kx_job SET parameters = NULL", 1},
        {"GetJobParametersOfUnknown", On("GetJobParameters", {"--JobGUID", kUnknown}), {}, 1},
        {"GetJobItem", On("GetJobItem", {"--JobItemGUID", kItem})},
        {"GetJobItems", On("GetJobItems", {"--JobGUID", kJob})},
        {"GetJobTasks", On("GetJobTasks", {"--JobGUID", kJob})},
        {"GetJobExecutionStatistics", On("GetJobExecutionStatistics", {"--JobGUID", kJob})},
        {"GetJobExecutionStatisticsOfUnknown",
         On("GetJobExecutionStatistics", {"--JobGUID", kUnknown}),
         {},
         1},
        {"GetJobExecutionStatisticsAllowMissing",
         On("GetJobExecutionStatisticsAllowMissing", {"--JobGUID", kUnknown})},
        {"GetJobItemExecutionStatistics",
         On("GetJobItemExecutionStatistics", {"--JobGUID", kJob, "--SequenceNumber", "0"})},
        {"JobItemsAtState", OnDefault("JobItemsAtState", {"--JobGUID", kJob})},
        {"OwnersOfJobItemsAtState",
         OnDefault("OwnersOfJobItemsAtState", {"--JobGUID", kJob, "--StateId", "RUNNING"})},
    };
}

std::vector<JournalCase> UpdatesAndScheduling() {
    return {
        {"UpdateJobStatus",
         On("UpdateJobStatus", {"--JobGUID", kJob, "--JobStateID", "A<B&C"}, "--NameQualfier")},
        {"UpdateJobItemStatus",
         On("UpdateJobItemStatus",
            {"--JobItemGUID", kItem, "--JobItemStateID", "COMPLETE", "--StartISODateTime", "",
             "--EndISODateTime", "2026-03-01T10:00:00", "--JobTaskGUID", kTask},
            "--NameQualfier")},
        {"AppendJobFailureNote",
         On("AppendJobFailureNote", {"--JobGUID", kJob, "--AdditionalNote", "it's broken"},
            "--NameQualfier")},
        {"AppendJobItemFailureNote",
         On("AppendJobItemFailureNote", {"--JobItemGUID", kItem, "--AdditionalNote", ""}, "--NameQualfier")},
        {"AppendJobItemFailureNoteOfUnknown",
         On("AppendJobItemFailureNote", {"--JobItemGUID", kUnknown, "--AdditionalNote", "x"},
            "--NameQualfier"),
         {},
         1},
        {"GetNextJobRunning", On("GetNextJob", {"--JobGUID", "before", "--JobRank", "0.25"})},
        {"GetNextJobQueued", On("GetNextJob", {"--JobGUID", "", "--JobRank", "0"}),
         "UPDATE kx_job SET jobstateid = 'QUEUED'"},
        {"GetNextJobNone", On("GetNextJob", {"--JobGUID", "before", "--JobRank", "0.25"}),
         "UPDATE kx_job SET jobstateid = 'READY'"},
        {"GetNextJobNotCreatable", On("GetNextJob", {"--JobGUID", "", "--JobRank", "0"}),
         "UPDATE kx_JobType SET implprogid = 'Nobody_83.HasThis'"},
        {"GetNextJobOfUnknownType", On("GetNextJob", {"--JobGUID", "before", "--JobRank", "0.25"}),
         "UPDATE kx_job SET jobtypeid = 'UNKNOWN'", 1},
    };
}

std::string NameOf(const ::testing::TestParamInfo<JournalCase>& info) {
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(VocabularyAndStore, JournalOfCall, ::testing::ValuesIn(VocabularyAndStore()),
                         NameOf);
INSTANTIATE_TEST_SUITE_P(Tasks, JournalOfCall, ::testing::ValuesIn(Tasks()), NameOf);
INSTANTIATE_TEST_SUITE_P(Lifecycle, JournalOfCall, ::testing::ValuesIn(Lifecycle()), NameOf);
INSTANTIATE_TEST_SUITE_P(Queries, JournalOfCall, ::testing::ValuesIn(Queries()), NameOf);
INSTANTIATE_TEST_SUITE_P(UpdatesAndScheduling, JournalOfCall, ::testing::ValuesIn(UpdatesAndScheduling()),
                         NameOf);

}  // namespace
}  // namespace kxjob
