' Number, source and description of each error arrive as they were raised.
host.Expect 26

Const JobGuid = "{00000000-0000-4000-8000-00000000A001}"
Const TaskGuid = "{00000000-0000-4000-8000-00000000C001}"
Const LockGuid = "{00000000-0000-4000-8000-00000000D001}"
Const OtherLock = "{00000000-0000-4000-8000-00000000D002}"

Dim helper
Set helper = CreateObject("Job_83.JobHelper")

States
Refusals
Creation
Items
Missing
Locks
Scheduling
Store
Components

Sub States
    On Error Resume Next
    helper.IsJobComplete "FAILED"
    host.Check "no help file, no help context", " 0", Err.HelpFile & " " & Err.HelpContext
    CheckError "743", vbObjectError + 743, "Job_83.JobHelper.IsJobComplete", "The Job StateID 'FAILED' is not known"
    helper.IsJobRunning "queued"
    CheckError "744", vbObjectError + 744, "Job_83.JobHelper.IsJobRunning", "The Job StateID 'queued' is not known"
    helper.UpdateTaskRegistration db, Qualifier, TaskGuid, "", ""
    CheckError "747", vbObjectError + 747, "Job_83.JobHelper.UpdateTaskRegistration", "No update specified"
End Sub

Sub Refusals
    On Error Resume Next
    helper.IsJobComplete "x'; DROP TABLE kx_job"
    CheckError "a key with a quote", vbObjectError + 701, "kxJob.InputGuard", _
        "The parameter StateID is refused: it holds a single quote (')"
    helper.GetJob db, dspSqlite, "kx_ j"
    CheckError "a qualifier that is no name", vbObjectError + 701, "kxJob.InputGuard", _
        "The parameter NameQualifier is refused: it is not a dotted name of plain or quoted parts"
End Sub

Sub Creation
    On Error Resume Next
    helper.CreateJob db, dspSqlite, Qualifier, JobGuid, "REPORT", "", ProductionState, "", 0
    CheckError "1433", vbObjectError + 1433, "Job_83.JobHelper.CreateJob", _
        "A job cannot be created if there are no items to be executed."
    helper.CreateJob db, dspSqlite, Qualifier, JobGuid, "NONE", "", ProductionState, "", 1
    CheckError "1312", vbObjectError + 1312, "Job_83.JobHelper.CreateJob", _
        "There is no meta data relating to Job Type 'NONE' so the Job cannot be created."
    host.Execute db, "INSERT INTO kx_systemflag VALUES ('KVR_TRANSACTION', 'running')"
    helper.CreateJob db, dspSqlite, Qualifier, JobGuid, "REPORT", "", ProductionState, "", 1
    CheckError "854", vbObjectError + 854, "Job_83.JobHelper.CreateJob", _
        "Unable to create 'REPORT' as there is a KVR process running.  Please wait for KVR to finish or clear the" & _
        " KVR flag using the Admin Console if it has crashed."
    host.Execute db, "DELETE FROM kx_systemflag"
    host.Check "nothing was created", 0, CountOf(db, "job", "1 = 1") + CountOf(db, "adminhistory", "1 = 1")
End Sub

Sub Items
    Dim table(1, 1)
    On Error Resume Next
    helper.CreateSimpleJobItems db, dspSqlite, Qualifier, JobGuid, "no array"
    CheckError "749", vbObjectError + 749, "Job_83.JobHelper.CreateSimpleJobItems", _
        "You should pass a one dimensional array of GUIDS to Job_83.JobHelper.CreateSimpleJobItems"
    helper.CreateSimpleJobItems db, dspSqlite, Qualifier, JobGuid, table
    CheckError "750", vbObjectError + 750, "Job_83.JobHelper.CreateSimpleJobItems", _
        "You should pass a one dimensional array of GUIDS to Job_83.JobHelper.CreateSimpleJobItems"
End Sub

