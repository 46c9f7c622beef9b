// One job's whole life through each of the 35 methods, by a language that has no arguments by reference.
host.Expect(48);

var job = "{00000000-0000-4000-8000-00000000A001}";
var stray = "{00000000-0000-4000-8000-00000000A003}";
var lock = "{00000000-0000-4000-8000-00000000D001}";
var helper = new ActiveXObject("Job_83.JobHelper");

function vocabulary() {
    host.Check("Version", "8.3.1202.0", helper.Version());
    host.Check("IsJobComplete", true, helper.IsJobComplete("CANCELLED"));
    host.Check("IsJobRunning", false, helper.IsJobRunning("CANCELLED"));
    host.Check("ParametersTagName", "parameters", helper.ParametersTagName());
    host.Check("ParameterTagName", "parameter", helper.ParameterTagName());
    var options = new ActiveXObject("Scripting.Dictionary");
    host.Check("JobTableCreationScript", 0,
        helper.JobTableCreationScript(options, dspSqlite, "other_").indexOf("CREATE TABLE IF NOT EXISTS other_job ("));
}

function creation() {
    host.Check("GetJob of none", undefined, helper.GetJob(db, dspSqlite, qualifier));
    helper.CreateJob(db, dspSqlite, qualifier, job, "REPORT", "It's March", productionState, "<parameters/>", 2);
    host.Check("GetJob", '{"rows":[["' + job + '","It\'s March","REPORT","<parameters/>","CREATING",0,2,0,0,null,' +
        'null,0.0,"' + productionState + '",null]]}', host.Text(helper.GetJob(db, dspSqlite, qualifier, job)));
    host.Check("GetJobParameters", "<parameters/>", helper.GetJobParameters(db, dspSqlite, qualifier, job));
    host.Check("GetJobType", "REPORT", column(helper.GetJobType(db, dspSqlite, qualifier, "REPORT"), 0).join());
    helper.UpdateJobStatus(db, dspSqlite, qualifier, job, "QUEUED");
    host.Check("UpdateJobStatus", "QUEUED", column(helper.GetJob(db, dspSqlite, qualifier), 4).join());
}

function items() {
    // An array of this language is an object, so that items come one by one.
    var first = helper.CreateJobItem(db, dspSqlite, qualifier, job, "thing 1", "its data", 0);
    var second = helper.CreateJobItem(db, dspSqlite, qualifier, job, "thing 2", "", 1);
    host.Check("CreateJobItem", true, first.length === 38 && first !== second);
    host.Check("GetJobItems", '{"rows":[["' + first + '","thing 1",null,0],["' + second + '","thing 2",null,1]]}',
        host.Text(helper.GetJobItems(db, dspSqlite, qualifier, job)));
    host.Check("GetJobItem", '{"rows":[["thing 1",null,"its data",null,null,"' + first + '",null]]}',
        host.Text(helper.GetJobItem(db, dspSqlite, qualifier, first)));
    var list = new ActiveXObject("Scripting.Dictionary");
    list.Add("a", "thing 3");
    list.Add("b", "thing 4");
    helper.CreateSimpleJobItems(db, dspSqlite, qualifier, stray, list.Keys());
    host.Check("CreateSimpleJobItems of an array made elsewhere", "a,b",
        column(helper.GetJobItems(db, dspSqlite, qualifier, stray), 1).join());
    return [first, second];
}

function nextJob() {
    var answer = "as it was";
    helper.GetNextJob(db, dspSqlite, qualifier, answer, 0);
    host.Check("GetNextJob: this language passes copies", "as it was", answer);
}

function tasks() {
    var task = helper.RegisterJobTask(db, qualifier, "a task", job, null, "MACHINE1", 71, 72);
    var other = helper.RegisterJobTask(db, qualifier, undefined, job, "a user", "MACHINE2", 73, 74);
    host.Check("RegisterJobTask", true, task.length === 38 && task !== other);
    host.Check("null and undefined are NULL", "null null", taskCell(task, 8) + " " + taskCell(other, 1));
    helper.UpdateTaskRegistration(db, qualifier, task, "item 1", "PAUSED");
    host.Check("UpdateTaskRegistration", "item 1 PAUSED", taskCell(task, 6) + " " + taskCell(task, 9));
    helper.UpdateTaskCommand(db, qualifier, task, "STOP");
    host.Check("UpdateTaskCommand", "STOP", taskCell(task, 7));
    helper.UpdateJobTaskLock(db, qualifier, task, lock);
    host.Check("UpdateJobTaskLock", lock, taskCell(task, 12));
    host.Check("GetJobTasks", "71,73", column(helper.GetJobTasks(db, dspSqlite, qualifier, job), 4).sort().join());
    helper.UnRegisterJobTask(db, qualifier, task);
    host.Check("UnRegisterJobTask", "COMPLETE", taskCell(task, 9));
    helper.UnRegisterJobTaskIndicatingStatus(db, qualifier, other, false);
    host.Check("UnRegisterJobTaskIndicatingStatus", "FAILED", taskCell(other, 9));
    return task;
}

function taskCell(task, number) {
    var rows = helper.GetJobTasks(db, dspSqlite, qualifier);
    var keys = column(rows, 0);
    for (var row = 0; row < keys.length; ++row) {
        if (keys[row] === task) return String(column(rows, number)[row]);
    }
    return "no such task";
}

