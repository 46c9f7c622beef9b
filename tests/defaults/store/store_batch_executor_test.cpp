#include "defaults/store/store_batch_executor.h"

#include <gtest/gtest.h>

#include "defaults/store/store_test_support.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using testing_support::ErrorOf;
using testing_support::kInvalidCall;
using testing_support::kStatementFailed;
using testing_support::Rows;
using testing_support::TemporaryDatabase;

class StoreBatchExecutorTest : public testing::Test {
protected:
    StoreBatchExecutorTest() { Execute("CREATE TABLE t (k integer NOT NULL PRIMARY KEY)"); }

    void Execute(const std::string& sql) {
        sessions_->Use(database_.ConnectionString(), [&](Session& session) { session.Execute(sql); });
    }
    Value Count() {
        return sessions_->Use(database_.ConnectionString(),
                              [](Session& session) { return session.Query("SELECT COUNT(*) FROM t"); });
    }
    void AddNumbers(int first, int last) {
        for (int k = first; k <= last; ++k) batch_.Add("INSERT INTO t VALUES (" + std::to_string(k) + ")");
    }

    TemporaryDatabase database_;
    std::shared_ptr<SessionCache> sessions_ = std::make_shared<SessionCache>();
    StoreBatchExecutor batch_{sessions_};
};

TEST_F(StoreBatchExecutorTest, SendsAGroupWhenItIsFullAndTheRestAtTheEnd) {
    batch_.Open(database_.ConnectionString(), 5, 100);

    AddNumbers(1, 99);
    EXPECT_EQ(Count(), Rows({{0}}));
    AddNumbers(100, 100);
    EXPECT_EQ(Count(), Rows({{100}}));
    AddNumbers(101, 250);
    EXPECT_EQ(Count(), Rows({{200}}));
    batch_.Flush();
    EXPECT_EQ(Count(), Rows({{250}}));
}

TEST_F(StoreBatchExecutorTest, DoesNothingWhenNothingIsPending) {
    batch_.Open("Driver=SQLite;Database=/no/such/folder/store.db", 5, 2);

    EXPECT_NO_THROW(batch_.Flush());
}

TEST_F(StoreBatchExecutorTest, NamesThePlaceOfTheFailingStatement) {
    batch_.Open(database_.ConnectionString(), 5, 50);
    AddNumbers(1, 206);
    batch_.Add("INSERT INTO t VALUES (1)");
    AddNumbers(208, 249);

    const AutomationError error = ErrorOf([&] { AddNumbers(250, 250); });

    EXPECT_EQ(error.Number(), kStatementFailed);
    EXPECT_EQ(error.Source(), "kxJob.DataAccess");
    EXPECT_EQ(error.Description(),
              "[23000] group 201 to 250: statement 7 of 50: UNIQUE constraint failed: t.k");
    EXPECT_EQ(Count(), Rows({{200}})) << "the groups before it stay";
}

TEST_F(StoreBatchExecutorTest, SendsNoStatementOfAFailedGroupAgain) {
    batch_.Open(database_.ConnectionString(), 5, 10);
    AddNumbers(1, 2);
    batch_.Add("INSERT INTO nowhere VALUES (1)");

    EXPECT_EQ(ErrorOf([&] { batch_.Flush(); }).Description(),
              "[42S02] group 1 to 3: statement 3 of 3: no such table: nowhere");
    EXPECT_NO_THROW(batch_.Flush());
    EXPECT_EQ(Count(), Rows({{0}}));
    AddNumbers(4, 4);
    batch_.Flush();
    EXPECT_EQ(Count(), Rows({{1}}));
}

TEST_F(StoreBatchExecutorTest, RefusesABatchSizeBelowOne) {
    EXPECT_EQ(ErrorOf([&] { batch_.Open(database_.ConnectionString(), 5, 0); }).Number(), kInvalidCall);
    EXPECT_EQ(ErrorOf([&] { batch_.Open(database_.ConnectionString(), 5, -1); }).Number(), kInvalidCall);
}

TEST_F(StoreBatchExecutorTest, RefusesStatementsBeforeItIsOpen) {
    EXPECT_EQ(ErrorOf([&] { batch_.Add("INSERT INTO t VALUES (1)"); }).Number(), kInvalidCall);
    EXPECT_EQ(ErrorOf([&] { batch_.Flush(); }).Number(), kInvalidCall);
    EXPECT_EQ(Count(), Rows({{0}}));
}

TEST_F(StoreBatchExecutorTest, CountsAnewWhenItIsOpenedAgain) {
    batch_.Open(database_.ConnectionString(), 5, 10);
    AddNumbers(1, 12);
    batch_.Open(database_.ConnectionString(), 5, 10);
    batch_.Add("INSERT INTO t VALUES (1)");

    EXPECT_EQ(ErrorOf([&] { batch_.Flush(); }).Description(),
              "[23000] group 1 to 1: statement 1 of 1: UNIQUE constraint failed: t.k");
    EXPECT_EQ(Count(), Rows({{10}}));
}

TEST_F(StoreBatchExecutorTest, SaysWhenTheStoreCannotBeOpened) {
    batch_.Open("Driver=SQLite;Database=/no/such/folder/store.db", 5, 1);

    const AutomationError error = ErrorOf([&] { batch_.Add("SELECT 1"); });

    EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x80040000U + 704));
    EXPECT_EQ(error.Description().find("group"), std::string::npos) << "no statement was to blame";
}

}  // namespace
}  // namespace kxjob
