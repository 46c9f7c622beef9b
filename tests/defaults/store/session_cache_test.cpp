#include "defaults/store/session_cache.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <thread>

#include "defaults/store/store_test_support.h"

namespace kxjob {
namespace {

using testing_support::ErrorOf;
using testing_support::Rows;
using testing_support::TemporaryDatabase;

/// A temporary table lives as long as its session, and is seen by no other.
class SessionCacheTest : public testing::Test {
protected:
    void MarkSession(const TemporaryDatabase& database) {
        cache_.Use(database.ConnectionString(),
                   [](Session& session) { session.Execute("CREATE TEMP TABLE marker (k text)"); });
    }
    bool HasMarkedSession(const TemporaryDatabase& database) { return HasMarkedSession(cache_, database); }
    static bool HasMarkedSession(SessionCache& cache, const TemporaryDatabase& database) {
        const Value found = cache.Use(database.ConnectionString(), [](Session& session) {
            return session.Query("SELECT 1 FROM sqlite_temp_schema WHERE name = 'marker'");
        });
        return !found.IsEmpty();
    }

    TemporaryDatabase database_;
    SessionCache cache_;
};

TEST_F(SessionCacheTest, UsesOneSessionForAConnectionStringAgainAndAgain) {
    MarkSession(database_);

    EXPECT_TRUE(HasMarkedSession(database_));
    EXPECT_TRUE(HasMarkedSession(database_));
}

TEST_F(SessionCacheTest, KeepsTheSessionsOfOtherConnectionStringsApart) {
    const TemporaryDatabase other;
    MarkSession(database_);

    EXPECT_FALSE(HasMarkedSession(other));
    EXPECT_TRUE(HasMarkedSession(database_));
}

TEST_F(SessionCacheTest, SharesNoSessionWithAnotherCache) {
    SessionCache other;
    MarkSession(database_);

    EXPECT_FALSE(HasMarkedSession(other, database_));
}

TEST_F(SessionCacheTest, KeepsASessionAfterAFaultyStatement) {
    MarkSession(database_);

    ErrorOf([&] {
        cache_.Use(database_.ConnectionString(), [](Session& session) { session.Execute("faulty"); });
    });

    EXPECT_TRUE(HasMarkedSession(database_));
}

TEST_F(SessionCacheTest, DropsALostSessionAndOpensANewOneAtTheNextUse) {
    const std::filesystem::path file = database_.File();
    const std::filesystem::path moved = database_.Folder().Path("moved.db");
    MarkSession(database_);

    std::filesystem::rename(file, moved);
    const auto use = [&] { HasMarkedSession(database_); };
    EXPECT_EQ(ErrorOf(use).Number(), static_cast<std::int32_t>(0x80040000U + 703));
    EXPECT_EQ(ErrorOf(use).Number(), static_cast<std::int32_t>(0x80040000U + 704));
    std::filesystem::rename(moved, file);

    EXPECT_FALSE(HasMarkedSession(database_));
}

TEST_F(SessionCacheTest, KeepsASessionWhenTheWorkFailsByItself) {
    MarkSession(database_);

    EXPECT_THROW(cache_.Use(database_.ConnectionString(), [](Session&) { throw std::runtime_error("own"); }),
                 std::runtime_error);

    EXPECT_TRUE(HasMarkedSession(database_));
}

TEST_F(SessionCacheTest, GivesBackWhatTheWorkGives) {
    EXPECT_EQ(
        cache_.Use(database_.ConnectionString(), [](Session& session) { return session.Query("SELECT 7"); }),
        Rows({{7}}));
}

TEST_F(SessionCacheTest, OpensTwoNamesOfOneFileAsTwoSessions) {
    MarkSession(database_);

    const Value found = cache_.Use("DRIVER=SQLite;Database=" + database_.File(), [](Session& session) {
        return session.Query("SELECT 1 FROM sqlite_temp_schema WHERE name = 'marker'");
    });

    EXPECT_TRUE(found.IsEmpty());
}

TEST(IsMissingTable, IsTrueForTheErrorOfAMissingTableOnly) {
    const auto statementFailed = static_cast<std::int32_t>(0x80040000U + 703);

    EXPECT_TRUE(IsMissingTable({statementFailed, "kxJob.DataAccess", "[42S02] no such table: t"}));
    EXPECT_FALSE(IsMissingTable({statementFailed, "kxJob.DataAccess", "[42S22] no such column: c"}));
    EXPECT_FALSE(
        IsMissingTable({statementFailed, "kxJob.DataAccess", "[42000] near \"[42S02]\": syntax error"}));
    EXPECT_FALSE(IsMissingTable({static_cast<std::int32_t>(0x80040000U + 704), "", "[42S02] "}));
}

}  // namespace
}  // namespace kxjob
