#include <utility>

#include "scheduling/next_job_test_support.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using ::testing::InSequence;
using ::testing::Return;
using ::testing::StrictMock;
using ::testing::Throw;
using testing_support::ErrorOf;
using testing_support::kRaised;
using testing_support::NextJobTest;

class GetQueuedAndRunningJobs : public NextJobTest {};

TEST_F(GetQueuedAndRunningJobs, RefusesAJobWhoseTypeHasNoMetadata) {
    InSequence inThisOrder;
    ExpectJobs({{"{A}", "T1", "QUEUED"}, {"{B}", "T9", "QUEUED"}, {"{C}", "T1", "QUEUED"}});
    ExpectJobTypes({{"T1", "Impl_83.Totals"}});
    ExpectCreatable(1);

    ExpectOwnError([&] { GetNextJob(); }, 855, "GetQueuedAndRunningJobs",
                   "Unable to find meta data about job type 'T9'",
                   {"GetQueuedAndRunningJobs", "LowImpactGetNextJob", "GetNextJob"});
    ExpectAnswer("before", -1);
}

TEST_F(GetQueuedAndRunningJobs, RefusesTheFirstJobWhenThereIsNoJobTypeAtAll) {
    InSequence inThisOrder;
    ExpectJobs({{"{A}", "T1", "RUNNING"}});
    ExpectJobTypes({});

    ExpectOwnError([&] { GetNextJob(); }, 855, "GetQueuedAndRunningJobs",
                   "Unable to find meta data about job type 'T1'",
                   {"GetQueuedAndRunningJobs", "LowImpactGetNextJob", "GetNextJob"});
}

TEST_F(GetQueuedAndRunningJobs, LeavesOutJobsThatThisMachineCannotCreate) {
    InSequence inThisOrder;
    ExpectJobs({{"{A}", "T2", "QUEUED"}, {"{B}", "T1", "QUEUED"}});
    ExpectJobTypes({{"T1", "Impl_83.Totals"}, {"T2", "Elsewhere_83.Impl"}});
    EXPECT_CALL(factory, CanCreate("Elsewhere_83.Impl")).WillOnce(Return(false));
    ExpectTrace("Unable to create implementation (Elsewhere_83.Impl) for 'T2'", 4, "GetQueuedAndRunningJobs");
    EXPECT_CALL(factory, CanCreate("Impl_83.Totals")).WillOnce(Return(true));
    ExpectTrace("There were 1 QUEUED Job(s)", 4, "LowImpactGetNextJob");
    ExpectPick(0);
    ExpectRecommended("{B}", "1");

    GetNextJob();
    ExpectAnswer("{B}", 1.0);
}

TEST_F(GetQueuedAndRunningJobs, FindsNothingWhenThisMachineCanCreateNoneAndAsksForEachJob) {
    InSequence inThisOrder;
    ExpectJobs({{"{A}", "T2", "QUEUED"}, {"{B}", "T2", "RUNNING"}});
    ExpectJobTypes({{"T2", "Elsewhere_83.Impl"}});
    for (int job = 0; job < 2; ++job) {
        EXPECT_CALL(factory, CanCreate("Elsewhere_83.Impl")).WillOnce(Return(false));
        ExpectTrace("Unable to create implementation (Elsewhere_83.Impl) for 'T2'", 4,
                    "GetQueuedAndRunningJobs");
    }
    ExpectNothingFound();

    GetNextJob();
    ExpectAnswer("before", -1);
}

TEST_F(GetQueuedAndRunningJobs, WarnsOfStatesThatAreSpelledDifferentlyAndSkipsThem) {
    InSequence inThisOrder;
    ExpectJobs({{"{A}", "T1", "queued"}, {"{B}", "T1", "RUNNING "}, {"{C}", "T1", "QUEUED"}});
    ExpectJobTypes({{"T1", "Impl_83.Totals"}});
    ExpectCreatable(1);
    ExpectTrace("Found job {A} at unexpected state 'queued'", 2, "GetQueuedAndRunningJobs");
    ExpectCreatable(1);
    ExpectTrace("Found job {B} at unexpected state 'RUNNING '", 2, "GetQueuedAndRunningJobs");
    ExpectCreatable(1);
    ExpectTrace("There were 1 QUEUED Job(s)", 4, "LowImpactGetNextJob");
    ExpectPick(0);
    ExpectRecommended("{C}", "1");

    GetNextJob();
    ExpectAnswer("{C}", 1.0);
}

