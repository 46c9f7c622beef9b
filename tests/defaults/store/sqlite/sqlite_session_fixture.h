#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "defaults/store/sqlite/sqlite_session.h"
#include "defaults/store/store_test_support.h"
#include "kxjob/array.h"
#include "support/sample_errors.h"

namespace kxjob {

/// A session on a file of its own.
class SqliteSessionTest : public testing::Test {
protected:
    std::string WhyRefused(const std::string& sql) { return WhyRefused(session_, sql); }
    static std::string WhyRefused(SqliteSession& session, const std::string& sql) {
        const AutomationError error = testing_support::ErrorOf([&] { session.Execute(sql); });
        EXPECT_EQ(error.Number(), testing_support::kStatementFailed) << error.Description();
        EXPECT_EQ(error.Source(), "kxJob.DataAccess");
        return error.Description();
    }
    static std::string WhyNotOpened(const std::string& file,
                                    std::chrono::milliseconds patience = SqliteSession::kPatience) {
        const AutomationError error =
            testing_support::ErrorOf([&] { SqliteSession session(file, patience); });
        EXPECT_EQ(error.Number(), testing_support::kConnectionFailed) << error.Description();
        EXPECT_EQ(error.Source(), "kxJob.DataAccess");
        return error.Description();
    }
    Value Scalar(const std::string& sql) { return session_.Query(sql).Rows().Cell(0, 0); }

    testing_support::TemporaryDatabase database_;
    SqliteSession session_{database_.File()};
};

}  // namespace kxjob
