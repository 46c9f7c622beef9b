#include "support/job_helper_test.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using ::testing::InSequence;
using ::testing::Return;
using ::testing::Throw;
using testing_support::ErrorOf;
using testing_support::JobHelperTest;
using testing_support::kFailure;

class GetNewLockExcludingInterlopers : public JobHelperTest {
protected:
    /// The guards, in their order.
    void ExpectGuards() {
        EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
        EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
        EXPECT_CALL(guard, CheckParameter("{old}", "OldLockGUID"));
        EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    }

    void ExpectExchange() {
        EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{new}"));
        EXPECT_CALL(data, Execute("db", 2, 1,
                                  "UPDATE kx_job SET jobeditorlockguid = V({new}), lockduration = 90.5"
                                  " WHERE jobguid = G({J}) AND jobeditorlockguid = G({old})"));
    }

    /// All up to the re-read, which finds `found`.
    void ExpectExchangeThatLeaves(const Value& found) {
        ExpectTableNames();
        ExpectGuards();
        ExpectExchange();
        EXPECT_CALL(data,
                    Query("db", 2, 1, "SELECT jobeditorlockguid FROM kx_job WHERE jobguid = G({J})", true))
            .WillOnce(Return(found));
    }

    /// The first trace line of a lock that was exchanged.
    void ExpectAdvice() {
        ExpectTrace("Advising Job Task {T} that it's lock {old} has been migrated to lock {new}", 4,
                    "GetNewLockExcludingInterlopers");
    }

    void ExpectTaskLockGuards() {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
        EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    }

    void ExpectTaskLock() {
        ExpectTaskLockGuards();
        EXPECT_CALL(data, Execute("db", 2, 1,
                                  "UPDATE kx_jobtask SET lockguid = V({new}) WHERE jobtaskguid = G({T})"));
    }

    std::string Call() {
        return helper.GetNewLockExcludingInterlopers("db", "kx_", "{J}", "{T}", "{old}", 90.5);
    }

    void ExpectCallPassesOnTheFailure() {
        ExpectPassedOn([&] { Call(); }, kFailure, {"GetNewLockExcludingInterlopers"});
    }

    void ExpectInterloper(const std::string& description) {
        ExpectOwnError([&] { Call(); }, 746, "GetNewLockExcludingInterlopers", description,
                       {"GetNewLockExcludingInterlopers"});
    }
};

TEST_F(GetNewLockExcludingInterlopers, ExchangesTheLockAdvisesTheTaskAndReturnsTheNewLock) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    EXPECT_CALL(guard, CheckParameter("{old}", "OldLockGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{new}"));
    EXPECT_CALL(data, Execute("db", 2, 1,
                              "UPDATE kx_job SET jobeditorlockguid = V({new}), lockduration = 90.5"
                              " WHERE jobguid = G({J}) AND jobeditorlockguid = G({old})"));
    EXPECT_CALL(data, Query("db", 2, 1, "SELECT jobeditorlockguid FROM kx_job WHERE jobguid = G({J})", true))
        .WillOnce(Return(Rows(1, {{"{new}"}})));
    ExpectTrace("Advising Job Task {T} that it's lock {old} has been migrated to lock {new}", 4,
                "GetNewLockExcludingInterlopers");
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    EXPECT_CALL(data,
                Execute("db", 2, 1, "UPDATE kx_jobtask SET lockguid = V({new}) WHERE jobtaskguid = G({T})"));
    EXPECT_CALL(times, DurationText(90.5)).WillOnce(Return("a while"));
    ExpectTrace("Lock {old} was migrated to lock {new} with a duration of a while", 4,
                "GetNewLockExcludingInterlopers");

    EXPECT_EQ(helper.GetNewLockExcludingInterlopers("db", "kx_", "{J}", "{T}", "{old}", 90.5), "{new}");
    EXPECT_EQ(made.objectFactories, 2);
    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(GetNewLockExcludingInterlopers, WritesADurationOfZeroAsZero) {
    InSequence inThisOrder;
    ExpectTableNames();
    ExpectGuards();
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{new}"));
    EXPECT_CALL(data, Execute("db", 2, 1,
                              "UPDATE kx_job SET jobeditorlockguid = V({new}), lockduration = 0"
                              " WHERE jobguid = G({J}) AND jobeditorlockguid = G({old})"));
    EXPECT_CALL(data, Query).WillOnce(Return(Rows(1, {{"{new}"}})));
    ExpectAdvice();
    ExpectTaskLock();
    EXPECT_CALL(times, DurationText(0)).WillOnce(Return(""));
    ExpectTrace("Lock {old} was migrated to lock {new} with a duration of ", 4,
                "GetNewLockExcludingInterlopers");

    EXPECT_EQ(helper.GetNewLockExcludingInterlopers("db", "kx_", "{J}", "{T}", "{old}", 0), "{new}");
}