Sub Missing
    On Error Resume Next
    helper.GetJobItems db, dspSqlite, Qualifier, JobGuid
    CheckError "702 of items", vbObjectError + 702, "kxJob.DataAccess", "[02000] The query found no row"
    helper.AppendJobFailureNote db, dspSqlite, Qualifier, JobGuid, "note"
    CheckError "702 of a note", vbObjectError + 702, "kxJob.DataAccess", "[02000] The query found no row"
    helper.CreateJob db, dspSqlite, Qualifier, JobGuid, "REPORT", "", ProductionState, "", 1
    helper.GetJobParameters db, dspSqlite, Qualifier, JobGuid
    CheckError "no parameters", 94, "Job_83", "Invalid use of Null"
End Sub

Sub Locks
    Dim attempted, description
    On Error Resume Next
    helper.GetNewLockExcludingInterlopers db, Qualifier, TaskGuid, TaskGuid, LockGuid, 60
    CheckError "745", vbObjectError + 745, "Job_83.JobHelper.GetNewLockExcludingInterlopers", _
        "Job " & TaskGuid & " has vanished"
    host.Execute db, "UPDATE kx_job SET jobeditorlockguid = '" & OtherLock & "'"
    helper.GetNewLockExcludingInterlopers db, Qualifier, JobGuid, TaskGuid, LockGuid, 60
    description = Err.Description
    attempted = Mid(description, InStr(description, "new value '") + Len("new value '"), 38)
    CheckError "746", vbObjectError + 746, "Job_83.JobHelper.GetNewLockExcludingInterlopers", _
        "The lock GUID is '" & OtherLock & "'not the old value '" & LockGuid & "' or the attempted new value '" & _
        attempted & "' so the attempt to get a new lock has failed"
    host.Check "the attempted lock is a new one", True, Left(attempted, 1) = "{" And Right(attempted, 1) = "}" And _
        attempted <> LockGuid And attempted <> OtherLock
End Sub

Sub Scheduling
    Dim job, rank
    job = "unchanged"
    helper.UpdateJobStatus db, dspSqlite, Qualifier, JobGuid, "QUEUED"
    host.Execute db, "DELETE FROM kx_JobType WHERE jobtypeid = 'REPORT'"
    On Error Resume Next
    helper.GetNextJob db, dspSqlite, Qualifier, job, rank
    CheckError "855", vbObjectError + 855, "Job_83.JobHelper.GetQueuedAndRunningJobs", _
        "Unable to find meta data about job type 'REPORT'"
    host.Check "the variable is as it was", "unchanged", job
End Sub

Sub Store
    Dim options
    Set options = CreateObject("Scripting.Dictionary")
    On Error Resume Next
    helper.JobTableCreationScript options, dspOracle, Qualifier
    CheckError "705", vbObjectError + 705, "kxJob.ScriptLibrary", _
        "The data store provider 1 is reserved and not supported"
    helper.GetJob db, dspSqlite, "ky_"
    CheckError "703", vbObjectError + 703, "kxJob.DataAccess", "[42S02] [SQLite]no such table: ky_job (1)"
    helper.GetJob "Driver={No Such Driver};PWD=secret", dspSqlite, Qualifier
    host.Check "704", Hex(vbObjectError + 704) & " kxJob.DataAccess", Hex(Err.Number) & " " & Err.Source
    host.Check "its description keeps the password", 0, InStr(Err.Description, "secret")
    Err.Clear
End Sub

' What a component of the application raises goes through the library and back.
Sub Components
    On Error Resume Next
    host.Execute db, "DROP TABLE kx_adminhistory"
    helper.UpdateJobStatus db, dspSqlite, Qualifier, JobGuid, "READY"
    CheckError "703 of the administration", vbObjectError + 703, "kxJob.DataAccess", _
        "[42S02] [SQLite]no such table: kx_adminhistory (1)"
    host.Check "the state was set before", 1, CountOf(db, "job", "jobstateid = 'READY'")
End Sub
