#pragma once

#include <string>
#include <vector>

#include "support/job_helper_test.h"

namespace kxjob::testing_support {

/// The steps that the choice of the next job is made of, on connection "db", provider 5 and qualifier "kx_".
class NextJobTest : public JobHelperTest {
protected:
    static constexpr const char* kJobsQuery =
        "SELECT jobguid, jobtypeid, jobstateid FROM kx_job WHERE jobstateid IN (G(RUNNING),G(QUEUED))";
    static constexpr const char* kJobTypesQuery =
        "SELECT jobtypeid, description, implprogid, notificationprogid  FROM kx_JobType";

    /// Everything up to the answer about the jobs; each row is a GUID, a type and a state. No row gives
    /// Empty.
    void ExpectJobs(const std::vector<std::vector<Value>>& jobs) {
        EXPECT_CALL(times, NowISODateTime()).WillOnce(::testing::Return("2026-03-01T09:30:15.123Z"));
        EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
        ExpectTableNames();
        EXPECT_CALL(data, Query("db", 5, 1, kJobsQuery, true))
            .WillOnce(::testing::Return(jobs.empty() ? Value() : Rows(3, jobs)));
    }

    /// The job types are read: an ID and a ProgID each.
    void ExpectJobTypes(const std::vector<std::vector<Value>>& types) {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
        std::vector<std::vector<Value>> rows;
        for (const std::vector<Value>& type : types) {
            rows.push_back({type[0], "a description", type[1], "Notified_83.Component"});
        }
        EXPECT_CALL(data, Query("db", 5, 1, kJobTypesQuery, true))
            .WillOnce(::testing::Return(rows.empty() ? Value() : Rows(4, rows)));
    }

    /// This machine is asked once for each job.
    void ExpectCreatable(int jobs, const std::string& progId = "Impl_83.Totals") {
        EXPECT_CALL(factory, CanCreate(progId)).Times(jobs).WillRepeatedly(::testing::Return(true));
    }

    /// RUNNING jobs with these GUIDs, all of one type that can be created here.
    void ExpectRunningJobs(const std::vector<std::string>& running) {
        std::vector<std::vector<Value>> jobs;
        for (const std::string& guid : running) jobs.push_back({guid, "T1", "RUNNING"});
        ExpectJobs(jobs);
        ExpectJobTypes({{"T1", "Impl_83.Totals"}});
        ExpectCreatable(static_cast<int>(running.size()));
    }

    /// The RUNNING tasks of the RUNNING jobs are counted; `list` is the text between the parentheses. Each
    /// row is a GUID and a count. No row gives Empty.
    void ExpectTaskCounts(const std::string& list, const std::vector<std::vector<Value>>& counts) {
        ExpectTableNames();
        EXPECT_CALL(data, Query("db", 5, 1,
                                "SELECT jobguid, COUNT(*) FROM kx_jobtask WHERE jobtaskstateid = G(RUNNING) "
                                "AND jobguid IN (" +
                                    list + ") GROUP BY jobguid",
                                true))
            .WillOnce(::testing::Return(counts.empty() ? Value() : Rows(2, counts)));
    }

    void ExpectPick(float drawn) {
        EXPECT_CALL(random, SeedFromTimer());
        EXPECT_CALL(random, Next()).WillOnce(::testing::Return(drawn));
    }

    void ExpectRecommended(const std::string& guid, const std::string& rank) {
        ExpectTrace("Recommending that job " + guid + " in 'kx_' is run, it has rank " + rank, 3,
                    "LowImpactGetNextJob");
    }

    void ExpectNothingFound() {
        ExpectTrace("There are no jobs in 'kx_' that this machine can create that are QUEUED or RUNNING", 4,
                    "LowImpactGetNextJob");
    }

    void GetNextJob() { helper.GetNextJob("db", 5, "kx_", jobGuid, jobRank); }

    void ExpectAnswer(const std::string& guid, double rank) const {
        EXPECT_EQ(jobGuid, guid);
        EXPECT_EQ(jobRank, rank);
    }

    // What the caller had in its variables before the call.
    std::string jobGuid = "before";
    double jobRank = -1;
};

}  // namespace kxjob::testing_support
