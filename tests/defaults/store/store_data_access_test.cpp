#include "defaults/store/store_data_access.h"

#include <gtest/gtest.h>

#include "defaults/store/store_test_support.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using testing_support::ErrorOf;
using testing_support::kUnstorableText;
using testing_support::Rows;
using testing_support::TemporaryDatabase;

TEST(StoreDataAccess, SendsEveryProviderCodeToTheEngineOfTheConnection) {
    const TemporaryDatabase database;
    StoreDataAccess data(std::make_shared<SessionCache>());

    data.Execute(database.ConnectionString(), 2, 1, "CREATE TABLE t (k integer)");
    data.Execute(database.ConnectionString(), 5, 1, "INSERT INTO t VALUES (7)");

    EXPECT_EQ(data.Query(database.ConnectionString(), 99, 1, "SELECT k FROM t", false), Rows({{7}}));
}

TEST(StoreDataAccess, SharesItsSessionsWithOthersOnTheSameCache) {
    const TemporaryDatabase database;
    const auto sessions = std::make_shared<SessionCache>();
    StoreDataAccess data(sessions);

    data.Execute(database.ConnectionString(), 5, 1, "CREATE TEMP TABLE marker (k integer)");
    sessions->Use(database.ConnectionString(),
                  [](Session& session) { session.Execute("INSERT INTO marker VALUES (1)"); });

    EXPECT_EQ(data.Query(database.ConnectionString(), 5, 1, "SELECT k FROM marker", false), Rows({{1}}));
}

TEST(StoreDataAccess, RefusesAnUnstorableTextBeforeTheStoreIsTouched) {
    const std::string nowhere = "Driver=SQLite;Database=/no/such/folder/store.db";
    StoreDataAccess data(std::make_shared<SessionCache>());
    LongTextOutputs outputs;
    const auto write = [&](const std::string& key, const std::string& text) {
        return ErrorOf([&] { data.WriteLongText(nowhere, 5, 1, "", "t", "k", key, "v", text, outputs); })
            .Number();
    };

    EXPECT_EQ(write("a", std::string("a\0b", 3)), kUnstorableText);
    EXPECT_EQ(write("a", "\xED\xA0\x80"), kUnstorableText);
    EXPECT_EQ(write("\xFF", "b"), kUnstorableText);
    EXPECT_EQ(write("a", "b"), static_cast<std::int32_t>(0x80040000U + 704))
        << "the store itself cannot be opened";
}

}  // namespace
}  // namespace kxjob
