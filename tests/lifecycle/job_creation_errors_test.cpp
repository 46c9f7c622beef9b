#include <limits>

#include "lifecycle/job_creation_test.h"

namespace kxjob {
namespace {

using ::testing::_;
using ::testing::InSequence;
using ::testing::Return;
using ::testing::StartsWith;
using ::testing::Throw;
using testing_support::JobCreationTest;

class CreateJobErrors : public JobCreationTest {
protected:
    void CreateWithItems(std::int32_t count) {
        helper.CreateJob("db", 5, "kx_", "{N}", "REPORT", "May", "{A}", "<p/>", count);
    }

    void ExpectRefusedForKvr(const Value& flag) {
        InSequence inThisOrder;
        ExpectGuards("kx_");
        ExpectSubsystems("db", 5, "kx_", Array::List({"DESIGN", "RUNTIME", "RUNTIME"}));
        EXPECT_CALL(flags, ReadFlag("db", 5, "kx_", "KVR_TRANSACTION")).WillOnce(Return(flag));

        ExpectOwnError([&] { Create(); }, 854, "CreateJob",
                       "Unable to create 'REPORT' as there is a KVR process running.  Please wait for KVR to"
                       " finish or clear the KVR flag using the Admin Console if it has crashed.",
                       {"CreateJob"});
    }

    const AutomationError refusal{error_number::kGuardRefusal, "InputGuard", "unsafe"};
    const AutomationError failure{error_number::kStatementFailed, "DataAccess", "[HY000] it is gone"};
};

TEST_F(CreateJobErrors, RefusesAJobOfNoItemsBeforeAnythingButTheTableNamesIsMade) {
    InSequence inThisOrder;
    ExpectGuards("kx_");

    ExpectOwnError([&] { CreateWithItems(0); }, 1433, "CreateJob",
                   "A job cannot be created if there are no items to be executed.", {"CreateJob"});

    EXPECT_EQ(made.objectFactories, 1);
}

TEST_F(CreateJobErrors, RefusesANegativeNumberOfItems) {
    InSequence inThisOrder;
    ExpectGuards("kx_");

    ExpectOwnError([&] { CreateWithItems(-1); }, 1433, "CreateJob",
                   "A job cannot be created if there are no items to be executed.", {"CreateJob"});
}

TEST_F(CreateJobErrors, RefusesTheLowestNumberOfItems) {
    InSequence inThisOrder;
    ExpectGuards("kx_");

    ExpectOwnError([&] { CreateWithItems(std::numeric_limits<std::int32_t>::min()); }, 1433, "CreateJob",
                   "A job cannot be created if there are no items to be executed.", {"CreateJob"});
}

TEST_F(CreateJobErrors, RefusesWhileAKvrProcessIsRunningAndChangesNothing) {
    ExpectRefusedForKvr("started 09:30");
}

TEST_F(CreateJobErrors, TakesABlankInTheKvrFlagAsSet) {
    ExpectRefusedForKvr(" ");
}

TEST_F(CreateJobErrors, TakesANumberInTheKvrFlagAsSet) {
    ExpectRefusedForKvr(0);
}

TEST_F(CreateJobErrors, RefusesAJobTypeWithoutMetaDataAndChangesNothing) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    ExpectSubsystems("db", 5, "kx_", Array::List({}));
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobtypeid, description, implprogid, notificationprogid  FROM kx_JobType"
                            " WHERE jobtypeid = G(REPORT)",
                            true))
        .WillOnce(Return(Value()));

    ExpectOwnError([&] { Create(); }, 1312, "CreateJob",
                   "There is no meta data relating to Job Type 'REPORT' so the Job cannot be created.",
                   {"CreateJob"});
}

// Guard refusals

TEST_F(CreateJobErrors, PassesOnTheRefusalOfTheJobGuid) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{N}", "JobGUID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { Create(); }, refusal, {"CreateJob"});
}

TEST_F(CreateJobErrors, PassesOnTheRefusalOfTheJobType) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{N}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("REPORT", "JobTypeID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { Create(); }, refusal, {"CreateJob"});
}

TEST_F(CreateJobErrors, PassesOnTheRefusalOfTheApplicationState) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{N}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("REPORT", "JobTypeID"));
    EXPECT_CALL(guard, CheckParameter("{A}", "ApplicationStateGUID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { Create(); }, refusal, {"CreateJob"});
}

TEST_F(CreateJobErrors, PassesOnTheRefusalOfTheQualifierBeforeTheItemsAreCounted) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{N}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("REPORT", "JobTypeID"));
    EXPECT_CALL(guard, CheckParameter("{A}", "ApplicationStateGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { CreateWithItems(0); }, refusal, {"CreateJob"});
}

TEST_F(CreateJobErrors, HasTheGuidOfAnEarlierJobRefusedThroughBothMethods) {
    InSequence inThisOrder;
    ExpectUntilEarlierJobs();
    ExpectEarlierJobs({EarlierJob("{1}", "READY")});
    ExpectTrace("Removing existing REPORT Job {1}", 3, "CreateJob");
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{1}", "JobGUID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { Create(); }, refusal, {"RemoveJobAndItems", "CreateJob"});
}

// Failing collaborators

