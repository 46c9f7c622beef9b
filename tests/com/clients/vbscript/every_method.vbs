' One job's whole life through each of the 35 methods, on a real store.
host.Expect 81

Const JobGuid = "{00000000-0000-4000-8000-00000000A001}"
Const OldJobGuid = "{00000000-0000-4000-8000-00000000A002}"
Const StrayJobGuid = "{00000000-0000-4000-8000-00000000A003}"
Const Thing1 = "{00000000-0000-4000-8000-00000000B001}"
Const Thing2 = "{00000000-0000-4000-8000-00000000B002}"
Const Thing3 = "{00000000-0000-4000-8000-00000000B003}"
Const LockGuid = "{00000000-0000-4000-8000-00000000D001}"
Const OtherState = "{00000000-0000-4000-8000-0000000000E3}"
Const Parameters = "<parameters><parameter>March</parameter></parameters>"

Dim helper
Set helper = CreateObject("Job_83.JobHelper")

Vocabulary
CreationScript
Creation
Items
Scheduling
Tasks
Locks
Progress
Statistics
FailureNotes
Removal

Sub Vocabulary
    host.Check "Version", "8.3.1202.0", helper.Version()
    host.Check "IsJobComplete of COMPLETE", True, helper.IsJobComplete("COMPLETE")
    host.Check "IsJobComplete of RUNNING", False, helper.IsJobComplete("RUNNING")
    host.Check "IsJobRunning of QUEUED", True, helper.IsJobRunning("QUEUED")
    host.Check "IsJobRunning of READY", False, helper.IsJobRunning("READY")
    host.Check "ParametersTagName", "parameters", helper.ParametersTagName()
    host.Check "ParameterTagName", "parameter", helper.ParameterTagName()
End Sub

Sub CreationScript
    Dim options, text
    Set options = CreateObject("Scripting.Dictionary")
    options.Add "tablespace", "fast"
    text = helper.JobTableCreationScript(options, dspSqlite, "other_")
    host.Check "the script begins with the job table", 1, InStr(text, "CREATE TABLE IF NOT EXISTS other_job (")
    host.Check "the options are the caller's still", "fast", options.Item("tablespace")
    host.Check "the four tables", 4, CLng(host.Execute(db, "SELECT COUNT(*) FROM sqlite_master WHERE type = 'table'" & _
        " AND name IN ('kx_job', 'kx_JobItem', 'kx_jobtask', 'kx_JobType')"))
End Sub

Sub Creation
    Dim rows
    host.Check "GetJob of none", Empty, helper.GetJob(db, dspSqlite, Qualifier)
    helper.CreateJob db, dspSqlite, Qualifier, OldJobGuid, "REPORT", "February", ProductionState, "", 1
    helper.CreateJob db, dspSqlite, Qualifier, JobGuid, "REPORT", "March 'n' more", ProductionState, Parameters, 3
    rows = helper.GetJob(db, dspSqlite, Qualifier)
    host.Check "GetJob has 14 columns", 13, UBound(rows, 1)
    host.Check "CreateJob has removed the earlier job", 0, UBound(rows, 2)
    host.Check "GetJob", "{""rows"":[[""" & JobGuid & """,""March 'n' more"",""REPORT"",""" & Parameters & _
        """,""CREATING"",0,3,0,0,null,null,0.0,""" & ProductionState & """,null]]}", host.Text(rows)
    host.Check "GetJobParameters", Parameters, helper.GetJobParameters(db, dspSqlite, Qualifier, JobGuid)
    host.Check "GetJobType", "{""rows"":[[""REPORT"",""Reports"",""kxTimer_83.Timer"",""Mail_83.Sender""]]}", _
        host.Text(helper.GetJobType(db, dspSqlite, Qualifier, "REPORT"))
    host.Check "GetJobType of all", 1, UBound(helper.GetJobType(db, dspSqlite, Qualifier), 2)
    host.Check "GetJobType of an unknown one", Empty, helper.GetJobType(db, dspSqlite, Qualifier, "NONE")
    host.Check "history of a creation", "<job><jobtypeid>REPORT</jobtypeid><jobguid>" & JobGuid & _
        "</jobguid><appstateguid>" & ProductionState & "</appstateguid><totalitemcount>3</totalitemcount></job>", _
        host.Execute(db, "SELECT detail FROM kx_adminhistory WHERE actioncode = 'JOB_CREATE'" & _
            " AND detail LIKE '%" & JobGuid & "%'")
    host.Check "history of the earlier job's removal", 1, CountOf(db, "adminhistory", _
        "actioncode = 'JOB_REMOVED' AND detail = '<job><jobguid>" & OldJobGuid & "</jobguid></job>'")
End Sub

Sub Items
    Dim rows, item, things, i
    things = Array(Thing1, Thing2, Thing3)
    helper.CreateSimpleJobItems db, dspSqlite, Qualifier, JobGuid, Array(Thing1, Thing2)
    item = helper.CreateJobItem(db, dspSqlite, Qualifier, JobGuid, Thing3, "some data; with a ""quote""", 2)
    host.Check "CreateJobItem returns a GUID", 38, Len(item)
    rows = helper.GetJobItems(db, dspSqlite, Qualifier, JobGuid)
    host.Check "GetJobItems has 4 columns", 3, UBound(rows, 1)
    host.Check "GetJobItems has 3 rows", 2, UBound(rows, 2)
    For i = 0 To 2
        host.Check "sequence of item " & i, i, rows(3, i)
        host.Check "identifier of item " & i, things(i), rows(1, i)
    Next
    host.Check "GUID of the item with data", item, rows(0, 2)
    host.Check "GetJobItem", "{""rows"":[[""" & Thing3 & """,null,""some data; with a \""quote\"""",null,null,""" & _
        item & """,null]]}", host.Text(helper.GetJobItem(db, dspSqlite, Qualifier, item))
