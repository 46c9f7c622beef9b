// Number and description of errors arrive; this language has no source.
host.Expect(26);

var helper = new ActiveXObject("Job_83.JobHelper");
var base = 0x80040000 | 0;

function check(what, number, description, call) {
    try {
        call();
        host.Fail(what + ": no error");
        host.Fail(what + ": no description");
    } catch (error) {
        host.Check(what, number, error.number);
        host.Check(what + ": description", description, error.message);
    }
}

check("743", base + 743, "The Job StateID 'failed' is not known", function () { helper.IsJobComplete("failed"); });
check("749, for an array of this language is an object", base + 749,
    "You should pass a one dimensional array of GUIDS to Job_83.JobHelper.CreateSimpleJobItems",
    function () { helper.CreateSimpleJobItems(db, dspSqlite, qualifier, "{job}", ["a", "b"]); });
check("1312", base + 1312, "There is no meta data relating to Job Type 'NONE' so the Job cannot be created.",
    function () { helper.CreateJob(db, dspSqlite, qualifier, "{job}", "NONE", "", "", "", 1); });
check("701", base + 701, "The parameter JobGUID is refused: it holds a semicolon (;)",
    function () { helper.GetJobParameters(db, dspSqlite, qualifier, "{job};"); });
check("702", base + 702, "[02000] The query found no row",
    function () { helper.GetJobParameters(db, dspSqlite, qualifier, "{job}"); });

// Any text crosses the boundary unchanged, also one that no store can keep.
var texts = ["\uD83D\uDE00", "\uD800 alone", "\uDC00\uD800", new Array(100001).join("long")];
for (var i = 0; i < texts.length; ++i) {
    check("text " + i, base + 743, "The Job StateID '" + texts[i] + "' is not known",
        function () { helper.IsJobComplete(texts[i]); });
}
check("706", base + 706, "The text cannot be stored: it has a lone surrogate at byte 1", function () {
    helper.CreateJob(db, dspSqlite, qualifier, "{job}", "REPORT", texts[1], productionState, "", 1);
});

// Calls that cannot be made. Some engines translate automation's own numbers into theirs, some do not.
function checkCall(what, number, translated, call) {
    try {
        call();
        host.Fail(what + ": no error");
    } catch (error) {
        host.Check(what, number, error.number === (0x800A0000 | 0) + translated ? number : error.number);
    }
}

checkCall("too few arguments", 0x8002000F | 0, 449, function () { helper.IsJobComplete(); });
checkCall("too many arguments", 0x8002000E | 0, 450, function () { helper.IsJobComplete("READY", 1); });
checkCall("a text that is no number", 0x80020005 | 0, 13,
    function () { helper.UpdateJobStatus(db, "five", qualifier, "{job}", "READY"); });
checkCall("a number beyond 32 bits", 0x8002000A | 0, 6,
    function () { helper.RegisterJobTask(db, qualifier, "", "{job}", "", "", 3000000000, 1); });
checkCall("an unknown method", 0x80020003 | 0, 438, function () { helper.NoSuchMethod(); });
checkCall("an unknown class", 0x800401F3 | 0, 429, function () { return new ActiveXObject("Job_83.NoSuchClass"); });
