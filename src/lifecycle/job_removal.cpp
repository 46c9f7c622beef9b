#include <array>

#include "frame/frame.h"
#include "kxjob/array.h"
#include "kxjob/job_helper.h"
#include "store/row_indexes.h"
#include "store/sql_text.h"
#include "store/table_names.h"

namespace kxjob {

void JobHelper::RemoveJobAndItems(std::string ConnectionString, DataStoreProvider Provider,
                                  std::string NameQualfier, std::string JobGUID) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"Provider", Provider},
                                {"NameQualfier", NameQualfier},
                                {"JobGUID", JobGUID}};
    return InFrame("RemoveJobAndItems", given, [&](Frame& frame) {
        UseConfigurationIfIncomplete(frame, ConnectionString, Provider, NameQualfier);
        const TableNames tables(frame, NameQualfier);
        frame.CheckParameter(JobGUID, "JobGUID");
        frame.CheckParameter(NameQualfier, "NameQualfier");  // sic

        SqlText items;
        items << "DELETE FROM " << tables.JobItem() << " WHERE jobguid = " << frame.FormatGuid(JobGUID);
        SqlText tasks;
        tasks << "DELETE FROM " << tables.jobtask() << " WHERE jobguid = " << frame.FormatGuid(JobGUID);
        SqlText job;
        job << "DELETE FROM " << tables.job() << " WHERE jobguid = " << frame.FormatGuid(JobGUID);

        frame.Trace(kProgress, "Removing Job Items for " + JobGUID);
        frame.Execute(ConnectionString, Provider, items);
        frame.Trace(kProgress, "Removing Job Tasks for " + JobGUID);
        frame.Execute(ConnectionString, Provider, tasks);
        frame.Trace(kProgress, "Removing Job " + JobGUID);
        frame.Execute(ConnectionString, Provider, job);

        const LateObject admin = frame.CreateVersioned("AppModelAdmin_%v.Admin");
        admin.Call("AdminHistoryWrite", {ConnectionString, NameQualfier, "JOB_REMOVED",
                                         "<job><jobguid>" + JobGUID + "</jobguid></job>"});
    });
}

void JobHelper::RemoveIrrelevantJobsInAllContainers(std::string ConnectionString, DataStoreProvider Provider,
                                                    std::string NameQualifier) {
    const ArgumentList given = {
        {"ConnectionString", ConnectionString}, {"Provider", Provider}, {"NameQualifier", NameQualifier}};
    return InFrame("RemoveIrrelevantJobsInAllContainers", given, [&](Frame& frame) {
        frame.CheckParameter(NameQualifier, "NameQualifier");
        const LateObject admin = frame.CreateVersioned("AppModelAdmin_%v.Admin");
        const std::string production =
            admin.Call("ApplicationStateReadGUID", {ConnectionString, NameQualifier, "PRODUCTION"}).ToText();
        const std::string development =
            admin.Call("ApplicationStateReadGUID", {ConnectionString, NameQualifier, "DEVELOPMENT"}).ToText();
        frame.Use(*this).RemoveIrrelevantJobsInContainer(ConnectionString, Provider, NameQualifier,
                                                         production, development);
        frame.Trace(kWarning, "How do we determine related containers");

        std::string errorText;  // nothing fills it yet: one container is swept, and its errors are raised
        if (!errorText.empty()) frame.Raise(748, errorText);
    });
}

void JobHelper::RemoveIrrelevantJobsInContainer(std::string ConnectionString, DataStoreProvider Provider,
                                                std::string NameQualifier, std::string ProductionStateGUID,
                                                std::string DevelopmentStateGUID) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"Provider", Provider},
                                {"NameQualifier", NameQualifier},
                                {"ProductionStateGUID", ProductionStateGUID},
                                {"DevelopmentStateGUID", DevelopmentStateGUID}};
    return InFrame("RemoveIrrelevantJobsInContainer", given, [&](Frame& frame) {
        const TableNames tables(frame, NameQualifier);
        frame.CheckParameter(DevelopmentStateGUID, "DevelopmentStateGUID");
        frame.CheckParameter(NameQualifier, "NameQualifier");

        SqlText sql;
        sql << "SELECT jobguid, jobtypeid FROM " << tables.job() << " WHERE ";
        // Two blanks before each appstateguid: published text.
        if (ProductionStateGUID != frame.NullGuid()) {
            sql << " appstateguid <> " << frame.FormatGuid(ProductionStateGUID) << " AND ";
        }
        sql << " appstateguid <> " << frame.FormatGuid(DevelopmentStateGUID);

        frame.ExplainErrors("Unable to look for irrelevant jobs.");
        const Value irrelevant = frame.Query(ConnectionString, Provider, sql, true);
        if (!irrelevant.IsEmpty()) {
            frame.ExplainErrors("Unable to remove irrelevant jobs.");
            for (const std::int32_t row : RowIndexes(frame, irrelevant)) {
                const std::string jobGuid = frame.Use(irrelevant).Rows().Cell(0, row).ToText();
                const std::string jobType = frame.Use(irrelevant).Rows().Cell(1, row).ToJoinedText();
                frame.Trace(kProgress, "Removing " + jobType + " Job " + jobGuid);
                frame.Use(*this).RemoveJobAndItems(ConnectionString, Provider, NameQualifier, jobGuid);
            }
        }
        frame.ExplainErrors({});
        frame.Use(*this).RemoveOrphanedJobInformation(ConnectionString, Provider, NameQualifier);
    });
}

void JobHelper::RemoveOrphanedJobInformation(std::string ConnectionString, DataStoreProvider Provider,
                                             std::string NameQualifier) {
    const ArgumentList given = {
        {"ConnectionString", ConnectionString}, {"Provider", Provider}, {"NameQualifier", NameQualifier}};
    return InFrame("RemoveOrphanedJobInformation", given, [&](Frame& frame) {
        const TableNames tables(frame, NameQualifier);
        frame.CheckParameter(NameQualifier, "NameQualifier");

        SqlText sql;
        sql << "SELECT jobguid FROM " << tables.job();
        const Value jobs = frame.Query(ConnectionString, Provider, sql, true);

        // Without any job every item and task is an orphan, and the filter stays empty.
        SqlText filter;
        if (!jobs.IsEmpty()) {
            const char* separator = "";
            filter << " WHERE jobguid NOT IN(";
            for (const std::int32_t row : RowIndexes(frame, jobs)) {
                filter << separator << frame.FormatGuid(frame.Use(jobs).Rows().Cell(0, row).ToText());
                separator = ", ";
            }
            filter << ")";
        }

        const std::array<std::string, 2> orphanTables{tables.Base("JobItem"), tables.Base("jobtask")};
        for (const std::string& table : orphanTables) {
            frame.Trace(kProgress, "Removing any orphaned rows in " + table);
            SqlText removal;
            removal << "DELETE FROM " << NameQualifier << table << filter.Text();
            frame.Execute(ConnectionString, Provider, removal);
        }
    });
}

}  // namespace kxjob