End Sub

Sub Scheduling
    Dim job, rank
    job = "unchanged"
    rank = 7
    helper.GetNextJob db, dspSqlite, Qualifier, job, rank
    host.Check "GetNextJob of none leaves the job", "unchanged", job
    host.Check "GetNextJob of none leaves the rank", 7.0, CDbl(rank)

    helper.UpdateJobStatus db, dspSqlite, Qualifier, JobGuid, "QUEUED"
    host.Check "UpdateJobStatus", "QUEUED", Cell(helper.GetJob(db, dspSqlite, Qualifier, JobGuid), jifJobState, 0)
    host.Check "history of a state", 1, CountOf(db, "adminhistory", "actioncode = 'JOB_STATUS_UPDATE' AND detail =" & _
        " '<job><jobguid>" & JobGuid & "</jobguid><jobstateid>QUEUED</jobstateid></job>'")
    helper.GetNextJob db, dspSqlite, Qualifier, job, rank
    host.Check "GetNextJob fills the job", JobGuid, job
    host.Check "GetNextJob fills the rank", 1.0, CDbl(rank)
End Sub

Sub Tasks
    Dim task, other, rows, job, rank
    host.Check "GetJobTasks of none", Empty, helper.GetJobTasks(db, dspSqlite, Qualifier)
    task = helper.RegisterJobTask(db, Qualifier, "a task", JobGuid, "a user", "MACHINE1", 71, 72)
    other = helper.RegisterJobTask(db, Qualifier, "another", JobGuid, "a user", "MACHINE2", 73, 74)
    host.Check "each task has a GUID of its own", True, Len(task) = 38 And task <> other
    helper.UpdateTaskRegistration db, Qualifier, task, Thing1, ""
    helper.UpdateTaskCommand db, Qualifier, task, "STOP"
    helper.UpdateJobTaskLock db, Qualifier, task, LockGuid
    rows = helper.GetJobTasks(db, dspSqlite, Qualifier, JobGuid)
    host.Check "GetJobTasks has 13 columns", 12, UBound(rows, 1)
    host.Check "GetJobTasks has 2 rows", 1, UBound(rows, 2)
    host.Check "GetJobTasks", host.Text(Array(task, "a task", JobGuid, "MACHINE1", 71, 72, Thing1, "STOP", "a user", _
        "RUNNING", Null, LockGuid)), host.Text(TaskWithoutStart(task))

    helper.UpdateJobStatus db, dspSqlite, Qualifier, JobGuid, "RUNNING"
    helper.GetNextJob db, dspSqlite, Qualifier, job, rank
    host.Check "GetNextJob ranks by running tasks", 1 / 3, rank

    helper.UnRegisterJobTask db, Qualifier, task
    host.Check "UnRegisterJobTask", "COMPLETE", StateOfTask(task)
    helper.UnRegisterJobTaskIndicatingStatus db, Qualifier, other, False
    host.Check "UnRegisterJobTaskIndicatingStatus", "FAILED", StateOfTask(other)
    host.Check "both have ended", 2, CountOf(db, "jobtask", "enddt >= startdt")
    helper.UpdateTaskRegistration db, Qualifier, other, "", "RUNNING"
    host.Check "UpdateTaskRegistration", "RUNNING", StateOfTask(other)
