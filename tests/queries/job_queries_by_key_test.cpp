#include "support/job_helper_test.h"

namespace kxjob {
namespace {

using ::testing::_;
using ::testing::InSequence;
using ::testing::Return;
using ::testing::Throw;
using testing_support::ErrorOf;
using testing_support::JobHelperTest;

/// The queries that want exactly what their key names: no row is an error of the store's own.
class KeyedQueryTest : public JobHelperTest {
protected:
    void ExpectGuards(const char* keyName) {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
        EXPECT_CALL(guard, CheckParameter("{K}", keyName));
    }

    const AutomationError refusal{error_number::kGuardRefusal, "InputGuard", "unsafe"};
    const AutomationError noRow{error_number::kNoRow, "DataAccess", "no row"};
};

class GetJobParameters : public KeyedQueryTest {};

TEST_F(GetJobParameters, ReturnsTheOneCellAsText) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{K}", "JobGUID"));
    EXPECT_CALL(data, Query("db", 5, 1, "SELECT parameters FROM kx_job WHERE jobguid = G({K})", false))
        .WillOnce(Return(Rows(1, {{"<parameters/>"}})));

    EXPECT_EQ(helper.GetJobParameters("db", 5, "kx_", "{K}"), "<parameters/>");

    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(GetJobParameters, ConvertsANumberToText) {
    InSequence inThisOrder;
    ExpectGuards("JobGUID");
    EXPECT_CALL(data, Query("db", 5, 1, _, false)).WillOnce(Return(Rows(1, {{42}})));

    EXPECT_EQ(helper.GetJobParameters("db", 5, "kx_", "{K}"), "42");
}

TEST_F(GetJobParameters, RaisesInvalidUseOfNullForAJobWithoutParameters) {
    InSequence inThisOrder;
    ExpectGuards("JobGUID");
    EXPECT_CALL(data, Query("db", 5, 1, _, false)).WillOnce(Return(Rows(1, {{Null{}}})));

    const AutomationError error = ErrorOf([&] { helper.GetJobParameters("db", 5, "kx_", "{K}"); });

    EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x800A005EU));
    ExpectTold(error, {"GetJobParameters"});
}

TEST_F(GetJobParameters, PassesOnThatThereIsNoSuchJob) {
    InSequence inThisOrder;
    ExpectGuards("JobGUID");
    EXPECT_CALL(data, Query("db", 5, 1, _, false)).WillOnce(Throw(noRow));

    ExpectPassedOn([&] { helper.GetJobParameters("db", 5, "kx_", "{K}"); }, noRow, {"GetJobParameters"});
}

TEST_F(GetJobParameters, UsesAnEmptyConnectionAndQualifierAsGiven) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{K}", "JobGUID"));
    EXPECT_CALL(data, Query("", 5, 1, "SELECT parameters FROM job WHERE jobguid = G({K})", false))
        .WillOnce(Return(Rows(1, {{""}})));

    EXPECT_EQ(helper.GetJobParameters("", 5, "", "{K}"), "");

    EXPECT_EQ(made.settings, 0);
}

TEST_F(GetJobParameters, PassesOnTheRefusalOfTheQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.GetJobParameters("db", 5, "kx_", "{K}"); }, refusal, {"GetJobParameters"});
}

TEST_F(GetJobParameters, PassesOnTheRefusalOfTheJobGuid) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{K}", "JobGUID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.GetJobParameters("db", 5, "kx_", "{K}"); }, refusal, {"GetJobParameters"});
}

class GetJobItem : public KeyedQueryTest {};

TEST_F(GetJobItem, ReturnsTheRowOfTheItem) {
    const Value row = Rows(7, {{"{I}", "COMPLETE", "payload", "2026-05-01", "2026-05-02", "{K}", Null{}}});
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{K}", "JobItemGUID"));
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT identifier, jobitemstateid, data, startdt, enddt, jobitemguid,"
                            " failurenote FROM kx_JobItem WHERE jobitemguid = G({K})",
                            false))
        .WillOnce(Return(row));

    EXPECT_EQ(helper.GetJobItem("db", 5, "kx_", "{K}"), row);

    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(GetJobItem, PassesOnThatThereIsNoSuchItem) {
    InSequence inThisOrder;
    ExpectGuards("JobItemGUID");
    EXPECT_CALL(data, Query("db", 5, 1, _, false)).WillOnce(Throw(noRow));

    ExpectPassedOn([&] { helper.GetJobItem("db", 5, "kx_", "{K}"); }, noRow, {"GetJobItem"});
}

TEST_F(GetJobItem, UsesAnEmptyConnectionAndQualifierAsGiven) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{K}", "JobItemGUID"));
    EXPECT_CALL(data, Query("", 5, 1,
                            "SELECT identifier, jobitemstateid, data, startdt, enddt, jobitemguid,"
                            " failurenote FROM JobItem WHERE jobitemguid = G({K})",
                            false));

    helper.GetJobItem("", 5, "", "{K}");

    EXPECT_EQ(made.settings, 0);
}

TEST_F(GetJobItem, PassesOnTheRefusalOfTheQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.GetJobItem("db", 5, "kx_", "{K}"); }, refusal, {"GetJobItem"});
}

TEST_F(GetJobItem, PassesOnTheRefusalOfTheItemGuid) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{K}", "JobItemGUID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.GetJobItem("db", 5, "kx_", "{K}"); }, refusal, {"GetJobItem"});
}

class GetJobItems : public KeyedQueryTest {};

TEST_F(GetJobItems, ReturnsTheItemsOfTheJobBySequence) {
    const Value rows = Rows(4, {{"{i1}", "{a}", "COMPLETE", 0}, {"{i2}", "{b}", Null{}, 1}});
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{K}", "JobGUID"));
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobitemguid, identifier, jobitemstateid, sequence FROM kx_JobItem"
                            " WHERE jobguid = G({K}) ORDER BY sequence",
                            false))
        .WillOnce(Return(rows));

    EXPECT_EQ(helper.GetJobItems("db", 5, "kx_", "{K}"), rows);

    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(GetJobItems, FailsRatherThanReturningEmptyForAJobWithoutItems) {
    InSequence inThisOrder;
    ExpectGuards("JobGUID");
    EXPECT_CALL(data, Query("db", 5, 1, _, false)).WillOnce(Throw(noRow));

    ExpectPassedOn([&] { helper.GetJobItems("db", 5, "kx_", "{K}"); }, noRow, {"GetJobItems"});
}

TEST_F(GetJobItems, UsesAnEmptyConnectionAndQualifierAsGiven) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{K}", "JobGUID"));
    EXPECT_CALL(data, Query("", 5, 1,
                            "SELECT jobitemguid, identifier, jobitemstateid, sequence FROM JobItem"
                            " WHERE jobguid = G({K}) ORDER BY sequence",
                            false));

    helper.GetJobItems("", 5, "", "{K}");

    EXPECT_EQ(made.settings, 0);
}

TEST_F(GetJobItems, PassesOnTheRefusalOfTheQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.GetJobItems("db", 5, "kx_", "{K}"); }, refusal, {"GetJobItems"});
}

TEST_F(GetJobItems, PassesOnTheRefusalOfTheJobGuid) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{K}", "JobGUID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.GetJobItems("db", 5, "kx_", "{K}"); }, refusal, {"GetJobItems"});
}

}  // namespace
}  // namespace kxjob
