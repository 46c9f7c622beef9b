' What a script may pass: arguments left out, variables by reference, values of other types, arrays.
host.Expect 48

Const JobA = "{00000000-0000-4000-8000-00000000A001}"
Const JobB = "{00000000-0000-4000-8000-00000000A002}"
Const OtherState = "{00000000-0000-4000-8000-0000000000E3}"

Dim helper
Set helper = CreateObject("Job_83.JobHelper")
helper.CreateJob db, dspSqlite, Qualifier, JobA, "REPORT", "A", ProductionState, "", 1
helper.CreateJob db, dspSqlite, Qualifier, JobB, "ELSEWHERE", "B", DevelopmentState, "", 1
helper.UpdateJobStatus db, dspSqlite, Qualifier, JobA, "QUEUED"

LeftOut
ByReference
OtherTypes
VariantArguments
Arrays
Unicode
WrongCalls

Sub LeftOut
    Dim state
    host.Check "all jobs", 1, UBound(helper.GetJob(db, dspSqlite, Qualifier), 2)
    host.Check "one job", JobB, OnlyJob(helper.GetJob(db, dspSqlite, Qualifier, JobB))
    host.Check "by type, the job skipped", JobA, OnlyJob(helper.GetJob(db, dspSqlite, Qualifier, , "REPORT"))
    host.Check "by state, two skipped", JobA, OnlyJob(helper.GetJob(db, dspSqlite, Qualifier, , , "QUEUED"))
    host.Check "by application state, three skipped", JobB, _
        OnlyJob(helper.GetJob(db, dspSqlite, Qualifier, , , , DevelopmentState))
    state = ProductionState
    host.Check "by application state in a variable", JobA, OnlyJob(helper.GetJob(db, dspSqlite, Qualifier, , , , state))
    host.Check "the variable keeps its text", ProductionState, state
    host.Check "every statistic", 1, UBound(helper.GetJobExecutionStatistics(db, dspSqlite, Qualifier), 2)
    host.Check "every task", Empty, helper.GetJobTasks(db, dspSqlite, Qualifier)
    host.Check "items at every state", Empty, helper.JobItemsAtState(db, Qualifier, JobA)
    host.Check "owners at every state", Empty, helper.OwnersOfJobItemsAtState(db, Qualifier, JobA)
End Sub

' The key of the only row.
Function OnlyJob(rows)
    OnlyJob = UBound(rows, 2) + 1 & " rows"
    If UBound(rows, 2) = 0 Then OnlyJob = rows(jifJobGUID, 0)
End Function