function newLock(task) {
    host.Execute(db, "UPDATE kx_job SET jobeditorlockguid = '" + lock + "'");
    var taken = helper.GetNewLockExcludingInterlopers(db, qualifier, job, task, lock, 0.1);
    host.Check("GetNewLockExcludingInterlopers", host.Execute(db, "SELECT jobeditorlockguid FROM kx_job"), taken);
    host.Check("its duration", "0.1", host.Execute(db, "SELECT lockduration FROM kx_job"));
    host.Check("its task", taken, taskCell(task, 12));
}

function progress(task, item) {
    helper.UpdateJobItemStatus(db, dspSqlite, qualifier, item[0], "COMPLETE", "2026-03-01T09:30:15.123Z",
        "2026-03-01T09:31:00.000Z", task);
    host.Check("UpdateJobItemStatus", "COMPLETE", column(helper.GetJobItem(db, dspSqlite, qualifier, item[0]), 1).join());
    host.Check("GetJobItemExecutionStatistics",
        '{"rows":[["COMPLETE","2026-03-01T09:30:15.123Z","2026-03-01T09:31:00.000Z"]]}',
        host.Text(helper.GetJobItemExecutionStatistics(db, dspSqlite, qualifier, job, 0)));
    host.Check("JobItemsAtState", '{"rows":[["COMPLETE",1]]}',
        host.Text(helper.JobItemsAtState(db, qualifier, job, "COMPLETE")));
    host.Check("OwnersOfJobItemsAtState", '{"rows":[["MACHINE1","COMPLETE",1]]}',
        host.Text(helper.OwnersOfJobItemsAtState(db, qualifier, job)));
}

function statistics() {
    var expected = '{"rows":[["' + job + '","It\'s March","REPORT","QUEUED",0,2,0,0,null,null,0.0,null,"' +
        productionState + '"]]}';
    host.Check("GetJobExecutionStatistics", expected,
        host.Text(helper.GetJobExecutionStatistics(db, dspSqlite, qualifier)));
    host.Check("GetJobExecutionStatisticsAllowMissing", expected,
        host.Text(helper.GetJobExecutionStatisticsAllowMissing(db, dspSqlite, qualifier, job)));
    host.Check("GetJobExecutionStatisticsAllowMissing of none", undefined,
        helper.GetJobExecutionStatisticsAllowMissing(db, dspSqlite, qualifier, stray));
}

function failureNotes(item) {
    helper.AppendJobFailureNote(db, dspSqlite, qualifier, job, "first");
    helper.AppendJobFailureNote(db, dspSqlite, qualifier, job, "second");
    checkBlocks("AppendJobFailureNote", String(column(helper.GetJob(db, dspSqlite, qualifier), 13)[0]),
        ["first", "second"]);
    helper.AppendJobItemFailureNote(db, dspSqlite, qualifier, item, "it broke");
    checkBlocks("AppendJobItemFailureNote", String(column(helper.GetJobItem(db, dspSqlite, qualifier, item), 6)[0]),
        ["it broke"]);
}

// Each block is time, machine, user, process and thread; the note follows it.
function checkBlocks(what, text, notes) {
    var parts = text.split("\r\n\r\n");
    host.Check(what + ": parts", 5 * notes.length, parts.length);
    for (var i = 0; i < notes.length; ++i) {
        var block = parts.slice(5 * i, 5 * i + 4).join("|");
        host.Check(what + ": block " + i, true,
            /^\d{4}-\d\d-\d\dT[\d:.]+Z\|Machine details: .*\\.*\|User details: .*\\.*\|Process ID \/ Thread ID: \d+ \/ \d+$/
                .test(block));
        host.Check(what + ": note " + i, notes[i], parts[5 * i + 4]);
    }
}

function removal() {
    helper.CreateJob(db, dspSqlite, qualifier, stray, "REPORT", "", "{another state}", "", 1);
    helper.RemoveIrrelevantJobsInAllContainers(db, dspSqlite, qualifier);
    host.Check("RemoveIrrelevantJobsInAllContainers", job, column(helper.GetJob(db, dspSqlite, qualifier), 0).join());
    helper.RemoveIrrelevantJobsInContainer(db, dspSqlite, qualifier, developmentState, developmentState);
    host.Check("RemoveIrrelevantJobsInContainer", undefined, helper.GetJob(db, dspSqlite, qualifier));
    host.Check("nothing is left of it", "0", host.Execute(db, "SELECT COUNT(*) FROM kx_JobItem"));
    helper.RemoveJobAndItems(db, dspSqlite, qualifier, job);
    host.Check("RemoveJobAndItems writes history", "3",
        host.Execute(db, "SELECT COUNT(*) FROM kx_adminhistory WHERE actioncode = 'JOB_REMOVED'"));
}

vocabulary();
creation();
var jobItems = items();
nextJob();
var firstTask = tasks();
newLock(firstTask);
progress(firstTask, jobItems);
statistics();
failureNotes(jobItems[1]);
removal();

var timer = new ActiveXObject("Job_83.DurationTimer");
var before = timer.Duration;
host.Check("Duration is a number", "number", typeof before);
host.Check("Duration runs on", true, timer.Duration >= before);
timer.Start();