End Sub

' The columns of a task but the one that holds the time of its registration.
Function TaskWithoutStart(task)
    Dim rows, row
    rows = helper.GetJobTasks(db, dspSqlite, Qualifier)
    row = RowOf(rows, jtfJobTaskGUID, task)
    TaskWithoutStart = Array(rows(jtfJobTaskGUID, row), rows(jtfDescription, row), rows(jtfJobGUID, row), _
        rows(jtfMachine, row), rows(jtfProcessID, row), rows(jtfThreadID, row), rows(jtfLastJobItem, row), _
        rows(jtfCommand, row), rows(jtfUser, row), rows(jtfJobTaskStateID, row), rows(jtfEndDateTime, row), _
        rows(jtfLockGUID, row))
End Function

Function StateOfTask(task)
    Dim rows
    rows = helper.GetJobTasks(db, dspSqlite, Qualifier)
    StateOfTask = rows(jtfJobTaskStateID, RowOf(rows, jtfJobTaskGUID, task))
End Function

Function RowOf(rows, column, key)
    Dim row
    RowOf = -1
    For row = 0 To UBound(rows, 2)
        If rows(column, row) = key Then RowOf = row
    Next
End Function

Sub Locks
    Dim task, lock
    task = helper.RegisterJobTask(db, Qualifier, "the editor", JobGuid, "a user", "MACHINE1", 75, 76)
    host.Execute db, "UPDATE kx_job SET jobeditorlockguid = '" & LockGuid & "'"
    lock = helper.GetNewLockExcludingInterlopers(db, Qualifier, JobGuid, task, LockGuid, 90.5)
    host.Check "the new lock is another", True, Len(lock) = 38 And lock <> LockGuid
    host.Check "the job holds it", lock, host.Execute(db, "SELECT jobeditorlockguid FROM kx_job")
    host.Check "for the duration given", "90.5", host.Execute(db, "SELECT lockduration FROM kx_job")
    host.Check "the task knows it", 1, CountOf(db, "jobtask", "lockguid = '" & lock & "' AND jobtaskguid = '" & task & "'")
    helper.UnRegisterJobTaskIndicatingStatus db, Qualifier, task, True
    host.Check "the editor has ended", "COMPLETE", StateOfTask(task)
End Sub