TEST_F(GetQueuedAndRunningJobs, FindsNothingWhenAllStatesAreUnexpected) {
    InSequence inThisOrder;
    ExpectJobs({{"{A}", "T1", "Running"}});
    ExpectJobTypes({{"T1", "Impl_83.Totals"}});
    ExpectCreatable(1);
    ExpectTrace("Found job {A} at unexpected state 'Running'", 2, "GetQueuedAndRunningJobs");
    ExpectNothingFound();

    GetNextJob();
    ExpectAnswer("before", -1);
}

TEST_F(GetQueuedAndRunningJobs, TakesAJobTypeThatIsANumberForAText) {
    InSequence inThisOrder;
    ExpectJobs({{"{A}", 42, "QUEUED"}});
    ExpectJobTypes({{"42", "Impl_83.Totals"}});
    ExpectCreatable(1);
    ExpectTrace("There were 1 QUEUED Job(s)", 4, "LowImpactGetNextJob");
    ExpectPick(0);
    ExpectRecommended("{A}", "1");

    GetNextJob();
}

TEST_F(GetQueuedAndRunningJobs, RefusesTheSameJobTwice) {
    InSequence inThisOrder;
    ExpectJobs({{"{a}", "T1", "QUEUED"}, {"{A}", "T1", "QUEUED"}});
    ExpectJobTypes({{"T1", "Impl_83.Totals"}});
    ExpectCreatable(2);

    const AutomationError error = ErrorOf([&] { GetNextJob(); });
    EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x800A01C9U));
    ExpectTold(error, {"GetQueuedAndRunningJobs", "LowImpactGetNextJob", "GetNextJob"});
    ExpectAnswer("before", -1);
}

TEST_F(GetQueuedAndRunningJobs, PassesOnAFailureToReadTheJobs) {
    InSequence inThisOrder;
    EXPECT_CALL(times, NowISODateTime()).WillOnce(Return("now"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    ExpectTableNames();
    EXPECT_CALL(data, Query("db", 5, 1, kJobsQuery, true)).WillOnce(Throw(kRaised));

    ExpectPassedOn([&] { GetNextJob(); }, kRaised,
                   {"GetQueuedAndRunningJobs", "LowImpactGetNextJob", "GetNextJob"});
    ExpectAnswer("before", -1);
}

TEST_F(GetQueuedAndRunningJobs, PassesOnAFailureToAskWhatThisMachineCanCreate) {
    InSequence inThisOrder;
    ExpectJobs({{"{A}", "T1", "QUEUED"}});
    ExpectJobTypes({{"T1", "Impl_83.Totals"}});
    EXPECT_CALL(factory, CanCreate("Impl_83.Totals")).WillOnce(Throw(kRaised));

    ExpectPassedOn([&] { GetNextJob(); }, kRaised,
                   {"GetQueuedAndRunningJobs", "LowImpactGetNextJob", "GetNextJob"});
}

class GetJobTypeProgIDs : public NextJobTest {};

TEST_F(GetJobTypeProgIDs, PassesOnAFailureToReadTheJobTypes) {
    InSequence inThisOrder;
    ExpectJobs({{"{A}", "T1", "QUEUED"}});
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Query("db", 5, 1, kJobTypesQuery, true)).WillOnce(Throw(kRaised));

    ExpectPassedOn(
        [&] { GetNextJob(); }, kRaised,
        {"GetJobType", "GetJobTypeProgIDs", "GetQueuedAndRunningJobs", "LowImpactGetNextJob", "GetNextJob"});
    ExpectAnswer("before", -1);
}

TEST_F(GetJobTypeProgIDs, PassesOnARefusalOfTheQualifierThatComesOnlyThen) {
    InSequence inThisOrder;
    ExpectJobs({{"{A}", "T1", "QUEUED"}});
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(kRaised));

    ExpectPassedOn(
        [&] { GetNextJob(); }, kRaised,
        {"GetJobType", "GetJobTypeProgIDs", "GetQueuedAndRunningJobs", "LowImpactGetNextJob", "GetNextJob"});
}

