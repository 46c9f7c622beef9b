' cscript create_job.vbs "Driver={SQLite3 ODBC Driver};Database=jobs.db" app_
Option Explicit
Const dspSqlite = 5, sfDescription = 1, sfJobState = 3, sfTotalItemCount = 5
Const Job = "{6C0F3A1E-52C4-4D0B-9E65-0B7C1A3F8D21}", State = "{00000000-0000-4000-8000-0000000000E1}"
Dim jobs, store, prefix, statistics
store = WScript.Arguments(0)
prefix = WScript.Arguments(1)

Set jobs = CreateObject("Job_83.JobHelper")
jobs.CreateJob store, dspSqlite, prefix, Job, "REPORT", "March", State, "<parameters/>", 3
jobs.CreateSimpleJobItems store, dspSqlite, prefix, Job, Array("north", "south", "west")
jobs.UpdateJobStatus store, dspSqlite, prefix, Job, "QUEUED"

statistics = jobs.GetJobExecutionStatistics(store, dspSqlite, prefix, Job)
WScript.Echo statistics(sfDescription, 0) & " is " & statistics(sfJobState, 0) & ", " & statistics(sfTotalItemCount, 0) & " items"
