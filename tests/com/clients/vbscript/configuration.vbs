' What is left empty comes from the configuration, which names the store that this script is given.
host.Expect 9

Const JobGuid = "{00000000-0000-4000-8000-00000000A001}"

Dim helper
Set helper = CreateObject("Job_83.JobHelper")
helper.CreateJob "", 0, "", JobGuid, "REPORT", "March", ProductionState, "", 1
host.Check "CreateJob", 1, CountOf(db, "job", "jobguid = '" & JobGuid & "'")
host.Check "GetJob", "March", Cell(helper.GetJob("", 0, ""), jifDescription, 0)
host.Check "GetJob with half a connection", "March", Cell(helper.GetJob("", 0, "other_"), jifDescription, 0)
host.Check "CreateJobItem", 38, Len(helper.CreateJobItem("", 0, "", JobGuid, "thing", "data", 0))
host.Check "GetJobTasks", Empty, helper.GetJobTasks("", 0, "")
host.Check "GetJobExecutionStatistics", JobGuid, Cell(helper.GetJobExecutionStatistics("", 0, ""), sfJobGUID, 0)
host.Check "GetJobExecutionStatisticsAllowMissing", Empty, _
    helper.GetJobExecutionStatisticsAllowMissing("", 0, "", "{none}")
helper.UpdateJobStatus "", 0, "", JobGuid, "READY"
host.Check "UpdateJobStatus", "READY", Cell(helper.GetJob(db, dspSqlite, Qualifier), jifJobState, 0)
helper.RemoveJobAndItems "", 0, "", JobGuid
host.Check "RemoveJobAndItems", 0, CountOf(db, "job", "1 = 1")