TEST_F(CreateJobErrors, PassesOnThatThereAreNoTableNames) {
    const AutomationError missing(error_number::kClassNotRegistered, "ObjectFactory", "not registered");
    EXPECT_CALL(factory, CreateVersioned("TableNameHelper_%v.TableNameHelper")).WillOnce(Throw(missing));

    ExpectPassedOn([&] { Create(); }, missing, {"CreateJob"});
}

TEST_F(CreateJobErrors, PassesOnThatThereIsNoSchema) {
    const AutomationError missing(error_number::kClassNotRegistered, "ObjectFactory", "not registered");
    InSequence inThisOrder;
    ExpectGuards("kx_");
    EXPECT_CALL(factory, CreateVersioned("ApplicationSchema_%v.Schema")).WillOnce(Throw(missing));

    ExpectPassedOn([&] { Create(); }, missing, {"CreateJob"});
}

TEST_F(CreateJobErrors, PassesOnThatTheSubsystemsCannotBeListed) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    ExpectComponent("ApplicationSchema_%v.Schema", schema);
    EXPECT_CALL(*schema, CallMember("ListOfContainerSubSystems", _)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { Create(); }, failure, {"CreateJob"});
}

TEST_F(CreateJobErrors, PassesOnThatTheFlagCannotBeRead) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    ExpectSubsystems("db", 5, "kx_", Array::List({"RUNTIME"}));
    EXPECT_CALL(flags, ReadFlag("db", 5, "kx_", "KVR_TRANSACTION")).WillOnce(Throw(failure));

    ExpectPassedOn([&] { Create(); }, failure, {"CreateJob"});
}

TEST_F(CreateJobErrors, PassesOnThatTheJobTypeCannotBeRead) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    ExpectSubsystems("db", 5, "kx_", Array::List({}));
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Query("db", 5, 1, StartsWith("SELECT jobtypeid, "), true)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { Create(); }, failure, {"GetJobType", "CreateJob"});
}

TEST_F(CreateJobErrors, PassesOnThatTheEarlierJobsCannotBeRead) {
    InSequence inThisOrder;
    ExpectUntilEarlierJobs();
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Query("db", 5, 1, StartsWith("SELECT jobguid, "), true)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { Create(); }, failure, {"GetJob", "CreateJob"});
}

TEST_F(CreateJobErrors, LeavesTheJobsRemovedBeforeARemovalFails) {
    InSequence inThisOrder;
    ExpectUntilEarlierJobs();
    ExpectEarlierJobs({EarlierJob("{1}", "READY"), EarlierJob("{2}", "READY"), EarlierJob("{3}", "READY")});
    ExpectRemovalOf("{1}");
    ExpectTrace("Removing existing REPORT Job {2}", 3, "CreateJob");
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{2}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualfier"));
    ExpectTrace("Removing Job Items for {2}", 4, "RemoveJobAndItems");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_JobItem WHERE jobguid = G({2})"))
        .WillOnce(Throw(failure));

    ExpectPassedOn([&] { Create(); }, failure, {"RemoveJobAndItems", "CreateJob"});
}

TEST_F(CreateJobErrors, LeavesTheEarlierJobsRemovedWhenTheInsertFails) {
    InSequence inThisOrder;
    ExpectUntilEarlierJobs();
    ExpectEarlierJobs({EarlierJob("{1}", "READY")});
    ExpectRemovalOf("{1}");
    ExpectTrace("Creating REPORT Job {N}", 4, "CreateJob");
    EXPECT_CALL(data, Execute("db", 5, 1, StartsWith("INSERT INTO kx_job "))).WillOnce(Throw(failure));

    ExpectPassedOn([&] { CreateWithItems(7); }, failure, {"CreateJob"});
}

TEST_F(CreateJobErrors, LeavesTheNewJobWithoutHistoryWhenItsParametersCannotBeStored) {
    InSequence inThisOrder;
    ExpectUntilEarlierJobs();
    ExpectEarlierJobs({});
    ExpectInsert("db", 5, "kx_");
    EXPECT_CALL(data, WriteLongText("db", 5, 1, "kx_", "job", "jobguid", "{N}", "parameters", "<p/>", _))
        .WillOnce(Throw(failure));

    ExpectPassedOn([&] { CreateWithItems(7); }, failure, {"CreateJob"});
}

TEST_F(CreateJobErrors, PassesOnThatThereIsNoHistoryComponentAfterTheInsert) {
    const AutomationError missing(error_number::kClassNotRegistered, "ObjectFactory", "not registered");
    InSequence inThisOrder;
    ExpectUntilEarlierJobs();
    ExpectEarlierJobs({});
    ExpectInsert("db", 5, "kx_");
    EXPECT_CALL(factory, CreateVersioned("AppModelAdmin_%v.Admin")).WillOnce(Throw(missing));

    ExpectPassedOn([&] { Create(); }, missing, {"CreateJob"});
}

TEST_F(CreateJobErrors, PassesOnThatTheHistoryCannotBeWrittenAfterTheInsert) {
    InSequence inThisOrder;
    ExpectUntilEarlierJobs();
    ExpectEarlierJobs({});
    ExpectInsert("db", 5, "kx_");
    ExpectComponent("AppModelAdmin_%v.Admin", admin);
    EXPECT_CALL(*admin, CallMember("AdminHistoryWrite", _)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { Create(); }, failure, {"CreateJob"});
}

}  // namespace
}  // namespace kxjob
