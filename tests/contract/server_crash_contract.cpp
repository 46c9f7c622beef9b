#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "contract/store_contract.h"
#include "defaults/store/store_test_support.h"
#include "kxjob/automation_error.h"
#include "kxjob/call_journal.h"
#include "kxjob/caller_texts.h"
#include "support/sample_errors.h"

namespace kxjob::testing_support {
namespace {

/// Kills the server, and starts it again, just before the first statement that begins with these words.
class CrashBefore : public JournalSink {
public:
    CrashBefore(std::string serverName, std::string statement)
        : serverName_(std::move(serverName)), statement_(std::move(statement)) {}

    void Write(const JournalEvent& /*event*/) override {}
    void BeforeCall(const JournalEvent& call) override {
        if (crashed_ || call.object != "DataAccess" || !call.arguments.at(3).Text().starts_with(statement_))
            return;
        crashed_ = true;
        const char* stores = std::getenv("KXJOB_STORES");
        ASSERT_NE(stores, nullptr) << "script/stores says where it is";
        ASSERT_EQ(std::system((std::string(stores) + " crash " + serverName_).c_str()), 0);
    }
    bool Crashed() const { return crashed_; }

private:
    std::string serverName_;
    std::string statement_;
    bool crashed_ = false;
};

/// What is left in the store by a method whose server dies on the way.
class ServerCrashContract : public StoreContract {
protected:
    /// The number of the error that `call` ends with when the server dies before that statement.
    std::int32_t ErrorOfCrash(const std::string& statement, const std::function<void()>& call) {
        CrashBefore crash(GetParam().serverName, statement);
        std::int32_t number = 0;
        {
            const CallJournal journal(crash);
            jobs_.GetJobType(connectionString_, provider_, "kx_");  // so that there is a connection to lose
            number = ErrorOf(call).Number();
        }
        EXPECT_TRUE(crash.Crashed());
        return number;
    }
};

TEST_P(ServerCrashContract, LeavesTasksAndJobOfARemovalThatHadRemovedTheItems) {
    const std::string job = MakeJob(3);
    jobs_.RegisterJobTask(connectionString_, "kx_", "a task", job, "a user", "a machine", 71, 72);
    const auto remove = [&] { jobs_.RemoveJobAndItems(connectionString_, provider_, "kx_", job); };

    EXPECT_EQ(ErrorOfCrash("DELETE FROM kx_jobtask", remove), error_number::kStatementFailed);

    EXPECT_EQ(Cell("SELECT COUNT(*) FROM kx_JobItem"), Value(0));
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM kx_jobtask"), Value(1));
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM kx_job"), Value(1));
    remove();
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM kx_jobtask"), Value(0));
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM kx_job"), Value(0));
}

/// A job whose lock is about to be handed over to a task.
class HandOverCrashContract : public ServerCrashContract {
protected:
    void SetUp() override {
        ServerCrashContract::SetUp();
        if (IsSkipped()) return;
        job_ = MakeJob(0);
        task_ =
            jobs_.RegisterJobTask(connectionString_, "kx_", "a task", job_, "a user", "a machine", 71, 72);
        tables_->Execute("UPDATE kx_job SET jobeditorlockguid = '" + oldLock_ + "'");
    }
    std::string HandOver() {
        return jobs_.GetNewLockExcludingInterlopers(connectionString_, "kx_", job_, task_, oldLock_, 60);
    }
    Value JobsLock() { return Cell("SELECT jobeditorlockguid FROM kx_job"); }
    Value TasksLock() { return Cell("SELECT lockguid FROM kx_jobtask"); }

    std::string job_;
    std::string task_;
    std::string oldLock_ = NewGuid();
};

TEST_P(HandOverCrashContract, LeavesTheOldLockWhenTheExchangeNeverArrived) {
    EXPECT_EQ(ErrorOfCrash("UPDATE kx_job ", [&] { HandOver(); }), error_number::kStatementFailed);

    EXPECT_EQ(JobsLock(), Value(oldLock_));
    EXPECT_EQ(TasksLock(), Value(Null{}));
    const std::string newLock = HandOver();
    EXPECT_EQ(JobsLock(), Value(newLock));
    EXPECT_EQ(TasksLock(), Value(newLock));
}

TEST_P(HandOverCrashContract, LeavesTheNewLockAndAnUntouchedTaskWhenTheReReadFails) {
    EXPECT_EQ(ErrorOfCrash("SELECT jobeditorlockguid", [&] { HandOver(); }), error_number::kStatementFailed);

    EXPECT_NE(JobsLock(), Value(oldLock_));
    EXPECT_EQ(TasksLock(), Value(Null{}));
    EXPECT_EQ(ErrorOf([&] { HandOver(); }).Number(), kLockTaken) << "treat the lock as lost";
}

INSTANTIATE_TEST_SUITE_P(Engines, ServerCrashContract, testing::Values(PostgreSqlServer(), MariaDbServer()),
                         EngineName);
INSTANTIATE_TEST_SUITE_P(Engines, HandOverCrashContract, testing::Values(PostgreSqlServer(), MariaDbServer()),
                         EngineName);

}  // namespace
}  // namespace kxjob::testing_support
