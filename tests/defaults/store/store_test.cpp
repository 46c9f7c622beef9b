#include "kxjob/store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>

#include "collaborators/this_thread.h"
#include "defaults/store/script_library.h"
#include "defaults/store/store_batch_executor.h"
#include "defaults/store/store_data_access.h"
#include "defaults/store/store_test_support.h"
#include "defaults/text/standard_input_guard.h"
#include "defaults/text/standard_sql_formatter.h"
#include "kxjob/array.h"
#include "support/fake_collaborators.h"
#include "support/mock_collaborators.h"

namespace kxjob {
namespace {

using testing::_;
using testing::InSequence;
using testing::Return;
using testing::StartsWith;
using testing::StrictMock;
using testing_support::ErrorOf;
using testing_support::FakeSqlFormatter;
using testing_support::MockBatchSqlExecutor;
using testing_support::MockDataAccess;
using testing_support::MockInputGuard;
using testing_support::MockScriptLibrary;
using testing_support::Rows;
using testing_support::TemporaryDatabase;
using testing_support::TemporaryFolder;

/// What a Store needs; all else is not to be asked for.
class FewCollaborators : public CollaboratorFactory {
public:
    std::shared_ptr<InputGuard> MakeInputGuard() override { return guard; }
    std::shared_ptr<SqlFormatter> MakeSqlFormatter() override { return formatter; }
    std::shared_ptr<DataAccess> MakeDataAccess() override { return data; }
    std::shared_ptr<ScriptLibrary> MakeScriptLibrary() override { return scripts; }

    std::shared_ptr<TraceLog> MakeTraceLog() override { NotAskedFor(); }
    std::shared_ptr<GuidService> MakeGuidService() override { NotAskedFor(); }
    std::shared_ptr<TimeService> MakeTimeService() override { NotAskedFor(); }
    std::shared_ptr<ArrayInspector> MakeArrayInspector() override { NotAskedFor(); }
    std::shared_ptr<RandomSource> MakeRandomSource() override { NotAskedFor(); }
    std::shared_ptr<Platform> MakePlatform() override { NotAskedFor(); }
    std::shared_ptr<ObjectFactory> MakeObjectFactory() override { NotAskedFor(); }
    std::shared_ptr<ConnectionSettings> MakeConnectionSettings() override { NotAskedFor(); }
    std::shared_ptr<SystemFlagReader> MakeSystemFlagReader() override { NotAskedFor(); }
    std::shared_ptr<BatchSqlExecutor> MakeBatchSqlExecutor() override { return batch; }
    std::shared_ptr<EnvironmentInfo> MakeEnvironmentInfo() override { NotAskedFor(); }
    std::shared_ptr<KeyedCollection> MakeKeyedCollection() override { NotAskedFor(); }

    std::shared_ptr<InputGuard> guard;
    std::shared_ptr<SqlFormatter> formatter;
    std::shared_ptr<DataAccess> data;
    std::shared_ptr<ScriptLibrary> scripts;
    std::shared_ptr<BatchSqlExecutor> batch;

private:
    [[noreturn]] static void NotAskedFor() { throw std::logic_error("not needed by a store"); }
};

class StoreTest : public testing::Test {
protected:
    StoreTest() { InstallCollaborators(factory_); }
    ~StoreTest() override { InstallCollaborators(nullptr); }

    std::shared_ptr<FewCollaborators> factory_ = std::make_shared<FewCollaborators>();
};

class StoreOnMocks : public StoreTest {
protected:
    StoreOnMocks() {
        factory_->guard = guard_;
        factory_->formatter = std::make_shared<FakeSqlFormatter>();
        factory_->data = data_;
        factory_->scripts = scripts_;
        factory_->batch = batch_;
    }

