#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/job_helper_test.h"

namespace kxjob::testing_support {

/// The stretches of CreateJob's road, for the tests that are about what lies between them: job {N} of type
/// REPORT in the application state {A}, with 7 items and described as May.
class JobCreationTest : public JobHelperTest {
protected:
    void Create() { helper.CreateJob("db", 5, "kx_", "{N}", "REPORT", "May", "{A}", "", 7); }

    void ExpectGuards(const std::string& qualifier) {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter("{N}", "JobGUID"));
        EXPECT_CALL(guard, CheckParameter("REPORT", "JobTypeID"));
        EXPECT_CALL(guard, CheckParameter("{A}", "ApplicationStateGUID"));
        EXPECT_CALL(guard, CheckParameter(qualifier, "NameQualifier"));
    }

    void ExpectSubsystems(const std::string& connection, DataStoreProvider provider,
                          const std::string& qualifier, const Value& list) {
        ExpectComponent("ApplicationSchema_%v.Schema", schema);
        EXPECT_CALL(*schema,
                    CallMember("ListOfContainerSubSystems",
                               ::testing::ElementsAre(Value(connection), Value(provider), Value(qualifier))))
            .WillOnce(::testing::Return(list));
    }

    void ExpectJobType(const std::string& connection, DataStoreProvider provider,
                       const std::string& qualifier) {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter(qualifier, "NameQualifier"));
        EXPECT_CALL(data, Query(connection, provider, 1,
                                "SELECT jobtypeid, description, implprogid, notificationprogid  FROM " +
                                    qualifier + "JobType WHERE jobtypeid = G(REPORT)",
                                true))
            .WillOnce(
                ::testing::Return(Rows(4, {{"REPORT", "Monthly reports", "Impl.Report", "Notify.Report"}})));
    }

    void ExpectUntilEarlierJobs() {
        ExpectGuards("kx_");
        ExpectSubsystems("db", 5, "kx_", Array::List({}));
        ExpectJobType("db", 5, "kx_");
        ExpectTrace("Found meta data relating to Job Type 'REPORT' - Monthly reports", 4, "CreateJob");
    }

    /// A row as GetJob gives it.
    static std::vector<Value> EarlierJob(const std::string& guid, const std::string& state) {
        return {guid, "April", "REPORT", Null{}, state, 1, 7, 0, 0, Null{}, Null{}, Null{}, "{A}", Null{}};
    }

    void ExpectEarlierJobs(const std::vector<std::vector<Value>>& rows) {
        ExpectEarlierJobsQuery("db", 5, "kx_", rows.empty() ? Value() : Rows(14, rows));
    }

    void ExpectNoEarlierJobs(const std::string& connection, DataStoreProvider provider,
                             const std::string& qualifier) {
        ExpectEarlierJobsQuery(connection, provider, qualifier, {});
    }

    /// One earlier job goes: its trace line, then all that RemoveJobAndItems does.
    void ExpectRemovalOf(const std::string& guid) {
        ExpectTrace("Removing existing REPORT Job " + guid, 3, "CreateJob");
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter(guid, "JobGUID"));
        EXPECT_CALL(guard, CheckParameter("kx_", "NameQualfier"));
        ExpectTrace("Removing Job Items for " + guid, 4, "RemoveJobAndItems");
        EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_JobItem WHERE jobguid = G(" + guid + ")"));
        ExpectTrace("Removing Job Tasks for " + guid, 4, "RemoveJobAndItems");
        EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_jobtask WHERE jobguid = G(" + guid + ")"));
        ExpectTrace("Removing Job " + guid, 4, "RemoveJobAndItems");
        EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_job WHERE jobguid = G(" + guid + ")"));
        ExpectComponent("AppModelAdmin_%v.Admin", admin);
        EXPECT_CALL(*admin,
                    CallMember("AdminHistoryWrite",
                               ::testing::ElementsAre(Value("db"), Value("kx_"), Value("JOB_REMOVED"),
                                                      Value("<job><jobguid>" + guid + "</jobguid></job>"))));
    }

    void ExpectInsert(const std::string& connection, DataStoreProvider provider,
                      const std::string& qualifier) {
        ExpectTrace("Creating REPORT Job {N}", 4, "CreateJob");
        EXPECT_CALL(data, Execute(connection, provider, 1,
                                  "INSERT INTO " + qualifier +
                                      "job (jobguid, jobtypeid, description, appstateguid, jobstateid,"
                                      " totalitemcount) VALUES (V({N}), V(REPORT), V(May), V({A}),"
                                      " V(CREATING), 7)"));
    }

    void ExpectHistory(const std::string& connection, const std::string& qualifier) {
        ExpectComponent("AppModelAdmin_%v.Admin", admin);
        EXPECT_CALL(*admin, CallMember("AdminHistoryWrite",
                                       ::testing::ElementsAre(
                                           Value(connection), Value(qualifier), Value("JOB_CREATE"),
                                           Value("<job><jobtypeid>REPORT</jobtypeid><jobguid>{N}</jobguid>"
                                                 "<appstateguid>{A}</appstateguid>"
                                                 "<totalitemcount>7</totalitemcount></job>"))));
    }

    void ExpectInsertAndHistory() {
        ExpectInsert("db", 5, "kx_");
        ExpectHistory("db", "kx_");
    }

    void ExpectJobTypeAndAllAfterIt() {
        ExpectJobType("db", 5, "kx_");
        ExpectTrace("Found meta data relating to Job Type 'REPORT' - Monthly reports", 4, "CreateJob");
        ExpectEarlierJobs({});
        ExpectInsertAndHistory();
    }

    /// The whole road without parameters and earlier jobs.
    void ExpectRoadOn(const std::string& connection, DataStoreProvider provider,
                      const std::string& qualifier) {
        ExpectGuards(qualifier);
        ExpectSubsystems(connection, provider, qualifier, Array::List({}));
        ExpectJobType(connection, provider, qualifier);
        ExpectTrace("Found meta data relating to Job Type 'REPORT' - Monthly reports", 4, "CreateJob");
        ExpectNoEarlierJobs(connection, provider, qualifier);
        ExpectInsert(connection, provider, qualifier);
        ExpectHistory(connection, qualifier);
    }

    std::shared_ptr<::testing::StrictMock<MockComponent>> schema =
        std::make_shared<::testing::StrictMock<MockComponent>>();
    std::shared_ptr<::testing::StrictMock<MockComponent>> admin =
        std::make_shared<::testing::StrictMock<MockComponent>>();

private:
    void ExpectEarlierJobsQuery(const std::string& connection, DataStoreProvider provider,
                                const std::string& qualifier, const Value& rows) {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter(qualifier, "NameQualifier"));
        EXPECT_CALL(data, Query(connection, provider, 1,
                                "SELECT jobguid, description, jobtypeid, parameters, jobstateid, nextjobitem,"
                                " totalitemcount, succeededitemcount, faileditemcount, startdt,"
                                " lastcompletiondt, sumoftimeincsq, appstateguid, failurenote  FROM " +
                                    qualifier + "job WHERE  jobtypeid = G(REPORT) AND  appstateguid = G({A})",
                                true))
            .WillOnce(::testing::Return(rows));
    }
};

}  // namespace kxjob::testing_support
