#include <gtest/gtest.h>
#include <kxJob.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "com/errors/error_info.h"
#include "com/handles/variant.h"
#include "com/late/late_component.h"
#include "com/support/apartment.h"
#include "com/support/script_call.h"
#include "com/support/test_store.h"
#include "com/values/value_of_variant.h"
#include "com/values/variant_of_value.h"
#include "kxjob/array.h"
#include "kxjob/collection.h"

namespace kxjob {
namespace {

using testing_support::Apartment;
using testing_support::NewObject;
using testing_support::TestStore;

constexpr const char* kJob = "{00000000-0000-4000-8000-00000000A001}";
constexpr const char* kState = "{00000000-0000-4000-8000-00000000E001}";

/// A BSTR argument that lives as long as the call.
class In {
public:
    In(std::string_view text) : text_(text) {}
    In(const char* text) : text_(std::string_view(text)) {}
    In(const std::string& text) : text_(std::string_view(text)) {}
    operator BSTR() const { return text_.Get(); }

private:
    Bstr text_;
};

std::string Taken(BSTR text) {
    return TextOf(Bstr(text).Get());
}

Value Taken(VARIANT variant) {
    return ValueOf(*Variant(variant));
}

/// Rows as a general array: (column, row).
Value Cell(const Value& rows, std::int32_t column, std::int32_t row) {
    return rows.General().At(std::vector<std::int32_t>{column, row});
}

std::int32_t RowCount(const Value& rows) {
    return rows.General().Dimensions()[1].count;
}

/// A database system that the client's store may be on.
struct Engine {
    const char* name;
    TestStore (*makeStore)();
};

TestStore FileOfThisTest() {
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    std::string name = test.name();
    name.resize(name.find('/'));
    return TestStore::InFile("early_bound_" + name + ".db");
}

/// What script/stores says about a server; empty without one.
std::string ServerOf(const char* variable) {
    const char* connectionString = std::getenv(variable);
    return connectionString == nullptr ? std::string() : connectionString;
}

TestStore PostgreSqlStore() {
    return TestStore::OnServer(ServerOf("KXJOB_POSTGRESQL"), dspPostgreSql, "public.");
}

TestStore MariaDbStore() {
    return TestStore::OnServer(ServerOf("KXJOB_MARIADB"), dspMariaDb, "kx.");
}

/// The servers are asked only where there are any: script/test starts them for these tests alone.
std::vector<Engine> Engines() {
    std::vector<Engine> engines = {{"SqliteFile", FileOfThisTest}};
    if (!ServerOf("KXJOB_POSTGRESQL").empty()) engines.push_back({"PostgreSql", PostgreSqlStore});
    if (!ServerOf("KXJOB_MARIADB").empty()) engines.push_back({"MariaDb", MariaDbStore});
    return engines;
}

/// A client that was compiled against the type library.
class EarlyBoundClient : public testing::TestWithParam<Engine> {
protected:
    void SetUp() override {
        store_.Execute(
            "INSERT INTO JobType (jobtypeid, description, implprogid, notificationprogid)"
            " VALUES ('NIGHTLY', 'every night', 'kxTimer_83.Timer', '')");
    }

    void CreateJob() {
        ASSERT_EQ(helper_->CreateJob(In(connection_), Provider(), In(store_.Qualifier()), In(kJob),
                                     In("NIGHTLY"), In("first job"), In(kState), In("<parameters/>"), 3),
                  S_OK);
    }
    std::string AddItem(const char* identifier, LONG sequence) {
        BSTR item = nullptr;
        EXPECT_EQ(helper_->CreateJobItem(In(connection_), Provider(), In(store_.Qualifier()), In(kJob),
                                         In(identifier), In("data"), sequence, &item),
                  S_OK);
        return Taken(item);
    }
    std::string RegisterTask() {
        BSTR task = nullptr;
        const Variant connection = VariantOf(Value(connection_));
        const Variant description = VariantOf(Value("a task"));
        const Variant user = VariantOf(Value(7));
        const Variant machine = VariantOf(Value(Null{}));
        EXPECT_EQ(helper_->RegisterJobTask(*connection, In(store_.Qualifier()), *description, In(kJob), *user,
                                           *machine, 71, 72, &task),
                  S_OK);
        return Taken(task);
    }
    ::DataStoreProvider Provider() const { return static_cast<::DataStoreProvider>(store_.Provider()); }
    Value Query(const std::string& sql) { return store_.Query(sql); }