TEST_F(GetNewLockExcludingInterlopers, WritesAFractionWithAPoint) {
    InSequence inThisOrder;
    ExpectTableNames();
    ExpectGuards();
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{new}"));
    EXPECT_CALL(data, Execute("db", 2, 1,
                              "UPDATE kx_job SET jobeditorlockguid = V({new}), lockduration = -0.125"
                              " WHERE jobguid = G({J}) AND jobeditorlockguid = G({old})"));
    EXPECT_CALL(data, Query).WillOnce(Return(Value()));

    ErrorOf([&] { helper.GetNewLockExcludingInterlopers("db", "kx_", "{J}", "{T}", "{old}", -0.125); });
}

TEST_F(GetNewLockExcludingInterlopers, UsesAnEmptyConnectionAndQualifierAsTheyAre) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    EXPECT_CALL(guard, CheckParameter("{old}", "OldLockGUID"));
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{new}"));
    EXPECT_CALL(data, Execute("", 2, 1,
                              "UPDATE job SET jobeditorlockguid = V({new}), lockduration = 30"
                              " WHERE jobguid = G({J}) AND jobeditorlockguid = G({old})"));
    EXPECT_CALL(data, Query("", 2, 1, "SELECT jobeditorlockguid FROM job WHERE jobguid = G({J})", true))
        .WillOnce(Return(Rows(1, {{"{new}"}})));
    ExpectAdvice();
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    EXPECT_CALL(data, Execute("", 2, 1, "UPDATE jobtask SET lockguid = V({new}) WHERE jobtaskguid = G({T})"));
    EXPECT_CALL(times, DurationText(30)).WillOnce(Return("30 s"));
    ExpectTrace("Lock {old} was migrated to lock {new} with a duration of 30 s", 4,
                "GetNewLockExcludingInterlopers");

    EXPECT_EQ(helper.GetNewLockExcludingInterlopers("", "", "{J}", "{T}", "{old}", 30), "{new}");
    EXPECT_EQ(made.settings, 0);
}

TEST_F(GetNewLockExcludingInterlopers, FailsWhenAnotherTaskHoldsTheJobAndLeavesTheTaskRow) {
    InSequence inThisOrder;
    ExpectExchangeThatLeaves(Rows(1, {{"{theirs}"}}));

    ExpectInterloper(
        "The lock GUID is '{theirs}'not the old value '{old}' or the attempted new value '{new}'"
        " so the attempt to get a new lock has failed");
}

TEST_F(GetNewLockExcludingInterlopers, RaisesThePublishedNumberForAnInterloper) {
    InSequence inThisOrder;
    ExpectExchangeThatLeaves(Rows(1, {{"{theirs}"}}));

    EXPECT_EQ(ErrorOf([&] { Call(); }).Number(), static_cast<std::int32_t>(0x800402EAU));
}

