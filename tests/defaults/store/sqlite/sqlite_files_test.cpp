// How a session meets files: opening, other connections, and files that go.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <system_error>
#include <thread>
#include <vector>

#include "defaults/store/sqlite/sqlite_opening.h"
#include "defaults/store/sqlite/sqlite_session_fixture.h"
#include "kxjob/array.h"

namespace kxjob {
namespace {

using std::chrono::milliseconds;
using testing::HasSubstr;
using testing::StartsWith;
using testing_support::ErrorOf;
using testing_support::kStatementFailed;
using testing_support::Overwrite;
using testing_support::Rows;

/// Gives up the right to write to every file, which root has, for as long as it lives.
class AsAnyUser {
public:
    AsAnyUser() {
        if (own_ == 0 && seteuid(kNobody) != 0) throw std::system_error(errno, std::generic_category());
    }
    AsAnyUser(const AsAnyUser&) = delete;
    AsAnyUser& operator=(const AsAnyUser&) = delete;
    ~AsAnyUser() { EXPECT_EQ(seteuid(own_), 0); }

private:
    static constexpr uid_t kNobody = 65534;

    uid_t own_ = geteuid();
};

TEST_F(SqliteSessionTest, OpensWithWriteAheadLoggingAndNormalSynchronisation) {
    EXPECT_EQ(Scalar("PRAGMA journal_mode"), Value("wal"));
    EXPECT_EQ(Scalar("PRAGMA synchronous"), Value(1));
    EXPECT_EQ(Scalar("PRAGMA wal_autocheckpoint"), Value(16384));
    EXPECT_EQ(Scalar("PRAGMA busy_timeout"), Value(30000));
}

TEST_F(SqliteSessionTest, RefusesAMissingFileAndDoesNotMakeIt) {
    const std::string missing = database_.Folder().Path("missing.db").string();

    EXPECT_THAT(WhyNotOpened(missing), StartsWith("[08001] The connection could not be opened: " + missing +
                                                  ": unable to open database file"));
    EXPECT_FALSE(std::filesystem::exists(missing));
}

TEST_F(SqliteSessionTest, RefusesADirectory) {
    const std::string folder = database_.Folder().Path("folder").string();
    std::filesystem::create_directory(folder);

    EXPECT_THAT(WhyNotOpened(folder),
                StartsWith("[08001] The connection could not be opened: " + folder + ": "));
}

TEST_F(SqliteSessionTest, RefusesAFileOfOtherContent) {
    const std::string file = database_.Folder().Path("other.db").string();
    std::ofstream(file, std::ios::binary) << std::string(5000, '\x5A');

    EXPECT_THAT(WhyNotOpened(file), StartsWith("[08001] The connection could not be opened: " + file +
                                               ": file is not a database"));
}

TEST_F(SqliteSessionTest, RefusesADatabaseWhoseSchemaIsDamaged) {
    const std::string file = database_.Folder().Path("damaged.db").string();
    CreateSqliteFile(file);
    SqliteSession(file).Execute("CREATE TABLE t (k text)");
    Overwrite(file, 100, std::string(3900, '\x7F'));

    EXPECT_THAT(WhyNotOpened(file), StartsWith("[08001] The connection could not be opened: " + file + ": "));
}

TEST_F(SqliteSessionTest, TakesEveryNameAsTheNameOfAFile) {
    EXPECT_THAT(WhyNotOpened(":memory:"), HasSubstr(":memory:: unable to open database file"));
    EXPECT_THAT(WhyNotOpened("file:kxjob_none?mode=memory"), HasSubstr("unable to open database file"));
    EXPECT_THAT(WhyNotOpened(""), HasSubstr("names no database file"));
}

TEST_F(SqliteSessionTest, GivesUpWhenTheFileStaysLocked) {
    SqliteDatabase owner;
    sqlite3* raw = nullptr;
    const std::string file = database_.Folder().Path("locked.db").string();
    ASSERT_EQ(sqlite3_open(file.c_str(), &raw), SQLITE_OK);
    owner.reset(raw);
    ASSERT_EQ(sqlite3_exec(raw, "CREATE TABLE t (k text); BEGIN EXCLUSIVE", nullptr, nullptr, nullptr),
              SQLITE_OK);

    EXPECT_THAT(WhyNotOpened(file, milliseconds(20)), HasSubstr(file + ": database is locked"));
}

TEST_F(SqliteSessionTest, OpensAFreshFileOnManyThreadsAtOnce) {
    for (int round = 0; round < 5; ++round) {
        const std::string file = database_.Folder().Path("fresh" + std::to_string(round)).string();
        CreateSqliteFile(file);
        std::vector<std::thread> threads;
        std::vector<std::string> modes(8);
        for (std::string& mode : modes) {
            threads.emplace_back([&file, &mode] {
                try {
                    mode = SqliteSession(file).Query("PRAGMA journal_mode").Rows().Cell(0, 0).Text();
                } catch (const AutomationError& error) {
                    mode = error.Description();
                }
            });
        }
        for (std::thread& thread : threads) thread.join();
        EXPECT_THAT(modes, testing::Each("wal"));
    }
}

TEST_F(SqliteSessionTest, ReadsADatabaseThatItMayNotWriteTo) {
    session_.Execute("CREATE TABLE t (k text)");
    const std::filesystem::path copy = database_.Folder().Path("readonly.db");
    const std::string intoCopy = "VACUUM INTO '" + copy.string() + "'";
    session_.Execute(intoCopy);
    std::filesystem::permissions(copy, static_cast<std::filesystem::perms>(0444));
    database_.Folder().OpenToAll();
    const AsAnyUser notRoot;

    SqliteSession readOnly(copy.string());

    EXPECT_EQ(readOnly.Query("SELECT COUNT(*) FROM t"), Rows({{0}}));
    EXPECT_THAT(WhyRefused(readOnly, "INSERT INTO t VALUES ('a')"), StartsWith("[25006] "));
}
TEST_F(SqliteSessionTest, RaisesWhenAnotherWriterHoldsTheStoreForTooLong) {
    session_.Execute("CREATE TABLE t (k text)");
    session_.Execute("BEGIN IMMEDIATE");
    SqliteSession other(database_.File(), milliseconds(20));

    EXPECT_EQ(WhyRefused(other, "INSERT INTO t VALUES ('a')"), "[HYT00] database is locked");
    EXPECT_FALSE(other.IsLost());
    EXPECT_EQ(other.Query("SELECT COUNT(*) FROM t"), Rows({{0}})) << "reading goes on beside a writer";

    session_.Execute("COMMIT");
    other.Execute("INSERT INTO t VALUES ('a')");
    EXPECT_EQ(Scalar("SELECT COUNT(*) FROM t"), Value(1));
}

TEST_F(SqliteSessionTest, WaitsForTheOtherWriter) {
    session_.Execute("CREATE TABLE t (k integer)");
    std::vector<std::thread> writers;
    for (int writer = 0; writer < 2; ++writer) {
        writers.emplace_back([this] {
            SqliteSession own(database_.File());
            for (int i = 0; i < 100; ++i) own.Execute("INSERT INTO t VALUES (1)");
        });
    }
    for (std::thread& writer : writers) writer.join();

    EXPECT_EQ(Scalar("SELECT COUNT(*) FROM t"), Value(200));
}

TEST_F(SqliteSessionTest, IsLostWhenTheFileIsDeletedUnderIt) {
    session_.Execute("CREATE TABLE t (k text)");
    std::filesystem::remove(database_.File());

    EXPECT_EQ(WhyRefused("INSERT INTO t VALUES ('a')"), "[08S01] The database file was moved or deleted");
    EXPECT_TRUE(session_.IsLost());
    EXPECT_THAT(WhyNotOpened(database_.File()), HasSubstr("unable to open database file"));
}

TEST_F(SqliteSessionTest, IsLostWhenAnotherFileTakesThePlaceOfItsOwn) {
    session_.Execute("CREATE TABLE t (k text)");
    const std::filesystem::path moved = database_.Folder().Path("moved.db");
    std::filesystem::rename(database_.File(), moved);
    CreateSqliteFile(database_.File());

    const auto write = [&] { session_.WriteLongText("t", "k", "a", "k", "b"); };
    const std::vector<std::string> batch = {"INSERT INTO t VALUES ('a')"};

    EXPECT_EQ(ErrorOf([&] { session_.Query("SELECT * FROM t"); }).Number(), kStatementFailed);
    EXPECT_EQ(ErrorOf(write).Description(), "[08S01] The database file was moved or deleted");
    EXPECT_EQ(ErrorOf([&] { session_.RunBatch(batch); }).Description(),
              "[08S01] The database file was moved or deleted");
    EXPECT_TRUE(session_.IsLost());
}

TEST_F(SqliteSessionTest, IsLostWhenAStatementMeetsDamage) {
    const std::string file = database_.Folder().Path("damaged.db").string();
    CreateSqliteFile(file);
    {
        SqliteSession writer(file);
        writer.Execute("CREATE TABLE t (k integer PRIMARY KEY, v text)");
        writer.Execute(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 200)"
            " INSERT INTO t SELECT i, hex(zeroblob(500)) FROM n");
    }
    Overwrite(file, 4096, std::string(8192, '\x7F'));  // the first page with the schema stays whole
    SqliteSession session(file);

    EXPECT_EQ(WhyRefused(session, "SELECT SUM(length(v)) FROM t"),
              "[XX001] database disk image is malformed");
    EXPECT_TRUE(session.IsLost());
}
}  // namespace
}  // namespace kxjob
