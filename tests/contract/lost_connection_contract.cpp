#include <gmock/gmock.h>

#include <cstdlib>
#include <thread>

#include "contract/data_access_contract.h"
#include "defaults/store/open_session.h"
#include "defaults/store/store_test_support.h"
#include "kxjob/array.h"
#include "support/sample_errors.h"

namespace kxjob::testing_support {
namespace {

using testing::HasSubstr;

/// What a lost connection to a server means: an error for the call that meets it, and a new connection for
/// the next one.
class LostConnectionContract : public DataAccessContract {
protected:
    std::string OwnSession() { return Query(GetParam().sessionId).Rows().Cell(0, 0).ToText(); }
    void End(const std::string& session) {
        OpenSession(connectionString_)->Query(GetParam().endSession(session));
    }
    /// Runs a batch of 100 inserts with a statement in its middle that takes a minute.
    AutomationError ErrorOfLongBatch() {
        return ErrorOf([&] {
            batch_.Open(connectionString_, 2, 101);
            for (int i = 0; i < 100; ++i) {
                if (i == 50) batch_.Add(GetParam().beBusy);
                batch_.Add("INSERT INTO t (k) VALUES ('" + std::to_string(i) + "')");
            }
            batch_.Flush();
        });
    }
    /// Waits until the statement of that batch is running.
    void WaitUntilBusy() {
        const std::unique_ptr<Session> watcher = OpenSession(connectionString_);
        while (watcher->Query(GetParam().countBusy).Rows().Cell(0, 0) != Value(1)) std::this_thread::yield();
    }
    void ExpectNothingOfTheBatch() {
        EXPECT_EQ(Query("SELECT COUNT(*) FROM t"), Rows({{0}}));
        batch_.Open(connectionString_, 2, 2);
        batch_.Add("INSERT INTO t (k) VALUES ('after')");
        batch_.Flush();
        EXPECT_EQ(Query("SELECT k FROM t"), Rows({{"after"}}));
    }
};

TEST_P(LostConnectionContract, FailsTheNextCallAndServesTheOneAfter) {
    const std::string session = OwnSession();
    End(session);

    const AutomationError error = ErrorOf([&] { Insert("a"); });

    EXPECT_EQ(error.Number(), kStatementFailed);
    EXPECT_NE(OwnSession(), session);
    EXPECT_EQ(Query("SELECT COUNT(*) FROM t"), Rows({{0}})) << "nothing is sent twice";
    Insert("a");
    EXPECT_EQ(Query("SELECT k FROM t"), Rows({{"a"}}));
}

TEST_P(LostConnectionContract, IsFoundByAQueryAndByALongTextToo) {
    Insert("a", "'old'");
    End(OwnSession());
    EXPECT_EQ(ErrorOf([&] { Query("SELECT k FROM t"); }).Number(), kStatementFailed);
    EXPECT_EQ(Query("SELECT v FROM t"), Rows({{"old"}}));

    End(OwnSession());
    EXPECT_EQ(ErrorOf([&] { WriteLongText("a", std::string(200000, 'x')); }).Number(), kStatementFailed);
    EXPECT_EQ(Query("SELECT v FROM t"), Rows({{"old"}}));
    WriteLongText("a", "new");
    EXPECT_EQ(Query("SELECT v FROM t"), Rows({{"new"}}));
}

TEST_P(LostConnectionContract, LeavesNothingOfABatchThatItEnds) {
    const std::string session = OwnSession();
    std::thread ending([&] {
        WaitUntilBusy();
        End(session);
    });

    const AutomationError error = ErrorOfLongBatch();
    ending.join();

    EXPECT_EQ(error.Number(), kStatementFailed);
    EXPECT_THAT(error.Description(), HasSubstr("group 1 to 101"));
    ExpectNothingOfTheBatch();
}

TEST_P(LostConnectionContract, LeavesNothingOfABatchWhenTheServerIsKilled) {
    const char* stores = std::getenv("KXJOB_STORES");
    ASSERT_NE(stores, nullptr) << "script/stores says where it is";
    const std::string crash = std::string(stores) + " crash " + GetParam().serverName;
    int crashed = -1;
    std::thread killing([&] {
        WaitUntilBusy();
        crashed = std::system(crash.c_str());
    });

    const AutomationError error = ErrorOfLongBatch();
    killing.join();

    ASSERT_EQ(crashed, 0);
    EXPECT_EQ(error.Number(), kStatementFailed);
    ExpectNothingOfTheBatch();
}

INSTANTIATE_TEST_SUITE_P(Engines, LostConnectionContract,
                         testing::Values(PostgreSqlServer(), MariaDbServer()), EngineName);

}  // namespace
}  // namespace kxjob::testing_support