    Apartment apartment_;
    TestStore store_ = GetParam().makeStore();
    std::string connection_ = store_.ConnectionString();
    ComPointer<_JobHelper> helper_ = ComPointer<_JobHelper>::From(NewObject(L"Job_83.JobHelper").Get());
};

TEST_P(EarlyBoundClient, ReadsTheVocabulary) {
    BSTR text = nullptr;
    ASSERT_EQ(helper_->Version(&text), S_OK);
    EXPECT_EQ(Taken(text), "8.3.1202.0");
    ASSERT_EQ(helper_->ParametersTagName(&text), S_OK);
    EXPECT_EQ(Taken(text), "parameters");
    ASSERT_EQ(helper_->ParameterTagName(&text), S_OK);
    EXPECT_EQ(Taken(text), "parameter");
    VARIANT_BOOL truth = VARIANT_FALSE;
    ASSERT_EQ(helper_->IsJobComplete(In("COMPLETE"), &truth), S_OK);
    EXPECT_EQ(truth, VARIANT_TRUE);
    ASSERT_EQ(helper_->IsJobRunning(In("COMPLETE"), &truth), S_OK);
    EXPECT_EQ(truth, VARIANT_FALSE);
}

TEST_P(EarlyBoundClient, GetsTheCreationScript) {
    ComPointer<IDispatch> options = DispatchOf(std::make_shared<Collection>());
    IDispatch* variable = options.Get();
    BSTR script = nullptr;
    ASSERT_EQ(helper_->JobTableCreationScript(&variable, Provider(), In("q_"), &script), S_OK);
    EXPECT_EQ(variable, options.Get());
    EXPECT_NE(Taken(script).find("CREATE TABLE IF NOT EXISTS q_JobType "), std::string::npos);
}

TEST_P(EarlyBoundClient, CreatesAJobAndReadsItBack) {
    CreateJob();
    VARIANT rows;
    ASSERT_EQ(helper_->GetJob(In(connection_), Provider(), In(store_.Qualifier()), In(kJob), nullptr, nullptr,
                              nullptr, &rows),
              S_OK);
    const Value job = Taken(rows);
    EXPECT_EQ(RowCount(job), 1);
    EXPECT_EQ(Cell(job, jifJobGUID, 0), Value(kJob));
    EXPECT_EQ(Cell(job, jifJobState, 0), Value("CREATING"));
    EXPECT_EQ(Cell(job, jifTotalItemCount, 0), Value(3));
    EXPECT_EQ(Cell(job, jifApplicationDefinitionGUID, 0), Value(kState));
    EXPECT_EQ(Cell(job, jifFailureNote, 0), Value(Null{}));

    BSTR parameters = nullptr;
    ASSERT_EQ(
        helper_->GetJobParameters(In(connection_), Provider(), In(store_.Qualifier()), In(kJob), &parameters),
        S_OK);
    EXPECT_EQ(Taken(parameters), "<parameters/>");
    ASSERT_EQ(helper_->GetJobType(In(connection_), Provider(), In(store_.Qualifier()), In("NIGHTLY"), &rows),
              S_OK);
    EXPECT_EQ(Cell(Taken(rows), jtifComponentInstantiationString, 0), Value("kxTimer_83.Timer"));
}

TEST_P(EarlyBoundClient, GetsEmptyForNoRow) {
    VARIANT rows;
    ASSERT_EQ(helper_->GetJob(In(connection_), Provider(), In(store_.Qualifier()), In(kJob), nullptr, nullptr,
                              nullptr, &rows),
              S_OK);
    EXPECT_EQ(rows.vt, VT_EMPTY);
}

TEST_P(EarlyBoundClient, AddsItemsAndFollowsThem) {
    CreateJob();
    const std::string item = AddItem("only", 0);
    const std::string task = RegisterTask();
    ASSERT_EQ(helper_->UpdateJobItemStatus(In(connection_), Provider(), In(store_.Qualifier()), In(item),
                                           In("COMPLETE"), In("2026-01-01T00:00:00.000Z"),
                                           In("2026-01-01T00:00:01.000Z"), In(task)),
              S_OK);
    VARIANT rows;
    ASSERT_EQ(helper_->GetJobItem(In(connection_), Provider(), In(store_.Qualifier()), In(item), &rows),
              S_OK);
    const Value one = Taken(rows);
    EXPECT_EQ(Cell(one, jiifIdentifier, 0), Value("only"));
    EXPECT_EQ(Cell(one, jiifData, 0), Value("data"));
    EXPECT_EQ(Cell(one, jiifJobItemState, 0), Value("COMPLETE"));
    ASSERT_EQ(helper_->GetJobItems(In(connection_), Provider(), In(store_.Qualifier()), In(kJob), &rows),
              S_OK);
    EXPECT_EQ(Cell(Taken(rows), 0, 0), Value(item));
    ASSERT_EQ(helper_->GetJobItemExecutionStatistics(In(connection_), Provider(), In(store_.Qualifier()),
                                                     In(kJob), 0, &rows),
              S_OK);
    EXPECT_EQ(Cell(Taken(rows), 1, 0), Value("2026-01-01T00:00:00.000Z"));
    ASSERT_EQ(helper_->JobItemsAtState(In(connection_), In(store_.Qualifier()), In(kJob), nullptr, &rows),
              S_OK);
    EXPECT_EQ(Cell(Taken(rows), 1, 0), Value(1));
    ASSERT_EQ(helper_->OwnersOfJobItemsAtState(In(connection_), In(store_.Qualifier()), In(kJob),
                                               In("COMPLETE"), &rows),
              S_OK);
    EXPECT_EQ(Cell(Taken(rows), 0, 0), Value(Null{})) << "the task named no machine";
}

TEST_P(EarlyBoundClient, AddsAnItemForEachElementOfAnArrayOfTexts) {
    CreateJob();
    SAFEARRAYBOUND bound{2, 1};
    VARIANT texts;
    texts.vt = VT_ARRAY | VT_BSTR;
    texts.parray = SafeArrayCreate(VT_BSTR, 1, &bound);
    for (LONG i = 1; i <= 2; ++i) SafeArrayPutElement(texts.parray, &i, In(i == 1 ? "one" : "two"));
    EXPECT_EQ(
        helper_->CreateSimpleJobItems(In(connection_), Provider(), In(store_.Qualifier()), In(kJob), texts),
        S_OK);
    VariantClear(&texts);
    const Value rows = Query("SELECT identifier, sequence FROM JobItem ORDER BY sequence");
    EXPECT_EQ(rows.Rows().Cell(0, 0), Value("one"));
    EXPECT_EQ(rows.Rows().Cell(0, 1), Value("two"));
    EXPECT_EQ(rows.Rows().Cell(1, 1), Value(1));
}

TEST_P(EarlyBoundClient, RegistersATaskAndClosesIt) {
    CreateJob();
    const std::string task = RegisterTask();
    ASSERT_EQ(helper_->UpdateTaskRegistration(In(connection_), In(store_.Qualifier()), In(task), In("i7"),
                                              In("RUNNING")),
              S_OK);
    ASSERT_EQ(helper_->UpdateTaskCommand(In(connection_), In(store_.Qualifier()), In(task), In("STOP")),
              S_OK);
    ASSERT_EQ(helper_->UpdateJobTaskLock(In(connection_), In(store_.Qualifier()), In(task), In("{L}")), S_OK);
    VARIANT rows;
    ASSERT_EQ(helper_->GetJobTasks(In(connection_), Provider(), In(store_.Qualifier()), In(kJob), &rows),
              S_OK);
    const Value tasks = Taken(rows);
    EXPECT_EQ(Cell(tasks, jtfUser, 0), Value("7"));
    EXPECT_EQ(Cell(tasks, jtfLastJobItem, 0), Value("i7"));
    EXPECT_EQ(Cell(tasks, jtfCommand, 0), Value("STOP"));
    EXPECT_EQ(Cell(tasks, jtfLockGUID, 0), Value("{L}"));
    EXPECT_EQ(Cell(tasks, jtfProcessID, 0), Value(71));

    ASSERT_EQ(helper_->UnRegisterJobTask(In(connection_), In(store_.Qualifier()), In(task)), S_OK);
    EXPECT_EQ(Query("SELECT jobtaskstateid FROM jobtask").Rows().Cell(0, 0), Value("COMPLETE"));
    ASSERT_EQ(helper_->UnRegisterJobTaskIndicatingStatus(In(connection_), In(store_.Qualifier()), In(task),
                                                         VARIANT_FALSE),
              S_OK);
    EXPECT_EQ(Query("SELECT jobtaskstateid FROM jobtask").Rows().Cell(0, 0), Value("FAILED"));
}

TEST_P(EarlyBoundClient, ExchangesTheEditorLockOnce) {
    CreateJob();
    const std::string task = RegisterTask();
    store_.Execute("UPDATE job SET jobeditorlockguid = '{OLD}'");
    BSTR lock = nullptr;
    ASSERT_EQ(helper_->GetNewLockExcludingInterlopers(In(connection_), In(store_.Qualifier()), In(kJob),
                                                      In(task), In("{OLD}"), 90.5, &lock),
              S_OK);
    const std::string taken = Taken(lock);
    EXPECT_EQ(Query("SELECT jobeditorlockguid FROM job").Rows().Cell(0, 0), Value(taken));
    EXPECT_EQ(helper_->GetNewLockExcludingInterlopers(In(connection_), In(store_.Qualifier()), In(kJob),
                                                      In(task), In("{OLD}"), 90.5, &lock),
              static_cast<HRESULT>(0x80040000U + 746));
    const AutomationError error = ErrorOf(static_cast<HRESULT>(0x80040000U + 746));
    EXPECT_EQ(error.Source(), "Job_83.JobHelper.GetNewLockExcludingInterlopers");
    EXPECT_FALSE(error.Description().empty());
    EXPECT_EQ(lock, nullptr) << "there is no result beside an error";
}

TEST_P(EarlyBoundClient, IsGivenTheNextJobAndItsRank) {
    CreateJob();
    ASSERT_EQ(
        helper_->UpdateJobStatus(In(connection_), Provider(), In(store_.Qualifier()), In(kJob), In("QUEUED")),
        S_OK);
    BSTR job = Bstr(std::string_view("before")).Release();
    double rank = -1;
    ASSERT_EQ(helper_->GetNextJob(In(connection_), Provider(), In(store_.Qualifier()), &job, &rank), S_OK);
    EXPECT_EQ(Taken(job), kJob);
    EXPECT_EQ(rank, 1);

    ASSERT_EQ(helper_->UpdateJobStatus(In(connection_), Provider(), In(store_.Qualifier()), In(kJob),
                                       In("COMPLETE")),
              S_OK);
    job = Bstr(std::string_view("before")).Release();
    ASSERT_EQ(helper_->GetNextJob(In(connection_), Provider(), In(store_.Qualifier()), &job, &rank), S_OK);
    EXPECT_EQ(Taken(job), "before");
}

TEST_P(EarlyBoundClient, ReadsStatisticsAndFailureNotes) {
    CreateJob();
    const std::string item = AddItem("only", 0);
    ASSERT_EQ(helper_->AppendJobFailureNote(In(connection_), Provider(), In(store_.Qualifier()), In(kJob),
                                            In("it broke")),
              S_OK);
    ASSERT_EQ(helper_->AppendJobItemFailureNote(In(connection_), Provider(), In(store_.Qualifier()), In(item),
                                                In("here")),
              S_OK);
    VARIANT rows;
    ASSERT_EQ(helper_->GetJobExecutionStatistics(In(connection_), Provider(), In(store_.Qualifier()),
                                                 In(kJob), &rows),
              S_OK);
    const Value statistics = Taken(rows);
    EXPECT_EQ(Cell(statistics, sfJobType, 0), Value("NIGHTLY"));
    EXPECT_NE(Cell(statistics, sfFailureNote, 0).Text().find("it broke"), std::string::npos);
    EXPECT_EQ(Cell(statistics, sfAppStateGUID, 0), Value(kState));
    ASSERT_EQ(helper_->GetJobItem(In(connection_), Provider(), In(store_.Qualifier()), In(item), &rows),
              S_OK);
    EXPECT_NE(Cell(Taken(rows), jiifFaliureNote, 0).Text().find("here"), std::string::npos);
    ASSERT_EQ(helper_->GetJobExecutionStatisticsAllowMissing(In(connection_), Provider(),
                                                             In(store_.Qualifier()), In("{none}"), &rows),
              S_OK);
    EXPECT_EQ(rows.vt, VT_EMPTY);
}

TEST_P(EarlyBoundClient, RemovesJobs) {
    CreateJob();
    AddItem("only", 0);
    ASSERT_EQ(helper_->RemoveIrrelevantJobsInContainer(In(connection_), Provider(), In(store_.Qualifier()),
                                                       In(kState), In("{D}")),
              S_OK);
    EXPECT_FALSE(Query("SELECT jobguid FROM job").IsEmpty()) << "it belongs to the production state";
    ASSERT_EQ(helper_->RemoveIrrelevantJobsInContainer(In(connection_), Provider(), In(store_.Qualifier()),
                                                       In("{P}"), In("{D}")),
              S_OK);
    EXPECT_TRUE(Query("SELECT jobguid FROM job").IsEmpty());
    EXPECT_TRUE(Query("SELECT jobguid FROM JobItem").IsEmpty());

    CreateJob();
    store_.Execute("INSERT INTO applicationstate (stateid, stateguid) VALUES ('DEVELOPMENT', '{D}')");
    ASSERT_EQ(
        helper_->RemoveIrrelevantJobsInAllContainers(In(connection_), Provider(), In(store_.Qualifier())),
        S_OK);
    EXPECT_TRUE(Query("SELECT jobguid FROM job").IsEmpty());
    CreateJob();
    ASSERT_EQ(helper_->RemoveJobAndItems(In(connection_), Provider(), In(store_.Qualifier()), In(kJob)),
              S_OK);
    EXPECT_TRUE(Query("SELECT jobguid FROM job").IsEmpty());
    EXPECT_FALSE(Query("SELECT actioncode FROM adminhistory WHERE actioncode = 'JOB_REMOVED'").IsEmpty());
}

TEST(EarlyBoundDurationTimer, RunsFromItsCreationAndStartsAgainFromZero) {
    const Apartment apartment;
    const auto timer = ComPointer<_DurationTimer>::From(NewObject(L"Job_83.DurationTimer").Get());
    double first = 0;
    while (first < 0.25) ASSERT_EQ(timer->get_Duration(&first), S_OK);
    ASSERT_EQ(timer->Start(), S_OK);
    double second = -1;
    ASSERT_EQ(timer->get_Duration(&second), S_OK);
    EXPECT_GE(second, 0);
    EXPECT_LT(second, first);
    EXPECT_EQ(timer->get_Duration(nullptr), E_POINTER);
}

INSTANTIATE_TEST_SUITE_P(Stores, EarlyBoundClient, testing::ValuesIn(Engines()),
                         [](const auto& engine) { return std::string(engine.param.name); });

}  // namespace
}  // namespace kxjob
