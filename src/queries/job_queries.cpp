#include <string_view>

#include "frame/frame.h"
#include "kxjob/array.h"
#include "kxjob/job_helper.h"
#include "store/sql_text.h"
#include "store/table_names.h"

namespace kxjob {
namespace {

constexpr std::string_view kAnd = " AND ";

/// One clause of GetJob's filter with the joining word behind it; nothing for an empty value.
void AddFilter(Frame& frame, std::string& filter, const char* column, const std::string& value) {
    if (value.empty()) return;
    filter += column;
    filter += frame.FormatGuid(value);
    filter += kAnd;
}

}  // namespace

// Types and states go through FormatGuid like the keys do, here and in all other queries.
Value JobHelper::GetJob(std::string ConnectionString, DataStoreProvider Provider, std::string NameQualifier,
                        std::string JobGUID, std::string JobTypeID, std::string JobStateID,
                        const std::string& ApplicationStateGUID) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"Provider", Provider},
                                {"NameQualifier", NameQualifier},
                                {"JobGUID", JobGUID},
                                {"JobTypeID", JobTypeID},
                                {"JobStateID", JobStateID},
                                ByReference("ApplicationStateGUID", ApplicationStateGUID)};
    return InFrame("GetJob", given, [&](Frame& frame) {
        UseConfigurationIfIncomplete(frame, ConnectionString, Provider, NameQualifier);
        const TableNames tables(frame, NameQualifier);
        frame.CheckParameter(NameQualifier, "NameQualifier");

        SqlText sql;
        sql << "SELECT jobguid, description, jobtypeid, parameters, jobstateid, nextjobitem, "
               "totalitemcount,";
        sql << " succeededitemcount, faileditemcount, startdt, lastcompletiondt, "
               "sumoftimeincsq, appstateguid,";
        sql << " failurenote ";
        sql << " FROM " << tables.job();  // two blanks before FROM: published text
        std::string filter;
        AddFilter(frame, filter, " jobguid = ", JobGUID);
        AddFilter(frame, filter, " jobtypeid = ", JobTypeID);
        AddFilter(frame, filter, " jobstateid = ", JobStateID);
        AddFilter(frame, filter, " appstateguid = ", ApplicationStateGUID);
        if (!filter.empty()) sql << " WHERE " << filter.substr(0, filter.size() - kAnd.size());
        return frame.Query(ConnectionString, Provider, sql, true);
    });
}

Value JobHelper::GetJobType(std::string ConnectionString, DataStoreProvider Provider,
                            std::string NameQualifier, std::string JobTypeID) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"Provider", Provider},
                                {"NameQualifier", NameQualifier},
                                {"JobTypeID", JobTypeID}};
    return InFrame("GetJobType", given, [&](Frame& frame) {
        const TableNames tables(frame, NameQualifier);
        frame.CheckParameter(NameQualifier, "NameQualifier");

        SqlText sql;
        sql << "SELECT jobtypeid, description, implprogid, notificationprogid ";
        sql << " FROM " << tables.JobType();  // two blanks before FROM: published text
        if (!JobTypeID.empty()) sql << " WHERE jobtypeid = " << frame.FormatGuid(JobTypeID);
        return frame.Query(ConnectionString, Provider, sql, true);
    });
}

std::string JobHelper::GetJobParameters(std::string ConnectionString, DataStoreProvider Provider,
                                        std::string NameQualifier, std::string JobGUID) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"Provider", Provider},
                                {"NameQualifier", NameQualifier},
                                {"JobGUID", JobGUID}};
    return InFrame("GetJobParameters", given, [&](Frame& frame) {
        const TableNames tables(frame, NameQualifier);
        frame.CheckParameter(NameQualifier, "NameQualifier");
        frame.CheckParameter(JobGUID, "JobGUID");

        SqlText sql;
        sql << "SELECT parameters FROM " << tables.job();
        sql << " WHERE jobguid = " << frame.FormatGuid(JobGUID);
        const Value rows = frame.Query(ConnectionString, Provider, sql, false);
        return frame.Use(rows).Rows().Cell(0, 0).ToText();
    });
}

Value JobHelper::GetJobItem(std::string ConnectionString, DataStoreProvider Provider,
                            std::string NameQualifier, std::string JobItemGUID) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"Provider", Provider},
                                {"NameQualifier", NameQualifier},
                                {"JobItemGUID", JobItemGUID}};
    return InFrame("GetJobItem", given, [&](Frame& frame) {
        const TableNames tables(frame, NameQualifier);
        frame.CheckParameter(NameQualifier, "NameQualifier");
        frame.CheckParameter(JobItemGUID, "JobItemGUID");

        SqlText sql;
        sql << "SELECT identifier, jobitemstateid, data, startdt, enddt, jobitemguid, failurenote";
        sql << " FROM " << tables.JobItem();
        sql << " WHERE jobitemguid = " << frame.FormatGuid(JobItemGUID);
        return frame.Query(ConnectionString, Provider, sql, false);
    });
}

Value JobHelper::GetJobItems(std::string ConnectionString, DataStoreProvider Provider,
                             std::string NameQualifier, std::string JobGUID) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"Provider", Provider},
                                {"NameQualifier", NameQualifier},
                                {"JobGUID", JobGUID}};
    return InFrame("GetJobItems", given, [&](Frame& frame) {
        const TableNames tables(frame, NameQualifier);
        frame.CheckParameter(NameQualifier, "NameQualifier");
        frame.CheckParameter(JobGUID, "JobGUID");

        SqlText sql;
        sql << "SELECT jobitemguid, identifier, jobitemstateid, sequence FROM " << tables.JobItem();
        sql << " WHERE jobguid = " << frame.FormatGuid(JobGUID);
        sql << " ORDER BY sequence";
        return frame.Query(ConnectionString, Provider, sql, false);
    });
}

Value JobHelper::GetJobTasks(std::string ConnectionString, DataStoreProvider Provider,
                             std::string NameQualifier, std::string JobGUID) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"Provider", Provider},
                                {"NameQualifier", NameQualifier},
                                {"JobGUID", JobGUID}};
    return InFrame("GetJobTasks", given, [&](Frame& frame) {
        UseConfigurationIfIncomplete(frame, ConnectionString, Provider, NameQualifier);
        const TableNames tables(frame, NameQualifier);
        frame.CheckParameter(NameQualifier, "NameQualifier");

        SqlText sql;
        sql << "SELECT jobtaskguid, description, jobguid, machine, processid, threadid, "
               "lastjobitem, command,";
        sql << " usercontext, jobtaskstateid, startdt, enddt, lockguid FROM " << tables.jobtask();
        if (!JobGUID.empty()) sql << " WHERE jobguid = " << frame.FormatGuid(JobGUID);
        return frame.Query(ConnectionString, Provider, sql, true);
    });
}

}  // namespace kxjob