TEST_F(GetNewLockExcludingInterlopers, FailsWhenTheOldLockStillStands) {
    InSequence inThisOrder;
    ExpectExchangeThatLeaves(Rows(1, {{"{old}"}}));

    ExpectInterloper(
        "The lock GUID is '{old}'not the old value '{old}' or the attempted new value '{new}'"
        " so the attempt to get a new lock has failed");
}

TEST_F(GetNewLockExcludingInterlopers, ComparesTheLockByLetterCase) {
    InSequence inThisOrder;
    ExpectExchangeThatLeaves(Rows(1, {{"{NEW}"}}));

    ExpectInterloper(
        "The lock GUID is '{NEW}'not the old value '{old}' or the attempted new value '{new}'"
        " so the attempt to get a new lock has failed");
}

TEST_F(GetNewLockExcludingInterlopers, ComparesTheLockWithItsBlanks) {
    InSequence inThisOrder;
    ExpectExchangeThatLeaves(Rows(1, {{"{new} "}}));

    ExpectInterloper(
        "The lock GUID is '{new} 'not the old value '{old}' or the attempted new value '{new}'"
        " so the attempt to get a new lock has failed");
}

TEST_F(GetNewLockExcludingInterlopers, ShowsANullLockAsNothing) {
    InSequence inThisOrder;
    ExpectExchangeThatLeaves(Rows(1, {{Null()}}));

    ExpectInterloper(
        "The lock GUID is ''not the old value '{old}' or the attempted new value '{new}'"
        " so the attempt to get a new lock has failed");
}

TEST_F(GetNewLockExcludingInterlopers, ShowsAnEmptyLockAsNothing) {
    InSequence inThisOrder;
    ExpectExchangeThatLeaves(Rows(1, {{""}}));

    ExpectInterloper(
        "The lock GUID is ''not the old value '{old}' or the attempted new value '{new}'"
        " so the attempt to get a new lock has failed");
}

TEST_F(GetNewLockExcludingInterlopers, DecidesByTheFirstRow) {
    InSequence inThisOrder;
    ExpectExchangeThatLeaves(Rows(1, {{"{theirs}"}, {"{new}"}}));

    ExpectInterloper(
        "The lock GUID is '{theirs}'not the old value '{old}' or the attempted new value '{new}'"
        " so the attempt to get a new lock has failed");
}

TEST_F(GetNewLockExcludingInterlopers, FailsWhenTheJobIsGone) {
    InSequence inThisOrder;
    ExpectExchangeThatLeaves(Value());

    ExpectOwnError([&] { Call(); }, 745, "GetNewLockExcludingInterlopers", "Job {J} has vanished",
                   {"GetNewLockExcludingInterlopers"});
}

TEST_F(GetNewLockExcludingInterlopers, RaisesThePublishedNumberForAVanishedJob) {
    InSequence inThisOrder;
    ExpectExchangeThatLeaves(Value());

    EXPECT_EQ(ErrorOf([&] { Call(); }).Number(), static_cast<std::int32_t>(0x800402E9U));
}

TEST_F(GetNewLockExcludingInterlopers, StopsWithoutTheTableNames) {
    EXPECT_CALL(factory, CreateVersioned("TableNameHelper_%v.TableNameHelper")).WillOnce(Throw(kFailure));

    ExpectCallPassesOnTheFailure();
}

TEST_F(GetNewLockExcludingInterlopers, StopsAtARefusedJob) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID")).WillOnce(Throw(kFailure));

    ExpectCallPassesOnTheFailure();
}

TEST_F(GetNewLockExcludingInterlopers, StopsAtARefusedTask) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID")).WillOnce(Throw(kFailure));

    ExpectCallPassesOnTheFailure();
}

TEST_F(GetNewLockExcludingInterlopers, StopsAtARefusedOldLock) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    EXPECT_CALL(guard, CheckParameter("{old}", "OldLockGUID")).WillOnce(Throw(kFailure));

    ExpectCallPassesOnTheFailure();
}

