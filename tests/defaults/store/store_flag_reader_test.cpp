#include "defaults/store/store_flag_reader.h"

#include <gtest/gtest.h>

#include "defaults/store/store_test_support.h"

namespace kxjob {
namespace {

using testing_support::ErrorOf;
using testing_support::TemporaryDatabase;

class StoreFlagReaderTest : public testing::Test {
protected:
    void Execute(const std::string& sql) {
        sessions_->Use(database_.ConnectionString(), [&](Session& session) { session.Execute(sql); });
    }
    Value Read(const std::string& nameQualifier, const std::string& flagName) {
        return StoreFlagReader(sessions_).ReadFlag(database_.ConnectionString(), 5, nameQualifier, flagName);
    }

    TemporaryDatabase database_;
    std::shared_ptr<SessionCache> sessions_ = std::make_shared<SessionCache>();
};

TEST_F(StoreFlagReaderTest, GivesTheTextOfAFlag) {
    Execute("CREATE TABLE kx_systemflag (flagname text, flagvalue text)");
    Execute("INSERT INTO kx_systemflag VALUES ('KVR_TRANSACTION', 'run 17')");
    Execute("INSERT INTO kx_systemflag VALUES ('it''s', '')");

    EXPECT_EQ(Read("kx_", "KVR_TRANSACTION"), Value("run 17"));
    EXPECT_EQ(Read("kx_", "it's"), Value(""));
}

TEST_F(StoreFlagReaderTest, GivesNullForAFlagWithoutRowOrValue) {
    Execute("CREATE TABLE systemflag (flagname text, flagvalue text)");
    Execute("INSERT INTO systemflag VALUES ('cleared', NULL)");

    EXPECT_TRUE(Read("", "KVR_TRANSACTION").IsNull());
    EXPECT_TRUE(Read("", "cleared").IsNull());
}

TEST_F(StoreFlagReaderTest, GivesNullWhereNoFlagsAreKept) {
    EXPECT_TRUE(Read("main.", "KVR_TRANSACTION").IsNull());
}

TEST_F(StoreFlagReaderTest, RaisesEveryOtherFault) {
    Execute("CREATE TABLE systemflag (name text)");

    EXPECT_EQ(ErrorOf([&] { Read("", "KVR_TRANSACTION"); }).Description(),
              "[42S22] no such column: flagvalue");
    EXPECT_EQ(ErrorOf([&] {
                  StoreFlagReader(sessions_).ReadFlag("Driver=SQLite;Database=/no/such/file", 5, "", "a");
              }).Number(),
              static_cast<std::int32_t>(0x80040000U + 704));
}

}  // namespace
}  // namespace kxjob
