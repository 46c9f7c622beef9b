' The configuration of this script names a version whose components nobody has registered.
host.Expect 4

Dim helper
Set helper = CreateObject("Job_83.JobHelper")
host.Check "what needs no component works", True, helper.IsJobComplete("COMPLETE")
On Error Resume Next
helper.GetJob db, dspSqlite, Qualifier
host.Check "its table names are not registered", Hex(&H800401F3) & " Job_83", Hex(Err.Number) & " " & Err.Source
host.Check "the error names them", "Class not registered: TableNameHelper_99.TableNameHelper", Err.Description
Err.Clear
CreateObject "Job_83.DurationTimer"
host.Check "nor is the timer behind DurationTimer, which cannot be created", 429, Err.Number
