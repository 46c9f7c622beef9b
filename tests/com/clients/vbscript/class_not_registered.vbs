' The configuration of this script names a version whose components nobody has registered.
host.Expect 2

Dim helper
Set helper = CreateObject("Job_83.JobHelper")
host.Check "what needs no component works", True, helper.IsJobComplete("COMPLETE")
On Error Resume Next
helper.GetJob db, dspSqlite, Qualifier
CheckError "its table names are not registered", &H800401F3, "Job_83", _
    "Class not registered: TableNameHelper_99.TableNameHelper"