class MockKeyedCollection : public KeyedCollection {
public:
    MOCK_METHOD(void, Add, (const Value& item, const std::string& key), (override));
    MOCK_METHOD(bool, Exists, (const std::string& key), (override));
    MOCK_METHOD(Value, Item, (const std::string& key), (override));
};

/// Another factory with this keyed collection in it.
class WithKeyedCollection : public CollaboratorFactory {
public:
    WithKeyedCollection(std::shared_ptr<CollaboratorFactory> rest, std::shared_ptr<KeyedCollection> map)
        : rest_(std::move(rest)), map_(std::move(map)) {}

    std::shared_ptr<InputGuard> MakeInputGuard() override { return rest_->MakeInputGuard(); }
    std::shared_ptr<SqlFormatter> MakeSqlFormatter() override { return rest_->MakeSqlFormatter(); }
    std::shared_ptr<DataAccess> MakeDataAccess() override { return rest_->MakeDataAccess(); }
    std::shared_ptr<TraceLog> MakeTraceLog() override { return rest_->MakeTraceLog(); }
    std::shared_ptr<GuidService> MakeGuidService() override { return rest_->MakeGuidService(); }
    std::shared_ptr<TimeService> MakeTimeService() override { return rest_->MakeTimeService(); }
    std::shared_ptr<ArrayInspector> MakeArrayInspector() override { return rest_->MakeArrayInspector(); }
    std::shared_ptr<ScriptLibrary> MakeScriptLibrary() override { return rest_->MakeScriptLibrary(); }
    std::shared_ptr<RandomSource> MakeRandomSource() override { return rest_->MakeRandomSource(); }
    std::shared_ptr<Platform> MakePlatform() override { return rest_->MakePlatform(); }
    std::shared_ptr<ObjectFactory> MakeObjectFactory() override { return rest_->MakeObjectFactory(); }
    std::shared_ptr<ConnectionSettings> MakeConnectionSettings() override {
        return rest_->MakeConnectionSettings();
    }
    std::shared_ptr<SystemFlagReader> MakeSystemFlagReader() override {
        return rest_->MakeSystemFlagReader();
    }
    std::shared_ptr<BatchSqlExecutor> MakeBatchSqlExecutor() override {
        return rest_->MakeBatchSqlExecutor();
    }
    std::shared_ptr<EnvironmentInfo> MakeEnvironmentInfo() override { return rest_->MakeEnvironmentInfo(); }
    std::shared_ptr<KeyedCollection> MakeKeyedCollection() override { return map_; }

private:
    std::shared_ptr<CollaboratorFactory> rest_;
    std::shared_ptr<KeyedCollection> map_;
};

TEST_F(GetJobTypeProgIDs, PutsKeyInFrontOfEveryJobTypeWhenItFillsAndWhenItSearches) {
    const auto map = std::make_shared<StrictMock<MockKeyedCollection>>();
    InstallCollaborators(std::make_shared<WithKeyedCollection>(ThisThread().SharedFactory(), map));
    InSequence inThisOrder;
    ExpectJobs({{"{A}", "42", "QUEUED"}});
    ExpectJobTypes({{"T1", "Impl_83.Letters"}, {"42", "Impl_83.Totals"}});
    EXPECT_CALL(*map, Add(Value("Impl_83.Letters"), "KeyT1"));
    EXPECT_CALL(*map, Add(Value("Impl_83.Totals"), "Key42"));
    EXPECT_CALL(*map, Exists("Key42")).WillOnce(Return(true));
    EXPECT_CALL(*map, Item("Key42")).WillOnce(Return(Value("Impl_83.Totals")));
    ExpectCreatable(1);
    ExpectTrace("There were 1 QUEUED Job(s)", 4, "LowImpactGetNextJob");
    ExpectPick(0);
    ExpectRecommended("{A}", "1");

    GetNextJob();
}

}  // namespace
}  // namespace kxjob