TEST_F(GetNewLockExcludingInterlopers, StopsAtARefusedQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    EXPECT_CALL(guard, CheckParameter("{old}", "OldLockGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(kFailure));

    ExpectCallPassesOnTheFailure();
}

TEST_F(GetNewLockExcludingInterlopers, StopsWithoutANewLock) {
    InSequence inThisOrder;
    ExpectTableNames();
    ExpectGuards();
    EXPECT_CALL(guids, NewGuid()).WillOnce(Throw(kFailure));

    ExpectCallPassesOnTheFailure();
}

TEST_F(GetNewLockExcludingInterlopers, ReadsNothingBackAfterAFailingExchange) {
    InSequence inThisOrder;
    ExpectTableNames();
    ExpectGuards();
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{new}"));
    EXPECT_CALL(data, Execute).WillOnce(Throw(kFailure));

    ExpectCallPassesOnTheFailure();
}

TEST_F(GetNewLockExcludingInterlopers, UndoesNothingWhenTheLockCannotBeReadBack) {
    InSequence inThisOrder;
    ExpectTableNames();
    ExpectGuards();
    ExpectExchange();
    EXPECT_CALL(data, Query).WillOnce(Throw(kFailure));

    ExpectCallPassesOnTheFailure();
}

TEST_F(GetNewLockExcludingInterlopers, LeavesTheTaskRowWhenTheAdviceCannotBeTraced) {
    InSequence inThisOrder;
    ExpectExchangeThatLeaves(Rows(1, {{"{new}"}}));
    EXPECT_CALL(trace, Write).WillOnce(Throw(kFailure));

    ExpectCallPassesOnTheFailure();
}

TEST_F(GetNewLockExcludingInterlopers, PassesAFailureToAdviseTheTaskOnThroughBothMethods) {
    InSequence inThisOrder;
    ExpectExchangeThatLeaves(Rows(1, {{"{new}"}}));
    ExpectAdvice();
    ExpectTaskLockGuards();
    EXPECT_CALL(data, Execute).WillOnce(Throw(kFailure));

    ExpectPassedOn([&] { Call(); }, kFailure, {"UpdateJobTaskLock", "GetNewLockExcludingInterlopers"});
}

TEST_F(GetNewLockExcludingInterlopers, PassesOnAFailureToSayTheDuration) {
    InSequence inThisOrder;
    ExpectExchangeThatLeaves(Rows(1, {{"{new}"}}));
    ExpectAdvice();
    ExpectTaskLock();
    EXPECT_CALL(times, DurationText(90.5)).WillOnce(Throw(kFailure));

    ExpectCallPassesOnTheFailure();
}

TEST_F(GetNewLockExcludingInterlopers, PassesOnAFailureOfItsLastTraceLine) {
    InSequence inThisOrder;
    ExpectExchangeThatLeaves(Rows(1, {{"{new}"}}));
    ExpectAdvice();
    ExpectTaskLock();
    EXPECT_CALL(times, DurationText(90.5)).WillOnce(Return("a while"));
    EXPECT_CALL(trace, Write).WillOnce(Throw(kFailure));

    ExpectCallPassesOnTheFailure();
}

TEST_F(GetNewLockExcludingInterlopers, GoesOnWhenTheFailureToAdviseTheTaskIsSwallowed) {
    debugTools->returnsInsteadOfRaising = true;
    InSequence inThisOrder;
    ExpectExchangeThatLeaves(Rows(1, {{"{new}"}}));
    ExpectAdvice();
    ExpectTaskLockGuards();
    EXPECT_CALL(data, Execute).WillOnce(Throw(kFailure));
    EXPECT_CALL(times, DurationText(90.5)).WillOnce(Return("a while"));
    ExpectTrace("Lock {old} was migrated to lock {new} with a duration of a while", 4,
                "GetNewLockExcludingInterlopers");

    EXPECT_EQ(Call(), "{new}");
    EXPECT_EQ(debugTools->told.size(), 1U);
}

}  // namespace
}  // namespace kxjob
