#include "frame/frame.h"
#include "kxjob/job_helper.h"
#include "store/sql_text.h"
#include "store/table_names.h"
#include "vocabulary/states.h"

namespace kxjob {

std::string JobHelper::RegisterJobTask(Value ConnectionString, std::string NameQualifier, Value Description,
                                       std::string JobGUID, Value User, Value MachineName, std::int32_t PID,
                                       std::int32_t ThreadID) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"NameQualifier", NameQualifier},
                                {"Description", Description},
                                {"JobGUID", JobGUID},
                                {"User", User},
                                {"MachineName", MachineName},
                                {"PID", PID},
                                {"ThreadID", ThreadID}};
    return InFrame("RegisterJobTask", given, [&](Frame& frame) {
        const TableNames tables(frame, NameQualifier);
        frame.CheckParameter(NameQualifier, "NameQualifier");
        frame.CheckParameter(JobGUID, "JobGUID");
        std::string jobTaskGuid = frame.NewGuid();

        SqlText sql;
        sql << "INSERT INTO " << tables.jobtask() << " (";
        // The list begins with a blank: published text.
        sql << " jobtaskguid, description, jobguid, usercontext, machine, processid, "
               "threadid, startdt, jobtaskstateid";
        sql << ") VALUES (";
        sql << frame.FormatValue(jobTaskGuid) << ", ";
        sql << frame.FormatValue(Description) << ", ";
        sql << frame.FormatValue(JobGUID) << ", ";
        sql << frame.FormatValue(User) << ", ";
        sql << frame.FormatValue(MachineName) << ", ";
        sql << PID << ", ";
        sql << ThreadID << ", ";
        sql << frame.FormatValue(frame.NowISODateTime()) << ", ";
        sql << frame.FormatValue(job_task_state::kRunning) << ")";
        frame.Execute(frame.Use(ConnectionString).ToText(), kDefaultProvider, sql);
        return jobTaskGuid;
    });
}

void JobHelper::UnRegisterJobTask(std::string ConnectionString, std::string NameQualifier,
                                  std::string JobTaskGUID) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"NameQualifier", NameQualifier},
                                {"JobTaskGUID", JobTaskGUID}};
    return InFrame("UnRegisterJobTask", given, [&](Frame& frame) {
        frame.Use(*this).UnRegisterJobTaskIndicatingStatus(ConnectionString, NameQualifier, JobTaskGUID,
                                                           true);
    });
}

void JobHelper::UnRegisterJobTaskIndicatingStatus(std::string ConnectionString, std::string NameQualifier,
                                                  std::string JobTaskGUID, bool Succeeded) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"NameQualifier", NameQualifier},
                                {"JobTaskGUID", JobTaskGUID},
                                {"Succeeded", Succeeded}};
    return InFrame("UnRegisterJobTaskIndicatingStatus", given, [&](Frame& frame) {
        const TableNames tables(frame, NameQualifier);
        frame.CheckParameter(JobTaskGUID, "JobTaskGUID");
        frame.CheckParameter(NameQualifier, "NameQualifier");
        const char* const newState = Succeeded ? job_task_state::kComplete : job_task_state::kFailed;

        SqlText sql;
        sql << "UPDATE " << tables.jobtask();
        sql << " SET jobtaskstateid = " << frame.FormatValue(newState);
        sql << ", enddt = " << frame.FormatValue(frame.NowISODateTime());
        sql << " WHERE jobtaskguid = " << frame.FormatGuid(JobTaskGUID);
        frame.Execute(ConnectionString, kDefaultProvider, sql);
    });
}

void JobHelper::UpdateTaskRegistration(std::string ConnectionString, std::string NameQualifier,
                                       std::string JobTaskGUID, std::string LastJobItem,
                                       std::string JobTaskStateID) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"NameQualifier", NameQualifier},
                                {"JobTaskGUID", JobTaskGUID},
                                {"LastJobItem", LastJobItem},
                                {"JobTaskStateID", JobTaskStateID}};
    return InFrame("UpdateTaskRegistration", given, [&](Frame& frame) {
        const TableNames tables(frame, NameQualifier);
        frame.CheckParameter(NameQualifier, "NameQualifier");
        frame.CheckParameter(JobTaskGUID, "JobTaskGUID");
        frame.Trace(kProgress, "Job Task " + JobTaskGUID + " is updating state to " + JobTaskStateID);

        SqlText changes;
        if (!LastJobItem.empty()) changes << "lastjobitem = " << frame.FormatValue(LastJobItem);
        if (!JobTaskStateID.empty()) {
            if (!changes.Empty()) changes << ", ";
            changes << "jobtaskstateid = " << frame.FormatValue(JobTaskStateID);
        }
        if (changes.Empty()) frame.Raise(747, "No update specified");

        SqlText sql;
        sql << "UPDATE " << tables.jobtask();
        sql << " SET " << changes.Text();
        sql << " WHERE jobtaskguid = " << frame.FormatGuid(JobTaskGUID);
        frame.Execute(ConnectionString, kDefaultProvider, sql);
    });
}

void JobHelper::UpdateJobTaskLock(std::string ConnectionString, std::string NameQualifier,
                                  std::string JobTaskGUID, std::string LockGUID) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"NameQualifier", NameQualifier},
                                {"JobTaskGUID", JobTaskGUID},
                                {"LockGUID", LockGUID}};
    return InFrame("UpdateJobTaskLock", given, [&](Frame& frame) {
        const TableNames tables(frame, NameQualifier);
        frame.CheckParameter(NameQualifier, "NameQualifier");
        frame.CheckParameter(JobTaskGUID, "JobTaskGUID");

        SqlText sql;
        sql << "UPDATE " << tables.jobtask();
        sql << " SET lockguid = " << frame.FormatValue(LockGUID);
        sql << " WHERE jobtaskguid = " << frame.FormatGuid(JobTaskGUID);
        frame.Execute(ConnectionString, kDefaultProvider, sql);
    });
}

void JobHelper::UpdateTaskCommand(std::string ConnectionString, std::string NameQualifier,
                                  std::string JobTaskGUID, std::string Command) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"NameQualifier", NameQualifier},
                                {"JobTaskGUID", JobTaskGUID},
                                {"Command", Command}};
    return InFrame("UpdateTaskCommand", given, [&](Frame& frame) {
        const TableNames tables(frame, NameQualifier);
        // JobTaskGUID is left unchecked: it reaches the statement as a literal only.
        frame.CheckParameter(NameQualifier, "NameQualifier");

        SqlText sql;
        sql << "UPDATE " << tables.jobtask();
        sql << " SET command = " << frame.FormatValue(Command);
        sql << " WHERE jobtaskguid = " << frame.FormatGuid(JobTaskGUID);
        frame.Execute(ConnectionString, kDefaultProvider, sql);
    });
}

}  // namespace kxjob
