#include "siblings/content_exec.h"

#include <gtest/gtest.h>

#include "kxjob/automation_error.h"
#include "siblings/container.h"

namespace kxjob {
namespace {

using testing_support::Call;
using testing_support::Container;
using testing_support::ErrorOf;
using testing_support::Rows;

class ContentExecTest : public testing::Test {
protected:
    ContentExecTest() {
        container_.Execute("CREATE TABLE kx_job (jobguid text, failurenote text)");
        container_.Execute("INSERT INTO kx_job VALUES ('{A}', 'old'), ('it''s', 'old')");
    }

    void Update(const std::string& key, const std::string& text) {
        Call(content_, "ContentBlobUpdate",
             {container_.ConnectionString(), 5, "kx_", "job", "jobguid", key, "failurenote", text});
    }
    Value Notes() {
        return container_.Query("SELECT jobguid, failurenote FROM kx_job ORDER BY jobguid DESC");
    }

    Container container_;
    ContentExec content_{container_.Sessions()};
};

TEST_F(ContentExecTest, ReplacesTheTextOfTheOneRow) {
    Update("{A}", "it's\r\nnew; -- \xC3\xA4");
    EXPECT_EQ(Notes(), Rows({{"{A}", "it's\r\nnew; -- \xC3\xA4"}, {"it's", "old"}}));
    Update("it's", "");
    EXPECT_EQ(Notes(), Rows({{"{A}", "it's\r\nnew; -- \xC3\xA4"}, {"it's", ""}}));
}

TEST_F(ContentExecTest, CarriesALongText) {
    const std::string text(2'000'000, 'x');
    Update("{A}", text);
    EXPECT_TRUE(Notes() == Rows({{"{A}", text}, {"it's", "old"}}));
}

TEST_F(ContentExecTest, RefusesATextThatCannotBeStored) {
    EXPECT_EQ(ErrorOf([&] { Update("{A}", std::string("a\0b", 3)); }).Number(),
              error_number::kUnstorableText);
    EXPECT_EQ(ErrorOf([&] { Update("{A}\xFF", "text"); }).Number(), error_number::kUnstorableText);
    EXPECT_EQ(Notes(), Rows({{"{A}", "old"}, {"it's", "old"}}));
}

TEST_F(ContentExecTest, RefusesUnsafeNames) {
    const auto updateWith = [&](const char* qualifier, const char* table, const char* keyColumn,
                                const char* column) {
        Call(content_, "ContentBlobUpdate",
             {container_.ConnectionString(), 5, qualifier, table, keyColumn, "{A}", column, "text"});
    };
    EXPECT_EQ(ErrorOf([&] { updateWith("kx_ ", "job", "jobguid", "failurenote"); }).Number(),
              error_number::kGuardRefusal);
    EXPECT_EQ(ErrorOf([&] { updateWith("kx_", "job;", "jobguid", "failurenote"); }).Number(),
              error_number::kGuardRefusal);
    EXPECT_EQ(ErrorOf([&] { updateWith("kx_", "job", "jobguid'", "failurenote"); }).Number(),
              error_number::kGuardRefusal);
    EXPECT_EQ(ErrorOf([&] { updateWith("kx_", "job", "jobguid", "failurenote--"); }).Number(),
              error_number::kGuardRefusal);
}

TEST_F(ContentExecTest, HasOneMemberOfEightArguments) {
    EXPECT_EQ(ErrorOf([&] { Call(content_, "ContentBlobUpdate", {"a"}); }).Number(),
              error_number::kWrongArgumentCount);
    EXPECT_EQ(ErrorOf([&] { Call(content_, "Other", {}); }).Number(), error_number::kUnknownMember);
}

}  // namespace
}  // namespace kxjob