Sub ByReference
    Dim job, rank, answer(1)
    helper.GetNextJob db, dspSqlite, Qualifier, job, rank
    host.Check "an unset variable gets the job", JobA, job
    host.Check "an unset variable gets the rank", 1.0, rank
    job = 5
    rank = "0"
    helper.GetNextJob db, dspSqlite, Qualifier, job, rank
    host.Check "a variable that held a number gets the job", JobA, job
    host.Check "a variable that held a text gets the rank", 1.0, rank
    helper.GetNextJob db, dspSqlite, Qualifier, answer(0), answer(1)
    host.Check "elements of an array get both", "[""" & JobA & """,1.0]", host.Text(answer)
    helper.GetNextJob db, dspSqlite, Qualifier, "", 0
    host.Check "a text and a number of the caller's are no error", 0, Err.Number
End Sub

Sub OtherTypes
    Dim rows, task
    helper.CreateJob db, "5", Qualifier, JobA, "REPORT", 2026, ProductionState, True, "3"
    rows = helper.GetJob(db, 5.0, Qualifier, JobA)
    host.Check "a number as a text argument", "2026", rows(jifDescription, 0)
    host.Check "a Boolean as a text argument", "True", rows(jifParameters, 0)
    host.Check "a text as a number", 3, rows(jifTotalItemCount, 0)
    task = helper.RegisterJobTask(db, Qualifier, "t", JobA, "u", "m", "71", 72.6)
    helper.UnRegisterJobTaskIndicatingStatus db, Qualifier, task, 0
    rows = helper.GetJobTasks(db, dspSqlite, Qualifier)
    host.Check "digits as a process", 71, rows(jtfProcessID, 0)
    host.Check "a fraction is rounded", 73, rows(jtfThreadID, 0)
    host.Check "zero as False", "FAILED", rows(jtfJobTaskStateID, 0)
    helper.UnRegisterJobTaskIndicatingStatus db, Qualifier, task, "True"
    host.Check "a text as True", "COMPLETE", Cell(helper.GetJobTasks(db, dspSqlite, Qualifier), jtfJobTaskStateID, 0)
End Sub

' Four arguments of RegisterJobTask take any value.
Sub VariantArguments
    Dim rows, description
    host.Execute db, "DELETE FROM kx_jobtask"
    description = "in a variable"
    helper.RegisterJobTask db, Qualifier, description, JobA, Null, Empty, 1, 2
    rows = helper.GetJobTasks(db, dspSqlite, Qualifier)
    host.Check "a variable", "in a variable", rows(jtfDescription, 0)
    host.Check "Null", Null, rows(jtfUser, 0)
    host.Check "Empty", Null, rows(jtfMachine, 0)
    host.Execute db, "DELETE FROM kx_jobtask"
    helper.RegisterJobTask db, Qualifier, True, JobA, 1.5, CByte(7), 1, 2
    rows = helper.GetJobTasks(db, dspSqlite, Qualifier)
    host.Check "a Boolean", "1", rows(jtfDescription, 0)
    host.Check "a Double", "1.5", rows(jtfUser, 0)
    host.Check "a Byte", "7", rows(jtfMachine, 0)
    host.Execute db, "DELETE FROM kx_jobtask"
    helper.RegisterJobTask db, Qualifier, CCur(2.25), JobA, -70000, #2026-03-01 09:30:15#, 1, 2
    rows = helper.GetJobTasks(db, dspSqlite, Qualifier)
    host.Check "a Currency", "2.25", rows(jtfDescription, 0)
    host.Check "a Long", "-70000", rows(jtfUser, 0)
    host.Check "a Date", "2026-03-01T09:30:15", rows(jtfMachine, 0)
    host.Check "no object for the options", 1, _
        InStr(helper.JobTableCreationScript(Nothing, dspSqlite, "x_"), "CREATE TABLE IF NOT EXISTS x_job (")
End Sub

Sub Arrays
    Dim list, fixed(2), table(1, 1)
    list = Array("a", "b")
    helper.CreateSimpleJobItems db, dspSqlite, Qualifier, JobA, list
    host.Check "an array in a variable", "a b", Identifiers(JobA)
    fixed(0) = "c"
    fixed(1) = 7
    fixed(2) = Null
    helper.CreateSimpleJobItems db, dspSqlite, Qualifier, JobB, fixed
    host.Check "an array of fixed size, of any values", "{""rows"":[[""c"",0],[""7"",1],[null,2]]}", _
        ItemsWithoutKey(JobB)
    helper.CreateSimpleJobItems db, dspSqlite, Qualifier, OtherState, Array()
    host.Check "an array of nothing", 0, CountOf(db, "JobItem", "jobguid = '" & OtherState & "'")
    On Error Resume Next
    helper.CreateSimpleJobItems db, dspSqlite, Qualifier, JobA, table
    host.Check "an array of two dimensions", Hex(&H800402EE), Hex(Err.Number)
    Err.Clear
    helper.CreateSimpleJobItems db, dspSqlite, Qualifier, JobA, "a"
    host.Check "a text is no array", Hex(&H800402ED), Hex(Err.Number)
End Sub

Function Identifiers(job)
    Dim rows, row
    rows = helper.GetJobItems(db, dspSqlite, Qualifier, job)
    For row = 0 To UBound(rows, 2)
        Identifiers = Trim(Identifiers & " " & rows(1, row))
    Next
End Function

Function ItemsWithoutKey(job)
    Dim rows, row, text
    rows = helper.GetJobItems(db, dspSqlite, Qualifier, job)
    For row = 0 To UBound(rows, 2)
        If row > 0 Then text = text & ","
        text = text & host.Text(Array(rows(1, row), rows(3, row)))
    Next
    ItemsWithoutKey = "{""rows"":[" & text & "]}"
End Function

Sub Unicode
    Dim text
    text = "Grüße, Ελλάδα, 日本, 'quoted' ""twice"" \ ? {d '2026'}"
    helper.CreateJob db, dspSqlite, Qualifier, JobA, "REPORT", text, ProductionState, text, 1
    host.Check "text of every script in a statement", text, _
        Cell(helper.GetJob(db, dspSqlite, Qualifier, JobA), jifDescription, 0)
    host.Check "and bound", text, helper.GetJobParameters(db, dspSqlite, Qualifier, JobA)
End Sub

' The engine's own errors for calls that cannot be made; none reaches the library.
Sub WrongCalls
    On Error Resume Next
    helper.IsJobComplete
    host.Check "too few arguments", 449, Err.Number
    Err.Clear
    helper.IsJobComplete "READY", 1
    host.Check "too many arguments", 450, Err.Number
    Err.Clear
    helper.UpdateJobStatus db, "five", Qualifier, JobA, "QUEUED"
    host.Check "a text that is no number", 13, Err.Number
    Err.Clear
    helper.RegisterJobTask db, Qualifier, "", JobA, "", "", 3000000000, 1
    host.Check "a number beyond 32 bits", 6, Err.Number
    Err.Clear
    helper.IsJobComplete Null
    host.Check "Null as a text", 13, Err.Number
    Err.Clear
    helper.NoSuchMethod
    host.Check "an unknown method", 438, Err.Number
    Err.Clear
    CreateObject "Job_83.NoSuchClass"
    host.Check "an unknown class", 429, Err.Number
    Err.Clear
End Sub