    std::shared_ptr<StrictMock<MockInputGuard>> guard_ = std::make_shared<StrictMock<MockInputGuard>>();
    std::shared_ptr<StrictMock<MockDataAccess>> data_ = std::make_shared<StrictMock<MockDataAccess>>();
    std::shared_ptr<StrictMock<MockScriptLibrary>> scripts_ =
        std::make_shared<StrictMock<MockScriptLibrary>>();
    std::shared_ptr<StrictMock<MockBatchSqlExecutor>> batch_ =
        std::make_shared<StrictMock<MockBatchSqlExecutor>>();
    Store store_{"db", 5, "kx_"};
};

TEST_F(StoreOnMocks, CreatesTheTablesOfEachScriptInOneBatch) {
    InSequence inThisOrder;
    EXPECT_CALL(*guard_, CheckParameter("kx_", "NameQualifier")).Times(2);  // its own check, and the method's
    EXPECT_CALL(*scripts_, GetScript(_, 5, "kx_", "JobTablesDDL", true))
        .WillOnce(Return("CREATE TABLE a (b);\nCREATE INDEX c ON a (b);\n"));
    EXPECT_CALL(*batch_, Open("db", 5, 2));
    EXPECT_CALL(*batch_, Add("CREATE TABLE a (b)"));
    EXPECT_CALL(*batch_, Add("CREATE INDEX c ON a (b)"));
    EXPECT_CALL(*batch_, Flush());
    EXPECT_CALL(*scripts_, GetScript(_, 5, "kx_", "StandInTablesDDL", true))
        .WillOnce(Return("CREATE TABLE d (e);\n"));
    EXPECT_CALL(*batch_, Open("db", 5, 1));
    EXPECT_CALL(*batch_, Add("CREATE TABLE d (e)"));
    EXPECT_CALL(*batch_, Flush());

    store_.CreateTables();
}

TEST_F(StoreOnMocks, GivesBothScriptsAndRunsNeither) {
    EXPECT_CALL(*guard_, CheckParameter("kx_", "NameQualifier")).Times(2);
    EXPECT_CALL(*scripts_, GetScript(_, 5, "kx_", "JobTablesDDL", true))
        .WillOnce(Return("CREATE TABLE a (b);\n"));
    EXPECT_CALL(*scripts_, GetScript(_, 5, "kx_", "StandInTablesDDL", true))
        .WillOnce(Return("CREATE TABLE d (e);\n"));

    EXPECT_EQ(store_.CreationScript(), "CREATE TABLE a (b);\nCREATE TABLE d (e);\n");
}

TEST_F(StoreOnMocks, CreatesNothingUnderARefusedQualifier) {
    const AutomationError refusal(static_cast<std::int32_t>(0x80040000U + 701), "kxJob.InputGuard", "no");
    EXPECT_CALL(*guard_, CheckParameter("kx_", "NameQualifier")).WillOnce(testing::Throw(refusal));

    EXPECT_EQ(ErrorOf([&] { store_.CreateTables(); }).Number(), static_cast<std::int32_t>(0x80040000U + 701));
}

TEST_F(StoreOnMocks, RunsStatementsOfOnesOwn) {
    InSequence inThisOrder;
    EXPECT_CALL(*data_, Execute("db", 5, 1, "DELETE FROM kx_job"));
    EXPECT_CALL(*data_, Query("db", 5, 1, "SELECT 7", true)).WillOnce(Return(Rows({{7}})));

    store_.Execute("DELETE FROM " + store_.Table("job"));
    EXPECT_EQ(store_.Query("SELECT 7"), Rows({{7}}));
}

TEST_F(StoreOnMocks, RaisesWhenNothingTellsAboutTheStore) {
    EXPECT_EQ(ErrorOf([&] { store_.EngineName(); }).Number(), error_number::kObjectNotSet);
    EXPECT_EQ(ErrorOf([&] { store_.NowISODateTime(); }).Number(), error_number::kObjectNotSet);
}

TEST_F(StoreOnMocks, GivesTheFormattersLiterals) {
    EXPECT_EQ(store_.Literal("it's"), "V(it's)");
}

class StoreOnAFile : public StoreTest {
protected:
    StoreOnAFile() {
        factory_->guard = std::make_shared<StandardInputGuard>();
        factory_->formatter = std::make_shared<StandardSqlFormatter>();
        const auto sessions = std::make_shared<SessionCache>();
        factory_->data = std::make_shared<StoreDataAccess>(sessions);
        factory_->batch = std::make_shared<StoreBatchExecutor>(sessions);
        factory_->scripts = std::make_shared<StoreScriptLibrary>();
    }

    TemporaryFolder folder_;
    std::string connectionString_ = "Driver=SQLite;Database=" + folder_.Path("store.db").string();
};

TEST_F(StoreOnAFile, IsSetUpFromNothingAndTwice) {
    Store store(connectionString_, dspSqlite, "kx_");
    for (int times = 0; times < 2; ++times) {
        store.CreateDatabase();
        store.CreateTables();
    }

    store.Execute("INSERT INTO " + store.Table("JobType") + " (jobtypeid) VALUES (" + store.Literal("it's") +
                  ")");

    EXPECT_EQ(store.Query("SELECT jobtypeid, implprogid FROM " + store.Table("JobType")),
              Rows({{"it's", Null{}}}));
    EXPECT_TRUE(store.Query("SELECT * FROM " + store.Table("systemflag")).IsEmpty());
}

TEST_F(StoreOnAFile, NeedsTheDatabaseBeforeItsTables) {
    EXPECT_EQ(ErrorOf([&] { Store(connectionString_, dspSqlite, "").CreateTables(); }).Number(),
              static_cast<std::int32_t>(0x80040000U + 704));
    EXPECT_FALSE(std::filesystem::exists(folder_.Path("store.db")));
}

TEST_F(StoreOnAFile, RefusesAnUnsafeQualifier) {
    Store store(connectionString_, dspSqlite, "kx_job (a); --");
    store.CreateDatabase();

    EXPECT_EQ(ErrorOf([&] { store.CreateTables(); }).Number(), static_cast<std::int32_t>(0x80040000U + 701));
    EXPECT_EQ(store.Query("SELECT COUNT(*) FROM sqlite_schema"), Rows({{0}}));
}

TEST_F(StoreOnAFile, RaisesTheErrorOfAFaultyStatement) {
    Store store(connectionString_, dspSqlite, "");
    store.CreateDatabase();

    const AutomationError error = ErrorOf([&] { store.Execute("DELETE FROM job"); });

    EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x80040000U + 703));
    EXPECT_THAT(error.Description(), StartsWith("[42S02] "));
}

}  // namespace
}  // namespace kxjob
