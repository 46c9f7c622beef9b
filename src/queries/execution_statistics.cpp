#include "frame/frame.h"
#include "kxjob/job_helper.h"
#include "store/sql_text.h"
#include "store/table_names.h"

namespace kxjob {

Value JobHelper::GetJobExecutionStatistics(std::string ConnectionString, DataStoreProvider Provider,
                                           std::string NameQualifier, std::string JobGUID) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"Provider", Provider},
                                {"NameQualifier", NameQualifier},
                                {"JobGUID", JobGUID}};
    return InFrame("GetJobExecutionStatistics", given, [&](Frame& frame) {
        return frame.Use(*this).piGetJobExecutionStatistics(ConnectionString, Provider, NameQualifier,
                                                            JobGUID, false);
    });
}

Value JobHelper::GetJobExecutionStatisticsAllowMissing(std::string ConnectionString,
                                                       DataStoreProvider Provider, std::string NameQualifier,
                                                       std::string JobGUID) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"Provider", Provider},
                                {"NameQualifier", NameQualifier},
                                {"JobGUID", JobGUID}};
    return InFrame("GetJobExecutionStatisticsAllowMissing", given, [&](Frame& frame) {
        return frame.Use(*this).piGetJobExecutionStatistics(ConnectionString, Provider, NameQualifier,
                                                            JobGUID, true);
    });
}

Value JobHelper::piGetJobExecutionStatistics(std::string ConnectionString, DataStoreProvider Provider,
                                             std::string NameQualifier, std::string JobGUID,
                                             bool AllowMissing) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"Provider", Provider},
                                {"NameQualifier", NameQualifier},
                                {"JobGUID", JobGUID},
                                {"AllowMissing", AllowMissing}};
    return InFrame("piGetJobExecutionStatistics", given, [&](Frame& frame) {
        UseConfigurationIfIncomplete(frame, ConnectionString, Provider, NameQualifier);
        frame.CheckParameter(NameQualifier, "NameQualifier");
        const TableNames tables(frame, NameQualifier);

        SqlText sql;
        sql << "SELECT jobguid, description, jobtypeid, jobstateid, nextjobitem, totalitemcount,";
        sql << " succeededitemcount, faileditemcount, startdt, lastcompletiondt, sumoftimeincsq, "
               "failurenote,";
        sql << " appstateguid FROM " << tables.job();
        if (!JobGUID.empty()) sql << " WHERE jobguid = " << frame.FormatGuid(JobGUID);
        return frame.Query(ConnectionString, Provider, sql, AllowMissing || JobGUID.empty());
    });
}

Value JobHelper::GetJobItemExecutionStatistics(std::string ConnectionString, DataStoreProvider Provider,
                                               std::string NameQualifier, std::string JobGUID,
                                               std::int32_t SequenceNumber) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"Provider", Provider},
                                {"NameQualifier", NameQualifier},
                                {"JobGUID", JobGUID},
                                {"SequenceNumber", SequenceNumber}};
    return InFrame("GetJobItemExecutionStatistics", given, [&](Frame& frame) {
        const TableNames tables(frame, NameQualifier);
        frame.CheckParameter(JobGUID, "JobGUID");
        frame.CheckParameter(NameQualifier, "NameQualifier");

        SqlText sql;
        sql << "SELECT jobitemstateid, startdt, enddt FROM " << tables.JobItem();
        sql << " WHERE jobguid = " << frame.FormatGuid(JobGUID);
        sql << " AND sequence = " << SequenceNumber;
        return frame.Query(ConnectionString, Provider, sql, false);
    });
}

Value JobHelper::JobItemsAtState(std::string ConnectionString, std::string NameQualifier, std::string JobGUID,
                                 std::string StateId) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"NameQualifier", NameQualifier},
                                {"JobGUID", JobGUID},
                                {"StateId", StateId}};
    return InFrame("JobItemsAtState", given, [&](Frame& frame) {
        const TableNames tables(frame, NameQualifier);
        frame.CheckParameter(JobGUID, "JobGUID");
        frame.CheckParameter(NameQualifier, "NameQualifier");

        SqlText sql;
        sql << "SELECT jobitemstateid, COUNT(*) FROM " << tables.JobItem();
        sql << " WHERE jobguid = " << frame.FormatGuid(JobGUID);
        if (!StateId.empty()) sql << " AND jobitemstateid = " << frame.FormatGuid(StateId);
        sql << " GROUP BY jobitemstateid";
        return frame.Query(ConnectionString, kDefaultProvider, sql, true);
    });
}

// Each table goes by its base name; items of no task drop out of the join.
Value JobHelper::OwnersOfJobItemsAtState(std::string ConnectionString, std::string NameQualifier,
                                         std::string JobGUID, std::string StateId) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"NameQualifier", NameQualifier},
                                {"JobGUID", JobGUID},
                                {"StateId", StateId}};
    return InFrame("OwnersOfJobItemsAtState", given, [&](Frame& frame) {
        const TableNames tables(frame, NameQualifier);
        frame.CheckParameter(JobGUID, "JobGUID");
        frame.CheckParameter(NameQualifier, "NameQualifier");

        SqlText sql;
        sql << "SELECT machine, jobitemstateid, COUNT(*) FROM ";
        sql << tables.JobItem() << " " << tables.Base("JobItem");
        sql << " , " << tables.jobtask() << " " << tables.Base("jobtask");
        sql << " WHERE " << tables.Base("JobItem") << ".jobguid = " << frame.FormatGuid(JobGUID);
        sql << " AND " << tables.Base("JobItem") << ".jobtaskguid = ";
        sql << tables.Base("jobtask") << ".jobtaskguid";
        if (!StateId.empty()) sql << " AND jobitemstateid = " << frame.FormatGuid(StateId);
        sql << " GROUP BY machine,jobitemstateid";
        return frame.Query(ConnectionString, kDefaultProvider, sql, true);
    });
}

}  // namespace kxjob
