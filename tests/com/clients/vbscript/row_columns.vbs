' Every number of enumerations.vbs reads the column that it is named after: each cell holds its column's name or a
' number of its own.
host.Expect 51

Dim helper, rows
Set helper = CreateObject("Job_83.JobHelper")
host.Execute db, "DELETE FROM kx_JobType"
host.Execute db, "INSERT INTO kx_job (jobguid, description, jobtypeid, parameters, jobstateid, nextjobitem," & _
    " totalitemcount, succeededitemcount, faileditemcount, startdt, lastcompletiondt, sumoftimeincsq, appstateguid," & _
    " failurenote) VALUES ('jobguid', 'description', 'jobtypeid', 'parameters', 'jobstateid', 11, 12, 13, 14," & _
    " 'startdt', 'lastcompletiondt', 0.25, 'appstateguid', 'failurenote')"
host.Execute db, "INSERT INTO kx_JobType (jobtypeid, description, implprogid, notificationprogid)" & _
    " VALUES ('jobtypeid', 'description', 'implprogid', 'notificationprogid')"
host.Execute db, "INSERT INTO kx_JobItem (jobitemguid, jobguid, identifier, sequence, data, jobitemstateid, startdt," & _
    " enddt, failurenote, jobtaskguid) VALUES ('jobitemguid', 'jobguid', 'identifier', 21, 'data', 'jobitemstateid'," & _
    " 'startdt', 'enddt', 'failurenote', 'jobtaskguid')"
host.Execute db, "INSERT INTO kx_jobtask (jobtaskguid, description, jobguid, usercontext, machine, processid, threadid," & _
    " startdt, enddt, jobtaskstateid, lastjobitem, command, lockguid) VALUES ('jobtaskguid', 'description', 'jobguid'," & _
    " 'usercontext', 'machine', 31, 32, 'startdt', 'enddt', 'jobtaskstateid', 'lastjobitem', 'command', 'lockguid')"

rows = helper.GetJobExecutionStatistics(db, dspSqlite, Qualifier)
host.Check "sfJobGUID", "jobguid", rows(sfJobGUID, 0)
host.Check "sfDescription", "description", rows(sfDescription, 0)
host.Check "sfJobType", "jobtypeid", rows(sfJobType, 0)
host.Check "sfJobState", "jobstateid", rows(sfJobState, 0)
host.Check "sfNextItem", 11, rows(sfNextItem, 0)
host.Check "sfTotalItemCount", 12, rows(sfTotalItemCount, 0)
host.Check "sfSucceededItemCount", 13, rows(sfSucceededItemCount, 0)
host.Check "sfFailedItemCount", 14, rows(sfFailedItemCount, 0)
host.Check "sfStartDateTime", "startdt", rows(sfStartDateTime, 0)
host.Check "sfLastCompletedDateTime", "lastcompletiondt", rows(sfLastCompletedDateTime, 0)
host.Check "sfSumOfTimeIncrementsSquared", 0.25, rows(sfSumOfTimeIncrementsSquared, 0)
host.Check "sfFailureNote", "failurenote", rows(sfFailureNote, 0)
host.Check "sfAppStateGUID", "appstateguid", rows(sfAppStateGUID, 0)

rows = helper.GetJob(db, dspSqlite, Qualifier)
host.Check "jifJobGUID", "jobguid", rows(jifJobGUID, 0)
host.Check "jifDescription", "description", rows(jifDescription, 0)
host.Check "jifJobType", "jobtypeid", rows(jifJobType, 0)
host.Check "jifParameters", "parameters", rows(jifParameters, 0)
host.Check "jifJobState", "jobstateid", rows(jifJobState, 0)
host.Check "jifNextItem", 11, rows(jifNextItem, 0)
host.Check "jifTotalItemCount", 12, rows(jifTotalItemCount, 0)
host.Check "jifSucceededItemCount", 13, rows(jifSucceededItemCount, 0)
host.Check "jifFailedItemCount", 14, rows(jifFailedItemCount, 0)
host.Check "jifStartDateTime", "startdt", rows(jifStartDateTime, 0)
host.Check "jifLastCompletedDateTime", "lastcompletiondt", rows(jifLastCompletedDateTime, 0)
host.Check "jifSumOfTimeIncrementsSquared", 0.25, rows(jifSumOfTimeIncrementsSquared, 0)
host.Check "jifApplicationDefinitionGUID", "appstateguid", rows(jifApplicationDefinitionGUID, 0)
host.Check "jifFailureNote", "failurenote", rows(jifFailureNote, 0)

rows = helper.GetJobType(db, dspSqlite, Qualifier)
host.Check "jtifJobType", "jobtypeid", rows(jtifJobType, 0)
host.Check "jtifDescription", "description", rows(jtifDescription, 0)
host.Check "jtifComponentInstantiationString", "implprogid", rows(jtifComponentInstantiationString, 0)
host.Check "jtifNotificationComponentInstantiationString", "notificationprogid", _
    rows(jtifNotificationComponentInstantiationString, 0)

rows = helper.GetJobItem(db, dspSqlite, Qualifier, "jobitemguid")
host.Check "jiifIdentifier", "identifier", rows(jiifIdentifier, 0)
host.Check "jiifJobItemState", "jobitemstateid", rows(jiifJobItemState, 0)
host.Check "jiifData", "data", rows(jiifData, 0)
host.Check "jiifStartDate", "startdt", rows(jiifStartDate, 0)
host.Check "jiifEndDate", "enddt", rows(jiifEndDate, 0)
host.Check "jiifJobItemGUID", "jobitemguid", rows(jiifJobItemGUID, 0)
host.Check "jiifFaliureNote", "failurenote", rows(jiifFaliureNote, 0)

rows = helper.GetJobTasks(db, dspSqlite, Qualifier)
host.Check "jtfJobTaskGUID", "jobtaskguid", rows(jtfJobTaskGUID, 0)
host.Check "jtfDescription", "description", rows(jtfDescription, 0)
host.Check "jtfJobGUID", "jobguid", rows(jtfJobGUID, 0)
host.Check "jtfMachine", "machine", rows(jtfMachine, 0)
host.Check "jtfProcessID", 31, rows(jtfProcessID, 0)
host.Check "jtfThreadID", 32, rows(jtfThreadID, 0)
host.Check "jtfLastJobItem", "lastjobitem", rows(jtfLastJobItem, 0)
host.Check "jtfCommand", "command", rows(jtfCommand, 0)
host.Check "jtfUser", "usercontext", rows(jtfUser, 0)
host.Check "jtfJobTaskStateID", "jobtaskstateid", rows(jtfJobTaskStateID, 0)
host.Check "jtfStartDateTime", "startdt", rows(jtfStartDateTime, 0)
host.Check "jtfEndDateTime", "enddt", rows(jtfEndDateTime, 0)
host.Check "jtfLockGUID", "lockguid", rows(jtfLockGUID, 0)
