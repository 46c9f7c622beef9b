#include "frame/frame.h"
#include "kxjob/job_helper.h"
#include "store/sql_text.h"
#include "store/table_names.h"

namespace kxjob {

void JobHelper::UpdateJobStatus(std::string ConnectionString, DataStoreProvider Provider,
                                std::string NameQualfier, std::string JobGUID, std::string JobStateID) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"Provider", Provider},
                                {"NameQualfier", NameQualfier},
                                {"JobGUID", JobGUID},
                                {"JobStateID", JobStateID}};
    return InFrame("UpdateJobStatus", given, [&](Frame& frame) {
        UseConfigurationIfIncomplete(frame, ConnectionString, Provider, NameQualfier);
        const TableNames tables(frame, NameQualfier);
        frame.CheckParameter(JobGUID, "JobGUID");
        frame.CheckParameter(JobStateID, "JobStateID");
        frame.CheckParameter(NameQualfier, "NameQualifier");

        SqlText sql;
        sql << "UPDATE " << tables.job();
        sql << " SET jobstateid = " << frame.FormatValue(JobStateID);
        sql << " WHERE jobguid = " << frame.FormatGuid(JobGUID);
        frame.Execute(ConnectionString, Provider, sql);
        frame.Use(*this).piAdminHistoryWrite(
            ConnectionString, Provider, NameQualfier, "JOB_STATUS_UPDATE",
            "<job><jobguid>" + JobGUID + "</jobguid><jobstateid>" + JobStateID + "</jobstateid></job>");
    });
}

void JobHelper::UpdateJobItemStatus(std::string ConnectionString, DataStoreProvider Provider,
                                    std::string NameQualfier, std::string JobItemGUID,
                                    std::string JobItemStateID, std::string StartISODateTime,
                                    std::string EndISODateTime, std::string JobTaskGUID) {
    const ArgumentList given = {
        {"ConnectionString", ConnectionString}, {"Provider", Provider},
        {"NameQualfier", NameQualfier},         {"JobItemGUID", JobItemGUID},
        {"JobItemStateID", JobItemStateID},     {"StartISODateTime", StartISODateTime},
        {"EndISODateTime", EndISODateTime},     {"JobTaskGUID", JobTaskGUID}};
    return InFrame("UpdateJobItemStatus", given, [&](Frame& frame) {
        const TableNames tables(frame, NameQualfier);
        frame.CheckParameter(NameQualfier, "NameQualifier");
        frame.CheckParameter(JobItemGUID, "JobItemGUID");
        frame.CheckParameter(JobItemStateID, "JobItemStateID");

        SqlText sql;
        sql << "UPDATE " << tables.JobItem() << " SET ";
        sql << "jobitemstateid = " << frame.FormatValue(JobItemStateID) << ", ";
        sql << "startdt = " << frame.FormatValue(StartISODateTime) << ", ";
        sql << "enddt = " << frame.FormatValue(EndISODateTime) << ", ";
        sql << "jobtaskguid = " << frame.FormatValue(JobTaskGUID);
        sql << " WHERE jobitemguid = " << frame.FormatGuid(JobItemGUID);
        frame.Execute(ConnectionString, Provider, sql);
    });
}

}  // namespace kxjob
