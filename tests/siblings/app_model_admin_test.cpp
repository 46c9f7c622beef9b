#include "siblings/app_model_admin.h"

#include <gmock/gmock.h>

#include "kxjob/array.h"
#include "kxjob/automation_error.h"
#include "siblings/container.h"

namespace kxjob {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::StartsWith;
using testing_support::Call;
using testing_support::Container;
using testing_support::ErrorOf;

class AppModelAdminTest : public testing::Test {
protected:
    void WriteHistory(const std::string& action, const std::string& detail) {
        Call(admin_, "AdminHistoryWrite", {container_.ConnectionString(), "kx_", action, detail});
    }
    Value State(const std::string& state) {
        return Call(admin_, "ApplicationStateReadGUID", {container_.ConnectionString(), "kx_", state});
    }

    Container container_;
    AppModelAdmin admin_{container_.Sessions()};
};

TEST_F(AppModelAdminTest, AddsAnEntryToTheHistory) {
    container_.Execute(
        "CREATE TABLE kx_adminhistory (historyid text PRIMARY KEY, writtendt text, actioncode text, detail "
        "text,"
        " usercontext text)");
    WriteHistory("JOB_CREATE", "<job><jobguid>it's</jobguid></job>");
    WriteHistory("JOB_REMOVED", "");
    const Value rows = container_.Query(
        "SELECT actioncode, detail, historyid, writtendt, usercontext FROM kx_adminhistory ORDER BY "
        "actioncode");
    ASSERT_EQ(rows.Rows().Rows(), 2);
    EXPECT_EQ(rows.Rows().Cell(0, 0), Value("JOB_CREATE"));
    EXPECT_EQ(rows.Rows().Cell(1, 0), Value("<job><jobguid>it's</jobguid></job>"));
    EXPECT_THAT(rows.Rows().Cell(2, 0).Text(), ContainsRegex("^\\{[-0-9A-F]+\\}$"));
    EXPECT_THAT(rows.Rows().Cell(3, 0).Text(), ContainsRegex("^20[0-9][0-9]-.*T.*Z$"));
    EXPECT_EQ(rows.Rows().Cell(4, 0), Value(ProcessEnvironmentInfo().FirstUserText() + "\\" +
                                            ProcessEnvironmentInfo().SecondUserText()));
    EXPECT_EQ(rows.Rows().Cell(0, 1), Value("JOB_REMOVED"));
    EXPECT_EQ(rows.Rows().Cell(1, 1), Value(""));
    EXPECT_NE(rows.Rows().Cell(2, 1), rows.Rows().Cell(2, 0));
}

TEST_F(AppModelAdminTest, FailsWithoutATableForTheHistory) {
    const AutomationError error = ErrorOf([&] { WriteHistory("JOB_CREATE", "<job/>"); });
    EXPECT_EQ(error.Number(), error_number::kStatementFailed);
    EXPECT_THAT(error.Description(), StartsWith("[42S02]"));
    EXPECT_THAT(error.Description(), HasSubstr("kx_adminhistory"));
}

TEST_F(AppModelAdminTest, ReadsTheGuidOfAState) {
    container_.Execute("CREATE TABLE kx_applicationstate (stateid text, stateguid text)");
    container_.Execute(
        "INSERT INTO kx_applicationstate VALUES ('PRODUCTION', '{P}'), ('it''s', '{I}'), ('NEW', NULL)");
    EXPECT_EQ(State("PRODUCTION"), Value("{P}"));
    EXPECT_EQ(State("it's"), Value("{I}"));
}

TEST_F(AppModelAdminTest, GivesTheNullGuidForAStateThatIsNotThere) {
    const Value none("{00000000-0000-0000-0000-000000000000}");
    EXPECT_EQ(State("PRODUCTION"), none);
    container_.Execute("CREATE TABLE kx_applicationstate (stateid text, stateguid text)");
    EXPECT_EQ(State("PRODUCTION"), none);
    container_.Execute("INSERT INTO kx_applicationstate VALUES ('PRODUCTION', NULL)");
    EXPECT_EQ(State("PRODUCTION"), none);
    EXPECT_EQ(State("production"), none);
}

TEST_F(AppModelAdminTest, RefusesAnUnsafeQualifier) {
    const std::string unsafe = "x WHERE 1 = 1 --";
    EXPECT_EQ(ErrorOf([&] {
                  Call(admin_, "AdminHistoryWrite", {"", unsafe, "", ""});
              }).Number(),
              error_number::kGuardRefusal);
    EXPECT_EQ(ErrorOf([&] {
                  Call(admin_, "ApplicationStateReadGUID", {"", unsafe, ""});
              }).Number(),
              error_number::kGuardRefusal);
}

TEST_F(AppModelAdminTest, CountsItsArguments) {
    EXPECT_EQ(ErrorOf([&] {
                  Call(admin_, "AdminHistoryWrite", {"", "", ""});
              }).Number(),
              error_number::kWrongArgumentCount);
    EXPECT_EQ(ErrorOf([&] { Call(admin_, "ApplicationStateReadGUID", {""}); }).Number(),
              error_number::kWrongArgumentCount);
    EXPECT_EQ(ErrorOf([&] { Call(admin_, "Other", {}); }).Number(), error_number::kUnknownMember);
}

}  // namespace
}  // namespace kxjob
