#include "contract/store_contract.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <regex>
#include <utility>
#include <vector>

#include "defaults/store/store_test_support.h"
#include "kxjob/array.h"
#include "kxjob/caller_texts.h"
#include "seeded/seeded_store.h"
#include "support/every_method.h"
#include "support/sample_errors.h"

namespace kxjob::testing_support {

using testing::HasSubstr;

constexpr const char* kStateGuid1 = "{00000000-0000-4000-8000-000000000001}";
constexpr const char* kStateGuid2 = "{00000000-0000-4000-8000-000000000002}";

void StoreContract::SetUp() {
    if (!GetParam().whyMissing.empty()) GTEST_SKIP() << GetParam().whyMissing;
    std::ofstream(folder_.File("kxjob.conf")) << "log.file = " << folder_.File("log") << "\n";
    thread_ = std::make_unique<LibraryThread>();
    store_ = GetParam().makeStore();
    connectionString_ = store_->ConnectionString();
    tables_ = std::make_unique<Store>(connectionString_, provider_, "kx_");
    tables_->CreateTables();
    tables_->Execute(
        "INSERT INTO kx_JobType (jobtypeid, description, implprogid, notificationprogid)"
        " VALUES ('TYPE', '', 'kxTimer_83.Timer', '')");
    for (const auto& [state, guid] : {std::pair{"PRODUCTION", kStateGuid1}, {"DEVELOPMENT", kStateGuid2}}) {
        tables_->Execute("INSERT INTO kx_applicationstate (stateid, stateguid) VALUES (" +
                         tables_->Literal(state) + ", " + tables_->Literal(guid) + ")");
    }
}

void StoreContract::TearDown() {
    thread_.reset();
}

Value StoreContract::Cell(Store& store, const std::string& sql) {
    const Value rows = store.Query(sql);
    return rows.IsEmpty() ? Value() : rows.Rows().Cell(0, 0);
}

std::string StoreContract::MakeJob(int items) {
    const std::string job = NewGuid();
    jobs_.CreateJob(connectionString_, provider_, "kx_", job, "TYPE", "a job", kStateGuid1, "<parameters/>",
                    std::max(items, 1));
    std::vector<Value> identifiers;
    for (int i = 0; i < items; ++i) identifiers.emplace_back(std::to_string(i));
    if (items > 0) {
        jobs_.CreateSimpleJobItems(connectionString_, provider_, "kx_", job, Array::List(identifiers));
    }
    return job;
}

TEST_P(StoreContract, CreatesTablesTwiceAndBesideOthers) {
    for (const char* qualifier : {"", "kx_", "app_"}) {
        Store store(connectionString_, provider_, qualifier);
        store.CreateTables();
        store.CreateTables();
        for (const char* table : {"job", "JobItem", "jobtask", "systemflag", "adminhistory", "subsystem"}) {
            EXPECT_EQ(Cell(store, "SELECT COUNT(*) FROM " + store.Table(table)), Value(0)) << table;
        }
    }
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM kx_JobType"), Value(1));
}

TEST_P(StoreContract, TellsItsEngineAndTheTimeByItsClock) {
    EXPECT_EQ(tables_->EngineName(), GetParam().engineName);
    EXPECT_FALSE(tables_->EngineVersion().empty());
    const std::string before = NowISODateTime();
    const std::string now = tables_->NowISODateTime();
    EXPECT_TRUE(std::regex_match(now, std::regex(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z)"))) << now;
    EXPECT_GE(now, before);  // every store of this suite is on this machine
    EXPECT_LE(now, NowISODateTime());
}

TEST_P(StoreContract, RunsStatementsTogetherOrNotAtAll) {
    const std::string insert = "INSERT INTO kx_JobType (jobtypeid, description) VALUES ";
    tables_->ExecuteTogether(std::vector{insert + "('A', 'a')", insert + "('B', 'b')"});
    EXPECT_THROW(tables_->ExecuteTogether(std::vector{insert + "('C', 'c')", insert + "('A', 'again')"}),
                 AutomationError);
    tables_->ExecuteTogether({});

    EXPECT_EQ(Cell(*tables_, "SELECT COUNT(*) FROM kx_JobType WHERE description IN ('a', 'b', 'c', 'again')"),
              2);
}

TEST_P(StoreContract, TakesEveryCallOfEveryMethod) {
    int number = 0;
    for (const MethodCall& method : EveryMethod()) {
        const std::string qualifier = "m" + std::to_string(++number) + "_";
        SeedStore(connectionString_, qualifier, provider_);
        try {
            method.call(jobs_, connectionString_, provider_, qualifier);
        } catch (const AutomationError& error) {
            ADD_FAILURE() << method.name << ": " << error.Description();
        }
    }
    EXPECT_EQ(number, 35);
}

TEST_P(StoreContract, TakesAJobTheWholeRoad) {
    const std::string job = MakeJob(250);
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM kx_JobItem WHERE jobguid = '" + job + "'"), Value(250));
    jobs_.UpdateJobStatus(connectionString_, provider_, "kx_", job, "QUEUED");
    std::string next;
    double rank = 0;
    jobs_.GetNextJob(connectionString_, provider_, "kx_", next, rank);
    EXPECT_EQ(next, job);
    EXPECT_EQ(rank, 1.0);

    const std::string task =
        jobs_.RegisterJobTask(connectionString_, "kx_", "a task", job, "a user", "a machine", 71, 72);
    jobs_.UpdateJobStatus(connectionString_, provider_, "kx_", job, "RUNNING");
    const Value items = jobs_.GetJobItems(connectionString_, provider_, "kx_", job);
    ASSERT_EQ(items.Rows().Rows(), 250);
    for (std::int32_t i = 0; i < 5; ++i) {
        const std::string item = Cell("SELECT jobitemguid FROM kx_JobItem WHERE jobguid = '" + job +
                                      "' AND sequence = " + std::to_string(i))
                                     .Text();
        jobs_.UpdateJobItemStatus(connectionString_, provider_, "kx_", item, i == 4 ? "FAILED" : "COMPLETE",
                                  "2026-03-01T09:30:15.123Z", "2026-03-01T09:31:00.000Z", task);
        if (i == 4) {
            jobs_.AppendJobItemFailureNote(connectionString_, provider_, "kx_", item, "it's 'broken' \\ ?");
            EXPECT_THAT(Cell("SELECT failurenote FROM kx_JobItem WHERE jobitemguid = '" + item + "'").Text(),
                        HasSubstr("it's 'broken' \\ ?"));
        }
    }

    EXPECT_EQ(jobs_.JobItemsAtState(connectionString_, "kx_", job, "COMPLETE"), Rows({{"COMPLETE", 4}}));
    EXPECT_EQ(jobs_.OwnersOfJobItemsAtState(connectionString_, "kx_", job, "FAILED"),
              Rows({{"a machine", "FAILED", 1}}));
    EXPECT_EQ(jobs_.GetJobItemExecutionStatistics(connectionString_, provider_, "kx_", job, 0),
              Rows({{"COMPLETE", "2026-03-01T09:30:15.123Z", "2026-03-01T09:31:00.000Z"}}));
    EXPECT_EQ(jobs_.GetJobParameters(connectionString_, provider_, "kx_", job), "<parameters/>");

    const std::string kept = NewGuid();
    jobs_.CreateJob(connectionString_, provider_, "kx_", kept, "TYPE", "kept", kStateGuid2, "", 1);
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM kx_job"), Value(2));
    jobs_.RemoveIrrelevantJobsInContainer(connectionString_, provider_, "kx_", kStateGuid2, kStateGuid2);
    EXPECT_EQ(tables_->Query("SELECT jobguid FROM kx_job"), Rows({{kept}}));
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM kx_JobItem"), Value(0));
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM kx_jobtask"), Value(0));
}

void StoreContract::ExpectEveryMethodKeeps(const std::string& text) {
    const std::string job = NewGuid();
    jobs_.CreateJob(connectionString_, provider_, "kx_", job, "TYPE", text, kStateGuid1, text, 1);
    jobs_.CreateJobItem(connectionString_, provider_, "kx_", job, NewGuid(), text, 0);
    jobs_.AppendJobFailureNote(connectionString_, provider_, "kx_", job, text);

    EXPECT_EQ(Cell("SELECT description FROM kx_job WHERE jobguid = '" + job + "'"), Value(text));
    EXPECT_EQ(jobs_.GetJobParameters(connectionString_, provider_, "kx_", job), text);
    EXPECT_EQ(Cell("SELECT data FROM kx_JobItem WHERE jobguid = '" + job + "'"), Value(text));
    EXPECT_THAT(Cell("SELECT failurenote FROM kx_job WHERE jobguid = '" + job + "'").Text(), HasSubstr(text));
}

TEST_P(StoreContract, KeepsHostileTexts) {
    for (const char* text : {"Robert'); DROP TABLE kx_job; --", "\\' OR 1=1 -- ",
                             "/* ? */ :a $1 $$ {call x(?)} {d '2026-03-01'} %s", "a\r\nb\tc\x1A\x1B",
                             "\uFFFF \uFEFF \u00E9", "`back` \"double\" [brackets]"}) {
        ExpectEveryMethodKeeps(text);
    }
}

TEST_P(StoreContract, KeepsTextsOutsideTheBasicPlane) {
    if (!GetParam().whyLiteralsLosePlanes.empty()) GTEST_SKIP() << GetParam().whyLiteralsLosePlanes;
    ExpectEveryMethodKeeps("\U0001F600 it's \U0002070E \U0010FFFD");
}

TEST_P(StoreContract, RefusesTextsThatNoStoreCanKeep) {
    const std::string job = MakeJob(0);
    for (const std::string& text :
         {std::string("a\0b", 3), std::string("\xED\xA0\x80"), std::string("lone \xED\xB0\x80")}) {
        EXPECT_EQ(ErrorOf([&] {
                      jobs_.CreateJob(connectionString_, provider_, "kx_", NewGuid(), "TYPE", text,
                                      kStateGuid2, "", 1);
                  }).Number(),
                  kUnstorableText);
        EXPECT_EQ(ErrorOf([&] {
                      jobs_.AppendJobFailureNote(connectionString_, provider_, "kx_", job, text);
                  }).Number(),
                  kUnstorableText);
    }
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM kx_job"), Value(1));
}

namespace {

/// A text of at least this many bytes of what drivers have been known to trip over.
std::string HostileText(std::size_t bytes, std::string_view more = "") {
    const std::string piece = std::string("it's; a ? long \\ text \u00E9 {d '1'}\r\n").append(more);
    std::string text;
    text.reserve(bytes + piece.size());
    while (text.size() < bytes) text += piece;
    return text;
}

}  // namespace

void StoreContract::ExpectLongTextsAreKept(const std::string& text) {
    const std::string job = NewGuid();

    jobs_.CreateJob(connectionString_, provider_, "kx_", job, "TYPE", "a job", kStateGuid1, text, 1);
    jobs_.CreateJobItem(connectionString_, provider_, "kx_", job, NewGuid(), text, 0);
    jobs_.AppendJobFailureNote(connectionString_, provider_, "kx_", job, text);

    // Not EXPECT_EQ: no output of many megabytes.
    EXPECT_TRUE(jobs_.GetJobParameters(connectionString_, provider_, "kx_", job) == text);
    EXPECT_TRUE(Cell("SELECT data FROM kx_JobItem").Text() == text);
    EXPECT_TRUE(Cell("SELECT failurenote FROM kx_job").Text().find(text) != std::string::npos);
}

TEST_P(StoreContract, KeepsTextsOf5Megabytes) {
    ExpectLongTextsAreKept(HostileText(std::size_t{5} << 20U, "\U0001F600"));
}

TEST_P(StoreContract, KeepsTextsOf64Megabytes) {
    ExpectLongTextsAreKept(HostileText(std::size_t{64} << 20U, "\U0001F600"));
}

TEST_P(StoreContract, KeepsLiteralsOf256Kilobytes) {
    const std::string text = HostileText(std::size_t{256} << 10U);
    const std::string job = NewGuid();

    jobs_.CreateJob(connectionString_, provider_, "kx_", job, "TYPE", text, kStateGuid1, "", 1);
    const std::string task = jobs_.RegisterJobTask(connectionString_, "kx_", text, job, text, "", 1, 1);
    jobs_.UpdateTaskCommand(connectionString_, "kx_", task, text);

    EXPECT_TRUE(Cell("SELECT description FROM kx_job").Text() == text);
    EXPECT_TRUE(Cell("SELECT description FROM kx_jobtask").Text() == text);
    EXPECT_TRUE(Cell("SELECT usercontext FROM kx_jobtask").Text() == text);
    EXPECT_TRUE(Cell("SELECT command FROM kx_jobtask").Text() == text);
}

INSTANTIATE_TEST_SUITE_P(Engines, StoreContract, testing::ValuesIn(EveryEngine()), EngineName);

}  // namespace kxjob::testing_support