Sub Progress
    Dim items, task
    items = helper.GetJobItems(db, dspSqlite, Qualifier, JobGuid)
    task = Cell(helper.GetJobTasks(db, dspSqlite, Qualifier), jtfJobTaskGUID, 0)
    helper.UpdateJobItemStatus db, dspSqlite, Qualifier, items(0, 0), "COMPLETE", "2026-03-01T09:30:15.123Z", _
        "2026-03-01T09:31:00.000Z", task
    helper.UpdateJobItemStatus db, dspSqlite, Qualifier, items(0, 1), "FAILED", "2026-03-01T09:31:00.000Z", "", task
    host.Check "UpdateJobItemStatus", "{""rows"":[[""" & Thing1 & """,""COMPLETE"",null," & _
        """2026-03-01T09:30:15.123Z"",""2026-03-01T09:31:00.000Z"",""" & items(0, 0) & """,null]]}", _
        host.Text(helper.GetJobItem(db, dspSqlite, Qualifier, items(0, 0)))
    host.Check "GetJobItemExecutionStatistics", "{""rows"":[[""FAILED"",""2026-03-01T09:31:00.000Z"",""""]]}", _
        host.Text(helper.GetJobItemExecutionStatistics(db, dspSqlite, Qualifier, JobGuid, 1))
    helper.UpdateJobItemStatus db, dspSqlite, Qualifier, items(0, 2), "COMPLETE", "", "", task
    host.Check "JobItemsAtState of one state", "{""rows"":[[""COMPLETE"",2]]}", _
        host.Text(helper.JobItemsAtState(db, Qualifier, JobGuid, "COMPLETE"))
    host.Check "JobItemsAtState of all", 1, UBound(helper.JobItemsAtState(db, Qualifier, JobGuid), 2)
    host.Check "OwnersOfJobItemsAtState", "{""rows"":[[""MACHINE1"",""FAILED"",1]]}", _
        host.Text(helper.OwnersOfJobItemsAtState(db, Qualifier, JobGuid, "FAILED"))
    host.Check "OwnersOfJobItemsAtState of none", Empty, helper.OwnersOfJobItemsAtState(db, Qualifier, JobGuid, "NONE")
End Sub

Sub Statistics
    Dim expected
    expected = "{""rows"":[[""" & JobGuid & """,""March 'n' more"",""REPORT"",""RUNNING"",0,3,0,0,null,null,0.0,null,""" & _
        ProductionState & """]]}"
    host.Check "GetJobExecutionStatistics", expected, _
        host.Text(helper.GetJobExecutionStatistics(db, dspSqlite, Qualifier, JobGuid))
    host.Check "GetJobExecutionStatistics of all", expected, _
        host.Text(helper.GetJobExecutionStatistics(db, dspSqlite, Qualifier))
    host.Check "GetJobExecutionStatisticsAllowMissing", expected, _
        host.Text(helper.GetJobExecutionStatisticsAllowMissing(db, dspSqlite, Qualifier, JobGuid))
    host.Check "GetJobExecutionStatisticsAllowMissing of none", Empty, _
        helper.GetJobExecutionStatisticsAllowMissing(db, dspSqlite, Qualifier, StrayJobGuid)
End Sub

Sub FailureNotes
    Dim item, note
    item = Cell(helper.GetJobItems(db, dspSqlite, Qualifier, JobGuid), 0, 1)
    helper.AppendJobFailureNote db, dspSqlite, Qualifier, JobGuid, "first"
    helper.AppendJobFailureNote db, dspSqlite, Qualifier, JobGuid, "second"
    note = Cell(helper.GetJob(db, dspSqlite, Qualifier, JobGuid), jifFailureNote, 0)
    CheckBlock "AppendJobFailureNote, the first", note, "first"
    CheckBlock "AppendJobFailureNote, the second", Mid(note, InStr(note, "first") + Len("first" & vbCrLf & vbCrLf)), "second"
    helper.AppendJobItemFailureNote db, dspSqlite, Qualifier, item, "it broke"
    note = Cell(helper.GetJobItem(db, dspSqlite, Qualifier, item), jiifFaliureNote, 0)
    CheckBlock "AppendJobItemFailureNote", note, "it broke"
End Sub

' Time, machine, user, process and thread, each followed by an empty line, then the note.
Sub CheckBlock(what, text, note)
    Dim parts
    parts = Split(text, vbCrLf & vbCrLf)
    host.Check what & ": its time", 24, Len(parts(0))
    host.Check what & ": its machine", 1, InStr(parts(1), "Machine details: ")
    host.Check what & ": its user", 1, InStr(parts(2), "User details: ")
    host.Check what & ": its process", 1, InStr(parts(3), "Process ID / Thread ID: ")
    host.Check what & ": its note", note, parts(4)
End Sub

Sub Removal
    helper.CreateJob db, dspSqlite, Qualifier, StrayJobGuid, "REPORT", "of a state that is gone", OtherState, "", 1
    helper.CreateSimpleJobItems db, dspSqlite, Qualifier, OldJobGuid, Array(Thing1)
    helper.RemoveIrrelevantJobsInAllContainers db, dspSqlite, Qualifier
    host.Check "the sweep removes the job of another state", JobGuid, host.Execute(db, "SELECT jobguid FROM kx_job")
    host.Check "and the items without a job", 3, CountOf(db, "JobItem", "1 = 1")
    helper.RemoveIrrelevantJobsInContainer db, dspSqlite, Qualifier, ProductionState, DevelopmentState
    host.Check "the production state's job stays", 1, CountOf(db, "job", "1 = 1")
    helper.RemoveJobAndItems db, dspSqlite, Qualifier, JobGuid
    host.Check "RemoveJobAndItems", "0 0 0", CountOf(db, "job", "1 = 1") & " " & CountOf(db, "JobItem", "1 = 1") & " " & _
        CountOf(db, "jobtask", "1 = 1")
End Sub
