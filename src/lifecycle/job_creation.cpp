#include "frame/frame.h"
#include "kxjob/array.h"
#include "kxjob/enums.h"
#include "kxjob/job_helper.h"
#include "store/row_indexes.h"
#include "store/sql_text.h"
#include "store/table_names.h"
#include "vocabulary/states.h"

namespace kxjob {
namespace {

/// Whether a KVR process has left its flag; asked for each runtime subsystem that the container has.
bool IsKvrRunning(Frame& frame, const std::string& connectionString, DataStoreProvider provider,
                  const std::string& nameQualifier, const std::string& subsystem) {
    if (subsystem != "RUNTIME") return false;
    const std::shared_ptr<SystemFlagReader> flags = frame.NewSystemFlagReader();
    const Value flag =
        frame.UseObject(flags).ReadFlag(connectionString, provider, nameQualifier, "KVR_TRANSACTION");
    return !flag.IsNull() && !flag.ToText().empty();
}

void RequireNoKvr(Frame& frame, const std::string& connectionString, DataStoreProvider provider,
                  const std::string& nameQualifier, const std::string& jobTypeId) {
    const LateObject schema = frame.CreateVersioned("ApplicationSchema_%v.Schema");
    const Value subsystems =
        schema.Call("ListOfContainerSubSystems", {connectionString, provider, nameQualifier});
    const Array& list = frame.Use(subsystems).General();
    for (const Value& subsystem : list.Elements()) {
        if (IsKvrRunning(frame, connectionString, provider, nameQualifier, subsystem.ToJoinedText())) {
            frame.Raise(
                854,
                "Unable to create '" + jobTypeId +
                    "' as there is a KVR process running.  Please wait for KVR to finish or clear the KVR "
                    "flag using the Admin Console if it has crashed.");
        }
    }
}

}  // namespace

void JobHelper::CreateJob(std::string ConnectionString, DataStoreProvider Provider, std::string NameQualifier,
                          std::string GUID, std::string JobTypeID, std::string Description,
                          std::string ApplicationStateGUID, std::string Parameters,
                          std::int32_t TotalItemCount) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"Provider", Provider},
                                {"NameQualifier", NameQualifier},
                                {"GUID", GUID},
                                {"JobTypeID", JobTypeID},
                                {"Description", Description},
                                {"ApplicationStateGUID", ApplicationStateGUID},
                                {"Parameters", Parameters},
                                {"TotalItemCount", TotalItemCount}};
    return InFrame("CreateJob", given, [&](Frame& frame) {
        UseConfigurationIfIncomplete(frame, ConnectionString, Provider, NameQualifier);
        const TableNames tables(frame, NameQualifier);
        frame.CheckParameter(GUID, "JobGUID");
        frame.CheckParameter(JobTypeID, "JobTypeID");
        frame.CheckParameter(ApplicationStateGUID, "ApplicationStateGUID");
        frame.CheckParameter(NameQualifier, "NameQualifier");

        // What refuses a job comes before anything is changed.
        if (TotalItemCount < 1) {
            frame.Raise(1433, "A job cannot be created if there are no items to be executed.");
        }
        RequireNoKvr(frame, ConnectionString, Provider, NameQualifier, JobTypeID);
        const Value jobType =
            frame.Use(*this).GetJobType(ConnectionString, Provider, NameQualifier, JobTypeID);
        if (jobType.IsEmpty()) {
            frame.Raise(1312, "There is no meta data relating to Job Type '" + JobTypeID +
                                  "' so the Job cannot be created.");
        }
        frame.Trace(kProgress, "Found meta data relating to Job Type '" + JobTypeID + "' - " +
                                   frame.Use(jobType).Rows().Cell(jtifDescription, 0).ToJoinedText());

        const Value earlierJobs = frame.Use(*this).GetJob(ConnectionString, Provider, NameQualifier, {},
                                                          JobTypeID, {}, ApplicationStateGUID);
        if (!earlierJobs.IsEmpty()) {
            for (const std::int32_t row : RowIndexes(frame, earlierJobs)) {
                const std::string earlierJob = frame.Use(earlierJobs).Rows().Cell(jifJobGUID, row).ToText();
                frame.Trace(kDecision, "Removing existing " + JobTypeID + " Job " + earlierJob);
                frame.Use(*this).RemoveJobAndItems(ConnectionString, Provider, NameQualifier, earlierJob);
            }
        }

        frame.Trace(kProgress, "Creating " + JobTypeID + " Job " + GUID);
        SqlText sql;
        sql << "INSERT INTO " << tables.job() << " (";
        sql << "jobguid, jobtypeid, description, appstateguid, jobstateid, totalitemcount";
        sql << ") VALUES (";
        sql << frame.FormatValue(GUID) << ", ";
        sql << frame.FormatValue(JobTypeID) << ", ";
        sql << frame.FormatValue(Description) << ", ";
        sql << frame.FormatValue(ApplicationStateGUID) << ", ";
        sql << frame.FormatValue(job_state::kCreating) << ", ";
        sql << TotalItemCount << ")";
        frame.Execute(ConnectionString, Provider, sql);
        if (!Parameters.empty()) {
            frame.WriteLongText(ConnectionString, Provider, NameQualifier, tables.Base("job"), "jobguid",
                                GUID, "parameters", Parameters);
        }

        const LateObject admin = frame.CreateVersioned("AppModelAdmin_%v.Admin");
        admin.Call("AdminHistoryWrite", {ConnectionString, NameQualifier, "JOB_CREATE",
                                         "<job><jobtypeid>" + JobTypeID + "</jobtypeid><jobguid>" + GUID +
                                             "</jobguid><appstateguid>" + ApplicationStateGUID +
                                             "</appstateguid><totalitemcount>" +
                                             std::to_string(TotalItemCount) + "</totalitemcount></job>"});
    });
}

}  // namespace kxjob
